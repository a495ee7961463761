// The build tree that the running test program belongs to, wherever it was moved or copied.
#pragma once

#include <filesystem>
#include <string>

namespace qxcms::tests {

inline std::filesystem::path testedBuild() {
    return std::filesystem::canonical("/proc/self/exe").parent_path().parent_path();
}

/// A program of the build.
inline std::string testedProgram(const std::string& name) {
    return (testedBuild() / "bin" / name).string();
}

} // namespace qxcms::tests
