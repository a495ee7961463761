// Files that hold no measurements of a chart.
#include "qc/chart_kind.h"

#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "qc/refusal.h"

namespace qxcms::tests {
namespace {

using namespace qxcms::qc;

// A table behind a first line.
class chartKind : public testing::Test {
protected:
    Chart chartOf(const std::string& firstLine) {
        const std::string text = firstLine + "\nBEGIN_DATA_FORMAT\nLAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n"
                                             "NUMBER_OF_SETS 1\nBEGIN_DATA\n50 0 0\nEND_DATA\n";
        document = std::make_unique<TCgats>();
        EXPECT_EQ(document->ReadFromBuffer(text.c_str()), 0);
        return {"x.txt", document.get(), 0};
    }

    std::unique_ptr<TCgats> document;
};

TEST_F(chartKind, gamutMatrixAndCurves_areRefused) {
    for (const std::string mark : {"GAMUT", "CCMX", "CAL"}) {
        try {
            requireChart(chartOf(mark));
            ADD_FAILURE() << mark;
        } catch (const Refusal& refusal) {
            EXPECT_EQ(refusal.kind(), Refusal::Kind::notComparable);
            EXPECT_THAT(refusal.what(), testing::HasSubstr(mark));
        }
    }
}

TEST_F(chartKind, targets_areWarnedAbout) {
    for (const std::string mark : {"CTI1", "CTI2"}) {
        const Chart chart = chartOf(mark);
        EXPECT_NO_THROW(requireChart(chart));
        const std::vector<Finding> findings = findingsOnKind(chart);
        ASSERT_EQ(findings.size(), 1U);
        EXPECT_EQ(findings[0].kind, Finding::Kind::expectedValues);
        EXPECT_EQ(findings[0].severity, Finding::Severity::warning);
    }
}

TEST_F(chartKind, charts_pass) {
    for (const std::string mark : {"CGATS.17", "CTI3", "IT8.7/2", "SPECT"}) {
        const Chart chart = chartOf(mark);
        EXPECT_NO_THROW(requireChart(chart));
        EXPECT_THAT(findingsOnKind(chart), testing::IsEmpty());
    }
}

} // namespace
} // namespace qxcms::tests
