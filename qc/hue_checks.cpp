#include "qc/hue_checks.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "qc/finding_words.h"
#include "qc/printable_text.h"

namespace qxcms::qc {

namespace {

struct Primary {
    const char* name;
    bool cyan;
    bool magenta;
    bool yellow;
    double hue; // of prints and displays alike, in degrees
};
constexpr Primary kPrimaries[] = {
    {"yellow", false, false, true, 92.0}, {"magenta", false, true, false, 345.0},
    {"green", true, false, true, 150.0},  {"blue", true, true, false, 298.0},
    {"cyan", true, false, false, 225.0},  {"red", false, true, true, 35.0}};
constexpr double kHueTolerance = 40.0;
constexpr double kSmallestChroma = 20.0;

// Further than the pure colours of one kind of prints or displays lie from those of another, in degrees.
constexpr double kOtherHue = 60.0;

using Names = std::vector<std::string>;

void addOnce(Names& names, const char* name) {
    if (std::find(names.begin(), names.end(), name) == names.end())
        names.emplace_back(name);
}

bool isPure(const std::vector<double>& parts, const Primary& primary) {
    const bool used[] = {primary.cyan, primary.magenta, primary.yellow};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const bool isUsed = i < 3 && used[i];
        if (isUsed ? parts[i] < kNearlyFullInk : parts[i] > kNearlyNoInk)
            return false;
    }
    return true;
}

// The one that a row is by its device values; null for all other and for pale rows.
const Primary* primaryOf(const Inspected& inspected, int row) {
    const Lab& color = inspected.labOf(row);
    if (inspected.inks.useSpots(row) || std::hypot(color[1], color[2]) < kSmallestChroma)
        return nullptr;
    const std::vector<double> parts = inspected.inks.of(row);
    const auto* found = std::find_if(std::begin(kPrimaries), std::end(kPrimaries),
                                     [&](const Primary& primary) { return isPure(parts, primary); });
    return found == std::end(kPrimaries) ? nullptr : found;
}

double hueOf(const Lab& color) {
    return std::atan2(color[2], color[1]) * 180.0 / std::acos(-1.0);
}

bool isNear(double hue, double expected, double tolerance) {
    return std::abs(std::remainder(hue - expected, 360.0)) <= tolerance;
}

// Exchanging a* and b* mirrors hue angles at 45 degrees.
double mirrored(double hue) {
    return 90.0 - hue;
}

// That shows where the two angles of a colour are far apart; of cyan and red they are not.
bool showsExchange(const Primary& primary) {
    return !isNear(mirrored(primary.hue), primary.hue, 2.0 * kHueTolerance);
}

std::string exampleOf(const Inspected& inspected, int row, const Primary& primary) {
    const Lab& color = inspected.labOf(row);
    return placeOf(inspected.chart, row) + ", a " + primary.name + " patch by its device values, has a* " +
           numberText(color[1]) + " and b* " + numberText(color[2]);
}

} // namespace

std::optional<Finding> findExchangedHues(const Inspected& inspected) {
    if (!inspected.inks.areKnown() || !inspected.inks.haveKnownColors())
        return std::nullopt;
    int found = 0;
    Names names;
    std::string example;
    for (int row = 0; row < inspected.chart.rows(); ++row) {
        const Primary* primary = primaryOf(inspected, row);
        if (primary == nullptr || !showsExchange(*primary))
            continue;
        const double hue = hueOf(inspected.labOf(row));
        if (isNear(hue, primary->hue, kHueTolerance))
            return std::nullopt;
        if (!isNear(hue, mirrored(primary->hue), kHueTolerance))
            continue;
        if (++found == 1)
            example = exampleOf(inspected, row, *primary);
        addOnce(names, primary->name);
    }
    if (names.size() < 2)
        return std::nullopt;
    return warning(Finding::Kind::exchangedAxes,
                   example + "; this and " + counted(found - 1) + " more pure patches (" +
                       joined(names, ", ") +
                       ") have the hues of exchanged a* and b*, none its own; check the columns LAB_A and "
                       "LAB_B and those of the device values, and that both belong to the same rows");
}

// One patch of its own hue is enough for a colour to have it.
std::optional<Finding> findOtherHues(const Inspected& inspected) {
    if (!inspected.inks.areKnown() || !inspected.inks.haveNamedColors())
        return std::nullopt;
    Names own;
    Names other;
    std::string example;
    for (int row = 0; row < inspected.chart.rows(); ++row) {
        const Primary* primary = primaryOf(inspected, row);
        if (primary == nullptr)
            continue;
        if (isNear(hueOf(inspected.labOf(row)), primary->hue, kOtherHue)) {
            addOnce(own, primary->name);
            continue;
        }
        addOnce(other, primary->name);
        if (example.empty())
            example = exampleOf(inspected, row, *primary);
    }
    const auto hasOwn = [&](const std::string& name) {
        return std::find(own.begin(), own.end(), name) != own.end();
    };
    other.erase(std::remove_if(other.begin(), other.end(), hasOwn), other.end());
    if (other.size() < 2 || 2 * own.size() > other.size())
        return std::nullopt;
    return warning(Finding::Kind::otherHues,
                   example + "; pure patches (" + joined(other, ", ") +
                       ") have quite other hues than their device values say; check that both belong to the "
                       "same rows, and the order of the columns and bands");
}

} // namespace qxcms::qc
