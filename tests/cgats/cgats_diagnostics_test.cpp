// What a sink is told about a refused text.
#include "cgats/cgats_diagnostics.h"

#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

struct Refusal {
    int code;
    std::size_t offset;
    int line;
    int column;
    std::string token;
    std::string expected;
};

struct Doubt {
    int table;
    int row;
    int column;
    std::string text;

    bool operator==(const Doubt& other) const {
        return table == other.table && row == other.row && column == other.column && text == other.text;
    }
};

class Recorder : public TCgatsDiagnosticSink {
public:
    void Refused(const TCgatsDiagnostic& diagnostic) override {
        refusals.push_back({diagnostic.code, diagnostic.offset, diagnostic.line, diagnostic.column,
                            std::string(diagnostic.token, diagnostic.tokenLength), diagnostic.expected});
    }
    void Doubted(const TCgatsDoubtfulValue& value) override {
        doubts.push_back({value.table, value.row, value.column, value.text});
    }

    std::vector<Refusal> refusals;
    std::vector<Doubt> doubts;
};

// Line and column of an offset, counted from 1; CR LF, LF and CR each end one line.
void locate(const std::string& text, std::size_t offset, int& line, int& column) {
    line = 1;
    column = 1;
    for (std::size_t i = 0; i < offset; ++i) {
        const bool ends =
            text[i] == '\n' || (text[i] == '\r' && (i + 1 == text.size() || text[i + 1] != '\n'));
        if (ends) {
            ++line;
            column = 1;
        } else {
            ++column;
        }
    }
}

// Reads a text that is refused and checks what holds for every refusal.
Refusal refuse(const std::string& text, int code) {
    TCgats document;
    Recorder recorder;
    EXPECT_EQ(document.ReadFromBuffer(text.c_str(), &recorder), code) << text;
    if (recorder.refusals.size() != 1) {
        ADD_FAILURE() << recorder.refusals.size() << " reports on " << text;
        return {};
    }
    const Refusal refusal = recorder.refusals[0];
    EXPECT_EQ(refusal.code, code);
    EXPECT_LE(refusal.offset, text.size());
    EXPECT_EQ(text.substr(refusal.offset, refusal.token.size()), refusal.token) << text;
    int line = 0;
    int column = 0;
    locate(text, refusal.offset, line, column);
    EXPECT_EQ(refusal.line, line) << text;
    EXPECT_EQ(refusal.column, column) << text;
    EXPECT_FALSE(refusal.expected.empty());
    return refusal;
}

// A refusal of the token that `text` marks: it stands behind the first "@", which is taken out.
void expectToken(const std::string& marked, const std::string& token, int code) {
    const std::size_t offset = marked.find('@');
    ASSERT_NE(offset, std::string::npos);
    const std::string text = marked.substr(0, offset) + marked.substr(offset + 1);
    const Refusal refusal = refuse(text, code);
    EXPECT_EQ(refusal.offset, offset) << text;
    EXPECT_EQ(refusal.token, token) << text;
}

void expectEnd(const std::string& text, int code) {
    expectToken(text + "@", "", code);
}

TEST(cgatsDiagnostics, success_isNotReported) {
    for (const std::string& text :
         {std::string(), everythingText(), std::string("CREATED x"), tableText("LAB_L", 1, "5")}) {
        TCgats document;
        Recorder recorder;
        EXPECT_EQ(document.ReadFromBuffer(text.c_str(), &recorder), 0);
        EXPECT_TRUE(recorder.refusals.empty());
    }
}

TEST(cgatsDiagnostics, droppedTags_areNotReported) {
    TCgats document;
    Recorder recorder;
    EXPECT_EQ(document.ReadFromBuffer(repeated("A x\n", 200).c_str(), &recorder), 0);
    EXPECT_TRUE(recorder.refusals.empty());
}

TEST(cgatsDiagnostics, absentSink_changesNothing) {
    TCgats document;
    EXPECT_EQ(document.ReadFromBuffer(formatText("FOO").c_str(), nullptr), 11);
}

TEST(cgatsDiagnostics, sink_changesNothingInTheDocument) {
    const std::string text = everythingText() + formatText("FOO");
    const Reading without(text);
    TCgats document;
    Recorder recorder;
    EXPECT_EQ(document.ReadFromBuffer(text.c_str(), &recorder), without.code);
    EXPECT_EQ(keywordsOf(document), keywordsOf(without.document));
    EXPECT_EQ(document.GetNrTables(), 2);
    EXPECT_EQ(document.GetErrorCode(), 0);
}

TEST(cgatsDiagnostics, unknownField_isTheToken) {
    expectToken("BEGIN_DATA_FORMAT\nLAB_L @FOO LAB_A\nEND_DATA_FORMAT\n", "FOO", 11);
    expectToken("BEGIN_DATA_FORMAT\n@end_data_format\n", "end_data_format", 11);
    expectToken("NUMBER_OF_FIELDS 1\nBEGIN_DATA_FORMAT\n@FOO\nEND_DATA_FORMAT\n", "FOO", 11);
}

TEST(cgatsDiagnostics, fieldTooMany_isTheToken) {
    expectToken("NUMBER_OF_FIELDS 2\nBEGIN_DATA_FORMAT\nLAB_L LAB_A @LAB_B XYZ_X\nEND_DATA_FORMAT\n", "LAB_B",
                10);
}

TEST(cgatsDiagnostics, fieldTooFew_isToldAtTheEndKeyword) {
    expectToken("NUMBER_OF_FIELDS 3\nBEGIN_DATA_FORMAT\nLAB_L LAB_A\n@END_DATA_FORMAT\n", "END_DATA_FORMAT",
                12);
}

TEST(cgatsDiagnostics, missingEndOfTheDataFormat_isToldAtTheEnd) {
    expectEnd("BEGIN_DATA_FORMAT\nLAB_L LAB_A\n", 9);
    expectEnd("BEGIN_DATA_FORMAT\n", 9);
}

TEST(cgatsDiagnostics, missingValues_areToldAtTheFirstEndKeywordAmongTheValues) {
    const std::string head = formatText("LAB_L LAB_A") + "NUMBER_OF_SETS 9\nBEGIN_DATA\n1 2\n3 4\n";
    expectToken(head + "@END_DATA\n", "END_DATA", 1);
    expectToken(head + "5 @END_DATA", "END_DATA", 1);
    expectToken(head + "@END_DATA\nCREATED x\nEND_DATA\n", "END_DATA", 1);
    expectToken(head + "\"END_DATA\" END_DATAS @END_DATA\n", "END_DATA", 1);
}

TEST(cgatsDiagnostics, endKeywordAmongTheValuesOfAnEarlierTable_isNotTheOneToTell) {
    expectEnd(tableText("STRING", 2, "a") + formatText("LAB_L") + "NUMBER_OF_SETS 2\nBEGIN_DATA\n1\n", 1);
}

TEST(cgatsDiagnostics, missingValuesWithoutEndKeyword_areToldAtTheEnd) {
    expectEnd(formatText("LAB_L") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n", 1);
    expectEnd(formatText("LAB_L") + "NUMBER_OF_SETS 9\nBEGIN_DATA\n1 2\nend_data\n", 1);
}

TEST(cgatsDiagnostics, samplesWithoutHeaderOrCount_areToldAtTheirKeyword) {
    expectToken("NUMBER_OF_SETS 1\n  @BEGIN_DATA\n1\nEND_DATA\n", "BEGIN_DATA", 6);
    expectToken(formatText("LAB_L") + "@BEGIN_DATA # note\n1\nEND_DATA\n", "BEGIN_DATA", 6);
}

TEST(cgatsDiagnostics, unusableHeaders_areToldAtTheKeywordOfTheSamples) {
    expectToken(formatText("") + "NUMBER_OF_SETS 1\n@BEGIN_DATA\n1\nEND_DATA\n", "BEGIN_DATA", 14);
    expectToken("NUMBER_OF_FIELDS 2\nNUMBER_OF_SETS 1\n@BEGIN_DATA\n1\nEND_DATA\n", "BEGIN_DATA", 12);
    expectToken(formatText("SPOT_2") + "NUMBER_OF_SETS 1\n@BEGIN_DATA\n1\nEND_DATA\n", "BEGIN_DATA", 17);
}

TEST(cgatsDiagnostics, overlongKeyword_isToldAtItsStart) {
    const std::string text = "CREATED x\n  " + repeated("K", 257) + " v\n";
    const Refusal refusal = refuse(text, -1);
    EXPECT_EQ(refusal.offset, 12u);
    EXPECT_EQ(refusal.line, 2);
    EXPECT_EQ(refusal.column, 3);
}

TEST(cgatsDiagnostics, overlongValueOrComment_isToldOnItsLine) {
    EXPECT_EQ(refuse("A\nB\nCREATED " + repeated("v", 4097) + "\nD\n", -1).line, 3);
    EXPECT_EQ(refuse("A\nB\nCREATED \"" + repeated("v", 4097) + "\"\nD\n", -1).line, 3);
    EXPECT_EQ(refuse("A\nB\nCREATED #" + repeated("c", 513) + "\nD\n", -1).line, 3);
    EXPECT_EQ(refuse("A\nB\n#" + repeated("c", 513) + "\nD\n", -1).line, 3);
}

TEST(cgatsDiagnostics, overlongSampleValue_isToldAtItsStart) {
    const std::string head = formatText("STRING") + "NUMBER_OF_SETS 2\nBEGIN_DATA\n1\n ";
    EXPECT_EQ(refuse(head + repeated("v", 128) + "\nEND_DATA\n", 1).offset, head.size());
    EXPECT_EQ(refuse(head + repeated("v", 1000), 1).offset, head.size());
}

TEST(cgatsDiagnostics, unterminatedSampleValue_isReported) {
    refuse(formatText("STRING") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n\"abc", 1);
}

TEST(cgatsDiagnostics, commentBlockWithoutEnd_namesTheMissingTerminator) {
    const Refusal refusal = refuse("CREATED x\nBEGIN_NOTES # here\nfree text\n", 5);
    EXPECT_NE(refusal.expected.find("END_NOTES"), std::string::npos) << refusal.expected;
}

TEST(cgatsDiagnostics, commentBlockTooMany_isReported) {
    const Refusal refusal = refuse(repeated("BEGIN_X\na\nEND_X\n", 129), 5);
    EXPECT_EQ(refusal.token, "BEGIN_X");
    EXPECT_EQ(refusal.line, 3 * 128 + 1);
}

TEST(cgatsDiagnostics, endOfFormatThatIsNone_isExplained) {
    for (const std::string token : {"END_DATA_FORMAT#", "\"END_DATA_FORMAT\""}) {
        const Refusal refusal = refuse("BEGIN_DATA_FORMAT\nLAB_L\n" + token + "\nEND_DATA_FORMAT\n", 11);
        EXPECT_EQ(refusal.line, 3) << token;
        EXPECT_NE(refusal.expected.find("END_DATA_FORMAT"), std::string::npos) << token;
    }
}

TEST(cgatsDiagnostics, endOfFormatBehindAnOpeningQuote_endsTheFormat) {
    const Reading reading("BEGIN_DATA_FORMAT\nLAB_L\n\"END_DATA_FORMAT\n");
    EXPECT_EQ(reading.code, 0);
    EXPECT_EQ(keywordsOf(reading.document),
              (std::vector<std::string>{"BEGIN_DATA_FORMAT", "END_DATA_FORMAT"}));
}

std::vector<Doubt> doubtsOf(const std::string& text) {
    TCgats document;
    Recorder recorder;
    document.ReadFromBuffer(text.c_str(), &recorder);
    return recorder.doubts;
}

TEST(cgatsDiagnostics, numbers_areNotDoubted) {
    EXPECT_TRUE(doubtsOf(tableText("LAB_L LAB_A", 4, "1 -2.5\n+3 4e-1\n1,5 .5\n\"7\" 0x10")).empty());
}

TEST(cgatsDiagnostics, valuesThatAreNoNumbers_areDoubtedInTheirOrder) {
    const std::string text = tableText("SAMPLE_ID LAB_L LAB_A", 3, "a N/A 1\nb \"\" 5%\nc 1 1.2.3");
    const std::vector<Doubt> expected = {
        {0, 0, 1, "N/A"}, {0, 1, 1, ""}, {0, 1, 2, "5%"}, {0, 2, 2, "1.2.3"}};
    EXPECT_EQ(doubtsOf(text), expected);
}

TEST(cgatsDiagnostics, doubtfulValue_isReadAsTheNumberThatItBeginsWith) {
    const Reading reading(tableText("LAB_L LAB_A", 1, "5% N/A"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.GetTable(0)->GetValues(0)->GetDouble(0), 5.0);
    EXPECT_EQ(reading.document.GetTable(0)->GetValues(1)->GetDouble(0), 0.0);
}

TEST(cgatsDiagnostics, endOfDataTakenForANumber_isDoubted) {
    const std::vector<Doubt> expected = {{0, 1, 1, "END_DATA"}};
    EXPECT_EQ(doubtsOf(tableText("LAB_L LAB_A", 2, "1 2\n3")), expected);
}

TEST(cgatsDiagnostics, doubts_nameTheirTable) {
    const std::vector<Doubt> expected = {{1, 0, 0, "x"}};
    EXPECT_EQ(doubtsOf(tableText("LAB_L", 1, "1") + tableText("LAB_A", 1, "x")), expected);
}

TEST(cgatsDiagnostics, everyKindOfLineEnd_endsOneLine) {
    const Refusal refusal =
        refuse("A\r\nB\rC\n\r\n\rBEGIN_DATA_FORMAT\r\n\tLAB_L  FOO\r\nEND_DATA_FORMAT\r\n", 11);
    EXPECT_EQ(refusal.token, "FOO");
    EXPECT_EQ(refusal.line, 7);
    EXPECT_EQ(refusal.column, 9);
}

TEST(cgatsDiagnostics, carriageReturnAndLineFeedAtTheEnd_endOneLine) {
    EXPECT_EQ(refuse("BEGIN_DATA_FORMAT\r\nLAB_L\r\n", 9).line, 3);
    EXPECT_EQ(refuse("BEGIN_DATA_FORMAT\r\nLAB_L\n\r", 9).line, 4);
}

TEST(cgatsDiagnostics, columns_countBytes) {
    const Refusal refusal =
        refuse("KEYWORD gr\xc3\xbcn\n\nBEGIN_DATA_FORMAT\ngr\xc3\xbcn FOO\nEND_DATA_FORMAT\n", 11);
    EXPECT_EQ(refusal.line, 4);
    EXPECT_EQ(refusal.column, 7);
}

TEST(cgatsDiagnostics, offsets_countFromTheTextThatIsRead) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer("CREATED x\nSERIAL 5\n"), 0);
    Recorder recorder;
    EXPECT_EQ(document.ReadFromBuffer("BEGIN_DATA_FORMAT FOO\nFOO\nEND_DATA_FORMAT\n", &recorder), 11);
    ASSERT_EQ(recorder.refusals.size(), 1u);
    EXPECT_EQ(recorder.refusals[0].offset, 22u);
    EXPECT_EQ(recorder.refusals[0].line, 2);
    EXPECT_EQ(recorder.refusals[0].column, 1);
}

TEST(cgatsDiagnostics, everyPrefix_isReportedExactlyWhenItIsRefused) {
    const std::string text = everythingText();
    for (std::size_t length = 0; length <= text.size(); ++length) {
        const std::string prefix = text.substr(0, length);
        const int code = Reading(prefix).code;
        if (code != 0)
            refuse(prefix, code);
        if (HasFailure())
            return;
    }
}

TEST(cgatsDiagnostics, damagedDocuments_areReportedExactlyWhenTheyAreRefused) {
    Mutator mutator(4711);
    for (int round = 0; round < 10000; ++round) {
        const std::string text = mutator.mutate(everythingText());
        TCgats document;
        Recorder recorder;
        const int code = document.ReadFromBuffer(text.c_str(), &recorder);
        ASSERT_EQ(recorder.refusals.size(), code == 0 ? 0u : 1u) << text;
        if (code != 0)
            refuse(text, code);
        if (HasFailure())
            return;
    }
}

} // namespace
} // namespace qxcms::tests
