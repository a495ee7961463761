/// @file
/// Where the lines, column names and rows of a CGATS text stand, taken more widely than the reader takes
/// them. Internal.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "cgats/outline_rows.h"
#include "cgats/text_span.h"

namespace qxcms::detail {

/// A header line, or a comment on a line of its own.
struct OutlineLine {
    Span line;        ///< without its line end
    std::size_t next; ///< behind its line end
    Span keyword;     ///< empty for a comment on a line of its own
    Span value;       ///< as it stands up to a "#", without blanks at its ends
    Span comment;     ///< behind the "#"
    bool hasComment;  ///< there is a "#"
    int word = -1;    ///< the keyword's code (Keyword) where the outline depends on it
    int part = 0;     ///< the number of data sections before
};

struct OutlineTable {
    int fieldsLine = -1; ///< NUMBER_OF_FIELDS; this and the next ones are indices of lines, -1 for none
    int setsLine = -1;   ///< NUMBER_OF_SETS
    int formatLine = -1; ///< BEGIN_DATA_FORMAT
    int formatEndLine = -1;
    int dataLine = -1;               ///< BEGIN_DATA
    int endLine = -1;                ///< END_DATA
    std::vector<Span> names;         ///< of the columns, without quotes
    std::vector<Span> nameLines;     ///< the lines that hold them, without remarks
    std::vector<Span> formatRemarks; ///< comments between them, behind the "#"
    OutlineRows rows;
    RowsSummary all;
    std::size_t dataEnd = 0; ///< where the samples end
};

struct DocumentOutline {
    std::vector<OutlineLine> lines;
    std::vector<OutlineTable> tables;
    /// Lines that open an empty comment block which the reader does not find.
    std::vector<int> emptyBlocks;
    bool hasNul = false; ///< the text holds a NUL byte
};

/// A comment block that does not end is the end of it. Keywords in another letter case or in quotes count
/// where a text has no table, or fewer tables, otherwise; marks of the end in another letter case always do.
DocumentOutline outlineOf(std::string_view text);

/// Whether two words differ by at most one letter put in, left out or replaced.
bool differByOneLetter(std::string_view a, std::string_view b) noexcept;

} // namespace qxcms::detail
