#include "qc/point_index.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <numeric>

namespace qxcms::qc {

namespace {

// Ranges of so few points are looked through one by one.
constexpr std::size_t kLeafSize = 8;

// After so many points a search gives up, so that points made to lie close together in 15 dimensions do not
// cost the square of their number. Charts need about a hundred.
constexpr std::size_t kMostConsidered = 1000;

} // namespace

struct PointIndex::Search {
    const Coordinate* target;
    Coordinate bound; // nothing beyond is of interest
    std::size_t considered;
    NearestPoint found;
};

PointIndex::PointIndex(const PointSet& indexed) : points(indexed), order(indexed.size()) {
    std::iota(order.begin(), order.end(), 0);
    addNode(0, order.size());
}

Coordinate PointIndex::coordinate(std::size_t position, std::size_t dimension) const {
    return points.point(static_cast<std::size_t>(order[position]))[dimension];
}

std::size_t PointIndex::widestDimension(std::size_t begin, std::size_t end) const {
    std::size_t widest = 0;
    Coordinate width = -1;
    for (std::size_t dimension = 0; dimension < points.dimensions; ++dimension) {
        Coordinate least = std::numeric_limits<Coordinate>::max();
        Coordinate largest = std::numeric_limits<Coordinate>::min();
        for (std::size_t position = begin; position < end; ++position) {
            least = std::min(least, coordinate(position, dimension));
            largest = std::max(largest, coordinate(position, dimension));
        }
        if (largest - least > width) {
            width = largest - least;
            widest = dimension;
        }
    }
    return widest;
}

// Puts the points of a range below the median in front of the others; where none lie below it, those at it.
// @return the position of the first of the others; `end` when all are equal.
std::size_t PointIndex::splitAt(std::size_t begin, std::size_t end, std::size_t dimension) {
    const auto at = [this](std::size_t position) {
        return order.begin() + static_cast<std::ptrdiff_t>(position);
    };
    const auto valueOf = [&](int index) { return points.point(static_cast<std::size_t>(index))[dimension]; };
    const std::size_t middle = begin + (end - begin) / 2;
    std::nth_element(at(begin), at(middle), at(end),
                     [&](int left, int right) { return valueOf(left) < valueOf(right); });
    const Coordinate median = coordinate(middle, dimension);
    auto split = std::partition(at(begin), at(end), [&](int index) { return valueOf(index) < median; });
    if (split == at(begin))
        split = std::partition(at(begin), at(end), [&](int index) { return valueOf(index) <= median; });
    return static_cast<std::size_t>(split - order.begin());
}

std::size_t PointIndex::addNode(std::size_t begin, std::size_t end) {
    const std::size_t number = nodes.size();
    nodes.push_back({begin, end, 0, 0, 0, 0, 0});
    if (end - begin <= kLeafSize)
        return number;
    const std::size_t dimension = widestDimension(begin, end);
    const std::size_t split = splitAt(begin, end, dimension);
    if (split == end)
        return number;
    Coordinate largest = coordinate(begin, dimension);
    for (std::size_t position = begin; position < split; ++position)
        largest = std::max(largest, coordinate(position, dimension));
    Coordinate smallest = coordinate(split, dimension);
    for (std::size_t position = split; position < end; ++position)
        smallest = std::min(smallest, coordinate(position, dimension));
    const std::size_t lower = addNode(begin, split);
    const std::size_t upper = addNode(split, end);
    nodes[number] = {begin, end, dimension, largest, smallest, lower, upper};
    return number;
}

NearestPoint PointIndex::nearest(const Coordinate* target, Coordinate limit) const {
    Search search{target, limit, 0, {-1, 0, false}};
    visit(search, nodes.front());
    if (search.considered >= kMostConsidered)
        search.found.unique = false;
    return search.found;
}

// The nearer node first: what is found there may leave out the other one.
void PointIndex::visit(Search& search, const Node& node) const {
    if (node.lower == 0) {
        for (std::size_t position = node.begin; position < node.end; ++position)
            consider(search, order[position]);
        return;
    }
    const Coordinate toLower = search.target[node.dimension] - node.lowerLargest;
    const Coordinate toUpper = node.upperSmallest - search.target[node.dimension];
    const bool lowerFirst = toLower < toUpper;
    const Coordinate distances[] = {lowerFirst ? toLower : toUpper, lowerFirst ? toUpper : toLower};
    const std::size_t children[] = {lowerFirst ? node.lower : node.upper,
                                    lowerFirst ? node.upper : node.lower};
    for (int i = 0; i < 2; ++i) {
        if (distances[i] <= search.bound && search.considered < kMostConsidered)
            visit(search, nodes[children[i]]);
    }
}

void PointIndex::consider(Search& search, int index) const {
    ++search.considered;
    const Coordinate* point = points.point(static_cast<std::size_t>(index));
    Coordinate distance = 0;
    for (std::size_t i = 0; i < points.dimensions; ++i) {
        distance = std::max(distance, std::abs(point[i] - search.target[i]));
        if (distance > search.bound)
            return;
    }
    const bool nearer = search.found.point < 0 || distance < search.found.distance;
    search.found = {nearer ? index : search.found.point, distance, nearer};
    search.bound = distance;
}

} // namespace qxcms::qc
