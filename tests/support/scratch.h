// A folder of a test's own, removed when the test is over.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace qxcms::tests {

class ScratchFolder {
public:
    ScratchFolder() {
        std::string pattern = (std::filesystem::temp_directory_path() / "qxcms-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr)
            throw std::runtime_error("no scratch folder: " + pattern);
        root = pattern;
    }
    ~ScratchFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(root, ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::string path(const std::string& name = "") const {
        return name.empty() ? root.string() : (root / name).string();
    }

    /// Writes a file and returns its path.
    std::string write(const std::string& name, const std::string& bytes) const {
        const std::string target = path(name);
        std::ofstream(target, std::ios::binary)
            .write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        return target;
    }

    static std::string read(const std::string& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

private:
    std::filesystem::path root;
};

} // namespace qxcms::tests
