#include "support/stream_helpers.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <istream>
#include <limits>
#include <ostream>
#include <utility>

#include "base/guarded.h"
#include "base/quiet_stream.h"
#include "platform/utility.h"

static_assert(sizeof(int) == 4, "an integer has four bytes");

namespace {

constexpr std::size_t kRealSize = 4;

/// Uses a stream without a word to the caller but its state.
template <class Stream, class Function>
Stream& quietly(Stream& stream, Function&& use) noexcept {
    const qxcms::detail::QuietStream quiet(stream);
    const bool done = qxcms::detail::guarded(false, [&] {
        std::forward<Function>(use)();
        return true;
    });
    if (!done)
        stream.setstate(std::ios::badbit);
    return stream;
}

// Writing.

void putInt(int value, std::ostream& stream) {
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    stream.write(bytes, sizeof bytes);
}

// Reading.

bool isSpace(int c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// The next character that is no white space, which stays in the stream; that of the end at the end.
int nextVisible(std::istream& stream) {
    int c = stream.peek();
    while (isSpace(c)) {
        stream.get();
        c = stream.peek();
    }
    return c;
}

// Kept on purpose: the white space behind a bracket goes, be it the first byte of an integer
// (streamHelpers.bracket_takesWhiteSpaceThatBeginsAnInteger).
void takeBracket(char bracket, std::istream& stream) {
    nextVisible(stream);
    if (stream.get() != bracket)
        stream.setstate(std::ios::failbit);
    else
        nextVisible(stream);
}

/// @return whether all bytes came.
bool takeBytes(void* bytes, std::size_t count, std::istream& stream) {
    return !stream.read(static_cast<char*>(bytes), static_cast<std::streamsize>(count)).fail();
}

/// @return the length of the text that follows; 0 with failbit set when there is none or it is negative.
int takeLength(std::istream& stream) {
    int length = 0;
    if (!takeBytes(&length, sizeof length, stream))
        return 0;
    if (length < 0)
        stream.setstate(std::ios::failbit);
    return std::max(length, 0);
}

/// Reads up to a terminator and keeps nothing.
void skipUpTo(const std::string& terminator, std::istream& stream) {
    const std::size_t length = terminator.size();
    std::string window(length, '\0');
    bool read = takeBytes(window.data(), length, stream);
    while (read && window != terminator) {
        std::copy(window.begin() + 1, window.end(), window.begin());
        read = takeBytes(&window.back(), 1, stream);
    }
}

} // namespace

std::ostream& OpenBracket(std::ostream& stream) {
    return quietly(stream, [&] { stream.put('{'); });
}

std::ostream& CloseBracket(std::ostream& stream) {
    return quietly(stream, [&] { stream.put('}'); });
}

std::ostream& WriteInt(int value, std::ostream& stream) {
    return quietly(stream, [&] { putInt(value, stream); });
}

std::ostream& WriteDouble(double value, std::ostream& stream) {
    return quietly(stream, [&] {
        unsigned char bytes[kRealSize];
        fltoffl(value, bytes);
        stream.write(reinterpret_cast<const char*>(bytes), sizeof bytes);
    });
}

std::ostream& WriteCString(const char* s, std::ostream& stream) {
    return quietly(stream, [&] {
        const char* const text = s == nullptr ? "" : s;
        const std::size_t length = std::strlen(text);
        if (length > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
            stream.setstate(std::ios::failbit);
            return;
        }
        putInt(static_cast<int>(length), stream);
        stream.write(text, static_cast<std::streamsize>(length));
    });
}

// Kept on purpose: a text ends at its first zero character
// (streamHelpers.string_isWrittenUpToItsFirstZero).
std::ostream& WriteString(const std::string& s, std::ostream& stream) {
    return WriteCString(s.c_str(), stream);
}

std::ostream& BadOutputOn(std::ostream& stream) {
    return quietly(stream, [&] { stream.setstate(std::ios::failbit); });
}

std::istream& OpenBracket(std::istream& stream) {
    return quietly(stream, [&] { takeBracket('{', stream); });
}

std::istream& CloseBracket(std::istream& stream) {
    return quietly(stream, [&] { takeBracket('}', stream); });
}

bool OpenBracketOn(std::istream& stream) {
    bool isNext = false;
    quietly(stream, [&] { isNext = nextVisible(stream) == '{'; });
    return isNext;
}

bool CloseBracketOn(std::istream& stream) {
    bool isNext = false;
    quietly(stream, [&] { isNext = nextVisible(stream) == '}'; });
    return isNext;
}

std::istream& ReadInt(int* value, std::istream& stream) {
    return quietly(stream, [&] {
        int read = 0;
        if (takeBytes(&read, sizeof read, stream) && value != nullptr)
            *value = read;
    });
}

std::istream& ReadDouble(double* value, std::istream& stream) {
    return quietly(stream, [&] {
        unsigned char bytes[kRealSize];
        if (takeBytes(bytes, sizeof bytes, stream) && value != nullptr)
            *value = ffltofl(bytes);
    });
}

// Kept on purpose: what does not fit stays in the stream
// (streamHelpers.textLongerThanItsBuffer_leavesTheRest).
std::istream& ReadCString(char* buffer, int size, std::istream& stream) {
    return quietly(stream, [&] {
        const int length = takeLength(stream);
        if (buffer == nullptr || size < 1) {
            stream.setstate(std::ios::failbit);
            return;
        }
        stream.read(buffer, std::min(length, size - 1));
        buffer[stream.gcount()] = '\0';
    });
}

// Kept on purpose: what follows a zero character is taken and dropped
// (streamHelpers.string_isReadUpToItsFirstZero).
std::istream& ReadString(std::string& s, std::istream& stream) {
    s.clear();
    return quietly(stream, [&] {
        char block[1024];
        bool ended = false;
        for (int left = takeLength(stream); left > 0 && stream.good();) {
            stream.read(block, std::min(left, static_cast<int>(sizeof block)));
            const auto count = static_cast<std::size_t>(stream.gcount());
            left -= static_cast<int>(count);
            char* const end = std::find(block, block + count, '\0');
            if (!ended)
                s.append(block, end);
            ended = ended || end != block + count;
        }
    });
}

std::istream& BadInputOn(std::istream& stream) {
    return quietly(stream, [&] { stream.setstate(std::ios::failbit); });
}

// Kept on purpose: without the terminator a buffer fills without a failure, a zero behind the characters or a
// count (streamHelpers.bufferWithoutTheTerminator_isFullAndNoFailure), and a reading that fails stores
// nothing and counts (streamHelpers.failedReading_counts).
std::istream& ReadUpTo(std::istream& stream, char* buffer, int size, const char* terminator, int* count) {
    const char* const end = terminator == nullptr ? "" : terminator;
    if (buffer == nullptr || size <= 0)
        return quietly(stream, [&] { skipUpTo(end, stream); });

    std::memset(buffer, 0, static_cast<std::size_t>(size));
    return quietly(stream, [&] {
        const std::size_t length = std::strlen(end);
        for (int i = 0; i < size; ++i) {
            stream.get(buffer[i]);
            const auto stored = static_cast<std::size_t>(i) + 1;
            if (stored < length || std::memcmp(buffer + stored - length, end, length) != 0)
                continue;
            if (count != nullptr)
                *count = i + 1;
            return;
        }
    });
}

// Kept on purpose: a beginning of the terminator that goes wrong is not looked at again
// (streamHelpers.terminator_isNotFoundBehindItsOwnBeginning), and the end of the stream repeats the last
// character (streamHelpers.endOfStream_appendsTheLastCharacterAgain).
std::istream& ReadCharUpTo(std::istream& stream, std::list<char>& out, const char* terminator) {
    if (terminator == nullptr || *terminator == '\0')
        return stream;
    return quietly(stream, [&] {
        const std::size_t length = std::strlen(terminator);
        std::size_t matched = 0;
        bool isAnythingRead = false;
        char c = '\0';
        do {
            isAnythingRead = !stream.get(c).fail() || isAnythingRead;
            if (!isAnythingRead)
                return;
            out.push_back(c);
            matched = c == terminator[matched] ? matched + 1 : 0;
        } while (matched < length && stream.good());
        if (matched == length)
            out.resize(out.size() - length);
    });
}
