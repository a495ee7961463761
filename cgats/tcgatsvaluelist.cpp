#include "cgats/tcgatsvaluelist.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>

#include "base/number_text.h"

namespace {

// Small, because many columns of one value each are what a text can make most of.
constexpr std::int64_t kFirstCapacity = 4;

// Makes `entries` an array of `grown` entries that starts with the present ones; the new ones are zero.
template <class Entry>
bool enlarge(std::unique_ptr<Entry[]>& entries, std::int32_t& capacity, int grown) {
    if (grown <= capacity)
        return true;
    std::unique_ptr<Entry[]> larger(new (std::nothrow) Entry[static_cast<std::size_t>(grown)]());
    if (!larger)
        return false;
    std::copy_n(entries.get(), capacity, larger.get());
    entries = std::move(larger);
    capacity = grown;
    return true;
}

std::int32_t truncated(double x) {
    if (std::isnan(x))
        return 0;
    if (x >= std::numeric_limits<std::int32_t>::max())
        return std::numeric_limits<std::int32_t>::max();
    if (x <= std::numeric_limits<std::int32_t>::min())
        return std::numeric_limits<std::int32_t>::min();
    return static_cast<std::int32_t>(x);
}

} // namespace

TCgatsValueList::TCgatsValueList(int newCount) : count(newCount) {}

TCgatsValueList::~TCgatsValueList() = default;

bool TCgatsValueList::holds(int index) const {
    return index >= 0 && index < count;
}

int TCgatsValueList::grownCapacity(int index, int capacity) const {
    if (index < capacity)
        return capacity;
    const std::int64_t wanted =
        std::max({std::int64_t{2} * capacity, std::int64_t{index} + 1, kFirstCapacity});
    return static_cast<int>(std::min<std::int64_t>(wanted, count));
}

// Floating-point numbers.

TCgatsValueListDouble::TCgatsValueListDouble(int newCount) : TCgatsValueList(newCount), capacity(0) {}

TCgatsValueListDouble::~TCgatsValueListDouble() = default;

double* TCgatsValueListDouble::Reserve(int number) {
    const int wanted = std::clamp(number, std::min(1, GetNumber()), std::max(GetNumber(), 0));
    return enlarge(entries, capacity, wanted) ? entries.get() : nullptr;
}

bool TCgatsValueListDouble::SetNumber(int index, double number) {
    if (!holds(index) || !enlarge(entries, capacity, grownCapacity(index, capacity)))
        return false;
    entries[static_cast<std::size_t>(index)] = number;
    return true;
}

std::intptr_t TCgatsValueListDouble::SetValue(int index, const char* text) {
    return text != nullptr && SetNumber(index, qxcms::detail::textToDouble(text)) ? index : kNotStored;
}

std::int32_t TCgatsValueListDouble::GetInt(int index) const {
    return truncated(GetDouble(index));
}

double TCgatsValueListDouble::GetDouble(int index) const {
    return index >= 0 && index < capacity ? entries[static_cast<std::size_t>(index)] : 0.0;
}

const char* TCgatsValueListDouble::GetString(int) const {
    return nullptr;
}

// Integers.

TCgatsValueListInt::TCgatsValueListInt(int newCount) : TCgatsValueList(newCount), capacity(0) {}

TCgatsValueListInt::~TCgatsValueListInt() = default;

bool TCgatsValueListInt::SetNumber(int index, int number) {
    if (!holds(index) || !enlarge(entries, capacity, grownCapacity(index, capacity)))
        return false;
    entries[static_cast<std::size_t>(index)] = number;
    return true;
}

std::intptr_t TCgatsValueListInt::SetValue(int index, const char* text) {
    const int number = qxcms::detail::textToInt(text);
    return text != nullptr && SetNumber(index, number) ? number : kNotStored;
}

std::int32_t TCgatsValueListInt::GetInt(int index) const {
    return index >= 0 && index < capacity ? entries[static_cast<std::size_t>(index)] : 0;
}

double TCgatsValueListInt::GetDouble(int index) const {
    return GetInt(index);
}

const char* TCgatsValueListInt::GetString(int) const {
    return nullptr;
}

// Strings. Each is one piece of memory: a node, then the text. A string that is replaced stays behind its
// successor until the list goes.

struct TCgatsValueListString::Node {
    Node* replaced;

    char* text() { return reinterpret_cast<char*>(this + 1); }
};

TCgatsValueListString::TCgatsValueListString(int newCount) : TCgatsValueList(newCount), capacity(0) {}

TCgatsValueListString::~TCgatsValueListString() {
    for (std::int32_t i = 0; i < capacity; ++i)
        for (Node* node = entries[static_cast<std::size_t>(i)]; node != nullptr;) {
            Node* const replaced = node->replaced;
            ::operator delete(node);
            node = replaced;
        }
}

std::intptr_t TCgatsValueListString::SetValue(int index, const char* text) {
    if (text == nullptr || !holds(index) || !enlarge(entries, capacity, grownCapacity(index, capacity)))
        return kNotStored;
    const std::size_t size = std::strlen(text) + 1;
    void* const storage = ::operator new(sizeof(Node) + size, std::nothrow);
    if (storage == nullptr)
        return kNotStored;
    Node*& entry = entries[static_cast<std::size_t>(index)];
    entry = new (storage) Node{entry};
    std::memcpy(entry->text(), text, size);
    return reinterpret_cast<std::intptr_t>(entry->text());
}

std::int32_t TCgatsValueListString::GetInt(int) const {
    return 0;
}

double TCgatsValueListString::GetDouble(int) const {
    return 0.0;
}

const char* TCgatsValueListString::GetString(int index) const {
    if (index < 0 || index >= capacity)
        return nullptr;
    Node* const node = entries[static_cast<std::size_t>(index)];
    return node == nullptr ? nullptr : node->text();
}
