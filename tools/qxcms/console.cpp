#include "tools/qxcms/console.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace qxcms::command {

namespace {

void writeError(std::string_view start, std::string_view message) noexcept {
    for (const std::string_view part : {start, message, std::string_view("\n")})
        std::fwrite(part.data(), 1, part.size(), stderr);
}

} // namespace

bool print(const std::string& text) {
    errno = 0;
    const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    if (std::fflush(stdout) == 0 && written)
        return true;
    if (errno != EPIPE)
        complain(std::string("the standard output cannot be written: ") + std::strerror(errno));
    return false;
}

void complain(std::string_view message) noexcept {
    writeError("qxcms: ", message);
}

void warn(std::string_view message) noexcept {
    writeError("qxcms: warning: ", message);
}

void note(std::string_view message) noexcept {
    writeError("qxcms: note: ", message);
}

} // namespace qxcms::command
