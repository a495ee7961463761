#include "spectral/tilluminant.h"

#include <cstring>
#include <new>
#include <utility>

#include "base/owned_text.h"

namespace {

constexpr int kBadArgument = 2;
constexpr int kNoMemory = 3;

constexpr std::size_t kMaxNameLength = 1024;

} // namespace

TIlluminant::TIlluminant(const TSpectrum* source, const char* newName) : status(0) {
    if (source == nullptr || newName == nullptr || std::strlen(newName) > kMaxNameLength) {
        status = kBadArgument;
        return;
    }
    std::unique_ptr<TSpectrum> spectrumCopy(new (std::nothrow) TSpectrum(*source));
    auto nameCopy = qxcms::detail::copyText(newName);
    // A copy has no status but that of its own making: 0 unless memory ran out.
    if (!spectrumCopy || spectrumCopy->GetStatus() != 0 || !nameCopy) {
        status = kNoMemory;
        return;
    }
    spectrum = std::move(spectrumCopy);
    name = std::move(nameCopy);
}

TIlluminant::~TIlluminant() = default;

bool TIlluminant::operator==(const TIlluminant& other) const {
    // Kept on purpose: the name alone counts (illuminant.sameNamesAndDifferentSpectra_areEqual).
    if (!name || !other.name)
        return !name && !other.name;
    return std::strcmp(name.get(), other.name.get()) == 0;
}
