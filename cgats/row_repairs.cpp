// Samples and their number.
#include <algorithm>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/decimal_text.h"
#include "cgats/document_repairs.h"
#include "cgats/row_scan.h"

namespace qxcms::detail {

namespace {

using Kind = TCgatsLiberty::Kind;

constexpr int kSampleCountMismatchCode = 13;
constexpr int kNoSamplesCode = 15;

/// What a line of samples needs to be one row.
struct RowChange {
    Kind kind;
    Span token;
    Span what;
    std::string by;
    std::string done;
};

/// The line of a row from its first cell on.
Span lineOfCells(const OutlineRow& row, const TableForm& form) {
    return {row.line.first + (form.leadingTab ? 1 : 0), row.line.last};
}

/// The samples of one table on their way into form.
class RowRepair {
public:
    RowRepair(Repairs& shared, const OutlineTable& which, TableForm& known)
        : repairs(shared), draft(shared.draft), table(which), form(known), width(known.columns.size()) {}

    void run() {
        if (table.rows.empty()) {
            refuseEmptyTable();
            return;
        }
        form.reading = takeRows();
        if (form.reading == RowReading::kNone)
            return;
        repairNumbers();
        repairSampleCount();
    }

private:
    RowReading takeRows() {
        thousands = provenThousands();
        if (rowsFit()) {
            const std::optional<OutlineRow> doubtful = table.all.hasSpace ? rowInDoubt() : std::nullopt;
            if (doubtful) {
                refuseDoubt(*doubtful);
                return RowReading::kNone;
            }
            if (!table.all.hasSpace || !fitBetterBetweenTabs())
                return RowReading::kLines;
        }
        if (takeTabs())
            return RowReading::kTabs;
        if (takeLines())
            return RowReading::kLines;
        return takeWrappedRows() ? RowReading::kWrapped : RowReading::kNone;
    }

    bool fits(const OutlineRow& row) const { return row.values == static_cast<int>(width) && !row.openQuote; }

    bool rowsFit() {
        rowCount = table.rows.size();
        if (!table.all.haveAll(static_cast<int>(width)) || table.all.openQuote)
            return false;
        return !table.all.hasSign || std::none_of(table.rows.begin(), table.rows.end(),
                                                  [&](const OutlineRow& row) { return isRemark(row); });
    }

    // As many values between blanks as between TABs, because blanks within texts make up for empty cells.
    // TABs count where they stand between the names as well, or where only they keep texts out of the
    // numbers.
    bool fitBetterBetweenTabs() const {
        return (form.namesBetweenTabs && fitBetweenTabs()) || onlyTabsGiveNumbers();
    }

    // Words between blanks and cells between TABs that both fit, and differ: where no TABs stand between the
    // names, nothing tells which are meant; and a cell of several words that crosses columns has lost one.
    std::optional<OutlineRow> rowInDoubt() const {
        const bool isTie = !form.namesBetweenTabs && fitBetweenTabs() && !onlyTabsGiveNumbers();
        if (!isTie && !form.namesBetweenTabs)
            return std::nullopt;
        const auto isDoubtful = [&](const OutlineRow& row) {
            return isTie ? holdsWords(row) : form.namesBetweenTabs && lacksCells(row);
        };
        const auto found = std::find_if(table.rows.begin(), table.rows.end(), isDoubtful);
        return found == table.rows.end() ? std::nullopt : std::optional<OutlineRow>(*found);
    }

    // With the empty one behind a TAB at the end.
    std::size_t countOfCells(const OutlineRow& row) const {
        const bool endsWithTab = draft.text[row.line.last - 1] == '\t';
        return cellsBetweenTabs(draft.text, row.line).size() + (endsWithTab ? 1U : 0U);
    }

    // A cell between TABs of several words.
    bool holdsWords(const OutlineRow& row) const {
        const std::vector<Cell> cells = cellsBetweenTabs(draft.text, row.line, width);
        return row.hasSpace && std::any_of(cells.begin(), cells.end(), [&](const Cell& cell) {
                   return !cell.quoted && cell.whole.of(draft.text).find(' ') != std::string_view::npos;
               });
    }

    // Cells between TABs, but fewer than there are columns, one of them of several words that are no numbers.
    bool lacksCells(const OutlineRow& row) const {
        const std::vector<Cell> cells = cellsBetweenTabs(draft.text, row.line);
        return row.hasSpace && cells.size() > 1 && countOfCells(row) < width &&
               std::any_of(cells.begin(), cells.end(), [&](const Cell& cell) {
                   const std::vector<Cell> words = cellsOf(draft.text, cell.whole);
                   return !cell.quoted && words.size() > 1 &&
                          std::any_of(words.begin(), words.end(), [&](const Cell& word) {
                              return !isDecimalNumber(word.inner.of(draft.text));
                          });
               });
    }

    // Each row with exactly a TAB between two columns, and spaces within a cell of one.
    bool fitBetweenTabs() const {
        const auto isTabbed = [&](const OutlineRow& row) {
            const std::vector<Cell> cells = cellsBetweenTabs(draft.text, row.line, width);
            return countOfCells(row) >= width && cells.size() == width && areNumbers(cells);
        };
        return std::all_of(table.rows.begin(), table.rows.end(), isTabbed) &&
               std::any_of(table.rows.begin(), table.rows.end(),
                           [&](const OutlineRow& row) { return holdsWords(row); });
    }

    // The values that are numbers, as bits of OutlineRow::strange.
    std::uint64_t numberBits() const {
        std::uint64_t numbers = 0;
        for (std::size_t i = 0; i < width; ++i)
            numbers |= isTextColumn(i) ? 0 : bitOfValue(static_cast<int>(i));
        return numbers;
    }

    bool onlyTabsGiveNumbers() const {
        const std::uint64_t numbers = numberBits();
        if ((table.all.strange & numbers) == 0)
            return false;
        const auto hasText = [&](const OutlineRow& row) {
            return (row.strange & numbers) != 0 && !areNumbers(cellsOf(draft.text, row.line));
        };
        const auto areTabbed = [&](const OutlineRow& row) {
            const std::vector<Cell> cells = cellsBetweenTabs(draft.text, row.line, width);
            return cells.size() == width && areNumbers(cells);
        };
        return std::any_of(table.rows.begin(), table.rows.end(), hasText) &&
               std::all_of(table.rows.begin(), table.rows.end(), areTabbed);
    }

    // Empty cells count as numbers that are not there.
    bool areNumbers(const std::vector<Cell>& cells) const {
        for (std::size_t i = 0; i < width; ++i) {
            const std::string_view text = cells[i].inner.of(draft.text);
            if (!isTextColumn(i) && !text.empty() && !isDecimalNumber(text) && withoutThousands(text).empty())
                return false;
        }
        return true;
    }

    // A comment among the samples begins with a number sign, and does not fit as a row or has a blank behind
    // the sign.
    bool isRemark(const OutlineRow& row) const {
        if (!beginsWithNumberSign(row))
            return false;
        const Span words = withoutBlanks(draft.text, row.line);
        return !fits(row) || words.length() == 1 || isBlank(draft.text[words.first + 1]);
    }

    bool rowsBeginWithNumberSigns() const {
        return std::any_of(table.rows.begin(), table.rows.end(), [&](const OutlineRow& row) {
            return fits(row) && beginsWithNumberSign(row) && !isRemark(row);
        });
    }

    bool isTextColumn(std::size_t column) const { return form.columns[column].isText; }

    // Rows whose cells stand between TABs.

    bool takeTabs() {
        form.leadingTab = haveLeadingTabs();
        numberSignsBegin = tabRowsBeginWithNumberSigns();
        std::vector<RowChange> changes;
        std::vector<Span> remarks;
        std::size_t count = 0;
        for (const OutlineRow& row : table.rows) {
            if (takeTabRemark(row, remarks))
                continue;
            if (!takeTabRow(row, changes, remarks))
                return false;
            ++count;
        }
        if (count == 0)
            return false;
        rowCount = count;
        apply(changes);
        for (const Span& remark : remarks)
            moveRemark(remark);
        return true;
    }

    bool beginsWithNumberSign(const OutlineRow& row) const {
        return row.hasSign && draft.text[withoutBlanks(draft.text, row.line).first] == '#';
    }

    // One cell more than there are columns, in every row, and nothing in the first one.
    bool haveLeadingTabs() const {
        return std::all_of(table.rows.begin(), table.rows.end(), [&](const OutlineRow& row) {
            const bool hasTab =
                draft.text[row.line.first] == '\t' && cellsBetweenTabs(draft.text, row.line).size() > width;
            return hasTab || beginsWithNumberSign(row);
        });
    }

    bool tabRowsBeginWithNumberSigns() const {
        return std::any_of(table.rows.begin(), table.rows.end(), [&](const OutlineRow& row) {
            return beginsWithNumberSign(row) && !isTabRemark(row);
        });
    }

    Span cellsLine(const OutlineRow& row) const { return lineOfCells(row, form); }

    // A line of one cell, or of words behind a number sign and a blank that are no numbers where numbers
    // belong.
    bool isTabRemark(const OutlineRow& row) const {
        if (!beginsWithNumberSign(row))
            return false;
        const Span words = withoutBlanks(draft.text, row.line);
        if (cellsBetweenTabs(draft.text, words).size() == 1)
            return true;
        const std::vector<Cell> cells = cellsBetweenTabs(draft.text, cellsLine(row), width);
        return isBlank(draft.text[words.first + 1]) && (cells.size() != width || !areNumbers(cells));
    }

    bool takeTabRemark(const OutlineRow& row, std::vector<Span>& remarks) const {
        if (!row.special || numberSignsBegin || !isTabRemark(row))
            return false;
        remarks.push_back({withoutBlanks(draft.text, row.line).first, row.line.last});
        return true;
    }

    bool takeTabRow(const OutlineRow& row, std::vector<RowChange>& changes,
                    std::vector<Span>& remarks) const {
        Span line = cellsLine(row);
        if (row.special)
            line.last = takeTrailingTabRemark(line, remarks);
        const std::vector<Cell> cells = cellsBetweenTabs(draft.text, line, width);
        if (cells.size() != width)
            return false;
        // A row that is cut off may lack texts, and the value whose TAB is there.
        const bool endsWithTab = draft.text[line.last - 1] == '\t';
        const std::size_t present = cellsBetweenTabs(draft.text, line).size() + (endsWithTab ? 1U : 0U);
        for (std::size_t i = 0; i < width; ++i) {
            if (i >= present && !isTextColumn(i))
                return false;
            if (i >= present)
                changes.push_back({Kind::kEmptyCell, cells[i].whole, cells[i].whole, "\t",
                                   "a TAB put in for a cell that is missing at the end of the line"});
            if (!takeCell(cells[i], isTextColumn(i), changes))
                return false;
        }
        return true;
    }

    // A comment behind the last cell, or behind the number in it. @return the end of what is before.
    std::size_t takeTrailingTabRemark(Span line, std::vector<Span>& remarks) const {
        const std::vector<Cell> cells = cellsBetweenTabs(draft.text, line);
        std::size_t first = line.last;
        if (cells.size() == width + 1 && !cells[width].whole.empty() &&
            draft.text[cells[width].whole.first] == '#') {
            first = cells[width].whole.first;
        } else if (cells.size() == width && !isTextColumn(width - 1)) {
            const Span whole = cells.back().whole;
            const std::size_t sign = findIn(draft.text, whole, "#");
            const Span number = withoutBlanks(draft.text, {whole.first, sign});
            if (number.last < sign && isDecimalNumber(number.of(draft.text)))
                first = sign;
        }
        if (first < line.last)
            remarks.push_back({first, line.last});
        return first;
    }

    bool takeCell(const Cell& cell, bool isText, std::vector<RowChange>& changes) const {
        const std::string_view inner = cell.inner.of(draft.text);
        if (cell.whole.empty()) {
            changes.push_back({Kind::kEmptyCell, cell.whole, cell.whole, "\"\"",
                               "a pair of quotes put between two TABs that have nothing between them"});
        } else if (inner.find('"') != std::string_view::npos) {
            changes.push_back(quotesWithin(cell));
        } else if (cell.quoted && !cell.closed) {
            changes.push_back(
                {Kind::kQuoteClosed,
                 cell.whole,
                 {cell.whole.last, cell.whole.last},
                 "\"",
                 "the quote that opens " + draft.quoted(cell.inner) + " closed before the TAB"});
        } else if (!isText && isNoPlainNumber(inner)) {
            const bool hasBlank = inner.find(' ') != std::string_view::npos;
            return takeNumber(cell, changes) || cell.quoted || !hasBlank;
        } else if (!cell.quoted && inner.find(' ') != std::string_view::npos) {
            changes.push_back({Kind::kCellQuoted, cell.whole, cell.whole, '"' + std::string(inner) + '"',
                               "quotes put around " + draft.quoted(cell.whole) + ", which holds blanks"});
        }
        return true;
    }

    // Where words follow the closing quote, both quotes are within.
    RowChange quotesWithin(const Cell& cell) const {
        const std::string_view inner = (cell.closed ? cell.inner : cell.whole).of(draft.text);
        std::string proper;
        for (std::size_t i = 0; i < inner.size(); ++i) {
            const bool isDoubled = inner[i] == '"' && i + 1 < inner.size() && inner[i + 1] == '"';
            proper += inner[i] == '"' ? '\'' : inner[i];
            i += isDoubled ? 1 : 0;
        }
        return {Kind::kDoubledQuotes, cell.whole, cell.whole, '"' + proper + '"',
                "the double quotes within " + std::string(cell.whole.of(draft.text)) + " made apostrophes"};
    }

    // Rows that are mended each on its own.

    bool takeLines() {
        std::vector<RowChange> changes;
        std::vector<Span> remarks;
        numberSignsBegin = rowsBeginWithNumberSigns();
        std::size_t count = 0;
        for (const OutlineRow& row : table.rows) {
            if (takeRemark(row, remarks))
                continue;
            if (fits(row)) {
                ++count;
                continue;
            }
            if (!takeTrailingRemark(row, remarks) && !takeDoubledQuotes(row, changes) &&
                !takeOpenQuote(row, changes))
                return false;
            ++count;
        }
        rowCount = count;
        if (count == 0)
            return false;
        apply(changes);
        for (const Span& remark : remarks)
            moveRemark(remark);
        return true;
    }

    bool takeRemark(const OutlineRow& row, std::vector<Span>& remarks) const {
        if (!isRemark(row) || numberSignsBegin)
            return false;
        const Span words = withoutBlanks(draft.text, row.line);
        remarks.push_back({words.first, row.line.last});
        return true;
    }

    bool takeTrailingRemark(const OutlineRow& row, std::vector<Span>& remarks) const {
        const std::vector<Cell> cells = cellsOf(draft.text, row.line);
        if (cells.size() <= width || cells[width].quoted || draft.text[cells[width].whole.first] != '#')
            return false;
        remarks.push_back({cells[width].whole.first, row.line.last});
        return true;
    }

    bool takeDoubledQuotes(const OutlineRow& row, std::vector<RowChange>& changes) const {
        const std::vector<Cell> cells = cellsWithDoubledQuotes(draft.text, row.line);
        if (!row.special || cells.size() != width || !cells.back().closed)
            return false;
        for (const Cell& cell : cells)
            if (cell.quoted && cell.inner.of(draft.text).find('"') != std::string_view::npos)
                changes.push_back(quotesWithin(cell));
        return true;
    }

    bool takeOpenQuote(const OutlineRow& row, std::vector<RowChange>& changes) const {
        if (!row.openQuote || row.values != static_cast<int>(width))
            return false;
        const Span words = withoutBlanks(draft.text, row.line);
        const Span token = cellsOf(draft.text, row.line).back().whole;
        changes.push_back({Kind::kQuoteClosed,
                           token,
                           {words.last, words.last},
                           "\"",
                           "the quote that never closes closed at the line end"});
        return true;
    }

    void moveRemark(Span remark) {
        const Span words{remark.first + 1, remark.last};
        draft.edits.remove(remark);
        const int part = repairs.line(table.dataLine).part + 1;
        if (!withoutBlanks(draft.text, words).empty())
            repairs.comments.push_back({words, std::string(words.of(draft.text)), part, table.dataEnd});
        else
            draft.took(Kind::kCommentDropped, remark, "an empty comment among the samples left out");
    }

    // Rows over several lines: every one of them begins on a line of its own.

    // Another number than the declared one would allow another reading.
    bool takeWrappedRows() {
        const std::optional<std::size_t> rows = wrappedRows(table.rows, width);
        const bool hasRemarks = std::any_of(table.rows.begin(), table.rows.end(),
                                            [&](const OutlineRow& line) { return isRemark(line); });
        if (rows && !hasRemarks && declaredRows() == rows) {
            rowCount = *rows;
            return true;
        }
        refuse();
        return false;
    }

    std::optional<std::size_t> declaredRows() const {
        if (table.setsLine < 0)
            return std::nullopt;
        const std::string declared = valueOf(draft, repairs.line(table.setsLine));
        return static_cast<std::size_t>(std::max(textToInt(declared.c_str()), 0));
    }

    void refuse() {
        const auto row = std::find_if(table.rows.begin(), table.rows.end(),
                                      [&](const OutlineRow& line) { return !fits(line); });
        if (row == table.rows.end()) {
            refuseEmptyTable();
            return;
        }
        const std::string columns = std::to_string(width);
        draft.refuse(kSampleCountMismatchCode, withoutBlanks(draft.text, row->line),
                     columns + " values, one for each column; the line has " + std::to_string(row->values) +
                         (row->openQuote ? ", the last with a quote that does not close" : "") +
                         (isSeparatedOtherwise(*row) ? "; commas and semicolons separate none" : ""));
    }

    void refuseDoubt(const OutlineRow& row) {
        draft.refuse(
            kSampleCountMismatchCode, withoutBlanks(draft.text, row.line),
            "double quotes around texts of several words: the words and TABs of the line allow another "
            "reading than its " +
                std::to_string(width) + " words");
    }

    bool isSeparatedOtherwise(const OutlineRow& row) const {
        return row.values == 1 && row.line.of(draft.text).find_first_of(",;") != std::string_view::npos;
    }

    void refuseEmptyTable() {
        draft.refuse(kNoSamplesCode, repairs.line(table.dataLine).keyword,
                     "samples between BEGIN_DATA and END_DATA");
    }

    // Numbers that the reader would not understand as a whole.

    // The comma or point that numbers such as "1,234.5" prove to set thousands apart.
    char provenThousands() const {
        if (!table.all.special || haveOnlyPlainNumbers())
            return '\0';
        const std::uint64_t numbers = numberBits();
        for (const OutlineRow& row : table.rows) {
            if (!row.special || (fits(row) && (row.strange & numbers) == 0))
                continue;
            std::vector<Cell> cells = cellsOf(draft.text, row.line);
            if (cells.size() != width)
                cells = cellsBetweenTabs(draft.text, row.line, width);
            for (std::size_t i = 0; i < std::min(cells.size(), width); ++i) {
                const char mark = thousandsMark(cells[i].inner.of(draft.text));
                if (!isTextColumn(i) && (mark == ',' || mark == '.'))
                    return mark;
            }
        }
        return '\0';
    }

    bool haveOnlyPlainNumbers() const {
        return table.all.haveAll(static_cast<int>(width)) && (table.all.strange & numberBits()) == 0;
    }

    void repairNumbers() {
        if (!table.all.special || form.reading != RowReading::kLines || haveOnlyPlainNumbers())
            return;
        std::vector<RowChange> changes;
        const std::uint64_t numbers = numberBits();
        for (const OutlineRow& row : table.rows) {
            const bool isPlain = !row.special || (row.strange & numbers) == 0;
            if ((isPlain && thousands != '.') || !fits(row))
                continue;
            const std::vector<Cell> cells = cellsOf(draft.text, row.line);
            for (std::size_t i = 0; i < width; ++i)
                if (!isTextColumn(i))
                    takeNumber(cells[i], changes);
        }
        apply(changes);
    }

    bool hasProvenThousands(std::string_view number) const {
        return thousands != '\0' && number.find(thousands) != std::string_view::npos;
    }

    bool isNoPlainNumber(std::string_view text) const {
        return text.find_first_of(", ") != std::string_view::npos || hasProvenThousands(text);
    }

    // @return whether there is a plain way to write the number.
    bool takeNumber(const Cell& cell, std::vector<RowChange>& changes) const {
        const std::string_view inner = cell.inner.of(draft.text);
        if (!isNoPlainNumber(inner))
            return false;
        std::string plain;
        if (hasProvenThousands(inner) || !isDecimalNumber(inner)) {
            plain = withoutThousands(inner, thousands);
        } else if (cell.quoted) {
            plain = std::string(inner);
            std::replace(plain.begin(), plain.end(), ',', '.');
        }
        if (plain.empty() && hasProvenThousands(inner) && isDecimalNumber(inner))
            draft.refuse(kSampleCountMismatchCode, cell.whole,
                         std::string("thousands behind the \"") + thousands +
                             "\", as in other numbers of the table, and no decimals");
        if (plain.empty())
            return false;
        changes.push_back({Kind::kNumberSpelling, cell.whole, cell.whole, plain,
                           "the number " + std::string(inner) + " written " + plain});
        return true;
    }

    void apply(const std::vector<RowChange>& changes) {
        for (const RowChange& change : changes) {
            draft.edits.replace(change.what, change.by);
            draft.took(change.kind, change.token, change.done);
        }
    }

    // Their number.

    void repairSampleCount() {
        const std::string found = std::to_string(rowCount);
        const std::string words = std::string(kKeywords[kNumberOfSets]) + ' ' + found;
        const OutlineLine& data = repairs.line(table.dataLine);
        if (table.setsLine < 0) {
            repairs.putLine(data.line.first, words);
            draft.took(Kind::kSampleCount, {data.line.first, data.line.first},
                       "the line " + words + " put in, with the number of samples found");
            repairEnd();
            return;
        }
        const OutlineLine& sets = repairs.line(table.setsLine);
        if (declaredRows() == rowCount)
            return;
        const std::string declared = valueOf(draft, sets);
        if (sets.value.empty())
            draft.edits.put(sets.keyword.last, ' ' + found);
        else
            draft.edits.replace(sets.value, found);
        draft.took(Kind::kSampleCount, sets.value.empty() ? sets.keyword : sets.value,
                   "NUMBER_OF_SETS corrected from " + (declared.empty() ? "nothing" : declared) + " to " +
                       found + ", the number of samples found");
        repairEnd();
    }

    void repairEnd() {
        if (table.endLine >= 0)
            return;
        const std::size_t at = table.dataEnd;
        const bool onNewLine = at > 0 && isLineEnd(draft.text[at - 1]);
        repairs.putLine(at, (onNewLine ? "" : std::string(draft.lineEnd)) + kKeywords[kEndData]);
        draft.took(Kind::kEndOfData, {at, at}, "the line END_DATA put in behind the last sample");
    }

    Repairs& repairs;
    Draft& draft;
    const OutlineTable& table;
    TableForm& form;
    const std::size_t width;
    std::size_t rowCount = 0;
    char thousands = '\0';         // what sets them apart where that is certain
    bool numberSignsBegin = false; // a row's first value, so that nothing can be told for a comment
};

} // namespace

std::optional<std::size_t> wrappedRows(const OutlineRows& lines, std::size_t width) {
    std::size_t rows = 0;
    std::size_t values = 0;
    for (const OutlineRow& line : lines) {
        values += static_cast<std::size_t>(line.values);
        if (line.openQuote || values > width)
            return std::nullopt;
        if (values == width) {
            ++rows;
            values = 0;
        }
    }
    if (values != 0)
        return std::nullopt;
    return rows;
}

std::vector<Cell> cellsOfRow(std::string_view text, const OutlineRow& row, const TableForm& form) {
    const std::size_t width = form.columns.size();
    std::vector<Cell> cells = form.reading == RowReading::kTabs
                                  ? cellsBetweenTabs(text, lineOfCells(row, form), width)
                                  : cellsOf(text, row.line);
    if (form.reading == RowReading::kLines && cells.size() != width && row.special) {
        std::vector<Cell> others = cellsWithDoubledQuotes(text, row.line);
        if (others.size() == width)
            return others;
    }
    if (form.reading != RowReading::kWrapped && cells.size() > width)
        cells.resize(width);
    return cells;
}

void repairRows(Repairs& repairs) {
    for (std::size_t i = 0; i < repairs.outline.tables.size(); ++i) {
        const OutlineTable& table = repairs.outline.tables[i];
        if (!repairs.tables[i].columns.empty())
            RowRepair(repairs, table, repairs.tables[i]).run();
    }
}

} // namespace qxcms::detail
