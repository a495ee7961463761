/// @file
/// The boundary guard: no exception leaves the library.
#pragma once

#include <utility>

namespace qxcms::detail {

/// Runs `f` and returns its result; an exception on the way becomes `onFailure`.
template <class Result, class Function>
Result guarded(Result onFailure, Function&& f) noexcept {
    try {
        return std::forward<Function>(f)();
    } catch (...) {
        return onFailure;
    }
}

} // namespace qxcms::detail
