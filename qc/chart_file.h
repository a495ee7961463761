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

    /// One of its tables, which points into this. @param table counted from 0, one that there is.
    Chart chart(int table = 0) const&;
    /// The chart would point into what is gone.
    Chart chart(int table = 0) const&& = delete;
};

/// Reads the bytes of a file. Refused (unreadable) are bytes that are no CGATS, with line and column, and
/// documents without any table. Throws std::bad_alloc where memory runs out, and nothing else.
Result<ChartFile> readChart(std::string name, std::string bytes);

/// Opens a file and reads it; refused (unreadable) as well where it cannot be read.
Result<ChartFile> openChart(const std::string& name);

} // namespace qxcms::qc
