#include "colorspace/fast_lab.h"

#include <algorithm>
#include <cmath>

#include "colorspace/lab_formulas.h"
#include "colorspace/tlabspace.h"

namespace qxcms::detail {

namespace {

// Fewer colours take less time one by one.
constexpr std::size_t kFewest = 5;

// The roots before the first and behind the last one that a kernel may read, and still aligned.
constexpr std::size_t kMargin = 16;

// Kept on purpose: 1/3 in single precision, which is not that of XYZToLab
// (fastLab.theExponent_isAThirdInSinglePrecision).
constexpr double kSingleThird = static_cast<double>(1.0F / 3.0F);

float singlePower(float t) {
    return static_cast<float>(std::pow(static_cast<double>(t), kSingleThird));
}

double exactPower(double t) {
    return std::pow(t, kCubeRoot);
}

float singleRoot(float t) {
    return static_cast<double>(t) <= kForwardThreshold
               ? t * static_cast<float>(kForwardSlope) + static_cast<float>(kForwardOffset)
               : singlePower(t);
}

// Kept on purpose: a white component of 0 has an infinite reciprocal
// (fastLab.aZeroWhite_givesInfinityOrNoNumber).
float singleRatio(double component, double reciprocal) {
    return component < 0.0 ? 0.0F : static_cast<float>(component * reciprocal);
}

void fastOne(const double* reciprocals, const double* xyz, double* lab) {
    const float fx = singleRoot(singleRatio(xyz[0], reciprocals[0]));
    const float fy = singleRoot(singleRatio(xyz[1], reciprocals[1]));
    const float fz = singleRoot(singleRatio(xyz[2], reciprocals[2]));
    lab[0] = 116.0 * static_cast<double>(fy) - 16.0;
    lab[1] = 500.0 * static_cast<double>(fx - fy);
    lab[2] = 200.0 * static_cast<double>(fy - fz);
}

int lowestBit(std::uint64_t bits) {
    return __builtin_ctzll(bits);
}

/// The memory of a kernel.
template <class Number>
struct Block {
    alignas(64) Number ratios[kLabNumbers];
    alignas(64) Number roots[kMargin + kLabNumbers + kMargin] = {};
    std::uint64_t doubtful[kLabNumbers / 64];
};

/// A multiple of kLabGroup of colours, at most kLabBlock.
template <class Number>
void convertGroups(const LabSteps<Number>& steps, Number (*power)(Number), const double* white,
                   const double* xyz, double* lab, std::size_t triples, Block<Number>& block) {
    Number* const roots = block.roots + kMargin;
    steps.roots(xyz, white, triples, block.ratios, roots, block.doubtful);
    for (std::size_t first = 0; first < 3 * triples; first += 64)
        for (std::uint64_t bits = block.doubtful[first / 64]; bits != 0; bits &= bits - 1) {
            const std::size_t at = first + static_cast<std::size_t>(lowestBit(bits));
            roots[at] = power(block.ratios[at]);
        }
    steps.lab(roots, triples, lab);
}

template <class Number>
void convert(const LabSteps<Number>& steps, Number (*power)(Number), const double* white, const double* xyz,
             double* lab, std::size_t count) {
    double pattern[kLabPattern];
    for (std::size_t i = 0; i < kLabPattern; ++i)
        pattern[i] = white[i % 3];
    Block<Number> block;
    const std::size_t rest = count % kLabGroup;
    const std::size_t whole = count - rest;
    for (std::size_t done = 0; done < whole; done += kLabBlock)
        convertGroups(steps, power, pattern, xyz + 3 * done, lab + 3 * done,
                      std::min(kLabBlock, whole - done), block);
    if (rest == 0)
        return;
    double last[3 * kLabGroup] = {};
    std::copy_n(xyz + 3 * whole, 3 * rest, last);
    convertGroups(steps, power, pattern, last, last, kLabGroup, block);
    std::copy_n(last, 3 * rest, lab + 3 * whole);
}

} // namespace

const LabKernel* labKernel(InstructionSet set) noexcept {
    if (set >= InstructionSet::kAvx512 && kAvx512LabKernel.single.roots != nullptr)
        return &kAvx512LabKernel;
    if (set >= InstructionSet::kAvx2 && kAvx2LabKernel.single.roots != nullptr)
        return &kAvx2LabKernel;
    return nullptr;
}

const LabKernel* usedLabKernel() noexcept {
    static const LabKernel* const kernel = labKernel(instructionSet());
    return kernel;
}

void fastXyzToLab(const LabKernel* kernel, const double* white, const double* xyz, double* lab,
                  std::size_t count) noexcept {
    const double reciprocals[3] = {1.0 / white[0], 1.0 / white[1], 1.0 / white[2]};
    if (kernel != nullptr && count >= kFewest)
        convert(kernel->single, singlePower, reciprocals, xyz, lab, count);
    else
        for (std::size_t i = 0; i < count; ++i)
            fastOne(reciprocals, xyz + 3 * i, lab + 3 * i);
}

void xyzToLabOfAll(const LabKernel* kernel, const double* white, const double* xyz, double* lab,
                   std::size_t count) noexcept {
    if (kernel != nullptr && count >= kFewest)
        convert(kernel->exact, exactPower, white, xyz, lab, count);
    else
        for (std::size_t i = 0; i < count; ++i)
            xyzToLab(white, xyz + 3 * i, lab + 3 * i);
}

} // namespace qxcms::detail

int TLabSpace::FastXYZToLab(const double* xyz, double* lab, int count) const {
    if (xyz != nullptr && lab != nullptr && count > 0)
        qxcms::detail::fastXyzToLab(qxcms::detail::usedLabKernel(), white, xyz, lab,
                                    static_cast<std::size_t>(count));
    return 0;
}

int TLabSpace::XYZToLabBatch(const double* xyz, double* lab, std::size_t count) const {
    if (xyz != nullptr && lab != nullptr)
        qxcms::detail::xyzToLabOfAll(qxcms::detail::usedLabKernel(), white, xyz, lab, count);
    return 0;
}
