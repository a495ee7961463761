// Escapes turned back, and names escaped and turned back, in memory of exactly what they may need.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include "fuzz/exact_memory.h"
#include "fuzz/must.h"
#include "support/file_name_escaping.h"

namespace {

using namespace qxcms::fuzz;

/// The set of the cache files.
constexpr char kCacheSet[] = "$% ./\\*[]@?:|#<>\";";

constexpr const char* kSuffixes[] = {".icc", "", ".txt"};

struct Answer {
    std::string text;
    int result;
};

Answer decoded(const char* source, std::size_t length) {
    const std::unique_ptr<char[]> destination(new char[length + 1]);
    const int result = TCMS_DecodeIllegalCharacters(source, destination.get());
    must(result == 0 || result == 1, "decoding answers 0 or 1");
    return {destination.get(), result};
}

Answer encoded(const ExactText& source, const char* illegal, bool keepsSuffix) {
    const std::unique_ptr<char[]> destination(new char[3 * source.size() + 1]);
    const int result = keepsSuffix ? TCMS_EncodeIllegalCharactersWithoutSuffix(
                                         source.c_str(), destination.get(), illegal, 3, kSuffixes)
                                   : TCMS_EncodeIllegalCharacters(source.c_str(), destination.get(), illegal);
    must(result == 0 || result == 1, "encoding answers 0 or 1");
    return {destination.get(), result};
}

/// Whether any "%" has two characters after it, as the walk over the text comes to it.
bool holdsAnEscape(const ExactText& text) {
    const char* const first = std::strchr(text.c_str(), '%');
    // Behind one that is cut off there is no room for another.
    return first != nullptr && text.end() - first > 2;
}

void askEscapes(const ExactText& source) {
    const Answer answer = decoded(source.c_str(), source.size());
    must((answer.result == 1) == holdsAnEscape(source),
         "every percent sign with two characters is an escape");
    if (std::strchr(source.c_str(), '%') == nullptr)
        must(answer.text == source.c_str(), "a text without percent signs is copied");
}

/// @param illegal holds the percent sign.
void askName(const ExactText& source, const char* illegal, bool keepsSuffix) {
    const Answer there = encoded(source, illegal, keepsSuffix);
    must((there.result == 1) == (there.text != source.c_str()), "1 tells that something was escaped");
    const Answer back = decoded(there.text.c_str(), there.text.size());
    must(back.text == source.c_str(), "a name comes back");
    must(back.result == there.result, "what was escaped is turned back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ExactText source(data, size);
    const std::string ownSet = "%" + std::string(source.c_str(), std::min<std::size_t>(source.size(), 2));
    askEscapes(source);
    for (const bool keepsSuffix : {false, true}) {
        askName(source, kCacheSet, keepsSuffix);
        askName(source, ownSet.c_str(), keepsSuffix);
    }
    return 0;
}
