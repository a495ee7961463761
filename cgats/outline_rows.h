/// @file
/// The lines of samples of a CGATS text. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string_view>

#include "cgats/row_block.h"
#include "cgats/text_span.h"

namespace qxcms::detail {

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
    bool hasSign : 1;      ///< has number signs outside of quotes
};

/// What the rows of a table have in common.
struct RowsSummary {
    std::size_t count = 0;
    int fewestValues = std::numeric_limits<int>::max();
    int mostValues = 0;
    std::uint64_t large = 0; ///< the bits of all rows
    std::uint64_t strange = 0;
    bool openQuote = false; ///< these are true where they are so of any row
    bool special = false;
    bool hasNul = false;
    bool tooLong = false;
    bool hasSpace = false;
    bool hasSign = false;

    void add(const OutlineRow& row);
    void add(const PlainRows& rows);
    bool haveAll(int values) const { return fewestValues == values && mostValues == values; }
};

/// The lines with values between two places of a text. They are not kept, but read again whenever they are
/// asked for: most texts are gone through once or twice, and a row would take as much memory as its
/// characters.
class OutlineRows {
public:
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = OutlineRow;
        using difference_type = std::ptrdiff_t;
        using pointer = const OutlineRow*;
        using reference = const OutlineRow&;

        const OutlineRow& operator*() const { return row; }
        const OutlineRow* operator->() const { return &row; }
        Iterator& operator++();
        bool operator==(const Iterator& other) const { return row.line.first == other.row.line.first; }

    private:
        friend class OutlineRows;
        Iterator(std::string_view what, Span stretch);
        void moveTo(std::size_t position);

        std::string_view text;
        std::size_t last;
        OutlineRow row;
    };

    OutlineRows() = default;
    /// @param what outlives this.
    OutlineRows(std::string_view what, Span where, std::size_t number)
        : text(what), stretch(where), count(number) {}

    Iterator begin() const { return Iterator(text, stretch); }
    Iterator end() const { return Iterator(text, {stretch.last, stretch.last}); }
    std::size_t size() const { return count; }
    bool empty() const { return count == 0; }
    OutlineRow front() const { return *begin(); }

private:
    std::string_view text;
    Span stretch{0, 0};
    std::size_t count = 0;
};

} // namespace qxcms::detail
