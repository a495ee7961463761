/// @file
/// The sampled spectrum.
#pragma once

#include <cstddef>
#include <cstdint>

#include "base/export.h"

namespace qxcms::detail {
struct LayoutProbe;
class ByteReader;
} // namespace qxcms::detail

/// A reflectance, transmittance or spectral power distribution over wavelength.
///
/// Every spectrum carries the standard sampling: 36 values at 380, 390, ..., 730 nm, on which all spectral
/// arithmetic is done; -1.0 in every slot marks a spectrum that is not set. It may also keep the non-uniform
/// samples it was built from, from which the standard sampling is interpolated.
///
/// Status codes: 0 good; 1 the interpolation table could not be made, or no memory; 2 a null argument or a
/// count out of range; 3 invalid data or a factor of a product that is not set; 4 a sample could not be
/// inserted (two samples at one wavelength, a wavelength that is not finite); 5 a reference spectrum with
/// another sampling.
class QXCMS_API TSpectrum {
public:
    /// The number of values of the standard sampling.
    static constexpr int kStandardCount = 36;
    /// The largest number of non-uniform samples that arrays and file data may bring.
    static constexpr int kMaxSamples = 1024;

    /// The filter standards of GetDensity.
    enum FilterStandards : int { kAnsiA = 0, kAnsiT = 1, kDin = 2, kDinNb = 3 };

    /// Weights of the red, green, blue and visual filters: per standard 36 weights at 380, 390, ..., 730 nm.
    static const double sRedFilter[4][kStandardCount];
    static const double sGreenFilter[4][kStandardCount];
    static const double sBlueFilter[4][kStandardCount];
    static const double sBlackFilter[4][kStandardCount];

    /// An unset spectrum.
    TSpectrum();

    /// A spectrum from `count` (1 to 1024) samples; the arrays are copied.
    /// @param wavelengths in nm, in any order. @param values parallel to the wavelengths.
    /// Status 2 for a null array or another count.
    TSpectrum(const double* wavelengths, int count, const double* values);

    /// A spectrum from the 36 standard values; status 2 for null.
    explicit TSpectrum(const double* standardValues);

    /// A spectrum from a terminated text: a count, as many wavelengths in nm, as many values, separated by
    /// anything that cannot start a number. Status 2 for null, 3 when the count is below 1 or numbers are
    /// missing. There is no upper limit to the count here.
    explicit TSpectrum(const char* text);

    /// Decodes the form that ToFileData writes; the caller vouches for the memory.
    /// @param end receives the address behind the decoded data; may be null.
    TSpectrum(const void* fileData, void** end);

    /// Decodes the form that ToShrtFileData writes against `reference`; the caller vouches for the memory.
    /// @param end as above.
    TSpectrum(const TSpectrum* reference, const void* shortData, void** end);

    /// The product of two spectra over the standard sampling. Beware: `(spectrum, nullptr)` means this form.
    TSpectrum(const TSpectrum* a, const TSpectrum* b);

    /// A deep copy of the samples and the standard values. Status and serialised buffers start afresh.
    TSpectrum(const TSpectrum& other);
    /// As the copy constructor, on an object that releases what it held.
    TSpectrum& operator=(const TSpectrum& other);

    virtual ~TSpectrum();

    /// Computes the standard sampling from the samples: linear between them, constant outside. Without
    /// samples nothing changes. @return 0, 1 or 4; on failure the standard values stay as they were.
    int CalcStandardSpec();

    /// Puts every member into its empty state without releasing anything: for storage that was never
    /// constructed.
    void SetToZero();

    /// Releases what the spectrum holds and makes it an unset one.
    void Clear();

    /// Drops samples and serialised buffers and keeps the 36 standard values.
    void ClearNonUniform();

    /// The Euclidean distance of the standard values; not a number for null.
    double CalcDistance(const TSpectrum* other) const;

    /// Writes the sum of the 36 products of standard values into `result`.
    /// @return 0, or 2 for null. The status stays as it was.
    int InProduct(const TSpectrum* other, double* result) const;

    /// The serialised form: flag, count and wavelengths (whole nanometres), exponent, 16-bit mantissas, as
    /// words in the machine's byte order.
    /// @param size receives the size in bytes.
    /// @return the words, owned by the spectrum, valid until the next call; null with status 2 for null.
    std::uint16_t* ToFileData(int* size);

    /// The short form: exponent and mantissas alone, to be decoded against `reference`.
    /// @param size receives the size in bytes.
    /// @return as ToFileData; null with status 2 for null, with status 5 when the samplings differ.
    std::uint16_t* ToShrtFileData(const TSpectrum* reference, int* size);

    /// The 36 standard values, owned by the spectrum, to be read only.
    /// @param start receives 380.0, @param end 730.0, @param count 36; each may be null.
    double* GetUniformSpectrum(double* start, double* end, int* count) const;

    /// The step of the standard sampling: 10.0 nm.
    double GetUniformDeltaLambda() const;

    /// The four status densities of this reflectance spectrum (0..1 scale).
    /// @param densities receives red, green, blue and visual density: log10(1 / sum of weight * value).
    /// @param majorFilter receives 3 (visual) when the smallest density is more than 0.7 of the largest, else
    /// the channel of the largest.
    /// @return 0; 2 for an unknown standard or null, nothing written then. Sums of 0 and below give infinite
    /// and undefined densities.
    int GetDensity(FilterStandards standard, double* densities, int* majorFilter) const;

    /// The names of the four filter standards, in the order of FilterStandards.
    static const char* const* GetDensityList();

    /// The result of the last constructor or failed operation.
    std::int32_t GetStatus() const { return status; }
    /// The non-uniform flag: 1 when the spectrum was made from samples, else 0.
    std::int32_t GetNonUniformFlag() const { return nonUniform; }
    /// The number of samples; 0 for a standard-only spectrum.
    std::int32_t GetNrSamples() const { return nrSamples; }
    /// The wavelengths of the samples in nm, in the order given; null when there are none.
    const double* GetWavelengths() const { return wavelengths; }
    /// The values of the samples; null when there are none.
    const double* GetValues() const { return values; }
    /// The size in bytes of the serialised buffer last produced.
    std::int32_t GetFileDataSize() const { return fileDataSize; }

private:
    friend struct qxcms::detail::LayoutProbe;
    friend class TIlluminant;

    /// Reads the text form from [first, last); never reads beyond `last`.
    void readText(const char* first, const char* last);
    /// Reads the file-data form; data that do not fit give status 3.
    void readFileData(qxcms::detail::ByteReader& reader);
    /// Reads the short form against `reference`; data that do not fit give status 3.
    void readShortFileData(const TSpectrum& reference, qxcms::detail::ByteReader& reader);
    /// Reads a block of values that belong to these wavelengths.
    void readSampleBlock(qxcms::detail::ByteReader& reader, const double* ofWavelengths, int count);
    /// Reads the exponent and `count` values of a block. @return false when they do not fit.
    static bool readBlock(qxcms::detail::ByteReader& reader, double* block, int count);
    /// Writes the exponent and `count` mantissas of a block.
    static void writeBlock(const double* block, int count, std::uint16_t* out);

    /// Takes copies of the samples; status 1 when there is no memory.
    void adoptSamples(const double* newWavelengths, const double* newValues, std::int32_t count);
    void copySamples(const TSpectrum& other);
    int interpolateStandard();
    void forgetSamples();
    void freeArrays();
    bool hasSamplingOf(const TSpectrum& reference) const;
    /// A buffer for a serialised form, its size noted; null with status 1 when there is no memory.
    std::uint16_t* newWords(std::size_t words, int* size);
    void discardFileData();

    std::uint16_t* fileData;
    std::uint16_t* shortFileData;
    std::int32_t fileDataSize;
    std::int32_t nonUniform;
    std::int32_t nrSamples;
    double* wavelengths;
    double* values;
    double standard[kStandardCount];
    std::int32_t status;
};
