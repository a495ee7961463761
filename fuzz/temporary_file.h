/// @file
/// A file that lives as long as its object.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <unistd.h>

#include "fuzz/must.h"

namespace qxcms::fuzz {

class TemporaryFile {
public:
    TemporaryFile(const std::uint8_t* bytes, std::size_t count, const char* extension)
        : path((std::filesystem::temp_directory_path() / "qxcms-fuzz-XXXXXX").string() + extension) {
        const int file = mkstemps(path.data(), static_cast<int>(std::string(extension).size()));
        must(file >= 0, "a temporary file can be made");
        must(write(file, bytes, count) == static_cast<ssize_t>(count), "a temporary file can be written");
        close(file);
    }
    ~TemporaryFile() { unlink(name()); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const char* name() const { return path.c_str(); }

private:
    std::string path;
};

} // namespace qxcms::fuzz
