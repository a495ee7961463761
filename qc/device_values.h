/// @file
/// The device values of two charts and the scales that they are on. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/device_channels.h"
#include "qc/point_index.h"

namespace qxcms::qc {

/// The largest value of the scale of device values whose largest is this: 1, 100 or 255 where it is one of
/// these or less (by half a unit or half a percent more), 1023 or 65535 where it is just that; 0 where it is
/// 0 or less, -1 where no scale is known.
double deviceRange(double largest);

/// The device values of a chart, row by row, as they stand.
struct DeviceValues {
    std::size_t channels;
    std::vector<double> values;
    double range; ///< the smallest that holds them, but for less than half of the rows; 0 when all of them
                  ///< are 0, -1 when there is none
    std::vector<bool> aside = {}; ///< the rows that take no part; empty where all do

    bool areEqualOnEveryRow() const;
    bool areWhole() const;
    std::size_t rows() const { return values.size() / channels; }
    bool takesPart(std::size_t row) const { return aside.empty() || !aside[row]; }
    std::size_t rowsThatTakePart() const;
    /// Whether a row takes part, and all of its values lie on a scale.
    bool fits(std::size_t row, double scale) const;
    /// Whether more than half of the rows that take part do.
    bool mostFit(double scale) const;
    /// The steps in which the values stand, by their decimals, in percent of a scale: 1 for whole percent. 0
    /// where there is none that matters: below a thousandth of a unit, or above one percent, as such values
    /// are exact.
    double step(double scale) const;
};

/// Of the channels that two charts share.
struct SharedDeviceValues {
    DeviceValues measured;
    DeviceValues reference;
};

/// @throws Refusal (unreadable) for a value that is no finite number.
SharedDeviceValues sharedDeviceValues(const Chart& measured, const Chart& reference,
                                      const DeviceChannels& channels);

/// The ranges that the values of two charts are taken to have.
struct DeviceRanges {
    double measured;
    double reference;
};

/// First the smallest of each side. Where these differ, the side of the smaller one may be part of a larger
/// chart and have the range of the other (dark patches of an RGB chart stay below 100), and a few rows of the
/// other may be wrong. None where a side is on no scale.
std::vector<DeviceRanges> possibleRanges(const DeviceValues& measured, const DeviceValues& reference);

/// Those in which one side has another of the usual ranges 0 to 1, 100 and 255 that most of its rows fit,
/// which a part of a chart may have.
std::vector<DeviceRanges> furtherRanges(const DeviceValues& measured, const DeviceValues& reference);

/// One range for both sides, up to the largest value of them, which needs no scale to be known.
DeviceRanges commonRange(const DeviceValues& measured, const DeviceValues& reference);

/// Names the first value that is on no scale, of charts that have no possible ranges.
std::string strangeValue(const Chart& measured, const Chart& reference, const DeviceChannels& channels);

/// So many units of the grid are one percent of the range.
constexpr int kUnitsPerPercent = 10000;

/// The values on a grid; 0 for rows that do not fit.
PointSet onGrid(const DeviceValues& values, double range);

} // namespace qxcms::qc
