// A printing press made of formulas: inks in percent, the colours and reflectances that they give.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace qxcms::tests {

using Inks = std::array<double, 4>; // cyan, magenta, yellow, black in percent
using Triple = std::array<double, 3>;

constexpr const char* kInkFields = "CMYK_C CMYK_M CMYK_Y CMYK_K";
constexpr const char* kLabFields = "LAB_L LAB_A LAB_B";
constexpr const char* kXyzFields = "XYZ_X XYZ_Y XYZ_Z";

/// 1,617 patches, each other inks, the paper first: 11 steps of cyan, 7 of magenta and yellow, 3 of black.
std::vector<Inks> fullChart();

/// 25 patches: the paper, then the inks and their overprints at 20, 50 and 100 percent.
std::vector<Inks> smallChart();

/// The colour under D50 for the 2 degree observer: the areas that dots leave and cover (Demichel), in Lab.
Triple labOf(const Inks& inks);

/// Of a Lab under D50 for the 2 degree observer (white 96.422, 100, 82.521), Y = 100 for the white.
Triple xyzOf(const Triple& lab);

/// At a wavelength, as a fraction: block dyes on a paper of 0.85.
double reflectanceOf(const Inks& inks, double nm);

/// The spectral radiance of a thermal radiator of 2856 K, 100 at 560 nm (CIE illuminant A).
double lampAt(double nm);

/// Wavelengths of a regular sampling.
struct Sampling {
    int firstNm;
    int lastNm;
    int stepNm;

    std::vector<int> wavelengths() const;
    std::string fields() const;
};

/// The text of a row, from words and numbers.
std::string join(const std::vector<std::string>& parts);
std::string numbers(const double* first, std::size_t count, double factor = 1);

template <std::size_t Count>
std::string numbers(const std::array<double, Count>& values, double factor = 1) {
    return numbers(values.data(), Count, factor);
}

/// The reflectances of a patch, times a factor.
std::string spectrum(const Inks& inks, const Sampling& sampling, double factor = 1);

/// The same rows in another order, each one used.
template <typename Row>
std::vector<Row> shuffled(const std::vector<Row>& rows) {
    constexpr std::size_t kStride = 29; // prime, and no divisor of the sizes in use
    std::vector<Row> other;
    for (std::size_t i = 0; i < rows.size(); ++i)
        other.push_back(rows[(i * kStride + 7) % rows.size()]);
    return other;
}

} // namespace qxcms::tests
