// Expected bytes are worked out by hand from the format: sign, 8 bits of exponent with a bias of 127, 23 bits
// of fraction.
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "platform/utility.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kLargestSingle = 0x1.fffffep127;

struct Bytes {
    unsigned char byte[4];
    bool operator==(const Bytes&) const = default;
};

Bytes bytesOf(double value) {
    Bytes bytes = {{0xEE, 0xEE, 0xEE, 0xEE}};
    fltoffl(value, bytes.byte);
    return bytes;
}

// The bytes of the word, the least significant one first.
Bytes lowFirst(std::uint32_t word) {
    return {{static_cast<unsigned char>(word & 0xFF), static_cast<unsigned char>(word >> 8 & 0xFF),
             static_cast<unsigned char>(word >> 16 & 0xFF), static_cast<unsigned char>(word >> 24)}};
}

double valueOf(std::uint32_t word) {
    return ffltofl(lowFirst(word).byte);
}

TEST(realConversion, bytes_areThoseOfSinglePrecisionWithTheLowestFirst) {
    EXPECT_EQ(bytesOf(1.0), (Bytes{{0x00, 0x00, 0x80, 0x3F}}));
    EXPECT_EQ(bytesOf(-2.5), (Bytes{{0x00, 0x00, 0x20, 0xC0}}));
    EXPECT_EQ(bytesOf(0.1), (Bytes{{0xCD, 0xCC, 0xCC, 0x3D}}));
    EXPECT_EQ(bytesOf(0.0), (Bytes{{0x00, 0x00, 0x00, 0x00}}));
    EXPECT_EQ(bytesOf(-0.0), (Bytes{{0x00, 0x00, 0x00, 0x80}}));
}

TEST(realConversion, values_areThoseOfTheBytes) {
    EXPECT_EQ(valueOf(0x3F800000), 1.0);
    EXPECT_EQ(valueOf(0xC0200000), -2.5);
    EXPECT_EQ(valueOf(0x3DCCCCCD), 0x1.99999ap-4);
    EXPECT_EQ(valueOf(0x00000001), 0x1p-149);
    EXPECT_EQ(valueOf(0x007FFFFF), 0x1.fffffcp-127);
    EXPECT_EQ(valueOf(0x7F7FFFFF), kLargestSingle);
    EXPECT_EQ(valueOf(0x7F800000), kInfinity);
    EXPECT_EQ(valueOf(0xFF800000), -kInfinity);
    EXPECT_TRUE(std::signbit(valueOf(0x80000000)));
    EXPECT_EQ(valueOf(0x80000000), 0.0);
}

TEST(realConversion, nearestValueIsTaken_andTheEvenOneOfTwo) {
    EXPECT_EQ(bytesOf(1.0 + 0x1p-24), lowFirst(0x3F800000));
    EXPECT_EQ(bytesOf(1.0 + 0x1p-24 + 0x1p-52), lowFirst(0x3F800001));
    EXPECT_EQ(bytesOf(1.0 + 0x3p-24), lowFirst(0x3F800002));
    EXPECT_EQ(bytesOf(0x1p-150), lowFirst(0x00000000));
    EXPECT_EQ(bytesOf(0x3p-150), lowFirst(0x00000002));
    EXPECT_EQ(bytesOf(-0x1p-1074), lowFirst(0x80000000));
}

TEST(realConversion, numbersBeyondSinglePrecision_areInfinite) {
    const double limit = 0x1p128 - 0x1p103;
    EXPECT_EQ(bytesOf(std::nextafter(limit, 0.0)), lowFirst(0x7F7FFFFF));
    EXPECT_EQ(bytesOf(limit), lowFirst(0x7F800000));
    EXPECT_EQ(bytesOf(-limit), lowFirst(0xFF800000));
    EXPECT_EQ(bytesOf(1e300), lowFirst(0x7F800000));
    EXPECT_EQ(bytesOf(kInfinity), lowFirst(0x7F800000));
    EXPECT_EQ(bytesOf(-kInfinity), lowFirst(0xFF800000));
}

TEST(realConversion, notANumber_hasOneForm) {
    EXPECT_EQ(bytesOf(kNotANumber), lowFirst(0x7FC00000));
    EXPECT_EQ(bytesOf(-kNotANumber), lowFirst(0x7FC00000));
    EXPECT_EQ(bytesOf(std::bit_cast<double>(std::uint64_t{0x7FF0000000000001})), lowFirst(0x7FC00000));
    EXPECT_TRUE(std::isnan(valueOf(0x7FC00000)));
    EXPECT_TRUE(std::isnan(valueOf(0x7F800001)));
    EXPECT_TRUE(std::isnan(valueOf(0xFFFFFFFF)));
}

TEST(realConversion, everyValueOfSinglePrecision_comesBack) {
    for (std::uint64_t word = 0; word <= 0xFFFFFFFF; word += 65521) {
        const auto bits = static_cast<std::uint32_t>(word);
        if ((bits & 0x7FFFFFFF) > 0x7F800000)
            continue;
        ASSERT_EQ(bytesOf(valueOf(bits)), lowFirst(bits)) << bits;
    }
}

TEST(realConversion, nothingBesideTheFourBytes_isTouched) {
    unsigned char bytes[6] = {7, 0, 0, 0, 0, 7};
    fltoffl(-1.0, bytes + 1);
    EXPECT_EQ(bytes[0], 7);
    EXPECT_EQ(bytes[4], 0xBF);
    EXPECT_EQ(bytes[5], 7);
}

TEST(realConversion, nullPointer_isAccepted) {
    fltoffl(1.0, nullptr);
    EXPECT_TRUE(std::isnan(ffltofl(nullptr)));
}

} // namespace
