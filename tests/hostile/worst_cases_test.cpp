// Mebibytes that cost as much memory or time as a mebibyte can: one kind of thing again and again.
#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/hostile/measured.h"
#include "tests/hostile/worst_texts.h"

namespace qxcms::tests {
namespace {

class worstCases : public testing::TestWithParam<WorstCase> {
protected:
    std::string text = GetParam().text();
};

// Listens and does nothing.
struct Listener : TCgatsDiagnosticSink {
    void Refused(const TCgatsDiagnostic&) override {}
};

TEST_P(worstCases, areAMebibyte) {
    EXPECT_GT(text.size(), kSize * 9 / 10);
    EXPECT_LE(text.size(), kSize);
}

TEST_P(worstCases, stayWithinMemory) {
    const MeasuredReading reading(text);
    EXPECT_EQ(reading.code(), GetParam().code);
    EXPECT_TRUE(staysWithinMemory(reading));
    RecordProperty("peakBytes", std::to_string(reading.peak));
}

TEST_P(worstCases, areAnsweredInASecond) {
    Listener listener;
    const MeasuredReading reading(text, &listener);
    EXPECT_EQ(reading.code(), GetParam().code);
    EXPECT_TRUE(isAnsweredInTime(reading));
    RecordProperty("seconds", std::to_string(reading.seconds));
}

INSTANTIATE_TEST_SUITE_P(of, worstCases, testing::ValuesIn(kWorstCases), [](const auto& instance) {
    return std::to_string(instance.index) + "_" + instance.param.name;
});

// ---- Sizes at which arrays grow

// A column costs most with few values: from none to twenty.
TEST(worstSizes, fewRowsOfManyColumns_stayWithinMemory) {
    for (const int columns : {1023, 1024, 1025, 4097})
        for (int rows = 0; rows <= 20; ++rows) {
            const std::string text = "KEYWORD a\n" + tableText(repeated("a ", columns), 2000000000,
                                                               repeated("b ", columns * rows));
            const MeasuredReading reading(text);
            ASSERT_EQ(reading.code(), 1);
            ASSERT_TRUE(staysWithinMemory(reading)) << columns << " columns, " << rows << " rows";
        }
}

TEST(worstSizes, fewDeclaredRowsOfManyColumns_stayWithinMemory) {
    for (const char* name : {"a ", "nm0 "})
        for (int rows = 1; rows <= 20; ++rows) {
            const std::string text =
                "KEYWORD a\n" + tableText(repeated(name, 4097), rows, repeated("0 ", 4097 * rows));
            const MeasuredReading reading(text);
            ASSERT_EQ(reading.code(), 0);
            ASSERT_TRUE(staysWithinMemory(reading)) << name << rows << " rows";
        }
}

TEST(worstSizes, columnsAtEveryPowerOfTwo_stayWithinMemory) {
    for (int power = 1; power <= 1 << 17; power *= 2)
        for (const int columns : {power, power + 1})
            for (const int values : {0, columns}) {
                const std::string text =
                    "KEYWORD a\n" + tableText(repeated("a ", columns), 2000000000, repeated("b ", values));
                ASSERT_TRUE(staysWithinMemory(MeasuredReading(text)))
                    << columns << ", " << values << " values";
            }
}

TEST(worstSizes, rowsAtEveryPowerOfTwo_stayWithinMemory) {
    for (int power = 1; power <= 1 << 18; power *= 2)
        for (const int rows : {power - 1, power, power + 1})
            for (const char* field : {"SAMPLE_ID", "LAB_L"}) {
                const MeasuredReading reading(tableText(field, 2000000000, repeated("\"\"", rows)));
                ASSERT_TRUE(staysWithinMemory(reading)) << rows << " of " << field;
            }
}

TEST(worstSizes, namesAtEveryPowerOfTwo_stayWithinMemory) {
    for (int power = 1; power <= 1 << 16; power *= 2)
        for (const int names : {power - 1, power, power + 1})
            ASSERT_TRUE(staysWithinMemory(MeasuredReading(repeated("KEYWORD a\n", names)))) << names;
}

// ---- Bytes at random

bool isDocumentedCode(int code) {
    const std::vector<int> codes = {-1, 0, 1, 5, 6, 9, 10, 11, 12, 14, 17};
    return std::find(codes.begin(), codes.end(), code) != codes.end();
}

void expectWithinLimits(const std::string& text, std::uint32_t seed) {
    const MeasuredReading reading(text);
    EXPECT_TRUE(isDocumentedCode(reading.code())) << reading.code() << " for seed " << seed;
    EXPECT_TRUE(staysWithinMemory(reading)) << "seed " << seed;
    EXPECT_TRUE(isAnsweredInTime(reading)) << "seed " << seed;
}

TEST(randomBytes, ofAnyValue_stayWithinLimits) {
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        std::mt19937 random(seed);
        std::string text(kSize, '\0');
        for (char& c : text)
            c = static_cast<char>(random() % 255 + 1);
        expectWithinLimits(text, seed);
    }
}

// Words of the format in any order get deeper into the reader than bytes.
TEST(randomBytes, inWordsOfTheFormat_stayWithinLimits) {
    const char* const words[] = {"a ",   "b\n",     "\"\"",        "\"x y\" ", "#",       "\r\n",
                                 "nm0 ", "SPOT_1 ", "PC0_1 ",      "LAB_L ",   "5CLR_1 ", "SampleID ",
                                 "1 ",   "-1e99 ",  "KEYWORD a\n", "END_X\n"};
    constexpr int kWords = sizeof words / sizeof words[0];
    for (std::uint32_t seed = 1; seed <= 10; ++seed) {
        std::mt19937 random(seed);
        std::string text = "KEYWORD a\nKEYWORD b\n";
        while (text.size() < kSize - 200) {
            const auto choice = random() % 1000;
            if (choice == 0)
                text += "\nBEGIN_DATA_FORMAT\n";
            else if (choice == 1)
                text += "\nEND_DATA_FORMAT\n";
            else if (choice == 2)
                text += "\nNUMBER_OF_SETS " + std::to_string(random() % 3000) + "\nBEGIN_DATA\n";
            else
                text += words[random() % kWords];
        }
        expectWithinLimits(text, seed);
    }
}

} // namespace
} // namespace qxcms::tests
