#include "measurement/spectral_measurements.h"

#include <new>

#include "spectral/tilluminantandobserver.h"

namespace {

constexpr int kNoSpectrum = 2;
constexpr int kMissingArgument = 3;
constexpr int kIncomplete = 3;
constexpr int kOtherIlluminant = -1;

std::unique_ptr<TSpectrum> copyOf(const TSpectrum* spectrum) {
    std::unique_ptr<TSpectrum> copy(spectrum == nullptr ? nullptr : new (std::nothrow) TSpectrum(*spectrum));
    // A copy has no status but that of its own making: 0 unless memory ran out.
    if (copy && copy->GetStatus() != 0)
        copy.reset();
    return copy;
}

double* standardValues(const TSpectrum* spectrum, double* start, double* end, int* count) {
    return spectrum == nullptr ? nullptr : spectrum->GetUniformSpectrum(start, end, count);
}

} // namespace

TReflectionSpectrum::TReflectionSpectrum(const TSpectrum* newSpectrum, const TMeasGeom* newGeometry)
    : TReflectionSpectrum(newSpectrum, newGeometry, 0, nullptr) {}

TReflectionSpectrum::TReflectionSpectrum(const TSpectrum* newSpectrum, const TMeasGeom* newGeometry,
                                         int count, const double* newCoordinates)
    : TReflectionMeasurement(newGeometry, count, newCoordinates), spectrum(copyOf(newSpectrum)) {
    if (!spectrum)
        SetStatus(kIncomplete);
}

TReflectionSpectrum::~TReflectionSpectrum() = default;

TOneMeasurement* TReflectionSpectrum::Copy() const {
    int count = 0;
    const double* const coords = GetCoord(&count);
    return WholeOrNull(new (std::nothrow) TReflectionSpectrum(spectrum.get(), GetGeometry(), count, coords));
}

int TReflectionSpectrum::GetXYZ(TIlluminant* illuminant, TObserver* observer, double* xyz) const {
    if (illuminant == nullptr || observer == nullptr || xyz == nullptr)
        return kMissingArgument;
    if (!spectrum)
        return kNoSpectrum;
    const TIlluminantAndObserver weighting(illuminant, observer, TSpectrum::kStandardCount);
    return weighting.GetXYZ(spectrum.get(), xyz, TSpectrum::kStandardCount);
}

double* TReflectionSpectrum::GetUniformSpectrum(double* start, double* end, int* count) const {
    return standardValues(spectrum.get(), start, end, count);
}

int TReflectionSpectrum::GetSpecData(double*, double*, int*, bool*) {
    return 0;
}

TSpectrum* TReflectionSpectrum::GetSpectrum() {
    return spectrum.get();
}

TReflectedSpectrum::TReflectedSpectrum(const TSpectrum* newSpectrum, const TMeasGeom* newGeometry,
                                       TIlluminant* newIlluminant)
    : TReflectedSpectrum(newSpectrum, newGeometry, newIlluminant, 0, nullptr) {}

TReflectedSpectrum::TReflectedSpectrum(const TSpectrum* newSpectrum, const TMeasGeom* newGeometry,
                                       TIlluminant* newIlluminant, int count, const double* newCoordinates)
    : TReflectionMeasurement(newGeometry, count, newCoordinates), illuminant(newIlluminant),
      spectrum(copyOf(newSpectrum)) {
    if (!spectrum || illuminant == nullptr)
        SetStatus(kIncomplete);
}

TReflectedSpectrum::~TReflectedSpectrum() = default;

int TReflectedSpectrum::GetXYZ(TIlluminant* given, TObserver* observer, double* xyz) const {
    if (given == nullptr || observer == nullptr || xyz == nullptr)
        return kMissingArgument;
    if (!spectrum || given->GetSpectrum() == nullptr)
        return kNoSpectrum;
    // Kept on purpose: the values are computed for an illuminant that is refused too
    // (reflectedSpectrum.xyz_underAnotherIlluminantAnswersMinusOneAndIsNormalisedByIt).
    const int code = observer->GetXYZ(spectrum.get(), given->GetSpectrum(), xyz);
    return given == illuminant ? code : kOtherIlluminant;
}

TSpectrum* TReflectedSpectrum::GetSpectrum() {
    return spectrum.get();
}

TEmissionSpectrum::TEmissionSpectrum(const TSpectrum* newSpectrum, const TMeasGeom* newGeometry)
    : TEmissionSpectrum(newSpectrum, newGeometry, 0, nullptr) {}

TEmissionSpectrum::TEmissionSpectrum(const TSpectrum* newSpectrum, const TMeasGeom* newGeometry, int count,
                                     const double* newCoordinates)
    : TEmissionMeasurement(newGeometry, count, newCoordinates), spectrum(copyOf(newSpectrum)) {
    if (!spectrum)
        SetStatus(kIncomplete);
}

TEmissionSpectrum::~TEmissionSpectrum() = default;

TOneMeasurement* TEmissionSpectrum::Copy() const {
    int count = 0;
    const double* const coords = GetCoord(&count);
    return WholeOrNull(new (std::nothrow) TEmissionSpectrum(spectrum.get(), GetGeometry(), count, coords));
}

int TEmissionSpectrum::GetXYZ(TIlluminant*, TObserver* observer, double* xyz) const {
    if (observer == nullptr || xyz == nullptr)
        return kMissingArgument;
    if (!spectrum)
        return kNoSpectrum;
    return observer->GetXYZ(spectrum.get(), xyz);
}

double* TEmissionSpectrum::GetUniformSpectrum(double* start, double* end, int* count) const {
    return standardValues(spectrum.get(), start, end, count);
}

int TEmissionSpectrum::GetSpecData(double*, double*, int*, bool*) {
    return 0;
}

TSpectrum* TEmissionSpectrum::GetSpectrum() {
    return spectrum.get();
}
