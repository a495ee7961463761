#include "cgats/tcgatstag.h"

#include <ostream>
#include <utility>

#include "base/guarded.h"
#include "base/owned_text.h"

namespace {

constexpr int kNoKeyword = 1;
constexpr int kBadArgument = 2;

// A caller's stream keeps its exceptions to itself while the library writes to it.
class QuietStream {
public:
    explicit QuietStream(std::ostream& quieted) : stream(quieted), mask(quieted.exceptions()) {
        stream.exceptions(std::ios::goodbit);
    }
    ~QuietStream() {
        qxcms::detail::guarded(0, [this] {
            stream.exceptions(mask);
            return 0;
        });
    }
    QuietStream(const QuietStream&) = delete;
    QuietStream& operator=(const QuietStream&) = delete;

private:
    std::ostream& stream;
    std::ios::iostate mask;
};

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

int TCgatsTag::Write(std::ostream& stream) const {
    if (!keyword)
        return kNoKeyword;
    const QuietStream quiet(stream);
    return qxcms::detail::guarded(0, [&] {
        stream << keyword.get();
        if (!isEmpty(value.get())) {
            const char* const quote = numeric != 0 ? "" : "\"";
            stream << '\t' << quote << value.get() << quote;
        }
        if (!isEmpty(comment.get()))
            stream << "\t# " << comment.get();
        stream << '\n';
        return 0;
    });
}
