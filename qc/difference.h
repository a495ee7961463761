/// @file
/// The colour difference of two Lab triples and its parts.
#pragma once

#include <array>

namespace qxcms::qc {

/// L*, a*, b*.
using Lab = std::array<double, 3>;

/// Sample minus standard. The parts are those of CIELAB whatever the formula of the total.
struct Difference {
    double lightness; ///< dL*
    double a;         ///< da*
    double b;         ///< db*
    double chroma;    ///< dC*
    double hue;       ///< dH*, positive when the sample's hue angle lies counter-clockwise of the standard's
    double total;     ///< by the formula
};

/// @param formula the number of a difference function of TLabSpace.
Difference difference(const Lab& sample, const Lab& standard, int formula);

} // namespace qxcms::qc
