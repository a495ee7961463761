// Published relative spectral power distributions (CIE 15:2004, 380 to 730 nm at 10 nm) and what the tests of
// spectra share.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>

#include "spectral/tspectrum.h"

namespace qxcms::tests {

/// The 36 values of the standard sampling.
using Standard = std::array<double, TSpectrum::kStandardCount>;

/// The wavelength of slot k in nm.
inline double slotWavelength(int k) {
    return 380.0 + 10.0 * k;
}
/// The slot of a wavelength on the grid.
inline std::size_t slotOf(int wavelength) {
    return static_cast<std::size_t>((wavelength - 380) / 10);
}

inline Standard flat(double value) {
    Standard result;
    result.fill(value);
    return result;
}

/// 0 at 380 nm, 1 at 730 nm.
inline Standard ramp() {
    Standard result;
    for (std::size_t k = 0; k < result.size(); ++k)
        result[k] = static_cast<double>(k) / 35.0;
    return result;
}

/// Values without a pattern, between 0 and 1: the same on every machine.
inline Standard irregular(unsigned seed) {
    Standard result;
    for (double& value : result) {
        seed = seed * 1664525u + 1013904223u;
        value = static_cast<double>(seed >> 8) / 16777216.0;
    }
    return result;
}

inline TSpectrum spectrumOf(const Standard& values) {
    return TSpectrum(values.data());
}

inline Standard standardOf(const TSpectrum& spectrum) {
    Standard result;
    std::copy_n(spectrum.GetUniformSpectrum(nullptr, nullptr, nullptr), result.size(), result.begin());
    return result;
}

inline constexpr Standard kIlluminantA = {
    9.7951,  12.0853, 14.708,  17.6753, 20.995,  24.6709, 28.7027, 33.0859, 37.8121,
    42.8693, 48.2423, 53.9132, 59.8611, 66.0635, 72.4959, 79.1326, 85.947,  92.912,
    100.0,   107.184, 114.436, 121.731, 129.043, 136.346, 143.618, 150.836, 157.979,
    165.028, 171.963, 178.769, 185.429, 191.931, 198.261, 204.409, 210.365, 216.12};
inline constexpr Standard kIlluminantC = {33.0,  47.4,  63.3,  80.6,  98.1,  112.4, 121.5, 124.0, 123.1,
                                          123.8, 123.9, 120.7, 112.1, 102.3, 96.9,  98.0,  102.1, 105.2,
                                          105.3, 102.3, 97.8,  93.2,  89.7,  88.4,  88.1,  88.0,  87.8,
                                          88.2,  87.9,  86.3,  84.0,  80.2,  76.3,  72.4,  68.3,  64.4};
inline constexpr Standard kD50 = {24.488, 29.871, 49.308,  56.513, 60.034, 57.818, 74.825,  87.247,  90.612,
                                  91.368, 95.109, 91.963,  95.724, 96.613, 97.129, 102.099, 100.755, 102.317,
                                  100.0,  97.735, 98.918,  93.499, 97.688, 99.269, 99.042,  95.722,  98.857,
                                  95.667, 98.19,  103.003, 99.133, 87.381, 91.604, 92.889,  76.854,  86.511};
inline constexpr Standard kD55 = {32.584, 38.087,  60.949, 68.554, 71.577,  67.914, 85.605, 97.993,  100.463,
                                  99.913, 102.739, 98.078, 100.68, 100.695, 99.987, 104.21, 102.102, 102.968,
                                  100.0,  97.216,  97.749, 91.432, 94.419,  95.14,  94.22,  90.448,  92.33,
                                  88.854, 90.317,  93.95,  89.956, 79.677,  82.84,  84.844, 70.235,  79.301};
inline constexpr Standard kD65 = {49.9755, 54.6482, 82.7549, 91.486,  93.4318, 86.6823, 104.865, 117.008,
                                  117.812, 114.861, 115.923, 108.811, 109.354, 107.802, 104.79,  107.689,
                                  104.405, 104.046, 100.0,   96.3342, 95.788,  88.6856, 90.0062, 89.5991,
                                  87.6987, 83.2886, 83.6992, 80.0268, 80.2146, 82.2778, 78.2842, 69.7213,
                                  71.6091, 74.349,  61.604,  69.8856};
inline constexpr Standard kD75 = {
    66.703,  69.963,  101.929, 111.894, 112.798, 103.092, 121.198, 133.01, 132.355, 127.322, 126.8,  117.783,
    116.589, 113.702, 108.659, 110.445, 106.289, 104.904, 100.0,   95.616, 94.213,  86.997,  87.227, 86.14,
    83.581,  78.747,  78.428,  74.801,  74.324,  75.422,  71.576,  63.852, 65.076,  68.07,   56.443, 64.242};

} // namespace qxcms::tests
