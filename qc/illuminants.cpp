#include "qc/illuminants.h"

#include <algorithm>
#include <new>
#include <string_view>

#include "platform/logical_names.h"
#include "platform/utility.h"
#include "qc/characters.h"
#include "qc/light_words.h"
#include "qc/nearest_names.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

constexpr std::string_view kFamily = "CIE Illuminant ";

// The text with every number in it filled up with zeros, so that texts sort by the value of their numbers.
std::string naturalKey(const std::string& text) {
    constexpr std::size_t kDigits = 10;
    std::string key;
    for (auto position = text.begin(); position != text.end();) {
        const auto digitsEnd = std::find_if_not(position, text.end(), isDigit);
        const auto digits = static_cast<std::size_t>(digitsEnd - position);
        if (digits > 0 && digits < kDigits)
            key.append(kDigits - digits, '0');
        const auto next = digits > 0 ? digitsEnd : position + 1;
        key.append(position, next);
        position = next;
    }
    return key;
}

bool naturallyBefore(const std::string& left, const std::string& right) {
    return naturalKey(left) < naturalKey(right);
}

std::string noIlluminants() {
    char directory[QXCMS_LOGNAM_SIZE];
    if (fport(directory, QXCMS_LOGNAM_SIZE, kIlluminantDirectory) != 0)
        return "no illuminants: QX_CMS does not lead to a directory; set the environment variable QX_CMS to "
               "the directory that holds r/ill";
    return "no illuminants in " + quoted(directory) +
           "; set the environment variable QX_CMS to the directory that holds r/ill with the .ill files, or "
           "unset it to use those that come with the program";
}

} // namespace

Illuminants::Illuminants() : registry(TIlluminantFactory::New()) {
    if (registry == nullptr)
        throw std::bad_alloc();
    registry->AddDirectory(kIlluminantDirectory);
    if (registry->GetNrElements() == 0)
        throw Refusal(Refusal::Kind::unreadable, noIlluminants());
}

Illuminants::~Illuminants() = default;

TIlluminant* Illuminants::find(const std::string& name) const {
    const std::string brief = shortIlluminant(name);
    const std::vector<std::string> all = names();
    std::vector<std::string> known(all.size());
    std::transform(all.begin(), all.end(), known.begin(), shortIlluminant);
    for (const std::string& one : {brief, illuminantOf(wordsOf(name)).value_or(brief)}) {
        const auto found = std::find(known.begin(), known.end(), one);
        // The registry would report a name that it does not know.
        if (found != known.end())
            return registry->GetIlluminant(all[static_cast<std::size_t>(found - known.begin())].c_str());
    }
    throw Refusal(Refusal::Kind::usage, unknownName("illuminant", name, brief, known) + "; known are " +
                                            joined(known, ", ") +
                                            " (with or without \"CIE Illuminant\" before them)");
}

std::vector<std::string> Illuminants::names() const {
    std::vector<std::string> result;
    TIlluminant* illuminant = registry->ScanIlluminants(1);
    while (illuminant != nullptr) {
        if (illuminant->GetName() != nullptr)
            result.emplace_back(illuminant->GetName());
        illuminant = registry->ScanIlluminants(0);
    }
    std::sort(result.begin(), result.end(), naturallyBefore);
    return result;
}

std::string shortIlluminant(const std::string& name) {
    const bool inFamily = strncmp_ci(name.c_str(), kFamily.data(), static_cast<int>(kFamily.size())) == 0;
    std::string brief = inFamily ? name.substr(kFamily.size()) : name;
    std::transform(brief.begin(), brief.end(), brief.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    const bool isLongLamp = brief.size() > 2 && brief.compare(0, 2, "FL") == 0 && isDigit(brief[2]);
    return isLongLamp ? "F" + brief.substr(2) : brief;
}

} // namespace qxcms::qc
