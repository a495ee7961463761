#include "tools/qxcms/file_bytes.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>

#include "platform/utility.h"

namespace qxcms::command {

namespace {

// No chart comes near; it keeps an endless device from filling the memory.
constexpr std::size_t kLargestFile = std::size_t{1} << 30;

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// A name with a slash is never taken for a logical one.
std::string plainPath(const std::string& name) {
    return name.find('/') == std::string::npos ? "./" + name : name;
}

} // namespace

FileBytes readBytes(const std::string& name) {
    FileBytes result;
    errno = 0;
    const std::unique_ptr<std::FILE, Close> file(std::fopen(name.c_str(), "rb"));
    if (file == nullptr) {
        result.error = std::strerror(errno);
        return result;
    }
    char chunk[1 << 16];
    std::size_t count = 0;
    while ((count = std::fread(chunk, 1, sizeof chunk, file.get())) > 0) {
        result.bytes.append(chunk, count);
        if (result.bytes.size() > kLargestFile) {
            result.error = "larger than 1 GiB";
            return result;
        }
    }
    if (std::ferror(file.get()) != 0)
        result.error = std::strerror(errno);
    return result;
}

std::string writeBytes(const std::string& name, const std::string& bytes) {
    if (name.empty())
        return "empty file name";
    errno = 0;
    std::FILE* const file = open_resolved_file(plainPath(name).c_str(), "w");
    const bool taken = file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const int firstError = errno;
    if (file != nullptr && close_resolved_file(file) == 0 && taken)
        return "";
    const int error = taken ? errno : firstError;
    return error != 0 ? std::strerror(error) : "it cannot be opened or filled";
}

} // namespace qxcms::command
