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
    /// The column that pairs the rows, in any letter case; empty: the first that does.
    std::string identifier = {};
    /// Decides between scales of the device values that pair as many rows, and whether identifiers do where
    /// these values pair nearly nothing; empty: colours are not looked at.
    MedianOf medianOf = {};
};

/// Pairs the rows of two charts.
///
/// Device values are process and spot colours, or RGB where not both charts have such, on 0 to 1, 0 to 100 or
/// 0 to 255, which each side shows by its largest value, or 0 to 1023 or 0 to 65535, where the largest value
/// is just that; both charts must hold the same channels, but for those that one alone has and that are 0
/// throughout, or on as many rows as the other chart has, which alone take part then. Where nearly nothing
/// pairs, another scale is taken that pairs most rows with colours of one chart. Whole numbers on two scales
/// pair within half a unit of each of them. Values that stand in steps of up to one percent on one side
/// (whole percent against decimals, bytes) pair as far as rounding them, or cutting off decimals, explains
/// where that pairs most rows, with colours of one chart, and leaves out no more than half as many. Rows
/// with values beyond the scale of the others are left out. Where two scales pair rows, and neither far
/// more, those whose colours agree far better are taken; a warning says that both would do where these do
/// not decide. A measured row belongs to the nearest reference row (largest difference of a channel) where
/// that lies within kDeviceTolerance, no other reference device value lies as near, and no other measured
/// device value lies as near to it. Rows of equal device values pair first with first where both sides
/// repeat them as often, else with the mean of the other side.
///
/// The identifier is the first of SampleID, SAMPLE_ID, SAMPLE_NAME, SAMPLE_LOC that both charts have, whose
/// texts are unique, and not empty, on both sides, and that pairs any row. Where all of them are whole
/// numbers, texts compare as numbers ("1" and "001"); else without regard to letter case and leading zeros
/// ("A1" and "a01"), and without blanks, "_" and "-" where that pairs more ("A 1" and "A-1"), or exactly
/// where they are unique only so. Where none of them pairs, an identifier of the measured chart does that
/// holds the texts of another one of the reference, which a warning tells. Where texts of one row in ten or
/// fewer are not unique, the others pair, with colours of one chart, which a finding tells. PairChoice::order
/// takes row by row and needs as many rows on both sides.
///
/// PairChoice::automatic takes identifiers, if it can, also where the device values are the same on every row
/// of both charts, where one of them holds several samples of RGB 0 0 0 alone (columns never filled in), and,
/// with a warning, where one of them is on no known scale and not equal on both sides, or where the device
/// values pair nearly nothing, but an identifier that does not only count rows pairs all samples with colours
/// of one chart. An identifier that only counts the rows of both charts gives way to one that does not, pairs
/// all samples, and whose colours agree far better. Where device values contradict identifiers, or one of
/// these the order, a finding says so; also where they are of two kinds and can say nothing.
/// @throws Refusal (usage) for an identifier that is none of these, or that stands beside another rule;
/// (notComparable) where the rule cannot be used or pairs no row, naming why and what to do;
/// (unreadable) for a device value that is no finite number.
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
