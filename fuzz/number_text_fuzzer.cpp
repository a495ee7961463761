// Text to number and number to text, against the C library in the "C" locale.
#include <bit>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "base/number_text.h"
#include "fuzz/exact_memory.h"
#include "fuzz/must.h"

namespace {

using namespace qxcms::fuzz;
using namespace qxcms::detail;

bool areSame(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

void askText(const ExactText& text) {
    char* end = nullptr;
    const double expected = std::strtod(text.c_str(), &end);
    const char* stop = nullptr;
    must(areSame(textToDouble(text.c_str()), expected), "a text is the number that the C library reads");
    must(areSame(parseDouble(text.c_str(), text.end(), &stop), expected), "so is a text with a length");
    must(stop == end, "a number ends where the C library ends it");

    const long whole = std::strtol(text.c_str(), &end, 10);
    const int clamped = whole > INT_MAX ? INT_MAX : whole < INT_MIN ? INT_MIN : static_cast<int>(whole);
    must(textToInt(text.c_str()) == clamped, "an integer is what the C library reads, held within int");
    must(parseInt(text.c_str(), text.end(), &stop) == clamped, "so is an integer with a length");
    must(stop == end, "an integer ends where the C library ends it");
}

void askNumber(double number) {
    char expected[kFixedTextSize], text[kFixedTextSize];
    for (const int decimals : {0, 5, 17}) {
        std::snprintf(expected, sizeof expected, "%.*f", decimals, number);
        must(doubleToFixedText(number, decimals, text) == std::strlen(expected) &&
                 std::strcmp(text, expected) == 0,
             "decimals are those of the C library");
        must(fixedText(number, decimals) == expected, "decimals are the same in a string");
    }
    for (const int digits : {1, 6, 17}) {
        std::snprintf(expected, sizeof expected, "%.*g", digits, number);
        must(generalText(number, digits) == expected, "digits are those of the C library");
    }
    const double back = textToDouble(generalText(number, 17).c_str());
    must(areSame(back, number) || std::isnan(number), "17 digits bring a number back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ExactText text(data, size);
    askText(text);
    askNumber(std::strtod(text.c_str(), nullptr));
    double number = 0.0;
    if (size >= sizeof number)
        std::memcpy(&number, data, sizeof number);
    askNumber(number);
    return 0;
}
