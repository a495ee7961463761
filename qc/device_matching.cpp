#include "qc/device_matching.h"

#include <cmath>
#include <cstddef>
#include <numeric>

namespace qxcms::qc {

namespace {

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

// Rows of equal device values pair first with first, or each with all.
void addPairs(const std::vector<int>& measured, const std::vector<int>& reference, DeviceMatching& matching) {
    const bool oneByOne = measured.size() == reference.size();
    for (std::size_t i = 0; i < measured.size(); ++i)
        matching.pairs.push_back({measured[i], oneByOne ? std::vector<int>{reference[i]} : reference});
    matching.usedReference += static_cast<int>(reference.size());
    if (!oneByOne)
        (reference.size() > 1 ? matching.againstMean : matching.againstOne).add(measured);
    else if (measured.size() > 1)
        matching.inTheirOrder.add(measured);
}

DeviceMatching::Rows rowsOff(const DeviceValues& values, double range) {
    DeviceMatching::Rows rows;
    for (std::size_t row = 0; row < values.rows(); ++row)
        if (values.takesPart(row) && !values.fits(row, range))
            rows.add({static_cast<int>(row)});
    return rows;
}

} // namespace

double toleranceOf(const DeviceValues& measured, const DeviceValues& reference, const DeviceRanges& ranges) {
    if (ranges.measured == ranges.reference || std::min(ranges.measured, ranges.reference) <= 1 ||
        !measured.areWhole() || !reference.areWhole())
        return kDeviceTolerance;
    return std::max(kDeviceTolerance, 50.0 / ranges.measured + 50.0 / ranges.reference);
}

Coordinate onGrid(double percent) {
    return static_cast<Coordinate>(std::lround(percent * kUnitsPerPercent));
}

DeviceMatching matchDeviceValues(const DeviceValues& measured, const DeviceValues& reference,
                                 const DeviceRanges& ranges, double tolerance) {
    const Groups ours = grouped(measured, ranges.measured);
    const Groups theirs = grouped(reference, ranges.reference);
    DeviceMatching matching;
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

DeviceMatching matchDeviceValues(const DeviceValues& measured, const DeviceValues& reference,
                                 const DeviceRanges& ranges) {
    return matchDeviceValues(measured, reference, ranges, toleranceOf(measured, reference, ranges));
}

} // namespace qxcms::qc
