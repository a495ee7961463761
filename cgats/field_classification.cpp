// What a field name stands for.
#include <cstring>
#include <new>
#include <string>

#include "base/guarded.h"
#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/tcgats.h"
#include "platform/utility.h"

using namespace qxcms::detail;

namespace {

constexpr int kUnknown = -1;

// Names that mean the sample name; they become custom fields when they occur.
constexpr int kAliasCount = 3;
constexpr const char* kSampleNameAliases[kAliasCount] = {"SampleID", "SAMPLE_NAME", "SampleName"};

constexpr const char* kSpectralPrefixes[] = {"nm", "SPECTRAL_", "SPECTRAL_NM_", "NM_"};

// Walks along a name the way a scan pattern does: literals must match, numbers may have white space and a
// sign before them, and what follows the pattern does not matter.
class NameScanner {
public:
    explicit NameScanner(const char* name) : position(name), end(name + std::strlen(name)) {}

    bool literal(const char* text) {
        const std::size_t length = std::strlen(text);
        if (static_cast<std::size_t>(end - position) < length || std::memcmp(position, text, length) != 0)
            return false;
        position += length;
        return true;
    }

    bool number(int& value) {
        const char* stop = position;
        value = parseInt(position, end, &stop);
        const bool found = stop != position;
        position = stop;
        return found;
    }

private:
    const char* position;
    const char* end;
};

// "380" behind one of the spectral prefixes; a negative number is none.
bool scanSpectral(const char* name, int& wavelength) {
    for (const char* prefix : kSpectralPrefixes) {
        NameScanner scanner(name);
        if (scanner.literal(prefix) && scanner.number(wavelength) && wavelength >= 0)
            return true;
    }
    return false;
}

// "6CLR_2"
bool scanNColor(const char* name, int& channel) {
    NameScanner scanner(name);
    int channels = 0;
    return scanner.number(channels) && scanner.literal("CLR_") && scanner.number(channel) && channel >= 0;
}

// "SPOT_1"
bool scanSpot(const char* name, int& spot) {
    NameScanner scanner(name);
    return scanner.literal("SPOT_") && scanner.number(spot) && spot >= 0;
}

// "PC2_1", the first number being that of the process colours declared so far.
bool scanProcessColor(const char* name, int declared, int& color) {
    NameScanner scanner(name);
    const std::string prefix = "PC" + std::to_string(declared) + "_";
    return scanner.literal(prefix.c_str()) && scanner.number(color) && color >= 0;
}

int standardDataType(int fieldId) {
    return fieldId <= kString ? TCgatsField::kString : TCgatsField::kFloat;
}

} // namespace

int TCgats::MatchField(const char* name, int* kind, int* number, int* dataType, std::string* canonicalName) {
    if (name == nullptr || kind == nullptr || number == nullptr || dataType == nullptr ||
        canonicalName == nullptr)
        return kUnknown;
    return guarded(kUnknown, [&] { return classifyField(name, kind, number, dataType, canonicalName); });
}

int TCgats::classifyField(const char* name, int* kind, int* number, int* dataType,
                          std::string* canonicalName) {
    const auto answer = [&](int fieldKind, int fieldNumber, int fieldType, int result) {
        *kind = fieldKind;
        *number = fieldNumber;
        *dataType = fieldType;
        return result;
    };
    const auto answerColor = [&](int fieldKind, int given) {
        return answer(fieldKind, given - 1, TCgatsField::kFloat, 0);
    };

    *canonicalName = name;

    // Kept on purpose: a declared name wins, also over a standard name, and makes its column text
    // (fieldClassification.customName_winsOverEveryOtherClass).
    const int custom = findCustomField(name);
    if (custom >= 0) {
        *canonicalName = customFields[custom];
        return answer(TCgatsField::kCustom, 0, TCgatsField::kString, custom);
    }

    int given = 0;
    if (scanSpectral(name, given))
        return answer(TCgatsField::kSpectral, given, TCgatsField::kFloat, 0);

    const int standard = findIgnoringCase(kFieldNames, kFieldNameCount, name);
    if (standard >= 0) {
        *canonicalName = kFieldNames[standard];
        return answer(TCgatsField::kStandard, 0, standardDataType(standard), standard);
    }

    if (findIgnoringCase(kSampleNameAliases, kAliasCount, name) >= 0) {
        if (AddCustomField(name) != 0)
            throw std::bad_alloc();
        return answer(TCgatsField::kCustom, 0, TCgatsField::kString, nrCustomFields - 1);
    }

    if (scanNColor(name, given))
        return answerColor(TCgatsField::kNColor, given);
    if (scanSpot(name, given))
        return answerColor(TCgatsField::kSpotColor, given);
    // Kept on purpose: the columns are known only by the number of "PROCESSCOLOR_ID" tags before them
    // (fieldClassification.processColorOfAnotherNumberOfTags_isUnknown).
    if (scanProcessColor(name, nrProcessColorIdTags, given))
        return answerColor(TCgatsField::kProcessColor, given);
    return kUnknown;
}
