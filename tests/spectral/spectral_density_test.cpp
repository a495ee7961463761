// Status densities through the filter tables.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include <gmock/gmock.h>

#include "spectral/tobserver.h"
#include "spectral/tspectrum.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

constexpr TSpectrum::FilterStandards kAllStandards[] = {TSpectrum::kAnsiA, TSpectrum::kAnsiT, TSpectrum::kDin,
                                                        TSpectrum::kDinNb};

struct Densities {
    int answer;
    double value[4];
    int major;
};

Densities densitiesOf(const Standard& reflectance, TSpectrum::FilterStandards standard) {
    Densities result = {-7, {-7, -7, -7, -7}, -7};
    result.answer = spectrumOf(reflectance).GetDensity(standard, result.value, &result.major);
    return result;
}

// 1 below `from` nm, `value` from there on.
Standard absorbingFrom(int from, double value) {
    Standard result = flat(1.0);
    std::fill(result.begin() + static_cast<std::ptrdiff_t>(slotOf(from)), result.end(), value);
    return result;
}

// The three values that DIN NB looks at, 1 elsewhere.
Standard narrowBand(double red, double green, double blue, double elsewhere = 1.0) {
    Standard result = flat(elsewhere);
    result[slotOf(620)] = red;
    result[slotOf(530)] = green;
    result[slotOf(430)] = blue;
    return result;
}

struct FilterRow {
    int start; // nm
    std::vector<double> weights;
};

void expectRow(const double* row, const FilterRow& expected, double sum, const char* name) {
    double total = 0.0;
    for (int k = 0; k < TSpectrum::kStandardCount; ++k) {
        const int offset = k - (expected.start - 380) / 10;
        const bool listed = offset >= 0 && offset < static_cast<int>(expected.weights.size());
        EXPECT_EQ(row[k], listed ? expected.weights[static_cast<std::size_t>(offset)] : 0.0)
            << name << ' ' << 380 + 10 * k << " nm";
        total += row[k];
    }
    EXPECT_NEAR(total, sum, 1e-9) << name;
}

TEST(spectralDensity, redFilters_haveTheirWeights) {
    expectRow(TSpectrum::sRedFilter[0],
              {600,
               {0.001269, 0.149171, 0.342921, 0.254791, 0.137854, 0.066184, 0.027228, 0.012208, 0.005007,
                0.002047, 0.00083, 0.000319, 0.000123, 0.000048}},
              1.0, "ANSI A");
    expectRow(TSpectrum::sRedFilter[1],
              {570,
               {0.000192, 0.001438, 0.095841, 0.319468, 0.271548, 0.175708, 0.079867, 0.031947, 0.015973,
                0.004792, 0.001597, 0.000958, 0.000479, 0.00016, 0.000032}},
              1.0, "ANSI T");
    expectRow(TSpectrum::sRedFilter[2],
              {590, {0.034374, 0.09717, 0.205349, 0.270372, 0.227171, 0.118962, 0.046602}}, 1.0, "DIN");
    expectRow(TSpectrum::sRedFilter[3], {620, {1.0}}, 1.0, "DIN NB");
}

TEST(spectralDensity, greenFilters_haveTheirWeights) {
    expectRow(
        TSpectrum::sGreenFilter[0],
        {500,
         {0.000144, 0.02121, 0.19325, 0.319421, 0.257134, 0.140865, 0.053024, 0.012969, 0.001862, 0.000121}},
        1.0, "ANSI A");
    expectRow(TSpectrum::sGreenFilter[1],
              {480,
               {0.0019, 0.0095, 0.057002, 0.129204, 0.174805, 0.190006, 0.167205, 0.125404, 0.079802,
                0.041801, 0.017101, 0.00475, 0.00133, 0.000171, 0.000019}},
              1.0, "ANSI T");
    expectRow(TSpectrum::sGreenFilter[2],
              {500, {0.030597, 0.090044, 0.197644, 0.269648, 0.23431, 0.126642, 0.051115}}, 1.0, "DIN");
    expectRow(TSpectrum::sGreenFilter[3], {530, {1.0}}, 1.0, "DIN NB");
}

TEST(spectralDensity, blueFilters_haveTheirWeights) {
    expectRow(TSpectrum::sBlueFilter[0],
              {420, {0.013101, 0.215845, 0.327534, 0.267595, 0.136582, 0.036029, 0.003193, 0.000121}}, 1.0,
              "ANSI A");
    // 540 nm is missing on purpose: the row sums to 0.99994.
    expectRow(TSpectrum::sBlueFilter[1],
              {380,
               {0.000422, 0.00211, 0.008438, 0.023909, 0.056256, 0.084383, 0.115324, 0.132201, 0.140639,
                0.13642, 0.119543, 0.091415, 0.056256, 0.025315, 0.007032, 0.000281}},
              0.999944, "ANSI T");
    expectRow(TSpectrum::sBlueFilter[2],
              {400, {0.023824, 0.076358, 0.181394, 0.266369, 0.247905, 0.142913, 0.061237}}, 1.0, "DIN");
    expectRow(TSpectrum::sBlueFilter[3], {430, {1.0}}, 1.0, "DIN NB");
}

TEST(spectralDensity, visualFilter_isTheSameInEveryStandard) {
    const FilterRow visual = {390, {0.000001, 0.000005, 0.00002,  0.000078, 0.000265, 0.000612, 0.001166,
                                    0.002103, 0.003616, 0.006215, 0.010394, 0.017922, 0.0308,   0.047713,
                                    0.063225, 0.076004, 0.085689, 0.092228, 0.094578, 0.092287, 0.085415,
                                    0.075474, 0.063572, 0.05072,  0.037051, 0.025626, 0.016368, 0.009723,
                                    0.005303, 0.002922, 0.001459, 0.000753, 0.000398, 0.000195, 0.0001}};
    for (const auto& row : TSpectrum::sBlackFilter)
        expectRow(row, visual, 1.0, "visual");
}

TEST(spectralDensity, standards_areNumberedInTheOrderOfTheirNames) {
    EXPECT_EQ(TSpectrum::kAnsiA, 0);
    EXPECT_EQ(TSpectrum::kAnsiT, 1);
    EXPECT_EQ(TSpectrum::kDin, 2);
    EXPECT_EQ(TSpectrum::kDinNb, 3);
    const char* const* const names = TSpectrum::GetDensityList();
    ASSERT_NE(names, nullptr);
    EXPECT_STREQ(names[0], "ANSI A");
    EXPECT_STREQ(names[1], "ANSI T");
    EXPECT_STREQ(names[2], "DIN");
    EXPECT_STREQ(names[3], "DIN NB");
}

TEST(spectralDensity, names_followTheObserversInTheirList) {
    EXPECT_EQ(TSpectrum::GetDensityList(), TObserver::sObsNameList + 2);
}

TEST(spectralDensity, perfectWhite_hasDensitiesOfNearly0) {
    for (const auto standard : kAllStandards) {
        const Densities white = densitiesOf(flat(1.0), standard);
        EXPECT_EQ(white.answer, 0);
        for (const double density : white.value)
            EXPECT_NEAR(density, 0.0, 3e-5) << standard;
    }
}

TEST(spectralDensity, ansiTBlueOfAWhite_keepsTheShortfallOfItsRow) {
    const Densities white = densitiesOf(flat(1.0), TSpectrum::kAnsiT);
    EXPECT_NEAR(white.value[2], 2.432117e-05, 1e-10); // log10(1/0.999944)
    EXPECT_EQ(white.major, 2);
}

TEST(spectralDensity, greyOf10Percent_hasDensity1AndIsNeutral) {
    for (const auto standard : kAllStandards) {
        const Densities grey = densitiesOf(flat(0.1), standard);
        EXPECT_EQ(grey.answer, 0);
        for (const double density : grey.value)
            EXPECT_NEAR(density, 1.0, 3e-5) << standard;
        EXPECT_EQ(grey.major, 3) << standard;
    }
}

TEST(spectralDensity, cyanAbsorbingAbove600_hasTheLargestRedDensity) {
    for (const auto standard : kAllStandards) {
        const Densities cyan = densitiesOf(absorbingFrom(600, 0.05), standard);
        EXPECT_GT(cyan.value[0], cyan.value[1]) << standard;
        EXPECT_GT(cyan.value[0], cyan.value[2]) << standard;
        EXPECT_GT(cyan.value[0], cyan.value[3]) << standard;
        EXPECT_EQ(cyan.major, 0) << standard;
    }
}

TEST(spectralDensity, magenta_hasMajorFilter1) {
    Standard magenta = flat(0.9);
    std::fill(magenta.begin() + slotOf(490), magenta.begin() + slotOf(580), 0.03);
    for (const auto standard : kAllStandards)
        EXPECT_EQ(densitiesOf(magenta, standard).major, 1) << standard;
}

TEST(spectralDensity, yellow_hasMajorFilter2) {
    Standard yellow = flat(0.9);
    std::fill(yellow.begin(), yellow.begin() + slotOf(490), 0.03);
    for (const auto standard : kAllStandards)
        EXPECT_EQ(densitiesOf(yellow, standard).major, 2) << standard;
}

// Reflectance 0.05 at 380 nm, 0.02 more every 10 nm; worked out apart from this library.
TEST(spectralDensity, slopingReflectance_hasItsDensities) {
    Standard slope;
    for (std::size_t k = 0; k < slope.size(); ++k)
        slope[k] = 0.05 + 0.02 * static_cast<double>(k);
    const double expected[4][4] = {{0.262760685, 0.443124946, 0.748596581, 0.362086910},
                                   {0.292007946, 0.448604707, 0.677136773, 0.362086910},
                                   {0.274054246, 0.451698654, 0.806215553, 0.362086910},
                                   {0.275724130, 0.455931956, 0.823908741, 0.362086910}};
    for (const auto standard : kAllStandards) {
        const Densities result = densitiesOf(slope, standard);
        EXPECT_EQ(result.answer, 0);
        for (std::size_t c = 0; c < 4; ++c)
            EXPECT_NEAR(result.value[c], expected[standard][c], 1e-9) << standard << ' ' << c;
        EXPECT_EQ(result.major, 2) << standard;
    }
}

// log10(1/sum), the sum taken by ascending wavelength.
TEST(spectralDensity, densities_areExactInTheWrittenOrder) {
    const Standard reflectance = irregular(11);
    for (const auto standard : kAllStandards) {
        const double* const rows[] = {TSpectrum::sRedFilter[standard], TSpectrum::sGreenFilter[standard],
                                      TSpectrum::sBlueFilter[standard], TSpectrum::sBlackFilter[standard]};
        const Densities result = densitiesOf(reflectance, standard);
        for (std::size_t c = 0; c < 4; ++c) {
            double sum = 0.0;
            for (std::size_t k = 0; k < reflectance.size(); ++k)
                sum += rows[c][k] * reflectance[k];
            EXPECT_EQ(result.value[c], std::log10(1.0 / sum)) << standard << ' ' << c;
        }
    }
}

TEST(spectralDensity, dinNb_dependsOnThreeValuesOnly) {
    const Densities plain = densitiesOf(narrowBand(0.1, 0.02, 0.003, 0.5), TSpectrum::kDinNb);
    Standard other = irregular(12);
    other[slotOf(620)] = 0.1;
    other[slotOf(530)] = 0.02;
    other[slotOf(430)] = 0.003;
    const Densities noisy = densitiesOf(other, TSpectrum::kDinNb);
    const double values[] = {0.1, 0.02, 0.003};
    for (std::size_t c = 0; c < 3; ++c) {
        EXPECT_EQ(plain.value[c], std::log10(1.0 / values[c])) << c;
        EXPECT_EQ(noisy.value[c], plain.value[c]) << c;
    }
    EXPECT_NE(noisy.value[3], plain.value[3]);
}

TEST(spectralDensity, nonUniformSpectrum_isReadThroughItsStandardValues) {
    const double wavelengths[] = {400.0, 700.0};
    const double values[] = {0.1, 0.1};
    double densities[4];
    int major = -7;
    EXPECT_EQ(TSpectrum(wavelengths, 2, values).GetDensity(TSpectrum::kDin, densities, &major), 0);
    EXPECT_NEAR(densities[0], 1.0, 1e-12);
    EXPECT_EQ(major, 3);
}

TEST(spectralDensity, firstOfEqualDensities_isTheMajorFilter) {
    EXPECT_EQ(densitiesOf(narrowBand(0.001, 0.001, 1.0), TSpectrum::kDinNb).major, 0);
    EXPECT_EQ(densitiesOf(narrowBand(1.0, 0.001, 0.001), TSpectrum::kDinNb).major, 1);
}

TEST(spectralDensity, largestVisualDensity_givesMajorFilter3) {
    const Densities result = densitiesOf(narrowBand(1.0, 1.0, 1.0, 0.1), TSpectrum::kDinNb);
    EXPECT_GT(result.value[3], 0.5);
    EXPECT_EQ(result.major, 3);
}

TEST(spectralDensity, ratioAbove0_7_isNeutral) {
    const double below = std::pow(10.0, -0.699), above = std::pow(10.0, -0.701);
    EXPECT_EQ(densitiesOf(narrowBand(0.1, below, below, 0.15), TSpectrum::kDinNb).major, 0);
    EXPECT_EQ(densitiesOf(narrowBand(0.1, above, above, 0.15), TSpectrum::kDinNb).major, 3);
}

TEST(spectralDensity, ratioOfExactly0_7_isNotNeutral) {
    double reflectance = 0.199526231496887; // a little below 10^-0.7
    for (int i = 0; i < 100 && std::log10(1.0 / reflectance) != 0.7; ++i)
        reflectance = std::nextafter(reflectance, 1.0);
    if (std::log10(1.0 / reflectance) != 0.7 || std::log10(1.0 / 0.1) != 1.0)
        GTEST_SKIP() << "no reflectance has exactly this density here";
    EXPECT_EQ(densitiesOf(narrowBand(0.1, reflectance, reflectance, 0.15), TSpectrum::kDinNb).major, 0);
}

TEST(spectralDensity, negativeSmallestDensity_isNotNeutral) {
    const Densities result = densitiesOf(narrowBand(0.5, 1.2, 0.6, 0.55), TSpectrum::kDinNb);
    EXPECT_LT(result.value[1], 0.0);
    EXPECT_EQ(result.major, 0);
}

TEST(spectralDensity, sumOf0_givesAnInfiniteDensity) {
    const Densities result = densitiesOf(narrowBand(0.5, 0.0, 0.5), TSpectrum::kDinNb);
    EXPECT_EQ(result.answer, 0);
    EXPECT_EQ(result.value[1], std::numeric_limits<double>::infinity());
    EXPECT_EQ(result.major, 1);
}

TEST(spectralDensity, perfectBlack_hasFourInfiniteDensitiesAndTheFirstIsMajor) {
    const Densities result = densitiesOf(flat(0.0), TSpectrum::kAnsiA);
    EXPECT_EQ(result.answer, 0);
    for (const double density : result.value)
        EXPECT_EQ(density, std::numeric_limits<double>::infinity());
    EXPECT_EQ(result.major, 0);
}

TEST(spectralDensity, sumBelow0_givesAnUndefinedDensityThatNeverWins) {
    const Densities result = densitiesOf(narrowBand(0.9, -0.1, 0.01), TSpectrum::kDinNb);
    EXPECT_EQ(result.answer, 0);
    EXPECT_TRUE(std::isnan(result.value[1]));
    EXPECT_EQ(result.value[2], std::log10(1.0 / 0.01));
    EXPECT_EQ(result.major, 2);
}

// The three other densities are nearly equal: 1, 1 and one of 0.9 to 1.1.
TEST(spectralDensity, undefinedDensityBesideThreeNearlyEqualOnes_isNeutral) {
    const Standard samples[] = {narrowBand(0.1, -0.1, 0.1, 0.12), narrowBand(0.1, 0.1, -0.1, 0.12),
                                narrowBand(0.1, 0.1, 0.1, -0.1)};
    for (std::size_t undefined = 1; undefined < 4; ++undefined) {
        const Densities result = densitiesOf(samples[undefined - 1], TSpectrum::kDinNb);
        for (std::size_t c = 0; c < 4; ++c) {
            if (c == undefined) {
                EXPECT_TRUE(std::isnan(result.value[c])) << undefined;
            } else {
                EXPECT_NEAR(result.value[c], 1.0, 0.1) << undefined << ' ' << c;
            }
        }
        EXPECT_EQ(result.major, 3) << undefined;
    }
}

// The smallest density stands before the undefined one and stays the smallest.
TEST(spectralDensity, undefinedDensity_doesNotHideTheSmallest) {
    const Densities green = densitiesOf(narrowBand(0.5, -0.1, 0.1, 0.097), TSpectrum::kDinNb);
    EXPECT_TRUE(std::isnan(green.value[1]));
    EXPECT_NEAR(green.value[3], 0.98, 0.01);
    EXPECT_EQ(green.major, 2);
    const Densities blue = densitiesOf(narrowBand(0.5, 0.1, -0.1, 0.083), TSpectrum::kDinNb);
    EXPECT_TRUE(std::isnan(blue.value[2]));
    EXPECT_NEAR(blue.value[3], 0.98, 0.01);
    EXPECT_EQ(blue.major, 1);
}

// Nothing is larger or smaller than an undefined first density, so it stays both.
TEST(spectralDensity, undefinedRedDensity_staysTheMajorFilter) {
    const Densities result = densitiesOf(narrowBand(-0.1, 0.5, 0.01), TSpectrum::kDinNb);
    EXPECT_EQ(result.answer, 0);
    EXPECT_TRUE(std::isnan(result.value[0]));
    EXPECT_EQ(result.major, 0);
}

TEST(spectralDensity, unsetSpectrum_hasUndefinedDensities) {
    double densities[4] = {};
    int major = -7;
    EXPECT_EQ(TSpectrum().GetDensity(TSpectrum::kAnsiT, densities, &major), 0);
    for (const double density : densities)
        EXPECT_TRUE(std::isnan(density));
    EXPECT_EQ(major, 0);
}

TEST(spectralDensity, standardOutside0To3_answers2AndWritesNothing) {
    const TSpectrum grey = spectrumOf(flat(0.1));
    for (const int number : {-1, 4, 5, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        double densities[4] = {7, 7, 7, 7};
        int major = 7;
        EXPECT_EQ(grey.GetDensity(static_cast<TSpectrum::FilterStandards>(number), densities, &major), 2);
        EXPECT_THAT(densities, testing::Each(7.0)) << number;
        EXPECT_EQ(major, 7) << number;
    }
    EXPECT_EQ(grey.GetStatus(), 0);
}

TEST(spectralDensity, nullArguments_answer2AndWriteNothing) {
    const TSpectrum grey = spectrumOf(flat(0.1));
    double densities[4] = {7, 7, 7, 7};
    int major = 7;
    EXPECT_EQ(grey.GetDensity(TSpectrum::kDin, nullptr, &major), 2);
    EXPECT_EQ(grey.GetDensity(TSpectrum::kDin, densities, nullptr), 2);
    EXPECT_EQ(grey.GetDensity(TSpectrum::kDin, nullptr, nullptr), 2);
    EXPECT_THAT(densities, testing::Each(7.0));
    EXPECT_EQ(major, 7);
}

} // namespace
} // namespace qxcms::tests
