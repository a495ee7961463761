// The bands and values of spectra.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <regex>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qc/conditions.h"
#include "qc/illuminants.h"
#include "tests/qc/inspected_chart.h"

namespace qxcms::tests {
namespace {

using qc::Finding;
using qc::Lab;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(plausibility, fractionsAboveTwo_areTold) {
    std::vector<Values> rows = {flat(0.04), flat(0.05), flat(0.06), flat(0.07), flat(0.08)};
    rows.push_back(flat(2.01));
    rows.push_back(flat(8.6));
    for (int more = 0; more < 5; ++more)
        rows.push_back(flat(0.5));
    const std::vector<Finding> findings = spectralChart(rows).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::spectralScale));
    EXPECT_THAT(findings[0].text,
                HasSubstr("chart.txt: row 6 and 1 more of 12, most in row 7: reflectance 8.6"));
    EXPECT_THAT(findings[0].text, HasSubstr("percent"));
}

TEST(plausibility, spectraInPercentThatStartDark_areTold) {
    std::vector<Values> rows(5, flat(4.0));
    for (int more = 0; more < 20; ++more)
        rows.push_back(flat(80.0 - more));
    const std::vector<Finding> findings = spectralChart(rows).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::spectralScale));
    EXPECT_THAT(findings[0].text,
                HasSubstr("move a light patch to the top or, where there is none, divide all "
                          "values by 100"));
}

TEST(plausibility, fractionOfTwo_isLetPass) {
    EXPECT_THAT(spectralChart({flat(2.0), flat(0.5)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, spectraInPercent_areLetPass) {
    EXPECT_THAT(spectralChart({flat(88.0), flat(40.0), flat(3.0)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, fluorescentPaperOf115PercentAt440_isLetPass) {
    Values paper = flat(0.9);
    const Values blue = {0.62, 0.80, 0.98, 1.09, 1.15, 1.12, 1.05, 0.98, 0.94};
    std::copy(blue.begin(), blue.end(), paper.begin());
    ASSERT_EQ(paper[bandAt(440)], 1.15);
    EXPECT_THAT(spectralChart({paper, flat(0.04)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, reflectanceBelowZero_isToldWithTheLowest) {
    const std::vector<Finding> findings =
        spectralChart({flat(0.5), flatBut(0.01, 410, -0.006), flatBut(0.01, 400, -0.02)}).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::negativeReflectance));
    EXPECT_THAT(findings[0].text,
                HasSubstr("chart.txt: row 2 and 1 more of 3, most in row 3: reflectance -0.02"));
}

TEST(plausibility, reflectanceBelowZeroByNoise_isLetPass) {
    EXPECT_THAT(spectralChart({flat(0.5), flatBut(0.01, 410, -0.005)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, bandsFrom410_areTold) {
    const Inspected chart(spectralFields(410, 700, 10), {Values(30, 0.5), Values(30, 0.4)});
    const std::vector<Finding> findings = chart.findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::narrowSpectra));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: the bands of all 2 rows reach from 410 to 700 nm"));
}

TEST(plausibility, bandsUpTo690_areTold) {
    const Inspected chart(spectralFields(400, 690, 10), {Values(30, 0.5), Values(30, 0.4)});
    EXPECT_THAT(kindsOf(chart.findInSpectra()), ElementsAre(Finding::Kind::narrowSpectra));
}

TEST(plausibility, bandsFrom400To700_areLetPass) {
    EXPECT_THAT(spectralChart({flat(0.5), flat(0.4)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, bandsEvery20Nanometres_areToldWithTheirCost) {
    const Inspected chart(spectralFields(400, 700, 20), {Values(16, 0.5), Values(16, 0.4)});
    const std::vector<Finding> findings = chart.findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::coarseSpectra));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: the bands of all 2 rows are 20 nm apart"));
    EXPECT_THAT(findings[0].text, HasSubstr("Delta E 00"));
    EXPECT_THAT(findings[0].text, Not(HasSubstr("wider gaps")));
}

TEST(plausibility, oneGapOf40Nanometres_isTold) {
    std::vector<std::string> fields = spectralFields(400, 700, 10);
    fields.erase(fields.begin() + 11, fields.begin() + 14); // 510, 520 and 530 nm
    const Inspected chart(fields, {Values(28, 0.5), Values(28, 0.4)});
    const std::vector<Finding> findings = chart.findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::coarseSpectra));
    EXPECT_THAT(findings[0].text, HasSubstr("are up to 40 nm apart"));
    EXPECT_THAT(findings[0].text, HasSubstr("wider gaps cost more"));
}

TEST(plausibility, bandsEvery19Nanometres_areLetPass) {
    const Inspected chart(spectralFields(400, 704, 19), {Values(17, 0.5), Values(17, 0.4)});
    EXPECT_THAT(chart.findInSpectra(), IsEmpty());
}

TEST(plausibility, coarseBandsOutsideTheVisible_areLetPass) {
    std::vector<std::string> fields = {"SPECTRAL_NM_360"};
    for (const std::string& field : spectralFields(400, 700, 10))
        fields.push_back(field);
    const Inspected chart(fields, {Values(32, 0.5), Values(32, 0.4)});
    EXPECT_THAT(chart.findInSpectra(), IsEmpty());
}

constexpr double kPi = 3.14159265358979323846;

double radians(double degrees) {
    return degrees * kPi / 180.0;
}

// ISO/CIE 11664-6 with all weights 1.
double deltaE00(const Lab& first, const Lab& second) {
    const auto seventh = [](double chroma) {
        return std::sqrt(std::pow(chroma, 7) / (std::pow(chroma, 7) + std::pow(25.0, 7)));
    };
    const double meanAb = (std::hypot(first[1], first[2]) + std::hypot(second[1], second[2])) / 2;
    const double stretch = 1.5 - 0.5 * seventh(meanAb);
    const double chroma1 = std::hypot(stretch * first[1], first[2]);
    const double chroma2 = std::hypot(stretch * second[1], second[2]);
    const double hue1 = std::atan2(first[2], stretch * first[1]) / radians(1);
    const double hue2 =
        hue1 + std::remainder(std::atan2(second[2], stretch * second[1]) / radians(1) - hue1, 360.0);
    const double meanHue = std::fmod((hue1 + hue2) / 2 + 720.0, 360.0);
    const double meanChroma = (chroma1 + chroma2) / 2;
    const double fromMiddle = std::pow((first[0] + second[0]) / 2 - 50, 2);
    const double t = 1 - 0.17 * std::cos(radians(meanHue - 30)) + 0.24 * std::cos(radians(2 * meanHue)) +
                     0.32 * std::cos(radians(3 * meanHue + 6)) - 0.20 * std::cos(radians(4 * meanHue - 63));
    const double turn = 30 * std::exp(-std::pow((meanHue - 275) / 25, 2));
    const double lightness = (second[0] - first[0]) / (1 + 0.015 * fromMiddle / std::sqrt(20 + fromMiddle));
    const double chroma = (chroma2 - chroma1) / (1 + 0.045 * meanChroma);
    const double hue = 2 * std::sqrt(chroma1 * chroma2) * std::sin(radians((hue2 - hue1) / 2)) /
                       (1 + 0.015 * meanChroma * t);
    const double rotation = -std::sin(radians(2 * turn)) * 2 * seventh(meanChroma);
    return std::sqrt(lightness * lightness + chroma * chroma + hue * hue + rotation * chroma * hue);
}

// Pairs 1, 7, 13 and 17 of G. Sharma, W. Wu, E. N. Dalal, Color Research and Application 30 (2005).
TEST(plausibility, ownDeltaE00_givesPublishedPairs) {
    EXPECT_NEAR(deltaE00({50, 2.6772, -79.7751}, {50, 0, -82.7485}), 2.0425, 1e-4);
    EXPECT_NEAR(deltaE00({50, 0, 0}, {50, -1, 2}), 2.3669, 1e-4);
    EXPECT_NEAR(deltaE00({50, -0.001, 2.49}, {50, 0.0009, -2.49}), 4.8045, 1e-4);
    EXPECT_NEAR(deltaE00({50, 2.5, 0}, {73, 25, -18}), 27.1492, 1e-4);
}

TEST(plausibility, costOfTwentyNanometres_isThatOfTheColorChecker) {
    TCgats document(QXCMS_SOURCE_DIR "/data/charts/colorchecker_spectral.txt");
    ASSERT_EQ(document.GetErrorCode(), 0);
    ASSERT_EQ(document.GetNrSamples(0), 24);
    std::vector<int> bands(static_cast<std::size_t>(document.GetNrWaveLengths(0)));
    document.GetWaveLengths(0, bands.data());
    const std::vector<double> wavelengths(bands.begin(), bands.end());
    const qc::Illuminants illuminants;
    const TObserver observer("2 degree");
    const qc::Conditions conditions(*illuminants.find("D50"), observer);
    double sum = 0.0;
    double largest = 0.0;
    for (int row = 0; row < 24; ++row) {
        std::vector<double> values(wavelengths.size());
        document.GetSpectrum(0, row, values.data());
        std::vector<double> fewWavelengths;
        std::vector<double> fewValues;
        for (std::size_t band = 0; band < wavelengths.size(); band += 4) {
            fewWavelengths.push_back(wavelengths[band]);
            fewValues.push_back(values[band]);
        }
        const TSpectrum whole(wavelengths.data(), static_cast<int>(wavelengths.size()), values.data());
        const TSpectrum few(fewWavelengths.data(), static_cast<int>(fewWavelengths.size()), fewValues.data());
        const double cost = deltaE00(conditions.labOf(few), conditions.labOf(whole));
        sum += cost;
        largest = std::max(largest, cost);
    }
    const Inspected coarse(spectralFields(400, 700, 20), {Values(16, 0.5), Values(16, 0.4)});
    const std::vector<Finding> findings = coarse.findInSpectra();
    ASSERT_EQ(findings.size(), 1U);
    std::smatch told;
    ASSERT_TRUE(std::regex_search(findings[0].text, told,
                                  std::regex("costs about ([0-9.]+) on average and up to ([0-9.]+) ")));
    EXPECT_NEAR(sum / 24, std::stod(told[1]), 0.005);
    EXPECT_NEAR(largest, std::stod(told[2]), 0.005);
}

} // namespace
} // namespace qxcms::tests
