// What a document tells about its tables: counts, kinds of columns, values of samples.
#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <locale>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/read_document.h"
#include "tests/support/reports.h"

namespace {

using qxcms::tests::ReadDocument;
using qxcms::tests::tableOf;

// Stands in an output array where nothing may be written.
constexpr double kUntouched = -987.5;
// The text buffers of the tests; longer than any field text.
using TextBuffer = std::array<char, 400>;

// One table with a column of every kind but CMYK and n-colour; each process colour has its solid.
std::string everyKindOfColumn() {
    return "CGATS.17\nKEYWORD \"InkBook\"\n"
           "PROCESSCOLOR_ID \"Orange\"\nPROCESSCOLOR_ID \"Green\"\nSPOT_ID \"Gold\"\n" +
           tableOf("SampleID InkBook PC2_1 PC2_2 SPOT_1 nm400 nm500 LAB_L LAB_A LAB_B XYZ_X XYZ_Y XYZ_Z",
                   {"A1 warm 100 0 30 0.25 0.5 61 22 33 44 55 66",
                    "A2 cold 0 100 40 0.125 0.75 16 26 36 46 56 67"});
}

std::string cmykTable() {
    return tableOf("SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K", {"1 11 12 13 14", "2 21 22 23 24"});
}

std::string sixColorTable() {
    return tableOf("6CLR_1 6CLR_2 6CLR_3 6CLR_4 6CLR_5 6CLR_6", {"1 2 3 4 5 6", "7 8 9 10 11 12"});
}

std::string plainTable() {
    return tableOf("SAMPLE_ID D_RED", {"1 0.5", "2 0.25"});
}

// One query, what it answers where it can, and what it answers where it cannot.
struct Query {
    const char* name;
    std::string (*text)();
    int good;
    int refused;
    std::function<int(const TCgats&, int, int)> ask;
};

std::vector<Query> tableQueries() {
    return {
        {"GetNrFields", everyKindOfColumn, 13, -1, [](auto& d, int t, int) { return d.GetNrFields(t); }},
        {"GetNrProcessColors", everyKindOfColumn, 2, -1,
         [](auto& d, int t, int) { return d.GetNrProcessColors(t); }},
        {"GetNrSpotColors", everyKindOfColumn, 1, -1,
         [](auto& d, int t, int) { return d.GetNrSpotColors(t); }},
        {"GetNrWaveLengths", everyKindOfColumn, 2, -1,
         [](auto& d, int t, int) { return d.GetNrWaveLengths(t); }},
        {"IsCMYKDefined", cmykTable, 1, 0, [](auto& d, int t, int) { return d.IsCMYKDefined(t) ? 1 : 0; }},
        {"IsCustomDefined", everyKindOfColumn, 1, 0,
         [](auto& d, int t, int) { return d.IsCustomDefined(t) ? 1 : 0; }},
        {"IsNColorDefined", sixColorTable, 1, 0,
         [](auto& d, int t, int) { return d.IsNColorDefined(t) ? 1 : 0; }},
        {"ContainsProcessColors", everyKindOfColumn, 1, 0,
         [](auto& d, int t, int) { return d.ContainsProcessColors(t) ? 1 : 0; }},
        {"ContainsSpotColors", everyKindOfColumn, 1, 0,
         [](auto& d, int t, int) { return d.ContainsSpotColors(t) ? 1 : 0; }},
        {"ContainsWaveLengths", everyKindOfColumn, 1, 0,
         [](auto& d, int t, int) { return d.ContainsWaveLengths(t) ? 1 : 0; }},
        {"ContainsLab", everyKindOfColumn, 1, 0,
         [](auto& d, int t, int) { return d.ContainsLab(t) ? 1 : 0; }},
        {"ContainsXyz", everyKindOfColumn, 1, 0,
         [](auto& d, int t, int) { return d.ContainsXyz(t) ? 1 : 0; }},
        {"ContainsSampleNames", everyKindOfColumn, 1, 0,
         [](auto& d, int t, int) { return d.ContainsSampleNames(t) ? 1 : 0; }},
        {"ContainsInkBookNames", everyKindOfColumn, 1, 0,
         [](auto& d, int t, int) { return d.ContainsInkBookNames(t) ? 1 : 0; }},
        {"ContainsFieldName", everyKindOfColumn, 1, 0,
         [](auto& d, int t, int) { return d.ContainsFieldName(t, "LAB_L") ? 1 : 0; }},
        {"GetFieldNameIndex", everyKindOfColumn, 7, -1,
         [](auto& d, int t, int) { return d.GetFieldNameIndex(t, "LAB_L"); }},
        {"GetWaveLengths", everyKindOfColumn, 0, 1,
         [](auto& d, int t, int) {
             std::array<int, 2> wavelengths;
             return d.GetWaveLengths(t, wavelengths.data());
         }},
    };
}

std::vector<Query> sampleQueries() {
    using Values = std::array<double, 4>;
    return {
        {"GetCoordinates", everyKindOfColumn, 0, -1,
         [](auto& d, int t, int s) {
             Values values;
             return d.GetCoordinates(t, s, values.data());
         }},
        {"GetSpotCoordinates", everyKindOfColumn, 0, -1,
         [](auto& d, int t, int s) {
             Values values;
             return d.GetSpotCoordinates(t, s, values.data());
         }},
        {"GetSpectrum", everyKindOfColumn, 0, -1,
         [](auto& d, int t, int s) {
             Values values;
             return d.GetSpectrum(t, s, values.data());
         }},
        {"GetLab", everyKindOfColumn, 0, -1,
         [](auto& d, int t, int s) {
             Values values;
             return d.GetLab(t, s, values.data());
         }},
        {"GetXyz", everyKindOfColumn, 0, -1,
         [](auto& d, int t, int s) {
             Values values;
             return d.GetXyz(t, s, values.data());
         }},
        {"GetSampleName", everyKindOfColumn, 0, -1,
         [](auto& d, int t, int s) {
             TextBuffer text;
             return d.GetSampleName(t, s, text.data());
         }},
        {"GetField of a string", everyKindOfColumn, 0, -1,
         [](auto& d, int t, int s) {
             TextBuffer text;
             return d.GetField(t, s, 0, text.data());
         }},
        {"GetField of a number", everyKindOfColumn, 0, -1,
         [](auto& d, int t, int s) {
             TextBuffer text;
             return d.GetField(t, s, 12, text.data());
         }},
        {"GetInkBookName", everyKindOfColumn, 0, -1,
         [](auto& d, int t, int s) {
             TextBuffer text;
             return d.GetInkBookName(t, s, text.data());
         }},
    };
}

std::vector<Query> allQueries() {
    std::vector<Query> all = tableQueries();
    const std::vector<Query> others = sampleQueries();
    all.insert(all.end(), others.begin(), others.end());
    return all;
}

std::vector<double> coordinates(const TCgats& document, int sample, std::size_t count, int result = 0) {
    std::vector<double> values(count + 1, kUntouched);
    EXPECT_EQ(document.GetCoordinates(0, sample, values.data()), result);
    EXPECT_EQ(values.back(), kUntouched);
    values.pop_back();
    return values;
}

std::vector<double> spots(const TCgats& document, int sample, std::size_t count) {
    std::vector<double> values(count + 1, kUntouched);
    EXPECT_EQ(document.GetSpotCoordinates(0, sample, values.data()), 0);
    EXPECT_EQ(values.back(), kUntouched);
    values.pop_back();
    return values;
}

std::vector<double> spectrum(const TCgats& document, int sample, std::size_t count) {
    std::vector<double> values(count + 1, kUntouched);
    EXPECT_EQ(document.GetSpectrum(0, sample, values.data()), 0);
    EXPECT_EQ(values.back(), kUntouched);
    values.pop_back();
    return values;
}

std::vector<int> wavelengths(const TCgats& document, std::size_t count) {
    std::vector<int> values(count + 1, -7);
    EXPECT_EQ(document.GetWaveLengths(0, values.data()), 0);
    EXPECT_EQ(values.back(), -7);
    values.pop_back();
    return values;
}

std::string fieldText(const TCgats& document, int sample, int field) {
    TextBuffer text;
    text.fill('~');
    EXPECT_EQ(document.GetField(0, sample, field, text.data()), 0);
    EXPECT_NE(std::find(text.begin(), text.end(), '\0'), text.end());
    text.back() = '\0';
    return text.data();
}

// The text of a floating-point field that was written as `value`.
std::string numberText(const std::string& value) {
    const ReadDocument document(tableOf("D_RED", {value}));
    return fieldText(document, 0, 0);
}

// ---- counts ----

TEST(cgatsCounts, nrSamples_isTheNumberOfSetsOfEachTable) {
    const ReadDocument document(plainTable() + tableOf("XYZ_X XYZ_Y XYZ_Z", {"1 2 3", "4 5 6", "7 8 9"}));
    EXPECT_EQ(document.GetNrSamples(0), 2);
    EXPECT_EQ(document.GetNrSamples(1), 3);
}

TEST(cgatsCounts, nrSamples_isAnsweredByADocumentInError) {
    const ReadDocument document(plainTable());
    document.SetErrorCode(1);
    EXPECT_EQ(document.GetNrSamples(0), 2);
}

TEST(cgatsCounts, nrSamples_ofABadTableIsMinusOne) {
    const ReadDocument document(plainTable());
    EXPECT_EQ(document.GetNrSamples(-1), -1);
    EXPECT_EQ(document.GetNrSamples(1), -1);
    EXPECT_EQ(document.GetNrSamples(std::numeric_limits<int>::max()), -1);
    EXPECT_EQ(document.GetNrSamples(std::numeric_limits<int>::min()), -1);
}

TEST(cgatsCounts, nrSamples_ofADocumentThatCouldNotBeReadCountsTheTablesBeforeTheError) {
    const TCgats document((plainTable() + "NUMBER_OF_SETS 1\nBEGIN_DATA\n").c_str(), 0);
    ASSERT_EQ(document.GetErrorCode(), 6);
    EXPECT_EQ(document.GetNrSamples(0), 2);
    EXPECT_EQ(document.GetNrFields(0), -1);
}

TEST(cgatsCounts, nrFields_countsEveryColumnOfTheDataFormat) {
    const ReadDocument document(plainTable() + cmykTable());
    EXPECT_EQ(document.GetNrFields(0), 2);
    EXPECT_EQ(document.GetNrFields(1), 5);
}

TEST(cgatsCounts, nrProcessColors_countsTheChannelsOfTheKind) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" + cmykTable() + sixColorTable() +
                                tableOf("PC1_1 PC1_2 PC1_3", {"1 2 3"}));
    EXPECT_EQ(document.GetNrProcessColors(0), 4);
    EXPECT_EQ(document.GetNrProcessColors(1), 6);
    EXPECT_EQ(document.GetNrProcessColors(2), 3);
}

TEST(cgatsCounts, nrSpotColors_countsTheSpotColumns) {
    const ReadDocument document(tableOf("SPOT_1 SPOT_2 SPOT_3", {"1 2 3"}));
    EXPECT_EQ(document.GetNrSpotColors(0), 3);
}

TEST(cgatsCounts, nrWaveLengths_countsTheSpectralColumns) {
    const ReadDocument document(tableOf("SAMPLE_ID nm400 nm410 nm420 nm430 nm440", {"1 0 0 0 0 0"}));
    EXPECT_EQ(document.GetNrWaveLengths(0), 5);
}

TEST(cgatsCounts, counts_ofKindsThatATableLacksAreZero) {
    const ReadDocument document(plainTable());
    EXPECT_EQ(document.GetNrProcessColors(0), 0);
    EXPECT_EQ(document.GetNrSpotColors(0), 0);
    EXPECT_EQ(document.GetNrWaveLengths(0), 0);
}

TEST(cgatsCounts, nrProcessColors_isZeroWhereAChannelOfCmykIsGivenTwice) {
    const ReadDocument document(tableOf("CMYK_C CMYK_C CMYK_Y CMYK_K", {"1 2 3 4"}));
    EXPECT_EQ(document.GetNrProcessColors(0), 0);
}

// ---- kinds ----

TEST(cgatsKinds, cmykTable_isCmykAlone) {
    const ReadDocument document(cmykTable());
    EXPECT_TRUE(document.IsCMYKDefined(0));
    EXPECT_FALSE(document.IsCustomDefined(0));
    EXPECT_FALSE(document.IsNColorDefined(0));
    EXPECT_TRUE(document.ContainsProcessColors(0));
}

TEST(cgatsKinds, customProcessColors_areCustomAlone) {
    const ReadDocument document(everyKindOfColumn());
    EXPECT_FALSE(document.IsCMYKDefined(0));
    EXPECT_TRUE(document.IsCustomDefined(0));
    EXPECT_FALSE(document.IsNColorDefined(0));
    EXPECT_TRUE(document.ContainsProcessColors(0));
}

TEST(cgatsKinds, nColorTable_isNColorAlone) {
    const ReadDocument document(sixColorTable());
    EXPECT_FALSE(document.IsCMYKDefined(0));
    EXPECT_FALSE(document.IsCustomDefined(0));
    EXPECT_TRUE(document.IsNColorDefined(0));
    EXPECT_TRUE(document.ContainsProcessColors(0));
}

TEST(cgatsKinds, tableWithoutDeviceColors_isOfNoKind) {
    const ReadDocument document(tableOf("SAMPLE_ID RGB_R RGB_G RGB_B", {"1 2 3 4"}));
    EXPECT_FALSE(document.IsCMYKDefined(0));
    EXPECT_FALSE(document.IsCustomDefined(0));
    EXPECT_FALSE(document.IsNColorDefined(0));
    EXPECT_FALSE(document.ContainsProcessColors(0));
}

TEST(cgatsKinds, threeCmykColumns_areNoProcessColors) {
    const ReadDocument document(tableOf("CMYK_C CMYK_M CMYK_Y", {"1 2 3"}));
    EXPECT_FALSE(document.IsCMYKDefined(0));
    EXPECT_FALSE(document.ContainsProcessColors(0));
}

TEST(cgatsKinds, channelOfCmykGivenTwice_leavesNoKindBesideCustomColors) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" +
                                tableOf("CMYK_C CMYK_C CMYK_Y CMYK_K PC1_1", {"1 2 3 4 5"}));
    EXPECT_FALSE(document.IsCMYKDefined(0));
    EXPECT_FALSE(document.IsCustomDefined(0));
    EXPECT_FALSE(document.ContainsProcessColors(0));
}

TEST(cgatsKinds, nColorNumberBelowOne_leavesNoKind) {
    const ReadDocument document(tableOf("6CLR_0 6CLR_1 6CLR_2 6CLR_3 6CLR_4 6CLR_5", {"1 2 3 4 5 6"}));
    EXPECT_FALSE(document.IsNColorDefined(0));
    EXPECT_FALSE(document.ContainsProcessColors(0));
}

TEST(cgatsKinds, kindsAreTold_tableByTable) {
    const ReadDocument document(plainTable() + cmykTable());
    EXPECT_FALSE(document.IsCMYKDefined(0));
    EXPECT_TRUE(document.IsCMYKDefined(1));
}

TEST(cgatsKinds, spotColors_areContainedWithOneSpotColumn) {
    const ReadDocument document(tableOf("SPOT_1", {"1"}) + cmykTable());
    EXPECT_TRUE(document.ContainsSpotColors(0));
    EXPECT_FALSE(document.ContainsSpotColors(1));
}

TEST(cgatsKinds, waveLengths_areContainedWithOneSpectralColumn) {
    const ReadDocument document(tableOf("SPECTRAL_NM_550", {"1"}) +
                                tableOf("SPECTRAL_NM SPECTRAL_PCT", {"550 1"}));
    EXPECT_TRUE(document.ContainsWaveLengths(0));
    EXPECT_FALSE(document.ContainsWaveLengths(1));
}

TEST(cgatsKinds, lab_isContainedWithAllThreeColumnsOnly) {
    const ReadDocument document(tableOf("LAB_B LAB_L LAB_A", {"1 2 3"}) +
                                tableOf("LAB_L LAB_A LAB_C", {"1 2 3"}));
    EXPECT_TRUE(document.ContainsLab(0));
    EXPECT_FALSE(document.ContainsLab(1));
}

TEST(cgatsKinds, xyz_isContainedWithAllThreeColumnsOnly) {
    const ReadDocument document(tableOf("XYZ_Z XYZ_X XYZ_Y", {"1 2 3"}) + tableOf("XYZ_X XYZ_Y", {"1 2"}) +
                                tableOf("XYY_X XYY_Y XYY_GAPY", {"1 2 3"}));
    EXPECT_TRUE(document.ContainsXyz(0));
    EXPECT_FALSE(document.ContainsXyz(1));
    EXPECT_FALSE(document.ContainsXyz(2));
}

TEST(cgatsKinds, sampleNames_areThoseOfAColumnSampleIDAlone) {
    EXPECT_TRUE(ReadDocument(tableOf("SampleID", {"a"})).ContainsSampleNames(0));
    EXPECT_FALSE(ReadDocument(tableOf("SAMPLE_ID", {"a"})).ContainsSampleNames(0));
    EXPECT_FALSE(ReadDocument(tableOf("SAMPLE_NAME", {"a"})).ContainsSampleNames(0));
    EXPECT_FALSE(ReadDocument(tableOf("SampleName", {"a"})).ContainsSampleNames(0));
    EXPECT_FALSE(ReadDocument(tableOf("sampleid", {"a"})).ContainsSampleNames(0));
}

TEST(cgatsKinds, sampleNames_comeFromADeclaredFieldSampleIDToo) {
    EXPECT_TRUE(ReadDocument("KEYWORD \"SampleID\"\n" + tableOf("SAMPLEID", {"a"})).ContainsSampleNames(0));
}

TEST(cgatsKinds, inkBookNames_areThoseOfAFieldInkBook) {
    EXPECT_TRUE(ReadDocument("KEYWORD \"InkBook\"\n" + tableOf("InkBook", {"a"})).ContainsInkBookNames(0));
    EXPECT_FALSE(ReadDocument(plainTable()).ContainsInkBookNames(0));
}

TEST(cgatsKinds, inkBookNames_areFoundIgnoringCase) {
    EXPECT_TRUE(ReadDocument("KEYWORD \"INKBOOK\"\n" + tableOf("INKBOOK", {"a"})).ContainsInkBookNames(0));
}

TEST(cgatsKinds, fieldName_isFoundIgnoringCase) {
    const ReadDocument document(plainTable());
    EXPECT_TRUE(document.ContainsFieldName(0, "D_RED"));
    EXPECT_TRUE(document.ContainsFieldName(0, "d_Red"));
    EXPECT_FALSE(document.ContainsFieldName(0, "D_REDD"));
    EXPECT_FALSE(document.ContainsFieldName(0, "D_RE"));
    EXPECT_FALSE(document.ContainsFieldName(0, ""));
}

TEST(cgatsKinds, fieldNameIndex_isTheColumn) {
    const ReadDocument document(everyKindOfColumn());
    EXPECT_EQ(document.GetFieldNameIndex(0, "SampleID"), 0);
    EXPECT_EQ(document.GetFieldNameIndex(0, "inkbook"), 1);
    EXPECT_EQ(document.GetFieldNameIndex(0, "pc2_2"), 3);
    EXPECT_EQ(document.GetFieldNameIndex(0, "NM500"), 6);
    EXPECT_EQ(document.GetFieldNameIndex(0, "XYZ_Z"), 12);
}

TEST(cgatsKinds, fieldNameIndex_ofANameThatTheTableLacksIsMinusOne) {
    const ReadDocument document(plainTable() + cmykTable());
    EXPECT_EQ(document.GetFieldNameIndex(0, "CMYK_C"), -1);
    EXPECT_EQ(document.GetFieldNameIndex(1, "CMYK_C"), 1);
    EXPECT_EQ(document.GetFieldNameIndex(0, ""), -1);
}

TEST(cgatsKinds, nullFieldName_isNotFound) {
    const ReadDocument document(plainTable());
    EXPECT_FALSE(document.ContainsFieldName(0, nullptr));
    EXPECT_EQ(document.GetFieldNameIndex(0, nullptr), -1);
}

TEST(cgatsKinds, fieldName_isTheCanonicalOne) {
    const ReadDocument document("KEYWORD \"Batch\"\n" + tableOf("lab_l BATCH", {"1 x"}));
    EXPECT_STREQ(document.GetTable(0)->GetHeader()->GetField(0)->GetName(), "LAB_L");
    EXPECT_STREQ(document.GetTable(0)->GetHeader()->GetField(1)->GetName(), "Batch");
    EXPECT_EQ(document.GetFieldNameIndex(0, "LAB_L"), 0);
    EXPECT_EQ(document.GetFieldNameIndex(0, "Batch"), 1);
}

TEST(cgatsKinds, spotDescriptions_dependOnTheTagsOfTheDocumentAlone) {
    const ReadDocument described("SPOT_ID \"Gold\"\n" + plainTable());
    const ReadDocument bare(tableOf("SPOT_1", {"1"}));
    EXPECT_TRUE(described.ContainsSpotDescriptions(0));
    EXPECT_TRUE(described.ContainsSpotDescriptions(-1));
    EXPECT_TRUE(described.ContainsSpotDescriptions(99));
    EXPECT_FALSE(bare.ContainsSpotDescriptions(0));
}

TEST(cgatsKinds, processColorDescriptions_dependOnTheTagsOfTheDocumentAlone) {
    const ReadDocument described("PROCESSCOLOR_ID \"Orange\"\n" + plainTable());
    const ReadDocument bare("SPOT_ID \"Gold\"\n" + tableOf("PC0_1", {"1"}));
    EXPECT_TRUE(described.ContainsCustomProcessColorDescriptions(0));
    EXPECT_TRUE(described.ContainsCustomProcessColorDescriptions(-1));
    EXPECT_TRUE(described.ContainsCustomProcessColorDescriptions(99));
    EXPECT_FALSE(bare.ContainsCustomProcessColorDescriptions(0));
}

TEST(cgatsKinds, descriptionTags_areNotAnsweredByADocumentInError) {
    const ReadDocument document("SPOT_ID \"Gold\"\nPROCESSCOLOR_ID \"Orange\"\n" + plainTable());
    document.SetErrorCode(1);
    EXPECT_FALSE(document.ContainsSpotDescriptions(0));
    EXPECT_FALSE(document.ContainsCustomProcessColorDescriptions(0));
}

// ---- wavelengths and spectra ----

TEST(cgatsSpectra, waveLengths_comeInAscendingOrder) {
    const ReadDocument document(tableOf("nm500 nm380 nm730 nm410", {"1 2 3 4"}));
    EXPECT_EQ(wavelengths(document, 4), (std::vector<int>{380, 410, 500, 730}));
}

TEST(cgatsSpectra, waveLengths_areReadFromAllSpellings) {
    const ReadDocument document(tableOf("nm400 SPECTRAL_410 SPECTRAL_NM_420 NM_430", {"1 2 3 4"}));
    EXPECT_EQ(wavelengths(document, 4), (std::vector<int>{400, 410, 420, 430}));
}

TEST(cgatsSpectra, waveLengths_ofATableWithoutSpectraAreNone) {
    const ReadDocument document(plainTable());
    EXPECT_EQ(wavelengths(document, 0), std::vector<int>{});
}

TEST(cgatsSpectra, waveLengths_intoNullAreRefusedWithOne) {
    const ReadDocument document(everyKindOfColumn());
    EXPECT_EQ(document.GetWaveLengths(0, nullptr), 1);
}

TEST(cgatsSpectra, spectrum_pairsWithTheAscendingWavelengths) {
    const ReadDocument document(
        tableOf("nm500 SAMPLE_ID nm380 nm730 nm410", {"0.5 x 0.25 1 0.125", "5 y 3 7 4"}));
    EXPECT_EQ(spectrum(document, 0, 4), (std::vector<double>{0.25, 0.125, 0.5, 1.0}));
    EXPECT_EQ(spectrum(document, 1, 4), (std::vector<double>{3.0, 4.0, 5.0, 7.0}));
}

TEST(cgatsSpectra, spectrum_ofEqualWavelengthsKeepsTheColumnOrder) {
    const ReadDocument document(tableOf("nm500 nm400 SPECTRAL_500", {"1 2 3"}));
    EXPECT_EQ(wavelengths(document, 3), (std::vector<int>{400, 500, 500}));
    EXPECT_EQ(spectrum(document, 0, 3), (std::vector<double>{2.0, 1.0, 3.0}));
}

TEST(cgatsSpectra, spectrum_inPercentIsGivenAsFraction) {
    const ReadDocument document(tableOf("nm400 nm410", {"57 7.5", "0.25 100"}));
    // 57 * 0.01 is not 0.57: the values are multiplied, not divided by 100.
    EXPECT_EQ(spectrum(document, 0, 2), (std::vector<double>{57 * 0.01, 7.5 * 0.01}));
    EXPECT_EQ(spectrum(document, 1, 2), (std::vector<double>{0.25 * 0.01, 100 * 0.01}));
}

TEST(cgatsSpectra, spectrum_upToExactlyTenIsTakenAsFraction) {
    const ReadDocument document(tableOf("nm400 nm410", {"10 9.5"}));
    EXPECT_EQ(spectrum(document, 0, 2), (std::vector<double>{10.0, 9.5}));
}

TEST(cgatsSpectra, spectrum_isInPercentWhenTheFifthSampleShowsIt) {
    const ReadDocument document(tableOf("nm400", {"1", "2", "3", "4", "50"}));
    EXPECT_EQ(spectrum(document, 0, 1), std::vector<double>{1 * 0.01});
}

TEST(cgatsSpectra, spectrum_isTakenAsFractionWhenOnlyTheSixthSampleShowsMore) {
    const ReadDocument document(tableOf("nm400", {"1", "2", "3", "4", "5", "60"}));
    EXPECT_EQ(spectrum(document, 5, 1), std::vector<double>{60.0});
}

TEST(cgatsSpectra, percent_isToldTableByTable) {
    const ReadDocument document(tableOf("nm400", {"57"}) + tableOf("nm400", {"0.5"}));
    double value = 0;
    ASSERT_EQ(document.GetSpectrum(0, 0, &value), 0);
    EXPECT_EQ(value, 57 * 0.01);
    ASSERT_EQ(document.GetSpectrum(1, 0, &value), 0);
    EXPECT_EQ(value, 0.5);
}

TEST(cgatsSpectra, spectrum_ofATableWithoutSpectraIsRefused) {
    const ReadDocument document(plainTable());
    double value = kUntouched;
    EXPECT_EQ(document.GetSpectrum(0, 0, &value), -1);
    EXPECT_EQ(value, kUntouched);
}

// ---- device values ----

TEST(cgatsCoordinates, cmyk_comesByChannelWhateverTheColumnOrder) {
    const ReadDocument document(
        tableOf("CMYK_K CMYK_Y SAMPLE_ID CMYK_M CMYK_C", {"4 3 x 2 1", "40 30 y 20.5 10"}));
    EXPECT_EQ(coordinates(document, 0, 4), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(coordinates(document, 1, 4), (std::vector<double>{10, 20.5, 30, 40}));
}

TEST(cgatsCoordinates, customColors_comeByNumber) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" + tableOf("PC1_3 PC1_1 PC1_2", {"30 10 20"}));
    EXPECT_EQ(coordinates(document, 0, 3), (std::vector<double>{10, 20, 30}));
}

TEST(cgatsCoordinates, nColors_comeByNumber) {
    const ReadDocument document(tableOf("5CLR_5 5CLR_1 5CLR_4 5CLR_2 5CLR_3", {"50 10 40 20 30"}));
    EXPECT_EQ(coordinates(document, 0, 5), (std::vector<double>{10, 20, 30, 40, 50}));
}

TEST(cgatsCoordinates, processColors_areGivenBeforeSpots) {
    const ReadDocument document(tableOf("SPOT_1 CMYK_C CMYK_M CMYK_Y CMYK_K", {"9 1 2 3 4"}));
    EXPECT_EQ(coordinates(document, 0, 4), (std::vector<double>{1, 2, 3, 4}));
}

TEST(cgatsCoordinates, spots_standInWhereThereAreNoProcessColors) {
    const ReadDocument document(tableOf("SPOT_2 SAMPLE_ID SPOT_1", {"20 x 10"}));
    EXPECT_EQ(coordinates(document, 0, 2), (std::vector<double>{10, 20}));
}

TEST(cgatsCoordinates, tableWithoutDeviceColors_hasNone) {
    const ReadDocument document(tableOf("RGB_R RGB_G RGB_B", {"1 2 3"}));
    EXPECT_EQ(coordinates(document, 0, 3, -1), std::vector<double>(3, kUntouched));
}

TEST(cgatsCoordinates, spotCoordinates_comeByNumber) {
    const ReadDocument document(
        tableOf("SPOT_3 CMYK_C CMYK_M CMYK_Y CMYK_K SPOT_1 SPOT_2", {"30 1 2 3 4 10 20"}));
    EXPECT_EQ(spots(document, 0, 3), (std::vector<double>{10, 20, 30}));
}

TEST(cgatsCoordinates, spotCoordinates_ofATableWithoutSpotsAreRefused) {
    const ReadDocument document(cmykTable());
    double value = kUntouched;
    EXPECT_EQ(document.GetSpotCoordinates(0, 0, &value), -1);
    EXPECT_EQ(value, kUntouched);
}

TEST(cgatsCoordinates, customColorNumberGivenTwice_refusesTheCoordinates) {
    const ReadDocument document("PROCESSCOLOR_ID \"Orange\"\n" + tableOf("PC1_1 PC1_1 SPOT_1", {"10 20 30"}));
    std::array<double, 2> values;
    EXPECT_TRUE(document.IsCustomDefined(0));
    EXPECT_EQ(document.GetNrProcessColors(0), 2);
    EXPECT_EQ(document.GetCoordinates(0, 0, values.data()), -1);
    EXPECT_EQ(spots(document, 0, 1), std::vector<double>{30});
}

TEST(cgatsCoordinates, spotNumberGivenTwice_refusesTheSpotCoordinates) {
    const ReadDocument document(tableOf("SPOT_2 SPOT_2", {"10 20"}));
    std::array<double, 2> values;
    EXPECT_EQ(document.GetNrSpotColors(0), 2);
    EXPECT_EQ(document.GetSpotCoordinates(0, 0, values.data()), -1);
    EXPECT_EQ(document.GetCoordinates(0, 0, values.data()), -1);
}

TEST(cgatsCoordinates, spotNumberGivenTwice_leavesTheProcessColorsReadable) {
    const ReadDocument document(tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K SPOT_1 SPOT_1", {"1 2 3 4 10 20"}));
    EXPECT_EQ(coordinates(document, 0, 4), (std::vector<double>{1, 2, 3, 4}));
}

TEST(cgatsCoordinates, percentTables_leaveDeviceValuesAsStored) {
    const ReadDocument document(tableOf("CMYK_C CMYK_M CMYK_Y CMYK_K nm400 SPOT_1", {"100 90 80 70 57 60"}));
    EXPECT_EQ(coordinates(document, 0, 4), (std::vector<double>{100, 90, 80, 70}));
    EXPECT_EQ(spots(document, 0, 1), std::vector<double>{60});
}

// ---- colorimetric values and names ----

TEST(cgatsColorimetry, lab_comesInTheOrderOfTheTriple) {
    const ReadDocument document(tableOf("LAB_B LAB_L XYZ_X LAB_A", {"-3.5 50 9 2.25", "1 2 3 4"}));
    std::array<double, 4> lab;
    lab.fill(kUntouched);
    ASSERT_EQ(document.GetLab(0, 0, lab.data()), 0);
    EXPECT_EQ(lab, (std::array<double, 4>{50, 2.25, -3.5, kUntouched}));
    ASSERT_EQ(document.GetLab(0, 1, lab.data()), 0);
    EXPECT_EQ(lab, (std::array<double, 4>{2, 4, 1, kUntouched}));
}

TEST(cgatsColorimetry, xyz_comesInTheOrderOfTheTriple) {
    const ReadDocument document(tableOf("XYZ_Z XYZ_X LAB_L XYZ_Y", {"82.5 96.25 9 100"}));
    std::array<double, 4> xyz;
    xyz.fill(kUntouched);
    ASSERT_EQ(document.GetXyz(0, 0, xyz.data()), 0);
    EXPECT_EQ(xyz, (std::array<double, 4>{96.25, 100, 82.5, kUntouched}));
}

TEST(cgatsColorimetry, percentTables_leaveLabAndXyzAsStored) {
    const ReadDocument document(
        tableOf("nm400 LAB_L LAB_A LAB_B XYZ_X XYZ_Y XYZ_Z", {"57 60 20 -30 40 50 70"}));
    std::array<double, 3> values;
    ASSERT_EQ(document.GetLab(0, 0, values.data()), 0);
    EXPECT_EQ(values, (std::array<double, 3>{60, 20, -30}));
    ASSERT_EQ(document.GetXyz(0, 0, values.data()), 0);
    EXPECT_EQ(values, (std::array<double, 3>{40, 50, 70}));
}

TEST(cgatsColorimetry, lab_withAColumnMissingIsRefused) {
    const ReadDocument document(tableOf("LAB_L LAB_A XYZ_X XYZ_Y XYZ_Z", {"1 2 3 4 5"}));
    std::array<double, 3> lab;
    lab.fill(kUntouched);
    EXPECT_EQ(document.GetLab(0, 0, lab.data()), -1);
    EXPECT_EQ(lab[0], kUntouched);
}

TEST(cgatsColorimetry, xyz_withAColumnMissingIsRefused) {
    const ReadDocument document(tableOf("XYZ_X XYZ_Y LAB_L LAB_A LAB_B", {"1 2 3 4 5"}));
    std::array<double, 3> xyz;
    xyz.fill(kUntouched);
    EXPECT_EQ(document.GetXyz(0, 0, xyz.data()), -1);
    EXPECT_EQ(xyz[0], kUntouched);
}

TEST(cgatsColorimetry, values_ofTheSecondTableAreItsOwn) {
    const ReadDocument document(tableOf("LAB_L LAB_A LAB_B", {"1 2 3"}) +
                                tableOf("LAB_L LAB_A LAB_B", {"4 5 6", "7 8 9"}));
    std::array<double, 3> lab;
    ASSERT_EQ(document.GetLab(1, 1, lab.data()), 0);
    EXPECT_EQ(lab, (std::array<double, 3>{7, 8, 9}));
}

TEST(cgatsNames, sampleName_isCopiedAsWritten) {
    const ReadDocument document(tableOf("D_RED SampleID", {"1 A1", "2 \"patch  7 \"", "3 \"\""}));
    TextBuffer name;
    ASSERT_EQ(document.GetSampleName(0, 0, name.data()), 0);
    EXPECT_STREQ(name.data(), "A1");
    ASSERT_EQ(document.GetSampleName(0, 1, name.data()), 0);
    EXPECT_STREQ(name.data(), "patch  7 ");
    ASSERT_EQ(document.GetSampleName(0, 2, name.data()), 0);
    EXPECT_STREQ(name.data(), "");
}

TEST(cgatsNames, sampleName_mayHaveTheLongestTextThatIsRead) {
    const std::string longest(TCgats::kMaxSampleValue, 'x');
    const ReadDocument document(tableOf("SampleID", {longest}));
    TextBuffer name;
    ASSERT_EQ(document.GetSampleName(0, 0, name.data()), 0);
    EXPECT_EQ(name.data(), longest);
}

TEST(cgatsNames, sampleName_ofTheLastOfSeveralColumnsIsGiven) {
    const ReadDocument document(tableOf("SampleID SampleID", {"first last"}));
    TextBuffer name;
    ASSERT_EQ(document.GetSampleName(0, 0, name.data()), 0);
    EXPECT_STREQ(name.data(), "last");
}

TEST(cgatsNames, sampleName_ofATableWithoutNamesIsRefused) {
    const ReadDocument document(tableOf("SAMPLE_ID SAMPLE_NAME", {"1 a"}));
    TextBuffer name;
    EXPECT_EQ(document.GetSampleName(0, 0, name.data()), -1);
}

TEST(cgatsNames, inkBookName_isTheTextOfTheField) {
    const ReadDocument document(everyKindOfColumn());
    TextBuffer name;
    ASSERT_EQ(document.GetInkBookName(0, 0, name.data()), 0);
    EXPECT_STREQ(name.data(), "warm");
    ASSERT_EQ(document.GetInkBookName(0, 1, name.data()), 0);
    EXPECT_STREQ(name.data(), "cold");
}

TEST(cgatsNames, inkBookName_isFoundIgnoringCase) {
    const ReadDocument document("KEYWORD \"inkBOOK\"\n" + tableOf("D_RED inkbook", {"1 \"solid coated\""}));
    TextBuffer name;
    ASSERT_EQ(document.GetInkBookName(0, 0, name.data()), 0);
    EXPECT_STREQ(name.data(), "solid coated");
}

TEST(cgatsNames, inkBookName_mayStandInTheFirstColumn) {
    const ReadDocument document("KEYWORD \"InkBook\"\n" + tableOf("InkBook D_RED", {"warm 1"}));
    TextBuffer name;
    ASSERT_EQ(document.GetInkBookName(0, 0, name.data()), 0);
    EXPECT_STREQ(name.data(), "warm");
}

TEST(cgatsNames, inkBookName_ofATableWithoutTheFieldIsEmptyAndRefused) {
    const ReadDocument document(plainTable());
    TextBuffer name;
    name.fill('~');
    EXPECT_EQ(document.GetInkBookName(0, 0, name.data()), -1);
    EXPECT_STREQ(name.data(), "");
}

// ---- fields as text ----

TEST(cgatsFieldText, floatingPointField_hasFiveDecimals) {
    EXPECT_EQ(numberText("12.5"), "12.50000");
    EXPECT_EQ(numberText("-3"), "-3.00000");
    EXPECT_EQ(numberText("+0.000014"), "0.00001");
    EXPECT_EQ(numberText("1e-9"), "0.00000");
}

TEST(cgatsFieldText, decimals_areRoundedHalfToEvenOnTheStoredValue) {
    // 1/64 and 3/64 lie exactly between two texts; 2.000005 is stored a little below.
    EXPECT_EQ(numberText("0.015625"), "0.01562");
    EXPECT_EQ(numberText("0.046875"), "0.04688");
    EXPECT_EQ(numberText("2.000005"), "2.00000");
    EXPECT_EQ(numberText("999999.999999"), "1000000.00000");
}

TEST(cgatsFieldText, largeValues_areWrittenInFull) {
    EXPECT_EQ(numberText("1e22"), "10000000000000000000000.00000");
    EXPECT_EQ(numberText("-123456789012345680000"), "-123456789012345683968.00000");
}

TEST(cgatsFieldText, largestDouble_isWrittenInFull) {
    EXPECT_EQ(numberText("-1.7976931348623157e308"),
              "-17976931348623157081452742373170435679807056752584499659891747680315726078002853876058955"
              "863276687817154045895351438246423432132688946418276846754670353751698604991057655128207624"
              "549009038932894407586850845513394230458323690322294816580855933212334827479782620414472316"
              "8738177180919299881250404026184124858368.00000");
}

TEST(cgatsFieldText, infiniteAndUndefinedValues_areNamed) {
    EXPECT_EQ(numberText("inf"), "inf");
    EXPECT_EQ(numberText("-INFINITY"), "-inf");
    EXPECT_EQ(numberText("1e999"), "inf");
    EXPECT_EQ(numberText("nan"), "nan");
}

TEST(cgatsFieldText, negativeZero_keepsItsSign) {
    EXPECT_EQ(numberText("-0"), "-0.00000");
    EXPECT_EQ(numberText("-1e-9"), "-0.00000");
    EXPECT_EQ(numberText("0"), "0.00000");
}

TEST(cgatsFieldText, textThatIsNoNumber_readsAsZero) {
    EXPECT_EQ(numberText("n/a"), "0.00000");
}

TEST(cgatsFieldText, decimalComma_readsAsFullStop) {
    EXPECT_EQ(numberText("1,5"), "1.50000");
}

TEST(cgatsFieldText, stringField_isCopiedAsItIs) {
    const ReadDocument document("KEYWORD \"Batch\"\n" +
                                tableOf("SAMPLE_ID STRING SampleID Batch",
                                        {"007 \"100 % a,b\" \" x \" 1,50", "%s \"\" +1e3 \"two\twords\""}));
    EXPECT_EQ(fieldText(document, 0, 0), "007");
    EXPECT_EQ(fieldText(document, 0, 1), "100 % a,b");
    EXPECT_EQ(fieldText(document, 0, 2), " x ");
    EXPECT_EQ(fieldText(document, 0, 3), "1,50");
    EXPECT_EQ(fieldText(document, 1, 0), "%s");
    EXPECT_EQ(fieldText(document, 1, 1), "");
    EXPECT_EQ(fieldText(document, 1, 2), "+1e3");
    EXPECT_EQ(fieldText(document, 1, 3), "two\twords");
}

TEST(cgatsFieldText, integerField_isWrittenWithoutDecimals) {
    TCgats document;
    document.InitTmpHeader(2);
    ASSERT_EQ(document.GetTmpHeader()->FillNextSlot(
                  new TCgatsField(TCgatsField::kInteger, "COUNT", 0, TCgatsField::kCustom, 0)),
              0);
    ASSERT_EQ(document.GetTmpHeader()->FillNextSlot(
                  new TCgatsField(TCgatsField::kFloat, "D_RED", 0, TCgatsField::kStandard, 6)),
              0);
    document.SetNrSamples(3);
    const char* position = "-7 1 2147483647 2 1,5 1,5\n";
    ASSERT_EQ(document.ReadTable(&position), 0);
    EXPECT_EQ(fieldText(document, 0, 0), "-7");
    EXPECT_EQ(fieldText(document, 1, 0), "2147483647");
    EXPECT_EQ(fieldText(document, 2, 0), "1");
    EXPECT_EQ(fieldText(document, 2, 1), "1.50000");
}

TEST(cgatsFieldText, percentSpectra_areGivenAsStored) {
    const ReadDocument document(tableOf("nm400", {"57"}));
    EXPECT_EQ(fieldText(document, 0, 0), "57.00000");
    EXPECT_EQ(spectrum(document, 0, 1), std::vector<double>{57 * 0.01});
}

TEST(cgatsFieldText, field_isCountedInColumnOrder) {
    const ReadDocument document(tableOf("nm500 nm400 CMYK_K CMYK_C CMYK_M CMYK_Y", {"1 2 3 4 5 6"}));
    EXPECT_EQ(fieldText(document, 0, 0), "1.00000");
    EXPECT_EQ(fieldText(document, 0, 1), "2.00000");
    EXPECT_EQ(fieldText(document, 0, 2), "3.00000");
    EXPECT_EQ(fieldText(document, 0, 5), "6.00000");
}

TEST(cgatsFieldText, badField_isRefused) {
    const ReadDocument document(plainTable());
    TextBuffer text;
    EXPECT_EQ(document.GetField(0, 0, -1, text.data()), -1);
    EXPECT_EQ(document.GetField(0, 0, 2, text.data()), -1);
    EXPECT_EQ(document.GetField(0, 0, std::numeric_limits<int>::max(), text.data()), -1);
}

TEST(cgatsFieldText, fieldText_doesNotFollowTheLocale) {
    class CommaPunctuation : public std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaPunctuation));
    const std::string text = numberText("1234567.5");
    std::locale::global(before);
    EXPECT_EQ(text, "1234567.50000");
}

// ---- refusals ----

TEST(cgatsRefusals, everyQuery_answersWhereItCan) {
    for (const Query& query : allQueries()) {
        SCOPED_TRACE(query.name);
        const ReadDocument document(query.text());
        EXPECT_EQ(query.ask(document, 0, 0), query.good);
        EXPECT_EQ(query.ask(document, 0, 1), query.good);
    }
}

TEST(cgatsRefusals, negativeTable_isRefusedByEveryQuery) {
    for (const Query& query : allQueries()) {
        SCOPED_TRACE(query.name);
        const ReadDocument document(query.text());
        EXPECT_EQ(query.ask(document, -1, 0), query.refused);
        EXPECT_EQ(query.ask(document, std::numeric_limits<int>::min(), 0), query.refused);
    }
}

TEST(cgatsRefusals, tableAtTheCount_isRefusedByEveryQuery) {
    for (const Query& query : allQueries()) {
        SCOPED_TRACE(query.name);
        const ReadDocument document(query.text());
        EXPECT_EQ(query.ask(document, 1, 0), query.refused);
        EXPECT_EQ(query.ask(document, std::numeric_limits<int>::max(), 0), query.refused);
    }
}

TEST(cgatsRefusals, emptyDocument_isRefusedByEveryQuery) {
    const TCgats document;
    for (const Query& query : allQueries()) {
        SCOPED_TRACE(query.name);
        EXPECT_EQ(query.ask(document, 0, 0), query.refused);
    }
    EXPECT_EQ(document.GetNrSamples(0), -1);
    EXPECT_FALSE(document.ContainsSpotDescriptions(0));
    EXPECT_FALSE(document.ContainsCustomProcessColorDescriptions(0));
}

TEST(cgatsRefusals, documentInError_isRefusedByEveryQuery) {
    for (const Query& query : allQueries()) {
        SCOPED_TRACE(query.name);
        const ReadDocument document(query.text());
        document.SetErrorCode(24);
        EXPECT_EQ(query.ask(document, 0, 0), query.refused);
    }
}

TEST(cgatsRefusals, documentWithANegativeErrorCode_isInErrorToo) {
    const ReadDocument document(everyKindOfColumn());
    document.SetErrorCode(-1);
    EXPECT_EQ(document.GetNrFields(0), -1);
    EXPECT_FALSE(document.ContainsLab(0));
}

TEST(cgatsRefusals, tableThatGaveItsHeaderAway_isRefusedByEveryQuery) {
    for (const Query& query : allQueries()) {
        SCOPED_TRACE(query.name);
        const ReadDocument document(query.text());
        const std::unique_ptr<TCgatsTableHeader> header(document.GetTable(0)->ReleaseHeader());
        EXPECT_EQ(query.ask(document, 0, 0), query.refused);
        EXPECT_EQ(document.GetNrSamples(0), -1);
    }
}

TEST(cgatsRefusals, badSample_isRefusedByEveryQueryOfSamples) {
    for (const Query& query : sampleQueries()) {
        SCOPED_TRACE(query.name);
        const ReadDocument document(query.text());
        EXPECT_EQ(query.ask(document, 0, -1), -1);
        EXPECT_EQ(query.ask(document, 0, 2), -1);
        EXPECT_EQ(query.ask(document, 0, std::numeric_limits<int>::max()), -1);
        EXPECT_EQ(query.ask(document, 0, std::numeric_limits<int>::min()), -1);
    }
}

TEST(cgatsRefusals, nullOutput_isRefusedByEveryFiller) {
    const ReadDocument document(everyKindOfColumn());
    EXPECT_EQ(document.GetCoordinates(0, 0, nullptr), -1);
    EXPECT_EQ(document.GetSpotCoordinates(0, 0, nullptr), -1);
    EXPECT_EQ(document.GetSpectrum(0, 0, nullptr), -1);
    EXPECT_EQ(document.GetLab(0, 0, nullptr), -1);
    EXPECT_EQ(document.GetXyz(0, 0, nullptr), -1);
    EXPECT_EQ(document.GetSampleName(0, 0, nullptr), -1);
    EXPECT_EQ(document.GetField(0, 0, 0, nullptr), -1);
    EXPECT_EQ(document.GetField(0, 0, 12, nullptr), -1);
    EXPECT_EQ(document.GetInkBookName(0, 0, nullptr), -1);
}

TEST(cgatsRefusals, nullInkBookName_isRefusedWithoutTheFieldToo) {
    const ReadDocument document(plainTable());
    EXPECT_EQ(document.GetInkBookName(0, 0, nullptr), -1);
}

TEST(cgatsRefusals, refusedQueries_reportNothingAndRecordNoError) {
    const qxcms::tests::ReportCollector reports;
    for (const Query& query : allQueries()) {
        SCOPED_TRACE(query.name);
        const ReadDocument document(query.text());
        query.ask(document, -1, 0);
        query.ask(document, 1, 0);
        query.ask(document, 0, 99);
        EXPECT_EQ(document.GetErrorCode(), 0);
        EXPECT_STREQ(document.GetErrorMessage(), "");
    }
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(cgatsRefusals, queriesOfADocumentInError_leaveItsErrorAsItIs) {
    for (const Query& query : allQueries()) {
        SCOPED_TRACE(query.name);
        const ReadDocument document(query.text());
        document.SetErrorCode(14);
        query.ask(document, 0, 0);
        EXPECT_EQ(document.GetErrorCode(), 14);
        EXPECT_STREQ(document.GetErrorMessage(), "The table header contains no data fields.");
    }
}

} // namespace
