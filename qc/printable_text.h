/// @file
/// Texts of files and command lines made fit for a terminal.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qxcms::qc {

/// `text` with every control character and every byte that is not well-formed UTF-8 written as "\xNN", so
/// that it neither moves the cursor nor changes the reading direction.
std::string printable(std::string_view text);

/// A printable text between double quotes.
std::string quoted(std::string_view text);

/// The texts, made printable, with `separator` between them.
std::string joined(const std::vector<std::string>& texts, std::string_view separator);

/// The number of terminal columns that a printable text takes: two for the wide scripts of East Asia, none
/// for combining marks.
std::size_t columnsOf(std::string_view text);

/// A printable text in exactly `columns` columns (at least 4): filled up with blanks, or cut with "..." in
/// the middle, where long names differ least.
std::string fitted(std::string_view text, std::size_t columns);

} // namespace qxcms::qc
