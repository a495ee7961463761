// The serialised forms of a spectrum, of any bytes: read through the operations that know a length, from
// memory of exactly that length.
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fuzz/kernel_probe.h"
#include "fuzz/spectrum_questions.h"
#include "spectral/tspectrum.h"
#include "tests/hostile/measured.h"

namespace qxcms::tests {
namespace {

using detail::LayoutProbe;

// Bytes of a form, in memory of exactly their size.
struct Bytes {
    explicit Bytes(const std::string& from) : size(from.size()), memory(new char[from.size()]) {
        std::memcpy(memory.get(), from.data(), size);
    }

    const char* begin() const { return memory.get(); }
    const char* end() const { return memory.get() + size; }

    std::size_t size;
    std::unique_ptr<char[]> memory;
};

struct MeasuredSpectrum : Measured<int> {
    template <class Read>
    MeasuredSpectrum(const std::string& form, Read read)
        : MeasuredSpectrum(Bytes(form), read, std::make_unique<TSpectrum>()) {}

    int status() const { return result; }

    std::unique_ptr<TSpectrum> spectrum;

private:
    template <class Read>
    MeasuredSpectrum(const Bytes& bytes, Read read, std::unique_ptr<TSpectrum> target)
        : Measured<int>(bytes.size,
                        [&] {
                            read(*target, bytes);
                            return target->GetStatus();
                        }),
          spectrum(std::move(target)) {}
};

MeasuredSpectrum text(const std::string& form) {
    return MeasuredSpectrum(form, [](TSpectrum& spectrum, const Bytes& bytes) {
        LayoutProbe::readText(spectrum, bytes.begin(), bytes.end());
    });
}

MeasuredSpectrum fileData(const std::string& form) {
    return MeasuredSpectrum(form, [](TSpectrum& spectrum, const Bytes& bytes) {
        LayoutProbe::readFileData(spectrum, bytes.begin(), bytes.size);
    });
}

MeasuredSpectrum shortData(const TSpectrum& reference, const std::string& form) {
    return MeasuredSpectrum(form, [&reference](TSpectrum& spectrum, const Bytes& bytes) {
        LayoutProbe::readShortFileData(spectrum, reference, bytes.begin(), bytes.size);
    });
}

void expectStatus(const MeasuredSpectrum& read, int status) {
    ASSERT_EQ(read.status(), status);
    ASSERT_TRUE(staysWithinMemory(read));
    ASSERT_TRUE(isAnsweredInTime(read));
}

void expectOneOfItsStatuses(const MeasuredSpectrum& read) {
    ASSERT_TRUE(read.status() == 0 || read.status() == 3 || read.status() == 4) << read.status();
    ASSERT_TRUE(staysWithinMemory(read));
    fuzz::askSpectrum(*read.spectrum);
}

// Every byte of a form replaced by every other.
template <class Read>
void forEveryOtherByte(const std::string& form, Read read) {
    for (std::size_t place = 0; place < form.size(); ++place)
        for (int byte = 0; byte < 256; ++byte) {
            std::string damaged = form;
            damaged[place] = static_cast<char>(byte);
            ASSERT_NO_FATAL_FAILURE(expectOneOfItsStatuses(read(damaged))) << place << " is " << byte;
        }
}

std::string words(const std::vector<int>& values) {
    std::string bytes;
    for (const int value : values) {
        const auto bits = static_cast<std::uint16_t>(value);
        bytes.append(reinterpret_cast<const char*>(&bits), sizeof bits);
    }
    return bytes;
}

std::string standardFileData() {
    return words({0, 1}) + repeated(words({1000}), 36);
}

const std::string kText = "3 400 500 600 0.1 .2 3e-1";

// ---- Text

TEST(hostileSpectrumText, whole_isRead) {
    expectStatus(text(kText), 0);
}

// The last number is there from its first digit on: "3" and "3e" and "3e-" are the number 3.
TEST(hostileSpectrumText, everyPrefix_isRefusedUntilItsLastNumberBegins) {
    const std::size_t last = kText.rfind('3');
    for (std::size_t length = 0; length <= kText.size(); ++length)
        ASSERT_NO_FATAL_FAILURE(expectStatus(text(kText.substr(0, length)), length > last ? 0 : 3)) << length;
}

TEST(hostileSpectrumText, everyOtherByte_hasItsStatus) {
    forEveryOtherByte(kText, text);
}

TEST(hostileSpectrumText, countsBeyondIt_areRefused) {
    for (const char* count : {"4", "1000000", "2147483647", "2147483648", "9999999999", "0", "-3"})
        expectStatus(text(std::string(count) + " 400 500 600 1 2 3"), 3);
}

TEST(hostileSpectrumText, wavelengthsThatAreNoPlace_makeNoSpectrum) {
    for (const char* wavelength : {"+nan", "-nan(7)", "+inf", "-infinity", "1e9999999999"})
        expectStatus(text("1 " + std::string(wavelength) + " 1"), 4);
}

TEST(hostileSpectrumText, mebibytes_stayWithinLimits) {
    expectStatus(text(filled(kMebibyte, "1 ", "2147483647 ")), 3);
    expectStatus(text(filled(kMebibyte, ".1", "262000 ")), 4);
    expectStatus(text(filled(kMebibyte, "+1", "2147483647")), 3);
    expectStatus(text(filled(kMebibyte, "9")), 3);
    expectStatus(text(filled(kMebibyte, "9", "1 1 ")), 0);
    expectStatus(text(filled(kMebibyte, "9", "1 ", " 1")), 4); // an infinite wavelength
    expectStatus(text(filled(kMebibyte, "0", "1 0.", "1 1")), 0);
    expectStatus(text(filled(kMebibyte, "9", "1 1 1e")), 0);
    expectStatus(text(filled(kMebibyte, "f", "1 1 0x")), 0);
    expectStatus(text(filled(kMebibyte, "-", "1 1 ")), 3);
    expectStatus(text(filled(kMebibyte, ".", "1 1 ")), 3);
    expectStatus(text(filled(kMebibyte, "x", "1 1 ")), 3);
    expectStatus(text(filled(kMebibyte, "+nan(", "1 1 ")), 0);
    expectStatus(text(filled(kMebibyte, "a", "1 1 +nan(")), 0);
    expectStatus(text(filled(kMebibyte, "+infinit", "1 1 ")), 0);
    expectStatus(text(filled(kMebibyte, std::string(1, '\0'), "1 1 1")), 0);
}

// As many different wavelengths as fit, the last first.
TEST(hostileSpectrumText, mebibyteOfSamples_staysWithinLimits) {
    constexpr int kSamples = 120000;
    std::string form = std::to_string(kSamples);
    for (int i = kSamples; i > 0; --i)
        form += " " + std::to_string(i);
    form += repeated(" 1", kSamples);
    ASSERT_LT(form.size(), kMebibyte);
    const MeasuredSpectrum read = text(form);
    expectStatus(read, 0);
    EXPECT_EQ(read.spectrum->GetNrSamples(), kSamples);
}

TEST(hostileSpectrumText, samplesAtEveryPowerOfTwo_stayWithinMemory) {
    for (int power = 1; power <= 1 << 16; power *= 2)
        for (const int samples : {power - 1, power, power + 1}) {
            const MeasuredSpectrum read = text(std::to_string(samples) + repeated(".1", 2 * samples));
            ASSERT_TRUE(staysWithinMemory(read)) << samples;
        }
}

// ---- File data

TEST(hostileFileData, everyPrefix_isRefused) {
    for (const std::string& form : {standardFileData(), words({1, 3, 400, 500, 600, 1, 1, 2, 3})}) {
        expectStatus(fileData(form), 0);
        for (std::size_t length = 0; length < form.size(); ++length)
            ASSERT_NO_FATAL_FAILURE(expectStatus(fileData(form.substr(0, length)), 3)) << length;
    }
}

TEST(hostileFileData, everyOtherByte_hasItsStatus) {
    forEveryOtherByte(standardFileData(), fileData);
    forEveryOtherByte(words({1, 3, 400, 500, 600, 1, 1, 2, 3}), fileData);
}

TEST(hostileFileData, everyFlag_butTwoIsRefused) {
    const std::string rest = words({1}) + repeated(words({1000}), 36);
    for (int flag = 0; flag < 65536; ++flag)
        ASSERT_EQ(fileData(words({flag}) + rest).status(), flag > 1 ? 3 : 0) << flag;
}

TEST(hostileFileData, everyCount_isHeldAgainstTheData) {
    const std::string rest = words({400, 700, 1, 1, 2});
    for (int count = 0; count < 65536; ++count)
        ASSERT_EQ(fileData(words({1, count}) + rest).status(), count == 1 || count == 2 ? 0 : 3) << count;
}

TEST(hostileFileData, everyExponent_isAccepted) {
    for (int exponent = -32768; exponent < 32768; ++exponent)
        ASSERT_EQ(fileData(words({1, 1, 400, exponent, 65535})).status(), 0) << exponent;
}

TEST(hostileFileData, mebibytes_stayWithinLimits) {
    expectStatus(fileData(std::string(kMebibyte, '\0')), 0);
    expectStatus(fileData(std::string(kMebibyte, '\xff')), 3);
    expectStatus(fileData(filled(kMebibyte, words({7}), words({1, 1024}))), 4); // all at one wavelength
    expectStatus(fileData(filled(kMebibyte, words({7}), words({1, 1025}))), 3);
}

// ---- Short file data

TEST(hostileShortData, everyPrefix_isRefused) {
    const double wavelengths[] = {400, 500, 600}, values[] = {1, 1, 1};
    const TSpectrum samples(wavelengths, 3, values);
    const TSpectrum standard;
    const std::string ofSamples = words({1, 1, 2, 3});
    const std::string ofStandard = words({1}) + repeated(words({1000}), 36);
    expectStatus(shortData(samples, ofSamples), 0);
    expectStatus(shortData(standard, ofStandard), 0);
    for (std::size_t length = 0; length < ofSamples.size(); ++length)
        ASSERT_NO_FATAL_FAILURE(expectStatus(shortData(samples, ofSamples.substr(0, length)), 3)) << length;
    for (std::size_t length = 0; length < ofStandard.size(); ++length)
        ASSERT_NO_FATAL_FAILURE(expectStatus(shortData(standard, ofStandard.substr(0, length)), 3)) << length;
}

TEST(hostileShortData, everyOtherByte_hasItsStatus) {
    const double wavelengths[] = {400, 500, 600}, values[] = {1, 1, 1};
    const TSpectrum samples(wavelengths, 3, values);
    const TSpectrum standard;
    forEveryOtherByte(words({1, 1, 2, 3}), [&](const std::string& form) { return shortData(samples, form); });
    forEveryOtherByte(words({1}) + repeated(words({1000}), 36),
                      [&](const std::string& form) { return shortData(standard, form); });
}

TEST(hostileShortData, referenceOfTooManySamples_isRefused) {
    for (const int samples : {1024, 1025, 100000}) {
        std::string form = std::to_string(samples);
        for (int i = 0; i < samples; ++i)
            form += " " + std::to_string(i);
        const TSpectrum reference((form + repeated(" 1", samples)).c_str());
        ASSERT_EQ(reference.GetNrSamples(), samples);
        expectStatus(shortData(reference, std::string(kMebibyte, '\0')), samples > 1024 ? 3 : 0);
    }
}

} // namespace
} // namespace qxcms::tests
