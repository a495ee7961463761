/// @file
/// Rows that belong together by their device values. Internal.
#pragma once

#include <optional>
#include <vector>

#include "qc/device_values.h"
#include "qc/pairing.h"

namespace qxcms::qc {

/// Where two readings of the scales pair rows, the colours decide.
/// @throws Refusal as pairRows.
Pairing pairByDeviceValues(const Chart& measured, const Chart& reference, const DeviceChannels& channels,
                           const MedianOf& medianOf);

/// What rows that were paired otherwise hold against it: device values that differ; nothing where they agree
/// or cannot be used.
std::optional<Finding> differentDeviceValues(const Chart& measured, const Chart& reference,
                                             const DeviceChannels& channels,
                                             const std::vector<RowPair>& pairs);

} // namespace qxcms::qc
