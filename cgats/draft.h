/// @file
/// A text on its way into form. Internal.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cgats/tcgatsnormalizer.h"
#include "cgats/text_edits.h"
#include "cgats/text_span.h"

namespace qxcms::detail {

/// Something to be told about a place of the text.
struct Finding {
    TCgatsLiberty::Kind kind;
    Span token;
    std::string done;
};

/// Why a text is refused.
struct Objection {
    int code;
    Span token;
    std::string expected;
};

/// A text, the changes that it needs and what is to be told about them. Of several objections the first one
/// in the text counts.
class Draft {
public:
    explicit Draft(std::string_view what) : text(what), lineEnd(firstLineEnd(what)) {}

    void took(TCgatsLiberty::Kind kind, Span token, std::string done) {
        liberties.push_back({kind, token, std::move(done)});
    }
    void remark(TCgatsLiberty::Kind kind, Span token, std::string done) {
        remarks.push_back({kind, token, std::move(done)});
    }
    void refuse(int code, Span token, std::string expected) {
        if (!objection || token.first < objection->token.first)
            objection = Objection{code, token, std::move(expected)};
    }

    /// The words of a part in double quotes, for a sentence.
    std::string quoted(Span part) const { return '"' + std::string(part.of(text)) + '"'; }

    const std::string_view text;
    const std::string_view lineEnd; ///< for lines that are put in
    TextEdits edits;
    std::vector<Finding> liberties;
    std::vector<Finding> remarks;
    std::optional<Objection> objection;

private:
    static std::string_view firstLineEnd(std::string_view text) {
        const std::size_t at = text.find_first_of("\r\n");
        if (at == std::string_view::npos || text[at] == '\n')
            return "\n";
        return at + 1 < text.size() && text[at + 1] == '\n' ? "\r\n" : "\r";
    }
};

} // namespace qxcms::detail
