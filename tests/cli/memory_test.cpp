// What the command says when memory runs out.
#include <gmock/gmock.h>

#include "tests/cli/run_command.h"
#include "tests/support/chart_text.h"
#include "tests/support/scratch.h"
#include "tests/support/tested_build.h"

#if defined(__SANITIZE_ADDRESS__)
#define QXCMS_ADDRESS_SANITIZER
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QXCMS_ADDRESS_SANITIZER
#endif
#endif

namespace qxcms::tests {
namespace {

// A text whose reading takes about ten times its size.
std::string manyColumnsText(int count) {
    std::string declarations, fields, values;
    for (int i = 0; i < count; ++i) {
        const std::string name = "LOT" + std::to_string(i);
        declarations += "KEYWORD " + name + "\n";
        fields += " " + name;
        values += " x";
    }
    return chartText(fields, {values}, declarations);
}

// Wherever memory runs out while a document is read, it is memory that is told of, and not a fault of the
// document.
TEST(commandMemory, tooLittle_isToldWithExitCode5) {
#ifdef QXCMS_ADDRESS_SANITIZER
    GTEST_SKIP() << "the sanitizer takes more address space than any limit leaves";
#endif
    const ScratchFolder folder;
    const std::string file = folder.write("chart.txt", manyColumnsText(60000));
    bool tooLittle = false, enough = false;
    for (int kilobytes = 16000; kilobytes <= 80000; kilobytes += 4000) {
        const std::string script = "ulimit -v " + std::to_string(kilobytes) + "; \"$0\" info --quiet \"$1\"";
        const Outcome result = runProgram({"/bin/sh", "-c", script, testedProgram("qxcms"), file});
        tooLittle = tooLittle || result.exitCode == 5;
        enough = enough || result.exitCode == 0;
        if (result.exitCode != 0) {
            ASSERT_EQ(result.exitCode, 5) << kilobytes << " kB: " << result.out << result.err;
            ASSERT_EQ(result.err, "qxcms: out of memory\n") << kilobytes << " kB";
        }
    }
    EXPECT_TRUE(tooLittle);
    EXPECT_TRUE(enough);
}

} // namespace
} // namespace qxcms::tests
