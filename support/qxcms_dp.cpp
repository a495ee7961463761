#include "support/qxcms_dp.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include "base/guarded.h"
#include "platform/logical_names.h"
#include "platform/utility.h"

namespace {

using qxcms::detail::guarded;

constexpr int kNoPath = -1;
constexpr int kRefused = -1;
constexpr int kNotFound = -10;

constexpr const char* kModule = "qxcms_dp";
constexpr int kSearchLine = 87;
constexpr int kSearchInTreeLine = 138;
constexpr int kSearchOfLogicalPathLine = 186;
constexpr int kSearchOfPartsLine = 231;
constexpr int kExtensionLine = 283;
constexpr int kExtensionOfPartsLine = 331;
constexpr int kNowhereLine = 380;
constexpr int kLongNameLine = 386;
constexpr int kShortDestinationLine = 392;

constexpr std::size_t kMessageSize = 256;
constexpr std::size_t kLongestPathOfParts = 255;

/// In the order in which they are searched.
constexpr const char* kTrees[] = {"w", "r"};

/// One character more than callers know of, so that a buffer which they filled up is still terminated.
constinit char mainName[QXCMS_DP_MAIN_SIZE + 1] = "QX_CMS";

/// Reports the text that the parts make together, as far as it fits.
void report(std::initializer_list<std::string_view> parts, int line) {
    char message[kMessageSize];
    std::size_t length = 0;
    for (const std::string_view part : parts)
        length += part.copy(message + length, kMessageSize - 1 - length);
    message[length] = '\0';
    error_mess_fl(message, kModule, line);
}

const char* orEmpty(const char* text) {
    return text != nullptr ? text : "";
}

/// What a data file is asked for by; copies, as the buffers that are written may hold it.
struct DataFile {
    DataFile(const char* givenSubdir, const char* givenName, const char* givenExt)
        : subdir(orEmpty(givenSubdir)), name(givenName), ext(orEmpty(givenExt)) {}

    bool takesExtension() const { return !ext.empty() && name.find('.') == std::string::npos; }

    /// The name as it stands in a directory.
    std::string fullName() const { return takesExtension() ? name + '.' + ext : name; }

    std::string subdir;
    std::string name;
    std::string ext;
};

/// Reports a name whose own extension is another one than that asked for. Kept on purpose: the extension is
/// what follows the first point, so that "a.b.ill" has the wrong one
/// (dataPaths.extension_beginsAtTheFirstPoint).
bool hasExtensionAskedFor(const DataFile& file, std::string_view function, int line) {
    const std::size_t point = file.name.find('.');
    if (point == std::string::npos || file.ext.empty() ||
        strcmp_ci(file.name.c_str() + point + 1, file.ext.c_str()) == 0)
        return true;
    report({function, " : File ", file.name, " has wrong extension, should be ", file.ext}, line);
    return false;
}

int reportNotFound(const DataFile& file, std::string_view function, int line) {
    if (file.takesExtension())
        report({function, " : file ", file.name, ".", file.ext, " not found"}, line);
    else
        report({function, " : file ", file.name, " not found"}, line);
    return kNotFound;
}

/// Kept on purpose: the report names qxcms_dp_gp also where qxcms_dp_gpp was called
/// (dataPaths.wrongExtension_isReportedInOneNameByAll).
std::optional<std::string> logicalPathOf(const DataFile& file, const char* tree) {
    if (!hasExtensionAskedFor(file, "qxcms_dp_gp", kExtensionLine))
        return std::nullopt;
    std::string logicalPath = std::string(mainName) + ":[" + tree;
    if (!file.subdir.empty())
        logicalPath += '.' + file.subdir;
    return logicalPath + ']' + file.fullName();
}

/// Copies a text with its terminator. @return 0, or -1 with an empty text when it does not fit.
int deliver(std::string_view text, char* out, int size) {
    if (text.size() >= static_cast<std::size_t>(size)) {
        out[0] = '\0';
        return kNoPath;
    }
    out[text.copy(out, text.size())] = '\0';
    return 0;
}

int translate(const std::string& logicalPath, char* out, int size) {
    if (fport(out, size, logicalPath.c_str()) != 0)
        return kNoPath;
    if (logicalPath != out)
        return 0;
    // What names no directory is copied as a plain path: a name in the working directory, which nobody meant.
    out[0] = '\0';
    return kNoPath;
}

int pathOf(const DataFile& file, const char* tree, char* out, int size) {
    const std::optional<std::string> logicalPath = logicalPathOf(file, tree);
    return logicalPath ? translate(*logicalPath, out, size) : kNoPath;
}

/// Kept on purpose: without a subdirectory the point stays, which changes nothing
/// (dataPaths.partsWithoutASubdirectory_areThoseOfTheTree).
int partsOf(const DataFile& file, const char* tree, char* dirOut, char* nameOut, int size) {
    if (!hasExtensionAskedFor(file, "qxcms_dp_gp_path", kExtensionOfPartsLine))
        return kNoPath;
    const std::string directory = std::string(mainName) + ":[" + tree + '.' + file.subdir + ']';
    if (translate(directory, dirOut, size) != 0)
        return kNoPath;
    return deliver(file.fullName(), nameOut, size);
}

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

using File = std::unique_ptr<std::FILE, FileCloser>;

/// A file open for reading; null for directories, which open as well and hold nothing to read, and for an
/// empty path.
File openForReading(const char* path) {
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored))
        return nullptr;
    errno = 0;
    File file(std::fopen(path, "rb"));
    // Without memory a file that is there must not pass for one that is not.
    if (file == nullptr && errno == ENOMEM)
        throw std::bad_alloc();
    return file;
}

bool opensForReading(const char* path) {
    return openForReading(path) != nullptr;
}

/// Kept on purpose: the search that gives a path in two parts passes over empty files, the others take them
/// (dataPaths.emptyFile_isPassedOverByTheSearchOfPartsAlone).
bool opensAndIsNotEmpty(const char* path) {
    const File file = openForReading(path);
    return file != nullptr && fgeteof(file.get()) != 0;
}

/// Kept on purpose: the report names qxcms_dp_sf also for the search in one tree
/// (dataPaths.fileInNoTree_isReportedInTheNameOfSf).
int search(const DataFile& file, std::span<const char* const> trees, int line, char* out, int size) {
    for (const char* const tree : trees) {
        if (pathOf(file, tree, out, size) != 0)
            return kNoPath;
        if (opensForReading(out))
            return 0;
    }
    return reportNotFound(file, "qxcms_dp_sf", line);
}

int searchLogicalPath(const DataFile& file, char* out, int size) {
    for (const char* const tree : kTrees) {
        const std::optional<std::string> logicalPath = logicalPathOf(file, tree);
        char path[QXCMS_LOGNAM_SIZE];
        if (!logicalPath || deliver(*logicalPath, out, size) != 0 ||
            translate(*logicalPath, path, sizeof path) != 0)
            return kNoPath;
        if (opensForReading(path))
            return 0;
    }
    // Kept on purpose: the report names qxcms_dp_sf (dataPaths.fileInNoTree_isReportedInTheNameOfSf).
    return reportNotFound(file, "qxcms_dp_sf", kSearchOfLogicalPathLine);
}

int searchParts(const DataFile& file, char* dirOut, char* nameOut, int size) {
    for (const char* const tree : kTrees) {
        if (partsOf(file, tree, dirOut, nameOut, size) != 0)
            return kNoPath;
        const std::string path = std::string(dirOut) + nameOut;
        if (path.size() <= kLongestPathOfParts && opensAndIsNotEmpty(path.c_str()))
            return 0;
    }
    return reportNotFound(file, "qxcms_dp_sf_path", kSearchOfPartsLine);
}

bool isRoom(const char* out, int size) {
    return out != nullptr && size > 0;
}

/// Gives the translation of a name, empty when there is none. @return false when there is no memory to tell.
bool translateName(const char* name, char* out) {
    errno = 0;
    return lognam(name, out) == 0 || errno != ENOMEM;
}

int refuse(const char* message, int line) {
    error_mess_fl(message, kModule, line);
    return kRefused;
}

} // namespace

int qxcms_dp_gpp(char* out, int size, const char* subdir, const char* name, const char* ext,
                 const char* tree) {
    if (!isRoom(out, size) || name == nullptr || tree == nullptr)
        return kNoPath;
    return guarded(kNoPath, [&] {
        const std::optional<std::string> logicalPath = logicalPathOf(DataFile(subdir, name, ext), tree);
        return logicalPath ? deliver(*logicalPath, out, size) : kNoPath;
    });
}

int qxcms_dp_gp(char* out, int size, const char* subdir, const char* name, const char* ext,
                const char* tree) {
    if (!isRoom(out, size) || name == nullptr || tree == nullptr)
        return kNoPath;
    return guarded(kNoPath, [&] { return pathOf(DataFile(subdir, name, ext), tree, out, size); });
}

int qxcms_dp_sf(char* out, int size, const char* subdir, const char* name, const char* ext) {
    if (!isRoom(out, size) || name == nullptr)
        return kNoPath;
    return guarded(kNoPath,
                   [&] { return search(DataFile(subdir, name, ext), kTrees, kSearchLine, out, size); });
}

int qxcms_dp_sfd(char* out, int size, const char* subdir, const char* name, const char* ext,
                 const char* tree) {
    if (!isRoom(out, size) || name == nullptr)
        return kNoPath;
    const std::span<const char* const> trees =
        tree != nullptr ? std::span<const char* const>(&tree, 1) : std::span<const char* const>(kTrees);
    return guarded(kNoPath,
                   [&] { return search(DataFile(subdir, name, ext), trees, kSearchInTreeLine, out, size); });
}

int qxcms_dp_spf(char* out, int size, const char* subdir, const char* name, const char* ext) {
    if (!isRoom(out, size) || name == nullptr)
        return kNoPath;
    return guarded(kNoPath, [&] { return searchLogicalPath(DataFile(subdir, name, ext), out, size); });
}

int qxcms_dp_gp_path(char* dirOut, char* nameOut, int size, const char* subdir, const char* name,
                     const char* ext, const char* tree) {
    if (!isRoom(dirOut, size) || !isRoom(nameOut, size) || name == nullptr || tree == nullptr)
        return kNoPath;
    return guarded(kNoPath,
                   [&] { return partsOf(DataFile(subdir, name, ext), tree, dirOut, nameOut, size); });
}

int qxcms_dp_sf_path(char* dirOut, char* nameOut, int size, const char* subdir, const char* name,
                     const char* ext) {
    if (!isRoom(dirOut, size) || !isRoom(nameOut, size) || name == nullptr)
        return kNoPath;
    return guarded(kNoPath, [&] { return searchParts(DataFile(subdir, name, ext), dirOut, nameOut, size); });
}

int qxcms_dp_ffspec(const char* path) {
    if (path == nullptr)
        return 0;
    const bool opens = guarded(false, [&] { return opensForReading(path); });
    return opens ? static_cast<int>(std::strlen(path)) : 0;
}

char* qxcms_dp_get_main(void) {
    return mainName;
}

int qxcms_dp_set_qxcms_main_dir_lognam(const char* newName, char* oldOut, int oldSize) {
    char translation[QXCMS_LOGNAM_SIZE] = "";
    if (newName != nullptr && !translateName(newName, translation))
        return kRefused;
    if (translation[0] == '\0')
        return refuse("New logical name points to nowhere !", kNowhereLine);
    const std::size_t newLength = std::strlen(newName);
    if (newLength >= QXCMS_DP_MAIN_SIZE)
        return refuse("Logical name too long", kLongNameLine);
    // Kept on purpose: a name of exactly oldSize characters fits, without its terminator
    // (dataRoot.oldNameOfExactlyTheSize_comesWithoutATerminator).
    const std::size_t oldLength = std::strlen(mainName);
    const std::size_t room = oldOut != nullptr && oldSize > 0 ? static_cast<std::size_t>(oldSize) : 0;
    if (oldLength > room)
        return refuse("Destination string for old value too short", kShortDestinationLine);

    // The new name may stand in either of the buffers that are written now.
    char name[QXCMS_DP_MAIN_SIZE];
    std::memcpy(name, newName, newLength + 1);
    if (room > 0)
        std::memmove(oldOut, mainName, std::min(oldLength + 1, room));
    std::memcpy(mainName, name, newLength + 1);
    return 0;
}

int qxcms_dp_get_main_dirn(char* out) {
    return out != nullptr && translateName(mainName, out) ? 0 : kRefused;
}

int qxcms_dp_set_cmsd(const char* dir, char* buffer) {
    if (dir == nullptr || qxcms_dp_get_main_dirn(buffer) != 0)
        return kRefused;
    // Kept on purpose: the answer is 0 whether the definition could be kept or not
    // (dataRoot.directoryThatCannotBeKept_isAnsweredWith0).
    if (std::strcmp(buffer, dir) != 0)
        deflognam(mainName, dir);
    return 0;
}
