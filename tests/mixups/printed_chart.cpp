#include "tests/mixups/printed_chart.h"

#include <cmath>
#include <sstream>

namespace qxcms::tests {

namespace {

// The solids and overprints of coated offset paper, rounded: paper, C, M, CM, Y, CY, MY, CMY.
constexpr std::array<Triple, 8> kOverprints = {{{95, 0, -2},
                                                {55, -37, -50},
                                                {48, 74, -3},
                                                {24, 22, -46},
                                                {89, -5, 93},
                                                {50, -65, 27},
                                                {47, 68, 48},
                                                {23, 0, 0}}};
constexpr double kBlackL = 16;

} // namespace

std::vector<Inks> fullChart() {
    std::vector<Inks> chart;
    for (const double black : {0, 40, 80})
        for (const double yellow : {0, 10, 20, 40, 60, 80, 100})
            for (const double magenta : {0, 10, 20, 40, 60, 80, 100})
                for (int cyan = 0; cyan <= 100; cyan += 10)
                    chart.push_back({static_cast<double>(cyan), magenta, yellow, black});
    return chart;
}

std::vector<Inks> smallChart() {
    std::vector<Inks> chart = {{0, 0, 0, 0}};
    for (const double tone : {20, 50, 100})
        for (const Inks& solid : {Inks{1, 0, 0, 0}, Inks{0, 1, 0, 0}, Inks{0, 0, 1, 0}, Inks{0, 0, 0, 1},
                                  Inks{0, 1, 1, 0}, Inks{1, 0, 1, 0}, Inks{1, 1, 0, 0}, Inks{1, 1, 1, 0}})
            chart.push_back({tone * solid[0], tone * solid[1], tone * solid[2], tone * solid[3]});
    return chart;
}

Triple labOf(const Inks& inks) {
    Triple lab = {0, 0, 0};
    for (std::size_t overprint = 0; overprint < kOverprints.size(); ++overprint) {
        double area = 1;
        for (std::size_t ink = 0; ink < 3; ++ink)
            area *= (overprint >> ink) & 1 ? inks[ink] / 100 : 1 - inks[ink] / 100;
        for (std::size_t i = 0; i < 3; ++i)
            lab[i] += area * kOverprints[overprint][i];
    }
    const double black = inks[3] / 100;
    lab[0] = (1 - black) * lab[0] + black * kBlackL * lab[0] / kOverprints[0][0];
    lab[1] *= 1 - black;
    lab[2] *= 1 - black;
    return lab;
}

// CIE 15: the inverse of the functions of X, Y and Z; the white of D50 is that of ASTM E308.
Triple xyzOf(const Triple& lab) {
    const double fy = (lab[0] + 16) / 116;
    const Triple functions = {fy + lab[1] / 500, fy, fy - lab[2] / 200};
    const Triple white = {96.422, 100, 82.521};
    Triple xyz{};
    for (std::size_t i = 0; i < 3; ++i)
        xyz[i] = white[i] * (functions[i] > 24.0 / 116 ? functions[i] * functions[i] * functions[i]
                                                       : (functions[i] - 16.0 / 116) * 108 / 841);
    return xyz;
}

double reflectanceOf(const Inks& inks, double nm) {
    const std::size_t dye = nm >= 600 ? 0 : nm >= 500 ? 1 : 2;
    return 0.85 * (1 - 0.93 * inks[dye] / 100) * (1 - 0.97 * inks[3] / 100);
}

// CIE 15, equation of illuminant A.
double lampAt(double nm) {
    const double numerator = std::exp(1.435e7 / (2848 * 560.0)) - 1;
    return 100 * std::pow(560 / nm, 5) * numerator / (std::exp(1.435e7 / (2848 * nm)) - 1);
}

std::vector<int> Sampling::wavelengths() const {
    std::vector<int> all;
    for (int nm = firstNm; nm <= lastNm; nm += stepNm)
        all.push_back(nm);
    return all;
}

std::string Sampling::fields() const {
    std::vector<std::string> names;
    for (const int nm : wavelengths())
        names.push_back("SPECTRAL_NM_" + std::to_string(nm));
    return join(names);
}

std::string join(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : " ") + part;
    return text;
}

std::string numbers(const double* first, std::size_t count, double factor) {
    std::ostringstream text;
    text.precision(9);
    for (std::size_t i = 0; i < count; ++i)
        text << (i == 0 ? "" : " ") << first[i] * factor;
    return text.str();
}

std::string spectrum(const Inks& inks, const Sampling& sampling, double factor) {
    std::vector<double> values;
    for (const int nm : sampling.wavelengths())
        values.push_back(reflectanceOf(inks, nm));
    return numbers(values.data(), values.size(), factor);
}

} // namespace qxcms::tests
