// What is brought into form is read by the ordinary reader, and is in form.
#include <cstddef>
#include <cstdint>
#include <string>

#include "cgats/row_scan.h"
#include "cgats/tcgats.h"
#include "cgats/tcgatsnormalizer.h"
#include "fuzz/must.h"

namespace {

using namespace qxcms::fuzz;
namespace detail = qxcms::detail;

void expectPlaces(const TCgatsNormalizer& normalizer) {
    for (int i = 0; i < normalizer.GetNrLiberties(); ++i) {
        const TCgatsLiberty& liberty = *normalizer.GetLiberty(i);
        must(liberty.line >= 1 && liberty.column >= 1, "a liberty has a place");
        must(!liberty.done.empty(), "a liberty says what was done");
        must(i == 0 || normalizer.GetLiberty(i - 1)->line <= liberty.line,
             "liberties stand in the order of the text");
    }
}

// A line too many stays too many.
bool isLasting(const TCgatsLiberty& liberty) {
    return liberty.kind == TCgatsLiberty::kLineNotKept;
}

void normalizeAgain(const TCgatsNormalizer& first) {
    TCgatsNormalizer second;
    must(second.Normalize(first.GetText()) == 0, "what is in form is accepted again");
    must(second.GetText() == first.GetText(), "what is in form stays as it is");
    for (int i = 0; i < second.GetNrLiberties(); ++i)
        must(isLasting(*second.GetLiberty(i)), "what is in form needs no liberty");
}

void expectSameRows(const std::string& text) {
    for (std::size_t first = 0; first < text.size(); ++first) {
        const detail::OutlineRow fast = detail::scanRow(text, first);
        const detail::OutlineRow plain = detail::scanRowPlainly(text, first);
        must(fast.line.last == plain.line.last && fast.large == plain.large &&
                 fast.strange == plain.strange && fast.values == plain.values &&
                 fast.openQuote == plain.openQuote && fast.special == plain.special &&
                 fast.hasNul == plain.hasNul && fast.tooLong == plain.tooLong &&
                 fast.hasSpace == plain.hasSpace && fast.hasSign == plain.hasSign,
             "a line counts the same in blocks and by the character");
        first = fast.line.last;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    expectSameRows(bytes);
    TCgatsNormalizer normalizer;
    const int code = normalizer.Normalize(bytes);
    must((code != 0) == (normalizer.GetRefusal() != nullptr), "a refusal says why");
    expectPlaces(normalizer);
    if (code != 0) {
        const TCgatsRefusal& refusal = *normalizer.GetRefusal();
        must(refusal.code == code && refusal.line >= 1 && refusal.column >= 1, "a refusal has a place");
        must(!refusal.expected.empty(), "a refusal says what was expected");
        return 0;
    }
    must(normalizer.GetNrLiberties() > 0 || normalizer.GetText() == bytes, "a change is listed");
    TCgats document;
    must(document.ReadFromBuffer(normalizer.GetText().c_str()) == 0, "what is in form can be read");
    normalizeAgain(normalizer);
    return 0;
}
