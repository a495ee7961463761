/// @file
/// Measurements that hold tristimulus or CIELAB values.
#pragma once

#include <memory>

#include "base/export.h"
#include "measurement/tonemeasurement.h"

/// A colorimetric measurement answers for the illuminant object, the observer number and (within 0.1 per
/// component) the white it was made with; a null illuminant or observer means the stored one. Nothing is
/// adapted: another condition is refused with -1. A measurement with status 3 answers -1; a null result 3.
///
/// X, Y, Z of a reflective sample.
class QXCMS_API TXYZMeasurement : public TReflectionMeasurement {
public:
    /// @param illuminant not owned, compared by identity. @param observer copied. Null for either: status 3.
    TXYZMeasurement(double x, double y, double z, const TMeasGeom* geometry, TIlluminant* illuminant,
                    const TObserver* observer);
    TXYZMeasurement(double x, double y, double z, const TMeasGeom* geometry, TIlluminant* illuminant,
                    const TObserver* observer, int count, const double* coordinates);
    ~TXYZMeasurement() override;

    TOneMeasurement* Copy() const override;
    /// The stored values, also when the answer is -1.
    int GetXYZ(TIlluminant* illuminant, TObserver* observer, double* xyz) const override;
    double* GetUniformSpectrum(double* start, double* end, int* count) const override;
    int GetSpecData(double* wavelengths, double* values, int* count, bool* flag) override;

    /// Not owned.
    TIlluminant* GetIlluminant() const { return illuminant; }
    /// Owned by the measurement.
    TObserver* GetObserver() const { return observer.get(); }

private:
    friend struct qxcms::detail::LayoutProbe;

    double storedXyz[3];
    TIlluminant* illuminant;
    std::unique_ptr<TObserver> observer;
};

/// X, Y, Z of an emissive sample; the illuminant of a request is ignored.
class QXCMS_API TEmissiveXYZMeasurement : public TEmissionMeasurement {
public:
    /// @param observer copied; null gives status 3.
    TEmissiveXYZMeasurement(double x, double y, double z, const TMeasGeom* geometry,
                            const TObserver* observer);
    TEmissiveXYZMeasurement(double x, double y, double z, const TMeasGeom* geometry,
                            const TObserver* observer, int count, const double* coordinates);
    ~TEmissiveXYZMeasurement() override;

    TOneMeasurement* Copy() const override;
    /// The stored values, also when the answer is -1.
    int GetXYZ(TIlluminant* illuminant, TObserver* observer, double* xyz) const override;
    double* GetUniformSpectrum(double* start, double* end, int* count) const override;
    int GetSpecData(double* wavelengths, double* values, int* count, bool* flag) override;

    /// Owned by the measurement.
    TObserver* GetObserver() const { return observer.get(); }

private:
    friend struct qxcms::detail::LayoutProbe;

    double storedXyz[3];
    std::unique_ptr<TObserver> observer;
};

/// L*, a*, b* of a reflective sample, with the white they are relative to.
class QXCMS_API TLABMeasurement : public TReflectionMeasurement {
public:
    /// @param white Xn, Yn, Zn, copied. @param illuminant not owned, compared by identity. @param observer
    /// copied. Null for any of them: status 3.
    TLABMeasurement(double l, double a, double b, const double* white, const TMeasGeom* geometry,
                    TIlluminant* illuminant, const TObserver* observer);
    TLABMeasurement(double l, double a, double b, const double* white, const TMeasGeom* geometry,
                    TIlluminant* illuminant, const TObserver* observer, int count, const double* coordinates);
    ~TLABMeasurement() override;

    TOneMeasurement* Copy() const override;
    /// The stored Lab on the stored white; xyz stays untouched when the answer is -1.
    int GetXYZ(TIlluminant* illuminant, TObserver* observer, double* xyz) const override;
    /// The stored Lab, re-referenced (not adapted) when `white` differs from the stored one by more than 0.1.
    int GetLAB(TIlluminant* illuminant, TObserver* observer, const double* white, double* lab) const override;
    double* GetUniformSpectrum(double* start, double* end, int* count) const override;
    int GetSpecData(double* wavelengths, double* values, int* count, bool* flag) override;

    /// The stored white, 3 values owned by the measurement.
    const double* GetWhite() const { return storedWhite; }
    /// Not owned.
    TIlluminant* GetIlluminant() const { return illuminant; }
    /// Owned by the measurement.
    TObserver* GetObserver() const { return observer.get(); }

private:
    friend struct qxcms::detail::LayoutProbe;

    double storedLab[3];
    TIlluminant* illuminant;
    std::unique_ptr<TObserver> observer;
    double storedWhite[3];
};

/// L*, a*, b* of an emissive sample; the illuminant of a request is ignored, another white is refused.
class QXCMS_API TEmissiveLABMeasurement : public TEmissionMeasurement {
public:
    /// @param white Xn, Yn, Zn, copied. @param observer copied. Null for either: status 3.
    TEmissiveLABMeasurement(double l, double a, double b, const double* white, const TMeasGeom* geometry,
                            const TObserver* observer);
    TEmissiveLABMeasurement(double l, double a, double b, const double* white, const TMeasGeom* geometry,
                            const TObserver* observer, int count, const double* coordinates);
    ~TEmissiveLABMeasurement() override;

    TOneMeasurement* Copy() const override;
    /// The stored Lab on the stored white; xyz stays untouched when the answer is -1.
    int GetXYZ(TIlluminant* illuminant, TObserver* observer, double* xyz) const override;
    /// The stored Lab, also when the answer is -1.
    int GetLAB(TIlluminant* illuminant, TObserver* observer, const double* white, double* lab) const override;
    double* GetUniformSpectrum(double* start, double* end, int* count) const override;
    int GetSpecData(double* wavelengths, double* values, int* count, bool* flag) override;

    /// The stored white, 3 values owned by the measurement.
    const double* GetWhite() const { return storedWhite; }
    /// Owned by the measurement.
    TObserver* GetObserver() const { return observer.get(); }

private:
    friend struct qxcms::detail::LayoutProbe;

    double storedLab[3];
    std::unique_ptr<TObserver> observer;
    double storedWhite[3];
};
