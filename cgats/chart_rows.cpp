#include "cgats/chart_rows.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "base/guarded.h"
#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"

namespace qxcms::detail {

namespace {

constexpr int kDecimals = 5;
constexpr double kSmallestPercentage = 0.0001;
constexpr int kTristimulusValues = 3;

int spectralColumns(const TCgatsTableHeader& header, const ChartArrays& chart) {
    return chart.spectra == nullptr ? 0 : header.GetNrWaveLengths();
}

std::int64_t fieldsOf(const TCgatsTableHeader& header, const ChartArrays& chart) {
    return std::int64_t{1} + chart.colorants + (chart.lab != nullptr ? kTristimulusValues : 0) +
           (chart.xyz != nullptr ? kTristimulusValues : 0) + spectralColumns(header, chart);
}

// Whether the table is made for such rows.
int check(const TCgatsTable& table, const ChartArrays& chart) {
    if (table.GetTableError() != 0)
        return table.GetTableError();
    if (table.GetHeader() == nullptr)
        return kNoHeader;
    const TCgatsTableHeader& header = *table.GetHeader();
    if (header.GetNrSamples() != chart.sets)
        return kSampleCountMismatch;
    if (header.GetNrFields() != fieldsOf(header, chart))
        return kFieldsMissing;
    if (header.GetField(0)->GetDataType() != TCgatsField::kString)
        return kNoSampleIdentifier;
    for (int column = 1; column <= chart.colorants; ++column)
        if (header.GetField(column)->GetDataType() != TCgatsField::kFloat)
            return kTooFewCoordinates;
    return 0;
}

// The texts of one row, a buffer per field.
class RowTexts {
public:
    explicit RowTexts(int fields)
        : buffers(static_cast<std::size_t>(fields) * kFixedTextSize),
          texts(static_cast<std::size_t>(fields)) {
        for (std::size_t i = 0; i < texts.size(); ++i)
            texts[i] = &buffers[i * kFixedTextSize];
    }

    void startRow() { next = 0; }
    char* nextText() { return &buffers[next++ * kFixedTextSize]; }
    // False for a null row.
    bool addNumbers(const double* numbers, int count) {
        for (int i = 0; numbers != nullptr && i < count; ++i)
            doubleToFixedText(numbers[i], kDecimals, nextText());
        return numbers != nullptr;
    }
    const char* const* all() const { return texts.data(); }

private:
    std::vector<char> buffers;
    std::vector<const char*> texts;
    std::size_t next = 0;
};

void writeName(const ChartArrays& chart, int sample, char* out) {
    const std::string name = chart.names == nullptr           ? std::to_string(sample + 1)
                             : chart.names[sample] == nullptr ? std::string()
                                                              : std::string(chart.names[sample]);
    std::strcpy(out, name.substr(0, kLongestSampleName).c_str());
}

// False for a null row.
bool writeRow(const ChartArrays& chart, int sample, int wavelengths, RowTexts& row) {
    const double* const device = chart.device == nullptr ? nullptr : chart.device[sample];
    if (device == nullptr)
        return false;
    row.startRow();
    writeName(chart, sample, row.nextText());
    for (int i = 0; i < chart.colorants; ++i)
        deviceText(device[i], chart.full, chart.zero, row.nextText());
    return (chart.lab == nullptr || row.addNumbers(chart.lab[sample], kTristimulusValues)) &&
           (chart.xyz == nullptr || row.addNumbers(chart.xyz[sample], kTristimulusValues)) &&
           (chart.spectra == nullptr || row.addNumbers(chart.spectra[sample], wavelengths));
}

} // namespace

void deviceText(double value, double full, double zero, char* out) noexcept {
    const double percentage = (value - zero) * 100 / (full - zero);
    // Kept on purpose: the TAB in front of the zero (chartRows.valueNearZero_hasATabInFront).
    if (percentage < kSmallestPercentage)
        std::strcpy(out, "\t0.0");
    else
        doubleToFixedText(percentage, kDecimals, out);
}

int fillTable(TCgatsTable& table, const ChartArrays& chart) {
    const int error = check(table, chart);
    if (error != 0)
        return error;
    return guarded(static_cast<int>(kOtherTableError), [&] {
        const TCgatsTableHeader& header = *table.GetHeader();
        const int wavelengths = spectralColumns(header, chart);
        RowTexts row(header.GetNrFields());
        for (int sample = 0; sample < chart.sets; ++sample) {
            if (!writeRow(chart, sample, wavelengths, row))
                return static_cast<int>(kOtherTableError);
            const int rowError = table.AddRow(row.all());
            if (rowError != 0)
                return rowError;
        }
        return 0;
    });
}

} // namespace qxcms::detail
