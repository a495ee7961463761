#include "tools/qxcms/file_bytes.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

namespace qxcms::command {

namespace {

// No chart comes near; it keeps an endless device from filling the memory.
constexpr std::size_t kLargestFile = std::size_t{1} << 30;

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// A byte order mark, or NUL bytes that alternate with others.
bool looksLikeUtf16(std::string_view start) {
    constexpr std::size_t kInspected = 8;
    if (start.substr(0, 2) == "\xFF\xFE" || start.substr(0, 2) == "\xFE\xFF")
        return true;
    if (start.size() < kInspected)
        return false;
    std::string pattern;
    for (const char c : start.substr(0, kInspected))
        pattern += c == '\0' ? '0' : 'x';
    return pattern == "0x0x0x0x" || pattern == "x0x0x0x0";
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
        if (result.text.empty())
            result.looksLikeUtf16 = looksLikeUtf16({chunk, count});
        const void* nul = std::memchr(chunk, '\0', count);
        const std::size_t used =
            nul == nullptr ? count : static_cast<std::size_t>(static_cast<const char*>(nul) - chunk);
        result.text.append(chunk, used);
        if (nul != nullptr) {
            if (used + 1 < count || std::fgetc(file.get()) != EOF)
                result.cutAt = result.text.size();
            return result;
        }
        if (result.text.size() > kLargestFile) {
            result.error = "larger than 1 GiB";
            return result;
        }
    }
    if (std::ferror(file.get()) != 0)
        result.error = std::strerror(errno);
    return result;
}

} // namespace qxcms::command
