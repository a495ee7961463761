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
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

class info : public testing::Test {
protected:
    ScratchFolder folder;

    // As it stands.
    std::string textOf(const std::string& document) const {
        const Outcome result = runCommand({"info", "--strict", folder.write("chart.txt", document)});
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return result.out;
    }

    nlohmann::json jsonOf(const std::string& document) const {
        const Outcome result =
            runCommand({"info", "--strict", folder.write("chart.txt", document), "--json"});
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return nlohmann::json::parse(result.out)["files"][0];
    }
};

constexpr const char* kEverything =
    "SampleID CMYK_C CMYK_M CMYK_Y CMYK_K SPECTRAL_400 SPECTRAL_420 SPECTRAL_440 LAB_L "
    "LAB_A LAB_B XYZ_X XYZ_Y XYZ_Z SPOT_1 Remark";
constexpr const char* kEverythingRow = "A1 0 0 0 0 70 71 72 90 1 2 80 81 82 5 ok";
constexpr const char* kHeader = "ORIGINATOR \"me\" # by hand\nNUMBER 12\nKEYWORD \"Remark\"\n";

TEST_F(info, text_tellsWhatATableHolds) {
    const std::string text = textOf(chartText(kEverything, {kEverythingRow}, kHeader));
    EXPECT_THAT(text, HasSubstr("table 1: 1 sample, 16 fields"));
    EXPECT_THAT(text, HasSubstr("spectra: 3 bands from 400 to 440 nm, every 20 nm, percent; Lab; XYZ"));
    EXPECT_THAT(text, HasSubstr("CMYK, 4 channels; 1 spot colour"));
    EXPECT_THAT(text, HasSubstr("yes (SampleID)"));
    EXPECT_THAT(text, HasSubstr("standard, number: CMYK_C CMYK_M CMYK_Y CMYK_K"));
    EXPECT_THAT(text, HasSubstr("spectral, number: SPECTRAL_400 SPECTRAL_420 SPECTRAL_440"));
    EXPECT_THAT(text, HasSubstr("spot colour, number: SPOT_1"));
    EXPECT_THAT(text, HasSubstr("custom, text: Remark"));
}

TEST_F(info, text_tellsTagsWithValueAndComment) {
    const std::string text = textOf(chartText(kEverything, {kEverythingRow}, kHeader));
    EXPECT_THAT(text, HasSubstr("    ORIGINATOR  \"me\"  # by hand\n"));
    EXPECT_THAT(text, HasSubstr("    NUMBER  12\n"));
    EXPECT_THAT(text, HasSubstr("custom fields: Remark, SampleID\n"));
    EXPECT_THAT(text, HasSubstr("comment blocks: 0\n"));
}

TEST_F(info, json_tellsWhatATableHolds) {
    const nlohmann::json file = jsonOf(chartText(kEverything, {kEverythingRow}, kHeader));
    EXPECT_EQ(file["refused"], false);
    const nlohmann::json& table = file["tables"][0];
    EXPECT_EQ(table["samples"], 1);
    EXPECT_EQ(
        table["spectra"],
        nlohmann::json({{"bands", 3}, {"firstNm", 400}, {"lastNm", 440}, {"stepNm", 20}, {"percent", true}}));
    EXPECT_EQ(table["lab"], true);
    EXPECT_EQ(table["xyz"], true);
    EXPECT_EQ(table["deviceColours"], nlohmann::json({{"kind", "CMYK"}, {"channels", 4}}));
    EXPECT_EQ(table["spotColours"], 1);
    EXPECT_EQ(table["sampleNames"], true);
    EXPECT_EQ(table["identifiers"], nlohmann::json({"SampleID"}));
    ASSERT_EQ(table["fields"].size(), 16u);
    EXPECT_EQ(table["fields"][6], nlohmann::json({{"column", 7},
                                                  {"name", "SPECTRAL_420"},
                                                  {"kind", "spectral"},
                                                  {"type", "number"},
                                                  {"number", 420}}));
    EXPECT_EQ(table["fields"][14]["kind"], "spot colour");
    EXPECT_EQ(table["fields"][14]["number"], 1);
    EXPECT_EQ(table["fields"][15]["type"], "text");
}

TEST_F(info, json_tellsTags) {
    const nlohmann::json file = jsonOf(chartText(kEverything, {kEverythingRow}, kHeader));
    EXPECT_EQ(file["tags"][1],
              nlohmann::json(
                  {{"keyword", "ORIGINATOR"}, {"value", "me"}, {"bare", false}, {"comment", " by hand"}}));
    EXPECT_EQ(file["tags"][2]["bare"], true);
    EXPECT_EQ(file["tagsAreFull"], false);
    EXPECT_EQ(file["customFields"], nlohmann::json({"Remark", "SampleID"}));
}

TEST_F(info, unevenWavelengths_haveNoStep) {
    const std::string document = chartText("nm400 nm410 nm430", {"0 0 0"});
    EXPECT_TRUE(jsonOf(document)["tables"][0]["spectra"]["stepNm"].is_null());
    EXPECT_THAT(textOf(document), HasSubstr("in uneven steps, fractions"));
}

TEST_F(info, nColourChart_isNamed) {
    const nlohmann::json table =
        jsonOf(chartText("5CLR_1 5CLR_2 5CLR_3 5CLR_4 5CLR_5", {"1 2 3 4 5"}))["tables"][0];
    EXPECT_EQ(table["deviceColours"], nlohmann::json({{"kind", "n-colour"}, {"channels", 5}}));
    EXPECT_EQ(table["fields"][4]["kind"], "n-colour");
    EXPECT_EQ(table["fields"][4]["number"], 5);
}

TEST_F(info, customProcessColours_areNamed) {
    const nlohmann::json table = jsonOf(
        chartText("PC2_1 PC2_2", {"1 2"}, "PROCESSCOLOR_ID red\nPROCESSCOLOR_ID green\n"))["tables"][0];
    EXPECT_EQ(table["deviceColours"], nlohmann::json({{"kind", "custom"}, {"channels", 2}}));
    EXPECT_EQ(table["fields"][0]["kind"], "process colour");
}

TEST_F(info, everyTable_isListed) {
    const std::string document =
        chartText("LAB_L LAB_A LAB_B", {"1 2 3"}) + chartText("XYZ_X XYZ_Y XYZ_Z", {"1 2 3", "4 5 6"});
    const nlohmann::json tables = jsonOf(document)["tables"];
    ASSERT_EQ(tables.size(), 2u);
    EXPECT_EQ(tables[1]["samples"], 2);
    EXPECT_THAT(textOf(document), AllOf(HasSubstr("table 1: 1 sample,"), HasSubstr("table 2: 2 samples,")));
}

TEST_F(info, commentBlocks_areListed) {
    const std::string document = "BEGIN_NOTES\nfirst\nsecond\nEND_NOTES\n" + chartText("LAB_L", {"1"});
    EXPECT_EQ(jsonOf(document)["commentBlocks"], nlohmann::json({"first\nsecond\n"}));
    EXPECT_THAT(textOf(document), AllOf(HasSubstr("comment blocks: 1"), HasSubstr("13 bytes, 2 lines")));
}

TEST_F(info, commentLines_areCounted) {
    EXPECT_THAT(textOf("# one\n# two\n" + chartText("LAB_L", {"1"})),
                HasSubstr("and 2 lines with a comment alone"));
}

TEST_F(info, fullTagList_isTold) {
    std::string header;
    for (int i = 0; i < 130; ++i)
        header += "NOTE" + std::to_string(i) + " 1\n";
    const std::string document = chartText("LAB_L", {"1"}, header);
    EXPECT_THAT(textOf(document),
                HasSubstr("tags: 128 (the most that a document keeps; there may have been more)\n"));
    EXPECT_EQ(jsonOf(document)["tagsAreFull"], true);
}

TEST_F(info, emptyFile_holdsNoTable) {
    EXPECT_THAT(textOf(""), HasSubstr("holds no data table"));
    EXPECT_EQ(jsonOf("")["tables"].size(), 0u);
}

TEST_F(info, controlsInTexts_areShownEscaped) {
    const std::string text = textOf(chartText("LAB_L", {"1"}, "ORIGINATOR \"\x1B]0;title\x07\xC2\x9B\"\n"));
    EXPECT_THAT(text, HasSubstr("\"\\x1b]0;title\\x07\\xc2\\x9b\""));
    EXPECT_THAT(text, Not(HasSubstr("\x1B")));
}

TEST_F(info, textsThatAreNoUtf8_areReplacedInJson) {
    EXPECT_EQ(jsonOf(chartText("LAB_L", {"1"}, "ORIGINATOR \"caf\xE9\"\n"))["tags"][1]["value"],
              "caf\xEF\xBF\xBD");
}

TEST_F(info, severalFiles_areReportedInOrder) {
    const std::string one = folder.write("one.txt", chartText("LAB_L", {"1"}));
    const std::string two = folder.write("two.txt", chartText("LAB_L", {"1"}));
    const Outcome result = runCommand({"info", one, two});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_LT(result.out.find("one.txt"), result.out.find("two.txt"));
}

TEST_F(info, refusedFile_isReportedAndTheNextOneFollows) {
    const std::string bad = folder.write("bad.txt", chartText("LAB_X", {"1"}));
    const std::string good = folder.write("good.txt", chartText("LAB_L", {"1"}));
    const Outcome result = runCommand({"info", "--strict", bad, good});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.err, IsEmpty());
    EXPECT_THAT(result.out,
                AllOf(HasSubstr("bad.txt\n"), HasSubstr("code 11: Unknown and undeclared header field type."),
                      HasSubstr("line 3, column 1 (byte 27)"), HasSubstr("\"LAB_X\""),
                      HasSubstr("good.txt")));
}

TEST_F(info, refusedFile_isExplainedInJson) {
    const std::string bad = folder.write("bad.txt", chartText("SAMPLE_ID LAB_X", {"1 2"}));
    const std::string good = folder.write("good.txt", chartText("LAB_L", {"1"}));
    const Outcome result = runCommand({"info", "--strict", bad, good, "--json"});
    EXPECT_EQ(result.exitCode, 3);
    const nlohmann::json files = nlohmann::json::parse(result.out)["files"];
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0]["refused"], true);
    const nlohmann::json& failure = files[0]["failure"];
    EXPECT_EQ(failure["code"], 11);
    EXPECT_EQ(failure["message"], "Unknown and undeclared header field type.");
    EXPECT_EQ(failure["line"], 3);
    EXPECT_EQ(failure["column"], 11);
    EXPECT_EQ(failure["offset"], 37);
    EXPECT_EQ(failure["token"], "LAB_X");
    EXPECT_FALSE(failure["expected"].get<std::string>().empty());
    EXPECT_EQ(files[1]["refused"], false);
}

TEST_F(info, missingFile_hasNoPlaceInJson) {
    const Outcome result = runCommand({"info", folder.path("none.txt"), "--json"});
    EXPECT_EQ(result.exitCode, 3);
    const nlohmann::json failure = nlohmann::json::parse(result.out)["files"][0]["failure"];
    EXPECT_EQ(failure["code"], 3);
    EXPECT_EQ(failure["detail"], "No such file or directory");
    EXPECT_TRUE(failure["line"].is_null());
}

} // namespace
