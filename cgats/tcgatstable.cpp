#include "cgats/tcgatstable.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <new>
#include <utility>

#include "base/guarded.h"
#include "cgats/cgats_vocabulary.h"

using namespace qxcms::detail;

namespace {

std::unique_ptr<TCgatsValueList> newValueList(int dataType, int count) {
    switch (dataType) {
    case TCgatsField::kString:
        return std::make_unique<TCgatsValueListString>(count);
    case TCgatsField::kInteger:
        return std::make_unique<TCgatsValueListInt>(count);
    case TCgatsField::kFloat:
        return std::make_unique<TCgatsValueListDouble>(count);
    default:
        return nullptr;
    }
}

} // namespace

TCgatsTable::TCgatsTable(TCgatsTableHeader* newHeader)
    : header(newHeader), nrRowsStored(0), tableError(0), spectralPercent(0) {
    tableError = guarded(static_cast<int>(kOtherTableError), [this] { return build(); });
}

TCgatsTable::~TCgatsTable() = default;

int TCgatsTable::build() {
    if (!header)
        return kNoHeader;
    if (header->GetNrFields() == 0)
        return kNoFields;
    if (header->GetNrSamples() < 1)
        return kNoSamples;
    if (header->GetNrFilledFields() != header->GetNrFields())
        return kFieldsMissing;
    const int error = header->IsClassified() ? 0 : header->Classify();
    if (error != 0)
        return error;
    values.reserve(static_cast<std::size_t>(header->GetNrFields()));
    for (int column = 0; column < header->GetNrFields(); ++column) {
        auto list = newValueList(header->GetField(column)->GetDataType(), header->GetNrSamples());
        if (!list)
            return kBadDataType;
        values.push_back(std::move(list));
    }
    return 0;
}

bool TCgatsTable::isFull() const {
    return !header || nrRowsStored >= header->GetNrSamples();
}

int TCgatsTable::SetNextValue(int column, const char* text) {
    if (isFull())
        return kTableFull;
    TCgatsValueList* const list = GetValues(column);
    if (list == nullptr || list->SetValue(nrRowsStored, text) == TCgatsValueList::kNotStored)
        return kOtherTableError;
    return 0;
}

int TCgatsTable::EndRow() {
    if (isFull())
        return kTableFull;
    ++nrRowsStored;
    return 0;
}

int TCgatsTable::AddRow(const char* const* texts) {
    if (texts == nullptr)
        return kOtherTableError;
    for (int column = 0; column < static_cast<int>(values.size()); ++column) {
        const int error = SetNextValue(column, texts[column]);
        if (error != 0)
            return error;
    }
    return EndRow();
}

bool TCgatsTable::HasValuesOfAllColumns() const {
    return header && header->GetNrFields() == static_cast<int>(values.size());
}

TCgatsValueList* TCgatsTable::GetValues(int column) const {
    if (column < 0 || column >= static_cast<int>(values.size()))
        return nullptr;
    return values[static_cast<std::size_t>(column)].get();
}

int TCgatsTable::Widen(std::unique_ptr<TCgatsTableHeader> wider,
                       std::vector<std::unique_ptr<TCgatsValueList>> added) {
    const std::size_t columns = values.size() + added.size();
    if (!wider || !wider->IsClassified() || static_cast<std::size_t>(wider->GetNrFields()) != columns ||
        std::find(added.begin(), added.end(), nullptr) != added.end())
        return kOtherTableError;
    return guarded(static_cast<int>(kOtherTableError), [&] {
        values.reserve(columns);
        std::move(added.begin(), added.end(), std::back_inserter(values));
        header = std::move(wider);
        return 0;
    });
}

std::unique_ptr<TCgatsTable> TCgatsTable::NotBuilt(int tableError) {
    std::unique_ptr<TCgatsTable> table(new (std::nothrow) TCgatsTable(nullptr));
    if (table)
        table->tableError = tableError;
    return table;
}
