#include "support/file_name_escaping.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string_view>

#include "platform/utility.h"

namespace {

constexpr char kEscape = '%';
constexpr char kDigits[] = "0123456789abcdef";

/// Kept on purpose: these names keep their points (escaping.reservedNames_areCopied).
constexpr std::string_view kReserved[] = {"Trans._White_100_w", "Trans._White_100_g", "Trans._White_100_k"};

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && strncmp_ci(a.data(), b.data(), static_cast<int>(a.size())) == 0;
}

bool isReserved(std::string_view name) {
    return std::any_of(std::begin(kReserved), std::end(kReserved),
                       [&](std::string_view reserved) { return equalIgnoringCase(name, reserved); });
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetterOrDigit(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c);
}

/// Encodes a name without terminating it. @return 1 when a character was escaped, else 0.
int encode(std::string_view name, char*& out, std::string_view illegal) {
    if (isReserved(name))
        illegal = {};
    int escaped = 0;
    for (const char c : name) {
        // Kept on purpose: letters and digits stay, also when the set names them
        // (escaping.lettersAndDigits_areNeverEscaped).
        if (isLetterOrDigit(c) || illegal.find(c) == std::string_view::npos) {
            *out++ = c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        *out++ = kEscape;
        *out++ = kDigits[byte >> 4];
        *out++ = kDigits[byte & 15];
        escaped = 1;
    }
    return escaped;
}

/// The code of a digit. Kept on purpose: other characters than digits and letters have one as well, which may
/// be negative (escaping.escapesOfOtherCharacters_areArithmetic).
int codeOf(char c) {
    if (isDigit(c))
        return c - '0';
    const bool upper = c >= 'A' && c <= 'Z';
    return (upper ? c - 'A' + 'a' : static_cast<unsigned char>(c)) - 87;
}

/// The length of the suffix that a name ends with, 0 when there is none.
std::size_t suffixLength(std::string_view name, int count, const char* const* suffixes) {
    for (int i = 0; suffixes != nullptr && i < count; ++i) {
        const std::string_view suffix = suffixes[i] != nullptr ? suffixes[i] : "";
        if (name.size() > suffix.size() && !suffix.empty() &&
            equalIgnoringCase(name.substr(name.size() - suffix.size()), suffix))
            return suffix.size();
    }
    return 0;
}

} // namespace

int TCMS_EncodeIllegalCharacters(const char* source, char* destination, const char* illegal) {
    return TCMS_EncodeIllegalCharactersWithoutSuffix(source, destination, illegal, 0, nullptr);
}

int TCMS_DecodeIllegalCharacters(const char* source, char* destination) {
    if (destination == nullptr)
        return 0;
    int decoded = 0;
    const char* in = source != nullptr ? source : "";
    char* out = destination;
    while (*in != '\0') {
        const char c = *in++;
        if (c != kEscape) {
            *out++ = c;
        } else if (in[0] != '\0' && in[1] != '\0') {
            *out++ = static_cast<char>(static_cast<unsigned char>(codeOf(in[0]) * 16 + codeOf(in[1])));
            in += 2;
            decoded = 1;
        } // Kept on purpose: an escape that is cut off loses its "%"
          // (escaping.cutEscape_losesItsPercentSign).
    }
    *out = '\0';
    return decoded;
}

int TCMS_EncodeIllegalCharactersWithoutSuffix(const char* source, char* destination, const char* illegal,
                                              int suffixCount, const char* const* suffixes) {
    if (destination == nullptr)
        return 0;
    const std::string_view name = source != nullptr ? source : "";
    const std::size_t kept = suffixLength(name, suffixCount, suffixes);
    char* out = destination;
    const int escaped = encode(name.substr(0, name.size() - kept), out, illegal != nullptr ? illegal : "");
    out += name.substr(name.size() - kept).copy(out, kept);
    *out = '\0';
    return escaped;
}
