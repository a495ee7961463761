#include "cgats/text_encoding.h"

#include <cstddef>
#include <cstdint>

namespace qxcms::detail {

namespace {

constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

constexpr std::uint32_t kReplacement = 0xFFFD;
constexpr std::uint32_t kFirstHighHalf = 0xD800;
constexpr std::uint32_t kFirstLowHalf = 0xDC00;
constexpr std::uint32_t kBehindLowHalves = 0xE000;
constexpr std::uint32_t kBehindSingleUnits = 0x10000;

// Whether every second byte is NUL and no other one.
bool alternates(std::string_view start, bool nulFirst) {
    for (std::size_t i = 0; i < start.size(); ++i)
        if ((start[i] == '\0') != ((i % 2 == 0) == nulFirst))
            return false;
    return true;
}

void append(std::uint32_t character, std::string& text) {
    const auto continuation = [&](int shift) {
        return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0 | (character >> 6));
        text += continuation(0);
    } else if (character < kBehindSingleUnits) {
        text += static_cast<char>(0xE0 | (character >> 12));
        text += continuation(6);
        text += continuation(0);
    } else {
        text += static_cast<char>(0xF0 | (character >> 18));
        text += continuation(12);
        text += continuation(6);
        text += continuation(0);
    }
}

bool isBigEndian(std::string_view bytes) {
    return bytes.substr(0, 2) == kBigEndianMark ||
           (bytes.substr(0, 2) != kLittleEndianMark && bytes[0] == '\0');
}

} // namespace

bool looksLikeUtf16(std::string_view bytes) noexcept {
    constexpr std::size_t kInspected = 8;
    const std::string_view start = bytes.substr(0, kInspected);
    if (start.substr(0, 2) == kLittleEndianMark || start.substr(0, 2) == kBigEndianMark)
        return true;
    return start.size() == kInspected && (alternates(start, true) || alternates(start, false));
}

std::string utf8OfUtf16(std::string_view bytes) {
    const bool bigEndian = isBigEndian(bytes);
    const auto unitAt = [&](std::size_t at) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        return static_cast<std::uint32_t>(bigEndian ? first << 8 | second : second << 8 | first);
    };
    const auto isLowHalf = [](std::uint32_t unit) {
        return unit >= kFirstLowHalf && unit < kBehindLowHalves;
    };
    std::string text;
    text.reserve(bytes.size() / 2);
    const bool marked = bytes.substr(0, 2) == kLittleEndianMark || bytes.substr(0, 2) == kBigEndianMark;
    for (std::size_t at = marked ? 2 : 0; at + 2 <= bytes.size(); at += 2) {
        std::uint32_t character = unitAt(at);
        if (character >= kFirstHighHalf && character < kBehindLowHalves) {
            const bool pair = !isLowHalf(character) && at + 4 <= bytes.size() && isLowHalf(unitAt(at + 2));
            if (pair) {
                character = kBehindSingleUnits + ((character - kFirstHighHalf) << 10) +
                            (unitAt(at + 2) - kFirstLowHalf);
                at += 2;
            } else {
                character = kReplacement;
            }
        }
        append(character, text);
    }
    return text;
}

} // namespace qxcms::detail
