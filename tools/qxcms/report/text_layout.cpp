#include "tools/qxcms/report/text_layout.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "qc/printable_text.h"

namespace qxcms::command {

namespace {

constexpr double kLargestFixed = 1e5;

bool isZero(const std::string& text) {
    return text.find_first_not_of("-0.") == std::string::npos;
}

} // namespace

std::string numberText(double value, int decimals) {
    if (std::fabs(value) >= kLargestFixed)
        return detail::generalText(value, 3);
    std::string text = detail::fixedText(value, decimals);
    if (text.front() == '-' && isZero(text))
        text.erase(0, 1);
    return text;
}

std::string signedText(double value, int decimals) {
    const std::string text = numberText(value, decimals);
    return value > 0.0 && !isZero(text) ? '+' + text : text;
}

std::string rightAligned(std::string_view text, std::size_t width) {
    return std::string(width - text.size(), ' ').append(text);
}

std::string paragraph(std::string_view label, std::size_t indent, std::string_view text) {
    std::string out = qc::fitted(label, indent);
    std::size_t column = indent;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        const std::string_view word = text.substr(0, end);
        const std::size_t width = qc::columnsOf(word);
        if (column > indent && column + 1 + width > kPageWidth) {
            out += '\n' + std::string(indent, ' ');
            column = indent;
        } else if (column > indent) {
            out += ' ';
            ++column;
        }
        out += word;
        column += width;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    out.erase(out.find_last_not_of(' ') + 1);
    return out + '\n';
}

} // namespace qxcms::command
