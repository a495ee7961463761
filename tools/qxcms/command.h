/// @file
/// The command line.
#pragma once

namespace qxcms::command {

/// Runs the command. @return its exit code.
int run(int argc, const char* const* argv) noexcept;

} // namespace qxcms::command
