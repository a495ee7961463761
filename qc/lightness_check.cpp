#include "qc/lightness_check.h"

#include "qc/finding_words.h"
#include "qc/missing_values.h"
#include "qc/relative_xyz.h"
#include "qc/rows_found.h"

namespace qxcms::qc {

namespace {

// As kLargestReflectedY.
constexpr double kLargestLightness = 105.0;
// Noise of dark samples, about 0.2 of Y.
constexpr double kSmallestLightness = -2.0;

} // namespace

std::optional<Finding> findTooLight(const Inspected& inspected) {
    const bool byY = inspected.source == ColorSource::xyz;
    const double limit = byY ? kLargestReflectedY : kLargestLightness;
    RowsFound light;
    for (int row = 0; row < inspected.chart.rows(); ++row) {
        const double lightness = inspected.labOf(row)[0];
        const double value = byY ? luminanceOf(lightness) : lightness;
        if (value > limit)
            light.add(row, value, value);
    }
    if (light.empty())
        return std::nullopt;
    return warning(Finding::Kind::tooLight,
                   light.told(inspected.chart, byY ? "Y " : "L* ") + ", but nothing that reflects exceeds " +
                       numberText(limit) +
                       "; check the scale of the values and whether light was measured instead of a print");
}

std::optional<Finding> findBelowBlack(const Inspected& inspected) {
    if (inspected.spectra)
        return std::nullopt;
    RowsFound dark;
    for (int row = 0; row < inspected.chart.rows(); ++row) {
        const double lightness = inspected.labOf(row)[0];
        if (lightness < kSmallestLightness && !isMarker(inspected, row))
            dark.add(row, -lightness, lightness);
    }
    if (dark.empty())
        return std::nullopt;
    return warning(Finding::Kind::negativeReflectance,
                   dark.told(inspected.chart, "L* ") +
                       ", but none lies below 0; check the signs of the values, or leave rows out that were "
                       "not measured");
}

} // namespace qxcms::qc
