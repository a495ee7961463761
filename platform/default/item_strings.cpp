#include <algorithm>
#include <cstddef>
#include <cstring>

#include "base/number_text.h"
#include "platform/utility.h"

namespace {

bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isSeparator(char c) {
    return c == ',' || isBlank(c);
}

/// The characters of one value; null when there is no such value.
struct Value {
    const char* first;
    const char* last;
};

/// The value at an index, counted from 0. There is none at a negative one.
Value valueAt(const char* items, int index) {
    if (items == nullptr || index < 0)
        return {nullptr, nullptr};
    const char* const end = items + std::strlen(items);
    const char* at = items;
    for (int i = 0;; ++i) {
        at = std::find_if_not(at, end, isSeparator);
        if (at == end)
            return {nullptr, nullptr};
        const bool isQuoted = *at == '"';
        const char* const first = isQuoted ? at + 1 : at;
        const char* const last =
            isQuoted ? std::find(first, end, '"') : std::find_if(first, end, isSeparator);
        if (i == index)
            return {first, last};
        at = isQuoted && last != end ? last + 1 : last;
    }
}

/// Reads the value at an index, all of which must be a number for `parse`.
template <class Number>
int numberAt(const char* items, int index, Number* out,
             Number (*parse)(const char*, const char*, const char**)) {
    const Value value = valueAt(items, index);
    if (value.first == nullptr || out == nullptr)
        return -1;
    const char* end = nullptr;
    const Number number = parse(value.first, value.last, &end);
    if (end == value.first || std::find_if_not(end, value.last, isBlank) != value.last)
        return -1;
    *out = number;
    return 0;
}

} // namespace

int str_int_from_itemstr(const char* items, int index, int* out) {
    return numberAt<int>(items, index, out, qxcms::detail::parseInt);
}

int str_double_from_itemstr(const char* items, int index, double* out) {
    return numberAt<double>(items, index, out, qxcms::detail::parseDouble);
}

int str_str(const char* items, int index, char* out, int size) {
    const Value value = valueAt(items, index);
    if (value.first == nullptr || out == nullptr || size < 1)
        return -1;
    const auto length = static_cast<std::size_t>(value.last - value.first);
    if (length >= static_cast<std::size_t>(size))
        return -1;
    std::memmove(out, value.first, length);
    out[length] = '\0';
    return 0;
}
