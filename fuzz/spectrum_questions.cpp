#include "fuzz/spectrum_questions.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "fuzz/exact_memory.h"
#include "fuzz/must.h"

namespace qxcms::fuzz {
namespace {

constexpr double kFirstWavelength = 380.0;
constexpr double kStep = 10.0;

const double* standardOf(const TSpectrum& spectrum) {
    double start = 0.0, end = 0.0;
    int count = 0;
    const double* const values = spectrum.GetUniformSpectrum(&start, &end, &count);
    must(start == 380.0 && end == 730.0 && count == TSpectrum::kStandardCount,
         "the standard sampling is fixed");
    return values;
}

bool areEqual(const double* a, const double* b, int count) {
    return count == 0 || std::memcmp(a, b, sizeof(double) * static_cast<std::size_t>(count)) == 0;
}

bool isUnset(const TSpectrum& spectrum) {
    const double* const values = standardOf(spectrum);
    return std::all_of(values, values + TSpectrum::kStandardCount,
                       [](double value) { return value == -1.0; });
}

// A sample at a standard wavelength comes back exactly.
void askSamples(const TSpectrum& spectrum) {
    const double* const standard = standardOf(spectrum);
    for (int i = 0; i < spectrum.GetNrSamples(); ++i) {
        const double wavelength = spectrum.GetWavelengths()[i];
        must(std::isfinite(wavelength), "a spectrum that is set has finite wavelengths");
        const double slot = (wavelength - kFirstWavelength) / kStep;
        if (slot < 0.0 || slot >= TSpectrum::kStandardCount || slot != std::floor(slot))
            continue;
        must(areEqual(&standard[static_cast<int>(slot)], &spectrum.GetValues()[i], 1) ||
                 std::isnan(spectrum.GetValues()[i]),
             "a sample at a standard wavelength is the standard value");
    }
}

void askFileData(TSpectrum& spectrum) {
    int size = -1;
    const std::uint16_t* const words = spectrum.ToFileData(&size);
    const int samples = spectrum.GetNrSamples();
    must(words != nullptr && size == spectrum.GetFileDataSize(), "a spectrum has file data");
    must(size == (spectrum.GetNonUniformFlag() == 1 ? 4 * samples + 6 : 76), "file data have their size");
    const ExactBytes memory(reinterpret_cast<const std::uint8_t*>(words), static_cast<std::size_t>(size));
    void* end = nullptr;
    const TSpectrum back(memory.data(), &end);
    if (spectrum.GetNonUniformFlag() == 0) {
        must(back.GetStatus() == 0, "file data of standard values are read back");
    } else if (samples >= 1 && samples <= TSpectrum::kMaxSamples) {
        // Wavelengths are cut to whole nanometres there and may meet.
        must(back.GetStatus() == 0 || back.GetStatus() == 4, "file data of samples are read back");
        must(back.GetNrSamples() == samples, "file data keep the number of samples");
    } else {
        return;
    }
    must(end == memory.data() + memory.size(), "file data are read to their end");
}

void askShortFileData(TSpectrum& spectrum) {
    int size = -1;
    const std::uint16_t* const words = spectrum.ToShrtFileData(&spectrum, &size);
    const int samples = spectrum.GetNrSamples();
    const double* const wavelengths = spectrum.GetWavelengths();
    // An undefined wavelength equals nothing, itself included.
    if (std::any_of(wavelengths, wavelengths + samples, [](double x) { return std::isnan(x); })) {
        must(words == nullptr && spectrum.GetStatus() == 5, "an undefined wavelength has no equal");
        return;
    }
    must(words != nullptr && size == (spectrum.GetNonUniformFlag() == 1 ? 2 * samples + 2 : 74),
         "short file data have their size");
    const ExactBytes memory(reinterpret_cast<const std::uint8_t*>(words), static_cast<std::size_t>(size));
    void* end = nullptr;
    const TSpectrum back(&spectrum, memory.data(), &end);
    if (samples > TSpectrum::kMaxSamples) {
        must(back.GetStatus() == 3, "short file data of too many samples are refused");
        return;
    }
    // Samples that make no spectrum make none here either.
    must(back.GetStatus() == 0 || back.GetStatus() == 4, "short file data are read back");
    must(end == memory.data() + memory.size(), "short file data are read to their end");
    must(areEqual(back.GetWavelengths(), wavelengths, samples),
         "short file data take the wavelengths of the reference");
}

} // namespace

void mustEqual(const TSpectrum& a, const TSpectrum& b) {
    must(a.GetStatus() == b.GetStatus() && a.GetNonUniformFlag() == b.GetNonUniformFlag(),
         "both are of a kind");
    must(a.GetNrSamples() == b.GetNrSamples(), "both have as many samples");
    must(areEqual(a.GetWavelengths(), b.GetWavelengths(), a.GetNrSamples()) &&
             areEqual(a.GetValues(), b.GetValues(), a.GetNrSamples()),
         "both have the same samples");
    must(areEqual(standardOf(a), standardOf(b), TSpectrum::kStandardCount),
         "both have the same standard values");
}

void askSpectrum(TSpectrum& spectrum) {
    const int status = spectrum.GetStatus();
    const int flag = spectrum.GetNonUniformFlag();
    const int samples = spectrum.GetNrSamples();
    must(flag == 0 || flag == 1, "the flag is 0 or 1");
    must(samples >= 0 && (samples == 0 || flag == 1), "only non-uniform spectra have samples");
    must((spectrum.GetWavelengths() != nullptr) == (samples > 0) &&
             (spectrum.GetValues() != nullptr) == (samples > 0),
         "samples are there when they are counted");
    must(status == 0 || isUnset(spectrum), "a spectrum that cannot be made is not set");
    if (status == 0)
        askSamples(spectrum);

    TSpectrum copy(spectrum);
    must(copy.GetStatus() == 0, "a spectrum can be copied");
    const TSpectrum product(&spectrum, &copy);
    must(product.GetStatus() == 0 || (product.GetStatus() == 3 && standardOf(spectrum)[0] == -1.0),
         "a spectrum that is set has products");
    double sum = 0.0, densities[4];
    int filter = 0;
    must(spectrum.InProduct(&copy, &sum) == 0, "a spectrum has inner products");
    must(spectrum.GetDensity(TSpectrum::kDin, densities, &filter) == 0, "a spectrum has densities");
    must(!(spectrum.CalcDistance(&copy) > 0.0), "a spectrum is no way from its copy");

    askFileData(copy);
    askShortFileData(copy);
    copy.ClearNonUniform();
    must(areEqual(standardOf(copy), standardOf(spectrum), TSpectrum::kStandardCount),
         "standard values outlive the samples");
    askFileData(copy);
}

} // namespace qxcms::fuzz
