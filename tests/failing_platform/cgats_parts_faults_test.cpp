// The parts of a document when the memory fails: tags, fields, headers, tables and lists of values.
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "cgats/tcgatstable.h"
#include "cgats/tcgatstag.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"

namespace qxcms::tests {
namespace {

// Tags.

using tagFaults = OnSubstitutePlatform;

// Without one of its texts a tag has none; only the code is there.
TEST_F(tagFaults, tagWithoutMemory_holdsItsCodeAlone) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TCgatsTag tag(2, "CREATED", 0, "today", "by hand");
        faults.disarm();
        EXPECT_EQ(tag.GetCode(), 2);
        EXPECT_EQ(tag.GetKeyword() == nullptr, faults.happened());
        EXPECT_EQ(tag.GetValue() == nullptr, faults.happened());
        EXPECT_EQ(tag.GetComment() == nullptr, faults.happened());
        EXPECT_EQ(tag.SetValue("tomorrow", 0), faults.happened() ? 1 : 0);
    });
}

TEST_F(tagFaults, setValueWithoutMemory_answers1KeepsTheValueAndWorksLater) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgatsTag tag(2, "CREATED", 0, "today", "by hand");
        faults.arm();
        const int answer = tag.SetValue("7", 1);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 1 : 0);
        EXPECT_STREQ(tag.GetValue(), faults.happened() ? "today" : "7");
        EXPECT_EQ(tag.GetNumeric(), faults.happened() ? 0 : 1);
        EXPECT_EQ(tag.SetValue("7", 1), 0);
        EXPECT_STREQ(tag.GetValue(), "7");
    });
}

// A caller's stream that cannot grow fails by its own means.
TEST_F(tagFaults, writeToAStreamWithoutMemory_leavesItFailed) {
    // The first exception of a stream takes memory that the process keeps.
    std::ostringstream failed;
    failed.setstate(std::ios::failbit);
    EXPECT_THROW(failed.exceptions(std::ios::failbit), std::ios::failure);
    const TCgatsTag tag(2, "CREATED", 0, std::string(2000, 'x').c_str(), "by hand");
    for (const std::ios::iostate exceptions : {std::ios::goodbit, std::ios::badbit | std::ios::failbit}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            std::ostringstream stream;
            stream.exceptions(exceptions);
            faults.arm();
            const int answer = tag.Write(stream);
            faults.disarm();
            EXPECT_EQ(answer, 0);
            EXPECT_EQ(stream.good(), !faults.happened());
            EXPECT_EQ(stream.exceptions(), exceptions);
        });
    }
}

// Fields and headers.

using headerFaults = OnSubstitutePlatform;

TEST_F(headerFaults, fieldWithoutMemory_isBad) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TCgatsField field(TCgatsField::kFloat, "LAB_L", 0, TCgatsField::kStandard, 23);
        faults.disarm();
        EXPECT_EQ(field.GetBad(), faults.happened() ? 1 : 0);
        EXPECT_EQ(field.GetName() == nullptr, faults.happened());
        EXPECT_EQ(field.GetFieldId(), 23);
    });
}

std::unique_ptr<TCgatsField> spectralField(int wavelength) {
    return std::make_unique<TCgatsField>(TCgatsField::kFloat, "nm", wavelength, TCgatsField::kSpectral, 0);
}

// A field that is refused goes, as one that is taken does with its header.
TEST_F(headerFaults, appendWithoutMemory_answers1DeletesTheFieldAndWorksLater) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgatsTableHeader header;
        ASSERT_EQ(header.Append(spectralField(400).release()), 0);
        auto second = spectralField(410);
        faults.arm();
        const int answer = header.Append(second.release());
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 1 : 0);
        EXPECT_EQ(header.GetNrFields(), faults.happened() ? 1 : 2);
        EXPECT_EQ(header.Append(spectralField(420).release()), 0);
        EXPECT_EQ(header.GetField(0)->GetNumber(), 400);
        EXPECT_EQ(header.GetField(header.GetNrFields() - 1)->GetNumber(), 420);
    });
}

TEST_F(headerFaults, fillNextSlotWithoutMemory_answers1DeletesTheFieldAndLeavesTheSlotEmpty) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgatsTableHeader header(2);
        auto first = spectralField(400);
        faults.arm();
        const int answer = header.FillNextSlot(first.release());
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 1 : 0);
        EXPECT_EQ(header.GetNrFields(), 2);
        EXPECT_EQ(header.GetNrFilledFields(), faults.happened() ? 0 : 1);
        EXPECT_EQ(header.FillNextSlot(spectralField(410).release()), 0);
    });
}

// One of each kind of columns.
struct Column {
    int dataType;
    const char* name;
    int number;
    int kind;
    int id;
};
constexpr Column kColumns[] = {{TCgatsField::kString, "SampleID", 0, TCgatsField::kCustom, 0},
                               {TCgatsField::kFloat, "nm410", 410, TCgatsField::kSpectral, 0},
                               {TCgatsField::kFloat, "nm400", 400, TCgatsField::kSpectral, 0},
                               {TCgatsField::kFloat, "SPOT_1", 0, TCgatsField::kSpotColor, 0},
                               {TCgatsField::kFloat, "LAB_L", 0, TCgatsField::kStandard, 23},
                               {TCgatsField::kFloat, "LAB_A", 0, TCgatsField::kStandard, 24},
                               {TCgatsField::kFloat, "LAB_B", 0, TCgatsField::kStandard, 25},
                               {TCgatsField::kFloat, "XYZ_X", 0, TCgatsField::kStandard, 17},
                               {TCgatsField::kFloat, "XYZ_Y", 0, TCgatsField::kStandard, 18},
                               {TCgatsField::kFloat, "XYZ_Z", 0, TCgatsField::kStandard, 19},
                               {TCgatsField::kInteger, "rank", 0, TCgatsField::kCustom, 1}};
constexpr Column kCmyk[] = {{TCgatsField::kFloat, "CMYK_C", 0, TCgatsField::kStandard, 2},
                            {TCgatsField::kFloat, "CMYK_M", 0, TCgatsField::kStandard, 3},
                            {TCgatsField::kFloat, "CMYK_Y", 0, TCgatsField::kStandard, 4},
                            {TCgatsField::kFloat, "CMYK_K", 0, TCgatsField::kStandard, 5}};
constexpr Column kCustomColors[] = {{TCgatsField::kFloat, "PC2_1", 0, TCgatsField::kProcessColor, 0},
                                    {TCgatsField::kFloat, "PC2_2", 1, TCgatsField::kProcessColor, 0}};
constexpr Column kNColors[] = {{TCgatsField::kFloat, "5CLR_1", 0, TCgatsField::kNColor, 0},
                               {TCgatsField::kFloat, "5CLR_2", 1, TCgatsField::kNColor, 0},
                               {TCgatsField::kFloat, "5CLR_3", 2, TCgatsField::kNColor, 0},
                               {TCgatsField::kFloat, "5CLR_4", 3, TCgatsField::kNColor, 0},
                               {TCgatsField::kFloat, "5CLR_5", 4, TCgatsField::kNColor, 0}};

using Columns = std::vector<Column>;

Columns columnsWith(const Columns& colors) {
    Columns columns(std::begin(kColumns), std::end(kColumns));
    columns.insert(columns.end(), colors.begin(), colors.end());
    return columns;
}

// Without colours, and with each kind of them.
std::vector<Columns> everyKindOfColumns() {
    return {columnsWith({}), columnsWith({std::begin(kCmyk), std::end(kCmyk)}),
            columnsWith({std::begin(kCustomColors), std::end(kCustomColors)}),
            columnsWith({std::begin(kNColors), std::end(kNColors)})};
}

std::unique_ptr<TCgatsTableHeader> headerOf(const Columns& columns) {
    auto header = std::make_unique<TCgatsTableHeader>();
    for (const Column& column : columns)
        header->Append(new TCgatsField(column.dataType, column.name, column.number, column.kind, column.id));
    header->SetNrSamples(3);
    return header;
}

// Sorting the spectral columns takes memory where there is some, and does without it.
bool isWhole(const TCgatsTableHeader& header, int colors) {
    return header.IsClassified() && header.GetNrColors() == colors && header.GetNrSpots() == 1 &&
           header.GetSpotColumns()[0] == 3 && header.GetNrWaveLengths() == 2 &&
           header.GetSpectralColumns()[0] == 2 && header.GetSpectralColumns()[1] == 1 &&
           header.GetLabColumns()[0] == 4 && header.GetXyzColumns()[2] == 9 &&
           header.GetSampleNameColumn() == 0;
}

bool isUnclassified(const TCgatsTableHeader& header) {
    return !header.IsClassified() && header.GetNrColors() == 0 && header.GetColorColumns() == nullptr &&
           header.GetNrSpots() == 0 && header.GetSpotColumns() == nullptr && header.GetNrWaveLengths() == 0 &&
           header.GetSpectralColumns() == nullptr && header.GetLabColumns() == nullptr &&
           header.GetXyzColumns() == nullptr && header.GetSampleNameColumn() == -1;
}

TEST_F(headerFaults, classifyWithoutMemory_leavesNoSummaryAndWorksLater) {
    for (const Columns& columns : everyKindOfColumns()) {
        const int colors = static_cast<int>(columns.size() - std::size(kColumns));
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            const auto header = headerOf(columns);
            faults.arm();
            const int answer = header->Classify();
            faults.disarm();
            EXPECT_TRUE(answer == 0 || faults.happened());
            EXPECT_TRUE(answer == 0 ? isWhole(*header, colors) : isUnclassified(*header)) << answer;
            EXPECT_EQ(header->Classify(), 0);
            EXPECT_TRUE(isWhole(*header, colors));
        });
    }
}

// Tables.

using tableFaults = OnSubstitutePlatform;

TEST_F(tableFaults, tableWithoutMemory_hasATableErrorAndStillOwnsItsHeader) {
    for (const Columns& columns : everyKindOfColumns()) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            auto header = headerOf(columns);
            const TCgatsTableHeader* const same = header.get();
            faults.arm();
            TCgatsTable table(header.release());
            faults.disarm();
            EXPECT_TRUE(table.GetTableError() == 0 || faults.happened());
            EXPECT_EQ(table.GetHeader(), same);
            EXPECT_EQ(table.GetNrRowsStored(), 0);
            if (table.GetTableError() == 0)
                return;
            // The header that is handed back makes a table later.
            const TCgatsTable later(table.ReleaseHeader());
            EXPECT_EQ(later.GetTableError(), 0);
        });
    }
}

// What is in a list of strings there is no memory for was "" in effect: the list of a column comes at once.
TEST_F(tableFaults, tableThatIsClassifiedWithoutMemory_hasError10) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        auto header = headerOf(columnsWith({}));
        ASSERT_EQ(header->Classify(), 0);
        faults.arm();
        const TCgatsTable table(header.release());
        faults.disarm();
        EXPECT_EQ(table.GetTableError(), faults.happened() ? 10 : 0);
    });
}

TEST_F(tableFaults, addRowWithoutMemory_answers10StoresNoRowAndWorksLater) {
    const char* const texts[] = {"1", "0.41", "0.4", "100", "50", "10", "-10", "20", "21", "22", "7"};
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgatsTable table(headerOf(columnsWith({})).release());
        ASSERT_EQ(table.GetTableError(), 0);
        faults.arm();
        const int answer = table.AddRow(texts);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 10 : 0);
        EXPECT_EQ(table.GetNrRowsStored(), faults.happened() ? 0 : 1);
        while (table.GetNrRowsStored() < 3)
            ASSERT_EQ(table.AddRow(texts), 0);
        EXPECT_STREQ(table.GetValues(0)->GetString(2), "1");
        EXPECT_EQ(table.GetValues(9)->GetDouble(0), 22.0);
        EXPECT_EQ(table.GetValues(10)->GetInt(0), 7);
    });
}

TEST_F(tableFaults, setNextValueWithoutMemory_answers10AndWorksLater) {
    for (const int column : {0, 1, 10}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            TCgatsTable table(headerOf(columnsWith({})).release());
            faults.arm();
            const int answer = table.SetNextValue(column, "12");
            faults.disarm();
            EXPECT_EQ(answer, faults.happened() ? 10 : 0);
            EXPECT_EQ(table.SetNextValue(column, "12"), 0);
            EXPECT_EQ(table.EndRow(), 0);
        });
    }
}

// Lists of values.

using valueListFaults = OnSubstitutePlatform;

// Every n-th allocation of a list that grows; what is in it stays.
template <class List>
void expectNotStoredWithoutMemory() {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        List list(100);
        std::vector<int> stored;
        stored.reserve(100);
        faults.arm();
        for (int i = 0; i < 100; ++i)
            if (list.SetValue(i, "12") != TCgatsValueList::kNotStored)
                stored.push_back(i);
        faults.disarm();
        EXPECT_EQ(stored.size() < 100, faults.happened());
        for (const int i : stored) {
            if (list.GetString(i) == nullptr) {
                EXPECT_EQ(list.GetDouble(i), 12.0);
            } else {
                EXPECT_STREQ(list.GetString(i), "12");
            }
        }
        for (int i = 0; i < 100; ++i)
            EXPECT_NE(list.SetValue(i, "13"), TCgatsValueList::kNotStored);
    });
}

TEST_F(valueListFaults, setValueWithoutMemory_isNotStoredAndIsStoredLater) {
    expectNotStoredWithoutMemory<TCgatsValueListDouble>();
    expectNotStoredWithoutMemory<TCgatsValueListInt>();
    expectNotStoredWithoutMemory<TCgatsValueListString>();
}

TEST_F(valueListFaults, replacedStringWithoutMemory_stays) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgatsValueListString list(2);
        ASSERT_NE(list.SetValue(1, "old"), TCgatsValueList::kNotStored);
        const char* const old = list.GetString(1);
        faults.arm();
        const std::intptr_t answer = list.SetValue(1, "new");
        faults.disarm();
        EXPECT_EQ(answer == TCgatsValueList::kNotStored, faults.happened());
        EXPECT_STREQ(list.GetString(1), faults.happened() ? "old" : "new");
        EXPECT_STREQ(old, "old");
    });
}

} // namespace
} // namespace qxcms::tests
