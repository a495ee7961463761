#include "qc/formulas.h"

#include <algorithm>
#include <array>
#include <vector>

#include "colorspace/tlabspace.h"
#include "platform/utility.h"
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

// Index = number of the difference function.
constexpr Naming kNamings[] = {
    {"76", {"de76", "CIE 1976", "CIE76"}, "CIE 1976", nullptr},
    {"94", {"de94", "CIE 1994", "CIE94"}, "CIE 1994, kL = kC = kH = 1", nullptr},
    {"2000",
     {"de2000", "CIEDE2000"},
     "CIEDE2000, kL = kC = kH = 1",
     "Delta E 2000 adds the rotation term where CIE 142-2001 subtracts it and takes another mean hue across "
     "0 degrees: other programs give other numbers, above all for blues"},
    {"cmc11", {}, "CMC l:c, l = 1, c = 1", nullptr},
    {"cmc21", {}, "CMC l:c, l = 2, c = 1", nullptr},
};

// The words that stand for a formula, its name first.
std::vector<std::string> wordsFor(int number) {
    const Naming& naming = kNamings[number];
    std::vector<std::string> words = {TLabSpace::GetDifferenceFunctionList()[number], naming.shortForm};
    for (const char* word : naming.further) {
        if (word != nullptr)
            words.emplace_back(word);
    }
    return words;
}

} // namespace

Formula formula(int number) {
    const Naming& naming = kNamings[number];
    return {number, TLabSpace::GetDifferenceFunctionList()[number], naming.shortForm, naming.published,
            naming.remark};
}

Formula findFormula(const std::string& name) {
    for (int number = 0; number < TLabSpace::GetDifferenceFunctionListSize(); ++number) {
        const std::vector<std::string> words = wordsFor(number);
        if (std::any_of(words.begin(), words.end(),
                        [&](const std::string& word) { return strcmp_ci(name.c_str(), word.c_str()) == 0; }))
            return formula(number);
    }
    throw Refusal(Refusal::Kind::usage, "unknown formula " + quoted(name) + "; known are " + knownFormulas());
}

std::string knownFormulas() {
    std::string text;
    for (int number = 0; number < TLabSpace::GetDifferenceFunctionListSize(); ++number) {
        const std::vector<std::string> words = wordsFor(number);
        text += text.empty() ? "" : "; ";
        text += quoted(words.front()) + " or " +
                joined(std::vector<std::string>(words.begin() + 1, words.end()), ", ");
    }
    return text;
}

} // namespace qxcms::qc
