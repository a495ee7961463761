/// @file
/// What the reports of "qxcms lint" are written from.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "tools/qxcms/document_file.h"

namespace qxcms::command {

enum class Verdict { clean, liberties, unreadable };

/// What is to be told of one file.
struct LintReport {
    std::string file; ///< its name as given
    std::optional<ReadFailure>
        strictFailure;                  ///< of the text as it stands, where another reading was tried too
    std::optional<ReadFailure> failure; ///< for which the file is unreadable
    std::vector<TCgatsLiberty> liberties;
    std::vector<TCgatsLiberty> remarks;
    std::vector<std::string> warnings; ///< printable

    Verdict verdict() const {
        if (failure)
            return Verdict::unreadable;
        return liberties.empty() ? Verdict::clean : Verdict::liberties;
    }
};

} // namespace qxcms::command
