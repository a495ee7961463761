/// @file
/// Which table of a document is compared. Internal.
#pragma once

#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/finding.h"

namespace qxcms::qc {

/// Refuses a chart that points at no table of a document that was read.
/// @throws Refusal (unreadable) for a document that was refused, (usage) for a table that it does not have.
void requireTable(const Chart& chart);

/// Whether a table holds spectra, Lab or XYZ. @param table counted from 0.
bool holdsColor(const TCgats& document, int table);

/// How another table is asked for. @param table counted from 0.
std::string optionsForTable(int table);

/// A note where the document has further tables with colours, which are not compared. @param other the other
/// side of the comparison, which may be a table of the same file.
std::vector<Finding> findingsOnTables(const Chart& chart, const Chart& other);

} // namespace qxcms::qc
