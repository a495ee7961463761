// The squared colour differences of two Lab triples. The second triple is the standard.
#include <algorithm>
#include <cmath>

#include "colorspace/lab_formulas.h"

namespace qxcms::detail {

namespace {

double square(double x) noexcept {
    return x * x;
}

double radians(double degrees) noexcept {
    return degrees * kPi / 180.0;
}

double degrees(double radians) noexcept {
    return radians * 180.0 / kPi;
}

// The squared hue difference that is left when the chroma difference dC is taken from that of (a, b).
double squareHueDifference(const double* lab1, const double* lab2, double dC) noexcept {
    return square(lab2[1] - lab1[1]) + square(lab2[2] - lab1[2]) - square(dC);
}

} // namespace

double squareDeltaH(const double* lab1, const double* lab2) noexcept {
    return squareHueDifference(lab1, lab2, chroma(lab1[1], lab1[2]) - chroma(lab2[1], lab2[2]));
}

// CIE 1976: dL^2 + da^2 + db^2.
double squareDeltaE76(const double* lab1, const double* lab2) noexcept {
    return square(lab1[0] - lab2[0]) + square(lab1[1] - lab2[1]) + square(lab1[2] - lab2[2]);
}

// Kept on purpose: the weights are those of the second colour alone
// (colorDifference.cie94_takesTheChromaOfTheSecondColor).
// CIE 1994 with kL = kC = kH = 1: dL^2 + dH^2/SH^2 + (dC/SC)^2, SC = 1 + 0.045 C2, SH = 1 + 0.015 C2.
double squareDeltaE94(const double* lab1, const double* lab2) noexcept {
    const double c1 = chroma(lab1[1], lab1[2]);
    const double c2 = chroma(lab2[1], lab2[2]);
    const double dC = c2 - c1;
    const double dL = lab2[0] - lab1[0];
    const double dH2 = squareHueDifference(lab1, lab2, dC);
    const double sC = 1.0 + 0.045 * c2;
    const double sH = 1.0 + 0.015 * c2;
    return square(dL) + dH2 / square(sH) + square(dC / sC);
}

// CIEDE2000 with kL = kC = kH = 1, in the variant of this suite.
double squareDeltaE2000(const double* lab1, const double* lab2) noexcept {
    constexpr double kTwentyFiveTo7 = 6103515625.0;
    const double cMean = (chroma(lab1[1], lab1[2]) + chroma(lab2[1], lab2[2])) / 2.0;
    const double cMean7 = std::pow(cMean, 7.0);
    const double g = std::sqrt(cMean7 / (cMean7 + kTwentyFiveTo7));

    const double a1 = lab1[1] * (1.5 - 0.5 * g);
    const double a2 = lab2[1] * (1.5 - 0.5 * g);
    const double b1 = lab1[2];
    const double b2 = lab2[2];
    const double h1 = hueAngle(a1, b1);
    const double h2 = hueAngle(a2, b2);
    const double c1 = chroma(a1, b1);
    const double c2 = chroma(a2, b2);

    // Kept on purpose: half a turn is always added to the mean hue, never taken away
    // (colorDifference.ciede2000_ofHuesAround350And30DegreesHasAMeanHueOf370).
    double hMean = (h1 + h2) / 2.0;
    double dh = h1 - h2;
    if (std::fabs(dh) > kPi) {
        hMean += kPi;
        dh = dh <= 0.0 ? dh + kTwoPi : dh - kTwoPi;
    }

    const double dC = c1 - c2;
    const double cPrimeMean = (c1 + c2) / 2.0;
    const double dH = 2.0 * std::sqrt(c1 * c2) * std::sin(dh / 2.0);

    // The angles are 30, 6 and 63 degrees.
    const double t = 1.0 - 0.17 * std::cos(hMean - 0.5235987755833333) + 0.24 * std::cos(2.0 * hMean) +
                     0.32 * std::cos(3.0 * hMean + 0.10471975511666667) -
                     0.2 * std::cos(4.0 * hMean - 1.099557428725);
    const double lMean2 = square((lab1[0] + lab2[0]) / 2.0 - 50.0);
    const double sL = 1.0 + 0.015 * lMean2 / std::sqrt(20.0 + lMean2);
    const double sC = 1.0 + 0.045 * cPrimeMean;
    const double sH = 1.0 + 0.015 * cPrimeMean * t;

    const double theta = 30.0 * std::exp(-square((degrees(hMean) - 275.0) / 25.0));
    // Kept on purpose: the rotation term enters with a positive sine, and its chroma is the mean of the
    // unprimed chromas (colorDifference.ciede2000_ofBluesAddsTheRotationTerm).
    const double rC = 2.0 * g;
    const double p = dH / sH;
    const double q = dC / sC;
    return square((lab1[0] - lab2[0]) / sL) + square(p) + square(q) +
           std::sin(radians(2.0 * theta)) * rC * p * q;
}

// CMC(l:1): (dL/(l SL))^2 + dH^2/SH^2 + (dC/SC)^2, all weights from the standard.
double squareDeltaECmc(const double* lab1, const double* lab2, double l) noexcept {
    const double lightness = lab2[0];
    const double c = chroma(lab2[1], lab2[2]);
    const double h = hueAngle(lab2[1], lab2[2]);

    // 164 to 345 degrees, with 168 and 35 degrees inside the cosines.
    const double t = 2.862339973188889 <= h && h <= 6.021385919208333
                         ? 0.56 + std::fabs(0.2 * std::cos(h + 2.932153143266667))
                         : 0.36 + std::fabs(0.4 * std::cos(h + 0.6108652381805555));
    const double c4 = std::pow(c, 4.0);
    const double f = std::sqrt(c4 / (c4 + 1900.0));
    // Kept on purpose: a floor stands where the publication asks for L < 16
    // (colorDifference.cmc_usesTheFloorRatherThanTheTestAt16).
    const double sL = std::max(0.511, 0.040975 * lightness / (1.0 + 0.01765 * lightness));
    const double sC = 0.0638 * c / (1.0 + 0.0131 * c) + 0.638;
    const double sH = sC * (f * t + 1.0 - f);

    const double dL = lab2[0] - lab1[0];
    const double dC = c - chroma(lab1[1], lab1[2]);
    const double dH2 = squareHueDifference(lab1, lab2, dC);
    return square(dL / (l * sL)) + dH2 / square(sH) + square(dC / sC);
}

} // namespace qxcms::detail
