#include "qc/chart_kind.h"

#include <cstring>

#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

struct Kind {
    const char* mark; // the keyword of the first line
    const char* words;
};

constexpr Kind kNoCharts[] = {{"GAMUT", "a gamut surface"},
                              {"CCMX", "a correction matrix of a colorimeter"},
                              {"CAL", "calibration curves"}};
constexpr Kind kTargets[] = {{"CTI1", "a list of patches"}, {"CTI2", "the layout of a chart"}};

template <std::size_t count>
const Kind* kindOf(const Chart& chart, const Kind (&kinds)[count]) {
    const TCgatsTag* const first = chart.document->GetTagAt(0);
    const char* const keyword = first != nullptr ? first->GetKeyword() : nullptr;
    for (const Kind& kind : kinds)
        if (keyword != nullptr && std::strcmp(keyword, kind.mark) == 0)
            return &kind;
    return nullptr;
}

} // namespace

void requireChart(const Chart& chart) {
    if (const Kind* const kind = kindOf(chart, kNoCharts))
        throw Refusal(Refusal::Kind::notComparable,
                      printable(chart.name) + " is no chart, but " + kind->words + " (" + kind->mark + ")");
}

std::vector<Finding> findingsOnKind(const Chart& chart) {
    const Kind* const kind = kindOf(chart, kTargets);
    if (kind == nullptr)
        return {};
    return {{Finding::Severity::warning, Finding::Kind::expectedValues,
             printable(chart.name) + " is " + kind->words + " to be measured (" + kind->mark +
                 "); its colours are what is expected, not what was measured"}};
}

} // namespace qxcms::qc
