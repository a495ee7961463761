// Documents built from arrays, the columns added to them, and their copies: as written.
#include <cmath>
#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/number_text.h"
#include "cgats/chart_rows.h"
#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"

namespace qxcms::tests {
namespace {

using Names = std::vector<std::string>;

constexpr double kFirst[] = {0, 51, 102, 255, 10, 20};
constexpr double kSecond[] = {255, 0, 0.00025, -5, 30, 40};
constexpr const double* kRows[] = {kFirst, kSecond};
constexpr double kWavelengths[] = {379.6, 400.4, 410};

std::string textOf(const TCgats& document, int expected = 0) {
    std::ostringstream stream;
    EXPECT_EQ(document.WriteToStream(stream), expected);
    return stream.str();
}

Names fieldsOf(const TCgats& document) {
    return namesOf(*document.GetTable(0)->GetHeader());
}

std::string deviceTextOf(double value, double full, double zero) {
    char text[detail::kFixedTextSize];
    detail::deviceText(value, full, zero, text);
    return text;
}

TEST(chartRows, valueNearZero_hasATabInFront) {
    EXPECT_EQ(deviceTextOf(0.0, 255.0, 0.0), "\t0.0");
    EXPECT_EQ(deviceTextOf(0.00009, 100.0, 0.0), "\t0.0");
    EXPECT_EQ(deviceTextOf(-20.0, 100.0, 0.0), "\t0.0");
    EXPECT_EQ(deviceTextOf(7.0, 0.0, 7.0), "\t0.0");
}

TEST(chartRows, otherValues_arePercentagesWithFiveDecimals) {
    EXPECT_EQ(deviceTextOf(255.0, 255.0, 0.0), "100.00000");
    EXPECT_EQ(deviceTextOf(0.0001, 100.0, 0.0), "0.00010");
    EXPECT_EQ(deviceTextOf(51.0, 255.0, 0.0), "20.00000");
    EXPECT_EQ(deviceTextOf(1.0, 0.0, 4.0), "75.00000");
    EXPECT_EQ(deviceTextOf(200.0, 100.0, 0.0), "200.00000");
    EXPECT_EQ(deviceTextOf(2.0, 1.0, 1.0), "inf");
}

std::unique_ptr<TCgatsTable> tableOf(const std::vector<TCgatsField*>& fields, int samples) {
    auto* const header = new TCgatsTableHeader;
    for (TCgatsField* field : fields)
        EXPECT_EQ(header->Append(field), 0);
    header->SetNrSamples(samples);
    return std::make_unique<TCgatsTable>(header);
}

TCgatsField* field(int dataType, const char* name) {
    return new TCgatsField(dataType, name, 0, TCgatsField::kCustom, 0);
}

detail::ChartArrays chartOf(int sets, int colorants) {
    detail::ChartArrays chart;
    chart.sets = sets;
    chart.colorants = colorants;
    chart.device = kRows;
    return chart;
}

TEST(chartRows, tableThatDoesNotFit_isLeftAlone) {
    const auto fits = tableOf({field(0, "a"), field(2, "b")}, 2);
    EXPECT_EQ(detail::fillTable(*fits, chartOf(1, 1)), 5);
    EXPECT_EQ(detail::fillTable(*fits, chartOf(2, 2)), 3);
    detail::ChartArrays withLab = chartOf(2, 1);
    withLab.lab = kRows;
    EXPECT_EQ(detail::fillTable(*fits, withLab), 3);
    EXPECT_EQ(fits->GetNrRowsStored(), 0);
    EXPECT_EQ(detail::fillTable(*tableOf({field(2, "a"), field(2, "b")}, 2), chartOf(2, 1)), 8);
    EXPECT_EQ(detail::fillTable(*tableOf({field(0, "a"), field(0, "b")}, 2), chartOf(2, 1)), 9);
    EXPECT_EQ(detail::fillTable(*tableOf({field(0, "a"), field(2, "b")}, 0), chartOf(0, 1)), 4);
    TCgatsTable noHeader(nullptr);
    EXPECT_EQ(detail::fillTable(noHeader, chartOf(2, 1)), 1);
    detail::ChartArrays noRow = chartOf(2, 1);
    const double* const holes[] = {kFirst, nullptr};
    noRow.device = holes;
    EXPECT_EQ(detail::fillTable(*tableOf({field(0, "a"), field(2, "b")}, 2), noRow), 10);
    EXPECT_EQ(detail::fillTable(*fits, chartOf(2, 1)), 0);
    EXPECT_EQ(fits->GetNrRowsStored(), 2);
}

TEST(cgatsBuilder, fourColorants_giveTheWholeText) {
    const TCgats document(255.0, 0.0, 2, 4, kRows, kRows, kRows, kRows, 3, kWavelengths, 12, 1, 0);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_EQ(
        textOf(document),
        "CGATS.17\nLGOROWLENGTH\t12\nNUMBER_OF_STRIPS\t12\nKEYWORD\t\"SampleID\"\nNUMBER_OF_FIELDS\t14\n"
        "BEGIN_DATA_FORMAT\nSampleID\tCMYK_C\tCMYK_M\tCMYK_Y\tCMYK_K\tLAB_L\tLAB_A\tLAB_B\tXYZ_X\tXYZ_Y\tXYZ_"
        "Z\t"
        "nm380\tnm400\tnm410\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t2\nBEGIN_DATA\n"
        "1\t0\t20\t40\t100\t0\t51\t102\t0\t51\t102\t0\t51\t102\t\n"
        "2\t100\t0\t0\t0\t255\t0\t0.00025\t255\t0\t0.00025\t255\t0\t0.00025\t\nEND_DATA\n");
    EXPECT_FALSE(document.GetTable(0)->IsSpectralPercent());
    EXPECT_EQ(document.GetNrTables(), 1);
    EXPECT_STREQ(document.GetCustomField(0), "SampleID");
    EXPECT_EQ(document.GetNrCustomFields(), 1);
    EXPECT_TRUE(document.IsCMYKDefined(0));
    EXPECT_TRUE(document.ContainsSampleNames(0));
}

TEST(cgatsBuilder, tagsOfATable_haveTheirCodesAndMarks) {
    const TCgats document(1.0, 0.0, 1, 4, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    const struct {
        int code;
        const char *keyword, *value;
        int numeric;
    } expected[] = {{-1, "CGATS.17", "", 0},         {29, "KEYWORD", "SampleID", 0},
                    {3, "NUMBER_OF_FIELDS", "5", 1}, {4, "BEGIN_DATA_FORMAT", "", 0},
                    {5, "END_DATA_FORMAT", "", 0},   {23, "NUMBER_OF_SETS", "1", 1},
                    {24, "BEGIN_DATA", "", 0},       {25, "END_DATA", "", 0}};
    ASSERT_EQ(document.GetNrTags(), 8);
    for (int i = 0; i < 8; ++i) {
        const TCgatsTag& tag = *document.GetTagAt(i);
        EXPECT_EQ(tag.GetCode(), expected[i].code);
        EXPECT_STREQ(tag.GetKeyword(), expected[i].keyword);
        EXPECT_STREQ(tag.GetValue(), expected[i].value);
        EXPECT_EQ(tag.GetNumeric(), expected[i].numeric);
        EXPECT_STREQ(tag.GetComment(), "");
    }
}

TEST(cgatsBuilder, threeColorants_areCyanMagentaYellow) {
    const TCgats document(1.0, 0.0, 1, 3, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(fieldsOf(document), (Names{"SampleID", "CMYK_C", "CMYK_M", "CMYK_Y"}));
}

TEST(cgatsBuilder, sixColorants_areNamedByTheirFlags) {
    const char* const inks[] = {"a", "b", "c", "d", "e", "f"};
    const TCgats plain(1.0, 0.0, 1, 6, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(fieldsOf(plain),
              (Names{"SampleID", "6CLR_1", "6CLR_2", "6CLR_3", "6CLR_4", "6CLR_5", "6CLR_6"}));
    EXPECT_TRUE(plain.IsNColorDefined(0));
    const TCgats process(1.0, 0.0, 1, 6, inks, kRows, nullptr, nullptr, nullptr, 0, nullptr, true);
    EXPECT_EQ(fieldsOf(process), (Names{"SampleID", "PC6_1", "PC6_2", "PC6_3", "PC6_4", "PC6_5", "PC6_6"}));
    EXPECT_EQ(process.GetNrProcessColorIdTags(), 6);
    EXPECT_EQ(process.GetNrSpotIdTags(), 0);
    EXPECT_EQ(process.GetTagAt(6)->GetCode(), 21);
    EXPECT_STREQ(process.GetTagAt(6)->GetValue(), "f");
    const TCgats spots(1.0, 0.0, 1, 6, inks, kRows, nullptr, nullptr, nullptr, 0, nullptr, false);
    EXPECT_EQ(fieldsOf(spots),
              (Names{"SampleID", "SPOT_1", "SPOT_2", "SPOT_3", "SPOT_4", "SPOT_5", "SPOT_6"}));
    EXPECT_EQ(spots.GetNrSpotIdTags(), 6);
    EXPECT_EQ(spots.GetTagAt(1)->GetCode(), 22);
    EXPECT_EQ(spots.GetTagAt(1)->GetNumeric(), 0);
}

TEST(cgatsBuilder, oneOrTwoColorantsWithoutAFlag_areNotSupported) {
    for (const int colorants : {-1, 0, 1, 2}) {
        const TCgats document(1.0, 0.0, 1, colorants, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
        EXPECT_EQ(document.GetErrorCode(), 18);
        EXPECT_STREQ(document.GetErrorMessage(), "Number of color coordinates not supported.");
        EXPECT_EQ(document.GetNrTables(), 0);
    }
    const char* const inks[] = {"a", "b"};
    EXPECT_EQ(TCgats(1.0, 0.0, 1, 2, inks, kRows, nullptr, nullptr, nullptr, 0, nullptr, true).GetErrorCode(),
              0);
}

TEST(cgatsBuilder, fieldDescriptions_areTheCallers) {
    EXPECT_EQ(TCgats::CreateProcessFieldDescriptions(0, true, true), nullptr);
    EXPECT_EQ(TCgats::CreateProcessFieldDescriptions(2, false, false), nullptr);
    TCgatsField** const fields = TCgats::CreateProcessFieldDescriptions(2, true, true);
    ASSERT_NE(fields, nullptr);
    EXPECT_STREQ(fields[1]->GetName(), "SPOT_2");
    EXPECT_EQ(fields[1]->GetKind(), TCgatsField::kSpotColor);
    EXPECT_EQ(fields[1]->GetNumber(), 1);
    for (int i = 0; i < 2; ++i)
        delete fields[i];
    delete[] fields;
}

TEST(cgatsBuilder, tableInError_givesItsDocumentCodeAndStaysCounted) {
    const TCgats noSets(1.0, 0.0, 0, 4, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(noSets.GetErrorCode(), 15);
    EXPECT_EQ(noSets.GetNrTables(), 1);
    const TCgats wavelengthsAlone(1.0, 0.0, 1, 4, kRows, nullptr, nullptr, nullptr, 3, kWavelengths, 0, 0, 0);
    EXPECT_EQ(wavelengthsAlone.GetErrorCode(), 12);
    const double negative[] = {-400};
    const TCgats badWavelength(1.0, 0.0, 1, 4, kRows, nullptr, nullptr, kRows, 1, negative, 0, 0, 0);
    EXPECT_EQ(badWavelength.GetErrorCode(), 17);
    const TCgats noDevice(1.0, 0.0, 1, 4, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(noDevice.GetErrorCode(), 1);
    EXPECT_EQ(noDevice.GetNrTables(), 1);
    EXPECT_EQ(noDevice.GetTable(0)->GetNrRowsStored(), 0);
}

TEST(cgatsBuilder, sampleNames_areCutTo127Characters) {
    const std::string longName(200, 'n');
    const char* const names[] = {longName.c_str(), "b c"};
    const TCgats document(1.0, 0.0, 2, names, 4, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    char name[200];
    EXPECT_EQ(document.GetSampleName(0, 0, name), 0);
    EXPECT_EQ(name, longName.substr(0, 127));
    EXPECT_EQ(document.GetSampleName(0, 1, name), 0);
    EXPECT_STREQ(name, "b c");
}

TEST(cgatsBuilder, tagsBeyondThe128th_areLeftOut) {
    TCgats document;
    for (int i = 0; i < 125; ++i)
        EXPECT_EQ(document.AddTag(-1, "X", 0, "", ""), 0);
    document.BuildTable(1.0, 0.0, 1, nullptr, 4, false, kRows, nullptr, nullptr, nullptr, 0, nullptr, false);
    EXPECT_EQ(document.GetNrTags(), 128);
    EXPECT_EQ(document.GetTagAt(127)->GetCode(), 4);
    EXPECT_EQ(document.AddTag(-1, "X", 0, "", ""), 1);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_EQ(document.GetNrSamples(0), 1);
}

TEST(addLab, newColumns_standBehindTheOthersAndOldOnesAreOverwritten) {
    TCgats document(255.0, 0.0, 2, 4, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(document.AddLab(0, kRows), 0);
    EXPECT_EQ(document.GetNrFields(0), 8);
    EXPECT_EQ(document.GetFieldNameIndex(0, "lab_b"), 7);
    double lab[3];
    EXPECT_EQ(document.GetLab(0, 1, lab), 0);
    EXPECT_EQ(lab[0], 255.0);
    EXPECT_EQ(lab[2], 0.00025);
    const double* const swapped[] = {kSecond, kFirst};
    EXPECT_EQ(document.AddLab(0, swapped), 0);
    EXPECT_EQ(document.GetNrFields(0), 8);
    EXPECT_EQ(document.GetLab(0, 0, lab), 0);
    EXPECT_EQ(lab[0], 255.0);
    // The count in the header is the caller's to change.
    EXPECT_STREQ(document.GetTag(3)->GetValue(), "5");
    EXPECT_EQ(document.ChangeTagValue(3, "8"), 0);
    EXPECT_EQ(TCgats(textOf(document).c_str(), 0).GetErrorCode(), 0);
    EXPECT_EQ(document.ChangeTagValue(30, "8"), 1);
}

TEST(addLab, whatCannotBeChanged_isRefused) {
    TCgats document(255.0, 0.0, 2, 4, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(document.AddLab(-1, kRows), 1);
    EXPECT_EQ(document.AddLab(1, kRows), 1);
    EXPECT_EQ(document.AddLab(0, nullptr), 1);
    const double* const holes[] = {kFirst, nullptr};
    EXPECT_EQ(document.AddLab(0, holes), 1);
    int rows[] = {7};
    TCgats tableInError(&document, rows, 1);
    EXPECT_EQ(tableInError.AddLab(0, kRows), 10);
    document.SetErrorCode(14);
    EXPECT_EQ(document.AddLab(0, kRows), 14);
    EXPECT_EQ(document.AddInkBookNames(0, {"a", "b"}), 14);
}

TEST(inkBookNames, newColumn_isDeclaredAtTheEndOfTheHeader) {
    TCgats document(255.0, 0.0, 2, 4, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(document.AddInkBookNames(0, {"a"}), 1);
    EXPECT_EQ(document.AddInkBookNames(3, {"a", "b"}), 1);
    EXPECT_FALSE(document.ContainsInkBookNames(0));
    EXPECT_EQ(document.AddInkBookNames(0, {"first", "second", "unused"}), 0);
    char name[128];
    EXPECT_EQ(document.GetInkBookName(0, 1, name), 0);
    EXPECT_STREQ(name, "second");
    const TCgatsTag& last = *document.GetTagAt(document.GetNrTags() - 1);
    EXPECT_EQ(last.GetCode(), 29);
    EXPECT_STREQ(last.GetValue(), "InkBook");
    EXPECT_STREQ(document.GetCustomField(1), "InkBook");
    EXPECT_EQ(document.GetTable(0)->GetHeader()->GetField(5)->GetKind(), TCgatsField::kCustom);
    EXPECT_EQ(document.AddInkBookNames(0, {"third", "fourth"}), 0);
    EXPECT_EQ(document.GetNrFields(0), 6);
    EXPECT_EQ(document.GetInkBookName(0, 0, name), 0);
    EXPECT_STREQ(name, "third");
}

TEST(inkBookNames, declarationInFrontOfTheTable_letsTheFileBeReadAgain) {
    TCgats document(255.0, 0.0, 2, 4, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    ASSERT_EQ(document.AddInkBookNames(0, {"a", "b"}), 0);
    ASSERT_EQ(document.ChangeTagValue(3, "6"), 0);
    EXPECT_EQ(TCgats(textOf(document).c_str(), 0).GetErrorCode(), 11);
    ASSERT_EQ(document.InsertTag(29, "KEYWORD", 0, "InkBook", "", -1, false), 0);
    const TCgats again(textOf(document).c_str(), 0);
    EXPECT_EQ(again.GetErrorCode(), 0);
    EXPECT_TRUE(again.ContainsInkBookNames(0));
}

TEST(inkBookNames, fullHeader_keepsTheColumn) {
    TCgats document(255.0, 0.0, 2, 4, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    while (document.AddTag(-1, "X", 0, "", "") == 0) {
    }
    EXPECT_EQ(document.AddInkBookNames(0, {"a", "b"}), 1);
    EXPECT_TRUE(document.ContainsInkBookNames(0));
    EXPECT_EQ(document.GetNrTags(), 128);
}

std::string fourRows() {
    return "CGATS.17\nA \"b\" # c\nKEYWORD \"LOT\"\nSPOT_ID \"s\"\nNUMBER_OF_FIELDS 7 # "
           "seven\nBEGIN_DATA_FORMAT\n"
           "SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K LOT nm400\nEND_DATA_FORMAT\nBEGIN_NOTE\nx\nEND_NOTE\n"
           "NUMBER_OF_SETS 4\nBEGIN_DATA\n1 10 20 30 40 a 50\n2 11 21 31 41 b 51\n3 12 22 32 42 c 52\n"
           "4 13 23 33 43 d 53\nEND_DATA\n" +
           tableText("LAB_L", 2, "1 2");
}

TEST(cgatsCopy, wholeCopy_isTheSameText) {
    const Reading source(fourRows());
    ASSERT_EQ(source.code, 0);
    const TCgats copy(&source.document);
    EXPECT_EQ(textOf(copy), textOf(source.document));
    EXPECT_TRUE(copy.GetTable(0)->IsSpectralPercent());
    EXPECT_EQ(copy.GetNrSpotIdTags(), 1);
    EXPECT_STREQ(copy.GetCustomField(0), "LOT");
    EXPECT_EQ(copy.GetNrCommentBlocks(), 1);
    EXPECT_EQ(copy.GetFieldNameIndex(0, "lot"), 5);
}

TEST(cgatsCopy, samples_comeInTheOrderOfTheList) {
    const Reading source(fourRows());
    int rows[] = {3, 0, 2, 3, 3};
    const TCgats copy(&source.document, rows, 5);
    EXPECT_EQ(copy.GetErrorCode(), 0);
    EXPECT_EQ(copy.GetNrSamples(0), 5);
    EXPECT_EQ(copy.GetNrSamples(1), 2);
    EXPECT_STREQ(copy.GetTag(23)->GetValue(), "5");
    char name[128];
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(copy.GetSampleName(0, i, name), source.document.GetSampleName(0, rows[i], name));
        EXPECT_EQ(copy.GetTable(0)->GetValues(1)->GetDouble(i), 10.0 + rows[i]);
        EXPECT_EQ(copy.GetTable(0)->GetValues(5)->GetString(i),
                  std::string(1, static_cast<char>('a' + rows[i])));
    }
    EXPECT_EQ(TCgats(textOf(copy).c_str(), 0).GetErrorCode(), 0);
}

TEST(cgatsCopy, sampleThatIsNotThere_putsTheTableIntoError10) {
    const Reading source(fourRows());
    for (const int bad : {-1, 4}) {
        int rows[] = {0, bad};
        const TCgats copy(&source.document, rows, 2);
        EXPECT_EQ(copy.GetErrorCode(), 0);
        EXPECT_EQ(copy.GetNrTables(), 2);
        EXPECT_EQ(copy.GetTable(0)->GetTableError(), 10);
        EXPECT_EQ(copy.GetNrFields(0), -1);
        EXPECT_EQ(copy.GetNrSamples(1), 2);
    }
}

TEST(cgatsCopy, channels_standWhereTheFirstColourStood) {
    const Reading source(
        "KEYWORD \"LOT\"\nNUMBER_OF_FIELDS 6\nBEGIN_DATA_FORMAT\nLOT CMYK_C CMYK_M nm400 CMYK_Y CMYK_K\n"
        "END_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\na 1 2 0.5 3 4\nEND_DATA\n");
    ASSERT_EQ(source.code, 0);
    int three[] = {0, 1, 2};
    EXPECT_EQ(textOf(TCgats(&source.document, three, 3, 0.0)),
              "KEYWORD\t\"LOT\"\nNUMBER_OF_FIELDS\t5\nBEGIN_DATA_FORMAT\nLOT\tCMYK_C\tCMYK_M\tCMYK_Y\tnm400\n"
              "END_DATA_FORMAT\nNUMBER_OF_SETS\t1\nBEGIN_DATA\na\t1\t2\t3\t0.5\t\nEND_DATA\n");
    int five[] = {3, 3, 9, 4, 0};
    EXPECT_EQ(textOf(TCgats(&source.document, five, 5, 12.3456789)),
              "KEYWORD\t\"LOT\"\nNUMBER_OF_FIELDS\t7\nBEGIN_DATA_FORMAT\nLOT\t5CLR_1\t5CLR_2\t5CLR_3\t5CLR_"
              "4\t5CLR_5\t"
              "nm400\nEND_DATA_FORMAT\nNUMBER_OF_SETS\t1\nBEGIN_DATA\na\t4\t4\t12.3457\t12.3457\t1\t0."
              "5\t\nEND_DATA\n");
}

TEST(cgatsCopy, fieldCount_keepsItsMarkAndComment) {
    const Reading source(fourRows());
    int channels[] = {0, 1, 2};
    const TCgats copy(&source.document, channels, 3, 0.0);
    EXPECT_STREQ(copy.GetTag(3)->GetValue(), "6");
    EXPECT_STREQ(copy.GetTag(3)->GetComment(), " seven");
    EXPECT_EQ(copy.GetTag(3)->GetNumeric(), 1);
    // The second table has no process colours to choose from.
    EXPECT_EQ(copy.GetTable(1)->GetTableError(), 13);
    EXPECT_EQ(copy.GetErrorCode(), 0);
}

TEST(cgatsCopy, channelsThatCannotBe_putTheTableIntoError13) {
    const Reading source(fourRows());
    const auto errorOf = [&](std::vector<int> channels, double value) {
        return TCgats(&source.document, channels.data(), static_cast<int>(channels.size()), value)
            .GetTable(0)
            ->GetTableError();
    };
    EXPECT_EQ(errorOf({0, 1, 4}, 0.0), 13);
    EXPECT_EQ(errorOf({0, 1, 4}, 1.0), 0);
    EXPECT_EQ(errorOf({0, 1, -1}, 1.0), 13);
    EXPECT_EQ(errorOf({0}, 0.0), 13);
    EXPECT_EQ(errorOf({0, 1}, 0.0), 13);
    EXPECT_EQ(errorOf({0, 1, 4}, std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(cgatsCopy, errorOfTheSource_isTakenOverAlone) {
    TCgats source("A 1\n", 0);
    source.SetErrorCode(13);
    const TCgats copy(&source);
    EXPECT_EQ(copy.GetErrorCode(), 13);
    EXPECT_STREQ(copy.GetErrorMessage(), "Number of samples found doesn't match number of samples declared.");
    EXPECT_EQ(copy.GetNrTags(), 0);
    TCgats tooLong;
    tooLong.SetErrorCode(-1);
    EXPECT_EQ(TCgats(&tooLong).GetErrorCode(), -1);
    EXPECT_EQ(TCgats(static_cast<const TCgats*>(nullptr)).GetErrorCode(), 1);
}

TEST(cgatsCopy, partsHandedOut_areTheCallers) {
    const Reading source(fourRows());
    std::int32_t first = 0, second = 0, count = 0;
    char** names = nullptr;
    EXPECT_EQ(source.document.CopyColorAndFieldInfo(&first, &second, &count, &names), 0);
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
    ASSERT_EQ(count, 1);
    EXPECT_STREQ(names[0], "LOT");
    delete[] names[0];
    delete[] names;
    TCgatsTable** tables = nullptr;
    EXPECT_EQ(source.document.CopyTables(&count, &tables, nullptr, 0, nullptr, 0, 0.0), 0);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(tables[1]->GetNrRowsStored(), 2);
    for (int i = 0; i < count; ++i)
        delete tables[i];
    delete[] tables;
}

TEST(addLab, columnsOfALaterTable_areFoundByName) {
    Reading reading(tableText("SAMPLE_ID", 2, "a b") + tableText("SAMPLE_ID", 2, "c d"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.AddLab(1, kRows), 0);
    EXPECT_EQ(reading.document.GetFieldNameIndex(1, "LAB_B"), 3);
    EXPECT_EQ(reading.document.GetFieldNameIndex(0, "LAB_B"), -1);
    double lab[3] = {};
    EXPECT_EQ(reading.document.GetLab(1, 1, lab), 0);
    EXPECT_EQ(lab[0], 255.0);
}

TEST(inkBookNames, ofALaterTable_areAddedOnce) {
    Reading reading(tableText("SAMPLE_ID", 2, "a b") + tableText("SAMPLE_ID", 2, "c d"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.AddInkBookNames(1, {"first", "second"}), 0);
    EXPECT_EQ(reading.document.AddInkBookNames(1, {"third", "fourth"}), 0);
    EXPECT_EQ(reading.document.GetNrFields(0), 1);
    EXPECT_EQ(reading.document.GetNrFields(1), 2);
    char name[128];
    EXPECT_EQ(reading.document.GetInkBookName(1, 1, name), 0);
    EXPECT_STREQ(name, "fourth");
}

TEST(inkBookNames, declaredBefore_areNotDeclaredTwice) {
    Reading reading("KEYWORD \"LOT\"\nKEYWORD \"InkBook\"\n" + tableText("SAMPLE_ID", 1, "a"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.AddInkBookNames(0, {"ink"}), 0);
    EXPECT_EQ(reading.document.GetNrCustomFields(), 2);
    EXPECT_EQ(reading.document.GetTable(0)->GetHeader()->GetField(1)->GetFieldId(), 1);
    const TCgatsTag& last = *reading.document.GetTagAt(reading.document.GetNrTags() - 1);
    EXPECT_EQ(last.GetCode(), 29); // the line is added all the same
    EXPECT_STREQ(last.GetValue(), "InkBook");
    EXPECT_EQ(Reading(textOf(reading.document)).code, 0);
}

TEST(inkBookNames, columnInAnotherCase_isTakenOver) {
    Reading reading("KEYWORD \"INKBOOK\"\n" + tableText("SAMPLE_ID INKBOOK", 1, "a old"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.AddInkBookNames(0, {"new"}), 0);
    EXPECT_EQ(reading.document.GetNrFields(0), 2);
    EXPECT_STREQ(reading.document.GetTable(0)->GetValues(1)->GetString(0), "new");
}

TEST(cgatsBuilder, missingRowOfAnyArray_isCode1) {
    const double* const holes[] = {kFirst, nullptr};
    const double wavelengths[] = {400};
    for (int i = 0; i < 3; ++i) {
        const TCgats document(255.0, 0.0, 2, 4, kRows, i == 0 ? holes : nullptr, i == 1 ? holes : nullptr,
                              i == 2 ? holes : nullptr, i == 2 ? 1 : 0, wavelengths, 0, 0, 0);
        EXPECT_EQ(document.GetErrorCode(), 1) << i;
        EXPECT_EQ(document.GetNrTables(), 1) << i;
        EXPECT_EQ(document.GetTable(0)->GetNrRowsStored(), 1) << i;
    }
}

TEST(cgatsBuilder, wavelengthsThatAreNotGiven_makeNoFields) {
    const double wavelengths[] = {400};
    const TCgats noArray(255.0, 0.0, 1, 4, kRows, nullptr, nullptr, kRows, 3, nullptr, 0, 0, 0);
    EXPECT_EQ(noArray.GetErrorCode(), 0);
    EXPECT_STREQ(noArray.GetTag(3)->GetValue(), "5");
    EXPECT_EQ(noArray.GetNrFields(0), 5);
    const TCgats negative(255.0, 0.0, 1, 4, kRows, nullptr, nullptr, kRows, -3, wavelengths, 0, 0, 0);
    EXPECT_EQ(negative.GetErrorCode(), 0);
    EXPECT_STREQ(negative.GetTag(3)->GetValue(), "5");
    EXPECT_EQ(negative.GetNrFields(0), 5);
}

TEST(cgatsBuilder, wavelengthsBeyondIntegers_areTheLargest) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const double wavelengths[] = {std::numeric_limits<double>::quiet_NaN(), kInfinity, 1e300, -0.7};
    const TCgats document(255.0, 0.0, 1, 4, kRows, nullptr, nullptr, kRows, 4, wavelengths, 0, 0, 0);
    EXPECT_EQ(document.GetErrorCode(), 0);
    const TCgatsTableHeader& header = *document.GetTable(0)->GetHeader();
    EXPECT_STREQ(header.GetField(5)->GetName(), "nm0");
    EXPECT_STREQ(header.GetField(6)->GetName(), "nm2147483647");
    EXPECT_STREQ(header.GetField(7)->GetName(), "nm2147483647");
    EXPECT_STREQ(header.GetField(8)->GetName(), "nm0"); // -0.7 + 0.5 without its fraction
    const double below[] = {-kInfinity};
    EXPECT_EQ(TCgats(255.0, 0.0, 1, 4, kRows, nullptr, nullptr, kRows, 1, below, 0, 0, 0).GetErrorCode(), 17);
}

TEST(cgatsBuilder, namesThatAreNotThere_areEmpty) {
    const char* const names[] = {nullptr, "b"};
    const char* const inks[] = {nullptr, "x"};
    const TCgats document(255.0, 0.0, 2, names, 2, inks, kRows, nullptr, nullptr, nullptr, 0, nullptr, true);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_STREQ(document.GetTagAt(1)->GetValue(), "");
    EXPECT_STREQ(document.GetTagAt(2)->GetValue(), "x");
    EXPECT_STREQ(document.GetTable(0)->GetValues(0)->GetString(0), "");
    const TCgats noInks(255.0, 0.0, 1, 2, static_cast<const char* const*>(nullptr), kRows, nullptr, nullptr,
                        nullptr, 0, nullptr, false);
    EXPECT_EQ(noInks.GetErrorCode(), 0);
    EXPECT_EQ(noInks.GetNrSpotIdTags(), 2);
    EXPECT_STREQ(noInks.GetTagAt(2)->GetValue(), "");
}

TEST(chartRows, percentage_isMultipliedBeforeItIsDivided) {
    // 3e-6 * 100 / 3 is not below 0.0001 in double precision, 3e-6 / 3 * 100 is.
    EXPECT_EQ(deviceTextOf(3e-6, 3.0, 0.0), "0.00010");
    EXPECT_EQ(deviceTextOf(1e307, 1e307, 0.0), "inf");
}

TEST(cgatsBuilder, undefinedAndNegativelyZeroValues_comeBackAsWritten) {
    const double device[] = {std::numeric_limits<double>::quiet_NaN(),
                             std::numeric_limits<double>::infinity(), 1e300, -0.0};
    const double lab[] = {-0.0, -1e-7, 1.0};
    const double* const deviceRow[] = {device};
    const double* const labRow[] = {lab};
    const TCgats document(100.0, 0.0, 1, 4, deviceRow, labRow, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(document.GetErrorCode(), 0);
    const std::string text = textOf(document);
    EXPECT_NE(text.find("\n1\tnan\tinf\t1e+300\t0\t-0\t-0\t1\t\n"), std::string::npos) << text;
    const TCgats again(text.c_str(), 0);
    EXPECT_EQ(again.GetErrorCode(), 0);
    EXPECT_EQ(textOf(again), text);
}

TEST(cgatsBuilder, secondTable_standsBehindTheFirst) {
    TCgats document(255.0, 0.0, 1, 4, kRows, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    document.BuildTable(255.0, 0.0, 2, nullptr, 6, false, kRows, nullptr, nullptr, nullptr, 0, nullptr,
                        false);
    EXPECT_EQ(document.GetErrorCode(), 0);
    ASSERT_EQ(document.GetNrTables(), 2);
    EXPECT_EQ(document.GetNrProcessColors(1), 6);
    const TCgats again(textOf(document).c_str(), 0);
    EXPECT_EQ(again.GetErrorCode(), 0);
    EXPECT_EQ(again.GetNrSamples(0), 1);
    EXPECT_EQ(again.GetNrSamples(1), 2);
}

TEST(cgatsBuilder, tagWithoutAKeyword_holdsItsCodeAndStopsTheWriter) {
    TCgats document;
    EXPECT_EQ(document.AddTag(0, nullptr, 0, "a", "b"), 0);
    EXPECT_EQ(document.AddTag(0, "X", 0, nullptr, nullptr), 0);
    EXPECT_EQ(document.GetTagAt(0)->GetKeyword(), nullptr);
    EXPECT_STREQ(document.GetTagAt(1)->GetValue(), "");
    EXPECT_EQ(textOf(document, 22), "");
    EXPECT_EQ(document.ChangeTagValue(0, "new"), 1); // the first tag of that code has no value to change
}

TEST(cgatsBuilder, noText_changesNoTag) {
    TCgats document;
    document.AddTag(0, "ORIGINATOR", 0, "me", "");
    EXPECT_EQ(document.ChangeTagValue(0, nullptr), 1);
    EXPECT_STREQ(document.GetOriginator(), "me");
    EXPECT_EQ(document.ChangeTagValue(0, document.GetOriginator()), 0); // its own text
    EXPECT_STREQ(document.GetOriginator(), "me");
}

TEST(cgatsBuilder, changedTag_staysQuotedOrBare) {
    TCgats document;
    document.AddTag(0, "ORIGINATOR", 0, "me", "");
    document.AddTag(3, "NUMBER_OF_FIELDS", 1, "5", "");
    EXPECT_EQ(document.ChangeTagValue(0, "you"), 0);
    EXPECT_EQ(document.ChangeTagValue(3, "6"), 0);
    EXPECT_EQ(textOf(document), "ORIGINATOR\t\"you\"\nNUMBER_OF_FIELDS\t6\n");
}

TEST(cgatsBuilder, namesBeyondTheTagList_areNotCounted) {
    const std::vector<double> device(200, 50.0);
    const double* const rows[] = {device.data()};
    const std::vector<const char*> inks(200, "ink");
    const TCgats document(100.0, 0.0, 1, 200, inks.data(), rows, nullptr, nullptr, nullptr, 0, nullptr,
                          false);
    EXPECT_EQ(document.GetNrTags(), 128);
    EXPECT_EQ(document.GetNrSpotIdTags(), 127); // as many as there are behind the first line
}

TEST(addLab, oneSample_isEnough) {
    Reading reading(tableText("SAMPLE_ID", 1, "a"));
    ASSERT_EQ(reading.code, 0);
    const double first[] = {50.0, 1.0, -1.0};
    const double second[] = {60.0, 2.0, -2.0};
    const double* rows[] = {first};
    EXPECT_EQ(reading.document.AddLab(0, rows), 0);
    rows[0] = second;
    EXPECT_EQ(reading.document.AddLab(0, rows), 0);
    double lab[3] = {};
    EXPECT_EQ(reading.document.GetLab(0, 0, lab), 0);
    EXPECT_EQ(lab[0], 60.0);
}

TEST(inkBookNames, declaredFirst_areNotDeclaredTwice) {
    Reading reading("KEYWORD \"InkBook\"\n" + tableText("SAMPLE_ID", 1, "a"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.AddInkBookNames(0, {"ink"}), 0);
    EXPECT_EQ(reading.document.GetNrCustomFields(), 1);
    EXPECT_EQ(reading.document.GetTable(0)->GetHeader()->GetField(1)->GetFieldId(), 0);
}

} // namespace
} // namespace qxcms::tests
