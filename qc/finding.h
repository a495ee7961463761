/// @file
/// What is to be known about figures.
#pragma once

#include <string>

namespace qxcms::qc {

/// Something that whoever reads the figures of a comparison must know.
struct Finding {
    enum class Severity {
        note,   ///< how something was read or decided
        warning ///< the figures may not mean what they seem to
    };

    enum class Kind {
        // The rows.
        otherTables,      ///< tables with colours that are not compared
        deviceScale,      ///< device values on another scale than 0 to 100
        unusedSamples,    ///< samples without a counterpart
        ambiguousSamples, ///< samples whose counterpart is not certain
        otherPairing,     ///< another way of pairing gives much smaller differences, or contradicts
        doubtfulValues,   ///< columns that are not compared hold words where numbers belong
        // The conditions.
        assumedCondition,       ///< nothing is declared
        unknownCondition,       ///< one side declares nothing, or nothing that is understood
        freeTextCondition,      ///< named in a text only
        forcedCondition,        ///< declared conditions differ, and the comparison was forced
        contradictoryCondition, ///< a document declares two different ones, or a filter against its condition
        formula,                ///< what the formula departs from
        // The values.
        xyzScale,      ///< XYZ on a scale of 0 to 1
        labAgainstXyz, ///< Lab and XYZ of one row disagree
        tooLight,      ///< L* above 105 or Y above 120
        negativeReflectance,
        spectralScale,    ///< fractions above 2
        equalSpectra,     ///< all of them
        unmeasured,       ///< rows of zeros among others
        narrowSpectra,    ///< that do not cover 400 to 700 nm
        coarseSpectra,    ///< sampled at 20 nm or more
        emission,         ///< light sources or displays
        expectedValues,   ///< colours of a target that are expected, not measured
        paperNotLightest, ///< the patch without ink
        exchangedAxes,    ///< a* and b*
        labScale,         ///< Lab that is not on its scale
        otherWhite,       ///< paper as on the white of another illuminant, or X and Z exchanged
        bandOrder,        ///< bands in the opposite order
        otherHues,        ///< than the device values say
        otherReading,     ///< values that agree with the other side when they are read in another way
        shiftedRows,      ///< colours that belong to neighbouring rows
        largeDifferences, ///< device values pair what hardly belongs together
        relativeToPaper   ///< the paper of one side alone is a perfect white
    };

    Severity severity;
    Kind kind;
    std::string text; ///< an English sentence without a full stop; names of files in it are printable
};

/// "deviceScale" and so on, as in the JSON of the command.
const char* nameOf(Finding::Kind kind);

} // namespace qxcms::qc
