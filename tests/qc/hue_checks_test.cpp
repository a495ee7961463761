// The hues of pure colours.
#include <string>
#include <utility>
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

std::vector<Values> exchanged(std::vector<Values> rows) {
    for (Values& row : rows)
        std::swap(row[row.size() - 2], row[row.size() - 1]);
    return rows;
}

TEST(plausibility, printOfKnownHues_isLetPass) {
    EXPECT_THAT(Inspected(kCmykLabFields, kPrint).findInLab(), IsEmpty());
}

TEST(plausibility, exchangedAxesOfAPrint_areTold) {
    const std::vector<Finding> findings = Inspected(kCmykLabFields, exchanged(kPrint)).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::exchangedAxes));
    EXPECT_THAT(findings[0].text,
                HasSubstr("chart.txt: row 2, a magenta patch by its device values, has a* -3 and "
                          "b* 74; this and 3 more pure patches (magenta, yellow, green, blue)"));
}

TEST(plausibility, exchangedAxesOfRgbPrints_areTold) {
    const std::vector<Values> rows = {
        {255, 255, 0, 88, -6, 90}, {255, 0, 255, 50, 72, -20}, {255, 255, 255, 95, 0, 0}};
    EXPECT_THAT(Inspected(kRgbLabFields, rows).findInLab(), IsEmpty());
    EXPECT_THAT(kindsOf(Inspected(kRgbLabFields, exchanged(rows)).findInLab()),
                ElementsAre(Finding::Kind::exchangedAxes));
}

TEST(plausibility, exchangedAxesOfNearlyFullColours_areTold) {
    const Inspected chart(kCmykLabFields, {{0, 0, 92, 4, 85, 88, -5}, {0, 92, 0, 8, 48, -3, 70}});
    EXPECT_THAT(kindsOf(chart.findInLab()), ElementsAre(Finding::Kind::exchangedAxes));
}

TEST(plausibility, exchangedAxesOfSixColours_areTold) {
    std::vector<std::string> fields;
    for (int channel = 1; channel <= 6; ++channel)
        fields.push_back("6CLR_" + std::to_string(channel));
    fields.insert(fields.end(), kLabFields.begin(), kLabFields.end());
    const std::vector<Values> rows = {{0, 0, 100, 0, 0, 0, 89, -5, 93},
                                      {0, 100, 0, 0, 0, 0, 48, 74, -3},
                                      {0, 0, 0, 0, 0, 0, 95, 0, -2},
                                      {0, 0, 100, 0, 100, 0, 65, 93, -5}};
    EXPECT_THAT(Inspected(fields, rows).findInLab(), IsEmpty());
    EXPECT_THAT(kindsOf(Inspected(fields, exchanged(rows)).findInLab()),
                ElementsAre(Finding::Kind::exchangedAxes));
}

TEST(plausibility, oneColourAlone_doesNotShowAnExchange) {
    const Inspected chart(kCmykLabFields, {{0, 0, 100, 0, 89, 93, -5}, {0, 0, 98, 0, 89, 92, -5}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, onePatchOfItsOwnHue_speaksAgainstAnExchange) {
    std::vector<Values> rows = exchanged(kPrint);
    rows.push_back({0, 0, 100, 0, 88, -5, 91});
    EXPECT_THAT(Inspected(kCmykLabFields, rows).findInLab(), IsEmpty());
}

TEST(plausibility, palePatches_showNoExchange) {
    const Inspected chart(kCmykLabFields, {{0, 0, 100, 0, 89, 19, -1}, {0, 100, 0, 0, 48, -1, 19}});
    EXPECT_THAT(chart.findInLab(), IsEmpty());
}

TEST(plausibility, huesOfSpectra_areNotTakenForExchanged) {
    std::vector<std::string> fields = {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"};
    for (const std::string& field : spectralFields(400, 700, 10))
        fields.push_back(field);
    std::vector<Values> rows = {{0, 0, 100, 0}, {0, 100, 0, 0}};
    for (Values& row : rows)
        row.resize(4 + kBands, 0.4 + row[1] / 1000);
    EXPECT_THAT(kindsOf(Inspected(fields, rows).find(ColorSource::spectra, {{89, 93, -5}, {48, -3, 74}})),
                ElementsAre(Finding::Kind::otherHues));
}

TEST(plausibility, coloursOfOtherColumns_areTold) {
    std::vector<Values> rows = kPrint;
    for (Values& row : rows)
        std::swap(row[0], row[2]);
    const std::vector<Finding> findings = Inspected(kCmykLabFields, rows).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::otherHues));
    EXPECT_THAT(findings[0].text, HasSubstr("row 1, a yellow patch by its device values, has a* -37"));
}

TEST(plausibility, oneColourOfAnotherHue_isLetPass) {
    std::vector<Values> rows = kPrint;
    rows[0][5] = 40;
    EXPECT_THAT(Inspected(kCmykLabFields, rows).findInLab(), IsEmpty());
}

} // namespace
} // namespace qxcms::tests
