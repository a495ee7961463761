#include "qc/chart_spectra.h"

#include <algorithm>
#include <cstdlib>

namespace qxcms::qc {

namespace {

// Noise and the black level of an instrument reach this far below zero, fluorescence this far above 1.
constexpr double kSmallestFraction = -0.005;
constexpr double kLargestFraction = 2.0;

// A line of a lamp or the narrow band of a display stands out this much from what is measured so far beside
// it, and falls off at once on one side at least, for it may lie between two bands. Reflectances, also of the
// purest inks, change more slowly; bands of fluorescent ones are 40 nm wide and more at half of their height,
// so that their top is twice what lies 20 nm beside it, and 1.2 times what lies 10 nm beside it.
constexpr double kLineRatio = 1.6;
constexpr double kSteepRatio = 1.4; // to the bands next to it, kNextNm away at most
constexpr int kNextNm = 12;
// Lines stand out from most of their spectrum, too; what is left between narrow gaps, as rare earths absorb
// them, does not.
constexpr double kMedianRatio = 1.25;
// What stands out as much is a band of light, however it falls off.
constexpr double kBandRatio = 2.0;
constexpr int kLineNearestNm = 15;
constexpr int kLineFarthestNm = 25;
// Nothing is a line that is small within its spectrum, or as small as the noise of dark samples.
constexpr double kSmallestLine = 0.02;
constexpr double kSmallestLineShare = 0.25;
// Rows that reach this part of the largest value of the chart tell what kind of measurement it is.
constexpr double kLightRowShare = 0.1;

double medianOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

std::size_t indexOf(int row) {
    return static_cast<std::size_t>(row);
}

} // namespace

ChartSpectra::ChartSpectra(const Chart& chart)
    : wavelengths(indexOf(chart.header().GetNrWaveLengths())), rows(chart.rows()) {
    chart.document->GetWaveLengths(chart.table, wavelengths.data());
    std::vector<double> first(wavelengths.size());
    chart.document->GetSpectrum(chart.table, 0, first.data());
    findNeighbours();
    std::vector<double> values(wavelengths.size());
    for (int row = 0; row < rows; ++row) {
        chart.document->GetSpectrum(chart.table, row, values.data());
        allEqual = allEqual && values == first;
        inspect(row, values);
    }
    allZero = allEqual && std::all_of(first.begin(), first.end(), [](double v) { return v == 0.0; });
}

double ChartSpectra::largest() const {
    return largestOfRow.empty() ? 0.0 : *std::max_element(largestOfRow.begin(), largestOfRow.end());
}

RowsFound ChartSpectra::lines() const {
    const double light = kLightRowShare * largest();
    int lightRows = 0;
    RowsFound withLine;
    for (int row = 0; row < rows; ++row) {
        const double most = largestOfRow[indexOf(row)];
        if (most < light)
            continue;
        ++lightRows;
        if (hasLine[indexOf(row)])
            withLine.add(row, most, most);
    }
    const bool isMost = 2 * withLine.rows() >= lightRows && 4 * withLine.rows() >= rows;
    return isMost ? withLine : RowsFound();
}

bool ChartSpectra::isBeside(std::size_t lower, std::size_t upper) const {
    const int distanceNm = wavelengths[upper] - wavelengths[lower];
    return distanceNm >= kLineNearestNm && distanceNm <= kLineFarthestNm;
}

// The band furthest from this one, towards another one, that is next to it; itself where there is none.
std::size_t ChartSpectra::nextOf(std::size_t band, std::size_t towards) const {
    std::size_t next = band;
    while (next != towards) {
        const std::size_t further = towards > band ? next + 1 : next - 1;
        if (std::abs(wavelengths[further] - wavelengths[band]) > kNextNm)
            break;
        next = further;
    }
    return next;
}

void ChartSpectra::findNeighbours() {
    const std::size_t count = wavelengths.size();
    for (std::size_t band = 0; band < count; ++band) {
        std::size_t lower = band;
        while (lower > 0 && wavelengths[band] - wavelengths[lower] < kLineNearestNm)
            --lower;
        std::size_t upper = band;
        while (upper + 1 < count && wavelengths[upper] - wavelengths[band] < kLineNearestNm)
            ++upper;
        if (isBeside(lower, band) && isBeside(band, upper))
            neighbours.push_back({band, lower, upper, nextOf(band, lower), nextOf(band, upper)});
    }
}

void ChartSpectra::inspect(int row, const std::vector<double>& values) {
    const auto [smallest, most] = std::minmax_element(values.begin(), values.end());
    zeroRows.push_back(*smallest == 0.0 && *most == 0.0);
    if (*smallest < kSmallestFraction)
        below.add(row, -*smallest, *smallest);
    if (*most > kLargestFraction)
        above.add(row, *most, *most);
    const double enough =
        std::max({kSmallestLine, kSmallestLineShare * *most, kMedianRatio * medianOf(values)});
    largestOfRow.push_back(*most);
    hasLine.push_back(std::any_of(neighbours.begin(), neighbours.end(), [&](const Neighbours& n) {
        const double value = values[n.band];
        const double beside = std::max(values[n.below], values[n.above]);
        const double next = std::min(values[n.nextBelow], values[n.nextAbove]);
        return value >= enough && (value >= kBandRatio * beside ||
                                   (value >= kLineRatio * beside && value >= kSteepRatio * next));
    }));
}

} // namespace qxcms::qc
