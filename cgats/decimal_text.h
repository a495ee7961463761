/// @file
/// Numbers changed as text, without a loss of digits. Internal.
#pragma once

#include <string>
#include <string_view>

namespace qxcms::detail {

/// Whether a text is a decimal number as a whole; a decimal comma counts as a point.
bool isDecimalNumber(std::string_view text) noexcept;

/// A decimal number times a power of ten: the point moves `places` to the right (to the left below 0), or the
/// exponent changes where there is one.
std::string withPointMoved(std::string_view number, int places);

/// A number whose thousands are set apart by points, commas, apostrophes or blanks, as a plain one with a
/// decimal point; empty for any other text. "1,234" has decimals, unless `certain` is the comma; so with
/// points.
std::string withoutThousands(std::string_view text, char certain = '\0');

/// What sets the thousands of such a number apart; NUL for any other text.
char thousandsMark(std::string_view text);

} // namespace qxcms::detail
