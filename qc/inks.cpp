#include "qc/inks.h"

#include <algorithm>

#include "qc/device_values.h"

namespace qxcms::qc {

Inks::Inks(const Chart& chart) : inspected(chart) {
    const TCgatsTableHeader& header = chart.header();
    if (chart.document->ContainsProcessColors(chart.table))
        columns.assign(header.GetColorColumns(), header.GetColorColumns() + header.GetNrColors());
    if (columns.empty())
        takeRgb();
    spots.assign(header.GetSpotColumns(), header.GetSpotColumns() + header.GetNrSpots());
    if (!isUsable(columns) || !isUsable(spots))
        columns.clear();
    full = columns.empty() ? 0.0 : fullScale();
}

bool Inks::haveKnownColors() const {
    return haveNamedColors() || inspected.header().GetColorKind() == TCgatsTableHeader::kNColors;
}

bool Inks::haveNamedColors() const {
    return rgb || inspected.header().GetColorKind() == TCgatsTableHeader::kCmyk;
}

bool Inks::useSpots(int row) const {
    return std::any_of(spots.begin(), spots.end(),
                       [&](int column) { return !(value(row, column) <= kInkTolerance * full); });
}

bool Inks::isPaper(int row) const {
    const std::vector<double> parts = of(row);
    return !useSpots(row) &&
           std::all_of(parts.begin(), parts.end(), [](double part) { return part <= kInkTolerance; });
}

std::vector<double> Inks::of(int row) const {
    std::vector<double> parts;
    for (const std::int32_t column : columns) {
        const double part = value(row, column) / full;
        parts.push_back(rgb ? 1.0 - part : part);
    }
    return parts;
}

double Inks::value(int row, int column) const {
    return inspected.data().GetValues(column)->GetDouble(row);
}

void Inks::takeRgb() {
    for (const char* name : {"RGB_R", "RGB_G", "RGB_B"})
        columns.push_back(inspected.document->GetFieldNameIndex(inspected.table, name));
    rgb = isUsable(columns);
}

// Every column is there and holds numbers.
bool Inks::isUsable(const Columns& wanted) const {
    return std::all_of(wanted.begin(), wanted.end(), [&](int column) {
        return column >= 0 && inspected.header().GetField(column)->GetDataType() != TCgatsField::kString &&
               std::none_of(inspected.doubts.begin(), inspected.doubts.end(),
                            [&](const DoubtfulValue& doubt) { return doubt.column == column; });
    });
}

// The full value of the scale; 0 where it cannot be told.
double Inks::fullScale() const {
    double largest = 0.0;
    for (int row = 0; row < inspected.rows(); ++row)
        for (const std::int32_t column : columns)
            largest = std::max(largest, value(row, column));
    return std::max(deviceRange(largest), 0.0);
}

} // namespace qxcms::qc
