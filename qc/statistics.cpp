#include "qc/statistics.h"

#include <algorithm>
#include <numeric>

namespace qxcms::qc {

namespace {

double medianOf(Span<const double> sorted) {
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

// The value of rank ceil(percent / 100 * n), counted from 1; the product is formed in whole numbers.
double percentileOf(Span<const double> sorted, int percent) {
    const std::size_t rank = (sorted.size() * static_cast<std::size_t>(percent) + 99) / 100;
    return sorted[rank - 1];
}

std::vector<double> inOrder(Span<const double> values) {
    std::vector<double> sorted(values.begin(), values.end());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

} // namespace

Statistics statistics(Span<const double> values) {
    const std::vector<double> sorted = inOrder(values);
    Statistics result;
    result.count = values.size();
    result.mean = std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
    result.median = medianOf(sorted);
    result.percentile90 = percentileOf(sorted, 90);
    result.percentile95 = percentileOf(sorted, 95);
    result.percentile99 = percentileOf(sorted, 99);
    result.maximum = sorted.back();
    result.greatest =
        static_cast<std::size_t>(std::max_element(values.begin(), values.end()) - values.begin());
    return result;
}

double percentile(Span<const double> values, int percent) {
    return percentileOf(inOrder(values), percent);
}

std::vector<std::size_t> worst(Span<const double> values, std::size_t count) {
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t left, std::size_t right) { return values[left] > values[right]; });
    order.resize(std::min(count, order.size()));
    return order;
}

} // namespace qxcms::qc
