// Memory that runs out when a test wants it to, and a count of what was taken and not given back.
//
// In the programs that link this, every operator new and, without a sanitizer, malloc, calloc and realloc of
// the program and its libraries ask here first.
#pragma once

#include <exception>

#include <gtest/gtest.h>

#if defined(__SANITIZE_ADDRESS__)
#define QXCMS_TEST_FAILS_MALLOC 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QXCMS_TEST_FAILS_MALLOC 0
#endif
#endif
#ifndef QXCMS_TEST_FAILS_MALLOC
#define QXCMS_TEST_FAILS_MALLOC 1
#endif

namespace qxcms::tests {

/// Lets allocations of this process fail between arm and disarm: after `allowed` good ones either one fails
/// or all do from then on.
class AllocationFaults {
public:
    AllocationFaults(int allowed, bool once) : remaining(allowed), failsOnce(once) {}
    ~AllocationFaults() { disarm(); }
    AllocationFaults(const AllocationFaults&) = delete;
    AllocationFaults& operator=(const AllocationFaults&) = delete;

    void arm();
    void disarm();
    /// True when an allocation has failed.
    bool happened() const { return failed; }

    /// Asked by the allocation functions. @return true when this allocation is to fail.
    bool strikes();

private:
    int remaining;
    bool failsOnce;
    bool failed = false;
};

/// Watches the allocations of this process while it lives. There is one watch at a time.
class AllocationWatch {
public:
    AllocationWatch();
    ~AllocationWatch();
    AllocationWatch(const AllocationWatch&) = delete;
    AllocationWatch& operator=(const AllocationWatch&) = delete;

    /// How many allocations there were.
    int made() const;
    /// How many of them were not released yet.
    int living() const;
};

/// The substitute platform keeps its own records out of harm's way, and out of the watch.
class AllocationTruce {
public:
    AllocationTruce();
    ~AllocationTruce();
    AllocationTruce(const AllocationTruce&) = delete;
    AllocationTruce& operator=(const AllocationTruce&) = delete;

private:
    AllocationFaults* suspended;
    bool watched;
};

/// Runs `operation(faults)` with the first allocation failing, then the second, and so on until none is left
/// to fail; each once alone and once with all that follow. The operation arms and disarms the faults around
/// the calls under test; it must not throw, and at its end all memory that it took must be released.
template <class Operation>
void forEveryFailingAllocation(Operation&& operation) {
    const testing::TestResult& result = *testing::UnitTest::GetInstance()->current_test_info()->result();
    const int failuresBefore = result.total_part_count();
    for (const bool once : {true, false}) {
        int allowed = 0;
        for (bool more = true; more; ++allowed) {
            SCOPED_TRACE(testing::Message()
                         << "allocation " << allowed << (once ? " fails" : " and all later ones fail"));
            AllocationFaults faults(allowed, once);
            const AllocationWatch watch;
            try {
                operation(faults);
            } catch (const std::exception& thrown) {
                faults.disarm();
                ADD_FAILURE() << "thrown: " << thrown.what();
                return;
            }
            faults.disarm();
            more = faults.happened();
            if (result.total_part_count() > failuresBefore)
                return; // one report is enough
            EXPECT_EQ(watch.living(), 0) << "memory leaked";
        }
        EXPECT_GT(allowed, 1) << "nothing was allocated";
    }
}

/// Runs `operation()` and expects that it takes no memory.
template <class Operation>
void expectNoAllocation(Operation&& operation) {
    const AllocationWatch watch;
    operation();
    EXPECT_EQ(watch.made(), 0);
}

} // namespace qxcms::tests
