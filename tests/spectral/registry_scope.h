// Holds the shared illuminant registry while a test runs.
#pragma once

#include "spectral/tilluminantfactoryholder.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {

class RegistryScope {
public:
    RegistryScope() : registry(TIlluminantFactory::New()) {}
    ~RegistryScope() { TIlluminantFactory::Delete(); }
    RegistryScope(const RegistryScope&) = delete;
    RegistryScope& operator=(const RegistryScope&) = delete;

    TIlluminantFactoryHolder* operator->() const { return registry; }

    TIlluminant* add(const char* name, const Standard& values) const {
        const TSpectrum spectrum = spectrumOf(values);
        return registry->MakeIlluminant(&spectrum, name);
    }

private:
    TIlluminantFactoryHolder* registry;
};

} // namespace qxcms::tests
