/// @file
/// Which conditions a comparison is made for, and whether its sides may be compared at all. Internal.
#pragma once

#include <optional>
#include <string>

#include "qc/chosen_conditions.h"
#include "qc/color_source.h"
#include "qc/document_conditions.h"

namespace qxcms::qc {

/// One side of a comparison, as its document describes it.
struct DescribedSide {
    std::string name; ///< of the file, for messages
    ColorSource source;
    DocumentConditions conditions;

    /// Lab and XYZ hold for their own conditions only; spectra are integrated for any.
    bool isBound() const { return source != ColorSource::spectra; }
};

/// Illuminant and observer are those that are asked for, else those that a bound side declares (the measured
/// one before the reference), else those that a text of it names, else D50 and 2 degree.
///
/// Declared conditions that differ - of the illuminant and the observer those of bound sides and those asked
/// for, of measurement condition, backing, geometry, filter and white base those of both sides - are refused.
/// The filter is left out where it is what each side's measurement condition asks for; one that contradicts
/// it is told. What only one side declares is warned about, unless it goes without saying (an absolute white
/// base), and what is declared in a spelling that is not understood, unless both sides say the same; what a
/// text names is noted, or warned about where the other side says otherwise. Nothing declared is noted as an
/// assumption.
/// @param askedIlluminant, askedObserver as DocumentConditions has them; nothing where none is asked for.
/// @param force compares what differs, with a warning for each.
/// @throws Refusal (notComparable) that names every condition that differs, with the lines that say so.
ChosenConditions chooseConditions(const DescribedSide& measured, const DescribedSide& reference,
                                  const std::optional<std::string>& askedIlluminant,
                                  const std::optional<std::string>& askedObserver, bool force);

} // namespace qxcms::qc
