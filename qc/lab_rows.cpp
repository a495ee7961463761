#include "qc/lab_rows.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>

#include "base/number_text.h"
#include "qc/chart_numbers.h"
#include "qc/conditions.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"
#include "qc/table_choice.h"
#include "spectral/tspectrum.h"

namespace qxcms::qc {

namespace {

Refusal unusable(const std::string& message) {
    return Refusal(Refusal::Kind::unreadable, message);
}

// Refuses a row whose values are finite but so large that its Lab is not.
void requireFiniteLab(const Chart& chart, int row, const Lab& lab, const std::int32_t* columns) {
    if (std::all_of(lab.begin(), lab.end(), [](double value) { return std::isfinite(value); }))
        return;
    throw unusable(placeOf(chart, row, columns[0]) +
                   " and following: the values are too large to give a Lab value");
}

// Refuses wavelengths that no spectrum can take; they are the same for every row, so the first one is named.
void requireSpectrum(const Chart& chart, const std::vector<int>& wavelengths) {
    const std::int32_t* columns = chart.header().GetSpectralColumns();
    if (wavelengths.size() > TSpectrum::kMaxSamples)
        throw unusable(placeOf(chart, 0, columns[TSpectrum::kMaxSamples]) + ": the table has " +
                       std::to_string(wavelengths.size()) + " spectral columns; a spectrum takes at most " +
                       std::to_string(TSpectrum::kMaxSamples));
    for (std::size_t i = 1; i < wavelengths.size(); ++i) {
        if (wavelengths[i] == wavelengths[i - 1])
            throw unusable(placeOf(chart, 0, columns[i]) + ": column " +
                           quoted(chart.columnName(columns[i - 1])) + " (number " +
                           std::to_string(columns[i - 1] + 1) + ") gives a value at " +
                           std::to_string(wavelengths[i]) +
                           " nm already; a spectrum takes one value per wavelength, so rename or remove one");
    }
}

std::vector<int> wavelengthsOf(const Chart& chart) {
    std::vector<int> wavelengths(static_cast<std::size_t>(chart.header().GetNrWaveLengths()));
    chart.document->GetWaveLengths(chart.table, wavelengths.data());
    return wavelengths;
}

// Tristimulus values whose white has Y = 1 stay below this, and XYZ of 0 to 100 of anything that is compared
// rises above it.
constexpr double kLargestUnitY = 2.0;
constexpr double kUnitScale = 100.0;

void readSpectra(const Chart& chart, const Conditions& conditions, std::vector<Lab>& rows) {
    const std::vector<int> wavelengths = wavelengthsOf(chart);
    requireSpectrum(chart, wavelengths);
    const std::vector<double> nanometres(wavelengths.begin(), wavelengths.end());
    const std::int32_t* columns = chart.header().GetSpectralColumns();
    const int bands = static_cast<int>(wavelengths.size());
    std::vector<double> values(wavelengths.size());
    for (int row = 0; row < chart.rows(); ++row) {
        chart.document->GetSpectrum(chart.table, row, values.data());
        requireFinite(chart, row, values.data(), columns, bands);
        const TSpectrum spectrum(nanometres.data(), bands, values.data());
        if (spectrum.GetStatus() != 0)
            throw std::bad_alloc();
        rows.push_back(conditions.labOf(spectrum));
        requireFiniteLab(chart, row, rows.back(), columns);
    }
}

void readLab(const Chart& chart, std::vector<Lab>& rows) {
    const std::int32_t* columns = chart.header().GetLabColumns();
    for (int row = 0; row < chart.rows(); ++row) {
        Lab lab;
        chart.document->GetLab(chart.table, row, lab.data());
        requireFinite(chart, row, lab.data(), columns, 3);
        rows.push_back(lab);
    }
}

double largestY(const Chart& chart) {
    double largest = 0.0;
    for (int row = 0; row < chart.rows(); ++row) {
        std::array<double, 3> xyz;
        chart.document->GetXyz(chart.table, row, xyz.data());
        largest = std::max(largest, xyz[1]);
    }
    return largest;
}

void readXyz(const Chart& chart, const Conditions& conditions, std::vector<Lab>& rows) {
    const std::int32_t* columns = chart.header().GetXyzColumns();
    const double largest = largestY(chart);
    const double scale = largest < kLargestUnitY ? kUnitScale : 1.0;
    for (int row = 0; row < chart.rows(); ++row) {
        std::array<double, 3> xyz;
        chart.document->GetXyz(chart.table, row, xyz.data());
        requireFinite(chart, row, xyz.data(), columns, 3);
        for (double& value : xyz)
            value *= scale;
        rows.push_back(conditions.labOf(xyz));
        requireFiniteLab(chart, row, rows.back(), columns);
    }
}

constexpr ColorSource kSources[] = {ColorSource::spectra, ColorSource::lab, ColorSource::xyz};

const char* wordsFor(ColorSource source) {
    switch (source) {
    case ColorSource::spectra:
        return "spectra";
    case ColorSource::lab:
        return "Lab values";
    case ColorSource::xyz:
        return "XYZ values";
    }
    return "";
}

// The first table with colour data; -1 when there is none.
int firstTableWithColor(const TCgats& document) {
    for (int table = 0; table < document.GetNrTables(); ++table) {
        if (holdsColor(document, table))
            return table;
    }
    return -1;
}

std::string withoutColor(const Chart& chart) {
    const int tables = chart.document->GetNrTables();
    const int other = firstTableWithColor(*chart.document);
    std::string text = printable(chart.name);
    if (tables > 1)
        text += ": table " + std::to_string(chart.table + 1) + " of " + std::to_string(tables);
    text += " holds no colour data: neither spectral columns (SPECTRAL_380 ...) nor LAB_L, LAB_A, LAB_B nor "
            "XYZ_X, XYZ_Y, XYZ_Z; ";
    if (other >= 0)
        return text + "table " + std::to_string(other + 1) + " does (" + optionsForTable(other) + ")";
    return text + "a column that a KEYWORD line declares is text";
}

std::string sourcesOf(const Chart& chart) {
    std::string text;
    for (const ColorSource source : kSources) {
        if (holds(chart, source))
            text += std::string(text.empty() ? "" : " and ") + wordsFor(source);
    }
    return text;
}

} // namespace

ColorSource colorSource(const Chart& chart, std::optional<ColorSource> wanted) {
    const std::string present = sourcesOf(chart);
    if (wanted && !holds(chart, *wanted) && !present.empty())
        throw Refusal(Refusal::Kind::notComparable,
                      printable(chart.name) + " holds no " + wordsFor(*wanted) + ", only " + present);
    for (const ColorSource source : kSources) {
        if (holds(chart, source))
            return wanted.value_or(source);
    }
    throw Refusal(Refusal::Kind::notComparable, withoutColor(chart));
}

std::vector<std::int32_t> columnsOf(const Chart& chart, ColorSource source) {
    const TCgatsTableHeader& header = chart.header();
    switch (source) {
    case ColorSource::spectra:
        return {header.GetSpectralColumns(), header.GetSpectralColumns() + header.GetNrWaveLengths()};
    case ColorSource::lab:
        return {header.GetLabColumns(), header.GetLabColumns() + 3};
    case ColorSource::xyz:
        return {header.GetXyzColumns(), header.GetXyzColumns() + 3};
    }
    return {};
}

std::vector<Lab> labRows(const Chart& chart, ColorSource source, const Conditions* conditions) {
    std::vector<Lab> result;
    switch (source) {
    case ColorSource::spectra:
        readSpectra(chart, *conditions, result);
        break;
    case ColorSource::lab:
        readLab(chart, result);
        break;
    case ColorSource::xyz:
        readXyz(chart, *conditions, result);
        break;
    }
    return result;
}

Lab labOfSpectrum(const Chart& chart, int row, const Conditions& conditions, const SpectralReading& reading) {
    const std::vector<int> wavelengths = wavelengthsOf(chart);
    std::vector<double> nanometres(wavelengths.begin(), wavelengths.end());
    if (nanometres.size() > 1) {
        const double shift = reading.shiftedBands * (nanometres[1] - nanometres[0]);
        for (double& nanometre : nanometres)
            nanometre += shift;
    }
    std::vector<double> values(wavelengths.size());
    chart.document->GetSpectrum(chart.table, row, values.data());
    if (reading.isReversed)
        std::reverse(values.begin(), values.end());
    const TSpectrum spectrum(nanometres.data(), static_cast<int>(values.size()), values.data());
    if (spectrum.GetStatus() != 0)
        throw std::bad_alloc();
    return conditions.labOf(spectrum);
}

} // namespace qxcms::qc
