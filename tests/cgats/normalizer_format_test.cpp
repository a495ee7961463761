// What the normaliser makes of data formats: counts, names that are not known, spectral columns, sections.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/cgats/normalized.h"
#include "tests/cgats/read_document.h"

namespace qxcms::tests {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;

const std::string kSpectralNames = "SAMPLE_ID\tSPECTRAL_380\tSPECTRAL_390\tSPECTRAL_400\tSPECTRAL_410";

TEST(normalizerFormat, wrongNumberOfFields_isCounted) {
    const std::string text = dialect("field-count-wrong.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{3, "NUMBER_OF_FIELDS\t4"}}));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kFieldCount, 3, 18, "5"}));
    EXPECT_THAT(normalized.done(0), AllOf(HasSubstr("4"), HasSubstr("5")));
    const ReadDocument document(normalized.text());
    EXPECT_EQ(document.GetNrFields(0), 4);
    EXPECT_EQ(numbersOf(document, 0, 1), (std::vector<double>{95.21, 53.86, 19.47}));
}

TEST(normalizerFormat, missingNumberOfFields_isNoMatter) {
    expectUnchanged(dialect("field-count-missing.txt"));
}

TEST(normalizerFormat, secondTableWithoutAFormat_takesThatOfTheFirst) {
    const Normalized normalized = accepted(dialect("second-table-without-format.txt"));
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kFormatTakenOver}));
    EXPECT_EQ(normalized.liberties()[0].line, 14);
    const ReadDocument document(normalized.text());
    ASSERT_EQ(document.GetNrTables(), 2);
    EXPECT_THAT(namesOf(*document.GetTable(1)->GetHeader()),
                ElementsAre("SAMPLE_ID", "LAB_L", "LAB_A", "LAB_B"));
    EXPECT_EQ(numbersOf(document, 0, 3), (std::vector<double>{2.17, 44.93, -38.55}));
    EXPECT_EQ(numbersOf(document, 1, 1), (std::vector<double>{47.90, 88.34}));
}

TEST(normalizerFormat, firstTableWithoutAFormat_isRefused) {
    const Normalized normalized{"CGATS.17\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1 2\nEND_DATA\n"};
    EXPECT_EQ(normalized.code, 6);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->line, 3);
    EXPECT_EQ(normalized.refusal()->column, 1);
    EXPECT_EQ(normalized.refusal()->token, "BEGIN_DATA");
    EXPECT_FALSE(normalized.refusal()->expected.empty());
}

TEST(normalizerFormat, formatWithoutAnEnd_isRefused) {
    const Normalized normalized{"CGATS.17\nBEGIN_DATA_FORMAT\nLAB_L LAB_A LAB_B\n"};
    EXPECT_EQ(normalized.code, 9);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->code, 9);
    EXPECT_GE(normalized.refusal()->line, 3);
    EXPECT_FALSE(normalized.refusal()->expected.empty());
}

TEST(normalizerFormat, namesThatAreNotKnown_areDeclared) {
    const std::string text = dialect("refused-columns.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(),
              withLines(text, {{3, "KEYWORD \"SAMPLE_LOC\"\nKEYWORD \"INDEX\"\nKEYWORD \"VERTEX_NO\"\n"
                                   "KEYWORD \"RGB_I\"\nKEYWORD \"XYY_CAPY\"\nKEYWORD \"STDEV_DE\"\n"
                                   "KEYWORD \"GLOSS_60\"\nBEGIN_DATA_FORMAT"}}));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kFieldDeclared, 4, 11, "SAMPLE_LOC"},
                                                    Finding{Liberty::kFieldDeclared, 4, 22, "INDEX"},
                                                    Finding{Liberty::kFieldDeclared, 4, 28, "VERTEX_NO"},
                                                    Finding{Liberty::kFieldDeclared, 4, 38, "RGB_I"},
                                                    Finding{Liberty::kFieldDeclared, 4, 44, "XYY_CAPY"},
                                                    Finding{Liberty::kFieldDeclared, 4, 59, "STDEV_DE"},
                                                    Finding{Liberty::kFieldDeclared, 4, 68, "GLOSS_60"}));
    const ReadDocument document(normalized.text());
    EXPECT_EQ(document.GetNrCustomFields(), 7);
    EXPECT_EQ(textsOf(document, 0, 8), (std::vector<std::string>{"12.5", "61.0"}));
    EXPECT_EQ(numbersOf(document, 0, 6), (std::vector<double>{95.21, 53.86}));
}

// Every spelling becomes the same four columns.
void expectSpectral(const std::string& text, int headerLines) {
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{4 + headerLines, kSpectralNames}}));
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kSpectralName}, int{Liberty::kSpectralName},
                                                int{Liberty::kSpectralName}, int{Liberty::kSpectralName}));
    const ReadDocument document(normalized.text());
    EXPECT_THAT(wavelengthsOf(document, 0), ElementsAre(380, 390, 400, 410));
    EXPECT_EQ(numbersOf(document, 0, 1), (std::vector<double>{0.0412, 0.6120}));
    EXPECT_EQ(numbersOf(document, 0, 4), (std::vector<double>{0.1204, 0.7240}));
    EXPECT_FALSE(document.GetTable(0)->IsSpectralPercent());
}

TEST(normalizerFormat, specWithAnUnderscore_isSpectral) {
    expectSpectral(dialect("spectral-spec.txt"), 0);
}

TEST(normalizerFormat, spectralNmWithoutAnUnderscore_isSpectral) {
    expectSpectral(dialect("spectral-nm-joined.txt"), 0);
}

TEST(normalizerFormat, reflectanceWithItsUnit_isSpectral) {
    expectSpectral(dialect("spectral-r-with-unit.txt"), 0);
}

TEST(normalizerFormat, wavelengthWithItsUnit_isSpectral) {
    expectSpectral(dialect("spectral-unit-behind.txt"), 0);
}

TEST(normalizerFormat, bareWavelengthsInARow_areSpectral) {
    expectSpectral(dialect("spectral-bare.txt"), 0);
}

TEST(normalizerFormat, spectralName_isReportedWhereItStands) {
    const Normalized normalized = accepted(dialect("spectral-spec.txt"));
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kSpectralName, 4, 11, "SPEC_380"},
                                                    Finding{Liberty::kSpectralName, 4, 20, "SPEC_390"},
                                                    Finding{Liberty::kSpectralName, 4, 29, "SPEC_400"},
                                                    Finding{Liberty::kSpectralName, 4, 38, "SPEC_410"}));
    EXPECT_THAT(normalized.done(0), HasSubstr("SPECTRAL_380"));
}

TEST(normalizerFormat, declaredColumnsOfAnotherSpelling_areSpectral) {
    const std::string text = dialect("spectral-declared.txt");
    expectSpectral(text, 4);
    EXPECT_EQ(ReadDocument(text).GetNrWaveLengths(0), 0); // read as it stands they are texts
}

TEST(normalizerFormat, declaredColumnsOfAKnownSpelling_loseTheDeclaration) {
    const std::string text = dialect("spectral-standard-declared.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{2, {}}, {3, {}}, {4, {}}, {5, {}}}));
    EXPECT_THAT(normalized.kinds(),
                ElementsAre(int{Liberty::kKeywordDropped}, int{Liberty::kKeywordDropped},
                            int{Liberty::kKeywordDropped}, int{Liberty::kKeywordDropped}));
    EXPECT_EQ(normalized.liberties()[0].line, 2);
    EXPECT_EQ(ReadDocument(normalized.text()).GetNrWaveLengths(0), 4);
}

TEST(normalizerFormat, declarationOfAStandardName_isLeftOut) {
    const std::string text =
        "CGATS.17\nKEYWORD\t\"LAB_L\"\nKEYWORD\t\"LOT\"\n" + tableText("LAB_L LAB_A LAB_B LOT", 1, "1 2 3 x");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{2, {}}}));
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kKeywordDropped}));
    EXPECT_TRUE(ReadDocument(normalized.text()).ContainsLab(0));
}

TEST(normalizerFormat, halfNanometres_areRoundedUp) {
    const std::string text = dialect("spectral-half-nanometres.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(),
              withLines(text, {{4, "SAMPLE_ID\tSPECTRAL_380\tSPECTRAL_383\tSPECTRAL_385\tSPECTRAL_388"}}));
    EXPECT_EQ(normalized.countOf(Liberty::kWavelengthRounded), 2);
    EXPECT_EQ(normalized.countOf(Liberty::kSpectralName), 2);
    EXPECT_THAT(normalized.liberties(),
                testing::IsSupersetOf({Finding{Liberty::kWavelengthRounded, 4, 20, "SPEC_382.5"},
                                       Finding{Liberty::kWavelengthRounded, 4, 40, "SPEC_387.5"}}));
    EXPECT_THAT(wavelengthsOf(ReadDocument(normalized.text()), 0), ElementsAre(380, 383, 385, 388));
}

TEST(normalizerFormat, twoColumnsOfOneWavelength_areRefused) {
    const Normalized normalized{"CGATS.17\n" + tableText("SPEC_382.5 SPEC_383", 1, "0.1 0.2")};
    EXPECT_EQ(normalized.code, 11);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->line, 3);
    EXPECT_FALSE(normalized.refusal()->expected.empty());
}

TEST(normalizerFormat, fewBareNumbers_areNoWavelengths) {
    const Normalized normalized = accepted("CGATS.17\n" + tableText("LAB_L 380 390 400", 1, "1 2 3 4"));
    EXPECT_EQ(normalized.countOf(Liberty::kFieldDeclared), 3);
    EXPECT_EQ(ReadDocument(normalized.text()).GetNrWaveLengths(0), 0);
}

TEST(normalizerFormat, descendingBareNumbers_areNoWavelengths) {
    const Normalized normalized =
        accepted("CGATS.17\n" + tableText("420 410 400 390 380", 1, "0.1 0.2 0.3 0.4 0.5"));
    EXPECT_EQ(ReadDocument(normalized.text()).GetNrWaveLengths(0), 0);
}

TEST(normalizerFormat, declaredKnownName_takesTheOtherSpelling) {
    // "SPECTRAL_400" is declared for something that is not a column here, and cannot be the name of one.
    const Normalized normalized =
        accepted("CGATS.17\nKEYWORD \"SPECTRAL_400\"\n" + tableText("SPEC_400 SPEC_410", 1, "0.1 0.2"));
    EXPECT_THAT(wavelengthsOf(ReadDocument(normalized.text()), 0), ElementsAre(400, 410));
}

TEST(normalizerFormat, pairsInPercent_becomeColumns) {
    const Normalized normalized = accepted(dialect("spectral-pairs-percent.txt"));
    EXPECT_GE(normalized.countOf(Liberty::kSpectralPairs), 1);
    const ReadDocument document(normalized.text());
    EXPECT_EQ(document.GetNrFields(0), 4);
    EXPECT_THAT(wavelengthsOf(document, 0), ElementsAre(400, 410, 420));
    EXPECT_EQ(numbersOf(document, 0, 1), (std::vector<double>{21.5, 61.5}));
    EXPECT_EQ(numbersOf(document, 0, 3), (std::vector<double>{24.25, 64.25}));
    EXPECT_TRUE(document.GetTable(0)->IsSpectralPercent());
}

TEST(normalizerFormat, pairsOfFractions_becomeColumns) {
    const Normalized normalized = accepted(dialect("spectral-pairs-fractions.txt"));
    const ReadDocument document(normalized.text());
    EXPECT_EQ(document.GetNrFields(0), 3);
    EXPECT_THAT(wavelengthsOf(document, 0), ElementsAre(400, 410));
    EXPECT_EQ(numbersOf(document, 0, 2), (std::vector<double>{0.2275, 0.6375}));
    EXPECT_FALSE(document.GetTable(0)->IsSpectralPercent());
}

TEST(normalizerFormat, pairsWhoseWavelengthsDifferFromRowToRow_areNotMadeColumns) {
    const std::string text = tableText("SAMPLE_ID SPECTRAL_NM SPECTRAL_DEC SPECTRAL_NM SPECTRAL_DEC", 2,
                                       "1 400 0.2 410 0.3\n2 400 0.2 420 0.3");
    const Normalized normalized{text};
    if (normalized.code == 0) {
        EXPECT_EQ(normalized.text(), text);
        EXPECT_EQ(ReadDocument(normalized.text()).GetNrWaveLengths(0), 0);
    }
}

TEST(normalizerFormat, textBehindBeginData_getsALineOfItsOwn) {
    const Normalized normalized =
        accepted("CGATS.17\nBEGIN_DATA_FORMAT LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nNUMBER_OF_SETS 2\n"
                 "BEGIN_DATA 1 2 3\n4 5 6\nEND_DATA\n");
    EXPECT_EQ(normalized.countOf(Liberty::kTextBehindKeyword), 2);
    const ReadDocument document(normalized.text());
    EXPECT_EQ(numbersOf(document, 0, 0), (std::vector<double>{1, 4}));
}

TEST(normalizerFormat, namesOnSeveralLines_pass) {
    expectUnchanged("CGATS.17\nNUMBER_OF_FIELDS\t4\nBEGIN_DATA_FORMAT\nSAMPLE_ID\nLAB_L\nLAB_A\nLAB_B\n"
                    "END_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1 2 3 4\nEND_DATA\n");
}

TEST(normalizerFormat, everyKindOfColumn_passes) {
    expectUnchanged("CGATS.17\nPROCESSCOLOR_ID \"Orange\"\nPROCESSCOLOR_ID \"Green\"\nSPOT_ID \"Gold\"\n"
                    "KEYWORD \"LOT\"\n" +
                    tableText("SAMPLE_ID LOT SampleID PC2_1 PC2_2 SPOT_1 LAB_L LAB_A LAB_B nm400 NM_410", 1,
                              "1 a b 10 20 30 40 1 2 0.5 0.6"));
}

// The reader would take it for a column of 380 nm; a KEYWORD line cannot name it as it stands.
TEST(normalizerFormat, quoteInANameLikeASpectralOne_becomesAnApostrophe) {
    const Normalized normalized =
        accepted("CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tnm380)A\"B\nEND_DATA_FORMAT\n"
                 "NUMBER_OF_SETS\t1\nBEGIN_DATA\n1\t2\nEND_DATA\n");
    EXPECT_THAT(normalized.text(), testing::HasSubstr("KEYWORD \"nm380)A'B\"\n"));
    EXPECT_THAT(normalized.text(), testing::HasSubstr("SAMPLE_ID\tnm380)A'B\n"));
}

} // namespace
} // namespace qxcms::tests
