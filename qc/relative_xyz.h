/// @file
/// Lab as parts of its white.
#pragma once

#include <array>

#include "qc/difference.h"

namespace qxcms::qc {

/// Y of L*, on a white of Y = 100 (CIE 15).
double luminanceOf(double lightness);

/// X, Y and Z of Lab in percent of their white (CIE 15); below 0 for Lab that no light has.
std::array<double, 3> relativeXyzOf(const Lab& lab);

/// Lab of X, Y and Z in percent of their white (CIE 15).
Lab labOfRelativeXyz(const std::array<double, 3>& percent);

} // namespace qxcms::qc
