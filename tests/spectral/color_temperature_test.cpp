// Chromaticity and correlated colour temperature of registered illuminants.
#include <array>
#include <cmath>
#include <limits>

#include <gmock/gmock.h>

#include "spectral/color_temperature.h"
#include "spectral/isotemperature_lines.h"
#include "spectral/tilluminant.h"
#include "spectral/tilluminantandobserver.h"
#include "tests/spectral/known_spectra.h"
#include "tests/spectral/registry_scope.h"
#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;

const Report kNotAvailable = {"No Illuminant with this name available", "tilluminantfactoryholder", 223};

struct Answer {
    double x, y, temperature;
};

Answer answerOf(const TIlluminant& illuminant) {
    Answer answer = {-7, -7, -7};
    EXPECT_EQ(illuminant.GetChromaticityAndTemperature(&answer.x, &answer.y, &answer.temperature), 0);
    return answer;
}

Answer answerOf(const Standard& values) {
    const RegistryScope registry;
    return answerOf(*registry.add("lamp", values));
}

// Robertson (1968), CIE 1960 UCS; 0.24792 at 325 mired, where a later reprint has a misprint.
constexpr double kPublishedLines[31][4] = {
    {0, 0.18006, 0.26352, -0.24341},   {10, 0.18066, 0.26589, -0.25479},  {20, 0.18133, 0.26846, -0.26876},
    {30, 0.18208, 0.27119, -0.28539},  {40, 0.18293, 0.27407, -0.30470},  {50, 0.18388, 0.27709, -0.32675},
    {60, 0.18494, 0.28021, -0.35156},  {70, 0.18611, 0.28342, -0.37915},  {80, 0.18740, 0.28668, -0.40955},
    {90, 0.18880, 0.28997, -0.44278},  {100, 0.19032, 0.29326, -0.47888}, {125, 0.19462, 0.30141, -0.58204},
    {150, 0.19962, 0.30921, -0.70471}, {175, 0.20525, 0.31647, -0.84901}, {200, 0.21142, 0.32312, -1.0182},
    {225, 0.21807, 0.32909, -1.2168},  {250, 0.22511, 0.33439, -1.4512},  {275, 0.23247, 0.33904, -1.7298},
    {300, 0.24010, 0.34308, -2.0637},  {325, 0.24792, 0.34655, -2.4681},  {350, 0.25591, 0.34951, -2.9641},
    {375, 0.26400, 0.35200, -3.5814},  {400, 0.27218, 0.35407, -4.3633},  {425, 0.28039, 0.35577, -5.3762},
    {450, 0.28863, 0.35714, -6.7262},  {475, 0.29685, 0.35823, -8.5955},  {500, 0.30505, 0.35907, -11.324},
    {525, 0.31320, 0.35968, -15.628},  {550, 0.32129, 0.36011, -23.325},  {575, 0.32931, 0.36038, -40.770},
    {600, 0.33724, 0.36051, -116.45}};

// Light at 450, 550 and 600 nm alone: enough to reach any chromaticity between them.
struct ThreeBands {
    double blue, green, red;

    Standard standard() const {
        Standard result = flat(0.0);
        result[slotOf(450)] = blue;
        result[slotOf(550)] = green;
        result[slotOf(600)] = red;
        return result;
    }
};

double determinant(const std::array<std::array<double, 3>, 3>& m) {
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

// The bands whose white has the chromaticity (u, v) of the 1960 diagram, by Cramer's rule.
ThreeBands bandsOf(double u, double v) {
    const double x = 3 * u / (2 * u - 8 * v + 4), y = 2 * v / (2 * u - 8 * v + 4);
    const double xyz[3] = {x / y, 1.0, (1 - x - y) / y};
    const double* const tables[3] = {TObserver::sXSpectrum[0], TObserver::sYSpectrum[0],
                                     TObserver::sZSpectrum[0]};
    std::array<std::array<double, 3>, 3> m;
    for (std::size_t c = 0; c < 3; ++c)
        m[c] = {tables[c][2 * slotOf(450)], tables[c][2 * slotOf(550)], tables[c][2 * slotOf(600)]};
    double result[3];
    for (std::size_t j = 0; j < 3; ++j) {
        auto replaced = m;
        for (std::size_t c = 0; c < 3; ++c)
            replaced[c][j] = xyz[c];
        result[j] = determinant(replaced) / determinant(m);
    }
    return {result[0], result[1], result[2]};
}

TEST(colorTemperature, isotemperatureLines_areThePublishedOnes) {
    ASSERT_EQ(detail::kIsotemperatureLineCount, 31);
    for (int i = 0; i < 31; ++i) {
        const detail::IsotemperatureLine& line = detail::kIsotemperatureLines[i];
        if (i > 0) {
            EXPECT_DOUBLE_EQ(line.reciprocal, kPublishedLines[i][0] * 1e-6) << i;
        }
        EXPECT_EQ(line.u, kPublishedLines[i][1]) << i;
        EXPECT_EQ(line.v, kPublishedLines[i][2]) << i;
        EXPECT_EQ(line.t, kPublishedLines[i][3]) << i;
    }
}

TEST(colorTemperature, firstLine_hasTheSmallestNormalReciprocalInsteadOf0) {
    EXPECT_EQ(detail::kIsotemperatureLines[0].reciprocal, std::numeric_limits<double>::min());
}

TEST(colorTemperature, lineOf325Mired_hasTheCorrectedU) {
    EXPECT_EQ(detail::kIsotemperatureLines[19].u, 0.24792);
}

// From the published spectra at 10 nm, worked out apart from this library: 2856.8, 6769.5, 5002.5, 5501.4,
// 6501.9 and 7503.0 K before rounding; nominally 2856, 6774, 5003, 5503, 6504 and 7504 K.
TEST(colorTemperature, standardIlluminants_haveTheirTemperaturesOnTheRasterOf10Kelvin) {
    EXPECT_EQ(answerOf(kIlluminantA).temperature, 2860.0);
    EXPECT_EQ(answerOf(kIlluminantC).temperature, 6770.0);
    EXPECT_EQ(answerOf(kD50).temperature, 5000.0);
    EXPECT_EQ(answerOf(kD55).temperature, 5500.0);
    EXPECT_EQ(answerOf(kD65).temperature, 6500.0);
    EXPECT_EQ(answerOf(kD75).temperature, 7500.0);
}

TEST(colorTemperature, equalEnergy_has5450Kelvin) {
    EXPECT_EQ(answerOf(flat(1.0)).temperature, 5450.0);
}

TEST(colorTemperature, standardIlluminants_haveTheirChromaticities) {
    struct Chromaticity {
        const Standard* illuminant;
        double x, y;
    };
    const Chromaticity rows[] = {
        {&kIlluminantA, 0.447561233, 0.407557456}, {&kIlluminantC, 0.310110404, 0.316309888},
        {&kD50, 0.345663924, 0.358631626},         {&kD55, 0.332422555, 0.347558059},
        {&kD65, 0.312715369, 0.329132277},         {&kD75, 0.299031061, 0.314972044}};
    for (const Chromaticity& row : rows) {
        const Answer answer = answerOf(*row.illuminant);
        EXPECT_NEAR(answer.x, row.x, 5.1e-10);
        EXPECT_NEAR(answer.y, row.y, 5.1e-10);
    }
}

TEST(colorTemperature, chromaticity_isThatOfTheWhiteOfTheWeighting) {
    const RegistryScope registry;
    const TIlluminant* const lamp = registry.add("lamp", irregular(31));
    double white[3];
    TIlluminantAndObserver("lamp", "2 degree", 36).GetXYZWhite(white);
    const Answer answer = answerOf(*lamp);
    EXPECT_EQ(answer.x, white[0] / (white[0] + white[1] + white[2]));
    EXPECT_EQ(answer.y, white[1] / (white[0] + white[1] + white[2]));
}

TEST(colorTemperature, anyComputedTemperature_isAMultipleOf10Kelvin) {
    int computed = 0;
    for (unsigned seed = 200; seed < 260; ++seed) {
        const double temperature = answerOf(irregular(seed)).temperature;
        EXPECT_EQ(std::fmod(temperature, 10.0), 0.0) << seed;
        computed += temperature > 0.0 ? 1 : 0;
    }
    EXPECT_GT(computed, 0);
}

// A colour on a line half way between two others has the temperature of its line.
TEST(colorTemperature, colourOnALine_hasTheTemperatureOfTheLine) {
    for (const int i : {1, 5, 10, 14, 19, 25, 29}) {
        const ThreeBands bands = bandsOf(kPublishedLines[i][1], kPublishedLines[i][2]);
        const double expected = 1e6 / kPublishedLines[i][0];
        EXPECT_NEAR(answerOf(bands.standard()).temperature, expected, 5.1) << i;
    }
}

// The method by the book, before rounding; -1 where no line changes the sign of the distance.
double robertson(double u, double v, bool* fallsToNegative) {
    double before = 0.0;
    for (int i = 0; i < 31; ++i) {
        const double* const line = kPublishedLines[i];
        const double d = (v - line[2]) - line[3] * (u - line[1]);
        if (i > 0 && (before >= 0.0) != (d >= 0.0)) {
            const double* const last = kPublishedLines[i - 1];
            const double d0 = before / std::sqrt(1 + last[3] * last[3]);
            const double d1 = d / std::sqrt(1 + line[3] * line[3]);
            *fallsToNegative = before >= 0.0;
            return 1e6 / (last[0] + d0 / (d0 - d1) * (line[0] - last[0]));
        }
        before = d;
    }
    return -1.0;
}

TEST(colorTemperature, chromaticitiesAllOver_followRobertsonsMethod) {
    int falling = 0, rising = 0, none = 0;
    for (double u = 0.05; u < 0.5; u += 0.0173) {
        for (double v = 0.05; v < 0.4; v += 0.0137) {
            bool falls = false;
            const double expected = robertson(u, v, &falls);
            const double temperature = answerOf(bandsOf(u, v).standard()).temperature;
            if (expected < 0.0) {
                EXPECT_EQ(temperature, 0.0) << u << ' ' << v;
                ++none;
            } else {
                EXPECT_NEAR(temperature, expected, 5.001) << u << ' ' << v;
                ++(falls ? falling : rising);
            }
        }
    }
    EXPECT_GT(falling, 0);
    EXPECT_GT(rising, 0);
    EXPECT_GT(none, 0);
}

// Both distances are divided by the square root of 1 + t^2 of their own line, which tells at the steep end.
TEST(colorTemperature, colourBetweenTheLastLines_isInterpolatedByTrueDistances) {
    const double u = 0.3 * kPublishedLines[29][1] + 0.7 * kPublishedLines[30][1];
    const double v = 0.3 * kPublishedLines[29][2] + 0.7 * kPublishedLines[30][2] - 0.01;
    double d[2];
    for (int i = 0; i < 2; ++i) {
        const double* const line = kPublishedLines[29 + i];
        d[i] = ((v - line[2]) - line[3] * (u - line[1])) / std::sqrt(1 + line[3] * line[3]);
    }
    ASSERT_LT(d[0] * d[1], 0.0);
    const double expected = 1e6 / (575 + 25 * d[0] / (d[0] - d[1]));
    EXPECT_NEAR(answerOf(bandsOf(u, v).standard()).temperature, expected, 5.1);
}

TEST(colorTemperature, illuminantsSpectrum_isTakenFromTheRegistryByName) {
    const RegistryScope registry;
    registry.add("D65", kD65);
    const TSpectrum other = spectrumOf(kIlluminantA);
    EXPECT_EQ(answerOf(TIlluminant(&other, "D65")).temperature, 6500.0);
    EXPECT_EQ(answerOf(TIlluminant(&other, "d65")).temperature, 6500.0);
}

TEST(colorTemperature, cieNameOfD50_findsD50WithTheWarning) {
    const RegistryScope registry;
    registry.add("D50", kD50);
    const TSpectrum other = spectrumOf(kIlluminantA);
    const ReportCollector reports;
    EXPECT_EQ(answerOf(TIlluminant(&other, "CIE Illuminant D50")).temperature, 5000.0);
    EXPECT_EQ(reports.warnings.size(), 1u);
    EXPECT_TRUE(reports.errors.empty());
}

// The lamps with ASTM tables: 4223.9, 6494.2 and 3998.8 K before rounding.
TEST(colorTemperature, lampsWithAstmTables_haveTheTemperaturesOfTheirTables) {
    const RegistryScope registry;
    EXPECT_EQ(answerOf(*registry.add("CIE Illuminant F2", flat(1.0))).temperature, 4220.0);
    EXPECT_EQ(answerOf(*registry.add("CIE Illuminant F7", flat(1.0))).temperature, 6490.0);
    EXPECT_EQ(answerOf(*registry.add("CIE Illuminant F11", flat(1.0))).temperature, 4000.0);
}

TEST(colorTemperature, getColorTemperature_isTheSameTemperature) {
    const RegistryScope registry;
    EXPECT_EQ(registry.add("A", kIlluminantA)->GetColorTemperature(), 2860.0);
}

TEST(colorTemperature, eachResult_mayBeLeftOut) {
    const RegistryScope registry;
    const TIlluminant* const lamp = registry.add("lamp", kD65);
    const Answer answer = answerOf(*lamp);
    double x = -7, y = -7, temperature = -7;
    EXPECT_EQ(lamp->GetChromaticityAndTemperature(&x, nullptr, nullptr), 0);
    EXPECT_EQ(lamp->GetChromaticityAndTemperature(nullptr, &y, nullptr), 0);
    EXPECT_EQ(lamp->GetChromaticityAndTemperature(nullptr, nullptr, &temperature), 0);
    EXPECT_EQ(lamp->GetChromaticityAndTemperature(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(x, answer.x);
    EXPECT_EQ(y, answer.y);
    EXPECT_EQ(temperature, answer.temperature);
}

TEST(colorTemperature, illuminantThatIsNotRegistered_hasTemperature0AndUndefinedChromaticity) {
    const RegistryScope registry;
    const TSpectrum spectrum = spectrumOf(kD65);
    const ReportCollector reports;
    const Answer answer = answerOf(TIlluminant(&spectrum, "D65"));
    EXPECT_EQ(answer.temperature, 0.0);
    EXPECT_TRUE(std::isnan(answer.x));
    EXPECT_TRUE(std::isnan(answer.y));
    EXPECT_THAT(reports.errors, ElementsAre(kNotAvailable));
}

TEST(colorTemperature, withoutARegistry_isTheSameAsNotRegistered) {
    ASSERT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    const TSpectrum spectrum = spectrumOf(kD65);
    const ReportCollector reports;
    EXPECT_EQ(TIlluminant(&spectrum, "D65").GetColorTemperature(), 0.0);
    EXPECT_THAT(reports.errors, ElementsAre(kNotAvailable));
    EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
}

TEST(colorTemperature, illuminantWithoutAName_hasTemperature0) {
    const RegistryScope registry;
    const ReportCollector reports;
    const TIlluminant nameless(static_cast<const void*>(nullptr));
    EXPECT_EQ(answerOf(nameless).temperature, 0.0);
    EXPECT_THAT(reports.errors,
                ElementsAre(Report{"Specify illuminant name", "tilluminantfactoryholder", 193}));
}

TEST(colorTemperature, request_leavesTheRegistryAsItWas) {
    const RegistryScope registry;
    const TIlluminant* const lamp = registry.add("lamp", kD65);
    lamp->GetColorTemperature();
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 1u);
    EXPECT_EQ(registry->GetNrElements(), 1);
}

TEST(colorTemperature, darkIlluminant_hasTemperature0) {
    const Answer answer = answerOf(flat(0.0));
    EXPECT_EQ(answer.temperature, 0.0);
    EXPECT_TRUE(std::isnan(answer.x));
    EXPECT_TRUE(std::isnan(answer.y));
}

double temperatureOf(double x, double y, double z) {
    const double xyz[] = {x, y, z};
    return detail::correlatedColorTemperature(xyz);
}

// A white is dark when all of X, Y and Z are below 1e-20.
TEST(colorTemperature, whiteBelowTheDarkLimit_hasTemperature0) {
    EXPECT_EQ(temperatureOf(1e-21, 1e-21, 1e-21), 0.0);
    EXPECT_EQ(temperatureOf(9.99e-21, 9.99e-21, 9.99e-21), 0.0);
}

// Equal energy, worked out apart from this library.
TEST(colorTemperature, whiteAboveTheDarkLimit_hasATemperature) {
    EXPECT_NEAR(temperatureOf(2e-20, 2e-20, 2e-20), 5454.0276, 1e-3);
}

// Any component alone makes it light: temperatures worked out apart from this library.
TEST(colorTemperature, oneComponentAboveTheDarkLimit_isEnoughForATemperature) {
    EXPECT_NEAR(temperatureOf(1.05e-20, 9.5e-21, 9.5e-21), 4392.7755, 1e-3);
    EXPECT_NEAR(temperatureOf(9.5e-21, 1.05e-20, 9.5e-21), 5931.5087, 1e-3);
    EXPECT_NEAR(temperatureOf(9.5e-21, 9.5e-21, 1.05e-20), 6037.2389, 1e-3);
}

TEST(colorTemperature, colourBesideAllLines_hasTemperature0AndAChromaticity) {
    for (const int wavelength : {450, 650}) {
        Standard line = flat(0.0);
        line[slotOf(wavelength)] = 1.0;
        const Answer answer = answerOf(line);
        EXPECT_EQ(answer.temperature, 0.0) << wavelength;
        EXPECT_GT(answer.x, 0.0) << wavelength;
    }
}

TEST(colorTemperature, colourBeyondTheHottestLine_hasTemperature0) {
    const double u = kPublishedLines[0][1] - 0.5 * (kPublishedLines[1][1] - kPublishedLines[0][1]);
    const double v = kPublishedLines[0][2] - 0.5 * (kPublishedLines[1][2] - kPublishedLines[0][2]);
    EXPECT_EQ(answerOf(bandsOf(u, v).standard()).temperature, 0.0);
}

TEST(colorTemperature, colourJustBesideTheHottestLine_hasAHugeTemperature) {
    const double u = kPublishedLines[0][1] + 1e-10 * (kPublishedLines[1][1] - kPublishedLines[0][1]);
    const double v = kPublishedLines[0][2] + 1e-10 * (kPublishedLines[1][2] - kPublishedLines[0][2]);
    const double temperature = answerOf(bandsOf(u, v).standard()).temperature;
    EXPECT_NEAR(temperature, 1e15, 1e13);
    EXPECT_EQ(std::fmod(temperature, 10.0), 0.0);
}

// On the hottest line itself the temperature is the reciprocal of the smallest normal double.
TEST(colorTemperature, colourOnTheHottestLine_hasAFiniteTemperature) {
    const ThreeBands start = bandsOf(kPublishedLines[0][1], kPublishedLines[0][2]);
    TObserver observer(0);
    constexpr int kSteps = 12;
    for (int i = -kSteps; i <= kSteps; ++i) {
        for (int j = -kSteps; j <= kSteps; ++j) {
            const double ulp = std::numeric_limits<double>::epsilon();
            const ThreeBands bands = {start.blue * (1 + i * ulp), start.green, start.red * (1 + j * ulp)};
            const TSpectrum spectrum = spectrumOf(bands.standard());
            double w[3];
            ASSERT_EQ(observer.GetXYZ(&spectrum, &spectrum, w), 0);
            const double divisor = w[0] + 15 * w[1] + 3 * w[2];
            if (4 * w[0] / divisor != kPublishedLines[0][1] || 6 * w[1] / divisor != kPublishedLines[0][2])
                continue;
            const double temperature = answerOf(bands.standard()).temperature;
            EXPECT_TRUE(std::isfinite(temperature));
            EXPECT_NEAR(temperature, 1.0 / std::numeric_limits<double>::min(), 1e300);
            return;
        }
    }
    FAIL() << "no spectrum found that lies on the line exactly";
}

} // namespace

// A red so deep that it lies beyond the last line.
TEST(colorTemperature, colourBetweenNoTwoLines_hasNone) {
    EXPECT_EQ(temperatureOf(1.0, 0.05, 0.0), 0.0);
}

} // namespace qxcms::tests
