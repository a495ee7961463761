// The dictionaries and the committed inputs of the fuzzers.
#include <filesystem>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "cgats/cgats_vocabulary.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

namespace fs = std::filesystem;

const fs::path kFuzz = fs::path(QXCMS_SOURCE_DIR) / "fuzz";

// The names of the fuzzers, without "_fuzzer".
std::vector<std::string> targets() {
    static const std::string kEnd = "_fuzzer.cpp";
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(kFuzz)) {
        const std::string name = entry.path().filename().string();
        if (name.size() > kEnd.size() && name.substr(name.size() - kEnd.size()) == kEnd)
            names.push_back(name.substr(0, name.size() - kEnd.size()));
    }
    return names;
}

// The entries of a dictionary: what stands between quotes, a line each.
std::set<std::string> dictionary(const std::string& name) {
    std::set<std::string> entries;
    std::istringstream lines(ScratchFolder::read((kFuzz / name).string()));
    for (std::string line; std::getline(lines, line);)
        if (line.size() >= 2 && line.front() == '"' && line.back() == '"')
            entries.insert(line.substr(1, line.size() - 2));
    return entries;
}

TEST(fuzzDictionary, cgats_holdsEveryKeyword) {
    const std::set<std::string> entries = dictionary("cgats.dict");
    for (const char* keyword : detail::kKeywords)
        EXPECT_EQ(entries.count(keyword), 1u) << keyword;
}

TEST(fuzzDictionary, cgats_holdsEveryFieldName) {
    const std::set<std::string> entries = dictionary("cgats.dict");
    for (const char* name : detail::kFieldNames)
        EXPECT_EQ(entries.count(name), 1u) << name;
}

TEST(fuzzDictionary, everyTarget_hasOneNamedByItsFirstWord) {
    for (const std::string& target : targets())
        EXPECT_FALSE(dictionary(target.substr(0, target.find('_')) + ".dict").empty()) << target;
}

TEST(fuzzCorpus, everyTarget_hasOne) {
    EXPECT_THAT(targets(), testing::Not(testing::IsEmpty()));
    for (const std::string& target : targets())
        EXPECT_TRUE(fs::is_directory(kFuzz / "corpus" / target)) << target;
}

TEST(fuzzCorpus, everyCorpus_hasATarget) {
    for (const auto& entry : fs::directory_iterator(kFuzz / "corpus"))
        EXPECT_THAT(targets(), testing::Contains(entry.path().filename().string()));
}

TEST(fuzzCorpus, corporaAreSmall) {
    std::uintmax_t size = 0;
    for (const auto& entry : fs::recursive_directory_iterator(kFuzz / "corpus"))
        size += entry.is_regular_file() ? entry.file_size() : 0;
    EXPECT_LT(size, 500u * 1024u);
}

} // namespace
} // namespace qxcms::tests
