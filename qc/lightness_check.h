/// @file
/// Samples that are lighter than any that reflects. Internal.
#pragma once

#include <optional>

#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// Reflecting and transmitting samples stay below this on a white of 100; bright fluorescent colours come
/// near.
constexpr double kLargestReflectedY = 120.0;

/// tooLight.
std::optional<Finding> findTooLight(const Inspected& inspected);

} // namespace qxcms::qc
