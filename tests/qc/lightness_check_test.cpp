// Samples lighter than any that reflects, and how rows and files are told.
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qc/plausibility.h"
#include "tests/qc/inspected_chart.h"

namespace qxcms::tests {
namespace {

using qc::ColorSource;
using qc::Finding;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(plausibility, lightnessAbove105_isToldWithRowsAndValue) {
    const Inspected chart(kLabFields, {{95, 0, -2}, {105.1, 0, 0}, {112.5, 1, 1}, {50, 0, 0}});
    const std::vector<Finding> findings = chart.findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::tooLight));
    EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    EXPECT_THAT(findings[0].text,
                testing::StartsWith("chart.txt: row 2 and 1 more of 4, most in row 3: L* 112.5"));
}

TEST(plausibility, lightnessOf105_isLetPass) {
    const Inspected chart(kLabFields, {{95, 0, -2}, {105, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

// L* 107.30 is Y 120 by the formula of CIE 15: 100 * ((107.30 + 16) / 116)^3 = 120.09; L* 107.2 is 119.80.
TEST(plausibility, luminanceOfXyzAbove120_isTold) {
    const Inspected chart(kXyzFields, {{115, 120.09, 99}, {10, 10, 8}});
    const std::vector<Finding> findings = chart.find(ColorSource::xyz, {{107.30, 0, 0}, {37.8, 0, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::tooLight));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 1 alone of 2: Y 120.09"));
}

TEST(plausibility, luminanceOfXyzBelow120_isLetPass) {
    const Inspected chart(kXyzFields, {{115, 119.80, 99}, {10, 10, 8}});
    EXPECT_THAT(chart.find(ColorSource::xyz, {{107.2, 0, 0}, {37.8, 0, 0}}), IsEmpty());
}

TEST(plausibility, countsOfFourDigits_haveCommas) {
    const std::vector<Values> rows(1546, {110, 0, 0});
    std::vector<Values> different = rows;
    different.back() = {50, 0, 0};
    const std::vector<Finding> findings = Inspected(kLabFields, different).findInLab();
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].text, HasSubstr("row 1 and 1,544 more of 1,546"));
}

TEST(plausibility, nameOfFile_isMadePrintable) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer(documentText(kLabFields, {{120, 0, 0}, {50, 0, 0}}).c_str()), 0);
    const std::vector<Finding> findings = qc::implausibilities(
        {"a\x1b[2J.txt", &document, 0}, ColorSource::lab, {}, {{120, 0, 0}, {50, 0, 0}}, {});
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_THAT(findings[0].text, testing::StartsWith("a\\x1b[2J.txt: row 1"));
}

TEST(plausibility, lightnessBelow0_isTold) {
    const std::vector<Finding> findings = Inspected(kLabFields, {{95, 0, -2}, {-16, 3, 1}}).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::negativeReflectance));
    EXPECT_THAT(findings[0].text, testing::StartsWith("chart.txt: row 2 alone of 2: L* -16, but none lies"));
}

TEST(plausibility, noiseOfBlackBelow0_isLetPass) {
    EXPECT_THAT(Inspected(kLabFields, {{95, 0, -2}, {-0.9, 0.2, 0.1}}).findInLab(), IsEmpty());
}

} // namespace
} // namespace qxcms::tests
