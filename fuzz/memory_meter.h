/// @file
/// How much heap memory an operation needs at its peak.
#pragma once

#include <cstddef>

namespace qxcms::fuzz {

/// Watches the heap from its construction on. A program that uses it replaces the allocation functions of the
/// language, or hangs itself into those of the address sanitizer. One at a time.
class MemoryMeter {
public:
    MemoryMeter();

    /// The most bytes that were in use at once, beyond those in use at first. Without a sanitizer these are
    /// the bytes that the heap hands out, which are more than were asked for.
    std::size_t peak() const;

private:
    std::ptrdiff_t inUseAtFirst;
};

/// What reading `size` bytes may need: 64 bytes for each, and 64 KiB.
constexpr std::size_t allowedMemory(std::size_t size) {
    return 64 * size + 64 * 1024;
}

} // namespace qxcms::fuzz
