#include "cgats/outline_rows.h"

#include <algorithm>

#include "cgats/row_scan.h"
#include "cgats/tcgats.h"

namespace qxcms::detail {

void RowsSummary::add(const OutlineRow& row) {
    ++count;
    fewestValues = std::min(fewestValues, row.values);
    mostValues = std::max(mostValues, row.values);
    large |= row.large;
    strange |= row.strange;
    openQuote = openQuote || row.openQuote;
    special = special || row.special;
    hasNul = hasNul || row.hasNul;
    tooLong = tooLong || row.tooLong;
    hasSpace = hasSpace || row.hasSpace;
    hasSign = hasSign || row.hasSign;
}

void RowsSummary::add(const PlainRows& rows) {
    count += rows.count;
    fewestValues = std::min(fewestValues, rows.fewestValues);
    mostValues = std::max(mostValues, rows.mostValues);
    large |= rows.large;
    strange |= rows.strange;
    special = special || rows.special;
    hasNul = hasNul || rows.hasNul;
    tooLong = tooLong || rows.longest > TCgats::kMaxSampleValue;
    hasSpace = hasSpace || rows.hasSpace;
    hasSign = hasSign || rows.hasSign;
}

OutlineRows::Iterator::Iterator(std::string_view what, Span stretch) : text(what), last(stretch.last), row{} {
    moveTo(stretch.first);
}

OutlineRows::Iterator& OutlineRows::Iterator::operator++() {
    moveTo(row.line.last);
    return *this;
}

void OutlineRows::Iterator::moveTo(std::size_t position) {
    for (; position < last; ++position) {
        if (isLineEnd(text[position]))
            continue;
        row = scanRow(text, position);
        if (row.values > 0)
            return;
        position = row.line.last;
    }
    row.line = {last, last};
}

} // namespace qxcms::detail
