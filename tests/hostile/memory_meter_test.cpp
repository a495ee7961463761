// The meter that the other tests rely on.
#include "fuzz/memory_meter.h"

#include <memory>
#include <new>

#include <gtest/gtest.h>

namespace qxcms::tests {
namespace {

using fuzz::MemoryMeter;

// The allocation functions are called by name: what a new expression allocates may be left out by compilers.
constexpr std::size_t kSize = 100000;

// The heap may hand out a little more than was asked for.
constexpr std::size_t kRounding = 64;

TEST(memoryMeter, seesWhatIsInUse) {
    const MemoryMeter meter;
    EXPECT_EQ(meter.peak(), 0u);
    void* const memory = ::operator new(kSize);
    EXPECT_GE(meter.peak(), kSize);
    EXPECT_LE(meter.peak(), kSize + kRounding);
    ::operator delete(memory);
}

TEST(memoryMeter, remembersThePeak) {
    const MemoryMeter meter;
    void* const first = ::operator new[](kSize, std::nothrow);
    void* const second = ::operator new(kSize, std::nothrow);
    ::operator delete[](first);
    ::operator delete(second);
    EXPECT_GE(meter.peak(), 2 * kSize);
    EXPECT_LE(meter.peak(), 2 * (kSize + kRounding));
}

TEST(memoryMeter, releasedMemoryMakesRoom) {
    const MemoryMeter meter;
    for (int i = 0; i < 10; ++i)
        ::operator delete(::operator new(kSize));
    EXPECT_LE(meter.peak(), kSize + kRounding);
}

TEST(memoryMeter, whatWasInUseBefore_doesNotCount) {
    void* const before = ::operator new(kSize);
    const MemoryMeter meter;
    void* const memory = ::operator new(1000);
    EXPECT_LE(meter.peak(), 1000 + kRounding);
    ::operator delete(memory);
    ::operator delete(before);
    EXPECT_LE(meter.peak(), 1000 + kRounding);
}

TEST(memoryMeter, allowance_is64BytesForEachByteAnd64KiB) {
    EXPECT_EQ(fuzz::allowedMemory(0), 65536u);
    EXPECT_EQ(fuzz::allowedMemory(1000), 129536u);
}

} // namespace
} // namespace qxcms::tests
