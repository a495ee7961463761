#include "platform/logical_names.h"

#include <dlfcn.h>
#include <link.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "base/guarded.h"

namespace {

using qxcms::detail::guarded;

/// The logical name of the data that come with the library.
constexpr char kDataName[] = "QX_CMS";

/// How far above the library the data are looked for: <prefix>/lib/<architecture> and a bit more.
constexpr int kParentsSearched = 4;

constexpr std::size_t kLongestTranslation = QXCMS_LOGNAM_SIZE - 1;

/// A name of this process. There are few, and the list holds no memory when there is none.
struct Definition {
    std::string name;
    std::string value;
    Definition* next = nullptr;
};

constinit std::mutex definitionsLock;
constinit Definition* definitions = nullptr;

/// The link to the definition of a name, or the empty one at the end. Only under the lock.
Definition** definitionOf(std::string_view name) {
    Definition** link = &definitions;
    while (*link != nullptr && (*link)->name != name)
        link = &(*link)->next;
    return link;
}

void define(const char* name, const char* value) {
    const std::lock_guard<std::mutex> lock(definitionsLock);
    Definition** const link = definitionOf(name);
    if (*link != nullptr)
        (*link)->value = value;
    else
        *link = new Definition{name, value};
}

void undefine(const char* name) {
    const std::lock_guard<std::mutex> lock(definitionsLock);
    Definition** const link = definitionOf(name);
    const std::unique_ptr<Definition> removed(*link);
    if (removed != nullptr)
        *link = removed->next;
}

/// The file that holds this code: the shared library, or the program in a static build.
std::filesystem::path ownFile() {
    Dl_info info;
    link_map* object = nullptr;
    if (dladdr1(kDataName, &info, reinterpret_cast<void**>(&object), RTLD_DL_LINKMAP) == 0)
        return {};
    // The program has no name here, and the word it was called by need not be a path.
    return object->l_name[0] != '\0' ? object->l_name : "/proc/self/exe";
}

std::string dataDirectory() {
    std::error_code error;
    std::filesystem::path folder = std::filesystem::canonical(ownFile(), error).parent_path();
    if (error == std::errc::not_enough_memory)
        throw std::bad_alloc();
    if (folder.empty())
        return {};
    for (int parents = 0; parents <= kParentsSearched; ++parents, folder = folder.parent_path()) {
        const std::filesystem::path data = folder / "share" / "qxcms";
        if (std::filesystem::is_directory(data / "r", error))
            return data.string();
    }
    return {};
}

/// The translation of a name, empty when there is none.
std::string translation(std::string_view name) {
    {
        const std::lock_guard<std::mutex> lock(definitionsLock);
        if (const Definition* const defined = *definitionOf(name))
            return defined->value;
    }
    const char* const inEnvironment = std::getenv(std::string(name).c_str());
    if (inEnvironment != nullptr && inEnvironment[0] != '\0')
        return inEnvironment;
    return name == kDataName ? dataDirectory() : std::string();
}

/// The parts of "root:[a.b]name.ext".
struct Specification {
    std::string_view root;
    std::string_view directory;
    std::string_view name;
};

/// Splits a specification. Nothing for a plain path: every text with a "/", and every text without a root, a
/// closing bracket or one of the directories between the dots.
std::optional<Specification> split(std::string_view text) {
    const std::size_t opening = text.find(":[");
    if (opening == std::string_view::npos || opening == 0 || text.find('/') != std::string_view::npos)
        return std::nullopt;
    const std::size_t directory = opening + 2;
    const std::size_t closing = text.find(']', directory);
    if (closing == std::string_view::npos)
        return std::nullopt;
    Specification parts = {text.substr(0, opening), text.substr(directory, closing - directory),
                           text.substr(closing + 1)};
    // "[a.]" is what is left of "[a.b]" without b.
    if (parts.directory.size() > 1 && parts.directory.ends_with('.'))
        parts.directory.remove_suffix(1);
    const bool nameless = parts.directory.starts_with('.') || parts.directory.ends_with('.') ||
                          parts.directory.find("..") != std::string_view::npos;
    return nameless ? std::nullopt : std::optional(parts);
}

/// The path that a text stands for; nothing when its root has no translation.
std::optional<std::string> pathOf(std::string_view text) {
    const std::optional<Specification> parts = split(text);
    if (!parts)
        return std::string(text);
    std::string path = translation(parts->root);
    if (path.empty())
        return std::nullopt;
    if (path.back() != '/')
        path += '/';
    if (!parts->directory.empty()) {
        std::string folders(parts->directory);
        std::replace(folders.begin(), folders.end(), '.', '/');
        path += folders + '/';
    }
    return path += parts->name;
}

/// Copies a text with its terminator. @return 0, or -1 with an empty text when it does not fit.
int deliver(const std::string& text, char* out, std::size_t size) {
    if (text.size() >= size) {
        out[0] = '\0';
        return -1;
    }
    std::memcpy(out, text.c_str(), text.size() + 1);
    return 0;
}

} // namespace

int lognam(const char* name, char* out) {
    if (out == nullptr)
        return -1;
    const std::optional<std::string> found = guarded(std::optional<std::string>(), [&] {
        return std::optional(name != nullptr ? translation(name) : std::string());
    });
    if (!found) {
        out[0] = '\0';
        errno = ENOMEM;
        return -1;
    }
    return deliver(*found, out, QXCMS_LOGNAM_SIZE) == 0 && !found->empty() ? 0 : -1;
}

int deflognam(const char* name, const char* value) {
    if (name == nullptr || name[0] == '\0')
        return -1;
    if (value != nullptr && std::strlen(value) > kLongestTranslation)
        return -1;
    return guarded(-1, [&] {
        if (value == nullptr || value[0] == '\0')
            undefine(name);
        else
            define(name, value);
        return 0;
    });
}

int fport(char* out, int size, const char* specification) {
    if (out == nullptr || size <= 0)
        return -1;
    const std::optional<std::string> path = guarded(std::optional<std::string>(), [&] {
        return specification != nullptr ? pathOf(specification) : std::nullopt;
    });
    if (!path) {
        out[0] = '\0';
        return -1;
    }
    return deliver(*path, out, static_cast<std::size_t>(size));
}
