// How "diff" and "info" tell that a file cannot be read as it stands (--strict).
#include <regex>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/cli/run_command.h"
#include "tests/support/chart_text.h"
#include "tests/support/scratch.h"

using qxcms::tests::chartText;
using qxcms::tests::Outcome;
using qxcms::tests::runCommand;
using qxcms::tests::ScratchFolder;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

constexpr const char* kLab = "SAMPLE_ID LAB_L LAB_A LAB_B";

// A report as one line: where its lines break depends on the length of the file names.
std::string withoutLineBreaks(const std::string& report) {
    return std::regex_replace(report, std::regex("\\s+"), " ");
}

class reading : public testing::Test {
protected:
    ScratchFolder folder;

    // What "diff" says on the standard error; "info" must refuse in its report alone.
    std::string messageAbout(const std::string& file) const {
        const Outcome info = runCommand({"info", file, "--strict"});
        EXPECT_EQ(info.exitCode, 3);
        EXPECT_THAT(info.out, HasSubstr("refused "));
        EXPECT_THAT(info.err, IsEmpty());
        const Outcome diff = runCommand({"diff", file, file, "--strict"});
        EXPECT_EQ(diff.exitCode, 3);
        EXPECT_THAT(diff.out, IsEmpty());
        return diff.err;
    }

    // The warnings in the report of "info"; they are nowhere else.
    std::vector<std::string> warningsAbout(const std::string& file) const {
        const Outcome text = runCommand({"info", file, "--strict"});
        EXPECT_EQ(text.exitCode, 0);
        EXPECT_THAT(text.err, IsEmpty());
        const Outcome json = runCommand({"info", file, "--strict", "--json"});
        EXPECT_EQ(json.exitCode, 0);
        EXPECT_THAT(json.err, IsEmpty());
        const std::vector<std::string> warnings =
            nlohmann::json::parse(json.out)["files"][0]["warnings"].get<std::vector<std::string>>();
        EXPECT_EQ(text.out.find("\n    warning ") != std::string::npos, !warnings.empty());
        return warnings;
    }
};

TEST_F(reading, missingFile_isTold) {
    EXPECT_THAT(messageAbout(folder.path("none.txt")),
                HasSubstr("none.txt: cannot be read: No such file or directory (code 3)"));
}

TEST_F(reading, directory_isTold) {
    EXPECT_THAT(messageAbout(folder.path()), HasSubstr("cannot be read: Is a directory (code 3)"));
}

TEST_F(reading, emptyName_isTold) {
    EXPECT_THAT(messageAbout(""), HasSubstr("Empty file name. (code 2)"));
}

TEST_F(reading, nameWithControls_isShownEscaped) {
    EXPECT_THAT(messageAbout(folder.path("a\nb")), HasSubstr("a\\x0ab: cannot be read"));
}

// "LAB_X" stands in line 3 behind "SAMPLE_ID ".
TEST_F(reading, unknownField_isToldWithLineAndColumn) {
    const std::string file = folder.write("bad.txt", chartText("SAMPLE_ID LAB_X", {"1 2"}));
    EXPECT_THAT(messageAbout(file),
                AllOf(HasSubstr("bad.txt:3:11: Unknown and undeclared header field type. (code 11)"),
                      HasSubstr("found \"LAB_X\""), HasSubstr("expected "), HasSubstr("KEYWORD")));
}

TEST_F(reading, fieldCountThatDiffers_isTold) {
    const std::string file = folder.write("bad.txt", chartText(kLab, {"1 2 3 4"}, "NUMBER_OF_FIELDS 5\n"));
    EXPECT_THAT(messageAbout(file),
                AllOf(HasSubstr("bad.txt:5:1: "), HasSubstr("(code 12)"),
                      HasSubstr("found \"END_DATA_FORMAT\""), HasSubstr("NUMBER_OF_FIELDS")));
}

// END_DATA in line 9 is read as one of the two missing values.
TEST_F(reading, missingValues_areTold) {
    const std::string file = folder.write("bad.txt", chartText(kLab, {"1 2 3 4", "5 6"}));
    EXPECT_THAT(messageAbout(file), AllOf(HasSubstr("(code 1)"), HasSubstr("bad.txt:9:1:")));
}

TEST_F(reading, oneMissingValue_isWarnedOf) {
    const std::string file =
        folder.write("bad.txt", chartText("LAB_L LAB_A LAB_B SAMPLE_ID", {"2 3 4 A", "6 7 8"}));
    EXPECT_THAT(warningsAbout(file), ElementsAre(HasSubstr("table 1: no END_DATA follows its last value")));
    const Outcome diff = runCommand({"diff", file, file, "--strict"});
    EXPECT_EQ(diff.exitCode, 0);
    EXPECT_THAT(withoutLineBreaks(diff.out), HasSubstr("no END_DATA follows its last value"));
}

TEST_F(reading, oneMissingNumber_isRefusedByDiff) {
    const std::string file = folder.write("bad.txt", chartText(kLab, {"1 2 3 4", "5 6 7"}));
    EXPECT_THAT(warningsAbout(file), Contains(HasSubstr("row 2, column \"LAB_B\" (number 4): \"END_DATA\" "
                                                        "is no number")));
    const Outcome diff = runCommand({"diff", file, file, "--strict"});
    EXPECT_EQ(diff.exitCode, 3);
    EXPECT_THAT(diff.out, IsEmpty());
    EXPECT_THAT(diff.err, HasSubstr("bad.txt: row 2, column \"LAB_B\" (number 4): \"END_DATA\" is no "
                                    "number; a value is missing before it"));
}

TEST_F(reading, valuesThatAreNoNumbers_areWarnedOfOncePerColumn) {
    const std::string table = chartText(kLab, {"a 50 N/A 5%", "b 60 N/A \"\"", "c x 1 2"});
    EXPECT_THAT(
        warningsAbout(folder.write("bad.txt", table + table)),
        ElementsAre(HasSubstr("table 1: row 1, column \"LAB_A\" (number 3): \"N/A\" is no number; it "
                              "is read as 0"),
                    HasSubstr("table 1: row 1, column \"LAB_B\" (number 4): \"5%\" is no number; it "
                              "is read as 5"),
                    HasSubstr("table 1: row 3, column \"LAB_L\" (number 2): \"x\" is no number; it is "
                              "read as 0"),
                    HasSubstr("table 2: row 1, column \"LAB_A\""),
                    HasSubstr("table 2: row 1, column \"LAB_B\""),
                    HasSubstr("table 2: row 3, column \"LAB_L\"")));
}

TEST_F(reading, everySpellingOfANumber_isAccepted) {
    const std::string file = folder.write("good.txt", chartText(kLab, {"a +50 1,5 .5e1", "b 0x10 -0. 1E1"}));
    EXPECT_THAT(warningsAbout(file), IsEmpty());
    EXPECT_EQ(runCommand({"diff", file, file, "--strict"}).exitCode, 0);
}

TEST_F(reading, noNumberOfSets_isTold) {
    const std::string file =
        folder.write("bad.txt", "BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT\nBEGIN_DATA\n1\nEND_DATA\n");
    EXPECT_THAT(messageAbout(file),
                AllOf(HasSubstr("bad.txt:4:1: "), HasSubstr("(code 6)"),
                      HasSubstr("write the number of the table's samples, 1 or more, in a line "
                                "NUMBER_OF_SETS before BEGIN_DATA")));
}

TEST_F(reading, noDataFormat_isTold) {
    const std::string file = folder.write("bad.txt", "NUMBER_OF_SETS 1\nBEGIN_DATA\n1\nEND_DATA\n");
    EXPECT_THAT(messageAbout(file),
                AllOf(HasSubstr("bad.txt:2:1: "), HasSubstr("(code 6)"),
                      HasSubstr("needs the names of its columns before it"), HasSubstr("END_DATA_FORMAT")));
}

TEST_F(reading, processColourWithoutItsLines_isToldWhatItNeeds) {
    const std::string file =
        folder.write("bad.txt", chartText("PC2_1 PC2_2", {"1 2"}, "PROCESSCOLOR_ID red\n"));
    EXPECT_THAT(messageAbout(file), AllOf(HasSubstr("(code 11)"), HasSubstr("found \"PC2_1\""),
                                          HasSubstr("two lines PROCESSCOLOR_ID before BEGIN_DATA_FORMAT")));
}

TEST_F(reading, tooFewChannels_areToldWhatTheyNeed) {
    const std::string file = folder.write("bad.txt", chartText("3CLR_1 3CLR_2 3CLR_3", {"1 2 3"}));
    EXPECT_THAT(messageAbout(file), AllOf(HasSubstr("(code 17)"), HasSubstr("five channels or more")));
}

TEST_F(reading, endOfTheTextInTheDataFormat_isTold) {
    const std::string file = folder.write("bad.txt", "BEGIN_DATA_FORMAT\nLAB_L\n");
    EXPECT_THAT(messageAbout(file), AllOf(HasSubstr("(code 9)"), HasSubstr("found the end of the text")));
}

// The code -1 has no message of its own.
TEST_F(reading, tooLongKeyword_isToldWithTheLimits) {
    const std::string file = folder.write("bad.txt", "CGATS.17\n" + std::string(257, 'K') + " 1\n");
    EXPECT_THAT(messageAbout(file),
                AllOf(HasSubstr("bad.txt:2:1: A keyword, value or comment is too long (limits 256, "
                                "4096, 512). (code -1)")));
}

TEST_F(reading, tokenWithControls_isShownEscaped) {
    const std::string file = folder.write("bad.txt", chartText("\x1B[2J", {"1"}));
    EXPECT_THAT(messageAbout(file), AllOf(HasSubstr("found \"\\x1b[2J\""), testing::Not(HasSubstr("\x1B"))));
}

TEST_F(reading, nulByte_isWarnedOfWithItsOffset) {
    const std::string text = chartText(kLab, {"1 50 0 0"});
    const std::string file = folder.write("nul.txt", text + std::string(1, '\0') + "more");
    const Outcome result = runCommand({"diff", file, file, "--strict"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out, HasSubstr("\n  warning "));
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(warningsAbout(file),
                ElementsAre(EndsWith("a NUL byte stands at offset " + std::to_string(text.size()) +
                                     "; what follows "
                                     "it is not read")));
}

TEST_F(reading, nulByteAtTheVeryEnd_isNoMatter) {
    const std::string file = folder.write("nul.txt", chartText(kLab, {"1 50 0 0"}) + std::string(1, '\0'));
    EXPECT_THAT(warningsAbout(file), IsEmpty());
}

TEST_F(reading, utf16_isRecognised) {
    const std::string wide("C\0G\0A\0T\0S\0", 10);
    EXPECT_THAT(warningsAbout(folder.write("marked.txt", "\xFF\xFE" + wide)),
                ElementsAre(HasSubstr("UTF-16")));
    EXPECT_THAT(warningsAbout(folder.write("little.txt", wide)), ElementsAre(HasSubstr("UTF-16")));
    EXPECT_THAT(warningsAbout(folder.write("big.txt", '\0' + wide)), ElementsAre(HasSubstr("UTF-16")));
}

TEST_F(reading, nulBytesThatDoNotAlternate_areNotTakenForUtf16) {
    for (const std::string& text : {std::string(16, '\0'), std::string("C\0GATS.17", 9)})
        EXPECT_THAT(warningsAbout(folder.write("nul.txt", text)),
                    ElementsAre(AllOf(HasSubstr("a NUL byte"), testing::Not(HasSubstr("UTF-16")))));
}

TEST_F(reading, valuesBehindTheAnnouncedOnes_areWarnedOf) {
    std::string text = chartText(kLab, {"1 50 0 0", "2 60 0 0"});
    text.replace(text.find("SETS 2"), 6, "SETS 1");
    const std::string file = folder.write("more.txt", text);
    const Outcome result = runCommand({"diff", file, file, "--strict"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(result.out, HasSubstr("instead of END_DATA"));
    EXPECT_THAT(warningsAbout(file),
                ElementsAre(HasSubstr("table 1: \"2\" follows its last value instead of END_DATA")));
}

// Without a report the warnings may tell why there is none.
TEST_F(reading, warningsAboutARefusedComparison_areWrittenToTheStandardError) {
    std::string text = chartText(kLab, {"a x 50 0", "0 b y 60"});
    text.replace(text.find("SETS 2"), 6, "SETS 1");
    const std::string file = folder.write("slipped.txt", text);
    const Outcome result = runCommand({"diff", file, file, "--strict"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, AllOf(HasSubstr("qxcms: warning: "), HasSubstr("instead of END_DATA"),
                                  HasSubstr("row 1, column \"LAB_L\" (number 2): \"x\" is no number")));
}

TEST_F(reading, wellFormedFile_isNotWarnedOf) {
    EXPECT_THAT(warningsAbout(folder.write("good.txt", chartText(kLab, {"1 50 0 0"}))), IsEmpty());
}

} // namespace
