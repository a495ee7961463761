// Texts on their way into form when the memory fails.
#include <algorithm>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "cgats/tcgats.h"
#include "cgats/tcgatsnormalizer.h"
#include "tests/cgats/documents.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"

namespace qxcms::tests {
namespace {

using Kind = TCgatsLiberty::Kind;

const std::string kHead = "CGATS.17\n";
const std::string kTable = tableText("SAMPLE_ID LAB_L", 2, "1 95.2\n2 16.8");

std::string utf16(const std::string& text) {
    std::string bytes = "\xFF\xFE";
    for (const char c : text) {
        bytes += c;
        bytes += '\0';
    }
    return bytes;
}

// A paper, a black and colours, on a scale of 0 to 1.
std::string xyzRows() {
    std::string rows = "0.801 0.831 0.687\n0.008 0.009 0.007";
    for (int i = 0; i < 8; ++i)
        rows += "\n0.2" + std::to_string(i) + " 0.3 0.1";
    return rows;
}

// The first five rows are too dark to tell percent from fractions.
std::string darkRows() {
    return repeated("2.5 3.5 4.5 5.5\n", 5) + "61.5 62.5 63.5 64.5";
}

// More lines than are kept, some of which only name spectral columns.
std::string manyLines() {
    std::string text = kHead;
    for (int i = 0; i < 126; ++i)
        text += "LINE_" + std::to_string(i) + " 1\n";
    for (const char* name : {"SPEC_400", "SPEC_410", "SPEC_420"})
        text += std::string("KEYWORD \"") + name + "\"\n";
    return text + tableText("SPEC_400 SPEC_410 SPEC_420", 1, "0.1 0.2 0.3");
}

struct Mended {
    const char* name;
    std::string bytes;
    std::vector<int> liberties; // kinds that are among its liberties or remarks
};

struct Refused {
    const char* name;
    std::string bytes;
    int code;
};

std::ostream& operator<<(std::ostream& stream, const Mended& text) {
    return stream << text.name;
}

std::ostream& operator<<(std::ostream& stream, const Refused& text) {
    return stream << text.name;
}

std::vector<Mended> mendedTexts() {
    return {
        {"conforming", kHead + kTable, {}},
        {"header",
         kHead +
             "ORIGINATOR the proof desk # by hand\nSERIAL \"7-11-13-17\" second shift\n"
             "FILE_DESCRIPTOR \"a \"\"b\"\" c\"\nCREATED \"never closed\nBEGIN_NOTES\nEND_NOTES\n"
             "\"a line of free text in quotes\"\n" +
             kTable,
         {Kind::kValueQuoted, Kind::kTextBehindValue, Kind::kDoubledQuotes, Kind::kQuoteClosed,
          Kind::kEmptyCommentBlock, Kind::kFreeText}},
        {"declarations",
         kHead + "KEYWORD \"LAB_L\"\n" +
             tableText("SAMPLE_ID LAB_L STDEV_DE SAMPLE_LOCATION_OF_MINE", 1, "1 50 0.25 A1"),
         {Kind::kKeywordDropped, Kind::kFieldDeclared}},
        {"spectraRenamed",
         kHead + tableText("SAMPLE_ID SPEC_380 SPEC_382.5 R_390nm 400nm", 1, "1 0.1 0.2 0.3 0.4"),
         {Kind::kSpectralName, Kind::kWavelengthRounded}},
        {"spectralPairs",
         kHead + tableText("SAMPLE_ID SPECTRAL_NM SPECTRAL_PCT SPECTRAL_NM SPECTRAL_PCT", 2,
                           "1 400 21.5 410 22.75\n2 400 61.5 410 63.75"),
         {Kind::kSpectralPairs}},
        {"cells",
         kHead + tableText("SAMPLE_ID\tSAMPLE_NAME\tLAB_L\tLAB_A", 3,
                           "1\tpaper as white as snow\t95.21\t-0.43\n2\t\t\"53,86\"\t68.12\n"
                           "3\treflex blue of the day\t1 234.5\t1.08"),
         {Kind::kCellQuoted, Kind::kEmptyCell, Kind::kNumberSpelling}},
        {"comments",
         "CGATS.17 # first\n# a comment on a line of its own\nORIGINATOR \"me\"\n"
         "BEGIN_DATA_FORMAT\n# in the format, longer than a few letters\nLAB_L\nEND_DATA_FORMAT\n"
         "NUMBER_OF_SETS 2\nBEGIN_DATA\n50\n# among the samples, for the first\n60\nEND_DATA\n"
         "# behind everything, for nobody\n",
         {Kind::kCommentMoved, Kind::kCommentDropped}},
        {"utf16",
         utf16(kHead + "ORIGINATOR the proof desk\n" + kTable),
         {Kind::kEncoding, Kind::kValueQuoted}},
        {"markAndNulBytes",
         "\xEF\xBB\xBF" + kHead + std::string(3, '\0') + kTable,
         {Kind::kEncoding, Kind::kNulBytes}},
        {"percentSpectra",
         kHead + tableText("nm400 nm410 nm420 nm430", 6, darkRows()),
         {Kind::kSpectralScale}},
        {"spectralNorm",
         kHead + "SPECTRAL_NORM 255\n" + tableText("nm400 nm410", 2, "127.5 51\n102 255"),
         {Kind::kSpectralScale}},
        {"xyzScale", kHead + tableText("XYZ_X XYZ_Y XYZ_Z", 10, xyzRows()), {Kind::kXyzScale}},
        {"deviceScale",
         kHead + tableText("RGB_R RGB_G RGB_B", 2, "0 0 0\n255 255 255"),
         {Kind::kDeviceScale}},
        {"formatTakenOver",
         kHead + "BEGIN_DATA_FORMAT\nSAMPLE_ID STRING LAB_L\nEND_DATA_FORMAT\nNUMBER_OF_SETS 1\n"
                 "BEGIN_DATA\n1 a 50\nEND_DATA\nNUMBER_OF_SETS 2\nBEGIN_DATA\n1 b 60\n2 c 70\nEND_DATA\n",
         {Kind::kFormatTakenOver}},
        {"counts",
         "CGATS.17\r\nNUMBER_OF_FIELDS 7\r\nBEGIN_DATA_FORMAT SAMPLE_ID LAB_L\r\nEND_DATA_FORMAT\r\n"
         "NUMBER_OF_SETS 9\r\nBEGIN_DATA\r\n1 50\r\n2 60\r\nEND_DAT\r\n",
         {Kind::kKeywordSpelling, Kind::kFieldCount, Kind::kSampleCount, Kind::kTextBehindKeyword}},
        {"keywordsInLowerCase",
         kHead + "begin_data_format\nSAMPLE_ID LAB_L\nend_data_format\nnumber_of_sets 1\nbegin_data\n"
                 "1 50\nend_data\n",
         {Kind::kKeywordSpelling}},
        {"tooManyLines", manyLines(), {Kind::kSpectralName, Kind::kKeywordDropped, Kind::kLineNotKept}},
    };
}

std::vector<Refused> refusedTexts() {
    return {
        {"formatMissing", kHead + "NUMBER_OF_SETS 1\nBEGIN_DATA\n1 2\nEND_DATA\n", 6},
        {"endOfFormatMissing", kHead + "ORIGINATOR the desk\nBEGIN_DATA_FORMAT\nLAB_L LAB_A\n", 9},
        {"wavelengthTwice", kHead + tableText("SPEC_382.5 SPEC_383", 1, "0.1 0.2"), 11},
        {"beginOfFormatMissing",
         kHead + "NUMBER_OF_FIELDS 2\nSAMPLE_ID LAB_L\nEND_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n"
                 "1 50\nEND_DATA\n",
         12},
        {"rowTooShort", kHead + tableText("SAMPLE_ID LAB_L LAB_A", 3, "1 2 3\n4 5\n6 7 8"), 13},
        {"noSamples", kHead + tableText("LAB_L", 1, ""), 15},
        {"valueTooLong", kHead + tableText("SAMPLE_ID LAB_L", 1, std::string(128, 'a') + " 50"), 1},
        {"keywordTooLong", std::string(TCgats::kMaxKeyword + 1, 'k') + "\n" + kTable, -1},
    };
}

// All that a normalizer tells.
struct Told {
    Told(const TCgatsNormalizer& normalizer, int answered) : code(answered), text(normalizer.GetText()) {
        for (int i = 0; i < normalizer.GetNrLiberties(); ++i)
            liberties.push_back(asTuple(*normalizer.GetLiberty(i)));
        for (int i = 0; i < normalizer.GetNrRemarks(); ++i)
            remarks.push_back(asTuple(*normalizer.GetRemark(i)));
        const TCgatsRefusal* const refusal = normalizer.GetRefusal();
        if (refusal != nullptr)
            refusals.emplace_back(refusal->code, refusal->line, refusal->column, refusal->token,
                                  refusal->expected);
    }

    bool operator==(const Told& other) const = default;

    using Entry = std::tuple<int, int, int, std::string, std::string>;
    static Entry asTuple(const TCgatsLiberty& liberty) {
        return {int{liberty.kind}, liberty.line, liberty.column, liberty.token, liberty.done};
    }

    int code;
    std::string text;
    std::vector<Entry> liberties, remarks, refusals;
};

void PrintTo(const Told& told, std::ostream* stream) {
    *stream << "code " << told.code << ", " << told.liberties.size() << " liberties, " << told.remarks.size()
            << " remarks, " << told.refusals.size() << " refusals, text "
            << testing::PrintToString(told.text);
}

Told toldOf(TCgatsNormalizer& normalizer, std::string bytes) {
    const int code = normalizer.Normalize(std::move(bytes));
    return Told(normalizer, code);
}

Told toldOf(const std::string& bytes) {
    TCgatsNormalizer normalizer;
    return toldOf(normalizer, bytes);
}

// Without memory there is nothing to be told.
const Told kNothing(TCgatsNormalizer(), 1);

// A normalizer that has taken another text before is left with that of the bytes or with nothing, and takes
// the bytes when there is memory.
void expectWholeOrNothing(const std::string& bytes) {
    const Told whole = toldOf(bytes);
    const std::string other = kHead + "ORIGINATOR somebody else altogether\n" + kTable;
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TCgatsNormalizer normalizer;
        ASSERT_EQ(normalizer.Normalize(other), 0);
        ASSERT_EQ(normalizer.GetNrLiberties(), 1);
        std::string moved = bytes;
        faults.arm();
        const int code = normalizer.Normalize(std::move(moved));
        faults.disarm();
        const Told told(normalizer, code);
        if (told == kNothing) {
            EXPECT_TRUE(faults.happened());
        } else {
            EXPECT_EQ(told, whole);
        }
        EXPECT_EQ(toldOf(normalizer, bytes), whole);
    });
}

std::vector<int> kindsOf(const Told& told) {
    std::vector<int> kinds;
    for (const Told::Entry& entry : told.liberties)
        kinds.push_back(std::get<0>(entry));
    for (const Told::Entry& entry : told.remarks)
        kinds.push_back(std::get<0>(entry));
    return kinds;
}

template <class Text>
class FaultsOf : public OnSubstitutePlatform, public testing::WithParamInterface<Text> {};

const auto nameOf = [](const auto& instance) { return std::string(instance.param.name); };

using mendedTextFaults = FaultsOf<Mended>;

TEST_P(mendedTextFaults, textMendedWithMemory_takesTheLibertiesInQuestion) {
    const Told whole = toldOf(GetParam().bytes);
    EXPECT_EQ(whole.code, 0);
    EXPECT_THAT(kindsOf(whole), testing::IsSupersetOf(GetParam().liberties));
    EXPECT_EQ(whole.text == GetParam().bytes, whole.liberties.empty());
}

TEST_P(mendedTextFaults, textMendedWithoutMemory_isWholeOrNothing) {
    expectWholeOrNothing(GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(of, mendedTextFaults, testing::ValuesIn(mendedTexts()), nameOf);

using refusedTextFaults = FaultsOf<Refused>;

TEST_P(refusedTextFaults, textRefusedWithMemory_hasItsCode) {
    const Told whole = toldOf(GetParam().bytes);
    EXPECT_EQ(whole.code, GetParam().code);
    ASSERT_EQ(whole.refusals.size(), 1U);
    EXPECT_EQ(std::get<0>(whole.refusals[0]), GetParam().code);
}

TEST_P(refusedTextFaults, textRefusedWithoutMemory_isRefusedAlikeOrNothing) {
    expectWholeOrNothing(GetParam().bytes);
}

INSTANTIATE_TEST_SUITE_P(of, refusedTextFaults, testing::ValuesIn(refusedTexts()), nameOf);

} // namespace
} // namespace qxcms::tests
