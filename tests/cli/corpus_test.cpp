// The command on real files, in the folder that QXCMS_CORPUS names.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/cli/run_command.h"
#include "tests/support/scratch.h"

using qxcms::tests::Outcome;
using qxcms::tests::runCommand;
using qxcms::tests::ScratchFolder;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class corpus : public testing::Test {
protected:
    void SetUp() override {
        const char* folder = std::getenv("QXCMS_CORPUS");
        if (folder == nullptr)
            GTEST_SKIP() << "QXCMS_CORPUS names no folder of real files";
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.is_regular_file() && entry.path().extension() != ".md")
                files.push_back(entry.path().string());
        }
        std::sort(files.begin(), files.end());
        ASSERT_FALSE(files.empty());
    }

    static nlohmann::json infoOf(const std::string& file, const std::vector<std::string>& options = {}) {
        std::vector<std::string> arguments = {"info", file, "--json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return nlohmann::json::parse(runCommand(arguments).out)["files"][0];
    }

    std::vector<std::string> files;
};

TEST_F(corpus, info_readsEveryFileOrTellsWhereItStopped) {
    for (const std::string& file : files) {
        const Outcome text = runCommand({"info", file});
        const nlohmann::json document = infoOf(file);
        if (document["refused"] == false) {
            EXPECT_EQ(text.exitCode, 0) << file;
            EXPECT_THAT(text.out, HasSubstr("table 1: ")) << file;
            EXPECT_GE(document["tables"].size(), 1u) << file;
            continue;
        }
        EXPECT_EQ(text.exitCode, 3) << file;
        const nlohmann::json& failure = document["failure"];
        EXPECT_NE(failure["code"], 0) << file;
        EXPECT_FALSE(failure["message"].get<std::string>().empty()) << file;
        EXPECT_FALSE(failure["expected"].get<std::string>().empty()) << file;
        EXPECT_THAT(text.out, HasSubstr(file + '\n'));
        EXPECT_THAT(text.out, HasSubstr("code " + failure["code"].dump() + ": "));
        EXPECT_THAT(text.out, HasSubstr("line " + failure["line"].dump() + ", column " +
                                        failure["column"].dump() + " (byte "));
    }
}

// Lines and columns counted by hand in the files.
TEST_F(corpus, filesRefusedAsTheyStand_areToldWithCodeLineAndColumn) {
    struct Place {
        int code;
        int line;
        int column;
    };
    const std::map<std::string, Place> places = {
        {"it8-reflective-R000926.it8", {11, 12, 175}}, {"no-number-of-sets.tsv", {6, 5, 1}},
        {"odd-reader-test.txt", {6, 51, 1}},           {"sp-CIE-TCS.sp", {11, 11, 11}},
        {"sp-unclosed-quote.txt", {11, 19, 1}},        {"ti2-fieldcount.ti2", {12, 26, 1}},
        {"ti3-with-cal-table.ti3", {11, 218, 1}},
    };
    int found = 0;
    for (const std::string& file : files) {
        const auto place = places.find(std::filesystem::path(file).filename().string());
        if (place == places.end())
            continue;
        ++found;
        const nlohmann::json document = infoOf(file, {"--strict"});
        ASSERT_EQ(document["refused"], true) << file;
        EXPECT_EQ(document["failure"]["code"], place->second.code) << file;
        EXPECT_EQ(document["failure"]["line"], place->second.line) << file;
        EXPECT_EQ(document["failure"]["column"], place->second.column) << file;
    }
    if (found == 0)
        GTEST_SKIP() << "none of the files whose refusals are known";
}

TEST_F(corpus, lint_agreesWithInfoAndFindsNothingLeftInWhatItWrote) {
    const ScratchFolder folder;
    for (const std::string& file : files) {
        const std::string fixed = folder.path("fixed.txt");
        const Outcome result = runCommand({"lint", file, "--fix", fixed, "--json"});
        const nlohmann::json checked = nlohmann::json::parse(result.out)["files"][0];
        const nlohmann::json document = infoOf(file);
        EXPECT_EQ(checked["verdict"] == "unreadable", document["refused"] == true) << file;
        EXPECT_EQ(checked["liberties"], document["liberties"]) << file;
        if (checked["verdict"] == "unreadable")
            continue;
        EXPECT_EQ(result.exitCode, checked["liberties"].empty() ? 0 : 1) << file;
        EXPECT_EQ(runCommand({"lint", fixed}).exitCode, 0) << file;
        EXPECT_EQ(runCommand({"lint", fixed, "--strict"}).exitCode, 0) << file;
    }
}

// Its unquoted blanks push words of text into the spectral columns.
constexpr const char* kSlipped = "nm-tab-unquoted-names.txt";

TEST_F(corpus, fileWithSlippedColumns_isRefusedAsItStandsWithRowAndColumn) {
    for (const std::string& file : files) {
        if (std::filesystem::path(file).filename() != kSlipped)
            continue;
        const Outcome result = runCommand({"diff", file, file, "--strict"});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_THAT(result.err, HasSubstr("row 2, column \"SPECTRAL_NM_380\""));
        return;
    }
    GTEST_SKIP() << "the file is not in the folder";
}

bool hasRgb(const nlohmann::json& table) {
    std::size_t channels = 0;
    for (const nlohmann::json& field : table["fields"]) {
        const std::string name = field["name"];
        channels += name == "RGB_R" || name == "RGB_G" || name == "RGB_B" ? std::size_t{1} : 0;
    }
    return channels == 3;
}

TEST_F(corpus, everyAcceptedFile_equalsItself) {
    for (const std::string& file : files) {
        const nlohmann::json document = infoOf(file);
        if (document["refused"] == true)
            continue;
        const nlohmann::json& table = document["tables"][0];
        const bool hasColour = !table["spectra"].is_null() || table["lab"] == true || table["xyz"] == true;
        const bool canPair =
            !table["identifiers"].empty() || !table["deviceColours"].is_null() || hasRgb(table);
        std::vector<std::string> arguments = {"diff", file, file, "--tolerance", "0", "--json"};
        if (!hasColour || !canPair) {
            EXPECT_EQ(runCommand(arguments).exitCode, 4) << file;
        }
        if (!hasColour)
            continue;
        if (!canPair)
            arguments.insert(arguments.end(), {"--pair", "order"});
        const Outcome result = runCommand(arguments);
        if (result.err.find(" is no chart, but ") != std::string::npos) {
            EXPECT_EQ(result.exitCode, 4) << file;
            continue;
        }
        ASSERT_EQ(result.exitCode, 0) << file << result.err;
        const nlohmann::json report = nlohmann::json::parse(result.out);
        EXPECT_EQ(report["statistics"]["count"], table["samples"]) << file;
        EXPECT_EQ(report["statistics"]["maximum"], 0.0) << file;
        for (const nlohmann::json& patch : report["patches"]) {
            for (const char* key : {"dL", "da", "db", "dC", "dH", "difference"})
                ASSERT_EQ(patch[key], 0.0) << file << " row " << patch["row"];
        }
    }
}

// The file carries spectra and the Lab values that its instrument's software computed from them, for D50 and
// the 10 degree observer as its header lines say.
TEST_F(corpus, spectraOfAMeasurement_giveTheLabOfItsInstrument) {
    for (const std::string& file : files) {
        if (std::filesystem::path(file).filename() != "wide-cmyk-xyz-lab-nm.txt")
            continue;
        const Outcome result =
            runCommand({"diff", file, file, "--reference-as", "lab", "--observer", "10", "--json"});
        ASSERT_EQ(result.exitCode, 0) << result.err;
        EXPECT_LT(nlohmann::json::parse(result.out)["statistics"]["maximum"], 0.03);
        return;
    }
    GTEST_SKIP() << "the file is not in the folder";
}

} // namespace
