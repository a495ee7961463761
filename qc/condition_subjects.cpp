#include "qc/condition_subjects.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

#include "qc/characters.h"
#include "qc/condition_words.h"
#include "qc/light_words.h"

namespace qxcms::qc {

namespace {

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

} // namespace

std::string squeezed(std::string_view name) {
    std::string letters;
    for (const char c : name)
        if (isLetter(c) || isDigit(c))
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

std::optional<Subject> subjectOfKeyword(std::string_view keyword) {
    if (const auto subject = subjectOf(keyword))
        return subject;
    const std::string letters = squeezed(keyword);
    if (const auto subject = subjectOfViewing(letters))
        return subject;
    return holdsOneOf(letters, kTextStems) ? std::optional(Subject::text) : std::nullopt;
}

bool isOfAName(const std::string& keyword) {
    std::string letters;
    std::transform(keyword.begin(), keyword.end(), std::back_inserter(letters), toLower);
    const bool isNumber = letters.size() > 3 && letters.compare(letters.size() - 3, 3, "_id") == 0;
    const std::string name = squeezed(keyword);
    return isNumber || name == "id" || name == "user" || name == "maker" || holdsOneOf(name, kNameStems);
}

bool isUnderstood(Subject subject, const std::string& value) {
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

} // namespace qxcms::qc
