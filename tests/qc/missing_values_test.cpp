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

TEST(plausibility, spectraOfZerosAmongOthers_areTold) {
    const std::vector<Finding> findings =
        spectralChart({flat(0.5), flat(0), flat(0), flat(0.1)}).findInSpectra();
    ASSERT_THAT(kindsOf(findings), ElementsAre(Finding::Kind::unmeasured));
    EXPECT_THAT(findings[0].text,
                testing::StartsWith("chart.txt: row 2 and 1 more: the spectrum is 0 throughout"));
}

} // namespace
} // namespace qxcms::tests
