// The generated files that are committed are what the generators make of data/.
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <sys/wait.h>

#include "tests/support/scratch.h"
#include "tests/support/tested_build.h"

namespace qxcms::tests {
namespace {

std::string quoted(const std::string& text) {
    std::string result(1, '"');
    return result.append(text).append(1, '"');
}

/// Runs a generator and returns its exit code; what it prints goes to `output`.
int run(const std::string& generator, const std::vector<std::string>& arguments, const std::string& output) {
    std::string command = quoted(testedProgram(generator));
    for (const std::string& argument : arguments)
        command.append(" ").append(quoted(argument));
    const int status = std::system(command.append(" > ").append(quoted(output)).append(" 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

std::set<std::string> filesBelow(const std::filesystem::path& root) {
    std::set<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        if (entry.is_regular_file())
            files.insert(std::filesystem::relative(entry.path(), root).string());
    }
    return files;
}

/// Runs a generator on the sources and compares all it makes with the committed files.
void expectCommitted(const std::string& generator, std::size_t count) {
    const ScratchFolder scratch;
    const std::string output = scratch.path("made");
    ASSERT_EQ(run(generator, {QXCMS_SOURCE_DIR, output}, scratch.path("messages")), 0)
        << ScratchFolder::read(scratch.path("messages"));
    const std::set<std::string> made = filesBelow(output);
    EXPECT_EQ(made.size(), count);
    for (const std::string& file : made) {
        const std::string committed = ScratchFolder::read(QXCMS_SOURCE_DIR "/" + file);
        EXPECT_FALSE(committed.empty()) << file;
        EXPECT_TRUE(ScratchFolder::read(output + "/" + file) == committed) << file << " is out of date";
    }
}

TEST(generators, tables_areMadeAsCommitted) {
    expectCommitted("generate_tables", 4);
}

TEST(generators, illuminants_areMadeAsCommitted) {
    expectCommitted("generate_illuminants", 28);
}

TEST(generators, charts_areMadeAsCommitted) {
    expectCommitted("generate_charts", 2);
}

TEST(generators, everyGenerator_refusesOtherThanTwoArguments) {
    const ScratchFolder scratch;
    for (const std::string generator : {"generate_tables", "generate_illuminants", "generate_charts"}) {
        EXPECT_EQ(run(generator, {"one"}, scratch.path("messages")), 2) << generator;
        EXPECT_THAT(ScratchFolder::read(scratch.path("messages")), testing::HasSubstr("usage: "))
            << generator;
    }
}

TEST(generators, everyGenerator_failsWithoutItsDataAndNamesTheFile) {
    const ScratchFolder scratch;
    const std::vector<std::string> arguments = {scratch.path(), scratch.path("made")};
    for (const std::string generator : {"generate_tables", "generate_illuminants", "generate_charts"}) {
        EXPECT_EQ(run(generator, arguments, scratch.path("messages")), 1) << generator;
        EXPECT_THAT(ScratchFolder::read(scratch.path("messages")), testing::HasSubstr(".csv: cannot be read"))
            << generator;
    }
}

/// A copy of data/ in which one text of one file is replaced by another, where it stands first.
void copyDataWith(const ScratchFolder& scratch, const std::string& file, const std::string& from,
                  const std::string& to) {
    std::filesystem::copy(QXCMS_SOURCE_DIR "/data", scratch.path("data"),
                          std::filesystem::copy_options::recursive);
    std::string text = ScratchFolder::read(scratch.path("data/" + file));
    const std::size_t position = text.find(from);
    ASSERT_NE(position, std::string::npos) << file;
    scratch.write("data/" + file, text.replace(position, from.size(), to));
}

std::string messageOnDamage(const std::string& generator, const std::string& file, const std::string& from,
                            const std::string& to) {
    const ScratchFolder scratch;
    copyDataWith(scratch, file, from, to);
    const std::vector<std::string> arguments = {scratch.path(), scratch.path("made")};
    EXPECT_EQ(run(generator, arguments, scratch.path("messages")), 1);
    return ScratchFolder::read(scratch.path("messages"));
}

TEST(generators, tables_areNotMadeOfAnotherRaster) {
    EXPECT_THAT(messageOnDamage("generate_tables", "observers/cie1931_2deg_5nm.csv", "\n385,", "\n386,"),
                testing::HasSubstr("other wavelengths than expected"));
}

TEST(generators, tables_areNotMadeOfARowThatLacksACell) {
    EXPECT_THAT(messageOnDamage("generate_tables", "weights/astm_e308_table6_1931_10nm.csv", "\n380,0.001,",
                                "\n380,"),
                testing::HasSubstr("a row of another length"));
}

TEST(generators, lamps_areNotFilteredFromOtherThanTwoDecimals) {
    EXPECT_THAT(
        messageOnDamage("generate_illuminants", "illuminants/fluorescent.csv", "\n385,2.36,", "\n385,2.365,"),
        testing::HasSubstr("two decimals expected: 2.365"));
}

TEST(generators, charts_areNotMadeOfATextThatIsNoNumber) {
    EXPECT_THAT(messageOnDamage("generate_charts", "charts/colorchecker_aims.csv", "0.4002", "0,4002x"),
                testing::HasSubstr("a row of another length"));
    EXPECT_THAT(messageOnDamage("generate_charts", "charts/colorchecker_aims.csv", "0.4002", "0.4002x"),
                testing::HasSubstr("no number: 0.4002x"));
}

} // namespace
} // namespace qxcms::tests
