/// @file
/// Samples that are lighter than any that reflects, or darker than no light at all. Internal.
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

/// negativeReflectance of Lab and XYZ: L* below 0, but for the noise of dark samples and for markers
/// (isMarker).
std::optional<Finding> findBelowBlack(const Inspected& inspected);

} // namespace qxcms::qc
