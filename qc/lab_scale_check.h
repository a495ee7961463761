/// @file
/// Lab on another scale. Internal.
#pragma once

#include <optional>

#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// labScale, where Lab is the source.
std::optional<Finding> findLabScale(const Inspected& inspected);

} // namespace qxcms::qc
