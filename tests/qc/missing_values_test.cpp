// Charts and rows without measured values.
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/qc/inspected_chart.h"

namespace qxcms::tests {
namespace {

using qc::Finding;
using qc::Lab;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(plausibility, equalSpectra_areTold) {
    const std::vector<Finding> findings = spectralChart({flat(0.5), flat(0.5)}).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::equalSpectra));
    EXPECT_THAT(findings[0].text, HasSubstr("chart.txt: row 1 and all others of 2 hold the same spectrum"));
}

TEST(plausibility, spectraThatAreAllZero_areToldToBeZero) {
    const std::vector<Finding> findings = spectralChart({flat(0), flat(0), flat(0)}).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::equalSpectra));
    EXPECT_THAT(findings[0].text, HasSubstr("0 throughout"));
}

TEST(plausibility, spectraThatDifferInOneBand_areLetPass) {
    EXPECT_THAT(spectralChart({flat(0.5), flat(0.5), flatBut(0.5, 550, 0.501)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, oneSpectrumAlone_isNotCalledEqual) {
    EXPECT_THAT(spectralChart({flat(0.5)}).findInSpectra(), IsEmpty());
}

TEST(plausibility, equalLabOfFourRows_areTold) {
    const std::vector<Finding> findings =
        Inspected(kLabFields, std::vector<Values>(4, {0, 0, 0})).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::equalSpectra));
    EXPECT_THAT(findings[0].text, HasSubstr("hold the same Lab, 0 throughout"));
}

TEST(plausibility, equalLabOfThreeRows_mayBeOneColourMeasuredAgain) {
    EXPECT_THAT(Inspected(kLabFields, std::vector<Values>(3, {50, 0, 0})).findInLab(), IsEmpty());
}

TEST(plausibility, rowsOfZerosButFullInk_areTold) {
    std::vector<Values> rows = kPrint;
    rows[6] = {0, 0, 0, 100, 0, 0, 0};
    EXPECT_THAT(Inspected(kCmykLabFields, rows).findInLab(), IsEmpty());
    rows[5] = {100, 100, 0, 0, 0, 0, 0};
    const std::vector<Finding> findings = Inspected(kCmykLabFields, rows).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::unmeasured));
    EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    EXPECT_THAT(findings[0].text, testing::StartsWith("chart.txt: row 6 and 1 more: Lab is 0 0 0"));
}

// The darkest overprints end at 0 where values below it are cut off.
TEST(plausibility, rowsOfZerosOfMuchInk_areLetPass) {
    std::vector<Values> rows = kPrint;
    rows.push_back({100, 100, 55, 80, 0, 0, 0});
    EXPECT_THAT(Inspected(kCmykLabFields, rows).findInLab(), IsEmpty());
    rows.push_back({100, 100, 5, 60, 0, 0, 0});
    EXPECT_THAT(kindsOf(Inspected(kCmykLabFields, rows).findInLab()), ElementsAre(Finding::Kind::unmeasured));
}

TEST(plausibility, spectraOfZerosAmongOthers_areTold) {
    const std::vector<Finding> findings =
        spectralChart({flat(0.5), flat(0), flat(0), flat(0.1)}).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::unmeasured));
    EXPECT_THAT(findings[0].text,
                testing::StartsWith("chart.txt: row 2 and 1 more: the spectrum is 0 throughout"));
}

TEST(plausibility, markersOfMissingLab_areToldWithTheirRows) {
    const std::vector<Finding> findings =
        Inspected(kLabFields, {{95, 0, -2}, {-1, -1, -1}, {50, 1, 2}, {-1, -1, -1}}).findInLab();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::unmeasured));
    EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    EXPECT_THAT(findings[0].text, testing::StartsWith("chart.txt: row 2 and 1 more of 4, most in row 2: all "
                                                      "values of the Lab are -1, which marks samples"));
}

TEST(plausibility, markersOfMissingXyz_areNotCalledZeros) {
    const std::vector<Finding> findings =
        Inspected(kXyzFields, {{90, 95, 80}, {-999, -999, -999}, {40, 41, 33}})
            .find(qc::ColorSource::xyz, {{98, 0, 0}, {0, 0, 0}, {70, 0, 0}});
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::unmeasured));
    EXPECT_THAT(findings[0].text, HasSubstr("all values of the XYZ are -999"));
}

TEST(plausibility, markersOfMissingSpectra_areTold) {
    EXPECT_THAT(kindsOf(spectralChart({flat(0.5), flat(-1), flat(0.4)}).findInSpectra()),
                ElementsAre(Finding::Kind::negativeReflectance, Finding::Kind::unmeasured));
}

TEST(plausibility, equalPositiveValues_areNoMarkers) {
    EXPECT_THAT(Inspected(kLabFields, {{95, 0, -2}, {20, 20, 20}}).findInLab(), IsEmpty());
}

} // namespace
} // namespace qxcms::tests
