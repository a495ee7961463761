/// @file
/// The rows of a table made from arrays. Internal.
#pragma once

#include "cgats/tcgatstable.h"

namespace qxcms::detail {

/// Measured or computed data of the samples of a chart: arrays of a row per sample. Only read.
struct ChartArrays {
    double full = 100.0; ///< the device value at full strength
    double zero = 0.0;   ///< the device value of no colorant
    int sets = 0;
    const char* const* names = nullptr; ///< null: the samples are numbered from 1
    int colorants = 0;
    const double* const* device = nullptr;
    const double* const* lab = nullptr;     ///< may be null
    const double* const* xyz = nullptr;     ///< may be null
    const double* const* spectra = nullptr; ///< may be null
};

/// The longest sample name that is kept.
inline constexpr int kLongestSampleName = 127;

/// A device value as a percentage: "%3.5f", or a TAB and "0.0" below 0.0001.
/// @param out receives at most kFixedTextSize characters, the terminator included.
void deviceText(double value, double full, double zero, char* out) noexcept;

/// Fills an empty table, one row per sample: name, device values, CIELAB, XYZ, spectrum.
/// @return 0, or a table error: that of the table; 1 without a header; 5, 3 when the numbers of samples or
/// fields are not those of the arrays; 8 when the first field is no text; 9 when a device field is no number;
/// 10 for a null row or no memory.
int fillTable(TCgatsTable& table, const ChartArrays& chart);

} // namespace qxcms::detail
