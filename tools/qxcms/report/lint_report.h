/// @file
/// What the reports of "qxcms lint" are written from.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/qxcms/document_file.h"

namespace qxcms::command {

enum class Verdict {
    clean,
    doubts,    ///< read as it stands, but words stand where numbers belong
    liberties, ///< readable, and not as it stands
    noSamples, ///< read, but it holds no table
    unreadable
};

/// What is to be told of one file.
struct LintReport {
    std::string file; ///< its name as given
    std::optional<ReadFailure>
        strictFailure;                  ///< of the text as it stands, where another reading was tried too
    std::optional<ReadFailure> failure; ///< for which the file is unreadable
    std::vector<TCgatsLiberty> liberties;
    std::vector<TCgatsLiberty> remarks;
    std::vector<std::string> warnings; ///< printable
    bool hasSamples = true;
    bool hasDoubts = false; ///< words that stand where numbers belong

    Verdict verdict() const {
        if (failure)
            return Verdict::unreadable;
        if (!hasSamples)
            return Verdict::noSamples;
        if (!liberties.empty())
            return Verdict::liberties;
        return hasDoubts ? Verdict::doubts : Verdict::clean;
    }
};

} // namespace qxcms::command
