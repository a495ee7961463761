#include "qc/condition_parts.h"

#include <algorithm>

#include "qc/characters.h"
#include "qc/text_words.h"

namespace qxcms::qc {

namespace {

class PartReader {
public:
    // `joined` for a value whose blanks are lost, in which a name may follow a value immediately.
    PartReader(std::string_view value, bool joined) : text(value), blanksLost(joined) {}

    Parts read() {
        Parts result;
        std::size_t valueStart = 0;
        for (std::size_t sign = 0; sign < text.size(); ++sign) {
            if (text[sign] != '=' && text[sign] != ':')
                continue;
            const Name name = nameBefore(sign, valueStart);
            const bool isDated =
                name.subject == Subject::measurementCondition && isYear(sign + 1); // "ISO 13655:2009"
            if (name.first == sign || (text[sign] == ':' && !name.subject) || isDated)
                continue;
            const std::string_view value = text.substr(valueStart, name.first - valueStart);
            if (result.parts.empty())
                result.before = trimmed(value);
            else
                result.parts.back().value = upToSeparator(value);
            result.parts.push_back({name.subject, ""});
            valueStart = sign + 1;
        }
        if (!result.parts.empty())
            result.parts.back().value = upToSeparator(text.substr(valueStart));
        return result;
    }

private:
    struct Name {
        std::size_t first;
        std::optional<Subject> subject;
    };

    static constexpr std::size_t kLongestName = 40;

    static bool belongsToName(char c) { return isLetter(c) || isDigit(c) || c == '_' || c == '-'; }

    std::size_t skipBack(std::size_t end, std::size_t from, bool (*what)(char)) const {
        while (end > from && what(text[end - 1]))
            --end;
        return end;
    }

    bool isYear(std::size_t at) const {
        constexpr std::size_t kDigits = 4;
        const std::size_t first = std::min(text.find_first_not_of(" \t", at), text.size());
        const std::size_t end = std::min(text.find_first_not_of("0123456789", first), text.size());
        const std::string_view century = text.substr(first, 2);
        return end - first == kDigits && (century == "19" || century == "20");
    }

    // The name in front of a sign: a known one of up to three words, else the last word.
    Name nameBefore(std::size_t sign, std::size_t from) const {
        const std::size_t end = skipBack(sign, from, isBlank);
        const std::size_t word = skipBack(end, from, belongsToName);
        Name best = {word == end ? sign : word, std::nullopt};
        std::size_t first = word;
        for (int words = 1; words <= 3 && first != end; ++words) {
            if (const auto subject = partSubject(text.substr(first, end - first)))
                best = {first, subject};
            first = skipBack(skipBack(first, from, isBlank), from, belongsToName);
        }
        first = std::max(word, end - std::min(end, kLongestName));
        for (; blanksLost && !best.subject && first < end; ++first)
            if (const auto subject = partSubject(text.substr(first, end - first)))
                best = {first, subject};
        return best;
    }

    static std::optional<Subject> partSubject(std::string_view name) {
        const auto subject = subjectOf(name);
        const bool isPart = subject != Subject::text && subject != Subject::intendedInstrument;
        return isPart ? subject : std::nullopt;
    }

    static std::string upToSeparator(std::string_view value) {
        const std::size_t first = value.find_first_not_of(" \t\"");
        if (first == std::string_view::npos)
            return "";
        return trimmed(value.substr(first, value.find_first_of(",;|\t", first) - first));
    }

    std::string_view text;
    bool blanksLost;
};

} // namespace

Parts partsOf(std::string_view value, bool blanksLost) {
    return PartReader(value, blanksLost).read();
}

std::size_t lastLabel(const std::string& value) {
    std::string letters = value;
    std::transform(letters.begin(), letters.end(), letters.begin(), toLower);
    return std::max(letters.rfind("illumin"), letters.rfind("observer"));
}

std::string withoutFirstWord(const std::string& value, std::string_view label) {
    if (squeezed(value.substr(0, label.size())) != label)
        return value;
    const std::string_view rest = std::string_view(value).substr(label.size());
    const std::size_t first = rest.find_first_not_of(" \t,.;:=");
    return trimmed(first == std::string_view::npos ? "" : rest.substr(first));
}

} // namespace qxcms::qc
