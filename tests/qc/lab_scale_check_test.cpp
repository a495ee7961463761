// Lab on another scale.
#include <cstddef>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/qc/inspected_chart.h"

namespace qxcms::tests {
namespace {

using qc::Finding;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<Values> withLab(std::vector<Values> rows, double factor, double lightnessFactor, double offset) {
    for (Values& row : rows) {
        const std::size_t last = row.size() - 1;
        row[last - 2] *= lightnessFactor;
        row[last - 1] = row[last - 1] * factor + offset;
        row[last] = row[last] * factor + offset;
    }
    return rows;
}

TEST(plausibility, axesWith128Added_areTold) {
    const std::vector<Finding> findings = Inspected(kCmykLabFields, withLab(kPrint, 1, 1, 128)).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::labScale));
    EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    EXPECT_THAT(findings[0].text, HasSubstr("128 had been added"));
}

// Z of b* 128 needs L* 74 and more: 116 / 200 * 128.
TEST(plausibility, lightRowsWith128Added_areToldWithoutInks) {
    const std::vector<Finding> findings =
        Inspected(kLabFields, {{90, 130, 125}, {88, 120, 135}, {80, 128, 128}}).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::labScale));
    EXPECT_THAT(findings[0].text, testing::StartsWith("chart.txt: row 1 and 1 more of 3, most in row 1"));
}

TEST(plausibility, paperWithBothAxesFarOff_isTold) {
    EXPECT_THAT(
        kindsOf(Inspected(kCmykLabFields, {{0, 0, 0, 0, 80, 75, 70}, {0, 0, 0, 100, 70, 1, 2}}).findInLab()),
        testing::Contains(Finding::Kind::labScale));
}

TEST(plausibility, labDividedBy100_isTold) {
    const std::vector<Finding> findings =
        Inspected(kCmykLabFields, withLab(kPrint, 0.01, 0.01, 0)).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::labScale));
    EXPECT_THAT(findings[0].text, HasSubstr("L* is 0.95 at most in 8 rows"));
}

TEST(plausibility, orangesAndNoisyBlacks_areLetPass) {
    EXPECT_THAT(Inspected(kLabFields, {{72, 70, 85}, {68, 75, 90}, {0.4, 2, 3}, {1, -3, 5}}).findInLab(),
                IsEmpty());
}

// b* of 93 at L* 12 lies beyond 200 / 116 * 12 = 20.7.
TEST(plausibility, oneImpossibleRowOfEight_isLetPass) {
    std::vector<Values> rows = kPrint;
    rows[6] = {0, 0, 0, 100, 12, 0, 93};
    EXPECT_THAT(Inspected(kCmykLabFields, rows).findInLab(), IsEmpty());
    rows.push_back({0, 0, 0, 90, 14, 0, 93});
    EXPECT_THAT(kindsOf(Inspected(kCmykLabFields, rows).findInLab()), ElementsAre(Finding::Kind::labScale));
}

} // namespace
} // namespace qxcms::tests
