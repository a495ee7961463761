// Documents when the memory fails.
#include <memory>

#include <gmock/gmock.h>

#include "cgats/tcgats.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

const char* const kDocument = "CGATS.17\n"
                              "ORIGINATOR \"somebody\" # by hand\n"
                              "KEYWORD \"MyField\"\n"
                              "BEGIN_NOTES\nfree text\nEND_NOTES\n"
                              "NUMBER_OF_FIELDS 9\n"
                              "BEGIN_DATA_FORMAT\n"
                              "SampleID SAMPLE_NAME MyField CMYK_C CMYK_M CMYK_Y CMYK_K nm400 nm700\n"
                              "END_DATA_FORMAT\n"
                              "NUMBER_OF_SETS 2\n"
                              "BEGIN_DATA\n"
                              "1 \"first patch\" a 100 0 0 0 0.1 0.2\n"
                              "2 \"second patch\" b 0 100 0 0 0.3 0.4\n"
                              "END_DATA\n"
                              "NUMBER_OF_FIELDS 4\n"
                              "BEGIN_DATA_FORMAT\n"
                              "SampleID LAB_L LAB_A LAB_B\n"
                              "END_DATA_FORMAT\n"
                              "NUMBER_OF_SETS 1\n"
                              "BEGIN_DATA\n"
                              "1 50 10 -10\n"
                              "END_DATA\n";

using cgatsFaults = OnSubstitutePlatform;

void expectSameDocument(const TCgats& document, const TCgats& whole) {
    ASSERT_EQ(document.GetNrTags(), whole.GetNrTags());
    for (int i = 0; i < whole.GetNrTags(); ++i) {
        EXPECT_STREQ(document.GetTagAt(i)->GetKeyword(), whole.GetTagAt(i)->GetKeyword());
        EXPECT_STREQ(document.GetTagAt(i)->GetValue(), whole.GetTagAt(i)->GetValue());
        EXPECT_STREQ(document.GetTagAt(i)->GetComment(), whole.GetTagAt(i)->GetComment());
    }
    ASSERT_EQ(document.GetNrCommentBlocks(), 1);
    EXPECT_STREQ(document.GetCommentBlock(0), whole.GetCommentBlock(0));
    ASSERT_EQ(document.GetNrCustomFields(), whole.GetNrCustomFields());
    for (int i = 0; i < whole.GetNrCustomFields(); ++i)
        EXPECT_STREQ(document.GetCustomField(i), whole.GetCustomField(i));
    ASSERT_EQ(document.GetNrTables(), whole.GetNrTables());
    for (int table = 0; table < whole.GetNrTables(); ++table) {
        ASSERT_EQ(document.GetNrSamples(table), whole.GetNrSamples(table));
        ASSERT_EQ(document.GetNrFields(table), whole.GetNrFields(table));
        for (int sample = 0; sample < whole.GetNrSamples(table); ++sample) {
            for (int field = 0; field < whole.GetNrFields(table); ++field) {
                char text[320] = "", expected[320] = "";
                EXPECT_EQ(document.GetField(table, sample, field, text), 0);
                EXPECT_EQ(whole.GetField(table, sample, field, expected), 0);
                EXPECT_STREQ(text, expected);
            }
        }
    }
}

// Without memory a document records an error, or it did without and holds everything.
TEST_F(cgatsFaults, readingWithoutMemory_recordsAnErrorOrHoldsEverything) {
    const TCgats whole(kDocument, 0);
    ASSERT_EQ(whole.GetErrorCode(), 0);
    ASSERT_EQ(whole.GetNrTables(), 2);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TCgats document(kDocument, 0);
        faults.disarm();
        if (document.GetErrorCode() != 0) {
            EXPECT_TRUE(faults.happened());
        } else {
            expectSameDocument(document, whole);
        }
    });
}

TEST_F(cgatsFaults, editingWithoutMemory_failsAndLeavesADocumentThatCanBeUsed) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgats document(kDocument, 0);
        faults.arm();
        const int originator = document.SetOriginator("somebody else");
        const int created = document.SetCreated("today");
        const int inserted = document.InsertTag(-1, "NEW", 1, "2", "three", 0, false);
        const int field = document.AddCustomField("Other");
        faults.disarm();
        EXPECT_EQ((originator != 0) + (created != 0) + (inserted != 0) + (field != 0) > 0, faults.happened());
        EXPECT_EQ(document.SetOriginator("somebody else"), 0);
        EXPECT_STREQ(document.GetOriginator(), "somebody else");
    });
}

// A measurement that lacks a part says so in its status.
TEST_F(cgatsFaults, measurementWithoutMemory_isWholeOrBadOrNull) {
    const TCgats document(kDocument, 0);
    const TSpectrum light = spectrumOf(kD65);
    TIlluminant lamp(&light, "lamp");
    TObserver observer(0);
    const TMeasGeom geometry(3);
    for (const int table : {0, 1}) {
        const std::unique_ptr<TOneMeasurement> whole(
            document.GetMeasurement(table, 0, &lamp, &observer, &geometry));
        double expected[3];
        ASSERT_NE(whole, nullptr);
        ASSERT_EQ(whole->GetXYZ(&lamp, &observer, expected), 0);
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            const std::unique_ptr<TOneMeasurement> measurement(
                document.GetMeasurement(table, 0, &lamp, &observer, &geometry));
            faults.disarm();
            if (measurement == nullptr || measurement->GetStatus() != 0) {
                EXPECT_TRUE(faults.happened());
                return;
            }
            double xyz[3] = {7, 7, 7};
            EXPECT_EQ(measurement->GetXYZ(&lamp, &observer, xyz), 0);
            EXPECT_THAT(xyz, testing::ElementsAreArray(expected));
            int count = -7, expectedCount = -7;
            whole->GetCoord(&expectedCount);
            measurement->GetCoord(&count);
            EXPECT_EQ(count, expectedCount);
            ASSERT_NE(measurement->GetGeometry(), nullptr);
            EXPECT_EQ(measurement->GetGeometry()->GetNumber(), 3u);
        });
    }
}

} // namespace
} // namespace qxcms::tests
