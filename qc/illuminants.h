/// @file
/// The illuminants by name. Internal.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "spectral/tilluminant.h"
#include "spectral/tilluminantfactoryholder.h"

namespace qxcms::qc {

/// Where the illuminant files of the suite are.
inline constexpr const char* kIlluminantDirectory = "QX_CMS:[r.ill]";

/// Holds the shared registry of illuminants, filled from kIlluminantDirectory.
class Illuminants {
public:
    /// @throws Refusal (unreadable) when no illuminant is found; it tells where they were looked for.
    Illuminants();
    Illuminants(const Illuminants&) = delete;
    Illuminants& operator=(const Illuminants&) = delete;
    ~Illuminants();

    /// The illuminant of that name, ignoring case; "CIE Illuminant " may be left out, or put before a name
    /// that goes without, and FL11 stands for F11. A name that is none of these is read as in files, where
    /// "Illuminant D50" and "D 50" are D50. Valid as long as this object.
    /// @throws Refusal (usage) that names the nearest known ones and lists all.
    TIlluminant* find(const std::string& name) const;

    /// The names in their natural order, F2 before F10.
    std::vector<std::string> names() const;

private:
    struct Release {
        void operator()(TIlluminantFactoryHolder*) const { TIlluminantFactory::Delete(); }
    };

    std::unique_ptr<TIlluminantFactoryHolder, Release> registry;
};

/// A name in its short form: "CIE Illuminant D50", "d50" and "D50" are D50, "FL11" is F11. Texts of other
/// names stay, without "CIE Illuminant ".
std::string shortIlluminant(const std::string& name);

} // namespace qxcms::qc
