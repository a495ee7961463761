// Growth: the time per row, field, header line and declared name must not depend on how many there are.
#include <string>

#include <benchmark/benchmark.h>

#include "qxcms.h"

namespace qxcms::bench {
namespace {

std::string repeated(const std::string& text, int times) {
    std::string all;
    all.reserve(text.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

// "F0 F1 F2 ...", each between `before` and `after`.
std::string names(const char* before, const char* after, int count) {
    std::string all;
    for (int i = 0; i < count; ++i)
        all.append(before).append("F").append(std::to_string(i)).append(after);
    return all;
}

std::string tableText(const std::string& fields, int rows, const std::string& values) {
    return "BEGIN_DATA_FORMAT\n" + fields + "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " + std::to_string(rows) +
           "\nBEGIN_DATA\n" + values + "\nEND_DATA\n";
}

std::string rowsText(int count) {
    return tableText("SAMPLE_ID LAB_L LAB_A LAB_B", count, repeated("A1 50.25 -12.5 33.125\n", count));
}

std::string wavelengthsText(int count) {
    std::string fields;
    for (int wavelength = count; wavelength > 0; --wavelength)
        fields += "nm" + std::to_string(wavelength) + "\n";
    return tableText(fields, 1, repeated("0.5 ", count));
}

std::string headerLinesText(int count) {
    return repeated("ORIGINATOR \"bench\" # of lines\n", count);
}

std::string declarationsText(int count) {
    return names("KEYWORD \"", "\"\n", count);
}

std::string declaredFieldsText(int count) {
    return declarationsText(count) + tableText(names("", "\n", count), 1, repeated("x ", count));
}

void growth(benchmark::State& state, std::string (*textOf)(int)) {
    const auto count = static_cast<int>(state.range(0));
    const std::string text = textOf(count);
    for (auto _ : state) {
        const TCgats document(text.c_str(), 0);
        if (document.GetErrorCode() != 0)
            state.SkipWithError("the text was refused");
    }
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK_CAPTURE(growth, rows, rowsText)->Arg(1000)->Arg(100000)->Arg(1000000);
BENCHMARK_CAPTURE(growth, spectralFields, wavelengthsText)->Arg(1000)->Arg(100000)->Arg(1000000);
BENCHMARK_CAPTURE(growth, headerLines, headerLinesText)->Arg(1000)->Arg(100000)->Arg(1000000);
BENCHMARK_CAPTURE(growth, declarations, declarationsText)->Arg(1000)->Arg(100000)->Arg(1000000);
BENCHMARK_CAPTURE(growth, declaredFields, declaredFieldsText)->Arg(1000)->Arg(100000)->Arg(1000000);

void fieldsByName(benchmark::State& state) {
    const auto count = static_cast<int>(state.range(0));
    const TCgats document(declaredFieldsText(count).c_str(), 0);
    int field = 0;
    for (auto _ : state) {
        const std::string name = "f" + std::to_string(field);
        if (document.GetFieldNameIndex(0, name.c_str()) != field)
            state.SkipWithError("a field was not found");
        field = (field + 1) % count;
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(fieldsByName)->Arg(1000)->Arg(100000)->Arg(1000000);

} // namespace
} // namespace qxcms::bench
