/// @file
/// Lab and XYZ of the same rows. Internal.
#pragma once

#include <optional>

#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// labAgainstXyz, or exchangedAxes where the two agree once a* and b* are exchanged. Nothing where the chart
/// has not both or where spectra are the source.
std::optional<Finding> findLabAgainstXyz(const Inspected& inspected);

} // namespace qxcms::qc
