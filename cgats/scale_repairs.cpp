// Spectra in percent that the reader would take for fractions, normalised spectra, XYZ of 0 to 1, device
// values.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/decimal_text.h"
#include "cgats/document_repairs.h"

namespace qxcms::detail {

namespace {

using Kind = TCgatsLiberty::Kind;

// The reader takes spectra for percent that are above this in one of the first rows.
constexpr double kLargestFraction = 10.0;
constexpr std::size_t kInspectedRows = 5;
// A single value of a spectrum above kLargestFraction whose others are below this is a slip, not a
// percentage.
constexpr double kBrightestFraction = 1.5;
constexpr std::size_t kFewestBands = 4;
// Spectra in percent stay below this; what lies above is no reflectance.
constexpr double kLargestPercent = 1000.0;

constexpr std::size_t kFewestRowsForXyz = 10;
constexpr double kLargestSmallXyz = 1.5;
constexpr double kLeastSmallXyz = -0.02; // a black below the noise of its instrument
constexpr double kLeastWhiteY = 0.5;
constexpr double kMostWhiteY = 1.2;
constexpr double kBlackToWhite = 0.1;

constexpr double kOne = 1.0;
constexpr double kLargestInk = 100.5;
// The tops of scales of device values, and what of them white reaches.
constexpr double kPercentTop = 100.0;
constexpr double kByteTop = 255.0;
constexpr double kNearlyAll = 0.98;
// So many rows show the scale of device values.
constexpr std::size_t kRowsThatTell = 200;

constexpr int kPlainDigits = 17; // enough for any double
constexpr int kPlacesOfPercent = 2;

const char kSpectralNorm[] = "SPECTRAL_NORM";

double valueOf(const Draft& draft, const Cell& cell) {
    std::string text(cell.inner.of(draft.text));
    std::replace(text.begin(), text.end(), ',', '.');
    return textToDouble(text.c_str());
}

/// What the values of some columns lie between.
struct Extent {
    double least = std::numeric_limits<double>::infinity();
    double largest = -std::numeric_limits<double>::infinity();
    std::size_t rows = 0;
};

using Columns = std::vector<std::size_t>;

/// Of the first rows of a table, at most `most`; what is no number as a whole does not count.
Extent extentOf(const Draft& draft, const OutlineTable& table, const TableForm& form, const Columns& columns,
                std::size_t most = std::numeric_limits<std::size_t>::max()) {
    Extent extent;
    forEachRow(draft.text, table.rows, form, [&](const std::vector<Cell>& cells) {
        for (const std::size_t column : columns) {
            if (!isDecimalNumber(cells[column].inner.of(draft.text)))
                continue;
            const double value = valueOf(draft, cells[column]);
            extent.least = std::min(extent.least, value);
            extent.largest = std::max(extent.largest, value);
        }
        ++extent.rows;
        return extent.rows < most;
    });
    return extent;
}

/// The rows of which one of these values may be 10 or more; of others this is certainly not so.
std::vector<OutlineRow> rowsThatMayBeLarge(const OutlineTable& table, const TableForm& form,
                                           const Columns& columns) {
    std::uint64_t bits = 0;
    for (const std::size_t column : columns)
        bits |= bitOfValue(static_cast<int>(column));
    const int width = form.reading == RowReading::kLines ? static_cast<int>(form.columns.size()) : -1;
    std::vector<OutlineRow> rows;
    if (table.all.haveAll(width) && (table.all.large & bits) == 0)
        return rows;
    std::copy_if(table.rows.begin(), table.rows.end(), std::back_inserter(rows),
                 [=](const OutlineRow& row) { return row.values != width || (row.large & bits) != 0; });
    return rows;
}

/// Whether no value is above a limit of 10 or less. Rows that show at a glance that they are below 10 are
/// read only for a limit below that, and when no other row is above it.
bool staysBelow(const Draft& draft, const OutlineTable& table, const TableForm& form, const Columns& columns,
                double limit) {
    const auto isBelow = [&](const auto& rows) {
        bool below = true;
        forEachRow(draft.text, rows, form, [&](const std::vector<Cell>& cells) {
            below = std::all_of(columns.begin(), columns.end(), [&](std::size_t column) {
                return !isDecimalNumber(cells[column].inner.of(draft.text)) ||
                       valueOf(draft, cells[column]) <= limit;
            });
            return below;
        });
        return below;
    };
    return isBelow(rowsThatMayBeLarge(table, form, columns)) &&
           (limit >= kLargestFraction || isBelow(table.rows));
}

template <class Predicate>
Columns columnsWhere(const TableForm& form, Predicate&& wanted) {
    Columns columns;
    for (std::size_t i = 0; i < form.columns.size(); ++i)
        if (wanted(form.columns[i]))
            columns.push_back(i);
    return columns;
}

Columns spectralColumns(const TableForm& form) {
    return columnsWhere(form, [](const TableColumn& column) { return column.wavelength >= 0; });
}

/// The columns of neighbouring standard fields, in any order of the table; empty unless all are there once.
Columns standardColumns(const TableForm& form, int first, int last) {
    Columns columns = columnsWhere(form, [&](const TableColumn& column) {
        return !column.isText && column.standard >= first && column.standard <= last;
    });
    if (static_cast<int>(columns.size()) != last - first + 1)
        columns.clear();
    return columns;
}

void replaceValues(Draft& draft, const OutlineTable& table, const TableForm& form, const Columns& columns,
                   double factor, int places) {
    forEachRow(draft.text, table.rows, form, [&](const std::vector<Cell>& cells) {
        for (const std::size_t column : columns) {
            const Cell& cell = cells[column];
            const std::string_view text = cell.inner.of(draft.text);
            if (!isDecimalNumber(text))
                continue;
            draft.edits.replace(cell.inner, places != 0
                                                ? withPointMoved(text, places)
                                                : generalText(valueOf(draft, cell) * factor, kPlainDigits));
        }
        return true;
    });
}

/// The lines SPECTRAL_NORM and the tables that each one holds for.
class SpectralScales {
public:
    explicit SpectralScales(Repairs& shared) : repairs(shared), draft(shared.draft) {}

    void run() {
        std::vector<std::size_t> tables;
        const std::vector<int> norms = normsOfTables();
        int norm = -1;
        for (std::size_t i = 0; i < repairs.outline.tables.size(); ++i) {
            const int next = norms[i];
            if (next != norm) {
                bring(norm, tables);
                tables.clear();
                norm = next;
            }
            if (repairs.tables[i].reading != RowReading::kNone && !spectralColumns(repairs.tables[i]).empty())
                tables.push_back(i);
        }
        bring(norm, tables);
    }

private:
    const OutlineTable& table(std::size_t index) const { return repairs.outline.tables[index]; }
    const TableForm& form(std::size_t index) const { return repairs.tables[index]; }

    // As the reader takes the values, also those that are no numbers as a whole.
    double largestOfFirstRows(std::size_t index) const {
        const Columns columns = spectralColumns(form(index));
        double largest = 0.0;
        std::size_t rows = 0;
        forEachRow(draft.text, table(index).rows, form(index), [&](const std::vector<Cell>& cells) {
            for (const std::size_t column : columns)
                largest = std::max(largest, valueOf(draft, cells[column]));
            return ++rows < kInspectedRows;
        });
        return largest;
    }

    // The last line before the samples of each table, -1 for none.
    std::vector<int> normsOfTables() const {
        std::vector<int> norms;
        int norm = -1;
        for (std::size_t i = 0;
             i < repairs.outline.lines.size() && norms.size() < repairs.outline.tables.size(); ++i) {
            const OutlineLine& line = repairs.outline.lines[i];
            if (line.keyword.of(draft.text) == kSpectralNorm && !line.value.empty())
                norm = static_cast<int>(i);
            if (table(norms.size()).dataLine == static_cast<int>(i))
                norms.push_back(norm);
        }
        return norms;
    }

    void bring(int norm, const std::vector<std::size_t>& tables) {
        if (tables.empty())
            return;
        if (norm >= 0) {
            const double whole = textToDouble(detail::valueOf(draft, repairs.line(norm)).c_str());
            if (std::isfinite(whole) && whole > 0.0 && whole != kOne)
                bringNormalised(norm, whole, tables);
            if (whole != kOne)
                return;
        }
        for (const std::size_t index : tables)
            bringPercent(index);
    }

    void bringPercent(std::size_t index) {
        const Columns spectra = spectralColumns(form(index));
        const auto& columns = form(index).columns;
        const bool saysPercent = std::any_of(columns.begin(), columns.end(),
                                             [](const TableColumn& column) { return column.isPercent; });
        if (largestOfFirstRows(index) > kLargestFraction)
            return;
        if (!saysPercent && staysBelow(draft, table(index), form(index), spectra, kLargestFraction)) {
            remarkOnBrightFractions(index);
            return;
        }
        if (extentOf(draft, table(index), form(index), spectra).largest > kLargestPercent)
            return;
        if (!saysPercent && !showsPercent(index)) {
            draft.remark(Kind::kSpectralScale, repairs.line(table(index).dataLine).keyword,
                         "spectra left as fractions: single values above 10 stand among values below 1.5");
            return;
        }
        replaceValues(draft, table(index), form(index), spectra, 0.0, -kPlacesOfPercent);
        tell(index,
             "spectra in percent divided by 100: none of the first five rows shows that they are percent");
    }

    // Below 10 nothing tells percent from fractions.
    void remarkOnBrightFractions(std::size_t index) {
        const Columns spectra = spectralColumns(form(index));
        const double largest = extentOf(draft, table(index), form(index), spectra, kRowsThatTell).largest;
        if (largest > kBrightestFraction)
            draft.remark(Kind::kSpectralScale, repairs.line(table(index).dataLine).keyword,
                         "spectra are read as fractions; the largest value is " + generalText(largest, 6) +
                             ", which would be very bright: if they are percent, SPECTRAL_NORM 100 tells so");
    }

    // Whether a spectrum above 10 is above that, or near it, in more than one band.
    bool showsPercent(std::size_t index) const {
        const Columns spectra = spectralColumns(form(index));
        if (spectra.size() < kFewestBands)
            return true;
        bool shows = false;
        forEachRow(draft.text, table(index).rows, form(index), [&](const std::vector<Cell>& cells) {
            std::size_t large = 0;
            std::size_t bright = 0;
            for (const std::size_t column : spectra) {
                const double value = valueOf(draft, cells[column]);
                large += value > kLargestFraction ? 1 : 0;
                bright += value > kBrightestFraction ? 1 : 0;
            }
            shows = large > 0 && bright > 1;
            return !shows;
        });
        return shows;
    }

    // Values of which `whole` stands for all light.
    void bringNormalised(int norm, double whole, const std::vector<std::size_t>& tables) {
        const bool isPercent = whole == 100.0;
        const bool shows = std::all_of(tables.begin(), tables.end(), [&](std::size_t index) {
            return largestOfFirstRows(index) * 100.0 / whole > kLargestFraction;
        });
        if (isPercent && shows)
            return;
        const double target = shows ? 100.0 : kOne;
        for (const std::size_t index : tables) {
            replaceValues(draft, table(index), form(index), spectralColumns(form(index)), target / whole,
                          isPercent ? -kPlacesOfPercent : 0);
            tell(index, "spectra brought from a scale of " + generalText(whole, kPlainDigits) +
                            " to one of " + generalText(target, kPlainDigits));
        }
        const OutlineLine& line = repairs.line(norm);
        const bool isQuoted = draft.text[line.value.first] == '"';
        const std::string value = generalText(target, kPlainDigits);
        draft.edits.replace(line.value, isQuoted ? '"' + value + '"' : value);
        draft.took(Kind::kSpectralScale, line.value,
                   "the value of SPECTRAL_NORM made " + generalText(target, kPlainDigits) +
                       ", the scale of the spectra now");
    }

    void tell(std::size_t index, std::string done) {
        draft.took(Kind::kSpectralScale, repairs.line(table(index).dataLine).keyword, std::move(done));
    }

    Repairs& repairs;
    Draft& draft;
};

/// Tables of XYZ on a scale of 0 to 1. One whose samples reach from black to white shows it for all of the
/// text.
class XyzScales {
public:
    explicit XyzScales(Repairs& shared) : repairs(shared), draft(shared.draft) {}

    void run() {
        std::vector<std::size_t> small;
        bool isCertain = false;
        for (std::size_t i = 0; i < repairs.outline.tables.size(); ++i) {
            if (repairs.tables[i].reading == RowReading::kNone || !isSmall(i))
                continue;
            small.push_back(i);
            isCertain = isCertain || showsWhite(i);
        }
        if (isCertain)
            for (const std::size_t index : small)
                bring(index);
    }

private:
    const OutlineTable& table(std::size_t index) const { return repairs.outline.tables[index]; }
    const TableForm& form(std::size_t index) const { return repairs.tables[index]; }
    Columns xyz(std::size_t index) const { return standardColumns(form(index), kXyzX, kXyzZ); }

    bool isSmall(std::size_t index) const {
        const Columns columns = xyz(index);
        return !columns.empty() && staysBelow(draft, table(index), form(index), columns, kLargestSmallXyz) &&
               extentOf(draft, table(index), form(index), columns).least >= kLeastSmallXyz;
    }

    Extent luminance(std::size_t index) const {
        return extentOf(draft, table(index), form(index), standardColumns(form(index), kXyzX + 1, kXyzX + 1));
    }

    bool showsWhite(std::size_t index) const {
        const Extent y = luminance(index);
        return y.rows >= kFewestRowsForXyz && y.largest >= kLeastWhiteY && y.largest <= kMostWhiteY &&
               y.least <= kBlackToWhite * y.largest && showsLight(index);
    }

    // RGB without white would be dark on any scale.
    bool showsLight(std::size_t index) const {
        const Columns rgb = standardColumns(form(index), kRgbR, kRgbB);
        if (rgb.empty())
            return true;
        const double largest = extentOf(draft, table(index), form(index), rgb).largest;
        const auto isTop = [=](double top) { return largest > kNearlyAll * top && largest <= top; };
        return isTop(kOne) || isTop(kPercentTop) || isTop(kByteTop);
    }

    void bring(std::size_t index) {
        const std::string largest = generalText(luminance(index).largest, 6);
        Columns columns = xyz(index);
        const Columns deviations = standardColumns(form(index), kStdevX, kStdevZ);
        const bool haveDeviations =
            !deviations.empty() && staysBelow(draft, table(index), form(index), deviations, kLargestSmallXyz);
        if (haveDeviations)
            columns.insert(columns.end(), deviations.begin(), deviations.end());
        replaceValues(draft, table(index), form(index), columns, 0.0, kPlacesOfPercent);
        draft.took(Kind::kXyzScale, repairs.line(table(index).dataLine).keyword,
                   std::string("XYZ of 0 to 1 ") + (haveDeviations ? "and their standard deviations " : "") +
                       "multiplied by 100; the largest Y was " + largest);
    }

    Repairs& repairs;
    Draft& draft;
};

void remarkOnDevice(Draft& draft, const Repairs& repairs, const OutlineTable& table, const TableForm& form) {
    const Columns cmyk = standardColumns(form, kCmykC, kCmykK);
    const Columns rgb = standardColumns(form, kRgbR, kRgbB);
    const Columns colorants = columnsWhere(form, [](const TableColumn& column) { return column.isColorant; });
    const Columns& device = !cmyk.empty() ? cmyk : !rgb.empty() ? rgb : colorants;
    if (device.empty())
        return;
    const double largest = extentOf(draft, table, form, device, kRowsThatTell).largest;
    const Span where = repairs.line(table.dataLine).keyword;
    const std::string name = !cmyk.empty() ? "CMYK" : !rgb.empty() ? "RGB" : "colorant";
    if (largest > kLargestInk)
        draft.remark(Kind::kDeviceScale, where,
                     name + " values such as " + generalText(largest, 6) + " are " +
                         (largest <= kByteTop ? "on a scale of 0 to 255, not of 0 to 100"
                                              : "beyond a scale of 0 to 100"));
    else if (largest > 0.0 && largest <= kOne && staysBelow(draft, table, form, device, kOne))
        draft.remark(Kind::kDeviceScale, where, name + " values are on a scale of 0 to 1, not of 0 to 100");
}

} // namespace

void repairScales(Repairs& repairs) {
    SpectralScales(repairs).run();
    XyzScales(repairs).run();
    for (std::size_t i = 0; i < repairs.outline.tables.size(); ++i) {
        if (repairs.tables[i].reading == RowReading::kNone)
            continue;
        remarkOnDevice(repairs.draft, repairs, repairs.outline.tables[i], repairs.tables[i]);
    }
}

} // namespace qxcms::detail
