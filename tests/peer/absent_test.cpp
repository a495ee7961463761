// Stands in for the comparisons where there is nothing to compare with.
#include <gtest/gtest.h>

namespace {

TEST(peer, givesTheSameColours) {
    GTEST_SKIP() << "liblcms2-dev is not installed";
}

} // namespace
