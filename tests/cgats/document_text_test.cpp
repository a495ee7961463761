// Whole documents as text, to the byte.
#include <algorithm>
#include <locale>
#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

std::string textOf(const TCgats& document, int expected = 0) {
    std::ostringstream stream;
    EXPECT_EQ(document.WriteToStream(stream), expected);
    return stream.str();
}

// A text, read and written.
std::string rewritten(const std::string& text, int expected = 0) {
    const Reading reading(text);
    EXPECT_EQ(reading.code, 0);
    return textOf(reading.document, expected);
}

TEST(documentText, everySection_isWrittenBackInItsPlace) {
    EXPECT_EQ(rewritten("CGATS.17\nORIGINATOR \"me\"\nBEGIN_NOTES\n free  text\nEND_NOTES\nKEYWORD \"LOT\"\n"
                        "NUMBER_OF_FIELDS 3\nBEGIN_DATA_FORMAT\nsample_id LOT\tnm400\nEND_DATA_FORMAT\n"
                        "NUMBER_OF_SETS 2\nBEGIN_DATA\n1 \"a b\" 0.1234567\n2 c 1e-7\nEND_DATA\n"),
              "CGATS.17\nORIGINATOR\t\"me\"\nBEGIN_NOTES\n free  text\nEND_NOTES\nKEYWORD\t\"LOT\"\n"
              "NUMBER_OF_FIELDS\t3\nBEGIN_DATA_FORMAT\nSAMPLE_ID\tLOT\tnm400\nEND_DATA_FORMAT\n"
              "NUMBER_OF_SETS\t2\nBEGIN_DATA\n1\t\"a b\"\t0.123457\t\n2\tc\t1e-07\t\nEND_DATA\n");
}

TEST(documentText, emptyDocument_isWrittenAsNothing) {
    EXPECT_EQ(textOf(TCgats()), "");
}

TEST(documentText, comment_gainsABlankEachTime) {
    EXPECT_EQ(rewritten("CGATS.17\nA \"b\" # note\n"), "CGATS.17\nA\t\"b\"\t#  note\n");
    EXPECT_EQ(rewritten("CGATS.17\nA # note\n"), "CGATS.17\nA\t#  note\n");
}

TEST(documentText, commentOnALineOfItsOwn_stopsTheWriter) {
    EXPECT_EQ(rewritten("CGATS.17\nA \"b\"\n# note\nC \"d\"\n", 22), "CGATS.17\nA\t\"b\"\n");
}

TEST(documentText, strings_areQuotedForABlankBehindTheirFirstCharacter) {
    EXPECT_EQ(rewritten(tableText("SAMPLE_ID", 6, "\"a b\" \" ab\" \"a\tb\" \"a\nb\" \"a\rb\" \"\"")),
              "BEGIN_DATA_FORMAT\nSAMPLE_ID\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t6\nBEGIN_DATA\n"
              "\"a b\"\t\n ab\t\n\"a\tb\"\t\n\"a\nb\"\t\n\"a\rb\"\t\n\t\nEND_DATA\n");
}

TEST(documentText, tables_areWrittenWhereTheirSectionsStand) {
    const std::string first = tableText("LAB_L", 1, "1"), second = tableText("LAB_A LAB_B", 1, "2 3");
    EXPECT_EQ(rewritten(first + second),
              "BEGIN_DATA_FORMAT\nLAB_L\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t1\nBEGIN_DATA\n1\t\nEND_DATA\n"
              "BEGIN_DATA_FORMAT\nLAB_A\tLAB_B\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t1\nBEGIN_DATA\n2\t3\t\nEND_"
              "DATA\n");
}

TEST(documentText, sectionWithoutATable_stopsTheWriter) {
    TCgats document;
    document.AddTag(4, "BEGIN_DATA_FORMAT", 0, "", "");
    EXPECT_EQ(textOf(document, 23), "BEGIN_DATA_FORMAT\n");
    TCgats other;
    other.AddTag(24, "BEGIN_DATA", 0, "", "");
    EXPECT_EQ(textOf(other, 23), "BEGIN_DATA\n");
}

TEST(documentText, commentBlocks_comeInTheirOrderAndThenNoMore) {
    Reading reading("BEGIN_A\n1\nEND_A\nbegin_b\n2\nend_b\n");
    reading.document.AddTag(-1, "BEGIN_C", 0, "", "");
    EXPECT_EQ(textOf(reading.document), "BEGIN_A\n1\nEND_A\nbegin_b\n2\nend_b\nBEGIN_C\n");
}

TEST(documentText, sectionInAnotherLetterCase_isACommentBlock) {
    const std::string text = "begin_data\nanything\nend_data\n";
    EXPECT_EQ(rewritten(text), text);
}

TEST(documentText, stream_neitherFormatsNorIsChanged) {
    const Reading reading("A 7\n" + tableText("LAB_L", 2, "1234.5 1e9"));
    const std::string plain = textOf(reading.document);
    std::ostringstream stream;
    stream.width(30);
    stream.fill('*');
    stream.precision(2);
    stream.setf(std::ios::fixed | std::ios::showpos | std::ios::hex);
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    stream.imbue(std::locale(stream.getloc(), new Comma));
    EXPECT_EQ(reading.document.WriteToStream(stream), 0);
    EXPECT_EQ(stream.str(), plain);
    EXPECT_EQ(stream.width(), 30);
    EXPECT_EQ(stream.precision(), 2);
}

// Takes a few characters, then nothing more.
class NarrowStream : public std::streambuf {
public:
    explicit NarrowStream(std::streamsize room) : left(room) {}

protected:
    std::streamsize xsputn(const char*, std::streamsize count) override {
        const std::streamsize taken = std::min(left, count);
        left -= taken;
        return taken;
    }

private:
    std::streamsize left;
};

TEST(documentText, streamThatTakesNotAll_gives4AndKeepsItsExceptionsToItself) {
    const Reading reading(everythingText());
    for (const std::streamsize room : {0, 1, 100}) {
        NarrowStream narrow(room);
        std::ostream stream(&narrow);
        stream.exceptions(std::ios::badbit | std::ios::failbit);
        const TCgats document("CGATS.17\nA \"b\"\n", 0);
        EXPECT_EQ(document.WriteToStream(stream), room == 100 ? 0 : 4);
        EXPECT_EQ(document.GetErrorCode(), 0);
        EXPECT_EQ(stream.exceptions(), std::ios::badbit | std::ios::failbit);
    }
}

TEST(documentText, largeDocument_isTheSameThroughManyBlocks) {
    std::string samples, expected;
    for (int i = 0; i < 20000; ++i) {
        samples += std::to_string(i) + ' ' + std::to_string(i % 100) + '\n';
        expected += std::to_string(i) + '\t' + std::to_string(i % 100) + "\t\n";
    }
    const std::string text = rewritten(tableText("SAMPLE_ID LAB_L", 20000, samples));
    const std::string start = "BEGIN_DATA\n";
    EXPECT_EQ(text.substr(text.find(start) + start.size()), expected + "END_DATA\n");
}

TEST(documentText, longValue_isWrittenWhole) {
    TCgats document;
    const std::string value(100000, 'x');
    document.AddTag(-1, "A", 0, value.c_str(), "");
    EXPECT_EQ(textOf(document), "A\t\"" + value + "\"\n");
}

TEST(documentParts, haveCodesOfTheirOwn) {
    const Reading reading("# alone\nA 1\n" + tableText("LAB_L", 1, "5"));
    std::ostringstream stream;
    EXPECT_EQ(reading.document.WriteTag(-1, stream), 21);
    EXPECT_EQ(reading.document.WriteTag(reading.document.GetNrTags(), stream), 21);
    EXPECT_EQ(reading.document.WriteTag(0, stream), 22);
    EXPECT_EQ(reading.document.WriteHeader(1, stream), 23);
    EXPECT_EQ(reading.document.WriteTable(-1, stream), 23);
    EXPECT_EQ(stream.str(), "");
    EXPECT_EQ(reading.document.WriteTag(1, stream), 0);
    EXPECT_EQ(reading.document.WriteHeader(0, stream), 0);
    EXPECT_EQ(reading.document.WriteTable(0, stream), 0);
    EXPECT_EQ(stream.str(), "A\t1\nLAB_L\n5\t\n");
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
}

// Tables that could not be built carry their error into the text of the writer's code.
TEST(documentParts, tableInError_givesItsDocumentCode) {
    const Reading reading(tableText("CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L", 1, "1 2 3 4 5"));
    int rows[] = {9};
    const TCgats outOfRange(&reading.document, rows, 1);
    int channels[] = {0, 1, 9};
    const TCgats badChannel(&reading.document, channels, 3, 0.0);
    std::ostringstream stream;
    EXPECT_EQ(outOfRange.WriteHeader(0, stream), 1);
    EXPECT_EQ(outOfRange.WriteTable(0, stream), 1);
    EXPECT_EQ(badChannel.WriteHeader(0, stream), 8);
    EXPECT_EQ(badChannel.WriteTable(0, stream), 8);
    EXPECT_EQ(textOf(badChannel, 8), "BEGIN_DATA_FORMAT\n");
    const TCgats noSamples(100.0, 0.0, 0, 4, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(noSamples.GetErrorCode(), 15);
    EXPECT_EQ(noSamples.WriteHeader(0, stream), 15);
    EXPECT_EQ(stream.str(), "");
}

std::string arrayOf(const TCgats& document, int expected) {
    char* text = nullptr;
    EXPECT_EQ(document.WriteToBuffer(&text), expected);
    const std::unique_ptr<char[]> owned(text);
    return orAbsent(text);
}

TEST(documentArray, isTerminatedAndEqualToTheStream) {
    const Reading reading(tableText("LAB_L", 1, "5"));
    EXPECT_EQ(arrayOf(reading.document, 0), textOf(reading.document));
    EXPECT_EQ(arrayOf(TCgats(), 0), "");
}

TEST(documentArray, failure_handsOutTheTextSoFarAndIsRecorded) {
    const Reading reading("A 1\n# alone\nB 2\n");
    EXPECT_EQ(arrayOf(reading.document, 22), "A\t1\n");
    EXPECT_EQ(reading.document.GetErrorCode(), 22);
    EXPECT_STREQ(
        reading.document.GetErrorMessage(),
        "Attempt to write empty tag.Internal error: illegal table index.Error adding layout info: layout "
        "info already present.");
    char untouched = 'x';
    char* text = &untouched;
    EXPECT_EQ(reading.document.WriteToBuffer(&text), 22);
    EXPECT_EQ(text, &untouched);
    EXPECT_EQ(TCgats().WriteToBuffer(nullptr), 2);
}

TEST(documentFile, isPutInPlaceOfTheOldOne) {
    const ScratchFolder folder;
    const Reading reading(tableText("LAB_L", 1, "5"));
    const std::string path = folder.write("chart.txt", "old");
    EXPECT_EQ(reading.document.SaveAs(path.c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(path), textOf(reading.document));
    EXPECT_EQ(TCgats(path.c_str()).GetErrorCode(), 0);
}

TEST(documentFile, nameWithAccents_isFoundAgain) {
    const ScratchFolder folder;
    const std::string path = folder.path("Gr\xC3\xB6\xC3\x9F"
                                         "e \xFF.txt");
    EXPECT_EQ(TCgats("A 1\n", 0).SaveAs(path.c_str()), 0);
    EXPECT_EQ(ScratchFolder::read(path), "A\t1\n");
}

TEST(documentFile, documentCodeOnTheWay_isRecordedAndTheTextSoFarKept) {
    const ScratchFolder folder;
    const std::string path = folder.write("chart.txt", "old");
    const Reading reading("A 1\n# alone\nB 2\n");
    EXPECT_EQ(reading.document.SaveAs(path.c_str()), 22);
    EXPECT_EQ(ScratchFolder::read(path), "A\t1\n");
    EXPECT_EQ(reading.document.GetErrorCode(), 22);
    folder.write("chart.txt", "other");
    EXPECT_EQ(reading.document.SaveAs(path.c_str()), 22);
    EXPECT_EQ(ScratchFolder::read(path), "other");
}

TEST(documentFile, thatCannotBeWritten_answers4AndTheDocumentStaysFit) {
    const ScratchFolder folder;
    const Reading reading("A 1\n");
    EXPECT_EQ(reading.document.SaveAs(folder.path("missing/chart.txt").c_str()), 4);
    EXPECT_EQ(reading.document.SaveAs(folder.path().c_str()), 4);
    EXPECT_EQ(reading.document.SaveAs(""), 2);
    EXPECT_EQ(reading.document.SaveAs(nullptr), 2);
    EXPECT_EQ(reading.document.GetErrorCode(), 0);
    EXPECT_EQ(reading.document.SaveAs(folder.path("chart.txt").c_str()), 0);
}

TEST(documentFile, documentInError_writesNothing) {
    const ScratchFolder folder;
    const TCgats document(static_cast<const char*>(nullptr));
    EXPECT_EQ(document.SaveAs(folder.path("chart.txt").c_str()), 2);
    EXPECT_EQ(ScratchFolder::read(folder.path("chart.txt")), "");
}

} // namespace
} // namespace qxcms::tests
