#include <cmath>

#include <gtest/gtest.h>

#include "platform/utility.h"

namespace {

TEST(vectors, distance_isEuclidean) {
    const double a[] = {50.0, 3.0, -4.0};
    const double b[] = {48.0, 0.0, 2.0};
    EXPECT_EQ(vect_distance(a, b, 3), 7.0);
    EXPECT_EQ(vect_distance(b, a, 3), 7.0);
}

TEST(vectors, distance_takesTheFirstComponentsOnly) {
    const double a[] = {3.0, 4.0, 1000.0};
    const double b[] = {0.0, 0.0, 0.0};
    EXPECT_EQ(vect_distance(a, b, 2), 5.0);
}

// 1 + 2^-54 is 1 again: behind the 1 the sixteen small squares vanish one by one; before it they sum up to
// 2^-50, and the root of 1 + 2^-50 is 1 + 2^-51.
TEST(vectors, squares_areSummedByAscendingIndex) {
    double largeFirst[17];
    double largeLast[17];
    for (int i = 0; i < 17; ++i) {
        largeFirst[i] = i == 0 ? 1.0 : 0x1p-27;
        largeLast[i] = i == 16 ? 1.0 : 0x1p-27;
    }
    const double zeros[17] = {};
    EXPECT_EQ(vect_distance(largeFirst, zeros, 17), 1.0);
    EXPECT_EQ(vect_distance(largeLast, zeros, 17), 1.0 + 0x1p-51);
}

TEST(vectors, withoutComponents_theDistanceIsZero) {
    const double a[] = {1.0};
    const double b[] = {2.0};
    EXPECT_EQ(vect_distance(a, b, 0), 0.0);
    EXPECT_EQ(vect_distance(a, b, -1), 0.0);
    EXPECT_EQ(vect_distance(nullptr, nullptr, 0), 0.0);
}

TEST(vectors, nullPointer_givesNotANumber) {
    const double a[] = {1.0};
    EXPECT_TRUE(std::isnan(vect_distance(nullptr, a, 1)));
    EXPECT_TRUE(std::isnan(vect_distance(a, nullptr, 1)));
    EXPECT_TRUE(std::isnan(vect_distance(nullptr, nullptr, 1)));
}

} // namespace
