// One header line: what it stores and how it is written.
#include "cgats/tcgatstag.h"

#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>

#include <gtest/gtest.h>

namespace qxcms::tests {
namespace {

std::string written(const TCgatsTag& tag) {
    std::ostringstream stream;
    EXPECT_EQ(tag.Write(stream), 0);
    return stream.str();
}

TEST(cgatsTag, storesAllParts) {
    const TCgatsTag tag(2, "CREATED", 1, "today", "a note");
    EXPECT_EQ(tag.GetCode(), 2);
    EXPECT_EQ(tag.GetNumeric(), 1);
    EXPECT_STREQ(tag.GetKeyword(), "CREATED");
    EXPECT_STREQ(tag.GetValue(), "today");
    EXPECT_STREQ(tag.GetComment(), "a note");
}

TEST(cgatsTag, copiesItsTexts) {
    char keyword[] = "A";
    char value[] = "B";
    char comment[] = "C";
    const TCgatsTag tag(-1, keyword, 0, value, comment);
    keyword[0] = value[0] = comment[0] = 'x';
    EXPECT_STREQ(tag.GetKeyword(), "A");
    EXPECT_STREQ(tag.GetValue(), "B");
    EXPECT_STREQ(tag.GetComment(), "C");
}

TEST(cgatsTag, absentTexts_areStoredEmpty) {
    const TCgatsTag tag(2, "CREATED", 1, nullptr, nullptr);
    EXPECT_STREQ(tag.GetValue(), "");
    EXPECT_STREQ(tag.GetComment(), "");
    EXPECT_EQ(tag.GetNumeric(), 1);
}

TEST(cgatsTag, emptyOrAbsentKeyword_storesTheCodeAlone) {
    for (const char* keyword : {"", static_cast<const char*>(nullptr)}) {
        const TCgatsTag tag(17, keyword, 1, "value", "comment");
        EXPECT_EQ(tag.GetCode(), 17);
        EXPECT_EQ(tag.GetNumeric(), 0);
        EXPECT_EQ(tag.GetKeyword(), nullptr);
        EXPECT_EQ(tag.GetValue(), nullptr);
        EXPECT_EQ(tag.GetComment(), nullptr);
    }
}

TEST(cgatsTag, write_withoutKeywordGivesNothingAndOne) {
    for (const char* keyword : {"", static_cast<const char*>(nullptr)}) {
        const TCgatsTag tag(-1, keyword, 0, "value", "comment");
        std::ostringstream stream;
        EXPECT_EQ(tag.Write(stream), 1);
        EXPECT_EQ(stream.str(), "");
    }
}

TEST(cgatsTag, write_keywordAlone) {
    EXPECT_EQ(written(TCgatsTag(25, "END_DATA", 0, "", "")), "END_DATA\n");
}

TEST(cgatsTag, write_quotedValue) {
    EXPECT_EQ(written(TCgatsTag(2, "CREATED", 0, "to day", "")), "CREATED\t\"to day\"\n");
}

TEST(cgatsTag, write_bareValue) {
    EXPECT_EQ(written(TCgatsTag(23, "NUMBER_OF_SETS", 1, "24", "")), "NUMBER_OF_SETS\t24\n");
}

TEST(cgatsTag, write_isBareForAnyNumericOtherThanZero) {
    EXPECT_EQ(written(TCgatsTag(23, "NUMBER_OF_SETS", 2, "24", "")), "NUMBER_OF_SETS\t24\n");
    EXPECT_EQ(written(TCgatsTag(23, "NUMBER_OF_SETS", -1, "24", "")), "NUMBER_OF_SETS\t24\n");
}

TEST(cgatsTag, write_emptyValueLeavesKeywordAndComment) {
    EXPECT_EQ(written(TCgatsTag(2, "CREATED", 0, "", "note")), "CREATED\t# note\n");
}

TEST(cgatsTag, write_allParts) {
    EXPECT_EQ(written(TCgatsTag(2, "CREATED", 0, "today", "note")), "CREATED\t\"today\"\t# note\n");
    EXPECT_EQ(written(TCgatsTag(2, "CREATED", 1, "today", "note")), "CREATED\ttoday\t# note\n");
}

TEST(cgatsTag, write_keepsTheLeadingBlankOfAComment) {
    EXPECT_EQ(written(TCgatsTag(2, "CREATED", 0, "", " note")), "CREATED\t#  note\n");
}

TEST(cgatsTag, write_appendsToTheStream) {
    std::ostringstream stream;
    stream << "before\n";
    EXPECT_EQ(TCgatsTag(25, "END_DATA", 0, "", "").Write(stream), 0);
    EXPECT_EQ(stream.str(), "before\nEND_DATA\n");
}

TEST(cgatsTag, setValue_replacesValueAndNumeric) {
    TCgatsTag tag(2, "CREATED", 1, "today", "note");
    EXPECT_EQ(tag.SetValue("yester day", 0), 0);
    EXPECT_STREQ(tag.GetValue(), "yester day");
    EXPECT_EQ(tag.GetNumeric(), 0);
    EXPECT_STREQ(tag.GetKeyword(), "CREATED");
    EXPECT_STREQ(tag.GetComment(), "note");
    EXPECT_EQ(tag.GetCode(), 2);
}

// Takes no character.
class FullBuffer : public std::streambuf {};

TEST(cgatsTag, write_putsTheExceptionsOfAStreamAsideAndBack) {
    const TCgatsTag tag(2, "CREATED", 0, "today", "");
    FullBuffer full;
    std::ostream stream(&full);
    stream.exceptions(std::ios::badbit | std::ios::failbit);
    EXPECT_NO_THROW(EXPECT_EQ(tag.Write(stream), 0));
    EXPECT_TRUE(stream.bad());
    EXPECT_EQ(stream.exceptions(), std::ios::badbit | std::ios::failbit);
}

TEST(cgatsTag, setValue_takesItsOwnValue) {
    TCgatsTag tag(2, "CREATED", 0, "today", "");
    EXPECT_EQ(tag.SetValue(tag.GetValue(), 1), 0);
    EXPECT_STREQ(tag.GetValue(), "today");
    EXPECT_EQ(tag.GetNumeric(), 1);
}

TEST(cgatsTag, setValue_needsAKeyword) {
    TCgatsTag tag(2, nullptr, 0, nullptr, nullptr);
    EXPECT_EQ(tag.SetValue("today", 1), 1);
    EXPECT_EQ(tag.GetValue(), nullptr);
    EXPECT_EQ(tag.GetNumeric(), 0);
}

TEST(cgatsTag, setValue_refusesNull) {
    TCgatsTag tag(2, "CREATED", 0, "today", "");
    EXPECT_EQ(tag.SetValue(nullptr, 1), 2);
    EXPECT_STREQ(tag.GetValue(), "today");
    EXPECT_EQ(tag.GetNumeric(), 0);
}

} // namespace
} // namespace qxcms::tests
