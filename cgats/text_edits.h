/// @file
/// Changes of a text, collected first and applied in one go. Internal.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "cgats/text_span.h"

namespace qxcms::detail {

/// Sorts a long list that seldom is out of order; equal ones keep theirs.
template <class List, class Order>
void sortUnlessSorted(List& list, Order&& order) {
    if (!std::is_sorted(list.begin(), list.end(), order))
        std::stable_sort(list.begin(), list.end(), order);
}

class TextEdits {
public:
    /// What is put at one place stays in the order of the calls.
    void put(std::size_t at, std::string what) { edits.push_back({{at, at}, std::move(what), 0}); }
    void replace(Span what, std::string by) { edits.push_back({what, std::move(by), 0}); }
    void remove(Span what) { edits.push_back({what, {}, 0}); }

    bool empty() const { return edits.empty(); }

    /// Brings the changes into the order of the text. A change within a part that an earlier one takes out
    /// has no effect.
    void sort();
    /// The changed text; asks after sort().
    std::string appliedTo(std::string_view text) const;
    /// The position in the text of a position in the changed text; asks after sort().
    std::size_t sourceOf(std::size_t position) const;

private:
    struct Edit {
        Span what;
        std::string by;
        std::size_t changedFirst = 0; // where `by` begins in the changed text
    };

    std::vector<Edit> edits;
};

} // namespace qxcms::detail
