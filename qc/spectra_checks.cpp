#include "qc/spectra_checks.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>

#include "qc/finding_words.h"

namespace qxcms::qc {

namespace {

using Kind = Finding::Kind;

// What a spectrum must cover to say much about its colour.
constexpr int kFirstNeededNm = 400;
constexpr int kLastNeededNm = 700;

constexpr int kCoarseStepNm = 20;
// CIEDE2000 of the 24 patches of a ColorChecker (N. Ohta, 1997), D50 and 2 degree: every 20 nm from 380 nm
// against every 5 nm (plausibility.costOfTwentyNanometres_isThatOfTheColorChecker).
constexpr const char* kMeanCoarseCost = "0.21";
constexpr const char* kLargestCoarseCost = "0.53";

// "the bands of all 24 rows".
std::string bandsOfAll(const Chart& chart) {
    return chart.rows() == 1 ? "the bands of its row" : "the bands of all " + counted(chart.rows()) + " rows";
}

std::optional<Finding> findNarrowBands(const Chart& chart, const std::vector<int>& bands) {
    if (bands.front() <= kFirstNeededNm && bands.back() >= kLastNeededNm)
        return std::nullopt;
    return warning(Kind::narrowSpectra,
                   fileAnd(chart, bandsOfAll(chart) + " reach from " + std::to_string(bands.front()) +
                                      " to " + std::to_string(bands.back()) +
                                      " nm and do not cover 400 to 700 nm; the values outside are held "
                                      "constant, which can change the colours, so measure the whole range "
                                      "where you can"));
}

// Between neighbours that overlap what must be covered; 0 where there are none.
int widestGap(const std::vector<int>& bands) {
    int widest = 0;
    for (std::size_t i = 1; i < bands.size(); ++i) {
        if (bands[i] > kFirstNeededNm && bands[i - 1] < kLastNeededNm)
            widest = std::max(widest, bands[i] - bands[i - 1]);
    }
    return widest;
}

bool isUniform(const std::vector<int>& bands, int gap) {
    for (std::size_t i = 1; i < bands.size(); ++i) {
        if (bands[i] - bands[i - 1] != gap)
            return false;
    }
    return true;
}

std::optional<Finding> findCoarseBands(const Chart& chart, const std::vector<int>& bands) {
    const int gap = widestGap(bands);
    if (gap < kCoarseStepNm)
        return std::nullopt;
    return warning(Kind::coarseSpectra,
                   fileAnd(chart, bandsOfAll(chart) + " are " + (isUniform(bands, gap) ? "" : "up to ") +
                                      std::to_string(gap) +
                                      " nm apart; interpolating from 20 nm costs about " + kMeanCoarseCost +
                                      " on average and up to " + kLargestCoarseCost +
                                      " Delta E 00 on the 24 patches of a ColorChecker" +
                                      (gap > kCoarseStepNm ? ", and wider gaps cost more" : "") +
                                      "; measure every 10 nm where smaller differences matter"));
}

std::string remedyOfScale(const Chart& chart) {
    const std::string limit = "but reflectances above 2 do not occur, not even on fluorescent paper; ";
    if (chart.data().IsSpectralPercent())
        return limit + "correct these values (they are told after the division of percent by 100)";
    return limit +
           "none of the first five rows, which alone decide on percent, holds a value above 10: "
           "if the table is in percent, move a light patch to the top or, where there is none, divide "
           "all values by 100, else check its scale";
}

} // namespace

std::vector<Finding> findInSpectra(const Inspected& inspected, bool isLight) {
    if (!inspected.spectra)
        return {};
    const Chart& chart = inspected.chart;
    const ChartSpectra& spectra = *inspected.spectra;
    std::vector<Finding> findings;
    if (const std::optional<Finding> narrow = findNarrowBands(chart, spectra.bands()))
        findings.push_back(*narrow);
    if (const std::optional<Finding> coarse = findCoarseBands(chart, spectra.bands()))
        findings.push_back(*coarse);
    if (!spectra.negative().empty())
        findings.push_back(warning(
            Kind::negativeReflectance,
            spectra.negative().told(chart, "reflectance ") +
                ", but none lies below 0; check the black calibration of the instrument and the signs"));
    if (!isLight && !spectra.large().empty())
        findings.push_back(warning(Kind::spectralScale, spectra.large().told(chart, "reflectance ") + ", " +
                                                            remedyOfScale(chart)));
    return findings;
}

} // namespace qxcms::qc
