#include "qc/condition_words.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>

namespace qxcms::qc {

namespace {

using Words = std::vector<Word>;

// Characters.

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isBeyondAscii(char c) {
    return static_cast<unsigned char>(c) >= 0x80U;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool startsWith(std::string_view text, std::size_t at, std::string_view what) {
    return text.substr(at, what.size()) == what;
}

// The length of a degree sign, 0 when there is none: in UTF-8 (also its look-alikes, the masculine ordinal
// and the ring above), in Latin-1, and behind a digit in Mac Roman.
std::size_t degreeSign(std::string_view text, std::size_t at) {
    for (const std::string_view sign : {"\xC2\xB0", "\xC2\xBA", "\xCB\x9A"})
        if (startsWith(text, at, sign))
            return sign.size();
    const bool behindAscii = at == 0 || !isBeyondAscii(text[at - 1]);
    const bool behindDigit = at > 0 && isDigit(text[at - 1]);
    const bool isSign =
        (behindAscii && (text[at] == '\xB0' || text[at] == '\xBA')) || (behindDigit && text[at] == '\xA1');
    return isSign ? 1 : 0;
}

// The length of a blank or a dash beyond ASCII in UTF-8, 0 when there is none.
std::size_t otherSeparator(std::string_view text, std::size_t at) {
    for (const std::string_view sign : {"\xC2\xA0", "\xE2\x80\x93", "\xE2\x80\x94", "\xE2\x88\x92"})
        if (startsWith(text, at, sign))
            return sign.size();
    return 0;
}

// Words.

bool isOneOf(std::string_view text, std::initializer_list<std::string_view> list) {
    return std::find(list.begin(), list.end(), text) != list.end();
}

// Takes words that are run together apart and appends them.
void append(Words& words, std::string_view text, char before) {
    for (const std::string_view head : {"illuminant", "illumination", "observer", "cie", "uv", "backing"})
        if (text.size() > head.size() && startsWith(text, 0, head)) {
            words.push_back({std::string(head), before});
            return append(words, text.substr(head.size()), ' ');
        }
    for (const std::string_view tail : {"filter", "backing", "cut"})
        if (text.size() > tail.size() && startsWith(text, text.size() - tail.size(), tail)) {
            append(words, text.substr(0, text.size() - tail.size()), before);
            return append(words, tail, ' ');
        }
    words.push_back({std::string(text), before});
}

// The end of the word that begins at `at`.
std::size_t endOfWord(std::string_view text, std::size_t at) {
    const bool number = isDigit(text[at]);
    std::size_t end = at;
    for (; end < text.size(); ++end) {
        const char c = text[end];
        const bool point =
            c == '.' && end > at && isDigit(text[end - 1]) && end + 1 < text.size() && isDigit(text[end + 1]);
        const bool belongs = isDigit(c) || point || (!number && (isLetter(c) || isBeyondAscii(c)));
        if (!belongs || degreeSign(text, end) != 0 || otherSeparator(text, end) != 0)
            break;
    }
    return end;
}

} // namespace

std::vector<Word> wordsOf(std::string_view text) {
    Words words;
    char before = ' ';
    for (std::size_t i = 0; i < text.size();) {
        if (const std::size_t degree = degreeSign(text, i); degree != 0) {
            words.push_back({"deg", ' '});
            before = ' ';
            i += degree;
        } else if (const std::size_t other = otherSeparator(text, i); other != 0) {
            if (before == ' ' && other > 2)
                before = '-';
            i += other;
        } else if (const std::size_t end = endOfWord(text, i); end != i) {
            std::string word(text.substr(i, end - i));
            std::transform(word.begin(), word.end(), word.begin(), toLower);
            append(words, word, before);
            before = ' ';
            i = end;
        } else {
            if (before == ' ' && !isBlank(text[i]))
                before = text[i];
            ++i;
        }
    }
    return words;
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view kAround = " \t\"',;=";
    const std::size_t first = text.find_first_not_of(kAround);
    if (first == std::string_view::npos)
        return "";
    return std::string(text.substr(first, text.find_last_not_of(kAround) + 1 - first));
}

namespace {

// Gathers what a text says of one condition: the value, unless there are two.
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

bool has(const Words& words, std::initializer_list<std::string_view> list) {
    return std::any_of(words.begin(), words.end(),
                       [&](const Word& word) { return isOneOf(word.text, list); });
}

bool hasStem(const Words& words, std::initializer_list<std::string_view> stems) {
    for (const Word& word : words)
        for (const std::string_view stem : stems)
            if (startsWith(word.text, 0, stem))
                return true;
    return false;
}

// A word by its index; an empty one where there is none.
Word wordAt(const Words& words, std::size_t index) {
    return index < words.size() ? words[index] : Word{"", ' '};
}

Word wordBefore(const Words& words, std::size_t index) {
    return index == 0 ? wordAt(words, words.size()) : words[index - 1];
}

bool isDegree(const Word& word) {
    return isOneOf(word.text, {"deg", "degr", "degree", "degrees", "grad"});
}

bool isNumber(const Word& word) {
    return !word.text.empty() && isDigit(word.text[0]);
}

bool isKelvin(const Words& words, std::size_t index) {
    return isNumber(words[index]) && isOneOf(wordAt(words, index + 1).text, {"k", "kelvin"});
}

// Something found at a word.
struct Found {
    std::string value;
    std::size_t words; ///< that it takes; 0 when there is nothing
};

Found nothing() {
    return {"", 0};
}

std::string upper(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}

// Illuminants.

// The phases of daylight that have a short name, also by their full colour temperature ("D6500").
Found daylightAt(const Words& words, std::size_t index) {
    std::string_view name = words[index].text;
    if (name.size() == 5 && isOneOf(name.substr(3), {"00"}))
        name = name.substr(0, 3);
    if (isOneOf(name, {"d50", "d55", "d60", "d65", "d75", "d93", "id50", "id65"}))
        return {upper(std::string(name)), 1};
    const std::string next = wordAt(words, index + 1).text;
    if (name == "d" && isOneOf(next, {"50", "55", "65", "75"}))
        return {"D" + next, 2};
    return nothing();
}

Found ledAt(const Words& words, std::size_t index) {
    constexpr std::string_view kLed = "led";
    std::string series = words[index].text;
    std::size_t count = 1;
    if (series == kLed) {
        series = wordAt(words, index + 1).text;
        count = 2;
    } else if (startsWith(series, 0, kLed)) {
        series.erase(0, kLed.size());
    } else {
        return nothing();
    }
    if (isOneOf(series, {"b1", "b2", "b3", "b4", "b5", "bh1", "rgb1", "v1", "v2"}))
        return {"LED-" + upper(series), count};
    return nothing();
}

// "1" to "12" and "3.1" to "3.15", the numbers of the fluorescent lamps.
bool isLampNumber(std::string_view number) {
    const bool further = startsWith(number, 0, "3.");
    const std::string_view digits = further ? number.substr(2) : number;
    if (digits.empty() || digits.size() > 2 || digits[0] == '0' ||
        !std::all_of(digits.begin(), digits.end(), isDigit))
        return false;
    const int value = digits.size() == 1 ? digits[0] - '0' : 10 * (digits[0] - '0') + (digits[1] - '0');
    return value <= (further ? 15 : 12);
}

// "F11", "FL11", "F 11", "fluorescent 11", and two names of the trade.
Found fluorescentAt(const Words& words, std::size_t index) {
    const std::string_view word = words[index].text;
    if (word == "tl84")
        return {"F11", 1};
    if (word == "cwf")
        return {"F2", 1};
    if (isOneOf(word, {"f", "fl", "fluorescent"}) && isLampNumber(wordAt(words, index + 1).text))
        return {"F" + wordAt(words, index + 1).text, 2};
    for (const std::string_view letters : {"fl", "f"})
        if (startsWith(word, 0, letters) && isLampNumber(word.substr(letters.size())))
            return {"F" + std::string(word.substr(letters.size())), 1};
    return nothing();
}

// Names that mean an illuminant in any text.
Found plainIlluminantAt(const Words& words, std::size_t index) {
    const Found daylight = daylightAt(words, index);
    return daylight.words != 0 ? daylight : ledAt(words, index);
}

// Names that mean one where an illuminant is expected.
Found expectedIlluminantAt(const Words& words, std::size_t index) {
    Found found = plainIlluminantAt(words, index);
    if (found.words == 0)
        found = fluorescentAt(words, index);
    if (found.words == 0 && isOneOf(words[index].text, {"a", "b", "c", "e"}))
        found = {upper(words[index].text), 1};
    return found;
}

// Observers.

Found observerOfYearAt(const Words& words, std::size_t index) {
    if (words[index].text == "1931")
        return {"2 degree", 1};
    if (words[index].text == "1964")
        return {"10 degree", 1};
    return nothing();
}

// An angle, with or without the word for degrees.
Found angleAt(const Words& words, std::size_t index) {
    const std::size_t count = isDegree(wordAt(words, index + 1)) ? 2 : 1;
    if (isOneOf(words[index].text, {"2", "02", "2.0", "2.00", "two"}))
        return {"2 degree", count};
    if (isOneOf(words[index].text, {"10", "10.0", "10.00", "ten"}))
        return {"10 degree", count};
    return nothing();
}

bool isObserverWord(const Word& word) {
    return isOneOf(word.text, {"observer", "obs", "observerangle", "angle"});
}

// An angle in a text: "2 degree", "observer 2", "D50/2".
Found observerInTextAt(const Words& words, std::size_t index) {
    const Word before = wordBefore(words, index);
    Found year = observerOfYearAt(words, index);
    if (year.words != 0 && (before.text == "cie" || has(words, {"observer"})))
        return year;
    const Found angle = angleAt(words, index);
    if (angle.words == 0)
        return nothing();
    // Not "D50/10 nm".
    const bool behindIlluminant = words[index].before == '/' && index > 0 &&
                                  expectedIlluminantAt(words, index - 1).words != 0 &&
                                  wordAt(words, index + angle.words).text != "nm";
    // Not "10 degrees C" nor "10/45".
    const bool isDegrees = angle.words == 2 && words[index].before != '/' &&
                           !isOneOf(wordAt(words, index + 2).text, {"c", "f", "celsius", "fahrenheit"});
    const bool isNamed = isObserverWord(before) || isObserverWord(wordAt(words, index + angle.words));
    return behindIlluminant || isDegrees || isNamed ? angle : nothing();
}

// A letter or the number of a lamp in a text: "illuminant A", "F11/10".
Found illuminantInTextAt(const Words& words, std::size_t index) {
    const Found plain = plainIlluminantAt(words, index);
    if (plain.words != 0)
        return wordAt(words, index + plain.words).text == "filter" ? nothing() : plain;
    const Found expected = expectedIlluminantAt(words, index);
    if (expected.words == 0)
        return nothing();
    const bool named = isOneOf(wordBefore(words, index).text, {"illuminant", "illumination"});
    const std::size_t next = index + expected.words;
    const bool beforeObserver =
        wordAt(words, next).before == '/' && next < words.size() && angleAt(words, next).words != 0;
    return named || beforeObserver ? expected : nothing();
}

// Measurement conditions, backings, geometries, filters.

bool isMeasurementCondition(std::string_view word) {
    return isOneOf(word, {"m0", "m1", "m2", "m3"});
}

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

bool isNegation(const Word& word) {
    return isOneOf(word.text, {"no", "none", "non", "not", "without", "off", "ohne", "kein", "keine"});
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

// Words that go with an illuminant or an observer without changing it.
bool isWeightingAside(const Word& word) {
    return isDegree(word) || isObserverWord(word) ||
           isOneOf(word.text,
                   {"illuminant",    "illumination",  "cie",       "standard",  "std",       "light",
                    "source",        "lightsource",   "lamp",      "daylight",  "noon",      "tungsten",
                    "incandescent",  "name",          "simulator", "simulated", "weighting", "function",
                    "supplementary", "complementary", "color",     "colour",    "matching",  "viewing",
                    "colorimetric",  "colourimetric", "field",     "view",      "of",        "fluorescent",
                    "functions",     "observers",     "type",      "graphic",   "arts",      "cool",
                    "white",         "horizon",       "equal",     "energy",    "nominal",   "and"});
}

// The number of words that a standard takes: "ISO 13655", "according to ISO 13655:2009", "ASTM E308"; 0 where
// there is none.
std::size_t standardAt(const Words& words, std::size_t index) {
    std::size_t next = index;
    while (isOneOf(wordAt(words, next).text, {"according", "to", "as", "per"}))
        ++next;
    const std::string body = wordAt(words, next).text;
    const bool isRunTogether = body.size() > 3 && startsWith(body, 0, "iso") && isDigit(body[3]);
    if (!isRunTogether && !isOneOf(body, {"iso", "din", "astm", "ansi"}))
        return 0;
    ++next;
    while (isOneOf(wordAt(words, next).text, {"en", "iso"})) // "DIN EN ISO"
        ++next;
    const std::string number = wordAt(words, next).text;
    const bool isNumbered =
        number.size() > 2 && (isDigit(number[0]) || (number[0] == 'e' && isDigit(number[1])));
    if (!isRunTogether && !isNumbered)
        return 0;
    if (!isRunTogether)
        ++next;
    const Word year = wordAt(words, next);
    if ((year.before == ':' || year.before == '-') && isNumber(year) && year.text.size() > 1)
        ++next;
    return next - index;
}

// The curves of others, whose 2 and 10 degrees are not those of the standard observers.
bool namesOtherObserver(const Words& words) {
    bool isLater = false; // "CIE 2015", "CIE 170-2:2015"
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        isLater = isLater ||
                  (words[i].text == "cie" && isOneOf(words[i + 1].text, {"2006", "2012", "2015", "170"}));
    return isLater || has(words, {"judd", "vos", "stiles", "burch", "stockman"});
}

bool isUnknownWord(const Word& word) {
    return isOneOf(word.text, {"unknown", "unspecified", "undefined", "unavailable", "unbekannt", "na", "nan",
                               "null", "tbd"});
}

} // namespace

bool namesNothing(const std::vector<Word>& words) {
    if (words.empty() || std::any_of(words.begin(), words.end(), isUnknownWord))
        return true;
    const bool isNa = words.size() == 2 && words[0].text == "n" && words[1].text == "a";
    const bool isNot = words.size() == 2 && words[0].text == "not" &&
                       isOneOf(words[1].text, {"specified", "available", "applicable", "known", "defined",
                                               "set", "given", "stated", "recorded"});
    return isNa || isNot;
}

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

Weighting weightingOf(const std::vector<Word>& words) {
    Sole illuminant;
    Sole plainIlluminant;
    Sole observer;
    Sole plainObserver;
    bool understood = true;
    for (std::size_t i = 0; i < words.size();) {
        const Found plain = plainIlluminantAt(words, i);
        const Found lamp = expectedIlluminantAt(words, i);
        const Found year = observerOfYearAt(words, i);
        const Found angle = angleAt(words, i);
        const Found plainAngle = observerInTextAt(words, i);
        const std::size_t standard = standardAt(words, i);
        std::size_t taken = 1;
        if (plain.words != 0)
            plainIlluminant.add(plain.value);
        if (plainAngle.words != 0)
            plainObserver.add(plainAngle.value);
        if (isKelvin(words, i)) {
            taken = 2;
        } else if (standard != 0) {
            taken = standard;
        } else if (lamp.words != 0) {
            illuminant.add(lamp.value);
            taken = lamp.words;
        } else if (year.words != 0) {
            observer.add(year.value);
        } else if (angle.words != 0) {
            observer.add(angle.value);
            taken = angle.words;
        } else if (!isWeightingAside(words[i]) && !isUnknownWord(words[i]) &&
                   !isMeasurementCondition(words[i].text)) {
            understood = false;
        }
        i += taken;
    }
    // Among words that are not understood a letter or a number may mean anything; "D50" and "10 degree" do
    // not.
    const Sole& certain = understood ? illuminant : plainIlluminant;
    const Sole& certainObserver = understood ? observer : plainObserver;
    return {certain.value(), namesOtherObserver(words) ? std::nullopt : certainObserver.value(),
            has(words, {"illuminant", "illumination"}), has(words, {"observer"}), understood};
}

namespace {

// Of a text that names one condition and nothing else.
Weighting soleWeightingOf(const Words& words) {
    Weighting weighting = weightingOf(words);
    const bool isMore = namesNothing(words) || (weighting.illuminant && weighting.observer) ||
                        std::any_of(words.begin(), words.end(),
                                    [](const Word& word) { return isMeasurementCondition(word.text); });
    if (!weighting.understood || isMore)
        weighting.illuminant = weighting.observer = std::nullopt;
    return weighting;
}

} // namespace

std::optional<std::string> illuminantOf(const std::vector<Word>& words) {
    return soleWeightingOf(words).illuminant;
}

std::optional<std::string> observerOf(const std::vector<Word>& words) {
    return soleWeightingOf(words).observer;
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

std::optional<bool> answerOf(const std::vector<Word>& words) {
    if (words.size() != 1)
        return std::nullopt;
    if (isOneOf(words[0].text, {"yes", "y", "on", "true", "1", "ja"}))
        return true;
    if (isOneOf(words[0].text, {"no", "n", "none", "off", "false", "0", "nein"}))
        return false;
    return std::nullopt;
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

namespace {

bool holdsPair(const Words& words, std::string_view first, std::string_view second) {
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        if (words[i].text == first && startsWith(words[i + 1].text, 0, second))
            return true;
    return false;
}

bool saysSamples(const Words& words) {
    return hasStem(words, {"reflect", "transmi", "densit", "factor"});
}

} // namespace

bool saysEmission(const std::vector<Word>& words) {
    return !saysSamples(words) &&
           (hasStem(words, {"emissive", "radiance", "irradiance"}) || holdsPair(words, "spectral", "power"));
}

std::optional<bool> emissionOf(const std::vector<Word>& words) {
    if (saysSamples(words))
        return false;
    bool isPower = false; // "W/m2", "mW/(sr m2 nm)"
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        isPower = isPower || (isOneOf(words[i].text, {"w", "mw", "uw"}) && words[i + 1].before == '/');
    if (saysEmission(words) || isPower || holdsPair(words, "light", "source") ||
        holdsPair(words, "ill", "none") || // of the kernel's geometries
        hasStem(words, {"emission", "emitt", "radiant", "ambient", "display", "monitor", "projector"}) ||
        has(words, {"flash", "lamp", "lamps", "cd", "luminance", "illuminance"}))
        return true;
    return std::nullopt;
}

} // namespace qxcms::qc
