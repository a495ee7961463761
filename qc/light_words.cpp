#include "qc/light_words.h"

#include <algorithm>
#include <string_view>

#include "qc/characters.h"

namespace qxcms::qc {

namespace {

using Words = std::vector<Word>;

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

bool isKelvin(const Words& words, std::size_t index) {
    return isNumber(words[index]) && isOneOf(wordAt(words, index + 1).text, {"k", "kelvin"});
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

} // namespace

Found observerInTextAt(const std::vector<Word>& words, std::size_t index) {
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

Found illuminantInTextAt(const std::vector<Word>& words, std::size_t index) {
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

} // namespace qxcms::qc
