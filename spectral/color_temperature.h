/// @file
/// Correlated colour temperature of a white. Internal.
#pragma once

namespace qxcms::detail {

/// The correlated colour temperature of X, Y, Z in kelvin; 0 when it cannot be computed.
double correlatedColorTemperature(const double* xyz) noexcept;

/// The nearest whole multiple of 10 K.
double onTemperatureRaster(double temperature) noexcept;

} // namespace qxcms::detail
