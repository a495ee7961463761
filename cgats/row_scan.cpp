#include "cgats/row_scan.h"

#include <algorithm>
#include <cstddef>

#include "base/instruction_set.h"
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
    RowCounter(std::string_view what, std::size_t start)
        : begin(what.data()), first(start), at(what.data() + start), end(what.data() + what.size()) {}

    bool atLineEnd() const { return at == end || isLineEnd(*at); }

    OutlineRow row() {
        endRun();
        const std::size_t last = static_cast<std::size_t>(at - begin);
        return {{first, last},  state.large,   state.strange, state.values,
                openQuote,      state.special, state.hasNul,  state.longest > TCgats::kMaxSampleValue,
                state.hasSpace, state.hasSign};
    }

    void takeCharacter() {
        const char c = *at;
        if (c == '"' && !state.within) {
            takeQuoted();
            return;
        }
        state.special = state.special || c == '"' || c == ',' || c == '#';
        state.hasSign = state.hasSign || c == '#';
        state.hasNul = state.hasNul || c == '\0';
        state.hasSpace = state.hasSpace || c == ' ';
        const bool starts = !isBlank(c) && !state.within;
        state.values += starts ? 1 : 0;
        const bool isSecond = state.firstIsNoPoint && !isBlank(c) && c != '.';
        const bool isStrange = !isBlank(c) && !isPlain(c);
        if (isSecond || isStrange)
            state.large |= bitOfValue(state.values - 1);
        if (isStrange)
            state.strange |= bitOfValue(state.values - 1);
        state.firstIsNoPoint = starts && c != '.';
        state.within = !isBlank(c);
        if (state.within)
            ++state.run;
        else
            endRun();
        ++at;
    }

    /// Takes as many blocks as there are. @return false where there is none.
    bool takeBlocks(RowBlockReader read) {
        const char* const before = at;
        at = read(at, end, &state);
        return at != before;
    }

private:
    // Digits, the minus sign, the point and the character between.
    static bool isPlain(char c) { return c >= '-' && c <= '9'; }

    void endRun() {
        state.longest = std::max(state.longest, state.run);
        state.run = 0;
    }

    void takeQuoted() {
        state.special = true;
        ++state.values;
        state.large |= bitOfValue(state.values - 1);
        state.strange |= bitOfValue(state.values - 1);
        endRun();
        const char* const closing =
            std::find_if(at + 1, end, [](char c) { return c == '"' || isLineEnd(c); });
        openQuote = closing == end || *closing != '"';
        state.hasNul = state.hasNul || std::find(at, closing, '\0') != closing;
        state.run = static_cast<std::size_t>(closing - at) - 1;
        endRun();
        at = openQuote ? closing : closing + 1;
        state.within = false;
        state.firstIsNoPoint = false;
    }

    const char* const begin;
    const std::size_t first;
    const char* at;
    const char* const end;
    RowState state;
    bool openQuote = false;
};

} // namespace

OutlineRow scanRowPlainly(std::string_view text, std::size_t first) noexcept {
    RowCounter counter(text, first);
    while (!counter.atLineEnd())
        counter.takeCharacter();
    return counter.row();
}

const RowReaders& rowReaders() noexcept {
    static const bool useAvx2 =
        instructionSet() >= InstructionSet::kAvx2 && kAvx2RowReaders.blocks != nullptr;
    return useAvx2 ? kAvx2RowReaders : kCommonRowReaders;
}

OutlineRow scanRowWith(RowBlockReader read, std::string_view text, std::size_t first) noexcept {
    RowCounter counter(text, first);
    while (!counter.atLineEnd())
        if (!counter.takeBlocks(read))
            counter.takeCharacter();
    return counter.row();
}

OutlineRow scanRow(std::string_view text, std::size_t first) noexcept {
    const RowBlockReader read = rowReaders().blocks;
    return read == nullptr ? scanRowPlainly(text, first) : scanRowWith(read, text, first);
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
