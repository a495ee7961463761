/// @file
/// The spellings in which illuminants and observers stand in files. Internal.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "qc/word_search.h"

namespace qxcms::qc {

/// An angle in a text about anything: "2 degree", "observer 2", "D50/2".
Found observerInTextAt(const std::vector<Word>& words, std::size_t index);

/// An illuminant in a text about anything; a letter or the number of a lamp as in "illuminant A", "F11/10".
Found illuminantInTextAt(const std::vector<Word>& words, std::size_t index);

/// Where an illuminant or an observer is expected, "A" and "2" are enough, unless there are other words: then
/// "D50" and "2 degree" count as they do in any text.
struct Weighting {
    std::optional<std::string> illuminant;
    std::optional<std::string> observer;
    bool namesIlluminant; ///< holds the word
    bool namesObserver;   ///< holds the word
    bool understood;      ///< no other words
};

Weighting weightingOf(const std::vector<Word>& words);

/// @name Texts that stand where nothing but such a condition belongs
/// Nothing for spellings that are not known.
/// @{
std::optional<std::string> illuminantOf(const std::vector<Word>& words);
std::optional<std::string> observerOf(const std::vector<Word>& words);
/// @}

} // namespace qxcms::qc
