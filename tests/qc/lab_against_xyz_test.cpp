// Lab and XYZ of the same rows.
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/qc/inspected_chart.h"

namespace qxcms::tests {
namespace {

using qc::ColorSource;
using qc::Finding;
using qc::Lab;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> labAndXyz() {
    std::vector<std::string> fields = kLabFields;
    fields.insert(fields.end(), kXyzFields.begin(), kXyzFields.end());
    return fields;
}

// On the white 96.42, 100, 82.49 by hand: fy = (50 + 16) / 116, fx = fy + 20 / 500, fz = fy - 30 / 200; X, Y
// and Z are the cubes times the white: 21.7744, 18.4187, 6.0665. The second row is a grey of L* 70.
const std::vector<Values> kLabXyzRows = {{50, 20, 30, 21.7744, 18.4187, 6.0665},
                                         {70, 0, 0, 39.2906, 40.7494, 33.6142}};

TEST(plausibility, labAndXyzHalfAUnitApart_areLetPass) {
    std::vector<Values> rows = kLabXyzRows;
    rows[0][0] = 50.25; // no rounding to whole numbers
    EXPECT_THAT(Inspected(labAndXyz(), rows).findInLab({{50.25, 20, 30}, {70, 0, 0.5}}), IsEmpty());
}

TEST(plausibility, labAndXyzSixTenthsApart_areTold) {
    const Inspected chart(labAndXyz(),
                          {{50.25, 20, 30, 22.0064, 18.6287, 6.1606}, {70, 0, 0, 39.2906, 40.7494, 33.6142}});
    const std::vector<Finding> findings = chart.findInLab({{50.25, 20, 30}, {70, 0, 0.6}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::labAgainstXyz));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 2 alone of 2: Delta E 0.6 between"));
}

TEST(plausibility, xyzComparedBesideOtherLab_isTold) {
    const Inspected chart(labAndXyz(), kLabXyzRows);
    EXPECT_THAT(chart.find(ColorSource::xyz, {{50, 20, 30}, {70, 0, 0}}), IsEmpty());
    EXPECT_THAT(kindsOf(chart.find(ColorSource::xyz, {{50, 20, 30}, {70, 0, 3}})),
                ElementsAre(Finding::Kind::labAgainstXyz));
}

TEST(plausibility, labInWholeNumbers_mayDifferByTheirRounding) {
    const Inspected chart(labAndXyz(), kLabXyzRows);
    EXPECT_THAT(chart.findInLab({{50.4, 20.4, 30.4}, {70, 0, 0}}), IsEmpty());
    EXPECT_THAT(kindsOf(chart.findInLab({{51.5, 20, 30}, {70, 0, 0}})),
                ElementsAre(Finding::Kind::labAgainstXyz));
}

// Y of 0.3 may be 0.34: L* 2.71 or 3.07, and a* and b* move along.
TEST(plausibility, darkXyzOfOneDecimal_mayDifferByTheirRounding) {
    const std::vector<Lab> fromXyz = {{2.71, 0, 0}, {93.9, 0, 0}};
    EXPECT_THAT(Inspected(labAndXyz(), {{2.71, 1.3, 0.9, 0.3, 0.3, 0.2}, {93.9, 0, 0, 81.9, 85, 70.1}})
                    .findInLab(fromXyz),
                IsEmpty());
    EXPECT_THAT(
        kindsOf(Inspected(labAndXyz(), {{2.71, 1.3, 0.9, 0.29, 0.3, 0.25}, {93.9, 0, 0, 81.9, 85, 70.1}})
                    .findInLab(fromXyz)),
        ElementsAre(Finding::Kind::labAgainstXyz));
}

// X 17.627, Y 26.474, Z 25.386 is Lab 58.49 -37 -7.2; of 18, 26 and 25 a* is -33.36.
TEST(plausibility, labAndXyzInWholeNumbers_mayDifferByBothRoundings) {
    const std::vector<Lab> fromXyz = {{58.04, -33.36, -6.67}, {93.9, 0, 0}};
    EXPECT_THAT(
        Inspected(labAndXyz(), {{58, -37, -7, 18, 26, 25}, {94, 0, 0, 82, 85, 70}}).findInLab(fromXyz),
        IsEmpty());
    const std::vector<Finding> findings =
        Inspected(labAndXyz(), {{58, -45, -7, 18, 26, 25}, {94, 0, 0, 82, 85, 70}}).findInLab(fromXyz);
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::labAgainstXyz));
    EXPECT_THAT(findings[0].text, HasSubstr("beyond 0.5 and what rounding makes"));
}

TEST(plausibility, labThatAgreesWithXyzOnceExchanged_isExchanged) {
    const Inspected chart(labAndXyz(),
                          {{50, 30, 20, 21.7744, 18.4187, 6.0665}, {70, 0, 9, 42.2224, 40.7494, 33.6142}});
    const std::vector<Finding> findings = chart.findInLab({{50, 20, 30}, {70, 9, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::exchangedAxes));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 1 and 1 more of 2"));
}

TEST(plausibility, spectraBesideXyzOfOtherConditions_areLetPass) {
    std::vector<std::string> fields = kXyzFields;
    for (const std::string& field : spectralFields(400, 700, 10))
        fields.push_back(field);
    std::vector<Values> rows = {{20, 20, 20}, {10, 10, 10}};
    rows[0].resize(3 + kBands, 0.2);
    rows[1].resize(3 + kBands, 0.1);
    EXPECT_THAT(Inspected(fields, rows)
                    .find(ColorSource::spectra, {{51.8, 0, 0}, {37.8, 0, 0}}, {{51.8, 5, 0}, {37.8, 5, 0}}),
                IsEmpty());
}

} // namespace
} // namespace qxcms::tests
