// The layout of a printed chart in the header of a document: which keywords are written, where, and what is
// read back.
#include <cfloat>
#include <climits>
#include <clocale>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

using Keywords = std::vector<std::string>;

// The arguments of AddLayoutInfo; at first every item is absent.
struct Layout {
    int rowLength = 0;
    int columns = 0;
    int strips = 0;
    bool vand = false;
    double patchHeight = 0.0;
    double patchWidth = 0.0;
    double gapY = -1.0;
    double gapX = -1.0;
    int borderPatches = 0;
    int device = -1;
    int inkSet = -1;
    int mirrorX = 0;

    int addTo(TCgats& document) const {
        return document.AddLayoutInfo(rowLength, columns, strips, vand, patchHeight, patchWidth, gapY, gapX,
                                      borderPatches, device, inkSet, mirrorX);
    }
};

// Every item is there.
Layout fullLayout() {
    Layout layout;
    layout.rowLength = 12;
    layout.columns = 34;
    layout.strips = 2;
    layout.vand = true;
    layout.patchHeight = 7.5;
    layout.patchWidth = 8.25;
    layout.gapY = 0.5;
    layout.gapX = 1.0;
    layout.borderPatches = 3;
    layout.device = 4;
    layout.inkSet = 5;
    layout.mirrorX = 1;
    return layout;
}

std::string written(const TCgats& document) {
    std::ostringstream stream;
    EXPECT_EQ(document.WriteToStream(stream), 0);
    return stream.str();
}

// The header lines that a layout makes in an empty document.
std::string linesOf(const Layout& layout) {
    TCgats document;
    EXPECT_EQ(layout.addTo(document), 0);
    return written(document);
}

// The value of the tag with that code, or "(absent)".
std::string valueOf(const TCgats& document, int code) {
    const TCgatsTag* tag = document.GetTag(code);
    return tag == nullptr ? "(absent)" : orAbsent(tag->GetValue());
}

int numberOfTags(const TCgats& document, int code) {
    int number = 0;
    for (int i = 0; i < document.GetNrTags(); ++i)
        number += document.GetTagAt(i)->GetCode() == code ? 1 : 0;
    return number;
}

// Fills the tag list up to that many tags.
void fillUpTo(TCgats& document, int count) {
    while (document.GetNrTags() < count)
        ASSERT_EQ(document.AddTag(-1, "FILLER", 0, "", ""), 0);
}

// ---- Which items are written, and how

TEST(chartLayout, everyItem_isWrittenInItsOrderWithItsText) {
    EXPECT_EQ(linesOf(fullLayout()), "LGOROWLENGTH\t12\n"
                                     "NUMBER_OF_STRIPS\t12\n"
                                     "NUMBER_OF_COLS\t34\n"
                                     "NumberOfStrips\t2\n"
                                     "LAYOUT_TYPE\t\"Vand\"\n"
                                     "PATCH_HEIGHT\t7.50000\n"
                                     "PATCH_WIDTH\t8.25000\n"
                                     "GAP_SIZE_X\t1.00000\n"
                                     "GAP_SIZE_Y\t0.50000\n"
                                     "BORDER_PATCHES\t3\n"
                                     "DEVICE\t4\n"
                                     "INKSET\t5\n"
                                     "MIRROR_X\t1\n");
}

TEST(chartLayout, everyTag_hasItsCodeItsNumericAndNoComment) {
    struct Expected {
        int code;
        const char* keyword;
        int numeric;
        const char* value;
    };
    const Expected expected[] = {
        {31, "LGOROWLENGTH", 1, "12"},
        {32, "NUMBER_OF_STRIPS", 1, "12"},
        {33, "NUMBER_OF_COLS", 1, "34"},
        {30, "NumberOfStrips", 1, "2"},
        {42, "LAYOUT_TYPE", 0, "Vand"},
        {36, "PATCH_HEIGHT", 2, "7.50000"},
        {37, "PATCH_WIDTH", 2, "8.25000"},
        {38, "GAP_SIZE_X", 2, "1.00000"},
        {39, "GAP_SIZE_Y", 2, "0.50000"},
        {34, "BORDER_PATCHES", 1, "3"},
        {35, "DEVICE", 1, "4"},
        {41, "INKSET", 1, "5"},
        {40, "MIRROR_X", 1, "1"},
    };
    TCgats document;
    ASSERT_EQ(fullLayout().addTo(document), 0);
    ASSERT_EQ(document.GetNrTags(), 13);
    for (int i = 0; i < 13; ++i) {
        const TCgatsTag& tag = *document.GetTagAt(i);
        SCOPED_TRACE(expected[i].keyword);
        EXPECT_EQ(tag.GetCode(), expected[i].code);
        EXPECT_STREQ(tag.GetKeyword(), expected[i].keyword);
        EXPECT_EQ(tag.GetNumeric(), expected[i].numeric);
        EXPECT_STREQ(tag.GetValue(), expected[i].value);
        EXPECT_STREQ(tag.GetComment(), "");
    }
}

TEST(chartLayout, absentItems_areNotWritten) {
    EXPECT_EQ(linesOf(Layout()), "");
}

TEST(chartLayout, rowLength_standsUnderTwoKeywords) {
    TCgats document;
    EXPECT_EQ(document.AddLayoutInfo(12, 1, 0, false, 0.0, 0.0, -1.0, -1.0, 0, -1, -1, 0), 0);
    EXPECT_EQ(written(document), "LGOROWLENGTH\t12\nNUMBER_OF_STRIPS\t12\n");
}

TEST(chartLayout, rowLengthAlone_leavesTheOthersAtTheirDefaults) {
    TCgats document;
    EXPECT_EQ(document.AddLayoutInfo(12, 1, 0, false, 0.0, 0.0, -1.0, -1.0, 0, -1, -1, 0), 0);
    EXPECT_EQ(document.GetRowLength(), 12);
    EXPECT_EQ(document.GetNrOfRows(), 12);
    EXPECT_EQ(document.GetNrOfCols(), 1);
    EXPECT_EQ(document.GetNrOfPages(), 1);
    EXPECT_EQ(document.GetGapSizeX(), -1.0);
    EXPECT_EQ(document.GetPatchHeight(), 0.0);
}

TEST(chartLayout, rowLength_isWrittenUnlessZero) {
    Layout layout;
    layout.rowLength = -3;
    EXPECT_EQ(linesOf(layout), "LGOROWLENGTH\t-3\nNUMBER_OF_STRIPS\t-3\n");
    layout.rowLength = INT_MIN;
    EXPECT_EQ(linesOf(layout), "LGOROWLENGTH\t-2147483648\nNUMBER_OF_STRIPS\t-2147483648\n");
    layout.rowLength = INT_MAX;
    EXPECT_EQ(linesOf(layout), "LGOROWLENGTH\t2147483647\nNUMBER_OF_STRIPS\t2147483647\n");
}

TEST(chartLayout, columns_areWrittenFromTwoOn) {
    Layout layout;
    for (const int absent : {1, 0, -5}) {
        layout.columns = absent;
        EXPECT_EQ(linesOf(layout), "") << absent;
    }
    layout.columns = 2;
    EXPECT_EQ(linesOf(layout), "NUMBER_OF_COLS\t2\n");
}

TEST(chartLayout, strips_areWrittenFromTwoOn) {
    Layout layout;
    for (const int absent : {1, 0, -5}) {
        layout.strips = absent;
        EXPECT_EQ(linesOf(layout), "") << absent;
    }
    layout.strips = 2;
    EXPECT_EQ(linesOf(layout), "NumberOfStrips\t2\n");
}

TEST(chartLayout, vandFlag_writesTheLayoutTypeInQuotes) {
    Layout layout;
    layout.vand = true;
    EXPECT_EQ(linesOf(layout), "LAYOUT_TYPE\t\"Vand\"\n");
}

TEST(chartLayout, patchSizes_areWrittenAboveZero) {
    Layout layout;
    for (const double absent : {0.0, -0.0, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        layout.patchHeight = layout.patchWidth = absent;
        EXPECT_EQ(linesOf(layout), "") << absent;
    }
    layout.patchHeight = 0.001;
    layout.patchWidth = 12.3456789;
    EXPECT_EQ(linesOf(layout), "PATCH_HEIGHT\t0.00100\nPATCH_WIDTH\t12.34568\n");
}

TEST(chartLayout, sizeBelowTheLastDigit_isWrittenAsZero) {
    Layout layout;
    layout.patchHeight = 1e-9;
    EXPECT_EQ(linesOf(layout), "PATCH_HEIGHT\t0.00000\n");
}

TEST(chartLayout, gaps_areWrittenFromZeroOn) {
    Layout layout;
    for (const double absent : {-1.0, -1e-300, std::numeric_limits<double>::quiet_NaN()}) {
        layout.gapX = layout.gapY = absent;
        EXPECT_EQ(linesOf(layout), "") << absent;
    }
    layout.gapX = layout.gapY = 0.0;
    EXPECT_EQ(linesOf(layout), "GAP_SIZE_X\t0.00000\nGAP_SIZE_Y\t0.00000\n");
}

TEST(chartLayout, verticalGap_comesBeforeTheHorizontalOneInTheCall) {
    TCgats document;
    EXPECT_EQ(document.AddLayoutInfo(0, 0, 0, false, 0.0, 0.0, 2.0, 3.0, 0, -1, -1, 0), 0);
    EXPECT_EQ(valueOf(document, 39), "2.00000");
    EXPECT_EQ(valueOf(document, 38), "3.00000");
    EXPECT_EQ(document.GetGapSizeY(), 2.0);
    EXPECT_EQ(document.GetGapSizeX(), 3.0);
}

TEST(chartLayout, borderPatches_areWrittenAboveZero) {
    Layout layout;
    for (const int absent : {0, -1}) {
        layout.borderPatches = absent;
        EXPECT_EQ(linesOf(layout), "") << absent;
    }
    layout.borderPatches = 1;
    EXPECT_EQ(linesOf(layout), "BORDER_PATCHES\t1\n");
}

TEST(chartLayout, deviceAndInkSet_areWrittenFromZeroOn) {
    Layout layout;
    layout.device = layout.inkSet = INT_MIN;
    EXPECT_EQ(linesOf(layout), "");
    layout.device = layout.inkSet = 0;
    EXPECT_EQ(linesOf(layout), "DEVICE\t0\nINKSET\t0\n");
}

TEST(chartLayout, mirroring_isWrittenFromOneOn) {
    Layout layout;
    for (const int absent : {0, -1}) {
        layout.mirrorX = absent;
        EXPECT_EQ(linesOf(layout), "") << absent;
    }
    layout.mirrorX = 1;
    EXPECT_EQ(linesOf(layout), "MIRROR_X\t1\n");
    layout.mirrorX = 7;
    EXPECT_EQ(linesOf(layout), "MIRROR_X\t7\n");
}

TEST(chartLayout, hugeSizes_areWrittenInFull) {
    Layout layout;
    layout.patchHeight = 1e22;
    layout.patchWidth = DBL_MAX;
    TCgats document;
    ASSERT_EQ(layout.addTo(document), 0);
    EXPECT_EQ(valueOf(document, 36), "10000000000000000000000.00000");
    const std::string width = valueOf(document, 37);
    EXPECT_EQ(width.size(), 315u);
    EXPECT_EQ(width.substr(0, 25), "1797693134862315708145274");
    EXPECT_EQ(width.substr(300), "124858368.00000");
    EXPECT_EQ(document.GetPatchWidth(), DBL_MAX);
}

TEST(chartLayout, theCommaOfALocale_isNotWritten) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "there is no German locale here";
    TCgats document;
    fullLayout().addTo(document);
    const std::string height = valueOf(document, 36);
    const double width = document.GetPatchWidth();
    std::setlocale(LC_NUMERIC, before.c_str());
    EXPECT_EQ(height, "7.50000");
    EXPECT_EQ(width, 8.25);
}

// ---- Where the items go

TEST(chartLayout, newItems_goRightBeforeTheFieldCount) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("CGATS.17\nNUMBER_OF_FIELDS 1\nAFTER x\n"), 0);
    Layout layout;
    layout.rowLength = 12;
    layout.columns = 34;
    ASSERT_EQ(layout.addTo(document), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"CGATS.17", "LGOROWLENGTH", "NUMBER_OF_STRIPS",
                                              "NUMBER_OF_COLS", "NUMBER_OF_FIELDS", "AFTER"}));
    EXPECT_EQ(valueOf(document, 3), "1");
}

TEST(chartLayout, newItems_withoutFieldCountGoToTheEnd) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("CGATS.17\nAFTER x\n"), 0);
    Layout layout;
    layout.rowLength = 12;
    ASSERT_EQ(layout.addTo(document), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"CGATS.17", "AFTER", "LGOROWLENGTH", "NUMBER_OF_STRIPS"}));
}

TEST(chartLayout, existingItems_areReplacedWhereTheyStand) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("CGATS.17\nNUMBER_OF_STRIPS \"8\" # eight\nBETWEEN x\n"
                                      "LGOROWLENGTH \"9\" # nine\nAFTER x\n"),
              0);
    Layout layout;
    layout.rowLength = 12;
    ASSERT_EQ(layout.addTo(document), 0);
    EXPECT_EQ(written(document), "CGATS.17\nNUMBER_OF_STRIPS\t12\nBETWEEN\tx\nLGOROWLENGTH\t12\nAFTER\tx\n");
}

TEST(chartLayout, existingItems_areReplacedBehindTheFieldCount) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("CGATS.17\nNUMBER_OF_FIELDS 1\nNUMBER_OF_COLS 5\nAFTER x\n"), 0);
    Layout layout;
    layout.columns = 34;
    ASSERT_EQ(layout.addTo(document), 0);
    EXPECT_EQ(written(document), "CGATS.17\nNUMBER_OF_FIELDS\t1\nNUMBER_OF_COLS\t34\nAFTER\tx\n");
}

TEST(chartLayout, existingItems_areReplacedOnAFullList) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("NUMBER_OF_FIELDS 1\nNUMBER_OF_COLS 5\n"), 0);
    fillUpTo(document, TCgats::kMaxTags);
    Layout layout;
    layout.columns = 34;
    EXPECT_EQ(layout.addTo(document), 0);
    EXPECT_EQ(document.GetNrTags(), TCgats::kMaxTags);
    EXPECT_EQ(document.FindTag(33), 1);
    EXPECT_EQ(valueOf(document, 33), "34");
    EXPECT_EQ(valueOf(document, 3), "1");
}

TEST(chartLayout, theFirstOfSeveralTags_isReplaced) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("INKSET 1\nINKSET 2\n"), 0);
    Layout layout;
    layout.inkSet = 9;
    ASSERT_EQ(layout.addTo(document), 0);
    EXPECT_EQ(written(document), "INKSET\t9\nINKSET\t2\n");
}

TEST(chartLayout, existingItems_outliveACallWithoutThem) {
    TCgats document;
    ASSERT_EQ(fullLayout().addTo(document), 0);
    const std::string before = written(document);
    ASSERT_EQ(Layout().addTo(document), 0);
    EXPECT_EQ(written(document), before);
}

TEST(chartLayout, secondCall_replacesWhatTheFirstWrote) {
    TCgats document;
    Layout layout;
    layout.rowLength = 12;
    ASSERT_EQ(layout.addTo(document), 0);
    layout.rowLength = 20;
    ASSERT_EQ(layout.addTo(document), 0);
    EXPECT_EQ(numberOfTags(document, 31), 1);
    EXPECT_EQ(numberOfTags(document, 32), 1);
    EXPECT_EQ(valueOf(document, 31), "20");
    EXPECT_EQ(valueOf(document, 32), "20");
    EXPECT_EQ(document.GetRowLength(), 20);
}

TEST(chartLayout, sameLayoutTwice_changesNothing) {
    TCgats document;
    ASSERT_EQ(fullLayout().addTo(document), 0);
    ASSERT_EQ(fullLayout().addTo(document), 0);
    EXPECT_EQ(written(document), linesOf(fullLayout()));
}

TEST(chartLayout, fullList_leavesNewItemsOut) {
    TCgats document;
    fillUpTo(document, TCgats::kMaxTags);
    EXPECT_EQ(fullLayout().addTo(document), 0);
    EXPECT_EQ(document.GetNrTags(), TCgats::kMaxTags);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_EQ(document.GetRowLength(), 1);
    EXPECT_FALSE(document.IsVandLayout());
}

TEST(chartLayout, lastPlace_isTakenByTheFirstItem) {
    TCgats document;
    fillUpTo(document, TCgats::kMaxTags - 1);
    EXPECT_EQ(fullLayout().addTo(document), 0);
    EXPECT_EQ(document.GetNrTags(), TCgats::kMaxTags);
    EXPECT_EQ(valueOf(document, 31), "12");
    EXPECT_EQ(valueOf(document, 32), "(absent)");
}

TEST(chartLayout, fullList_isNoReasonToLeaveOutALaterItemThatIsThere) {
    TCgats document;
    ASSERT_EQ(document.AddTag(40, "MIRROR_X", 1, "5", ""), 0);
    fillUpTo(document, TCgats::kMaxTags);
    EXPECT_EQ(fullLayout().addTo(document), 0);
    EXPECT_EQ(valueOf(document, 40), "1");
    EXPECT_EQ(valueOf(document, 31), "(absent)");
}

// ---- A document in error

TEST(chartLayout, documentInError_givesItsCodeAndTakesNothing) {
    for (const int code : {-1, 3, 18, 99}) {
        TCgats document;
        ASSERT_EQ(document.ReadFromBuffer("NUMBER_OF_COLS 5\n"), 0);
        document.SetErrorCode(code);
        EXPECT_EQ(fullLayout().addTo(document), code);
        EXPECT_EQ(document.GetErrorCode(), code);
        EXPECT_EQ(written(document), "NUMBER_OF_COLS\t5\n");
    }
}

TEST(chartLayout, documentInError_isStillAsked) {
    TCgats document;
    ASSERT_EQ(fullLayout().addTo(document), 0);
    document.SetErrorCode(3);
    EXPECT_EQ(document.GetRowLength(), 12);
    EXPECT_EQ(document.GetPatchHeight(), 7.5);
    EXPECT_TRUE(document.IsVandLayout());
}

// ---- Reading back

TEST(chartLayout, everyGetter_hasItsDefault) {
    const TCgats document;
    EXPECT_EQ(document.GetRowLength(), 1);
    EXPECT_EQ(document.GetNrOfRows(), 1);
    EXPECT_EQ(document.GetNrOfCols(), 1);
    EXPECT_EQ(document.GetNrOfPages(), 1);
    EXPECT_FALSE(document.IsVandLayout());
    EXPECT_EQ(document.GetPatchHeight(), 0.0);
    EXPECT_EQ(document.GetPatchWidth(), 0.0);
    EXPECT_EQ(document.GetGapSizeX(), -1.0);
    EXPECT_EQ(document.GetGapSizeY(), -1.0);
    EXPECT_EQ(document.GetInkSetNumber(), -1);
    EXPECT_EQ(document.GetIsMirroredX(), -1);
}

void expectFullLayout(const TCgats& document) {
    EXPECT_EQ(document.GetRowLength(), 12);
    EXPECT_EQ(document.GetNrOfRows(), 12);
    EXPECT_EQ(document.GetNrOfCols(), 34);
    EXPECT_EQ(document.GetNrOfPages(), 2);
    EXPECT_TRUE(document.IsVandLayout());
    EXPECT_EQ(document.GetPatchHeight(), 7.5);
    EXPECT_EQ(document.GetPatchWidth(), 8.25);
    EXPECT_EQ(document.GetGapSizeX(), 1.0);
    EXPECT_EQ(document.GetGapSizeY(), 0.5);
    EXPECT_EQ(document.GetInkSetNumber(), 5);
    EXPECT_EQ(document.GetIsMirroredX(), 1);
}

TEST(chartLayout, everyGetter_givesWhatWasAdded) {
    TCgats document;
    ASSERT_EQ(fullLayout().addTo(document), 0);
    expectFullLayout(document);
}

TEST(chartLayout, layout_outlivesWritingAndReading) {
    TCgats document;
    ASSERT_EQ(fullLayout().addTo(document), 0);
    const std::string text = written(document);
    const TCgats again(text.c_str(), 0);
    expectFullLayout(again);
    EXPECT_EQ(valueOf(again, 34), "3");
    EXPECT_EQ(valueOf(again, 35), "4");
}

TEST(chartLayout, numberOfRows_isTheRowLength) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("NUMBER_OF_STRIPS 8\nLGOROWLENGTH 5\n"), 0);
    EXPECT_EQ(document.GetRowLength(), 5);
    EXPECT_EQ(document.GetNrOfRows(), 5);
}

TEST(chartLayout, numberOfStrips_isTheRowLengthOfAFileWithoutOne) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("NUMBER_OF_STRIPS 8\n"), 0);
    EXPECT_EQ(document.GetRowLength(), 8);
    EXPECT_EQ(document.GetNrOfRows(), 8);
    EXPECT_EQ(document.GetNrOfPages(), 1);
}

TEST(chartLayout, pages_areReadFromTheKeywordInMixedCase) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("NumberOfStrips 3\n"), 0);
    EXPECT_EQ(document.GetNrOfPages(), 3);
    EXPECT_EQ(document.GetRowLength(), 1);
}

TEST(chartLayout, rowLengthThatIsNoNumber_isThereAllTheSame) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("LGOROWLENGTH many\nNUMBER_OF_STRIPS 8\n"), 0);
    EXPECT_EQ(document.GetRowLength(), 0);
    EXPECT_EQ(document.GetNrOfRows(), 0);
}

TEST(chartLayout, textThatIsNoNumber_givesZero) {
    for (const char* text : {"many", "", "-", ".", "\"", "x1"}) {
        SCOPED_TRACE(text);
        TCgats document;
        for (const int code : {30, 31, 33, 36, 37, 38, 39, 40, 41})
            ASSERT_EQ(document.AddTag(code, "K", 0, text, ""), 0);
        EXPECT_EQ(document.GetRowLength(), 0);
        EXPECT_EQ(document.GetNrOfRows(), 0);
        EXPECT_EQ(document.GetNrOfCols(), 0);
        EXPECT_EQ(document.GetNrOfPages(), 0);
        EXPECT_EQ(document.GetPatchHeight(), 0.0);
        EXPECT_EQ(document.GetPatchWidth(), 0.0);
        EXPECT_EQ(document.GetGapSizeX(), 0.0);
        EXPECT_EQ(document.GetGapSizeY(), 0.0);
        EXPECT_EQ(document.GetInkSetNumber(), 0);
        EXPECT_EQ(document.GetIsMirroredX(), 0);
    }
}

TEST(chartLayout, numberAtTheStartOfAText_counts) {
    TCgats document;
    ASSERT_EQ(document.AddTag(31, "LGOROWLENGTH", 0, " 12 patches", ""), 0);
    ASSERT_EQ(document.AddTag(33, "NUMBER_OF_COLS", 0, "3.9", ""), 0);
    ASSERT_EQ(document.AddTag(41, "INKSET", 0, "-7x", ""), 0);
    ASSERT_EQ(document.AddTag(36, "PATCH_HEIGHT", 0, "1.5mm", ""), 0);
    ASSERT_EQ(document.AddTag(37, "PATCH_WIDTH", 0, "2e1", ""), 0);
    ASSERT_EQ(document.AddTag(38, "GAP_SIZE_X", 0, "+.25", ""), 0);
    EXPECT_EQ(document.GetRowLength(), 12);
    EXPECT_EQ(document.GetNrOfCols(), 3);
    EXPECT_EQ(document.GetInkSetNumber(), -7);
    EXPECT_EQ(document.GetPatchHeight(), 1.5);
    EXPECT_EQ(document.GetPatchWidth(), 20.0);
    EXPECT_EQ(document.GetGapSizeX(), 0.25);
}

TEST(chartLayout, decimalComma_endsTheNumber) {
    TCgats document;
    ASSERT_EQ(document.AddTag(36, "PATCH_HEIGHT", 0, "1,5", ""), 0);
    EXPECT_EQ(document.GetPatchHeight(), 1.0);
}

TEST(chartLayout, theFirstTagOfACode_isRead) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("NUMBER_OF_COLS 5\nNUMBER_OF_COLS 6\nGAP_SIZE_Y 1.5\nGAP_SIZE_Y 2\n"),
              0);
    EXPECT_EQ(document.GetNrOfCols(), 5);
    EXPECT_EQ(document.GetGapSizeY(), 1.5);
}

TEST(chartLayout, keywordsInAnotherCase_areNoLayout) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("lgorowlength 5\nnumber_of_strips 6\nNUMBEROFSTRIPS 7\n"
                                      "layout_type \"Vand\"\npatch_height 8\n"),
              0);
    EXPECT_EQ(document.GetRowLength(), 1);
    EXPECT_EQ(document.GetNrOfPages(), 1);
    EXPECT_FALSE(document.IsVandLayout());
    EXPECT_EQ(document.GetPatchHeight(), 0.0);
}

TEST(chartLayout, layoutType_mustReadVandExactly) {
    for (const char* other : {"vand", "VAND", "Van", "Vands", " Vand", "Vand ", ""}) {
        TCgats document;
        ASSERT_EQ(document.AddTag(42, "LAYOUT_TYPE", 0, other, ""), 0);
        EXPECT_FALSE(document.IsVandLayout()) << '"' << other << '"';
    }
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("LAYOUT_TYPE Vand\n"), 0);
    EXPECT_TRUE(document.IsVandLayout());
}

TEST(chartLayout, firstLayoutType_decides) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("LAYOUT_TYPE other\nLAYOUT_TYPE Vand\n"), 0);
    EXPECT_FALSE(document.IsVandLayout());
}

TEST(chartLayout, vandFlag_overwritesAnotherLayoutType) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("LAYOUT_TYPE other\n"), 0);
    Layout layout;
    layout.vand = true;
    ASSERT_EQ(layout.addTo(document), 0);
    EXPECT_TRUE(document.IsVandLayout());
    EXPECT_EQ(document.GetNrTags(), 1);
}

TEST(chartLayout, tagWithoutKeyword_isNoVandLayout) {
    TCgats document;
    ASSERT_EQ(document.AddTag(42, "", 0, "Vand", ""), 0);
    EXPECT_FALSE(document.IsVandLayout());
}

// ---- Documents made from arrays

TEST(chartLayout, documentFromArrays_takesRowLengthColumnsAndStrips) {
    const double device[] = {0.0, 50.0, 100.0, 25.0};
    const double* const rows[] = {device};
    const TCgats document(100.0, 0.0, 1, 4, rows, nullptr, nullptr, nullptr, 0, nullptr, 12, 34, 2);
    ASSERT_EQ(document.GetErrorCode(), 0);
    Keywords keywords = keywordsOf(document);
    ASSERT_GE(keywords.size(), 5u);
    keywords.resize(5);
    EXPECT_EQ(keywords,
              (Keywords{"CGATS.17", "LGOROWLENGTH", "NUMBER_OF_STRIPS", "NUMBER_OF_COLS", "NumberOfStrips"}));
    EXPECT_EQ(document.GetRowLength(), 12);
    EXPECT_EQ(document.GetNrOfCols(), 34);
    EXPECT_EQ(document.GetNrOfPages(), 2);
    EXPECT_FALSE(document.IsVandLayout());
}

TEST(chartLayout, documentFromArrays_leavesAbsentItemsOut) {
    const double device[] = {0.0, 50.0, 100.0, 25.0};
    const double* const rows[] = {device};
    const TCgats document(100.0, 0.0, 1, 4, rows, nullptr, nullptr, nullptr, 0, nullptr, 12, 1, 0);
    EXPECT_EQ(valueOf(document, 31), "12");
    EXPECT_EQ(valueOf(document, 32), "12");
    for (const int code : {30, 33, 34, 35, 36, 37, 38, 39, 40, 41, 42})
        EXPECT_EQ(document.FindTag(code), -1) << code;
}

TEST(chartLayout, infiniteSizes_areWrittenByName) {
    TCgats document;
    const double infinite = std::numeric_limits<double>::infinity();
    ASSERT_EQ(document.AddLayoutInfo(0, 0, 0, false, infinite, -infinite, infinite, -infinite, 0, -1, -1, 0),
              0);
    EXPECT_EQ(written(document), "PATCH_HEIGHT\tinf\nGAP_SIZE_Y\tinf\n");
    EXPECT_EQ(document.GetPatchHeight(), infinite);
}

// Kept apart from "not there": a gap below the last digit is a gap.
TEST(chartLayout, gapBelowTheLastDigit_isZeroAndThere) {
    TCgats document;
    ASSERT_EQ(document.AddLayoutInfo(0, 0, 0, false, 0.0, 0.0, 4e-6, 5.1e-6, 0, -1, -1, 0), 0);
    EXPECT_EQ(written(document), "GAP_SIZE_X\t0.00001\nGAP_SIZE_Y\t0.00000\n");
    EXPECT_EQ(document.GetGapSizeY(), 0.0);
}

TEST(chartLayout, smallPatches_areWritten) {
    TCgats document;
    ASSERT_EQ(document.AddLayoutInfo(0, 0, 0, false, 0.05, 0.07, -1.0, -1.0, 0, -1, -1, 0), 0);
    EXPECT_EQ(written(document), "PATCH_HEIGHT\t0.05000\nPATCH_WIDTH\t0.07000\n");
}

} // namespace
} // namespace qxcms::tests
