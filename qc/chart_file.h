/// @file
/// Charts from files.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cgats/tcgats.h"
#include "cgats/tcgatsnormalizer.h"
#include "qc/chart.h"
#include "qc/result.h"

namespace qxcms::qc {

/// A document that was brought into form and read.
struct ChartFile {
    std::string name; ///< as given
    std::unique_ptr<TCgats> document;
    std::vector<TCgatsLiberty> liberties; ///< what was done to read it
    std::vector<TCgatsLiberty> remarks;   ///< what is to be known about values that were passed on
    std::vector<DoubtfulValue> doubts;    ///< of all tables, the first of each column that has some

    /// The first of its tables, which points into this.
    Chart chart() const&;
    /// One of its tables, counted from 0; refused (usage) where there are not so many.
    Result<Chart> chart(int table) const&;
    /// The chart would point into what is gone.
    Chart chart() const&& = delete;
    Result<Chart> chart(int table) const&& = delete;

    /// The number of its tables, at least one; 0 of a file that was moved away.
    int tables() const { return document == nullptr ? 0 : document->GetNrTables(); }
};

/// Reads the bytes of a file. Refused (unreadable) are bytes that are no CGATS, with line and column, and
/// documents without any table. Throws std::bad_alloc where memory runs out, and nothing else.
Result<ChartFile> readChart(std::string name, std::string bytes);

/// Opens a file and reads it; refused (unreadable) as well where it cannot be read.
Result<ChartFile> openChart(const std::string& name);

} // namespace qxcms::qc
