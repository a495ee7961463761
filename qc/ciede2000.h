/// @file
/// The CIEDE2000 colour difference as published. Internal.
#pragma once

#include "qc/difference.h"

namespace qxcms::qc {

/// Delta E 00 by ISO/CIE 11664-6 with kL = kC = kH = 1. It does not depend on which of the two is the
/// standard.
double ciede2000(const Lab& sample, const Lab& standard);

} // namespace qxcms::qc
