// What a column name means, and what the columns of a header mean together.
#include <climits>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

struct Match {
    Match(TCgats& document, const std::string& name)
        : result(document.MatchField(name.c_str(), &kind, &number, &dataType, &canonicalName)) {}

    int kind = -9;
    int number = -9;
    int dataType = -9;
    std::string canonicalName = "(untouched)";
    int result; // last, since it is made from the others
};

Match match(const std::string& name, const std::string& header = "") {
    Reading reading(header);
    EXPECT_EQ(reading.code, 0);
    return Match(reading.document, name);
}

void expectUnknown(const std::string& name, const std::string& header = "") {
    EXPECT_EQ(match(name, header).result, -1) << name;
}

// A match of the kinds with a number: floating point, the name as given, result 0.
void expectNumbered(const std::string& name, int kind, int number, const std::string& header = "") {
    const Match field = match(name, header);
    EXPECT_EQ(field.result, 0) << name;
    EXPECT_EQ(field.kind, kind) << name;
    EXPECT_EQ(field.number, number) << name;
    EXPECT_EQ(field.dataType, TCgatsField::kFloat) << name;
    EXPECT_EQ(field.canonicalName, name);
}

void expectStandard(const std::string& name, int index) {
    const Match field = match(name);
    EXPECT_EQ(field.result, index) << name;
    EXPECT_EQ(field.kind, TCgatsField::kStandard) << name;
}

// ---- Custom names come first

TEST(fieldClassification, customName_isAStringWithItsIndex) {
    const Match field = match("BOX", "KEYWORD LOT\nKEYWORD BOX\n");
    EXPECT_EQ(field.result, 1);
    EXPECT_EQ(field.kind, TCgatsField::kCustom);
    EXPECT_EQ(field.number, 0);
    EXPECT_EQ(field.dataType, TCgatsField::kString);
    EXPECT_EQ(field.canonicalName, "BOX");
}

TEST(fieldClassification, customName_ignoresCaseAndKeepsTheDeclaredSpelling) {
    const Match field = match("lOT", "KEYWORD Lot\n");
    EXPECT_EQ(field.result, 0);
    EXPECT_EQ(field.canonicalName, "Lot");
}

TEST(fieldClassification, customNames_areTriedInOrder) {
    const Match field = match("lot", "KEYWORD A\nKEYWORD LOT\nKEYWORD lot\n");
    EXPECT_EQ(field.result, 1);
    EXPECT_EQ(field.canonicalName, "LOT");
}

TEST(fieldClassification, customName_isAWholeName) {
    expectUnknown("LOTS", "KEYWORD LOT\n");
    expectUnknown("LO", "KEYWORD LOT\n");
}

TEST(fieldClassification, customName_winsOverEveryOtherClass) {
    for (const char* name : {"LAB_L", "SAMPLE_ID", "nm380", "SPECTRAL_NM_400", "6CLR_2", "SPOT_1", "PC0_1",
                             "SampleID", "SAMPLE_NAME"}) {
        const Match field = match(name, std::string("KEYWORD first\nKEYWORD ") + name + "\n");
        EXPECT_EQ(field.result, 1) << name;
        EXPECT_EQ(field.kind, TCgatsField::kCustom) << name;
        EXPECT_EQ(field.number, 0) << name;
        EXPECT_EQ(field.dataType, TCgatsField::kString) << name;
        EXPECT_EQ(field.canonicalName, name);
    }
}

TEST(fieldClassification, customName_mayHoldBlanks) {
    EXPECT_EQ(match("my lot", "KEYWORD \"My Lot\"\n").canonicalName, "My Lot");
}

// ---- Spectral columns

TEST(fieldClassification, fourPatterns_areSpectral) {
    for (const char* name : {"nm380", "SPECTRAL_380", "SPECTRAL_NM_380", "NM_380"})
        expectNumbered(name, TCgatsField::kSpectral, 380);
}

TEST(fieldClassification, everyWavelength_isRead) {
    for (int wavelength = 0; wavelength <= 2000; ++wavelength)
        for (const char* prefix : {"nm", "SPECTRAL_", "SPECTRAL_NM_", "NM_"})
            expectNumbered(prefix + std::to_string(wavelength), TCgatsField::kSpectral, wavelength);
}

TEST(fieldClassification, spectralPatterns_countCase) {
    for (const char* name : {"NM380", "Nm380", "nM380", "nm_380", "Nm_380", "spectral_380", "Spectral_380",
                             "spectral_nm_380", "SPECTRAL_nm_380"})
        expectUnknown(name);
}

TEST(fieldClassification, spectralPatterns_needANumber) {
    for (const char* name : {"nm", "SPECTRAL_", "SPECTRAL_NM_", "NM_", "nmx", "NM_x", "SPECTRAL_x380",
                             "SPECTRAL_NM380", "nm.5", "nm+", "nm-"})
        expectUnknown(name);
}

TEST(fieldClassification, spectralPatterns_areScannedAsPrefixes) {
    expectNumbered("nm380abc", TCgatsField::kSpectral, 380);
    expectNumbered("nm380.5", TCgatsField::kSpectral, 380);
    expectNumbered("SPECTRAL_NM_400_2", TCgatsField::kSpectral, 400);
    expectUnknown("xnm380");
}

TEST(fieldClassification, spectralNumbers_mayCarryASignOrZeros) {
    expectNumbered("nm+380", TCgatsField::kSpectral, 380);
    expectNumbered("nm0380", TCgatsField::kSpectral, 380);
    expectNumbered("nm0", TCgatsField::kSpectral, 0);
    expectNumbered("nm-0", TCgatsField::kSpectral, 0);
}

TEST(fieldClassification, negativeWavelengths_areNoMatch) {
    for (const char* name : {"nm-5", "SPECTRAL_-5", "SPECTRAL_NM_-5", "NM_-5", "nm-1"})
        expectUnknown(name);
}

TEST(fieldClassification, hugeWavelengths_areClamped) {
    expectNumbered("nm2147483647", TCgatsField::kSpectral, INT_MAX);
    expectNumbered("nm99999999999999999999", TCgatsField::kSpectral, INT_MAX);
    expectUnknown("nm-99999999999999999999");
}

TEST(fieldClassification, spectralNmWithoutNumber_isTheStandardField) {
    expectStandard("SPECTRAL_NM", 14);
    expectStandard("spectral_nm", 14);
    expectStandard("SPECTRAL_PCT", 15);
    expectStandard("SPECTRAL_DEC", 16);
}

// ---- Standard fields (each of them is tested with the vocabulary)

TEST(fieldClassification, sampleIdInLowerCase_isTheStandardField) {
    const Match field = match("sample_id");
    EXPECT_EQ(field.result, 0);
    EXPECT_EQ(field.kind, TCgatsField::kStandard);
    EXPECT_EQ(field.number, 0);
    EXPECT_EQ(field.dataType, TCgatsField::kString);
    EXPECT_EQ(field.canonicalName, "SAMPLE_ID");
}

TEST(fieldClassification, luminanceOfXyy_isSpelledWithG) {
    expectStandard("XYY_GAPY", 22);
    expectUnknown("XYY_CAPY");
    EXPECT_EQ(match("XYY_CAPY", "KEYWORD XYY_CAPY\n").kind, TCgatsField::kCustom);
}

// ---- Aliases of the sample name

TEST(fieldClassification, aliases_becomeCustomStringFields) {
    for (const char* name : {"SampleID", "SAMPLE_NAME", "SampleName", "sampleid", "SAMPLEID", "sample_name",
                             "SAMPLENAME", "Sample_Name"}) {
        Reading reading("KEYWORD LOT\n");
        const Match field(reading.document, name);
        EXPECT_EQ(field.result, 1) << name;
        EXPECT_EQ(field.kind, TCgatsField::kCustom) << name;
        EXPECT_EQ(field.number, 0) << name;
        EXPECT_EQ(field.dataType, TCgatsField::kString) << name;
        EXPECT_EQ(field.canonicalName, name);
        ASSERT_EQ(reading.document.GetNrCustomFields(), 2) << name;
        EXPECT_STREQ(reading.document.GetCustomField(1), name);
    }
}

TEST(fieldClassification, alias_isDeclaredOncePerDocument) {
    TCgats document;
    EXPECT_EQ(Match(document, "SampleName").result, 0);
    EXPECT_EQ(Match(document, "SampleName").result, 0);
    const Match otherCase(document, "SAMPLENAME");
    EXPECT_EQ(otherCase.result, 0);
    EXPECT_EQ(otherCase.canonicalName, "SampleName");
    EXPECT_EQ(document.GetNrCustomFields(), 1);
}

TEST(fieldClassification, alias_isDeclaredAnewInEachDocument) {
    for (int i = 0; i < 2; ++i) {
        TCgats document;
        EXPECT_EQ(Match(document, "SampleName").result, 0);
        EXPECT_EQ(document.GetNrCustomFields(), 1);
    }
}

TEST(fieldClassification, differentAliases_areDifferentFields) {
    TCgats document;
    EXPECT_EQ(Match(document, "SAMPLE_NAME").result, 0);
    EXPECT_EQ(Match(document, "SampleName").result, 1);
    EXPECT_EQ(Match(document, "SampleID").result, 2);
    EXPECT_EQ(document.GetNrCustomFields(), 3);
}

TEST(fieldClassification, sampleId_isNoAlias) {
    TCgats document;
    EXPECT_EQ(Match(document, "SAMPLE_ID").kind, TCgatsField::kStandard);
    EXPECT_EQ(document.GetNrCustomFields(), 0);
}

TEST(fieldClassification, aliases_areWholeNames) {
    for (const char* name : {"SampleIDs", "SampleI", "SAMPLE_NAMES", "Sample-ID", "SampleI D"})
        expectUnknown(name);
}

// ---- n-colour columns

TEST(fieldClassification, nColor_givesItsNumberFromZero) {
    expectNumbered("6CLR_2", TCgatsField::kNColor, 1);
    expectNumbered("6CLR_1", TCgatsField::kNColor, 0);
    expectNumbered("15CLR_12", TCgatsField::kNColor, 11);
    expectNumbered("4CLR_9", TCgatsField::kNColor, 8);
}

TEST(fieldClassification, nColorZero_isAcceptedAsMinusOne) {
    expectNumbered("6CLR_0", TCgatsField::kNColor, -1);
}

TEST(fieldClassification, nColor_isScannedAsAPrefix) {
    expectNumbered("6CLR_2x", TCgatsField::kNColor, 1);
    expectNumbered("+6CLR_+2", TCgatsField::kNColor, 1);
    expectNumbered("-6CLR_2", TCgatsField::kNColor, 1);
    expectNumbered("0CLR_2", TCgatsField::kNColor, 1);
}

TEST(fieldClassification, nColor_needsBothNumbersAndItsCase) {
    for (const char* name : {"CLR_2", "6CLR_", "6CLR_x", "6CLR", "6CLR2", "6clr_2", "6Clr_2", "xCLR_2",
                             "6 CLR_2", "6CLR_-1", "6CLR_-2"})
        expectUnknown(name);
}

// ---- Spot columns

TEST(fieldClassification, spot_givesItsNumberFromZero) {
    expectNumbered("SPOT_1", TCgatsField::kSpotColor, 0);
    expectNumbered("SPOT_27", TCgatsField::kSpotColor, 26);
}

TEST(fieldClassification, spotZero_isAcceptedAsMinusOne) {
    expectNumbered("SPOT_0", TCgatsField::kSpotColor, -1);
}

TEST(fieldClassification, spot_isScannedAsAPrefix) {
    expectNumbered("SPOT_1x", TCgatsField::kSpotColor, 0);
    expectNumbered("SPOT_+2", TCgatsField::kSpotColor, 1);
}

TEST(fieldClassification, spot_needsANumberAndItsCase) {
    for (const char* name : {"SPOT_", "SPOT", "SPOT1", "SPOT_x", "spot_1", "Spot_1", "SPOT_-1", "SPOT_ID"})
        expectUnknown(name);
}

// ---- Custom process colours

TEST(fieldClassification, processColor_carriesTheNumberOfTagsSoFar) {
    expectNumbered("PC2_1", TCgatsField::kProcessColor, 0, "PROCESSCOLOR_ID a\nPROCESSCOLOR_ID b\n");
    expectNumbered("PC2_7", TCgatsField::kProcessColor, 6, "PROCESSCOLOR_ID a\nPROCESSCOLOR_ID b\n");
    expectNumbered("PC1_2", TCgatsField::kProcessColor, 1, "PROCESSCOLOR_ID a\n");
    expectNumbered("PC0_1", TCgatsField::kProcessColor, 0);
    expectNumbered("PC12_1", TCgatsField::kProcessColor, 0, repeated("PROCESSCOLOR_ID a\n", 12));
}

TEST(fieldClassification, processColorOfAnotherNumberOfTags_isUnknown) {
    const std::string two = "PROCESSCOLOR_ID a\nPROCESSCOLOR_ID b\n";
    for (const char* name : {"PC3_1", "PC1_1", "PC0_1", "PC22_1", "PC02_1", "PC+2_1", "PC_1"})
        expectUnknown(name, two);
    expectUnknown("PC1_1");
}

TEST(fieldClassification, spotTags_doNotCountForProcessColors) {
    expectNumbered("PC1_1", TCgatsField::kProcessColor, 0, "SPOT_ID a\nPROCESSCOLOR_ID b\nSPOT_ID c\n");
}

TEST(fieldClassification, tagsBehindTheDataFormat_comeTooLate) {
    EXPECT_EQ(Reading(formatText("PC1_1") + "PROCESSCOLOR_ID a\n").code, 11);
    EXPECT_EQ(Reading("PROCESSCOLOR_ID a\n" + formatText("PC1_1") + "PROCESSCOLOR_ID a\n").code, 0);
}

TEST(fieldClassification, processColorZero_isAcceptedAsMinusOne) {
    expectNumbered("PC1_0", TCgatsField::kProcessColor, -1, "PROCESSCOLOR_ID a\n");
}

TEST(fieldClassification, processColor_isScannedAsAPrefix) {
    expectNumbered("PC0_3x", TCgatsField::kProcessColor, 2);
}

TEST(fieldClassification, processColor_needsANumberAndItsCase) {
    for (const char* name : {"PC0_", "PC0", "PC0_x", "PC0_-1", "pc0_1", "Pc0_1", "PC01"})
        expectUnknown(name);
}

// ---- White space, which a scan skips before a number and nowhere else

TEST(fieldClassification, whiteSpaceBeforeANumber_isSkipped) {
    expectNumbered("nm 380", TCgatsField::kSpectral, 380);
    expectNumbered("SPECTRAL_\v\f380", TCgatsField::kSpectral, 380);
    expectNumbered("SPOT_\t2", TCgatsField::kSpotColor, 1);
    expectNumbered("PC0_ 3", TCgatsField::kProcessColor, 2);
    expectNumbered(" 6CLR_\n2", TCgatsField::kNColor, 1);
}

TEST(fieldClassification, whiteSpaceBeforeALetter_isNot) {
    for (const char* name : {" nm380", "SPOT _2", " SPOT_2", "PC 0_3", "6 CLR_2", "nm- 5"})
        expectUnknown(name);
}

// ---- Nothing

TEST(fieldClassification, otherNames_areUnknown) {
    for (const char* name :
         {"", " ", "FOO", "LAB", "LAB_", "LAB-L", " LAB_L", "\"LAB_L\"", "XYZ", "CMYK", "CMYK_O"})
        expectUnknown(name);
}

TEST(fieldClassification, unknownName_leavesTheNameAsGivenAndTheRestUntouched) {
    const Match field = match("lot 5");
    EXPECT_EQ(field.result, -1);
    EXPECT_EQ(field.canonicalName, "lot 5");
    EXPECT_EQ(field.kind, -9);
    EXPECT_EQ(field.number, -9);
    EXPECT_EQ(field.dataType, -9);
}

TEST(fieldClassification, absentArguments_giveMinusOne) {
    TCgats document;
    int kind = 0;
    int number = 0;
    int dataType = 0;
    std::string canonicalName;
    EXPECT_EQ(document.MatchField(nullptr, &kind, &number, &dataType, &canonicalName), -1);
    EXPECT_EQ(document.MatchField("SampleID", nullptr, &number, &dataType, &canonicalName), -1);
    EXPECT_EQ(document.MatchField("SampleID", &kind, nullptr, &dataType, &canonicalName), -1);
    EXPECT_EQ(document.MatchField("SampleID", &kind, &number, nullptr, &canonicalName), -1);
    EXPECT_EQ(document.MatchField("SampleID", &kind, &number, &dataType, nullptr), -1);
    EXPECT_EQ(document.GetNrCustomFields(), 0);
}

// ---- Headers

using Columns = std::vector<int>;

// A header of named columns, summarised.
struct Summary {
    explicit Summary(const std::string& names, const std::string& before = "")
        : reading(before + formatText(names)) {
        EXPECT_EQ(reading.code, 0) << names;
        header = reading.document.GetTmpHeader();
        result = header->Classify();
    }

    Columns colors() const { return columnList(header->GetColorColumns(), header->GetNrColors()); }
    Columns spots() const { return columnList(header->GetSpotColumns(), header->GetNrSpots()); }
    Columns spectra() const { return columnList(header->GetSpectralColumns(), header->GetNrWaveLengths()); }

    Reading reading;
    TCgatsTableHeader* header = nullptr;
    int result = -9;
};

void expectInconsistent(const std::string& names) {
    const Summary summary(names);
    EXPECT_EQ(summary.result, 7) << names;
    EXPECT_FALSE(summary.header->IsClassified()) << names;
}

void expectNoColors(const std::string& names) {
    const Summary summary(names);
    EXPECT_EQ(summary.result, 0) << names;
    EXPECT_TRUE(summary.header->IsClassified()) << names;
    EXPECT_EQ(summary.header->GetColorKind(), -1) << names;
    EXPECT_EQ(summary.header->GetNrColors(), 0) << names;
    EXPECT_EQ(summary.header->GetColorColumns(), nullptr) << names;
}

void expectColors(const std::string& names, int kind, const Columns& columns) {
    const Summary summary(names);
    EXPECT_EQ(summary.result, 0) << names;
    EXPECT_TRUE(summary.header->IsClassified()) << names;
    EXPECT_EQ(summary.header->GetColorKind(), kind) << names;
    EXPECT_EQ(summary.header->GetNrColors(), static_cast<int>(columns.size())) << names;
    EXPECT_EQ(summary.colors(), columns) << names;
}

TEST(headerClassification, headerWithoutFields_isClassified) {
    TCgatsTableHeader header;
    EXPECT_EQ(header.Classify(), 0);
    EXPECT_TRUE(header.IsClassified());
    EXPECT_EQ(header.GetColorKind(), -1);
}

TEST(headerClassification, emptySlot_fails) {
    TCgatsTableHeader header(2);
    EXPECT_EQ(header.Classify(), 7);
    header.FillNextSlot(new TCgatsField(2, "LAB_L", 0, 0, 23));
    EXPECT_EQ(header.Classify(), 7);
    EXPECT_FALSE(header.IsClassified());
    header.FillNextSlot(new TCgatsField(2, "LAB_A", 0, 0, 24));
    EXPECT_EQ(header.Classify(), 0);
    EXPECT_TRUE(header.IsClassified());
}

TEST(headerClassification, plainColumns_haveNoClass) {
    const Summary summary(
        "SAMPLE_ID STRING D_RED RGB_R RGB_G RGB_B XYY_X LAB_C SPECTRAL_NM SPECTRAL_PCT STDEV_X");
    EXPECT_EQ(summary.result, 0);
    EXPECT_EQ(summary.header->GetColorKind(), -1);
    EXPECT_EQ(summary.header->GetNrColors(), 0);
    EXPECT_EQ(summary.header->GetNrSpots(), 0);
    EXPECT_EQ(summary.header->GetNrWaveLengths(), 0);
    EXPECT_EQ(summary.header->GetSampleNameColumn(), -1);
    EXPECT_EQ(summary.header->GetColorColumns(), nullptr);
    EXPECT_EQ(summary.header->GetSpotColumns(), nullptr);
    EXPECT_EQ(summary.header->GetSpectralColumns(), nullptr);
    EXPECT_EQ(summary.header->GetLabColumns(), nullptr);
    EXPECT_EQ(summary.header->GetXyzColumns(), nullptr);
}

// ---- CMYK

TEST(headerClassification, fourCmykColumns_areKindZero) {
    expectColors("CMYK_C CMYK_M CMYK_Y CMYK_K", 0, {0, 1, 2, 3});
    expectColors("CMYK_K SAMPLE_ID CMYK_Y CMYK_M LAB_L CMYK_C", 0, {5, 3, 2, 0});
}

TEST(headerClassification, threeCmykColumns_areNoKind) {
    expectNoColors("CMYK_C CMYK_M CMYK_Y");
    expectNoColors("CMYK_K");
}

TEST(headerClassification, cmykChannelTwiceAmongFour_isNoKind) {
    expectNoColors("CMYK_C CMYK_C CMYK_Y CMYK_K");
    expectNoColors("CMYK_C CMYK_M CMYK_Y CMYK_Y");
}

TEST(headerClassification, cmykChannelTwiceAmongFour_doesNotFallBack) {
    expectNoColors("CMYK_C CMYK_C CMYK_Y CMYK_K PC0_1 PC0_2");
    expectNoColors("CMYK_C CMYK_C CMYK_Y CMYK_K 5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5");
}

TEST(headerClassification, fiveCmykColumns_areNoKind) {
    expectNoColors("CMYK_C CMYK_M CMYK_Y CMYK_K CMYK_C");
}

TEST(headerClassification, threeOrFiveCmykColumns_fallBack) {
    expectColors("CMYK_C CMYK_M CMYK_Y CMYK_K CMYK_C PC0_1", 1, {5});
    expectColors("CMYK_C CMYK_M CMYK_Y PC0_1", 1, {3});
    expectColors("CMYK_C 5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5", 2, {1, 2, 3, 4, 5});
}

TEST(headerClassification, cmyk_winsOverOtherKinds) {
    expectColors("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5 PC0_1 CMYK_C CMYK_M CMYK_Y CMYK_K", 0, {6, 7, 8, 9});
}

TEST(headerClassification, whereCmykApplies_processNumbersAreNotLookedAt) {
    expectColors("CMYK_C CMYK_M CMYK_Y CMYK_K PC0_9", 0, {0, 1, 2, 3});
    expectNoColors("CMYK_C CMYK_C CMYK_Y CMYK_K PC0_9");
}

// ---- n-colour

TEST(headerClassification, completeNColor_isKindTwo) {
    expectColors("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5", 2, {0, 1, 2, 3, 4});
    expectColors("6CLR_6 6CLR_5 LAB_L 6CLR_4 6CLR_3 6CLR_2 6CLR_1", 2, {6, 5, 4, 3, 1, 0});
}

TEST(headerClassification, twelveColors_areKindTwo) {
    std::string names;
    Columns columns;
    for (int i = 1; i <= 12; ++i) {
        names += "12CLR_" + std::to_string(i) + " ";
        columns.push_back(i - 1);
    }
    expectColors(names, 2, columns);
}

TEST(headerClassification, nColorBelowFive_fails) {
    expectInconsistent("4CLR_1 4CLR_2 4CLR_3 4CLR_4");
    expectInconsistent("1CLR_1");
    expectInconsistent("0CLR_1");
    expectInconsistent("-6CLR_1");
}

TEST(headerClassification, nColorBelowFive_failsBesideCmykToo) {
    expectInconsistent("CMYK_C CMYK_M CMYK_Y CMYK_K 4CLR_1");
}

TEST(headerClassification, firstNColorColumn_fixesTheCount) {
    expectColors("5CLR_1 4CLR_2 9CLR_3 5CLR_4 5CLR_5", 2, {0, 1, 2, 3, 4});
    expectInconsistent("4CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5");
}

TEST(headerClassification, incompleteNColor_isNoKind) {
    expectNoColors("6CLR_1 6CLR_2 6CLR_3 6CLR_4 6CLR_5");
    expectNoColors("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5 5CLR_1");
}

TEST(headerClassification, incompleteNColor_fallsBack) {
    expectColors("6CLR_1 6CLR_2 6CLR_3 6CLR_4 6CLR_5 PC0_1", 1, {5});
    expectColors("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5 5CLR_1 PC0_2 PC0_1", 1, {7, 6});
}

TEST(headerClassification, nColorChannelTwice_isNoKindAndDoesNotFallBack) {
    expectNoColors("5CLR_1 5CLR_1 5CLR_3 5CLR_4 5CLR_5");
    expectNoColors("5CLR_1 5CLR_1 5CLR_3 5CLR_4 5CLR_5 PC0_1");
    expectNoColors("5CLR_1 5CLR_1 5CLR_3 5CLR_4 5CLR_5 PC0_9");
}

TEST(headerClassification, nColorNumberOutsideItsChannels_isCountedAndPlacedNowhere) {
    expectNoColors("5CLR_0 5CLR_1 5CLR_2 5CLR_3 5CLR_4");
    expectNoColors("5CLR_2 5CLR_3 5CLR_4 5CLR_5 5CLR_6");
    expectNoColors("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_2147483647");
    // Six are counted, so that the count is not N although all five channels are there.
    expectNoColors("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5 5CLR_6");
}

TEST(headerClassification, nColor_winsOverProcessColors) {
    expectColors("PC0_1 5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5 PC0_9", 2, {1, 2, 3, 4, 5});
}

TEST(headerClassification, hugeNColorCount_isAnsweredAtOnce) {
    for (const char* name : {"2000000000CLR_1", "2147483647CLR_2147483647", "99999999999CLR_99999999999"}) {
        const std::int64_t before = addressSpacePages();
        const Stopwatch watch;
        expectNoColors(name);
        EXPECT_LT(watch.seconds(), 0.1);
        EXPECT_LT(addressSpacePages() - before, kManyPages);
    }
}

// ---- Custom process colours

TEST(headerClassification, processColors_areKindOne) {
    expectColors("PC0_1", 1, {0});
    expectColors("PC0_3 LAB_L PC0_1 PC0_2", 1, {2, 3, 0});
}

TEST(headerClassification, processColorNumberOutsideTheirCount_fails) {
    expectInconsistent("PC0_2");
    expectInconsistent("PC0_0");
    expectInconsistent("PC0_1 PC0_2 PC0_4");
    expectInconsistent("PC0_1 PC0_2147483647");
}

TEST(headerClassification, processColorTwice_leavesASlotWithoutColumn) {
    expectColors("PC0_1 PC0_1", 1, {1, -1});
    expectColors("PC0_3 PC0_1 PC0_3", 1, {1, -1, 2});
}

// ---- Spots

TEST(headerClassification, spots_areOrderedByNumber) {
    const Summary summary("SPOT_3 LAB_L SPOT_1 SPOT_2");
    EXPECT_EQ(summary.result, 0);
    EXPECT_EQ(summary.header->GetNrSpots(), 3);
    EXPECT_EQ(summary.spots(), (Columns{2, 3, 0}));
    EXPECT_EQ(summary.header->GetColorKind(), -1);
}

TEST(headerClassification, spotNumberOutsideTheirCount_fails) {
    expectInconsistent("SPOT_2");
    expectInconsistent("SPOT_0");
    expectInconsistent("SPOT_1 SPOT_3");
    expectInconsistent("SPOT_1 SPOT_2147483647");
    expectInconsistent("CMYK_C CMYK_M CMYK_Y CMYK_K SPOT_2");
}

TEST(headerClassification, spotTwice_leavesASlotWithoutColumn) {
    const Summary summary("SPOT_1 SPOT_1");
    EXPECT_EQ(summary.result, 0);
    EXPECT_EQ(summary.spots(), (Columns{1, -1}));
}

TEST(headerClassification, spots_standBesideAnyColorKind) {
    const Summary summary("SPOT_1 CMYK_C CMYK_M CMYK_Y CMYK_K SPOT_2");
    EXPECT_EQ(summary.header->GetColorKind(), 0);
    EXPECT_EQ(summary.colors(), (Columns{1, 2, 3, 4}));
    EXPECT_EQ(summary.spots(), (Columns{0, 5}));
}

// ---- Spectra

TEST(headerClassification, spectra_areOrderedByWavelength) {
    const Summary summary("nm420 LAB_L nm400 nm410 nm0");
    EXPECT_EQ(summary.result, 0);
    EXPECT_EQ(summary.header->GetNrWaveLengths(), 4);
    EXPECT_EQ(summary.spectra(), (Columns{4, 2, 3, 0}));
}

TEST(headerClassification, equalWavelengths_keepColumnOrder) {
    const Summary summary("nm400 nm390 SPECTRAL_400 NM_390 SPECTRAL_NM_400 nm380");
    EXPECT_EQ(summary.spectra(), (Columns{5, 1, 3, 0, 2, 4}));
}

TEST(headerClassification, manyEqualWavelengths_keepColumnOrder) {
    std::string names;
    Columns expected;
    for (int i = 0; i < 100; ++i)
        names += i % 2 == 0 ? "nm500 " : "nm400 ";
    for (const int first : {1, 0})
        for (int i = first; i < 100; i += 2)
            expected.push_back(i);
    EXPECT_EQ(Summary(names).spectra(), expected);
}

TEST(headerClassification, negativeWavelength_fails) {
    TCgatsTableHeader header;
    header.Append(new TCgatsField(2, "nm400", 400, TCgatsField::kSpectral, 0));
    header.Append(new TCgatsField(2, "nm-1", -1, TCgatsField::kSpectral, 0));
    EXPECT_EQ(header.Classify(), 7);
    EXPECT_FALSE(header.IsClassified());
}

// ---- CIELAB and XYZ

TEST(headerClassification, lab_needsAllThree) {
    const Summary complete("LAB_B LAB_A SAMPLE_ID LAB_L");
    EXPECT_EQ(columnList(complete.header->GetLabColumns(), 3), (Columns{3, 1, 0}));
    EXPECT_EQ(complete.header->GetXyzColumns(), nullptr);
    for (const char* names :
         {"LAB_L LAB_A", "LAB_A LAB_B", "LAB_L LAB_B", "LAB_L LAB_L LAB_L", "LAB_L LAB_A LAB_C"})
        EXPECT_EQ(Summary(names).header->GetLabColumns(), nullptr) << names;
}

TEST(headerClassification, xyz_needsAllThree) {
    const Summary complete("XYZ_Z XYZ_X SAMPLE_ID XYZ_Y");
    EXPECT_EQ(columnList(complete.header->GetXyzColumns(), 3), (Columns{1, 3, 0}));
    EXPECT_EQ(complete.header->GetLabColumns(), nullptr);
    for (const char* names :
         {"XYZ_X XYZ_Y", "XYZ_Y XYZ_Z", "XYZ_X XYZ_Z", "XYZ_X XYZ_X XYZ_X", "XYZ_X XYZ_Y XYY_X"})
        EXPECT_EQ(Summary(names).header->GetXyzColumns(), nullptr) << names;
}

TEST(headerClassification, ofSeveralLabOrXyzColumns_theLastCounts) {
    EXPECT_EQ(columnList(Summary("LAB_L LAB_A LAB_B LAB_L").header->GetLabColumns(), 3), (Columns{3, 1, 2}));
    EXPECT_EQ(columnList(Summary("XYZ_X XYZ_X XYZ_Y XYZ_Z").header->GetXyzColumns(), 3), (Columns{1, 2, 3}));
}

// ---- Sample names

TEST(headerClassification, columnNamedSampleID_holdsTheSampleNames) {
    EXPECT_EQ(Summary("LAB_L SampleID").header->GetSampleNameColumn(), 1);
}

TEST(headerClassification, otherAliases_doNot) {
    for (const char* name : {"SampleName", "SAMPLE_NAME", "sampleid", "SAMPLEID", "SAMPLE_ID"})
        EXPECT_EQ(Summary(name).header->GetSampleNameColumn(), -1) << name;
}

TEST(headerClassification, sampleName_followsTheDeclaredSpelling) {
    EXPECT_EQ(Summary("sampleid", "KEYWORD SampleID\n").header->GetSampleNameColumn(), 0);
    EXPECT_EQ(Summary("SampleID", "KEYWORD sampleid\n").header->GetSampleNameColumn(), -1);
}

TEST(headerClassification, ofSeveralSampleIDs_theLastCounts) {
    EXPECT_EQ(Summary("SampleID LAB_L SampleID LAB_A").header->GetSampleNameColumn(), 2);
}

TEST(headerClassification, onlyACustomField_holdsTheSampleNames) {
    TCgatsTableHeader header;
    header.Append(new TCgatsField(0, "SampleID", 0, TCgatsField::kStandard, 1));
    EXPECT_EQ(header.Classify(), 0);
    EXPECT_EQ(header.GetSampleNameColumn(), -1);
}

// ---- Again

TEST(headerClassification, newColumn_makesItOutOfDate) {
    TCgatsTableHeader header;
    header.Append(new TCgatsField(2, "SPOT_1", 0, TCgatsField::kSpotColor, 0));
    ASSERT_EQ(header.Classify(), 0);
    header.Append(new TCgatsField(2, "SPOT_2", 1, TCgatsField::kSpotColor, 0));
    EXPECT_FALSE(header.IsClassified());
    EXPECT_EQ(header.Classify(), 0);
    EXPECT_TRUE(header.IsClassified());
    EXPECT_EQ(columnList(header.GetSpotColumns(), header.GetNrSpots()), (Columns{0, 1}));
}

TEST(headerClassification, repeated_givesTheSame) {
    const Summary summary("CMYK_C CMYK_M CMYK_Y CMYK_K SPOT_1 nm400 nm390 LAB_L LAB_A LAB_B SampleID");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(summary.header->Classify(), 0);
        EXPECT_EQ(summary.colors(), (Columns{0, 1, 2, 3}));
        EXPECT_EQ(summary.spots(), Columns{4});
        EXPECT_EQ(summary.spectra(), (Columns{6, 5}));
        EXPECT_EQ(columnList(summary.header->GetLabColumns(), 3), (Columns{7, 8, 9}));
        EXPECT_EQ(summary.header->GetSampleNameColumn(), 10);
    }
}

TEST(headerClassification, failure_clearsAnEarlierColorKind) {
    TCgatsTableHeader header;
    header.Append(new TCgatsField(2, "PC0_1", 0, TCgatsField::kProcessColor, 0));
    ASSERT_EQ(header.Classify(), 0);
    ASSERT_EQ(header.GetColorKind(), 1);
    header.Append(new TCgatsField(2, "PC0_9", 8, TCgatsField::kProcessColor, 0));
    EXPECT_EQ(header.Classify(), 7);
    EXPECT_FALSE(header.IsClassified());
    EXPECT_EQ(header.GetColorColumns(), nullptr);
}

} // namespace
} // namespace qxcms::tests
