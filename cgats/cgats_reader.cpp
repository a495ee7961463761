#include "cgats/cgats_reader.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>

#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"
#include "platform/utility.h"

namespace qxcms::detail {

namespace {

constexpr char kEndOfFormat[] = "END_DATA_FORMAT";
constexpr char kEndOfData[] = "END_DATA";

// Spectra with a value above this in one of the first rows are in percent.
constexpr double kLargestFraction = 10.0;
constexpr int kInspectedRows = 5;

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

bool isSeparator(char c) {
    return isBlank(c) || isLineEnd(c);
}

bool startsIgnoringCase(const char* position, const char* end, const std::string& text) {
    return static_cast<std::size_t>(end - position) >= text.size() &&
           strncmp_ci(position, text.c_str(), static_cast<int>(text.size())) == 0;
}

bool opensCommentBlock(const HeaderLine& line) {
    return line.code != kBeginDataFormat && line.code != kBeginData &&
           strncmp_ci(line.keyword.c_str(), kBlockStart, kBlockStartLength) == 0;
}

} // namespace

// Positions.

int CgatsReader::refuse(int code, const char* tokenFirst, const char* tokenLast, const char* expected) const {
    if (sink == nullptr)
        return code;
    int line = 1;
    const char* start = begin;
    for (const char* p = begin; p < tokenFirst; ++p) {
        const bool pairGoesOn = *p == '\r' && p + 1 < end && p[1] == '\n';
        if (isLineEnd(*p) && !pairGoesOn) {
            ++line;
            start = p + 1;
        }
    }
    const TCgatsDiagnostic diagnostic = {code,       static_cast<std::size_t>(tokenFirst - begin),
                                         line,       static_cast<int>(tokenFirst - start) + 1,
                                         tokenFirst, static_cast<std::size_t>(tokenLast - tokenFirst),
                                         expected};
    sink->Refused(diagnostic);
    return code;
}

int CgatsReader::refuseHere(int code, const char* expected) const {
    return refuse(code, position, position, expected);
}

// Header lines.

// The end of the keyword of the line that is acted on.
const char* CgatsReader::firstWordEnd() const {
    return std::find_if(lineStart, end, isSeparator);
}

bool CgatsReader::atLineEnd() const {
    return position == end || isLineEnd(*position);
}

void CgatsReader::skipBlanks() {
    position = std::find_if_not(position, end, isBlank);
}

LineResult CgatsReader::readLine(HeaderLine& line) {
    line.keyword.clear();
    line.value.clear();
    line.comment.clear();
    line.numeric = 0;
    bool more = true;
    while (more && line.keyword.empty() && line.comment.empty()) {
        skipBlanks();
        lineStart = position;
        if (!readOneLine(line))
            return LineResult::kTooLong;
        more = position != end;
        if (more)
            ++position;
    }
    line.code = document.MatchTag(line.keyword.c_str());
    return more ? LineResult::kMore : LineResult::kEndOfText;
}

// Reads up to the line end; false when a limit is passed.
bool CgatsReader::readOneLine(HeaderLine& line) {
    if (!readKeyword(line))
        return false;
    skipBlanks();
    return readValue(line);
}

bool CgatsReader::readKeyword(HeaderLine& line) {
    for (; !atLineEnd() && !isBlank(*position) && *position != '#'; ++position)
        if (!line.keyword.add(*position))
            return false;
    return true;
}

bool CgatsReader::readValue(HeaderLine& line) {
    bool commentInQuotes = false;
    const bool quoted = !atLineEnd() && *position == '"';
    if (!(quoted ? readQuoted(line, commentInQuotes) : readBare(line, commentInQuotes)))
        return false;
    if (line.value.empty())
        line.numeric = 0;
    // What follows a closing quote has no meaning.
    while (!atLineEnd() && *position != '#')
        ++position;
    return atLineEnd() || readComment(line, commentInQuotes);
}

// From the opening quote behind the closing one, or to a "#" or the line end before it.
bool CgatsReader::readQuoted(HeaderLine& line, bool& commentInQuotes) {
    line.numeric = 0;
    for (++position; !atLineEnd() && *position != '"' && *position != '#'; ++position)
        if (!line.value.add(*position))
            return false;
    commentInQuotes = !atLineEnd() && *position == '#';
    if (!atLineEnd() && *position == '"')
        ++position;
    return true;
}

// Words with the blanks between them dropped. A double quote ends the value; right after a blank it opens a
// quoted stretch that belongs to the value first.
bool CgatsReader::readBare(HeaderLine& line, bool& commentInQuotes) {
    line.numeric = 1;
    for (; !atLineEnd() && *position != '#'; ++position) {
        if (*position == '"') {
            line.numeric = 0;
            if (isBlank(position[-1]))
                return readQuoted(line, commentInQuotes);
            ++position;
            return true;
        }
        if (!isBlank(*position) && !line.value.add(*position))
            return false;
    }
    return true;
}

// From the "#" to the line end. Kept on purpose: when it stood inside an open quoted value, the quote that
// would have closed the value is no part of the comment
// (cgatsTokeniser.hashInAQuotedValue_dropsOnlyTheFirstQuoteBehindIt).
bool CgatsReader::readComment(HeaderLine& line, bool dropFirstQuote) {
    for (++position; !atLineEnd(); ++position) {
        if (dropFirstQuote && *position == '"')
            dropFirstQuote = false;
        else if (!line.comment.add(*position))
            return false;
    }
    return true;
}

// The document.

int CgatsReader::readDocument() {
    const auto line = std::make_unique<HeaderLine>();
    for (;;) {
        const LineResult result = readLine(*line);
        if (result == LineResult::kTooLong)
            return refuse(kTokenTooLong, lineStart, position,
                          "a keyword of at most 256, a value of at most 4096 and a comment of at most 512 "
                          "characters");
        int code = act(*line);
        if (code != 0)
            return code;
        if (result == LineResult::kEndOfText && line->keyword.empty())
            return 0;
        if (opensCommentBlock(*line))
            code = readCommentBlock(line->keyword.c_str());
        if (code == 0)
            code = store(*line);
        if (code != 0 || result == LineResult::kEndOfText)
            return code;
    }
}

// What a line does beyond being stored. Where memory runs out, here and further down, the code is that of an
// unknown error and the sink is not told: nothing is wrong with the text.
int CgatsReader::act(const HeaderLine& line) {
    switch (line.code) {
    case kNumberOfFields:
        document.InitTmpHeader(textToInt(line.value.c_str()));
        if (document.tmpHeader == nullptr)
            return kUnknownError;
        return 0;
    case kBeginDataFormat:
        return readDataFormat();
    case kProcessColorId:
        ++document.nrProcessColorIdTags;
        return 0;
    case kSpotId:
        ++document.nrSpotIdTags;
        return 0;
    case kNumberOfSets:
        document.declaredNrSets = textToInt(line.value.c_str());
        return 0;
    case kBeginData:
        return readSamples();
    case kKeyword:
        return declare(line);
    default:
        return 0;
    }
}

// A line without a value declares nothing.
int CgatsReader::declare(const HeaderLine& line) {
    if (line.value.empty() || document.AddCustomField(line.value.c_str()) == 0)
        return 0;
    return kUnknownError;
}

// A line too many has acted, but is not kept.
int CgatsReader::store(const HeaderLine& line) {
    if (document.nrTags >= TCgats::kMaxTags)
        return 0;
    const bool stored = document.appendTag(line.code, line.keyword.c_str(), line.numeric, line.value.c_str(),
                                           line.comment.c_str());
    if (!stored)
        return kUnknownError;
    return 0;
}

// Comment blocks.

int CgatsReader::readCommentBlock(const char* keyword) {
    if (document.nrCommentBlocks >= TCgats::kMaxCommentBlocks)
        return refuse(kBadCommentBlock, lineStart, firstWordEnd(), "at most 128 comment blocks");
    const std::string terminator = std::string("END_") + (keyword + kBlockStartLength);
    // Kept on purpose: the terminator is looked for behind a line end only, so that "BEGIN_X" and "END_X" on
    // neighbouring lines match with CR LF line ends and not with LF
    // (commentBlock.emptyBlockWithLineFeeds_isNotFound).
    for (const char* p = position; p < end; ++p)
        if (isLineEnd(*p) && startsIgnoringCase(p + 1, end, terminator)) {
            const int code = document.addCommentBlock(position, static_cast<std::size_t>(p + 1 - position));
            position = p + 1;
            return code;
        }
    const std::string expected = "a line further down that starts with " + terminator;
    return refuse(kBadCommentBlock, lineStart, firstWordEnd(), expected.c_str());
}

// The data format.

// A run of characters between separators.
struct CgatsReader::Token {
    const char* first; // behind leading double quotes
    const char* last;
    bool endsText;         // nothing follows
    bool endsBeforeRemark; // a "#" follows

    bool isEndOfFormat() const {
        constexpr std::size_t kLength = sizeof kEndOfFormat - 1;
        return !endsText && !endsBeforeRemark && static_cast<std::size_t>(last - first) == kLength &&
               isNamedEndOfFormat();
    }

    bool isNamedEndOfFormat() const { return name() == kEndOfFormat; }

    // Without the double quote that may close it.
    std::string name() const { return std::string(first, last[-1] == '"' ? last - 1 : last); }
};

// The next token that holds more than double quotes; an empty one at the end of the text.
CgatsReader::Token CgatsReader::nextFieldToken() {
    for (;;) {
        position = std::find_if_not(position, end, isSeparator);
        const char* const first = std::find_if_not(position, end, [](char c) { return c == '"'; });
        const char* const last = std::find_if(first, end, [](char c) { return isSeparator(c) || c == '#'; });
        const bool remark = last != end && *last == '#';
        position = remark ? std::find_if(last, end, isLineEnd) : last;
        if (first != last || last == end)
            return {first, last, last == end, remark};
    }
}

int CgatsReader::readDataFormat() {
    const bool declared = document.tmpHeader != nullptr;
    if (!declared)
        document.tmpHeader = new TCgatsTableHeader;
    int fieldsRead = 0;
    Token token = nextFieldToken();
    for (; !token.isEndOfFormat(); token = nextFieldToken()) {
        if (token.endsText)
            return refuse(kNoEndOfFormat, token.first, token.last, "END_DATA_FORMAT, followed by a line end");
        const int code = addField(token, declared);
        if (code != 0)
            return code;
        ++fieldsRead;
    }
    position = token.first;
    const int slots = document.tmpHeader->GetNrFields();
    if (!declared || fieldsRead == slots)
        return 0;
    const std::string expected = std::to_string(slots) +
                                 " field names, as NUMBER_OF_FIELDS declares; there are " +
                                 std::to_string(fieldsRead);
    return refuse(kFieldCountMismatch, token.first, token.last, expected.c_str());
}

int CgatsReader::addField(const Token& token, bool declared) {
    int kind = 0;
    int number = 0;
    int dataType = 0;
    std::string canonicalName;
    const int fieldId =
        document.classifyField(token.name().c_str(), &kind, &number, &dataType, &canonicalName);
    if (fieldId < 0 && token.isNamedEndOfFormat())
        return refuse(kUnknownField, token.first, token.last,
                      "END_DATA_FORMAT without quotes, followed by a blank or a line end");
    if (fieldId < 0)
        return refuse(kUnknownField, token.first, token.last,
                      "a standard field name, or one that a KEYWORD line before the data format declares");
    TCgatsTableHeader& header = *document.tmpHeader;
    if (declared && header.GetNrFilledFields() == header.GetNrFields()) {
        const std::string expected =
            "END_DATA_FORMAT after " + std::to_string(header.GetNrFields()) + " field names";
        return refuse(kBadField, token.first, token.last, expected.c_str());
    }
    auto field = std::make_unique<TCgatsField>(dataType, canonicalName.c_str(), number, kind, fieldId);
    const int refused = declared ? header.FillNextSlot(field.release()) : header.Append(field.release());
    if (refused != 0)
        return kUnknownError;
    return 0;
}

// The samples.

// One value, terminated.
struct CgatsReader::Value {
    char text[TCgats::kMaxSampleValue + 1];

    bool assign(const char* first, const char* last) {
        const auto length = static_cast<std::size_t>(last - first);
        if (length >= sizeof text)
            return false;
        std::memcpy(text, first, length);
        text[length] = '\0';
        return true;
    }
};

int CgatsReader::readSamples() {
    const char* const keywordEnd = firstWordEnd();
    if (document.tmpHeader == nullptr)
        return refuse(kNoTmpHeader, lineStart, keywordEnd,
                      "a data format (BEGIN_DATA_FORMAT to END_DATA_FORMAT) of its own before BEGIN_DATA");
    if (document.declaredNrSets < 1)
        return refuse(kNoTmpHeader, lineStart, keywordEnd, "a positive NUMBER_OF_SETS before BEGIN_DATA");
    document.tmpHeader->SetNrSamples(document.declaredNrSets);
    std::unique_ptr<TCgatsTable> table(new TCgatsTable(document.tmpHeader));
    document.tmpHeader = nullptr;

    int code = 0;
    if (table->GetTableError() == kOtherTableError)
        code = kUnknownError;
    else if (table->GetTableError() != 0)
        code = refuse(TCgats::TableErrorToCgatsError(table->GetTableError()), lineStart, keywordEnd,
                      "a data format whose fields make a table");
    else
        code = fillTable(*table);
    if (code == 0)
        code = document.addTable(std::move(table));
    else
        document.tmpHeader = table->ReleaseHeader();
    if (code == 0)
        document.declaredNrSets = 0;
    return code;
}

// As many rows as the rest of the text can hold: a value and its separator take two characters.
int CgatsReader::mostRowsLeft(const TCgatsTableHeader& header) const {
    const std::ptrdiff_t rows = (end - position) / (2 * std::ptrdiff_t{header.GetNrFields()}) + 1;
    return static_cast<int>(std::min(rows, std::ptrdiff_t{header.GetNrSamples()}));
}

int CgatsReader::fillTable(TCgatsTable& table) {
    endDataAsValue = nullptr;
    const TCgatsTableHeader& header = *table.GetHeader();
    const int rows = mostRowsLeft(header);
    // Where the numbers of a column go; null for a column of texts.
    std::vector<double*> numbers(static_cast<std::size_t>(header.GetNrFields()));
    for (int column = 0; column < header.GetNrFields(); ++column) {
        if (header.GetField(column)->GetDataType() != TCgatsField::kFloat)
            continue;
        auto& list = static_cast<TCgatsValueListDouble&>(*table.GetValues(column));
        numbers[static_cast<std::size_t>(column)] = list.Reserve(rows);
        if (numbers[static_cast<std::size_t>(column)] == nullptr)
            return kUnknownError;
    }
    for (int row = 0; row < rows; ++row) {
        const int code = readRow(table, numbers, row);
        if (code != 0)
            return code;
        if (row < kInspectedRows)
            inspectPercent(table, row);
    }
    if (rows == header.GetNrSamples())
        return 0;
    position = std::find_if_not(position, end, isSeparator);
    return refuseMissingValue();
}

int CgatsReader::readRow(TCgatsTable& table, const std::vector<double*>& numbers, int row) {
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const int column = static_cast<int>(i);
        const int code =
            numbers[i] != nullptr ? readNumber(row, column, numbers[i][row]) : readText(table, column);
        if (code != 0)
            return code;
    }
    const int tableError = table.EndRow();
    return tableError == 0 ? 0 : refuseHere(TCgats::TableErrorToCgatsError(tableError), "END_DATA");
}

int CgatsReader::readNumber(int row, int column, double& number) {
    if (readPlainNumber(number))
        return 0;
    Value value;
    const int code = readSampleValue(value, true);
    if (code != 0)
        return code;
    inspectNumber(row, column, value);
    number = textToDouble(value.text);
    return 0;
}

int CgatsReader::readText(TCgatsTable& table, int column) {
    Value value;
    const int code = readSampleValue(value, false);
    if (code != 0)
        return code;
    const int tableError = table.SetNextValue(column, value.text);
    return tableError == 0 ? 0 : TCgats::TableErrorToCgatsError(tableError);
}

// The shorter way for what nearly all values are. False, with nothing read, for any other one.
bool CgatsReader::readPlainNumber(double& number) {
    const char* const first = std::find_if_not(position, end, isSeparator);
    const char* const last = parsePlainDecimal(first, end, number);
    if (last == nullptr || (last != end && !isSeparator(*last)))
        return false;
    position = last;
    return true;
}

// Tells the sink of a text that stands for a number and is none.
void CgatsReader::inspectNumber(int row, int column, const Value& value) const {
    if (sink == nullptr)
        return;
    const char* const last = value.text + std::strlen(value.text);
    const char* stop = nullptr;
    parseDouble(value.text, last, &stop);
    if (stop != last || last == value.text)
        sink->Doubted({document.nrTables, row, column, value.text});
}

int CgatsReader::readSampleValue(Value& value, bool decimalComma) {
    position = std::find_if_not(position, end, isSeparator);
    if (position == end)
        return refuseMissingValue();
    const bool quoted = *position == '"';
    const char* const first = quoted ? position + 1 : position;
    const char* const last = quoted ? std::find(first, end, '"') : std::find_if(first, end, isSeparator);
    if (quoted && last == end)
        return refuse(kUnknownError, position, end, "a double quote that closes the value");
    if (!value.assign(first, last))
        return refuse(kUnknownError, position, last, "a value of at most 127 characters");
    position = quoted ? last + 1 : last;
    if (quoted)
        return 0;
    if (decimalComma)
        std::replace(value.text, value.text + (last - first), ',', '.');
    if (endDataAsValue == nullptr && std::strcmp(value.text, kEndOfData) == 0)
        endDataAsValue = first;
    return 0;
}

// Values are missing. Where END_DATA was taken for one, that is the place to look.
int CgatsReader::refuseMissingValue() const {
    constexpr const char* kExpected =
        "a further sample value: NUMBER_OF_SETS times the number of fields is more than the values there are";
    if (endDataAsValue == nullptr)
        return refuseHere(kUnknownError, kExpected);
    return refuse(kUnknownError, endDataAsValue, endDataAsValue + sizeof kEndOfData - 1, kExpected);
}

void CgatsReader::inspectPercent(TCgatsTable& table, int row) {
    const TCgatsTableHeader& header = *table.GetHeader();
    for (int i = 0; i < header.GetNrWaveLengths(); ++i)
        if (table.GetValues(header.GetSpectralColumns()[i])->GetDouble(row) > kLargestFraction) {
            table.SetSpectralPercent(true);
            return;
        }
}

} // namespace qxcms::detail
