#include "cgats/tcgatstag.h"

#include <utility>

#include "base/owned_text.h"
#include "cgats/text_block.h"

namespace {

constexpr int kNoKeyword = 1;
constexpr int kBadArgument = 2;

bool isEmpty(const char* text) {
    return text == nullptr || *text == '\0';
}

} // namespace

TCgatsTag::TCgatsTag(int newCode, const char* newKeyword, int newNumeric, const char* newValue,
                     const char* newComment)
    : code(newCode), numeric(0) {
    if (isEmpty(newKeyword))
        return;
    auto keywordCopy = qxcms::detail::copyText(newKeyword);
    auto valueCopy = qxcms::detail::copyText(newValue);
    auto commentCopy = qxcms::detail::copyText(newComment);
    if (!keywordCopy || !valueCopy || !commentCopy)
        return;
    numeric = newNumeric;
    keyword = std::move(keywordCopy);
    value = std::move(valueCopy);
    comment = std::move(commentCopy);
}

TCgatsTag::~TCgatsTag() = default;

int TCgatsTag::SetValue(const char* newValue, int newNumeric) {
    if (newValue == nullptr)
        return kBadArgument;
    auto copy = qxcms::detail::copyText(newValue);
    if (!keyword || !copy)
        return kNoKeyword;
    value = std::move(copy);
    numeric = newNumeric;
    return 0;
}

int qxcms::detail::writeTagLine(const TCgatsTag& tag, TextBlock& text) {
    if (tag.GetKeyword() == nullptr)
        return kNoKeyword;
    text.put(tag.GetKeyword());
    if (!isEmpty(tag.GetValue())) {
        const char* const quote = tag.GetNumeric() != 0 ? "" : "\"";
        text.put('\t');
        text.put(quote);
        text.put(tag.GetValue());
        text.put(quote);
    }
    if (!isEmpty(tag.GetComment())) {
        text.put("\t# ");
        text.put(tag.GetComment());
    }
    text.put('\n');
    return 0;
}

int TCgatsTag::Write(std::ostream& stream) const {
    const qxcms::detail::QuietStream quiet(stream);
    qxcms::detail::TextBlock text(stream);
    const int result = qxcms::detail::writeTagLine(*this, text);
    text.flush();
    return result;
}
