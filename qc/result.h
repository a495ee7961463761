/// @file
/// A value, or why there is none.
#pragma once

#include <cassert>
#include <utility>
#include <variant>

#include "qc/refusal.h"

namespace qxcms::qc {

/// What an operation answers that may be refused. Ask it before taking the value:
///
///     const auto file = openChart(name);
///     if (!file)
///         return complain(file.refusal());
///     use(*file);
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : content(std::in_place_index<0>, std::move(value)) {}
    Result(Refusal refusal) : content(std::in_place_index<1>, std::move(refusal)) {}

    explicit operator bool() const { return content.index() == 0; }
    bool hasValue() const { return content.index() == 0; }

    /// The value; only where there is one, which is asserted. A temporary gives it away by value, so that a
    /// loop over a part of it keeps it.
    const T& operator*() const& { return *kept(*this); }
    T& operator*() & { return *kept(*this); }
    T operator*() && { return std::move(*kept(*this)); }
    const T* operator->() const& { return kept(*this); }
    T* operator->() & { return kept(*this); }
    /// What a temporary points at would be gone.
    const T* operator->() const&& = delete;

    /// The value, for programs that have exceptions for what goes wrong. The only operation of the interface
    /// that throws.
    /// @throws Refusal where there is none.
    const T& value() const& { return *required(*this); }
    T& value() & { return *required(*this); }
    T value() && { return std::move(*required(*this)); }

    /// Why there is no value; only where there is none, which is asserted.
    const Refusal& refusal() const {
        const Refusal* const why = std::get_if<1>(&content);
        assert(why != nullptr && "there is a value");
        return *why;
    }

private:
    // Of a constant result, or of one that may be changed.
    template <class Self>
    static auto* kept(Self& self) {
        auto* const value = std::get_if<0>(&self.content);
        assert(value != nullptr && "it was refused");
        return value;
    }
    template <class Self>
    static auto* required(Self& self) {
        if (!self)
            throw self.refusal();
        return kept(self);
    }

    std::variant<T, Refusal> content;
};

} // namespace qxcms::qc
