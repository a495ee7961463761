/// @file
/// Numbers in columns of device values, also of those that the kernel takes for text. Internal.
#pragma once

#include <cstdint>
#include <vector>

#include "qc/chart.h"

namespace qxcms::qc {

/// The number in a row of a column; NaN for a text that is none.
double numberAt(const Chart& chart, int row, std::int32_t column);

/// Whether there is one in every row.
bool holdsNumbers(const Chart& chart, int column);

/// The rows that hold something other than 0 in any of these columns.
std::vector<bool> rowsWith(const Chart& chart, const std::vector<std::int32_t>& columns);

} // namespace qxcms::qc
