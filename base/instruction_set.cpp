#include "base/instruction_set.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace qxcms::detail {

namespace {

InstructionSet offered() noexcept {
#if defined(__x86_64__)
    const bool hasAvx2 = __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi2") &&
                         __builtin_cpu_supports("fma") && __builtin_cpu_supports("popcnt");
    const bool hasAvx512 = __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") &&
                           __builtin_cpu_supports("avx512vl");
    if (hasAvx2)
        return hasAvx512 ? InstructionSet::kAvx512 : InstructionSet::kAvx2;
#endif
    return InstructionSet::kCommon;
}

// The most that a value of the variable allows.
InstructionSet allowed(std::string_view asked) noexcept {
    if (asked == "common")
        return InstructionSet::kCommon;
    return asked == "avx2" ? InstructionSet::kAvx2 : InstructionSet::kAvx512;
}

} // namespace

InstructionSet instructionSetFor(const char* asked) noexcept {
    return asked == nullptr ? offered() : std::min(offered(), allowed(asked));
}

InstructionSet instructionSet() noexcept {
    static const InstructionSet found = instructionSetFor(std::getenv("QXCMS_INSTRUCTION_SET"));
    return found;
}

} // namespace qxcms::detail
