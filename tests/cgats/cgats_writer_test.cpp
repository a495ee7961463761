// The text that a document is written as, to the byte, and the files and arrays that take it.
#include <cfloat>
#include <climits>
#include <clocale>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <functional>
#include <iomanip>
#include <limits>
#include <locale>
#include <memory>
#include <random>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/support/reports.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

namespace fs = std::filesystem;

// What was written, and the answer.
struct Writing {
    std::string text;
    int code;
};

bool operator==(const Writing& a, const Writing& b) {
    return a.code == b.code && a.text == b.text;
}

void PrintTo(const Writing& writing, std::ostream* stream) {
    *stream << writing.code << " after \"" << writing.text << '"';
}

Writing writing(const TCgats& document) {
    std::ostringstream stream;
    const int code = document.WriteToStream(stream);
    return {stream.str(), code};
}

Writing writingOfTag(const TCgats& document, int index) {
    std::ostringstream stream;
    const int code = document.WriteTag(index, stream);
    return {stream.str(), code};
}

Writing writingOfHeader(const TCgats& document, int table) {
    std::ostringstream stream;
    const int code = document.WriteHeader(table, stream);
    return {stream.str(), code};
}

Writing writingOfTable(const TCgats& document, int table) {
    std::ostringstream stream;
    const int code = document.WriteTable(table, stream);
    return {stream.str(), code};
}

// A table of those columns (TCgatsField::DataType) at the end of the document; no header lines.
void addTable(TCgats& document, const std::vector<int>& dataTypes, int sets, const std::string& samples) {
    document.InitTmpHeader(0);
    for (std::size_t i = 0; i < dataTypes.size(); ++i) {
        const int number = static_cast<int>(i);
        const std::string name = "F" + std::to_string(number);
        ASSERT_EQ(document.GetTmpHeader()->Append(
                      new TCgatsField(dataTypes[i], name.c_str(), 0, TCgatsField::kCustom, number)),
                  0);
    }
    document.SetNrSamples(sets);
    const char* position = samples.c_str();
    ASSERT_EQ(document.ReadTable(&position), 0);
}

// A table of a single column of strings with that one value, as it is written.
std::string writtenString(const std::string& value) {
    TCgats document;
    addTable(document, {TCgatsField::kString}, 1, "x");
    document.GetTable(0)->GetValues(0)->SetValue(0, value.c_str());
    const Writing result = writingOfTable(document, 0);
    EXPECT_EQ(result.code, 0);
    return result.text;
}

// The lines of a column with those numbers.
std::string writtenNumbers(const std::vector<double>& numbers) {
    const int count = static_cast<int>(numbers.size());
    TCgats document;
    addTable(document, {TCgatsField::kFloat}, count, repeated("0 ", count));
    auto* column = dynamic_cast<TCgatsValueListDouble*>(document.GetTable(0)->GetValues(0));
    for (int i = 0; i < count; ++i)
        EXPECT_TRUE(column->SetNumber(i, numbers[static_cast<std::size_t>(i)]));
    const Writing result = writingOfTable(document, 0);
    EXPECT_EQ(result.code, 0);
    return result.text;
}

std::string writtenNumber(double number) {
    return writtenNumbers({number});
}

// Two tables, two comment blocks, declared and undeclared mode, in the spelling of the writer.
std::string wholeText() {
    return "CGATS.17\n"
           "ORIGINATOR\t\"the maker\"\n"
           "CREATED\t2024-01-02\n"
           "BEGIN_NOTES\nfree  \"text\"\t# here\n\nEND_NOTES\n"
           "KEYWORD\t\"LOT\"\n"
           "NUMBER_OF_FIELDS\t3\n"
           "BEGIN_DATA_FORMAT\nSAMPLE_ID\tLOT\tLAB_L\nEND_DATA_FORMAT\n"
           "NUMBER_OF_SETS\t2\n"
           "BEGIN_DATA\n1\t\"lot 1\"\t41.5\t\n2\tx\t0.25\t\nEND_DATA\n"
           "begin_more\nsecond block\r\nend_more\n"
           "NUMBER_OF_SETS\t1\n"
           "BEGIN_DATA_FORMAT\nCMYK_C\tCMYK_M\nEND_DATA_FORMAT\n"
           "BEGIN_DATA\n100\t0\t\nEND_DATA\n";
}

// Two tables of one column and one row each. Tags: 0 and 5 open a data format, 1 and 6 close it, 2 and 7
// count the sets, 3 and 8 open the samples, 4 and 9 close them.
std::string twoTablesText() {
    return tableText("SAMPLE_ID", 1, "a") + tableText("LAB_L", 1, "1.5");
}

// ---- Header lines
TEST(cgatsWriter, emptyDocument_isWrittenAsNothing) {
    EXPECT_EQ(writing(TCgats()), (Writing{"", 0}));
}

TEST(cgatsWriter, tagLines_haveKeywordValueAndComment) {
    TCgats document;
    ASSERT_EQ(document.AddTag(-1, "CGATS.17", 0, "", ""), 0);
    ASSERT_EQ(document.AddTag(0, "ORIGINATOR", 0, "the maker", ""), 0);
    ASSERT_EQ(document.AddTag(2, "CREATED", 1, "2024-01-02", ""), 0);
    ASSERT_EQ(document.AddTag(-1, "A", 0, "b", "c d"), 0);
    ASSERT_EQ(document.AddTag(-1, "B", 2, "1.5", "c"), 0);
    ASSERT_EQ(document.AddTag(-1, "C", 1, "", "alone"), 0);
    ASSERT_EQ(document.AddTag(-1, "D", -7, "bare", ""), 0);
    EXPECT_EQ(writing(document), (Writing{"CGATS.17\n"
                                          "ORIGINATOR\t\"the maker\"\n"
                                          "CREATED\t2024-01-02\n"
                                          "A\t\"b\"\t# c d\n"
                                          "B\t1.5\t# c\n"
                                          "C\t# alone\n"
                                          "D\tbare\n",
                                          0}));
}

TEST(cgatsWriter, valuesAndComments_areWrittenAsTheyAre) {
    TCgats document;
    ASSERT_EQ(document.AddTag(-1, "A", 0, "say \"a\" # b\\", "# \"c\"\t"), 0);
    ASSERT_EQ(document.AddTag(-1, "B", 1, "two words", ""), 0);
    EXPECT_EQ(writing(document).text, "A\t\"say \"a\" # b\\\"\t# # \"c\"\t\nB\ttwo words\n");
}

TEST(cgatsWriter, longestTag_isWrittenWhole) {
    const std::string keyword(TCgats::kMaxKeyword, 'k');
    const std::string value(TCgats::kMaxValue, 'v');
    const std::string comment(TCgats::kMaxComment, 'c');
    TCgats document;
    ASSERT_EQ(document.AddTag(-1, keyword.c_str(), 0, value.c_str(), comment.c_str()), 0);
    EXPECT_EQ(writing(document).text, keyword + "\t\"" + value + "\"\t# " + comment + "\n");
}

TEST(cgatsWriter, commentOfATag_gainsABlankPerRoundTrip) {
    const Reading first("A # note\n");
    EXPECT_EQ(writing(first.document).text, "A\t#  note\n");
    const Reading second(writing(first.document).text);
    EXPECT_EQ(writing(second.document).text, "A\t#   note\n");
}

TEST(cgatsWriter, lineThatIsOnlyAComment_stopsWith22) {
    const Reading reading("CGATS.17\n# a line of its own\nORIGINATOR x\n");
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(writing(reading.document), (Writing{"CGATS.17\n", 22}));
}

TEST(cgatsWriter, tagWithoutKeyword_stopsWith22WhateverItsCode) {
    for (const int code : {-1, 0, 4, 24}) {
        TCgats document;
        ASSERT_EQ(document.AddTag(-1, "A", 0, "", ""), 0);
        ASSERT_EQ(document.AddTag(code, "", 0, "value", "comment"), 0);
        ASSERT_EQ(document.AddTag(-1, "B", 0, "", ""), 0);
        EXPECT_EQ(writing(document), (Writing{"A\n", 22})) << code;
    }
}

TEST(cgatsWriter, failure_isNotRecordedByTheStreamFunctions) {
    TCgats document;
    ASSERT_EQ(document.AddTag(-1, "", 0, "", ""), 0);
    EXPECT_EQ(writing(document).code, 22);
    EXPECT_EQ(writingOfTag(document, 0).code, 22);
    EXPECT_EQ(writingOfTag(document, 5).code, 21);
    EXPECT_EQ(writingOfHeader(document, 0).code, 23);
    EXPECT_EQ(writingOfTable(document, 0).code, 23);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

TEST(cgatsWriter, documentInError_isStillWrittenToAStream) {
    const Reading reading(twoTablesText());
    const Writing before = writing(reading.document);
    ASSERT_EQ(before.code, 0);
    reading.document.SetErrorCode(3);
    EXPECT_EQ(writing(reading.document), before);
    EXPECT_EQ(writingOfTag(reading.document, 2), (Writing{"NUMBER_OF_SETS\t1\n", 0}));
    EXPECT_EQ(writingOfHeader(reading.document, 0), (Writing{"SAMPLE_ID\n", 0}));
    EXPECT_EQ(writingOfTable(reading.document, 0), (Writing{"a\t\n", 0}));
    EXPECT_EQ(reading.document.GetErrorCode(), 3);
}

TEST(cgatsWriter, oneTag_isWrittenByItsIndex) {
    const Reading reading("CGATS.17\nORIGINATOR \"me\" # c\nBEGIN_X\ntext\nEND_X\n");
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(writingOfTag(reading.document, 0), (Writing{"CGATS.17\n", 0}));
    EXPECT_EQ(writingOfTag(reading.document, 1), (Writing{"ORIGINATOR\t\"me\"\t#  c\n", 0}));
    EXPECT_EQ(writingOfTag(reading.document, 2), (Writing{"BEGIN_X\n", 0}));
}

TEST(cgatsWriter, oneTag_pullsInNothing) {
    const Reading reading(twoTablesText());
    EXPECT_EQ(writingOfTag(reading.document, 0), (Writing{"BEGIN_DATA_FORMAT\n", 0}));
    EXPECT_EQ(writingOfTag(reading.document, 3), (Writing{"BEGIN_DATA\n", 0}));
}

TEST(cgatsWriter, tagIndexOutsideTheList_gives21) {
    const Reading reading("A\nB\n");
    for (const int index : {-1, 2, 127, 128, INT_MIN, INT_MAX})
        EXPECT_EQ(writingOfTag(reading.document, index), (Writing{"", 21})) << index;
    EXPECT_EQ(writingOfTag(TCgats(), 0), (Writing{"", 21}));
}

TEST(cgatsWriter, oneTagWithoutKeyword_gives22) {
    const Reading reading("# note\n");
    ASSERT_EQ(reading.document.GetNrTags(), 1);
    EXPECT_EQ(writingOfTag(reading.document, 0), (Writing{"", 22}));
}

// ---- The order of a document
TEST(cgatsWriter, documentInTheSpellingOfTheWriter_comesBackToTheByte) {
    const Reading reading(wholeText());
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(writing(reading.document), (Writing{wholeText(), 0}));
}

TEST(cgatsWriter, secondWriting_saysTheSame) {
    const Reading reading(wholeText());
    EXPECT_EQ(writing(reading.document), writing(reading.document));
}

TEST(cgatsWriter, looseSpelling_isWrittenTidily) {
    const Reading reading("  CGATS.17  \r\n\r\nORIGINATOR my tool\nNUMBER_OF_FIELDS   2\n"
                          "BEGIN_DATA_FORMAT\n\"sample_id\"\n lab_l # L*\nEND_DATA_FORMAT\n"
                          "NUMBER_OF_SETS \"2\"\nBEGIN_DATA\n\"1\" 41,50 2\n0.5\nEND_DATA\n");
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(writing(reading.document), (Writing{"CGATS.17\nORIGINATOR\tmytool\nNUMBER_OF_FIELDS\t2\n"
                                                  "BEGIN_DATA_FORMAT\nSAMPLE_ID\tLAB_L\nEND_DATA_FORMAT\n"
                                                  "NUMBER_OF_SETS\t\"2\"\n"
                                                  "BEGIN_DATA\n1\t41.5\t\n2\t0.5\t\nEND_DATA\n",
                                                  0}));
}

TEST(cgatsWriter, endLinesAndFirstLine_areTagsLikeOthers) {
    TCgats document;
    addTable(document, {TCgatsField::kFloat}, 1, "7");
    ASSERT_EQ(document.AddTag(4, "BEGIN_DATA_FORMAT", 0, "", ""), 0);
    ASSERT_EQ(document.AddTag(24, "BEGIN_DATA", 0, "", ""), 0);
    EXPECT_EQ(writing(document), (Writing{"BEGIN_DATA_FORMAT\nF0\nBEGIN_DATA\n7\t\n", 0}));
}

TEST(cgatsWriter, tableWithoutItsTags_doesNotAppear) {
    TCgats document;
    addTable(document, {TCgatsField::kFloat}, 1, "7");
    ASSERT_EQ(document.AddTag(-1, "CGATS.17", 0, "", ""), 0);
    EXPECT_EQ(writing(document), (Writing{"CGATS.17\n", 0}));
}

TEST(cgatsWriter, fieldListsAndSamples_areCountedApart) {
    Reading reading(twoTablesText());
    ASSERT_EQ(reading.document.GetNrTags(), 10);
    ASSERT_EQ(reading.document.InsertTag(4, "BEGIN_DATA_FORMAT", 0, "", "", 1, true), 0);
    ASSERT_EQ(reading.document.InsertTag(-1, "BETWEEN", 0, "", "", 5, true), 0);
    EXPECT_EQ(writing(reading.document), (Writing{"BEGIN_DATA_FORMAT\nSAMPLE_ID\n"
                                                  "BEGIN_DATA_FORMAT\nLAB_L\n"
                                                  "NUMBER_OF_SETS\t1\nBEGIN_DATA\na\t\nEND_DATA\n"
                                                  "BETWEEN\nEND_DATA_FORMAT\n"
                                                  "NUMBER_OF_SETS\t1\nBEGIN_DATA\n1.5\t\nEND_DATA\n",
                                                  0}));
}

TEST(cgatsWriter, samples_mayComeBeforeTheFieldList) {
    TCgats document;
    addTable(document, {TCgatsField::kFloat}, 1, "7");
    ASSERT_EQ(document.AddTag(24, "BEGIN_DATA", 0, "", ""), 0);
    ASSERT_EQ(document.AddTag(4, "BEGIN_DATA_FORMAT", 0, "", ""), 0);
    EXPECT_EQ(writing(document), (Writing{"BEGIN_DATA\n7\t\nBEGIN_DATA_FORMAT\nF0\n", 0}));
}

TEST(cgatsWriter, theCodeOfATag_pullsInTheTable) {
    TCgats document;
    addTable(document, {TCgatsField::kFloat}, 1, "7");
    ASSERT_EQ(document.AddTag(4, "FORMAT", 1, "v", "c"), 0);
    ASSERT_EQ(document.AddTag(24, "SAMPLES", 1, "v", "c"), 0);
    EXPECT_EQ(writing(document), (Writing{"FORMAT\tv\t# c\nF0\nSAMPLES\tv\t# c\n7\t\n", 0}));
}

TEST(cgatsWriter, beginDataFormatWithoutATable_stopsWith23BehindItsLine) {
    const Reading reading("CGATS.17\nBEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT\n");
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(writing(reading.document), (Writing{"CGATS.17\nBEGIN_DATA_FORMAT\n", 23}));
}

TEST(cgatsWriter, beginDataWithoutATable_stopsWith23BehindItsLine) {
    TCgats document;
    ASSERT_EQ(document.AddTag(24, "BEGIN_DATA", 0, "", ""), 0);
    ASSERT_EQ(document.AddTag(25, "END_DATA", 0, "", ""), 0);
    EXPECT_EQ(writing(document), (Writing{"BEGIN_DATA\n", 23}));
}

TEST(cgatsWriter, oneSectionMoreThanTables_stopsWith23) {
    Reading samples(twoTablesText());
    ASSERT_EQ(samples.document.AddTag(24, "BEGIN_DATA", 0, "", ""), 0);
    EXPECT_EQ(writing(samples.document), (Writing{"BEGIN_DATA_FORMAT\nSAMPLE_ID\nEND_DATA_FORMAT\n"
                                                  "NUMBER_OF_SETS\t1\nBEGIN_DATA\na\t\nEND_DATA\n"
                                                  "BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT\n"
                                                  "NUMBER_OF_SETS\t1\nBEGIN_DATA\n1.5\t\nEND_DATA\n"
                                                  "BEGIN_DATA\n",
                                                  23}));
    Reading fields(twoTablesText());
    ASSERT_EQ(fields.document.AddTag(4, "BEGIN_DATA_FORMAT", 0, "", ""), 0);
    EXPECT_EQ(writing(fields.document).code, 23);
}

// ---- Comment blocks
TEST(cgatsWriter, commentBlocks_followTheirLinesInOrderAsStored) {
    const std::string text = "BEGIN_ONE\n  first \"block\"\t# \r\n\n\xFF\x01\nEND_ONE\n"
                             "begin_two\nsecond\nend_two\n"
                             "Begin_\nthird\nEND_\n";
    const Reading reading(text);
    ASSERT_EQ(reading.code, 0);
    ASSERT_EQ(reading.document.GetNrCommentBlocks(), 3);
    EXPECT_EQ(writing(reading.document), (Writing{text, 0}));
}

TEST(cgatsWriter, beginTagWithoutABlockLeft_isItsLineOnly) {
    Reading reading("BEGIN_ONE\ntext\nEND_ONE\n");
    ASSERT_EQ(reading.document.AddTag(-1, "BEGIN_TWO", 0, "", ""), 0);
    ASSERT_EQ(reading.document.AddTag(-1, "AFTER", 0, "", ""), 0);
    EXPECT_EQ(writing(reading.document), (Writing{"BEGIN_ONE\ntext\nEND_ONE\nBEGIN_TWO\nAFTER\n", 0}));
}

TEST(cgatsWriter, blocks_areTakenInOrderWhateverTheName) {
    Reading reading("BEGIN_ONE\nfirst\nEND_ONE\nBEGIN_TWO\nsecond\nEND_TWO\n");
    ASSERT_EQ(reading.document.InsertTag(-1, "BEGIN_NEW", 0, "", "", 0, false), 0);
    EXPECT_EQ(writing(reading.document).text,
              "BEGIN_NEW\nfirst\nBEGIN_ONE\nsecond\nEND_ONE\nBEGIN_TWO\nEND_TWO\n");
}

TEST(cgatsWriter, keywordThatDoesNotBeginWithBegin_takesNoBlock) {
    Reading reading("BEGIN_ONE\nfirst\nEND_ONE\n");
    for (const char* keyword : {"BEGINNING", "BEGIN", "BEGIN-X", " BEGIN_X", "X_BEGIN_", "B"})
        ASSERT_EQ(reading.document.InsertTag(-1, keyword, 0, "", "", 0, false), 0);
    EXPECT_EQ(writing(reading.document).text,
              "B\nX_BEGIN_\n BEGIN_X\nBEGIN-X\nBEGIN\nBEGINNING\nBEGIN_ONE\nfirst\nEND_ONE\n");
}

TEST(cgatsWriter, dataSectionsInAnotherCase_areCommentBlocks) {
    const std::string text = "begin_data\n1 2 3\nend_data\n"
                             "Begin_Data_Format\nnothing known\nEnd_Data_Format\n";
    const Reading reading(text);
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrTables(), 0);
    ASSERT_EQ(reading.document.GetNrCommentBlocks(), 2);
    EXPECT_EQ(writing(reading.document), (Writing{text, 0}));
}

TEST(cgatsWriter, dataSections_takeNoCommentBlock) {
    const std::string text = tableText("LAB_L", 1, "1") + "BEGIN_ONE\nfirst\nEND_ONE\n";
    const Reading reading(text);
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(writing(reading.document).text, "BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t1\n"
                                              "BEGIN_DATA\n1\t\nEND_DATA\nBEGIN_ONE\nfirst\nEND_ONE\n");
}

TEST(cgatsWriter, tagListFullOfCommentBlocks_isWritten) {
    std::string text;
    for (int i = 0; i < 64; ++i)
        text += "BEGIN_X\nblock " + std::to_string(i) + "\nEND_X\n";
    const Reading reading(text);
    ASSERT_EQ(reading.code, 0);
    ASSERT_EQ(reading.document.GetNrTags(), 128);
    EXPECT_EQ(writing(reading.document), (Writing{text, 0}));
}

// ---- Field lists
TEST(cgatsWriter, fieldList_isOneLineOfCanonicalNames) {
    const Reading reading("KEYWORD \"Lot\"\n" +
                          tableText("sample_id cmyk_C\nnm380 \"SPECTRAL_390\"\tlOT\nLab_l samplename 6CLR_2",
                                    1, "a 1 2 3 b 4 c 5"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(writingOfHeader(reading.document, 0),
              (Writing{"SAMPLE_ID\tCMYK_C\tnm380\tSPECTRAL_390\tLot\tLAB_L\tsamplename\t6CLR_2\n", 0}));
}

TEST(cgatsWriter, fieldListOfOneField_hasNoTab) {
    const Reading reading(twoTablesText());
    EXPECT_EQ(writingOfHeader(reading.document, 0), (Writing{"SAMPLE_ID\n", 0}));
    EXPECT_EQ(writingOfHeader(reading.document, 1), (Writing{"LAB_L\n", 0}));
}

TEST(cgatsWriter, tableIndexOutsideTheList_gives23) {
    const Reading reading(twoTablesText());
    for (const int table : {-1, 2, INT_MIN, INT_MAX}) {
        EXPECT_EQ(writingOfHeader(reading.document, table), (Writing{"", 23})) << table;
        EXPECT_EQ(writingOfTable(reading.document, table), (Writing{"", 23})) << table;
    }
}

// ---- Samples
TEST(cgatsWriter, everyValue_isFollowedByATab) {
    const Reading reading(tableText("SAMPLE_ID LAB_L LAB_A", 2, "a 1 2 b 3 4"));
    EXPECT_EQ(writingOfTable(reading.document, 0), (Writing{"a\t1\t2\t\nb\t3\t4\t\n", 0}));
}

TEST(cgatsWriter, numbers_haveSixSignificantDigits) {
    EXPECT_EQ(writtenNumber(0.1234567), "0.123457\t\n");
    EXPECT_EQ(writtenNumber(1e-7), "1e-07\t\n");
    EXPECT_EQ(writtenNumber(0.0), "0\t\n");
    EXPECT_EQ(writtenNumber(-0.0), "-0\t\n");
    EXPECT_EQ(writtenNumber(100.0), "100\t\n");
    EXPECT_EQ(writtenNumber(41.5), "41.5\t\n");
    EXPECT_EQ(writtenNumber(-17.25), "-17.25\t\n");
    EXPECT_EQ(writtenNumber(66.666666666), "66.6667\t\n");
    EXPECT_EQ(writtenNumber(123456.0), "123456\t\n");
    EXPECT_EQ(writtenNumber(999999.4), "999999\t\n");
    EXPECT_EQ(writtenNumber(0.00012345649), "0.000123456\t\n");
}

TEST(cgatsWriter, numbers_turnToExponentsOutsideTheSixDigits) {
    EXPECT_EQ(writtenNumber(1e6), "1e+06\t\n");
    EXPECT_EQ(writtenNumber(1234567.0), "1.23457e+06\t\n");
    EXPECT_EQ(writtenNumber(0.0001), "0.0001\t\n");
    EXPECT_EQ(writtenNumber(0.00001), "1e-05\t\n");
    EXPECT_EQ(writtenNumber(1e100), "1e+100\t\n");
    EXPECT_EQ(writtenNumber(DBL_MAX), "1.79769e+308\t\n");
    EXPECT_EQ(writtenNumber(-DBL_MAX), "-1.79769e+308\t\n");
    EXPECT_EQ(writtenNumber(5e-324), "4.94066e-324\t\n");
}

TEST(cgatsWriter, numbersHalfWay_goToTheEvenDigit) {
    EXPECT_EQ(writtenNumber(1234565.0), "1.23456e+06\t\n");
    EXPECT_EQ(writtenNumber(1234575.0), "1.23458e+06\t\n");
    EXPECT_EQ(writtenNumber(100000.5), "100000\t\n");
    EXPECT_EQ(writtenNumber(100001.5), "100002\t\n");
    EXPECT_EQ(writtenNumber(999999.5), "1e+06\t\n");
}

TEST(cgatsWriter, numbersHalfWayInPrintAlone_areRoundedAsTheyAre) {
    // The double nearest to 99999.95 is a little less than that.
    EXPECT_EQ(writtenNumber(99999.95), "99999.9\t\n");
    EXPECT_EQ(writtenNumber(0.000999999949), "0.001\t\n");
}

TEST(cgatsWriter, infinityAndNan_haveTheirNames) {
    EXPECT_EQ(writtenNumber(std::numeric_limits<double>::infinity()), "inf\t\n");
    EXPECT_EQ(writtenNumber(-std::numeric_limits<double>::infinity()), "-inf\t\n");
    EXPECT_EQ(writtenNumber(std::numeric_limits<double>::quiet_NaN()), "nan\t\n");
}

// The same as the default formatting of a stream in the classic locale.
std::string streamedNumbers(const std::vector<double>& numbers) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    for (const double number : numbers)
        stream << number << "\t\n";
    return stream.str();
}

TEST(cgatsWriter, numbersOfAnyBits_areWrittenAsAStreamDoes) {
    std::mt19937_64 random(4711);
    std::vector<double> numbers;
    while (numbers.size() < 20000) {
        const std::uint64_t bits = random();
        double number = 0.0;
        std::memcpy(&number, &bits, sizeof number);
        if (!std::isnan(number))
            numbers.push_back(number);
    }
    EXPECT_TRUE(writtenNumbers(numbers) == streamedNumbers(numbers));
}

TEST(cgatsWriter, numbersOfMeasurements_areWrittenAsAStreamDoes) {
    std::mt19937 random(4712);
    std::uniform_int_distribution<int> digits(-99999999, 99999999);
    std::uniform_int_distribution<int> places(0, 12);
    std::vector<double> numbers;
    for (int i = 0; i < 20000; ++i)
        numbers.push_back(digits(random) / std::pow(10.0, places(random)));
    EXPECT_TRUE(writtenNumbers(numbers) == streamedNumbers(numbers));
}

TEST(cgatsWriter, numbersNearHalfWay_areWrittenAsAStreamDoes) {
    std::mt19937 random(4713);
    std::uniform_int_distribution<int> sixDigits(100000, 999999);
    std::vector<double> numbers;
    for (int exponent = -15; exponent <= 15; ++exponent)
        for (int i = 0; i < 300; ++i) {
            const double number = (sixDigits(random) + 0.5) * std::pow(10.0, exponent);
            numbers.push_back(number);
            numbers.push_back(std::nextafter(number, 0.0));
            numbers.push_back(-std::nextafter(number, DBL_MAX));
        }
    EXPECT_TRUE(writtenNumbers(numbers) == streamedNumbers(numbers));
}

TEST(cgatsWriter, numbersNearPowersOfTen_areWrittenAsAStreamDoes) {
    std::vector<double> numbers;
    for (int exponent = -308; exponent <= 308; ++exponent) {
        const double power = std::pow(10.0, exponent);
        for (const double factor : {1.0, 0.9999994, 0.9999995, 0.9999996, 0.99999949999999, 1.0000005}) {
            numbers.push_back(power * factor);
            numbers.push_back(std::nextafter(power * factor, 0.0));
        }
    }
    EXPECT_TRUE(writtenNumbers(numbers) == streamedNumbers(numbers));
}

TEST(cgatsWriter, integers_areDecimal) {
    TCgats document;
    addTable(document, {TCgatsField::kInteger, TCgatsField::kInteger}, 3,
             "0 -1 2147483647 -2147483648 1234567 007");
    EXPECT_EQ(writingOfTable(document, 0),
              (Writing{"0\t-1\t\n2147483647\t-2147483648\t\n1234567\t7\t\n", 0}));
}

TEST(cgatsWriter, columnsOfAllTypes_standInTheirOrder) {
    TCgats document;
    addTable(document, {TCgatsField::kFloat, TCgatsField::kString, TCgatsField::kInteger}, 2,
             "1.5 \"a b\" 3 2.5 c 4");
    EXPECT_EQ(writingOfTable(document, 0), (Writing{"1.5\t\"a b\"\t3\t\n2.5\tc\t4\t\n", 0}));
}

TEST(cgatsWriter, stringWithABlankInside_isWrittenInQuotes) {
    EXPECT_EQ(writtenString("a b"), "\"a b\"\t\n");
    EXPECT_EQ(writtenString("a\tb"), "\"a\tb\"\t\n");
    EXPECT_EQ(writtenString("a\nb"), "\"a\nb\"\t\n");
    EXPECT_EQ(writtenString("a\rb"), "\"a\rb\"\t\n");
}

TEST(cgatsWriter, stringWithABlankAtItsEnd_isWrittenInQuotes) {
    EXPECT_EQ(writtenString("a "), "\"a \"\t\n");
    EXPECT_EQ(writtenString("ab\r"), "\"ab\r\"\t\n");
}

TEST(cgatsWriter, stringWithItsOnlyBlankInFront_isWrittenBare) {
    EXPECT_EQ(writtenString(" ab"), " ab\t\n");
    EXPECT_EQ(writtenString("\tab"), "\tab\t\n");
    EXPECT_EQ(writtenString("\nab"), "\nab\t\n");
    EXPECT_EQ(writtenString("\rab"), "\rab\t\n");
    EXPECT_EQ(writtenString(" "), " \t\n");
}

TEST(cgatsWriter, stringWithASecondBlank_isWrittenInQuotes) {
    EXPECT_EQ(writtenString(" a b"), "\" a b\"\t\n");
    EXPECT_EQ(writtenString("  "), "\"  \"\t\n");
    EXPECT_EQ(writtenString(" \t"), "\" \t\"\t\n");
}

TEST(cgatsWriter, stringWithoutABlank_isWrittenBare) {
    EXPECT_EQ(writtenString("a"), "a\t\n");
    EXPECT_EQ(writtenString("a\"b#c,d"), "a\"b#c,d\t\n");
    EXPECT_EQ(writtenString("a\vb\fc\xC2\xA0"), "a\vb\fc\xC2\xA0\t\n");
}

TEST(cgatsWriter, quotesInAString_areNotEscaped) {
    EXPECT_EQ(writtenString("a \"b\""), "\"a \"b\"\"\t\n");
}

TEST(cgatsWriter, longString_isWrittenWhole) {
    const std::string word(300000, 'w');
    EXPECT_EQ(writtenString(word), word + "\t\n");
    EXPECT_EQ(writtenString(word + " x"), "\"" + word + " x\"\t\n");
}

TEST(cgatsWriter, emptyString_isWrittenAsNothing) {
    EXPECT_EQ(writtenString(""), "\t\n");
}

TEST(cgatsWriter, emptyString_cannotBeReadBack) {
    const Reading reading(tableText("SAMPLE_ID LAB_L", 1, "\"\" 5"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(writingOfTable(reading.document, 0), (Writing{"\t5\t\n", 0}));
    EXPECT_EQ(Reading(tableText("SAMPLE_ID LAB_L", 1, "\t5\t") + "AFTER\n").code, 0);
    EXPECT_EQ(Reading(formatText("SAMPLE_ID LAB_L") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n\t5\t\n").code, 1);
}

TEST(cgatsWriter, absentString_isWrittenAsNothing) {
    TCgats document;
    addTable(document, {TCgatsField::kFloat}, 2, "1 2");
    TCgatsTable& table = *document.GetTable(0);
    std::unique_ptr<TCgatsTableHeader> wider = table.GetHeader()->Copy();
    ASSERT_NE(wider, nullptr);
    ASSERT_EQ(wider->Append(new TCgatsField(TCgatsField::kString, "LOT", 0, TCgatsField::kCustom, 0)), 0);
    ASSERT_EQ(wider->Classify(), 0);
    std::vector<std::unique_ptr<TCgatsValueList>> added;
    added.push_back(std::make_unique<TCgatsValueListString>(2));
    ASSERT_EQ(table.Widen(std::move(wider), std::move(added)), 0);
    EXPECT_EQ(writingOfTable(document, 0), (Writing{"1\t\t\n2\t\t\n", 0}));
}

TEST(cgatsWriter, numbersThatWereNeverSet_areZero) {
    TCgats document;
    addTable(document, {TCgatsField::kString}, 2, "a b");
    TCgatsTable& table = *document.GetTable(0);
    std::unique_ptr<TCgatsTableHeader> wider = table.GetHeader()->Copy();
    ASSERT_EQ(wider->Append(new TCgatsField(TCgatsField::kFloat, "LAB_DE", 0, TCgatsField::kStandard, 28)),
              0);
    ASSERT_EQ(wider->Append(new TCgatsField(TCgatsField::kInteger, "COUNT", 0, TCgatsField::kCustom, 0)), 0);
    ASSERT_EQ(wider->Classify(), 0);
    std::vector<std::unique_ptr<TCgatsValueList>> added;
    added.push_back(std::make_unique<TCgatsValueListDouble>(2));
    added.push_back(std::make_unique<TCgatsValueListInt>(2));
    ASSERT_EQ(table.Widen(std::move(wider), std::move(added)), 0);
    EXPECT_EQ(writingOfTable(document, 0), (Writing{"a\t0\t0\t\nb\t0\t0\t\n", 0}));
}

TEST(cgatsWriter, manyRows_areAllWritten) {
    std::string samples;
    std::string expected;
    for (int i = 0; i < 30000; ++i) {
        const std::string number = std::to_string(i);
        samples += "\"no " + number + "\" " + number + ".5\n";
        expected += "\"no " + number + "\"\t" + number + ".5\t\n";
    }
    const Reading reading(tableText("SAMPLE_ID LAB_L", 30000, samples));
    ASSERT_EQ(reading.code, 0);
    const Writing result = writingOfTable(reading.document, 0);
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.text == expected);
}

// ---- Tables that cannot be written
TEST(cgatsWriter, sampleCountOtherThanDeclared_gives13) {
    for (const int declared : {-1, 0, 1, 3, INT_MAX}) {
        TCgats document;
        ASSERT_EQ(document.ReadFromBuffer("CGATS.17\n"), 0);
        document.InitTmpHeader(0);
        TCgatsTableHeader* header = document.GetTmpHeader();
        ASSERT_EQ(
            header->Append(new TCgatsField(TCgatsField::kFloat, "LAB_DE", 0, TCgatsField::kStandard, 28)), 0);
        document.SetNrSamples(2);
        const char* position = "1 2";
        ASSERT_EQ(document.ReadTable(&position), 0);
        header->SetNrSamples(declared);
        ASSERT_EQ(document.AddTag(4, "BEGIN_DATA_FORMAT", 0, "", ""), 0);
        ASSERT_EQ(document.AddTag(24, "BEGIN_DATA", 0, "", ""), 0);
        EXPECT_EQ(writingOfHeader(document, 0), (Writing{"LAB_DE\n", 0})) << declared;
        EXPECT_EQ(writingOfTable(document, 0), (Writing{"", 13})) << declared;
        EXPECT_EQ(writing(document), (Writing{"CGATS.17\nBEGIN_DATA_FORMAT\nLAB_DE\nBEGIN_DATA\n", 13}));
    }
}

TEST(cgatsWriter, tableWithoutHeader_gives6) {
    const Reading reading(twoTablesText());
    const std::unique_ptr<TCgatsTableHeader> header(reading.document.GetTable(1)->ReleaseHeader());
    EXPECT_EQ(writingOfHeader(reading.document, 1), (Writing{"", 6}));
    EXPECT_EQ(writingOfTable(reading.document, 1), (Writing{"", 6}));
    EXPECT_EQ(writing(reading.document).code, 6);
}

TEST(cgatsWriter, copyOfARowThatIsNotThere_gives1) {
    const Reading reading(twoTablesText());
    int samples[] = {0, 1};
    const TCgats copy(&reading.document, samples, 2);
    ASSERT_EQ(copy.GetErrorCode(), 0);
    EXPECT_EQ(writingOfHeader(copy, 0), (Writing{"", 1}));
    EXPECT_EQ(writingOfTable(copy, 0), (Writing{"", 1}));
    EXPECT_EQ(writing(copy), (Writing{"BEGIN_DATA_FORMAT\n", 1}));
}

TEST(cgatsWriter, copyWithoutProcessColours_gives8) {
    const Reading reading(twoTablesText());
    int channels[] = {0, 1, 2};
    const TCgats copy(&reading.document, channels, 3, 0.0);
    ASSERT_EQ(copy.GetErrorCode(), 0);
    EXPECT_EQ(writingOfHeader(copy, 0), (Writing{"", 8}));
    EXPECT_EQ(writingOfTable(copy, 0), (Writing{"", 8}));
    EXPECT_EQ(writing(copy), (Writing{"BEGIN_DATA_FORMAT\n", 8}));
}

TEST(cgatsWriter, tableInErrorBehindAGoodOne_stopsThere) {
    const Reading reading(tableText("CMYK_C CMYK_M CMYK_Y CMYK_K", 1, "1 2 3 4") + twoTablesText());
    int channels[] = {3, 2, 1, 0};
    const TCgats copy(&reading.document, channels, 4, 0.0);
    EXPECT_EQ(writing(copy), (Writing{"BEGIN_DATA_FORMAT\nCMYK_C\tCMYK_M\tCMYK_Y\tCMYK_K\nEND_DATA_FORMAT\n"
                                      "NUMBER_OF_SETS\t1\nBEGIN_DATA\n4\t3\t2\t1\t\nEND_DATA\n"
                                      "BEGIN_DATA_FORMAT\n",
                                      8}));
}

#if defined(__x86_64__) && defined(__linux__)

// Holes that no public call makes: the members stand in the order of their declaration.
constexpr std::size_t kTags = 8;
constexpr std::size_t kTables = 2112;
constexpr std::size_t kNrRowsStored = 32;
constexpr std::size_t kTableError = 36;

// Another value in the place of a member, until it goes.
template <class Member>
class Exchanged {
public:
    Exchanged(const void* object, std::size_t offset, Member value)
        : place(const_cast<char*>(static_cast<const char*>(object)) + offset) {
        std::memcpy(&before, place, sizeof before);
        std::memcpy(place, &value, sizeof value);
    }
    ~Exchanged() { std::memcpy(place, &before, sizeof before); }
    Exchanged(const Exchanged&) = delete;
    Exchanged& operator=(const Exchanged&) = delete;

private:
    char* place;
    Member before;
};

// Another table as the first one of a document.
class ExchangedTable {
public:
    ExchangedTable(const TCgats& document, TCgatsTable* table) : inFirstSlot(slots(document), 0, table) {
        EXPECT_EQ(document.GetTable(0), table);
    }

private:
    static TCgatsTable** slots(const TCgats& document) {
        TCgatsTable** tables = nullptr;
        std::memcpy(&tables, reinterpret_cast<const char*>(&document) + kTables, sizeof tables);
        return tables;
    }

    Exchanged<TCgatsTable*> inFirstSlot;
};

TEST(cgatsWriter, emptyTagSlot_gives21) {
    const Reading reading("A\nB\nC\n");
    const Exchanged<TCgatsTag*> hole(&reading.document, kTags + sizeof(TCgatsTag*), nullptr);
    ASSERT_EQ(reading.document.GetTagAt(1), nullptr);
    EXPECT_EQ(writing(reading.document), (Writing{"A\n", 21}));
    EXPECT_EQ(writingOfTag(reading.document, 1), (Writing{"", 21}));
}

TEST(cgatsWriter, emptyTableSlot_gives23) {
    const Reading reading(twoTablesText());
    const ExchangedTable hole(reading.document, nullptr);
    EXPECT_EQ(writingOfHeader(reading.document, 0), (Writing{"", 23}));
    EXPECT_EQ(writingOfTable(reading.document, 0), (Writing{"", 23}));
    EXPECT_EQ(writing(reading.document), (Writing{"BEGIN_DATA_FORMAT\n", 23}));
}

TEST(cgatsWriter, errorOfATable_isMapped) {
    const int codes[] = {6, 14, 12, 15, 13, 16, 17, 19, 20, 1, 13, 7, 8};
    const Reading reading(twoTablesText());
    const TCgatsTable* table = reading.document.GetTable(0);
    for (int error = 1; error <= 13; ++error) {
        const Exchanged<std::int32_t> broken(table, kTableError, error);
        ASSERT_EQ(table->GetTableError(), error);
        EXPECT_EQ(writingOfHeader(reading.document, 0), (Writing{"", codes[error - 1]})) << error;
        EXPECT_EQ(writingOfTable(reading.document, 0), (Writing{"", codes[error - 1]})) << error;
        EXPECT_EQ(writing(reading.document), (Writing{"BEGIN_DATA_FORMAT\n", codes[error - 1]})) << error;
    }
}

TEST(cgatsWriter, errorOfATableOutsideTheList_isUnknown) {
    const Reading reading(twoTablesText());
    for (const int error : {14, 99, INT_MAX, -1, INT_MIN}) {
        const Exchanged<std::int32_t> broken(reading.document.GetTable(0), kTableError, error);
        EXPECT_EQ(writingOfHeader(reading.document, 0), (Writing{"", 1})) << error;
        EXPECT_EQ(writingOfTable(reading.document, 0), (Writing{"", 1})) << error;
    }
}

TEST(cgatsWriter, headerWithoutFields_gives7AndItsSamples12) {
    const Reading reading(twoTablesText());
    TCgatsTable bare(new TCgatsTableHeader());
    const Exchanged<std::int32_t> pardoned(&bare, kTableError, 0);
    const ExchangedTable first(reading.document, &bare);
    EXPECT_EQ(writingOfHeader(reading.document, 0), (Writing{"", 7}));
    EXPECT_EQ(writing(reading.document), (Writing{"BEGIN_DATA_FORMAT\n", 7}));
    EXPECT_EQ(writingOfTable(reading.document, 0), (Writing{"", 12}));
}

TEST(cgatsWriter, sampleCount_isCheckedBeforeTheFields) {
    const Reading reading(twoTablesText());
    auto* header = new TCgatsTableHeader();
    TCgatsTable bare(header);
    header->SetNrSamples(5);
    const Exchanged<std::int32_t> pardoned(&bare, kTableError, 0);
    const ExchangedTable first(reading.document, &bare);
    EXPECT_EQ(writingOfTable(reading.document, 0), (Writing{"", 13}));
}

TEST(cgatsWriter, emptyFieldSlot_gives7) {
    const Reading reading(twoTablesText());
    auto* header = new TCgatsTableHeader(2);
    ASSERT_EQ(header->FillNextSlot(new TCgatsField(TCgatsField::kFloat, "LAB_DE", 0, 0, 28)), 0);
    TCgatsTable half(header);
    const Exchanged<std::int32_t> pardoned(&half, kTableError, 0);
    const ExchangedTable first(reading.document, &half);
    EXPECT_EQ(writingOfHeader(reading.document, 0).code, 7);
    EXPECT_EQ(writing(reading.document).code, 7);
}

TEST(cgatsWriter, tableWithoutRows_isWrittenAsNothing) {
    TCgats document;
    document.InitTmpHeader(0);
    TCgatsTableHeader* header = document.GetTmpHeader();
    ASSERT_EQ(header->Append(new TCgatsField(TCgatsField::kFloat, "LAB_DE", 0, 0, 28)), 0);
    document.SetNrSamples(1);
    const char* position = "1";
    ASSERT_EQ(document.ReadTable(&position), 0);
    header->SetNrSamples(0);
    const Exchanged<std::int32_t> noRows(document.GetTable(0), kNrRowsStored, 0);
    ASSERT_EQ(document.GetTable(0)->GetNrRowsStored(), 0);
    EXPECT_EQ(writingOfTable(document, 0), (Writing{"", 0}));
}

#endif

// ---- Streams of any kind

class CommaPunctuation : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

std::locale commaLocale() {
    return {std::locale::classic(), new CommaPunctuation};
}

// All types of values and a count in a header line.
void makeMixed(TCgats& document) {
    addTable(document, {TCgatsField::kFloat, TCgatsField::kString, TCgatsField::kInteger}, 2,
             "1234.5678 abc 1234567 -2.5 \"a b\" -10");
    ASSERT_EQ(document.AddTag(23, "NUMBER_OF_SETS", 1, "12345", "c"), 0);
    ASSERT_EQ(document.AddTag(4, "BEGIN_DATA_FORMAT", 0, "", ""), 0);
    ASSERT_EQ(document.AddTag(24, "BEGIN_DATA", 0, "", ""), 0);
}

constexpr char kMixedText[] = "NUMBER_OF_SETS\t12345\t# c\n"
                              "BEGIN_DATA_FORMAT\nF0\tF1\tF2\n"
                              "BEGIN_DATA\n1234.57\tabc\t1234567\t\n-2.5\t\"a b\"\t-10\t\n";

void expectMixedTextFrom(const std::function<void(std::ostream&)>& prepare) {
    TCgats document;
    makeMixed(document);
    std::ostringstream whole;
    prepare(whole);
    EXPECT_EQ(document.WriteToStream(whole), 0);
    EXPECT_EQ(whole.str(), kMixedText);

    std::ostringstream parts;
    const auto inPart = [&](const std::function<int()>& write) {
        prepare(parts);
        EXPECT_EQ(write(), 0);
    };
    inPart([&] { return document.WriteTag(0, parts); });
    inPart([&] { return document.WriteTag(1, parts); });
    inPart([&] { return document.WriteHeader(0, parts); });
    inPart([&] { return document.WriteTag(2, parts); });
    inPart([&] { return document.WriteTable(0, parts); });
    EXPECT_EQ(parts.str(), kMixedText);
}

TEST(cgatsWriter, plainStream_takesTheText) {
    expectMixedTextFrom([](std::ostream&) {});
}

TEST(cgatsWriter, widthAndFillOfAStream_doNotMatter) {
    expectMixedTextFrom([](std::ostream& stream) { stream << std::setw(20) << std::setfill('*'); });
    expectMixedTextFrom(
        [](std::ostream& stream) { stream << std::left << std::setw(20) << std::setfill('*'); });
    expectMixedTextFrom(
        [](std::ostream& stream) { stream << std::internal << std::setw(20) << std::setfill('*'); });
}

TEST(cgatsWriter, baseOfAStream_doesNotMatter) {
    expectMixedTextFrom([](std::ostream& stream) { stream << std::hex << std::showbase; });
    expectMixedTextFrom([](std::ostream& stream) { stream << std::oct; });
}

TEST(cgatsWriter, notationOfAStream_doesNotMatter) {
    expectMixedTextFrom([](std::ostream& stream) { stream << std::setprecision(2); });
    expectMixedTextFrom([](std::ostream& stream) { stream << std::setprecision(17); });
    expectMixedTextFrom([](std::ostream& stream) { stream << std::fixed; });
    expectMixedTextFrom([](std::ostream& stream) { stream << std::scientific << std::uppercase; });
    expectMixedTextFrom([](std::ostream& stream) { stream << std::hexfloat; });
    expectMixedTextFrom([](std::ostream& stream) { stream << std::showpos << std::showpoint; });
}

TEST(cgatsWriter, localeOfAStream_doesNotMatter) {
    expectMixedTextFrom([](std::ostream& stream) { stream.imbue(commaLocale()); });
}

TEST(cgatsWriter, localeOfTheProcess_doesNotMatter) {
    const std::locale before = std::locale::global(commaLocale());
    expectMixedTextFrom([](std::ostream&) {});
    std::locale::global(before);
}

TEST(cgatsWriter, germanLocaleOfTheProcess_doesNotMatter) {
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "there is no German locale here";
    expectMixedTextFrom([](std::ostream&) {});
    std::setlocale(LC_ALL, before.c_str());
}

TEST(cgatsWriter, text_isPutBehindWhatAStreamHolds) {
    TCgats document;
    makeMixed(document);
    std::ostringstream stream;
    stream << "before|";
    ASSERT_EQ(document.WriteToStream(stream), 0);
    ASSERT_EQ(document.WriteToStream(stream), 0);
    EXPECT_EQ(stream.str(), std::string("before|") + kMixedText + kMixedText);
}

TEST(cgatsWriter, exceptionsOfAStream_areKept) {
    constexpr std::ios::iostate kAll = std::ios::badbit | std::ios::failbit | std::ios::eofbit;
    TCgats document;
    makeMixed(document);
    std::ostringstream stream;
    stream.exceptions(kAll);
    EXPECT_NO_THROW(EXPECT_EQ(document.WriteToStream(stream), 0));
    EXPECT_EQ(stream.str(), kMixedText);
    EXPECT_EQ(stream.exceptions(), kAll);
}

// Takes so many characters and then no more.
class LimitedBuffer : public std::streambuf {
public:
    explicit LimitedBuffer(std::size_t room) : left(room) {}
    const std::string& text() const { return taken; }

protected:
    int_type overflow(int_type c) override {
        if (left == 0 || traits_type::eq_int_type(c, traits_type::eof()))
            return traits_type::eof();
        --left;
        taken += traits_type::to_char_type(c);
        return c;
    }

private:
    std::size_t left;
    std::string taken;
};

// Throws at the first character.
class ThrowingBuffer : public std::streambuf {
protected:
    int_type overflow(int_type) override { throw std::runtime_error("no more"); }
};

TEST(cgatsWriter, streamThatStopsAnywhere_gives4) {
    TCgats document;
    makeMixed(document);
    const std::string text = kMixedText;
    for (std::size_t room = 0; room < text.size(); ++room) {
        LimitedBuffer buffer(room);
        std::ostream stream(&buffer);
        EXPECT_EQ(document.WriteToStream(stream), 4) << room;
        EXPECT_EQ(text.compare(0, buffer.text().size(), buffer.text()), 0) << room;
    }
    EXPECT_EQ(document.GetErrorCode(), 0);
}

TEST(cgatsWriter, streamWithJustEnoughRoom_takesTheText) {
    TCgats document;
    makeMixed(document);
    LimitedBuffer buffer(sizeof kMixedText - 1);
    std::ostream stream(&buffer);
    EXPECT_EQ(document.WriteToStream(stream), 0);
    EXPECT_EQ(buffer.text(), kMixedText);
}

TEST(cgatsWriter, streamThatStops_failsEveryPart) {
    TCgats document;
    makeMixed(document);
    for (const std::size_t room : {0u, 1u}) {
        LimitedBuffer forTag(room);
        LimitedBuffer forHeader(room);
        LimitedBuffer forTable(room);
        std::ostream tag(&forTag);
        std::ostream header(&forHeader);
        std::ostream table(&forTable);
        EXPECT_EQ(document.WriteTag(0, tag), 4);
        EXPECT_EQ(document.WriteHeader(0, header), 4);
        EXPECT_EQ(document.WriteTable(0, table), 4);
    }
}

TEST(cgatsWriter, streamThatStops_throwsNothingWhateverItsExceptions) {
    constexpr std::ios::iostate kMask = std::ios::badbit | std::ios::failbit;
    TCgats document;
    makeMixed(document);
    LimitedBuffer limited(5);
    ThrowingBuffer throwing;
    for (std::streambuf* buffer :
         {static_cast<std::streambuf*>(&limited), static_cast<std::streambuf*>(&throwing)}) {
        std::ostream stream(buffer);
        stream.exceptions(kMask);
        int code = 0;
        EXPECT_NO_THROW(code = document.WriteToStream(stream));
        EXPECT_EQ(code, 4);
        EXPECT_TRUE(stream.fail());
        EXPECT_EQ(stream.exceptions(), kMask);
    }
}

TEST(cgatsWriter, everyPart_throwsNothingWhateverTheExceptions) {
    TCgats document;
    makeMixed(document);
    const std::function<int(std::ostream&)> parts[] = {
        [&](std::ostream& stream) { return document.WriteTag(0, stream); },
        [&](std::ostream& stream) { return document.WriteHeader(0, stream); },
        [&](std::ostream& stream) { return document.WriteTable(0, stream); }};
    for (const auto& part : parts) {
        ThrowingBuffer buffer;
        std::ostream stream(&buffer);
        stream.exceptions(std::ios::badbit | std::ios::failbit);
        int code = 0;
        EXPECT_NO_THROW(code = part(stream));
        EXPECT_EQ(code, 4);
        EXPECT_EQ(stream.exceptions(), std::ios::badbit | std::ios::failbit);
    }
}

TEST(cgatsWriter, streamWithoutABuffer_gives4) {
    TCgats document;
    makeMixed(document);
    std::ostream stream(nullptr);
    EXPECT_EQ(document.WriteToStream(stream), 4);
}

TEST(cgatsWriter, streamThatHasFailedBefore_gives4) {
    TCgats document;
    makeMixed(document);
    std::ostringstream stream;
    stream.setstate(std::ios::failbit);
    EXPECT_EQ(document.WriteToStream(stream), 4);
    EXPECT_EQ(stream.str(), "");
}

// ---- Arrays

// What WriteToBuffer hands out; the text of an absent array is "(absent)".
Writing writingToArray(const TCgats& document) {
    char untouched = 0;
    char* text = &untouched;
    const int code = document.WriteToBuffer(&text);
    if (text == &untouched)
        return {"(untouched)", code};
    const std::unique_ptr<char[]> owned(text);
    return {orAbsent(text), code};
}

constexpr char kMessage22[] = "Attempt to write empty tag.Internal error: illegal table index.Error adding "
                              "layout info: layout info already present.";

TEST(cgatsSave, array_holdsTheTerminatedText) {
    const Reading reading(wholeText());
    EXPECT_EQ(writingToArray(reading.document), (Writing{wholeText(), 0}));
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
}

TEST(cgatsSave, arrayOfAnEmptyDocument_isAnEmptyText) {
    EXPECT_EQ(writingToArray(TCgats()), (Writing{"", 0}));
}

TEST(cgatsSave, arrayOfAFailure_holdsTheTextSoFarAndRecordsTheCode) {
    const Reading reading("CGATS.17\n# note\nA\n");
    EXPECT_EQ(writingToArray(reading.document), (Writing{"CGATS.17\n", 22}));
    EXPECT_EQ(reading.document.GetErrorCode(), 22);
    EXPECT_STREQ(reading.document.GetErrorMessage(), kMessage22);
}

TEST(cgatsSave, arrayOfAFailureAtOnce_isAnEmptyText) {
    const Reading reading("# note\n");
    EXPECT_EQ(writingToArray(reading.document), (Writing{"", 22}));
}

TEST(cgatsSave, arrayOfADocumentInError_isLeftUntouched) {
    for (const int code : {-1, 3, 22, 99}) {
        const Reading reading("CGATS.17\n");
        reading.document.SetErrorCode(code);
        EXPECT_EQ(writingToArray(reading.document), (Writing{"(untouched)", code}));
        EXPECT_EQ(reading.document.GetErrorCode(), code);
    }
}

TEST(cgatsSave, arrayAfterARecordedFailure_isLeftUntouched) {
    const Reading reading("CGATS.17\n# note\n");
    ASSERT_EQ(writingToArray(reading.document).code, 22);
    EXPECT_EQ(writingToArray(reading.document), (Writing{"(untouched)", 22}));
}

TEST(cgatsSave, missingTable_isRecordedWithoutAMessage) {
    TCgats document;
    ASSERT_EQ(document.AddTag(24, "BEGIN_DATA", 0, "", ""), 0);
    EXPECT_EQ(writingToArray(document), (Writing{"BEGIN_DATA\n", 23}));
    EXPECT_EQ(document.GetErrorCode(), 23);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

TEST(cgatsSave, sampleCountMismatch_isRecordedWithItsMessage) {
    TCgats document;
    document.InitTmpHeader(0);
    TCgatsTableHeader* header = document.GetTmpHeader();
    ASSERT_EQ(header->Append(new TCgatsField(TCgatsField::kFloat, "LAB_DE", 0, TCgatsField::kStandard, 28)),
              0);
    document.SetNrSamples(1);
    const char* position = "1";
    ASSERT_EQ(document.ReadTable(&position), 0);
    header->SetNrSamples(2);
    ASSERT_EQ(document.AddTag(24, "BEGIN_DATA", 0, "", ""), 0);
    EXPECT_EQ(writingToArray(document), (Writing{"BEGIN_DATA\n", 13}));
    EXPECT_EQ(document.GetErrorCode(), 13);
    EXPECT_STREQ(document.GetErrorMessage(),
                 "Number of samples found doesn't match number of samples declared.");
}

#if defined(__x86_64__) && defined(__linux__)

TEST(cgatsSave, emptyTagSlot_isRecordedWithItsMessage) {
    const Reading reading("A\nB\n");
    const Exchanged<TCgatsTag*> hole(&reading.document, kTags + sizeof(TCgatsTag*), nullptr);
    EXPECT_EQ(writingToArray(reading.document), (Writing{"A\n", 21}));
    EXPECT_EQ(reading.document.GetErrorCode(), 21);
    EXPECT_STREQ(reading.document.GetErrorMessage(), "Internal error: illegal tag index.");
}

TEST(cgatsSave, headerWithoutFields_isRecordedWithItsMessage) {
    const Reading reading(twoTablesText());
    TCgatsTable bare(new TCgatsTableHeader());
    const Exchanged<std::int32_t> pardoned(&bare, kTableError, 0);
    const ExchangedTable first(reading.document, &bare);
    EXPECT_EQ(writingToArray(reading.document), (Writing{"BEGIN_DATA_FORMAT\n", 7}));
    EXPECT_EQ(reading.document.GetErrorCode(), 7);
    EXPECT_STREQ(reading.document.GetErrorMessage(), "The table header is empty.");
}

#endif

// ---- Files

std::vector<std::string> entriesOf(const ScratchFolder& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder.path()))
        names.push_back(entry.path().filename().string());
    return names;
}

using Names = std::vector<std::string>;

mode_t modeBits(const std::string& path) {
    struct stat state = {};
    EXPECT_EQ(stat(path.c_str(), &state), 0);
    return state.st_mode & 07777;
}

// The answer of `action` in a process of its own, -2 when there is none.
int answerInAChild(const std::function<int()>& action) {
    const pid_t child = fork();
    if (child == 0)
        _exit(action());
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return -2;
    return WEXITSTATUS(status);
}

constexpr int kUnreachable = 200;

// The answer of `action` under a user without privileges; kUnreachable when that one cannot look into the
// folder.
int answerToAnOrdinaryUser(const ScratchFolder& folder, const std::function<int()>& action) {
    constexpr uid_t kNobody = 65534;
    return answerInAChild([&] {
        if (geteuid() == 0 && (setegid(kNobody) != 0 || seteuid(kNobody) != 0))
            return kUnreachable;
        if (faccessat(AT_FDCWD, folder.path().c_str(), R_OK | X_OK, AT_EACCESS) != 0)
            return kUnreachable;
        return action();
    });
}

// A memory device (major number 1) in `folder`, empty when none can be made there. Those of the system are
// left alone: a mistake in what is tested must not replace one by a file.
std::string ownDevice(const ScratchFolder& folder, const std::string& name, unsigned minorNumber) {
    const std::string path = folder.path(name);
    if (mknod(path.c_str(), S_IFCHR | 0666, makedev(1, minorNumber)) != 0)
        return {};
    const int descriptor = open(path.c_str(), O_WRONLY);
    if (descriptor < 0)
        return {};
    close(descriptor);
    return path;
}

TEST(cgatsSave, newFile_holdsTheText) {
    const ScratchFolder folder;
    const Reading reading(wholeText());
    EXPECT_EQ(reading.document.SaveAs(folder.path("a.txt").c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("a.txt")), wholeText());
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
    EXPECT_EQ(entriesOf(folder), Names{"a.txt"});
}

TEST(cgatsSave, savedFile_isReadAgain) {
    const ScratchFolder folder;
    const Reading reading(wholeText());
    ASSERT_EQ(reading.document.SaveAs(folder.path("a.txt").c_str()), 0);
    const TCgats again(folder.path("a.txt").c_str());
    EXPECT_EQ(again.GetErrorCode(), 0);
    EXPECT_EQ(writing(again), (Writing{wholeText(), 0}));
}

TEST(cgatsSave, oldFile_isReplacedWhole) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", repeated("old ", 10000));
    const Reading reading(wholeText());
    EXPECT_EQ(reading.document.SaveAs(path.c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(path), wholeText());
    EXPECT_EQ(entriesOf(folder), Names{"a.txt"});
}

TEST(cgatsSave, emptyDocument_makesAnEmptyFile) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "old");
    EXPECT_EQ(TCgats().SaveAs(path.c_str()), 0);
    EXPECT_TRUE(fs::exists(path));
    EXPECT_EQ(ScratchFolder::read(path), "");
}

TEST(cgatsSave, largeDocument_isSavedWhole) {
    const ScratchFolder folder;
    const std::string rows = repeated("12.5\t-3.25\t\n", 100000);
    const Reading reading(tableText("LAB_L LAB_A", 100000, rows));
    ASSERT_EQ(reading.code, 0);
    ASSERT_EQ(reading.document.SaveAs(folder.path("a.txt").c_str()), 0);
    EXPECT_TRUE(ScratchFolder::read(folder.path("a.txt")) ==
                "BEGIN_DATA_FORMAT\nLAB_L\tLAB_A\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t100000\nBEGIN_DATA\n" +
                    rows + "END_DATA\n");
}

TEST(cgatsSave, documentMayBeSavedTwice) {
    const ScratchFolder folder;
    const Reading reading(wholeText());
    EXPECT_EQ(reading.document.SaveAs(folder.path("a.txt").c_str()), 0);
    EXPECT_EQ(reading.document.SaveAs(folder.path("b.txt").c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("a.txt")), ScratchFolder::read(folder.path("b.txt")));
}

TEST(cgatsSave, fileThatADocumentCameFrom_mayTakeIt) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", wholeText());
    TCgats document(path.c_str());
    ASSERT_EQ(document.SetOriginator("another"), 0);
    EXPECT_EQ(document.SaveAs(path.c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(path), writing(document).text);
}

TEST(cgatsSave, absentOrEmptyName_gives2) {
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.SaveAs(nullptr), 2);
    EXPECT_EQ(reading.document.SaveAs(""), 2);
}

TEST(cgatsSave, absentOrEmptyName_leavesTheDocumentFitToBeSaved) {
    const ScratchFolder folder;
    const Reading reading("CGATS.17\n");
    ASSERT_EQ(reading.document.SaveAs(""), 2);
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
    EXPECT_EQ(reading.document.SaveAs(folder.path("a.txt").c_str()), 0);
}

TEST(cgatsSave, documentInError_givesItsCodeAndWritesNothing) {
    const ScratchFolder folder;
    const std::string path = folder.write("old.txt", "old");
    for (const int code : {-1, 3, 4, 22, 99}) {
        const Reading reading("CGATS.17\n");
        reading.document.SetErrorCode(code);
        EXPECT_EQ(reading.document.SaveAs(path.c_str()), code);
        EXPECT_EQ(reading.document.SaveAs(folder.path("new.txt").c_str()), code);
        EXPECT_EQ(reading.document.GetErrorCode(), code);
    }
    EXPECT_EQ(ScratchFolder::read(path), "old");
    EXPECT_EQ(entriesOf(folder), Names{"old.txt"});
}

TEST(cgatsSave, documentInError_isToldBeforeAnEmptyName) {
    const Reading reading("CGATS.17\n");
    reading.document.SetErrorCode(3);
    EXPECT_EQ(reading.document.SaveAs(""), 3);
}

TEST(cgatsSave, codeOnTheWay_putsTheTextSoFarInPlaceAndIsRecorded) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "the old text");
    const Reading reading("CGATS.17\nORIGINATOR me\n# note\nCREATED x\n");
    EXPECT_EQ(reading.document.SaveAs(path.c_str()), 22);
    EXPECT_EQ(ScratchFolder::read(path), "CGATS.17\nORIGINATOR\tme\n");
    EXPECT_EQ(reading.document.GetErrorCode(), 22);
    EXPECT_STREQ(reading.document.GetErrorMessage(), kMessage22);
    EXPECT_EQ(entriesOf(folder), Names{"a.txt"});
}

TEST(cgatsSave, codeAtOnce_leavesAnEmptyFile) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "the old text");
    const Reading reading("# note\n");
    EXPECT_EQ(reading.document.SaveAs(path.c_str()), 22);
    EXPECT_TRUE(fs::exists(path));
    EXPECT_EQ(ScratchFolder::read(path), "");
}

TEST(cgatsSave, missingTable_putsTheTextSoFarInPlace) {
    const ScratchFolder folder;
    const std::string path = folder.path("a.txt");
    const Reading reading("CGATS.17\n" + formatText("LAB_L"));
    EXPECT_EQ(reading.document.SaveAs(path.c_str()), 23);
    EXPECT_EQ(ScratchFolder::read(path), "CGATS.17\nBEGIN_DATA_FORMAT\n");
    EXPECT_EQ(reading.document.GetErrorCode(), 23);
    EXPECT_STREQ(reading.document.GetErrorMessage(), "");
}

TEST(cgatsSave, errorOfATable_putsTheTextSoFarInPlace) {
    const ScratchFolder folder;
    const std::string path = folder.path("a.txt");
    const Reading reading("CGATS.17\n" + twoTablesText());
    int channels[] = {0, 1, 2};
    const TCgats copy(&reading.document, channels, 3, 0.0);
    EXPECT_EQ(copy.SaveAs(path.c_str()), 8);
    EXPECT_EQ(ScratchFolder::read(path), "CGATS.17\nBEGIN_DATA_FORMAT\n");
    EXPECT_EQ(copy.GetErrorCode(), 8);
    EXPECT_STREQ(copy.GetErrorMessage(), "Internal error: attempt to map inks using an illegal ink map.");
}

TEST(cgatsSave, recordedCode_keepsTheDocumentFromBeingSavedAgain) {
    const ScratchFolder folder;
    const Reading reading("CGATS.17\n# note\n");
    ASSERT_EQ(reading.document.SaveAs(folder.path("a.txt").c_str()), 22);
    EXPECT_EQ(reading.document.SaveAs(folder.path("b.txt").c_str()), 22);
    EXPECT_EQ(entriesOf(folder), Names{"a.txt"});
}

TEST(cgatsSave, missingFolder_gives4WhichIsNotRecorded) {
    const ScratchFolder folder;
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.SaveAs(folder.path("missing/a.txt").c_str()), 4);
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
    EXPECT_STREQ(reading.document.GetErrorMessage(), "");
    EXPECT_EQ(entriesOf(folder), Names{});
    EXPECT_EQ(reading.document.SaveAs(folder.path("a.txt").c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("a.txt")), "CGATS.17\n");
}

TEST(cgatsSave, missingFolder_isToldBeforeACodeOnTheWay) {
    const ScratchFolder folder;
    const Reading reading("CGATS.17\n# note\n");
    EXPECT_EQ(reading.document.SaveAs(folder.path("missing/a.txt").c_str()), 4);
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
}

TEST(cgatsSave, folderAsAName_gives4) {
    const ScratchFolder folder;
    ASSERT_TRUE(fs::create_directory(folder.path("inner")));
    const Reading reading("CGATS.17\n");
    for (const char* name : {"inner", "inner/", "inner/.", "new/"})
        EXPECT_EQ(reading.document.SaveAs(folder.path(name).c_str()), 4) << name;
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
    EXPECT_EQ(entriesOf(folder), Names{"inner"});
    EXPECT_TRUE(fs::is_directory(folder.path("inner")));
    EXPECT_TRUE(fs::is_empty(folder.path("inner")));
}

TEST(cgatsSave, folderThatIsAFile_gives4) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "old");
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.SaveAs((path + "/b.txt").c_str()), 4);
    EXPECT_EQ(ScratchFolder::read(path), "old");
}

TEST(cgatsSave, nameTooLongForTheFileSystem_gives4) {
    const ScratchFolder folder;
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.SaveAs(folder.path(std::string(300, 'n')).c_str()), 4);
    EXPECT_EQ(reading.document.SaveAs(repeated("n", 100000).c_str()), 4);
    EXPECT_EQ(entriesOf(folder), Names{});
}

TEST(cgatsSave, longestNameOfTheFileSystem_isTaken) {
    const ScratchFolder folder;
    const std::string name(255, 'n');
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.SaveAs(folder.path(name).c_str()), 0);
    EXPECT_EQ(entriesOf(folder), Names{name});
    EXPECT_EQ(ScratchFolder::read(folder.path(name)), "CGATS.17\n");
}

TEST(cgatsSave, nameInUtf8_namesTheFile) {
    const ScratchFolder folder;
    const std::string name = "f\xC3\xA4rbe \xE8\x89\xB2.txt";
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.SaveAs(folder.path(name).c_str()), 0);
    EXPECT_EQ(entriesOf(folder), Names{name});
}

TEST(cgatsSave, nameThatIsNotUtf8_isUsedAsGiven) {
    const ScratchFolder folder;
    const std::string name = "f\xE4rbe.txt";
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.SaveAs(folder.path(name).c_str()), 0);
    EXPECT_EQ(entriesOf(folder), Names{name});
}

TEST(cgatsSave, nameWithoutAFolder_isInTheWorkingFolder) {
    const ScratchFolder folder;
    const Reading reading("CGATS.17\n");
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    const int code = reading.document.SaveAs("a.txt");
    fs::current_path(before);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(entriesOf(folder), Names{"a.txt"});
}

TEST(cgatsSave, newFile_hasTheUsualPermissions) {
    const ScratchFolder folder;
    const Reading reading("CGATS.17\n");
    const mode_t before = umask(027);
    const int code = reading.document.SaveAs(folder.path("a.txt").c_str());
    umask(before);
    ASSERT_EQ(code, 0);
    EXPECT_EQ(modeBits(folder.path("a.txt")), mode_t{0640});
}

TEST(cgatsSave, oldFile_keepsItsPermissions) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "old");
    const Reading reading("CGATS.17\n");
    for (const mode_t mode : {0600u, 0666u, 0640u}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        ASSERT_EQ(reading.document.SaveAs(path.c_str()), 0);
        EXPECT_EQ(modeBits(path), mode);
    }
}

TEST(cgatsSave, symbolicLink_leadsToTheFileThatIsWritten) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "old");
    fs::create_symlink("a.txt", folder.path("link"));
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.SaveAs(folder.path("link").c_str()), 0);
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
    EXPECT_EQ(ScratchFolder::read(path), "CGATS.17\n");
}

// A limit on the size of files stands for a full disk.
TEST(cgatsSave, fileThatMayNotGrow_gives4AndTheOldFileStands) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "the old text");
    const Reading reading(tableText("LAB_L", 5000, repeated("1.5\n", 5000)));
    ASSERT_EQ(reading.code, 0);
    const int answer = answerInAChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {4096, 4096};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return 100;
        const int code = reading.document.SaveAs(path.c_str());
        return reading.document.GetErrorCode() == 0 ? code : 101;
    });
    EXPECT_EQ(answer, 4);
    EXPECT_EQ(ScratchFolder::read(path), "the old text");
    EXPECT_EQ(entriesOf(folder), Names{"a.txt"});
}

// So little that it is only when the file is closed that anything is written.
TEST(cgatsSave, fileThatMayNotGrowAtTheEnd_gives4AndTheOldFileStands) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "the old text");
    const Reading reading("CGATS.17\n");
    const int answer = answerInAChild([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit = {4, 4};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return 100;
        const int code = reading.document.SaveAs(path.c_str());
        return reading.document.GetErrorCode() == 0 ? code : 101;
    });
    EXPECT_EQ(answer, 4);
    EXPECT_EQ(ScratchFolder::read(path), "the old text");
    EXPECT_EQ(entriesOf(folder), Names{"a.txt"});
}

TEST(cgatsSave, fullDevice_gives4) {
    const ScratchFolder folder;
    const std::string full = ownDevice(folder, "full", 7);
    if (full.empty())
        GTEST_SKIP() << "no device can be made here";
    const Reading small("CGATS.17\n");
    EXPECT_EQ(small.document.SaveAs(full.c_str()), 4);
    EXPECT_EQ(small.document.GetErrorCode(), 0);
    const Reading large(tableText("LAB_L", 5000, repeated("1.5\n", 5000)));
    EXPECT_EQ(large.document.SaveAs(full.c_str()), 4);
    EXPECT_TRUE(fs::is_character_file(full));
    EXPECT_EQ(entriesOf(folder), Names{"full"});
}

TEST(cgatsSave, deviceThatTakesEverything_takesTheText) {
    const ScratchFolder folder;
    const std::string null = ownDevice(folder, "null", 3);
    if (null.empty())
        GTEST_SKIP() << "no device can be made here";
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.SaveAs(null.c_str()), 0);
    EXPECT_TRUE(fs::is_character_file(null));
}

TEST(cgatsSave, folderThatMayNotBeWritten_gives4AndTheOldFileStands) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "the old text");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0555), 0);
    const Reading reading("CGATS.17\n");
    const int old = answerToAnOrdinaryUser(folder, [&] { return reading.document.SaveAs(path.c_str()); });
    const int fresh =
        answerToAnOrdinaryUser(folder, [&] { return reading.document.SaveAs(folder.path("b.txt").c_str()); });
    chmod(folder.path().c_str(), 0755);
    if (old == kUnreachable)
        GTEST_SKIP() << "the folder cannot be reached by an ordinary user";
    EXPECT_EQ(old, 4);
    EXPECT_EQ(fresh, 4);
    EXPECT_EQ(ScratchFolder::read(path), "the old text");
    EXPECT_EQ(entriesOf(folder), Names{"a.txt"});
}

TEST(cgatsSave, fileThatMayNotBeWritten_gives4AndStands) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", "the old text");
    ASSERT_EQ(chmod(path.c_str(), 0444), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0777), 0);
    const Reading reading("CGATS.17\n");
    const int answer = answerToAnOrdinaryUser(folder, [&] { return reading.document.SaveAs(path.c_str()); });
    if (answer == kUnreachable)
        GTEST_SKIP() << "the folder cannot be reached by an ordinary user";
    EXPECT_EQ(answer, 4);
    EXPECT_EQ(ScratchFolder::read(path), "the old text");
    EXPECT_EQ(entriesOf(folder), Names{"a.txt"});
}

TEST(cgatsSave, file_doesNotFollowTheLocale) {
    const ScratchFolder folder;
    TCgats document;
    makeMixed(document);
    const std::string before = std::setlocale(LC_ALL, nullptr);
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "there is no German locale here";
    const std::locale global = std::locale::global(commaLocale());
    const int code = document.SaveAs(folder.path("a.txt").c_str());
    const Writing inArray = writingToArray(document);
    std::locale::global(global);
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(code, 0);
    EXPECT_EQ(ScratchFolder::read(folder.path("a.txt")), kMixedText);
    EXPECT_EQ(inArray, (Writing{kMixedText, 0}));
}

TEST(cgatsSave, nothing_isReported) {
    const ReportCollector reports;
    const ScratchFolder folder;
    const Reading reading("CGATS.17\n# note\n");
    EXPECT_EQ(reading.document.SaveAs(folder.path("missing/a.txt").c_str()), 4);
    EXPECT_EQ(reading.document.SaveAs(folder.path("a.txt").c_str()), 22);
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_TRUE(reports.warnings.empty());
}

// At its end a stream takes nothing, although it has not failed.
TEST(cgatsWriter, streamAtItsEnd_gives4) {
    TCgats document;
    makeMixed(document);
    std::ostringstream stream;
    stream.setstate(std::ios::eofbit);
    EXPECT_EQ(document.WriteToStream(stream), 4);
    EXPECT_EQ(document.WriteTag(0, stream), 4);
    EXPECT_EQ(document.WriteHeader(0, stream), 4);
    EXPECT_EQ(document.WriteTable(0, stream), 4);
    EXPECT_EQ(stream.str(), "");
}

TEST(cgatsSave, nameLikeALogicalOne_isThatFile) {
    const ScratchFolder folder;
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    const int code = Reading("CGATS.17\n").document.SaveAs("lot:[7]a.txt");
    const int read = TCgats("lot:[7]a.txt").GetErrorCode();
    fs::current_path(before);
    EXPECT_EQ(code, 0);
    EXPECT_EQ(read, 0);
    EXPECT_EQ(entriesOf(folder), Names{"lot:[7]a.txt"});
}

// The array grows with every block; a text that just fills it still wants its terminator.
TEST(cgatsSave, arrayOfAnyLength_holdsTheTerminatedText) {
    for (const std::size_t length :
         {16382u, 16383u, 16384u, 16385u, 32766u, 32767u, 32768u, 32769u, 65536u}) {
        TCgats document;
        ASSERT_EQ(document.AddTag(-1, std::string(length, 'k').c_str(), 0, "", ""), 0);
        EXPECT_TRUE(writingToArray(document) == (Writing{std::string(length, 'k') + "\n", 0})) << length;
    }
}

TEST(cgatsSave, arrayOfManyRows_isWholeToTheByte) {
    const std::string rows = repeated("12.5\t-3.25\t\n", 20000);
    const Reading reading(tableText("LAB_L LAB_A", 20000, rows));
    ASSERT_EQ(reading.code, 0);
    EXPECT_TRUE(
        writingToArray(reading.document) ==
        (Writing{"BEGIN_DATA_FORMAT\nLAB_L\tLAB_A\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t20000\nBEGIN_DATA\n" +
                     rows + "END_DATA\n",
                 0}));
}

TEST(cgatsSave, noArrayForADocumentInError_isToldByTheDocument) {
    const Reading reading("CGATS.17\n");
    EXPECT_EQ(reading.document.WriteToBuffer(nullptr), 2);
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
    reading.document.SetErrorCode(3);
    EXPECT_EQ(reading.document.WriteToBuffer(nullptr), 3);
}

// A column without values of its own, made behind the table's back.
TEST(cgatsWriter, fieldWithoutValues_gives12) {
    TCgats document;
    addTable(document, {TCgatsField::kFloat}, 1, "7");
    auto* header = const_cast<TCgatsTableHeader*>(document.GetTable(0)->GetHeader());
    ASSERT_EQ(header->Append(new TCgatsField(TCgatsField::kFloat, "LAB_DE", 0, TCgatsField::kStandard, 28)),
              0);
    ASSERT_EQ(document.AddTag(24, "BEGIN_DATA", 0, "", ""), 0);
    EXPECT_EQ(writingOfTable(document, 0), (Writing{"", 12}));
    EXPECT_EQ(writing(document), (Writing{"BEGIN_DATA\n", 12}));
}

// Memory grows with the numbers that are set: far behind the last one there is none.
TEST(cgatsWriter, numbersBehindTheLastOneSet_areZero) {
    constexpr int kRows = 2000;
    TCgats document;
    addTable(document, {TCgatsField::kString}, kRows, repeated("a ", kRows));
    TCgatsTable& table = *document.GetTable(0);
    std::unique_ptr<TCgatsTableHeader> wider = table.GetHeader()->Copy();
    ASSERT_NE(wider, nullptr);
    ASSERT_EQ(wider->Append(new TCgatsField(TCgatsField::kFloat, "LAB_DE", 0, TCgatsField::kStandard, 28)),
              0);
    ASSERT_EQ(wider->Classify(), 0);
    auto numbers = std::make_unique<TCgatsValueListDouble>(kRows);
    ASSERT_TRUE(numbers->SetNumber(0, 1.5));
    std::vector<std::unique_ptr<TCgatsValueList>> added;
    added.push_back(std::move(numbers));
    ASSERT_EQ(table.Widen(std::move(wider), std::move(added)), 0);
    const Writing result = writingOfTable(document, 0);
    EXPECT_EQ(result.code, 0);
    EXPECT_TRUE(result.text == "a\t1.5\t\n" + repeated("a\t0\t\n", kRows - 1));
}

// The code of a document comes before that of a stream that takes nothing.
TEST(cgatsWriter, streamThatStopsUnderAFailingDocument_givesTheCodeOfTheDocument) {
    const Reading reading("# note\n");
    std::ostream stream(nullptr);
    EXPECT_EQ(reading.document.WriteToStream(stream), 22);
    EXPECT_EQ(reading.document.WriteTag(5, stream), 21);
    EXPECT_EQ(reading.document.WriteTable(0, stream), 23);
}

TEST(cgatsWriter, tagGivenItsOwnText_keepsIt) {
    Reading reading("ORIGINATOR \"a long name of the originator\" # c\n");
    TCgats& document = reading.document;
    ASSERT_EQ(document.ChangeTagValue(0, document.GetOriginator() + 2), 0);
    ASSERT_EQ(document.SetOriginator(document.GetOriginator() + 5), 0);
    const TCgatsTag& tag = *document.GetTagAt(0);
    ASSERT_EQ(document.AddTag(-1, tag.GetKeyword(), 1, tag.GetValue(), tag.GetComment()), 0);
    ASSERT_EQ(document.InsertTag(0, tag.GetKeyword(), 0, tag.GetValue(), "", 0, true), 0);
    EXPECT_EQ(writing(document), (Writing{"ORIGINATOR\t\"name of the originator\"\n"
                                          "ORIGINATOR\tname of the originator\t#  c\n",
                                          0}));
}

} // namespace
} // namespace qxcms::tests
