/// @file
/// Values side by side that belong to somebody else.
#pragma once

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

namespace qxcms::qc {
template <class T>
class Span;
}

namespace qxcms::detail {

template <class T>
inline constexpr bool kIsSpan = false;
template <class T>
inline constexpr bool kIsSpan<qc::Span<T>> = true;

template <class Container>
using ElementOf = std::remove_pointer_t<decltype(std::data(std::declval<Container&>()))>;

/// Whether a Container, itself no Span, holds its values side by side and a Span<T> may show them.
template <class Container, class T, class = void>
struct IsShownBySpan : std::false_type {};

template <class Container, class T>
struct IsShownBySpan<
    Container, T,
    std::void_t<decltype(std::size(std::declval<Container&>())),
                std::enable_if_t<!kIsSpan<std::remove_cv_t<Container>>>,
                std::enable_if_t<std::is_convertible_v<ElementOf<Container> (*)[], T (*)[]>>>>
    : std::true_type {};

} // namespace qxcms::detail

namespace qxcms::qc {

/// A view of `size()` values; what it views outlives it. Made from an array or from anything with data() and
/// size() that somebody keeps: not from a temporary, whose values would be gone.
template <class T>
class Span {
public:
    constexpr Span() = default;
    constexpr Span(T* first, std::size_t count) : begins(first), length(count) {}

    template <class Container, std::enable_if_t<detail::IsShownBySpan<Container, T>::value, int> = 0>
    constexpr Span(Container& container) : begins(std::data(container)), length(std::size(container)) {}
    template <class Container, std::enable_if_t<detail::IsShownBySpan<const Container, T>::value, int> = 0>
    constexpr Span(const Container&& container) = delete;

    /// Values that may be changed, seen as values that may not.
    template <class U,
              std::enable_if_t<!std::is_same_v<U, T> && std::is_convertible_v<U (*)[], T (*)[]>, int> = 0>
    constexpr Span(Span<U> other) : begins(other.data()), length(other.size()) {}

    constexpr T* data() const { return begins; }
    constexpr std::size_t size() const { return length; }
    constexpr bool empty() const { return length == 0; }
    constexpr T* begin() const { return begins; }
    constexpr T* end() const { return begins + length; }
    /// @param index below size().
    constexpr T& operator[](std::size_t index) const { return begins[index]; }

private:
    T* begins = nullptr;
    std::size_t length = 0;
};

} // namespace qxcms::qc
