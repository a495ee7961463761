// The measured colour of one sample of a document.
#include <memory>
#include <new>
#include <vector>

#include "base/guarded.h"
#include "cgats/tcgats.h"
#include "measurement/colorimetric_measurements.h"
#include "measurement/spectral_measurements.h"
#include "spectral/tilluminantandobserver.h"

namespace {

// The status of a spectrum that ran out of memory. Samples that make no spectrum are another matter: the
// measurement then holds an unset one.
constexpr int kNoMemory = 1;

// Device values that go with a colour.
using Coordinates = std::vector<double>;

std::unique_ptr<TOneMeasurement> spectralMeasurement(const TCgats& document, int table, int sample,
                                                     const TMeasGeom* geometry,
                                                     const Coordinates& coordinates) {
    const auto count = static_cast<std::size_t>(document.GetNrWaveLengths(table));
    std::vector<int> nanometres(count);
    std::vector<double> values(count);
    if (document.GetWaveLengths(table, nanometres.data()) != 0 ||
        document.GetSpectrum(table, sample, values.data()) != 0)
        return nullptr;
    const std::vector<double> wavelengths(nanometres.begin(), nanometres.end());
    const TSpectrum spectrum(wavelengths.data(), static_cast<int>(count), values.data());
    if (spectrum.GetStatus() == kNoMemory)
        return nullptr;
    return std::make_unique<TReflectionSpectrum>(&spectrum, geometry, static_cast<int>(coordinates.size()),
                                                 coordinates.data());
}

std::unique_ptr<TOneMeasurement> labMeasurement(const TCgats& document, int table, int sample,
                                                TIlluminant* illuminant, const TObserver* observer,
                                                const TMeasGeom* geometry, const Coordinates& coordinates) {
    const TIlluminantAndObserver weighting(illuminant, observer, TIlluminantAndObserver::kMaxPoints);
    // The weighting keeps a copy of the observer, unless memory ran out.
    const bool isWhole = weighting.GetObserver() != nullptr || observer == nullptr;
    double white[3];
    double lab[3];
    if (!isWhole || weighting.GetXYZWhite(white) != 0 || document.GetLab(table, sample, lab) != 0)
        return nullptr;
    return std::make_unique<TLABMeasurement>(lab[0], lab[1], lab[2], white, geometry, illuminant, observer,
                                             static_cast<int>(coordinates.size()), coordinates.data());
}

} // namespace

TOneMeasurement* TCgats::GetMeasurement(int table, int sample, TIlluminant* illuminant,
                                        const TObserver* observer, const TMeasGeom* geometry) const {
    if (tableOfSample(table, sample) == nullptr)
        return nullptr;
    TOneMeasurement* const none = nullptr;
    return qxcms::detail::guarded(none, [&]() -> TOneMeasurement* {
        Coordinates coordinates;
        if (ContainsProcessColors(table)) {
            coordinates.resize(static_cast<std::size_t>(GetNrProcessColors(table)));
            if (GetCoordinates(table, sample, coordinates.data()) != 0)
                return nullptr;
        }
        std::unique_ptr<TOneMeasurement> measurement;
        if (ContainsWaveLengths(table))
            measurement = spectralMeasurement(*this, table, sample, geometry, coordinates);
        else if (ContainsLab(table))
            measurement = labMeasurement(*this, table, sample, illuminant, observer, geometry, coordinates);
        // Kept on purpose: XYZ alone yields no measurement (cgatsMeasurement.xyzAlone_givesNone).
        return measurement && measurement->GetStatus() == 0 ? measurement.release() : nullptr;
    });
}
