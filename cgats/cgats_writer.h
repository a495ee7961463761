/// @file
/// The CGATS writer: header lines in order, each pulling in what belongs behind it. Internal.
#pragma once

#include <ostream>

#include "cgats/tcgats.h"
#include "cgats/text_block.h"

namespace qxcms::detail {

/// Writes a document, or parts of it. The operations answer 0 or a document error code; what was written
/// before a failure stays written.
class CgatsWriter {
public:
    CgatsWriter(const TCgats& source, std::ostream& target) : document(source), quiet(target), text(target) {}

    int writeDocument();
    int writeTag(int index);
    int writeDataFormat(int table);
    int writeSamples(int table);
    /// Hands over what is left. @return whether the stream took everything.
    bool finish() { return text.flush(); }

private:
    int writeFields(const TCgatsTable& table);
    int writeRows(const TCgatsTable& table);
    struct Column;

    static Column columnAt(const TCgatsTable& table, int index);
    void writeValue(const Column& column, int row);
    void writeString(const char* value);

    const TCgats& document;
    const QuietStream quiet;
    TextBlock text;
};

} // namespace qxcms::detail
