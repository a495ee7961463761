#include "qc/observers.h"

#include <vector>

#include "platform/utility.h"
#include "qc/nearest_names.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

// Index = number of the observer.
constexpr const char* kSpellings[][7] = {
    {"2", "2deg", "2 deg", "2-degree", "1931", "CIE 1931", "CIE1931"},
    {"10", "10deg", "10 deg", "10-degree", "1964", "CIE 1964", "CIE1964"}};

bool standsFor(int number, const std::string& name) {
    if (strcmp_ci(name.c_str(), TObserver::sObsNameList[number]) == 0)
        return true;
    for (const char* spelling : kSpellings[number])
        if (strcmp_ci(name.c_str(), spelling) == 0)
            return true;
    return false;
}

int numberOf(const std::string& name) {
    for (int number = 0; number < TObserver::sNrObservers; ++number)
        if (standsFor(number, name))
            return number;
    return -1;
}

} // namespace

TObserver findObserver(const std::string& name) {
    const int number = numberOf(name);
    if (number >= 0)
        return TObserver(number);
    const std::vector<std::string> known(TObserver::sObsNameList,
                                         TObserver::sObsNameList + TObserver::sNrObservers);
    throw Refusal(Refusal::Kind::usage,
                  unknownName("observer", name, name, known) + "; known are " + knownObservers());
}

std::string canonicalObserver(const std::string& name) {
    const int number = numberOf(name);
    return number >= 0 ? TObserver::sObsNameList[number] : name;
}

std::string knownObservers() {
    std::string text;
    for (int number = 0; number < TObserver::sNrObservers; ++number) {
        text += text.empty() ? "" : ", ";
        text += quoted(TObserver::sObsNameList[number]);
    }
    return text;
}

} // namespace qxcms::qc
