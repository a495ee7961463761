/// @file
/// Which row of one chart belongs to which rows of the other. Internal.
#pragma once

#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/row_pairs.h"

namespace qxcms::qc {

/// Pairs the rows of two charts.
///
/// Device values are process and spot colours, or RGB where not both charts have such, on 0 to 1, 0 to 100 or
/// 0 to 255, which each side shows by its largest value; both charts must hold the same channels. A measured
/// row belongs to the nearest reference row (largest difference of a channel) where that lies within
/// kDeviceTolerance, no other reference device value lies as near, and no other measured device value lies as
/// near to it. Rows of equal device values pair first with first where both sides repeat them as often, else
/// with the mean of the other side.
///
/// The identifier is the first of SampleID, SAMPLE_ID, SAMPLE_NAME, SAMPLE_LOC that both charts have, whose
/// texts are unique, and not empty, on both sides, and that pairs any row. Texts compare exactly; where all
/// of them are whole numbers, as numbers ("1" and "001"). PairChoice::order takes row by row and needs as
/// many rows on both sides.
///
/// PairChoice::automatic takes identifiers, if it can, also where the device values are the same on every row
/// of both charts, and where one of them holds several samples of RGB 0 0 0 alone: columns never filled in.
/// Where device values contradict identifiers, or one of these the order, a finding says so; also where they
/// are of two kinds and can say nothing.
/// @throws Refusal (notComparable) where the rule cannot be used or pairs no row, naming why and what to do;
/// Refusal (unreadable) for a device value that is no finite number.
Pairing pairRows(const Chart& measured, const Chart& reference, PairChoice choice);

/// The rules that pair at least one row of these charts; device values first, order last.
std::vector<PairRule> possibleRules(const Chart& measured, const Chart& reference);

/// The column of the chart's first identifier (SampleID, SAMPLE_ID, SAMPLE_NAME, SAMPLE_LOC), -1 when it has
/// none.
int identifierColumn(const Chart& chart);

/// A value of a chart as text.
std::string fieldText(const Chart& chart, int row, int column);

} // namespace qxcms::qc
