// What the main job costs: reading a chart, spectra to XYZ, XYZ to Lab, Lab to differences.
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/chart.h"
#include "qxcms.h"

#ifdef QXCMS_HAVE_LCMS2
#include <lcms2.h>
#endif

namespace qxcms::bench {
namespace {

void readChart(benchmark::State& state) {
    const std::string text = chartText(kPatches);
    for (auto _ : state) {
        TCgats document(text.c_str(), 0);
        if (document.GetErrorCode() != 0)
            state.SkipWithError("the chart was refused");
    }
    state.SetItemsProcessed(state.iterations() * kPatches);
}
BENCHMARK(readChart);

#ifdef QXCMS_HAVE_LCMS2
void readChartWithLittleCms(benchmark::State& state) {
    const std::string text = chartText(kPatches);
    for (auto _ : state) {
        const cmsHANDLE document =
            cmsIT8LoadFromMem(nullptr, text.data(), static_cast<cmsUInt32Number>(text.size()));
        if (document == nullptr)
            state.SkipWithError("the chart was refused");
        cmsIT8Free(document);
    }
    state.SetItemsProcessed(state.iterations() * kPatches);
}
BENCHMARK(readChartWithLittleCms);
#endif

// Time per row must not grow with the number of rows.
void readRows(benchmark::State& state) {
    const std::string text = chartText(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        TCgats document(text.c_str(), 0);
        benchmark::DoNotOptimize(document.GetNrTables());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(readRows)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The measurements of a chart, with an illuminant and an observer to look at them.
struct MeasuredChart {
    MeasuredChart() : observer("2 degree"), geometry(0) {
        TIlluminantFactoryHolder* const registry = TIlluminantFactory::New();
        registry->AddDirectory("QX_CMS:[r.ill]");
        illuminant = registry->GetIlluminant("D50");
        const TCgats document(chartText(kPatches).c_str(), 0);
        for (int sample = 0; sample < kPatches; ++sample)
            patches.emplace_back(document.GetMeasurement(0, sample, illuminant, &observer, &geometry));
    }
    ~MeasuredChart() { TIlluminantFactory::Delete(); }
    MeasuredChart(const MeasuredChart&) = delete;
    MeasuredChart& operator=(const MeasuredChart&) = delete;

    TObserver observer;
    TMeasGeom geometry;
    TIlluminant* illuminant = nullptr;
    std::vector<std::unique_ptr<TOneMeasurement>> patches;
};

void spectraToXyz(benchmark::State& state) {
    MeasuredChart chart;
    double xyz[3];
    for (auto _ : state)
        for (const auto& patch : chart.patches) {
            patch->GetXYZ(chart.illuminant, &chart.observer, xyz);
            benchmark::DoNotOptimize(xyz);
        }
    state.SetItemsProcessed(state.iterations() * kPatches);
}
BENCHMARK(spectraToXyz);

void xyzToLab(benchmark::State& state) {
    const double white[3] = {96.422, 100.0, 82.521};
    const TLabSpace space(white);
    double xyz[3] = {20.0, 30.0, 10.0};
    double lab[3];
    for (auto _ : state) {
        xyz[0] += 1e-6;
        space.XYZToLab(xyz, lab);
        benchmark::DoNotOptimize(lab);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(xyzToLab);

void difference(benchmark::State& state) {
    const double standard[3] = {50.0, 20.0, -30.0};
    double sample[3] = {51.0, 19.0, -28.0};
    const int function = static_cast<int>(state.range(0));
    for (auto _ : state) {
        sample[1] += 1e-9;
        benchmark::DoNotOptimize(TLabSpace::CalcSquareDeltaEConvertedStatic(sample, standard, function));
    }
    state.SetLabel(TLabSpace::GetDifferenceFunctionList()[function]);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(difference)->DenseRange(0, 4);

} // namespace
} // namespace qxcms::bench

BENCHMARK_MAIN();
