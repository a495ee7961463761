#include <climits>

#include <gtest/gtest.h>

#include "platform/utility.h"

namespace {

TEST(textCompare, letters_areEqualWhateverTheirCase) {
    EXPECT_EQ(strcmp_ci("ABCDEFGHIJKLMNOPQRSTUVWXYZ", "abcdefghijklmnopqrstuvwxyz"), 0);
    EXPECT_EQ(strcmp_ci("Sample_Id 1", "SAMPLE_ID 1"), 0);
}

TEST(textCompare, result_isTheSignOfTheFirstDifference) {
    EXPECT_EQ(strcmp_ci("D50", "d65"), -1);
    EXPECT_EQ(strcmp_ci("d65", "D50"), 1);
    EXPECT_EQ(strcmp_ci("aZ", "Ba"), -1);
}

TEST(textCompare, shorterText_comesFirst) {
    EXPECT_EQ(strcmp_ci("LAB", "lab_l"), -1);
    EXPECT_EQ(strcmp_ci("lab_l", "LAB"), 1);
    EXPECT_EQ(strcmp_ci("", "a"), -1);
    EXPECT_EQ(strcmp_ci("", ""), 0);
}

// The neighbours of the letters in ASCII: "@" and "`" before, "[" and "{" behind.
TEST(textCompare, signsBesideTheLetters_areNotFolded) {
    EXPECT_NE(strcmp_ci("@", "`"), 0);
    EXPECT_NE(strcmp_ci("[", "{"), 0);
    EXPECT_EQ(strcmp_ci("_", "A"), -1);
}

TEST(textCompare, bytesOutsideAscii_areNotFoldedAndComeLast) {
    EXPECT_NE(strcmp_ci("\xC4", "\xE4"), 0);
    EXPECT_EQ(strcmp_ci("\xC4", "\xC4"), 0);
    EXPECT_EQ(strcmp_ci("z", "\x80"), -1);
    EXPECT_EQ(strcmp_ci("\xFF", "z"), 1);
}

TEST(textCompare, nullPointer_equalsANullPointerAlone) {
    EXPECT_EQ(strcmp_ci(nullptr, nullptr), 0);
    EXPECT_EQ(strcmp_ci(nullptr, ""), -1);
    EXPECT_EQ(strcmp_ci("", nullptr), 1);
}

TEST(textCompare, limit_leavesTheRestOutOfSight) {
    EXPECT_EQ(strncmp_ci("SPECTRAL_NM400", "spectral_pct", 9), 0);
    EXPECT_EQ(strncmp_ci("abc", "ABD", 2), 0);
    EXPECT_EQ(strncmp_ci("abc", "ABD", 3), -1);
}

TEST(textCompare, limit_mayPassTheEndOfTheTexts) {
    EXPECT_EQ(strncmp_ci("abc", "ABC", INT_MAX), 0);
    EXPECT_EQ(strncmp_ci("ab", "ABC", INT_MAX), -1);
}

TEST(textCompare, limitBelowOne_leavesNothingToDiffer) {
    EXPECT_EQ(strncmp_ci("a", "b", 0), 0);
    EXPECT_EQ(strncmp_ci("a", "b", -1), 0);
}

TEST(textCompare, limitedComparison_treatsNullPointersAlike) {
    EXPECT_EQ(strncmp_ci(nullptr, nullptr, 3), 0);
    EXPECT_EQ(strncmp_ci(nullptr, "", 0), -1);
    EXPECT_EQ(strncmp_ci("a", nullptr, 0), 1);
}

TEST(textCompare, limitOfOne_comparesTheFirstCharacter) {
    EXPECT_NE(strncmp_ci("ax", "bx", 1), 0);
    EXPECT_EQ(strncmp_ci("ax", "Ay", 1), 0);
    EXPECT_EQ(strncmp_ci("ax", "bx", 0), 0);
}

} // namespace
