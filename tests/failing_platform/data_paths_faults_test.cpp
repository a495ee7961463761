// Data paths on a platform that gives no paths.
#include <string>

#include <gmock/gmock.h>

#include "support/qxcms_dp.h"
#include "tests/failing_platform/substitute_platform.h"

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

TEST_F(dataPathFaults, specification_needsNoPath) {
    platform().pathAnswer = -1;
    char out[64] = "";
    EXPECT_EQ(qxcms_dp_gpp(out, sizeof out, "ill", "d65", "ill", "w"), 0);
    EXPECT_STREQ(out, "QX_CMS:[w.ill]d65.ill");
}

} // namespace
} // namespace qxcms::tests
