#include "cgats/name_index.h"

#include <chrono>

#include "base/guarded.h"

namespace qxcms::detail {

namespace {

constexpr std::size_t kFewestSlots = 8;

// Odd, its bits without a pattern: the golden ratio as a fraction of 2^64.
constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15u;

unsigned char lower(char c) {
    const bool upper = c >= 'A' && c <= 'Z';
    return static_cast<unsigned char>(upper ? c - 'A' + 'a' : c);
}

} // namespace

// The hashes differ from index to index, so that nobody can write a file whose names all meet in one slot.
NameIndex::NameIndex()
    : seed(static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()) ^
           reinterpret_cast<std::uintptr_t>(this)) {}

std::uint32_t NameIndex::hashOf(const char* name) const {
    std::uint64_t hash = seed;
    for (; *name != '\0'; ++name) {
        hash = (hash ^ lower(*name)) * kMultiplier;
        hash ^= hash >> 32;
    }
    return static_cast<std::uint32_t>(hash);
}

bool NameIndex::reserve(std::int32_t names) {
    // A third of the slots stays empty, so that searches end soon.
    const std::size_t needed = (static_cast<std::size_t>(names) * 3 + 1) / 2;
    if (needed < slots.size())
        return true;
    std::size_t size = slots.empty() ? kFewestSlots : slots.size();
    while (size <= needed)
        size *= 2;
    return guarded(false, [&] {
        std::vector<Slot> larger(size);
        for (const Slot& slot : slots) {
            if (slot.position == kEmpty)
                continue;
            std::size_t place = slot.hash & (size - 1);
            while (larger[place].position != kEmpty)
                place = (place + 1) & (size - 1);
            larger[place] = slot;
        }
        slots = std::move(larger);
        return true;
    });
}

} // namespace qxcms::detail
