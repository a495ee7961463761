// Column names and what declares them.
#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>

#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/document_repairs.h"
#include "cgats/row_scan.h"
#include "cgats/spectral_name.h"
#include "cgats/tcgats.h"

namespace qxcms::detail {

namespace {

using Kind = TCgatsLiberty::Kind;

constexpr int kSmallestRun = 4; // of names that are wavelengths only together

/// What the reader makes of a name.
struct NameClass {
    bool known = false;
    int kind = TCgatsField::kCustom;
    int dataType = TCgatsField::kString;
    int number = 0;
};

NameClass classOf(TCgats& vocabulary, const std::string& name) {
    NameClass found;
    std::string canonical;
    found.known =
        vocabulary.MatchField(name.c_str(), &found.kind, &found.number, &found.dataType, &canonical) >= 0;
    return found;
}

/// The names of one table on their way into form.
class FormatRepair {
public:
    FormatRepair(Repairs& shared, const OutlineTable& which)
        : repairs(shared), draft(shared.draft), table(which) {
        readDeclarations();
    }

    TableForm run() {
        names = table.names;
        takeNamesWithBlanks();
        findSpectra();
        for (std::size_t i = 0; i < names.size(); ++i)
            form.columns.push_back(columnFor(i));
        return std::move(form);
    }

private:
    // What the lines before the data format declare.
    void readDeclarations() {
        const std::size_t before = repairs.line(table.formatLine).line.first;
        for (std::size_t i = 0; i < repairs.outline.lines.size(); ++i) {
            const OutlineLine& line = repairs.outline.lines[i];
            if (line.line.first >= before)
                break;
            if (line.word == kKeyword && !line.value.empty() && !repairs.droppedLines[i]) {
                const std::string name = valueOf(draft, line);
                declared.AddCustomField(name.c_str());
                declarations[name].push_back(static_cast<int>(i));
            } else if (line.word == kProcessColorId) {
                declared.ReadFromBuffer("PROCESSCOLOR_ID\n");
                plain.ReadFromBuffer("PROCESSCOLOR_ID\n");
            }
        }
    }

    // The columns of the rows, where the names between TABs fit these and the names between blanks do not.
    void takeNamesWithBlanks() {
        const auto& rows = table.rows;
        const auto fits = [&](const OutlineRow& row) { return row.values == static_cast<int>(names.size()); };
        if (rows.empty() || std::any_of(rows.begin(), rows.end(), fits) || wrappedRows(rows, names.size()))
            return;
        std::vector<Cell> cells;
        for (const Span& line : table.nameLines) {
            const std::vector<Cell> more = cellsBetweenTabs(draft.text, line);
            cells.insert(cells.end(), more.begin(), more.end());
        }
        while (!cells.empty() && cells.back().whole.empty())
            cells.pop_back();
        const auto isNamed = [](const Cell& cell) { return !cell.inner.empty(); };
        const auto count = static_cast<std::size_t>(std::count_if(cells.begin(), cells.end(), isNamed));
        const auto fitsTabs = [&](const OutlineRow& row) {
            return cellsBetweenTabs(draft.text, row.line).size() == cells.size() ||
                   row.values == static_cast<int>(count);
        };
        if (count == names.size() || cells.size() <= table.nameLines.size() ||
            !std::all_of(rows.begin(), rows.end(), fitsTabs))
            return;
        names.clear();
        for (const Cell& cell : cells)
            if (isNamed(cell))
                names.push_back(cell.inner);
    }

    // A column whose name may be a wavelength, where that is so.
    void findSpectra() {
        wavelengths.assign(names.size(), std::nullopt);
        std::size_t first = 0;
        while (first < names.size()) {
            std::size_t last = first;
            double before = 0.0;
            bool certain = false;
            while (last < names.size()) {
                const auto name = spectralName(names[last].of(draft.text));
                if (!name || name->wavelength <= before || (last > first && name->isCertain != certain))
                    break;
                certain = name->isCertain;
                before = name->wavelength;
                wavelengths[last++] = before;
            }
            if (!certain && last - first < kSmallestRun)
                std::fill(wavelengths.begin() + static_cast<std::ptrdiff_t>(first),
                          wavelengths.begin() + static_cast<std::ptrdiff_t>(last), std::nullopt);
            first = std::max(last, first + 1);
        }
    }

    TableColumn columnFor(std::size_t index) {
        const Span where = names[index];
        std::string name(where.of(draft.text));
        if (wavelengths[index])
            return spectralColumn(where, *wavelengths[index]);
        if (name.find_first_of(" \t\"") != std::string::npos && !classOf(declared, name).known)
            name = joined(where, name);
        const NameClass asked = classOf(plain, name);
        const NameClass given = classOf(declared, name);
        if (!given.known)
            declare(where, name);
        else if (asked.known && asked.kind != TCgatsField::kCustom && given.kind == TCgatsField::kCustom)
            undeclare(name);
        const bool isText = !asked.known || asked.dataType == TCgatsField::kString;
        return {name, where, isText, asked.known && asked.kind == TCgatsField::kSpectral ? asked.number : -1,
                false};
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
        const NameClass given = classOf(declared, name);
        const bool isRead = given.known && given.kind == TCgatsField::kSpectral;
        const bool isWhole = wavelength == rounded;
        if (isWhole && classOf(plain, name).kind == TCgatsField::kSpectral && !isRead) {
            taken.insert(rounded);
            undeclare(name);
            return {name, where, false, rounded, false};
        }
        if (!taken.insert(rounded).second && !(isRead && isWhole))
            draft.refuse(kUnknownField, where,
                         "a wavelength of its own: two columns round to " + std::to_string(rounded) + " nm");
        if (isRead && isWhole)
            return {name, where, false, rounded, false};
        const std::string proper = freeName(rounded);
        draft.edits.replace(where, proper);
        draft.took(isWhole ? Kind::kSpectralName : Kind::kWavelengthRounded, where,
                   "the column " + draft.quoted(where) + " named " + proper +
                       (isWhole ? "" : ", in whole nanometres"));
        const auto declaring = declarations.find(name);
        if (declaring != declarations.end())
            repairs.uselessKeywords.insert(repairs.uselessKeywords.end(), declaring->second.begin(),
                                           declaring->second.end());
        const bool isPercent = name.find("PCT") != std::string::npos || name.find("pct") != std::string::npos;
        return {proper, where, false, rounded, isPercent};
    }

    // A name of the wavelength that no line declares as text.
    std::string freeName(int wavelength) {
        for (const char* prefix : {"SPECTRAL_", "NM_", "SPECTRAL_NM_"}) {
            std::string name = prefix + std::to_string(wavelength);
            if (classOf(declared, name).kind == TCgatsField::kSpectral)
                return name;
        }
        return "nm" + std::to_string(wavelength);
    }

    void declare(Span where, const std::string& name) {
        declared.AddCustomField(name.c_str());
        repairs.putLine(repairs.line(table.formatLine).line.first, "KEYWORD \"" + name + '"');
        draft.took(Kind::kFieldDeclared, where,
                   "the line KEYWORD \"" + name + "\" put in for the column, whose values are text");
    }

    void undeclare(const std::string& name) {
        const auto found = declarations.find(name);
        if (found == declarations.end())
            return;
        for (const int index : found->second)
            repairs.dropKeyword(index,
                                "left out: it would turn a column that has a meaning of its own into text");
        declarations.erase(found);
    }

    Repairs& repairs;
    Draft& draft;
    const OutlineTable& table;
    TCgats plain;    // knows no declared names
    TCgats declared; // knows those that stand before the format
    std::map<std::string, std::vector<int>> declarations;
    std::vector<Span> names;
    std::vector<std::optional<double>> wavelengths;
    std::set<int> taken;
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
        const std::size_t behind = repairs.line(table.dataLine).line.first;
        std::size_t before = behind;
        for (const OutlineLine& line : repairs.outline.lines)
            if (line.line.first > repairs.line(table.formatLine).line.first)
                before = std::min(before, line.line.first);
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
    const bool behindFormat = line.line.first > repairs.line(table.formatLine).line.first;
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

/// Columns SPECTRAL_NM with a wavelength and, next to it, SPECTRAL_PCT or SPECTRAL_DEC with the value.
class PairRepair {
public:
    PairRepair(Repairs& shared, const OutlineTable& which, TableForm& known)
        : draft(shared.draft), table(which), form(known) {}

    void run() {
        findPairs();
        if (pairs.empty())
            return;
        readWavelengths();
        const auto isOdd = [](const Pair& pair) { return pair.wavelength < 0; };
        if (std::any_of(pairs.begin(), pairs.end(), isOdd) || !differ())
            return;
        forEachRow(draft.text, table, form, [&](const std::vector<Cell>& cells) {
            for (const Pair& pair : pairs)
                draft.edits.remove({cells[pair.column].whole.first, cells[pair.column + 1].whole.first});
            return true;
        });
        for (const Pair& pair : pairs)
            rename(pair);
        form.namesTaken = pairs.size();
    }

private:
    struct Pair {
        std::size_t column;
        int wavelength = -1;
        bool isPercent = false;
        double exact = 0.0;
    };

    static bool isNamed(const TableColumn& column, StandardField field) {
        return findIgnoringCase(kFieldNames, kFieldNameCount, column.name.c_str()) == field;
    }

    void findPairs() {
        for (std::size_t i = 0; i + 1 < form.columns.size(); ++i) {
            const bool isPercent = isNamed(form.columns[i + 1], kSpectralPct);
            if (isNamed(form.columns[i], kSpectralNm) &&
                (isPercent || isNamed(form.columns[i + 1], kSpectralDec)) && !form.columns[i].where.empty())
                pairs.push_back({i, -1, isPercent});
        }
    }

    // The same one in every row, or none.
    void readWavelengths() {
        bool first = true;
        forEachRow(draft.text, table, form, [&](const std::vector<Cell>& cells) {
            for (Pair& pair : pairs) {
                const std::string text(cells[pair.column].inner.of(draft.text));
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
    }

    bool differ() const {
        std::set<int> seen;
        for (const Pair& pair : pairs)
            seen.insert(pair.wavelength);
        return seen.size() == pairs.size();
    }

    void rename(const Pair& pair) {
        TableColumn& named = form.columns[pair.column];
        TableColumn& valued = form.columns[pair.column + 1];
        const std::string name = "SPECTRAL_" + std::to_string(pair.wavelength);
        draft.edits.remove({named.where.first, valued.where.first});
        draft.edits.replace(valued.where, name);
        draft.took(Kind::kSpectralPairs, {named.where.first, valued.where.last},
                   "the columns " + named.name + " and " + valued.name + " made the column " + name);
        if (pair.exact != pair.wavelength)
            draft.took(Kind::kWavelengthRounded, named.where,
                       "the wavelength of the column " + name + " rounded to whole nanometres");
        valued.name = name;
        valued.wavelength = pair.wavelength;
        valued.isPercent = pair.isPercent;
    }

    Draft& draft;
    const OutlineTable& table;
    TableForm& form;
    std::vector<Pair> pairs;
};

void takeFormatOver(Repairs& repairs, const OutlineTable& table, const TableForm& before) {
    Draft& draft = repairs.draft;
    std::string names;
    for (const TableColumn& column : before.columns)
        names += (names.empty() ? "" : "\t") + column.name;
    const OutlineLine& data = repairs.line(table.dataLine);
    for (const std::string& line : {std::string(kKeywords[kBeginDataFormat]), names})
        repairs.putLine(data.line.first, line);
    repairs.putLine(data.line.first, kKeywords[kEndDataFormat]);
    --repairs.addedLines; // the names are no header line
    draft.took(Kind::kFormatTakenOver, {data.line.first, data.line.first},
               "the data format of the table before put in for this one");
}

} // namespace

void repairFormats(Repairs& repairs) {
    for (const OutlineTable& table : repairs.outline.tables) {
        if (table.formatLine < 0) {
            TableForm before = repairs.tables.empty() ? TableForm() : repairs.tables.back();
            if (!before.columns.empty())
                takeFormatOver(repairs, table, before);
            repairs.tables.push_back(std::move(before));
            continue;
        }
        repairRemarks(repairs, table);
        repairEndOfFormat(repairs, table);
        repairs.tables.push_back(FormatRepair(repairs, table).run());
    }
}

void repairPairs(Repairs& repairs) {
    for (std::size_t i = 0; i < repairs.outline.tables.size(); ++i)
        if (repairs.tables[i].reading != RowReading::kNone)
            PairRepair(repairs, repairs.outline.tables[i], repairs.tables[i]).run();
}

void repairFieldCounts(Repairs& repairs) {
    for (std::size_t i = 0; i < repairs.outline.tables.size(); ++i)
        if (repairs.outline.tables[i].formatLine >= 0)
            repairFieldCount(repairs, repairs.outline.tables[i],
                             repairs.tables[i].columns.size() - repairs.tables[i].namesTaken);
}

} // namespace qxcms::detail
