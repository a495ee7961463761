/// @file
/// The CGATS reader: one forward pass over a text of known length. Internal.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cgats/cgats_diagnostics.h"
#include "cgats/tcgats.h"

namespace qxcms::detail {

/// A text of limited length, always terminated.
template <std::size_t Limit>
class LimitedText {
public:
    const char* c_str() const { return characters; }
    bool empty() const { return length == 0; }
    void clear() {
        length = 0;
        characters[0] = '\0';
    }
    /// False, with nothing added, when the limit is reached.
    bool add(char c) {
        if (length == Limit)
            return false;
        characters[length++] = c;
        characters[length] = '\0';
        return true;
    }

private:
    std::size_t length = 0;
    char characters[Limit + 1] = {};
};

/// One header line.
struct HeaderLine {
    LimitedText<TCgats::kMaxKeyword> keyword;
    LimitedText<TCgats::kMaxValue> value;
    LimitedText<TCgats::kMaxComment> comment;
    int code = -1;
    int numeric = 0;
};

/// How reading a header line ended.
enum class LineResult { kMore, kEndOfText, kTooLong };

/// Reads into a document and knows where it is. The operations answer 0 or a document error code, after
/// telling the sink.
class CgatsReader {
public:
    CgatsReader(TCgats& target, const char* first, const char* last, TCgatsDiagnosticSink* listener = nullptr)
        : document(target), begin(first), end(last), position(first), lineStart(first), sink(listener) {}

    const char* at() const { return position; }

    /// As MatchField, but throws when memory runs out.
    static int classify(TCgats& vocabulary, const char* name, int* kind, int* number, int* dataType,
                        std::string* canonicalName) {
        return vocabulary.classifyField(name, kind, number, dataType, canonicalName);
    }
    /// What a line PROCESSCOLOR_ID does.
    static void countProcessColor(TCgats& vocabulary) { ++vocabulary.nrProcessColorIdTags; }

    int readDocument();
    LineResult readLine(HeaderLine& line);
    int readCommentBlock(const char* keyword);
    int readDataFormat();
    int readSamples();

private:
    struct Value;
    struct Token;

    bool readOneLine(HeaderLine& line);
    bool readKeyword(HeaderLine& line);
    bool readValue(HeaderLine& line);
    bool readQuoted(HeaderLine& line, bool& commentInQuotes);
    bool readBare(HeaderLine& line, bool& commentInQuotes);
    bool readComment(HeaderLine& line, bool dropFirstQuote);
    void skipBlanks();
    bool atLineEnd() const;
    const char* firstWordEnd() const;

    int act(const HeaderLine& line);
    int declare(const HeaderLine& line);
    int store(const HeaderLine& line);

    Token nextFieldToken();
    int addField(const Token& token, bool declared);

    int fillTable(TCgatsTable& table);
    int mostRowsLeft(const TCgatsTableHeader& header) const;
    int readRow(TCgatsTable& table, const std::vector<double*>& numbers, int row);
    int readNumber(int row, int column, double& number);
    int readText(TCgatsTable& table, int column);
    void inspectNumber(int row, int column, const Value& value) const;
    bool readPlainNumber(double& number);
    int readSampleValue(Value& value, bool decimalComma);
    int refuseMissingValue() const;
    static void inspectPercent(TCgatsTable& table, int row);

    int refuse(int code, const char* tokenFirst, const char* tokenLast, const char* expected) const;
    int refuseHere(int code, const char* expected) const;

    TCgats& document;
    const char* const begin;
    const char* const end;
    const char* position;
    const char* lineStart; // where the header line that is acted on begins
    const char* endDataAsValue = nullptr;
    TCgatsDiagnosticSink* const sink;
};

} // namespace qxcms::detail
