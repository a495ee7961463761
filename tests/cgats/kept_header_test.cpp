// A header that a caller keeps while it becomes that of a table, and what stands at the edges of the reader
// and queries.
#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

// A document of one table, L* a* b* of two samples, and its header as it was handed out before.
struct KeptHeader {
    KeptHeader() {
        const std::string format = "LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n", samples = "1 2 3\n4 5 6\n";
        const char* position = format.c_str();
        EXPECT_EQ(document.ReadTmpHeader(&position), 0);
        header = document.GetTmpHeader();
        document.SetNrSamples(2);
        position = samples.c_str();
        EXPECT_EQ(document.ReadTable(&position), 0);
        EXPECT_EQ(document.GetTable(0)->GetHeader(), header);
    }

    TCgats document;
    TCgatsTableHeader* header = nullptr;
};

TEST(keptHeader, columnAddedBehindTheTablesBack_leavesItUnfit) {
    KeptHeader kept;
    double lab[3];
    EXPECT_EQ(kept.document.GetLab(0, 1, lab), 0);
    ASSERT_EQ(kept.header->Append(new TCgatsField(2, "nm400", 400, TCgatsField::kSpectral, 0)), 0);
    ASSERT_EQ(kept.header->Classify(), 0);
    double spectrum[1];
    char text[400];
    EXPECT_EQ(kept.document.GetSpectrum(0, 0, spectrum), -1);
    EXPECT_EQ(kept.document.GetField(0, 0, 3, text), -1);
    std::ostringstream stream;
    EXPECT_EQ(kept.document.WriteTable(0, stream), 12);
    const double row[] = {1, 2, 3};
    const double* const rows[] = {row, row};
    EXPECT_EQ(kept.document.AddLab(0, rows), 1);
    EXPECT_EQ(TCgats(&kept.document).GetTable(0)->GetTableError(), 3);
}

TEST(keptHeader, moreSamplesDeclaredThanStored_areNotThere) {
    KeptHeader kept;
    kept.header->SetNrSamples(9);
    double lab[3];
    EXPECT_EQ(kept.document.GetNrSamples(0), 9);
    EXPECT_EQ(kept.document.GetLab(0, 1, lab), 0);
    EXPECT_EQ(kept.document.GetLab(0, 2, lab), -1);
    std::ostringstream stream;
    EXPECT_EQ(kept.document.WriteTable(0, stream), 13);
    const double row[] = {1, 2, 3};
    const double* const rows[] = {row, row, row, row, row, row, row, row, row};
    EXPECT_EQ(kept.document.AddLab(0, rows), 1);
}

TEST(documentKeywords, documentInError_isStillAsked) {
    TCgats document("ORIGINATOR \"me\"\n", 0);
    document.SetErrorCode(6);
    EXPECT_STREQ(document.GetOriginator(), "me");
    EXPECT_EQ(document.SetOriginator("you"), 0);
    EXPECT_STREQ(document.GetOriginator(), "you");
    EXPECT_EQ(document.GetErrorCode(), 6);
}

TEST(dataFormat, quotesAroundAFieldAndARemarkBehindIt_areBothLeftOut) {
    for (const char* const name : {"\"LAB_L\"#x", "LAB_L\"#x", "\"LAB_L#x", "\"#x\nLAB_L"}) {
        const Reading reading(tableText(name, 1, "5"));
        EXPECT_EQ(reading.code, 0) << name;
        EXPECT_EQ(namesOf(*reading.document.GetTable(0)->GetHeader()), std::vector<std::string>{"LAB_L"})
            << name;
    }
}

TEST(samples, refused_leaveTheHeaderForAnotherTry) {
    TCgats document;
    EXPECT_EQ(document.ReadFromBuffer((formatText("LAB_L") + "NUMBER_OF_SETS 2\nBEGIN_DATA\n1\n").c_str()),
              1);
    ASSERT_NE(document.GetTmpHeader(), nullptr);
    EXPECT_EQ(document.ReadFromBuffer("BEGIN_DATA\n1\n2\nEND_DATA\n"), 0);
    EXPECT_EQ(document.GetNrSamples(0), 2);
}

TEST(colorantDescriptions, lineBeyondThe128th_countsAndIsNotSeen) {
    const Reading reading(repeated("X 1\n", 128) + "SPOT_ID \"Gold\"\n" + tableText("SPOT_1", 1, "5"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrSpotIdTags(), 1);
    EXPECT_FALSE(reading.document.ContainsSpotDescriptions(0));
    const char* description = nullptr;
    EXPECT_EQ(reading.document.GetSpotColorDescriptions(0, &description), -1);
}

TEST(readFromFile, keywordTooLong_isAnsweredAndRecorded) {
    const ScratchFolder folder;
    const std::string path = folder.write("a.txt", std::string(257, 'K') + "\n");
    EXPECT_EQ(TCgats().ReadFromFile(path.c_str()), -1);
    const TCgats document(path.c_str());
    EXPECT_EQ(document.GetErrorCode(), -1);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

TEST(keptHeader, samplesDeclaredAndNotStored_cannotBeChosen) {
    KeptHeader kept;
    kept.header->SetNrSamples(9);
    int stored[] = {1};
    EXPECT_EQ(TCgats(&kept.document, stored, 1).GetTable(0)->GetTableError(), 0);
    int missing[] = {2};
    EXPECT_EQ(TCgats(&kept.document, missing, 1).GetTable(0)->GetTableError(), 10);
    const TCgats whole(&kept.document); // as incomplete as its source
    EXPECT_EQ(whole.GetTable(0)->GetTableError(), 0);
    EXPECT_EQ(whole.GetNrSamples(0), 9);
    EXPECT_EQ(whole.GetTable(0)->GetNrRowsStored(), 2);
}

TEST(keptHeader, headerHandedOver_leavesTheTableUnfit) {
    KeptHeader kept;
    const std::unique_ptr<TCgatsTableHeader> owned(kept.document.GetTable(0)->ReleaseHeader());
    const double row[] = {1, 2, 3};
    const double* const rows[] = {row, row};
    EXPECT_EQ(kept.document.AddLab(0, rows), 1);
    EXPECT_EQ(kept.document.AddInkBookNames(0, {"a", "b"}), 1);
    const TCgats copy(&kept.document);
    EXPECT_EQ(copy.GetErrorCode(), 0);
    EXPECT_EQ(copy.GetTable(0)->GetTableError(), 3);
}

TEST(keptHeader, widening_refusesWhatDoesNotFit) {
    KeptHeader kept;
    TCgatsTable& table = *kept.document.GetTable(0);
    const auto widened = [&](int more, bool classified, bool list) {
        auto wider = table.GetHeader()->Copy();
        for (int i = 0; i < more; ++i)
            wider->Append(new TCgatsField(TCgatsField::kFloat, "D_VIS", 0, TCgatsField::kStandard, 0));
        if (classified) {
            EXPECT_EQ(wider->Classify(), 0);
        }
        std::vector<std::unique_ptr<TCgatsValueList>> added;
        added.push_back(list ? std::make_unique<TCgatsValueListDouble>(2) : nullptr);
        return table.Widen(std::move(wider), std::move(added));
    };
    EXPECT_EQ(table.Widen(nullptr, {}), 10);
    EXPECT_EQ(widened(0, true, true), 10);
    EXPECT_EQ(widened(2, true, true), 10);
    EXPECT_EQ(widened(1, false, true), 10);
    EXPECT_EQ(widened(1, true, false), 10);
    EXPECT_EQ(table.GetHeader(), kept.header);
    EXPECT_TRUE(table.HasValuesOfAllColumns());
    EXPECT_EQ(widened(1, true, true), 0);
    EXPECT_EQ(table.GetHeader()->GetNrFields(), 4);
}

TEST(keptHeader, fewerSamplesDeclaredThanStored_areCopiedAsDeclared) {
    KeptHeader kept;
    kept.header->SetNrSamples(1);
    const TCgats copy(&kept.document);
    EXPECT_EQ(copy.GetErrorCode(), 0);
    ASSERT_EQ(copy.GetNrTables(), 1);
    EXPECT_EQ(copy.GetNrSamples(0), 1);
}

TEST(keptHeader, noSamplesDeclared_leaveCielabAsItIs) {
    KeptHeader kept;
    const double row[] = {7, 8, 9};
    const double* const rows[] = {row, row};
    for (const int samples : {0, -1}) {
        kept.header->SetNrSamples(samples);
        EXPECT_EQ(kept.document.AddLab(0, rows), 0);
    }
    kept.header->SetNrSamples(2);
    double lab[3];
    EXPECT_EQ(kept.document.GetLab(0, 1, lab), 0);
    EXPECT_EQ(lab[0], 4.0);
}

} // namespace
} // namespace qxcms::tests
