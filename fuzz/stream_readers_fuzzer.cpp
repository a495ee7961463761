// Values on byte streams: the readers in any order, each against what its description makes of the same
// bytes, and what the writers write read back.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ios>
#include <istream>
#include <iterator>
#include <list>
#include <memory>
#include <sstream>
#include <streambuf>
#include <string>

#include "fuzz/exact_memory.h"
#include "fuzz/memory_meter.h"
#include "fuzz/must.h"
#include "support/stream_helpers.h"

namespace {

using namespace qxcms::fuzz;
using std::ios;

// The input as a stream's buffer.
class InputBuffer : public std::streambuf {
public:
    explicit InputBuffer(std::string& bytes) {
        setg(bytes.data(), bytes.data(), bytes.data() + bytes.size());
    }
    std::size_t position() const { return static_cast<std::size_t>(gptr() - eback()); }
};

// What has to come of a stream: its bytes, where it stands and its state.
struct Expected {
    const std::string& bytes;
    std::size_t position = 0;
    ios::iostate state = ios::goodbit;

    bool starts() {
        if (state != ios::goodbit)
            state |= ios::failbit;
        return state == ios::goodbit;
    }
    // A byte, or -1.
    int next(bool stays) {
        if (!starts())
            return -1;
        if (position < bytes.size())
            return static_cast<unsigned char>(bytes[stays ? position : position++]);
        state = stays ? ios::eofbit : ios::eofbit | ios::failbit;
        return -1;
    }
    std::string block(std::size_t count) {
        if (!starts())
            return "";
        const std::string found = bytes.substr(position, count);
        position += found.size();
        if (found.size() < count)
            state = ios::eofbit | ios::failbit;
        return found;
    }
    int afterSpace() {
        int c = next(true);
        while (c == ' ' || (c >= 9 && c <= 13)) {
            next(false);
            c = next(true);
        }
        return c;
    }
    void bracket(char wanted) {
        afterSpace();
        if (next(false) == wanted)
            afterSpace();
        else
            state |= ios::failbit;
    }
    // A length; 0 when there is none or it is negative.
    std::size_t length() {
        const std::string found = block(4);
        if (found.size() < 4)
            return 0;
        std::int32_t value;
        std::memcpy(&value, found.data(), sizeof value);
        if (value < 0)
            state |= ios::failbit;
        return value < 0 ? 0 : static_cast<std::size_t>(value);
    }
    // Where the terminator ends, seen from the position; npos when it does not follow.
    std::size_t endOf(const std::string& terminator) const {
        const std::size_t at = bytes.find(terminator, position);
        return at == std::string::npos ? at : at + terminator.size() - position;
    }
    void fail() { state |= ios::failbit; }
    void skip(const std::string& terminator) {
        const std::size_t end = endOf(terminator);
        position = end == std::string::npos ? bytes.size() : position + end;
        state = end == std::string::npos ? ios::eofbit | ios::failbit : state;
    }
};

constexpr const char* kTerminators[] = {"", "a", "aab", "\r\n", ";", "{}{}"};

void askBrackets(int operation, std::istream& stream, Expected& expected) {
    switch (operation) {
    case 0:
        OpenBracket(stream);
        return expected.bracket('{');
    case 1:
        CloseBracket(stream);
        return expected.bracket('}');
    case 2:
        return must(OpenBracketOn(stream) == (expected.afterSpace() == '{'), "an opening bracket is seen");
    default:
        return must(CloseBracketOn(stream) == (expected.afterSpace() == '}'), "a closing bracket is seen");
    }
}

void askInt(std::istream& stream, Expected& expected) {
    int value = 77, wanted = 77;
    ReadInt(&value, stream);
    const std::string found = expected.block(4);
    if (found.size() == 4)
        std::memcpy(&wanted, found.data(), sizeof wanted);
    must(value == wanted, "an integer is its four bytes");
}

void askDouble(std::istream& stream, Expected& expected) {
    double value = 77;
    ReadDouble(&value, stream);
    const std::string found = expected.block(4);
    float wanted = 77;
    std::uint32_t bits = 0;
    for (std::size_t i = 4; found.size() == 4 && i-- > 0;)
        bits = bits << 8 | static_cast<unsigned char>(found[i]);
    if (found.size() == 4)
        wanted = std::bit_cast<float>(bits);
    must(value == static_cast<double>(wanted) || (std::isnan(value) && std::isnan(wanted)),
         "a real is its four bytes");
}

void askBuffer(int size, std::istream& stream, Expected& expected) {
    const auto room = static_cast<std::size_t>(size);
    const std::unique_ptr<char[]> buffer(new char[room]);
    std::fill_n(buffer.get(), room, '.');
    ReadCString(buffer.get(), size, stream);
    const std::size_t length = expected.length();
    if (size == 0)
        return expected.fail();
    const std::string wanted = expected.block(std::min(length, room - 1));
    must(std::equal(wanted.begin(), wanted.end(), buffer.get()), "a buffer receives the characters");
    must(buffer[wanted.size()] == '\0', "a buffer is terminated");
}

void askString(std::istream& stream, Expected& expected) {
    std::string s = "before";
    ReadString(s, stream);
    const std::string wanted = expected.block(expected.length());
    must(s == wanted.substr(0, wanted.find('\0')), "a string is read up to its first zero");
}

void askUpTo(int size, const std::string& terminator, std::istream& stream, Expected& expected) {
    const auto room = static_cast<std::size_t>(size);
    const std::unique_ptr<char[]> buffer(new char[room]);
    std::fill_n(buffer.get(), room, '.');
    int count = 77, wantedCount = 77;
    ReadUpTo(stream, buffer.get(), size, terminator.c_str(), &count);
    const std::size_t end = terminator.empty() ? 1 : expected.endOf(terminator);
    std::string wanted;
    if (size == 0) {
        if (expected.starts())
            expected.skip(terminator);
    } else {
        // An end that lies in what was read, and any end when nothing has to be found.
        const bool good = expected.starts();
        const bool isFound = terminator.empty() || (good && end <= room);
        if (good)
            wanted = expected.block(isFound ? end : room);
        if (isFound)
            wantedCount = static_cast<int>(end);
    }
    wanted.resize(room);
    must(std::equal(wanted.begin(), wanted.end(), buffer.get()), "a buffer is cleared and filled");
    must(count == wantedCount, "a terminator that is found is counted");
}

void askList(const std::string& terminator, std::istream& stream, Expected& expected) {
    std::list<char> list = {'>'};
    ReadCharUpTo(stream, list, terminator.c_str());
    std::string wanted = ">";
    for (std::size_t matched = 0; matched < terminator.size();) {
        const int c = expected.next(false);
        if (c < 0 && wanted.size() == 1)
            break;
        wanted += c < 0 ? wanted.back() : static_cast<char>(c);
        matched = wanted.back() == terminator[matched] ? matched + 1 : 0;
        if (matched == terminator.size())
            wanted.erase(wanted.size() - matched);
        else if (c < 0)
            break;
    }
    must(std::equal(list.begin(), list.end(), wanted.begin(), wanted.end()),
         "a list receives the characters");
}

void askReader(int operation, int parameter, std::istream& stream, Expected& expected) {
    const std::string terminator =
        kTerminators[static_cast<std::size_t>(parameter) % std::size(kTerminators)];
    switch (operation) {
    case 4:
        return askInt(stream, expected);
    case 5:
        return askDouble(stream, expected);
    case 6:
        return askBuffer(parameter, stream, expected);
    case 7:
        return askString(stream, expected);
    case 8:
        return askUpTo(parameter, terminator, stream, expected);
    case 9:
        return askUpTo(0, terminator, stream, expected);
    case 10:
        return askList(terminator, stream, expected);
    default:
        return askBrackets(operation, stream, expected);
    }
}

constexpr int kOperations = 11;

// Each step is a byte for the operation and one for its parameter; a stream that failed goes on now and then.
void askReaders(InputFront& front) {
    const int steps = front.byte() % 16;
    std::string program;
    for (int i = 0; i < 2 * steps; ++i)
        program += static_cast<char>(front.byte());
    std::string bytes(reinterpret_cast<const char*>(front.rest()), front.restSize());
    InputBuffer buffer(bytes);
    std::istream stream(&buffer);
    stream.exceptions(steps % 2 == 0 ? ios::goodbit : ios::failbit | ios::badbit | ios::eofbit);
    Expected expected{bytes};
    for (std::size_t i = 0; i < program.size(); i += 2) {
        const int operation = static_cast<unsigned char>(program[i]);
        const int parameter = static_cast<unsigned char>(program[i + 1]);
        const MemoryMeter meter;
        askReader(operation % kOperations, parameter, stream, expected);
        must(meter.peak() <= allowedMemory(bytes.size()), "a reader needs memory in proportion");
        must(stream.rdstate() == expected.state, "a stream has the state of what was read");
        must(buffer.position() == expected.position, "a stream stands behind what was read");
        if (operation >= 128 && !stream.good())
            stream.clear();
        if (operation >= 128)
            expected.state = ios::goodbit;
    }
}

void askWriters(InputFront front) {
    int whole = 0;
    double number = 0;
    const ExactBytes head(front.rest(), front.restSize(), sizeof whole + sizeof number);
    std::memcpy(&whole, head.data(), sizeof whole);
    std::memcpy(&number, head.data() + sizeof whole, sizeof number);
    const std::string text(reinterpret_cast<const char*>(front.rest()), front.restSize());

    std::stringstream stream;
    std::ostream& out = stream;
    std::istream& in = stream;
    CloseBracket(WriteDouble(number, WriteInt(whole, WriteCString(text.c_str(), WriteString(text, out)))));
    int readWhole = 0;
    double readNumber = 0;
    std::string s;
    const ExactText terminated(front.rest(), front.restSize());
    const std::unique_ptr<char[]> buffer(new char[terminated.size() + 1]);
    ReadCString(buffer.get(), static_cast<int>(terminated.size() + 1), ReadString(s, in));
    ReadDouble(&readNumber, ReadInt(&readWhole, in));
    must(in.good() && CloseBracketOn(in), "what is written comes to its end");
    must(s == terminated.c_str() && std::strcmp(buffer.get(), terminated.c_str()) == 0, "texts come back");
    must(readWhole == whole, "integers come back");
    must(readNumber == static_cast<double>(static_cast<float>(number)) || std::isnan(number),
         "reals come back in single precision");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    InputFront front(data, size);
    askReaders(front);
    askWriters(front);
    return 0;
}
