/// @file
/// Numbers side by side, in the registers of AVX2 and FMA. Internal.
#pragma once

#include <immintrin.h>

#include <cstdint>

namespace qxcms::detail {

namespace {

constexpr int kLaneBytes = 32;

using Floats = float __attribute__((vector_size(kLaneBytes)));
using Doubles = double __attribute__((vector_size(kLaneBytes)));

/// x * y + z, rounded once.
inline Floats fused(Floats x, Floats y, Floats z) {
    return _mm256_fmadd_ps(x, y, z);
}
inline Doubles fused(Doubles x, Doubles y, Doubles z) {
    return _mm256_fmadd_pd(x, y, z);
}

/// The signs, the first lane in the lowest bit.
inline std::uint64_t signsOf(Floats lanes) {
    return static_cast<std::uint32_t>(_mm256_movemask_ps(lanes));
}
inline std::uint64_t signsOf(Doubles lanes) {
    return static_cast<std::uint32_t>(_mm256_movemask_pd(lanes));
}

} // namespace

} // namespace qxcms::detail
