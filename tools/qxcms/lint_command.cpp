#include "tools/qxcms/lint_command.h"

#include <algorithm>
#include <utility>

#include "qc/refusal.h"
#include "tools/qxcms/console.h"
#include "tools/qxcms/document_file.h"
#include "tools/qxcms/exit_code.h"
#include "tools/qxcms/file_bytes.h"
#include "tools/qxcms/report/lint_json.h"
#include "tools/qxcms/report/lint_text.h"

namespace qxcms::command {

namespace {

// @param file read in the way that decides.
LintReport reportOf(DocumentFile file) {
    warnOfDoubts(file);
    const bool hasSamples = file.document->GetNrTables() > 0;
    const bool hasDoubts = !file.doubts.empty();
    return {std::move(file.name),
            std::nullopt,
            std::move(file.failure),
            std::move(file.liberties),
            std::move(file.remarks),
            std::move(file.warnings),
            hasSamples,
            hasDoubts};
}

LintReport lint(const std::string& name, std::string& normalized) {
    CheckedFile checked = checkDocument(name);
    if (!checked.intoForm)
        return reportOf(std::move(checked.asItStands));
    LintReport report = reportOf(std::move(*checked.intoForm));
    report.strictFailure = std::move(checked.asItStands.failure);
    normalized = std::move(checked.text);
    return report;
}

int exitCodeOf(Verdict verdict) {
    switch (verdict) {
    case Verdict::clean:
        return kDone;
    case Verdict::doubts:
    case Verdict::liberties:
        return kLibertiesNeeded;
    case Verdict::noSamples:
    case Verdict::unreadable:
        break;
    }
    return kUnreadable;
}

// @return whether the text arrived; the reason is told when it did not.
bool write(const std::string& name, const std::string& text) {
    const std::string error = writeBytes(name, text);
    if (!error.empty())
        complain(shownName(name) + ": cannot be written: " + error);
    return error.empty();
}

void refuseContradictions(const LintOptions& options) {
    if (options.fix && options.files.size() != 1)
        throw qc::Refusal(qc::Refusal::Kind::usage, "--fix takes one FILE");
    if (options.fix && options.strict)
        throw qc::Refusal(qc::Refusal::Kind::usage, "--strict leaves nothing to --fix");
}

} // namespace

int runLint(const LintOptions& options) {
    refuseContradictions(options);
    int code = kDone;
    std::vector<LintReport> reports;
    std::optional<std::string> written;
    for (const std::string& name : options.files) {
        std::string normalized;
        LintReport report =
            options.strict ? reportOf(readDocument(name, Reading::asItStands)) : lint(name, normalized);
        code = std::max(code, exitCodeOf(report.verdict()));
        if (options.fix && exitCodeOf(report.verdict()) != kUnreadable && write(*options.fix, normalized))
            written = options.fix;
        if (options.json)
            reports.push_back(std::move(report));
        else if (!print(lintText(report, !options.quiet)))
            return kFailed;
    }
    if (options.json && !print(lintJson(reports, written)))
        return kFailed;
    const bool isLost = options.fix && code != kUnreadable && !written;
    return isLost ? static_cast<int>(kFailed) : code;
}

} // namespace qxcms::command
