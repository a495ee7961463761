// The locale that the other tests are run under once more: it is there and does what it is there for.
#include <cstdio>
#include <sstream>

#include <gtest/gtest.h>

namespace {

TEST(germanLocale, process_printsAComma) {
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 0.5);
    EXPECT_STREQ(text, "0,5") << "the locale de_DE.UTF-8 is missing: make setup makes it";
}

TEST(germanLocale, streams_printAComma) {
    std::ostringstream stream;
    stream << 0.5;
    EXPECT_EQ(stream.str(), "0,5") << "the locale de_DE.UTF-8 is missing: make setup makes it";
}

} // namespace
