/// @file
/// The registry of illuminants.
#pragma once

#include <cstdint>
#include <memory>

#include "base/export.h"
#include "platform/object_factory.h"
#include "spectral/tilluminant.h"

/// The registry's element: owns one illuminant.
class QXCMS_API TIllEl : public TObjEl {
public:
    explicit TIllEl(TIlluminant* illuminant);
    ~TIllEl() override;

private:
    std::unique_ptr<TIlluminant> owned;
};

/// A registry of illuminants, found by name or by daylight colour temperature. It owns what it registers.
/// Errors are reported as module "tilluminantfactoryholder".
class QXCMS_API TIlluminantFactoryHolder : public TObjFac {
public:
    TIlluminantFactoryHolder();
    ~TIlluminantFactoryHolder() override;

    /// A new TIllEl that owns the TIlluminant `illuminant`; null, with a report, for null.
    TObjEl* TObjFacCreateEl(void* illuminant) override;

    /// Registers every illuminant file of a directory (a path or a logical specification); files that are
    /// none are skipped. @return 0, or 3 for null.
    int AddDirectory(const char* directory);

    /// Registers the illuminant of a file, of a spectrum and a name, or of a file image in memory.
    /// Beware: a `char*` image is taken for a file name; cast it to `const void*`.
    /// @return the illuminant, owned by the registry, or null when it could not be made or registered (then
    /// nothing of it is left).
    TIlluminant* MakeIlluminant(const char* fileName);
    TIlluminant* MakeIlluminant(const TSpectrum* spectrum, const char* name);
    TIlluminant* MakeIlluminant(const void* fileImage);

    /// Registers an existing illuminant and takes ownership. @return it, or null when it was not registered
    /// (it then still belongs to the caller).
    TIlluminant* MakeIlluminant(TIlluminant* illuminant);

    /// A spectrum alone has no name; an illuminant that is only read cannot be owned.
    TIlluminant* MakeIlluminant(TSpectrum*) = delete;
    TIlluminant* MakeIlluminant(const TSpectrum*) = delete;
    TIlluminant* MakeIlluminant(const TIlluminant*) = delete;

    /// The next illuminant in registration order, from the first one when `restart` is non-zero; null at the
    /// end.
    TIlluminant* ScanIlluminants(int restart);

    /// Saves an illuminant. @return 3 for null, else the result of TIlluminant::Save.
    int SaveIlluminant(TIlluminant* illuminant, const char* fileName);

    /// The first illuminant of that name, ignoring case; "CIE Illuminant D50" also finds "D50", with a
    /// warning.
    /// @return null, with a report, when there is none.
    TIlluminant* GetIlluminant(const char* name);

    /// The daylight illuminant for a temperature in kelvin: 5003 K looks up "D50".
    TIlluminant* GetIlluminant(double temperature);

private:
    TIlluminant* find(const char* name);
    TIlluminant* registerNew(std::unique_ptr<TIlluminant> illuminant);
};

/// The registry that all parts of a process share. Not for more than one thread at a time.
class QXCMS_API TIlluminantFactory : public TIlluminantFactoryHolder {
public:
    ~TIlluminantFactory() override;

    /// The shared registry, made when there is none; pair every New with one Delete. Null when there is no
    /// memory.
    static TIlluminantFactoryHolder* New();

    /// Lets go of the shared registry; the last one destroys it with all its illuminants. Without a New it
    /// does nothing.
    static void Delete();

    /// The shared registry, null when there is none.
    static TIlluminantFactory* sTheFactory;
    /// How many New calls wait for their Delete.
    static std::uint32_t sNrFactoryReferences;

private:
    TIlluminantFactory();
};
