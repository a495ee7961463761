/// @file
/// Inks that two charts number differently. Internal.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "qc/device_values.h"
#include "qc/pairing.h"

namespace qxcms::qc {

/// Where the colours of the pure inks say that the charts number them differently: a pure ink of one chart
/// looks like another one of the other chart.
class InkOrder {
public:
    InkOrder(const DeviceValues& measuredValues, const DeviceValues& referenceValues,
             const DeviceRanges& ranges);

    /// The channel of the reference that a channel of the measured chart looks like, where it is another one.
    std::optional<std::size_t> counterpart(std::size_t channel, const MedianOf& medianOf) const;

private:
    double difference(std::size_t channel, std::size_t other, const MedianOf& medianOf) const;

    std::vector<int> measured;
    std::vector<int> reference;
};

} // namespace qxcms::qc
