// The patch without ink.
#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qc/plausibility.h"
#include "tests/qc/inspected_chart.h"

namespace qxcms::tests {
namespace {

using qc::ColorSource;
using qc::Finding;
using qc::Lab;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(plausibility, paperDarkerThanAPatch_isTold) {
    const Inspected chart(kCmykLabFields, {{0, 0, 0, 0, 80.1, 0, 0},
                                           {0, 0, 10, 0, 95.25, 0, 4},
                                           {10, 0, 0, 0, 81.2, -2, 0},
                                           {0, 0, 0, 100, 16, 0, 0}});
    const std::vector<Finding> findings = chart.findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::paperNotLightest));
    EXPECT_THAT(findings[0].text,
                HasSubstr("chart.txt: row 1, the patch without ink, has L* 80.1, but row 2 has "
                          "L* 95.25 (2 rows are lighter)"));
}

TEST(plausibility, paperAUnitDarkerThanATint_isLetPass) {
    const Inspected chart(kCmykLabFields,
                          {{0, 0, 0, 0, 95, 0, 0}, {0, 0, 1, 0, 96, 0, 1}, {0, 0, 0, 100, 16, 0, 0}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, paperMoreThanAUnitDarkerThanATint_isTold) {
    const Inspected chart(kCmykLabFields,
                          {{0, 0, 0, 0, 95, 0, 0}, {0, 0, 1, 0, 96.1, 0, 1}, {0, 0, 0, 100, 16, 0, 0}});
    EXPECT_THAT(kindsOf(chart.findInLab()), ElementsAre(Finding::Kind::paperNotLightest));
}

TEST(plausibility, lightestOfSeveralPapers_counts) {
    const Inspected chart(kCmykLabFields,
                          {{0, 0, 0, 0, 93, 0, 0}, {0, 0, 0, 0, 95.2, 0, 0}, {0, 0, 2, 0, 95.1, 0, 1}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, chartWithoutPaper_isLetPass) {
    const Inspected chart(kCmykLabFields, {{0, 0, 0, 5, 70, 0, 0}, {0, 0, 10, 0, 95, 0, 4}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

constexpr std::array<double, 3> kWhiteOfD50 = {96.422, 100.0, 82.521};

Kinds kindsOfPaper(ColorSource source, const Lab& paper, const std::array<double, 3>& white = kWhiteOfD50) {
    const Inspected chart(kCmykLabFields,
                          {{0, 0, 0, 0, 95, 0, -2}, {0, 0, 0, 100, 16, 0, 0}, {50, 0, 0, 0, 60, -20, -25}});
    return kindsOf(
        qc::implausibilities(chart.chart(), source, {}, {paper, {16, 0, 0}, {60, -20, -25}}, {}, white));
}

// Paper of L* 95 (Y 87.6) and X, Y, Z proportional to the white of D65, on that of D50: fy 0.9569, X/Xn is
// 0.876 * 95.047 / 96.422, Z/Zn 0.876 * 108.883 / 82.521; a* = 500 * (0.9523 - 0.9569), b* = 200 * (0.9569
// - 1.0495).
TEST(plausibility, paperOfD65ReadForD50_isTold) {
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, -2.3, -18.5}), ElementsAre(Finding::Kind::otherWhite));
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, -2.3, -18.5}, {}), IsEmpty());
}

TEST(plausibility, brightenedAndCreamPapers_areLetPass) {
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, 3, -13}), IsEmpty());
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, 3, -15.5}), IsEmpty());
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {90, 2, 20}), IsEmpty());
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {65, 7, 20}), IsEmpty());
}

// The same paper with X and Z exchanged: X/Xn is 0.876 * 82.521 / 96.422, Z/Zn 0.876 * 96.422 / 82.521.
TEST(plausibility, paperWithXAndZExchanged_isTold) {
    EXPECT_THAT(kindsOfPaper(ColorSource::lab, {95, -24.2, -10.2}), IsEmpty());
    std::vector<std::string> fields = {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K", "XYZ_X", "XYZ_Y", "XYZ_Z"};
    const Inspected exchangedChart(fields, {{0, 0, 0, 0, 72.3, 87.6, 84.5}, {0, 0, 0, 100, 2, 2, 2}});
    const std::vector<Finding> findings = qc::implausibilities(
        exchangedChart.chart(), ColorSource::xyz, {}, {{95, -24.2, -10.2}, {15, 0, 0}}, {}, kWhiteOfD50);
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::otherWhite));
    EXPECT_THAT(findings[0].text, HasSubstr("X and Z are exchanged"));
}

TEST(plausibility, paperThatReflectsVioletBetterThanRed_isTold) {
    std::vector<std::string> fields = spectralFields(380, 730, 10);
    Values paper = {0, 0, 0, 0};
    for (int band = 0; band < 36; ++band)
        paper.push_back(band < 4 ? 0.45 + 0.1 * band : 0.88);
    Values black(40, 0.02);
    std::fill(black.begin(), black.begin() + 3, 0.0);
    black[3] = 100;
    fields.insert(fields.begin(), {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"});
    const std::vector<Lab> lab = {{95, 0, 1}, {15, 0, 0}};
    EXPECT_THAT(Inspected(fields, {paper, black}).find(ColorSource::spectra, lab), IsEmpty());
    std::reverse(paper.begin() + 4, paper.end());
    EXPECT_THAT(kindsOf(Inspected(fields, {paper, black}).find(ColorSource::spectra, lab)),
                ElementsAre(Finding::Kind::bandOrder));
}

// Percent that was divided by 100 twice.
TEST(plausibility, paperThatReflectsHardlyAnything_isTold) {
    std::vector<std::string> fields = spectralFields(kFirstNm, 700, 10);
    fields.insert(fields.begin(), {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"});
    const auto rows = [](double paper) {
        std::vector<Values> all = {{0, 0, 0, 0}, {0, 0, 0, 100}};
        for (std::size_t band = 0; band < kBands; ++band) {
            all[0].push_back(paper);
            all[1].push_back(paper / 20);
        }
        return all;
    };
    const std::vector<Lab> lab = {{8, 0, 0}, {1, 0, 0}};
    const std::vector<Finding> findings = Inspected(fields, rows(0.0085)).find(ColorSource::spectra, lab);
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::spectralScale));
    EXPECT_THAT(findings[0].text,
                testing::StartsWith("chart.txt: row 1, the patch without ink, reflects 0.0085 "
                                    "at most, but no paper is as dark"));
    EXPECT_THAT(Inspected(fields, rows(0.04)).find(ColorSource::spectra, lab), IsEmpty());
}

} // namespace
} // namespace qxcms::tests
