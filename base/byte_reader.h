/// @file
/// Bounded reading of untrusted bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace qxcms::detail {

/// A position in memory with an end that is never passed. A read that does not fit answers false and moves
/// nothing.
class ByteReader {
public:
    /// Reads at most `size` bytes from `data`.
    ByteReader(const void* data, std::size_t size) noexcept
        : position(static_cast<const unsigned char*>(data)), left(size) {}

    /// For serialised forms whose length only their content tells: the caller vouches for the memory.
    static ByteReader trusting(const void* data) noexcept { return ByteReader(data, kUnbounded); }

    bool isUnbounded() const noexcept { return left > kUnbounded / 2; }
    const unsigned char* at() const noexcept { return position; }
    std::size_t remaining() const noexcept { return left; }

    /// Moves on by `count` bytes.
    bool skip(std::size_t count) noexcept {
        if (count > left)
            return false;
        position += count;
        left -= count;
        return true;
    }

    /// Reads one 16-bit word in the machine's byte order, at any address.
    bool readWord(std::uint16_t& word) noexcept {
        if (left < sizeof word)
            return false;
        std::memcpy(&word, position, sizeof word);
        return skip(sizeof word);
    }

private:
    static constexpr std::size_t kUnbounded = SIZE_MAX / 2;

    const unsigned char* position;
    std::size_t left;
};

} // namespace qxcms::detail
