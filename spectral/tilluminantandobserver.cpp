#include "spectral/tilluminantandobserver.h"

#include <algorithm>
#include <cstddef>
#include <new>

#include "platform/utility.h"
#include "spectral/tilluminantfactoryholder.h"

namespace {

constexpr int kBadArgument = 2;
constexpr int kNoRegistry = 3;

// The illuminants that table 6 covers, in its order.
constexpr int kTableIlluminants = 3;
constexpr const char* kTableNames[kTableIlluminants] = {"CIE Illuminant F2", "CIE Illuminant F7",
                                                        "CIE Illuminant F11"};
constexpr int kDirect = -1;

constexpr double kFirstWavelength = 380;
constexpr double kRange = 350.0;
constexpr double kGridStep = 10;
constexpr int kLastGridIndex = 35;

// The colour-matching tables stand at 5 nm, the standard grid at every second entry.
constexpr std::ptrdiff_t kTableStride = 2;

int tableOf(const TIlluminant& illuminant) {
    for (int i = 0; i < kTableIlluminants; ++i)
        if (strcmp_ci(illuminant.GetName(), kTableNames[i]) == 0)
            return i;
    return kDirect;
}

double samplingPoint(int i, int points) {
    return points == 1 ? kFirstWavelength : kFirstWavelength + i * kRange / (points - 1);
}

// A standard sampling, read at entries `stride` apart, interpolated between its grid points.
double valueAt(const double* grid, std::ptrdiff_t stride, double wavelength) {
    const int j = static_cast<int>((wavelength - kFirstWavelength) / kGridStep);
    if (j >= kLastGridIndex)
        return grid[kLastGridIndex * stride];
    const double below = grid[j * stride];
    const double above = grid[(j + 1) * stride];
    return below + (above - below) * (wavelength - (kFirstWavelength + kGridStep * j)) / kGridStep;
}

double sum(const double* values, int count) {
    double total = 0.0;
    for (int i = 0; i < count; ++i)
        total += values[i];
    return total;
}

double weightedSum(const double* values, const double* weights, int count) {
    double total = 0.0;
    for (int i = 0; i < count; ++i)
        total += values[i] * weights[i];
    return total;
}

// The sums of one spectrum wait for each other; those of several at once do not.
constexpr std::size_t kAtOnce = 4;

// X, Y, Z of `Spectra` spectra of 36 values, each sum in ascending order as weightedSum has it.
template <std::size_t Spectra>
void integrate(double factor, const double* values, const double* const (&weights)[3], double* xyz) {
    constexpr int kBands = TIlluminantAndObserver::kMaxPoints;
    double totals[Spectra][3] = {};
    for (int band = 0; band < kBands; ++band)
        for (std::size_t i = 0; i < Spectra; ++i)
            for (int axis = 0; axis < 3; ++axis)
                totals[i][axis] += values[i * kBands + static_cast<std::size_t>(band)] * weights[axis][band];
    for (std::size_t i = 0; i < Spectra; ++i)
        for (std::size_t axis = 0; axis < 3; ++axis)
            xyz[3 * i + axis] = factor * totals[i][axis];
}

} // namespace

TIlluminantAndObserver::TIlluminantAndObserver(const TIlluminant* source, const TObserver* sourceObserver,
                                               int points) {
    reset();
    Init(source, sourceObserver, points);
}

TIlluminantAndObserver::TIlluminantAndObserver(const char* illuminantName, const char* observerName,
                                               int points) {
    reset();
    TIlluminantFactoryHolder* const registry = TIlluminantFactory::New();
    if (registry == nullptr) {
        status = kNoRegistry;
        return;
    }
    const TIlluminant* const found = registry->GetIlluminant(illuminantName);
    TIlluminantFactory::Delete();
    const TObserver known(observerName);
    if (found == nullptr || known.GetStatus() != 0)
        status = kBadArgument;
    else
        Init(found, &known, points);
}

TIlluminantAndObserver::~TIlluminantAndObserver() = default;

void TIlluminantAndObserver::reset() {
    tableIndex = 0;
    factor = 0.0;
    nrPoints = 0;
    status = 0;
    illuminant = nullptr;
    for (double* array : {xFunction, yFunction, zFunction, xWeight, yWeight, zWeight, combined})
        std::fill_n(array, kMaxPoints, 0.0);
}

int TIlluminantAndObserver::Init(const TIlluminant* source, const TObserver* sourceObserver, int points) {
    reset();
    illuminant = source;
    observer.reset(sourceObserver == nullptr ? nullptr : new (std::nothrow) TObserver(*sourceObserver));
    status = initWeights(points);
    return status;
}

int TIlluminantAndObserver::initWeights(int points) {
    if (illuminant == nullptr || !observer)
        return kBadArgument;
    if (static_cast<unsigned>(points) > static_cast<unsigned>(kMaxPoints))
        return kBadArgument;
    nrPoints = points;
    tableIndex = tableOf(*illuminant);
    // Kept on purpose: the 2 degree tables serve the 10 degree observer as well
    // (weighting.tableMode_doesNotConsultTheObserver).
    if (tableIndex != kDirect) {
        factor = 100.0 / sum(sASTMtable6[tableIndex][1], kMaxPoints);
        return 0;
    }
    if (illuminant->GetSpectrum() == nullptr)
        return kBadArgument;
    initDirect(illuminant->GetSpectrum()->GetUniformSpectrum(nullptr, nullptr, nullptr));
    return 0;
}

void TIlluminantAndObserver::initDirect(const double* source) {
    // The tables themselves instead of the observer's spectra: their standard sampling is every second entry,
    // bit for bit (weighting.observerFunctions_areTheStandardSamplingOfTheObserversSpectraBitForBit).
    const std::uint32_t number = observer->GetNumber();
    for (int i = 0; i < nrPoints; ++i) {
        const double wavelength = samplingPoint(i, nrPoints);
        const double power = valueAt(source, 1, wavelength);
        xFunction[i] = valueAt(TObserver::sXSpectrum[number], kTableStride, wavelength);
        yFunction[i] = valueAt(TObserver::sYSpectrum[number], kTableStride, wavelength);
        zFunction[i] = valueAt(TObserver::sZSpectrum[number], kTableStride, wavelength);
        xWeight[i] = power * xFunction[i];
        yWeight[i] = power * yFunction[i];
        zWeight[i] = power * zFunction[i];
    }
    const double xSum = sum(xWeight, nrPoints);
    const double ySum = sum(yWeight, nrPoints);
    const double zSum = sum(zWeight, nrPoints);
    factor = 100.0 / ySum;
    for (int i = 0; i < nrPoints; ++i)
        combined[i] = xWeight[i] / xSum + yWeight[i] / ySum + zWeight[i] / zSum;
}

int TIlluminantAndObserver::IlluminantNeedsASTM308Tables(int* index) const {
    const int table = illuminant == nullptr ? kDirect : tableOf(*illuminant);
    if (index != nullptr)
        *index = table;
    return table == kDirect ? 0 : 1;
}

int TIlluminantAndObserver::GetXYZ(const double* values, double* xyz, int count) const {
    if (values == nullptr || xyz == nullptr || count != nrPoints)
        return kBadArgument;
    // All three before the first is stored: the values may stand where the result goes.
    const double x = factor * weightedSum(values, xWeight, count);
    const double y = factor * weightedSum(values, yWeight, count);
    const double z = factor * weightedSum(values, zWeight, count);
    xyz[0] = x;
    xyz[1] = y;
    xyz[2] = z;
    return 0;
}

int TIlluminantAndObserver::GetXYZ(const TSpectrum* spectrum, double* xyz, int count) const {
    if (spectrum == nullptr || xyz == nullptr || count != nrPoints)
        return kBadArgument;
    // Kept on purpose: values and weights pair by index, whatever wavelengths fewer than 36 points stand for
    // (weighting.spectrumWithFewerPoints_isPairedByIndex).
    const double* const values = spectrum->GetUniformSpectrum(nullptr, nullptr, nullptr);
    if (tableIndex == kDirect)
        return GetXYZ(values, xyz, count);
    for (int axis = 0; axis < 3; ++axis)
        xyz[axis] = factor * weightedSum(values, sASTMtable6[tableIndex][axis], count);
    return 0;
}

int TIlluminantAndObserver::SpectraToXYZBatch(const double* spectra, double* xyz, std::size_t count) const {
    if (spectra == nullptr || xyz == nullptr || nrPoints != kMaxPoints)
        return kBadArgument;
    const bool direct = tableIndex == kDirect;
    const double* const weights[3] = {direct ? xWeight : sASTMtable6[tableIndex][0],
                                      direct ? yWeight : sASTMtable6[tableIndex][1],
                                      direct ? zWeight : sASTMtable6[tableIndex][2]};
    for (; count >= kAtOnce; count -= kAtOnce, spectra += kAtOnce * kMaxPoints, xyz += kAtOnce * 3)
        integrate<kAtOnce>(factor, spectra, weights, xyz);
    for (; count > 0; --count, spectra += kMaxPoints, xyz += 3)
        integrate<1>(factor, spectra, weights, xyz);
    return 0;
}

int TIlluminantAndObserver::GetXYZWhite(double* xyz) const {
    if (xyz == nullptr)
        return 0;
    std::fill_n(xyz, 3, 0.0);
    if (status != 0)
        return 0;
    // Kept on purpose: the direct mode integrates all 36 standard values, however many points there are
    // (weighting.white_doesNotDependOnTheNumberOfPoints).
    if (tableIndex == kDirect) {
        const TSpectrum* const source = illuminant->GetSpectrum();
        return observer->GetXYZ(source, source, xyz) == kBadArgument ? kBadArgument : 0;
    }
    for (int axis = 0; axis < 3; ++axis)
        xyz[axis] = factor * sum(sASTMtable6[tableIndex][axis], kMaxPoints);
    return 0;
}

int TIlluminantAndObserver::GetXYZIncrement(double amount, int first, int last, double* xyz) const {
    if (xyz == nullptr)
        return 0;
    for (int i = std::max(first, 0); i < std::min(last, kMaxPoints); ++i) {
        xyz[0] += amount * factor * xWeight[i];
        xyz[1] += amount * factor * yWeight[i];
        xyz[2] += amount * factor * zWeight[i];
    }
    return 0;
}

int TIlluminantAndObserver::GetXYZIncrement(double amount, int index, double* xyz) const {
    return index < 0 || index >= kMaxPoints ? 0 : GetXYZIncrement(amount, index, index + 1, xyz);
}
