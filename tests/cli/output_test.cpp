// What happens when the output cannot be written.
#include <csignal>
#include <filesystem>

#include <gmock/gmock.h>

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
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class output : public testing::Test {
protected:
    ScratchFolder folder;
    std::string file = folder.write("chart.txt", chartText("SAMPLE_ID LAB_L LAB_A LAB_B", {"1 50 0 0"}));

    // Runs the command in a shell; "$0" is the command and "$1" the chart.
    Outcome inShell(const std::string& script) const {
        return runProgram({"/bin/sh", "-c", script, testedProgram("qxcms"), file});
    }
};

TEST_F(output, closedOutput_isToldWithExitCode5) {
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"diff", file, file},
                                                      {"diff", file, file, "--json"},
                                                      {"info", file},
                                                      {"info", file, "--json"},
                                                      {"lint", file},
                                                      {"lint", file, "--json"},
                                                      {"--help"},
                                                      {"--version"}}) {
        const Outcome result = runCommand(arguments, {{}, true});
        EXPECT_EQ(result.exitCode, 5) << arguments[0];
        EXPECT_THAT(result.err, HasSubstr("qxcms: the standard output cannot be written: "));
    }
}

TEST_F(output, fullDevice_isToldWithExitCode5) {
    if (!std::filesystem::is_character_file("/dev/full"))
        GTEST_SKIP() << "there is no /dev/full here";
    const Outcome result = inShell("\"$0\" diff \"$1\" \"$1\" > /dev/full");
    EXPECT_EQ(result.exitCode, 5);
    EXPECT_THAT(result.err, HasSubstr("No space left on device"));
}

// A limit on the size of files stands for a full disk; 512-byte blocks.
TEST_F(output, fileThatMayNotGrow_isToldWithExitCode5) {
    const Outcome result =
        inShell("ulimit -f 1; trap '' XFSZ; \"$0\" info \"$1\" \"$1\" \"$1\" \"$1\" \"$1\" > \"$1.out\"");
    EXPECT_EQ(result.exitCode, 5);
    EXPECT_THAT(result.err, HasSubstr("cannot be written"));
}

TEST_F(output, readerThatHasGone_isNoMatterForAMessage) {
    // The command waits until the pipe has no reader.
    const Outcome result = inShell("{ sleep 0.2; \"$0\" info \"$1\"; } | true");
    EXPECT_THAT(result.err, IsEmpty());
    const Outcome ignoring = inShell("trap '' PIPE; { sleep 0.2; \"$0\" info \"$1\"; echo $? >&2; } | true");
    EXPECT_EQ(ignoring.err, "5\n");
}

} // namespace
