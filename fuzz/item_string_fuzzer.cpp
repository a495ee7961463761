// Item strings: every value by its index against values picked character by character, numbers against strtod
// and strtol in the "C" locale.
#include <algorithm>
#include <bit>
#include <cctype>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/exact_memory.h"
#include "fuzz/must.h"
#include "platform/utility.h"

namespace {

using namespace qxcms::fuzz;

std::vector<std::string> valuesOf(const char* items) {
    enum { kBetween, kBare, kQuoted } where = kBetween;
    std::vector<std::string> values;
    for (; *items != '\0'; ++items) {
        const bool separates = *items == ',' || std::isspace(static_cast<unsigned char>(*items)) != 0;
        if (where == kQuoted && *items == '"')
            where = kBetween;
        else if (where == kQuoted || (where == kBare && !separates))
            values.back() += *items;
        else if (separates)
            where = kBetween;
        else {
            where = *items == '"' ? kQuoted : kBare;
            values.emplace_back(where == kBare ? 1 : 0, *items);
        }
    }
    return values;
}

// Whether a number was read that ends where the value ends, blanks aside.
bool isWhole(const std::string& value, const char* end) {
    const char* const last = value.c_str() + value.size();
    return end != value.c_str() &&
           std::all_of(end, last, [](unsigned char c) { return std::isspace(c) != 0; });
}

void askText(const char* items, int index, const std::string& value) {
    for (const std::size_t size : {value.size(), value.size() + 1}) {
        const std::unique_ptr<char[]> text(new char[size]);
        const int answer = str_str(items, index, text.get(), static_cast<int>(size));
        must(answer == (size > value.size() ? 0 : -1), "a value is given when there is room");
        must(answer != 0 || text.get() == value, "a value is given as it stands");
    }
}

void askNumbers(const char* items, int index, const std::string& value) {
    char* end = nullptr;
    int whole = 77;
    const long expected = std::strtol(value.c_str(), &end, 10);
    const bool isInteger = isWhole(value, end);
    must(str_int_from_itemstr(items, index, &whole) == (isInteger ? 0 : -1), "integers are told from others");
    must(whole ==
             (isInteger ? std::clamp(expected, static_cast<long>(INT_MIN), static_cast<long>(INT_MAX)) : 77),
         "an integer is that of the C library, held within int");

    double number = 77;
    const double wanted = std::strtod(value.c_str(), &end);
    const bool isNumber = isWhole(value, end);
    must(str_double_from_itemstr(items, index, &number) == (isNumber ? 0 : -1),
         "numbers are told from others");
    must(std::bit_cast<std::uint64_t>(number) == std::bit_cast<std::uint64_t>(isNumber ? wanted : 77),
         "a number is that of the C library");
}

void askMissing(const char* items, int index) {
    int whole = 77;
    double number = 77;
    char text[] = "kept";
    must(str_int_from_itemstr(items, index, &whole) == -1 && whole == 77, "there is no integer");
    must(str_double_from_itemstr(items, index, &number) == -1 && number == 77, "there is no number");
    must(str_str(items, index, text, sizeof text) == -1 && text == std::string("kept"), "there is no text");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ExactText items(data, size);
    const std::vector<std::string> values = valuesOf(items.c_str());
    const int count = static_cast<int>(values.size());
    for (int index = 0; index < count; ++index) {
        // Of a long string the first and the last ones, each of which is looked for from the beginning.
        if (index == 32)
            index = std::max(index, count - 8);
        const std::string& value = values[static_cast<std::size_t>(index)];
        askText(items.c_str(), index, value);
        askNumbers(items.c_str(), index, value);
    }
    for (const int index : {count, count + 1, INT_MAX, -1, INT_MIN})
        askMissing(items.c_str(), index);
    return 0;
}
