/// @file
/// What the findings on a chart are worded with. Internal.
#pragma once

#include <string>

#include "qc/chart.h"
#include "qc/finding.h"

namespace qxcms::qc {

Finding warning(Finding::Kind kind, const std::string& text);

/// In six digits.
std::string numberText(double value);

/// "1,545".
std::string counted(int count);

/// "file: text".
std::string fileAnd(const Chart& chart, const std::string& text);

} // namespace qxcms::qc
