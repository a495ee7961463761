// The reader as a whole: which lines act, what is stored, what a refusal leaves, files, growth, damaged
// texts.
#include <algorithm>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using Keywords = std::vector<std::string>;

// ---- Tags

TEST(cgatsReader, emptyText_isAnEmptyDocument) {
    for (const char* text : {"", " ", "\n", "\r\n \t\n", "#", "#\n", "# note"}) {
        const Reading reading(text);
        EXPECT_EQ(reading.code, 0);
        EXPECT_EQ(reading.document.GetNrTags(), 0) << text;
        EXPECT_EQ(reading.document.GetNrTables(), 0);
    }
}

TEST(cgatsReader, reader_keepsTagOrder) {
    const Reading reading("CGATS.17\nORIGINATOR x\n\nSERIAL 5\nABC\nCREATED y\nSERIAL 6\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(keywordsOf(reading.document),
              (Keywords{"CGATS.17", "ORIGINATOR", "SERIAL", "ABC", "CREATED", "SERIAL"}));
}

TEST(cgatsReader, firstLine_isATagLikeAnyOther) {
    const Reading reading("CGATS.17\n");
    ASSERT_EQ(reading.document.GetNrTags(), 1);
    EXPECT_EQ(reading.document.GetTagAt(0)->GetCode(), -1);
    EXPECT_STREQ(reading.document.GetTagAt(0)->GetKeyword(), "CGATS.17");
    EXPECT_STREQ(reading.document.GetTagAt(0)->GetValue(), "");
    EXPECT_STREQ(reading.document.GetTagAt(0)->GetComment(), "");
}

TEST(cgatsReader, tag_holdsAllParts) {
    const Reading reading("ORIGINATOR \"my tool\" # by hand\nSERIAL 1 2 3\n");
    ASSERT_EQ(reading.document.GetNrTags(), 2);
    const TCgatsTag& originator = *reading.document.GetTagAt(0);
    EXPECT_EQ(originator.GetCode(), 0);
    EXPECT_EQ(originator.GetNumeric(), 0);
    EXPECT_STREQ(originator.GetKeyword(), "ORIGINATOR");
    EXPECT_STREQ(originator.GetValue(), "my tool");
    EXPECT_STREQ(originator.GetComment(), " by hand");
    const TCgatsTag& serial = *reading.document.GetTagAt(1);
    EXPECT_EQ(serial.GetCode(), 20);
    EXPECT_EQ(serial.GetNumeric(), 1);
    EXPECT_STREQ(serial.GetValue(), "123");
}

TEST(cgatsReader, hashInAQuotedValue_splitsIt) {
    const Reading reading("CREATED \"a#b\"\n");
    EXPECT_STREQ(reading.document.GetTagAt(0)->GetValue(), "a");
    EXPECT_STREQ(reading.document.GetTagAt(0)->GetComment(), "b");
}

TEST(cgatsReader, commentOnlyLine_isATagWithoutTexts) {
    const Reading reading("# a note\nCREATED x\n");
    ASSERT_EQ(reading.document.GetNrTags(), 2);
    const TCgatsTag& tag = *reading.document.GetTagAt(0);
    EXPECT_EQ(tag.GetCode(), -1);
    EXPECT_EQ(tag.GetNumeric(), 0);
    EXPECT_EQ(tag.GetKeyword(), nullptr);
    EXPECT_EQ(tag.GetValue(), nullptr);
    EXPECT_EQ(tag.GetComment(), nullptr);
}

TEST(cgatsReader, loneHash_isNoTag) {
    const Reading reading("#\nCREATED x\n  #\n");
    EXPECT_EQ(keywordsOf(reading.document), Keywords{"CREATED"});
}

TEST(cgatsReader, commentThatEndsTheText_isNotStored) {
    EXPECT_EQ(Reading("CREATED x\n# note").document.GetNrTags(), 1);
    EXPECT_EQ(Reading("CREATED x\n# note\n").document.GetNrTags(), 2);
    EXPECT_EQ(Reading("CREATED x\n# note\r").document.GetNrTags(), 2);
}

TEST(cgatsReader, keywordThatEndsTheText_isActedOnAndStored) {
    const Reading reading("CREATED x\nNUMBER_OF_SETS 5");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(keywordsOf(reading.document), (Keywords{"CREATED", "NUMBER_OF_SETS"}));
    EXPECT_EQ(reading.document.GetDeclaredNrSets(), 5);
    EXPECT_EQ(Reading("KEYWORD LOT").document.GetNrCustomFields(), 1);
    EXPECT_EQ(Reading("NUMBER_OF_FIELDS 2 # note").document.GetTmpHeader()->GetNrFields(), 2);
}

TEST(cgatsReader, lineEnds_mayBeOfAnyKind) {
    for (const char* end : {"\n", "\r", "\r\n", "\n\r", "\n\n"}) {
        std::string text;
        for (const char* line : {"CREATED x", "ORIGINATOR \"y z\"", "# note", "SERIAL 5"})
            text += std::string(line) + end;
        const Reading reading(text);
        EXPECT_EQ(reading.code, 0);
        EXPECT_EQ(keywordsOf(reading.document), (Keywords{"CREATED", "ORIGINATOR", "(absent)", "SERIAL"}));
        EXPECT_STREQ(reading.document.GetTagAt(1)->GetValue(), "y z");
    }
}

// ---- Keywords that act

TEST(cgatsReader, processColorTags_areCounted) {
    const Reading reading("PROCESSCOLOR_ID a\nSPOT_ID b\nPROCESSCOLOR_ID\nprocesscolor_id c\n");
    EXPECT_EQ(reading.document.GetNrProcessColorIdTags(), 2);
    EXPECT_EQ(reading.document.GetNrTags(), 4);
}

TEST(cgatsReader, spotTags_areCounted) {
    const Reading reading("SPOT_ID a\nPROCESSCOLOR_ID b\nSPOT_ID\nSPOT_ID c\nSpot_Id d\n");
    EXPECT_EQ(reading.document.GetNrSpotIdTags(), 3);
}

TEST(cgatsReader, keywordTags_declareCustomFields) {
    const Reading reading("KEYWORD LOT\nKEYWORD \"MY BOX\"\nKEYWORD my box # note\nkeyword NO\n");
    EXPECT_EQ(reading.code, 0);
    ASSERT_EQ(reading.document.GetNrCustomFields(), 3);
    EXPECT_STREQ(reading.document.GetCustomField(0), "LOT");
    EXPECT_STREQ(reading.document.GetCustomField(1), "MY BOX");
    EXPECT_STREQ(reading.document.GetCustomField(2), "mybox");
    EXPECT_EQ(reading.document.GetNrTags(), 4);
}

TEST(cgatsReader, keywordTagWithoutValue_declaresNothingAndIsStored) {
    const Reading reading("KEYWORD\nKEYWORD \"\"\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrCustomFields(), 0);
    EXPECT_EQ(reading.document.GetNrTags(), 2);
}

TEST(cgatsReader, fieldCount_startsAHeader) {
    const Reading reading("NUMBER_OF_FIELDS 3\n");
    ASSERT_NE(reading.document.GetTmpHeader(), nullptr);
    EXPECT_EQ(reading.document.GetTmpHeader()->GetNrFields(), 3);
    EXPECT_EQ(reading.document.GetTmpHeader()->GetNrFilledFields(), 0);
    EXPECT_EQ(Reading("number_of_fields 3\n").document.GetTmpHeader(), nullptr);
}

TEST(cgatsReader, numberOfSets_isDeclared) {
    EXPECT_EQ(Reading("NUMBER_OF_SETS 24\n").document.GetDeclaredNrSets(), 24);
    EXPECT_EQ(Reading("NUMBER_OF_SETS \"24\"\n").document.GetDeclaredNrSets(), 24);
    EXPECT_EQ(Reading("NUMBER_OF_SETS -24\n").document.GetDeclaredNrSets(), -24);
    EXPECT_EQ(Reading("NUMBER_OF_SETS 24\nNUMBER_OF_SETS x\n").document.GetDeclaredNrSets(), 0);
}

TEST(cgatsReader, endKeywordsAlone_areOnlyTags) {
    const Reading reading("END_DATA\nEND_DATA_FORMAT\nEND_X\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrTags(), 3);
}

// ---- A whole document

TEST(cgatsReader, wholeDocument_isReadIntoTheModel) {
    const Reading reading(everythingText());
    ASSERT_EQ(reading.code, 0);
    const TCgats& document = reading.document;
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_EQ(keywordsOf(document),
              (Keywords{"CGATS.17",        "ORIGINATOR",     "(absent)",          "CREATED",
                        "BEGIN_NOTES",     "END_NOTES",      "PROCESSCOLOR_ID",   "PROCESSCOLOR_ID",
                        "SPOT_ID",         "KEYWORD",        "NUMBER_OF_FIELDS",  "BEGIN_DATA_FORMAT",
                        "END_DATA_FORMAT", "NUMBER_OF_SETS", "BEGIN_DATA",        "END_DATA",
                        "TABLE_NAME",      "NUMBER_OF_SETS", "BEGIN_DATA_FORMAT", "END_DATA_FORMAT",
                        "BEGIN_DATA",      "END_DATA"}));
    ASSERT_EQ(document.GetNrCommentBlocks(), 1);
    EXPECT_STREQ(document.GetCommentBlock(0), "free \"text\" # here\n");
    EXPECT_EQ(document.GetNrProcessColorIdTags(), 2);
    EXPECT_EQ(document.GetNrSpotIdTags(), 1);
    ASSERT_EQ(document.GetNrCustomFields(), 2);
    EXPECT_STREQ(document.GetCustomField(0), "LOT");
    EXPECT_STREQ(document.GetCustomField(1), "SampleID");
    EXPECT_EQ(document.GetTmpHeader(), nullptr);
    EXPECT_EQ(document.GetDeclaredNrSets(), 0);

    ASSERT_EQ(document.GetNrTables(), 2);
    const TCgatsTable& first = *document.GetTable(0);
    EXPECT_EQ(first.GetHeader()->GetNrSamples(), 3);
    EXPECT_EQ(first.GetHeader()->GetColorKind(), 1);
    EXPECT_EQ(columnList(first.GetHeader()->GetColorColumns(), 2), (std::vector<int>{3, 4}));
    EXPECT_EQ(columnList(first.GetHeader()->GetSpotColumns(), 1), std::vector<int>{5});
    EXPECT_EQ(columnList(first.GetHeader()->GetLabColumns(), 3), (std::vector<int>{6, 7, 8}));
    EXPECT_EQ(columnList(first.GetHeader()->GetSpectralColumns(), 2), (std::vector<int>{10, 9}));
    EXPECT_EQ(first.GetHeader()->GetXyzColumns(), nullptr);
    EXPECT_EQ(first.GetHeader()->GetSampleNameColumn(), 2);
    EXPECT_FALSE(first.IsSpectralPercent());
    EXPECT_STREQ(first.GetValues(1)->GetString(0), "lot 1");
    EXPECT_STREQ(first.GetValues(1)->GetString(1), "");
    EXPECT_STREQ(first.GetValues(2)->GetString(1), "dark red");
    EXPECT_EQ(first.GetValues(6)->GetDouble(0), 41.5);
    EXPECT_EQ(first.GetValues(11)->GetDouble(2), 0.3);

    const TCgatsTable& second = *document.GetTable(1);
    EXPECT_EQ(second.GetHeader()->GetColorKind(), 2);
    EXPECT_EQ(second.GetHeader()->GetNrColors(), 6);
    EXPECT_EQ(second.GetValues(5)->GetDouble(1), 12.0);
}

TEST(cgatsReader, wholeDocument_isReadAlikeWithAnyLineEnd) {
    const Reading expected(everythingText());
    for (const char* end : {"\r", "\r\n"}) {
        std::string text;
        for (const char character : everythingText())
            text += character == '\n' ? std::string(end) : std::string(1, character);
        const Reading reading(text);
        EXPECT_EQ(reading.code, 0);
        EXPECT_EQ(keywordsOf(reading.document), keywordsOf(expected.document));
        ASSERT_EQ(reading.document.GetNrTables(), 2);
        EXPECT_EQ(reading.document.GetTable(0)->GetValues(11)->GetDouble(2), 0.3);
    }
}

// ---- Reading adds

TEST(cgatsReader, reading_addsToWhatTheDocumentHolds) {
    TCgats document;
    document.InsertTag(2, "CREATED", 0, "x", "", -1, false);
    document.AddCustomField("LOT");
    EXPECT_EQ(document.ReadFromBuffer(tableText("LOT", 1, "a").c_str()), 0);
    EXPECT_EQ(document.ReadFromBuffer("BEGIN_X\nx\nEND_X\nSPOT_ID a\n"), 0);
    EXPECT_EQ(document.ReadFromBuffer(tableText("LAB_L", 1, "5").c_str()), 0);
    EXPECT_EQ(document.GetNrTables(), 2);
    EXPECT_EQ(document.GetNrTags(), 1 + 5 + 3 + 5);
    EXPECT_STREQ(document.GetTagAt(0)->GetKeyword(), "CREATED");
    EXPECT_EQ(document.GetNrCommentBlocks(), 1);
}

TEST(cgatsReader, aTable_mayComeInPieces) {
    TCgats document;
    EXPECT_EQ(document.ReadFromBuffer("NUMBER_OF_FIELDS 1\n"), 0);
    EXPECT_EQ(document.ReadFromBuffer(formatText("LAB_L").c_str()), 0);
    EXPECT_EQ(document.ReadFromBuffer("NUMBER_OF_SETS 1\n"), 0);
    EXPECT_EQ(document.ReadFromBuffer("BEGIN_DATA\n5\n"), 0);
    EXPECT_EQ(document.GetNrTables(), 1);
}

TEST(cgatsReader, readFromBuffer_recordsNothing) {
    TCgats document;
    EXPECT_EQ(document.ReadFromBuffer(formatText("FOO").c_str()), 11);
    EXPECT_EQ(document.ReadFromBuffer(repeated("K", 257).c_str()), -1);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

TEST(cgatsReader, readFromBuffer_gives2ForNull) {
    TCgats document;
    EXPECT_EQ(document.ReadFromBuffer(nullptr), 2);
    EXPECT_EQ(document.GetErrorCode(), 0);
}

// ---- Refusals

TEST(cgatsReader, overlongTokens_endTheReading) {
    for (const std::string& line :
         {repeated("K", 257), "A " + repeated("v", 4097), "A \"" + repeated("v", 4097) + "\"",
          "A #" + repeated("c", 513), "#" + repeated("c", 513)}) {
        const Reading reading("CREATED x\n" + line + "\nSERIAL 5\n");
        EXPECT_EQ(reading.code, -1);
        EXPECT_EQ(keywordsOf(reading.document), Keywords{"CREATED"});
    }
}

TEST(cgatsReader, longestTokens_areStored) {
    const Reading reading(repeated("K", 256) + " \"" + repeated("v", 4096) + "\" #" + repeated("c", 512) +
                          "\n");
    EXPECT_EQ(reading.code, 0);
    ASSERT_EQ(reading.document.GetNrTags(), 1);
    EXPECT_EQ(reading.document.GetTagAt(0)->GetKeyword(), repeated("K", 256));
    EXPECT_EQ(reading.document.GetTagAt(0)->GetValue(), repeated("v", 4096));
    EXPECT_EQ(reading.document.GetTagAt(0)->GetComment(), repeated("c", 512));
}

TEST(cgatsReader, refusal_leavesEverythingBeforeIt) {
    const Reading reading(everythingText() + "KEYWORD BOX\n" + formatText("BOX FOO") + "CREATED z\n");
    const Reading good(everythingText());
    EXPECT_EQ(reading.code, 11);
    EXPECT_EQ(reading.document.GetNrTags(), good.document.GetNrTags() + 1);
    EXPECT_EQ(reading.document.GetNrTables(), 2);
    EXPECT_EQ(reading.document.GetNrCommentBlocks(), 1);
    EXPECT_EQ(reading.document.GetNrCustomFields(), 3);
}

// ---- 128 tags

TEST(cgatsReader, documents_hold128Tags) {
    for (const int count : {127, 128}) {
        const Reading reading(repeated("A x\n", count));
        EXPECT_EQ(reading.code, 0);
        EXPECT_EQ(reading.document.GetNrTags(), count);
    }
}

TEST(cgatsReader, the129thTag_isSilentlyNotStored) {
    const Reading reading(repeated("A x\n", 128) + "B y\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(keywordsOf(reading.document), Keywords(128, "A"));
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
}

TEST(cgatsReader, commentTags_countAmongThe128) {
    const Reading reading(repeated("# note\n", 128) + "B y\n");
    EXPECT_EQ(reading.document.GetNrTags(), 128);
    EXPECT_EQ(reading.document.GetTag("B"), nullptr);
}

TEST(cgatsReader, the129thTag_isActedOn) {
    const Reading reading(repeated("A x\n", 128) +
                          "KEYWORD LOT\nSPOT_ID s\nPROCESSCOLOR_ID p\nNUMBER_OF_FIELDS 2\n" +
                          "BEGIN_X\nx\nEND_X\n" + tableText("LOT PC1_1", 1, "a 5"));
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(keywordsOf(reading.document), Keywords(128, "A"));
    EXPECT_EQ(reading.document.GetNrCustomFields(), 1);
    EXPECT_EQ(reading.document.GetNrSpotIdTags(), 1);
    EXPECT_EQ(reading.document.GetNrProcessColorIdTags(), 1);
    EXPECT_EQ(reading.document.GetNrCommentBlocks(), 1);
    ASSERT_EQ(reading.document.GetNrTables(), 1);
    EXPECT_EQ(reading.document.GetTable(0)->GetValues(1)->GetDouble(0), 5.0);
}

TEST(cgatsReader, behind128Tags_refusalsRemain) {
    EXPECT_EQ(Reading(repeated("A x\n", 128) + formatText("FOO")).code, 11);
    EXPECT_EQ(Reading(repeated("A x\n", 128) + "BEGIN_DATA\n").code, 6);
    EXPECT_EQ(Reading(repeated("A x\n", 128) + "BEGIN_X\n").code, 5);
}

// ---- Files

TEST(cgatsReader, readFromFile_readsTheFile) {
    const ScratchFolder folder;
    TCgats document;
    EXPECT_EQ(document.ReadFromFile(folder.write("a b.txt", everythingText()).c_str()), 0);
    EXPECT_EQ(document.GetNrTables(), 2);
}

TEST(cgatsReader, readFromFile_takesTheNameAsItIs) {
    const ScratchFolder folder;
    const std::string file = folder.write("pr\xc3\xbc"
                                          "f [a.b]c:d;1",
                                          "CREATED x\n");
    TCgats document;
    EXPECT_EQ(document.ReadFromFile(file.c_str()), 0);
    EXPECT_EQ(document.GetNrTags(), 1);
}

TEST(cgatsReader, readFromFile_recordsNothing) {
    const ScratchFolder folder;
    TCgats document;
    EXPECT_EQ(document.ReadFromFile(folder.write("a.txt", formatText("FOO")).c_str()), 11);
    EXPECT_EQ(document.ReadFromFile(folder.path("missing.txt").c_str()), 3);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_STREQ(document.GetErrorMessage(), "");
}

TEST(cgatsReader, readFromFile_findsNoFileUnderAnEmptyName) {
    TCgats document;
    EXPECT_EQ(document.ReadFromFile(""), 3);
}

TEST(cgatsReader, readFromFile_gives2ForNull) {
    TCgats document;
    EXPECT_EQ(document.ReadFromFile(nullptr), 2);
}

TEST(cgatsReader, directory_cannotBeRead) {
    const ScratchFolder folder;
    TCgats document;
    EXPECT_EQ(document.ReadFromFile(folder.path().c_str()), 3);
}

TEST(cgatsReader, emptyFile_isAnEmptyDocument) {
    const ScratchFolder folder;
    TCgats document;
    EXPECT_EQ(document.ReadFromFile(folder.write("empty", "").c_str()), 0);
    EXPECT_EQ(document.GetNrTags(), 0);
}

TEST(cgatsReader, nulByte_endsTheText) {
    const ScratchFolder folder;
    const std::string text("CREATED x\nSERIAL 5\0ORIGINATOR y\n", 32);
    TCgats document;
    EXPECT_EQ(document.ReadFromFile(folder.write("a.txt", text).c_str()), 0);
    EXPECT_EQ(keywordsOf(document), (Keywords{"CREATED", "SERIAL"}));
    EXPECT_STREQ(document.GetTagAt(1)->GetValue(), "5");
}

TEST(cgatsReader, nulByteFirst_leavesNothing) {
    const ScratchFolder folder;
    TCgats document;
    EXPECT_EQ(document.ReadFromFile(folder.write("a.txt", std::string("\0CREATED x\n", 11)).c_str()), 0);
    EXPECT_EQ(document.GetNrTags(), 0);
}

TEST(cgatsReader, fileToBuffer_givesATerminatedText) {
    const ScratchFolder folder;
    for (const std::string& content :
         {std::string("CREATED x\r\n"), std::string(), repeated("0123456789", 10000)}) {
        char* text = nullptr;
        ASSERT_EQ(TCgats::FileToBuffer(folder.write("a.txt", content).c_str(), &text), 0);
        const std::unique_ptr<char[]> owner(text);
        EXPECT_EQ(std::string(text), content);
    }
}

TEST(cgatsReader, fileToBuffer_keepsBytesBehindANul) {
    const ScratchFolder folder;
    const std::string content("a\0b", 3);
    char* text = nullptr;
    ASSERT_EQ(TCgats::FileToBuffer(folder.write("a.txt", content).c_str(), &text), 0);
    const std::unique_ptr<char[]> owner(text);
    EXPECT_EQ(std::string(text, 4), std::string("a\0b\0", 4));
}

// A pipe tells no size.
TEST(cgatsReader, fileToBuffer_readsAPipeToItsEnd) {
    const ScratchFolder folder;
    const std::string pipe = folder.path("pipe");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string content = repeated("0123456789", 10000);
    std::thread writer([&] { std::ofstream(pipe) << content; });
    char* text = nullptr;
    const int code = TCgats::FileToBuffer(pipe.c_str(), &text);
    writer.join();
    const std::unique_ptr<char[]> owner(text);
    ASSERT_EQ(code, 0);
    EXPECT_EQ(std::string(text), content);
}

TEST(cgatsReader, fileToBuffer_gives3ForADirectory) {
    const ScratchFolder folder;
    char* text = nullptr;
    EXPECT_EQ(TCgats::FileToBuffer(folder.path().c_str(), &text), 3);
    EXPECT_EQ(text, nullptr);
}

TEST(cgatsReader, fileToBuffer_gives3WithoutAFile) {
    const ScratchFolder folder;
    char* text = nullptr;
    EXPECT_EQ(TCgats::FileToBuffer(folder.path("missing").c_str(), &text), 3);
    EXPECT_EQ(TCgats::FileToBuffer("", &text), 3);
    EXPECT_EQ(text, nullptr);
}

TEST(cgatsReader, fileToBuffer_gives2ForNull) {
    const ScratchFolder folder;
    char* text = nullptr;
    EXPECT_EQ(TCgats::FileToBuffer(nullptr, &text), 2);
    EXPECT_EQ(TCgats::FileToBuffer(folder.write("a.txt", "x").c_str(), nullptr), 2);
    EXPECT_EQ(text, nullptr);
}

// ---- Every prefix of a document

// The text of the prefix test: each section once, with marks where it begins and ends.
struct Sections {
    std::string text;
    std::size_t blockStart, blockEnd;   // "BEGIN_NOTE" .. behind "END_NOTE"
    std::size_t formatStart, formatEnd; // "BEGIN_DATA_FORMAT" .. behind the line end of "END_DATA_FORMAT"
    std::size_t dataStart, dataEnd;     // "BEGIN_DATA" .. behind the first character of the last value

    Sections() {
        text = "CGATS.17\nORIGINATOR \"my # tool\"\n# note\n";
        blockStart = text.size();
        text += "BEGIN_NOTE\nsome BEGIN_DATA text\nEND_NOTE";
        blockEnd = text.size();
        text += "\nPROCESSCOLOR_ID a\nKEYWORD LOT\nNUMBER_OF_FIELDS 5\n";
        formatStart = text.size();
        text += "BEGIN_DATA_FORMAT\nSAMPLE_ID LOT # note\n\"LAB_L\"\tPC1_1 nm400\nEND_DATA_FORMAT\n";
        formatEnd = text.size();
        text += "NUMBER_OF_SETS 2\n";
        dataStart = text.size();
        text += "BEGIN_DATA\n1 \"lot 1\" 41,5 0 0.5\n2 \"\" 60.25 100 0.25";
        dataEnd = text.size() - 3;
        text += "\nEND_DATA\nCREATED x # note\n";
    }

    // What the reader answers for the first `length` characters.
    int expectedCode(std::size_t length) const {
        constexpr std::size_t kPrefix = 6; // of "BEGIN_"
        if (length >= blockStart + kPrefix && length < blockEnd)
            return 5;
        if (length >= formatStart + kPrefix && length < formatEnd) {
            const std::string keyword = text.substr(formatStart, length - formatStart);
            return keyword == "BEGIN_DATA" ? 6 : keyword.size() < std::strlen("BEGIN_DATA_FORMAT") ? 5 : 9;
        }
        if (length >= dataStart + kPrefix && length < dataEnd)
            return length < dataStart + std::strlen("BEGIN_DATA") ? 5 : 1;
        return 0;
    }
};

TEST(cgatsReader, everyPrefix_isAnsweredAsItsLastSectionSays) {
    const Sections sections;
    for (std::size_t length = 0; length <= sections.text.size(); ++length) {
        const Reading reading(sections.text.substr(0, length));
        ASSERT_EQ(reading.code, sections.expectedCode(length)) << sections.text.substr(0, length);
        ASSERT_EQ(reading.document.GetNrTables(), length >= sections.dataEnd ? 1 : 0);
        ASSERT_EQ(reading.document.GetNrCommentBlocks(), length >= sections.blockEnd ? 1 : 0);
    }
}

TEST(cgatsReader, everySuffix_isAnsweredWithADocumentedCode) {
    const std::string text = everythingText();
    const std::vector<int> codes = {0, 1, 5, 6, 9, 10, 11, 12, 14, 17};
    for (std::size_t start = 0; start <= text.size(); ++start) {
        const Reading reading(text.substr(start));
        ASSERT_NE(std::find(codes.begin(), codes.end(), reading.code), codes.end())
            << reading.code << " at " << start;
    }
}

// ---- Damaged documents

TEST(cgatsReader, damagedDocument_isAnsweredWithADocumentedCode) {
    const std::vector<int> codes = {-1, 0, 1, 5, 6, 9, 10, 11, 12, 14, 17};
    const std::string texts[] = {everythingText(), Sections().text};
    Mutator mutator(20240229);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = mutator.mutate(texts[round % 2]);
        const Reading reading(text);
        ASSERT_NE(std::find(codes.begin(), codes.end(), reading.code), codes.end()) << reading.code << "\n"
                                                                                    << text;
        ASSERT_LE(reading.document.GetNrTags(), 128);
        ASSERT_LE(reading.document.GetNrCommentBlocks(), 128);
        for (int i = 0; i < reading.document.GetNrTables(); ++i) {
            const TCgatsTable& table = *reading.document.GetTable(i);
            ASSERT_EQ(table.GetTableError(), 0);
            ASSERT_EQ(table.GetNrRowsStored(), table.GetHeader()->GetNrSamples()) << text;
            ASSERT_TRUE(table.GetHeader()->IsClassified());
        }
        for (int i = 0; i < reading.document.GetNrTags(); ++i) {
            const TCgatsTag& tag = *reading.document.GetTagAt(i);
            if (tag.GetKeyword() == nullptr)
                continue;
            ASSERT_LE(std::strlen(tag.GetKeyword()), 256u);
            ASSERT_LE(std::strlen(tag.GetValue()), 4096u);
            ASSERT_LE(std::strlen(tag.GetComment()), 512u);
            ASSERT_EQ(tag.GetCode(), reading.document.MatchTag(tag.GetKeyword()));
        }
    }
}

TEST(cgatsReader, readingTwice_givesTheSameAnswer) {
    Mutator mutator(7);
    for (int round = 0; round < 2000; ++round) {
        const std::string text = mutator.mutate(everythingText());
        const Reading once(text);
        const Reading again(text);
        ASSERT_EQ(once.code, again.code) << text;
        ASSERT_EQ(keywordsOf(once.document), keywordsOf(again.document)) << text;
        ASSERT_EQ(once.document.GetNrTables(), again.document.GetNrTables()) << text;
    }
}

// ---- Growth: coarse guards, in seconds of processor time of a release build

TEST(cgatsReaderGrowth, manyRows_areReadInProportion) {
    constexpr int kRows = 20000;
    const std::string text =
        tableText("SAMPLE_ID LAB_L LAB_A LAB_B nm400 nm410 nm420 nm430 nm440 nm450", kRows,
                  repeated("A1 50.25 -12.5 33.125 0.0512 0.0623 0.0734 0.0845 0.0956 0.1067\n", kRows));
    const Stopwatch watch;
    const Reading reading(text);
    EXPECT_LT(watch.seconds(), 0.5);
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetTable(0)->GetNrRowsStored(), kRows);
    EXPECT_EQ(reading.document.GetTable(0)->GetValues(9)->GetDouble(kRows - 1), 0.1067);
}

TEST(cgatsReaderGrowth, manyKeywordLines_areReadInProportion) {
    std::string text;
    for (int i = 0; i < 2000; ++i)
        text += "KEYWORD LOT" + std::to_string(i) + "\n";
    const Stopwatch watch;
    const Reading reading(text);
    EXPECT_LT(watch.seconds(), 0.2);
    EXPECT_EQ(reading.code, 0);
    ASSERT_EQ(reading.document.GetNrCustomFields(), 2000);
    EXPECT_STREQ(reading.document.GetCustomField(1999), "LOT1999");
}

TEST(cgatsReaderGrowth, walkFromLineToLine_isDoneInProportion) {
    constexpr int kLines = 40000;
    const std::string text = repeated("CREATED today\n", kLines);
    std::vector<char> keyword(257), value(4097), comment(513);
    const TCgats document;
    const char* position = text.c_str();
    int code = 0, numeric = 0, lines = 0;
    const Stopwatch watch;
    while (document.ReadNextTag(position, keyword.data(), value.data(), comment.data(), &code, &numeric,
                                &position) == 0)
        ++lines;
    EXPECT_LT(watch.seconds(), 0.1);
    EXPECT_EQ(lines, kLines);
}

TEST(cgatsReaderGrowth, manyFields_areReadInProportion) {
    constexpr int kFields = 50000;
    std::string names;
    for (int wavelength = kFields; wavelength > 0; --wavelength)
        names += "nm" + std::to_string(wavelength) + "\n";
    const std::string text = tableText(names, 1, repeated("0.5 ", kFields));
    const Stopwatch watch;
    const Reading reading(text);
    EXPECT_LT(watch.seconds(), 0.5);
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetTable(0)->GetHeader()->GetNrWaveLengths(), kFields);
    EXPECT_EQ(reading.document.GetTable(0)->GetHeader()->GetSpectralColumns()[0], kFields - 1);
}

TEST(cgatsReaderGrowth, manyTags_areReadInProportion) {
    const std::string text = repeated("A b # c\n", 100000);
    const Stopwatch watch;
    const Reading reading(text);
    EXPECT_LT(watch.seconds(), 0.5);
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrTags(), 128);
}

TEST(cgatsReaderGrowth, manyTables_areReadInProportion) {
    const std::string text = repeated(tableText("LAB_L", 1, "5"), 5000);
    const Stopwatch watch;
    const Reading reading(text);
    EXPECT_LT(watch.seconds(), 0.5);
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrTables(), 5000);
}

TEST(cgatsReaderGrowth, longBlanksAndBlocks_areReadInProportion) {
    const std::string text = repeated("\n", 500000) + "BEGIN_X\n" + repeated("END_Y\n", 100000) + "END_X\n" +
                             repeated(" ", 500000) + "#\n";
    const Stopwatch watch;
    const Reading reading(text);
    EXPECT_LT(watch.seconds(), 0.5);
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetNrCommentBlocks(), 1);
}

} // namespace
} // namespace qxcms::tests
