#include "colorspace/txyzrspace.h"

namespace {

constexpr int kBadWhite = 2;

// Kept on purpose: CIELAB takes whites down to 0 and reports the others, while here all three components are
// looked at, the limit is higher and nothing is reported
// (xyzrSpace.whiteOfZero_isRefusedHereAndAcceptedByCielab).
constexpr double kLeastWhite = 1e-6;

} // namespace

TXYZRSpace::TXYZRSpace(const double* newWhite) : errorNumber(0), white{0.0, 0.0, 0.0} {
    for (int i = 0; i < 3; ++i) {
        if (newWhite != nullptr)
            white[i] = newWhite[i];
        if (white[i] < kLeastWhite)
            errorNumber = kBadWhite;
    }
}

TXYZRSpace::~TXYZRSpace() = default;

int TXYZRSpace::XYZToXYZR(const double* xyz, double* xyzr) const {
    if (xyz == nullptr || xyzr == nullptr)
        return 0;
    for (int i = 0; i < 3; ++i)
        xyzr[i] = xyz[i] / white[i];
    return 0;
}

int TXYZRSpace::XYZRToXYZ(const double* xyzr, double* xyz) const {
    if (xyzr == nullptr || xyz == nullptr)
        return 0;
    for (int i = 0; i < 3; ++i)
        xyz[i] = xyzr[i] * white[i];
    return 0;
}

int TXYZRSpace::YRToXYZ(const double* yr, double* xyz) const {
    if (yr == nullptr || xyz == nullptr)
        return 0;
    const double luminance = yr[0];
    for (int i = 0; i < 3; ++i)
        xyz[i] = white[i] * luminance;
    return 0;
}

int TXYZRSpace::XYZToYR(const double* xyz, double* yr) const {
    if (xyz != nullptr && yr != nullptr)
        yr[0] = xyz[1] / white[1];
    return 0;
}
