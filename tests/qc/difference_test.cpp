#include "qc/difference.h"

#include <cmath>

#include <gtest/gtest.h>

#include "qc/formulas.h"

using qxcms::qc::Difference;
using qxcms::qc::difference;
using qxcms::qc::kCiede2000;
using qxcms::qc::Lab;

namespace {

constexpr int kCie76 = 0;
constexpr int kCie94 = 1;
constexpr int kCmc11 = 3;

TEST(difference, parts_areSampleMinusStandard) {
    const Difference d = difference({60.0, 5.0, -2.0}, {50.0, 8.0, 4.0}, kCie76);
    EXPECT_EQ(d.lightness, 10.0);
    EXPECT_EQ(d.a, -3.0);
    EXPECT_EQ(d.b, -6.0);
}

TEST(difference, chroma_isPositiveForAMoreSaturatedSample) {
    EXPECT_DOUBLE_EQ(difference({50.0, 6.0, 8.0}, {50.0, 3.0, 4.0}, kCie76).chroma, 5.0);
    EXPECT_DOUBLE_EQ(difference({50.0, 3.0, 4.0}, {50.0, 6.0, 8.0}, kCie76).chroma, -5.0);
}

// A quarter turn at chroma 10: dH = sqrt(10^2 + 10^2 - 0).
TEST(difference, hue_isPositiveCounterClockwiseFromTheStandard) {
    const Lab red = {50.0, 10.0, 0.0};
    const Lab yellow = {50.0, 0.0, 10.0};
    EXPECT_DOUBLE_EQ(difference(yellow, red, kCie76).hue, std::sqrt(200.0));
    EXPECT_DOUBLE_EQ(difference(red, yellow, kCie76).hue, -std::sqrt(200.0));
}

TEST(difference, hue_crossesZeroDegreesTheShortWay) {
    const Lab below = {50.0, 10.0, -1.0};
    const Lab above = {50.0, 10.0, 1.0};
    EXPECT_DOUBLE_EQ(difference(above, below, kCie76).hue, 2.0);
    EXPECT_DOUBLE_EQ(difference(below, above, kCie76).hue, -2.0);
}

TEST(difference, hue_ofOppositeHuesIsPositive) {
    EXPECT_DOUBLE_EQ(difference({50.0, -10.0, 0.0}, {50.0, 10.0, 0.0}, kCie76).hue, 20.0);
}

TEST(difference, hue_ofOneHueIsZeroWithoutASign) {
    const Difference d = difference({50.0, 3.0, -4.0}, {50.0, 6.0, -8.0}, kCie76);
    EXPECT_EQ(d.hue, 0.0);
    EXPECT_FALSE(std::signbit(d.hue));
}

// The distance in the plane of a* and b*: neither the lightness nor the direction counts.
TEST(difference, chromaticness_isTheDistanceOfTheChromaticities) {
    EXPECT_EQ(difference({90.0, 1.0, -2.0}, {20.0, -2.0, 2.0}, kCie76).chromaticness, 5.0);
    EXPECT_EQ(difference({20.0, -2.0, 2.0}, {90.0, 1.0, -2.0}, kCie76).chromaticness, 5.0);
    EXPECT_EQ(difference({90.0, 3.0, 4.0}, {20.0, 3.0, 4.0}, kCie76).chromaticness, 0.0);
}

// Grey balance: two tints of one chroma and opposite hues are far from each other.
TEST(difference, chromaticness_isNotTheDifferenceOfTheChromas) {
    const Difference d = difference({50.0, 0.0, 2.0}, {50.0, 0.0, -2.0}, kCie76);
    EXPECT_EQ(d.chroma, 0.0);
    EXPECT_EQ(d.chromaticness, 4.0);
}

TEST(difference, chromaticness_isChromaAndHueTogetherInEveryFormula) {
    for (int formula = kCiede2000; formula <= 4; ++formula) {
        const Difference d = difference({61.5, 12.25, -33.0}, {58.0, 20.5, -21.0}, formula);
        EXPECT_NEAR(d.chroma * d.chroma + d.hue * d.hue, d.chromaticness * d.chromaticness, 1e-9) << formula;
    }
}

TEST(difference, threeDifferences_sumToTheCie1976Difference) {
    const Difference d = difference({61.5, 12.25, -33.0}, {58.0, 20.5, -21.0}, kCie76);
    EXPECT_NEAR(d.lightness * d.lightness + d.chroma * d.chroma + d.hue * d.hue, d.total * d.total, 1e-9);
}

TEST(difference, cie1976_isTheDistance) {
    EXPECT_EQ(difference({50.0, 3.0, 4.0}, {50.0, 0.0, 0.0}, kCie76).total, 5.0);
}

// With chromas 20 and 10 at one hue the difference is 10 / (1 + 0.045 C), C being that of the standard.
TEST(difference, cie1994_takesTheSecondColourAsTheStandard) {
    EXPECT_NEAR(difference({50.0, 20.0, 0.0}, {50.0, 10.0, 0.0}, kCie94).total, 10.0 / 1.45, 1e-12);
    EXPECT_NEAR(difference({50.0, 10.0, 0.0}, {50.0, 20.0, 0.0}, kCie94).total, 10.0 / 1.90, 1e-12);
}

// Pair 19 of the CIEDE2000 test data.
TEST(difference, ciede2000_isAsPublished) {
    EXPECT_NEAR(difference({50.0, 2.5, 0.0}, {56.0, -27.0, -3.0}, kCiede2000).total, 31.9030, 0.00005);
}

TEST(difference, equalColours_differByNothingInEveryFormula) {
    const Lab lab = {37.419544671192781, 12.833049894796833, -15.830779162616759};
    for (int formula = kCiede2000; formula <= 4; ++formula)
        EXPECT_EQ(difference(lab, lab, formula).total, 0.0) << formula;
}

// Nearly equal chromas: rounding may leave the hue term of CIE94 and CMC below 0; the total stays a number.
TEST(difference, roundingOfTheHueTerm_leavesANumber) {
    for (int step = 1; step <= 2000; ++step) {
        const double angle = step * 0.003;
        const Lab standard = {50.0, 90.0 * std::cos(angle), 90.0 * std::sin(angle)};
        const Lab sample = {50.0, 90.000001 * std::cos(angle), 90.000001 * std::sin(angle)};
        for (const int formula : {kCie94, kCmc11}) {
            const Difference d = difference(sample, standard, formula);
            ASSERT_TRUE(std::isfinite(d.total) && std::isfinite(d.hue)) << step;
        }
    }
}

} // namespace
