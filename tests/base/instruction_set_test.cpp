// What the processor can do, and how less is asked for.
#include "base/instruction_set.h"

#include <algorithm>
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

TEST(instructionSet, eachName_asksForNoMore) {
    const InstructionSet most = instructionSetFor(nullptr);
    EXPECT_EQ(instructionSetFor("avx2"), std::min(most, InstructionSet::kAvx2));
    EXPECT_EQ(instructionSetFor("avx512"), most);
}

TEST(instructionSet, otherWords_askForNothing) {
    EXPECT_EQ(instructionSetFor("COMMON"), instructionSetFor(nullptr));
    EXPECT_EQ(instructionSetFor(""), instructionSetFor(nullptr));
}

// The system's own list of what the processor can.
TEST(instructionSet, whatTheSystemNames_isTaken) {
    std::ifstream file("/proc/cpuinfo");
    std::stringstream text;
    text << file.rdbuf();
    if (text.str().find("flags") == std::string::npos)
        GTEST_SKIP() << "the system does not tell what the processor can";
    const auto names = [&](const std::string& flag) {
        return text.str().find(" " + flag + " ") != std::string::npos;
    };
    const bool avx2 = names("avx2") && names("bmi2") && names("fma") && names("popcnt");
    const bool avx512 = avx2 && names("avx512f") && names("avx512dq") && names("avx512vl");
    const InstructionSet expected = avx512 ? InstructionSet::kAvx512
                                    : avx2 ? InstructionSet::kAvx2
                                           : InstructionSet::kCommon;
    EXPECT_EQ(instructionSetFor(nullptr), expected);
}

} // namespace
} // namespace qxcms::tests
