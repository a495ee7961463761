// The serialised forms of a spectrum: text, file data and short file data.
#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <vector>

#include "base/byte_reader.h"
#include "base/guarded.h"
#include "base/number_text.h"
#include "spectral/tspectrum.h"

using qxcms::detail::ByteReader;

namespace {

constexpr int kNoMemory = 1;
constexpr int kBadArgument = 2;
constexpr int kBadData = 3;
constexpr int kOtherSampling = 5;

constexpr std::uint16_t kFlagStandard = 0;
constexpr std::uint16_t kFlagNonUniform = 1;

// A block: one signed exponent e, then mantissas floor(value * 65535 / 2^e), 2^e being the smallest power of
// two above every value, not below 2^-127 and not above 2^1023.
constexpr int kLowestExponent = -127;
constexpr int kHighestExponent = 1023;
constexpr double kMantissaScale = 65535.0;

// floor(x) as a 16-bit word: modulo 2^16 while it fits 64 bits, else 0 (undefined numbers too).
// Kept on purpose: a negative value wraps and does not come back
// (spectrumEncoding.negativeValues_wrapModulo65536).
std::uint16_t wordOf(double x) {
    constexpr double kTwoTo63 = 9223372036854775808.0;
    const double whole = std::floor(x);
    if (!(whole >= -kTwoTo63 && whole < kTwoTo63))
        return 0;
    return static_cast<std::uint16_t>(static_cast<std::int64_t>(whole));
}

// Walks over a text from number to number.
class NumberScanner {
public:
    NumberScanner(const char* first, const char* last) : position(first), end(last) {}

    bool next(int& number) {
        return take([&](const char** stop) { number = qxcms::detail::parseInt(position, end, stop); });
    }
    bool next(double& number) {
        return take([&](const char** stop) { number = qxcms::detail::parseDouble(position, end, stop); });
    }

private:
    static bool mayStartNumber(char c) { return (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.'; }

    template <class Parse>
    bool take(Parse parse) {
        position = std::find_if(position, end, mayStartNumber);
        const char* stop = position;
        parse(&stop);
        const bool found = stop != position;
        position = stop;
        return found;
    }

    const char* position;
    const char* end;
};

// The wavelengths, then the values of a text; empty when the text does not hold what its count announces.
// Memory grows with the numbers that are there, not with the count.
std::vector<double> scanSamples(const char* first, const char* last) {
    NumberScanner scanner(first, last);
    int count = 0;
    if (!scanner.next(count) || count < 1)
        return {};
    std::vector<double> numbers;
    for (std::int64_t missing = std::int64_t{2} * count; missing > 0; --missing) {
        double number = 0.0;
        if (!scanner.next(number))
            return {};
        numbers.push_back(number);
    }
    return numbers;
}

} // namespace

TSpectrum::TSpectrum(const char* text) {
    SetToZero();
    if (text == nullptr)
        status = kBadArgument;
    else
        readText(text, text + std::strlen(text));
}

TSpectrum::TSpectrum(const void* data, void** end) {
    SetToZero();
    if (data == nullptr) {
        status = kBadArgument;
        return;
    }
    ByteReader reader = ByteReader::trusting(data);
    readFileData(reader);
    if (end != nullptr)
        *end = const_cast<unsigned char*>(reader.at());
}

TSpectrum::TSpectrum(const TSpectrum* reference, const void* shortData, void** end) {
    SetToZero();
    if (reference == nullptr || shortData == nullptr) {
        status = kBadArgument;
        return;
    }
    ByteReader reader = ByteReader::trusting(shortData);
    readShortFileData(*reference, reader);
    if (end != nullptr)
        *end = const_cast<unsigned char*>(reader.at());
}

void TSpectrum::readText(const char* first, const char* last) {
    nonUniform = 1;
    status = qxcms::detail::guarded(kNoMemory, [&] {
        const std::vector<double> numbers = scanSamples(first, last);
        if (numbers.empty())
            return kBadData;
        const auto count = numbers.size() / 2;
        adoptSamples(numbers.data(), numbers.data() + count, static_cast<std::int32_t>(count));
        return static_cast<int>(status);
    });
    if (status == 0)
        CalcStandardSpec();
}

void TSpectrum::readFileData(ByteReader& reader) {
    std::uint16_t flag = 0;
    if (!reader.readWord(flag) || flag > kFlagNonUniform) {
        status = kBadData;
        return;
    }
    nonUniform = flag;
    if (flag == kFlagStandard) {
        if (!readBlock(reader, standard, kStandardCount))
            status = kBadData;
        return;
    }
    std::uint16_t count = 0;
    double readWavelengths[kMaxSamples];
    if (!reader.readWord(count) || count < 1 || count > kMaxSamples) {
        status = kBadData;
        return;
    }
    for (int i = 0; i < count; ++i) {
        std::uint16_t nanometres = 0;
        if (!reader.readWord(nanometres)) {
            status = kBadData;
            return;
        }
        readWavelengths[i] = nanometres;
    }
    readSampleBlock(reader, readWavelengths, count);
}

void TSpectrum::readShortFileData(const TSpectrum& reference, ByteReader& reader) {
    nonUniform = reference.nonUniform;
    if (nonUniform == kFlagStandard) {
        if (!readBlock(reader, standard, kStandardCount))
            status = kBadData;
    } else if (nonUniform != kFlagNonUniform || reference.nrSamples < 0 ||
               reference.nrSamples > kMaxSamples) {
        status = kBadData;
    } else {
        readSampleBlock(reader, reference.wavelengths, reference.nrSamples);
    }
}

void TSpectrum::readSampleBlock(ByteReader& reader, const double* ofWavelengths, int count) {
    double block[kMaxSamples];
    if (!readBlock(reader, block, count)) {
        status = kBadData;
        return;
    }
    if (count > 0)
        adoptSamples(ofWavelengths, block, count);
    if (status == 0)
        CalcStandardSpec();
}

bool TSpectrum::readBlock(ByteReader& reader, double* block, int count) {
    if (reader.remaining() < sizeof(std::uint16_t) * (static_cast<std::size_t>(count) + 1))
        return false;
    std::uint16_t exponent = 0;
    reader.readWord(exponent);
    const double scale = std::ldexp(1.0, static_cast<std::int16_t>(exponent));
    for (int i = 0; i < count; ++i) {
        std::uint16_t mantissa = 0;
        reader.readWord(mantissa);
        block[i] = mantissa * scale / kMantissaScale;
    }
    return true;
}

void TSpectrum::writeBlock(const double* block, int count, std::uint16_t* out) {
    int exponent = kLowestExponent;
    double scale = std::ldexp(1.0, kLowestExponent);
    for (int i = 0; i < count; ++i)
        while (block[i] >= scale && exponent < kHighestExponent) {
            ++exponent;
            scale *= 2.0;
        }
    out[0] = static_cast<std::uint16_t>(exponent);
    for (int i = 0; i < count; ++i)
        out[1 + i] = wordOf(block[i] * kMantissaScale / scale);
}

std::uint16_t* TSpectrum::ToFileData(int* size) {
    if (size == nullptr) {
        status = kBadArgument;
        return nullptr;
    }
    discardFileData();
    const auto samples = static_cast<std::size_t>(nrSamples);
    const std::size_t words = nonUniform != 0 ? 2 * samples + 3 : std::size_t{kStandardCount} + 2;
    fileData = newWords(words, size);
    if (fileData == nullptr)
        return nullptr;
    fileData[0] = static_cast<std::uint16_t>(nonUniform);
    if (nonUniform == 0) {
        writeBlock(standard, kStandardCount, fileData + 1);
    } else {
        fileData[1] = static_cast<std::uint16_t>(nrSamples);
        std::transform(wavelengths, wavelengths + nrSamples, fileData + 2, wordOf);
        writeBlock(values, nrSamples, fileData + 2 + nrSamples);
    }
    return fileData;
}

std::uint16_t* TSpectrum::ToShrtFileData(const TSpectrum* reference, int* size) {
    discardFileData();
    if (reference == nullptr || size == nullptr) {
        status = kBadArgument;
        return nullptr;
    }
    if (!hasSamplingOf(*reference)) {
        status = kOtherSampling;
        return nullptr;
    }
    const double* const block = nonUniform != 0 ? values : standard;
    const int count = nonUniform != 0 ? nrSamples : kStandardCount;
    shortFileData = newWords(static_cast<std::size_t>(count) + 1, size);
    if (shortFileData != nullptr)
        writeBlock(block, count, shortFileData);
    return shortFileData;
}

std::uint16_t* TSpectrum::newWords(std::size_t words, int* size) {
    constexpr std::size_t kMaxWords = std::numeric_limits<std::int32_t>::max() / sizeof(std::uint16_t);
    std::uint16_t* const buffer = words <= kMaxWords ? new (std::nothrow) std::uint16_t[words] : nullptr;
    if (buffer == nullptr) {
        status = kNoMemory;
        return nullptr;
    }
    fileDataSize = static_cast<std::int32_t>(words * sizeof(std::uint16_t));
    *size = fileDataSize;
    return buffer;
}

void TSpectrum::discardFileData() {
    delete[] fileData;
    delete[] shortFileData;
    fileData = nullptr;
    shortFileData = nullptr;
}

bool TSpectrum::hasSamplingOf(const TSpectrum& reference) const {
    return nonUniform == reference.nonUniform && nrSamples == reference.nrSamples &&
           std::equal(wavelengths, wavelengths + nrSamples, reference.wavelengths);
}
