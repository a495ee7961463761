// What takes no memory, and so cannot run out of it: every operation that the tests of failing memory leave
// out.
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "colorspace/tcolorspace.h"
#include "colorspace/tcolorspace_ciecam02.h"
#include "colorspace/tcolorspace_ciecam97s.h"
#include "colorspace/tlabspace.h"
#include "colorspace/txyzrspace.h"
#include "measurement/colorimetric_measurements.h"
#include "measurement/spectral_measurements.h"
#include "spectral/tilluminantandobserver.h"
#include "spectral/tilluminantfactoryholder.h"
#include "support/file_name_escaping.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using noMemoryNeeded = OnSubstitutePlatform;

constexpr double kWhite[3] = {95.0, 100.0, 108.0};
constexpr double kOtherWhite[3] = {96.4, 100.0, 82.5};
constexpr double kCoordinates[2] = {1, 2};

TEST_F(noMemoryNeeded, spectraOfStandardValues) {
    const double values[TSpectrum::kStandardCount] = {0.5};
    const std::uint16_t standardData[38] = {};
    expectNoAllocation([&] {
        const TSpectrum unset;
        const TSpectrum spectrum(values);
        const TSpectrum product(&spectrum, &spectrum);
        const TSpectrum decoded(standardData, nullptr);
        const TSpectrum decodedShort(&spectrum, standardData, nullptr);
        const TSpectrum copy(product);
        TSpectrum target;
        target = copy;
        EXPECT_EQ(decoded.GetStatus() | decodedShort.GetStatus() | target.GetStatus(), 0);
    });
}

TEST_F(noMemoryNeeded, refusedSpectra) {
    const double value = 1.0;
    const std::uint16_t badFlag = 7;
    const TSpectrum unset;
    expectNoAllocation([&] {
        EXPECT_EQ(TSpectrum(&value, 0, &value).GetStatus(), 2);
        EXPECT_EQ(TSpectrum(&value, 1025, &value).GetStatus(), 2);
        EXPECT_EQ(TSpectrum(static_cast<const double*>(nullptr)).GetStatus(), 2);
        EXPECT_EQ(TSpectrum(static_cast<const char*>(nullptr)).GetStatus(), 2);
        EXPECT_EQ(TSpectrum("no count").GetStatus(), 3);
        EXPECT_EQ(TSpectrum("2000000000").GetStatus(), 3);
        EXPECT_EQ(TSpectrum(&badFlag, nullptr).GetStatus(), 3);
        EXPECT_EQ(TSpectrum(&unset, nullptr).GetStatus(), 2);
        EXPECT_EQ(TSpectrum(&unset, &unset).GetStatus(), 3);
    });
}

TEST_F(noMemoryNeeded, questionsToASpectrum) {
    TSpectrum spectrum("2 400 700 0.5 0.25");
    const TSpectrum other = spectrumOf(ramp());
    expectNoAllocation([&] {
        double first = 0, last = 0, product = 0, densities[4];
        int count = 0, major = -7;
        EXPECT_EQ(spectrum.CalcStandardSpec(), 0); // the table is the platform's
        EXPECT_GT(spectrum.CalcDistance(&other), 0.0);
        EXPECT_EQ(spectrum.InProduct(&other, &product), 0);
        EXPECT_NE(spectrum.GetUniformSpectrum(&first, &last, &count), nullptr);
        EXPECT_EQ(spectrum.GetUniformDeltaLambda(), 10.0);
        EXPECT_EQ(spectrum.GetDensity(TSpectrum::kAnsiA, densities, &major), 0);
        EXPECT_NE(TSpectrum::GetDensityList(), nullptr);
        EXPECT_EQ(spectrum.GetStatus(), 0);
        EXPECT_EQ(spectrum.GetNonUniformFlag(), 1);
        EXPECT_EQ(spectrum.GetNrSamples(), 2);
        EXPECT_NE(spectrum.GetWavelengths(), spectrum.GetValues());
        EXPECT_EQ(spectrum.GetFileDataSize(), 0);
        EXPECT_EQ(spectrum.ToFileData(nullptr), nullptr);
        EXPECT_EQ(spectrum.ToShrtFileData(&other, &count), nullptr);
        spectrum.ClearNonUniform();
        spectrum.Clear();
        spectrum.SetToZero();
    });
}

TEST_F(noMemoryNeeded, observers) {
    expectNoAllocation([&] {
        const TObserver byNumber(1), byName("2 degree"), unknown(7);
        TObserver copy(byNumber);
        const char** names = nullptr;
        int count = 0;
        double xyz[3];
        copy = byName;
        EXPECT_TRUE(copy == byName);
        EXPECT_EQ(TObserver::GetKnownObservers(&names, &count), 0);
        EXPECT_EQ(copy.GetXYZ(nullptr, nullptr, xyz), 2);
        EXPECT_EQ(copy.GetXYZ(nullptr, xyz), 2);
        EXPECT_EQ(unknown.GetStatus(), 2);
        EXPECT_EQ(byNumber.GetNumber(), 1u);
        EXPECT_STREQ(byName.GetName(), "2 degree");
    });
}

TEST_F(noMemoryNeeded, laterUsesOfAnObserver) {
    TObserver observer(0);
    const TSpectrum light = spectrumOf(kD65);
    observer.InitSpectra();
    expectNoAllocation([&] {
        double xyz[3];
        EXPECT_NE(observer.GetXSensitivity(), nullptr);
        EXPECT_NE(observer.GetYSensitivity(), nullptr);
        EXPECT_NE(observer.GetZSensitivity(), nullptr);
        EXPECT_EQ(observer.GetXYZ(&light, &light, xyz), 0);
        EXPECT_EQ(observer.GetXYZ(&light, xyz), 0);
        observer.InitSpectra();
    });
}

TEST_F(noMemoryNeeded, geometries) {
    expectNoAllocation([&] {
        const TMeasGeom byNumber(3), byName("Ill 45, Obs 0"), unknown("ill 45, obs 0");
        TMeasGeom copy(byNumber);
        const char** names = nullptr;
        int count = 0;
        copy = unknown;
        EXPECT_EQ(TMeasGeom::GetKnownGeometries(&names, &count), 0);
        EXPECT_NE(TMeasGeom::GetGeometryName(12), nullptr);
        EXPECT_EQ(TMeasGeom::GetGeometryName(14), nullptr);
        EXPECT_EQ(TMeasGeom::GetGeometryNumber("ill 0, obs 45"), 1);
        EXPECT_EQ(TMeasGeom::GetGeometryNumber("none"), -1);
        EXPECT_EQ(unknown.GetStatus(), 2);
        EXPECT_EQ(copy.GetNumber(), 0u);
        EXPECT_STREQ(byName.GetName(), "Ill 45, Obs 0");
    });
}

TEST_F(noMemoryNeeded, refusedIlluminantsAndQuestionsToAGoodOne) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const std::string longName(1025, 'n');
    TIlluminant lamp(&spectrum, "lamp"), same(&spectrum, "lamp");
    platform().refusesToOpen = true;
    expectNoAllocation([&] {
        EXPECT_EQ(TIlluminant(static_cast<const TSpectrum*>(nullptr), "lamp").GetStatus(), 2);
        EXPECT_EQ(TIlluminant(&spectrum, longName.c_str()).GetStatus(), 2);
        EXPECT_EQ(TIlluminant("lamp.txt").GetStatus(), 2);
        EXPECT_EQ(TIlluminant("lamp.ill").GetStatus(), 4);
        EXPECT_EQ(lamp.ReadFrom(nullptr), 2);
        EXPECT_EQ(lamp.ReadFrom("no illuminant"), 5);
        EXPECT_EQ(lamp.Save(nullptr), 2);
        EXPECT_TRUE(lamp == same);
        EXPECT_STREQ(lamp.GetName(), "lamp");
        EXPECT_NE(lamp.GetSpectrum(), nullptr);
        EXPECT_EQ(lamp.GetStatus(), 0);
    });
}

TEST_F(noMemoryNeeded, refusedWeightingsAndQuestionsToAGoodOne) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const TIlluminant lamp(&spectrum, "lamp"), f2(&spectrum, "CIE Illuminant F2");
    const TObserver observer(0);
    const TIlluminantAndObserver direct(&lamp, &observer, 36), tables(&f2, &observer, 36);
    ASSERT_NE(direct.GetObserver()->GetYSensitivity(), nullptr);
    expectNoAllocation([&] {
        EXPECT_EQ(TIlluminantAndObserver(&lamp, nullptr, 36).GetStatus(), 2);
        for (const TIlluminantAndObserver* weighting : {&direct, &tables}) {
            double xyz[3] = {0, 0, 0};
            int index = -7;
            EXPECT_EQ(weighting->GetXYZ(ramp().data(), xyz, 36), 0);
            EXPECT_EQ(weighting->GetXYZ(&spectrum, xyz, 36), 0);
            EXPECT_EQ(weighting->GetXYZWhite(xyz), 0);
            EXPECT_EQ(weighting->GetXYZIncrement(0.1, 3, 5, xyz), 0);
            EXPECT_EQ(weighting->GetXYZIncrement(0.1, 3, xyz), 0);
            EXPECT_EQ(weighting->IlluminantNeedsASTM308Tables(&index), weighting == &tables ? 1 : 0);
            EXPECT_EQ(weighting->GetStatus(), 0);
            EXPECT_EQ(weighting->GetNumber(), 36);
            EXPECT_NE(weighting->GetIlluminant(), nullptr);
            EXPECT_GT(weighting->GetFactor(), 0.0);
            EXPECT_NE(weighting->GetCombinedWeights(), nullptr);
        }
    });
}

TEST_F(noMemoryNeeded, colourSpace) {
    expectNoAllocation([&] {
        const double badWhite[3] = {-1, 100, 100};
        TLabSpace space(kWhite);
        double xyz[3] = {20, 30, 40}, lab[3], lhc[3], out[3], squareChroma = 0;
        EXPECT_EQ(TLabSpace(badWhite).ErrNo(), 2);
        EXPECT_EQ(space.ErrNo(), 0);
        EXPECT_EQ(space.FromXYZ(xyz, lab), 0);
        EXPECT_EQ(space.ToXYZ(lab, out), 0);
        EXPECT_EQ(space.XYZToLab(xyz, lab), 0);
        EXPECT_EQ(space.LabToXYZ(lab, out), 0);
        EXPECT_EQ(space.LabToLab(lab, out, kOtherWhite), 0);
        EXPECT_EQ(TLabSpace::LabToLHC(lab, lhc), 0);
        EXPECT_EQ(TLabSpace::LHCToLab(lhc, out), 0);
        EXPECT_EQ(space.XYZToLHC(xyz, lhc), 0);
        EXPECT_EQ(space.LHCToXYZ(lhc, out), 0);
        EXPECT_EQ(space.GetSqSat(xyz, &squareChroma), 0);
        EXPECT_EQ(TLabSpace::XYZToLabToXYZ(kWhite, kOtherWhite, out), 0);
        EXPECT_NE(TLabSpace::CalculateHue(lab), 7.0);
        EXPECT_GT(TLabSpace::FLab(0.5), TLabSpace::Fm1Lab(0.5));
        for (int function = 0; function < TLabSpace::GetDifferenceFunctionListSize(); ++function) {
            const char* const name = TLabSpace::GetDifferenceFunctionList()[function];
            EXPECT_EQ(TLabSpace::DifferenceFunctionNameToIndex(name), function);
            EXPECT_EQ(space.CalcDeltaE(xyz, xyz, function), 0.0);
            EXPECT_EQ(space.CalcSquareDeltaE(xyz, xyz, function), 0.0);
            EXPECT_EQ(space.CalcSquareDeltaEConverted(lab, lab, function), 0.0);
            EXPECT_EQ(TLabSpace::CalcSquareDeltaEConvertedStatic(lab, lab, function), 0.0);
        }
        EXPECT_EQ(TLabSpace::CalcSquareDeltaHConvertedStatic(lab, lab), 0.0);
    });
    EXPECT_EQ(platform().errors.size(), 1u);
}

TEST_F(noMemoryNeeded, handleOfAColourSpace) {
    const TColorSpace spaces[] = {{kWhite, 0}, {kWhite, 1}, {kWhite, 2}};
    expectNoAllocation([&] {
        const double xyz[3] = {20, 30, 40};
        double jch[3], out[3];
        for (const TColorSpace& space : spaces) {
            EXPECT_EQ(space.FromXYZ(xyz, jch), 0);
            EXPECT_EQ(space.ToXYZ(jch, out), 0);
            EXPECT_EQ(space.CalcDeltaE(xyz, xyz, 0), 0.0);
            EXPECT_EQ(space.CalcSquareDeltaE(xyz, xyz, 0), 0.0);
            EXPECT_EQ(space.CalcSquareDeltaEConverted(jch, jch, 0), 0.0);
            EXPECT_GT(space.GetDifferenceFunctionListSize(), 0);
            EXPECT_NE(space.GetDifferenceFunctionList(), nullptr);
        }
        TColorSpace unknown(kWhite, 3);
        EXPECT_EQ(unknown.ErrNo(), 1);
        EXPECT_EQ(TColorSpace::GetColorSpaceListSize(), 3);
        EXPECT_NE(TColorSpace::GetColorSpaceList(), nullptr);
    });
}

TEST_F(noMemoryNeeded, relativeTristimulusValues) {
    expectNoAllocation([&] {
        const TXYZRSpace space(kWhite), refused(nullptr);
        const double xyz[3] = {20, 30, 40};
        double xyzr[3], yr = 0, out[3];
        EXPECT_EQ(space.XYZToXYZR(xyz, xyzr), 0);
        EXPECT_EQ(space.XYZRToXYZ(xyzr, out), 0);
        EXPECT_EQ(space.XYZToYR(xyz, &yr), 0);
        EXPECT_EQ(space.YRToXYZ(&yr, out), 0);
        EXPECT_EQ(refused.ErrNo(), 2);
    });
}

// However many colours there are.
TEST_F(noMemoryNeeded, batches) {
    constexpr std::size_t kCount = 1003;
    const std::vector<double> xyz(3 * kCount, 20.0), spectra(36 * kCount, 0.5);
    std::vector<double> out(3 * kCount), squares(kCount);
    const TSpectrum light = spectrumOf(kD65);
    const TIlluminant lamp(&light, "lamp"), tableLamp(&light, "CIE Illuminant F11");
    const TObserver observer(0);
    const TIlluminantAndObserver direct(&lamp, &observer, 36), table(&tableLamp, &observer, 36);
    const TLabSpace lab(kWhite);
    expectNoAllocation([&] {
        const TColorSpace_CIECAM02 ciecam02(kWhite, 0);
        const TColorSpace_CIECAM97s ciecam97s(kWhite, 0);
        EXPECT_EQ(lab.XYZToLabBatch(xyz.data(), out.data(), kCount), 0);
        EXPECT_EQ(lab.LabToXYZBatch(xyz.data(), out.data(), kCount), 0);
        EXPECT_EQ(TLabSpace::LabToLHCBatch(xyz.data(), out.data(), kCount), 0);
        for (int function = 0; function < TLabSpace::GetDifferenceFunctionListSize(); ++function) {
            EXPECT_EQ(TLabSpace::CalcSquareDeltaEConvertedBatch(xyz.data(), out.data(), function,
                                                                squares.data(), kCount),
                      0);
            EXPECT_EQ(lab.CalcSquareDeltaEBatch(xyz.data(), out.data(), function, squares.data(), kCount), 0);
        }
        EXPECT_EQ(ciecam02.FromXYZBatch(xyz.data(), out.data(), kCount), 0);
        EXPECT_EQ(ciecam97s.FromXYZBatch(xyz.data(), out.data(), kCount), 0);
        EXPECT_EQ(direct.SpectraToXYZBatch(spectra.data(), out.data(), kCount), 0);
        EXPECT_EQ(table.SpectraToXYZBatch(spectra.data(), out.data(), kCount), 0);
    });
}

// The first white of a weighting makes the sensitivities of its observer; nothing later does.
TEST_F(noMemoryNeeded, searchForAMatchingSpectrum) {
    const TSpectrum light = spectrumOf(kD65);
    const TIlluminant lamp(&light, "lamp");
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36), refusing(&lamp, &observer, 8);
    double own[3];
    ASSERT_EQ(weighting.GetXYZWhite(own), 0);
    expectNoAllocation([&] {
        const double target[3] = {30, 20, 8};
        const Standard start = flat(0.5);
        double result[36];
        for (const MatchingMethod method : {kMatchingMethodLab, kMatchingMethodXYZ}) {
            for (const double* white : {static_cast<const double*>(nullptr), kWhite}) {
                EXPECT_GE(weighting.CalculateMatchingSpectrum(target, white, nullptr, nullptr, start.data(),
                                                              method, result),
                          0.0);
            }
        }
        EXPECT_EQ(refusing.CalculateMatchingSpectrum(target, nullptr, nullptr, nullptr, start.data(),
                                                     kMatchingMethodLab, result),
                  -1.0);
    });
}

TEST_F(noMemoryNeeded, questionsToMeasurements) {
    const TSpectrum sample = spectrumOf(ramp()), light = spectrumOf(kD65);
    TIlluminant lamp(&light, "lamp");
    TObserver observer(0);
    const TMeasGeom geometry(3);
    TReflectionSpectrum reflection(&sample, &geometry, 2, kCoordinates);
    TEmissionSpectrum emission(&sample, &geometry, 2, kCoordinates);
    TXYZMeasurement xyzMeasurement(20, 30, 40, &geometry, &lamp, &observer, 2, kCoordinates);
    TEmissiveXYZMeasurement emissiveXyz(20, 30, 40, &geometry, &observer, 2, kCoordinates);
    TLABMeasurement labMeasurement(50, 2, 3, kWhite, &geometry, &lamp, &observer, 2, kCoordinates);
    TEmissiveLABMeasurement emissiveLab(50, 2, 3, kWhite, &geometry, &observer, 2, kCoordinates);
    observer.InitSpectra();
    TOneMeasurement* const colorimetric[] = {&xyzMeasurement, &emissiveXyz, &labMeasurement, &emissiveLab};
    TOneMeasurement* const all[] = {&reflection,  &emission,       &xyzMeasurement,
                                    &emissiveXyz, &labMeasurement, &emissiveLab};
    expectNoAllocation([&] {
        double xyz[3], lab[3], densities[4];
        int count = -7;
        bool flag = false;
        for (TOneMeasurement* measurement : colorimetric) {
            EXPECT_EQ(measurement->GetXYZ(&lamp, &observer, xyz), 0);
            EXPECT_EQ(measurement->GetLAB(&lamp, &observer, kWhite, lab), 0);
        }
        EXPECT_EQ(labMeasurement.GetLAB(&lamp, &observer, kOtherWhite, lab), 0);
        EXPECT_EQ(emission.GetXYZ(nullptr, &observer, xyz), 0);
        for (TOneMeasurement* measurement : all) {
            EXPECT_EQ(measurement->GetDensity(0, densities, &count), 0);
            EXPECT_EQ(measurement->GetSpecData(nullptr, nullptr, nullptr, &flag), 0);
            EXPECT_EQ(measurement->GetUniformSpectrum(nullptr, nullptr, nullptr) == nullptr,
                      measurement->GetSpectrum() == nullptr);
            EXPECT_NE(measurement->GetCoord(&count), nullptr);
            EXPECT_EQ(measurement->GetStatus(), 0);
            EXPECT_EQ(measurement->GetGeometry()->GetNumber(), 3u);
            EXPECT_EQ(measurement->SetCoord(0, nullptr), 0);
        }
        EXPECT_EQ(xyzMeasurement.GetIlluminant(), labMeasurement.GetIlluminant());
        EXPECT_NE(xyzMeasurement.GetObserver(), labMeasurement.GetObserver());
        EXPECT_NE(emissiveXyz.GetObserver(), emissiveLab.GetObserver());
        EXPECT_EQ(labMeasurement.GetWhite()[1], emissiveLab.GetWhite()[1]);
        const TReflectionSpectrum empty(nullptr, nullptr);
        const TXYZMeasurement incomplete(1, 2, 3, nullptr, &lamp, nullptr);
        EXPECT_EQ(empty.GetStatus() & incomplete.GetStatus(), 3);
    });
}

TEST_F(noMemoryNeeded, emptyParts) {
    expectNoAllocation([&] {
        TCgatsTag tag(-1, nullptr, 0, "value", "comment");
        EXPECT_EQ(tag.SetValue(nullptr, 0), 2);
        EXPECT_EQ(tag.GetCode(), -1);
        EXPECT_EQ(tag.GetNumeric(), 0);
        EXPECT_EQ(tag.GetKeyword(), tag.GetValue());
        EXPECT_EQ(tag.GetComment(), nullptr);
        const TCgatsField field(TCgatsField::kFloat, nullptr, 7, TCgatsField::kSpotColor, 0);
        EXPECT_EQ(field.GetBad(), 1);
        EXPECT_EQ(field.GetNumber() + field.GetKind() + field.GetDataType() + field.GetFieldId(), 7 + 5 + 2);
        TCgatsTableHeader header(2), growing;
        header.SetNrSamples(3);
        EXPECT_EQ(header.Classify(), 7);
        EXPECT_EQ(header.Append(nullptr), 1);
        EXPECT_EQ(header.FillNextSlot(nullptr), 1);
        EXPECT_EQ(growing.Append(nullptr), 1);
        EXPECT_EQ(header.GetNrSamples() + header.GetNrFields() + header.GetNrFilledFields(), 5);
        EXPECT_EQ(header.GetField(0), nullptr);
        TCgatsTable table(nullptr);
        EXPECT_EQ(table.GetTableError(), 1);
        EXPECT_EQ(table.AddRow(nullptr), 10);
        EXPECT_EQ(table.SetNextValue(0, "1"), 11);
        EXPECT_EQ(table.EndRow(), 11);
        EXPECT_EQ(table.ReleaseHeader(), nullptr);
        EXPECT_EQ(table.GetValues(0), nullptr);
        table.SetSpectralPercent(true);
        EXPECT_TRUE(table.IsSpectralPercent());
        TCgatsValueListDouble numbers(1000000);
        TCgatsValueListInt integers(1000000);
        TCgatsValueListString strings(1000000);
        for (TCgatsValueList* list :
             {static_cast<TCgatsValueList*>(&numbers), static_cast<TCgatsValueList*>(&integers),
              static_cast<TCgatsValueList*>(&strings)}) {
            EXPECT_EQ(list->SetValue(1000000, "1"), TCgatsValueList::kNotStored);
            EXPECT_EQ(list->SetValue(0, nullptr), TCgatsValueList::kNotStored);
            EXPECT_EQ(list->GetInt(7), 0);
            EXPECT_EQ(list->GetDouble(7), 0.0);
            EXPECT_EQ(list->GetString(7), nullptr);
            EXPECT_EQ(list->GetNumber(), 1000000);
        }
    });
}

TEST_F(noMemoryNeeded, questionsToAPartOfADocument) {
    const TCgats document("BEGIN_DATA_FORMAT\nSampleID nm400 SPOT_1 LAB_L LAB_A LAB_B XYZ_X XYZ_Y XYZ_Z\n"
                          "END_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\na 1 2 3 4 5 6 7 8\nEND_DATA\n",
                          0);
    ASSERT_EQ(document.GetErrorCode(), 0);
    expectNoAllocation([&] {
        const TCgatsTable& table = *document.GetTable(0);
        const TCgatsTableHeader& header = *table.GetHeader();
        EXPECT_EQ(table.GetNrRowsStored(), 1);
        EXPECT_TRUE(header.IsClassified());
        EXPECT_EQ(header.GetColorKind(), TCgatsTableHeader::kNoColors);
        EXPECT_EQ(header.GetNrColors(), 0);
        EXPECT_EQ(header.GetNrSpots(), 1);
        EXPECT_EQ(header.GetNrWaveLengths(), 1);
        EXPECT_EQ(header.GetSampleNameColumn(), 0);
        EXPECT_EQ(header.GetColorColumns(), nullptr);
        EXPECT_EQ(header.GetSpotColumns()[0], 2);
        EXPECT_EQ(header.GetSpectralColumns()[0], 1);
        EXPECT_EQ(header.GetLabColumns()[0], 3);
        EXPECT_EQ(header.GetXyzColumns()[0], 6);
        EXPECT_STREQ(header.GetField(3)->GetName(), "LAB_L");
        EXPECT_EQ(table.GetValues(3)->GetDouble(0), 3.0);
    });
}

TEST_F(noMemoryNeeded, emptyDocument) {
    expectNoAllocation([&] {
        TCgats document;
        const TCgats unnamed(""), null(static_cast<const char*>(nullptr), 0);
        const char* position = nullptr;
        char* text = nullptr;
        EXPECT_EQ(unnamed.GetErrorCode(), 2);
        EXPECT_EQ(null.GetErrorCode(), 1);
        EXPECT_EQ(document.SetToZero(), 0);
        EXPECT_FALSE(document.SetErrorCode(24));
        EXPECT_TRUE(document.SetErrorCode(0));
        EXPECT_EQ(TCgats::TableErrorToCgatsError(7), 17);
        EXPECT_EQ(document.SetNrSamples(7), 0);
        EXPECT_EQ(document.GetDeclaredNrSets(), 7);
        EXPECT_EQ(document.MatchTag("CREATED"), 2);
        EXPECT_EQ(document.FindTag(2), -1);
        EXPECT_EQ(document.GetTag(2), nullptr);
        EXPECT_EQ(document.GetTag("CREATED"), nullptr);
        EXPECT_EQ(document.AddCustomField(""), 1);
        EXPECT_EQ(document.SetCreated(nullptr), 2);
        EXPECT_EQ(document.ReadFromBuffer(nullptr), 2);
        EXPECT_EQ(document.ReadFromFile(nullptr), 2);
        EXPECT_EQ(TCgats::FileToBuffer(nullptr, &text), 2);
        EXPECT_EQ(document.ReadNextTag(nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr), 2);
        EXPECT_EQ(document.ReadCommentTag("BEGIN_X", &position), 2);
        EXPECT_EQ(document.ReadTmpHeader(&position), 2);
        EXPECT_EQ(document.ReadTable(&position), 2);
        EXPECT_EQ(document.MatchField(nullptr, nullptr, nullptr, nullptr, nullptr), -1);
        EXPECT_EQ(document.GetTmpHeader(), nullptr);
        EXPECT_EQ(document.GetNrTags() + document.GetNrCommentBlocks() + document.GetNrCustomFields() +
                      document.GetNrTables() + document.GetNrProcessColorIdTags() +
                      document.GetNrSpotIdTags(),
                  0);
    });
}

TEST_F(noMemoryNeeded, questionsToADocument) {
    const TCgats document(
        "ORIGINATOR \"a\"\nFILE_DESCRIPTOR \"b\"\nCREATED \"c\"\nKEYWORD \"InkBook\"\n"
        "SPOT_ID \"orange\"\nPROCESSCOLOR_ID \"blue\"\nBEGIN_NOTES\nnote\nEND_NOTES\n"
        "BEGIN_DATA_FORMAT\nSampleID InkBook nm400 nm410 SPOT_1 PC1_1 LAB_L LAB_A LAB_B XYZ_X "
        "XYZ_Y XYZ_Z\nEND_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n"
        "a book 1 2 3 4 5 6 7 8 9 1e300\nEND_DATA\n",
        0);
    ASSERT_EQ(document.GetErrorCode(), 0);
    const TSpectrum light = spectrumOf(kD65);
    TIlluminant lamp(&light, "lamp");
    expectNoAllocation([&] {
        double values[4];
        int wavelengths[2];
        char text[400];
        const char* descriptions[1];
        double* const result[1] = {values};
        const TObserver observer(0);
        const TMeasGeom geometry(0);
        EXPECT_STREQ(document.GetOriginator(), "a");
        EXPECT_STREQ(document.GetFileDescriptor(), "b");
        EXPECT_STREQ(document.GetCreated(), "c");
        EXPECT_STREQ(document.GetErrorMessage(), "");
        EXPECT_NE(document.GetTagAt(0), nullptr);
        EXPECT_NE(document.GetCommentBlock(0), nullptr);
        EXPECT_NE(document.GetCustomField(0), nullptr);
        EXPECT_EQ(document.GetNrSamples(0), 1);
        EXPECT_EQ(document.GetNrFields(0), 12);
        EXPECT_EQ(document.GetNrProcessColors(0), 1);
        EXPECT_EQ(document.GetNrSpotColors(0), 1);
        EXPECT_EQ(document.GetNrWaveLengths(0), 2);
        EXPECT_FALSE(document.IsCMYKDefined(0));
        EXPECT_TRUE(document.IsCustomDefined(0));
        EXPECT_FALSE(document.IsNColorDefined(0));
        EXPECT_TRUE(document.ContainsProcessColors(0));
        EXPECT_TRUE(document.ContainsSpotColors(0));
        EXPECT_TRUE(document.ContainsWaveLengths(0));
        EXPECT_TRUE(document.ContainsLab(0));
        EXPECT_TRUE(document.ContainsXyz(0));
        EXPECT_TRUE(document.ContainsSampleNames(0));
        EXPECT_TRUE(document.ContainsInkBookNames(0));
        EXPECT_TRUE(document.ContainsFieldName(0, "lab_l"));
        EXPECT_EQ(document.GetFieldNameIndex(0, "xyz_z"), 11);
        EXPECT_TRUE(document.ContainsSpotDescriptions(0));
        EXPECT_TRUE(document.ContainsCustomProcessColorDescriptions(0));
        EXPECT_EQ(document.GetWaveLengths(0, wavelengths), 0);
        EXPECT_EQ(document.GetCoordinates(0, 0, values), 0);
        EXPECT_EQ(document.GetSpotCoordinates(0, 0, values), 0);
        EXPECT_EQ(document.GetSpectrum(0, 0, values), 0);
        EXPECT_EQ(document.GetLab(0, 0, values), 0);
        EXPECT_EQ(document.GetXyz(0, 0, values), 0);
        EXPECT_EQ(document.GetSampleName(0, 0, text), 0);
        for (int field = 0; field < 12; ++field)
            EXPECT_EQ(document.GetField(0, 0, field, text), 0);
        EXPECT_EQ(document.GetInkBookName(0, 0, text), 0);
        EXPECT_EQ(document.GetSpotColorDescriptions(0, descriptions), 0);
        EXPECT_EQ(document.GetCustomProcessColorDescriptions(0, descriptions), 0);
        EXPECT_EQ(document.GetColorValues(1, result, true, true), 1);
        EXPECT_EQ(document.GetSpotColorValues(1, result, true), 1);
        EXPECT_EQ(document.GetMeasurement(1, 0, &lamp, &observer, &geometry), nullptr);
    });
}

TEST_F(noMemoryNeeded, sinkThatListensToRefusalsAlone) {
    class Sink : public TCgatsDiagnosticSink {
    public:
        void Refused(const TCgatsDiagnostic&) override {}
    } sink;
    expectNoAllocation([&] { sink.Doubted({0, 0, 0, "5%"}); });
}

TEST_F(noMemoryNeeded, escapes) {
    const std::string name = std::string(1000, ' ') + ".txt";
    std::string escaped(3 * name.size() + 1, '#');
    const char* const suffix = ".txt";
    expectNoAllocation([&] {
        EXPECT_EQ(TCMS_EncodeIllegalCharacters(name.c_str(), escaped.data(), " ."), 1);
        EXPECT_EQ(TCMS_EncodeIllegalCharactersWithoutSuffix(name.c_str(), escaped.data(), " .", 1, &suffix),
                  1);
        EXPECT_EQ(TCMS_DecodeIllegalCharacters(escaped.c_str(), escaped.data()), 1);
    });
    EXPECT_STREQ(escaped.c_str(), name.c_str());
}

} // namespace
} // namespace qxcms::tests
