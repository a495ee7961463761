/// @file
/// The columns of device values that two charts share. Internal.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "qc/chart.h"

namespace qxcms::qc {

/// The channels that two charts have in common.
struct DeviceChannels {
    std::string name;                    ///< "CMYK", "6CLR", "PC2", "SPOT", "CMYK and SPOT", "CMY", "RGB"
    std::vector<std::int32_t> measured;  ///< the columns by channel
    std::vector<std::int32_t> reference; ///< as many
    std::string leftOut;                 ///< what of one chart alone takes no part, in words; else empty
    std::vector<std::int32_t> measuredAlone = {}; ///< columns of one chart alone: rows that are not 0 in them
    std::vector<std::int32_t> referenceAlone = {}; ///< take no part

    /// Whether rows of one chart take no part.
    bool isPart() const { return !measuredAlone.empty() || !referenceAlone.empty(); }
};

/// Process and spot colours, also those that the kernel does not know for such but whose columns hold numbers
/// and are named alike ("CMY_C", "4CLR_1", "SPOT_7"); RGB where not both charts have any. Channels that one
/// chart has in addition are left out where they are 0 throughout; where they are 0 on as many rows as the
/// other chart has, or more, these rows alone take part. Nothing where the channels are not the same, or
/// where their numbering has a gap.
std::optional<DeviceChannels> sharedChannels(const Chart& measured, const Chart& reference);

/// What the device values of a chart are, as in DeviceChannels; empty where it has none.
std::string nameOfDeviceValues(const Chart& chart);

/// Where the charts name a process or spot colour differently, or one of them alone names it: the first such
/// channel in words; else empty.
std::string differentColorants(const Chart& measured, const Chart& reference);

} // namespace qxcms::qc
