#include "qc/emission_words.h"

#include <cstddef>

#include "qc/word_search.h"

namespace qxcms::qc {

namespace {

using Words = std::vector<Word>;

bool saysSamples(const Words& words) {
    return hasStem(words, {"reflect", "transmi", "densit", "factor"});
}

} // namespace

bool saysEmission(const std::vector<Word>& words) {
    return !saysSamples(words) &&
           (hasStem(words, {"emissive", "radiance", "irradiance"}) || holdsPair(words, "spectral", "power"));
}

std::optional<bool> emissionOf(const std::vector<Word>& words) {
    if (saysSamples(words))
        return false;
    bool isPower = false; // "W/m2", "mW/(sr m2 nm)"
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        isPower = isPower || (isOneOf(words[i].text, {"w", "mw", "uw"}) && words[i + 1].before == '/');
    if (saysEmission(words) || isPower || holdsPair(words, "light", "source") ||
        holdsPair(words, "ill", "none") || // of the kernel's geometries
        hasStem(words, {"emission", "emitt", "radiant", "ambient", "display", "monitor", "projector"}) ||
        has(words, {"flash", "lamp", "lamps", "cd", "luminance", "illuminance"}))
        return true;
    return std::nullopt;
}

} // namespace qxcms::qc
