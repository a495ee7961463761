// The illuminant file: its image of known length, the same bytes in a file, and in memory that the caller
// vouches for.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz/exact_memory.h"
#include "fuzz/kernel_probe.h"
#include "fuzz/memory_meter.h"
#include "fuzz/must.h"
#include "fuzz/spectrum_questions.h"
#include "fuzz/temporary_file.h"
#include "spectral/tilluminant.h"

namespace {

using namespace qxcms::fuzz;
using qxcms::detail::LayoutProbe;

constexpr std::size_t kSmallestFile = 4;
constexpr std::size_t kLargestFile = 2048;
constexpr int kNoIlluminantFile = 5;

bool isText(const std::uint8_t* data, std::size_t size) {
    return size >= 8 && std::memcmp(data, "QXILTEXT", 8) == 0;
}

TIlluminant emptyIlluminant() {
    return TIlluminant(static_cast<const void*>(nullptr));
}

// Both are what reading the same image gives.
void mustBeAlike(const TIlluminant& a, const TIlluminant& b) {
    must((a.GetName() == nullptr) == (b.GetName() == nullptr), "both have a name or none");
    must(a == b, "both have the same name");
    if (a.GetSpectrum() != nullptr)
        mustEqual(*a.GetSpectrum(), *b.GetSpectrum());
}

void askIlluminant(TIlluminant& illuminant, int code) {
    must(code == 0 || code == 3 || code == 4 || code == kNoIlluminantFile, "an image gives one of its codes");
    const bool isRead = code != kNoIlluminantFile;
    must((illuminant.GetName() != nullptr) == isRead, "an illuminant that is read has a name");
    must((illuminant.GetSpectrum() != nullptr) == isRead, "an illuminant that is read has a spectrum");
    if (!isRead)
        return;
    must(std::strlen(illuminant.GetName()) < 1024, "a name is shorter than 1024 characters");
    must(illuminant.GetSpectrum()->GetStatus() == code, "the code is that of the spectrum");
    askSpectrum(*illuminant.GetSpectrum());
}

void askFile(const std::uint8_t* data, std::size_t size, const TIlluminant& expected, int expectedCode) {
    const TemporaryFile file(data, size, ".ill");
    const TIlluminant illuminant(file.name());
    const bool hasSize = size >= kSmallestFile && size <= kLargestFile;
    must(illuminant.GetStatus() == (hasSize ? expectedCode : kNoIlluminantFile),
         "a file gives the code of its image");
    if (hasSize)
        mustBeAlike(illuminant, expected);
}

// What reads well within its length reads alike when the caller vouches for the memory. A text ends at the
// first zero there.
void askTrustingReading(const ExactBytes& image, const TIlluminant& expected) {
    const bool text = isText(image.data(), image.size());
    if (text && std::memchr(image.data(), 0, image.size()) != nullptr)
        return;
    const ExactBytes memory(image.data(), image.size(), image.size() + (text ? 1 : 0));
    const TIlluminant illuminant(static_cast<const void*>(memory.data()));
    must(illuminant.GetStatus() == 0, "an image that reads well within its length reads well without");
    mustBeAlike(illuminant, expected);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ExactBytes image(data, size);
    TIlluminant illuminant = emptyIlluminant();
    const MemoryMeter meter;
    const int code = LayoutProbe::readImage(illuminant, image.data(), image.size());
    must(meter.peak() <= allowedMemory(size), "an image needs memory in proportion");
    askIlluminant(illuminant, code);

    if (size <= kLargestFile + 1)
        askFile(data, size, illuminant, code);
    if (code == 0)
        askTrustingReading(image, illuminant);

    // A refused image leaves what was there.
    if (code == kNoIlluminantFile) {
        const double flat[TSpectrum::kStandardCount] = {};
        const TSpectrum spectrum(flat);
        TIlluminant kept(&spectrum, "kept");
        LayoutProbe::readImage(kept, image.data(), image.size());
        must(std::strcmp(kept.GetName(), "kept") == 0, "a refused image replaces nothing");
    }
    return 0;
}
