#include <algorithm>
#include <filesystem>
#include <regex>
#include <sstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/cli/run_command.h"
#include "tests/support/chart_text.h"
#include "tests/support/scratch.h"

using qxcms::tests::chartText;
using qxcms::tests::Outcome;
using qxcms::tests::runCommand;
using qxcms::tests::ScratchFolder;
using qxcms::tests::Surroundings;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* kLab = "SAMPLE_ID LAB_L LAB_A LAB_B";
constexpr const char* kDemoSpectra = QXCMS_SOURCE_DIR "/data/charts/colorchecker_spectral.txt";
constexpr const char* kDemoAims = QXCMS_SOURCE_DIR "/data/charts/colorchecker_aims.txt";

class diff : public testing::Test {
protected:
    ScratchFolder folder;

    std::string chart(const std::string& name, const std::string& fields,
                      const std::vector<std::string>& rows, const std::string& header = "") const {
        return folder.write(name, chartText(fields, rows, header));
    }

    static Outcome run(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), "diff");
        return runCommand(arguments);
    }

    static nlohmann::json json(std::vector<std::string> arguments) {
        arguments.push_back("--json");
        const Outcome result = run(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return nlohmann::json::parse(result.out);
    }

    // The texts of the findings of one kind, warnings with a "!" in front.
    static std::vector<std::string> findings(const nlohmann::json& report, const std::string& kind) {
        std::vector<std::string> texts;
        for (const nlohmann::json& finding : report["findings"])
            if (finding["kind"] == kind)
                texts.push_back((finding["severity"] == "warning" ? "!" : "") +
                                finding["text"].get<std::string>());
        return texts;
    }

    // Two patches with their conditions in the header.
    std::string declaring(const std::string& name, const std::string& header) const {
        return chart(name, kLab, {"A 50 0 0", "B 60 0 0"}, header);
    }

    // Four patches; the CIE 1976 differences are 5, 0, 10 and 1.
    std::string four() const {
        return chart("m.txt", kLab, {"A1 50 3 4", "A2 60 0 0", "A3 70 -6 8", "A4 81 0 0"});
    }
    std::string fourReference() const {
        return chart("r.txt", kLab, {"A1 50 0 0", "A2 60 0 0", "A3 70 0 0", "A4 80 0 0"});
    }
};

using diffJson = diff;
using diffText = diff;
using diffRefusal = diff;
using diffTolerance = diff;
using diffConditions = diff;
using diffPairing = diff;
using diffTables = diff;

std::string withoutLineBreaks(const std::string& report) {
    return std::regex_replace(report, std::regex("\\s+"), " ");
}

// Lines of the text report that begin with this row number and name.
std::string lineWith(const std::string& text, const std::string& part) {
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (line.find(part) != std::string::npos)
            return line;
    }
    return "";
}

std::size_t longestLine(const std::string& text) {
    std::istringstream lines(text);
    std::size_t longest = 0;
    for (std::string line; std::getline(lines, line);)
        longest = std::max(longest, line.size());
    return longest;
}

// The demo. Expected CIE 1976 figures: an independent calculation from the published tables (36 wavelengths,
// whites of C: the sums for the spectra, the published one for the aims).
TEST_F(diff, colorCheckerUnderC_meetsItsPublishedAims) {
    const nlohmann::json report = json({kDemoSpectra, kDemoAims, "--illuminant", "C", "--formula", "76"});
    EXPECT_EQ(report["statistics"]["count"], 24);
    EXPECT_NEAR(report["statistics"]["mean"], 1.00216, 0.00002);
    EXPECT_NEAR(report["statistics"]["median"], 0.97972, 0.00002);
    EXPECT_NEAR(report["statistics"]["percentile95"], 1.62302, 0.00002);
    EXPECT_NEAR(report["statistics"]["maximum"], 1.71578, 0.00002);
    EXPECT_EQ(report["worst"][0]["name"], "purple");
}

TEST_F(diff, colorCheckerUnderC_givesTheLabOfItsSpectra) {
    const nlohmann::json patch = json({kDemoSpectra, kDemoAims, "--illuminant", "C"})["patches"][0];
    EXPECT_EQ(patch["name"], "dark_skin");
    EXPECT_NEAR(patch["measured"][0], 37.41954, 0.00001);
    EXPECT_NEAR(patch["measured"][1], 12.83305, 0.00001);
    EXPECT_NEAR(patch["measured"][2], 15.83078, 0.00001);
}

TEST_F(diff, colorCheckerWithoutOptions_isComparedUnderTheIlluminantOfItsAims) {
    const nlohmann::json report = json({kDemoSpectra, kDemoAims});
    EXPECT_EQ(report["conditions"]["illuminant"], nlohmann::json({{"value", "C"}, {"origin", "declared"}}));
    EXPECT_EQ(report["conditions"]["observer"],
              nlohmann::json({{"value", "2 degree"}, {"origin", "declared"}}));
    EXPECT_EQ(report["patches"], json({kDemoSpectra, kDemoAims, "--illuminant", "C"})["patches"]);
    EXPECT_THAT(report["findings"], IsEmpty());
}

TEST_F(diffText, statesConditionsAndHowBothFilesWereRead) {
    const Outcome result =
        run({kDemoSpectra, kDemoAims, "--illuminant", "c", "--observer", "2", "--formula", "76"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(result.out, HasSubstr("the reference is the standard"));
    EXPECT_THAT(result.out, HasSubstr("illuminant  C (as asked for)\n"));
    EXPECT_THAT(result.out, HasSubstr("observer    2 degree (as asked for)\n"));
    EXPECT_THAT(result.out, HasSubstr("white       X 98.0401  Y 100.0000  Z 118.1056  (of spectra, "));
    EXPECT_THAT(result.out, HasSubstr("formula     CIELAB Delta E (Classic) (CIE 1976)\n"));
    EXPECT_THAT(result.out, HasSubstr("24 samples; spectra, 81 bands from 380 to 780 nm, read as fractions"));
    EXPECT_THAT(result.out, HasSubstr("24 samples; Lab as it stands\n"));
    EXPECT_THAT(result.out, HasSubstr("pairing     24 of 24 paired by SAMPLE_ID\n"));
    EXPECT_THAT(result.out, AllOf(Not(HasSubstr("warning")), Not(HasSubstr("note"))));
}

TEST_F(diffText, conditionsOfTheFiles_areSaidToBeDeclared) {
    EXPECT_THAT(run({kDemoSpectra, kDemoAims}).out, AllOf(HasSubstr("illuminant  C (as declared)\n"),
                                                          HasSubstr("observer    2 degree (as declared)\n")));
}

TEST_F(diffText, withoutOptionsAndDeclarations_assumesD50TheTwoDegreeObserverAndTakesCiede2000) {
    const Outcome result = run({four(), fourReference()});
    EXPECT_THAT(result.out,
                AllOf(HasSubstr("illuminant  D50 (assumed)\n"), HasSubstr("observer    2 degree (assumed)\n"),
                      HasSubstr("formula     CIEDE2000 (ISO/CIE 11664-6"), HasSubstr("note")));
    EXPECT_THAT(result.out, Not(HasSubstr("warning")));
}

TEST_F(diffText, labNeedsNoWhite) {
    EXPECT_THAT(run({four(), fourReference()}).out, Not(HasSubstr("white")));
}

TEST_F(diffText, rowsShowBothLabAndTheSignedDifferences) {
    const Outcome result = run({four(), fourReference(), "--worst", "0", "--formula", "76"});
    EXPECT_THAT(lineWith(result.out, "A1"),
                MatchesRegex(
                    " +1 +A1 +50\\.00 +3\\.00 +4\\.00 +50\\.00 +0\\.00 +0\\.00 +0\\.00 +\\+3\\.00 +\\+4\\.00 "
                    "+\\+5\\.00 +0\\.00 +5\\.00 +5\\.000"));
    EXPECT_THAT(
        lineWith(result.out, "A3"),
        MatchesRegex(" +3 +A3 +70\\.00 +-6\\.00 +8\\.00 +70\\.00 +0\\.00 +0\\.00 +0\\.00 +-6\\.00 +\\+8\\.00 "
                     "+\\+10\\.00 +0\\.00 +10\\.00 +10\\.000"));
}

// Differences 0, 1, 5, 10: mean 4, median 3; of four, the 90th percentile and those above are the 4th.
TEST_F(diffText, statisticsFollow) {
    const Outcome result = run({four(), fourReference(), "--formula", "76"});
    EXPECT_THAT(lineWith(result.out, "count"), MatchesRegex(" +count +4"));
    EXPECT_THAT(lineWith(result.out, "mean "), MatchesRegex(" +mean +4\\.000"));
    EXPECT_THAT(lineWith(result.out, "median"), MatchesRegex(" +median +3\\.000"));
    EXPECT_THAT(lineWith(result.out, "90th"), MatchesRegex(" +90th percentile +10\\.000"));
    EXPECT_THAT(lineWith(result.out, "95th"), MatchesRegex(" +95th percentile +10\\.000"));
    EXPECT_THAT(lineWith(result.out, "99th"), MatchesRegex(" +99th percentile +10\\.000"));
    EXPECT_THAT(lineWith(result.out, "maximum"), MatchesRegex(" +maximum +10\\.000 +row 3, A3"));
}

TEST_F(diffText, worstPatches_areListedLast) {
    const Outcome result = run({four(), fourReference(), "--worst", "2"});
    const std::string worst = result.out.substr(result.out.find("The 2 worst"));
    EXPECT_LT(worst.find("A3"), worst.find("A1"));
    EXPECT_NE(worst.find("A1"), std::string::npos);
    EXPECT_EQ(worst.find("A4"), std::string::npos);
}

TEST_F(diffText, worstZero_leavesTheListOut) {
    EXPECT_THAT(run({four(), fourReference(), "--worst", "0"}).out, Not(HasSubstr("worst")));
}

TEST_F(diffText, worstBeyondTheCount_listsAll) {
    EXPECT_THAT(run({four(), fourReference(), "--worst", "2147483647"}).out,
                HasSubstr("The 4 worst patches\n"));
}

TEST_F(diffText, onePatch_isNotCounted) {
    const std::string file = chart("m.txt", kLab, {"A 50 0 0"});
    const Outcome result = run({file, file, "--tolerance", "0"});
    EXPECT_THAT(result.out, AllOf(HasSubstr("\nThe worst patch\n"), Not(HasSubstr("The 1 worst")),
                                  HasSubstr("tolerance 0: kept by the only patch\n")));
    const std::string other = chart("r.txt", kLab, {"A 52 0 0"});
    EXPECT_THAT(run({file, other, "--tolerance", "1"}).out,
                HasSubstr("tolerance 1: exceeded by the only patch\n"));
}

TEST_F(diffText, longNames_keepTheColumnsWithinThePage) {
    const std::string name(120, 'x');
    const std::string measured = chart("m.txt", kLab, {name + " 100 -127.99 127.99", "B 1 2 3"});
    const std::string reference = chart("r.txt", kLab, {name + " 99.99 -127 127", "B 1 2 3"});
    const Outcome result = run({measured, reference});
    EXPECT_LE(longestLine(result.out), 110u);
    EXPECT_EQ(lineWith(result.out, "xxx...xxx").size(), lineWith(result.out, "  B ").size());
}

TEST_F(diffText, largeNumbers_keepTheColumns) {
    const std::string measured = chart("m.txt", kLab, {"A 1 2 3", "B 12345678 -1e30 1e30"});
    const std::string reference = chart("r.txt", kLab, {"A 1 2 3", "B 1 2 3"});
    const Outcome result = run({measured, reference});
    EXPECT_GT(lineWith(result.out, "  A ").size(), 90u);
    EXPECT_EQ(lineWith(result.out, "  A ").size(), lineWith(result.out, "  B ").size());
}

TEST_F(diffText, namesWithControls_areShownEscaped) {
    const std::string file = chart("m.txt", kLab, {"\x1B[2J 50 0 0"});
    const Outcome result = run({file, file});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out, AllOf(HasSubstr("\\x1b[2J"), Not(HasSubstr("\x1B"))));
}

TEST_F(diffText, negativeZero_isNotShown) {
    const std::string measured = chart("m.txt", kLab, {"A 50 -0.0001 0"});
    const std::string reference = chart("r.txt", kLab, {"A 50 0 0"});
    EXPECT_THAT(run({measured, reference}).out, Not(HasSubstr("-0.00")));
}

TEST_F(diffText, namesAreNumbersOfRows_whereThereIsNoIdentifier) {
    const std::string fields = "CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B";
    const std::string file = chart("m.txt", fields, {"0 0 0 0 95 0 0", "100 0 0 0 55 -36 -50"});
    const Outcome result = run({file, file});
    EXPECT_THAT(result.out, HasSubstr("pairing     2 of 2 paired by CMYK\n"));
    EXPECT_EQ(json({file, file})["patches"][1]["name"], "2");
}

TEST_F(diffText, spectraInPercent_areStated) {
    const std::string file = chart("m.txt", "SAMPLE_ID nm400 nm500 nm600 nm700", {"A 50 50 50 50"});
    EXPECT_THAT(run({file, file}).out,
                HasSubstr("4 bands from 400 to 700 nm, read as percent, held constant beyond them"));
}

TEST_F(diffText, xyzRows_areStatedWithThePublishedWhite) {
    const std::string file = chart("m.txt", "SAMPLE_ID XYZ_X XYZ_Y XYZ_Z", {"A 20 20 20"});
    EXPECT_THAT(run({file, file}).out,
                AllOf(HasSubstr("1 sample; XYZ, converted to Lab\n"),
                      HasSubstr("white       X 96.4220  Y 100.0000  Z 82.5210  (of XYZ, as published)\n"),
                      Not(HasSubstr("(of spectra"))));
}

TEST_F(diffText, spectraAgainstXyz_showBothWhites) {
    const std::string spectra = chart("m.txt", "SAMPLE_ID nm400 nm550 nm700", {"A 0.5 0.5 0.5"});
    const std::string xyz = chart("r.txt", "SAMPLE_ID XYZ_X XYZ_Y XYZ_Z", {"A 48.211 50 41.2605"});
    EXPECT_THAT(run({spectra, xyz}).out,
                AllOf(HasSubstr("white       X 96.3841  Y 100.0000  Z 82.4535  (of spectra, "),
                      HasSubstr("white       X 96.4220  Y 100.0000  Z 82.5210  (of XYZ, ")));
}

TEST_F(diffText, furtherTables_areMentioned) {
    const std::string table = chartText(kLab, {"A 50 0 0"});
    const std::string file = folder.write("two.txt", table + table);
    EXPECT_THAT(run({file, file}).out, HasSubstr("table 1 of 2"));
}

TEST_F(diffText, deltaE2000_tellsThatItIsNotThePublishedFormula) {
    const std::string file = four();
    for (const char* formula : {"Delta E 2000", "kernel2000"})
        EXPECT_THAT(withoutLineBreaks(run({file, file, "--formula", formula}).out),
                    HasSubstr("note Delta E 2000 is not CIEDE2000 as published"));
    for (const char* formula : {"2000", "CIEDE2000", "94"})
        EXPECT_THAT(run({file, file, "--formula", formula}).out, Not(HasSubstr("as published")));
}

// With chromas 20 and 10 CIE94 gives 10 / 1.45 when the standard has chroma 10.
TEST_F(diffJson, referenceIsTheStandard) {
    const std::string twenty = chart("m.txt", kLab, {"A 50 20 0"});
    const std::string ten = chart("r.txt", kLab, {"A 50 10 0"});
    EXPECT_NEAR(json({twenty, ten, "--formula", "94"})["statistics"]["maximum"], 10.0 / 1.45, 1e-12);
    EXPECT_NEAR(json({ten, twenty, "--formula", "94"})["statistics"]["maximum"], 10.0 / 1.90, 1e-12);
    EXPECT_EQ(json({ten, twenty})["standard"], "reference");
}

// Pair 19 of the CIEDE2000 test data.
TEST_F(diffJson, formulaWithoutOption_isCiede2000AsPublished) {
    const std::string measured = chart("m.txt", kLab, {"A 50 2.5 0"});
    const std::string reference = chart("r.txt", kLab, {"A 56 -27 -3"});
    for (const std::vector<std::string>& options :
         {std::vector<std::string>{}, {"--formula", "2000"}, {"--formula", "ciede2000"}}) {
        std::vector<std::string> arguments = {measured, reference};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const nlohmann::json report = json(arguments);
        EXPECT_NEAR(report["statistics"]["maximum"], 31.9030, 0.00005);
        EXPECT_EQ(report["conditions"]["formula"]["name"], "CIEDE2000");
        EXPECT_EQ(report["conditions"]["formula"]["short"], "2000");
        EXPECT_THAT(findings(report, "formula"), IsEmpty());
    }
}

// The same pair as the suite's formula gives it.
TEST_F(diffJson, formulaIsTheOneAskedFor) {
    const std::string measured = chart("m.txt", kLab, {"A 50 2.5 0"});
    const std::string reference = chart("r.txt", kLab, {"A 56 -27 -3"});
    const nlohmann::json report = json({measured, reference, "--formula", "Delta E 2000"});
    EXPECT_NEAR(report["statistics"]["maximum"], 25.2378, 0.0001);
    EXPECT_EQ(report["conditions"]["formula"]["name"], "Delta E 2000");
    EXPECT_EQ(report["conditions"]["formula"]["short"], "kernel2000");
    EXPECT_EQ(findings(report, "formula").size(), 1u);
}

TEST_F(diffJson, carriesTheSameAsTheText) {
    const nlohmann::json report = json({four(), fourReference(), "--worst", "2", "--formula", "76"});
    EXPECT_EQ(report["command"], "diff");
    EXPECT_EQ(report["conditions"]["illuminant"], nlohmann::json({{"value", "D50"}, {"origin", "assumed"}}));
    EXPECT_EQ(report["conditions"]["observer"],
              nlohmann::json({{"value", "2 degree"}, {"origin", "assumed"}}));
    EXPECT_EQ(report["conditions"]["forced"], false);
    EXPECT_TRUE(report["conditions"]["spectralWhite"].is_null());
    EXPECT_TRUE(report["conditions"]["xyzWhite"].is_null());
    EXPECT_EQ(report["measured"]["file"], folder.path("m.txt"));
    EXPECT_EQ(report["measured"]["source"], "lab");
    EXPECT_TRUE(report["measured"]["spectra"].is_null());
    EXPECT_EQ(report["reference"]["samples"], 4);
    EXPECT_EQ(report["pairing"]["rule"], "identifiers");
    EXPECT_EQ(report["pairing"]["by"], "SAMPLE_ID");
    EXPECT_EQ(report["pairing"]["pairs"], 4);
    EXPECT_EQ(report["pairing"]["unusedMeasured"], 0);
    EXPECT_EQ(report["pairing"]["unusedReference"], 0);
    EXPECT_EQ(findings(report, "assumedCondition").size(), 2u);
    const nlohmann::json& patch = report["patches"][2];
    EXPECT_EQ(patch["row"], 3);
    EXPECT_EQ(patch["referenceRow"], 3);
    EXPECT_EQ(patch["referenceCount"], 1);
    EXPECT_EQ(patch["name"], "A3");
    EXPECT_EQ(patch["measured"], nlohmann::json({70.0, -6.0, 8.0}));
    EXPECT_EQ(patch["reference"], nlohmann::json({70.0, 0.0, 0.0}));
    EXPECT_EQ(patch["dL"], 0.0);
    EXPECT_EQ(patch["da"], -6.0);
    EXPECT_EQ(patch["db"], 8.0);
    EXPECT_EQ(patch["dC"], 10.0);
    EXPECT_EQ(patch["dH"], 0.0);
    EXPECT_EQ(patch["dCh"], 10.0);
    EXPECT_EQ(patch["difference"], 10.0);
    EXPECT_EQ(report["statistics"]["count"], 4);
    EXPECT_EQ(report["statistics"]["mean"], 4.0);
    EXPECT_EQ(report["statistics"]["median"], 3.0);
    EXPECT_EQ(report["statistics"]["percentile90"], 10.0);
    EXPECT_EQ(report["statistics"]["percentile95"], 10.0);
    EXPECT_EQ(report["statistics"]["percentile99"], 10.0);
    EXPECT_EQ(report["statistics"]["maximum"], 10.0);
    ASSERT_EQ(report["worst"].size(), 2u);
    EXPECT_EQ(report["worst"][0]["row"], 3);
    EXPECT_EQ(report["worst"][1]["row"], 1);
    EXPECT_TRUE(report["tolerance"].is_null());
}

TEST_F(diffJson, spectralSide_tellsBandsAndPercent) {
    const nlohmann::json report = json({kDemoSpectra, kDemoAims, "--illuminant", "C"});
    EXPECT_EQ(report["measured"]["source"], "spectra");
    EXPECT_EQ(report["measured"]["spectra"],
              nlohmann::json({{"bands", 81}, {"firstNm", 380}, {"lastNm", 780}, {"percent", false}}));
    EXPECT_NEAR(report["conditions"]["spectralWhite"][0], 98.04006, 1e-5);
    EXPECT_TRUE(report["conditions"]["xyzWhite"].is_null());
}

TEST_F(diffJson, namesThatAreNoUtf8_areReplaced) {
    const std::string file = chart("m.txt", kLab, {"caf\xE9 50 0 0"});
    EXPECT_EQ(json({file, file})["patches"][0]["name"], "caf\xEF\xBF\xBD");
}

TEST_F(diffJson, sourceAskedFor_isTaken) {
    const std::string file =
        chart("m.txt", "SAMPLE_ID LAB_L LAB_A LAB_B XYZ_X XYZ_Y XYZ_Z", {"A 50 0 0 96.422 100 82.521"});
    const nlohmann::json report = json({file, file, "--measured-as", "xyz", "--reference-as", "lab"});
    EXPECT_EQ(report["measured"]["source"], "xyz");
    EXPECT_EQ(report["reference"]["source"], "lab");
    EXPECT_EQ(report["conditions"]["xyzWhite"], nlohmann::json({96.422, 100.0, 82.521}));
    EXPECT_EQ(report["patches"][0]["measured"][0], 100.0);
    EXPECT_EQ(report["patches"][0]["reference"][0], 50.0);
}

TEST_F(diffPairing, order_isStated_andTheOrderOfTheIdentifiersContradicts) {
    const std::string measured = chart("m.txt", kLab, {"A 50 0 0", "B 60 0 0"});
    const std::string reference = chart("r.txt", kLab, {"B 50 0 0", "A 60 0 0"});
    const nlohmann::json report = json({measured, reference, "--pair", "order"});
    EXPECT_EQ(report["pairing"]["rule"], "order");
    EXPECT_EQ(report["pairing"]["by"], "order");
    EXPECT_EQ(report["statistics"]["maximum"], 0.0);
    EXPECT_THAT(
        findings(report, "otherPairing"),
        testing::ElementsAre(StartsWith("!SAMPLE_ID contradicts the order of the rows in 2 of 2 pairs")));
    EXPECT_THAT(run({measured, reference, "--pair", "order"}).out,
                HasSubstr("pairing     2 of 2 paired in their order\n"));
}

constexpr const char* kCmykLab = "SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B";

TEST_F(diffPairing, identifierAskedFor_pairs) {
    const std::string fields = "SAMPLE_ID SAMPLE_NAME LAB_L LAB_A LAB_B";
    const std::string left = chart("l.txt", fields, {"7 A 50 0 0", "8 B 60 0 0"});
    const std::string right = chart("r.txt", fields, {"7 B 60 0 0", "8 A 50 0 0"});
    EXPECT_THAT(run({left, right}).out, HasSubstr("(--pair SAMPLE_NAME)"));
    const Outcome outcome = run({left, right, "--pair", "SAMPLE_NAME"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.out, HasSubstr("2 of 2 paired by SAMPLE_NAME"));
    EXPECT_EQ(run({left, right, "--pair", "SAMPLE_LOC"}).exitCode, 4);
}

TEST_F(diffPairing, stripAgainstItsChart_pairsByDeviceValuesInAnyOrder) {
    const std::string strip = chart("m.txt", kCmykLab, {"1 0 0 0 100 20 0 0", "2 0 0 0 0 95 0 0"});
    const std::string aims =
        chart("r.txt", kCmykLab, {"1 0 0 0 0 95 0 0", "2 100 0 0 0 55 -36 -50", "3 0 0 0 100 20 0 0"});
    const nlohmann::json report = json({strip, aims, "--formula", "76"});
    EXPECT_EQ(report["pairing"], nlohmann::json({{"rule", "deviceValues"},
                                                 {"by", "CMYK"},
                                                 {"pairs", 2},
                                                 {"unusedMeasured", 0},
                                                 {"unusedReference", 1}}));
    EXPECT_EQ(report["patches"][0]["referenceRow"], 3);
    EXPECT_EQ(report["patches"][1]["referenceRow"], 1);
    EXPECT_EQ(report["statistics"]["maximum"], 0.0);
    EXPECT_THAT(run({strip, aims}).out,
                HasSubstr("pairing     2 of 2 paired by CMYK; 1 reference sample unused\n"));
}

TEST_F(diffPairing, eachWord_forcesItsRule) {
    const std::string file = chart("m.txt", kCmykLab, {"1 0 0 0 100 20 0 0", "2 0 0 0 0 95 0 0"});
    EXPECT_EQ(json({file, file, "--pair", "auto"})["pairing"]["rule"], "deviceValues");
    EXPECT_EQ(json({file, file, "--pair", "device"})["pairing"]["rule"], "deviceValues");
    EXPECT_EQ(json({file, file, "--pair", "id"})["pairing"]["rule"], "identifiers");
    EXPECT_EQ(json({file, file, "--pair", "order"})["pairing"]["rule"], "order");
}

TEST_F(diffPairing, ruleThatCannotBeUsed_givesExitCode4) {
    const Outcome result = run({four(), fourReference(), "--pair", "device"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, HasSubstr("do not hold the same device values"));
}

// By order the differences are 10 and 10, by identifiers none.
TEST_F(diffPairing, muchSmallerDifferencesOfAnotherRule_areWarnedOf) {
    const std::string measured = chart("m.txt", kLab, {"A 50 0 0", "B 60 0 0"});
    const std::string reference = chart("r.txt", kLab, {"B 60 0 0", "A 50 0 0"});
    EXPECT_THAT(
        withoutLineBreaks(run({measured, reference, "--pair", "order", "--formula", "76"}).out),
        HasSubstr("warning paired by identifiers (--pair id) the median difference would be 0 instead "
                  "of 10,"));
}

TEST_F(diffPairing, samplesWithoutCounterpart_areWarnedOf) {
    const std::string measured = chart("m.txt", kLab, {"A1 50 3 4", "A9 60 0 0"});
    const nlohmann::json report = json({measured, fourReference()});
    EXPECT_EQ(report["pairing"]["unusedMeasured"], 1);
    EXPECT_EQ(report["pairing"]["unusedReference"], 3);
    ASSERT_EQ(findings(report, "unusedSamples").size(), 1u);
    EXPECT_THAT(findings(report, "unusedSamples")[0],
                AllOf(StartsWith("!1 of 2 samples of "), HasSubstr("row 2"), HasSubstr("\"A9\"")));
}

TEST_F(diffConditions, declaredOnesThatDiffer_areRefusedWithExitCode4AndBothLines) {
    const std::string d50 = declaring("m.txt", "WEIGHTING_FUNCTION \"ILLUMINANT, D50\"\n");
    const std::string d65 = declaring("r.txt", "WEIGHTING_FUNCTION \"ILLUMINANT, D65\"\n");
    const Outcome result = run({d50, d65});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, AllOf(StartsWith("qxcms: the conditions differ: illuminant D50 in " + d50),
                                  HasSubstr("ILLUMINANT, D50"), HasSubstr("D65 in " + d65),
                                  HasSubstr("ILLUMINANT, D65"), HasSubstr("--force compares all the same")));
}

TEST_F(diffConditions, force_comparesWhatDiffers_andEveryOutputSaysSo) {
    const std::string m0 = declaring("m.txt", "MEASUREMENT_SOURCE \"MeasurementCondition=M0\"\n");
    const std::string m1 = declaring("r.txt", "MEASUREMENT_SOURCE \"MeasurementCondition=M1\"\n");
    EXPECT_EQ(run({m0, m1}).exitCode, 4);
    const nlohmann::json report = json({m0, m1, "--force"});
    EXPECT_EQ(report["conditions"]["forced"], true);
    EXPECT_THAT(findings(report, "forcedCondition"),
                testing::ElementsAre(AllOf(StartsWith("!compared by force although the conditions differ: "),
                                           HasSubstr("M0"), HasSubstr("M1"))));
    const Outcome text = run({m0, m1, "--force"});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_THAT(text.out, AllOf(HasSubstr("(compared by force)\n"), HasSubstr("  warning ")));
}

TEST_F(diffConditions, force_ofWhatDoesNotDiffer_saysNothing) {
    const std::string file = four();
    EXPECT_EQ(json({file, file, "--force"})["conditions"]["forced"], false);
    EXPECT_THAT(run({file, file, "--force"}).out, Not(HasSubstr("force")));
}

TEST_F(diffConditions, declaredOneThatIsNotTheOneAskedFor_isRefused) {
    const std::string file = declaring("m.txt", "WEIGHTING_FUNCTION \"ILLUMINANT, D50\"\n");
    const Outcome result = run({file, file, "--illuminant", "D65"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_THAT(result.err, AllOf(HasSubstr("illuminant D50 in "), HasSubstr("D65 as asked for")));
    EXPECT_EQ(run({file, file, "--illuminant", "CIE Illuminant D50"}).exitCode, 0);
    EXPECT_EQ(run({file, file, "--illuminant", "d50"}).exitCode, 0);
}

TEST_F(diffConditions, spectra_areIntegratedForWhatIsAskedFor) {
    const nlohmann::json report = json({kDemoSpectra, kDemoSpectra, "--illuminant", "A", "--observer", "10"});
    EXPECT_EQ(report["conditions"]["illuminant"], nlohmann::json({{"value", "A"}, {"origin", "asked"}}));
    EXPECT_NEAR(report["conditions"]["spectralWhite"][0], 111.148709, 1e-5);
}

TEST_F(diffConditions, whatAFileSays_isInTheJson) {
    const std::string file = declaring("m.txt", "SAMPLE_BACKING \"black\"\nWEIGHTING_FUNCTION \"ILLUMINANT, "
                                                "D50\"\n");
    const nlohmann::json conditions = json({file, file})["measured"]["conditions"];
    EXPECT_EQ(conditions["backing"]["standing"], "declared");
    EXPECT_EQ(conditions["backing"]["value"], "black");
    EXPECT_THAT(conditions["backing"]["source"].get<std::string>(), HasSubstr("SAMPLE_BACKING"));
    EXPECT_EQ(conditions["illuminant"]["value"], "D50");
    EXPECT_TRUE(conditions["observer"].is_null());
    EXPECT_EQ(conditions["emission"], false);
}

TEST_F(diffConditions, unknownAgainstDeclared_isWarnedOf) {
    const std::string known = declaring("m.txt", "WEIGHTING_FUNCTION \"ILLUMINANT, D65\"\n");
    const std::string unknown = declaring("r.txt", "");
    const nlohmann::json report = json({known, unknown});
    EXPECT_EQ(report["conditions"]["illuminant"]["value"], "D65");
    EXPECT_THAT(findings(report, "unknownCondition"),
                testing::ElementsAre(StartsWith("!" + unknown + " does not tell the illuminant")));
}

// The names of members, in their order, with those of the members within.
std::string outline(const nlohmann::ordered_json& json) {
    std::string text;
    if (json.is_object()) {
        for (const auto& [key, value] : json.items())
            text += key + '{' + outline(value) + '}';
    } else if (json.is_array() && !json.empty()) {
        text = outline(json[0]);
    }
    return text;
}

// docs/json.md shows the demo.
TEST_F(diffJson, documentation_showsWhatIsWritten) {
    const std::string page = ScratchFolder::read(QXCMS_SOURCE_DIR "/docs/json.md");
    const std::string opening = "```json\n";
    const std::size_t first = page.find(opening);
    ASSERT_NE(first, std::string::npos);
    const std::size_t start = first + opening.size();
    const auto shown = nlohmann::ordered_json::parse(page.substr(start, page.find("```", start) - start));
    const Outcome result = run({kDemoSpectra, kDemoAims, "--illuminant", "C", "--worst", "1", "--json"});
    const auto written = nlohmann::ordered_json::parse(result.out);
    EXPECT_EQ(outline(shown), outline(written));
    EXPECT_NEAR(shown["patches"][0]["difference"], written["patches"][0]["difference"], 1e-9);
    EXPECT_NEAR(shown["statistics"]["mean"], written["statistics"]["mean"], 1e-9);
    EXPECT_EQ(shown["conditions"]["illuminant"], written["conditions"]["illuminant"]);
    EXPECT_EQ(shown["version"], written["version"]);
}

TEST_F(diffJson, refusal_writesNothingButThePlainMessage) {
    const Outcome result = run({folder.path("none.txt"), four(), "--json"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, StartsWith("qxcms: "));
}

TEST_F(diffTolerance, differenceAbove_givesExitCode1) {
    const Outcome result = run({four(), fourReference(), "--tolerance", "4.999"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out, HasSubstr("tolerance 4.999: exceeded by 2 of 4 patches"));
}

TEST_F(diffTolerance, differenceEqualToIt_isKept) {
    const Outcome result = run({four(), fourReference(), "--tolerance", "10"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out, HasSubstr("tolerance 10: kept by all of 4 patches"));
}

TEST_F(diffTolerance, fileAgainstItself_keepsZero) {
    EXPECT_EQ(run({kDemoSpectra, kDemoSpectra, "--tolerance", "0"}).exitCode, 0);
}

TEST_F(diffTolerance, json_carriesLimitAndCount) {
    const Outcome result = run({four(), fourReference(), "--tolerance", "0.5", "--json"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(nlohmann::json::parse(result.out)["tolerance"], nlohmann::json({{"limit", 0.5}, {"above", 3}}));
}

TEST_F(diffRefusal, pairingThatFails_givesExitCode4) {
    const std::string measured = chart("m.txt", kLab, {"A 50 0 0", "B 60 0 0"});
    const std::string reference = chart("r.txt", kLab, {"C 50 0 0", "D 60 0 0"});
    const Outcome result = run({measured, reference});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err,
                AllOf(StartsWith("qxcms: "), HasSubstr("no SAMPLE_ID of "), HasSubstr("--pair order")));
}

TEST_F(diffRefusal, differentCounts_giveExitCode4WithPairOrderOnly) {
    const std::string measured = chart("m.txt", kLab, {"A1 50 0 0"});
    EXPECT_EQ(run({measured, fourReference()}).exitCode, 0);
    const Outcome result = run({measured, fourReference(), "--pair", "order"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_THAT(result.err, HasSubstr("the numbers of samples differ"));
}

TEST_F(diffRefusal, noColourData_givesExitCode4) {
    const std::string bare = chart("m.txt", "SAMPLE_ID CMYK_C", {"A 1"});
    const Outcome result = run({bare, bare});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_THAT(result.err, HasSubstr("m.txt holds no colour data"));
}

TEST_F(diffRefusal, sourceThatIsNotThere_givesExitCode4) {
    EXPECT_EQ(run({four(), fourReference(), "--measured-as", "spectra"}).exitCode, 4);
}

TEST_F(diffRefusal, valueThatIsNotFinite_givesExitCode3WithRowAndColumn) {
    const std::string file = chart("m.txt", kLab, {"A 50 0 0", "B 60 nan 0"});
    const Outcome result = run({file, file});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.err, HasSubstr("m.txt: row 2, column \"LAB_A\""));
}

TEST_F(diffRefusal, colourThatIsNoNumber_givesExitCode3WithRowAndColumn) {
    const std::string good = chart("r.txt", kLab, {"A 50 0 0", "B 60 0 0"});
    for (const char* value : {"N/A", "\"\"", "5%", "-"}) {
        const std::string bad = chart("m.txt", kLab, {"A 50 0 0", std::string("B 60 ") + value + " 0"});
        for (const bool isMeasured : {true, false}) {
            const Outcome result = isMeasured ? run({bad, good}) : run({good, bad});
            EXPECT_EQ(result.exitCode, 3) << value;
            EXPECT_THAT(result.out, IsEmpty());
            EXPECT_THAT(result.err, AllOf(HasSubstr("m.txt: row 2, column \"LAB_A\" (number 3): "),
                                          HasSubstr(" is no number")));
        }
    }
}

TEST_F(diffRefusal, spectralAndXyzValuesThatAreNoNumbers_giveExitCode3) {
    const std::string spectra = chart("s.txt", "SAMPLE_ID nm400 nm700", {"A 0.5 n.a."});
    EXPECT_THAT(run({spectra, spectra}).err, HasSubstr("row 1, column \"nm700\" (number 3): \"n.a.\""));
    EXPECT_EQ(run({spectra, spectra, "--pair", "order"}).exitCode, 3);
    const std::string xyz = chart("x.txt", "SAMPLE_ID XYZ_X XYZ_Y XYZ_Z", {"A 20 x 20"});
    EXPECT_THAT(run({xyz, xyz}).err, HasSubstr("row 1, column \"XYZ_Y\" (number 3): \"x\""));
}

TEST_F(diffRefusal, deviceValueThatIsNoNumber_givesExitCode3UnlessTheOrderPairs) {
    const std::string fields = "CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B";
    const std::string file = chart("m.txt", fields, {"0 0 0 0 95 0 0", "0 ? 0 0 50 0 0"});
    const Outcome result = run({file, file});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.err, HasSubstr("m.txt: row 2, column \"CMYK_M\" (number 2): \"?\" is no number"));
    const std::string whole = chart("r.txt", fields, {"0 0 0 0 95 0 0", "0 9 0 0 50 0 0"});
    const nlohmann::json report = json({file, whole, "--pair", "order"});
    EXPECT_THAT(findings(report, "doubtfulValues"), testing::ElementsAre(HasSubstr("\"?\" is no number")));
}

TEST_F(diffJson, valuesThatAreNoNumbersInOtherColumns_areNotedOncePerFile) {
    const std::string file =
        chart("m.txt", "SAMPLE_ID LAB_L LAB_A LAB_B LAB_C STDEV_X", {"A 50 0 0 1 N/A", "B 50 0 0 N/A N/A"});
    const nlohmann::json report = json({file, file});
    EXPECT_THAT(findings(report, "doubtfulValues"),
                testing::ElementsAre(HasSubstr(
                    "m.txt: row 1, column \"STDEV_X\" (number 6): \"N/A\" is no number; the column is "
                    "not compared, nor is another one with such values")));
    EXPECT_THAT(report["warnings"], IsEmpty());
}

TEST_F(diffJson, valuesThatAreNoNumbersInALaterTable_doNotMatter) {
    const std::string file =
        folder.write("two.txt", chartText(kLab, {"A 50 0 0"}) + chartText(kLab, {"A N/A 0 0"}));
    EXPECT_THAT(findings(json({file, file}), "doubtfulValues"), IsEmpty());
}

TEST_F(diffRefusal, colourInALaterTableAlone_isToldWithItsTable) {
    const std::string file =
        folder.write("two.txt", chartText("SAMPLE_ID CMYK_C", {"A 1"}) + chartText(kLab, {"A 50 0 0"}));
    const Outcome result = run({file, file});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_THAT(result.err,
                AllOf(HasSubstr("two.txt: table 1 of 2 holds no colour data"),
                      HasSubstr("table 2 does (--table 2, or --reference-table 2 for the reference alone)")));
}

TEST_F(diffTables, table_isTheOneAskedForOfBothFiles) {
    const std::string one =
        folder.write("one.txt", chartText(kLab, {"A 50 0 0"}) + chartText(kLab, {"A 60 3 4"}));
    const std::string two =
        folder.write("two.txt", chartText(kLab, {"A 10 0 0"}) + chartText(kLab, {"A 60 0 0"}));
    const nlohmann::json report = json({one, two, "--formula", "76", "--table", "2"});
    EXPECT_EQ(report["measured"]["table"], 2);
    EXPECT_EQ(report["reference"]["table"], 2);
    EXPECT_EQ(report["statistics"]["maximum"], 5.0);
    EXPECT_THAT(run({one, two, "--table", "2"}).out, HasSubstr("table 2 of 2, 1 sample"));
}

TEST_F(diffTables, referenceTable_isThatOfTheReferenceAlone) {
    const std::string file =
        folder.write("two.txt", chartText(kLab, {"A 50 0 0"}) + chartText(kLab, {"A 50 3 4"}));
    const nlohmann::json report = json({file, file, "--formula", "76", "--reference-table", "2"});
    EXPECT_EQ(report["measured"]["table"], 1);
    EXPECT_EQ(report["reference"]["table"], 2);
    EXPECT_EQ(report["statistics"]["maximum"], 5.0);
}

TEST_F(diffTables, tablesThatAreNotCompared_areNoted) {
    const std::string table = chartText(kLab, {"A 50 0 0"});
    const std::string one = folder.write("one.txt", table);
    const std::string three = folder.write("three.txt", table + table + table);
    EXPECT_THAT(
        findings(json({one, three}), "otherTables"),
        testing::ElementsAre(AllOf(HasSubstr("three.txt: table 1 of 3 is compared; 2 others hold colours "
                                             "too, the first of them table 2 (--table 2, or "
                                             "--reference-table 2 for the reference alone)"),
                                   Not(StartsWith("!")))));
    EXPECT_THAT(findings(json({one, one}), "otherTables"), IsEmpty());
}

TEST_F(diffTables, tableThatThereIsNot_givesExitCode2WithTheNumberOfThem) {
    const std::string file = chart("m.txt", kLab, {"A 50 0 0"});
    const Outcome result = run({file, file, "--table", "2"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.err, HasSubstr("m.txt: there is no table 2; the file has 1 table"));
    EXPECT_EQ(result.out, "");
}

TEST_F(diffTables, numbersThatAreNone_areUsage) {
    const std::string file = chart("m.txt", kLab, {"A 50 0 0"});
    for (const char* option : {"--table", "--reference-table"})
        for (const char* text : {"0", "-1", "x", "1.5", ""}) {
            const Outcome result = run({file, file, option, text});
            EXPECT_EQ(result.exitCode, 2) << option << ' ' << text;
            EXPECT_THAT(result.err, HasSubstr(std::string(option) + ": \"" + text +
                                              "\" is no whole number from 1 to 2147483647"));
        }
}

// The kernel's formula raises chromas to the 7th power.
TEST_F(diffRefusal, differenceThatIsNotFinite_givesExitCode3WithBothFiles) {
    const std::string file = chart("m.txt", kLab, {"A 50 0 0", "B 60 0 0"});
    const std::string large = chart("large.txt", kLab, {"A 50 0 0", "B 60 1e60 0"});
    const Outcome result = run({file, large, "--formula", "kernel2000"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.err, AllOf(HasSubstr("m.txt: row 2 and "), HasSubstr("large.txt: row 2: "),
                                  HasSubstr("too large")));
}

TEST_F(diffRefusal, spectrumThatCannotBeSet_givesExitCode3) {
    const std::string file = chart("m.txt", "SAMPLE_ID SPECTRAL_400 nm400", {"A 0.5 0.5"});
    const Outcome result = run({file, file});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.err, HasSubstr("row 1, column \"nm400\""));
}

TEST_F(diffRefusal, unknownNames_giveExitCode2WithTheKnownOnes) {
    const Outcome illuminant = run({four(), fourReference(), "--illuminant", "D51"});
    EXPECT_EQ(illuminant.exitCode, 2);
    EXPECT_THAT(illuminant.err, AllOf(HasSubstr("unknown illuminant \"D51\""), HasSubstr("D65")));
    const Outcome observer = run({four(), fourReference(), "--observer", "3 degree"});
    EXPECT_EQ(observer.exitCode, 2);
    EXPECT_THAT(observer.err, AllOf(HasSubstr("unknown observer \"3 degree\""), HasSubstr("\"10 degree\"")));
    const Outcome formula = run({four(), fourReference(), "--formula", "classic"});
    EXPECT_EQ(formula.exitCode, 2);
    EXPECT_THAT(formula.err,
                AllOf(HasSubstr("unknown formula \"classic\""), HasSubstr("cmc21"), HasSubstr("CIEDE2000")));
}

TEST_F(diffRefusal, f2WithTheTenDegreeObserver_givesExitCode2ForSpectra) {
    EXPECT_EQ(run({kDemoSpectra, kDemoSpectra, "--illuminant", "F2", "--observer", "10"}).exitCode, 2);
    EXPECT_EQ(run({kDemoSpectra, kDemoSpectra, "--illuminant", "F11", "--observer", "10 degree"}).exitCode,
              2);
}

// Nothing has to be computed for Lab.
TEST_F(diffRefusal, f2WithTheTenDegreeObserver_isNoMatterForLab) {
    EXPECT_EQ(run({four(), fourReference(), "--illuminant", "F2", "--observer", "10"}).exitCode, 0);
}

TEST_F(diffRefusal, reportsOfTheLibrary_doNotReachTheTerminal) {
    const Outcome result = run({four(), fourReference(), "--illuminant", "CIE Illuminant D50"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(result.out, HasSubstr("illuminant  D50 (as asked for)\n"));
}

TEST_F(diffRefusal, noIlluminants_giveExitCode3WithTheDirectoryAndTheRemedy) {
    const Surroundings bare = {{"QX_CMS=" + folder.path()}, false};
    const std::string charts = QXCMS_SOURCE_DIR "/data/charts/";
    const Outcome result =
        runCommand({"diff", charts + "colorchecker_spectral.txt", charts + "colorchecker_aims.txt"}, bare);
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.err, AllOf(HasSubstr(folder.path("r/ill")), HasSubstr("QX_CMS")));
    // Lab needs none.
    EXPECT_EQ(runCommand({"diff", four(), fourReference()}, bare).exitCode, 0);
}

TEST_F(diffRefusal, illuminantsOfOnesOwn_areFoundThroughQxCms) {
    std::filesystem::create_directories(folder.path("r/ill"));
    std::filesystem::copy(QXCMS_SOURCE_DIR "/data/r/ill/d65.ill", folder.path("r/ill/d65.ill"));
    const Surroundings own = {{"QX_CMS=" + folder.path()}, false};
    EXPECT_EQ(runCommand({"diff", four(), fourReference(), "--illuminant", "D65"}, own).exitCode, 0);
    EXPECT_EQ(runCommand({"diff", four(), fourReference(), "--illuminant", "D50"}, own).exitCode, 2);
}

TEST_F(diffRefusal, bothFiles_areToldAtOnce) {
    const Outcome result = run({folder.path("one.txt"), folder.path("two.txt")});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.err, AllOf(HasSubstr("one.txt"), HasSubstr("two.txt")));
}

TEST_F(diffRefusal, documentWithoutATable_givesExitCode3) {
    const Outcome result = run({folder.write("empty.txt", ""), four()});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.err, HasSubstr("empty.txt: holds no data table"));
}

} // namespace
