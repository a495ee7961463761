// Many spectra to XYZ through one weighting: the bits of the form for one spectrum, for whatever it is given.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

#include "spectral/tilluminantandobserver.h"
#include "tests/spectral/known_spectra.h"
#include "tests/support/batches.h"

namespace qxcms::tests {
namespace {

constexpr std::size_t kRow = TSpectrum::kStandardCount;

// A weighting with all that it holds.
struct Weighting {
    Weighting(const Standard& lampValues, int observerNumber, const char* name = "lamp", int points = 36)
        : spectrum(spectrumOf(lampValues)), lamp(&spectrum, name), observer(observerNumber),
          weighting(&lamp, &observer, points) {}
    Weighting(const Weighting&) = delete;
    Weighting& operator=(const Weighting&) = delete;

    TSpectrum spectrum;
    TIlluminant lamp;
    TObserver observer;
    TIlluminantAndObserver weighting;
};

// Holds the batch against the form for one spectrum, over reflectances, special values and any doubles.
void expectSpectraAsSingle(const TIlluminantAndObserver& weighting) {
    const auto single = [&](const double* values, double* xyz) {
        const TSpectrum spectrum(values);
        ASSERT_EQ(weighting.GetXYZ(&spectrum, xyz, 36), 0);
    };
    const auto batch = [&](const double* spectra, double* xyz, std::size_t count) {
        return weighting.SpectraToXYZBatch(spectra, xyz, count);
    };
    Random random(31);
    std::vector<double> reflectances(kRow * 1009);
    for (double& value : reflectances)
        value = random.between(-0.05, 1.2);
    expectBatchAsSingle(reflectances, kRow, 3, single, batch);
    expectSmallBatchesAsSingle(reflectances, kRow, 3, single, batch);

    // One special value in each place of an ordinary spectrum.
    std::vector<double> spoiled;
    for (const double special : specialValues()) {
        for (std::size_t place = 0; place < kRow; ++place) {
            Standard values = irregular(static_cast<unsigned>(place));
            values[place] = special;
            spoiled.insert(spoiled.end(), values.begin(), values.end());
        }
    }
    expectBatchAsSingle(spoiled, kRow, 3, single, batch);
    expectBatchAsSingle(mixedValues(kRow * 499, -0.1, 1.2, 32), kRow, 3, single, batch);
    expectSmallBatchesAsSingle(mixedValues(kRow * 101, -0.1, 1.2, 33), kRow, 3, single, batch);

    // Of huge and tiny values sums depend on their order.
    std::vector<double> wide(kRow * 499);
    for (double& value : wide)
        value = std::ldexp(random.between(-1.0, 1.0), static_cast<int>(random.below(200)) - 100);
    expectBatchAsSingle(wide, kRow, 3, single, batch);
}

TEST(spectraBatch, directWeights_giveTheBitsOfTheSingleForm) {
    Standard zeros = kD65;
    std::fill_n(zeros.begin(), 5, 0.0);
    for (const Standard& light : {kD65, kIlluminantA, zeros, flat(0.0)}) {
        for (const int observer : {0, 1}) {
            SCOPED_TRACE(testing::Message() << light[20] << ' ' << observer);
            expectSpectraAsSingle(Weighting(light, observer).weighting);
        }
    }
}

TEST(spectraBatch, tableWeights_giveTheBitsOfTheSingleForm) {
    for (const char* name : {"CIE Illuminant F2", "CIE Illuminant F7", "CIE Illuminant F11"}) {
        SCOPED_TRACE(name);
        expectSpectraAsSingle(Weighting(kD65, 0, name).weighting);
    }
}

// The same spectrum read from samples at 380, 390, ..., 730 nm.
TEST(spectraBatch, samplesOnTheGrid_giveTheSameBits) {
    const Weighting light(kD50, 0);
    double wavelengths[kRow];
    for (int k = 0; k < 36; ++k)
        wavelengths[k] = slotWavelength(k);
    for (const unsigned seed : {1u, 2u, 3u}) {
        const Standard values = irregular(seed);
        TSpectrum sampled(wavelengths, 36, values.data());
        double expected[3] = {}, found[3] = {};
        ASSERT_EQ(light.weighting.GetXYZ(&sampled, expected, 36), 0);
        EXPECT_EQ(light.weighting.SpectraToXYZBatch(values.data(), found, 1), 0);
        EXPECT_EQ(difference(found, expected, 3), "");
    }
}

TEST(spectraBatch, perfectWhite_hasAYOf100) {
    const Weighting light(kD65, 0);
    const Standard white = flat(1.0);
    double xyz[3] = {};
    EXPECT_EQ(light.weighting.SpectraToXYZBatch(white.data(), xyz, 1), 0);
    EXPECT_NEAR(xyz[0], 95.0121, 5.1e-5);
    EXPECT_NEAR(xyz[1], 100.0, 1e-12);
    EXPECT_NEAR(xyz[2], 108.8171, 5.1e-5);
}

TEST(spectraBatch, nothing_writesNothing) {
    const Weighting light(kD65, 0);
    const Standard values = flat(0.5);
    GuardedDoubles xyz(3, 0);
    EXPECT_EQ(light.weighting.SpectraToXYZBatch(values.data(), xyz.data(), 0), 0);
    EXPECT_TRUE(xyz.untouched());
}

// As for one spectrum: status 2.
TEST(spectraBatch, null_writesNothing) {
    const Weighting light(kD65, 0);
    expectNothingOfNull(2, kRow, 3, [&](const double* spectra, double* xyz, std::size_t count) {
        return light.weighting.SpectraToXYZBatch(spectra, xyz, count);
    });
}

TEST(spectraBatch, otherNumberOfPoints_writesNothing) {
    for (const int points : {0, 1, 8, 35, 37, -1}) {
        const Weighting light(kD65, 0, "lamp", points);
        const std::vector<double> spectra(2 * kRow, 0.5);
        GuardedDoubles xyz(6, 0);
        EXPECT_EQ(light.weighting.SpectraToXYZBatch(spectra.data(), xyz.data(), 2), 2) << points;
        EXPECT_TRUE(xyz.untouched()) << points;
    }
}

} // namespace
} // namespace qxcms::tests
