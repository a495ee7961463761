#include "qc/rows_found.h"

#include "qc/finding_words.h"

namespace qxcms::qc {

void RowsFound::add(int row, double excess, double shown) {
    if (count == 0)
        first = row;
    if (count == 0 || excess > worstExcess) {
        worstExcess = excess;
        worst = row;
        worstShown = shown;
    }
    ++count;
}

std::string RowsFound::words(const Chart& chart) const {
    const std::string text = "row " + std::to_string(first + 1);
    const std::string all = " of " + counted(chart.rows());
    if (count == 1)
        return chart.rows() == 1 ? text : text + " alone" + all;
    return text + " and " + counted(count - 1) + " more" + all + ", most in row " + std::to_string(worst + 1);
}

std::string RowsFound::told(const Chart& chart, const std::string& symbol) const {
    return fileAnd(chart, words(chart) + ": " + symbol + numberText(worstShown));
}

} // namespace qxcms::qc
