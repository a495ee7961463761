// Texts that have brought down readers of such files before: what they are answered, from the rules of the
// reader, within the limits of memory and time.
#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tests/hostile/measured.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

void expectAnswer(const std::string& text, int code) {
    const MeasuredReading reading(text);
    EXPECT_EQ(reading.code(), code) << text.substr(0, 200);
    EXPECT_TRUE(staysWithinMemory(reading)) << text.substr(0, 200);
    EXPECT_TRUE(isAnsweredInTime(reading)) << text.substr(0, 200);
}

std::string numberedNames(const std::string& before, int count, const std::string& after) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all += before + std::to_string(i) + after;
    return all;
}

// ---- Counts

TEST(listedTexts, twoThousandMillionSets_aloneAreATag) {
    expectAnswer("NUMBER_OF_SETS 2000000000\n", 0);
}

TEST(listedTexts, twoThousandMillionSets_runIntoTheEnd) {
    expectAnswer(tableText("SAMPLE_ID LAB_L LAB_A LAB_B", 2000000000, "A 1 2 3\nB 4 5 6"), 1);
}

TEST(listedTexts, twoThousandMillionSets_ofNothing_runIntoTheEnd) {
    expectAnswer(formatText("LAB_L") + "NUMBER_OF_SETS 2000000000\nBEGIN_DATA\n", 1);
}

TEST(listedTexts, secondFieldCountBehindTheFormat_replacesIt) {
    expectAnswer("NUMBER_OF_FIELDS 1\n" + formatText("LAB_L") +
                     "NUMBER_OF_FIELDS 2000000000\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1\nEND_DATA\n",
                 12);
    expectAnswer("NUMBER_OF_FIELDS 1\n" + formatText("LAB_L") +
                     "NUMBER_OF_FIELDS 0\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1\nEND_DATA\n",
                 14);
    expectAnswer("NUMBER_OF_FIELDS 1\n" + formatText("LAB_L") +
                     "NUMBER_OF_FIELDS -1\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1\nEND_DATA\n",
                 14);
}

TEST(listedTexts, largestFieldCount_isTooLarge) {
    for (const char* count : {"2147483647", "2147483648", "9999999999", "99999999999999999999"})
        expectAnswer("NUMBER_OF_FIELDS " + std::string(count) + "\n" + formatText("LAB_L LAB_A"), 12);
}

TEST(listedTexts, negativeFieldCount_leavesNoSlot) {
    for (const char* count : {"-1", "-2147483648", "-99999999999999999999"})
        expectAnswer("NUMBER_OF_FIELDS " + std::string(count) + "\n" + formatText("LAB_L"), 10);
}

TEST(listedTexts, countsOfTenDigits_areHeldWithinInt) {
    const MeasuredReading reading("NUMBER_OF_SETS 9999999999\n");
    EXPECT_EQ(reading.code(), 0);
    EXPECT_EQ(reading.document->GetDeclaredNrSets(), std::numeric_limits<int>::max());
    expectAnswer(
        tableText("LAB_L", 1, "1") + formatText("LAB_L") + "NUMBER_OF_SETS 9999999999\nBEGIN_DATA\n1", 1);
    expectAnswer(formatText("LAB_L") + "NUMBER_OF_SETS -9999999999\nBEGIN_DATA\n1", 6);
}

TEST(listedTexts, countsOf4096Digits_areHeldWithinInt) {
    expectAnswer("NUMBER_OF_SETS " + repeated("9", 4096) + "\n" + formatText("LAB_L") + "BEGIN_DATA\n1 2 3\n",
                 1);
    expectAnswer("NUMBER_OF_FIELDS " + repeated("9", 4096) + "\n" + formatText("LAB_L"), 12);
}

// ---- Many of a kind

TEST(listedTexts, aHundredThousandKeywordLines_areDeclared) {
    const std::string text = numberedNames("KEYWORD name", 100000, "\n");
    const MeasuredReading reading(text);
    EXPECT_EQ(reading.code(), 0);
    EXPECT_EQ(reading.document->GetNrCustomFields(), 100000);
    EXPECT_EQ(reading.document->GetNrTags(), TCgats::kMaxTags);
    EXPECT_TRUE(staysWithinMemory(reading));
    EXPECT_TRUE(isAnsweredInTime(reading));
}

TEST(listedTexts, tenThousandFields_makeATable) {
    const std::string text = tableText(numberedNames("nm", 10000, "\n"), 2,
                                       repeated("0.5 ", 10000) + "\n" + repeated("11 ", 10000));
    const MeasuredReading reading(text);
    EXPECT_EQ(reading.code(), 0);
    EXPECT_EQ(reading.document->GetNrWaveLengths(0), 10000);
    EXPECT_TRUE(reading.document->GetTable(0)->IsSpectralPercent());
    EXPECT_TRUE(staysWithinMemory(reading));
    EXPECT_TRUE(isAnsweredInTime(reading));
}

TEST(listedTexts, manyKeywordLinesAndAsManyFields_areAnsweredInASecond) {
    constexpr int kNames = 50000;
    const std::string text = numberedNames("KEYWORD k", kNames, "\n") +
                             tableText(numberedNames("K", kNames, " "), 1, repeated("x ", kNames));
    const MeasuredReading reading(text);
    EXPECT_EQ(reading.code(), 0);
    EXPECT_EQ(reading.document->GetNrFields(0), kNames);
    EXPECT_STREQ(reading.document->GetTable(0)->GetHeader()->GetField(kNames - 1)->GetName(), "k49999");
    EXPECT_TRUE(staysWithinMemory(reading));
    EXPECT_TRUE(isAnsweredInTime(reading));
}

TEST(listedTexts, fieldNamesAskedForByName_areAnsweredInASecond) {
    constexpr int kNames = 50000;
    const MeasuredReading reading(tableText(numberedNames("nm", kNames, " "), 1, repeated("1 ", kNames)));
    ASSERT_EQ(reading.code(), 0);
    const Measured<int> asked(kMebibyte, [&] {
        int found = 0;
        for (int i = 0; i < kNames; ++i)
            found += reading.document->GetFieldNameIndex(0, ("NM" + std::to_string(i)).c_str()) == i ? 1 : 0;
        return found;
    });
    EXPECT_EQ(asked.result, kNames);
    EXPECT_TRUE(isAnsweredInTime(asked));
}

// ---- Numbers

TEST(listedTexts, exponentsOfTenDigits_areInfinitiesAndZeros) {
    const MeasuredReading reading(
        tableText("LAB_L LAB_A LAB_B LAB_C LAB_H", 1,
                  "1e9999999999 -1e9999999999 1e-9999999999 0e9999999999 0x1p9999999999"));
    ASSERT_EQ(reading.code(), 0);
    const TCgatsTable& table = *reading.document->GetTable(0);
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(table.GetValues(0)->GetDouble(0), kInfinity);
    EXPECT_EQ(table.GetValues(1)->GetDouble(0), -kInfinity);
    EXPECT_EQ(table.GetValues(2)->GetDouble(0), 0.0);
    EXPECT_EQ(table.GetValues(3)->GetDouble(0), 0.0);
    EXPECT_EQ(table.GetValues(4)->GetDouble(0), kInfinity);
    EXPECT_TRUE(staysWithinMemory(reading));
    EXPECT_TRUE(isAnsweredInTime(reading));
}

TEST(listedTexts, numbersOf127Characters_areRead) {
    const std::string tiny = "0." + repeated("0", 124) + "1"; // 10^-125
    const std::string huge = repeated("9", 127);              // rounds to 10^127
    const MeasuredReading reading(tableText("LAB_L LAB_A", 1, tiny + " " + huge));
    ASSERT_EQ(reading.code(), 0);
    EXPECT_EQ(reading.document->GetTable(0)->GetValues(0)->GetDouble(0), 1e-125);
    EXPECT_EQ(reading.document->GetTable(0)->GetValues(1)->GetDouble(0), 1e127);
}

TEST(listedTexts, numbersOf128Characters_areRefused) {
    expectAnswer(tableText("LAB_L", 1, repeated("9", 128)), 1);
    expectAnswer(tableText("SAMPLE_ID", 1, repeated("x", 128)), 1);
    expectAnswer(tableText("SAMPLE_ID", 1, "\"" + repeated("x", 128) + "\""), 1);
}

TEST(listedTexts, wavelengthsOfTenDigits_areHeldWithinInt) {
    const MeasuredReading reading(tableText("nm9999999999 nm0", 1, "1 2"));
    ASSERT_EQ(reading.code(), 0);
    int wavelengths[2] = {};
    ASSERT_EQ(reading.document->GetWaveLengths(0, wavelengths), 0);
    EXPECT_EQ(wavelengths[0], 0);
    EXPECT_EQ(wavelengths[1], std::numeric_limits<int>::max());
}

TEST(listedTexts, colorNumbersOfTenDigits_areNotConsistent) {
    expectAnswer("PROCESSCOLOR_ID a\n" + tableText("PC1_9999999999", 1, "1"), 17);
    expectAnswer(tableText("SPOT_9999999999", 1, "1"), 17);
    // Channels are counted, not believed: one of 9999999999 makes no colours, and no error.
    expectAnswer(tableText("9999999999CLR_9999999999", 1, "1"), 0);
    expectAnswer(tableText("-9999999999CLR_1", 1, "1"), 17);
}

// ---- Quotes without end

TEST(listedTexts, quoteWithoutEndInTheHeader_endsAtTheLineEnd) {
    const MeasuredReading reading("CREATED \"today\nORIGINATOR \"x\"\n");
    EXPECT_EQ(reading.code(), 0);
    EXPECT_STREQ(reading.document->GetCreated(), "today");
    EXPECT_STREQ(reading.document->GetOriginator(), "x");
    expectAnswer("CREATED \"", 0);
    expectAnswer(repeated("CREATED \"\n", 1000), 0);
}

TEST(listedTexts, quoteWithoutEndAmongTheFields_isDropped) {
    expectAnswer(formatText("\"LAB_L \"\"\"LAB_A LAB_B\""), 0);
    expectAnswer("BEGIN_DATA_FORMAT\nLAB_L\n\"END_DATA_FORMAT", 9);
}

TEST(listedTexts, quoteWithoutEndAmongTheSamples_isRefused) {
    expectAnswer(tableText("SAMPLE_ID", 1, "\"x"), 1);
    expectAnswer(tableText("SAMPLE_ID", 1, "\"" + repeated("x", 100000)), 1);
    expectAnswer(tableText("SAMPLE_ID LAB_L", 2, "\"a\" 1 \"b"), 1);
}

// ---- NUL bytes: the text ends there

int codeOfFile(const std::string& bytes) {
    const ScratchFolder folder;
    const std::string file = folder.write("hostile.txt", bytes);
    const Measured<int> reading(bytes.size(), [&] { return TCgats().ReadFromFile(file.c_str()); });
    EXPECT_TRUE(staysWithinMemory(reading));
    return reading.result;
}

TEST(listedTexts, nulBytes_endTheText) {
    const std::string nul(1, '\0');
    EXPECT_EQ(codeOfFile(nul), 0);
    EXPECT_EQ(codeOfFile(std::string(kMebibyte, '\0')), 0);
    EXPECT_EQ(codeOfFile("CREATED" + nul + " today\n" + repeated("x", 300)), 0);
    EXPECT_EQ(codeOfFile("BEGIN_X\na\n" + nul + "END_X\n"), 5);
    EXPECT_EQ(codeOfFile("BEGIN_DATA_FORMAT\nLAB_L" + nul + "\nEND_DATA_FORMAT\n"), 9);
    EXPECT_EQ(codeOfFile(formatText("LAB_L") + "NUMBER_OF_SETS 2\nBEGIN_DATA\n1" + nul + " 2\nEND_DATA\n"),
              1);
    EXPECT_EQ(codeOfFile(tableText("LAB_L", 1, "1") + nul + tableText("BAD", 1, "1")), 0);
}

TEST(listedTexts, nulBytesAtEveryPlace_endTheText) {
    const std::string text = everythingText();
    for (std::size_t place = 0; place < text.size(); place += 7) {
        std::string cut = text;
        cut[place] = '\0';
        EXPECT_EQ(codeOfFile(cut), Reading(text.substr(0, place)).code) << place;
    }
}

} // namespace
} // namespace qxcms::tests
