// Copies of documents: whole, with chosen samples, with chosen channels.
#include <algorithm>
#include <memory>
#include <new>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "base/guarded.h"
#include "base/number_text.h"
#include "base/owned_text.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/tcgats.h"

using namespace qxcms::detail;

namespace {

constexpr int kRefused = 1;
constexpr int kDecimals = 5;
// One or two channels have no field names.
constexpr int kFewestChannels = 3;

using Field = std::unique_ptr<TCgatsField>;
using Fields = std::vector<Field>;
using Header = std::unique_ptr<TCgatsTableHeader>;
using Table = std::unique_ptr<TCgatsTable>;

// Without memory a table is not copied at all: what follows throws.
void need(bool memory) {
    if (!memory)
        throw std::bad_alloc();
}

// The fields of a chart of three channels and more.
Fields channelFields(int channels) {
    Fields fields;
    fields.reserve(static_cast<std::size_t>(channels));
    TCgatsField** const made = TCgats::CreateProcessFieldDescriptions(channels, false, false);
    need(made != nullptr);
    const std::unique_ptr<TCgatsField*[]> owned(made);
    for (int i = 0; i < channels; ++i)
        fields.emplace_back(made[i]);
    return fields;
}

// Where a column of the new table takes its values from: a column of the source, or a text.
constexpr int kFilled = -1;

// The columns of a table, and what they are made of.
struct Plan {
    Header header;
    std::vector<int> sources;
};

void append(Plan& plan, Field field, int source) {
    plan.sources.push_back(source);
    need(plan.header->Append(field.release()) == 0);
}

void planAllColumns(const TCgatsTableHeader& source, Plan& plan) {
    for (int column = 0; column < source.GetNrFields(); ++column)
        append(plan, source.GetField(column)->Copy(), column);
}

// The source column of each channel, or kFilled. @return false when an entry names neither.
bool findChannels(const TCgatsTableHeader& source, const int* channels, int count, bool filled,
                  std::vector<int>& columns) {
    for (int i = 0; i < count; ++i) {
        if (channels[i] < 0)
            return false;
        const bool lacks = channels[i] >= source.GetNrColors();
        const int column = lacks ? kFilled : source.GetColorColumns()[channels[i]];
        if (column < 0 && !filled)
            return false;
        columns.push_back(column < 0 ? kFilled : column);
    }
    return true;
}

// Also a process colour that another column of its number hides.
bool isColor(const TCgatsTableHeader& source, int column) {
    const std::int32_t* const first = source.GetColorColumns();
    const std::int32_t* const last = first + source.GetNrColors();
    return std::find(first, last, column) != last ||
           (source.GetColorKind() == TCgatsTableHeader::kCustomColors &&
            source.GetField(column)->GetKind() == TCgatsField::kProcessColor);
}

// The channels stand where the first colour of the source stood. @return false when there are no such
// channels.
bool planChannels(const TCgatsTableHeader& source, const int* channels, int count, bool filled, Plan& plan) {
    if (count < kFewestChannels || source.GetNrColors() < 1)
        return false;
    std::vector<int> columns;
    if (!findChannels(source, channels, count, filled, columns))
        return false;
    Fields fields = channelFields(count);
    bool placed = false;
    for (int column = 0; column < source.GetNrFields(); ++column) {
        if (!isColor(source, column)) {
            append(plan, source.GetField(column)->Copy(), column);
            continue;
        }
        for (std::size_t i = 0; !placed && i < fields.size(); ++i)
            append(plan, std::move(fields[i]), columns[i]);
        placed = true;
    }
    return placed;
}

bool copyValue(int dataType, const TCgatsValueList& from, int row, TCgatsValueList& to, int index) {
    switch (dataType) {
    case TCgatsField::kFloat:
        return static_cast<TCgatsValueListDouble&>(to).SetNumber(index, from.GetDouble(row));
    case TCgatsField::kInteger:
        return static_cast<TCgatsValueListInt&>(to).SetNumber(index, from.GetInt(row));
    default:
        const char* const text = from.GetString(row);
        return text == nullptr || to.SetValue(index, text) != TCgatsValueList::kNotStored;
    }
}

void copyColumn(const TCgatsValueList& source, int dataType, const std::vector<int>& rows,
                TCgatsValueList& to) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        need(copyValue(dataType, source, rows[i], to, static_cast<int>(i)));
}

void fillColumn(const char* fill, const std::vector<int>& rows, TCgatsValueList& to) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        need(to.SetValue(static_cast<int>(i), fill) != TCgatsValueList::kNotStored);
}

// What a copy takes of each table.
struct Selection {
    const int* samples; // null for all
    int nrSamples;
    const int* channels; // null for all
    int nrChannels;
    std::string fill; // the value of a channel that the source lacks, empty for none
};

// The rows that are taken. @return false when there is no such row.
bool chooseRows(const TCgatsTable& source, const Selection& selection, std::vector<int>& rows) {
    const int stored = source.GetNrRowsStored();
    if (selection.samples == nullptr) {
        const int declared = std::max(source.GetHeader()->GetNrSamples(), 0);
        rows.resize(static_cast<std::size_t>(std::min(stored, declared)));
        std::iota(rows.begin(), rows.end(), 0);
        return true;
    }
    rows.assign(selection.samples, selection.samples + selection.nrSamples);
    return std::all_of(rows.begin(), rows.end(), [=](int row) { return row >= 0 && row < stored; });
}

// A table that could not be copied keeps the flag of its source. Null when there is no memory.
Table notBuilt(const TCgatsTable& source, int error) {
    Table table = TCgatsTable::NotBuilt(error);
    if (table)
        table->SetSpectralPercent(source.IsSpectralPercent());
    return table;
}

// Null when there is no memory.
Table copyTable(const TCgatsTable& source, const Selection& selection) {
    if (source.GetTableError() != 0)
        return notBuilt(source, source.GetTableError());
    if (!source.HasValuesOfAllColumns())
        return notBuilt(source, kFieldsMissing);
    std::vector<int> rows;
    if (!chooseRows(source, selection, rows))
        return notBuilt(source, kOtherTableError);
    Plan plan{std::make_unique<TCgatsTableHeader>(), {}};
    const TCgatsTableHeader& header = *source.GetHeader();
    if (selection.channels == nullptr)
        planAllColumns(header, plan);
    else if (!planChannels(header, selection.channels, selection.nrChannels, !selection.fill.empty(), plan))
        return notBuilt(source, kIllegalInkMap);
    plan.header->SetNrSamples(selection.samples == nullptr ? header.GetNrSamples() : selection.nrSamples);
    Table table(new TCgatsTable(plan.header.release()));
    need(table->GetTableError() != kOtherTableError);
    // Other colours can come to the front when some are taken away.
    if (table->GetTableError() == kColorNumbering && selection.channels != nullptr)
        return notBuilt(source, kIllegalInkMap);
    if (table->GetTableError() != 0)
        return table;
    for (std::size_t i = 0; i < plan.sources.size(); ++i) {
        const int column = static_cast<int>(i);
        TCgatsValueList& to = *table->GetValues(column);
        if (plan.sources[i] == kFilled)
            fillColumn(selection.fill.c_str(), rows, to);
        else
            copyColumn(*source.GetValues(plan.sources[i]),
                       table->GetHeader()->GetField(column)->GetDataType(), rows, to);
    }
    for (std::size_t row = 0; row < rows.size(); ++row)
        table->EndRow();
    table->SetSpectralPercent(source.IsSpectralPercent());
    return table;
}

std::string fillText(double value) {
    return value != 0.0 ? fixedText(value, kDecimals) : std::string();
}

} // namespace

TCgats::TCgats(const TCgats* source) : TCgats() {
    Init(source, nullptr, 0, nullptr, 0, 0.0);
}

TCgats::TCgats(const TCgats* source, int* samples, int count) : TCgats() {
    Init(source, samples, count, nullptr, 0, 0.0);
}

TCgats::TCgats(const TCgats* source, int* channels, int count, double value) : TCgats() {
    Init(source, nullptr, 0, channels, count, value);
}

void TCgats::Init(const TCgats* source, const int* samples, int sampleCount, const int* channels,
                  int channelCount, double value) {
    if (source == nullptr || source == this) {
        SetErrorCode(kUnknownError);
        return;
    }
    releaseAll();
    SetToZero();
    if (source->errorCode != 0) {
        SetErrorCode(source->errorCode);
        return;
    }
    if (samples == nullptr || sampleCount < 1)
        sampleCount = 0;
    if (channels == nullptr || channelCount < 1)
        channelCount = 0;
    const bool whole =
        source->CopyTagList(&nrTags, tags, &nrCommentBlocks, commentBlocks, channelCount) == 0 &&
        copyNames(*source) && (sampleCount == 0 || declareSamples(sampleCount));
    if (!whole || takeTables(*source, samples, sampleCount, channels, channelCount, value) != 0)
        SetErrorCode(kUnknownError);
}

// @return false when there is no memory.
bool TCgats::declareSamples(int count) {
    return FindTag(kNumberOfSets) < 0 || ChangeTagValue(kNumberOfSets, std::to_string(count).c_str()) == 0;
}

// What a copy with so many channels declares for its fields.
std::string TCgats::fieldCountText(const TCgatsTag& tag, int channelCount) const {
    const std::int64_t others = std::int64_t{textToInt(tag.GetValue())} - std::max(GetNrProcessColors(0), 0);
    return std::to_string(others + channelCount);
}

int TCgats::CopyTagList(std::int32_t* count, TCgatsTag** copies, std::int32_t* commentCount, char** comments,
                        int channelCount) const {
    if (count == nullptr || copies == nullptr || commentCount == nullptr || comments == nullptr)
        return kRefused;
    *count = 0;
    *commentCount = 0;
    return guarded(kRefused, [&] {
        for (int i = 0; i < nrTags; ++i) {
            const TCgatsTag& tag = *tags[i];
            const bool counted = channelCount >= 1 && tag.GetCode() == kNumberOfFields;
            const std::string value = counted ? fieldCountText(tag, channelCount) : std::string();
            copies[i] = newTag(tag.GetCode(), tag.GetKeyword(), tag.GetNumeric(),
                               counted ? value.c_str() : tag.GetValue(), tag.GetComment());
            if (copies[i] == nullptr)
                return kRefused;
            ++*count;
        }
        for (int i = 0; i < nrCommentBlocks; ++i) {
            comments[i] = copyText(commentBlocks[i]).release();
            if (comments[i] == nullptr)
                return kRefused;
            ++*commentCount;
        }
        return 0;
    });
}

int TCgats::ChangeTagValue(int code, const char* text) {
    TCgatsTag* const tag = GetTag(code);
    return tag != nullptr && tag->SetValue(text, tag->GetNumeric()) == 0 ? 0 : kRefused;
}

int TCgats::CopyColorAndFieldInfo(std::int32_t* processColorIdTags, std::int32_t* spotIdTags,
                                  std::int32_t* nameCount, char*** names) const {
    if (processColorIdTags == nullptr || spotIdTags == nullptr || nameCount == nullptr || names == nullptr)
        return kRefused;
    *processColorIdTags = nrProcessColorIdTags;
    *spotIdTags = nrSpotIdTags;
    *nameCount = 0;
    *names = nullptr;
    return guarded(kRefused, [&] {
        std::vector<std::unique_ptr<char[]>> copies;
        for (int i = 0; i < nrCustomFields; ++i) {
            copies.push_back(copyText(customFields[i]));
            if (!copies.back())
                return kRefused;
        }
        *names = new char*[copies.size()];
        *nameCount = nrCustomFields;
        std::transform(copies.begin(), copies.end(), *names, [](auto& copy) { return copy.release(); });
        return 0;
    });
}

// @return false when there is no memory.
bool TCgats::copyNames(const TCgats& source) {
    nrProcessColorIdTags = source.nrProcessColorIdTags;
    nrSpotIdTags = source.nrSpotIdTags;
    for (int i = 0; i < source.nrCustomFields; ++i)
        if (AddCustomField(source.customFields[i]) != 0)
            return false;
    return true;
}

int TCgats::CopyTables(std::int32_t* count, TCgatsTable*** copies, const int* samples, int sampleCount,
                       const int* channels, int channelCount, double value) const {
    if (count == nullptr || copies == nullptr)
        return kRefused;
    *count = 0;
    *copies = nullptr;
    return guarded(kRefused, [&] {
        Selection selection{samples != nullptr && sampleCount > 0 ? samples : nullptr, sampleCount,
                            channels != nullptr && channelCount > 0 ? channels : nullptr, channelCount,
                            fillText(value)};
        std::vector<Table> made;
        for (int i = 0; i < nrTables; ++i) {
            made.push_back(copyTable(*tables[i], selection));
            if (!made.back())
                return kRefused;
            // The chosen samples are those of the first table.
            selection.samples = nullptr;
        }
        *copies = new TCgatsTable*[made.size()];
        *count = nrTables;
        std::transform(made.begin(), made.end(), *copies, [](Table& table) { return table.release(); });
        return 0;
    });
}

// Puts copies of the tables of `source` into this document. @return 0 or a document code.
int TCgats::takeTables(const TCgats& source, const int* samples, int sampleCount, const int* channels,
                       int channelCount, double value) {
    std::int32_t count = 0;
    TCgatsTable** copies = nullptr;
    if (source.CopyTables(&count, &copies, samples, sampleCount, channels, channelCount, value) != 0)
        return kUnknownError;
    const std::unique_ptr<TCgatsTable*[]> owned(copies);
    int code = 0;
    for (int i = 0; i < count; ++i) {
        Table table(copies[i]);
        if (code == 0)
            code = addTable(std::move(table));
    }
    return code;
}
