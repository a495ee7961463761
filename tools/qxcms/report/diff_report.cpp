#include "tools/qxcms/report/diff_report.h"

#include <algorithm>

#include "qc/statistics.h"

namespace qxcms::command {

namespace {

std::size_t countAbove(const qc::Comparison& comparison, std::optional<double> tolerance) {
    if (!tolerance)
        return 0;
    const auto isAbove = [&](const qc::Patch& patch) { return patch.difference.total > *tolerance; };
    return static_cast<std::size_t>(
        std::count_if(comparison.patches.begin(), comparison.patches.end(), isAbove));
}

std::vector<std::size_t> worstOf(const qc::Comparison& comparison, int count) {
    const std::vector<double> differences = comparison.differences();
    return qc::worst(differences, static_cast<std::size_t>(count));
}

} // namespace

DiffReport::DiffReport(const DocumentFile& theMeasured, const DocumentFile& theReference,
                       const qc::Comparison& theComparison, int worstCount,
                       std::optional<double> theTolerance, const std::vector<std::string>& theWarnings)
    : measured(theMeasured), reference(theReference), comparison(theComparison),
      worst(worstOf(theComparison, worstCount)), tolerance(theTolerance),
      aboveTolerance(countAbove(theComparison, theTolerance)), warnings(theWarnings) {}

} // namespace qxcms::command
