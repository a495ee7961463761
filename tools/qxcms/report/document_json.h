/// @file
/// What all JSON reports tell of a file in the same way.
#pragma once

#include <vector>

#include "tools/qxcms/document_file.h"
#include "tools/qxcms/report/json_text.h"

namespace qxcms::command {

/// Null for a file that is not refused.
Json failureJson(const std::optional<ReadFailure>& failure);

/// An array, one object per entry.
Json libertiesJson(const std::vector<TCgatsLiberty>& liberties);

} // namespace qxcms::command
