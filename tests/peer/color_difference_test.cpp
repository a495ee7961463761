// CIE 1994 and CMC differences beside those of Little CMS.
#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "colorspace/tlabspace.h"
#include "tests/peer/random_colors.h"

namespace qxcms::tests {
namespace {

constexpr int kCie94 = 1;
constexpr int kCmc11 = 3;

// What cancels in the squared hue difference and the ten-digit pi of the hue leave, relative to the
// difference.
constexpr double kRounding = 1e-8;

struct Pair {
    Triple sample, standard;
};

// From neighbours to colours far apart.
Pair randomPair(RandomColors& colors) {
    const Triple standard = colors.lab();
    const double distance = std::pow(10.0, colors.between(-1.0, 1.7));
    Triple sample;
    for (std::size_t i = 0; i < 3; ++i)
        sample[i] = standard[i] + colors.between(-distance, distance);
    sample[0] = std::max(sample[0], 0.0);
    return {sample, standard};
}

double difference(const Triple& sample, const Triple& standard, int function) {
    return std::sqrt(TLabSpace::CalcSquareDeltaEConvertedStatic(sample.data(), standard.data(), function));
}

double theirCie94(const Triple& lab1, const Triple& lab2) {
    const cmsCIELab first = theirLab(lab1), second = theirLab(lab2);
    return cmsCIE94DeltaE(&first, &second);
}

double theirCmc(const Triple& lab1, const Triple& lab2, double l) {
    const cmsCIELab first = theirLab(lab1), second = theirLab(lab2);
    return cmsCMCdeltaE(&first, &second, l, 1.0);
}

double chroma(const Triple& lab) {
    return std::hypot(lab[1], lab[2]);
}

// Little CMS weighs by 1 + 0.048 C and 1 + 0.014 C with the geometric mean of the two chromas, where
// 1 + 0.045 C and 1 + 0.015 C of the standard stand here. The squared difference is a sum of three terms,
// each of which changes by the square of one of these ratios (lightness: 1), and so the difference changes by
// a ratio between the smallest and the largest of them.
bool isWithinTheWeights(double ours, double theirs, double chroma1, double chromaOfStandard) {
    const double mean = std::sqrt(chroma1 * chromaOfStandard);
    const double ofChroma = (1.0 + 0.048 * mean) / (1.0 + 0.045 * chromaOfStandard);
    const double ofHue = (1.0 + 0.014 * mean) / (1.0 + 0.015 * chromaOfStandard);
    return ours >= theirs * std::min({1.0, ofChroma, ofHue}) * (1.0 - kRounding) &&
           ours <= theirs * std::max({1.0, ofChroma, ofHue}) * (1.0 + kRounding);
}

TEST(peer, givesTheSameCie94ButForItsWeights) {
    RandomColors colors;
    int onlyWithTheseRoles = 0;
    for (int i = 0; i < kColors; ++i) {
        const Pair pair = randomPair(colors);
        const double theirs = theirCie94(pair.sample, pair.standard);
        const double sample = chroma(pair.sample), standard = chroma(pair.standard);
        ASSERT_TRUE(
            isWithinTheWeights(difference(pair.sample, pair.standard, kCie94), theirs, sample, standard))
            << theirs << ' ' << sample << ' ' << standard;
        onlyWithTheseRoles +=
            !isWithinTheWeights(difference(pair.standard, pair.sample, kCie94), theirs, sample, standard);
    }
    // With sample and standard the other way round many pairs would fall outside.
    EXPECT_GT(onlyWithTheseRoles, kColors / 100);
}

// With either term alone the weights are known, and nothing but rounding is left.
TEST(peer, givesTheSameCie94OfChromaAndOfHueAlone) {
    RandomColors colors;
    for (int i = 0; i < kColors; ++i) {
        const double l = colors.between(0.0, 100.0);
        const double c1 = colors.between(1.0, 120.0), c2 = colors.between(1.0, 120.0);
        const Triple sample = {l, c1, 0.0}, standard = {l, c2, 0.0};
        const double mean = std::sqrt(c1 * c2);
        ASSERT_NEAR(difference(sample, standard, kCie94) * (1.0 + 0.045 * c2),
                    theirCie94(sample, standard) * (1.0 + 0.048 * mean), 1e-10);
        const Triple opposite = {l, -c2, 0.0};
        ASSERT_NEAR(difference(opposite, standard, kCie94) * (1.0 + 0.015 * c2),
                    theirCie94(opposite, standard) * (1.0 + 0.014 * c2), 1e-10);
    }
}

// The lightness weight is max(0.511, formula) here, and 0.511 below L* = 16 there, where the formula comes to
// 0.51122: between 15.99 and 16 the two differ by up to 0.00043.
double lightnessWeights(double lightness) {
    return lightness > 15.98 && lightness < 16.0 ? 4.4e-4 : 0.0;
}

void expectSameCmc(int function, double l) {
    RandomColors colors;
    int onlyWithTheseRoles = 0;
    for (int i = 0; i < kColors; ++i) {
        const Pair pair = randomPair(colors);
        // The first colour is the standard there.
        const double theirs = theirCmc(pair.standard, pair.sample, l);
        const double tolerance = theirs * (kRounding + lightnessWeights(pair.standard[0]));
        ASSERT_NEAR(difference(pair.sample, pair.standard, function), theirs, tolerance) << pair.standard[0];
        onlyWithTheseRoles +=
            std::fabs(difference(pair.standard, pair.sample, function) - theirs) > 1e-3 * theirs;
    }
    EXPECT_GT(onlyWithTheseRoles, kColors / 2);
}

TEST(peer, givesTheSameCmc11) {
    expectSameCmc(kCmc11, 1.0);
}

TEST(peer, givesTheSameCmc21) {
    expectSameCmc(kCmc11 + 1, 2.0);
}

} // namespace
} // namespace qxcms::tests
