// Every positive float through the conversion in single precision: what each instruction set gives against
// what the plain loop gives. A step on the command line leaves out all floats but one in so many.
#include <algorithm>
#include <atomic>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <thread>
#include <vector>

#include "base/instruction_set.h"
#include "colorspace/fast_lab.h"

namespace {

using qxcms::detail::fastXyzToLab;
using qxcms::detail::InstructionSet;
using qxcms::detail::instructionSetFor;
using qxcms::detail::labKernel;
using qxcms::detail::LabKernel;

struct Path {
    const char* name;
    InstructionSet set;
};
constexpr Path kPaths[] = {{"avx2", InstructionSet::kAvx2}, {"avx512", InstructionSet::kAvx512}};
constexpr std::size_t kPathCount = std::size(kPaths);

constexpr std::uint64_t kFloats = std::uint64_t{1} << 31;
constexpr std::size_t kBlock = 3 * 4096;

struct Walk {
    std::uint64_t step = 1;
    const LabKernel* kernels[kPathCount] = {};
    std::atomic<std::uint64_t> next{0};
    std::atomic<std::uint64_t> mismatches[kPathCount] = {};
};

double floatOfBits(std::uint64_t bits) {
    const auto word = static_cast<std::uint32_t>(std::min(bits, kFloats - 1));
    float value = 0.0F;
    std::memcpy(&value, &word, sizeof value);
    return static_cast<double>(value);
}

bool isTheSame(double left, double right) {
    return std::memcmp(&left, &right, sizeof left) == 0 || (std::isnan(left) && std::isnan(right));
}

// On the white (1, 1, 1) a component is its own ratio. L* tells f of Y exactly, and a* and b* those of X and
// Z: the differences of neighbours are exact.
void walkBlocks(Walk& walk) {
    const double white[3] = {1.0, 1.0, 1.0};
    std::vector<double> xyz(kBlock);
    std::vector<double> expected(kBlock);
    std::vector<double> given(kBlock);
    for (;;) {
        const std::uint64_t first = walk.next.fetch_add(kBlock * walk.step);
        if (first >= kFloats)
            return;
        for (std::size_t i = 0; i < kBlock; ++i)
            xyz[i] = floatOfBits(first + i * walk.step);
        fastXyzToLab(nullptr, white, xyz.data(), expected.data(), kBlock / 3);
        for (std::size_t path = 0; path < kPathCount; ++path) {
            if (walk.kernels[path] == nullptr)
                continue;
            fastXyzToLab(walk.kernels[path], white, xyz.data(), given.data(), kBlock / 3);
            for (std::size_t i = 0; i < kBlock; ++i)
                if (!isTheSame(given[i], expected[i])) {
                    ++walk.mismatches[path];
                    std::printf("%s: number %zu of the colour of %a: %a, not %a\n", kPaths[path].name, i % 3,
                                xyz[i], given[i], expected[i]);
                }
        }
    }
}

std::uint64_t stepOf(int argumentCount, char** arguments) {
    if (argumentCount < 2)
        return 1;
    const std::string_view text = arguments[1];
    std::uint64_t step = 0;
    std::from_chars(text.data(), text.data() + text.size(), step);
    return step;
}

} // namespace

int main(int argumentCount, char** arguments) {
    Walk walk;
    walk.step = stepOf(argumentCount, arguments);
    if (walk.step == 0) {
        std::puts("usage: qxcms_every_float [STEP]");
        return 2;
    }
    for (std::size_t path = 0; path < kPathCount; ++path)
        if (kPaths[path].set <= instructionSetFor(nullptr))
            walk.kernels[path] = labKernel(kPaths[path].set);
    std::vector<std::thread> threads;
    for (unsigned i = std::max(1U, std::thread::hardware_concurrency()); i > 0; --i)
        threads.emplace_back(walkBlocks, std::ref(walk));
    for (std::thread& thread : threads)
        thread.join();
    std::uint64_t mismatches = 0;
    for (std::size_t path = 0; path < kPathCount; ++path) {
        const std::uint64_t count = walk.mismatches[path];
        mismatches += count;
        if (walk.kernels[path] == nullptr)
            std::printf("%s: not on this processor\n", kPaths[path].name);
        else
            std::printf("%s: %llu of %llu floats, %llu mismatches\n", kPaths[path].name,
                        static_cast<unsigned long long>((kFloats - 1) / walk.step + 1),
                        static_cast<unsigned long long>(kFloats), static_cast<unsigned long long>(count));
    }
    return mismatches == 0 ? 0 : 1;
}
