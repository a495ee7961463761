#include "qc/device_numbers.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "qc/pairing.h"

namespace qxcms::qc {

namespace {

bool isText(const Chart& chart, int column) {
    return chart.header().GetField(column)->GetDataType() == TCgatsField::kString;
}

std::optional<double> numberIn(const std::string& text) {
    const char* const last = text.data() + text.size();
    double value = 0;
    if (detail::parsePlainDecimal(text.data(), last, value) == last)
        return value;
    const char* end = text.data();
    value = detail::parseDouble(text.data(), last, &end);
    return end == last && std::isfinite(value) && !text.empty() ? std::optional<double>(value) : std::nullopt;
}

} // namespace

double numberAt(const Chart& chart, int row, std::int32_t column) {
    if (!isText(chart, column))
        return chart.data().GetValues(column)->GetDouble(row);
    return numberIn(fieldText(chart, row, column)).value_or(std::nan(""));
}

bool holdsNumbers(const Chart& chart, int column) {
    if (!isText(chart, column))
        return true;
    for (int row = 0; row < chart.rows(); ++row)
        if (!numberIn(fieldText(chart, row, column)))
            return false;
    return true;
}

std::vector<bool> rowsWith(const Chart& chart, const std::vector<std::int32_t>& columns) {
    std::vector<bool> rows;
    rows.reserve(static_cast<std::size_t>(chart.rows()));
    for (int row = 0; row < chart.rows(); ++row)
        rows.push_back(std::any_of(columns.begin(), columns.end(),
                                   [&](std::int32_t column) { return numberAt(chart, row, column) != 0; }));
    return rows;
}

} // namespace qxcms::qc
