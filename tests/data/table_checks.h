// Checks that every table of published numbers gets: against its file in data/, its sum, its smoothness.
#pragma once

#include <charconv>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "tools/generators/csv.h"

namespace qxcms::tests {

inline std::string dataFile(const std::string& name) {
    return std::string(QXCMS_SOURCE_DIR "/data/") + name;
}

inline double number(std::string_view text) {
    double value = 0.0;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size())
        throw std::runtime_error("no number: " + std::string(text));
    return value;
}

/// A column of a file in data/ as numbers.
inline std::vector<double> csvColumn(const std::string& file, const std::string& title) {
    std::vector<double> values;
    for (const std::string& cell : generators::readCsv(dataFile(file)).column(title))
        values.push_back(number(cell));
    return values;
}

template <std::size_t N>
std::vector<double> asVector(const double (&table)[N]) {
    return {table, table + N};
}

inline double sum(const std::vector<double>& values) {
    double total = 0.0;
    for (const double value : values)
        total += value;
    return total;
}

/// The largest second difference of a table and the index of its middle value: digits that changed places
/// stand out as a bend that the curve does not have.
struct Bend {
    double size;
    std::size_t index;
};

inline Bend sharpestBend(const std::vector<double>& values) {
    Bend sharpest = {-1.0, 0};
    for (std::size_t i = 1; i + 1 < values.size(); ++i) {
        const double size = std::fabs(values[i + 1] - 2.0 * values[i] + values[i - 1]);
        if (size > sharpest.size + 1e-12)
            sharpest = {size, i};
    }
    return sharpest;
}

} // namespace qxcms::tests
