/// @file
/// The colour difference of two Lab triples and its parts.
#pragma once

#include <array>
#include <vector>

#include "qc/formulas.h"
#include "qc/result.h"
#include "qc/span.h"

namespace qxcms::qc {

/// L*, a*, b*.
using Lab = std::array<double, 3>;

/// Sample minus standard. Of a Lab that is no number, nor is any part that it goes into. The parts are those
/// of CIELAB whatever the formula of the total.
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

Difference difference(const Lab& sample, const Lab& standard, DeltaE formula = DeltaE::ciede2000);

/// The differences of samples from their standards, one by one. Refused (usage) where there are not as many
/// of both.
Result<std::vector<Difference>> differences(Span<const Lab> samples, Span<const Lab> standards,
                                            DeltaE formula = DeltaE::ciede2000);

/// The totals of differences, for statistics.
std::vector<double> totalsOf(Span<const Difference> differences);

} // namespace qxcms::qc
