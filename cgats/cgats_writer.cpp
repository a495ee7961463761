#include "cgats/cgats_writer.h"

#include <cstring>
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
    const std::vector<Column> columns = columnsOf(table);
    for (int row = 0; row < table.GetNrRowsStored(); ++row) {
        for (const Column& column : columns)
            writeValue(column, row);
        text.put('\n');
    }
    return 0;
}

std::vector<CgatsWriter::Column> CgatsWriter::columnsOf(const TCgatsTable& table) {
    std::vector<Column> columns(static_cast<std::size_t>(table.GetHeader()->GetNrFields()));
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const int column = static_cast<int>(i);
        const TCgatsValueList* const values = table.GetValues(column);
        const int dataType = table.GetHeader()->GetField(column)->GetDataType();
        const double* const numbers =
            dataType == TCgatsField::kFloat
                ? static_cast<const TCgatsValueListDouble*>(values)->GetNumbers(table.GetNrRowsStored())
                : nullptr;
        columns[i] = {values, dataType, numbers};
    }
    return columns;
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
