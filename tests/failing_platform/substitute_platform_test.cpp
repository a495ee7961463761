// The substitute itself: it runs the kernel when nothing is to fail, and its memory does run out.
#include "tests/failing_platform/substitute_platform.h"

#include <new>

#include <gmock/gmock.h>

#include "spectral/tspectrum.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using substitutePlatform = OnSubstitutePlatform;

TEST_F(substitutePlatform, faultlessOne_servesTheKernel) {
    const double wavelengths[] = {400.0, 420.0};
    const double values[] = {1.0, 2.0};
    const TSpectrum spectrum(wavelengths, 2, values);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(standardOf(spectrum)[slotOf(410)], 1.5);
}

// The allocation functions are called by name: what a new expression allocates may be left out by compilers.
TEST(allocationFaults, strikeTheChosenAllocation) {
    AllocationFaults faults(1, true);
    faults.arm();
    void* const first = ::operator new(8, std::nothrow);
    void* const second = ::operator new[](8, std::nothrow);
    void* const third = ::operator new[](8, std::nothrow);
    faults.disarm();
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(second, nullptr);
    EXPECT_NE(third, nullptr);
    EXPECT_TRUE(faults.happened());
    ::operator delete(first);
    ::operator delete[](third);
}

TEST(allocationFaults, thatLast_strikeAllThatFollow) {
    AllocationFaults faults(0, false);
    faults.arm();
    void* const first = ::operator new(8, std::nothrow);
    void* second = nullptr;
    bool thrown = false;
    try {
        second = ::operator new(8);
    } catch (const std::bad_alloc&) {
        thrown = true;
    }
    faults.disarm();
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(second, nullptr);
    EXPECT_TRUE(thrown);
}

TEST(allocationFaults, thatDoNotStrike_areNotCounted) {
    AllocationFaults faults(1, true);
    faults.arm();
    void* const memory = ::operator new(8, std::nothrow);
    faults.disarm();
    EXPECT_NE(memory, nullptr);
    EXPECT_FALSE(faults.happened());
    ::operator delete(memory);
}

} // namespace
} // namespace qxcms::tests
