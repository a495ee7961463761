#include "platform/file_name_encoding.h"

#include <cstddef>
#include <cstring>

namespace {

bool continues(unsigned char c) {
    return (c & 0xC0) == 0x80;
}

/// The number of bytes of the character at `text`, 0 when they are no UTF-8 (Unicode, table 3-7).
std::size_t characterLength(const unsigned char* text) {
    const unsigned char lead = text[0];
    if (lead < 0x80)
        return 1;
    if (lead < 0xC2 || lead > 0xF4 || !continues(text[1]))
        return 0;
    if (lead < 0xE0)
        return 2;
    const bool overlong = (lead == 0xE0 && text[1] < 0xA0) || (lead == 0xF0 && text[1] < 0x90);
    const bool surrogate = lead == 0xED && text[1] > 0x9F;
    const bool beyondUnicode = lead == 0xF4 && text[1] > 0x8F;
    if (overlong || surrogate || beyondUnicode || !continues(text[2]))
        return 0;
    if (lead < 0xF0)
        return 3;
    return continues(text[3]) ? 4 : 0;
}

bool isUtf8(const char* text) {
    const auto* at = reinterpret_cast<const unsigned char*>(text);
    while (*at != 0) {
        const std::size_t length = characterLength(at);
        if (length == 0)
            return false;
        at += length;
    }
    return true;
}

} // namespace

// File names are bytes here, and by convention UTF-8.
int UTF8ToLocalEncoding(const char* in, char* out, int size) {
    if (out == nullptr || size < 1)
        return -1;
    out[0] = '\0';
    if (in == nullptr || std::strlen(in) >= static_cast<std::size_t>(size) || !isUtf8(in))
        return -1;
    std::strcpy(out, in);
    return 0;
}
