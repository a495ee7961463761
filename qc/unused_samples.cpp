#include "qc/unused_samples.h"

#include <cstddef>

#include "qc/count_text.h"
#include "qc/printable_text.h"

namespace qxcms::qc {

namespace {

// "3 of 72 samples of FILE"
std::string someOf(int count, const Chart& chart) {
    return countText(static_cast<std::size_t>(count)) + " of " +
           countText(static_cast<std::size_t>(chart.rows())) + " samples of " + printable(chart.name);
}

// The pairs stand in the order of the measured rows, each once.
int firstUnused(const Pairing& pairing) {
    int row = 0;
    for (const RowPair& pair : pairing.pairs) {
        if (pair.measured != row)
            break;
        ++row;
    }
    return row;
}

} // namespace

void addUnusedSamples(const Chart& measured, const Chart& reference,
                      const std::function<std::string(int row)>& nameOf, Pairing& pairing) {
    std::string text;
    if (pairing.unusedMeasured > 0) {
        const bool one = pairing.unusedMeasured == 1;
        const int row = firstUnused(pairing);
        text = someOf(pairing.unusedMeasured, measured) +
               (one ? " has no counterpart in " : " have no counterpart in ") + printable(reference.name) +
               (one ? ": row " : ", the first in row ") + std::to_string(row + 1) + " (" + nameOf(row) + ")";
    }
    if (pairing.unusedReference > 0)
        text += (text.empty() ? "" : "; ") + someOf(pairing.unusedReference, reference) +
                (pairing.unusedReference == 1 ? " is unused" : " are unused");
    if (text.empty())
        return;
    const auto severity = pairing.unusedMeasured > 0 ? Finding::Severity::warning : Finding::Severity::note;
    pairing.findings.push_back({severity, Finding::Kind::unusedSamples, text});
}

} // namespace qxcms::qc
