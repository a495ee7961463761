/// @file
/// A value, or why there is none.
#pragma once

#include <utility>
#include <variant>

#include "qc/refusal.h"

namespace qxcms::qc {

/// What an operation answers that may be refused.
template <class T>
class Result {
public:
    Result(T value) : content(std::move(value)) {}
    Result(Refusal refusal) : content(std::move(refusal)) {}

    explicit operator bool() const { return std::holds_alternative<T>(content); }

    /// The value; only where there is one. A temporary gives it away.
    const T& operator*() const& { return *std::get_if<T>(&content); }
    T& operator*() & { return *std::get_if<T>(&content); }
    T&& operator*() && { return std::move(*std::get_if<T>(&content)); }
    const T* operator->() const& { return std::get_if<T>(&content); }
    T* operator->() & { return std::get_if<T>(&content); }
    /// What a temporary points at would be gone.
    const T* operator->() const&& = delete;

    /// Why there is no value; only where there is none.
    const Refusal& refusal() const { return *std::get_if<Refusal>(&content); }

private:
    std::variant<T, Refusal> content;
};

} // namespace qxcms::qc
