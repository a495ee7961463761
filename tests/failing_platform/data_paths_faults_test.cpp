// Data paths on a platform that gives no paths.
#include <string>

#include <gmock/gmock.h>

#include "support/qxcms_dp.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using dataPathFaults = OnSubstitutePlatform;

TEST_F(dataPathFaults, everyAnswerButZero_isAPathThatCouldNotBeMade) {
    for (const int answer : {-7, -1, 1, 10}) {
        platform().pathAnswer = answer;
        char out[64] = "", name[64] = "";
        EXPECT_EQ(qxcms_dp_gp(out, sizeof out, "ill", "d65", "ill", "w"), -1);
        EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65", "ill"), -1);
        EXPECT_EQ(qxcms_dp_sfd(out, sizeof out, "ill", "d65", "ill", "r"), -1);
        EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65", "ill"), -1);
        EXPECT_EQ(qxcms_dp_gp_path(out, name, sizeof out, "ill", "d65", "ill", "w"), -1);
        EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), -1);
    }
    EXPECT_THAT(platform().errors, IsEmpty());
}

TEST_F(dataPathFaults, emptyPath_isNoFile) {
    platform().emptiesPaths = true;
    char out[64] = "before";
    EXPECT_EQ(qxcms_dp_sf(out, sizeof out, "ill", "d65", "ill"), -10);
    EXPECT_STREQ(out, "");
    EXPECT_EQ(qxcms_dp_spf(out, sizeof out, "ill", "d65", "ill"), -10);
    EXPECT_THAT(platform().errors, ElementsAre("qxcms_dp:87: qxcms_dp_sf : file d65.ill not found",
                                               "qxcms_dp:186: qxcms_dp_sf : file d65.ill not found"));
}

TEST_F(dataPathFaults, fileOfUnknownSize_isNotTakenForAnEmptyOne) {
    const ScratchFolder folder;
    folder.write("d65.ill", "");
    platform().paths["QX_CMS:[w.ill]"] = folder.path() + '/';
    platform().paths["QX_CMS:[r.ill]"] = folder.path() + '/';
    char out[QXCMS_LOGNAM_SIZE], name[QXCMS_LOGNAM_SIZE];
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), -10);
    platform().hidesSizes = true;
    EXPECT_EQ(qxcms_dp_sf_path(out, name, sizeof out, "ill", "d65", "ill"), 0);
}

// What counts is the translation, whatever the answer is that comes with it.
TEST_F(dataPathFaults, nameWithATranslation_isTakenWhateverTheAnswer) {
    char out[QXCMS_LOGNAM_SIZE] = "before";
    platform().translationAnswer = 0;
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", out, sizeof out), -1);
    EXPECT_STREQ(out, "before");
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_STREQ(out, "");
    EXPECT_THAT(platform().errors, ElementsAre("qxcms_dp:380: New logical name points to nowhere !"));

    platform().translationAnswer = -1;
    platform().translation = "/somewhere";
    EXPECT_EQ(qxcms_dp_get_main_dirn(out), 0);
    EXPECT_STREQ(out, "/somewhere");
    EXPECT_EQ(qxcms_dp_set_cmsd("/somewhere", out), 0);
    EXPECT_THAT(platform().definitions, IsEmpty());
    EXPECT_EQ(qxcms_dp_set_cmsd("/elsewhere", out), 0);
    EXPECT_STREQ(out, "/somewhere");
    EXPECT_THAT(platform().definitions, ElementsAre("QX_CMS=/elsewhere"));
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_OTHER", out, sizeof out), 0);
    EXPECT_STREQ(out, "QX_CMS");
    EXPECT_EQ(qxcms_dp_set_qxcms_main_dir_lognam("QX_CMS", out, sizeof out), 0);
    EXPECT_EQ(platform().errors.size(), 1u);
}

TEST_F(dataPathFaults, logicalPath_needsNoPath) {
    platform().pathAnswer = -1;
    char out[64] = "";
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65", "ill", "w"), 0);
    EXPECT_STREQ(out, "QX_CMS:[w.ill]d65.ill");
}

} // namespace
} // namespace qxcms::tests
