#include "spectral/tilluminantandobserver.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <limits>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>

#include "tests/spectral/known_spectra.h"
#include "tests/spectral/registry_scope.h"
#include "tests/support/reports.h"

#if defined(__SANITIZE_ADDRESS__)
#define QXCMS_TEST_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QXCMS_TEST_SANITIZED 1
#endif
#endif

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;

static_assert(!std::is_copy_constructible_v<TIlluminantAndObserver>);
static_assert(!std::is_copy_assignable_v<TIlluminantAndObserver>);
static_assert(!std::is_move_constructible_v<TIlluminantAndObserver>);
static_assert(!std::is_default_constructible_v<TIlluminantAndObserver>);

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TIlluminant lampOf(const Standard& values, const char* name = "lamp") {
    const TSpectrum spectrum = spectrumOf(values);
    return TIlluminant(&spectrum, name);
}

// The weighting, recomputed here in the written order.
struct Weights {
    double k = 0.0;
    Standard function[3] = {flat(0.0), flat(0.0), flat(0.0)};
    Standard weight[3] = {flat(0.0), flat(0.0), flat(0.0)};
    Standard combined = flat(0.0);
};

const double* tableOf(int observer, std::size_t c) {
    const double* const tables[2][3] = {
        {TObserver::sXSpectrum[0], TObserver::sYSpectrum[0], TObserver::sZSpectrum[0]},
        {TObserver::sXSpectrum[1], TObserver::sYSpectrum[1], TObserver::sZSpectrum[1]}};
    return tables[observer][c];
}

Standard gridFunction(int observer, std::size_t c) {
    Standard result;
    for (std::size_t k = 0; k < result.size(); ++k)
        result[k] = tableOf(observer, c)[2 * k];
    return result;
}

double sampled(const Standard& f, double wavelength) {
    const int j = static_cast<int>((wavelength - 380) / 10);
    const auto k = static_cast<std::size_t>(j);
    if (j >= 35)
        return f[35];
    return f[k] + (f[k + 1] - f[k]) * (wavelength - (380 + 10 * j)) / 10;
}

Weights weightsOf(const Standard& illuminant, int observer, int n) {
    Weights w;
    double sums[3] = {};
    for (int i = 0; i < n; ++i) {
        const double wavelength = n == 1 ? 380.0 : 380 + (i * 350.0) / (n - 1);
        const double s = sampled(illuminant, wavelength);
        for (std::size_t c = 0; c < 3; ++c) {
            w.function[c][static_cast<std::size_t>(i)] = sampled(gridFunction(observer, c), wavelength);
            w.weight[c][static_cast<std::size_t>(i)] = s * w.function[c][static_cast<std::size_t>(i)];
            sums[c] += w.weight[c][static_cast<std::size_t>(i)];
        }
    }
    w.k = 100 / sums[1];
    for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i)
        w.combined[i] = w.weight[0][i] / sums[0] + w.weight[1][i] / sums[1] + w.weight[2][i] / sums[2];
    return w;
}

std::array<double, 3> integral(const Weights& w, const Standard& values, int n) {
    std::array<double, 3> xyz;
    for (std::size_t c = 0; c < 3; ++c) {
        double sum = 0.0;
        for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i)
            sum += values[i] * w.weight[c][i];
        xyz[c] = w.k * sum;
    }
    return xyz;
}

struct Xyz {
    int answer;
    double value[3];
};

Xyz ofValues(const TIlluminantAndObserver& weighting, const Standard& values, int count) {
    Xyz xyz = {-7, {7, 7, 7}};
    xyz.answer = weighting.GetXYZ(values.data(), xyz.value, count);
    return xyz;
}

Xyz ofSpectrum(const TIlluminantAndObserver& weighting, const Standard& values, int count) {
    const TSpectrum spectrum = spectrumOf(values);
    Xyz xyz = {-7, {7, 7, 7}};
    xyz.answer = weighting.GetXYZ(&spectrum, xyz.value, count);
    return xyz;
}

Xyz whiteOf(const TIlluminantAndObserver& weighting) {
    Xyz xyz = {-7, {7, 7, 7}};
    xyz.answer = weighting.GetXYZWhite(xyz.value);
    return xyz;
}

// ASTM tables.

// ASTM E308 table 6, 1931 observer, 10 nm.
TEST(weighting, astmTable_holdsThePublishedRows) {
    struct Row {
        std::size_t lamp;
        int wavelength;
        double x, y, z;
    };
    const Row rows[] = {
        {0, 380, 0.001, 0.000, 0.004},    {0, 430, 2.994, 0.139, 14.707}, {0, 540, 2.917, 9.247, 0.176},
        {0, 600, 12.110, 7.113, 0.009},   {0, 730, 0.001, 0.000, 0.000},  {1, 390, -0.004, 0.000, -0.021},
        {1, 430, 4.113, 0.186, 20.179},   {1, 550, 5.727, 13.711, 0.131}, {1, 730, 0.002, 0.001, 0.000},
        {2, 420, -0.205, -0.014, -1.044}, {2, 440, 4.264, 0.251, 21.231}, {2, 540, 9.613, 29.254, 0.535},
        {2, 610, 29.903, 14.812, 0.010},  {2, 730, 0.000, 0.000, 0.000}};
    for (const Row& row : rows) {
        EXPECT_EQ(TIlluminantAndObserver::sASTMtable6[row.lamp][0][slotOf(row.wavelength)], row.x);
        EXPECT_EQ(TIlluminantAndObserver::sASTMtable6[row.lamp][1][slotOf(row.wavelength)], row.y);
        EXPECT_EQ(TIlluminantAndObserver::sASTMtable6[row.lamp][2][slotOf(row.wavelength)], row.z);
    }
}

TEST(weighting, astmTable_hasThePublishedSums) {
    const double sums[3][3] = {
        {99.188, 100.004, 67.395}, {95.041, 100.002, 108.748}, {100.964, 100.005, 64.354}};
    for (std::size_t lamp = 0; lamp < 3; ++lamp) {
        for (std::size_t c = 0; c < 3; ++c) {
            double sum = 0.0;
            for (const double weight : TIlluminantAndObserver::sASTMtable6[lamp][c])
                sum += weight;
            EXPECT_NEAR(sum, sums[lamp][c], 1e-9) << lamp << ' ' << c;
        }
    }
}

TEST(weighting, lampsWithTables_areFoundIgnoringCase) {
    const TObserver observer(0);
    struct Name {
        const char* name;
        int index;
    };
    for (const Name& row :
         {Name{"CIE Illuminant F2", 0}, Name{"cie illuminant f2", 0}, Name{"CIE ILLUMINANT F2", 0},
          Name{"CIE Illuminant F7", 1}, Name{"cie illuminant f7", 1}, Name{"CIE Illuminant F11", 2},
          Name{"Cie illuminant F11", 2}}) {
        const TIlluminant lamp = lampOf(flat(1.0), row.name);
        const TIlluminantAndObserver weighting(&lamp, &observer, 36);
        int index = -7;
        EXPECT_EQ(weighting.GetStatus(), 0) << row.name;
        EXPECT_EQ(weighting.IlluminantNeedsASTM308Tables(&index), 1) << row.name;
        EXPECT_EQ(index, row.index) << row.name;
        EXPECT_EQ(weighting.IlluminantNeedsASTM308Tables(nullptr), 1) << row.name;
    }
}

// The name alone decides, also for a weighting that could not be made.
TEST(weighting, lampWithATableAndTooManyPoints_stillAsksForIt) {
    const TObserver observer(0);
    struct Name {
        const char* name;
        int index;
    };
    for (const Name& row :
         {Name{"CIE Illuminant F2", 0}, Name{"CIE Illuminant F7", 1}, Name{"CIE Illuminant F11", 2}}) {
        const TIlluminant lamp = lampOf(flat(1.0), row.name);
        const TIlluminantAndObserver tooMany(&lamp, &observer, 37), unobserved(&lamp, nullptr, 36);
        for (const TIlluminantAndObserver* weighting : {&tooMany, &unobserved}) {
            ASSERT_EQ(weighting->GetStatus(), 2) << row.name;
            int index = -7;
            EXPECT_EQ(weighting->IlluminantNeedsASTM308Tables(&index), 1) << row.name;
            EXPECT_EQ(index, row.index) << row.name;
        }
    }
}

TEST(weighting, lampWithoutATableAndTooManyPoints_asksForNone) {
    const TObserver observer(0);
    const TIlluminant lamp = lampOf(kD65);
    const TIlluminantAndObserver weighting(&lamp, &observer, 37);
    ASSERT_EQ(weighting.GetStatus(), 2);
    int index = -7;
    EXPECT_EQ(weighting.IlluminantNeedsASTM308Tables(&index), 0);
    EXPECT_EQ(index, -1);
}

TEST(weighting, otherLamps_needNoTables) {
    const TObserver observer(0);
    for (const char* name : {"F2", "CIE Illuminant F1", "CIE Illuminant F22", "CIE Illuminant F",
                             "CIE Illuminant F2 ", "CIE Illuminant F12", "D65", ""}) {
        const TIlluminant lamp = lampOf(flat(1.0), name);
        const TIlluminantAndObserver weighting(&lamp, &observer, 36);
        int index = -7;
        EXPECT_EQ(weighting.IlluminantNeedsASTM308Tables(&index), 0) << name;
        EXPECT_EQ(index, -1) << name;
        EXPECT_EQ(weighting.IlluminantNeedsASTM308Tables(nullptr), 0) << name;
    }
}

TEST(weighting, f7InLowerCase_hasTheWhiteOfItsTable) {
    const TIlluminant lamp = lampOf(flat(1.0), "cie illuminant f7");
    const TObserver observer(0);
    const Xyz white = whiteOf(TIlluminantAndObserver(&lamp, &observer, 36));
    EXPECT_EQ(white.answer, 0);
    EXPECT_NEAR(white.value[0], 95.039099, 5.1e-7); // printed 95.041 with Y 100.002
    EXPECT_NEAR(white.value[1], 100.0, 1e-12);
    EXPECT_NEAR(white.value[2], 108.745825, 5.1e-7); // printed 108.747
}

TEST(weighting, f2AndF11_haveTheWhitesOfTheirTables) {
    const TObserver observer(0);
    const TIlluminant f2 = lampOf(flat(1.0), "CIE Illuminant F2"),
                      f11 = lampOf(flat(1.0), "CIE Illuminant F11");
    Xyz white = whiteOf(TIlluminantAndObserver(&f2, &observer, 36));
    EXPECT_NEAR(white.value[0], 99.184033, 5.1e-7);
    EXPECT_NEAR(white.value[2], 67.392304, 5.1e-7);
    white = whiteOf(TIlluminantAndObserver(&f11, &observer, 36));
    EXPECT_NEAR(white.value[0], 100.958952, 5.1e-7);
    EXPECT_NEAR(white.value[2], 64.350782, 5.1e-7);
}

TEST(weighting, tableMode_isExactInTheWrittenOrder) {
    const char* const names[] = {"CIE Illuminant F2", "CIE Illuminant F7", "CIE Illuminant F11"};
    const TObserver observer(0);
    const Standard sample = irregular(41);
    for (std::size_t lamp = 0; lamp < 3; ++lamp) {
        const auto& table = TIlluminantAndObserver::sASTMtable6[lamp];
        double ySum = 0.0;
        for (const double weight : table[1])
            ySum += weight;
        const double k = 100 / ySum;
        const TIlluminant illuminant = lampOf(flat(1.0), names[lamp]);
        const TIlluminantAndObserver weighting(&illuminant, &observer, 36);
        EXPECT_EQ(weighting.GetFactor(), k);
        const Xyz colour = ofSpectrum(weighting, sample, 36), white = whiteOf(weighting);
        EXPECT_EQ(colour.answer, 0);
        for (std::size_t c = 0; c < 3; ++c) {
            double sum = 0.0, whiteSum = 0.0;
            for (std::size_t i = 0; i < 36; ++i) {
                sum += sample[i] * table[c][i];
                whiteSum += table[c][i];
            }
            EXPECT_EQ(colour.value[c], k * sum) << lamp << ' ' << c;
            EXPECT_EQ(white.value[c], k * whiteSum) << lamp << ' ' << c;
        }
    }
}

// The tables of the 2 degree observer serve the 10 degree one too.
TEST(weighting, tableMode_doesNotConsultTheObserver) {
    const TIlluminant lamp = lampOf(flat(1.0), "CIE Illuminant F11");
    const TObserver two(0), ten(1);
    const TIlluminantAndObserver first(&lamp, &two, 36), second(&lamp, &ten, 36);
    EXPECT_EQ(second.GetStatus(), 0);
    EXPECT_EQ(second.GetObserver()->GetNumber(), 1u);
    EXPECT_THAT(whiteOf(second).value, ElementsAreArray(whiteOf(first).value));
    EXPECT_THAT(ofSpectrum(second, ramp(), 36).value, ElementsAreArray(ofSpectrum(first, ramp(), 36).value));
}

TEST(weighting, tableMode_doesNotConsultTheSpectrum) {
    const TIlluminant lamp = lampOf(flat(1.0), "CIE Illuminant F2"),
                      dark = lampOf(flat(0.0), "CIE Illuminant F2");
    const TObserver observer(0);
    const TIlluminantAndObserver first(&lamp, &observer, 36), second(&dark, &observer, 36);
    EXPECT_EQ(second.GetStatus(), 0);
    EXPECT_THAT(whiteOf(second).value, ElementsAreArray(whiteOf(first).value));
}

TEST(weighting, tableModeWithFewerPoints_sumsTheFirstTableWeights) {
    const TIlluminant lamp = lampOf(flat(1.0), "CIE Illuminant F7");
    const TObserver observer(0);
    const TIlluminantAndObserver full(&lamp, &observer, 36);
    const Standard sample = irregular(42);
    for (const int n : {0, 1, 8, 20}) {
        const TIlluminantAndObserver weighting(&lamp, &observer, n);
        EXPECT_EQ(weighting.GetStatus(), 0) << n;
        EXPECT_EQ(weighting.GetNumber(), n);
        EXPECT_EQ(weighting.GetFactor(), full.GetFactor()) << n;
        const Xyz colour = ofSpectrum(weighting, sample, n);
        EXPECT_EQ(colour.answer, 0) << n;
        for (std::size_t c = 0; c < 3; ++c) {
            double sum = 0.0;
            for (std::size_t i = 0; i < static_cast<std::size_t>(n); ++i)
                sum += sample[i] * TIlluminantAndObserver::sASTMtable6[1][c][i];
            EXPECT_EQ(colour.value[c], full.GetFactor() * sum) << n << ' ' << c;
        }
        EXPECT_THAT(whiteOf(weighting).value, ElementsAreArray(whiteOf(full).value)) << n;
        EXPECT_EQ(ofSpectrum(weighting, sample, 36).answer, 2) << n;
    }
}

TEST(weighting, tableMode_hasDirectWeightsOfZero) {
    const TIlluminant lamp = lampOf(flat(1.0), "CIE Illuminant F2");
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    const Xyz colour = ofValues(weighting, flat(1.0), 36);
    EXPECT_EQ(colour.answer, 0);
    EXPECT_THAT(colour.value, Each(0.0));
    double xyz[3] = {1, 2, 3};
    EXPECT_EQ(weighting.GetXYZIncrement(5.0, 0, 36, xyz), 0);
    EXPECT_EQ(weighting.GetXYZIncrement(5.0, 20, xyz), 0);
    EXPECT_THAT(xyz, ElementsAre(1, 2, 3));
    for (int i = 0; i < 36; ++i)
        EXPECT_EQ(weighting.GetCombinedWeights()[i], 0.0);
}

// Construction.

TEST(weighting, illuminantAndObserver_areHeldByPointerAndByCopy) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(1);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    EXPECT_EQ(weighting.GetStatus(), 0);
    EXPECT_EQ(weighting.GetNumber(), 36);
    EXPECT_EQ(weighting.GetIlluminant(), &lamp);
    ASSERT_NE(weighting.GetObserver(), nullptr);
    EXPECT_NE(weighting.GetObserver(), &observer);
    EXPECT_TRUE(*weighting.GetObserver() == observer);
}

TEST(weighting, nullIlluminantOrObserver_givesStatus2AndZeros) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver noLamp(static_cast<const TIlluminant*>(nullptr), &observer, 36);
    const TIlluminantAndObserver noObserver(&lamp, nullptr, 36);
    const TIlluminantAndObserver nothing(static_cast<const TIlluminant*>(nullptr), nullptr, 36);
    for (const TIlluminantAndObserver* weighting : {&noLamp, &noObserver, &nothing}) {
        EXPECT_EQ(weighting->GetStatus(), 2);
        EXPECT_EQ(whiteOf(*weighting).answer, 0);
        EXPECT_THAT(whiteOf(*weighting).value, Each(0.0));
        EXPECT_EQ(weighting->GetFactor(), 0.0);
    }
    int index = -7;
    EXPECT_EQ(noLamp.IlluminantNeedsASTM308Tables(&index), 0);
    EXPECT_EQ(index, -1);
}

TEST(weighting, whiteOfABadWeighting_isZerosWithAnswer0) {
    const RegistryScope registry;
    const ReportCollector reports;
    registry.add("D65", kD65);
    const TIlluminant lamp = lampOf(kD65), table = lampOf(kD65, "CIE Illuminant F2"),
                      empty(static_cast<const TSpectrum*>(nullptr), "D65");
    const TObserver observer(0);
    const TIlluminantAndObserver noLamp(static_cast<const TIlluminant*>(nullptr), &observer, 36);
    const TIlluminantAndObserver noObserver(&lamp, nullptr, 36), noSpectrum(&empty, &observer, 36);
    const TIlluminantAndObserver tooMany(&lamp, &observer, 37), tooFew(&lamp, &observer, -1);
    const TIlluminantAndObserver tooManyForTheTable(&table, &observer, 37);
    const TIlluminantAndObserver unknownLamp("unknown", "2 degree", 36);
    const TIlluminantAndObserver unknownObserver("D65", "unknown", 36);
    for (const TIlluminantAndObserver* weighting : {&noLamp, &noObserver, &noSpectrum, &tooMany, &tooFew,
                                                    &tooManyForTheTable, &unknownLamp, &unknownObserver}) {
        EXPECT_EQ(weighting->GetStatus(), 2);
        const Xyz white = whiteOf(*weighting);
        EXPECT_EQ(white.answer, 0);
        EXPECT_THAT(white.value, Each(0.0));
    }
}

// A copy of an observer starts with status 0, so an unknown one is accepted and works as number 0.
TEST(weighting, unknownObserverObject_worksAsThe2DegreeOne) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver unknown("unknown"), two(0);
    ASSERT_EQ(unknown.GetStatus(), 2);
    const TIlluminantAndObserver weighting(&lamp, &unknown, 36), expected(&lamp, &two, 36);
    EXPECT_EQ(weighting.GetStatus(), 0);
    EXPECT_THAT(ofSpectrum(weighting, ramp(), 36).value,
                ElementsAreArray(ofSpectrum(expected, ramp(), 36).value));
}

TEST(weighting, illuminantWithoutASpectrum_givesStatus2AndZeros) {
    const TIlluminant empty(static_cast<const TSpectrum*>(nullptr), "D65");
    ASSERT_EQ(empty.GetSpectrum(), nullptr);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&empty, &observer, 36);
    EXPECT_EQ(weighting.GetStatus(), 2);
    EXPECT_THAT(whiteOf(weighting).value, Each(0.0));
    EXPECT_THAT(ofSpectrum(weighting, ramp(), weighting.GetNumber()).value, Each(0.0));
}

TEST(weighting, pointsAbove36OrBelow0_giveStatus2AndZeros) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    for (const int n : {37, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        const TIlluminantAndObserver weighting(&lamp, &observer, n);
        EXPECT_EQ(weighting.GetStatus(), 2) << n;
        EXPECT_EQ(weighting.GetNumber(), 0) << n;
        EXPECT_EQ(weighting.GetFactor(), 0.0) << n;
        const Xyz white = whiteOf(weighting);
        EXPECT_EQ(white.answer, 0) << n;
        EXPECT_THAT(white.value, Each(0.0)) << n;
        EXPECT_THAT(ofValues(weighting, flat(1.0), 0).value, Each(0.0)) << n;
        EXPECT_THAT(ofSpectrum(weighting, flat(1.0), 0).value, Each(0.0)) << n;
        EXPECT_EQ(ofSpectrum(weighting, flat(1.0), 36).answer, 2) << n;
    }
}

TEST(weighting, pointsAreRefused_beforeTheLampWithATableIsFound) {
    const TIlluminant lamp = lampOf(flat(1.0), "CIE Illuminant F2");
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 37);
    EXPECT_EQ(weighting.GetStatus(), 2);
    EXPECT_THAT(whiteOf(weighting).value, Each(0.0));
}

// Names.

const Report kNotAvailable = {"No Illuminant with this name available", "tilluminantfactoryholder", 223};

TEST(weightingByName, registeredNames_giveTheWeightingOfTheObjects) {
    const RegistryScope registry;
    const TIlluminant* const lamp = registry.add("D65", kD65);
    const TObserver observer(1);
    const TIlluminantAndObserver byName("d65", "10 degree", 36), byObject(lamp, &observer, 36);
    EXPECT_EQ(byName.GetStatus(), 0);
    EXPECT_EQ(byName.GetIlluminant(), lamp);
    EXPECT_EQ(byName.GetObserver()->GetNumber(), 1u);
    EXPECT_EQ(byName.GetFactor(), byObject.GetFactor());
    EXPECT_THAT(whiteOf(byName).value, ElementsAreArray(whiteOf(byObject).value));
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 1u);
}

TEST(weightingByName, unknownIlluminant_givesStatus2AndZerosWithAReport) {
    const RegistryScope registry;
    const ReportCollector reports;
    const TIlluminantAndObserver weighting("D65", "2 degree", 36);
    EXPECT_EQ(weighting.GetStatus(), 2);
    EXPECT_THAT(whiteOf(weighting).value, Each(0.0));
    EXPECT_THAT(reports.errors, ElementsAre(kNotAvailable));
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 1u);
}

TEST(weightingByName, unknownObserver_givesStatus2AndZerosWithoutAReport) {
    const RegistryScope registry;
    registry.add("D65", kD65);
    const ReportCollector reports;
    for (const char* name : {"2 Degree", "ANSI A", ""}) {
        const TIlluminantAndObserver weighting("D65", name, 36);
        EXPECT_EQ(weighting.GetStatus(), 2) << name;
        EXPECT_THAT(whiteOf(weighting).value, Each(0.0)) << name;
    }
    EXPECT_TRUE(reports.errors.empty());
}

TEST(weightingByName, unknownObserverOfALampWithATable_givesStatus2) {
    const RegistryScope registry;
    registry.add("CIE Illuminant F2", flat(1.0));
    EXPECT_EQ(TIlluminantAndObserver("CIE Illuminant F2", "unknown", 36).GetStatus(), 2);
}

TEST(weightingByName, nullNames_giveStatus2) {
    const RegistryScope registry;
    registry.add("D65", kD65);
    const ReportCollector reports;
    const char* const none = nullptr;
    EXPECT_EQ(TIlluminantAndObserver("D65", none, 36).GetStatus(), 2);
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_EQ(TIlluminantAndObserver(none, "2 degree", 36).GetStatus(), 2);
    EXPECT_THAT(reports.errors,
                ElementsAre(Report{"Specify illuminant name", "tilluminantfactoryholder", 193}));
    EXPECT_EQ(TIlluminantAndObserver(none, none, 36).GetStatus(), 2);
}

TEST(weightingByName, withoutAnybodyHoldingTheRegistry_givesStatus2AndLeavesNone) {
    ASSERT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    const ReportCollector reports;
    EXPECT_EQ(TIlluminantAndObserver("D65", "2 degree", 36).GetStatus(), 2);
    EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 0u);
}

TEST(weightingByName, badNumberOfPoints_givesStatus2) {
    const RegistryScope registry;
    registry.add("D65", kD65);
    EXPECT_EQ(TIlluminantAndObserver("D65", "2 degree", 37).GetStatus(), 2);
    EXPECT_EQ(TIlluminantAndObserver("D65", "2 degree", -1).GetStatus(), 2);
    EXPECT_EQ(TIlluminantAndObserver("D65", "2 degree", 8).GetStatus(), 0);
}

// Direct mode.

TEST(weighting, d65With36Points_givesY100ForTheWhiteAndForAllOnes) {
    const TIlluminant lamp = lampOf(kD65, "D65");
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    const Xyz white = whiteOf(weighting), ones = ofSpectrum(weighting, flat(1.0), 36);
    EXPECT_EQ(white.answer, 0);
    EXPECT_EQ(white.value[1], 100.0);
    EXPECT_EQ(ones.answer, 0);
    EXPECT_EQ(ones.value[1], 100.0);
    EXPECT_NEAR(ones.value[0], white.value[0], 1e-12);
    EXPECT_NEAR(ones.value[2], white.value[2], 1e-12);
}

// Sums over the published tables at 10 nm, worked out apart from this library.
TEST(weighting, whites_areThoseOfTheTables) {
    struct White {
        int observer;
        const Standard* illuminant;
        double x, z;
    };
    const White whites[] = {
        {0, &kIlluminantA, 109.815494, 35.548684}, {1, &kIlluminantA, 111.148709, 35.198034},
        {0, &kIlluminantC, 98.040060, 118.105605}, {1, &kIlluminantC, 97.294183, 116.139289},
        {0, &kD50, 96.384116, 82.453534},          {1, &kD50, 96.723422, 81.462330},
        {0, &kD55, 95.645187, 92.076526},          {1, &kD55, 95.805610, 90.969668},
        {0, &kD65, 95.012064, 108.817147},         {1, &kD65, 94.822121, 107.383354},
        {0, &kD75, 94.938921, 122.549573},         {1, &kD75, 94.429756, 120.711837}};
    for (const White& row : whites) {
        const TIlluminant lamp = lampOf(*row.illuminant);
        const TObserver observer(row.observer);
        const Xyz white = whiteOf(TIlluminantAndObserver(&lamp, &observer, 36));
        EXPECT_NEAR(white.value[0], row.x, 5.1e-7);
        EXPECT_NEAR(white.value[1], 100.0, 1e-12);
        EXPECT_NEAR(white.value[2], row.z, 5.1e-7);
    }
}

// Reflectance 0 at 380 nm rising evenly to 1 at 730 nm; worked out apart from this library.
TEST(weighting, risingReflectance_hasItsColour) {
    struct Row {
        const Standard* illuminant;
        int observer;
        double xyz[3];
    };
    const Row rows[] = {{&kD65, 0, {50.696504457, 50.505185305, 23.508142411}},
                        {&kD50, 1, {53.327696258, 50.178074549, 17.322418011}},
                        {&kIlluminantA, 0, {67.610969907, 54.917543761, 8.325720559}}};
    for (const Row& row : rows) {
        const TIlluminant lamp = lampOf(*row.illuminant);
        const TObserver observer(row.observer);
        const Xyz colour = ofSpectrum(TIlluminantAndObserver(&lamp, &observer, 36), ramp(), 36);
        for (std::size_t c = 0; c < 3; ++c)
            EXPECT_NEAR(colour.value[c], row.xyz[c], 1e-9) << c;
    }
}

// The points are 50 nm apart; worked out apart from this library.
TEST(weighting, eightPoints_areSampledEvery50Nanometres) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 8);
    Standard rising = flat(0.0);
    for (std::size_t i = 0; i < 8; ++i)
        rising[i] = static_cast<double>(i) / 7;
    const Xyz colour = ofValues(weighting, rising, 8);
    EXPECT_EQ(colour.answer, 0);
    EXPECT_NEAR(colour.value[0], 48.879065691, 1e-9);
    EXPECT_NEAR(colour.value[1], 50.337940754, 1e-9);
    EXPECT_NEAR(colour.value[2], 21.283767055, 1e-9);
}

TEST(weighting, fifteenPoints_areSampledBetweenTheGridWavelengths) {
    const TIlluminant lamp = lampOf(kD50);
    const TObserver observer(1);
    const TIlluminantAndObserver weighting(&lamp, &observer, 15);
    Standard falling = flat(0.0);
    for (std::size_t i = 0; i < 15; ++i)
        falling[i] = 1 - static_cast<double>(i) / 14;
    const Xyz colour = ofValues(weighting, falling, 15);
    EXPECT_NEAR(colour.value[0], 42.914460419, 1e-9);
    EXPECT_NEAR(colour.value[1], 49.838470123, 1e-9);
    EXPECT_NEAR(colour.value[2], 61.836714170, 1e-9);
}

TEST(weighting, everyNumberOfPoints_isExactInTheWrittenOrder) {
    const Standard sample = irregular(43);
    for (const int observerNumber : {0, 1}) {
        for (int n = 2; n <= 36; ++n) {
            const Standard illuminant = irregular(static_cast<unsigned>(300 + n));
            const TIlluminant lamp = lampOf(illuminant);
            const TObserver observer(observerNumber);
            const TIlluminantAndObserver weighting(&lamp, &observer, n);
            const Weights expected = weightsOf(illuminant, observerNumber, n);
            ASSERT_EQ(weighting.GetStatus(), 0) << n;
            EXPECT_EQ(weighting.GetNumber(), n);
            EXPECT_EQ(weighting.GetFactor(), expected.k) << n;
            EXPECT_THAT(ofValues(weighting, sample, n).value, ElementsAreArray(integral(expected, sample, n)))
                << n;
            EXPECT_THAT(ofSpectrum(weighting, sample, n).value,
                        ElementsAreArray(integral(expected, sample, n)))
                << n;
            for (std::size_t i = 0; i < 36; ++i)
                EXPECT_EQ(weighting.GetCombinedWeights()[i], expected.combined[i]) << n << ' ' << i;
        }
    }
}

// On an illuminant of 1.0 everywhere the weights are the observer functions themselves.
TEST(weighting, observerFunctions_areTheStandardSamplingOfTheObserversSpectraBitForBit) {
    const TIlluminant lamp = lampOf(flat(1.0));
    for (const int number : {0, 1}) {
        TObserver observer(number);
        const TIlluminantAndObserver weighting(&lamp, &observer, 36);
        const double* const functions[] = {
            observer.GetXSensitivity()->GetUniformSpectrum(nullptr, nullptr, nullptr),
            observer.GetYSensitivity()->GetUniformSpectrum(nullptr, nullptr, nullptr),
            observer.GetZSensitivity()->GetUniformSpectrum(nullptr, nullptr, nullptr)};
        double ySum = 0.0;
        for (int i = 0; i < 36; ++i)
            ySum += functions[1][i];
        EXPECT_EQ(weighting.GetFactor(), 100 / ySum);
        for (std::size_t i = 0; i < 36; ++i) {
            Standard unit = flat(0.0);
            unit[i] = 1.0;
            const Xyz byValues = ofValues(weighting, unit, 36), bySpectrum = ofSpectrum(weighting, unit, 36);
            for (std::size_t c = 0; c < 3; ++c) {
                EXPECT_EQ(byValues.value[c], weighting.GetFactor() * functions[c][i]) << i;
                EXPECT_EQ(bySpectrum.value[c], weighting.GetFactor() * functions[c][i]) << i;
            }
        }
    }
}

TEST(weighting, white_doesNotDependOnTheNumberOfPoints) {
    const TIlluminant lamp = lampOf(irregular(44));
    TObserver observer(1);
    double expected[3];
    ASSERT_EQ(observer.GetXYZ(lamp.GetSpectrum(), lamp.GetSpectrum(), expected), 0);
    for (const int n : {0, 1, 2, 8, 35, 36})
        EXPECT_THAT(whiteOf(TIlluminantAndObserver(&lamp, &observer, n)).value, ElementsAreArray(expected))
            << n;
}

TEST(weighting, perfectWhite_hasY100WhateverTheNumberOfPoints) {
    const TIlluminant lamp = lampOf(kIlluminantC);
    const TObserver observer(0);
    for (int n = 2; n <= 36; ++n)
        EXPECT_NEAR(ofValues(TIlluminantAndObserver(&lamp, &observer, n), flat(1.0), n).value[1], 100.0,
                    1e-12);
}

TEST(weighting, noPoints_giveAnInfiniteFactor) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 0);
    EXPECT_EQ(weighting.GetStatus(), 0);
    EXPECT_EQ(weighting.GetNumber(), 0);
    EXPECT_EQ(weighting.GetFactor(), kInfinity);
    const Xyz colour = ofValues(weighting, flat(1.0), 0);
    EXPECT_EQ(colour.answer, 0);
    EXPECT_TRUE(std::isnan(colour.value[0])); // infinity times the empty sum
    EXPECT_TRUE(std::isnan(ofSpectrum(weighting, flat(1.0), 0).value[2]));
    EXPECT_EQ(whiteOf(weighting).value[1], 100.0);
    EXPECT_EQ(ofValues(weighting, flat(1.0), 36).answer, 2);
}

// y is 0.0000 at 380 nm in the four-decimal tables, so the factor is infinite there too.
TEST(weighting, onePoint_is380Nanometres) {
    const TObserver observer(0);
    const TIlluminant lamp = lampOf(kD65);
    const TIlluminantAndObserver weighting(&lamp, &observer, 1);
    EXPECT_EQ(weighting.GetStatus(), 0);
    EXPECT_EQ(weighting.GetNumber(), 1);
    EXPECT_EQ(weighting.GetFactor(), kInfinity);
    const Xyz colour = ofValues(weighting, flat(1.0), 1);
    EXPECT_EQ(colour.answer, 0);
    EXPECT_EQ(colour.value[0], kInfinity); // x is 0.0014
    EXPECT_TRUE(std::isnan(colour.value[1]));
    EXPECT_EQ(colour.value[2], kInfinity); // z is 0.0065
    // Without light at 380 nm nothing is left; with light there alone everything is.
    Standard without = kD65, alone = flat(0.0);
    without[0] = 0.0;
    alone[0] = 1.0;
    const TIlluminant lampWithout = lampOf(without), lampAlone = lampOf(alone);
    EXPECT_TRUE(
        std::isnan(ofValues(TIlluminantAndObserver(&lampWithout, &observer, 1), flat(1.0), 1).value[0]));
    EXPECT_EQ(ofValues(TIlluminantAndObserver(&lampAlone, &observer, 1), flat(1.0), 1).value[0], kInfinity);
}

TEST(weighting, darkIlluminant_givesStatus0AndAWhiteOfPlainSums) {
    const TIlluminant dark = lampOf(flat(0.0));
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&dark, &observer, 36);
    EXPECT_EQ(weighting.GetStatus(), 0);
    EXPECT_EQ(weighting.GetFactor(), kInfinity);
    const Xyz white = whiteOf(weighting);
    EXPECT_EQ(white.answer, 0);
    EXPECT_THAT(white.value, Each(0.0));
}

// Pairing by index: with fewer points the first standard values are used as they stand.
TEST(weighting, spectrumWithFewerPoints_isPairedByIndex) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 8);
    const Xyz colour = ofSpectrum(weighting, ramp(), 8);
    EXPECT_EQ(colour.answer, 0);
    EXPECT_NEAR(colour.value[0], 9.775813138, 1e-9);
    EXPECT_NEAR(colour.value[1], 10.067588151, 1e-9);
    EXPECT_NEAR(colour.value[2], 4.256753411, 1e-9);
    EXPECT_THAT(ofValues(weighting, ramp(), 8).value, ElementsAreArray(colour.value));
}

TEST(weighting, nonUniformSpectrum_isReadThroughItsStandardValues) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    const double wavelengths[] = {380.0, 730.0};
    const double values[] = {0.25, 0.25};
    const TSpectrum grey(wavelengths, 2, values);
    double xyz[3];
    EXPECT_EQ(weighting.GetXYZ(&grey, xyz, 36), 0);
    EXPECT_NEAR(xyz[1], 25.0, 1e-12);
}

TEST(weighting, anotherCount_answers2AndLeavesXyzUntouched) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 20);
    for (const int count : {0, 19, 21, 36, -20}) {
        for (const Xyz& colour :
             {ofValues(weighting, flat(1.0), count), ofSpectrum(weighting, flat(1.0), count)}) {
            EXPECT_EQ(colour.answer, 2) << count;
            EXPECT_THAT(colour.value, Each(7.0)) << count;
        }
    }
}

TEST(weighting, values_mayStandWhereTheResultGoes) {
    const TIlluminant lamp = lampOf(irregular(61));
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    const Standard sample = irregular(62);
    Standard inPlace = sample;
    EXPECT_EQ(weighting.GetXYZ(inPlace.data(), inPlace.data(), 36), 0);
    const auto expected = integral(weightsOf(irregular(61), 0, 36), sample, 36);
    EXPECT_THAT(std::vector<double>(inPlace.begin(), inPlace.begin() + 3), ElementsAreArray(expected));
}

TEST(weighting, nullArguments_answer2) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    const TSpectrum spectrum = spectrumOf(ramp());
    double xyz[3] = {7, 7, 7};
    EXPECT_EQ(weighting.GetXYZ(static_cast<const double*>(nullptr), xyz, 36), 2);
    EXPECT_EQ(weighting.GetXYZ(static_cast<const TSpectrum*>(nullptr), xyz, 36), 2);
    EXPECT_EQ(weighting.GetXYZ(ramp().data(), nullptr, 36), 2);
    EXPECT_EQ(weighting.GetXYZ(&spectrum, nullptr, 36), 2);
    EXPECT_THAT(xyz, Each(7.0));
}

TEST(weighting, nullResults_areHarmless) {
    const TIlluminant direct = lampOf(kD65), table = lampOf(flat(1.0), "CIE Illuminant F2");
    const TObserver observer(0);
    for (const TIlluminant* lamp : {&direct, &table}) {
        const TIlluminantAndObserver weighting(lamp, &observer, 36);
        EXPECT_EQ(weighting.GetXYZWhite(nullptr), 0);
        EXPECT_EQ(weighting.GetXYZIncrement(1.0, 0, 36, nullptr), 0);
        EXPECT_EQ(weighting.GetXYZIncrement(1.0, 0, nullptr), 0);
    }
}

// Increments.

TEST(weighting, increment_addsAmountTimesFactorTimesWeight) {
    const Standard illuminant = irregular(45);
    const TIlluminant lamp = lampOf(illuminant);
    const TObserver observer(1);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    const Weights expected = weightsOf(illuminant, 1, 36);
    for (const int index : {0, 17, 35}) {
        double xyz[3] = {10.0, 20.0, 30.0};
        EXPECT_EQ(weighting.GetXYZIncrement(0.3, index, xyz), 0);
        for (std::size_t c = 0; c < 3; ++c)
            EXPECT_EQ(xyz[c], 10.0 * static_cast<double>(c + 1) +
                                  0.3 * expected.k * expected.weight[c][static_cast<std::size_t>(index)]);
    }
}

// From zeros nothing hides the last digit of amount * k * weight, formed from left to right.
TEST(weighting, incrementOnZeros_isExactInTheWrittenOrder) {
    const Standard illuminant = irregular(48);
    const TIlluminant lamp = lampOf(illuminant);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    const Weights expected = weightsOf(illuminant, 0, 36);
    for (int index = 0; index < 36; ++index) {
        double single[3] = {}, range[3] = {};
        EXPECT_EQ(weighting.GetXYZIncrement(0.3, index, single), 0);
        EXPECT_EQ(weighting.GetXYZIncrement(0.3, index, index + 1, range), 0);
        for (std::size_t c = 0; c < 3; ++c) {
            const double product = 0.3 * expected.k * expected.weight[c][static_cast<std::size_t>(index)];
            EXPECT_EQ(single[c], product) << index << ' ' << c;
            EXPECT_EQ(range[c], product) << index << ' ' << c;
        }
    }
}

TEST(weighting, incrementOverARange_addsPointByPointUpToTheLastOne) {
    const Standard illuminant = irregular(46);
    const TIlluminant lamp = lampOf(illuminant);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    const Weights expected = weightsOf(illuminant, 0, 36);
    double xyz[3] = {1.0, 2.0, 3.0}, sum[3] = {1.0, 2.0, 3.0};
    EXPECT_EQ(weighting.GetXYZIncrement(-0.2, 10, 20, xyz), 0);
    for (std::size_t i = 10; i < 20; ++i) {
        for (std::size_t c = 0; c < 3; ++c)
            sum[c] += -0.2 * expected.k * expected.weight[c][i];
    }
    EXPECT_THAT(xyz, ElementsAreArray(sum));
}

TEST(weighting, increment_isWhatIntegratingAgainGives) {
    const TIlluminant lamp = lampOf(kD50);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    Standard sample = ramp();
    Xyz before = ofValues(weighting, sample, 36);
    sample[12] += 0.125;
    const Xyz after = ofValues(weighting, sample, 36);
    EXPECT_EQ(weighting.GetXYZIncrement(0.125, 12, before.value), 0);
    for (std::size_t c = 0; c < 3; ++c)
        EXPECT_NEAR(before.value[c], after.value[c], 1e-12);
}

TEST(weighting, incrementWithFirstEqualLast_addsNothing) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    double xyz[3] = {1, 2, 3};
    EXPECT_EQ(weighting.GetXYZIncrement(1.0, 17, 17, xyz), 0);
    EXPECT_EQ(weighting.GetXYZIncrement(1.0, 20, 17, xyz), 0);
    EXPECT_THAT(xyz, ElementsAre(1, 2, 3));
}

TEST(weighting, incrementsOutside0To35_areIgnored) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    constexpr int kMin = std::numeric_limits<int>::min(), kMax = std::numeric_limits<int>::max();
    double xyz[3] = {1, 2, 3};
    for (const int index : {-1, 36, 37, kMin, kMax})
        EXPECT_EQ(weighting.GetXYZIncrement(1.0, index, xyz), 0);
    EXPECT_EQ(weighting.GetXYZIncrement(1.0, -10, 0, xyz), 0);
    EXPECT_EQ(weighting.GetXYZIncrement(1.0, 36, 100, xyz), 0);
    EXPECT_THAT(xyz, ElementsAre(1, 2, 3));
    double whole[3] = {}, beyond[3] = {}, far[3] = {};
    EXPECT_EQ(weighting.GetXYZIncrement(1.0, 0, 36, whole), 0);
    EXPECT_EQ(weighting.GetXYZIncrement(1.0, -5, 100, beyond), 0);
    EXPECT_EQ(weighting.GetXYZIncrement(1.0, kMin, kMax, far), 0);
    EXPECT_THAT(beyond, ElementsAreArray(whole));
    EXPECT_THAT(far, ElementsAreArray(whole));
}

TEST(weighting, incrementsBehindTheLastPoint_addNothing) {
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 8);
    double xyz[3] = {1, 2, 3};
    EXPECT_EQ(weighting.GetXYZIncrement(1.0, 8, 36, xyz), 0);
    EXPECT_THAT(xyz, ElementsAre(1, 2, 3));
}

// Init on an existing weighting.

void expectSameWeighting(const TIlluminantAndObserver& actual, const TIlluminantAndObserver& expected) {
    EXPECT_EQ(actual.GetNumber(), expected.GetNumber());
    EXPECT_EQ(actual.GetFactor(), expected.GetFactor());
    const int n = expected.GetNumber();
    EXPECT_THAT(ofValues(actual, irregular(47), n).value,
                ElementsAreArray(ofValues(expected, irregular(47), n).value));
    EXPECT_THAT(ofSpectrum(actual, irregular(47), n).value,
                ElementsAreArray(ofSpectrum(expected, irregular(47), n).value));
    EXPECT_THAT(whiteOf(actual).value, ElementsAreArray(whiteOf(expected).value));
    for (int i = 0; i < 36; ++i) {
        double one[3] = {}, other[3] = {};
        actual.GetXYZIncrement(1.0, i, one);
        expected.GetXYZIncrement(1.0, i, other);
        EXPECT_THAT(one, ElementsAreArray(other)) << i;
    }
}

TEST(weighting, init_replacesTheWeights) {
    const TIlluminant d65 = lampOf(kD65), a = lampOf(kIlluminantA),
                      f2 = lampOf(flat(1.0), "CIE Illuminant F2");
    const TObserver two(0), ten(1);
    TIlluminantAndObserver weighting(&d65, &two, 36);
    EXPECT_EQ(weighting.Init(&a, &ten, 8), 0);
    expectSameWeighting(weighting, TIlluminantAndObserver(&a, &ten, 8));
    EXPECT_EQ(weighting.Init(&f2, &two, 36), 0);
    expectSameWeighting(weighting, TIlluminantAndObserver(&f2, &two, 36));
    EXPECT_EQ(weighting.Init(&d65, &two, 36), 0);
    expectSameWeighting(weighting, TIlluminantAndObserver(&d65, &two, 36));
}

TEST(weighting, initWithItsOwnObserver_keepsIt) {
    const TIlluminant d65 = lampOf(kD65), a = lampOf(kIlluminantA);
    const TObserver ten(1);
    TIlluminantAndObserver weighting(&d65, &ten, 36);
    EXPECT_EQ(weighting.Init(&a, weighting.GetObserver(), 36), 0);
    ASSERT_NE(weighting.GetObserver(), nullptr);
    EXPECT_EQ(weighting.GetObserver()->GetNumber(), 1u);
    expectSameWeighting(weighting, TIlluminantAndObserver(&a, &ten, 36));
}

TEST(weighting, initWithBadArguments_answers2) {
    const TIlluminant d65 = lampOf(kD65), empty(static_cast<const TSpectrum*>(nullptr), "x");
    const TObserver two(0);
    TIlluminantAndObserver weighting(&d65, &two, 36);
    EXPECT_EQ(weighting.Init(nullptr, &two, 36), 2);
    EXPECT_EQ(weighting.Init(&d65, nullptr, 36), 2);
    EXPECT_EQ(weighting.Init(&d65, &two, 37), 2);
    EXPECT_EQ(weighting.Init(&d65, &two, -1), 2);
    EXPECT_EQ(weighting.Init(&empty, &two, 36), 2);
}

// A chart of 2,000 patches builds one weighting each: about 10 microseconds apiece leave room for slow
// machines.
TEST(weighting, twoThousandWeightings_takeNoTimeToSpeakOf) {
#if defined(QXCMS_TEST_SANITIZED) || !defined(NDEBUG) || !defined(__OPTIMIZE__)
    GTEST_SKIP() << "times are those of an optimised build";
#else
    const TIlluminant lamp = lampOf(kD65);
    const TObserver observer(0);
    const TSpectrum sample = spectrumOf(ramp());
    auto best = std::chrono::steady_clock::duration::max();
    double sum = 0.0;
    for (int attempt = 0; attempt < 5; ++attempt) {
        const auto start = std::chrono::steady_clock::now();
        for (int i = 0; i < 2000; ++i) {
            const TIlluminantAndObserver weighting(&lamp, &observer, 36);
            double xyz[3];
            weighting.GetXYZ(&sample, xyz, 36);
            sum += xyz[1];
        }
        best = std::min(best, std::chrono::steady_clock::now() - start);
    }
    EXPECT_GT(sum, 0.0);
    EXPECT_LT(std::chrono::duration_cast<std::chrono::milliseconds>(best).count(), 100);
#endif
}

} // namespace
} // namespace qxcms::tests
