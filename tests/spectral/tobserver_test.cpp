#include "spectral/tobserver.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>

#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAre;

static_assert(std::has_virtual_destructor_v<TObserver>);
static_assert(!std::is_constructible_v<TObserver, double>, "an angle in degrees is no observer number");
static_assert(!std::is_constructible_v<TObserver, float>);
static_assert(!std::is_constructible_v<TObserver, long double>);
static_assert(std::is_constructible_v<TObserver, unsigned>);
static_assert(std::is_constructible_v<TObserver, long>);
static_assert(std::is_constructible_v<TObserver, unsigned long>);
static_assert(std::is_constructible_v<TObserver, short>);
static_assert(std::is_constructible_v<TObserver, std::uint32_t&>);
static_assert(!std::is_convertible_v<int, TObserver>);
static_assert(!std::is_convertible_v<const char*, TObserver>);
static_assert(std::is_copy_constructible_v<TObserver> && std::is_copy_assignable_v<TObserver>);

// Plain sums over the grid, by ascending wavelength.
double sumOf(const Standard& values, const double* table) {
    double sum = 0.0;
    for (std::size_t k = 0; k < values.size(); ++k)
        sum += values[k] * table[2 * k];
    return sum;
}

double tableSum(const double* table) {
    double sum = 0.0;
    for (int i = 0; i < TObserver::kTableCount; ++i)
        sum += table[i];
    return sum;
}

// Index of a wavelength in the 5 nm tables.
constexpr int at(int wavelength) {
    return (wavelength - 380) / 5;
}

// Tables.

TEST(observer, names_areTheObserversThenTheDensityStandards) {
    EXPECT_EQ(TObserver::sNrObservers, 2);
    EXPECT_STREQ(TObserver::sObsNameList[0], "2 degree");
    EXPECT_STREQ(TObserver::sObsNameList[1], "10 degree");
    EXPECT_STREQ(TObserver::sObsNameList[2], "ANSI A");
    EXPECT_STREQ(TObserver::sObsNameList[3], "ANSI T");
    EXPECT_STREQ(TObserver::sObsNameList[4], "DIN");
    EXPECT_STREQ(TObserver::sObsNameList[5], "DIN NB");
}

// CIE 1931 and CIE 1964, 5 nm, four decimals.
TEST(observer, tables_holdThePublishedRows) {
    struct Row {
        int observer, wavelength;
        double x, y, z;
    };
    const Row rows[] = {
        {0, 380, 0.0014, 0.0000, 0.0065}, {0, 395, 0.0076, 0.0002, 0.0362}, {0, 445, 0.3481, 0.0298, 1.7826},
        {0, 555, 0.5121, 1.0000, 0.0057}, {0, 600, 1.0622, 0.6310, 0.0008}, {0, 730, 0.0014, 0.0005, 0.0000},
        {0, 780, 0.0000, 0.0000, 0.0000}, {1, 380, 0.0002, 0.0000, 0.0007}, {1, 395, 0.0072, 0.0008, 0.0323},
        {1, 445, 0.3867, 0.0747, 2.0273}, {1, 555, 0.6161, 0.9991, 0.0011}, {1, 600, 1.1240, 0.6583, 0.0000},
        {1, 730, 0.0010, 0.0004, 0.0000}, {1, 780, 0.0000, 0.0000, 0.0000}};
    for (const Row& row : rows) {
        EXPECT_EQ(TObserver::sXSpectrum[row.observer][at(row.wavelength)], row.x) << row.wavelength;
        EXPECT_EQ(TObserver::sYSpectrum[row.observer][at(row.wavelength)], row.y) << row.wavelength;
        EXPECT_EQ(TObserver::sZSpectrum[row.observer][at(row.wavelength)], row.z) << row.wavelength;
    }
}

TEST(observer, tables_haveThePublishedSums) {
    EXPECT_NEAR(tableSum(TObserver::sXSpectrum[0]), 21.3714, 1e-10);
    EXPECT_NEAR(tableSum(TObserver::sYSpectrum[0]), 21.3711, 1e-10);
    EXPECT_NEAR(tableSum(TObserver::sZSpectrum[0]), 21.3715, 1e-10);
    EXPECT_NEAR(tableSum(TObserver::sXSpectrum[1]), 23.3294, 1e-10);
    EXPECT_NEAR(tableSum(TObserver::sYSpectrum[1]), 23.3324, 1e-10);
    EXPECT_NEAR(tableSum(TObserver::sZSpectrum[1]), 23.3343, 1e-10);
}

// Rounding the six-decimal 0.007650 would give 0.0077; the published four-decimal table has 0.0076.
TEST(observer, xOf395Nanometres_isAsPublished) {
    EXPECT_EQ(TObserver::sXSpectrum[0][at(395)], 0.0076);
}

// Construction.

TEST(observer, number_isTaken) {
    const TObserver two(0), ten(1);
    EXPECT_EQ(two.GetStatus(), 0);
    EXPECT_EQ(two.GetNumber(), 0u);
    EXPECT_STREQ(two.GetName(), "2 degree");
    EXPECT_EQ(ten.GetStatus(), 0);
    EXPECT_EQ(ten.GetNumber(), 1u);
    EXPECT_STREQ(ten.GetName(), "10 degree");
}

TEST(observer, numberOfAnyIntegerType_isTaken) {
    const TObserver other(1);
    const auto again = std::make_unique<TObserver>(other.GetNumber());
    EXPECT_EQ(again->GetStatus(), 0);
    EXPECT_EQ(again->GetNumber(), 1u);
    EXPECT_EQ(std::make_unique<TObserver>(1L)->GetNumber(), 1u);
    EXPECT_EQ(std::make_unique<TObserver>(short{1})->GetNumber(), 1u);
    EXPECT_EQ(std::make_unique<TObserver>(std::numeric_limits<unsigned>::max())->GetStatus(), 2);
}

TEST(observer, number2_givesStatus2AndBehavesAsThe2DegreeOne) {
    TObserver unknown(2), two(0);
    EXPECT_EQ(unknown.GetStatus(), 2);
    EXPECT_EQ(unknown.GetNumber(), 0u);
    EXPECT_STREQ(unknown.GetName(), "2 degree");
    const TSpectrum stimulus = spectrumOf(kD65);
    double xyz[3], expected[3];
    EXPECT_EQ(unknown.GetXYZ(&stimulus, xyz), 0);
    EXPECT_EQ(two.GetXYZ(&stimulus, expected), 0);
    EXPECT_THAT(xyz, testing::ElementsAreArray(expected));
    EXPECT_EQ(unknown.GetStatus(), 2);
}

// Numbers compare unsigned.
TEST(observer, negativeOrLargeNumber_givesStatus2AndNumber0) {
    for (const int number : {-1, 10, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        const TObserver observer(number);
        EXPECT_EQ(observer.GetStatus(), 2) << number;
        EXPECT_EQ(observer.GetNumber(), 0u) << number;
    }
}

TEST(observer, name_isTaken) {
    EXPECT_EQ(TObserver("2 degree").GetStatus(), 0);
    EXPECT_EQ(TObserver("2 degree").GetNumber(), 0u);
    EXPECT_EQ(TObserver("10 degree").GetStatus(), 0);
    EXPECT_EQ(TObserver("10 degree").GetNumber(), 1u);
}

TEST(observer, nameWithACapitalD_isNotKnown) {
    const TObserver observer("2 Degree");
    EXPECT_EQ(observer.GetStatus(), 2);
    EXPECT_EQ(observer.GetNumber(), 0u);
}

TEST(observer, otherNames_giveStatus2AndNumber0) {
    for (const char* name :
         {"", "10 Degree", "2 degree ", " 2 degree", "2", "2 degre", static_cast<const char*>(nullptr)}) {
        const TObserver observer(name);
        EXPECT_EQ(observer.GetStatus(), 2);
        EXPECT_EQ(observer.GetNumber(), 0u);
    }
}

// The list goes on with the density standards, which are no observers.
TEST(observer, namesOfDensityStandards_areNoObservers) {
    for (int i = 2; i < 6; ++i)
        EXPECT_EQ(TObserver(TObserver::sObsNameList[i]).GetStatus(), 2) << TObserver::sObsNameList[i];
}

TEST(observer, literalNull_isANameThatIsNotKnown) {
    EXPECT_EQ(TObserver(nullptr).GetStatus(), 2);
}

TEST(observer, knownObservers_areTheListAndItsCount) {
    const char** names = nullptr;
    int count = 0;
    EXPECT_EQ(TObserver::GetKnownObservers(&names, &count), 0);
    EXPECT_EQ(names, TObserver::sObsNameList);
    EXPECT_EQ(count, 2);
}

TEST(observer, knownObserversWithNull_answers2AndWritesNothing) {
    const char** names = nullptr;
    int count = 7;
    EXPECT_EQ(TObserver::GetKnownObservers(nullptr, &count), 2);
    EXPECT_EQ(TObserver::GetKnownObservers(&names, nullptr), 2);
    EXPECT_EQ(TObserver::GetKnownObservers(nullptr, nullptr), 2);
    EXPECT_EQ(count, 7);
    EXPECT_EQ(names, nullptr);
}

// Copies.

TEST(observer, copy_hasTheNumberAndStatus0) {
    const TObserver ten(1), unknown(-1);
    EXPECT_EQ(TObserver(ten).GetNumber(), 1u);
    EXPECT_EQ(TObserver(ten).GetStatus(), 0);
    const TObserver copy(unknown);
    EXPECT_EQ(copy.GetNumber(), 0u);
    EXPECT_EQ(copy.GetStatus(), 0);
}

TEST(observer, copy_buildsItsOwnSpectra) {
    TObserver original(1);
    const TSpectrum* const x = original.GetXSensitivity();
    TObserver copy(original);
    ASSERT_NE(copy.GetXSensitivity(), nullptr);
    EXPECT_NE(copy.GetXSensitivity(), x);
    EXPECT_EQ(original.GetXSensitivity(), x);
    EXPECT_EQ(standardOf(*copy.GetXSensitivity()), standardOf(*x));
}

TEST(observer, assignment_takesTheNumberStatus0AndNewSpectra) {
    TObserver target(0);
    ASSERT_NE(target.GetYSensitivity(), nullptr);
    const TObserver ten(1);
    EXPECT_EQ(&(target = ten), &target);
    EXPECT_EQ(target.GetNumber(), 1u);
    EXPECT_EQ(target.GetStatus(), 0);
    ASSERT_NE(target.GetYSensitivity(), nullptr);
    EXPECT_EQ(target.GetYSensitivity()->GetValues()[at(555)], 0.9991);
}

TEST(observer, assignmentOfAnUnknownOne_hasStatus0) {
    TObserver target(1);
    target = TObserver("unknown");
    EXPECT_EQ(target.GetNumber(), 0u);
    EXPECT_EQ(target.GetStatus(), 0);
}

TEST(observer, selfAssignment_leavesAWorkingObserver) {
    TObserver observer(1);
    TObserver& alias = observer;
    observer = alias;
    EXPECT_EQ(observer.GetNumber(), 1u);
    ASSERT_NE(observer.GetYSensitivity(), nullptr);
    EXPECT_EQ(observer.GetYSensitivity()->GetValues()[at(555)], 0.9991);
}

TEST(observer, oneFromTheNameAndOneFromTheNumber_areEqual) {
    EXPECT_TRUE(TObserver("10 degree") == TObserver(1));
    EXPECT_TRUE(TObserver("2 degree") == TObserver(0));
    EXPECT_FALSE(TObserver("2 degree") == TObserver(1));
}

TEST(observer, unknownOne_equalsThe2DegreeOne) {
    EXPECT_TRUE(TObserver("unknown") == TObserver(0));
    EXPECT_FALSE(TObserver(7) == TObserver(1));
}

// Sensitivities.

TEST(observer, sensitivities_holdThe81TableValues) {
    for (const int number : {0, 1}) {
        TObserver observer(number);
        const TSpectrum* const spectra[] = {observer.GetXSensitivity(), observer.GetYSensitivity(),
                                            observer.GetZSensitivity()};
        const double* const tables[] = {TObserver::sXSpectrum[number], TObserver::sYSpectrum[number],
                                        TObserver::sZSpectrum[number]};
        for (int c = 0; c < 3; ++c) {
            ASSERT_NE(spectra[c], nullptr);
            EXPECT_EQ(spectra[c]->GetStatus(), 0);
            EXPECT_EQ(spectra[c]->GetNonUniformFlag(), 1);
            ASSERT_EQ(spectra[c]->GetNrSamples(), 81);
            for (int i = 0; i < 81; ++i) {
                EXPECT_EQ(spectra[c]->GetWavelengths()[i], 380.0 + 5 * i);
                EXPECT_EQ(spectra[c]->GetValues()[i], tables[c][i]);
            }
        }
    }
}

TEST(observer, standardSamplingOfTheSensitivities_isEverySecondTableValue) {
    for (const int number : {0, 1}) {
        TObserver observer(number);
        const Standard x = standardOf(*observer.GetXSensitivity());
        const Standard y = standardOf(*observer.GetYSensitivity());
        const Standard z = standardOf(*observer.GetZSensitivity());
        for (std::size_t k = 0; k < x.size(); ++k) {
            EXPECT_EQ(x[k], TObserver::sXSpectrum[number][2 * k]) << k;
            EXPECT_EQ(y[k], TObserver::sYSpectrum[number][2 * k]) << k;
            EXPECT_EQ(z[k], TObserver::sZSpectrum[number][2 * k]) << k;
        }
    }
}

TEST(observer, sensitivities_areMadeOnce) {
    TObserver observer(0);
    const TSpectrum* const z = observer.GetZSensitivity();
    const TSpectrum* const x = observer.GetXSensitivity();
    EXPECT_EQ(observer.GetZSensitivity(), z);
    EXPECT_EQ(observer.GetXSensitivity(), x);
    EXPECT_NE(observer.GetYSensitivity(), x);
}

// A caller may hold them.
TEST(observer, initSpectra_leavesTheSpectraThatAreThere) {
    TObserver observer(1);
    const TSpectrum* const held[] = {observer.GetXSensitivity(), observer.GetYSensitivity(),
                                     observer.GetZSensitivity()};
    observer.InitSpectra();
    EXPECT_EQ(observer.GetXSensitivity(), held[0]);
    ASSERT_EQ(observer.GetYSensitivity(), held[1]);
    EXPECT_EQ(observer.GetZSensitivity(), held[2]);
    EXPECT_EQ(held[1]->GetValues()[at(555)], 0.9991);
}

TEST(observer, initSpectra_canBeRepeated) {
    TObserver observer(0);
    observer.InitSpectra();
    observer.InitSpectra();
    ASSERT_NE(observer.GetXSensitivity(), nullptr);
    EXPECT_EQ(observer.GetXSensitivity()->GetNrSamples(), 81);
}

// Relative tristimulus values.

TEST(observer, relativeValues_areSumsTimes100ByTheIlluminantsY) {
    for (const int number : {0, 1}) {
        TObserver observer(number);
        const Standard stimulus = irregular(21), illuminant = irregular(22);
        const TSpectrum first = spectrumOf(stimulus), second = spectrumOf(illuminant);
        double xyz[3];
        EXPECT_EQ(observer.GetXYZ(&first, &second, xyz), 0);
        const double k = 100.0 / sumOf(illuminant, TObserver::sYSpectrum[number]);
        EXPECT_EQ(xyz[0], sumOf(stimulus, TObserver::sXSpectrum[number]) * k);
        EXPECT_EQ(xyz[1], sumOf(stimulus, TObserver::sYSpectrum[number]) * k);
        EXPECT_EQ(xyz[2], sumOf(stimulus, TObserver::sZSpectrum[number]) * k);
    }
}

TEST(observer, illuminantItself_hasYOfExactly100) {
    for (const Standard& illuminant : {kD50, kD65, kIlluminantA}) {
        TObserver observer(0);
        const TSpectrum source = spectrumOf(illuminant), white = spectrumOf(flat(1.0));
        const TSpectrum stimulus(&source, &white);
        double xyz[3];
        EXPECT_EQ(observer.GetXYZ(&stimulus, &source, xyz), 0);
        EXPECT_EQ(xyz[1], 100.0);
    }
}

TEST(observer, anyIlluminantItself_hasY100WithinOneUnitInTheLastPlace) {
    for (const int number : {0, 1}) {
        for (unsigned seed = 100; seed < 150; ++seed) {
            TObserver observer(number);
            const TSpectrum source = spectrumOf(irregular(seed));
            double xyz[3];
            EXPECT_EQ(observer.GetXYZ(&source, &source, xyz), 0);
            EXPECT_GE(xyz[1], std::nextafter(100.0, 0.0)) << seed;
            EXPECT_LE(xyz[1], std::nextafter(100.0, 200.0)) << seed;
        }
    }
}

// Sums over the published tables at 10 nm, worked out apart from this library.
TEST(observer, whitesOfTheStandardIlluminants_areThoseOfTheTables) {
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
    for (const White& white : whites) {
        TObserver observer(white.observer);
        const TSpectrum source = spectrumOf(*white.illuminant);
        double xyz[3];
        EXPECT_EQ(observer.GetXYZ(&source, &source, xyz), 0);
        EXPECT_NEAR(xyz[0], white.x, 5.1e-7);
        EXPECT_NEAR(xyz[1], 100.0, 1e-12);
        EXPECT_NEAR(xyz[2], white.z, 5.1e-7);
    }
}

TEST(observer, valuesBeyond730Nanometres_takeNoPart) {
    TObserver observer(0);
    const double wavelengths[] = {730.0, 731.0};
    const double values[] = {0.0, 1.0};
    const TSpectrum infrared(wavelengths, 2, values);
    double xyz[3] = {7, 7, 7};
    EXPECT_EQ(observer.GetXYZ(&infrared, xyz), 0);
    EXPECT_THAT(xyz, Each(0.0));
}

TEST(observer, allZeroIlluminant_answers3) {
    TObserver observer(0);
    const TSpectrum dark = spectrumOf(flat(0.0));
    double xyz[3] = {7, 7, 7};
    EXPECT_EQ(observer.GetXYZ(&dark, &dark, xyz), 3);
    EXPECT_THAT(xyz, Each(0.0));
}

TEST(observer, normalisingSumOf0OrBelow_leavesThePlainSums) {
    TObserver observer(0);
    const Standard stimulus = irregular(23);
    const TSpectrum light = spectrumOf(stimulus);
    for (const double level : {0.0, -1.0}) {
        const TSpectrum illuminant = spectrumOf(flat(level));
        double xyz[3];
        EXPECT_EQ(observer.GetXYZ(&light, &illuminant, xyz), 3) << level;
        EXPECT_EQ(xyz[0], sumOf(stimulus, TObserver::sXSpectrum[0]));
        EXPECT_EQ(xyz[1], sumOf(stimulus, TObserver::sYSpectrum[0]));
        EXPECT_EQ(xyz[2], sumOf(stimulus, TObserver::sZSpectrum[0]));
    }
}

TEST(observer, undefinedNormalisingSum_isNot0OrBelow) {
    TObserver observer(0);
    const TSpectrum light = spectrumOf(ramp());
    const TSpectrum illuminant = spectrumOf(flat(std::numeric_limits<double>::quiet_NaN()));
    double xyz[3] = {7, 7, 7};
    EXPECT_EQ(observer.GetXYZ(&light, &illuminant, xyz), 0);
    EXPECT_TRUE(std::isnan(xyz[1]));
}

TEST(observer, nullArguments_answer2) {
    TObserver observer(0);
    const TSpectrum light = spectrumOf(ramp());
    const TSpectrum* const none = nullptr;
    double xyz[3] = {7, 7, 7};
    EXPECT_EQ(observer.GetXYZ(none, &light, xyz), 2);
    EXPECT_EQ(observer.GetXYZ(&light, none, xyz), 2);
    EXPECT_EQ(observer.GetXYZ(&light, &light, nullptr), 2);
    EXPECT_EQ(observer.GetXYZ(none, xyz), 2);
    EXPECT_EQ(observer.GetXYZ(&light, nullptr), 2);
    EXPECT_THAT(xyz, Each(7.0));
    EXPECT_EQ(observer.GetStatus(), 0);
}

// Absolute tristimulus values.

TEST(observer, emission_isTheSumsTimes6_83) {
    for (const int number : {0, 1}) {
        TObserver observer(number);
        const Standard stimulus = irregular(24);
        const TSpectrum light = spectrumOf(stimulus);
        double xyz[3];
        EXPECT_EQ(observer.GetXYZ(&light, xyz), 0);
        EXPECT_EQ(xyz[0], sumOf(stimulus, TObserver::sXSpectrum[number]) * 6.83);
        EXPECT_EQ(xyz[1], sumOf(stimulus, TObserver::sYSpectrum[number]) * 6.83);
        EXPECT_EQ(xyz[2], sumOf(stimulus, TObserver::sZSpectrum[number]) * 6.83);
    }
}

TEST(observer, emissionOf1EverySlot_hasTheKnownY) {
    const TSpectrum light = spectrumOf(flat(1.0));
    double xyz[3];
    EXPECT_EQ(TObserver(0).GetXYZ(&light, xyz), 0);
    EXPECT_NEAR(xyz[1], 6.83 * 10.6852, 1e-10); // the sum of the 36 y values
    EXPECT_EQ(TObserver(1).GetXYZ(&light, xyz), 0);
    EXPECT_NEAR(xyz[1], 6.83 * 11.6641, 1e-10);
}

TEST(observer, darkEmission_isGood) {
    const TSpectrum dark = spectrumOf(flat(0.0));
    double xyz[3] = {7, 7, 7};
    EXPECT_EQ(TObserver(0).GetXYZ(&dark, xyz), 0);
    EXPECT_THAT(xyz, ElementsAre(0.0, 0.0, 0.0));
}

} // namespace
} // namespace qxcms::tests
