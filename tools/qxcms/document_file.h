/// @file
/// Reading a document so that a refusal can be explained.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cgats/tcgats.h"
#include "qc/chart.h"

namespace qxcms::command {

/// Where and why a text was refused.
struct Location {
    int line;           ///< counted from 1
    int column;         ///< in bytes, counted from 1
    std::size_t offset; ///< in bytes from the start
    std::string token;  ///< the offending token as it stands, at most kLongestToken bytes; empty at the end
    std::string expected;
};

inline constexpr std::size_t kLongestToken = 256;

struct ReadFailure {
    int code;                         ///< of the document; 3 for a file that cannot be read
    std::string message;              ///< of the code
    std::optional<Location> location; ///< nothing for a file that cannot be read
    std::string detail;               ///< what the system says, or what can be done; may be empty
};

/// A file and what became of it.
struct DocumentFile {
    std::string name;                 ///< as given
    std::unique_ptr<TCgats> document; ///< what was read, up to the failure if there is one
    std::optional<ReadFailure> failure;
    std::vector<std::string> warnings;     ///< printable
    std::vector<qc::DoubtfulValue> doubts; ///< the first of each column that has some; none after a failure
};

DocumentFile readDocument(const std::string& name);

/// Adds a warning of each doubtful value.
void warnOfDoubts(DocumentFile& file);

/// The failure of a file in one line.
std::string describeFailure(const DocumentFile& file);

} // namespace qxcms::command
