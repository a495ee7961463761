#include "qc/word_search.h"

#include <algorithm>

#include "qc/characters.h"

namespace qxcms::qc {

bool isOneOf(std::string_view text, WordList list) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

bool has(const std::vector<Word>& words, WordList list) {
    return std::any_of(words.begin(), words.end(),
                       [&](const Word& word) { return isOneOf(word.text, list); });
}

bool hasStem(const std::vector<Word>& words, WordList stems) {
    for (const Word& word : words)
        for (const std::string_view stem : stems)
            if (startsWith(word.text, 0, stem))
                return true;
    return false;
}

bool holdsPair(const std::vector<Word>& words, std::string_view first, std::string_view second) {
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        if (words[i].text == first && startsWith(words[i + 1].text, 0, second))
            return true;
    return false;
}

Word wordAt(const std::vector<Word>& words, std::size_t index) {
    return index < words.size() ? words[index] : Word{"", ' '};
}

Word wordBefore(const std::vector<Word>& words, std::size_t index) {
    return index == 0 ? wordAt(words, words.size()) : words[index - 1];
}

bool isNumber(const Word& word) {
    return !word.text.empty() && isDigit(word.text[0]);
}

bool isNegation(const Word& word) {
    return isOneOf(word.text, {"no", "none", "non", "not", "without", "off", "ohne", "kein", "keine"});
}

bool isDegree(const Word& word) {
    return isOneOf(word.text, {"deg", "degr", "degree", "degrees", "grad"});
}

bool isUnknownWord(const Word& word) {
    return isOneOf(word.text, {"unknown", "unspecified", "undefined", "unavailable", "unbekannt", "na", "nan",
                               "null", "tbd"});
}

bool isMeasurementCondition(std::string_view word) {
    return isOneOf(word, {"m0", "m1", "m2", "m3"});
}

bool namesNothing(const std::vector<Word>& words) {
    if (words.empty() || std::any_of(words.begin(), words.end(), isUnknownWord))
        return true;
    const bool isNa = words.size() == 2 && words[0].text == "n" && words[1].text == "a";
    const bool isNot = words.size() == 2 && words[0].text == "not" &&
                       isOneOf(words[1].text, {"specified", "available", "applicable", "known", "defined",
                                               "set", "given", "stated", "recorded"});
    return isNa || isNot;
}

std::optional<bool> answerOf(const std::vector<Word>& words) {
    if (words.size() != 1)
        return std::nullopt;
    if (isOneOf(words[0].text, {"yes", "y", "on", "true", "1", "ja"}))
        return true;
    if (isOneOf(words[0].text, {"no", "n", "none", "off", "false", "0", "nein"}))
        return false;
    return std::nullopt;
}

std::string upper(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}

} // namespace qxcms::qc
