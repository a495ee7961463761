/// @file
/// Files that look like charts and hold no measurements of one. Internal.
#pragma once

#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/finding.h"

namespace qxcms::qc {

/// Refuses documents whose first line says that they are no charts: gamut surfaces, correction matrices,
/// calibration curves.
/// @throws Refusal (notComparable).
void requireChart(const Chart& chart);

/// A warning where the first line says that the document is a target to be printed or displayed, whose
/// colours are expected, not measured.
std::vector<Finding> findingsOnKind(const Chart& chart);

} // namespace qxcms::qc
