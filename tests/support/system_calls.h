// What SQLite and the bundled platform ask the system for, watched by a test.
#pragma once

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/types.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/support/disk.h"

namespace qxcms::tests {

/// Shows a test the calls of this process that change files and folders: "write" of SQLite alone, "truncate",
/// "link", "unlink", "sync", which brings a file or folder to the disk, and "openFolder", which is how SQLite
/// begins to do that with a folder. There is one at a time.
class SystemCalls {
public:
    /// Told of a call and of the name of its file before it happens. @return an error that the call is to
    /// fail with, or 0.
    using Watcher = std::function<int(const std::string& call, const std::string& file)>;

    explicit SystemCalls(Watcher told) {
        watcher() = std::move(told);
        diskWatcher = &fails;
        sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
        openFolder() = reinterpret_cast<decltype(&folderOpened)>(vfs->xGetSystemCall(vfs, "openDirectory"));
        replace("pwrite", reinterpret_cast<sqlite3_syscall_ptr>(&written));
        replace("pwrite64", reinterpret_cast<sqlite3_syscall_ptr>(&written));
        // By whatever name SQLite would call them, these are the program's own.
        replace("ftruncate", reinterpret_cast<sqlite3_syscall_ptr>(&ftruncate));
        replace("unlink", reinterpret_cast<sqlite3_syscall_ptr>(&unlink));
        replace("openDirectory", reinterpret_cast<sqlite3_syscall_ptr>(&folderOpened));
    }
    ~SystemCalls() {
        for (const char* const call : {"pwrite", "pwrite64", "ftruncate", "unlink", "openDirectory"})
            replace(call, nullptr);
        diskWatcher = nullptr;
    }
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;

private:
    static Watcher& watcher() {
        static Watcher told;
        return told;
    }
    static bool fails(const char* call, const std::filesystem::path& file) {
        const int error = watcher()(call, file.filename().string());
        if (error != 0)
            errno = error;
        return error != 0;
    }

    static ssize_t written(int descriptor, const void* bytes, size_t size, off_t offset) {
        return fails("write", pathOf(descriptor)) ? -1 : pwrite(descriptor, bytes, size, offset);
    }
    static int folderOpened(const char* fileInIt, int* descriptor) {
        return fails("openFolder", fileInIt) ? SQLITE_CANTOPEN : openFolder()(fileInIt, descriptor);
    }
    static int (*&openFolder())(const char*, int*) {
        static int (*original)(const char*, int*) = nullptr;
        return original;
    }
    static void replace(const char* call, sqlite3_syscall_ptr replacement) {
        sqlite3_vfs* const vfs = sqlite3_vfs_find(nullptr);
        EXPECT_EQ(vfs->xSetSystemCall(vfs, call, replacement), SQLITE_OK) << call;
    }
};

} // namespace qxcms::tests
