/// @file
/// The text of a file.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace qxcms::command {

struct FileBytes {
    std::string text; ///< up to the first NUL byte
    /// The position of a NUL byte that more bytes follow.
    std::optional<std::size_t> cutAt;
    bool looksLikeUtf16 = false;
    /// Why the file cannot be read; empty when it can.
    std::string error;
};

/// Reads a regular file, or whatever else gives bytes and comes to an end (a pipe).
FileBytes readBytes(const std::string& name);

} // namespace qxcms::command
