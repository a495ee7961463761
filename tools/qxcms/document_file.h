/// @file
/// Reading a document so that a refusal can be explained.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "cgats/tcgats.h"
#include "cgats/tcgatsnormalizer.h"
#include "qc/chart.h"
#include "tools/qxcms/source_excerpt.h"

namespace qxcms::command {

/// How a text is read: brought into form first, or strictly as it stands.
enum class Reading { intoForm, asItStands };

/// Where and why a text was refused.
struct Location {
    int line;   ///< counted from 1
    int column; ///< in bytes, counted from 1
    std::size_t
        offset;        ///< in bytes from the start; for UTF-16, as line and column, of the same text in UTF-8
    std::string token; ///< the offending token as it stands, at most kLongestToken bytes; empty at the end
    std::string expected;
    SourceExcerpt excerpt;
};

inline constexpr std::size_t kLongestToken = 256;

struct ReadFailure {
    int code;                         ///< of the document; 3 for a file that cannot be read
    std::string message;              ///< of the code
    std::optional<Location> location; ///< nothing for a file that cannot be read
    std::string systemError;          ///< what the system says of a file that cannot be read, else empty
    std::string remedy;               ///< what can be done
};

/// A file and what became of it.
struct DocumentFile {
    std::string name;                 ///< as given
    std::unique_ptr<TCgats> document; ///< what was read, up to the failure if there is one
    std::optional<ReadFailure> failure;
    std::vector<TCgatsLiberty> liberties;  ///< taken to bring the text into form
    std::vector<TCgatsLiberty> remarks;    ///< on values that were passed on as they are
    std::vector<std::string> warnings;     ///< printable
    std::vector<qc::DoubtfulValue> doubts; ///< the first of each column that has some; none after a failure
};

DocumentFile readDocument(const std::string& name, Reading reading);

/// A file as it stands and brought into form.
struct CheckedFile {
    DocumentFile asItStands;
    std::optional<DocumentFile> intoForm; ///< nothing for a file that cannot be read
    std::string text;                     ///< brought into form; of no meaning when that is refused
};

/// Reads the file once and its text in both ways.
CheckedFile checkDocument(const std::string& name);

/// Writes a line of each liberty and remark to the standard error; none of a file without any table.
void noteLiberties(const DocumentFile& file);

/// Adds a warning of each doubtful value.
void warnOfDoubts(DocumentFile& file);

/// A name of a file for the terminal.
std::string shownName(const std::string& name);

/// "file:line:column", printable.
std::string placeOf(const std::string& name, int line, int column);

/// The same of a failure; "file" where it has no place.
std::string placeOf(const std::string& name, const ReadFailure& failure);

/// What was found at the place of a failure, printable and of moderate length.
std::string foundText(const Location& location);

/// The failure of a file in one line.
std::string describeFailure(const DocumentFile& file);

} // namespace qxcms::command
