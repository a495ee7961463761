// Laws of the normaliser, tried on documents made at random, on damaged ones and on bytes of any kind.
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "cgats/tcgats.h"
#include "cgats/tcgatsnormalizer.h"

namespace qxcms::tests {
namespace {

// A document of others: its text, and the numbers that it means.
struct Sheet {
    std::string text;
    std::vector<std::vector<double>> lab, spectra;
};

std::string hundredths(int number) {
    char text[32];
    std::snprintf(text, sizeof text, "%s%d.%02d", number < 0 ? "-" : "", std::abs(number) / 100,
                  std::abs(number) % 100);
    return text;
}

bool chance(int ofTen) {
    return *rc::gen::inRange(0, 10) < ofTen;
}

std::string word() {
    const auto letter =
        rc::gen::map(rc::gen::inRange(0, 26), [](int n) { return static_cast<char>('a' + n); });
    return "w" + *rc::gen::resize(8, rc::gen::container<std::string>(letter));
}

std::string commentLine() {
    return chance(2) ? "# " + word() + " " + word() + "\n" : "";
}

std::string spectralName(int spelling, int nm) {
    const std::string number = std::to_string(nm);
    switch (spelling) {
    case 0:
        return "SPECTRAL_" + number;
    case 1:
        return "SPEC_" + number;
    case 2:
        return "SPECTRAL_NM" + number;
    case 3:
        return "R_" + number + "nm";
    case 4:
        return number + "nm";
    default:
        return number;
    }
}

// A sheet of samples with texts, CIELAB and spectra, in one of many dialects. Each kind of number stays
// within bounds that leave its scale alone: spectra are fractions.
Sheet anySheet() {
    const int rows = *rc::gen::inRange(1, 9), bands = *rc::gen::inRange(4, 8), declared = chance(3);
    const int spelling = *rc::gen::inRange(0, 6);
    Sheet sheet;
    std::string& text = sheet.text;
    text = "CGATS.17\n" + commentLine();
    text += "ORIGINATOR\t" + (chance(5) ? "\"" + word() + "\"" : word() + " " + word()) + "\n";
    text += commentLine();
    if (chance(5))
        text +=
            "NUMBER_OF_FIELDS\t" + std::to_string(chance(5) ? 5 + bands : *rc::gen::inRange(0, 40)) + "\n";
    if (declared)
        for (int band = 0; band < bands; ++band)
            text += "KEYWORD\t\"" + spectralName(spelling, 400 + 10 * band) + "\"\n";
    text += "BEGIN_DATA_FORMAT\nSAMPLE_ID\tPATCH_NAME\tLAB_L\tLAB_A\tLAB_B";
    for (int band = 0; band < bands; ++band)
        text += "\t" + spectralName(spelling, 400 + 10 * band);
    text += "\nEND_DATA_FORMAT\n" + commentLine();
    if (chance(7))
        text += "NUMBER_OF_SETS\t" + std::to_string(chance(5) ? rows : *rc::gen::inRange(0, 40)) + "\n";
    text += "BEGIN_DATA\n";
    const bool blanks = chance(5);
    for (int row = 0; row < rows; ++row) {
        text += std::to_string(row + 1) + "\t" + word() + (blanks ? " " + word() : "");
        std::vector<double> lab, spectrum;
        for (int i = 0; i < 3 + bands; ++i) {
            const int number = i < 3 ? *rc::gen::inRange(-9999, 10000) : *rc::gen::inRange(0, 150);
            text += "\t" + hundredths(number);
            (i < 3 ? lab : spectrum).push_back(number / 100.0);
        }
        text += "\n";
        sheet.lab.push_back(std::move(lab));
        sheet.spectra.push_back(std::move(spectrum));
    }
    if (chance(8))
        text += "END_DATA\n";
    return sheet;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pairGoesOn = text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
        if ((text[i] == '\n' || text[i] == '\r') && !pairGoesOn)
            lines.emplace_back();
        else if (!pairGoesOn)
            lines.back() += text[i];
    }
    return lines;
}

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + "\n";
    return text;
}

std::size_t below(std::size_t limit) {
    return *rc::gen::inRange<std::size_t>(0, limit);
}

// One kind of damage that files suffer.
std::string damaged(std::string text) {
    std::vector<std::string> lines = linesOf(text);
    const std::size_t at = below(lines.size());
    switch (*rc::gen::inRange(0, 9)) {
    case 0:
        lines.erase(lines.begin() + static_cast<std::ptrdiff_t>(at));
        return joined(lines);
    case 1:
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), std::string(lines[at]));
        return joined(lines);
    case 2:
        std::replace(lines[at].begin(), lines[at].end(), '\t', ' ');
        return joined(lines);
    case 3:
        lines[at].erase(std::remove(lines[at].begin(), lines[at].end(), '"'), lines[at].end());
        return joined(lines);
    case 4:
        std::transform(lines[at].begin(), lines[at].end(), lines[at].begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        return joined(lines);
    case 5:
        return text.substr(0, below(text.size() + 1));
    case 6: {
        static const char* const kPieces[] = {"\"",           "\"\"",
                                              "# x\n",        "\t",
                                              "\n",           "BEGIN_NOTES\n",
                                              "END_DATA ",    "1 234",
                                              "\r",           "BEGIN_DATA\n",
                                              "12,5",         "KEYWORD \"LAB_L\"\n",
                                              "SPEC_382.5 ",  "END_DATA_FORMAT",
                                              "\xEF\xBB\xBF", "99999999999"};
        const std::size_t piece = below(sizeof kPieces / sizeof kPieces[0]);
        return text.insert(below(text.size() + 1), kPieces[piece]);
    }
    case 7:
        if (!text.empty())
            text[below(text.size())] = *rc::gen::arbitrary<char>();
        return text;
    default:
        return text.erase(below(text.size() + 1), below(12));
    }
}

std::string damagedSheet() {
    std::string text = anySheet().text;
    for (int i = *rc::gen::inRange(1, 5); i > 0; --i)
        text = damaged(std::move(text));
    return text;
}

// Pieces of documents in any order.
std::string anyPieces() {
    static const char* const kPieces[] = {"CGATS.17\n",
                                          "KEYWORD",
                                          "KEYWORD \"SPEC_400\"\n",
                                          "NUMBER_OF_FIELDS",
                                          "NUMBER_OF_SETS",
                                          "BEGIN_DATA_FORMAT",
                                          "END_DATA_FORMAT",
                                          "BEGIN_DATA",
                                          "END_DATA",
                                          "BEGIN_NOTES\n",
                                          "END_NOTES\n",
                                          "SPECTRAL_NORM",
                                          "SPECTRAL_NM",
                                          "SPECTRAL_PCT",
                                          "SPECTRAL_DEC",
                                          "SAMPLE_ID",
                                          "SampleID",
                                          "STRING",
                                          "LAB_L",
                                          "XYZ_Y",
                                          "SPEC_400",
                                          "SPEC_400.5",
                                          "nm401",
                                          "410",
                                          "420",
                                          "430",
                                          "440",
                                          "1",
                                          "2",
                                          "0.5",
                                          "12,5",
                                          "1 234",
                                          "\"12,5\"",
                                          "\"a \"\"b\"\"\"",
                                          "\"",
                                          "\"\"",
                                          "#",
                                          "# x",
                                          "word",
                                          "two words",
                                          "begin_data\n",
                                          "\n",
                                          "\n",
                                          "\n",
                                          "\r\n",
                                          "\r",
                                          "\r\r\n",
                                          "\t",
                                          "\t",
                                          " ",
                                          "\xEF\xBB\xBF",
                                          "\xFF\xFE",
                                          "\x01",
                                          "\x1A",
                                          "\xE4"};
    const auto piece = rc::gen::inRange<std::size_t>(0, sizeof kPieces / sizeof kPieces[0]);
    std::string text;
    for (const std::size_t index : *rc::gen::container<std::vector<std::size_t>>(piece))
        text += kPieces[index] + std::string(index % 3 == 0 ? "\n" : "\t");
    if (chance(2))
        text.insert(below(text.size() + 1), 1, '\0');
    return text;
}

int codeOfReader(const std::string& text) {
    TCgats document;
    return document.ReadFromBuffer(text.c_str());
}

bool has(const TCgatsNormalizer& normalizer, std::initializer_list<int> kinds) {
    for (int i = 0; i < normalizer.GetNrLiberties(); ++i)
        if (std::find(kinds.begin(), kinds.end(), normalizer.GetLiberty(i)->kind) != kinds.end())
            return true;
    return false;
}

// A line end closes a line, so that a position may be on the empty one behind the last.
void expectInside(const std::vector<std::string>& lines, int line, int column) {
    RC_ASSERT(line >= 1);
    RC_ASSERT(static_cast<std::size_t>(line) <= lines.size());
    RC_ASSERT(column >= 1);
    // One for the end of the line, one for the CR of a pair.
    RC_ASSERT(static_cast<std::size_t>(column) <= lines[static_cast<std::size_t>(line) - 1].size() + 2);
}

void expectLaws(const std::string& bytes) {
    TCgatsNormalizer first;
    const int code = first.Normalize(bytes);
    const bool utf16 =
        bytes.size() >= 2 && (bytes.compare(0, 2, "\xFF\xFE") == 0 || bytes.compare(0, 2, "\xFE\xFF") == 0);
    const std::vector<std::string> lines = linesOf(bytes);
    RC_ASSERT((first.GetRefusal() != nullptr) == (code != 0));
    if (code != 0) {
        RC_ASSERT(first.GetRefusal()->code == code);
        RC_ASSERT(!first.GetRefusal()->expected.empty());
        if (!utf16)
            expectInside(lines, first.GetRefusal()->line, first.GetRefusal()->column);
    }
    for (int i = 0; i < first.GetNrLiberties(); ++i) {
        const TCgatsLiberty& liberty = *first.GetLiberty(i);
        RC_ASSERT(!liberty.done.empty());
        if (!utf16)
            expectInside(lines, liberty.line, liberty.column);
    }
    if (first.GetNrLiberties() == 0 && code == 0)
        RC_ASSERT(first.GetText() == bytes);
    if (code != 0)
        return;
    RC_ASSERT(first.GetText().find('\0') == std::string::npos);
    RC_ASSERT(codeOfReader(first.GetText()) == 0);
    TCgatsNormalizer second;
    RC_ASSERT(second.Normalize(first.GetText()) == 0);
    RC_ASSERT(second.GetText() == first.GetText());
    for (int i = 0; i < second.GetNrLiberties(); ++i) // told again as long as they stand there
        RC_ASSERT(second.GetLiberty(i)->kind == TCgatsLiberty::kLineNotKept);
}

std::string written(const TCgats& document) {
    char* text = nullptr;
    RC_ASSERT(document.WriteToBuffer(&text) == 0);
    const std::unique_ptr<char[]> owned(text);
    return text;
}

// What the document writes, with scales as they are found in files.
TEST(normalizerLaws, writtenDocument_passes) {
    EXPECT_TRUE(rc::check([] {
        const int sets = *rc::gen::inRange(1, 15), colorants = *rc::gen::inRange(3, 9),
                  bands = *rc::gen::inRange(0, 12);
        const auto rows = [&](int columns, int least, int most) {
            return *rc::gen::container<std::vector<std::vector<double>>>(
                static_cast<std::size_t>(sets),
                rc::gen::container<std::vector<double>>(
                    static_cast<std::size_t>(columns),
                    rc::gen::map(rc::gen::inRange(least, most), [](int n) { return n / 100.0; })));
        };
        const auto pointers = [](const std::vector<std::vector<double>>& all) {
            std::vector<const double*> result;
            for (const auto& row : all)
                result.push_back(row.data());
            return result;
        };
        const auto device = rows(colorants, 0, 10001), lab = rows(3, -9999, 10001),
                   spectra = rows(bands, 0, 151);
        std::vector<std::vector<double>> xyz = rows(3, 0, 10001);
        xyz[0] = {80.0, 83.0, 69.0}; // paper
        std::vector<double> wavelengths;
        for (int band = 0; band < bands; ++band)
            wavelengths.push_back(380 + 10 * band);
        std::vector<std::string> names;
        for (int row = 0; row < sets; ++row)
            names.push_back(word() + " " + word());
        std::vector<const char*> nameTexts;
        for (const std::string& name : names)
            nameTexts.push_back(name.c_str());
        const TCgats document(100.0, 0.0, sets, nameTexts.data(), colorants, pointers(device).data(),
                              pointers(lab).data(), pointers(xyz).data(),
                              bands == 0 ? nullptr : pointers(spectra).data(), bands, wavelengths.data(), 0,
                              0, 0);
        RC_ASSERT(document.GetErrorCode() == 0);
        const std::string text = written(document);
        TCgatsNormalizer normalizer;
        RC_ASSERT(normalizer.Normalize(text) == 0);
        RC_ASSERT(normalizer.GetNrLiberties() == 0);
        RC_ASSERT(normalizer.GetText() == text);
    }));
}

TEST(normalizerLaws, anyBytes_areRefusedOrAccepted) {
    EXPECT_TRUE(rc::check([] { expectLaws(*rc::gen::arbitrary<std::string>()); }));
}

TEST(normalizerLaws, piecesInAnyOrder_areRefusedOrAccepted) {
    EXPECT_TRUE(rc::check([] { expectLaws(anyPieces()); }));
}

TEST(normalizerLaws, sheetOfAnyDialect_isRefusedOrAccepted) {
    EXPECT_TRUE(rc::check([] { expectLaws(anySheet().text); }));
}

TEST(normalizerLaws, damagedSheet_isRefusedOrAccepted) {
    EXPECT_TRUE(rc::check([] { expectLaws(damagedSheet()); }));
}

TEST(normalizerLaws, liberties_comeInTheOrderOfTheBytes) {
    EXPECT_TRUE(rc::check([] {
        TCgatsNormalizer normalizer;
        normalizer.Normalize(chance(5) ? damagedSheet() : anyPieces());
        std::pair<int, int> last(1, 1);
        for (int i = 0; i < normalizer.GetNrLiberties(); ++i) {
            const TCgatsLiberty& liberty = *normalizer.GetLiberty(i);
            const std::pair<int, int> place(liberty.line, liberty.column);
            RC_ASSERT(place >= last);
            last = place;
        }
    }));
}

TEST(normalizerLaws, normalisedSheet_canBeWrittenAndPassesThen) {
    EXPECT_TRUE(rc::check([] {
        TCgatsNormalizer first;
        RC_PRE(first.Normalize(anySheet().text) == 0);
        const std::string text = written(TCgats(first.GetText().c_str(), 0));
        TCgatsNormalizer second;
        RC_ASSERT(second.Normalize(text) == 0);
        RC_ASSERT(second.GetNrLiberties() == 0);
    }));
}

// How the values of conforming rows fall on lines does not matter.
TEST(normalizerLaws, conformingRowsBrokenAnywhere_pass) {
    EXPECT_TRUE(rc::check([] {
        const int rows = *rc::gen::inRange(1, 6), columns = *rc::gen::inRange(2, 6);
        const std::string blank = chance(5) ? " " : "\t";
        std::string text = "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID";
        for (int column = 1; column < columns; ++column)
            text += blank + "nm" + std::to_string(400 + column);
        text += "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " + std::to_string(rows) + "\nBEGIN_DATA\n";
        for (int row = 0; row < rows; ++row) {
            text += std::to_string(row + 1);
            for (int column = 1; column < columns; ++column)
                text += (chance(3) ? "\n" : blank) + hundredths(*rc::gen::inRange(0, 150));
            text += "\n";
        }
        text += "END_DATA\n";
        TCgatsNormalizer normalizer;
        RC_ASSERT(normalizer.Normalize(text) == 0);
        RC_ASSERT(normalizer.GetNrLiberties() == 0);
        RC_ASSERT(normalizer.GetText() == text);
    }));
}

// A sheet means the same numbers in every dialect.
TEST(normalizerLaws, numbers_comeThroughEveryDialect) {
    EXPECT_TRUE(rc::check([] {
        const Sheet sheet = anySheet();
        TCgatsNormalizer normalizer;
        RC_ASSERT(normalizer.Normalize(sheet.text) == 0);
        RC_ASSERT(!has(normalizer, {TCgatsLiberty::kSpectralScale, TCgatsLiberty::kXyzScale,
                                    TCgatsLiberty::kNumberSpelling}));
        const TCgats document(normalizer.GetText().c_str(), 0);
        RC_ASSERT(document.GetErrorCode() == 0);
        RC_ASSERT(document.GetNrTables() == 1);
        RC_ASSERT(document.GetNrSamples(0) == static_cast<int>(sheet.lab.size()));
        const TCgatsTable& table = *document.GetTable(0);
        const TCgatsTableHeader& header = *table.GetHeader();
        RC_ASSERT(header.GetLabColumns() != nullptr);
        RC_ASSERT(header.GetNrWaveLengths() == static_cast<int>(sheet.spectra[0].size()));
        for (std::size_t row = 0; row < sheet.lab.size(); ++row) {
            for (std::size_t i = 0; i < 3; ++i)
                RC_ASSERT(table.GetValues(header.GetLabColumns()[i])->GetDouble(static_cast<int>(row)) ==
                          sheet.lab[row][i]);
            for (std::size_t i = 0; i < sheet.spectra[row].size(); ++i)
                RC_ASSERT(table.GetValues(header.GetSpectralColumns()[i])->GetDouble(static_cast<int>(row)) ==
                          sheet.spectra[row][i]);
        }
    }));
}

// Every number that the reader finds behind the normaliser stood in the text, unless a liberty says
// otherwise.
TEST(normalizerLaws, numbersOfADamagedSheet_areThoseOfTheText) {
    EXPECT_TRUE(rc::check([] {
        const std::string text = damagedSheet();
        TCgatsNormalizer normalizer;
        RC_PRE(normalizer.Normalize(text) == 0);
        RC_PRE(!has(normalizer,
                    {TCgatsLiberty::kSpectralScale, TCgatsLiberty::kXyzScale, TCgatsLiberty::kNumberSpelling,
                     TCgatsLiberty::kEmptyCell, TCgatsLiberty::kQuoteClosed, TCgatsLiberty::kDoubledQuotes,
                     TCgatsLiberty::kNulBytes}));
        // Blank, TAB and quotes apart, the words of the samples are those of the text, in its order.
        const auto wordsOf = [](const std::string& from) {
            std::vector<std::string> words(1);
            for (const char c : from) {
                if (c != ' ' && c != '\t' && c != '\n' && c != '\r' && c != '"')
                    words.back() += c;
                else if (!words.back().empty())
                    words.emplace_back();
            }
            return words;
        };
        const auto isNumber = [](const std::string& one) {
            return one.find('.') != std::string::npos &&
                   one.find_first_not_of("0123456789.-") == std::string::npos;
        };
        const auto numbersOf = [&](const std::string& from) {
            std::vector<std::string> numbers = wordsOf(from);
            numbers.erase(std::remove_if(numbers.begin(), numbers.end(),
                                         [&](const std::string& one) { return !isNumber(one); }),
                          numbers.end());
            return numbers;
        };
        RC_ASSERT(numbersOf(normalizer.GetText()) == numbersOf(text));
    }));
}

} // namespace
} // namespace qxcms::tests
