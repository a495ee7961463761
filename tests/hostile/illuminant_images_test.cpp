// Illuminant files of any bytes. An image is read from memory of exactly its size through the operation that
// files go through, and from a file.
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "fuzz/kernel_probe.h"
#include "fuzz/spectrum_questions.h"
#include "spectral/tilluminant.h"
#include "tests/hostile/measured.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using detail::LayoutProbe;

std::string word(int value) {
    const auto bits = static_cast<std::uint16_t>(value);
    std::string bytes(sizeof bits, '\0');
    std::memcpy(bytes.data(), &bits, sizeof bits);
    return bytes;
}

// "QXILV100", a name, file data of two samples: flag, count, wavelengths, exponent, mantissas.
std::string binaryImage() {
    return std::string("QXILV100\x01") + "D" + word(1) + word(2) + word(400) + word(700) + word(1) +
           word(65535) + word(32768);
}

// "QXILV100", a name of even length and the byte that evens it out, file data of 36 standard values.
std::string standardImage() {
    return std::string("QXILV100\x02", 9) + "D5" + std::string(1, '\0') + word(0) + word(1) +
           repeated(word(1000), 36);
}

const std::string kTextImage = "QXILTEXT\nflat\n2 400 700 1 1";

struct MeasuredImage : Measured<int> {
    explicit MeasuredImage(const std::string& image)
        : MeasuredImage(image.size(), copyOf(image),
                        std::make_unique<TIlluminant>(static_cast<const void*>(nullptr))) {}

    int code() const { return result; }

    std::unique_ptr<TIlluminant> illuminant;

private:
    // Memory of exactly the size: a step beyond is seen by sanitizers.
    static std::unique_ptr<char[]> copyOf(const std::string& image) {
        std::unique_ptr<char[]> copy(new char[image.size()]);
        std::memcpy(copy.get(), image.data(), image.size());
        return copy;
    }

    MeasuredImage(std::size_t length, const std::unique_ptr<char[]>& memory,
                  std::unique_ptr<TIlluminant> target)
        : Measured<int>(length, [&] { return LayoutProbe::readImage(*target, memory.get(), length); }),
          illuminant(std::move(target)) {}
};

void expectAnswer(const std::string& image, int code) {
    const MeasuredImage read(image);
    ASSERT_EQ(read.code(), code) << image.size() << " bytes";
    ASSERT_TRUE(staysWithinMemory(read));
    ASSERT_TRUE(isAnsweredInTime(read));
}

void expectOneOfItsAnswers(const std::string& image) {
    const MeasuredImage read(image);
    ASSERT_TRUE(read.code() == 0 || (read.code() >= 3 && read.code() <= 5)) << read.code();
    ASSERT_EQ(read.illuminant->GetName() == nullptr, read.code() == 5);
    ASSERT_TRUE(staysWithinMemory(read));
    if (read.illuminant->GetSpectrum() != nullptr)
        fuzz::askSpectrum(*read.illuminant->GetSpectrum());
}

TEST(hostileImages, wholeOnes_areRead) {
    for (const std::string& image : {binaryImage(), standardImage(), kTextImage})
        EXPECT_EQ(MeasuredImage(image).code(), 0);
}

// Magic, version, length and name that do not fit are no illuminant file; a spectrum that does not fit is
// bad.
TEST(hostileImages, everyPrefixOfABinaryOne_isRefused) {
    for (const std::string& image : {binaryImage(), standardImage()}) {
        const std::size_t nameEnd = 9 + static_cast<std::size_t>(image[8]);
        for (std::size_t length = 0; length < image.size(); ++length)
            ASSERT_NO_FATAL_FAILURE(expectAnswer(image.substr(0, length), length < nameEnd ? 5 : 3))
                << length;
    }
}

TEST(hostileImages, everyPrefixOfATextOne_isRefused) {
    const std::size_t nameEnd = std::strlen("QXILTEXT\nflat\n");
    for (std::size_t length = 0; length < kTextImage.size(); ++length)
        ASSERT_NO_FATAL_FAILURE(expectAnswer(kTextImage.substr(0, length), length < nameEnd ? 5 : 3))
            << length;
}

TEST(hostileImages, everyOtherByte_hasItsAnswer) {
    for (const std::string& image : {binaryImage(), standardImage(), kTextImage})
        for (std::size_t place = 0; place < image.size(); ++place)
            for (int byte = 0; byte < 256; ++byte) {
                std::string damaged = image;
                damaged[place] = static_cast<char>(byte);
                ASSERT_NO_FATAL_FAILURE(expectOneOfItsAnswers(damaged));
            }
}

TEST(hostileImages, everyPrefixInAFile_isAnsweredAlike) {
    const ScratchFolder folder;
    for (const std::string& image : {binaryImage(), kTextImage})
        for (std::size_t length = 0; length <= image.size(); ++length) {
            const std::string bytes = image.substr(0, length);
            const std::string file = folder.write("hostile.ill", bytes);
            ASSERT_EQ(TIlluminant(file.c_str()).GetStatus(), MeasuredImage(bytes).code()) << length;
        }
}

TEST(hostileImages, countsBeyondTheImage_areRefused) {
    const std::string head("QXILV100\x01"
                           "D");
    for (const int count : {3, 1024, 1025, 32768, 65535})
        expectAnswer(head + word(1) + word(count) + word(400) + word(700) + word(1) + word(1) + word(1), 3);
    expectAnswer(head + word(1) + word(0), 3);
    expectAnswer(head + word(2) + repeated(word(1), 100), 3);
    expectAnswer(head + word(65535) + repeated(word(1), 100), 3);
}

TEST(hostileImages, namesBeyondTheImage_areRefused) {
    for (const char* length : {"\x03", "\x7f", "\xff"})
        expectAnswer("QXILV100" + std::string(length) + "ab", 5);
}

TEST(hostileImages, countsInATextBeyondIt_areRefused) {
    for (const char* count : {"3", "2147483647", "2147483648", "9999999999", "0", "-1", "-2147483649"})
        expectAnswer("QXILTEXT\nname\n" + std::string(count) + " 400 700 1 1", 3);
}

TEST(hostileImages, twoSamplesAtOneWavelength_makeNoSpectrum) {
    expectAnswer("QXILTEXT\nname\n2 400 400 1 1", 4);
}

TEST(hostileImages, namesOf1023Characters_areTheLongest) {
    expectAnswer("QXILTEXT" + std::string(1023, 'n') + "\n1 400 1", 0);
    expectAnswer("QXILTEXT" + std::string(1024, 'n') + "\n1 400 1", 5);
}

TEST(hostileImages, mebibytes_stayWithinLimits) {
    expectAnswer(filled(kMebibyte, "n", "QXILTEXT"), 5);
    expectAnswer(filled(kMebibyte, "\n", "QXILTEXT"), 5);
    expectAnswer(filled(kMebibyte, "\xff", "QXILTEXT"), 5);
    expectAnswer(filled(kMebibyte, "n", "QXILV100\xff"), 3);
    expectAnswer(filled(kMebibyte, "n"), 5);
    expectAnswer(filled(kMebibyte, "1 ", "QXILTEXT\nname\n2147483647 "), 3);
    expectAnswer(filled(kMebibyte, "+", "QXILTEXT\nname\n1 "), 3);
    expectAnswer(filled(kMebibyte, "x", "QXILTEXT\nname\n1 400 1 "), 0);
}

} // namespace
} // namespace qxcms::tests
