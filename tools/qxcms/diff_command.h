/// @file
/// "qxcms diff": two charts, patch by patch.
#pragma once

#include "tools/qxcms/options.h"

namespace qxcms::command {

/// @return an ExitCode. @throws qc::Refusal.
int runDiff(const DiffOptions& options);

} // namespace qxcms::command
