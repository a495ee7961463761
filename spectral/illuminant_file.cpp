// Reading and writing illuminant files.
//
// Binary form: "QXIL", "V100", one byte of name length, the name, a zero byte when that is needed to reach an
// even offset, the spectrum as file data. Text form: "QXIL", "TEXT", the name on a line, the spectrum as
// text.
#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>
#include <vector>

#include "base/byte_reader.h"
#include "base/guarded.h"
#include "base/owned_text.h"
#include "platform/logical_names.h"
#include "platform/utility.h"
#include "spectral/tilluminant.h"

using qxcms::detail::ByteReader;

namespace {

constexpr int kBadArgument = 2;
constexpr int kNotSaved = 3;
constexpr int kNoMemory = 3;
constexpr int kFileFailure = 4;
constexpr int kNoIlluminantFile = 5;

// The status of a spectrum.
constexpr int kNoMemoryOrTable = 1;

constexpr std::size_t kTagSize = 4;
constexpr char kMagic[] = "QXIL";
constexpr char kBinaryVersion[] = "V100";
constexpr char kTextVersion[] = "TEXT";

// Kept on purpose: the limit holds for text files too
// (illuminantFile.sizeLimit_boundsTextFilesToo).
constexpr long kMinFileSize = 4;
constexpr long kMaxFileSize = 2048;

constexpr std::size_t kMaxBinaryName = 255;
// A name of the text form that reaches this length is refused.
constexpr std::size_t kMaxTextName = 1024;

struct FileCloser {
    void operator()(FILE* file) const { close_resolved_file(file); }
};

using File = std::unique_ptr<FILE, FileCloser>;

bool hasIlluminantExtension(const char* fileName) {
    const char* const dot = std::strrchr(fileName, '.');
    return dot != nullptr && strcmp_ci(dot + 1, "ill") == 0;
}

bool takeTag(ByteReader& reader, const char* tag) {
    return reader.remaining() >= kTagSize && std::memcmp(reader.at(), tag, kTagSize) == 0 &&
           reader.skip(kTagSize);
}

// What stands before the name of the text form. Kept on purpose: the comparison is signed, so that bytes from
// 0x80 on are skipped as well, on every platform (illuminantText.bytesFrom0x80On_areSkippedBeforeTheName).
bool isSkippedBeforeName(unsigned char byte) {
    return static_cast<signed char>(byte) < 0x20;
}

bool isLineEnd(unsigned char byte) {
    return byte == '\n' || byte == '\r';
}

// True for a spectrum that found no memory for its samples. Samples without an interpolation table are
// another matter: such a spectrum is taken, with its status.
bool ranOutOfMemory(const TSpectrum& spectrum) {
    return spectrum.GetStatus() == kNoMemoryOrTable && spectrum.GetNrSamples() == 0;
}

void append(std::vector<unsigned char>& image, const void* data, std::size_t size) {
    const auto* const bytes = static_cast<const unsigned char*>(data);
    image.insert(image.end(), bytes, bytes + size);
}

int writeFile(const char* fileName, const std::vector<unsigned char>& image) {
    File file(open_resolved_file(fileName, "w"));
    if (!file)
        return kFileFailure;
    const auto size = static_cast<long>(image.size());
    const bool written = fputm(file.get(), image.data(), size) == size;
    const bool closed = close_resolved_file(file.release()) == 0;
    return written && closed ? 0 : kFileFailure;
}

} // namespace

TIlluminant::TIlluminant(const void* fileImage) : status(0) {
    status = ReadFrom(fileImage);
}

TIlluminant::TIlluminant(const char* fileName) : status(0) {
    status = qxcms::detail::guarded(kNoMemory, [&] { return readFile(fileName); });
}

int TIlluminant::readFile(const char* fileName) {
    if (fileName == nullptr || !hasIlluminantExtension(fileName))
        return kBadArgument;
    const File file(open_resolved_file(fileName, "r"));
    if (!file)
        return kFileFailure;
    const long size = fgeteof(file.get());
    if (size < kMinFileSize || size > kMaxFileSize)
        return kNoIlluminantFile;
    // Allocated storage starts at an even address, which the binary form relies on.
    std::vector<unsigned char> image(static_cast<std::size_t>(size));
    if (fgetm(file.get(), image.data(), size) != size)
        return kFileFailure;
    return readImage(ByteReader(image.data(), image.size()));
}

int TIlluminant::ReadFrom(const void* fileImage) {
    if (fileImage == nullptr)
        return kBadArgument;
    return qxcms::detail::guarded(kNoMemory, [&] { return readImage(ByteReader::trusting(fileImage)); });
}

int TIlluminant::readImage(ByteReader reader) {
    if (!takeTag(reader, kMagic))
        return kNoIlluminantFile;
    if (takeTag(reader, kTextVersion))
        return readTextImage(reader);
    if (takeTag(reader, kBinaryVersion))
        return readBinaryImage(reader);
    return kNoIlluminantFile;
}

int TIlluminant::readTextImage(ByteReader reader) {
    while (reader.remaining() > 0 && isSkippedBeforeName(*reader.at()))
        reader.skip(1);
    const auto* const newName = reinterpret_cast<const char*>(reader.at());
    std::size_t length = 0;
    while (reader.remaining() > 0 && length < kMaxTextName && !isLineEnd(*reader.at())) {
        reader.skip(1);
        ++length;
    }
    if (reader.remaining() == 0 || length == kMaxTextName)
        return kNoIlluminantFile;
    const auto* const text = reinterpret_cast<const char*>(reader.at());
    auto newSpectrum = std::make_unique<TSpectrum>();
    newSpectrum->readText(text, text + (reader.isUnbounded() ? std::strlen(text) : reader.remaining()));
    return adopt(newName, length, std::move(newSpectrum));
}

int TIlluminant::readBinaryImage(ByteReader reader) {
    if (reader.remaining() == 0)
        return kNoIlluminantFile;
    const std::size_t length = *reader.at();
    reader.skip(1);
    const auto* const newName = reinterpret_cast<const char*>(reader.at());
    if (!reader.skip(length))
        return kNoIlluminantFile;
    if (reinterpret_cast<std::uintptr_t>(reader.at()) % 2 != 0)
        reader.skip(1);
    auto newSpectrum = std::make_unique<TSpectrum>();
    newSpectrum->readFileData(reader);
    return adopt(newName, length, std::move(newSpectrum));
}

int TIlluminant::adopt(const char* newName, std::size_t length, std::unique_ptr<TSpectrum> newSpectrum) {
    auto nameCopy = qxcms::detail::copyText(newName, length);
    if (!nameCopy || ranOutOfMemory(*newSpectrum))
        return kNoMemory;
    name = std::move(nameCopy);
    spectrum = std::move(newSpectrum);
    return spectrum->GetStatus();
}

int TIlluminant::Save(const char* fileName) {
    if (fileName == nullptr)
        return kBadArgument;
    if (!spectrum || !name || std::strlen(name.get()) > kMaxBinaryName)
        return kNotSaved;
    return qxcms::detail::guarded(kNoMemory, [&] {
        int size = 0;
        const std::uint16_t* const fileData = spectrum->ToFileData(&size);
        if (fileData == nullptr)
            return kNotSaved;
        const auto length = static_cast<unsigned char>(std::strlen(name.get()));
        std::vector<unsigned char> image;
        append(image, kMagic, kTagSize);
        append(image, kBinaryVersion, kTagSize);
        image.push_back(length);
        append(image, name.get(), length);
        if (image.size() % 2 != 0)
            image.push_back(0);
        append(image, fileData, static_cast<std::size_t>(size));
        return writeFile(fileName, image);
    });
}
