#include "qc/perfect_white.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/number_text.h"
#include "qc/printable_text.h"

namespace qxcms::qc {

namespace {

// Rounding leaves so much of 100, 0, 0.
constexpr double kPerfectLightness = 99.5;
constexpr double kPerfectChroma = 0.1;
// The whitest papers stay below, and above the other one; brightened and toned ones have no more chroma.
constexpr double kPaperLightness = 98.0;
constexpr double kDarkPaper = 60.0;
constexpr double kLargestPaperChroma = 15.0;
constexpr std::size_t kFewestSamples = 8;

bool isPerfect(const Lab& color) {
    return color[0] > kPerfectLightness && std::hypot(color[1], color[2]) < kPerfectChroma;
}

bool isPaper(const Lab& color) {
    return color[0] > kDarkPaper && color[0] < kPaperLightness &&
           std::hypot(color[1], color[2]) < kLargestPaperChroma;
}

std::string textOf(const Lab& color) {
    return detail::generalText(color[0], 4) + ' ' + detail::generalText(color[1], 4) + ' ' +
           detail::generalText(color[2], 4);
}

} // namespace

std::vector<Finding> perfectWhites(const std::vector<ComparedRow>& rows, const std::string& measured,
                                   const std::string& reference, bool areRgb) {
    if (rows.size() < kFewestSamples)
        return {};
    std::vector<Finding> findings;
    const auto look = [&](Lab ComparedRow::*ours, const std::string& our, Lab ComparedRow::*theirs,
                          const std::string& their) {
        const auto lightest = std::max_element(rows.begin(), rows.end(),
                                               [&](const ComparedRow& left, const ComparedRow& right) {
                                                   return (left.*ours)[0] < (right.*ours)[0];
                                               });
        const Lab& white = (*lightest).*ours;
        const Lab& other = (*lightest).*theirs;
        if (!isPerfect(white) || !isPaper(other))
            return;
        findings.push_back({Finding::Severity::warning, Finding::Kind::relativeToPaper,
                            "the lightest sample of " + printable(our) + " has Lab " + textOf(white) +
                                ", a perfect white, but " + textOf(other) + " in " + printable(their) +
                                "; the values of " + printable(our) + " seem to be relative to their " +
                                (areRgb ? "white" : "paper") + " and those of " + printable(their) +
                                " not, so compare values of one kind"});
    };
    look(&ComparedRow::found, measured, &ComparedRow::expected, reference);
    look(&ComparedRow::expected, reference, &ComparedRow::found, measured);
    return findings;
}

} // namespace qxcms::qc
