/// @file
/// Statistics of colour differences.
#pragma once

#include <cstddef>
#include <vector>

namespace qxcms::qc {

struct Statistics {
    std::size_t count;
    double mean;
    double median;       ///< the mean of the middle two for an even count
    double percentile95; ///< nearest rank: the smallest value that at least 95 % of the values do not exceed
    double maximum;
    std::size_t greatest; ///< the index of the maximum, the first of equal ones
};

/// @param values at least one, all finite.
Statistics statistics(const std::vector<double>& values);

/// The indices of the `count` greatest values, greatest first, equal ones in their order; all of them when
/// there are fewer.
std::vector<std::size_t> worst(const std::vector<double>& values, std::size_t count);

} // namespace qxcms::qc
