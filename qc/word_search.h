/// @file
/// Looking for something in the words of a text. Internal.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qc/text_words.h"

namespace qxcms::qc {

using WordList = std::initializer_list<std::string_view>;

bool isOneOf(std::string_view text, WordList list);

/// Whether one of the words is in a list.
bool has(const std::vector<Word>& words, WordList list);

/// Whether one of the words begins with one of the stems.
bool hasStem(const std::vector<Word>& words, WordList stems);

/// Whether a word stands before one that begins with a stem.
bool holdsPair(const std::vector<Word>& words, std::string_view first, std::string_view second);

/// A word by its index; an empty one where there is none.
Word wordAt(const std::vector<Word>& words, std::size_t index);
Word wordBefore(const std::vector<Word>& words, std::size_t index);

bool isNumber(const Word& word);

/// "no", "without" and the like.
bool isNegation(const Word& word);

/// "deg", "degrees" and the like.
bool isDegree(const Word& word);

/// "unknown" and the like.
bool isUnknownWord(const Word& word);

/// M0 to M3 in small letters.
bool isMeasurementCondition(std::string_view word);

/// Of no words, and of words that say that nothing is known: "unknown", "n/a", "not specified", "-".
bool namesNothing(const std::vector<Word>& words);

/// "yes", "on" and the like give true, "no", "none", "off" false.
std::optional<bool> answerOf(const std::vector<Word>& words);

/// Something found at a word.
struct Found {
    std::string value;
    std::size_t words; ///< that it takes; 0 when there is nothing
};

inline Found nothing() {
    return {"", 0};
}

/// Gathers what a text says of one condition: the value, unless there are two.
class Sole {
public:
    void add(const std::string& value) {
        if (text && *text != value)
            ambiguous = true;
        text = value;
    }

    std::optional<std::string> value() const { return ambiguous ? std::nullopt : text; }

private:
    std::optional<std::string> text;
    bool ambiguous = false;
};

/// In capitals.
std::string upper(std::string text);

} // namespace qxcms::qc
