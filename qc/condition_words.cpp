#include "qc/condition_words.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "qc/characters.h"
#include "qc/light_words.h"
#include "qc/word_search.h"

namespace qxcms::qc {

namespace {

using Words = std::vector<Word>;

// Square and cubic metres: "115 g/m2", "80 g per m2", "W/(m2 sr)".
bool isMetres(const Words& words, std::size_t index) {
    if (!isOneOf(words[index].text, {"m2", "m3"}))
        return false;
    const bool isPer = wordBefore(words, index).text == "per";
    const std::string unit = (isPer && index > 1 ? words[index - 2] : wordBefore(words, index)).text;
    if (isOneOf(unit, {"g", "gr", "gram", "grams", "gramm", "sr"}))
        return true;
    return (isPer || words[index].before == '/') &&
           isOneOf(unit, {"kg", "mg", "cd", "w", "mw", "uw", "kw", "j", "kj", "lm", "n", "l", "ml"});
}

// "Machine M2", "M3 stock": a name.
bool isNameOfAThing(const Words& words, std::size_t index) {
    const bool isOfAMachine =
        words[index].before == ' ' &&
        isOneOf(wordBefore(words, index).text, {"machine", "maschine", "druckmaschine", "press", "printer",
                                                "proofer", "line", "linie", "unit", "tower"});
    const Word next = wordAt(words, index + 1);
    return isOfAMachine || (next.before == ' ' && isOneOf(next.text, {"stock", "machine", "maschine"}));
}

// A measurement condition in a text about anything.
bool isMeasurementConditionAt(const Words& words, std::size_t index) {
    return isMeasurementCondition(words[index].text) && !isMetres(words, index) &&
           !isNameOfAThing(words, index);
}

std::optional<std::string> backingColor(std::string_view word) {
    if (isOneOf(word, {"white", "weiss", "wei\xC3\x9F"}))
        return "white";
    if (isOneOf(word, {"black", "schwarz"}))
        return "black";
    if (word == "self")
        return "self";
    return std::nullopt;
}

bool isBackingWord(const Word& word) {
    return isOneOf(word.text, {"backing", "backed", "underlay"});
}

std::optional<std::string> geometryAngle(std::string_view word) {
    if (isOneOf(word, {"d", "di", "de", "diffuse", "diff"}))
        return "d";
    if (isOneOf(word, {"0", "8", "45"}))
        return std::string(word);
    return std::nullopt;
}

bool isGeometryAside(const Word& word) {
    return isDegree(word) || isOneOf(word.text, {"a", "c", "x", "annular", "circumferential"});
}

bool isMeasuringGeometry(const std::string& illuminating, const std::string& viewing) {
    return isOneOf(illuminating + "/" + viewing, {"45/0", "0/45", "d/8", "8/d", "d/0", "0/d"});
}

bool isRatioSign(char c) {
    return c == '/' || c == ':' || c == '-';
}

// "45/0" in a text, not as a part of a date or a list.
Found geometryInTextAt(const Words& words, std::size_t index) {
    const auto first = geometryAngle(words[index].text);
    if (!first || isRatioSign(words[index].before))
        return nothing();
    std::size_t next = index + 1;
    while (isGeometryAside(wordAt(words, next)))
        ++next;
    const auto second = geometryAngle(wordAt(words, next).text);
    if (!second || !isRatioSign(words[next].before) || !isMeasuringGeometry(*first, *second))
        return nothing();
    if (isRatioSign(wordAt(words, next + 1).before) && isNumber(wordAt(words, next + 1)))
        return nothing();
    return {*first + "/" + *second, next + 1 - index};
}

// The words around the word "filter" or "cut".
std::optional<std::string> filterInText(const Words& words) {
    Sole filter;
    for (std::size_t i = 1; i < words.size(); ++i) {
        if (!isOneOf(words[i].text, {"filter", "cut"}))
            continue;
        std::size_t first = i - 1;
        if (first > 0 && isNegation(words[first - 1]))
            --first;
        const auto end = words.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        if (const auto found = filterOf(Words(words.begin() + static_cast<std::ptrdiff_t>(first), end)))
            filter.add(*found);
    }
    if (hasStem(words, {"polarized", "polarised"}) && !has(words, {"non", "not"}))
        filter.add("polarizing");
    return filter.value();
}

} // namespace

bool NamedConditions::empty() const {
    return !illuminant && !observer && !measurementCondition && !backing && !geometry && !filter;
}

NamedConditions conditionsInText(const std::vector<Word>& words) {
    Sole illuminant;
    Sole observer;
    Sole measurementCondition;
    Sole backing;
    Sole geometry;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (const Found found = illuminantInTextAt(words, i); found.words != 0)
            illuminant.add(found.value);
        if (const Found found = observerInTextAt(words, i); found.words != 0)
            observer.add(found.value);
        if (isMeasurementConditionAt(words, i))
            measurementCondition.add(upper(words[i].text));
        const auto color = words[i].text == "substrate" ? "self" : backingColor(words[i].text);
        if (color && (isBackingWord(wordAt(words, i + 1)) || isBackingWord(wordBefore(words, i))))
            backing.add(*color);
        if (const Found found = geometryInTextAt(words, i); found.words != 0)
            geometry.add(found.value);
    }
    return {illuminant.value(), observer.value(), measurementCondition.value(),
            backing.value(),    geometry.value(), filterInText(words)};
}

std::optional<std::string> backingOf(const std::vector<Word>& words) {
    Sole backing;
    for (const Word& word : words) {
        if (isNegation(word))
            return std::nullopt;
        if (const auto color = backingColor(word.text))
            backing.add(*color);
    }
    if (!backing.value() && has(words, {"substrate"}) && has(words, {"own", "same", "backing"}))
        return "self";
    if (words.size() == 1 && words[0].text == "wb")
        return "white";
    if (words.size() == 1 && words[0].text == "bb")
        return "black";
    return backing.value();
}

std::optional<std::string> whiteBaseOf(const std::vector<Word>& words) {
    Sole base;
    for (const Word& word : words)
        if (isOneOf(word.text, {"abs", "absolute", "absolut"}))
            base.add("absolute");
        else if (isOneOf(word.text, {"paper", "pap", "papier", "rel", "relative"}))
            base.add("paper");
        else if (!isOneOf(word.text, {"white", "base", "to"}))
            return std::nullopt;
    return base.value();
}

std::optional<std::string> geometryOf(const std::vector<Word>& words) {
    std::vector<std::string> angles;
    Sole pair; // among other numbers
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (auto angle = geometryAngle(words[i].text))
            angles.push_back(std::move(*angle));
        if (const Found found = geometryInTextAt(words, i); found.words != 0)
            pair.add(found.value);
    }
    if (angles.size() == 2 && isMeasuringGeometry(angles[0], angles[1]))
        return angles[0] + "/" + angles[1];
    if (angles.size() > 2)
        return pair.value();
    if (words.size() == 1 && isOneOf(words[0].text, {"d8", "di8", "de8"}))
        return "d/8";
    if (angles.empty() && has(words, {"sphere", "spherical", "ulbricht"}))
        return "d/8";
    return std::nullopt;
}

std::optional<std::string> filterOf(const std::vector<Word>& words) {
    const bool negated = std::any_of(words.begin(), words.end(), isNegation);
    const bool named = has(words, {"filter", "cut"});
    if (has(words, {"pol"}) || hasStem(words, {"polari"}))
        return negated ? "none" : "polarizing";
    if (has(words, {"uv", "uvc", "nouv"})) {
        // "No UV" is without the ultraviolet, "no UV filter" with it.
        const bool included = (negated && named) || has(words, {"included", "inc", "incl", "in", "with"});
        return included ? "none" : "UV cut";
    }
    if (has(words, {"d65"}))
        return negated ? "none" : "D65";
    const bool nothingElse = std::all_of(words.begin(), words.end(), [](const Word& word) {
        return isNegation(word) || isOneOf(word.text, {"filter", "used", "unfiltered", "empty"}) ||
               startsWith(word.text, 0, "unpolari") || startsWith(word.text, 0, "nonpolari");
    });
    const bool saysSo =
        negated || has(words, {"unfiltered", "empty"}) || hasStem(words, {"unpolari", "nonpolari"});
    return nothingElse && saysSo ? std::optional<std::string>("none") : std::nullopt;
}

bool isBareGeometry(const std::vector<Word>& words) {
    constexpr std::string_view kName[] = {"ill", "45", "obs", "0"};
    return words.size() >= std::size(kName) &&
           std::equal(std::begin(kName), std::end(kName), words.begin(),
                      [](std::string_view name, const Word& word) { return name == word.text; });
}

std::optional<std::string> filterOfMeasurementCondition(const std::string& condition) {
    if (condition == "M2")
        return "UV cut";
    return condition == "M3" ? std::optional<std::string>("polarizing") : std::nullopt;
}

std::string instrumentOf(std::string_view text) {
    std::size_t end = std::min(text.find(';'), text.size());
    for (std::size_t i = 0; i < end; ++i) {
        const bool insideAWord = i > 0 && (isLetter(text[i - 1]) || isDigit(text[i - 1]));
        if (insideAWord || !isLetter(text[i]))
            continue;
        std::string word;
        for (std::size_t j = i; j < end && (isLetter(text[j]) || text[j] == '/'); ++j)
            word += toLower(text[j]);
        if (isOneOf(word, {"serial", "serialnumber", "serialno", "sn", "s/n", "ser", "ver", "vers", "version",
                           "firmware", "fw"}))
            end = i;
    }
    std::string name;
    for (const char c : text.substr(0, end))
        if (!isBlank(c))
            name += c;
        else if (!name.empty() && name.back() != ' ')
            name += ' ';
    const std::size_t last = name.find_last_not_of(" ,;:-(/[");
    return trimmed(last == std::string::npos ? "" : name.substr(0, last + 1));
}

} // namespace qxcms::qc
