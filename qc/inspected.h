/// @file
/// A chart whose values are looked at. Internal.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "qc/chart.h"
#include "qc/chart_spectra.h"
#include "qc/color_source.h"
#include "qc/difference.h"
#include "qc/inks.h"

namespace qxcms::qc {

/// What the checks of implausibilities() look at, which has at least one row.
struct Inspected {
    const Chart& chart;
    ColorSource source;                 ///< what is compared of it
    const std::vector<Lab>& lab;        ///< of each row, by the source
    const std::vector<Lab>& labFromXyz; ///< the same by XYZ; empty where there is none or XYZ is the source
    std::array<double, 3> white;        ///< of `lab`, with Y = 100; zeros where it is not known
    Inks inks;
    std::optional<ChartSpectra> spectra; ///< where they are the source

    const Lab& labOf(int row) const { return lab[static_cast<std::size_t>(row)]; }
    bool isPaper(int row) const { return inks.areKnown() && inks.isPaper(row); }
};

} // namespace qxcms::qc
