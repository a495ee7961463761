// XYZ on a scale of 0 to 1.
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/qc/inspected_chart.h"

namespace qxcms::tests {
namespace {

using qc::ColorSource;
using qc::Finding;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(plausibility, xyzOfZeroToOneAsTheyStand_areWarnedAbout) {
    const Inspected chart(kXyzFields, {{0.8, 0.85, 0.7}, {0.1, 0.1, 0.08}});
    const std::vector<Finding> findings = chart.find(ColorSource::xyz, {{7.68, 0, 0}, {0.9, 0, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::xyzScale));
    EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 1 holds the largest Y of 2, 0.85;"));
}

TEST(plausibility, xyzOfZeroToOneReadTimes100_areNoted) {
    const Inspected chart(kXyzFields, {{0.8, 0.85, 0.7}, {0.1, 0.1, 0.08}});
    const std::vector<Finding> findings = chart.find(ColorSource::xyz, {{93.9, 0, 0}, {37.8, 0, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::xyzScale));
    EXPECT_EQ(findings[0].severity, Finding::Severity::note);
    EXPECT_THAT(findings[0].text, HasSubstr("times 100"));
}

TEST(plausibility, darkXyzOfTwoPercent_areLetPass) {
    const Inspected chart(kXyzFields, {{1.9, 2.0, 1.7}, {0.1, 0.1, 0.08}});
    EXPECT_THAT(chart.find(ColorSource::xyz, {{15.5, 0, 0}, {0.9, 0, 0}}), IsEmpty());
}

} // namespace
} // namespace qxcms::tests
