/// @file
/// One header line of a CGATS document.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <memory>

#include "base/export.h"

namespace qxcms::detail {
struct LayoutProbe;
}

/// Keyword, value and comment of a header line. A tag without a keyword holds its code alone.
class QXCMS_API TCgatsTag {
public:
    /// @param code the keyword code, -1 for a keyword that is not in the table.
    /// @param keyword copied; with null or "" nothing but the code is stored.
    /// @param numeric non-zero when the value is written bare, 0 when it is written between double quotes.
    /// @param value, comment copied; null is stored as "".
    TCgatsTag(int code, const char* keyword, int numeric, const char* value, const char* comment);
    TCgatsTag(const TCgatsTag&) = delete;
    TCgatsTag& operator=(const TCgatsTag&) = delete;
    ~TCgatsTag();

    std::int32_t GetCode() const { return code; }
    std::int32_t GetNumeric() const { return numeric; }
    /// Owned by the tag; null when absent.
    const char* GetKeyword() const { return keyword.get(); }
    const char* GetValue() const { return value.get(); }
    /// The text behind the "#".
    const char* GetComment() const { return comment.get(); }

    /// Replaces value and `numeric`; the tag must have a keyword. @return 0, 1 without one, 2 for null.
    int SetValue(const char* newValue, int newNumeric);

    /// Writes the line: keyword, TAB and value, TAB and "# " and comment, line feed.
    /// @return 0, or 1 (nothing written) for a tag without a keyword.
    int Write(std::ostream& stream) const;

private:
    friend struct qxcms::detail::LayoutProbe;

    std::int32_t code;
    std::int32_t numeric;
    std::unique_ptr<char[]> keyword;
    std::unique_ptr<char[]> value;
    std::unique_ptr<char[]> comment;
};
