// The rules of the house that no compiler sees: which way includes point, that there is no circle between
// files, which functions nobody calls, and that sources are plain ASCII.
#include <algorithm>
#include <filesystem>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

namespace fs = std::filesystem;

const fs::path kRoot = QXCMS_SOURCE_DIR;

// The floors from the ground up; an include stays in its folder or points further down.
const std::vector<std::vector<std::string>> kFloors = {
    {"base"}, {"platform"}, {"colorspace", "support"}, {"spectral"}, {"measurement"}, {"cgats"},
    {"qc"},   {"tools"}};

std::string folderOf(const fs::path& relative) {
    return relative.begin()->string();
}

int floorOf(const std::string& folder) {
    for (std::size_t i = 0; i < kFloors.size(); ++i)
        if (std::find(kFloors[i].begin(), kFloors[i].end(), folder) != kFloors[i].end())
            return static_cast<int>(i);
    return -1;
}

std::vector<fs::path> sourceFiles() {
    std::vector<fs::path> files;
    for (const auto& floor : kFloors)
        for (const std::string& folder : floor) {
            if (!fs::exists(kRoot / folder))
                continue;
            for (const auto& entry : fs::recursive_directory_iterator(kRoot / folder))
                if (entry.path().extension() == ".h" || entry.path().extension() == ".cpp")
                    files.push_back(entry.path().lexically_relative(kRoot));
        }
    std::sort(files.begin(), files.end());
    return files;
}

std::vector<std::string> includesOf(const fs::path& relative) {
    static const std::regex kInclude("#include \"([^\"]+)\"");
    const std::string text = ScratchFolder::read((kRoot / relative).string());
    std::vector<std::string> includes;
    for (std::sregex_iterator it(text.begin(), text.end(), kInclude), last; it != last; ++it)
        includes.push_back((*it)[1]);
    return includes;
}

using Graph = std::map<std::string, std::vector<std::string>>;

// True when `file` is reached from itself.
bool isOnACircle(const Graph& graph, const std::string& file) {
    std::set<std::string> seen;
    std::vector<std::string> open = graph.at(file);
    while (!open.empty()) {
        const std::string next = open.back();
        open.pop_back();
        if (next == file)
            return true;
        const auto found = graph.find(next);
        if (found != graph.end() && seen.insert(next).second)
            open.insert(open.end(), found->second.begin(), found->second.end());
    }
    return false;
}

TEST(house, sourcesAreFound) {
    EXPECT_GT(sourceFiles().size(), 10u);
}

TEST(house, includesPointDownAndAreWrittenFromTheRoot) {
    for (const fs::path& file : sourceFiles())
        for (const std::string& include : includesOf(file)) {
            const std::string from = folderOf(file);
            const std::string to = folderOf(include);
            EXPECT_TRUE(fs::exists(kRoot / include)) << file << " includes " << include;
            EXPECT_TRUE(from == to || floorOf(to) < floorOf(from)) << file << " includes " << include;
        }
}

TEST(house, noCircleBetweenFiles) {
    Graph graph;
    for (const fs::path& file : sourceFiles())
        graph[file.string()] = includesOf(file);
    for (const auto& [file, includes] : graph)
        EXPECT_FALSE(isOnACircle(graph, file)) << file;
}

// Numbers become text and text becomes numbers in one module, which never looks at the locale.
TEST(house, numbersAndTextMeetInOneModule) {
    const std::regex conversions(
        "\\b(atof|atoi|strtod|strtol|sscanf|fscanf|stod|stoi|setprecision|from_chars|to_chars|snprintf)"
        "\\b\\s*\\(");
    for (const fs::path& file : sourceFiles()) {
        if (file == "base/number_text.cpp" || folderOf(file) == "tools")
            continue;
        const std::string text = ScratchFolder::read((kRoot / file).string());
        std::smatch found;
        EXPECT_FALSE(std::regex_search(text, found, conversions)) << file << ": " << found.str();
    }
}

// std::cbrt is not the power that CIELAB asks for here; the others are traps.
TEST(house, functionsNobodyCalls) {
    const std::regex banned("\\b(cbrt|strtok|gets|sprintf|system)\\b\\s*\\(");
    for (const fs::path& file : sourceFiles()) {
        const std::string text = ScratchFolder::read((kRoot / file).string());
        std::smatch found;
        EXPECT_FALSE(std::regex_search(text, found, banned)) << file << ": " << found.str();
    }
}

TEST(house, sourcesArePlainAscii) {
    for (const fs::path& file : sourceFiles()) {
        const std::string text = ScratchFolder::read((kRoot / file).string());
        const bool ascii = std::all_of(text.begin(), text.end(), [](char c) { return (c & 0x80) == 0; });
        EXPECT_TRUE(ascii) << file;
    }
}

// Every test as "suite.name".
std::set<std::string> testNames() {
    static const std::regex kTest("TEST(?:_F|_P)?\\((\\w+),\\s*(\\w+)\\)");
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / "tests")) {
        if (entry.path().extension() != ".cpp")
            continue;
        const std::string text = ScratchFolder::read(entry.path().string());
        for (std::sregex_iterator it(text.begin(), text.end(), kTest), last; it != last; ++it)
            names.insert((*it)[1].str() + "." + (*it)[2].str());
    }
    return names;
}

// What looks like a mistake and is wanted says so, and names the test that guards it.
TEST(house, everythingKeptOnPurpose_namesAnExistingTest) {
    const std::regex remark("Kept on purpose:[^;{}]*");
    const std::regex lineBreak("\\s*\n\\s*//+\\s*");
    const std::regex guard("\\((\\w+\\.\\w+)\\)");
    const std::set<std::string> tests = testNames();
    for (const fs::path& file : sourceFiles()) {
        const std::string source = ScratchFolder::read((kRoot / file).string());
        const std::string text = std::regex_replace(source, lineBreak, " ");
        for (std::sregex_iterator it(text.begin(), text.end(), remark), last; it != last; ++it) {
            const std::string words = it->str();
            std::smatch named;
            ASSERT_TRUE(std::regex_search(words, named, guard)) << file << ": " << words;
            EXPECT_TRUE(tests.count(named[1]) == 1) << file << " names " << named[1];
        }
    }
}

// Beside the standard library, the compiler's own header of instructions and the house itself, the kernel
// needs nothing.
TEST(house, kernelIncludesTheStandardLibraryAlone) {
    const std::regex angled("#include <([^>]+)>");
    const std::regex foreign("^(?!immintrin\\.h$).*[./]");
    for (const fs::path& file : sourceFiles()) {
        const std::string folder = folderOf(file);
        if (floorOf(folder) > floorOf("cgats") || folder == "platform")
            continue;
        const std::string text = ScratchFolder::read((kRoot / file).string());
        for (std::sregex_iterator it(text.begin(), text.end(), angled), last; it != last; ++it)
            EXPECT_FALSE(std::regex_search((*it)[1].first, (*it)[1].second, foreign))
                << file << " includes <" << (*it)[1] << ">";
    }
}

} // namespace
} // namespace qxcms::tests
