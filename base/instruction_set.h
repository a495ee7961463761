/// @file
/// What the processor can do beyond what every processor of its kind can. Internal.
#pragma once

namespace qxcms::detail {

/// Each can what the ones before can. kAvx2: with BMI2, FMA and POPCNT; kAvx512: F, DQ and VL.
enum class InstructionSet { kCommon, kAvx2, kAvx512 };

/// What the processor and the system offer. The environment variable QXCMS_INSTRUCTION_SET ("common", "avx2",
/// "avx512") asks for no more than it names. Found out once for the process.
InstructionSet instructionSet() noexcept;

/// The same for a value of the variable; null where it is not set. An unknown value asks for nothing.
InstructionSet instructionSetFor(const char* asked) noexcept;

} // namespace qxcms::detail
