// The shorter ways for numbers give what the plain ones give: the same bits, the same characters.
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iomanip>
#include <limits>
#include <locale>
#include <random>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "base/number_text.h"

namespace qxcms::detail {
namespace {

std::string shortText(double value) {
    char text[kGeneralTextSize];
    return std::string(text, doubleToShortText(value, text));
}

// By the stream formatting that is meant.
std::string streamText(double value) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

void expectEqual(double value) {
    const std::string plain = generalText(value, kShortDigits);
    ASSERT_EQ(shortText(value), plain) << std::hexfloat << value;
}

TEST(shortText, hasSixSignificantDigits) {
    EXPECT_EQ(shortText(0.1234567), "0.123457");
    EXPECT_EQ(shortText(1e-7), "1e-07");
    EXPECT_EQ(shortText(100.0), "100");
    EXPECT_EQ(shortText(-12.5), "-12.5");
    EXPECT_EQ(shortText(0.0), "0");
    EXPECT_EQ(shortText(-0.0), "-0");
    EXPECT_EQ(shortText(123456.0), "123456");
    EXPECT_EQ(shortText(123456.7), "123457");
    EXPECT_EQ(shortText(1e6), "1e+06");
    EXPECT_EQ(shortText(999999.5), "1e+06");
    EXPECT_EQ(shortText(0.0001), "0.0001");
    EXPECT_EQ(shortText(0.00012345678), "0.000123457");
    EXPECT_EQ(shortText(0.00001), "1e-05");
    EXPECT_EQ(shortText(9.9999996), "10");
}

TEST(shortText, specialValues_areSpelledLikeThoseOfStreams) {
    for (const double value :
         {std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::quiet_NaN(),
          std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::max(), 0.0, -0.0})
        EXPECT_EQ(shortText(value), streamText(value));
}

// Six digits and a half are where rounding is decided; so are the doubles beside them.
TEST(shortText, halves_areRoundedLikeThePlainConversion) {
    std::mt19937_64 random(6);
    std::uniform_int_distribution<int> sixDigits(100000, 999999);
    std::uniform_int_distribution<int> exponents(-9, 0);
    for (int i = 0; i < 200000; ++i) {
        const double half = (sixDigits(random) + 0.5) / std::pow(10.0, -exponents(random));
        for (const double value : {half, std::nextafter(half, 0.0), std::nextafter(half, 1e9), -half})
            ASSERT_NO_FATAL_FAILURE(expectEqual(value));
    }
}

TEST(shortText, powersOfTenAndTheirNeighbours_areLikeThePlainConversion) {
    for (int exponent = -8; exponent <= 8; ++exponent) {
        double below = std::pow(10.0, exponent);
        double above = below;
        for (int i = 0; i < 100; ++i) {
            ASSERT_NO_FATAL_FAILURE(expectEqual(below));
            ASSERT_NO_FATAL_FAILURE(expectEqual(above));
            below = std::nextafter(below, 0.0);
            above = std::nextafter(above, 1e300);
        }
        for (const double share : {0.9999994, 0.9999995, 0.9999996, 0.99999951})
            ASSERT_NO_FATAL_FAILURE(expectEqual(share * std::pow(10.0, exponent)));
    }
}

TEST(shortText, randomNumbersOfAnySize_areLikeThePlainConversion) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> percent(0.0, 100.0);
    std::uniform_real_distribution<double> exponent(-6.0, 7.0);
    for (int i = 0; i < 300000; ++i) {
        ASSERT_NO_FATAL_FAILURE(expectEqual(percent(random)));
        ASSERT_NO_FATAL_FAILURE(expectEqual(std::round(percent(random) * 1e4) / 1e4));
        ASSERT_NO_FATAL_FAILURE(expectEqual(-std::pow(10.0, exponent(random))));
        ASSERT_NO_FATAL_FAILURE(expectEqual(std::bit_cast<double>(random())));
    }
}

// What the plain conversion makes of the text with a point in place of the comma.
void expectPlainValue(const std::string& text, std::size_t length) {
    double value = 7.0;
    const char* const first = text.data();
    const char* const last = first + text.size();
    const char* const stop = parsePlainDecimal(first, last, value);
    ASSERT_EQ(stop, first + length) << text;
    std::string pointed = text.substr(0, length);
    if (const std::size_t comma = pointed.find(','); comma != std::string::npos)
        pointed[comma] = '.';
    ASSERT_EQ(std::bit_cast<std::uint64_t>(value),
              std::bit_cast<std::uint64_t>(textToDouble(pointed.c_str())))
        << text;
}

TEST(plainDecimal, usualForms_areRead) {
    for (const char* text : {"0", "-0", "+1", "1.", ".5", "-.5", "12.345", "12,345", "0.0001", "-0.0",
                             "9007199254740992", "0000000000000000001", "0.000000000000000001"})
        expectPlainValue(text, std::string(text).size());
}

TEST(plainDecimal, everyNumberOfDecimals_isRead) {
    for (std::size_t decimals = 1; decimals <= 19; ++decimals)
        for (const char* digits : {"1", "3", "7"}) {
            const std::string text = '.' + std::string(decimals - 1, '0') + digits;
            expectPlainValue(text, text.size());
        }
}

TEST(plainDecimal, number_endsWhereItsFormEnds) {
    expectPlainValue("1:2", 1);
    expectPlainValue("1/2", 1);
    expectPlainValue("1.5 2", 3);
    expectPlainValue("1.5.2", 3);
    expectPlainValue("1,5,2", 3);
    expectPlainValue("1.5e3", 3);
    expectPlainValue("1-2", 1);
}

TEST(plainDecimal, otherForms_areLeftToThePlainConversion) {
    for (const std::string text : {"", "-", ".", ",", "+-1", "nan", "inf", " 1", "9007199254740993", "e5",
                                   "00000000000000000001", "0.0000000000000000001", "12345678901234567890"}) {
        double value = 7.0;
        EXPECT_EQ(parsePlainDecimal(text.data(), text.data() + text.size(), value), nullptr) << text;
        EXPECT_EQ(value, 7.0) << text;
    }
}

TEST(plainDecimal, randomTexts_giveTheBitsOfThePlainConversion) {
    std::mt19937_64 random(8);
    std::uniform_int_distribution<int> length(1, 15);
    std::uniform_int_distribution<int> digit('0', '9');
    for (int i = 0; i < 500000; ++i) {
        std::string text(static_cast<std::size_t>(length(random)), '0');
        for (char& c : text)
            c = static_cast<char>(digit(random));
        text.insert(random() % (text.size() + 1), random() % 2 == 0 ? "." : ",");
        if (random() % 3 == 0)
            text.insert(0, "-");
        ASSERT_NO_FATAL_FAILURE(expectPlainValue(text, text.size()));
    }
}

} // namespace
} // namespace qxcms::detail
