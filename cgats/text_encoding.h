/// @file
/// The bytes of a file as text. Internal.
#pragma once

#include <string>
#include <string_view>

namespace qxcms::detail {

/// A byte-order mark of UTF-16, or NUL bytes that alternate with others from the start.
bool looksLikeUtf16(std::string_view bytes) noexcept;

/// UTF-16 of either byte order as UTF-8, without its byte-order mark. A half of a pair alone becomes U+FFFD,
/// a last odd byte is left out.
std::string utf8OfUtf16(std::string_view bytes);

/// The byte-order marks of UTF-8 and of both orders of UTF-16.
inline constexpr std::string_view kByteOrderMarks[] = {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF"};

} // namespace qxcms::detail
