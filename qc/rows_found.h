/// @file
/// The rows of a chart that something holds for. Internal.
#pragma once

#include <string>

#include "qc/chart.h"

namespace qxcms::qc {

/// The rows that something holds for, and the one where it is most so.
class RowsFound {
public:
    /// @param row not below those before. @param excess how much the row shows it. @param shown the value to
    /// tell of the row.
    void add(int row, double excess, double shown);

    int rows() const { return count; }
    int worstRow() const { return worst; }
    /// The value to tell of the worst row.
    double most() const { return worstShown; }
    bool empty() const { return count == 0; }

    /// "row 3 and 11 more of 24, most in row 7".
    std::string words(const Chart& chart) const;

    /// The same behind the file, and the value of the row with the most.
    std::string told(const Chart& chart, const std::string& symbol) const;

private:
    int count = 0;
    int first = -1;
    int worst = -1;
    double worstExcess = 0.0;
    double worstShown = 0.0;
};

} // namespace qxcms::qc
