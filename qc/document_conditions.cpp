#include "qc/document_conditions.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "cgats/cgats_vocabulary.h"
#include "platform/utility.h"
#include "qc/condition_words.h"

namespace qxcms::qc {

namespace {

using Standing = Condition::Standing;

// What a header line, or a part of one ("Filter=No"), is about.
enum class Subject {
    illuminant,
    observer,
    weighting, // an illuminant or an observer, which the value tells
    source,    // of the light: parts of several subjects, or the name of a lamp
    measurementCondition,
    backing,
    geometry,
    filter,
    polarization,
    ultravioletFilter,
    whiteBase,
    instrument,
    deviceClass,
    quantity, // what was measured
    display,  // something of a display
    text,     // that describes anything
    intendedInstrument,
    nothing // that matters here
};

struct SubjectName {
    std::string_view name; ///< small letters and digits only
    Subject subject;
};

constexpr SubjectName kSubjects[] = {
    {"illuminant", Subject::illuminant},
    {"illuminantname", Subject::illuminant},
    {"illumination", Subject::illuminant},
    {"illuminationname", Subject::illuminant},
    {"illum", Subject::illuminant},
    {"cieilluminant", Subject::illuminant},
    {"standardilluminant", Subject::illuminant},
    {"referenceilluminant", Subject::illuminant},
    {"measurementilluminant", Subject::illuminant},
    {"measurementillumination", Subject::illuminant},
    {"observer", Subject::observer},
    {"observerangle", Subject::observer},
    {"observername", Subject::observer},
    {"observerfunction", Subject::observer},
    {"standardobserver", Subject::observer},
    {"cieobserver", Subject::observer},
    {"measurementobserver", Subject::observer},
    {"colormatchingfunction", Subject::observer},
    {"colormatchingfunctions", Subject::observer},
    {"weightingfunction", Subject::weighting},
    {"weightingfunctions", Subject::weighting},
    {"illuminantobserver", Subject::weighting},
    {"illuminantandobserver", Subject::weighting},
    {"measurementsource", Subject::source},
    {"measurementlightsource", Subject::source},
    {"lightsource", Subject::source},
    {"measurementcondition", Subject::measurementCondition},
    {"measurementconditions", Subject::measurementCondition},
    {"measurementilluminationcondition", Subject::measurementCondition},
    {"measuringcondition", Subject::measurementCondition},
    {"measuringconditions", Subject::measurementCondition},
    {"meascondition", Subject::measurementCondition},
    {"measconditions", Subject::measurementCondition},
    {"illuminationcondition", Subject::measurementCondition},
    {"iso13655", Subject::measurementCondition},
    {"samplebacking", Subject::backing},
    {"measurementbacking", Subject::backing},
    {"backing", Subject::backing},
    {"backingcolor", Subject::backing},
    {"backingmaterial", Subject::backing},
    {"measurementgeometry", Subject::geometry},
    {"measuringgeometry", Subject::geometry},
    {"instrumentgeometry", Subject::geometry},
    {"opticalgeometry", Subject::geometry},
    {"geometry", Subject::geometry},
    {"filter", Subject::filter},
    {"measurementfilter", Subject::filter},
    {"physicalfilter", Subject::filter},
    {"opticalfilter", Subject::filter},
    {"instrumentfilter", Subject::filter},
    {"polarization", Subject::polarization},
    {"polarisation", Subject::polarization},
    {"polarizationfilter", Subject::polarization},
    {"polarisationfilter", Subject::polarization},
    {"polarizingfilter", Subject::polarization},
    {"polarizer", Subject::polarization},
    {"polfilter", Subject::polarization},
    {"uvfilter", Subject::ultravioletFilter},
    {"uvcut", Subject::ultravioletFilter},
    {"uvcutfilter", Subject::ultravioletFilter},
    {"instrumentation", Subject::instrument},
    {"instrument", Subject::instrument},
    {"instrumentname", Subject::instrument},
    {"instrumentmodel", Subject::instrument},
    {"measurementinstrument", Subject::instrument},
    {"measuringinstrument", Subject::instrument},
    {"measurementdevice", Subject::instrument},
    {"measuringdevice", Subject::instrument},
    {"spectrophotometer", Subject::instrument},
    {"targetinstrument", Subject::intendedInstrument},
    {"deviceclass", Subject::deviceClass},
    {"quantity", Subject::quantity},
    {"spectrumtype", Subject::quantity},
    {"spectraltype", Subject::quantity},
    {"spectralquantity", Subject::quantity},
    {"spectralunits", Subject::quantity},
    {"measurementtype", Subject::quantity},
    {"measurementmode", Subject::quantity},
    {"measurementquantity", Subject::quantity},
    {"measurementunits", Subject::quantity},
    {"mode", Subject::quantity},
    {"displaytype", Subject::display},
    {"displaytypebaseid", Subject::display},
    {"displaytyperefresh", Subject::display},
    {"displaytechnology", Subject::display},
    {"luminancexyzcdm2", Subject::display},
    {"computationalparameter", Subject::text},
    {"whitebase", Subject::whiteBase},
    {"whitebasis", Subject::whiteBase},
    {"aperture", Subject::nothing},
    {"keyword", Subject::nothing},
};

// What the keyword of a descriptive text holds: FILE_DESCRIPTOR, PRINT_CONDITIONS, REMARKS ...
constexpr std::string_view kTextStems[] = {"descript", "condition",  "comment",  "remark",
                                           "note",     "title",      "standard", "material",
                                           "purpose",  "targettype", "tablename"};

// What the keyword of a name holds, of people and firms, dates and serial numbers: a "D65" in it means
// nothing.
constexpr std::string_view kNameStems[] = {"manufactur", "originator", "creat",     "author", "operator",
                                           "owner",      "customer",   "company",   "vendor", "supplier",
                                           "distribut",  "contact",    "copyright", "serial", "identif",
                                           "date",       "time",       "uuid",      "guid"};

bool isAlphanumeric(char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

char toLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The letters and digits of a name, in small letters.
std::string squeezed(std::string_view name) {
    std::string letters;
    for (const char c : name)
        if (isAlphanumeric(c))
            letters += toLower(c);
    return letters;
}

std::optional<Subject> subjectOf(std::string_view name) {
    const std::string letters = squeezed(name);
    for (const SubjectName& known : kSubjects)
        if (known.name == letters)
            return known.subject;
    return std::nullopt;
}

template <std::size_t Count>
bool holdsOneOf(const std::string& letters, const std::string_view (&stems)[Count]) {
    return std::any_of(std::begin(stems), std::end(stems),
                       [&](std::string_view stem) { return letters.find(stem) != std::string::npos; });
}

bool endsWith(const std::string& text, std::string_view end) {
    return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

// Of "SPECTRAL_ILLUMINANT", "LAB_OBSERVER" and the like, not of a lamp or of a second one.
std::optional<Subject> subjectOfViewing(const std::string& letters) {
    constexpr std::string_view kOfOthers[] = {"instrument", "lamp", "source",  "second", "third",
                                              "altern",     "test", "metamer", "other",  "booth"};
    if (holdsOneOf(letters, kOfOthers))
        return std::nullopt;
    if (endsWith(letters, "illuminant"))
        return Subject::illuminant;
    return endsWith(letters, "observer") ? std::optional(Subject::observer) : std::nullopt;
}

std::optional<Subject> subjectOfKeyword(std::string_view keyword) {
    if (const auto subject = subjectOf(keyword))
        return subject;
    const std::string letters = squeezed(keyword);
    if (const auto subject = subjectOfViewing(letters))
        return subject;
    return holdsOneOf(letters, kTextStems) ? std::optional(Subject::text) : std::nullopt;
}

// Of a keyword that is about no subject.
bool isOfAName(const std::string& keyword) {
    std::string letters;
    std::transform(keyword.begin(), keyword.end(), std::back_inserter(letters), toLower);
    const bool isNumber = letters.size() > 3 && letters.compare(letters.size() - 3, 3, "_id") == 0;
    const std::string name = squeezed(keyword);
    return isNumber || name == "id" || name == "user" || name == "maker" || holdsOneOf(name, kNameStems);
}

// Lines of several parts: "Illumination=D50 ObserverAngle=2, Filter: No".

struct Part {
    std::optional<Subject> subject; // nothing for a name that is not known
    std::string value;
};

struct Parts {
    std::string before; // the first name
    std::vector<Part> parts;

    bool haveASubject() const {
        return std::any_of(parts.begin(), parts.end(),
                           [](const Part& part) { return part.subject.has_value(); });
    }
};

class PartReader {
public:
    // `joined` for a value whose blanks are lost, in which a name may follow a value immediately.
    PartReader(std::string_view value, bool joined) : text(value), blanksLost(joined) {}

    Parts read() {
        Parts result;
        std::size_t valueStart = 0;
        for (std::size_t sign = 0; sign < text.size(); ++sign) {
            if (text[sign] != '=' && text[sign] != ':')
                continue;
            const Name name = nameBefore(sign, valueStart);
            const bool isDated =
                name.subject == Subject::measurementCondition && isYear(sign + 1); // "ISO 13655:2009"
            if (name.first == sign || (text[sign] == ':' && !name.subject) || isDated)
                continue;
            const std::string_view value = text.substr(valueStart, name.first - valueStart);
            if (result.parts.empty())
                result.before = trimmed(value);
            else
                result.parts.back().value = upToSeparator(value);
            result.parts.push_back({name.subject, ""});
            valueStart = sign + 1;
        }
        if (!result.parts.empty())
            result.parts.back().value = upToSeparator(text.substr(valueStart));
        return result;
    }

private:
    struct Name {
        std::size_t first;
        std::optional<Subject> subject;
    };

    static constexpr std::size_t kLongestName = 40;

    static bool belongsToName(char c) { return isAlphanumeric(c) || c == '_' || c == '-'; }

    std::size_t skipBack(std::size_t end, std::size_t from, bool (*what)(char)) const {
        while (end > from && what(text[end - 1]))
            --end;
        return end;
    }

    bool isYear(std::size_t at) const {
        constexpr std::size_t kDigits = 4;
        const std::size_t first = std::min(text.find_first_not_of(" \t", at), text.size());
        const std::size_t end = std::min(text.find_first_not_of("0123456789", first), text.size());
        const std::string_view century = text.substr(first, 2);
        return end - first == kDigits && (century == "19" || century == "20");
    }

    // The name in front of a sign: a known one of up to three words, else the last word.
    Name nameBefore(std::size_t sign, std::size_t from) const {
        const std::size_t end = skipBack(sign, from, isBlank);
        const std::size_t word = skipBack(end, from, belongsToName);
        Name best = {word == end ? sign : word, std::nullopt};
        std::size_t first = word;
        for (int words = 1; words <= 3 && first != end; ++words) {
            if (const auto subject = partSubject(text.substr(first, end - first)))
                best = {first, subject};
            first = skipBack(skipBack(first, from, isBlank), from, belongsToName);
        }
        first = std::max(word, end - std::min(end, kLongestName));
        for (; blanksLost && !best.subject && first < end; ++first)
            if (const auto subject = partSubject(text.substr(first, end - first)))
                best = {first, subject};
        return best;
    }

    static std::optional<Subject> partSubject(std::string_view name) {
        const auto subject = subjectOf(name);
        const bool isPart = subject != Subject::text && subject != Subject::intendedInstrument;
        return isPart ? subject : std::nullopt;
    }

    static std::string upToSeparator(std::string_view value) {
        const std::size_t first = value.find_first_not_of(" \t\"");
        if (first == std::string_view::npos)
            return "";
        return trimmed(value.substr(first, value.find_first_of(",;|\t", first) - first));
    }

    std::string_view text;
    bool blanksLost;
};

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
        const bool hasParts = !isText && readParts(subject, PartReader(value, tag.GetNumeric() != 0).read());
        if (!hasParts && (subject || !isOfAName(keyword)))
            read(subject.value_or(Subject::text), trimmed(value));
        // A "#" cuts a value in two wherever it stands.
        line += " #" + comment;
        if (isText)
            readText(wordsOf(comment));
        else if (hasParts)
            readParts(subject, PartReader(comment, false).read());
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

    // Whether the value means something for the subject: in lines of an unknown keyword "Filter=Lanczos" may
    // be about anything.
    static bool isUnderstood(Subject subject, const std::string& value) {
        const std::vector<Word> words = wordsOf(value);
        const Weighting weighting = weightingOf(words);
        switch (subject) {
        case Subject::illuminant:
            return weighting.illuminant.has_value();
        case Subject::observer:
            return weighting.observer.has_value();
        case Subject::measurementCondition:
            return conditionsInText(words).measurementCondition.has_value();
        case Subject::backing:
            return backingOf(words).has_value();
        case Subject::geometry:
            return geometryOf(words).has_value();
        case Subject::filter:
            return filterOf(words) == "UV cut" || filterOf(words) == "polarizing" ||
                   conditionsInText(words).measurementCondition.has_value();
        case Subject::whiteBase:
            return whiteBaseOf(words).has_value();
        case Subject::polarization:
        case Subject::quantity:
            return true;
        default:
            return false;
        }
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

    // Where the last "ILLUMINANT" or "OBSERVER" begins; the text holds both.
    static std::size_t lastLabel(const std::string& value) {
        std::string letters = value;
        std::transform(letters.begin(), letters.end(), letters.begin(), toLower);
        return std::max(letters.rfind("illumin"), letters.rfind("observer"));
    }

    // "ILLUMINANT, Xenon" without its label.
    static std::string withoutFirstWord(const std::string& value, std::string_view label) {
        if (squeezed(value.substr(0, label.size())) != label)
            return value;
        const std::string_view rest = std::string_view(value).substr(label.size());
        const std::size_t first = rest.find_first_not_of(" \t,.;:=");
        return trimmed(first == std::string_view::npos ? "" : rest.substr(first));
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

    // "Ill 45, Obs 0", whatever follows.
    static bool isBareGeometry(const std::vector<Word>& words) {
        constexpr std::string_view kName[] = {"ill", "45", "obs", "0"};
        return words.size() >= std::size(kName) &&
               std::equal(std::begin(kName), std::end(kName), words.begin(),
                          [](std::string_view name, const Word& word) { return name == word.text; });
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

    // Nothing for M0 and M1, which are told apart by the light.
    static std::optional<std::string> filterOfMeasurementCondition(const std::string& condition) {
        if (condition == "M2")
            return "UV cut";
        return condition == "M3" ? std::optional<std::string>("polarizing") : std::nullopt;
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
