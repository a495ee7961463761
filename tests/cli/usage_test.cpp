#include <gmock/gmock.h>

#include "base/version.h"
#include "tests/cli/run_command.h"

using qxcms::tests::Outcome;
using qxcms::tests::runCommand;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace {

void expectUsageError(const std::vector<std::string>& arguments, const std::string& part) {
    const Outcome result = runCommand(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.out, IsEmpty());
    EXPECT_THAT(result.err, AllOf(StartsWith("qxcms: "), HasSubstr(part)));
}

TEST(usage, help_isWrittenToTheOutput) {
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"--help"}, {"diff", "--help"}, {"info", "--help"}, {"lint", "--help"}}) {
        const Outcome result = runCommand(arguments);
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_THAT(result.out, AllOf(HasSubstr("Usage: qxcms"), HasSubstr("Exit codes:")));
        EXPECT_THAT(result.err, IsEmpty());
    }
}

TEST(usage, helpOfDiff_namesOptionsAndFormulas) {
    EXPECT_THAT(runCommand({"diff", "--help"}).out,
                AllOf(HasSubstr("MEASURED REFERENCE"), HasSubstr("--illuminant NAME"),
                      HasSubstr("--pair auto|device|id|order"), HasSubstr("--force"),
                      HasSubstr("--tolerance X"), HasSubstr("cmc21"), HasSubstr("de76"),
                      HasSubstr("--formula NAME=CIEDE2000"), HasSubstr("--table N=1"),
                      HasSubstr("--reference-table N")));
}

TEST(usage, version_isThatOfTheLibrary) {
    const Outcome result = runCommand({"--version"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "qxcms " QXCMS_VERSION "\n");
}

TEST(usage, noSubcommand_isRefused) {
    expectUsageError({}, "no subcommand; the subcommands are diff, info and lint; \"qxcms --help\"");
}

TEST(usage, unknownSubcommand_isRefused) {
    expectUsageError({"compare", "a", "b"},
                     "unknown subcommand or option \"compare\"; the subcommands are diff, info and lint");
}

TEST(usage, error_pointsToTheHelpOfItsSubcommand) {
    expectUsageError({"info"}, "\"qxcms info --help\"");
    expectUsageError({"info", "--foo", "a"}, "\"qxcms info --help\"");
    expectUsageError({"diff", "a"}, "\"qxcms diff --help\"");
}

TEST(usage, missingFile_isRefused) {
    expectUsageError({"diff", "a.txt"}, "REFERENCE");
    expectUsageError({"info"}, "FILE");
    expectUsageError({"lint"}, "FILE");
}

TEST(usage, surplusArgument_isRefused) {
    expectUsageError({"diff", "a", "b", "c"}, "c");
}

TEST(usage, unknownOption_isRefused) {
    expectUsageError({"diff", "a", "b", "--white"}, "--white");
}

TEST(usage, unknownWords_areRefusedWithTheKnownOnes) {
    expectUsageError({"diff", "a", "b", "--pair", "best"}, "auto,device,id,order");
    expectUsageError({"diff", "a", "b", "--measured-as", "rgb"}, "auto,spectra,lab,xyz");
    expectUsageError({"diff", "a", "b", "--reference-as", "rgb"}, "auto,spectra,lab,xyz");
}

TEST(usage, toleranceThatIsNoNumberFromZeroUp_isRefused) {
    for (const char* text : {"-1", "nan", "inf", "1e999", "1,5", "x", "", "1x"})
        expectUsageError({"diff", "a", "b", "--tolerance", text}, "--tolerance");
}

TEST(usage, worstThatIsNoWholeNumberFromZeroUp_isRefused) {
    for (const char* text : {"-1", "1.5", "x", "", "2147483648", "99999999999"})
        expectUsageError({"diff", "a", "b", "--worst", text}, "--worst");
}

TEST(usage, optionGivenTwice_isRefused) {
    expectUsageError({"diff", "a", "b", "--tolerance", "1", "--tolerance", "2"}, "--tolerance");
}

} // namespace
