#include "tools/qxcms/report/lint_json.h"

#include "base/version.h"
#include "tools/qxcms/report/document_json.h"
#include "tools/qxcms/report/json_text.h"

namespace qxcms::command {

namespace {

const char* wordOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::clean:
        return "clean";
    case Verdict::doubts:
        return "doubts";
    case Verdict::noSamples:
        return "noSamples";
    case Verdict::liberties:
        return "liberties";
    case Verdict::unreadable:
        return "unreadable";
    }
    return "";
}

Json fileJson(const LintReport& report) {
    return {{"file", report.file},
            {"verdict", wordOf(report.verdict())},
            {"strictFailure", failureJson(report.strictFailure)},
            {"failure", failureJson(report.failure)},
            {"liberties", libertiesJson(report.liberties)},
            {"remarks", libertiesJson(report.remarks)},
            {"warnings", report.warnings}};
}

} // namespace

std::string lintJson(const std::vector<LintReport>& reports, const std::optional<std::string>& written) {
    Json json = {{"command", "lint"},
                 {"version", QXCMS_VERSION},
                 {"files", Json::array()},
                 {"written", written ? Json(*written) : Json(nullptr)}};
    for (const LintReport& report : reports)
        json["files"].push_back(fileJson(report));
    return jsonText(json);
}

} // namespace qxcms::command
