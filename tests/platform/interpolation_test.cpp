#include <algorithm>
#include <chrono>
#include <climits>
#include <cmath>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <memory>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include <sys/resource.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/utility.h"

// A sanitizer keeps so much address space that a limit on it stops the process.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define QXCMS_TEST_HAS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define QXCMS_TEST_HAS_SANITIZER 1
#endif
#endif

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

struct Killer {
    void operator()(lin_interp_double* table) const { lin_interp_double_kill(table); }
};
using Table = std::unique_ptr<lin_interp_double, Killer>;

Table tableOf(const std::vector<std::pair<double, double>>& points) {
    Table table(lin_interp_double_new(static_cast<int>(points.size())));
    for (const auto& [x, y] : points)
        EXPECT_EQ(lin_interp_double_insert(table.get(), x, y), 0);
    return table;
}

double at(const Table& table, double x) {
    return lin_interp_double_inter(table.get(), x);
}

TEST(interpolation, table_isLinearBetweenPoints) {
    const Table table = tableOf({{400.0, 1.0}, {410.0, 2.0}, {430.0, -2.0}});
    EXPECT_EQ(at(table, 402.5), 1.25);
    EXPECT_EQ(at(table, 405.0), 1.5);
    EXPECT_EQ(at(table, 415.0), 1.0);
    EXPECT_EQ(at(table, 425.0), -1.0);
}

TEST(interpolation, table_isConstantOutsideItsPoints) {
    const Table table = tableOf({{400.0, 1.0}, {410.0, 2.0}});
    EXPECT_EQ(at(table, 399.0), 1.0);
    EXPECT_EQ(at(table, -kInfinity), 1.0);
    EXPECT_EQ(at(table, 410.0), 2.0);
    EXPECT_EQ(at(table, 411.0), 2.0);
    EXPECT_EQ(at(table, kInfinity), 2.0);
}

// 0.01 + (0.05 - 0.01)*7/10 in double arithmetic. Every other order of the operations, and both weighted
// means, give 0.038.
TEST(interpolation, formula_isEvaluatedInItsWrittenOrder) {
    const Table table = tableOf({{400.0, 0.01}, {410.0, 0.05}});
    EXPECT_EQ(at(table, 407.0), 0x1.374bc6a7ef9dcp-5);
    EXPECT_NE(at(table, 407.0), 0.038);
}

TEST(interpolation, atAPoint_itsValueComesBackExactly) {
    const Table table = tableOf({{380.0, 0.1}, {390.0, 1e300}, {400.0, 0.3}, {410.1, 1e-300}, {420.0, 0.7}});
    EXPECT_EQ(at(table, 380.0), 0.1);
    EXPECT_EQ(at(table, 390.0), 1e300);
    EXPECT_EQ(at(table, 400.0), 0.3);
    EXPECT_EQ(at(table, 410.1), 1e-300);
    EXPECT_EQ(at(table, 420.0), 0.7);
}

// The difference of the two values is infinite, and 0 times infinity is no number.
TEST(interpolation, atAPoint_itsValueComesBackAlsoBesideAnInfiniteSlope) {
    const Table table = tableOf({{400.0, -1.5e308}, {410.0, 1.5e308}});
    EXPECT_EQ(at(table, 400.0), -1.5e308);
    EXPECT_EQ(at(table, 410.0), 1.5e308);
}

TEST(interpolation, points_mayComeInAnyOrder) {
    std::vector<std::pair<double, double>> points = {{1.0, 5.0}, {2.0, -1.0}, {3.0, 8.0}, {4.0, 2.0}};
    do {
        const Table table = tableOf(points);
        EXPECT_EQ(at(table, 1.5), 2.0);
        EXPECT_EQ(at(table, 2.5), 3.5);
        EXPECT_EQ(at(table, 3.5), 5.0);
    } while (std::next_permutation(points.begin(), points.end()));
}

TEST(interpolation, singlePoint_givesAConstant) {
    const Table table = tableOf({{500.0, 0.25}});
    EXPECT_EQ(at(table, 0.0), 0.25);
    EXPECT_EQ(at(table, 500.0), 0.25);
    EXPECT_EQ(at(table, 1000.0), 0.25);
}

TEST(interpolation, withoutPoints_theFunctionIsZero) {
    EXPECT_EQ(at(tableOf({}), 500.0), 0.0);
}

TEST(interpolation, undefinedPosition_givesNotANumber) {
    EXPECT_TRUE(std::isnan(at(tableOf({{400.0, 1.0}, {410.0, 2.0}}), kNotANumber)));
}

TEST(interpolation, secondPointAtOnePosition_isRefused) {
    const Table table = tableOf({{400.0, 1.0}, {410.0, 2.0}});
    EXPECT_EQ(lin_interp_double_insert(table.get(), 400.0, 9.0), 1);
    EXPECT_EQ(lin_interp_double_insert(table.get(), 410.0, 2.0), 1);
    EXPECT_EQ(at(table, 400.0), 1.0);
    EXPECT_EQ(at(table, 410.0), 2.0);
}

TEST(interpolation, zeroOfEitherSign_isOnePosition) {
    const Table table = tableOf({{0.0, 1.0}});
    EXPECT_EQ(lin_interp_double_insert(table.get(), -0.0, 2.0), 1);
}

TEST(interpolation, neighbouringPositions_areDistinct) {
    const double next = std::nextafter(400.0, 500.0);
    const Table table = tableOf({{400.0, 1.0}, {next, 2.0}});
    EXPECT_EQ(at(table, 400.0), 1.0);
    EXPECT_EQ(at(table, next), 2.0);
}

TEST(interpolation, positionThatIsNotFinite_isRefused) {
    const Table table = tableOf({{400.0, 1.0}});
    EXPECT_EQ(lin_interp_double_insert(table.get(), kNotANumber, 2.0), 1);
    EXPECT_EQ(lin_interp_double_insert(table.get(), kInfinity, 2.0), 1);
    EXPECT_EQ(lin_interp_double_insert(table.get(), -kInfinity, 2.0), 1);
    EXPECT_EQ(at(table, 500.0), 1.0);
    EXPECT_EQ(at(table, 300.0), 1.0);
}

TEST(interpolation, count_isOnlyAHint) {
    for (const int count : {INT_MIN, -1, 0, 1, INT_MAX}) {
        const Table table(lin_interp_double_new(count));
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(lin_interp_double_insert(table.get(), 1.0, 1.0), 0);
        EXPECT_EQ(lin_interp_double_insert(table.get(), 3.0, 3.0), 0);
        EXPECT_EQ(at(table, 2.0), 2.0);
    }
}

TEST(interpolation, noTable_isTolerated) {
    EXPECT_EQ(lin_interp_double_insert(nullptr, 1.0, 1.0), 1);
    EXPECT_EQ(lin_interp_double_inter(nullptr, 1.0), 0.0);
    lin_interp_double_kill(nullptr);
}

// Moving the points behind each new one would take several minutes here.
TEST(interpolation, aMillionPoints_areInsertedInSecondsInAnyOrder) {
    constexpr int kCount = 1000000;
    std::vector<int> order(kCount);
    std::iota(order.begin(), order.end(), 0);
    std::vector<int> shuffled = order;
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(1));
    const auto start = std::chrono::steady_clock::now();
    for (const std::vector<int>& positions :
         {order, std::vector<int>(order.rbegin(), order.rend()), shuffled}) {
        const Table table(lin_interp_double_new(kCount));
        int refused = 0;
        for (const int position : positions)
            refused += lin_interp_double_insert(table.get(), position, 2.0 * position);
        EXPECT_EQ(refused, 0);
        EXPECT_EQ(at(table, 777777.5), 1555555.0);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(60));
}

#ifndef QXCMS_TEST_HAS_SANITIZER
/// The address space that this process occupies, in bytes.
rlim_t occupiedMemory() {
    rlim_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

/// Inserts points until the memory is used up. @return whether every point before the refusal is still there.
bool survivesTheEndOfMemory() {
    const Table table(lin_interp_double_new(0));
    const rlim_t bytes = occupiedMemory() + (rlim_t{1} << 25);
    const rlimit limit = {bytes, bytes};
    if (table == nullptr || setrlimit(RLIMIT_AS, &limit) != 0)
        return false;
    double x = 0.0;
    int answer = 0;
    while ((answer = lin_interp_double_insert(table.get(), x, x)) == 0)
        x += 1.0;
    return answer == 1 && at(table, 0.0) == 0.0 && at(table, x) == x - 1.0;
}

TEST(interpolation, withoutMemory_aPointIsRefused) {
    EXPECT_EXIT(std::_Exit(survivesTheEndOfMemory() ? 0 : 1), testing::ExitedWithCode(0), "");
}
#endif

} // namespace
