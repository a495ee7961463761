#include <cstdio>

#include "base/guarded.h"
#include "platform/default/host.h"
#include "platform/utility.h"

namespace {

void printError(void*, const char* message, const char* module, int line) {
    std::fprintf(stderr, "%s:%d: %s\n", module, line, message);
}

void printWarning(void*, int, const char* message) {
    std::fprintf(stderr, "warning: %s\n", message);
}

constexpr qxcms_report_handler kPrinting = {&printError, &printWarning, nullptr};

constinit qxcms_report_handler installed = kPrinting;

const char* textOrEmpty(const char* text) {
    return text != nullptr ? text : "";
}

} // namespace

void qxcms_set_report_handler(const qxcms_report_handler* handler) {
    installed = handler != nullptr ? *handler : kPrinting;
}

void error_mess_fl(const char* message, const char* module, int line) {
    if (installed.error == nullptr)
        return;
    qxcms::detail::guarded(false, [&] {
        installed.error(installed.context, textOrEmpty(message), textOrEmpty(module), line);
        return true;
    });
}

void report_warning(int level, const char* message) {
    if (installed.warning == nullptr)
        return;
    qxcms::detail::guarded(false, [&] {
        installed.warning(installed.context, level, textOrEmpty(message));
        return true;
    });
}
