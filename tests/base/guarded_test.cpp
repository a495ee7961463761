#include "base/guarded.h"

#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace qxcms::detail {
namespace {

TEST(guarded, givesTheResultOfTheFunction) {
    EXPECT_EQ(guarded(-1, [] { return 42; }), 42);
}

TEST(guarded, turnsAnExceptionIntoTheFailure) {
    EXPECT_EQ(guarded(-1, []() -> int { throw std::runtime_error("no"); }), -1);
}

TEST(guarded, turnsExhaustedMemoryIntoTheFailure) {
    EXPECT_EQ(guarded(-1, []() -> int { throw std::bad_alloc(); }), -1);
}

TEST(guarded, turnsWhateverIsThrownIntoTheFailure) {
    EXPECT_EQ(guarded(-1, []() -> int { throw 17; }), -1);
    EXPECT_EQ(guarded(-1, []() -> int { throw "text"; }), -1);
}

TEST(guarded, neverThrows) {
    const auto throwing = []() -> int { throw 17; };
    static_assert(noexcept(guarded(-1, throwing)));
    EXPECT_NO_THROW(guarded(-1, throwing));
}

TEST(guarded, runsTheFunctionOnce) {
    int runs = 0;
    EXPECT_EQ(guarded(-1, [&runs] { return ++runs; }), 1);
    EXPECT_EQ(guarded(-1,
                      [&runs]() -> int {
                          ++runs;
                          throw 17;
                      }),
              -1);
    EXPECT_EQ(runs, 2);
}

TEST(guarded, keepsWhatTheFunctionDidBeforeItFailed) {
    std::string trace;
    guarded(false, [&trace]() -> bool {
        trace += "begun";
        throw 17;
    });
    EXPECT_EQ(trace, "begun");
}

TEST(guarded, handsOverResultsThatCannotBeCopied) {
    const auto made = guarded(std::unique_ptr<int>(), [] { return std::make_unique<int>(5); });
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(*made, 5);
    const auto fallback = guarded(std::make_unique<int>(6), []() -> std::unique_ptr<int> { throw 17; });
    ASSERT_NE(fallback, nullptr);
    EXPECT_EQ(*fallback, 6);
}

TEST(guarded, callsTheFunctionAsItIsGiven) {
    struct Function {
        int operator()() & { return 1; }
        int operator()() && { return 2; }
    };
    Function function;
    EXPECT_EQ(guarded(0, function), 1);
    EXPECT_EQ(guarded(0, std::move(function)), 2);
}

} // namespace
} // namespace qxcms::detail
