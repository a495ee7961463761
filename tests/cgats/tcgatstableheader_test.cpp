// The data format of a table as a container of columns. What the columns mean is tested with the
// classification.
#include "cgats/tcgatstableheader.h"

#include <climits>
#include <memory>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

TCgatsField* column(const std::string& name) {
    return new TCgatsField(2, name.c_str(), 0, 0, 28);
}

using Names = std::vector<std::string>;

void expectUnclassified(const TCgatsTableHeader& header) {
    EXPECT_FALSE(header.IsClassified());
    EXPECT_EQ(header.GetColorKind(), -1);
    EXPECT_EQ(header.GetNrColors(), 0);
    EXPECT_EQ(header.GetNrSpots(), 0);
    EXPECT_EQ(header.GetNrWaveLengths(), 0);
    EXPECT_EQ(header.GetSampleNameColumn(), -1);
    EXPECT_EQ(header.GetColorColumns(), nullptr);
    EXPECT_EQ(header.GetSpotColumns(), nullptr);
    EXPECT_EQ(header.GetSpectralColumns(), nullptr);
    EXPECT_EQ(header.GetLabColumns(), nullptr);
    EXPECT_EQ(header.GetXyzColumns(), nullptr);
}

TEST(cgatsTableHeader, colorKinds_haveTheirNumbers) {
    EXPECT_EQ(TCgatsTableHeader::kNoColors, -1);
    EXPECT_EQ(TCgatsTableHeader::kCmyk, 0);
    EXPECT_EQ(TCgatsTableHeader::kCustomColors, 1);
    EXPECT_EQ(TCgatsTableHeader::kNColors, 2);
}

TEST(cgatsTableHeader, hasAVirtualDestructor) {
    EXPECT_TRUE(std::has_virtual_destructor_v<TCgatsTableHeader>);
}

TEST(cgatsTableHeader, newHeader_isEmptyAndUnclassified) {
    const TCgatsTableHeader header;
    EXPECT_EQ(header.GetNrFields(), 0);
    EXPECT_EQ(header.GetNrFilledFields(), 0);
    EXPECT_EQ(header.GetNrSamples(), 0);
    expectUnclassified(header);
}

TEST(cgatsTableHeader, newHeaderWithSlots_isUnclassified) {
    const TCgatsTableHeader header(3);
    EXPECT_EQ(header.GetNrFields(), 3);
    EXPECT_EQ(header.GetNrFilledFields(), 0);
    EXPECT_EQ(header.GetNrSamples(), 0);
    for (int slot = 0; slot < 3; ++slot)
        EXPECT_EQ(header.GetField(slot), nullptr);
    expectUnclassified(header);
}

TEST(cgatsTableHeader, negativeSlotCount_isZero) {
    EXPECT_EQ(TCgatsTableHeader(-1).GetNrFields(), 0);
    EXPECT_EQ(TCgatsTableHeader(INT_MIN).GetNrFields(), 0);
}

TEST(cgatsTableHeader, slotCount_costsNoMemory) {
    const std::int64_t before = addressSpacePages();
    TCgatsTableHeader header(2000000000);
    EXPECT_EQ(header.FillNextSlot(column("A")), 0);
    EXPECT_LT(addressSpacePages() - before, kManyPages);
    EXPECT_EQ(header.GetNrFields(), 2000000000);
    EXPECT_EQ(header.GetNrFilledFields(), 1);
    EXPECT_EQ(header.GetField(1999999999), nullptr);
}

TEST(cgatsTableHeader, append_addsColumnsInOrder) {
    TCgatsTableHeader header;
    EXPECT_EQ(header.Append(column("A")), 0);
    EXPECT_EQ(header.Append(column("B")), 0);
    EXPECT_EQ(header.GetNrFields(), 2);
    EXPECT_EQ(header.GetNrFilledFields(), 2);
    EXPECT_EQ(namesOf(header), (Names{"A", "B"}));
}

TEST(cgatsTableHeader, append_goesBehindFilledSlots) {
    TCgatsTableHeader header(1);
    EXPECT_EQ(header.FillNextSlot(column("A")), 0);
    EXPECT_EQ(header.Append(column("B")), 0);
    EXPECT_EQ(namesOf(header), (Names{"A", "B"}));
}

TEST(cgatsTableHeader, append_refusesNull) {
    TCgatsTableHeader header;
    EXPECT_EQ(header.Append(nullptr), 1);
    EXPECT_EQ(header.GetNrFields(), 0);
}

TEST(cgatsTableHeader, append_refusesABadColumn) {
    TCgatsTableHeader header;
    EXPECT_EQ(header.Append(column("")), 1);
    EXPECT_EQ(header.Append(new TCgatsField(2, nullptr, 0, 0, 28)), 1);
    EXPECT_EQ(header.GetNrFields(), 0);
}

TEST(cgatsTableHeader, fillNextSlot_fillsInOrder) {
    TCgatsTableHeader header(3);
    EXPECT_EQ(header.FillNextSlot(column("A")), 0);
    EXPECT_EQ(header.FillNextSlot(column("B")), 0);
    EXPECT_EQ(header.GetNrFields(), 3);
    EXPECT_EQ(header.GetNrFilledFields(), 2);
    EXPECT_EQ(namesOf(header), (Names{"A", "B", "(empty)"}));
}

TEST(cgatsTableHeader, fillNextSlot_refusesWithoutAnEmptySlot) {
    TCgatsTableHeader full(1);
    EXPECT_EQ(full.FillNextSlot(column("A")), 0);
    EXPECT_EQ(full.FillNextSlot(column("B")), 1);
    EXPECT_EQ(namesOf(full), Names{"A"});
    TCgatsTableHeader none;
    EXPECT_EQ(none.FillNextSlot(column("A")), 1);
    EXPECT_EQ(none.GetNrFields(), 0);
}

TEST(cgatsTableHeader, fillNextSlot_refusesNullOrABadColumn) {
    TCgatsTableHeader header(1);
    EXPECT_EQ(header.FillNextSlot(nullptr), 1);
    EXPECT_EQ(header.FillNextSlot(column("")), 1);
    EXPECT_EQ(header.GetNrFilledFields(), 0);
    EXPECT_EQ(header.FillNextSlot(column("A")), 0);
}

TEST(cgatsTableHeader, badIndex_givesNull) {
    TCgatsTableHeader header;
    header.Append(column("A"));
    EXPECT_NE(header.GetField(0), nullptr);
    for (const int index : {-1, 1, INT_MIN, INT_MAX})
        EXPECT_EQ(header.GetField(index), nullptr);
}

TEST(cgatsTableHeader, setNrSamples_isKept) {
    TCgatsTableHeader header;
    header.SetNrSamples(12);
    EXPECT_EQ(header.GetNrSamples(), 12);
}

} // namespace

// The fields behind the last of CMYK and of XYZ in the list of names.
TEST(headerClassification, neighboursOfColours_areNoColours) {
    const auto standard = [](const char* name, int id) { return new TCgatsField(2, name, 0, 0, id); };
    TCgatsTableHeader header;
    int id = 2;
    for (const char* name : {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K", "D_RED"})
        ASSERT_EQ(header.Append(standard(name, id++)), 0);
    id = 17;
    for (const char* name : {"XYZ_X", "XYZ_Y", "XYZ_Z"})
        ASSERT_EQ(header.Append(standard(name, id++)), 0);
    id = 23;
    for (const char* name : {"LAB_L", "LAB_A", "LAB_B"})
        ASSERT_EQ(header.Append(standard(name, id++)), 0);
    ASSERT_EQ(header.Append(standard("XYY_X", 20)), 0);
    ASSERT_EQ(header.Append(standard("LAB_C", 26)), 0);
    ASSERT_EQ(header.Classify(), 0);
    EXPECT_EQ(header.GetColorKind(), TCgatsTableHeader::kCmyk);
    EXPECT_EQ(columnList(header.GetColorColumns(), 4), (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(columnList(header.GetXyzColumns(), 3), (std::vector<int>{5, 6, 7}));
    EXPECT_EQ(columnList(header.GetLabColumns(), 3), (std::vector<int>{8, 9, 10}));
}

} // namespace qxcms::tests
