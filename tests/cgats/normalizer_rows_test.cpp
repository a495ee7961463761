// What the normaliser makes of samples: their number, cells between TABs, quotes, blanks, what it refuses.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/cgats/normalized.h"
#include "tests/cgats/read_document.h"

namespace qxcms::tests {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

// The lines before the samples are 6, "BEGIN_DATA" the last of them.
std::string labTable(const std::string& sets, const std::string& rows) {
    return "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tLAB_L\tLAB_A\tLAB_B\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t" +
           sets + "\nBEGIN_DATA\n" + rows + "END_DATA\n";
}

void expectRefusedRow(const std::string& text, int line) {
    const Normalized normalized{text};
    EXPECT_EQ(normalized.code, 13) << normalized.text();
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->code, 13);
    EXPECT_EQ(normalized.refusal()->line, line);
    EXPECT_FALSE(normalized.refusal()->expected.empty());
}

void expectThreeSamples(const std::string& text) {
    const ReadDocument document(text);
    EXPECT_EQ(document.GetNrSamples(0), 3);
    EXPECT_EQ(numbersOf(document, 0, 1), (std::vector<double>{95.21, 53.86, 19.47}));
    EXPECT_EQ(numbersOf(document, 0, 3), (std::vector<double>{2.17, 44.93, -38.55}));
}

TEST(normalizerRows, missingNumberOfSets_isPutIn) {
    const std::string text = dialect("sample-count-missing.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{7, "NUMBER_OF_SETS 3\nBEGIN_DATA"}}));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kSampleCount, 7, 1, ""}));
    EXPECT_THAT(normalized.done(0), HasSubstr("3"));
    expectThreeSamples(normalized.text());
}

TEST(normalizerRows, tooLargeANumberOfSets_isCounted) {
    const std::string text = dialect("sample-count-too-large.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{6, "NUMBER_OF_SETS\t3"}}));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kSampleCount, 6, 16, "918"}));
    EXPECT_THAT(normalized.done(0), AllOf(HasSubstr("3"), HasSubstr("918")));
    expectThreeSamples(normalized.text());
}

TEST(normalizerRows, tooSmallANumberOfSets_isCounted) {
    const std::string text = dialect("sample-count-too-small.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{6, "NUMBER_OF_SETS\t3"}}));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kSampleCount, 6, 16, "2"}));
    EXPECT_THAT(normalized.done(0), AllOf(HasSubstr("2"), HasSubstr("3")));
    expectThreeSamples(normalized.text());
}

TEST(normalizerRows, numberOfSetsThatIsNoNumber_isCounted) {
    const Normalized normalized = accepted(labTable("many", "1\t2\t3\t4\n5\t6\t7\t8\n"));
    EXPECT_EQ(normalized.text(), labTable("2", "1\t2\t3\t4\n5\t6\t7\t8\n"));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kSampleCount, 5, 16, "many"}));
}

TEST(normalizerRows, missingEndOfDataWithAWrongCount_isMended) {
    const std::string text = dialect("end-of-data-missing.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{6, "NUMBER_OF_SETS\t3"}}) + "END_DATA\n");
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kSampleCount}, int{Liberty::kEndOfData}));
    EXPECT_EQ(normalized.liberties()[0], (Finding{Liberty::kSampleCount, 6, 16, "4"}));
    expectThreeSamples(normalized.text());
}

TEST(normalizerRows, missingEndOfDataWithTheRightCount_isNoMatter) {
    expectUnchanged(withLines(dialect("end-of-data-missing.txt"), {{6, "NUMBER_OF_SETS\t3"}}));
}

TEST(normalizerRows, textBetweenTabs_isQuoted) {
    const std::string text = dialect("tab-unquoted-names.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{8, "1\t\"paper white\"\t95.21\t-0.43\t2.17"},
                                                  {9, "2\t\"warm red\"\t53.86\t68.12\t44.93"}}));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kCellQuoted, 8, 3, "paper white"},
                                                    Finding{Liberty::kCellQuoted, 9, 3, "warm red"}));
    const ReadDocument document(normalized.text());
    EXPECT_EQ(textsOf(document, 0, 1), (std::vector<std::string>{"paper white", "warm red", "reflex"}));
    EXPECT_EQ(numbersOf(document, 0, 2), (std::vector<double>{95.21, 53.86, 19.47}));
    EXPECT_EQ(numbersOf(document, 0, 4), (std::vector<double>{2.17, 44.93, -38.55}));
}

TEST(normalizerRows, emptyCell_becomesAnEmptyText) {
    const std::string head = "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tSTRING\tLAB_L\nEND_DATA_FORMAT\n"
                             "NUMBER_OF_SETS\t2\nBEGIN_DATA\n";
    const Normalized normalized = accepted(head + "1\t\t95.2\n2\tred\t53.8\nEND_DATA\n");
    EXPECT_EQ(normalized.text(), head + "1\t\"\"\t95.2\n2\tred\t53.8\nEND_DATA\n");
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kEmptyCell, 7, 3, ""}));
    EXPECT_EQ(textsOf(ReadDocument(normalized.text()), 0, 1), (std::vector<std::string>{"", "red"}));
}

TEST(normalizerRows, tabsBehindTheLastCell_doNotCount) {
    const std::string head = "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tSTRING\tLAB_L\nEND_DATA_FORMAT\n"
                             "NUMBER_OF_SETS\t2\nBEGIN_DATA\n";
    const Normalized normalized = accepted(head + "1\tdark red\t95.2\t\t\n2\tred\t53.8\t\nEND_DATA\n");
    EXPECT_EQ(normalized.text(), head + "1\t\"dark red\"\t95.2\t\t\n2\tred\t53.8\t\nEND_DATA\n");
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kCellQuoted}));
}

TEST(normalizerRows, thousandsSetApart_areJoined) {
    const std::string text = dialect("thousands-blanks.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(),
              withLines(text, {{9, "1\t1204.5\t1250.0\t980.75"}, {10, "2\t12.5\t13.25\t10000"}}));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kNumberSpelling, 9, 3, "1 204.5"},
                                                    Finding{Liberty::kNumberSpelling, 9, 11, "1 250.0"},
                                                    Finding{Liberty::kNumberSpelling, 10, 14, "10 000"}));
    const ReadDocument document(normalized.text());
    EXPECT_EQ(numbersOf(document, 0, 1), (std::vector<double>{1204.5, 12.5}));
    EXPECT_EQ(numbersOf(document, 0, 3), (std::vector<double>{980.75, 10000}));
}

TEST(normalizerRows, decimalCommas_areLeftToTheReader) {
    const std::string text = dialect("decimal-commas.txt");
    expectUnchanged(text);
    expectThreeSamples(text);
}

TEST(normalizerRows, decimalCommasInQuotes_areRewritten) {
    const std::string text = dialect("decimal-commas-in-quotes.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.countOf(Liberty::kNumberSpelling), 6);
    EXPECT_EQ(normalized.liberties()[0].line, 8);
    const ReadDocument document(normalized.text());
    EXPECT_EQ(numbersOf(document, 0, 1), (std::vector<double>{95.21, 53.86}));
    EXPECT_EQ(numbersOf(document, 0, 2), (std::vector<double>{-0.43, 68.12}));
    EXPECT_EQ(numbersOf(document, 0, 3), (std::vector<double>{2.17, 44.93}));
}

TEST(normalizerRows, doubledQuotes_becomeApostrophes) {
    const std::string text = dialect("doubled-quotes.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{2, "FILE_DESCRIPTOR\t\"the 'second' press run\""},
                                                  {9, "1\t\"so called 'white'\"\t95.21\t-0.43\t2.17"}}));
    EXPECT_EQ(normalized.countOf(Liberty::kDoubledQuotes), static_cast<int>(normalized.kinds().size()));
    const ReadDocument document(normalized.text());
    EXPECT_STREQ(document.GetTag("FILE_DESCRIPTOR")->GetValue(), "the 'second' press run");
    EXPECT_EQ(textsOf(document, 0, 1), (std::vector<std::string>{"so called 'white'", "red"}));
    EXPECT_EQ(numbersOf(document, 0, 4), (std::vector<double>{2.17, 44.93}));
}

TEST(normalizerRows, quoteThatNeverCloses_isClosedAtTheLineEnd) {
    const std::string text = dialect("unclosed-quote.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(),
              withLines(text, {{2, "ORIGINATOR\t\"proof desk\""}, {9, "1\t95.21\t-0.43\t2.17\t\"white\""}}));
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kQuoteClosed}, int{Liberty::kQuoteClosed}));
    EXPECT_EQ(normalized.liberties()[1].line, 9);
    const ReadDocument document(normalized.text());
    EXPECT_EQ(textsOf(document, 0, 4), (std::vector<std::string>{"white", "red"}));
}

TEST(normalizerRows, commentsBehindRows_doNotBelongToThem) {
    const std::string text = dialect("comments-behind-rows.txt");
    const Normalized normalized = accepted(text);
    for (const Finding& finding : normalized.liberties())
        EXPECT_THAT(finding.kind, testing::AnyOf(int{Liberty::kCommentMoved}, int{Liberty::kCommentDropped}));
    EXPECT_EQ(normalized.liberties().size(), 2U);
    expectThreeSamples(normalized.text());
}

TEST(normalizerRows, quotedTextOverBlanks_passes) {
    expectUnchanged("CGATS.17\n" + tableText("SAMPLE_ID STRING LAB_L", 2, "1 \"warm red\" 50\n2 \"\" 40"));
}

TEST(normalizerRows, rowsOverSeveralLines_pass) {
    expectUnchanged(labTable("2", "1\t2\n3\t4\n5\t6\n7\t8\n"));
}

TEST(normalizerRows, rowsOverSeveralLinesOfBlanks_pass) {
    expectUnchanged("CGATS.17\n" + tableText("SAMPLE_ID LAB_L LAB_A LAB_B", 2, "1 2\n3 4\n5 6\n7 8"));
}

TEST(normalizerRows, rowsOverLinesOfAnyLength_pass) {
    expectUnchanged("CGATS.17\n" + tableText("SAMPLE_ID LAB_L LAB_A LAB_B", 2, "1 2 3\n4\n5\n6 7 8"));
}

TEST(normalizerRows, oneValuePerLine_passes) {
    expectUnchanged("CGATS.17\n" + tableText("SAMPLE_ID LAB_L LAB_A", 2, "1\n2\n3\n4\n5\n6"));
}

TEST(normalizerRows, rowBrokenBeforeATab_passes) {
    expectUnchanged(labTable("2", "1\n\t2\t3\t4\n5\t6\t7\t8\n"));
}

TEST(normalizerRows, twoNameLinesForRowsOfTwoLines_pass) {
    expectUnchanged("CGATS.17\n" + tableText("SAMPLE_ID\tLAB_L\nLAB_A\tLAB_B", 2, "1\t2\n3\t4\n5\t6\n7\t8"));
}

TEST(normalizerRows, dotsOfThousandsWithADecimalComma_areSettledAtOnce) {
    const std::string head = "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tSTRING\tLAB_L\nEND_DATA_FORMAT\n"
                             "NUMBER_OF_SETS\t1\nBEGIN_DATA\n";
    accepted(head + "1\tred\t9.912,59\nEND_DATA\n");
    accepted(head + "1\tdark red\t9.912,59\nEND_DATA\n");
}

TEST(normalizerRows, emptyLinesBetweenRows_pass) {
    expectUnchanged(labTable("2", "1\t2\t3\t4\n\n  \n5\t6\t7\t8\n"));
}

TEST(normalizerRows, valueThatIsNoNumber_isLeftToTheReader) {
    expectUnchanged(labTable("2", "1\tN/A\t3\t4\n5\t6\t7\t-\n"));
}

TEST(normalizerRows, rowWithAValueTooFew_isRefused) {
    expectRefusedRow(labTable("3", "1\t2\t3\t4\n5\t6\t7\n8\t9\t10\t11\n"), 8);
}

TEST(normalizerRows, rowWithAValueTooMany_isRefused) {
    expectRefusedRow(labTable("3", "1\t2\t3\t4\n5\t6\t7\t8\n9\t10\t11\t12\t13\n"), 9);
}

TEST(normalizerRows, shiftedText_isRefusedRatherThanGuessed) {
    // Blanks throughout: whether "warm red" is one text cannot be told.
    expectRefusedRow("CGATS.17\n" + tableText("SAMPLE_ID STRING LAB_L LAB_A LAB_B", 2,
                                              "1 warm red 50 60 40\n2 white 95 0 1"),
                     7);
}

TEST(normalizerRows, valueOfMoreThan127Characters_isRefused) {
    const Normalized normalized{"CGATS.17\n" +
                                tableText("SAMPLE_ID LAB_L", 1, std::string(128, 'a') + " 50")};
    EXPECT_EQ(normalized.code, 1);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->line, 7);
    EXPECT_EQ(normalized.refusal()->column, 1);
    EXPECT_EQ(normalized.refusal()->token, std::string(128, 'a'));
    EXPECT_FALSE(normalized.refusal()->expected.empty());
}

TEST(normalizerRows, nothingBetweenTheMarks_isRefused) {
    const Normalized normalized{labTable("2", "")};
    EXPECT_NE(normalized.code, 0);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->code, normalized.code);
    EXPECT_FALSE(normalized.refusal()->expected.empty());
}

} // namespace
} // namespace qxcms::tests
