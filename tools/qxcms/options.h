/// @file
/// What the command line asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "qc/comparison.h"

namespace qxcms::command {

struct DiffOptions {
    std::string measured;
    std::string reference;
    qc::ComparisonOptions comparison;
    int table = 1;                     ///< of both files, counted from 1
    std::optional<int> referenceTable; ///< of the reference, where it is another one
    int worst = 10;
    std::optional<double> tolerance;
    bool json = false;
    bool strict = false;
    bool quiet = false;
};

struct InfoOptions {
    std::vector<std::string> files;
    bool json = false;
    bool strict = false;
    bool quiet = false;
};

struct LintOptions {
    std::vector<std::string> files;
    std::optional<std::string> fix;
    bool json = false;
    bool strict = false;
    bool quiet = false;
};

} // namespace qxcms::command
