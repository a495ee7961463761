// Shorter ways for the numbers that measured tables are made of. Both give what the plain conversions give,
// to the last bit and to the last character; what they cannot do exactly they leave to these.
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <string_view>

#include "base/number_text.h"

namespace qxcms::detail {

namespace {

/// Powers of ten, all of which a double holds exactly.
constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,
                                   1e10, 1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19};

/// So many digits do not overflow 64 bits.
constexpr std::ptrdiff_t kMostDigits = std::ssize(kPowersOfTen) - 1;
/// Every integer up to this one is a double.
constexpr std::uint64_t kLargestExactInteger = std::uint64_t{1} << 53;

/// Takes up digits. @return the first character that is none.
const char* readDigits(const char* at, const char* last, std::uint64_t& number) noexcept {
    for (; at != last; ++at) {
        const unsigned digit = static_cast<unsigned char>(*at) - unsigned{'0'};
        if (digit > 9)
            break;
        number = number * 10 + digit;
    }
    return at;
}

/// Six significant digits: numbers from 100000 up to, and not including, this one.
constexpr double kSevenDigits = 1e6;
/// From here down "%g" changes to exponents.
constexpr double kSmallestFixed = 1e-4;
/// How near to one half a fraction may come before rounding is left to the plain conversion. The scaled
/// number is off by half a unit in the last place at most, 2^-34 below a million.
constexpr double kTooNear = 1e-9;

/// Characters side by side in a word, as they lie in memory.
using Characters = std::uint64_t;

constexpr bool kLittleEndian = std::endian::native == std::endian::little;

constexpr Characters characterAt(std::size_t place, char c) {
    const std::size_t shift = 8 * (kLittleEndian ? place : sizeof(Characters) - 1 - place);
    return Characters{static_cast<unsigned char>(c)} << shift;
}

/// The characters behind the first `count` ones.
constexpr Characters behind(Characters characters, int count) {
    return kLittleEndian ? characters >> (8 * count) : characters << (8 * count);
}

/// The characters moved `count` places back.
constexpr Characters movedBack(Characters characters, int count) {
    return kLittleEndian ? characters << (8 * count) : characters >> (8 * count);
}

constexpr Characters charactersOf(std::string_view text) {
    Characters characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        characters |= characterAt(i, text[i]);
    return characters;
}

void write(Characters characters, char* out) noexcept {
    std::memcpy(out, &characters, sizeof characters);
}

/// Three digits and how many of them are left without the zeros at the end.
struct ThreeDigits {
    Characters digits;
    int kept;
};

constexpr std::array<ThreeDigits, 1000> threeDigitTable() {
    std::array<ThreeDigits, 1000> table{};
    for (int n = 0; n < 1000; ++n) {
        const char digits[] = {static_cast<char>('0' + n / 100), static_cast<char>('0' + n / 10 % 10),
                               static_cast<char>('0' + n % 10)};
        ThreeDigits& entry = table[static_cast<std::size_t>(n)];
        entry.digits = charactersOf({digits, sizeof digits});
        entry.kept = n % 10 != 0 ? 3 : n % 100 != 0 ? 2 : n != 0 ? 1 : 0;
    }
    return table;
}

constexpr std::array<ThreeDigits, 1000> kThreeDigits = threeDigitTable();

/// The decimal exponent of a number from 1e-4 up to a million: 0 for 1 up to 10. The doubles next to the
/// powers below 1 lie above them, so that comparing with these decides rightly.
int decimalExponent(double magnitude) noexcept {
    int exponent = magnitude >= 1.0 ? 0 : -4;
    const double first = magnitude >= 1.0 ? 1e1 : 1e-3;
    const double second = magnitude >= 1.0 ? 1e2 : 1e-2;
    const double third = magnitude >= 1.0 ? 1e3 : 1e-1;
    exponent += (magnitude >= first ? 1 : 0) + (magnitude >= second ? 1 : 0) + (magnitude >= third ? 1 : 0);
    return exponent + (magnitude >= 1e4 ? 1 : 0) + (magnitude >= 1e5 ? 1 : 0);
}

/// Writes six digits, the first one at 10^exponent, without the zeros behind the point's last digit. Whole
/// words are written, of which the part that counts may be shorter.
char* writeDigits(unsigned number, int exponent, char* out) noexcept {
    const ThreeDigits& high = kThreeDigits[number / 1000];
    const ThreeDigits& low = kThreeDigits[number % 1000];
    const Characters digits = high.digits | movedBack(low.digits, 3);
    const int kept = low.kept != 0 ? 3 + low.kept : high.kept;
    if (exponent < 0) {
        write(charactersOf("0.000"), out);
        out += 1 - exponent;
        write(digits, out);
        return out + kept;
    }
    const int whole = exponent + 1;
    write(digits, out);
    if (kept <= whole)
        return out + whole;
    out[whole] = '.';
    write(behind(digits, whole), out + whole + 1);
    return out + kept + 1;
}

} // namespace

const char* parsePlainDecimal(const char* first, const char* last, double& value) noexcept {
    const bool negative = first != last && *first == '-';
    const char* const digits = first + (negative || (first != last && *first == '+') ? 1 : 0);
    std::uint64_t number = 0;
    const char* at = readDigits(digits, last, number);
    std::ptrdiff_t count = at - digits;
    std::ptrdiff_t decimals = 0;
    if (at != last && (*at == '.' || *at == ',')) {
        const char* const fraction = at + 1;
        at = readDigits(fraction, last, number);
        decimals = at - fraction;
        count += decimals;
    }
    if (count < 1 || count > kMostDigits || number > kLargestExactInteger)
        return nullptr;
    const double magnitude = static_cast<double>(number) / kPowersOfTen[decimals];
    value = negative ? -magnitude : magnitude;
    return at;
}

std::size_t doubleToShortText(double value, char* out) noexcept {
    const double magnitude = std::fabs(value);
    char* at = out;
    if (std::signbit(value))
        *at++ = '-';
    if (magnitude == 0.0) {
        *at++ = '0';
        return static_cast<std::size_t>(at - out);
    }
    // Not-a-numbers and infinities leave here too.
    if (!(magnitude >= kSmallestFixed && magnitude < kSevenDigits))
        return doubleToGeneralText(value, kShortDigits, out);
    const int exponent = decimalExponent(magnitude);
    const double scaled = magnitude * kPowersOfTen[kShortDigits - 1 - exponent];
    const auto below = static_cast<unsigned>(scaled);
    const double fraction = scaled - below;
    if (std::fabs(fraction - 0.5) < kTooNear)
        return doubleToGeneralText(value, kShortDigits, out);
    const unsigned number = below + (fraction > 0.5 ? 1 : 0);
    // Nines that round up to the next power of ten are left to the plain conversion.
    if (number > 999999)
        return doubleToGeneralText(value, kShortDigits, out);
    return static_cast<std::size_t>(writeDigits(number, exponent, at) - out);
}

} // namespace qxcms::detail
