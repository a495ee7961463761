/// @file
/// What the header lines of a document are about, as far as it matters for conditions. Internal.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qxcms::qc {

/// What a header line, or a part of one ("Filter=No"), is about.
enum class Subject {
    illuminant,
    observer,
    weighting, // an illuminant or an observer, which the value tells
    source,    // of the light: parts of several subjects, or the name of a lamp
    measurementCondition,
    backing,
    geometry,
    filter,
    polarization,
    ultravioletFilter,
    whiteBase,
    instrument,
    deviceClass,
    quantity, // what was measured
    display,  // something of a display
    text,     // that describes anything
    intendedInstrument,
    nothing // that matters here
};

/// The letters and digits of a name, in small letters.
std::string squeezed(std::string_view name);

/// Of a name as it stands in a line of several parts.
std::optional<Subject> subjectOf(std::string_view name);

/// Of a keyword, which may be one that nobody lists: "LAB_OBSERVER", "PRINT_CONDITIONS".
std::optional<Subject> subjectOfKeyword(std::string_view keyword);

/// Whether a keyword that is about no subject is that of a name: of people and firms, dates and serial
/// numbers.
bool isOfAName(const std::string& keyword);

/// Whether the value means something for the subject: in lines of an unknown keyword "Filter=Lanczos" may be
/// about anything.
bool isUnderstood(Subject subject, const std::string& value);

} // namespace qxcms::qc
