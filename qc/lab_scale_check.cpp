#include "qc/lab_scale_check.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "qc/finding_words.h"
#include "qc/missing_values.h"
#include "qc/rows_found.h"

namespace qxcms::qc {

namespace {

// Rounding and noise of dark samples bring a* and b* so far beyond what is possible.
constexpr double kImpossibleTolerance = 5.0;
constexpr double kLabOffset = 128.0; // of a* and b* in bytes
constexpr double kPaperOffset = 16.0;
// No light colour is as red and as yellow at once: the optimal colours of Y = 66 (L* 85) end far below.
constexpr double kLightRow = 85.0;
constexpr double kLargestLightAxis = 60.0;
// No chart is as dark throughout, of so many rows.
constexpr double kDarkChart = 2.0;
constexpr int kFewestDarkRows = 4;

// Z is 0 at a b* of 200 / 116 times L*, X at an a* of -500 / 116 times L* (CIE 15).
RowsFound impossibleRows(const Inspected& inspected) {
    RowsFound found;
    for (int row = 0; row < inspected.chart.rows(); ++row) {
        const Lab& color = inspected.labOf(row);
        const double excess =
            std::max(color[2] - 200.0 / 116.0 * color[0], -color[1] - 500.0 / 116.0 * color[0]);
        if (excess > kImpossibleTolerance && !isMarker(inspected, row))
            found.add(row, excess, excess);
    }
    return found;
}

RowsFound lightRowsFarOff(const Inspected& inspected) {
    RowsFound found;
    for (int row = 0; row < inspected.chart.rows(); ++row) {
        const Lab& color = inspected.labOf(row);
        const double least = std::min(color[1], color[2]);
        if (least > kLargestLightAxis && (color[0] > kLightRow || inspected.isPaper(row)))
            found.add(row, least, least);
    }
    return found;
}

Lab lightest(const std::vector<Lab>& lab) {
    return *std::max_element(lab.begin(), lab.end(),
                             [](const Lab& left, const Lab& right) { return left[0] < right[0]; });
}

bool isShifted(const std::vector<Lab>& lab) {
    const Lab light = lightest(lab);
    return std::none_of(lab.begin(), lab.end(),
                        [](const Lab& color) { return color[1] < 0.0 || color[2] < 0.0; }) &&
           std::abs(light[1] - kLabOffset) <= kPaperOffset && std::abs(light[2] - kLabOffset) <= kPaperOffset;
}

bool isDarkThroughout(const Inspected& inspected) {
    const std::vector<Lab>& lab = inspected.lab;
    const double most = lightest(lab)[0];
    return inspected.chart.rows() >= kFewestDarkRows && most > 0.0 && most <= kDarkChart &&
           std::any_of(lab.begin(), lab.end(), [&](const Lab& color) { return color != lab.front(); });
}

Finding scaleOf(const Inspected& inspected, const RowsFound& rows, const std::string& why) {
    const Lab& color = inspected.labOf(rows.worstRow());
    return warning(
        Finding::Kind::labScale,
        fileAnd(inspected.chart,
                rows.words(inspected.chart) + ": Lab " + numberText(color[0]) + ' ' + numberText(color[1]) +
                    ' ' + numberText(color[2]) + ", which " + why +
                    (isShifted(inspected.lab)
                         ? "; all a* and b* look as if 128 had been added to them, so take it off again"
                         : "; check the scale of L*, a* and b*")));
}

} // namespace

std::optional<Finding> findLabScale(const Inspected& inspected) {
    if (inspected.source != ColorSource::lab)
        return std::nullopt;
    const Chart& chart = inspected.chart;
    const RowsFound impossible = impossibleRows(inspected);
    if (impossible.rows() > 1 && 10 * impossible.rows() >= chart.rows())
        return scaleOf(inspected, impossible, "no light gives (X or Z would be below 0)");
    const RowsFound light = lightRowsFarOff(inspected);
    if (!light.empty())
        return scaleOf(inspected, light, "no light sample has");
    if (!isDarkThroughout(inspected))
        return std::nullopt;
    return warning(Finding::Kind::labScale,
                   fileAnd(chart, "L* is " + numberText(lightest(inspected.lab)[0]) + " at most in " +
                                      counted(chart.rows()) +
                                      " rows, as of Lab on a scale of 0 to 1; check the scale, L* of white "
                                      "is 100"));
}

} // namespace qxcms::qc
