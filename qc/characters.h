/// @file
/// Characters of texts, whatever the locale. Internal.
#pragma once

#include <cstddef>
#include <string_view>

namespace qxcms::qc {

constexpr bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

constexpr bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

constexpr bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

constexpr char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether the text goes on with `what` at a place.
constexpr bool startsWith(std::string_view text, std::size_t at, std::string_view what) {
    return text.substr(at, what.size()) == what;
}

} // namespace qxcms::qc
