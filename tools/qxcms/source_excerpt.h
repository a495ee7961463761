/// @file
/// A place in a text, shown.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qxcms::command {

/// The line around a place, and a mark under the place.
struct SourceExcerpt {
    std::string line;  ///< printable, TABs kept; cut with "..." where it is long
    std::string caret; ///< blanks and TABs up to the place, then "^"
};

/// @param line counted from 1; CR LF, LF and CR each end one line.
/// @param column in bytes, counted from 1; what lies behind the line end marks its end.
SourceExcerpt excerptOf(std::string_view text, int line, int column);

/// Where that line begins, in bytes from the start of the text; its end for a line too many.
std::size_t startOfLine(std::string_view text, int line);

} // namespace qxcms::command
