#include "qc/observers.h"

#include "platform/utility.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

TObserver findObserver(const std::string& name) {
    for (int number = 0; number < TObserver::sNrObservers; ++number) {
        const char* known = TObserver::sObsNameList[number];
        if (strcmp_ci(name.c_str(), known) == 0 || strcmp_ci((name + " degree").c_str(), known) == 0)
            return TObserver(number);
    }
    throw Refusal(Refusal::Kind::usage,
                  "unknown observer " + quoted(name) + "; known are " + knownObservers());
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
