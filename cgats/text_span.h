/// @file
/// A part of a text. Internal.
#pragma once

#include <cstddef>
#include <string_view>

namespace qxcms::detail {

/// Positions in a text: the first character and the one behind the last.
struct Span {
    std::size_t first = 0;
    std::size_t last = 0;

    bool empty() const { return first == last; }
    std::size_t length() const { return last - first; }
    std::string_view of(std::string_view text) const { return text.substr(first, last - first); }
};

inline bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

inline bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

inline bool isSeparator(char c) {
    return isBlank(c) || isLineEnd(c);
}

/// The first of some characters in a span; the end of the span when there is none.
inline std::size_t findIn(std::string_view text, Span where, std::string_view characters) {
    const std::size_t found = where.of(text).find_first_of(characters);
    return found == std::string_view::npos ? where.last : where.first + found;
}

/// The span without the blanks at its ends.
inline Span withoutBlanks(std::string_view text, Span span) {
    while (!span.empty() && isBlank(text[span.first]))
        ++span.first;
    while (!span.empty() && isBlank(text[span.last - 1]))
        --span.last;
    return span;
}

} // namespace qxcms::detail
