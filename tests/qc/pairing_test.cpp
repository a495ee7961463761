// Which rows belong together.
#include "qc/pairing.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>
#include <random>
#include <stdexcept>

#include <gmock/gmock.h>

#include "qc/count_text.h"
#include "qc/refusal.h"

namespace qxcms::tests {
namespace {

using namespace qc;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = Finding::Kind;
using Severity = Finding::Severity;

/// A chart with its document.
class OwnedChart {
public:
    OwnedChart(const char* name, const std::string& fields, const std::vector<std::string>& rows,
               const std::string& header = "")
        : document(std::make_unique<TCgats>()), chart{name, document.get(), 0} {
        std::string text = "CGATS.17\n" + header + "BEGIN_DATA_FORMAT\n" + fields +
                           "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " + std::to_string(rows.size()) +
                           "\nBEGIN_DATA\n";
        for (const std::string& row : rows)
            text += row + '\n';
        text += "END_DATA\n";
        if (document->ReadFromBuffer(text.c_str()) != 0)
            throw std::invalid_argument("the test's own chart cannot be read");
    }

    operator const Chart&() const { return chart; }

private:
    std::unique_ptr<TCgats> document;
    Chart chart;
};

using Rows = std::vector<std::string>;

OwnedChart measured(const std::string& fields, const Rows& rows, const std::string& header = "") {
    return {"measured.txt", fields, rows, header};
}

OwnedChart reference(const std::string& fields, const Rows& rows, const std::string& header = "") {
    return {"reference.txt", fields, rows, header};
}

constexpr const char* kCmyk = "CMYK_C CMYK_M CMYK_Y CMYK_K";
constexpr const char* kRgb = "RGB_R RGB_G RGB_B";

Pairing paired(const Chart& left, const Chart& right, PairChoice choice = PairChoice::automatic) {
    return pairRows(left, right, choice);
}

// Pairs whose median colour difference is always the same.
Pairing pairedWith(double median, const Chart& left, const Chart& right,
                   PairChoice choice = PairChoice::automatic) {
    return pairRows(left, right, {choice, "", [=](const std::vector<RowPair>&) { return median; }});
}

// "0-2 1-0+3": measured row 0 with reference row 2, 1 with the mean of 0 and 3.
std::string pairsOf(const Pairing& pairing) {
    std::string text;
    for (const RowPair& pair : pairing.pairs) {
        text += (text.empty() ? "" : " ") + std::to_string(pair.measured);
        char separator = '-';
        for (const int row : pair.reference) {
            text += separator + std::to_string(row);
            separator = '+';
        }
    }
    return text;
}

// The findings of one kind, warnings with a "!" in front.
Rows findingsOf(const Pairing& pairing, Kind kind) {
    Rows texts;
    for (const Finding& finding : pairing.findings) {
        if (finding.kind == kind)
            texts.push_back((finding.severity == Severity::warning ? "!" : "") + finding.text);
    }
    return texts;
}

struct Refused {
    Refusal::Kind kind = Refusal::Kind::usage;
    std::string message;
};

Refused refusalOf(const Chart& left, const Chart& right, PairChoice choice = PairChoice::automatic) {
    try {
        pairRows(left, right, choice);
    } catch (const Refusal& refusal) {
        return {refusal.kind(), refusal.what()};
    }
    ADD_FAILURE() << "the rows were paired";
    return {};
}

// Every step of 25 percent of four inks: 625 device values.
Rows fullChart() {
    Rows rows;
    for (int i = 0; i < 625; ++i) {
        std::string row;
        for (const int place : {1, 5, 25, 125})
            row += std::to_string(i / place % 5 * 25) + ' ';
        rows.push_back(row);
    }
    return rows;
}

Rows shuffled(Rows rows) {
    std::shuffle(rows.begin(), rows.end(), std::mt19937(20));
    return rows;
}

// Device values.

TEST(pairing, shuffledStrip_pairsCompletelyWithItsChart) {
    const Rows chart = fullChart();
    Rows strip = shuffled(chart);
    strip.resize(72);
    const Pairing pairing = paired(measured(kCmyk, strip), reference(kCmyk, chart));
    EXPECT_EQ(pairing.rule, PairRule::deviceValues);
    EXPECT_EQ(pairing.by, "CMYK");
    ASSERT_EQ(pairing.pairs.size(), 72U);
    for (const RowPair& pair : pairing.pairs) {
        ASSERT_EQ(pair.reference.size(), 1U);
        EXPECT_EQ(strip[static_cast<std::size_t>(pair.measured)],
                  chart[static_cast<std::size_t>(pair.reference.front())]);
    }
    EXPECT_EQ(pairing.unusedMeasured, 0);
    EXPECT_EQ(pairing.unusedReference, 553);
    EXPECT_THAT(findingsOf(pairing, Kind::unusedSamples),
                ElementsAre("553 of 625 samples of reference.txt are unused"));
}

TEST(pairing, chartAgainstAStrip_leavesMeasuredSamplesUnused_whichIsAWarning) {
    const Pairing pairing = paired(measured(kCmyk, {"0 0 0 0", "50 0 0 0", "100 0 0 0"}),
                                   reference(kCmyk, {"100 0 0 0", "0 0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "0-1 2-0");
    EXPECT_EQ(pairing.unusedMeasured, 1);
    EXPECT_EQ(pairing.unusedReference, 0);
    EXPECT_THAT(findingsOf(pairing, Kind::unusedSamples),
                ElementsAre("!1 of 3 samples of measured.txt has no counterpart in reference.txt: row 2 "
                            "(CMYK 50 0 0 0)"));
}

TEST(pairing, unusedSamplesOfBothSides_areToldInOneWarning) {
    const Pairing pairing = paired(measured(kCmyk, {"10 0 0 0", "0 0 0 0", "20 0 0 0"}),
                                   reference(kCmyk, {"0 0 0 0", "30 0 0 0", "40 0 0 0"}));
    EXPECT_EQ(pairing.unusedMeasured, 2);
    EXPECT_EQ(pairing.unusedReference, 2);
    EXPECT_THAT(findingsOf(pairing, Kind::unusedSamples),
                ElementsAre("!2 of 3 samples of measured.txt have no counterpart in reference.txt, the first "
                            "in row 1 (CMYK 10 0 0 0); 2 of 3 samples of reference.txt are unused"));
}

TEST(pairing, completePairing_hasNoFindings) {
    const Pairing pairing =
        paired(measured(kCmyk, {"0 0 0 0", "100 0 0 50.5"}), reference(kCmyk, {"100 0 0 50.5", "0 0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
    EXPECT_THAT(pairing.findings, IsEmpty());
}

TEST(pairing, deviceValues_pairUpToTheTolerance) {
    EXPECT_EQ(pairsOf(paired(measured(kCmyk, {"40 0 0 0", "60.3 70 0 100"}),
                             reference(kCmyk, {"60 69.7 0 100", "40.3 0.3 0 0.3"}))),
              "0-1 1-0");
}

TEST(pairing, deviceValues_doNotPairBeyondTheTolerance) {
    const Pairing pairing =
        paired(measured(kCmyk, {"0 0 0 100", "40 0 0 0"}), reference(kCmyk, {"0 0 0 100", "40 0 0.301 0"}));
    EXPECT_EQ(pairsOf(pairing), "0-0");
    EXPECT_EQ(pairing.unusedMeasured, 1);
    EXPECT_EQ(pairing.unusedReference, 1);
}

TEST(pairing, nearestDeviceValue_isTaken) {
    EXPECT_EQ(pairsOf(paired(measured(kCmyk, {"40 0 0 100"}),
                             reference(kCmyk, {"40.2 0 0 100", "40 0.1 0 100", "39.8 0 0 100"}))),
              "0-1");
}

TEST(pairing, ofTwoMeasuredValuesAtOneReference_theNearerPairs_andTheOtherIsTold) {
    const Pairing pairing = paired(measured(kCmyk, {"40.2 0 0 100", "40.1 0 0 100"}),
                                   reference(kCmyk, {"40 0 0 100", "90 0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "1-0");
    EXPECT_EQ(pairing.unusedMeasured, 1);
    EXPECT_THAT(findingsOf(pairing, Kind::ambiguousSamples),
                ElementsAre("!1 sample of measured.txt, row 1 (CMYK 40.2 0 0 100), lies near to a sample of "
                            "reference.txt to which another measured one lies nearer; left out"));
}

TEST(pairing, referenceValuesEquallyNear_pairNothing_andAreTold) {
    const Pairing pairing = paired(measured(kCmyk, {"0 0 0 100", "40 0 0 0"}),
                                   reference(kCmyk, {"40.2 0 0 0", "39.8 0 0 0", "0 0 0 100"}));
    EXPECT_EQ(pairsOf(pairing), "0-2");
    EXPECT_EQ(pairing.unusedMeasured, 1);
    EXPECT_EQ(pairing.unusedReference, 2);
    EXPECT_THAT(findingsOf(pairing, Kind::ambiguousSamples),
                ElementsAre("!1 sample of measured.txt, row 2 (CMYK 40 0 0 0), lies about as near to one "
                            "device value as to another; left out"));
}

TEST(pairing, measuredValuesEquallyNear_pairNothing_andAreTold) {
    const Pairing pairing = paired(measured(kCmyk, {"40.2 0 0 0", "39.8 0 0 0", "0 0 0 100"}),
                                   reference(kCmyk, {"0 0 0 100", "40 0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "2-0");
    EXPECT_EQ(pairing.unusedMeasured, 2);
    EXPECT_THAT(findingsOf(pairing, Kind::ambiguousSamples),
                ElementsAre("!2 samples of measured.txt, the first in row 1 (CMYK 40.2 0 0 0), lie about as "
                            "near to one device value as to another; left out"));
}

TEST(pairing, numbersThatCountTheRows_areTold) {
    const char* const fields = "SAMPLE_ID LAB_L";
    const Pairing whole = paired(measured(fields, {"1 50", "2 60"}), reference(fields, {"1 50", "2 60"}));
    EXPECT_THAT(
        findingsOf(whole, Kind::ambiguousSamples),
        ElementsAre("SAMPLE_ID only counts the rows of both files, so that they are paired in their order"));
    const Pairing part =
        paired(measured(fields, {"1 50", "2 60"}), reference(fields, {"1 50", "2 60", "3 70"}));
    EXPECT_THAT(findingsOf(part, Kind::ambiguousSamples), ElementsAre(HasSubstr("!SAMPLE_ID only counts")));
    const Pairing named = paired(measured(fields, {"A1 50", "A2 60"}), reference(fields, {"A1 50", "A2 60"}));
    EXPECT_THAT(named.findings, IsEmpty());
}

TEST(pairing, otherIdentifierThatPairsOtherwise_isWarnedAbout) {
    const char* const fields = "SAMPLE_ID SAMPLE_NAME";
    const Pairing pairing = paired(measured(fields, {"7 A", "8 B"}), reference(fields, {"7 B", "8 A"}));
    EXPECT_EQ(pairing.by, "SAMPLE_ID");
    EXPECT_THAT(
        findingsOf(pairing, Kind::otherPairing),
        ElementsAre("!SAMPLE_ID pairs row 1 with row 1 of the reference, but SAMPLE_NAME with row 2; check "
                    "which of them names the samples"));
}

// Repeats.

TEST(pairing, repeatsInEqualNumbers_pairFirstWithFirst) {
    const Pairing pairing = paired(measured(kCmyk, {"0 0 0 0", "0 0 0 100", "0 0 0 0"}),
                                   reference(kCmyk, {"0 0 0 100", "0 0 0 0", "0 0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0 2-2");
    EXPECT_THAT(
        findingsOf(pairing, Kind::ambiguousSamples),
        ElementsAre("2 samples of measured.txt, the first in row 1 (CMYK 0 0 0 0), repeat device values, "
                    "as often as reference.txt does; they are paired in their order"));
}

TEST(pairing, sampleThatTheReferenceRepeats_pairsWithTheMean_whichIsNoted) {
    const Pairing pairing = paired(measured(kCmyk, {"0 0 0 100", "0 0 0 0"}),
                                   reference(kCmyk, {"0 0 0 0", "0 0 0 100", "0 0 0 0", "0 0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0+2+3");
    EXPECT_EQ(pairing.unusedReference, 0);
    EXPECT_THAT(findingsOf(pairing, Kind::ambiguousSamples),
                ElementsAre("1 sample of measured.txt, row 2 (CMYK 0 0 0 0), is compared with the mean of "
                            "the samples of reference.txt that hold the same device values, as their numbers "
                            "differ"));
}

TEST(pairing, repeatsInUnequalNumbers_pairEachWithTheMean) {
    EXPECT_EQ(pairsOf(paired(measured(kCmyk, {"0 0 0 0", "0 0 0 0", "0 0 0 0", "9 0 0 99"}),
                             reference(kCmyk, {"9 0 0 99", "0 0 0 0", "0 0 0 0"}))),
              "0-1+2 1-1+2 2-1+2 3-0");
}

TEST(pairing, measuredRepeatsOfOneReference_pairEachWithIt) {
    const Pairing pairing = paired(measured(kCmyk, {"0 0 0 0", "9 0 0 99", "0 0 0 0"}),
                                   reference(kCmyk, {"0 0 0 0", "9 0 0 99"}));
    EXPECT_EQ(pairsOf(pairing), "0-0 1-1 2-0");
    EXPECT_EQ(pairing.unusedMeasured, 0);
    EXPECT_THAT(
        findingsOf(pairing, Kind::ambiguousSamples),
        ElementsAre("2 samples of measured.txt, the first in row 1 (CMYK 0 0 0 0), repeat device values "
                    "that reference.txt holds once; each is compared with that one sample"));
}

TEST(pairing, repeatsOfNearlyTheReferenceValue_pairTogether) {
    EXPECT_EQ(pairsOf(paired(measured(kCmyk, {"40.2 0 0 100", "40.2 0 0 100"}),
                             reference(kCmyk, {"40 0 0 100", "40 0 0 100"}))),
              "0-0 1-1");
}

TEST(pairing, chartOfOneDeviceValue_isWarnedAbout) {
    const Pairing pairing =
        paired(measured(kCmyk, {"0 0 0 0", "0 0 0 0"}), reference(kCmyk, {"0 0 0 0", "9 9 9 99"}));
    EXPECT_EQ(pairing.rule, PairRule::deviceValues);
    EXPECT_THAT(findingsOf(pairing, Kind::ambiguousSamples),
                Contains(AllOf(HasSubstr("!measured.txt: the CMYK values are the same on every row"),
                               HasSubstr("--pair id"))));
}

TEST(pairing, deviceValuesThatAreTheSameThroughout_giveWayToIdentifiers) {
    const std::string fields = std::string("SAMPLE_ID ") + kCmyk;
    const Pairing pairing =
        paired(measured(fields, {"a 0 0 0 0", "b 0 0 0 0"}), reference(fields, {"b 0 0 0 0", "a 0 0 0 0"}));
    EXPECT_EQ(pairing.rule, PairRule::identifiers);
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
    EXPECT_THAT(findingsOf(pairing, Kind::otherPairing),
                ElementsAre("the CMYK values are not used, as they do not tell the rows apart"));
}

TEST(pairing, rgbColumnsNeverFilledIn_giveWayToIdentifiers) {
    const std::string fields = std::string("SAMPLE_ID ") + kRgb;
    const Pairing pairing =
        paired(measured(fields, {"a 0 0 0", "b 0 0 0"}), reference(fields, {"b 0 0 0", "a 90 90 90"}));
    EXPECT_EQ(pairing.rule, PairRule::identifiers);
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
}

TEST(pairing, identifiersBesideDeviceValuesOfTwoKinds_areWarnedAbout) {
    const Pairing pairing = paired(measured(std::string("SAMPLE_ID ") + kCmyk, {"1 0 0 0 0"}),
                                   reference(std::string("SAMPLE_ID ") + kRgb, {"1 255 255 255"}));
    EXPECT_EQ(pairing.rule, PairRule::identifiers);
    EXPECT_THAT(findingsOf(pairing, Kind::otherPairing),
                ElementsAre("!measured.txt holds CMYK values and reference.txt RGB values; they cannot show "
                            "whether rows that share a SAMPLE_ID are the same samples"));
}

TEST(pairing, identifiersBesideDeviceValuesOfOneSide_needNoFinding) {
    EXPECT_THAT(
        paired(measured(std::string("SAMPLE_ID ") + kCmyk, {"1 0 0 0 0"}), reference("SAMPLE_ID", {"1"}))
            .findings,
        IsEmpty());
}

TEST(pairing, samplesWithoutInkAndWithoutIdentifiers_pairByDeviceValues) {
    EXPECT_EQ(pairsOf(paired(measured(kCmyk, {"0 0 0 0"}), reference(kCmyk, {"0 0 0 0", "0 0 0 0"}))),
              "0-0+1");
}

// Channels.

TEST(pairing, channels_mayStandInAnyColumnAndLetterCase) {
    const Pairing pairing = paired(measured("cmyk_k CMYK_C Cmyk_M CMYK_Y", {"99 1 2 3", "4 5 6 7"}),
                                   reference(kCmyk, {"5 6 7 4", "1 2 3 99"}));
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
}

TEST(pairing, spotColours_pair) {
    const Pairing pairing =
        paired(measured("SPOT_1 SPOT_2", {"0 50", "100 0"}), reference("SPOT_2 SPOT_1", {"0 100", "50 0"}));
    EXPECT_EQ(pairing.by, "SPOT");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
}

TEST(pairing, spotColoursBesideProcessColours_mustAgreeToo) {
    const std::string fields = std::string(kCmyk) + " SPOT_1";
    const Pairing pairing = paired(measured(fields, {"1 2 3 4 50", "1 2 3 4 90"}),
                                   reference(fields, {"1 2 3 4 90", "1 2 3 4 50"}));
    EXPECT_EQ(pairing.by, "CMYK and SPOT");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
}

TEST(pairing, spotColoursOfOneSideOnly_areOtherChannels) {
    EXPECT_THAT(
        refusalOf(measured(std::string(kCmyk) + " SPOT_1", {"1 2 3 4 5"}), reference(kCmyk, {"1 2 3 4"}))
            .message,
        HasSubstr("do not hold the same device values"));
}

TEST(pairing, spotColoursOfOneSideThatAreZeroThroughout_areLeftOut_whichIsNoted) {
    const std::string fields = std::string(kCmyk) + " SPOT_1";
    const OwnedChart spots = measured(fields, {"1 2 3 4 0", "5 6 7 80 0"});
    const OwnedChart inks = reference(kCmyk, {"5 6 7 80", "1 2 3 4"});
    const Pairing pairing = paired(spots, inks);
    EXPECT_EQ(pairing.by, "CMYK");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
    EXPECT_THAT(pairing.findings.size(), 1U);
    EXPECT_THAT(
        findingsOf(pairing, Kind::deviceScale),
        ElementsAre("measured.txt: SPOT_1 is 0 on every row and left out, as reference.txt has no such "
                    "values"));
    EXPECT_EQ(pairsOf(paired(inks, spots)), "0-1 1-0");
}

// The kernel takes such columns for text.
TEST(pairing, deviceValuesThatTheKernelDoesNotKnow_pairByTheirNames) {
    const auto pairs = [](const std::string& left, const std::string& right, const std::string& header = "") {
        const Pairing pairing =
            paired(measured("SAMPLE_ID " + left, {"1 0 10 20", "2 80 90 100"}, header),
                   reference("SAMPLE_ID " + right, {"1 80 90 100", "2 0 10.2 20"}, header));
        return pairing.by + ' ' + pairsOf(pairing);
    };
    EXPECT_EQ(pairs("3CLR_1 3CLR_2 3CLR_3", "3CLR_1 3CLR_2 3CLR_3",
                    "KEYWORD \"3CLR_1\"\nKEYWORD \"3CLR_2\"\nKEYWORD \"3CLR_3\"\n"),
              "3CLR 0-1 1-0");
    EXPECT_EQ(pairs("CMY_C CMY_M CMY_Y", "cmy_c cmy_m cmy_y",
                    "KEYWORD \"CMY_C\"\nKEYWORD \"CMY_M\"\nKEYWORD \"CMY_Y\"\n"),
              "CMY 0-1 1-0");
    EXPECT_EQ(pairs("SPOT_5 SPOT_7 K_K", "SPOT_5 SPOT_7 K_K",
                    "KEYWORD \"SPOT_5\"\nKEYWORD \"SPOT_7\"\nKEYWORD \"K_K\"\n"),
              "SPOT and K 0-1 1-0");
    EXPECT_EQ(pairs("CMYK_C CMYK_M CMYK_Y", "CMYK_C CMYK_M CMYK_Y"), "CMYK 0-1 1-0");
}

TEST(pairing, wordsInSuchColumns_areNoDeviceValues) {
    const std::string header = "KEYWORD \"CMY_C\"\n";
    for (const char* const row : {"2 none", "2 nan", "2 5%"})
        EXPECT_EQ(paired(measured("SAMPLE_ID CMY_C", {"1 10", row}, header),
                         reference("SAMPLE_ID CMY_C", {"1 20", "2 30"}, header))
                      .by,
                  "SAMPLE_ID")
            << row;
}

TEST(pairing, suchValuesAgainstOthers_areWarnedAbout) {
    const std::string header = "KEYWORD \"1CLR_1\"\n";
    EXPECT_THAT(findingsOf(paired(measured("SAMPLE_ID 1CLR_1", {"1 10"}, header),
                                  reference(std::string("SAMPLE_ID ") + kCmyk, {"1 0 0 0 10"})),
                           Kind::otherPairing),
                ElementsAre(HasSubstr("!measured.txt holds 1CLR values and reference.txt CMYK values")));
}

TEST(pairing, colorantsNamedByOneFileOnly_areWarnedAbout) {
    const Rows rows = {"0", "100"};
    for (const char* const header : {"SPOT_ID \"Orange\"\n", "KEYWORD \"SPOT_1\"\nSPOT_1 \"Orange\"\n"}) {
        const Pairing pairing = paired(measured("SPOT_1", rows, header), reference("SPOT_1", rows));
        EXPECT_THAT(
            findingsOf(pairing, Kind::ambiguousSamples),
            ElementsAre("!spot colour 1 is \"Orange\" in measured.txt and not named in reference.txt; "
                        "they are taken for the same"))
            << header;
    }
}

TEST(pairing, colorantsOfOtherNames_areWarnedAbout) {
    const Rows rows = {"0 50", "100 0"};
    const Pairing pairing =
        paired(measured("SPOT_1 SPOT_2", rows, "SPOT_ID \"Orange\"\nSPOT_ID \"Gold\"\n"),
               reference("SPOT_1 SPOT_2", rows, "SPOT_ID \"ORANGE\"\nSPOT_ID \"Silver\"\n"));
    EXPECT_THAT(
        findingsOf(pairing, Kind::ambiguousSamples),
        ElementsAre("!spot colour 2 is \"Gold\" in measured.txt and \"Silver\" in reference.txt; they "
                    "are taken for the same"));
}

TEST(pairing, nColourSpaces_pairWithTheirLikeOnly) {
    const char* const six = "6CLR_1 6CLR_2 6CLR_3 6CLR_4 6CLR_5 6CLR_6";
    const Pairing pairing = paired(measured(six, {"1 2 3 4 5 60", "1 2 3 4 5 70"}),
                                   reference(six, {"1 2 3 4 5 70", "1 2 3 4 5 60"}));
    EXPECT_EQ(pairing.by, "6CLR");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
    EXPECT_THAT(refusalOf(measured(six, {"1 2 3 4 5 6"}),
                          reference("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5", {"1 2 3 4 5"}))
                    .message,
                HasSubstr("do not hold the same device values"));
}

TEST(pairing, customProcessColours_pair) {
    const std::string header = "PROCESSCOLOR_ID a\nPROCESSCOLOR_ID b\n";
    const Pairing pairing = paired(measured("PC2_1 PC2_2", {"1 20", "3 4"}, header),
                                   reference("PC2_2 PC2_1", {"4 3", "20 1"}, header));
    EXPECT_EQ(pairing.by, "PC2");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
}

// PC2_1 given twice leaves channel 2 without a column.
TEST(pairing, channelsWithAGap_areNoDeviceValues) {
    const std::string header = "PROCESSCOLOR_ID a\nPROCESSCOLOR_ID b\n";
    EXPECT_THAT(refusalOf(measured("PC2_1 PC2_1", {"1 2"}, header), reference("PC2_1 PC2_1", {"1 2"}, header))
                    .message,
                HasSubstr("do not hold the same device values"));
}

TEST(pairing, customProcessColoursAgainstCmyk_areOtherChannels) {
    const std::string header = "PROCESSCOLOR_ID a\nPROCESSCOLOR_ID b\nPROCESSCOLOR_ID c\nPROCESSCOLOR_ID d\n";
    EXPECT_THAT(
        refusalOf(measured(kCmyk, {"1 2 3 4"}), reference("PC4_1 PC4_2 PC4_3 PC4_4", {"1 2 3 4"}, header))
            .message,
        HasSubstr("do not hold the same device values"));
}

TEST(pairing, rgb_pairsWhereNotBothChartsHaveInks) {
    const std::string both = std::string(kCmyk) + ' ' + kRgb;
    const Pairing pairing = paired(measured(both, {"0 0 0 0 255 255 255", "0 0 0 99 0 0 9"}),
                                   reference(kRgb, {"0 0 9", "255 255 255"}));
    EXPECT_EQ(pairing.by, "RGB");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
}

TEST(pairing, rgbBesideInks_doesNotMatter) {
    const std::string both = std::string(kCmyk) + ' ' + kRgb;
    const Pairing pairing = paired(measured(both, {"0 0 0 0 255 250 245", "0 0 0 99 7 8 9"}),
                                   reference(both, {"0 0 0 99 0 0 0", "0 0 0 0 255 255 255"}));
    EXPECT_EQ(pairing.by, "CMYK");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
}

TEST(pairing, twoChannelsOfRgb_areNoDeviceValues) {
    EXPECT_THAT(refusalOf(measured("RGB_R RGB_G", {"1 2"}), reference("RGB_R RGB_G", {"1 2"})).message,
                HasSubstr("do not hold the same device values"));
}

TEST(pairing, rgbDeclaredAsText_isNoDeviceValues) {
    const std::string keyword = "KEYWORD \"RGB_G\"\n";
    EXPECT_THAT(refusalOf(measured(kRgb, {"1 2 3"}, keyword), reference(kRgb, {"1 2 3"}, keyword)).message,
                HasSubstr("do not hold the same device values"));
}

// Scales.

TEST(pairing, scaleFrom0To1_isRecognisedAndNoted) {
    const Pairing pairing = paired(measured(kCmyk, {"0.4 0 0 0", "1 0.5 0 0"}),
                                   reference(kCmyk, {"0 0 0 100", "100 50 0 0", "40 0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "0-2 1-1");
    EXPECT_THAT(findingsOf(pairing, Kind::deviceScale),
                ElementsAre("measured.txt: the CMYK values are taken to be on a scale of 0 to 1"));
}

// 0.7 of 255 is 0.27 percent, 0.8 is 0.31.
TEST(pairing, scaleFrom0To255_isRecognisedAndNoted_withTheToleranceInItsUnits) {
    const Pairing pairing = paired(measured(kCmyk, {"255 0 0 0", "102 0 0.7 0", "51 0 0 0.8"}),
                                   reference(kCmyk, {"40 0 0 0", "100 0 0 0", "20 0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
    EXPECT_THAT(findingsOf(pairing, Kind::deviceScale),
                ElementsAre("measured.txt: the CMYK values are taken to be on a scale of 0 to 255"));
}

TEST(pairing, scaleOfTheReference_isNotedToo) {
    EXPECT_THAT(
        findingsOf(paired(measured(kCmyk, {"100 0 0 0"}), reference(kCmyk, {"1 0 0 0"})), Kind::deviceScale),
        ElementsAre("reference.txt: the CMYK values are taken to be on a scale of 0 to 1"));
}

TEST(pairing, limitsOfTheScales_areTakenIn) {
    EXPECT_THAT(paired(measured(kCmyk, {"100.5 0 0 0"}), reference(kCmyk, {"100.5 0 0 0"})).findings,
                IsEmpty());
    EXPECT_THAT(findingsOf(paired(measured(kCmyk, {"100.6 0 0 0"}), reference(kCmyk, {"100.6 0 0 0"})),
                           Kind::deviceScale),
                testing::SizeIs(2));
    EXPECT_THAT(paired(measured(kRgb, {"255.5 0 0"}), reference(kRgb, {"255.5 0 0"})).findings, IsEmpty());
}

TEST(pairing, valueOnNoScale_isRefusedWithItsPlaceAndTheRemedy) {
    const Refused refused =
        refusalOf(measured(kRgb, {"0 0 0", "0 256 0"}), reference(kRgb, {"0 0 0", "0 255 0"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, AllOf(HasSubstr("measured.txt: row 2, column \"RGB_G\" (number 2): the "
                                                 "device value 256 is on none of the scales"),
                                       HasSubstr("--pair id")));
}

TEST(pairing, negativeValue_isOnNoScale) {
    EXPECT_THAT(
        refusalOf(measured(kCmyk, {"0 0 0 100", "0 -1 0 0"}), reference(kCmyk, {"0 0 0 100"})).message,
        HasSubstr("row 2, column \"CMYK_M\" (number 2): the device value -1 is"));
}

TEST(pairing, scalesOfRgb_areNotedWhereTheyDifferOrReachOnlyTo1) {
    const auto scales = [](const char* left, const char* right) {
        return findingsOf(paired(measured(kRgb, {left}), reference(kRgb, {right})), Kind::deviceScale).size();
    };
    EXPECT_EQ(scales("255 0 0", "255 0 0"), 0U);
    EXPECT_EQ(scales("100 0 0", "100 0 0"), 0U);
    EXPECT_EQ(scales("255 0 0", "100 0 0"), 2U);
    EXPECT_EQ(scales("1 0 0", "1 0 0"), 2U);
}

TEST(pairing, valuesThatAreAll0_fitAnyScale) {
    for (const char* const other : {"0 0 1", "0 0 100", "0 0 255"}) {
        const Pairing pairing = paired(measured(kRgb, {"0 0 0"}), reference(kRgb, {other, "0 0 0"}));
        EXPECT_EQ(pairsOf(pairing), "0-1");
    }
}

// Taken for percent they would pair with nothing but black.
TEST(pairing, darkPatchesOfAChartUpTo255_areReadOnItsScale) {
    const Pairing pairing = paired(measured(kRgb, {"0 0 0", "51 51 51", "0 51 90"}),
                                   reference(kRgb, {"255 255 255", "0 51 90", "51 51 51", "0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "0-3 1-2 2-1");
    EXPECT_THAT(findingsOf(pairing, Kind::deviceScale), IsEmpty());
}

TEST(pairing, scalesOf10And16Bits_areKnownByTheirWhite_andNoted) {
    for (const char* const rows :
         {"1023 1023 1023|0 0 0|204.6 0 613.8", "65535 65535 65535|0 0 0|13107 0 39321"}) {
        Rows all;
        std::string text = rows;
        for (std::size_t end = text.find('|'); end != std::string::npos; end = text.find('|')) {
            all.push_back(text.substr(0, end));
            text.erase(0, end + 1);
        }
        all.push_back(text);
        const Pairing pairing =
            paired(measured(kRgb, all), reference(kRgb, {"0 0 0", "51 0 153", "255 255 255"}));
        EXPECT_EQ(pairsOf(pairing), "0-2 1-0 2-1");
        EXPECT_THAT(findingsOf(pairing, Kind::deviceScale),
                    ElementsAre(HasSubstr("measured.txt: the RGB values are taken to be on a scale of 0 to " +
                                          all[0].substr(0, all[0].find(' '))),
                                HasSubstr("0 to 255")));
    }
}

TEST(pairing, darkPatchesOfAChartOf16Bits_areReadOnItsScale) {
    EXPECT_EQ(pairsOf(paired(measured(kRgb, {"0 0 0", "300 300 300", "9000 40 7"}),
                             reference(kRgb, {"65535 65535 65535", "9000 40 7", "300 300 300"}))),
              "1-2 2-1");
}

TEST(pairing, rowsBeyondTheScaleOfTheOthers_areLeftOut_whichIsWarnedOf) {
    for (const char* const wrong : {"40 0 0 -1", "40 0 0 900"}) {
        const Pairing pairing = paired(measured(kCmyk, {"0 0 0 0", "100 0 0 0", wrong}),
                                       reference(kCmyk, {"100 0 0 0", "40 0 0 0", "0 0 0 0"}));
        EXPECT_EQ(pairsOf(pairing), "0-2 1-0");
        EXPECT_EQ(pairing.unusedMeasured, 1);
        EXPECT_EQ(pairing.unusedReference, 1);
        EXPECT_THAT(
            findingsOf(pairing, Kind::deviceScale),
            ElementsAre("!measured.txt: the CMYK values of 1 of 3 samples do not lie within 0 to 100, "
                        "the first in row 3 (CMYK " +
                        std::string(wrong) + "); left out, correct them to have them compared"));
    }
}

TEST(pairing, deviceValuesOnNoScale_giveWayToIdentifiers_whichIsWarnedOf) {
    const std::string fields = std::string("SAMPLE_ID ") + kRgb;
    const Pairing pairing =
        paired(measured(fields, {"a 4095 0 0", "b 4000 0 0"}), reference(fields, {"b 250 0 0", "a 255 0 0"}));
    EXPECT_EQ(pairing.by, "SAMPLE_ID");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
    EXPECT_THAT(
        findingsOf(pairing, Kind::deviceScale),
        ElementsAre(AllOf(HasSubstr("!measured.txt: row 1, column \"RGB_R\" (number 2): the device value "
                                    "4095 is on none of the scales"),
                          HasSubstr("the RGB values are not used"))));
}

// Of 0 to 100, or dark ones of 0 to 255.
TEST(pairing, twoScalesThatPairAsMany_areToldWhereColoursDoNotDecide) {
    const OwnedChart strip = measured(kRgb, {"0 0 0", "100 100 100"});
    const OwnedChart chart = reference(kRgb, {"0 0 0", "100 100 100", "255 255 255"});
    const Pairing pairing = paired(strip, chart);
    EXPECT_EQ(pairsOf(pairing), "0-0 1-1");
    EXPECT_THAT(
        findingsOf(pairing, Kind::deviceScale),
        ElementsAre("!measured.txt: the RGB values are taken to be on a scale of 0 to 255, but as many "
                    "samples would pair, with others, on one of 0 to 100; check the pairs, or pair by "
                    "identifiers (--pair id)"));
}

Pairing pairedByColors(const Chart& left, const Chart& right, int rightRow, double otherwise) {
    PairOptions options;
    options.medianOf = [=](const std::vector<RowPair>& pairs) {
        return pairs.back().reference.front() == rightRow ? 0.4 : otherwise;
    };
    return pairRows(left, right, options);
}

TEST(pairing, ofTwoScalesThatPairAsMany_theColoursTakeOne) {
    const OwnedChart strip = measured(kRgb, {"0 0 0", "100 100 100"});
    const OwnedChart chart = reference(kRgb, {"0 0 0", "100 100 100", "255 255 255"});
    EXPECT_EQ(pairsOf(pairedByColors(strip, chart, 1, 20)), "0-0 1-1");
    const Pairing pairing = pairedByColors(strip, chart, 2, 20);
    EXPECT_EQ(pairsOf(pairing), "0-0 1-2");
    EXPECT_THAT(
        findingsOf(pairing, Kind::deviceScale),
        ElementsAre("measured.txt: the RGB values are taken to be on a scale of 0 to 100, on which the "
                    "colours agree far better than on one of 0 to 255",
                    HasSubstr("reference.txt: the RGB values are taken to be on a scale of 0 to 255")));
}

// 20 is no value of the chart on a scale of 0 to 100.
TEST(pairing, scaleThatPairsFewer_isTakenWhereColoursSayItClearly) {
    const OwnedChart strip = measured(kRgb, {"0 0 0", "20 20 20", "100 100 100"});
    const OwnedChart chart = reference(kRgb, {"0 0 0", "20 20 20", "100 100 100", "255 255 255"});
    EXPECT_EQ(pairsOf(pairedByColors(strip, chart, 3, 7)), "0-0 2-3");
    EXPECT_EQ(pairsOf(pairedByColors(strip, chart, 3, 2)), "0-0 1-1 2-2");
}

TEST(pairing, deviceValueThatIsNotFinite_isUnreadable) {
    const Refused refused =
        refusalOf(measured(kCmyk, {"0 0 0 0", "0 0 nan 0"}), reference(kCmyk, {"0 0 0 0", "0 0 0 0"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::unreadable);
    EXPECT_THAT(refused.message, AllOf(HasSubstr("measured.txt: row 2"), HasSubstr("\"CMYK_Y\"")));
}

TEST(pairing, deviceValueThatIsDoubtful_isUnreadable) {
    const OwnedChart left = measured(kCmyk, {"0 0 0 0"});
    Chart doubtful = left;
    doubtful.doubts = {{0, 0, 1, "N/A"}};
    const Refused refused = refusalOf(doubtful, reference(kCmyk, {"0 0 0 0"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::unreadable);
    EXPECT_THAT(refused.message, HasSubstr("\"N/A\" is no number"));
}

TEST(pairing, anotherChart_isRefused_howeverTheIdentifiersAgree) {
    const std::string fields = std::string("SAMPLE_ID ") + kCmyk;
    const Refused refused = refusalOf(measured(fields, {"1 0 0 0 40", "2 0 0 0 70"}),
                                      reference(fields, {"1 0 40 0 0", "2 0 70 0 0"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, AllOf(HasSubstr("no CMYK value of measured.txt has a counterpart within 0.3 "
                                                 "percent in reference.txt"),
                                       HasSubstr("--pair id")));
}

TEST(pairing, deviceValuesAskedForButMissing_areRefused) {
    const Refused refused =
        refusalOf(measured("SAMPLE_ID", {"1"}), reference("SAMPLE_ID", {"1"}), PairChoice::deviceValues);
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, HasSubstr("do not hold the same device values"));
}

// Identifiers.

TEST(pairing, identifiers_pairShuffledSubsets) {
    const Pairing pairing = paired(measured("SAMPLE_ID LAB_L", {"A3 1", "A1 2"}),
                                   reference("LAB_L SAMPLE_ID", {"1 A1", "2 A2", "3 A3"}));
    EXPECT_EQ(pairing.rule, PairRule::identifiers);
    EXPECT_EQ(pairing.by, "SAMPLE_ID");
    EXPECT_EQ(pairsOf(pairing), "0-2 1-0");
    EXPECT_EQ(pairing.unusedReference, 1);
    EXPECT_THAT(findingsOf(pairing, Kind::unusedSamples),
                ElementsAre("1 of 3 samples of reference.txt is unused"));
}

TEST(pairing, identifierWithoutCounterpart_isWarnedAbout) {
    const Pairing pairing =
        paired(measured("SAMPLE_ID", {"A1", "x\x1B[2J", "A3"}), reference("SAMPLE_ID", {"A3", "A1"}));
    EXPECT_EQ(pairsOf(pairing), "0-1 2-0");
    EXPECT_THAT(findingsOf(pairing, Kind::unusedSamples),
                ElementsAre("!1 of 3 samples of measured.txt has no counterpart in reference.txt: row 2 "
                            "(SAMPLE_ID \"x\\x1b[2J\")"));
}

TEST(pairing, identifiers_areLookedForInOrder) {
    const std::string keywords = "KEYWORD \"SampleID\"\nKEYWORD \"SAMPLE_NAME\"\nKEYWORD \"SAMPLE_LOC\"\n";
    const auto byOf = [&](const std::string& left, const std::string& right) {
        const auto rowOf = [](const std::string& fields) {
            std::string row = "k";
            for (auto blanks = std::count(fields.begin(), fields.end(), ' '); blanks > 0; --blanks)
                row += " k";
            return row;
        };
        return paired(measured(left, {rowOf(left)}, keywords), reference(right, {rowOf(right)}, keywords)).by;
    };
    EXPECT_EQ(byOf("SAMPLE_LOC SAMPLE_NAME SAMPLE_ID SampleID", "SAMPLE_LOC SAMPLE_NAME SAMPLE_ID SampleID"),
              "SampleID");
    EXPECT_EQ(byOf("SAMPLE_LOC SAMPLE_NAME SAMPLE_ID SampleID", "SAMPLE_LOC SAMPLE_NAME SAMPLE_ID"),
              "SAMPLE_ID");
    EXPECT_EQ(byOf("SAMPLE_LOC SAMPLE_NAME SAMPLE_ID", "SAMPLE_LOC SAMPLE_NAME SampleID"), "SAMPLE_NAME");
    EXPECT_EQ(byOf("SAMPLE_LOC SAMPLE_NAME", "SAMPLE_LOC SAMPLE_ID"), "SAMPLE_LOC");
}

TEST(pairing, identifiers_compareExactlyAsText) {
    const Pairing pairing =
        paired(measured("SAMPLE_ID", {"a", "A", "01b"}), reference("SAMPLE_ID", {"A", "1b"}));
    EXPECT_EQ(pairsOf(pairing), "1-0");
}

TEST(pairing, wholeNumbersWrittenDifferently_pair_whichIsNoted) {
    const Pairing pairing =
        paired(measured("SAMPLE_ID", {"3", "10", "2"}), reference("SAMPLE_ID", {"002", "003", "010", "004"}));
    EXPECT_EQ(pairsOf(pairing), "0-1 1-2 2-0");
    EXPECT_THAT(findingsOf(pairing, Kind::ambiguousSamples),
                ElementsAre("SAMPLE_ID is compared as a number: \"3\" and \"003\" are taken for the same"));
    EXPECT_EQ(pairsOf(paired(measured("SAMPLE_ID", {"0", "1"}), reference("SAMPLE_ID", {"1.0", "0.00"}))),
              "0-1 1-0");
}

// 998 and 999 alone are padded, 1000 and 1001 are as they are.
TEST(pairing, numbersOfWhichOnlySomeArePadded_pairThroughout) {
    EXPECT_EQ(pairsOf(paired(measured("SAMPLE_ID", {"999", "1000", "1001"}),
                             reference("SAMPLE_ID", {"0998", "0999", "1000", "1001"}))),
              "0-1 1-2 2-3");
}

TEST(pairing, numbersWrittenAlike_needNoNote) {
    EXPECT_THAT(paired(measured("SAMPLE_ID", {"1", "2"}), reference("SAMPLE_ID", {"2", "1"})).findings,
                IsEmpty());
}

TEST(pairing, numbersThatAreNotUniqueAsNumbers_compareAsText) {
    EXPECT_EQ(pairsOf(paired(measured("SAMPLE_ID", {"1", "01", "2"}), reference("SAMPLE_ID", {"01", "02"}))),
              "1-0");
}

TEST(pairing, identifiersOfOtherLetterCaseOrWithLeadingZeros_pair_whichIsNoted) {
    const Pairing padded = paired(measured("SAMPLE_ID", {"A01", "A10", "B002"}),
                                  reference("SAMPLE_ID", {"B2", "A10", "A1", "A100"}));
    EXPECT_EQ(pairsOf(padded), "0-2 1-1 2-0");
    EXPECT_THAT(findingsOf(padded, Kind::ambiguousSamples),
                ElementsAre("SAMPLE_ID is compared without regard to letter case and leading zeros: \"A01\" "
                            "and \"A1\" are taken for the same"));
    EXPECT_EQ(pairsOf(paired(measured("SAMPLE_ID", {"a1", "b1"}), reference("SAMPLE_ID", {"B1", "A1"}))),
              "0-1 1-0");
}

TEST(pairing, zerosWithinNumbersAndFractions_areNotLeading) {
    EXPECT_EQ(pairsOf(paired(measured("SAMPLE_ID", {"A10", "B0", "x0.05"}),
                             reference("SAMPLE_ID", {"x0.5", "B00", "A1", "A010"}))),
              "0-3 1-1");
}

// "A1" and "a1" are two samples of the reference.
TEST(pairing, letterCaseThatTellsSamplesApart_counts) {
    EXPECT_EQ(
        pairsOf(paired(measured("SAMPLE_ID", {"a1", "b01"}), reference("SAMPLE_ID", {"A1", "a1", "b1"}))),
        "0-1");
}

TEST(pairing, identifierAskedFor_isTakenAlone) {
    const char* const fields = "SAMPLE_ID SAMPLE_NAME";
    const OwnedChart left = measured(fields, {"1 A", "2 B"});
    const OwnedChart right = reference(fields, {"1 B", "2 A"});
    PairOptions options;
    options.choice = PairChoice::identifiers;
    options.identifier = "SAMPLE_NAME";
    const Pairing pairing = pairRows(left, right, options);
    EXPECT_EQ(pairing.by, "SAMPLE_NAME");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
    EXPECT_THAT(pairing.findings, IsEmpty());
    options.identifier = "SAMPLE_LOC";
    try {
        pairRows(left, right, options);
        ADD_FAILURE() << "the rows were paired";
    } catch (const Refusal& refusal) {
        EXPECT_THAT(refusal.what(), HasSubstr("the files do not both have SAMPLE_LOC"));
    }
}

TEST(pairing, identifiersAreUnconfirmed_whereNoDeviceValuesAgree) {
    const std::string fields = std::string("SAMPLE_ID ") + kCmyk;
    const OwnedChart inks = measured(fields, {"1 0 0 0 0", "2 0 40 0 0"});
    EXPECT_FALSE(paired(inks, inks, PairChoice::identifiers).isUnconfirmed);
    EXPECT_FALSE(paired(inks, inks).isUnconfirmed);
    EXPECT_TRUE(paired(inks, reference("SAMPLE_ID", {"1", "2"})).isUnconfirmed);
    const OwnedChart blank = measured(fields, {"1 0 0 0 0", "2 0 0 0 0"});
    EXPECT_TRUE(paired(blank, blank).isUnconfirmed);
    EXPECT_TRUE(paired(blank, blank, PairChoice::identifiers).isUnconfirmed);
}

TEST(pairing, doubledIdentifiers_giveWayToTheNext) {
    const char* const fields = "SAMPLE_ID SAMPLE_NAME";
    const Pairing pairing = paired(measured(fields, {"x a", "x b"}), reference(fields, {"1 b", "2 a"}));
    EXPECT_EQ(pairing.by, "SAMPLE_NAME");
    EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
}

TEST(pairing, identifierThatPairsNothing_givesWayToTheNext) {
    const char* const fields = "SAMPLE_ID SAMPLE_NAME";
    EXPECT_EQ(paired(measured(fields, {"1 a", "2 b"}), reference(fields, {"x1 a", "x2 b"})).by,
              "SAMPLE_NAME");
}

TEST(pairing, doubledIdentifiers_areRefusedWithTheirRows) {
    for (const PairChoice choice : {PairChoice::automatic, PairChoice::identifiers}) {
        const Refused refused =
            refusalOf(measured("SAMPLE_ID", {"a", "b"}), reference("SAMPLE_ID", {"b", "a", "b"}), choice);
        EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
        EXPECT_THAT(refused.message, HasSubstr("SAMPLE_ID \"b\" stands in rows 1 and 3 of reference.txt"));
    }
}

// n0x to n18x, and n0x once more.
Rows namesOfWhichOneIsDoubled() {
    Rows names;
    for (int i = 0; i < 19; ++i)
        names.push_back("n" + std::to_string(i) + "x");
    names.push_back("n0x");
    return names;
}

TEST(pairing, doubledIdentifierAmongMany_isLeftOut_whichIsTold) {
    const Rows names = namesOfWhichOneIsDoubled();
    const OwnedChart many = reference("SAMPLE_NAME", names);
    const Pairing some = pairedWith(2, measured("SAMPLE_NAME", {"n3x", "n18x", "n1x"}), many);
    EXPECT_EQ(pairsOf(some), "0-3 1-18 2-1");
    EXPECT_THAT(
        findingsOf(some, Kind::ambiguousSamples),
        ElementsAre("SAMPLE_NAME \"n0x\" stands in rows 1 and 20 of reference.txt; rows whose SAMPLE_NAME "
                    "is not unique in both files (0 of 3 in measured.txt, 2 of 20 in reference.txt) are "
                    "left out, give each a name of its own to have them compared"));
    const Pairing both = pairedWith(2, measured("SAMPLE_NAME", names), many);
    EXPECT_EQ(both.pairs.size(), 18U);
    EXPECT_EQ(both.pairs.front().measured, 1);
    EXPECT_EQ(both.unusedMeasured, 2);
    EXPECT_EQ(both.unusedReference, 2);
    EXPECT_TRUE(both.isUnconfirmed);
    EXPECT_THAT(findingsOf(both, Kind::ambiguousSamples),
                ElementsAre(HasSubstr("!SAMPLE_NAME \"n0x\" stands in rows 1 and 20 of measured.txt")));
    EXPECT_EQ(pairedWith(2, measured("SAMPLE_NAME", names), many, PairChoice::identifiers).pairs.size(), 18U);
    EXPECT_EQ(pairRows(measured("SAMPLE_NAME", names), many, {PairChoice::automatic, "SAMPLE_NAME", {}})
                  .pairs.size(),
              18U);
}

TEST(pairing, doubledIdentifierInAnotherSpelling_isLeftOutToo) {
    Rows names = namesOfWhichOneIsDoubled();
    names.push_back("N0X");
    for (const char* const further : {"a", "b", "c", "d", "e", "f", "g", "h", "i"})
        names.push_back(further);
    EXPECT_EQ(pairsOf(pairedWith(2,
                                 measured("SAMPLE_NAME", {"n0x", "n1x", "n2x", "n3x", "n4x", "n5x", "n6x",
                                                          "n7x", "n8x", "n9x"}),
                                 reference("SAMPLE_NAME", names))),
              "1-1 2-2 3-3 4-4 5-5 6-6 7-7 8-8 9-9");
}

TEST(pairing, doubledIdentifiersOfOtherColoursOrInGreatNumber_areRefused) {
    Rows names = namesOfWhichOneIsDoubled();
    const OwnedChart few = measured("SAMPLE_NAME", {"n3x", "n18x", "n1x"});
    EXPECT_THROW(pairedWith(40, few, reference("SAMPLE_NAME", names)), Refusal);
    names.push_back(names.back());
    EXPECT_THROW(pairedWith(2, few, reference("SAMPLE_NAME", names)), Refusal);
    names = namesOfWhichOneIsDoubled();
    names.push_back("\"\"");
    EXPECT_THROW(pairedWith(2, few, reference("SAMPLE_NAME", names)), Refusal);
    // Most names of the smaller file must pair.
    EXPECT_THROW(pairedWith(2, measured("SAMPLE_NAME", {"n3x", "y", "z"}),
                            reference("SAMPLE_NAME", namesOfWhichOneIsDoubled())),
                 Refusal);
}

// At a median of `named` where the first sample is paired by its name, else of `counted`.
Pairing pairedByColours(double counted, double named, const char* const second,
                        PairChoice choice = PairChoice::automatic) {
    const char* const fields = "SAMPLE_ID SAMPLE_NAME";
    return pairRows(measured(fields, {"1 a", std::string(second) + " b"}),
                    reference(fields, {"1 c", "2 b", "3 a"}),
                    {choice, "", [=](const std::vector<RowPair>& pairs) {
                         return pairs.front().reference.front() == 0 ? counted : named;
                     }});
}

TEST(pairing, numbersThatCountTheRows_giveWayToNamesOfFarNearerColours_whichIsNoted) {
    const Pairing pairing = pairedByColours(30, 0.5, "2");
    EXPECT_EQ(pairing.by, "SAMPLE_NAME");
    EXPECT_EQ(pairsOf(pairing), "0-2 1-1");
    EXPECT_THAT(findingsOf(pairing, Kind::otherPairing),
                ElementsAre("SAMPLE_ID only counts the rows of both files, so that they are paired by "
                            "SAMPLE_NAME, with a median difference of 0.5 instead of 30"));
    EXPECT_EQ(pairedByColours(2.9, 0.5, "2").by, "SAMPLE_ID");
    EXPECT_EQ(pairedByColours(std::nan(""), std::nan(""), "2").by, "SAMPLE_ID");
    EXPECT_EQ(pairedByColours(30, 8, "2").by, "SAMPLE_ID");
    EXPECT_EQ(pairedByColours(60, 11, "2").by, "SAMPLE_ID");
    EXPECT_EQ(pairedByColours(30, 0.5, "2", PairChoice::identifiers).by, "SAMPLE_ID");
}

TEST(pairing, numbersThatNameSamples_goBeforeNames) {
    EXPECT_EQ(pairedByColours(30, 0.5, "3").by, "SAMPLE_ID");
}

TEST(pairing, emptyIdentifiers_areRefusedWithTheirRow) {
    const Rows rows = {"a 1", "\"\" 2"};
    EXPECT_THAT(refusalOf(measured("SAMPLE_ID LAB_L", rows), reference("SAMPLE_ID LAB_L", rows)).message,
                AllOf(HasSubstr("SAMPLE_ID is empty in row 2 of measured.txt"), HasSubstr("--pair order")));
}

TEST(pairing, identifiersThatShareNothing_areRefused) {
    const Refused refused =
        refusalOf(measured("SAMPLE_ID", {"A1", "A2"}), reference("SAMPLE_ID", {"B1", "B2"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, HasSubstr("no SAMPLE_ID of measured.txt stands in reference.txt too"));
}

TEST(pairing, nothingInCommon_isRefusedWithBothReasons) {
    const Refused refused =
        refusalOf(measured("LAB_L LAB_A LAB_B", {"1 2 3"}), reference("SAMPLE_ID", {"1"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message,
                AllOf(HasSubstr("do not hold the same device values"),
                      HasSubstr("share no identifier (SampleID, SAMPLE_ID, SAMPLE_NAME or SAMPLE_LOC)"),
                      HasSubstr("--pair order pairs the rows in their order")));
}

TEST(pairing, remedyForUnequalCounts_doesNotPromiseThatOrderPairs) {
    EXPECT_THAT(refusalOf(measured("LAB_L", {"1"}), reference("LAB_L", {"1", "2"})).message,
                HasSubstr("the numbers of samples differ too"));
}

TEST(pairing, identifiersWithOtherSeparators_pair_whichIsNoted) {
    for (const char* spelling : {"\"Ink_7_red\"", "\"Ink-7-red\"", "\"INK 07  red \"", "\"Ink7red\""}) {
        const Pairing pairing = paired(measured("SAMPLE_NAME", {spelling, "\"paper 0\""}),
                                       reference("SAMPLE_NAME", {"\"paper 0\"", "\"Ink 7 red\""}));
        EXPECT_EQ(pairsOf(pairing), "0-1 1-0") << spelling;
        EXPECT_THAT(findingsOf(pairing, Kind::ambiguousSamples),
                    ElementsAre(HasSubstr("letter case, leading zeros, blanks, \"_\" and \"-\": ")))
            << spelling;
    }
}

TEST(pairing, separatorsThatTellSamplesApart_count) {
    EXPECT_EQ(pairsOf(paired(measured("SAMPLE_NAME", {"A-1", "A1", "B_2"}),
                             reference("SAMPLE_NAME", {"A1", "B-2", "A-1"}))),
              "0-2 1-0");
    // Numbers behind each other are no other number.
    EXPECT_EQ(pairsOf(paired(measured("SAMPLE_NAME", {"1-12", "-5", "x"}),
                             reference("SAMPLE_NAME", {"5", "11-2", "x", "1_12"}))),
              "0-3 2-2");
}

TEST(pairing, textsOfSeparatorsAlone_areNotTakenForOneAnother) {
    EXPECT_EQ(pairsOf(paired(measured("SAMPLE_NAME", {"-", "x"}), reference("SAMPLE_NAME", {"_", "x"}))),
              "1-1");
}

TEST(pairing, identifierUnderAnotherName_pairsAcross_whichIsWarnedOf) {
    const OwnedChart left =
        measured("SAMPLE_ID SAMPLE_LOC", {"1 B01", "2 A01", "3 A02"}, "KEYWORD \"SAMPLE_LOC\"\n");
    const OwnedChart right = reference("SAMPLE_ID", {"A1", "A2", "B1"});
    for (const PairChoice choice : {PairChoice::automatic, PairChoice::identifiers}) {
        const Pairing pairing = paired(left, right, choice);
        EXPECT_EQ(pairing.by, "SAMPLE_LOC against SAMPLE_ID");
        EXPECT_EQ(pairsOf(pairing), "0-2 1-0 2-1");
        EXPECT_TRUE(pairing.isUnconfirmed);
        EXPECT_THAT(
            findingsOf(pairing, Kind::ambiguousSamples),
            ElementsAre(HasSubstr("!SAMPLE_LOC of measured.txt holds what SAMPLE_ID of reference.txt does "
                                  "(\"B01\" and \"B1\")")));
    }
}

TEST(pairing, identifierUnderAnotherNameOfOtherColours_isRefused) {
    const OwnedChart left =
        measured("SAMPLE_ID SAMPLE_LOC", {"1 B01", "2 A01", "3 A02"}, "KEYWORD \"SAMPLE_LOC\"\n");
    const OwnedChart right = reference("SAMPLE_ID", {"A1", "A2", "B1"});
    const auto pairedAt = [&](double median) {
        return pairRows(left, right,
                        {PairChoice::automatic, "", [=](const std::vector<RowPair>&) { return median; }});
    };
    EXPECT_EQ(pairsOf(pairedAt(2)), "0-2 1-0 2-1");
    EXPECT_THROW(pairedAt(40), Refusal);
}

TEST(pairing, identifierUnderAnotherNameOfFewSamples_isNotTaken) {
    const OwnedChart left =
        measured("SAMPLE_ID SAMPLE_LOC", {"1 B1", "2 C1", "3 C2"}, "KEYWORD \"SAMPLE_LOC\"\n");
    EXPECT_THAT(refusalOf(left, reference("SAMPLE_ID", {"A1", "A2", "B1"})).message,
                HasSubstr("no SAMPLE_ID of measured.txt stands in reference.txt too"));
    // Numbers in two columns count something each.
    EXPECT_THAT(refusalOf(measured("SAMPLE_NAME", {"1", "2"}), reference("SAMPLE_ID", {"1", "2"})).message,
                HasSubstr("share no identifier"));
}

TEST(pairing, doubledIdentifierUnderAnotherName_isToldInTheRefusal) {
    const OwnedChart left =
        measured("SAMPLE_ID SAMPLE_LOC", {"1 A01", "2 A01", "3 A02"}, "KEYWORD \"SAMPLE_LOC\"\n");
    EXPECT_THAT(
        refusalOf(left, reference("SAMPLE_ID", {"A1", "A2", "A3"})).message,
        HasSubstr("SAMPLE_LOC of measured.txt holds what SAMPLE_ID of reference.txt does, but SAMPLE_LOC "
                  "\"A01\" stands in rows 1 and 2 of measured.txt"));
}

TEST(pairing, identifierAskedFor_isTakenInAnyLetterCase_andWithoutAChoiceOfRule) {
    const OwnedChart left = measured("SAMPLE_ID SAMPLE_NAME", {"1 a", "2 b"});
    const OwnedChart right = reference("SAMPLE_ID SAMPLE_NAME", {"1 b", "2 a"});
    for (const PairChoice choice : {PairChoice::automatic, PairChoice::identifiers}) {
        const Pairing pairing = pairRows(left, right, PairOptions{choice, "sample_name", {}});
        EXPECT_EQ(pairing.by, "SAMPLE_NAME");
        EXPECT_EQ(pairsOf(pairing), "0-1 1-0");
    }
}

TEST(pairing, identifierAskedForBesideAnotherRule_isRefused) {
    const OwnedChart chart = measured("SAMPLE_ID", {"1", "2"});
    const auto kindOf = [&](const PairOptions& options) {
        try {
            pairRows(chart, chart, options);
        } catch (const Refusal& refusal) {
            return refusal.kind();
        }
        throw std::invalid_argument("the rows were paired");
    };
    EXPECT_EQ(kindOf({PairChoice::order, "SAMPLE_ID", {}}), Refusal::Kind::usage);
    EXPECT_EQ(kindOf({PairChoice::deviceValues, "SAMPLE_ID", {}}), Refusal::Kind::usage);
    EXPECT_EQ(kindOf({PairChoice::identifiers, "SAMPLE_SIZE", {}}), Refusal::Kind::usage);
}

TEST(pairing, rowsWithInksThatTheOtherChartLacks_takeNoPart_whichIsNoted) {
    const std::string fields = std::string(kCmyk) + " SPOT_1";
    const OwnedChart chart =
        reference(fields, {"0 0 0 0 0", "0 0 0 0 50", "100 0 0 0 0", "0 0 0 0 100", "0 80 0 0 0"});
    const OwnedChart strip = measured(kCmyk, {"0 80 0 0", "0 0 0 0"});
    const Pairing pairing = paired(strip, chart);
    EXPECT_EQ(pairing.by, "CMYK");
    EXPECT_EQ(pairsOf(pairing), "0-4 1-0");
    EXPECT_EQ(pairing.unusedReference, 3);
    EXPECT_THAT(
        findingsOf(pairing, Kind::deviceScale),
        ElementsAre("reference.txt: 2 of 5 samples hold SPOT_1 and take no part, as measured.txt has no "
                    "such values"));
    const Pairing reversed = paired(chart, strip);
    EXPECT_EQ(pairsOf(reversed), "0-1 4-0");
    EXPECT_EQ(reversed.unusedMeasured, 3);
}

TEST(pairing, repeatsBesideRowsThatTakeNoPart_areWarnedAbout) {
    const OwnedChart chart =
        reference(std::string(kCmyk) + " SPOT_1", {"0 0 0 0 0", "0 0 0 0 50", "100 0 0 0 0", "0 80 0 0 0"});
    EXPECT_THAT(
        findingsOf(paired(measured(kCmyk, {"100 0 0 0", "0 0 0 0", "0 0 0 0"}), chart), Kind::deviceScale),
        ElementsAre(HasSubstr("!reference.txt: 1 of 4 samples hold SPOT_1")));
}

TEST(pairing, rowsWithoutTheFurtherInks_thatPairFewSamples_giveWayToIdentifiers) {
    const std::string id = "SAMPLE_NAME ";
    const OwnedChart chart =
        reference(id + kCmyk + " SPOT_1", {"a 1 0 0 0 0", "b 2 0 0 0 9", "c 3 0 0 0 0", "d 4 0 0 0 0"});
    const Pairing pairing = paired(measured(id + kCmyk, {"d 50 0 0 0", "a 60 0 0 0", "c 3 0 0 0"}), chart);
    EXPECT_EQ(pairing.by, "SAMPLE_NAME");
}

// 0, 1/8 ... 1 of 255 and of 100, rounded.
TEST(pairing, wholeNumbersOfTwoScales_pairUpToTheirRounding_whichIsNoted) {
    const Rows percent = {"0 0 0", "13 0 0", "38 0 0", "63 0 0", "87 0 0", "100 100 100"};
    const Rows bytes = {"0 0 0", "32 0 0", "96 0 0", "159 0 0", "223 0 0", "255 255 255"};
    const Pairing pairing = paired(measured(kRgb, percent), reference(kRgb, bytes));
    EXPECT_EQ(pairing.pairs.size(), 6U);
    EXPECT_THAT(
        findingsOf(pairing, Kind::ambiguousSamples),
        ElementsAre("the RGB values are whole numbers of two scales, so that they pair within 0.7 percent"));
    EXPECT_THAT(findingsOf(paired(reference(kRgb, bytes), measured(kRgb, percent), PairChoice::order),
                           Kind::otherPairing),
                IsEmpty());
    // A fraction shows that nothing was rounded.
    EXPECT_EQ(paired(measured(kRgb, {"0 0 0", "13 0 0", "63 0 0.5", "100 100 100"}), reference(kRgb, bytes))
                  .pairs.size(),
              2U);
}

TEST(pairing, wholePercentAgainstDecimals_pairsUpToItsRounding_whichIsNoted) {
    const OwnedChart left =
        measured(kCmyk, {"67 0 0 0", "0 33 0 0", "100 100 100 100", "33 0 0 0", "0 67 0 0", "0 0 0 0"});
    const OwnedChart right = reference(
        kCmyk, {"0 0 0 0", "33.33 0 0 0", "66.67 0 0 0", "0 33.33 0 0", "0 66.67 0 0", "100 100 100 100"});
    const Pairing pairing = pairedWith(0.5, left, right);
    EXPECT_EQ(pairsOf(pairing), "0-2 1-3 2-5 3-1 4-4 5-0");
    ASSERT_EQ(pairing.findings.size(), 1U);
    EXPECT_THAT(
        findingsOf(pairing, Kind::ambiguousSamples),
        ElementsAre("the CMYK values of measured.txt stand in steps of 1 percent, as after rounding, so "
                    "that they pair within 0.51 percent; within 0.3 percent 2 instead of 6 samples "
                    "would pair"));
    EXPECT_THAT(findingsOf(pairedWith(0.5, right, left), Kind::ambiguousSamples),
                ElementsAre(HasSubstr("the CMYK values of measured.txt stand in steps of 1 percent")));
    // Colours of another chart.
    EXPECT_EQ(pairsOf(pairedWith(40, left, right)), "2-5 5-0");
    EXPECT_EQ(pairsOf(pairedWith(std::nan(""), left, right)), "2-5 5-0");
    // Nothing tells about colours.
    EXPECT_EQ(pairsOf(paired(left, right)), "2-5 5-0");
}

TEST(pairing, roundedValuesOfWhichNonePairsWithinTheTolerance_pairAllTheSame) {
    const OwnedChart left = measured(kCmyk, {"67 0 0 0", "0 33 0 0", "33 0 0 0", "0 67 0 0"});
    const OwnedChart right = reference(
        kCmyk, {"33.33 0 0 0", "66.67 0 0 0", "0 33.33 0 0", "0 66.67 0 0", "0 0 0 0", "100 100 100 100"});
    EXPECT_EQ(pairsOf(pairedWith(0.5, left, right)), "0-1 1-2 2-0 3-3");
    EXPECT_THROW(pairedWith(40, left, right), Refusal);
}

TEST(pairing, decimalsCutOff_pairUpToTheStep_whichIsNoted) {
    const Rows cut = {"0 0 0 0", "33 0 0 0", "66 0 0 0", "0 66 0 0", "100 0 0 0"};
    const Rows decimals = {"0 0 0 0", "33.33 0 0 0", "66.67 0 0 0", "0 66.67 0 0", "100 0 0 0"};
    const Pairing pairing = pairedWith(0.5, measured(kCmyk, cut), reference(kCmyk, decimals));
    EXPECT_EQ(pairsOf(pairing), "0-0 1-1 2-2 3-3 4-4");
    EXPECT_THAT(findingsOf(pairing, Kind::ambiguousSamples),
                ElementsAre(HasSubstr("pair within 1 percent; within 0.3 percent 2 instead of 5 samples")));
}

TEST(pairing, bytesRoundedAndCutOff_pairWithinOne) {
    const Rows rounded = {"0 0 0", "64 0 0", "128 0 0", "191 0 0", "255 255 255"};
    const Rows cut = {"0 0 0", "63 0 0", "127 0 0", "191 0 0", "255 255 255"};
    const Pairing pairing = pairedWith(0.5, measured(kRgb, rounded), reference(kRgb, cut));
    EXPECT_EQ(pairsOf(pairing), "0-0 1-1 2-2 3-3 4-4");
    EXPECT_THAT(findingsOf(pairing, Kind::ambiguousSamples),
                ElementsAre(AllOf(HasSubstr("RGB values of both files stand in steps of 0.39 percent"),
                                  HasSubstr("pair within 0.39 percent"))));
}

TEST(pairing, roundedValueBetweenTwoOthers_isLeftOut) {
    const Pairing pairing = pairedWith(
        0.5, measured(kCmyk, {"0 0 0 0", "33 0 0 0", "67 0 0 0", "100 0 0 0", "1 0 0 0"}),
        reference(kCmyk, {"0 0 0 0", "33.33 0 0 0", "66.67 0 0 0", "100 0 0 0", "0.6 0 0 0", "1.4 0 0 0"}));
    EXPECT_EQ(pairsOf(pairing), "0-0 1-1 2-2 3-3");
    EXPECT_THAT(
        findingsOf(pairing, Kind::ambiguousSamples),
        Contains("!1 sample of measured.txt, row 5 (CMYK 1 0 0 0), lies about as near to one device value "
                 "as to another; left out"));
}

TEST(pairing, valuesThatRoundingDoesNotExplain_doNotPairBeyondTheTolerance) {
    const Rows thirds = {"0 0 0 0", "33.33 0 0 0", "66.67 0 0 0", "0 33.33 0 0", "100 0 0 0"};
    const auto pairsWith = [&](const Rows& rows) {
        return pairsOf(pairedWith(0.5, measured(kCmyk, rows), reference(kCmyk, thirds)));
    };
    // Whole percent on both sides are those of two samples.
    EXPECT_EQ(
        pairsOf(pairedWith(0.5, measured(kCmyk, {"0 0 0 0", "33 0 0 0", "66 0 0 0", "0 34 0 0", "100 0 0 0"}),
                           reference(kCmyk, {"0 0 0 0", "34 0 0 0", "67 0 0 0", "0 33 0 0", "100 0 0 0"}))),
        "0-0 4-4");
    // Decimals show that nothing was rounded to whole percent.
    EXPECT_EQ(pairsWith({"0 0 0 0", "33 0 0 0", "67 0 0 0", "0 33 0 0", "100 0.01 0 0"}), "0-0 4-4");
    // Most samples are others.
    EXPECT_EQ(pairsWith({"0 0 0 0", "33 0 0 0", "40 0 0 0", "0 50 0 0", "100 0 0 0", "70 0 0 0"}), "0-0 4-4");
    // Steps of a tenth of the scale are exact.
    EXPECT_EQ(pairsWith({"0 0 0 0", "0.3 0 0 0", "0.7 0 0 0", "0 0.3 0 0", "1 0 0 0"}), "0-0 4-4");
}

TEST(pairing, equalValuesOnNoKnownScale_pair_whichIsNoted) {
    const OwnedChart left = measured(kRgb, {"0 0 940", "64 64 64", "64 502 64", "800 64 64"});
    const OwnedChart right =
        reference(kRgb, {"64 64 64", "940 940 940", "800 64 64", "64 502 64", "0 0 940", "1 2 3"});
    const Pairing pairing = pairedWith(0.5, left, right);
    EXPECT_EQ(pairing.rule, PairRule::deviceValues);
    EXPECT_EQ(pairsOf(pairing), "0-4 1-0 2-3 3-2");
    EXPECT_THAT(
        findingsOf(pairing, Kind::deviceScale),
        ElementsAre("the RGB values of measured.txt and reference.txt are on no known scale (the largest "
                    "is 940), but equal, so that the samples are paired by equal values"));
    EXPECT_THROW(pairedWith(40, left, right), Refusal);
    EXPECT_THROW(pairedWith(std::nan(""), left, right), Refusal);
    EXPECT_THROW(paired(left, right), Refusal);
    EXPECT_THROW(pairedWith(0.5, measured(kRgb, {"0 0 940", "64 64 64", "64 502 64", "800 64 65"}), right),
                 Refusal);
}

constexpr const char* kHighlights255[] = {"0 0 0 0", "51 0 0 0", "0 51 0 0", "26 26 26 0", "13 13 13 0"};

Pairing pairedHighlights(double median) {
    const Rows chart = {"0 0 0 0", "20 0 0 0", "0 20 0 0", "10 10 10 0", "5 5 5 0", "100 100 100 100"};
    return pairRows(measured(kCmyk, {std::begin(kHighlights255), std::end(kHighlights255)}),
                    reference(kCmyk, chart),
                    {PairChoice::automatic, "", [=](const std::vector<RowPair>&) { return median; }});
}

TEST(pairing, scaleThatPairsNearlyNothing_givesWayToOneThatPairsMost_whichIsNoted) {
    const Pairing pairing = pairedHighlights(0.5);
    EXPECT_EQ(pairsOf(pairing), "0-0 1-1 2-2 3-3 4-4");
    EXPECT_THAT(findingsOf(pairing, Kind::deviceScale),
                ElementsAre("measured.txt: the CMYK values are taken to be on a scale of 0 to 255"));
    EXPECT_EQ(pairsOf(pairedHighlights(40)), "0-0");
}

constexpr const char* kNamedRgb = "SAMPLE_NAME RGB_R RGB_G RGB_B";

Pairing pairedReadings(double median, const std::string& lastName) {
    return pairRows(measured(kNamedRgb, {"1 113 82 66", "2 193 152 132", lastName + " 255 0 90"}),
                    reference(kNamedRgb, {"1 115 81 68", "2 195 155 135", "3 255 4 99"}),
                    {PairChoice::automatic, "", [=](const std::vector<RowPair>&) { return median; }});
}

TEST(pairing, deviceValuesThatPairNothing_giveWayToIdentifiersOfEqualColours_whichIsWarnedOf) {
    const Rows left = {"skin 113 82 66", "sky 193 152 132", "red 255 0 90"};
    const Rows right = {"sky 195 155 135", "red 255 4 99", "skin 115 81 68"};
    const auto pairedAt = [&](double median) {
        return pairRows(measured(kNamedRgb, left), reference(kNamedRgb, right),
                        {PairChoice::automatic, "", [=](const std::vector<RowPair>&) { return median; }});
    };
    const Pairing pairing = pairedAt(2);
    EXPECT_EQ(pairing.by, "SAMPLE_NAME");
    EXPECT_EQ(pairsOf(pairing), "0-2 1-0 2-1");
    EXPECT_THAT(findingsOf(pairing, Kind::otherPairing),
                ElementsAre("!by RGB none of 3 samples would have a counterpart, so that they are paired by "
                            "SAMPLE_NAME; check that both files hold one chart"));
    EXPECT_THROW(pairedAt(40), Refusal);
}

TEST(pairing, identifiersThatCountRowsOrMissSamples_doNotReplaceDeviceValues) {
    EXPECT_THROW(pairedReadings(2, "3"), Refusal);
    EXPECT_THROW(pairedReadings(2, "x"), Refusal);
}

// Inks 1 and 2 are exchanged; the paper pairs in any order.
TEST(pairing, pureInksInAnotherOrder_areWarnedOf) {
    const char* const fields = "5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5";
    const Rows rows = {"0 0 0 0 0", "100 0 0 0 0", "0 100 0 0 0", "0 0 100 0 0"};
    const auto findings = [&](std::size_t one, std::size_t other) {
        const auto medianOf = [=](const std::vector<RowPair>& pairs) {
            if (pairs.size() != 1)
                return 0.1;
            auto row = static_cast<std::size_t>(pairs.front().measured);
            row = row == one ? other : row == other ? one : row;
            return static_cast<std::size_t>(pairs.front().reference.front()) == row ? 0.5 : 60.0;
        };
        return findingsOf(
            pairRows(measured(fields, rows), reference(fields, rows), {PairChoice::automatic, "", medianOf}),
            Kind::otherHues);
    };
    EXPECT_THAT(
        findings(1, 2),
        ElementsAre("!the pure inks look as if the files held them in another order: 5CLR_1 of measured.txt "
                    "as 5CLR_2 of reference.txt, 5CLR_2 of measured.txt as 5CLR_1 of reference.txt; name the "
                    "columns of both files in one order"));
    EXPECT_THAT(findings(1, 1), IsEmpty());
}

TEST(pairing, identifiersAskedFor_winOverDeviceValues_whichContradictThem) {
    const std::string fields = std::string("SAMPLE_ID ") + kCmyk;
    const Pairing pairing =
        paired(measured(fields, {"1 0 0 0 0", "2 0 40 0 0", "3 9 0 0 100"}),
               reference(fields, {"3 9.3 0 0 100", "2 0 0 0 0", "1 0 40 0 0"}), PairChoice::identifiers);
    EXPECT_EQ(pairsOf(pairing), "0-2 1-1 2-0");
    EXPECT_THAT(
        findingsOf(pairing, Kind::otherPairing),
        ElementsAre("!the CMYK values of 2 of 3 pairs differ, first CMYK_M, 0 in row 1 of measured.txt "
                    "and 40 in row 3 of reference.txt"));
}

// Order.

TEST(pairing, order_pairsRowByRow) {
    const Pairing pairing =
        paired(measured("LAB_L", {"1", "2"}), reference("LAB_L", {"3", "4"}), PairChoice::order);
    EXPECT_EQ(pairing.rule, PairRule::order);
    EXPECT_EQ(pairing.by, "order");
    EXPECT_EQ(pairsOf(pairing), "0-0 1-1");
    EXPECT_THAT(pairing.findings, IsEmpty());
}

TEST(pairing, order_needsEqualCounts) {
    const Refused refused = refusalOf(measured("SAMPLE_ID", {"1", "2"}),
                                      reference("SAMPLE_ID", {"1", "2", "3"}), PairChoice::order);
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, AllOf(HasSubstr("measured.txt has 2"), HasSubstr("reference.txt has 3")));
}

TEST(pairing, identifiersInAnotherOrder_contradictTheOrder) {
    const Pairing pairing = paired(measured("SAMPLE_ID", {"a", "b", "c"}),
                                   reference("SAMPLE_ID", {"a", "c", "b"}), PairChoice::order);
    EXPECT_THAT(
        findingsOf(pairing, Kind::otherPairing),
        ElementsAre("!SAMPLE_ID contradicts the order of the rows in 2 of 3 pairs: the sample in row 2 "
                    "of measured.txt stands in row 3 of reference.txt"));
}

TEST(pairing, deviceValuesInAnotherOrder_contradictTheOrder) {
    const Pairing pairing = paired(measured(kRgb, {"0 0 0", "255 0 0"}),
                                   reference(kRgb, {"255 0 0", "0 0 0"}), PairChoice::order);
    EXPECT_THAT(findingsOf(pairing, Kind::otherPairing),
                ElementsAre(HasSubstr("!the RGB values of 2 of 2 pairs differ, first RGB_R, 0 in row 1")));
}

TEST(pairing, deviceValuesThatCannotBeUsed_doNotKeepTheOrderFromPairing) {
    EXPECT_EQ(pairsOf(paired(measured(kRgb, {"0 0 300"}), reference(kRgb, {"0 0 nan"}), PairChoice::order)),
              "0-0");
}

// Rules.

std::vector<PairRule> possibleRules(const Chart& left, const Chart& right) {
    std::vector<PairRule> rules;
    for (const Pairing& pairing : possiblePairings(left, right))
        rules.push_back(pairing.rule);
    return rules;
}

TEST(possiblePairings, areThoseThatPairAnyRow) {
    const std::string fields = std::string("SAMPLE_ID ") + kCmyk;
    const Rows two = {"1 0 0 0 0", "2 0 0 0 99"};
    EXPECT_THAT(possibleRules(measured(fields, two), reference(fields, two)),
                ElementsAre(PairRule::deviceValues, PairRule::identifiers, PairRule::order));
    EXPECT_THAT(possibleRules(measured(fields, two), reference(fields, {"2 0 0 0 50"})),
                ElementsAre(PairRule::identifiers));
    EXPECT_THAT(possibleRules(measured(fields, two), reference(kCmyk, {"0 0 0 0"})),
                ElementsAre(PairRule::deviceValues));
    EXPECT_THAT(possibleRules(measured("LAB_L", {"1"}), reference("LAB_L", {"1", "2"})), IsEmpty());
}

TEST(possiblePairings, nameEachIdentifier) {
    const char* const fields = "SAMPLE_NAME SAMPLE_ID";
    const OwnedChart chart = measured(fields, {"A 7", "B 8"});
    Rows names;
    for (const Pairing& pairing : possiblePairings(chart, chart))
        names.push_back(pairing.by);
    EXPECT_THAT(names, ElementsAre("SAMPLE_ID", "SAMPLE_NAME", "order"));
}

TEST(identifierColumn, isTheFirstOfItsKind) {
    EXPECT_EQ(identifierColumn(measured("LAB_L SAMPLE_NAME SAMPLE_ID", {"1 n i"})), 2);
    EXPECT_EQ(identifierColumn(measured("LAB_L SAMPLE_NAME", {"1 n"})), 1);
    EXPECT_EQ(identifierColumn(measured("LAB_L SAMPLE_LOC", {"1 n"}, "KEYWORD \"SAMPLE_LOC\"\n")), 1);
    EXPECT_EQ(identifierColumn(measured("LAB_L", {"1"})), -1);
}

TEST(countText, groupsThousands) {
    EXPECT_EQ(countText(0), "0");
    EXPECT_EQ(countText(999), "999");
    EXPECT_EQ(countText(1545), "1,545");
    EXPECT_EQ(countText(12000000), "12,000,000");
}

// Many rows.

constexpr int kMany = 20000;

double secondsOf(const OwnedChart& left, const OwnedChart& right, PairChoice choice, std::size_t pairs) {
    const auto start = std::chrono::steady_clock::now();
    const Pairing pairing = paired(left, right, choice);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    EXPECT_EQ(pairing.pairs.size(), pairs);
    return time.count();
}

Rows randomValues(unsigned seed, int scale) {
    std::mt19937 random(seed);
    Rows rows;
    for (int row = 0; row < kMany; ++row) {
        std::string text;
        for (int channel = 0; channel < 4; ++channel)
            text += std::to_string(static_cast<double>(random() % 100000) / scale) + ' ';
        rows.push_back(text);
    }
    return rows;
}

TEST(pairing, manyShuffledRows_pairInLessThanASecond) {
    const Rows rows = randomValues(1, 1000);
    EXPECT_LT(
        secondsOf(measured(kCmyk, rows), reference(kCmyk, shuffled(rows)), PairChoice::automatic, kMany),
        1.0);
}

TEST(pairing, manyEqualDeviceValues_pairInLessThanASecond) {
    Rows rows(kMany, "0 0 0 0");
    rows.back() = "0 0 0 100";
    EXPECT_LT(secondsOf(measured(kCmyk, rows), reference(kCmyk, rows), PairChoice::automatic, kMany), 1.0);
}

// All of them lie within 0.1 percent of each other.
TEST(pairing, manyDeviceValuesWithinTheTolerance_pairInLessThanASecond) {
    const Rows rows = randomValues(2, 1000000);
    Rows different = rows;
    std::sort(different.begin(), different.end());
    different.erase(std::unique(different.begin(), different.end()), different.end());
    EXPECT_LT(secondsOf(measured(kCmyk, different), reference(kCmyk, shuffled(different)),
                        PairChoice::automatic, different.size()),
              1.0);
}

TEST(pairing, manyIdentifiers_pairInLessThanASecond) {
    Rows rows;
    for (int row = 0; row < kMany; ++row)
        rows.push_back("A" + std::to_string(row));
    EXPECT_LT(secondsOf(measured("SAMPLE_ID", rows), reference("SAMPLE_ID", shuffled(rows)),
                        PairChoice::automatic, kMany),
              1.0);
}

} // namespace
} // namespace qxcms::tests
