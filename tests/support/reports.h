// Collects what the library reports while a test runs.
#pragma once

#include <string>
#include <vector>

#include "platform/default/host.h"

namespace qxcms::tests {

struct Report {
    std::string message;
    std::string module;
    int line;

    bool operator==(const Report& other) const {
        return message == other.message && module == other.module && line == other.line;
    }
};

struct Warning {
    int level;
    std::string message;
};

/// Installs itself as the handler of the process and leaves the default behind.
class ReportCollector {
public:
    ReportCollector() {
        const qxcms_report_handler handler = {&ReportCollector::onError, &ReportCollector::onWarning, this};
        qxcms_set_report_handler(&handler);
    }
    ~ReportCollector() { qxcms_set_report_handler(nullptr); }
    ReportCollector(const ReportCollector&) = delete;
    ReportCollector& operator=(const ReportCollector&) = delete;

    std::vector<Report> errors;
    std::vector<Warning> warnings;

private:
    static void onError(void* context, const char* message, const char* module, int line) {
        static_cast<ReportCollector*>(context)->errors.push_back({message, module, line});
    }
    static void onWarning(void* context, int level, const char* message) {
        static_cast<ReportCollector*>(context)->warnings.push_back({level, message});
    }
};

} // namespace qxcms::tests
