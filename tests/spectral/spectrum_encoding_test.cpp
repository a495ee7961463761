// The text, the file data and the short file data of a spectrum.
#include "spectral/tspectrum.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;

using Words = std::vector<std::uint16_t>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr std::uint16_t kLowestExponent = 0xFF81; // -127

std::vector<double> wavelengthsOf(const TSpectrum& spectrum) {
    return {spectrum.GetWavelengths(), spectrum.GetWavelengths() + spectrum.GetNrSamples()};
}

std::vector<double> valuesOf(const TSpectrum& spectrum) {
    return {spectrum.GetValues(), spectrum.GetValues() + spectrum.GetNrSamples()};
}

TSpectrum fromSamples(const std::vector<double>& wavelengths, const std::vector<double>& values) {
    return TSpectrum(wavelengths.data(), static_cast<int>(wavelengths.size()), values.data());
}

Words wordsOf(const std::uint16_t* data, int size) {
    return {data, data + size / 2};
}

Words fileDataOf(TSpectrum spectrum) {
    int size = 0;
    const std::uint16_t* const data = spectrum.ToFileData(&size);
    return data == nullptr ? Words() : wordsOf(data, size);
}

Words shortFileDataOf(TSpectrum spectrum, const TSpectrum& reference) {
    int size = 0;
    const std::uint16_t* const data = spectrum.ToShrtFileData(&reference, &size);
    return data == nullptr ? Words() : wordsOf(data, size);
}

// 2^e as a word.
std::uint16_t exponentWord(int e) {
    return static_cast<std::uint16_t>(e & 0xFFFF);
}

// The exponent of a standard-only spectrum whose slots are 0 but for the ones given first.
Words standardBlock(const std::vector<double>& values) {
    Standard standard = flat(0.0);
    std::copy(values.begin(), values.end(), standard.begin());
    const Words words = fileDataOf(spectrumOf(standard));
    return {words.begin() + 1, words.end()};
}

// A copy of the text that ends with its last character, so that a memory checker sees every step beyond.
struct ExactText {
    explicit ExactText(const std::string& text) : memory(new char[text.size() + 1]) {
        std::memcpy(memory.get(), text.c_str(), text.size() + 1);
    }
    std::unique_ptr<char[]> memory;
};

int statusOfText(const std::string& text) {
    const ExactText exact(text);
    const TSpectrum spectrum(exact.memory.get());
    return spectrum.GetStatus();
}

void expectRefusedText(const std::string& text) {
    const ExactText exact(text);
    const TSpectrum spectrum(exact.memory.get());
    EXPECT_EQ(spectrum.GetStatus(), 3) << text;
    EXPECT_EQ(spectrum.GetNrSamples(), 0) << text;
    EXPECT_EQ(spectrum.GetWavelengths(), nullptr) << text;
    EXPECT_EQ(spectrum.GetValues(), nullptr) << text;
    EXPECT_THAT(standardOf(spectrum), Each(-1.0)) << text;
}

void expectText(const std::string& text, const std::vector<double>& wavelengths,
                const std::vector<double>& values) {
    const ExactText exact(text);
    const TSpectrum spectrum(exact.memory.get());
    EXPECT_EQ(spectrum.GetStatus(), 0) << text;
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 1) << text;
    ASSERT_EQ(spectrum.GetNrSamples(), static_cast<int>(wavelengths.size())) << text;
    EXPECT_THAT(wavelengthsOf(spectrum), ElementsAreArray(wavelengths)) << text;
    EXPECT_THAT(valuesOf(spectrum), ElementsAreArray(values)) << text;
}

// Text.

TEST(spectrumText, numbersSeparatedByBlanks_giveTheSamples) {
    expectText("3 400 500 600 0.1 0.2 0.3", {400, 500, 600}, {0.1, 0.2, 0.3});
}

TEST(spectrumText, commasBracketsAndLetters_areSkipped) {
    expectText("3,400,500,600,0.1,0.2,0.3", {400, 500, 600}, {0.1, 0.2, 0.3});
    expectText("[3] (400)(500)(600) {0.1}{0.2}{0.3}", {400, 500, 600}, {0.1, 0.2, 0.3});
    expectText("count 3 nm 400 nm 500 nm 600 r 0.1 r 0.2 r 0.3 end", {400, 500, 600}, {0.1, 0.2, 0.3});
    expectText("\r\n3\t400;500:600\v0.1\f0.2/0.3", {400, 500, 600}, {0.1, 0.2, 0.3});
}

TEST(spectrumText, bytesFrom0x80On_areSkipped) {
    expectText("\xC3\xA9 1 \xFF\x80 500 \xB5 0.5", {500}, {0.5});
}

TEST(spectrumText, standardSampling_isInterpolated) {
    const TSpectrum spectrum("2 380 400 1 2");
    const Standard standard = standardOf(spectrum);
    EXPECT_EQ(standard[0], 1.0);
    EXPECT_EQ(standard[1], 1.5);
    EXPECT_EQ(standard[2], 2.0);
    EXPECT_EQ(standard[35], 2.0);
}

TEST(spectrumText, numbersBehindTheLastValue_areIgnored) {
    expectText("1 500 0.5 7 8 9", {500}, {0.5});
}

TEST(spectrumText, lastNumber_mayEndTheText) {
    expectText("1 500 0.5", {500}, {0.5});
    expectText("1 500 5", {500}, {5});
}

TEST(spectrumText, signsAndExponents_belongToTheNumbers) {
    expectText("+2 4e2 +7E+2 -1e-1 +.5", {400, 700}, {-0.1, 0.5});
}

TEST(spectrumText, pointAlone_startsANumber) {
    expectText("1 .5 .25", {0.5}, {0.25});
}

TEST(spectrumText, hyphenBetweenNumbers_isASign) {
    expectText("2 400-700 1-2", {400, -700}, {1, -2});
}

TEST(spectrumText, decimalComma_isASeparator) {
    expectText("2 400 700 0,5 1", {400, 700}, {0, 5});
}

// The count is a whole number: what follows its digits is read on.
TEST(spectrumText, countWithDecimals_leavesThemToTheFirstWavelength) {
    expectText("2.5 700 1 2", {0.5, 700}, {1, 2});
}

TEST(spectrumText, countWithAnExponent_leavesItToTheFirstWavelength) {
    expectText("1e3 0.25", {3}, {0.25});
}

TEST(spectrumText, hexadecimalNumbers_areRead) {
    expectText("1 0x190 0x1p-2", {400}, {0.25});
}

TEST(spectrumText, hexadecimalCount_isZero) {
    expectRefusedText("0x2 400 700 1 1");
}

TEST(spectrumText, infinityNeedsASign_toBeFound) {
    expectText("1 inf 400 2", {400}, {2});
    EXPECT_EQ(statusOfText("1 +inf 2"), 4);
    EXPECT_EQ(statusOfText("1 -nan 2"), 4);
}

TEST(spectrumText, valueBeyondTheRange_isInfinite) {
    expectText("1 400 1e999", {400}, {kInfinity});
}

TEST(spectrumText, twoSamplesAtOneWavelength_giveStatus4) {
    const TSpectrum spectrum("2 500 500 1 2");
    EXPECT_EQ(spectrum.GetStatus(), 4);
    EXPECT_EQ(spectrum.GetNrSamples(), 2);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST(spectrumText, moreThan1024Samples_areAccepted) {
    std::string text = "1100";
    for (int i = 0; i < 1100; ++i)
        text += ' ' + std::to_string(200 + i);
    for (int i = 0; i < 1100; ++i)
        text += " 0.5";
    const TSpectrum spectrum(text.c_str());
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNrSamples(), 1100);
    EXPECT_THAT(standardOf(spectrum), Each(0.5));
}

TEST(spectrumText, null_givesStatus2) {
    const TSpectrum spectrum(static_cast<const char*>(nullptr));
    EXPECT_EQ(spectrum.GetStatus(), 2);
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST(spectrumText, withoutNumbers_givesStatus3) {
    expectRefusedText("");
    expectRefusedText(" ");
    expectRefusedText("no numbers here");
}

TEST(spectrumText, countBelow1_givesStatus3) {
    expectRefusedText("0");
    expectRefusedText("0 400 1");
    expectRefusedText("-1 400 1");
    expectRefusedText("-2 400 700 1 1");
}

TEST(spectrumText, missingNumbers_giveStatus3) {
    expectRefusedText("3");
    expectRefusedText("3 400 500 600");
    expectRefusedText("3 400 500 600 0.1 0.2");
    expectRefusedText("3 400 500 600 0.1 0.2 ");
    expectRefusedText("3 400 500 600 0.1 0.2 abc");
    expectRefusedText("1 400");
}

TEST(spectrumText, signOrPointThatStartsNoNumber_givesStatus3) {
    expectRefusedText("2 400 - 500 1 1");
    expectRefusedText("2 400 . 700 1 1");
    expectRefusedText("2 400 700 1 +");
    expectRefusedText("2 400 700 1 -");
    expectRefusedText("2 400 700 1 .");
    expectRefusedText("2 400 700 1 --5");
    expectRefusedText("2 400 700 1 +-5");
    expectRefusedText("2 400 700 -e5 1");
    expectRefusedText("- 1 400 1");
    expectRefusedText("+");
}

TEST(spectrumText, countThatStartsWithAPoint_givesStatus3) {
    expectRefusedText(".5 400 1");
}

TEST(spectrumText, countBeyondInt_isClampedAndMissesItsNumbers) {
    expectRefusedText("99999999999999999999 400 1");
    expectRefusedText("-99999999999999999999 400 1");
    expectRefusedText("4294967297 400 1"); // 1 modulo 2^32
}

TEST(spectrumText, hugeCount_isRefusedAtOnce) {
    expectRefusedText("2000000000 400 500 600");
}

// File data: words.

TEST(spectrumFileData, standardOnly_isFlagExponentAnd36Mantissas) {
    Standard standard = flat(0.5);
    standard[0] = 0.75;
    standard[35] = 0.0;
    TSpectrum spectrum = spectrumOf(standard);
    int size = 0;
    const std::uint16_t* const data = spectrum.ToFileData(&size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(size, 76);
    EXPECT_EQ(spectrum.GetFileDataSize(), 76);
    Words expected(38, 32767); // 0.5 * 65535 = 32767.5
    expected[0] = 0;
    expected[1] = 0;     // 1 = 2^0 is the smallest power of two above 0.75
    expected[2] = 49151; // 0.75 * 65535 = 49151.25
    expected[37] = 0;
    EXPECT_THAT(wordsOf(data, size), ElementsAreArray(expected));
    EXPECT_EQ(spectrum.GetStatus(), 0);
}

TEST(spectrumFileData, nonUniform_isFlagCountWavelengthsExponentAndMantissas) {
    TSpectrum spectrum = fromSamples({600, 400, 500}, {1.0, 2.0, 3.0});
    int size = 0;
    const std::uint16_t* const data = spectrum.ToFileData(&size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(size, 4 * 3 + 6);
    EXPECT_EQ(spectrum.GetFileDataSize(), 18);
    // 4 = 2^2 is above 3; 65535/4 = 16383.75, 65535/2 = 32767.5, 3*65535/4 = 49151.25.
    EXPECT_THAT(wordsOf(data, size), ElementsAre(1, 3, 600, 400, 500, 2, 16383, 32767, 49151));
}

TEST(spectrumFileData, wavelengths_areFlooredToWholeNanometres) {
    const Words words = fileDataOf(fromSamples({400.999, 500.5, 600.0}, {1, 1, 1}));
    ASSERT_EQ(words.size(), 9u);
    EXPECT_EQ(words[2], 400);
    EXPECT_EQ(words[3], 500);
    EXPECT_EQ(words[4], 600);
}

TEST(spectrumFileData, wavelengthOutside16Bits_isTakenModulo65536) {
    const Words words = fileDataOf(fromSamples({-1.5, 65536.0 + 500.0}, {1, 1}));
    ASSERT_EQ(words.size(), 7u);
    EXPECT_EQ(words[2], 65534); // floor(-1.5) = -2
    EXPECT_EQ(words[3], 500);
}

TEST(spectrumFileData, wavelengthOutside64Bits_isStoredAs0) {
    const Words words = fileDataOf(fromSamples({1e300, kInfinity, -kInfinity, kNotANumber}, {1, 1, 1, 1}));
    ASSERT_EQ(words.size(), 11u);
    for (std::size_t i = 2; i < 6; ++i)
        EXPECT_EQ(words[i], 0) << i;
}

// Only a text brings so many samples.
TEST(spectrumFileData, countBeyond16Bits_isStoredModulo65536) {
    constexpr int kCount = 65536 + 3;
    std::string text = std::to_string(kCount);
    for (int i = 0; i < kCount; ++i)
        text += ' ' + std::to_string(i);
    for (int i = 0; i < kCount; ++i)
        text += " 1";
    TSpectrum spectrum(text.c_str());
    ASSERT_EQ(spectrum.GetStatus(), 0);
    int size = 0;
    const std::uint16_t* const words = spectrum.ToFileData(&size);
    ASSERT_NE(words, nullptr);
    EXPECT_EQ(size, 4 * kCount + 6);
    EXPECT_EQ(words[0], 1);
    EXPECT_EQ(words[1], 3);
    EXPECT_EQ(words[2 + 65536 + 2], 2); // the last wavelength
    EXPECT_EQ(words[2 + kCount], 1);    // 1.0 is below 2^1
    EXPECT_EQ(words[size / 2 - 1], 32767);
}

TEST(spectrumFileData, emptyBlock_storesTheLowestExponent) {
    TSpectrum refused(nullptr, 0, nullptr);
    int size = 0;
    const std::uint16_t* const data = refused.ToFileData(&size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(size, 6);
    EXPECT_THAT(wordsOf(data, size), ElementsAre(1, 0, kLowestExponent));
}

TEST(spectrumFileData, nullSize_givesNullAndStatus2) {
    TSpectrum spectrum = spectrumOf(ramp());
    EXPECT_EQ(spectrum.ToFileData(nullptr), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 2);
}

TEST(spectrumFileData, laterSuccess_leavesTheStatusOfAFailure) {
    TSpectrum spectrum = spectrumOf(ramp());
    int size = 0;
    EXPECT_EQ(spectrum.ToFileData(nullptr), nullptr);
    EXPECT_NE(spectrum.ToFileData(&size), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 2);
}

TEST(spectrumFileData, requestedTwice_givesTheSameWords) {
    TSpectrum spectrum = fromSamples({400, 700}, {0.1, 0.9});
    int size = 0;
    const std::uint16_t* data = spectrum.ToFileData(&size);
    ASSERT_NE(data, nullptr);
    const Words first = wordsOf(data, size);
    data = spectrum.ToFileData(&size);
    ASSERT_NE(data, nullptr);
    EXPECT_THAT(wordsOf(data, size), ElementsAreArray(first));
}

// The scan for the exponent and the mantissas.

TEST(spectrumEncoding, zeros_storeTheLowestExponentAndZeroMantissas) {
    const Words block = standardBlock({});
    EXPECT_EQ(block[0], kLowestExponent);
    for (std::size_t i = 1; i < block.size(); ++i)
        EXPECT_EQ(block[i], 0);
}

// 2^e is strictly greater than every value.
TEST(spectrumEncoding, powerOfTwo_takesTheExponentAbove) {
    EXPECT_EQ(standardBlock({0.5})[0], exponentWord(0));
    EXPECT_EQ(standardBlock({std::nextafter(0.5, 0.0)})[0], exponentWord(-1));
    EXPECT_EQ(standardBlock({1.0})[0], exponentWord(1));
    EXPECT_EQ(standardBlock({std::nextafter(1.0, 0.0)})[0], exponentWord(0));
    EXPECT_EQ(standardBlock({100.0})[0], exponentWord(7));
    EXPECT_EQ(standardBlock({128.0})[0], exponentWord(8));
}

TEST(spectrumEncoding, largestValueAnywhere_setsTheExponent) {
    Standard standard = flat(0.01);
    standard[35] = 5.0;
    EXPECT_EQ(fileDataOf(spectrumOf(standard))[1], 3);
}

TEST(spectrumEncoding, tinyValues_neverRaiseTheExponent) {
    const double lowest = std::ldexp(1.0, -127);
    Words block = standardBlock({lowest / 2});
    EXPECT_EQ(block[0], kLowestExponent);
    EXPECT_EQ(block[1], 32767);
    block = standardBlock({lowest});
    EXPECT_EQ(block[0], exponentWord(-126));
    EXPECT_EQ(block[1], 32767);
    block = standardBlock({std::numeric_limits<double>::denorm_min()});
    EXPECT_EQ(block[0], kLowestExponent);
    EXPECT_EQ(block[1], 0);
}

TEST(spectrumEncoding, hugeValues_keepTheirMantissa) {
    const Words block = standardBlock({std::ldexp(0.75, 1000), std::ldexp(0.5, 1000)});
    EXPECT_EQ(block[0], exponentWord(1000));
    EXPECT_EQ(block[1], 49151);
    EXPECT_EQ(block[2], 32767);
}

TEST(spectrumEncoding, scanForTheExponent_stopsAt1023) {
    EXPECT_EQ(standardBlock({std::ldexp(1.0, 1022)})[0], exponentWord(1023));
    EXPECT_EQ(standardBlock({std::ldexp(1.0, 1023)})[0], exponentWord(1023));
    EXPECT_EQ(standardBlock({std::numeric_limits<double>::max()})[0], exponentWord(1023));
    EXPECT_EQ(standardBlock({kInfinity})[0], exponentWord(1023));
}

// The product with 65535 is formed first and overflows.
TEST(spectrumEncoding, valueWhoseProductOverflows_isStoredAs0) {
    EXPECT_EQ(standardBlock({std::numeric_limits<double>::max()})[1], 0);
}

TEST(spectrumEncoding, infinity_isStoredAs0BesideMantissasOf0) {
    const Words block = standardBlock({kInfinity, 1.0, -kInfinity});
    EXPECT_EQ(block[1], 0);
    EXPECT_EQ(block[2], 0);
    EXPECT_EQ(block[3], 0);
}

TEST(spectrumEncoding, undefinedValue_isStoredAs0AndLeavesTheExponent) {
    const Words block = standardBlock({kNotANumber, 0.5});
    EXPECT_EQ(block[0], exponentWord(0));
    EXPECT_EQ(block[1], 0);
    EXPECT_EQ(block[2], 32767);
}

TEST(spectrumEncoding, negativeValues_wrapModulo65536) {
    const Words block = standardBlock({0.5, -0.25, -0.5, -1.0});
    EXPECT_EQ(block[0], exponentWord(0));
    EXPECT_EQ(block[2], 49152); // floor(-16383.75) = -16384
    EXPECT_EQ(block[3], 32768); // floor(-32767.5) = -32768
    EXPECT_EQ(block[4], 1);     // -65535
}

TEST(spectrumEncoding, negativeValuesWithin64Bits_areTakenModulo65536) {
    const Words block = standardBlock({0.5, -1e10});
    EXPECT_EQ(block[0], exponentWord(0));
    EXPECT_EQ(block[2], 58368); // -655350000000000 modulo 65536
}

TEST(spectrumEncoding, negativeValuesBeyond64Bits_areStoredAs0) {
    const Words block = standardBlock({0.5, -1e300, -std::numeric_limits<double>::max()});
    EXPECT_EQ(block[2], 0);
    EXPECT_EQ(block[3], 0);
}

TEST(spectrumEncoding, sizeOf64Bits_decidesBetweenWrappingAndZero) {
    const Words block = standardBlock({0.5, -1.4e14, -1.41e14});
    EXPECT_EQ(block[2], 49152); // -9174900000000000000 modulo 65536
    EXPECT_EQ(block[3], 0);     // -9240435000000000000 is below -2^63
}

TEST(spectrumEncoding, unsetSpectrum_isStoredAsZeros) {
    const Words words = fileDataOf(TSpectrum());
    ASSERT_EQ(words.size(), 38u);
    EXPECT_EQ(words[1], kLowestExponent);
    for (std::size_t i = 2; i < words.size(); ++i)
        EXPECT_EQ(words[i], 0) << i;
}

// Decoding.

TEST(spectrumFileData, decodedStandardValues_areMantissaTimesScaleBy65535) {
    Words words(38);
    words[1] = exponentWord(-3);
    for (std::size_t k = 0; k < 36; ++k)
        words[k + 2] = static_cast<std::uint16_t>(k * 1871 + 17);
    void* end = nullptr;
    const TSpectrum spectrum(words.data(), &end);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 0);
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    EXPECT_EQ(end, words.data() + 38);
    const Standard standard = standardOf(spectrum);
    for (std::size_t k = 0; k < 36; ++k)
        EXPECT_EQ(standard[k], static_cast<double>(words[k + 2]) * 0.125 / 65535.0) << k;
}

TEST(spectrumFileData, decodedSamples_areResampled) {
    const Words words = {1, 2, 380, 400, exponentWord(1), 32768, 65535, 7777};
    void* end = nullptr;
    const TSpectrum spectrum(words.data(), &end);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 1);
    EXPECT_EQ(end, words.data() + 7);
    EXPECT_THAT(wavelengthsOf(spectrum), ElementsAre(380, 400));
    const double low = 32768 * 2.0 / 65535;
    EXPECT_THAT(valuesOf(spectrum), ElementsAre(low, 2.0));
    const Standard standard = standardOf(spectrum);
    EXPECT_EQ(standard[0], low);
    EXPECT_EQ(standard[1], low + (2.0 - low) * (390.0 - 380.0) / (400.0 - 380.0));
    EXPECT_EQ(standard[2], 2.0);
}

TEST(spectrumFileData, nullEnd_isAccepted) {
    const Words words = {1, 1, 500, exponentWord(0), 65535};
    const TSpectrum spectrum(words.data(), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_THAT(standardOf(spectrum), Each(1.0));
}

TEST(spectrumFileData, whatFollowsInTheBuffer_isReadFromTheEnd) {
    Words words = fileDataOf(spectrumOf(flat(0.5)));
    const Words second = fileDataOf(fromSamples({450}, {0.25}));
    words.insert(words.end(), second.begin(), second.end());
    void* end = nullptr;
    const TSpectrum first(words.data(), &end);
    const TSpectrum follower(static_cast<const void*>(end), &end);
    EXPECT_EQ(first.GetNonUniformFlag(), 0);
    EXPECT_THAT(wavelengthsOf(follower), ElementsAre(450));
    EXPECT_EQ(end, words.data() + words.size());
}

TEST(spectrumFileData, exponent_isASigned16BitNumber) {
    for (const int e : {-127, -1, 0, 15, 127, 1000}) {
        const Words words = {1, 1, 500, exponentWord(e), 65535};
        EXPECT_EQ(TSpectrum(words.data(), nullptr).GetValues()[0], std::ldexp(1.0, e)) << e;
    }
}

TEST(spectrumFileData, exponentBeyondDouble_givesZeroOrInfinity) {
    const Words low = {1, 1, 500, exponentWord(-32768), 65535};
    EXPECT_EQ(TSpectrum(low.data(), nullptr).GetValues()[0], 0.0);
    const Words high = {1, 1, 500, exponentWord(32767), 1};
    EXPECT_EQ(TSpectrum(high.data(), nullptr).GetValues()[0], kInfinity);
}

// Mantissa times 2^e comes first: 65535 * 2^1008 is the last product below the overflow at 2^1024, although
// the quotient by 65535 would fit.
TEST(spectrumFileData, productWithTheMantissa_isFormedBeforeTheDivision) {
    const Words fits = {1, 1, 500, exponentWord(1008), 65535};
    EXPECT_EQ(TSpectrum(fits.data(), nullptr).GetValues()[0], std::ldexp(1.0, 1008));
    const Words overflows = {1, 1, 500, exponentWord(1009), 65535};
    EXPECT_EQ(TSpectrum(overflows.data(), nullptr).GetValues()[0], kInfinity);
}

TEST(spectrumFileData, flagOf2OrMore_givesStatus3) {
    for (const int flag : {2, 3, 0x7FFF, 0xFFFF}) {
        Words words(38, 1);
        words[0] = static_cast<std::uint16_t>(flag);
        const TSpectrum spectrum(words.data(), nullptr);
        EXPECT_EQ(spectrum.GetStatus(), 3) << flag;
        EXPECT_EQ(spectrum.GetNrSamples(), 0) << flag;
        EXPECT_EQ(spectrum.GetWavelengths(), nullptr) << flag;
        EXPECT_THAT(standardOf(spectrum), Each(-1.0)) << flag;
    }
}

TEST(spectrumFileData, countOf0OrAbove1024_givesStatus3) {
    for (const int count : {0, 1025, 0xFFFF}) {
        Words words(8, 1);
        words[1] = static_cast<std::uint16_t>(count);
        const TSpectrum spectrum(words.data(), nullptr);
        EXPECT_EQ(spectrum.GetStatus(), 3) << count;
        EXPECT_EQ(spectrum.GetNrSamples(), 0) << count;
        EXPECT_EQ(spectrum.GetWavelengths(), nullptr) << count;
        EXPECT_THAT(standardOf(spectrum), Each(-1.0)) << count;
    }
}

TEST(spectrumFileData, countOf1024_isAccepted) {
    Words words = {1, 1024};
    for (int i = 0; i < 1024; ++i)
        words.push_back(static_cast<std::uint16_t>(200 + i));
    words.push_back(0);
    words.insert(words.end(), 1024, 65535);
    void* end = nullptr;
    const TSpectrum spectrum(words.data(), &end);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNrSamples(), 1024);
    EXPECT_EQ(end, words.data() + words.size());
    EXPECT_THAT(standardOf(spectrum), Each(1.0));
}

TEST(spectrumFileData, samplesThatFloorToOneWavelength_giveStatus4OnReading) {
    const Words words = fileDataOf(fromSamples({400.2, 400.7}, {0.1, 0.2}));
    const TSpectrum spectrum(words.data(), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 4);
    EXPECT_EQ(spectrum.GetNrSamples(), 2);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST(spectrumFileData, samplesThatCannotBeInserted_areReadToTheirEndAllTheSame) {
    const Words words = {1, 2, 500, 500, 0, 65535, 65535, 4711};
    void* end = nullptr;
    const TSpectrum spectrum(words.data(), &end);
    EXPECT_EQ(spectrum.GetStatus(), 4);
    EXPECT_EQ(end, words.data() + 7);
}

TEST(spectrumFileData, nullData_giveStatus2) {
    void* end = nullptr;
    const TSpectrum spectrum(static_cast<const void*>(nullptr), &end);
    EXPECT_EQ(spectrum.GetStatus(), 2);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST(spectrumFileData, roundTrip_isGoodToOnePartIn65535OfTheScale) {
    for (const double factor : {1.0, 0.013, 640.0}) {
        Standard standard = irregular(9);
        double largest = 0.0;
        for (double& value : standard) {
            value *= factor;
            largest = std::max(largest, value);
        }
        int exponent = 0;
        std::frexp(largest, &exponent);
        const double step = std::ldexp(1.0, exponent) / 65535.0;
        const Words words = fileDataOf(spectrumOf(standard));
        const Standard decoded = standardOf(TSpectrum(words.data(), nullptr));
        for (std::size_t k = 0; k < standard.size(); ++k) {
            EXPECT_LE(decoded[k], standard[k] + step * 1e-9) << k;
            EXPECT_GT(decoded[k], standard[k] - step * (1 + 1e-9)) << k;
        }
    }
}

TEST(spectrumFileData, roundTripOfSamples_keepsWavelengthsInTheirOrder) {
    const Words words = fileDataOf(fromSamples({700, 400, 550}, {0.9, 0.1, 0.5}));
    const TSpectrum decoded(words.data(), nullptr);
    EXPECT_THAT(wavelengthsOf(decoded), ElementsAre(700, 400, 550));
    EXPECT_NEAR(decoded.GetValues()[0], 0.9, 1.0 / 65535);
    EXPECT_NEAR(decoded.GetValues()[1], 0.1, 1.0 / 65535);
    EXPECT_NEAR(decoded.GetValues()[2], 0.5, 1.0 / 65535);
}

TEST(spectrumFileData, decodedSpectrum_isEncodedToTheSameMantissas) {
    const Words words = fileDataOf(spectrumOf(irregular(10)));
    const TSpectrum decoded(words.data(), nullptr);
    Standard standard = standardOf(decoded);
    for (std::size_t k = 0; k < standard.size(); ++k)
        EXPECT_EQ(std::lround(standard[k] * 65535.0), words[k + 2]) << k;
}

// Short file data.

TEST(spectrumShortFileData, standardOnly_isExponentAnd36Mantissas) {
    const TSpectrum reference = spectrumOf(ramp());
    Standard standard = flat(0.5);
    standard[1] = 0.75;
    TSpectrum spectrum = spectrumOf(standard);
    int size = 0;
    const std::uint16_t* const data = spectrum.ToShrtFileData(&reference, &size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(size, 74);
    EXPECT_EQ(spectrum.GetFileDataSize(), 74);
    Words expected(37, 32767);
    expected[0] = 0;
    expected[2] = 49151;
    EXPECT_THAT(wordsOf(data, size), ElementsAreArray(expected));
    EXPECT_EQ(spectrum.GetStatus(), 0);
}

TEST(spectrumShortFileData, nonUniform_isExponentAndMantissas) {
    const TSpectrum reference = fromSamples({600, 400.25, 500}, {7, 8, 9});
    TSpectrum spectrum = fromSamples({600, 400.25, 500}, {1, 2, 3});
    int size = 0;
    const std::uint16_t* const data = spectrum.ToShrtFileData(&reference, &size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(size, 2 * 3 + 2);
    EXPECT_EQ(spectrum.GetFileDataSize(), 8);
    EXPECT_THAT(wordsOf(data, size), ElementsAre(2, 16383, 32767, 49151));
}

TEST(spectrumShortFileData, ownReference_isAccepted) {
    TSpectrum spectrum = fromSamples({400, 700}, {0.5, 0.5});
    int size = 0;
    EXPECT_NE(spectrum.ToShrtFileData(&spectrum, &size), nullptr);
    EXPECT_EQ(size, 6);
}

TEST(spectrumShortFileData, emptyBlock_storesTheLowestExponent) {
    const TSpectrum reference(nullptr, 0, nullptr);
    TSpectrum refused(nullptr, 0, nullptr);
    int size = 0;
    const std::uint16_t* const data = refused.ToShrtFileData(&reference, &size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(size, 2);
    EXPECT_THAT(wordsOf(data, size), ElementsAre(kLowestExponent));
}

TEST(spectrumShortFileData, nullArguments_giveNullAndStatus2) {
    const TSpectrum reference = spectrumOf(ramp());
    int size = 0;
    TSpectrum first = spectrumOf(ramp()), second = spectrumOf(ramp()), third = spectrumOf(ramp());
    EXPECT_EQ(first.ToShrtFileData(nullptr, &size), nullptr);
    EXPECT_EQ(first.GetStatus(), 2);
    EXPECT_EQ(second.ToShrtFileData(&reference, nullptr), nullptr);
    EXPECT_EQ(second.GetStatus(), 2);
    EXPECT_EQ(third.ToShrtFileData(nullptr, nullptr), nullptr);
    EXPECT_EQ(third.GetStatus(), 2);
}

void expectMismatch(TSpectrum spectrum, const TSpectrum& reference) {
    int size = 0;
    EXPECT_EQ(spectrum.ToShrtFileData(&reference, &size), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 5);
}

TEST(spectrumShortFileData, oneWavelengthDifferingByAnyAmount_givesNullAndStatus5) {
    expectMismatch(fromSamples({400, 500, 600}, {1, 1, 1}),
                   fromSamples({400, std::nextafter(500.0, 501.0), 600}, {1, 1, 1}));
    expectMismatch(fromSamples({400, 500, 600}, {1, 1, 1}), fromSamples({400, 500, 601}, {1, 1, 1}));
}

TEST(spectrumShortFileData, anotherOrderOfWavelengths_givesStatus5) {
    expectMismatch(fromSamples({400, 500}, {1, 1}), fromSamples({500, 400}, {1, 1}));
}

TEST(spectrumShortFileData, anotherCount_givesStatus5) {
    expectMismatch(fromSamples({400, 500}, {1, 1}), fromSamples({400}, {1}));
    expectMismatch(fromSamples({400}, {1}), fromSamples({400, 500}, {1, 1}));
}

TEST(spectrumShortFileData, standardOnlyAgainstNonUniform_givesStatus5) {
    expectMismatch(spectrumOf(ramp()), fromSamples({400, 500}, {1, 1}));
    expectMismatch(fromSamples({400, 500}, {1, 1}), spectrumOf(ramp()));
}

// Neither holds samples, but only one is standard-only.
TEST(spectrumShortFileData, nonUniformWithoutSamplesAgainstStandardOnly_givesStatus5) {
    const TSpectrum refused(nullptr, 1, nullptr);
    ASSERT_EQ(refused.GetNonUniformFlag(), 1);
    expectMismatch(refused, spectrumOf(ramp()));
    expectMismatch(spectrumOf(ramp()), refused);
}

TEST(spectrumShortFileData, samplesThatCannotBeInserted_areReadToTheirEndAllTheSame) {
    const TSpectrum reference = fromSamples({500, 500}, {1, 1});
    const Words words = {0, 65535, 65535, 4711};
    void* end = nullptr;
    const TSpectrum spectrum(&reference, words.data(), &end);
    EXPECT_EQ(spectrum.GetStatus(), 4);
    EXPECT_EQ(end, words.data() + 3);
}

TEST(spectrumShortFileData, laterSuccess_leavesTheStatusOfAFailure) {
    const TSpectrum other = fromSamples({400}, {1}), reference = spectrumOf(ramp());
    TSpectrum spectrum = spectrumOf(ramp());
    int size = 0;
    EXPECT_EQ(spectrum.ToShrtFileData(&other, &size), nullptr);
    EXPECT_NE(spectrum.ToShrtFileData(&reference, &size), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 5);
}

TEST(spectrumShortFileData, failures_replaceTheStatusOfEarlierOnes) {
    const TSpectrum other = fromSamples({400}, {1});
    TSpectrum spectrum = spectrumOf(ramp());
    int size = 0;
    spectrum.ToFileData(nullptr);
    spectrum.ToShrtFileData(&other, &size);
    EXPECT_EQ(spectrum.GetStatus(), 5);
    spectrum.ToFileData(nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 2);
}

TEST(spectrumShortFileData, decodedStandardValues_followAStandardOnlyReference) {
    const TSpectrum reference = spectrumOf(ramp());
    Words words(38, 65535);
    words[0] = exponentWord(-2);
    void* end = nullptr;
    const TSpectrum spectrum(&reference, words.data(), &end);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 0);
    EXPECT_THAT(standardOf(spectrum), Each(0.25));
    EXPECT_EQ(end, words.data() + 37);
}

TEST(spectrumShortFileData, decodedSamples_takeTheWavelengthsOfTheReference) {
    const TSpectrum reference = fromSamples({700.5, 400.25}, {9, 9});
    const Words words = {exponentWord(0), 65535, 13107, 4711};
    void* end = nullptr;
    const TSpectrum spectrum(&reference, words.data(), &end);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 1);
    EXPECT_THAT(wavelengthsOf(spectrum), ElementsAre(700.5, 400.25));
    EXPECT_NE(spectrum.GetWavelengths(), reference.GetWavelengths());
    EXPECT_THAT(valuesOf(spectrum), ElementsAre(1.0, 13107.0 / 65535.0));
    EXPECT_EQ(standardOf(spectrum)[35], 1.0);
    EXPECT_EQ(end, words.data() + 3);
}

TEST(spectrumShortFileData, nullEnd_isAccepted) {
    const TSpectrum reference = fromSamples({500}, {1});
    const Words words = {exponentWord(0), 65535};
    EXPECT_THAT(standardOf(TSpectrum(&reference, words.data(), nullptr)), Each(1.0));
}

TEST(spectrumShortFileData, nullReferenceOrData_giveStatus2) {
    const TSpectrum reference = spectrumOf(ramp());
    const Words words(37);
    void* end = nullptr;
    const TSpectrum* const none = nullptr;
    EXPECT_EQ(TSpectrum(none, words.data(), &end).GetStatus(), 2);
    EXPECT_EQ(TSpectrum(&reference, static_cast<const void*>(nullptr), &end).GetStatus(), 2);
}

TEST(spectrumShortFileData, referenceWithMoreThan1024Samples_givesStatus3) {
    std::string text = "1025";
    for (int i = 0; i < 1025; ++i)
        text += ' ' + std::to_string(200 + i);
    for (int i = 0; i < 1025; ++i)
        text += " 0.5";
    const TSpectrum reference(text.c_str());
    ASSERT_EQ(reference.GetNrSamples(), 1025);
    const Words words(1026, 1);
    const TSpectrum spectrum(&reference, words.data(), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 3);
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    EXPECT_EQ(spectrum.GetWavelengths(), nullptr);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST(spectrumShortFileData, referenceWithoutSamples_givesAnUnsetSpectrum) {
    const TSpectrum reference(nullptr, 0, nullptr);
    ASSERT_EQ(reference.GetNonUniformFlag(), 1);
    const Words words = {exponentWord(5), 4711};
    void* end = nullptr;
    const TSpectrum spectrum(&reference, words.data(), &end);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
    EXPECT_EQ(end, words.data() + 1);
}

TEST(spectrumShortFileData, referenceWithoutSamples_givesNoArrays) {
    const TSpectrum reference(nullptr, 0, nullptr);
    ASSERT_EQ(reference.GetNonUniformFlag(), 1);
    ASSERT_EQ(reference.GetNrSamples(), 0);
    const Words words = {exponentWord(0)};
    const TSpectrum spectrum(&reference, words.data(), nullptr);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 1);
    EXPECT_EQ(spectrum.GetWavelengths(), nullptr);
    EXPECT_EQ(spectrum.GetValues(), nullptr);
}

TEST(spectrumShortFileData, referenceWithTwoSamplesAtOneWavelength_givesStatus4) {
    const TSpectrum reference = fromSamples({500, 500}, {1, 1});
    const Words words = {0, 1, 2};
    const TSpectrum spectrum(&reference, words.data(), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 4);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST(spectrumShortFileData, roundTrip_isThatOfTheFileData) {
    const TSpectrum spectrum = fromSamples({400, 500, 600}, {0.1, 0.7, 0.3});
    const Words words = shortFileDataOf(spectrum, spectrum);
    const Words longWords = fileDataOf(spectrum);
    const TSpectrum decoded(&spectrum, words.data(), nullptr);
    const TSpectrum fromLong(longWords.data(), nullptr);
    EXPECT_THAT(standardOf(decoded), ElementsAreArray(standardOf(fromLong)));
    EXPECT_THAT(valuesOf(decoded), ElementsAreArray(valuesOf(fromLong)));
}

TEST(spectrumShortFileData, requestAfterFileData_givesTheShortForm) {
    TSpectrum spectrum = spectrumOf(ramp());
    const TSpectrum reference = spectrumOf(flat(1.0));
    int size = 0;
    ASSERT_NE(spectrum.ToFileData(&size), nullptr);
    const std::uint16_t* data = spectrum.ToShrtFileData(&reference, &size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(size, 74);
    EXPECT_EQ(data[36], 32767); // 1.0 on the scale 2
    data = spectrum.ToFileData(&size);
    ASSERT_NE(data, nullptr);
    EXPECT_EQ(size, 76);
    EXPECT_EQ(data[37], 32767);
}

} // namespace
} // namespace qxcms::tests
