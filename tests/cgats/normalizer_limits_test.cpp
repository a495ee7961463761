// Both sides of the limits that the normaliser goes by, and rules that few files need.
#include <cstddef>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/cgats/normalized.h"
#include "tests/cgats/read_document.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kFirstLine = "CGATS.17\n";

std::string joined(const std::vector<std::string>& parts, const std::string& between) {
    std::string all;
    for (const std::string& part : parts)
        all += (all.empty() ? "" : between) + part;
    return all;
}

// A table whose rows are told without the identifier that each one begins with.
std::string table(const std::string& columns, const std::vector<std::string>& rows) {
    std::string text = "BEGIN_DATA_FORMAT\nSAMPLE_ID\t" + columns + "\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t" +
                       std::to_string(rows.size()) + "\nBEGIN_DATA\n";
    for (std::size_t i = 0; i < rows.size(); ++i)
        text += std::to_string(i + 1) + "\t" + rows[i] + "\n";
    return text + "END_DATA\n";
}

std::string document(const std::string& columns, const std::vector<std::string>& rows) {
    return kFirstLine + table(columns, rows);
}

void expectText(const std::string& text, const std::string& expected) {
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), expected);
    EXPECT_FALSE(normalized.liberties().empty());
}

// Ten samples from this white to a black of a hundredth.
std::string xyz(const std::string& white) {
    std::vector<std::string> rows(10, "0.2\t0.3\t0.2");
    rows.front() = white;
    rows.back() = "0.01\t0.01\t0.01";
    return document("XYZ_X\tXYZ_Y\tXYZ_Z", rows);
}

void expectScaledXyz(const std::string& white, const std::string& scaled) {
    const Normalized normalized = accepted(xyz(white));
    EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kXyzScale})) << white;
    EXPECT_THAT(normalized.text(), HasSubstr("\n1\t" + scaled + "\n"));
    EXPECT_THAT(normalized.text(), HasSubstr("\n2\t20\t30\t20\n"));
    EXPECT_THAT(normalized.text(), HasSubstr("\n10\t1\t1\t1\n"));
}

TEST(normalizerLimits, whiteOfHalfTheLight_showsXyzOfZeroToOne) {
    expectScaledXyz("0.48\t0.50\t0.40", "48\t50\t40");
    expectUnchanged(xyz("0.48\t0.499\t0.40"));
}

TEST(normalizerLimits, whiteOfAFifthMoreThanAllLight_showsXyzOfZeroToOne) {
    expectScaledXyz("1.1\t1.20\t1.1", "110\t120\t110");
    expectUnchanged(xyz("1.1\t1.201\t1.1"));
}

TEST(normalizerLimits, zOfOneAndAHalf_isStillOnAScaleOfZeroToOne) {
    expectScaledXyz("1.00\t1.00\t1.50", "100\t100\t150");
    expectUnchanged(xyz("1.00\t1.00\t1.501"));
}

std::size_t deviceRemarks(const std::string& columns, const std::string& values) {
    const std::string text = document(columns, {values});
    expectUnchanged(text);
    const Normalized normalized{text};
    for (const Finding& remark : normalized.remarks())
        EXPECT_EQ(remark.kind, int{Liberty::kDeviceScale});
    return normalized.remarks().size();
}

TEST(normalizerLimits, deviceValuesUpToHalfAPercentAboveAHundred_arePercent) {
    for (const std::string columns : {"CMYK_C\tCMYK_M\tCMYK_Y\tCMYK_K", "5CLR_1\t5CLR_2\t5CLR_3\t5CLR_4"}) {
        const std::string all = columns[0] == '5' ? columns + "\t5CLR_5" : columns;
        const std::string rest = columns[0] == '5' ? "\t0\t40\t20\t10" : "\t0\t40\t20";
        EXPECT_EQ(deviceRemarks(all, "100.5" + rest), 0U) << columns;
        EXPECT_EQ(deviceRemarks(all, "100.6" + rest), 1U) << columns;
    }
    EXPECT_EQ(deviceRemarks("RGB_R\tRGB_G\tRGB_B", "100.5\t0\t40"), 0U);
    EXPECT_EQ(deviceRemarks("RGB_R\tRGB_G\tRGB_B", "100.6\t0\t40"), 1U);
}

TEST(normalizerLimits, deviceValuesUpToOne_areOnAScaleOfZeroToOne) {
    for (const std::string columns : {"CMYK_C\tCMYK_M\tCMYK_Y\tCMYK_K", "RGB_R\tRGB_G\tRGB_B"}) {
        const std::string rest = columns[0] == 'C' ? "\t0\t0.5\t0.25" : "\t0\t0.5";
        EXPECT_EQ(deviceRemarks(columns, "1" + rest), 1U) << columns;
        EXPECT_EQ(deviceRemarks(columns, "1.01" + rest), 0U) << columns;
    }
}

// Five dark samples, then this one.
std::string darkThen(const std::string& values) {
    std::vector<std::string> rows(6, "2.0\t2.0\t2.0\t2.0");
    rows.back() = values;
    return document("nm400\tnm410\tnm420\tnm430", rows);
}

// No sample reflects three times the light that falls on it.
TEST(normalizerLimits, singleBandAboveTen_provesPercentBesideBandsOfThree) {
    EXPECT_THAT(accepted(darkThen("11.0\t3.0\t3.0\t3.0")).text(),
                HasSubstr("\n6\t0.110\t0.030\t0.030\t0.030\n"));
}

TEST(normalizerLimits, spectraOfTwiceAllLight_canBePercent) {
    const Normalized normalized = accepted(darkThen("200.0\t150.5\t90.0\t80.0"));
    EXPECT_THAT(normalized.text(), HasSubstr("\n1\t0.020\t0.020\t0.020\t0.020\n"));
    EXPECT_THAT(normalized.text(), HasSubstr("\n6\t2.000\t1.505\t0.900\t0.800\n"));
}

// One line holds for both tables, so both come to one scale.
TEST(normalizerLimits, darkTableUnderTheNormOfABrightOne_bringsBothToOne) {
    const auto text = [](const std::string& norm, const std::string& bright, const std::string& dark) {
        return kFirstLine + "SPECTRAL_NORM\t" + norm + "\n" + table("nm400\tnm410", {bright}) +
               table("nm400\tnm410", {dark});
    };
    const std::string expected = text("1", "0.805\t0.901", "0.025\t0.032");
    expectText(text("100", "80.5\t90.1", "2.5\t3.2"), expected);
    expectText(text("100", "2.5\t3.2", "80.5\t90.1"), text("1", "0.025\t0.032", "0.805\t0.901"));
    expectUnchanged(text("100", "80.5\t90.1", "20.5\t30.2"));
}

TEST(normalizerLimits, normThatIsNoAmountOfLight_isLeftAlone) {
    for (const std::string norm : {"0", "-1", "-100", "-255"})
        expectUnchanged(kFirstLine + "SPECTRAL_NORM\t" + norm + "\n" +
                        table("nm400\tnm410", {"20.5\t30.25", "40.5\t50.25"}));
}

TEST(normalizerLimits, quotesAroundTheNorm_stay) {
    const auto text = [](const std::string& norm, const std::string& values) {
        return kFirstLine + "SPECTRAL_NORM\t" + norm + "\n" + table("nm400\tnm410", {values});
    };
    expectText(text("\"100\"", "2.5\t3.2"), text("\"1\"", "0.025\t0.032"));
    expectText(text("100", "2.5\t3.2"), text("1", "0.025\t0.032"));
}

TEST(normalizerLimits, percentInTheNameOfAColumn_isPercentInAnyLetterCase) {
    for (const std::string name : {"SPECTRAL_PCT_400", "spectral_pct_400"})
        expectText(document(name, {"0.50"}), document("SPECTRAL_400", {"0.0050"}));
    expectText(document("SPECTRAL_DEC_400", {"0.50"}), document("SPECTRAL_400", {"0.50"}));
}

TEST(normalizerLimits, wavelengthTwiceInARow_doesNotAscend) {
    const Normalized normalized{document("380\t390\t390\t400", {"0.1\t0.2\t0.3\t0.4"})};
    ASSERT_EQ(normalized.code, 0);
    EXPECT_EQ(normalized.countOf(Liberty::kSpectralName), 0);
    const ReadDocument read(normalized.text());
    ASSERT_EQ(read.GetNrTables(), 1);
    EXPECT_THAT(wavelengthsOf(read, 0), IsEmpty());
    EXPECT_EQ(read.GetNrFields(0), 5);
}

TEST(normalizerLimits, runOfFourWavelengths_isSpectral) {
    for (const std::string prefix : {"", "R", "WL"}) {
        const std::string three = joined({prefix + "380", prefix + "390", prefix + "400"}, "\t");
        expectText(
            document(three + "\t" + prefix + "410", {"0.1\t0.2\t0.3\t0.4"}),
            document("SPECTRAL_380\tSPECTRAL_390\tSPECTRAL_400\tSPECTRAL_410", {"0.1\t0.2\t0.3\t0.4"}));
        EXPECT_THAT(wavelengthsOf(ReadDocument(accepted(document(three, {"0.1\t0.2\t0.3"})).text()), 0),
                    IsEmpty())
            << prefix;
    }
}

TEST(normalizerLimits, wavelengthsOutOfTheVisible_areSpectral) {
    expectText(document("SPEC_250\tSPEC_1000\tSPEC_2500", {"0.1\t0.2\t0.3"}),
               document("SPECTRAL_250\tSPECTRAL_1000\tSPECTRAL_2500", {"0.1\t0.2\t0.3"}));
}

TEST(normalizerLimits, columnsThatAreNumbered_areNoSpectrum) {
    const Normalized normalized = accepted(document("1\t2\t3\t4\t5", {"0.1\t0.2\t0.3\t0.4\t0.5"}));
    EXPECT_THAT(wavelengthsOf(ReadDocument(normalized.text()), 0), IsEmpty());
}

// A declared name makes its column text, whatever it looks like.
TEST(normalizerLimits, spectralColumn_takesASpellingThatNoLineDeclares) {
    const auto text = [](const std::vector<std::string>& declared, const std::string& column) {
        std::string lines = kFirstLine;
        for (const std::string& name : declared)
            lines += "KEYWORD\t\"" + name + "\"\n";
        return lines + table(column, {"0.1"});
    };
    expectText(text({}, "SPEC_400"), text({}, "SPECTRAL_400"));
    expectText(text({"SPECTRAL_400"}, "SPEC_400"), text({"SPECTRAL_400"}, "NM_400"));
    const std::vector<std::string> spellings = {"SPECTRAL_400", "NM_400", "nm400", "SPECTRAL_NM_400"};
    for (std::size_t free = 0; free < spellings.size(); ++free) {
        std::vector<std::string> declared = spellings;
        declared.erase(declared.begin() + static_cast<std::ptrdiff_t>(free));
        const Normalized normalized = accepted(text(declared, "SPEC_400"));
        EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kSpectralName})) << spellings[free];
        const ReadDocument read(normalized.text());
        EXPECT_THAT(wavelengthsOf(read, 0), ElementsAre(400)) << spellings[free];
    }
}

TEST(normalizerLimits, channelsOfFourColours_areDeclaredAndThoseOfFivePass) {
    const std::string four = document("4CLR_1\t4CLR_2\t4CLR_3\t4CLR_4", {"0\t50\t100\t20"});
    EXPECT_NE(Reading(four).code, 0);
    EXPECT_EQ(accepted(four).countOf(Liberty::kFieldDeclared), 4);
    expectUnchanged(document("5CLR_1\t5CLR_2\t5CLR_3\t5CLR_4\t5CLR_5", {"0\t50\t100\t20\t10"}));
}

// What a text with so many header lines before its tables has to give up. The tables have seven, and one that
// declares a column of another name now.
struct GivenUp {
    explicit GivenUp(int headerLines) {
        std::string text;
        for (int i = 0; i < headerLines; ++i)
            text += "INFO_" + std::to_string(i) + "\t\"a\"\n";
        text += "KEYWORD\t\"SPEC_400\"\n" + table("SPEC_400", {"0.1"}) + "BEGIN_DATA\n2\t0.2\nEND_DATA\n";
        const Normalized normalized{text};
        EXPECT_EQ(normalized.code, 0);
        EXPECT_EQ(normalized.countOf(Liberty::kFormatTakenOver), 1);
        EXPECT_EQ(normalized.countOf(Liberty::kSampleCount), 1);
        declarations = normalized.countOf(Liberty::kKeywordDropped);
        lines = normalized.countOf(Liberty::kLineNotKept);
    }

    int declarations;
    int lines;
};

// The names that are taken over stand on no header line, and with NUMBER_OF_SETS three lines come in.
TEST(normalizerLimits, formatThatIsTakenOver_addsTwoHeaderLines) {
    constexpr int kFits = 128 - 7 - 1 - 3;
    EXPECT_EQ(GivenUp(kFits).declarations, 0);
    EXPECT_EQ(GivenUp(kFits).lines, 0);
    EXPECT_EQ(GivenUp(kFits + 1).declarations, 1);
    EXPECT_EQ(GivenUp(kFits + 1).lines, 0);
    EXPECT_EQ(GivenUp(kFits + 2).declarations, 1);
    EXPECT_EQ(GivenUp(kFits + 2).lines, 1);
}

TEST(normalizerLimits, bareWordsBetweenTabs_areQuoted) {
    expectText(kFirstLine + "ORIGINATOR\tmy\ttool\n" + table("LAB_L", {"10"}),
               kFirstLine + "ORIGINATOR\t\"my\ttool\"\n" + table("LAB_L", {"10"}));
}

TEST(normalizerLimits, commentOfADeclarationThatIsLeftOut_moves) {
    const Normalized normalized =
        accepted(kFirstLine + "SERIAL\t4\nKEYWORD\t\"LAB_L\" # of the press\n" + table("LAB_L", {"10"}));
    EXPECT_EQ(normalized.text(),
              kFirstLine + "SERIAL\t4\nBEGIN_DATA_FORMAT # of the press\n" +
                  table("LAB_L", {"10"}).substr(std::string("BEGIN_DATA_FORMAT\n").size()));
    EXPECT_EQ(normalized.countOf(Liberty::kKeywordDropped), 1);
    EXPECT_EQ(normalized.countOf(Liberty::kCommentMoved), 1);
}

TEST(normalizerLimits, utf16WithoutAMark_becomesUtf8) {
    const std::string text = document("LAB_L", {"10", "20"});
    for (const bool highFirst : {false, true}) {
        std::string bytes;
        for (const char c : text) {
            bytes += highFirst ? '\0' : c;
            bytes += highFirst ? c : '\0';
        }
        const Normalized normalized = accepted(bytes);
        EXPECT_EQ(normalized.text(), text) << highFirst;
        EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kEncoding})) << highFirst;
    }
}

// A row over several lines is known only by the number of rows that is declared.
TEST(normalizerLimits, rowsOverSeveralLines_areReadOnlyInTheirDeclaredNumber) {
    const auto text = [](const std::string& sets) {
        return kFirstLine + "BEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A\nEND_DATA_FORMAT\nNUMBER_OF_SETS " +
               sets + "\nBEGIN_DATA\n1 10\n20\n2 11\n21\nEND_DATA\n";
    };
    expectUnchanged(text("2"));
    for (const std::string sets : {"1", "3", "4"}) {
        const Normalized normalized{text(sets)};
        EXPECT_EQ(normalized.code, 13) << sets;
        ASSERT_NE(normalized.refusal(), nullptr);
        EXPECT_EQ(normalized.refusal()->line, 7);
    }
}

TEST(normalizerLimits, thousandsWithinATextColumn_proveNothingOfNumbers) {
    expectUnchanged(document("SAMPLE_NAME\tLAB_L", {"1,234.50\t1,234", "x\t2,511"}));
    expectText(document("SAMPLE_NAME\tLAB_L", {"1,234.50\t1,234", "x\t2,511.25"}),
               document("SAMPLE_NAME\tLAB_L", {"1,234.50\t1234", "x\t2511.25"}));
}

TEST(normalizerLimits, quotedWordsInANumberColumn_areLeftToTheReader) {
    const std::string columns = "SAMPLE_NAME\tLAB_L";
    expectText(document(columns, {"Dark Blue\t10", "Red\t\"not measured\""}),
               document(columns, {"\"Dark Blue\"\t10", "Red\t\"not measured\""}));
    EXPECT_EQ(Normalized{document(columns, {"Dark Blue\t10", "Light Red\tnot measured"})}.code, 13);
}

TEST(normalizerLimits, firstCellThatIsEmptyInEveryRow_isACell) {
    const auto text = [](const std::string& rows) {
        return kFirstLine +
               "BEGIN_DATA_FORMAT\nSTRING\tSAMPLE_NAME\tLAB_L\nEND_DATA_FORMAT\n"
               "NUMBER_OF_SETS\t2\nBEGIN_DATA\n" +
               rows + "END_DATA\n";
    };
    expectText(text("\tDark Blue\t10\n\tLight Red\t11\n"),
               text("\"\"\t\"Dark Blue\"\t10\n\"\"\t\"Light Red\"\t11\n"));
}

TEST(normalizerLimits, cellMoreThanThereAreColumns_takesNothingFromTheFirstOne) {
    const std::string columns = "SAMPLE_NAME\tLAB_L";
    const std::string text = document(columns, {"Dark Blue\t10\t# paper", "Light Red\t11\t# film"});
    std::string expected = document(columns, {"\"Dark Blue\"\t10\t", "\"Light Red\"\t11\t"});
    expected.insert(expected.rfind('\n'), " # paper");
    expectText(text, expected);
    EXPECT_EQ(Normalized{text}.countOf(Liberty::kCommentMoved), 1);
    EXPECT_EQ(Normalized{text}.countOf(Liberty::kCommentDropped), 1);
}

// Without END_DATA and NUMBER_OF_SETS only what begins the next table tells where the samples end.
TEST(normalizerLimits, headerOfTheNextTable_endsSamplesThatAreNotCounted) {
    for (const std::string line : {"KEYWORD \"LOT\"", "keyword \"LOT\"", "NUMBER_OF_FIELDS 2",
                                   "number_of_fields 2", "NUMBER_OF_SETS 1", "number_of_sets 1"}) {
        const Normalized normalized = accepted(
            kFirstLine + "BEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L\nEND_DATA_FORMAT\nBEGIN_DATA\n1 10\n2 11\n" +
            line + "\n" + table("LAB_L", {"20"}));
        const ReadDocument read(normalized.text());
        ASSERT_EQ(read.GetNrTables(), 2) << line;
        EXPECT_EQ(read.GetNrSamples(0), 2) << line;
        EXPECT_EQ(read.GetNrSamples(1), 1) << line;
    }
}

// The reader goes by the declared number, and takes the words behind the samples for a header line.
TEST(normalizerLimits, wordsWhereNumbersBelong_areNoRowBehindTheDeclaredOnes) {
    for (const std::string sets : {"2", "\"2\""}) {
        const std::string text = kFirstLine +
                                 "BEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L\nEND_DATA_FORMAT\nNUMBER_OF_SETS " +
                                 sets + "\nBEGIN_DATA\n1 10\n2 11\nPRESS \"four\"\n" + table("LAB_L", {"20"});
        const ReadDocument read(text);
        ASSERT_EQ(read.GetNrTables(), 2) << sets;
        ASSERT_EQ(read.GetNrSamples(0), 2) << sets;
        expectUnchanged(text);
    }
}

TEST(normalizerLimits, emptyCommentBlockBetweenTwoCharacters_isReadAsItIs) {
    const auto text = [](const std::string& end) {
        return joined({"CGATS.17", "BEGIN_NOTE", "END_NOTE", "BEGIN_DATA_FORMAT", "SAMPLE_ID LAB_L",
                       "END_DATA_FORMAT", "NUMBER_OF_SETS 1", "BEGIN_DATA", "1 10", "END_DATA", ""},
                      end);
    };
    EXPECT_EQ(ReadDocument(text("\r\n")).GetNrTables(), 1);
    expectUnchanged(text("\r\n"));
    EXPECT_EQ(accepted(text("\n")).countOf(Liberty::kEmptyCommentBlock), 1);
}

TEST(normalizerLimits, numberOfSetsBehindTheNames_endsThem) {
    const std::string start = kFirstLine + "BEGIN_DATA_FORMAT\nSAMPLE_ID\tLAB_L\n";
    const std::string rest = "NUMBER_OF_SETS\t1\nBEGIN_DATA\n1\t10\nEND_DATA\n";
    expectText(start + rest, start + "END_DATA_FORMAT\n" + rest);
}

} // namespace
} // namespace qxcms::tests
