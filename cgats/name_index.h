/// @file
/// Finding a name in a list. Internal.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/utility.h"

namespace qxcms::detail {

/// The positions of the names of a list, found in the time of one look however long the list is. Names
/// compare ignoring the case of ASCII letters; of equal ones the first is found. The list itself keeps the
/// names and shows them: `nameAt(position)` answers a terminated text.
class NameIndex {
public:
    NameIndex();

    /// Makes room for `names` names. @return false, with nothing changed, when there is no memory.
    bool reserve(std::int32_t names);

    /// Takes up the name of the next position; there must be room.
    template <class NameAt>
    void add(const char* name, NameAt&& nameAt) {
        const std::uint32_t hash = hashOf(name);
        std::size_t slot = find(name, hash, nameAt);
        if (slots[slot].position == kEmpty)
            slots[slot] = {hash, count};
        ++count;
    }

    /// @return the position, or -1.
    template <class NameAt>
    std::int32_t find(const char* name, NameAt&& nameAt) const {
        return slots.empty() ? kEmpty : slots[find(name, hashOf(name), nameAt)].position;
    }

private:
    static constexpr std::int32_t kEmpty = -1;

    struct Slot {
        std::uint32_t hash = 0;
        std::int32_t position = kEmpty;
    };

    // The slot that holds the name, or the empty one where it belongs.
    template <class NameAt>
    std::size_t find(const char* name, std::uint32_t hash, NameAt& nameAt) const {
        const std::size_t mask = slots.size() - 1;
        std::size_t slot = hash & mask;
        for (; slots[slot].position != kEmpty; slot = (slot + 1) & mask)
            if (slots[slot].hash == hash && strcmp_ci(nameAt(slots[slot].position), name) == 0)
                break;
        return slot;
    }

    std::uint32_t hashOf(const char* name) const;

    std::uint64_t seed;
    std::int32_t count = 0;
    std::vector<Slot> slots; // a power of two, or none
};

} // namespace qxcms::detail
