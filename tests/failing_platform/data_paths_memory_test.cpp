// Data paths when the memory fails anywhere: no other file, and no report.
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>

#include "platform/logical_names.h"
#include "support/qxcms_dp.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/support/reports.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::IsEmpty;

/// A file in both trees.
class DataPathMemory : public testing::Test {
protected:
    void SetUp() override {
        for (const char* const tree : {"w", "r"}) {
            std::filesystem::create_directories(folder.path(tree) + "/a longer subdirectory");
            folder.write(std::string(tree) + "/a longer subdirectory/a longer name.ill", "x");
        }
        ASSERT_EQ(deflognam("QX_CMS", folder.path().c_str()), 0);
    }
    void TearDown() override { deflognam("QX_CMS", nullptr); }

    /// Asks for the file while the memory fails: the answer of sound memory, or -1.
    template <class Question>
    void expectTheAnswerOrNone(const std::string& answer, Question question) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            ReportCollector reports;
            char out[QXCMS_LOGNAM_SIZE] = "";
            faults.arm();
            const int result = question(out, static_cast<int>(sizeof out));
            faults.disarm();
            // What fails may also be something that the C library can do without.
            EXPECT_TRUE(result == 0 || (result == -1 && faults.happened())) << result;
            EXPECT_EQ(result == 0 ? out : answer, answer);
            EXPECT_THAT(reports.errors, IsEmpty());
        });
    }

    static constexpr const char* kSubdir = "a longer subdirectory";
    static constexpr const char* kName = "a longer name";

    ScratchFolder folder;
    const std::string directory = folder.path("w/a longer subdirectory/");
    const std::string path = directory + "a longer name.ill";
    const std::string logicalPath = "QX_CMS:[w.a longer subdirectory]a longer name.ill";
    char name[QXCMS_LOGNAM_SIZE] = "";
};

using dataPathMemory = DataPathMemory;

TEST_F(dataPathMemory, logicalPathWithoutMemory_isNone) {
    expectTheAnswerOrNone(
        logicalPath, [](char* out, int size) { return qxcms_dp_gpp(out, size, kSubdir, kName, "ill", "w"); });
}

TEST_F(dataPathMemory, pathWithoutMemory_isNone) {
    expectTheAnswerOrNone(
        path, [](char* out, int size) { return qxcms_dp_gp(out, size, kSubdir, kName, "ill", "w"); });
    expectTheAnswerOrNone(directory, [this](char* out, int size) {
        return qxcms_dp_gp_path(out, name, size, kSubdir, kName, "ill", "w");
    });
}

TEST_F(dataPathMemory, searchWithoutMemory_doesNotFindTheFileOfTheOtherTree) {
    expectTheAnswerOrNone(path,
                          [](char* out, int size) { return qxcms_dp_sf(out, size, kSubdir, kName, "ill"); });
    expectTheAnswerOrNone(
        path, [](char* out, int size) { return qxcms_dp_sfd(out, size, kSubdir, kName, "ill", nullptr); });
    expectTheAnswerOrNone(logicalPath,
                          [](char* out, int size) { return qxcms_dp_spf(out, size, kSubdir, kName, "ill"); });
    expectTheAnswerOrNone(directory, [this](char* out, int size) {
        return qxcms_dp_sf_path(out, name, size, kSubdir, kName, "ill");
    });
}

TEST_F(dataPathMemory, directoryWithoutMemory_isNotGivenAndNotCalledUndefined) {
    expectTheAnswerOrNone(folder.path(), [](char* out, int) { return qxcms_dp_get_main_dirn(out); });
}

// It is found beside the program where nothing defines it.
TEST_F(dataPathMemory, directoryOfTheDataWithoutMemory_isNotCalledUndefined) {
    ASSERT_EQ(deflognam("QX_CMS", nullptr), 0);
    char found[QXCMS_LOGNAM_SIZE];
    ASSERT_EQ(qxcms_dp_get_main_dirn(found), 0);
    ASSERT_STRNE(found, "");
    expectTheAnswerOrNone(found, [](char* out, int) { return qxcms_dp_get_main_dirn(out); });
}

TEST_F(dataPathMemory, nameWithoutMemory_isNotChangedAndNotSaidToPointNowhere) {
    expectTheAnswerOrNone("QX_CMS", [](char* out, int size) {
        return qxcms_dp_set_qxcms_main_dir_lognam("QX_CMS", out, size);
    });
}

TEST_F(dataPathMemory, sameDirectoryWithoutMemory_isNotDefined) {
    constexpr const char* kRoot = "QX_OTHER_NAME_LONG_ENOUGH";
    std::strcpy(qxcms_dp_get_main(), kRoot);
    ASSERT_EQ(setenv(kRoot, "/a/folder/long/enough", 1), 0);
    expectTheAnswerOrNone("/a/folder/long/enough",
                          [](char* out, int) { return qxcms_dp_set_cmsd("/a/folder/long/enough", out); });
    // A definition would go on without the variable.
    unsetenv(kRoot);
    char out[QXCMS_LOGNAM_SIZE];
    EXPECT_EQ(lognam(kRoot, out), -1);
    std::strcpy(qxcms_dp_get_main(), "QX_CMS");
}

TEST_F(dataPathMemory, fileWithoutMemory_doesNotOpen) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const int length = qxcms_dp_ffspec(path.c_str());
        faults.disarm();
        EXPECT_EQ(length, faults.happened() ? 0 : static_cast<int>(path.size()));
    });
}

} // namespace
} // namespace qxcms::tests
