// Two charts compared: what comes out, and what keeps it from coming out.
#include "qc/comparison.h"

#include <sstream>

#include <gmock/gmock.h>

#include "tests/support/chart_text.h"
#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

using namespace qc;
using testing::AllOf;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using Kind = Finding::Kind;
using Rows = std::vector<std::string>;

constexpr const char* kLab = "SAMPLE_ID LAB_L LAB_A LAB_B";
constexpr const char* kXyz = "SAMPLE_ID XYZ_X XYZ_Y XYZ_Z";
constexpr const char* kSpectra = "SAMPLE_ID nm400 nm410 nm550 nm700";
constexpr const char* kCmykLab = "CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B";
constexpr const char* kLabXyz = "SAMPLE_ID LAB_L LAB_A LAB_B XYZ_X XYZ_Y XYZ_Z";

class comparison : public testing::Test {
protected:
    ReportCollector quiet;

    static OwnedChart measured(const std::string& fields, const Rows& rows, const std::string& header = "") {
        return {"measured.txt", chartText(fields, rows, header)};
    }

    static OwnedChart reference(const std::string& fields, const Rows& rows, const std::string& header = "") {
        return {"reference.txt", chartText(fields, rows, header)};
    }

    static ComparisonOptions cie1976() {
        ComparisonOptions options;
        options.formula = "76";
        return options;
    }

    static Comparison compared(const Chart& left, const Chart& right,
                               const ComparisonOptions& options = cie1976()) {
        const Result<Comparison> result = compare(left, right, options);
        if (!result)
            throw std::invalid_argument(result.refusal().what());
        return *result;
    }

    static Refusal refused(const Chart& left, const Chart& right,
                           const ComparisonOptions& options = cie1976()) {
        const Result<Comparison> result = compare(left, right, options);
        if (result)
            throw std::invalid_argument("it was compared");
        return result.refusal();
    }
};

// The findings of one kind, warnings with a "!" in front.
Rows findingsOf(const Comparison& result, Kind kind) {
    Rows texts;
    for (const Finding& finding : result.findings)
        if (finding.kind == kind)
            texts.push_back((finding.severity == Finding::Severity::warning ? "!" : "") + finding.text);
    return texts;
}

std::string labRow(std::size_t number, const Lab& lab) {
    std::ostringstream row;
    row << number + 1 << ' ' << lab[0] << ' ' << lab[1] << ' ' << lab[2];
    return row.str();
}

// Rows of kLab, named 1, 2, ....
Rows labRowsOf(const std::vector<Lab>& colors) {
    Rows rows;
    for (const Lab& lab : colors)
        rows.push_back(labRow(rows.size(), lab));
    return rows;
}

// Solids and overprints of offset print on coated paper, and their tints, in round numbers (ISO 12647-2).
std::vector<Lab> print() {
    return {{95, 1, -4},   {55, -37, -50}, {48, 74, -3},   {89, -5, 93}, {47, 68, 48}, {50, -68, 33},
            {24, 22, -46}, {16, 0, 0},     {75, -19, -27}, {72, 36, -4}, {92, -3, 44}, {71, 33, 22},
            {72, -32, 14}, {58, 10, -24},  {55, 0, -2},    {85, -8, -15}};
}

std::string illuminantLine(const std::string& name) {
    return "WEIGHTING_FUNCTION \"ILLUMINANT, " + name + "\"\n";
}

// The result.

TEST_F(comparison, patches_areSampleMinusStandardInTheOrderOfTheMeasuredRows) {
    const Comparison result = compared(measured(kLab, {"B 60 0 0", "A 50 3 4"}),
                                       reference(kLab, {"A 50 0 0", "C 1 0 0", "B 61 0 0"}));
    ASSERT_THAT(result.patches, SizeIs(2));
    EXPECT_EQ(result.patches[0].row, 1);
    EXPECT_EQ(result.patches[0].referenceRow, 3);
    EXPECT_EQ(result.patches[0].name, "B");
    EXPECT_EQ(result.patches[0].difference.lightness, -1.0);
    EXPECT_EQ(result.patches[1].row, 2);
    EXPECT_EQ(result.patches[1].referenceRow, 1);
    EXPECT_EQ(result.patches[1].referenceCount, 1);
    EXPECT_EQ(result.patches[1].measured, (Lab{50.0, 3.0, 4.0}));
    EXPECT_EQ(result.patches[1].reference, (Lab{50.0, 0.0, 0.0}));
    EXPECT_EQ(result.patches[1].difference.total, 5.0);
    EXPECT_THAT(result.differences(), ElementsAre(1.0, 5.0));
    EXPECT_EQ(result.pairing.unusedReference, 1);
}

TEST_F(comparison, statistics_areThoseOfTheDifferences) {
    const Comparison result = compared(measured(kLab, {"A 50 3 4", "B 61 0 0", "C 70 0 0"}),
                                       reference(kLab, {"A 50 0 0", "B 60 0 0", "C 70 0 0"}));
    EXPECT_EQ(result.statistics.count, 3u);
    EXPECT_EQ(result.statistics.mean, 2.0);
    EXPECT_EQ(result.statistics.median, 1.0);
    EXPECT_EQ(result.statistics.maximum, 5.0);
    EXPECT_EQ(result.statistics.greatest, 0u);
}

// Pair 19 of the CIEDE2000 test data.
TEST_F(comparison, formulaWithoutOptions_isCiede2000AsPublished) {
    const Comparison result =
        compared(measured(kLab, {"A 50 2.5 0"}), reference(kLab, {"A 56 -27 -3"}), ComparisonOptions());
    EXPECT_EQ(result.formula.id, DeltaE::ciede2000);
    EXPECT_NEAR(result.statistics.maximum, 31.9030, 0.00005);
    EXPECT_THAT(findingsOf(result, Kind::formula), IsEmpty());
}

TEST_F(comparison, kernelsFormulaOf2000_isNotedNotToBeThePublishedOne) {
    ComparisonOptions options;
    options.formula = "Delta E 2000";
    const OwnedChart chart = measured(kLab, {"A 50 2.5 0"});
    EXPECT_THAT(findingsOf(compared(chart, chart, options), Kind::formula),
                ElementsAre(StartsWith("Delta E 2000 is not CIEDE2000 as published")));
}

TEST_F(comparison, name_isThatOfTheSample_elseOfTheStandard_elseTheRow) {
    const char* const named = "SAMPLE_NAME CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B";
    const OwnedChart bare = measured(kCmykLab, {"0 0 0 0 95 0 0"});
    const OwnedChart paper = reference(named, {"paper 0 0 0 0 95 0 0"});
    EXPECT_EQ(compared(paper, bare).patches[0].name, "paper");
    EXPECT_EQ(compared(bare, paper).patches[0].name, "paper");
    EXPECT_EQ(compared(bare, bare).patches[0].name, "1");
}

TEST_F(comparison, sides_areDescribed) {
    const Comparison result = compared(measured(kSpectra, {"A 5 10 20 40", "B 5 10 20 40"}),
                                       reference(kLab, {"A 50 0 0"}, illuminantLine("D50")));
    EXPECT_EQ(result.measured.file, "measured.txt");
    EXPECT_EQ(result.measured.tables, 1);
    EXPECT_EQ(result.measured.table, 1);
    EXPECT_EQ(result.measured.samples, 2);
    EXPECT_EQ(result.measured.source, ColorSource::spectra);
    EXPECT_TRUE(result.measured.percent);
    EXPECT_EQ(result.measured.bands, 4);
    EXPECT_EQ(result.measured.firstNm, 400);
    EXPECT_EQ(result.measured.lastNm, 700);
    EXPECT_EQ(result.reference.source, ColorSource::lab);
    EXPECT_EQ(result.reference.conditions.illuminant.value, "D50");
}

TEST_F(comparison, sourceAskedFor_isTakenOnEachSide) {
    const OwnedChart chart = measured(kLabXyz, {"A 100 0 0 48.211 50 41.2605"});
    ComparisonOptions options = cie1976();
    options.measuredAs = ColorSource::xyz;
    options.referenceAs = ColorSource::lab;
    const Comparison result = compared(chart, chart, options);
    EXPECT_EQ(result.measured.source, ColorSource::xyz);
    EXPECT_EQ(result.reference.source, ColorSource::lab);
    // 116 * 0.5^(1/3) - 16
    EXPECT_NEAR(result.patches[0].measured[0], 76.0693, 0.0001);
    EXPECT_EQ(result.patches[0].reference[0], 100.0);
}

// Repeated samples.

TEST_F(comparison, standardOfARepeatedReference_isTheMean) {
    const Comparison result =
        compared(measured(kCmykLab, {"0 0 0 0 93 0 0", "0 0 0 100 20 0 0"}),
                 reference(kCmykLab, {"0 0 0 100 20 0 0", "0 0 0 0 90 1 -2", "0 0 0 0 94 -1 4"}));
    ASSERT_THAT(result.patches, SizeIs(2));
    EXPECT_EQ(result.patches[0].referenceRow, 2);
    EXPECT_EQ(result.patches[0].referenceCount, 2);
    EXPECT_EQ(result.patches[0].reference, (Lab{92.0, 0.0, 1.0}));
    EXPECT_EQ(result.patches[0].difference.lightness, 1.0);
    EXPECT_EQ(result.patches[1].referenceCount, 1);
}

// The pairing.

TEST_F(comparison, otherPairingOfMuchSmallerDifferences_isWarnedOf) {
    ComparisonOptions options = cie1976();
    options.pair = PairChoice::order;
    const Comparison result = compared(measured(kLab, {"A 50 0 0", "B 60 0 0", "C 70 0 0"}),
                                       reference(kLab, {"C 70 0 0", "A 51 0 0", "B 61 0 0"}), options);
    EXPECT_EQ(result.pairing.rule, PairRule::order);
    EXPECT_THAT(
        findingsOf(result, Kind::otherPairing),
        testing::Contains("!paired by identifiers (--pair id) the median difference would be 1 instead "
                          "of 9, so that the rows may belong together in that way"));
}

// By identifiers 2 and 2, by order 1 and 1: half is not less than half.
TEST_F(comparison, otherPairingOfHalfTheDifferences_isNotTold) {
    const Comparison half =
        compared(measured(kLab, {"A 50 0 0", "B 53 0 0"}), reference(kLab, {"B 51 0 0", "A 52 0 0"}));
    EXPECT_THAT(half.differences(), ElementsAre(2.0, 2.0));
    EXPECT_THAT(findingsOf(half, Kind::otherPairing), IsEmpty());
}

// By identifiers 2.5 and 1.5, by order 0.9 and 0.1.
TEST_F(comparison, otherPairingOfLessThanHalfTheDifferences_isTold) {
    const Comparison less =
        compared(measured(kLab, {"A 50 0 0", "B 52.4 0 0"}), reference(kLab, {"B 50.9 0 0", "A 52.5 0 0"}));
    EXPECT_THAT(
        findingsOf(less, Kind::otherPairing),
        ElementsAre("!paired in their order (--pair order) the median difference would be 0.5 instead "
                    "of 2, so that the rows may belong together in that way"));
}

TEST_F(comparison, otherIdentifierOfMuchSmallerDifferences_isWarnedOfByItsName) {
    const char* const fields = "SAMPLE_ID SAMPLE_NAME LAB_L LAB_A LAB_B";
    const OwnedChart left = measured(fields, {"7 A 50 0 0", "8 B 60 0 0", "9 C 70 0 0"});
    const OwnedChart right = reference(fields, {"7 C 70.5 0 0", "8 A 50.5 0 0", "9 B 60.5 0 0"});
    EXPECT_THAT(
        findingsOf(compared(left, right), Kind::otherPairing),
        testing::Contains("!paired by SAMPLE_NAME (--pair SAMPLE_NAME) the median difference would be 0.5 "
                          "instead of 9.5, so that the rows may belong together in that way"));
    ComparisonOptions options = cie1976();
    options.pair = PairChoice::identifiers;
    options.identifier = "SAMPLE_NAME";
    EXPECT_EQ(compared(left, right, options).statistics.maximum, 0.5);
}

// Cyan and magenta are exchanged in one file, so that the paper alone pairs by them.
TEST_F(comparison, otherPairingOfFarMoreSamplesThatAgreeAsWell_isWarnedOf) {
    const char* const fields = "SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B";
    const OwnedChart left = measured(fields, {"a 0 0 0 0 95 0 0", "b 90 0 0 0 55 -30 -40"});
    const OwnedChart right = reference(fields, {"b 0 90 0 0 55 -30 -40.4", "a 0 0 0 0 95 0 0"});
    EXPECT_THAT(
        findingsOf(compared(left, right), Kind::otherPairing),
        ElementsAre("!paired by identifiers (--pair id) 2 samples would have a counterpart instead of 1, "
                    "with a median difference of 0.2, so that the rows may belong together in that way"));
}

// One of ten scanned samples happens to read alike, and has no difference; the names pair all at 1.
TEST_F(comparison, otherPairingOfTenTimesAsManySamples_mayDifferMoreThanTheFewThatAgreeByChance) {
    const char* const fields = "SAMPLE_NAME RGB_R RGB_G RGB_B LAB_L LAB_A LAB_B";
    Rows left = {"n0 255 255 255 95 0 0"};
    Rows right = {"n0 255 255 255 95 0 0"};
    for (int i = 1; i < 10; ++i) {
        const std::string name = "n" + std::to_string(i) + " ";
        left.push_back(name + std::to_string(20 * i) + " 0 0 " + std::to_string(9 * i) + " 0 0");
        right.push_back(name + std::to_string(20 * i + 7) + " 0 0 " + std::to_string(9 * i + 1) + " 0 0");
    }
    ComparisonOptions options = cie1976();
    options.pair = PairChoice::deviceValues;
    EXPECT_THAT(
        findingsOf(compared(measured(fields, left), reference(fields, right), options), Kind::otherPairing),
        testing::Contains(HasSubstr("10 samples would have a counterpart instead of 1, with a median "
                                    "difference of 1")));
}

// One sample pairs by device values, three by their names, all of them with one difference.
TEST_F(comparison, otherPairingOfMoreSamples_isToldOnlyWhereTheyAgree) {
    const auto told = [](int apart) {
        const char* const fields = "SAMPLE_NAME CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B";
        const auto row = [](const char* text, int lightness) {
            return text + std::to_string(lightness) + " 0 0";
        };
        ComparisonOptions options = cie1976();
        options.pair = PairChoice::deviceValues;
        const OwnedChart left =
            measured(fields, {row("a 0 0 0 0 ", 95), row("b 90 0 0 0 ", 60), row("c 0 0 9 0 ", 70)});
        const OwnedChart right =
            reference(fields, {row("a 0 0 0 0 ", 95 - apart), row("b 0 90 0 0 ", 60 - apart),
                               row("c 0 0 0 70 ", 70 - apart)});
        return findingsOf(compared(left, right, options), Kind::otherPairing);
    };
    EXPECT_THAT(told(10), testing::Contains(HasSubstr("3 samples would have a counterpart instead of 1")));
    EXPECT_THAT(told(11), IsEmpty());
}

TEST_F(comparison, identifierNamedWithoutAChoiceOfRule_isTaken) {
    const char* const fields = "SAMPLE_ID SAMPLE_NAME LAB_L LAB_A LAB_B";
    ComparisonOptions options = cie1976();
    options.identifier = "sample_name";
    EXPECT_EQ(compared(measured(fields, {"1 a 50 0 0", "2 b 60 0 0"}),
                       reference(fields, {"1 b 60 0 0", "2 a 50 0 0"}), options)
                  .pairing.by,
              "SAMPLE_NAME");
    options.pair = PairChoice::order;
    const OwnedChart chart = measured(fields, {"1 a 50 0 0", "2 b 60 0 0"});
    EXPECT_EQ(refused(chart, chart, options).kind(), Refusal::Kind::usage);
}

TEST_F(comparison, otherPairingOfFarMoreSamplesThatDiffer_isNotTold) {
    const char* const fields = "SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B";
    const OwnedChart left =
        measured(fields, {"a 0 0 0 0 95 0 0", "b 90 0 0 0 55 -30 -40", "c 0 0 9 0 90 0 9"});
    const OwnedChart right =
        reference(fields, {"b 0 90 0 0 50 70 0", "a 0 0 0 0 95 0 0", "c 0 0 0 70 40 0 0"});
    EXPECT_THAT(findingsOf(compared(left, right), Kind::otherPairing), IsEmpty());
}

TEST_F(comparison, identifiersAloneThatPairWhatDiffersMuch_areWarnedOf) {
    const OwnedChart right = reference(kLab, {"1 95 0 0", "2 20 0 0"});
    EXPECT_THAT(findingsOf(compared(measured(kLab, {"1 84 0 0", "2 31 0 0"}), right), Kind::ambiguousSamples),
                ElementsAre("!the median difference is 11, and nothing but SAMPLE_ID says that these samples "
                            "belong together; check that both files hold one chart, its samples named alike",
                            StartsWith("SAMPLE_ID only counts the rows")));
    EXPECT_THAT(findingsOf(compared(measured(kLab, {"1 86 0 0", "2 29 0 0"}), right), Kind::ambiguousSamples),
                ElementsAre(StartsWith("SAMPLE_ID only counts the rows")));
}

TEST_F(comparison, coloursDecideOnTheScaleOfTheDeviceValues) {
    const char* const fields = "RGB_R RGB_G RGB_B LAB_L LAB_A LAB_B";
    const OwnedChart chart =
        reference(fields, {"0 0 0 5 0 0", "100 100 100 40 0 0", "255 255 255 96 0 0", "9 0 0 6 2 1"});
    const auto white = [&](const char* row) {
        return compared(measured(fields, {"100 100 100 " + std::string(row)}), chart).patches[0].referenceRow;
    };
    EXPECT_EQ(white("95 0 0"), 3);
    EXPECT_EQ(white("41 0 0"), 2);
}

TEST_F(comparison, findingsOfThePairing_areThoseOfTheComparison) {
    const Comparison result =
        compared(measured(kLab, {"A 50 0 0", "X 60 0 0"}), reference(kLab, {"A 50 0 0"}));
    EXPECT_THAT(findingsOf(result, Kind::unusedSamples),
                ElementsAre(StartsWith("!1 of 2 samples of measured.txt")));
}

// The white points.

TEST_F(comparison, lab_needsNoWhite) {
    const OwnedChart chart = measured(kLab, {"A 50 0 0"});
    const Comparison result = compared(chart, chart);
    EXPECT_FALSE(result.spectralWhite.has_value());
    EXPECT_FALSE(result.xyzWhite.has_value());
}

// The sums of the tables every 10 nm, and the published figures.
TEST_F(comparison, spectraAndXyz_areConvertedOnWhitesOfTheirOwn) {
    const Comparison result =
        compared(measured(kSpectra, {"A 1 1 1 1"}), reference(kXyz, {"A 96.422 100 82.521"}));
    ASSERT_TRUE(result.spectralWhite.has_value());
    EXPECT_THAT(*result.spectralWhite,
                ElementsAre(DoubleNear(96.384116, 1e-5), 100.0, DoubleNear(82.453534, 1e-5)));
    ASSERT_TRUE(result.xyzWhite.has_value());
    EXPECT_THAT(*result.xyzWhite, ElementsAre(96.422, 100.0, 82.521));
    EXPECT_NEAR(result.statistics.maximum, 0.0, 1e-9);
}

TEST_F(comparison, oneKindOfColours_hasOneWhite) {
    const OwnedChart spectra = measured(kSpectra, {"A 1 1 1 1"});
    EXPECT_FALSE(compared(spectra, spectra).xyzWhite.has_value());
    const OwnedChart xyz = measured(kXyz, {"A 20 20 20"});
    EXPECT_FALSE(compared(xyz, xyz).spectralWhite.has_value());
    EXPECT_TRUE(compared(xyz, xyz).xyzWhite.has_value());
}

// The conditions.

TEST_F(comparison, namesOfConditions_areUnderstoodInAnySpelling) {
    const OwnedChart chart =
        measured(kLab, {"A 50 0 0"}, illuminantLine("F11") + "WEIGHTING_FUNCTION \"OBSERVER, 2 degree\"\n");
    for (const char* illuminant : {"F11", "fl11", "CIE Illuminant F11"})
        for (const char* observer : {"2", "2deg", "1931", "2 Degree"}) {
            ComparisonOptions options;
            options.illuminant = illuminant;
            options.observer = observer;
            const Comparison result = compared(chart, chart, options);
            EXPECT_EQ(result.conditions.illuminant.value, "F11");
            EXPECT_EQ(result.conditions.observer.value, "2 degree");
        }
}

TEST_F(comparison, labUnderAnIlluminantThatTheKernelDoesNotKnow_isCompared) {
    const OwnedChart left = measured(kLab, {"A 50 3 4"}, illuminantLine("Moonlight"));
    const OwnedChart right = reference(kLab, {"A 50 0 0"}, illuminantLine("Moonlight"));
    const Comparison result = compared(left, right);
    EXPECT_THAT(result.conditions.illuminant.value, HasSubstr("Moonlight"));
    EXPECT_EQ(result.conditions.illuminant.origin, ChosenCondition::Origin::declared);
    EXPECT_EQ(result.statistics.maximum, 5.0);
}

TEST_F(comparison, xyzBesideLabUnderSuchAnIlluminant_isNotLookedAt) {
    const OwnedChart chart = measured(kLabXyz, {"A 50 3 4 1 90 1"}, illuminantLine("Moonlight"));
    EXPECT_THAT(findingsOf(compared(chart, chart), Kind::labAgainstXyz), IsEmpty());
}

TEST_F(comparison, spectraAndXyzUnderSuchAnIlluminant_areTakenForD50WithAWarning) {
    const OwnedChart lab = reference(kLab, {"A 50 0 0"}, illuminantLine("Moonlight"));
    const OwnedChart xyz = measured(kXyz, {"A 20 20 20"}, illuminantLine("Moonlight"));
    for (const Comparison& result : {compared(measured(kSpectra, {"A 1 1 1 1"}), lab), compared(xyz, lab)}) {
        EXPECT_EQ(result.conditions.illuminant.value, "D50");
        EXPECT_EQ(result.conditions.illuminant.origin, ChosenCondition::Origin::assumed);
        EXPECT_THAT(findingsOf(result, Kind::unknownCondition),
                    testing::Contains(AllOf(HasSubstr("reference.txt"), HasSubstr("Moonlight"),
                                            HasSubstr("not understood"))));
    }
}

// D93 is understood in files, but there is none to compute with.
TEST_F(comparison, spectraAndXyzUnderAnIlluminantThatIsMissing_areRefused) {
    const OwnedChart lab = reference(kLab, {"A 50 0 0"}, illuminantLine("D93"));
    const OwnedChart xyz = measured(kXyz, {"A 20 20 20"}, illuminantLine("D93"));
    for (const Refusal& refusal : {refused(measured(kSpectra, {"A 1 1 1 1"}), lab), refused(xyz, lab)}) {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::usage);
        EXPECT_THAT(refusal.what(), AllOf(HasSubstr("unknown illuminant"), HasSubstr("D93")));
    }
}

TEST_F(comparison, lampWithoutWeightsOfTheTenDegreeObserver_isRefusedForSpectraAlone) {
    ComparisonOptions options;
    options.illuminant = "F2";
    options.observer = "10";
    const OwnedChart spectra = measured(kSpectra, {"A 1 1 1 1"});
    EXPECT_EQ(refused(spectra, spectra, options).kind(), Refusal::Kind::usage);
    const OwnedChart lab = measured(kLab, {"A 50 0 0"});
    EXPECT_EQ(compared(lab, lab, options).conditions.illuminant.value, "F2");
}

TEST_F(comparison, conditionsThatDiffer_areRefusedUnlessForced) {
    const OwnedChart left = measured(kLab, {"A 50 0 0"}, illuminantLine("D50"));
    const OwnedChart right = reference(kLab, {"A 50 0 0"}, illuminantLine("D65"));
    const Refusal refusal = refused(left, right);
    EXPECT_EQ(refusal.kind(), Refusal::Kind::notComparable);
    EXPECT_THAT(refusal.what(), HasSubstr("illuminant D50 in measured.txt"));
    ComparisonOptions options = cie1976();
    options.force = true;
    const Comparison result = compared(left, right, options);
    EXPECT_TRUE(result.conditions.forced);
    EXPECT_THAT(findingsOf(result, Kind::forcedCondition), SizeIs(1));
    EXPECT_EQ(result.findings.front().severity, Finding::Severity::warning);
}

// The values.

TEST_F(comparison, implausibleValues_areToldOfBothSides) {
    const Comparison result =
        compared(measured(kLab, {"A 110 0 0", "B 50 0 0"}), reference(kLab, {"A 50 0 0", "B 120 0 0"}));
    EXPECT_THAT(findingsOf(result, Kind::tooLight),
                ElementsAre(AllOf(StartsWith("!"), HasSubstr("measured.txt")), HasSubstr("reference.txt")));
}

TEST_F(comparison, chartAgainstItself_isToldOfOnce) {
    const OwnedChart chart = measured(kLab, {"A 110 0 0", "B 50 0 0"});
    EXPECT_THAT(findingsOf(compared(chart, chart), Kind::tooLight), SizeIs(1));
}

TEST_F(comparison, xyzBesideComparedLab_isHeldAgainstIt) {
    const OwnedChart chart = measured(kLabXyz, {"A 50 0 0 96.422 100 82.521"});
    EXPECT_THAT(findingsOf(compared(chart, chart), Kind::labAgainstXyz), SizeIs(1));
}

TEST_F(comparison, xyzBesideComparedLabThatCannotBeUsed_isNoMatter) {
    const OwnedChart chart = measured(kLabXyz, {"A 50 0 0 nan 20 20", "B 60 0 0 20 20 20"});
    const Comparison result = compared(chart, chart);
    EXPECT_THAT(result.patches, SizeIs(2));
    EXPECT_THAT(findingsOf(result, Kind::labAgainstXyz), IsEmpty());
}

// Both hold the white of their own illuminant.
TEST_F(comparison, xyzOfASideComparedByForce_isNotHeldAgainstItsLabOnTheWhiteOfAnother) {
    ComparisonOptions options = cie1976();
    options.force = true;
    const OwnedChart d50 = measured(kLabXyz, {"A 100 0 0 96.422 100 82.521"}, illuminantLine("D50"));
    const OwnedChart d65 = reference(kLabXyz, {"A 100 0 0 95.047 100 108.883"}, illuminantLine("D65"));
    EXPECT_THAT(findingsOf(compared(d50, d65, options), Kind::labAgainstXyz), IsEmpty());
    const OwnedChart wrong = measured(kLabXyz, {"A 100 0 0 95.047 100 108.883"}, illuminantLine("D50"));
    EXPECT_THAT(findingsOf(compared(wrong, d65, options), Kind::labAgainstXyz), SizeIs(1));
}

// The reader takes what is no number for 0.
TEST_F(comparison, doubtfulXyzBesideComparedLab_isNotHeldAgainstIt) {
    const OwnedChart owned = measured(kLabXyz, {"A 100 0 0 N/A 100 82.521"});
    Chart chart = owned;
    chart.doubts = {{0, 0, 4, "N/A"}};
    EXPECT_THAT(findingsOf(compared(chart, chart), Kind::labAgainstXyz), IsEmpty());
}

TEST_F(comparison, doubtfulValues_areRefusedInColumnsThatAreCompared_andNotedInOthers) {
    const OwnedChart owned = measured("SAMPLE_ID LAB_L LAB_A LAB_B STDEV_X", {"A 50 0 0 1", "B 60 ? 0 ?"});
    Chart chart = owned;
    chart.doubts = {{0, 1, 4, "?"}};
    EXPECT_THAT(findingsOf(compared(chart, chart), Kind::doubtfulValues),
                ElementsAre("measured.txt: row 2, column \"STDEV_X\" (number 5): \"?\" is no number; the "
                            "column is not compared"));
    chart.doubts = {{0, 1, 2, "?"}, {0, 1, 4, "?"}};
    const Refusal refusal = refused(chart, chart);
    EXPECT_EQ(refusal.kind(), Refusal::Kind::unreadable);
    EXPECT_THAT(refusal.what(), HasSubstr("measured.txt: row 2, column \"LAB_A\" (number 3)"));
}

TEST_F(comparison, doubtfulColumns_areCounted) {
    const OwnedChart owned =
        measured("SAMPLE_ID LAB_L LAB_A LAB_B STDEV_X STDEV_Y STDEV_Z", {"A 50 0 0 ? ? ?"});
    Chart chart = owned;
    chart.doubts = {{0, 0, 4, "?"}, {0, 0, 5, "?"}};
    EXPECT_THAT(findingsOf(compared(chart, chart), Kind::doubtfulValues),
                ElementsAre(HasSubstr(", nor is another one with such values")));
    chart.doubts.push_back({0, 0, 6, "?"});
    EXPECT_THAT(findingsOf(compared(chart, chart), Kind::doubtfulValues),
                ElementsAre(HasSubstr(", nor are 2 others with such values")));
}

TEST_F(comparison, warnings_comeFirst) {
    ComparisonOptions options;
    options.formula = "Delta E 2000";
    const Comparison result = compared(measured(kLab, {"A 110 0 0", "X 50 0 0"}),
                                       reference(kLab, {"A 50 0 0", "B 50 0 0"}), options);
    bool wasNote = false;
    bool wasWarning = false;
    for (const Finding& finding : result.findings) {
        const bool isNote = finding.severity == Finding::Severity::note;
        EXPECT_TRUE(isNote || !wasNote) << finding.text;
        wasNote = wasNote || isNote;
        wasWarning = wasWarning || !isNote;
    }
    EXPECT_TRUE(wasNote && wasWarning);
}

// Refusals.

TEST_F(comparison, unknownNames_areRefusedForLabToo) {
    const OwnedChart chart = measured(kLab, {"A 50 0 0"});
    ComparisonOptions options;
    options.illuminant = "D51";
    EXPECT_THAT(refused(chart, chart, options).what(), HasSubstr("unknown illuminant \"D51\""));
    EXPECT_EQ(refused(chart, chart, options).kind(), Refusal::Kind::usage);
    options = {};
    options.observer = "3 degree";
    EXPECT_THAT(refused(chart, chart, options).what(), HasSubstr("unknown observer \"3 degree\""));
    options = {};
    options.formula = "classic";
    EXPECT_THAT(refused(chart, chart, options).what(), HasSubstr("unknown formula \"classic\""));
}

TEST_F(comparison, chartWithoutColours_isNotComparable) {
    const OwnedChart chart = measured("SAMPLE_ID CMYK_C", {"A 1"});
    EXPECT_EQ(refused(chart, chart).kind(), Refusal::Kind::notComparable);
}

TEST_F(comparison, rowsThatNothingPairs_areNotComparable) {
    const Refusal refusal = refused(measured(kLab, {"A 50 0 0"}), reference(kLab, {"B 50 0 0"}));
    EXPECT_EQ(refusal.kind(), Refusal::Kind::notComparable);
    EXPECT_THAT(refusal.what(), HasSubstr("SAMPLE_ID"));
}

TEST_F(comparison, valueThatIsNotFinite_isUnreadable) {
    const Refusal refusal = refused(measured(kLab, {"A 50 0 0"}), reference(kLab, {"A 50 nan 0"}));
    EXPECT_EQ(refusal.kind(), Refusal::Kind::unreadable);
    EXPECT_THAT(refusal.what(), HasSubstr("reference.txt: row 1, column \"LAB_A\""));
}

// The kernel's formula raises chromas to the 7th power.
TEST_F(comparison, differenceThatIsNotFinite_isUnreadable) {
    ComparisonOptions options;
    options.formula = "Delta E 2000";
    const Refusal refusal =
        refused(measured(kLab, {"A 50 0 0"}), reference(kLab, {"B 1 1 1", "A 50 1e60 0"}), options);
    EXPECT_EQ(refusal.kind(), Refusal::Kind::unreadable);
    EXPECT_THAT(refusal.what(),
                AllOf(HasSubstr("measured.txt: row 1 and reference.txt: row 2: "), HasSubstr("too large")));
}

TEST_F(comparison, rowsOfZerosAmongOthers_areTold) {
    const OwnedChart plain = reference(kLab, {"A 50 0 0", "B 60 0 0", "C 70 0 0"});
    EXPECT_EQ(
        findingsOf(compared(measured(kLab, {"A 50 0 0", "B 0 0 0", "C 0 0 0"}), plain), Kind::unmeasured),
        Rows{"!measured.txt: row 2 and 1 more: Lab is 0 0 0, as of samples that were not measured"});
    EXPECT_EQ(
        findingsOf(compared(measured(kLab, {"A 50 0 0", "B 0 0 0", "C 9 0 0"}), plain), Kind::unmeasured),
        Rows{"measured.txt: row 2: Lab is 0 0 0, as of samples that were not measured"});
    EXPECT_THAT(findingsOf(compared(plain, plain), Kind::unmeasured), IsEmpty());
}

// The same colours with a* and b* exchanged.
Rows exchanged(const std::vector<Lab>& colors) {
    Rows rows;
    for (const Lab& lab : colors)
        rows.push_back(labRow(rows.size(), {lab[0], lab[2], lab[1]}));
    return rows;
}

TEST_F(comparison, axesExchangedOnOneSide_areTold) {
    const OwnedChart left = measured(kLab, exchanged(print()));
    const OwnedChart right = reference(kLab, labRowsOf(print()));
    EXPECT_EQ(findingsOf(compared(left, right), Kind::exchangedAxes).size(), 1u);
    EXPECT_THAT(findingsOf(compared(left, left), Kind::exchangedAxes), IsEmpty());
}

// The darker side stays as far away as other prints do.
TEST_F(comparison, axesExchangedThatLeaveWhatNoPrintDiffersBy_areNotTold) {
    const auto exchangedCount = [](double darker) {
        std::vector<Lab> colors = print();
        for (Lab& color : colors)
            color[0] -= darker;
        return findingsOf(compared(measured(kLab, exchanged(colors)), reference(kLab, labRowsOf(print()))),
                          Kind::exchangedAxes)
            .size();
    };
    EXPECT_EQ(exchangedCount(9), 1U);
    EXPECT_EQ(exchangedCount(12), 0U);
}

TEST_F(comparison, fewColoursThatExchangingBringsNearer_areNoSignOfIt) {
    const OwnedChart left = measured(kLab, {"A 50 30 5", "B 60 -40 10", "C 70 9 60"});
    const OwnedChart right = reference(kLab, {"A 50 5 30", "B 60 10 -40", "C 70 60 9"});
    EXPECT_THAT(findingsOf(compared(left, right), Kind::exchangedAxes), IsEmpty());
}

TEST_F(comparison, coloursOfOneHueThatExchangingBringsNearer_areNoSignOfIt) {
    const OwnedChart left = measured(kLab, exchanged({{30, 4, 21},
                                                      {35, 4, 22},
                                                      {40, 4, 23},
                                                      {45, 4, 24},
                                                      {50, 4, 25},
                                                      {55, 4, 26},
                                                      {60, 4, 27},
                                                      {65, 4, 28}}));
    const OwnedChart right = reference(kLab, labRowsOf({{30, 4, 21},
                                                        {35, 4, 22},
                                                        {40, 4, 23},
                                                        {45, 4, 24},
                                                        {50, 4, 25},
                                                        {55, 4, 26},
                                                        {60, 4, 27},
                                                        {65, 4, 28}}));
    EXPECT_THAT(findingsOf(compared(left, right), Kind::exchangedAxes), IsEmpty());
}

TEST_F(comparison, greysThatExchangingBringsNearer_areNoSignOfIt) {
    const OwnedChart left = measured(kLab, {"A 50 0.15 0", "B 60 0.15 0"});
    const OwnedChart right = reference(kLab, {"A 50 0 0.15", "B 60 0 0.15"});
    EXPECT_THAT(findingsOf(compared(left, right), Kind::exchangedAxes), IsEmpty());
}

// Rows that belong elsewhere.

TEST_F(comparison, lostReading_isToldWithTheRowsBehindIt) {
    std::vector<Lab> colors = print();
    colors.erase(colors.begin() + 4);
    const Comparison result =
        compared(measured(kLab, labRowsOf(colors)), reference(kLab, labRowsOf(print())));
    EXPECT_THAT(
        findingsOf(result, Kind::shiftedRows),
        ElementsAre(StartsWith("!the colours of rows 5 to 14 of measured.txt agree with what is expected "
                               "in the row 1 further down (median CIELAB Delta E 0 instead of ")));
}

// Read in its own order a shuffled reference shows which of its rows are displaced.
TEST_F(comparison, lostReadingOfTheReference_isToldInItsOwnOrder) {
    std::vector<Lab> colors = print();
    colors.erase(colors.begin() + 4);
    colors.push_back({30, 30, 30});
    Rows shuffled;
    for (std::size_t i = 0; i < 16; ++i)
        shuffled.push_back(labRow(i * 7 % 16, print()[i * 7 % 16]));
    const Comparison result = compared(measured(kLab, shuffled), reference(kLab, labRowsOf(colors)));
    EXPECT_THAT(findingsOf(result, Kind::shiftedRows),
                ElementsAre(StartsWith("!the colours of rows 5 to 15 of reference.txt agree with what is "
                                       "expected in the row 1 further down")));
}

// Colours whose device values do not belong to them, in an order of no system.
TEST_F(comparison, deviceValuesBesideOtherColours_areWarnedOf) {
    Rows rows;
    Rows displaced;
    const std::vector<Lab> colors = print();
    const std::vector<std::size_t> places = {5, 11, 0, 14, 8, 2, 13, 6, 15, 1, 4, 9, 3, 10, 7, 12};
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const std::string inks = std::to_string(5 * i) + " 20 10 0 ";
        const auto lab = [](const Lab& color) { return labRow(0, color).substr(2); };
        rows.push_back(inks + lab(colors[i]));
        displaced.push_back(inks + lab(colors[places[i]]));
    }
    const OwnedChart right = reference(kCmykLab, rows);
    EXPECT_THAT(findingsOf(compared(measured(kCmykLab, displaced), right), Kind::largeDifferences),
                ElementsAre(HasSubstr("16 samples that CMYK values pair")));
    EXPECT_THAT(findingsOf(compared(right, right), Kind::largeDifferences), IsEmpty());
}

// Magenta and yellow stand in each other's place, which looks like exchanged axes.
TEST_F(comparison, huesOfExchangedAxesThatExplainNothing_areNotAllThatIsTold) {
    Rows rows = {"0 0 100 0 89 -5 93", "0 100 0 0 48 74 -3"};
    Rows displaced = {"0 0 100 0 48 74 -3", "0 100 0 0 89 -5 93"};
    const std::vector<Lab> colors = print();
    const std::vector<std::size_t> places = {5, 11, 0, 14, 8, 2, 13, 6, 15, 1, 4, 9, 3, 10, 7, 12};
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const std::string inks = std::to_string(5 * i) + " 20 10 0 ";
        rows.push_back(inks + labRow(0, colors[i]).substr(2));
        displaced.push_back(inks + labRow(0, colors[places[i]]).substr(2));
    }
    const Comparison result = compared(measured(kCmykLab, displaced), reference(kCmykLab, rows));
    EXPECT_THAT(findingsOf(result, Kind::exchangedAxes),
                ElementsAre(HasSubstr("and that both belong to the same rows")));
    EXPECT_THAT(findingsOf(result, Kind::largeDifferences), SizeIs(1));
}

// Newsprint is darker and far less colourful throughout, but it is the same chart.
TEST_F(comparison, sameChartOnQuiteAnotherPaper_isNoOtherOne) {
    Rows coated;
    Rows newsprint;
    const std::vector<Lab> colors = print();
    for (std::size_t i = 0; i < colors.size(); ++i) {
        const std::string inks = std::to_string(5 * i) + " 20 10 0 ";
        const Lab& lab = colors[i];
        coated.push_back(inks + labRow(0, lab).substr(2));
        newsprint.push_back(inks + labRow(0, {25 + 0.6 * lab[0], 0.5 * lab[1], 5 + 0.5 * lab[2]}).substr(2));
    }
    const Comparison result = compared(measured(kCmykLab, newsprint), reference(kCmykLab, coated));
    EXPECT_GT(compared(measured(kCmykLab, newsprint), reference(kCmykLab, coated), {}).statistics.median,
              10.0);
    EXPECT_THAT(findingsOf(result, Kind::largeDifferences), IsEmpty());
    EXPECT_THAT(findingsOf(result, Kind::shiftedRows), IsEmpty());
}

// Light.

const char* const kRgbXyz = "RGB_R RGB_G RGB_B XYZ_X XYZ_Y XYZ_Z";

// A display (IEC 61966-2-1) of this luminance; of prints the primaries are darker, in parts of it.
Rows display(double luminance, double primaries = 1.0, double flare = 0.0) {
    const double colors[][6] = {
        {0, 0, 0, 0.0095, 0.01, 0.0109},       {255, 0, 0, 0.4124, 0.2126, 0.0193},
        {0, 255, 0, 0.3576, 0.7152, 0.1192},   {0, 0, 255, 0.1805, 0.0722, 0.9505},
        {255, 255, 0, 0.77, 0.9278, 0.1385},   {0, 255, 255, 0.5381, 0.7874, 1.0697},
        {255, 0, 255, 0.5929, 0.2848, 0.9698}, {128, 128, 128, 0.2052, 0.2159, 0.2351},
        {255, 255, 255, 0.9505, 1.0, 1.089}};
    Rows rows;
    for (const auto& color : colors) {
        std::ostringstream row;
        row << color[0] << ' ' << color[1] << ' ' << color[2];
        for (int i = 3; i < 6; ++i)
            row << ' ' << flare + luminance * color[i] * (rows.empty() || rows.size() > 3 ? 1.0 : primaries);
        rows.push_back(row.str());
    }
    return rows;
}

TEST_F(comparison, displayAgainstDisplay_isNotedOnce) {
    const Comparison result = compared(measured(kRgbXyz, display(100)), reference(kRgbXyz, display(101)));
    EXPECT_THAT(findingsOf(result, Kind::emission),
                ElementsAre(StartsWith("measured.txt and reference.txt hold measurements of displays")));
}

TEST_F(comparison, lightThatIsNotScaled_isWarnedOf) {
    const Comparison result = compared(measured(kRgbXyz, display(300)), reference(kRgbXyz, display(300)));
    EXPECT_THAT(findingsOf(result, Kind::emission),
                ElementsAre(StartsWith("!measured.txt"), StartsWith("!reference.txt")));
}

TEST_F(comparison, lightAgainstPrint_isWarnedOf) {
    const Comparison result =
        compared(measured(kRgbXyz, display(100)), reference(kRgbXyz, display(100, 0.6)));
    EXPECT_THAT(findingsOf(result, Kind::emission), ElementsAre(StartsWith("!measured.txt")));
}

TEST_F(comparison, lightOfAnotherLuminance_isToldWithTheFactor) {
    const Comparison result = compared(measured(kRgbXyz, display(80)), reference(kRgbXyz, display(100)));
    EXPECT_THAT(findingsOf(result, Kind::otherReading),
                ElementsAre(StartsWith("!if the XYZ values of measured.txt had 1.25 times the luminance")));
    EXPECT_THAT(findingsOf(result, Kind::emission),
                ElementsAre(StartsWith("measured.txt and reference.txt hold measurements of displays")));
}

TEST_F(comparison, whitesOfOtherLuminance_areToldWhereMoreThanThatDiffers) {
    const Comparison result =
        compared(measured(kRgbXyz, display(60, 1.0, 10)), reference(kRgbXyz, display(100)));
    EXPECT_THAT(findingsOf(result, Kind::otherReading), IsEmpty());
    EXPECT_THAT(findingsOf(result, Kind::emission),
                ElementsAre(StartsWith("!the whites of the two displays differ in luminance: Y is 70 in "
                                       "measured.txt (row 9) and 100 in reference.txt (row 9); scale"),
                            StartsWith("measured.txt and reference.txt hold measurements of displays")));
}

TEST_F(comparison, whitesOfNearlyOneLuminance_areNotTold) {
    const Comparison result =
        compared(measured(kRgbXyz, display(84, 1.0, 10)), reference(kRgbXyz, display(100)));
    EXPECT_THAT(findingsOf(result, Kind::emission),
                ElementsAre(StartsWith("measured.txt and reference.txt hold measurements of displays")));
}

TEST_F(comparison, spectraDividedBy100TwiceOver_areToldAgainstTheOthers) {
    Rows whole;
    Rows divided;
    for (int i = 1; i <= 8; ++i) {
        std::ostringstream row;
        std::ostringstream small;
        row << i;
        small << i;
        for (const double share : {0.3, 0.4, 0.9, 1.0}) {
            row << ' ' << 0.1 * i * share;
            small << ' ' << 0.001 * i * share;
        }
        whole.push_back(row.str());
        divided.push_back(small.str());
    }
    const Comparison result = compared(measured(kSpectra, divided), reference(kSpectra, whole));
    EXPECT_THAT(
        findingsOf(result, Kind::otherReading),
        ElementsAre(StartsWith("!if the spectral values of measured.txt were multiplied by 100, the")));
}

// Percent that are read as fractions look like these.
TEST_F(comparison, blacksAgainstSpectraThatHoldNothingDark_areToldOfEitherSide) {
    Rows light;
    Rows dark;
    for (int i = 1; i <= 8; ++i) {
        const auto row = [i](double value) {
            std::ostringstream text;
            text << i << ' ' << value << ' ' << 1.02 * value << ' ' << value << ' ' << 1.01 * value;
            return text.str();
        };
        light.push_back(row(0.4 + 0.05 * i));
        dark.push_back(row(0.004 + 0.0005 * i));
    }
    const char* const both = "!if the spectral values of reference.txt were multiplied by 100, or those of "
                             "measured.txt divided by "
                             "100, the median difference would be ";
    EXPECT_THAT(
        findingsOf(compared(measured(kSpectra, light), reference(kSpectra, dark)), Kind::otherReading),
        ElementsAre(StartsWith(both)));
}

// Values relative to the paper.

TEST_F(comparison, perfectWhiteOnOneSide_isToldToBeRelativeToThePaper) {
    std::vector<Lab> relative = print();
    relative[0] = {100, 0, 0};
    const OwnedChart left = measured(kLab, labRowsOf(relative));
    const OwnedChart right = reference(kLab, labRowsOf(print()));
    EXPECT_THAT(
        findingsOf(compared(left, right), Kind::relativeToPaper),
        ElementsAre(AllOf(StartsWith("!the lightest sample of measured.txt has Lab 100 0 0, a perfect"),
                          HasSubstr("95 1 -4 in reference.txt"))));
    EXPECT_THAT(findingsOf(compared(measured(kLab, labRowsOf(print())), reference(kLab, labRowsOf(relative))),
                           Kind::relativeToPaper),
                ElementsAre(StartsWith("!the lightest sample of reference.txt")));
    EXPECT_THAT(findingsOf(compared(left, left), Kind::relativeToPaper), IsEmpty());
}

TEST_F(comparison, perfectWhiteAgainstAColour_isNotCalledRelativeToThePaper) {
    for (const Lab& other : {Lab{89, -5, 93}, Lab{55, 0, -2}}) {
        std::vector<Lab> left = print();
        std::vector<Lab> right = print();
        left[0] = {100, 0, 0};
        right[0] = other;
        EXPECT_THAT(findingsOf(compared(measured(kLab, labRowsOf(left)), reference(kLab, labRowsOf(right))),
                               Kind::relativeToPaper),
                    IsEmpty());
    }
}

// They may be displays.
TEST_F(comparison, perfectWhiteOfRgb_isCalledRelativeToTheWhite) {
    Rows left;
    Rows right;
    for (int i = 0; i <= 10; ++i) {
        const std::string grey = std::to_string(25 * i);
        const std::string device = grey + ' ' + grey + ' ' + grey + ' ';
        left.push_back(device + std::to_string(9.7 * i) + " 0.4 -0.9");
        right.push_back(device + std::to_string(10 * i) + " 0 0");
    }
    EXPECT_THAT(
        findingsOf(compared(measured("RGB_R RGB_G RGB_B LAB_L LAB_A LAB_B", left),
                            reference("RGB_R RGB_G RGB_B LAB_L LAB_A LAB_B", right)),
                   Kind::relativeToPaper),
        ElementsAre(HasSubstr("the values of reference.txt seem to be relative to their white and those")));
}

} // namespace
} // namespace qxcms::tests
