/// @file
/// One measured colour of any kind, and its reflective and emissive branches.
#pragma once

#include <cstdint>
#include <memory>

#include "base/export.h"
#include "spectral/tilluminant.h"
#include "spectral/tmeasgeom.h"
#include "spectral/tobserver.h"
#include "spectral/tspectrum.h"

/// One measured colour patch: its geometry, its optional chart coordinates (device values), and the colour it
/// yields for an illuminant and an observer.
///
/// Result codes: 0 good; -1 the stored data cannot answer the request; 2 no spectrum; 3 a missing argument or
/// a white that CIELAB refuses. The status is 3 when a required part was missing at construction.
class QXCMS_API TOneMeasurement {
public:
    /// @param geometry copied; null leaves the measurement without one.
    explicit TOneMeasurement(const TMeasGeom* geometry);
    /// @param count the number of coordinates; 0 or below for none. @param coordinates copied.
    TOneMeasurement(const TMeasGeom* geometry, int count, const double* coordinates);
    TOneMeasurement(const TOneMeasurement&) = delete;
    TOneMeasurement& operator=(const TOneMeasurement&) = delete;
    virtual ~TOneMeasurement();

    /// A new independent object of the same class, owned by the caller; null when there is no memory.
    virtual TOneMeasurement* Copy() const = 0;

    /// Status densities: red, green, blue, visual. @param standard a TSpectrum::FilterStandards number.
    /// @param count receives the number of the major filter. Without a reflectance spectrum: four zeros, 0.
    /// @return 0, or 2 for an unknown standard or null.
    virtual int GetDensity(int standard, double* densities, int* count);

    /// Tristimulus values. @return a result code.
    virtual int GetXYZ(TIlluminant* illuminant, TObserver* observer, double* xyz) const = 0;

    /// The 36 standard values of the spectrum, owned by the measurement; null when there is none.
    virtual double* GetUniformSpectrum(double* start, double* end, int* count) const = 0;

    /// CIELAB on `white` (Xn, Yn, Zn). @return a result code.
    virtual int GetLAB(TIlluminant* illuminant, TObserver* observer, const double* white, double* lab) const;

    /// Spectral data of subclasses that supply them; the classes of this library return 0 and write nothing.
    virtual int GetSpecData(double* wavelengths, double* values, int* count, bool* flag) = 0;

    /// The spectrum, owned by the measurement; null when there is none.
    virtual TSpectrum* GetSpectrum();

    /// @param count receives the number of coordinates; may be null.
    /// @return the coordinates, owned by the measurement; null when there are none.
    double* GetCoord(int* count) const;

    /// Replaces the coordinates by a copy; a count of 0 or below, null, or no memory leaves none. @return 0.
    int SetCoord(int count, const double* coordinates);

    std::int32_t GetStatus() const { return status; }
    /// Owned by the measurement; null when there is none.
    const TMeasGeom* GetGeometry() const { return geometry.get(); }

protected:
    /// Marks the measurement as incomplete.
    void SetStatus(std::int32_t newStatus) { status = newStatus; }

    /// A copy of this measurement, or null (the copy is deleted) when memory ran out on the way: a whole
    /// measurement has whole copies.
    TOneMeasurement* WholeOrNull(TOneMeasurement* copy) const;

private:
    friend struct qxcms::detail::LayoutProbe;

    std::int32_t status;
    std::unique_ptr<TMeasGeom> geometry;
    std::int32_t nrCoordinates;
    std::unique_ptr<double[]> coordinates;
};

/// A reflective (or transmissive) sample.
class QXCMS_API TReflectionMeasurement : public TOneMeasurement {
public:
    using TOneMeasurement::TOneMeasurement;
    ~TReflectionMeasurement() override;

    /// The densities of the spectrum; without one four zeros and 0.
    int GetDensity(int standard, double* densities, int* count) override;
};

/// An emissive sample; its densities are zeros.
class QXCMS_API TEmissionMeasurement : public TOneMeasurement {
public:
    using TOneMeasurement::TOneMeasurement;
    ~TEmissionMeasurement() override;
};
