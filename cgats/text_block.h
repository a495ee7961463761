/// @file
/// Text on its way into a stream. Internal.
#pragma once

#include <cstddef>
#include <cstring>
#include <ostream>

#include "base/quiet_stream.h"
#include "cgats/tcgatstag.h"

namespace qxcms::detail {

/// Collects text and hands it to a stream in large pieces, as it stands: neither width nor fill, neither
/// flags nor locale of the stream show. Takes no memory of its own.
class TextBlock {
public:
    explicit TextBlock(std::ostream& target) : stream(target) {}
    TextBlock(const TextBlock&) = delete;
    TextBlock& operator=(const TextBlock&) = delete;

    void put(char c) {
        *roomFor(1) = c;
        keep(1);
    }
    void put(const char* text) { put(text, std::strlen(text)); }
    void put(const char* text, std::size_t length) {
        if (length > kSize) {
            flush();
            stream.write(text, static_cast<std::streamsize>(length));
            return;
        }
        std::memcpy(roomFor(length), text, length);
        keep(length);
    }
    /// Room for `length` characters, at most kSize, of which those that are kept are taken up with `keep`.
    char* roomFor(std::size_t length) {
        if (length > kSize - used)
            flush();
        return block + used;
    }
    void keep(std::size_t length) { used += length; }

    /// Hands over what is left. @return whether the stream took everything.
    bool flush() {
        stream.write(block, static_cast<std::streamsize>(used));
        used = 0;
        return stream.good();
    }

private:
    static constexpr std::size_t kSize = 16384;

    std::ostream& stream;
    std::size_t used = 0;
    char block[kSize];
};

/// The line of a tag. @return 0, or 1 (nothing written) for a tag without a keyword.
int writeTagLine(const TCgatsTag& tag, TextBlock& text);

} // namespace qxcms::detail
