/// @file
/// "qxcms lint": whether files can be read, and what stands against it.
#pragma once

#include "tools/qxcms/options.h"

namespace qxcms::command {

/// @return an ExitCode. @throws qc::Refusal.
int runLint(const LintOptions& options);

} // namespace qxcms::command
