// The nearest of many points, against looking at every one.
#include "qc/point_index.h"

#include <algorithm>
#include <cstdlib>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace qxcms::tests {
namespace {

using qc::Coordinate;
using qc::NearestPoint;
using qc::PointIndex;
using qc::PointSet;

Coordinate distanceOf(const Coordinate* left, const Coordinate* right, std::size_t dimensions) {
    Coordinate distance = 0;
    for (std::size_t i = 0; i < dimensions; ++i)
        distance = std::max(distance, std::abs(left[i] - right[i]));
    return distance;
}

NearestPoint bySearchingAll(const PointSet& points, const Coordinate* target, Coordinate limit) {
    NearestPoint found{-1, 0, false};
    for (std::size_t i = 0; i < points.size(); ++i) {
        const Coordinate distance = distanceOf(points.point(i), target, points.dimensions);
        if (distance > limit)
            continue;
        if (found.point < 0 || distance < found.distance)
            found = {static_cast<int>(i), distance, true};
        else if (distance == found.distance)
            found.unique = false;
    }
    return found;
}

// Coordinates 0 .. largest, every third one 0.
PointSet randomPoints(std::mt19937& random, std::size_t dimensions, std::size_t count, int largest) {
    PointSet points{dimensions, {}};
    for (std::size_t i = 0; i < dimensions * count; ++i) {
        const auto value = static_cast<Coordinate>(random() % static_cast<unsigned>(largest + 1));
        points.coordinates.push_back(random() % 3 == 0 ? 0 : value);
    }
    return points;
}

TEST(pointIndex, findsTheNearestPoint_asSearchingAllDoes) {
    std::mt19937 random(7);
    for (const std::size_t dimensions : {1U, 2U, 4U, 7U}) {
        for (const std::size_t count : {1U, 8U, 9U, 100U, 700U}) {
            for (const int largest : {3, 50, 1000000}) {
                const PointSet points = randomPoints(random, dimensions, count, largest);
                const PointSet targets = randomPoints(random, dimensions, 50, largest);
                const PointIndex index(points);
                for (const Coordinate limit : {0, largest / 4, largest}) {
                    for (std::size_t i = 0; i < targets.size(); ++i) {
                        const NearestPoint expected = bySearchingAll(points, targets.point(i), limit);
                        const NearestPoint found = index.nearest(targets.point(i), limit);
                        ASSERT_EQ(found.point >= 0, expected.point >= 0);
                        if (expected.point < 0)
                            continue;
                        ASSERT_EQ(found.distance, expected.distance);
                        ASSERT_EQ(found.unique, expected.unique);
                        ASSERT_EQ(distanceOf(points.point(static_cast<std::size_t>(found.point)),
                                             targets.point(i), dimensions),
                                  found.distance);
                    }
                }
            }
        }
    }
}

// In 15 dimensions nearly all of them are about as far away as the nearest one.
TEST(pointIndex, searchAmongVeryManyPointsAsNear_givesUp_andIsNotUnique) {
    std::mt19937 random(11);
    PointSet points{15, {}};
    for (int i = 0; i < 15 * 20000; ++i)
        points.coordinates.push_back(static_cast<Coordinate>(random() % 3000));
    const PointIndex index(points);
    const std::vector<Coordinate> target(15, 1500);
    const NearestPoint found = index.nearest(target.data(), 3000);
    EXPECT_GE(found.point, 0);
    EXPECT_FALSE(found.unique);
}

TEST(pointIndex, equalPoints_areOneRange) {
    const PointSet points{2, std::vector<Coordinate>(200, 5)};
    const PointIndex index(points);
    EXPECT_FALSE(index.nearest(points.point(0), 0).unique);
}

TEST(pointIndex, limit_isTakenIn) {
    const PointSet points{2, {0, 0, 100, 100}};
    const PointIndex index(points);
    const Coordinate target[] = {30, 10};
    EXPECT_EQ(index.nearest(target, 30).point, 0);
    EXPECT_EQ(index.nearest(target, 29).point, -1);
}

TEST(pointIndex, equallyNearPoints_areNotUnique) {
    const PointSet points{1, {0, 10, 30}};
    const PointIndex index(points);
    const Coordinate between[] = {5};
    const Coordinate aside[] = {6};
    EXPECT_FALSE(index.nearest(between, 100).unique);
    EXPECT_TRUE(index.nearest(aside, 100).unique);
}

} // namespace
} // namespace qxcms::tests
