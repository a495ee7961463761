// XYZ to Lab for many colours, in the cache: each way that there is, and Little CMS.
#include <cmath>
#include <cstddef>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "base/instruction_set.h"
#include "colorspace/fast_lab.h"

#ifdef QXCMS_HAVE_LCMS2
#include <lcms2.h>
#endif

namespace qxcms::bench {
namespace {

using namespace qxcms::detail;

constexpr std::size_t kColors = 1000;
constexpr double kD50[3] = {0.9642, 1.0, 0.8249};

// More dark colours than light ones, a tenth of the components on the line.
std::vector<double> colors() {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> fraction(0.0, 1.0);
    std::vector<double> xyz;
    while (xyz.size() < 3 * kColors)
        for (const double component : kD50)
            xyz.push_back(component * std::pow(fraction(random), 2.0));
    return xyz;
}

/// @param set of InstructionSet.
const LabKernel* kernelOf(benchmark::State& state) {
    const auto set = static_cast<InstructionSet>(state.range(0));
    if (set > offeredInstructionSet())
        state.SkipWithError("not on this processor");
    const char* const names[] = {"the plain loop", "AVX2", "AVX-512"};
    state.SetLabel(names[state.range(0)]);
    return labKernel(set);
}

template <class Conversion>
void convertColors(benchmark::State& state, Conversion&& convert) {
    const std::vector<double> xyz = colors();
    std::vector<double> lab(xyz.size());
    for (auto _ : state) {
        convert(xyz.data(), lab.data());
        benchmark::DoNotOptimize(lab.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kColors));
}

void colorsToLabFast(benchmark::State& state) {
    const LabKernel* const kernel = kernelOf(state);
    convertColors(state,
                  [=](const double* xyz, double* lab) { fastXyzToLab(kernel, kD50, xyz, lab, kColors); });
}
BENCHMARK(colorsToLabFast)->DenseRange(0, 2);

void colorsToLab(benchmark::State& state) {
    const LabKernel* const kernel = kernelOf(state);
    convertColors(state,
                  [=](const double* xyz, double* lab) { xyzToLabOfAll(kernel, kD50, xyz, lab, kColors); });
}
BENCHMARK(colorsToLab)->DenseRange(0, 2);

#ifdef QXCMS_HAVE_LCMS2
// A transform from the XYZ to the Lab profile, doubles in, doubles out.
void colorsToLabByALittleCmsTransform(benchmark::State& state) {
    const cmsHPROFILE from = cmsCreateXYZProfile();
    const cmsHPROFILE to = cmsCreateLab4Profile(nullptr);
    const cmsHTRANSFORM transform =
        cmsCreateTransform(from, TYPE_XYZ_DBL, to, TYPE_Lab_DBL, INTENT_RELATIVE_COLORIMETRIC, 0);
    convertColors(state, [=](const double* xyz, double* lab) {
        cmsDoTransform(transform, xyz, lab, static_cast<cmsUInt32Number>(kColors));
    });
    cmsDeleteTransform(transform);
    cmsCloseProfile(to);
    cmsCloseProfile(from);
}
BENCHMARK(colorsToLabByALittleCmsTransform);

void colorsToLabByLittleCmsOneByOne(benchmark::State& state) {
    convertColors(state, [](const double* xyz, double* lab) {
        for (std::size_t i = 0; i < 3 * kColors; i += 3) {
            const cmsCIEXYZ color = {xyz[i], xyz[i + 1], xyz[i + 2]};
            cmsCIELab result;
            cmsXYZ2Lab(cmsD50_XYZ(), &result, &color);
            lab[i] = result.L;
            lab[i + 1] = result.a;
            lab[i + 2] = result.b;
        }
    });
}
BENCHMARK(colorsToLabByLittleCmsOneByOne);
#endif

} // namespace
} // namespace qxcms::bench
