// The document: its empty state, its error state, its tags, custom fields and the header under construction.
#include "cgats/tcgats.h"

#include <climits>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/cgats/documents.h"
#include "tests/support/reports.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

void expectEmpty(const TCgats& document) {
    EXPECT_EQ(document.GetNrTags(), 0);
    EXPECT_EQ(document.GetNrCommentBlocks(), 0);
    EXPECT_EQ(document.GetDeclaredNrSets(), 0);
    EXPECT_EQ(document.GetTmpHeader(), nullptr);
    EXPECT_EQ(document.GetNrProcessColorIdTags(), 0);
    EXPECT_EQ(document.GetNrSpotIdTags(), 0);
    EXPECT_EQ(document.GetNrCustomFields(), 0);
    EXPECT_EQ(document.GetNrTables(), 0);
}

// Appends tags named by their keywords, also behind a field count.
void appendAll(TCgats& document, const std::vector<std::string>& keywords) {
    for (const std::string& keyword : keywords)
        ASSERT_EQ(document.ReadFromBuffer((keyword + "\n").c_str()), 0);
}

using Keywords = std::vector<std::string>;

// ---- Limits and empty state

TEST(cgatsDocument, limits_areThoseOfTheFormat) {
    EXPECT_EQ(TCgats::kMaxTags, 128);
    EXPECT_EQ(TCgats::kMaxCommentBlocks, 128);
    EXPECT_EQ(TCgats::kMaxKeyword, 256);
    EXPECT_EQ(TCgats::kMaxValue, 4096);
    EXPECT_EQ(TCgats::kMaxComment, 512);
    EXPECT_EQ(TCgats::kMaxSampleValue, 127);
}

TEST(cgatsDocument, newDocument_isEmpty) {
    const TCgats document;
    expectEmpty(document);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

TEST(cgatsDocument, setToZero_emptiesEveryMember) {
    TCgats document;
    document.SetNrSamples(7);
    document.SetErrorCode(3);
    EXPECT_EQ(document.SetToZero(), 0);
    expectEmpty(document);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

TEST(cgatsDocument, setToZero_releasesNothing) {
    TCgats document;
    document.InsertTag(2, "CREATED", 0, "today", "", -1, false);
    document.InitTmpHeader(3);
    const std::unique_ptr<TCgatsTag> tag(document.GetTagAt(0));
    const std::unique_ptr<TCgatsTableHeader> header(document.GetTmpHeader());
    EXPECT_EQ(document.SetToZero(), 0);
    expectEmpty(document);
    EXPECT_STREQ(tag->GetValue(), "today");
    EXPECT_EQ(header->GetNrFields(), 3);
}

TEST(cgatsDocument, setToZero_mayMeetRawStorage) {
    alignas(TCgats) unsigned char storage[sizeof(TCgats)];
    std::memset(storage, 0xa5, sizeof storage);
    auto* document = reinterpret_cast<TCgats*>(storage);
    EXPECT_EQ(document->SetToZero(), 0);
    expectEmpty(*document);
    EXPECT_EQ(document->GetErrorCode(), 0);
    EXPECT_STREQ(document->GetErrorMessage(), "");
}

TEST(cgatsDocument, badIndex_givesNull) {
    Reading reading(everythingText());
    const TCgats& document = reading.document;
    ASSERT_EQ(reading.code, 0);
    for (const int index : {-1, INT_MIN, INT_MAX}) {
        EXPECT_EQ(document.GetTagAt(index), nullptr);
        EXPECT_EQ(document.GetCommentBlock(index), nullptr);
        EXPECT_EQ(document.GetCustomField(index), nullptr);
        EXPECT_EQ(document.GetTable(index), nullptr);
    }
    EXPECT_EQ(document.GetTagAt(document.GetNrTags()), nullptr);
    EXPECT_EQ(document.GetCommentBlock(document.GetNrCommentBlocks()), nullptr);
    EXPECT_EQ(document.GetCustomField(document.GetNrCustomFields()), nullptr);
    EXPECT_EQ(document.GetTable(document.GetNrTables()), nullptr);
}

// ---- Constructors that read

TEST(cgatsDocument, fileConstructor_refusesAnEmptyName) {
    const TCgats document("");
    expectEmpty(document);
    EXPECT_EQ(document.GetErrorCode(), 2);
    EXPECT_STREQ(document.GetErrorMessage(), "Empty file name.");
}

TEST(cgatsDocument, fileConstructor_refusesAnAbsentName) {
    const TCgats document(static_cast<const char*>(nullptr));
    expectEmpty(document);
    EXPECT_EQ(document.GetErrorCode(), 2);
    EXPECT_STREQ(document.GetErrorMessage(), "Empty file name.");
}

TEST(cgatsDocument, fileConstructor_recordsAMissingFile) {
    const ScratchFolder folder;
    const TCgats document(folder.path("nothing here.txt").c_str());
    expectEmpty(document);
    EXPECT_EQ(document.GetErrorCode(), 3);
    EXPECT_STREQ(document.GetErrorMessage(), "The requested file could not be found.");
}

TEST(cgatsDocument, fileConstructor_readsTheFile) {
    const ScratchFolder folder;
    const std::string file = folder.write("chart.txt", tableText("LAB_L", 1, "50"));
    const TCgats document(file.c_str());
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_STREQ(document.GetErrorMessage(), "");
    ASSERT_EQ(document.GetNrTables(), 1);
    EXPECT_EQ(document.GetTable(0)->GetValues(0)->GetDouble(0), 50.0);
}

TEST(cgatsDocument, fileConstructor_recordsARefusal) {
    const ScratchFolder folder;
    const std::string file = folder.write("chart.txt", formatText("FOO"));
    const TCgats document(file.c_str());
    EXPECT_EQ(document.GetErrorCode(), 11);
    EXPECT_STREQ(document.GetErrorMessage(), "Unknown and undeclared header field type.");
}

TEST(cgatsDocument, textConstructor_readsTheText) {
    const TCgats document("CREATED \"today\"\n", 0);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_EQ(keywordsOf(document), Keywords{"CREATED"});
}

TEST(cgatsDocument, textConstructor_ignoresItsSecondArgument) {
    for (const int ignored : {-1, 0, 3, INT_MAX}) {
        const TCgats document("CREATED \"today\"\n", ignored);
        EXPECT_EQ(document.GetErrorCode(), 0);
        EXPECT_EQ(document.GetNrTags(), 1);
    }
}

TEST(cgatsDocument, textConstructor_recordsARefusal) {
    const TCgats document("BEGIN_DATA_FORMAT\nLAB_L\n", 0);
    EXPECT_EQ(document.GetErrorCode(), 9);
    EXPECT_STREQ(document.GetErrorMessage(), "END_DATA_FORMAT tag not found.");
}

TEST(cgatsDocument, textConstructor_recordsAnOverlongTokenWithoutMessage) {
    const TCgats document(repeated("K", 257).c_str(), 0);
    EXPECT_EQ(document.GetErrorCode(), -1);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

TEST(cgatsDocument, textConstructor_recordsOneForAnAbsentText) {
    const TCgats document(nullptr, 5);
    expectEmpty(document);
    EXPECT_EQ(document.GetErrorCode(), 1);
    EXPECT_STREQ(document.GetErrorMessage(), "Unknown error.");
}

TEST(cgatsDocument, nothing_isReported) {
    const ReportCollector reports;
    const TCgats noName("");
    const TCgats refused(formatText("FOO").c_str(), 0);
    refused.SetErrorCode(22);
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_TRUE(reports.warnings.empty());
}

// ---- Error state

constexpr char kThreeMessages[] = "Attempt to write empty tag."
                                  "Internal error: illegal table index."
                                  "Error adding layout info: layout info already present.";

// The fixed English messages, by code.
const char* const kMessages[] = {
    "No error.",
    "Unknown error.",
    "Empty file name.",
    "The requested file could not be found.",
    "Could not create or open the requested file for writing.",
    "Error while reading comment tag.",
    "Internal error: temporary header not initialized.",
    "The table header is empty.",
    "Internal error: attempt to map inks using an illegal ink map.",
    "END_DATA_FORMAT tag not found.",
    "Badly formatted header field.",
    "Unknown and undeclared header field type.",
    "Number of header fields found doesn't match number of header fields declared.",
    "Number of samples found doesn't match number of samples declared.",
    "The table header contains no data fields.",
    "The table contains no samples.",
    "The table contains a data type that is not supported.",
    "The custom color numbering in the table header is not consistent.",
    "Number of color coordinates not supported.",
    "No sample ID field provided in header.",
    "Not enough coordinate fields provided in header.",
    "Internal error: illegal tag index.",
    kThreeMessages,
    "",
    "",
};

TEST(cgatsErrorState, everyCode_hasItsMessage) {
    ASSERT_EQ(sizeof kMessages / sizeof kMessages[0], 25u);
    for (int code = 1; code <= 24; ++code) {
        const TCgats document;
        EXPECT_FALSE(document.SetErrorCode(code)) << code;
        EXPECT_EQ(document.GetErrorCode(), code);
        EXPECT_STREQ(document.GetErrorMessage(), kMessages[code]) << code;
    }
}

TEST(cgatsErrorState, zero_asksWhetherAnErrorIsRecorded) {
    const TCgats document;
    EXPECT_FALSE(document.SetErrorCode(0));
    EXPECT_FALSE(document.SetErrorCode(5));
    EXPECT_TRUE(document.SetErrorCode(0));
}

TEST(cgatsErrorState, zero_resetsNothing) {
    const TCgats document;
    document.SetErrorCode(5);
    document.SetErrorCode(0);
    EXPECT_EQ(document.GetErrorCode(), 5);
    EXPECT_STREQ(document.GetErrorMessage(), kMessages[5]);
}

TEST(cgatsErrorState, zero_leavesAGoodDocumentWithoutMessage) {
    const TCgats document;
    document.SetErrorCode(0);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

TEST(cgatsErrorState, negativeCode_leavesTheMessage) {
    const TCgats document;
    document.SetErrorCode(12);
    for (const int code : {-1, -25, INT_MIN}) {
        EXPECT_FALSE(document.SetErrorCode(code));
        EXPECT_EQ(document.GetErrorCode(), code);
        EXPECT_STREQ(document.GetErrorMessage(), kMessages[12]);
    }
}

TEST(cgatsErrorState, negativeCode_countsAsAnError) {
    const TCgats document;
    EXPECT_FALSE(document.SetErrorCode(-1));
    EXPECT_TRUE(document.SetErrorCode(0));
}

TEST(cgatsErrorState, codeAboveTheTable_leavesTheMessage) {
    const TCgats document;
    document.SetErrorCode(12);
    for (const int code : {25, 26, 27, 1000, INT_MAX}) {
        EXPECT_FALSE(document.SetErrorCode(code));
        EXPECT_EQ(document.GetErrorCode(), code);
        EXPECT_STREQ(document.GetErrorMessage(), kMessages[12]);
    }
}

TEST(cgatsErrorState, lastCode_replacesEarlierOnes) {
    const TCgats document;
    document.SetErrorCode(22);
    document.SetErrorCode(2);
    EXPECT_EQ(document.GetErrorCode(), 2);
    EXPECT_STREQ(document.GetErrorMessage(), "Empty file name.");
}

TEST(cgatsErrorState, code22_hasThreeMessagesRunTogether) {
    const TCgats document;
    document.SetErrorCode(22);
    EXPECT_EQ(std::strlen(document.GetErrorMessage()), 117u);
    EXPECT_STREQ(document.GetErrorMessage(), kThreeMessages);
}

TEST(cgatsErrorState, codes23And24_emptyTheMessage) {
    for (const int code : {23, 24}) {
        const TCgats document;
        document.SetErrorCode(22);
        document.SetErrorCode(code);
        EXPECT_EQ(document.GetErrorCode(), code);
        EXPECT_STREQ(document.GetErrorMessage(), "");
    }
}

TEST(cgatsErrorState, laterSuccess_doesNotClearIt) {
    TCgats document(formatText("FOO").c_str(), 0);
    ASSERT_EQ(document.GetErrorCode(), 11);
    EXPECT_EQ(document.ReadFromBuffer("CREATED \"today\"\n"), 0);
    EXPECT_EQ(document.SetNrSamples(1), 0);
    EXPECT_EQ(document.GetErrorCode(), 11);
    EXPECT_STREQ(document.GetErrorMessage(), kMessages[11]);
}

TEST(cgatsErrorState, tableErrors_mapToDocumentCodes) {
    const std::vector<std::pair<int, int>> mapping = {{1, 6},   {2, 14}, {3, 12}, {4, 15}, {5, 13},
                                                      {6, 16},  {7, 17}, {8, 19}, {9, 20}, {10, 1},
                                                      {11, 13}, {12, 7}, {13, 8}};
    for (const auto& [tableError, code] : mapping)
        EXPECT_EQ(TCgats::TableErrorToCgatsError(tableError), code) << tableError;
}

TEST(cgatsErrorState, tableErrorZero_mapsToUnknown) {
    EXPECT_EQ(TCgats::TableErrorToCgatsError(0), 1);
}

TEST(cgatsErrorState, tableErrorsOutsideTheTable_mapToUnknown) {
    for (const int tableError : {-1, 14, 15, 100, INT_MIN, INT_MAX})
        EXPECT_EQ(TCgats::TableErrorToCgatsError(tableError), 1) << tableError;
}

// ---- Small setters

TEST(cgatsDocument, setNrSamples_declaresTheSets) {
    TCgats document;
    EXPECT_EQ(document.SetNrSamples(12), 0);
    EXPECT_EQ(document.GetDeclaredNrSets(), 12);
    EXPECT_EQ(document.SetNrSamples(-3), 0);
    EXPECT_EQ(document.GetDeclaredNrSets(), -3);
}

TEST(cgatsDocument, addCustomField_keepsTheOrderOfDeclaration) {
    TCgats document;
    std::string name = "LOT";
    EXPECT_EQ(document.AddCustomField(name.c_str()), 0);
    name = "BOX";
    EXPECT_EQ(document.AddCustomField(name.c_str()), 0);
    EXPECT_EQ(document.AddCustomField("LOT"), 0);
    ASSERT_EQ(document.GetNrCustomFields(), 3);
    EXPECT_STREQ(document.GetCustomField(0), "LOT");
    EXPECT_STREQ(document.GetCustomField(1), "BOX");
    EXPECT_STREQ(document.GetCustomField(2), "LOT");
}

TEST(cgatsDocument, addCustomField_refusesAnAbsentOrEmptyName) {
    TCgats document;
    EXPECT_EQ(document.AddCustomField(nullptr), 1);
    EXPECT_EQ(document.AddCustomField(""), 1);
    EXPECT_EQ(document.GetNrCustomFields(), 0);
}

TEST(cgatsDocument, addCustomField_takesANameOfItsOwn) {
    TCgats document;
    document.AddCustomField("LOT");
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(document.AddCustomField(document.GetCustomField(0)), 0);
    EXPECT_STREQ(document.GetCustomField(100), "LOT");
}

TEST(cgatsDocument, initTmpHeader_makesThatManyEmptySlots) {
    TCgats document;
    EXPECT_EQ(document.InitTmpHeader(4), 0);
    ASSERT_NE(document.GetTmpHeader(), nullptr);
    EXPECT_EQ(document.GetTmpHeader()->GetNrFields(), 4);
    EXPECT_EQ(document.GetTmpHeader()->GetNrFilledFields(), 0);
    for (int slot = 0; slot < 4; ++slot)
        EXPECT_EQ(document.GetTmpHeader()->GetField(slot), nullptr);
}

TEST(cgatsDocument, initTmpHeader_replacesTheHeaderUnderConstruction) {
    TCgats document;
    document.InitTmpHeader(2);
    document.GetTmpHeader()->FillNextSlot(new TCgatsField(2, "LAB_L", 0, 0, 23));
    EXPECT_EQ(document.InitTmpHeader(5), 0);
    EXPECT_EQ(document.GetTmpHeader()->GetNrFields(), 5);
    EXPECT_EQ(document.GetTmpHeader()->GetNrFilledFields(), 0);
}

TEST(cgatsDocument, initTmpHeader_takesANegativeCountForZero) {
    TCgats document;
    for (const int count : {0, -1, INT_MIN}) {
        EXPECT_EQ(document.InitTmpHeader(count), 0);
        ASSERT_NE(document.GetTmpHeader(), nullptr);
        EXPECT_EQ(document.GetTmpHeader()->GetNrFields(), 0);
    }
}

TEST(cgatsDocument, initTmpHeader_costsNoMemoryForAClaim) {
    TCgats document;
    const std::int64_t before = addressSpacePages();
    EXPECT_EQ(document.InitTmpHeader(2000000000), 0);
    EXPECT_LT(addressSpacePages() - before, kManyPages);
    EXPECT_EQ(document.GetTmpHeader()->GetNrFields(), 2000000000);
}

// ---- Finding tags

TEST(cgatsTags, findTag_givesTheFirstOfACode) {
    TCgats document;
    appendAll(document, {"X", "CREATED", "Y", "CREATED"});
    EXPECT_EQ(document.FindTag(2), 1);
    EXPECT_EQ(document.FindTag(-1), 0);
    EXPECT_EQ(document.FindTag(0), -1);
    EXPECT_EQ(document.FindTag(INT_MAX), -1);
}

TEST(cgatsTags, findTag_inAnEmptyDocumentFindsNothing) {
    const TCgats document;
    EXPECT_EQ(document.FindTag(2), -1);
    EXPECT_EQ(document.FindTag(-1), -1);
}

TEST(cgatsTags, getTagByCode_givesTheFirst) {
    TCgats document;
    appendAll(document, {"X", "CREATED", "CREATED"});
    EXPECT_EQ(document.GetTag(2), document.GetTagAt(1));
    EXPECT_EQ(document.GetTag(0), nullptr);
}

TEST(cgatsTags, getTagByKeyword_ignoresCaseWhereMatchTagDoesNot) {
    const Reading reading("NUMBER_OF_SETS 4\n");
    const TCgatsTag* tag = reading.document.GetTag("number_of_sets");
    ASSERT_NE(tag, nullptr);
    EXPECT_EQ(tag->GetCode(), 23);
    EXPECT_EQ(reading.document.MatchTag("number_of_sets"), -1);
}

TEST(cgatsTags, getTagByKeyword_givesTheFirstAlsoOfUnknownKeywords) {
    TCgats document;
    appendAll(document, {"CREATED", "MyTag", "MYTAG"});
    EXPECT_EQ(document.GetTag("mytag"), document.GetTagAt(1));
    EXPECT_EQ(document.GetTag("MYTA"), nullptr);
    EXPECT_EQ(document.GetTag("MYTAGS"), nullptr);
}

TEST(cgatsTags, getTagByKeyword_passesTagsWithoutOne) {
    const Reading reading("# a comment\nCREATED x\n");
    ASSERT_EQ(reading.document.GetNrTags(), 2);
    EXPECT_EQ(reading.document.GetTag("created"), reading.document.GetTagAt(1));
    EXPECT_EQ(reading.document.GetTag(""), nullptr);
}

TEST(cgatsTags, absentKeyword_isFoundNowhere) {
    const Reading reading("CREATED x\n");
    EXPECT_EQ(reading.document.GetTag(static_cast<const char*>(nullptr)), nullptr);
    EXPECT_EQ(reading.document.MatchTag(nullptr), -1);
}

// ---- Inserting tags

TEST(cgatsInsertTag, storesAllParts) {
    TCgats document;
    EXPECT_EQ(document.InsertTag(2, "CREATED", 1, "today", "a note", -1, false), 0);
    const TCgatsTag& tag = *document.GetTagAt(0);
    EXPECT_EQ(tag.GetCode(), 2);
    EXPECT_NE(tag.GetNumeric(), 0);
    EXPECT_STREQ(tag.GetKeyword(), "CREATED");
    EXPECT_STREQ(tag.GetValue(), "today");
    EXPECT_STREQ(tag.GetComment(), "a note");
}

TEST(cgatsInsertTag, absentKeyword_storesTheCodeAlone) {
    TCgats document;
    EXPECT_EQ(document.InsertTag(2, nullptr, 1, "today", "a note", -1, false), 0);
    ASSERT_EQ(document.GetNrTags(), 1);
    EXPECT_EQ(document.GetTagAt(0)->GetCode(), 2);
    EXPECT_EQ(document.GetTagAt(0)->GetKeyword(), nullptr);
}

TEST(cgatsInsertTag, absentTexts_areEmpty) {
    TCgats document;
    EXPECT_EQ(document.InsertTag(2, "CREATED", 0, nullptr, nullptr, -1, false), 0);
    EXPECT_STREQ(document.GetTagAt(0)->GetValue(), "");
    EXPECT_STREQ(document.GetTagAt(0)->GetComment(), "");
}

TEST(cgatsInsertTag, takesTheTextsOfTheTagThatItReplaces) {
    TCgats document;
    document.InsertTag(2, "CREATED", 0, "today", "a note", -1, false);
    const TCgatsTag& old = *document.GetTagAt(0);
    EXPECT_EQ(document.InsertTag(2, old.GetKeyword(), 1, old.GetValue(), old.GetComment(), 0, true), 0);
    ASSERT_EQ(document.GetNrTags(), 1);
    EXPECT_STREQ(document.GetTagAt(0)->GetKeyword(), "CREATED");
    EXPECT_STREQ(document.GetTagAt(0)->GetValue(), "today");
    EXPECT_STREQ(document.GetTagAt(0)->GetComment(), "a note");
}

TEST(cgatsInsertTag, withoutFieldCount_negativePositionAppends) {
    TCgats document;
    appendAll(document, {"A", "B"});
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", -1, false), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"A", "B", "N"}));
}

TEST(cgatsInsertTag, withoutFieldCount_positionAtOrBehindTheEndAppends) {
    for (const int position : {2, 3, INT_MAX}) {
        TCgats document;
        appendAll(document, {"A", "B"});
        EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", position, false), 0);
        EXPECT_EQ(keywordsOf(document), (Keywords{"A", "B", "N"}));
    }
}

TEST(cgatsInsertTag, withoutFieldCount_appendsAlsoWithReplace) {
    for (const int position : {-1, INT_MIN, 2, INT_MAX}) {
        TCgats document;
        appendAll(document, {"A", "B"});
        EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", position, true), 0);
        EXPECT_EQ(keywordsOf(document), (Keywords{"A", "B", "N"}));
    }
}

TEST(cgatsInsertTag, withoutFieldCount_insertsBeforeThePosition) {
    TCgats document;
    appendAll(document, {"A", "B"});
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", 0, false), 0);
    EXPECT_EQ(document.InsertTag(-1, "M", 0, "", "", 2, false), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"N", "A", "M", "B"}));
}

TEST(cgatsInsertTag, withoutFieldCount_replacesAtThePosition) {
    TCgats document;
    appendAll(document, {"A", "B"});
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", 1, true), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"A", "N"}));
}

TEST(cgatsInsertTag, withFieldCount_negativePositionGoesRightBeforeIt) {
    TCgats document;
    appendAll(document, {"A", "NUMBER_OF_FIELDS", "B"});
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", -1, false), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"A", "N", "NUMBER_OF_FIELDS", "B"}));
}

TEST(cgatsInsertTag, withFieldCount_laterPositionGoesRightBeforeIt) {
    for (const int position : {1, 2, 3, INT_MAX}) {
        TCgats document;
        appendAll(document, {"A", "NUMBER_OF_FIELDS", "B"});
        EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", position, false), 0);
        EXPECT_EQ(keywordsOf(document), (Keywords{"A", "N", "NUMBER_OF_FIELDS", "B"}));
    }
}

TEST(cgatsInsertTag, withFieldCount_earlierPositionStands) {
    TCgats document;
    appendAll(document, {"A", "NUMBER_OF_FIELDS", "B"});
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", 0, false), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"N", "A", "NUMBER_OF_FIELDS", "B"}));
}

TEST(cgatsInsertTag, withFieldCountAndReplace_replacesThatTagForANegativePosition) {
    TCgats document;
    appendAll(document, {"A", "NUMBER_OF_FIELDS", "B"});
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", -1, true), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"A", "N", "B"}));
}

TEST(cgatsInsertTag, withTwoFieldCounts_theFirstDecides) {
    TCgats document;
    appendAll(document, {"NUMBER_OF_FIELDS", "A"});
    ASSERT_EQ(document.InsertTag(3, "NUMBER_OF_FIELDS", 1, "4", "", -1, false), 0);
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", 5, false), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"N", "NUMBER_OF_FIELDS", "NUMBER_OF_FIELDS", "A"}));
    EXPECT_STREQ(document.GetTagAt(1)->GetValue(), "4");
}

TEST(cgatsInsertTag, theCodeMarksAFieldCount) {
    TCgats document;
    ASSERT_EQ(document.InsertTag(-1, "NUMBER_OF_FIELDS", 0, "", "", -1, false), 0);
    ASSERT_EQ(document.InsertTag(3, "OTHER", 0, "", "", -1, false), 0);
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", -1, false), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"NUMBER_OF_FIELDS", "N", "OTHER"}));
}

// Every list of up to four tags, field count at every place or nowhere, every position, beside a model of the
// list.
TEST(cgatsInsertTag, everySmallCase_followsTheRules) {
    for (int count = 0; count <= 4; ++count)
        for (int fieldCount = -1; fieldCount < count; ++fieldCount)
            for (int position = -2; position <= count + 2; ++position)
                for (const bool replace : {false, true}) {
                    Keywords list;
                    for (int i = 0; i < count; ++i)
                        list.push_back(i == fieldCount ? "NUMBER_OF_FIELDS"
                                                       : std::string(1, static_cast<char>('A' + i)));
                    TCgats document;
                    appendAll(document, list);

                    const bool outside = position < 0 || position >= count;
                    const int target = fieldCount < 0                          ? position
                                       : position < 0 || position > fieldCount ? fieldCount
                                                                               : position;
                    if (fieldCount < 0 && outside)
                        list.push_back("N");
                    else if (replace)
                        list[static_cast<std::size_t>(target)] = "N";
                    else
                        list.insert(list.begin() + target, "N");

                    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", position, replace), 0);
                    EXPECT_EQ(keywordsOf(document), list)
                        << count << " tags, field count at " << fieldCount << ", position " << position;
                }
}

TEST(cgatsInsertTag, takes128Tags) {
    TCgats document;
    for (int i = 0; i < 128; ++i)
        ASSERT_EQ(document.InsertTag(-1, std::to_string(i).c_str(), 0, "", "", -1, false), 0) << i;
    EXPECT_EQ(document.GetNrTags(), 128);
    EXPECT_STREQ(document.GetTagAt(127)->GetKeyword(), "127");
}

TEST(cgatsInsertTag, the129thTag_isRefused) {
    TCgats document;
    appendAll(document, Keywords(128, "A"));
    for (const int position : {-1, 0, 64, 127, 128, INT_MAX})
        EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", position, false), 1) << position;
    EXPECT_EQ(keywordsOf(document), Keywords(128, "A"));
}

TEST(cgatsInsertTag, fullList_refusesReplacementToo) {
    TCgats document;
    appendAll(document, Keywords(128, "A"));
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", 0, true), 1);
    EXPECT_EQ(keywordsOf(document), Keywords(128, "A"));
}

TEST(cgatsInsertTag, fullListWithFieldCount_refuses) {
    TCgats document;
    appendAll(document, Keywords(127, "A"));
    ASSERT_EQ(document.InsertTag(3, "NUMBER_OF_FIELDS", 1, "2", "", 0, false), 0);
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", -1, false), 1);
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", -1, true), 1);
    EXPECT_EQ(document.GetNrTags(), 128);
    EXPECT_EQ(document.FindTag(3), 0);
}

TEST(cgatsInsertTag, the127thPlace_takesOneMoreBeforeTheEnd) {
    TCgats document;
    appendAll(document, Keywords(127, "A"));
    EXPECT_EQ(document.InsertTag(-1, "N", 0, "", "", 0, false), 0);
    EXPECT_EQ(document.GetNrTags(), 128);
    EXPECT_STREQ(document.GetTagAt(0)->GetKeyword(), "N");
    EXPECT_STREQ(document.GetTagAt(127)->GetKeyword(), "A");
}

} // namespace
} // namespace qxcms::tests
