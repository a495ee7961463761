#include "cgats/tcgats.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>
#include <utility>
#include <vector>

#include "base/guarded.h"
#include "base/owned_text.h"
#include "cgats/cgats_vocabulary.h"
#include "cgats/name_index.h"
#include "platform/utility.h"

namespace {

constexpr int kRefused = 1;

// Arrays that carry no capacity of their own double whenever their count is a power of two.
template <class Entry>
bool makeRoom(Entry*& array, std::int32_t count) {
    const bool full = (count & (count - 1)) == 0;
    if (!full)
        return true;
    const std::size_t capacity = count == 0 ? 1 : 2 * static_cast<std::size_t>(count);
    Entry* const larger = new (std::nothrow) Entry[capacity];
    if (larger == nullptr)
        return false;
    std::copy_n(array, count, larger);
    delete[] array;
    array = larger;
    return true;
}

} // namespace

// What a document knows of its names beside their list, and of the fields of each table. The list of custom
// names has a place in front of its first entry that points here.
struct TCgats::Names {
    std::int32_t customCapacity = 0;
    qxcms::detail::NameIndex custom;
    std::vector<qxcms::detail::NameIndex> fields;
};

TCgats::TCgats() {
    SetToZero();
}

TCgatsTag* TCgats::newTag(int code, const char* keyword, int numeric, const char* value,
                          const char* comment) {
    std::unique_ptr<TCgatsTag> tag(new (std::nothrow) TCgatsTag(code, keyword, numeric, value, comment));
    const bool expectsTexts = keyword != nullptr && *keyword != '\0';
    return tag && expectsTexts && tag->GetKeyword() == nullptr ? nullptr : tag.release();
}

int TCgats::SetToZero() {
    nrTags = 0;
    std::fill_n(tags, kMaxTags, nullptr);
    nrCommentBlocks = 0;
    std::fill_n(commentBlocks, kMaxCommentBlocks, nullptr);
    declaredNrSets = 0;
    tmpHeader = nullptr;
    nrProcessColorIdTags = 0;
    nrSpotIdTags = 0;
    nrCustomFields = 0;
    customFields = nullptr;
    nrTables = 0;
    tables = nullptr;
    errorCode = 0;
    errorMessage[0] = '\0';
    return 0;
}

TCgats::~TCgats() {
    releaseAll();
}

void TCgats::releaseAll() {
    for (std::int32_t i = 0; i < nrTags; ++i)
        delete tags[i];
    for (std::int32_t i = 0; i < nrCommentBlocks; ++i)
        delete[] commentBlocks[i];
    for (std::int32_t i = 0; i < nrCustomFields; ++i)
        delete[] customFields[i];
    delete names();
    if (customFields != nullptr)
        delete[](customFields - 1);
    for (std::int32_t i = 0; i < nrTables; ++i)
        delete tables[i];
    delete[] tables;
    delete tmpHeader;
}

bool TCgats::SetErrorCode(int code) const {
    // Kept on purpose: 0 asks, it does not reset (cgatsErrorState.zero_asksWhetherAnErrorIsRecorded).
    if (code == 0)
        return errorCode != 0;
    if (code > 0 && code < qxcms::detail::kMessageCount) {
        static_assert(sizeof errorMessage >= 118, "the longest message has 117 characters");
        std::strcpy(errorMessage, qxcms::detail::kMessages[code]);
    }
    errorCode = code;
    return false;
}

int TCgats::TableErrorToCgatsError(int tableError) {
    // Kept on purpose: no error maps to an unknown one (cgatsErrorState.tableErrorZero_mapsToUnknown).
    constexpr int kCodes[] = {1, 6, 14, 12, 15, 13, 16, 17, 19, 20, 1, 13, 7, 8};
    constexpr int kCount = sizeof kCodes / sizeof kCodes[0];
    return tableError > 0 && tableError < kCount ? kCodes[tableError] : qxcms::detail::kUnknownError;
}

int TCgats::SetNrSamples(int samples) {
    declaredNrSets = samples;
    return 0;
}

int TCgats::MatchTag(const char* keyword) const {
    if (keyword == nullptr)
        return -1;
    return qxcms::detail::findExactly(qxcms::detail::kKeywords, qxcms::detail::kKeywordCount, keyword);
}

int TCgats::FindTag(int code) const {
    for (int i = 0; i < nrTags; ++i)
        if (tags[i]->GetCode() == code)
            return i;
    return -1;
}

TCgatsTag* TCgats::GetTag(int code) const {
    return GetTagAt(FindTag(code));
}

TCgatsTag* TCgats::GetTag(const char* keyword) const {
    if (keyword == nullptr)
        return nullptr;
    for (int i = 0; i < nrTags; ++i)
        if (strcmp_ci(tags[i]->GetKeyword(), keyword) == 0)
            return tags[i];
    return nullptr;
}

int TCgats::InsertTag(int code, const char* keyword, int numeric, const char* value, const char* comment,
                      int position, bool replace) {
    // Kept on purpose: a full list refuses a replacement too
    // (cgatsInsertTag.fullList_refusesReplacementToo).
    if (nrTags >= kMaxTags)
        return kRefused;
    std::unique_ptr<TCgatsTag> tag(newTag(code, keyword, numeric, value, comment));
    if (!tag)
        return kRefused;
    int target = position;
    const int fieldCountTag = FindTag(qxcms::detail::kNumberOfFields);
    if (fieldCountTag >= 0) {
        // Kept on purpose: with `replace` and a negative position it is this tag that is replaced
        // (cgatsInsertTag.withFieldCountAndReplace_replacesThatTagForANegativePosition).
        if (position < 0 || position > fieldCountTag)
            target = fieldCountTag;
    } else if (position < 0 || position >= nrTags) {
        tags[nrTags++] = tag.release();
        return 0;
    }
    if (replace) {
        delete tags[target];
    } else {
        std::copy_backward(tags + target, tags + nrTags, tags + nrTags + 1);
        ++nrTags;
    }
    tags[target] = tag.release();
    return 0;
}

TCgats::Names* TCgats::names() const {
    return customFields == nullptr ? nullptr : reinterpret_cast<Names*>(customFields[-1]);
}

// Null when there is no memory.
TCgats::Names* TCgats::makeNames() {
    if (customFields == nullptr) {
        std::unique_ptr<Names> made(new (std::nothrow) Names);
        char** const list = made ? new (std::nothrow) char*[1] : nullptr;
        if (list == nullptr)
            return nullptr;
        list[0] = reinterpret_cast<char*>(made.release());
        customFields = list + 1;
    }
    return names();
}

bool TCgats::makeRoomForCustomField() {
    Names* const known = makeNames();
    if (known == nullptr || !known->custom.reserve(nrCustomFields + 1))
        return false;
    if (nrCustomFields < known->customCapacity)
        return true;
    const std::int32_t capacity = std::max(1, 2 * known->customCapacity);
    char** const larger = new (std::nothrow) char*[static_cast<std::size_t>(capacity) + 1];
    if (larger == nullptr)
        return false;
    std::copy_n(customFields - 1, nrCustomFields + 1, larger);
    delete[](customFields - 1);
    customFields = larger + 1;
    known->customCapacity = capacity;
    return true;
}

int TCgats::AddCustomField(const char* name) {
    if (name == nullptr || *name == '\0')
        return kRefused;
    auto copy = qxcms::detail::copyText(name);
    if (!copy || !makeRoomForCustomField())
        return kRefused;
    customFields[nrCustomFields] = copy.release();
    names()->custom.add(customFields[nrCustomFields], [this](std::int32_t i) { return customFields[i]; });
    ++nrCustomFields;
    return 0;
}

// The first custom field of that name, ignoring case, or -1.
int TCgats::findCustomField(const char* name) const {
    const Names* const known = names();
    return known == nullptr ? -1
                            : known->custom.find(name, [this](std::int32_t i) { return customFields[i]; });
}

int TCgats::InitTmpHeader(int count) {
    delete tmpHeader;
    tmpHeader = new (std::nothrow) TCgatsTableHeader(count);
    return 0;
}

TCgatsTag* TCgats::GetTagAt(int index) const {
    return index >= 0 && index < nrTags ? tags[index] : nullptr;
}

const char* TCgats::GetCommentBlock(int index) const {
    return index >= 0 && index < nrCommentBlocks ? commentBlocks[index] : nullptr;
}

const char* TCgats::GetCustomField(int index) const {
    return index >= 0 && index < nrCustomFields ? customFields[index] : nullptr;
}

TCgatsTable* TCgats::GetTable(int index) const {
    return index >= 0 && index < nrTables ? tables[index] : nullptr;
}

// The names of a header's columns. @return false when there is no memory.
bool TCgats::indexFields(const TCgatsTableHeader& header, qxcms::detail::NameIndex& index) {
    const auto nameAt = [&header](std::int32_t i) { return header.GetField(i)->GetName(); };
    if (!index.reserve(header.GetNrFields()))
        return false;
    for (int i = 0; i < header.GetNrFields(); ++i)
        index.add(nameAt(i), nameAt);
    return true;
}

void TCgats::takeFieldIndex(int table, qxcms::detail::NameIndex&& index) {
    names()->fields[static_cast<std::size_t>(table)] = std::move(index);
}

int TCgats::addTable(std::unique_ptr<TCgatsTable> table) {
    Names* const known = makeNames();
    if (known == nullptr || !makeRoom(tables, nrTables))
        return qxcms::detail::kUnknownError;
    qxcms::detail::NameIndex fields;
    // A table that could not be built may have no header, or one without fields.
    if (table->GetTableError() == 0 && !indexFields(*table->GetHeader(), fields))
        return qxcms::detail::kUnknownError;
    return qxcms::detail::guarded(static_cast<int>(qxcms::detail::kUnknownError), [&] {
        known->fields.push_back(std::move(fields));
        tables[nrTables++] = table.release();
        return 0;
    });
}

// The first column of that name, ignoring case, in a table that has its header; or -1.
int TCgats::columnOfName(int table, const char* name) const {
    const TCgatsTableHeader& header = *tables[table]->GetHeader();
    return names()->fields[static_cast<std::size_t>(table)].find(
        name, [&header](std::int32_t i) { return header.GetField(i)->GetName(); });
}

int TCgats::addCommentBlock(const char* text, std::size_t length) {
    if (nrCommentBlocks >= kMaxCommentBlocks)
        return qxcms::detail::kBadCommentBlock;
    auto copy = qxcms::detail::copyText(text, length);
    if (!copy)
        return qxcms::detail::kUnknownError;
    commentBlocks[nrCommentBlocks++] = copy.release();
    return 0;
}

bool TCgats::appendTag(int code, const char* keyword, int numeric, const char* value, const char* comment) {
    TCgatsTag* const tag = newTag(code, keyword, numeric, value, comment);
    if (tag == nullptr)
        return false;
    tags[nrTags++] = tag;
    return true;
}
