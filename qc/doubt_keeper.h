/// @file
/// Keeps what a reader doubts. Internal.
#pragma once

#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "cgats/cgats_diagnostics.h"
#include "qc/chart.h"

namespace qxcms::qc {

/// Keeps the first doubtful value of each column, and how many others there are.
class DoubtKeeper : public TCgatsDiagnosticSink {
public:
    ~DoubtKeeper() override;

    void Refused(const TCgatsDiagnostic& diagnostic) override;
    void Doubted(const TCgatsDoubtfulValue& value) override;

    std::vector<DoubtfulValue> doubts;
    bool ranOutOfMemory = false; ///< something could not be kept

protected:
    /// Runs what may throw: the reader is not to be left by an exception.
    template <class Function>
    void keep(Function&& function) {
        try {
            function();
        } catch (const std::bad_alloc&) {
            ranOutOfMemory = true;
        }
    }

private:
    std::map<std::pair<int, int>, std::size_t> places; // of table and column in `doubts`
};

} // namespace qxcms::qc
