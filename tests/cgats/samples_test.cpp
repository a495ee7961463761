// The samples between "BEGIN_DATA" and "END_DATA".
#include <climits>
#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

using Keywords = std::vector<std::string>;

// A column of the only table, as numbers.
std::vector<double> numbers(const TCgats& document, int column, int table = 0) {
    std::vector<double> values;
    if (document.GetTable(table) == nullptr)
        return values;
    for (int row = 0; row < document.GetTable(table)->GetNrRowsStored(); ++row)
        values.push_back(document.GetTable(table)->GetValues(column)->GetDouble(row));
    return values;
}

// A column of the only table, as texts.
std::vector<std::string> texts(const TCgats& document, int column, int table = 0) {
    std::vector<std::string> values;
    if (document.GetTable(table) == nullptr)
        return values;
    for (int row = 0; row < document.GetTable(table)->GetNrRowsStored(); ++row)
        values.push_back(orAbsent(document.GetTable(table)->GetValues(column)->GetString(row)));
    return values;
}

using Numbers = std::vector<double>;
using Texts = std::vector<std::string>;

// The only value of a table of one floating-point column.
double number(const std::string& sample) {
    const Reading reading(tableText("LAB_L", 1, sample));
    EXPECT_EQ(reading.code, 0) << sample;
    return reading.code == 0 ? numbers(reading.document, 0)[0] : -999.0;
}

// The only value of a table of one string column.
std::string text(const std::string& sample) {
    const Reading reading(tableText("STRING", 1, sample));
    EXPECT_EQ(reading.code, 0) << sample;
    return reading.code == 0 ? texts(reading.document, 0)[0] : "(refused)";
}

void expectRefused(const std::string& document, int code, const char* message) {
    const TCgats refused(document.c_str(), 0);
    EXPECT_EQ(refused.GetErrorCode(), code) << document.substr(0, 200);
    EXPECT_STREQ(refused.GetErrorMessage(), message);
    EXPECT_EQ(refused.GetNrTables(), 0);
}

void expectNoHeader(const std::string& document) {
    expectRefused(document, 6, "Internal error: temporary header not initialized.");
}
void expectCutShort(const std::string& document) {
    expectRefused(document, 1, "Unknown error.");
}

// ---- Rows and values

TEST(cgatsSamples, rows_areStoredInOrder) {
    const Reading reading(tableText("SAMPLE_ID LAB_L LAB_A", 3, "a 1 2\nb 3 4\nc 5 6"));
    ASSERT_EQ(reading.code, 0);
    ASSERT_EQ(reading.document.GetNrTables(), 1);
    EXPECT_EQ(reading.document.GetTable(0)->GetNrRowsStored(), 3);
    EXPECT_EQ(texts(reading.document, 0), (Texts{"a", "b", "c"}));
    EXPECT_EQ(numbers(reading.document, 1), (Numbers{1, 3, 5}));
    EXPECT_EQ(numbers(reading.document, 2), (Numbers{2, 4, 6}));
}

TEST(cgatsSamples, header_learnsItsNumberOfSamples) {
    const Reading reading(tableText("LAB_L", 2, "1 2"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetTable(0)->GetHeader()->GetNrSamples(), 2);
    EXPECT_TRUE(reading.document.GetTable(0)->GetHeader()->IsClassified());
}

TEST(cgatsSamples, lineStructure_doesNotMatter) {
    for (const char* samples :
         {"1 2 3\n4 5 6", "1 2 3 4 5 6", "1\n2\n3\n4\n5\n6", "\n\n1\t2 \t3\r\n4\r5\r\r6 ", "1 2\n3 4\n5 6"}) {
        const Reading reading(tableText("LAB_L LAB_A LAB_B", 2, samples));
        ASSERT_EQ(reading.code, 0) << samples;
        EXPECT_EQ(numbers(reading.document, 0), (Numbers{1, 4}));
        EXPECT_EQ(numbers(reading.document, 1), (Numbers{2, 5}));
        EXPECT_EQ(numbers(reading.document, 2), (Numbers{3, 6}));
    }
}

TEST(cgatsSamples, restOfTheOpeningLine_isItsValue) {
    const Reading reading(formatText("LAB_L") + "NUMBER_OF_SETS 1\nBEGIN_DATA 7 8 # note\n9\nEND_DATA\n");
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(numbers(reading.document, 0), Numbers{9});
    const TCgatsTag* begin = reading.document.GetTag(24);
    ASSERT_NE(begin, nullptr);
    EXPECT_STREQ(begin->GetValue(), "78");
    EXPECT_STREQ(begin->GetComment(), " note");
}

TEST(cgatsSamples, hash_hasNoMeaning) {
    EXPECT_EQ(text("#"), "#");
    EXPECT_EQ(text("a#b"), "a#b");
    const Reading reading(tableText("STRING", 3, "# a\nb#"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(texts(reading.document, 0), (Texts{"#", "a", "b#"}));
}

TEST(cgatsSamples, otherControlCharacters_belongToTheValue) {
    EXPECT_EQ(text("a\v\f\x01"
                   "b"),
              "a\v\f\x01"
              "b");
}

TEST(cgatsSamples, numbers_areReadLikeAtof) {
    EXPECT_EQ(number("+1.5"), 1.5);
    EXPECT_EQ(number("-1e-2"), -0.01);
    EXPECT_EQ(number("12abc"), 12.0);
    EXPECT_EQ(number("n/a"), 0.0);
    EXPECT_EQ(number("-"), 0.0);
    EXPECT_EQ(number("1e999"), std::numeric_limits<double>::infinity());
}

// ---- Quotes

TEST(cgatsSamples, quotedValue_holdsSeparators) {
    EXPECT_EQ(text("\"dark red\""), "dark red");
    EXPECT_EQ(text("\" a\tb\r\nc \""), " a\tb\r\nc ");
}

TEST(cgatsSamples, quotedValue_knowsNoEscapes) {
    const Reading reading(tableText("STRING STRING", 1, "\"a\\\" b"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(texts(reading.document, 0), Texts{"a\\"});
    EXPECT_EQ(texts(reading.document, 1), Texts{"b"});
}

TEST(cgatsSamples, behindAClosingQuote_theNextValueBegins) {
    const Reading reading(tableText("STRING STRING STRING STRING", 1, "\"a\"b\"c \"d\"\"\""));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(texts(reading.document, 0), Texts{"a"});
    EXPECT_EQ(texts(reading.document, 1), Texts{"b\"c"});
    EXPECT_EQ(texts(reading.document, 2), Texts{"d"});
    EXPECT_EQ(texts(reading.document, 3), Texts{""});
}

TEST(cgatsSamples, quotedKeyword_isAValue) {
    EXPECT_EQ(text("\"END_DATA\""), "END_DATA");
}

TEST(cgatsSamples, emptyQuotes_areAnEmptyValue) {
    EXPECT_EQ(text("\"\""), "");
    EXPECT_EQ(number("\"\""), 0.0);
}

TEST(cgatsSamples, quoteInMidValue_belongsToIt) {
    EXPECT_EQ(text("a\"b\""), "a\"b\"");
    EXPECT_EQ(text("5\""), "5\"");
}

TEST(cgatsSamples, quotedNumber_isANumber) {
    EXPECT_EQ(number("\"1.5\""), 1.5);
}

TEST(cgatsSamples, unterminatedQuotedValue_gives1) {
    expectCutShort(formatText("STRING") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n\"abc");
    expectCutShort(formatText("STRING") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n\"");
    expectCutShort(formatText("STRING") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n\"abc\nEND_DATA\n");
}

// ---- Decimal comma

TEST(cgatsSamples, decimalComma_isAcceptedInFloatingPointFields) {
    EXPECT_EQ(number("1,5"), 1.5);
}

TEST(cgatsSamples, everyComma_becomesAPoint) {
    EXPECT_EQ(number("1,234,5"), 1.234);
    EXPECT_EQ(number(",5"), 0.5);
    EXPECT_EQ(number("-0,25e1"), -2.5);
    EXPECT_EQ(number("1.5,5"), 1.5);
}

TEST(cgatsSamples, decimalComma_holdsForBareValuesOnly) {
    EXPECT_EQ(number("\"1,5\""), 1.0);
}

TEST(cgatsSamples, commaInAString_stays) {
    EXPECT_EQ(text("1,5"), "1,5");
}

// No field name makes an integer column, so that the header is made by hand.
TEST(cgatsSamples, commaInAnInteger_endsIt) {
    TCgats document;
    document.InitTmpHeader(2);
    for (int i = 0; i < 2; ++i)
        document.GetTmpHeader()->FillNextSlot(
            new TCgatsField(TCgatsField::kInteger, "COUNT", 0, TCgatsField::kCustom, 0));
    document.SetNrSamples(1);
    const char* position = "1,5 -7.9";
    ASSERT_EQ(document.ReadTable(&position), 0);
    EXPECT_EQ(document.GetTable(0)->GetValues(0)->GetInt(0), 1);
    EXPECT_EQ(document.GetTable(0)->GetValues(1)->GetInt(0), -7);
}

// ---- The longest value

TEST(cgatsSamples, values_holdUpTo127Characters) {
    for (const int length : {126, 127}) {
        EXPECT_EQ(text(repeated("v", length)), repeated("v", length));
        EXPECT_EQ(text("\"" + repeated(" ", length) + "\""), repeated(" ", length));
        EXPECT_EQ(number("1." + repeated("0", length - 2)), 1.0);
    }
}

TEST(cgatsSamples, values_of127CharactersMayEndTheText) {
    const std::string head = formatText("STRING") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n";
    const Reading bare(head + repeated("v", 127));
    EXPECT_EQ(bare.code, 0);
    EXPECT_EQ(texts(bare.document, 0), Texts{repeated("v", 127)});
    const Reading quoted(head + "\"" + repeated("v", 127) + "\"");
    EXPECT_EQ(quoted.code, 0);
    EXPECT_EQ(texts(quoted.document, 0), Texts{repeated("v", 127)});
}

TEST(cgatsSamples, longerValues_give1) {
    for (const int length : {128, 129, 1000, 100000}) {
        expectCutShort(tableText("STRING", 1, repeated("v", length)));
        expectCutShort(tableText("STRING", 1, "\"" + repeated("v", length) + "\""));
        expectCutShort(tableText("STRING", 1, "\"" + repeated("v", length)));
        expectCutShort(tableText("LAB_L", 1, "1." + repeated("0", length - 2)));
        expectCutShort(formatText("STRING") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n" + repeated("v", length));
    }
}

// ---- Too many, too few

TEST(cgatsSamples, surplusLine_isAHeaderTag) {
    const Reading reading(tableText("LAB_L LAB_A LAB_B", 1, "1 2 3\n4 5 6"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(numbers(reading.document, 0), Numbers{1});
    EXPECT_EQ(keywordsOf(reading.document), (Keywords{"BEGIN_DATA_FORMAT", "END_DATA_FORMAT",
                                                      "NUMBER_OF_SETS", "BEGIN_DATA", "4", "END_DATA"}));
    const TCgatsTag& surplus = *reading.document.GetTagAt(4);
    EXPECT_EQ(surplus.GetCode(), -1);
    EXPECT_STREQ(surplus.GetValue(), "56");
    EXPECT_EQ(surplus.GetNumeric(), 1);
}

TEST(cgatsSamples, surplusOnTheLastLine_isAHeaderTag) {
    const Reading reading(tableText("LAB_L", 1, "1 2 3"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_STREQ(reading.document.GetTagAt(4)->GetKeyword(), "2");
    EXPECT_STREQ(reading.document.GetTagAt(4)->GetValue(), "3");
}

TEST(cgatsSamples, missingRow_runsIntoTheEnd) {
    expectCutShort(tableText("LAB_L LAB_A LAB_B", 2, "1 2 3"));
    expectCutShort(tableText("LAB_L LAB_A LAB_B", 2, "1 2 3\n4"));
}

TEST(cgatsSamples, missingRow_takesWhatFollowsAsValues) {
    const Reading reading(tableText("STRING", 3, "a") + "CREATED x\n");
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(texts(reading.document, 0), (Texts{"a", "END_DATA", "CREATED"}));
    EXPECT_EQ(reading.document.GetTag(25), nullptr);
    EXPECT_STREQ(reading.document.GetTagAt(reading.document.GetNrTags() - 1)->GetKeyword(), "x");
}

TEST(cgatsSamples, withoutAnyValue_theEndGives1) {
    const std::string head = formatText("LAB_L") + "NUMBER_OF_SETS 1\nBEGIN_DATA";
    expectCutShort(head);
    expectCutShort(head + "\n");
    expectCutShort(head + "\n \t\r\n");
}

TEST(cgatsSamples, lastValue_mayEndTheText) {
    const Reading reading(formatText("LAB_L LAB_A") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n1 25");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(numbers(reading.document, 1), Numbers{25});
    EXPECT_EQ(keywordsOf(reading.document).back(), "BEGIN_DATA");
}

TEST(cgatsSamples, endKeyword_isNotAskedFor) {
    const Reading reading(formatText("LAB_L") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n1\nCREATED x\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrTables(), 1);
    EXPECT_EQ(keywordsOf(reading.document).back(), "CREATED");
}

TEST(cgatsSamples, hugeDeclaredCount_isAnsweredAtOnce) {
    for (const char* count : {"2000000000", "2147483647", "99999999999"}) {
        const std::int64_t before = addressSpacePages();
        const Stopwatch watch;
        const Reading reading(formatText("LAB_L STRING nm400 LAB_A LAB_B") + "NUMBER_OF_SETS " + count +
                              "\nBEGIN_DATA\n1 a 3 4 5\n6 b\nEND_DATA\n");
        EXPECT_EQ(reading.code, 1) << count;
        EXPECT_EQ(reading.document.GetNrTables(), 0);
        EXPECT_LT(watch.seconds(), 0.1);
        EXPECT_LT(addressSpacePages() - before, kManyPages);
    }
}

// ---- What must stand before the samples

TEST(cgatsSamples, withoutDataFormat_give6) {
    expectNoHeader("NUMBER_OF_SETS 1\nBEGIN_DATA\n1\nEND_DATA\n");
    expectNoHeader("BEGIN_DATA\n1\nEND_DATA\n");
    expectNoHeader("BEGIN_DATA");
}

TEST(cgatsSamples, withoutPositiveNumberOfSets_give6) {
    expectNoHeader(formatText("LAB_L") + "BEGIN_DATA\n1\nEND_DATA\n");
    for (const char* count : {"0", "-1", "-99999999999", "none", "", "\"\"", "0.9"})
        expectNoHeader(formatText("LAB_L") + "NUMBER_OF_SETS " + count + "\nBEGIN_DATA\n1\nEND_DATA\n");
}

TEST(cgatsSamples, lowerCaseNumberOfSets_declaresNothing) {
    const Reading reading(formatText("LAB_L") + "number_of_sets 1\nBEGIN_DATA\n1\nEND_DATA\n");
    EXPECT_EQ(reading.code, 6);
    EXPECT_EQ(reading.document.GetDeclaredNrSets(), 0);
    ASSERT_EQ(reading.document.GetNrTags(), 3);
    EXPECT_STREQ(reading.document.GetTagAt(2)->GetKeyword(), "number_of_sets");
    EXPECT_EQ(reading.document.GetTagAt(2)->GetCode(), -1);
}

TEST(cgatsSamples, numberOfSets_mayStandAnywhereBefore) {
    const std::string format = formatText("LAB_L");
    const std::string sets = "NUMBER_OF_SETS 1\n";
    const std::string count = "NUMBER_OF_FIELDS 1\n";
    const std::string data = "BEGIN_DATA\n5\nEND_DATA\n";
    for (const std::string& document :
         {sets + format + data, format + sets + data, sets + count + format + data,
          count + sets + format + data, count + format + sets + data,
          sets + "CREATED x\n" + format + "# note\nBEGIN_X\nx\nEND_X\n" + data}) {
        const Reading reading(document);
        EXPECT_EQ(reading.code, 0) << document;
        EXPECT_EQ(numbers(reading.document, 0), Numbers{5});
    }
}

TEST(cgatsSamples, lastNumberOfSets_counts) {
    const Reading reading("NUMBER_OF_SETS 5\nNUMBER_OF_SETS 2\n" + formatText("LAB_L") +
                          "BEGIN_DATA\n1 2\nEND_DATA\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(numbers(reading.document, 0), (Numbers{1, 2}));
}

TEST(cgatsSamples, numberOfSets_isReadLikeAtoi) {
    for (const char* count : {"2", "\"2\"", "+2", "2.9", "2rows", "\" 2\"", "02"}) {
        const Reading reading(formatText("LAB_L") + "NUMBER_OF_SETS " + count +
                              "\nBEGIN_DATA\n1 2\nEND_DATA\n");
        EXPECT_EQ(reading.code, 0) << count;
        EXPECT_EQ(numbers(reading.document, 0).size(), 2u) << count;
    }
}

TEST(cgatsSamples, setNrSamples_declaresThemToo) {
    TCgats document;
    document.SetNrSamples(1);
    EXPECT_EQ(document.ReadFromBuffer((formatText("LAB_L") + "BEGIN_DATA\n5\n").c_str()), 0);
    EXPECT_EQ(numbers(document, 0), Numbers{5});
}

TEST(cgatsSamples, headerWithoutFields_gives14) {
    const char* message = "The table header contains no data fields.";
    expectRefused(tableText("", 1, "5"), 14, message);
    expectRefused("NUMBER_OF_FIELDS 0\nNUMBER_OF_SETS 1\nBEGIN_DATA\n5\nEND_DATA\n", 14, message);
    expectRefused("NUMBER_OF_FIELDS -3\nNUMBER_OF_SETS 1\nBEGIN_DATA\n5\nEND_DATA\n", 14, message);
}

TEST(cgatsSamples, missingSets_areAskedForBeforeFields) {
    expectNoHeader(formatText("") + "BEGIN_DATA\n5\nEND_DATA\n");
}

TEST(cgatsSamples, emptySlots_give12) {
    const char* message = "Number of header fields found doesn't match number of header fields declared.";
    expectRefused("NUMBER_OF_FIELDS 1\nNUMBER_OF_SETS 1\nBEGIN_DATA\n5\nEND_DATA\n", 12, message);
    expectRefused(formatText("LAB_L") + "NUMBER_OF_FIELDS 1\nNUMBER_OF_SETS 1\nBEGIN_DATA\n5\nEND_DATA\n", 12,
                  message);
    expectRefused("NUMBER_OF_FIELDS 2000000000\nNUMBER_OF_SETS 2000000000\nBEGIN_DATA\n5\nEND_DATA\n", 12,
                  message);
}

TEST(cgatsSamples, inconsistentColorNumbers_give17) {
    const char* message = "The custom color numbering in the table header is not consistent.";
    expectRefused(tableText("4CLR_1 4CLR_2 4CLR_3 4CLR_4", 1, "1 2 3 4"), 17, message);
    expectRefused(tableText("SPOT_2", 1, "1"), 17, message);
    expectRefused(tableText("PC0_2", 1, "1"), 17, message);
}

TEST(cgatsSamples, unsupportedDataType_gives16) {
    TCgats document;
    document.InitTmpHeader(1);
    document.GetTmpHeader()->FillNextSlot(new TCgatsField(9, "ODD", 0, TCgatsField::kCustom, 0));
    document.SetNrSamples(1);
    const char* position = "1";
    EXPECT_EQ(document.ReadTable(&position), 16);
    EXPECT_FALSE(document.SetErrorCode(16));
    EXPECT_STREQ(document.GetErrorMessage(), "The table contains a data type that is not supported.");
}

// ---- What a stored table leaves behind

TEST(cgatsSamples, storedTable_takesTheHeaderAndTheDeclaredSets) {
    const Reading reading("NUMBER_OF_FIELDS 1\n" + tableText("LAB_L", 1, "5"));
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetTmpHeader(), nullptr);
    EXPECT_EQ(reading.document.GetDeclaredNrSets(), 0);
    EXPECT_EQ(namesOf(*reading.document.GetTable(0)->GetHeader()), Texts{"LAB_L"});
}

TEST(cgatsSamples, secondTable_needsAFormatOfItsOwn) {
    const Reading reading(tableText("LAB_L", 1, "5") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n6\nEND_DATA\n");
    EXPECT_EQ(reading.code, 6);
    EXPECT_EQ(reading.document.GetNrTables(), 1);
}

TEST(cgatsSamples, secondTable_needsANumberOfSetsOfItsOwn) {
    const Reading reading(tableText("LAB_L", 1, "5") + formatText("LAB_A") + "BEGIN_DATA\n6\nEND_DATA\n");
    EXPECT_EQ(reading.code, 6);
    EXPECT_EQ(reading.document.GetNrTables(), 1);
}

TEST(cgatsSamples, tables_areKeptInOrder) {
    std::string document;
    for (int i = 0; i < 20; ++i)
        document += tableText("LAB_L", 1, std::to_string(i));
    const Reading reading(document);
    EXPECT_EQ(reading.code, 0);
    ASSERT_EQ(reading.document.GetNrTables(), 20);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(numbers(reading.document, 0, i), Numbers{static_cast<double>(i)});
}

TEST(cgatsSamples, declaredAndUndeclaredTables_mayMix) {
    const Reading reading("NUMBER_OF_FIELDS 2\n" + tableText("LAB_L LAB_A", 1, "1 2") +
                          tableText("LAB_B", 1, "3") + "NUMBER_OF_FIELDS 1\n" + tableText("XYZ_X", 1, "4"));
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrTables(), 3);
}

TEST(cgatsSamples, refusedSamples_leaveEarlierTables) {
    const Reading reading(tableText("LAB_L", 1, "5") + tableText("LAB_A", 3, "6"));
    EXPECT_EQ(reading.code, 1);
    ASSERT_EQ(reading.document.GetNrTables(), 1);
    EXPECT_EQ(numbers(reading.document, 0), Numbers{5});
    // The opening tag of the refused samples is not stored.
    EXPECT_EQ(keywordsOf(reading.document),
              (Keywords{"BEGIN_DATA_FORMAT", "END_DATA_FORMAT", "NUMBER_OF_SETS", "BEGIN_DATA", "END_DATA",
                        "BEGIN_DATA_FORMAT", "END_DATA_FORMAT", "NUMBER_OF_SETS"}));
}

TEST(cgatsSamples, refusedSamples_leaveTheDeclaredSets) {
    EXPECT_EQ(Reading(tableText("LAB_L", 3, "5")).document.GetDeclaredNrSets(), 3);
    EXPECT_EQ(Reading(tableText("SPOT_2", 3, "5 6 7")).document.GetDeclaredNrSets(), 3);
}

TEST(cgatsSamples, documentReadsOnAfterARefusal) {
    for (const std::string& bad : {tableText("LAB_L", 3, "5"), tableText("SPOT_2", 1, "5"),
                                   tableText("", 1, "5"), tableText("LAB_L", 0, "5")}) {
        Reading reading(bad);
        EXPECT_NE(reading.code, 0);
        EXPECT_EQ(
            reading.document.ReadFromBuffer(("NUMBER_OF_FIELDS 1\n" + tableText("LAB_A", 1, "5")).c_str()),
            0);
        EXPECT_EQ(numbers(reading.document, 0), Numbers{5});
    }
}

// ---- Percent or fraction

bool percent(const std::string& fields, int rows, const std::string& samples) {
    const Reading reading(tableText(fields, rows, samples));
    EXPECT_EQ(reading.code, 0) << samples;
    return reading.code == 0 && reading.document.GetTable(0)->IsSpectralPercent();
}

TEST(cgatsSamples, spectralValueAboveTen_meansPercent) {
    EXPECT_TRUE(percent("nm400 nm410", 1, "0.5 10.001"));
    EXPECT_TRUE(percent("nm400 nm410", 1, "99 0"));
}

TEST(cgatsSamples, spectralValuesUpToTen_areFractions) {
    EXPECT_FALSE(percent("nm400 nm410", 1, "10 10.0"));
    EXPECT_FALSE(percent("nm400", 1, "-50"));
    EXPECT_FALSE(percent("nm400", 1, "nan"));
}

TEST(cgatsSamples, infiniteSpectralValue_meansPercent) {
    EXPECT_TRUE(percent("nm400", 1, "inf"));
}

TEST(cgatsSamples, firstFiveRows_areInspected) {
    for (int row = 0; row < 7; ++row) {
        std::string samples;
        for (int i = 0; i < 7; ++i)
            samples += i == row ? "50 0.1\n" : "0.5 0.1\n";
        EXPECT_EQ(percent("nm400 nm410", 7, samples), row < 5) << row;
    }
}

TEST(cgatsSamples, laterRowsInPercent_doNotCount) {
    EXPECT_FALSE(percent("nm400", 8, "1 1 1 1 1 90 90 90"));
}

TEST(cgatsSamples, otherColumns_doNotCount) {
    EXPECT_FALSE(percent("LAB_L nm400 SPECTRAL_PCT", 1, "50 0.5 50"));
    EXPECT_FALSE(percent("LAB_L LAB_A", 1, "50 20"));
}

TEST(cgatsSamples, decimalCommaInSpectra_countsAsRead) {
    EXPECT_TRUE(percent("nm400", 1, "10,5"));
    EXPECT_FALSE(percent("nm400", 1, "0,5"));
}

TEST(cgatsSamples, everyTable_isInspectedByItself) {
    const Reading reading(tableText("nm400", 1, "50") + tableText("nm400", 1, "0.5") +
                          tableText("nm400", 6, "1 1 1 1 1 1") + tableText("nm400", 1, "11"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_TRUE(reading.document.GetTable(0)->IsSpectralPercent());
    EXPECT_FALSE(reading.document.GetTable(1)->IsSpectralPercent());
    EXPECT_FALSE(reading.document.GetTable(2)->IsSpectralPercent());
    EXPECT_TRUE(reading.document.GetTable(3)->IsSpectralPercent());
}

// ---- The block reader by itself

TEST(cgatsSamples, readTable_movesBehindTheLastValue) {
    for (const auto& [samples, end] : std::vector<std::pair<std::string, std::ptrdiff_t>>{
             {"1 2\nEND_DATA\n", 3}, {"1 2", 3}, {" 1\n2  3 4", 4}, {"1 \"2\" 3", 5}, {"1 \"\"\n", 4}}) {
        Reading reading(formatText("STRING STRING") + "NUMBER_OF_SETS 1\n");
        const char* position = samples.c_str();
        EXPECT_EQ(reading.document.ReadTable(&position), 0) << samples;
        EXPECT_EQ(position - samples.c_str(), end) << samples;
        EXPECT_EQ(reading.document.GetNrTables(), 1);
    }
}

TEST(cgatsSamples, readTable_answersTheCodeAndRecordsNothing) {
    TCgats document;
    const char* position = "1";
    EXPECT_EQ(document.ReadTable(&position), 6);
    document.InitTmpHeader(0);
    EXPECT_EQ(document.ReadTable(&position), 6);
    document.SetNrSamples(1);
    EXPECT_EQ(document.ReadTable(&position), 14);
    EXPECT_EQ(document.GetErrorCode(), 0);
}

TEST(cgatsSamples, readTable_gives2ForNull) {
    Reading reading(formatText("LAB_L") + "NUMBER_OF_SETS 1\n");
    const char* nowhere = nullptr;
    EXPECT_EQ(reading.document.ReadTable(nullptr), 2);
    EXPECT_EQ(reading.document.ReadTable(&nowhere), 2);
    EXPECT_NE(reading.document.GetTmpHeader(), nullptr);
}

// ---- Any layout gives the same table

TEST(cgatsSamples, anyLayoutOfTheSameValues_givesTheSameTable) {
    static const char* const kSeparators[] = {" ", "\t", "\n", "\r", "\r\n", "  ", " \n\t", "\n\n"};
    std::mt19937 random(20240117);
    const auto below = [&random](unsigned limit) { return random() % limit; };
    for (int round = 0; round < 300; ++round) {
        const int rows = 1 + static_cast<int>(below(9));
        std::string samples;
        Texts names;
        Numbers lightness;
        for (int row = 0; row < rows; ++row) {
            const bool quotedName = below(2) == 0;
            const std::string name = (quotedName ? "patch " : "patch") + std::to_string(below(1000));
            const int quarters = static_cast<int>(below(400));
            static const char* const kFractions[] = {"0", "25", "5", "75"};
            const bool quotedNumber = below(4) == 0;
            std::string value = std::to_string(quarters / 4) + (quotedNumber || below(2) == 0 ? "." : ",") +
                                kFractions[quarters % 4];
            if (quotedNumber)
                value = "\"" + value + "\"";
            samples += kSeparators[below(8)] + (quotedName ? "\"" + name + "\"" : name) +
                       kSeparators[below(8)] + value;
            names.push_back(name);
            lightness.push_back(quarters / 4.0);
        }
        const Reading reading(tableText("SAMPLE_ID LAB_L", rows, samples));
        ASSERT_EQ(reading.code, 0) << samples;
        ASSERT_EQ(texts(reading.document, 0), names) << samples;
        ASSERT_EQ(numbers(reading.document, 1), lightness) << samples;
    }
}

} // namespace
} // namespace qxcms::tests
