// Building, copying and writing documents when memory or platform fail.
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "cgats/tcgats.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"

namespace qxcms::tests {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::Pair;

// Names and values too long to be kept without an allocation.
const char* const kNames[] = {"the first of two samples, a long name",
                              "the second of two samples, a long name"};
const char* const kColorants[] = {"first", "second", "third", "fourth", "fifth, which has a long name"};
const double kRow[] = {0, 25, 50, 75, 100};
const double* const kRows[] = {kRow, kRow};
const double kWavelengths[] = {400, 500, 600};

using documentOutput = OnSubstitutePlatform;

std::unique_ptr<TCgats> wholeChart() {
    return std::make_unique<TCgats>(100.0, 0.0, 2, kNames, 5, kRows, kRows, kRows, kRows, 3, kWavelengths, 12,
                                    3, 4);
}

std::string textOf(const TCgats& document) {
    std::ostringstream stream;
    EXPECT_EQ(document.WriteToStream(stream), 0);
    return stream.str();
}

// Layout lines without memory are left out like those without a place; all else is whole or the document in
// error.
TEST_F(documentOutput, chartWithoutMemory_isInErrorOrWhole) {
    const auto build = [] {
        return TCgats(100.0, 0.0, 2, kNames, 5, kRows, kRows, kRows, kRows, 3, kWavelengths, 0, 0, 0);
    };
    const std::string whole = textOf(build());
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TCgats document = build();
        faults.disarm();
        EXPECT_THAT(document.GetErrorCode(), AnyOf(0, faults.happened() ? 1 : 0));
        if (document.GetErrorCode() == 0) {
            EXPECT_EQ(textOf(document), whole);
        }
    });
}

TEST_F(documentOutput, chartOfNamedColorantsWithoutMemory_isInErrorOrWhole) {
    const auto build = [] {
        return TCgats(100.0, 0.0, 2, 5, kColorants, kRows, nullptr, nullptr, nullptr, 0, nullptr, true);
    };
    const std::string whole = textOf(build());
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TCgats document = build();
        faults.disarm();
        EXPECT_THAT(document.GetErrorCode(), AnyOf(0, faults.happened() ? 1 : 0));
        if (document.GetErrorCode() == 0) {
            EXPECT_EQ(textOf(document), whole);
        }
    });
}

TEST_F(documentOutput, copyWithoutMemory_hasStatus1OrIsWhole) {
    const auto source = wholeChart();
    const std::string text = textOf(*source);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TCgats copy(source.get());
        faults.disarm();
        // Sorting does without its scratch memory.
        EXPECT_THAT(copy.GetErrorCode(), AnyOf(0, faults.happened() ? 1 : 0));
        if (copy.GetErrorCode() == 0) {
            EXPECT_EQ(textOf(copy), text);
        }
    });
}

TEST_F(documentOutput, chosenSamplesAndChannelsWithoutMemory_loseNothing) {
    const auto source = wholeChart();
    int samples[] = {1, 0, 1};
    int channels[] = {0, 1, 7};
    const std::string chosenText = textOf(TCgats(source.get(), samples, 3));
    const std::string mappedText = textOf(TCgats(source.get(), channels, 3, 50.0));
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TCgats chosen(source.get(), samples, 3);
        const TCgats mapped(source.get(), channels, 3, 50.0);
        faults.disarm();
        EXPECT_THAT(chosen.GetErrorCode(), AnyOf(0, 1));
        EXPECT_THAT(mapped.GetErrorCode(), AnyOf(0, 1));
        if (chosen.GetErrorCode() == 0) {
            EXPECT_EQ(textOf(chosen), chosenText);
        }
        if (mapped.GetErrorCode() == 0) {
            EXPECT_EQ(textOf(mapped), mappedText);
        }
    });
}

TEST_F(documentOutput, addedColumnsWithoutMemory_leaveTheTableWhole) {
    const TCgats whole(100.0, 0.0, 2, kNames, 5, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    const std::vector<std::string> names(2, "an entry of an ink book whose name is long");
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgats document(&whole);
        faults.arm();
        const int lab = document.AddLab(0, kRows);
        const int books = document.AddInkBookNames(0, names);
        faults.disarm();
        EXPECT_EQ(document.GetNrFields(0),
                  6 + (lab == 0 ? 3 : 0) + (document.ContainsInkBookNames(0) ? 1 : 0));
        EXPECT_THAT(lab, AnyOf(0, 1));
        EXPECT_THAT(books, AnyOf(0, 1));
        textOf(document);
        EXPECT_EQ(document.AddLab(0, kRows), 0);
        EXPECT_TRUE(document.ContainsLab(0));
    });
}

TEST_F(documentOutput, layoutWithoutMemory_isLeftOut) {
    forEveryFailingAllocation([](AllocationFaults& faults) {
        TCgats document;
        faults.arm();
        EXPECT_EQ(document.AddLayoutInfo(12, 2, 3, true, 1e200, 2.0, 3.0, 4.0, 5, 6, 7, 8), 0);
        faults.disarm();
        EXPECT_EQ(document.AddLayoutInfo(12, 2, 3, true, 1.0, 2.0, 3.0, 4.0, 5, 6, 7, 8), 0);
        EXPECT_EQ(document.GetNrTags(), 13);
    });
}

TEST_F(documentOutput, arrayWithoutMemory_givesCode1AndWhatThereIsTerminated) {
    const auto source = wholeChart();
    const std::string whole = textOf(*source);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        const TCgats document(source.get());
        char* text = nullptr;
        faults.arm();
        const int code = document.WriteToBuffer(&text);
        faults.disarm();
        const std::unique_ptr<char[]> owned(text);
        // Only the array needs memory; the writer does without.
        EXPECT_THAT(code, AnyOf(0, faults.happened() ? 1 : 0));
        EXPECT_EQ(document.GetErrorCode(), code);
        if (code == 0) {
            EXPECT_EQ(text, whole);
        } else if (text != nullptr) {
            EXPECT_EQ(whole.rfind(text, 0), 0U);
        }
    });
}

TEST_F(documentOutput, fileWithoutMemory_isNotSavedOrWhole) {
    const auto source = wholeChart();
    const std::string whole = textOf(*source);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        const TCgats document(source.get());
        faults.arm();
        const int code = document.SaveAs("chart.txt");
        faults.disarm();
        EXPECT_THAT(code, AnyOf(0, 1, 4));
        if (code == 0) {
            EXPECT_EQ(platform().files["chart.txt"], whole);
        }
        const AllocationTruce truce;
        platform() = SubstitutePlatform();
    });
}

TEST_F(documentOutput, fileThatCannotBeOpened_answers4WhichIsNotRecorded) {
    const auto document = wholeChart();
    platform().refusesToOpen = true;
    EXPECT_EQ(document->SaveAs("chart.txt"), 4);
    EXPECT_EQ(document->GetErrorCode(), 0);
    platform().refusesToOpen = false;
    EXPECT_EQ(document->SaveAs("chart.txt"), 0);
}

TEST_F(documentOutput, fileWhoseLastWritesAreLost_answers4WhichIsNotRecorded) {
    const auto document = wholeChart();
    platform().losesWritesOnClose = true;
    EXPECT_EQ(document->SaveAs("chart.txt"), 4);
    EXPECT_EQ(document->GetErrorCode(), 0);
}

TEST_F(documentOutput, fileName_isSpelledAsTheFileSystemHasIt) {
    platform().capitalisesNames = true;
    EXPECT_EQ(wholeChart()->SaveAs("chart.txt"), 0);
    EXPECT_THAT(platform().opened, ElementsAre(Pair("CHART.TXT", "w")));
}

TEST_F(documentOutput, fileNameThatCannotBeConverted_isUsedAsGiven) {
    platform().refusesNames = true;
    EXPECT_EQ(wholeChart()->SaveAs("chart.txt"), 0);
    platform().refusesNames = false;
    platform().emptiesNames = true;
    EXPECT_EQ(wholeChart()->SaveAs("chart.txt"), 0);
    EXPECT_THAT(platform().opened, ElementsAre(Pair("chart.txt", "w"), Pair("chart.txt", "w")));
}

TEST_F(documentOutput, layoutReplacedWithoutMemory_keepsTheOldLine) {
    const std::string columns[] = {"2", "1234567"};
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgats document;
        ASSERT_EQ(document.AddLayoutInfo(12, 2, 3, true, 1.0, 2.0, 3.0, 4.0, 5, 6, 7, 8), 0);
        faults.arm();
        EXPECT_EQ(document.AddLayoutInfo(13, 1234567, 4, true, 2.0, 3.0, 4.0, 5.0, 6, 7, 8, 9), 0);
        faults.disarm();
        ASSERT_EQ(document.GetNrTags(), 13);
        for (int i = 0; i < 13; ++i)
            ASSERT_NE(document.GetTagAt(i), nullptr) << i;
        EXPECT_THAT(document.GetRowLength(), AnyOf(12, 13));
        EXPECT_THAT(document.GetTag(33)->GetValue(), AnyOf(testing::StrEq("2"), testing::StrEq("1234567")));
        EXPECT_THAT(document.GetPatchHeight(), AnyOf(1.0, 2.0));
    });
}

// A stream into an array that is there already: writing itself needs no memory.
class FixedBuffer : public std::streambuf {
public:
    FixedBuffer() { setp(room, room + sizeof room); }
    std::string text() const { return std::string(pbase(), pptr()); }

private:
    char room[65536];
};

TEST_F(documentOutput, streamWithoutMemory_takesTheWholeText) {
    const auto source = wholeChart();
    const std::string whole = textOf(*source);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        FixedBuffer buffer;
        std::ostream stream(&buffer);
        faults.arm();
        const int code = source->WriteToStream(stream);
        faults.disarm();
        EXPECT_EQ(code, 0);
        EXPECT_EQ(buffer.text(), whole);
    });
}

// What was there stays, or what is put in its place is whole.
TEST_F(documentOutput, fileWithoutMemory_leavesTheOldOneOrTheWholeText) {
    const auto source = wholeChart();
    const std::string whole = textOf(*source);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        const TCgats document(source.get());
        {
            const AllocationTruce truce;
            platform().files["chart.txt"] = "the old text";
        }
        faults.arm();
        const int code = document.SaveAs("chart.txt");
        faults.disarm();
        const AllocationTruce truce;
        EXPECT_EQ(platform().files["chart.txt"], code == 0 ? whole : "the old text") << code;
        EXPECT_EQ(document.GetErrorCode(), 0);
        platform() = SubstitutePlatform();
    });
}

} // namespace
} // namespace qxcms::tests
