// Texts that could be taken in two ways, or in which one repair meets another one.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/normalized.h"

namespace qxcms::tests {
namespace {

// A table of which the lines are counted: the samples begin on line 7.
std::string table(const std::string& columns, const std::string& sets, const std::string& rows,
                  const std::string& end = "END_DATA\n") {
    return "CGATS.17\nBEGIN_DATA_FORMAT\n" + columns + "\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t" + sets +
           "\nBEGIN_DATA\n" + rows + end;
}

void expectText(const std::string& text, const std::string& expected) {
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), expected);
    EXPECT_FALSE(normalized.liberties().empty());
}

TEST(normalizerDoubts, headerBehindTheDeclaredRows_isNoRow) {
    const std::string first = table("SAMPLE_ID\tLAB_L", "2", "1\t10\n2\t11\n", "");
    expectUnchanged(first +
                    "ORIGINATOR\t\"z\"\nBEGIN_DATA_FORMAT\nSAMPLE_ID\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t1\n"
                    "BEGIN_DATA\nx\nEND_DATA\n");
    expectUnchanged(first + "CGATS.17\nREMARK\t\"a\"\n");
}

TEST(normalizerDoubts, furtherRowsWithoutEndOfData_areCounted) {
    expectText(table("SAMPLE_ID\tLAB_L", "1", "1\t10\n2\t11\n", ""),
               table("SAMPLE_ID\tLAB_L", "2", "1\t10\n2\t11\n"));
}

TEST(normalizerDoubts, commentOfAsManyWordsAsColumns_isNoRow) {
    expectText(
        table("SAMPLE_ID\tLAB_L\tLAB_A\tLAB_B", "2", "1\t10\t20\t30\n# printed on Monday\n2\t11\t21\t31\n"),
        table("SAMPLE_ID\tLAB_L\tLAB_A\tLAB_B", "2", "1\t10\t20\t30\n\n2\t11\t21\t31\n",
              "END_DATA # printed on Monday\n"));
}

TEST(normalizerDoubts, identifiersThatBeginWithANumberSign_areNoComments) {
    expectUnchanged(table("SAMPLE_ID\tLAB_L", "2", "#1\t10\n#2\t11\n"));
    const Normalized normalized{table("SAMPLE_ID\tLAB_L\tLAB_A", "3", "#1\t10\t20\n#2\t11\n#3\t12\t22\n")};
    EXPECT_EQ(normalized.code, 13);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->line, 8);
}

// As many values between blanks as columns, because an empty cell makes up for a blank within a name.
TEST(normalizerDoubts, blankInATextAndAnEmptyCell_doNotShiftTheNumbers) {
    const std::string columns = "SAMPLE_ID\tSAMPLE_NAME\tLAB_L\tLAB_A\tLAB_B\tSTRING";
    expectText(
        table(columns, "2", "1\tDark Blue\t10\t20\t30\t\n2\tLight Red\t11\t21\t31\t\n"),
        table(columns, "2", "1\t\"Dark Blue\"\t10\t20\t30\t\"\"\n2\t\"Light Red\"\t11\t21\t31\t\"\"\n"));
}

TEST(normalizerDoubts, emptyTextAtTheEndOfARow_isKept) {
    const std::string columns = "SAMPLE_ID\tSAMPLE_NAME\tLAB_L\tSTRING";
    const std::string first = "1\tDark Blue\t10\tok\n";
    const std::string firstQuoted = "1\t\"Dark Blue\"\t10\tok\n";
    expectText(table(columns, "2", first + "2\tRed\t11\t\n"),
               table(columns, "2", firstQuoted + "2\tRed\t11\t\"\"\n"));
    expectText(table(columns, "2", first + "2\tRed\t11\n"),
               table(columns, "2", firstQuoted + "2\tRed\t11\t\"\"\n"));
}

TEST(normalizerDoubts, missingNumberAtTheEndOfARow_isRefused) {
    const Normalized normalized{table("SAMPLE_ID\tSAMPLE_NAME\tLAB_L", "2", "1\tDark Blue\t10\n2\tRed\n")};
    EXPECT_EQ(normalized.code, 13);
}

TEST(normalizerDoubts, spectralNamesWithBlanks_areSpectra) {
    for (const std::string names : {"380 nm\t390 nm\t400 nm\t410 nm", "nm 380\tnm 390\tnm 400\tnm 410"})
        expectText(table("SAMPLE_ID\t" + names, "1", "a b\t0.1\t0.2\t0.3\t0.4\n"),
                   table("SAMPLE_ID\tSPECTRAL_380\tSPECTRAL_390\tSPECTRAL_400\tSPECTRAL_410", "1",
                         "\"a b\"\t0.1\t0.2\t0.3\t0.4\n"));
}

TEST(normalizerDoubts, deviationNextToASpectralColumn_isNoSpectrum) {
    const Normalized normalized{table("SAMPLE_ID\tnm380\tnm380_SD", "1", "a\t0.5\t0.01\n")};
    EXPECT_EQ(normalized.code, 0);
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer(normalized.text().c_str()), 0);
    EXPECT_EQ(document.GetNrWaveLengths(0), 1);
    EXPECT_EQ(document.GetCustomField(0), std::string("nm380_SD"));
}

TEST(normalizerDoubts, pairsOfASecondTableWithoutFormat_areColumnsToo) {
    const std::string first = table("SAMPLE_ID\tSPECTRAL_NM\tSPECTRAL_PCT\tSPECTRAL_NM\tSPECTRAL_PCT", "1",
                                    "1\t400\t50\t410\t60\n");
    expectText(
        first + "NUMBER_OF_SETS\t1\nBEGIN_DATA\n2\t400\t55\t410\t65\nEND_DATA\n",
        table("SAMPLE_ID\tSPECTRAL_400\tSPECTRAL_410", "1", "1\t50\t60\n") +
            "NUMBER_OF_SETS\t1\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tSPECTRAL_400\tSPECTRAL_410\nEND_DATA_FORMAT\n"
            "BEGIN_DATA\n2\t55\t65\nEND_DATA\n");
}

TEST(normalizerDoubts, darkSpectraThatAreNamedPercent_areDivided) {
    expectText(table("SAMPLE_ID\tSPECTRAL_NM\tSPECTRAL_PCT", "1", "1\t400\t0.50\n"),
               table("SAMPLE_ID\tSPECTRAL_400", "1", "1\t0.0050\n"));
}

TEST(normalizerDoubts, scaleOfNumbersThatAreMendedFirst_isSeen) {
    std::string rows;
    std::string expected;
    for (int i = 1; i <= 6; ++i) {
        rows += std::to_string(i) + (i < 6 ? "\t\"1,5\"\n" : "\t\"80,5\"\n");
        expected += std::to_string(i) + (i < 6 ? "\t0.015\n" : "\t0.805\n");
    }
    expectText(table("SAMPLE_ID\tnm400", "6", rows), table("SAMPLE_ID\tnm400", "6", expected));
}

TEST(normalizerDoubts, normBeyondEveryNumber_isLeftAlone) {
    expectUnchanged("SPECTRAL_NORM\t\"1e999\"\n" + table("SAMPLE_ID\tnm380", "1", "a\t0.5\n"));
}

TEST(normalizerDoubts, commentForALineThatIsBroken_standsBehindTheKeyword) {
    expectText("BEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L\nEND_DATA_FORMAT\nNUMBER_OF_SETS 2\n# one\nBEGIN_DATA 1 "
               "10\n2 20\n"
               "END_DATA\n",
               "BEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L\nEND_DATA_FORMAT\nNUMBER_OF_SETS 2\nBEGIN_DATA # one \n1 "
               "10\n2 20\n"
               "END_DATA\n");
}

TEST(normalizerDoubts, fieldCountOfATableWithoutFormat_isCorrected) {
    const Normalized normalized{table("SAMPLE_ID\tLAB_L", "1", "1\t10\n") +
                                "NUMBER_OF_FIELDS\t3\nNUMBER_OF_SETS\t1\nBEGIN_DATA\n2\t20\nEND_DATA\n"};
    EXPECT_EQ(normalized.code, 0);
    TCgats document;
    EXPECT_EQ(document.ReadFromBuffer(normalized.text().c_str()), 0);
    EXPECT_EQ(document.GetNrTables(), 2);
}

TEST(normalizerDoubts, tableWithoutFormatThatDoesNotFit_isRefused) {
    const Normalized normalized{table("SAMPLE_ID\tLAB_L", "1", "1\t10\n") +
                                "NUMBER_OF_SETS\t1\nBEGIN_DATA\n2\t20\t30\nEND_DATA\n"};
    EXPECT_EQ(normalized.code, 13);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->line, 11);
}

TEST(normalizerDoubts, longWordsWithQuotes_areCutAndStayReadable) {
    const Normalized normalized{"REMARK\tsay \"" + std::string(5000, 'x') + "\" twice\n"};
    EXPECT_EQ(normalized.code, 0);
    const Normalized again{normalized.text()};
    EXPECT_EQ(again.text(), normalized.text());
    EXPECT_TRUE(again.liberties().empty());
}

TEST(normalizerDoubts, oddByteOfUtf16_isTold) {
    std::string bytes = "\xFF\xFE";
    for (const char c : table("SAMPLE_ID\tLAB_L", "1", "1\t10\n"))
        bytes += {c, '\0'};
    TCgatsNormalizer normalizer;
    EXPECT_EQ(normalizer.Normalize(bytes + 'x'), 0);
    ASSERT_EQ(normalizer.GetNrLiberties(), 1);
    EXPECT_THAT(normalizer.GetLiberty(0)->done, testing::HasSubstr("odd byte"));
}

TEST(normalizerDoubts, sampleNamedLikeAKeyword_isARow) {
    expectUnchanged(table("SAMPLE_ID\tLAB_L", "3", "KEYWORD\t10\nBEGIN_DATA\t11\nx\t12\n"));
}

TEST(normalizerDoubts, valuesThatAreNoNumbers_stayWhenTheOthersAreScaled) {
    std::string rows;
    std::string expected;
    for (int i = 1; i <= 6; ++i) {
        rows += std::to_string(i) + "\tN/A\t" + (i < 6 ? "2.5\n" : "82.5\n");
        expected += std::to_string(i) + "\tN/A\t" + (i < 6 ? "0.025\n" : "0.825\n");
    }
    expectText(table("SAMPLE_ID\tnm400\tnm410", "6", rows), table("SAMPLE_ID\tnm400\tnm410", "6", expected));
}

TEST(normalizerDoubts, renamedColumnOfAWavelengthThatIsThere_isRefused) {
    for (const std::string names : {"SPEC_380\tSPECTRAL_380", "SPECTRAL_380\tSPEC_380"}) {
        const Normalized normalized{table("SAMPLE_ID\t" + names, "1", "a\t0.1\t0.2\n")};
        EXPECT_EQ(normalized.code, 11) << names;
    }
}

// Many tables, declarations and lines: no pairing of each with each.
TEST(normalizerDoubts, manySmallTables_areTakenInOneGo) {
    std::string text;
    for (int i = 0; i < 2000; ++i)
        text += "PROCESSCOLOR_ID \"a\"\nKEYWORD \"k" + std::to_string(i) + "\"\n";
    text += "BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT\n";
    while (text.size() < 300000)
        text += "# c\nBEGIN_DATA\n1\nEND_DATA\n";
    TCgatsNormalizer normalizer;
    EXPECT_EQ(normalizer.Normalize(text), 0);
    EXPECT_GT(normalizer.GetNrLiberties(), 10000);
}

// The second table would be a comment block to the reader.
TEST(normalizerDoubts, tablesInTwoLetterCases_areBothRead) {
    const std::string first = table("SAMPLE_ID\tLAB_L", "1", "1\t10\n");
    const std::string second = "begin_data_format\nSAMPLE_ID\tLAB_L\nend_data_format\nnumber_of_sets\t2\n"
                               "begin_data\n2\t20\n3\t30\nend_data\n";
    const Normalized normalized = accepted(first + second);
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer(normalized.text().c_str()), 0);
    ASSERT_EQ(document.GetNrTables(), 2);
    EXPECT_EQ(document.GetNrSamples(1), 2);
    EXPECT_EQ(normalized.countOf(Liberty::kKeywordSpelling), 5);
}

TEST(normalizerDoubts, keywordsInQuotes_areKeywordsWhereThereIsNoTableOtherwise) {
    const Normalized normalized =
        accepted("CGATS.17\n\"BEGIN_DATA_FORMAT\"\nSAMPLE_ID\tLAB_L\n\"END_DATA_FORMAT\"\n"
                 "\"NUMBER_OF_SETS\"\t1\n\"BEGIN_DATA\"\n1\t10\n\"END_DATA\"\n");
    EXPECT_EQ(normalized.text(), "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tLAB_L\nEND_DATA_FORMAT\n"
                                 "NUMBER_OF_SETS\t1\nBEGIN_DATA\n1\t10\nEND_DATA\n");
}

TEST(normalizerDoubts, sampleNamedLikeAMarkInQuotes_staysASample) {
    expectUnchanged(table("SAMPLE_ID\tLAB_L", "2", "\"END_DATA\"\t10\n\"BEGIN_DATA\"\t11\n"));
}

// "1,234.50" proves that the comma sets thousands apart, in all of the table.
TEST(normalizerDoubts, groupOfThreeDigits_isThousandsWhereAnotherNumberProvesIt) {
    expectText(table("SAMPLE_ID\tLAB_L\tLAB_A", "2", "1\t1,234.50\t5.5\n2\t1,234\t2,000\n"),
               table("SAMPLE_ID\tLAB_L\tLAB_A", "2", "1\t1234.50\t5.5\n2\t1234\t2000\n"));
    expectText(table("SAMPLE_ID\tLAB_L", "2", "1\t1.234,50\n2\t1.234\n"),
               table("SAMPLE_ID\tLAB_L", "2", "1\t1234.50\n2\t1234\n"));
    expectUnchanged(table("SAMPLE_ID\tLAB_L", "2", "1\t1,234\n2\t12,5\n"));
}

// Blanks prove nothing of the comma.
TEST(normalizerDoubts, thousandsBehindBlanks_leaveCommasDecimal) {
    expectText(table("SAMPLE_ID\tSAMPLE_NAME\tLAB_L", "2", "1\tRed\t1 234,50\n2\tBlue\t1,234\n"),
               table("SAMPLE_ID\tSAMPLE_NAME\tLAB_L", "2", "1\tRed\t1234.50\n2\tBlue\t1,234\n"));
}

TEST(normalizerDoubts, decimalsBehindAProvenThousandsMark_areRefused) {
    const Normalized normalized{table("SAMPLE_ID\tLAB_L", "2", "1\t1,234.50\n2\t12,5\n")};
    EXPECT_EQ(normalized.code, 13);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->line, 8);
    EXPECT_EQ(normalized.refusal()->token, "12,5");
}

TEST(normalizerDoubts, commentsAmongRowsBetweenTabs_areNoRows) {
    const std::string columns = "SAMPLE_ID\tSAMPLE_NAME\tLAB_L";
    const std::string text = table(columns, "2", "# first\n1\tDark Blue\t10\n2\tLight Red\t11 # paper\n");
    expectText(text,
               table(columns, "2", "\n1\t\"Dark Blue\"\t10\n2\t\"Light Red\"\t11 \n", "END_DATA # first\n"));
    EXPECT_EQ(Normalized{text}.countOf(Liberty::kCommentDropped), 1);
    expectText(table(columns, "2", "1\tDark Blue\t10\n2\tLight Red\t11\t# paper\n"),
               table(columns, "2", "1\t\"Dark Blue\"\t10\n2\t\"Light Red\"\t11\t\n", "END_DATA # paper\n"));
}

TEST(normalizerDoubts, quotesInACommentBehindANumber_stayInTheComment) {
    expectText(table("SAMPLE_ID\tSAMPLE_NAME\tLAB_L", "1", "1\tDark Blue\t5 #\"x\" y\n"),
               table("SAMPLE_ID\tSAMPLE_NAME\tLAB_L", "1", "1\t\"Dark Blue\"\t5 \n", "END_DATA #\"x\" y\n"));
}

TEST(normalizerDoubts, numberSignInATextBetweenTabs_isText) {
    expectText(table("SAMPLE_ID\tLAB_L\tSAMPLE_NAME", "1", "1\t10\tBlue #5\n"),
               table("SAMPLE_ID\tLAB_L\tSAMPLE_NAME", "1", "1\t10\t\"Blue #5\"\n"));
}

TEST(normalizerDoubts, tabBeforeTheFirstCellOfEveryRow_isNoCell) {
    const std::string columns = "\tSAMPLE_ID\tSAMPLE_NAME\tLAB_L";
    expectText(table(columns, "2", "\t1\tDark Blue\t10\n\t2\tRed\t11\n"),
               table(columns, "2", "\t1\t\"Dark Blue\"\t10\n\t2\tRed\t11\n"));
    const Normalized normalized{table(columns, "2", "\t1\tDark Blue\t10\n\t2\tLight Red\n")};
    EXPECT_EQ(normalized.code, 13);
}

TEST(normalizerDoubts, wordsBehindAClosingQuote_keepBothQuotesAsApostrophes) {
    expectText(table("SAMPLE_ID\tSAMPLE_NAME\tLAB_L", "1", "1\t\"a\" b c\t10\n"),
               table("SAMPLE_ID\tSAMPLE_NAME\tLAB_L", "1", "1\t\"'a' b c\"\t10\n"));
}

TEST(normalizerDoubts, namesWithCommasOrSemicolonsBetween_areRefused) {
    for (const std::string separator : {",", ";"}) {
        const Normalized normalized{table("SAMPLE_ID" + separator + "LAB_L", "1", "1" + separator + "10\n")};
        EXPECT_EQ(normalized.code, 11);
        ASSERT_NE(normalized.refusal(), nullptr);
        EXPECT_EQ(normalized.refusal()->line, 3);
    }
    EXPECT_EQ(Normalized{table("SAMPLE_ID\tA,B", "1", "1\t10\n")}.code, 0);
}

TEST(normalizerDoubts, wavelengthsWithACommaForThePoint_areWavelengths) {
    expectText(table("SAMPLE_ID\t380,0nm\t390,0nm", "1", "1\t0.1\t0.2\n"),
               table("SAMPLE_ID\tSPECTRAL_380\tSPECTRAL_390", "1", "1\t0.1\t0.2\n"));
    expectText(table("SAMPLE_ID\tSPECTRAL_NM\tSPECTRAL_DEC", "1", "1\t400,0\t0.5\n"),
               table("SAMPLE_ID\tSPECTRAL_400", "1", "1\t0.5\n"));
}

TEST(normalizerDoubts, pairsWhoseWavelengthsDifferFromRowToRow_areRemarked) {
    const Normalized normalized =
        accepted(table("SAMPLE_ID\tSPECTRAL_NM\tSPECTRAL_DEC", "2", "1\t400\t0.5\n2\t410\t0.6\n"));
    EXPECT_THAT(normalized.liberties(), testing::IsEmpty());
    EXPECT_THAT(normalized.remarks(),
                testing::ElementsAre(Finding{Liberty::kSpectralPairs, 3, 11, "SPECTRAL_NM"}));
}

// Eleven samples from white to black; Z of the black is `black`.
std::string smallXyz(const std::string& black) {
    std::string rows;
    for (int i = 0; i < 10; ++i) {
        const std::string value = "0." + std::to_string(85 - 8 * i);
        rows += std::to_string(i + 1) + "\t" + value + "\t" + value + "\t" + value + "\n";
    }
    return rows + "11\t0.01\t0.01\t" + black + "\n";
}

TEST(normalizerDoubts, blackBelowZero_hidesNoScaleOfXyz) {
    const std::string columns = "SAMPLE_ID\tXYZ_X\tXYZ_Y\tXYZ_Z";
    EXPECT_EQ(accepted(table(columns, "11", smallXyz("-0.0002"))).countOf(Liberty::kXyzScale), 1);
    expectUnchanged(table(columns, "11", smallXyz("-0.5")));
}

TEST(normalizerDoubts, scaleOfXyz_isThatOfTheWholeText) {
    const std::string columns = "SAMPLE_ID\tXYZ_X\tXYZ_Y\tXYZ_Z";
    const Normalized normalized = accepted(table(columns, "11", smallXyz("0.01")) +
                                           table(columns, "1", "paper\t0.83\t0.85\t0.70\n").substr(9));
    EXPECT_EQ(normalized.countOf(Liberty::kXyzScale), 2);
    EXPECT_THAT(normalized.text(), testing::HasSubstr("paper\t83\t85\t70\n"));
}

TEST(normalizerDoubts, standardDeviationsOfXyz_areScaledWithIt) {
    std::string rows;
    for (int i = 0; i < 10; ++i)
        rows += std::to_string(i) + "\t0.8\t0.8\t0.8\t0.01\t0.02\t0.03\n";
    rows += "k\t0.01\t0.01\t0.01\t0.001\t0.002\t0.003\n";
    const std::string columns = "SAMPLE_ID\tXYZ_X\tXYZ_Y\tXYZ_Z\tSTDEV_X\tSTDEV_Y\tSTDEV_Z";
    const Normalized normalized = accepted(table(columns, "11", rows));
    EXPECT_THAT(normalized.text(), testing::HasSubstr("k\t1\t1\t1\t0.1\t0.2\t0.3\n"));
}

TEST(normalizerDoubts, bytesInChannelsOfSixColours_areRemarked) {
    std::string columns = "SAMPLE_ID";
    for (int i = 1; i <= 6; ++i)
        columns += "\t6CLR_" + std::to_string(i);
    const Normalized normalized = accepted(table(columns, "1", "1\t255\t0\t10\t20\t30\t40\n"));
    EXPECT_THAT(normalized.remarks(),
                testing::ElementsAre(Finding{Liberty::kDeviceScale, 6, 1, "BEGIN_DATA"}));
}

// One slip of eleven among fractions proves no percentages.
TEST(normalizerDoubts, singleValueAboveTen_makesNoPercentages) {
    std::string rows;
    for (int i = 1; i <= 7; ++i)
        rows += std::to_string(i) + (i == 7 ? "\t0.5\t11\t0.5\t0.5\n" : "\t0.5\t0.5\t0.5\t0.5\n");
    const std::string text = table("SAMPLE_ID\tnm400\tnm410\tnm420\tnm430", "7", rows);
    expectUnchanged(text);
    EXPECT_THAT(Normalized{text}.remarks(),
                testing::ElementsAre(Finding{Liberty::kSpectralScale, 6, 1, "BEGIN_DATA"}));
}

TEST(normalizerDoubts, textWithoutSamples_isRemarked) {
    EXPECT_THAT(Normalized{"Dear reader,\n"}.remarks(),
                testing::ElementsAre(Finding{Liberty::kNoTable, 1, 1, ""}));
    EXPECT_THAT(Normalized{table("SAMPLE_ID", "1", "1\n")}.remarks(), testing::IsEmpty());
}

TEST(normalizerDoubts, refusedText_isGivenBackAsItCame) {
    const std::string text = table("SAMPLE_ID\tLAB_L", "2", "1\t10\n2\t11\t12\n") + "\"free text\"\n";
    const Normalized normalized{text};
    EXPECT_EQ(normalized.code, 13);
    EXPECT_EQ(normalized.text(), text);
}

// A TAB between two names, as between two cells of every row: what stands between TABs is a cell, also where
// an empty one makes the words as many as the columns.
TEST(normalizerDoubts, namesBetweenTabs_makeCellsBetweenTabs) {
    const std::string columns = "SAMPLE_ID\tSAMPLE_NAME\tLAB_L\tLAB_A\tLAB_B";
    expectText(table(columns, "2", "1\tPatch 1\t37\t13\t\n2\tPatch 2\t36\t12\t\n"),
               table(columns, "2", "1\t\"Patch 1\"\t37\t13\t\"\"\n2\t\"Patch 2\"\t36\t12\t\"\"\n"));
    expectText(table(columns, "1", "1\tPatch 1\t\t13\t14\n"),
               table(columns, "1", "1\t\"Patch 1\"\t\"\"\t13\t14\n"));
}

TEST(normalizerDoubts, namesBetweenBlanks_leaveTheRowsToTheirBlanks) {
    expectUnchanged(table("SAMPLE_ID SAMPLE_NAME LAB_L", "2", "1\t\tPatch 1\n2\t\tPatch 2\n"));
    expectUnchanged(table("SAMPLE_ID\t\tLAB_L LAB_A", "2", "1\t\t10 20\n2\t\t11 21\n"));
}

// The words of the names are as many as those of a row, or of all.
TEST(normalizerDoubts, namesWithBlanksBetweenTabs_areNotTakenApart) {
    const std::string header =
        "CGATS.17\nNUMBER_OF_FIELDS\t4\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tPatch name\tLAB_L\tDelta E\n"
        "END_DATA_FORMAT\nNUMBER_OF_SETS\t2\nBEGIN_DATA\n";
    for (const std::string rows : {"1\tdark red skin\t37\t1.0\n2\tlight red skin\t65\t2.0\n",
                                   "1\tdark red skin\t37\t1.0\n2\tblue\t65\t2.0\n"}) {
        const Normalized normalized = accepted(header + rows + "END_DATA\n");
        TCgats document;
        ASSERT_EQ(document.ReadFromBuffer(normalized.text().c_str()), 0);
        EXPECT_EQ(textsOf(document, 0, 1)[0], "dark red skin");
        EXPECT_EQ(numbersOf(document, 0, 2), (std::vector<double>{37, 65}));
        EXPECT_EQ(textsOf(document, 0, 3)[1], "2.0");
        EXPECT_EQ(normalized.countOf(Liberty::kFieldCount), 0);
    }
}

TEST(normalizerDoubts, valuesBeforeTheirWavelengths_arePairsToo) {
    expectText(table("SAMPLE_ID SPECTRAL_DEC SPECTRAL_NM SPECTRAL_DEC SPECTRAL_NM", "2",
                     "1 0.4 400 0.5 410\n2 0.6 400 0.7 410\n"),
               table("SAMPLE_ID SPECTRAL_400 SPECTRAL_410", "2", "1 0.4 0.5\n2 0.6 0.7\n"));
}

TEST(normalizerDoubts, wavelengthsAndValuesInBlocks_areRemarkedAndStay) {
    for (const std::string names : {"SPECTRAL_NM SPECTRAL_NM SPECTRAL_DEC SPECTRAL_DEC",
                                    "SPECTRAL_DEC SPECTRAL_NM SPECTRAL_NM SPECTRAL_DEC"}) {
        const std::string text = table("SAMPLE_ID " + names, "1", "1 400 410 0.5 0.6\n");
        expectUnchanged(text);
        EXPECT_EQ(Normalized{text}.remarks().size(), 1U) << names;
    }
    const std::string alone = table("SAMPLE_ID SPECTRAL_DEC", "1", "1 0.5\n");
    EXPECT_THAT(Normalized{alone}.remarks(), testing::IsEmpty());
}

TEST(normalizerDoubts, percentUnderANormOfOne_becomesFractions) {
    std::string rows;
    for (int i = 1; i <= 6; ++i)
        rows += std::to_string(i) + (i == 6 ? "\t88\t87\t86\t85\n" : "\t2\t3\t2\t3\n");
    const Normalized normalized =
        accepted("SPECTRAL_NORM\t\"1\"\n" + table("SAMPLE_ID\tnm400\tnm410\tnm420\tnm430", "6", rows));
    EXPECT_EQ(normalized.countOf(Liberty::kSpectralScale), 1);
    EXPECT_THAT(normalized.text(), testing::HasSubstr("6\t0.88\t0.87\t0.86\t0.85\n"));
}

TEST(normalizerDoubts, brightFractions_areRemarked) {
    const auto remarksFor = [](const std::string& value) {
        return Normalized{table("SAMPLE_ID\tnm400\tnm410", "1", "1\t0.5\t" + value + "\n")}.remarks().size();
    };
    EXPECT_EQ(remarksFor("1.4"), 0U);
    EXPECT_EQ(remarksFor("8"), 1U);
}

// Y of 0 to 1 beside RGB that stays dark is no scale of 0 to 1.
TEST(normalizerDoubts, darkSamplesOfADisplay_keepTheirXyz) {
    const auto rowsUpTo = [](int step) {
        std::string rows;
        for (int i = 0; i <= 10; ++i) {
            const std::string rgb = std::to_string(i * step);
            const std::string y = i == 10 ? "1.0" : "0." + std::to_string(i);
            rows += rgb + "\t" + rgb + "\t" + rgb + "\t" + y + "\t" + y + "\t" + y + "\n";
        }
        return table("RGB_R\tRGB_G\tRGB_B\tXYZ_X\tXYZ_Y\tXYZ_Z", "11", rows);
    };
    expectUnchanged(rowsUpTo(1));
    EXPECT_EQ(accepted(rowsUpTo(10)).countOf(Liberty::kXyzScale), 1);
}

TEST(normalizerDoubts, channelsThatMakeNoColours_areDeclared) {
    expectText(table("SAMPLE_ID\t3CLR_1\t3CLR_2\t3CLR_3", "1", "1\t0\t50\t100\n"),
               "CGATS.17\nKEYWORD \"3CLR_1\"\nKEYWORD \"3CLR_2\"\nKEYWORD \"3CLR_3\"\n" +
                   table("SAMPLE_ID\t3CLR_1\t3CLR_2\t3CLR_3", "1", "1\t0\t50\t100\n").substr(9));
    EXPECT_EQ(
        accepted(table("SAMPLE_ID\tSPOT_1\tSPOT_3", "1", "1\t0\t50\n")).countOf(Liberty::kFieldDeclared), 2);
    expectUnchanged(table("SAMPLE_ID\tSPOT_1\tSPOT_2", "1", "1\t0\t50\n"));
}

TEST(normalizerDoubts, valuesBeyondBytes_areOnNoScaleOfBytes) {
    const auto remarkOn = [](const std::string& value) {
        return Normalized{table("SAMPLE_ID\tRGB_R\tRGB_G\tRGB_B", "1", "1\t0\t0\t" + value + "\n")}.remarked(
            0);
    };
    EXPECT_EQ(remarkOn("255"), "RGB values such as 255 are on a scale of 0 to 255, not of 0 to 100");
    EXPECT_EQ(remarkOn("65535"), "RGB values such as 65535 are beyond a scale of 0 to 100");
}

TEST(normalizerDoubts, endOfFormatWithAWrongLetter_endsTheFormat) {
    const std::string text = table("SAMPLE_ID\tLAB_L", "1", "1\t10\n");
    std::string misspelled = text;
    misspelled.replace(misspelled.find("END_DATA_FORMAT"), 15, "END_DATAFORMAT");
    expectText(misspelled, text);
}

TEST(normalizerDoubts, tableOfCommentsAlone_hasNoSamples) {
    const Normalized normalized{table("SAMPLE_ID\tLAB_L", "1", "# 10\n")};
    EXPECT_EQ(normalized.code, 15);
}

TEST(normalizerDoubts, rowsWithCommasBetween_areRefusedWithTheReason) {
    TCgatsNormalizer normalizer;
    EXPECT_EQ(normalizer.Normalize(table("SAMPLE_ID\tLAB_L\tLAB_A", "1", "1,10,20\n")), 13);
    ASSERT_NE(normalizer.GetRefusal(), nullptr);
    EXPECT_THAT(normalizer.GetRefusal()->expected, testing::HasSubstr("commas and semicolons separate none"));
}

TEST(normalizerDoubts, wordsAndCellsThatBothFit_areRefusedWhereNothingTellsWhichAreMeant) {
    const Normalized normalized{
        table("SAMPLE_ID SAMPLE_NAME LAB_L LAB_A LAB_B", "2", "1\tRed\t1\t2\t3\n2\tPatch 1\t37\t13\t\n")};
    EXPECT_EQ(normalized.code, 13);
    ASSERT_NE(normalized.refusal(), nullptr);
    EXPECT_EQ(normalized.refusal()->line, 8);
}

TEST(normalizerDoubts, rowsThatLackACellAndHoldWords_areRefused) {
    const Normalized normalized{
        table("SAMPLE_ID\tSAMPLE_NAME\tLAB_L\tLAB_A\tLAB_B", "1", "1\tPatch 1\t37\t13\n")};
    EXPECT_EQ(normalized.code, 13);
    expectUnchanged(table("SAMPLE_ID\tLAB_L\tLAB_A\tLAB_B", "1", "1\t37 13 12\n"));
}

TEST(normalizerDoubts, namesWithBlanks_areWholeWhereWordsWouldPutTextsAmongNumbers) {
    const Normalized normalized =
        accepted(table("SAMPLE_ID\tPatch name\tLAB_L\tDelta E", "1", "1\tdark red skin\t37\t1.0\n"));
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer(normalized.text().c_str()), 0);
    EXPECT_EQ(numbersOf(document, 0, 2), std::vector<double>{37});
}

TEST(normalizerDoubts, knownNamesBetweenTabs_areNotJoined) {
    const std::string text =
        "CGATS.17\nNUMBER_OF_FIELDS\t2\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tRGB_R RGB_G RGB_B\n"
        "END_DATA_FORMAT\nNUMBER_OF_SETS\t1\nBEGIN_DATA\n1\t10 20 30\nEND_DATA\n";
    const Normalized normalized = accepted(text);
    EXPECT_THAT(normalized.text(), testing::HasSubstr("NUMBER_OF_FIELDS\t4\n"));
}

TEST(normalizerDoubts, keywordsInSeveralWords_areKeywordsWhereThereIsNoTableOtherwise) {
    const Normalized normalized =
        accepted("CGATS.17\nNUMBER OF FIELDS 2\nBEGIN DATA FORMAT\nSAMPLE_ID\tLAB_L\n"
                 "END DATA FORMAT\nNUMBER OF SETS 1\nBEGIN DATA\n1\t10\nEND DATA\n");
    EXPECT_EQ(normalized.text(), "CGATS.17\nNUMBER_OF_FIELDS 2\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tLAB_L\n"
                                 "END_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1\t10\nEND_DATA\n");
}

TEST(normalizerDoubts, reflectancesByAnyName_areSpectraInARow) {
    for (const std::string prefix : {"Refl_", "T", "LAMBDA_", "WL"})
        expectText(
            table("SAMPLE_ID\t" + prefix + "400\t" + prefix + "410\t" + prefix + "420\t" + prefix + "430",
                  "1", "1\t0.1\t0.2\t0.3\t0.4\n"),
            table("SAMPLE_ID\tSPECTRAL_400\tSPECTRAL_410\tSPECTRAL_420\tSPECTRAL_430", "1",
                  "1\t0.1\t0.2\t0.3\t0.4\n"));
    expectText(table("SAMPLE_ID\t400(nm)", "1", "1\t0.1\n"),
               table("SAMPLE_ID\tSPECTRAL_400", "1", "1\t0.1\n"));
}

// KEYWORD lines that declare header lines tell nothing of a column.
TEST(normalizerDoubts, keywordLinesOfNoColumn_makeRoom) {
    std::string lines;
    for (int i = 0; i < 70; ++i)
        lines += "KEYWORD\t\"NOTE" + std::to_string(i) + "\"\nNOTE" + std::to_string(i) + "\t\"x\"\n";
    const Normalized normalized = accepted(lines + table("SAMPLE_ID", "1", "1\n"));
    EXPECT_EQ(normalized.countOf(Liberty::kLineNotKept), 0);
    EXPECT_EQ(normalized.countOf(Liberty::kKeywordDropped), 140 + 6 - 128);
}

TEST(normalizerDoubts, unknownWordsBetweenTabs_belongTogether) {
    expectText(table("SAMPLE_ID\tMunsell notation", "1", "1\tred wine\n"),
               "CGATS.17\nKEYWORD \"Munsell_notation\"\n" +
                   table("SAMPLE_ID\tMunsell_notation", "1", "1\t\"red wine\"\n").substr(9));
}

} // namespace
} // namespace qxcms::tests
