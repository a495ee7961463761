/// @file
/// "qxcms lint" for people.
#pragma once

#include <string>

#include "tools/qxcms/report/lint_report.h"

namespace qxcms::command {

/// One file; ends with a line that tells the verdict. @param withList whether the liberties are listed.
std::string lintText(const LintReport& report, bool withList);

} // namespace qxcms::command
