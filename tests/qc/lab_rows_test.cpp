#include "qc/lab_rows.h"

#include "qc/conditions.h"

#include <gmock/gmock.h>

#include "measurement/tonemeasurement.h"
#include "qc/illuminants.h"
#include "qc/observers.h"
#include "qc/refusal.h"
#include "spectral/tilluminantandobserver.h"
#include "tests/support/chart_text.h"

using namespace qxcms::qc;
using qxcms::tests::chartText;
using qxcms::tests::OwnedChart;
using testing::AllOf;
using testing::HasSubstr;

namespace {

class labRowsOf : public testing::Test {
protected:
    Illuminants illuminants;
    Conditions d50{*illuminants.find("D50"), findObserver("2")};

    std::vector<Lab> rows(const std::string& fields, const std::vector<std::string>& lines,
                          ColorSource source) const {
        return labRows(OwnedChart("chart.txt", chartText(fields, lines)), source, &d50);
    }

    std::string refusal(const std::string& fields, const std::vector<std::string>& lines,
                        ColorSource source) const {
        try {
            rows(fields, lines, source);
        } catch (const Refusal& refused) {
            EXPECT_EQ(refused.kind(), Refusal::Kind::unreadable);
            return refused.what();
        }
        ADD_FAILURE() << "the chart was accepted";
        return "";
    }
};

constexpr const char* kLab = "SAMPLE_ID LAB_L LAB_A LAB_B";
constexpr const char* kXyz = "SAMPLE_ID XYZ_X XYZ_Y XYZ_Z";
constexpr const char* kThreeBands = "SAMPLE_ID SPECTRAL_400 SPECTRAL_550 SPECTRAL_700";

void expectLab(const Lab& lab, double l, double a, double b, double tolerance) {
    EXPECT_NEAR(lab[0], l, tolerance);
    EXPECT_NEAR(lab[1], a, tolerance);
    EXPECT_NEAR(lab[2], b, tolerance);
}

TEST_F(labRowsOf, labColumns_standAsTheyAre) {
    const std::vector<Lab> result = rows(kLab, {"1 50.125 -3.5 4", "2 101 0 -200"}, ColorSource::lab);
    ASSERT_EQ(result.size(), 2u);
    EXPECT_EQ(result[0], (Lab{50.125, -3.5, 4.0}));
    EXPECT_EQ(result[1], (Lab{101.0, 0.0, -200.0}));
}

// L* = 116 * 0.18^(1/3) - 16 = 49.496 for 18 % of the white.
TEST_F(labRowsOf, xyzColumns_areConvertedOnThePublishedWhite) {
    const std::vector<Lab> result =
        rows(kXyz, {"1 96.422 100 82.521", "2 17.35596 18 14.85378"}, ColorSource::xyz);
    ASSERT_EQ(result.size(), 2u);
    expectLab(result[0], 100.0, 0.0, 0.0, 0.0001);
    expectLab(result[1], 49.4961, 0.0, 0.0, 0.0001);
}

TEST_F(labRowsOf, flatSpectrum_isNeutral) {
    const std::vector<Lab> result = rows(kThreeBands, {"1 1 1 1", "2 0.18 0.18 0.18"}, ColorSource::spectra);
    ASSERT_EQ(result.size(), 2u);
    expectLab(result[0], 100.0, 0.0, 0.0, 1e-9);
    expectLab(result[1], 49.4961, 0.0, 0.0, 0.0001);
}

TEST_F(labRowsOf, spectraInPercent_countAsFractions) {
    const std::vector<Lab> result = rows(kThreeBands, {"1 100 100 100", "2 18 18 18"}, ColorSource::spectra);
    ASSERT_EQ(result.size(), 2u);
    expectLab(result[0], 100.0, 0.0, 0.0, 1e-9);
    expectLab(result[1], 49.4961, 0.0, 0.0, 0.0001);
}

TEST_F(labRowsOf, spectra_giveWhatTheirMeasurementGives) {
    const OwnedChart chart("chart.txt", chartText(kThreeBands, {"1 0.07 0.42 0.61"}));
    const Chart& side = chart;
    TIlluminant* const illuminant = illuminants.find("D50");
    TObserver observer(0);
    const TMeasGeom geometry(0);
    const std::unique_ptr<TOneMeasurement> measurement(
        side.document->GetMeasurement(0, 0, illuminant, &observer, &geometry));
    ASSERT_NE(measurement, nullptr);
    Lab expected;
    ASSERT_EQ(measurement->GetLAB(illuminant, &observer, d50.white().data(), expected.data()), 0);
    EXPECT_EQ(labRows(chart, ColorSource::spectra, &d50)[0], expected);
}

// The scale is that of the whole chart: its largest Y stays below 2.
TEST_F(labRowsOf, xyzOnTheScaleOfOne_countsAsThatOfAHundred) {
    const std::vector<Lab> result =
        rows(kXyz, {"1 0.96422 1 0.82521", "2 0.1735596 0.18 0.1485378"}, ColorSource::xyz);
    ASSERT_EQ(result.size(), 2u);
    expectLab(result[0], 100.0, 0.0, 0.0, 1e-9);
    expectLab(result[1], 49.4961, 0.0, 0.0, 0.0001);
}

// L* = 903.2963 * Y / Yn for Y / Yn up to 0.008856.
TEST_F(labRowsOf, darkXyzBesideLight_keepsTheScaleOfAHundred) {
    const std::vector<Lab> result =
        rows(kXyz, {"1 0.48211 0.5 0.412605", "2 96.422 100 82.521"}, ColorSource::xyz);
    ASSERT_EQ(result.size(), 2u);
    expectLab(result[0], 4.51648, 0.0, 0.0, 0.0001);
}

// L* = 116 * 0.02^(1/3) - 16.
TEST_F(labRowsOf, xyzWhoseLargestYIsTwo_isOnTheScaleOfAHundred) {
    expectLab(rows(kXyz, {"1 1.92844 2 1.65042"}, ColorSource::xyz).at(0), 15.4872, 0.0, 0.0, 0.0001);
}

TEST_F(labRowsOf, labColumns_needNoConditions) {
    const OwnedChart chart("chart.txt", chartText(kLab, {"1 50 -3 4"}));
    EXPECT_EQ(labRows(chart, ColorSource::lab, nullptr).at(0), (Lab{50.0, -3.0, 4.0}));
}

TEST_F(labRowsOf, labValueThatIsNotFinite_isRefusedWithRowAndColumn) {
    EXPECT_THAT(refusal(kLab, {"1 50 0 0", "2 50 inf 0"}, ColorSource::lab),
                AllOf(HasSubstr("chart.txt: row 2, column \"LAB_A\""), HasSubstr("inf")));
    EXPECT_THAT(refusal(kLab, {"1 50 0 1e999"}, ColorSource::lab), HasSubstr("row 1, column \"LAB_B\""));
}

TEST_F(labRowsOf, xyzValueThatIsNotFinite_isRefusedWithRowAndColumn) {
    EXPECT_THAT(refusal(kXyz, {"1 nan 1 1"}, ColorSource::xyz), HasSubstr("row 1, column \"XYZ_X\""));
}

TEST_F(labRowsOf, spectralValueThatIsNotFinite_isRefusedWithRowAndColumn) {
    EXPECT_THAT(refusal(kThreeBands, {"1 1 1 1", "2 1 1 1", "3 0 -inf 1"}, ColorSource::spectra),
                HasSubstr("row 3, column \"SPECTRAL_550\""));
}

TEST_F(labRowsOf, spectralColumnIsNamed_whateverTheColumnOrder) {
    EXPECT_THAT(refusal("SPECTRAL_700 SPECTRAL_400 SPECTRAL_550", {"1 nan 1"}, ColorSource::spectra),
                HasSubstr("column \"SPECTRAL_400\""));
}

TEST_F(labRowsOf, valuesTooLargeForALab_areRefused) {
    EXPECT_THAT(refusal(kThreeBands, {"1 1e308 1e308 1e308"}, ColorSource::spectra),
                AllOf(HasSubstr("row 1"), HasSubstr("too large")));
}

TEST_F(labRowsOf, twoSamplesAtOneWavelength_areRefusedWithRowAndColumn) {
    EXPECT_THAT(refusal("SAMPLE_ID SPECTRAL_400 nm550 SPECTRAL_550", {"1 1 1 1"}, ColorSource::spectra),
                AllOf(HasSubstr("row 1, column \"SPECTRAL_550\" (number 4)"),
                      HasSubstr("\"nm550\" (number 3)"), HasSubstr("550 nm")));
}

TEST_F(labRowsOf, moreThan1024Bands_areRefusedWithRowAndColumn) {
    std::string fields;
    std::string line;
    for (int nm = 1; nm <= 1025; ++nm) {
        fields += "nm" + std::to_string(nm) + ' ';
        line += "0.5 ";
    }
    EXPECT_THAT(refusal(fields, {line}, ColorSource::spectra),
                AllOf(HasSubstr("row 1, column \"nm1025\""), HasSubstr("1025"), HasSubstr("at most 1024")));
}

TEST_F(labRowsOf, exactly1024Bands_areAccepted) {
    std::string fields;
    std::string line;
    for (int nm = 1; nm <= 1024; ++nm) {
        fields += "nm" + std::to_string(nm) + ' ';
        line += "1 ";
    }
    expectLab(rows(fields, {line}, ColorSource::spectra).at(0), 100.0, 0.0, 0.0, 1e-9);
}

TEST(colorSource, isTheFirstOfSpectraLabXyz) {
    const OwnedChart all("c",
                         chartText("XYZ_X XYZ_Y XYZ_Z LAB_L LAB_A LAB_B nm400 nm500", {"1 2 3 4 5 6 7 8"}));
    const OwnedChart two("c", chartText("XYZ_X XYZ_Y XYZ_Z LAB_L LAB_A LAB_B", {"1 2 3 4 5 6"}));
    const OwnedChart one("c", chartText("XYZ_X XYZ_Y XYZ_Z", {"1 2 3"}));
    EXPECT_EQ(colorSource(all, std::nullopt), ColorSource::spectra);
    EXPECT_EQ(colorSource(two, std::nullopt), ColorSource::lab);
    EXPECT_EQ(colorSource(one, std::nullopt), ColorSource::xyz);
}

TEST(colorSource, isWhatWasAskedFor) {
    const OwnedChart all("c",
                         chartText("XYZ_X XYZ_Y XYZ_Z LAB_L LAB_A LAB_B nm400 nm500", {"1 2 3 4 5 6 7 8"}));
    EXPECT_EQ(colorSource(all, ColorSource::xyz), ColorSource::xyz);
    EXPECT_EQ(colorSource(all, ColorSource::lab), ColorSource::lab);
}

TEST(colorSource, askedForWhatIsNotThere_isRefused) {
    const OwnedChart chart("c.txt", chartText("LAB_L LAB_A LAB_B", {"1 2 3"}));
    try {
        colorSource(chart, ColorSource::spectra);
        FAIL();
    } catch (const Refusal& refusal) {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::notComparable);
        EXPECT_STREQ(refusal.what(), "c.txt holds no spectra, only Lab values");
    }
}

TEST(colorSource, noColourData_isRefused) {
    const OwnedChart chart("c.txt", chartText("SAMPLE_ID LAB_L LAB_A", {"1 2 3"}));
    try {
        colorSource(chart, std::nullopt);
        FAIL();
    } catch (const Refusal& refusal) {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::notComparable);
        EXPECT_THAT(refusal.what(), HasSubstr("c.txt holds no colour data"));
    }
}

} // namespace
