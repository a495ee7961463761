// Ratios of many kinds through the conversion in double precision: what each instruction set gives against
// what the plain loop gives. And how far `pow` is off, which is what the kernels rely on. The argument is the
// number of blocks of 12288 ratios; each block has its own seed, so that a number always means the same
// ratios.
#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <mutex>
#include <random>
#include <vector>

#include "colorspace/lab_formulas.h"
#include "tests/exhaustive/paths.h"

namespace {

using namespace qxcms::tests;
using Random = std::mt19937_64;

constexpr std::uint64_t kUsualBlocks = 30000;
constexpr std::uint64_t kMostBlocks = 1000000;
// One in so many is asked how far `pow` is off.
constexpr std::size_t kMeasured = 6;
// A long double that tells thousandths of a unit in a double's last place.
constexpr bool kCanMeasure = std::numeric_limits<long double>::digits >= 64;

double fraction(Random& random) {
    return static_cast<double>(random() >> 11) * 0x1p-53;
}

// A ratio whose root is near to the middle of two doubles.
double nearTheMiddle(Random& random) {
    const double root = 0.21 + 1.2 * fraction(random);
    const long double above = static_cast<long double>(std::nextafter(root, 2.0));
    const long double middle = (static_cast<long double>(root) + above) / 2;
    const double cube = static_cast<double>(std::pow(middle, 1 / 0.33333333333333L));
    const std::array<double, 3> around = {std::nextafter(cube, 0.0), cube, std::nextafter(cube, 8.0)};
    return around[random() % around.size()];
}

double anyBits(Random& random) {
    const std::uint64_t bits = random() >> 1;
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

// A quarter each: of print and light, of any bits above the sign, near the middle, near a power of two.
double ratio(Random& random) {
    switch (random() % 4) {
    case 0:
        return 1.3 * fraction(random);
    case 1:
        return anyBits(random);
    case 2:
        return nearTheMiddle(random);
    default:
        return std::ldexp(1.0 + (fraction(random) - 0.5) * 1e-13, static_cast<int>(random() % 1030) - 7);
    }
}

// Of the `pow` of a ratio, in units in the last place.
double errorOfPower(double t) {
    const double given = std::pow(t, qxcms::detail::kCubeRoot);
    const long double exact =
        std::pow(static_cast<long double>(t), static_cast<long double>(qxcms::detail::kCubeRoot));
    const long double unit = std::ldexp(1.0L, std::ilogb(exact) - 52);
    return static_cast<double>(std::fabs(static_cast<long double>(given) - exact) / unit);
}

double largestError(const std::vector<double>& ratios) {
    double largest = 0.0;
    for (std::size_t i = 0; i < ratios.size(); i += kMeasured)
        if (ratios[i] > qxcms::detail::kForwardThreshold && std::isfinite(ratios[i]))
            largest = std::max(largest, errorOfPower(ratios[i]));
    return largest;
}

struct Walk {
    Paths paths;
    std::uint64_t blocks = 0;
    std::atomic<std::uint64_t> next{0};
    std::mutex mutex;
    double largestError = 0.0;
};

// Each ratio is X, Y and Z in its turn: L* tells f of Y, where a difference of others' roots might hide a
// bit.
void walkBlocks(Walk& walk) {
    std::vector<double> xyz(kWalkBlock);
    for (;;) {
        const std::uint64_t block = walk.next++;
        if (block >= walk.blocks)
            return;
        Random random(block);
        std::generate(xyz.begin(), xyz.end(), [&] { return ratio(random); });
        const double largest = kCanMeasure ? largestError(xyz) : 0.0;
        {
            const std::lock_guard<std::mutex> lock(walk.mutex);
            walk.largestError = std::max(walk.largestError, largest);
        }
        for (int turn = 0; turn < 3; ++turn) {
            compareBlock(walk.paths, qxcms::detail::xyzToLabOfAll, xyz);
            std::rotate(xyz.begin(), xyz.begin() + 1, xyz.end());
        }
    }
}

} // namespace

int main(int argumentCount, char** arguments) {
    Walk walk;
    walk.blocks = argumentOf(argumentCount, arguments, kUsualBlocks, kMostBlocks);
    if (walk.blocks == 0) {
        std::puts("usage: qxcms_many_doubles [BLOCKS], of 1 to 1000000");
        return 2;
    }
    onAllProcessors([&] { walkBlocks(walk); });
    if (kCanMeasure)
        std::printf("pow: off by at most %.3f units in the last place\n", walk.largestError);
    return report(walk.paths, walk.blocks * kWalkBlock, "ratios");
}
