#include "qc/relative_xyz.h"

#include <cmath>

namespace qxcms::qc {

namespace {

constexpr double kLinearBelow = 8.0; // L*
constexpr double kSlope = 903.2962962962963;

} // namespace

double luminanceOf(double lightness) {
    return lightness > kLinearBelow ? 100.0 * std::pow((lightness + 16.0) / 116.0, 3.0)
                                    : 100.0 * lightness / kSlope;
}

std::array<double, 3> relativeXyzOf(const Lab& lab) {
    const double fy = (lab[0] + 16.0) / 116.0;
    const auto percent = [](double f) { return luminanceOf(116.0 * f - 16.0); };
    return {percent(fy + lab[1] / 500.0), percent(fy), percent(fy - lab[2] / 200.0)};
}

Lab labOfRelativeXyz(const std::array<double, 3>& percent) {
    std::array<double, 3> f{};
    for (std::size_t i = 0; i < f.size(); ++i) {
        const double part = percent[i] / 100.0;
        f[i] = part > kLinearBelow / kSlope ? std::pow(part, 1.0 / 3.0) : (kSlope * part + 16.0) / 116.0;
    }
    return {116.0 * f[1] - 16.0, 500.0 * (f[0] - f[1]), 200.0 * (f[1] - f[2])};
}

} // namespace qxcms::qc
