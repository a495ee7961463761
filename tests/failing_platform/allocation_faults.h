// Memory that runs out when a test wants it to.
#pragma once

#include <gtest/gtest.h>

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

/// The substitute platform keeps its own records out of harm's way.
class AllocationTruce {
public:
    AllocationTruce();
    ~AllocationTruce();
    AllocationTruce(const AllocationTruce&) = delete;
    AllocationTruce& operator=(const AllocationTruce&) = delete;

private:
    AllocationFaults* suspended;
};

/// Runs `operation(faults)` with the first allocation failing, then the second, and so on until none is left
/// to fail; each once alone and once with all that follow. The operation arms and disarms the faults around
/// the calls under test.
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
            operation(faults);
            faults.disarm();
            more = faults.happened();
            if (result.total_part_count() > failuresBefore)
                return; // one report is enough
        }
        EXPECT_GT(allowed, 1) << "nothing was allocated";
    }
}

} // namespace qxcms::tests
