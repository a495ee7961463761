/// @file
/// The weights of tristimulus integration for one illuminant and one observer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/export.h"
#include "spectral/tilluminant.h"
#include "spectral/tobserver.h"

/// The distance that a matching spectrum makes small: that of Lab, or that of XYZ.
enum MatchingMethod : int { kMatchingMethodLab = 0, kMatchingMethodXYZ = 1 };

/// Turns a reflectance or transmittance spectrum into X, Y, Z with Y = 100 for the perfect white.
///
/// Illuminants named "CIE Illuminant F2", "CIE Illuminant F7" and "CIE Illuminant F11" (in any case) use the
/// ASTM E308 table 6 weights of the 2 degree observer; all others the products of illuminant and observer.
///
/// Status codes: 0 good, 2 bad argument or unknown illuminant or observer, 3 no illuminant registry. A
/// weighting whose status is not 0 has a white of 0, 0, 0 and weights of 0.
class QXCMS_API TIlluminantAndObserver {
public:
    /// The largest number of sampling points.
    static constexpr int kMaxPoints = 36;
    /// ASTM E308 table 6, 10 nm, 1931 observer: for F2, F7 and F11 the x, y and z weights at 380, ..., 730
    /// nm.
    static const double sASTMtable6[3][3][kMaxPoints];

    /// @param illuminant not owned, must outlive the weighting. @param observer copied.
    /// @param points the number of evenly spaced sampling points over 380..730 nm, 0 to 36.
    TIlluminantAndObserver(const TIlluminant* illuminant, const TObserver* observer, int points);

    /// Looks the illuminant up in the shared registry; the weighting is valid while someone holds the
    /// registry.
    TIlluminantAndObserver(const char* illuminantName, const char* observerName, int points);

    TIlluminantAndObserver(const TIlluminantAndObserver&) = delete;
    TIlluminantAndObserver& operator=(const TIlluminantAndObserver&) = delete;
    ~TIlluminantAndObserver();

    /// Computes the weights. The observer is copied. @return 0 or 2.
    int Init(const TIlluminant* illuminant, const TObserver* observer, int points);

    /// @param index receives 0, 1 or 2 for F2, F7 and F11, else -1; may be null.
    /// @return 1 when the illuminant's name asks for the ASTM tables, else 0.
    int IlluminantNeedsASTM308Tables(int* index) const;

    /// X, Y, Z of `count` values at the sampling points, through the direct weights in either mode (they are
    /// 0 in the ASTM mode). @return 0, or 2 when count is not the number of points (xyz untouched) or for
    /// null.
    int GetXYZ(const double* values, double* xyz, int count) const;

    /// X, Y, Z of a spectrum: its first `count` standard values are paired with the weights by index.
    /// @return as above.
    int GetXYZ(const TSpectrum* spectrum, double* xyz, int count) const;

    /// GetXYZ of `count` spectra of 36 values at 380, 390, ..., 730 nm, one after the other, in either mode,
    /// with the bits of the spectrum's own; allocates nothing, and xyz may be the place of the spectra.
    /// @return 0, or 2 when there are not 36 points (xyz untouched) or for null.
    int SpectraToXYZBatch(const double* spectra, double* xyz, std::size_t count) const;

    /// X, Y, Z of the perfect white; in the direct mode always over the 36 standard values.
    /// @return 0, or 2 (and zeros) when there is no memory.
    int GetXYZWhite(double* xyz) const;

    /// Adds to xyz what `amount` more in the points first .. last - 1 makes; points outside 0..35 are
    /// ignored.
    /// @return 0.
    int GetXYZIncrement(double amount, int first, int last, double* xyz) const;
    /// The same for one point.
    int GetXYZIncrement(double amount, int index, double* xyz) const;

    /// Looks for a reflectance whose colour matches a target: 1000 smoothed gradient steps from a start,
    /// always all of them, of which the best spectrum is kept, the start included. For the direct mode and 36
    /// points; spectra are 36 values at 380, 390, ..., 730 nm.
    /// @param targetXYZ the colour to match. @param whiteXYZ the white of Lab; null for the illuminant's.
    /// @param upperLimits, lowerLimits for each value but those of the start; null for 0.99999 and 0.00001.
    /// @param resultSpectrum receives the best spectrum; may be the start's place.
    /// @return the CIELAB difference (1976) that remains, whatever the method, and no number where neither
    /// start nor candidates have one (a value of the start or the target that is none, a white of 0, no light
    /// at all); -1.0, and nothing written, for another method, another mode or number of points, or null
    /// where null is not allowed.
    double CalculateMatchingSpectrum(const double* targetXYZ, const double* whiteXYZ,
                                     const double* upperLimits, const double* lowerLimits,
                                     const double* startSpectrum, MatchingMethod method,
                                     double* resultSpectrum) const;

    std::int32_t GetStatus() const { return status; }
    /// The number of sampling points.
    std::int32_t GetNumber() const { return nrPoints; }
    /// Not owned.
    const TIlluminant* GetIlluminant() const { return illuminant; }
    /// Owned by the weighting; null when there is none.
    TObserver* GetObserver() const { return observer.get(); }
    /// The normalising factor k.
    double GetFactor() const { return factor; }
    /// The combined relative weight of each point, 36 values.
    const double* GetCombinedWeights() const { return combined; }

private:
    friend struct qxcms::detail::LayoutProbe;

    void reset();
    int initWeights(int points);
    /// @param source the illuminant's 36 standard values.
    void initDirect(const double* source);

    std::int64_t tableIndex;
    double factor;
    double xFunction[kMaxPoints];
    double yFunction[kMaxPoints];
    double zFunction[kMaxPoints];
    double xWeight[kMaxPoints];
    double yWeight[kMaxPoints];
    double zWeight[kMaxPoints];
    double combined[kMaxPoints];
    std::int32_t status;
    std::int32_t nrPoints;
    const TIlluminant* illuminant;
    std::unique_ptr<TObserver> observer;
};
