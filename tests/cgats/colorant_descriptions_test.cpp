// The names that a document's header gives to its spot colours and custom process colours.
#include <array>
#include <string>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/read_document.h"
#include "tests/support/reports.h"

namespace {

using qxcms::tests::ReadDocument;
using qxcms::tests::tableOf;

// Stands in an output slot where nothing may be written.
const char* const kUntouched = "untouched";

using Names = std::array<const char*, 4>;

Names untouchedNames() {
    Names names;
    names.fill(kUntouched);
    return names;
}

std::string spotTable() {
    return tableOf("SPOT_1 SPOT_2", {"10 20"});
}

TEST(colorantDescriptions, spotNames_comeInTagOrder) {
    const ReadDocument document("SPOT_ID \"Gold\"\nORIGINATOR \"me\"\nSPOT_ID \"Silver\"\n" + spotTable());
    Names names = untouchedNames();
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), 0);
    EXPECT_STREQ(names[0], "Gold");
    EXPECT_STREQ(names[1], "Silver");
    EXPECT_EQ(names[2], kUntouched);
}

TEST(colorantDescriptions, names_pointIntoTheDocument) {
    const ReadDocument document("SPOT_ID \"Gold\"\nSPOT_ID \"Silver\"\n" + spotTable());
    Names names = untouchedNames();
    ASSERT_EQ(document.GetSpotColorDescriptions(0, names.data()), 0);
    EXPECT_EQ(names[0], document.GetTagAt(0)->GetValue());
    EXPECT_EQ(names[1], document.GetTagAt(1)->GetValue());
}

TEST(colorantDescriptions, spotNames_beyondTheSpotFieldsAreLeftOut) {
    const ReadDocument document("SPOT_ID \"Gold\"\nSPOT_ID \"Silver\"\nSPOT_ID \"Bronze\"\n" + spotTable());
    Names names = untouchedNames();
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), 0);
    EXPECT_STREQ(names[1], "Silver");
    EXPECT_EQ(names[2], kUntouched);
}

TEST(colorantDescriptions, tooFewSpotNames_areFilledInAndRefused) {
    const ReadDocument document("SPOT_ID \"Gold\"\n" + spotTable());
    Names names = untouchedNames();
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), -1);
    EXPECT_STREQ(names[0], "Gold");
    EXPECT_EQ(names[1], kUntouched);
}

TEST(colorantDescriptions, spotsWithoutNames_areRefused) {
    const ReadDocument document(spotTable());
    Names names = untouchedNames();
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), -1);
    EXPECT_EQ(names[0], kUntouched);
}

TEST(colorantDescriptions, spotNamesBehindTheTable_countToo) {
    const ReadDocument document("SPOT_ID \"Gold\"\n" + spotTable() + "SPOT_ID \"Silver\"\n");
    Names names = untouchedNames();
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), 0);
    EXPECT_STREQ(names[1], "Silver");
}

TEST(colorantDescriptions, spotNameWithoutValue_isEmpty) {
    const ReadDocument document("SPOT_ID\nSPOT_ID bare name\n" + spotTable());
    Names names = untouchedNames();
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), 0);
    EXPECT_STREQ(names[0], "");
    EXPECT_STREQ(names[1], "barename");
}

TEST(colorantDescriptions, keywordInAnotherCase_namesNoColorant) {
    const ReadDocument document("spot_id \"Gold\"\nSPOT_ID \"Silver\"\n" + spotTable());
    Names names = untouchedNames();
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), -1);
    EXPECT_STREQ(names[0], "Silver");
    EXPECT_EQ(names[1], kUntouched);
}

TEST(colorantDescriptions, tableWithoutSpots_hasNoSpotNames) {
    const ReadDocument document("SPOT_ID \"Gold\"\n" + tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K", {"1 2 3 4"}));
    Names names = untouchedNames();
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), -1);
    EXPECT_EQ(names[0], kUntouched);
}

TEST(colorantDescriptions, processColorNames_comeInTagOrder) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\nSPOT_ID \"Gold\"\nPROCESSCOLOR_ID \"Green\"\n" +
                                tableOf("PC2_1 PC2_2", {"1 2"}));
    Names names = untouchedNames();
    EXPECT_EQ(document.GetCustomProcessColorDescriptions(0, names.data()), 0);
    EXPECT_STREQ(names[0], "Orange");
    EXPECT_STREQ(names[1], "Green");
    EXPECT_EQ(names[2], kUntouched);
    EXPECT_EQ(names[0], document.GetTagAt(0)->GetValue());
}

TEST(colorantDescriptions, processColorNames_beyondTheFieldsAreLeftOut) {
    const ReadDocument document(
        "PROCESSCOLOR_ID \"Orange\"\nPROCESSCOLOR_ID \"Green\"\nPROCESSCOLOR_ID \"Violet\"\n" +
        tableOf("PC3_1 PC3_2", {"1 2"}));
    Names names = untouchedNames();
    EXPECT_EQ(document.GetCustomProcessColorDescriptions(0, names.data()), 0);
    EXPECT_STREQ(names[1], "Green");
    EXPECT_EQ(names[2], kUntouched);
}

TEST(colorantDescriptions, tooFewProcessColorNames_areFilledInAndRefused) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" + tableOf("PC1_1 PC1_2", {"1 2"}));
    Names names = untouchedNames();
    EXPECT_EQ(document.GetCustomProcessColorDescriptions(0, names.data()), -1);
    EXPECT_STREQ(names[0], "Orange");
    EXPECT_EQ(names[1], kUntouched);
}

TEST(colorantDescriptions, otherKindsOfProcessColors_haveNoNames) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\nPROCESSCOLOR_ID \"Green\"\n" +
                                tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K", {"1 2 3 4"}) +
                                tableOf("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5", {"1 2 3 4 5"}) +
                                tableOf("SPOT_1", {"1"}));
    Names names = untouchedNames();
    EXPECT_EQ(document.GetCustomProcessColorDescriptions(0, names.data()), -1);
    EXPECT_EQ(document.GetCustomProcessColorDescriptions(1, names.data()), -1);
    EXPECT_EQ(document.GetCustomProcessColorDescriptions(2, names.data()), -1);
    EXPECT_EQ(names[0], kUntouched);
}

TEST(colorantDescriptions, badTable_isRefused) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\nSPOT_ID \"Gold\"\n" +
                                tableOf("PC1_1 SPOT_1", {"1 2"}));
    Names names = untouchedNames();
    for (const int table : {-1, 1}) {
        EXPECT_EQ(document.GetSpotColorDescriptions(table, names.data()), -1);
        EXPECT_EQ(document.GetCustomProcessColorDescriptions(table, names.data()), -1);
    }
    EXPECT_EQ(names[0], kUntouched);
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), 0);
    EXPECT_EQ(document.GetCustomProcessColorDescriptions(0, names.data()), 0);
}

TEST(colorantDescriptions, documentInError_isRefused) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\nSPOT_ID \"Gold\"\n" +
                                tableOf("PC1_1 SPOT_1", {"1 2"}));
    document.SetErrorCode(1);
    Names names = untouchedNames();
    EXPECT_EQ(document.GetSpotColorDescriptions(0, names.data()), -1);
    EXPECT_EQ(document.GetCustomProcessColorDescriptions(0, names.data()), -1);
    EXPECT_EQ(names[0], kUntouched);
}

TEST(colorantDescriptions, nullOutput_isRefusedInSilence) {
    const qxcms::tests::ReportCollector reports;
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\nSPOT_ID \"Gold\"\n" +
                                tableOf("PC1_1 SPOT_1", {"1 2"}));
    EXPECT_EQ(document.GetSpotColorDescriptions(0, nullptr), -1);
    EXPECT_EQ(document.GetCustomProcessColorDescriptions(0, nullptr), -1);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_TRUE(reports.errors.empty());
}

} // namespace
