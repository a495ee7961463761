// The calls of this program, the bundled platform included, that reach the disk by descriptor or name.
#pragma once

#include <filesystem>

namespace qxcms::tests {

/// Told of "truncate", "sync", "link" and "unlink" and of the file, before they happen; of a link its new
/// name. Null while no test watches. @return whether the call is to fail, with the error left in errno.
extern bool (*diskWatcher)(const char* call, const std::filesystem::path& file);

/// Empty when the descriptor is not open.
std::filesystem::path pathOf(int descriptor);

} // namespace qxcms::tests
