/// @file
/// Which row of one chart belongs to which rows of the other. Internal.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/row_pairs.h"

namespace qxcms::qc {

/// The median colour difference of pairs.
using MedianOf = std::function<double(const std::vector<RowPair>&)>;

struct PairOptions {
    PairChoice choice = PairChoice::automatic;
    std::string identifier =
        {}; ///< the column that PairChoice::identifiers takes; empty: the first that pairs
    /// Decides between scales of the device values that pair as many rows; empty: colours are not looked at.
    MedianOf medianOf = {};
};

/// Pairs the rows of two charts.
///
/// Device values are process and spot colours, or RGB where not both charts have such, on 0 to 1, 0 to 100 or
/// 0 to 255, which each side shows by its largest value, or 0 to 1023 or 0 to 65535, where the largest value
/// is just that; both charts must hold the same channels, but for those that one alone has and that are 0
/// throughout. Rows with values beyond the scale of the others are left out. Where two scales pair rows, and
/// neither far more, those whose colours agree far better are taken; a warning says that both would do where
/// these do not decide. A measured row belongs to the nearest reference row (largest difference of a channel)
/// where that lies within kDeviceTolerance, no other reference device value lies as near, and no other
/// measured device value lies as near to it. Rows of equal device values pair first with first where both
/// sides repeat them as often, else with the mean of the other side.
///
/// The identifier is the first of SampleID, SAMPLE_ID, SAMPLE_NAME, SAMPLE_LOC that both charts have, whose
/// texts are unique, and not empty, on both sides, and that pairs any row. Where all of them are whole
/// numbers, texts compare as numbers ("1" and "001"); else without regard to letter case and leading zeros
/// ("A1" and "a01"), or exactly where they are unique only so. PairChoice::order takes row by row and needs
/// as many rows on both sides.
///
/// PairChoice::automatic takes identifiers, if it can, also where the device values are the same on every row
/// of both charts, where one of them holds several samples of RGB 0 0 0 alone (columns never filled in), and,
/// with a warning, where one of them is on no known scale.
/// Where device values contradict identifiers, or one of these the order, a finding says so; also where they
/// are of two kinds and can say nothing.
/// @throws Refusal (notComparable) where the rule cannot be used or pairs no row, naming why and what to do;
/// Refusal (unreadable) for a device value that is no finite number.
Pairing pairRows(const Chart& measured, const Chart& reference, const PairOptions& options);
Pairing pairRows(const Chart& measured, const Chart& reference, PairChoice choice);

/// All ways that pair at least one row of these charts: device values first, then each identifier, order
/// last. No findings but those of their own kind.
std::vector<Pairing> possiblePairings(const Chart& measured, const Chart& reference,
                                      const MedianOf& medianOf = {});

/// The column of the chart's first identifier (SampleID, SAMPLE_ID, SAMPLE_NAME, SAMPLE_LOC), -1 when it has
/// none.
int identifierColumn(const Chart& chart);

/// A value of a chart as text.
std::string fieldText(const Chart& chart, int row, int column);

} // namespace qxcms::qc
