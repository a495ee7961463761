#include "qc/pairing.h"

#include <gmock/gmock.h>

#include "qc/refusal.h"
#include "tests/cli/chart_text.h"

using namespace qxcms::qc;
using qxcms::tests::chartText;
using qxcms::tests::OwnedChart;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

OwnedChart measured(const std::string& fields, const std::vector<std::string>& rows,
                    const std::string& header = "") {
    return OwnedChart("measured.txt", chartText(fields, rows, header));
}

OwnedChart reference(const std::string& fields, const std::vector<std::string>& rows,
                     const std::string& header = "") {
    return OwnedChart("reference.txt", chartText(fields, rows, header));
}

struct Refused {
    Refusal::Kind kind;
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

constexpr const char* kCmyk = "CMYK_C CMYK_M CMYK_Y CMYK_K";

TEST(pairing, equalDeviceValues_pair) {
    const Pairing pairing = pairRows(measured(kCmyk, {"0 0 0 0", "100 0 0 50.5"}),
                                     reference(kCmyk, {"0 0 0 0", "100 0 0 50.5"}), PairChoice::automatic);
    EXPECT_EQ(pairing.rule, PairRule::deviceValues);
    EXPECT_EQ(pairing.field, "");
    EXPECT_THAT(pairing.remarks, IsEmpty());
}

TEST(pairing, deviceValues_needNoEqualColumnOrder) {
    const Pairing pairing = pairRows(measured("CMYK_K CMYK_C CMYK_M CMYK_Y", {"4 1 2 3"}),
                                     reference(kCmyk, {"1 2 3 4"}), PairChoice::automatic);
    EXPECT_EQ(pairing.rule, PairRule::deviceValues);
}

TEST(pairing, equalIdentifiers_pair) {
    const Pairing pairing = pairRows(measured("SAMPLE_ID LAB_L", {"A1 1", "A2 2"}),
                                     reference("LAB_L SAMPLE_ID", {"1 A1", "2 A2"}), PairChoice::automatic);
    EXPECT_EQ(pairing.rule, PairRule::identifiers);
    EXPECT_EQ(pairing.field, "SAMPLE_ID");
}

TEST(pairing, identifiers_areLookedForInOrder) {
    const char* const all = "SAMPLE_NAME SAMPLE_ID SampleID";
    EXPECT_EQ(pairRows(measured(all, {"n i s"}), reference(all, {"n i s"}), PairChoice::automatic).field,
              "SampleID");
    const char* const two = "SAMPLE_NAME SAMPLE_ID";
    EXPECT_EQ(pairRows(measured(all, {"n i s"}), reference(two, {"n i"}), PairChoice::automatic).field,
              "SAMPLE_ID");
    EXPECT_EQ(
        pairRows(measured("SAMPLE_NAME SampleID", {"n s"}), reference(two, {"n i"}), PairChoice::automatic)
            .field,
        "SAMPLE_NAME");
}

TEST(pairing, theFirstSharedIdentifierAlone_decides) {
    const char* const two = "SAMPLE_ID SAMPLE_NAME";
    const Refused refused = refusalOf(measured(two, {"1 a"}), reference(two, {"2 a"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, HasSubstr("SAMPLE_ID differs first in row 1"));
}

TEST(pairing, identifiers_compareAsText) {
    EXPECT_THAT(refusalOf(measured("SAMPLE_ID", {"1", "2"}), reference("SAMPLE_ID", {"1", "02"})).message,
                HasSubstr("in row 2 (\"2\" measured, \"02\" reference)"));
    EXPECT_THAT(refusalOf(measured("SAMPLE_ID", {"a"}), reference("SAMPLE_ID", {"A"})).message,
                HasSubstr("in row 1"));
}

TEST(pairing, deviceValuesGoFirst_andContradictingIdentifiersAreTold) {
    const std::string fields = std::string("SAMPLE_ID ") + kCmyk;
    const Pairing pairing = pairRows(measured(fields, {"1 0 0 0 0", "2 9 9 9 9"}),
                                     reference(fields, {"1 0 0 0 0", "3 9 9 9 9"}), PairChoice::automatic);
    EXPECT_EQ(pairing.rule, PairRule::deviceValues);
    EXPECT_THAT(pairing.remarks,
                ElementsAre("SAMPLE_ID differs first in row 2 (\"2\" measured, \"3\" reference)"));
}

TEST(pairing, identifiersPair_whereDeviceValuesDisagree_whichIsTold) {
    const std::string fields = std::string("SAMPLE_ID ") + kCmyk;
    const Pairing pairing = pairRows(measured(fields, {"1 0 0 0 0", "2 0 40 0 0"}),
                                     reference(fields, {"1 0 0 0 0", "2 0 70.5 0 0"}), PairChoice::automatic);
    EXPECT_EQ(pairing.rule, PairRule::identifiers);
    EXPECT_THAT(pairing.remarks,
                ElementsAre("the device values differ first in row 2 (CMYK_M 40 measured, 70.5 "
                            "reference)"));
}

TEST(pairing, refusal_namesTheFirstRowOfBothAndTheRemedy) {
    const std::string fields = std::string("SAMPLE_ID ") + kCmyk;
    const Refused refused = refusalOf(measured(fields, {"1 0 0 0 0", "2 5 0 0 0", "3 0 0 0 0"}),
                                      reference(fields, {"1 0 0 0 0", "2 6 0 0 0", "4 0 0 0 0"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message,
                AllOf(HasSubstr("device values differ first in row 2"),
                      HasSubstr("SAMPLE_ID differs first in row 3"), HasSubstr("--pair order")));
}

TEST(pairing, nothingInCommon_isRefused) {
    const Refused refused =
        refusalOf(measured("LAB_L LAB_A LAB_B", {"1 2 3"}), reference("SAMPLE_ID", {"1"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, AllOf(HasSubstr("do not hold the same device values"),
                                       HasSubstr("share no identifier"), HasSubstr("--pair order")));
}

TEST(pairing, spotColours_areDeviceValues) {
    EXPECT_EQ(pairRows(measured("SPOT_1 SPOT_2", {"0 50", "100 0"}),
                       reference("SPOT_2 SPOT_1", {"50 0", "0 100"}), PairChoice::automatic)
                  .rule,
              PairRule::deviceValues);
    EXPECT_THAT(refusalOf(measured("SPOT_1 SPOT_2", {"0 50"}), reference("SPOT_1 SPOT_2", {"0 60"})).message,
                HasSubstr("differ first in row 1 (SPOT_2 50 measured, 60 reference)"));
}

TEST(pairing, spotColoursBesideProcessColours_mustAgreeToo) {
    const std::string fields = std::string(kCmyk) + " SPOT_1";
    EXPECT_EQ(
        pairRows(measured(fields, {"1 2 3 4 5"}), reference(fields, {"1 2 3 4 5"}), PairChoice::automatic)
            .rule,
        PairRule::deviceValues);
    EXPECT_THAT(refusalOf(measured(fields, {"1 2 3 4 5"}), reference(fields, {"1 2 3 4 6"})).message,
                HasSubstr("SPOT_1 5 measured, 6 reference"));
    EXPECT_THAT(refusalOf(measured(fields, {"1 2 3 4 5"}), reference(kCmyk, {"1 2 3 4"})).message,
                HasSubstr("do not hold the same device values"));
}

TEST(pairing, rgb_isDeviceValues) {
    const char* const rgb = "RGB_R RGB_G RGB_B";
    EXPECT_EQ(pairRows(measured(rgb, {"0 0 0", "255 0 9"}),
                       reference("RGB_B RGB_G RGB_R", {"0 0 0", "9 0 255"}), PairChoice::automatic)
                  .rule,
              PairRule::deviceValues);
    EXPECT_THAT(refusalOf(measured(rgb, {"0 0 0", "255 0 9"}), reference(rgb, {"0 0 0", "255 1 9"})).message,
                HasSubstr("differ first in row 2 (RGB_G 0 measured, 1 reference)"));
}

TEST(pairing, twoChannelsOfRgb_areNoDeviceValues) {
    EXPECT_THAT(refusalOf(measured("RGB_R RGB_G", {"1 2"}), reference("RGB_R RGB_G", {"1 2"})).message,
                HasSubstr("do not hold the same device values"));
}

TEST(pairing, rgbDeclaredAsText_isNoDeviceValues) {
    const std::string keyword = "KEYWORD \"RGB_G\"\n";
    const char* const rgb = "RGB_R RGB_G RGB_B";
    EXPECT_THAT(refusalOf(measured(rgb, {"1 2 3"}, keyword), reference(rgb, {"1 2 3"}, keyword)).message,
                HasSubstr("do not hold the same device values"));
}

// PC2_1 given twice leaves channel 2 without a column.
TEST(pairing, deviceColoursWithAGap_areNotCompared) {
    const std::string pc = "PROCESSCOLOR_ID a\nPROCESSCOLOR_ID b\n";
    EXPECT_THAT(
        refusalOf(measured("PC2_1 PC2_1", {"1 2"}, pc), reference("PC2_1 PC2_1", {"1 2"}, pc)).message,
        HasSubstr("do not hold the same device values"));
}

TEST(pairing, emptyIdentifiers_doNotCount) {
    const Refused refused = refusalOf(measured("SAMPLE_ID LAB_L", {"a 1", "\"\" 2"}),
                                      reference("SAMPLE_ID LAB_L", {"a 1", "\"\" 2"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, HasSubstr("SAMPLE_ID is empty in row 2 of measured.txt"));
}

TEST(pairing, oneIdentifierForAllRows_doesNotCount) {
    EXPECT_THAT(refusalOf(measured("SAMPLE_ID", {"x", "x"}), reference("SAMPLE_ID", {"x", "x"})).message,
                HasSubstr("SAMPLE_ID is the same on every row of measured.txt"));
    EXPECT_EQ(
        pairRows(measured("SAMPLE_ID", {"x"}), reference("SAMPLE_ID", {"x"}), PairChoice::automatic).rule,
        PairRule::identifiers);
}

TEST(pairing, identifierThatCounts_isTakenAfterOneThatDoesNot) {
    const char* const two = "SAMPLE_ID SAMPLE_NAME";
    const Pairing pairing =
        pairRows(measured(two, {"x a", "x b"}), reference(two, {"x a", "x b"}), PairChoice::automatic);
    EXPECT_EQ(pairing.rule, PairRule::identifiers);
    EXPECT_EQ(pairing.field, "SAMPLE_NAME");
}

TEST(pairing, deviceColoursOfTwoKinds_areNotCompared) {
    const std::string pc = "PROCESSCOLOR_ID a\nPROCESSCOLOR_ID b\nPROCESSCOLOR_ID c\nPROCESSCOLOR_ID d\n";
    const Refused refused =
        refusalOf(measured(kCmyk, {"1 2 3 4"}), reference("PC4_1 PC4_2 PC4_3 PC4_4", {"1 2 3 4"}, pc));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, HasSubstr("do not hold the same device values"));
}

TEST(pairing, deviceColoursOfTwoNumbers_areNotCompared) {
    const Refused refused =
        refusalOf(measured("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5", {"1 2 3 4 5"}),
                  reference("6CLR_1 6CLR_2 6CLR_3 6CLR_4 6CLR_5 6CLR_6", {"1 2 3 4 5 6"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
    EXPECT_THAT(refused.message, HasSubstr("do not hold the same device values"));
}

TEST(pairing, differentCounts_areRefusedUnderEveryChoice) {
    for (const PairChoice choice : {PairChoice::automatic, PairChoice::order}) {
        const Refused refused =
            refusalOf(measured("SAMPLE_ID", {"1", "2"}), reference("SAMPLE_ID", {"1", "2", "3"}), choice);
        EXPECT_EQ(refused.kind, Refusal::Kind::notComparable);
        EXPECT_THAT(refused.message,
                    AllOf(HasSubstr("measured.txt has 2"), HasSubstr("reference.txt has 3")));
    }
}

TEST(pairing, order_pairsWhatDisagrees_andTellsWhere) {
    const Pairing pairing =
        pairRows(measured("SAMPLE_ID", {"1", "2"}), reference("SAMPLE_ID", {"1", "9"}), PairChoice::order);
    EXPECT_EQ(pairing.rule, PairRule::order);
    EXPECT_THAT(pairing.remarks,
                ElementsAre("SAMPLE_ID differs first in row 2 (\"2\" measured, \"9\" reference)"));
}

TEST(pairing, deviceValueThatIsNotFinite_isRefusedWithRowAndColumn) {
    const Refused refused =
        refusalOf(measured(kCmyk, {"0 0 0 0", "0 0 nan 0"}), reference(kCmyk, {"0 0 0 0", "0 0 0 0"}));
    EXPECT_EQ(refused.kind, Refusal::Kind::unreadable);
    EXPECT_THAT(refused.message, AllOf(HasSubstr("measured.txt: row 2"), HasSubstr("\"CMYK_Y\"")));
}

TEST(pairing, textsOfFiles_arePrintableInMessages) {
    EXPECT_THAT(refusalOf(measured("SAMPLE_ID", {"\x1B[2J"}), reference("SAMPLE_ID", {"1"})).message,
                AllOf(HasSubstr("\\x1b[2J"), testing::Not(HasSubstr("\x1B"))));
}

TEST(identifierColumn, isTheFirstOfItsKind) {
    EXPECT_EQ(identifierColumn(measured("LAB_L SAMPLE_NAME SAMPLE_ID", {"1 n i"})), 2);
    EXPECT_EQ(identifierColumn(measured("LAB_L SAMPLE_NAME", {"1 n"})), 1);
    EXPECT_EQ(identifierColumn(measured("LAB_L", {"1"})), -1);
}

} // namespace
