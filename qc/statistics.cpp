#include "qc/statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace qxcms::qc {

namespace {

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

double medianOf(Span<const double> sorted) {
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

// The value of rank ceil(percent / 100 * n), counted from 1; the product is formed in whole numbers.
double percentileOf(Span<const double> sorted, int percent) {
    const std::size_t rank = (sorted.size() * static_cast<std::size_t>(percent) + 99) / 100;
    return sorted[rank - 1];
}

// Behind every number.
bool isLess(double left, double right) {
    return std::isnan(right) ? !std::isnan(left) : left < right;
}

bool haveFigures(Span<const double> values) {
    return !values.empty() &&
           std::none_of(values.begin(), values.end(), [](double value) { return std::isnan(value); });
}

std::vector<double> inOrder(Span<const double> values) {
    std::vector<double> sorted(values.begin(), values.end());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

} // namespace

Statistics statistics(Span<const double> values) {
    Statistics result{values.size(), kNoNumber, kNoNumber, kNoNumber, kNoNumber, kNoNumber, kNoNumber, 0};
    result.greatest =
        static_cast<std::size_t>(std::max_element(values.begin(), values.end(), isLess) - values.begin());
    if (!haveFigures(values))
        return result;
    const std::vector<double> sorted = inOrder(values);
    result.mean = std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
    result.median = medianOf(sorted);
    result.percentile90 = percentileOf(sorted, 90);
    result.percentile95 = percentileOf(sorted, 95);
    result.percentile99 = percentileOf(sorted, 99);
    result.maximum = sorted.back();
    return result;
}

double percentile(Span<const double> values, int percent) {
    if (!haveFigures(values) || percent < 1 || percent > 100)
        return kNoNumber;
    const std::vector<double> sorted = inOrder(values);
    return percentileOf(sorted, percent);
}

std::vector<std::size_t> worst(Span<const double> values, std::size_t count) {
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
        return isLess(values[right], values[left]);
    });
    order.resize(std::min(count, order.size()));
    return order;
}

} // namespace qxcms::qc
