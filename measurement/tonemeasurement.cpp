#include "measurement/tonemeasurement.h"

#include <algorithm>
#include <cstddef>
#include <new>
#include <utility>

#include "colorspace/tlabspace.h"

namespace {

constexpr int kBadArgument = 2;
constexpr int kIncomplete = 3;
constexpr int kDensities = 4;

int noDensities(double* densities, int* count) {
    if (densities == nullptr || count == nullptr)
        return kBadArgument;
    std::fill_n(densities, kDensities, 0.0);
    *count = 0;
    return 0;
}

} // namespace

TOneMeasurement::TOneMeasurement(const TMeasGeom* newGeometry) : TOneMeasurement(newGeometry, 0, nullptr) {}

TOneMeasurement::TOneMeasurement(const TMeasGeom* newGeometry, int count, const double* newCoordinates)
    : status(0), nrCoordinates(0) {
    if (newGeometry != nullptr) {
        geometry.reset(new (std::nothrow) TMeasGeom(*newGeometry));
        if (!geometry)
            status = kIncomplete;
    }
    SetCoord(count, newCoordinates);
    const bool hasCoordinates = count > 0 && newCoordinates != nullptr;
    if (hasCoordinates && !coordinates)
        status = kIncomplete;
}

TOneMeasurement::~TOneMeasurement() = default;

int TOneMeasurement::GetDensity(int, double* densities, int* count) {
    return noDensities(densities, count);
}

int TOneMeasurement::GetLAB(TIlluminant* illuminant, TObserver* observer, const double* white,
                            double* lab) const {
    if (lab == nullptr)
        return kIncomplete;
    double xyz[3];
    const int code = GetXYZ(illuminant, observer, xyz);
    if (code != 0)
        return code;
    TLabSpace space(white);
    if (space.ErrNo() != 0)
        return kIncomplete;
    return space.XYZToLab(xyz, lab);
}

TSpectrum* TOneMeasurement::GetSpectrum() {
    return nullptr;
}

double* TOneMeasurement::GetCoord(int* count) const {
    if (count != nullptr)
        *count = nrCoordinates;
    return coordinates.get();
}

int TOneMeasurement::SetCoord(int count, const double* newCoordinates) {
    std::unique_ptr<double[]> copy;
    if (count > 0 && newCoordinates != nullptr) {
        copy.reset(new (std::nothrow) double[static_cast<std::size_t>(count)]);
        if (copy)
            std::copy_n(newCoordinates, count, copy.get());
    }
    nrCoordinates = copy ? count : 0;
    coordinates = std::move(copy);
    return 0;
}

TOneMeasurement* TOneMeasurement::WholeOrNull(TOneMeasurement* copy) const {
    std::unique_ptr<TOneMeasurement> owned(copy);
    const bool isWhole = owned && (owned->status == 0 || status != 0);
    if (!isWhole)
        return nullptr;
    // What this one found no memory for, its copy lacks too.
    owned->status = status;
    return owned.release();
}

TReflectionMeasurement::~TReflectionMeasurement() = default;

int TReflectionMeasurement::GetDensity(int standard, double* densities, int* count) {
    const TSpectrum* const spectrum = GetSpectrum();
    if (spectrum == nullptr)
        return noDensities(densities, count);
    return spectrum->GetDensity(static_cast<TSpectrum::FilterStandards>(standard), densities, count);
}

TEmissionMeasurement::~TEmissionMeasurement() = default;
