// Finding names by an index: what it finds, whatever the number and the likeness of the names.
#include "cgats/name_index.h"

#include <cctype>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace qxcms::tests {
namespace {

// A list with its index.
class IndexedNames {
public:
    void add(const std::string& name) {
        ASSERT_TRUE(index.reserve(static_cast<std::int32_t>(list.size()) + 1));
        list.push_back(name);
        index.add(list.back().c_str(), [this](std::int32_t i) { return at(i); });
    }
    bool reserve(std::int32_t names) { return index.reserve(names); }
    int find(const std::string& name) const {
        return index.find(name.c_str(), [this](std::int32_t i) { return at(i); });
    }

private:
    const char* at(std::int32_t i) const { return list[static_cast<std::size_t>(i)].c_str(); }

    std::vector<std::string> list;
    detail::NameIndex index;
};

std::string upper(std::string text) {
    for (char& c : text)
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}

TEST(nameIndex, emptyIndex_findsNothing) {
    EXPECT_EQ(IndexedNames().find("CMYK_C"), -1);
    EXPECT_EQ(IndexedNames().find(""), -1);
}

TEST(nameIndex, everyName_isFoundAtItsPosition) {
    IndexedNames names;
    constexpr int kCount = 5000;
    for (int i = 0; i < kCount; ++i)
        names.add("patch" + std::to_string(i));
    for (int i = 0; i < kCount; ++i)
        ASSERT_EQ(names.find("patch" + std::to_string(i)), i);
    EXPECT_EQ(names.find("patch5000"), -1);
    EXPECT_EQ(names.find("patch"), -1);
}

TEST(nameIndex, caseOfAsciiLetters_doesNotCount) {
    IndexedNames names;
    const std::string letters = "abcdefghijklmnopqrstuvwxyz";
    names.add(letters);
    EXPECT_EQ(names.find(upper(letters)), 0);
    names.add(upper(letters) + "_2");
    EXPECT_EQ(names.find(letters + "_2"), 1);
}

// The neighbours of the letters in ASCII, and letters outside it, have no case.
TEST(nameIndex, otherCharacters_areWhatTheyAre) {
    IndexedNames names;
    names.add("a@[");
    EXPECT_EQ(names.find("a`{"), -1);
    names.add("gr\xC4u");
    EXPECT_EQ(names.find("gr\xE4u"), -1);
    EXPECT_EQ(names.find("GR\xC4U"), 1);
}

TEST(nameIndex, ofEqualNames_theFirstIsFound) {
    IndexedNames names;
    for (const char* name : {"Remark", "REMARK", "Other", "remark", "other"})
        names.add(name);
    EXPECT_EQ(names.find("remark"), 0);
    EXPECT_EQ(names.find("OTHER"), 2);
    names.add("Last");
    EXPECT_EQ(names.find("last"), 5) << "positions count all names, equal ones too";
}

TEST(nameIndex, makingRoom_losesNothing) {
    IndexedNames names;
    names.add("first");
    ASSERT_TRUE(names.reserve(1000));
    ASSERT_TRUE(names.reserve(1));
    EXPECT_EQ(names.find("first"), 0);
    EXPECT_EQ(names.find("second"), -1);
}

} // namespace
} // namespace qxcms::tests
