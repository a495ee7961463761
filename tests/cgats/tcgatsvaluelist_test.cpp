// The value lists: how texts become entries and how entries are read back.
#include "cgats/tcgatsvaluelist.h"

#include <climits>
#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

double asDouble(const char* text) {
    TCgatsValueListDouble list(1);
    EXPECT_EQ(list.SetValue(0, text), 0);
    return list.GetDouble(0);
}

std::int32_t asInt(const char* text) {
    TCgatsValueListInt list(1);
    const std::intptr_t result = list.SetValue(0, text);
    EXPECT_EQ(result, list.GetInt(0)) << text;
    return list.GetInt(0);
}

std::int32_t truncated(const char* text) {
    TCgatsValueListDouble list(1);
    list.SetValue(0, text);
    return list.GetInt(0);
}

// ---- Floating-point numbers

TEST(cgatsValueList, doubles_areZeroAtFirst) {
    const TCgatsValueListDouble list(3);
    EXPECT_EQ(list.GetNumber(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(list.GetDouble(i), 0.0);
}

TEST(cgatsValueList, doubles_answerTheIndex) {
    TCgatsValueListDouble list(3);
    EXPECT_EQ(list.SetValue(2, "7.5"), 2);
    EXPECT_EQ(list.SetValue(0, "-1"), 0);
    EXPECT_EQ(list.GetDouble(0), -1.0);
    EXPECT_EQ(list.GetDouble(1), 0.0);
    EXPECT_EQ(list.GetDouble(2), 7.5);
}

TEST(cgatsValueList, doubles_areReadLikeAtof) {
    EXPECT_EQ(asDouble("1.5"), 1.5);
    EXPECT_EQ(asDouble("  \t1.5"), 1.5);
    EXPECT_EQ(asDouble("+2.5"), 2.5);
    EXPECT_EQ(asDouble("-2.5e2"), -250.0);
    EXPECT_EQ(asDouble("1e3x"), 1000.0);
    EXPECT_EQ(asDouble("1,5"), 1.0);
    EXPECT_EQ(asDouble(".5"), 0.5);
    EXPECT_EQ(asDouble("5."), 5.0);
    EXPECT_EQ(asDouble("0x10"), 16.0);
    EXPECT_EQ(asDouble(""), 0.0);
    EXPECT_EQ(asDouble("abc"), 0.0);
    EXPECT_EQ(asDouble("1e400"), std::numeric_limits<double>::infinity());
    EXPECT_EQ(asDouble("-inf"), -std::numeric_limits<double>::infinity());
    EXPECT_EQ(asDouble("1e-400"), 0.0);
    EXPECT_TRUE(std::isnan(asDouble("nan")));
    EXPECT_TRUE(std::signbit(asDouble("-0")));
}

TEST(cgatsValueList, doubles_areTruncatedTowardZeroAsIntegers) {
    EXPECT_EQ(truncated("1.999"), 1);
    EXPECT_EQ(truncated("-1.999"), -1);
    EXPECT_EQ(truncated("0.5"), 0);
    EXPECT_EQ(truncated("-0.5"), 0);
    EXPECT_EQ(truncated("2147483647"), INT_MAX);
    EXPECT_EQ(truncated("-2147483648"), INT_MIN);
}

TEST(cgatsValueList, doublesOutsideInt_areClamped) {
    EXPECT_EQ(truncated("2147483648"), INT_MAX);
    EXPECT_EQ(truncated("1e300"), INT_MAX);
    EXPECT_EQ(truncated("-2147483649"), INT_MIN);
    EXPECT_EQ(truncated("-1e300"), INT_MIN);
    EXPECT_EQ(truncated("inf"), INT_MAX);
    EXPECT_EQ(truncated("nan"), 0);
}

TEST(cgatsValueList, doubles_haveNoStrings) {
    TCgatsValueListDouble list(1);
    list.SetValue(0, "1.5");
    EXPECT_EQ(list.GetString(0), nullptr);
}

TEST(cgatsValueList, doubles_takeALaterValue) {
    TCgatsValueListDouble list(1);
    list.SetValue(0, "1.5");
    list.SetValue(0, "2.5");
    EXPECT_EQ(list.GetDouble(0), 2.5);
}

// ---- Integers

TEST(cgatsValueList, integers_areZeroAtFirst) {
    const TCgatsValueListInt list(3);
    EXPECT_EQ(list.GetNumber(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(list.GetInt(i), 0);
}

TEST(cgatsValueList, integers_answerTheNumber) {
    TCgatsValueListInt list(3);
    EXPECT_EQ(list.SetValue(2, "75"), 75);
    EXPECT_EQ(list.SetValue(0, "-4"), -4);
    EXPECT_EQ(list.GetInt(0), -4);
    EXPECT_EQ(list.GetInt(1), 0);
    EXPECT_EQ(list.GetInt(2), 75);
}

TEST(cgatsValueList, integers_areReadLikeAtoi) {
    EXPECT_EQ(asInt("12"), 12);
    EXPECT_EQ(asInt(" \t12"), 12);
    EXPECT_EQ(asInt("+12"), 12);
    EXPECT_EQ(asInt("-12x"), -12);
    EXPECT_EQ(asInt("1.9"), 1);
    EXPECT_EQ(asInt("1,5"), 1);
    EXPECT_EQ(asInt("0x10"), 0);
    EXPECT_EQ(asInt("007"), 7);
    EXPECT_EQ(asInt(""), 0);
    EXPECT_EQ(asInt("abc"), 0);
    EXPECT_EQ(asInt("99999999999"), INT_MAX);
    EXPECT_EQ(asInt("-99999999999"), INT_MIN);
}

TEST(cgatsValueList, integers_readAsFloatingPoint) {
    TCgatsValueListInt list(1);
    list.SetValue(0, "-12");
    EXPECT_EQ(list.GetDouble(0), -12.0);
}

TEST(cgatsValueList, integers_haveNoStrings) {
    TCgatsValueListInt list(1);
    list.SetValue(0, "12");
    EXPECT_EQ(list.GetString(0), nullptr);
}

// ---- Strings

TEST(cgatsValueList, strings_areAbsentAtFirst) {
    const TCgatsValueListString list(3);
    EXPECT_EQ(list.GetNumber(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(list.GetString(i), nullptr);
}

TEST(cgatsValueList, strings_answerTheCopy) {
    TCgatsValueListString list(2);
    char text[] = "red";
    const std::intptr_t result = list.SetValue(1, text);
    text[0] = 'x';
    EXPECT_STREQ(list.GetString(1), "red");
    EXPECT_EQ(result, reinterpret_cast<std::intptr_t>(list.GetString(1)));
    EXPECT_EQ(list.GetString(0), nullptr);
}

TEST(cgatsValueList, emptyString_isAnEntry) {
    TCgatsValueListString list(1);
    list.SetValue(0, "");
    EXPECT_STREQ(list.GetString(0), "");
}

TEST(cgatsValueList, strings_areZeroAsNumbers) {
    TCgatsValueListString list(1);
    list.SetValue(0, "12");
    EXPECT_EQ(list.GetInt(0), 0);
    EXPECT_EQ(list.GetDouble(0), 0.0);
}

TEST(cgatsValueList, replacedString_staysValid) {
    TCgatsValueListString list(1);
    list.SetValue(0, "first");
    const char* first = list.GetString(0);
    for (int i = 0; i < 100; ++i)
        list.SetValue(0, std::to_string(i).c_str());
    EXPECT_STREQ(first, "first");
    EXPECT_STREQ(list.GetString(0), "99");
}

TEST(cgatsValueList, strings_stayWhereTheyAreWhileTheListGrows) {
    TCgatsValueListString list(5000);
    list.SetValue(0, "first");
    const char* first = list.GetString(0);
    for (int i = 1; i < 5000; ++i)
        list.SetValue(i, std::to_string(i).c_str());
    EXPECT_EQ(list.GetString(0), first);
    for (int i = 1; i < 5000; ++i)
        ASSERT_EQ(list.GetString(i), std::to_string(i));
}

TEST(cgatsValueList, strings_mayBeSetInAnyOrder) {
    TCgatsValueListString list(1000);
    for (int i = 999; i >= 0; i -= 3)
        list.SetValue(i, std::to_string(i).c_str());
    for (int i = 0; i < 1000; ++i) {
        if (i % 3 == 0)
            ASSERT_EQ(orAbsent(list.GetString(i)), std::to_string(i));
        else
            ASSERT_EQ(list.GetString(i), nullptr);
    }
}

TEST(cgatsValueList, numbers_mayBeSetInAnyOrder) {
    TCgatsValueListDouble doubles(1000);
    TCgatsValueListInt integers(1000);
    for (int i = 999; i >= 0; i -= 3) {
        doubles.SetValue(i, std::to_string(i).c_str());
        integers.SetValue(i, std::to_string(i).c_str());
    }
    for (int i = 0; i < 1000; ++i) {
        ASSERT_EQ(doubles.GetDouble(i), i % 3 == 0 ? i : 0);
        ASSERT_EQ(integers.GetInt(i), i % 3 == 0 ? i : 0);
    }
}

// ---- All of them

TEST(cgatsValueList, largeCount_costsNoMemoryBeforeEntriesArrive) {
    constexpr int kMany = 2000000000;
    const std::int64_t before = addressSpacePages();
    TCgatsValueListDouble doubles(kMany);
    TCgatsValueListInt integers(kMany);
    TCgatsValueListString strings(kMany);
    doubles.SetValue(0, "1");
    integers.SetValue(0, "1");
    strings.SetValue(0, "1");
    EXPECT_LT(addressSpacePages() - before, kManyPages);
    EXPECT_EQ(doubles.GetNumber(), kMany);
    EXPECT_EQ(doubles.GetDouble(kMany - 1), 0.0);
    EXPECT_EQ(doubles.GetInt(kMany - 1), 0);
    EXPECT_EQ(integers.GetInt(kMany - 1), 0);
    EXPECT_EQ(integers.GetDouble(kMany - 1), 0.0);
    EXPECT_EQ(strings.GetString(kMany - 1), nullptr);
}

TEST(cgatsValueList, absentText_isReadAsZero) {
    TCgatsValueListDouble doubles(1);
    TCgatsValueListInt integers(1);
    doubles.SetValue(0, nullptr);
    integers.SetValue(0, nullptr);
    EXPECT_EQ(doubles.GetDouble(0), 0.0);
    EXPECT_EQ(integers.GetInt(0), 0);
}

} // namespace
} // namespace qxcms::tests
