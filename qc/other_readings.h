/// @file
/// What the values of a side would have to be read as to agree with the other side.
#pragma once

#include <functional>
#include <vector>

#include "qc/chart.h"
#include "qc/conditions.h"
#include "qc/finding.h"
#include "qc/lab_rows.h"
#include "qc/pairing.h"

namespace qxcms::qc {

/// One side of a comparison as it was read.
struct ReadSide {
    const Chart& chart;
    ColorSource source;
    const std::vector<Lab>& lab;  ///< of each row
    const Conditions* conditions; ///< those of `lab`; null where they are not known
};

/// Tells, as a warning, when values that are read in another way would bring the median difference of the
/// pairs below half: Lab as the numbers of files of 8 and 16 bits, as fractions or with 128 added to a* and
/// b*; X and Z exchanged; spectra with their bands in the opposite order or shifted by one, or 100 times too
/// small or large; light that differs by a factor, where both sides are light. Of the white of another
/// illuminant it is told below a third, for paper that differs in hue has a like effect, and only of colours
/// that are grey or of several hues. Only the best one is told, and none where the median is small already.
/// @param areLight whether both sides hold measurements of light. @param deltaE the difference of two Lab,
/// measured first.
std::vector<Finding> otherReadings(const ReadSide& measured, const ReadSide& reference,
                                   const std::vector<RowPair>& pairs, bool areLight,
                                   const std::function<double(const Lab&, const Lab&)>& deltaE);

} // namespace qxcms::qc
