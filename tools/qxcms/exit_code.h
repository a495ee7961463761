/// @file
/// What the command tells its caller.
#pragma once

namespace qxcms::command {

enum ExitCode : int {
    kDone = 0,
    kAboveTolerance = 1,  ///< a single difference lies above the tolerance
    kLibertiesNeeded = 1, ///< a file is readable, and not as it stands
    kUsage = 2,
    kUnreadable = 3,
    kNotComparable = 4,
    kFailed = 5 ///< the output could not be written, or memory ran out
};

} // namespace qxcms::command
