#include "tools/qxcms/document_file.h"

#include <algorithm>
#include <new>
#include <set>
#include <utility>

#include "base/number_text.h"
#include "qc/printable_text.h"
#include "tools/qxcms/file_bytes.h"

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

/// Keeps the one refusal of a text and the first doubtful value of each column.
class Findings : public TCgatsDiagnosticSink {
public:
    void Refused(const TCgatsDiagnostic& diagnostic) override {
        keep([&] {
            location = {diagnostic.line, diagnostic.column, diagnostic.offset,
                        std::string(diagnostic.token, std::min(diagnostic.tokenLength, kLongestToken)),
                        diagnostic.expected};
        });
    }

    void Doubted(const TCgatsDoubtfulValue& value) override {
        keep([&] {
            if (doubted.insert({value.table, value.column}).second)
                doubts.push_back({value.table, value.row, value.column, value.text});
        });
    }

    std::optional<Location> location;
    std::vector<qc::DoubtfulValue> doubts;
    bool ranOutOfMemory = false;

private:
    // The reader is not to be left by an exception.
    template <class Function>
    void keep(Function&& function) {
        try {
            function();
        } catch (const std::bad_alloc&) {
            ranOutOfMemory = true;
        }
    }

    std::set<std::pair<int, int>> doubted; // table and column
};

std::string messageOf(const TCgats& document, int code) {
    if (code == kTooLong)
        return kTooLongMessage;
    document.SetErrorCode(code);
    return document.GetErrorMessage();
}

bool namesProcessColor(const std::string& token) {
    return token.size() > 2 && token.compare(0, 2, "PC") == 0 && token[2] >= '0' && token[2] <= '9';
}

// What a person can do where the message and what was expected do not tell.
std::string remedyOf(int code, const std::optional<Location>& location) {
    const auto isExpected = [&](const char* word) {
        return location && location->expected.find(word) != std::string::npos;
    };
    switch (code) {
    case 6:
        return isExpected("NUMBER_OF_SETS")
                   ? "write the number of the table's samples, 1 or more, in a line NUMBER_OF_SETS before "
                     "BEGIN_DATA"
                   : "every BEGIN_DATA needs the names of its columns before it, between lines "
                     "BEGIN_DATA_FORMAT and END_DATA_FORMAT";
    case 10:
    case 12:
        return "let NUMBER_OF_FIELDS be the number of column names, or leave it out";
    case 11:
        if (location && namesProcessColor(location->token))
            return "columns PC2_1 and PC2_2 need two lines PROCESSCOLOR_ID before BEGIN_DATA_FORMAT, one per "
                   "colour; the number behind PC is that of the lines";
        return "name a spectral column SPECTRAL_380 or nm380; any other column is declared with a line "
               "KEYWORD and its name before BEGIN_DATA_FORMAT, and its values are then text";
    case 17:
        return "number the PC, SPOT and n-colour columns from 1 to their count, each number once; an "
               "n-colour "
               "space has five channels or more (5CLR_1 to 5CLR_5)";
    default:
        return "";
    }
}

void warnOfCut(const FileBytes& bytes, DocumentFile& file) {
    if (!bytes.cutAt)
        return;
    std::string warning = qc::printable(file.name) + ": a NUL byte stands at offset " +
                          std::to_string(*bytes.cutAt) + "; what follows it is not read";
    if (bytes.looksLikeUtf16)
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

} // namespace

DocumentFile readDocument(const std::string& name) {
    DocumentFile file{name, std::make_unique<TCgats>(), std::nullopt, {}, {}};
    if (name.empty()) {
        file.failure = {kNoFileName, messageOf(*file.document, kNoFileName), std::nullopt, ""};
        return file;
    }
    const FileBytes bytes = readBytes(name);
    if (!bytes.error.empty()) {
        file.failure = {kNotReadable, messageOf(*file.document, kNotReadable), std::nullopt, bytes.error};
        return file;
    }
    warnOfCut(bytes, file);
    Findings findings;
    const int code = file.document->ReadFromBuffer(bytes.text.c_str(), &findings);
    // The reader tells the place of every fault of the text; without one, memory ran out.
    if (findings.ranOutOfMemory || (code != 0 && !findings.location))
        throw std::bad_alloc();
    if (code != 0) {
        file.failure = {code, messageOf(*file.document, code), findings.location,
                        remedyOf(code, findings.location)};
        return file;
    }
    warnOfOddEnds(file);
    file.doubts = std::move(findings.doubts);
    return file;
}

void warnOfDoubts(DocumentFile& file) {
    for (const qc::DoubtfulValue& doubt : file.doubts) {
        const TCgatsField& field = *file.document->GetTable(doubt.table)->GetHeader()->GetField(doubt.column);
        file.warnings.push_back(qc::printable(file.name) + ": table " + std::to_string(doubt.table + 1) +
                                ": row " + std::to_string(doubt.row + 1) + ", column " +
                                qc::quoted(field.GetName()) + " (number " + std::to_string(doubt.column + 1) +
                                "): " + qc::quoted(doubt.text) + " is no number; it is read as " +
                                detail::generalText(detail::textToDouble(doubt.text.c_str()), 6));
    }
}

std::string describeFailure(const DocumentFile& file) {
    const ReadFailure& failure = *file.failure;
    std::string text = file.name.empty() ? "\"\"" : qc::printable(file.name);
    if (failure.code == kNotReadable)
        return text + ": cannot be read: " + failure.detail + " (code 3)";
    if (failure.location)
        text += ':' + std::to_string(failure.location->line) + ':' + std::to_string(failure.location->column);
    text += ": " + failure.message + " (code " + std::to_string(failure.code) + ")";
    if (failure.location) {
        const Location& location = *failure.location;
        const bool shortened = location.token.size() > kLongestTokenShown;
        text += location.token.empty()
                    ? "; found the end of the text"
                    : "; found " + qc::quoted(location.token.substr(0, kLongestTokenShown)) +
                          (shortened ? "..." : "");
        text += ", expected " + location.expected;
    }
    if (!failure.detail.empty())
        text += "; " + failure.detail;
    return text;
}

} // namespace qxcms::command
