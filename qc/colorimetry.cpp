#include "qc/colorimetry.h"

#include <new>
#include <utility>

#include "qc/chart_numbers.h"
#include "qc/conditions.h"
#include "qc/count_text.h"
#include "qc/illuminants.h"
#include "qc/lab_rows.h"
#include "qc/observers.h"
#include "qc/table_choice.h"

namespace qxcms::qc {

namespace {

// Statuses of TSpectrum.
constexpr int kNoMemory = 1;

// What a function answers, or the refusal that it throws.
template <class Function>
auto answerOf(Function&& function) -> Result<decltype(function())> {
    try {
        return function();
    } catch (const Refusal& refusal) {
        return refusal;
    }
}

std::vector<Lab> labOf(const Chart& chart, std::optional<ColorSource> wanted, const Conditions* conditions) {
    requireTable(chart);
    const ColorSource source = colorSource(chart, wanted);
    requireNumbers(chart, columnsOf(chart, source));
    return labRows(chart, source, conditions);
}

Refusal unusable(const std::string& message) {
    return Refusal(Refusal::Kind::usage, message);
}

} // namespace

struct Colorimetry::Loaded {
    Loaded(const std::string& illuminant, const std::string& observer)
        : conditions(*illuminants.find(illuminant), findObserver(observer)),
          shortName(shortIlluminant(conditions.illuminant())) {}

    Illuminants illuminants; // the conditions point at one of them
    Conditions conditions;
    std::string shortName;
};

Colorimetry::Colorimetry(std::shared_ptr<const Loaded> what) : loaded(std::move(what)) {}
Colorimetry::Colorimetry(const Colorimetry&) = default;
Colorimetry& Colorimetry::operator=(const Colorimetry&) = default;
Colorimetry::~Colorimetry() = default;

Result<Colorimetry> Colorimetry::of(const std::string& illuminant, const std::string& observer) {
    return answerOf([&] { return Colorimetry(std::make_shared<const Loaded>(illuminant, observer)); });
}

const std::string& Colorimetry::illuminant() const {
    return loaded->shortName;
}

const std::string& Colorimetry::observer() const {
    return loaded->conditions.observer();
}

const std::array<double, 3>& Colorimetry::spectralWhite() const {
    return loaded->conditions.white();
}

const std::array<double, 3>& Colorimetry::xyzWhite() const {
    return loaded->conditions.publishedWhite();
}

Result<Lab> Colorimetry::labOfSpectrum(Span<const double> nanometres, Span<const double> reflectance) const {
    if (nanometres.size() != reflectance.size())
        return unusable("a spectrum has " + countText(nanometres.size()) + " wavelengths and " +
                        countText(reflectance.size()) + " values; it needs as many of both");
    if (nanometres.empty() || nanometres.size() > TSpectrum::kMaxSamples)
        return unusable("a spectrum has " + countText(nanometres.size()) + " values; it takes 1 to " +
                        countText(TSpectrum::kMaxSamples));
    const TSpectrum spectrum(nanometres.data(), static_cast<int>(nanometres.size()), reflectance.data());
    if (spectrum.GetStatus() == kNoMemory)
        throw std::bad_alloc();
    if (spectrum.GetStatus() != 0)
        return unusable(
            "a spectrum has two values at one wavelength, or one at a wavelength that is no finite "
            "number");
    return loaded->conditions.labOf(spectrum);
}

Lab Colorimetry::labOfXyz(const std::array<double, 3>& xyz) const {
    return loaded->conditions.labOf(xyz);
}

Result<std::vector<Lab>> Colorimetry::labRows(const Chart& chart, std::optional<ColorSource> source) const {
    return answerOf([&] { return labOf(chart, source, &loaded->conditions); });
}

Result<std::vector<Lab>> labColumns(const Chart& chart) {
    return answerOf([&] { return labOf(chart, ColorSource::lab, nullptr); });
}

Result<std::vector<std::string>> illuminantNames() {
    return answerOf([] { return Illuminants().names(); });
}

} // namespace qxcms::qc
