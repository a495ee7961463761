#include "tools/qxcms/source_excerpt.h"

#include <algorithm>
#include <vector>

#include "cgats/text_encoding.h"
#include "qc/printable_text.h"

namespace qxcms::command {

namespace {

// How far an excerpt reaches on either side of the place, in terminal columns.
constexpr std::size_t kReach = 50;
// A TAB takes at most so many.
constexpr std::size_t kTabWidth = 8;
constexpr std::string_view kGap = "...";

/// A character of the line as it is shown.
struct Cell {
    std::string text;
    std::size_t width; // in terminal columns

    bool isTab() const { return text == "\t"; }
};

bool continuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// The bytes of the first character of a text that is not empty; 1 for what is no UTF-8.
std::size_t characterLength(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
    if (length > text.size())
        return 1;
    return std::all_of(text.begin() + 1, text.begin() + static_cast<std::ptrdiff_t>(length),
                       continuesCharacter)
               ? length
               : 1;
}

Cell cellOf(std::string_view character) {
    if (character == "\t")
        return {"\t", kTabWidth};
    // A byte-order mark has no width.
    if (character == detail::kByteOrderMarks[0])
        return {"", 0};
    std::string text = qc::printable(character);
    const std::size_t width = qc::columnsOf(text);
    return {std::move(text), width};
}

std::vector<Cell> cellsOf(std::string_view text) {
    std::vector<Cell> cells;
    while (!text.empty()) {
        const std::size_t length = characterLength(text);
        cells.push_back(cellOf(text.substr(0, length)));
        text.remove_prefix(length);
    }
    return cells;
}

// How many cells from `first` on fit into the reach.
template <class Iterator>
std::ptrdiff_t countWithinReach(Iterator first, Iterator last) {
    std::size_t used = 0;
    const Iterator stop = std::find_if(first, last, [&](const Cell& cell) {
        used += cell.width;
        return used > kReach;
    });
    return stop - first;
}

std::string_view lineAt(std::string_view text, int line) {
    const std::size_t start = startOfLine(text, line);
    return text.substr(start, std::min(text.find_first_of("\r\n", start), text.size()) - start);
}

} // namespace

std::size_t startOfLine(std::string_view text, int line) {
    std::size_t start = 0;
    for (int i = 1; i < line; ++i) {
        const std::size_t end = text.find_first_of("\r\n", start);
        if (end == std::string_view::npos)
            return text.size();
        const bool isPair = text.substr(end, 2) == "\r\n";
        start = end + (isPair ? 2 : 1);
    }
    return start;
}

SourceExcerpt excerptOf(std::string_view text, int line, int column) {
    // No character takes more than four bytes; more are looked at only where combining marks take no column.
    constexpr std::size_t kInspected = 4 * kReach;
    const std::string_view whole = lineAt(text, line);
    const std::size_t place = std::min(static_cast<std::size_t>(std::max(column, 1) - 1), whole.size());
    const std::size_t first = place - std::min(place, kInspected);
    const std::vector<Cell> before = cellsOf(whole.substr(first, place - first));
    const std::vector<Cell> after = cellsOf(whole.substr(place, kInspected));
    const std::ptrdiff_t nrBefore = countWithinReach(before.rbegin(), before.rend());
    const std::ptrdiff_t nrAfter = countWithinReach(after.begin(), after.end());

    SourceExcerpt excerpt;
    if (first > 0 || nrBefore < std::ssize(before)) {
        excerpt.line = kGap;
        excerpt.caret.assign(kGap.size(), ' ');
    }
    std::for_each(before.end() - nrBefore, before.end(), [&](const Cell& cell) {
        excerpt.line += cell.text;
        excerpt.caret += cell.isTab() ? "\t" : std::string(cell.width, ' ');
    });
    std::for_each(after.begin(), after.begin() + nrAfter,
                  [&](const Cell& cell) { excerpt.line += cell.text; });
    if (place + kInspected < whole.size() || nrAfter < std::ssize(after))
        excerpt.line += kGap;
    excerpt.caret += '^';
    return excerpt;
}

} // namespace qxcms::command
