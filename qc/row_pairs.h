/// @file
/// Rows of two charts that belong together.
#pragma once

#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/finding.h"
#include "qc/result.h"

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
    /// Identifiers alone say so: no device values confirm the pairs.
    bool isUnconfirmed = false;
};

/// Device values pair within so much, in percent of their range, unless rounding explains more.
constexpr double kDeviceTolerance = 0.3;

/// Pairs the rows of two charts as compare() does.
///
/// By device values each measured row belongs to the nearest reference row within kDeviceTolerance, where
/// both are unique; by identifiers to the one with the same text in the first of SampleID, SAMPLE_ID,
/// SAMPLE_NAME, SAMPLE_LOC that both charts have and that is unique on both sides; by order to the one in the
/// same place. Either chart may be a part of the other, but for the order. Refused (notComparable) where the
/// rule cannot be used or pairs no row, and (unreadable) for device values that are no finite numbers.
Result<Pairing> pairCharts(const Chart& measured, const Chart& reference,
                           PairChoice choice = PairChoice::automatic);

} // namespace qxcms::qc
