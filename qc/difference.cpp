#include "qc/difference.h"

#include <cmath>

#include "colorspace/tlabspace.h"
#include "qc/ciede2000.h"
#include "qc/count_text.h"
#include "qc/kernel_formulas.h"

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

double totalDifference(const Lab& sample, const Lab& standard, DeltaE formula) {
    const std::optional<int> number = kernelNumber(formula);
    if (!number)
        return ciede2000(sample, standard);
    const double square = TLabSpace::CalcSquareDeltaEConvertedStatic(sample.data(), standard.data(), *number);
    // The hue term inside a formula may leave the square slightly below 0.
    return square < 0.0 ? 0.0 : std::sqrt(square);
}

} // namespace

Difference difference(const Lab& sample, const Lab& standard, DeltaE formula) {
    Difference result;
    result.lightness = sample[0] - standard[0];
    result.a = sample[1] - standard[1];
    result.b = sample[2] - standard[2];
    result.chroma = chroma(sample) - chroma(standard);
    result.hue = hueDifference(sample, standard);
    result.chromaticness = std::sqrt(result.a * result.a + result.b * result.b);
    result.total = totalDifference(sample, standard, formula);
    return result;
}

Result<std::vector<Difference>> differences(Span<const Lab> samples, Span<const Lab> standards,
                                            DeltaE formula) {
    if (samples.size() != standards.size())
        return Refusal(Refusal::Kind::usage,
                       "the numbers of samples and standards differ, " + countText(samples.size()) + " and " +
                           countText(standards.size()) + "; each sample needs a standard of its own");
    std::vector<Difference> all;
    all.reserve(samples.size());
    for (std::size_t i = 0; i < samples.size(); ++i)
        all.push_back(difference(samples[i], standards[i], formula));
    return all;
}

std::vector<double> totalsOf(Span<const Difference> differences) {
    std::vector<double> totals;
    totals.reserve(differences.size());
    for (const Difference& one : differences)
        totals.push_back(one.total);
    return totals;
}

} // namespace qxcms::qc
