#include "qc/nearest_names.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "qc/printable_text.h"

namespace qxcms::qc {

namespace {

using Row = std::vector<std::size_t>;

std::string lowered(std::string text) {
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    }
    return text;
}

/// The letters to put in, leave out, replace or exchange with their neighbour to make one text of the other;
/// none is touched twice. Row i of the table holds the numbers for the first i letters of `left` and each
/// beginning of `right`; three rows of it are kept.
std::size_t editDistance(const std::string& left, const std::string& right) {
    Row beforeLast(right.size() + 1);
    Row last(right.size() + 1);
    Row current(right.size() + 1);
    for (std::size_t j = 0; j <= right.size(); ++j)
        current[j] = j;
    for (std::size_t i = 1; i <= left.size(); ++i) {
        std::swap(beforeLast, last);
        std::swap(last, current);
        current[0] = i;
        for (std::size_t j = 1; j <= right.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (left[i - 1] == right[j - 1] ? 0 : 1);
            current[j] = std::min({last[j] + 1, current[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && left[i - 1] == right[j - 2] && left[i - 2] == right[j - 1])
                current[j] = std::min(current[j], beforeLast[j - 2] + 1);
        }
    }
    return current.back();
}

/// True when a name of so many letters differs by more than half of them.
bool isFar(std::size_t distance, std::size_t letters) {
    return 2 * distance > letters;
}

} // namespace

std::vector<std::string> nearestNames(const std::string& name, const std::vector<std::string>& known,
                                      std::size_t most) {
    const std::string wanted = lowered(name);
    std::vector<std::pair<std::size_t, std::string>> near;
    for (const std::string& candidate : known) {
        // A text that is so much longer need not be looked at letter by letter.
        if (wanted.size() > candidate.size() && isFar(wanted.size() - candidate.size(), candidate.size()))
            continue;
        const std::size_t distance = editDistance(wanted, lowered(candidate));
        if (!isFar(distance, candidate.size()))
            near.emplace_back(distance, candidate);
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    near.resize(std::min(most, near.size()));
    std::vector<std::string> names;
    names.reserve(near.size());
    for (auto& [distance, text] : near)
        names.push_back(std::move(text));
    return names;
}

std::string unknownName(const std::string& what, const std::string& name, const std::string& like,
                        const std::vector<std::string>& known) {
    const std::vector<std::string> near = nearestNames(like, known);
    return "unknown " + what + " " + quoted(name) +
           (near.empty() ? "" : " (did you mean " + joined(near, " or ") + "?)");
}

} // namespace qxcms::qc
