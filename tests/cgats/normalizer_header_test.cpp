// What the normaliser makes of header lines: values, comments, comment blocks, keywords, too many of them.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/cgats/normalized.h"
#include "tests/cgats/read_document.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const std::string kTable = "BEGIN_DATA_FORMAT\nSAMPLE_ID\tLAB_L\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t2\n"
                           "BEGIN_DATA\n1\t95.2\n2\t16.8\nEND_DATA\n";

TEST(normalizerHeader, bareValueOfSeveralWords_isQuoted) {
    const std::string text = dialect("bare-values.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{2, "ORIGINATOR\t\"the proof desk\""}}));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kValueQuoted, 2, 12, "the proof desk"}));
    const ReadDocument document(normalized.text());
    EXPECT_STREQ(document.GetTag("ORIGINATOR")->GetValue(), "the proof desk");
    EXPECT_STREQ(document.GetTag("SERIAL")->GetValue(), "12-0044");
    EXPECT_EQ(document.GetNrSamples(0), 3);
}

TEST(normalizerHeader, commentBehindABareValue_isNoPartOfIt) {
    const Normalized normalized = accepted("ORIGINATOR the desk # by hand\n" + kTable);
    EXPECT_EQ(normalized.text(), "ORIGINATOR \"the desk\" # by hand\n" + kTable);
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kValueQuoted, 1, 12, "the desk"}));
}

TEST(normalizerHeader, textBehindAClosingQuote_becomesAComment) {
    const std::string text = dialect("text-behind-values.txt");
    const Normalized normalized = accepted(text);
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kTextBehindValue}));
    EXPECT_EQ(normalized.liberties()[0].line, 2);
    EXPECT_EQ(normalized.liberties()[0].column, 25);
    EXPECT_EQ(normalized.liberties()[0].token, "second shift");
    const ReadDocument document(normalized.text());
    EXPECT_STREQ(document.GetTag("ORIGINATOR")->GetValue(), "proof desk");
    EXPECT_THAT(document.GetTag("ORIGINATOR")->GetComment(), HasSubstr("second shift"));
}

TEST(normalizerHeader, quoteOfAValueThatNeverCloses_isClosedBehindTheLastWord) {
    const Normalized normalized = accepted("ORIGINATOR \"proof desk  \r\nSERIAL \"7\"\r\n" + kTable);
    EXPECT_EQ(normalized.text(), "ORIGINATOR \"proof desk\"  \r\nSERIAL \"7\"\r\n" + kTable);
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kQuoteClosed}));
    EXPECT_EQ(normalized.liberties()[0].line, 1);
    const ReadDocument document(normalized.text());
    EXPECT_STREQ(document.GetTag("ORIGINATOR")->GetValue(), "proof desk");
    EXPECT_STREQ(document.GetTag("SERIAL")->GetValue(), "7");
}

TEST(normalizerHeader, doubledQuotesOfAValue_becomeApostrophes) {
    const Normalized normalized = accepted("FILE_DESCRIPTOR \"a \"\"b\"\" c\"\n" + kTable);
    EXPECT_EQ(normalized.text(), "FILE_DESCRIPTOR \"a 'b' c\"\n" + kTable);
    EXPECT_GE(normalized.countOf(Liberty::kDoubledQuotes), 1);
    EXPECT_STREQ(ReadDocument(normalized.text()).GetTag("FILE_DESCRIPTOR")->GetValue(), "a 'b' c");
}

TEST(normalizerHeader, quotedValueWithAHash_isLeftToTheReader) {
    expectUnchanged("PRINT_CONDITIONS \"press # 4\"\n" + kTable);
}

TEST(normalizerHeader, emptyValueInQuotes_passes) {
    expectUnchanged("ORIGINATOR \"\"\n" + kTable);
}

TEST(normalizerHeader, commentLines_moveToTheNextLineWithoutOne) {
    const std::string text = dialect("comment-lines.txt");
    const Normalized normalized = accepted(text);
    EXPECT_THAT(normalized.liberties(),
                ElementsAre(Finding{Liberty::kCommentMoved, 2, 2, " first remark"},
                            Finding{Liberty::kCommentMoved, 5, 2, " second remark"},
                            Finding{Liberty::kCommentMoved, 12, 2, " the samples"},
                            Finding{Liberty::kCommentDropped, 18, 2, " nothing follows"}));
    const ReadDocument document(normalized.text());
    EXPECT_THAT(keywordsOf(document),
                ElementsAre("CGATS.17", "ORIGINATOR", "CREATED", "NUMBER_OF_FIELDS", "BEGIN_DATA_FORMAT",
                            "END_DATA_FORMAT", "NUMBER_OF_SETS", "BEGIN_DATA", "END_DATA"));
    EXPECT_THAT(document.GetTag("ORIGINATOR")->GetComment(), HasSubstr("first remark"));
    EXPECT_THAT(document.GetTag("CREATED")->GetComment(), HasSubstr("Tuesday"));
    EXPECT_THAT(document.GetTag("NUMBER_OF_FIELDS")->GetComment(), HasSubstr("second remark"));
    EXPECT_THAT(document.GetTag("BEGIN_DATA")->GetComment(), HasSubstr("the samples"));
    EXPECT_THAT(normalized.text(), testing::Not(HasSubstr("nothing follows")));
}

TEST(normalizerHeader, documentWithCommentLines_canBeWrittenBack) {
    const std::string text = dialect("comment-lines.txt");
    char* written = nullptr;
    EXPECT_NE(ReadDocument(text).WriteToBuffer(&written), 0);
    delete[] written;
    written = nullptr;
    EXPECT_EQ(ReadDocument(accepted(text).text()).WriteToBuffer(&written), 0);
    delete[] written;
}

TEST(normalizerHeader, commentLineBetweenTables_staysWithTheSecondOne) {
    const Normalized normalized = accepted("CGATS.17\n" + kTable + "# solids\n" + kTable);
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kCommentMoved}));
    const ReadDocument document(normalized.text());
    EXPECT_EQ(document.GetNrTables(), 2);
    ASSERT_EQ(document.GetNrTags(), 11);
    EXPECT_STREQ(document.GetTagAt(5)->GetComment(), ""); // END_DATA of the first table
    EXPECT_THAT(document.GetTagAt(6)->GetComment(), HasSubstr("solids"));
}

TEST(normalizerHeader, commentLineAmongSamples_goesToTheirEnd) {
    const Normalized normalized =
        accepted("CGATS.17\nBEGIN_DATA_FORMAT\nLAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n"
                 "NUMBER_OF_SETS 2\nBEGIN_DATA\n1 2 3\n# darker\n4 5 6\nEND_DATA\n");
    EXPECT_EQ(normalized.countOf(Liberty::kCommentMoved), 1);
    const ReadDocument document(normalized.text());
    EXPECT_EQ(numbersOf(document, 0, 0), (std::vector<double>{1, 4}));
    EXPECT_THAT(document.GetTag("END_DATA")->GetComment(), HasSubstr("darker"));
}

TEST(normalizerHeader, bareHashLine_stays) {
    expectUnchanged("CGATS.17\n#\nSERIAL 4\n" + kTable);
}

TEST(normalizerHeader, emptyCommentBlock_getsAnEmptyLine) {
    const std::string text = dialect("empty-comment-block.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{2, "BEGIN_NOTES\n"}}));
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kEmptyCommentBlock}));
    const ReadDocument document(normalized.text());
    EXPECT_EQ(document.GetNrCommentBlocks(), 1);
    EXPECT_EQ(document.GetNrSamples(0), 3);
}

TEST(normalizerHeader, commentBlockWithText_passes) {
    expectUnchanged("CGATS.17\nBEGIN_NOTES\n# free text \"here\nNUMBER_OF_SETS one\nEND_NOTES\n" + kTable);
}

TEST(normalizerHeader, commentBlockWithoutAnEnd_isRefused) {
    const Normalized normalized{"CGATS.17\nBEGIN_NOTES\nfree text\n" + kTable};
    EXPECT_EQ(normalized.code, 5);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->code, 5);
    EXPECT_EQ(normalized.refusal()->line, 2);
    EXPECT_EQ(normalized.refusal()->column, 1);
    EXPECT_EQ(normalized.refusal()->token, "BEGIN_NOTES");
    EXPECT_FALSE(normalized.refusal()->expected.empty());
}

TEST(normalizerHeader, structuralKeywordsInAnyCase_areRewritten) {
    const std::string text = dialect("keywords-in-lower-case.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{2, "NUMBER_OF_FIELDS\t4"},
                                                  {3, "BEGIN_DATA_FORMAT"},
                                                  {5, "END_DATA_FORMAT"},
                                                  {6, "NUMBER_OF_SETS\t3"},
                                                  {7, "BEGIN_DATA"},
                                                  {11, "END_DATA"}}));
    EXPECT_THAT(normalized.liberties(),
                ElementsAre(Finding{Liberty::kKeywordSpelling, 2, 1, "number_of_fields"},
                            Finding{Liberty::kKeywordSpelling, 3, 1, "begin_data_format"},
                            Finding{Liberty::kKeywordSpelling, 5, 1, "End_Data_Format"},
                            Finding{Liberty::kKeywordSpelling, 6, 1, "Number_Of_Sets"},
                            Finding{Liberty::kKeywordSpelling, 7, 1, "begin_data"},
                            Finding{Liberty::kKeywordSpelling, 11, 1, "end_data"}));
    EXPECT_EQ(ReadDocument(normalized.text()).GetNrSamples(0), 3);
}

TEST(normalizerHeader, endOfDataWithAWrongLetter_isMended) {
    const std::string text = dialect("end-of-data-misspelled.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{11, "END_DATA"}}));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kKeywordSpelling, 11, 1, "END_DATE"}));
}

std::string manyHeaderLines(int lines) {
    std::string text = "CGATS.17\n";
    for (int i = 0; i < lines; ++i)
        text += "X_" + std::to_string(i) + "\t\"" + std::to_string(i) + "\"\n";
    return text;
}

// kTable has 5 header lines, the first line is one more.
TEST(normalizerHeader, of128Lines_eachPasses) {
    expectUnchanged(manyHeaderLines(122) + kTable);
}

TEST(normalizerHeader, linesBeyondThe128th_areListedAndStay) {
    const std::string text = manyHeaderLines(125) + kTable;
    const Normalized normalized{text};
    EXPECT_EQ(normalized.code, 0);
    EXPECT_EQ(normalized.text(), text);
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kLineNotKept}, int{Liberty::kLineNotKept},
                                                int{Liberty::kLineNotKept}));
}

TEST(normalizerHeader, tooManyLines_declarationsOfSpectralColumnsMakeRoom) {
    std::string text = manyHeaderLines(122);
    for (int nm = 400; nm < 440; nm += 10)
        text += "KEYWORD\t\"SPEC_" + std::to_string(nm) + "\"\n";
    text += "BEGIN_DATA_FORMAT\nSPEC_400 SPEC_410 SPEC_420 SPEC_430\nEND_DATA_FORMAT\nNUMBER_OF_SETS 1\n"
            "BEGIN_DATA\n0.1 0.2 0.3 0.4\nEND_DATA\n";
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.countOf(Liberty::kKeywordDropped), 4);
    EXPECT_EQ(normalized.countOf(Liberty::kLineNotKept), 0);
    const ReadDocument document(normalized.text());
    EXPECT_EQ(document.GetNrTags(), 128);
    EXPECT_THAT(wavelengthsOf(document, 0), ElementsAre(400, 410, 420, 430));
}

TEST(normalizerHeader, valueOfMoreThan4096Characters_isCut) {
    const std::string start = "CGATS.17\nORIGINATOR\t\"";
    const Normalized normalized = accepted(start + std::string(5000, 'a') + "\"\n" + kTable);
    EXPECT_EQ(normalized.text(), start + std::string(4096, 'a') + "\"\n" + kTable);
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kTooLong}));
    EXPECT_EQ(normalized.liberties()[0].line, 2);
}

TEST(normalizerHeader, commentOfMoreThan512Characters_isCut) {
    const Normalized normalized = accepted("SERIAL\t4\t#" + std::string(600, 'a') + "\n" + kTable);
    EXPECT_EQ(normalized.text(), "SERIAL\t4\t#" + std::string(512, 'a') + "\n" + kTable);
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kTooLong}));
}

TEST(normalizerHeader, keywordOfMoreThan256Characters_isRefused) {
    const Normalized normalized{"CGATS.17\n" + std::string(300, 'K') + "\n" + kTable};
    EXPECT_EQ(normalized.code, -1);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->line, 2);
    EXPECT_EQ(normalized.refusal()->column, 1);
    EXPECT_FALSE(normalized.refusal()->expected.empty());
}

TEST(normalizerHeader, lineThatBeginsWithAQuote_becomesAComment) {
    const Normalized normalized = accepted("CGATS.17\n\"made on press 4\"\n" + kTable);
    EXPECT_EQ(normalized.countOf(Liberty::kFreeText), 1);
    const ReadDocument document(normalized.text());
    EXPECT_EQ(document.GetNrSamples(0), 2);
}

} // namespace
} // namespace qxcms::tests
