#include "qc/statistics.h"

#include <algorithm>
#include <numeric>

namespace qxcms::qc {

namespace {

double medianOf(const std::vector<double>& sorted) {
    const std::size_t middle = sorted.size() / 2;
    return sorted.size() % 2 == 1 ? sorted[middle] : (sorted[middle - 1] + sorted[middle]) / 2;
}

// The value of rank ceil(0.95 n), counted from 1; the product is formed in whole numbers.
double percentile95Of(const std::vector<double>& sorted) {
    const std::size_t rank = (sorted.size() * 95 + 99) / 100;
    return sorted[rank - 1];
}

} // namespace

Statistics statistics(const std::vector<double>& values) {
    std::vector<double> sorted = values;
    std::sort(sorted.begin(), sorted.end());
    Statistics result;
    result.count = values.size();
    result.mean = std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
    result.median = medianOf(sorted);
    result.percentile95 = percentile95Of(sorted);
    result.maximum = sorted.back();
    result.greatest =
        static_cast<std::size_t>(std::max_element(values.begin(), values.end()) - values.begin());
    return result;
}

std::vector<std::size_t> worst(const std::vector<double>& values, std::size_t count) {
    std::vector<std::size_t> order(values.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t left, std::size_t right) { return values[left] > values[right]; });
    order.resize(std::min(count, order.size()));
    return order;
}

} // namespace qxcms::qc
