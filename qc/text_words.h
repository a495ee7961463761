/// @file
/// The words of a text. Internal.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qxcms::qc {

/// A word in small letters. Numbers and the letters behind them are words of their own ("2deg", "45a"), the
/// degree sign is the word "deg", and what is often run together is taken apart ("uvcut", "cie1931").
struct Word {
    std::string text;
    /// What stands between this word and the one before: the first character that is no blank, else a blank.
    char before;
};

std::vector<Word> wordsOf(std::string_view text);

/// Without blanks, quotes and stray separators around it.
std::string trimmed(std::string_view text);

} // namespace qxcms::qc
