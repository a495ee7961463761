#include "qc/comparison.h"

#include <algorithm>
#include <cmath>

#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

Side describe(const Chart& chart, ColorSource source) {
    Side side{chart.name, chart.document->GetNrTables(), chart.rows(), source, false, 0, 0, 0};
    if (source != ColorSource::spectra)
        return side;
    std::vector<int> wavelengths(static_cast<std::size_t>(chart.header().GetNrWaveLengths()));
    chart.document->GetWaveLengths(chart.table, wavelengths.data());
    side.percent = chart.data().IsSpectralPercent();
    side.bands = static_cast<int>(wavelengths.size());
    side.firstNm = wavelengths.front();
    side.lastNm = wavelengths.back();
    return side;
}

// The identifier of the measured side, else that of the reference, else the row number.
std::string patchName(const Chart& measured, const Chart& reference, int row) {
    for (const Chart* chart : {&measured, &reference}) {
        const int column = identifierColumn(*chart);
        std::string name = column >= 0 ? fieldText(*chart, row, column) : std::string();
        if (!name.empty())
            return name;
    }
    return std::to_string(row + 1);
}

// Says nothing twice: both sides may be one file.
void append(std::vector<std::string>& all, const std::vector<std::string>& more) {
    for (const std::string& text : more) {
        if (std::find(all.begin(), all.end(), text) == all.end())
            all.push_back(text);
    }
}

// Tells of the doubtful values of a chart whose compared columns hold none.
std::vector<std::string> remarksOnDoubts(const Chart& chart) {
    if (chart.doubts.empty())
        return {};
    const DoubtfulValue& first = chart.doubts.front();
    const std::size_t others = chart.doubts.size() - 1;
    std::string text = placeOf(chart, first.row, first.column) + ": " + quoted(first.text) +
                       " is no number; the column is not compared";
    if (others > 0)
        text += ", nor " + (others == 1 ? "is another one" : "are " + std::to_string(others) + " others") +
                " with such values";
    return {text};
}

std::string placeInBoth(const Chart& measured, const Chart& reference, int row) {
    return "row " + std::to_string(row + 1) + " of " + printable(measured.name) + " and " +
           printable(reference.name);
}

} // namespace

std::vector<double> Comparison::differences() const {
    std::vector<double> totals;
    for (const Patch& patch : patches)
        totals.push_back(patch.difference.total);
    return totals;
}

Comparison compare(const Chart& measured, const Chart& reference, const Conditions& conditions,
                   const ComparisonOptions& options) {
    const ColorSource measuredSource = colorSource(measured, options.measuredAs);
    const ColorSource referenceSource = colorSource(reference, options.referenceAs);
    Comparison result;
    result.measured = describe(measured, measuredSource);
    result.reference = describe(reference, referenceSource);
    requireNumbers(measured, columnsOf(measured, measuredSource));
    requireNumbers(reference, columnsOf(reference, referenceSource));
    result.pairing = pairRows(measured, reference, options.pair);
    const LabRows samples = labRows(measured, measuredSource, conditions);
    const LabRows standards = labRows(reference, referenceSource, conditions);
    for (int row = 0; row < measured.rows(); ++row) {
        const auto index = static_cast<std::size_t>(row);
        const Lab& sample = samples.rows[index];
        const Lab& standard = standards.rows[index];
        const Difference parts = difference(sample, standard, conditions.formula().number);
        if (!std::isfinite(parts.total))
            throw Refusal(Refusal::Kind::unreadable,
                          placeInBoth(measured, reference, row) +
                              ": the two Lab values are too large, or too far apart, to give a difference");
        result.patches.push_back({row + 1, patchName(measured, reference, row), sample, standard, parts});
    }
    result.statistics = statistics(result.differences());
    append(result.remarks, result.pairing.remarks);
    append(result.remarks, samples.remarks);
    append(result.remarks, standards.remarks);
    append(result.remarks, remarksOnDoubts(measured));
    append(result.remarks, remarksOnDoubts(reference));
    if (conditions.formula().remark != nullptr)
        result.remarks.emplace_back(conditions.formula().remark);
    return result;
}

} // namespace qxcms::qc
