/// @file
/// Two charts, patch by patch.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/chosen_conditions.h"
#include "qc/color_source.h"
#include "qc/difference.h"
#include "qc/document_conditions.h"
#include "qc/finding.h"
#include "qc/formulas.h"
#include "qc/result.h"
#include "qc/row_pairs.h"
#include "qc/statistics.h"

namespace qxcms::qc {

/// A measured sample and its standard.
struct Patch {
    int row;            ///< of the measured chart, counted from 1
    int referenceRow;   ///< of the reference, counted from 1; the first where there are several
    int referenceCount; ///< rows whose mean is the standard
    std::string name;   ///< the identifier, else the row number
    Lab measured;       ///< the sample
    Lab reference;      ///< the standard
    Difference difference;
};

/// What a side was and how it was read.
struct Side {
    std::string file;
    int tables; ///< of the document
    int table;  ///< that is compared, counted from 1
    int samples;
    ColorSource source;
    bool percent;                  ///< spectra only: given in percent
    int bands;                     ///< spectra only
    int firstNm;                   ///< spectra only
    int lastNm;                    ///< spectra only
    DocumentConditions conditions; ///< what its document says
};

/// How to compare. Which tables of their documents are compared, the charts say themselves.
struct ComparisonOptions {
    /// "D50", "CIE Illuminant D50", "FL11" ...; none: what a chart of Lab or XYZ declares, the measured one
    /// before the reference, else what a text of it names, else D50.
    std::optional<std::string> illuminant;
    std::optional<std::string> observer; ///< "2 degree", "10" ...; none: likewise, else 2 degree
    std::string formula = "CIEDE2000";   ///< a name or a short form, see knownFormulas
    PairChoice pair = PairChoice::automatic;
    /// That pairs the rows, in any letter case; none: the first that pairs. It goes with
    /// PairChoice::identifiers or automatic, and is refused with another choice.
    std::string identifier;
    std::optional<ColorSource> measuredAs;  ///< none: spectra, else Lab, else XYZ
    std::optional<ColorSource> referenceAs; ///< likewise
    bool force = false;                     ///< compares also what declares different conditions
};

struct Comparison {
    Side measured;
    Side reference;
    Formula formula;
    ChosenConditions conditions;
    std::optional<std::array<double, 3>> spectralWhite; ///< that spectra were converted on, with Y = 100
    std::optional<std::array<double, 3>> xyzWhite;      ///< that XYZ was converted on, with Y = 100
    Pairing pairing;
    std::vector<Patch> patches; ///< in the order of the measured rows
    Statistics statistics;      ///< of the differences
    /// What whoever reads the figures must know, warnings first.
    std::vector<Finding> findings;

    /// The difference of every patch, in their order.
    std::vector<double> differences() const;
};

/// Compares two charts; the reference is the standard.
///
/// Conditions are chosen and held against each other, the colours of both sides computed and looked at, the
/// rows paired (pairCharts), and the differences made. Refused are names that nobody knows (usage), charts
/// without colours, declared conditions that differ (unless forced), rows that nothing pairs (notComparable),
/// and values that are no numbers (unreadable). Throws std::bad_alloc where memory runs out, and nothing
/// else.
Result<Comparison> compare(const Chart& measured, const Chart& reference,
                           const ComparisonOptions& options = {});

} // namespace qxcms::qc
