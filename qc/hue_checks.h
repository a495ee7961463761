/// @file
/// The hues of pure colours. Internal.
#pragma once

#include <optional>

#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// exchangedAxes, by device values.
std::optional<Finding> findExchangedHues(const Inspected& inspected);

/// otherHues.
std::optional<Finding> findOtherHues(const Inspected& inspected);

} // namespace qxcms::qc
