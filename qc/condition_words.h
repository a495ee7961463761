/// @file
/// The spellings in which measuring conditions stand in files. Internal.
#pragma once

#include <optional>
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

/// Of no words, and of words that say that nothing is known: "unknown", "n/a", "not specified", "-".
bool namesNothing(const std::vector<Word>& words);

/// What a text names, in the values of DocumentConditions. Of a condition that it names in two ways it names
/// none.
struct NamedConditions {
    std::optional<std::string> illuminant;
    std::optional<std::string> observer;
    std::optional<std::string> measurementCondition;
    std::optional<std::string> backing;
    std::optional<std::string> geometry;
    std::optional<std::string> filter;

    bool empty() const;
};

/// Reads a text that may be about anything: only what can hardly mean something else.
NamedConditions conditionsInText(const std::vector<Word>& words);

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
std::optional<std::string> backingOf(const std::vector<Word>& words);
std::optional<std::string> whiteBaseOf(const std::vector<Word>& words);
std::optional<std::string> geometryOf(const std::vector<Word>& words);
std::optional<std::string> filterOf(const std::vector<Word>& words);
/// @}

/// "yes", "on" and the like give true, "no", "none", "off" false.
std::optional<bool> answerOf(const std::vector<Word>& words);

/// The instrument without its serial number and version.
std::string instrumentOf(std::string_view text);

/// Whether a text about anything says that light sources or displays were measured.
bool saysEmission(const std::vector<Word>& words);

/// The same for a text that tells what was measured: false when it says that samples were.
std::optional<bool> emissionOf(const std::vector<Word>& words);

} // namespace qxcms::qc
