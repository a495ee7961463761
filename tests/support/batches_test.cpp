// That the comparison of batch forms with single forms finds what it is to find.
#include "tests/support/batches.h"

#include <gtest/gtest-spi.h>

namespace qxcms::tests {
namespace {

// Doubles each of three components.
void single(const double* in, double* out) {
    for (int i = 0; i < 3; ++i)
        out[i] = 2.0 * in[i];
}

// A batch of the above that goes wrong as told.
struct Batch {
    bool offInTheLastBit = false;
    bool losesTheSignOfZero = false;
    bool leavesTheRest = false; // of a number that is not a multiple of 4
    bool writesBehind = false;
    bool writesBefore = false;
    bool writesTheInput = false;
    bool readsWhatItWrote = false;
    int answer = 0;

    int operator()(const double* in, double* out, std::size_t count) const {
        const std::size_t done = leavesTheRest ? count / 4 * 4 : count;
        if (readsWhatItWrote && count > 1)
            out[3] = 5.0;
        for (std::size_t i = 0; i < 3 * done; ++i) {
            out[i] = 2.0 * in[i];
            if (offInTheLastBit && i == 7)
                out[i] = std::nextafter(out[i], 1e300);
            if (losesTheSignOfZero)
                out[i] += 0.0;
        }
        if (writesBehind)
            out[3 * count] = 0.0;
        if (writesBefore)
            out[-1] = 0.0;
        if (writesTheInput && count > 0 && in != out)
            const_cast<double*>(in)[0] = 7.0;
        return answer;
    }
};

const std::vector<double>& values() {
    static const std::vector<double> kValues = mixedValues(3 * 50, -1.0, 1.0, 1);
    return kValues;
}

// How often a batch over all values is found at fault.
int faultsOfWhole(const Batch& batch) {
    testing::TestPartResultArray results;
    const testing::ScopedFakeTestPartResultReporter reporter(
        testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
    expectBatchAsSingle(values(), 3, 3, single, batch);
    return results.size();
}
void checkSmall(const Batch& batch) {
    expectSmallBatchesAsSingle(values(), 3, 3, single, batch);
}

TEST(batchComparison, faultlessBatch_passes) {
    EXPECT_EQ(faultsOfWhole({}), 0);
    checkSmall({});
}

TEST(batchComparison, wrongLastBit_isFound) {
    static Batch batch;
    batch.offInTheLastBit = true;
    EXPECT_EQ(faultsOfWhole(batch), 2);
    EXPECT_FATAL_FAILURE(checkSmall(batch), "instead of");
}

TEST(batchComparison, lostSignOfZero_isFound) {
    static Batch batch;
    batch.losesTheSignOfZero = true;
    EXPECT_EQ(faultsOfWhole(batch), 2);
    EXPECT_FATAL_FAILURE(checkSmall(batch), "0 instead of -0");
}

TEST(batchComparison, restLeftOut_isFound) {
    static Batch batch;
    batch.leavesTheRest = true;
    EXPECT_EQ(faultsOfWhole(batch), 2);
    EXPECT_FATAL_FAILURE(checkSmall(batch), "instead of");
}

TEST(batchComparison, writingAround_isFound) {
    static Batch behind, before;
    behind.writesBehind = true;
    before.writesBefore = true;
    EXPECT_EQ(faultsOfWhole(behind), 2);
    EXPECT_FATAL_FAILURE(checkSmall(behind), "intactAround");
    EXPECT_EQ(faultsOfWhole(before), 2);
    EXPECT_FATAL_FAILURE(checkSmall(before), "intactAround");
}

TEST(batchComparison, writtenInput_isFound) {
    static Batch batch;
    batch.writesTheInput = true;
    EXPECT_FATAL_FAILURE(checkSmall(batch), "the input was written");
}

TEST(batchComparison, readingOfWhatWasWrittenInPlace_isFound) {
    static Batch batch;
    batch.readsWhatItWrote = true;
    EXPECT_EQ(faultsOfWhole(batch), 1);
    EXPECT_FATAL_FAILURE(checkSmall(batch), "in place");
}

TEST(batchComparison, otherAnswer_isFound) {
    static Batch batch;
    batch.answer = 1;
    EXPECT_EQ(faultsOfWhole(batch), 2);
    EXPECT_FATAL_FAILURE(checkSmall(batch), "batch");
}

TEST(batchComparison, notANumber_isLikeAnother) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(sameBits(nan, -nan));
    EXPECT_TRUE(sameBits(nan, std::bit_cast<double>(0x7FF8000000000001u)));
    EXPECT_FALSE(sameBits(nan, 1.0));
    EXPECT_FALSE(sameBits(0.0, -0.0));
    EXPECT_TRUE(sameBits(-0.0, -0.0));
}

TEST(batchComparison, arrays_beginWhereTheyAreAskedTo) {
    for (std::size_t shift = 0; shift < 8; ++shift) {
        GuardedDoubles doubles(5, shift);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(doubles.data()) % 64, 8 * shift);
        EXPECT_TRUE(doubles.untouched());
        doubles.data()[4] = 1.0;
        EXPECT_TRUE(doubles.intactAround());
        EXPECT_FALSE(doubles.untouched());
    }
}

} // namespace
} // namespace qxcms::tests
