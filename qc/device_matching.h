/// @file
/// Rows whose device values are equal, or as near as they may be. Internal.
#pragma once

#include <algorithm>
#include <vector>

#include "qc/device_values.h"
#include "qc/point_index.h"
#include "qc/row_pairs.h"

namespace qxcms::qc {

/// Which rows belong together by their device values, and what became of the others.
struct DeviceMatching {
    /// Rows that share a fate.
    struct Rows {
        int count = 0;
        int first = -1;

        void add(const std::vector<int>& rows) {
            first = count == 0 ? rows.front() : std::min(first, rows.front());
            count += static_cast<int>(rows.size());
        }
    };

    DeviceRanges ranges;
    double tolerance = kDeviceTolerance; ///< in percent
    std::vector<RowPair> pairs;
    int usedReference = 0;
    int aside = 0; ///< measured rows that take no part
    Rows alone;
    Rows atATie;
    Rows outdone;
    Rows againstMean;
    Rows inTheirOrder;
    Rows againstOne;
    Rows offScale;
    Rows referenceOffScale;

    int unusedMeasured() const { return aside + alone.count + atATie.count + outdone.count + offScale.count; }
    bool isOfUnequalRepeats() const { return againstMean.count > 0 || againstOne.count > 0; }
};

/// How far the values of one sample may differ, in percent. Whole numbers on two scales are rounded on each,
/// by half a unit.
double toleranceOf(const DeviceValues& measured, const DeviceValues& reference, const DeviceRanges& ranges);

/// A difference in percent on the grid of the values.
Coordinate onGrid(double percent);

/// Two device values belong together when each is the other's only nearest one within the tolerance.
/// @param tolerance in percent; toleranceOf where it is not given.
DeviceMatching matchDeviceValues(const DeviceValues& measured, const DeviceValues& reference,
                                 const DeviceRanges& ranges, double tolerance);
DeviceMatching matchDeviceValues(const DeviceValues& measured, const DeviceValues& reference,
                                 const DeviceRanges& ranges);

} // namespace qxcms::qc
