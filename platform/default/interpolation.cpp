#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <map>
#include <memory>
#include <memory_resource>
#include <utility>

#include "base/guarded.h"
#include "platform/utility.h"

namespace {

/// What a tree takes for a point: its coordinates, three links and a colour.
constexpr std::size_t kPointSize = sizeof(std::pair<const double, double>) + 4 * sizeof(void*);

/// Continuing a function to both sides takes a further point each.
constexpr std::size_t kFurtherPoints = 2;

/// The count is a hint: a table for more points than this grows with them.
constexpr int kMostAnnounced = 1 << 20;

std::size_t sizeFor(int count) {
    return (static_cast<std::size_t>(std::clamp(count, 0, kMostAnnounced)) + kFurtherPoints) * kPointSize;
}

} // namespace

/// The points by ascending x. A tree keeps the insertion of very many points fast in any order. It has room
/// for those that were announced, so that once there is a table no memory runs out on the way.
struct lin_interp_double {
    explicit lin_interp_double(std::size_t size)
        : room(std::make_unique_for_overwrite<std::byte[]>(size)), memory(room.get(), size), points(&memory) {
    }

    std::unique_ptr<std::byte[]> room;
    std::pmr::monotonic_buffer_resource memory;
    std::pmr::map<double, double> points;
};

lin_interp_double* lin_interp_double_new(int count) {
    return qxcms::detail::guarded(static_cast<lin_interp_double*>(nullptr),
                                  [&] { return new lin_interp_double(sizeFor(count)); });
}

int lin_interp_double_insert(lin_interp_double* table, double x, double y) {
    if (table == nullptr || !std::isfinite(x))
        return 1;
    // A point that is there already takes no room again.
    return qxcms::detail::guarded(1, [&] { return table->points.try_emplace(x, y).second ? 0 : 1; });
}

double lin_interp_double_inter(const lin_interp_double* table, double x) {
    if (table == nullptr || table->points.empty())
        return 0.0;
    if (std::isnan(x))
        return x;
    const auto above = table->points.upper_bound(x);
    if (above == table->points.begin())
        return above->second;
    const auto [x0, y0] = *std::prev(above);
    // At a point of the table the formula gives y0 as well, unless y1 - y0 is not finite.
    if (above == table->points.end() || x == x0)
        return y0;
    const auto [x1, y1] = *above;
    return y0 + (y1 - y0) * (x - x0) / (x1 - x0);
}

void lin_interp_double_kill(lin_interp_double* table) {
    delete table;
}
