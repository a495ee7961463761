// Gives every file of a folder to a fuzzer's function. The process stays in the "C" locale, which the fuzzers
// compare with.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iostream>
#include <string>
#include <system_error>
#include <vector>

#include "tests/support/scratch.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " FOLDER\n";
        return 2;
    }
    std::vector<std::string> files;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1], error))
        files.push_back(entry.path().string());
    if (files.empty()) {
        std::cerr << "There are no inputs in " << argv[1] << '\n';
        return 1;
    }
    std::sort(files.begin(), files.end());
    for (const std::string& file : files) {
        std::cout << file << std::endl; // the last one told is the one that fails
        const std::string bytes = qxcms::tests::ScratchFolder::read(file);
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return 0;
}
