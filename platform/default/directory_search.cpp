#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/guarded.h"
#include "platform/logical_names.h"

/// What a search found when it began.
struct fsearch_state {
    /// Ends with "/".
    std::string directory;
    /// Ascending.
    std::vector<std::string> names;
    std::size_t position = 0;
};

namespace {

/// The one option byte there is: regular files, with their path.
constexpr unsigned char kRegularFiles = 2;

struct FolderCloser {
    void operator()(DIR* folder) const { closedir(folder); }
};

using Folder = std::unique_ptr<DIR, FolderCloser>;

/// The next entry; null at the end, and with errno set where the folder cannot be read on.
const dirent* nextEntry(DIR* folder) {
    errno = 0;
    return readdir(folder);
}

/// Not std::filesystem: its directory iterator ends the process when memory runs out between two entries
/// (platformMemory.searchWithoutMemory_isNullOrFindsEverything).
fsearch_state* search(const char* directory) {
    char path[PATH_MAX];
    if (fport(path, sizeof path, directory) != 0)
        return nullptr;
    auto state = std::make_unique<fsearch_state>();
    const Folder folder(opendir(path));
    if (!folder)
        return nullptr;
    while (const dirent* const entry = nextEntry(folder.get())) {
        struct stat file;
        if (fstatat(dirfd(folder.get()), entry->d_name, &file, 0) == 0 && S_ISREG(file.st_mode))
            state->names.emplace_back(entry->d_name);
    }
    if (errno != 0)
        return nullptr;
    std::sort(state->names.begin(), state->names.end());
    state->directory = path;
    if (state->directory.back() != '/')
        state->directory += '/';
    return state.release();
}

} // namespace

fsearch_state* fsinit(const char* directory, const unsigned char* option) {
    if (directory == nullptr || (option != nullptr && *option != kRegularFiles))
        return nullptr;
    return qxcms::detail::guarded(static_cast<fsearch_state*>(nullptr), [&] { return search(directory); });
}

int fsearch(fsearch_state* search, char* out, int size) {
    if (search == nullptr || out == nullptr || size <= 0)
        return -1;
    const std::string& directory = search->directory;
    while (search->position < search->names.size()) {
        const std::string& name = search->names[search->position++];
        if (directory.size() + name.size() >= static_cast<std::size_t>(size))
            continue;
        std::memcpy(out, directory.data(), directory.size());
        std::memcpy(out + directory.size(), name.c_str(), name.size() + 1);
        return 0;
    }
    out[0] = '\0';
    return -1;
}

void fsfree(fsearch_state* search) {
    delete search;
}
