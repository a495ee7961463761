/// @file
/// "qxcms diff" for people.
#pragma once

#include <string>

#include "tools/qxcms/report/diff_report.h"

namespace qxcms::command {

std::string diffText(const DiffReport& report);

} // namespace qxcms::command
