#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include "base/guarded.h"
#include "platform/logical_names.h"
#include "platform/utility.h"

namespace {

namespace fs = std::filesystem;

/// As many symbolic links as the system itself follows.
constexpr int kLinksFollowed = 40;

/// How many taken names are passed over when a temporary file is made.
constexpr int kNamesTried = 1000;

/// A file that is open for writing.
struct WrittenFile {
    FILE* file = nullptr;
    /// What is written until the file is closed, empty when the target itself is written.
    std::string temporary;
    std::string target;
    WrittenFile* next = nullptr;
};

constinit std::mutex writtenFilesLock;
constinit WrittenFile* writtenFiles = nullptr;
constinit std::atomic<unsigned> temporaryNumber = 0;

FILE* remember(std::unique_ptr<WrittenFile> written) {
    const std::lock_guard<std::mutex> lock(writtenFilesLock);
    written->next = writtenFiles;
    writtenFiles = written.release();
    return writtenFiles->file;
}

/// Takes a file from the open ones; null when it is not open for writing.
std::unique_ptr<WrittenFile> forget(FILE* file) {
    const std::lock_guard<std::mutex> lock(writtenFilesLock);
    for (WrittenFile** link = &writtenFiles; *link != nullptr; link = &(*link)->next) {
        WrittenFile* const written = *link;
        if (written->file == file) {
            *link = written->next;
            return std::unique_ptr<WrittenFile>(written);
        }
    }
    return nullptr;
}

/// The absolute path behind all symbolic links, also behind one whose end does not exist yet. Empty for links
/// in /dev and /proc: they stand for open descriptors, which a renamed file would not reach.
fs::path targetOf(const char* path) {
    fs::path target = fs::absolute(path);
    for (int links = 0; links < kLinksFollowed; ++links) {
        char next[PATH_MAX];
        const ssize_t length = readlink(target.c_str(), next, sizeof next);
        if (length <= 0)
            break;
        if (target.native().starts_with("/dev/") || target.native().starts_with("/proc/"))
            return {};
        target = target.parent_path() / std::string(next, static_cast<std::size_t>(length));
    }
    return target;
}

/// Creates a file of a new name in a folder. @return its descriptor, or the negative error number.
int createTemporary(const fs::path& folder, mode_t mode, std::string& name) {
    for (int tried = 0; tried < kNamesTried; ++tried) {
        const std::string process = std::to_string(getpid());
        name = folder / (".qxcms-" + process + "-" + std::to_string(temporaryNumber++) + ".tmp");
        const int descriptor = open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (descriptor >= 0)
            return descriptor;
        if (errno != EEXIST)
            return -errno;
    }
    return -EEXIST;
}

/// Gives a new file the mode bits of the one that it will replace, and its owner where that is allowed.
bool takeOver(int descriptor, const struct stat& existing) {
    [[maybe_unused]] const int owner = fchown(descriptor, existing.st_uid, existing.st_gid);
    return fchmod(descriptor, existing.st_mode & 07777) == 0;
}

FILE* openDirectly(const char* path) {
    auto written = std::make_unique<WrittenFile>();
    written->file = fopen(path, "wb");
    return written->file != nullptr ? remember(std::move(written)) : nullptr;
}

/// @param existing the state of the file that will be replaced, null when there is none.
FILE* openBeside(const char* path, const fs::path& target, const struct stat* existing) {
    auto written = std::make_unique<WrittenFile>();
    written->target = target.string();
    const mode_t mode = existing != nullptr ? 0600 : 0666;
    const int descriptor = createTemporary(target.parent_path(), mode, written->temporary);
    // Only a folder that takes no new file is a reason to empty the file that is there.
    if (descriptor == -EACCES || descriptor == -EPERM || descriptor == -EROFS || descriptor == -ENAMETOOLONG)
        return openDirectly(path);
    if (descriptor < 0)
        return nullptr;
    if (existing != nullptr && !takeOver(descriptor, *existing)) {
        close(descriptor);
        unlink(written->temporary.c_str());
        return openDirectly(path);
    }
    written->file = fdopen(descriptor, "wb");
    if (written->file == nullptr) {
        close(descriptor);
        unlink(written->temporary.c_str());
        return nullptr;
    }
    return remember(std::move(written));
}

FILE* openForWriting(const char* path) {
    const fs::path target = targetOf(path);
    if (target.empty())
        return openDirectly(path);
    struct stat existing;
    if (stat(path, &existing) != 0)
        return errno == ENOENT ? openBeside(path, target, nullptr) : nullptr;
    if (!S_ISREG(existing.st_mode))
        return openDirectly(path);
    if (faccessat(AT_FDCWD, path, W_OK, AT_EACCESS) != 0)
        return nullptr;
    return openBeside(path, target, &existing);
}

FILE* openForReading(const char* path) {
    FILE* const file = fopen(path, "rb");
    struct stat state;
    if (file == nullptr || fstat(fileno(file), &state) != 0 || !S_ISDIR(state.st_mode))
        return file;
    fclose(file);
    return nullptr;
}

FILE* openResolved(const char* name, const char* mode) {
    char path[PATH_MAX];
    if (fport(path, sizeof path, name) != 0 || path[0] == '\0')
        return nullptr;
    if (std::strcmp(mode, "r") == 0)
        return openForReading(path);
    return std::strcmp(mode, "w") == 0 ? openForWriting(path) : nullptr;
}

/// Closes a written file and puts it in place. @return 0, or -1 when anything of it was lost.
int closeWritten(const WrittenFile& written) {
    const bool flushed = fflush(written.file) == 0 && ferror(written.file) == 0;
    const bool complete = fclose(written.file) == 0 && flushed;
    if (written.temporary.empty())
        return complete ? 0 : -1;
    if (complete && rename(written.temporary.c_str(), written.target.c_str()) == 0)
        return 0;
    unlink(written.temporary.c_str());
    return -1;
}

} // namespace

FILE* open_resolved_file(const char* name, const char* mode) {
    if (name == nullptr || mode == nullptr)
        return nullptr;
    return qxcms::detail::guarded(static_cast<FILE*>(nullptr), [&] { return openResolved(name, mode); });
}

int close_resolved_file(FILE* file) {
    if (file == nullptr)
        return -1;
    return qxcms::detail::guarded(-1, [&] {
        const std::unique_ptr<WrittenFile> written = forget(file);
        if (written == nullptr)
            return fclose(file) == 0 ? 0 : -1;
        return closeWritten(*written);
    });
}
