/// @file
/// Robertson's isotemperature lines. Internal.
#pragma once

namespace qxcms::detail {

/// One line of correlated colour temperature in the CIE 1960 UCS diagram.
struct IsotemperatureLine {
    double reciprocal; ///< reciprocal temperature in 1/K
    double u;          ///< where the line crosses the Planckian locus
    double v;
    double t; ///< its slope
};

inline constexpr int kIsotemperatureLineCount = 31;

extern const IsotemperatureLine kIsotemperatureLines[kIsotemperatureLineCount];

} // namespace qxcms::detail
