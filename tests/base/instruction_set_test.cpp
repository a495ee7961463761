// What the processor can do, and how less is asked for.
#include "base/instruction_set.h"

#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace qxcms::tests {
namespace {

using namespace qxcms::detail;

TEST(instructionSet, common_canBeAskedFor) {
    EXPECT_EQ(instructionSetFor("common"), InstructionSet::kCommon);
}

TEST(instructionSet, otherWords_askForNothing) {
    EXPECT_EQ(instructionSetFor("COMMON"), instructionSetFor(nullptr));
    EXPECT_EQ(instructionSetFor(""), instructionSetFor(nullptr));
}

// The system's own list of what the processor can.
TEST(instructionSet, avx2_isTakenWhereTheSystemNamesIt) {
    std::ifstream file("/proc/cpuinfo");
    std::stringstream text;
    text << file.rdbuf();
    if (text.str().find("flags") == std::string::npos)
        GTEST_SKIP() << "the system does not tell what the processor can";
    const auto names = [&](const std::string& flag) {
        return text.str().find(" " + flag + " ") != std::string::npos;
    };
    EXPECT_EQ(instructionSetFor(nullptr) == InstructionSet::kAvx2,
              names("avx2") && names("bmi2") && names("popcnt"));
}

} // namespace
} // namespace qxcms::tests
