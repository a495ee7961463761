// Copies of documents: whole, with chosen samples, with chosen channels.
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

using Names = std::vector<std::string>;
using Numbers = std::vector<double>;

constexpr int kNumberOfFields = 3;
constexpr int kNumberOfSets = 23;

// The answer of the writer and what it wrote.
std::pair<int, std::string> writing(const TCgats& document) {
    std::ostringstream stream;
    const int code = document.WriteToStream(stream);
    return {code, stream.str()};
}

std::unique_ptr<TCgats> withSamples(const TCgats& source, std::vector<int> samples) {
    return std::make_unique<TCgats>(&source, samples.data(), static_cast<int>(samples.size()));
}

std::unique_ptr<TCgats> withChannels(const TCgats& source, std::vector<int> channels, double value = 0.0) {
    return std::make_unique<TCgats>(&source, channels.data(), static_cast<int>(channels.size()), value);
}

Names fieldsOf(const TCgats& document, int table = 0) {
    if (document.GetTable(table) == nullptr || document.GetTable(table)->GetHeader() == nullptr)
        return {"(no header)"};
    return namesOf(*document.GetTable(table)->GetHeader());
}

std::string valueOf(const TCgats& document, int code) {
    const TCgatsTag* tag = document.GetTag(code);
    return tag == nullptr ? "(no tag)" : orAbsent(tag->GetValue());
}

int errorOf(const TCgats& document, int table = 0) {
    return document.GetTable(table) == nullptr ? -1 : document.GetTable(table)->GetTableError();
}

// A column as numbers, or nothing when it is not there.
Numbers column(const TCgats& document, int index, int table = 0) {
    Numbers numbers;
    if (document.GetTable(table) == nullptr || document.GetTable(table)->GetValues(index) == nullptr)
        return numbers;
    for (int row = 0; row < document.GetTable(table)->GetNrRowsStored(); ++row)
        numbers.push_back(document.GetTable(table)->GetValues(index)->GetDouble(row));
    return numbers;
}

Names texts(const TCgats& document, int index, int table = 0) {
    Names strings;
    if (document.GetTable(table) == nullptr || document.GetTable(table)->GetValues(index) == nullptr)
        return strings;
    for (int row = 0; row < document.GetTable(table)->GetNrRowsStored(); ++row)
        strings.push_back(orAbsent(document.GetTable(table)->GetValues(index)->GetString(row)));
    return strings;
}

std::string readText(int fields, const std::string& names, int sets, const std::string& samples) {
    return "NUMBER_OF_FIELDS " + std::to_string(fields) + "\n" + tableText(names, sets, samples);
}

// Six samples, two tables, comment blocks and declared names.
std::string chartText() {
    return "CGATS.17\nORIGINATOR \"the maker\" # by hand\n"
           "BEGIN_NOTES\nfree text\nEND_NOTES\n"
           "KEYWORD \"LOT\"\n"
           "SPOT_ID \"Gold\"\n" +
           readText(5, "SAMPLE_ID LOT LAB_L LAB_A LAB_B", 6,
                    "r0 a 0 1 2 r1 b 10 11 12 r2 \"c c\" 20 21 22 "
                    "r3 d 30 31 32 r4 e 40 41 42 r5 \"\" 50 51 52") +
           "TABLE_NAME second\n" + tableText("SAMPLE_ID D_VIS", 4, "s0 1 s1 2 s2 3 s3 4");
}

// Channels that are not in the order of their columns, with other columns between.
std::string cmykText() {
    return "CGATS.17\n" + readText(8, "SAMPLE_ID CMYK_K LAB_L CMYK_C LAB_A CMYK_M LAB_B CMYK_Y", 2,
                                   "a 4 50 1 -5 2 -6 3 b 40 60 10 5 20 6 30");
}

std::string plainCmykText() {
    return "CGATS.17\n" + readText(5, "SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K", 2, "a 1 2 3 4 b 5 6 7 8");
}

// ---- Whole copies.

TEST(cgatsCopy, wholeDocument_isWrittenAlike) {
    const Reading source(chartText());
    ASSERT_EQ(source.code, 0);
    const TCgats copy(&source.document);
    EXPECT_EQ(copy.GetErrorCode(), 0);
    EXPECT_EQ(writing(source.document).first, 0);
    EXPECT_EQ(writing(copy), writing(source.document));
}

TEST(cgatsCopy, documentThatCannotBeWritten_stopsAtTheSamePlace) {
    const Reading source(everythingText()); // has a comment on a line of its own
    ASSERT_EQ(source.code, 0);
    const TCgats copy(&source.document);
    EXPECT_EQ(writing(copy).first, 22);
    EXPECT_EQ(writing(copy), writing(source.document));
}

TEST(cgatsCopy, everyHeaderLine_isCopiedWhole) {
    const Reading source(everythingText());
    const TCgats copy(&source.document);
    ASSERT_EQ(copy.GetNrTags(), source.document.GetNrTags());
    for (int i = 0; i < copy.GetNrTags(); ++i) {
        const TCgatsTag* was = source.document.GetTagAt(i);
        const TCgatsTag* is = copy.GetTagAt(i);
        EXPECT_EQ(is->GetCode(), was->GetCode()) << i;
        EXPECT_EQ(is->GetNumeric(), was->GetNumeric()) << i;
        EXPECT_EQ(orAbsent(is->GetKeyword()), orAbsent(was->GetKeyword())) << i;
        EXPECT_EQ(orAbsent(is->GetValue()), orAbsent(was->GetValue())) << i;
        EXPECT_EQ(orAbsent(is->GetComment()), orAbsent(was->GetComment())) << i;
    }
}

TEST(cgatsCopy, namesCountsAndCommentBlocks_areTakenOver) {
    const Reading source(everythingText());
    const TCgats copy(&source.document);
    EXPECT_EQ(copy.GetNrProcessColorIdTags(), 2);
    EXPECT_EQ(copy.GetNrSpotIdTags(), 1);
    ASSERT_EQ(copy.GetNrCustomFields(), 2); // "SampleID" declares itself
    EXPECT_STREQ(copy.GetCustomField(0), "LOT");
    EXPECT_STREQ(copy.GetCustomField(1), "SampleID");
    ASSERT_EQ(copy.GetNrCommentBlocks(), 1);
    EXPECT_STREQ(copy.GetCommentBlock(0), "free \"text\" # here\n");
}

TEST(cgatsCopy, everyField_isCopiedWithItsClass) {
    const Reading source(everythingText());
    const TCgats copy(&source.document);
    ASSERT_EQ(copy.GetNrTables(), 2);
    for (int table = 0; table < 2; ++table) {
        ASSERT_EQ(fieldsOf(copy, table), fieldsOf(source.document, table));
        for (int i = 0; i < copy.GetNrFields(table); ++i) {
            const TCgatsField* was = source.document.GetTable(table)->GetHeader()->GetField(i);
            const TCgatsField* is = copy.GetTable(table)->GetHeader()->GetField(i);
            EXPECT_EQ(is->GetKind(), was->GetKind()) << i;
            EXPECT_EQ(is->GetNumber(), was->GetNumber()) << i;
            EXPECT_EQ(is->GetFieldId(), was->GetFieldId()) << i;
            EXPECT_EQ(is->GetDataType(), was->GetDataType()) << i;
        }
    }
}

TEST(cgatsCopy, numbers_keepEveryBit) {
    const Reading source(tableText("SAMPLE_ID D_VIS", 2, "a 0.12345678901234567 b 1e-300"));
    const TCgats copy(&source.document);
    EXPECT_EQ(column(copy, 1), (Numbers{0.12345678901234567, 1e-300}));
}

TEST(cgatsCopy, emptyText_staysEmpty) {
    const Reading source(everythingText());
    const TCgats copy(&source.document);
    EXPECT_EQ(texts(copy, 1), (Names{"lot 1", "", "x"}));
}

TEST(cgatsCopy, copy_outlivesItsSource) {
    auto source = std::make_unique<Reading>(chartText());
    const TCgats copy(&source->document);
    const auto before = writing(source->document);
    source->document.ChangeTagValue(0, "somebody else");
    const double row[] = {7, 7, 7};
    const double* const lab[] = {row, row, row, row, row, row};
    EXPECT_EQ(source->document.AddLab(0, lab), 0);
    EXPECT_EQ(writing(copy), before);
    source.reset();
    EXPECT_EQ(writing(copy), before);
}

TEST(cgatsCopy, emptyDocument_hasAnEmptyCopy) {
    const TCgats source;
    const TCgats copy(&source);
    EXPECT_EQ(copy.GetErrorCode(), 0);
    EXPECT_STREQ(copy.GetErrorMessage(), "");
    EXPECT_EQ(copy.GetNrTags(), 0);
    EXPECT_EQ(copy.GetNrTables(), 0);
}

TEST(cgatsCopy, fullDocument_isCopiedToItsLastLine) {
    TCgats source;
    for (int i = 0; i < TCgats::kMaxTags; ++i)
        source.AddTag(-1, "LINE", 1, std::to_string(i).c_str(), "");
    const TCgats copy(&source);
    ASSERT_EQ(copy.GetNrTags(), TCgats::kMaxTags);
    EXPECT_STREQ(copy.GetTagAt(127)->GetValue(), "127");
}

TEST(cgatsCopy, markOfPercent_isTakenOverTableByTable) {
    const Reading source(tableText("SAMPLE_ID nm400", 1, "a 55") + tableText("SAMPLE_ID nm400", 1, "a 0.5"));
    ASSERT_EQ(source.code, 0);
    const TCgats copy(&source.document);
    EXPECT_TRUE(copy.GetTable(0)->IsSpectralPercent());
    EXPECT_FALSE(copy.GetTable(1)->IsSpectralPercent());
}

TEST(cgatsCopy, markOfPercent_staysWithSamplesThatDoNotShowIt) {
    const Reading source(tableText("SAMPLE_ID nm400", 2, "a 55 b 5"));
    const auto copy = withSamples(source.document, {1});
    EXPECT_TRUE(copy->GetTable(0)->IsSpectralPercent());
    double spectrum[1] = {};
    EXPECT_EQ(copy->GetSpectrum(0, 0, spectrum), 0);
    EXPECT_DOUBLE_EQ(spectrum[0], 0.05);
}

// ---- Chosen samples.

TEST(cgatsCopy, chosenSamples_comeInListOrder) {
    const Reading source(chartText());
    const auto copy = withSamples(source.document, {5, 0, 2});
    EXPECT_EQ(copy->GetErrorCode(), 0);
    ASSERT_EQ(copy->GetNrSamples(0), 3);
    EXPECT_EQ(copy->GetTable(0)->GetNrRowsStored(), 3);
    EXPECT_EQ(texts(*copy, 0), (Names{"r5", "r0", "r2"}));
    EXPECT_EQ(texts(*copy, 1), (Names{"", "a", "c c"}));
    EXPECT_EQ(column(*copy, 2), (Numbers{50, 0, 20}));
    EXPECT_EQ(column(*copy, 4), (Numbers{52, 2, 22}));
}

TEST(cgatsCopy, chosenSamples_areCountedInTheFirstNumberOfSets) {
    const Reading source(chartText());
    const auto copy = withSamples(source.document, {5, 0, 2});
    EXPECT_EQ(valueOf(*copy, kNumberOfSets), "3");
    EXPECT_EQ(copy->GetTag(kNumberOfSets)->GetNumeric(), 1);
    EXPECT_EQ(valueOf(*copy, kNumberOfFields), "5");
    const std::string text = writing(*copy).second;
    EXPECT_NE(text.find("\nNUMBER_OF_SETS\t3\n"), std::string::npos);
    EXPECT_NE(text.find("\nNUMBER_OF_SETS\t4\n"), std::string::npos); // the second table's
}

TEST(cgatsCopy, chosenSamples_leaveLaterTablesWhole) {
    const Reading source(chartText());
    const auto copy = withSamples(source.document, {1});
    EXPECT_EQ(copy->GetNrSamples(0), 1);
    EXPECT_EQ(copy->GetNrSamples(1), 4);
    EXPECT_EQ(texts(*copy, 0, 1), (Names{"s0", "s1", "s2", "s3"}));
    EXPECT_EQ(column(*copy, 1, 1), (Numbers{1, 2, 3, 4}));
}

TEST(cgatsCopy, sampleMayComeMoreThanOnce) {
    const Reading source(chartText());
    const auto copy = withSamples(source.document, {3, 3, 1, 3, 3, 3, 3, 3});
    EXPECT_EQ(copy->GetNrSamples(0), 8);
    EXPECT_EQ(column(*copy, 2), (Numbers{30, 30, 10, 30, 30, 30, 30, 30}));
}

TEST(cgatsCopy, allSamplesInOrder_areTheSource) {
    const Reading source(chartText());
    EXPECT_EQ(writing(*withSamples(source.document, {0, 1, 2, 3, 4, 5})), writing(source.document));
}

TEST(cgatsCopy, emptySampleList_meansAllSamples) {
    const Reading source(chartText());
    int samples[] = {3};
    const TCgats copy(&source.document, samples, 0);
    EXPECT_EQ(writing(copy), writing(source.document));
    EXPECT_EQ(copy.GetNrSamples(0), 6);
}

TEST(cgatsCopy, sampleList_isOnlyRead) {
    const Reading source(chartText());
    int samples[] = {5, 0, 2};
    const TCgats copy(&source.document, samples, 3);
    EXPECT_EQ(samples[0], 5);
    EXPECT_EQ(samples[1], 0);
    EXPECT_EQ(samples[2], 2);
}

TEST(cgatsCopy, samplesOfADocumentWithoutTheirCountLine_areStillChosen) {
    const std::string text = "SAMPLE_ID D_VIS END_DATA_FORMAT \na 1 b 2\n";
    TCgats source;
    const char* position = text.c_str();
    ASSERT_EQ(source.ReadTmpHeader(&position), 0);
    position += std::strlen("END_DATA_FORMAT");
    source.SetNrSamples(2);
    ASSERT_EQ(source.ReadTable(&position), 0);
    const auto copy = withSamples(source, {1});
    EXPECT_EQ(copy->GetErrorCode(), 0);
    EXPECT_EQ(copy->GetNrTags(), 0);
    EXPECT_EQ(column(*copy, 1), Numbers{2});
}

TEST(cgatsCopy, missingSample_isTableError10) {
    const Reading source(chartText());
    const std::vector<std::vector<int>> lists = {
        {6}, {-1}, {0, 1, 6}, {std::numeric_limits<int>::max()}, {std::numeric_limits<int>::min(), 0}};
    for (const std::vector<int>& list : lists) {
        const auto copy = withSamples(source.document, list);
        EXPECT_EQ(errorOf(*copy), 10) << list[0];
        EXPECT_EQ(copy->GetNrTables(), 2);
        EXPECT_EQ(errorOf(*copy, 1), 0);
    }
}

TEST(cgatsCopy, tableInError_isNotTheErrorOfTheDocument) {
    const Reading source(chartText());
    const auto copy = withSamples(source.document, {6});
    EXPECT_EQ(copy->GetErrorCode(), 0);
    EXPECT_STREQ(copy->GetErrorMessage(), "");
    EXPECT_EQ(copy->GetNrSamples(0), -1);
    EXPECT_EQ(copy->GetNrFields(0), -1);
    EXPECT_FALSE(copy->ContainsLab(0));
    double lab[3] = {};
    EXPECT_EQ(copy->GetLab(0, 0, lab), -1);
    EXPECT_EQ(copy->GetNrSamples(1), 4);
}

TEST(cgatsCopy, tableInError_isMappedByTheWriter) {
    const Reading source(plainCmykText());
    EXPECT_EQ(writing(*withSamples(source.document, {2})).first, 1);
    EXPECT_EQ(writing(*withChannels(source.document, {0, 1, 4})).first, 8);
}

TEST(cgatsCopy, writtenErrorOfATable_isRecorded) {
    const Reading source(plainCmykText());
    const auto copy = withChannels(source.document, {0, 1, 4});
    char* text = nullptr;
    EXPECT_EQ(copy->WriteToBuffer(&text), 8);
    delete[] text;
    EXPECT_EQ(copy->GetErrorCode(), 8);
    EXPECT_STREQ(copy->GetErrorMessage(), "Internal error: attempt to map inks using an illegal ink map.");
}

TEST(cgatsCopy, copyOfATableInError_isInErrorToo) {
    const Reading source(plainCmykText());
    const auto broken = withChannels(source.document, {0, 1, 4});
    const TCgats copy(broken.get());
    EXPECT_EQ(copy.GetErrorCode(), 0);
    EXPECT_EQ(errorOf(copy), 13);
    EXPECT_EQ(writing(copy), writing(*broken));
}

// ---- Chosen channels.

TEST(cgatsCopy, threeChannels_areCyanMagentaYellowAndOneFieldLess) {
    const Reading source(plainCmykText());
    const auto copy = withChannels(source.document, {0, 1, 2});
    EXPECT_EQ(copy->GetErrorCode(), 0);
    EXPECT_EQ(fieldsOf(*copy), (Names{"SAMPLE_ID", "CMYK_C", "CMYK_M", "CMYK_Y"}));
    EXPECT_EQ(valueOf(*copy, kNumberOfFields), "4");
    EXPECT_EQ(column(*copy, 1), (Numbers{1, 5}));
    EXPECT_EQ(column(*copy, 2), (Numbers{2, 6}));
    EXPECT_EQ(column(*copy, 3), (Numbers{3, 7}));
    EXPECT_EQ(texts(*copy, 0), (Names{"a", "b"}));
}

TEST(cgatsCopy, allChannelsInOrder_areTheSource) {
    const Reading source(plainCmykText());
    EXPECT_EQ(writing(*withChannels(source.document, {0, 1, 2, 3})), writing(source.document));
}

TEST(cgatsCopy, channels_comeInListOrder) {
    const Reading source(plainCmykText());
    const auto copy = withChannels(source.document, {3, 2, 1, 0});
    EXPECT_EQ(fieldsOf(*copy), (Names{"SAMPLE_ID", "CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"}));
    EXPECT_EQ(column(*copy, 1), (Numbers{4, 8}));
    EXPECT_EQ(column(*copy, 4), (Numbers{1, 5}));
    EXPECT_TRUE(copy->IsCMYKDefined(0));
}

TEST(cgatsCopy, channels_standWhereTheFirstColourColumnStood) {
    const Reading source(cmykText());
    ASSERT_EQ(source.code, 0);
    const auto copy = withChannels(source.document, {0, 1, 2});
    EXPECT_EQ(fieldsOf(*copy), (Names{"SAMPLE_ID", "CMYK_C", "CMYK_M", "CMYK_Y", "LAB_L", "LAB_A", "LAB_B"}));
    EXPECT_EQ(column(*copy, 1), (Numbers{1, 10}));
    EXPECT_EQ(column(*copy, 2), (Numbers{2, 20}));
    EXPECT_EQ(column(*copy, 3), (Numbers{3, 30}));
    EXPECT_EQ(column(*copy, 4), (Numbers{50, 60}));
    EXPECT_EQ(column(*copy, 6), (Numbers{-6, 6}));
    EXPECT_EQ(valueOf(*copy, kNumberOfFields), "7");
}

TEST(cgatsCopy, channelMayComeMoreThanOnce) {
    const Reading source(plainCmykText());
    const auto copy = withChannels(source.document, {3, 3, 3, 3, 3});
    EXPECT_EQ(fieldsOf(*copy), (Names{"SAMPLE_ID", "5CLR_1", "5CLR_2", "5CLR_3", "5CLR_4", "5CLR_5"}));
    for (int i = 1; i <= 5; ++i)
        EXPECT_EQ(column(*copy, i), (Numbers{4, 8})) << i;
    EXPECT_EQ(valueOf(*copy, kNumberOfFields), "6");
    EXPECT_TRUE(copy->IsNColorDefined(0));
}

TEST(cgatsCopy, channelsOfNColours_areTakenByTheirNumber) {
    const Reading source(
        tableText("6CLR_6 6CLR_5 6CLR_4 6CLR_3 6CLR_2 6CLR_1 SAMPLE_ID", 1, "6 5 4 3 2 1 a"));
    ASSERT_EQ(source.code, 0);
    const auto copy = withChannels(source.document, {0, 5, 2});
    EXPECT_EQ(fieldsOf(*copy), (Names{"CMYK_C", "CMYK_M", "CMYK_Y", "SAMPLE_ID"}));
    EXPECT_EQ(column(*copy, 0), Numbers{1});
    EXPECT_EQ(column(*copy, 1), Numbers{6});
    EXPECT_EQ(column(*copy, 2), Numbers{3});
    EXPECT_EQ(copy->GetTag(kNumberOfFields), nullptr); // undeclared before, undeclared now
}

TEST(cgatsCopy, channelsOfCustomColours_becomeStandardOnes) {
    const Reading source("PROCESSCOLOR_ID \"Orange\"\nPROCESSCOLOR_ID \"Green\"\n" +
                         tableText("SAMPLE_ID PC2_1 PC2_2 SPOT_1", 1, "a 11 22 33"));
    ASSERT_EQ(source.code, 0);
    const auto copy = withChannels(source.document, {1, 0, 1});
    EXPECT_EQ(fieldsOf(*copy), (Names{"SAMPLE_ID", "CMYK_C", "CMYK_M", "CMYK_Y", "SPOT_1"}));
    EXPECT_EQ(column(*copy, 1), Numbers{22});
    EXPECT_EQ(column(*copy, 2), Numbers{11});
    EXPECT_EQ(column(*copy, 3), Numbers{22});
    EXPECT_EQ(column(*copy, 4), Numbers{33});
    EXPECT_EQ(copy->GetNrProcessColorIdTags(), 2);
}

TEST(cgatsCopy, channels_areChosenInEveryTable) {
    const Reading source(plainCmykText() + tableText("CMYK_K CMYK_Y CMYK_M CMYK_C", 1, "4 3 2 1"));
    ASSERT_EQ(source.code, 0);
    const auto copy = withChannels(source.document, {2, 1, 0});
    EXPECT_EQ(fieldsOf(*copy, 1), (Names{"CMYK_C", "CMYK_M", "CMYK_Y"}));
    EXPECT_EQ(column(*copy, 0, 1), Numbers{3});
    EXPECT_EQ(column(*copy, 2, 1), Numbers{1});
}

TEST(cgatsCopy, tableWithoutProcessColours_isErrorThirteenAlone) {
    const Reading source(plainCmykText() + tableText("SAMPLE_ID SPOT_1", 1, "a 1"));
    ASSERT_EQ(source.code, 0);
    const auto copy = withChannels(source.document, {2, 1, 0});
    EXPECT_EQ(copy->GetErrorCode(), 0);
    EXPECT_EQ(errorOf(*copy, 0), 0);
    EXPECT_EQ(errorOf(*copy, 1), 13);
}

TEST(cgatsCopy, oneOrTwoChannels_areTableError13) {
    const Reading source(plainCmykText());
    for (const std::vector<int>& list : {std::vector<int>{0}, std::vector<int>{0, 1}}) {
        const auto copy = withChannels(source.document, list, 5.0);
        EXPECT_EQ(copy->GetErrorCode(), 0);
        EXPECT_EQ(errorOf(*copy), 13);
        EXPECT_EQ(copy->GetNrFields(0), -1);
    }
}

TEST(cgatsCopy, channelOutOfRange_isTableError13) {
    const Reading source(plainCmykText());
    for (const int channel : {4, 5, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(errorOf(*withChannels(source.document, {0, 1, channel})), 13) << channel;
}

TEST(cgatsCopy, negativeChannel_isNotFilled) {
    const Reading source(plainCmykText());
    for (const int channel : {-1, std::numeric_limits<int>::min()})
        EXPECT_EQ(errorOf(*withChannels(source.document, {0, 1, channel}, 5.0)), 13) << channel;
}

TEST(cgatsCopy, channelThatTheSourceLacks_isFilledWithTheValue) {
    const Reading source(plainCmykText());
    const auto copy = withChannels(source.document, {0, 1, 2, 3, 4, 1000}, 12.3456789);
    EXPECT_EQ(fieldsOf(*copy),
              (Names{"SAMPLE_ID", "6CLR_1", "6CLR_2", "6CLR_3", "6CLR_4", "6CLR_5", "6CLR_6"}));
    EXPECT_EQ(column(*copy, 4), (Numbers{4, 8}));
    EXPECT_EQ(column(*copy, 5), (Numbers{12.34568, 12.34568})); // five decimals
    EXPECT_EQ(column(*copy, 6), (Numbers{12.34568, 12.34568}));
    EXPECT_EQ(valueOf(*copy, kNumberOfFields), "7");
}

TEST(cgatsCopy, value_leavesChannelsOfTheSourceAsTheyAre) {
    const Reading source(plainCmykText());
    const auto copy = withChannels(source.document, {0, 1, 2}, 99.0);
    EXPECT_EQ(column(*copy, 1), (Numbers{1, 5}));
    EXPECT_EQ(column(*copy, 3), (Numbers{3, 7}));
}

TEST(cgatsCopy, smallValue_isGivenAndRoundedToZero) {
    const Reading source(plainCmykText());
    const auto copy = withChannels(source.document, {0, 1, 4}, 1e-9);
    EXPECT_EQ(errorOf(*copy), 0);
    EXPECT_EQ(column(*copy, 3), (Numbers{0, 0}));
}

TEST(cgatsCopy, negativeValue_isGiven) {
    const Reading source(plainCmykText());
    EXPECT_EQ(column(*withChannels(source.document, {0, 1, 4}, -1.5), 3), (Numbers{-1.5, -1.5}));
}

TEST(cgatsCopy, undefinedValue_isGiven) {
    const Reading source(plainCmykText());
    const auto copy = withChannels(source.document, {0, 1, 4}, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(errorOf(*copy), 0);
    const Numbers filled = column(*copy, 3);
    ASSERT_EQ(filled.size(), 2U);
    EXPECT_TRUE(std::isnan(filled[0]));
}

TEST(cgatsCopy, negativeZero_isNoValue) {
    const Reading source(plainCmykText());
    EXPECT_EQ(errorOf(*withChannels(source.document, {0, 1, 4}, -0.0)), 13);
}

TEST(cgatsCopy, emptyChannelList_meansAllChannels) {
    const Reading source(plainCmykText());
    int channels[] = {0};
    const TCgats copy(&source.document, channels, 0, 5.0);
    EXPECT_EQ(writing(copy), writing(source.document));
}

TEST(cgatsCopy, rebuiltNumberOfFields_keepsMarkAndComment) {
    const Reading source("NUMBER_OF_FIELDS \"5\" # so many\n" +
                         tableText("SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K", 1, "a 1 2 3 4"));
    ASSERT_EQ(source.code, 0);
    const auto copy = withChannels(source.document, {0, 1, 2, 3, 0});
    const TCgatsTag* tag = copy->GetTag(kNumberOfFields);
    ASSERT_NE(tag, nullptr);
    EXPECT_STREQ(tag->GetValue(), "6");
    EXPECT_EQ(tag->GetNumeric(), 0);
    EXPECT_STREQ(tag->GetComment(), " so many");
    EXPECT_STREQ(tag->GetKeyword(), "NUMBER_OF_FIELDS");
}

TEST(cgatsCopy, numberOfSets_isNotTouchedByChannels) {
    const Reading source(plainCmykText());
    const auto copy = withChannels(source.document, {0, 1, 2});
    EXPECT_EQ(valueOf(*copy, kNumberOfSets), "2");
    EXPECT_EQ(copy->GetNrSamples(0), 2);
}

TEST(cgatsCopy, rebuiltDocument_isReadAgain) {
    const Reading source(cmykText());
    const auto copy = withChannels(source.document, {3, 0, 1, 2, 9}, 7.5);
    const auto text = writing(*copy);
    ASSERT_EQ(text.first, 0);
    const Reading again(text.second);
    ASSERT_EQ(again.code, 0);
    EXPECT_EQ(fieldsOf(again.document), fieldsOf(*copy));
    for (int i = 0; i < copy->GetNrFields(0); ++i)
        EXPECT_EQ(column(again.document, i), column(*copy, i)) << i;
}

TEST(cgatsCopy, samplesAndChannels_canBeChosenTogether) {
    const Reading source(plainCmykText());
    const int samples[] = {1};
    const int channels[] = {3, 2, 1};
    TCgats copy;
    copy.Init(&source.document, samples, 1, channels, 3, 0.0);
    EXPECT_EQ(copy.GetErrorCode(), 0);
    EXPECT_EQ(texts(copy, 0), Names{"b"});
    EXPECT_EQ(column(copy, 1), Numbers{8});
    EXPECT_EQ(column(copy, 3), Numbers{6});
    EXPECT_EQ(valueOf(copy, kNumberOfSets), "1");
    EXPECT_EQ(valueOf(copy, kNumberOfFields), "4");
}

// ---- Sources in error.

TEST(cgatsCopy, sourceInError_givesItsCodeAndMessageAndNothingElse) {
    Reading source(chartText());
    source.document.SetErrorCode(17);
    const TCgats copy(&source.document);
    EXPECT_EQ(copy.GetErrorCode(), 17);
    EXPECT_STREQ(copy.GetErrorMessage(), "The custom color numbering in the table header is not consistent.");
    EXPECT_EQ(copy.GetNrTags(), 0);
    EXPECT_EQ(copy.GetNrCommentBlocks(), 0);
    EXPECT_EQ(copy.GetNrCustomFields(), 0);
    EXPECT_EQ(copy.GetNrSpotIdTags(), 0);
    EXPECT_EQ(copy.GetNrTables(), 0);
}

TEST(cgatsCopy, sourceInError_countsForSubsetsToo) {
    Reading source(plainCmykText());
    source.document.SetErrorCode(9);
    EXPECT_EQ(withSamples(source.document, {0})->GetErrorCode(), 9);
    EXPECT_EQ(withSamples(source.document, {0})->GetNrTables(), 0);
    EXPECT_EQ(withChannels(source.document, {0, 1, 2})->GetErrorCode(), 9);
    EXPECT_EQ(withChannels(source.document, {0, 1, 2})->GetNrTags(), 0);
}

TEST(cgatsCopy, errorsWithoutAText_areTakenOver) {
    for (const int code : {-1, 23, 24, 25, 99}) {
        TCgats source;
        source.SetErrorCode(code);
        const TCgats copy(&source);
        EXPECT_EQ(copy.GetErrorCode(), code);
        EXPECT_STREQ(copy.GetErrorMessage(), "") << code;
    }
}

// ---- The parts handed out.

TEST(cgatsCopy, tagList_isTheCallers) {
    const Reading source(everythingText());
    std::int32_t count = -1;
    std::int32_t commentCount = -1;
    TCgatsTag* tags[TCgats::kMaxTags] = {};
    char* comments[TCgats::kMaxCommentBlocks] = {};
    EXPECT_EQ(source.document.CopyTagList(&count, tags, &commentCount, comments, 0), 0);
    EXPECT_EQ(count, source.document.GetNrTags());
    EXPECT_EQ(commentCount, 1);
    EXPECT_STREQ(comments[0], "free \"text\" # here\n");
    EXPECT_NE(static_cast<const char*>(comments[0]), source.document.GetCommentBlock(0));
    for (int i = 0; i < count; ++i) {
        EXPECT_NE(tags[i], source.document.GetTagAt(i));
        EXPECT_EQ(orAbsent(tags[i]->GetKeyword()), orAbsent(source.document.GetTagAt(i)->GetKeyword()));
        delete tags[i];
    }
    delete[] comments[0];
}

TEST(cgatsCopy, tagListForChannels_declaresTheirFields) {
    const Reading source(plainCmykText());
    for (const auto& [channels, fields] : {std::pair(0, "5"), std::pair(1, "2"), std::pair(7, "8")}) {
        std::int32_t count = 0;
        std::int32_t commentCount = 0;
        TCgatsTag* tags[TCgats::kMaxTags] = {};
        char* comments[TCgats::kMaxCommentBlocks] = {};
        EXPECT_EQ(source.document.CopyTagList(&count, tags, &commentCount, comments, channels), 0);
        ASSERT_GE(count, 2);
        EXPECT_STREQ(tags[1]->GetValue(), fields) << channels;
        for (int i = 0; i < count; ++i)
            delete tags[i];
    }
}

TEST(cgatsCopy, declaredNames_areTheCallers) {
    const Reading source(everythingText());
    std::int32_t process = -1;
    std::int32_t spots = -1;
    std::int32_t count = -1;
    char** names = nullptr;
    EXPECT_EQ(source.document.CopyColorAndFieldInfo(&process, &spots, &count, &names), 0);
    EXPECT_EQ(process, 2);
    EXPECT_EQ(spots, 1);
    ASSERT_EQ(count, 2);
    EXPECT_STREQ(names[0], "LOT");
    EXPECT_STREQ(names[1], "SampleID");
    EXPECT_NE(static_cast<const char*>(names[0]), source.document.GetCustomField(0));
    delete[] names[0];
    delete[] names[1];
    delete[] names;
}

TEST(cgatsCopy, tables_areTheCallers) {
    const Reading source(chartText());
    const int samples[] = {4, 1};
    std::int32_t count = -1;
    TCgatsTable** tables = nullptr;
    EXPECT_EQ(source.document.CopyTables(&count, &tables, samples, 2, nullptr, 0, 0.0), 0);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(tables[0]->GetNrRowsStored(), 2);
    EXPECT_EQ(tables[0]->GetValues(2)->GetDouble(0), 40.0);
    EXPECT_EQ(tables[0]->GetHeader()->GetNrSamples(), 2);
    EXPECT_EQ(tables[1]->GetNrRowsStored(), 4);
    EXPECT_EQ(source.document.GetNrSamples(0), 6);
    delete tables[0];
    delete tables[1];
    delete[] tables;
}

std::string textOf(const TCgats& document) {
    return writing(document).second;
}

TEST(cgatsCopy, countsWithoutLists_meanAll) {
    const Reading source("NUMBER_OF_FIELDS 5\n" +
                         tableText("SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K", 2, "a 1 2 3 4 b 5 6 7 8"));
    ASSERT_EQ(source.code, 0);
    const std::string text = textOf(source.document);
    int list[] = {0, 1, 2};
    EXPECT_EQ(textOf(TCgats(&source.document, nullptr, 1)), text);
    EXPECT_EQ(textOf(TCgats(&source.document, nullptr, 3, 5.0)), text);
    EXPECT_EQ(textOf(TCgats(&source.document, list, -1)), text);
    EXPECT_EQ(textOf(TCgats(&source.document, list, -1, 5.0)), text);
}

TEST(cgatsCopy, everyNumberOfFields_isRebuiltFromTheFirstTable) {
    const Reading source("NUMBER_OF_FIELDS 5\n" +
                         tableText("SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K", 1, "a 1 2 3 4") +
                         "NUMBER_OF_FIELDS 4\n" + tableText("CMYK_C CMYK_M CMYK_Y CMYK_K", 1, "5 6 7 8"));
    ASSERT_EQ(source.code, 0);
    int channels[] = {3, 2, 1, 0, 0, 0};
    const TCgats copy(&source.document, channels, 6, 0.0);
    std::vector<std::string> counts;
    for (int i = 0; i < copy.GetNrTags(); ++i)
        if (copy.GetTagAt(i)->GetCode() == 3)
            counts.push_back(copy.GetTagAt(i)->GetValue());
    EXPECT_EQ(counts, (std::vector<std::string>{"7", "6"}));
    EXPECT_EQ(Reading(textOf(copy)).code, 0);
}

TEST(cgatsCopy, fieldCountWithoutProcessColours_growsByTheChannels) {
    int channels[] = {0, 1, 2};
    const Reading spots("NUMBER_OF_FIELDS 2\n" + tableText("SAMPLE_ID SPOT_1", 1, "a 1"));
    EXPECT_STREQ(TCgats(&spots.document, channels, 3, 0.0).GetTag(3)->GetValue(), "5");
    TCgats empty;
    empty.AddTag(3, "NUMBER_OF_FIELDS", 1, "2", "");
    EXPECT_STREQ(TCgats(&empty, channels, 3, 0.0).GetTag(3)->GetValue(), "5");
}

TEST(cgatsCopy, channelWithoutAColumn_isFilledLikeOneBehindTheLast) {
    const Reading source("PROCESSCOLOR_ID \"a\"\nPROCESSCOLOR_ID \"b\"\n" +
                         tableText("SAMPLE_ID PC2_1 PC2_1", 1, "a 1 2")); // two columns, no second channel
    ASSERT_EQ(source.code, 0);
    int channels[] = {0, 0, 1};
    EXPECT_EQ(TCgats(&source.document, channels, 3, 0.0).GetTable(0)->GetTableError(), 13);
    const TCgats copy(&source.document, channels, 3, 7.5);
    ASSERT_EQ(copy.GetTable(0)->GetTableError(), 0);
    const int yellow = copy.GetFieldNameIndex(0, "CMYK_Y");
    EXPECT_EQ(copy.GetTable(0)->GetValues(yellow)->GetDouble(0), 7.5);
    EXPECT_EQ(copy.GetTable(0)->GetValues(yellow - 1)->GetDouble(0), 2.0);
}

TEST(cgatsCopy, integers_areCopied) {
    TCgats source;
    source.InitTmpHeader(1);
    ASSERT_EQ(source.GetTmpHeader()->FillNextSlot(
                  new TCgatsField(TCgatsField::kInteger, "COUNT", 0, TCgatsField::kCustom, 0)),
              0);
    source.SetNrSamples(3);
    const std::string samples = "7\n-2147483648\n2147483647\n";
    const char* position = samples.c_str();
    ASSERT_EQ(source.ReadTable(&position), 0);
    int rows[] = {2, 1, 0};
    const TCgats copy(&source, rows, 3);
    ASSERT_EQ(copy.GetTable(0)->GetTableError(), 0);
    EXPECT_EQ(copy.GetTable(0)->GetHeader()->GetField(0)->GetDataType(), TCgatsField::kInteger);
    EXPECT_EQ(copy.GetTable(0)->GetValues(0)->GetInt(0), std::numeric_limits<int>::max());
    EXPECT_EQ(copy.GetTable(0)->GetValues(0)->GetInt(1), std::numeric_limits<int>::min());
    EXPECT_EQ(copy.GetTable(0)->GetValues(0)->GetInt(2), 7);
}

TEST(cgatsCopy, infiniteValue_isGiven) {
    const Reading source(tableText("SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K", 1, "a 1 2 3 4"));
    int channels[] = {0, 1, 9};
    for (const double value : {std::numeric_limits<double>::infinity(), 1e300}) {
        EXPECT_EQ(TCgats(&source.document, channels, 3, value).GetTable(0)->GetValues(3)->GetDouble(0),
                  value);
        EXPECT_EQ(TCgats(&source.document, channels, 3, -value).GetTable(0)->GetValues(3)->GetDouble(0),
                  -value);
    }
}

TEST(cgatsCopy, commentBlocks_areCopiedInTheirOrder) {
    TCgats source;
    for (int i = 0; i < TCgats::kMaxCommentBlocks; ++i) {
        const std::string block = std::to_string(i) + "\nEND_NOTES\n";
        const char* position = block.c_str();
        ASSERT_EQ(source.ReadCommentTag("BEGIN_NOTES", &position), 0);
    }
    const TCgats copy(&source);
    ASSERT_EQ(copy.GetNrCommentBlocks(), TCgats::kMaxCommentBlocks);
    for (int i = 0; i < TCgats::kMaxCommentBlocks; ++i)
        EXPECT_EQ(copy.GetCommentBlock(i), std::to_string(i) + "\n");
}

TEST(cgatsCopy, samplesAndChannelsTogether_leaveLaterTablesTheirSamples) {
    const std::string cmyk = "SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K";
    const Reading source(tableText(cmyk, 2, "a 1 2 3 4 b 5 6 7 8") +
                         tableText(cmyk, 2, "c 11 12 13 14 d 15 16 17 18"));
    ASSERT_EQ(source.code, 0);
    const int samples[] = {1};
    const int channels[] = {3, 2, 1};
    TCgats copy;
    copy.Init(&source.document, samples, 1, channels, 3, 0.0);
    EXPECT_EQ(copy.GetNrSamples(0), 1);
    EXPECT_EQ(copy.GetNrSamples(1), 2);
    EXPECT_EQ(copy.GetTable(0)->GetValues(1)->GetDouble(0), 8.0);
    EXPECT_EQ(copy.GetTable(1)->GetValues(1)->GetDouble(1), 18.0);
}

TEST(cgatsCopy, missingPlaces_areRefused) {
    const Reading source(everythingText());
    std::int32_t count = 0;
    std::int32_t other = 0;
    std::int32_t third = 0;
    TCgatsTag* tags[TCgats::kMaxTags] = {};
    char* comments[TCgats::kMaxCommentBlocks] = {};
    char** names = nullptr;
    TCgatsTable** tables = nullptr;
    const TCgats& document = source.document;
    EXPECT_EQ(document.CopyTagList(nullptr, tags, &other, comments, 0), 1);
    EXPECT_EQ(document.CopyTagList(&count, nullptr, &other, comments, 0), 1);
    EXPECT_EQ(document.CopyTagList(&count, tags, nullptr, comments, 0), 1);
    EXPECT_EQ(document.CopyTagList(&count, tags, &other, nullptr, 0), 1);
    EXPECT_EQ(document.CopyColorAndFieldInfo(nullptr, &other, &third, &names), 1);
    EXPECT_EQ(document.CopyColorAndFieldInfo(&count, nullptr, &third, &names), 1);
    EXPECT_EQ(document.CopyColorAndFieldInfo(&count, &other, nullptr, &names), 1);
    EXPECT_EQ(document.CopyColorAndFieldInfo(&count, &other, &third, nullptr), 1);
    EXPECT_EQ(document.CopyTables(nullptr, &tables, nullptr, 0, nullptr, 0, 0.0), 1);
    EXPECT_EQ(document.CopyTables(&count, nullptr, nullptr, 0, nullptr, 0, 0.0), 1);
    EXPECT_EQ(tags[0], nullptr);
    EXPECT_EQ(names, nullptr);
    EXPECT_EQ(tables, nullptr);
}

TEST(cgatsCopy, noNamesAndNoTables_areEmptyArrays) {
    const TCgats source;
    std::int32_t process = -1;
    std::int32_t spots = -1;
    std::int32_t count = -1;
    char** names = nullptr;
    EXPECT_EQ(source.CopyColorAndFieldInfo(&process, &spots, &count, &names), 0);
    EXPECT_EQ(process, 0);
    EXPECT_EQ(spots, 0);
    EXPECT_EQ(count, 0);
    delete[] names;
    count = -1;
    TCgatsTable** tables = nullptr;
    EXPECT_EQ(source.CopyTables(&count, &tables, nullptr, 0, nullptr, 0, 0.0), 0);
    EXPECT_EQ(count, 0);
    delete[] tables;
}

TEST(cgatsCopy, copyOfItself_isRefusedAndChangesNothing) {
    Reading reading(chartText());
    const auto before = writing(reading.document);
    reading.document.Init(&reading.document, nullptr, 0, nullptr, 0, 0.0);
    EXPECT_EQ(reading.document.GetErrorCode(), 1);
    EXPECT_EQ(writing(reading.document), before);
    EXPECT_EQ(reading.document.GetNrTables(), 2);
    EXPECT_EQ(reading.document.GetNrCustomFields(), 1);
}

TEST(cgatsCopy, documentThatIsNotEmpty_isReplaced) {
    const Reading source("ORIGINATOR \"x\"\n");
    Reading target(chartText());
    target.document.Init(&source.document, nullptr, 0, nullptr, 0, 0.0);
    EXPECT_EQ(writing(target.document), writing(source.document));
    EXPECT_EQ(target.document.GetNrTables(), 0);
    EXPECT_EQ(target.document.GetNrCustomFields(), 0);
}

TEST(cgatsCopy, channelsWhoseHeaderIsNotConsistent_areTableError13) {
    const Reading source("PROCESSCOLOR_ID \"a\"\nPROCESSCOLOR_ID \"b\"\n" +
                         tableText("SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K PC2_2", 1, "a 1 2 3 4 5"));
    ASSERT_EQ(source.code, 0);
    const auto copy = withChannels(source.document, {0, 1, 2});
    EXPECT_EQ(copy->GetErrorCode(), 0);
    EXPECT_EQ(errorOf(*copy), 13);
    EXPECT_EQ(writing(*copy).first, 8);
}

TEST(cgatsCopy, processColourGivenTwice_isReplacedInBothPlaces) {
    const Reading source("PROCESSCOLOR_ID \"a\"\nPROCESSCOLOR_ID \"b\"\nNUMBER_OF_FIELDS 3\n" +
                         tableText("SAMPLE_ID PC2_1 PC2_1", 1, "a 1 2"));
    ASSERT_EQ(source.code, 0);
    const auto copy = withChannels(source.document, {0, 0, 0});
    EXPECT_EQ(fieldsOf(*copy), (Names{"SAMPLE_ID", "CMYK_C", "CMYK_M", "CMYK_Y"}));
    EXPECT_EQ(valueOf(*copy, kNumberOfFields), "4");
    EXPECT_EQ(Reading(writing(*copy).second).code, 0);
}

TEST(cgatsCopy, fieldCountBeyondInt_isNotWrapped) {
    TCgats source;
    source.AddTag(kNumberOfFields, "NUMBER_OF_FIELDS", 1, "2147483647", "");
    EXPECT_EQ(valueOf(*withChannels(source, {0, 1, 2}), kNumberOfFields), "2147483650");
}

TEST(cgatsCopy, tableThatCannotBeCopied_keepsThePercentFlag) {
    const Reading source(tableText("SAMPLE_ID nm380", 1, "a 50"));
    ASSERT_TRUE(source.document.GetTable(0)->IsSpectralPercent());
    int samples[] = {7};
    const TCgats copy(&source.document, samples, 1);
    EXPECT_EQ(errorOf(copy), 10);
    EXPECT_TRUE(copy.GetTable(0)->IsSpectralPercent());
}

TEST(cgatsCopy, oneProcessColour_isReplaced) {
    const Reading source("PROCESSCOLOR_ID \"a\"\n" + tableText("SAMPLE_ID PC1_1", 1, "a 7"));
    ASSERT_EQ(source.code, 0);
    const auto copy = withChannels(source.document, {0, 0, 0});
    EXPECT_EQ(errorOf(*copy), 0);
    EXPECT_EQ(fieldsOf(*copy), (Names{"SAMPLE_ID", "CMYK_C", "CMYK_M", "CMYK_Y"}));
}

TEST(cgatsCopy, sampleCountInTheFirstLine_isChanged) {
    const Reading source(
        "NUMBER_OF_SETS 2\nBEGIN_DATA_FORMAT\nSAMPLE_ID\nEND_DATA_FORMAT\nBEGIN_DATA\na\nb\nEND_DATA\n");
    ASSERT_EQ(source.code, 0);
    int samples[] = {1};
    const TCgats copy(&source.document, samples, 1);
    EXPECT_STREQ(copy.GetTagAt(0)->GetValue(), "1");
}

} // namespace
} // namespace qxcms::tests
