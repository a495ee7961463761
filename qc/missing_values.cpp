#include "qc/missing_values.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <string>
#include <vector>

#include "qc/finding_words.h"
#include "qc/rows_found.h"

namespace qxcms::qc {

namespace {

// Fewer equal Lab or XYZ rows may be one colour measured again, rounded.
constexpr int kFewestEqualRows = 4;

// What conversions leave of a Lab of 0 0 0, with the slope of CIE 15 in four digits.
constexpr double kNothing = 1e-5;

bool areEqual(const Inspected& inspected) {
    if (inspected.spectra)
        return inspected.spectra->areEqual();
    const std::vector<Lab>& lab = inspected.lab;
    return inspected.chart.rows() >= kFewestEqualRows &&
           std::all_of(lab.begin(), lab.end(), [&](const Lab& row) { return row == lab.front(); });
}

bool areZero(const Inspected& inspected) {
    if (inspected.spectra)
        return inspected.spectra->areZero();
    const Lab& first = inspected.lab.front();
    return std::all_of(first.begin(), first.end(), [](double v) { return v == 0.0; });
}

const char* nameOfOne(ColorSource source) {
    switch (source) {
    case ColorSource::spectra:
        return "spectrum";
    case ColorSource::lab:
        return "Lab";
    case ColorSource::xyz:
        break;
    }
    return "XYZ";
}

// Black, or as much of several inks as of cyan, magenta and yellow together.
bool isFullInk(const Inks& inks, int row) {
    const std::vector<double> parts = inks.of(row);
    const bool isBlack = parts.size() > 3 && parts[3] >= kNearlyFullInk;
    const double total = std::accumulate(parts.begin(), parts.end(), 0.0);
    return isBlack || total >= 3.0 * kNearlyFullInk || inks.useSpots(row);
}

// The compared values of a row as they stand.
std::vector<double> valuesOf(const Inspected& inspected, int row) {
    const TCgatsTableHeader& header = inspected.chart.header();
    if (inspected.spectra) {
        std::vector<double> values(inspected.spectra->bands().size());
        inspected.chart.document->GetSpectrum(inspected.chart.table, row, values.data());
        return values;
    }
    const std::int32_t* const columns =
        inspected.source == ColorSource::xyz ? header.GetXyzColumns() : header.GetLabColumns();
    const auto value = [&](int column) { return inspected.chart.data().GetValues(column)->GetDouble(row); };
    return {value(columns[0]), value(columns[1]), value(columns[2])};
}

bool isNothing(const Inspected& inspected, int row) {
    if (isMarker(inspected, row))
        return false;
    if (inspected.spectra)
        return inspected.spectra->isZero(row);
    const Lab& color = inspected.labOf(row);
    return std::all_of(color.begin(), color.end(), [](double v) { return std::abs(v) < kNothing; });
}

const char* nothingOf(ColorSource source) {
    switch (source) {
    case ColorSource::spectra:
        return "the spectrum is 0 throughout";
    case ColorSource::lab:
        return "Lab is 0 0 0";
    case ColorSource::xyz:
        break;
    }
    return "XYZ is 0 0 0";
}

} // namespace

bool isMarker(const Inspected& inspected, int row) {
    // A spectrum is only looked at where something lies far below 0.
    if (inspected.spectra && inspected.spectra->negative().empty())
        return false;
    const std::vector<double> values = valuesOf(inspected, row);
    return values.size() > 1 && values.front() < 0.0 &&
           std::all_of(values.begin(), values.end(), [&](double value) { return value == values.front(); });
}

std::optional<Finding> findMarkers(const Inspected& inspected) {
    const Chart& chart = inspected.chart;
    RowsFound found;
    for (int row = 0; row < chart.rows(); ++row) {
        if (!isMarker(inspected, row))
            continue;
        const double value = valuesOf(inspected, row).front();
        found.add(row, -value, value);
    }
    if (found.empty())
        return std::nullopt;
    return warning(Finding::Kind::unmeasured,
                   fileAnd(chart, found.words(chart) + ": all values of the " + nameOfOne(inspected.source) +
                                      " are " + numberText(found.most()) +
                                      ", which marks samples that were not measured; leave these rows out"));
}

std::optional<Finding> findEqualRows(const Inspected& inspected) {
    if (!areEqual(inspected))
        return std::nullopt;
    return warning(Finding::Kind::equalSpectra,
                   fileAnd(inspected.chart,
                           "row 1 and all others of " + counted(inspected.chart.rows()) + " hold the same " +
                               nameOfOne(inspected.source) + (areZero(inspected) ? ", 0 throughout" : "") +
                               "; it looks like a target without measured values, so check that it is the "
                               "right file"));
}

std::optional<Finding> findUnmeasured(const Inspected& inspected) {
    const Chart& chart = inspected.chart;
    const Inks& inks = inspected.inks;
    int count = 0;
    int first = -1;
    for (int row = 0; row < chart.rows(); ++row) {
        if (!isNothing(inspected, row))
            continue;
        ++count;
        if (first < 0 && !(inks.areKnown() && isFullInk(inks, row)))
            first = row;
    }
    if (first < 0 || count == chart.rows())
        return std::nullopt;
    return Finding{count == 1 && !inks.areKnown() ? Finding::Severity::note : Finding::Severity::warning,
                   Finding::Kind::unmeasured,
                   placeOf(chart, first) + (count == 1 ? "" : " and " + counted(count - 1) + " more") + ": " +
                       nothingOf(inspected.source) + ", as of samples that were not measured"};
}

} // namespace qxcms::qc
