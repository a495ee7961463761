/// @file
/// XYZ to Lab for many colours at once. Internal.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/instruction_set.h"

namespace qxcms::detail {

/// The triples that a kernel takes at a time: a multiple of kLabGroup, at most kLabBlock.
inline constexpr std::size_t kLabGroup = 16;
inline constexpr std::size_t kLabBlock = 64;
inline constexpr std::size_t kLabNumbers = 3 * kLabBlock;
/// The numbers after which the order of X, Y, Z and of the lanes of every vector begin again.
inline constexpr std::size_t kLabPattern = 24;

/// The two steps of the conversion, with the components of all colours side by side.
template <class Number>
struct LabSteps {
    /// f of the ratios to the white. `white` holds what components are multiplied with (float) or divided by
    /// (double), kLabPattern of them. Bit n % 64 of doubtful[n / 64] is set where roots[n] is left to `pow`.
    void (*roots)(const double* xyz, const double* white, std::size_t triples, Number* ratios, Number* roots,
                  std::uint64_t* doubtful);
    /// L*, a*, b* of f. One number before `roots` and one behind may be read.
    void (*lab)(const Number* roots, std::size_t triples, double* lab);
};

struct LabKernel {
    LabSteps<float> single;
    LabSteps<double> exact;
};

/// Need InstructionSet::kAvx2 and kAvx512; with null members where they were not compiled.
extern const LabKernel kAvx2LabKernel;
extern const LabKernel kAvx512LabKernel;

/// The kernel for an instruction set; null where the plain loop is all there is.
const LabKernel* labKernel(InstructionSet set) noexcept;

/// The kernel that TLabSpace uses in this process: that for instructionSet().
const LabKernel* usedLabKernel() noexcept;

/// The rule of TLabSpace::FastXYZToLab, by a kernel or, without one, colour by colour.
void fastXyzToLab(const LabKernel* kernel, const double* white, const double* xyz, double* lab,
                  std::size_t count) noexcept;

/// TLabSpace::XYZToLab of many colours, likewise.
void xyzToLabOfAll(const LabKernel* kernel, const double* white, const double* xyz, double* lab,
                   std::size_t count) noexcept;

} // namespace qxcms::detail
