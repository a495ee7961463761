#include "tools/qxcms/document_file.h"

#include <algorithm>
#include <new>
#include <utility>

#include "base/number_text.h"
#include "cgats/text_encoding.h"
#include "qc/count_text.h"
#include "qc/doubt_keeper.h"
#include "qc/printable_text.h"
#include "tools/qxcms/console.h"
#include "tools/qxcms/file_bytes.h"
#include "tools/qxcms/remedy.h"

namespace qxcms::command {

namespace {

// Document codes that are told here.
constexpr int kTooLong = -1;
constexpr int kNoFileName = 2;
constexpr int kNotReadable = 3;

constexpr const char* kTooLongMessage = "A keyword, value or comment is too long (limits 256, 4096, 512).";

// Keyword codes.
constexpr int kBeginData = 24;
constexpr int kEndData = 25;

constexpr std::size_t kLongestTokenShown = 60;

/// Keeps the one refusal of a text and the doubtful values.
class Findings : public qc::DoubtKeeper {
public:
    /// @param what the text that is read, which outlives this.
    explicit Findings(std::string_view what) : text(what) {}

    void Refused(const TCgatsDiagnostic& diagnostic) override {
        keep([&] {
            location = {diagnostic.line,
                        diagnostic.column,
                        diagnostic.offset,
                        std::string(diagnostic.token, std::min(diagnostic.tokenLength, kLongestToken)),
                        diagnostic.expected,
                        excerptOf(text, diagnostic.line, diagnostic.column)};
        });
    }

    std::optional<Location> location;

private:
    const std::string_view text;
};

std::string messageOf(const TCgats& document, int code) {
    if (code == kTooLong)
        return kTooLongMessage;
    document.SetErrorCode(code);
    return document.GetErrorMessage();
}

ReadFailure failureOf(const TCgats& document, int code, std::optional<Location> location) {
    std::string remedy =
        location ? remedyOf(code, location->token, location->expected) : remedyOf(code, "", "");
    return {code, messageOf(document, code), std::move(location), "", std::move(remedy)};
}

// What the reader does not see, as its texts end at a NUL byte.
void warnOfCut(const std::string& bytes, std::size_t read, DocumentFile& file) {
    if (read + 1 >= bytes.size())
        return;
    std::string warning = qc::printable(file.name) + ": a NUL byte stands at offset " + std::to_string(read) +
                          "; what follows it is not read";
    if (detail::looksLikeUtf16(bytes))
        warning += "; the file looks like UTF-16: save it as plain text or UTF-8";
    file.warnings.push_back(warning);
}

// The first keyword behind a tag, null when there is none.
const TCgatsTag* nextKeyword(const TCgats& document, int tag) {
    for (int i = tag + 1; i < document.GetNrTags(); ++i) {
        if (document.GetTagAt(i)->GetKeyword() != nullptr)
            return document.GetTagAt(i);
    }
    return nullptr;
}

// What stands behind the last value of a table, where that is not END_DATA; empty where it is.
std::string oddityBehind(const TCgats& document, int beginData) {
    const TCgatsTag* next = nextKeyword(document, beginData);
    if (next != nullptr && next->GetCode() != kEndData)
        return qc::quoted(next->GetKeyword()) +
               " follows its last value instead of END_DATA; there are more values than NUMBER_OF_SETS "
               "and the columns announce, so rows are missing or columns have slipped (unquoted blanks?)";
    // Behind a full list there may be lines that were not kept.
    if (next == nullptr && document.GetNrTags() < TCgats::kMaxTags)
        return "no END_DATA follows its last value; the file is cut off, or a value is missing and END_DATA "
               "was taken for it";
    return "";
}

void warnOfOddEnds(DocumentFile& file) {
    const TCgats& document = *file.document;
    int table = 0;
    for (int i = 0; i < document.GetNrTags(); ++i) {
        if (document.GetTagAt(i)->GetCode() != kBeginData)
            continue;
        ++table;
        const std::string oddity = oddityBehind(document, i);
        if (!oddity.empty())
            file.warnings.push_back(qc::printable(file.name) + ": table " + std::to_string(table) + ": " +
                                    oddity);
    }
}

// Reads a text, which ends at its first NUL byte.
void readText(const std::string& text, DocumentFile& file) {
    Findings findings(text.c_str());
    const int code = file.document->ReadFromBuffer(text.c_str(), &findings);
    // The reader tells the place of every fault of the text; without one, memory ran out.
    if (findings.ranOutOfMemory || (code != 0 && !findings.location))
        throw std::bad_alloc();
    if (code != 0) {
        file.failure = failureOf(*file.document, code, std::move(findings.location));
        return;
    }
    warnOfOddEnds(file);
    file.doubts = std::move(findings.doubts);
}

Location locationOf(const TCgatsRefusal& refusal, const std::string& bytes) {
    const std::string text = detail::looksLikeUtf16(bytes) ? detail::utf8OfUtf16(bytes) : bytes;
    const std::size_t offset = startOfLine(text, refusal.line) + static_cast<std::size_t>(refusal.column - 1);
    return {refusal.line,     refusal.column,
            offset,           refusal.token.substr(0, kLongestToken),
            refusal.expected, excerptOf(text, refusal.line, refusal.column)};
}

DocumentFile emptyFile(const std::string& name) {
    return {name, std::make_unique<TCgats>(), std::nullopt, {}, {}, {}, {}};
}

DocumentFile readAsItStands(const std::string& name, const std::string& bytes) {
    DocumentFile file = emptyFile(name);
    warnOfCut(bytes, std::min(bytes.find('\0'), bytes.size()), file);
    readText(bytes, file);
    return file;
}

DocumentFile readIntoForm(const std::string& name, const std::string& bytes, TCgatsNormalizer& normalizer) {
    DocumentFile file = emptyFile(name);
    const int code = normalizer.Normalize(bytes);
    const TCgatsRefusal* const refusal = normalizer.GetRefusal();
    if (code != 0 && refusal == nullptr)
        throw std::bad_alloc();
    for (int i = 0; i < normalizer.GetNrLiberties(); ++i)
        file.liberties.push_back(*normalizer.GetLiberty(i));
    for (int i = 0; i < normalizer.GetNrRemarks(); ++i)
        file.remarks.push_back(*normalizer.GetRemark(i));
    if (refusal != nullptr)
        file.failure = failureOf(*file.document, refusal->code, locationOf(*refusal, bytes));
    else
        readText(normalizer.GetText(), file);
    return file;
}

// Opens a file. @return its bytes; nothing where the failure is told.
std::optional<std::string> bytesOf(DocumentFile& file) {
    if (file.name.empty()) {
        file.failure = failureOf(*file.document, kNoFileName, std::nullopt);
        return std::nullopt;
    }
    FileBytes read = readBytes(file.name);
    if (!read.error.empty()) {
        file.failure = failureOf(*file.document, kNotReadable, std::nullopt);
        file.failure->systemError = read.error;
        return std::nullopt;
    }
    return std::move(read.bytes);
}

} // namespace

DocumentFile readDocument(const std::string& name, Reading reading) {
    DocumentFile file = emptyFile(name);
    const std::optional<std::string> bytes = bytesOf(file);
    if (!bytes)
        return file;
    if (reading == Reading::asItStands)
        return readAsItStands(name, *bytes);
    TCgatsNormalizer normalizer;
    return readIntoForm(name, *bytes, normalizer);
}

CheckedFile checkDocument(const std::string& name) {
    CheckedFile checked{emptyFile(name), std::nullopt, ""};
    const std::optional<std::string> bytes = bytesOf(checked.asItStands);
    if (!bytes)
        return checked;
    TCgatsNormalizer normalizer;
    checked.asItStands = readAsItStands(name, *bytes);
    checked.intoForm = readIntoForm(name, *bytes, normalizer);
    checked.text = normalizer.GetText();
    return checked;
}

namespace {

std::string othersText(int count) {
    if (count == 0)
        return "";
    return "; " + qc::countText(static_cast<std::size_t>(count)) +
           (count == 1 ? " other value of the column is no number either"
                       : " other values of the column are no numbers either");
}

} // namespace

void warnOfDoubts(DocumentFile& file) {
    for (const qc::DoubtfulValue& doubt : file.doubts) {
        const TCgatsField& field = *file.document->GetTable(doubt.table)->GetHeader()->GetField(doubt.column);
        file.warnings.push_back(qc::printable(file.name) + ": table " + std::to_string(doubt.table + 1) +
                                ": row " + std::to_string(doubt.row + 1) + ", column " +
                                qc::quoted(field.GetName()) + " (number " + std::to_string(doubt.column + 1) +
                                "): " + qc::quoted(doubt.text) + " is no number; it is read as " +
                                detail::generalText(detail::textToDouble(doubt.text.c_str()), 6) +
                                othersText(doubt.others));
    }
}

std::string placeOf(const std::string& name, const ReadFailure& failure) {
    return failure.location ? placeOf(name, failure.location->line, failure.location->column)
                            : shownName(name);
}

std::string shownName(const std::string& name) {
    return name.empty() ? "\"\"" : qc::printable(name);
}

std::string placeOf(const std::string& name, int line, int column) {
    return shownName(name) + ':' + std::to_string(line) + ':' + std::to_string(column);
}

void noteLiberties(const DocumentFile& file) {
    if (!file.failure && file.document->GetNrTables() == 0)
        return;
    for (const auto* list : {&file.liberties, &file.remarks}) {
        for (const TCgatsLiberty& liberty : *list)
            note(placeOf(file.name, liberty.line, liberty.column) + ": " + qc::printable(liberty.done));
    }
}

std::string foundText(const Location& location) {
    if (location.token.empty())
        return "the end of the text";
    const bool shortened = location.token.size() > kLongestTokenShown;
    return qc::quoted(location.token.substr(0, kLongestTokenShown)) + (shortened ? "..." : "");
}

std::string describeFailure(const DocumentFile& file) {
    const ReadFailure& failure = *file.failure;
    if (failure.code == kNotReadable)
        return shownName(file.name) + ": cannot be read: " + failure.systemError + " (code 3)";
    std::string text = placeOf(file.name, failure);
    text += ": " + failure.message + " (code " + std::to_string(failure.code) + ")";
    if (failure.location)
        text += "; found " + foundText(*failure.location) + ", expected " +
                qc::printable(failure.location->expected);
    return text + "; " + failure.remedy;
}

} // namespace qxcms::command
