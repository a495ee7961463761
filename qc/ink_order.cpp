#include "qc/ink_order.h"

#include <algorithm>
#include <cmath>

namespace qxcms::qc {

namespace {

// Of one chart printed twice a pure ink differs by no more than this, and another one looks like it where its
// difference is below this part.
constexpr double kOneChart = 10.0;
constexpr double kVeryMuchSmaller = 0.25;

// The row of the most of each ink alone; -1 where there is none of at least half.
std::vector<int> purest(const DeviceValues& values, double range) {
    std::vector<int> rows(values.channels, -1);
    std::vector<double> most(values.channels, range / 2);
    for (std::size_t row = 0; row < values.rows(); ++row) {
        const auto first = values.values.begin() + static_cast<std::ptrdiff_t>(row * values.channels);
        const auto last = first + static_cast<std::ptrdiff_t>(values.channels);
        const auto inked = std::find_if(first, last, [](double value) { return value != 0; });
        const bool isPure =
            inked != last && std::all_of(inked + 1, last, [](double value) { return value == 0; });
        const auto channel = static_cast<std::size_t>(inked - first);
        if (!isPure || !values.fits(row, range) || *inked < most[channel])
            continue;
        rows[channel] = static_cast<int>(row);
        most[channel] = *inked;
    }
    return rows;
}

} // namespace

InkOrder::InkOrder(const DeviceValues& measuredValues, const DeviceValues& referenceValues,
                   const DeviceRanges& ranges)
    : measured(purest(measuredValues, ranges.measured)),
      reference(purest(referenceValues, ranges.reference)) {}

std::optional<std::size_t> InkOrder::counterpart(std::size_t channel, const MedianOf& medianOf) const {
    const double own = difference(channel, channel, medianOf);
    if (!(own > kOneChart))
        return std::nullopt;
    for (std::size_t other = 0; other < reference.size(); ++other)
        if (difference(channel, other, medianOf) < own * kVeryMuchSmaller)
            return other;
    return std::nullopt;
}

double InkOrder::difference(std::size_t channel, std::size_t other, const MedianOf& medianOf) const {
    if (measured[channel] < 0 || reference[other] < 0)
        return std::nan("");
    return medianOf({{measured[channel], {reference[other]}}});
}

} // namespace qxcms::qc
