// The search for a reflectance that matches a colour.
#include <algorithm>
#include <array>
#include <cmath>

#include "colorspace/tlabspace.h"
#include "platform/utility.h"
#include "spectral/tilluminantandobserver.h"

namespace {

constexpr int kBands = TIlluminantAndObserver::kMaxPoints;
using Values = std::array<double, kBands>;
using Triple = std::array<double, 3>;

constexpr double kRefused = -1.0;
constexpr std::int64_t kDirect = -1;

// Kept on purpose: there is no end before the last step, so that every search takes the same time
// (matchingSpectrum.search_goesOnAfterItHasFoundTheTarget).
constexpr int kSteps = 1000;
constexpr double kProbe = 0.001;       // by which each value is raised to see where the colour goes
constexpr double kStepFraction = 0.01; // the sum of a step's changes, of the distance that is left
constexpr double kLowest = 0.00001;
constexpr double kHighest = 0.99999;

Values limitsOr(const double* limits, double otherwise) {
    Values values;
    if (limits == nullptr)
        values.fill(otherwise);
    else
        std::copy_n(limits, kBands, values.begin());
    return values;
}

// The nine-point kernel over bands 4 to 30; the bands before and behind keep what they have.
Values smoothed(const Values& g) {
    Values h = g;
    for (std::size_t c = 4; c <= 30; ++c)
        h[c] = (0.5 * g[c - 4] + g[c - 3] + 2.0 * g[c - 2] + 3.0 * g[c - 1] + 5.0 * g[c] + 3.0 * g[c + 1] +
                2.0 * g[c + 2] + g[c + 3] + 0.5 * g[c + 4]) /
               18.0;
    return h;
}

// Where colours lie from a target.
class Target {
public:
    Target(const double* white, const double* xyz, MatchingMethod distanceMethod)
        : space(white), method(distanceMethod) {
        std::copy_n(xyz, 3, targetXYZ.begin());
        space.XYZToLab(xyz, targetLab.data());
    }

    double labDistance(const Triple& xyz) const {
        Triple lab;
        space.XYZToLab(xyz.data(), lab.data());
        return vect_distance(lab.data(), targetLab.data(), 3);
    }

    double distance(const Triple& xyz) const {
        return method == kMatchingMethodLab ? labDistance(xyz)
                                            : vect_distance(xyz.data(), targetXYZ.data(), 3);
    }

    // The distances of a colour for each band, which may be overwritten.
    Values distances(std::array<Triple, kBands>& colors) const {
        if (method == kMatchingMethodLab)
            space.XYZToLabBatch(colors.front().data(), colors.front().data(), kBands);
        const Triple& target = method == kMatchingMethodLab ? targetLab : targetXYZ;
        Values result;
        for (std::size_t i = 0; i < kBands; ++i)
            result[i] = vect_distance(colors[i].data(), target.data(), 3);
        return result;
    }

private:
    TLabSpace space;
    MatchingMethod method;
    Triple targetXYZ;
    Triple targetLab;
};

// The changes of one step, whose sizes add up to a hundredth of `distance`; none where no direction is better
// than another, or where there is no number for it.
Values stepOf(const Values& gradient, double distance) {
    Values step = smoothed(gradient);
    double total = 0.0;
    for (const double change : step)
        total += std::fabs(change);
    const double scale = distance * kStepFraction / total;
    if (!std::isfinite(total) || !std::isfinite(scale))
        return {};
    for (double& change : step)
        change *= scale;
    return step;
}

// The candidates of one search, the best of which is kept.
class Search {
public:
    // `increments`: what the probe of each band adds to X, Y, Z.
    Search(const TIlluminantAndObserver& colorWeights, const Target& colorTarget,
           const std::array<Triple, kBands>& probeIncrements, const double* start)
        : weighting(colorWeights), target(colorTarget), increments(probeIncrements) {
        std::copy_n(start, kBands, current.begin());
        lookAtCurrent();
        best = current;
        bestDistance = distance;
    }

    void takeStep(const Values& lower, const Values& upper) {
        const Values change = stepOf(gradient(), distance);
        for (std::size_t i = 0; i < kBands; ++i) {
            current[i] += change[i];
            if (current[i] < lower[i])
                current[i] = lower[i];
            if (current[i] > upper[i])
                current[i] = upper[i];
        }
        lookAtCurrent();
        // A start whose distance is no number is worse than any candidate that has one.
        if (distance < bestDistance || (std::isnan(bestDistance) && !std::isnan(distance))) {
            best = current;
            bestDistance = distance;
        }
    }

    const Values& bestSpectrum() const { return best; }

private:
    void lookAtCurrent() {
        weighting.GetXYZ(current.data(), xyz.data(), kBands);
        distance = target.distance(xyz);
    }

    // Positive where raising the band brings the colour closer.
    Values gradient() const {
        std::array<Triple, kBands> probes;
        for (std::size_t i = 0; i < kBands; ++i)
            for (std::size_t axis = 0; axis < 3; ++axis)
                probes[i][axis] = xyz[axis] + increments[i][axis];
        const Values probed = target.distances(probes);
        const double* const combined = weighting.GetCombinedWeights();
        Values result;
        for (std::size_t i = 0; i < kBands; ++i)
            result[i] = combined[i] == 0.0 ? 0.0 : (distance - probed[i]) / combined[i];
        return result;
    }

    const TIlluminantAndObserver& weighting;
    const Target& target;
    const std::array<Triple, kBands>& increments;
    Values current;
    Triple xyz;
    double distance;
    Values best;
    double bestDistance;
};

} // namespace

double TIlluminantAndObserver::CalculateMatchingSpectrum(const double* targetXYZ, const double* whiteXYZ,
                                                         const double* upperLimits, const double* lowerLimits,
                                                         const double* startSpectrum, MatchingMethod method,
                                                         double* resultSpectrum) const {
    if (targetXYZ == nullptr || startSpectrum == nullptr || resultSpectrum == nullptr)
        return kRefused;
    if (method != kMatchingMethodLab && method != kMatchingMethodXYZ)
        return kRefused;
    if (status != 0 || nrPoints != kBands || tableIndex != kDirect)
        return kRefused;
    Triple white;
    if (whiteXYZ != nullptr)
        std::copy_n(whiteXYZ, 3, white.begin());
    else if (GetXYZWhite(white.data()) != 0)
        return kRefused;

    std::array<Triple, kBands> increments;
    for (std::size_t i = 0; i < kBands; ++i)
        increments[i] = {factor * xWeight[i] * kProbe, factor * yWeight[i] * kProbe,
                         factor * zWeight[i] * kProbe};
    const Values upper = limitsOr(upperLimits, kHighest);
    const Values lower = limitsOr(lowerLimits, kLowest);
    const Target target(white.data(), targetXYZ, method);
    Search search(*this, target, increments, startSpectrum);
    for (int step = 0; step < kSteps; ++step)
        search.takeStep(lower, upper);

    const Values& best = search.bestSpectrum();
    Triple xyz;
    GetXYZ(best.data(), xyz.data(), kBands);
    std::copy(best.begin(), best.end(), resultSpectrum);
    return target.labDistance(xyz);
}
