#include "qc/finding_words.h"

#include <cstddef>

#include "base/number_text.h"
#include "qc/count_text.h"
#include "qc/printable_text.h"

namespace qxcms::qc {

Finding warning(Finding::Kind kind, const std::string& text) {
    return {Finding::Severity::warning, kind, text};
}

std::string numberText(double value) {
    return detail::generalText(value, 6);
}

std::string counted(int count) {
    return countText(static_cast<std::size_t>(count));
}

std::string fileAnd(const Chart& chart, const std::string& text) {
    return printable(chart.name) + ": " + text;
}

} // namespace qxcms::qc
