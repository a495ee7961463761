#include "spectral/tspectrum.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <new>

#include "platform/utility.h"

namespace {

constexpr double kFirstWavelength = 380.0;
constexpr double kLastWavelength = 730.0;
constexpr double kStep = 10.0;
constexpr double kUnset = -1.0;

// Where the constant continuation of the samples is pinned down, in nm.
constexpr double kLowerAnchor = 0.0;
constexpr double kUpperAnchor = 1000.0;

constexpr int kNoMemory = 1;
constexpr int kBadArgument = 2;
constexpr int kNotSet = 3;
constexpr int kNotInserted = 4;

struct TableDeleter {
    void operator()(lin_interp_double* table) const { lin_interp_double_kill(table); }
};

using Table = std::unique_ptr<lin_interp_double, TableDeleter>;

bool insertSamples(lin_interp_double* table, const double* wavelengths, const double* values, int count) {
    for (int i = 0; i < count; ++i)
        if (lin_interp_double_insert(table, wavelengths[i], values[i]) != 0)
            return false;
    return true;
}

// An anchor gives way to a sample at exactly its wavelength.
bool insertAnchor(lin_interp_double* table, double anchor, double value, const double* wavelengths,
                  int count) {
    if (std::find(wavelengths, wavelengths + count, anchor) != wavelengths + count)
        return true;
    return lin_interp_double_insert(table, anchor, value) == 0;
}

} // namespace

TSpectrum::TSpectrum() {
    SetToZero();
}

TSpectrum::TSpectrum(const double* newWavelengths, int count, const double* newValues) {
    SetToZero();
    nonUniform = 1;
    if (newWavelengths == nullptr || newValues == nullptr || count < 1 || count > kMaxSamples) {
        status = kBadArgument;
        return;
    }
    adoptSamples(newWavelengths, newValues, count);
    if (status == 0)
        CalcStandardSpec();
}

TSpectrum::TSpectrum(const double* standardValues) {
    SetToZero();
    if (standardValues == nullptr)
        status = kBadArgument;
    else
        std::copy_n(standardValues, kStandardCount, standard);
}

TSpectrum::TSpectrum(const TSpectrum* a, const TSpectrum* b) {
    SetToZero();
    if (a == nullptr || b == nullptr) {
        status = kBadArgument;
    } else if (a->standard[0] == kUnset || b->standard[0] == kUnset) {
        status = kNotSet;
    } else {
        for (int k = 0; k < kStandardCount; ++k)
            standard[k] = a->standard[k] * b->standard[k];
    }
}

TSpectrum::TSpectrum(const TSpectrum& other) {
    SetToZero();
    copySamples(other);
}

TSpectrum& TSpectrum::operator=(const TSpectrum& other) {
    if (this != &other) {
        Clear();
        copySamples(other);
    }
    return *this;
}

TSpectrum::~TSpectrum() {
    freeArrays();
}

void TSpectrum::copySamples(const TSpectrum& other) {
    nonUniform = other.nonUniform;
    std::copy_n(other.standard, kStandardCount, standard);
    if (other.nrSamples > 0)
        adoptSamples(other.wavelengths, other.values, other.nrSamples);
}

void TSpectrum::adoptSamples(const double* newWavelengths, const double* newValues, std::int32_t count) {
    const auto size = static_cast<std::size_t>(count);
    std::unique_ptr<double[]> wavelengthCopy(new (std::nothrow) double[size]);
    std::unique_ptr<double[]> valueCopy(new (std::nothrow) double[size]);
    if (!wavelengthCopy || !valueCopy) {
        status = kNoMemory;
        return;
    }
    std::copy_n(newWavelengths, size, wavelengthCopy.get());
    std::copy_n(newValues, size, valueCopy.get());
    wavelengths = wavelengthCopy.release();
    values = valueCopy.release();
    nrSamples = count;
}

int TSpectrum::CalcStandardSpec() {
    if (nrSamples < 1)
        return 0;
    const int code = interpolateStandard();
    if (code != 0)
        status = code;
    return code;
}

int TSpectrum::interpolateStandard() {
    const Table table(lin_interp_double_new(nrSamples));
    if (!table)
        return kNoMemory;
    if (!insertSamples(table.get(), wavelengths, values, nrSamples))
        return kNotInserted;

    // The first of equal extremes wins.
    const auto lowest = std::min_element(wavelengths, wavelengths + nrSamples) - wavelengths;
    const auto highest = std::max_element(wavelengths, wavelengths + nrSamples) - wavelengths;
    if (!insertAnchor(table.get(), kLowerAnchor, values[lowest], wavelengths, nrSamples) ||
        !insertAnchor(table.get(), kUpperAnchor, values[highest], wavelengths, nrSamples))
        return kNotInserted;

    double wavelength = kFirstWavelength;
    for (double& value : standard) {
        value = lin_interp_double_inter(table.get(), wavelength);
        wavelength += kStep;
    }
    return 0;
}

void TSpectrum::SetToZero() {
    fileData = nullptr;
    shortFileData = nullptr;
    wavelengths = nullptr;
    values = nullptr;
    forgetSamples();
    std::fill_n(standard, kStandardCount, kUnset);
}

void TSpectrum::Clear() {
    freeArrays();
    SetToZero();
}

void TSpectrum::ClearNonUniform() {
    freeArrays();
    forgetSamples();
}

void TSpectrum::forgetSamples() {
    fileDataSize = 0;
    nonUniform = 0;
    nrSamples = 0;
    status = 0;
}

void TSpectrum::freeArrays() {
    delete[] fileData;
    delete[] shortFileData;
    delete[] wavelengths;
    delete[] values;
    fileData = nullptr;
    shortFileData = nullptr;
    wavelengths = nullptr;
    values = nullptr;
}

double TSpectrum::CalcDistance(const TSpectrum* other) const {
    if (other == nullptr)
        return std::numeric_limits<double>::quiet_NaN();
    return vect_distance(other->standard, standard, kStandardCount);
}

int TSpectrum::InProduct(const TSpectrum* other, double* result) const {
    if (other == nullptr || result == nullptr)
        return kBadArgument;
    double sum = 0.0;
    for (int k = 0; k < kStandardCount; ++k)
        sum += standard[k] * other->standard[k];
    *result = sum;
    return 0;
}

double* TSpectrum::GetUniformSpectrum(double* start, double* end, int* count) const {
    if (start != nullptr)
        *start = kFirstWavelength;
    if (end != nullptr)
        *end = kLastWavelength;
    if (count != nullptr)
        *count = kStandardCount;
    // The callers' interface hands out a plain pointer; the values are to be read only.
    return const_cast<double*>(standard);
}

double TSpectrum::GetUniformDeltaLambda() const {
    return kStep;
}
