// What the tests of batch forms share: values that arithmetic treats differently, and the comparison of a
// batch with its single form, bit by bit, for every small count, unaligned, in place, and with guards around
// the output.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace qxcms::tests {

using Triple = std::array<double, 3>;

/// Values without a pattern, the same on every machine.
class Random {
public:
    explicit Random(std::uint64_t seed) : state(seed) {}

    std::uint64_t bits() {
        state += 0x9E3779B97F4A7C15u;
        std::uint64_t z = state;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }
    double between(double low, double high) {
        return low + (high - low) * (static_cast<double>(bits() >> 11) / 9007199254740992.0);
    }
    std::size_t below(std::size_t count) { return static_cast<std::size_t>(bits() % count); }
    /// Any double: any sign, exponent and mantissa, NaN and infinities included.
    double anyDouble() { return std::bit_cast<double>(bits()); }

private:
    std::uint64_t state;
};

/// Values that have often been treated wrongly.
inline std::vector<double> specialValues() {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kTiny = std::numeric_limits<double>::denorm_min();
    constexpr double kSmallest = std::numeric_limits<double>::min();
    constexpr double kLargest = std::numeric_limits<double>::max();
    return {0.0,
            -0.0,
            kNan,
            -kNan,
            kInfinity,
            -kInfinity,
            kTiny,
            -kTiny,
            1e-310,
            kSmallest,
            -kSmallest,
            kLargest,
            -kLargest,
            1e-20,
            -1e-21,
            1.0,
            -1.0,
            0.0088560,
            0.206893,
            0.8856,
            100.0,
            50.0,
            -16.0,
            1e-6,
            360.0,
            std::nextafter(0.8856, 1.0),
            std::nextafter(0.8856, 0.0)};
}

/// `count` doubles: a quarter special, a sixteenth any double at all, the rest between `low` and `high`.
inline std::vector<double> mixedValues(std::size_t count, double low, double high, std::uint64_t seed) {
    static const std::vector<double> special = specialValues();
    Random random(seed);
    std::vector<double> values(count);
    for (double& value : values) {
        const std::size_t choice = random.below(16);
        value = choice < 4    ? special[random.below(special.size())]
                : choice == 4 ? random.anyDouble()
                              : random.between(low, high);
    }
    return values;
}

/// Every triple of special values.
inline std::vector<double> specialTriples() {
    const std::vector<double> special = specialValues();
    std::vector<double> values;
    for (const double x : special)
        for (const double y : special)
            for (const double z : special)
                values.insert(values.end(), {x, y, z});
    return values;
}

/// The same bits; any NaN is as good as another.
inline bool sameBits(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) ||
           (std::isnan(a) && std::isnan(b));
}

/// Where two sequences first differ; empty when they have the same bits.
inline std::string difference(const double* found, const double* expected, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        if (!sameBits(found[i], expected[i]))
            return "at " + std::to_string(i) + ": " + testing::PrintToString(found[i]) + " instead of " +
                   testing::PrintToString(expected[i]);
    return {};
}

/// Doubles that begin `shift` * 8 bytes into a line of 64 bytes, with guards on both sides.
class GuardedDoubles {
public:
    GuardedDoubles(std::size_t count, std::size_t shift)
        : size(count), storage(count + 2 * kGuard + 8, guard()) {
        const auto address = reinterpret_cast<std::uintptr_t>(storage.data()) / sizeof(double);
        begin = kGuard + (8 - (address + kGuard) % 8 + shift) % 8;
    }
    GuardedDoubles(const GuardedDoubles&) = delete;
    GuardedDoubles& operator=(const GuardedDoubles&) = delete;

    double* data() { return storage.data() + begin; }
    /// True when nothing outside [first, last) was written.
    bool intactOutside(std::size_t first, std::size_t last) const {
        for (std::size_t i = 0; i < storage.size(); ++i)
            if ((i < begin + first || i >= begin + last) &&
                std::bit_cast<std::uint64_t>(storage[i]) != kPattern)
                return false;
        return true;
    }
    bool intactAround() const { return intactOutside(0, size); }
    bool untouched() const { return intactOutside(0, 0); }

private:
    static constexpr std::size_t kGuard = 16;
    // 3.3..., which no test computes.
    static constexpr std::uint64_t kPattern = 0x400A666666666667u;
    static double guard() { return std::bit_cast<double>(kPattern); }

    std::size_t size;
    std::size_t begin;
    std::vector<double> storage;
};

/// Where in a line of 64 bytes the arrays of a test begin, in doubles.
inline constexpr std::size_t kShifts[] = {0, 1, 3, 5, 7};

/// Holds a batch that makes `outSize` doubles of each `inSize` against its single form over the whole of
/// `values`.
/// @param single void(const double* in, double* out). @param batch int(const double* in, double* out,
/// std::size_t count).
template <class Single, class Batch>
void expectBatchAsSingle(const std::vector<double>& values, std::size_t inSize, std::size_t outSize,
                         const Single& single, const Batch& batch) {
    const std::size_t all = values.size() / inSize;
    std::vector<double> expected(all * outSize);
    for (std::size_t i = 0; i < all; ++i)
        single(values.data() + i * inSize, expected.data() + i * outSize);

    GuardedDoubles out(all * outSize, 1);
    const std::vector<double> kept = values;
    EXPECT_EQ(batch(values.data(), out.data(), all), 0);
    EXPECT_EQ(difference(out.data(), expected.data(), expected.size()), "");
    EXPECT_EQ(difference(values.data(), kept.data(), kept.size()), "") << "the input was written";
    EXPECT_TRUE(out.intactAround());

    GuardedDoubles inPlace(values.size(), 1);
    std::copy(values.begin(), values.end(), inPlace.data());
    EXPECT_EQ(batch(inPlace.data(), inPlace.data(), all), 0);
    EXPECT_EQ(difference(inPlace.data(), expected.data(), expected.size()), "") << "in place";
    EXPECT_TRUE(inPlace.intactAround());
}

/// The same for 0 to 33 elements, from and to everywhere in a line, and in place.
template <class Single, class Batch>
void expectSmallBatchesAsSingle(const std::vector<double>& values, std::size_t inSize, std::size_t outSize,
                                const Single& single, const Batch& batch) {
    const std::size_t all = values.size() / inSize;
    ASSERT_GE(all, 33u);
    for (std::size_t count = 0; count <= 33; ++count) {
        const std::size_t start = (count * 7) % (all - count + 1);
        const double* const source = values.data() + start * inSize;
        std::vector<double> expected(count * outSize);
        for (std::size_t i = 0; i < count; ++i)
            single(source + i * inSize, expected.data() + i * outSize);
        for (const std::size_t inShift : kShifts) {
            for (const std::size_t outShift : kShifts) {
                SCOPED_TRACE(testing::Message() << count << " from " << inShift << " to " << outShift);
                GuardedDoubles in(count * inSize, inShift), out(count * outSize, outShift);
                std::copy(source, source + count * inSize, in.data());
                ASSERT_EQ(batch(in.data(), out.data(), count), 0);
                ASSERT_EQ(difference(out.data(), expected.data(), expected.size()), "");
                ASSERT_EQ(difference(in.data(), source, count * inSize), "") << "the input was written";
                ASSERT_TRUE(out.intactAround());
                ASSERT_TRUE(in.intactAround());
            }
            SCOPED_TRACE(testing::Message() << count << " in place at " << inShift);
            GuardedDoubles inPlace(count * inSize, inShift);
            std::copy(source, source + count * inSize, inPlace.data());
            ASSERT_EQ(batch(inPlace.data(), inPlace.data(), count), 0);
            ASSERT_EQ(difference(inPlace.data(), expected.data(), expected.size()), "");
            // Behind the results stands what stood there.
            ASSERT_EQ(difference(inPlace.data() + expected.size(), source + expected.size(),
                                 count * inSize - expected.size()),
                      "");
            ASSERT_TRUE(inPlace.intactAround());
        }
    }
}

/// A batch of nothing writes nothing.
template <class Batch>
void expectNothingOfNothing(std::size_t inSize, std::size_t outSize, const Batch& batch) {
    const std::vector<double> in(5 * inSize, 20.0);
    GuardedDoubles out(5 * outSize, 0);
    EXPECT_EQ(batch(in.data(), out.data(), 0), 0);
    EXPECT_EQ(batch(nullptr, out.data(), 0), 0);
    EXPECT_EQ(batch(in.data(), nullptr, 0), 0);
    EXPECT_EQ(batch(nullptr, nullptr, 0), 0);
    EXPECT_TRUE(out.untouched());
}

/// A batch whose input or output is null writes nothing and answers `answer`.
template <class Batch>
void expectNothingOfNull(int answer, std::size_t inSize, std::size_t outSize, const Batch& batch) {
    const std::vector<double> in(5 * inSize, 20.0);
    GuardedDoubles out(5 * outSize, 0);
    EXPECT_EQ(batch(nullptr, out.data(), 5), answer);
    EXPECT_EQ(batch(in.data(), nullptr, 5), answer);
    EXPECT_EQ(batch(nullptr, nullptr, 5), answer);
    EXPECT_TRUE(out.untouched());
}

} // namespace qxcms::tests
