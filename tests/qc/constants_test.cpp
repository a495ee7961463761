// Figures of the comparison that show at their edges only.
#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "qc/difference.h"
#include "qc/printable_text.h"

using qxcms::qc::columnsOf;
using qxcms::qc::DeltaE;
using qxcms::qc::difference;
using qxcms::qc::printable;

using std::string_literals::operator""s;

namespace {

constexpr DeltaE kCie76 = DeltaE::cie1976;
constexpr DeltaE kCie94 = DeltaE::cie1994;

unsigned number(char32_t c) {
    return static_cast<unsigned>(c);
}

std::string utf8(char32_t c) {
    const auto byte = [](char32_t value) { return static_cast<char>(static_cast<unsigned char>(value)); };
    if (c < 0x80)
        return {byte(c)};
    if (c < 0x800)
        return {byte(0xC0 | (c >> 6)), byte(0x80 | (c & 0x3F))};
    if (c < 0x10000)
        return {byte(0xE0 | (c >> 12)), byte(0x80 | ((c >> 6) & 0x3F)), byte(0x80 | (c & 0x3F))};
    return {byte(0xF0 | (c >> 18)), byte(0x80 | ((c >> 12) & 0x3F)), byte(0x80 | ((c >> 6) & 0x3F)),
            byte(0x80 | (c & 0x3F))};
}

// The blocks from Hangul Jamo to the planes of the ideographs.
TEST(columnsOf, wideBlocks_beginAndEndWhereUnicodeHasThem) {
    struct Block {
        char32_t first, last;
    };
    for (const Block block :
         {Block{0x1100, 0x115F}, Block{0x2E80, 0xA4CF}, Block{0xAC00, 0xD7A3}, Block{0xF900, 0xFAFF},
          Block{0xFE30, 0xFE6F}, Block{0xFF01, 0xFF60}, Block{0x1F300, 0x1FAFF}, Block{0x20000, 0x3FFFD}}) {
        EXPECT_EQ(columnsOf(utf8(block.first - 1)), 1U) << number(block.first);
        EXPECT_EQ(columnsOf(utf8(block.first)), 2U) << number(block.first);
        EXPECT_EQ(columnsOf(utf8(block.last)), 2U) << number(block.last);
        EXPECT_EQ(columnsOf(utf8(block.last + 1)), 1U) << number(block.last);
    }
}

TEST(columnsOf, combiningMarks_areThoseFrom300To36F) {
    EXPECT_EQ(columnsOf(utf8(0x2FF)), 1U);
    EXPECT_EQ(columnsOf(utf8(0x300)), 0U);
    EXPECT_EQ(columnsOf(utf8(0x36F)), 0U);
    EXPECT_EQ(columnsOf(utf8(0x370)), 1U);
}

TEST(printableText, everyControlAndDirectionMark_isEscaped) {
    for (const char32_t c : U"\x01\x1F\x7F\x80\x9F\u200E\u200F\u2028\u202E\u2066\u2069"s)
        EXPECT_NE(printable(utf8(c)), utf8(c)) << number(c);
}

TEST(printableText, neighboursOfControls_stay) {
    for (const char32_t c : U" ~\xA0\u200D\u2010\u2027\u202F\u2065\u206A"s)
        EXPECT_EQ(printable(utf8(c)), utf8(c)) << number(c);
}

// The shortest and the longest of each length, the neighbours of the surrogates, the last code point.
TEST(printableText, wellFormedUtf8_stays) {
    for (const char32_t c : U"\xA0\u07FF\u0800\uD7FF\uE000\uFFFF\U00010000\U0010FFFF"s)
        EXPECT_EQ(printable(utf8(c)), utf8(c)) << number(c);
}

TEST(printableText, overlongFormsAndSurrogates_areEscaped) {
    EXPECT_EQ(printable("\xC1\xBF"), "\\xc1\\xbf");
    EXPECT_EQ(printable("\xE0\x9F\xBF"), "\\xe0\\x9f\\xbf");
    EXPECT_EQ(printable("\xF0\x8F\xBF\xBF"), "\\xf0\\x8f\\xbf\\xbf");
    EXPECT_EQ(printable("\xED\xA0\x80"), "\\xed\\xa0\\x80");
    EXPECT_EQ(printable("\xED\xBF\xBF"), "\\xed\\xbf\\xbf");
    EXPECT_EQ(printable("\xF4\x90\x80\x80"), "\\xf4\\x90\\x80\\x80");
}

TEST(difference, smallHueDifference_counts) {
    // dH^2 = 2 (C1 C2 - a1 a2 - b1 b2) = 2 (10 sqrt(100.01) - 100)
    EXPECT_NEAR(difference({50.0, 10.0, 0.1}, {50.0, 10.0, 0.0}, kCie76).hue, 0.09999875, 1e-8);
}

TEST(difference, smallTotal_counts) {
    EXPECT_NEAR(difference({50.1, 0.0, 0.0}, {50.0, 0.0, 0.0}, kCie76).total, 0.1, 1e-12);
}

// One step of rounding in b* makes the chroma difference larger than the distance: the square comes out below
// 0.
TEST(difference, totalOfASquareBelowZero_isZero) {
    for (const double i : {5.0, 12.0, 14.0, 21.0}) {
        const double a = 3.0 + i * 0.37;
        const double b = 4.0 + i * 0.11;
        const double next = std::nextafter(b, 100.0);
        EXPECT_EQ(difference({50.0, a, next}, {50.0, a, b}, kCie94).total, 0.0) << i;
    }
}

} // namespace
