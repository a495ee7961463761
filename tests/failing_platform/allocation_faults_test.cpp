// The memory that fails: it strikes when told to, wherever memory is asked for, and counts what lives.
#include "tests/failing_platform/allocation_faults.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <new>

#include <gtest/gtest-spi.h>

namespace qxcms::tests {
namespace {

// The allocation functions are called by name or through pointers: compilers may leave out what a new
// expression or a plain malloc allocates.
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

TEST(allocationFaults, strikeAlignedMemoryToo) {
    constexpr std::align_val_t kAlignment{64};
    AllocationFaults faults(1, true);
    faults.arm();
    void* const first = ::operator new(8, kAlignment, std::nothrow);
    void* const second = ::operator new[](8, kAlignment, std::nothrow);
    faults.disarm();
    EXPECT_NE(first, nullptr);
    EXPECT_EQ(second, nullptr);
    ::operator delete(first, kAlignment);
}

#if QXCMS_TEST_FAILS_MALLOC
TEST(allocationFaults, strikeTheCLibraryToo) {
    void* (*volatile const allocate)(std::size_t) = &std::malloc;
    void* (*volatile const allocateZeros)(std::size_t, std::size_t) = &std::calloc;
    void* (*volatile const reallocate)(void*, std::size_t) = &std::realloc;
    void* const memory = allocate(8);
    AllocationFaults faults(0, false);
    faults.arm();
    errno = 0;
    void* const first = allocate(8);
    const int error = errno;
    void* const second = allocateZeros(1, 8);
    void* const third = reallocate(memory, 16);
    FILE* const file = fopen("/dev/null", "r");
    faults.disarm();
    EXPECT_EQ(first, nullptr);
    EXPECT_EQ(error, ENOMEM);
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(third, nullptr);
    EXPECT_EQ(file, nullptr);
    std::free(memory);
}

TEST(allocationWatch, countsWhatTheCLibraryTakes) {
    const AllocationWatch watch;
    FILE* const file = fopen("/dev/null", "r");
    ASSERT_NE(file, nullptr);
    EXPECT_GE(watch.living(), 1);
    fclose(file);
    EXPECT_EQ(watch.living(), 0);
}
#endif

TEST(allocationWatch, countsWhatWasMadeAndWhatLives) {
    void* const before = ::operator new(8);
    const AllocationWatch watch;
    void* const first = ::operator new(8);
    void* const second = ::operator new[](8, std::nothrow);
    EXPECT_EQ(watch.made(), 2);
    EXPECT_EQ(watch.living(), 2);
    ::operator delete(first);
    ::operator delete(before);
    EXPECT_EQ(watch.made(), 2);
    EXPECT_EQ(watch.living(), 1);
    ::operator delete[](second);
    EXPECT_EQ(watch.living(), 0);
}

TEST(allocationWatch, doesNotSeeATruce) {
    const AllocationWatch watch;
    void* memory = nullptr;
    {
        const AllocationTruce truce;
        memory = ::operator new(8);
    }
    EXPECT_EQ(watch.made(), 0);
    ::operator delete(memory);
}

// What the tests rest on: they fail when memory leaks, when something is thrown, and when nothing is
// allocated.

TEST(forEveryFailingAllocation, findsALeak) {
    static void* leaked = nullptr;
    EXPECT_NONFATAL_FAILURE(forEveryFailingAllocation([](AllocationFaults& faults) {
                                faults.arm();
                                void* const memory = ::operator new(8, std::nothrow);
                                faults.disarm();
                                if (leaked == nullptr)
                                    leaked = memory;
                                else
                                    ::operator delete(memory);
                            }),
                            "memory leaked");
    ::operator delete(leaked);
}

TEST(forEveryFailingAllocation, findsAnException) {
    static bool thrown = false;
    EXPECT_NONFATAL_FAILURE(forEveryFailingAllocation([](AllocationFaults& faults) {
                                faults.arm();
                                void* const memory = ::operator new(8, std::nothrow);
                                faults.disarm();
                                ::operator delete(memory);
                                if (!thrown) {
                                    thrown = true;
                                    throw std::bad_alloc();
                                }
                            }),
                            "thrown: std::bad_alloc");
}

TEST(forEveryFailingAllocation, findsThatNothingWasAllocated) {
    int runs = 0;
    testing::TestPartResultArray failures;
    {
        testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures);
        forEveryFailingAllocation([&](AllocationFaults&) { ++runs; });
    }
    EXPECT_EQ(runs, 2);
    EXPECT_EQ(failures.size(), 2);
}

TEST(forEveryFailingAllocation, goesThroughAllOfThemTwice) {
    int struck = 0, unharmed = 0;
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        void* const first = ::operator new(8, std::nothrow);
        void* const second = ::operator new(8, std::nothrow);
        faults.disarm();
        struck += (first == nullptr) + (second == nullptr);
        unharmed += first != nullptr && second != nullptr;
        ::operator delete(first);
        ::operator delete(second);
    });
    EXPECT_EQ(struck, 1 + 1 + 2 + 1); // each alone, then from each one on
    EXPECT_EQ(unharmed, 2);
}

} // namespace
} // namespace qxcms::tests
