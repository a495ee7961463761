#include "cgats/cgats_writer.h"

#include <cstring>
#include <memory>
#include <new>
#include <string>

#include "base/number_text.h"
#include "cgats/cgats_vocabulary.h"
#include "platform/utility.h"

namespace qxcms::detail {

namespace {

bool opensCommentBlock(const TCgatsTag& tag) {
    return strncmp_ci(tag.GetKeyword(), kBlockStart, kBlockStartLength) == 0;
}

// Kept on purpose: the first character is not looked at
// (cgatsWriter.stringWithItsOnlyBlankInFront_isWrittenBare).
bool needsQuotes(const char* value) {
    return *value != '\0' && std::strpbrk(value + 1, " \t\n\r") != nullptr;
}

} // namespace

// The values of a column.
struct CgatsWriter::Column {
    const TCgatsValueList* values;
    int dataType;
    const double* numbers; // null for other types, and where some were never set
};

int CgatsWriter::writeDocument() {
    int formats = 0;
    int tables = 0;
    int blocks = 0;
    for (int i = 0; i < document.GetNrTags(); ++i) {
        int code = writeTag(i);
        if (code != 0)
            return code;
        const TCgatsTag& tag = *document.GetTagAt(i);
        if (tag.GetCode() == kBeginDataFormat)
            code = writeDataFormat(formats++);
        else if (tag.GetCode() == kBeginData)
            code = writeSamples(tables++);
        else if (opensCommentBlock(tag) && blocks < document.GetNrCommentBlocks())
            text.put(document.GetCommentBlock(blocks++));
        if (code != 0)
            return code;
    }
    return 0;
}

int CgatsWriter::writeTag(int index) {
    const TCgatsTag* const tag = document.GetTagAt(index);
    if (tag == nullptr)
        return kBadTagIndex;
    return writeTagLine(*tag, text) == 0 ? 0 : kEmptyTag;
}

int CgatsWriter::writeDataFormat(int table) {
    const TCgatsTable* const found = document.GetTable(table);
    if (found == nullptr)
        return kBadTableIndex;
    const int error = writeFields(*found);
    return error == 0 ? 0 : TCgats::TableErrorToCgatsError(error);
}

int CgatsWriter::writeSamples(int table) {
    const TCgatsTable* const found = document.GetTable(table);
    if (found == nullptr)
        return kBadTableIndex;
    const int error = writeRows(*found);
    return error == 0 ? 0 : TCgats::TableErrorToCgatsError(error);
}

// The names in one line. @return a table error.
int CgatsWriter::writeFields(const TCgatsTable& table) {
    if (table.GetTableError() != 0)
        return table.GetTableError();
    if (table.GetHeader() == nullptr)
        return kNoHeader;
    const TCgatsTableHeader& header = *table.GetHeader();
    if (header.GetNrFields() == 0 || header.GetNrFilledFields() != header.GetNrFields())
        return kHeaderEmpty;
    for (int column = 0; column < header.GetNrFields(); ++column) {
        if (column > 0)
            text.put('\t');
        text.put(header.GetField(column)->GetName());
    }
    text.put('\n');
    return 0;
}

// A line per sample, a TAB behind every value. @return a table error.
int CgatsWriter::writeRows(const TCgatsTable& table) {
    if (table.GetTableError() != 0)
        return table.GetTableError();
    if (table.GetHeader() == nullptr)
        return kNoHeader;
    const TCgatsTableHeader& header = *table.GetHeader();
    if (table.GetNrRowsStored() != header.GetNrSamples())
        return kSampleCountMismatch;
    if (header.GetNrFields() == 0 || !table.HasValuesOfAllColumns())
        return kFieldsMissing;
    // Without memory for it, what is known of a column is made up for every value: nothing may stop halfway.
    const int count = header.GetNrFields();
    const std::unique_ptr<Column[]> columns(new (std::nothrow) Column[static_cast<std::size_t>(count)]);
    for (int i = 0; columns && i < count; ++i)
        columns[static_cast<std::size_t>(i)] = columnAt(table, i);
    for (int row = 0; row < table.GetNrRowsStored(); ++row) {
        for (int i = 0; i < count; ++i)
            writeValue(columns ? columns[static_cast<std::size_t>(i)] : columnAt(table, i), row);
        text.put('\n');
    }
    return 0;
}

CgatsWriter::Column CgatsWriter::columnAt(const TCgatsTable& table, int index) {
    const TCgatsValueList* const values = table.GetValues(index);
    const int dataType = table.GetHeader()->GetField(index)->GetDataType();
    const double* const numbers =
        dataType == TCgatsField::kFloat
            ? static_cast<const TCgatsValueListDouble*>(values)->GetNumbers(table.GetNrRowsStored())
            : nullptr;
    return {values, dataType, numbers};
}

void CgatsWriter::writeValue(const Column& column, int row) {
    switch (column.dataType) {
    case TCgatsField::kFloat: {
        const double number = column.numbers != nullptr ? column.numbers[row] : column.values->GetDouble(row);
        text.keep(doubleToShortText(number, text.roomFor(kGeneralTextSize)));
        break;
    }
    case TCgatsField::kInteger:
        text.put(std::to_string(column.values->GetInt(row)).c_str());
        break;
    default:
        writeString(column.values->GetString(row));
        break;
    }
    text.put('\t');
}

// An absent string is written as nothing.
void CgatsWriter::writeString(const char* value) {
    if (value == nullptr)
        return;
    const char* const quote = needsQuotes(value) ? "\"" : "";
    text.put(quote);
    text.put(value);
    text.put(quote);
}

} // namespace qxcms::detail
