/// @file
/// What CIECAM97s and CIECAM02 share. Internal.
#pragma once

namespace qxcms::detail {

/// The adapting luminance, 1000 / pi cd/m^2, and the background of scenes that are not described.
inline constexpr double kUsualLuminance = 318.30988618379;
inline constexpr double kUsualBackground = 20.0;

/// Degrees of one radian, from the ten-digit pi.
inline constexpr double kDegrees = 57.29577951471995;

/// `out` = matrix * `in`, rows applied to a column. `out` may be `in`.
void multiply(const double (&matrix)[3][3], const double* in, double* out) noexcept;

/// The luminance-level adaptation factor FL of an adapting luminance in cd/m^2:
/// k = 1 / (5 La + 1), FL = 0.2 k^4 (5 La) + 0.1 (1 - k^4)^2 (5 La)^(1/3).
double luminanceAdaptation(double adaptingLuminance) noexcept;

/// The background induction factor Nbb of n = Yb / Yw: 0.725 (1/n)^0.2.
double backgroundInduction(double n) noexcept;

/// The angle of (a, b) in degrees, 0 to 360.
double hueInDegrees(double a, double b) noexcept;

/// Degrees to radians, with the ten-digit pi.
double hueInRadians(double degrees) noexcept;

/// The squared distance of two colours (J, C, h) in (J, C cos h, C sin h), h in degrees.
double squareDistanceJCh(const double* jch1, const double* jch2) noexcept;

} // namespace qxcms::detail
