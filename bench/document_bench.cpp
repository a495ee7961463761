// Documents in and out, beside an independent library and beside a bare loop over the same numbers, in one
// run.
#include <charconv>
#include <memory>
#include <ostream>
#include <streambuf>
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

// Rows of the three charts; all have 41 columns.
constexpr int kPrintingTarget = kPatches;
constexpr int kLargestForLittleCms = 32000;
constexpr int kLarge = 100000;

// The part of a chart's text that holds the samples.
std::string samplesOf(const std::string& text) {
    const std::size_t first = text.find("BEGIN_DATA\n") + 11;
    return text.substr(first, text.rfind("END_DATA") - first);
}

std::vector<double> numbersOf(const TCgats& document) {
    std::vector<double> numbers;
    for (int row = 0; row < document.GetNrSamples(0); ++row)
        for (int column = 1; column < document.GetNrFields(0); ++column)
            numbers.push_back(document.GetTable(0)->GetValues(column)->GetDouble(row));
    return numbers;
}

void reportValues(benchmark::State& state) {
    state.SetItemsProcessed(state.iterations() * state.range(0) * (4 + kBands));
}

void readDocument(benchmark::State& state) {
    const std::string text = chartText(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        TCgats document(text.c_str(), 0);
        if (document.GetErrorCode() != 0)
            state.SkipWithError("the chart was refused");
    }
    reportValues(state);
}
BENCHMARK(readDocument)->Arg(kPrintingTarget)->Arg(kLargestForLittleCms)->Arg(kLarge);

// The bound: every number of the samples, and nothing else.
void readBareNumbers(benchmark::State& state) {
    const std::string samples = samplesOf(chartText(static_cast<int>(state.range(0))));
    for (auto _ : state) {
        double sum = 0.0;
        const char* const last = samples.data() + samples.size();
        for (const char* at = samples.data(); at < last; ++at) {
            double number = 0.0;
            at = std::from_chars(at, last, number).ptr;
            sum += number;
        }
        benchmark::DoNotOptimize(sum);
    }
    reportValues(state);
}
BENCHMARK(readBareNumbers)->Arg(kPrintingTarget)->Arg(kLargestForLittleCms)->Arg(kLarge);

class Nowhere : public std::streambuf {
protected:
    std::streamsize xsputn(const char* text, std::streamsize count) override {
        benchmark::DoNotOptimize(text);
        return count;
    }
};

void writeDocument(benchmark::State& state) {
    const TCgats document(chartText(static_cast<int>(state.range(0))).c_str(), 0);
    Nowhere nowhere;
    std::ostream stream(&nowhere);
    for (auto _ : state)
        if (document.WriteToStream(stream) != 0)
            state.SkipWithError("the chart was not written");
    reportValues(state);
}
BENCHMARK(writeDocument)->Arg(kPrintingTarget)->Arg(kLargestForLittleCms)->Arg(kLarge);

void writeDocumentToArray(benchmark::State& state) {
    const TCgats document(chartText(static_cast<int>(state.range(0))).c_str(), 0);
    for (auto _ : state) {
        char* text = nullptr;
        if (document.WriteToBuffer(&text) != 0)
            state.SkipWithError("the chart was not written");
        delete[] text;
    }
    reportValues(state);
}
BENCHMARK(writeDocumentToArray)->Arg(kPrintingTarget)->Arg(kLargestForLittleCms)->Arg(kLarge);

// The bound: six digits of every number, and nothing else.
void writeBareNumbers(benchmark::State& state) {
    const TCgats document(chartText(static_cast<int>(state.range(0))).c_str(), 0);
    const std::vector<double> numbers = numbersOf(document);
    for (auto _ : state)
        for (const double number : numbers) {
            char text[32];
            benchmark::DoNotOptimize(
                std::to_chars(text, text + sizeof text, number, std::chars_format::general, 6).ptr);
        }
    reportValues(state);
}
BENCHMARK(writeBareNumbers)->Arg(kPrintingTarget)->Arg(kLargestForLittleCms)->Arg(kLarge);

#ifdef QXCMS_HAVE_LCMS2
void readDocumentWithLittleCms(benchmark::State& state) {
    const std::string text = chartText(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        const cmsHANDLE document =
            cmsIT8LoadFromMem(nullptr, text.data(), static_cast<cmsUInt32Number>(text.size()));
        if (document == nullptr) {
            state.SkipWithError("the chart was refused");
            return;
        }
        double sum = 0.0;
        for (int row = 0; row < state.range(0); ++row)
            for (int column = 1; column < 5 + kBands; ++column)
                sum += cmsIT8GetDataRowColDbl(document, row, column);
        benchmark::DoNotOptimize(sum);
        cmsIT8Free(document);
    }
    reportValues(state);
}
BENCHMARK(readDocumentWithLittleCms)->Arg(kPrintingTarget)->Arg(kLargestForLittleCms);

void writeDocumentWithLittleCms(benchmark::State& state) {
    const std::string text = chartText(static_cast<int>(state.range(0)));
    const TCgats read(text.c_str(), 0);
    const std::vector<double> numbers = numbersOf(read);
    const cmsHANDLE document =
        cmsIT8LoadFromMem(nullptr, text.data(), static_cast<cmsUInt32Number>(text.size()));
    std::vector<char> out(2 * text.size());
    for (auto _ : state) {
        auto number = numbers.begin();
        for (int row = 0; row < state.range(0); ++row)
            for (int column = 1; column < 5 + kBands; ++column)
                cmsIT8SetDataRowColDbl(document, row, column, *number++);
        auto size = static_cast<cmsUInt32Number>(out.size());
        if (!cmsIT8SaveToMem(document, out.data(), &size))
            state.SkipWithError("the chart was not written");
    }
    cmsIT8Free(document);
    reportValues(state);
}
BENCHMARK(writeDocumentWithLittleCms)->Arg(kPrintingTarget)->Arg(kLargestForLittleCms)->Iterations(3);
#endif

} // namespace
} // namespace qxcms::bench
