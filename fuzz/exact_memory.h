/// @file
/// Inputs in memory of exactly their size, so that a sanitizer sees every step beyond it.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace qxcms::fuzz {

/// A copy of bytes, or of as many bytes as they are cut or filled up with zeros to.
class ExactBytes {
public:
    ExactBytes(const std::uint8_t* first, std::size_t count) : ExactBytes(first, count, count) {}
    ExactBytes(const std::uint8_t* first, std::size_t count, std::size_t wanted)
        : length(wanted), bytes(new std::uint8_t[wanted]()) {
        std::copy_n(first, std::min(count, wanted), bytes.get());
    }

    const std::uint8_t* data() const { return bytes.get(); }
    std::size_t size() const { return length; }

private:
    std::size_t length;
    std::unique_ptr<std::uint8_t[]> bytes;
};

/// A terminated copy of bytes up to the first zero among them.
class ExactText {
public:
    ExactText(const std::uint8_t* first, std::size_t count)
        : length(static_cast<std::size_t>(std::find(first, first + count, std::uint8_t{0}) - first)),
          characters(new char[length + 1]()) {
        std::copy_n(first, length, characters.get());
    }

    const char* c_str() const { return characters.get(); }
    std::size_t size() const { return length; }
    const char* end() const { return c_str() + length; }

private:
    std::size_t length;
    std::unique_ptr<char[]> characters;
};

/// Takes values off the front of an input; a short input gives zeros.
class InputFront {
public:
    InputFront(const std::uint8_t* first, std::size_t count) : position(first), left(count) {}

    std::uint8_t byte() {
        if (left == 0)
            return 0;
        --left;
        return *position++;
    }
    std::uint16_t word() {
        const int low = byte();
        return static_cast<std::uint16_t>(low | byte() << 8);
    }

    const std::uint8_t* rest() const { return position; }
    std::size_t restSize() const { return left; }

private:
    const std::uint8_t* position;
    std::size_t left;
};

} // namespace qxcms::fuzz
