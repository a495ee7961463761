#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
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

namespace fs = std::filesystem;

/// The one option byte there is: regular files, with their path.
constexpr unsigned char kRegularFiles = 2;

fsearch_state* search(const char* directory) {
    char path[PATH_MAX];
    if (fport(path, sizeof path, directory) != 0)
        return nullptr;
    auto state = std::make_unique<fsearch_state>();
    std::error_code error;
    fs::directory_iterator entry(path, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
        std::error_code unreachable;
        if (entry->is_regular_file(unreachable))
            state->names.push_back(entry->path().filename().string());
    }
    if (error)
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
