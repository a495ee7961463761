/// @file
/// What a document says about the conditions of its measurements.
#pragma once

#include <string>

#include "cgats/tcgats.h"

namespace qxcms::qc {

/// One condition, as far as it is known.
struct Condition {
    enum class Standing {
        unknown,  ///< not named, or named as unknown
        freeText, ///< named in a descriptive text
        declared  ///< named where such a condition belongs
    };

    Standing standing = Standing::unknown;
    /// "D50", "2 degree", "M1", "white", "45/0", "polarizing", "i1Pro 2"; empty when unknown. A declared
    /// value of an unknown spelling stands as it is, without blanks around it.
    std::string value;
    std::string source; ///< the header line as it stands, keyword and value; empty when there is none
    std::string contradicted = {}; ///< another line that declares another value; empty when there is none
    bool understood = true;        ///< false for a declared value of an unknown spelling
    bool implied = false;          ///< by the line of another condition: M2 by a UV cut, or the reverse

    bool isDeclared() const { return standing == Standing::declared; }
};

/// The conditions of one table.
struct DocumentConditions {
    Condition illuminant;           ///< "A", "C", "D50", "F11", "LED-B1": the CIE's short name
    Condition observer;             ///< "2 degree", "10 degree"
    Condition measurementCondition; ///< "M0", "M1", "M2", "M3" (ISO 13655)
    Condition backing;              ///< "white", "black", "self" (on its own substrate)
    Condition geometry;             ///< "45/0", "0/45", "d/8", "8/d", "d/0"
    Condition filter;               ///< "none", "polarizing", "UV cut", "D65"
    Condition whiteBase; ///< what colours are relative to: "absolute" (the perfect diffuser), "paper"
    Condition instrument;
    bool isEmission = false; ///< says that it holds measurements of light sources or displays
};

/// The conditions of a table, read from the header lines before its samples: WEIGHTING_FUNCTION,
/// ILLUMINATION_NAME, OBSERVER_ANGLE, FILTER, MEASUREMENT_SOURCE, MEASUREMENT_GEOMETRY, SAMPLE_BACKING,
/// INSTRUMENTATION and the like in the spellings found in files. A later line of the same kind wins over an
/// earlier one of the same standing; a declared value wins over one from a text, and one that is understood
/// over one that is not. Nothing is read from file names, nor from the names of people and firms, dates and
/// serial numbers.
///
/// A measurement condition that no line names is implied by the filter - a UV cut means M2, a polarizer M3 -
/// or by the geometry "Ill 45, Obs 0" of the kernel's list (TMeasGeom) without a filter, which means M0. A
/// D65 filter means none of them; it is not M1.
/// @param document read without error. @param table counted from 0, one that there is.
DocumentConditions conditionsOf(const TCgats& document, int table);

/// Whether two values of one condition mean the same: equal texts, whatever their case, and geometries whose
/// light takes the same way forth or back, as 45/0 and 0/45 (ISO 13655 allows either).
bool meanTheSame(const std::string& one, const std::string& other);

} // namespace qxcms::qc
