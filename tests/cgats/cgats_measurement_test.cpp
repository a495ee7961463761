// The measurement object that a document makes of one sample.
#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "measurement/colorimetric_measurements.h"
#include "measurement/spectral_measurements.h"
#include "spectral/tilluminantandobserver.h"
#include "tests/cgats/read_document.h"
#include "tests/support/reports.h"

namespace {

using qxcms::tests::ReadDocument;
using qxcms::tests::tableOf;

using Measurement = std::unique_ptr<TOneMeasurement>;
using Triple = std::array<double, 3>;

// The conditions of a request: an illuminant that rises with the wavelength, the 2 degree observer, 0/45.
struct Conditions {
    explicit Conditions(const char* illuminantName = "rising", int observerNumber = 0)
        : illuminant(&rising(), illuminantName), observer(observerNumber), geometry(1) {}

    static const TSpectrum& rising() {
        static const double wavelengths[] = {380, 730};
        static const double powers[] = {50, 120};
        static const TSpectrum spectrum(wavelengths, 2, powers);
        return spectrum;
    }

    Measurement of(const TCgats& document, int sample = 0, int table = 0) {
        return Measurement(document.GetMeasurement(table, sample, &illuminant, &observer, &geometry));
    }

    // The white of the weighting of these conditions over 36 points.
    Triple white() const {
        const TIlluminantAndObserver weighting(&illuminant, &observer, 36);
        Triple xyz;
        EXPECT_EQ(weighting.GetXYZWhite(xyz.data()), 0);
        return xyz;
    }

    TIlluminant illuminant;
    TObserver observer;
    TMeasGeom geometry;
};

Triple whiteOf(const Measurement& measurement) {
    const auto* lab = dynamic_cast<const TLABMeasurement*>(measurement.get());
    if (lab == nullptr) {
        ADD_FAILURE() << "no Lab measurement";
        return {};
    }
    const double* white = lab->GetWhite();
    return {white[0], white[1], white[2]};
}

std::vector<double> samplesOf(const Measurement& measurement) {
    const TSpectrum* spectrum = measurement->GetSpectrum();
    return {spectrum->GetValues(), spectrum->GetValues() + spectrum->GetNrSamples()};
}

std::vector<double> wavelengthsOf(const Measurement& measurement) {
    const TSpectrum* spectrum = measurement->GetSpectrum();
    return {spectrum->GetWavelengths(), spectrum->GetWavelengths() + spectrum->GetNrSamples()};
}

std::vector<double> standardValuesOf(const Measurement& measurement) {
    const double* values = measurement->GetUniformSpectrum(nullptr, nullptr, nullptr);
    return {values, values + TSpectrum::kStandardCount};
}

std::vector<double> coordinatesOf(const Measurement& measurement) {
    int count = -1;
    const double* coordinates = measurement->GetCoord(&count);
    EXPECT_EQ(coordinates == nullptr, count == 0);
    return std::vector<double>(coordinates, coordinates + count);
}

// A table of `count` spectral columns from 1 nm on, and one sample of a flat reflectance.
std::string manyBands(int count) {
    std::string fields;
    std::string values;
    for (int i = 1; i <= count; ++i) {
        fields += "nm" + std::to_string(i) + " ";
        values += "0.5 ";
    }
    return tableOf(fields, {values});
}

// ---- spectral tables ----

TEST(cgatsMeasurement, spectralTable_givesAReflectionSpectrum) {
    const ReadDocument document(tableOf("nm400 nm500", {"0.1 0.2"}));
    const Measurement measurement = Conditions().of(document);
    ASSERT_NE(measurement, nullptr);
    EXPECT_NE(dynamic_cast<TReflectionSpectrum*>(measurement.get()), nullptr);
    EXPECT_EQ(measurement->GetStatus(), 0);
}

TEST(cgatsMeasurement, spectra_goBeforeLabAndXyz) {
    const ReadDocument document(
        tableOf("LAB_L LAB_A LAB_B XYZ_X XYZ_Y XYZ_Z nm400", {"50 1 2 20 21 22 0.5"}));
    const Measurement measurement = Conditions().of(document);
    ASSERT_NE(measurement, nullptr);
    EXPECT_NE(dynamic_cast<TReflectionSpectrum*>(measurement.get()), nullptr);
}

TEST(cgatsMeasurement, spectrum_holdsWavelengthsAndValuesOfTheSampleInAscendingOrder) {
    const ReadDocument document(tableOf("nm500 nm380 nm730 nm410", {"9 9 9 9", "0.5 0.25 0.75 0.125"}));
    const Measurement measurement = Conditions().of(document, 1);
    ASSERT_NE(measurement, nullptr);
    ASSERT_NE(measurement->GetSpectrum(), nullptr);
    EXPECT_EQ(wavelengthsOf(measurement), (std::vector<double>{380, 410, 500, 730}));
    EXPECT_EQ(samplesOf(measurement), (std::vector<double>{0.25, 0.125, 0.5, 0.75}));
}

TEST(cgatsMeasurement, spectrum_inPercentIsGivenAsFraction) {
    const ReadDocument document(tableOf("nm400 nm500", {"57 5"}));
    const Measurement measurement = Conditions().of(document);
    ASSERT_NE(measurement, nullptr);
    EXPECT_EQ(samplesOf(measurement), (std::vector<double>{57 * 0.01, 5 * 0.01}));
}

TEST(cgatsMeasurement, spectrum_isSampledToTheStandardWavelengths) {
    // From 400 nm to 600 nm a straight line, constant outside.
    const ReadDocument document(tableOf("nm400 nm600", {"0.25 0.75"}));
    const Measurement measurement = Conditions().of(document);
    ASSERT_NE(measurement, nullptr);
    const std::vector<double> values = standardValuesOf(measurement);
    EXPECT_EQ(values[0], 0.25);
    EXPECT_EQ(values[2], 0.25);
    EXPECT_EQ(values[12], 0.5);
    EXPECT_EQ(values[22], 0.75);
    EXPECT_EQ(values[35], 0.75);
}

TEST(cgatsMeasurement, perfectWhite_hasYOf100) {
    const ReadDocument document(tableOf("nm400 nm700", {"1 1"}));
    Conditions conditions;
    const Measurement measurement = conditions.of(document);
    ASSERT_NE(measurement, nullptr);
    Triple xyz;
    ASSERT_EQ(measurement->GetXYZ(&conditions.illuminant, &conditions.observer, xyz.data()), 0);
    EXPECT_NEAR(xyz[1], 100.0, 1e-9);
}

TEST(cgatsMeasurement, spectrum_needsNoIlluminantAndNoObserver) {
    const ReadDocument document(tableOf("nm400", {"0.5"}));
    const Measurement measurement(document.GetMeasurement(0, 0, nullptr, nullptr, nullptr));
    ASSERT_NE(measurement, nullptr);
    EXPECT_EQ(standardValuesOf(measurement), std::vector<double>(TSpectrum::kStandardCount, 0.5));
}

TEST(cgatsMeasurement, spectrumOfTwoSamplesAtOneWavelength_isUnset) {
    const ReadDocument document(tableOf("nm400 SPECTRAL_400", {"0.5 0.6"}));
    const Measurement measurement = Conditions().of(document);
    ASSERT_NE(measurement, nullptr);
    EXPECT_EQ(measurement->GetStatus(), 0);
    EXPECT_EQ(standardValuesOf(measurement), std::vector<double>(TSpectrum::kStandardCount, -1.0));
}

TEST(cgatsMeasurement, spectrumOf1024Bands_isSet) {
    const ReadDocument document(manyBands(1024));
    const Measurement measurement = Conditions().of(document);
    ASSERT_NE(measurement, nullptr);
    EXPECT_EQ(measurement->GetSpectrum()->GetNrSamples(), 1024);
    EXPECT_EQ(standardValuesOf(measurement), std::vector<double>(TSpectrum::kStandardCount, 0.5));
}

TEST(cgatsMeasurement, spectrumOf1025Bands_isUnset) {
    const ReadDocument document(manyBands(1025));
    ASSERT_EQ(document.GetNrWaveLengths(0), 1025);
    const Measurement measurement = Conditions().of(document);
    ASSERT_NE(measurement, nullptr);
    EXPECT_EQ(measurement->GetStatus(), 0);
    EXPECT_EQ(standardValuesOf(measurement), std::vector<double>(TSpectrum::kStandardCount, -1.0));
}

// ---- coordinates and geometry ----

TEST(cgatsMeasurement, coordinates_areTheProcessColorsByChannel) {
    const ReadDocument document(
        tableOf("CMYK_K CMYK_Y CMYK_M CMYK_C nm400", {"4 3 2 1 57", "40 30 20 10 5"}));
    Conditions conditions;
    EXPECT_EQ(coordinatesOf(conditions.of(document, 0)), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(coordinatesOf(conditions.of(document, 1)), (std::vector<double>{10, 20, 30, 40}));
}

TEST(cgatsMeasurement, coordinates_mayBeCustomColors) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" + tableOf("PC1_2 PC1_1 nm400", {"20 10 0.5"}));
    EXPECT_EQ(coordinatesOf(Conditions().of(document)), (std::vector<double>{10, 20}));
}

TEST(cgatsMeasurement, coordinates_mayBeNColors) {
    const ReadDocument document(tableOf("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5 nm400", {"1 2 3 4 5 0.5"}));
    EXPECT_EQ(coordinatesOf(Conditions().of(document)), (std::vector<double>{1, 2, 3, 4, 5}));
}

TEST(cgatsMeasurement, coordinates_standInALabMeasurementToo) {
    const ReadDocument document(tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B", {"1 2 3 4 50 6 7"}));
    EXPECT_EQ(coordinatesOf(Conditions().of(document)), (std::vector<double>{1, 2, 3, 4}));
}

TEST(cgatsMeasurement, spots_areNoCoordinates) {
    const ReadDocument document(tableOf("SPOT_1 SPOT_2 nm400", {"10 20 0.5"}));
    EXPECT_EQ(coordinatesOf(Conditions().of(document)), std::vector<double>{});
}

TEST(cgatsMeasurement, spotsBesideProcessColors_areNoCoordinates) {
    const ReadDocument document(tableOf("SPOT_1 CMYK_C CMYK_M CMYK_Y CMYK_K nm400", {"9 1 2 3 4 0.5"}));
    EXPECT_EQ(coordinatesOf(Conditions().of(document)), (std::vector<double>{1, 2, 3, 4}));
}

TEST(cgatsMeasurement, processColorNumberGivenTwice_givesNone) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" + tableOf("PC1_1 PC1_1 nm400", {"10 20 0.5"}));
    EXPECT_EQ(Conditions().of(document), nullptr);
}

TEST(cgatsMeasurement, tableWithoutDeviceColors_givesNoCoordinates) {
    const ReadDocument document(tableOf("RGB_R RGB_G RGB_B LAB_L LAB_A LAB_B", {"1 2 3 50 6 7"}));
    EXPECT_EQ(coordinatesOf(Conditions().of(document)), std::vector<double>{});
}

TEST(cgatsMeasurement, geometry_isCopied) {
    const ReadDocument document(tableOf("nm400", {"0.5"}) + tableOf("LAB_L LAB_A LAB_B", {"50 6 7"}));
    Conditions conditions;
    for (const int table : {0, 1}) {
        const Measurement measurement = conditions.of(document, 0, table);
        ASSERT_NE(measurement, nullptr);
        ASSERT_NE(measurement->GetGeometry(), nullptr);
        EXPECT_NE(measurement->GetGeometry(), &conditions.geometry);
        EXPECT_EQ(measurement->GetGeometry()->GetNumber(), 1U);
    }
}

TEST(cgatsMeasurement, nullGeometry_leavesTheMeasurementWithoutOne) {
    const ReadDocument document(tableOf("nm400", {"0.5"}) + tableOf("LAB_L LAB_A LAB_B", {"50 6 7"}));
    Conditions conditions;
    for (const int table : {0, 1}) {
        const Measurement measurement(
            document.GetMeasurement(table, 0, &conditions.illuminant, &conditions.observer, nullptr));
        ASSERT_NE(measurement, nullptr);
        EXPECT_EQ(measurement->GetGeometry(), nullptr);
    }
}

TEST(cgatsMeasurement, measurement_outlivesTheDocument) {
    Conditions conditions;
    Measurement spectral;
    Measurement lab;
    {
        const ReadDocument document(
            tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K nm400", {"1 2 3 4 0.5"}) +
            tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B", {"5 6 7 8 50 6 7"}));
        spectral = conditions.of(document, 0, 0);
        lab = conditions.of(document, 0, 1);
    }
    ASSERT_NE(spectral, nullptr);
    ASSERT_NE(lab, nullptr);
    EXPECT_EQ(samplesOf(spectral), std::vector<double>{0.5});
    EXPECT_EQ(coordinatesOf(spectral), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(coordinatesOf(lab), (std::vector<double>{5, 6, 7, 8}));
}

TEST(cgatsMeasurement, measurements_ofOneSampleAreIndependent) {
    const ReadDocument document(tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K nm400", {"1 2 3 4 0.5"}));
    Conditions conditions;
    const Measurement first = conditions.of(document);
    const Measurement second = conditions.of(document);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    const double other = 77;
    first->SetCoord(1, &other);
    EXPECT_EQ(coordinatesOf(second), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_NE(first->GetSpectrum(), second->GetSpectrum());
}

// ---- CIELAB tables ----

TEST(cgatsMeasurement, labTable_givesALabMeasurementOfTheSample) {
    const ReadDocument document(tableOf("LAB_B LAB_L LAB_A", {"1 2 3", "-30.5 61 22.25"}));
    Conditions conditions;
    const Measurement measurement = conditions.of(document, 1);
    ASSERT_NE(dynamic_cast<TLABMeasurement*>(measurement.get()), nullptr);
    EXPECT_EQ(measurement->GetStatus(), 0);
    Triple lab;
    const Triple white = conditions.white();
    ASSERT_EQ(measurement->GetLAB(&conditions.illuminant, &conditions.observer, white.data(), lab.data()), 0);
    EXPECT_EQ(lab, (Triple{61, 22.25, -30.5}));
}

TEST(cgatsMeasurement, lab_goesBeforeXyz) {
    const ReadDocument document(tableOf("XYZ_X XYZ_Y XYZ_Z LAB_L LAB_A LAB_B", {"20 21 22 50 6 7"}));
    const Measurement measurement = Conditions().of(document);
    EXPECT_NE(dynamic_cast<TLABMeasurement*>(measurement.get()), nullptr);
}

TEST(cgatsMeasurement, labWhite_isThatOfIlluminantAndObserver) {
    const ReadDocument document(tableOf("LAB_L LAB_A LAB_B", {"50 6 7"}));
    Conditions conditions;
    const Triple white = whiteOf(conditions.of(document));
    EXPECT_EQ(white, conditions.white());
    EXPECT_NEAR(white[1], 100.0, 1e-9);
}

TEST(cgatsMeasurement, labWhite_followsTheObserver) {
    const ReadDocument document(tableOf("LAB_L LAB_A LAB_B", {"50 6 7"}));
    Conditions twoDegree("rising", 0);
    Conditions tenDegree("rising", 1);
    const Triple white = whiteOf(tenDegree.of(document));
    EXPECT_EQ(white, tenDegree.white());
    EXPECT_NE(white, whiteOf(twoDegree.of(document)));
}

TEST(cgatsMeasurement, labWhite_ofANamedFluorescentIlluminantIsThatOfItsWeightingTable) {
    const ReadDocument document(tableOf("LAB_L LAB_A LAB_B", {"50 6 7"}));
    Conditions conditions("CIE Illuminant F2");
    Triple sums = {0, 0, 0};
    for (std::size_t axis = 0; axis < 3; ++axis)
        for (std::size_t i = 0; i < 36; ++i)
            sums[axis] += TIlluminantAndObserver::sASTMtable6[0][axis][i];
    const Triple white = whiteOf(conditions.of(document));
    EXPECT_NEAR(white[0], 100 * sums[0] / sums[1], 1e-9);
    EXPECT_NEAR(white[1], 100, 1e-9);
    EXPECT_NEAR(white[2], 100 * sums[2] / sums[1], 1e-9);
}

TEST(cgatsMeasurement, labWhite_ofAnIlluminantWithoutSpectrumIsZero) {
    const ReadDocument document(tableOf("LAB_L LAB_A LAB_B", {"50 6 7"}));
    TIlluminant dark(static_cast<const TSpectrum*>(nullptr), "dark");
    ASSERT_EQ(dark.GetSpectrum(), nullptr);
    const TObserver observer(0);
    const Measurement measurement(document.GetMeasurement(0, 0, &dark, &observer, nullptr));
    EXPECT_EQ(whiteOf(measurement), (Triple{0, 0, 0}));
}

TEST(cgatsMeasurement, labMeasurement_answersForItsIlluminantAndObserverOnly) {
    const ReadDocument document(tableOf("LAB_L LAB_A LAB_B", {"50 6 7"}));
    Conditions conditions;
    Conditions twin;
    TObserver tenDegree(1);
    const Measurement measurement = conditions.of(document);
    const auto* lab = dynamic_cast<TLABMeasurement*>(measurement.get());
    ASSERT_NE(lab, nullptr);
    EXPECT_EQ(lab->GetIlluminant(), &conditions.illuminant);
    EXPECT_NE(lab->GetObserver(), &conditions.observer);
    EXPECT_EQ(lab->GetObserver()->GetNumber(), 0U);
    Triple xyz;
    EXPECT_EQ(measurement->GetXYZ(&conditions.illuminant, &conditions.observer, xyz.data()), 0);
    EXPECT_EQ(measurement->GetXYZ(&twin.illuminant, &conditions.observer, xyz.data()), -1);
    EXPECT_EQ(measurement->GetXYZ(&conditions.illuminant, &tenDegree, xyz.data()), -1);
}

TEST(cgatsMeasurement, labWithoutIlluminantOrObserver_givesNone) {
    const ReadDocument document(tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B", {"1 2 3 4 50 6 7"}));
    Conditions conditions;
    EXPECT_EQ(document.GetMeasurement(0, 0, nullptr, &conditions.observer, &conditions.geometry), nullptr);
    EXPECT_EQ(document.GetMeasurement(0, 0, &conditions.illuminant, nullptr, &conditions.geometry), nullptr);
    EXPECT_EQ(document.GetMeasurement(0, 0, nullptr, nullptr, nullptr), nullptr);
}

// ---- tables that give none ----

TEST(cgatsMeasurement, xyzAlone_givesNone) {
    const ReadDocument document(
        tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K XYZ_X XYZ_Y XYZ_Z", {"1 2 3 4 20 21 22"}));
    ASSERT_TRUE(document.ContainsXyz(0));
    EXPECT_EQ(Conditions().of(document), nullptr);
    EXPECT_EQ(document.GetMeasurement(0, 0, nullptr, nullptr, nullptr), nullptr);
}

TEST(cgatsMeasurement, tableWithoutColor_givesNone) {
    const ReadDocument document(
        tableOf("SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A", {"1 2 3 4 5 6 7"}));
    EXPECT_EQ(Conditions().of(document), nullptr);
}

TEST(cgatsMeasurement, badTable_givesNone) {
    const ReadDocument document(tableOf("nm400", {"0.5"}));
    Conditions conditions;
    for (const int table : {-1, 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        EXPECT_EQ(conditions.of(document, 0, table), nullptr);
}

TEST(cgatsMeasurement, badSample_givesNone) {
    const ReadDocument document(tableOf("nm400", {"0.5", "0.6"}) + tableOf("LAB_L LAB_A LAB_B", {"1 2 3"}) +
                                tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K nm400", {"1 2 3 4 0.5"}));
    Conditions conditions;
    for (const int sample : {-1, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        for (const int table : {0, 1, 2})
            EXPECT_EQ(conditions.of(document, sample, table), nullptr);
}

TEST(cgatsMeasurement, documentInError_givesNone) {
    const ReadDocument document(tableOf("nm400", {"0.5"}));
    document.SetErrorCode(1);
    EXPECT_EQ(Conditions().of(document), nullptr);
}

TEST(cgatsMeasurement, secondTable_isReadFromItself) {
    const ReadDocument document(tableOf("nm400", {"57"}) + tableOf("nm500", {"0.5", "0.25"}));
    const Measurement measurement = Conditions().of(document, 1, 1);
    ASSERT_NE(measurement, nullptr);
    EXPECT_EQ(wavelengthsOf(measurement), std::vector<double>{500});
    EXPECT_EQ(samplesOf(measurement), std::vector<double>{0.25});
}

TEST(cgatsMeasurement, refusals_reportNothingAndRecordNoError) {
    const qxcms::tests::ReportCollector reports;
    const ReadDocument document(tableOf("XYZ_X XYZ_Y XYZ_Z", {"20 21 22"}) +
                                tableOf("LAB_L LAB_A LAB_B", {"1 2 3"}) +
                                tableOf("nm400 SPECTRAL_400", {"0.5 0.6"}));
    Conditions conditions;
    conditions.of(document);
    conditions.of(document, 9);
    conditions.of(document, 0, 2);
    conditions.of(document, 0, 9);
    EXPECT_EQ(document.GetMeasurement(1, 0, nullptr, nullptr, nullptr), nullptr);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_TRUE(reports.warnings.empty());
}

} // namespace
