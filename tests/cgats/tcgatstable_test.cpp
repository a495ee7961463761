// One data table: the checks of its construction in their order, its value lists and its rows.
#include "cgats/tcgatstable.h"

#include <climits>
#include <memory>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

constexpr int kUnsupportedType = 3;

TCgatsField* column(int dataType, const char* name = "LAB_DE") {
    return new TCgatsField(dataType, name, 0, TCgatsField::kStandard, 28);
}

// A spot colour whose number no slot has.
TCgatsField* strayingSpot() {
    return new TCgatsField(2, "SPOT_9", 8, TCgatsField::kSpotColor, 0);
}

// A header of one column per data type.
TCgatsTableHeader* typedHeader(int samples) {
    auto* header = new TCgatsTableHeader;
    header->Append(column(TCgatsField::kString));
    header->Append(column(TCgatsField::kInteger));
    header->Append(column(TCgatsField::kFloat));
    header->SetNrSamples(samples);
    return header;
}

// ---- The checks of the construction; each test also breaks what later checks look at.

TEST(cgatsTableBuild, firstCheck_noHeader) {
    const TCgatsTable table(nullptr);
    EXPECT_EQ(table.GetTableError(), 1);
    EXPECT_EQ(table.GetHeader(), nullptr);
    EXPECT_EQ(table.GetNrRowsStored(), 0);
    EXPECT_EQ(table.GetValues(0), nullptr);
}

TEST(cgatsTableBuild, secondCheck_noFields) {
    const TCgatsTable table(new TCgatsTableHeader); // no samples either
    EXPECT_EQ(table.GetTableError(), 2);
}

TEST(cgatsTableBuild, thirdCheck_noSamples) {
    for (const int samples : {0, -1, INT_MIN}) {
        auto* header = new TCgatsTableHeader(3); // an empty slot, a straying spot and an unsupported type
        header->FillNextSlot(strayingSpot());
        header->FillNextSlot(column(kUnsupportedType));
        header->SetNrSamples(samples);
        EXPECT_EQ(TCgatsTable(header).GetTableError(), 4) << samples;
    }
}

TEST(cgatsTableBuild, fourthCheck_filledSlots) {
    auto* header = new TCgatsTableHeader(3); // a straying spot and an unsupported type too
    header->FillNextSlot(strayingSpot());
    header->FillNextSlot(column(kUnsupportedType));
    header->SetNrSamples(1);
    EXPECT_EQ(TCgatsTable(header).GetTableError(), 3);
}

TEST(cgatsTableBuild, fourthCheck_noSlotFilledAtAll) {
    auto* header = new TCgatsTableHeader(3);
    header->SetNrSamples(1);
    EXPECT_EQ(TCgatsTable(header).GetTableError(), 3);
}

TEST(cgatsTableBuild, fifthCheck_classification) {
    auto* header = new TCgatsTableHeader; // an unsupported type too
    header->Append(column(kUnsupportedType));
    header->Append(strayingSpot());
    header->SetNrSamples(1);
    EXPECT_EQ(TCgatsTable(header).GetTableError(), 7);
}

TEST(cgatsTableBuild, lastCheck_dataType) {
    for (const int dataType : {3, -1, 255, INT_MIN, INT_MAX}) {
        auto* header = new TCgatsTableHeader;
        header->Append(column(TCgatsField::kFloat));
        header->Append(column(dataType));
        header->SetNrSamples(1);
        EXPECT_EQ(TCgatsTable(header).GetTableError(), 6) << dataType;
    }
}

TEST(cgatsTableBuild, one_isEnoughSamples) {
    const TCgatsTable table(typedHeader(1));
    EXPECT_EQ(table.GetTableError(), 0);
    EXPECT_EQ(table.GetValues(0)->GetNumber(), 1);
}

TEST(cgatsTableBuild, classifiesAnUnclassifiedHeader) {
    auto* header = new TCgatsTableHeader;
    header->Append(new TCgatsField(2, "nm400", 400, TCgatsField::kSpectral, 0));
    header->SetNrSamples(1);
    const TCgatsTable table(header);
    EXPECT_EQ(table.GetTableError(), 0);
    EXPECT_TRUE(table.GetHeader()->IsClassified());
    EXPECT_EQ(table.GetHeader()->GetNrWaveLengths(), 1);
}

TEST(cgatsTableBuild, takesAClassifiedHeader) {
    TCgatsTableHeader* header = typedHeader(1);
    ASSERT_EQ(header->Classify(), 0);
    EXPECT_EQ(TCgatsTable(header).GetTableError(), 0);
}

TEST(cgatsTableBuild, filledDeclaredSlots_areAGoodHeader) {
    auto* header = new TCgatsTableHeader(2);
    header->FillNextSlot(column(TCgatsField::kFloat));
    header->FillNextSlot(column(TCgatsField::kFloat));
    header->SetNrSamples(4);
    const TCgatsTable table(header);
    EXPECT_EQ(table.GetTableError(), 0);
    EXPECT_NE(table.GetValues(1), nullptr);
}

TEST(cgatsTableBuild, makesAValueListPerColumnByDataType) {
    const TCgatsTable table(typedHeader(4));
    ASSERT_EQ(table.GetTableError(), 0);
    EXPECT_NE(dynamic_cast<TCgatsValueListString*>(table.GetValues(0)), nullptr);
    EXPECT_NE(dynamic_cast<TCgatsValueListInt*>(table.GetValues(1)), nullptr);
    EXPECT_NE(dynamic_cast<TCgatsValueListDouble*>(table.GetValues(2)), nullptr);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(table.GetValues(i)->GetNumber(), 4);
}

TEST(cgatsTableBuild, entriesAreAbsentOrZeroAtFirst) {
    const TCgatsTable table(typedHeader(4));
    ASSERT_EQ(table.GetTableError(), 0);
    for (int row = 0; row < 4; ++row) {
        EXPECT_EQ(table.GetValues(0)->GetString(row), nullptr);
        EXPECT_EQ(table.GetValues(1)->GetInt(row), 0);
        EXPECT_EQ(table.GetValues(2)->GetDouble(row), 0.0);
    }
}

TEST(cgatsTableBuild, claimedSamples_costNoMemory) {
    const std::int64_t before = addressSpacePages();
    TCgatsTable table(typedHeader(2000000000));
    EXPECT_LT(addressSpacePages() - before, kManyPages);
    EXPECT_EQ(table.GetTableError(), 0);
    EXPECT_EQ(table.GetValues(2)->GetNumber(), 2000000000);
    EXPECT_EQ(table.GetValues(2)->GetDouble(1999999999), 0.0);
}

// ---- The table

TEST(cgatsTable, newTable_hasNoRowsAndFractions) {
    const TCgatsTable table(typedHeader(4));
    EXPECT_EQ(table.GetNrRowsStored(), 0);
    EXPECT_FALSE(table.IsSpectralPercent());
}

TEST(cgatsTable, badColumn_givesNull) {
    const TCgatsTable table(typedHeader(1));
    for (const int index : {-1, 3, INT_MIN, INT_MAX})
        EXPECT_EQ(table.GetValues(index), nullptr);
}

TEST(cgatsTable, spectralPercent_isAFlag) {
    TCgatsTable table(typedHeader(1));
    table.SetSpectralPercent(true);
    EXPECT_TRUE(table.IsSpectralPercent());
    table.SetSpectralPercent(false);
    EXPECT_FALSE(table.IsSpectralPercent());
}

TEST(cgatsTable, ownsItsHeader) {
    TCgatsTableHeader* header = typedHeader(1);
    const TCgatsTable table(header);
    EXPECT_EQ(table.GetHeader(), header);
}

TEST(cgatsTable, releaseHeader_handsItOver) {
    TCgatsTableHeader* header = typedHeader(1);
    TCgatsTable table(header);
    const std::unique_ptr<TCgatsTableHeader> released(table.ReleaseHeader());
    EXPECT_EQ(released.get(), header);
    EXPECT_EQ(table.GetHeader(), nullptr);
}

TEST(cgatsTable, addRow_storesATextPerColumn) {
    TCgatsTable table(typedHeader(2));
    const char* const first[] = {"red", "7", "1.5"};
    const char* const second[] = {"blue", "-8", "-2.5"};
    EXPECT_EQ(table.AddRow(first), 0);
    EXPECT_EQ(table.GetNrRowsStored(), 1);
    EXPECT_EQ(table.AddRow(second), 0);
    EXPECT_EQ(table.GetNrRowsStored(), 2);
    EXPECT_STREQ(table.GetValues(0)->GetString(0), "red");
    EXPECT_EQ(table.GetValues(1)->GetInt(0), 7);
    EXPECT_EQ(table.GetValues(2)->GetDouble(0), 1.5);
    EXPECT_STREQ(table.GetValues(0)->GetString(1), "blue");
    EXPECT_EQ(table.GetValues(1)->GetInt(1), -8);
    EXPECT_EQ(table.GetValues(2)->GetDouble(1), -2.5);
}

TEST(cgatsTable, addRow_refusesARowTooMany) {
    TCgatsTable table(typedHeader(1));
    const char* const row[] = {"red", "7", "1.5"};
    const char* const surplus[] = {"blue", "8", "2.5"};
    EXPECT_EQ(table.AddRow(row), 0);
    EXPECT_EQ(table.AddRow(surplus), 11);
    EXPECT_EQ(TCgats::TableErrorToCgatsError(11), 13);
    EXPECT_EQ(table.GetNrRowsStored(), 1);
    EXPECT_STREQ(table.GetValues(0)->GetString(0), "red");
}

TEST(cgatsTable, addRow_refusesNull) {
    TCgatsTable table(typedHeader(1));
    EXPECT_EQ(table.AddRow(nullptr), 10);
    EXPECT_EQ(table.GetNrRowsStored(), 0);
}

} // namespace
} // namespace qxcms::tests
