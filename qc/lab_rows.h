/// @file
/// The Lab values of a chart's rows. Internal.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "qc/chart.h"
#include "qc/color_source.h"
#include "qc/difference.h"

namespace qxcms::qc {

class Conditions;

/// The source that `wanted` names, else the first that the chart has: spectra, Lab, XYZ.
/// @throws Refusal (notComparable) when the chart does not hold it.
ColorSource colorSource(const Chart& chart, std::optional<ColorSource> wanted);

/// The columns that hold it, in the order of the header's column arrays.
std::vector<std::int32_t> columnsOf(const Chart& chart, ColorSource source);

/// Lab of every row.
/// @param conditions not null for spectra and XYZ.
/// @throws Refusal (unreadable) for a spectrum that cannot be set (two samples at one wavelength, more than
/// 1024 of them) and for any value that is not finite, with row and column.
std::vector<Lab> labRows(const Chart& chart, ColorSource source, const Conditions* conditions);

/// How else the bands of a chart may have to be read.
struct SpectralReading {
    bool isReversed;  ///< the first value belongs to the last wavelength
    int shiftedBands; ///< by how many bands, to longer wavelengths
};

/// Lab of the spectrum of a row of a chart whose rows labRows() accepts.
Lab labOfSpectrum(const Chart& chart, int row, const Conditions& conditions, const SpectralReading& reading);

} // namespace qxcms::qc
