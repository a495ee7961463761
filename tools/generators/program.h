// What the generators share: their arguments, and writing a file as a whole.
#pragma once

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

namespace qxcms::generators {

/// Writes `text` to a file, whose folder is made when it is not there.
inline void writeText(const std::string& file, const std::string& text) {
    std::filesystem::create_directories(std::filesystem::path(file).parent_path());
    std::ofstream stream(file, std::ios::binary);
    stream << text;
    stream.close();
    if (!stream)
        throw std::runtime_error(file + ": cannot be written");
}

/// Runs `generate(sourceRoot, outputRoot)` on the two arguments of a program and gives its exit code.
template <class Generate>
int runGenerator(int argc, char** argv, Generate&& generate) {
    if (argc != 3) {
        std::cerr << "usage: " << argv[0] << " SOURCE_ROOT OUTPUT_ROOT\n";
        return 2;
    }
    try {
        generate(std::string(argv[1]), std::string(argv[2]));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << "\n";
        return 1;
    }
}

} // namespace qxcms::generators
