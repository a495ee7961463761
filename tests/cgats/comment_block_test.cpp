// Comment blocks: the raw text between "BEGIN_" and "END_" of the same name.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

using Keywords = std::vector<std::string>;

std::string onlyBlock(const Reading& reading) {
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrCommentBlocks(), 1);
    return orAbsent(reading.document.GetCommentBlock(0));
}

// Reads up to the terminator of the only block of a text that holds nothing else.
std::string block(const std::string& text) {
    return onlyBlock(Reading(text));
}

TEST(commentBlock, keepsItsLinesRaw) {
    EXPECT_EQ(block("BEGIN_X\n a \"b\t# c\n\n  d\nEND_X\n"), " a \"b\t# c\n\n  d\n");
}

TEST(commentBlock, terminator_isAnOrdinaryTag) {
    const Reading reading("BEGIN_X\na\nEND_X 5 # note\nCREATED x\n");
    EXPECT_EQ(onlyBlock(reading), "a\n");
    EXPECT_EQ(keywordsOf(reading.document), (Keywords{"BEGIN_X", "END_X", "CREATED"}));
    const TCgatsTag& end = *reading.document.GetTagAt(1);
    EXPECT_EQ(end.GetCode(), -1);
    EXPECT_STREQ(end.GetValue(), "5");
    EXPECT_STREQ(end.GetComment(), " note");
}

TEST(commentBlock, openingLine_keepsItsValueAndComment) {
    const Reading reading("BEGIN_X some value # note\na\nEND_X\n");
    EXPECT_EQ(onlyBlock(reading), "a\n");
    const TCgatsTag& begin = *reading.document.GetTagAt(0);
    EXPECT_EQ(begin.GetCode(), -1);
    EXPECT_STREQ(begin.GetValue(), "somevalue");
    EXPECT_STREQ(begin.GetComment(), " note");
}

TEST(commentBlock, prefixAndTerminator_ignoreCase) {
    EXPECT_EQ(block("begin_Notes\na\nEnd_NOTES\n"), "a\n");
    EXPECT_EQ(block("Begin_X\na\nend_x"), "a\n");
}

TEST(commentBlock, dataKeywordsInLowerCase_openCommentBlocks) {
    EXPECT_EQ(block("begin_data\n1 2 3\nEND_DATA\n"), "1 2 3\n");
    EXPECT_EQ(block("Begin_Data_Format\nLAB_L\nEND_DATA_FORMAT\n"), "LAB_L\n");
}

TEST(commentBlock, otherKeywords_openNone) {
    const Reading reading("BEGIN\nBEGINX_A\nXBEGIN_A\nEND_X\n\"BEGIN_A\"\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrCommentBlocks(), 0);
    EXPECT_EQ(reading.document.GetNrTags(), 5);
}

TEST(commentBlock, prefixAlone_endsAtAnyEnd) {
    EXPECT_EQ(block("BEGIN_\na\nEND_Y\n"), "a\n");
}

TEST(commentBlock, terminator_isComparedOverItsOwnLength) {
    const Reading reading("BEGIN_X\na\nEND_XYZ\n");
    EXPECT_EQ(onlyBlock(reading), "a\n");
    EXPECT_EQ(keywordsOf(reading.document), (Keywords{"BEGIN_X", "END_XYZ"}));
}

TEST(commentBlock, terminator_standsAtTheStartOfALine) {
    EXPECT_EQ(block("BEGIN_X\n END_X\nx END_X\nEND_X\n"), " END_X\nx END_X\n");
    EXPECT_EQ(Reading("BEGIN_X\n END_X\n").code, 5);
}

TEST(commentBlock, otherTerminators_belongToTheBlock) {
    EXPECT_EQ(block("BEGIN_X\nEND_Y\nEND_DATA\nEND_\nEND_X\n"), "END_Y\nEND_DATA\nEND_\n");
}

TEST(commentBlock, keywordsInside_haveNoEffect) {
    const Reading reading("BEGIN_X\nx\nNUMBER_OF_SETS 5\nBEGIN_DATA\nBEGIN_Y\nKEYWORD a\nEND_X\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetDeclaredNrSets(), 0);
    EXPECT_EQ(reading.document.GetNrCustomFields(), 0);
    EXPECT_EQ(reading.document.GetNrTags(), 2);
}

TEST(commentBlock, longLines_areNoTokens) {
    const std::string line = repeated("z", 20000) + "\n";
    EXPECT_EQ(block("BEGIN_X\n" + line + "END_X\n"), line);
}

// ---- Line ends

TEST(commentBlock, carriageReturnsAndLineFeeds_stay) {
    // The opening line ends at its CR, so that the block starts with the LF.
    EXPECT_EQ(block("BEGIN_X\r\na\r\nEND_X\r\n"), "\na\r\n");
}

TEST(commentBlock, carriageReturnsAlone_endLines) {
    EXPECT_EQ(block("BEGIN_X\ra\rEND_X\r"), "a\r");
}

TEST(commentBlock, emptyBlockWithLineFeeds_isNotFound) {
    const Reading reading("BEGIN_X\nEND_X\n");
    EXPECT_EQ(reading.code, 5);
    EXPECT_EQ(reading.document.GetNrCommentBlocks(), 0);
}

TEST(commentBlock, emptyBlockWithCarriageReturns_isNotFound) {
    EXPECT_EQ(Reading("BEGIN_X\rEND_X\r").code, 5);
}

TEST(commentBlock, emptyBlockWithLineFeeds_reachesToTheNextTerminator) {
    EXPECT_EQ(block("BEGIN_X\nEND_X\nCREATED x\nEND_X\n"), "END_X\nCREATED x\n");
}

TEST(commentBlock, emptyBlockWithCarriageReturnAndLineFeed_holdsTheLineFeed) {
    EXPECT_EQ(block("BEGIN_X\r\nEND_X\r\n"), "\n");
}

TEST(commentBlock, blankLineInside_isEnoughForLineFeeds) {
    EXPECT_EQ(block("BEGIN_X\n\nEND_X\n"), "\n");
}

// ---- The end of the text

TEST(commentBlock, terminatorMayEndTheText) {
    const Reading reading("BEGIN_X\na\nEND_X");
    EXPECT_EQ(onlyBlock(reading), "a\n");
    EXPECT_EQ(keywordsOf(reading.document), (Keywords{"BEGIN_X", "END_X"}));
}

TEST(commentBlock, withoutTerminator_gives5) {
    for (const char* text : {"BEGIN_X", "BEGIN_X\n", "BEGIN_X\na", "BEGIN_X\na\n", "BEGIN_X\na\nEND_",
                             "BEGIN_X\r\n", "BEGIN_X\na\nEND_Y\n", "BEGIN_", "BEGIN_X\r"}) {
        const TCgats document(text, 0);
        EXPECT_EQ(document.GetErrorCode(), 5) << text;
        EXPECT_STREQ(document.GetErrorMessage(), "Error while reading comment tag.");
        EXPECT_EQ(document.GetNrCommentBlocks(), 0);
    }
}

TEST(commentBlock, refusedBlock_leavesWhatCameBefore) {
    const Reading reading("CREATED x\nBEGIN_X\na\nEND_X\nBEGIN_Y\nb\n");
    EXPECT_EQ(reading.code, 5);
    EXPECT_EQ(keywordsOf(reading.document), (Keywords{"CREATED", "BEGIN_X", "END_X"}));
    EXPECT_EQ(reading.document.GetNrCommentBlocks(), 1);
}

// ---- Several blocks

TEST(commentBlock, blocks_areKeptInOrder) {
    const Reading reading("BEGIN_X\na\nEND_X\nBEGIN_Y\nb\nEND_Y\nBEGIN_X\nc\nEND_X\n");
    EXPECT_EQ(reading.code, 0);
    ASSERT_EQ(reading.document.GetNrCommentBlocks(), 3);
    EXPECT_STREQ(reading.document.GetCommentBlock(0), "a\n");
    EXPECT_STREQ(reading.document.GetCommentBlock(1), "b\n");
    EXPECT_STREQ(reading.document.GetCommentBlock(2), "c\n");
}

TEST(commentBlock, documents_hold128) {
    for (const int count : {127, 128}) {
        const Reading reading(repeated("BEGIN_X\na\nEND_X\n", count));
        EXPECT_EQ(reading.code, 0);
        EXPECT_EQ(reading.document.GetNrCommentBlocks(), count);
        EXPECT_EQ(reading.document.GetNrTags(), 128); // two of each block, as far as they go
    }
}

TEST(commentBlock, the129th_gives5) {
    const Reading reading(repeated("BEGIN_X\na\nEND_X\n", 129));
    EXPECT_EQ(reading.code, 5);
    EXPECT_EQ(reading.document.GetNrCommentBlocks(), 128);
    EXPECT_STREQ(reading.document.GetCommentBlock(127), "a\n");
}

TEST(commentBlock, longestKeyword_hasATerminatorOfItsOwn) {
    const std::string name = repeated("N", 250);
    EXPECT_EQ(block("BEGIN_" + name + "\na\nEND_" + repeated("N", 249) + "\nEND_" + name + "\n"),
              "a\nEND_" + repeated("N", 249) + "\n");
}

// ---- The block reader by itself

TEST(commentBlock, readCommentTag_movesToTheTerminatorLine) {
    TCgats document;
    const std::string text = "a\nb\nEND_X\n";
    const char* position = text.c_str();
    EXPECT_EQ(document.ReadCommentTag("BEGIN_X", &position), 0);
    EXPECT_EQ(position - text.c_str(), 4);
    EXPECT_STREQ(document.GetCommentBlock(0), "a\nb\n");
    EXPECT_EQ(document.GetErrorCode(), 0);
}

TEST(commentBlock, readCommentTag_refusesTheEndOfTheText) {
    TCgats document;
    const char* position = "a\nb\n";
    EXPECT_EQ(document.ReadCommentTag("BEGIN_X", &position), 5);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_EQ(document.GetNrCommentBlocks(), 0);
}

TEST(commentBlock, readCommentTag_dropsSixCharactersOfItsKeyword) {
    TCgats document;
    const std::string text = "a\nEND_\n";
    for (const char* keyword : {"", "BEGIN"}) {
        const char* position = text.c_str();
        EXPECT_EQ(document.ReadCommentTag(keyword, &position), 5) << keyword;
        EXPECT_EQ(position, text.c_str());
    }
    EXPECT_EQ(document.GetNrCommentBlocks(), 0);
    const char* position = text.c_str();
    EXPECT_EQ(document.ReadCommentTag("BEGIN_", &position), 0);
    EXPECT_STREQ(document.GetCommentBlock(0), "a\n");
}

TEST(commentBlock, readCommentTag_gives2ForNull) {
    TCgats document;
    const char* position = "a\nEND_X\n";
    const char* nowhere = nullptr;
    EXPECT_EQ(document.ReadCommentTag(nullptr, &position), 2);
    EXPECT_EQ(document.ReadCommentTag("BEGIN_X", nullptr), 2);
    EXPECT_EQ(document.ReadCommentTag("BEGIN_X", &nowhere), 2);
    EXPECT_EQ(document.GetNrCommentBlocks(), 0);
}

} // namespace
} // namespace qxcms::tests
