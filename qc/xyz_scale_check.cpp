#include "qc/xyz_scale_check.h"

#include <string>

#include "qc/finding_words.h"
#include "qc/relative_xyz.h"

namespace qxcms::qc {

namespace {

// Tristimulus values whose white has Y = 1 stay below this.
constexpr double kLargestUnitY = 2.0;

double rawY(const Chart& chart, int row) {
    return chart.data().GetValues(chart.header().GetXyzColumns()[1])->GetDouble(row);
}

int rowOfLargestY(const Chart& chart) {
    int largest = 0;
    for (int row = 1; row < chart.rows(); ++row)
        largest = rawY(chart, row) > rawY(chart, largest) ? row : largest;
    return largest;
}

} // namespace

double scaleOfXyz(const Chart& chart) {
    const double largest = rawY(chart, rowOfLargestY(chart));
    return largest > 0.0 && largest < kLargestUnitY ? 100.0 : 1.0;
}

std::optional<Finding> findXyzScale(const Inspected& inspected) {
    const Chart& chart = inspected.chart;
    if (inspected.source != ColorSource::xyz || scaleOfXyz(chart) == 1.0)
        return std::nullopt;
    const int largestRow = rowOfLargestY(chart);
    const double largest = rawY(chart, largestRow);
    const std::string text = placeOf(chart, largestRow) + " holds the largest Y of " + counted(chart.rows()) +
                             ", " + numberText(largest) + "; ";
    // Whether the Lab at hand were made of the values times 100.
    const bool isBrought = luminanceOf(inspected.labOf(largestRow)[0]) > 10.0 * largest;
    if (isBrought)
        return Finding{Finding::Severity::note, Finding::Kind::xyzScale,
                       text +
                           "XYZ are taken to be on a scale of 0 to 1 and are read times 100; if the samples "
                           "are that dark on a scale of 100, add a light patch"};
    return warning(Finding::Kind::xyzScale, text + "XYZ are expected on the scale where white has Y = 100");
}

} // namespace qxcms::qc
