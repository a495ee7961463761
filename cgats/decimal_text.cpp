#include "cgats/decimal_text.h"

#include <algorithm>
#include <cstddef>

#include "base/number_text.h"

namespace qxcms::detail {

namespace {

constexpr std::size_t kGroup = 3; // digits of a group of thousands

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isSign(char c) {
    return c == '+' || c == '-';
}

std::size_t digitsFrom(std::string_view text, std::size_t at) {
    std::size_t count = 0;
    while (at + count < text.size() && isDigit(text[at + count]))
        ++count;
    return count;
}

// Groups of three digits behind `at`, each behind the same mark. @return behind the last one.
std::size_t behindGroups(std::string_view text, std::size_t at) {
    const char mark = at < text.size() ? text[at] : '\0';
    if (mark != '.' && mark != ',' && mark != '\'' && mark != ' ')
        return at;
    while (at < text.size() && text[at] == mark && digitsFrom(text, at + 1) == kGroup)
        at += 1 + kGroup;
    return at;
}

} // namespace

bool isDecimalNumber(std::string_view text) noexcept {
    std::size_t at = !text.empty() && isSign(text[0]) ? 1 : 0;
    const std::size_t whole = digitsFrom(text, at);
    at += whole;
    std::size_t decimals = 0;
    if (at < text.size() && (text[at] == '.' || text[at] == ',')) {
        decimals = digitsFrom(text, at + 1);
        at += 1 + decimals;
    }
    if (whole + decimals == 0)
        return false;
    if (at == text.size() || (text[at] != 'e' && text[at] != 'E'))
        return at == text.size();
    ++at;
    if (at < text.size() && isSign(text[at]))
        ++at;
    const std::size_t exponent = digitsFrom(text, at);
    return exponent > 0 && at + exponent == text.size();
}

std::string withPointMoved(std::string_view number, int places) {
    const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
    std::string mantissa(number.substr(0, mark));
    std::replace(mantissa.begin(), mantissa.end(), ',', '.');
    if (mark < number.size()) {
        const int exponent = parseInt(number.data() + mark + 1, number.data() + number.size());
        return mantissa + number[mark] + std::to_string(exponent + places);
    }
    const std::string sign = isSign(mantissa[0]) ? mantissa.substr(0, 1) : "";
    std::string digits = mantissa.substr(sign.size());
    std::size_t point = std::min(digits.find('.'), digits.size());
    digits.erase(std::remove(digits.begin(), digits.end(), '.'), digits.end());
    const auto shift = static_cast<std::size_t>(std::abs(places));
    if (places > 0) {
        point += shift;
        if (digits.size() < point)
            digits.append(point - digits.size(), '0');
    } else {
        if (point <= shift)
            digits.insert(0, shift + 1 - point, '0');
        point = std::max(point, shift + 1) - shift;
    }
    const std::size_t first = std::min(digits.find_first_not_of('0'), point - 1);
    const std::string decimals = digits.substr(point);
    return sign + digits.substr(first, point - first) + (decimals.empty() ? "" : '.' + decimals);
}

std::string withoutThousands(std::string_view text, char certain) {
    const std::size_t first = !text.empty() && isSign(text[0]) ? 1 : 0;
    const std::size_t leading = digitsFrom(text, first);
    const std::size_t groups = first + leading;
    const std::size_t behind = behindGroups(text, groups);
    if (leading == 0 || leading > kGroup || behind == groups)
        return "";
    const char mark = text[groups];
    const bool onePointGroup = behind - groups == 1 + kGroup && behind == text.size();
    if (onePointGroup && (mark == '.' || mark == ',') && mark != certain)
        return "";
    std::string plain(text.substr(0, behind));
    plain.erase(std::remove(plain.begin(), plain.end(), mark), plain.end());
    if (behind == text.size())
        return plain;
    const char point = text[behind];
    const bool isPoint = (point == '.' || point == ',') && point != mark;
    if (!isPoint || behind + 1 + digitsFrom(text, behind + 1) != text.size())
        return "";
    return plain + '.' + std::string(text.substr(behind + 1));
}

char thousandsMark(std::string_view text) {
    const std::size_t first = !text.empty() && isSign(text[0]) ? 1 : 0;
    return withoutThousands(text).empty() ? '\0' : text[first + digitsFrom(text, first)];
}

} // namespace qxcms::detail
