// The hue angle that both appearance models share, at its ends.
#include "colorspace/appearance_formulas.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace {

using qxcms::detail::hueInDegrees;

TEST(ciecamHue, redAxis_isZeroAndNotAFullCircle) {
    EXPECT_EQ(hueInDegrees(1.0, 0.0), 0.0);
    EXPECT_FALSE(std::signbit(hueInDegrees(1.0, 0.0)));
    EXPECT_EQ(hueInDegrees(1e-300, 0.0), 0.0);
}

// A negative zero is not below 0 either.
TEST(ciecamHue, redAxisFromBelow_isZeroWithItsSign) {
    EXPECT_EQ(hueInDegrees(1.0, -0.0), 0.0);
    EXPECT_TRUE(std::signbit(hueInDegrees(1.0, -0.0)));
}

TEST(ciecamHue, neutral_isZero) {
    EXPECT_EQ(hueInDegrees(0.0, 0.0), 0.0);
}

// The circle is added to every angle below 0, also to one that is lost in the sum.
TEST(ciecamHue, angleHardlyBelowZero_isAFullCircle) {
    EXPECT_EQ(hueInDegrees(1.0, -1e-300), 360.0);
    EXPECT_EQ(hueInDegrees(1.0, -std::numeric_limits<double>::denorm_min()), 360.0);
}

TEST(ciecamHue, angleHardlyAboveZero_isNearlyZero) {
    EXPECT_GT(hueInDegrees(1.0, 1e-300), 0.0);
    EXPECT_LT(hueInDegrees(1.0, 1e-300), 1e-298);
}

TEST(ciecamHue, greenAxis_isHalfACircleFromBothSides) {
    // 180 pi / 3.1415926535, and what is left of the circle.
    EXPECT_NEAR(hueInDegrees(-1.0, 0.0), 180.0000000051448, 1e-12);
    EXPECT_NEAR(hueInDegrees(-1.0, -0.0), 179.9999999948552, 1e-12);
}

TEST(ciecamHue, ofWhatIsNotANumber_isNotANumber) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(std::isnan(hueInDegrees(kNan, 1.0)));
    EXPECT_TRUE(std::isnan(hueInDegrees(1.0, kNan)));
}

} // namespace
