#include "qc/row_pairs.h"

#include "qc/pairing.h"
#include "qc/table_choice.h"

namespace qxcms::qc {

Result<Pairing> pairCharts(const Chart& measured, const Chart& reference, PairChoice choice) {
    try {
        requireTable(measured);
        requireTable(reference);
        return pairRows(measured, reference, choice);
    } catch (const Refusal& refusal) {
        return refusal;
    }
}

} // namespace qxcms::qc
