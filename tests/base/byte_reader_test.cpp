#include "base/byte_reader.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <gtest/gtest.h>

namespace qxcms::detail {
namespace {

TEST(byteReader, startsAtTheFirstByteWithAllBytesLeft) {
    const unsigned char bytes[] = {1, 2, 3};
    const ByteReader reader(bytes, sizeof bytes);
    EXPECT_EQ(reader.at(), bytes);
    EXPECT_EQ(reader.remaining(), 3U);
}

TEST(byteReader, skip_movesOnByTheCount) {
    const unsigned char bytes[] = {1, 2, 3};
    ByteReader reader(bytes, sizeof bytes);
    EXPECT_TRUE(reader.skip(2));
    EXPECT_EQ(reader.at(), bytes + 2);
    EXPECT_EQ(reader.remaining(), 1U);
}

TEST(byteReader, skip_reachesTheEndExactly) {
    const unsigned char bytes[] = {1, 2, 3};
    ByteReader reader(bytes, sizeof bytes);
    EXPECT_TRUE(reader.skip(3));
    EXPECT_EQ(reader.remaining(), 0U);
    EXPECT_TRUE(reader.skip(0));
    EXPECT_FALSE(reader.skip(1));
}

TEST(byteReader, skip_refusesToPassTheEndAndStays) {
    const unsigned char bytes[] = {1, 2, 3};
    ByteReader reader(bytes, sizeof bytes);
    EXPECT_FALSE(reader.skip(4));
    EXPECT_FALSE(reader.skip(SIZE_MAX));
    EXPECT_EQ(reader.at(), bytes);
    EXPECT_EQ(reader.remaining(), 3U);
}

TEST(byteReader, readWord_readsTheByteOrderOfTheMachine) {
    const std::uint16_t words[] = {0x1234, 0xfffe};
    ByteReader reader(words, sizeof words);
    std::uint16_t word = 0;
    ASSERT_TRUE(reader.readWord(word));
    EXPECT_EQ(word, 0x1234);
    ASSERT_TRUE(reader.readWord(word));
    EXPECT_EQ(word, 0xfffe);
    EXPECT_EQ(reader.remaining(), 0U);
}

TEST(byteReader, readWord_readsAtAnOddAddress) {
    alignas(std::uint16_t) unsigned char bytes[3] = {};
    const std::uint16_t written = 0xabcd;
    std::memcpy(bytes + 1, &written, sizeof written);
    ByteReader reader(bytes, sizeof bytes);
    ASSERT_TRUE(reader.skip(1));
    std::uint16_t word = 0;
    ASSERT_TRUE(reader.readWord(word));
    EXPECT_EQ(word, 0xabcd);
}

TEST(byteReader, readWord_refusesHalfAWordAndStays) {
    const unsigned char bytes[] = {7};
    ByteReader reader(bytes, sizeof bytes);
    std::uint16_t word = 0x5555;
    EXPECT_FALSE(reader.readWord(word));
    EXPECT_EQ(word, 0x5555);
    EXPECT_EQ(reader.at(), bytes);
    EXPECT_EQ(reader.remaining(), 1U);
}

TEST(byteReader, anEmptyRangeOfNoMemoryHoldsNothing) {
    ByteReader reader(nullptr, 0);
    std::uint16_t word = 0x5555;
    EXPECT_FALSE(reader.readWord(word));
    EXPECT_FALSE(reader.skip(1));
    EXPECT_TRUE(reader.skip(0));
    EXPECT_EQ(word, 0x5555);
}

TEST(byteReader, isBoundedByTheSizeItIsGiven) {
    const unsigned char bytes[] = {1, 2, 3};
    EXPECT_FALSE(ByteReader(bytes, sizeof bytes).isUnbounded());
    EXPECT_FALSE(ByteReader(bytes, 0).isUnbounded());
}

TEST(byteReader, trusting_readsWithoutABoundAndStaysUnbounded) {
    const std::uint16_t words[] = {1, 2, 3};
    ByteReader reader = ByteReader::trusting(words);
    EXPECT_TRUE(reader.isUnbounded());
    std::uint16_t word = 0;
    for (const std::uint16_t expected : words) {
        ASSERT_TRUE(reader.readWord(word));
        EXPECT_EQ(word, expected);
    }
    EXPECT_EQ(reader.at(), reinterpret_cast<const unsigned char*>(words + 3));
    EXPECT_TRUE(reader.isUnbounded());
}

} // namespace
} // namespace qxcms::detail
