#include "qc/chart_numbers.h"

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
