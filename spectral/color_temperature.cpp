// Chromaticity and correlated colour temperature of an illuminant.
//
// Robertson's method (J. Opt. Soc. Am. 58, 1528): in the CIE 1960 UCS diagram the colour lies between the two
// isotemperature lines where its distance changes sign; the reciprocal temperature is interpolated.
#include "spectral/color_temperature.h"

#include <cmath>

#include "spectral/isotemperature_lines.h"
#include "spectral/tilluminant.h"
#include "spectral/tilluminantandobserver.h"

namespace qxcms::detail {

namespace {

// Below this no component counts as light.
constexpr double kDark = 1e-20;

// The raster of the temperatures, in kelvin.
constexpr double kRaster = 10.0;

// (v - v_i) - t_i*(u - u_i), which is the distance from the line times sqrt(1 + t_i^2).
double scaledDistance(const IsotemperatureLine& line, double u, double v) {
    return (v - line.v) - line.t * (u - line.u);
}

double distance(const IsotemperatureLine& line, double scaled) {
    return scaled / std::sqrt(1.0 + line.t * line.t);
}

} // namespace

double correlatedColorTemperature(const double* xyz) noexcept {
    if (xyz[0] < kDark && xyz[1] < kDark && xyz[2] < kDark)
        return 0.0;
    const double sum = xyz[0] + 15.0 * xyz[1] + 3.0 * xyz[2];
    const double u = 4.0 * xyz[0] / sum;
    const double v = 6.0 * xyz[1] / sum;
    double before = scaledDistance(kIsotemperatureLines[0], u, v);
    for (int i = 1; i < kIsotemperatureLineCount; ++i) {
        const IsotemperatureLine& line = kIsotemperatureLines[i];
        const double here = scaledDistance(line, u, v);
        if ((before >= 0.0 && here < 0.0) || (before < 0.0 && here >= 0.0)) {
            const IsotemperatureLine& last = kIsotemperatureLines[i - 1];
            const double d0 = distance(last, before);
            const double d1 = distance(line, here);
            const double f = d0 / (d0 - d1);
            return 1.0 / (last.reciprocal + f * (line.reciprocal - last.reciprocal));
        }
        before = here;
    }
    return 0.0;
}

double onTemperatureRaster(double temperature) noexcept {
    return std::trunc(temperature / kRaster + 0.5) * kRaster;
}

} // namespace qxcms::detail

int TIlluminant::GetChromaticityAndTemperature(double* x, double* y, double* temperature) const {
    // Kept on purpose: it is the registered illuminant of this name that is looked at, not this object's own
    // spectrum (colorTemperature.illuminantsSpectrum_isTakenFromTheRegistryByName).
    const TIlluminantAndObserver weighting(GetName(), TObserver::sObsNameList[0],
                                           TIlluminantAndObserver::kMaxPoints);
    double xyz[3] = {0.0, 0.0, 0.0};
    weighting.GetXYZWhite(xyz);
    const double sum = xyz[0] + xyz[1] + xyz[2];
    if (x != nullptr)
        *x = xyz[0] / sum;
    if (y != nullptr)
        *y = xyz[1] / sum;
    if (temperature != nullptr)
        *temperature = qxcms::detail::onTemperatureRaster(qxcms::detail::correlatedColorTemperature(xyz));
    return 0;
}

double TIlluminant::GetColorTemperature() const {
    double temperature = 0.0;
    GetChromaticityAndTemperature(nullptr, nullptr, &temperature);
    return temperature;
}
