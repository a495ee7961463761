/// @file
/// The bytes of a file.
#pragma once

#include <string>

namespace qxcms::command {

struct FileBytes {
    std::string bytes;
    /// Why the file cannot be read; empty when it can.
    std::string error;
};

/// Reads a regular file, or whatever else gives bytes and comes to an end (a pipe).
FileBytes readBytes(const std::string& name);

/// Writes a file; one that is there stays as it was until all is written.
/// @return why it cannot be written; empty when it is.
std::string writeBytes(const std::string& name, const std::string& bytes);

} // namespace qxcms::command
