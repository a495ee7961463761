// Figures of the document reader that show at the edges of what it takes.
#include "cgats/tcgats.h"

#include <string>

#include <gtest/gtest.h>

namespace {

TEST(commentBlock, readCommentTag_takesBeginWithoutAName) {
    TCgats document;
    const std::string text = "a\nEND_\n";
    const char* position = text.c_str();
    EXPECT_EQ(document.ReadCommentTag("BEGIN_", &position), 0);
    EXPECT_STREQ(document.GetCommentBlock(0), "a\n");
}

TEST(commentBlock, readCommentTag_refusesLessThanBegin) {
    TCgats document;
    const std::string text = "a\nEND_\n";
    const char* position = text.c_str();
    EXPECT_EQ(document.ReadCommentTag("BEGIN", &position), 5);
    EXPECT_EQ(document.GetNrCommentBlocks(), 0);
}

} // namespace
