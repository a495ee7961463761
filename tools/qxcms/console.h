/// @file
/// What the command says on its two streams.
#pragma once

#include <string>
#include <string_view>

namespace qxcms::command {

/// Writes to the standard output and sees to it that it arrives.
/// @return false when it does not; the reason is told, unless the reader has gone (a closed pipe).
bool print(const std::string& text);

/// Writes "qxcms: message" to the standard error, without taking memory. File texts in it must be printable.
void complain(std::string_view message) noexcept;

/// Writes "qxcms: warning: message" to the standard error.
void warn(std::string_view message) noexcept;

/// Writes "qxcms: note: message" to the standard error.
void note(std::string_view message) noexcept;

} // namespace qxcms::command
