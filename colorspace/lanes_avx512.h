/// @file
/// Numbers side by side, in the registers of AVX-512 (F and DQ). Internal.
#pragma once

#include <immintrin.h>

#include <cstdint>

namespace qxcms::detail {

namespace {

constexpr int kLaneBytes = 64;

using Floats = float __attribute__((vector_size(kLaneBytes)));
using Doubles = double __attribute__((vector_size(kLaneBytes)));

/// x * y + z, rounded once.
inline Floats fused(Floats x, Floats y, Floats z) {
    return _mm512_fmadd_ps(x, y, z);
}
inline Doubles fused(Doubles x, Doubles y, Doubles z) {
    return _mm512_fmadd_pd(x, y, z);
}

/// The signs, the first lane in the lowest bit.
inline std::uint64_t signsOf(Floats lanes) {
    return _mm512_movepi32_mask(_mm512_castps_si512(lanes));
}
inline std::uint64_t signsOf(Doubles lanes) {
    return _mm512_movepi64_mask(_mm512_castpd_si512(lanes));
}

} // namespace

} // namespace qxcms::detail
