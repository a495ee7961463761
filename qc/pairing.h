/// @file
/// Which row of one chart belongs to which row of the other.
#pragma once

#include <string>
#include <vector>

#include "qc/chart.h"

namespace qxcms::qc {

/// What the pairing rests on. Rows are paired in their order under every rule.
enum class PairRule {
    deviceValues, ///< the device values are equal on every row
    identifiers,  ///< an identifier is equal on every row
    order         ///< the order alone, as asked for
};

enum class PairChoice { automatic, order };

struct Pairing {
    PairRule rule;
    std::string field; ///< the identifier column under PairRule::identifiers, else empty
    /// Where the charts disagree in what the rule does not look at.
    std::vector<std::string> remarks;
};

/// Pairs row by row.
///
/// Device values are process colours, spot colours and RGB; both charts must hold the same such columns. The
/// identifier is the first that both charts have and that can tell rows apart: it is empty on no row and not
/// the same on all of several rows.
/// @throws Refusal (notComparable) when the numbers of rows differ, or when neither device values nor the
/// identifier agree on every row; Refusal (unreadable) for a device value that is no finite number.
/// PairChoice::order asks for equal numbers alone.
Pairing pairRows(const Chart& measured, const Chart& reference, PairChoice choice);

/// The column of the chart's first identifier (SampleID, SAMPLE_ID, SAMPLE_NAME), -1 when it has none.
int identifierColumn(const Chart& chart);

/// A value of a chart as text.
std::string fieldText(const Chart& chart, int row, int column);

} // namespace qxcms::qc
