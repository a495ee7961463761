// Measurements of light.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qc/illuminants.h"
#include "tests/qc/inspected_chart.h"

namespace qxcms::tests {
namespace {

using qc::ColorSource;
using qc::Finding;
using qc::Lab;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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

// As of wavelength tiles: what is left between two gaps is no lighter than all the rest.
TEST(plausibility, narrowGapsOfRareEarths_areLetPass) {
    const auto tile = [](double height) {
        Values values = flat(height);
        for (const int gap : {440, 480, 520, 580, 600})
            values[bandAt(gap)] = 0.3 * height;
        return values;
    };
    EXPECT_THAT(spectralChart({tile(0.85), tile(0.6)}).findInSpectra(), IsEmpty());
}

// Peak at 520 nm, half the height 26 nm away: as narrow as colours get that only absorb.
TEST(plausibility, pureGreenReflectances_areLetPass) {
    const auto green = [](double height) {
        Values values;
        for (int nm = 400; nm <= 700; nm += 10)
            values.push_back(0.01 + height * std::exp(-std::log(2.0) * std::pow((nm - 520) / 26.0, 2)));
        return values;
    };
    EXPECT_THAT(spectralChart({green(0.5), green(0.3)}).findInSpectra(), IsEmpty());
}

// Fluorescent green and orange, 45 nm wide at half of their height.
TEST(plausibility, fluorescentInks_areLetPass) {
    const auto ink = [](double peak, double height) {
        Values values;
        for (int nm = 400; nm <= 700; nm += 10)
            values.push_back(0.05 + height * std::exp(-std::log(2.0) * std::pow((nm - peak) / 22.5, 2)));
        return values;
    };
    EXPECT_THAT(spectralChart({ink(520, 1.9), ink(600, 1.6), ink(520, 1.0), ink(600, 0.8)}).findInSpectra(),
                IsEmpty());
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

} // namespace
} // namespace qxcms::tests
