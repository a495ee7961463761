#include "base/number_text.h"

#include <algorithm>
#include <bit>
#include <cfloat>
#include <chrono>
#include <climits>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <locale.h>
#include <locale>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace qxcms::detail {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kSmallest = std::numeric_limits<double>::denorm_min();
constexpr double kLargest = std::numeric_limits<double>::max();

/// The locale of the calling thread, as long as the object lives.
class ThreadLocale {
public:
    explicit ThreadLocale(const char* name) : made(newlocale(LC_ALL_MASK, name, nullptr)) {
        if (made != nullptr)
            before = uselocale(made);
    }
    ~ThreadLocale() {
        if (made != nullptr) {
            uselocale(before);
            freelocale(made);
        }
    }
    ThreadLocale(const ThreadLocale&) = delete;
    ThreadLocale& operator=(const ThreadLocale&) = delete;

    bool isSet() const { return made != nullptr; }

private:
    locale_t made;
    locale_t before = nullptr;
};

/// A number as read from the beginning of a text, and how many characters it took.
template <class Number>
struct Result {
    Number value;
    std::ptrdiff_t length;

    std::uint64_t bits() const {
        if constexpr (std::is_same_v<Number, double>)
            return std::bit_cast<std::uint64_t>(value);
        else
            return static_cast<std::uint64_t>(value);
    }
    /// The same number to the bit: signs of zeros and of not-a-numbers count.
    bool operator==(const Result& other) const { return bits() == other.bits() && length == other.length; }
    friend std::ostream& operator<<(std::ostream& out, const Result& result) {
        return out << generalText(result.value, 17) << " from " << result.length << " characters";
    }
};

Result<double> readDouble(const std::string& text) {
    // A copy without a terminator: the sanitizer sees a look behind the end.
    const std::vector<char> exact(text.begin(), text.end());
    const char* end = nullptr;
    const double value = parseDouble(exact.data(), exact.data() + exact.size(), &end);
    return {value, end - exact.data()};
}

Result<int> readInt(const std::string& text) {
    const std::vector<char> exact(text.begin(), text.end());
    const char* end = nullptr;
    const int value = parseInt(exact.data(), exact.data() + exact.size(), &end);
    return {value, end - exact.data()};
}

/// What the C library reads. Needs the "C" locale in the calling thread.
Result<double> libraryDouble(const std::string& text) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    return {value, end - text.c_str()};
}

Result<int> libraryInt(const std::string& text) {
    char* end = nullptr;
    const long value = std::strtol(text.c_str(), &end, 10);
    return {static_cast<int>(std::clamp<long>(value, INT_MIN, INT_MAX)), end - text.c_str()};
}

/// What the C library writes for a format with one star. Needs the "C" locale in the calling thread.
std::string libraryText(const char* format, int precision, double value) {
    char text[2000];
    const int length = std::snprintf(text, sizeof text, format, precision, value);
    return std::string(text, static_cast<std::size_t>(length));
}

/// `head`, `count` times the character, `tail`.
std::string spread(std::string head, std::size_t count, char character, const char* tail = "") {
    head.append(count, character);
    head.append(tail);
    return head;
}

void expectDouble(const std::string& text, double value, std::ptrdiff_t length) {
    EXPECT_EQ(readDouble(text), (Result<double>{value, length})) << "text: \"" << text << '"';
}

void expectDouble(const std::string& text, double value) {
    expectDouble(text, value, static_cast<std::ptrdiff_t>(text.size()));
}

void expectInt(const std::string& text, int value, std::ptrdiff_t length) {
    EXPECT_EQ(readInt(text), (Result<int>{value, length})) << "text: \"" << text << '"';
}

void expectInt(const std::string& text, int value) {
    expectInt(text, value, static_cast<std::ptrdiff_t>(text.size()));
}

/// Random numbers that are the same in each run and on each machine.
class Dice {
public:
    explicit Dice(std::uint64_t seed) : engine(seed) {}
    std::uint64_t bits() { return engine(); }
    std::uint64_t below(std::uint64_t limit) { return engine() % limit; }
    char oneOf(const char* characters) { return characters[below(std::strlen(characters))]; }
    std::string digits(std::uint64_t count, const char* alphabet = "0123456789") {
        std::string text;
        while (text.size() < count)
            text += oneOf(alphabet);
        return text;
    }
    /// Up to `most` digits and a point somewhere among them.
    std::string digitsWithPoint(std::uint64_t most, const char* alphabet = "0123456789") {
        const std::uint64_t count = 1 + below(most);
        const std::uint64_t before = below(count + 1);
        std::string text = digits(before, alphabet);
        text += '.';
        text += digits(count - before, alphabet);
        return text;
    }
    double finiteDouble() {
        const auto value = std::bit_cast<double>(bits());
        return std::isfinite(value) ? value : 0.0;
    }

private:
    std::mt19937_64 engine;
};

// ---- floating-point numbers ----

TEST(parseDouble, readsDecimalNumbers) {
    expectDouble("0", 0.0);
    expectDouble("1", 1.0);
    expectDouble("12.5", 12.5);
    expectDouble("100.", 100.0);
    expectDouble(".25", 0.25);
    expectDouble("00012", 12.0);
    expectDouble("0.1", 0.1);
    expectDouble("95.047", 95.047);
}

TEST(parseDouble, readsExponents) {
    expectDouble("1e3", 1000.0);
    expectDouble("1E3", 1000.0);
    expectDouble("1e+3", 1000.0);
    expectDouble("125e-3", 0.125);
    expectDouble(".5e1", 5.0);
    expectDouble("5.e1", 50.0);
    expectDouble("1e0000000000000000000002", 100.0);
}

TEST(parseDouble, readsSigns) {
    expectDouble("-1.5", -1.5);
    expectDouble("+1.5", 1.5);
    expectDouble("-0", -0.0);
    expectDouble("+0", 0.0);
    expectDouble("-.5", -0.5);
}

TEST(parseDouble, takesOneSignOnly) {
    for (const char* text : {"--1", "++1", "+-1", "-+1", "- 5", "+ 5", "+", "-", "+-inf", "-+nan", "--0x1"})
        expectDouble(text, 0.0, 0);
}

TEST(parseDouble, skipsTheWhiteSpaceOfC) {
    for (const char* space : {" ", "\t", "\n", "\v", "\f", "\r", " \t\n\v\f\r"})
        expectDouble(std::string(space) + "-2.5", -2.5);
}

TEST(parseDouble, skipsNoOtherBlankCharacter) {
    for (const char* text : {"\b1", "\0161", "\0371", "\2051", "\2401", "\3771"})
        expectDouble(text, 0.0, 0);
}

TEST(parseDouble, stopsBehindTheNumber) {
    expectDouble("1,5", 1.0, 1);
    expectDouble("1.5.5", 1.5, 3);
    expectDouble("1 2", 1.0, 1);
    expectDouble("3\t", 3.0, 1);
    expectDouble("1e5e5", 1e5, 3);
    expectDouble("12abc", 12.0, 2);
    expectDouble("1_000", 1.0, 1);
    expectDouble("1'000", 1.0, 1);
    expectDouble(std::string("7\0008", 3), 7.0, 1);
}

TEST(parseDouble, leavesAnExponentWithoutDigits) {
    expectDouble("1e", 1.0, 1);
    expectDouble("1e+", 1.0, 1);
    expectDouble("1E-", 1.0, 1);
    expectDouble("1e 5", 1.0, 1);
    expectDouble("1e+-5", 1.0, 1);
    expectDouble("1e.5", 1.0, 1);
    expectDouble("1p5", 1.0, 1);
}

TEST(parseDouble, findsNoNumberWhereThereIsNoDigit) {
    for (const char* text : {"", " ", ".", "+.", "-.", ".e5", "e5", "abc", "x", "..1", ",5", "p1", "\"1\""})
        expectDouble(text, 0.0, 0);
}

TEST(parseDouble, findsNoNumberInNoMemory) {
    const char* end = "";
    EXPECT_EQ(parseDouble(nullptr, nullptr, &end), 0.0);
    EXPECT_EQ(end, nullptr);
}

TEST(parseDouble, doesWithoutAnEnd) {
    const char text[] = " 4.5x";
    EXPECT_EQ(parseDouble(text, text + 5), 4.5);
    EXPECT_EQ(parseDouble(text, text), 0.0);
}

TEST(parseDouble, readsNothingBehindTheEndOfTheRange) {
    const auto prefix = [](const char* text, int length) { return parseDouble(text, text + length); };
    EXPECT_EQ(prefix("12345", 3), 123.0);
    EXPECT_EQ(prefix("1.5", 2), 1.0);
    EXPECT_EQ(prefix("1e5", 2), 1.0);
    EXPECT_EQ(prefix("1e-5", 3), 1.0);
    EXPECT_EQ(prefix("0x1f", 3), 1.0);
    EXPECT_EQ(prefix("0x1p4", 4), 1.0);
    EXPECT_EQ(prefix("-1", 1), 0.0);
    EXPECT_EQ(prefix("inf", 2), 0.0);
}

TEST(parseDouble, readsInfinitiesInAnyCase) {
    for (const char* text : {"inf", "INF", "Inf", "iNf", "infinity", "INFINITY", "InFiNiTy"}) {
        expectDouble(text, kInfinity);
        expectDouble(std::string("+") + text, kInfinity);
        expectDouble(std::string(" -") + text, -kInfinity);
    }
}

TEST(parseDouble, readsAsMuchOfAnInfinityAsThereIs) {
    expectDouble("infinit", kInfinity, 3);
    expectDouble("infinityx", kInfinity, 8);
    expectDouble("inf1", kInfinity, 3);
    expectDouble("in", 0.0, 0);
    expectDouble("i", 0.0, 0);
}

TEST(parseDouble, readsNotANumberInAnyCaseWithItsSign) {
    for (const char* text : {"nan", "NAN", "NaN", "+nan", "nan()", "nan(_)", "NAN(some_Text)"})
        expectDouble(text, std::bit_cast<double>(0x7ff8000000000000U));
    expectDouble("-nan", std::bit_cast<double>(0xfff8000000000000U));
    expectDouble(" -NaN(x)", std::bit_cast<double>(0xfff8000000000000U));
}

TEST(parseDouble, readsAsMuchOfNotANumberAsThereIs) {
    const auto plain = std::bit_cast<double>(0x7ff8000000000000U);
    expectDouble("na", 0.0, 0);
    expectDouble("nan(", plain, 3);
    expectDouble("nan(12", plain, 3);
    expectDouble("nan(1 2)", plain, 3);
    expectDouble("nan(-1)", plain, 3);
    expectDouble("nan (1)", plain, 3);
    expectDouble("nanny", plain, 3);
    expectDouble("nan(1))", std::bit_cast<double>(0x7ff8000000000001U), 6);
}

TEST(parseDouble, keepsTheIntegerOfNotANumber) {
    expectDouble("nan(5)", std::bit_cast<double>(0x7ff8000000000005U));
    expectDouble("nan(0)", std::bit_cast<double>(0x7ff8000000000000U));
    expectDouble("nan(10)", std::bit_cast<double>(0x7ff800000000000aU));
    expectDouble("nan(010)", std::bit_cast<double>(0x7ff8000000000008U));
    expectDouble("nan(08)", std::bit_cast<double>(0x7ff8000000000000U));
    expectDouble("-nan(0xAbc)", std::bit_cast<double>(0xfff8000000000abcU));
    expectDouble("nan(0x)", std::bit_cast<double>(0x7ff8000000000000U));
    expectDouble("nan(12c)", std::bit_cast<double>(0x7ff8000000000000U));
    expectDouble("nan(0x7ffffffffffff)", std::bit_cast<double>(0x7fffffffffffffffU));
    expectDouble("nan(0x8000000000001)", std::bit_cast<double>(0x7ff8000000000001U));
    expectDouble("nan(99999999999999999999)", std::bit_cast<double>(0x7fffffffffffffffU));
}

TEST(parseDouble, readsHexadecimalNumbers) {
    expectDouble("0x1", 1.0);
    expectDouble("0X1F", 31.0);
    expectDouble("0x1.8p3", 12.0);
    expectDouble("-0x1.8P+3", -12.0);
    expectDouble("+0xaBcDeFp-4", 11259375.0 / 16.0);
    expectDouble("0x.8", 0.5);
    expectDouble("0x10.", 16.0);
    expectDouble("0x1.p2", 4.0);
    expectDouble("0x0", 0.0);
    expectDouble("-0x0p5", -0.0);
    expectDouble("0x1.5555555555555p-2", 1.0 / 3.0);
}

TEST(parseDouble, readsAZeroBeforeAnXWithoutDigits) {
    expectDouble("0x", 0.0, 1);
    expectDouble("-0x", -0.0, 2);
    expectDouble(" +0X", 0.0, 3);
    expectDouble("0xg", 0.0, 1);
    expectDouble("0x.", 0.0, 1);
    expectDouble("0x.p1", 0.0, 1);
    expectDouble("0xp1", 0.0, 1);
    expectDouble("0x-1", 0.0, 1);
    expectDouble("0x+1", 0.0, 1);
    expectDouble("0x 1", 0.0, 1);
    expectDouble("0xinf", 0.0, 1);
    expectDouble("0xnan", 0.0, 1);
    expectDouble("00x1", 0.0, 2);
}

TEST(parseDouble, leavesABinaryExponentWithoutDigits) {
    expectDouble("0x1p", 1.0, 3);
    expectDouble("0x1p+", 1.0, 3);
    expectDouble("0x1p-", 1.0, 3);
    expectDouble("0x1p+-5", 1.0, 3);
    expectDouble("0x1p--5", 1.0, 3);
    expectDouble("0x1pf", 1.0, 3);
    expectDouble("0x1.2.3p4", 1.125, 5);
}

TEST(parseDouble, readsMoreHexadecimalDigitsThanADoubleHolds) {
    // 2^-53 is half a unit of the last place of 1: to the even neighbour, unless anything follows.
    expectDouble("0x1.00000000000008p0", 1.0);
    expectDouble("0x1.00000000000018p0", 1.0 + 2 * DBL_EPSILON);
    expectDouble("0x1.000000000000081p0", 1.0 + DBL_EPSILON);
    expectDouble("0x1.00000000000007ffffffffffp0", 1.0);
    expectDouble(spread("0x1.00000000000008", 100, '0', "1p0"), 1.0 + DBL_EPSILON);
    expectDouble(spread("0x1.00000000000008", 100, '0', "p0"), 1.0);
    expectDouble(spread("0x100000000000008", 50, '0', "1p-260"), 1.0 + DBL_EPSILON);
    expectDouble("0x1.fffffffffffff8p0", 2.0);
    expectDouble(spread("0x0.", 300, '0', "1p1204"), 1.0);
    expectDouble(spread("0x1", 300, '0', "p-1200"), 1.0);
    expectDouble("0x123456789abcdef01234", 0x1.23456789abcdfp76);
}

TEST(parseDouble, roundsHexadecimalSubnormalsOnce) {
    expectDouble("0x1p-1074", kSmallest);
    expectDouble("0x1p-1075", 0.0);
    expectDouble("-0x1p-1075", -0.0);
    expectDouble("0x1.00000000000001p-1075", kSmallest);
    expectDouble("0x1.8p-1074", 2 * kSmallest);
    expectDouble("0x2.8p-1074", 2 * kSmallest);
    expectDouble("0x0.fffffffffffff7p-1022", DBL_MIN - kSmallest);
    expectDouble("0x0.fffffffffffff8p-1022", DBL_MIN);
    expectDouble("0x1.fffffffffffffp-1023", DBL_MIN);
    // Behind the last bit kept stands 0x88, more than the half 0x80.
    expectDouble("0x1.70000807078888p-1026", 0x0.1700008070789p-1022);
    // In places of 2^-1074 these are 0x7f.8 with a one far behind it, and exactly 0x7e.8.
    expectDouble("0x7f8.0000000000001p-1078", 0x80 * kSmallest);
    expectDouble("0x7e8.0000000000000p-1078", 0x7e * kSmallest);
}

TEST(parseDouble, readsHexadecimalBeyondTheRange) {
    expectDouble("0x1.fffffffffffffp1023", kLargest);
    expectDouble("0x1.fffffffffffff7p1023", kLargest);
    expectDouble("0x1.fffffffffffff8p1023", kInfinity);
    expectDouble("-0x1p1024", -kInfinity);
    expectDouble("0x1p-2000", 0.0);
    for (const char* exponent : {"2147482625", "2147483647", "2147483648", "4294967296",
                                 "9223372036854775807", "99999999999999999999"}) {
        expectDouble(std::string("0x1p") + exponent, kInfinity);
        expectDouble(std::string("-0x1p+") + exponent, -kInfinity);
        expectDouble(std::string("0x1p-") + exponent, 0.0);
        expectDouble(std::string("-0x1000p-") + exponent, -0.0);
        expectDouble(std::string("0x0p") + exponent, 0.0);
    }
}

TEST(parseDouble, turnsOverflowIntoInfinity) {
    expectDouble("1.7976931348623157e308", kLargest);
    expectDouble("1.7976931348623158e308", kLargest);
    // Half way to 2^1024 lies 1.797693134862315807937...e308.
    expectDouble("1.7976931348623159e308", kInfinity);
    expectDouble("-1.7976931348623159e308", -kInfinity);
    expectDouble("1e309", kInfinity);
    expectDouble("-1e309", -kInfinity);
    expectDouble("0.0000000001e319", kInfinity);
    expectDouble(std::string(310, '9'), kInfinity);
    expectDouble(spread("-", 310, '1', ".5"), -kInfinity);
    expectDouble(spread("1", 400, '0', "e-50"), kInfinity);
}

TEST(parseDouble, turnsUnderflowIntoTheNearestSubnormalOrASignedZero) {
    expectDouble("4.9406564584124654e-324", kSmallest);
    expectDouble("5e-324", kSmallest);
    // Half of the smallest subnormal is 2.4703282292062327208...e-324.
    expectDouble("2.4703282292062328e-324", kSmallest);
    expectDouble("2.4703282292062327e-324", 0.0);
    expectDouble("-2.4703282292062327e-324", -0.0);
    expectDouble("7.5e-324", 2 * kSmallest);
    expectDouble("2.2250738585072014e-308", DBL_MIN);
    expectDouble("2.2250738585072011e-308", DBL_MIN - kSmallest);
    expectDouble("1e-400", 0.0);
    expectDouble("-1e-400", -0.0);
    expectDouble("1000000000e-400", 0.0);
    expectDouble(spread("-0.", 400, '0', "1"), -0.0);
    expectDouble(spread("0.", 400, '0', "1e50"), 0.0);
}

TEST(parseDouble, readsExponentsOfAnyLength) {
    for (const char* exponent : {"2147483647", "2147483648", "9999999999", "9223372036854775807",
                                 "9223372036854775808", "123456789012345678901234567890"}) {
        expectDouble(std::string("1e") + exponent, kInfinity);
        expectDouble(std::string("-1e+") + exponent, -kInfinity);
        expectDouble(std::string("1e-") + exponent, 0.0);
        expectDouble(std::string("-123.5e-") + exponent, -0.0);
        expectDouble(std::string("0e") + exponent, 0.0);
        expectDouble(std::string("-0.000e") + exponent, -0.0);
    }
}

TEST(parseDouble, roundsLongDecimalsCorrectly) {
    // 2^53 + 1 lies half way between two doubles.
    expectDouble("9007199254740993", 9007199254740992.0);
    expectDouble("9007199254740993.0000000000000000000000", 9007199254740992.0);
    expectDouble("9007199254740993.0000000000000000000001", 9007199254740994.0);
    expectDouble(spread("9007199254740993.", 2000, '0', "1"), 9007199254740994.0);
    expectDouble(spread("9007199254740992.", 2000, '9'), 9007199254740992.0);
    expectDouble("9007199254740995", 9007199254740996.0);
    expectDouble(spread("0.", 2000, '0', "125e2000"), 0.125);
    expectDouble(spread("125", 2000, '0', "e-2003"), 0.125);
}

TEST(parseDouble, readsAMebibyteOfDigitsAtOnce) {
    const std::size_t size = 1 << 20;
    const std::string nines(size, '9');
    const std::string zeros(size, '0');
    const auto begin = std::chrono::steady_clock::now();
    expectDouble(nines, kInfinity);
    expectDouble("-" + nines, -kInfinity);
    expectDouble("0." + nines, 1.0);
    expectDouble("-0." + zeros + "1", -0.0);
    expectDouble("0." + zeros + "1e1048577", 1.0);
    expectDouble("1" + zeros + "e-1048576", 1.0);
    expectDouble("9007199254740993." + zeros + "1", 9007199254740994.0);
    expectDouble("1e" + nines, kInfinity);
    expectDouble("1e-" + nines, 0.0);
    expectDouble("1e" + zeros + "2", 100.0);
    expectDouble(spread("0x", size, 'f'), kInfinity);
    expectDouble("0x0." + zeros + "1p4194308", 1.0);
    expectDouble("0x1" + zeros + "p-4194304", 1.0);
    expectDouble("0x1p-" + nines, 0.0);
    expectDouble(std::string(size, ' ') + "3", 3.0);
    expectDouble(std::string(size, ' '), 0.0, 0);
    expectDouble("nan(" + nines, std::bit_cast<double>(0x7ff8000000000000U), 3);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(seconds.count(), 5.0) << "17 texts of a mebibyte: some step is not linear";
}

TEST(parseDouble, agreesWithTheCLibraryOnEveryTextOfOneOrTwoBytes) {
    const ThreadLocale c("C");
    for (int first = 0; first < 256; ++first) {
        const std::string one(1, static_cast<char>(first));
        ASSERT_EQ(readDouble(one), libraryDouble(one)) << "byte " << first;
        for (int second = 0; second < 256; ++second) {
            const std::string two = one + static_cast<char>(second);
            ASSERT_EQ(readDouble(two), libraryDouble(two)) << "bytes " << first << ' ' << second;
        }
    }
}

const std::string kNumberCharacters = "0123456789+-.eEpPxXinfa \t";

TEST(parseDouble, agreesWithTheCLibraryOnEveryTextOfThreeNumberCharacters) {
    const ThreadLocale c("C");
    for (const char first : kNumberCharacters)
        for (const char second : kNumberCharacters)
            for (const char third : kNumberCharacters) {
                const std::string text = {first, second, third};
                ASSERT_EQ(readDouble(text), libraryDouble(text)) << "text: \"" << text << '"';
                const std::string hexadecimal = "-0x" + text;
                ASSERT_EQ(readDouble(hexadecimal), libraryDouble(hexadecimal)) << hexadecimal;
            }
}

TEST(parseDouble, agreesWithTheCLibraryOnRandomCharacters) {
    const ThreadLocale c("C");
    Dice dice(1);
    for (int round = 0; round < 100000; ++round) {
        const std::string text = dice.digits(dice.below(14), "0123456789+-.eEpPxXinfatyINFATY \t_");
        ASSERT_EQ(readDouble(text), libraryDouble(text)) << "text: \"" << text << '"';
    }
}

TEST(parseDouble, agreesWithTheCLibraryOnRandomDecimals) {
    const ThreadLocale c("C");
    Dice dice(2);
    for (int round = 0; round < 100000; ++round) {
        std::string text = dice.digitsWithPoint(24);
        if (dice.below(2) != 0) {
            text += dice.oneOf("eE");
            text += std::to_string(static_cast<int>(dice.below(700)) - 350);
        }
        ASSERT_EQ(readDouble(text), libraryDouble(text)) << "text: " << text;
    }
}

TEST(parseDouble, agreesWithTheCLibraryHalfWayBetweenTwoDoubles) {
    const ThreadLocale c("C");
    Dice dice(3);
    for (int round = 0; round < 20000; ++round) {
        // An odd number of 54 bits, written in full with and without something behind it.
        const std::uint64_t odd = (std::uint64_t{1} << 53) | (dice.bits() >> 11) | 1;
        const std::string text = std::to_string(odd);
        const std::string zeros(dice.below(30), '0');
        for (const std::string& number : {text, text + "." + zeros, text + "." + zeros + "1",
                                          std::to_string(odd - 1) + ".9999999" + zeros})
            ASSERT_EQ(readDouble(number), libraryDouble(number)) << "text: " << number;
    }
}

TEST(parseDouble, agreesWithTheCLibraryHalfWayBetweenTwoSubnormals) {
    if (std::numeric_limits<long double>::digits < 64)
        GTEST_SKIP() << "long double does not hold the number half way";
    const ThreadLocale c("C");
    Dice dice(4);
    for (int round = 0; round < 500; ++round) {
        const std::uint64_t width = 1 + dice.below(53);
        const std::uint64_t odd = (dice.bits() >> (64 - width)) | 1;
        char full[1200];
        std::snprintf(full, sizeof full, "%.1075Lf", std::ldexp(static_cast<long double>(odd), -1075));
        const std::string text = full;
        for (const std::string& number :
             {text, text + "0001", text.substr(0, text.size() - 1) + "4999", text.substr(0, 500)})
            ASSERT_EQ(readDouble(number), libraryDouble(number)) << "text: " << number;
    }
}

TEST(parseDouble, agreesWithTheCLibraryOnRandomHexadecimals) {
    const ThreadLocale c("C");
    Dice dice(5);
    for (int round = 0; round < 100000; ++round) {
        std::string text(1, dice.oneOf("+-"));
        text += "0x";
        text += dice.digitsWithPoint(24, round % 2 == 0 ? "0123456789abcdefABCDEF" : "08f");
        if (dice.below(4) != 0) {
            text += dice.oneOf("pP");
            text += std::to_string(static_cast<int>(dice.below(1860)) - 800);
        }
        ASSERT_EQ(readDouble(text), libraryDouble(text)) << "text: " << text;
    }
}

// Not against strtod: some C libraries round such numbers twice.
TEST(parseDouble, roundsRandomHexadecimalSubnormalsLikeTheMachine) {
    if (std::numeric_limits<long double>::digits < 64)
        GTEST_SKIP() << "long double does not hold 64 bits";
    Dice dice(6);
    for (int round = 0; round < 100000; ++round) {
        const std::uint64_t width = 1 + dice.below(64);
        const std::uint64_t mantissa = dice.bits() >> (64 - width);
        const int exponent = -1140 + static_cast<int>(dice.below(120));
        char text[64];
        std::snprintf(text, sizeof text, "0x%llxp%d", static_cast<unsigned long long>(mantissa), exponent);
        ASSERT_EQ(readDouble(text).bits(), std::bit_cast<std::uint64_t>(static_cast<double>(
                                               std::ldexp(static_cast<long double>(mantissa), exponent))))
            << "text: " << text;
    }
}

TEST(parseDouble, readsBackTheHexadecimalsOfTheCLibrary) {
    const ThreadLocale c("C");
    Dice dice(7);
    for (int round = 0; round < 50000; ++round) {
        const double value = std::bit_cast<double>(std::bit_cast<std::uint64_t>(dice.finiteDouble()) >>
                                                   (round % 2 == 0 ? 0 : 11));
        char text[64];
        std::snprintf(text, sizeof text, "%a", value);
        ASSERT_EQ(readDouble(text).bits(), std::bit_cast<std::uint64_t>(value)) << "text: " << text;
    }
}

// ---- integers ----

TEST(parseInt, readsIntegers) {
    expectInt("0", 0);
    expectInt("42", 42);
    expectInt("-42", -42);
    expectInt("+42", 42);
    expectInt("-0", 0);
    expectInt("007", 7);
    expectInt(" \t\n\v\f\r-17", -17);
}

TEST(parseInt, stopsBehindTheNumber) {
    expectInt("1,5", 1, 1);
    expectInt("1.9", 1, 1);
    expectInt("-1.9", -1, 2);
    expectInt("1e5", 1, 1);
    expectInt("0x10", 0, 1);
    expectInt("12 34", 12, 2);
    expectInt(std::string("7\0008", 3), 7, 1);
}

TEST(parseInt, findsNoNumberWhereThereIsNone) {
    for (const char* text : {"", " ", "+", "-", "- 5", "+ 5", "+-5", "-+5", "--5", "++5", ".5", "x", "inf",
                             "nan", "\b1", "\2401"})
        expectInt(text, 0, 0);
}

TEST(parseInt, findsNoNumberInNoMemory) {
    const char* end = "";
    EXPECT_EQ(parseInt(nullptr, nullptr, &end), 0);
    EXPECT_EQ(end, nullptr);
}

TEST(parseInt, doesWithoutAnEnd) {
    const char text[] = " 45x";
    EXPECT_EQ(parseInt(text, text + 4), 45);
    EXPECT_EQ(parseInt(text, text), 0);
}

TEST(parseInt, readsNothingBehindTheEndOfTheRange) {
    const char text[] = "-123";
    EXPECT_EQ(parseInt(text, text + 3), -12);
    EXPECT_EQ(parseInt(text, text + 1), 0);
}

TEST(parseInt, clampsWhatDoesNotFit) {
    expectInt("2147483647", 2147483647);
    expectInt("2147483648", 2147483647);
    expectInt("-2147483648", -2147483647 - 1);
    expectInt("-2147483649", -2147483647 - 1);
    expectInt("4294967296", 2147483647);
    expectInt("9223372036854775808", 2147483647);
    expectInt("-18446744073709551616", -2147483647 - 1);
    expectInt("+99999999999999999999", 2147483647);
    expectInt("000000000000000000000000000005", 5);
}

TEST(parseInt, readsAMillionDigits) {
    const std::string digits(1000000, '7');
    const auto begin = std::chrono::steady_clock::now();
    expectInt(digits, INT_MAX);
    expectInt("-" + digits, INT_MIN);
    expectInt(std::string(1000000, '0') + "9", 9);
    expectInt(std::string(1000000, ' ') + "9", 9);
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(seconds.count(), 2.0) << "four texts of a million characters: some step is not linear";
}

TEST(parseInt, agreesWithTheCLibraryOnEveryTextOfOneOrTwoBytes) {
    const ThreadLocale c("C");
    for (int first = 0; first < 256; ++first) {
        const std::string one(1, static_cast<char>(first));
        ASSERT_EQ(readInt(one), libraryInt(one)) << "byte " << first;
        for (int second = 0; second < 256; ++second) {
            const std::string two = one + static_cast<char>(second);
            ASSERT_EQ(readInt(two), libraryInt(two)) << "bytes " << first << ' ' << second;
        }
    }
}

TEST(parseInt, agreesWithTheCLibraryOnEveryTextOfThreeNumberCharacters) {
    const ThreadLocale c("C");
    for (const char first : kNumberCharacters)
        for (const char second : kNumberCharacters)
            for (const char third : kNumberCharacters) {
                const std::string text = {first, second, third};
                ASSERT_EQ(readInt(text), libraryInt(text)) << "text: \"" << text << '"';
            }
}

TEST(parseInt, agreesWithTheCLibraryOnRandomDigits) {
    const ThreadLocale c("C");
    Dice dice(8);
    for (int round = 0; round < 50000; ++round) {
        std::string text(1, dice.oneOf("+- 0"));
        text += dice.digits(1 + dice.below(22));
        ASSERT_EQ(readInt(text), libraryInt(text)) << "text: \"" << text << '"';
    }
}

// ---- terminated texts ----

TEST(textToDouble, readsTheFirstNumberOfAText) {
    EXPECT_EQ(textToDouble("1.5"), 1.5);
    EXPECT_EQ(textToDouble(" \n+2.5e1 7"), 25.0);
    EXPECT_EQ(textToDouble("0x1.8p3\t"), 12.0);
    EXPECT_EQ(textToDouble("1,5"), 1.0);
    EXPECT_EQ(textToDouble("-infinity!"), -kInfinity);
}

TEST(textToDouble, isZeroWithoutANumber) {
    EXPECT_EQ(textToDouble(nullptr), 0.0);
    EXPECT_EQ(textToDouble(""), 0.0);
    EXPECT_EQ(textToDouble(" \t"), 0.0);
    EXPECT_EQ(textToDouble("- 5"), 0.0);
    EXPECT_EQ(textToDouble("abc"), 0.0);
}

TEST(textToInt, readsTheFirstNumberOfAText) {
    EXPECT_EQ(textToInt("15"), 15);
    EXPECT_EQ(textToInt(" \n-25 7"), -25);
    EXPECT_EQ(textToInt("+3.9"), 3);
    EXPECT_EQ(textToInt("99999999999"), 2147483647);
}

TEST(textToInt, isZeroWithoutANumber) {
    EXPECT_EQ(textToInt(nullptr), 0);
    EXPECT_EQ(textToInt(""), 0);
    EXPECT_EQ(textToInt(" \t"), 0);
    EXPECT_EQ(textToInt("- 5"), 0);
    EXPECT_EQ(textToInt("abc"), 0);
}

TEST(textToDouble, costsNoWalkThroughTheTextBehindTheNumber) {
    std::string document;
    while (document.size() < (1 << 20))
        document += "12.5 ";
    const auto begin = std::chrono::steady_clock::now();
    double sum = 0.0;
    int count = 0;
    for (std::size_t at = 0; at < document.size(); at += 5) {
        sum += textToDouble(document.c_str() + at);
        count += textToInt(document.c_str() + at);
    }
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(sum, 12.5 * 209716);
    EXPECT_EQ(count, 12 * 209716);
    EXPECT_LT(seconds.count(), 2.0);
}

// ---- writing ----

TEST(fixedText, writesTheDecimalsAskedFor) {
    EXPECT_EQ(fixedText(0.0, 0), "0");
    EXPECT_EQ(fixedText(0.0, 3), "0.000");
    EXPECT_EQ(fixedText(95.047, 2), "95.05");
    EXPECT_EQ(fixedText(-12.5, 4), "-12.5000");
    EXPECT_EQ(fixedText(1e21, 1), "1000000000000000000000.0");
    EXPECT_EQ(fixedText(0.1, 17), "0.10000000000000001");
}

TEST(fixedText, roundsTheExactValueAndHalvesToEven) {
    EXPECT_EQ(fixedText(0.5, 0), "0");
    EXPECT_EQ(fixedText(1.5, 0), "2");
    EXPECT_EQ(fixedText(2.5, 0), "2");
    EXPECT_EQ(fixedText(0.125, 2), "0.12");
    EXPECT_EQ(fixedText(0.375, 2), "0.38");
    EXPECT_EQ(fixedText(1.005, 2), "1.00"); // lies a little below 1.005
    EXPECT_EQ(fixedText(9.9996, 3), "10.000");
}

TEST(fixedText, keepsTheSignOfWhatBecomesZero) {
    EXPECT_EQ(fixedText(-0.0, 0), "-0");
    EXPECT_EQ(fixedText(-0.0, 2), "-0.00");
    EXPECT_EQ(fixedText(-0.001, 2), "-0.00");
    EXPECT_EQ(fixedText(-kSmallest, 17), "-0.00000000000000000");
}

TEST(fixedText, writesInfinitiesAndNotANumberWithTheirSigns) {
    const auto notANumber = std::bit_cast<double>(0x7ff8000000000000U);
    EXPECT_EQ(fixedText(kInfinity, 3), "inf");
    EXPECT_EQ(fixedText(-kInfinity, 3), "-inf");
    EXPECT_EQ(fixedText(notANumber, 3), "nan");
    EXPECT_EQ(fixedText(std::bit_cast<double>(0xfff8000000000000U), 3), "-nan");
}

TEST(fixedText, limitsTheDecimals) {
    EXPECT_EQ(fixedText(1.5, -1), "2");
    EXPECT_EQ(fixedText(1.5, INT_MIN), "2");
    EXPECT_EQ(fixedText(0.1, 18), "0.10000000000000001");
    EXPECT_EQ(fixedText(0.1, INT_MAX), "0.10000000000000001");
}

TEST(fixedText, agreesWithTheCLibraryOnRandomNumbers) {
    const ThreadLocale c("C");
    Dice dice(9);
    for (int round = 0; round < 50000; ++round) {
        const int decimals = static_cast<int>(dice.below(18));
        const double wide = dice.finiteDouble();
        const double plain = static_cast<double>(dice.below(2000000)) / 1000.0 - 1000.0;
        const double halves = static_cast<double>(dice.below(4000)) / 16.0;
        for (const double value : {wide, plain, halves})
            ASSERT_EQ(fixedText(value, decimals), libraryText("%.*f", decimals, value));
    }
}

TEST(doubleToFixedText, givesTheLengthAndTerminatesTheText) {
    char out[kFixedTextSize];
    std::fill(std::begin(out), std::end(out), 'x');
    EXPECT_EQ(doubleToFixedText(-3.25, 1, out), 4U);
    EXPECT_STREQ(out, "-3.2");
    EXPECT_EQ(doubleToFixedText(kInfinity, 1, out), 3U);
    EXPECT_STREQ(out, "inf");
}

TEST(doubleToFixedText, keepsTheLongestTextInsideItsSize) {
    std::vector<char> out(kFixedTextSize);
    // 309 digits before the point.
    EXPECT_EQ(doubleToFixedText(-kLargest, 17, out.data()), 1U + 309U + 1U + 17U);
    const std::string text = out.data();
    EXPECT_EQ(text.size(), 328U);
    EXPECT_EQ(text.substr(0, 18), "-17976931348623157");
    EXPECT_EQ(text.substr(310), ".00000000000000000");
}

TEST(generalText, writesTheSignificantDigitsAskedFor) {
    EXPECT_EQ(generalText(0.0, 6), "0");
    EXPECT_EQ(generalText(-0.0, 6), "-0");
    EXPECT_EQ(generalText(1.1, 6), "1.1");
    EXPECT_EQ(generalText(1.0 / 3.0, 3), "0.333");
    EXPECT_EQ(generalText(1.0 / 3.0, 17), "0.33333333333333331");
    EXPECT_EQ(generalText(-95.047, 4), "-95.05");
}

TEST(generalText, writesAnExponentForSmallAndLargeNumbers) {
    EXPECT_EQ(generalText(100000.0, 6), "100000");
    EXPECT_EQ(generalText(1000000.0, 6), "1e+06");
    EXPECT_EQ(generalText(999999.5, 6), "1e+06");
    EXPECT_EQ(generalText(0.0001, 6), "0.0001");
    EXPECT_EQ(generalText(0.00001, 6), "1e-05");
    EXPECT_EQ(generalText(1.25e100, 6), "1.25e+100");
    EXPECT_EQ(generalText(2.5, 1), "2");
    EXPECT_EQ(generalText(25.0, 1), "2e+01");
    EXPECT_EQ(generalText(kSmallest, 17), "4.9406564584124654e-324");
}

TEST(generalText, writesInfinitiesAndNotANumberWithTheirSigns) {
    EXPECT_EQ(generalText(kInfinity, 6), "inf");
    EXPECT_EQ(generalText(-kInfinity, 6), "-inf");
    EXPECT_EQ(generalText(std::bit_cast<double>(0x7ff8000000000000U), 6), "nan");
    EXPECT_EQ(generalText(std::bit_cast<double>(0xfff8000000000000U), 6), "-nan");
}

TEST(generalText, limitsTheDigits) {
    EXPECT_EQ(generalText(1.25, 0), "1");
    EXPECT_EQ(generalText(1.25, INT_MIN), "1");
    EXPECT_EQ(generalText(0.1, 18), "0.10000000000000001");
    EXPECT_EQ(generalText(0.1, INT_MAX), "0.10000000000000001");
}

TEST(generalText, agreesWithTheCLibraryOnRandomNumbers) {
    const ThreadLocale c("C");
    Dice dice(10);
    for (int round = 0; round < 50000; ++round) {
        const int digits = 1 + static_cast<int>(dice.below(17));
        const double wide = dice.finiteDouble();
        const double plain = static_cast<double>(dice.below(2000000)) / 1000.0 - 1000.0;
        const double small = std::ldexp(static_cast<double>(dice.below(4000)), -20);
        for (const double value : {wide, plain, small})
            ASSERT_EQ(generalText(value, digits), libraryText("%.*g", digits, value));
    }
}

TEST(generalText, keepsEachDoubleInSeventeenDigits) {
    Dice dice(11);
    for (int round = 0; round < 100000; ++round) {
        const double value = dice.finiteDouble();
        const std::string text = generalText(value, 17);
        ASSERT_EQ(readDouble(text).bits(), std::bit_cast<std::uint64_t>(value)) << "text: " << text;
    }
}

TEST(generalText, keepsEachFloatInNineDigits) {
    // Every 40009th of all 2^32 floats; the stride is a prime, so that all exponents and low bits come by.
    for (std::uint64_t bits = 0; bits <= 0xffffffffU; bits += 40009) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(bits));
        if (std::isnan(value))
            continue;
        const std::string text = generalText(static_cast<double>(value), 9);
        ASSERT_EQ(std::bit_cast<std::uint32_t>(static_cast<float>(textToDouble(text.c_str()))), bits)
            << "text: " << text;
    }
}

// ---- locales ----

/// A decimal comma, and points between the thousands.
class CommaNumbers : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

void expectNumbersWithAPoint() {
    expectDouble("1234.5", 1234.5);
    expectDouble("1234,5", 1234.0, 4);
    expectDouble("1.234.567", 1.234, 5);
    expectDouble("0x1.8", 1.5);
    expectInt("1.234", 1, 1);
    EXPECT_EQ(textToDouble("0.25"), 0.25);
    EXPECT_EQ(fixedText(1234567.5, 2), "1234567.50");
    EXPECT_EQ(generalText(1234567.5, 9), "1234567.5");
}

TEST(numberText, keepsThePointUnderACommaLocaleOfCxx) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaNumbers));
    expectNumbersWithAPoint();
    std::locale::global(before);
}

TEST(numberText, keepsThePointUnderACommaLocaleOfC) {
    for (const char* name :
         {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE", "fr_FR", "es_ES.UTF-8", "it_IT.UTF-8"}) {
        const ThreadLocale comma(name);
        if (!comma.isSet())
            continue;
        ASSERT_STREQ(localeconv()->decimal_point, ",");
        expectNumbersWithAPoint();
        return;
    }
    GTEST_SKIP() << "no locale with a decimal comma is installed";
}

} // namespace
} // namespace qxcms::detail
