/// @file
/// "qxcms diff --json" for programs; docs/json.md describes the keys.
#pragma once

#include <string>

#include "tools/qxcms/report/diff_report.h"

namespace qxcms::command {

std::string diffJson(const DiffReport& report);

} // namespace qxcms::command
