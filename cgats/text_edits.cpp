#include "cgats/text_edits.h"

#include <algorithm>
#include <iterator>

namespace qxcms::detail {

void TextEdits::sort() {
    sortUnlessSorted(edits, [](const Edit& a, const Edit& b) {
        return a.what.first != b.what.first ? a.what.first < b.what.first : a.what.empty() && !b.what.empty();
    });
    std::size_t taken = 0;
    const auto isWithinEarlier = [&](const Edit& edit) {
        const bool within = edit.what.first < taken;
        taken = std::max(taken, within ? taken : edit.what.last);
        return within;
    };
    edits.erase(std::remove_if(edits.begin(), edits.end(), isWithinEarlier), edits.end());
    std::size_t changed = 0;
    std::size_t at = 0;
    for (Edit& edit : edits) {
        changed += edit.what.first - at;
        edit.changedFirst = changed;
        changed += edit.by.size();
        at = edit.what.last;
    }
}

std::string TextEdits::appliedTo(std::string_view text) const {
    std::string changed;
    changed.reserve(text.size());
    std::size_t at = 0;
    for (const Edit& edit : edits) {
        changed.append(text, at, edit.what.first - at);
        changed += edit.by;
        at = edit.what.last;
    }
    changed.append(text, at);
    return changed;
}

std::size_t TextEdits::sourceOf(std::size_t position) const {
    const auto behind =
        std::upper_bound(edits.begin(), edits.end(), position,
                         [](std::size_t place, const Edit& edit) { return place < edit.changedFirst; });
    if (behind == edits.begin())
        return position;
    const Edit& edit = *std::prev(behind);
    const std::size_t into = position - edit.changedFirst;
    return into < edit.by.size() ? edit.what.first : edit.what.last + (into - edit.by.size());
}

} // namespace qxcms::detail
