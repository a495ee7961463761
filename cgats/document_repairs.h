/// @file
/// What brings a CGATS text into form, one kind of repair each. Internal.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cgats/document_outline.h"
#include "cgats/draft.h"
#include "cgats/row_scan.h"

namespace qxcms::detail {

/// What a column of a table is, once its name is in form.
struct TableColumn {
    std::string name;
    Span where; ///< the name in the text; empty for a format that was taken over
    bool isText = false;
    int wavelength = -1;     ///< in nm; -1 for any other column
    int standard = -1;       ///< which standard field (StandardField); -1 for any other column
    bool isPercent = false;  ///< its name says that it holds percent
    bool isLeftOut = false;  ///< it held the wavelength of the next one
    bool isColorant = false; ///< a channel of an n-colour space or a custom process colour
};

/// How the values of a table are told apart.
enum class RowReading { kNone, kLines, kTabs, kWrapped };

/// A table whose column names are in form.
struct TableForm {
    std::vector<TableColumn> columns;
    RowReading reading =
        RowReading::kNone;         ///< nothing before the samples are in form, and where they cannot be
    bool namesBetweenTabs = false; ///< one TAB and nothing else stands between two names
    bool leadingTab = false;       ///< of RowReading::kTabs: every row has a TAB before its first cell
};

/// A comment that has to leave its place.
struct StrayComment {
    Span where;
    std::string text;
    int part;
    std::size_t from; ///< it goes to a line behind this position
};

/// What the repairs of a text share.
struct Repairs {
    Draft& draft;
    const DocumentOutline& outline;
    std::vector<TableForm> tables;
    std::vector<StrayComment> comments;
    /// Lines, as indices, that are taken out.
    std::vector<bool> droppedLines;
    /// KEYWORD lines, as indices, whose column is named otherwise now.
    std::vector<int> uselessKeywords;
    int addedLines = 0;

    const OutlineLine& line(int index) const { return outline.lines[static_cast<std::size_t>(index)]; }
    void dropLine(int index);
    /// Takes a KEYWORD line out; its comment looks for another place.
    void dropKeyword(int index, const std::string& why);
    /// Puts a line in before another one.
    void putLine(std::size_t before, const std::string& words);
};

/// The number of rows of so many values that lie on several lines each, every one beginning on a line of its
/// own; nothing where the lines do not make rows.
std::optional<std::size_t> wrappedRows(const OutlineRows& lines, std::size_t width);

/// The values of a line that holds one row, as they stand; fewer than there are columns where it holds none.
std::vector<Cell> cellsOfRow(std::string_view text, const OutlineRow& row, const TableForm& form);

/// Calls `take` with the values of each row, as they stand, until it answers false.
template <class Rows, class Function>
void forEachRow(std::string_view text, const Rows& rows, const TableForm& form, Function&& take) {
    std::vector<Cell> cells;
    for (const OutlineRow& row : rows) {
        const std::vector<Cell> more = cellsOfRow(text, row, form);
        cells.insert(cells.end(), more.begin(), more.end());
        if (cells.size() == form.columns.size() && !take(cells))
            return;
        if (cells.size() >= form.columns.size() || form.reading != RowReading::kWrapped)
            cells.clear();
    }
}

/// The value of a header line as it is read once it is in form.
std::string valueOf(const Draft& draft, const OutlineLine& line);

/// Keywords, values and comment blocks.
void repairHeader(Repairs& repairs);
/// Column names, NUMBER_OF_FIELDS, KEYWORD lines.
void repairFormats(Repairs& repairs);
/// Samples, NUMBER_OF_SETS, END_DATA.
void repairRows(Repairs& repairs);
/// Pairs of a wavelength and a value; NUMBER_OF_FIELDS.
void repairPairs(Repairs& repairs);
void repairFieldCounts(Repairs& repairs);
/// Spectra and XYZ.
void repairScales(Repairs& repairs);
/// Takes out lines that are not needed where there are more than are kept.
void makeRoom(Repairs& repairs);
/// Comments that have lost their place.
void repairComments(Repairs& repairs);

} // namespace qxcms::detail
