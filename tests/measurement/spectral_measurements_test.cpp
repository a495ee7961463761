// Measurements that hold a spectrum.
#include "measurement/spectral_measurements.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <memory>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "colorspace/tlabspace.h"
#include "spectral/tilluminantandobserver.h"
#include "tests/spectral/known_spectra.h"
#include "tests/support/reports.h"

#if defined(__SANITIZE_ADDRESS__)
#define QXCMS_TESTS_SLOW_BUILD
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QXCMS_TESTS_SLOW_BUILD
#endif
#endif
#if !defined(__OPTIMIZE__)
#define QXCMS_TESTS_SLOW_BUILD
#endif

namespace {

using qxcms::tests::flat;
using qxcms::tests::irregular;
using qxcms::tests::kD65;
using qxcms::tests::kIlluminantA;
using qxcms::tests::kIlluminantC;
using qxcms::tests::ReportCollector;
using qxcms::tests::spectrumOf;
using qxcms::tests::Standard;
using qxcms::tests::standardOf;
using Triple = std::array<double, 3>;

// CIE F2, 380 to 730 nm at 10 nm (CIE 15:2004).
constexpr Standard kF2 = {1.18,  1.84, 3.44, 3.85, 4.19,  5.06,  11.81, 6.63,  7.19,  7.54,  7.65,  7.62,
                          7.28,  7.05, 7.16, 8.04, 10.01, 16.64, 16.16, 18.62, 22.79, 18.66, 16.54, 13.8,
                          10.95, 8.4,  6.31, 4.68, 3.45,  2.55,  1.89,  1.53,  1.1,   0.88,  0.68,  0.56};

// A reflectance of 0.05 at 380 nm that grows by 0.02 every 10 nm.
Standard slope() {
    Standard values;
    for (std::size_t k = 0; k < values.size(); ++k)
        values[k] = 0.05 + 0.02 * static_cast<double>(k);
    return values;
}

Standard productOf(const Standard& a, const Standard& b) {
    Standard values;
    for (std::size_t k = 0; k < values.size(); ++k)
        values[k] = a[k] * b[k];
    return values;
}

// An illuminant together with the spectrum it is made of.
struct Lamp {
    Lamp(const Standard& values, const char* name)
        : spectrum(spectrumOf(values)), illuminant(&spectrum, name) {}
    TSpectrum spectrum;
    TIlluminant illuminant;
};

// The colour-matching function of that component at 380, 390, ..., 730 nm.
Standard matching(unsigned observer, int component) {
    const double(*tables[3])[TObserver::kTableCount] = {TObserver::sXSpectrum, TObserver::sYSpectrum,
                                                        TObserver::sZSpectrum};
    Standard values;
    for (std::size_t k = 0; k < values.size(); ++k)
        values[k] = tables[component][observer][2 * k];
    return values;
}

double sumOfProducts(const Standard& a, const Standard& b) {
    double sum = 0.0;
    for (std::size_t k = 0; k < a.size(); ++k)
        sum += a[k] * b[k];
    return sum;
}

Triple plainSums(const Standard& stimulus, unsigned observer) {
    return {sumOfProducts(stimulus, matching(observer, 0)), sumOfProducts(stimulus, matching(observer, 1)),
            sumOfProducts(stimulus, matching(observer, 2))};
}

// X, Y, Z of a reflectance, with the product of illuminant and observer formed first.
Triple reflectiveXyz(const Standard& reflectance, const Standard& illuminant, unsigned observer) {
    const double k = 100.0 / sumOfProducts(illuminant, matching(observer, 1));
    Triple xyz;
    for (int component = 0; component < 3; ++component) {
        const Standard weights = productOf(illuminant, matching(observer, component));
        xyz[static_cast<std::size_t>(component)] = k * sumOfProducts(reflectance, weights);
    }
    return xyz;
}

template <class Measurement>
Triple xyzOf(const Measurement& measurement, TIlluminant* illuminant, int observerNumber, int code = 0) {
    TObserver observer(observerNumber);
    Triple xyz = {-9.0, -9.0, -9.0};
    EXPECT_EQ(measurement.GetXYZ(illuminant, &observer, xyz.data()), code);
    return xyz;
}

void expectNear(const Triple& actual, const Triple& expected, double tolerance) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(actual[i], expected[i], tolerance) << i;
}

std::vector<double> coordinatesOf(const TOneMeasurement& measurement) {
    int count = 0;
    const double* coordinates = measurement.GetCoord(&count);
    return std::vector<double>(coordinates, coordinates + count);
}

// A reflected spectrum made whole: it supplies what its base leaves open.
class CompleteReflectedSpectrum : public TReflectedSpectrum {
public:
    using TReflectedSpectrum::TReflectedSpectrum;
    TOneMeasurement* Copy() const override { return nullptr; }
    double* GetUniformSpectrum(double*, double*, int*) const override { return nullptr; }
    int GetSpecData(double*, double*, int*, bool*) override { return 0; }
};

// Reflection spectra: construction.

TEST(reflectionSpectrum, constructor_copiesTheSpectrum) {
    const double wavelengths[3] = {400.0, 500.0, 700.0};
    const double values[3] = {0.1, 0.5, 0.3};
    auto spectrum = std::make_unique<TSpectrum>(wavelengths, 3, values);
    const Standard standard = standardOf(*spectrum);
    TReflectionSpectrum measurement(spectrum.get(), nullptr);
    EXPECT_EQ(measurement.GetStatus(), 0);
    ASSERT_NE(measurement.GetSpectrum(), nullptr);
    EXPECT_NE(measurement.GetSpectrum(), spectrum.get());
    spectrum.reset();
    EXPECT_EQ(standardOf(*measurement.GetSpectrum()), standard);
    ASSERT_EQ(measurement.GetSpectrum()->GetNrSamples(), 3);
    EXPECT_EQ(measurement.GetSpectrum()->GetWavelengths()[2], 700.0);
    EXPECT_EQ(measurement.GetSpectrum()->GetValues()[1], 0.5);
}

TEST(reflectionSpectrum, constructor_keepsGeometryAndCoordinates) {
    const TSpectrum spectrum = spectrumOf(flat(0.5));
    const TMeasGeom geometry(3);
    const double coordinates[3] = {10.0, 20.0, 30.0};
    const TReflectionSpectrum measurement(&spectrum, &geometry, 3, coordinates);
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 3U);
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{10.0, 20.0, 30.0}));
    const TReflectionSpectrum without(&spectrum, &geometry);
    EXPECT_EQ(without.GetGeometry()->GetNumber(), 3U);
    EXPECT_TRUE(coordinatesOf(without).empty());
}

TEST(reflectionSpectrum, constructor_withoutSpectrumHasStatus3) {
    const TMeasGeom geometry(3);
    const double coordinates[1] = {10.0};
    TReflectionSpectrum measurement(nullptr, &geometry);
    EXPECT_EQ(measurement.GetStatus(), 3);
    EXPECT_EQ(measurement.GetSpectrum(), nullptr);
    TReflectionSpectrum withCoordinates(nullptr, &geometry, 1, coordinates);
    EXPECT_EQ(withCoordinates.GetStatus(), 3);
    EXPECT_EQ(withCoordinates.GetSpectrum(), nullptr);
}

TEST(reflectionSpectrum, constructor_takesASpectrumThatCouldNotBeSet) {
    // Two samples at one wavelength: the standard values stay unset.
    const double wavelengths[2] = {500.0, 500.0};
    const double values[2] = {0.1, 0.2};
    const TSpectrum unset(wavelengths, 2, values);
    ASSERT_EQ(unset.GetStatus(), 4);
    TReflectionSpectrum reflection(&unset, nullptr);
    TEmissionSpectrum emission(&unset, nullptr);
    for (TOneMeasurement* measurement :
         {static_cast<TOneMeasurement*>(&reflection), static_cast<TOneMeasurement*>(&emission)}) {
        EXPECT_EQ(measurement->GetStatus(), 0);
        ASSERT_NE(measurement->GetSpectrum(), nullptr);
        EXPECT_EQ(measurement->GetSpectrum()->GetNrSamples(), 2);
        EXPECT_EQ(standardOf(*measurement->GetSpectrum()), flat(-1.0));
    }
}

TEST(reflectionSpectrum, constructor_takesANullGeometry) {
    const TSpectrum spectrum = spectrumOf(flat(0.5));
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(measurement.GetGeometry(), nullptr);
}

// Reflection spectra: tristimulus values.

TEST(reflectionSpectrum, xyz_ofThePerfectWhiteHasY100UnderAnyIlluminantAndObserver) {
    const TSpectrum white = spectrumOf(flat(1.0));
    const TReflectionSpectrum measurement(&white, nullptr);
    for (const Standard& values : {kIlluminantA, kIlluminantC, kD65, kF2, flat(100.0), irregular(3)}) {
        Lamp lamp(values, "a lamp");
        for (int observer = 0; observer < 2; ++observer)
            EXPECT_NEAR(xyzOf(measurement, &lamp.illuminant, observer)[1], 100.0, 1e-12);
    }
    for (const char* name : {"CIE Illuminant F2", "CIE Illuminant F7", "CIE Illuminant F11"}) {
        Lamp lamp(kF2, name);
        for (int observer = 0; observer < 2; ++observer)
            EXPECT_NEAR(xyzOf(measurement, &lamp.illuminant, observer)[1], 100.0, 1e-12) << name;
    }
}

TEST(reflectionSpectrum, xyz_ofASlopeIsThatOfAnIndependentCalculation) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    Lamp a(kIlluminantA, "CIE Illuminant A");
    Lamp d65(kD65, "D65");
    expectNear(xyzOf(measurement, &a.illuminant, 0), {52.8184536325, 43.4422806325, 7.6054385729}, 1e-9);
    expectNear(xyzOf(measurement, &a.illuminant, 1), {52.7734550209, 42.9015924372, 7.2597414480}, 1e-9);
    expectNear(xyzOf(measurement, &d65.illuminant, 0), {40.2381563110, 40.3536297133, 21.8965570517}, 1e-9);
    expectNear(xyzOf(measurement, &d65.illuminant, 1), {39.5141696450, 39.2205356464, 20.9318728477}, 1e-9);
}

TEST(reflectionSpectrum, xyz_isSummedInTheStatedOrder) {
    for (const Standard& reflectance : {slope(), irregular(1), irregular(2), flat(0.2)}) {
        const TSpectrum spectrum = spectrumOf(reflectance);
        const TReflectionSpectrum measurement(&spectrum, nullptr);
        for (const Standard& values : {kIlluminantA, kD65, irregular(7)}) {
            Lamp lamp(values, "a lamp");
            for (unsigned observer = 0; observer < 2; ++observer)
                EXPECT_EQ(xyzOf(measurement, &lamp.illuminant, static_cast<int>(observer)),
                          reflectiveXyz(reflectance, values, observer));
        }
    }
}

TEST(reflectionSpectrum, xyz_isThatOfAWeightingOf36Points) {
    const TSpectrum spectrum = spectrumOf(irregular(4));
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    for (const char* name : {"D65", "CIE Illuminant F2", "CIE Illuminant F7", "CIE Illuminant F11"}) {
        Lamp lamp(kD65, name);
        const TObserver observer(1);
        const TIlluminantAndObserver weighting(&lamp.illuminant, &observer, 36);
        Triple expected;
        ASSERT_EQ(weighting.GetXYZ(&spectrum, expected.data(), 36), 0);
        EXPECT_EQ(xyzOf(measurement, &lamp.illuminant, 1), expected) << name;
    }
}

TEST(reflectionSpectrum, xyz_underF2UsesTheAstmTable) {
    const TSpectrum white = spectrumOf(flat(1.0));
    const TReflectionSpectrum whiteMeasurement(&white, nullptr);
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    Lamp named(kF2, "CIE Illuminant F2");
    // Column sums of ASTM E308 table 6 over 380 to 730 nm, and the slope weighted with it.
    expectNear(xyzOf(whiteMeasurement, &named.illuminant, 0), {99.1840326387, 100.0, 67.3923043078}, 1e-9);
    expectNear(xyzOf(measurement, &named.illuminant, 0), {43.0102195912, 42.0423383065, 12.9787708492}, 1e-9);
}

TEST(reflectionSpectrum, xyz_underF2DiffersFromItsDirectIntegration) {
    const TSpectrum white = spectrumOf(flat(1.0));
    const TReflectionSpectrum measurement(&white, nullptr);
    Lamp named(kF2, "CIE Illuminant F2");
    Lamp unnamed(kF2, "a fluorescent lamp");
    // The points at 10 nm miss the mercury lines.
    expectNear(xyzOf(measurement, &unnamed.illuminant, 0), {98.8117794722, 100.0, 55.8057967090}, 1e-9);
    const Triple table = xyzOf(measurement, &named.illuminant, 0);
    const Triple direct = xyzOf(measurement, &unnamed.illuminant, 0);
    EXPECT_GT(std::fabs(table[0] - direct[0]), 0.3);
    EXPECT_GT(std::fabs(table[2] - direct[2]), 11.0);
}

TEST(reflectionSpectrum, xyz_underF2IsTheSameForBothObservers) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    Lamp lamp(kF2, "cie illuminant f2");
    EXPECT_EQ(xyzOf(measurement, &lamp.illuminant, 1), xyzOf(measurement, &lamp.illuminant, 0));
}

TEST(reflectionSpectrum, xyz_withANullArgumentAnswers3) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    Lamp lamp(kD65, "D65");
    TObserver observer(0);
    Triple xyz = {9.0, 9.0, 9.0};
    EXPECT_EQ(measurement.GetXYZ(nullptr, &observer, xyz.data()), 3);
    EXPECT_EQ(measurement.GetXYZ(&lamp.illuminant, nullptr, xyz.data()), 3);
    EXPECT_EQ(measurement.GetXYZ(&lamp.illuminant, &observer, nullptr), 3);
    EXPECT_EQ(xyz, (Triple{9.0, 9.0, 9.0}));
}

TEST(reflectionSpectrum, xyz_withoutSpectrumAnswers2) {
    const TReflectionSpectrum measurement(nullptr, nullptr);
    Lamp lamp(kD65, "D65");
    EXPECT_EQ(xyzOf(measurement, &lamp.illuminant, 0, 2), (Triple{-9.0, -9.0, -9.0}));
}

TEST(reflectionSpectrum, xyz_nullArgumentWinsOverTheMissingSpectrum) {
    const TReflectionSpectrum measurement(nullptr, nullptr);
    Lamp lamp(kD65, "D65");
    TObserver observer(0);
    Triple xyz;
    EXPECT_EQ(measurement.GetXYZ(nullptr, &observer, xyz.data()), 3);
    EXPECT_EQ(measurement.GetXYZ(&lamp.illuminant, nullptr, xyz.data()), 3);
    EXPECT_EQ(measurement.GetXYZ(&lamp.illuminant, &observer, nullptr), 3);
}

TEST(reflectionSpectrum, xyz_underAnIlluminantWithoutSpectrumIsZero) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    TIlluminant empty("no such file.ill");
    ASSERT_EQ(empty.GetSpectrum(), nullptr);
    // The weighting's status is not looked at; its weights are zeros.
    EXPECT_EQ(xyzOf(measurement, &empty, 0), (Triple{0.0, 0.0, 0.0}));
}

TEST(reflectionSpectrum, xyz_withAnUnknownObserverIsThatOfTheTwoDegreeOne) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    Lamp lamp(kD65, "D65");
    EXPECT_EQ(xyzOf(measurement, &lamp.illuminant, 7), xyzOf(measurement, &lamp.illuminant, 0));
}

TEST(reflectionSpectrum, xyz_isNotChangedByEarlierCalls) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    Lamp a(kIlluminantA, "CIE Illuminant A");
    Lamp f2(kF2, "CIE Illuminant F2");
    const Triple first = xyzOf(measurement, &a.illuminant, 0);
    xyzOf(measurement, &f2.illuminant, 1);
    xyzOf(measurement, &a.illuminant, 1);
    EXPECT_EQ(xyzOf(measurement, &a.illuminant, 0), first);
}

TEST(reflectionSpectrum, xyz_ofTwoThousandPatchesTakesMilliseconds) {
#if defined(QXCMS_TESTS_SLOW_BUILD)
    GTEST_SKIP() << "times are kept by optimised builds without sanitizers";
#else
    std::vector<std::unique_ptr<TReflectionSpectrum>> chart;
    for (unsigned i = 0; i < 2000; ++i) {
        const TSpectrum spectrum = spectrumOf(irregular(i));
        chart.push_back(std::make_unique<TReflectionSpectrum>(&spectrum, nullptr));
    }
    Lamp lamp(kD65, "D65");
    TObserver observer(0);
    double best = 1e9;
    double sum = 0.0;
    // The best of several rounds: other programs may be running.
    for (int round = 0; round < 5; ++round) {
        const auto start = std::chrono::steady_clock::now();
        for (const auto& patch : chart) {
            Triple xyz;
            patch->GetXYZ(&lamp.illuminant, &observer, xyz.data());
            sum += xyz[1];
        }
        const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
        best = std::min(best, taken.count());
    }
    EXPECT_GT(sum, 0.0);
    EXPECT_LT(best, 100.0);
#endif
}

// Reflection spectra: the other operations.

TEST(reflectionSpectrum, lab_isThatOfItsXyzOnTheGivenWhite) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    Lamp lamp(kD65, "D65");
    TObserver observer(1);
    const Triple white = {94.811, 100.0, 107.304};
    const Triple xyz = xyzOf(measurement, &lamp.illuminant, 1);
    Triple expected;
    TLabSpace(white.data()).XYZToLab(xyz.data(), expected.data());
    Triple lab;
    EXPECT_EQ(measurement.GetLAB(&lamp.illuminant, &observer, white.data(), lab.data()), 0);
    EXPECT_EQ(lab, expected);
}

TEST(reflectionSpectrum, lab_returnsTheCodesOfXyz) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    const TReflectionSpectrum without(nullptr, nullptr);
    Lamp lamp(kD65, "D65");
    TObserver observer(0);
    const Triple white = {95.0, 100.0, 108.0};
    Triple lab;
    EXPECT_EQ(measurement.GetLAB(nullptr, &observer, white.data(), lab.data()), 3);
    EXPECT_EQ(measurement.GetLAB(&lamp.illuminant, nullptr, white.data(), lab.data()), 3);
    EXPECT_EQ(without.GetLAB(&lamp.illuminant, &observer, white.data(), lab.data()), 2);
}

TEST(reflectionSpectrum, lab_onANullOrBadWhiteAnswers3) {
    const ReportCollector reports;
    const TSpectrum spectrum = spectrumOf(slope());
    const TReflectionSpectrum measurement(&spectrum, nullptr);
    Lamp lamp(kD65, "D65");
    TObserver observer(0);
    const Triple badWhite = {95.0, -100.0, 108.0};
    Triple lab;
    EXPECT_EQ(measurement.GetLAB(&lamp.illuminant, &observer, nullptr, lab.data()), 3);
    EXPECT_EQ(measurement.GetLAB(&lamp.illuminant, &observer, badWhite.data(), lab.data()), 3);
}

TEST(reflectionSpectrum, uniformSpectrum_isTheStandardSampling) {
    const TSpectrum spectrum = spectrumOf(slope());
    TReflectionSpectrum measurement(&spectrum, nullptr);
    double start = 0.0;
    double end = 0.0;
    int count = 0;
    const double* values = measurement.GetUniformSpectrum(&start, &end, &count);
    ASSERT_NE(values, nullptr);
    EXPECT_EQ(start, 380.0);
    EXPECT_EQ(end, 730.0);
    ASSERT_EQ(count, 36);
    const Standard expected = slope();
    for (std::size_t k = 0; k < 36; ++k)
        EXPECT_EQ(values[k], expected[k]);
    // It is the measurement's own spectrum, not the caller's.
    EXPECT_EQ(values, measurement.GetSpectrum()->GetUniformSpectrum(nullptr, nullptr, nullptr));
    EXPECT_EQ(measurement.GetUniformSpectrum(nullptr, nullptr, nullptr), values);
}

TEST(reflectionSpectrum, uniformSpectrum_withoutSpectrumIsNull) {
    const TReflectionSpectrum measurement(nullptr, nullptr);
    double start = 0.0;
    double end = 0.0;
    int count = 0;
    EXPECT_EQ(measurement.GetUniformSpectrum(&start, &end, &count), nullptr);
    EXPECT_EQ(measurement.GetUniformSpectrum(nullptr, nullptr, nullptr), nullptr);
}

TEST(reflectionSpectrum, specData_answers0AndWritesNothing) {
    const TSpectrum spectrum = spectrumOf(slope());
    TReflectionSpectrum measurement(&spectrum, nullptr);
    double wavelengths[36] = {9.0};
    double values[36] = {9.0};
    int count = 9;
    bool flag = true;
    EXPECT_EQ(measurement.GetSpecData(wavelengths, values, &count, &flag), 0);
    EXPECT_EQ(wavelengths[0], 9.0);
    EXPECT_EQ(values[0], 9.0);
    EXPECT_EQ(count, 9);
    EXPECT_TRUE(flag);
    EXPECT_EQ(measurement.GetSpecData(nullptr, nullptr, nullptr, nullptr), 0);
}

TEST(reflectionSpectrum, density_ofAGreyOfATenthIsOneInEveryChannel) {
    const TSpectrum grey = spectrumOf(flat(0.1));
    TReflectionSpectrum measurement(&grey, nullptr);
    for (const int standard : {0, 1, 2, 3}) {
        double densities[4] = {9.0, 9.0, 9.0, 9.0};
        int filter = 9;
        EXPECT_EQ(measurement.GetDensity(standard, densities, &filter), 0);
        // The weights sum to 1 within a hundred-thousandth, those of ANSI T blue to 0.99994.
        for (const double density : densities)
            EXPECT_NEAR(density, 1.0, 3e-5) << standard;
        EXPECT_EQ(filter, 3) << standard;
    }
}

TEST(reflectionSpectrum, density_ofACyanHasRedAsItsMajorFilter) {
    Standard values = flat(0.9);
    for (std::size_t k = qxcms::tests::slotOf(600); k < values.size(); ++k)
        values[k] = 0.01;
    const TSpectrum cyan = spectrumOf(values);
    TReflectionSpectrum measurement(&cyan, nullptr);
    double densities[4];
    int filter = 9;
    EXPECT_EQ(measurement.GetDensity(TSpectrum::kAnsiA, densities, &filter), 0);
    EXPECT_EQ(filter, 0);
    EXPECT_NEAR(densities[0], 2.0, 1e-5);
    EXPECT_NEAR(densities[1], -std::log10(0.9), 1e-5);
    EXPECT_NEAR(densities[2], -std::log10(0.9), 1e-5);
}

TEST(reflectionSpectrum, density_withoutSpectrumIsZeros) {
    TReflectionSpectrum measurement(nullptr, nullptr);
    double densities[4] = {9.0, 9.0, 9.0, 9.0};
    int filter = 9;
    EXPECT_EQ(measurement.GetDensity(TSpectrum::kAnsiT, densities, &filter), 0);
    for (const double density : densities)
        EXPECT_EQ(density, 0.0);
    EXPECT_EQ(filter, 0);
}

TEST(reflectionSpectrum, density_ofAnUnknownStandardAnswers2) {
    const TSpectrum grey = spectrumOf(flat(0.1));
    TReflectionSpectrum measurement(&grey, nullptr);
    double densities[4] = {9.0, 9.0, 9.0, 9.0};
    int filter = 9;
    EXPECT_EQ(measurement.GetDensity(4, densities, &filter), 2);
    EXPECT_EQ(measurement.GetDensity(-1, densities, &filter), 2);
    EXPECT_EQ(densities[0], 9.0);
    EXPECT_EQ(filter, 9);
}

TEST(reflectionSpectrum, copy_isOfTheSameClassAndIndependent) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TMeasGeom geometry(2);
    const double coordinates[2] = {1.0, 2.0};
    auto original = std::make_unique<TReflectionSpectrum>(&spectrum, &geometry, 2, coordinates);
    const std::unique_ptr<TOneMeasurement> copy(original->Copy());
    ASSERT_NE(copy, nullptr);
    const TOneMeasurement& made = *copy;
    EXPECT_EQ(typeid(made), typeid(TReflectionSpectrum));
    EXPECT_NE(copy->GetSpectrum(), original->GetSpectrum());
    EXPECT_NE(copy->GetGeometry(), original->GetGeometry());
    EXPECT_NE(copy->GetCoord(nullptr), original->GetCoord(nullptr));
    Lamp lamp(kD65, "D65");
    const Triple expected = xyzOf(*original, &lamp.illuminant, 0);
    const double changed[1] = {7.0};
    original->SetCoord(1, changed);
    original.reset();
    EXPECT_EQ(copy->GetStatus(), 0);
    EXPECT_EQ(copy->GetGeometry()->GetNumber(), 2U);
    EXPECT_EQ(coordinatesOf(*copy), (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(standardOf(*copy->GetSpectrum()), slope());
    EXPECT_EQ(xyzOf(*copy, &lamp.illuminant, 0), expected);
}

TEST(reflectionSpectrum, copy_ofAnIncompleteOneIsIncomplete) {
    const TReflectionSpectrum measurement(nullptr, nullptr);
    const std::unique_ptr<TOneMeasurement> copy(measurement.Copy());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetStatus(), 3);
    EXPECT_EQ(copy->GetSpectrum(), nullptr);
    EXPECT_EQ(copy->GetGeometry(), nullptr);
    EXPECT_TRUE(coordinatesOf(*copy).empty());
}

// Reflected spectra.

TEST(reflectedSpectrum, class_isABaseForOthers) {
    EXPECT_TRUE(std::is_abstract_v<TReflectedSpectrum>);
    EXPECT_FALSE(std::is_abstract_v<CompleteReflectedSpectrum>);
}

TEST(reflectedSpectrum, constructor_keepsTheIlluminantAndCopiesTheSpectrum) {
    Lamp lamp(kD65, "D65");
    const TSpectrum light = spectrumOf(productOf(slope(), kD65));
    const TMeasGeom geometry(5);
    const double coordinates[2] = {3.0, 4.0};
    CompleteReflectedSpectrum measurement(&light, &geometry, &lamp.illuminant);
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(measurement.GetIlluminant(), &lamp.illuminant);
    ASSERT_NE(measurement.GetSpectrum(), nullptr);
    EXPECT_NE(measurement.GetSpectrum(), &light);
    EXPECT_EQ(standardOf(*measurement.GetSpectrum()), productOf(slope(), kD65));
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 5U);
    EXPECT_TRUE(coordinatesOf(measurement).empty());
    const CompleteReflectedSpectrum withCoordinates(&light, &geometry, &lamp.illuminant, 2, coordinates);
    EXPECT_EQ(withCoordinates.GetStatus(), 0);
    EXPECT_EQ(withCoordinates.GetIlluminant(), &lamp.illuminant);
    EXPECT_EQ(coordinatesOf(withCoordinates), (std::vector<double>{3.0, 4.0}));
}

TEST(reflectedSpectrum, constructor_withoutSpectrumOrIlluminantHasStatus3) {
    Lamp lamp(kD65, "D65");
    const TSpectrum light = spectrumOf(kD65);
    const double coordinates[1] = {3.0};
    EXPECT_EQ(CompleteReflectedSpectrum(nullptr, nullptr, &lamp.illuminant).GetStatus(), 3);
    EXPECT_EQ(CompleteReflectedSpectrum(&light, nullptr, nullptr).GetStatus(), 3);
    EXPECT_EQ(CompleteReflectedSpectrum(nullptr, nullptr, nullptr).GetStatus(), 3);
    EXPECT_EQ(CompleteReflectedSpectrum(nullptr, nullptr, &lamp.illuminant, 1, coordinates).GetStatus(), 3);
    EXPECT_EQ(CompleteReflectedSpectrum(&light, nullptr, nullptr, 1, coordinates).GetStatus(), 3);
}

TEST(reflectedSpectrum, xyz_ofTheIlluminantItselfHasY100) {
    for (const Standard& values : {kIlluminantA, kD65}) {
        Lamp lamp(values, "a lamp");
        const CompleteReflectedSpectrum measurement(&lamp.spectrum, nullptr, &lamp.illuminant);
        EXPECT_EQ(xyzOf(measurement, &lamp.illuminant, 0)[1], 100.0);
    }
}

TEST(reflectedSpectrum, xyz_isThatOfAnIndependentCalculation) {
    Lamp lamp(kD65, "D65");
    const TSpectrum light = spectrumOf(productOf(slope(), kD65));
    const CompleteReflectedSpectrum measurement(&light, nullptr, &lamp.illuminant);
    expectNear(xyzOf(measurement, &lamp.illuminant, 0), {40.2381563110, 40.3536297133, 21.8965570517}, 1e-9);
    expectNear(xyzOf(measurement, &lamp.illuminant, 1), {39.5141696450, 39.2205356464, 20.9318728477}, 1e-9);
}

TEST(reflectedSpectrum, xyz_isScaledBehindThePlainSums) {
    Lamp lamp(kD65, "D65");
    for (const Standard& stimulus : {productOf(slope(), kD65), irregular(8), irregular(9)}) {
        const TSpectrum light = spectrumOf(stimulus);
        const CompleteReflectedSpectrum measurement(&light, nullptr, &lamp.illuminant);
        for (unsigned observer = 0; observer < 2; ++observer) {
            const double k = 100.0 / sumOfProducts(kD65, matching(observer, 1));
            Triple expected = plainSums(stimulus, observer);
            for (double& component : expected)
                component *= k;
            EXPECT_EQ(xyzOf(measurement, &lamp.illuminant, static_cast<int>(observer)), expected);
        }
    }
}

TEST(reflectedSpectrum, xyz_underF2IsIntegratedDirectly) {
    Lamp lamp(kF2, "CIE Illuminant F2");
    const CompleteReflectedSpectrum measurement(&lamp.spectrum, nullptr, &lamp.illuminant);
    expectNear(xyzOf(measurement, &lamp.illuminant, 0), {98.8117794722, 100.0, 55.8057967090}, 1e-9);
}

TEST(reflectedSpectrum, xyz_underAnotherIlluminantAnswersMinusOneAndIsNormalisedByIt) {
    Lamp own(kD65, "D65");
    Lamp other(kIlluminantA, "CIE Illuminant A");
    const TSpectrum light = spectrumOf(productOf(slope(), kD65));
    const CompleteReflectedSpectrum measurement(&light, nullptr, &own.illuminant);
    expectNear(xyzOf(measurement, &other.illuminant, 0, -1), {39.4147838459, 39.5278943760, 21.4484991930},
               1e-9);
}

TEST(reflectedSpectrum, xyz_underATwinOfTheIlluminantAnswersMinusOne) {
    Lamp own(kD65, "D65");
    Lamp twin(kD65, "D65");
    const TSpectrum light = spectrumOf(productOf(slope(), kD65));
    const CompleteReflectedSpectrum measurement(&light, nullptr, &own.illuminant);
    EXPECT_EQ(xyzOf(measurement, &twin.illuminant, 0, -1), xyzOf(measurement, &own.illuminant, 0));
}

TEST(reflectedSpectrum, xyz_withoutAnIlluminantOfItsOwnAnswersMinusOneWithTheValues) {
    Lamp lamp(kD65, "D65");
    const TSpectrum light = spectrumOf(productOf(slope(), kD65));
    const CompleteReflectedSpectrum measurement(&light, nullptr, nullptr);
    expectNear(xyzOf(measurement, &lamp.illuminant, 0, -1), {40.2381563110, 40.3536297133, 21.8965570517},
               1e-9);
}

TEST(reflectedSpectrum, xyz_withANullArgumentAnswers3) {
    Lamp lamp(kD65, "D65");
    TObserver observer(0);
    const CompleteReflectedSpectrum measurement(&lamp.spectrum, nullptr, &lamp.illuminant);
    const CompleteReflectedSpectrum empty(nullptr, nullptr, nullptr);
    Triple xyz = {9.0, 9.0, 9.0};
    for (const CompleteReflectedSpectrum* which : {&measurement, &empty}) {
        EXPECT_EQ(which->GetXYZ(nullptr, &observer, xyz.data()), 3);
        EXPECT_EQ(which->GetXYZ(&lamp.illuminant, nullptr, xyz.data()), 3);
        EXPECT_EQ(which->GetXYZ(&lamp.illuminant, &observer, nullptr), 3);
    }
    EXPECT_EQ(xyz, (Triple{9.0, 9.0, 9.0}));
}

TEST(reflectedSpectrum, xyz_withoutSpectrumAnswers2) {
    Lamp lamp(kD65, "D65");
    const CompleteReflectedSpectrum measurement(nullptr, nullptr, &lamp.illuminant);
    EXPECT_EQ(xyzOf(measurement, &lamp.illuminant, 0, 2), (Triple{-9.0, -9.0, -9.0}));
}

TEST(reflectedSpectrum, xyz_underAnIlluminantWithoutSpectrumAnswers2) {
    Lamp lamp(kD65, "D65");
    TIlluminant empty("no such file.ill");
    ASSERT_EQ(empty.GetSpectrum(), nullptr);
    const CompleteReflectedSpectrum other(&lamp.spectrum, nullptr, &lamp.illuminant);
    EXPECT_EQ(xyzOf(other, &empty, 0, 2), (Triple{-9.0, -9.0, -9.0}));
    const CompleteReflectedSpectrum own(&lamp.spectrum, nullptr, &empty);
    EXPECT_EQ(xyzOf(own, &empty, 0, 2), (Triple{-9.0, -9.0, -9.0}));
}

TEST(reflectedSpectrum, xyz_underItsOwnBlackIlluminantIsTheObserversResult) {
    Lamp black(flat(0.0), "black");
    const TSpectrum light = spectrumOf(slope());
    const CompleteReflectedSpectrum measurement(&light, nullptr, &black.illuminant);
    // The normalising sum is 0: the observer answers 3 and leaves the plain sums.
    EXPECT_EQ(xyzOf(measurement, &black.illuminant, 0, 3), plainSums(slope(), 0));
}

TEST(reflectedSpectrum, xyz_underAnotherBlackIlluminantAnswersMinusOneAllTheSame) {
    Lamp own(kD65, "D65");
    Lamp black(flat(0.0), "black");
    const TSpectrum light = spectrumOf(slope());
    const CompleteReflectedSpectrum measurement(&light, nullptr, &own.illuminant);
    EXPECT_EQ(xyzOf(measurement, &black.illuminant, 0, -1), plainSums(slope(), 0));
}

TEST(reflectedSpectrum, lab_isTheDefaultOne) {
    Lamp own(kD65, "D65");
    Lamp other(kIlluminantA, "CIE Illuminant A");
    TObserver observer(0);
    const TSpectrum light = spectrumOf(productOf(slope(), kD65));
    const CompleteReflectedSpectrum measurement(&light, nullptr, &own.illuminant);
    const Triple white = {95.0, 100.0, 108.0};
    const Triple xyz = xyzOf(measurement, &own.illuminant, 0);
    Triple expected;
    TLabSpace(white.data()).XYZToLab(xyz.data(), expected.data());
    Triple lab = {9.0, 9.0, 9.0};
    EXPECT_EQ(measurement.GetLAB(&other.illuminant, &observer, white.data(), lab.data()), -1);
    EXPECT_EQ(lab, (Triple{9.0, 9.0, 9.0}));
    EXPECT_EQ(measurement.GetLAB(&own.illuminant, &observer, white.data(), lab.data()), 0);
    EXPECT_EQ(lab, expected);
}

TEST(reflectedSpectrum, density_isThatOfItsSpectrum) {
    Lamp lamp(kD65, "D65");
    TSpectrum spectrum = spectrumOf(slope());
    CompleteReflectedSpectrum measurement(&spectrum, nullptr, &lamp.illuminant);
    double expected[4];
    int expectedFilter = -9;
    spectrum.GetDensity(TSpectrum::kAnsiT, expected, &expectedFilter);
    double densities[4];
    int filter = 9;
    EXPECT_EQ(measurement.GetDensity(TSpectrum::kAnsiT, densities, &filter), 0);
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(densities[i], expected[i]);
    EXPECT_EQ(filter, expectedFilter);
}

// Emission spectra.

TEST(emissionSpectrum, constructor_copiesItsParts) {
    auto spectrum = std::make_unique<TSpectrum>(spectrumOf(slope()));
    const TMeasGeom geometry(6);
    const double coordinates[3] = {255.0, 0.0, 128.0};
    TEmissionSpectrum measurement(spectrum.get(), &geometry, 3, coordinates);
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_NE(measurement.GetSpectrum(), spectrum.get());
    spectrum.reset();
    EXPECT_EQ(standardOf(*measurement.GetSpectrum()), slope());
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 6U);
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{255.0, 0.0, 128.0}));
}

TEST(emissionSpectrum, constructor_withoutSpectrumHasStatus3) {
    const double coordinates[1] = {1.0};
    EXPECT_EQ(TEmissionSpectrum(nullptr, nullptr).GetStatus(), 3);
    EXPECT_EQ(TEmissionSpectrum(nullptr, nullptr, 1, coordinates).GetStatus(), 3);
    EXPECT_EQ(TEmissionSpectrum(nullptr, nullptr).GetSpectrum(), nullptr);
}

TEST(emissionSpectrum, xyz_ofOneWattEverywhereIs683HundredthsOfTheMatchingSums) {
    const TSpectrum even = spectrumOf(flat(1.0));
    const TEmissionSpectrum measurement(&even, nullptr);
    // The 36 values of the matching functions sum to 10.6823, 10.6852 and 10.6770 (2 degree), to 11.6636,
    // 11.6641 and 11.6645 (10 degree).
    expectNear(xyzOf(measurement, nullptr, 0), {6.83 * 10.6823, 6.83 * 10.6852, 6.83 * 10.6770}, 1e-11);
    expectNear(xyzOf(measurement, nullptr, 1), {6.83 * 11.6636, 6.83 * 11.6641, 6.83 * 11.6645}, 1e-11);
}

TEST(emissionSpectrum, xyz_ofASlopeIsThatOfAnIndependentCalculation) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TEmissionSpectrum measurement(&spectrum, nullptr);
    expectNear(xyzOf(measurement, nullptr, 0), {31.6285210900, 29.9485528200, 14.4488786600}, 1e-9);
}

TEST(emissionSpectrum, xyz_isScaledBehindThePlainSums) {
    for (const Standard& stimulus : {slope(), irregular(10), kD65}) {
        const TSpectrum spectrum = spectrumOf(stimulus);
        const TEmissionSpectrum measurement(&spectrum, nullptr);
        for (unsigned observer = 0; observer < 2; ++observer) {
            Triple expected = plainSums(stimulus, observer);
            for (double& component : expected)
                component *= 6.83;
            EXPECT_EQ(xyzOf(measurement, nullptr, static_cast<int>(observer)), expected);
        }
    }
}

TEST(emissionSpectrum, xyz_doesNotDependOnTheIlluminant) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TEmissionSpectrum measurement(&spectrum, nullptr);
    Lamp d65(kD65, "D65");
    Lamp f2(kF2, "CIE Illuminant F2");
    TIlluminant empty("no such file.ill");
    const Triple expected = xyzOf(measurement, nullptr, 0);
    EXPECT_EQ(xyzOf(measurement, &d65.illuminant, 0), expected);
    EXPECT_EQ(xyzOf(measurement, &f2.illuminant, 0), expected);
    EXPECT_EQ(xyzOf(measurement, &empty, 0), expected);
}

TEST(emissionSpectrum, xyz_withANullObserverOrResultAnswers3) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TEmissionSpectrum measurement(&spectrum, nullptr);
    const TEmissionSpectrum empty(nullptr, nullptr);
    TObserver observer(0);
    Triple xyz = {9.0, 9.0, 9.0};
    for (const TEmissionSpectrum* which : {&measurement, &empty}) {
        EXPECT_EQ(which->GetXYZ(nullptr, nullptr, xyz.data()), 3);
        EXPECT_EQ(which->GetXYZ(nullptr, &observer, nullptr), 3);
    }
    EXPECT_EQ(xyz, (Triple{9.0, 9.0, 9.0}));
}

TEST(emissionSpectrum, xyz_withoutSpectrumAnswers2) {
    const TEmissionSpectrum measurement(nullptr, nullptr);
    EXPECT_EQ(xyzOf(measurement, nullptr, 0, 2), (Triple{-9.0, -9.0, -9.0}));
}

TEST(emissionSpectrum, lab_isThatOfItsXyzOnTheGivenWhite) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TEmissionSpectrum measurement(&spectrum, nullptr);
    TObserver observer(0);
    const Triple white = {75.0, 80.0, 85.0};
    const Triple xyz = xyzOf(measurement, nullptr, 0);
    Triple expected;
    TLabSpace(white.data()).XYZToLab(xyz.data(), expected.data());
    Triple lab;
    EXPECT_EQ(measurement.GetLAB(nullptr, &observer, white.data(), lab.data()), 0);
    EXPECT_EQ(lab, expected);
    EXPECT_EQ(measurement.GetLAB(nullptr, &observer, nullptr, lab.data()), 3);
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, white.data(), lab.data()), 3);
}

TEST(emissionSpectrum, density_isZerosAlthoughThereIsASpectrum) {
    const TSpectrum spectrum = spectrumOf(flat(0.1));
    TEmissionSpectrum measurement(&spectrum, nullptr);
    ASSERT_NE(measurement.GetSpectrum(), nullptr);
    for (const int standard : {0, 1, 2, 3}) {
        double densities[4] = {9.0, 9.0, 9.0, 9.0};
        int count = 9;
        EXPECT_EQ(measurement.GetDensity(standard, densities, &count), 0);
        for (const double density : densities)
            EXPECT_EQ(density, 0.0);
        EXPECT_EQ(count, 0);
    }
}

TEST(emissionSpectrum, uniformSpectrum_isTheStandardSampling) {
    const TSpectrum spectrum = spectrumOf(slope());
    TEmissionSpectrum measurement(&spectrum, nullptr);
    double start = 0.0;
    double end = 0.0;
    int count = 0;
    const double* values = measurement.GetUniformSpectrum(&start, &end, &count);
    ASSERT_NE(values, nullptr);
    EXPECT_EQ(start, 380.0);
    EXPECT_EQ(end, 730.0);
    EXPECT_EQ(count, 36);
    EXPECT_EQ(values, measurement.GetSpectrum()->GetUniformSpectrum(nullptr, nullptr, nullptr));
    EXPECT_EQ(TEmissionSpectrum(nullptr, nullptr).GetUniformSpectrum(&start, &end, &count), nullptr);
}

TEST(emissionSpectrum, specData_answers0AndWritesNothing) {
    const TSpectrum spectrum = spectrumOf(slope());
    TEmissionSpectrum measurement(&spectrum, nullptr);
    double wavelengths[1] = {9.0};
    double values[1] = {9.0};
    int count = 9;
    bool flag = true;
    EXPECT_EQ(measurement.GetSpecData(wavelengths, values, &count, &flag), 0);
    EXPECT_EQ(wavelengths[0], 9.0);
    EXPECT_EQ(values[0], 9.0);
    EXPECT_EQ(count, 9);
    EXPECT_TRUE(flag);
}

TEST(emissionSpectrum, copy_isOfTheSameClassAndIndependent) {
    const TSpectrum spectrum = spectrumOf(slope());
    const TMeasGeom geometry(11);
    const double coordinates[1] = {1.0};
    auto original = std::make_unique<TEmissionSpectrum>(&spectrum, &geometry, 1, coordinates);
    const std::unique_ptr<TOneMeasurement> copy(original->Copy());
    ASSERT_NE(copy, nullptr);
    const TOneMeasurement& made = *copy;
    EXPECT_EQ(typeid(made), typeid(TEmissionSpectrum));
    EXPECT_NE(copy->GetSpectrum(), original->GetSpectrum());
    const Triple expected = xyzOf(*original, nullptr, 1);
    original.reset();
    EXPECT_EQ(copy->GetStatus(), 0);
    EXPECT_EQ(copy->GetGeometry()->GetNumber(), 11U);
    EXPECT_EQ(coordinatesOf(*copy), (std::vector<double>{1.0}));
    EXPECT_EQ(xyzOf(*copy, nullptr, 1), expected);
}

TEST(emissionSpectrum, copy_ofAnIncompleteOneIsIncomplete) {
    const TEmissionSpectrum measurement(nullptr, nullptr);
    const std::unique_ptr<TOneMeasurement> copy(measurement.Copy());
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->GetStatus(), 3);
}

} // namespace
