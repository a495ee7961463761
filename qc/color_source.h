/// @file
/// What the colours of a chart are taken from.
#pragma once

#include "qc/chart.h"

namespace qxcms::qc {

/// The columns that Lab values are taken from.
enum class ColorSource {
    spectra, ///< integrated under the conditions
    lab,     ///< as they stand
    xyz      ///< converted on the published white of the conditions; 0 to 1 is brought to 0 to 100
};

/// "spectra", "lab" or "xyz".
const char* nameOf(ColorSource source);

/// Whether the chart holds it.
bool holds(const Chart& chart, ColorSource source);

} // namespace qxcms::qc
