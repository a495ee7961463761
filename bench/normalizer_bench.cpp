// Bringing documents into form, beside reading them, in one run.
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

#include "bench/chart.h"
#include "qxcms.h"

namespace qxcms::bench {
namespace {

// About 40 MB.
constexpr int kRows = 140000;

void readConformingDocument(benchmark::State& state) {
    const std::string text = chartText(kRows);
    for (auto _ : state) {
        TCgats document;
        if (document.ReadFromBuffer(text.c_str()) != 0)
            state.SkipWithError("the chart was refused");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(readConformingDocument)->Unit(benchmark::kMillisecond);

// Nothing is changed; the text is moved in, and copied back beside the clock.
void checkConformingDocument(benchmark::State& state) {
    std::string text = chartText(kRows);
    const auto size = static_cast<std::int64_t>(text.size());
    for (auto _ : state) {
        TCgatsNormalizer normalizer;
        if (normalizer.Normalize(std::move(text)) != 0 || normalizer.GetNrLiberties() != 0)
            state.SkipWithError("the chart was not taken as it is");
        state.PauseTiming();
        text = normalizer.GetText();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * size);
}
BENCHMARK(checkConformingDocument)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace qxcms::bench
