// Lines of samples: how many values they have, in blocks and by the character.
#include "cgats/row_scan.h"

#include <random>
#include <string>

#include <gtest/gtest.h>

#include "base/instruction_set.h"

namespace qxcms::detail {

static bool operator==(const OutlineRow& a, const OutlineRow& b) {
    return a.line.first == b.line.first && a.line.last == b.line.last && a.large == b.large &&
           a.strange == b.strange && a.values == b.values && a.openQuote == b.openQuote &&
           a.special == b.special && a.hasNul == b.hasNul && a.tooLong == b.tooLong &&
           a.hasSpace == b.hasSpace && a.hasSign == b.hasSign;
}

} // namespace qxcms::detail

namespace qxcms::tests {
namespace {

using namespace qxcms::detail;

int valuesOn(const std::string& line) {
    return scanRow(line, 0).values;
}

TEST(rowScan, values_areCountedAsTheReaderTakesThem) {
    EXPECT_EQ(valuesOn(""), 0);
    EXPECT_EQ(valuesOn(" \t "), 0);
    EXPECT_EQ(valuesOn("1 2\t3"), 3);
    EXPECT_EQ(valuesOn("\t1  2 \t"), 2);
    EXPECT_EQ(valuesOn("\"a b\" 2"), 2);
    EXPECT_EQ(valuesOn("\"\""), 1);
    EXPECT_EQ(valuesOn("\"a\"2"), 2); // nothing has to separate a closing quote from the next value
    EXPECT_EQ(valuesOn("a\"b c\"d"), 2);
}

TEST(rowScan, line_endsAtEitherLineEnd) {
    EXPECT_EQ(scanRow("ab c\nd", 0).line.last, 4U);
    EXPECT_EQ(scanRow("ab c\rd", 0).line.last, 4U);
    EXPECT_EQ(scanRow("x\nab", 2).line.first, 2U);
    EXPECT_EQ(scanRow("x\nab", 2).line.last, 4U);
    EXPECT_EQ(scanRow("\"a\nb\"", 0).line.last, 2U);
}

TEST(rowScan, quoteThatDoesNotClose_isTold) {
    EXPECT_TRUE(scanRow("1 \"a b", 0).openQuote);
    EXPECT_TRUE(scanRow("1 \"a\nb\"", 0).openQuote);
    EXPECT_FALSE(scanRow("1 \"a\"", 0).openQuote);
}

TEST(rowScan, quotesAndCommas_makeALineSpecial) {
    EXPECT_FALSE(scanRow("1 2.5 name", 0).special);
    EXPECT_TRUE(scanRow("# 2.5 name", 0).special);
    EXPECT_TRUE(scanRow("1 2,5", 0).special);
    EXPECT_TRUE(scanRow("1 \"2\"", 0).special);
    EXPECT_TRUE(scanRow("1 2\"", 0).special);
}

TEST(rowScan, valuesThatMayBeTenOrMore_areMarked) {
    EXPECT_EQ(scanRow("5 0.5 .55 9. 0", 0).large, 0U);
    EXPECT_EQ(scanRow("5 10 0.5 12.5", 0).large, bitOfValue(1) | bitOfValue(3));
    EXPECT_EQ(scanRow("1e5 +20 \"3\" nan", 0).large, 15U);
    EXPECT_EQ(scanRow("0.1e5 0.2", 0).large, 1U);
}

TEST(rowScan, valuesOfOtherCharacters_areMarked) {
    EXPECT_EQ(scanRow("12 -0.5 x1 1e5 \"3\" 7", 0).strange, 4U + 8U + 16U);
}

TEST(rowScan, valuesBehindThe63rd_shareAMark) {
    std::string line;
    for (int i = 0; i < 70; ++i)
        line += i == 64 ? "12 " : "1 ";
    EXPECT_EQ(scanRow(line, 0).large, std::uint64_t{1} << 63);
}

TEST(rowScan, spacesOutsideOfQuotes_areTold) {
    EXPECT_FALSE(scanRow("1\t\"a b\"\t2", 0).hasSpace);
    EXPECT_TRUE(scanRow("1\ta b", 0).hasSpace);
}

TEST(rowScan, numberSignsOutsideOfQuotes_areTold) {
    EXPECT_FALSE(scanRow("1 \"#\" 2", 0).hasSign);
    EXPECT_TRUE(scanRow("1 a#b", 0).hasSign);
}

TEST(rowScan, nulBytes_areTold) {
    EXPECT_FALSE(scanRow("1 2", 0).hasNul);
    EXPECT_TRUE(scanRow(std::string("1 \0 2", 5), 0).hasNul);
    EXPECT_TRUE(scanRow(std::string("1 \"a\0\" 2", 8), 0).hasNul);
}

TEST(rowScan, valuesTooLongForTheReader_areTold) {
    const std::string fits(127, '1');
    EXPECT_FALSE(scanRow("1 " + fits + " 2 " + fits, 0).tooLong);
    EXPECT_TRUE(scanRow("1 " + fits + "1 2", 0).tooLong);
    EXPECT_TRUE(scanRow("1 2 " + fits + "1", 0).tooLong);
    EXPECT_FALSE(scanRow("\"" + fits + "\" 2", 0).tooLong);
    EXPECT_TRUE(scanRow("1 \"" + fits + "1\" 2", 0).tooLong);
    EXPECT_TRUE(scanRow("1 \" " + fits, 0).tooLong);
}

// Lines of numbers with oddities here and there, from any character on.
void expectWhatCharactersGive(RowBlockReader read) {
    std::mt19937 random(17); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts each time
    const std::string common = "0123456789..-  \t";
    const std::string digits = "0123456789";
    const std::string odd("\"\",eE#A/+\x01\xff\n\r\0", 14);
    for (int round = 0; round < 100000; ++round) {
        std::string text;
        const std::size_t length = random() % 600;
        const unsigned oddities = random() % 8;
        const std::string& usual = random() % 4 != 0 ? common : digits;
        while (text.size() < length)
            text += random() % 100 < oddities ? odd[random() % odd.size()] : usual[random() % usual.size()];
        const std::size_t first = text.empty() ? 0 : random() % text.size();
        ASSERT_TRUE(scanRowWith(read, text, first) == scanRowPlainly(text, first))
            << testing::PrintToString(text);
    }
}

TEST(rowScan, blocks_giveWhatCharactersGive) {
    if (kCommonRowReaders.blocks == nullptr)
        GTEST_SKIP() << "there are no blocks for this kind of processor";
    expectWhatCharactersGive(kCommonRowReaders.blocks);
}

TEST(rowScan, blocksByAvx2_giveWhatCharactersGive) {
    if (kAvx2RowReaders.blocks == nullptr || offeredInstructionSet() < InstructionSet::kAvx2)
        GTEST_SKIP() << "the processor has no AVX2";
    expectWhatCharactersGive(kAvx2RowReaders.blocks);
}

// Rows of numbers with oddities here and there, in one go.
void expectWhatRowsGive(PlainRowReader read) {
    std::mt19937 random(19); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same texts each time
    const std::string common = "0123456789..-  \t\t\n";
    const std::string odd("\",eE#A/+\x01\xff\r\0N", 14);
    for (int round = 0; round < 100000; ++round) {
        std::string text = "1";
        const std::size_t length = random() % 900;
        const unsigned oddities = random() % 4;
        while (text.size() < length)
            text += random() % 200 < oddities ? odd[random() % odd.size()] : common[random() % common.size()];
        PlainRows rows;
        const char* const behind = read(text.data(), text.data() + text.size(), &rows);
        RowsSummary fast;
        fast.add(rows);
        RowsSummary plain;
        std::size_t at = 0;
        while (text.data() + at < behind) {
            const OutlineRow row = scanRowPlainly(text, at);
            ASSERT_LT(row.line.last, text.size());
            ASSERT_EQ(text[row.line.last], '\n');
            ASSERT_TRUE(text[at] == '-' || text[at] == '.' || (text[at] >= '0' && text[at] <= '9'));
            plain.add(row);
            at = row.line.last + 1;
        }
        ASSERT_EQ(text.data() + at, behind);
        ASSERT_TRUE(fast.count == plain.count && fast.fewestValues == plain.fewestValues &&
                    fast.mostValues == plain.mostValues && fast.large == plain.large &&
                    fast.strange == plain.strange && fast.special == plain.special &&
                    fast.hasNul == plain.hasNul && fast.tooLong == plain.tooLong &&
                    fast.hasSpace == plain.hasSpace && fast.hasSign == plain.hasSign)
            << testing::PrintToString(text);
    }
}

TEST(rowScan, rowsInOneGo_giveWhatCharactersGive) {
    if (kCommonRowReaders.rows == nullptr)
        GTEST_SKIP() << "there are no blocks for this kind of processor";
    expectWhatRowsGive(kCommonRowReaders.rows);
}

TEST(rowScan, rowsInOneGoByAvx2_giveWhatCharactersGive) {
    if (kAvx2RowReaders.rows == nullptr || offeredInstructionSet() < InstructionSet::kAvx2)
        GTEST_SKIP() << "the processor has no AVX2";
    expectWhatRowsGive(kAvx2RowReaders.rows);
}

TEST(rowScan, rowsInOneGo_endBeforeWhatMayEndThem) {
    const std::string row = "1 2 3\n";
    const std::string rest(100, ' ');
    for (const std::string next : {"END_DATA\n", "3ND_DATA\n", "\"a\" 2 3\n", " 1 2 3\n", "\n"}) {
        const std::string text = row + row + next + rest;
        PlainRows rows;
        const char* const behind = rowReaders().rows == nullptr
                                       ? text.data() + 2 * row.size()
                                       : rowReaders().rows(text.data(), text.data() + text.size(), &rows);
        EXPECT_EQ(behind - text.data(), static_cast<std::ptrdiff_t>(2 * row.size())) << next;
    }
}

TEST(rowScan, line_isReadInBlocksWhereTheProcessorCan) {
    const std::string line(200, '7');
    EXPECT_TRUE(scanRow(line, 0) == scanRowPlainly(line, 0));
}

} // namespace
} // namespace qxcms::tests
