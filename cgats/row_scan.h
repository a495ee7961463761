/// @file
/// Counts the values on a line of samples. Internal.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "cgats/outline_rows.h"
#include "cgats/row_block.h"

namespace qxcms::detail {

/// The bit of a value in OutlineRow::large.
constexpr std::uint64_t bitOfValue(int value) {
    constexpr int kLast = 63;
    return std::uint64_t{1} << (value < kLast ? value : kLast);
}

/// The line that starts at `first`.
OutlineRow scanRow(std::string_view text, std::size_t first) noexcept;

/// What the processor can run.
const RowReaders& rowReaders() noexcept;

/// The same with blocks that are read by this, which is not null.
OutlineRow scanRowWith(RowBlockReader read, std::string_view text, std::size_t first) noexcept;

/// The same, a character at a time.
OutlineRow scanRowPlainly(std::string_view text, std::size_t first) noexcept;

/// A value as it stands.
struct Cell {
    Span whole; ///< with its quotes
    Span inner; ///< without them
    bool quoted;
    bool closed; ///< false for a quote that does not close on the line
};

/// The values of a line as the reader takes them.
std::vector<Cell> cellsOf(std::string_view text, Span line);

/// The values of a line on which two double quotes within quotes stand for one.
std::vector<Cell> cellsWithDoubledQuotes(std::string_view text, Span line);

/// What stands between the TABs of a line, without blanks around it; a TAB at the end of the line ends the
/// last cell.
std::vector<Cell> cellsBetweenTabs(std::string_view text, Span line);

/// The same for so many columns: empty cells too many at the end are left out, and those that are missing
/// there stand at the end of the line.
std::vector<Cell> cellsBetweenTabs(std::string_view text, Span line, std::size_t columns);

} // namespace qxcms::detail
