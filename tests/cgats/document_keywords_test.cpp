// The descriptive keywords of a document: originator, description, date.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/read_document.h"

namespace {

using qxcms::tests::ReadDocument;

// One descriptive keyword and its two operations.
struct DocumentKeyword {
    const char* keyword;
    int code;
    const char* (TCgats::*get)() const;
    int (TCgats::*set)(const char*);
};

constexpr DocumentKeyword kKeywords[] = {
    {"ORIGINATOR", 0, &TCgats::GetOriginator, &TCgats::SetOriginator},
    {"FILE_DESCRIPTOR", 1, &TCgats::GetFileDescriptor, &TCgats::SetFileDescriptor},
    {"CREATED", 2, &TCgats::GetCreated, &TCgats::SetCreated},
};

// A tag in one line: code, keyword, numeric, value, comment.
std::string tagLine(const TCgatsTag* tag) {
    if (tag == nullptr)
        return "(none)";
    const auto text = [](const char* part) { return part == nullptr ? std::string("(absent)") : part; };
    return std::to_string(tag->GetCode()) + "|" + text(tag->GetKeyword()) + "|" +
           std::to_string(tag->GetNumeric()) + "|" + text(tag->GetValue()) + "|" + text(tag->GetComment());
}

std::vector<std::string> tagLines(const TCgats& document) {
    std::vector<std::string> lines;
    for (int i = 0; i < document.GetNrTags(); ++i)
        lines.push_back(tagLine(document.GetTagAt(i)));
    return lines;
}

std::string quoted(const DocumentKeyword& keyword, const std::string& value,
                   const std::string& comment = "") {
    return std::to_string(keyword.code) + "|" + keyword.keyword + "|0|" + value + "|" + comment;
}

// A document of as many tags as fit, none of them descriptive.
std::string fullTagList() {
    std::string text;
    for (int i = 0; i < TCgats::kMaxTags; ++i)
        text += "NOTE_" + std::to_string(i) + " x\n";
    return text;
}

TEST(documentKeywords, get_givesTheValueOfTheTag) {
    const ReadDocument document(
        "CGATS.17\nORIGINATOR \"my tool\"\nFILE_DESCRIPTOR \"a chart\"\nCREATED 2024-05-01\n");
    EXPECT_STREQ(document.GetOriginator(), "my tool");
    EXPECT_STREQ(document.GetFileDescriptor(), "a chart");
    EXPECT_STREQ(document.GetCreated(), "2024-05-01");
}

TEST(documentKeywords, get_pointsIntoTheDocument) {
    const ReadDocument document("CGATS.17\nORIGINATOR \"my tool\"\n");
    EXPECT_EQ(document.GetOriginator(), document.GetTagAt(1)->GetValue());
}

TEST(documentKeywords, get_withoutTheTagIsNull) {
    const ReadDocument document("CGATS.17\nDESCRIPTOR \"x\"\nPROD_DATE \"y\"\n");
    for (const DocumentKeyword& keyword : kKeywords)
        EXPECT_EQ((document.*keyword.get)(), nullptr) << keyword.keyword;
}

TEST(documentKeywords, get_givesTheFirstOfSeveralTags) {
    for (const DocumentKeyword& keyword : kKeywords) {
        const std::string name = keyword.keyword;
        const ReadDocument document(name + " \"first\"\n" + name + " \"second\"\n");
        EXPECT_STREQ((document.*keyword.get)(), "first") << name;
    }
}

TEST(documentKeywords, get_ofATagWithoutValueIsEmpty) {
    const ReadDocument document("ORIGINATOR\n");
    EXPECT_STREQ(document.GetOriginator(), "");
}

TEST(documentKeywords, get_doesNotTakeAKeywordInAnotherCase) {
    const ReadDocument document("originator \"x\"\nFile_Descriptor \"y\"\ncreated \"z\"\n");
    for (const DocumentKeyword& keyword : kKeywords)
        EXPECT_EQ((document.*keyword.get)(), nullptr) << keyword.keyword;
}

TEST(documentKeywords, set_replacesTheValueWhereItStands) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document("CGATS.17\n" + std::string(keyword.keyword) +
                              " \"old\"\nSERIAL \"7\"\nNUMBER_OF_FIELDS 3\n");
        EXPECT_EQ((document.*keyword.set)("new text"), 0);
        EXPECT_EQ(tagLines(document),
                  (std::vector<std::string>{"-1|CGATS.17|0||", quoted(keyword, "new text"), "20|SERIAL|0|7|",
                                            "3|NUMBER_OF_FIELDS|1|3|"}));
        EXPECT_STREQ((document.*keyword.get)(), "new text");
    }
}

TEST(documentKeywords, set_replacesBehindNumberOfFieldsTooWhereItStands) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document("NUMBER_OF_FIELDS 3\n" + std::string(keyword.keyword) + " \"old\"\n");
        EXPECT_EQ((document.*keyword.set)("new"), 0);
        EXPECT_EQ(tagLines(document),
                  (std::vector<std::string>{"3|NUMBER_OF_FIELDS|1|3|", quoted(keyword, "new")}));
    }
}

TEST(documentKeywords, set_makesABareValueAQuotedOneAndKeepsTheComment) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document(std::string(keyword.keyword) + " 2024 # by hand\n");
        ASSERT_EQ(document.GetTagAt(0)->GetNumeric(), 1);
        EXPECT_EQ((document.*keyword.set)("two words"), 0);
        EXPECT_EQ(tagLines(document), std::vector<std::string>{quoted(keyword, "two words", " by hand")});
    }
}

TEST(documentKeywords, set_replacesTheFirstOfSeveralTags) {
    for (const DocumentKeyword& keyword : kKeywords) {
        const std::string name = keyword.keyword;
        ReadDocument document(name + " \"a\"\n" + name + " \"b\"\n");
        EXPECT_EQ((document.*keyword.set)("c"), 0);
        EXPECT_EQ(tagLines(document), (std::vector<std::string>{quoted(keyword, "c"), quoted(keyword, "b")}));
    }
}

TEST(documentKeywords, set_insertsANewTagRightBeforeNumberOfFields) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document("CGATS.17\nSERIAL \"7\"\nNUMBER_OF_FIELDS 3\nNUMBER_OF_SETS 1\n");
        EXPECT_EQ((document.*keyword.set)("new"), 0);
        EXPECT_EQ(tagLines(document),
                  (std::vector<std::string>{"-1|CGATS.17|0||", "20|SERIAL|0|7|", quoted(keyword, "new"),
                                            "3|NUMBER_OF_FIELDS|1|3|", "23|NUMBER_OF_SETS|1|1|"}));
        EXPECT_STREQ((document.*keyword.get)(), "new");
    }
}

TEST(documentKeywords, set_appendsANewTagWhereThereIsNoNumberOfFields) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document("CGATS.17\nSERIAL \"7\"\n");
        EXPECT_EQ((document.*keyword.set)("new"), 0);
        EXPECT_EQ(tagLines(document),
                  (std::vector<std::string>{"-1|CGATS.17|0||", "20|SERIAL|0|7|", quoted(keyword, "new")}));
    }
}

TEST(documentKeywords, set_startsAnEmptyDocument) {
    for (const DocumentKeyword& keyword : kKeywords) {
        TCgats document;
        EXPECT_EQ((document.*keyword.set)("new"), 0);
        EXPECT_EQ(tagLines(document), std::vector<std::string>{quoted(keyword, "new")});
    }
}

TEST(documentKeywords, set_twiceKeepsOneTag) {
    for (const DocumentKeyword& keyword : kKeywords) {
        TCgats document;
        EXPECT_EQ((document.*keyword.set)("first"), 0);
        EXPECT_EQ((document.*keyword.set)("second"), 0);
        EXPECT_EQ(tagLines(document), std::vector<std::string>{quoted(keyword, "second")});
    }
}

TEST(documentKeywords, set_copiesTheText) {
    for (const DocumentKeyword& keyword : kKeywords) {
        TCgats document;
        std::string text = "mine";
        EXPECT_EQ((document.*keyword.set)(text.c_str()), 0);
        text[0] = 'w';
        EXPECT_STREQ((document.*keyword.get)(), "mine");
    }
}

TEST(documentKeywords, set_mayPassOnTheDocumentsOwnText) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document(std::string(keyword.keyword) + " \"own\"\n");
        EXPECT_EQ((document.*keyword.set)((document.*keyword.get)()), 0);
        EXPECT_STREQ((document.*keyword.get)(), "own");
    }
}

TEST(documentKeywords, set_ofAnEmptyTextLeavesAnEmptyValue) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document(std::string(keyword.keyword) + " 2024\n");
        EXPECT_EQ((document.*keyword.set)(""), 0);
        EXPECT_EQ(tagLines(document), std::vector<std::string>{quoted(keyword, "")});
    }
}

TEST(documentKeywords, set_onAFullListIsRefusedWithOne) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document(fullTagList());
        ASSERT_EQ(document.GetNrTags(), TCgats::kMaxTags);
        EXPECT_EQ((document.*keyword.set)("new"), 1);
        EXPECT_EQ(document.GetNrTags(), TCgats::kMaxTags);
        EXPECT_EQ((document.*keyword.get)(), nullptr);
        EXPECT_STREQ(document.GetTagAt(TCgats::kMaxTags - 1)->GetKeyword(), "NOTE_127");
    }
}

TEST(documentKeywords, set_replacesOnAFullListToo) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document(std::string(keyword.keyword) + " \"old\"\n" + fullTagList());
        ASSERT_EQ(document.GetNrTags(), TCgats::kMaxTags);
        EXPECT_EQ((document.*keyword.set)("new"), 0);
        EXPECT_STREQ((document.*keyword.get)(), "new");
        EXPECT_EQ(document.GetNrTags(), TCgats::kMaxTags);
    }
}

TEST(documentKeywords, set_ofTheLastFreeTagFits) {
    std::string text = fullTagList();
    text.erase(text.rfind("NOTE_127"));
    ReadDocument document(text);
    ASSERT_EQ(document.GetNrTags(), TCgats::kMaxTags - 1);
    EXPECT_EQ(document.SetCreated("today"), 0);
    EXPECT_STREQ(document.GetCreated(), "today");
    EXPECT_EQ(document.SetOriginator("me"), 1);
}

TEST(documentKeywords, set_ofNullIsRefusedWithTwo) {
    for (const DocumentKeyword& keyword : kKeywords) {
        ReadDocument document(std::string(keyword.keyword) + " \"old\"\n");
        TCgats empty;
        EXPECT_EQ((document.*keyword.set)(nullptr), 2);
        EXPECT_STREQ((document.*keyword.get)(), "old");
        EXPECT_EQ((empty.*keyword.set)(nullptr), 2);
        EXPECT_EQ(empty.GetNrTags(), 0);
    }
}

TEST(documentKeywords, set_recordsNoError) {
    ReadDocument document(fullTagList());
    EXPECT_EQ(document.SetOriginator("me"), 1);
    EXPECT_EQ(document.SetOriginator(nullptr), 2);
    EXPECT_EQ(document.GetErrorCode(), 0);
}

} // namespace
