/// @file
/// Values side by side that belong to somebody else.
#pragma once

#include <cstddef>

namespace qxcms::qc {

/// A view of `size()` values; what it views outlives it. Made from anything with data() and size().
template <class T>
class Span {
public:
    constexpr Span() = default;
    constexpr Span(T* first, std::size_t count) : begins(first), length(count) {}
    template <class Container>
    constexpr Span(Container& container) : begins(container.data()), length(container.size()) {}
    template <class Container>
    constexpr Span(const Container& container) : begins(container.data()), length(container.size()) {}

    constexpr T* data() const { return begins; }
    constexpr std::size_t size() const { return length; }
    constexpr bool empty() const { return length == 0; }
    constexpr T* begin() const { return begins; }
    constexpr T* end() const { return begins + length; }
    constexpr T& operator[](std::size_t index) const { return begins[index]; }

private:
    T* begins = nullptr;
    std::size_t length = 0;
};

} // namespace qxcms::qc
