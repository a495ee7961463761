#include "qc/large_differences.h"

#include <algorithm>
#include <cstddef>

#include "base/number_text.h"
#include "qc/count_text.h"
#include "qc/statistics.h"

namespace qxcms::qc {

namespace {

constexpr double kLargeMedian = 10.0;
// Of the median difference of samples that do not belong together.
constexpr double kHardlyRelated = 0.5;
constexpr std::size_t kFewestSamples = 8;

// The median difference when each colour is compared with what is expected so many rows further on.
double medianWithPlaces(const std::vector<ComparedRow>& rows, std::size_t places) {
    std::vector<double> totals;
    totals.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        totals.push_back(difference(rows[i].found, rows[(i + places) % rows.size()].expected).total);
    return statistics(totals).median;
}

double medianByChance(const std::vector<ComparedRow>& rows) {
    double median = 0.0;
    for (const std::size_t part : {2U, 3U, 5U})
        median = std::max(median, medianWithPlaces(rows, rows.size() / part));
    return median;
}

} // namespace

std::optional<Finding> findLargeDifferences(const std::vector<ComparedRow>& rows, const std::string& by) {
    if (rows.size() < kFewestSamples)
        return std::nullopt;
    const double median = medianWithPlaces(rows, 0);
    if (median <= kLargeMedian)
        return std::nullopt;
    const double byChance = medianByChance(rows);
    if (median <= kHardlyRelated * byChance)
        return std::nullopt;
    return Finding{Finding::Severity::warning, Finding::Kind::largeDifferences,
                   "the median CIEDE2000 of the " + countText(rows.size()) + " samples that " + by +
                       " values pair is " + detail::generalText(median, 3) + ", and " +
                       detail::generalText(byChance, 3) +
                       " when samples are paired by chance; check that both files hold the same process, and "
                       "that the device values stand beside the colours of their own samples"};
}

bool explainsLargeDifferences(const Finding& finding) {
    switch (finding.kind) {
    case Finding::Kind::otherPairing:
    case Finding::Kind::tooLight:
    case Finding::Kind::spectralScale:
    case Finding::Kind::equalSpectra:
    case Finding::Kind::emission:
    case Finding::Kind::paperNotLightest:
    case Finding::Kind::exchangedAxes:
    case Finding::Kind::labScale:
    case Finding::Kind::otherWhite:
    case Finding::Kind::bandOrder:
    case Finding::Kind::otherHues:
    case Finding::Kind::otherReading:
    case Finding::Kind::shiftedRows:
        return finding.severity == Finding::Severity::warning;
    default:
        return false;
    }
}

} // namespace qxcms::qc
