/// @file
/// Points on a grid, found by nearness. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qxcms::qc {

/// A coordinate within -1e9 .. 1e9, so that differences fit.
using Coordinate = std::int32_t;

/// Points of the same number of coordinates, one behind the other.
struct PointSet {
    std::size_t dimensions; ///< at least 1
    std::vector<Coordinate> coordinates;

    std::size_t size() const { return coordinates.size() / dimensions; }
    const Coordinate* point(std::size_t index) const { return coordinates.data() + index * dimensions; }
};

/// The point that lies nearest to another one; the distance is the largest difference of a coordinate.
struct NearestPoint {
    int point; ///< -1 when none lies within the limit
    Coordinate distance;
    bool unique; ///< no other one lies as near, for certain
};

/// Finds the nearest of many points (a k-d tree: each range of points is split near the median of the
/// coordinate that varies most, equal coordinates staying together).
class PointIndex {
public:
    /// @param indexed not owned; must stay as it is.
    explicit PointIndex(const PointSet& indexed);

    /// The point nearest to `target`, of those that lie no further than `limit`. Among very many points about
    /// as far away in many dimensions, the search gives up with what it has; that is not unique then.
    NearestPoint nearest(const Coordinate* target, Coordinate limit) const;

private:
    struct Search;

    struct Node {
        std::size_t begin; // of its range of `order`
        std::size_t end;
        std::size_t dimension;    // the split: the points of the lower node have at most ...
        Coordinate lowerLargest;  // this coordinate
        Coordinate upperSmallest; // and those of the upper one at least this
        std::size_t lower;        // 0 for a node that is not split
        std::size_t upper;
    };

    std::size_t addNode(std::size_t begin, std::size_t end);
    std::size_t widestDimension(std::size_t begin, std::size_t end) const;
    std::size_t splitAt(std::size_t begin, std::size_t end, std::size_t dimension);
    Coordinate coordinate(std::size_t position, std::size_t dimension) const;
    void visit(Search& search, const Node& node) const;
    void consider(Search& search, int index) const;

    const PointSet& points;
    std::vector<int> order; // of the points, range by range
    std::vector<Node> nodes;
};

} // namespace qxcms::qc
