/// @file
/// The published white points of the CIE illuminants.
#pragma once

#include <array>
#include <optional>
#include <string>

namespace qxcms::qc {

/// X, Y, Z with Y = 100 of an illuminant for an observer, as published: ASTM E308 where it prints them, else
/// from the chromaticities of CIE 15. Nothing where none is published.
/// @param illuminant the CIE's short name ("A", "D50", "F11", "LED-B1"), in any letter case. @param tenDegree
/// for the CIE 1964 observer, else the CIE 1931 one.
std::optional<std::array<double, 3>> publishedWhite(const std::string& illuminant, bool tenDegree);

} // namespace qxcms::qc
