#include "qc/device_values.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

#include "base/number_text.h"
#include "qc/chart_numbers.h"
#include "qc/device_numbers.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

using Columns = std::vector<std::int32_t>;

struct Scale {
    double range;
    double smallestTop; // that the largest value of a chart must reach
    double largest;     // that is taken for a value of it
};

// Numbers of 10 and 16 bits show what they are by their white alone.
constexpr Scale kScales[] = {
    {1, 0, 1.005}, {100, 0, 100.5}, {255, 0, 255.5}, {1023, 1022.5, 1023.5}, {65535, 65534.5, 65535.5}};
// Beyond the scales that need no white, a value is wrong unless all are on one of the others.
constexpr double kUsualLargest = 255.5;
// Wrong values stand in fewer than one of so many rows, where the largest of them could be that of a scale.
constexpr std::size_t kFewRows = 20;

// Nor may values lie below 0 by more than this part of the range.
constexpr double kBelowZero = 0.005;

// Values are taken for multiples of a step that differ by no more than this part of it.
constexpr double kPartOfStep = 1e-6;
// In percent.
constexpr double kLargestStep = 1.0;

// Of a range that is no scale, it is the range itself.
double topOf(double range) {
    const auto* scale = std::find_if(std::begin(kScales), std::end(kScales),
                                     [&](const Scale& s) { return s.range == range; });
    return scale == std::end(kScales) ? range : scale->largest;
}

// What the rows without a value beyond the usual scales hold.
struct Usual {
    double largest = 0;
    std::size_t rows = 0;
};

Usual usualRows(const DeviceValues& device) {
    Usual usual;
    for (std::size_t row = 0; row < device.rows(); ++row) {
        if (!device.takesPart(row))
            continue;
        const auto first = device.values.begin() + static_cast<std::ptrdiff_t>(row * device.channels);
        const double most = *std::max_element(first, first + static_cast<std::ptrdiff_t>(device.channels));
        if (most > kUsualLargest)
            continue;
        usual.largest = std::max(usual.largest, most);
        ++usual.rows;
    }
    return usual;
}

double largestOf(const DeviceValues& device) {
    double largest = -std::numeric_limits<double>::infinity();
    for (std::size_t i = 0; i < device.values.size(); ++i)
        if (device.takesPart(i / device.channels))
            largest = std::max(largest, device.values[i]);
    return largest;
}

double rangeOf(const DeviceValues& device) {
    const Usual usual = usualRows(device);
    const std::size_t rows = device.rowsThatTakePart();
    const bool areMoreThanFew = kFewRows * (rows - usual.rows) >= rows;
    const double largest = largestOf(device);
    const double range = deviceRange(areMoreThanFew ? largest : usual.largest);
    if (range >= 0 && device.mostFit(range == 0 ? kScales[0].range : range))
        return range;
    const double rangeOfUsual = deviceRange(usual.largest);
    return device.mostFit(rangeOfUsual) ? rangeOfUsual : -1;
}

} // namespace

double deviceRange(double largest) {
    if (largest <= 0)
        return 0;
    const auto* scale = std::find_if(std::begin(kScales), std::end(kScales), [&](const Scale& s) {
        return s.smallestTop <= largest && largest <= s.largest;
    });
    return scale == std::end(kScales) ? -1 : scale->range;
}

bool DeviceValues::areEqualOnEveryRow() const {
    std::optional<std::size_t> first;
    for (std::size_t row = 0; row < rows(); ++row) {
        if (!takesPart(row))
            continue;
        const auto begin = values.begin() + static_cast<std::ptrdiff_t>(row * channels);
        const auto other = values.begin() + static_cast<std::ptrdiff_t>(first.value_or(row) * channels);
        if (!std::equal(begin, begin + static_cast<std::ptrdiff_t>(channels), other))
            return false;
        first = first.value_or(row);
    }
    return true;
}

bool DeviceValues::areWhole() const {
    return std::all_of(values.begin(), values.end(), [](double value) { return value == std::floor(value); });
}

std::size_t DeviceValues::rowsThatTakePart() const {
    return rows() - static_cast<std::size_t>(std::count(aside.begin(), aside.end(), true));
}

bool DeviceValues::fits(std::size_t row, double scale) const {
    const auto first = values.begin() + static_cast<std::ptrdiff_t>(row * channels);
    const double top = topOf(scale);
    return takesPart(row) &&
           std::all_of(first, first + static_cast<std::ptrdiff_t>(channels),
                       [&](double value) { return value >= -kBelowZero * scale && value <= top; });
}

bool DeviceValues::mostFit(double scale) const {
    std::size_t fitting = 0;
    for (std::size_t row = 0; row < rows(); ++row)
        fitting += fits(row, scale) ? 1U : 0U;
    return 2 * fitting > rowsThatTakePart();
}

double DeviceValues::step(double scale) const {
    const auto areMultiples = [&](double stepsPerUnit) {
        for (std::size_t i = 0; i < values.size(); ++i) {
            const double steps = values[i] * stepsPerUnit;
            if (fits(i / channels, scale) && std::abs(steps - std::round(steps)) > kPartOfStep)
                return false;
        }
        return true;
    };
    for (const double stepsPerUnit : {1.0, 10.0, 100.0, 1000.0}) {
        if (!areMultiples(stepsPerUnit))
            continue;
        const double percent = 100.0 / (stepsPerUnit * scale);
        return percent <= kLargestStep ? percent : 0;
    }
    return 0;
}

namespace {

DeviceValues deviceValues(const Chart& chart, const Columns& columns, const Columns& alone) {
    requireNumbers(chart, columns);
    const auto channels = static_cast<int>(columns.size());
    DeviceValues result{columns.size(), {}, 0, alone.empty() ? std::vector<bool>() : rowsWith(chart, alone)};
    result.values.reserve(columns.size() * static_cast<std::size_t>(chart.rows()));
    for (int row = 0; row < chart.rows(); ++row) {
        for (const std::int32_t column : columns)
            result.values.push_back(numberAt(chart, row, column));
        requireFinite(chart, row, result.values.data() + result.values.size() - columns.size(),
                      columns.data(), channels);
    }
    result.range = rangeOf(result);
    return result;
}

} // namespace

SharedDeviceValues sharedDeviceValues(const Chart& measured, const Chart& reference,
                                      const DeviceChannels& channels) {
    return {deviceValues(measured, channels.measured, channels.measuredAlone),
            deviceValues(reference, channels.reference, channels.referenceAlone)};
}

std::vector<DeviceRanges> possibleRanges(const DeviceValues& measured, const DeviceValues& reference) {
    const double ours = measured.range;
    const double theirs = reference.range;
    const double larger = std::max(ours, theirs);
    if (std::min(ours, theirs) < 0) {
        const bool isOfLarger = larger > 0 && (ours < 0 ? measured : reference).mostFit(larger);
        return isOfLarger ? std::vector<DeviceRanges>{{larger, larger}} : std::vector<DeviceRanges>();
    }
    if (larger == 0)
        return {{100, 100}};
    const double smaller = std::min(ours, theirs);
    if (ours == theirs || smaller == 0)
        return {{larger, larger}};
    std::vector<DeviceRanges> ranges = {{ours, theirs}, {larger, larger}};
    if ((ours == larger ? measured : reference).mostFit(smaller))
        ranges.push_back({smaller, smaller});
    return ranges;
}

std::vector<DeviceRanges> furtherRanges(const DeviceValues& measured, const DeviceValues& reference) {
    std::vector<DeviceRanges> ranges;
    if (measured.range <= 0 || reference.range <= 0)
        return ranges;
    const auto isAnother = [](const Scale& scale, const DeviceValues& values) {
        return scale.smallestTop == 0 && scale.range != values.range && values.mostFit(scale.range);
    };
    for (const Scale& scale : kScales) {
        if (isAnother(scale, measured))
            ranges.push_back({scale.range, reference.range});
        if (isAnother(scale, reference))
            ranges.push_back({measured.range, scale.range});
    }
    return ranges;
}

DeviceRanges commonRange(const DeviceValues& measured, const DeviceValues& reference) {
    const double largest = std::max(largestOf(measured), largestOf(reference));
    return {largest, largest};
}

std::string strangeValue(const Chart& measured, const Chart& reference, const DeviceChannels& channels) {
    const SharedDeviceValues both = sharedDeviceValues(measured, reference, channels);
    const bool isOurs = both.measured.range < 0;
    const DeviceValues& values = isOurs ? both.measured : both.reference;
    const std::vector<std::int32_t>& columns = isOurs ? channels.measured : channels.reference;
    const auto [least, largest] = std::minmax_element(values.values.begin(), values.values.end());
    const auto strange = deviceRange(*largest) < 0 ? largest : least;
    const auto index = static_cast<std::size_t>(strange - values.values.begin());
    return placeOf(isOurs ? measured : reference, static_cast<int>(index / columns.size()),
                   columns[index % columns.size()]) +
           ": the device value " + detail::generalText(*strange, 6) +
           " is on none of the scales 0 to 1, 0 to 100, 0 to 255, 0 to 1023 and 0 to 65535 (the last two "
           "shown "
           "by a value that is just the largest)";
}

PointSet onGrid(const DeviceValues& values, double range) {
    PointSet points{values.channels, {}};
    points.coordinates.reserve(values.values.size());
    for (std::size_t row = 0; row < values.rows(); ++row) {
        const bool fits = values.fits(row, range);
        for (std::size_t i = row * values.channels; i < (row + 1) * values.channels; ++i)
            points.coordinates.push_back(static_cast<Coordinate>(
                fits ? std::lround(values.values[i] * (100.0 * kUnitsPerPercent) / range) : 0));
    }
    return points;
}

} // namespace qxcms::qc
