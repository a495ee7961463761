// What was read is written, read again and written again: nothing may get lost on the way, as far as the
// rules of the format let it come back.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "cgats/tcgats.h"
#include "fuzz/document_questions.h"
#include "fuzz/exact_memory.h"
#include "fuzz/must.h"

namespace {

using namespace qxcms::fuzz;

// A string value comes back when it is there, has no quotes and no blank in front.
bool comesBack(const char* value) {
    return value != nullptr && *value != '\0' && std::strchr(" \t\r\n", *value) == nullptr &&
           std::strchr(value, '"') == nullptr;
}

bool stringsComeBack(const TCgatsTable& table) {
    for (int column = 0; column < table.GetHeader()->GetNrFields(); ++column) {
        if (table.GetHeader()->GetField(column)->GetDataType() != TCgatsField::kString)
            continue;
        for (int row = 0; row < table.GetNrRowsStored(); ++row)
            if (!comesBack(table.GetValues(column)->GetString(row)))
                return false;
    }
    return true;
}

// The reader drops a quote at the end of a name.
bool namesComeBack(const TCgatsTableHeader& header) {
    for (int column = 0; column < header.GetNrFields(); ++column) {
        const std::string name = header.GetField(column)->GetName();
        if (name.back() == '"')
            return false;
    }
    return true;
}

// Comments gain a blank each time, a full list has lost lines, and some names and strings cannot be read
// back.
bool allComesBack(const TCgats& document) {
    if (document.GetNrTags() >= TCgats::kMaxTags)
        return false;
    for (int i = 0; i < document.GetNrTags(); ++i)
        if (*document.GetTagAt(i)->GetComment() != '\0')
            return false;
    for (int i = 0; i < document.GetNrTables(); ++i)
        if (!namesComeBack(*document.GetTable(i)->GetHeader()) || !stringsComeBack(*document.GetTable(i)))
            return false;
    return true;
}

std::string written(const TCgats& document, int& code) {
    char* text = nullptr;
    code = document.WriteToBuffer(&text);
    const std::unique_ptr<char[]> owned(text);
    must(text != nullptr, "what was written is handed out");
    return text;
}

void expectSameNumbers(const TCgatsTable& a, const TCgatsTable& b) {
    must(a.GetNrRowsStored() == b.GetNrRowsStored(), "every row comes back");
    must(a.GetHeader()->GetNrFields() == b.GetHeader()->GetNrFields(), "every column comes back");
    for (int column = 0; column < a.GetHeader()->GetNrFields(); ++column)
        for (int row = 0; row < a.GetNrRowsStored(); ++row) {
            const double x = a.GetValues(column)->GetDouble(row), y = b.GetValues(column)->GetDouble(row);
            const bool same = x == y || (std::isnan(x) && std::isnan(y)) || std::isinf(y) ||
                              std::fabs(x - y) <= 1e-5 * std::fabs(x);
            must(same, "numbers come back to six digits");
        }
}

void readAgain(const TCgats& document, const std::string& text) {
    TCgats again;
    must(again.ReadFromBuffer(text.c_str()) == 0, "what was written can be read");
    must(again.GetNrTables() == document.GetNrTables(), "every table comes back");
    for (int i = 0; i < document.GetNrTables(); ++i)
        expectSameNumbers(*document.GetTable(i), *again.GetTable(i));
    int code = 0;
    must(written(again, code) == text && code == 0, "the second text is the first one");
    const TCgats copy(&document);
    must(written(copy, code) == text && code == 0, "a copy writes what its source writes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ExactText text(data, size);
    TCgats document;
    if (document.ReadFromBuffer(text.c_str()) != 0)
        return 0;
    int code = 0;
    const std::string first = written(document, code);
    must(code == 0 || code == 22 || code == 23,
         "what stops the writer is a line without a keyword or a section without a table");
    if (code == 0 && allComesBack(document))
        readAgain(document, first);
    return 0;
}
