/// @file
/// The device values of two charts. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/point_index.h"

namespace qxcms::qc {

/// The channels that two charts have in common.
struct DeviceChannels {
    std::string name;                    ///< "CMYK", "6CLR", "PC2", "SPOT", "CMYK and SPOT", "RGB"
    std::vector<std::int32_t> measured;  ///< the columns by channel
    std::vector<std::int32_t> reference; ///< as many
};

/// Process and spot colours, RGB where not both charts have such; nothing where these are not the same, or
/// where the numbering of the channels has a gap.
std::optional<DeviceChannels> sharedChannels(const Chart& measured, const Chart& reference);

/// What the device values of a chart are, as in DeviceChannels; empty where it has none.
std::string nameOfDeviceValues(const Chart& chart);

/// Where both charts name their process or spot colours, and the names differ: the first such channel in
/// words; else empty.
std::string differentColorants(const Chart& measured, const Chart& reference);

/// The device values of a chart, row by row, as they stand.
struct DeviceValues {
    std::size_t channels;
    std::vector<double> values;
    double range; ///< 1, 100 or 255: the smallest that holds them; 0 when all are 0

    bool areEqualOnEveryRow() const;
    std::size_t rows() const { return values.size() / channels; }
};

/// @throws Refusal (unreadable) for a value that is no finite number; Refusal (notComparable) for one that is
/// on no known scale.
DeviceValues deviceValues(const Chart& chart, const std::vector<std::int32_t>& columns);

/// The ranges that the values of two charts are taken to have.
struct DeviceRanges {
    double measured;
    double reference;
};

/// First the smallest of each side. Where these differ, the side of the smaller one may be part of a larger
/// chart and have the range of the other: dark patches of an RGB chart stay below 100.
std::vector<DeviceRanges> possibleRanges(const DeviceValues& measured, const DeviceValues& reference);

/// So many units of the grid are one percent of the range.
constexpr int kUnitsPerPercent = 10000;

/// The values on a grid.
PointSet onGrid(const DeviceValues& values, double range);

} // namespace qxcms::qc
