/// @file
/// What the reports of "qxcms diff" are written from.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "qc/comparison.h"
#include "tools/qxcms/document_file.h"

namespace qxcms::command {

struct DiffReport {
    const DocumentFile& measured;
    const DocumentFile& reference;
    const qc::Comparison& comparison;
    std::vector<std::size_t> worst; ///< indices of patches, worst first
    std::optional<double> tolerance;
    std::size_t aboveTolerance;        ///< the number of patches above it
    std::vector<std::string> warnings; ///< about the files

    DiffReport(const DocumentFile& measured, const DocumentFile& reference, const qc::Comparison& comparison,
               int worstCount, std::optional<double> tolerance, const std::vector<std::string>& warnings);
};

} // namespace qxcms::command
