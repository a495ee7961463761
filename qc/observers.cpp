#include "qc/observers.h"

#include <vector>

#include "platform/utility.h"
#include "qc/light_words.h"
#include "qc/nearest_names.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

int numberOf(const std::string& name) {
    const std::string spelled = observerOf(wordsOf(name)).value_or(name);
    for (int number = 0; number < TObserver::sNrObservers; ++number)
        if (strcmp_ci(spelled.c_str(), TObserver::sObsNameList[number]) == 0)
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

std::string knownObservers() {
    std::string text;
    for (int number = 0; number < TObserver::sNrObservers; ++number) {
        text += text.empty() ? "" : ", ";
        text += quoted(TObserver::sObsNameList[number]);
    }
    return text;
}

} // namespace qxcms::qc
