#include "qc/difference.h"

#include <cmath>

#include "colorspace/tlabspace.h"

namespace qxcms::qc {

namespace {

// dH* = s * sqrt(da^2 + db^2 - dC^2), s = -1 where the rotation from the standard to the sample,
// a_std * b_smp - a_smp * b_std, is negative. Rounding may leave the square below 0; it then counts as 0.
double hueDifference(const Lab& sample, const Lab& standard) {
    const double square = TLabSpace::CalcSquareDeltaHConvertedStatic(sample.data(), standard.data());
    if (square <= 0.0)
        return 0.0;
    const double rotation = standard[1] * sample[2] - sample[1] * standard[2];
    return rotation < 0.0 ? -std::sqrt(square) : std::sqrt(square);
}

double chroma(const Lab& lab) {
    return std::sqrt(lab[1] * lab[1] + lab[2] * lab[2]);
}

} // namespace

Difference difference(const Lab& sample, const Lab& standard, int formula) {
    const double square = TLabSpace::CalcSquareDeltaEConvertedStatic(sample.data(), standard.data(), formula);
    Difference result;
    result.lightness = sample[0] - standard[0];
    result.a = sample[1] - standard[1];
    result.b = sample[2] - standard[2];
    result.chroma = chroma(sample) - chroma(standard);
    result.hue = hueDifference(sample, standard);
    // The hue term inside a formula may leave the square slightly below 0 as well.
    result.total = square < 0.0 ? 0.0 : std::sqrt(square);
    return result;
}

} // namespace qxcms::qc
