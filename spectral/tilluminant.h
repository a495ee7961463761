/// @file
/// Illuminants and the illuminant file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "base/export.h"
#include "spectral/tspectrum.h"

/// A named spectral power distribution.
///
/// Status codes: 0 good; 2 null argument, name of more than 1024 characters, or a file name without the
/// extension "ill"; 3 nothing to save, or a name too long for the file, or spectrum data that do not fit the
/// file; 4 the file could not be opened, read or written; 5 no illuminant file (size, magic, version, name);
/// else the status of the spectrum.
class QXCMS_API TIlluminant {
public:
    /// An illuminant from a copy of `spectrum` and a name of at most 1024 characters.
    TIlluminant(const TSpectrum* spectrum, const char* name);

    /// An illuminant from a complete file image in memory, at an even address; the caller vouches for it.
    /// Beware: a `char*` image is taken for a file name; cast it to `const void*`.
    explicit TIlluminant(const void* fileImage);

    /// An illuminant from a file of 4 to 2048 bytes with the extension "ill" (in any case); the name may be a
    /// logical specification.
    explicit TIlluminant(const char* fileName);

    /// A spectrum alone has no name.
    explicit TIlluminant(const TSpectrum*) = delete;
    explicit TIlluminant(TSpectrum*) = delete;
    TIlluminant(const TIlluminant&) = delete;
    TIlluminant& operator=(const TIlluminant&) = delete;
    virtual ~TIlluminant();

    /// Reads a complete file image, binary or text; the caller vouches for the memory.
    /// @return 2 or 5 with name and spectrum left as they were; else both are replaced and the status of the
    /// new spectrum is returned. Without memory 3, and nothing is replaced.
    int ReadFrom(const void* fileImage);

    /// Writes the binary form. @return 0, 2 for null, 3 nothing to save or a name of more than 255
    /// characters, 4 not written.
    int Save(const char* fileName);

    /// True when the names are equal, case included; spectra are not compared.
    bool operator==(const TIlluminant& other) const;

    /// Chromaticity and correlated colour temperature of the registered illuminant of this name, for the
    /// 2 degree observer.
    /// @param x, y receive the chromaticity. @param temperature receives kelvin, rounded to 10 K, 0 when it
    /// cannot be computed. Each may be null. @return 0.
    int GetChromaticityAndTemperature(double* x, double* y, double* temperature) const;

    /// The temperature of GetChromaticityAndTemperature.
    double GetColorTemperature() const;

    std::int32_t GetStatus() const { return status; }
    /// The name, null after a failed construction.
    const char* GetName() const { return name.get(); }
    /// The spectrum, owned by the illuminant; null after a failed construction.
    TSpectrum* GetSpectrum() const { return spectrum.get(); }

private:
    friend struct qxcms::detail::LayoutProbe;

    int readFile(const char* fileName);
    int readImage(qxcms::detail::ByteReader reader);
    int readTextImage(qxcms::detail::ByteReader reader);
    int readBinaryImage(qxcms::detail::ByteReader reader);
    int adopt(const char* newName, std::size_t length, std::unique_ptr<TSpectrum> newSpectrum);

    std::unique_ptr<TSpectrum> spectrum;
    std::int32_t status;
    std::unique_ptr<char[]> name;
};
