#include "qc/doubt_keeper.h"

namespace qxcms::qc {

DoubtKeeper::~DoubtKeeper() = default;

void DoubtKeeper::Refused(const TCgatsDiagnostic&) {}

void DoubtKeeper::Doubted(const TCgatsDoubtfulValue& value) {
    keep([&] {
        const auto [place, isFirst] = places.try_emplace({value.table, value.column}, doubts.size());
        if (isFirst)
            doubts.push_back({value.table, value.row, value.column, value.text});
        else
            ++doubts[place->second].others;
    });
}

} // namespace qxcms::qc
