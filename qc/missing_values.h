/// @file
/// Rows that were not measured. Internal.
#pragma once

#include <optional>

#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// equalSpectra, of Lab and XYZ too.
std::optional<Finding> findEqualRows(const Inspected& inspected);

/// unmeasured: rows of zeros.
std::optional<Finding> findUnmeasured(const Inspected& inspected);

/// unmeasured: rows of one and the same value below 0, such as -1 or -999.
std::optional<Finding> findMarkers(const Inspected& inspected);

/// Whether the compared values of a row are such.
bool isMarker(const Inspected& inspected, int row);

} // namespace qxcms::qc
