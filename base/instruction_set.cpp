#include "base/instruction_set.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace qxcms::detail {

namespace {

// The most that a value of the variable allows.
InstructionSet allowed(std::string_view asked) noexcept {
    if (asked == "common")
        return InstructionSet::kCommon;
    return asked == "avx2" ? InstructionSet::kAvx2 : InstructionSet::kAvx512;
}

} // namespace

InstructionSet instructionSetOf(const ProcessorFeatures& features) noexcept {
    if (!(features.avx2 && features.bmi2 && features.fma && features.popcnt))
        return InstructionSet::kCommon;
    const bool hasAvx512 = features.avx512f && features.avx512dq && features.avx512vl;
    return hasAvx512 ? InstructionSet::kAvx512 : InstructionSet::kAvx2;
}

InstructionSet instructionSetOf(InstructionSet offered, const char* asked) noexcept {
    return asked == nullptr ? offered : std::min(offered, allowed(asked));
}

InstructionSet offeredInstructionSet() noexcept {
    ProcessorFeatures features;
#if defined(__x86_64__)
    features.avx2 = __builtin_cpu_supports("avx2");
    features.bmi2 = __builtin_cpu_supports("bmi2");
    features.fma = __builtin_cpu_supports("fma");
    features.popcnt = __builtin_cpu_supports("popcnt");
    features.avx512f = __builtin_cpu_supports("avx512f");
    features.avx512dq = __builtin_cpu_supports("avx512dq");
    features.avx512vl = __builtin_cpu_supports("avx512vl");
#endif
    return instructionSetOf(features);
}

InstructionSet instructionSet() noexcept {
    static const InstructionSet found =
        instructionSetOf(offeredInstructionSet(), std::getenv("QXCMS_INSTRUCTION_SET"));
    return found;
}

} // namespace qxcms::detail
