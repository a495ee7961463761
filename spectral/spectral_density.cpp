// Status densities of a reflectance spectrum.
#include <cmath>

#include "spectral/tobserver.h"
#include "spectral/tspectrum.h"

namespace {

constexpr int kBadArgument = 2;
constexpr int kChannels = 4;
constexpr int kVisual = 3;

// A sample whose smallest density is more than this part of its largest counts as nearly neutral.
constexpr double kNeutralRatio = 0.7;

// D = log10(1 / sum of w*R). The weights stand on the standard grid, so they are used as they are.
double density(const double* weights, const double* reflectance) {
    double sum = 0.0;
    for (int k = 0; k < TSpectrum::kStandardCount; ++k)
        sum += weights[k] * reflectance[k];
    return std::log10(1.0 / sum);
}

} // namespace

int TSpectrum::GetDensity(FilterStandards filterStandard, double* densities, int* majorFilter) const {
    const int number = filterStandard;
    if (number < kAnsiA || number > kDinNb || densities == nullptr || majorFilter == nullptr)
        return kBadArgument;
    const double* const filters[kChannels] = {sRedFilter[number], sGreenFilter[number], sBlueFilter[number],
                                              sBlackFilter[number]};
    int largest = 0;
    int smallest = 0;
    for (int channel = 0; channel < kChannels; ++channel) {
        densities[channel] = density(filters[channel], standard);
        if (densities[channel] > densities[largest])
            largest = channel;
        if (densities[channel] < densities[smallest])
            smallest = channel;
    }
    const double ratio = densities[smallest] / densities[largest];
    *majorFilter = ratio > kNeutralRatio ? kVisual : largest;
    return 0;
}

const char* const* TSpectrum::GetDensityList() {
    return TObserver::sObsNameList + TObserver::sNrObservers;
}
