// "qxcms lint": refusals explained word by word, what brings a file into form, and the form written.
#include <filesystem>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "tests/cli/run_command.h"
#include "tests/support/chart_text.h"
#include "tests/support/scratch.h"
#include "tests/support/tested_build.h"

using qxcms::tests::chartText;
using qxcms::tests::Outcome;
using qxcms::tests::runCommand;
using qxcms::tests::runProgram;
using qxcms::tests::ScratchFolder;
using qxcms::tests::testedProgram;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

constexpr const char* kLab = "SAMPLE_ID LAB_L LAB_A LAB_B";

class lint : public testing::Test {
protected:
    ScratchFolder folder;

    // Runs "lint"; what it says, without the folder in front of the files.
    Outcome run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), "lint");
        Outcome result = runCommand(arguments);
        const std::string start = folder.path() + '/';
        for (std::string* text : {&result.out, &result.err}) {
            for (std::size_t at = text->find(start); at != std::string::npos; at = text->find(start, at))
                text->erase(at, start.size());
        }
        return result;
    }

    std::string write(const std::string& text) const { return folder.write("x.txt", text); }

    // What is said of a text that is refused as it stands.
    std::string strictly(const std::string& text) const {
        const Outcome result = run({write(text), "--strict"});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_THAT(result.err, IsEmpty());
        return result.out;
    }

    nlohmann::json json(const std::vector<std::string>& arguments, int exitCode) const {
        std::vector<std::string> all = {"lint", "--json"};
        all.insert(all.end(), arguments.begin(), arguments.end());
        const Outcome result = runCommand(all);
        EXPECT_EQ(result.exitCode, exitCode) << result.err;
        return nlohmann::json::parse(result.out);
    }

    // One sample more than NUMBER_OF_SETS in line 5 says.
    static std::string miscounted() {
        std::string text = chartText(kLab, {"1 50 0 0", "2 60 0 0"});
        text.replace(text.find("SETS 2"), 6, "SETS 1");
        return text;
    }
    // Its second row lacks a value.
    static std::string unreadable() { return chartText(kLab, {"1 50 0 0", "2 60 0"}); }
};

using lintExplains = lint;
using lintFix = lint;

// The texts that a refusal is explained with, one for each code that a text can provoke.

TEST_F(lintExplains, codeMinus1_aTokenTooLong) {
    EXPECT_EQ(strictly("CGATS.17\n" + std::string(257, 'K') + " 1\n"),
              "x.txt:2:1: not readable: A keyword, value or comment is too long (limits 256, 4096, 512). "
              "(code -1)\n"
              "    " +
                  std::string(50, 'K') +
                  "...\n"
                  "    ^\n"
                  "    found     \"" +
                  std::string(60, 'K') +
                  "\"...\n"
                  "    expected  a keyword of at most 256, a value of at most 4096 and a comment of at most "
                  "512 characters\n"
                  "    remedy    shorten it, or move the text into a comment block between lines BEGIN_NOTES "
                  "and END_NOTES\n"
                  "x.txt: not readable\n");
}

// The END_DATA in line 9 is taken for one of the two values that are missing.
TEST_F(lintExplains, code1_missingValues) {
    EXPECT_EQ(
        strictly(chartText(kLab, {"1 50 0 0", "2 60"})),
        "x.txt:9:1: not readable: Unknown error. (code 1)\n"
        "    END_DATA\n"
        "    ^\n"
        "    found     \"END_DATA\"\n"
        "    expected  a further sample value: NUMBER_OF_SETS times the number of fields is more than "
        "the values there\n"
        "              are\n"
        "    remedy    let NUMBER_OF_SETS be the number of rows, and give every row one value for every "
        "column; an\n"
        "              empty text is written as two double quotes\n"
        "x.txt: not readable\n");
}

TEST_F(lintExplains, code1_aQuoteThatNeverCloses) {
    EXPECT_EQ(strictly("BEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L\nEND_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n"
                       "\"A1 50"),
              "x.txt:6:1: not readable: Unknown error. (code 1)\n"
              "    \"A1 50\n"
              "    ^\n"
              "    found     \"\"A1 50\"\n"
              "    expected  a double quote that closes the value\n"
              "    remedy    close the double quote behind the value\n"
              "x.txt: not readable\n");
}

TEST_F(lintExplains, code1_aValueTooLong) {
    EXPECT_EQ(strictly(chartText("LAB_L SAMPLE_ID", {"5 " + std::string(128, 'A')})),
              "x.txt:7:3: not readable: Unknown error. (code 1)\n"
              "    5 " +
                  std::string(50, 'A') +
                  "...\n"
                  "      ^\n"
                  "    found     \"" +
                  std::string(60, 'A') +
                  "\"...\n"
                  "    expected  a value of at most 127 characters\n"
                  "    remedy    shorten the value\n"
                  "x.txt: not readable\n");
}

TEST_F(lintExplains, code5_aBlockWithoutAnEnd) {
    EXPECT_EQ(
        strictly("CGATS.17\r\nBEGIN_NOTES\r\nfirst\r\n"),
        "x.txt:2:1: not readable: Error while reading comment tag. (code 5)\n"
        "    BEGIN_NOTES\n"
        "    ^\n"
        "    found     \"BEGIN_NOTES\"\n"
        "    expected  a line further down that starts with END_NOTES\n"
        "    remedy    end the block with a line END_ and the word behind BEGIN_; an empty block holds an "
        "empty line\n"
        "x.txt: not readable\n");
}

TEST_F(lintExplains, code5_aBlockTooMany) {
    std::string text;
    for (int i = 0; i < 129; ++i)
        text += "BEGIN_NOTES\n\nEND_NOTES\n";
    EXPECT_EQ(strictly(text), "x.txt:385:1: not readable: Error while reading comment tag. (code 5)\n"
                              "    BEGIN_NOTES\n"
                              "    ^\n"
                              "    found     \"BEGIN_NOTES\"\n"
                              "    expected  at most 128 comment blocks\n"
                              "    remedy    leave blocks out\n"
                              "x.txt: not readable\n");
}

TEST_F(lintExplains, code6_noNumberOfSets) {
    EXPECT_EQ(strictly("BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT\n BEGIN_DATA\n1\nEND_DATA\n"),
              "x.txt:4:2: not readable: Internal error: temporary header not initialized. (code 6)\n"
              "     BEGIN_DATA\n"
              "     ^\n"
              "    found     \"BEGIN_DATA\"\n"
              "    expected  a positive NUMBER_OF_SETS before BEGIN_DATA\n"
              "    remedy    write the number of the table's samples, 1 or more, in a line NUMBER_OF_SETS "
              "before BEGIN_DATA\n"
              "x.txt: not readable\n");
}

TEST_F(lintExplains, code6_noDataFormat) {
    EXPECT_EQ(
        strictly("NUMBER_OF_SETS 1\nBEGIN_DATA\n1\nEND_DATA\n"),
        "x.txt:2:1: not readable: Internal error: temporary header not initialized. (code 6)\n"
        "    BEGIN_DATA\n"
        "    ^\n"
        "    found     \"BEGIN_DATA\"\n"
        "    expected  a data format (BEGIN_DATA_FORMAT to END_DATA_FORMAT) of its own before BEGIN_DATA\n"
        "    remedy    every BEGIN_DATA needs the names of its columns before it, between lines "
        "BEGIN_DATA_FORMAT and\n"
        "              END_DATA_FORMAT\n"
        "x.txt: not readable\n");
}

TEST_F(lintExplains, code9_noEndOfTheDataFormat) {
    EXPECT_EQ(strictly("BEGIN_DATA_FORMAT\nLAB_L\n"),
              "x.txt:3:1: not readable: END_DATA_FORMAT tag not found. (code 9)\n"
              "\n"
              "    ^\n"
              "    found     the end of the text\n"
              "    expected  END_DATA_FORMAT, followed by a line end\n"
              "    remedy    write END_DATA_FORMAT on a line of its own behind the names of the columns\n"
              "x.txt: not readable\n");
}

TEST_F(lintExplains, code10_aFieldTooMany) {
    EXPECT_EQ(strictly("NUMBER_OF_FIELDS 1\nBEGIN_DATA_FORMAT\nLAB_L\tLAB_A\nEND_DATA_FORMAT\n"),
              "x.txt:3:7: not readable: Badly formatted header field. (code 10)\n"
              "    LAB_L\tLAB_A\n"
              "         \t^\n"
              "    found     \"LAB_A\"\n"
              "    expected  END_DATA_FORMAT after 1 field names\n"
              "    remedy    let NUMBER_OF_FIELDS be the number of column names, or leave it out\n"
              "x.txt: not readable\n");
}

// CR line ends.
TEST_F(lintExplains, code11_anUnknownField) {
    EXPECT_EQ(
        strictly("BEGIN_DATA_FORMAT\rSAMPLE_ID LAB_X LAB_A\rEND_DATA_FORMAT\r"),
        "x.txt:2:11: not readable: Unknown and undeclared header field type. (code 11)\n"
        "    SAMPLE_ID LAB_X LAB_A\n"
        "              ^\n"
        "    found     \"LAB_X\"\n"
        "    expected  a standard field name, or one that a KEYWORD line before the data format "
        "declares\n"
        "    remedy    name a spectral column SPECTRAL_380 or nm380; any other column is declared with a "
        "line KEYWORD\n"
        "              and its name before BEGIN_DATA_FORMAT, and its values are then text\n"
        "x.txt: not readable\n");
}

TEST_F(lintExplains, code11_aProcessColourWithoutItsLines) {
    EXPECT_EQ(
        strictly(chartText("PC2_1 PC2_2", {"1 2"}, "PROCESSCOLOR_ID red\n")),
        "x.txt:4:1: not readable: Unknown and undeclared header field type. (code 11)\n"
        "    PC2_1 PC2_2\n"
        "    ^\n"
        "    found     \"PC2_1\"\n"
        "    expected  a standard field name, or one that a KEYWORD line before the data format "
        "declares\n"
        "    remedy    columns PC2_1 and PC2_2 need two lines PROCESSCOLOR_ID before BEGIN_DATA_FORMAT, "
        "one per colour;\n"
        "              the number behind PC is that of the lines\n"
        "x.txt: not readable\n");
}

TEST_F(lintExplains, code11_theEndOfTheDataFormatInQuotes) {
    EXPECT_EQ(strictly("BEGIN_DATA_FORMAT\nLAB_L\n\"END_DATA_FORMAT\"\n"),
              "x.txt:3:2: not readable: Unknown and undeclared header field type. (code 11)\n"
              "    \"END_DATA_FORMAT\"\n"
              "     ^\n"
              "    found     \"END_DATA_FORMAT\"\"\n"
              "    expected  END_DATA_FORMAT without quotes, followed by a blank or a line end\n"
              "    remedy    write END_DATA_FORMAT as it is, on a line of its own\n"
              "x.txt: not readable\n");
}

TEST_F(lintExplains, code12_aFieldMissing) {
    EXPECT_EQ(strictly(chartText(kLab, {"1 2 3 4"}, "NUMBER_OF_FIELDS 5\n")),
              "x.txt:5:1: not readable: Number of header fields found doesn't match number of header fields "
              "declared. (code 12)\n"
              "    END_DATA_FORMAT\n"
              "    ^\n"
              "    found     \"END_DATA_FORMAT\"\n"
              "    expected  5 field names, as NUMBER_OF_FIELDS declares; there are 4\n"
              "    remedy    let NUMBER_OF_FIELDS be the number of column names, or leave it out\n"
              "x.txt: not readable\n");
}

TEST_F(lintExplains, code14_noFields) {
    EXPECT_EQ(strictly(chartText("", {"1"})),
              "x.txt:6:1: not readable: The table header contains no data fields. (code 14)\n"
              "    BEGIN_DATA\n"
              "    ^\n"
              "    found     \"BEGIN_DATA\"\n"
              "    expected  a data format whose fields make a table\n"
              "    remedy    write the names of the columns between lines BEGIN_DATA_FORMAT and "
              "END_DATA_FORMAT\n"
              "x.txt: not readable\n");
}

TEST_F(lintExplains, code17_channelsThatDoNotCount) {
    EXPECT_EQ(
        strictly(chartText("3CLR_1 3CLR_2 3CLR_3", {"1 2 3"})),
        "x.txt:6:1: not readable: The custom color numbering in the table header is not consistent. "
        "(code 17)\n"
        "    BEGIN_DATA\n"
        "    ^\n"
        "    found     \"BEGIN_DATA\"\n"
        "    expected  a data format whose fields make a table\n"
        "    remedy    number the PC, SPOT and n-colour columns from 1 to their count, each number once; "
        "an n-colour\n"
        "              space has five channels or more (5CLR_1 to 5CLR_5)\n"
        "x.txt: not readable\n");
}

TEST_F(lintExplains, code2_anEmptyName) {
    const Outcome result = run({""});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_EQ(result.out, "\"\": not readable: Empty file name. (code 2)\n"
                          "    remedy    give the name of a file\n"
                          "\"\": not readable\n");
}

TEST_F(lintExplains, code3_aFileThatIsNotThere) {
    for (const char* option : {"--quiet", "--strict"}) {
        const Outcome result = run({folder.path("none.txt"), option});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "none.txt: not readable: The requested file could not be found. (code 3)\n"
                              "    reason    No such file or directory\n"
                              "    remedy    check the name, and whether the file may be read\n"
                              "none.txt: not readable\n");
    }
}

// The second row fits the columns in no reading.
TEST_F(lintExplains, code13_aRowThatDoesNotFit) {
    EXPECT_THAT(run({write(unreadable())}).out,
                HasSubstr("x.txt:8:1: not readable: Number of samples found doesn't match number of samples "
                          "declared. (code 13)\n"
                          "    2 60 0\n"
                          "    ^\n"
                          "    found     \"2 60 0\"\n"
                          "    expected  4 values"));
}

TEST_F(lintExplains, code15_noSamples) {
    const Outcome result = run({write(chartText(kLab, {}))});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(
        result.out,
        AllOf(HasSubstr("x.txt:6:1: refused as it stands: Internal error"),
              HasSubstr("x.txt:6:1: not readable: The table contains no samples. (code 15)\n"
                        "    BEGIN_DATA\n"
                        "    ^\n"),
              HasSubstr("    remedy    write the rows between lines BEGIN_DATA and END_DATA, and their "
                        "number behind NUMBER_OF_SETS\n")));
}

TEST_F(lintExplains, bytesThatCannotBeShown_areEscaped) {
    EXPECT_THAT(
        strictly(chartText("\x1B[2J\tLAB_L", {"1 2"})),
        AllOf(HasSubstr("    \\x1b[2J\tLAB_L\n    ^\n    found     \"\\x1b[2J\"\n"), Not(HasSubstr("\x1B"))));
}

// Terminators are made of the bytes of a file.
TEST_F(lintExplains, whatIsExpected_isEscapedToo) {
    EXPECT_THAT(strictly("BEGIN_\x1B[2J\n"),
                AllOf(HasSubstr("starts with END_\\x1b[2J\n"), Not(HasSubstr("\x1B"))));
}

// Both refusals tell of the same place.
TEST_F(lintExplains, refusalThatNothingMends_isToldOnce) {
    const Outcome result = run({write(chartText("", {"1"}))});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.out, Not(HasSubstr("refused as it stands")));
    EXPECT_THAT(result.out, StartsWith("x.txt:6:1: not readable: "));
}

// Exit codes and the list.

TEST_F(lint, cleanFile_isTold) {
    const Outcome result = run({write(chartText(kLab, {"1 50 0 0"}))});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "x.txt: clean\n");
    EXPECT_THAT(result.err, IsEmpty());
}

TEST_F(lint, liberty_isListedWithItsPlace) {
    const std::string done = json({write(miscounted())}, 1)["files"][0]["liberties"][0]["done"];
    const Outcome result = run({write(miscounted())});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "x.txt:5:16: " + done + "\nx.txt: readable with 1 liberty\n");
    EXPECT_THAT(result.err, IsEmpty());
}

TEST_F(lint, liberties_followTheRefusalThatTheyMend) {
    const Outcome result = run({write(chartText("SAMPLE_ID LAB_X", {"1 2"}, "ORIGINATOR two words\n"))});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out,
                StartsWith("x.txt:4:11: refused as it stands: Unknown and undeclared header field "
                           "type. (code 11)\n    SAMPLE_ID LAB_X\n              ^\n"));
    EXPECT_THAT(result.out, HasSubstr("text\nx.txt:2:12: "));
    EXPECT_THAT(result.out, EndsWith("\nx.txt: readable with 2 liberties\n"));
}

TEST_F(lint, remark_isANoteAndNoLiberty) {
    const Outcome result = run({write(chartText("SAMPLE_ID RGB_R RGB_G RGB_B", {"1 0 0 0", "2 255 0 255"}))});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out, AllOf(HasSubstr(": note: "), EndsWith("\nx.txt: clean\n")));
}

TEST_F(lint, doubtfulValue_isToldAndNoLiberty) {
    const Outcome result = run({write(chartText(kLab, {"1 50 N/A 0"}))});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out,
              "x.txt: table 1: row 1, column \"LAB_A\" (number 3): \"N/A\" is no number; it is read "
              "as 0\nx.txt: read as it stands, with words where numbers belong\n");
}

TEST_F(lint, doubtsAndLiberties_areBothInTheVerdict) {
    const Outcome result = run({write(chartText(kLab, {"1 50 N/A 0"}, "ORIGINATOR two words\n"))});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_THAT(result.out,
                EndsWith("x.txt: readable with 1 liberty, and with words where numbers belong\n"));
}

TEST_F(lint, fileWithoutSamples_isNothingElse) {
    for (const std::string text :
         {"", "Dear \"reader\" of this\n\"text\" in quotes\n", "\x89PNG\r\n\x1A\n"}) {
        const std::string out = folder.path() + "/out.txt";
        const Outcome result = run({write(text), "--fix", out});
        EXPECT_EQ(result.exitCode, 3);
        EXPECT_EQ(result.out, "x.txt: no samples: neither BEGIN_DATA_FORMAT with the names of columns nor "
                              "BEGIN_DATA with rows was found\n");
        EXPECT_FALSE(std::filesystem::exists(out));
    }
}

TEST_F(lint, quiet_hidesTheList) {
    const Outcome result = run({write(miscounted()), "--quiet"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "x.txt: readable with 1 liberty\n");
}

TEST_F(lint, quiet_leavesTheRefusals) {
    const Outcome result = run({write(unreadable()), "--quiet"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.out, HasSubstr("x.txt:8:1: not readable: "));
}

TEST_F(lint, strict_knowsCleanAndUnreadableAlone) {
    const Outcome bare = run({write(chartText("LAB_L", {"1"}, "ORIGINATOR two words\n")), "--strict"});
    EXPECT_EQ(bare.exitCode, 0);
    EXPECT_EQ(bare.out, "x.txt: clean\n");
    EXPECT_EQ(run({write(chartText("LAB_X", {"1"})), "--strict"}).exitCode, 3);
}

TEST_F(lint, strict_warnsOfWhatTheReaderPassesOver) {
    const std::string text = chartText("LAB_L", {"1"});
    const Outcome result = run({write(text + std::string("\0more", 5)), "--strict"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_THAT(result.out, HasSubstr("a NUL byte stands at offset " + std::to_string(text.size())));
}

TEST_F(lint, severalFiles_areToldInOrderAndTheWorstDecides) {
    const std::string clean = folder.write("clean.txt", chartText(kLab, {"1 50 0 0"}));
    const std::string mended = folder.write("mended.txt", miscounted());
    const std::string refused = folder.write("refused.txt", unreadable());
    const Outcome two = run({mended, clean, "--quiet"});
    EXPECT_EQ(two.exitCode, 1);
    EXPECT_EQ(two.out, "mended.txt: readable with 1 liberty\nclean.txt: clean\n");
    const Outcome three = run({refused, mended, clean});
    EXPECT_EQ(three.exitCode, 3);
    EXPECT_THAT(three.out, EndsWith("clean.txt: clean\n"));
}

TEST_F(lint, place_isThatOfTheBytesOfTheFile) {
    // A byte-order mark of three bytes and a NUL byte stand in front of what is told.
    const std::string file = write(std::string("\xEF\xBB\xBFORIGINATOR \0two words\n", 25) +
                                   chartText("SAMPLE_ID LAB_X", {"1 2"}));
    const nlohmann::json liberties = json({file}, 1)["files"][0]["liberties"];
    const auto has = [&](const char* kind, int line, int column) {
        for (const nlohmann::json& liberty : liberties) {
            if (liberty["kind"] == kind)
                return liberty["line"] == line && liberty["column"] == column;
        }
        return false;
    };
    EXPECT_TRUE(has("encoding", 1, 1)) << liberties;
    EXPECT_TRUE(has("nulBytes", 1, 15)) << liberties;
    EXPECT_TRUE(has("fieldDeclared", 4, 11)) << liberties;
}

TEST_F(lint, utf16_isReadAndARefusalShowsItsLine) {
    std::string wide = "\xFF\xFE";
    for (const char c : unreadable())
        wide += {c, '\0'};
    const Outcome result = run({write(wide)});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_THAT(result.out,
                HasSubstr("x.txt:8:1: not readable: Number of samples found doesn't match number of "
                          "samples declared. (code 13)\n    2 60 0\n    ^\n"));
}

TEST_F(lint, pipe_isReadOnce) {
    const Outcome result = runProgram({"/bin/sh", "-c", "cat \"$1\" | \"$0\" lint /dev/stdin",
                                       testedProgram("qxcms"), write(chartText(kLab, {"1 50 0 0"}))});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "/dev/stdin: clean\n");
}

// JSON.

TEST_F(lint, json_tellsVerdictAndLiberties) {
    const nlohmann::json report = json({write(miscounted())}, 1);
    EXPECT_EQ(report["command"], "lint");
    EXPECT_TRUE(report["written"].is_null());
    const nlohmann::json& file = report["files"][0];
    EXPECT_EQ(file["verdict"], "liberties");
    EXPECT_TRUE(file["strictFailure"].is_null());
    EXPECT_TRUE(file["failure"].is_null());
    EXPECT_EQ(file["remarks"], nlohmann::json::array());
    EXPECT_EQ(file["warnings"], nlohmann::json::array());
    ASSERT_EQ(file["liberties"].size(), 1u);
    nlohmann::json liberty = file["liberties"][0];
    EXPECT_FALSE(liberty["done"].get<std::string>().empty());
    liberty.erase("done");
    EXPECT_EQ(liberty,
              nlohmann::json({{"kind", "sampleCount"}, {"line", 5}, {"column", 16}, {"token", "1"}}));
}

TEST_F(lint, json_explainsARefusal) {
    const nlohmann::json file =
        json({write(chartText("SAMPLE_ID\tLAB_X", {"1 2"})), "--strict"}, 3)["files"][0];
    EXPECT_EQ(file["verdict"], "unreadable");
    EXPECT_TRUE(file["strictFailure"].is_null());
    const nlohmann::json& failure = file["failure"];
    EXPECT_EQ(failure["code"], 11);
    EXPECT_EQ(failure["message"], "Unknown and undeclared header field type.");
    EXPECT_EQ(failure["line"], 3);
    EXPECT_EQ(failure["column"], 11);
    EXPECT_EQ(failure["offset"], 37);
    EXPECT_EQ(failure["token"], "LAB_X");
    EXPECT_EQ(failure["excerpt"], nlohmann::json({"SAMPLE_ID\tLAB_X", "         \t^"}));
    EXPECT_EQ(failure["detail"], failure["remedy"]);
    EXPECT_THAT(failure["remedy"].get<std::string>(), HasSubstr("KEYWORD"));
}

TEST_F(lint, json_keepsBothRefusals) {
    const nlohmann::json file =
        json({write(chartText("SAMPLE_ID LAB_X LAB_L", {"1 2 3", "4 5"}))}, 3)["files"][0];
    EXPECT_EQ(file["strictFailure"]["code"], 11);
    EXPECT_EQ(file["failure"]["code"], 13);
    // "CGATS.17", the format, the number of sets and a row of 6 bytes stand before the second row.
    EXPECT_EQ(file["failure"]["offset"], 9 + 18 + 22 + 16 + 17 + 11 + 6);
}

TEST_F(lint, json_missesNothingThatQuietHides) {
    EXPECT_EQ(json({write(miscounted()), "--quiet"}, 1)["files"][0]["liberties"].size(), 1u);
}

TEST_F(lint, json_ofAFileThatCannotBeRead_hasNoPlace) {
    const nlohmann::json failure = json({folder.path("none.txt")}, 3)["files"][0]["failure"];
    EXPECT_EQ(failure["code"], 3);
    EXPECT_EQ(failure["detail"], "No such file or directory");
    EXPECT_TRUE(failure["line"].is_null());
    EXPECT_TRUE(failure["excerpt"].is_null());
}

// --fix.

TEST_F(lintFix, writesTheTextInForm) {
    const std::string file = write(miscounted());
    const std::string out = folder.path("out.txt");
    EXPECT_EQ(run({file, "--fix", out}).exitCode, 1);
    EXPECT_EQ(ScratchFolder::read(out), chartText(kLab, {"1 50 0 0", "2 60 0 0"}));
    EXPECT_EQ(ScratchFolder::read(file), miscounted());
    EXPECT_EQ(json({file, "--fix", out}, 1)["written"], out);
}

TEST_F(lintFix, ontoTheFileItself_mendsIt) {
    const std::string file = write(miscounted());
    EXPECT_EQ(run({file, "--fix", file}).exitCode, 1);
    EXPECT_EQ(ScratchFolder::read(file), chartText(kLab, {"1 50 0 0", "2 60 0 0"}));
    EXPECT_EQ(run({file, "--fix", file}).exitCode, 0);
}

TEST_F(lintFix, ofACleanFile_copiesItsBytes) {
    const std::string text = "\t" + chartText(kLab, {"1 50  0 0 "}, "NOTE \"caf\xE9\"\r\n");
    const std::string out = folder.path("out.txt");
    EXPECT_EQ(run({write(text), "--fix", out}).exitCode, 0);
    EXPECT_EQ(ScratchFolder::read(out), text);
}

TEST_F(lintFix, ofARefusedFile_writesNothing) {
    const std::string file = write(unreadable());
    const std::string kept = folder.write("kept.txt", "kept");
    EXPECT_EQ(run({file, "--fix", kept}).exitCode, 3);
    EXPECT_EQ(ScratchFolder::read(kept), "kept");
    EXPECT_EQ(run({file, "--fix", file}).exitCode, 3);
    EXPECT_EQ(ScratchFolder::read(file), unreadable());
    EXPECT_TRUE(json({file, "--fix", folder.path("out.txt")}, 3)["written"].is_null());
    EXPECT_FALSE(std::filesystem::exists(folder.path("out.txt")));
}

TEST_F(lintFix, whereNothingCanBeWritten_isToldWithExitCode5) {
    const std::string out = folder.path("none/out.txt");
    const Outcome result = run({write(miscounted()), "--fix", out});
    EXPECT_EQ(result.exitCode, 5);
    EXPECT_EQ(result.err, "qxcms: none/out.txt: cannot be written: No such file or directory\n");
    EXPECT_THAT(result.out, EndsWith("x.txt: readable with 1 liberty\n"));
    EXPECT_EQ(run({write(miscounted()), "--fix", folder.path()}).exitCode, 5);
    EXPECT_EQ(run({write(miscounted()), "--fix", ""}).exitCode, 5);
    EXPECT_TRUE(json({write(miscounted()), "--fix", out}, 5)["written"].is_null());
}

// A limit on the size of files stands for a full disk; 512-byte blocks.
TEST_F(lintFix, textThatDoesNotFit_leavesTheFileAsItWas) {
    const std::string kept = folder.write("kept.txt", "kept");
    const std::string file = write(chartText(kLab, std::vector<std::string>(200, "1 50 0 0")));
    const Outcome result = runProgram(
        {"/bin/sh", "-c", "ulimit -f 1; trap '' XFSZ; \"$0\" lint --quiet \"$1\" --fix \"$2\" | cat",
         testedProgram("qxcms"), file, kept});
    EXPECT_THAT(result.err, HasSubstr("kept.txt: cannot be written"));
    EXPECT_EQ(ScratchFolder::read(kept), "kept");
}

// A name is a name, whatever stands in it.
TEST_F(lintFix, nameLikeALogicalOne_isTakenAsItIs) {
    const Outcome result = runProgram({"/bin/sh", "-c", "cd \"$2\"; \"$0\" lint \"$1\" --fix 'a:[b]c.txt'",
                                       testedProgram("qxcms"), write(miscounted()), folder.path()});
    EXPECT_EQ(result.exitCode, 1) << result.err;
    EXPECT_TRUE(std::filesystem::exists(folder.path("a:[b]c.txt")));
}

TEST_F(lintFix, ofSeveralFiles_isWrongUsage) {
    const std::string file = write(miscounted());
    const Outcome result = run({file, file, "--fix", folder.path("out.txt")});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "qxcms: --fix takes one FILE\n");
}

TEST_F(lintFix, strictly_isWrongUsage) {
    const Outcome result = run({write(miscounted()), "--strict", "--fix", folder.path("out.txt")});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err, "qxcms: --strict leaves nothing to --fix\n");
}

} // namespace
