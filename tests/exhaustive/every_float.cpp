// Every positive float through the conversion in single precision: what each instruction set gives against
// what the plain loop gives. A step on the command line leaves out all floats but one in so many.
#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <vector>

#include "tests/exhaustive/paths.h"

namespace {

using namespace qxcms::tests;

constexpr std::uint64_t kFloats = std::uint64_t{1} << 31;
constexpr std::uint64_t kLargestStep = 1000000;

double floatOfBits(std::uint64_t bits) {
    const auto word = static_cast<std::uint32_t>(std::min(bits, kFloats - 1));
    float value = 0.0F;
    std::memcpy(&value, &word, sizeof value);
    return static_cast<double>(value);
}

// L* tells f of Y exactly, and a* and b* those of X and Z: the differences of neighbours are exact.
void walkBlocks(Paths& paths, std::atomic<std::uint64_t>& next, std::uint64_t step) {
    std::vector<double> xyz(kWalkBlock);
    for (;;) {
        const std::uint64_t first = next.fetch_add(kWalkBlock * step);
        if (first >= kFloats)
            return;
        for (std::size_t i = 0; i < kWalkBlock; ++i)
            xyz[i] = floatOfBits(first + i * step);
        compareBlock(paths, qxcms::detail::fastXyzToLab, xyz);
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    const std::uint64_t step = argumentOf(argumentCount, arguments, 1, kLargestStep);
    if (step == 0) {
        std::puts("usage: qxcms_every_float [STEP], of 1 to 1000000");
        return 2;
    }
    Paths paths;
    std::atomic<std::uint64_t> next{0};
    onAllProcessors([&] { walkBlocks(paths, next, step); });
    return report(paths, (kFloats - 1) / step + 1, "of 2147483648 floats");
}
