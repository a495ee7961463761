/// @file
/// "qxcms lint --json" for programs; docs/json.md describes the keys.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/qxcms/report/lint_report.h"

namespace qxcms::command {

/// @param written the file that the normalised text was written to, if it was.
std::string lintJson(const std::vector<LintReport>& reports, const std::optional<std::string>& written);

} // namespace qxcms::command
