#include "colorspace/appearance_formulas.h"

#include <cmath>

#include "colorspace/lab_formulas.h"

namespace qxcms::detail {

namespace {

double square(double x) noexcept {
    return x * x;
}

} // namespace

void multiply(const double (&matrix)[3][3], const double* in, double* out) noexcept {
    const double x = in[0];
    const double y = in[1];
    const double z = in[2];
    for (int i = 0; i < 3; ++i)
        out[i] = matrix[i][0] * x + matrix[i][1] * y + matrix[i][2] * z;
}

double luminanceAdaptation(double adaptingLuminance) noexcept {
    const double fiveLa = 5.0 * adaptingLuminance;
    const double k4 = std::pow(1.0 / (fiveLa + 1.0), 4.0);
    return 0.2 * k4 * fiveLa + 0.1 * square(1.0 - k4) * std::pow(fiveLa, 0.3333333333333333);
}

double backgroundInduction(double n) noexcept {
    return 0.725 * std::pow(1.0 / n, 0.2);
}

double hueInDegrees(double a, double b) noexcept {
    const double h = std::atan2(b, a) * kDegrees;
    return h < 0.0 ? h + 360.0 : h;
}

double hueInRadians(double degrees) noexcept {
    return degrees * kPi / 180.0;
}

double squareDistanceJCh(const double* jch1, const double* jch2) noexcept {
    const double h1 = hueInRadians(jch1[2]);
    const double h2 = hueInRadians(jch2[2]);
    return square(jch2[0] - jch1[0]) + square(jch2[1] * std::cos(h2) - jch1[1] * std::cos(h1)) +
           square(jch2[1] * std::sin(h2) - jch1[1] * std::sin(h1));
}

} // namespace qxcms::detail
