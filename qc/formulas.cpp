#include "qc/formulas.h"

#include <algorithm>
#include <array>
#include <vector>

#include "colorspace/tlabspace.h"
#include "platform/utility.h"
#include "qc/nearest_names.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

struct Naming {
    const char* shortForm;
    std::array<const char*, 3> further; // words that will do as well; the last ones may be null
    const char* published;
    const char* remark;
};

constexpr Naming kPublished = {
    "2000", {"de2000", "00", "dE00"}, "ISO/CIE 11664-6, kL = kC = kH = 1", nullptr};

// Index = number of the difference function.
constexpr Naming kNamings[] = {
    {"76", {"de76", "CIE 1976", "CIE76"}, "CIE 1976", nullptr},
    {"94", {"de94", "CIE 1994", "CIE94"}, "CIE 1994, kL = kC = kH = 1", nullptr},
    {"kernel2000",
     {},
     "a formula of its own, near CIEDE2000",
     "Delta E 2000 is not CIEDE2000 as published: it adds the rotation term where the publication subtracts "
     "it and "
     "takes another mean hue across 0 degrees, which moves 6 to 10 percent of real patches by more than 0.1 "
     "and single "
     "ones by up to 1.9; --formula CIEDE2000 is the published one"},
    {"cmc11", {}, "CMC l:c, l = 1, c = 1", nullptr},
    {"cmc21", {}, "CMC l:c, l = 2, c = 1", nullptr},
};

const Naming& namingOf(int number) {
    return number == kCiede2000 ? kPublished : kNamings[number];
}

const char* nameOf(int number) {
    return number == kCiede2000 ? "CIEDE2000" : TLabSpace::GetDifferenceFunctionList()[number];
}

// The words that stand for a formula, its name first.
std::vector<std::string> wordsFor(int number) {
    const Naming& naming = namingOf(number);
    std::vector<std::string> words = {nameOf(number), naming.shortForm};
    for (const char* word : naming.further) {
        if (word != nullptr)
            words.emplace_back(word);
    }
    return words;
}

} // namespace

Formula formula(int number) {
    const Naming& naming = namingOf(number);
    return {number, nameOf(number), naming.shortForm, naming.published, naming.remark};
}

Formula findFormula(const std::string& name) {
    std::vector<std::string> known;
    for (int number = kCiede2000; number < TLabSpace::GetDifferenceFunctionListSize(); ++number) {
        const std::vector<std::string> words = wordsFor(number);
        if (std::any_of(words.begin(), words.end(),
                        [&](const std::string& word) { return strcmp_ci(name.c_str(), word.c_str()) == 0; }))
            return formula(number);
        known.insert(known.end(), words.begin(), words.end());
    }
    throw Refusal(Refusal::Kind::usage,
                  unknownName("formula", name, name, known) + "; known are " + knownFormulas());
}

std::string knownFormulas() {
    std::string text;
    for (int number = kCiede2000; number < TLabSpace::GetDifferenceFunctionListSize(); ++number) {
        const std::vector<std::string> words = wordsFor(number);
        text += text.empty() ? "" : "; ";
        text += quoted(words.front()) + " or " +
                joined(std::vector<std::string>(words.begin() + 1, words.end()), ", ");
    }
    return text;
}

} // namespace qxcms::qc
