/// @file
/// The spellings of spectral columns. Internal.
#pragma once

#include <optional>
#include <string_view>

namespace qxcms::detail {

/// A column name that may stand for a wavelength.
struct SpectralName {
    double wavelength; ///< in nm
    /// The name says so by itself; otherwise ("380", "R380") only in a row of ascending ones.
    bool isCertain;
};

/// Understands SPEC_380, SPECTRAL_NM380, R_380nm, 380nm, NM_380, 380 and the like, also with decimals, for
/// 200 to 2600 nm.
std::optional<SpectralName> spectralName(std::string_view name);

} // namespace qxcms::detail
