// Names that may have been meant.
#include "qc/nearest_names.h"

#include <gmock/gmock.h>

namespace qxcms::tests {
namespace {

using qc::nearestNames;
using testing::ElementsAre;
using testing::IsEmpty;

// Of a name of two letters one difference is half.
TEST(nearestNames, aLetterPutInLeftOutReplacedOrExchanged_isOneDifference) {
    for (const char* near : {"A", "1", "AA1", "A12", "B1", "A2", "1A"})
        EXPECT_THAT(nearestNames(near, {"A1"}), ElementsAre("A1")) << near;
    for (const char* far : {"B", "B2", "AB12", "1B", "2A"})
        EXPECT_THAT(nearestNames(far, {"A1"}), IsEmpty()) << far;
}

TEST(nearestNames, fewerDifferences_comeFirst) {
    EXPECT_THAT(nearestNames("densty", {"dense", "density"}), ElementsAre("density", "dense"));
}

TEST(nearestNames, equallyNearOnes_keepTheirOrder) {
    EXPECT_THAT(nearestNames("D60", {"D65", "D50", "A"}), ElementsAre("D65", "D50"));
}

// As two replacements they would be as far as the other name.
TEST(nearestNames, exchangedNeighbours_areNearerThanTwoReplacedLetters) {
    EXPECT_THAT(nearestNames("cmyk", {"cmab", "cmky"}), ElementsAre("cmky", "cmab"));
}

TEST(nearestNames, letterCase_makesNoDifference) {
    EXPECT_THAT(nearestNames("d50", {"A", "D50", "D55"}), ElementsAre("D50", "D55"));
}

TEST(nearestNames, halfOfTheLetters_isStillNear) {
    EXPECT_THAT(nearestNames("abxy", {"abcd"}), ElementsAre("abcd"));
    EXPECT_THAT(nearestNames("axyz", {"abcd"}), IsEmpty());
}

TEST(nearestNames, halfOfAnOddNumberOfLetters_isNotRoundedUp) {
    EXPECT_THAT(nearestNames("abxyz", {"abcde"}), IsEmpty());
    EXPECT_THAT(nearestNames("abcyz", {"abcde"}), ElementsAre("abcde"));
}

TEST(nearestNames, letters_areThoseOfTheKnownName) {
    EXPECT_THAT(nearestNames("ab", {"abcd", "abcde"}), ElementsAre("abcd"));
    EXPECT_THAT(nearestNames("abcdef", {"abcd", "abc"}), ElementsAre("abcd"));
}

TEST(nearestNames, nameOfOneLetter_isNotNearAnother) {
    EXPECT_THAT(nearestNames("B", {"A", "C", "E"}), IsEmpty());
}

TEST(nearestNames, most_limitsTheirNumber) {
    const std::vector<std::string> known = {"F1", "F10", "F11", "F12"};
    EXPECT_THAT(nearestNames("F13", known), ElementsAre("F1", "F10", "F11"));
    EXPECT_THAT(nearestNames("F13", known, 1), ElementsAre("F1"));
    EXPECT_THAT(nearestNames("F13", known, 0), IsEmpty());
}

TEST(nearestNames, spelling_isThatOfTheKnownName) {
    EXPECT_THAT(nearestNames("led-b11", {"LED-B1"}), ElementsAre("LED-B1"));
}

TEST(nearestNames, emptyTexts_areNearNothingElse) {
    EXPECT_THAT(nearestNames("", {"A", "D50"}), IsEmpty());
    EXPECT_THAT(nearestNames("A", {""}), IsEmpty());
    EXPECT_THAT(nearestNames("A", {}), IsEmpty());
}

} // namespace
} // namespace qxcms::tests
