/// @file
/// The scale of XYZ values. Internal.
#pragma once

#include <optional>

#include "qc/chart.h"
#include "qc/finding.h"
#include "qc/inspected.h"

namespace qxcms::qc {

/// 100 for XYZ of 0 to 1, else 1. @param chart has XYZ and a row.
double scaleOfXyz(const Chart& chart);

/// xyzScale, where XYZ is the source.
std::optional<Finding> findXyzScale(const Inspected& inspected);

} // namespace qxcms::qc
