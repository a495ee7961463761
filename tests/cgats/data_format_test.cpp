// The field list between "BEGIN_DATA_FORMAT" and "END_DATA_FORMAT".
#include <climits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

using Names = std::vector<std::string>;
using Keywords = std::vector<std::string>;

Names fieldsOf(const Reading& reading) {
    const TCgatsTableHeader* header = reading.document.GetTmpHeader();
    return header == nullptr ? Names{"(no header)"} : namesOf(*header);
}

Names fields(const std::string& text) {
    const Reading reading(text);
    EXPECT_EQ(reading.code, 0) << text;
    return fieldsOf(reading);
}

void expectRefused(const std::string& text, int code, const char* message) {
    const TCgats document(text.c_str(), 0);
    EXPECT_EQ(document.GetErrorCode(), code) << text;
    EXPECT_STREQ(document.GetErrorMessage(), message) << text;
    EXPECT_EQ(document.GetNrTables(), 0);
}

void expectNoEnd(const std::string& text) {
    expectRefused(text, 9, "END_DATA_FORMAT tag not found.");
}
void expectBadField(const std::string& text) {
    expectRefused(text, 10, "Badly formatted header field.");
}
void expectUnknown(const std::string& text) {
    expectRefused(text, 11, "Unknown and undeclared header field type.");
}
void expectTooFew(const std::string& text) {
    expectRefused(text, 12, "Number of header fields found doesn't match number of header fields declared.");
}

// ---- Tokens

TEST(dataFormat, fields_areTakenInOrder) {
    EXPECT_EQ(fields(formatText("LAB_L LAB_B LAB_A")), (Names{"LAB_L", "LAB_B", "LAB_A"}));
}

TEST(dataFormat, descriptions_holdTheClassification) {
    const Reading reading("KEYWORD LOT\nKEYWORD BOX\n" + formatText("BOX nm390 SPOT_3 LAB_A"));
    ASSERT_EQ(reading.code, 0);
    struct Expected {
        int dataType, number, kind, fieldId;
        const char* name;
    };
    const Expected expected[] = {
        {0, 0, 1, 1, "BOX"}, {2, 390, 2, 0, "nm390"}, {2, 2, 5, 0, "SPOT_3"}, {2, 0, 0, 24, "LAB_A"}};
    for (int i = 0; i < 4; ++i) {
        const TCgatsField& field = *reading.document.GetTmpHeader()->GetField(i);
        EXPECT_STREQ(field.GetName(), expected[i].name);
        EXPECT_EQ(field.GetDataType(), expected[i].dataType);
        EXPECT_EQ(field.GetNumber(), expected[i].number);
        EXPECT_EQ(field.GetKind(), expected[i].kind);
        EXPECT_EQ(field.GetFieldId(), expected[i].fieldId);
        EXPECT_EQ(field.GetBad(), 0);
    }
}

TEST(dataFormat, names_areKeptInTheirCanonicalSpelling) {
    EXPECT_EQ(fields("KEYWORD Lot\n" + formatText("lab_l LOT nm380")), (Names{"LAB_L", "Lot", "nm380"}));
}

TEST(dataFormat, lineStructure_doesNotMatter) {
    const Names expected = {"LAB_L", "LAB_A", "LAB_B"};
    EXPECT_EQ(fields(formatText("LAB_L\nLAB_A\nLAB_B")), expected);
    EXPECT_EQ(fields(formatText("\n\n LAB_L\t \tLAB_A\r\n\r\rLAB_B \n\n")), expected);
    EXPECT_EQ(fields("BEGIN_DATA_FORMAT\r\nLAB_L LAB_A\r\nLAB_B\r\nEND_DATA_FORMAT\r\n"), expected);
    EXPECT_EQ(fields("BEGIN_DATA_FORMAT\rLAB_L LAB_A\rLAB_B\rEND_DATA_FORMAT\r"), expected);
    EXPECT_EQ(fields("BEGIN_DATA_FORMAT\nLAB_L LAB_A LAB_B END_DATA_FORMAT\n"), expected);
}

TEST(dataFormat, restOfTheOpeningLine_isItsValue) {
    const Reading reading("BEGIN_DATA_FORMAT LAB_L LAB_A\nLAB_B\nEND_DATA_FORMAT\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(fieldsOf(reading), Names{"LAB_B"});
    EXPECT_STREQ(reading.document.GetTagAt(0)->GetValue(), "LAB_LLAB_A");
}

TEST(dataFormat, hash_skipsToTheEndOfTheLine) {
    EXPECT_EQ(fields(formatText("LAB_L # LAB_A FOO \"\nLAB_B")), (Names{"LAB_L", "LAB_B"}));
    EXPECT_EQ(fields(formatText("# nothing\r\nLAB_B")), Names{"LAB_B"});
    EXPECT_EQ(fields(formatText("#FOO\rLAB_B")), Names{"LAB_B"});
}

TEST(dataFormat, hashInMidToken_endsIt) {
    EXPECT_EQ(fields(formatText("LAB_L#LAB_A FOO\nLAB_B")), (Names{"LAB_L", "LAB_B"}));
}

TEST(dataFormat, endInAComment_isNone) {
    expectNoEnd("BEGIN_DATA_FORMAT\nLAB_L\n# END_DATA_FORMAT\n");
}

TEST(dataFormat, quotesAroundANameAreDropped) {
    EXPECT_EQ(fields(formatText("\"LAB_L\" \"LAB_A LAB_B\"")), (Names{"LAB_L", "LAB_A", "LAB_B"}));
}

TEST(dataFormat, anyNumberOfQuotesMayLead) {
    EXPECT_EQ(fields(formatText("\"\"\"LAB_L \"\"LAB_A\"")), (Names{"LAB_L", "LAB_A"}));
}

TEST(dataFormat, onlyOneClosingQuoteIsDropped) {
    expectUnknown(formatText("LAB_L\"\""));
}

TEST(dataFormat, quoteInMidToken_belongsToIt) {
    expectUnknown(formatText("LAB\"_L"));
}

TEST(dataFormat, quotesDoNotHoldBlanksTogether) {
    expectUnknown("KEYWORD \"MY LOT\"\n" + formatText("\"MY LOT\""));
}

TEST(dataFormat, quotesAlone_areNoField) {
    EXPECT_EQ(fields(formatText("\"\" LAB_L \" \"\"\" LAB_A")), (Names{"LAB_L", "LAB_A"}));
    EXPECT_EQ(fields(formatText("\" LAB_L \"")), Names{"LAB_L"});
}

TEST(dataFormat, quotesAlone_fillNoSlot) {
    EXPECT_EQ(fields("NUMBER_OF_FIELDS 1\n" + formatText("\"\" LAB_L")), Names{"LAB_L"});
    expectTooFew("NUMBER_OF_FIELDS 2\n" + formatText("\"\" LAB_L"));
}

TEST(dataFormat, otherControlCharacters_belongToTheToken) {
    expectUnknown(formatText("LAB_L\x01"));
    expectUnknown(formatText("LAB_L\vLAB_A"));
    expectUnknown(formatText("\fLAB_A"));
}

TEST(dataFormat, declaredNames_areMatchedHoweverLong) {
    const std::string name = repeated("N", 4096);
    EXPECT_EQ(fields("KEYWORD " + name + "\n" + formatText(name + " LAB_L")), (Names{name, "LAB_L"}));
}

// ---- The end of the list

TEST(dataFormat, endKeyword_isAnOrdinaryTag) {
    const Reading reading("BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT and more # note\nCREATED x\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(fieldsOf(reading), Names{"LAB_L"});
    EXPECT_EQ(keywordsOf(reading.document), (Keywords{"BEGIN_DATA_FORMAT", "END_DATA_FORMAT", "CREATED"}));
    EXPECT_EQ(reading.document.GetTagAt(0)->GetCode(), 4);
    EXPECT_EQ(reading.document.GetTagAt(1)->GetCode(), 5);
    EXPECT_STREQ(reading.document.GetTagAt(1)->GetValue(), "andmore");
    EXPECT_STREQ(reading.document.GetTagAt(1)->GetComment(), " note");
}

TEST(dataFormat, endKeyword_mayBeFollowedByAnyBlankOrLineEnd) {
    for (const char* behind : {" ", "\t", "\n", "\r"})
        EXPECT_EQ(fields(std::string("BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT") + behind), Names{"LAB_L"});
}

TEST(dataFormat, endKeywordAsLastCharacters_isNotFound) {
    expectNoEnd("BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT");
    expectNoEnd("NUMBER_OF_FIELDS 1\nBEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT");
}

TEST(dataFormat, endKeyword_countsItsCase) {
    expectUnknown("BEGIN_DATA_FORMAT\nLAB_L\nend_data_format\n");
    expectUnknown("BEGIN_DATA_FORMAT\nLAB_L\nEnd_Data_Format\nEND_DATA_FORMAT\n");
}

TEST(dataFormat, endKeywordInQuotes_isAnOrdinaryName) {
    expectUnknown(formatText("LAB_L \"END_DATA_FORMAT\""));
    EXPECT_EQ(fields("KEYWORD END_DATA_FORMAT\n" + formatText("LAB_L \"END_DATA_FORMAT\" LAB_A")),
              (Names{"LAB_L", "END_DATA_FORMAT", "LAB_A"}));
}

TEST(dataFormat, endKeyword_isAWholeToken) {
    expectUnknown("BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMATS\nEND_DATA_FORMAT\n");
    expectUnknown("BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA\nEND_DATA_FORMAT\n");
}

TEST(dataFormat, endOfTheText_gives9) {
    expectNoEnd("BEGIN_DATA_FORMAT");
    expectNoEnd("BEGIN_DATA_FORMAT\n");
    expectNoEnd("BEGIN_DATA_FORMAT\nLAB_L LAB_A\n");
    expectNoEnd("BEGIN_DATA_FORMAT\nLAB_L # END_DATA_FORMAT");
    expectNoEnd("BEGIN_DATA_FORMAT\n\"\"\"");
}

TEST(dataFormat, unfinishedToken_isNotClassified) {
    expectNoEnd("BEGIN_DATA_FORMAT\nLAB_L\nFOO");
    expectNoEnd("NUMBER_OF_FIELDS 1\nBEGIN_DATA_FORMAT\nLAB_L\nLAB_A");
}

// ---- Unknown names

TEST(dataFormat, unknownName_gives11) {
    expectUnknown(formatText("FOO"));
    expectUnknown(formatText("LAB_L FOO LAB_A"));
    expectUnknown(formatText("XYY_CAPY"));
    expectUnknown(formatText("nm-5"));
}

TEST(dataFormat, nameDeclaredLater_isUnknown) {
    expectUnknown(formatText("LOT") + "KEYWORD LOT\n");
}

TEST(dataFormat, firstFault_decides) {
    expectUnknown("NUMBER_OF_FIELDS 3\n" + formatText("FOO"));
    expectUnknown("NUMBER_OF_FIELDS 1\n" + formatText("LAB_L FOO")); // before the missing slot
    expectUnknown("BEGIN_DATA_FORMAT\nFOO\n");                       // before the missing end
    expectBadField("NUMBER_OF_FIELDS 1\n" + formatText("LAB_L LAB_A FOO"));
}

// ---- Declared and undeclared mode

TEST(dataFormat, undeclaredMode_grows) {
    const Reading reading(formatText(repeated("LAB_L ", 1000)));
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetTmpHeader()->GetNrFields(), 1000);
    EXPECT_EQ(reading.document.GetTmpHeader()->GetNrFilledFields(), 1000);
}

TEST(dataFormat, undeclaredMode_acceptsAnEmptyList) {
    EXPECT_EQ(fields("BEGIN_DATA_FORMAT\nEND_DATA_FORMAT\n"), Names{});
}

TEST(dataFormat, declaredMode_fillsTheSlots) {
    const Reading reading("NUMBER_OF_FIELDS 2\n" + formatText("LAB_L LAB_A"));
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(fieldsOf(reading), (Names{"LAB_L", "LAB_A"}));
    EXPECT_EQ(reading.document.GetTmpHeader()->GetNrFields(), 2);
}

TEST(dataFormat, declaredMode_refusesAFieldTooMany) {
    expectBadField("NUMBER_OF_FIELDS 2\n" + formatText("LAB_L LAB_A LAB_B"));
}

TEST(dataFormat, declaredMode_refusesAFieldTooFew) {
    expectTooFew("NUMBER_OF_FIELDS 3\n" + formatText("LAB_L LAB_A"));
    expectTooFew("NUMBER_OF_FIELDS 1\n" + formatText(""));
}

TEST(dataFormat, declaredCount_isReadLikeAtoi) {
    EXPECT_EQ(fields("NUMBER_OF_FIELDS \"2\"\n" + formatText("LAB_L LAB_A")).size(), 2u);
    EXPECT_EQ(fields("NUMBER_OF_FIELDS 2columns\n" + formatText("LAB_L LAB_A")).size(), 2u);
    EXPECT_EQ(fields("NUMBER_OF_FIELDS +2\n" + formatText("LAB_L LAB_A")).size(), 2u);
    EXPECT_EQ(fields("NUMBER_OF_FIELDS 1 0\n" + formatText(repeated("LAB_L ", 10))).size(), 10u);
}

TEST(dataFormat, declaredZero_holdsNoField) {
    EXPECT_EQ(fields("NUMBER_OF_FIELDS 0\n" + formatText("")), Names{});
    EXPECT_EQ(fields("NUMBER_OF_FIELDS none\n" + formatText("")), Names{});
    EXPECT_EQ(fields("NUMBER_OF_FIELDS\n" + formatText("")), Names{});
    expectBadField("NUMBER_OF_FIELDS 0\n" + formatText("LAB_L"));
}

TEST(dataFormat, declaredNegative_isZero) {
    for (const char* count : {"-1", "-2147483648", "-99999999999"}) {
        const std::string declaration = std::string("NUMBER_OF_FIELDS ") + count + "\n";
        EXPECT_EQ(fields(declaration), Names{});
        EXPECT_EQ(fields(declaration + formatText("")), Names{});
        expectBadField(declaration + formatText("LAB_L"));
    }
}

TEST(dataFormat, declaredNegative_isKeptAsWrittenInItsTag) {
    const Reading reading("NUMBER_OF_FIELDS -5\n");
    EXPECT_STREQ(reading.document.GetTagAt(0)->GetValue(), "-5");
}

TEST(dataFormat, hugeDeclaredCount_isAnsweredAtOnce) {
    for (const char* count : {"2000000000", "2147483647", "99999999999"}) {
        const std::int64_t before = addressSpacePages();
        const Stopwatch watch;
        const Reading reading(std::string("NUMBER_OF_FIELDS ") + count + "\n" + formatText("LAB_L LAB_A"));
        EXPECT_EQ(reading.code, 12) << count;
        EXPECT_LT(watch.seconds(), 0.1);
        EXPECT_LT(addressSpacePages() - before, kManyPages);
    }
}

TEST(dataFormat, laterFieldCount_replacesTheHeader) {
    EXPECT_EQ(fields("NUMBER_OF_FIELDS 5\nNUMBER_OF_FIELDS 1\n" + formatText("LAB_L")), Names{"LAB_L"});
    EXPECT_EQ(fields(formatText("LAB_L LAB_A") + "NUMBER_OF_FIELDS 1\n"), Names{"(empty)"});
    EXPECT_EQ(fields(formatText("LAB_L LAB_A") + "NUMBER_OF_FIELDS 1\n" + formatText("LAB_B")),
              Names{"LAB_B"});
}

TEST(dataFormat, secondListWhileAHeaderIsPending_hasNoSlotLeft) {
    expectBadField(formatText("LAB_L") + formatText("LAB_A"));
    expectBadField("NUMBER_OF_FIELDS 1\n" + formatText("LAB_L") + formatText("LAB_A"));
    expectBadField(formatText("") + formatText("LAB_A"));
}

TEST(dataFormat, secondListWhileAHeaderIsPending_mustHoldItsCountOfFields) {
    expectTooFew(formatText("LAB_L") + formatText(""));
    expectTooFew("NUMBER_OF_FIELDS 1\n" + formatText("LAB_L") + formatText(""));
    EXPECT_EQ(fields(formatText("") + formatText("")), Names{});
}

TEST(dataFormat, listAfterARefusal_fillsTheSlotsThatAreLeft) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer(("NUMBER_OF_FIELDS 2\n" + formatText("LAB_L FOO")).c_str()), 11);
    // One field was read, two were declared.
    EXPECT_EQ(document.ReadFromBuffer(formatText("LAB_A").c_str()), 12);
    EXPECT_EQ(namesOf(*document.GetTmpHeader()), (Names{"LAB_L", "LAB_A"}));
}

// ---- After a refusal

TEST(dataFormat, refusal_leavesTagsAndStoresNotTheOpeningOne) {
    const Reading reading("CREATED x\nKEYWORD LOT\n" + formatText("LOT FOO"));
    EXPECT_EQ(reading.code, 11);
    EXPECT_EQ(keywordsOf(reading.document), (Keywords{"CREATED", "KEYWORD"}));
    EXPECT_EQ(reading.document.GetNrCustomFields(), 1);
}

TEST(dataFormat, documentReadsOnAfterARefusal) {
    for (const std::string& bad : {formatText("LAB_L FOO"), "NUMBER_OF_FIELDS 9\n" + formatText("LAB_L"),
                                   std::string("BEGIN_DATA_FORMAT\nLAB_L\n")}) {
        Reading reading(bad);
        EXPECT_NE(reading.code, 0);
        EXPECT_EQ(
            reading.document.ReadFromBuffer(("NUMBER_OF_FIELDS 1\n" + tableText("LAB_A", 1, "5")).c_str()),
            0);
        EXPECT_EQ(reading.document.GetNrTables(), 1);
    }
}

// ---- The block reader by itself

TEST(dataFormat, readTmpHeader_movesToTheEndKeyword) {
    TCgats document;
    const std::string text = " LAB_L LAB_A END_DATA_FORMAT x\n";
    const char* position = text.c_str();
    EXPECT_EQ(document.ReadTmpHeader(&position), 0);
    EXPECT_EQ(position - text.c_str(), 13);
    EXPECT_EQ(namesOf(*document.GetTmpHeader()), (Names{"LAB_L", "LAB_A"}));
}

TEST(dataFormat, readTmpHeader_makesAHeaderWhenThereIsNone) {
    TCgats document;
    const char* position = "END_DATA_FORMAT\n";
    EXPECT_EQ(document.ReadTmpHeader(&position), 0);
    ASSERT_NE(document.GetTmpHeader(), nullptr);
    EXPECT_EQ(document.GetTmpHeader()->GetNrFields(), 0);
}

TEST(dataFormat, readTmpHeader_answersTheCodeAndRecordsNothing) {
    TCgats document;
    const char* position = "FOO END_DATA_FORMAT\n";
    EXPECT_EQ(document.ReadTmpHeader(&position), 11);
    EXPECT_EQ(document.GetErrorCode(), 0);
}

TEST(dataFormat, readTmpHeader_gives2ForNull) {
    TCgats document;
    const char* nowhere = nullptr;
    EXPECT_EQ(document.ReadTmpHeader(nullptr), 2);
    EXPECT_EQ(document.ReadTmpHeader(&nowhere), 2);
}

} // namespace
} // namespace qxcms::tests
