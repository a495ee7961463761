/// @file
/// Measurements of light. Internal.
#pragma once

#include <optional>

#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// emission: declared, or shown by lines and values of spectra or by the sums of RGB device values.
std::optional<Finding> findEmission(const Inspected& inspected, bool isDeclared);

} // namespace qxcms::qc
