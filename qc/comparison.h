/// @file
/// Two charts, patch by patch.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/conditions.h"
#include "qc/difference.h"
#include "qc/lab_rows.h"
#include "qc/pairing.h"
#include "qc/statistics.h"

namespace qxcms::qc {

struct Patch {
    int row;          ///< counted from 1
    std::string name; ///< the identifier, else the row number
    Lab measured;     ///< the sample
    Lab reference;    ///< the standard
    Difference difference;
};

/// What a side was and how it was read.
struct Side {
    std::string file;
    int tables; ///< of the document; the first is compared
    int samples;
    ColorSource source;
    bool percent; ///< spectra only: given in percent
    int bands;    ///< spectra only
    int firstNm;  ///< spectra only
    int lastNm;   ///< spectra only
};

struct ComparisonOptions {
    std::optional<ColorSource> measuredAs;
    std::optional<ColorSource> referenceAs;
    PairChoice pair = PairChoice::automatic;
};

struct Comparison {
    Side measured;
    Side reference;
    Pairing pairing;
    std::vector<Patch> patches;
    Statistics statistics;
    /// What a reader of the numbers must know.
    std::vector<std::string> remarks;

    /// The difference of every patch, in their order.
    std::vector<double> differences() const;
};

/// Compares row by row; the reference is the standard.
/// @throws Refusal.
Comparison compare(const Chart& measured, const Chart& reference, const Conditions& conditions,
                   const ComparisonOptions& options);

} // namespace qxcms::qc
