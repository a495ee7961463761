/// @file
/// The two colours that a difference is taken of. Internal.
#pragma once

#include "qc/difference.h"

namespace qxcms::qc {

/// The colour that stands in a row of a file and the one of the other file that it is compared with.
struct ComparedRow {
    int row; ///< counted from 0
    Lab found;
    Lab expected;
};

} // namespace qxcms::qc
