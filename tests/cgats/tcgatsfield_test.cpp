// The description of one column.
#include "cgats/tcgatsfield.h"

#include <gtest/gtest.h>

namespace qxcms::tests {
namespace {

TEST(cgatsField, dataTypesAndKinds_haveTheirNumbers) {
    EXPECT_EQ(TCgatsField::kString, 0);
    EXPECT_EQ(TCgatsField::kInteger, 1);
    EXPECT_EQ(TCgatsField::kFloat, 2);
    EXPECT_EQ(TCgatsField::kStandard, 0);
    EXPECT_EQ(TCgatsField::kCustom, 1);
    EXPECT_EQ(TCgatsField::kSpectral, 2);
    EXPECT_EQ(TCgatsField::kProcessColor, 3);
    EXPECT_EQ(TCgatsField::kNColor, 4);
    EXPECT_EQ(TCgatsField::kSpotColor, 5);
}

TEST(cgatsField, storesAllParts) {
    const TCgatsField field(2, "nm390", 390, 2, 11);
    EXPECT_EQ(field.GetDataType(), 2);
    EXPECT_STREQ(field.GetName(), "nm390");
    EXPECT_EQ(field.GetNumber(), 390);
    EXPECT_EQ(field.GetKind(), 2);
    EXPECT_EQ(field.GetFieldId(), 11);
    EXPECT_EQ(field.GetBad(), 0);
}

TEST(cgatsField, copiesItsName) {
    char name[] = "LOT";
    const TCgatsField field(0, name, 0, 1, 0);
    name[0] = 'x';
    EXPECT_STREQ(field.GetName(), "LOT");
}

TEST(cgatsField, absentName_isBad) {
    const TCgatsField field(2, nullptr, 5, 4, 3);
    EXPECT_EQ(field.GetBad(), 1);
    EXPECT_EQ(field.GetNumber(), 5);
    EXPECT_EQ(field.GetKind(), 4);
    EXPECT_EQ(field.GetFieldId(), 3);
}

TEST(cgatsField, emptyName_isBad) {
    EXPECT_EQ(TCgatsField(0, "", 0, 0, 0).GetBad(), 1);
}

} // namespace
} // namespace qxcms::tests
