#include "qc/printable_text.h"

namespace qxcms::qc {

namespace {

struct CodePoint {
    char32_t value;
    std::size_t length; // in bytes; 0 for a byte that starts no well-formed sequence
};

// Reads the UTF-8 sequence at the start of `text`, which is not empty. Overlong forms, surrogates and values
// beyond U+10FFFF are refused.
CodePoint firstCodePoint(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    if (lead < 0x80)
        return {lead, 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return {0, 0};
    char32_t value = static_cast<char32_t>(lead & (0x7F >> length));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return {0, 0};
        value = (value << 6) | (byte(i) & 0x3Fu);
    }
    const bool overlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    const bool surrogate = value >= 0xD800 && value <= 0xDFFF;
    if (overlong || surrogate || value > 0x10FFFF)
        return {0, 0};
    return {value, length};
}

// C0, DEL and C1 controls, line and paragraph separators, and the marks that turn the reading direction.
bool isControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c <= 0x9F) || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

std::size_t widthOf(char32_t c) {
    if (c >= 0x0300 && c <= 0x036F)
        return 0;
    const bool wide = (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF) ||
                      (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) ||
                      (c >= 0xFE30 && c <= 0xFE6F) || (c >= 0xFF01 && c <= 0xFF60) ||
                      (c >= 0x1F300 && c <= 0x1FAFF) || (c >= 0x20000 && c <= 0x3FFFD);
    return wide ? 2 : 1;
}

void appendEscaped(std::string& out, std::string_view bytes) {
    constexpr char kDigits[] = "0123456789abcdef";
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        out += {'\\', 'x', kDigits[byte >> 4], kDigits[byte & 15]};
    }
}

// The bytes at the start of a printable text that fit `columns` columns.
std::string_view headOf(std::string_view text, std::size_t columns) {
    std::size_t length = 0;
    std::size_t used = 0;
    while (length < text.size()) {
        const CodePoint c = firstCodePoint(text.substr(length));
        used += widthOf(c.value);
        if (used > columns)
            break;
        length += c.length;
    }
    return text.substr(0, length);
}

// The bytes at the end of a printable text that fit `columns` columns.
std::string_view tailOf(std::string_view text, std::size_t columns) {
    std::size_t start = 0;
    while (columnsOf(text.substr(start)) > columns)
        start += firstCodePoint(text.substr(start)).length;
    return text.substr(start);
}

} // namespace

std::string printable(std::string_view text) {
    std::string out;
    while (!text.empty()) {
        const CodePoint c = firstCodePoint(text);
        const std::size_t length = c.length == 0 ? 1 : c.length;
        if (c.length == 0 || isControl(c.value))
            appendEscaped(out, text.substr(0, length));
        else
            out += text.substr(0, length);
        text.remove_prefix(length);
    }
    return out;
}

std::string quoted(std::string_view text) {
    return '"' + printable(text) + '"';
}

std::string joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string out;
    for (const std::string& text : texts) {
        if (!out.empty())
            out += separator;
        out += printable(text);
    }
    return out;
}

std::size_t columnsOf(std::string_view text) {
    std::size_t columns = 0;
    while (!text.empty()) {
        const CodePoint c = firstCodePoint(text);
        columns += widthOf(c.value);
        text.remove_prefix(c.length == 0 ? 1 : c.length);
    }
    return columns;
}

std::string fitted(std::string_view text, std::size_t columns) {
    constexpr std::string_view kGap = "...";
    std::string out(text);
    if (columnsOf(text) > columns) {
        const std::size_t kept = columns - kGap.size();
        out = headOf(text, kept - kept / 2);
        out += kGap;
        out += tailOf(text, kept / 2);
    }
    return out.append(columns - columnsOf(out), ' ');
}

} // namespace qxcms::qc
