/// @file
/// What the CGATS reader can tell about a text that it reads.
#pragma once

#include <cstddef>

#include "base/export.h"

/// Where a text was refused and what was expected there. The texts are valid during the report only.
struct TCgatsDiagnostic {
    int code;                ///< the document error code, or -1 for a token that is too long
    std::size_t offset;      ///< position of the offending token, in bytes from the start
    int line;                ///< its line, counted from 1; CR LF, LF and CR each end one line
    int column;              ///< its column in bytes, counted from 1
    const char* token;       ///< the offending token, not terminated; empty at the end of the text
    std::size_t tokenLength; ///< its length
    const char* expected;    ///< what was expected, in English
};

/// A value of a number column that is no number as a whole, such as "N/A", "5%" or an empty one. It is stored
/// as the number that it begins with, 0 when there is none. The text is valid during the report only.
struct TCgatsDoubtfulValue {
    int table; ///< all indices count from 0
    int row;
    int column;
    const char* text; ///< with a decimal comma already replaced by a point
};

/// Receives what the reader can tell about a text.
class QXCMS_API TCgatsDiagnosticSink {
public:
    virtual ~TCgatsDiagnosticSink();

    /// Called once, just before the reader answers a code other than 0; not for null, nor where memory ran
    /// out. Must not throw.
    virtual void Refused(const TCgatsDiagnostic& diagnostic) = 0;

    /// Called for each doubtful value, in the order of the text; without an effect unless overridden. Must
    /// not throw.
    virtual void Doubted(const TCgatsDoubtfulValue& value);

protected:
    TCgatsDiagnosticSink() = default;
    TCgatsDiagnosticSink(const TCgatsDiagnosticSink&) = default;
    TCgatsDiagnosticSink& operator=(const TCgatsDiagnosticSink&) = default;
};
