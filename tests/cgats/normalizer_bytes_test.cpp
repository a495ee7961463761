// What the normaliser makes of bytes: encodings, line ends, NUL, anything; and of clean documents.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/cgats/normalized.h"
#include "tests/cgats/read_document.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;

std::string document(const std::string& lineEnd) {
    const std::string lines[] = {"CGATS.17",          "ORIGINATOR\t\"proof desk\"",
                                 "BEGIN_DATA_FORMAT", "SAMPLE_ID\tLAB_L\tLAB_A\tLAB_B",
                                 "END_DATA_FORMAT",   "NUMBER_OF_SETS\t2",
                                 "BEGIN_DATA",        "1\t95.25\t-0.5\t2",
                                 "2\t16.5\t0.25\t-1", "END_DATA"};
    std::string text;
    for (const std::string& line : lines)
        text += line + lineEnd;
    return text;
}

// UTF-16 of a text of ASCII.
std::string utf16(const std::string& text, bool littleEndian) {
    std::string bytes;
    for (const char c : text) {
        const char pair[] = {littleEndian ? c : '\0', littleEndian ? '\0' : c};
        bytes.append(pair, 2);
    }
    return bytes;
}

void expectBecomesTheDocument(const std::string& bytes, int kind) {
    const Normalized normalized = accepted(bytes);
    EXPECT_EQ(normalized.text(), document("\n"));
    ASSERT_THAT(normalized.kinds(), ElementsAre(kind));
    EXPECT_EQ(normalized.liberties()[0].line, 1);
    EXPECT_EQ(normalized.liberties()[0].column, 1);
    const ReadDocument read(normalized.text());
    EXPECT_EQ(numbersOf(read, 0, 1), (std::vector<double>{95.25, 16.5}));
}

TEST(normalizerBytes, byteOrderMarkOfUtf8_isLeftOut) {
    expectBecomesTheDocument("\xEF\xBB\xBF" + document("\n"), Liberty::kEncoding);
}

TEST(normalizerBytes, utf16WithTheLowByteFirst_becomesUtf8) {
    expectBecomesTheDocument("\xFF\xFE" + utf16(document("\n"), true), Liberty::kEncoding);
}

TEST(normalizerBytes, utf16WithTheHighByteFirst_becomesUtf8) {
    expectBecomesTheDocument("\xFE\xFF" + utf16(document("\n"), false), Liberty::kEncoding);
}

TEST(normalizerBytes, utf16BeyondAscii_becomesUtf8) {
    std::string bytes = "\xFF\xFE" + utf16("ORIGINATOR\t\"", true);
    bytes += std::string("\xE4\x00\x3D\xD8\x00\xDE", 6); // U+00E4, and U+1F600 as a pair
    bytes += utf16("\"\n", true);
    const Normalized normalized = accepted(bytes);
    EXPECT_EQ(normalized.text(), "ORIGINATOR\t\"\xC3\xA4\xF0\x9F\x98\x80\"\n");
}

TEST(normalizerBytes, halfAPairAndAnOddByte_doNoHarm) {
    std::string bytes = "\xFF\xFE" + utf16("SERIAL\t", true);
    bytes += std::string("\x3D\xD8", 2) + utf16("4\n", true) + "x";
    const Normalized normalized{bytes};
    EXPECT_EQ(normalized.code == 0, normalized.refusal() == nullptr);
    EXPECT_EQ(normalized.code, Reading(normalized.text()).code);
}

TEST(normalizerBytes, nulBytes_areLeftOut) {
    std::string bytes = document("\n");
    bytes.insert(bytes.find("proof"), 2, '\0');
    bytes += std::string(3, '\0');
    const Normalized normalized = accepted(bytes);
    EXPECT_EQ(normalized.text(), document("\n"));
    ASSERT_FALSE(normalized.kinds().empty());
    EXPECT_THAT(normalized.kinds(), testing::Each(int{Liberty::kNulBytes}));
    EXPECT_EQ(normalized.liberties()[0].line, 2);
    EXPECT_EQ(normalized.liberties()[0].column, 13);
}

TEST(normalizerBytes, nulBytesBeforeAKeyword_doNotHideIt) {
    for (const char* keyword : {"CGATS.17", "BEGIN_DATA_FORMAT", "END_DATA_FORMAT", "NUMBER_OF_SETS",
                                "BEGIN_DATA\n", "END_DATA\n"}) {
        std::string bytes = document("\n");
        bytes.insert(bytes.find(keyword), 1, '\0');
        const Normalized normalized = accepted(bytes);
        EXPECT_EQ(normalized.text(), document("\n")) << keyword;
        EXPECT_THAT(normalized.kinds(), ElementsAre(int{Liberty::kNulBytes})) << keyword;
    }
}

TEST(normalizerBytes, nulByteBeforeACommentBlock_doesNotHideIt) {
    const std::string block = "BEGIN_NOTES\n\nBEGIN_DATA two\nEND_NOTES\n" + document("\n");
    EXPECT_EQ(accepted(std::string(1, '\0') + block).text(), block);
}

TEST(normalizerBytes, nulBytesAndOtherLiberties_areListedInTheOrderOfTheBytes) {
    const Normalized normalized = accepted(std::string("ORIGINATOR a\0b c d\n", 19));
    EXPECT_EQ(normalized.text(), "ORIGINATOR \"ab c d\"\n");
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kValueQuoted, 1, 12, "ab c d"},
                                                    Finding{Liberty::kNulBytes, 1, 13, ""}));
}

TEST(normalizerBytes, latin1InAHeaderValue_stays) {
    expectUnchanged("CGATS.17\nORIGINATOR\t\"Pr\xFC"
                    "fdruck\"\n" +
                    document("\n"));
}

TEST(normalizerBytes, lineFeeds_stay) {
    expectUnchanged(document("\n"));
}

TEST(normalizerBytes, carriageReturnsWithLineFeeds_stay) {
    expectUnchanged(document("\r\n"));
}

TEST(normalizerBytes, carriageReturns_stay) {
    expectUnchanged(document("\r"));
}

TEST(normalizerBytes, twoCarriageReturnsAndALineFeed_stay) {
    expectUnchanged(document("\r\r\n"));
}

TEST(normalizerBytes, missingLastLineEnd_isNoMatter) {
    std::string text = document("\n");
    text.pop_back();
    expectUnchanged(text);
}

TEST(normalizerBytes, lineEnds_areCountedAsTheReaderDoes) {
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        std::string text = document(lineEnd);
        text.replace(text.find("SETS\t2"), 6, "SETS\t7");
        const Normalized normalized = accepted(text);
        EXPECT_EQ(normalized.text(), document(lineEnd));
        EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kSampleCount, 6, 16, "7"}));
    }
}

TEST(normalizerBytes, insertedLines_endAsTheOthersDo) {
    for (const char* lineEnd : {"\n", "\r\n", "\r"}) {
        std::string expected = document(lineEnd);
        expected.replace(expected.find("SETS\t2"), 6, "SETS 2");
        std::string text = expected;
        const std::string count = std::string("NUMBER_OF_SETS 2") + lineEnd;
        text.erase(text.find(count), count.size());
        EXPECT_EQ(accepted(text).text(), expected);
    }
}

TEST(normalizerBytes, nothing_passes) {
    expectUnchanged("");
}

TEST(normalizerBytes, emptyLinesAlone_pass) {
    expectUnchanged("\n\n \t\n");
}

TEST(normalizerBytes, byteOrderMarkAlone_isLeftOut) {
    EXPECT_EQ(accepted("\xEF\xBB\xBF").text(), "");
}

TEST(normalizerBytes, secondText_forgetsTheFirst) {
    TCgatsNormalizer normalizer;
    EXPECT_EQ(normalizer.GetText(), "");
    EXPECT_NE(normalizer.Normalize("BEGIN_NOTES\n"), 0);
    EXPECT_NE(normalizer.GetRefusal(), nullptr);
    EXPECT_EQ(normalizer.Normalize(dialect("field-count-wrong.txt")), 0);
    EXPECT_EQ(normalizer.GetRefusal(), nullptr);
    EXPECT_EQ(normalizer.GetNrLiberties(), 1);
    EXPECT_EQ(normalizer.Normalize(document("\n")), 0);
    EXPECT_EQ(normalizer.GetNrLiberties(), 0);
    EXPECT_EQ(normalizer.GetText(), document("\n"));
}

TEST(normalizerBytes, badIndex_givesNothing) {
    TCgatsNormalizer normalizer;
    EXPECT_EQ(normalizer.GetLiberty(0), nullptr);
    EXPECT_EQ(normalizer.GetRemark(0), nullptr);
    ASSERT_EQ(normalizer.Normalize(dialect("field-count-wrong.txt")), 0);
    EXPECT_EQ(normalizer.GetLiberty(-1), nullptr);
    EXPECT_EQ(normalizer.GetLiberty(1), nullptr);
    EXPECT_EQ(normalizer.GetRemark(-1), nullptr);
    EXPECT_EQ(normalizer.GetRemark(0), nullptr);
}

TEST(normalizerBytes, severalDialectsInOneDocument_areListedInTheOrderOfTheBytes) {
    const std::string text =
        "CGATS.17\nORIGINATOR the desk\nNUMBER_OF_FIELDS 9\nBEGIN_DATA_FORMAT\n"
        "SAMPLE_ID\tSAMPLE_LOC\tSPEC_400\nEND_DATA_FORMAT\nNUMBER_OF_SETS 7\nBEGIN_DATA\n"
        "1\tA 1\t0.5\n2\tA 2\t0.25\nEND_DATA\n";
    const Normalized normalized = accepted(text);
    EXPECT_THAT(normalized.liberties(), ElementsAre(Finding{Liberty::kValueQuoted, 2, 12, "the desk"},
                                                    Finding{Liberty::kFieldCount, 3, 18, "9"},
                                                    Finding{Liberty::kFieldDeclared, 5, 11, "SAMPLE_LOC"},
                                                    Finding{Liberty::kSpectralName, 5, 22, "SPEC_400"},
                                                    Finding{Liberty::kSampleCount, 7, 16, "7"},
                                                    Finding{Liberty::kCellQuoted, 9, 3, "A 1"},
                                                    Finding{Liberty::kCellQuoted, 10, 3, "A 2"}));
    const ReadDocument read(normalized.text());
    EXPECT_EQ(textsOf(read, 0, 1), (std::vector<std::string>{"A 1", "A 2"}));
    EXPECT_EQ(numbersOf(read, 0, 2), (std::vector<double>{0.5, 0.25}));
}

TEST(normalizerBytes, everyLiberty_isTold) {
    for (const char* name :
         {"bare-values", "comment-lines", "field-count-wrong", "sample-count-missing", "refused-columns",
          "spectral-spec", "spectral-half-nanometres", "spectral-pairs-percent", "spectral-dark-first",
          "spectral-norm-255", "xyz-fractions", "tab-unquoted-names", "thousands-blanks", "doubled-quotes",
          "unclosed-quote", "second-table-without-format", "end-of-data-missing"}) {
        const Normalized normalized{dialect(std::string(name) + ".txt")};
        for (int i = 0; i < static_cast<int>(normalized.kinds().size()); ++i) {
            EXPECT_FALSE(normalized.done(i).empty()) << name;
            EXPECT_THAT(normalized.done(i), testing::Not(testing::EndsWith("."))) << name;
        }
    }
}

// What is left out must not bring a mark to the beginning, which a second pass would take out.
TEST(normalizerBytes, marksThatComeTogether_areLeftOut) {
    EXPECT_EQ(accepted(std::string("\xFE\0\xFFKEY\t1\n", 9)).text(), "KEY\t1\n");
    EXPECT_EQ(accepted(std::string("\xEF\0\xBB\xBFKEY\t1\n", 10)).text(), "KEY\t1\n");
    EXPECT_EQ(accepted("#a comment\n\xFF\xFE\xFE\xFFKEY\t1\n").text(), "KEY\t1 #a comment\n");
}

} // namespace
} // namespace qxcms::tests
