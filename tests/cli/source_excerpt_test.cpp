#include "tools/qxcms/source_excerpt.h"

#include <gtest/gtest.h>

using qxcms::command::excerptOf;
using qxcms::command::SourceExcerpt;
using qxcms::command::startOfLine;

namespace {

void expectExcerpt(const SourceExcerpt& excerpt, const std::string& line, const std::string& caret) {
    EXPECT_EQ(excerpt.line, line);
    EXPECT_EQ(excerpt.caret, caret);
}

TEST(sourceExcerpt, caret_standsUnderTheColumn) {
    expectExcerpt(excerptOf("one\nSAMPLE_ID LAB_X\n", 2, 11), "SAMPLE_ID LAB_X", "          ^");
    expectExcerpt(excerptOf("abc", 1, 1), "abc", "^");
}

TEST(sourceExcerpt, everyLineEnd_endsALine) {
    expectExcerpt(excerptOf("a\rb\r\nc\nd\r\re", 2, 1), "b", "^");
    expectExcerpt(excerptOf("a\rb\r\nc\nd\r\re", 3, 1), "c", "^");
    expectExcerpt(excerptOf("a\rb\r\nc\nd\r\re", 4, 1), "d", "^");
    expectExcerpt(excerptOf("a\rb\r\nc\nd\r\re", 5, 1), "", "^");
    expectExcerpt(excerptOf("a\rb\r\nc\nd\r\re", 6, 1), "e", "^");
}

TEST(sourceExcerpt, endOfTheText_isMarkedBehindIt) {
    expectExcerpt(excerptOf("abc", 1, 4), "abc", "   ^");
    expectExcerpt(excerptOf("abc\n", 2, 1), "", "^");
    expectExcerpt(excerptOf("", 1, 1), "", "^");
}

TEST(sourceExcerpt, placeBeyondTheText_isItsEnd) {
    expectExcerpt(excerptOf("abc", 1, 9), "abc", "   ^");
    expectExcerpt(excerptOf("abc", 7, 3), "", "^");
}

// Whatever a TAB is worth: the same ones stand in front of the place and of the mark.
TEST(sourceExcerpt, tabs_standInBothLines) {
    expectExcerpt(excerptOf("a\tbc\t\tx\ty", 1, 7), "a\tbc\t\tx\ty", " \t  \t\t^");
}

TEST(sourceExcerpt, charactersOfSeveralBytes_takeTheirColumns) {
    // Two bytes in one column, three bytes in two columns.
    expectExcerpt(excerptOf("\xC3\xA4 \xE9\xBB\x92 x", 1, 8), "\xC3\xA4 \xE9\xBB\x92 x", "     ^");
}

TEST(sourceExcerpt, bytesThatCannotBeShown_areEscaped) {
    expectExcerpt(excerptOf("\x1B[2J x", 1, 6), "\\x1b[2J x", "        ^");
    expectExcerpt(excerptOf("caf\xE9 x", 1, 6), "caf\\xe9 x", "        ^");
    expectExcerpt(excerptOf("\xE9\xE9", 1, 2), "\\xe9\\xe9", "    ^");
    expectExcerpt(excerptOf(std::string_view("a\0b", 3), 1, 3), "a\\x00b", "     ^");
}

TEST(sourceExcerpt, byteOrderMark_takesNoPlace) {
    expectExcerpt(excerptOf("\xEF\xBB\xBF"
                            "abc",
                            1, 5),
                  "abc", " ^");
}

TEST(sourceExcerpt, longLine_isCutFiftyColumnsOnEitherSide) {
    const std::string digits = "0123456789";
    std::string line;
    for (int i = 0; i < 30; ++i)
        line += digits;
    std::string fifty;
    for (int i = 0; i < 5; ++i)
        fifty += digits;
    expectExcerpt(excerptOf(line, 1, 1), fifty + "...", "^");
    expectExcerpt(excerptOf(line, 1, 151), "..." + fifty + fifty + "...", std::string(53, ' ') + '^');
    expectExcerpt(excerptOf(line, 1, 301), "..." + fifty, std::string(53, ' ') + '^');
    expectExcerpt(excerptOf(line, 1, 51), fifty + fifty + "...", std::string(50, ' ') + '^');
    expectExcerpt(excerptOf(line, 1, 251), "..." + fifty + fifty, std::string(53, ' ') + '^');
}

// A TAB counts as eight columns: six of them and two more characters.
TEST(sourceExcerpt, longLineOfTabs_isCutToo) {
    expectExcerpt(excerptOf(std::string(20, '\t') + "xy", 1, 23), "...\t\t\t\t\t\txy", "   \t\t\t\t\t\t  ^");
}

TEST(startOfLine, countsBytes) {
    EXPECT_EQ(startOfLine("a\r\nb\rc\nd", 1), 0u);
    EXPECT_EQ(startOfLine("a\r\nb\rc\nd", 2), 3u);
    EXPECT_EQ(startOfLine("a\r\nb\rc\nd", 3), 5u);
    EXPECT_EQ(startOfLine("a\r\nb\rc\nd", 4), 7u);
    EXPECT_EQ(startOfLine("a\r\nb\rc\nd", 5), 8u);
}

} // namespace
