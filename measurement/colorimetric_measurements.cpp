#include "measurement/colorimetric_measurements.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

#include "colorspace/tlabspace.h"

namespace {

constexpr int kRefused = -1;
constexpr int kIncomplete = 3;
constexpr int kMissingArgument = 3;
constexpr int kBadWhite = 3;

// Whites count as the same up to this difference per component.
constexpr double kWhiteTolerance = 0.1;

std::unique_ptr<TObserver> copyOf(const TObserver* observer) {
    return std::unique_ptr<TObserver>(observer == nullptr ? nullptr
                                                          : new (std::nothrow) TObserver(*observer));
}

bool matches(const TIlluminant* asked, const TIlluminant* stored) {
    return asked == nullptr || asked == stored;
}

bool matches(const TObserver* asked, const TObserver& stored) {
    return asked == nullptr || *asked == stored;
}

bool sameWhite(const double* a, const double* b) {
    for (int i = 0; i < 3; ++i)
        if (!(std::fabs(a[i] - b[i]) <= kWhiteTolerance))
            return false;
    return true;
}

int labToXyz(const double* white, const double* lab, double* xyz) {
    TLabSpace space(white);
    return space.ErrNo() != 0 ? kBadWhite : space.LabToXYZ(lab, xyz);
}

int xyzToLab(const double* white, const double* xyz, double* lab) {
    TLabSpace space(white);
    return space.ErrNo() != 0 ? kBadWhite : space.XYZToLab(xyz, lab);
}

} // namespace

// X, Y, Z of a reflective sample.

TXYZMeasurement::TXYZMeasurement(double x, double y, double z, const TMeasGeom* newGeometry,
                                 TIlluminant* newIlluminant, const TObserver* newObserver)
    : TXYZMeasurement(x, y, z, newGeometry, newIlluminant, newObserver, 0, nullptr) {}

TXYZMeasurement::TXYZMeasurement(double x, double y, double z, const TMeasGeom* newGeometry,
                                 TIlluminant* newIlluminant, const TObserver* newObserver, int count,
                                 const double* newCoordinates)
    : TReflectionMeasurement(newGeometry, count, newCoordinates), storedXyz{0.0, 0.0, 0.0},
      illuminant(nullptr) {
    auto copy = copyOf(newObserver);
    if (newIlluminant == nullptr || !copy) {
        SetStatus(kIncomplete);
        return;
    }
    storedXyz[0] = x;
    storedXyz[1] = y;
    storedXyz[2] = z;
    illuminant = newIlluminant;
    observer = std::move(copy);
}

TXYZMeasurement::~TXYZMeasurement() = default;

TOneMeasurement* TXYZMeasurement::Copy() const {
    int count = 0;
    const double* const coords = GetCoord(&count);
    return WholeOrNull(new (std::nothrow) TXYZMeasurement(
        storedXyz[0], storedXyz[1], storedXyz[2], GetGeometry(), illuminant, observer.get(), count, coords));
}

int TXYZMeasurement::GetXYZ(TIlluminant* askedIlluminant, TObserver* askedObserver, double* xyz) const {
    if (xyz == nullptr)
        return kMissingArgument;
    // Kept on purpose: the stored values are handed out with a refusal too
    // (xyzMeasurement.xyz_underAnotherIlluminantAnswersMinusOneWithTheStoredValues).
    std::copy_n(storedXyz, 3, xyz);
    if (GetStatus() != 0 || !matches(askedIlluminant, illuminant) || !matches(askedObserver, *observer))
        return kRefused;
    return 0;
}

double* TXYZMeasurement::GetUniformSpectrum(double*, double*, int*) const {
    return nullptr;
}

int TXYZMeasurement::GetSpecData(double*, double*, int*, bool*) {
    return 0;
}

// X, Y, Z of an emissive sample.

TEmissiveXYZMeasurement::TEmissiveXYZMeasurement(double x, double y, double z, const TMeasGeom* newGeometry,
                                                 const TObserver* newObserver)
    : TEmissiveXYZMeasurement(x, y, z, newGeometry, newObserver, 0, nullptr) {}

TEmissiveXYZMeasurement::TEmissiveXYZMeasurement(double x, double y, double z, const TMeasGeom* newGeometry,
                                                 const TObserver* newObserver, int count,
                                                 const double* newCoordinates)
    : TEmissionMeasurement(newGeometry, count, newCoordinates), storedXyz{0.0, 0.0, 0.0},
      observer(copyOf(newObserver)) {
    if (!observer) {
        SetStatus(kIncomplete);
        return;
    }
    storedXyz[0] = x;
    storedXyz[1] = y;
    storedXyz[2] = z;
}

TEmissiveXYZMeasurement::~TEmissiveXYZMeasurement() = default;

TOneMeasurement* TEmissiveXYZMeasurement::Copy() const {
    int count = 0;
    const double* const coords = GetCoord(&count);
    return WholeOrNull(new (std::nothrow) TEmissiveXYZMeasurement(
        storedXyz[0], storedXyz[1], storedXyz[2], GetGeometry(), observer.get(), count, coords));
}

int TEmissiveXYZMeasurement::GetXYZ(TIlluminant*, TObserver* askedObserver, double* xyz) const {
    if (xyz == nullptr)
        return kMissingArgument;
    std::copy_n(storedXyz, 3, xyz);
    return GetStatus() == 0 && matches(askedObserver, *observer) ? 0 : kRefused;
}

double* TEmissiveXYZMeasurement::GetUniformSpectrum(double*, double*, int*) const {
    return nullptr;
}

int TEmissiveXYZMeasurement::GetSpecData(double*, double*, int*, bool*) {
    return 0;
}

// L*, a*, b* of a reflective sample.

TLABMeasurement::TLABMeasurement(double l, double a, double b, const double* newWhite,
                                 const TMeasGeom* newGeometry, TIlluminant* newIlluminant,
                                 const TObserver* newObserver)
    : TLABMeasurement(l, a, b, newWhite, newGeometry, newIlluminant, newObserver, 0, nullptr) {}

TLABMeasurement::TLABMeasurement(double l, double a, double b, const double* newWhite,
                                 const TMeasGeom* newGeometry, TIlluminant* newIlluminant,
                                 const TObserver* newObserver, int count, const double* newCoordinates)
    : TReflectionMeasurement(newGeometry, count, newCoordinates), storedLab{0.0, 0.0, 0.0},
      illuminant(nullptr), storedWhite{0.0, 0.0, 0.0} {
    auto copy = copyOf(newObserver);
    if (newIlluminant == nullptr || !copy || newWhite == nullptr) {
        SetStatus(kIncomplete);
        return;
    }
    storedLab[0] = l;
    storedLab[1] = a;
    storedLab[2] = b;
    std::copy_n(newWhite, 3, storedWhite);
    illuminant = newIlluminant;
    observer = std::move(copy);
}

TLABMeasurement::~TLABMeasurement() = default;

TOneMeasurement* TLABMeasurement::Copy() const {
    int count = 0;
    const double* const coords = GetCoord(&count);
    return WholeOrNull(new (std::nothrow)
                           TLABMeasurement(storedLab[0], storedLab[1], storedLab[2], storedWhite,
                                           GetGeometry(), illuminant, observer.get(), count, coords));
}

int TLABMeasurement::GetXYZ(TIlluminant* askedIlluminant, TObserver* askedObserver, double* xyz) const {
    if (xyz == nullptr)
        return kMissingArgument;
    if (GetStatus() != 0 || !matches(askedIlluminant, illuminant) || !matches(askedObserver, *observer))
        return kRefused;
    return labToXyz(storedWhite, storedLab, xyz);
}

int TLABMeasurement::GetLAB(TIlluminant* askedIlluminant, TObserver* askedObserver, const double* white,
                            double* lab) const {
    if (lab == nullptr)
        return kMissingArgument;
    std::copy_n(storedLab, 3, lab);
    if (GetStatus() != 0 || !matches(askedIlluminant, illuminant) || !matches(askedObserver, *observer))
        return kRefused;
    if (white == nullptr || sameWhite(white, storedWhite))
        return 0;
    double xyz[3];
    const int code = GetXYZ(askedIlluminant, askedObserver, xyz);
    return code != 0 ? code : xyzToLab(white, xyz, lab);
}

double* TLABMeasurement::GetUniformSpectrum(double*, double*, int*) const {
    return nullptr;
}

int TLABMeasurement::GetSpecData(double*, double*, int*, bool*) {
    return 0;
}

// L*, a*, b* of an emissive sample.

TEmissiveLABMeasurement::TEmissiveLABMeasurement(double l, double a, double b, const double* newWhite,
                                                 const TMeasGeom* newGeometry, const TObserver* newObserver)
    : TEmissiveLABMeasurement(l, a, b, newWhite, newGeometry, newObserver, 0, nullptr) {}

TEmissiveLABMeasurement::TEmissiveLABMeasurement(double l, double a, double b, const double* newWhite,
                                                 const TMeasGeom* newGeometry, const TObserver* newObserver,
                                                 int count, const double* newCoordinates)
    : TEmissionMeasurement(newGeometry, count, newCoordinates), storedLab{0.0, 0.0, 0.0}, storedWhite{
                                                                                              0.0, 0.0, 0.0} {
    auto copy = copyOf(newObserver);
    if (!copy || newWhite == nullptr) {
        SetStatus(kIncomplete);
        return;
    }
    storedLab[0] = l;
    storedLab[1] = a;
    storedLab[2] = b;
    std::copy_n(newWhite, 3, storedWhite);
    observer = std::move(copy);
}

TEmissiveLABMeasurement::~TEmissiveLABMeasurement() = default;

TOneMeasurement* TEmissiveLABMeasurement::Copy() const {
    int count = 0;
    const double* const coords = GetCoord(&count);
    return WholeOrNull(new (std::nothrow) TEmissiveLABMeasurement(
        storedLab[0], storedLab[1], storedLab[2], storedWhite, GetGeometry(), observer.get(), count, coords));
}

int TEmissiveLABMeasurement::GetXYZ(TIlluminant*, TObserver* askedObserver, double* xyz) const {
    if (xyz == nullptr)
        return kMissingArgument;
    if (GetStatus() != 0 || !matches(askedObserver, *observer))
        return kRefused;
    return labToXyz(storedWhite, storedLab, xyz);
}

int TEmissiveLABMeasurement::GetLAB(TIlluminant*, TObserver* askedObserver, const double* white,
                                    double* lab) const {
    if (lab == nullptr)
        return kMissingArgument;
    std::copy_n(storedLab, 3, lab);
    if (GetStatus() != 0 || !matches(askedObserver, *observer))
        return kRefused;
    // Kept on purpose: unlike a reflective Lab value this one is never brought to another white
    // (emissiveLabMeasurement.lab_onAnyWhiteFurtherAwayAnswersMinusOneWithTheStoredValues).
    return white == nullptr || sameWhite(white, storedWhite) ? 0 : kRefused;
}

double* TEmissiveLABMeasurement::GetUniformSpectrum(double*, double*, int*) const {
    return nullptr;
}

int TEmissiveLABMeasurement::GetSpecData(double*, double*, int*, bool*) {
    return 0;
}
