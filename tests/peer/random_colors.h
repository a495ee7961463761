// Colours at random for the comparisons with Little CMS.
#pragma once

#include <array>
#include <random>

#include <lcms2.h>

#include "tests/cgats/documents.h"

namespace qxcms::tests {

using Triple = std::array<double, 3>;

/// How many colours are compared; fewer in slow builds.
inline constexpr int kColors = static_cast<int>(1e6 / kSlowness);

/// The same colours in every run.
class RandomColors {
public:
    /// Evenly from `low` to `high`.
    double between(double low, double high) {
        return low + (high - low) * static_cast<double>(bits() >> 11) * 0x1p-53;
    }
    /// From 0 to 1.3 times the white, a fifth of the components below the threshold of CIELAB.
    Triple xyz(const Triple& white) {
        Triple color;
        for (std::size_t i = 0; i < 3; ++i) {
            const double u = between(0.0, 1.0);
            color[i] = 1.3 * white[i] * u * u * u;
        }
        return color;
    }
    Triple lab() { return {between(0.0, 100.0), between(-128.0, 128.0), between(-128.0, 128.0)}; }

private:
    std::mt19937_64 bits{20040159};
};

inline cmsCIEXYZ theirXyz(const Triple& xyz) {
    return {xyz[0], xyz[1], xyz[2]};
}
inline cmsCIELab theirLab(const Triple& lab) {
    return {lab[0], lab[1], lab[2]};
}

} // namespace qxcms::tests
