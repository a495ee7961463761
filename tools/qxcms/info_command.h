/// @file
/// "qxcms info": what documents hold.
#pragma once

#include "tools/qxcms/options.h"

namespace qxcms::command {

/// @return an ExitCode.
int runInfo(const InfoOptions& options);

} // namespace qxcms::command
