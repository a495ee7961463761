#include "base/number_text.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <system_error>

namespace qxcms::detail {

namespace {

// The character classes of the "C" locale; those of <cctype> ask the current one.
bool isSpace(char c) noexcept {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isLetter(char c, char lowerCase) noexcept {
    return (c | 0x20) == lowerCase;
}

/// The value of a hexadecimal digit, -1 for any other character.
int hexDigit(char c) noexcept {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

const char* skipSpace(const char* first, const char* last) noexcept {
    return std::find_if_not(first, last, isSpace);
}

/// The end of the first word: a number at the beginning of a long text costs no walk to the end of the text.
const char* endOfFirstWord(const char* text) noexcept {
    while (isSpace(*text))
        ++text;
    while (*text != '\0' && !isSpace(*text))
        ++text;
    return text;
}

template <class Number>
struct Reading {
    Number value;
    const char* end; ///< null when there is no number
};

/// Reads a decimal integer with or without a sign; one that does not fit becomes the nearest that does.
template <class Integer>
Reading<Integer> readInteger(const char* first, const char* last) noexcept {
    if (last - first > 1 && *first == '+' && first[1] != '-')
        ++first;
    Integer value = 0;
    const std::from_chars_result result = std::from_chars(first, last, value);
    if (result.ec == std::errc::invalid_argument)
        return {0, nullptr};
    if (result.ec == std::errc::result_out_of_range)
        value = *first == '-' ? std::numeric_limits<Integer>::min() : std::numeric_limits<Integer>::max();
    return {value, result.ptr};
}

/// Reads what stands behind the letter of an exponent. Kept so small that the count of the digits of any text
/// can be added.
Reading<std::int64_t> readExponent(const char* first, const char* last) noexcept {
    constexpr std::int64_t kFarOut = std::numeric_limits<std::int64_t>::max() / 2;
    const Reading<std::int64_t> exponent = readInteger<std::int64_t>(first, last);
    return {std::clamp(exponent.value, -kFarOut, kFarOut), exponent.end};
}

/// Whether a decimal number out of the range of a double is too large, rather than too small.
/// Only its order of magnitude counts: the exponent, and the place of the leading digit seen from the point.
bool isTooLarge(const char* first, const char* last) noexcept {
    const char* const digitsEnd = std::find_if(first, last, [](char c) { return isLetter(c, 'e'); });
    const char* const point = std::find(first, digitsEnd, '.');
    const char* const leadingDigit =
        std::find_if(first, digitsEnd, [](char c) { return c != '0' && c != '.'; });
    const std::int64_t exponent = digitsEnd == last ? 0 : readExponent(digitsEnd + 1, last).value;
    return exponent + (point - leadingDigit) > 0;
}

/// Reads a decimal number, an infinity or a not-a-number.
Reading<double> readDecimal(const char* first, const char* last) noexcept {
    double value = 0.0;
    const std::from_chars_result result = std::from_chars(first, last, value);
    if (result.ec == std::errc::invalid_argument)
        return {0.0, nullptr};
    if (result.ec == std::errc::result_out_of_range)
        value = isTooLarge(first, result.ptr) ? std::numeric_limits<double>::infinity() : 0.0;
    return {value, result.ptr};
}

/// mantissa * 2^exponent, rounded once to the nearest double, halves to the even one.
double scaled(std::uint64_t mantissa, std::int64_t exponent) noexcept {
    constexpr std::int64_t kSmallestExponent = -1074; // of the last bit of a subnormal
    constexpr std::int64_t kFarOut = 2000;            // 2^(64 - 2000) is a zero, 2^2000 an infinity
    const auto width = static_cast<std::int64_t>(std::bit_width(mantissa));
    exponent = std::clamp(exponent, -kFarOut, kFarOut);
    const std::int64_t dropped =
        std::max(width - std::numeric_limits<double>::digits, kSmallestExponent - exponent);
    if (dropped > width)
        return 0.0;
    if (dropped > 0) {
        const std::uint64_t half = std::uint64_t{1} << (dropped - 1);
        const std::uint64_t rest = mantissa & (half | (half - 1));
        mantissa = mantissa >> (dropped - 1) >> 1;
        if (rest > half || (rest == half && mantissa % 2 == 1))
            ++mantissa;
        exponent += dropped;
    }
    return std::ldexp(static_cast<double>(mantissa), static_cast<int>(exponent));
}

/// Reads what stands behind "0x". Not left to std::from_chars: there, exponents near the largest int wrap
/// around and "1p+-5" counts as "1p-5".
Reading<double> readHexadecimal(const char* first, const char* last) noexcept {
    std::uint64_t mantissa = 0;
    std::int64_t exponent = 0;
    bool anyDigit = false;
    bool behindPoint = false;
    const char* at = first;
    for (; at != last; ++at) {
        if (*at == '.' && !behindPoint) {
            behindPoint = true;
            continue;
        }
        const int digit = hexDigit(*at);
        if (digit < 0)
            break;
        anyDigit = true;
        if (mantissa >> 60 == 0) {
            mantissa = mantissa * 16 + static_cast<std::uint64_t>(digit);
            exponent -= behindPoint ? 4 : 0;
        } else {
            // Far below the last bit of a double: of this digit, rounding wants to know only if it is zero.
            mantissa |= digit != 0 ? 1U : 0U;
            exponent += behindPoint ? 0 : 4;
        }
    }
    if (!anyDigit)
        return {0.0, nullptr};
    if (at != last && isLetter(*at, 'p')) {
        const Reading<std::int64_t> written = readExponent(at + 1, last);
        if (written.end != nullptr) {
            exponent += written.value;
            at = written.end;
        }
    }
    return {scaled(mantissa, exponent), at};
}

/// The not-a-number that the text between the brackets of "nan(...)" asks for: an integer with the prefixes
/// of C gives the low 51 bits of the mantissa, any other text none.
double nanWithPayload(const char* first, const char* last) noexcept {
    int base = 10;
    if (last - first > 1 && *first == '0') {
        base = isLetter(first[1], 'x') ? 16 : 8;
        first += base == 16 ? 2 : 1;
    }
    std::uint64_t payload = 0;
    const std::from_chars_result result = std::from_chars(first, last, payload, base);
    if (result.ec == std::errc::result_out_of_range)
        payload = std::numeric_limits<std::uint64_t>::max();
    if (result.ptr != last)
        payload = 0;
    constexpr std::uint64_t kPayloadBits = (std::uint64_t{1} << 51) - 1;
    const auto quiet = std::bit_cast<std::uint64_t>(std::numeric_limits<double>::quiet_NaN());
    return std::bit_cast<double>(quiet | (payload & kPayloadBits));
}

/// Reads a number without white space and sign.
Reading<double> readMagnitude(const char* first, const char* last) noexcept {
    if (first == last || *first == '-')
        return {0.0, nullptr};
    if (last - first > 2 && *first == '0' && isLetter(first[1], 'x')) {
        const Reading<double> reading = readHexadecimal(first + 2, last);
        if (reading.end != nullptr)
            return reading;
    }
    Reading<double> reading = readDecimal(first, last);
    if (reading.end != nullptr && std::isnan(reading.value) && reading.end[-1] == ')')
        reading.value = nanWithPayload(first + 4, reading.end - 1);
    return reading;
}

void tell(const char** end, const char* position) noexcept {
    if (end != nullptr)
        *end = position;
}

} // namespace

double parseDouble(const char* first, const char* last, const char** end) noexcept {
    const char* at = skipSpace(first, last);
    const bool negative = at != last && *at == '-';
    if (negative || (at != last && *at == '+'))
        ++at;
    const Reading<double> reading = readMagnitude(at, last);
    if (reading.end == nullptr) {
        tell(end, first);
        return 0.0;
    }
    tell(end, reading.end);
    return negative ? -reading.value : reading.value;
}

int parseInt(const char* first, const char* last, const char** end) noexcept {
    const Reading<int> reading = readInteger<int>(skipSpace(first, last), last);
    tell(end, reading.end == nullptr ? first : reading.end);
    return reading.value;
}

double textToDouble(const char* text) noexcept {
    return text == nullptr ? 0.0 : parseDouble(text, endOfFirstWord(text));
}

int textToInt(const char* text) noexcept {
    return text == nullptr ? 0 : parseInt(text, endOfFirstWord(text));
}

std::size_t doubleToFixedText(double value, int decimals, char* out) noexcept {
    // A sign, the 309 digits of the largest double, a point, 17 decimals and the terminator always fit.
    static_assert(1 + (std::numeric_limits<double>::max_exponent10 + 1) + 1 + 17 + 1 <= kFixedTextSize);
    char* const end = std::to_chars(out, out + kFixedTextSize - 1, value, std::chars_format::fixed,
                                    std::clamp(decimals, 0, 17))
                          .ptr;
    *end = '\0';
    return static_cast<std::size_t>(end - out);
}

std::string fixedText(double value, int decimals) {
    char text[kFixedTextSize];
    return std::string(text, doubleToFixedText(value, decimals, text));
}

std::size_t doubleToGeneralText(double value, int digits, char* out) noexcept {
    char* const end = std::to_chars(out, out + kGeneralTextSize, value, std::chars_format::general,
                                    std::clamp(digits, 1, 17))
                          .ptr;
    return static_cast<std::size_t>(end - out);
}

std::string generalText(double value, int digits) {
    char text[kGeneralTextSize];
    return std::string(text, doubleToGeneralText(value, digits, text));
}

} // namespace qxcms::detail
