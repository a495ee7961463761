// Header lines: how a line is cut into keyword, value and comment.
#include <cctype>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

// One call of the tokeniser, on buffers of exactly the size it asks for.
struct Token {
    explicit Token(const std::string& text) {
        const auto keywordBuffer = std::make_unique<char[]>(TCgats::kMaxKeyword + 1);
        const auto valueBuffer = std::make_unique<char[]>(TCgats::kMaxValue + 1);
        const auto commentBuffer = std::make_unique<char[]>(TCgats::kMaxComment + 1);
        const char* position = nullptr;
        const TCgats document;
        result = document.ReadNextTag(text.c_str(), keywordBuffer.get(), valueBuffer.get(),
                                      commentBuffer.get(), &code, &numeric, &position);
        if (result < 0)
            return;
        keyword = keywordBuffer.get();
        value = valueBuffer.get();
        comment = commentBuffer.get();
        next = position - text.c_str();
    }

    int result = -9;
    int code = -9;
    int numeric = -9;
    std::string keyword, value, comment;
    std::ptrdiff_t next = -9;
};

// The first line of a text, which must not end with the text.
struct Line : Token {
    explicit Line(const std::string& text) : Token(text + "\nNEXT\n") {
        EXPECT_EQ(result, 0) << text;
        EXPECT_EQ(next, static_cast<std::ptrdiff_t>(text.size()) + 1) << text;
    }
};

// ---- Quoted values

TEST(cgatsTokeniser, quotedValue_keepsItsBlanks) {
    const Line line("ORIGINATOR \"my tool\"");
    EXPECT_EQ(line.keyword, "ORIGINATOR");
    EXPECT_EQ(line.code, 0);
    EXPECT_EQ(line.value, "my tool");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(line.comment, "");
}

TEST(cgatsTokeniser, quotedValue_keepsTabsAndOuterBlanks) {
    EXPECT_EQ(Line("CREATED \" \ta\t b \"").value, " \ta\t b ");
}

TEST(cgatsTokeniser, quotedValue_endsAtTheNextQuote) {
    const Line line("CREATED \"a b\"c \"d\"");
    EXPECT_EQ(line.value, "a b");
    EXPECT_EQ(line.comment, "");
    EXPECT_EQ(line.numeric, 0);
}

TEST(cgatsTokeniser, behindAQuotedValue_aCommentMayFollow) {
    const Line line("CREATED \"a b\" junk # note");
    EXPECT_EQ(line.value, "a b");
    EXPECT_EQ(line.comment, " note");
}

TEST(cgatsTokeniser, emptyQuotedValue_isEmptyAndNotNumeric) {
    const Line line("CREATED \"\" x");
    EXPECT_EQ(line.value, "");
    EXPECT_EQ(line.numeric, 0);
}

TEST(cgatsTokeniser, unterminatedQuotedValue_endsAtTheLineEnd) {
    const Line line("CREATED \"a b ");
    EXPECT_EQ(line.value, "a b ");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(Token("CREATED \"a b\rNEXT").value, "a b");
}

TEST(cgatsTokeniser, loneQuote_isAnEmptyValue) {
    const Line line("CREATED \"");
    EXPECT_EQ(line.value, "");
    EXPECT_EQ(line.numeric, 0);
}

TEST(cgatsTokeniser, quotedNumber_isNotNumeric) {
    const Line line("NUMBER_OF_SETS \"24\"");
    EXPECT_EQ(line.value, "24");
    EXPECT_EQ(line.numeric, 0);
}

// ---- Bare values

TEST(cgatsTokeniser, bareValue_losesItsBlanks) {
    const Line line("ORIGINATOR my tool");
    EXPECT_EQ(line.keyword, "ORIGINATOR");
    EXPECT_EQ(line.value, "mytool");
    EXPECT_EQ(line.numeric, 1);
}

TEST(cgatsTokeniser, bareValue_losesTabsToo) {
    const Line line("ORIGINATOR\t \tmy\t own \t tool \t");
    EXPECT_EQ(line.value, "myowntool");
    EXPECT_EQ(line.numeric, 1);
}

TEST(cgatsTokeniser, bareValue_isNumericWhateverItHolds) {
    EXPECT_EQ(Line("CREATED x").numeric, 1);
    EXPECT_EQ(Line("CREATED 'x'").numeric, 1);
    EXPECT_EQ(Line("CREATED \x01\xff").value, "\x01\xff");
}

TEST(cgatsTokeniser, quoteInMidWord_endsABareValue) {
    const Line line("ORIGINATOR my\"tool and more");
    EXPECT_EQ(line.value, "my");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(line.comment, "");
}

TEST(cgatsTokeniser, quoteInMidWord_leavesTheCommentBehind) {
    const Line line("ORIGINATOR my\"tool # note");
    EXPECT_EQ(line.value, "my");
    EXPECT_EQ(line.comment, " note");
}

TEST(cgatsTokeniser, quoteAtTheEndOfAWord_clearsNumeric) {
    const Line line("PATCH_WIDTH 5\"");
    EXPECT_EQ(line.value, "5");
    EXPECT_EQ(line.numeric, 0);
}

TEST(cgatsTokeniser, quoteAfterABlank_startsAQuotedStretch) {
    const Line line("ORIGINATOR my \"own tool\" rest");
    EXPECT_EQ(line.value, "myown tool");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(line.comment, "");
}

TEST(cgatsTokeniser, quoteAfterATab_startsAQuotedStretch) {
    const Line line("ORIGINATOR a b\t\" c \"d # note");
    EXPECT_EQ(line.value, "ab c ");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(line.comment, " note");
}

TEST(cgatsTokeniser, quotedStretchWithoutEnd_endsAtTheLineEnd) {
    const Line line("ORIGINATOR my \"own tool");
    EXPECT_EQ(line.value, "myown tool");
    EXPECT_EQ(line.numeric, 0);
}

TEST(cgatsTokeniser, emptyQuotedStretch_onlyClearsNumeric) {
    const Line line("ORIGINATOR my \"\" tool");
    EXPECT_EQ(line.value, "my");
    EXPECT_EQ(line.numeric, 0);
}

TEST(cgatsTokeniser, hashInAQuotedStretch_endsTheValue) {
    const Line line("ORIGINATOR my \"own # note");
    EXPECT_EQ(line.value, "myown ");
    EXPECT_EQ(line.comment, " note");
    EXPECT_EQ(line.numeric, 0);
}

// ---- Keyword

TEST(cgatsTokeniser, leadingBlanks_areSkipped) {
    const Line line(" \t ORIGINATOR x");
    EXPECT_EQ(line.keyword, "ORIGINATOR");
    EXPECT_EQ(line.code, 0);
}

TEST(cgatsTokeniser, keyword_endsAtABlankOrATab) {
    EXPECT_EQ(Line("A B").keyword, "A");
    EXPECT_EQ(Line("A\tB").keyword, "A");
}

TEST(cgatsTokeniser, quotes_belongToTheKeyword) {
    const Line line("\"CREATED\" x");
    EXPECT_EQ(line.keyword, "\"CREATED\"");
    EXPECT_EQ(line.code, -1);
    EXPECT_EQ(line.value, "x");
    EXPECT_EQ(Line("\"A B\"").keyword, "\"A");
    EXPECT_EQ(Line("\"A B\"").value, "B");
    EXPECT_EQ(Line("CREATED\"x y\"").keyword, "CREATED\"x");
}

TEST(cgatsTokeniser, controlCharacters_belongToTheKeyword) {
    EXPECT_EQ(Line("A\v\f\x01\xff\x7f B").keyword, "A\v\f\x01\xff\x7f");
}

TEST(cgatsTokeniser, keywordCode_countsCase) {
    EXPECT_EQ(Line("CREATED x").code, 2);
    EXPECT_EQ(Line("created x").code, -1);
    EXPECT_EQ(Line("NumberOfStrips 3").code, 30);
    EXPECT_EQ(Line("NUMBEROFSTRIPS 3").code, -1);
    EXPECT_EQ(Line("CREATED_ x").code, -1);
}

TEST(cgatsTokeniser, keywordAlone_hasNoValueAndIsNotNumeric) {
    for (const char* text : {"CREATED", "CREATED ", "CREATED \t "}) {
        const Line line(text);
        EXPECT_EQ(line.keyword, "CREATED");
        EXPECT_EQ(line.code, 2);
        EXPECT_EQ(line.value, "");
        EXPECT_EQ(line.numeric, 0);
        EXPECT_EQ(line.comment, "");
    }
}

// ---- Comments

TEST(cgatsTokeniser, comment_keepsItsLeadingBlank) {
    EXPECT_EQ(Line("CREATED x # text").comment, " text");
    EXPECT_EQ(Line("# text").comment, " text");
}

TEST(cgatsTokeniser, comment_keepsEverythingToTheLineEnd) {
    EXPECT_EQ(Line("CREATED x #a # \"b\" \t").comment, "a # \"b\" \t");
}

TEST(cgatsTokeniser, hash_endsAKeyword) {
    const Line line("CREATED#note");
    EXPECT_EQ(line.keyword, "CREATED");
    EXPECT_EQ(line.code, 2);
    EXPECT_EQ(line.value, "");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(line.comment, "note");
}

TEST(cgatsTokeniser, hashBehindTheKeyword_leavesAnEmptyValue) {
    const Line line("CREATED #note");
    EXPECT_EQ(line.value, "");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(line.comment, "note");
}

TEST(cgatsTokeniser, hash_endsABareValue) {
    const Line line("CREATED a b#c d");
    EXPECT_EQ(line.value, "ab");
    EXPECT_EQ(line.numeric, 1);
    EXPECT_EQ(line.comment, "c d");
}

TEST(cgatsTokeniser, hashInAQuotedValue_endsItAndDropsTheClosingQuote) {
    const Line line("CREATED \"a#b\"");
    EXPECT_EQ(line.value, "a");
    EXPECT_EQ(line.comment, "b");
    EXPECT_EQ(line.numeric, 0);
}

TEST(cgatsTokeniser, hashInAQuotedValue_dropsOnlyTheFirstQuoteBehindIt) {
    EXPECT_EQ(Line("CREATED \"a#b\" c").comment, "b c");
    EXPECT_EQ(Line("CREATED \"a#b\"c\"d").comment, "bc\"d");
    EXPECT_EQ(Line("CREATED \"a#\"\"").comment, "\"");
    EXPECT_EQ(Line("CREATED \"a#b\"#c").comment, "b#c");
}

TEST(cgatsTokeniser, hashInAQuotedStretchOfABareValue_dropsTheFirstQuoteToo) {
    const Line line("CREATED a \"b c#d\"e\"f");
    EXPECT_EQ(line.value, "ab c");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(line.comment, "de\"f");
}

TEST(cgatsTokeniser, hashInAnUnterminatedQuotedValue_startsTheComment) {
    const Line line("CREATED \"a # b");
    EXPECT_EQ(line.value, "a ");
    EXPECT_EQ(line.comment, " b");
}

TEST(cgatsTokeniser, hashRightBehindTheOpeningQuote_leavesAnEmptyValue) {
    const Line line("CREATED \"#b\"");
    EXPECT_EQ(line.value, "");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(line.comment, "b");
}

TEST(cgatsTokeniser, quotesInAnyOtherComment_stay) {
    EXPECT_EQ(Line("CREATED \"a\" #b\"c").comment, "b\"c");
    EXPECT_EQ(Line("CREATED \"a\"#\"b\"").comment, "\"b\"");
    EXPECT_EQ(Line("CREATED a#b\"c").comment, "b\"c");
    EXPECT_EQ(Line("CREATED a\"b#c\"d").comment, "c\"d");
    EXPECT_EQ(Line("CREATED a \"b\" #c\"d").comment, "c\"d");
    EXPECT_EQ(Line("CREATED #\"b\"").comment, "\"b\"");
    EXPECT_EQ(Line("#\"b\"").comment, "\"b\"");
}

TEST(cgatsTokeniser, quotesBehindAHashInAKeyword_stay) {
    const Line line("\"a#b\"");
    EXPECT_EQ(line.keyword, "\"a");
    EXPECT_EQ(line.comment, "b\"");
}

TEST(cgatsTokeniser, emptyComment_isEmpty) {
    const Line line("CREATED x #");
    EXPECT_EQ(line.value, "x");
    EXPECT_EQ(line.comment, "");
}

TEST(cgatsTokeniser, commentOnlyLine_hasNoKeyword) {
    const Line line("  \t# a note");
    EXPECT_EQ(line.keyword, "");
    EXPECT_EQ(line.code, -1);
    EXPECT_EQ(line.value, "");
    EXPECT_EQ(line.numeric, 0);
    EXPECT_EQ(line.comment, " a note");
}

TEST(cgatsTokeniser, commentOfBlanks_isAComment) {
    EXPECT_EQ(Line("# ").comment, " ");
}

TEST(cgatsTokeniser, loneHash_isSkippedLikeABlankLine) {
    const Token token("#\n \t#\r\nCREATED x\n");
    EXPECT_EQ(token.result, 0);
    EXPECT_EQ(token.keyword, "CREATED");
    EXPECT_EQ(token.comment, "");
}

TEST(cgatsTokeniser, loneHashAsLastLine_isTheEnd) {
    for (const char* text : {"#", " #", "#\n", "\n#"}) {
        const Token token(text);
        EXPECT_EQ(token.result, 1);
        EXPECT_EQ(token.keyword, "");
        EXPECT_EQ(token.comment, "");
    }
}

// ---- Line ends and the end of the text

TEST(cgatsTokeniser, lineFeed_endsALine) {
    const Token token("A x\nB");
    EXPECT_EQ(token.result, 0);
    EXPECT_EQ(token.value, "x");
    EXPECT_EQ(token.next, 4);
}

TEST(cgatsTokeniser, carriageReturn_endsALine) {
    const Token token("A x\rB");
    EXPECT_EQ(token.result, 0);
    EXPECT_EQ(token.value, "x");
    EXPECT_EQ(token.next, 4);
}

TEST(cgatsTokeniser, carriageReturnAndLineFeed_endTheLineAtTheFirst) {
    const Token token("A x\r\nB");
    EXPECT_EQ(token.result, 0);
    EXPECT_EQ(token.value, "x");
    EXPECT_EQ(token.next, 4);
}

TEST(cgatsTokeniser, blankLines_areSkipped) {
    const Token token("\n\r\r\n  \t \n\t\rA x\n");
    EXPECT_EQ(token.result, 0);
    EXPECT_EQ(token.keyword, "A");
    EXPECT_EQ(token.next, 15);
}

TEST(cgatsTokeniser, endOfTheText_belongsToTheLineThatEndsWithIt) {
    struct Case {
        const char* text;
        const char* keyword;
        const char* value;
        const char* comment;
    };
    const Case cases[] = {
        {"A", "A", "", ""},
        {"A ", "A", "", ""},
        {"A x", "A", "x", ""},
        {"A x ", "A", "x", ""},
        {"A x y", "A", "xy", ""},
        {"A \"", "A", "", ""},
        {"A \"x ", "A", "x ", ""},
        {"A \"x\"", "A", "x", ""},
        {"A \"x\" y", "A", "x", ""},
        {"A x \"y", "A", "xy", ""},
        {"A x \"y\"", "A", "xy", ""},
        {"A x\"", "A", "x", ""},
        {"A x\"y", "A", "x", ""},
        {"A#", "A", "", ""},
        {"A#c", "A", "", "c"},
        {"A x#", "A", "x", ""},
        {"A x#c", "A", "x", "c"},
        {"A \"x#c", "A", "x", "c"},
        {"A \"x#c\"", "A", "x", "c"},
        {"# c", "", "", " c"},
        {"", "", "", ""},
        {" \t", "", "", ""},
        {"#", "", "", ""},
    };
    for (const Case& expected : cases) {
        const Token token(expected.text);
        EXPECT_EQ(token.result, 1) << expected.text;
        EXPECT_EQ(token.keyword, expected.keyword) << expected.text;
        EXPECT_EQ(token.value, expected.value) << expected.text;
        EXPECT_EQ(token.comment, expected.comment) << expected.text;
        EXPECT_EQ(token.next, static_cast<std::ptrdiff_t>(std::string(expected.text).size()))
            << expected.text;
    }
}

TEST(cgatsTokeniser, lineEndBeforeTheEnd_isNotTheEnd) {
    EXPECT_EQ(Token("A\n").result, 0);
    EXPECT_EQ(Token("A\r").result, 0);
    EXPECT_EQ(Token("# c\n").result, 0);
}

TEST(cgatsTokeniser, onlyBlankLines_areTheEnd) {
    for (const char* text : {"\n", "\r\n", " \n\t\r"}) {
        const Token token(text);
        EXPECT_EQ(token.result, 1);
        EXPECT_EQ(token.keyword, "");
        EXPECT_EQ(token.code, -1);
    }
}

// ---- Limits: one below, at, one above

TEST(cgatsTokeniser, keywords_holdUpTo256Characters) {
    for (const int length : {255, 256}) {
        const Line line(repeated("K", length) + " x");
        EXPECT_EQ(line.keyword, repeated("K", length));
        EXPECT_EQ(line.value, "x");
    }
    EXPECT_EQ(Token(repeated("K", 257) + " x\n").result, -1);
}

TEST(cgatsTokeniser, keywordsAtTheLimit_mayEndTheText) {
    EXPECT_EQ(Token(repeated("K", 256)).result, 1);
    EXPECT_EQ(Token(repeated("K", 256) + "#").result, 1);
    EXPECT_EQ(Token(repeated("K", 257)).result, -1);
}

TEST(cgatsTokeniser, bareValues_holdUpTo4096Characters) {
    for (const int length : {4095, 4096}) {
        const Line line("A " + repeated("v", length));
        EXPECT_EQ(line.value, repeated("v", length));
        EXPECT_EQ(line.numeric, 1);
    }
    EXPECT_EQ(Token("A " + repeated("v", 4097) + "\n").result, -1);
    EXPECT_EQ(Token("A " + repeated("v", 4097)).result, -1);
}

TEST(cgatsTokeniser, quotedValues_holdUpTo4096Characters) {
    for (const int length : {4095, 4096})
        EXPECT_EQ(Line("A \"" + repeated(" ", length) + "\"").value, repeated(" ", length));
    EXPECT_EQ(Token("A \"" + repeated(" ", 4097) + "\"\n").result, -1);
    EXPECT_EQ(Token("A \"" + repeated("v", 4097)).result, -1);
}

TEST(cgatsTokeniser, quotedStretches_countWithTheValue) {
    EXPECT_EQ(Line("A v \"" + repeated("w", 4095) + "\"").value, "v" + repeated("w", 4095));
    EXPECT_EQ(Token("A v \"" + repeated("w", 4096) + "\"\n").result, -1);
}

TEST(cgatsTokeniser, droppedCharacters_doNotCountAgainstTheValue) {
    EXPECT_EQ(Line("A " + repeated("v \t", 4096)).value, repeated("v", 4096));
    EXPECT_EQ(Line("A \"" + repeated("v", 4096) + "\"" + repeated("w", 5000)).value, repeated("v", 4096));
    EXPECT_EQ(Line("A " + repeated("v", 4096) + "\"" + repeated("w", 5000)).value, repeated("v", 4096));
    EXPECT_EQ(Line("A" + repeated(" ", 5000) + "v").value, "v");
    EXPECT_EQ(Line(repeated(" ", 5000) + "A").keyword, "A");
}

TEST(cgatsTokeniser, comments_holdUpTo512Characters) {
    for (const int length : {511, 512}) {
        EXPECT_EQ(Line("A x#" + repeated("c", length)).comment, repeated("c", length));
        EXPECT_EQ(Line("#" + repeated("c", length)).comment, repeated("c", length));
    }
    EXPECT_EQ(Token("A x#" + repeated("c", 513) + "\n").result, -1);
    EXPECT_EQ(Token("#" + repeated("c", 513) + "\n").result, -1);
    EXPECT_EQ(Token("#" + repeated("c", 513)).result, -1);
    EXPECT_EQ(Token("A#" + repeated("c", 513)).result, -1);
}

TEST(cgatsTokeniser, droppedQuote_doesNotCountAgainstTheComment) {
    EXPECT_EQ(Line("A \"x#" + repeated("c", 512) + "\"").comment, repeated("c", 512));
    EXPECT_EQ(Line("A \"x#c\"" + repeated("c", 511)).comment, repeated("c", 512));
    EXPECT_EQ(Token("A \"x#c\"" + repeated("c", 512) + "\n").result, -1);
    EXPECT_EQ(Token("A \"x#" + repeated("c", 512) + "\"\"\n").result, -1);
}

TEST(cgatsTokeniser, allLimitsTogether_areAccepted) {
    const Line line(repeated("K", 256) + " \"" + repeated("v", 4096) + "\" #" + repeated("c", 512));
    EXPECT_EQ(line.keyword.size(), 256u);
    EXPECT_EQ(line.value.size(), 4096u);
    EXPECT_EQ(line.comment.size(), 512u);
}

TEST(cgatsTokeniser, absentArguments_give2) {
    const TCgats document;
    char keyword[TCgats::kMaxKeyword + 1];
    char value[TCgats::kMaxValue + 1];
    char comment[TCgats::kMaxComment + 1];
    int code = 0;
    int numeric = 0;
    const char* next = nullptr;
    EXPECT_EQ(document.ReadNextTag(nullptr, keyword, value, comment, &code, &numeric, &next), 2);
    EXPECT_EQ(document.ReadNextTag("A", nullptr, value, comment, &code, &numeric, &next), 2);
    EXPECT_EQ(document.ReadNextTag("A", keyword, nullptr, comment, &code, &numeric, &next), 2);
    EXPECT_EQ(document.ReadNextTag("A", keyword, value, nullptr, &code, &numeric, &next), 2);
    EXPECT_EQ(document.ReadNextTag("A", keyword, value, comment, nullptr, &numeric, &next), 2);
    EXPECT_EQ(document.ReadNextTag("A", keyword, value, comment, &code, nullptr, &next), 2);
    EXPECT_EQ(document.ReadNextTag("A", keyword, value, comment, &code, &numeric, nullptr), 2);
}

// ---- A second way of cutting lines: whole lines first, then each line by searching in it.

struct ExpectedTag {
    std::string keyword = "";
    std::string value = "";
    std::string comment = "";
    int numeric = 0;
    bool endsWithText = false;
    bool commentIsSettled = true; // not when "#" stands in a quoted stretch of a bare value
};

constexpr char kBlanks[] = " \t";

std::string withoutBlanks(const std::string& text) {
    std::string rest;
    for (const char character : text)
        if (character != ' ' && character != '\t')
            rest += character;
    return rest;
}

ExpectedTag cutLine(const std::string& line) {
    ExpectedTag tag;
    const std::size_t hash = line.find('#');
    const std::string body = line.substr(0, hash);
    if (hash != std::string::npos)
        tag.comment = line.substr(hash + 1);
    const std::size_t start = body.find_first_not_of(kBlanks);
    if (start == std::string::npos)
        return tag;
    const std::size_t end = body.find_first_of(kBlanks, start);
    tag.keyword = body.substr(start, end - start);
    const std::size_t valueStart = end == std::string::npos ? end : body.find_first_not_of(kBlanks, end);
    if (valueStart == std::string::npos)
        return tag;
    const std::string rest = body.substr(valueStart);
    const std::size_t open = rest.find('"');
    if (open == std::string::npos) {
        tag.value = withoutBlanks(rest);
        tag.numeric = 1;
        return tag;
    }
    tag.value = withoutBlanks(rest.substr(0, open));
    const bool midWord = open > 0 && rest[open - 1] != ' ' && rest[open - 1] != '\t';
    if (midWord)
        return tag;
    const std::size_t close = rest.find('"', open + 1);
    tag.value += rest.substr(open + 1, close == std::string::npos ? close : close - open - 1);
    const std::size_t quote = tag.comment.find('"');
    if (close == std::string::npos && quote != std::string::npos) {
        tag.comment.erase(quote, 1);
        tag.commentIsSettled = open == 0;
    }
    return tag;
}

std::vector<ExpectedTag> cutText(const std::string& text) {
    std::vector<ExpectedTag> tags;
    std::size_t start = 0;
    while (start <= text.size()) {
        const std::size_t end = text.find_first_of("\r\n", start);
        ExpectedTag tag = cutLine(text.substr(start, end - start));
        tag.endsWithText = end == std::string::npos;
        if (!tag.keyword.empty() || (!tag.comment.empty() && !tag.endsWithText))
            tags.push_back(tag);
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    return tags;
}

void expectCutAlike(const std::string& text) {
    const Reading reading(text);
    const std::vector<ExpectedTag> expected = cutText(text);
    ASSERT_EQ(reading.code, 0) << testing::PrintToString(text);
    ASSERT_EQ(reading.document.GetNrTags(), static_cast<int>(expected.size()))
        << testing::PrintToString(text);
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const TCgatsTag& tag = *reading.document.GetTagAt(static_cast<int>(i));
        ASSERT_EQ(tag.GetCode(), -1);
        if (expected[i].keyword.empty()) {
            ASSERT_EQ(tag.GetKeyword(), nullptr) << testing::PrintToString(text);
            continue;
        }
        ASSERT_EQ(orAbsent(tag.GetKeyword()), expected[i].keyword) << testing::PrintToString(text);
        ASSERT_EQ(orAbsent(tag.GetValue()), expected[i].value) << testing::PrintToString(text);
        ASSERT_EQ(tag.GetNumeric(), expected[i].value.empty() ? 0 : expected[i].numeric)
            << testing::PrintToString(text);
        if (expected[i].commentIsSettled) {
            ASSERT_EQ(orAbsent(tag.GetComment()), expected[i].comment) << testing::PrintToString(text);
        }
    }
}

// Calls `check` with every text of `length` characters of an alphabet.
template <class Check>
void forEachText(const std::string& alphabet, std::size_t length, const Check& check) {
    std::vector<std::size_t> digits(length, 0);
    std::string text(length, alphabet[0]);
    while (!testing::Test::HasFatalFailure()) {
        check(text);
        std::size_t place = 0;
        while (place < length && ++digits[place] == alphabet.size()) {
            digits[place] = 0;
            text[place] = alphabet[0];
            ++place;
        }
        if (place == length)
            return;
        text[place] = alphabet[digits[place]];
    }
}

TEST(cgatsTokeniser, everyOneByteText_isCutAsItsLinesSay) {
    for (int byte = 1; byte < 256; ++byte)
        expectCutAlike(std::string(1, static_cast<char>(byte)));
}

TEST(cgatsTokeniser, everyTwoByteText_isCutAsItsLinesSay) {
    for (int first = 1; first < 256; ++first)
        for (int second = 1; second < 256; ++second) {
            const std::string text = {static_cast<char>(first), static_cast<char>(second)};
            expectCutAlike(text);
            if (HasFatalFailure())
                return;
        }
}

TEST(cgatsTokeniser, everyShortText_isCutAsItsLinesSay) {
    for (std::size_t length = 1; length <= 5; ++length)
        forEachText("A \t\"#\n\r", length, expectCutAlike);
}

TEST(cgatsTokeniser, everyShortLine_isCutAsItSays) {
    for (std::size_t length = 1; length <= 8; ++length)
        forEachText("x \"#", length, [](const std::string& text) { expectCutAlike("K " + text); });
}

// ---- From line to line

// The tags that a walk over a text finds, as the document that reads it stores them.
void expectWalkFindsTheTags(const std::string& text) {
    const Reading reading(text);
    char keyword[TCgats::kMaxKeyword + 1];
    char value[TCgats::kMaxValue + 1];
    char comment[TCgats::kMaxComment + 1];
    const TCgats document;
    const char* position = text.c_str();
    int tags = 0;
    for (int result = 0; result == 0;) {
        int code = -9;
        int numeric = -9;
        result = document.ReadNextTag(position, keyword, value, comment, &code, &numeric, &position);
        if (keyword[0] == '\0' && result == 1)
            break;
        const TCgatsTag* const tag = reading.document.GetTagAt(tags++);
        ASSERT_NE(tag, nullptr) << testing::PrintToString(text);
        ASSERT_EQ(tag->GetNumeric(), numeric) << testing::PrintToString(text);
        if (keyword[0] == '\0') {
            ASSERT_EQ(tag->GetKeyword(), nullptr) << testing::PrintToString(text);
            continue;
        }
        ASSERT_EQ(orAbsent(tag->GetKeyword()), keyword) << testing::PrintToString(text);
        ASSERT_EQ(orAbsent(tag->GetValue()), value) << testing::PrintToString(text);
        ASSERT_EQ(orAbsent(tag->GetComment()), comment) << testing::PrintToString(text);
    }
    ASSERT_EQ(tags, reading.document.GetNrTags()) << testing::PrintToString(text);
    ASSERT_EQ(position, text.c_str() + text.size()) << testing::PrintToString(text);
}

TEST(cgatsTokeniser, walkFromLineToLine_findsTheTagsOfTheDocument) {
    for (std::size_t length = 1; length <= 5; ++length)
        forEachText("A \"#\n\r", length, expectWalkFindsTheTags);
}

} // namespace
} // namespace qxcms::tests
