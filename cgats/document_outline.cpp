#include "cgats/document_outline.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/row_scan.h"
#include "platform/utility.h"

namespace qxcms::detail {

namespace {

constexpr int kStructure[] = {kNumberOfFields, kBeginDataFormat, kEndDataFormat, kProcessColorId, kSpotId,
                              kNumberOfSets,   kBeginData,       kEndData,       kKeyword};
// What begins behind the samples where END_DATA is missing.
constexpr int kOpening[] = {kNumberOfFields, kBeginDataFormat, kNumberOfSets, kBeginData, kKeyword};

constexpr std::size_t kLongestWord = 32;

// Where no rows can be taken at once so many times, as they have quotes, it is not tried any more.
constexpr int kMostTimesInVain = 4;

bool equalsIgnoringCase(std::string_view a, const char* b) {
    return std::string_view(b).size() == a.size() && strncmp_ci(a.data(), b, static_cast<int>(a.size())) == 0;
}

std::string_view withoutQuotes(std::string_view word) {
    const bool isQuoted = word.size() > 2 && word.front() == '"' && word.back() == '"';
    return isQuoted ? word.substr(1, word.size() - 2) : word;
}

std::string underscored(std::string_view words) {
    std::string word(words);
    std::replace(word.begin(), word.end(), ' ', '_');
    std::replace(word.begin(), word.end(), '-', '_');
    return word;
}

int wordOf(std::string_view keyword, bool ignoreCase) {
    if (keyword.size() > kLongestWord)
        return -1;
    for (const int code : kStructure)
        if (keyword == kKeywords[code] || (ignoreCase && equalsIgnoringCase(keyword, kKeywords[code])))
            return code;
    return -1;
}

bool isNearly(std::string_view word, int code) {
    return differByOneLetter(word, kKeywords[code]);
}

bool opensBlock(std::string_view keyword) {
    return keyword.size() >= kBlockStartLength &&
           strncmp_ci(keyword.data(), kBlockStart, kBlockStartLength) == 0;
}

class Outliner {
public:
    Outliner(std::string_view what, bool anySpelling) : text(what), takesAnySpelling(anySpelling) {}

    DocumentOutline run() {
        while (at < text.size())
            takeLine();
        outline.hasNul = outline.hasNul || hasNul({behindRows, text.size()});
        return std::move(outline);
    }

    /// A table in another letter case, which opens a comment block otherwise, was passed over.
    bool sawOtherSpelling() const { return passedTable; }

private:
    std::size_t lineEndFrom(std::size_t position) const {
        return std::min(text.find_first_of("\r\n", position), text.size());
    }

    std::size_t behindLineEnd(std::size_t end) const {
        if (end < text.size() && text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n')
            return end + 2;
        return std::min(end + 1, text.size());
    }

    OutlineLine lineAt(std::size_t first) const {
        OutlineLine line{};
        line.line = {first, lineEndFrom(first)};
        line.next = behindLineEnd(line.line.last);
        const std::size_t position = withoutBlanks(text, line.line).first;
        line.keyword = {position, findIn(text, {position, line.line.last}, " \t#")};
        const std::size_t hash = findIn(text, {line.keyword.last, line.line.last}, "#");
        line.hasComment = hash < line.line.last;
        line.value = withoutBlanks(text, {line.keyword.last, hash});
        line.comment = {line.hasComment ? hash + 1 : hash, line.line.last};
        if (takesAnySpelling)
            takeKeywordInWords(line);
        const std::string_view word = line.keyword.of(text);
        line.word = takesAnySpelling ? wordOf(underscored(withoutQuotes(word)), true) : wordOf(word, false);
        if (line.word < 0 && first == endOfNames)
            line.word = kEndDataFormat;
        line.part = part;
        return line;
    }

    // "BEGIN DATA" and "NUMBER OF SETS 24": the longest keyword that the line begins with.
    void takeKeywordInWords(OutlineLine& line) const {
        for (std::size_t last = line.keyword.last; last <= line.line.last;) {
            const std::string_view words = Span{line.keyword.first, last}.of(text);
            if (words.size() > kLongestWord)
                return;
            if (wordOf(underscored(withoutQuotes(words)), true) >= 0) {
                line.keyword.last = last;
                const std::size_t hash = findIn(text, {last, line.line.last}, "#");
                line.value = withoutBlanks(text, {last, hash});
            }
            if (last == line.line.last || text[last] == '#')
                return;
            last = findIn(text, {last + 1, line.line.last}, " \t#");
        }
    }

    void takeLine() {
        const OutlineLine line = lineAt(at);
        at = line.next;
        if (withoutBlanks(text, line.line).empty())
            return;
        const int index = add(line);
        switch (line.word) {
        case kNumberOfFields:
            table.fieldsLine = index;
            break;
        case kNumberOfSets:
            table.setsLine = index;
            break;
        case kBeginDataFormat:
            table.formatLine = index;
            takeFormat(line);
            break;
        case kEndDataFormat:
            table.formatEndLine = index;
            break;
        case kBeginData:
            table.dataLine = index;
            takeRows(line);
            break;
        default:
            if (opensBlock(line.keyword.of(text)))
                takeBlock(index);
        }
    }

    int add(const OutlineLine& line) {
        outline.lines.push_back(line);
        return static_cast<int>(outline.lines.size()) - 1;
    }

    // Up to the line of END_DATA_FORMAT. Where that is missing, the samples, their number or the end of the
    // text end the names.
    void takeFormat(const OutlineLine& opening) {
        table.names.clear();
        table.nameLines.clear();
        std::size_t first = opening.value.empty() ? opening.next : opening.value.first;
        for (; first < text.size(); first = at) {
            const Span line{first, lineEndFrom(first)};
            const Span names{line.first, findIn(text, line, "#")};
            at = behindLineEnd(line.last);
            if (names.last < line.last)
                table.formatRemarks.push_back({names.last + 1, line.last});
            const std::size_t end = takeNames(names);
            if (end < line.last) {
                at = end;
                endOfNames = isNearly(withoutBlanks(text, names).of(text), kEndDataFormat) ? end : endOfNames;
                if (names.last < line.last)
                    table.formatRemarks.pop_back();
                return;
            }
        }
    }

    // @return where the word that ends the names begins; the largest position when there is none.
    std::size_t takeNames(Span names) {
        const Span trimmed = withoutBlanks(text, names);
        for (std::size_t first = trimmed.first; first < trimmed.last;) {
            const std::size_t last = findIn(text, {first, trimmed.last}, " \t");
            const Span token{first, last};
            const bool isAlone = token.first == trimmed.first && token.last == trimmed.last;
            const bool beginsLine = token.first == trimmed.first;
            const int word =
                takesAnySpelling && beginsLine ? lineAt(first).word : wordOf(token.of(text), true);
            if (word == kEndDataFormat || (isAlone && isNearly(token.of(text), kEndDataFormat)) ||
                (beginsLine && (word == kBeginData || word == kNumberOfSets))) {
                if (first > trimmed.first)
                    table.nameLines.push_back(withoutBlanks(text, {trimmed.first, first}));
                return first;
            }
            addName(token);
            first = last;
            while (first < trimmed.last && isBlank(text[first]))
                ++first;
        }
        if (!trimmed.empty())
            table.nameLines.push_back(trimmed);
        return text.size() + 1;
    }

    void addName(Span token) {
        while (!token.empty() && text[token.first] == '"')
            ++token.first;
        if (!token.empty() && text[token.last - 1] == '"')
            --token.last;
        if (!token.empty())
            table.names.push_back(token);
    }

    bool hasNul(Span stretch) const { return stretch.of(text).find('\0') != std::string_view::npos; }

    void takeRows(const OutlineLine& opening) {
        const std::size_t firstRow = opening.value.empty() ? opening.next : opening.value.first;
        outline.hasNul = outline.hasNul || hasNul({behindRows, firstRow});
        std::size_t first = firstRow;
        int end = -1;
        int timesInVain = 0;
        while (first < text.size()) {
            if (timesInVain < kMostTimesInVain) {
                const std::size_t behind = takePlainRows(first);
                timesInVain = behind > first ? 0 : timesInVain + 1;
                first = behind;
                if (first == text.size())
                    break;
            }
            if (text[first] != '\r' && text[first] != '\n') {
                if (mayEndRows(first) && endsRows(first, end))
                    break;
                const OutlineRow row = scanRow(text, first);
                if (row.values > 0)
                    table.all.add(row);
                first = row.line.last;
            }
            ++first;
        }
        table.dataEnd = std::min(first, text.size());
        if (end < 0)
            endAtDeclaredRow(firstRow);
        table.rows = OutlineRows(text, {firstRow, table.dataEnd}, table.all.count);
        behindRows = table.dataEnd;
        ++part;
        at = table.dataEnd;
        if (end >= 0) {
            OutlineLine line = lineAt(at);
            line.word = kEndData;
            table.endLine = add(line);
            at = line.next;
        }
        outline.hasNul = outline.hasNul || table.all.hasNul;
        outline.tables.push_back(std::move(table));
        table = OutlineTable();
    }

    // @return behind the rows that can be taken at once.
    std::size_t takePlainRows(std::size_t first) {
        if (readPlainRows == nullptr)
            return first;
        PlainRows rows;
        const char* const behind = readPlainRows(text.data() + first, text.data() + text.size(), &rows);
        table.all.add(rows);
        return static_cast<std::size_t>(behind - text.data());
    }

    // Where END_DATA is missing and the declared rows are there, what stands behind them is the header of the
    // next table if it cannot be a row.
    void endAtDeclaredRow(std::size_t firstRow) {
        const std::size_t count = declaredRows();
        if (count == 0 || table.all.count <= count)
            return;
        const auto fits = [&](const OutlineRow& row) {
            return row.values == static_cast<int>(table.names.size()) && !row.openQuote;
        };
        RowsSummary declared;
        const OutlineRows rows(text, {firstRow, table.dataEnd}, table.all.count);
        auto row = rows.begin();
        for (; declared.count < count; ++row) {
            if (!fits(*row))
                return;
            declared.add(*row);
        }
        const bool mayBeRow =
            fits(*row) && (row->strange & ~declared.strange) == 0 && !isHeaderLine(row->line.first);
        if (mayBeRow)
            return;
        table.dataEnd = row->line.first;
        table.all = declared;
    }

    std::size_t declaredRows() const {
        if (table.setsLine < 0)
            return 0;
        std::string value(outline.lines[static_cast<std::size_t>(table.setsLine)].value.of(text));
        value.erase(std::remove(value.begin(), value.end(), '"'), value.end());
        return static_cast<std::size_t>(std::max(textToInt(value.c_str()), 0));
    }

    bool isHeaderLine(std::size_t first) const {
        const std::string word(lineAt(first).keyword.of(text));
        return findExactly(kKeywords, kKeywordCount, word.c_str()) >= 0 || word.rfind("CGATS.", 0) == 0 ||
               opensBlock(word);
    }

    bool mayEndRows(std::size_t first) const {
        const char c = text[first];
        const char next = first + 1 < text.size() ? text[first + 1] : '\0';
        // What can be one of the words that end the samples, or END_DATA with a wrong first letter.
        return (c >= 'A' && std::string_view("EeBbNnKk").find(c) != std::string_view::npos) || isBlank(c) ||
               next == 'N' || (takesAnySpelling && c == '"');
    }

    // Tells of a line that is no row. @param end becomes the code of END_DATA where it is that.
    bool endsRows(std::size_t first, int& end) const {
        const OutlineLine line = lineAt(first);
        const std::string_view word = line.keyword.of(text);
        if (word.empty() || word.size() > kLongestWord)
            return false;
        const int code = takesAnySpelling ? line.word : wordOf(word, true);
        const bool alone = line.value.empty();
        if (code == kEndData || (alone && isNearly(word, kEndData))) {
            end = kEndData;
            return true;
        }
        if (std::find(std::begin(kOpening), std::end(kOpening), code) == std::end(kOpening))
            return false;
        // A sample may have such a name.
        const bool isDeclaredRow = table.all.count < declaredRows() &&
                                   scanRow(text, first).values == static_cast<int>(table.names.size());
        return !isDeclaredRow;
    }

    void takeBlock(int index) {
        const OutlineLine& line = outline.lines[static_cast<std::size_t>(index)];
        passedTable = passedTable || wordOf(line.keyword.of(text), true) == kBeginDataFormat;
        const std::string terminator = "END_" + std::string(line.keyword.of(text).substr(kBlockStartLength));
        const auto endsAt = [&](std::size_t first) {
            return text.size() - first >= terminator.size() &&
                   strncmp_ci(text.data() + first, terminator.c_str(), static_cast<int>(terminator.size())) ==
                       0;
        };
        if (line.next < text.size() && endsAt(line.next)) {
            if (line.next - line.line.last == 1)
                outline.emptyBlocks.push_back(index);
            return;
        }
        for (std::size_t p = line.next; p < text.size(); ++p)
            if (isLineEnd(text[p]) && p + 1 <= text.size() && endsAt(p + 1)) {
                at = p + 1;
                return;
            }
        // The reader goes no further.
        at = text.size();
    }

    const std::string_view text;
    const PlainRowReader readPlainRows = rowReaders().rows;
    const bool takesAnySpelling;
    bool passedTable = false;
    std::size_t at = 0;
    int part = 0;
    std::size_t behindRows = 0;                      // of the table before
    std::size_t endOfNames = std::string_view::npos; // where a misspelled END_DATA_FORMAT stands
    OutlineTable table;
    DocumentOutline outline;
};

} // namespace

DocumentOutline outlineOf(std::string_view text) {
    Outliner outliner(text, false);
    DocumentOutline exact = outliner.run();
    if (!exact.tables.empty() && !outliner.sawOtherSpelling())
        return exact;
    DocumentOutline wide = Outliner(text, true).run();
    return wide.tables.empty() ? exact : wide;
}

bool differByOneLetter(std::string_view a, std::string_view b) noexcept {
    if (a.size() > b.size())
        std::swap(a, b);
    if (b.size() - a.size() > 1)
        return false;
    std::size_t i = 0;
    while (i < a.size() && a[i] == b[i])
        ++i;
    const std::string_view rest = b.substr(i + (i < b.size() ? 1 : 0));
    return a.size() == b.size() ? a.substr(std::min(i + 1, a.size())) == rest : a.substr(i) == rest;
}

} // namespace qxcms::detail
