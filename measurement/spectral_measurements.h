/// @file
/// Measurements that hold a spectrum.
#pragma once

#include <memory>

#include "base/export.h"
#include "measurement/tonemeasurement.h"

/// A reflectance or transmittance factor: colour under any illuminant and observer.
class QXCMS_API TReflectionSpectrum : public TReflectionMeasurement {
public:
    /// @param spectrum copied; null gives status 3. @param geometry copied.
    TReflectionSpectrum(const TSpectrum* spectrum, const TMeasGeom* geometry);
    TReflectionSpectrum(const TSpectrum* spectrum, const TMeasGeom* geometry, int count,
                        const double* coordinates);
    ~TReflectionSpectrum() override;

    TOneMeasurement* Copy() const override;
    /// X, Y, Z with Y = 100 for the perfect white; F2, F7 and F11 through the ASTM E308 tables.
    /// @return 0, 2 without a spectrum, 3 for null.
    int GetXYZ(TIlluminant* illuminant, TObserver* observer, double* xyz) const override;
    double* GetUniformSpectrum(double* start, double* end, int* count) const override;
    int GetSpecData(double* wavelengths, double* values, int* count, bool* flag) override;
    TSpectrum* GetSpectrum() override;

private:
    friend struct qxcms::detail::LayoutProbe;

    std::unique_ptr<TSpectrum> spectrum;
};

/// The light reflected under one particular illuminant, which is inside the spectrum already. A base for
/// classes that supply Copy, GetUniformSpectrum and GetSpecData.
class QXCMS_API TReflectedSpectrum : public TReflectionMeasurement {
public:
    /// @param spectrum copied. @param illuminant not owned, compared by identity. Null for either: status 3.
    TReflectedSpectrum(const TSpectrum* spectrum, const TMeasGeom* geometry, TIlluminant* illuminant);
    TReflectedSpectrum(const TSpectrum* spectrum, const TMeasGeom* geometry, TIlluminant* illuminant,
                       int count, const double* coordinates);
    ~TReflectedSpectrum() override;

    /// X, Y, Z relative to the given illuminant's Y.
    /// @return 0; 2 without a spectrum; 3 for null; -1 (xyz is filled all the same) when the illuminant is
    /// not the very object stored.
    int GetXYZ(TIlluminant* illuminant, TObserver* observer, double* xyz) const override;
    TSpectrum* GetSpectrum() override;

    /// Not owned.
    TIlluminant* GetIlluminant() const { return illuminant; }

private:
    friend struct qxcms::detail::LayoutProbe;

    TIlluminant* illuminant;
    std::unique_ptr<TSpectrum> spectrum;
};

/// The spectral power of a light source or display: absolute colour.
class QXCMS_API TEmissionSpectrum : public TEmissionMeasurement {
public:
    /// @param spectrum copied; null gives status 3. @param geometry copied.
    TEmissionSpectrum(const TSpectrum* spectrum, const TMeasGeom* geometry);
    TEmissionSpectrum(const TSpectrum* spectrum, const TMeasGeom* geometry, int count,
                      const double* coordinates);
    ~TEmissionSpectrum() override;

    TOneMeasurement* Copy() const override;
    /// Absolute X, Y, Z (factor 6.83); the illuminant is ignored. @return 0, 2 without a spectrum, 3 for
    /// null.
    int GetXYZ(TIlluminant* illuminant, TObserver* observer, double* xyz) const override;
    double* GetUniformSpectrum(double* start, double* end, int* count) const override;
    int GetSpecData(double* wavelengths, double* values, int* count, bool* flag) override;
    TSpectrum* GetSpectrum() override;

private:
    friend struct qxcms::detail::LayoutProbe;

    std::unique_ptr<TSpectrum> spectrum;
};
