// Column names and what declares them.
#include <algorithm>
#include <cmath>
#include <map>
#include <new>
#include <optional>
#include <set>

#include "base/number_text.h"
#include "cgats/cgats_reader.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/decimal_text.h"
#include "cgats/document_repairs.h"
#include "cgats/row_scan.h"
#include "cgats/spectral_name.h"
#include "cgats/tcgats.h"

namespace qxcms::detail {

namespace {

using Kind = TCgatsLiberty::Kind;

constexpr int kSampleCountMismatchCode = 13;
constexpr std::size_t kSmallestRun = 4; // of names that are wavelengths only together

// Formats that are put in may make a text so many times as long, and a short one longer by so many
// characters.
constexpr std::size_t kLargestGrowth = 4;
constexpr std::size_t kSmallGrowth = 65536;

/// What the reader makes of a name.
struct NameClass {
    bool known = false;
    int kind = TCgatsField::kCustom;
    int dataType = TCgatsField::kString;
    int number = 0;
    int standard = -1; // which standard field
};

/// What names mean at a place of a text, as the reader knows them there. Goes along with the text.
class FieldVocabulary {
public:
    explicit FieldVocabulary(const Repairs& shared) : repairs(shared) {}

    /// Takes up what the lines before a place declare.
    void readUpTo(std::size_t place) {
        for (; next < repairs.outline.lines.size() && repairs.outline.lines[next].line.first < place;
             ++next) {
            const OutlineLine& line = repairs.outline.lines[next];
            if (line.word == kKeyword && !line.value.empty() && !repairs.droppedLines[next]) {
                const std::string name = valueOf(repairs.draft, line);
                declare(name);
                declarations[name].push_back(static_cast<int>(next));
            } else if (line.word == kProcessColorId) {
                CgatsReader::countProcessColor(plain);
                CgatsReader::countProcessColor(declared);
            }
        }
    }

    void declare(const std::string& name) {
        if (!name.empty() && declared.AddCustomField(name.c_str()) != 0)
            throw std::bad_alloc();
    }

    /// The lines, as indices, that declare a name.
    std::vector<int> declaringLines(const std::string& name) const {
        const auto found = declarations.find(name);
        return found == declarations.end() ? std::vector<int>() : found->second;
    }

    /// What the reader makes of a name, with and without declared ones.
    NameClass given(const std::string& name) { return classOf(declared, name); }
    NameClass asked(const std::string& name) { return classOf(plain, name); }

private:
    static NameClass classOf(TCgats& document, const std::string& name) {
        NameClass found;
        std::string canonical;
        const int id = CgatsReader::classify(document, name.c_str(), &found.kind, &found.number,
                                             &found.dataType, &canonical);
        found.known = id >= 0;
        found.standard = found.known && found.kind == TCgatsField::kStandard ? id : -1;
        return found;
    }

    const Repairs& repairs;
    std::size_t next = 0;
    TCgats plain; // knows no declared names
    TCgats declared;
    std::map<std::string, std::vector<int>> declarations;
};

/// The names of one table on their way into form.
class FormatRepair {
public:
    FormatRepair(Repairs& shared, const OutlineTable& which, FieldVocabulary& known)
        : repairs(shared), draft(shared.draft), table(which), vocabulary(known) {}

    TableForm run() {
        names = table.names;
        takeNamesWithBlanks();
        form.namesBetweenTabs = areNamesBetweenTabs();
        findUnsupportedColorants();
        findSpectra();
        for (std::size_t i = 0; i < names.size(); ++i)
            form.columns.push_back(columnFor(i));
        return std::move(form);
    }

private:
    // Names between TABs that hold blanks, where the rows have as many cells between TABs and the words of
    // the names do not fit them, or are more than NUMBER_OF_FIELDS tells.
    void takeNamesWithBlanks() {
        if (table.rows.empty())
            return;
        const std::vector<Cell> cells = cellsOfNames();
        const auto isNamed = [](const Cell& cell) { return !cell.inner.empty(); };
        const auto count = static_cast<std::size_t>(std::count_if(cells.begin(), cells.end(), isNamed));
        if (count == names.size() || cells.size() <= table.nameLines.size())
            return;
        const auto fitsTabs = [&](const OutlineRow& row) {
            return cellsBetweenTabs(draft.text, row.line, cells.size()).size() == cells.size() ||
                   row.values == static_cast<int>(count) ||
                   draft.text[withoutBlanks(draft.text, row.line).first] == '#';
        };
        if (!std::all_of(table.rows.begin(), table.rows.end(), fitsTabs) || holdKnownNames(cells) ||
            (declaredFields() != count && fitBetweenBlanks()))
            return;
        names.clear();
        for (const Cell& cell : cells)
            if (isNamed(cell))
                names.push_back(cell.inner);
    }

    std::vector<Cell> cellsOfNames() const {
        std::vector<Cell> cells;
        for (const Span& line : table.nameLines) {
            const std::vector<Cell> more = cellsBetweenTabs(draft.text, line);
            cells.insert(cells.end(), more.begin(), more.end());
        }
        while (!cells.empty() && cells.back().whole.empty())
            cells.pop_back();
        return cells;
    }

    // Whether rows and names fit each other word by word, and nothing tells that words belong together.
    bool fitBetweenBlanks() {
        const auto isKnownWord = [&](Span name) {
            return vocabulary.given(std::string(name.of(draft.text))).known;
        };
        return wrappedRows(table.rows, names.size()) && wordsGiveNumbers() &&
               (declaredFields() == names.size() || std::all_of(names.begin(), names.end(), isKnownWord));
    }

    // Whether a cell is several names, each of them known.
    bool holdKnownNames(const std::vector<Cell>& cells) {
        return std::any_of(cells.begin(), cells.end(), [&](const Cell& cell) {
            const std::vector<Cell> words = cellsOf(draft.text, cell.inner);
            return words.size() > 1 && std::all_of(words.begin(), words.end(), [&](const Cell& word) {
                       return vocabulary.asked(std::string(word.inner.of(draft.text))).known;
                   });
        });
    }

    // Whether the words of the rows are numbers where the words of the names ask for these.
    bool wordsGiveNumbers() {
        std::vector<std::size_t> numbers;
        for (std::size_t i = 0; i < names.size(); ++i) {
            const NameClass name = vocabulary.asked(std::string(names[i].of(draft.text)));
            if (name.known && name.dataType != TCgatsField::kString)
                numbers.push_back(i);
        }
        return std::all_of(table.rows.begin(), table.rows.end(), [&](const OutlineRow& row) {
            const std::vector<Cell> cells = cellsOf(draft.text, row.line);
            return cells.size() != names.size() ||
                   std::all_of(numbers.begin(), numbers.end(),
                               [&](std::size_t i) { return isDecimalNumber(cells[i].inner.of(draft.text)); });
        });
    }

    // 0 where none are declared.
    std::size_t declaredFields() const {
        if (table.fieldsLine < 0)
            return 0;
        const std::string declared = valueOf(draft, repairs.line(table.fieldsLine));
        return static_cast<std::size_t>(std::max(textToInt(declared.c_str()), 0));
    }

    bool areNamesBetweenTabs() const {
        return table.nameLines.size() == 1 && cellsOfNames().size() == names.size() && names.size() > 1;
    }

    std::string withoutSpaces(Span where) const {
        std::string name(where.of(draft.text));
        std::replace_if(name.begin(), name.end(), isBlank, '_');
        return name;
    }

    // A column whose name may be a wavelength, where that is so: by its name, or in a run of such names whose
    // wavelengths ascend.
    void findSpectra() {
        std::vector<std::optional<SpectralName>> spectral;
        for (const Span name : names)
            spectral.push_back(spectralName(withoutSpaces(name)));
        wavelengths.assign(names.size(), std::nullopt);
        for (std::size_t first = 0; first < names.size();) {
            const std::size_t last = behindRun(spectral, first);
            const bool isRun = last - first >= kSmallestRun;
            for (std::size_t i = first; i < last; ++i)
                if (spectral[i] && (spectral[i]->isCertain || isRun))
                    wavelengths[i] = spectral[i]->wavelength;
            first = last;
        }
    }

    // Behind the longest run of vague names, or behind one name.
    static std::size_t behindRun(const std::vector<std::optional<SpectralName>>& spectral,
                                 std::size_t first) {
        const auto goesOn = [](const SpectralName& before, const SpectralName& next) {
            return !before.isCertain && !next.isCertain && next.wavelength > before.wavelength;
        };
        std::size_t last = first + 1;
        while (last < spectral.size() && spectral[last - 1] && spectral[last] &&
               goesOn(*spectral[last - 1], *spectral[last]))
            ++last;
        return last;
    }

    TableColumn columnFor(std::size_t index) {
        const Span where = names[index];
        std::string name(where.of(draft.text));
        if (wavelengths[index])
            return spectralColumn(where, *wavelengths[index]);
        if (holdsNames(name)) {
            draft.refuse(
                kUnknownField, where,
                "column names with TABs or blanks between them; commas and semicolons separate none");
            return {name, where, true};
        }
        if (name.find_first_of(" \t\"") != std::string::npos && !isKnown(name))
            name = joined(where, name);
        const bool isRenamed = name != where.of(draft.text);
        const NameClass asked = meaningOf(isRenamed ? vocabulary.asked(name) : meanings[index], name);
        const NameClass given = meaningOf(vocabulary.given(name), name);
        if (!given.known)
            declare(where, name);
        else if (asked.known && asked.kind != TCgatsField::kCustom && given.kind == TCgatsField::kCustom)
            undeclare(name);
        const bool isText = !asked.known || asked.dataType == TCgatsField::kString;
        TableColumn column{name, where, isText};
        if (asked.known && asked.kind == TCgatsField::kSpectral)
            column.wavelength = asked.number;
        column.standard = asked.standard;
        column.isColorant =
            asked.known && (asked.kind == TCgatsField::kProcessColor || asked.kind == TCgatsField::kNColor);
        return column;
    }

    // Whether a name is several known ones with commas or semicolons between them.
    bool holdsNames(const std::string& name) {
        int known = 0;
        for (std::size_t first = 0; first < name.size();) {
            const std::size_t last = std::min(name.find_first_of(",;", first), name.size());
            if (last == name.size() && first == 0)
                return false;
            known += vocabulary.asked(name.substr(first, last - first)).known ? 1 : 0;
            first = last + 1;
        }
        return known > 1;
    }

    // "nm380_SD" is no second column of 380 nm, although the reader takes it for one.
    NameClass meaningOf(const NameClass& read, const std::string& name) const {
        const bool isOther = read.kind == TCgatsField::kSpectral && !endsInDigit(name);
        return isOther || unsupported.count(read.kind) > 0 ? NameClass() : read;
    }

    bool isKnown(const std::string& name) { return meaningOf(vocabulary.given(name), name).known; }

    static bool endsInDigit(const std::string& name) {
        return !name.empty() && name.back() >= '0' && name.back() <= '9';
    }

    std::string joined(Span where, std::string name) {
        std::replace_if(name.begin(), name.end(), isBlank, '_');
        std::replace(name.begin(), name.end(), '"', '\'');
        draft.edits.replace(where, name);
        draft.took(Kind::kFieldRenamed, where, "the column " + draft.quoted(where) + " named " + name);
        return name;
    }

    TableColumn spectralColumn(Span where, double wavelength) {
        const int rounded = static_cast<int>(std::floor(wavelength + 0.5));
        const std::string name(where.of(draft.text));
        const NameClass given = vocabulary.given(name);
        const bool isRead =
            given.known && given.kind == TCgatsField::kSpectral && withoutSpaces(where) == name;
        const bool isWhole = wavelength == rounded;
        const bool isSpelled =
            withoutSpaces(where) == name && vocabulary.asked(name).kind == TCgatsField::kSpectral;
        if (isWhole && isSpelled && !isRead) {
            taken.insert(rounded);
            undeclare(name);
            return {name, where, false, rounded};
        }
        const bool isAgain = !taken.insert(rounded).second;
        if (isRead && isWhole && renamed.count(rounded) == 0)
            return {name, where, false, rounded};
        if (isAgain)
            draft.refuse(kUnknownField, where,
                         "a wavelength of its own: two columns stand for " + std::to_string(rounded) + " nm");
        renamed.insert(rounded);
        const std::string proper = freeName(rounded);
        draft.edits.replace(where, proper);
        draft.took(isWhole ? Kind::kSpectralName : Kind::kWavelengthRounded, where,
                   "the column " + draft.quoted(where) + " named " + proper +
                       (isWhole ? "" : ", in whole nanometres"));
        const std::vector<int> declaring = vocabulary.declaringLines(name);
        repairs.uselessKeywords.insert(repairs.uselessKeywords.end(), declaring.begin(), declaring.end());
        const bool isPercent = name.find("PCT") != std::string::npos || name.find("pct") != std::string::npos;
        return {proper, where, false, rounded, -1, isPercent};
    }

    // A name of the wavelength that no line declares as text.
    std::string freeName(int wavelength) {
        for (const char* prefix : {"SPECTRAL_", "NM_", "SPECTRAL_NM_"}) {
            std::string name = prefix + std::to_string(wavelength);
            if (vocabulary.given(name).kind == TCgatsField::kSpectral)
                return name;
        }
        return "nm" + std::to_string(wavelength);
    }

    void declare(Span where, const std::string& name) {
        vocabulary.declare(name);
        repairs.putLine(repairs.line(table.formatLine).line.first, "KEYWORD \"" + name + '"');
        draft.took(Kind::kFieldDeclared, where,
                   "the line KEYWORD \"" + name + "\" put in for the column, whose values are text");
    }

    // Channels of which the reader can make no colours, so that it would refuse the text.
    void findUnsupportedColorants() {
        for (const Span name : names)
            meanings.push_back(vocabulary.asked(std::string(name.of(draft.text))));
        for (const int kind : {TCgatsField::kNColor, TCgatsField::kSpotColor, TCgatsField::kProcessColor})
            if (!areSupported(kind))
                unsupported.insert(kind);
    }

    // N-colour spaces of enough channels; spot and process colours without a gap in their numbers, the latter
    // where they are looked at.
    bool areSupported(int kind) const {
        const auto isCmyk = [](const NameClass& name) {
            return name.standard >= kCmykC && name.standard <= kCmykK;
        };
        if (kind == TCgatsField::kProcessColor &&
            std::count_if(meanings.begin(), meanings.end(), isCmyk) == kCmykK - kCmykC + 1)
            return true;
        int count = 0;
        int largest = -1;
        int channels = kFewestNColors; // as the first name tells
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (!meanings[i].known || meanings[i].kind != kind)
                continue;
            if (count == 0 && kind == TCgatsField::kNColor)
                channels = textToInt(std::string(names[i].of(draft.text)).c_str());
            ++count;
            largest = std::max(largest, meanings[i].number);
        }
        return kind == TCgatsField::kNColor ? channels >= kFewestNColors : largest < count;
    }

    void undeclare(const std::string& name) {
        for (const int index : vocabulary.declaringLines(name))
            if (!repairs.droppedLines[static_cast<std::size_t>(index)])
                repairs.dropKeyword(
                    index, "left out: it would turn a column that has a meaning of its own into text");
    }

    Repairs& repairs;
    Draft& draft;
    const OutlineTable& table;
    FieldVocabulary& vocabulary;
    std::vector<Span> names;
    std::vector<NameClass> meanings; // of the names, but for what lines declare
    std::set<int> unsupported;       // kinds of channels
    std::vector<std::optional<double>> wavelengths;
    std::set<int> taken;
    std::set<int> renamed; // those of columns with another name now
    TableForm form;
};

void repairRemarks(Repairs& repairs, const OutlineTable& table) {
    for (const Span& remark : table.formatRemarks) {
        Draft& draft = repairs.draft;
        if (withoutBlanks(draft.text, remark).empty())
            continue;
        const int part = repairs.line(table.formatLine).part;
        draft.edits.remove({remark.first - 1, remark.last});
        repairs.comments.push_back({remark, std::string(remark.of(draft.text)), part, remark.last});
    }
}

void repairEndOfFormat(Repairs& repairs, const OutlineTable& table) {
    Draft& draft = repairs.draft;
    if (table.formatEndLine < 0) {
        // The next line is at most that of the samples.
        const std::size_t before = repairs.line(table.formatLine + 1).line.first;
        repairs.putLine(before, kKeywords[kEndDataFormat]);
        draft.took(Kind::kEndOfFormat, {before, before}, "the line END_DATA_FORMAT put in");
    }
}

void repairFieldCount(Repairs& repairs, const OutlineTable& table, std::size_t count) {
    Draft& draft = repairs.draft;
    if (table.fieldsLine < 0)
        return;
    const OutlineLine& line = repairs.line(table.fieldsLine);
    const std::string declaredCount = valueOf(draft, line);
    const bool behindFormat =
        table.formatLine >= 0 && line.line.first > repairs.line(table.formatLine).line.first;
    if (!behindFormat && textToInt(declaredCount.c_str()) == static_cast<int>(count))
        return;
    const std::string found = std::to_string(count);
    if (behindFormat) {
        repairs.dropLine(table.fieldsLine);
        repairs.putLine(repairs.line(table.formatLine).line.first,
                        std::string(kKeywords[kNumberOfFields]) + ' ' + found);
    } else if (line.value.empty()) {
        draft.edits.put(line.keyword.last, ' ' + found);
    } else {
        draft.edits.replace(line.value, found);
    }
    draft.took(Kind::kFieldCount, line.value.empty() ? line.keyword : line.value,
               behindFormat
                   ? "NUMBER_OF_FIELDS put before the data format, with the number of columns, " + found
                   : "NUMBER_OF_FIELDS corrected from " +
                         (declaredCount.empty() ? "nothing" : declaredCount) + " to " + found +
                         ", the number of columns found");
}

/// Columns SPECTRAL_NM with a wavelength and, next to each on one side, SPECTRAL_PCT or SPECTRAL_DEC with the
/// value.
class PairRepair {
public:
    PairRepair(Repairs& shared, const OutlineTable& which, TableForm& known)
        : draft(shared.draft), table(which), form(known) {}

    void run() {
        const std::vector<std::size_t> parts = partsOfPairs();
        if (parts.empty())
            return;
        if (!findPairs(parts) || !readWavelengths()) {
            draft.remark(
                Kind::kSpectralPairs, placeOf(parts.front(), parts.front()),
                "the spectra cannot be used: columns of values need one of wavelengths next to each, "
                "with one and the same wavelength in all rows, different from the others");
            return;
        }
        forEachRow(draft.text, table.rows, form, [&](const std::vector<Cell>& cells) {
            for (const Pair& pair : pairs)
                draft.edits.remove(isNamedFirst
                                       ? Span{cells[pair.named].whole.first, cells[pair.valued].whole.first}
                                       : Span{cells[pair.valued].whole.last, cells[pair.named].whole.last});
            return true;
        });
        for (const Pair& pair : pairs)
            rename(pair);
    }

private:
    struct Pair {
        std::size_t named;  // the column of the wavelength
        std::size_t valued; // and that of the value
        int wavelength = -1;
        bool isPercent = false;
        double exact = 0.0;
    };

    bool isWavelength(std::size_t column) const { return form.columns[column].standard == kSpectralNm; }

    // The columns of wavelengths and values; none unless there are both.
    std::vector<std::size_t> partsOfPairs() const {
        std::vector<std::size_t> parts;
        std::size_t wavelengths = 0;
        for (std::size_t i = 0; i < form.columns.size(); ++i) {
            const int standard = form.columns[i].standard;
            if (standard != kSpectralNm && standard != kSpectralPct && standard != kSpectralDec)
                continue;
            wavelengths += isWavelength(i) ? 1U : 0U;
            parts.push_back(i);
        }
        return wavelengths == 0 || wavelengths == parts.size() ? std::vector<std::size_t>() : parts;
    }

    // @return whether they are pairs of neighbours, all in the same order.
    bool findPairs(const std::vector<std::size_t>& parts) {
        isNamedFirst = isWavelength(parts.front());
        for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
            if (parts[i + 1] != parts[i] + 1 || isWavelength(parts[i]) != isNamedFirst ||
                isWavelength(parts[i + 1]) == isNamedFirst)
                return false;
            const std::size_t valued = isNamedFirst ? parts[i + 1] : parts[i];
            const std::size_t named = isNamedFirst ? parts[i] : parts[i + 1];
            pairs.push_back({named, valued, -1, form.columns[valued].standard == kSpectralPct});
        }
        return parts.size() % 2 == 0;
    }

    // @return whether each pair has the same one in every row, and all are different.
    bool readWavelengths() {
        bool first = true;
        forEachRow(draft.text, table.rows, form, [&](const std::vector<Cell>& cells) {
            for (Pair& pair : pairs) {
                const std::string text(cells[pair.named].inner.of(draft.text));
                const auto known = spectralName(text);
                const double exact = known ? known->wavelength : -1.0;
                if (first)
                    pair.exact = exact;
                else if (pair.exact != exact)
                    pair.exact = -1.0;
                pair.wavelength = static_cast<int>(std::floor(pair.exact + 0.5));
            }
            first = false;
            return true;
        });
        const auto isOdd = [](const Pair& pair) { return pair.wavelength < 0; };
        return std::none_of(pairs.begin(), pairs.end(), isOdd) && differ();
    }

    bool differ() const {
        std::set<int> seen;
        for (const TableColumn& column : form.columns)
            if (column.wavelength >= 0)
                seen.insert(column.wavelength);
        return std::all_of(pairs.begin(), pairs.end(),
                           [&](const Pair& pair) { return seen.insert(pair.wavelength).second; });
    }

    // The names, or the samples where the names are those of another table.
    Span placeOf(std::size_t first, std::size_t last) const {
        const std::size_t samples = table.rows.front().line.first;
        return form.columns[first].where.empty()
                   ? Span{samples, samples}
                   : Span{form.columns[first].where.first, form.columns[last].where.last};
    }

    void rename(const Pair& pair) {
        TableColumn& named = form.columns[pair.named];
        TableColumn& valued = form.columns[pair.valued];
        const std::string name = "SPECTRAL_" + std::to_string(pair.wavelength);
        if (!named.where.empty()) {
            draft.edits.remove(isNamedFirst ? Span{named.where.first, valued.where.first}
                                            : Span{valued.where.last, named.where.last});
            draft.edits.replace(valued.where, name);
        }
        const Span where = placeOf(std::min(pair.named, pair.valued), std::max(pair.named, pair.valued));
        draft.took(Kind::kSpectralPairs, where,
                   "the columns " + named.name + " and " + valued.name + " made the column " + name);
        named.isLeftOut = true;
        if (pair.exact != pair.wavelength)
            draft.took(Kind::kWavelengthRounded, where,
                       "the wavelength of the column " + name + " rounded to whole nanometres");
        valued.name = name;
        valued.wavelength = pair.wavelength;
        valued.standard = -1;
        valued.isPercent = pair.isPercent;
    }

    Draft& draft;
    const OutlineTable& table;
    TableForm& form;
    bool isNamedFirst = true;
    std::vector<Pair> pairs;
};

void takeFormatOver(Repairs& repairs, const OutlineTable& table, const TableForm& form) {
    Draft& draft = repairs.draft;
    std::string names;
    for (const TableColumn& column : form.columns)
        if (!column.isLeftOut)
            names += (names.empty() ? "" : "\t") + column.name;
    const OutlineLine& data = repairs.line(table.dataLine);
    for (const std::string& line : {std::string(kKeywords[kBeginDataFormat]), names})
        repairs.putLine(data.line.first, line);
    repairs.putLine(data.line.first, kKeywords[kEndDataFormat]);
    --repairs.addedLines; // the names are no header line
    draft.took(Kind::kFormatTakenOver, {data.line.first, data.line.first},
               "the data format of the table before put in for this one");
}

std::size_t lengthOfNames(const std::vector<TableColumn>& columns) {
    std::size_t length = 0;
    for (const TableColumn& column : columns)
        length += column.name.size() + 1;
    return length;
}

/// The form of the table before, where the first row fits it; nothing else. `room` is what formats that are
/// put in may still add to the text.
TableForm formTakenOver(Repairs& repairs, const OutlineTable& table, std::size_t& room) {
    if (repairs.tables.empty() || repairs.tables.back().columns.empty() || table.rows.empty())
        return {};
    const std::vector<TableColumn>& columns = repairs.tables.back().columns;
    const Span line = table.rows.front().line;
    if (table.rows.front().values != static_cast<int>(columns.size()) &&
        cellsBetweenTabs(repairs.draft.text, line, columns.size()).size() != columns.size()) {
        repairs.draft.refuse(
            kSampleCountMismatchCode, withoutBlanks(repairs.draft.text, line),
            std::to_string(columns.size()) +
                " values, as the table before has columns; this one has no data format of its own");
        return {};
    }
    const std::size_t length = lengthOfNames(columns);
    if (length > room) {
        repairs.draft.refuse(
            kNoTmpHeader, repairs.line(table.dataLine).keyword,
            "a data format of the table's own: to put in that of the table before, as often as it "
            "is missing, would make the text several times as long");
        return {};
    }
    room -= length;
    TableForm form;
    form.columns = columns;
    for (TableColumn& column : form.columns)
        column.where = Span();
    return form;
}

} // namespace

void repairFormats(Repairs& repairs) {
    FieldVocabulary vocabulary(repairs);
    std::size_t room = kLargestGrowth * repairs.draft.text.size() + kSmallGrowth;
    for (const OutlineTable& table : repairs.outline.tables) {
        if (table.formatLine < 0) {
            repairs.tables.push_back(formTakenOver(repairs, table, room));
            continue;
        }
        repairRemarks(repairs, table);
        repairEndOfFormat(repairs, table);
        vocabulary.readUpTo(repairs.line(table.formatLine).line.first);
        repairs.tables.push_back(FormatRepair(repairs, table, vocabulary).run());
    }
}

void repairPairs(Repairs& repairs) {
    for (std::size_t i = 0; i < repairs.outline.tables.size(); ++i)
        if (repairs.tables[i].reading != RowReading::kNone)
            PairRepair(repairs, repairs.outline.tables[i], repairs.tables[i]).run();
}

void repairFieldCounts(Repairs& repairs) {
    for (std::size_t i = 0; i < repairs.outline.tables.size(); ++i) {
        const std::vector<TableColumn>& columns = repairs.tables[i].columns;
        if (columns.empty())
            continue;
        const auto isThere = [](const TableColumn& column) { return !column.isLeftOut; };
        const auto count = std::count_if(columns.begin(), columns.end(), isThere);
        repairFieldCount(repairs, repairs.outline.tables[i], static_cast<std::size_t>(count));
        if (repairs.outline.tables[i].formatLine < 0)
            takeFormatOver(repairs, repairs.outline.tables[i], repairs.tables[i]);
    }
}

} // namespace qxcms::detail
