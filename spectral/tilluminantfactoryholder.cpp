#include "spectral/tilluminantfactoryholder.h"

#include <cmath>
#include <limits>
#include <new>
#include <string>

#include "platform/logical_names.h"
#include "platform/utility.h"

namespace {

constexpr int kBadArgument = 3;

constexpr const char* kModule = "tilluminantfactoryholder";
constexpr int kNoObjectLine = 42;
constexpr int kNoNameLine = 193;
constexpr int kNotFoundLine = 223;

// Kept on purpose: this one name has an alias, no other has (registry.noOtherCieName_isAnAlias).
constexpr const char* kAliasedName = "CIE Illuminant D50";
constexpr const char* kAlias = "D50";
constexpr const char* kAliasWarning = "Illuminant \"CIE Illuminant D50\" was replaced by illuminant \"D50\"";
constexpr int kAliasLevel = 6;

// Asks the directory search for regular files with their path.
constexpr unsigned char kSearchFiles = 2;
constexpr int kPathSize = 4096;

struct SearchDeleter {
    void operator()(fsearch_state* search) const { fsfree(search); }
};

// The integer part, within the range of int; 0 for an undefined number.
int wholePart(double x) {
    if (std::isnan(x))
        return 0;
    if (x >= std::numeric_limits<int>::max())
        return std::numeric_limits<int>::max();
    if (x <= std::numeric_limits<int>::min())
        return std::numeric_limits<int>::min();
    return static_cast<int>(x);
}

} // namespace

TIllEl::TIllEl(TIlluminant* illuminant) : TObjEl(illuminant), owned(illuminant) {}

TIllEl::~TIllEl() = default;

TIlluminantFactoryHolder::TIlluminantFactoryHolder() = default;

TIlluminantFactoryHolder::~TIlluminantFactoryHolder() = default;

TObjEl* TIlluminantFactoryHolder::TObjFacCreateEl(void* illuminant) {
    if (illuminant == nullptr) {
        error_mess_fl("No Object specified", kModule, kNoObjectLine);
        return nullptr;
    }
    return new (std::nothrow) TIllEl(static_cast<TIlluminant*>(illuminant));
}

int TIlluminantFactoryHolder::AddDirectory(const char* directory) {
    if (directory == nullptr)
        return kBadArgument;
    const std::unique_ptr<fsearch_state, SearchDeleter> search(fsinit(directory, &kSearchFiles));
    if (!search)
        return 0;
    char path[kPathSize];
    while (fsearch(search.get(), path, kPathSize) == 0)
        MakeIlluminant(static_cast<const char*>(path));
    return 0;
}

TIlluminant* TIlluminantFactoryHolder::MakeIlluminant(const char* fileName) {
    return registerNew(std::unique_ptr<TIlluminant>(new (std::nothrow) TIlluminant(fileName)));
}

TIlluminant* TIlluminantFactoryHolder::MakeIlluminant(const TSpectrum* spectrum, const char* name) {
    return registerNew(std::unique_ptr<TIlluminant>(new (std::nothrow) TIlluminant(spectrum, name)));
}

TIlluminant* TIlluminantFactoryHolder::MakeIlluminant(const void* fileImage) {
    return registerNew(std::unique_ptr<TIlluminant>(new (std::nothrow) TIlluminant(fileImage)));
}

TIlluminant* TIlluminantFactoryHolder::MakeIlluminant(TIlluminant* illuminant) {
    return static_cast<TIlluminant*>(Register(illuminant));
}

TIlluminant* TIlluminantFactoryHolder::registerNew(std::unique_ptr<TIlluminant> illuminant) {
    if (!illuminant || illuminant->GetStatus() != 0 || MakeIlluminant(illuminant.get()) == nullptr)
        return nullptr;
    return illuminant.release();
}

TIlluminant* TIlluminantFactoryHolder::ScanIlluminants(int restart) {
    return static_cast<TIlluminant*>(Scan(restart));
}

int TIlluminantFactoryHolder::SaveIlluminant(TIlluminant* illuminant, const char* fileName) {
    if (illuminant == nullptr || fileName == nullptr)
        return kBadArgument;
    return illuminant->Save(fileName);
}

TIlluminant* TIlluminantFactoryHolder::find(const char* name) {
    // A walk of its own: a lookup leaves a scan that is under way where it is.
    for (TElement* element = GetFirstElement(); element != nullptr; element = element->GetNext()) {
        auto* const illuminant = static_cast<TIlluminant*>(static_cast<TObjEl*>(element)->GetObject());
        if (strcmp_ci(illuminant->GetName(), name) == 0)
            return illuminant;
    }
    return nullptr;
}

TIlluminant* TIlluminantFactoryHolder::GetIlluminant(const char* name) {
    if (name == nullptr || *name == '\0') {
        error_mess_fl("Specify illuminant name", kModule, kNoNameLine);
        return nullptr;
    }
    if (TIlluminant* const found = find(name))
        return found;
    if (strcmp_ci(name, kAliasedName) == 0) {
        if (TIlluminant* const found = find(kAlias)) {
            report_warning(kAliasLevel, kAliasWarning);
            return found;
        }
    }
    error_mess_fl("No Illuminant with this name available", kModule, kNotFoundLine);
    return nullptr;
}

TIlluminant* TIlluminantFactoryHolder::GetIlluminant(double temperature) {
    // At least two characters wide: 900 K looks up "D 9".
    const std::string number = std::to_string(wholePart(temperature / 100.0 + 0.5));
    const std::string name = (number.size() < 2 ? "D " : "D") + number;
    return GetIlluminant(name.c_str());
}

TIlluminantFactory* TIlluminantFactory::sTheFactory = nullptr;
std::uint32_t TIlluminantFactory::sNrFactoryReferences = 0;

TIlluminantFactory::TIlluminantFactory() = default;

TIlluminantFactory::~TIlluminantFactory() = default;

TIlluminantFactoryHolder* TIlluminantFactory::New() {
    if (sTheFactory == nullptr)
        sTheFactory = new (std::nothrow) TIlluminantFactory;
    if (sTheFactory != nullptr)
        ++sNrFactoryReferences;
    return sTheFactory;
}

void TIlluminantFactory::Delete() {
    if (sNrFactoryReferences == 0)
        return;
    if (--sNrFactoryReferences == 0) {
        delete sTheFactory;
        sTheFactory = nullptr;
    }
}
