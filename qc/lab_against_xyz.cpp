#include "qc/lab_against_xyz.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "qc/finding_words.h"
#include "qc/relative_xyz.h"
#include "qc/rows_found.h"
#include "qc/xyz_scale_check.h"

namespace qxcms::qc {

namespace {

constexpr double kLabTolerance = 0.5;
// What rounding makes of Lab at most, in units of its last decimal.
constexpr double kLabRounding = 0.87;
// What rounding makes of XYZ in percent of the white, in units of their last decimal: a half, more for the Z
// of whites of low colour temperature.
constexpr double kXyzRounding = 0.7;

// To how many decimals the values of three columns are written.
int decimalsOf(const Chart& chart, const std::int32_t* columns) {
    constexpr int kMostDecimals = 6;
    constexpr double kBinaryError = 1e-7;
    int decimals = 0;
    double unit = 1.0;
    for (int i = 0; i < 3; ++i) {
        for (int row = 0; row < chart.rows() && decimals < kMostDecimals; ++row) {
            const double value = chart.data().GetValues(columns[i])->GetDouble(row);
            while (decimals < kMostDecimals &&
                   std::abs(value * unit - std::round(value * unit)) > kBinaryError * unit) {
                unit *= 10.0;
                ++decimals;
            }
        }
    }
    return decimals;
}

double distance(const Lab& left, const Lab& right) {
    return std::hypot(left[0] - right[0], left[1] - right[1], left[2] - right[2]);
}

// What Lab and XYZ may differ by.
struct Limits {
    double lab;
    double xyz; // in percent of the white
};

Limits limitsOf(const Chart& chart) {
    const auto unitOf = [&](const std::int32_t* columns) {
        return std::pow(10.0, -decimalsOf(chart, columns));
    };
    return {kLabTolerance + kLabRounding * unitOf(chart.header().GetLabColumns()),
            kXyzRounding * unitOf(chart.header().GetXyzColumns()) * scaleOfXyz(chart)};
}

// How far Lab moves at most when X, Y and Z move by so much of the white.
double labErrorOf(const Lab& lab, double xyzError) {
    constexpr unsigned kDirections = 8;
    const std::array<double, 3> percent = relativeXyzOf(lab);
    double largest = 0.0;
    for (unsigned direction = 0; direction < kDirections; ++direction) {
        std::array<double, 3> moved = percent;
        for (std::size_t i = 0; i < moved.size(); ++i)
            moved[i] += (direction >> i & 1U) != 0 ? xyzError : -xyzError;
        largest = std::max(largest, distance(labOfRelativeXyz(moved), lab));
    }
    return largest;
}

// By more than both limits together.
bool differ(const Lab& stated, const Lab& computed, const Limits& limits) {
    const double apart = distance(stated, computed);
    return apart > limits.lab && apart > limits.lab + labErrorOf(computed, limits.xyz);
}

std::vector<Lab> labColumnsOf(const Chart& chart) {
    std::vector<Lab> lab(static_cast<std::size_t>(chart.rows()));
    for (int row = 0; row < chart.rows(); ++row)
        chart.document->GetLab(chart.table, row, lab[static_cast<std::size_t>(row)].data());
    return lab;
}

std::optional<Finding> compareLab(const Chart& chart, const std::vector<Lab>& stated,
                                  const std::vector<Lab>& computed) {
    const Limits limits = limitsOf(chart);
    RowsFound apart;
    RowsFound apartWhenExchanged;
    for (int row = 0; row < chart.rows(); ++row) {
        const Lab& given = stated[static_cast<std::size_t>(row)];
        const Lab& wanted = computed[static_cast<std::size_t>(row)];
        const double plain = distance(given, wanted);
        const Lab exchanged = {given[0], given[2], given[1]};
        if (differ(given, wanted, limits))
            apart.add(row, plain, plain);
        if (differ(exchanged, wanted, limits))
            apartWhenExchanged.add(row, 0.0, 0.0);
    }
    if (apart.empty())
        return std::nullopt;
    const bool isExchange =
        2 * apart.rows() >= chart.rows() && 10 * apartWhenExchanged.rows() <= chart.rows();
    if (isExchange)
        return warning(Finding::Kind::exchangedAxes,
                       apart.told(chart, "Delta E ") +
                           " between Lab and XYZ, which agree when a* and b* are exchanged; check the "
                           "columns LAB_A and LAB_B");
    return warning(
        Finding::Kind::labAgainstXyz,
        apart.told(chart, "Delta E ") +
            " between the Lab and the XYZ of one row, beyond 0.5 and what rounding makes; find out which of "
            "the two is right (another white, other conditions or an edited value)");
}

} // namespace

std::optional<Finding> findLabAgainstXyz(const Inspected& inspected) {
    const Chart& chart = inspected.chart;
    if (inspected.source == ColorSource::xyz && chart.document->ContainsLab(chart.table))
        return compareLab(chart, labColumnsOf(chart), inspected.lab);
    if (inspected.source == ColorSource::spectra || inspected.labFromXyz.empty())
        return std::nullopt;
    return compareLab(chart, inspected.lab, inspected.labFromXyz);
}

} // namespace qxcms::qc
