#include "colorspace/tlabspace.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>

#include "colorspace/lab_formulas.h"
#include "platform/utility.h"

namespace {

constexpr int kBadWhite = 2;
constexpr const char* kModule = "tlabspace";
constexpr int kWhiteLine = 162;

constexpr double kInverseThreshold = 0.206893;

// Closer to 0 than this an a* has no direction.
constexpr double kNoDirection = 1e-20;

// 3 pi / 2, where the third quadrant of hues ends.
constexpr double kThreeHalfPi = 4.71238898025;

constexpr int kFunctionCount = 5;
constexpr const char* kFunctionNames[kFunctionCount] = {"CIELAB Delta E (Classic)", "Delta E 94",
                                                        "Delta E 2000", "CMC(1:1)", "CMC(2:1)"};

// Kept on purpose: a white component of 0 is divided by (labSpace.lab_onAZeroWhiteDividesByZero).
double ratio(double component, double whiteComponent) {
    return component < 0.0 ? 0.0 : component / whiteComponent;
}

double clampedAtZero(double component) {
    return component < 0.0 ? 0.0 : component;
}

} // namespace

namespace qxcms::detail {

// L* = 116 f(Y/Yn) - 16, a* = 500 (f(X/Xn) - f(Y/Yn)), b* = 200 (f(Y/Yn) - f(Z/Zn)).
void xyzToLab(const double* white, const double* xyz, double* lab) noexcept {
    const double fx = TLabSpace::FLab(ratio(xyz[0], white[0]));
    const double fy = TLabSpace::FLab(ratio(xyz[1], white[1]));
    const double fz = TLabSpace::FLab(ratio(xyz[2], white[2]));
    lab[0] = 116.0 * fy - 16.0;
    lab[1] = 500.0 * (fx - fy);
    lab[2] = 200.0 * (fy - fz);
}

void labToXyz(const double* white, const double* lab, double* xyz) noexcept {
    const double fy = (lab[0] + 16.0) / 116.0;
    const double fx = lab[1] / 500.0 + fy;
    const double fz = fy + lab[2] / -200.0;
    xyz[0] = clampedAtZero(white[0] * TLabSpace::Fm1Lab(fx));
    xyz[1] = clampedAtZero(white[1] * TLabSpace::Fm1Lab(fy));
    xyz[2] = clampedAtZero(white[2] * TLabSpace::Fm1Lab(fz));
}

// Kept on purpose: without an a* the hue is a right angle up or down, which a negative a* still turns
// (labSpace.hue_guardEndsBelow1eMinus20).
double hueAngle(double a, double b) noexcept {
    double h = 0.0;
    if (std::fabs(a) < kNoDirection)
        h = b >= 0.0 ? kHalfPi : -kHalfPi;
    else
        h = std::atan(b / a);
    if (a < 0.0)
        h += kPi;
    if (a > 0.0 && b < 0.0)
        h += kTwoPi;
    return h;
}

double chroma(double a, double b) noexcept {
    return std::sqrt(a * a + b * b);
}

} // namespace qxcms::detail

using qxcms::detail::chroma;
using qxcms::detail::hueAngle;
using qxcms::detail::kCubeRoot;
using qxcms::detail::kForwardOffset;
using qxcms::detail::kForwardSlope;
using qxcms::detail::kForwardThreshold;
using qxcms::detail::kHalfPi;
using qxcms::detail::kPi;
using qxcms::detail::labToXyz;
using qxcms::detail::squareDeltaE2000;
using qxcms::detail::squareDeltaE76;
using qxcms::detail::squareDeltaE94;
using qxcms::detail::squareDeltaECmc;
using qxcms::detail::squareDeltaH;
using qxcms::detail::xyzToLab;

TLabSpace::TLabSpace(const double* newWhite) : white{0.0, 0.0, 0.0}, errorNumber(0) {
    if (newWhite == nullptr) {
        errorNumber = kBadWhite;
        return;
    }
    for (int i = 0; i < 3; ++i)
        white[i] = newWhite[i];
    for (double& component : white)
        if (component < 0.0) {
            component = 0.0;
            error_mess_fl("Invalid XYZref values", kModule, kWhiteLine);
            errorNumber = kBadWhite;
            return;
        }
}

TLabSpace::~TLabSpace() = default;

int TLabSpace::ErrNo() {
    return errorNumber;
}

double TLabSpace::FLab(double t) {
    return t <= kForwardThreshold ? t * kForwardSlope + kForwardOffset : std::pow(t, kCubeRoot);
}

double TLabSpace::Fm1Lab(double u) {
    return u <= kInverseThreshold ? (u + -kForwardOffset) / kForwardSlope : std::pow(u, 3.0);
}

int TLabSpace::XYZToLab(const double* xyz, double* lab) const {
    if (xyz != nullptr && lab != nullptr)
        xyzToLab(white, xyz, lab);
    return 0;
}

int TLabSpace::FromXYZ(const double* xyz, double* lab) const {
    return XYZToLab(xyz, lab);
}

int TLabSpace::LabToXYZ(const double* lab, double* xyz) const {
    if (lab != nullptr && xyz != nullptr)
        labToXyz(white, lab, xyz);
    return 0;
}

int TLabSpace::ToXYZ(const double* lab, double* xyz) const {
    return LabToXYZ(lab, xyz);
}

int TLabSpace::LabToXYZBatch(const double* lab, double* xyz, std::size_t count) const {
    if (lab == nullptr || xyz == nullptr)
        return 0;
    for (std::size_t i = 0; i < count; ++i)
        labToXyz(white, lab + 3 * i, xyz + 3 * i);
    return 0;
}

int TLabSpace::LabToLab(const double* lab, double* labOut, const double* newWhite) const {
    if (lab == nullptr || labOut == nullptr || newWhite == nullptr)
        return 0;
    // Kept on purpose: exact only where both conversions are on the cube-root branch
    // (labSpace.labToLab_departsFromTheWayThroughXyzForDarkColors).
    const double rX = FLab(white[0] / newWhite[0]);
    const double rY = FLab(white[1] / newWhite[1]);
    const double rZ = FLab(white[2] / newWhite[2]);
    const double fy = (lab[0] + 16.0) / 116.0;
    const double fx = lab[1] / 500.0 + fy;
    const double fz = fy - lab[2] / 200.0;
    labOut[0] = 116.0 * fy * rY - 16.0;
    labOut[1] = 500.0 * (rX * fx - rY * fy);
    labOut[2] = 200.0 * (rY * fy - rZ * fz);
    return 0;
}

double TLabSpace::CalculateHue(const double* lab) {
    return lab == nullptr ? std::numeric_limits<double>::quiet_NaN() : hueAngle(lab[1], lab[2]);
}

int TLabSpace::LabToLHC(const double* lab, double* lhc) {
    if (lab == nullptr || lhc == nullptr)
        return 0;
    const double h = hueAngle(lab[1], lab[2]);
    const double c = chroma(lab[1], lab[2]);
    lhc[0] = lab[0];
    lhc[1] = h;
    lhc[2] = c;
    return 0;
}

int TLabSpace::LabToLHCBatch(const double* lab, double* lhc, std::size_t count) {
    if (lab == nullptr || lhc == nullptr)
        return 0;
    for (std::size_t i = 0; i < count; ++i)
        LabToLHC(lab + 3 * i, lhc + 3 * i);
    return 0;
}

int TLabSpace::LHCToLab(const double* lhc, double* lab) {
    if (lhc == nullptr || lab == nullptr)
        return 0;
    const double h = lhc[1];
    const double c = lhc[2];
    const double t = std::fabs(std::tan(h));
    const double d = std::sqrt(t * t + 1.0);
    const double a = c / d;
    const double b = t * c / d;
    lab[0] = lhc[0];
    lab[1] = kHalfPi < h && h < kThreeHalfPi ? -a : a;
    lab[2] = h > kPi ? -b : b;
    return 0;
}

int TLabSpace::XYZToLHC(const double* xyz, double* lhc) const {
    if (xyz == nullptr || lhc == nullptr)
        return 0;
    double lab[3];
    xyzToLab(white, xyz, lab);
    return LabToLHC(lab, lhc);
}

int TLabSpace::LHCToXYZ(const double* lhc, double* xyz) const {
    if (lhc == nullptr || xyz == nullptr)
        return 0;
    double lab[3];
    LHCToLab(lhc, lab);
    return LabToXYZ(lab, xyz);
}

int TLabSpace::GetSqSat(const double* xyz, double* sqSat) const {
    if (xyz == nullptr || sqSat == nullptr)
        return 0;
    double lab[3];
    xyzToLab(white, xyz, lab);
    *sqSat = lab[1] * lab[1] + lab[2] * lab[2];
    return 0;
}

int TLabSpace::XYZToLabToXYZ(const double* whiteFrom, const double* whiteTo, double* xyz) {
    const TLabSpace from(whiteFrom);
    const TLabSpace to(whiteTo);
    if (xyz == nullptr)
        return 0;
    double lab[3];
    from.XYZToLab(xyz, lab);
    return to.LabToXYZ(lab, xyz);
}

double TLabSpace::CalcSquareDeltaEConvertedStatic(const double* lab1, const double* lab2, int function) {
    if (lab1 == nullptr || lab2 == nullptr)
        return -1.0;
    switch (function) {
    case 0:
        return squareDeltaE76(lab1, lab2);
    case 1:
        return squareDeltaE94(lab1, lab2);
    case 2:
        return squareDeltaE2000(lab1, lab2);
    case 3:
    case 4:
        return squareDeltaECmc(lab1, lab2, function - 2);
    default:
        return -1.0;
    }
}

double TLabSpace::CalcSquareDeltaEConverted(const double* lab1, const double* lab2, int function) const {
    return CalcSquareDeltaEConvertedStatic(lab1, lab2, function);
}

double TLabSpace::CalcSquareDeltaE(const double* xyz1, const double* xyz2, int function) const {
    if (xyz1 == nullptr || xyz2 == nullptr)
        return -1.0;
    double lab1[3];
    double lab2[3];
    xyzToLab(white, xyz1, lab1);
    xyzToLab(white, xyz2, lab2);
    return CalcSquareDeltaEConverted(lab1, lab2, function);
}

int TLabSpace::CalcSquareDeltaEConvertedBatch(const double* lab1, const double* lab2, int function,
                                              double* squares, std::size_t count) {
    if (lab1 == nullptr || lab2 == nullptr || squares == nullptr)
        return 0;
    for (std::size_t i = 0; i < count; ++i)
        squares[i] = CalcSquareDeltaEConvertedStatic(lab1 + 3 * i, lab2 + 3 * i, function);
    return 0;
}

int TLabSpace::CalcSquareDeltaEBatch(const double* xyz1, const double* xyz2, int function, double* squares,
                                     std::size_t count) const {
    if (xyz1 == nullptr || xyz2 == nullptr || squares == nullptr)
        return 0;
    constexpr std::size_t kAtOnce = 64;
    double lab1[3 * kAtOnce];
    double lab2[3 * kAtOnce];
    while (count > 0) {
        const std::size_t pairs = std::min(count, kAtOnce);
        XYZToLabBatch(xyz1, lab1, pairs);
        XYZToLabBatch(xyz2, lab2, pairs);
        for (std::size_t i = 0; i < pairs; ++i)
            squares[i] = CalcSquareDeltaEConverted(lab1 + 3 * i, lab2 + 3 * i, function);
        xyz1 += 3 * pairs;
        xyz2 += 3 * pairs;
        squares += pairs;
        count -= pairs;
    }
    return 0;
}

double TLabSpace::CalcDeltaE(const double* xyz1, const double* xyz2, int function) const {
    const double square = CalcSquareDeltaE(xyz1, xyz2, function);
    return square >= 0.0 ? std::sqrt(square) : -1.0;
}

double TLabSpace::CalcSquareDeltaHConvertedStatic(const double* lab1, const double* lab2) {
    if (lab1 == nullptr || lab2 == nullptr)
        return std::numeric_limits<double>::quiet_NaN();
    return squareDeltaH(lab1, lab2);
}

int TLabSpace::DifferenceFunctionNameToIndex(const char* name) {
    for (int i = 0; i < kFunctionCount; ++i)
        if (strcmp_ci(name, kFunctionNames[i]) == 0)
            return i;
    // Kept on purpose: a name that is not in the list means the classic formula
    // (colorDifference.name_thatIsUnknownMeansTheClassicFormula).
    return 0;
}

int TLabSpace::GetDifferenceFunctionListSize() {
    return kFunctionCount;
}

const char* const* TLabSpace::GetDifferenceFunctionList() {
    return kFunctionNames;
}
