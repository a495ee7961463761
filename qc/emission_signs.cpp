#include "qc/emission_signs.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include "qc/finding_words.h"
#include "qc/lightness_check.h"
#include "qc/relative_xyz.h"
#include "qc/rows_found.h"

namespace qxcms::qc {

namespace {

// White against the sum of red, green and blue, as a part of white. Displays stay within, also with some
// cross-talk; of prints the sum is about two thirds.
constexpr double kSumTolerance = 0.05;

// "its 24 rows are".
std::string itsRows(const Chart& chart) {
    return chart.rows() == 1 ? "its row is" : "its " + counted(chart.rows()) + " rows are";
}

std::string signInSpectra(const Inspected& inspected) {
    const Chart& chart = inspected.chart;
    const ChartSpectra& spectra = *inspected.spectra;
    // Beyond 200 percent nothing reflects; fractions above 2 may be percent that was not recognised.
    if (chart.data().IsSpectralPercent() && 4 * spectra.large().rows() >= chart.rows())
        return "spectra that reach beyond 200 percent, as only those of light do: " +
               spectra.large().words(chart) + " (" + numberText(100.0 * spectra.largest()) + " at most)";
    const RowsFound lines = spectra.lines();
    if (!lines.empty())
        return "narrow lines as in the spectra of light sources and displays: " + lines.words(chart) +
               " (values up to " + numberText(spectra.largest()) + ")";
    return "";
}

// The white of a display, or a good part of all colours, is lighter than any paper.
std::string signInBrightness(const Inspected& inspected) {
    RowsFound bright;
    bool whiteIsBright = false;
    for (int row = 0; row < inspected.chart.rows(); ++row) {
        const double luminance = luminanceOf(inspected.labOf(row)[0]);
        if (!(luminance > kLargestReflectedY))
            continue;
        bright.add(row, luminance, luminance);
        whiteIsBright = whiteIsBright || inspected.inks.isPaper(row);
    }
    if (whiteIsBright || (bright.rows() > 1 && 10 * bright.rows() >= inspected.chart.rows()))
        return "Y above 120 on a white of 100 with RGB device values, as in measurements of a display: " +
               bright.words(inspected.chart) + " (" + numberText(bright.most()) + ")";
    return "";
}

// The first row of each; -1 where there is none.
struct DisplayRows {
    std::array<int, 4> colors = {-1, -1, -1, -1}; // red, green, blue and white
    int black = -1;

    bool areComplete() const { return std::find(colors.begin(), colors.end(), -1) == colors.end(); }
};

DisplayRows displayRows(const Inspected& inspected) {
    DisplayRows found;
    for (int row = inspected.chart.rows() - 1; row >= 0; --row) {
        const std::vector<double> parts = inspected.inks.of(row);
        const std::array<bool, 3> on = {parts[0] <= kInkTolerance, parts[1] <= kInkTolerance,
                                        parts[2] <= kInkTolerance};
        const std::array<bool, 3> off = {parts[0] >= 1.0 - kInkTolerance, parts[1] >= 1.0 - kInkTolerance,
                                         parts[2] >= 1.0 - kInkTolerance};
        for (std::size_t i = 0; i < 3; ++i) {
            if (on[i] && off[(i + 1) % 3] && off[(i + 2) % 3])
                found.colors[i] = row;
        }
        if (on[0] && on[1] && on[2])
            found.colors[3] = row;
        if (off[0] && off[1] && off[2])
            found.black = row;
    }
    return found;
}

// Whether red, green and blue make white, each less the black.
bool addUp(const Inspected& inspected, const DisplayRows& rows) {
    const auto xyz = [&](int row) {
        return row < 0 ? std::array<double, 3>() : relativeXyzOf(inspected.labOf(row));
    };
    const std::array<double, 3> white = xyz(rows.colors[3]);
    const std::array<double, 3> black = xyz(rows.black);
    // Rows that are all equal add up as well.
    if (!(white[1] > 2.0 * black[1]))
        return false;
    for (std::size_t i = 0; i < 3; ++i) {
        const double sum =
            xyz(rows.colors[0])[i] + xyz(rows.colors[1])[i] + xyz(rows.colors[2])[i] - 2.0 * black[i];
        if (!(std::abs(sum - white[i]) <= kSumTolerance * white[i]))
            return false;
    }
    return true;
}

// Inks take light away: those of red, green and blue prints sum up to far less than the paper.
std::string signInSums(const Inspected& inspected) {
    const DisplayRows rows = displayRows(inspected);
    if (!rows.areComplete() || !addUp(inspected, rows))
        return "";
    return "row " + std::to_string(rows.colors[3] + 1) + ", white, has the sum of rows " +
           std::to_string(rows.colors[0] + 1) + ", " + std::to_string(rows.colors[1] + 1) + " and " +
           std::to_string(rows.colors[2] + 1) + ", red, green and blue (Y " +
           numberText(luminanceOf(inspected.labOf(rows.colors[3])[0])) +
           "), as on a display or in a computed RGB space";
}

std::string signInDeviceValues(const Inspected& inspected) {
    if (!inspected.inks.areKnown() || !inspected.inks.areLight())
        return "";
    const std::string found = signInBrightness(inspected);
    return found.empty() ? signInSums(inspected) : found;
}

// Empty where nothing shows it.
std::string signOfEmission(const Inspected& inspected) {
    const std::string found = inspected.spectra ? signInSpectra(inspected) : "";
    return found.empty() ? signInDeviceValues(inspected) : found;
}

} // namespace

std::optional<Finding> findEmission(const Inspected& inspected, bool isDeclared) {
    const std::string found = isDeclared ? "the file says that it holds measurements of light sources or "
                                           "displays"
                                         : signOfEmission(inspected);
    if (found.empty())
        return std::nullopt;
    return warning(Finding::Kind::emission,
                   fileAnd(inspected.chart, found + "; " + itsRows(inspected.chart) +
                                                " read as samples that reflect, so compare them only with "
                                                "measurements of light that are scaled alike"));
}

} // namespace qxcms::qc
