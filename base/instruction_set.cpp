#include "base/instruction_set.h"

#include <cstdlib>
#include <string_view>

namespace qxcms::detail {

namespace {

InstructionSet offered() {
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt"))
        return InstructionSet::kAvx2;
#endif
    return InstructionSet::kCommon;
}

} // namespace

InstructionSet instructionSetFor(const char* asked) noexcept {
    const bool asksForCommon = asked != nullptr && std::string_view(asked) == "common";
    return asksForCommon ? InstructionSet::kCommon : offered();
}

InstructionSet instructionSet() noexcept {
    static const InstructionSet found = instructionSetFor(std::getenv("QXCMS_INSTRUCTION_SET"));
    return found;
}

} // namespace qxcms::detail
