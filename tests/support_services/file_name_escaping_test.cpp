// Escapes in keys and file names, and back.
#include <cstdio>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/file_name_escaping.h"

namespace qxcms::tests {
namespace {

/// The set of the cache files: 18 characters.
constexpr char kCacheSet[] = "$% ./\\*[]@?:|#<>\";";

struct Answer {
    std::string text;
    int result;

    bool operator==(const Answer& other) const { return text == other.text && result == other.result; }
};

void PrintTo(const Answer& answer, std::ostream* out) {
    *out << testing::PrintToString(answer.text) << ", " << answer.result;
}

/// What stands in a destination before.
constexpr char kBefore = '#';

/// The text at the front of a destination, of which nothing beyond its size may have been touched.
Answer answerIn(const std::vector<char>& destination, std::size_t size, int result) {
    for (std::size_t i = size; i < destination.size(); ++i)
        EXPECT_EQ(destination[i], kBefore) << "written beyond the destination";
    return {destination.data(), result};
}

Answer encoded(const std::string& source, const char* illegal = kCacheSet) {
    const std::size_t size = 3 * source.size() + 1;
    std::vector<char> destination(size + 8, kBefore);
    const int result = TCMS_EncodeIllegalCharacters(source.c_str(), destination.data(), illegal);
    return answerIn(destination, size, result);
}

Answer decoded(const std::string& source) {
    const std::size_t size = source.size() + 1;
    std::vector<char> destination(size + 8, kBefore);
    const int result = TCMS_DecodeIllegalCharacters(source.c_str(), destination.data());
    return answerIn(destination, size, result);
}

Answer encodedBefore(const std::vector<const char*>& suffixes, const std::string& source,
                     const char* illegal = kCacheSet) {
    const std::size_t size = 3 * source.size() + 1;
    std::vector<char> destination(size + 8, kBefore);
    const int result = TCMS_EncodeIllegalCharactersWithoutSuffix(
        source.c_str(), destination.data(), illegal, static_cast<int>(suffixes.size()), suffixes.data());
    return answerIn(destination, size, result);
}

bool isLetterOrDigit(int byte) {
    return std::strchr("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789", byte) != nullptr;
}

/// A text of every byte but zero.
std::string everyByte() {
    std::string text;
    for (int byte = 1; byte < 256; ++byte)
        text += static_cast<char>(byte);
    return text;
}

/// "%" and two digits as the C library writes them.
std::string escapeOf(int byte, const char* format = "%%%02x") {
    char text[4];
    std::snprintf(text, sizeof text, format, static_cast<unsigned>(byte));
    return text;
}

// Encoding.

TEST(escaping, charactersOfTheSet_becomePercentAndTwoDigits) {
    EXPECT_EQ(encoded("Ink 50%"), (Answer{"Ink%2050%25", 1}));
    EXPECT_EQ(encoded(kCacheSet), (Answer{"%24%25%20%2e%2f%5c%2a%5b%5d%40%3f%3a%7c%23%3c%3e%22%3b", 1}));
}

TEST(escaping, otherCharacters_areCopied) {
    EXPECT_EQ(encoded("a-b_c"), (Answer{"a-b_c", 0}));
    EXPECT_EQ(encoded("gr\xc3\xbcn\t\x01\x7f"), (Answer{"gr\xc3\xbcn\t\x01\x7f", 0}));
    EXPECT_EQ(encoded(""), (Answer{"", 0}));
}

TEST(escaping, everyByteOfASetOfAll_isEscapedUnlessALetterOrDigit) {
    const std::string all = everyByte();
    for (int byte = 1; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        const bool stays = isLetterOrDigit(byte);
        const Answer expected = {stays ? text : escapeOf(byte), stays ? 0 : 1};
        EXPECT_EQ(encoded(text, all.c_str()), expected) << byte;
        EXPECT_EQ(encoded(text, text.c_str()), expected) << byte;
    }
}

TEST(escaping, lettersAndDigits_areNeverEscaped) {
    EXPECT_EQ(encoded("aZ09 ", "abcxyzABCXYZ0123456789 "), (Answer{"aZ09%20", 1}));
    EXPECT_EQ(encoded("aZ09", "aZ09"), (Answer{"aZ09", 0}));
}

TEST(escaping, percentSign_isEscapedOnlyWhereTheSetNamesIt) {
    EXPECT_EQ(encoded("50% .", " ."), (Answer{"50%%20%2e", 1}));
    EXPECT_EQ(encoded("%20", "%"), (Answer{"%2520", 1}));
}

TEST(escaping, emptySet_copiesEverything) {
    EXPECT_EQ(encoded("Ink 50%", ""), (Answer{"Ink 50%", 0}));
    EXPECT_EQ(encoded("Ink 50%", nullptr), (Answer{"Ink 50%", 0}));
}

TEST(escaping, reservedNames_areCopied) {
    for (const char* const name : {"Trans._White_100_w", "Trans._White_100_g", "Trans._White_100_k",
                                   "trans._white_100_K", "TRANS._WHITE_100_W"})
        EXPECT_EQ(encoded(name), (Answer{name, 0}));
}

TEST(escaping, nearlyReservedNames_areEscaped) {
    EXPECT_EQ(encoded("Trans._White_100_c"), (Answer{"Trans%2e_White_100_c", 1}));
    EXPECT_EQ(encoded("Trans._White_100_"), (Answer{"Trans%2e_White_100_", 1}));
    EXPECT_EQ(encoded("Trans._White_100_w "), (Answer{"Trans%2e_White_100_w%20", 1}));
    EXPECT_EQ(encoded(" Trans._White_100_w"), (Answer{"%20Trans%2e_White_100_w", 1}));
}

TEST(escaping, longestResult_fillsTheDestination) {
    const std::string source(10000, ' ');
    std::string expected;
    for (int i = 0; i < 10000; ++i)
        expected += "%20";
    EXPECT_EQ(encoded(source), (Answer{expected, 1}));
    EXPECT_EQ(encodedBefore({".txt"}, source), (Answer{expected, 1}));
}

TEST(escaping, nullSource_givesAnEmptyText) {
    char text[] = "before";
    EXPECT_EQ(TCMS_EncodeIllegalCharacters(nullptr, text, kCacheSet), 0);
    EXPECT_STREQ(text, "");
    std::strcpy(text, "before");
    EXPECT_EQ(TCMS_DecodeIllegalCharacters(nullptr, text), 0);
    EXPECT_STREQ(text, "");
    const char* const suffix = ".txt";
    std::strcpy(text, "before");
    EXPECT_EQ(TCMS_EncodeIllegalCharactersWithoutSuffix(nullptr, text, kCacheSet, 1, &suffix), 0);
    EXPECT_STREQ(text, "");
}

TEST(escaping, nullDestination_isAnsweredWith0) {
    EXPECT_EQ(TCMS_EncodeIllegalCharacters("a b", nullptr, kCacheSet), 0);
    EXPECT_EQ(TCMS_DecodeIllegalCharacters("a%20b", nullptr), 0);
    EXPECT_EQ(TCMS_EncodeIllegalCharactersWithoutSuffix("a b", nullptr, kCacheSet, 0, nullptr), 0);
}

// Decoding.

TEST(escaping, escapes_areDecoded) {
    EXPECT_EQ(decoded("Ink%2050%25"), (Answer{"Ink 50%", 1}));
    EXPECT_EQ(decoded("plain-text_\xc3\xbc"), (Answer{"plain-text_\xc3\xbc", 0}));
    EXPECT_EQ(decoded(""), (Answer{"", 0}));
}

TEST(escaping, everyByte_isDecodedFromDigitsOfEitherCase) {
    for (const char* const format : {"%%%02x", "%%%02X"})
        for (int byte = 0; byte < 256; ++byte) {
            char destination[4] = {kBefore, kBefore, kBefore, kBefore};
            EXPECT_EQ(TCMS_DecodeIllegalCharacters(escapeOf(byte, format).c_str(), destination), 1);
            EXPECT_EQ(destination[0], static_cast<char>(byte));
            EXPECT_EQ(destination[1], '\0');
            EXPECT_EQ(destination[2], kBefore);
        }
}

TEST(escaping, textAfterAnEscapedZero_isDecodedBehindIt) {
    char destination[8] = "#######";
    EXPECT_EQ(TCMS_DecodeIllegalCharacters("a%00b", destination), 1);
    EXPECT_EQ(std::string(destination, 8), std::string("a\0b\0###\0", 8));
}

TEST(escaping, escapesOfOtherCharacters_areArithmetic) {
    EXPECT_EQ(decoded("%zz"), (Answer{"\x53", 1}));       // 35*16 + 35 = 595
    EXPECT_EQ(decoded("%Zz"), (Answer{"\x53", 1}));       // the case does not matter
    EXPECT_EQ(decoded("%g0"), (Answer{"", 1}));           // 16*16 = 256
    EXPECT_EQ(decoded("%%4z"), (Answer{"\xe4z", 1}));     // (37 - 87)*16 + 4 = -796
    EXPECT_EQ(decoded("%  "), (Answer{"\x59", 1}));       // (32 - 87)*16 + 32 - 87 = -935
    EXPECT_EQ(decoded("%\xff\xff"), (Answer{"\x28", 1})); // (255 - 87)*16 + 255 - 87 = 2856
    EXPECT_EQ(decoded("%@["), (Answer{"\x94", 1}));       // (64 - 87)*16 + 91 - 87 = -364
}

TEST(escaping, everyPairOfCharacters_isAnEscape) {
    for (int high = 1; high < 256; ++high)
        for (int low = 1; low < 256; ++low) {
            const char source[] = {'%', static_cast<char>(high), static_cast<char>(low), '\0'};
            char destination[4] = "";
            ASSERT_EQ(TCMS_DecodeIllegalCharacters(source, destination), 1);
            int code[2] = {high, low};
            for (int& digit : code) {
                if (digit >= 'A' && digit <= 'Z')
                    digit += 32;
                digit -= digit >= '0' && digit <= '9' ? 48 : 87;
            }
            // The remainder of 256 that is not negative.
            const int expected = ((code[0] * 16 + code[1]) % 256 + 256) % 256;
            ASSERT_EQ(static_cast<unsigned char>(destination[0]), expected) << high << ' ' << low;
            ASSERT_EQ(destination[1], '\0');
        }
}

TEST(escaping, cutEscape_losesItsPercentSign) {
    EXPECT_EQ(decoded("abc%4"), (Answer{"abc4", 0}));
    EXPECT_EQ(decoded("abc%"), (Answer{"abc", 0}));
    EXPECT_EQ(decoded("%"), (Answer{"", 0}));
    EXPECT_EQ(decoded("%%"), (Answer{"", 0}));
    EXPECT_EQ(decoded("%20%4"), (Answer{" 4", 1}));
}

TEST(escaping, decoding_mayBeDoneInPlace) {
    char text[] = "Ink%2050%25";
    EXPECT_EQ(TCMS_DecodeIllegalCharacters(text, text), 1);
    EXPECT_STREQ(text, "Ink 50%");
}

TEST(escaping, everyByte_comesBackWhereTheSetNamesThePercentSign) {
    const std::string all = everyByte();
    for (const char* const illegal : {"%", kCacheSet, all.c_str()}) {
        const Answer there = encoded(all, illegal);
        EXPECT_EQ(there.result, 1);
        EXPECT_EQ(decoded(there.text), (Answer{all, 1}));
        for (int byte = 1; byte < 256; ++byte) {
            const std::string text(1, static_cast<char>(byte));
            EXPECT_EQ(decoded(encoded(text, illegal).text).text, text) << byte;
        }
    }
}

TEST(escaping, escapedTexts_comeBackWhenEscapedAgain) {
    const std::string once = encoded("Ink 50%").text;
    const std::string twice = encoded(once).text;
    EXPECT_EQ(twice, "Ink%252050%2525");
    EXPECT_EQ(decoded(twice).text, once);
}

// Suffixes.

TEST(escaping, suffix_staysInTheSpellingOfTheSource) {
    EXPECT_EQ(encodedBefore({".icc", ".txt"}, "My.Profile.ICC"), (Answer{"My%2eProfile.ICC", 1}));
    EXPECT_EQ(encodedBefore({".icc", ".txt"}, "My Notes.txt"), (Answer{"My%20Notes.txt", 1}));
}

TEST(escaping, suffixAlone_isNoEscape) {
    EXPECT_EQ(encodedBefore({".icc", ".txt"}, "Profile.icc"), (Answer{"Profile.icc", 0}));
}

TEST(escaping, nameWithoutAKnownSuffix_isEscapedWhole) {
    EXPECT_EQ(encodedBefore({".icc", ".txt"}, "My.Profile.icm"), (Answer{"My%2eProfile%2eicm", 1}));
    EXPECT_EQ(encodedBefore({".icc", ".txt"}, "a.txt.b"), (Answer{"a%2etxt%2eb", 1}));
    EXPECT_EQ(encodedBefore({}, "a.txt"), (Answer{"a%2etxt", 1}));
}

TEST(escaping, suffixWithNothingBeforeIt_isEscaped) {
    EXPECT_EQ(encodedBefore({".txt"}, ".txt"), (Answer{"%2etxt", 1}));
    EXPECT_EQ(encodedBefore({".txt"}, "txt"), (Answer{"txt", 0}));
    EXPECT_EQ(encodedBefore({".txt"}, "a.txt"), (Answer{"a.txt", 0}));
}

TEST(escaping, firstSuffixThatFits_counts) {
    EXPECT_EQ(encodedBefore({".gz", ".tar.gz"}, "a.b.tar.gz"), (Answer{"a%2eb%2etar.gz", 1}));
    EXPECT_EQ(encodedBefore({".tar.gz", ".gz"}, "a.b.tar.gz"), (Answer{"a%2eb.tar.gz", 1}));
}

TEST(escaping, shorterSuffixAfterALongerOne_stillFits) {
    EXPECT_EQ(encodedBefore({".profile", ".txt"}, "a long name.txt"), (Answer{"a%20long%20name.txt", 1}));
    EXPECT_EQ(encodedBefore({".profile", ".txt"}, "a .txt"), (Answer{"a%20.txt", 1}));
    EXPECT_EQ(encodedBefore({".txt", ".profile"}, "a .PROFILE"), (Answer{"a%20.PROFILE", 1}));
}

TEST(escaping, suffixThatFitsAnotherName_doesNotFitALaterShorterOne) {
    // The end of the source is taken for each suffix anew.
    EXPECT_EQ(encodedBefore({"b.c", "a.b.c"}, "a.b.c", "."), (Answer{"a%2eb.c", 1}));
    EXPECT_EQ(encodedBefore({"x.c", "a.b.c", "longer than the name"}, "a.b.c", "."),
              (Answer{"a%2eb%2ec", 1}));
}

TEST(escaping, emptyAndNullSuffixes_neverFit) {
    EXPECT_EQ(encodedBefore({"", nullptr, ".txt"}, "a b.txt"), (Answer{"a%20b.txt", 1}));
    EXPECT_EQ(encodedBefore({"", nullptr}, "a b.txt"), (Answer{"a%20b%2etxt", 1}));
    EXPECT_EQ(encodedBefore({""}, ""), (Answer{"", 0}));
}

TEST(escaping, withoutAList_theWholeNameIsEscaped) {
    char text[32];
    const char* const suffix = ".txt";
    EXPECT_EQ(TCMS_EncodeIllegalCharactersWithoutSuffix("a.txt", text, kCacheSet, 3, nullptr), 1);
    EXPECT_STREQ(text, "a%2etxt");
    for (const int count : {0, -1}) {
        EXPECT_EQ(TCMS_EncodeIllegalCharactersWithoutSuffix("a.txt", text, kCacheSet, count, &suffix), 1);
        EXPECT_STREQ(text, "a%2etxt");
    }
}

TEST(escaping, reservedNameBeforeASuffix_isCopied) {
    EXPECT_EQ(encodedBefore({".txt"}, "Trans._White_100_w.TXT"), (Answer{"Trans._White_100_w.TXT", 0}));
    EXPECT_EQ(encodedBefore({".txt"}, "Trans._White_100_w"), (Answer{"Trans._White_100_w", 0}));
}

TEST(escaping, reservedNameCutByASuffix_isEscaped) {
    EXPECT_EQ(encodedBefore({"_w"}, "Trans._White_100_w"), (Answer{"Trans%2e_White_100_w", 1}));
}

TEST(escaping, stems_mayBeOfAnyLength) {
    const std::string stem(100000, 'n');
    EXPECT_EQ(encodedBefore({".txt"}, stem + " .txt"), (Answer{stem + "%20.txt", 1}));
}

} // namespace
} // namespace qxcms::tests
