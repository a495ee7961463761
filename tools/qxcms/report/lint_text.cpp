#include "tools/qxcms/report/lint_text.h"

#include "qc/printable_text.h"
#include "tools/qxcms/report/text_layout.h"

namespace qxcms::command {

namespace {

constexpr std::size_t kIndent = 14;

std::string line(std::string_view label, std::string_view text) {
    return paragraph("    " + std::string(label), kIndent, text);
}

std::string failureLines(const std::string& name, std::string_view what, const ReadFailure& failure) {
    std::string text = placeOf(name, failure);
    text +=
        ": " + std::string(what) + ": " + failure.message + " (code " + std::to_string(failure.code) + ")\n";
    if (failure.location) {
        const Location& location = *failure.location;
        if (!location.excerpt.line.empty())
            text += "    " + location.excerpt.line;
        text += "\n    " + location.excerpt.caret + '\n';
        text += line("found", foundText(location)) + line("expected", qc::printable(location.expected));
    }
    if (!failure.systemError.empty())
        text += line("reason", failure.systemError);
    return text + line("remedy", failure.remedy);
}

std::string libertyLine(const std::string& name, const char* label, const TCgatsLiberty& liberty) {
    return placeOf(name, liberty.line, liberty.column) + ": " + label + qc::printable(liberty.done) + '\n';
}

bool isSamePlace(const ReadFailure& left, const ReadFailure& right) {
    return left.code == right.code && left.location->line == right.location->line &&
           left.location->column == right.location->column;
}

std::string verdictText(const LintReport& report) {
    const std::size_t count = report.liberties.size();
    switch (report.verdict()) {
    case Verdict::clean:
        return "clean";
    case Verdict::doubts:
        return "read as it stands, with words where numbers belong";
    case Verdict::liberties:
        return "readable with " + std::to_string(count) + (count == 1 ? " liberty" : " liberties") +
               (report.hasDoubts ? ", and with words where numbers belong" : "");
    case Verdict::noSamples:
        return "no samples: neither BEGIN_DATA_FORMAT with the names of columns nor BEGIN_DATA with rows was "
               "found";
    case Verdict::unreadable:
        break;
    }
    return "not readable";
}

} // namespace

std::string lintText(const LintReport& report, bool withList) {
    std::string text;
    const bool toldOnce =
        report.strictFailure && report.failure && isSamePlace(*report.strictFailure, *report.failure);
    if (report.strictFailure && !toldOnce)
        text += failureLines(report.file, "refused as it stands", *report.strictFailure);
    if (withList && report.verdict() != Verdict::noSamples) {
        for (const TCgatsLiberty& liberty : report.liberties)
            text += libertyLine(report.file, "", liberty);
        for (const TCgatsLiberty& remark : report.remarks)
            text += libertyLine(report.file, "note: ", remark);
        for (const std::string& warning : report.warnings)
            text += warning + '\n';
    }
    if (report.failure)
        text += failureLines(report.file, "not readable", *report.failure);
    return text + shownName(report.file) + ": " + verdictText(report) + '\n';
}

} // namespace qxcms::command
