// Charts from bytes and files.
#include "qc/chart_file.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qc/comparison.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using namespace qxcms::qc;
using testing::HasSubstr;

std::string labText(const std::string& rows, const std::string& count) {
    return "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nNUMBER_OF_SETS " +
           count + "\nBEGIN_DATA\n" + rows + "END_DATA\n";
}

TEST(chartFile, bytes_becomeAChart) {
    const Result<ChartFile> file = readChart("x.txt", labText("1 50 0 0\n2 60 0 0\n", "2"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->chart().name, "x.txt");
    EXPECT_EQ(file->chart().rows(), 2);
    EXPECT_TRUE(file->liberties.empty());
}

TEST(chartFile, bytesOutOfForm_areBroughtIntoForm) {
    const Result<ChartFile> file = readChart("x.txt", labText("1 50 0 0\n2 60 0 0\n", "1"));
    ASSERT_TRUE(file);
    EXPECT_EQ(file->chart().rows(), 2);
    ASSERT_EQ(file->liberties.size(), 1U);
    EXPECT_EQ(file->liberties[0].kind, TCgatsLiberty::kSampleCount);
}

TEST(chartFile, wordsWhereNumbersBelong_areKeptForTheirTable) {
    const std::string text = labText("1 N/A 0 x\n2 50 0 y\n", "2");
    const Result<ChartFile> file = readChart("x.txt", text + text);
    ASSERT_TRUE(file);
    const std::vector<DoubtfulValue> doubts = (*file->chart(1)).doubts;
    ASSERT_EQ(doubts.size(), 2U);
    EXPECT_EQ(doubts[0].table, 1);
    EXPECT_EQ(doubts[0].column, 1);
    EXPECT_EQ(doubts[0].text, "N/A");
    EXPECT_EQ(doubts[0].others, 0);
    EXPECT_EQ(doubts[1].others, 1);
}

TEST(chartFile, bytesThatAreNoChart_areRefusedWithTheirPlace) {
    const Result<ChartFile> file = readChart("x.txt", labText("1 50 0 0\n2 60 0\n", "2"));
    ASSERT_FALSE(file);
    EXPECT_EQ(file.refusal().kind(), Refusal::Kind::unreadable);
    EXPECT_THAT(file.refusal().what(), HasSubstr("x.txt:8:1: "));
    EXPECT_THAT(file.refusal().what(), HasSubstr("(code 13)"));
}

TEST(chartFile, bytesWithoutATable_areRefused) {
    const Result<ChartFile> file = readChart("x.txt", "CGATS.17\n");
    ASSERT_FALSE(file);
    EXPECT_THAT(file.refusal().what(), HasSubstr("x.txt: holds no data table"));
}

TEST(chartFile, file_isOpened) {
    const ScratchFolder folder;
    const std::string name = folder.write("x.txt", labText("1 50 0 0\n", "1"));
    const Result<ChartFile> file = openChart(name);
    ASSERT_TRUE(file);
    EXPECT_TRUE(compare(file->chart(), file->chart()));
    const Result<ChartFile> missing = openChart(folder.path() + "/y.txt");
    ASSERT_FALSE(missing);
    EXPECT_THAT(missing.refusal().what(), HasSubstr("y.txt: cannot be read"));
}

TEST(chartFile, emptyFile_holdsNoTable) {
    const ScratchFolder folder;
    const Result<ChartFile> file = openChart(folder.write("x.txt", ""));
    ASSERT_FALSE(file);
    EXPECT_THAT(file.refusal().what(), HasSubstr("holds no data table"));
}

TEST(chartFile, scaleThatWasChanged_isAFindingOfTheComparison) {
    std::string rows;
    for (int i = 0; i < 10; ++i)
        rows += std::to_string(i) + " 0.8 0.8 0.8\n";
    rows += "10 0.01 0.01 0.01\n";
    std::string text = labText(rows, "11");
    for (const auto& [lab, xyz] : {std::pair{"LAB_L", "XYZ_X"}, {"LAB_A", "XYZ_Y"}, {"LAB_B", "XYZ_Z"}})
        text.replace(text.find(lab), 5, xyz);
    const Result<ChartFile> file = readChart("x.txt", text);
    ASSERT_TRUE(file);
    const std::vector<Finding> findings = file->chart().findings;
    ASSERT_EQ(findings.size(), 1U);
    EXPECT_EQ(findings[0].kind, Finding::Kind::xyzScale);
    EXPECT_EQ(findings[0].severity, Finding::Severity::note);
}

} // namespace
} // namespace qxcms::tests
