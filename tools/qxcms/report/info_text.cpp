#include "tools/qxcms/report/info_text.h"

#include <algorithm>
#include <cstring>

#include "qc/printable_text.h"
#include "tools/qxcms/document_summary.h"
#include "tools/qxcms/report/text_layout.h"

namespace qxcms::command {

namespace {

constexpr std::size_t kIndent = 20;

std::string line(std::string_view label, std::string_view text) {
    return paragraph("    " + std::string(label), kIndent, text);
}

std::string counted(std::size_t count, const std::string& singular) {
    return std::to_string(count) + " " + singular + (count == 1 ? "" : "s");
}

std::string failureLines(const ReadFailure& failure) {
    std::string text = line("refused", "code " + std::to_string(failure.code) + ": " + failure.message);
    if (failure.location) {
        const Location& location = *failure.location;
        text += line("where", "line " + std::to_string(location.line) + ", column " +
                                  std::to_string(location.column) + " (byte " +
                                  std::to_string(location.offset) + ")");
        text += line("found", location.token.empty() ? "the end of the text" : qc::quoted(location.token));
        text += line("expected", qc::printable(location.expected));
    }
    return text + line("remark", failure.systemError.empty() ? failure.remedy : failure.systemError);
}

std::string spectraText(const SpectraSummary& spectra) {
    std::string text = "spectra: " + counted(static_cast<std::size_t>(spectra.bands), "band") + " from " +
                       std::to_string(spectra.firstNm) + " to " + std::to_string(spectra.lastNm) + " nm";
    if (spectra.stepNm)
        text += ", every " + std::to_string(*spectra.stepNm) + " nm";
    else if (spectra.bands > 1)
        text += ", in uneven steps";
    return text + (spectra.percent ? ", percent" : ", fractions (not percent)");
}

std::string colorText(const TableSummary& table) {
    std::string text = table.spectra ? spectraText(*table.spectra) : "";
    if (table.lab)
        text += std::string(text.empty() ? "" : "; ") + "Lab";
    if (table.xyz)
        text += std::string(text.empty() ? "" : "; ") + "XYZ";
    return text.empty() ? "none" : text;
}

std::string deviceText(const TableSummary& table) {
    std::string text = table.deviceColors == nullptr
                           ? "none"
                           : std::string(table.deviceColors) + ", " +
                                 counted(static_cast<std::size_t>(table.deviceChannels), "channel");
    if (table.spotColors > 0)
        text += "; " + counted(static_cast<std::size_t>(table.spotColors), "spot colour");
    return text;
}

std::string listed(const std::vector<std::string>& names) {
    return names.empty() ? "none" : qc::joined(names, ", ");
}

bool sameRun(const FieldSummary& left, const FieldSummary& right) {
    return std::strcmp(left.kind, right.kind) == 0 && std::strcmp(left.type, right.type) == 0;
}

// Neighbouring columns of one kind and type share a paragraph.
std::string fieldLines(const std::vector<FieldSummary>& fields) {
    std::string text;
    auto first = fields.begin();
    while (first != fields.end()) {
        const auto last =
            std::find_if(first, fields.end(), [&](const FieldSummary& f) { return !sameRun(f, *first); });
        const std::string columns = last - first == 1 ? "column " + std::to_string(first->column)
                                                      : "columns " + std::to_string(first->column) + '-' +
                                                            std::to_string((last - 1)->column);
        std::vector<std::string> names;
        for (auto field = first; field != last; ++field)
            names.push_back(field->name);
        text += line(columns, std::string(first->kind) + ", " + first->type + ": " + qc::joined(names, " "));
        first = last;
    }
    return text;
}

std::string tableLines(const TableSummary& table, std::size_t number) {
    return "  table " + std::to_string(number) + ": " +
           counted(static_cast<std::size_t>(table.samples), "sample") + ", " +
           counted(table.fields.size(), "field") + '\n' + line("colour data", colorText(table)) +
           line("device colours", deviceText(table)) + line("identifiers", listed(table.identifiers)) +
           line("sample names", table.sampleNames ? "yes (SampleID)" : "none") + fieldLines(table.fields);
}

std::string tagLine(const TagSummary& tag) {
    std::string text = qc::printable(tag.keyword);
    if (!tag.value.empty())
        text += "  " + (tag.bare ? qc::printable(tag.value) : qc::quoted(tag.value));
    if (!tag.comment.empty())
        text += "  #" + qc::printable(tag.comment);
    return "    " + text + '\n';
}

std::string tagLines(const DocumentSummary& summary) {
    std::string text =
        "  tags: " + std::to_string(summary.tags.size()) +
        (summary.tagsAreFull ? " (the most that a document keeps; there may have been more)" : "") + '\n';
    std::size_t commentLines = 0;
    for (const TagSummary& tag : summary.tags) {
        text += tag.keyword.empty() ? "" : tagLine(tag);
        commentLines += tag.keyword.empty() ? std::size_t{1} : 0;
    }
    if (commentLines > 0)
        text +=
            "    and " + counted(commentLines, "line") + " with a comment alone, whose text is not kept\n";
    return text;
}

std::string blockLines(const std::vector<std::string>& blocks) {
    std::string text = "  comment blocks: " + std::to_string(blocks.size()) + '\n';
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const auto lines = static_cast<std::size_t>(std::count(blocks[i].begin(), blocks[i].end(), '\n'));
        text += line("block " + std::to_string(i + 1),
                     counted(blocks[i].size(), "byte") + (lines > 0 ? ", " + counted(lines, "line") : ""));
    }
    return text;
}

std::string documentLines(const DocumentSummary& summary) {
    std::string text;
    if (summary.tables.empty())
        text += "  holds no data table\n";
    for (std::size_t i = 0; i < summary.tables.size(); ++i)
        text += tableLines(summary.tables[i], i + 1);
    return text + tagLines(summary) + paragraph("  custom fields: ", 17, listed(summary.customFields)) +
           blockLines(summary.commentBlocks);
}

} // namespace

std::string infoText(const DocumentFile& file) {
    std::string text = shownName(file.name) + '\n';
    for (const std::string& warning : file.warnings)
        text += line("warning", warning);
    text += file.failure ? failureLines(*file.failure) : documentLines(summarize(*file.document));
    return text + '\n';
}

} // namespace qxcms::command
