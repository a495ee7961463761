#include "cgats/tcgats.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

#include "base/guarded.h"
#include "base/owned_text.h"
#include "cgats/cgats_vocabulary.h"
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

std::unique_ptr<TCgatsTag> newTag(int code, const char* keyword, int numeric, const char* value,
                                  const char* comment) {
    std::unique_ptr<TCgatsTag> tag(new (std::nothrow) TCgatsTag(code, keyword, numeric, value, comment));
    const bool expectsTexts = keyword != nullptr && *keyword != '\0';
    if (tag && expectsTexts && tag->GetKeyword() == nullptr)
        tag.reset();
    return tag;
}

} // namespace

TCgats::TCgats() {
    SetToZero();
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
    for (std::int32_t i = 0; i < nrTags; ++i)
        delete tags[i];
    for (std::int32_t i = 0; i < nrCommentBlocks; ++i)
        delete[] commentBlocks[i];
    for (std::int32_t i = 0; i < nrCustomFields; ++i)
        delete[] customFields[i];
    delete[] customFields;
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
    auto tag = newTag(code, keyword, numeric, value, comment);
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

int TCgats::AddCustomField(const char* name) {
    if (name == nullptr || *name == '\0')
        return kRefused;
    auto copy = qxcms::detail::copyText(name);
    if (!copy || !makeRoom(customFields, nrCustomFields))
        return kRefused;
    customFields[nrCustomFields++] = copy.release();
    return 0;
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

int TCgats::addTable(std::unique_ptr<TCgatsTable> table) {
    if (!makeRoom(tables, nrTables))
        return qxcms::detail::kUnknownError;
    tables[nrTables++] = table.release();
    return 0;
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
    auto tag = newTag(code, keyword, numeric, value, comment);
    if (!tag)
        return false;
    tags[nrTags++] = tag.release();
    return true;
}
