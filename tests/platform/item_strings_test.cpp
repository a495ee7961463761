#include <chrono>
#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/utility.h"

namespace {

using Texts = std::vector<std::string>;

// All values of an item string.
Texts valuesOf(const char* items) {
    Texts values;
    char text[64];
    while (str_str(items, static_cast<int>(values.size()), text, sizeof text) == 0)
        values.push_back(text);
    return values;
}

TEST(itemString, values_areSeparatedByBlanksOrCommas) {
    EXPECT_EQ(valuesOf("a b,c"), (Texts{"a", "b", "c"}));
    EXPECT_EQ(valuesOf("12, 0.5  \"cold white\",, x\"y\""), (Texts{"12", "0.5", "cold white", "x\"y\""}));
}

TEST(itemString, whiteSpaceOfEveryKind_separates) {
    EXPECT_EQ(valuesOf("a\tb\nc\vd\fe\rf g"), (Texts{"a", "b", "c", "d", "e", "f", "g"}));
}

TEST(itemString, otherSigns_areCharacters) {
    EXPECT_EQ(valuesOf("a;b:c'd\x01\xA0\xFF"), (Texts{"a;b:c'd\x01\xA0\xFF"}));
}

TEST(itemString, severalSeparators_areAsOne) {
    EXPECT_EQ(valuesOf("1,,2"), (Texts{"1", "2"}));
    EXPECT_EQ(valuesOf("1 , \t,2"), (Texts{"1", "2"}));
}

TEST(itemString, separatorsAtTheEnds_areNoValues) {
    EXPECT_EQ(valuesOf(" ,1 2, "), (Texts{"1", "2"}));
    EXPECT_EQ(valuesOf(" , "), Texts{});
    EXPECT_EQ(valuesOf(""), Texts{});
}

TEST(itemString, quotes_holdSeparators) {
    EXPECT_EQ(valuesOf("\"a b, c\" d"), (Texts{"a b, c", "d"}));
}

TEST(itemString, quotes_holdEmptyValues) {
    EXPECT_EQ(valuesOf("\"\" a \"\""), (Texts{"", "a", ""}));
}

TEST(itemString, whatStandsBehindAClosingQuote_isTheNextValue) {
    EXPECT_EQ(valuesOf("\"a\"\"b\"c d"), (Texts{"a", "b", "c", "d"}));
}

TEST(itemString, quoteWithoutItsEnd_endsWithTheString) {
    EXPECT_EQ(valuesOf("a \"b c"), (Texts{"a", "b c"}));
    EXPECT_EQ(valuesOf("a \""), (Texts{"a", ""}));
}

TEST(itemString, quoteInsideABareValue_isACharacter) {
    EXPECT_EQ(valuesOf("a\"b c\"d"), (Texts{"a\"b", "c\"d"}));
}

// Which index is asked, and the answers of the three functions where there is no value.
TEST(itemString, missingIndex_answersMinusOneAndTouchesNothing) {
    int whole = 7;
    double number = 7.5;
    char text[] = "kept";
    for (const int index : {2, 3, INT_MAX, -1, INT_MIN}) {
        EXPECT_EQ(str_int_from_itemstr("1 2", index, &whole), -1) << index;
        EXPECT_EQ(str_double_from_itemstr("1 2", index, &number), -1) << index;
        EXPECT_EQ(str_str("1 2", index, text, sizeof text), -1) << index;
    }
    EXPECT_EQ(whole, 7);
    EXPECT_EQ(number, 7.5);
    EXPECT_STREQ(text, "kept");
}

TEST(itemString, index_countsFromZero) {
    int whole = 0;
    double number = 0.0;
    EXPECT_EQ(str_int_from_itemstr("10 20 30", 0, &whole), 0);
    EXPECT_EQ(whole, 10);
    EXPECT_EQ(str_int_from_itemstr("10 20 30", 2, &whole), 0);
    EXPECT_EQ(whole, 30);
    EXPECT_EQ(str_double_from_itemstr("10 20.25 30", 1, &number), 0);
    EXPECT_EQ(number, 20.25);
}

TEST(itemString, nullPointers_answerMinusOne) {
    int whole = 7;
    double number = 7.5;
    char text[] = "kept";
    EXPECT_EQ(str_int_from_itemstr(nullptr, 0, &whole), -1);
    EXPECT_EQ(str_double_from_itemstr(nullptr, 0, &number), -1);
    EXPECT_EQ(str_str(nullptr, 0, text, sizeof text), -1);
    EXPECT_EQ(str_int_from_itemstr("1", 0, nullptr), -1);
    EXPECT_EQ(str_double_from_itemstr("1", 0, nullptr), -1);
    EXPECT_EQ(str_str("1", 0, nullptr, 10), -1);
    EXPECT_EQ(whole, 7);
    EXPECT_EQ(number, 7.5);
    EXPECT_STREQ(text, "kept");
}

TEST(itemString, integers_areDecimalAndMayHaveASign) {
    int whole = 0;
    for (const auto& [items, expected] :
         {std::pair("-12", -12), std::pair("+12", 12), std::pair("007", 7), std::pair("0", 0)}) {
        EXPECT_EQ(str_int_from_itemstr(items, 0, &whole), 0) << items;
        EXPECT_EQ(whole, expected) << items;
    }
}

TEST(itemString, integersBeyondInt_areClamped) {
    constexpr const char* kItems = "2147483647 2147483648 -2147483648 -99999999999999999999";
    const int expected[] = {INT_MAX, INT_MAX, INT_MIN, INT_MIN};
    for (int index = 0; index < 4; ++index) {
        int whole = 0;
        EXPECT_EQ(str_int_from_itemstr(kItems, index, &whole), 0);
        EXPECT_EQ(whole, expected[index]) << index;
    }
}

TEST(itemString, valueThatIsNotAllOneInteger_answersMinusOneAndTouchesNothing) {
    int whole = 7;
    for (const char* items : {"abc", "12mm", "1.5", "3.0000", "0x10", "1e3", "-", "+", "+-1", "\"\"", "\" \"",
                              "\"1 2\"", "\"1,2\"", "\"1,\"", "1\""})
        EXPECT_EQ(str_int_from_itemstr(items, 0, &whole), -1) << items;
    EXPECT_EQ(whole, 7);
}

TEST(itemString, valueThatIsNotAllOneNumber_answersMinusOneAndTouchesNothing) {
    double number = 7.5;
    for (const char* items : {"abc", "1.5mm", "1.5.5", "information", "nano", "-", ".", "e5", "1e", "\"\"",
                              "\" \"", "\"1 2\"", "\"1,5\"", "\"1,\""})
        EXPECT_EQ(str_double_from_itemstr(items, 0, &number), -1) << items;
    EXPECT_EQ(number, 7.5);
}

TEST(itemString, numbers_areThoseOfTheNumberText) {
    double number = 0.0;
    for (const auto& [items, expected] :
         {std::pair("6.1250", 6.125), std::pair("-1e-3", -1e-3), std::pair(".5", 0.5), std::pair("5.", 5.0),
          std::pair("0x1p4", 16.0), std::pair("1e999", std::numeric_limits<double>::infinity()),
          std::pair("-inf", -std::numeric_limits<double>::infinity()), std::pair("100", 100.0)}) {
        EXPECT_EQ(str_double_from_itemstr(items, 0, &number), 0) << items;
        EXPECT_EQ(number, expected) << items;
    }
    EXPECT_EQ(str_double_from_itemstr("nan", 0, &number), 0);
    EXPECT_TRUE(std::isnan(number));
}

// A comma separates whatever the locale makes of it.
TEST(itemString, decimalComma_separates) {
    double number = 0.0;
    EXPECT_EQ(str_double_from_itemstr("1,5", 0, &number), 0);
    EXPECT_EQ(number, 1.0);
    EXPECT_EQ(str_double_from_itemstr("1,5", 1, &number), 0);
    EXPECT_EQ(number, 5.0);
}

TEST(itemString, quotedNumbers_areNumbersWithBlanksAroundOrWithout) {
    int whole = 0;
    double number = 0.0;
    EXPECT_EQ(str_int_from_itemstr("\"12\"", 0, &whole), 0);
    EXPECT_EQ(whole, 12);
    EXPECT_EQ(str_int_from_itemstr("\" \t-3 \n\"", 0, &whole), 0);
    EXPECT_EQ(whole, -3);
    EXPECT_EQ(str_double_from_itemstr("x \" 0.25 \"", 1, &number), 0);
    EXPECT_EQ(number, 0.25);
}

TEST(itemString, text_fitsWithItsTerminatorOrIsRefused) {
    char text[] = "......";
    EXPECT_EQ(str_str("abc", 0, text, 3), -1);
    EXPECT_STREQ(text, "......");
    EXPECT_EQ(str_str("abc", 0, text, 4), 0);
    EXPECT_EQ(std::string(text, 6), std::string("abc\0..", 6));
    EXPECT_EQ(str_str("\"\"", 0, text, 1), 0);
    EXPECT_STREQ(text, "");
    for (const int size : {0, -1, INT_MIN})
        EXPECT_EQ(str_str("\"\"", 0, text, size), -1) << size;
}

TEST(itemString, text_mayReplaceItsItemString) {
    char items[] = "a bcdef";
    EXPECT_EQ(str_str(items, 1, items, sizeof items), 0);
    EXPECT_STREQ(items, "bcdef");
}

TEST(itemString, longStrings_takeTimeInProportion) {
    std::string items;
    for (int i = 0; i < 1000000; ++i)
        items += "7 ";
    items += "8";
    int whole = 0;
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(str_int_from_itemstr(items.c_str(), 1000000, &whole), 0);
    EXPECT_EQ(whole, 8);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
}

} // namespace
