/// @file
/// Device values that pair what hardly belongs together. Internal.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "qc/compared_row.h"
#include "qc/finding.h"

namespace qxcms::qc {

/// Warns where the median CIEDE2000 of eight pairs and more lies above 10, and is not far below that of
/// samples that are paired by chance: prints of one chart on quite different paper differ as much, but by far
/// less than any two of their patches.
/// @param by the device values that pair them, "CMYK".
std::optional<Finding> findLargeDifferences(const std::vector<ComparedRow>& rows, const std::string& by);

/// Whether something that was told is reason enough for large differences.
bool explainsLargeDifferences(const Finding& finding);

} // namespace qxcms::qc
