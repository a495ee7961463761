/// @file
/// Numbers and paragraphs for the terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace qxcms::command {

/// The width that reports keep to.
inline constexpr std::size_t kPageWidth = 110;

/// A number with that many decimals, without a sign of its own for zero; three significant digits with an
/// exponent from a hundred thousand on, so that no number breaks a column.
std::string numberText(double value, int decimals);

/// The same with a plus sign for what is above zero.
std::string signedText(double value, int decimals);

/// `text` behind blanks, `width` columns wide, which it must not exceed.
std::string rightAligned(std::string_view text, std::size_t width);

/// A paragraph: `label` in a column of `indent`, then the words of `text` in lines that keep to the page, the
/// following lines indented alike. A word that is longer than a line stays whole. Ends with a line feed.
std::string paragraph(std::string_view label, std::size_t indent, std::string_view text);

} // namespace qxcms::command
