// "diff" and "info" on files that are not in form.
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
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* kLab = "SAMPLE_ID LAB_L LAB_A LAB_B";

class intoForm : public testing::Test {
protected:
    ScratchFolder folder;
    std::string good = folder.write("good.txt", chartText(kLab, {"1 50 0 0", "2 60 0 0"}));
    // NUMBER_OF_SETS 1, at 5:16, where there are two samples.
    std::string miscounted =
        folder.write("miscounted.txt", withOneSet(chartText(kLab, {"1 50 0 0", "2 60 0 0"})));
    // Its second row, in line 8, lacks a value.
    std::string unreadable = folder.write("unreadable.txt", chartText(kLab, {"1 50 0 0", "2 60 0"}));

    static std::string withOneSet(std::string text) {
        text.replace(text.find("SETS 2"), 6, "SETS 1");
        return text;
    }

    // The only line that tells of the liberty.
    std::string noteOn(const std::string& file) const {
        const std::string json = runCommand({"lint", file, "--json"}).out;
        const std::string done = nlohmann::json::parse(json)["files"][0]["liberties"][0]["done"];
        return "qxcms: note: " + file + ":5:16: " + done + '\n';
    }
};

TEST_F(intoForm, info_listsLibertiesOnTheStandardError) {
    const Outcome result = runCommand({"info", miscounted});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, noteOn(miscounted));
    EXPECT_THAT(result.out, AllOf(HasSubstr("table 1: 2 samples"), Not(HasSubstr("warning"))));
}

TEST_F(intoForm, diff_listsLibertiesOfBothFiles) {
    const std::string other = folder.write("other.txt", ScratchFolder::read(miscounted));
    const Outcome result = runCommand({"diff", miscounted, other});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, noteOn(miscounted) + noteOn(other));
    EXPECT_THAT(result.out, Not(HasSubstr("warning")));
}

TEST_F(intoForm, diffOfAFileWithItself_listsLibertiesOnce) {
    EXPECT_EQ(runCommand({"diff", miscounted, miscounted}).err, noteOn(miscounted));
}

TEST_F(intoForm, cleanFiles_areReadWithoutAWord) {
    EXPECT_THAT(runCommand({"diff", good, good}).err, IsEmpty());
    EXPECT_THAT(runCommand({"info", good}).err, IsEmpty());
}

TEST_F(intoForm, quiet_hidesTheList) {
    const Outcome info = runCommand({"info", miscounted, "--quiet"});
    EXPECT_THAT(info.err, IsEmpty());
    EXPECT_THAT(info.out, HasSubstr("table 1: 2 samples"));
    EXPECT_THAT(runCommand({"diff", miscounted, miscounted, "--quiet"}).err, IsEmpty());
    EXPECT_THAT(runCommand({"diff", miscounted, miscounted, "--quiet", "--measured-as", "xyz"}).err,
                Not(HasSubstr("note")));
}

TEST_F(intoForm, strict_readsWhatStands) {
    const Outcome result = runCommand({"info", miscounted, "--strict"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(result.out, HasSubstr("table 1: 1 sample,"));
    EXPECT_THAT(runCommand({"info", miscounted, "--strict", "--json"}).out,
                HasSubstr("follows its last value"));
    EXPECT_THAT(runCommand({"diff", miscounted, good, "--strict"}).out,
                HasSubstr("1 of 1 paired by SAMPLE_ID; 1 reference sample unused\n"));
    EXPECT_THAT(runCommand({"diff", miscounted, good}).out, HasSubstr("2 of 2 paired by SAMPLE_ID\n"));
}

TEST_F(intoForm, json_carriesTheList) {
    const Outcome info = runCommand({"info", miscounted, "--json"});
    EXPECT_THAT(info.err, IsEmpty());
    const nlohmann::json document = nlohmann::json::parse(info.out)["files"][0];
    ASSERT_EQ(document["liberties"].size(), 1u);
    EXPECT_EQ(document["liberties"][0]["kind"], "sampleCount");
    EXPECT_EQ(document["remarks"], nlohmann::json::array());
    const Outcome diff = runCommand({"diff", miscounted, good, "--json", "--quiet"});
    EXPECT_THAT(diff.err, IsEmpty());
    const nlohmann::json report = nlohmann::json::parse(diff.out);
    EXPECT_EQ(report["measured"]["liberties"], document["liberties"]);
    EXPECT_EQ(report["reference"]["liberties"], nlohmann::json::array());
}

TEST_F(intoForm, json_ofAStrictReading_hasAnEmptyList) {
    const nlohmann::json json =
        nlohmann::json::parse(runCommand({"info", miscounted, "--json", "--strict"}).out);
    EXPECT_EQ(json["files"][0]["liberties"], nlohmann::json::array());
}

// Without a report, the liberties are told all the same.
TEST_F(intoForm, refusedComparison_isToldWithTheLiberties) {
    const std::string other = folder.write("other.txt", chartText(kLab, {"3 50 0 0", "4 60 0 0"}));
    for (const std::vector<std::string>& options : {std::vector<std::string>{}, {"--json"}}) {
        std::vector<std::string> arguments = {"diff", miscounted, other};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Outcome result = runCommand(arguments);
        EXPECT_EQ(result.exitCode, 4);
        EXPECT_THAT(result.out, IsEmpty());
        EXPECT_THAT(result.err, StartsWith(noteOn(miscounted) + "qxcms: "));
    }
}

TEST_F(intoForm, remark_isListedToo) {
    const std::string file =
        folder.write("rgb.txt", chartText("SAMPLE_ID RGB_R RGB_G RGB_B", {"1 0 0 0", "2 255 0 255"}));
    const Outcome result = runCommand({"info", file});
    EXPECT_THAT(result.err, AllOf(StartsWith("qxcms: note: " + file + ':'), HasSubstr("255")));
    const nlohmann::json document =
        nlohmann::json::parse(runCommand({"info", file, "--json"}).out)["files"][0];
    EXPECT_EQ(document["liberties"], nlohmann::json::array());
    ASSERT_EQ(document["remarks"].size(), 1u);
    EXPECT_EQ(document["remarks"][0]["kind"], "deviceScale");
}

TEST_F(intoForm, fileThatNothingMends_isToldAsWithTheReader) {
    const Outcome diff = runCommand({"diff", unreadable, good});
    EXPECT_EQ(diff.exitCode, 3);
    EXPECT_THAT(diff.err, AllOf(StartsWith("qxcms: " + unreadable +
                                           ":8:1: Number of samples found doesn't match number of samples "
                                           "declared. (code 13); found \"2 60 0\", expected 4 values"),
                                HasSubstr("; give every row one value for every column")));
    const Outcome info = runCommand({"info", unreadable});
    EXPECT_EQ(info.exitCode, 3);
    EXPECT_THAT(info.err, IsEmpty());
    // "CGATS.17", format, count and a row: 9 + 18 + 28 + 16 + 17 + 11 + 9 bytes.
    EXPECT_THAT(info.out, AllOf(HasSubstr("code 13: "), HasSubstr("line 8, column 1 (byte 108)")));
}

TEST_F(intoForm, doubtfulValue_isStillWarnedOf) {
    const std::string file = folder.write("doubt.txt", chartText(kLab, {"1 50 N/A 0"}));
    const Outcome result = runCommand({"info", file});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(runCommand({"info", file, "--json"}).out, HasSubstr("is no number; it is read as 0"));
    EXPECT_EQ(runCommand({"diff", file, file}).exitCode, 3);
}

TEST_F(intoForm, nulBytes_areToldOnce) {
    const std::string file = folder.write("nul.txt", chartText(kLab, {std::string("1 50\0 0 0", 9)}));
    const Outcome result = runCommand({"info", file});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.err, AllOf(StartsWith("qxcms: note: " + file + ":7:5: "), EndsWith("\n")));
    EXPECT_EQ(result.err.find("NUL"), result.err.rfind("NUL"));
    EXPECT_THAT(result.out, AllOf(HasSubstr("table 1: 1 sample,"), Not(HasSubstr("NUL"))));
}

TEST_F(intoForm, utf16_isRead) {
    const std::string text = ScratchFolder::read(good);
    for (const bool bigEndian : {false, true}) {
        std::string wide = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
        for (const char c : text)
            wide += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
        const std::string file = folder.write("wide.txt", wide);
        const Outcome result = runCommand({"diff", file, good, "--tolerance", "0"});
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_THAT(result.err, HasSubstr("UTF-16"));
        EXPECT_THAT(result.out, Not(HasSubstr("warning")));
    }
}

TEST_F(intoForm, controlsInWhatIsTold_areEscaped) {
    const std::string file = folder.write("esc.txt", chartText("SAMPLE_ID \x1B[2J", {"1 2"}));
    EXPECT_THAT(runCommand({"info", file}).err, AllOf(HasSubstr("\\x1b[2J"), Not(HasSubstr("\x1B"))));
}

} // namespace
