#include "spectral/tobserver.h"

#include <cstring>
#include <new>

namespace {

constexpr int kBadArgument = 2;
constexpr int kNoNormalisation = 3;

// Sampling of the colour-matching functions, in nm.
constexpr double kFirstWavelength = 380.0;
constexpr double kStep = 5.0;

// Turns the sums of an emission into absolute tristimulus values: 683 lm/W times the step of 10 nm, for
// spectra in mW per nm.
constexpr double kAbsoluteFactor = 6.83;

std::unique_ptr<TSpectrum> colourMatchingSpectrum(const double* values) {
    double wavelengths[TObserver::kTableCount];
    for (int i = 0; i < TObserver::kTableCount; ++i)
        wavelengths[i] = kFirstWavelength + kStep * i;
    std::unique_ptr<TSpectrum> spectrum(new (std::nothrow)
                                            TSpectrum(wavelengths, TObserver::kTableCount, values));
    // A spectrum that could not be sampled is none.
    if (spectrum && spectrum->GetStatus() != 0)
        spectrum.reset();
    return spectrum;
}

} // namespace

const int TObserver::sNrObservers = 2;

const char* const TObserver::sObsNameList[6] = {"2 degree", "10 degree", "ANSI A", "ANSI T", "DIN", "DIN NB"};

TObserver::TObserver(int observerNumber) : number(0), status(0) {
    if (static_cast<std::uint32_t>(observerNumber) < static_cast<std::uint32_t>(sNrObservers))
        number = static_cast<std::uint32_t>(observerNumber);
    else
        status = kBadArgument;
}

TObserver::TObserver(const char* name) : number(0), status(kBadArgument) {
    for (int i = 0; name != nullptr && i < sNrObservers; ++i)
        if (std::strcmp(name, sObsNameList[i]) == 0) {
            number = static_cast<std::uint32_t>(i);
            status = 0;
            return;
        }
}

TObserver::TObserver(const TObserver& other) : number(other.number), status(0) {}

TObserver& TObserver::operator=(const TObserver& other) {
    if (number != other.number) {
        xSpectrum.reset();
        ySpectrum.reset();
        zSpectrum.reset();
    }
    number = other.number;
    status = 0;
    return *this;
}

TObserver::~TObserver() = default;

int TObserver::GetKnownObservers(const char*** names, int* count) {
    if (names == nullptr || count == nullptr)
        return kBadArgument;
    *names = const_cast<const char**>(sObsNameList);
    *count = sNrObservers;
    return 0;
}

void TObserver::InitSpectra() {
    // One that is there stays: a caller may hold it.
    if (!xSpectrum)
        xSpectrum = colourMatchingSpectrum(sXSpectrum[number]);
    if (!ySpectrum)
        ySpectrum = colourMatchingSpectrum(sYSpectrum[number]);
    if (!zSpectrum)
        zSpectrum = colourMatchingSpectrum(sZSpectrum[number]);
}

TSpectrum* TObserver::GetXSensitivity() {
    if (!xSpectrum)
        InitSpectra();
    return xSpectrum.get();
}

TSpectrum* TObserver::GetYSensitivity() {
    if (!ySpectrum)
        InitSpectra();
    return ySpectrum.get();
}

TSpectrum* TObserver::GetZSensitivity() {
    if (!zSpectrum)
        InitSpectra();
    return zSpectrum.get();
}

int TObserver::GetXYZ(const TSpectrum* stimulus, const TSpectrum* illuminant, double* xyz) {
    if (stimulus == nullptr || illuminant == nullptr || xyz == nullptr)
        return kBadArgument;
    int code = sumProducts(stimulus, xyz);
    if (code != 0)
        return code;
    double normaliser = 0.0;
    code = illuminant->InProduct(ySpectrum.get(), &normaliser);
    if (code != 0)
        return code;
    if (normaliser <= 0.0)
        return kNoNormalisation;
    const double k = 100.0 / normaliser;
    for (int i = 0; i < 3; ++i)
        xyz[i] *= k;
    return 0;
}

int TObserver::GetXYZ(const TSpectrum* stimulus, double* xyz) {
    if (stimulus == nullptr || xyz == nullptr)
        return kBadArgument;
    const int code = sumProducts(stimulus, xyz);
    if (code != 0)
        return code;
    for (int i = 0; i < 3; ++i)
        xyz[i] *= kAbsoluteFactor;
    return 0;
}

int TObserver::sumProducts(const TSpectrum* stimulus, double* xyz) {
    if (!xSpectrum || !ySpectrum || !zSpectrum)
        InitSpectra();
    if (!xSpectrum || !ySpectrum || !zSpectrum)
        return kBadArgument;
    int code = stimulus->InProduct(xSpectrum.get(), &xyz[0]);
    if (code == 0)
        code = stimulus->InProduct(ySpectrum.get(), &xyz[1]);
    if (code == 0)
        code = stimulus->InProduct(zSpectrum.get(), &xyz[2]);
    return code;
}

bool TObserver::operator==(const TObserver& other) const {
    return number == other.number;
}

const char* TObserver::GetName() const {
    return sObsNameList[number];
}
