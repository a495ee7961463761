/// @file
/// Resource files on the disk: databases of SQLite, described in docs/data.md.
#pragma once

#include <optional>
#include <string>

#include "platform/default/resource_content.h"

namespace qxcms::detail {

/// Makes a file without topics where there is nothing. @param path an absolute path.
/// @return its content; nothing when something is there already, or it cannot be made.
std::optional<ResourceContent> createResourceFile(const std::string& path) noexcept;

/// The content of a file; nothing when it cannot be read or is no resource file.
std::optional<ResourceContent> readResourceFile(const std::string& path) noexcept;

/// Writes what is to be written, in one transaction. Afterwards the content is that of the file.
/// @return false when it could not be written: content and file are then as before.
bool writeResourceFile(const std::string& path, ResourceContent& content) noexcept;

} // namespace qxcms::detail
