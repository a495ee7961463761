/// @file
/// The colour difference of two Lab triples and its parts.
#pragma once

#include <array>
#include <vector>

#include "qc/span.h"

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
    double
        chromaticness; ///< dCh = sqrt(da*^2 + db*^2), without a sign, as for the grey balance in ISO 12647-2
    double total;      ///< by the formula
};

/// @param formula kCiede2000 or the number of a difference function of TLabSpace (see formulas.h).
Difference difference(const Lab& sample, const Lab& standard, int formula);

/// The differences of as many samples from their standards.
/// @param samples, standards of equal size.
std::vector<Difference> differences(Span<const Lab> samples, Span<const Lab> standards, int formula);

} // namespace qxcms::qc
