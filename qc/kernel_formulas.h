/// @file
/// The formulas as the kernel has them. Internal.
#pragma once

#include <optional>

#include "qc/formulas.h"

namespace qxcms::qc {

/// The number of a formula in TLabSpace's list; nothing for CIEDE2000 as published, which is none of it.
std::optional<int> kernelNumber(DeltaE id);

} // namespace qxcms::qc
