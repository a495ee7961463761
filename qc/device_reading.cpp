#include "qc/device_reading.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace qxcms::qc {

namespace {

// Colours tell which of two readings is right where the median difference of one is above this ...
constexpr double kTellingDifference = 1.0;
// ... and that of the other below this part of it. One that pairs fewer rows must show it by more.
constexpr double kMuchSmaller = 0.5;
constexpr double kClearDifference = 3.0;
constexpr double kVeryMuchSmaller = 0.25;
// Scales that pair no more than one row of so many may be others ...
constexpr std::size_t kNearlyNothing = 5;
// ... if the smaller chart has so many rows, and the colours of the pairs differ by no more than this.
constexpr std::size_t kFewestOfScale = 4;
constexpr double kOneChart = 10.0;
// Values on no known scale are those of one where no more than one row of so many lacks an equal one.
constexpr std::size_t kNearlyAll = 10;
// In percent. Where both sides stand in steps larger than this, values a step apart are those of two samples.
constexpr double kLargestEqualStep = 0.5;

bool haveEqualPairs(const DeviceMatching& left, const DeviceMatching& right) {
    return std::equal(left.pairs.begin(), left.pairs.end(), right.pairs.begin(), right.pairs.end(),
                      [](const RowPair& one, const RowPair& other) {
                          return one.measured == other.measured && one.reference == other.reference;
                      });
}

bool isMuchBetter(double median, double than, double telling, double part) {
    return than > telling && median < than * part;
}

// Takes `next` in place of what is read so far where it pairs more rows, or as many of colours that agree
// better, or not so many of colours that agree far better.
void weigh(DeviceReading& reading, DeviceMatching next, const MedianOf& medianOf) {
    const std::size_t count = reading.matching.pairs.size();
    const std::size_t others = next.pairs.size();
    const bool isMore = others > count;
    const std::size_t fewer = std::min(count, others);
    if (2 * fewer < std::max(count, others) || fewer == 0 || haveEqualPairs(reading.matching, next)) {
        if (isMore)
            reading = {std::move(next), std::nullopt, false};
        return;
    }
    const bool areEqual = count == others;
    const double telling = areEqual ? kTellingDifference : kClearDifference;
    const double part = areEqual ? kMuchSmaller : kVeryMuchSmaller;
    const double ours = medianOf ? medianOf(reading.matching.pairs) : 0;
    const double theirs = medianOf ? medianOf(next.pairs) : 0;
    const bool isBetter = isMuchBetter(theirs, ours, telling, part);
    const bool isWorse = isMuchBetter(ours, theirs, telling, part);
    // Where nothing else decides, files of one chart use one scale.
    const bool isOneScale = areEqual && next.ranges.measured == next.ranges.reference;
    const bool takesNext = isBetter || ((isMore || isOneScale) && !isWorse);
    const DeviceRanges other = takesNext ? reading.matching.ranges : next.ranges;
    const bool isToldOf = areEqual || (takesNext ? isBetter && !isMore : isWorse && isMore);
    if (takesNext)
        reading = {std::move(next), std::nullopt, false};
    if (isToldOf && !reading.other) {
        reading.other = other;
        reading.byColors = isBetter || isWorse;
    }
}

// The rows without a counterpart on the side that has fewer of them.
std::size_t rowsLeft(const DeviceMatching& matching, const DeviceValues& reference) {
    const auto theirs = static_cast<int>(reference.rowsThatTakePart()) - matching.usedReference;
    return static_cast<std::size_t>(
        std::max(std::min(matching.unusedMeasured() - matching.aside, theirs), 0));
}

// By which values of one sample may differ that stand in steps, in percent: first where both are rounded,
// then where those of the larger step are cut off.
std::vector<double> tolerancesOfSteps(const DeviceValues& measured, const DeviceValues& reference,
                                      const DeviceRanges& ranges) {
    const double ours = measured.step(ranges.measured);
    const double theirs = reference.step(ranges.reference);
    const double rounded = (ours + theirs) / 2;
    if (ours == theirs)
        return ours > kLargestEqualStep ? std::vector<double>() : std::vector<double>{rounded};
    return {rounded, std::max(ours, theirs) + std::min(ours, theirs) / 2};
}

// Pairs as far as the steps of the values explain where that leaves out no more than half as many rows.
void widen(DeviceReading& reading, const DeviceValues& measured, const DeviceValues& reference,
           const MedianOf& medianOf) {
    const std::size_t smaller = std::min(measured.rowsThatTakePart(), reference.rowsThatTakePart());
    if (!medianOf || smaller < kFewestOfScale)
        return;
    if (reading.matching.pairs.empty())
        reading.matching =
            matchDeviceValues(measured, reference, possibleRanges(measured, reference).front());
    if (rowsLeft(reading.matching, reference) == 0)
        return;
    const DeviceRanges ranges = reading.matching.ranges;
    for (const double tolerance : tolerancesOfSteps(measured, reference, ranges)) {
        if (tolerance <= reading.matching.tolerance)
            continue;
        DeviceMatching next = matchDeviceValues(measured, reference, ranges, tolerance);
        const std::size_t left = rowsLeft(next, reference);
        if (2 * left > rowsLeft(reading.matching, reference) || 2 * left >= smaller ||
            next.pairs.size() <= reading.matching.pairs.size() || !(medianOf(next.pairs) <= kOneChart))
            continue;
        if (!reading.within)
            reading.within = reading.matching.pairs.size();
        reading.matching = std::move(next);
    }
}

// By equal values, whatever their scale; nothing where these are not those of one chart.
std::optional<DeviceReading> readAsTheyStand(const DeviceValues& measured, const DeviceValues& reference,
                                             const MedianOf& medianOf) {
    const DeviceRanges ranges = commonRange(measured, reference);
    const std::size_t smaller = std::min(measured.rowsThatTakePart(), reference.rowsThatTakePart());
    if (!medianOf || !(ranges.measured > 0) || smaller < kFewestOfScale)
        return std::nullopt;
    DeviceReading reading;
    reading.matching = matchDeviceValues(measured, reference, ranges, 0);
    reading.asTheyStand = true;
    if (kNearlyAll * rowsLeft(reading.matching, reference) > smaller ||
        !(medianOf(reading.matching.pairs) <= kOneChart))
        return std::nullopt;
    return reading;
}

// By the ranges that pair the most rows; where colours say otherwise, by these.
DeviceReading bestOfScales(const DeviceValues& measured, const DeviceValues& reference,
                           const MedianOf& medianOf) {
    DeviceReading best;
    for (const DeviceRanges& ranges : possibleRanges(measured, reference))
        weigh(best, matchDeviceValues(measured, reference, ranges), medianOf);
    const std::size_t smaller = std::min(measured.rowsThatTakePart(), reference.rowsThatTakePart());
    if (kNearlyNothing * best.matching.pairs.size() > smaller || smaller < kFewestOfScale)
        return best;
    for (const DeviceRanges& ranges : furtherRanges(measured, reference)) {
        DeviceMatching next = matchDeviceValues(measured, reference, ranges);
        const bool pairsMost =
            2 * next.pairs.size() > smaller && next.pairs.size() > best.matching.pairs.size();
        if (pairsMost && medianOf && medianOf(next.pairs) <= kOneChart)
            best = {std::move(next), std::nullopt, false};
    }
    return best;
}

} // namespace

std::optional<DeviceReading> bestReading(const DeviceValues& measured, const DeviceValues& reference,
                                         const MedianOf& medianOf) {
    if (possibleRanges(measured, reference).empty())
        return readAsTheyStand(measured, reference, medianOf);
    DeviceReading best = bestOfScales(measured, reference, medianOf);
    widen(best, measured, reference, medianOf);
    return best;
}

bool canBeRead(const DeviceValues& measured, const DeviceValues& reference, const MedianOf& medianOf) {
    return !possibleRanges(measured, reference).empty() ||
           readAsTheyStand(measured, reference, medianOf).has_value();
}

} // namespace qxcms::qc
