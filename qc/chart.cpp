#include "qc/chart.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

// Taken for a value where one is missing.
constexpr const char* kEndOfData = "END_DATA";

} // namespace

std::vector<Finding> scaleFindings(const std::string& name, const std::vector<TCgatsLiberty>& liberties) {
    std::vector<Finding> findings;
    for (const TCgatsLiberty& liberty : liberties) {
        const bool isXyz = liberty.kind == TCgatsLiberty::kXyzScale;
        if (isXyz || liberty.kind == TCgatsLiberty::kSpectralScale)
            findings.push_back({Finding::Severity::note,
                                isXyz ? Finding::Kind::xyzScale : Finding::Kind::spectralScale,
                                printable(name) + ": " + printable(liberty.done)});
    }
    return findings;
}

std::string placeOf(const Chart& chart, int row) {
    return printable(chart.name) + ": row " + std::to_string(row + 1);
}

std::string placeOf(const Chart& chart, int row, int column) {
    return placeOf(chart, row) + ", column " + quoted(chart.columnName(column)) + " (number " +
           std::to_string(column + 1) + ")";
}

void requireNumbers(const Chart& chart, const std::vector<std::int32_t>& columns) {
    const auto doubt = std::find_if(chart.doubts.begin(), chart.doubts.end(), [&](const DoubtfulValue& d) {
        return std::find(columns.begin(), columns.end(), d.column) != columns.end();
    });
    if (doubt == chart.doubts.end())
        return;
    throw Refusal(
        Refusal::Kind::unreadable,
        placeOf(chart, doubt->row, doubt->column) + ": " + quoted(doubt->text) + " is no number; " +
            (doubt->text == kEndOfData ? "a value is missing before it" : "correct it or leave the row out"));
}

void requireFinite(const Chart& chart, int row, const double* values, const std::int32_t* columns,
                   int count) {
    for (int i = 0; i < count; ++i) {
        if (std::isfinite(values[i]))
            continue;
        throw Refusal(Refusal::Kind::unreadable, placeOf(chart, row, columns[i]) + ": the value is " +
                                                     detail::generalText(values[i], 6) +
                                                     ", no finite number; correct it or leave the row out");
    }
}

} // namespace qxcms::qc
