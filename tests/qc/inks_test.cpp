// Which device values are understood, on which scale.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qc/plausibility.h"
#include "tests/qc/inspected_chart.h"

namespace qxcms::tests {
namespace {

using qc::Chart;
using qc::ColorSource;
using qc::Finding;
using qc::Lab;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(plausibility, paperOfRgbIsFullLight_onEveryScale) {
    for (const double full : {1.0, 1.005, 100.0, 100.5, 255.0, 255.5, 1023.0, 65535.0}) {
        const Inspected chart(kRgbLabFields,
                              {{full, full, full, 40, 0, 0}, {0, 0, 0, 95, 0, 0}, {full, 0, 0, 45, 60, 40}});
        const std::vector<Finding> findings = chart.findInLab();
        ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::paperNotLightest)) << full;
        EXPECT_THAT(findings[0].text, HasSubstr("row 1, the patch of full red, green and blue, has L* 40"));
    }
}

TEST(plausibility, deviceValuesOfAnUnknownScale_areLeftAside) {
    const Inspected chart(kRgbLabFields, {{4095, 4095, 4095, 40, 0, 0}, {0, 0, 0, 95, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, deviceValuesThatAreAllZero_areLeftAside) {
    const Inspected chart(kCmykLabFields, {{0, 0, 0, 0, 40, 0, 0}, {0, 0, 0, 0, 95, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, wordsAmongDeviceValues_leaveThemAside) {
    TCgats document;
    const std::vector<Values> rows = {{0, 0, 0, 0, 40, 0, 0}, {0, 0, 10, 0, 95, 0, 0}};
    ASSERT_EQ(document.ReadFromBuffer(documentText(kCmykLabFields, rows).c_str()), 0);
    Chart chart{"chart.txt", &document, 0};
    const std::vector<Lab> lab = {{40, 0, 0}, {95, 0, 0}};
    EXPECT_EQ(qc::implausibilities(chart, ColorSource::lab, {}, lab, {}).size(), 1U);
    chart.doubts.push_back({0, 0, 1, "N/A"});
    EXPECT_THAT(qc::implausibilities(chart, ColorSource::lab, {}, lab, {}), IsEmpty());
}

TEST(plausibility, whiteSpotInkOnDarkMaterial_isLetPass) {
    std::vector<std::string> fields = kCmykLabFields;
    fields.insert(fields.begin() + 4, "SPOT_1");
    const Inspected chart(
        fields, {{0, 0, 0, 0, 0, 60, 5, 15}, {0, 0, 0, 0, 100, 93, 0, 0}, {0, 0, 0, 100, 0, 12, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

} // namespace
} // namespace qxcms::tests
