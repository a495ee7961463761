/// @file
/// Which row of one chart belongs to which rows of the other.
#pragma once

#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/finding.h"

namespace qxcms::qc {

/// What the pairing rests on.
enum class PairRule {
    deviceValues, ///< equal device values
    identifiers,  ///< equal identifiers
    order         ///< the order of the rows alone
};

enum class PairChoice {
    automatic, ///< device values where both sides have the same channels, else identifiers
    deviceValues,
    identifiers,
    order
};

/// One sample and its standard. Rows count from 0.
struct RowPair {
    int measured;
    /// Usually one. Where device values are repeated, and not as often on both sides, all of the reference:
    /// their mean is the standard.
    std::vector<int> reference;
};

struct Pairing {
    PairRule rule;
    std::string by;                ///< "CMYK", "RGB", "6CLR", "SPOT", the identifier's column; "order"
    std::vector<RowPair> pairs;    ///< in the order of the measured rows; at least one
    int unusedMeasured = 0;        ///< measured rows without a counterpart
    int unusedReference = 0;       ///< reference rows that belong to no measured one
    std::vector<Finding> findings; ///< scales, unused and ambiguous samples
};

/// Device values pair within so much, in percent of their range.
constexpr double kDeviceTolerance = 0.3;

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
