#include "colorspace/tcolorspace_ciecam02.h"

#include <cmath>

#include "colorspace/appearance_formulas.h"

using qxcms::detail::backgroundInduction;
using qxcms::detail::hueInDegrees;
using qxcms::detail::hueInRadians;
using qxcms::detail::kUsualBackground;
using qxcms::detail::kUsualLuminance;
using qxcms::detail::luminanceAdaptation;
using qxcms::detail::multiply;
using qxcms::detail::squareDistanceJCh;

namespace {

constexpr int kUnknownSurround = -1;
constexpr int kRefused = 1;

struct Surround {
    double c;
    double Nc;
    double F;
};

// Average, dim, dark. Kept on purpose: the dim Nc is 0.95, not the published 0.9
// (ciecam02.dimSurround_hasAnNcOf095).
constexpr int kSurroundCount = 3;
constexpr Surround kSurrounds[kSurroundCount] = {{0.69, 1.0, 1.0}, {0.59, 0.95, 0.9}, {0.525, 0.8, 0.8}};

// XYZ to the sharpened RGB of the adaptation transform CAT02, and back.
constexpr double kCat02[3][3] = {
    {0.7328, 0.4296, -0.1624}, {-0.7036, 1.6975, 0.0061}, {0.003, 0.0136, 0.9834}};
constexpr double kCat02Inverse[3][3] = {
    {1.096124, -0.278869, 0.182745}, {0.454369, 0.473533, 0.072098}, {-0.009628, -0.005698, 1.015326}};

// RGB of CAT02 to the cone responses of Hunt, Pointer and Estevez; and those to XYZ.
constexpr double kCones[3][3] = {
    {0.7409792, 0.218025, 0.0410058}, {0.2853532, 0.6242014, 0.0904454}, {-0.009628, -0.005698, 1.015326}};
constexpr double kConesInverse[3][3] = {
    {1.910197, -1.112124, 0.201908}, {0.37095, 0.629054, -8e-6}, {0.0, 0.0, 1.0}};

constexpr double kCompression = 0.42;
constexpr double kInverseCompression = 2.380952380952381; // 1 / 0.42
constexpr double kNoise = 0.305;                          // of the achromatic response

constexpr double k50000By13 = 3846.153846153846;
constexpr double k460By1403 = 0.32786885245901637;
constexpr double k220By460 = 0.47826086956521735;

constexpr const char* kFunctionNames[] = {"CIECAM02 Delta E"};

// The eccentricity of a hue, before 50000 / 13.
double eccentricity(double hueAngle) {
    return (std::cos(hueAngle + 2.0) + 3.8) * 0.25;
}

} // namespace

TColorSpace_CIECAM02::TColorSpace_CIECAM02(const double* newWhite, int surround) {
    SetToZero();
    if (InitializeViewingCondition(surround) != 0)
        errorNumber = kUnknownSurround;
    if (InitializeScene(newWhite, kUsualLuminance, kUsualBackground) != 0)
        errorNumber = kUnknownSurround;
}

TColorSpace_CIECAM02::~TColorSpace_CIECAM02() = default;

int TColorSpace_CIECAM02::ErrNo() {
    return errorNumber;
}

int TColorSpace_CIECAM02::SetToZero() {
    white[0] = white[1] = white[2] = 0.0;
    errorNumber = 0;
    c = Nc = F = La = Yb = Rw = Gw = Bw = Aw = D = n = Nbb = z = FL = 0.0;
    return 0;
}

int TColorSpace_CIECAM02::InitializeViewingCondition(int surround) {
    if (surround < 0 || surround >= kSurroundCount)
        return kRefused;
    c = kSurrounds[surround].c;
    Nc = kSurrounds[surround].Nc;
    F = kSurrounds[surround].F;
    return 0;
}

int TColorSpace_CIECAM02::InitializeScene(const double* newWhite, double adaptingLuminance,
                                          double background) {
    if (newWhite == nullptr)
        return kRefused;
    for (int i = 0; i < 3; ++i)
        white[i] = newWhite[i];
    La = adaptingLuminance;
    Yb = background;

    n = Yb / white[1];
    Nbb = backgroundInduction(n);
    z = 1.48 + std::sqrt(n);
    // F (1 - exp((-La - 42) / 92) / 3.6)
    D = F * (1.0 - 0.2777777777777778 * std::exp((-42.0 - La) / 92.0));
    FL = luminanceAdaptation(La);

    double response[3];
    ToCAT02(white, response);
    Rw = response[0];
    Gw = response[1];
    Bw = response[2];
    ChromaticAdaptation(response, response);
    ToHuntPointerEstevez(response, response);
    NonlinearAdaptation(response, response);
    Aw = achromaticResponse(response);
    return 0;
}

int TColorSpace_CIECAM02::ToCAT02(const double* xyz, double* rgb) const {
    if (xyz != nullptr && rgb != nullptr)
        multiply(kCat02, xyz, rgb);
    return 0;
}

int TColorSpace_CIECAM02::FromCAT02(const double* rgb, double* xyz) const {
    if (rgb != nullptr && xyz != nullptr)
        multiply(kCat02Inverse, rgb, xyz);
    return 0;
}

double TColorSpace_CIECAM02::adaptationFactor(double channelOfWhite) const {
    return white[1] * D / channelOfWhite + 1.0 - D;
}

void TColorSpace_CIECAM02::adaptationFactors(double* factors) const {
    factors[0] = adaptationFactor(Rw);
    factors[1] = adaptationFactor(Gw);
    factors[2] = adaptationFactor(Bw);
}

int TColorSpace_CIECAM02::ChromaticAdaptation(const double* rgb, double* adapted) const {
    if (rgb == nullptr || adapted == nullptr)
        return 0;
    double factors[3];
    adaptationFactors(factors);
    for (int i = 0; i < 3; ++i)
        adapted[i] = factors[i] * rgb[i];
    return 0;
}

int TColorSpace_CIECAM02::InverseChromaticAdaptation(const double* adapted, double* rgb) const {
    if (adapted == nullptr || rgb == nullptr)
        return 0;
    double factors[3];
    adaptationFactors(factors);
    for (int i = 0; i < 3; ++i)
        rgb[i] = adapted[i] / factors[i];
    return 0;
}

int TColorSpace_CIECAM02::ToHuntPointerEstevez(const double* rgb, double* cones) const {
    if (rgb != nullptr && cones != nullptr)
        multiply(kCones, rgb, cones);
    return 0;
}

int TColorSpace_CIECAM02::FromHuntPointerEstevez(const double* cones, double* xyz) const {
    if (cones != nullptr && xyz != nullptr)
        multiply(kConesInverse, cones, xyz);
    return 0;
}

// Kept on purpose: negative responses are not compressed by their size, as the publication does
// (ciecam02.negativeConeResponse_isNotANumber).
int TColorSpace_CIECAM02::NonlinearAdaptation(const double* cones, double* compressed) const {
    if (cones == nullptr || compressed == nullptr)
        return 0;
    for (int i = 0; i < 3; ++i) {
        const double p = std::pow(FL * cones[i] / 100.0, kCompression);
        compressed[i] = 400.0 * p / (p + 27.13) + 0.1;
    }
    return 0;
}

// Kept on purpose: what lies below 0.1 does not come back negative
// (ciecam02.inverseCompression_isNeverNegative).
int TColorSpace_CIECAM02::InverseNonlinearAdaptation(const double* compressed, double* cones) const {
    if (compressed == nullptr || cones == nullptr)
        return 0;
    for (int i = 0; i < 3; ++i) {
        const double u = std::fabs(compressed[i] - 0.1);
        cones[i] = 100.0 / FL * std::pow(27.13 * u / (400.0 - u), kInverseCompression);
    }
    return 0;
}

// A = (2 R' + G' + B' / 20 - 0.305) Nbb
double TColorSpace_CIECAM02::achromaticResponse(const double* compressed) const {
    return (2.0 * compressed[0] + compressed[1] + 0.05 * compressed[2] - kNoise) * Nbb;
}

// (1.64 - 0.29^n)^0.73
double TColorSpace_CIECAM02::chromaScale() const {
    return std::pow(1.64 - std::pow(0.29, n), 0.73);
}

void TColorSpace_CIECAM02::forward(const double* xyz, const double* factors, double scale,
                                   double* jch) const {
    double response[3];
    ToCAT02(xyz, response);
    for (int i = 0; i < 3; ++i)
        response[i] *= factors[i];
    ToHuntPointerEstevez(response, response);
    NonlinearAdaptation(response, response);
    const double R = response[0];
    const double G = response[1];
    const double B = response[2];

    const double a = R - 12.0 * G / 11.0 + B / 11.0;
    const double b = (R + G - 2.0 * B) * 0.1111111111111111;
    const double h = hueInDegrees(a, b);
    const double J = 100.0 * std::pow(achromaticResponse(response) / Aw, c * z);
    const double t =
        Nc * k50000By13 * Nbb * eccentricity(hueInRadians(h)) * std::sqrt(a * a + b * b) / (R + G + 1.05 * B);
    jch[0] = J;
    jch[1] = scale * std::sqrt(J / 100.0) * std::pow(t, 0.9);
    jch[2] = h;
}

int TColorSpace_CIECAM02::FromXYZ(const double* xyz, double* jch) const {
    return FromXYZBatch(xyz, jch, 1);
}

int TColorSpace_CIECAM02::FromXYZBatch(const double* xyz, double* jch, std::size_t count) const {
    if (xyz == nullptr || jch == nullptr)
        return 0;
    double factors[3];
    adaptationFactors(factors);
    const double scale = chromaScale();
    for (std::size_t i = 0; i < count; ++i)
        forward(xyz + 3 * i, factors, scale, jch + 3 * i);
    return 0;
}

// The opponent signals a and b of a chroma and a hue; the larger of sin h and cos h is divided by. C = 0
// makes p1 infinite, and a and b 0.
void TColorSpace_CIECAM02::opponents(const double* jch, double achromatic, double* aab) const {
    const double t = std::pow(jch[1] / (chromaScale() * std::sqrt(jch[0] / 100.0)), 1.1111111111111112);
    const double h = hueInRadians(jch[2]);
    const double sine = std::sin(h);
    const double cosine = std::cos(h);
    const double p1 = Nc * k50000By13 * Nbb * eccentricity(h) / t;
    const double numerator = 3.05 * (achromatic / Nbb + kNoise) * k460By1403;
    double a = 0.0;
    double b = 0.0;
    if (std::fabs(sine) >= std::fabs(cosine)) {
        const double cotangent = cosine / sine;
        b = numerator / (p1 / sine + k220By460 * cotangent - 0.01924447612259444 + 4.714896650035638);
        a = b * cotangent;
    } else {
        const double tangent = sine / cosine;
        a = numerator / (p1 / cosine + k220By460 + 4.695652173913044 * tangent);
        b = a * tangent;
    }
    aab[0] = achromatic;
    aab[1] = a;
    aab[2] = b;
}

// Kept on purpose: 460/1403 has fewer digits here than in the opponent signals, so that the way back does not
// end exactly where it began (ciecam02.aabToRgb_takesTenDigitsOf460By1403).
int TColorSpace_CIECAM02::AabToRGB(const double* aab, double* compressed) const {
    if (aab == nullptr || compressed == nullptr)
        return 0;
    const double q = (aab[0] / Nbb + kNoise) * 0.3278768852;
    const double a = aab[1];
    const double b = aab[2];
    compressed[0] = q + 0.32145 * a + 0.20527 * b;
    compressed[1] = q - 0.63507 * a - 0.18603 * b;
    compressed[2] = q - 0.15681 * a - 4.49038 * b;
    return 0;
}

int TColorSpace_CIECAM02::ToXYZ(const double* jch, double* xyz) const {
    if (jch == nullptr || xyz == nullptr)
        return 0;
    double triple[3];
    opponents(jch, Aw * std::pow(jch[0] / 100.0, 1.0 / (c * z)), triple);
    AabToRGB(triple, triple);
    InverseNonlinearAdaptation(triple, triple);
    FromHuntPointerEstevez(triple, triple);
    ToCAT02(triple, triple);
    InverseChromaticAdaptation(triple, triple);
    return FromCAT02(triple, xyz);
}

double TColorSpace_CIECAM02::CalcSquareDeltaEConverted(const double* jch1, const double* jch2,
                                                       int /*function*/) const {
    return jch1 == nullptr || jch2 == nullptr ? -1.0 : squareDistanceJCh(jch1, jch2);
}

double TColorSpace_CIECAM02::CalcSquareDeltaE(const double* xyz1, const double* xyz2, int function) const {
    if (xyz1 == nullptr || xyz2 == nullptr)
        return -1.0;
    double jch1[3];
    double jch2[3];
    FromXYZ(xyz1, jch1);
    FromXYZ(xyz2, jch2);
    return CalcSquareDeltaEConverted(jch1, jch2, function);
}

// Kept on purpose: a square, of which the handle takes the root (ciecam02.deltaE_isTheSquare).
double TColorSpace_CIECAM02::CalcDeltaE(const double* xyz1, const double* xyz2, int /*function*/) const {
    return CalcSquareDeltaE(xyz1, xyz2, 0);
}

int TColorSpace_CIECAM02::GetDifferenceFunctionListSize() {
    return 1;
}

const char* const* TColorSpace_CIECAM02::GetDifferenceFunctionList() {
    return kFunctionNames;
}
