// Documents with very many declared names: reading and asking grows in proportion, and finds what a search
// from the first name on would find.
#include <string>

#include <gtest/gtest.h>

#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

constexpr int kNames = 50000;

std::string declaredFieldsText() {
    std::string declarations, fields;
    for (int i = 0; i < kNames; ++i) {
        declarations += "KEYWORD LOT" + std::to_string(i) + "\n";
        fields += "lot" + std::to_string(i) + "\n";
    }
    return declarations + tableText(fields, 1, repeated("x ", kNames));
}

TEST(declaredNames, manyNamesAndFields_areReadInProportion) {
    const std::string text = declaredFieldsText();
    const Stopwatch watch;
    const Reading reading(text);
    EXPECT_LT(watch.seconds(), 1.0);
    ASSERT_EQ(reading.code, 0);
    const TCgatsTableHeader& header = *reading.document.GetTable(0)->GetHeader();
    ASSERT_EQ(header.GetNrFields(), kNames);
    for (const int i : {0, 1, 12345, kNames - 1}) {
        EXPECT_EQ(header.GetField(i)->GetFieldId(), i);
        EXPECT_EQ(header.GetField(i)->GetName(), "LOT" + std::to_string(i));
    }
}

TEST(declaredNames, everyFieldByItsName_isFoundInProportion) {
    const Reading reading(declaredFieldsText());
    ASSERT_EQ(reading.code, 0);
    const Stopwatch watch;
    for (int i = 0; i < kNames; ++i)
        ASSERT_EQ(reading.document.GetFieldNameIndex(0, ("Lot" + std::to_string(i)).c_str()), i);
    EXPECT_LT(watch.seconds(), 1.0);
    EXPECT_EQ(reading.document.GetFieldNameIndex(0, "LOT50000"), -1);
}

TEST(declaredNames, nameDeclaredTwice_isTheFirst) {
    TCgats document;
    for (const char* name : {"Lot", "LOT", "Roll", "lot"})
        ASSERT_EQ(document.AddCustomField(name), 0);
    ASSERT_EQ(document.GetNrCustomFields(), 4);
    EXPECT_STREQ(document.GetCustomField(3), "lot");
    int kind = 0, number = 0, dataType = 0;
    std::string name;
    EXPECT_EQ(document.MatchField("lot", &kind, &number, &dataType, &name), 0);
    EXPECT_EQ(name, "Lot");
    EXPECT_EQ(document.MatchField("ROLL", &kind, &number, &dataType, &name), 2);
}

// Each table is asked for its own fields, however many there are.
TEST(declaredNames, fieldsOfSeveralTables_areKeptApart) {
    const Reading reading(tableText("LAB_L LAB_A LAB_B", 1, "1 2 3") + tableText("XYZ_X LAB_L", 1, "4 5"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetFieldNameIndex(0, "LAB_L"), 0);
    EXPECT_EQ(reading.document.GetFieldNameIndex(1, "lab_l"), 1);
    EXPECT_EQ(reading.document.GetFieldNameIndex(0, "XYZ_X"), -1);
    EXPECT_EQ(reading.document.GetFieldNameIndex(1, "LAB_A"), -1);
}

} // namespace
} // namespace qxcms::tests
