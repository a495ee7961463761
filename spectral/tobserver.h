/// @file
/// The CIE standard colorimetric observers.
#pragma once

#include <cstdint>
#include <memory>
#include <type_traits>

#include "base/export.h"
#include "spectral/tspectrum.h"

/// A standard observer: number 0 "2 degree" (CIE 1931) or number 1 "10 degree" (CIE 1964).
///
/// Status codes: 0 good, 2 unknown observer or null argument, 3 a normalising sum of 0 or below.
class QXCMS_API TObserver {
public:
    /// The number of samples of a colour-matching function: 380, 385, ..., 780 nm.
    static constexpr int kTableCount = 81;
    /// The number of observers at the head of sObsNameList.
    static const int sNrObservers;
    /// The names of the two observers, then those of the four density standards.
    static const char* const sObsNameList[6];
    /// The colour-matching functions, per observer 81 values at 380, 385, ..., 780 nm, four decimals.
    static const double sXSpectrum[2][kTableCount];
    static const double sYSpectrum[2][kTableCount];
    static const double sZSpectrum[2][kTableCount];

    /// The observer of that number; another number gives status 2 and the 2 degree observer.
    explicit TObserver(int number);
    /// The observer of exactly that name; another name, or null, gives status 2 and the 2 degree observer.
    explicit TObserver(const char* name);
    /// A number with a fraction is none.
    template <class Float, std::enable_if_t<std::is_floating_point<Float>::value, int> = 0>
    explicit TObserver(Float) = delete;
    /// Copies the number; status 0. The spectra are rebuilt on demand.
    TObserver(const TObserver& other);
    /// As the copy constructor.
    TObserver& operator=(const TObserver& other);
    virtual ~TObserver();

    /// @param names receives the name list (to be read only). @param count receives 2.
    /// @return 0, or 2 for null.
    static int GetKnownObservers(const char*** names, int* count);

    /// The colour-matching functions as spectra of 81 samples, owned by the observer, made at first need;
    /// null when there is no memory.
    TSpectrum* GetXSensitivity();
    TSpectrum* GetYSensitivity();
    TSpectrum* GetZSensitivity();

    /// Makes the three spectra.
    void InitSpectra();

    /// Relative tristimulus values, Y of the illuminant being 100.
    /// @param stimulus the product of sample and illuminant. @param xyz receives X, Y, Z.
    /// @return 0; 2 for null or no memory; 3 when the illuminant's Y sum is 0 or below (xyz then holds the
    /// plain sums).
    int GetXYZ(const TSpectrum* stimulus, const TSpectrum* illuminant, double* xyz);

    /// Absolute tristimulus values of an emission: the sums times 6.83.
    /// @return 0, or 2 for null or no memory.
    int GetXYZ(const TSpectrum* stimulus, double* xyz);

    /// True when the observer numbers are equal.
    bool operator==(const TObserver& other) const;

    std::int32_t GetStatus() const { return status; }
    /// 0 for the 2 degree, 1 for the 10 degree observer.
    std::uint32_t GetNumber() const { return number; }
    /// The name of the observer.
    const char* GetName() const;

private:
    friend struct qxcms::detail::LayoutProbe;

    /// X, Y, Z as plain sums over the standard sampling.
    int sumProducts(const TSpectrum* stimulus, double* xyz);

    std::unique_ptr<TSpectrum> xSpectrum;
    std::unique_ptr<TSpectrum> ySpectrum;
    std::unique_ptr<TSpectrum> zSpectrum;
    std::uint32_t number;
    std::int32_t status;
};
