#include "colorspace/tcolorspace.h"

#include <cmath>
#include <new>

#include "colorspace/tcolorspace_ciecam02.h"
#include "colorspace/tcolorspace_ciecam97s.h"
#include "colorspace/tlabspace.h"

namespace {

enum Space : int { kCielab, kCiecam97s, kCiecam02 };

constexpr int kUnknownSpace = 1;
constexpr int kAverageSurround = 0;

constexpr int kSpaceCount = 3;
constexpr const char* kSpaceNames[kSpaceCount] = {"CIELAB (Classic)", "CIECAM97s", "CIECAM02"};

TColorSpaceRepresentation* newRepresentation(const double* white, int space) {
    switch (space) {
    case kCielab:
        return new (std::nothrow) TLabSpace(white);
    case kCiecam97s:
        return new (std::nothrow) TColorSpace_CIECAM97s(white, kAverageSurround);
    case kCiecam02:
        return new (std::nothrow) TColorSpace_CIECAM02(white, kAverageSurround);
    default:
        return nullptr;
    }
}

} // namespace

TColorSpace::TColorSpace(const double* white, int space)
    : errorNumber(0), spaceIndex(space), representation(newRepresentation(white, space)) {
    if (!representation)
        errorNumber = kUnknownSpace;
}

TColorSpace::~TColorSpace() = default;

int TColorSpace::ToXYZ(const double* in, double* xyz) const {
    return representation ? representation->ToXYZ(in, xyz) : kUnknownSpace;
}

int TColorSpace::FromXYZ(const double* xyz, double* out) const {
    return representation ? representation->FromXYZ(xyz, out) : kUnknownSpace;
}

// Kept on purpose: the sign is not looked at, and the root is taken here because the appearance models' own
// differences are squares (colorSpace.deltaE_isTheRootOfTheSquareInEverySpace).
double TColorSpace::CalcDeltaE(const double* xyz1, const double* xyz2, int function) const {
    return std::sqrt(CalcSquareDeltaE(xyz1, xyz2, function));
}

double TColorSpace::CalcSquareDeltaE(const double* xyz1, const double* xyz2, int function) const {
    return representation ? representation->CalcSquareDeltaE(xyz1, xyz2, function) : -1.0;
}

double TColorSpace::CalcSquareDeltaEConverted(const double* c1, const double* c2, int function) const {
    return representation ? representation->CalcSquareDeltaEConverted(c1, c2, function) : -1.0;
}

int TColorSpace::ErrNo() {
    return errorNumber != 0 ? errorNumber : representation->ErrNo();
}

int TColorSpace::GetColorSpaceListSize() {
    return kSpaceCount;
}

const char* const* TColorSpace::GetColorSpaceList() {
    return kSpaceNames;
}

int TColorSpace::GetDifferenceFunctionListSize() const {
    return GetDifferenceFunctionListSize(spaceIndex);
}

int TColorSpace::GetDifferenceFunctionListSize(int space) {
    switch (space) {
    case kCielab:
        return TLabSpace::GetDifferenceFunctionListSize();
    case kCiecam97s:
        return TColorSpace_CIECAM97s::GetDifferenceFunctionListSize();
    case kCiecam02:
        return TColorSpace_CIECAM02::GetDifferenceFunctionListSize();
    default:
        return -1;
    }
}

const char* const* TColorSpace::GetDifferenceFunctionList() const {
    return GetDifferenceFunctionList(spaceIndex);
}

const char* const* TColorSpace::GetDifferenceFunctionList(int space) {
    switch (space) {
    case kCielab:
        return TLabSpace::GetDifferenceFunctionList();
    case kCiecam97s:
        return TColorSpace_CIECAM97s::GetDifferenceFunctionList();
    case kCiecam02:
        return TColorSpace_CIECAM02::GetDifferenceFunctionList();
    default:
        return nullptr;
    }
}
