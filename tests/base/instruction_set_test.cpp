// What the processor can do, and how less is asked for.
#include "base/instruction_set.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace qxcms::tests {
namespace {

using namespace qxcms::detail;

constexpr InstructionSet kSets[] = {InstructionSet::kCommon, InstructionSet::kAvx2, InstructionSet::kAvx512};
constexpr const char* kNames[] = {"common", "avx2", "avx512"};

// The smaller of each pair: what is offered down the side, what is asked for across.
TEST(instructionSet, theSmallerOfWhatIsOfferedAndAskedFor_isUsed) {
    const InstructionSet used[3][3] = {
        {InstructionSet::kCommon, InstructionSet::kCommon, InstructionSet::kCommon},
        {InstructionSet::kCommon, InstructionSet::kAvx2, InstructionSet::kAvx2},
        {InstructionSet::kCommon, InstructionSet::kAvx2, InstructionSet::kAvx512}};
    for (std::size_t offered = 0; offered < 3; ++offered)
        for (std::size_t asked = 0; asked < 3; ++asked)
            EXPECT_EQ(instructionSetOf(kSets[offered], kNames[asked]), used[offered][asked])
                << offered << " " << kNames[asked];
}

TEST(instructionSet, anyOtherValue_isAsIfNotSet) {
    for (const InstructionSet offered : kSets)
        for (const char* asked : {static_cast<const char*>(nullptr), "", "COMMON", "AVX2", "sse", "common ",
                                  " avx2", "avx", "avx2,avx512", "0"})
            EXPECT_EQ(instructionSetOf(offered, asked), offered) << (asked == nullptr ? "not set" : asked);
}

// All 128 processors.
TEST(instructionSet, aSetOfWhichOneFeatureIsMissing_isNotOffered) {
    for (unsigned bits = 0; bits < 128; ++bits) {
        const auto has = [&](unsigned feature) { return (bits >> feature & 1U) != 0; };
        const ProcessorFeatures features = {has(0), has(1), has(2), has(3), has(4), has(5), has(6)};
        InstructionSet expected = InstructionSet::kCommon;
        if ((bits & 0xFU) == 0xFU)
            expected = bits == 0x7FU ? InstructionSet::kAvx512 : InstructionSet::kAvx2;
        EXPECT_EQ(instructionSetOf(features), expected) << bits;
    }
}

// Run by ctest once more for each value of the variable; EXPECTED_INSTRUCTION_SET then repeats the value, so
// that a variable by another name is noticed here or there.
TEST(instructionSet, whatTheEnvironmentAsksFor_isUsed) {
    const InstructionSet offered = offeredInstructionSet();
    EXPECT_EQ(instructionSet(), instructionSetOf(offered, std::getenv("QXCMS_INSTRUCTION_SET")));
    const char* const expected = std::getenv("EXPECTED_INSTRUCTION_SET");
    if (expected == nullptr)
        return;
    const auto* const name = std::find(std::begin(kNames), std::end(kNames), std::string(expected));
    ASSERT_NE(name, std::end(kNames)) << expected;
    EXPECT_EQ(instructionSet(), std::min(offered, kSets[name - std::begin(kNames)]));
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
    EXPECT_EQ(offeredInstructionSet(), expected);
}

} // namespace
} // namespace qxcms::tests
