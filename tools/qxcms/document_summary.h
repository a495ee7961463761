/// @file
/// What a document holds, ready to be reported.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cgats/tcgats.h"

namespace qxcms::command {

struct FieldSummary {
    int column; ///< counted from 1
    std::string name;
    const char* kind; ///< "standard", "custom", "spectral", "process colour", "n-colour" or "spot colour"
    const char* type; ///< "text", "integer" or "number"
    std::optional<int> number; ///< nm of a spectral field, the channel (from 1) of a colour field
};

struct SpectraSummary {
    int bands;
    int firstNm;
    int lastNm;
    std::optional<int> stepNm; ///< nothing when the steps differ or there is one band only
    bool percent;
};

struct TableSummary {
    int samples;
    std::vector<FieldSummary> fields;
    std::optional<SpectraSummary> spectra;
    bool lab;
    bool xyz;
    const char* deviceColors; ///< "CMYK", "custom" or "n-colour"; null when there are none
    int deviceChannels;
    int spotColors;
    bool sampleNames;                     ///< a column of sample names ("SampleID")
    std::vector<std::string> identifiers; ///< the columns that rows can be told by
};

struct TagSummary {
    std::string keyword; ///< empty for a line that holds a comment alone
    std::string value;
    bool bare; ///< written without quotes
    std::string comment;
};

struct DocumentSummary {
    std::vector<TableSummary> tables;
    std::vector<TagSummary> tags;
    bool tagsAreFull; ///< as many as a document keeps; there may have been more
    std::vector<std::string> customFields;
    std::vector<std::string> commentBlocks;
};

/// @param document read without error.
DocumentSummary summarize(const TCgats& document);

} // namespace qxcms::command
