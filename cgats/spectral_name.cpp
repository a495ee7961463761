#include "cgats/spectral_name.h"

#include <algorithm>
#include <string>

#include "base/number_text.h"
#include "platform/utility.h"

namespace qxcms::detail {

namespace {

constexpr double kShortest = 200.0;
constexpr double kLongest = 2600.0;

constexpr std::string_view kPrefixes[] = {
    "SPECTRAL_NM_", "SPECTRAL_PCT_", "SPECTRAL_DEC_", "SPECTRAL_NM", "SPECTRAL_PCT",
    "SPECTRAL_DEC", "SPECTRAL_",     "SPECTRAL",      "SPECTRUM_",   "SPECTRUM",
    "SPEC_",        "SPEC",          "NM_",           "NM"};
constexpr std::string_view kVaguePrefixes[] = {"",   "R_",    "R",    "T_",      "T",     "WL_",
                                               "WL", "REFL_", "REFL", "LAMBDA_", "LAMBDA"};
constexpr std::string_view kUnits[] = {"_nm", "(nm)", "nm"};

bool startsWith(std::string_view text, std::string_view start) {
    return text.size() >= start.size() &&
           strncmp_ci(text.data(), start.data(), static_cast<int>(start.size())) == 0;
}

bool endsWith(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && startsWith(text.substr(text.size() - end.size()), end);
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// Digits, and a point or comma with digits or none.
std::optional<double> wavelengthOf(std::string_view name) {
    std::string digits(name);
    std::replace(digits.begin(), digits.end(), ',', '.');
    std::size_t points = 0;
    for (const char c : digits) {
        points += c == '.' ? 1 : 0;
        if (!isDigit(c) && c != '.')
            return std::nullopt;
    }
    if (digits.empty() || !isDigit(digits.front()) || !isDigit(digits.back()) || points > 1)
        return std::nullopt;
    const double value = parseDouble(digits.data(), digits.data() + digits.size());
    if (value < kShortest || value > kLongest)
        return std::nullopt;
    return value;
}

} // namespace

std::optional<SpectralName> spectralName(std::string_view name) {
    bool hasUnit = false;
    for (const std::string_view unit : kUnits)
        if (!hasUnit && endsWith(name, unit)) {
            hasUnit = true;
            name.remove_suffix(unit.size());
        }
    for (const std::string_view prefix : kPrefixes)
        if (startsWith(name, prefix))
            if (const auto wavelength = wavelengthOf(name.substr(prefix.size())))
                return SpectralName{*wavelength, true};
    for (const std::string_view prefix : kVaguePrefixes)
        if (startsWith(name, prefix))
            if (const auto wavelength = wavelengthOf(name.substr(prefix.size())))
                return SpectralName{*wavelength, hasUnit};
    return std::nullopt;
}

} // namespace qxcms::detail
