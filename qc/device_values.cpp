#include "qc/device_values.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "platform/utility.h"
#include "qc/chart_numbers.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

using Columns = std::vector<std::int32_t>;

struct Scale {
    double range;
    double largest; // that is taken for a value of it
};

constexpr Scale kScales[] = {{1, 1}, {100, 100.5}, {255, 255.5}};

// Nor may values lie below 0 by more than this part of the range.
constexpr double kBelowZero = 0.005;

// The columns RGB_R, RGB_G and RGB_B; none unless there are all three, as numbers.
Columns rgbColumns(const Chart& chart) {
    Columns columns;
    for (const char* name : {"RGB_R", "RGB_G", "RGB_B"}) {
        const int column = chart.document->GetFieldNameIndex(chart.table, name);
        if (column < 0 || chart.header().GetField(column)->GetDataType() != TCgatsField::kFloat)
            return {};
        columns.push_back(column);
    }
    return columns;
}

bool hasInks(const Chart& chart) {
    return chart.header().GetNrColors() > 0 || chart.header().GetNrSpots() > 0;
}

// The columns of process and spot colours by channel; -1 for a channel without a column.
Columns inkColumns(const Chart& chart) {
    const TCgatsTableHeader& header = chart.header();
    Columns columns(header.GetColorColumns(), header.GetColorColumns() + header.GetNrColors());
    columns.insert(columns.end(), header.GetSpotColumns(), header.GetSpotColumns() + header.GetNrSpots());
    return columns;
}

bool hasGap(const Columns& columns) {
    return std::find(columns.begin(), columns.end(), -1) != columns.end();
}

bool haveEqualInks(const TCgatsTableHeader& left, const TCgatsTableHeader& right) {
    return left.GetColorKind() == right.GetColorKind() && left.GetNrColors() == right.GetNrColors() &&
           left.GetNrSpots() == right.GetNrSpots();
}

std::string nameOfProcess(const TCgatsTableHeader& header) {
    switch (header.GetColorKind()) {
    case TCgatsTableHeader::kCmyk:
        return "CMYK";
    case TCgatsTableHeader::kNColors:
        return std::to_string(header.GetNrColors()) + "CLR";
    case TCgatsTableHeader::kCustomColors:
        return "PC" + std::to_string(header.GetNrColors());
    default:
        return "";
    }
}

std::string nameOfInks(const TCgatsTableHeader& header) {
    std::string name = nameOfProcess(header);
    if (header.GetNrSpots() > 0)
        name += name.empty() ? "SPOT" : " and SPOT";
    return name;
}

// What the header lines call the process colours of a custom space, or the spot colours; none where a name is
// missing.
std::vector<std::string> colorantNames(const Chart& chart, bool spots) {
    const TCgats& document = *chart.document;
    const int count = spots                                   ? document.GetNrSpotColors(chart.table)
                      : document.IsCustomDefined(chart.table) ? document.GetNrProcessColors(chart.table)
                                                              : 0;
    std::vector<const char*> names(static_cast<std::size_t>(std::max(count, 0)), nullptr);
    if (names.empty())
        return {};
    const int error = spots ? document.GetSpotColorDescriptions(chart.table, names.data())
                            : document.GetCustomProcessColorDescriptions(chart.table, names.data());
    if (error != 0 || std::find(names.begin(), names.end(), nullptr) != names.end())
        return {};
    return {names.begin(), names.end()};
}

double rangeOf(double largest) {
    if (largest <= 0)
        return 0;
    const auto* scale = std::find_if(std::begin(kScales), std::end(kScales),
                                     [&](const Scale& s) { return largest <= s.largest; });
    return scale == std::end(kScales) ? -1 : scale->range;
}

Refusal onNoScale(const Chart& chart, const Columns& columns, std::size_t index, double value) {
    const auto row = static_cast<int>(index / columns.size());
    return Refusal(Refusal::Kind::notComparable,
                   placeOf(chart, row, columns[index % columns.size()]) + ": the device value " +
                       detail::generalText(value, 6) +
                       " is on none of the scales 0 to 1, 0 to 100 and 0 to 255; correct it, or let "
                       "--pair id or --pair order pair the rows without device values");
}

} // namespace

std::optional<DeviceChannels> sharedChannels(const Chart& measured, const Chart& reference) {
    DeviceChannels channels;
    if (hasInks(measured) && hasInks(reference)) {
        if (!haveEqualInks(measured.header(), reference.header()))
            return std::nullopt;
        channels = {nameOfInks(measured.header()), inkColumns(measured), inkColumns(reference)};
    } else {
        channels = {"RGB", rgbColumns(measured), rgbColumns(reference)};
    }
    if (channels.measured.empty() || channels.reference.empty() || hasGap(channels.measured) ||
        hasGap(channels.reference))
        return std::nullopt;
    return channels;
}

std::string nameOfDeviceValues(const Chart& chart) {
    if (hasInks(chart))
        return nameOfInks(chart.header());
    return rgbColumns(chart).empty() ? "" : "RGB";
}

std::string differentColorants(const Chart& measured, const Chart& reference) {
    for (const bool spots : {false, true}) {
        const std::vector<std::string> ours = colorantNames(measured, spots);
        const std::vector<std::string> theirs = colorantNames(reference, spots);
        for (std::size_t i = 0; i < std::min(ours.size(), theirs.size()); ++i) {
            if (strcmp_ci(ours[i].c_str(), theirs[i].c_str()) != 0)
                return (spots ? "spot colour " : "process colour ") + std::to_string(i + 1) + " is " +
                       quoted(ours[i]) + " in " + printable(measured.name) + " and " + quoted(theirs[i]) +
                       " in " + printable(reference.name);
        }
    }
    return "";
}

bool DeviceValues::areEqualOnEveryRow() const {
    return std::equal(values.begin() + static_cast<std::ptrdiff_t>(channels), values.end(), values.begin());
}

DeviceValues deviceValues(const Chart& chart, const std::vector<std::int32_t>& columns) {
    requireNumbers(chart, columns);
    const auto channels = static_cast<int>(columns.size());
    DeviceValues result{columns.size(), {}, 0};
    result.values.reserve(columns.size() * static_cast<std::size_t>(chart.rows()));
    for (int row = 0; row < chart.rows(); ++row) {
        for (const std::int32_t column : columns)
            result.values.push_back(chart.data().GetValues(column)->GetDouble(row));
        requireFinite(chart, row, result.values.data() + result.values.size() - columns.size(),
                      columns.data(), channels);
    }
    const auto [least, largest] = std::minmax_element(result.values.begin(), result.values.end());
    result.range = rangeOf(*largest);
    const auto indexOf = [&](auto value) { return static_cast<std::size_t>(value - result.values.begin()); };
    if (result.range < 0)
        throw onNoScale(chart, columns, indexOf(largest), *largest);
    if (*least < -kBelowZero * result.range)
        throw onNoScale(chart, columns, indexOf(least), *least);
    return result;
}

std::vector<DeviceRanges> possibleRanges(const DeviceValues& measured, const DeviceValues& reference) {
    const double ours = measured.range;
    const double theirs = reference.range;
    if (ours == 0 && theirs == 0)
        return {{100, 100}};
    const double larger = std::max(ours, theirs);
    if (ours == theirs || ours == 0 || theirs == 0)
        return {{larger, larger}};
    return {{ours, theirs}, {larger, larger}};
}

PointSet onGrid(const DeviceValues& values, double range) {
    PointSet points{values.channels, {}};
    points.coordinates.reserve(values.values.size());
    for (const double value : values.values)
        points.coordinates.push_back(
            static_cast<Coordinate>(std::lround(value * (100.0 * kUnitsPerPercent) / range)));
    return points;
}

} // namespace qxcms::qc
