// Escapes turned back, and names escaped and turned back, in memory of exactly what they may need: each
// against what its description makes of the same text, byte by byte.
#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <memory>
#include <string>
#include <strings.h>

#include "fuzz/exact_memory.h"
#include "fuzz/must.h"
#include "support/file_name_escaping.h"

namespace {

using namespace qxcms::fuzz;

/// The set of the cache files.
constexpr char kCacheSet[] = "$% ./\\*[]@?:|#<>\";";

/// What ends with the fourth one ends with the third one, too.
constexpr const char* kSuffixes[] = {".icc", "", ".txt", ".a.txt"};

struct Answer {
    std::string text;
    int result;
};

// What has to come.

int codeOf(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return std::isdigit(byte) != 0 ? byte - '0' : std::tolower(byte) - 87;
}

Answer expectedDecoding(const std::string& text) {
    Answer expected{"", 0};
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            expected.text += text[i];
        } else if (text.size() - i > 2) {
            expected.text += static_cast<char>(16 * codeOf(text[i + 1]) + codeOf(text[i + 2]));
            expected.result = 1;
            i += 2;
        }
    }
    return expected;
}

bool isReserved(const std::string& name) {
    return strcasecmp(name.c_str(), "Trans._White_100_w") == 0 ||
           strcasecmp(name.c_str(), "Trans._White_100_g") == 0 ||
           strcasecmp(name.c_str(), "Trans._White_100_k") == 0;
}

Answer expectedEncoding(const std::string& name, const std::string& illegal) {
    if (isReserved(name))
        return {name, 0};
    Answer expected{"", 0};
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        char escape[4] = {c, '\0', '\0', '\0'};
        if (std::isalnum(byte) == 0 && illegal.find(c) != std::string::npos) {
            std::snprintf(escape, sizeof escape, "%%%02x", static_cast<unsigned>(byte));
            expected.result = 1;
        }
        expected.text += escape;
    }
    return expected;
}

Answer expectedEncodingOfStem(const std::string& name, const std::string& illegal) {
    std::size_t stem = name.size();
    for (const std::string suffix : kSuffixes) {
        const std::size_t length = suffix.size();
        if (length > 0 && name.size() > length &&
            strcasecmp(name.c_str() + name.size() - length, suffix.c_str()) == 0) {
            stem -= length;
            break;
        }
    }
    Answer expected = expectedEncoding(name.substr(0, stem), illegal);
    expected.text += name.substr(stem);
    return expected;
}

// What comes.

/// @param memory of the answer and its terminator or more.
void mustBe(const Answer& expected, const char* memory, int result, const char* rule) {
    must(result == expected.result, rule);
    must(std::equal(expected.text.begin(), expected.text.end(), memory), rule);
    must(memory[expected.text.size()] == '\0', rule);
}

void askEscapes(const std::string& source) {
    const ExactText text(reinterpret_cast<const std::uint8_t*>(source.data()), source.size());
    const Answer expected = expectedDecoding(text.c_str());
    const std::unique_ptr<char[]> memory(new char[text.size() + 1]);
    mustBe(expected, memory.get(), TCMS_DecodeIllegalCharacters(text.c_str(), memory.get()),
           "escapes are turned back as described");
    std::memcpy(memory.get(), text.c_str(), text.size() + 1);
    mustBe(expected, memory.get(), TCMS_DecodeIllegalCharacters(memory.get(), memory.get()),
           "escapes are turned back in place");
}

void askName(const ExactText& source, const std::string& illegal, bool keepsSuffix) {
    const std::unique_ptr<char[]> memory(new char[3 * source.size() + 1]);
    const int result =
        keepsSuffix ? TCMS_EncodeIllegalCharactersWithoutSuffix(source.c_str(), memory.get(), illegal.c_str(),
                                                                std::size(kSuffixes), kSuffixes)
                    : TCMS_EncodeIllegalCharacters(source.c_str(), memory.get(), illegal.c_str());
    mustBe(keepsSuffix ? expectedEncodingOfStem(source.c_str(), illegal)
                       : expectedEncoding(source.c_str(), illegal),
           memory.get(), result, "names are escaped as described");

    askEscapes(memory.get());
    if (illegal.find('%') != std::string::npos)
        must(expectedDecoding(memory.get()).text == source.c_str(), "a name comes back");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ExactText source(data, size);
    const std::string ownSet(source.c_str(), std::min<std::size_t>(source.size(), 2));
    askEscapes(source.c_str());
    for (const bool keepsSuffix : {false, true}) {
        askName(source, kCacheSet, keepsSuffix);
        askName(source, ownSet, keepsSuffix);
        askName(source, '%' + ownSet, keepsSuffix);
    }
    return 0;
}
