// Data files below the main logical name: logical paths, paths, searches in both trees, and the name itself.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <ostream>
#include <string>

#include <gmock/gmock.h>

#include "platform/logical_names.h"
#include "support/qxcms_dp.h"
#include "tests/support/reports.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {

// As a test shows what differs.
static void PrintTo(const Report& report, std::ostream* out) {
    *out << report.module << ':' << report.line << ": " << report.message;
}

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

/// The main logical name before any test changed it.
const std::string kNameAtFirst = qxcms_dp_get_main();

Report reported(const std::string& message, int line) {
    return {message, "qxcms_dp", line};
}

/// A root of the test's own under the name QX_CMS, with both trees, empty at first.
class DataFolder : public testing::Test {
protected:
    void SetUp() override {
        std::strcpy(qxcms_dp_get_main(), "QX_CMS");
        fs::create_directories(folder.path("w/ill"));
        fs::create_directories(folder.path("r/ill"));
        ASSERT_EQ(deflognam("QX_CMS", folder.path().c_str()), 0);
    }
    void TearDown() override {
        std::strcpy(qxcms_dp_get_main(), "QX_CMS");
        deflognam("QX_CMS", nullptr);
        deflognam("QX_OTHER", nullptr);
    }

    void put(const std::string& file, const std::string& bytes = "x") const { folder.write(file, bytes); }

    ScratchFolder folder;
    ReportCollector reports;
    char out[QXCMS_LOGNAM_SIZE] = "before";
    char name[QXCMS_LOGNAM_SIZE] = "before";
};

using dataPaths = DataFolder;
using dataRoot = DataFolder;

// Logical paths.

TEST_F(dataPaths, logicalPath_namesRootTreeSubdirectoryNameAndExtension) {
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65", "ill", "w"), 0);
    EXPECT_STREQ(out, "QX_CMS:[w.ill]d65.ill");
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "a.b", "d65", "ill", "r"), 0);
    EXPECT_STREQ(out, "QX_CMS:[r.a.b]d65.ill");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, logicalPathWithoutASubdirectory_namesTheTreeAlone) {
    for (const char* const none : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, none, "d65", "ill", "r"), 0);
        EXPECT_STREQ(out, "QX_CMS:[r]d65.ill");
    }
}

TEST_F(dataPaths, logicalPathWithoutAnExtension_endsWithTheName) {
    for (const char* const none : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65", none, "w"), 0);
        EXPECT_STREQ(out, "QX_CMS:[w.ill]d65");
        EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65.x.y", none, "w"), 0);
        EXPECT_STREQ(out, "QX_CMS:[w.ill]d65.x.y");
    }
}

TEST_F(dataPaths, nameWithAPoint_getsNoExtension) {
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65.ill", "ill", "w"), 0);
    EXPECT_STREQ(out, "QX_CMS:[w.ill]d65.ill");
}

TEST_F(dataPaths, extensionOfTheName_mayBeInOtherCase) {
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65.ILL", "ill", "w"), 0);
    EXPECT_STREQ(out, "QX_CMS:[w.ill]d65.ILL");
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65.ill", "ILL", "w"), 0);
    EXPECT_STREQ(out, "QX_CMS:[w.ill]d65.ill");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, wrongExtension_isReportedAndRefused) {
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65.txt", "ill", "w"), -1);
    EXPECT_THAT(reports.errors,
                ElementsAre(reported("qxcms_dp_gp : File d65.txt has wrong extension, should be ill", 283)));
}

TEST_F(dataPaths, nameThatEndsWithAPoint_hasTheWrongExtension) {
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65.", "ill", "w"), -1);
    EXPECT_THAT(reports.errors,
                ElementsAre(reported("qxcms_dp_gp : File d65. has wrong extension, should be ill", 283)));
}

TEST_F(dataPaths, extension_beginsAtTheFirstPoint) {
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "a.b.ill", "ill", "w"), -1);
    EXPECT_THAT(reports.errors,
                ElementsAre(reported("qxcms_dp_gp : File a.b.ill has wrong extension, should be ill", 283)));
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "a.b.ill", "b.ILL", "w"), 0);
    EXPECT_STREQ(out, "QX_CMS:[w.ill]a.b.ill");
}

TEST_F(dataPaths, wrongExtension_isReportedInOneNameByAll) {
    const Report report = reported("qxcms_dp_gp : File d65.txt has wrong extension, should be ill", 283);
    EXPECT_EQ(qxcms_dp_gp(out, sizeof out, "ill", "d65.txt", "ill", "w"), -1);
    EXPECT_THAT(reports.errors, ElementsAre(report));
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65.txt", "ill"), -1);
    EXPECT_THAT(reports.errors, ElementsAre(report, report));
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65.txt", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65.txt", "ill", nullptr), -1);
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65.txt", "ill"), -1);
    EXPECT_THAT(reports.errors, ElementsAre(report, report, report, report, report));
}

TEST_F(dataPaths, partsWithAWrongExtension_areReportedInTheirOwnName) {
    const Report report = reported("qxcms_dp_gp_path : File d65.txt has wrong extension, should be ill", 331);
    EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, "ill", "d65.txt", "ill", "w"), -1);
    EXPECT_THAT(reports.errors, ElementsAre(report));
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65.txt", "ill"), -1);
    EXPECT_THAT(reports.errors, ElementsAre(report, report));
}

TEST_F(dataPaths, reports_areCutAt255Characters) {
    const std::string prefix = "qxcms_dp_gp : File "; // 19 characters
    const std::string longName = std::string(300, 'n') + ".txt";
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", longName.c_str(), "ill", "w"), -1);
    EXPECT_THAT(reports.errors, ElementsAre(reported(prefix + std::string(236, 'n'), 283)));
    reports.errors.clear();
    // 19 + 200 + 32 + 4 characters: all of it just goes in.
    const std::string fitting = std::string(196, 'n') + ".txt";
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", fitting.c_str(), "illu", "w"), -1);
    EXPECT_THAT(reports.errors,
                ElementsAre(reported(prefix + fitting + " has wrong extension, should be illu", 283)));
    EXPECT_EQ(reports.errors[0].message.size(), 255u);
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", fitting.c_str(), "illum", "w"), -1);
    EXPECT_EQ(reports.errors[1].message, reports.errors[0].message);
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", std::string(300, 'n').c_str(), ""), -10);
    EXPECT_EQ(reports.errors[2].message, "qxcms_dp_sf : file " + std::string(236, 'n'));
}

TEST_F(dataPaths, logicalPathThatJustFits_isDelivered) {
    char text[] = "######################"; // 21 characters of the logical path, and one
    EXPECT_EQ(qxcms_dp_gpp(text, 22, "ill", "d65", "ill", "w"), 0);
    EXPECT_STREQ(text, "QX_CMS:[w.ill]d65.ill");
}

TEST_F(dataPaths, logicalPathThatDoesNotFit_leavesAnEmptyTextAndNoReport) {
    for (int size = 1; size < 22; ++size) {
        std::string text(30, '#');
        EXPECT_EQ(qxcms_dp_gpp(text.data(), size, "ill", "d65", "ill", "w"), -1);
        EXPECT_EQ(text, std::string(1, '\0') + std::string(29, '#')) << size;
    }
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, withoutRoomOrArguments_nothingIsTouchedAndNothingReported) {
    const std::string before = out;
    for (const int size : {0, -1, -2147483647 - 1}) {
        EXPECT_EQ(qxcms_dp_gpp(out, size, "ill", "d65", "ill", "w"), -1);
        EXPECT_EQ(qxcms_dp_gp(out, size, "ill", "d65", "ill", "w"), -1);
        EXPECT_EQ(qxcms_dp_sf(out, size, "ill", "d65", "ill"), -1);
        EXPECT_EQ(qxcms_dp_sfd(out, size, "ill", "d65", "ill", nullptr), -1);
        EXPECT_EQ(qxcms_dp_spf(out, size, "ill", "d65", "ill"), -1);
        EXPECT_EQ(qxcms_dp_gp_path(out, name, size, "ill", "d65", "ill", "w"), -1);
        EXPECT_EQ(qxcms_dp_sf_path(out, name, size, "ill", "d65", "ill"), -1);
    }
    EXPECT_EQ(qxcms_dp_gpp(nullptr, 100, "ill", "d65", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_gpp(out, 100, "ill", nullptr, "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_gpp(out, 100, "ill", "d65", "ill", nullptr), -1);
    EXPECT_EQ(qxcms_dp_gp(nullptr, 100, "ill", "d65", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_gp(out, 100, "ill", nullptr, "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_gp(out, 100, "ill", "d65", "ill", nullptr), -1);
    EXPECT_EQ(qxcms_dp_sf(nullptr, 100, "ill", "d65", "ill"), -1);
    EXPECT_EQ(qxcms_dp_sf(out, 100, "ill", nullptr, "ill"), -1);
    EXPECT_EQ(qxcms_dp_sfd(nullptr, 100, "ill", "d65", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_sfd(out, 100, "ill", nullptr, "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_spf(nullptr, 100, "ill", "d65", "ill"), -1);
    EXPECT_EQ(qxcms_dp_spf(out, 100, "ill", nullptr, "ill"), -1);
    EXPECT_EQ(qxcms_dp_gp_path(nullptr, name, 100, "ill", "d65", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_gp_path(out, nullptr, 100, "ill", "d65", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_gp_path(out, name, 100, "ill", nullptr, "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_gp_path(out, name, 100, "ill", "d65", "ill", nullptr), -1);
    EXPECT_EQ(qxcms_dp_sf_path(nullptr, name, 100, "ill", "d65", "ill"), -1);
    EXPECT_EQ(qxcms_dp_sf_path(out, nullptr, 100, "ill", "d65", "ill"), -1);
    EXPECT_EQ(qxcms_dp_sf_path(out, name, 100, "ill", nullptr, "ill"), -1);
    EXPECT_EQ(out, before);
    EXPECT_EQ(name, before);
    EXPECT_THAT(reports.errors, IsEmpty());
}

// Paths.

TEST_F(dataPaths, path_needNotExist) {
    EXPECT_EQ(qxcms_dp_gp(out, sizeof out, "ill.old", "none", "ill", "r"), 0);
    EXPECT_EQ(out, folder.path("r/ill/old/none.ill"));
    EXPECT_EQ(qxcms_dp_gp(out, sizeof out, nullptr, "none", nullptr, "w"), 0);
    EXPECT_EQ(out, folder.path("w/none"));
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, pathThatJustFits_isDeliveredAndALongerOneNot) {
    const int size = static_cast<int>(folder.path("w/ill/d65.ill").size()) + 1;
    EXPECT_EQ(qxcms_dp_gp(out, size, "ill", "d65", "ill", "w"), 0);
    EXPECT_EQ(out, folder.path("w/ill/d65.ill"));
    std::string text(static_cast<std::size_t>(size), '#');
    EXPECT_EQ(qxcms_dp_gp(text.data(), size - 1, "ill", "d65", "ill", "w"), -1);
    EXPECT_EQ(text[static_cast<std::size_t>(size) - 1], '#');
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, logicalPathLongerThanAPath_isStillTranslated) {
    // The logical path itself is never cut: it is the path that has to fit.
    const std::string longName(5000, 'n');
    std::string text(6000, '#');
    EXPECT_EQ(qxcms_dp_gp(text.data(), 6000, "ill", longName.c_str(), "ill", "w"), 0);
    EXPECT_STREQ(text.c_str(), folder.path("w/ill/" + longName + ".ill").c_str());
}

TEST_F(dataPaths, rootWithoutATranslation_givesNoPathAndNoReport) {
    std::strcpy(qxcms_dp_get_main(), "QX_OTHER");
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65", "ill", "w"), 0);
    EXPECT_STREQ(out, "QX_OTHER:[w.ill]d65.ill");
    EXPECT_EQ(qxcms_dp_gp(out, sizeof out, "ill", "d65", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65", "ill"), -1);
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "ill", "r"), -1);
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65", "ill"), -1);
    EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, "ill", "d65", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), -1);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, logicalPathThatNamesNoDirectory_hasNoPathAndNoReport) {
    fs::create_directories(folder.path("w/ill/old"));
    put("w/ill/old/d65.ill");
    for (const char* const subdir : {"ill/old", "ill..", ".ill", "ill..old", "."}) {
        EXPECT_EQ(qxcms_dp_gp(out, sizeof out, subdir, "d65", "ill", "w"), -1) << subdir;
        EXPECT_STREQ(out, "");
        EXPECT_EQ(qxcms_dp_sf(out, sizeof out, subdir, "d65", "ill"), -1) << subdir;
        EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, subdir, "d65", "ill", "w"), -1) << subdir;
        EXPECT_EQ(qxcms_dp_spf(out, sizeof out, subdir, "d65", "ill"), -1) << subdir;
        EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, subdir, "d65", "ill", "w"), -1) << subdir;
        EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, subdir, "d65", "ill"), -1) << subdir;
    }
    EXPECT_EQ(qxcms_dp_gp(out, sizeof out, "ill", "old/d65", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_gp(out, sizeof out, "ill", "d65", "ill", ""), -1);
    EXPECT_EQ(qxcms_dp_gp(out, sizeof out, "ill", "d65", "ill", "w/x"), -1);
    for (const char* const root : {"", "a/b"}) {
        std::strcpy(qxcms_dp_get_main(), root);
        EXPECT_EQ(qxcms_dp_gp(out, sizeof out, "ill", "d65", "ill", "w"), -1) << root;
    }
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, logicalPathThatNamesNoDirectory_isNoFileOfTheWorkingDirectory) {
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    put("QX_CMS:[w..ill]d65.ill");
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, ".ill", "d65", "ill"), -1);
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, ".ill", "d65", "ill"), -1);
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, ".ill", "d65", "ill"), -1);
    fs::current_path(before);
}

// Searches.

TEST_F(dataPaths, fileInBothTrees_isTakenFromW) {
    put("w/ill/d65.ill");
    put("r/ill/d65.ill");
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65", "ill"), 0);
    EXPECT_EQ(out, folder.path("w/ill/d65.ill"));
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "ill", nullptr), 0);
    EXPECT_EQ(out, folder.path("w/ill/d65.ill"));
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65", "ill"), 0);
    EXPECT_STREQ(out, "QX_CMS:[w.ill]d65.ill");
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), 0);
    EXPECT_EQ(out, folder.path("w/ill/"));
    EXPECT_STREQ(name, "d65.ill");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, fileInTheSecondTreeOnly_isFoundThereWithoutAReport) {
    put("r/ill/d65.ill");
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65.ill", "ill"), 0);
    EXPECT_EQ(out, folder.path("r/ill/d65.ill"));
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "ill", nullptr), 0);
    EXPECT_EQ(out, folder.path("r/ill/d65.ill"));
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65", "ill"), 0);
    EXPECT_STREQ(out, "QX_CMS:[r.ill]d65.ill");
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65.ill", nullptr), 0);
    EXPECT_EQ(out, folder.path("r/ill/"));
    EXPECT_STREQ(name, "d65.ill");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, fileWithoutASubdirectory_isFoundInTheTreeItself) {
    put("r/readme");
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "", "readme", ""), 0);
    EXPECT_EQ(out, folder.path("r/readme"));
}

TEST_F(dataPaths, searchInOneTree_leavesTheOtherOut) {
    put("w/ill/d65.ill");
    put("r/ill/d50.ill");
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "ill", "w"), 0);
    EXPECT_EQ(out, folder.path("w/ill/d65.ill"));
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "ill", "r"), -10);
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d50", "ill", "w"), -10);
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d50", "ill", "r"), 0);
    EXPECT_EQ(out, folder.path("r/ill/d50.ill"));
    EXPECT_THAT(reports.errors, ElementsAre(reported("qxcms_dp_sf : file d65.ill not found", 138),
                                            reported("qxcms_dp_sf : file d50.ill not found", 138)));
}

TEST_F(dataPaths, searchInOneTree_takesEveryTree) {
    fs::create_directories(folder.path("x/ill"));
    put("x/ill/d65.ill");
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "ill", "x"), 0);
    EXPECT_EQ(out, folder.path("x/ill/d65.ill"));
}

TEST_F(dataPaths, fileInNoTree_isReportedInTheNameOfSf) {
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65", "ill"), -10);
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "ill", nullptr), -10);
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "ill", "w"), -10);
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65", "ill"), -10);
    const std::string message = "qxcms_dp_sf : file d65.ill not found";
    EXPECT_THAT(reports.errors, ElementsAre(reported(message, 87), reported(message, 138),
                                            reported(message, 138), reported(message, 186)));
}

TEST_F(dataPaths, fileInNoTree_isReportedByItsNameWhereThatTakesNoExtension) {
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65.ILL", "ill"), -10);
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "", "r"), -10);
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65", nullptr), -10);
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65.ill", "ill"), -10);
    EXPECT_THAT(reports.errors, ElementsAre(reported("qxcms_dp_sf : file d65.ILL not found", 87),
                                            reported("qxcms_dp_sf : file d65 not found", 138),
                                            reported("qxcms_dp_sf : file d65 not found", 186),
                                            reported("qxcms_dp_sf_path : file d65.ill not found", 231)));
}

TEST_F(dataPaths, partsInNoTree_areReportedInTheirOwnName) {
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), -10);
    EXPECT_THAT(reports.errors, ElementsAre(reported("qxcms_dp_sf_path : file d65.ill not found", 231)));
}

TEST_F(dataPaths, fileInNoTree_leavesTheLastOneThatWasTried) {
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65", "ill"), -10);
    EXPECT_EQ(out, folder.path("r/ill/d65.ill"));
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65", "ill"), -10);
    EXPECT_STREQ(out, "QX_CMS:[r.ill]d65.ill");
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), -10);
    EXPECT_EQ(out, folder.path("r/ill/"));
    EXPECT_STREQ(name, "d65.ill");
}

TEST_F(dataPaths, directory_isNoFile) {
    fs::create_directories(folder.path("w/ill/d65.ill"));
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65", "ill"), -10);
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), -10);
    EXPECT_EQ(qxcms_dp_ffspec(folder.path("w").c_str()), 0);
    put("r/ill/d65.ill");
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65", "ill"), 0);
    EXPECT_EQ(out, folder.path("r/ill/d65.ill"));
}

TEST_F(dataPaths, emptyFile_isPassedOverByTheSearchOfPartsAlone) {
    put("w/ill/d65.ill", "");
    put("r/ill/d65.ill", "x");
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65", "ill"), 0);
    EXPECT_EQ(out, folder.path("w/ill/d65.ill"));
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65", "ill"), 0);
    EXPECT_STREQ(out, "QX_CMS:[w.ill]d65.ill");
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), 0);
    EXPECT_EQ(out, folder.path("r/ill/"));
    put("r/ill/d65.ill", "");
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), -10);
}

TEST_F(dataPaths, arguments_mayStandInTheBuffersThatAreWritten) {
    put("r/ill/d50.ill");
    std::strcpy(out, "d50");
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", out, "ill"), 0);
    EXPECT_EQ(out, folder.path("r/ill/d50.ill"));
    std::strcpy(out, "ill");
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, out, "d50", out), 0);
    EXPECT_STREQ(out, "QX_CMS:[r.ill]d50.ill");
    std::strcpy(out, "r");
    EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d50", "ill", out), 0);
    EXPECT_EQ(out, folder.path("r/ill/d50.ill"));
    std::strcpy(out, "d50");
    EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, "ill", out, "ill", "r"), 0);
    EXPECT_EQ(out, folder.path("r/ill/"));
    EXPECT_STREQ(name, "d50.ill");
    std::strcpy(out, "ill");
    std::strcpy(name, "d50");
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, out, name, "ill"), 0);
    EXPECT_EQ(out, folder.path("r/ill/"));
    EXPECT_STREQ(name, "d50.ill");
    std::strcpy(out, "d65");
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", out, "ill"), -10);
    EXPECT_THAT(reports.errors, ElementsAre(reported("qxcms_dp_sf : file d65.ill not found", 87)));
}

TEST_F(dataPaths, searchWithoutRoomForThePath_findsNothingAndReportsNothing) {
    put("w/ill/d65.ill");
    const int size = static_cast<int>(folder.path("w/ill/d65.ill").size());
    std::string text(static_cast<std::size_t>(size) + 1, '#');
    EXPECT_EQ(qxcms_dp_sf(text.data(), size, "ill", "d65", "ill"), -1);
    EXPECT_EQ(qxcms_dp_sfd(text.data(), size, "ill", "d65", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_spf(text.data(), 21, "ill", "d65", "ill"), -1);
    EXPECT_EQ(text.back(), '#');
    EXPECT_EQ(qxcms_dp_sf(text.data(), size + 1, "ill", "d65", "ill"), 0);
    EXPECT_EQ(qxcms_dp_spf(text.data(), 22, "ill", "d65", "ill"), 0);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, logicalPathOfAFoundFile_needsNoRoomForItsPath) {
    put("w/ill/d65.ill");
    char text[22];
    ASSERT_GT(folder.path("w/ill/d65.ill").size(), sizeof text);
    EXPECT_EQ(qxcms_dp_spf(text, sizeof text, "ill", "d65", "ill"), 0);
    EXPECT_STREQ(text, "QX_CMS:[w.ill]d65.ill");
}

// Paths in two parts.

TEST_F(dataPaths, parts_areDirectoryAndName) {
    EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, "ill.old", "d65", "ill", "r"), 0);
    EXPECT_EQ(out, folder.path("r/ill/old/"));
    EXPECT_STREQ(name, "d65.ill");
    EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, "ill", "d65.ILL", "ill", "w"), 0);
    EXPECT_EQ(out, folder.path("w/ill/"));
    EXPECT_STREQ(name, "d65.ILL");
    EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, "ill", "d65", "", "w"), 0);
    EXPECT_STREQ(name, "d65");
    EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, "ill", "d50", nullptr, "w"), 0);
    EXPECT_STREQ(name, "d50");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, partsWithoutASubdirectory_areThoseOfTheTree) {
    put("r/d65.ill");
    for (const char* const none : {static_cast<const char*>(nullptr), ""}) {
        EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, none, "d65", "ill", "w"), 0);
        EXPECT_EQ(out, folder.path("w/"));
        EXPECT_STREQ(name, "d65.ill");
        EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, none, "d65", "ill"), 0);
        EXPECT_EQ(out, folder.path("r/"));
        EXPECT_STREQ(name, "d65.ill");
    }
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, wrongExtension_isReportedBeforeAPathIsLookedFor) {
    std::strcpy(qxcms_dp_get_main(), "QX_OTHER");
    std::string directory = "before";
    std::string file = "before";
    directory.resize(100);
    file.resize(100);
    EXPECT_EQ(qxcms_dp_gp_path(directory.data(), file.data(), 100, "ill", "d65.txt", "ill", "w"), -1);
    EXPECT_EQ(qxcms_dp_sf_path(directory.data(), file.data(), 100, "ill", "d65.txt", "ill"), -1);
    const Report report = reported("qxcms_dp_gp_path : File d65.txt has wrong extension, should be ill", 331);
    EXPECT_THAT(reports.errors, ElementsAre(report, report));
    EXPECT_STREQ(directory.c_str(), "before");
    EXPECT_STREQ(file.c_str(), "before");
}

TEST_F(dataPaths, partsThatJustFit_areDeliveredAndLongerOnesNot) {
    const std::string longName(folder.path("w/ill/").size(), 'n');
    const int size = static_cast<int>(longName.size()) + 1;
    std::string directory(longName.size() + 2, '#');
    std::string file = directory;
    EXPECT_EQ(qxcms_dp_gp_path(directory.data(), file.data(), size, "ill", longName.c_str(), "", "w"), 0);
    EXPECT_EQ(directory, folder.path("w/ill/") + '\0' + '#');
    EXPECT_EQ(file, longName + '\0' + '#');
    const std::string longer = longName + 'n';
    EXPECT_EQ(qxcms_dp_gp_path(directory.data(), file.data(), size, "ill", longer.c_str(), "", "w"), -1);
    EXPECT_STREQ(file.c_str(), "");
    EXPECT_EQ(file.back(), '#');
    EXPECT_EQ(qxcms_dp_gp_path(directory.data(), file.data(), size - 1, "ill", "d65", "", "w"), -1);
    EXPECT_STREQ(directory.c_str(), "");
    EXPECT_EQ(directory.back(), '#');
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataPaths, partsOfMoreThan255Characters_areNotFound) {
    const std::string longest(255 - folder.path("w/ill/").size(), 'n');
    put("w/ill/" + longest);
    put("w/ill/" + longest + 'n');
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", longest.c_str(), ""), 0);
    EXPECT_EQ(name, longest);
    EXPECT_THAT(reports.errors, IsEmpty());
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", (longest + 'n').c_str(), ""), -10);
    EXPECT_EQ(reports.errors.size(), 1u);
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", (longest + 'n').c_str(), ""), 0);
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", (longest + 'n').c_str(), ""), 0);
}

// Files by their path.

TEST_F(dataPaths, fileThatOpens_isAnsweredWithTheLengthOfItsPath) {
    put("w/a");
    put("w/empty", "");
    const std::string path = folder.path("w/a");
    EXPECT_EQ(qxcms_dp_ffspec(path.c_str()), static_cast<int>(path.size()));
    EXPECT_EQ(qxcms_dp_ffspec(folder.path("w/empty").c_str()), static_cast<int>(path.size()) + 4);
    EXPECT_EQ(qxcms_dp_ffspec(folder.path("w/b").c_str()), 0);
    EXPECT_EQ(qxcms_dp_ffspec(""), 0);
    EXPECT_EQ(qxcms_dp_ffspec(nullptr), 0);
    EXPECT_EQ(qxcms_dp_ffspec(std::string(100000, 'n').c_str()), 0);
    EXPECT_THAT(reports.errors, IsEmpty());
}

#if defined(__linux__)
// Nobody may write into a program that runs, be it with all rights.
TEST_F(dataPaths, fileThatOpensForReadingAlone_isAFile) {
    EXPECT_EQ(qxcms_dp_ffspec("/proc/self/exe"), 14);
}
#endif

TEST_F(dataPaths, logicalPath_isNoPath) {
    put("w/ill/d65.ill");
    EXPECT_EQ(qxcms_dp_ffspec("QX_CMS:[w.ill]d65.ill"), 0);
}

// The main logical name.

TEST_F(dataRoot, nameAtFirst_isThatOfTheData) {
    EXPECT_EQ(kNameAtFirst, "QX_CMS");
}

TEST_F(dataRoot, buffer_isThatOfTheNameAndMayBeWritten) {
    std::strcpy(qxcms_dp_get_main(), "QX_OTHER");
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65", "ill", "w"), 0);
    EXPECT_STREQ(out, "QX_OTHER:[w.ill]d65.ill");
}

TEST_F(dataRoot, bufferFilledToItsEnd_isStillAName) {
    static_assert(QXCMS_DP_MAIN_SIZE == 129);
    std::memset(qxcms_dp_get_main(), 'n', QXCMS_DP_MAIN_SIZE);
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, nullptr, "d65", "ill", "w"), 0);
    EXPECT_EQ(out, std::string(129, 'n') + ":[w]d65.ill");
    // 129 characters fit 129, and do not fit 128.
    ASSERT_EQ(deflognam("QX_OTHER", "/other"), 0);
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", out, 128), -1);
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", out, 129), 0);
    EXPECT_EQ(std::string(out, 129), std::string(129, 'n'));
}

TEST_F(dataRoot, newName_isTakenAndTheOldOneGiven) {
    ASSERT_EQ(deflognam("QX_OTHER", "/other"), 0);
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", out, sizeof out), 0);
    EXPECT_STREQ(out, "QX_CMS");
    EXPECT_STREQ(qxcms_dp_get_main(), "QX_OTHER");
    EXPECT_EQ(qxcms_dp_gp(out, sizeof out, "ill", "d65", "ill", "w"), 0);
    EXPECT_STREQ(out, "/other/w/ill/d65.ill");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataRoot, memoryThatRanOutBefore_isNotAskedAbout) {
    errno = ENOMEM;
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", out, sizeof out), -1);
    EXPECT_EQ(reports.errors.size(), 1u);
    std::strcpy(qxcms_dp_get_main(), "QX_OTHER");
    errno = ENOMEM;
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
}

TEST_F(dataRoot, nameWithoutATranslation_isRefused) {
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", out, sizeof out), -1);
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("", out, sizeof out), -1);
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam(nullptr, out, sizeof out), -1);
    const Report report = reported("New logical name points to nowhere !", 380);
    EXPECT_THAT(reports.errors, ElementsAre(report, report, report));
    EXPECT_STREQ(qxcms_dp_get_main(), "QX_CMS");
    EXPECT_STREQ(out, "before");
}

TEST_F(dataRoot, nameOf128Characters_isTakenAndALongerOneRefused) {
    const std::string longest(128, 'n');
    const std::string tooLong(129, 'n');
    ASSERT_EQ(deflognam(longest.c_str(), "/longest"), 0);
    ASSERT_EQ(deflognam(tooLong.c_str(), "/tooLong"), 0);
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam(tooLong.c_str(), out, sizeof out), -1);
    EXPECT_THAT(reports.errors, ElementsAre(reported("Logical name too long", 386)));
    EXPECT_STREQ(qxcms_dp_get_main(), "QX_CMS");
    EXPECT_STREQ(out, "before");
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam(longest.c_str(), out, sizeof out), 0);
    EXPECT_EQ(qxcms_dp_get_main(), longest);
    EXPECT_EQ(reports.errors.size(), 1u);
    deflognam(longest.c_str(), nullptr);
    deflognam(tooLong.c_str(), nullptr);
}

TEST_F(dataRoot, oldNameThatDoesNotFit_isReportedAndNothingChanged) {
    ASSERT_EQ(deflognam("QX_OTHER", "/other"), 0);
    const Report report = reported("Destination string for old value too short", 392);
    for (const int size : {5, 1, 0, -1, -2147483647 - 1}) {
        reports.errors.clear();
        EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", out, size), -1);
        EXPECT_THAT(reports.errors, ElementsAre(report)) << size;
    }
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", nullptr, 100), -1);
    EXPECT_THAT(reports.errors, ElementsAre(report, report));
    EXPECT_STREQ(qxcms_dp_get_main(), "QX_CMS");
    EXPECT_STREQ(out, "before");
}

TEST_F(dataRoot, oldNameOfExactlyTheSize_comesWithoutATerminator) {
    ASSERT_EQ(deflognam("QX_OTHER", "/other"), 0);
    char old[] = "########";
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", old, 6), 0);
    EXPECT_EQ(std::string(old, sizeof old), std::string("QX_CMS##\0", 9));
    EXPECT_STREQ(qxcms_dp_get_main(), "QX_OTHER");
    std::strcpy(qxcms_dp_get_main(), "QX_CMS");
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", old, 7), 0);
    EXPECT_EQ(std::string(old, sizeof old), std::string("QX_CMS\0#\0", 9));
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataRoot, emptyOldName_needsNoRoom) {
    ASSERT_EQ(deflognam("QX_OTHER", "/other"), 0);
    qxcms_dp_get_main()[0] = '\0';
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", nullptr, 0), 0);
    EXPECT_STREQ(qxcms_dp_get_main(), "QX_OTHER");
    qxcms_dp_get_main()[0] = '\0';
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", out, 0), 0);
    EXPECT_STREQ(out, "before");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataRoot, firstOfSeveralReasons_isReported) {
    const std::string tooLong(129, 'n');
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam(tooLong.c_str(), out, 0), -1);
    ASSERT_EQ(deflognam(tooLong.c_str(), "/tooLong"), 0);
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam(tooLong.c_str(), out, 0), -1);
    EXPECT_THAT(reports.errors, ElementsAre(reported("New logical name points to nowhere !", 380),
                                            reported("Logical name too long", 386)));
    deflognam(tooLong.c_str(), nullptr);
}

TEST_F(dataRoot, newName_mayStandInTheBuffersThatAreWritten) {
    ASSERT_EQ(deflognam("QX_OTHER", "/other"), 0);
    char both[QXCMS_DP_MAIN_SIZE] = "QX_OTHER";
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam(both, both, sizeof both), 0);
    EXPECT_STREQ(both, "QX_CMS");
    EXPECT_STREQ(qxcms_dp_get_main(), "QX_OTHER");
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam(qxcms_dp_get_main(), both, sizeof both), 0);
    EXPECT_STREQ(both, "QX_OTHER");
    EXPECT_STREQ(qxcms_dp_get_main(), "QX_OTHER");
}

TEST_F(dataRoot, directory_isTheTranslationOfTheName) {
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_EQ(out, folder.path());
    std::strcpy(qxcms_dp_get_main(), "QX_OTHER");
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_STREQ(out, "");
    EXPECT_EQ(qxcms_dp_get_main_dirn(nullptr), -1);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataRoot, newDirectory_isDefinedAndTheOldOneGiven) {
    EXPECT_EQ(qxcms_dp_set_cmsd("/elsewhere", out), 0);
    EXPECT_EQ(out, folder.path());
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_STREQ(out, "/elsewhere");
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataRoot, sameDirectory_isNotDefinedAgain) {
    std::strcpy(qxcms_dp_get_main(), "QX_OTHER");
    ASSERT_EQ(setenv("QX_OTHER", "/environment", 1), 0);
    EXPECT_EQ(qxcms_dp_set_cmsd("/environment", out), 0);
    EXPECT_STREQ(out, "/environment");
    // A definition would go on without the variable.
    unsetenv("QX_OTHER");
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_STREQ(out, "");
}

TEST_F(dataRoot, directory_isComparedExactly) {
    ASSERT_EQ(deflognam("QX_CMS", "/Data"), 0);
    EXPECT_EQ(qxcms_dp_set_cmsd("/data", out), 0);
    EXPECT_STREQ(out, "/Data");
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_STREQ(out, "/data");
}

TEST_F(dataRoot, directoryThatCannotBeKept_isAnsweredWith0) {
    const std::string tooLong(QXCMS_LOGNAM_SIZE, 'd');
    EXPECT_EQ(qxcms_dp_set_cmsd(tooLong.c_str(), out), 0);
    EXPECT_EQ(out, folder.path());
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_EQ(out, folder.path());
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST_F(dataRoot, emptyDirectory_removesTheDefinition) {
    std::strcpy(qxcms_dp_get_main(), "QX_OTHER");
    ASSERT_EQ(deflognam("QX_OTHER", "/other"), 0);
    EXPECT_EQ(qxcms_dp_set_cmsd("", out), 0);
    EXPECT_STREQ(out, "/other");
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_STREQ(out, "");
}

TEST_F(dataRoot, nullDirectoryOrBuffer_changesNothing) {
    EXPECT_EQ(qxcms_dp_set_cmsd(nullptr, out), -1);
    EXPECT_STREQ(out, "before");
    EXPECT_EQ(qxcms_dp_set_cmsd("/elsewhere", nullptr), -1);
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_EQ(out, folder.path());
}

} // namespace
} // namespace qxcms::tests
