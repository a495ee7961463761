// Many colours and spectra in one call beside one call for each; the appearance models; the matching search.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "qxcms.h"

#ifdef QXCMS_HAVE_LCMS2
#include <lcms2.h>
#endif

namespace qxcms::bench {
namespace {

constexpr std::size_t kCount = 1000;
constexpr int kBands = TIlluminantAndObserver::kMaxPoints;
constexpr double kD50[3] = {96.42, 100.0, 82.49};

std::vector<double> numbers(std::size_t count, double low, double high) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> between(low, high);
    std::vector<double> list(count);
    std::generate(list.begin(), list.end(), [&] { return between(random); });
    return list;
}

// An illuminant of equal power with the 2 degree observer.
struct EqualPower {
    EqualPower() : weighting(&illuminant, &observer, kBands) {}

    TSpectrum light{std::vector<double>(kBands, 1.0).data()};
    TIlluminant illuminant{&light, "equal power"};
    TObserver observer{0};
    TIlluminantAndObserver weighting;
};

void setItems(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void spectraOneByOne(benchmark::State& state) {
    const EqualPower equal;
    const std::vector<double> spectra = numbers(kCount * kBands, 0.0, 1.0);
    std::vector<double> xyz(3 * kCount);
    for (auto _ : state) {
        for (std::size_t i = 0; i < kCount; ++i)
            equal.weighting.GetXYZ(&spectra[i * kBands], &xyz[3 * i], kBands);
        benchmark::ClobberMemory();
    }
    setItems(state);
}
BENCHMARK(spectraOneByOne);

void spectraAtOnce(benchmark::State& state) {
    const EqualPower equal;
    const std::vector<double> spectra = numbers(kCount * kBands, 0.0, 1.0);
    std::vector<double> xyz(3 * kCount);
    for (auto _ : state) {
        equal.weighting.SpectraToXYZBatch(spectra.data(), xyz.data(), kCount);
        benchmark::ClobberMemory();
    }
    setItems(state);
}
BENCHMARK(spectraAtOnce);

template <class Model>
void appearance(benchmark::State& state) {
    const Model model(kD50, 0);
    const std::vector<double> xyz = numbers(3 * kCount, 5.0, 80.0);
    std::vector<double> jch(xyz.size());
    for (auto _ : state) {
        model.FromXYZBatch(xyz.data(), jch.data(), kCount);
        benchmark::ClobberMemory();
    }
    setItems(state);
}
BENCHMARK_TEMPLATE(appearance, TColorSpace_CIECAM97s);
BENCHMARK_TEMPLATE(appearance, TColorSpace_CIECAM02);

#ifdef QXCMS_HAVE_LCMS2
void ciecam02WithLittleCms(benchmark::State& state) {
    cmsViewingConditions conditions = {{kD50[0], kD50[1], kD50[2]}, 20.0, 318.31, AVG_SURROUND, D_CALCULATE};
    const cmsHANDLE model = cmsCIECAM02Init(nullptr, &conditions);
    const std::vector<double> xyz = numbers(3 * kCount, 5.0, 80.0);
    cmsJCh jch;
    for (auto _ : state)
        for (std::size_t i = 0; i < kCount; ++i) {
            const cmsCIEXYZ color = {xyz[3 * i], xyz[3 * i + 1], xyz[3 * i + 2]};
            cmsCIECAM02Forward(model, &color, &jch);
            benchmark::DoNotOptimize(jch);
        }
    cmsCIECAM02Done(model);
    setItems(state);
}
BENCHMARK(ciecam02WithLittleCms);
#endif

void xyzToLabOneByOne(benchmark::State& state) {
    const TLabSpace space(kD50);
    const std::vector<double> xyz = numbers(3 * kCount, 5.0, 80.0);
    std::vector<double> lab(xyz.size());
    for (auto _ : state) {
        for (std::size_t i = 0; i < kCount; ++i)
            space.XYZToLab(&xyz[3 * i], &lab[3 * i]);
        benchmark::ClobberMemory();
    }
    setItems(state);
}
BENCHMARK(xyzToLabOneByOne);

void matchingSpectrum(benchmark::State& state) {
    const EqualPower equal;
    const double target[3] = {30.0, 25.0, 10.0};
    const std::vector<double> start(kBands, 0.5);
    double result[kBands];
    for (auto _ : state)
        benchmark::DoNotOptimize(
            equal.weighting.CalculateMatchingSpectrum(target, nullptr, nullptr, nullptr, start.data(),
                                                      static_cast<MatchingMethod>(state.range(0)), result));
    state.SetLabel(state.range(0) == kMatchingMethodLab ? "distance in Lab" : "distance in XYZ");
}
BENCHMARK(matchingSpectrum)->DenseRange(0, 1)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace qxcms::bench
