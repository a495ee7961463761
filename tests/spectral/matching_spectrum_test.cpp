// The search for a spectrum of a given colour.
#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "colorspace/tlabspace.h"
#include "platform/utility.h"
#include "spectral/tilluminantandobserver.h"
#include "tests/spectral/known_spectra.h"
#include "tests/support/batches.h"
#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kLowest = 0.00001, kHighest = 0.99999;
constexpr MatchingMethod kByLab = kMatchingMethodLab, kByXyz = kMatchingMethodXYZ;
constexpr MatchingMethod kMethods[] = {kByLab, kByXyz};

constexpr Triple kRed = {30.0, 20.0, 8.0};
constexpr Triple kGreen = {20.0, 32.0, 15.0};
constexpr Triple kBrighterThanWhite = {150.0, 140.0, 90.0};
constexpr Triple kPublishedD50 = {96.422, 100.0, 82.521};

static_assert(static_cast<int>(kMatchingMethodLab) == 0);
static_assert(static_cast<int>(kMatchingMethodXYZ) == 1);

TIlluminant lampOf(const Standard& values, const char* name = "lamp") {
    const TSpectrum spectrum = spectrumOf(values);
    return TIlluminant(&spectrum, name);
}

// A weighting of 36 points with all that it holds.
class Weighting {
public:
    explicit Weighting(const Standard& lampValues, int observerNumber = 0, int points = 36,
                       const char* name = "lamp")
        : light(lampValues), lamp(lampOf(lampValues, name)), observer(observerNumber),
          weighting(&lamp, &observer, points) {}
    Weighting(const Weighting&) = delete;
    Weighting& operator=(const Weighting&) = delete;

    TIlluminantAndObserver* operator->() { return &weighting; }
    const Standard& lampValues() const { return light; }
    /// The relative values of the illuminant as its own stimulus.
    Triple white() {
        Triple xyz = {};
        EXPECT_EQ(observer.GetXYZ(lamp.GetSpectrum(), lamp.GetSpectrum(), xyz.data()), 0);
        return xyz;
    }
    std::size_t observerNumber() const { return observer.GetNumber(); }
    Triple xyzOf(const Standard& values) const {
        Triple xyz = {};
        EXPECT_EQ(weighting.GetXYZ(values.data(), xyz.data(), 36), 0);
        return xyz;
    }

private:
    Standard light;
    TIlluminant lamp;
    TObserver observer;
    TIlluminantAndObserver weighting;
};

// What is looked for, and within what.
struct Wanted {
    Triple target = kRed;
    Standard start = flat(0.5);
    MatchingMethod method = kByLab;
    const double* white = nullptr;
    const double* upper = nullptr;
    const double* lower = nullptr;
};

struct Found {
    double distance;
    Standard spectrum;
};

Found search(Weighting& weighting, const Wanted& wanted) {
    Found found = {kNan, flat(-7.0)};
    found.distance =
        weighting->CalculateMatchingSpectrum(wanted.target.data(), wanted.white, wanted.upper, wanted.lower,
                                             wanted.start.data(), wanted.method, found.spectrum.data());
    return found;
}

// The search written down once more, number by number, with what somebody might want to "repair" as a choice.
struct Variant {
    int steps = 1000;
    std::size_t firstCentre = 4;
    std::size_t lastCentre = 30;
    bool returnsLast = false;
    bool clampsStart = false;
    bool scalesTheProbeFirst = false;      // k * (W * 0.001)
    bool multipliesByAnEighteenth = false; // instead of dividing by 18
    bool scalesTheStepFirst = false;       // (h * (d * 0.01)) / S
    bool dividesOnce = false;              // h / (S / (d * 0.01))
};

struct Restated {
    double distance;
    Standard spectrum;
    int bestStep = 0;         // 0 is the start
    double bestMeasure = 0.0; // what was minimised
    double lastMeasure = 0.0;
};

class Restatement {
public:
    Restatement(Weighting& weighting, const Wanted& wish)
        : wanted(wish), ownWhite(weighting.white()),
          lab(wish.white != nullptr ? wish.white : ownWhite.data()), factor(weighting->GetFactor()) {
        const std::size_t observer = weighting.observerNumber();
        for (std::size_t i = 0; i < 36; ++i) {
            weight[0][i] = weighting.lampValues()[i] * TObserver::sXSpectrum[observer][2 * i];
            weight[1][i] = weighting.lampValues()[i] * TObserver::sYSpectrum[observer][2 * i];
            weight[2][i] = weighting.lampValues()[i] * TObserver::sZSpectrum[observer][2 * i];
            combined[i] = weighting->GetCombinedWeights()[i];
        }
        lab.XYZToLab(wanted.target.data(), targetLab.data());
    }

    Restated run(const Variant& variant = {}) const {
        Standard candidate = wanted.start;
        if (variant.clampsStart)
            confine(candidate);
        Triple xyz = colorOf(candidate);
        double d = measure(xyz);
        Restated best = {0.0, candidate, 0, d, d};
        for (int step = 1; step <= variant.steps; ++step) {
            const Standard h = smoothed(gradient(xyz, d, variant), variant);
            double sum = 0.0;
            for (const double value : h)
                sum += std::fabs(value);
            if (sum != 0.0) {
                for (std::size_t i = 0; i < 36; ++i)
                    candidate[i] += stepOf(h[i], d, sum, variant);
            }
            confine(candidate);
            xyz = colorOf(candidate);
            d = measure(xyz);
            if (d < best.bestMeasure) {
                best.bestMeasure = d;
                best.spectrum = candidate;
                best.bestStep = step;
            }
        }
        best.lastMeasure = d;
        if (variant.returnsLast)
            best.spectrum = candidate;
        best.distance = labDistance(colorOf(best.spectrum));
        return best;
    }

    double labDistance(const Triple& xyz) const {
        Triple found = {};
        lab.XYZToLab(xyz.data(), found.data());
        return vect_distance(found.data(), targetLab.data(), 3);
    }

    Triple colorOf(const Standard& s) const {
        Triple xyz;
        for (std::size_t c = 0; c < 3; ++c) {
            double sum = 0.0;
            for (std::size_t i = 0; i < 36; ++i)
                sum += weight[c][i] * s[i];
            xyz[c] = factor * sum;
        }
        return xyz;
    }

private:
    double measure(const Triple& xyz) const {
        return wanted.method == kByLab ? labDistance(xyz)
                                       : vect_distance(xyz.data(), wanted.target.data(), 3);
    }

    static double stepOf(double h, double d, double sum, const Variant& variant) {
        if (variant.scalesTheStepFirst)
            return (h * (d * 0.01)) / sum;
        if (variant.dividesOnce)
            return h / (sum / (d * 0.01));
        return h * ((d * 0.01) / sum);
    }

    Standard gradient(const Triple& xyz, double d, const Variant& variant) const {
        Standard g;
        for (std::size_t i = 0; i < 36; ++i) {
            Triple probe;
            for (std::size_t c = 0; c < 3; ++c)
                probe[c] = xyz[c] + (variant.scalesTheProbeFirst ? factor * (weight[c][i] * 0.001)
                                                                 : factor * weight[c][i] * 0.001);
            g[i] = combined[i] == 0.0 ? 0.0 : (d - measure(probe)) / combined[i];
        }
        return g;
    }

    static Standard smoothed(const Standard& g, const Variant& variant) {
        Standard h = g;
        for (std::size_t c = variant.firstCentre; c <= variant.lastCentre; ++c) {
            const double sum = 0.5 * g[c - 4] + g[c - 3] + 2 * g[c - 2] + 3 * g[c - 1] + 5 * g[c] +
                               3 * g[c + 1] + 2 * g[c + 2] + g[c + 3] + 0.5 * g[c + 4];
            h[c] = variant.multipliesByAnEighteenth ? sum * (1.0 / 18) : sum / 18;
        }
        return h;
    }

    void confine(Standard& candidate) const {
        for (std::size_t i = 0; i < 36; ++i) {
            const double low = wanted.lower != nullptr ? wanted.lower[i] : kLowest;
            const double high = wanted.upper != nullptr ? wanted.upper[i] : kHighest;
            if (candidate[i] < low)
                candidate[i] = low;
            if (candidate[i] > high)
                candidate[i] = high;
        }
    }

    Wanted wanted;
    Triple ownWhite;
    TLabSpace lab;
    double factor;
    Standard weight[3];
    Standard combined;
    Triple targetLab;
};

void expectRestated(Weighting& weighting, const Wanted& wanted) {
    const Found found = search(weighting, wanted);
    const Restated expected = Restatement(weighting, wanted).run();
    EXPECT_EQ(difference(found.spectrum.data(), expected.spectrum.data(), 36), "");
    EXPECT_TRUE(sameBits(found.distance, expected.distance)) << found.distance << ' ' << expected.distance;
}

// How far two spectra are apart at most.
double farthest(const Standard& a, const Standard& b) {
    double result = 0.0;
    for (std::size_t i = 0; i < 36; ++i)
        result = std::max(result, std::fabs(a[i] - b[i]));
    return result;
}

Standard greenLimits(double ordinary) {
    Standard limits = flat(ordinary);
    std::fill_n(limits.begin() + 10, 4, 0.25);
    return limits;
}

// Spectra worked out apart from this program, in plain arithmetic from the CIE tables. Starts that differ by
// 1e-13 move them by less than 5e-10; the tolerance leaves room for a power function of another last digit.
constexpr double kSpectrumTolerance = 1e-8;
constexpr double kDistanceTolerance = 1e-10;

void expectFigures(const Found& found, const Standard& spectrum, double distance) {
    for (std::size_t i = 0; i < 36; ++i)
        EXPECT_NEAR(found.spectrum[i], spectrum[i], kSpectrumTolerance)
            << slotWavelength(static_cast<int>(i));
    EXPECT_NEAR(found.distance, distance, kDistanceTolerance);
}

TEST(matchingSpectrum, redByLab_isTheSpectrumWorkedOut) {
    Weighting weighting(kD65);
    expectFigures(search(weighting, {}),
                  {0.13649579593,   0.13108888452,    0.13148778097,    0.12982111289,    0.12137694311,
                   0.11419121422,   0.10448870596,    0.090955444196,   0.071412518039,   0.044184368802,
                   0.0092945046504, 0.00074147531682, 0.00076396798016, 0.00020022418247, 1e-05,
                   1e-05,           0.057673664113,   0.12627980559,    0.19737535987,    0.26665751586,
                   0.33114157388,   0.38857569401,    0.43692014372,    0.47518097683,    0.50364123004,
                   0.52376214289,   0.5374411664,     0.54638484396,    0.55204049479,    0.55549497766,
                   0.55786254188,   0.55973998208,    0.56057933016,    0.55933223717,    0.56837941852,
                   0.56190033942},
                  0.0255086082773);
}

TEST(matchingSpectrum, redByXyz_isTheSpectrumWorkedOut) {
    Weighting weighting(kD65);
    Wanted wanted;
    wanted.method = kByXyz;
    expectFigures(search(weighting, wanted),
                  {0.13220027462,    0.12675076183,    0.12739665941,    0.12639712561,    0.12014352948,
                   0.11421616773,    0.10547194849,    0.092120944958,   0.07191068125,    0.043403324225,
                   0.0072720135033,  0.00041778252372, 0.00042180753539, 0.00028592867149, 0.00012280299,
                   1.4535955127e-05, 0.059677334837,   0.12748035881,    0.19741974148,    0.26566928042,
                   0.32956996373,    0.38701389144,    0.43582936991,    0.47486542494,    0.50419515035,
                   0.52512611024,    0.53944289104,    0.54884175665,    0.55478684411,    0.55841107727,
                   0.56087502606,    0.56282670329,    0.56368329395,    0.56241927057,    0.57160519867,
                   0.56502817515},
                  0.0122547171097);
}

TEST(matchingSpectrum, colourOutOfReach_isTheSpectrumWorkedOut) {
    Weighting weighting(kIlluminantA);
    Wanted wanted;
    wanted.target = kBrighterThanWhite;
    expectFigures(search(weighting, wanted),
                  {0.99999,       0.99999,       0.99999,       0.99999,       0.99999,       0.99999,
                   0.99999,       0.99999,       0.99999,       0.99999,       0.99999,       0.99999,
                   0.99999,       0.99999,       0.99999,       0.99999,       0.99999,       0.84489396684,
                   0.23699376661, 0.10596525728, 0.18446393287, 0.33473996041, 0.49202457945, 0.62448528899,
                   0.72746955198, 0.80084503597, 0.85345353554, 0.88926185072, 0.91323325252, 0.92843501312,
                   0.93922064151, 0.94804782883, 0.95180233156, 0.94676042452, 0.98446247857, 0.95754446545},
                  36.5020836429);
}

TEST(matchingSpectrum, greenWithinLimitsOnAWhite_isTheSpectrumWorkedOut) {
    Weighting weighting(kD50, 1);
    const Standard lower = greenLimits(0.1), upper = greenLimits(0.6);
    const Wanted wanted = {kGreen, ramp(), kByLab, kPublishedD50.data(), upper.data(), lower.data()};
    expectFigures(search(weighting, wanted),
                  {0.10001197604, 0.10005580378, 0.10003801367, 0.1,           0.1,           0.1,
                   0.1,           0.11181834309, 0.21638632122, 0.36039906275, 0.25,          0.25,
                   0.25,          0.25,          0.54670436885, 0.54235329718, 0.53597631298, 0.52507433185,
                   0.46409690047, 0.31483635301, 0.18023004801, 0.1,           0.1,           0.1,
                   0.1,           0.1,           0.1,           0.1,           0.1,           0.1,
                   0.1,           0.1,           0.1,           0.1,           0.1,           0.1},
                  0.0100808792951);
}

// The same number for number, for lamps, observers, methods, whites, limits and starts.

TEST(matchingSpectrum, everyStep_isExactInTheWrittenOrder) {
    const Standard lower = greenLimits(0.1), upper = greenLimits(0.6);
    for (const Standard& light : {kD65, kIlluminantA, flat(1.0)}) {
        for (const int observer : {0, 1}) {
            Weighting weighting(light, observer);
            for (const MatchingMethod method : kMethods) {
                expectRestated(weighting, {kRed, flat(0.5), method});
                expectRestated(weighting, {kGreen, irregular(7), method, kPublishedD50.data()});
                expectRestated(weighting,
                               {kGreen, ramp(), method, kPublishedD50.data(), upper.data(), lower.data()});
            }
        }
    }
}

TEST(matchingSpectrum, oneSidedLimits_leaveTheOtherSideToItsDefault) {
    Weighting weighting(kD65);
    const Standard lower = flat(0.2), upper = flat(0.3);
    for (const MatchingMethod method : kMethods) {
        expectRestated(weighting, {kRed, flat(0.25), method, nullptr, upper.data(), nullptr});
        expectRestated(weighting, {kRed, flat(0.25), method, nullptr, nullptr, lower.data()});
    }
    const Found below = search(weighting, {kRed, flat(0.25), kByLab, nullptr, upper.data(), nullptr});
    EXPECT_EQ(*std::min_element(below.spectrum.begin(), below.spectrum.end()), kLowest);
    EXPECT_EQ(*std::max_element(below.spectrum.begin(), below.spectrum.end()), 0.3);
    const Found above =
        search(weighting, {kBrighterThanWhite, flat(0.25), kByLab, nullptr, nullptr, lower.data()});
    EXPECT_EQ(*std::max_element(above.spectrum.begin(), above.spectrum.end()), kHighest);
    EXPECT_GE(*std::min_element(above.spectrum.begin(), above.spectrum.end()), 0.2);
}

// What a repair would change.

// A search that still improves in its last step shows how many there are.
TEST(matchingSpectrum, steps_areAThousand) {
    Weighting weighting(kD65);
    Wanted wanted;
    wanted.method = kByXyz;
    const Restatement restatement(weighting, wanted);
    Variant fewer, more;
    fewer.steps = 999;
    more.steps = 1001;
    ASSERT_EQ(restatement.run().bestStep, 1000);
    const Standard found = search(weighting, wanted).spectrum;
    EXPECT_EQ(found, restatement.run().spectrum);
    EXPECT_GT(farthest(found, restatement.run(fewer).spectrum), 1e-6);
    EXPECT_GT(farthest(found, restatement.run(more).spectrum), 1e-6);
}

// No early end: on its way to black the search goes back and forth, and its best comes after worse steps.
TEST(matchingSpectrum, worseSteps_endNothing) {
    Weighting weighting(kD65);
    const Wanted wanted = {{0.0, 0.0, 0.0}, flat(0.9), kByLab};
    const Restatement restatement(weighting, wanted);
    const Restated best = restatement.run();
    double previous = kInfinity;
    bool worse = false;
    for (int steps = 0; steps < 100 && !worse; ++steps) {
        Variant shorter;
        shorter.steps = steps;
        const double measured = restatement.run(shorter).lastMeasure;
        worse = measured > previous;
        previous = measured;
    }
    ASSERT_TRUE(worse);
    ASSERT_GT(best.bestStep, 900);
    EXPECT_EQ(search(weighting, wanted).spectrum, best.spectrum);
}

// The shortest of three searches.
std::chrono::steady_clock::duration timeOf(Weighting& weighting, const Wanted& wanted) {
    auto shortest = std::chrono::steady_clock::duration::max();
    for (int i = 0; i < 3; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        search(weighting, wanted);
        shortest = std::min(shortest, std::chrono::steady_clock::now() - begin);
    }
    return shortest;
}

// Every call costs the same; a search that ended at its target would take a thousandth of the time.
TEST(matchingSpectrum, search_goesOnAfterItHasFoundTheTarget) {
    Weighting weighting(kD65);
    const Wanted found = {weighting.xyzOf(flat(0.5)), flat(0.5), kByLab};
    ASSERT_EQ(search(weighting, found).distance, 0.0);
    EXPECT_GT(timeOf(weighting, found) * 10, timeOf(weighting, {}));
}

TEST(matchingSpectrum, result_isTheBestCandidateAndNotTheLast) {
    Weighting weighting(kD65);
    const Wanted wanted;
    const Restatement restatement(weighting, wanted);
    Variant last;
    last.returnsLast = true;
    ASSERT_LT(restatement.run().bestMeasure, 0.5 * restatement.run(last).lastMeasure);
    const Found found = search(weighting, wanted);
    EXPECT_EQ(found.spectrum, restatement.run().spectrum);
    EXPECT_GT(farthest(found.spectrum, restatement.run(last).spectrum), 1e-5);
    EXPECT_LT(found.distance, restatement.run(last).distance);
}

// The start is one of the candidates.
TEST(matchingSpectrum, startThatNothingImproves_isReturned) {
    Weighting weighting(kD65);
    const Standard pinned = flat(0.1);
    const Standard start = flat(0.3);
    for (const MatchingMethod method : kMethods) {
        Wanted wanted = {weighting.xyzOf(flat(0.32)), start, method, nullptr, pinned.data(), pinned.data()};
        EXPECT_EQ(search(weighting, wanted).spectrum, start);
    }
}

TEST(matchingSpectrum, smoothing_stopsAtTheCentres4And30) {
    Weighting weighting(kD65);
    const Wanted wanted;
    const Restatement restatement(weighting, wanted);
    const Standard found = search(weighting, wanted).spectrum;
    EXPECT_EQ(found, restatement.run().spectrum);
    Variant later, shorter, longer;
    later.firstCentre = 5;
    shorter.lastCentre = 29;
    longer.lastCentre = 31;
    EXPECT_GT(farthest(found, restatement.run(later).spectrum), 1e-5);
    EXPECT_GT(farthest(found, restatement.run(shorter).spectrum), 1e-5);
    EXPECT_GT(farthest(found, restatement.run(longer).spectrum), 1e-5);
}

// Every regrouping rounds differently somewhere in a thousand steps; the colour is dark, where a probe weighs
// more.
TEST(matchingSpectrum, operations_areInTheWrittenOrder) {
    Weighting weighting(kD65);
    const Wanted wanted = {{0.0, 0.0, 0.0}, flat(0.01)};
    const Restatement restatement(weighting, wanted);
    const Standard found = search(weighting, wanted).spectrum;
    EXPECT_EQ(found, restatement.run().spectrum);
    Variant regrouped[4];
    regrouped[0].scalesTheProbeFirst = true;
    regrouped[1].multipliesByAnEighteenth = true;
    regrouped[2].scalesTheStepFirst = true;
    regrouped[3].dividesOnce = true;
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_NE(found, restatement.run(regrouped[i]).spectrum) << i;
}

// Where the lamp gives no light there is no gradient, and only what its neighbours lend by smoothing moves
// it.
TEST(matchingSpectrum, darkPlace_movesOnlyWhereItIsSmoothed) {
    for (std::size_t dark = 0; dark < 36; ++dark) {
        Standard light = kD65;
        light[dark] = 0.0;
        Weighting weighting(light);
        ASSERT_EQ(weighting->GetCombinedWeights()[dark], 0.0);
        const Found found = search(weighting, {});
        EXPECT_LT(found.distance, 0.5) << dark;
        if (dark < 4 || dark > 30)
            EXPECT_EQ(found.spectrum[dark], 0.5) << dark;
        else
            EXPECT_NE(found.spectrum[dark], 0.5) << dark;
    }
}

TEST(matchingSpectrum, darkPlaces_areExactInTheWrittenOrder) {
    Standard light = kD65;
    for (const std::size_t dark : {0u, 1u, 2u, 3u, 8u, 9u, 10u, 20u, 31u, 35u})
        light[dark] = 0.0;
    for (const int observer : {0, 1}) {
        Weighting weighting(light, observer);
        for (const MatchingMethod method : kMethods)
            expectRestated(weighting, {kRed, flat(0.5), method});
    }
}

// Limits.

TEST(matchingSpectrum, defaultLimits_areJustInsideZeroAndOne) {
    Weighting weighting(kIlluminantA);
    Wanted wanted;
    wanted.target = kBrighterThanWhite;
    const Standard bright = search(weighting, wanted).spectrum;
    EXPECT_EQ(*std::max_element(bright.begin(), bright.end()), 0.99999);
    wanted.target = {5.0, 60.0, 5.0};
    const Standard green = search(weighting, wanted).spectrum;
    EXPECT_EQ(*std::min_element(green.begin(), green.end()), 0.00001);
    EXPECT_EQ(*std::max_element(green.begin(), green.end()), 0.99999);
}

TEST(matchingSpectrum, defaultLimits_areTheSameWhenGiven) {
    Weighting weighting(kIlluminantA);
    const Standard lower = flat(0.00001), upper = flat(0.99999);
    for (const MatchingMethod method : kMethods) {
        const Found left = search(weighting, {kBrighterThanWhite, ramp(), method});
        const Found given =
            search(weighting, {kBrighterThanWhite, ramp(), method, nullptr, upper.data(), lower.data()});
        EXPECT_EQ(left.spectrum, given.spectrum);
        EXPECT_EQ(left.distance, given.distance);
    }
}

TEST(matchingSpectrum, equalLimits_pinTheSpectrum) {
    Weighting weighting(kD65);
    Standard lower = flat(kLowest), upper = flat(kHighest);
    for (const std::size_t i : {0u, 7u, 18u, 35u})
        lower[i] = upper[i] = 0.125 + static_cast<double>(i) / 64.0;
    for (const MatchingMethod method : kMethods) {
        const Found found = search(weighting, {kRed, flat(0.5), method, nullptr, upper.data(), lower.data()});
        EXPECT_LT(found.distance, 0.5);
        for (const std::size_t i : {0u, 7u, 18u, 35u})
            EXPECT_EQ(found.spectrum[i], lower[i]) << i;
    }
}

// First up to the lower limit, then down to the upper one.
TEST(matchingSpectrum, lowerLimitAboveTheUpper_givesTheUpper) {
    Weighting weighting(kD65);
    Standard lower = flat(kLowest), upper = flat(kHighest);
    lower[18] = 0.8;
    upper[18] = 0.3;
    const Wanted wanted = {kRed, flat(0.5), kByLab, nullptr, upper.data(), lower.data()};
    EXPECT_EQ(search(weighting, wanted).spectrum[18], 0.3);
    expectRestated(weighting, wanted);
}

// Only the steps are confined, on purpose: a start beyond the limits that matches is the answer.
TEST(matchingSpectrum, start_isNotConfined) {
    Weighting weighting(kD65);
    Standard start = irregular(3);
    start[3] = 1.75;
    start[20] = -0.25;
    for (const MatchingMethod method : kMethods) {
        const Wanted wanted = {weighting.xyzOf(start), start, method};
        const Found found = search(weighting, wanted);
        EXPECT_EQ(found.spectrum, start);
        EXPECT_EQ(found.distance, 0.0);
        Variant confined;
        confined.clampsStart = true;
        EXPECT_NE(Restatement(weighting, wanted).run(confined).spectrum, start);
    }
}

// Starts.

TEST(matchingSpectrum, startThatMatches_isReturnedWithDistance0) {
    for (const int observer : {0, 1}) {
        Weighting weighting(kD50, observer);
        for (const Standard& start : {flat(0.5), ramp(), irregular(11)}) {
            for (const MatchingMethod method : kMethods) {
                const Found found = search(weighting, {weighting.xyzOf(start), start, method});
                EXPECT_EQ(found.spectrum, start);
                EXPECT_EQ(found.distance, 0.0);
            }
        }
    }
}

// Only a smaller distance replaces the best. Here the limits change a place that gives no light, after which
// the distance is the same.
TEST(matchingSpectrum, equallyGoodCandidate_replacesNothing) {
    Standard light = kD65;
    light[2] = 0.0;
    Weighting weighting(light);
    Standard start = flat(0.5);
    start[2] = 2.0;
    for (const MatchingMethod method : kMethods)
        EXPECT_EQ(search(weighting, {weighting.xyzOf(start), start, method}).spectrum, start);
}

// Below black every probe is as far away as the candidate: nothing to follow. The limits lift the spectrum,
// and the search goes on from there.
TEST(matchingSpectrum, startWithoutASlope_isLeftByItsLimits) {
    Weighting weighting(kD65);
    const Wanted wanted = {kRed, flat(-1.0), kByLab};
    const Found found = search(weighting, wanted);
    EXPECT_LT(found.distance, 1.0);
    EXPECT_THAT(found.spectrum, Each(testing::AllOf(testing::Ge(kLowest), testing::Le(kHighest))));
    expectRestated(weighting, wanted);
}

// So far away that a probe makes no difference.
TEST(matchingSpectrum, startTooFarForTheProbes_isLeftByItsLimits) {
    Weighting weighting(kD65);
    const Wanted wanted = {kRed, flat(1e20), kByXyz};
    const Found found = search(weighting, wanted);
    EXPECT_LT(found.distance, 5.0);
    expectRestated(weighting, wanted);
}

// Whatever the start is, no step that is no number spoils what its limits make of it.
TEST(matchingSpectrum, startTooLargeForItsSteps_isLeftByItsLimits) {
    Weighting weighting(kD65);
    Standard infinite = flat(0.5);
    infinite[7] = kInfinity;
    for (const Standard& start : {flat(1e150), flat(1e160), flat(1e300), infinite}) {
        const Found found = search(weighting, {kRed, start, kByXyz});
        EXPECT_LT(found.distance, 0.1) << start[7];
        EXPECT_THAT(found.spectrum, Each(testing::AllOf(testing::Ge(kLowest), testing::Le(kHighest))));
    }
}

TEST(matchingSpectrum, startWithoutADistance_isWorseThanAnyCandidate) {
    Weighting weighting(kD65);
    Standard infinite = flat(0.5);
    infinite[7] = kInfinity;
    for (const Standard& start : {flat(1.7e308), infinite}) {
        const Found found = search(weighting, {kRed, start, kByLab});
        EXPECT_LT(found.distance, 0.1) << start[7];
        EXPECT_THAT(found.spectrum, Each(testing::AllOf(testing::Ge(kLowest), testing::Le(kHighest))));
    }
}

// Without a slope and without limits that move it, the spectrum stays, and it stays a number.
TEST(matchingSpectrum, startWithoutASlopeWithinItsLimits_isReturned) {
    Weighting weighting(kD65);
    const Standard lower = flat(-2.0), upper = flat(-0.5), start = flat(-1.0);
    const Wanted wanted = {kRed, start, kByLab, nullptr, upper.data(), lower.data()};
    const Found found = search(weighting, wanted);
    EXPECT_EQ(found.spectrum, start);
    // The distance from black, with L* of 116 * 0.137931 - 16.
    EXPECT_NEAR(found.distance, Restatement(weighting, wanted).labDistance({0.0, 0.0, 0.0}), 1e-12);
}

TEST(matchingSpectrum, colourThatIsNotANumber_leavesTheStart) {
    Weighting weighting(kD65);
    Standard broken = flat(0.5);
    broken[5] = kNan;
    for (const MatchingMethod method : kMethods) {
        for (const Triple& target : {Triple{kNan, 20.0, 8.0}, Triple{kInfinity, 20.0, 8.0}}) {
            const Standard start = ramp();
            EXPECT_EQ(search(weighting, {target, start, method}).spectrum, start);
        }
        const Found found = search(weighting, {kRed, broken, method});
        EXPECT_EQ(difference(found.spectrum.data(), broken.data(), 36), "");
        EXPECT_TRUE(std::isnan(found.distance));
    }
}

TEST(matchingSpectrum, whiteWithAZero_leavesTheStart) {
    Weighting weighting(kD65);
    const Triple white = {95.0, 0.0, 108.0};
    const Standard start = ramp();
    const Wanted wanted = {kRed, start, kByLab, white.data()};
    EXPECT_EQ(search(weighting, wanted).spectrum, start);
    expectRestated(weighting, wanted);
}

// The white.

TEST(matchingSpectrum, whiteLeftOut_isTheRelativeWhiteOfTheIlluminant) {
    for (const int observer : {0, 1}) {
        Weighting weighting(kIlluminantC, observer);
        const Triple white = weighting.white();
        for (const MatchingMethod method : kMethods) {
            const Found left = search(weighting, {kGreen, ramp(), method});
            const Found given = search(weighting, {kGreen, ramp(), method, white.data()});
            EXPECT_EQ(left.spectrum, given.spectrum);
            EXPECT_EQ(left.distance, given.distance);
            const Found other = search(weighting, {kGreen, ramp(), method, kPublishedD50.data()});
            EXPECT_NE(left.distance, other.distance);
        }
    }
}

// By XYZ the white decides nothing but the figure that is returned.
TEST(matchingSpectrum, whiteOfASearchByXyz_doesNotChangeTheSpectrum) {
    Weighting weighting(kD65);
    const Found own = search(weighting, {kRed, flat(0.5), kByXyz});
    const Found other = search(weighting, {kRed, flat(0.5), kByXyz, kPublishedD50.data()});
    EXPECT_EQ(own.spectrum, other.spectrum);
    EXPECT_NE(own.distance, other.distance);
}

TEST(matchingSpectrum, negativeWhite_isReportedOnce) {
    Weighting weighting(kD65);
    const ReportCollector reports;
    const Triple white = {95.0, -1.0, 108.0};
    search(weighting, {kRed, ramp(), kByLab, white.data()});
    EXPECT_THAT(reports.errors, ElementsAre(Report{"Invalid XYZref values", "tlabspace", 162}));
}

TEST(matchingSpectrum, ordinarySearch_reportsNothing) {
    Weighting weighting(kD65);
    const ReportCollector reports;
    search(weighting, {});
    EXPECT_THAT(reports.errors, IsEmpty());
    EXPECT_THAT(reports.warnings, IsEmpty());
}

// The answer.

TEST(matchingSpectrum, answer_isTheCielabDifferenceOfTheResultByEitherMethod) {
    Weighting weighting(kD50, 1);
    for (const MatchingMethod method : kMethods) {
        for (const double* white : {static_cast<const double*>(nullptr), kPublishedD50.data()}) {
            const Wanted wanted = {kGreen, ramp(), method, white};
            const Found found = search(weighting, wanted);
            const Triple own = weighting.white();
            const TLabSpace lab(white != nullptr ? white : own.data());
            const Triple xyz = weighting.xyzOf(found.spectrum);
            EXPECT_NEAR(found.distance, lab.CalcDeltaE(xyz.data(), kGreen.data(), 0), 1e-11);
            if (method == kByXyz) {
                EXPECT_GT(std::fabs(found.distance - vect_distance(xyz.data(), kGreen.data(), 3)), 1e-4);
            }
        }
    }
}

TEST(matchingSpectrum, reachableColours_areReachedWithinATenth) {
    Weighting weighting(kD65);
    for (const unsigned seed : {1u, 2u, 3u}) {
        Standard of = irregular(seed);
        for (double& value : of)
            value = 0.3 + 0.4 * value;
        const Triple target = weighting.xyzOf(of);
        for (const MatchingMethod method : kMethods)
            EXPECT_LT(search(weighting, {target, flat(0.5), method}).distance, 0.1) << seed;
    }
}

TEST(matchingSpectrum, secondSearch_isLikeTheFirst) {
    Weighting weighting(kD65);
    const Found first = search(weighting, {});
    const Triple before = weighting.xyzOf(ramp());
    search(weighting, {kGreen, ramp(), kByXyz, kPublishedD50.data()});
    const Found second = search(weighting, {});
    EXPECT_EQ(first.spectrum, second.spectrum);
    EXPECT_EQ(first.distance, second.distance);
    EXPECT_EQ(weighting.xyzOf(ramp()), before);
    EXPECT_EQ(weighting->GetStatus(), 0);
    EXPECT_EQ(weighting->GetNumber(), 36);
}

TEST(matchingSpectrum, arguments_areOnlyRead) {
    Weighting weighting(kD65);
    Triple target = kRed, white = kPublishedD50;
    Standard upper = flat(0.9), lower = flat(0.05), start = ramp(), result = flat(-7.0);
    weighting->CalculateMatchingSpectrum(target.data(), white.data(), upper.data(), lower.data(),
                                         start.data(), kByLab, result.data());
    EXPECT_EQ(target, kRed);
    EXPECT_EQ(white, kPublishedD50);
    EXPECT_EQ(upper, flat(0.9));
    EXPECT_EQ(lower, flat(0.05));
    EXPECT_EQ(start, ramp());
}

TEST(matchingSpectrum, result_mayReplaceTheStartOrALimit) {
    Weighting weighting(kD65);
    const Standard lower = flat(0.05), upper = flat(0.9);
    const Found expected = search(weighting, {kRed, ramp(), kByLab, nullptr, upper.data(), lower.data()});
    for (const int replaced : {0, 1, 2}) {
        Standard arrays[3] = {ramp(), upper, lower};
        const double distance =
            weighting->CalculateMatchingSpectrum(kRed.data(), nullptr, arrays[1].data(), arrays[2].data(),
                                                 arrays[0].data(), kByLab, arrays[replaced].data());
        EXPECT_EQ(arrays[replaced], expected.spectrum) << replaced;
        EXPECT_EQ(distance, expected.distance) << replaced;
    }
}

TEST(matchingSpectrum, exactlyThirtySixValues_areWritten) {
    Weighting weighting(kD65);
    GuardedDoubles result(36, 1);
    const Standard start = flat(0.5);
    weighting->CalculateMatchingSpectrum(kRed.data(), nullptr, nullptr, nullptr, start.data(), kByLab,
                                         result.data());
    EXPECT_TRUE(result.intactAround());
    EXPECT_FALSE(result.untouched());
}

// Refusals: -1.0, and nothing written.

void expectRefused(const Found& found) {
    EXPECT_EQ(found.distance, -1.0);
    EXPECT_THAT(found.spectrum, Each(-7.0));
}

TEST(matchingSpectrum, anotherMethod_isRefused) {
    Weighting weighting(kD65);
    for (const int number : {2, 3, -1, 1000}) {
        // Not a constant: what the enumeration cannot name may still arrive.
        const volatile int value = number;
        Wanted wanted;
        wanted.method = static_cast<MatchingMethod>(value);
        SCOPED_TRACE(number);
        expectRefused(search(weighting, wanted));
    }
}

TEST(matchingSpectrum, anotherNumberOfPoints_isRefused) {
    for (const int points : {0, 1, 2, 8, 35, 37, -1}) {
        Weighting weighting(kD65, 0, points);
        SCOPED_TRACE(points);
        for (const MatchingMethod method : kMethods)
            expectRefused(search(weighting, {kRed, flat(0.5), method}));
    }
}

TEST(matchingSpectrum, tableMode_isRefused) {
    for (const char* name : {"CIE Illuminant F2", "CIE Illuminant F7", "cie illuminant f11"}) {
        Weighting weighting(kD65, 0, 36, name);
        ASSERT_EQ(weighting->GetStatus(), 0);
        SCOPED_TRACE(name);
        for (const MatchingMethod method : kMethods)
            expectRefused(search(weighting, {kRed, flat(0.5), method}));
    }
}

TEST(matchingSpectrum, weightingThatCouldNotBeMade_isRefused) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    TIlluminantAndObserver unlit(nullptr, &observer, 36), unobserved(&lamp, nullptr, 36);
    for (TIlluminantAndObserver* weighting : {&unlit, &unobserved}) {
        ASSERT_NE(weighting->GetStatus(), 0);
        const Standard start = flat(0.5);
        Found found = {kNan, flat(-7.0)};
        found.distance = weighting->CalculateMatchingSpectrum(kRed.data(), nullptr, nullptr, nullptr,
                                                              start.data(), kByLab, found.spectrum.data());
        expectRefused(found);
    }
}

TEST(matchingSpectrum, weightingOfALampWithoutASpectrum_isRefused) {
    const TIlluminant dark(nullptr, "dark");
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&dark, &observer, 36);
    ASSERT_NE(weighting.GetStatus(), 0);
    ASSERT_EQ(weighting.GetNumber(), 36);
    const Standard start = flat(0.5);
    Found found = {kNan, flat(-7.0)};
    found.distance = weighting.CalculateMatchingSpectrum(kRed.data(), kPublishedD50.data(), nullptr, nullptr,
                                                         start.data(), kByXyz, found.spectrum.data());
    expectRefused(found);
}

TEST(matchingSpectrum, missingArgument_isRefused) {
    Weighting weighting(kD65);
    const Standard start = flat(0.5);
    Found found = {kNan, flat(-7.0)};
    double* const result = found.spectrum.data();
    found.distance = weighting->CalculateMatchingSpectrum(nullptr, nullptr, nullptr, nullptr, start.data(),
                                                          kByLab, result);
    expectRefused(found);
    found.distance =
        weighting->CalculateMatchingSpectrum(kRed.data(), nullptr, nullptr, nullptr, nullptr, kByLab, result);
    expectRefused(found);
    EXPECT_EQ(weighting->CalculateMatchingSpectrum(kRed.data(), nullptr, nullptr, nullptr, start.data(),
                                                   kByLab, nullptr),
              -1.0);
}

TEST(matchingSpectrum, refusal_reportsNothing) {
    Weighting weighting(kD65, 0, 8);
    const ReportCollector reports;
    search(weighting, {});
    EXPECT_THAT(reports.errors, IsEmpty());
}

} // namespace
} // namespace qxcms::tests
