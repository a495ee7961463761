#include "qc/printable_text.h"

#include <gtest/gtest.h>

using qxcms::qc::columnsOf;
using qxcms::qc::fitted;
using qxcms::qc::joined;
using qxcms::qc::printable;
using qxcms::qc::quoted;

namespace {

TEST(printableText, plainTextAndUtf8_stay) {
    EXPECT_EQ(printable("Patch 1 \xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xA8"),
              "Patch 1 \xC3\xA4\xE2\x82\xAC\xF0\x9F\x8E\xA8");
}

TEST(printableText, controls_areEscaped) {
    EXPECT_EQ(printable("a\x1B[31mb\rc\nd\te\x7F"), "a\\x1b[31mb\\x0dc\\x0ad\\x09e\\x7f");
}

TEST(printableText, nul_isEscaped) {
    EXPECT_EQ(printable(std::string_view("a\0b", 3)), "a\\x00b");
}

// U+009B is a control sequence introducer on its own.
TEST(printableText, c1Controls_areEscaped) {
    EXPECT_EQ(printable("\xC2\x9B"
                        "5m"),
              "\\xc2\\x9b5m");
}

TEST(printableText, directionMarks_areEscaped) {
    EXPECT_EQ(printable("a\xE2\x80\xAE"
                        "b"),
              "a\\xe2\\x80\\xaeb");
}

TEST(printableText, bytesThatAreNoUtf8_areEscaped) {
    EXPECT_EQ(printable("caf\xE9"), "caf\\xe9");                      // Latin-1
    EXPECT_EQ(printable("\xC0\xAF"), "\\xc0\\xaf");                   // overlong
    EXPECT_EQ(printable("\xED\xA0\x80"), "\\xed\\xa0\\x80");          // surrogate
    EXPECT_EQ(printable("\xF4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80"); // beyond U+10FFFF
    EXPECT_EQ(printable("\xE2\x82"), "\\xe2\\x82");                   // cut off
}

TEST(printableText, quoted_putsQuotesAround) {
    EXPECT_EQ(quoted("a\n"), "\"a\\x0a\"");
}

TEST(printableText, joined_separates) {
    EXPECT_EQ(joined({"a", "b\t", "c"}, ", "), "a, b\\x09, c");
    EXPECT_EQ(joined({}, ", "), "");
}

TEST(columnsOf, countsCharactersNotBytes) {
    EXPECT_EQ(columnsOf("\xC3\xA4\xE2\x82\xAC"), 2u);
}

TEST(columnsOf, eastAsianCharactersTakeTwo) {
    EXPECT_EQ(columnsOf("\xE9\xBB\x92"), 2u);
}

TEST(columnsOf, combiningMarksTakeNone) {
    EXPECT_EQ(columnsOf("e\xCC\x81"), 1u);
}

TEST(fitted, shortText_isFilledUp) {
    EXPECT_EQ(fitted("ab", 5), "ab   ");
}

TEST(fitted, textOfTheWidth_stays) {
    EXPECT_EQ(fitted("abcde", 5), "abcde");
}

TEST(fitted, longText_losesItsMiddle) {
    EXPECT_EQ(fitted("abcdefghijkl", 8), "abc...kl");
}

TEST(fitted, wideCharacters_keepTheColumn) {
    const std::string black = "\xE9\xBB\x92";
    const std::string text = fitted(black + black + black + black + black, 8);
    EXPECT_EQ(columnsOf(text), 8u);
    EXPECT_EQ(text, black + "..." + black + " ");
}

} // namespace
