#include "qc/device_pairing.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <utility>

#include "base/number_text.h"
#include "qc/count_text.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"
#include "qc/unused_samples.h"

namespace qxcms::qc {

namespace {

// In percent. Whole numbers on two scales are rounded on each, by half a unit.
double toleranceOf(const DeviceValues& measured, const DeviceValues& reference, const DeviceRanges& ranges) {
    if (ranges.measured == ranges.reference || std::min(ranges.measured, ranges.reference) <= 1 ||
        !measured.areWhole() || !reference.areWhole())
        return kDeviceTolerance;
    return std::max(kDeviceTolerance, 50.0 / ranges.measured + 50.0 / ranges.reference);
}

// On the grid.
Coordinate onGrid(double percent) {
    return static_cast<Coordinate>(std::lround(percent * kUnitsPerPercent));
}

// The rows of one chart by their device values.
struct Groups {
    PointSet points;                    // every device value once, ascending
    std::vector<std::vector<int>> rows; // of each, ascending
};

Groups grouped(const DeviceValues& values, double range) {
    const PointSet points = onGrid(values, range);
    const std::size_t width = points.dimensions;
    const auto pointOf = [&](int row) { return points.point(static_cast<std::size_t>(row)); };
    std::vector<int> order(points.size());
    std::iota(order.begin(), order.end(), 0);
    order.erase(std::remove_if(order.begin(), order.end(),
                               [&](int row) { return !values.fits(static_cast<std::size_t>(row), range); }),
                order.end());
    std::stable_sort(order.begin(), order.end(), [&](int left, int right) {
        return std::lexicographical_compare(pointOf(left), pointOf(left) + width, pointOf(right),
                                            pointOf(right) + width);
    });
    Groups groups{{width, {}}, {}};
    for (const int row : order) {
        const Coordinate* point = pointOf(row);
        if (groups.rows.empty() ||
            !std::equal(point, point + width, groups.points.point(groups.rows.size() - 1))) {
            groups.points.coordinates.insert(groups.points.coordinates.end(), point, point + width);
            groups.rows.emplace_back();
        }
        groups.rows.back().push_back(row);
    }
    return groups;
}

// What became of a measured device value.
enum class Outcome {
    paired,
    alone,  // no reference value lies within the tolerance
    atATie, // two lie equally near, or it and another measured one to the same
    outdone // another measured one lies nearer to its reference value
};

struct Counterpart {
    Outcome outcome;
    std::size_t reference; // the group, when paired
};

// The group of exactly this device value; the number of groups when there is none.
std::size_t groupOf(const Coordinate* point, const Groups& groups) {
    const std::size_t width = groups.points.dimensions;
    std::size_t begin = 0;
    std::size_t end = groups.rows.size();
    while (begin < end) {
        const std::size_t middle = begin + (end - begin) / 2;
        const Coordinate* other = groups.points.point(middle);
        if (std::lexicographical_compare(other, other + width, point, point + width))
            begin = middle + 1;
        else
            end = middle;
    }
    const bool found =
        begin < groups.rows.size() && std::equal(point, point + width, groups.points.point(begin));
    return found ? begin : groups.rows.size();
}

// Two device values belong together when each is the other's only nearest one, as equal ones are.
std::vector<Counterpart> counterparts(const Groups& measured, const Groups& reference, Coordinate tolerance) {
    const PointIndex measuredIndex(measured.points);
    const PointIndex referenceIndex(reference.points);
    std::vector<Counterpart> result;
    result.reserve(measured.rows.size());
    for (std::size_t group = 0; group < measured.rows.size(); ++group) {
        const std::size_t equal = groupOf(measured.points.point(group), reference);
        if (equal < reference.rows.size()) {
            result.push_back({Outcome::paired, equal});
            continue;
        }
        const NearestPoint there = referenceIndex.nearest(measured.points.point(group), tolerance);
        Counterpart counterpart{Outcome::alone, 0};
        if (there.point >= 0) {
            counterpart.reference = static_cast<std::size_t>(there.point);
            const NearestPoint back =
                measuredIndex.nearest(reference.points.point(counterpart.reference), there.distance);
            counterpart.outcome = back.distance < there.distance ? Outcome::outdone
                                  : there.unique && back.unique  ? Outcome::paired
                                                                 : Outcome::atATie;
        }
        result.push_back(counterpart);
    }
    return result;
}

// Measured rows that share a fate.
struct Rows {
    int count = 0;
    int first = -1;

    void add(const std::vector<int>& rows) {
        first = count == 0 ? rows.front() : std::min(first, rows.front());
        count += static_cast<int>(rows.size());
    }
};

struct Matching {
    DeviceRanges ranges;
    double tolerance = kDeviceTolerance; // in percent
    std::vector<RowPair> pairs;
    int usedReference = 0;
    int aside = 0; // measured rows that take no part
    Rows alone;
    Rows atATie;
    Rows outdone;
    Rows againstMean;
    Rows inTheirOrder;
    Rows againstOne;
    Rows offScale;
    Rows referenceOffScale;

    int unusedMeasured() const { return aside + alone.count + atATie.count + outdone.count + offScale.count; }
    bool isOfUnequalRepeats() const { return againstMean.count > 0 || againstOne.count > 0; }
};

// Rows of equal device values pair first with first, or each with all.
void addPairs(const std::vector<int>& measured, const std::vector<int>& reference, Matching& matching) {
    const bool oneByOne = measured.size() == reference.size();
    for (std::size_t i = 0; i < measured.size(); ++i)
        matching.pairs.push_back({measured[i], oneByOne ? std::vector<int>{reference[i]} : reference});
    matching.usedReference += static_cast<int>(reference.size());
    if (!oneByOne)
        (reference.size() > 1 ? matching.againstMean : matching.againstOne).add(measured);
    else if (measured.size() > 1)
        matching.inTheirOrder.add(measured);
}

Rows rowsOff(const DeviceValues& values, double range) {
    Rows rows;
    for (std::size_t row = 0; row < values.rows(); ++row)
        if (values.takesPart(row) && !values.fits(row, range))
            rows.add({static_cast<int>(row)});
    return rows;
}

Matching match(const DeviceValues& measured, const DeviceValues& reference, const DeviceRanges& ranges,
               double tolerance) {
    const Groups ours = grouped(measured, ranges.measured);
    const Groups theirs = grouped(reference, ranges.reference);
    Matching matching;
    matching.ranges = ranges;
    matching.tolerance = tolerance;
    matching.aside = static_cast<int>(measured.rows() - measured.rowsThatTakePart());
    const std::vector<Counterpart> found = counterparts(ours, theirs, onGrid(matching.tolerance));
    matching.offScale = rowsOff(measured, ranges.measured);
    matching.referenceOffScale = rowsOff(reference, ranges.reference);
    for (std::size_t group = 0; group < found.size(); ++group) {
        const std::vector<int>& rows = ours.rows[group];
        switch (found[group].outcome) {
        case Outcome::paired:
            addPairs(rows, theirs.rows[found[group].reference], matching);
            break;
        case Outcome::alone:
            matching.alone.add(rows);
            break;
        case Outcome::atATie:
            matching.atATie.add(rows);
            break;
        case Outcome::outdone:
            matching.outdone.add(rows);
            break;
        }
    }
    std::sort(matching.pairs.begin(), matching.pairs.end(),
              [](const RowPair& left, const RowPair& right) { return left.measured < right.measured; });
    return matching;
}

Matching match(const DeviceValues& measured, const DeviceValues& reference, const DeviceRanges& ranges) {
    return match(measured, reference, ranges, toleranceOf(measured, reference, ranges));
}

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

bool haveEqualPairs(const Matching& left, const Matching& right) {
    return std::equal(left.pairs.begin(), left.pairs.end(), right.pairs.begin(), right.pairs.end(),
                      [](const RowPair& one, const RowPair& other) {
                          return one.measured == other.measured && one.reference == other.reference;
                      });
}

// How the scales are read, and how certain that is.
struct Reading {
    Matching matching;
    std::optional<DeviceRanges> other; // that pairs other rows, not fewer by half
    bool byColors = false;             // these ruled it out
    bool asTheyStand = false;          // equal values, on whatever scale
    // The pairs within the usual tolerance, where rounding widens it.
    std::optional<std::size_t> within = std::nullopt;
};

bool isMuchBetter(double median, double than, double telling, double part) {
    return than > telling && median < than * part;
}

// Takes `next` in place of what is read so far where it pairs more rows, or as many of colours that agree
// better, or not so many of colours that agree far better.
void weigh(Reading& reading, Matching next, const MedianOf& medianOf) {
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
std::size_t rowsLeft(const Matching& matching, const DeviceValues& reference) {
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
        return {rounded};
    return {rounded, std::max(ours, theirs) + std::min(ours, theirs) / 2};
}

// Pairs as far as the steps of the values explain where that leaves out no more than half as many rows.
void widen(Reading& reading, const DeviceValues& measured, const DeviceValues& reference,
           const MedianOf& medianOf) {
    const std::size_t smaller = std::min(measured.rowsThatTakePart(), reference.rowsThatTakePart());
    if (!medianOf || smaller < kFewestOfScale)
        return;
    if (reading.matching.pairs.empty())
        reading.matching = match(measured, reference, possibleRanges(measured, reference).front());
    if (rowsLeft(reading.matching, reference) == 0)
        return;
    const DeviceRanges ranges = reading.matching.ranges;
    for (const double tolerance : tolerancesOfSteps(measured, reference, ranges)) {
        if (tolerance <= reading.matching.tolerance)
            continue;
        Matching next = match(measured, reference, ranges, tolerance);
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
std::optional<Reading> readAsTheyStand(const DeviceValues& measured, const DeviceValues& reference,
                                       const MedianOf& medianOf) {
    const DeviceRanges ranges = commonRange(measured, reference);
    const std::size_t smaller = std::min(measured.rowsThatTakePart(), reference.rowsThatTakePart());
    if (!medianOf || !(ranges.measured > 0) || smaller < kFewestOfScale)
        return std::nullopt;
    Reading reading;
    reading.matching = match(measured, reference, ranges, 0);
    reading.asTheyStand = true;
    if (kNearlyAll * rowsLeft(reading.matching, reference) > smaller ||
        !(medianOf(reading.matching.pairs) <= kOneChart))
        return std::nullopt;
    return reading;
}

// By the ranges that pair the most rows; where colours say otherwise, by these.
Reading bestOfScales(const DeviceValues& measured, const DeviceValues& reference, const MedianOf& medianOf) {
    Reading best;
    for (const DeviceRanges& ranges : possibleRanges(measured, reference))
        weigh(best, match(measured, reference, ranges), medianOf);
    const std::size_t smaller = std::min(measured.rowsThatTakePart(), reference.rowsThatTakePart());
    if (kNearlyNothing * best.matching.pairs.size() > smaller || smaller < kFewestOfScale)
        return best;
    for (const DeviceRanges& ranges : furtherRanges(measured, reference)) {
        Matching next = match(measured, reference, ranges);
        const bool pairsMost =
            2 * next.pairs.size() > smaller && next.pairs.size() > best.matching.pairs.size();
        if (pairsMost && medianOf && medianOf(next.pairs) <= kOneChart)
            best = {std::move(next), std::nullopt, false};
    }
    return best;
}

// Nothing where a side is on no scale and the values of both are not equal.
std::optional<Reading> bestReading(const DeviceValues& measured, const DeviceValues& reference,
                                   const MedianOf& medianOf) {
    if (possibleRanges(measured, reference).empty())
        return readAsTheyStand(measured, reference, medianOf);
    Reading best = bestOfScales(measured, reference, medianOf);
    widen(best, measured, reference, medianOf);
    return best;
}

// Where the colours of the pure inks say that the charts number them differently: a pure ink of one chart
// looks like another one of the other chart.
class InkOrder {
public:
    InkOrder(const DeviceValues& measuredValues, const DeviceValues& referenceValues,
             const DeviceRanges& ranges)
        : measured(purest(measuredValues, ranges.measured)),
          reference(purest(referenceValues, ranges.reference)) {}

    // The channel of the reference that a channel of the measured chart looks like, where it is another one.
    std::optional<std::size_t> counterpart(std::size_t channel, const MedianOf& medianOf) const {
        const double own = difference(channel, channel, medianOf);
        if (!(own > kOneChart))
            return std::nullopt;
        for (std::size_t other = 0; other < reference.size(); ++other)
            if (difference(channel, other, medianOf) < own * kVeryMuchSmaller)
                return other;
        return std::nullopt;
    }

private:
    // The row of the most of each ink alone; -1 where there is none of at least half.
    static std::vector<int> purest(const DeviceValues& values, double range) {
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

    double difference(std::size_t channel, std::size_t other, const MedianOf& medianOf) const {
        if (measured[channel] < 0 || reference[other] < 0)
            return std::nan("");
        return medianOf({{measured[channel], {reference[other]}}});
    }

    std::vector<int> measured;
    std::vector<int> reference;
};

/// Puts what there is to know about a pairing into words.
class Words {
public:
    Words(const Chart& measuredChart, const Chart& referenceChart, const DeviceChannels& shared,
          const DeviceValues& measuredDevice)
        : measured(measuredChart), reference(referenceChart), channels(shared),
          measuredValues(measuredDevice), measuredName(printable(measuredChart.name)),
          referenceName(printable(referenceChart.name)) {}

    // "CMYK 40 0 0 0"
    std::string valueOf(int row) const { return valueOf(row, measuredValues); }

    std::string valueOf(int row, const DeviceValues& values) const {
        std::string text = channels.name;
        const std::size_t first = static_cast<std::size_t>(row) * values.channels;
        for (std::size_t i = first; i < first + values.channels; ++i)
            text += ' ' + detail::generalText(values.values[i], 6);
        return text;
    }

    // "3 samples of FILE, the first in row 5 (CMYK 40 0 0 0), are", the last word being `one` or `many`.
    std::string subject(const Rows& rows, const char* one, const char* many) const {
        const std::string place =
            "row " + std::to_string(rows.first + 1) + " (" + valueOf(rows.first) + "), ";
        if (rows.count == 1)
            return "1 sample of " + measuredName + ", " + place + one;
        return countText(static_cast<std::size_t>(rows.count)) + " samples of " + measuredName +
               ", the first in " + place + many;
    }

    std::string onScale(const std::string& file, double range) const {
        return file + ": the " + channels.name + " values are taken to be on a scale of 0 to " +
               detail::generalText(range, 6);
    }

    void addScales(const Reading& reading, const DeviceValues& referenceValues,
                   std::vector<Finding>& findings) const {
        if (reading.asTheyStand) {
            addEquality(reading.matching, findings);
            return;
        }
        const DeviceRanges& ranges = reading.matching.ranges;
        const DeviceRanges others = reading.other.value_or(ranges);
        const bool rgb = channels.name == "RGB";
        const bool differ = ranges.measured != ranges.reference;
        const auto tell = [&](const std::string& file, const DeviceValues& values, double range,
                              double other) {
            const bool isUnusual = rgb ? differ || range == 1 || range > 255 : range != 100;
            if (range != other)
                addChoice(onScale(file, range), other, reading.byColors, findings);
            else if (values.range != 0 && isUnusual)
                add(findings, Finding::Severity::note, Finding::Kind::deviceScale, onScale(file, range));
        };
        tell(measuredName, measuredValues, ranges.measured, others.measured);
        tell(referenceName, referenceValues, ranges.reference, others.reference);
    }

    // That the tolerance is as wide as the steps of the values.
    void addSteps(const Reading& reading, const DeviceValues& referenceValues,
                  std::vector<Finding>& findings) const {
        if (!reading.within)
            return;
        const DeviceRanges& ranges = reading.matching.ranges;
        const double ours = measuredValues.step(ranges.measured);
        const double theirs = referenceValues.step(ranges.reference);
        const std::string files = ours == theirs  ? "both files"
                                  : ours > theirs ? measuredName
                                                  : referenceName;
        add(findings, Finding::Severity::note, Finding::Kind::ambiguousSamples,
            "the " + channels.name + " values of " + files + " stand in steps of " +
                detail::generalText(std::max(ours, theirs), 2) +
                " percent, as after rounding, so that they pair within " +
                detail::generalText(reading.matching.tolerance, 2) + " percent; within " +
                detail::generalText(kDeviceTolerance, 2) + " percent " + countText(*reading.within) +
                " instead of " + countText(reading.matching.pairs.size()) + " samples would pair");
    }

    void addOffScale(const Matching& matching, const DeviceValues& referenceValues,
                     std::vector<Finding>& findings) const {
        const auto tell = [&](const std::string& file, const Rows& rows, double range,
                              const DeviceValues& values) {
            if (rows.count > 0)
                add(findings, Finding::Severity::warning, Finding::Kind::deviceScale,
                    file + ": the " + channels.name + " values of " +
                        countText(static_cast<std::size_t>(rows.count)) + " of " + countText(values.rows()) +
                        " samples do not lie within 0 to " + detail::generalText(range, 6) +
                        ", the first in row " + std::to_string(rows.first + 1) + " (" +
                        valueOf(rows.first, values) + "); left out, correct them to have them compared");
        };
        tell(measuredName, matching.offScale, matching.ranges.measured, measuredValues);
        tell(referenceName, matching.referenceOffScale, matching.ranges.reference, referenceValues);
    }

    void addDoubts(const Reading& reading, const DeviceValues& referenceValues,
                   std::vector<Finding>& findings) const {
        const Matching& matching = reading.matching;
        const auto tell = [&](Finding::Severity severity, const std::string& text) {
            add(findings, severity, Finding::Kind::ambiguousSamples, text);
        };
        if (!reading.within && matching.tolerance > kDeviceTolerance)
            tell(Finding::Severity::note,
                 "the " + channels.name +
                     " values are whole numbers of two scales, so that they pair within " +
                     detail::generalText(matching.tolerance, 2) + " percent");
        const std::string colorants = differentColorants(measured, reference);
        if (!colorants.empty())
            tell(Finding::Severity::warning, colorants + "; they are taken for the same");
        if (isBlank(measured, measuredValues))
            tell(Finding::Severity::warning, blank(measuredName));
        if (isBlank(reference, referenceValues))
            tell(Finding::Severity::warning, blank(referenceName));
        if (matching.againstMean.count > 0)
            tell(Finding::Severity::note, subject(matching.againstMean, "is", "are") +
                                              " compared with the mean of the samples of " + referenceName +
                                              " that hold the same device values, as their numbers differ");
        if (matching.againstOne.count > 0)
            tell(Finding::Severity::note, subject(matching.againstOne, "repeats", "repeat") +
                                              " device values that " + referenceName +
                                              " holds once; each is compared with that one sample");
        if (matching.inTheirOrder.count > 0)
            tell(Finding::Severity::note, subject(matching.inTheirOrder, "repeats", "repeat") +
                                              " device values, as often as " + referenceName +
                                              " does; they are paired in their order");
        if (matching.atATie.count > 0)
            tell(Finding::Severity::warning,
                 subject(matching.atATie, "lies", "lie") +
                     " about as near to one device value as to another; left out");
        if (matching.outdone.count > 0)
            tell(Finding::Severity::warning, subject(matching.outdone, "lies", "lie") +
                                                 " near to a sample of " + referenceName +
                                                 " to which another measured one lies nearer; left out");
    }

    // Inks under numbers that colours contradict; CMYK and RGB say what they are.
    void addInkOrder(const Matching& matching, const DeviceValues& referenceValues, const MedianOf& medianOf,
                     std::vector<Finding>& findings) const {
        if (!medianOf || channels.name == "CMYK" || channels.name == "RGB")
            return;
        const InkOrder order(measuredValues, referenceValues, matching.ranges);
        std::string text;
        for (std::size_t channel = 0; channel < measuredValues.channels; ++channel) {
            const std::optional<std::size_t> other = order.counterpart(channel, medianOf);
            if (other)
                text += (text.empty() ? "" : ", ") +
                        printable(measured.columnName(channels.measured[channel])) + " of " + measuredName +
                        " as " + printable(reference.columnName(channels.reference[*other])) + " of " +
                        referenceName;
        }
        if (!text.empty())
            add(findings, Finding::Severity::warning, Finding::Kind::otherHues,
                "the pure inks look as if the files held them in another order: " + text +
                    "; name the columns of both files in one order");
    }

    // Repeated values may hide the samples of what is left out.
    void addLeftOut(const Matching& matching, std::vector<Finding>& findings) const {
        if (channels.leftOut.empty())
            return;
        const bool isDoubtful = channels.isPart() && matching.isOfUnequalRepeats();
        add(findings, isDoubtful ? Finding::Severity::warning : Finding::Severity::note,
            Finding::Kind::deviceScale,
            channels.leftOut +
                (isDoubtful ? "; check that the samples that repeat device values hold none either" : ""));
    }

private:
    static void add(std::vector<Finding>& findings, Finding::Severity severity, Finding::Kind kind,
                    const std::string& text) {
        findings.push_back({severity, kind, text});
    }

    static bool isBlank(const Chart& chart, const DeviceValues& values) {
        return chart.rows() > 1 && values.areEqualOnEveryRow();
    }

    void addEquality(const Matching& matching, std::vector<Finding>& findings) const {
        add(findings, Finding::Severity::note, Finding::Kind::deviceScale,
            "the " + channels.name + " values of " + measuredName + " and " + referenceName +
                " are on no known scale (the largest is " + detail::generalText(matching.ranges.measured, 6) +
                "), but equal, so that the samples are paired by equal values");
    }

    // That another scale would do, or that colours speak against it.
    static void addChoice(const std::string& text, double other, bool byColors,
                          std::vector<Finding>& findings) {
        const std::string range = detail::generalText(other, 6);
        if (byColors)
            add(findings, Finding::Severity::note, Finding::Kind::deviceScale,
                text + ", on which the colours agree far better than on one of 0 to " + range);
        else
            add(findings, Finding::Severity::warning, Finding::Kind::deviceScale,
                text + ", but as many samples would pair, with others, on one of 0 to " + range +
                    "; check the pairs, or pair by identifiers (--pair id)");
    }

    std::string blank(const std::string& file) const {
        return file + ": the " + channels.name +
               " values are the same on every row; if they were never filled in, pair by identifiers "
               "(--pair id)";
    }

    const Chart& measured;
    const Chart& reference;
    const DeviceChannels& channels;
    const DeviceValues& measuredValues;
    std::string measuredName;
    std::string referenceName;
};

} // namespace

bool canBeRead(const DeviceValues& measured, const DeviceValues& reference, const MedianOf& medianOf) {
    return !possibleRanges(measured, reference).empty() ||
           readAsTheyStand(measured, reference, medianOf).has_value();
}

Pairing pairByDeviceValues(const Chart& measured, const Chart& reference, const DeviceChannels& channels,
                           const MedianOf& medianOf) {
    const auto [ours, theirs] = sharedDeviceValues(measured, reference, channels);
    std::optional<Reading> read = bestReading(ours, theirs, medianOf);
    if (!read)
        throw Refusal(
            Refusal::Kind::notComparable,
            strangeValue(measured, reference, channels) +
                "; correct it, or let --pair id or --pair order pair the rows without device values");
    Reading& reading = *read;
    Matching& matching = reading.matching;
    if (matching.pairs.empty())
        throw Refusal(Refusal::Kind::notComparable,
                      "no " + channels.name + " value of " + printable(measured.name) +
                          " has a counterpart within " + detail::generalText(matching.tolerance, 2) +
                          " percent in " + printable(reference.name) +
                          ", so these seem to be two charts; --pair id or --pair order pairs them all the "
                          "same");
    Pairing pairing;
    pairing.rule = PairRule::deviceValues;
    pairing.by = channels.name;
    pairing.unusedMeasured = matching.unusedMeasured();
    pairing.unusedReference = reference.rows() - matching.usedReference;
    const Words words(measured, reference, channels, ours);
    words.addLeftOut(matching, pairing.findings);
    words.addScales(reading, theirs, pairing.findings);
    words.addOffScale(matching, theirs, pairing.findings);
    words.addSteps(reading, theirs, pairing.findings);
    words.addDoubts(reading, theirs, pairing.findings);
    words.addInkOrder(matching, theirs, medianOf, pairing.findings);
    pairing.pairs = std::move(matching.pairs);
    addUnusedSamples(
        measured, reference, [&](int row) { return words.valueOf(row); }, pairing);
    return pairing;
}

namespace {

// The pairs whose device values differ by more than the tolerance.
struct Contradiction {
    std::size_t count = 0;
    RowPair first = {};
    std::size_t channel = 0; // the first that differs in the first pair
};

Contradiction contradiction(const DeviceValues& measuredValues, const DeviceValues& referenceValues,
                            const DeviceRanges& ranges, const std::vector<RowPair>& pairs) {
    const PointSet measured = onGrid(measuredValues, ranges.measured);
    const PointSet reference = onGrid(referenceValues, ranges.reference);
    const Coordinate tolerance = onGrid(toleranceOf(measuredValues, referenceValues, ranges));
    Contradiction result;
    for (const RowPair& pair : pairs) {
        const auto row = static_cast<std::size_t>(pair.measured);
        const auto other = static_cast<std::size_t>(pair.reference.front());
        if (!measuredValues.fits(row, ranges.measured) || !referenceValues.fits(other, ranges.reference))
            continue;
        const Coordinate* ours = measured.point(row);
        const Coordinate* theirs = reference.point(other);
        for (std::size_t channel = 0; channel < measured.dimensions; ++channel) {
            if (std::abs(ours[channel] - theirs[channel]) <= tolerance)
                continue;
            if (result.count++ == 0) {
                result.first = pair;
                result.channel = channel;
            }
            break;
        }
    }
    return result;
}

} // namespace

std::optional<Finding> differentDeviceValues(const Chart& measured, const Chart& reference,
                                             const DeviceChannels& channels,
                                             const std::vector<RowPair>& pairs) {
    SharedDeviceValues both;
    try {
        both = sharedDeviceValues(measured, reference, channels);
    } catch (const Refusal&) {
        return std::nullopt;
    }
    const auto& [ours, theirs] = both;
    std::optional<Contradiction> least;
    for (const DeviceRanges& ranges : possibleRanges(ours, theirs)) {
        const Contradiction found = contradiction(ours, theirs, ranges, pairs);
        if (!least || found.count < least->count)
            least = found;
    }
    if (!least || least->count == 0)
        return std::nullopt;
    const auto rowOf = [&](int row) { return static_cast<std::size_t>(row); };
    const double left = ours.values[rowOf(least->first.measured) * ours.channels + least->channel];
    const double right =
        theirs.values[rowOf(least->first.reference.front()) * theirs.channels + least->channel];
    return Finding{
        Finding::Severity::warning, Finding::Kind::otherPairing,
        "the " + channels.name + " values of " + countText(least->count) + " of " + countText(pairs.size()) +
            " pairs differ, first " + printable(measured.columnName(channels.measured[least->channel])) +
            ", " + detail::generalText(left, 6) + " in row " + std::to_string(least->first.measured + 1) +
            " of " + printable(measured.name) + " and " + detail::generalText(right, 6) + " in row " +
            std::to_string(least->first.reference.front() + 1) + " of " + printable(reference.name)};
}

} // namespace qxcms::qc
