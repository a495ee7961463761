/// @file
/// Reads blocks of a line of samples with the instructions that a source file is compiled for; included by
/// one source file for each. Nothing but this is to be compiled there: the linker would be free to use
/// functions that other files need too in the form that not every processor runs. Internal.
#pragma once

#include "cgats/row_block.h"

namespace qxcms::detail {

namespace {

constexpr int kBlock = 64;
#if defined(__AVX2__)
constexpr int kLane = 32;
#else
constexpr int kLane = 16;
#endif

/// Characters side by side; comparing two lanes gives all bits of those that compare.
using Lane = unsigned char __attribute__((vector_size(kLane)));
using SignedLane = char __attribute__((vector_size(kLane)));

/// The highest bit of each character.
inline std::uint64_t highBits(SignedLane lane) {
#if defined(__AVX2__)
    return static_cast<std::uint32_t>(__builtin_ia32_pmovmskb256(lane));
#else
    return static_cast<std::uint16_t>(__builtin_ia32_pmovmskb128(lane));
#endif
}

/// Which of 64 characters `test` tells, the first one in the lowest bit.
template <class Test>
std::uint64_t maskOf(const char* at, Test&& test) {
    std::uint64_t mask = 0;
    for (int i = 0; i < kBlock; i += kLane) {
        Lane characters;
        __builtin_memcpy(&characters, at + i, kLane);
        mask |= highBits(reinterpret_cast<SignedLane>(test(characters))) << i;
    }
    return mask;
}

inline int trailingZeros(std::uint64_t bits) {
    return __builtin_ctzll(bits);
}

inline int countOf(std::uint64_t bits) {
#if defined(__POPCNT__)
    return __builtin_popcountll(bits);
#else
    bits -= (bits >> 1) & 0x5555555555555555U;
    bits = (bits & 0x3333333333333333U) + ((bits >> 2) & 0x3333333333333333U);
    bits = (bits + (bits >> 4)) & 0x0F0F0F0F0F0F0F0FU;
    return static_cast<int>((bits * 0x0101010101010101U) >> 56);
#endif
}

/// The bits of `bits` at the places of `places`, side by side.
inline std::uint64_t gathered(std::uint64_t bits, std::uint64_t places) {
#if defined(__BMI2__)
    return __builtin_ia32_pext_di(bits, places);
#else
    std::uint64_t result = 0;
    for (std::uint64_t rest = bits & places; rest != 0; rest &= rest - 1)
        result |= std::uint64_t{1} << countOf(places & ~rest & (rest - 1));
    return result;
#endif
}

/// `bits`, of which the lowest stands for this value, at their places; -1 for a value that is not there.
inline std::uint64_t fromValue(int value, std::uint64_t bits) {
    constexpr int kLast = 63;
    constexpr std::uint64_t kLastBit = std::uint64_t{1} << kLast;
    if (value <= 0)
        return bits >> -value;
    if (value > kLast)
        return bits != 0 ? kLastBit : 0;
    return bits << value | (bits >> (kLast + 1 - value) != 0 ? kLastBit : 0);
}

/// The characters that are not digits, points or minus signs.
inline void takeOthers(const char* at, std::uint64_t others, std::uint64_t starts, RowState& state) {
    std::uint64_t strange = 0;
    for (; others != 0; others &= others - 1) {
        const char c = at[trailingZeros(others)];
        state.special = state.special || c == ',' || c == '#';
        state.hasSign = state.hasSign || c == '#';
        state.hasNul = state.hasNul || c == '\0';
        strange |= std::uint64_t{1} << countOf(starts & (others ^ (others - 1)));
    }
    strange = fromValue(state.values - 1, strange);
    state.strange |= strange;
    state.large |= strange;
}

/// The lengths of values between blanks.
inline void takeGaps(std::uint64_t gaps, int length, RowState& state) {
    if (gaps == 0) {
        state.run += static_cast<std::size_t>(length);
        return;
    }
    state.run += static_cast<std::size_t>(trailingZeros(gaps));
    state.longest = state.run > state.longest ? state.run : state.longest;
    const int trailing = length - kBlock + __builtin_clzll(gaps);
    state.run = static_cast<std::size_t>(trailing);
}

[[maybe_unused]] const char* readRowBlocks(const char* at, const char* end, RowState* place) {
    RowState& state = *place;
    while (end - at >= kBlock) {
        const std::uint64_t spaces = maskOf(at, [](Lane c) { return c == ' '; });
        const std::uint64_t blanks = spaces | maskOf(at, [](Lane c) { return c == '\t'; });
        const std::uint64_t plain = maskOf(at, [](Lane c) { return c - '-' <= '9' - '-'; });
        const std::uint64_t points = maskOf(at, [](Lane c) { return c == '.'; });
        std::uint64_t stops = 0;
        if (~(blanks | plain) != 0)
            stops = maskOf(at, [](Lane c) { return (c == '\n') | (c == '\r') | (c == '"'); });
        const int length = stops == 0 ? kBlock : trailingZeros(stops);
        if (length == 0)
            break;
        const std::uint64_t taken = ~std::uint64_t{0} >> (kBlock - length);
        const std::uint64_t valued = ~blanks & taken;
        const std::uint64_t starts = valued & ~(valued << 1 | (state.within ? 1U : 0U));
        const std::uint64_t firsts = starts & ~points;
        const std::uint64_t seconds = valued & ~points;
        const std::uint64_t large = gathered(seconds >> 1 & firsts, starts) << 1;
        state.hasSpace = state.hasSpace || (spaces & taken) != 0;
        takeGaps(blanks & taken, length, state);
        takeOthers(at, ~plain & valued, starts, state);
        state.large |= fromValue(state.values - 1, large | (state.firstIsNoPoint ? seconds & 1U : 0U));
        state.values += countOf(starts);
        state.within = (valued >> (length - 1)) != 0;
        state.firstIsNoPoint = (firsts >> (length - 1)) != 0;
        at += length;
        if (stops != 0)
            break;
    }
    return at;
}

inline bool mayBeginPlainRow(const char* at) {
    const bool isPlain = (at[0] >= '0' && at[0] <= '9') || at[0] == '-' || at[0] == '.';
    return isPlain && at[1] != 'N';
}

[[maybe_unused]] const char* readPlainRows(const char* at, const char* end, PlainRows* rows) {
    PlainRows all = *rows;
    while (end - at >= kBlock && mayBeginPlainRow(at)) {
        RowState state{};
        const char* const last = readRowBlocks(at, end, &state);
        if (last == end || *last != '\n')
            break;
        const std::size_t longest = state.run > state.longest ? state.run : state.longest;
        ++all.count;
        all.fewestValues = state.values < all.fewestValues ? state.values : all.fewestValues;
        all.mostValues = state.values > all.mostValues ? state.values : all.mostValues;
        all.large |= state.large;
        all.strange |= state.strange;
        all.longest = longest > all.longest ? longest : all.longest;
        all.special = all.special || state.special;
        all.hasSign = all.hasSign || state.hasSign;
        all.hasNul = all.hasNul || state.hasNul;
        all.hasSpace = all.hasSpace || state.hasSpace;
        at = last + 1;
    }
    *rows = all;
    return at;
}

} // namespace

} // namespace qxcms::detail
