// What is told about values that cannot be meant, and what is let pass.
#include "qc/plausibility.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qc/conditions.h"
#include "qc/illuminants.h"

namespace qxcms::tests {
namespace {

using qc::Chart;
using qc::ColorSource;
using qc::DocumentConditions;
using qc::Finding;
using qc::Lab;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Values = std::vector<double>;
using Kinds = std::vector<Finding::Kind>;

std::string textOf(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

// A document with a row of numbers for each row of values, named 1, 2, ....
std::string documentText(const std::vector<std::string>& fields, const std::vector<Values>& rows) {
    std::string text =
        "CGATS.17\nNUMBER_OF_FIELDS " + std::to_string(fields.size() + 1) + "\nBEGIN_DATA_FORMAT\nSAMPLE_ID";
    for (const std::string& field : fields)
        text += "\t" + field;
    text += "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " + std::to_string(rows.size()) + "\nBEGIN_DATA\n";
    for (std::size_t row = 0; row < rows.size(); ++row) {
        text += std::to_string(row + 1);
        for (const double value : rows[row])
            text += "\t" + textOf(value);
        text += "\n";
    }
    return text + "END_DATA\n";
}

// A chart of "chart.txt" and what is told of it.
class Inspected {
public:
    Inspected(const std::vector<std::string>& fields, const std::vector<Values>& rows) {
        EXPECT_EQ(document.ReadFromBuffer(documentText(fields, rows).c_str()), 0);
    }

    Chart chart() const { return {"chart.txt", &document, 0}; }

    std::vector<Finding> find(ColorSource source, const std::vector<Lab>& lab,
                              const std::vector<Lab>& labFromXyz = {}, bool isEmission = false) const {
        DocumentConditions conditions;
        conditions.isEmission = isEmission;
        return qc::implausibilities(chart(), source, conditions, lab, labFromXyz);
    }

    // With the Lab of the chart's Lab columns.
    std::vector<Finding> findInLab(const std::vector<Lab>& labFromXyz = {}) const {
        std::vector<Lab> lab(static_cast<std::size_t>(document.GetNrSamples(0)));
        for (std::size_t row = 0; row < lab.size(); ++row)
            document.GetLab(0, static_cast<int>(row), lab[row].data());
        return find(ColorSource::lab, lab, labFromXyz);
    }

    // With a grey that differs from row to row, which no rule for spectra looks at.
    std::vector<Finding> findInSpectra(bool isEmission = false) const {
        std::vector<Lab> lab;
        for (int row = 0; row < document.GetNrSamples(0); ++row)
            lab.push_back({50.0 + 0.1 * row, 0.0, 0.0});
        return find(ColorSource::spectra, lab, {}, isEmission);
    }

private:
    TCgats document;
};

Kinds kindsOf(const std::vector<Finding>& findings) {
    Kinds kinds;
    for (const Finding& finding : findings)
        kinds.push_back(finding.kind);
    return kinds;
}

const std::vector<std::string> kLabFields = {"LAB_L", "LAB_A", "LAB_B"};
const std::vector<std::string> kXyzFields = {"XYZ_X", "XYZ_Y", "XYZ_Z"};
const std::vector<std::string> kCmykLabFields = {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K",
                                                 "LAB_L",  "LAB_A",  "LAB_B"};
const std::vector<std::string> kRgbLabFields = {"RGB_R", "RGB_G", "RGB_B", "LAB_L", "LAB_A", "LAB_B"};

std::vector<std::string> spectralFields(int first, int last, int step) {
    std::vector<std::string> fields;
    for (int wavelength = first; wavelength <= last; wavelength += step)
        fields.push_back("SPECTRAL_NM_" + std::to_string(wavelength));
    return fields;
}

// 400 to 700 nm every 10 nm.
constexpr int kFirstNm = 400;
constexpr std::size_t kBands = 31;

std::size_t bandAt(int wavelength) {
    return static_cast<std::size_t>((wavelength - kFirstNm) / 10);
}

Values flat(double value) {
    return Values(kBands, value);
}

// Flat but for one band.
Values flatBut(double value, int wavelength, double other) {
    Values values = flat(value);
    values[bandAt(wavelength)] = other;
    return values;
}

Inspected spectralChart(const std::vector<Values>& rows) {
    return {spectralFields(kFirstNm, 700, 10), rows};
}

// --- Lightness

TEST(plausibility, lightnessAbove105_isToldWithRowsAndValue) {
    const Inspected chart(kLabFields, {{95, 0, -2}, {105.1, 0, 0}, {112.5, 1, 1}, {50, 0, 0}});
    const std::vector<Finding> findings = chart.findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::tooLight));
    EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    EXPECT_THAT(findings[0].text,
                testing::StartsWith("chart.txt: row 2 and 1 more of 4, most in row 3: L* 112.5"));
}

TEST(plausibility, lightnessOf105_isLetPass) {
    const Inspected chart(kLabFields, {{95, 0, -2}, {105, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

// L* 107.30 is Y 120 by the formula of CIE 15: 100 * ((107.30 + 16) / 116)^3 = 120.09; L* 107.2 is 119.80.
TEST(plausibility, luminanceOfXyzAbove120_isTold) {
    const Inspected chart(kXyzFields, {{115, 120.09, 99}, {10, 10, 8}});
    const std::vector<Finding> findings = chart.find(ColorSource::xyz, {{107.30, 0, 0}, {37.8, 0, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::tooLight));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 1 alone of 2: Y 120.09"));
}

TEST(plausibility, luminanceOfXyzBelow120_isLetPass) {
    const Inspected chart(kXyzFields, {{115, 119.80, 99}, {10, 10, 8}});
    EXPECT_THAT(chart.find(ColorSource::xyz, {{107.2, 0, 0}, {37.8, 0, 0}}), IsEmpty());
}

TEST(plausibility, countsOfFourDigits_haveCommas) {
    const std::vector<Values> rows(1546, {110, 0, 0});
    std::vector<Values> different = rows;
    different.back() = {50, 0, 0};
    const std::vector<Finding> findings = Inspected(kLabFields, different).findInLab();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].text, HasSubstr("row 1 and 1,544 more of 1,546"));
}

TEST(plausibility, nameOfFile_isMadePrintable) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer(documentText(kLabFields, {{120, 0, 0}, {50, 0, 0}}).c_str()), 0);
    const std::vector<Finding> findings = qc::implausibilities(
        {"a\x1b[2J.txt", &document, 0}, ColorSource::lab, {}, {{120, 0, 0}, {50, 0, 0}}, {});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].text, testing::StartsWith("a\\x1b[2J.txt: row 1"));
}

// --- Scales

TEST(plausibility, xyzOfZeroToOneAsTheyStand_areWarnedAbout) {
    const Inspected chart(kXyzFields, {{0.8, 0.85, 0.7}, {0.1, 0.1, 0.08}});
    const std::vector<Finding> findings = chart.find(ColorSource::xyz, {{7.68, 0, 0}, {0.9, 0, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::xyzScale));
    EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 1 holds the largest Y of 2, 0.85;"));
}

TEST(plausibility, xyzOfZeroToOneReadTimes100_areNoted) {
    const Inspected chart(kXyzFields, {{0.8, 0.85, 0.7}, {0.1, 0.1, 0.08}});
    const std::vector<Finding> findings = chart.find(ColorSource::xyz, {{93.9, 0, 0}, {37.8, 0, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::xyzScale));
    EXPECT_EQ(findings[0].severity, Finding::Severity::note);
    EXPECT_THAT(findings[0].text, HasSubstr("times 100"));
}

TEST(plausibility, darkXyzOfTwoPercent_areLetPass) {
    const Inspected chart(kXyzFields, {{1.9, 2.0, 1.7}, {0.1, 0.1, 0.08}});
    EXPECT_THAT(chart.find(ColorSource::xyz, {{15.5, 0, 0}, {0.9, 0, 0}}), IsEmpty());
}

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
    EXPECT_THAT(kindsOf(spectralChart(rows).findInSpectra()), ElementsAre(Finding::Kind::spectralScale));
}

TEST(plausibility, fractionOfTwo_isLetPass) {
    EXPECT_THAT(spectralChart({flat(2.0), flat(0.5)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, spectraInPercent_areLetPass) {
    EXPECT_THAT(spectralChart({flat(88.0), flat(40.0), flat(3.0)}).findInSpectra(), IsEmpty());
}

// --- Spectra

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

TEST(plausibility, equalSpectra_areTold) {
    const std::vector<Finding> findings = spectralChart({flat(0.5), flat(0.5)}).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::equalSpectra));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 1 and all others of 2 hold the same spectrum"));
}

TEST(plausibility, spectraThatAreAllZero_areToldToBeZero) {
    const std::vector<Finding> findings = spectralChart({flat(0), flat(0), flat(0)}).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::equalSpectra));
    EXPECT_THAT(findings[0].text, HasSubstr("0 throughout"));
}

TEST(plausibility, spectraThatDifferInOneBand_areLetPass) {
    EXPECT_THAT(spectralChart({flat(0.5), flat(0.5), flatBut(0.5, 550, 0.501)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, oneSpectrumAlone_isNotCalledEqual) {
    EXPECT_THAT(spectralChart({flat(0.5)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, equalLabOfFourRows_areTold) {
    const std::vector<Finding> findings =
        Inspected(kLabFields, std::vector<Values>(4, {0, 0, 0})).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::equalSpectra));
    EXPECT_THAT(findings[0].text, HasSubstr("hold the same Lab, 0 throughout"));
}

TEST(plausibility, equalLabOfThreeRows_mayBeOneColourMeasuredAgain) {
    EXPECT_THAT(Inspected(kLabFields, std::vector<Values>(3, {50, 0, 0})).findInLab(), IsEmpty());
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

// --- What 20 nm cost

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

// --- Light

TEST(plausibility, declaredEmission_isTold) {
    const std::vector<Finding> findings = spectralChart({flat(0.5), flat(0.4)}).findInSpectra(true);
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::emission));
    EXPECT_THAT(findings[0].text, testing::StartsWith("chart.txt: the file says that it holds measurements"));
}

TEST(plausibility, declaredEmission_mayBeBrighterThanPaper) {
    const Inspected chart(kXyzFields, {{300, 320, 250}, {1, 1, 1}});
    EXPECT_THAT(kindsOf(chart.find(ColorSource::xyz, {{155, 0, 0}, {9, 0, 0}}, {}, true)),
                ElementsAre(Finding::Kind::emission));
}

// The rows of the first five are above 10, so they are divided by 100.
TEST(plausibility, spectraBeyond200Percent_areLight) {
    const std::vector<Finding> findings =
        spectralChart({flat(480), flat(260), flat(20), flat(0.5)}).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::emission));
    EXPECT_THAT(findings[0].text, HasSubstr("row 1 and 1 more of 4, most in row 1 (480 at most)"));
}

TEST(plausibility, oneSpectrumOfManyBeyond200Percent_isAWrongValue) {
    std::vector<Values> rows = {flat(480)};
    for (int more = 0; more < 4; ++more)
        rows.push_back(flat(20.0 + more));
    EXPECT_THAT(kindsOf(spectralChart(rows).findInSpectra()), ElementsAre(Finding::Kind::spectralScale));
}

// Of one row, as the file of a lamp has it.
std::vector<Finding> findInIlluminant(const std::string& name) {
    const qc::Illuminants illuminants;
    const TSpectrum& lamp = *illuminants.find(name)->GetSpectrum();
    std::vector<std::string> fields;
    Values values;
    for (int band = 0; band < lamp.GetNrSamples(); ++band) {
        fields.push_back("SPECTRAL_NM_" + std::to_string(std::lround(lamp.GetWavelengths()[band])));
        values.push_back(lamp.GetValues()[band] / 200.0);
    }
    return Inspected(fields, {values}).findInSpectra();
}

TEST(plausibility, spectraOfFluorescentLamps_areLight) {
    for (int number = 1; number <= 12; ++number) {
        const std::string lamp = "CIE Illuminant F" + std::to_string(number);
        const std::vector<Finding> findings = findInIlluminant(lamp);
        ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::emission)) << lamp;
        EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: narrow lines"));
    }
}

TEST(plausibility, smoothSpectrum_isNotKnownForLight) {
    EXPECT_THAT(findInIlluminant("CIE Illuminant A"), IsEmpty());
    EXPECT_THAT(findInIlluminant("D65"), IsEmpty());
}

TEST(plausibility, lineOf159PercentOfItsSurroundings_isLetPass) {
    EXPECT_THAT(spectralChart({flatBut(0.1, 550, 0.159), flatBut(0.1, 440, 0.159)}).findInSpectra(),
                IsEmpty());
}

TEST(plausibility, lineOf161PercentOfItsSurroundings_isLight) {
    EXPECT_THAT(kindsOf(spectralChart({flatBut(0.1, 550, 0.161), flatBut(0.1, 440, 0.161)}).findInSpectra()),
                ElementsAre(Finding::Kind::emission));
}

// Peak at 520 nm, half the height 26 nm away: as narrow as colours get, fluorescent ones among
// them.
TEST(plausibility, pureGreenReflectances_areLetPass) {
    const auto green = [](double height) {
        Values values;
        for (int nm = 400; nm <= 700; nm += 10)
            values.push_back(0.01 + height * std::exp(-std::log(2.0) * std::pow((nm - 520) / 26.0, 2)));
        return values;
    };
    EXPECT_THAT(spectralChart({green(0.5), green(0.3)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, noiseOfDarkSamples_isNoLine) {
    EXPECT_THAT(
        spectralChart({flat(0.8), flatBut(0.004, 550, 0.012), flatBut(0.003, 440, 0.014)}).findInSpectra(),
        IsEmpty());
}

TEST(plausibility, lineInOneLightRowOfThree_isLetPass) {
    EXPECT_THAT(spectralChart({flatBut(0.1, 550, 0.9), flat(0.5), flat(0.4)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, lineInOneRowOfFive_isLetPass) {
    EXPECT_THAT(spectralChart({flatBut(0.1, 550, 0.9), flat(0.05), flat(0.04), flat(0.03), flat(0.02)})
                    .findInSpectra(),
                IsEmpty());
}

TEST(plausibility, darkRowsOfADisplay_doNotHideItsLines) {
    EXPECT_THAT(kindsOf(spectralChart({flatBut(0.1, 550, 0.9), flat(0.002), flat(0.001)}).findInSpectra()),
                ElementsAre(Finding::Kind::emission));
}

TEST(plausibility, peakBetweenBands50NanometresApart_isNoLine) {
    const Inspected chart(spectralFields(400, 700, 50),
                          {{0.1, 0.1, 0.5, 0.1, 0.1, 0.1, 0.1}, {0.1, 0.1, 0.4, 0.1, 0.1, 0.1, 0.1}});
    EXPECT_THAT(kindsOf(chart.findInSpectra()), ElementsAre(Finding::Kind::coarseSpectra));
}

TEST(plausibility, rgbWhiteAboveY120_isADisplay) {
    const Inspected chart(
        {"RGB_R", "RGB_G", "RGB_B", "XYZ_X", "XYZ_Y", "XYZ_Z"},
        {{0, 0, 0, 0.4, 0.4, 0.5}, {255, 255, 255, 330, 350, 380}, {128, 128, 128, 70, 75, 80}});
    // L* of Y 0.4, 350 and 75 on a white of 100: 3.6, 160.12, 89.4; Y of L* 160.12 is
    // 100 * (176.12 / 116)^3 = 349.987.
    const std::vector<Finding> findings =
        chart.find(ColorSource::xyz, {{3.6, 0, 0}, {160.12, 0, 0}, {89.4, 0, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::emission));
    EXPECT_THAT(findings[0].text, HasSubstr("row 2 alone of 3 (349.987)"));
}

TEST(plausibility, oneBrightRgbRowThatIsNotWhite_isAWrongValue) {
    const Inspected chart({"RGB_R", "RGB_G", "RGB_B", "XYZ_X", "XYZ_Y", "XYZ_Z"},
                          {{0, 0, 0, 1, 1, 1}, {200, 255, 200, 330, 350, 380}});
    EXPECT_THAT(kindsOf(chart.find(ColorSource::xyz, {{9, 0, 0}, {160.1, 0, 0}})),
                ElementsAre(Finding::Kind::tooLight));
}

TEST(plausibility, twoBrightRgbRowsOfThirty_areWrongValues) {
    std::vector<Values> rows(30, {10, 20, 30, 40, 0, 0});
    rows[3] = {200, 255, 200, 130, 0, 0};
    rows[4] = {200, 255, 210, 131, 0, 0};
    EXPECT_THAT(kindsOf(Inspected(kRgbLabFields, rows).findInLab()), ElementsAre(Finding::Kind::tooLight));
}

TEST(plausibility, threeBrightRgbRowsOfThirty_areADisplay) {
    std::vector<Values> rows(30, {10, 20, 30, 40, 0, 0});
    for (const std::size_t row : {3U, 4U, 5U})
        rows[row] = {200, 255, 200, 130, 0, 0};
    EXPECT_THAT(kindsOf(Inspected(kRgbLabFields, rows).findInLab()), ElementsAre(Finding::Kind::emission));
}

TEST(plausibility, cmykRowsAboveY120_areNoDisplay) {
    const Inspected chart({"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K", "XYZ_X", "XYZ_Y", "XYZ_Z"},
                          {{0, 0, 0, 0, 330, 350, 380}, {0, 0, 0, 100, 1, 1, 1}});
    EXPECT_THAT(kindsOf(chart.find(ColorSource::xyz, {{160.1, 0, 0}, {9, 0, 0}})),
                ElementsAre(Finding::Kind::tooLight));
}

// sRGB on D50 (IEC 61966-2-1, adapted): the primaries add up to white.
const std::vector<Values> kDisplayRows = {{255, 255, 255, 100, 0, 0},
                                          {255, 0, 0, 54.29, 80.80, 69.89},
                                          {0, 255, 0, 87.82, -79.27, 80.99},
                                          {0, 0, 255, 29.57, 68.29, -112.03},
                                          {0, 0, 0, 0, 0, 0}};

TEST(plausibility, rgbPrimariesThatAddUpToWhite_areThoseOfADisplay) {
    const std::vector<Finding> findings = Inspected(kRgbLabFields, kDisplayRows).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::emission));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 1, white, has the sum of rows 2, 3 and 4"));
}

// L* 87 instead of 87.82 is Y 70.0 instead of 71.6.
TEST(plausibility, rgbPrimariesThatNearlyAddUp_areThoseOfADisplay) {
    std::vector<Values> rows = kDisplayRows;
    rows[2][3] = 87.0;
    EXPECT_THAT(kindsOf(Inspected(kRgbLabFields, rows).findInLab()), ElementsAre(Finding::Kind::emission));
}

// 5 percent of the white added to each X, Y and Z: every primary holds the black of the display.
TEST(plausibility, blackOfADisplay_isTakenOffItsPrimaries) {
    const Inspected chart(kRgbLabFields, {{255, 255, 255, 100, 0, 0},
                                          {255, 0, 0, 58.17, 71.69, 47.04},
                                          {0, 255, 0, 88.50, -73.19, 71.19},
                                          {0, 0, 255, 39.17, 50.12, -95.97},
                                          {0, 0, 0, 26.73, 0, 0}});
    EXPECT_THAT(kindsOf(chart.findInLab()), ElementsAre(Finding::Kind::emission));
}

TEST(plausibility, rgbPrimariesTenPercentShort_areNotThoseOfADisplay) {
    std::vector<Values> rows = kDisplayRows;
    rows[2][3] = 82.0; // Y 60.3 instead of 71.5
    EXPECT_THAT(Inspected(kRgbLabFields, rows).findInLab(), IsEmpty());
}

TEST(plausibility, rgbRowsWithoutMeasuredValues_areNotThoseOfADisplay) {
    for (const double value : {0.0, 50.0}) {
        std::vector<Values> rows = kDisplayRows;
        for (Values& row : rows)
            std::fill(row.begin() + 3, row.end(), value);
        EXPECT_THAT(kindsOf(Inspected(kRgbLabFields, rows).findInLab()),
                    ElementsAre(Finding::Kind::equalSpectra))
            << value;
    }
}

// A display measured with a spectrometer, in fractions of its white.
TEST(plausibility, broadSpectraOfRgbThatAddUp_areThoseOfADisplay) {
    std::vector<std::string> fields = {"RGB_R", "RGB_G", "RGB_B"};
    for (const std::string& field : spectralFields(400, 700, 10))
        fields.push_back(field);
    std::vector<Values> rows;
    std::vector<Lab> lab;
    for (const Values& row : kDisplayRows) {
        rows.emplace_back(row.begin(), row.begin() + 3);
        rows.back().resize(3 + kBands, 0.002 + row[3] / 100);
        lab.push_back({row[3], row[4], row[5]});
    }
    EXPECT_THAT(kindsOf(Inspected(fields, rows).find(ColorSource::spectra, lab)),
                ElementsAre(Finding::Kind::emission));
}

TEST(plausibility, rgbPrinter_isNoDisplay) {
    const Inspected chart(kRgbLabFields, {{255, 255, 255, 96, 0, -4},
                                          {255, 0, 0, 48, 70, 50},
                                          {0, 255, 0, 52, -68, 30},
                                          {0, 0, 255, 24, 22, -50},
                                          {0, 0, 0, 5, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

// --- Paper

TEST(plausibility, paperDarkerThanAPatch_isTold) {
    const Inspected chart(kCmykLabFields, {{0, 0, 0, 0, 80.1, 0, 0},
                                           {0, 0, 10, 0, 95.25, 0, 4},
                                           {10, 0, 0, 0, 80.7, -2, 0},
                                           {0, 0, 0, 100, 16, 0, 0}});
    const std::vector<Finding> findings = chart.findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::paperNotLightest));
    EXPECT_THAT(findings[0].text,
                HasSubstr("chart.txt: row 1, the patch without ink, has L* 80.1, but row 2 has "
                          "L* 95.25 (2 rows are lighter)"));
}

TEST(plausibility, paperHalfAUnitDarkerThanATint_isLetPass) {
    const Inspected chart(kCmykLabFields,
                          {{0, 0, 0, 0, 95, 0, 0}, {0, 0, 1, 0, 95.5, 0, 1}, {0, 0, 0, 100, 16, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, paperSixTenthsDarkerThanATint_isTold) {
    const Inspected chart(kCmykLabFields,
                          {{0, 0, 0, 0, 95, 0, 0}, {0, 0, 1, 0, 95.6, 0, 1}, {0, 0, 0, 100, 16, 0, 0}});
    EXPECT_THAT(kindsOf(chart.findInLab()), ElementsAre(Finding::Kind::paperNotLightest));
}

TEST(plausibility, lightestOfSeveralPapers_counts) {
    const Inspected chart(kCmykLabFields,
                          {{0, 0, 0, 0, 93, 0, 0}, {0, 0, 0, 0, 95.2, 0, 0}, {0, 0, 2, 0, 95.1, 0, 1}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, chartWithoutPaper_isLetPass) {
    const Inspected chart(kCmykLabFields, {{0, 0, 0, 5, 70, 0, 0}, {0, 0, 10, 0, 95, 0, 4}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, paperOfRgbIsFullLight_onEveryScale) {
    for (const double full : {1.0, 1.005, 100.0, 100.5, 255.0, 255.5, 1023.0, 65535.0}) {
        const Inspected chart(kRgbLabFields,
                              {{full, full, full, 40, 0, 0}, {0, 0, 0, 95, 0, 0}, {full, 0, 0, 45, 60, 40}});
        const std::vector<Finding> findings = chart.findInLab();
        ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::paperNotLightest)) << full;
        EXPECT_THAT(findings[0].text, HasSubstr("row 1, the patch of full red, green and blue, has L* 40"));
    }
}

TEST(plausibility, deviceValuesOfAnUnknownScale_areLeftAside) {
    const Inspected chart(kRgbLabFields, {{4095, 4095, 4095, 40, 0, 0}, {0, 0, 0, 95, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, deviceValuesThatAreAllZero_areLeftAside) {
    const Inspected chart(kCmykLabFields, {{0, 0, 0, 0, 40, 0, 0}, {0, 0, 0, 0, 95, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, wordsAmongDeviceValues_leaveThemAside) {
    TCgats document;
    const std::vector<Values> rows = {{0, 0, 0, 0, 40, 0, 0}, {0, 0, 10, 0, 95, 0, 0}};
    ASSERT_EQ(document.ReadFromBuffer(documentText(kCmykLabFields, rows).c_str()), 0);
    Chart chart{"chart.txt", &document, 0};
    const std::vector<Lab> lab = {{40, 0, 0}, {95, 0, 0}};
    EXPECT_EQ(qc::implausibilities(chart, ColorSource::lab, {}, lab, {}).size(), 1U);
    chart.doubts.push_back({0, 0, 1, "N/A"});
    EXPECT_THAT(qc::implausibilities(chart, ColorSource::lab, {}, lab, {}), IsEmpty());
}

TEST(plausibility, whiteSpotInkOnDarkMaterial_isLetPass) {
    std::vector<std::string> fields = kCmykLabFields;
    fields.insert(fields.begin() + 4, "SPOT_1");
    const Inspected chart(
        fields, {{0, 0, 0, 0, 0, 60, 5, 15}, {0, 0, 0, 0, 100, 93, 0, 0}, {0, 0, 0, 100, 0, 12, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

// --- a* and b*

// Offset print on coated paper, in round numbers (ISO 12647-2).
const std::vector<Values> kPrint = {{100, 0, 0, 0, 55, -37, -50},  {0, 100, 0, 0, 48, 74, -3},
                                    {0, 0, 100, 0, 89, -5, 93},    {0, 100, 100, 0, 47, 68, 48},
                                    {100, 0, 100, 0, 50, -68, 33}, {100, 100, 0, 0, 24, 22, -46},
                                    {0, 0, 0, 100, 16, 0, 0},      {0, 0, 0, 0, 95, 0, -2}};

std::vector<Values> exchanged(std::vector<Values> rows) {
    for (Values& row : rows)
        std::swap(row[row.size() - 2], row[row.size() - 1]);
    return rows;
}

TEST(plausibility, printOfKnownHues_isLetPass) {
    EXPECT_THAT(Inspected(kCmykLabFields, kPrint).findInLab(), IsEmpty());
}

TEST(plausibility, exchangedAxesOfAPrint_areTold) {
    const std::vector<Finding> findings = Inspected(kCmykLabFields, exchanged(kPrint)).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::exchangedAxes));
    EXPECT_THAT(findings[0].text,
                HasSubstr("chart.txt: row 2, a magenta patch by its device values, has a* -3 and "
                          "b* 74; this and 3 more pure patches (magenta, yellow, green, blue)"));
}

TEST(plausibility, exchangedAxesOfRgbPrints_areTold) {
    const std::vector<Values> rows = {
        {255, 255, 0, 88, -6, 90}, {255, 0, 255, 50, 72, -20}, {255, 255, 255, 95, 0, 0}};
    EXPECT_THAT(Inspected(kRgbLabFields, rows).findInLab(), IsEmpty());
    EXPECT_THAT(kindsOf(Inspected(kRgbLabFields, exchanged(rows)).findInLab()),
                ElementsAre(Finding::Kind::exchangedAxes));
}

TEST(plausibility, exchangedAxesOfNearlyFullColours_areTold) {
    const Inspected chart(kCmykLabFields, {{0, 0, 92, 4, 85, 88, -5}, {0, 92, 0, 8, 48, -3, 70}});
    EXPECT_THAT(kindsOf(chart.findInLab()), ElementsAre(Finding::Kind::exchangedAxes));
}

TEST(plausibility, exchangedAxesOfSixColours_areTold) {
    std::vector<std::string> fields;
    for (int channel = 1; channel <= 6; ++channel)
        fields.push_back("6CLR_" + std::to_string(channel));
    fields.insert(fields.end(), kLabFields.begin(), kLabFields.end());
    const std::vector<Values> rows = {{0, 0, 100, 0, 0, 0, 89, -5, 93},
                                      {0, 100, 0, 0, 0, 0, 48, 74, -3},
                                      {0, 0, 0, 0, 0, 0, 95, 0, -2},
                                      {0, 0, 100, 0, 100, 0, 65, 93, -5}};
    EXPECT_THAT(Inspected(fields, rows).findInLab(), IsEmpty());
    EXPECT_THAT(kindsOf(Inspected(fields, exchanged(rows)).findInLab()),
                ElementsAre(Finding::Kind::exchangedAxes));
}

TEST(plausibility, oneColourAlone_doesNotShowAnExchange) {
    const Inspected chart(kCmykLabFields, {{0, 0, 100, 0, 89, 93, -5}, {0, 0, 98, 0, 89, 92, -5}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, onePatchOfItsOwnHue_speaksAgainstAnExchange) {
    std::vector<Values> rows = exchanged(kPrint);
    rows.push_back({0, 0, 100, 0, 88, -5, 91});
    EXPECT_THAT(Inspected(kCmykLabFields, rows).findInLab(), IsEmpty());
}

TEST(plausibility, palePatches_showNoExchange) {
    const Inspected chart(kCmykLabFields, {{0, 0, 100, 0, 89, 19, -1}, {0, 100, 0, 0, 48, -1, 19}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, huesOfSpectra_areNotTakenForExchanged) {
    std::vector<std::string> fields = {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"};
    for (const std::string& field : spectralFields(400, 700, 10))
        fields.push_back(field);
    std::vector<Values> rows = {{0, 0, 100, 0}, {0, 100, 0, 0}};
    for (Values& row : rows)
        row.resize(4 + kBands, 0.4 + row[1] / 1000);
    EXPECT_THAT(kindsOf(Inspected(fields, rows).find(ColorSource::spectra, {{89, 93, -5}, {48, -3, 74}})),
                ElementsAre(Finding::Kind::otherHues));
}

// --- Lab against XYZ

std::vector<std::string> labAndXyz() {
    std::vector<std::string> fields = kLabFields;
    fields.insert(fields.end(), kXyzFields.begin(), kXyzFields.end());
    return fields;
}

// On the white 96.42, 100, 82.49 by hand: fy = (50 + 16) / 116, fx = fy + 20 / 500, fz = fy - 30 / 200; X, Y
// and Z are the cubes times the white: 21.7744, 18.4187, 6.0665. The second row is a grey of L* 70.
const std::vector<Values> kLabXyzRows = {{50, 20, 30, 21.7744, 18.4187, 6.0665},
                                         {70, 0, 0, 39.2906, 40.7494, 33.6142}};

TEST(plausibility, labAndXyzHalfAUnitApart_areLetPass) {
    std::vector<Values> rows = kLabXyzRows;
    rows[0][0] = 50.25; // no rounding to whole numbers
    EXPECT_THAT(Inspected(labAndXyz(), rows).findInLab({{50.25, 20, 30}, {70, 0, 0.5}}), IsEmpty());
}

TEST(plausibility, labAndXyzSixTenthsApart_areTold) {
    const Inspected chart(labAndXyz(),
                          {{50.25, 20, 30, 22.0064, 18.6287, 6.1606}, {70, 0, 0, 39.2906, 40.7494, 33.6142}});
    const std::vector<Finding> findings = chart.findInLab({{50.25, 20, 30}, {70, 0, 0.6}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::labAgainstXyz));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 2 alone of 2: Delta E 0.6 between"));
}

TEST(plausibility, xyzComparedBesideOtherLab_isTold) {
    const Inspected chart(labAndXyz(), kLabXyzRows);
    EXPECT_THAT(chart.find(ColorSource::xyz, {{50, 20, 30}, {70, 0, 0}}), IsEmpty());
    EXPECT_THAT(kindsOf(chart.find(ColorSource::xyz, {{50, 20, 30}, {70, 0, 3}})),
                ElementsAre(Finding::Kind::labAgainstXyz));
}

TEST(plausibility, labInWholeNumbers_mayDifferByTheirRounding) {
    const Inspected chart(labAndXyz(), kLabXyzRows);
    EXPECT_THAT(chart.findInLab({{50.4, 20.4, 30.4}, {70, 0, 0}}), IsEmpty());
    EXPECT_THAT(kindsOf(chart.findInLab({{51.5, 20, 30}, {70, 0, 0}})),
                ElementsAre(Finding::Kind::labAgainstXyz));
}

// Y of 0.3 may be 0.34: L* 2.71 or 3.07, and a* and b* move along.
TEST(plausibility, darkXyzOfOneDecimal_mayDifferByTheirRounding) {
    const std::vector<Lab> fromXyz = {{2.71, 0, 0}, {93.9, 0, 0}};
    EXPECT_THAT(Inspected(labAndXyz(), {{2.71, 1.3, 0.9, 0.3, 0.3, 0.2}, {93.9, 0, 0, 81.9, 85, 70.1}})
                    .findInLab(fromXyz),
                IsEmpty());
    EXPECT_THAT(
        kindsOf(Inspected(labAndXyz(), {{2.71, 1.3, 0.9, 0.29, 0.3, 0.25}, {93.9, 0, 0, 81.9, 85, 70.1}})
                    .findInLab(fromXyz)),
        ElementsAre(Finding::Kind::labAgainstXyz));
}

TEST(plausibility, labThatAgreesWithXyzOnceExchanged_isExchanged) {
    const Inspected chart(labAndXyz(),
                          {{50, 30, 20, 21.7744, 18.4187, 6.0665}, {70, 0, 9, 42.2224, 40.7494, 33.6142}});
    const std::vector<Finding> findings = chart.findInLab({{50, 20, 30}, {70, 9, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::exchangedAxes));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 1 and 1 more of 2"));
}

TEST(plausibility, spectraBesideXyzOfOtherConditions_areLetPass) {
    std::vector<std::string> fields = kXyzFields;
    for (const std::string& field : spectralFields(400, 700, 10))
        fields.push_back(field);
    std::vector<Values> rows = {{20, 20, 20}, {10, 10, 10}};
    rows[0].resize(3 + kBands, 0.2);
    rows[1].resize(3 + kBands, 0.1);
    EXPECT_THAT(Inspected(fields, rows)
                    .find(ColorSource::spectra, {{51.8, 0, 0}, {37.8, 0, 0}}, {{51.8, 5, 0}, {37.8, 5, 0}}),
                IsEmpty());
}

// --- Scale of Lab

std::vector<Values> withLab(std::vector<Values> rows, double factor, double lightnessFactor, double offset) {
    for (Values& row : rows) {
        const std::size_t last = row.size() - 1;
        row[last - 2] *= lightnessFactor;
        row[last - 1] = row[last - 1] * factor + offset;
        row[last] = row[last] * factor + offset;
    }
    return rows;
}

TEST(plausibility, axesWith128Added_areTold) {
    const std::vector<Finding> findings = Inspected(kCmykLabFields, withLab(kPrint, 1, 1, 128)).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::labScale));
    EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    EXPECT_THAT(findings[0].text, HasSubstr("128 had been added"));
}

// Z of b* 128 needs L* 74 and more: 116 / 200 * 128.
TEST(plausibility, lightRowsWith128Added_areToldWithoutInks) {
    const std::vector<Finding> findings =
        Inspected(kLabFields, {{90, 130, 125}, {88, 120, 135}, {80, 128, 128}}).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::labScale));
    EXPECT_THAT(findings[0].text, testing::StartsWith("chart.txt: row 1 and 1 more of 3, most in row 1"));
}

TEST(plausibility, paperWithBothAxesFarOff_isTold) {
    EXPECT_THAT(
        kindsOf(Inspected(kCmykLabFields, {{0, 0, 0, 0, 80, 75, 70}, {0, 0, 0, 100, 70, 1, 2}}).findInLab()),
        testing::Contains(Finding::Kind::labScale));
}

TEST(plausibility, labDividedBy100_isTold) {
    const std::vector<Finding> findings =
        Inspected(kCmykLabFields, withLab(kPrint, 0.01, 0.01, 0)).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::labScale));
    EXPECT_THAT(findings[0].text, HasSubstr("L* is 0.95 at most in 8 rows"));
}

TEST(plausibility, orangesAndNoisyBlacks_areLetPass) {
    EXPECT_THAT(Inspected(kLabFields, {{72, 70, 85}, {68, 75, 90}, {0.4, 2, 3}, {1, -3, 5}}).findInLab(),
                IsEmpty());
}

// b* of 93 at L* 12 lies beyond 200 / 116 * 12 = 20.7.
TEST(plausibility, oneImpossibleRowOfEight_isLetPass) {
    std::vector<Values> rows = kPrint;
    rows[6] = {0, 0, 0, 100, 12, 0, 93};
    EXPECT_THAT(Inspected(kCmykLabFields, rows).findInLab(), IsEmpty());
    rows.push_back({0, 0, 0, 90, 14, 0, 93});
    EXPECT_THAT(kindsOf(Inspected(kCmykLabFields, rows).findInLab()), ElementsAre(Finding::Kind::labScale));
}

// --- White of paper

constexpr std::array<double, 3> kWhiteOfD50 = {96.422, 100.0, 82.521};

Kinds kindsOfPaper(ColorSource source, const Lab& paper, const std::array<double, 3>& white = kWhiteOfD50) {
    const Inspected chart(kCmykLabFields,
                          {{0, 0, 0, 0, 95, 0, -2}, {0, 0, 0, 100, 16, 0, 0}, {50, 0, 0, 0, 60, -20, -25}});
    return kindsOf(
        qc::implausibilities(chart.chart(), source, {}, {paper, {16, 0, 0}, {60, -20, -25}}, {}, white));
}

// Paper of L* 95 (Y 87.6) and X, Y, Z proportional to the white of D65, on that of D50: fy 0.9569, X/Xn is
// 0.876 * 95.047 / 96.422, Z/Zn 0.876 * 108.883 / 82.521; a* = 500 * (0.9523 - 0.9569), b* = 200 * (0.9569
// - 1.0495).
TEST(plausibility, paperOfD65ReadForD50_isTold) {
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, -2.3, -18.5}), ElementsAre(Finding::Kind::otherWhite));
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, -2.3, -18.5}, {}), IsEmpty());
}

TEST(plausibility, brightenedAndCreamPapers_areLetPass) {
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, 3, -13}), IsEmpty());
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, 3, -15.5}), IsEmpty());
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {90, 2, 20}), IsEmpty());
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {65, 7, 20}), IsEmpty());
}

// The same paper with X and Z exchanged: X/Xn is 0.876 * 82.521 / 96.422, Z/Zn 0.876 * 96.422 / 82.521.
TEST(plausibility, paperWithXAndZExchanged_isTold) {
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, -24.2, -10.2}), IsEmpty());
    std::vector<std::string> fields = {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K", "XYZ_X", "XYZ_Y", "XYZ_Z"};
    const Inspected exchangedChart(fields, {{0, 0, 0, 0, 72.3, 87.6, 84.5}, {0, 0, 0, 100, 2, 2, 2}});
    const std::vector<Finding> findings = qc::implausibilities(
        exchangedChart.chart(), ColorSource::xyz, {}, {{95, -24.2, -10.2}, {15, 0, 0}}, {}, kWhiteOfD50);
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::otherWhite));
    EXPECT_THAT(findings[0].text, HasSubstr("X and Z are exchanged"));
}

// --- Order of the bands

TEST(plausibility, paperThatReflectsVioletBetterThanRed_isTold) {
    std::vector<std::string> fields = spectralFields(380, 730, 10);
    Values paper = {0, 0, 0, 0};
    for (int band = 0; band < 36; ++band)
        paper.push_back(band < 4 ? 0.45 + 0.1 * band : 0.88);
    Values black(40, 0.02);
    std::fill(black.begin(), black.begin() + 3, 0.0);
    black[3] = 100;
    fields.insert(fields.begin(), {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"});
    const std::vector<Lab> lab = {{95, 0, 1}, {15, 0, 0}};
    EXPECT_THAT(Inspected(fields, {paper, black}).find(ColorSource::spectra, lab), IsEmpty());
    std::reverse(paper.begin() + 4, paper.end());
    EXPECT_THAT(kindsOf(Inspected(fields, {paper, black}).find(ColorSource::spectra, lab)),
                ElementsAre(Finding::Kind::bandOrder));
}

// --- Hues

TEST(plausibility, coloursOfOtherColumns_areTold) {
    std::vector<Values> rows = kPrint;
    for (Values& row : rows)
        std::swap(row[0], row[2]);
    const std::vector<Finding> findings = Inspected(kCmykLabFields, rows).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::otherHues));
    EXPECT_THAT(findings[0].text, HasSubstr("row 1, a yellow patch by its device values, has a* -37"));
}

TEST(plausibility, oneColourOfAnotherHue_isLetPass) {
    std::vector<Values> rows = kPrint;
    rows[0][5] = 40;
    EXPECT_THAT(Inspected(kCmykLabFields, rows).findInLab(), IsEmpty());
}

// --- Rows of zeros

TEST(plausibility, rowsOfZerosButFullInk_areTold) {
    std::vector<Values> rows = kPrint;
    rows[6] = {0, 0, 0, 100, 0, 0, 0};
    EXPECT_THAT(Inspected(kCmykLabFields, rows).findInLab(), IsEmpty());
    rows[5] = {100, 100, 0, 0, 0, 0, 0};
    const std::vector<Finding> findings = Inspected(kCmykLabFields, rows).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::unmeasured));
    EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    EXPECT_THAT(findings[0].text, testing::StartsWith("chart.txt: row 6 and 1 more: Lab is 0 0 0"));
}

TEST(plausibility, spectraOfZerosAmongOthers_areTold) {
    const std::vector<Finding> findings =
        spectralChart({flat(0.5), flat(0), flat(0), flat(0.1)}).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::unmeasured));
    EXPECT_THAT(findings[0].text,
                testing::StartsWith("chart.txt: row 2 and 1 more: the spectrum is 0 throughout"));
}

// --- Real and shipped charts

TEST(plausibility, shippedCharts_areLetPass) {
    for (const char* name : {"colorchecker_spectral.txt", "colorchecker_aims.txt"}) {
        TCgats document((std::string(QXCMS_SOURCE_DIR "/data/charts/") + name).c_str());
        ASSERT_EQ(document.GetErrorCode(), 0);
        const Chart chart{name, &document, 0};
        const ColorSource source = qc::colorSource(chart, {});
        const qc::Illuminants illuminants;
        const TObserver observer("2 degree");
        const qc::Conditions conditions(*illuminants.find("D50"), observer);
        EXPECT_THAT(qc::implausibilities(chart, source, {}, qc::labRows(chart, source, &conditions), {}),
                    IsEmpty());
    }
}

} // namespace
} // namespace qxcms::tests
