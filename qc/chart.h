/// @file
/// One side of a comparison.
#pragma once

#include <string>
#include <vector>

#include "cgats/tcgats.h"
#include "cgats/tcgatsnormalizer.h"
#include "qc/finding.h"

namespace qxcms::qc {

/// A value of a number column that is no number as a whole, such as "N/A" or "5%".
struct DoubtfulValue {
    int table; ///< all indices count from 0
    int row;
    int column;
    std::string text;
    int others = 0; ///< further ones in the column
};

/// One data table of a document that was read without error. ChartFile makes it; one that was made by
/// hand and points at no such table is refused by whatever computes anything of it.
struct Chart {
    std::string name;                       ///< what messages call it: the file's name as given
    const TCgats* document;                 ///< not owned
    int table;                              ///< counted from 0
    std::vector<DoubtfulValue> doubts = {}; ///< of the table, the first of each column that has some
    /// What is to be known from reading it, such as a scale that was changed.
    std::vector<Finding> findings = {};

    /// Whether it points at a table.
    bool isThere() const { return document != nullptr && document->GetTable(table) != nullptr; }
    /// Only where it is there.
    const TCgatsTable& data() const { return *document->GetTable(table); }
    const TCgatsTableHeader& header() const { return *data().GetHeader(); }
    int rows() const { return isThere() ? document->GetNrSamples(table) : 0; }
    /// Empty for a column that there is not.
    const char* columnName(int column) const {
        const TCgatsField* const field = isThere() ? header().GetField(column) : nullptr;
        return field == nullptr ? "" : field->GetName();
    }
};

/// Of what was done to read a file, what changed the scale of its values.
/// @param name of the file.
std::vector<Finding> scaleFindings(const std::string& name, const std::vector<TCgatsLiberty>& liberties);

/// "file: row 3", the row being counted from 0 in the argument and from 1 in the text; "file: table 2: row 3"
/// behind the first table.
std::string placeOf(const Chart& chart, int row);

/// "file: row 3, column "LAB_A" (number 2)", both counted from 0 in the arguments and from 1 in the text.
std::string placeOf(const Chart& chart, int row, int column);

} // namespace qxcms::qc
