// CIEDE2000 (ISO/CIE 11664-6) in the notation of G. Sharma, W. Wu, E. N. Dalal, "The CIEDE2000
// Color-Difference Formula: Implementation Notes, Supplementary Test Data, and Mathematical Observations",
// Color Research and Application 30 (2005) 21-30. Angles are in degrees.
#include "qc/ciede2000.h"

#include <cmath>

namespace qxcms::qc {

namespace {

constexpr double kDegreesPerRadian = 57.295779513082320877;

/// L', C' and h' of a colour; C' and h' come from a', which is a* stretched for colours near the neutral.
struct Primed {
    double lightness;
    double chroma;
    double hue; ///< 0 to 360; 0 for a neutral
};

/// L', C' and h' of two colours.
struct PrimedPair {
    Primed first;
    Primed second;

    /// A neutral has no hue.
    bool hasNeutral() const { return first.chroma * second.chroma == 0.0; }
};

double sine(double degrees) {
    return std::sin(degrees / kDegreesPerRadian);
}

double cosine(double degrees) {
    return std::cos(degrees / kDegreesPerRadian);
}

double mean(double left, double right) {
    return (left + right) / 2.0;
}

/// sqrt(C^7 / (C^7 + 25^7)), the fraction reduced by C^7, which may exceed the range of a double.
double rootOfSeventhPowers(double chroma) {
    return chroma == 0.0 ? 0.0 : std::sqrt(1.0 / (1.0 + std::pow(25.0 / chroma, 7)));
}

double hueAngle(double a, double b) {
    if (a == 0.0 && b == 0.0)
        return 0.0;
    const double angle = std::atan2(b, a) * kDegreesPerRadian;
    return angle < 0.0 ? angle + 360.0 : angle;
}

Primed primed(const Lab& lab, double stretch) {
    const double a = stretch * lab[1];
    return {lab[0], std::hypot(a, lab[2]), hueAngle(a, lab[2])};
}

PrimedPair primed(const Lab& first, const Lab& second) {
    const double chroma = mean(std::hypot(first[1], first[2]), std::hypot(second[1], second[2]));
    const double stretch = 1.0 + 0.5 * (1.0 - rootOfSeventhPowers(chroma));
    return {primed(first, stretch), primed(second, stretch)};
}

/// True when the shorter way between two hues leads across 0 degrees. Opposite hues are not such, also when
/// rounding puts them a little further apart than half a turn.
bool meetAcrossZero(const PrimedPair& pair) {
    constexpr double kRounding = 1e-9;
    return std::fabs(pair.second.hue - pair.first.hue) > 180.0 + kRounding;
}

/// dh'.
double hueAngleDifference(const PrimedPair& pair) {
    if (pair.hasNeutral())
        return 0.0;
    const double difference = pair.second.hue - pair.first.hue;
    if (!meetAcrossZero(pair))
        return difference;
    return difference > 0.0 ? difference - 360.0 : difference + 360.0;
}

/// dH'.
double hueDifference(const PrimedPair& pair) {
    return 2.0 * std::sqrt(pair.first.chroma * pair.second.chroma) * sine(hueAngleDifference(pair) / 2.0);
}

/// The mean of h'. With a neutral it is the hue of the other colour, that of the neutral being 0.
double meanHue(const PrimedPair& pair) {
    const double sum = pair.first.hue + pair.second.hue;
    if (pair.hasNeutral())
        return sum;
    if (!meetAcrossZero(pair))
        return sum / 2.0;
    return sum < 360.0 ? (sum + 360.0) / 2.0 : (sum - 360.0) / 2.0;
}

/// S_L of the mean lightness.
double lightnessWeight(double lightness) {
    const double square = (lightness - 50.0) * (lightness - 50.0);
    return 1.0 + 0.015 * square / std::sqrt(20.0 + square);
}

/// S_C of the mean chroma.
double chromaWeight(double chroma) {
    return 1.0 + 0.045 * chroma;
}

/// T.
double hueDependence(double hue) {
    return 1.0 - 0.17 * cosine(hue - 30.0) + 0.24 * cosine(2.0 * hue) + 0.32 * cosine(3.0 * hue + 6.0) -
           0.20 * cosine(4.0 * hue - 63.0);
}

/// S_H of the mean chroma and the mean hue.
double hueWeight(double chroma, double hue) {
    return 1.0 + 0.015 * chroma * hueDependence(hue);
}

/// R_T of the mean chroma and the mean hue: blues lie on tilted ellipses.
double rotation(double chroma, double hue) {
    const double distance = (hue - 275.0) / 25.0;
    const double angle = 30.0 * std::exp(-distance * distance);
    return -sine(2.0 * angle) * 2.0 * rootOfSeventhPowers(chroma);
}

} // namespace

double ciede2000(const Lab& sample, const Lab& standard) {
    const PrimedPair pair = primed(standard, sample);
    const double chromaMean = mean(pair.first.chroma, pair.second.chroma);
    const double hueMean = meanHue(pair);
    const double lightness = (pair.second.lightness - pair.first.lightness) /
                             lightnessWeight(mean(pair.first.lightness, pair.second.lightness));
    const double chroma = (pair.second.chroma - pair.first.chroma) / chromaWeight(chromaMean);
    const double hue = hueDifference(pair) / hueWeight(chromaMean, hueMean);
    return std::sqrt(lightness * lightness + chroma * chroma + hue * hue +
                     rotation(chromaMean, hueMean) * chroma * hue);
}

} // namespace qxcms::qc
