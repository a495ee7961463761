#include "cgats/row_scan.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstring>

#include "cgats/tcgats.h"

namespace qxcms::detail {

namespace {

// Behind the quote that closes the value that starts at `first`; `last` when there is none.
std::size_t behindQuoted(std::string_view text, std::size_t first, std::size_t last, bool doubled) {
    for (std::size_t at = first + 1; at < last; ++at) {
        if (text[at] != '"')
            continue;
        if (!doubled || at + 1 == last || text[at + 1] != '"')
            return at + 1;
        ++at;
    }
    return last + 1;
}

Cell quotedCell(std::size_t first, std::size_t behind, std::size_t last) {
    const bool closed = behind <= last;
    return closed ? Cell{{first, behind}, {first + 1, behind - 1}, true, true}
                  : Cell{{first, last}, {first + 1, last}, true, false};
}

std::vector<Cell> cells(std::string_view text, Span line, bool doubled) {
    std::vector<Cell> found;
    for (std::size_t at = line.first; at < line.last;) {
        if (isBlank(text[at])) {
            ++at;
            continue;
        }
        if (text[at] == '"') {
            found.push_back(quotedCell(at, behindQuoted(text, at, line.last, doubled), line.last));
        } else {
            std::size_t last = at;
            while (last < line.last && !isBlank(text[last]))
                ++last;
            found.push_back({{at, last}, {at, last}, false, true});
        }
        at = found.back().whole.last;
    }
    return found;
}

/// Goes along a line of samples.
class RowCounter {
public:
    RowCounter(std::string_view what, std::size_t first)
        : begin(what.data()), at(what.data() + first),
          end(what.data() + what.size()), counted{{first, first}, 0, 0, 0, false, false, false, false} {}

    bool atLineEnd() const { return at == end || isLineEnd(*at); }

    OutlineRow row() {
        endRun();
        counted.line.last = static_cast<std::size_t>(at - begin);
        return counted;
    }

    void takeCharacter() {
        const char c = *at;
        if (c == '"' && !within) {
            takeQuoted();
            return;
        }
        counted.special = counted.special || c == '"' || c == ',' || c == '#';
        counted.hasNul = counted.hasNul || c == '\0';
        const bool starts = !isBlank(c) && !within;
        counted.values += starts ? 1 : 0;
        const bool isSecond = firstIsNoPoint && !isBlank(c) && c != '.';
        const bool isStrange = !isBlank(c) && !isPlain(c);
        if (isSecond || isStrange)
            counted.large |= bitOfValue(counted.values - 1);
        if (isStrange)
            counted.strange |= bitOfValue(counted.values - 1);
        firstIsNoPoint = starts && c != '.';
        within = !isBlank(c);
        ++run;
        if (!within)
            endRun(1);
        ++at;
    }

    /// Takes up to 64 characters at once, not beyond a quote or the line end. @return false where there are
    /// too few.
    bool takeBlock();

private:
    // Digits, the minus sign, the point and the character between.
    static bool isPlain(char c) { return c >= '-' && c <= '9'; }

    // Of the characters so far the last `more` do not belong to the value.
    void endRun(std::size_t more = 0) {
        counted.tooLong = counted.tooLong || run - more > TCgats::kMaxSampleValue;
        run = 0;
    }

    void takeQuoted() {
        counted.special = true;
        ++counted.values;
        counted.large |= bitOfValue(counted.values - 1);
        counted.strange |= bitOfValue(counted.values - 1);
        endRun();
        const char* const closing =
            std::find_if(at + 1, end, [](char c) { return c == '"' || isLineEnd(c); });
        counted.openQuote = closing == end || *closing != '"';
        counted.hasNul = counted.hasNul || std::find(at, closing, '\0') != closing;
        run = static_cast<std::size_t>(closing - at) - 1;
        endRun();
        at = counted.openQuote ? closing : closing + 1;
        within = false;
        firstIsNoPoint = false;
    }

    const char* const begin;
    const char* at;
    const char* const end;
    OutlineRow counted;
    std::size_t run = 0;         // the characters of the value so far
    bool within = false;         // the character before belongs to a value
    bool firstIsNoPoint = false; // and is its first one and no point
};

#if defined(__SSE2__)

constexpr int kBlock = 64;
constexpr int kLane = 16;

/// Characters side by side; comparing two lanes gives all bits of those that compare.
using Lane = unsigned char __attribute__((vector_size(kLane)));

/// Which of 64 characters `test` tells, the first one in the lowest bit.
template <class Test>
std::uint64_t maskOf(const char* at, Test&& test) {
    using Signed = char __attribute__((vector_size(kLane)));
    std::uint64_t mask = 0;
    for (int i = 0; i < kBlock; i += kLane) {
        Lane characters;
        std::memcpy(&characters, at + i, kLane);
        const int told = __builtin_ia32_pmovmskb128(reinterpret_cast<Signed>(test(characters)));
        mask |= std::uint64_t{static_cast<std::uint16_t>(told)} << i;
    }
    return mask;
}

int countOf(std::uint64_t bits) {
    bits -= (bits >> 1) & 0x5555555555555555U;
    bits = (bits & 0x3333333333333333U) + ((bits >> 2) & 0x3333333333333333U);
    bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0FU;
    return static_cast<int>((bits * 0x0101010101010101U) >> 56);
}

bool RowCounter::takeBlock() {
    if (end - at < kBlock)
        return false;
    const std::uint64_t blanks = maskOf(at, [](Lane c) { return (c == ' ') | (c == '\t'); });
    const std::uint64_t plain = maskOf(at, [](Lane c) { return c - '-' <= '9' - '-'; });
    const std::uint64_t points = maskOf(at, [](Lane c) { return c == '.'; });
    std::uint64_t stops = 0;
    if (~(blanks | plain) != 0)
        stops = maskOf(at, [](Lane c) { return (c == '\n') | (c == '\r') | (c == '"'); });
    const int length = stops == 0 ? kBlock : std::countr_zero(stops);
    if (length == 0)
        return false;
    const std::uint64_t taken = ~std::uint64_t{0} >> (kBlock - length);
    const std::uint64_t valued = ~blanks & taken;
    const std::uint64_t gaps = blanks & taken;
    if (gaps == 0) {
        run += static_cast<std::size_t>(length);
    } else {
        run += static_cast<std::size_t>(std::countr_zero(gaps));
        endRun();
        const int trailing = length - kBlock + std::countl_zero(gaps);
        run = static_cast<std::size_t>(trailing);
    }
    const std::uint64_t starts = valued & ~(valued << 1 | (within ? 1U : 0U));
    const std::uint64_t firsts = starts & ~points;
    const std::uint64_t seconds = (firsts << 1 | (firstIsNoPoint ? 1U : 0U)) & ~points;
    const auto bitAt = [&](std::uint64_t bits) {
        return bitOfValue(counted.values + countOf(starts & (bits ^ (bits - 1))) - 1);
    };
    for (std::uint64_t bits = seconds & valued; bits != 0; bits &= bits - 1)
        counted.large |= bitAt(bits);
    for (std::uint64_t bits = ~plain & valued; bits != 0; bits &= bits - 1) {
        const char c = at[std::countr_zero(bits)];
        counted.special = counted.special || c == ',' || c == '#';
        counted.hasNul = counted.hasNul || c == '\0';
        counted.strange |= bitAt(bits);
    }
    counted.large |= counted.strange;
    counted.values += countOf(starts);
    within = (valued >> (length - 1)) != 0;
    firstIsNoPoint = (firsts >> (length - 1)) != 0;
    at += length;
    return true;
}

#else

bool RowCounter::takeBlock() {
    return false;
}

#endif

} // namespace

OutlineRow scanRowPlainly(std::string_view text, std::size_t first) noexcept {
    RowCounter counter(text, first);
    while (!counter.atLineEnd())
        counter.takeCharacter();
    return counter.row();
}

OutlineRow scanRow(std::string_view text, std::size_t first) noexcept {
    RowCounter counter(text, first);
    while (!counter.atLineEnd())
        if (!counter.takeBlock())
            counter.takeCharacter();
    return counter.row();
}

std::vector<Cell> cellsOf(std::string_view text, Span line) {
    return cells(text, line, false);
}

std::vector<Cell> cellsWithDoubledQuotes(std::string_view text, Span line) {
    return cells(text, line, true);
}

std::vector<Cell> cellsBetweenTabs(std::string_view text, Span line) {
    std::vector<Cell> found;
    for (std::size_t at = line.first; at < line.last;) {
        const std::size_t tab = findIn(text, {at, line.last}, "\t");
        const Span whole = withoutBlanks(text, {at, tab});
        const bool quoted = !whole.empty() && text[whole.first] == '"';
        const bool closed = quoted && whole.length() > 1 && text[whole.last - 1] == '"';
        found.push_back({whole,
                         {whole.first + (quoted ? 1 : 0), whole.last - (closed ? 1 : 0)},
                         quoted,
                         closed || !quoted});
        at = tab + 1;
    }
    return found;
}

std::vector<Cell> cellsBetweenTabs(std::string_view text, Span line, std::size_t columns) {
    std::vector<Cell> found = cellsBetweenTabs(text, line);
    while (found.size() > columns && found.back().whole.empty())
        found.pop_back();
    const Span end{line.last, line.last};
    if (found.size() > 1)
        while (found.size() < columns)
            found.push_back({end, end, false, true});
    return found;
}

} // namespace qxcms::detail
