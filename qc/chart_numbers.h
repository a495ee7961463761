/// @file
/// Values of a chart that must be numbers. Internal.
#pragma once

#include <cstdint>
#include <vector>

#include "qc/chart.h"

namespace qxcms::qc {

/// Refuses the first doubtful value that stands in one of these columns.
/// @throws Refusal (unreadable).
void requireNumbers(const Chart& chart, const std::vector<std::int32_t>& columns);

/// Refuses the first value of a row that is not finite. @param columns the column of each value.
/// @throws Refusal (unreadable).
void requireFinite(const Chart& chart, int row, const double* values, const std::int32_t* columns, int count);

} // namespace qxcms::qc
