#include "qc/document_conditions.h"

#include <cstddef>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "cgats/cgats_vocabulary.h"
#include "platform/utility.h"
#include "qc/condition_parts.h"
#include "qc/condition_subjects.h"
#include "qc/condition_words.h"
#include "qc/emission_words.h"
#include "qc/light_words.h"
#include "qc/word_search.h"

namespace qxcms::qc {

namespace {

using Standing = Condition::Standing;

// Gathers the conditions line by line.
class Gatherer {
public:
    void readLine(const TCgatsTag& tag) {
        if (tag.GetKeyword() == nullptr)
            return;
        const std::string value = tag.GetValue();
        const std::string comment = tag.GetComment();
        const std::string keyword = tag.GetKeyword();
        const std::string mark = tag.GetNumeric() != 0 ? "" : "\"";
        line = keyword + " " + mark + value + mark;
        const auto subject = subjectOfKeyword(keyword);
        if (subject == Subject::nothing)
            return;
        const bool isText = subject == Subject::text;
        const bool hasParts = !isText && readParts(subject, partsOf(value, tag.GetNumeric() != 0));
        if (!hasParts && (subject || !isOfAName(keyword)))
            read(subject.value_or(Subject::text), trimmed(value));
        // A "#" cuts a value in two wherever it stands.
        line += " #" + comment;
        if (isText)
            readText(wordsOf(comment));
        else if (hasParts)
            readParts(subject, partsOf(comment, false));
    }

    /// What was read so far belongs to a table that ends.
    void endTable() {
        earlier = {
            &found.illuminant, &found.observer,  &found.measurementCondition, &found.backing, &found.geometry,
            &found.filter,     &found.whiteBase, &found.instrument,           &light,         &namedLight};
    }

    DocumentConditions result() {
        settleLight();
        settleLightOfFilter();
        settleGeometryFilter();
        // A polarizer, or its absence, is told in a line of its own beside the filter.
        settle(polarizer);
        settle(ultravioletFilter);
        implyMeasurementCondition();
        found.isEmission = measuresEmission.value_or(emissionInText);
        return std::move(found);
    }

private:
    // False when the line does not consist of parts.
    bool readParts(std::optional<Subject> subject, const Parts& parts) {
        if (!parts.haveASubject())
            return false;
        if (subject && !parts.before.empty())
            read(*subject, parts.before);
        for (const Part& part : parts.parts)
            if (subject == Subject::source && part.subject == Subject::illuminant)
                readIlluminant(namedLight, wordsOf(part.value), part.value);
            else if (part.subject && (subject || isUnderstood(*part.subject, part.value)))
                read(*part.subject, part.value);
        return true;
    }

    void read(Subject subject, const std::string& value) {
        const std::vector<Word> words = wordsOf(value);
        switch (subject) {
        case Subject::illuminant:
            return readIlluminant(found.illuminant, words, value);
        case Subject::observer:
            return readObserver(words, value);
        case Subject::weighting:
            return readWeighting(value);
        case Subject::source:
            return readSource(words);
        case Subject::measurementCondition:
            return readMeasurementCondition(words, value);
        case Subject::backing:
            putSpelled(found.backing, words, backingOf(words), value);
            return readAside(words);
        case Subject::geometry:
            return readGeometry(words, value);
        case Subject::filter:
            return readFilter(words, value);
        case Subject::polarization:
            return readSwitch(polarizer, "polarizing", words);
        case Subject::ultravioletFilter:
            return readSwitch(ultravioletFilter, "UV cut", words);
        case Subject::whiteBase:
            return put(found.whiteBase, whiteBaseOf(words), Standing::declared);
        case Subject::instrument:
            // Public characterisation data tell here how they were measured.
            putAll(conditionsInText(words), Standing::freeText);
            return readInstrument(found.instrument, Standing::declared, words, value);
        case Subject::intendedInstrument:
            return readInstrument(found.instrument, Standing::freeText, words, value);
        case Subject::deviceClass:
            if (!namesNothing(words))
                measuresEmission = emissionOf(words).value_or(false);
            return;
        case Subject::quantity:
            if (const auto emission = emissionOf(words))
                measuresEmission = emission;
            return readAside(words, Standing::declared);
        case Subject::display:
            if (!namesNothing(words) && value != "None")
                measuresEmission = true;
            return;
        case Subject::text:
            return readText(words);
        case Subject::nothing:
            return;
        }
    }

    // Descriptive texts.

    void readText(const std::vector<Word>& words) {
        putAll(conditionsInText(words), Standing::freeText);
        emissionInText = emissionInText || saysEmission(words);
    }

    void putAll(const NamedConditions& named, Standing standing) {
        put(found.illuminant, named.illuminant, standing);
        put(found.observer, named.observer, standing);
        put(found.measurementCondition, named.measurementCondition, standing);
        put(found.backing, named.backing, standing);
        put(found.geometry, named.geometry, standing);
        put(found.filter, named.filter, standing);
    }

    // A measurement condition that stands in a line of something else.
    void readAside(const std::vector<Word>& words, Standing standing = Standing::freeText) {
        put(found.measurementCondition, conditionsInText(words).measurementCondition, standing);
    }

    // Illuminants and observers.

    void readIlluminant(Condition& illuminant, const std::vector<Word>& words, const std::string& value) {
        const Weighting weighting = weightingOf(words);
        const bool namesCondition = conditionsInText(words).measurementCondition.has_value();
        readAside(words, Standing::declared);
        if (weighting.illuminant || !namesCondition)
            putSpelled(illuminant, words, weighting.illuminant, value);
        if (weighting.illuminant)
            put(found.observer, weighting.observer, Standing::declared);
    }

    void readObserver(const std::vector<Word>& words, const std::string& value) {
        const Weighting weighting = weightingOf(words);
        const auto observer = weighting.understood ? weighting.observer : std::nullopt;
        putSpelled(found.observer, words, observer, value);
        if (observer)
            put(found.illuminant, weighting.illuminant, Standing::declared);
    }

    void readWeighting(const std::string& value) {
        const Weighting weighting = weightingOf(wordsOf(value));
        const bool isOne = weighting.understood || !weighting.namesIlluminant || !weighting.namesObserver;
        const std::size_t cut = isOne ? value.size() : lastLabel(value);
        readOneWeighting(value.substr(0, cut));
        if (!isOne)
            readOneWeighting(value.substr(cut));
    }

    void readOneWeighting(const std::string& value) {
        const std::vector<Word> words = wordsOf(value);
        const Weighting weighting = weightingOf(words);
        if (weighting.illuminant || weighting.observer) {
            readAside(words, Standing::declared);
            put(found.illuminant, weighting.illuminant, Standing::declared);
            put(found.observer, weighting.observer, Standing::declared);
            return;
        }
        if (weighting.namesIlluminant)
            putSpelled(found.illuminant, words, std::nullopt, withoutFirstWord(value, "illuminant"));
        else if (weighting.namesObserver)
            putSpelled(found.observer, words, std::nullopt, withoutFirstWord(value, "observer"));
    }

    // The light of the measurement. Where it is daylight and no line tells what the colours are computed for,
    // they are for that light as well; lamps in instruments are not.
    void putLight(const std::optional<std::string>& lamp) {
        const bool isDaylight = lamp && lamp->front() == 'D';
        put(light, lamp, isDaylight ? Standing::declared : Standing::freeText);
    }

    void readSource(const std::vector<Word>& words) {
        const Weighting weighting = weightingOf(words);
        const NamedConditions named = conditionsInText(words);
        readAside(words, Standing::declared);
        putLight(weighting.illuminant);
        if (weighting.illuminant || weighting.namesObserver || named.observer)
            put(found.observer, weighting.observer, Standing::declared);
        put(found.filter, named.filter, Standing::freeText);
        put(found.geometry, named.geometry, Standing::freeText);
        put(found.backing, named.backing, Standing::freeText);
    }

    // What a line says the colours are for goes before the light, which is told where its line names an
    // illuminant and not a mere lamp.
    void settleLight() {
        if (namedLight.isDeclared() && !found.illuminant.isDeclared())
            found.illuminant = namedLight;
        else if (namedLight.isDeclared() && !meanTheSame(namedLight.value, found.illuminant.value) &&
                 found.illuminant.contradicted.empty())
            found.illuminant.contradicted = namedLight.source;
        if (light.isDeclared() ? !found.illuminant.isDeclared()
                               : found.illuminant.standing == Standing::unknown && !light.value.empty())
            found.illuminant = light;
    }

    // Some write the light of M1 where the filter belongs.
    void settleLightOfFilter() {
        if (found.measurementCondition.isDeclared() && found.measurementCondition.value == "M1" &&
            !found.filter.understood && illuminantOf(wordsOf(found.filter.value)) == "D50")
            found.filter = {};
    }

    // The other conditions.

    void readMeasurementCondition(const std::vector<Word>& words, const std::string& value) {
        constexpr std::size_t kWordsOfAName = 2;
        NamedConditions named = conditionsInText(words);
        const std::string letters = squeezed(value);
        const bool isSpaced =
            letters.size() == 2 && letters[0] == 'm' && letters[1] >= '0' && letters[1] <= '3';
        const auto filter = named.filter ? named.filter : filterOf(words);
        if (isSpaced)
            put(found.measurementCondition, std::string("M") + letters[1], Standing::declared);
        else if (named.measurementCondition || namesNothing(words) ||
                 (named.empty() && !filter && words.size() <= kWordsOfAName))
            putSpelled(found.measurementCondition, words, named.measurementCondition, value);
        // "M0 (tungsten, illuminant A)": ISO 13655 defines the conditions by their lamps. "M0, A/2" may tell
        // what the colours are for.
        if (named.measurementCondition) {
            if (named.observer)
                put(namedLight, named.illuminant, Standing::declared);
            else
                putLight(named.illuminant);
            named.illuminant.reset();
        }
        putAll(named, Standing::declared);
        put(found.filter, filter, Standing::declared);
    }

    void readGeometry(const std::vector<Word>& words, const std::string& value) {
        const auto geometry = geometryOf(words);
        const auto filter = conditionsInText(words).filter;
        geometryFilter = {};
        bareGeometry = {};
        put(geometryFilter, filter, Standing::declared);
        if (isBareGeometry(words) && filter.value_or("none") == "none")
            put(bareGeometry, std::string("M0"), Standing::declared);
        // What was measured is no geometry.
        const bool isEmission = !geometry && emissionOf(words) == true;
        const bool isReflection = words.size() == 1 && words[0].text.compare(0, 7, "reflect") == 0;
        if (isEmission)
            measuresEmission = true;
        if (!isEmission && !isReflection)
            putSpelled(found.geometry, words, geometry, value);
        readAside(words, Standing::declared);
    }

    void readFilter(const std::vector<Word>& words, const std::string& value) {
        const bool isDensityStatus = !words.empty() && words[0].text == "status";
        if (isDensityStatus)
            return;
        const auto condition = conditionsInText(words).measurementCondition;
        put(found.measurementCondition, condition, Standing::declared);
        auto filter = filterOf(words);
        if (!filter) // "none, D50"
            filter = filterOf(wordsOf(value.substr(0, value.find_first_of(",;("))));
        if (!filter && condition)
            implyFilter(*condition);
        else
            putSpelled(found.filter, words, filter, value);
    }

    void implyFilter(const std::string& condition) {
        const auto filter = filterOfMeasurementCondition(condition);
        put(found.filter, filter, Standing::declared);
        found.filter.implied = filter && found.filter.source == line;
    }

    // A line that says whether there is a certain filter.
    void readSwitch(Condition& filter, const char* name, const std::vector<Word>& words) {
        if (namesNothing(words))
            return;
        const bool isThere = answerOf(words).value_or(filterOf(words) != "none");
        put(filter, isThere ? name : "none", Standing::declared);
    }

    // A line about the filter itself wins.
    void settleGeometryFilter() {
        if (!geometryFilter.isDeclared())
            return;
        if (!found.filter.isDeclared())
            found.filter = geometryFilter;
        else if (found.filter.value != geometryFilter.value && found.filter.contradicted.empty())
            found.filter.contradicted = geometryFilter.source;
    }

    // The geometry is the weakest witness: without a filter it tells nothing of the light.
    void implyMeasurementCondition() {
        Condition& condition = found.measurementCondition;
        const Condition& filter = found.filter;
        const char* const meant = filter.value == "UV cut" ? "M2" : filter.value == "polarizing" ? "M3" : "";
        const bool isFiltered = !filter.value.empty() && filter.value != "none";
        if (*meant != '\0' && !condition.isDeclared() &&
            (filter.isDeclared() || condition.standing == Standing::unknown))
            condition = {filter.standing, meant, filter.source};
        else if (!isFiltered && bareGeometry.isDeclared() && condition.standing == Standing::unknown)
            condition = bareGeometry;
        else
            return;
        condition.implied = true;
    }

    void settle(const Condition& filter) {
        const bool saysNone = filter.value == "none";
        const bool replaces = !found.filter.isDeclared() || (found.filter.value == "none" && !saysNone);
        if (filter.isDeclared() && replaces)
            found.filter = filter;
    }

    void readInstrument(Condition& instrument, Standing standing, const std::vector<Word>& words,
                        const std::string& value) {
        const std::string name = instrumentOf(value);
        if (namesNothing(words) || isNone(words) || name.empty())
            put(instrument, "", Standing::unknown);
        else
            put(instrument, name, standing);
    }

    // Conditions.

    static bool isNone(const std::vector<Word>& words) {
        return answerOf(words) == false && words[0].text != "0";
    }

    // A value where its condition belongs: in our spelling when it is known, else as it is.
    void putSpelled(Condition& condition, const std::vector<Word>& words,
                    const std::optional<std::string>& spelled, const std::string& value) {
        const bool noneIsAValue = &condition == &found.filter || &condition == &found.backing;
        if (!spelled && (namesNothing(words) || trimmed(value).empty() || (isNone(words) && !noneIsAValue)))
            put(condition, "", Standing::unknown);
        else
            put(condition, spelled.value_or(trimmed(value)), Standing::declared, spelled.has_value());
    }

    void put(Condition& condition, const std::optional<std::string>& value, Standing standing,
             bool understood = true) const {
        if (!value || standing < condition.standing)
            return;
        const bool isDeclared = condition.isDeclared() && earlier.erase(&condition) == 0;
        const bool isOther = isDeclared && !meanTheSame(condition.value, *value) && condition.source != line;
        const bool isWorse = isDeclared && condition.understood && !understood;
        if (isOther && isWorse)
            condition.contradicted = line;
        else if (!isWorse)
            condition = {standing, *value, line, isOther ? condition.source : "", understood};
    }

    DocumentConditions found;
    Condition namedLight;     // of the measurement: "Illumination=D50"
    Condition light;          // the same without a name
    Condition geometryFilter; // that the geometry names
    Condition bareGeometry;   // M0, as the geometry without a filter
    Condition polarizer;
    Condition ultravioletFilter;
    std::optional<bool> measuresEmission;
    bool emissionInText = false;
    std::string line; // that is being read
    // What the lines before an earlier table say: a line before a later one may say otherwise.
    mutable std::set<const Condition*> earlier;
};

} // namespace

DocumentConditions conditionsOf(const TCgats& document, int table) {
    Gatherer gatherer;
    int tablesBehind = 0;
    for (int i = 0; i < document.GetNrTags() && tablesBehind <= table; ++i) {
        const TCgatsTag& tag = *document.GetTagAt(i);
        if (tag.GetCode() == detail::kBeginData) {
            ++tablesBehind;
            gatherer.endTable();
        } else {
            gatherer.readLine(tag);
        }
    }
    return gatherer.result();
}

bool meanTheSame(const std::string& one, const std::string& other) {
    const std::size_t slash = one.find('/');
    return strcmp_ci(one.c_str(), other.c_str()) == 0 ||
           (slash != std::string::npos && one.substr(slash + 1) + '/' + one.substr(0, slash) == other);
}

} // namespace qxcms::qc
