/// @file
/// What the processor can do beyond what every processor of its kind can. Internal.
#pragma once

namespace qxcms::detail {

/// Each can what the ones before can. kAvx2: with BMI2, FMA and POPCNT; kAvx512: F, DQ and VL.
enum class InstructionSet { kCommon, kAvx2, kAvx512 };

/// What a processor and its system tell of themselves.
struct ProcessorFeatures {
    bool avx2 = false;
    bool bmi2 = false;
    bool fma = false;
    bool popcnt = false;
    bool avx512f = false;
    bool avx512dq = false;
    bool avx512vl = false;
};

/// The most of which nothing is missing.
InstructionSet instructionSetOf(const ProcessorFeatures& features) noexcept;

/// What is used where `offered` is offered: no more than the variable's value `asked` names ("common",
/// "avx2", "avx512"). Any other value, of which null is one, is as if the variable were not set: all that is
/// offered.
InstructionSet instructionSetOf(InstructionSet offered, const char* asked) noexcept;

/// What this processor and the system offer.
InstructionSet offeredInstructionSet() noexcept;

/// What this process uses: of what is offered, what the environment variable QXCMS_INSTRUCTION_SET asks for.
/// Found out once.
InstructionSet instructionSet() noexcept;

} // namespace qxcms::detail
