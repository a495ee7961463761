// Values on byte streams. Expected bytes and places are worked out by hand.
#include <bit>
#include <climits>
#include <cstdint>
#include <cstring>
#include <functional>
#include <ios>
#include <istream>
#include <limits>
#include <list>
#include <locale>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

#include "support/stream_helpers.h"

namespace {

using std::ios;

constexpr ios::iostate kAll = ios::badbit | ios::failbit | ios::eofbit;

// A string that may hold zeros.
template <std::size_t n>
std::string bytes(const char (&text)[n]) {
    return std::string(text, n - 1);
}

// The bytes of an integer as the machine stores them.
std::string intBytes(std::uint32_t value) {
    std::string low;
    for (int shift = 0; shift < 32; shift += 8)
        low += static_cast<char>(value >> shift & 0xFF);
    return std::endian::native == std::endian::little ? low : std::string(low.rbegin(), low.rend());
}

std::string textBytes(const std::string& text) {
    return intBytes(static_cast<std::uint32_t>(text.size())) + text;
}

// What is left in a stream, whatever its state.
std::string restOf(std::istream& stream) {
    stream.clear();
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

std::string asString(const std::list<char>& list) {
    return std::string(list.begin(), list.end());
}

// Gives some bytes and then throws.
class ThrowingBuffer : public std::streambuf {
public:
    explicit ThrowingBuffer(std::string given = "") : text(std::move(given)) {
        setg(text.data(), text.data(), text.data() + text.size());
    }

protected:
    int_type overflow(int_type) override { throw std::runtime_error("no more"); }
    int_type underflow() override { throw std::runtime_error("no more"); }

private:
    std::string text;
};

// Counts what it is given and keeps nothing.
class CountingBuffer : public std::streambuf {
public:
    std::streamsize count = 0;

protected:
    std::streamsize xsputn(const char*, std::streamsize given) override {
        count += given;
        return given;
    }
};

// Writers.

TEST(streamHelpers, brackets_areOneCharacterEach) {
    std::ostringstream stream;
    OpenBracket(stream);
    CloseBracket(stream);
    EXPECT_EQ(stream.str(), "{}");
}

TEST(streamHelpers, integers_areFourBytesInTheOrderOfTheMachine) {
    for (const std::uint32_t value :
         {0u, 1u, 0x01020304u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu, 0xFFFFFFFEu}) {
        std::ostringstream stream;
        WriteInt(static_cast<int>(value), stream);
        EXPECT_EQ(stream.str(), intBytes(value)) << value;
    }
}

TEST(streamHelpers, reals_areFourBytesWithTheLowestFirst) {
    std::ostringstream stream;
    WriteDouble(1.0, stream);
    WriteDouble(-2.5, stream);
    WriteDouble(0.1, stream);
    EXPECT_EQ(stream.str(), bytes("\x00\x00\x80\x3F\x00\x00\x20\xC0\xCD\xCC\xCC\x3D"));
}

TEST(streamHelpers, texts_haveTheirLengthInFrontAndNoTerminator) {
    std::ostringstream stream;
    WriteCString("abc", stream);
    WriteString("de", stream);
    EXPECT_EQ(stream.str(), intBytes(3) + "abc" + intBytes(2) + "de");
}

TEST(streamHelpers, emptyTexts_areFourZeroBytes) {
    std::ostringstream stream;
    WriteCString("", stream);
    WriteString("", stream);
    WriteCString(nullptr, stream);
    EXPECT_EQ(stream.str(), std::string(12, '\0'));
}

TEST(streamHelpers, string_isWrittenUpToItsFirstZero) {
    std::ostringstream stream;
    WriteString(bytes("ab\0cd"), stream);
    WriteString(bytes("\0cd"), stream);
    EXPECT_EQ(stream.str(), intBytes(2) + "ab" + intBytes(0));
}

TEST(streamHelpers, formattingOfAStream_doesNotShow) {
    std::ostringstream stream;
    stream << std::hex << std::showbase;
    stream.fill('.');
    const std::function<void()> writers[] = {
        [&] { OpenBracket(stream); },       [&] { CloseBracket(stream); },
        [&] { WriteInt(65, stream); },      [&] { WriteDouble(1.0, stream); },
        [&] { WriteCString("a", stream); }, [&] { WriteString("b", stream); }};
    for (const auto& write : writers) {
        stream.width(20);
        write();
    }
    EXPECT_EQ(stream.str(),
              "{}" + intBytes(65) + bytes("\x00\x00\x80\x3F") + intBytes(1) + "a" + intBytes(1) + "b");
}

TEST(streamHelpers, writers_giveTheirStreamBack) {
    std::ostringstream stream;
    EXPECT_EQ(&OpenBracket(stream), &stream);
    EXPECT_EQ(&CloseBracket(stream), &stream);
    EXPECT_EQ(&WriteInt(1, stream), &stream);
    EXPECT_EQ(&WriteDouble(1.0, stream), &stream);
    EXPECT_EQ(&WriteCString("a", stream), &stream);
    EXPECT_EQ(&WriteString("a", stream), &stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(&BadOutputOn(stream), &stream);
}

TEST(streamHelpers, badOutput_addsFailbit) {
    std::ostringstream stream;
    BadOutputOn(stream);
    EXPECT_EQ(stream.rdstate(), ios::failbit);
    stream.clear(ios::eofbit | ios::badbit);
    BadOutputOn(stream);
    EXPECT_EQ(stream.rdstate(), kAll);
}

TEST(streamHelpers, failedStream_takesNothing) {
    std::ostringstream stream;
    stream.setstate(ios::failbit);
    WriteInt(1, OpenBracket(stream));
    WriteString("a", WriteCString("a", WriteDouble(1.0, CloseBracket(stream))));
    EXPECT_EQ(stream.str(), "");
}

#if defined(__linux__)

// 2147483648 characters that take up 2 MiB: the same piece of memory over and over, and a zero behind.
TEST(streamHelpers, textTooLongForItsLength_setsFailbitAndWritesNothing) {
    constexpr std::size_t kPiece = std::size_t{2} << 20;
    constexpr std::size_t kLength = std::size_t{1} << 31;
    const int file = memfd_create("text", 0);
    ASSERT_GE(file, 0);
    ASSERT_EQ(write(file, std::string(kPiece, 'x').data(), kPiece), static_cast<ssize_t>(kPiece));
    void* const memory =
        mmap(nullptr, kLength + kPiece, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    char* const text = static_cast<char*>(memory);
    for (std::size_t at = 0; at < kLength; at += kPiece)
        ASSERT_NE(mmap(text + at, kPiece, PROT_READ, MAP_SHARED | MAP_FIXED, file, 0), MAP_FAILED);
    std::ostringstream stream;
    WriteCString(text, stream);
    EXPECT_EQ(stream.rdstate(), ios::failbit);
    EXPECT_EQ(stream.str(), "");
    // One character less is the longest text.
    CountingBuffer buffer;
    std::ostream counted(&buffer);
    WriteCString(text + 1, counted);
    EXPECT_TRUE(counted.good());
    EXPECT_EQ(buffer.count, 4 + std::streamsize{2147483647});
    munmap(memory, kLength + kPiece);
    close(file);
}

#endif

// Brackets.

TEST(streamHelpers, openBracket_takesWhiteSpaceOnBothSides) {
    std::istringstream stream("  {  x");
    OpenBracket(stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(restOf(stream), "x");
}

TEST(streamHelpers, closeBracket_takesWhiteSpaceOnBothSides) {
    std::istringstream stream("\t\n\v\f\r }\t\n\v\f\r y");
    CloseBracket(stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(restOf(stream), "y");
}

TEST(streamHelpers, otherCharacter_isTakenAndSetsFailbit) {
    for (const auto& read : {static_cast<std::istream& (*)(std::istream&)>(OpenBracket),
                             static_cast<std::istream& (*)(std::istream&)>(CloseBracket)}) {
        std::istringstream stream(" xy");
        read(stream);
        EXPECT_EQ(stream.rdstate(), ios::failbit);
        EXPECT_EQ(restOf(stream), "y");
    }
}

TEST(streamHelpers, bracketsAreNotTakenForEachOther) {
    std::istringstream stream("}{");
    EXPECT_TRUE(OpenBracket(stream).fail());
    stream.clear();
    EXPECT_TRUE(CloseBracket(stream).fail());
}

TEST(streamHelpers, whiteSpaceBehindAWrongCharacter_stays) {
    std::istringstream stream("x  y");
    OpenBracket(stream);
    EXPECT_EQ(restOf(stream), "  y");
}

TEST(streamHelpers, endBehindABracket_isNoFailure) {
    std::istringstream stream("{ }");
    OpenBracket(stream);
    EXPECT_TRUE(stream.good());
    CloseBracket(stream);
    EXPECT_EQ(stream.rdstate(), ios::eofbit);
}

TEST(streamHelpers, endInPlaceOfABracket_isAFailure) {
    for (const char* text : {"", "  "}) {
        std::istringstream stream(text);
        OpenBracket(stream);
        EXPECT_EQ(stream.rdstate(), ios::eofbit | ios::failbit);
    }
}

// An integer of 32 begins with a blank on machines that store the lowest byte first, one of 0x20202020
// anywhere.
TEST(streamHelpers, bracket_takesWhiteSpaceThatBeginsAnInteger) {
    std::stringstream stream;
    std::ostream& out = stream;
    std::istream& in = stream;
    WriteInt(7, WriteInt(0x20202020, OpenBracket(out)));
    int value = 0;
    ReadInt(&value, OpenBracket(in));
    EXPECT_EQ(value, 7);
}

TEST(streamHelpers, bracket_takesWhiteSpaceThatBeginsAReal) {
    std::stringstream stream;
    std::ostream& out = stream;
    std::istream& in = stream;
    CloseBracket(WriteDouble(0.64, OpenBracket(out)));
    ASSERT_EQ(stream.str(), "{\x0A\xD7\x23\x3F}");
    double value = 0.0;
    ReadDouble(&value, OpenBracket(in));
    EXPECT_EQ(value, static_cast<double>(std::bit_cast<float>(0x7D3F23D7u)));
    EXPECT_TRUE(CloseBracket(in).fail());
}

// The integers of a list that is asked for its end before each of them.
std::vector<int> askedFor(const std::vector<int>& list, std::istream& in, std::ostream& out) {
    OpenBracket(out);
    for (const int value : list)
        WriteInt(value, out);
    CloseBracket(out);
    std::vector<int> values;
    OpenBracket(in);
    int value = 0;
    while (!CloseBracketOn(in) && ReadInt(&value, in).good())
        values.push_back(value);
    return values;
}

TEST(streamHelpers, question_takesWhiteSpaceThatBeginsAnInteger) {
    if (std::endian::native != std::endian::little)
        GTEST_SKIP() << "integers begin with their highest byte";
    std::stringstream stream;
    EXPECT_THAT(askedFor({5, 32, 6}, stream, stream), testing::ElementsAre(5, 0x06000000, 0x7D000000));
    EXPECT_TRUE(stream.fail());
}

TEST(streamHelpers, question_takesAnIntegerForABracket) {
    if (std::endian::native != std::endian::little)
        GTEST_SKIP() << "integers begin with their highest byte";
    std::stringstream stream;
    EXPECT_THAT(askedFor({5, 125, 6}, stream, stream), testing::ElementsAre(5));
    EXPECT_TRUE(stream.good());
}

TEST(streamHelpers, bytesBesideWhiteSpace_beginAnElement) {
    for (const char first : {'\0', '\x08', '\x0E', '\x1F', '\x21', '\x85', '\xA0', '\xFF'}) {
        std::istringstream stream(std::string("{") + first);
        OpenBracket(stream);
        EXPECT_EQ(restOf(stream), std::string(1, first));
    }
}

// A locale in which "_" is white space and a blank is not.
class OtherSpaces : public std::ctype<char> {
public:
    OtherSpaces() : std::ctype<char>(table()) {}

private:
    static const mask* table() {
        static const std::vector<mask> kTable = [] {
            std::vector<mask> masks(classic_table(), classic_table() + table_size);
            masks['_'] = space;
            masks[' '] = punct;
            return masks;
        }();
        return kTable.data();
    }
};

TEST(streamHelpers, whiteSpace_isTheSameInEveryLocaleAndWithEveryFlag) {
    std::istringstream stream(" { _");
    stream.imbue(std::locale(std::locale::classic(), new OtherSpaces));
    stream >> std::noskipws;
    OpenBracket(stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(restOf(stream), "_");
}

TEST(streamHelpers, questions_leaveTheBracket) {
    std::istringstream closing(" }");
    EXPECT_FALSE(OpenBracketOn(closing));
    EXPECT_TRUE(CloseBracketOn(closing));
    EXPECT_TRUE(closing.good());
    EXPECT_EQ(restOf(closing), "}");

    std::istringstream opening(" \n{ ");
    EXPECT_FALSE(CloseBracketOn(opening));
    EXPECT_TRUE(OpenBracketOn(opening));
    EXPECT_TRUE(opening.good());
    EXPECT_EQ(restOf(opening), "{ ");
}

TEST(streamHelpers, questionsAboutOtherCharacters_areNoFailure) {
    std::istringstream stream(" x");
    EXPECT_FALSE(OpenBracketOn(stream));
    EXPECT_FALSE(CloseBracketOn(stream));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(restOf(stream), "x");
}

TEST(streamHelpers, questionsAtTheEnd_areAnsweredNo) {
    std::istringstream stream("  ");
    EXPECT_FALSE(CloseBracketOn(stream));
    EXPECT_EQ(stream.rdstate(), ios::eofbit);
    EXPECT_FALSE(OpenBracketOn(stream)); // as every reading behind the end
    EXPECT_EQ(stream.rdstate(), ios::eofbit | ios::failbit);
}

TEST(streamHelpers, questionsToAFailedStream_areAnsweredNo) {
    std::istringstream stream("{}");
    stream.setstate(ios::failbit);
    EXPECT_FALSE(OpenBracketOn(stream));
    EXPECT_EQ(restOf(stream), "{}");
}

// Integers and reals.

TEST(streamHelpers, integers_comeBack) {
    for (const int value : {0, 1, -1, 0x01020304, INT_MAX, INT_MIN}) {
        std::stringstream stream;
        WriteInt(value, stream);
        stream << 'x';
        int read = 7;
        ReadInt(&read, stream);
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(read, value);
        EXPECT_EQ(restOf(stream), "x");
    }
}

TEST(streamHelpers, reals_comeBackInSinglePrecision) {
    std::stringstream stream;
    WriteDouble(0.1, WriteDouble(-2.5, stream));
    stream << 'x';
    double first = 0.0, second = 0.0;
    ReadDouble(&second, ReadDouble(&first, stream));
    EXPECT_EQ(first, -2.5);
    EXPECT_EQ(second, 0x1.99999ap-4);
    EXPECT_EQ(restOf(stream), "x");
}

TEST(streamHelpers, numbersCutShort_setFailbitAndTouchNothing) {
    for (std::size_t size = 0; size < 4; ++size) {
        std::istringstream forInt(std::string(size, '\x01')), forReal(std::string(size, '\x01'));
        int whole = 7;
        double real = 7.5;
        ReadInt(&whole, forInt);
        ReadDouble(&real, forReal);
        EXPECT_EQ(forInt.rdstate(), ios::eofbit | ios::failbit);
        EXPECT_EQ(forReal.rdstate(), ios::eofbit | ios::failbit);
        EXPECT_EQ(whole, 7);
        EXPECT_EQ(real, 7.5);
    }
}

TEST(streamHelpers, numbersIntoNull_areSkipped) {
    std::istringstream stream("12345678x");
    ReadDouble(nullptr, ReadInt(nullptr, stream));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(restOf(stream), "x");
}

TEST(streamHelpers, whiteSpaceInFrontOfAnElement_isPartOfIt) {
    std::istringstream stream("    ");
    int value = 0;
    ReadInt(&value, stream);
    EXPECT_EQ(value, 0x20202020);
}

// Texts.

TEST(streamHelpers, texts_comeBack) {
    std::stringstream stream;
    WriteString("colour", WriteCString("abc", stream));
    char buffer[] = "........";
    std::string s = "before";
    ReadString(s, ReadCString(buffer, sizeof buffer, stream));
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(std::string(buffer, 8), bytes("abc\0...."));
    EXPECT_EQ(s, "colour");
}

TEST(streamHelpers, emptyTexts_comeBack) {
    std::istringstream stream(std::string(8, '\0') + "x");
    char buffer[] = "....";
    std::string s = "before";
    ReadString(s, ReadCString(buffer, sizeof buffer, stream));
    EXPECT_TRUE(stream.good());
    EXPECT_STREQ(buffer, "");
    EXPECT_EQ(s, "");
    EXPECT_EQ(restOf(stream), "x");
}

TEST(streamHelpers, textLongerThanItsBuffer_leavesTheRest) {
    std::stringstream stream;
    WriteCString("abcdef", stream);
    char buffer[] = ".....";
    ReadCString(buffer, 4, stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(std::string(buffer, 5), bytes("abc\0."));
    EXPECT_EQ(restOf(stream), "def");
}

// A buffer one below, at and one above the text with its terminator.
TEST(streamHelpers, bufferAroundTheSizeOfTheText) {
    for (const auto& [size, kept, rest] : {std::tuple(3, "ab", "cx"), {4, "abc", "x"}, {5, "abc", "x"}}) {
        std::istringstream stream(textBytes("abc") + "x");
        char buffer[6] = {'.', '.', '.', '.', '.', '.'};
        ReadCString(buffer, size, stream);
        EXPECT_STREQ(buffer, kept);
        EXPECT_EQ(buffer[size], '.');
        EXPECT_EQ(restOf(stream), rest);
    }
}

TEST(streamHelpers, bufferOfOne_isEmptiedAndTakesTheLengthAlone) {
    std::istringstream stream(textBytes("abc"));
    char buffer[] = "..";
    ReadCString(buffer, 1, stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(std::string(buffer, 2), bytes("\0."));
    EXPECT_EQ(restOf(stream), "abc");
}

TEST(streamHelpers, bufferWithoutRoom_setsFailbitBehindTheLength) {
    for (const int size : {0, -1, INT_MIN}) {
        std::istringstream stream(textBytes("abc"));
        char buffer[] = "..";
        ReadCString(buffer, size, stream);
        EXPECT_EQ(stream.rdstate(), ios::failbit);
        EXPECT_STREQ(buffer, "..");
        EXPECT_EQ(restOf(stream), "abc");
    }
    std::istringstream stream(textBytes("abc"));
    ReadCString(nullptr, 10, stream);
    EXPECT_EQ(stream.rdstate(), ios::failbit);
    EXPECT_EQ(restOf(stream), "abc");
}

TEST(streamHelpers, negativeLength_setsFailbitAndGivesAnEmptyText) {
    for (const std::uint32_t length : {0xFFFFFFFFu, 0x80000000u}) {
        std::istringstream forBuffer(intBytes(length) + "abc"), forString(intBytes(length) + "abc");
        char buffer[] = "....";
        std::string s = "before";
        ReadCString(buffer, sizeof buffer, forBuffer);
        ReadString(s, forString);
        EXPECT_EQ(forBuffer.rdstate(), ios::failbit);
        EXPECT_EQ(forString.rdstate(), ios::failbit);
        EXPECT_EQ(std::string(buffer, 5), bytes("\0...\0"));
        EXPECT_EQ(s, "");
        EXPECT_EQ(restOf(forBuffer), "abc");
        EXPECT_EQ(restOf(forString), "abc");
    }
}

TEST(streamHelpers, textCutShort_setsFailbitAndGivesWhatIsThere) {
    for (const std::uint32_t length : {4u, 0x7FFFFFFFu}) {
        std::istringstream forBuffer(intBytes(length) + "abc"), forString(intBytes(length) + "abc");
        char buffer[] = "......";
        std::string s = "before";
        ReadCString(buffer, sizeof buffer, forBuffer);
        ReadString(s, forString);
        EXPECT_EQ(forBuffer.rdstate(), ios::eofbit | ios::failbit);
        EXPECT_EQ(forString.rdstate(), ios::eofbit | ios::failbit);
        EXPECT_EQ(std::string(buffer, 6), bytes("abc\0.."));
        EXPECT_EQ(s, "abc");
    }
}

TEST(streamHelpers, lengthCutShort_setsFailbitAndGivesAnEmptyText) {
    for (std::size_t size = 0; size < 4; ++size) {
        std::istringstream forBuffer(std::string(size, '\0')), forString(std::string(size, '\0'));
        char buffer[] = "....";
        std::string s = "before";
        ReadCString(buffer, sizeof buffer, forBuffer);
        ReadString(s, forString);
        EXPECT_EQ(forBuffer.rdstate(), ios::eofbit | ios::failbit);
        EXPECT_EQ(forString.rdstate(), ios::eofbit | ios::failbit);
        EXPECT_STREQ(buffer, "");
        EXPECT_EQ(s, "");
    }
}

TEST(streamHelpers, string_isReadUpToItsFirstZero) {
    std::istringstream stream(textBytes(bytes("ab\0cd\0e")) + "x");
    std::string s;
    ReadString(s, stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(s, "ab");
    EXPECT_EQ(restOf(stream), "x");
}

TEST(streamHelpers, zerosInATextForABuffer_areKept) {
    std::istringstream stream(textBytes(bytes("a\0b")));
    char buffer[] = ".....";
    ReadCString(buffer, 5, stream);
    EXPECT_EQ(std::string(buffer, 5), bytes("a\0b\0."));
}

// Long strings are read piece by piece.
TEST(streamHelpers, longString_comesWhole) {
    for (const std::size_t size : {1023u, 1024u, 1025u, 100000u}) {
        std::string text(size, 'x');
        for (std::size_t i = 0; i < size; ++i)
            text[i] = static_cast<char>('a' + i % 23);
        std::istringstream stream(textBytes(text) + "y");
        std::string s;
        ReadString(s, stream);
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(s, text);
        EXPECT_EQ(restOf(stream), "y");
    }
}

TEST(streamHelpers, zeroInALongString_endsIt) {
    std::string text(5000, 'x');
    text[1024] = '\0';
    text[3000] = '\0';
    std::istringstream stream(textBytes(text) + "y");
    std::string s;
    ReadString(s, stream);
    EXPECT_EQ(s, std::string(1024, 'x'));
    EXPECT_EQ(restOf(stream), "y");
}

TEST(streamHelpers, claimedLength_takesNoMemory) {
    std::istringstream stream(intBytes(0x7FFFFFFF) + "abc");
    std::string s;
    ReadString(s, stream);
    EXPECT_LT(s.capacity(), 2048u);
}

TEST(streamHelpers, badInput_addsFailbit) {
    std::istringstream stream("x");
    EXPECT_EQ(&BadInputOn(stream), &stream);
    EXPECT_EQ(stream.rdstate(), ios::failbit);
    stream.clear(ios::eofbit | ios::badbit);
    BadInputOn(stream);
    EXPECT_EQ(stream.rdstate(), kAll);
}

TEST(streamHelpers, readers_giveTheirStreamBack) {
    std::istringstream stream("{}" + std::string(30, '\0'));
    int whole;
    double real;
    char buffer[8];
    std::string s;
    std::list<char> list;
    EXPECT_EQ(&OpenBracket(stream), &stream);
    EXPECT_EQ(&CloseBracket(stream), &stream);
    EXPECT_EQ(&ReadInt(&whole, stream), &stream);
    EXPECT_EQ(&ReadDouble(&real, stream), &stream);
    EXPECT_EQ(&ReadCString(buffer, sizeof buffer, stream), &stream);
    EXPECT_EQ(&ReadString(s, stream), &stream);
    EXPECT_EQ(&ReadUpTo(stream, buffer, 2, "x", nullptr), &stream);
    EXPECT_EQ(&ReadUpTo(stream, nullptr, 0, "", nullptr), &stream);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(&ReadCharUpTo(stream, list, ""), &stream);
    EXPECT_EQ(&ReadCharUpTo(stream, list, "x"), &stream);
}

// Up to a terminator, into a buffer.

TEST(streamHelpers, readUpTo_storesTheTerminatorAndCountsIt) {
    std::istringstream stream("ab\r\ncd");
    char buffer[] = "..........";
    int count = 0;
    ReadUpTo(stream, buffer, 9, "\r\n", &count);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(count, 4);
    EXPECT_EQ(std::string(buffer, 10), bytes("ab\r\n\0\0\0\0\0."));
    EXPECT_EQ(restOf(stream), "cd");
}

TEST(streamHelpers, readUpToWithoutACount_stopsAllTheSame) {
    std::istringstream stream("ab\r\ncd");
    char buffer[10];
    ReadUpTo(stream, buffer, sizeof buffer, "\r\n", nullptr);
    EXPECT_STREQ(buffer, "ab\r\n");
    EXPECT_EQ(restOf(stream), "cd");
}

TEST(streamHelpers, bufferWithoutTheTerminator_isFullAndNoFailure) {
    std::istringstream stream("abcdef\r\n");
    char buffer[] = "......";
    int count = 77;
    ReadUpTo(stream, buffer, 4, "\r\n", &count);
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(count, 77);
    EXPECT_EQ(std::string(buffer, 6), "abcd..");
    EXPECT_EQ(restOf(stream), "ef\r\n");
}

TEST(streamHelpers, terminatorThatJustFits_isFound) {
    std::istringstream stream("ab\r\n");
    char buffer[] = ".....";
    int count = 77;
    ReadUpTo(stream, buffer, 4, "\r\n", &count);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(std::string(buffer, 5), "ab\r\n.");
    EXPECT_TRUE(stream.good());
}

TEST(streamHelpers, terminatorLongerThanTheBuffer_isNotFound) {
    std::istringstream stream("abcd");
    char buffer[] = "...";
    int count = 77;
    ReadUpTo(stream, buffer, 2, "abc", &count);
    EXPECT_EQ(count, 77);
    EXPECT_EQ(std::string(buffer, 3), "ab.");
}

TEST(streamHelpers, terminatorAtOnce_isAllThatIsStored) {
    std::istringstream stream("\r\nab");
    char buffer[8];
    int count = 0;
    ReadUpTo(stream, buffer, sizeof buffer, "\r\n", &count);
    EXPECT_EQ(count, 2);
    EXPECT_STREQ(buffer, "\r\n");
}

// Here, unlike in ReadCharUpTo, every end of what is stored is looked at.
TEST(streamHelpers, terminatorBehindItsOwnBeginning_isFoundInABuffer) {
    std::istringstream stream("aaabx");
    char buffer[8];
    int count = 0;
    ReadUpTo(stream, buffer, sizeof buffer, "aab", &count);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(restOf(stream), "x");
}

TEST(streamHelpers, zerosOnTheWayToATerminator_areStored) {
    std::istringstream stream(bytes("a\0b;c"));
    char buffer[8];
    int count = 0;
    ReadUpTo(stream, buffer, sizeof buffer, ";", &count);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(std::string(buffer, 5), bytes("a\0b;\0"));
}

TEST(streamHelpers, streamThatEndsBeforeTheTerminator_leavesTheBufferCleared) {
    std::istringstream stream("ab");
    char buffer[] = ".....";
    int count = 77;
    ReadUpTo(stream, buffer, 4, "\r\n", &count);
    EXPECT_EQ(stream.rdstate(), ios::eofbit | ios::failbit);
    EXPECT_EQ(count, 77);
    EXPECT_EQ(std::string(buffer, 5), bytes("ab\0\0."));
}

TEST(streamHelpers, emptyTerminator_isFoundBehindTheFirstCharacter) {
    for (const char* terminator : {"", static_cast<const char*>(nullptr)}) {
        std::istringstream stream("ab");
        char buffer[] = "...";
        int count = 77;
        ReadUpTo(stream, buffer, 3, terminator, &count);
        EXPECT_EQ(count, 1);
        EXPECT_EQ(std::string(buffer, 3), bytes("a\0\0"));
        EXPECT_EQ(restOf(stream), "b");
    }
}

// A reading that fails stores nothing and counts.
TEST(streamHelpers, failedReading_counts) {
    std::istringstream stream("");
    char buffer[] = "...";
    int count = 77;
    ReadUpTo(stream, buffer, 3, "", &count);
    EXPECT_TRUE(stream.fail());
    EXPECT_EQ(count, 1);
    EXPECT_EQ(std::string(buffer, 3), bytes("\0\0\0"));
}

// Up to a terminator, skipping.

TEST(streamHelpers, skipping_takesTheTerminator) {
    char buffer[] = "..";
    for (const int size : {0, -1, INT_MIN}) {
        std::istringstream stream("abc\r\ncd");
        int count = 77;
        ReadUpTo(stream, buffer, size, "\r\n", &count);
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(count, 77);
        EXPECT_STREQ(buffer, "..");
        EXPECT_EQ(restOf(stream), "cd");
    }
    std::istringstream stream("abc\r\ncd");
    ReadUpTo(stream, nullptr, 10, "\r\n", nullptr);
    EXPECT_EQ(restOf(stream), "cd");
}

TEST(streamHelpers, skipping_findsATerminatorAnywhere) {
    for (const char* text : {"aabx", "aaabx", "aaaaaabx", "abaabx", "baabx"}) {
        std::istringstream stream(text);
        ReadUpTo(stream, nullptr, 0, "aab", nullptr);
        EXPECT_TRUE(stream.good()) << text;
        EXPECT_EQ(restOf(stream), "x") << text;
    }
}

TEST(streamHelpers, skippingWithoutATerminatorInSight_setsFailbit) {
    for (const char* text : {"", "a", "aa", "aac", "abcabcabc"}) {
        std::istringstream stream(text);
        ReadUpTo(stream, nullptr, 0, "aab", nullptr);
        EXPECT_EQ(stream.rdstate(), ios::eofbit | ios::failbit) << text;
    }
}

TEST(streamHelpers, skippingToAnEmptyTerminator_takesNothing) {
    for (const char* terminator : {"", static_cast<const char*>(nullptr)}) {
        std::istringstream stream("ab");
        ReadUpTo(stream, nullptr, 0, terminator, nullptr);
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(restOf(stream), "ab");
    }
}

// Up to a terminator, into a list.

TEST(streamHelpers, list_receivesTheCharactersBeforeTheTerminator) {
    std::istringstream stream("ab\r\ncd");
    std::list<char> list = {'>'};
    ReadCharUpTo(stream, list, "\r\n");
    EXPECT_TRUE(stream.good());
    EXPECT_EQ(asString(list), ">ab");
    EXPECT_EQ(restOf(stream), "cd");
}

TEST(streamHelpers, listOfATerminatorAtOnce_isAsItWas) {
    std::istringstream stream(";x");
    std::list<char> list = {';'};
    ReadCharUpTo(stream, list, ";");
    EXPECT_EQ(asString(list), ";");
    EXPECT_EQ(restOf(stream), "x");
}

TEST(streamHelpers, terminator_isNotFoundBehindItsOwnBeginning) {
    std::istringstream stream("aaab-aabx");
    std::list<char> list;
    ReadCharUpTo(stream, list, "aab");
    EXPECT_EQ(asString(list), "aaab-");
    EXPECT_EQ(restOf(stream), "x");
}

// The character that ends a beginning is not looked at as a beginning itself.
TEST(streamHelpers, characterThatDoesNotFit_beginsNothing) {
    std::istringstream stream("\r\r\n;\r\nx");
    std::list<char> list;
    ReadCharUpTo(stream, list, "\r\n");
    EXPECT_EQ(asString(list), "\r\r\n;");
    EXPECT_EQ(restOf(stream), "x");
}

TEST(streamHelpers, endOfStream_appendsTheLastCharacterAgain) {
    std::istringstream stream("abc");
    std::list<char> list;
    ReadCharUpTo(stream, list, "xyz");
    EXPECT_EQ(stream.rdstate(), ios::eofbit | ios::failbit);
    EXPECT_EQ(asString(list), "abcc");
}

TEST(streamHelpers, characterAppendedAgain_isComparedToo) {
    std::istringstream stream("xa");
    std::list<char> list;
    ReadCharUpTo(stream, list, "aa");
    EXPECT_TRUE(stream.fail());
    EXPECT_EQ(asString(list), "x");
}

TEST(streamHelpers, emptyStream_appendsNothing) {
    for (const bool isFailed : {false, true}) {
        std::istringstream stream("");
        if (isFailed)
            stream.setstate(ios::failbit);
        std::list<char> list = {'>'};
        ReadCharUpTo(stream, list, "x");
        EXPECT_TRUE(stream.fail());
        EXPECT_EQ(asString(list), ">");
    }
}

TEST(streamHelpers, emptyTerminator_readsNothingIntoAList) {
    for (const char* terminator : {"", static_cast<const char*>(nullptr)}) {
        std::istringstream stream("ab");
        std::list<char> list = {'>'};
        ReadCharUpTo(stream, list, terminator);
        EXPECT_TRUE(stream.good());
        EXPECT_EQ(asString(list), ">");
        EXPECT_EQ(restOf(stream), "ab");
    }
}

TEST(streamHelpers, zerosInAList_areCharacters) {
    std::istringstream stream(bytes("a\0b;"));
    std::list<char> list;
    ReadCharUpTo(stream, list, ";");
    EXPECT_EQ(asString(list), bytes("a\0b"));
}

// A group as a program writes and reads it.
TEST(streamHelpers, listInBrackets_isReadToItsEnd) {
    std::stringstream stream;
    std::ostream& out = stream;
    std::istream& in = stream;
    OpenBracket(out);
    for (const char* name : {"red", "green", "blue"})
        CloseBracket(WriteDouble(0.5, WriteString(name, OpenBracket(out))));
    CloseBracket(out);
    const std::string half = bytes("\x00\x00\x00\x3F");
    EXPECT_EQ(stream.str(), "{{" + textBytes("red") + half + "}{" + textBytes("green") + half + "}{" +
                                textBytes("blue") + half + "}}");

    std::vector<std::string> names;
    OpenBracket(in);
    while (in.good() && !CloseBracketOn(in)) {
        std::string name;
        double value = 0.0;
        CloseBracket(ReadDouble(&value, ReadString(name, OpenBracket(in))));
        EXPECT_EQ(value, 0.5);
        names.push_back(name);
    }
    CloseBracket(in);
    EXPECT_FALSE(in.fail());
    EXPECT_THAT(names, testing::ElementsAre("red", "green", "blue"));
}

// Exceptions.

const std::function<void(std::ostream&)> kWriters[] = {
    [](std::ostream& stream) { OpenBracket(stream); },
    [](std::ostream& stream) { CloseBracket(stream); },
    [](std::ostream& stream) { WriteInt(1, stream); },
    [](std::ostream& stream) { WriteDouble(1.0, stream); },
    [](std::ostream& stream) { WriteCString("abc", stream); },
    [](std::ostream& stream) { WriteString("abc", stream); },
    [](std::ostream& stream) { BadOutputOn(stream); }};

const std::function<void(std::istream&)> kReaders[] = {
    [](std::istream& stream) { OpenBracket(stream); },
    [](std::istream& stream) { CloseBracket(stream); },
    [](std::istream& stream) {
        OpenBracketOn(stream);
        BadInputOn(stream);
    },
    [](std::istream& stream) {
        CloseBracketOn(stream);
        BadInputOn(stream);
    },
    [](std::istream& stream) { ReadInt(nullptr, stream); },
    [](std::istream& stream) { ReadDouble(nullptr, stream); },
    [](std::istream& stream) {
        char buffer[100];
        ReadCString(buffer, sizeof buffer, stream);
    },
    [](std::istream& stream) {
        std::string s;
        ReadString(s, stream);
    },
    [](std::istream& stream) {
        char buffer[100];
        ReadUpTo(stream, buffer, sizeof buffer, "xyz", nullptr);
    },
    [](std::istream& stream) { ReadUpTo(stream, nullptr, 0, "xyz", nullptr); },
    [](std::istream& stream) {
        std::list<char> list;
        ReadCharUpTo(stream, list, "xyz");
    }};

TEST(streamHelpers, writersThatFail_throwNothingAndKeepTheExceptions) {
    for (const auto& write : kWriters)
        for (const ios::iostate mask : {ios::goodbit, ios::failbit, ios::badbit, kAll}) {
            ThrowingBuffer buffer;
            std::ostream stream(&buffer);
            stream.exceptions(mask);
            EXPECT_NO_THROW(write(stream));
            EXPECT_TRUE(stream.fail());
            EXPECT_EQ(stream.exceptions(), mask);
        }
}

TEST(streamHelpers, readersThatFail_throwNothingAndKeepTheExceptions) {
    for (const auto& read : kReaders)
        for (const ios::iostate mask : {ios::goodbit, ios::failbit, ios::badbit, ios::eofbit, kAll}) {
            std::istringstream stream("  ");
            stream.exceptions(mask);
            EXPECT_NO_THROW(read(stream));
            EXPECT_TRUE(stream.fail());
            EXPECT_EQ(stream.exceptions(), mask);
        }
}

TEST(streamHelpers, readersOfABufferThatThrows_throwNothingAndSetBadbit) {
    for (const auto& read : kReaders)
        for (const char* given : {"", "  "})
            for (const ios::iostate mask : {ios::goodbit, ios::badbit, kAll}) {
                ThrowingBuffer buffer(given);
                std::istream stream(&buffer);
                stream.exceptions(mask);
                EXPECT_NO_THROW(read(stream));
                EXPECT_TRUE(stream.bad());
                EXPECT_EQ(stream.exceptions(), mask);
            }
}

TEST(streamHelpers, bufferThatThrowsInsideAText_setsBadbit) {
    ThrowingBuffer first(intBytes(50) + "abc"), second(intBytes(50) + "abc");
    std::istream forBuffer(&first), forString(&second);
    char buffer[100] = "before";
    std::string s;
    EXPECT_NO_THROW(ReadCString(buffer, sizeof buffer, forBuffer));
    EXPECT_NO_THROW(ReadString(s, forString));
    EXPECT_TRUE(forBuffer.bad());
    EXPECT_TRUE(forString.bad());
    EXPECT_LE(std::strlen(buffer), 3u);
    EXPECT_LE(s.size(), 3u);
}

TEST(streamHelpers, exceptionsOfAGoodStream_areKept) {
    std::stringstream stream;
    stream.exceptions(kAll);
    for (std::size_t i = 0; i + 1 < std::size(kWriters); ++i)
        EXPECT_NO_THROW(kWriters[i](stream));
    EXPECT_EQ(stream.exceptions(), kAll);
    EXPECT_EQ(stream.str().size(), 2 + 4 + 4 + 7 + 7u);
    EXPECT_THROW(stream.setstate(ios::failbit), ios::failure);
}

TEST(streamHelpers, streamWithoutABuffer_failsAndThrowsNothing) {
    for (const auto& write : kWriters) {
        std::ostream stream(nullptr);
        EXPECT_NO_THROW(write(stream));
        EXPECT_TRUE(stream.bad());
    }
    for (const auto& read : kReaders) {
        std::istream stream(nullptr);
        EXPECT_NO_THROW(read(stream));
        EXPECT_TRUE(stream.bad());
    }
}

} // namespace
