#include <cmath>
#include <iterator>
#include <map>
#include <new>

#include "base/guarded.h"
#include "platform/utility.h"

/// The points by ascending x. A tree keeps the insertion of very many points fast in any order.
struct lin_interp_double {
    std::map<double, double> points;
};

// The expected count is a hint that a tree has no use for.
lin_interp_double* lin_interp_double_new(int) {
    return new (std::nothrow) lin_interp_double;
}

int lin_interp_double_insert(lin_interp_double* table, double x, double y) {
    if (table == nullptr || !std::isfinite(x))
        return 1;
    return qxcms::detail::guarded(1, [&] { return table->points.emplace(x, y).second ? 0 : 1; });
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
