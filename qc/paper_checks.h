/// @file
/// The patch without ink. Internal.
#pragma once

#include <optional>

#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// paperNotLightest.
std::optional<Finding> findLighterThanPaper(const Inspected& inspected);

/// spectralScale and bandOrder of spectra, otherWhite of Lab and XYZ.
std::optional<Finding> findPaperColor(const Inspected& inspected);

} // namespace qxcms::qc
