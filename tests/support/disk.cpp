// The definitions of a program come before those of the system, for SQLite and the bundled platform, too. The
// tests do not wait for the disk: none of them asks what a power cut leaves.
#include "tests/support/disk.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <system_error>

namespace qxcms::tests {

bool (*diskWatcher)(const char* call, const std::filesystem::path& file) = nullptr;

std::filesystem::path pathOf(int descriptor) {
    std::error_code failure;
    return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), failure);
}

namespace {

// Unwatched they take no memory.
bool fails(const char* call, const char* path) {
    return diskWatcher != nullptr && diskWatcher(call, path);
}
bool fails(const char* call, int descriptor) {
    return diskWatcher != nullptr && diskWatcher(call, pathOf(descriptor));
}

} // namespace
} // namespace qxcms::tests

int fsync(int descriptor) {
    return qxcms::tests::fails("sync", descriptor) ? -1 : 0;
}

int fdatasync(int descriptor) {
    return fsync(descriptor);
}

int ftruncate(int descriptor, off_t size) noexcept {
    if (qxcms::tests::fails("truncate", descriptor))
        return -1;
    return static_cast<int>(syscall(SYS_ftruncate, descriptor, size));
}

int link(const char* from, const char* to) noexcept {
    return qxcms::tests::fails("link", to) ? -1 : linkat(AT_FDCWD, from, AT_FDCWD, to, 0);
}

int unlink(const char* path) noexcept {
    return qxcms::tests::fails("unlink", path) ? -1 : unlinkat(AT_FDCWD, path, 0);
}
