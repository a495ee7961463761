/// @file
/// Where the lines, column names and rows of a CGATS text stand, taken more widely than the reader takes
/// them. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

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

/// A line of samples.
struct OutlineRow {
    Span line;
    /// Bit n stands for value n, the last one for all behind: the value may be 10 or more, or is not made of
    /// digits, points and minus signs alone. A number below 0 may have its bit set too.
    std::uint64_t large;
    std::uint64_t strange; ///< likewise: not made of digits, points and minus signs alone
    int values;            ///< as the reader counts them
    bool openQuote : 1;    ///< its last value begins with a quote that does not close on the line
    bool special : 1;      ///< has quotes, commas or number signs
    bool hasNul : 1;       ///< holds a NUL byte
    bool tooLong : 1;      ///< has a value of more characters than the reader takes
    bool hasSpace : 1;     ///< has spaces, which are blanks other than TABs, outside of quotes
};

/// What the rows of a table have in common.
struct RowsSummary {
    int fewestValues = std::numeric_limits<int>::max();
    int mostValues = 0;
    std::uint64_t large = 0; ///< the bits of all rows
    std::uint64_t strange = 0;
    bool openQuote = false; ///< these are true where they are so of any row
    bool special = false;
    bool hasNul = false;
    bool tooLong = false;
    bool hasSpace = false;

    void add(const OutlineRow& row);
    bool haveAll(int values) const { return fewestValues == values && mostValues == values; }
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
    std::vector<OutlineRow> rows;
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
