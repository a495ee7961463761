#include <cstddef>
#include <cstdint>

#include "platform/utility.h"

namespace {

// Bytes outside ASCII stand for themselves, whatever the locale.
unsigned char foldCase(char c) {
    const bool upper = c >= 'A' && c <= 'Z';
    return static_cast<unsigned char>(upper ? c - 'A' + 'a' : c);
}

int compareIgnoringCase(const char* a, const char* b, std::size_t limit) {
    if (a == nullptr || b == nullptr)
        return (a != nullptr) - (b != nullptr);
    for (std::size_t i = 0; i < limit; ++i) {
        const unsigned char fromA = foldCase(a[i]);
        const unsigned char fromB = foldCase(b[i]);
        if (fromA != fromB)
            return fromA < fromB ? -1 : 1;
        if (fromA == 0)
            return 0;
    }
    return 0;
}

} // namespace

int strcmp_ci(const char* a, const char* b) {
    return compareIgnoringCase(a, b, SIZE_MAX);
}

int strncmp_ci(const char* a, const char* b, int n) {
    return compareIgnoringCase(a, b, n > 0 ? static_cast<std::size_t>(n) : 0);
}
