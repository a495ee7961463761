/// @file
/// The scales and the rounding that device values are taken to have. Internal.
#pragma once

#include <cstddef>
#include <optional>

#include "qc/device_matching.h"
#include "qc/device_values.h"
#include "qc/pairing.h"

namespace qxcms::qc {

/// How the scales are read, and how certain that is.
struct DeviceReading {
    DeviceMatching matching;
    std::optional<DeviceRanges> other; ///< that pairs other rows, not fewer by half
    bool byColors = false;             ///< these ruled it out
    bool asTheyStand = false;          ///< equal values, on whatever scale
    /// The pairs within the usual tolerance, where rounding widens it.
    std::optional<std::size_t> within = std::nullopt;
};

/// The reading that pairs the most rows; where colours say otherwise, another one. Nothing where a side is on
/// no scale and the values of both are not equal.
std::optional<DeviceReading> bestReading(const DeviceValues& measured, const DeviceValues& reference,
                                         const MedianOf& medianOf);

/// Whether the device values of two charts are on scales that are known, or, on whatever scale, equal in
/// nearly all rows of the smaller one whose colours are those of one chart.
bool canBeRead(const DeviceValues& measured, const DeviceValues& reference, const MedianOf& medianOf);

} // namespace qxcms::qc
