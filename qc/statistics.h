/// @file
/// Statistics of colour differences.
#pragma once

#include <cstddef>
#include <vector>

#include "qc/span.h"

namespace qxcms::qc {

/// Of no values at all, and where one of them is no number (NaN), every figure but the count is NaN.
struct Statistics {
    std::size_t count;
    double mean;
    double median;       ///< the mean of the middle two for an even count
    double percentile90; ///< the percentiles by nearest rank
    double percentile95;
    double percentile99;
    double maximum;
    std::size_t greatest; ///< the index of the maximum, the first of equal ones; of the first NaN where there
                          ///< is one; 0 of no values
};

Statistics statistics(Span<const double> values);

/// The percentile by nearest rank: the smallest value that at least `percent` percent of the values do not
/// exceed. NaN where statistics() has it, and for any other percentage than 1 to 100.
double percentile(Span<const double> values, int percent);

/// The indices of the `count` greatest values, greatest first, equal ones in their order; all of them when
/// there are fewer. A NaN is the worst.
std::vector<std::size_t> worst(Span<const double> values, std::size_t count);

} // namespace qxcms::qc
