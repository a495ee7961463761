/// @file
/// The formulas of CIELAB and of its differences over plain doubles. Internal.
#pragma once

namespace qxcms::detail {

// Kept on purpose: the suite's programs share these ten-digit angle constants
// (labSpace.hue_ofATinyNegativeAIsTurnedByTheTenDigitPi).
inline constexpr double kPi = 3.1415926535;
inline constexpr double kTwoPi = 6.283185307;
inline constexpr double kHalfPi = 1.57079632675;

// f(t) = t * 7.787079 + 0.137931 up to 0.008856, t^0.33333333333333 above.
// Kept on purpose: the suite's programs agree on these rounded constants, not on the exact fractions
// (labSpace.f_usesTheFourteenDigitExponentRatherThanTheCubeRoot).
inline constexpr double kForwardThreshold = 0.008856;
inline constexpr double kForwardSlope = 7.787079;
inline constexpr double kForwardOffset = 0.137931;
inline constexpr double kCubeRoot = 0.33333333333333;

/// XYZ to Lab on `white`; negative components count as 0.
void xyzToLab(const double* white, const double* xyz, double* lab) noexcept;

/// Lab to XYZ on `white`; negative results become 0.
void labToXyz(const double* white, const double* lab, double* xyz) noexcept;

/// The hue angle of (a, b) in radians.
double hueAngle(double a, double b) noexcept;

/// sqrt(a^2 + b^2).
double chroma(double a, double b) noexcept;

// Squared differences of two Lab triples; the second is the standard.
double squareDeltaE76(const double* lab1, const double* lab2) noexcept;
double squareDeltaE94(const double* lab1, const double* lab2) noexcept;
double squareDeltaE2000(const double* lab1, const double* lab2) noexcept;
/// @param l the lightness factor of CMC(l:1).
double squareDeltaECmc(const double* lab1, const double* lab2, double l) noexcept;
/// The squared hue difference.
double squareDeltaH(const double* lab1, const double* lab2) noexcept;

} // namespace qxcms::detail
