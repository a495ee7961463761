#include "qc/text_words.h"

#include <algorithm>
#include <cstddef>

#include "qc/characters.h"

namespace qxcms::qc {

namespace {

using Words = std::vector<Word>;

bool isBeyondAscii(char c) {
    return static_cast<unsigned char>(c) >= 0x80U;
}

// The length of a degree sign, 0 when there is none: in UTF-8 (also its look-alikes, the masculine ordinal
// and the ring above), in Latin-1, and behind a digit in Mac Roman.
std::size_t degreeSign(std::string_view text, std::size_t at) {
    for (const std::string_view sign : {"\xC2\xB0", "\xC2\xBA", "\xCB\x9A"})
        if (startsWith(text, at, sign))
            return sign.size();
    const bool behindAscii = at == 0 || !isBeyondAscii(text[at - 1]);
    const bool behindDigit = at > 0 && isDigit(text[at - 1]);
    const bool isSign =
        (behindAscii && (text[at] == '\xB0' || text[at] == '\xBA')) || (behindDigit && text[at] == '\xA1');
    return isSign ? 1 : 0;
}

// The length of a blank or a dash beyond ASCII in UTF-8, 0 when there is none.
std::size_t otherSeparator(std::string_view text, std::size_t at) {
    for (const std::string_view sign : {"\xC2\xA0", "\xE2\x80\x93", "\xE2\x80\x94", "\xE2\x88\x92"})
        if (startsWith(text, at, sign))
            return sign.size();
    return 0;
}

// Takes words that are run together apart and appends them.
void append(Words& words, std::string_view text, char before) {
    for (const std::string_view head : {"illuminant", "illumination", "observer", "cie", "uv", "backing"})
        if (text.size() > head.size() && startsWith(text, 0, head)) {
            words.push_back({std::string(head), before});
            return append(words, text.substr(head.size()), ' ');
        }
    for (const std::string_view tail : {"filter", "backing", "cut"})
        if (text.size() > tail.size() && startsWith(text, text.size() - tail.size(), tail)) {
            append(words, text.substr(0, text.size() - tail.size()), before);
            return append(words, tail, ' ');
        }
    words.push_back({std::string(text), before});
}

// The end of the word that begins at `at`.
std::size_t endOfWord(std::string_view text, std::size_t at) {
    const bool number = isDigit(text[at]);
    std::size_t end = at;
    for (; end < text.size(); ++end) {
        const char c = text[end];
        const bool point =
            c == '.' && end > at && isDigit(text[end - 1]) && end + 1 < text.size() && isDigit(text[end + 1]);
        const bool belongs = isDigit(c) || point || (!number && (isLetter(c) || isBeyondAscii(c)));
        if (!belongs || degreeSign(text, end) != 0 || otherSeparator(text, end) != 0)
            break;
    }
    return end;
}

} // namespace

std::vector<Word> wordsOf(std::string_view text) {
    Words words;
    char before = ' ';
    for (std::size_t i = 0; i < text.size();) {
        if (const std::size_t degree = degreeSign(text, i); degree != 0) {
            words.push_back({"deg", ' '});
            before = ' ';
            i += degree;
        } else if (const std::size_t other = otherSeparator(text, i); other != 0) {
            if (before == ' ' && other > 2)
                before = '-';
            i += other;
        } else if (const std::size_t end = endOfWord(text, i); end != i) {
            std::string word(text.substr(i, end - i));
            std::transform(word.begin(), word.end(), word.begin(), toLower);
            append(words, word, before);
            before = ' ';
            i = end;
        } else {
            if (before == ' ' && !isBlank(text[i]))
                before = text[i];
            ++i;
        }
    }
    return words;
}

std::string trimmed(std::string_view text) {
    constexpr std::string_view kAround = " \t\"',;=";
    const std::size_t first = text.find_first_not_of(kAround);
    if (first == std::string_view::npos)
        return "";
    return std::string(text.substr(first, text.find_last_not_of(kAround) + 1 - first));
}

} // namespace qxcms::qc
