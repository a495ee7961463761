#include "spectral/tilluminant.h"

#include <cstring>
#include <new>

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
    status = kNoMemory;
    spectrum.reset(new (std::nothrow) TSpectrum(*source));
    name = qxcms::detail::copyText(newName);
    if (spectrum && name)
        status = spectrum->GetStatus();
}

TIlluminant::~TIlluminant() = default;

bool TIlluminant::operator==(const TIlluminant& other) const {
    // Kept on purpose: the name alone counts (illuminant.sameNamesAndDifferentSpectra_areEqual).
    if (!name || !other.name)
        return !name && !other.name;
    return std::strcmp(name.get(), other.name.get()) == 0;
}
