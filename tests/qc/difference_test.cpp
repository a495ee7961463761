#include "qc/difference.h"

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "qc/formulas.h"

using qxcms::qc::DeltaE;
using qxcms::qc::Difference;
using qxcms::qc::difference;
using qxcms::qc::differences;
using qxcms::qc::Lab;
using qxcms::qc::totalsOf;

namespace {

constexpr DeltaE kCie76 = DeltaE::cie1976;
constexpr DeltaE kCie94 = DeltaE::cie1994;
constexpr DeltaE kCmc11 = DeltaE::cmc11;

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
    for (const DeltaE formula : qxcms::qc::kFormulas) {
        const Difference d = difference({61.5, 12.25, -33.0}, {58.0, 20.5, -21.0}, formula);
        EXPECT_NEAR(d.chroma * d.chroma + d.hue * d.hue, d.chromaticness * d.chromaticness, 1e-9)
            << static_cast<int>(formula);
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
    EXPECT_NEAR(difference({50.0, 2.5, 0.0}, {56.0, -27.0, -3.0}, DeltaE::ciede2000).total, 31.9030, 0.00005);
}

TEST(difference, equalColours_differByNothingInEveryFormula) {
    const Lab lab = {37.419544671192781, 12.833049894796833, -15.830779162616759};
    for (const DeltaE formula : qxcms::qc::kFormulas)
        EXPECT_EQ(difference(lab, lab, formula).total, 0.0) << static_cast<int>(formula);
}

// Nearly equal chromas: rounding may leave the hue term of CIE94 and CMC below 0; the total stays a number.
TEST(difference, roundingOfTheHueTerm_leavesANumber) {
    for (int step = 1; step <= 2000; ++step) {
        const double angle = step * 0.003;
        const Lab standard = {50.0, 90.0 * std::cos(angle), 90.0 * std::sin(angle)};
        const Lab sample = {50.0, 90.000001 * std::cos(angle), 90.000001 * std::sin(angle)};
        for (const DeltaE formula : {kCie94, kCmc11}) {
            const Difference d = difference(sample, standard, formula);
            ASSERT_TRUE(std::isfinite(d.total) && std::isfinite(d.hue)) << step;
        }
    }
}

TEST(difference, withoutAFormula_isThePublishedCiede2000) {
    EXPECT_NEAR(difference({50.0, 2.5, 0.0}, {56.0, -27.0, -3.0}).total, 31.9030, 0.00005);
}

TEST(difference, ofWhatIsNoNumber_isNoNumber) {
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const DeltaE formula : qxcms::qc::kFormulas)
        EXPECT_TRUE(std::isnan(difference({50.0, none, 0.0}, {56.0, -27.0, -3.0}, formula).total));
}

TEST(differences, areThoseOfEachSampleFromItsStandard) {
    const std::vector<Lab> samples = {{50.0, 3.0, 4.0}, {60.0, 0.0, 0.0}};
    const std::vector<Lab> standards = {{50.0, 0.0, 0.0}, {58.0, 0.0, 0.0}};
    const auto result = differences(samples, standards, kCie76);
    ASSERT_TRUE(result);
    ASSERT_EQ(result->size(), 2u);
    EXPECT_EQ((*result)[0].total, 5.0);
    EXPECT_EQ((*result)[1].lightness, 2.0);
    EXPECT_EQ(totalsOf(*result), (std::vector<double>{5.0, 2.0}));
}

TEST(differences, ofAnotherNumberOfStandards_areRefused) {
    const std::vector<Lab> samples = {{50.0, 3.0, 4.0}, {60.0, 0.0, 0.0}};
    const std::vector<Lab> standards = {{50.0, 0.0, 0.0}};
    for (const auto& result : {differences(samples, standards), differences(standards, samples)}) {
        ASSERT_FALSE(result);
        EXPECT_EQ(result.refusal().kind(), qxcms::qc::Refusal::Kind::usage);
    }
    EXPECT_STREQ(
        differences(samples, standards).refusal().what(),
        "the numbers of samples and standards differ, 2 and 1; each sample needs a standard of its own");
}

} // namespace
