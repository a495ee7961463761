// Values on streams when the memory fails, and those that need none.
#include <algorithm>
#include <cstddef>
#include <istream>
#include <list>
#include <ostream>
#include <streambuf>
#include <string>

#include <gtest/gtest.h>

#include "support/stream_helpers.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"

namespace qxcms::tests {
namespace {

using streamFaults = OnSubstitutePlatform;

// A stream's buffer in memory that is there already.
class Memory : public std::streambuf {
public:
    explicit Memory(std::string& bytes) {
        setg(bytes.data(), bytes.data(), bytes.data() + bytes.size());
        setp(bytes.data(), bytes.data() + bytes.size());
    }
};

// A text with its length in front.
std::string textBytes(std::size_t size) {
    std::string bytes(4 + size, 'x');
    const int length = static_cast<int>(size);
    std::copy_n(reinterpret_cast<const char*>(&length), sizeof length, bytes.begin());
    return bytes;
}

TEST_F(streamFaults, stringWithoutMemory_setsBadbitAndHoldsABeginning) {
    std::string bytes = textBytes(5000);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        Memory memory(bytes);
        std::istream stream(&memory);
        std::string s;
        faults.arm();
        ReadString(s, stream);
        faults.disarm();
        EXPECT_EQ(stream.rdstate(), faults.happened() ? std::ios::badbit : std::ios::goodbit);
        EXPECT_EQ(s.size() == 5000, !faults.happened());
        EXPECT_EQ(s, std::string(s.size(), 'x'));
    });
}

TEST_F(streamFaults, listWithoutMemory_setsBadbitAndHoldsABeginning) {
    std::string bytes = "abcdef;g";
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        Memory memory(bytes);
        std::istream stream(&memory);
        std::list<char> list;
        faults.arm();
        ReadCharUpTo(stream, list, ";");
        faults.disarm();
        const std::string read(list.begin(), list.end());
        EXPECT_EQ(stream.rdstate(), faults.happened() ? std::ios::badbit : std::ios::goodbit);
        EXPECT_EQ(read, std::string("abcdef").substr(0, read.size()));
        EXPECT_TRUE(faults.happened() || read.size() == 6);
    });
}

TEST_F(streamFaults, skippingWithoutMemory_setsBadbit) {
    const std::string terminator(100, ';');
    std::string bytes = "abc" + terminator + "d";
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        Memory memory(bytes);
        std::istream stream(&memory);
        faults.arm();
        ReadUpTo(stream, nullptr, 0, terminator.c_str(), nullptr);
        faults.disarm();
        EXPECT_EQ(stream.rdstate(), faults.happened() ? std::ios::badbit : std::ios::goodbit);
    });
}

// The exception that a stream is set to and that is not thrown takes memory too.
TEST_F(streamFaults, exceptionsWithoutMemory_areKept) {
    constexpr std::ios::iostate kMask = std::ios::badbit | std::ios::failbit;
    std::string none;
    Memory first(none);
    std::istream failed(&first);
    failed.setstate(std::ios::failbit);
    EXPECT_THROW(failed.exceptions(std::ios::failbit), std::ios::failure);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        Memory memory(none);
        std::istream stream(&memory);
        stream.exceptions(kMask);
        int value = 7;
        faults.arm();
        ReadInt(&value, stream);
        faults.disarm();
        EXPECT_TRUE(stream.fail());
        EXPECT_EQ(stream.exceptions(), kMask);
    });
}

TEST_F(streamFaults, everythingElse_needsNoMemory) {
    std::string bytes(2 + 4 + 4 + 7 + 7, '\0');
    const std::string text = "abc";
    Memory memory(bytes);
    std::ostream out(&memory);
    std::istream in(&memory);
    expectNoAllocation([&] {
        OpenBracket(out);
        WriteInt(7, out);
        WriteDouble(2.5, out);
        WriteCString("abc", out);
        WriteString(text, out);
        CloseBracket(out);
        EXPECT_TRUE(out.good());
        BadOutputOn(out);

        int whole = 0, count = 0;
        double number = 0.0;
        char buffer[8];
        EXPECT_TRUE(OpenBracketOn(in));
        OpenBracket(in);
        ReadInt(&whole, in);
        ReadDouble(&number, in);
        ReadCString(buffer, sizeof buffer, in);
        EXPECT_STREQ(buffer, "abc");
        ReadInt(nullptr, in);
        ReadUpTo(in, buffer, sizeof buffer, "c", &count);
        EXPECT_TRUE(CloseBracketOn(in));
        CloseBracket(in);
        EXPECT_FALSE(in.fail());
        BadInputOn(in);
        EXPECT_EQ(whole, 7);
        EXPECT_EQ(number, 2.5);
        EXPECT_EQ(count, 3);
    });
}

} // namespace
} // namespace qxcms::tests
