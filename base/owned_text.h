/// @file
/// Copies of texts with one owner.
#pragma once

#include <cstddef>
#include <cstring>
#include <memory>
#include <new>

namespace qxcms::detail {

/// A terminated copy of `length` characters; null when there is no memory.
inline std::unique_ptr<char[]> copyText(const char* text, std::size_t length) noexcept {
    std::unique_ptr<char[]> copy(new (std::nothrow) char[length + 1]);
    if (copy) {
        std::memcpy(copy.get(), text, length);
        copy[length] = '\0';
    }
    return copy;
}

/// A copy of a terminated text; a null pointer counts as "".
inline std::unique_ptr<char[]> copyText(const char* text) noexcept {
    return text ? copyText(text, std::strlen(text)) : copyText("", 0);
}

} // namespace qxcms::detail
