// The document model at its edges: empty members, full lists, values that are not stored, tables that are
// full.
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "cgats/cgats_vocabulary.h"
#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

// ---- Ownership

// Whole objects alone: nothing that owns can be copied.
template <class Owner>
constexpr bool kIsNeverCopied = !std::is_copy_constructible_v<Owner> && !std::is_copy_assignable_v<Owner> &&
                                !std::is_move_constructible_v<Owner> && !std::is_move_assignable_v<Owner>;

TEST(documentModel, owners_areNeitherCopiedNorAssigned) {
    EXPECT_TRUE(kIsNeverCopied<TCgats>);
    EXPECT_TRUE(kIsNeverCopied<TCgatsTag>);
    EXPECT_TRUE(kIsNeverCopied<TCgatsField>);
    EXPECT_TRUE(kIsNeverCopied<TCgatsTable>);
    EXPECT_TRUE(kIsNeverCopied<TCgatsTableHeader>);
    EXPECT_TRUE(kIsNeverCopied<TCgatsValueListDouble>);
    EXPECT_TRUE(kIsNeverCopied<TCgatsValueListInt>);
    EXPECT_TRUE(kIsNeverCopied<TCgatsValueListString>);
}

// A header that tells when it goes.
class WatchedHeader : public TCgatsTableHeader {
public:
    explicit WatchedHeader(bool* flag) : gone(flag) {}
    ~WatchedHeader() override { *gone = true; }

private:
    bool* gone;
};

TEST(documentModel, table_destroysItsHeaderThroughTheBase) {
    bool gone = false;
    {
        const TCgatsTable table(new WatchedHeader(&gone));
        EXPECT_FALSE(gone);
    }
    EXPECT_TRUE(gone);
}

TEST(documentModel, tableThatCouldNotBeBuilt_ownsItsHeaderAllTheSame) {
    bool gone = false;
    auto* header = new WatchedHeader(&gone);
    header->Append(new TCgatsField(9, "LAB_DE", 0, TCgatsField::kStandard, 28));
    header->SetNrSamples(1);
    {
        const TCgatsTable table(header);
        EXPECT_EQ(table.GetTableError(), 6);
        EXPECT_EQ(table.GetHeader(), header);
        EXPECT_FALSE(gone);
    }
    EXPECT_TRUE(gone);
}

#if defined(__x86_64__) && defined(__linux__)

// ---- The empty state, every pointer included

constexpr std::size_t kTags = 8;
constexpr std::size_t kCommentBlocks = 1040;
constexpr std::size_t kTmpHeader = 2072;
constexpr std::size_t kCustomFields = 2096;
constexpr std::size_t kTables = 2112;

// Room for a document, full of rubbish.
struct Storage {
    Storage() { std::memset(bytes, 0xa5, sizeof bytes); }

    void expectNullPointers(std::size_t offset, std::size_t count) const {
        for (std::size_t i = 0; i < count; ++i) {
            void* pointer = nullptr;
            std::memcpy(&pointer, bytes + offset + i * sizeof pointer, sizeof pointer);
            ASSERT_EQ(pointer, nullptr) << offset << ", " << i;
        }
    }
    void expectNoPointers() const {
        expectNullPointers(kTags, 128);
        expectNullPointers(kCommentBlocks, 128);
        expectNullPointers(kTmpHeader, 1);
        expectNullPointers(kCustomFields, 1);
        expectNullPointers(kTables, 1);
    }

    alignas(TCgats) unsigned char bytes[sizeof(TCgats)];
};

TEST(documentModel, setToZero_nullsEveryPointer) {
    Storage storage;
    EXPECT_EQ(reinterpret_cast<TCgats*>(storage.bytes)->SetToZero(), 0);
    storage.expectNoPointers();
}

template <class... Arguments>
void expectEmptyWhenMadeOf(Arguments... arguments) {
    Storage storage;
    auto* const document = new (storage.bytes) TCgats(arguments...);
    storage.expectNoPointers();
    EXPECT_EQ(document->GetNrTags(), 0);
    EXPECT_EQ(document->GetNrCommentBlocks(), 0);
    EXPECT_EQ(document->GetDeclaredNrSets(), 0);
    EXPECT_EQ(document->GetNrProcessColorIdTags(), 0);
    EXPECT_EQ(document->GetNrSpotIdTags(), 0);
    EXPECT_EQ(document->GetNrCustomFields(), 0);
    EXPECT_EQ(document->GetNrTables(), 0);
    document->~TCgats();
}

TEST(documentModel, everyConstructor_startsFromTheEmptyState) {
    expectEmptyWhenMadeOf();
    expectEmptyWhenMadeOf("");
    expectEmptyWhenMadeOf("", 7);
}

#endif

// ---- Full lists

TEST(documentModel, fullTagList_hasNothingBehindItsEnd) {
    TCgats document;
    // What stands behind the tags in memory is not zero.
    ASSERT_EQ(document.ReadFromBuffer("BEGIN_NOTES\nfree text\nEND_NOTES\n"), 0);
    while (document.GetNrTags() < TCgats::kMaxTags)
        ASSERT_EQ(document.InsertTag(-1, "N", 0, "", "", -1, false), 0);
    EXPECT_NE(document.GetTagAt(TCgats::kMaxTags - 1), nullptr);
    EXPECT_EQ(document.GetTagAt(TCgats::kMaxTags), nullptr);
}

TEST(documentModel, fullCommentBlockList_hasNothingBehindItsEnd) {
    TCgats document;
    for (int i = 0; i < TCgats::kMaxCommentBlocks; ++i)
        ASSERT_EQ(document.ReadFromBuffer("BEGIN_NOTES\nfree text\nEND_NOTES\n"), 0);
    ASSERT_EQ(document.GetNrCommentBlocks(), 128);
    document.SetNrSamples(5);
    EXPECT_NE(document.GetCommentBlock(TCgats::kMaxCommentBlocks - 1), nullptr);
    EXPECT_EQ(document.GetCommentBlock(TCgats::kMaxCommentBlocks), nullptr);
}

// ---- Messages

TEST(documentModel, messageOfCodeZero_isInTheTableAlone) {
    EXPECT_STREQ(detail::kMessages[0], "No error.");
    const TCgats document;
    document.SetErrorCode(0);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

// ---- Value lists

// Nothing that a list refuses changes an entry.
template <class List>
void expectNothingStored(List& list, const char* present) {
    ASSERT_NE(list.SetValue(1, present), TCgatsValueList::kNotStored);
    const double number = list.GetDouble(1);
    const std::int32_t integer = list.GetInt(1);
    const char* const text = list.GetString(1);
    EXPECT_EQ(list.SetValue(1, nullptr), TCgatsValueList::kNotStored);
    for (const int index : {-1, 3, 4, 16, 17, INT_MIN, INT_MAX}) {
        EXPECT_EQ(list.SetValue(index, "7"), TCgatsValueList::kNotStored) << index;
        EXPECT_EQ(list.GetDouble(index), 0.0) << index;
        EXPECT_EQ(list.GetInt(index), 0) << index;
        EXPECT_EQ(list.GetString(index), nullptr) << index;
    }
    EXPECT_EQ(list.GetNumber(), 3);
    EXPECT_EQ(list.GetDouble(1), number);
    EXPECT_EQ(list.GetInt(1), integer);
    EXPECT_EQ(list.GetString(1), text);
}

TEST(documentModel, valueOfNullOrABadIndex_isNotStored) {
    TCgatsValueListDouble doubles(3);
    expectNothingStored(doubles, "1.5");
    EXPECT_EQ(doubles.GetDouble(1), 1.5);
    TCgatsValueListInt integers(3);
    expectNothingStored(integers, "-4");
    EXPECT_EQ(integers.GetInt(1), -4);
    TCgatsValueListString strings(3);
    expectNothingStored(strings, "red");
    EXPECT_STREQ(strings.GetString(1), "red");
}

TEST(documentModel, valueListOfNoEntries_storesNothing) {
    for (const int count : {0, -1, INT_MIN}) {
        TCgatsValueListDouble doubles(count);
        TCgatsValueListInt integers(count);
        TCgatsValueListString strings(count);
        for (TCgatsValueList* list :
             {static_cast<TCgatsValueList*>(&doubles), static_cast<TCgatsValueList*>(&integers),
              static_cast<TCgatsValueList*>(&strings)}) {
            EXPECT_EQ(list->SetValue(0, "1"), TCgatsValueList::kNotStored);
            EXPECT_EQ(list->SetValue(-1, "1"), TCgatsValueList::kNotStored);
        }
    }
}

TEST(documentModel, smallestInteger_isStored) {
    TCgatsValueListInt list(1);
    const std::intptr_t result = list.SetValue(0, "-2147483648");
    EXPECT_EQ(result, INT_MIN);
    EXPECT_NE(result, TCgatsValueList::kNotStored);
    EXPECT_EQ(list.GetInt(0), INT_MIN);
}

TEST(documentModel, stringList_takesItsOwnText) {
    TCgatsValueListString list(2);
    list.SetValue(0, "dark red");
    list.SetValue(0, list.GetString(0) + 5);
    list.SetValue(1, list.GetString(0));
    EXPECT_STREQ(list.GetString(0), "red");
    EXPECT_STREQ(list.GetString(1), "red");
    EXPECT_NE(list.GetString(0), list.GetString(1));
}

// ---- Tables

// Two rows of a text and a number.
std::unique_ptr<TCgatsTable> twoRowTable() {
    auto* header = new TCgatsTableHeader;
    header->Append(new TCgatsField(TCgatsField::kString, "LOT", 0, TCgatsField::kCustom, 0));
    header->Append(new TCgatsField(TCgatsField::kFloat, "LAB_DE", 0, TCgatsField::kStandard, 28));
    header->SetNrSamples(2);
    return std::make_unique<TCgatsTable>(header);
}

TEST(documentModel, valuesOneByOne_makeARowWhenItEnds) {
    const std::unique_ptr<TCgatsTable> table = twoRowTable();
    EXPECT_EQ(table->SetNextValue(1, "2.5"), 0);
    EXPECT_EQ(table->SetNextValue(0, "red"), 0);
    EXPECT_EQ(table->GetNrRowsStored(), 0);
    EXPECT_EQ(table->EndRow(), 0);
    EXPECT_EQ(table->GetNrRowsStored(), 1);
    EXPECT_EQ(table->SetNextValue(0, "blue"), 0);
    EXPECT_EQ(table->EndRow(), 0);
    EXPECT_STREQ(table->GetValues(0)->GetString(0), "red");
    EXPECT_STREQ(table->GetValues(0)->GetString(1), "blue");
    EXPECT_EQ(table->GetValues(1)->GetDouble(0), 2.5);
    EXPECT_EQ(table->GetValues(1)->GetDouble(1), 0.0);
}

TEST(documentModel, fullTable_refusesValuesAndRows) {
    const std::unique_ptr<TCgatsTable> table = twoRowTable();
    const char* const row[] = {"red", "1.5"};
    EXPECT_EQ(table->AddRow(row), 0);
    EXPECT_EQ(table->AddRow(row), 0);
    EXPECT_EQ(table->SetNextValue(0, "blue"), 11);
    EXPECT_EQ(table->EndRow(), 11);
    EXPECT_EQ(table->AddRow(row), 11);
    EXPECT_EQ(table->GetNrRowsStored(), 2);
    EXPECT_STREQ(table->GetValues(0)->GetString(1), "red");
}

TEST(documentModel, tableWithoutHeader_isFull) {
    TCgatsTable table(nullptr);
    const char* const row[] = {"red"};
    EXPECT_EQ(table.SetNextValue(0, "red"), 11);
    EXPECT_EQ(table.EndRow(), 11);
    EXPECT_EQ(table.AddRow(row), 11);
    EXPECT_EQ(table.GetNrRowsStored(), 0);
}

TEST(documentModel, valueOfABadColumnOrNull_gives10) {
    const std::unique_ptr<TCgatsTable> table = twoRowTable();
    for (const int column : {-1, 2, INT_MIN, INT_MAX})
        EXPECT_EQ(table->SetNextValue(column, "red"), 10) << column;
    EXPECT_EQ(table->SetNextValue(0, nullptr), 10);
    EXPECT_EQ(table->SetNextValue(1, nullptr), 10);
    EXPECT_EQ(table->GetNrRowsStored(), 0);
}

TEST(documentModel, rowWithAnAbsentText_isNotStored) {
    const std::unique_ptr<TCgatsTable> table = twoRowTable();
    const char* const first[] = {nullptr, "1.5"};
    const char* const last[] = {"red", nullptr};
    const char* const whole[] = {"blue", "2.5"};
    EXPECT_EQ(table->AddRow(first), 10);
    EXPECT_EQ(table->AddRow(last), 10);
    EXPECT_EQ(table->GetNrRowsStored(), 0);
    EXPECT_EQ(table->AddRow(whole), 0);
    EXPECT_EQ(table->GetNrRowsStored(), 1);
    EXPECT_STREQ(table->GetValues(0)->GetString(0), "blue");
    EXPECT_EQ(table->GetValues(1)->GetDouble(0), 2.5);
}

TEST(documentModel, header_refusesAnAppendedColumnWhileSlotsAreEmpty) {
    TCgatsTableHeader header(2);
    header.FillNextSlot(new TCgatsField(2, "A", 0, 0, 28));
    EXPECT_EQ(header.Append(new TCgatsField(2, "B", 0, 0, 28)), 1);
    EXPECT_EQ(header.GetNrFields(), 2);
    EXPECT_EQ(header.GetNrFilledFields(), 1);
}

// Columns of every class: CMYK, a spot, a wavelength, CIELAB, XYZ and the sample names.
void appendEveryClass(TCgatsTableHeader& header) {
    const auto append = [&header](int dataType, const char* name, int number, int kind, int fieldId) {
        ASSERT_EQ(header.Append(new TCgatsField(dataType, name, number, kind, fieldId)), 0) << name;
    };
    for (int i = 0; i < 4; ++i)
        append(TCgatsField::kFloat, detail::kFieldNames[2 + i], 0, TCgatsField::kStandard, 2 + i);
    append(TCgatsField::kFloat, "SPOT_1", 0, TCgatsField::kSpotColor, 0);
    append(TCgatsField::kFloat, "nm400", 400, TCgatsField::kSpectral, 0);
    for (int i = 0; i < 3; ++i)
        append(TCgatsField::kFloat, detail::kFieldNames[23 + i], 0, TCgatsField::kStandard, 23 + i);
    for (int i = 0; i < 3; ++i)
        append(TCgatsField::kFloat, detail::kFieldNames[17 + i], 0, TCgatsField::kStandard, 17 + i);
    append(TCgatsField::kString, "SampleID", 0, TCgatsField::kCustom, 0);
}

TEST(documentModel, headerThatFailsToBeClassifiedAgain_keepsNothingOfTheFirstTime) {
    TCgatsTableHeader header;
    appendEveryClass(header);
    ASSERT_EQ(header.Classify(), 0);
    ASSERT_EQ(header.GetSampleNameColumn(), 12);
    ASSERT_NE(header.GetXyzColumns(), nullptr);
    header.Append(new TCgatsField(TCgatsField::kFloat, "SPOT_9", 8, TCgatsField::kSpotColor, 0));
    EXPECT_EQ(header.Classify(), 7);
    EXPECT_FALSE(header.IsClassified());
    EXPECT_EQ(header.GetColorKind(), TCgatsTableHeader::kNoColors);
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

TEST(documentModel, headerClassifiedAgain_losesColorsThatAreNoneAnyMore) {
    TCgatsTableHeader header;
    appendEveryClass(header);
    ASSERT_EQ(header.Classify(), 0);
    ASSERT_EQ(header.GetColorKind(), TCgatsTableHeader::kCmyk);
    // With a fifth CMYK column there is no CMYK.
    header.Append(new TCgatsField(TCgatsField::kFloat, "CMYK_C", 0, TCgatsField::kStandard, 2));
    EXPECT_EQ(header.Classify(), 0);
    EXPECT_EQ(header.GetColorKind(), TCgatsTableHeader::kNoColors);
    EXPECT_EQ(header.GetNrColors(), 0);
    EXPECT_EQ(header.GetColorColumns(), nullptr);
    EXPECT_EQ(header.GetNrSpots(), 1);
    EXPECT_EQ(header.GetSampleNameColumn(), 12);
}

TEST(documentModel, fourCmykColumnsWithAnyChannelMissing_areNoColors) {
    for (int missing = 0; missing < 4; ++missing) {
        TCgatsTableHeader header;
        for (int channel = 0; channel < 4; ++channel) {
            const int given = channel == missing ? (missing + 1) % 4 : channel;
            header.Append(new TCgatsField(TCgatsField::kFloat, detail::kFieldNames[2 + given], 0,
                                          TCgatsField::kStandard, 2 + given));
        }
        EXPECT_EQ(header.Classify(), 0) << missing;
        EXPECT_EQ(header.GetColorKind(), TCgatsTableHeader::kNoColors) << missing;
        EXPECT_EQ(header.GetNrColors(), 0) << missing;
        EXPECT_EQ(header.GetColorColumns(), nullptr) << missing;
    }
}

} // namespace
} // namespace qxcms::tests
