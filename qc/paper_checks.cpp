#include "qc/paper_checks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "qc/finding_words.h"
#include "qc/published_whites.h"
#include "qc/relative_xyz.h"
#include "qc/rows_found.h"

namespace qxcms::qc {

namespace {

using Kind = Finding::Kind;

// Of two patches that are measured once and rounded to whole numbers.
constexpr double kLightnessTolerance = 1.0;

// Papers, also those with much brightener or slightly toned ones, lie within these on their own white.
constexpr double kLightPaper = 80.0;
constexpr double kLargestPaperChroma = 15.0;
constexpr double kLargestPaperA = 4.0;
constexpr double kSmallestPaperB = -10.0;
constexpr double kLargestPaperB = 6.0;

// Much brightener comes near the difference of D50, D55 and E.
constexpr const char* kFarWhites[] = {"A", "C", "D50", "D65", "D75"};

// Papers absorb the violet, and none of them the far red; light material that is dyed blue stays below.
constexpr int kVioletNm = 390;
constexpr int kFarRedNm = 700;
constexpr double kVioletShare = 1.25;
constexpr double kReversiblePaper = 70.0;

// The blackest stock reflects more somewhere.
constexpr double kDarkestPaper = 0.02;

struct Paper {
    int row = -1; // of the lightest, -1 where there is none
    int count = 0;
};

Paper findPaper(const Inspected& inspected) {
    Paper paper;
    for (int row = 0; row < inspected.chart.rows(); ++row) {
        if (!inspected.isPaper(row))
            continue;
        ++paper.count;
        if (paper.row < 0 || inspected.labOf(row)[0] > inspected.labOf(paper.row)[0])
            paper.row = row;
    }
    return paper;
}

std::string paperWords(const Inks& inks) {
    return inks.areLight() ? ", the patch of full red, green and blue" : ", the patch without ink";
}

std::optional<Finding> findBandOrder(const Inspected& inspected, int paper) {
    const std::vector<int>& bands = inspected.spectra->bands();
    if (bands.front() > kVioletNm || bands.back() < kFarRedNm || inspected.labOf(paper)[0] < kReversiblePaper)
        return std::nullopt;
    std::vector<double> values(bands.size());
    inspected.chart.document->GetSpectrum(inspected.chart.table, paper, values.data());
    if (!(values.front() > kVioletShare * values.back()))
        return std::nullopt;
    return warning(Kind::bandOrder, placeOf(inspected.chart, paper) + paperWords(inspected.inks) +
                                        ", reflects " + numberText(values.front()) + " at " +
                                        std::to_string(bands.front()) + " nm, but only " +
                                        numberText(values.back()) + " at " + std::to_string(bands.back()) +
                                        " nm; check that the bands do not stand in the opposite order");
}

std::optional<Finding> findDarkPaper(const Inspected& inspected, int paper) {
    std::vector<double> values(inspected.spectra->bands().size());
    inspected.chart.document->GetSpectrum(inspected.chart.table, paper, values.data());
    const double most = *std::max_element(values.begin(), values.end());
    if (!(most > 0.0 && most < kDarkestPaper))
        return std::nullopt;
    return warning(Kind::spectralScale,
                   placeOf(inspected.chart, paper) + paperWords(inspected.inks) + ", reflects " +
                       numberText(most) +
                       " at most, but no paper is as dark; check whether all values are 100 times too small, "
                       "as of percent divided by 100 twice");
}

bool isPaperColor(const Lab& color) {
    return std::abs(color[1]) <= kLargestPaperA && color[2] >= kSmallestPaperB && color[2] <= kLargestPaperB;
}

Lab labOn(double x, double y, double z, const std::array<double, 3>& white) {
    return labOfRelativeXyz({100.0 * x / white[0], y, 100.0 * z / white[2]});
}

// The white on which a colour is most neutral, of those on which it is that of a paper; null where it is on
// none.
const char* whiteOfPaper(const std::array<double, 3>& xyz) {
    const char* nearest = nullptr;
    double least = 0.0;
    for (const char* name : kFarWhites) {
        const Lab other = labOn(xyz[0], xyz[1], xyz[2], *publishedWhite(name, false));
        const double chroma = std::hypot(other[1], other[2]);
        if (isPaperColor(other) && (nearest == nullptr || chroma < least)) {
            nearest = name;
            least = chroma;
        }
    }
    return nearest;
}

// Empty where nothing explains it.
std::string remedyForPaper(const Inspected& inspected, const Lab& color) {
    const std::array<double, 3>& white = inspected.white;
    const std::array<double, 3> percent = relativeXyzOf(color);
    const std::array<double, 3> xyz = {percent[0] * white[0] / 100.0, percent[1],
                                       percent[2] * white[2] / 100.0};
    if (inspected.source == ColorSource::xyz && isPaperColor(labOn(xyz[2], xyz[1], xyz[0], white)))
        return "when X and Z are exchanged; check the columns XYZ_X and XYZ_Z";
    const char* const other = whiteOfPaper(xyz);
    return other == nullptr ? ""
                            : std::string("on the white of ") + other +
                                  " instead of the one that it is read for; check the illuminant and the "
                                  "white of the values";
}

std::optional<Finding> findOtherWhite(const Inspected& inspected, int paper) {
    const Lab& color = inspected.labOf(paper);
    if (!(inspected.white[1] > 0.0) || color[0] < kLightPaper ||
        !(std::hypot(color[1], color[2]) > kLargestPaperChroma))
        return std::nullopt;
    const std::string remedy = remedyForPaper(inspected, color);
    if (remedy.empty())
        return std::nullopt;
    return warning(Kind::otherWhite, placeOf(inspected.chart, paper) + paperWords(inspected.inks) +
                                         ", has a* " + numberText(color[1]) + " and b* " +
                                         numberText(color[2]) + ", as " + remedy);
}

RowsFound rowsLighterThan(const Inspected& inspected, double lightness) {
    RowsFound lighter;
    for (int row = 0; row < inspected.chart.rows(); ++row) {
        const double other = inspected.labOf(row)[0];
        if (!inspected.inks.useSpots(row) && other > lightness + kLightnessTolerance)
            lighter.add(row, other, other);
    }
    return lighter;
}

} // namespace

std::optional<Finding> findLighterThanPaper(const Inspected& inspected) {
    const Paper paper = findPaper(inspected);
    if (paper.row < 0)
        return std::nullopt;
    const double lightness = inspected.labOf(paper.row)[0];
    const RowsFound lighter = rowsLighterThan(inspected, lightness);
    if (lighter.empty())
        return std::nullopt;
    return warning(
        Kind::paperNotLightest,
        placeOf(inspected.chart, paper.row) +
            (paper.count > 1 ? ", the lightest of " + counted(paper.count) + " patches" : ", the patch") +
            (inspected.inks.areLight() ? " of full red, green and blue" : " without ink") + ", has L* " +
            numberText(lightness) + ", but row " + std::to_string(lighter.worstRow() + 1) + " has L* " +
            numberText(lighter.most()) + " (" + counted(lighter.rows()) +
            (lighter.rows() == 1 ? " row is" : " rows are") +
            " lighter); check that device values and measurements belong to the same rows");
}

std::optional<Finding> findPaperColor(const Inspected& inspected) {
    const Paper paper = findPaper(inspected);
    if (paper.row < 0)
        return std::nullopt;
    if (!inspected.spectra)
        return findOtherWhite(inspected, paper.row);
    const std::optional<Finding> dark = findDarkPaper(inspected, paper.row);
    return dark ? dark : findBandOrder(inspected, paper.row);
}

} // namespace qxcms::qc
