#include "spectral/tspectrum.h"

#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>

#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();

static_assert(std::has_virtual_destructor_v<TSpectrum>);
static_assert(!std::is_convertible_v<const double*, TSpectrum>, "a pointer is no spectrum by itself");
static_assert(!std::is_convertible_v<const char*, TSpectrum>, "a text is no spectrum by itself");
static_assert(std::is_constructible_v<TSpectrum, char*>, "a writable text is read as a text");
static_assert(std::is_constructible_v<TSpectrum, double*>, "writable values are read as values");
static_assert(std::is_copy_constructible_v<TSpectrum> && std::is_copy_assignable_v<TSpectrum>);

TSpectrum fromSamples(const std::vector<double>& wavelengths, const std::vector<double>& values) {
    return TSpectrum(wavelengths.data(), static_cast<int>(wavelengths.size()), values.data());
}

// Copies start with status 0, so what the constructor found is asked of the object itself.
int statusOfSamples(const std::vector<double>& wavelengths, const std::vector<double>& values) {
    return TSpectrum(wavelengths.data(), static_cast<int>(wavelengths.size()), values.data()).GetStatus();
}

std::vector<double> wavelengthsOf(const TSpectrum& spectrum) {
    return {spectrum.GetWavelengths(), spectrum.GetWavelengths() + spectrum.GetNrSamples()};
}

std::vector<double> valuesOf(const TSpectrum& spectrum) {
    return {spectrum.GetValues(), spectrum.GetValues() + spectrum.GetNrSamples()};
}

void expectEmptyButStatus(const TSpectrum& spectrum) {
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    EXPECT_EQ(spectrum.GetWavelengths(), nullptr);
    EXPECT_EQ(spectrum.GetValues(), nullptr);
    EXPECT_EQ(spectrum.GetFileDataSize(), 0);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

// Construction.

TEST(spectrum, defaultOne_isUnset) {
    const TSpectrum spectrum;
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 0);
    expectEmptyButStatus(spectrum);
}

TEST(spectrum, arrays_areCopied) {
    std::vector<double> wavelengths = {400, 500, 600};
    std::vector<double> values = {0.1, 0.2, 0.3};
    const TSpectrum spectrum(wavelengths.data(), 3, values.data());
    wavelengths.assign(3, 0.0);
    values.assign(3, 0.0);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 1);
    EXPECT_EQ(spectrum.GetNrSamples(), 3);
    EXPECT_THAT(wavelengthsOf(spectrum), ElementsAre(400, 500, 600));
    EXPECT_THAT(valuesOf(spectrum), ElementsAre(0.1, 0.2, 0.3));
}

TEST(spectrum, nullWavelengths_giveStatus2AndNoArrays) {
    const double values[] = {1.0};
    const TSpectrum spectrum(nullptr, 1, values);
    EXPECT_EQ(spectrum.GetStatus(), 2);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 1);
    expectEmptyButStatus(spectrum);
}

TEST(spectrum, nullValues_giveStatus2AndNoArrays) {
    const double wavelengths[] = {500.0};
    const TSpectrum spectrum(wavelengths, 1, nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 2);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 1);
    expectEmptyButStatus(spectrum);
}

TEST(spectrum, countBelow1_givesStatus2AndNoArrays) {
    const double data[] = {500.0};
    for (const int count : {0, -1, std::numeric_limits<int>::min()}) {
        const TSpectrum spectrum(data, count, data);
        EXPECT_EQ(spectrum.GetStatus(), 2) << count;
        EXPECT_EQ(spectrum.GetNonUniformFlag(), 1) << count;
        expectEmptyButStatus(spectrum);
    }
}

TEST(spectrum, count1024_isAccepted) {
    std::vector<double> wavelengths(1024);
    for (std::size_t i = 0; i < wavelengths.size(); ++i)
        wavelengths[i] = 200.0 + static_cast<double>(i) * 0.5;
    const std::vector<double> values(1024, 0.25);
    const TSpectrum spectrum(wavelengths.data(), 1024, values.data());
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNrSamples(), 1024);
    EXPECT_THAT(standardOf(spectrum), Each(0.25));
}

TEST(spectrum, count1025_givesStatus2AndNoArrays) {
    std::vector<double> wavelengths(1025);
    for (std::size_t i = 0; i < wavelengths.size(); ++i)
        wavelengths[i] = static_cast<double>(i) + 0.5;
    const TSpectrum spectrum(wavelengths.data(), 1025, wavelengths.data());
    EXPECT_EQ(spectrum.GetStatus(), 2);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 1);
    expectEmptyButStatus(spectrum);
}

TEST(spectrum, hugeCount_givesStatus2WithoutReadingTheArrays) {
    const double data[] = {500.0};
    EXPECT_EQ(TSpectrum(data, std::numeric_limits<int>::max(), data).GetStatus(), 2);
}

TEST(spectrum, standardValues_areCopied) {
    Standard values = ramp();
    const TSpectrum spectrum(values.data());
    values.fill(7.0);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 0);
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    EXPECT_EQ(spectrum.GetWavelengths(), nullptr);
    EXPECT_EQ(spectrum.GetValues(), nullptr);
    EXPECT_THAT(standardOf(spectrum), ElementsAreArray(ramp()));
}

TEST(spectrum, nullStandardValues_giveStatus2) {
    const TSpectrum spectrum(static_cast<const double*>(nullptr));
    EXPECT_EQ(spectrum.GetStatus(), 2);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 0);
    expectEmptyButStatus(spectrum);
}

// Standard sampling.

TEST(spectrum, singleSample_givesAFlatStandardSpectrum) {
    for (const double wavelength : {100.0, 380.0, 555.5, 730.0, 900.0}) {
        const TSpectrum spectrum = fromSamples({wavelength}, {0.37});
        EXPECT_THAT(standardOf(spectrum), Each(0.37)) << wavelength;
    }
}

TEST(spectrum, samplesFrom400To700_extendTheirEndsToTheRestOfTheGrid) {
    std::vector<double> wavelengths, values;
    for (int k = 0; k < 31; ++k) {
        wavelengths.push_back(400.0 + 10.0 * k);
        values.push_back(0.013 * (k + 1) * (k + 1));
    }
    const Standard standard = standardOf(fromSamples(wavelengths, values));
    EXPECT_EQ(standard[slotOf(380)], values.front());
    EXPECT_EQ(standard[slotOf(390)], values.front());
    for (std::size_t k = 0; k < values.size(); ++k)
        EXPECT_EQ(standard[k + 2], values[k]);
    EXPECT_EQ(standard[slotOf(710)], values.back());
    EXPECT_EQ(standard[slotOf(720)], values.back());
    EXPECT_EQ(standard[slotOf(730)], values.back());
}

TEST(spectrum, sampleOnAGridWavelength_comesBackExactly) {
    std::vector<double> wavelengths, values;
    const Standard given = irregular(1);
    for (int k = 0; k < TSpectrum::kStandardCount; ++k) {
        wavelengths.push_back(slotWavelength(k));
        values.push_back(given[static_cast<std::size_t>(k)]);
        wavelengths.push_back(slotWavelength(k) + 3.7);
        values.push_back(1e9);
    }
    EXPECT_THAT(standardOf(fromSamples(wavelengths, values)), ElementsAreArray(given));
}

// y0 + (y1 - y0)*(x - x0)/(x1 - x0) on x0 <= x < x1, the product formed first.
TEST(spectrum, betweenSamples_isLinearInTheWrittenOrder) {
    const Standard noise = irregular(2);
    std::vector<double> wavelengths, values;
    for (std::size_t i = 0; i < noise.size(); ++i) {
        wavelengths.push_back(371.3 + 11.17 * static_cast<double>(i));
        values.push_back(noise[i]);
    }
    const Standard standard = standardOf(fromSamples(wavelengths, values));
    for (int k = 0; k < TSpectrum::kStandardCount; ++k) {
        const double x = slotWavelength(k);
        std::size_t i = 0;
        while (x >= wavelengths[i + 1])
            ++i;
        const double expected = values[i] + (values[i + 1] - values[i]) * (x - wavelengths[i]) /
                                                (wavelengths[i + 1] - wavelengths[i]);
        EXPECT_EQ(standard[static_cast<std::size_t>(k)], expected) << x;
    }
}

TEST(spectrum, halfWayBetweenTwoSamples_isTheirMean) {
    const Standard standard = standardOf(fromSamples({380.0, 400.0, 730.0}, {1.0, 2.0, 2.0}));
    EXPECT_EQ(standard[slotOf(380)], 1.0);
    EXPECT_EQ(standard[slotOf(390)], 1.5);
    EXPECT_EQ(standard[slotOf(400)], 2.0);
}

TEST(spectrum, unsortedSamples_giveTheStandardSpectrumOfTheSortedOnes) {
    const Standard sorted = standardOf(fromSamples({400, 455, 520, 690}, {0.9, 0.1, 0.5, 0.3}));
    EXPECT_THAT(standardOf(fromSamples({520, 690, 400, 455}, {0.5, 0.3, 0.9, 0.1})),
                ElementsAreArray(sorted));
}

TEST(spectrum, unsortedSamples_areKeptInTheOrderGiven) {
    const TSpectrum spectrum = fromSamples({520, 690, 400}, {0.5, 0.3, 0.9});
    EXPECT_THAT(wavelengthsOf(spectrum), ElementsAre(520, 690, 400));
    EXPECT_THAT(valuesOf(spectrum), ElementsAre(0.5, 0.3, 0.9));
}

TEST(spectrum, sampleAt0Nanometres_standsInForTheLowerAnchor) {
    const std::vector<double> wavelengths = {0.0, 730.0};
    const std::vector<double> values = {0.0, 7.3};
    EXPECT_EQ(statusOfSamples(wavelengths, values), 0);
    const Standard standard = standardOf(fromSamples(wavelengths, values));
    EXPECT_EQ(standard[slotOf(380)], 0.0 + (7.3 - 0.0) * (380.0 - 0.0) / (730.0 - 0.0));
    EXPECT_EQ(standard[slotOf(730)], 7.3);
}

TEST(spectrum, sampleAtNegative0Nanometres_standsInForTheLowerAnchor) {
    EXPECT_EQ(statusOfSamples({-0.0, 500.0}, {1.0, 2.0}), 0);
}

TEST(spectrum, sampleAt1000Nanometres_standsInForTheUpperAnchor) {
    const std::vector<double> wavelengths = {380.0, 1000.0};
    const std::vector<double> values = {1.0, 3.0};
    EXPECT_EQ(statusOfSamples(wavelengths, values), 0);
    const Standard standard = standardOf(fromSamples(wavelengths, values));
    EXPECT_EQ(standard[slotOf(380)], 1.0);
    EXPECT_EQ(standard[slotOf(730)], 1.0 + (3.0 - 1.0) * (730.0 - 380.0) / (1000.0 - 380.0));
}

TEST(spectrum, samplesAtBothAnchors_areGood) {
    EXPECT_EQ(statusOfSamples({1000.0, 0.0}, {1.0, 2.0}), 0);
    EXPECT_EQ(statusOfSamples({0.0}, {2.0}), 0);
    EXPECT_EQ(statusOfSamples({1000.0}, {2.0}), 0);
}

// The anchor at 0 nm takes the value of the smallest wavelength, wherever that is.
TEST(spectrum, sampleBelow0Nanometres_bringsItsValueTo0) {
    const std::vector<double> wavelengths = {800.0, -50.0};
    const std::vector<double> values = {2.0, 1.0};
    EXPECT_EQ(statusOfSamples(wavelengths, values), 0);
    const Standard standard = standardOf(fromSamples(wavelengths, values));
    EXPECT_EQ(standard[slotOf(380)], 1.0 + (2.0 - 1.0) * (380.0 - 0.0) / (800.0 - 0.0));
}

TEST(spectrum, sampleBeyond1000Nanometres_bringsItsValueTo1000) {
    const std::vector<double> wavelengths = {1200.0, 400.0};
    const std::vector<double> values = {3.0, 1.0};
    EXPECT_EQ(statusOfSamples(wavelengths, values), 0);
    const Standard standard = standardOf(fromSamples(wavelengths, values));
    EXPECT_EQ(standard[slotOf(730)], 1.0 + (3.0 - 1.0) * (730.0 - 400.0) / (1000.0 - 400.0));
}

TEST(spectrum, twoSamplesAtOneWavelength_giveStatus4AndLeaveTheStandardValuesUnset) {
    const double wavelengths[] = {500.0, 600.0, 500.0};
    const double values[] = {0.1, 0.2, 0.1};
    const TSpectrum spectrum(wavelengths, 3, values);
    EXPECT_EQ(spectrum.GetStatus(), 4);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 1);
    EXPECT_THAT(wavelengthsOf(spectrum), ElementsAre(500, 600, 500));
}

TEST(spectrum, wavelengthThatIsNotFinite_givesStatus4AndLeavesTheStandardValuesUnset) {
    for (const double bad : {kInfinity, -kInfinity, kNotANumber}) {
        const double wavelengths[] = {500.0, bad};
        const double values[] = {0.1, 0.2};
        const TSpectrum spectrum(wavelengths, 2, values);
        EXPECT_EQ(spectrum.GetStatus(), 4) << bad;
        EXPECT_THAT(standardOf(spectrum), Each(-1.0)) << bad;
    }
}

TEST(spectrum, calcStandardSpec_repeatsTheSampling) {
    TSpectrum spectrum = fromSamples({400, 700}, {0.2, 0.8});
    const Standard before = standardOf(spectrum);
    EXPECT_EQ(spectrum.CalcStandardSpec(), 0);
    EXPECT_THAT(standardOf(spectrum), ElementsAreArray(before));
}

TEST(spectrum, calcStandardSpec_answers4ForTwoSamplesAtOneWavelength) {
    const double wavelengths[] = {500.0, 500.0};
    TSpectrum spectrum(wavelengths, 2, wavelengths);
    EXPECT_EQ(spectrum.CalcStandardSpec(), 4);
    EXPECT_EQ(spectrum.GetStatus(), 4);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST(spectrum, calcStandardSpecWithoutSamples_answers0AndLeavesTheSpectrumUnset) {
    TSpectrum spectrum;
    EXPECT_EQ(spectrum.CalcStandardSpec(), 0);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
    EXPECT_EQ(spectrum.GetStatus(), 0);
}

TEST(spectrum, calcStandardSpecWithoutSamples_leavesStandardValuesAlone) {
    TSpectrum spectrum = spectrumOf(ramp());
    EXPECT_EQ(spectrum.CalcStandardSpec(), 0);
    EXPECT_THAT(standardOf(spectrum), ElementsAreArray(ramp()));
}

TEST(spectrum, calcStandardSpecThatSucceeds_leavesTheStatusOfAnEarlierFailure) {
    const double wavelengths[] = {400.0, 700.0}, values[] = {0.25, 0.5};
    TSpectrum spectrum(wavelengths, 2, values);
    ASSERT_EQ(spectrum.ToFileData(nullptr), nullptr);
    ASSERT_EQ(spectrum.GetStatus(), 2);
    EXPECT_EQ(spectrum.CalcStandardSpec(), 0);
    EXPECT_EQ(spectrum.GetStatus(), 2);
}

TEST(spectrum, getUniformSpectrum_tellsTheGrid) {
    const TSpectrum spectrum = spectrumOf(ramp());
    double start = 0, end = 0;
    int count = 0;
    const double* const values = spectrum.GetUniformSpectrum(&start, &end, &count);
    ASSERT_NE(values, nullptr);
    EXPECT_EQ(start, 380.0);
    EXPECT_EQ(end, 730.0);
    EXPECT_EQ(count, 36);
    EXPECT_EQ(values[35], 1.0);
    EXPECT_EQ(spectrum.GetUniformSpectrum(nullptr, nullptr, nullptr), values);
}

TEST(spectrum, uniformDeltaLambda_is10) {
    EXPECT_EQ(TSpectrum().GetUniformDeltaLambda(), 10.0);
}

// Product.

TEST(spectrum, product_multipliesSlotBySlot) {
    const Standard a = irregular(3), b = irregular(4);
    const TSpectrum first = spectrumOf(a), second = spectrumOf(b);
    const TSpectrum product(&first, &second);
    EXPECT_EQ(product.GetStatus(), 0);
    const Standard result = standardOf(product);
    for (std::size_t k = 0; k < result.size(); ++k)
        EXPECT_EQ(result[k], a[k] * b[k]) << k;
}

TEST(spectrum, productOfStandardOnlySpectra_isStandardOnly) {
    const TSpectrum factor = spectrumOf(flat(0.5));
    const TSpectrum product(&factor, &factor);
    EXPECT_EQ(product.GetNonUniformFlag(), 0);
    EXPECT_EQ(product.GetNrSamples(), 0);
    EXPECT_EQ(product.GetWavelengths(), nullptr);
}

TEST(spectrum, productOfNonUniformSpectra_isStandardOnly) {
    const TSpectrum factor = fromSamples({400, 700}, {0.5, 0.5});
    const TSpectrum product(&factor, &factor);
    EXPECT_EQ(product.GetStatus(), 0);
    EXPECT_EQ(product.GetNonUniformFlag(), 0);
    EXPECT_EQ(product.GetWavelengths(), nullptr);
    EXPECT_THAT(standardOf(product), Each(0.25));
}

TEST(spectrum, productWithNull_givesStatus2AndStaysUnset) {
    const TSpectrum factor = spectrumOf(flat(0.5));
    const TSpectrum* const none = nullptr;
    for (const TSpectrum& product :
         {TSpectrum(none, none), TSpectrum(none, &factor), TSpectrum(&factor, none)})
        EXPECT_THAT(standardOf(product), Each(-1.0));
    EXPECT_EQ(TSpectrum(none, none).GetStatus(), 2);
    EXPECT_EQ(TSpectrum(none, &factor).GetStatus(), 2);
    EXPECT_EQ(TSpectrum(&factor, none).GetStatus(), 2);
}

TEST(spectrum, spectrumAndLiteralNull_meanTheProductForm) {
    const TSpectrum factor = spectrumOf(flat(0.5));
    const TSpectrum product(&factor, nullptr);
    EXPECT_EQ(product.GetStatus(), 2);
    EXPECT_THAT(standardOf(product), Each(-1.0));
}

TEST(spectrum, productWithAnUnsetOperand_givesStatus3AndAnUnsetResult) {
    const TSpectrum factor = spectrumOf(flat(0.5));
    const TSpectrum unset;
    const TSpectrum first(&unset, &factor), second(&factor, &unset), both(&unset, &unset);
    for (const TSpectrum* product : {&first, &second, &both}) {
        EXPECT_EQ(product->GetStatus(), 3);
        EXPECT_EQ(product->GetNonUniformFlag(), 0);
        EXPECT_THAT(standardOf(*product), Each(-1.0));
    }
}

TEST(spectrum, nullFactor_isFoundBeforeAnUnsetOne) {
    const TSpectrum unset;
    const TSpectrum* const none = nullptr;
    EXPECT_EQ(TSpectrum(&unset, none).GetStatus(), 2);
    EXPECT_EQ(TSpectrum(none, &unset).GetStatus(), 2);
}

// Only the first standard value tells whether a factor is set.
TEST(spectrum, minus1BehindTheFirstSlot_isAnOrdinaryFactor) {
    Standard values = flat(0.5);
    values[1] = -1.0;
    const TSpectrum factor = spectrumOf(values), grey = spectrumOf(flat(0.25));
    const TSpectrum product(&factor, &grey);
    EXPECT_EQ(product.GetStatus(), 0);
    EXPECT_EQ(standardOf(product)[1], -0.25);
}

TEST(spectrum, firstValueNearMinus1_isAnOrdinaryFactor) {
    const TSpectrum factor = spectrumOf(flat(std::nextafter(-1.0, 0.0))), grey = spectrumOf(flat(2.0));
    EXPECT_EQ(TSpectrum(&factor, &grey).GetStatus(), 0);
}

// Copies.

TEST(spectrum, copy_isDeep) {
    TSpectrum original = fromSamples({600, 400, 500}, {0.3, 0.1, 0.2});
    const Standard standard = standardOf(original);
    const TSpectrum copy(original);
    EXPECT_NE(copy.GetWavelengths(), original.GetWavelengths());
    EXPECT_NE(copy.GetValues(), original.GetValues());
    original.Clear();
    EXPECT_EQ(copy.GetStatus(), 0);
    EXPECT_EQ(copy.GetNonUniformFlag(), 1);
    EXPECT_THAT(wavelengthsOf(copy), ElementsAre(600, 400, 500));
    EXPECT_THAT(valuesOf(copy), ElementsAre(0.3, 0.1, 0.2));
    EXPECT_THAT(standardOf(copy), ElementsAreArray(standard));
}

TEST(spectrum, copyOfAStandardOnlySpectrum_isStandardOnly) {
    const TSpectrum original = spectrumOf(ramp());
    const TSpectrum copy(original);
    EXPECT_EQ(copy.GetNonUniformFlag(), 0);
    EXPECT_EQ(copy.GetWavelengths(), nullptr);
    EXPECT_THAT(standardOf(copy), ElementsAreArray(ramp()));
}

TEST(spectrum, copy_startsWithStatus0) {
    const double wavelengths[] = {500.0, 500.0};
    const TSpectrum bad(wavelengths, 2, wavelengths);
    ASSERT_EQ(bad.GetStatus(), 4);
    const TSpectrum copy(bad);
    EXPECT_EQ(copy.GetStatus(), 0);
    EXPECT_EQ(copy.GetNrSamples(), 2);
    EXPECT_THAT(standardOf(copy), Each(-1.0));
}

TEST(spectrum, copyOfARefusedSpectrum_keepsTheFlagAndHasNoArrays) {
    const TSpectrum bad(nullptr, 3, nullptr);
    ASSERT_EQ(bad.GetStatus(), 2);
    const TSpectrum copy(bad);
    EXPECT_EQ(copy.GetStatus(), 0);
    EXPECT_EQ(copy.GetNonUniformFlag(), 1);
    expectEmptyButStatus(copy);
}

TEST(spectrum, copy_leavesTheSerialisedBuffersBehind) {
    TSpectrum original = spectrumOf(ramp());
    int size = 0;
    ASSERT_NE(original.ToFileData(&size), nullptr);
    ASSERT_EQ(original.GetFileDataSize(), 76);
    const TSpectrum copy(original);
    EXPECT_EQ(copy.GetFileDataSize(), 0);
    EXPECT_EQ(original.GetFileDataSize(), 76);
}

TEST(spectrum, assignment_isDeepAndReleasesWhatWasHeld) {
    TSpectrum original = fromSamples({600, 400}, {0.3, 0.1});
    const Standard standard = standardOf(original);
    TSpectrum target = fromSamples({450, 550, 650}, {1, 2, 3});
    int size = 0;
    ASSERT_NE(target.ToFileData(&size), nullptr);
    EXPECT_EQ(&(target = original), &target);
    EXPECT_NE(target.GetWavelengths(), original.GetWavelengths());
    original.Clear();
    EXPECT_EQ(target.GetStatus(), 0);
    EXPECT_EQ(target.GetNonUniformFlag(), 1);
    EXPECT_EQ(target.GetFileDataSize(), 0);
    EXPECT_THAT(wavelengthsOf(target), ElementsAre(600, 400));
    EXPECT_THAT(valuesOf(target), ElementsAre(0.3, 0.1));
    EXPECT_THAT(standardOf(target), ElementsAreArray(standard));
}

TEST(spectrum, assignmentOfAStandardOnlySpectrum_dropsTheSamples) {
    TSpectrum target = fromSamples({450, 550, 650}, {1, 2, 3});
    target = spectrumOf(ramp());
    EXPECT_EQ(target.GetNonUniformFlag(), 0);
    EXPECT_EQ(target.GetNrSamples(), 0);
    EXPECT_EQ(target.GetWavelengths(), nullptr);
    EXPECT_THAT(standardOf(target), ElementsAreArray(ramp()));
}

TEST(spectrum, assignment_startsWithStatus0) {
    const double wavelengths[] = {500.0, 500.0};
    const TSpectrum bad(wavelengths, 2, wavelengths);
    TSpectrum target(static_cast<const double*>(nullptr));
    ASSERT_EQ(target.GetStatus(), 2);
    target = bad;
    EXPECT_EQ(target.GetStatus(), 0);
    EXPECT_EQ(target.GetNrSamples(), 2);
}

TEST(spectrum, selfAssignment_keepsTheSamples) {
    TSpectrum spectrum = fromSamples({600, 400}, {0.3, 0.1});
    const Standard standard = standardOf(spectrum);
    TSpectrum& alias = spectrum;
    spectrum = alias;
    EXPECT_THAT(wavelengthsOf(spectrum), ElementsAre(600, 400));
    EXPECT_THAT(valuesOf(spectrum), ElementsAre(0.3, 0.1));
    EXPECT_THAT(standardOf(spectrum), ElementsAreArray(standard));
}

// Clearing.

TEST(spectrum, setToZero_makesAnUnsetSpectrum) {
    TSpectrum spectrum = spectrumOf(ramp());
    spectrum.SetToZero();
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 0);
    expectEmptyButStatus(spectrum);
}

TEST(spectrum, clear_makesAnUnsetSpectrum) {
    TSpectrum spectrum = fromSamples({600, 400}, {0.3, 0.1});
    int size = 0;
    ASSERT_NE(spectrum.ToFileData(&size), nullptr);
    spectrum.Clear();
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 0);
    expectEmptyButStatus(spectrum);
}

TEST(spectrum, clear_forgetsTheStatus) {
    const double wavelengths[] = {500.0, 500.0};
    TSpectrum spectrum(wavelengths, 2, wavelengths);
    spectrum.Clear();
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
}

TEST(spectrum, clearTwice_isHarmless) {
    TSpectrum spectrum = fromSamples({600, 400}, {0.3, 0.1});
    spectrum.Clear();
    spectrum.Clear();
    expectEmptyButStatus(spectrum);
}

TEST(spectrum, clearNonUniform_keepsTheStandardValuesAlone) {
    TSpectrum spectrum = fromSamples({600, 400}, {0.3, 0.1});
    const Standard standard = standardOf(spectrum);
    int size = 0;
    ASSERT_NE(spectrum.ToFileData(&size), nullptr);
    EXPECT_EQ(spectrum.ToFileData(nullptr), nullptr);
    ASSERT_EQ(spectrum.GetStatus(), 2);
    spectrum.ClearNonUniform();
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(spectrum.GetNonUniformFlag(), 0);
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    EXPECT_EQ(spectrum.GetFileDataSize(), 0);
    EXPECT_EQ(spectrum.GetWavelengths(), nullptr);
    EXPECT_EQ(spectrum.GetValues(), nullptr);
    EXPECT_THAT(standardOf(spectrum), ElementsAreArray(standard));
    ASSERT_NE(spectrum.ToFileData(&size), nullptr);
    EXPECT_EQ(size, 76);
}

// Distance and inner product.

TEST(spectrum, distance_isEuclidean) {
    Standard a = flat(0.0), b = flat(0.0);
    a[0] = 3.0;
    b[35] = 4.0;
    const TSpectrum first = spectrumOf(a), second = spectrumOf(b);
    EXPECT_EQ(first.CalcDistance(&second), 5.0);
    EXPECT_EQ(second.CalcDistance(&first), 5.0);
    EXPECT_EQ(first.CalcDistance(&first), 0.0);
}

// 1 + 2^-54 is 1 again: behind the 1 the sixteen small squares vanish one by one; before it they sum up to
// 2^-50, and the root of 1 + 2^-50 is 1 + 2^-51.
TEST(spectrum, distance_sumsByAscendingSlot) {
    Standard largeFirst = flat(0.0), largeLast = flat(0.0);
    largeFirst.front() = largeLast.back() = 1.0;
    for (std::size_t k = 1; k <= 16; ++k)
        largeFirst[k] = largeLast[35 - k] = 0x1p-27;
    const TSpectrum zeros = spectrumOf(flat(0.0));
    EXPECT_EQ(spectrumOf(largeFirst).CalcDistance(&zeros), 1.0);
    EXPECT_EQ(spectrumOf(largeLast).CalcDistance(&zeros), 1.0 + 0x1p-51);
}

TEST(spectrum, distanceOfNonUniformSpectra_isThatOfTheirStandardValues) {
    const TSpectrum first = fromSamples({500}, {0.25}), second = fromSamples({600, 700}, {0.5, 0.5});
    EXPECT_EQ(first.CalcDistance(&second), 1.5); // sqrt(36 * 0.0625)
}

TEST(spectrum, distanceToNull_isNotANumber) {
    EXPECT_TRUE(std::isnan(TSpectrum().CalcDistance(nullptr)));
}

TEST(spectrum, inProduct_sumsByAscendingSlot) {
    const Standard a = irregular(7), b = irregular(8);
    double sum = 0.0;
    for (std::size_t k = 0; k < a.size(); ++k)
        sum += a[k] * b[k];
    const TSpectrum first = spectrumOf(a), second = spectrumOf(b);
    double result = 0.0;
    EXPECT_EQ(first.InProduct(&second, &result), 0);
    EXPECT_EQ(result, sum);
}

TEST(spectrum, inProductWithUnsetSpectra_takesTheirValuesAsTheyStand) {
    const TSpectrum unset;
    double result = 0.0;
    EXPECT_EQ(unset.InProduct(&unset, &result), 0);
    EXPECT_EQ(result, 36.0);
}

TEST(spectrum, inProductWithNull_answers2AndLeavesStatusAndResult) {
    const TSpectrum spectrum = spectrumOf(ramp());
    double result = 7.0;
    EXPECT_EQ(spectrum.InProduct(nullptr, &result), 2);
    EXPECT_EQ(spectrum.InProduct(&spectrum, nullptr), 2);
    EXPECT_EQ(spectrum.InProduct(nullptr, nullptr), 2);
    EXPECT_EQ(result, 7.0);
    EXPECT_EQ(spectrum.GetStatus(), 0);
}

TEST(spectrum, inProduct_leavesTheStatusOfARefusedSpectrum) {
    const TSpectrum spectrum(static_cast<const double*>(nullptr));
    double result = 0.0;
    EXPECT_EQ(spectrum.InProduct(&spectrum, &result), 0);
    EXPECT_EQ(spectrum.GetStatus(), 2);
}

} // namespace

// Whether a sampling is set shows in its first value alone.
TEST(spectrum, product_looksAtTheFirstValueOfEachFactor) {
    double values[TSpectrum::kStandardCount];
    std::fill_n(values, TSpectrum::kStandardCount, 0.5);
    const TSpectrum whole(values);
    values[0] = -1.0;
    const TSpectrum unset(values);
    EXPECT_EQ(TSpectrum(&unset, &whole).GetStatus(), 3);
    EXPECT_EQ(TSpectrum(&whole, &unset).GetStatus(), 3);
}

} // namespace qxcms::tests
