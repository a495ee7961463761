#include "qc/formulas.h"

#include <algorithm>
#include <array>
#include <optional>
#include <vector>

#include "colorspace/tlabspace.h"
#include "platform/utility.h"
#include "qc/kernel_formulas.h"
#include "qc/nearest_names.h"
#include "qc/printable_text.h"

namespace qxcms::qc {

namespace {

struct Naming {
    const char* shortForm;
    std::array<const char*, 3> further; // words that will do as well; the last ones may be null
    const char* published;
    const char* remark;
};

constexpr Naming kCiede2000 = {
    "2000", {"de2000", "00", "dE00"}, "ISO/CIE 11664-6, kL = kC = kH = 1", nullptr};
constexpr Naming kCie1976 = {"76", {"de76", "CIE 1976", "CIE76"}, "CIE 1976", nullptr};
constexpr Naming kCie1994 = {"94", {"de94", "CIE 1994", "CIE94"}, "CIE 1994, kL = kC = kH = 1", nullptr};
constexpr Naming kKernel2000 = {
    "kernel2000",
    {},
    "a formula of its own, near CIEDE2000",
    "Delta E 2000 is not CIEDE2000 as published: it adds the rotation term where the publication subtracts "
    "it and "
    "takes another mean hue across 0 degrees, which moves 6 to 10 percent of real patches by more than 0.1 "
    "and single "
    "ones by up to 1.9; --formula CIEDE2000 is the published one"};
constexpr Naming kCmc11 = {"cmc11", {}, "CMC l:c, l = 1, c = 1", nullptr};
constexpr Naming kCmc21 = {"cmc21", {}, "CMC l:c, l = 2, c = 1", nullptr};

const Naming& namingOf(DeltaE id) {
    switch (id) {
    case DeltaE::ciede2000:
        break;
    case DeltaE::cie1976:
        return kCie1976;
    case DeltaE::cie1994:
        return kCie1994;
    case DeltaE::kernel2000:
        return kKernel2000;
    case DeltaE::cmc11:
        return kCmc11;
    case DeltaE::cmc21:
        return kCmc21;
    }
    return kCiede2000;
}

const char* nameOf(DeltaE id) {
    const std::optional<int> number = kernelNumber(id);
    return number ? TLabSpace::GetDifferenceFunctionList()[*number] : "CIEDE2000";
}

// The words that stand for a formula, its name first.
std::vector<std::string> wordsFor(DeltaE id) {
    const Naming& naming = namingOf(id);
    std::vector<std::string> words = {nameOf(id), naming.shortForm};
    for (const char* word : naming.further) {
        if (word != nullptr)
            words.emplace_back(word);
    }
    return words;
}

} // namespace

std::optional<int> kernelNumber(DeltaE id) {
    switch (id) {
    case DeltaE::ciede2000:
        break;
    case DeltaE::cie1976:
        return 0;
    case DeltaE::cie1994:
        return 1;
    case DeltaE::kernel2000:
        return 2;
    case DeltaE::cmc11:
        return 3;
    case DeltaE::cmc21:
        return 4;
    }
    return std::nullopt;
}

Formula formula(DeltaE id) {
    const Naming& naming = namingOf(id);
    return {id, nameOf(id), naming.shortForm, naming.published, naming.remark};
}

Result<Formula> findFormula(const std::string& name) {
    std::vector<std::string> known;
    for (const DeltaE id : kFormulas) {
        const std::vector<std::string> words = wordsFor(id);
        if (std::any_of(words.begin(), words.end(),
                        [&](const std::string& word) { return strcmp_ci(name.c_str(), word.c_str()) == 0; }))
            return formula(id);
        known.insert(known.end(), words.begin(), words.end());
    }
    return Refusal(Refusal::Kind::usage,
                   unknownName("formula", name, name, known) + "; known are " + knownFormulas());
}

std::string knownFormulas() {
    std::string text;
    for (const DeltaE id : kFormulas) {
        const std::vector<std::string> words = wordsFor(id);
        text += text.empty() ? "" : "; ";
        text += quoted(words.front()) + " or " +
                joined(std::vector<std::string>(words.begin() + 1, words.end()), ", ");
    }
    return text;
}

} // namespace qxcms::qc
