/// @file
/// What the walks compare with the plain loop, and what comes of it.
#pragma once

#include <atomic>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "base/instruction_set.h"
#include "colorspace/fast_lab.h"

namespace qxcms::tests {

/// The numbers that are taken at a time.
inline constexpr std::size_t kWalkBlock = 3 * 4096;

/// Exit code where nothing could be compared.
inline constexpr int kSkipped = 77;

/// Differences that are told one by one.
inline constexpr std::uint64_t kTold = 20;

/// A kernel, and how often it gave something else than the plain loop.
struct Path {
    const char* name;
    detail::InstructionSet set;
    const detail::LabKernel& kernel;
    std::atomic<std::uint64_t> mismatches{0};

    bool isCompiled() const { return kernel.single.roots != nullptr; }
    bool isOffered() const { return set <= detail::offeredInstructionSet(); }
    bool isWalked() const { return isCompiled() && isOffered(); }
};

struct Paths {
    Path all[2] = {{"avx2", detail::InstructionSet::kAvx2, detail::kAvx2LabKernel},
                   {"avx512", detail::InstructionSet::kAvx512, detail::kAvx512LabKernel}};
};

inline bool areTheSame(double left, double right) {
    return std::memcmp(&left, &right, sizeof left) == 0 || (std::isnan(left) && std::isnan(right));
}

using Conversion = void (*)(const detail::LabKernel*, const double*, const double*, double*, std::size_t);

/// kWalkBlock numbers on the white (1, 1, 1), where a component is its own ratio. L* tells f of Y exactly.
inline void compareBlock(Paths& paths, Conversion convert, const std::vector<double>& xyz) {
    const double white[3] = {1.0, 1.0, 1.0};
    std::vector<double> expected(kWalkBlock);
    std::vector<double> given(kWalkBlock);
    convert(nullptr, white, xyz.data(), expected.data(), kWalkBlock / 3);
    for (Path& path : paths.all) {
        if (!path.isWalked())
            continue;
        convert(&path.kernel, white, xyz.data(), given.data(), kWalkBlock / 3);
        for (std::size_t i = 0; i < kWalkBlock; ++i)
            if (!areTheSame(given[i], expected[i]) && ++path.mismatches <= kTold)
                std::printf("%s: number %zu of the colour of %a: %a, not %a\n", path.name, i % 3, xyz[i],
                            given[i], expected[i]);
    }
}

template <class Work>
void onAllProcessors(Work work) {
    std::vector<std::thread> threads;
    for (unsigned i = std::thread::hardware_concurrency(); i > 1; --i)
        threads.emplace_back(work);
    work();
    for (std::thread& thread : threads)
        thread.join();
}

/// What was compared, what was not and why; and the exit code.
inline int report(const Paths& paths, std::uint64_t count, const char* what) {
    int code = kSkipped;
    for (const Path& path : paths.all) {
        if (!path.isCompiled())
            std::printf("%s: not compiled\n", path.name);
        else if (!path.isOffered())
            std::printf("%s: not on this processor\n", path.name);
        else {
            const std::uint64_t mismatches = path.mismatches;
            std::printf("%s: %llu %s, %llu mismatches\n", path.name, static_cast<unsigned long long>(count),
                        what, static_cast<unsigned long long>(mismatches));
            code = mismatches != 0 || code == 1 ? 1 : 0;
        }
    }
    if (code == kSkipped)
        std::puts("nothing was compared");
    return code;
}

/// A number of 1 to `most`, the only argument; `usual` without one, 0 for anything else.
inline std::uint64_t argumentOf(int count, char** arguments, std::uint64_t usual, std::uint64_t most) {
    if (count < 2)
        return usual;
    const std::string_view text = arguments[1];
    const char* const end = text.data() + text.size();
    std::uint64_t value = 0;
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    return count == 2 && error == std::errc() && rest == end && value <= most ? value : 0;
}

} // namespace qxcms::tests
