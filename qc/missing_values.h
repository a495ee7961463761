/// @file
/// Rows that were not measured. Internal.
#pragma once

#include <optional>

#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// equalSpectra, of Lab and XYZ too.
std::optional<Finding> findEqualRows(const Inspected& inspected);

/// unmeasured.
std::optional<Finding> findUnmeasured(const Inspected& inspected);

} // namespace qxcms::qc
