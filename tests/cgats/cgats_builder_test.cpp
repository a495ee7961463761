// Documents made from arrays: header lines, fields, the texts of the values, and columns added later.
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

using Rows = std::vector<std::vector<double>>;
using Names = std::vector<std::string>;

constexpr int kKeyword = 29;
constexpr int kNumberOfFields = 3;
constexpr int kNumberOfSets = 23;

// Rows and names as the pointers that the builders take.
class RowPointers {
public:
    explicit RowPointers(const Rows& rows) {
        for (const std::vector<double>& row : rows)
            pointers.push_back(row.data());
    }
    const double* const* get() const { return pointers.empty() ? nullptr : pointers.data(); }

private:
    std::vector<const double*> pointers;
};

class NamePointers {
public:
    explicit NamePointers(const Names& names) {
        for (const std::string& name : names)
            pointers.push_back(name.c_str());
    }
    const char* const* get() const { return pointers.empty() ? nullptr : pointers.data(); }

private:
    std::vector<const char*> pointers;
};

// What a chart is made from; what is empty is not given.
struct Chart {
    double full = 100;
    double zero = 0;
    Names names;
    Rows device;
    Rows lab;
    Rows xyz;
    Rows spectra;
    std::vector<double> wavelengths;

    int sets() const { return static_cast<int>(device.size()); }
    int colorants() const { return static_cast<int>(device.at(0).size()); }
};

std::unique_ptr<TCgats> withLayout(const Chart& chart, int layout1 = 0, int layout2 = 0, int layout3 = 0) {
    const RowPointers device(chart.device);
    const RowPointers lab(chart.lab);
    const RowPointers xyz(chart.xyz);
    const RowPointers spectra(chart.spectra);
    const NamePointers names(chart.names);
    const int count = static_cast<int>(chart.wavelengths.size());
    if (chart.names.empty())
        return std::make_unique<TCgats>(chart.full, chart.zero, chart.sets(), chart.colorants(), device.get(),
                                        lab.get(), xyz.get(), spectra.get(), count, chart.wavelengths.data(),
                                        layout1, layout2, layout3);
    return std::make_unique<TCgats>(chart.full, chart.zero, chart.sets(), names.get(), chart.colorants(),
                                    device.get(), lab.get(), xyz.get(), spectra.get(), count,
                                    chart.wavelengths.data(), layout1, layout2, layout3);
}

std::unique_ptr<TCgats> withColorants(const Chart& chart, const Names& colorants, bool process) {
    const RowPointers device(chart.device);
    const RowPointers lab(chart.lab);
    const RowPointers xyz(chart.xyz);
    const RowPointers spectra(chart.spectra);
    const NamePointers names(chart.names);
    const NamePointers inks(colorants);
    const int count = static_cast<int>(chart.wavelengths.size());
    if (chart.names.empty())
        return std::make_unique<TCgats>(chart.full, chart.zero, chart.sets(), chart.colorants(), inks.get(),
                                        device.get(), lab.get(), xyz.get(), spectra.get(), count,
                                        chart.wavelengths.data(), process);
    return std::make_unique<TCgats>(chart.full, chart.zero, chart.sets(), names.get(), chart.colorants(),
                                    inks.get(), device.get(), lab.get(), xyz.get(), spectra.get(), count,
                                    chart.wavelengths.data(), process);
}

Chart oneRow(std::vector<double> device) {
    Chart chart;
    chart.device = {std::move(device)};
    return chart;
}

// Two samples of four colorants.
Chart cmykChart() {
    Chart chart;
    chart.device = {{0, 25, 50, 100}, {1, 2, 3, 4}};
    return chart;
}

// Numbers of at most six digits, so that nothing is lost in print.
Chart fullChart(int colorants) {
    Chart chart;
    chart.names = {"paper", "dark red", "x"};
    for (int row = 0; row < 3; ++row) {
        const double shift = row * 0.5;
        std::vector<double> device;
        for (int i = 0; i < colorants; ++i)
            device.push_back(10.0 * i + shift);
        chart.device.push_back(device);
        chart.lab.push_back({50.25 + shift, -12.5, 0.125 + shift});
        chart.xyz.push_back({20.5 + shift, 18.75, 3.0625});
        chart.spectra.push_back({0.0625, 0.5 + shift / 10, 0.75});
    }
    chart.wavelengths = {400, 420, 410};
    return chart;
}

std::string written(const TCgats& document) {
    char* text = nullptr;
    EXPECT_EQ(document.WriteToBuffer(&text), 0);
    const std::unique_ptr<char[]> owner(text);
    return text == nullptr ? "(nothing)" : text;
}

Names fieldsOf(const TCgats& document) {
    if (document.GetTable(0) == nullptr || document.GetTable(0)->GetHeader() == nullptr)
        return {"(no header)"};
    return namesOf(*document.GetTable(0)->GetHeader());
}

std::string tagLine(const TCgats& document, int index) {
    std::ostringstream stream;
    EXPECT_EQ(document.WriteTag(index, stream), 0);
    return stream.str();
}

// Kind, number, id and type of a column.
std::vector<int> classOf(const TCgats& document, int column) {
    const TCgatsField* field = document.GetTable(0)->GetHeader()->GetField(column);
    return {field->GetKind(), field->GetNumber(), field->GetFieldId(), field->GetDataType()};
}

std::vector<double> labOf(const TCgats& document, int sample) {
    std::vector<double> lab(3, -1.0);
    EXPECT_EQ(document.GetLab(0, sample, lab.data()), 0);
    return lab;
}

double valueAt(const TCgats& document, int column, int row) {
    return document.GetTable(0)->GetValues(column)->GetDouble(row);
}

// A document read from a text, whose header says one sample more than there are.
void readWithAMissingRow(TCgats& document) {
    const std::string text = "SAMPLE_ID LAB_L LAB_A LAB_B END_DATA_FORMAT \na 1 2 3\nb 4 5 6\n";
    const char* position = text.c_str();
    ASSERT_EQ(document.ReadTmpHeader(&position), 0);
    position += std::string("END_DATA_FORMAT").size();
    TCgatsTableHeader* header = document.GetTmpHeader();
    document.SetNrSamples(2);
    ASSERT_EQ(document.ReadTable(&position), 0);
    header->SetNrSamples(3);
}

void fillTagList(TCgats& document) {
    while (document.GetNrTags() < TCgats::kMaxTags)
        ASSERT_EQ(document.AddTag(-1, "FILLER", 1, "1", ""), 0);
}

// ---- The header lines.

TEST(cgatsBuilder, headerLines_comeInTheirOrder) {
    Chart chart = cmykChart();
    chart.lab = {{1, 2, 3}, {4, 5, 6}};
    const auto document = withLayout(chart);
    ASSERT_EQ(document->GetErrorCode(), 0);
    ASSERT_EQ(document->GetNrTags(), 8);
    EXPECT_EQ(tagLine(*document, 0), "CGATS.17\n");
    EXPECT_EQ(tagLine(*document, 1), "KEYWORD\t\"SampleID\"\n");
    EXPECT_EQ(tagLine(*document, 2), "NUMBER_OF_FIELDS\t8\n");
    EXPECT_EQ(tagLine(*document, 3), "BEGIN_DATA_FORMAT\n");
    EXPECT_EQ(tagLine(*document, 4), "END_DATA_FORMAT\n");
    EXPECT_EQ(tagLine(*document, 5), "NUMBER_OF_SETS\t2\n");
    EXPECT_EQ(tagLine(*document, 6), "BEGIN_DATA\n");
    EXPECT_EQ(tagLine(*document, 7), "END_DATA\n");
}

TEST(cgatsBuilder, headerLines_haveTheCodesOfTheirKeywords) {
    const auto document = withLayout(cmykChart());
    const std::vector<int> codes = {-1, kKeyword, kNumberOfFields, 4, 5, kNumberOfSets, 24, 25};
    const std::vector<int> marks = {0, 0, 1, 0, 0, 1, 0, 0};
    ASSERT_EQ(document->GetNrTags(), 8);
    for (int i = 0; i < 8; ++i) {
        const std::size_t at = static_cast<std::size_t>(i);
        EXPECT_EQ(document->GetTagAt(i)->GetCode(), codes[at]) << i;
        EXPECT_EQ(document->GetTagAt(i)->GetNumeric(), marks[at]) << i;
        EXPECT_STREQ(document->GetTagAt(i)->GetComment(), "") << i;
    }
}

TEST(cgatsBuilder, rowLengthAlone_isWrittenUnderBothKeywords) {
    const auto document = withLayout(cmykChart(), 12, 1, 0);
    ASSERT_EQ(document->GetNrTags(), 10);
    EXPECT_EQ(tagLine(*document, 1), "LGOROWLENGTH\t12\n");
    EXPECT_EQ(tagLine(*document, 2), "NUMBER_OF_STRIPS\t12\n");
    EXPECT_EQ(tagLine(*document, 3), "KEYWORD\t\"SampleID\"\n");
}

TEST(cgatsBuilder, wholeLayout_standsBeforeTheTable) {
    const auto document = withLayout(cmykChart(), 24, 2, 3);
    ASSERT_EQ(document->GetNrTags(), 12);
    EXPECT_EQ(tagLine(*document, 1), "LGOROWLENGTH\t24\n");
    EXPECT_EQ(tagLine(*document, 2), "NUMBER_OF_STRIPS\t24\n");
    EXPECT_EQ(tagLine(*document, 3), "NUMBER_OF_COLS\t2\n");
    EXPECT_EQ(tagLine(*document, 4), "NumberOfStrips\t3\n");
    EXPECT_EQ(tagLine(*document, 5), "KEYWORD\t\"SampleID\"\n");
}

TEST(cgatsBuilder, layoutWithSampleNames_isTheSame) {
    Chart chart = cmykChart();
    chart.names = {"a", "b"};
    const auto document = withLayout(chart, 12, 2, 2);
    EXPECT_EQ(document->GetRowLength(), 12);
    EXPECT_EQ(document->GetNrOfCols(), 2);
    EXPECT_EQ(document->GetNrOfPages(), 2);
    EXPECT_EQ(document->GetGapSizeX(), -1.0);
    EXPECT_FALSE(document->IsVandLayout());
}

TEST(cgatsBuilder, processColorNames_areATagEach) {
    const auto document = withColorants(oneRow({1, 2}), {"Deep Orange", "Green"}, true);
    ASSERT_EQ(document->GetErrorCode(), 0);
    EXPECT_EQ(tagLine(*document, 1), "PROCESSCOLOR_ID\t\"Deep Orange\"\n");
    EXPECT_EQ(tagLine(*document, 2), "PROCESSCOLOR_ID\t\"Green\"\n");
    EXPECT_EQ(tagLine(*document, 3), "KEYWORD\t\"SampleID\"\n");
    EXPECT_EQ(document->GetTagAt(1)->GetCode(), 21);
    EXPECT_EQ(document->GetNrProcessColorIdTags(), 2);
    EXPECT_EQ(document->GetNrSpotIdTags(), 0);
}

TEST(cgatsBuilder, spotNames_areATagEach) {
    const auto document = withColorants(oneRow({1, 2}), {"Gold", "Silver"}, false);
    ASSERT_EQ(document->GetErrorCode(), 0);
    EXPECT_EQ(tagLine(*document, 1), "SPOT_ID\t\"Gold\"\n");
    EXPECT_EQ(tagLine(*document, 2), "SPOT_ID\t\"Silver\"\n");
    EXPECT_EQ(document->GetTagAt(1)->GetCode(), 22);
    EXPECT_EQ(document->GetNrProcessColorIdTags(), 0);
    EXPECT_EQ(document->GetNrSpotIdTags(), 2);
}

TEST(cgatsBuilder, sampleIdentifier_isDeclared) {
    const auto document = withLayout(cmykChart());
    ASSERT_EQ(document->GetNrCustomFields(), 1);
    EXPECT_STREQ(document->GetCustomField(0), "SampleID");
}

TEST(cgatsBuilder, namesThatFillTheTagList_leaveTheOtherLinesOut) {
    const int colorants = 126; // with the first line and "KEYWORD" exactly as many as there is room for
    Names names;
    std::vector<double> device;
    for (int i = 0; i < colorants; ++i) {
        names.push_back("ink " + std::to_string(i));
        device.push_back(i);
    }
    const auto document = withColorants(oneRow(device), names, true);
    EXPECT_EQ(document->GetErrorCode(), 0);
    EXPECT_EQ(document->GetNrTags(), TCgats::kMaxTags);
    EXPECT_EQ(tagLine(*document, 127), "KEYWORD\t\"SampleID\"\n");
    EXPECT_EQ(document->FindTag(kNumberOfFields), -1);
    EXPECT_EQ(document->GetNrFields(0), 127);
    EXPECT_EQ(valueAt(*document, 126, 0), 125.0);
}

TEST(cgatsBuilder, moreNamesThanTags_stillMakeAllFields) {
    const int colorants = 200;
    const auto document = withColorants(oneRow(std::vector<double>(colorants, 50.0)),
                                        Names(static_cast<std::size_t>(colorants), "ink"), false);
    EXPECT_EQ(document->GetErrorCode(), 0);
    EXPECT_EQ(document->GetNrTags(), TCgats::kMaxTags);
    EXPECT_EQ(document->GetNrSpotColors(0), colorants);
}

// ---- The fields.

TEST(cgatsBuilder, fourColorantsLabAnd36Wavelengths_are44Fields) {
    Chart chart = cmykChart();
    chart.lab = {{1, 2, 3}, {4, 5, 6}};
    Names expected = {"SampleID", "CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K", "LAB_L", "LAB_A", "LAB_B"};
    for (int nm = 380; nm <= 730; nm += 10) {
        chart.wavelengths.push_back(nm);
        expected.push_back("nm" + std::to_string(nm));
    }
    chart.spectra = {std::vector<double>(36, 0.25), std::vector<double>(36, 0.5)};
    const auto document = withLayout(chart);
    ASSERT_EQ(document->GetErrorCode(), 0);
    EXPECT_EQ(fieldsOf(*document), expected);
    EXPECT_STREQ(document->GetTag(kNumberOfFields)->GetValue(), "44");
    char name[128] = "";
    EXPECT_EQ(document->GetSampleName(0, 0, name), 0);
    EXPECT_STREQ(name, "1");
    EXPECT_EQ(document->GetSampleName(0, 1, name), 0);
    EXPECT_STREQ(name, "2");
}

TEST(cgatsBuilder, labComesBeforeXyzBeforeTheSpectrum) {
    Chart chart = oneRow({10, 20, 30});
    chart.lab = {{1, 2, 3}};
    chart.xyz = {{4, 5, 6}};
    chart.spectra = {{0.5}};
    chart.wavelengths = {500};
    const auto document = withLayout(chart);
    EXPECT_EQ(fieldsOf(*document), (Names{"SampleID", "CMYK_C", "CMYK_M", "CMYK_Y", "LAB_L", "LAB_A", "LAB_B",
                                          "XYZ_X", "XYZ_Y", "XYZ_Z", "nm500"}));
    for (int column = 1; column <= 3; ++column)
        EXPECT_EQ(valueAt(*document, column, 0), 10.0 * column);
    for (int column = 4; column <= 9; ++column)
        EXPECT_EQ(valueAt(*document, column, 0), column - 3.0);
    EXPECT_EQ(valueAt(*document, 10, 0), 0.5);
}

TEST(cgatsBuilder, fields_carryTheirClasses) {
    Chart chart = oneRow({10, 20, 30, 40});
    chart.lab = {{1, 2, 3}};
    chart.xyz = {{4, 5, 6}};
    chart.spectra = {{0.5}};
    chart.wavelengths = {500};
    const auto document = withLayout(chart);
    ASSERT_EQ(document->GetErrorCode(), 0);
    using Class = std::vector<int>; // kind, number, id, type
    EXPECT_EQ(classOf(*document, 0), (Class{TCgatsField::kCustom, 0, 0, TCgatsField::kString}));
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(classOf(*document, 1 + i), (Class{TCgatsField::kStandard, 0, 2 + i, TCgatsField::kFloat}));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(classOf(*document, 5 + i), (Class{TCgatsField::kStandard, 0, 23 + i, TCgatsField::kFloat}));
        EXPECT_EQ(classOf(*document, 8 + i), (Class{TCgatsField::kStandard, 0, 17 + i, TCgatsField::kFloat}));
    }
    EXPECT_EQ(classOf(*document, 11), (Class{TCgatsField::kSpectral, 500, 0, TCgatsField::kFloat}));
}

TEST(cgatsBuilder, sampleIdentifier_isTheSampleNameColumn) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->GetTable(0)->GetHeader()->GetSampleNameColumn(), 0);
    EXPECT_TRUE(document->ContainsSampleNames(0));
}

TEST(cgatsBuilder, fourColorants_areAProcessSpace) {
    EXPECT_TRUE(withLayout(cmykChart())->IsCMYKDefined(0));
}

TEST(cgatsBuilder, threeColorants_areNoWholeProcessSpace) {
    const auto document = withLayout(oneRow({1, 2, 3}));
    EXPECT_EQ(document->GetErrorCode(), 0);
    EXPECT_FALSE(document->ContainsProcessColors(0));
}

TEST(cgatsBuilder, sixColorants_areNColours) {
    const auto document = withLayout(oneRow({1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(fieldsOf(*document),
              (Names{"SampleID", "6CLR_1", "6CLR_2", "6CLR_3", "6CLR_4", "6CLR_5", "6CLR_6"}));
    EXPECT_EQ(classOf(*document, 6), (std::vector<int>{TCgatsField::kNColor, 5, 0, TCgatsField::kFloat}));
    EXPECT_TRUE(document->IsNColorDefined(0));
    EXPECT_EQ(document->GetNrProcessColors(0), 6);
}

TEST(cgatsBuilder, fiveColorants_areTheFirstNColours) {
    EXPECT_EQ(fieldsOf(*withLayout(oneRow({1, 2, 3, 4, 5}))),
              (Names{"SampleID", "5CLR_1", "5CLR_2", "5CLR_3", "5CLR_4", "5CLR_5"}));
}

TEST(cgatsBuilder, sixNamedProcessColours_haveFieldsOfTheirOwn) {
    const auto document = withColorants(oneRow({1, 2, 3, 4, 5, 6}), {"a", "b", "c", "d", "e", "f"}, true);
    EXPECT_EQ(fieldsOf(*document), (Names{"SampleID", "PC6_1", "PC6_2", "PC6_3", "PC6_4", "PC6_5", "PC6_6"}));
    EXPECT_EQ(classOf(*document, 6),
              (std::vector<int>{TCgatsField::kProcessColor, 5, 0, TCgatsField::kFloat}));
    EXPECT_TRUE(document->IsCustomDefined(0));
    EXPECT_EQ(document->GetNrProcessColorIdTags(), 6);
}

TEST(cgatsBuilder, sixNamedSpots_haveFieldsOfTheirOwn) {
    const auto document = withColorants(oneRow({1, 2, 3, 4, 5, 6}), {"a", "b", "c", "d", "e", "f"}, false);
    EXPECT_EQ(fieldsOf(*document),
              (Names{"SampleID", "SPOT_1", "SPOT_2", "SPOT_3", "SPOT_4", "SPOT_5", "SPOT_6"}));
    EXPECT_EQ(classOf(*document, 6), (std::vector<int>{TCgatsField::kSpotColor, 5, 0, TCgatsField::kFloat}));
    EXPECT_FALSE(document->ContainsProcessColors(0));
    EXPECT_EQ(document->GetNrSpotColors(0), 6);
    EXPECT_EQ(document->GetNrSpotIdTags(), 6);
}

TEST(cgatsBuilder, oneNamedColorant_isAccepted) {
    EXPECT_EQ(fieldsOf(*withColorants(oneRow({1}), {"Gold"}, false)), (Names{"SampleID", "SPOT_1"}));
    EXPECT_EQ(fieldsOf(*withColorants(oneRow({1}), {"Gold"}, true)), (Names{"SampleID", "PC1_1"}));
}

TEST(cgatsBuilder, wavelengths_areRoundedAndKeepTheirOrder) {
    Chart chart = cmykChart();
    chart.wavelengths = {400.4, 379.6, 399.5, 0.0};
    chart.spectra = {{0.1, 0.2, 0.3, 0.4}, {0.5, 0.6, 0.7, 0.8}};
    const auto document = withLayout(chart);
    ASSERT_EQ(document->GetNrFields(0), 9);
    const Names fields = fieldsOf(*document);
    EXPECT_EQ(Names(fields.begin() + 5, fields.end()), (Names{"nm400", "nm380", "nm400", "nm0"}));
    EXPECT_EQ(classOf(*document, 6)[1], 380);
    EXPECT_EQ(valueAt(*document, 5, 1), 0.5);
    EXPECT_EQ(valueAt(*document, 6, 1), 0.6);
}

TEST(cgatsBuilder, descriptions_followTheirFirstCaseThatApplies) {
    const auto namesFor = [](int colorants, bool spot, bool custom) {
        TCgatsField** fields = TCgats::CreateProcessFieldDescriptions(colorants, spot, custom);
        Names names;
        for (int i = 0; fields != nullptr && i < colorants; ++i) {
            EXPECT_EQ(fields[i]->GetDataType(), TCgatsField::kFloat);
            names.push_back(fields[i]->GetName());
            delete fields[i];
        }
        delete[] fields;
        return names;
    };
    EXPECT_EQ(namesFor(2, true, true), (Names{"SPOT_1", "SPOT_2"}));
    EXPECT_EQ(namesFor(2, false, true), (Names{"PC2_1", "PC2_2"}));
    EXPECT_EQ(namesFor(3, false, true), (Names{"PC3_1", "PC3_2", "PC3_3"}));
    EXPECT_EQ(namesFor(3, false, false), (Names{"CMYK_C", "CMYK_M", "CMYK_Y"}));
    EXPECT_EQ(namesFor(4, false, false), (Names{"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"}));
    EXPECT_EQ(namesFor(5, false, false), (Names{"5CLR_1", "5CLR_2", "5CLR_3", "5CLR_4", "5CLR_5"}));
}

TEST(cgatsBuilder, descriptions_areNoneForNoColorants) {
    for (const int colorants : {0, -1, -1000}) {
        for (const bool spot : {false, true})
            for (const bool custom : {false, true})
                EXPECT_EQ(TCgats::CreateProcessFieldDescriptions(colorants, spot, custom), nullptr);
    }
    EXPECT_EQ(TCgats::CreateProcessFieldDescriptions(1, false, false), nullptr);
    EXPECT_EQ(TCgats::CreateProcessFieldDescriptions(2, false, false), nullptr);
}

// ---- The values.

TEST(cgatsBuilder, deviceValues_arePercentagesOfTheFullScale) {
    Chart chart = oneRow({255, 51, 0, 102});
    chart.full = 255;
    EXPECT_NE(written(*withLayout(chart)).find("\n1\t100\t20\t0\t40\t\n"), std::string::npos);
    chart.full = 0; // a reflecting scale: 255 is no colorant
    chart.zero = 255;
    EXPECT_NE(written(*withLayout(chart)).find("\n1\t0\t80\t100\t60\t\n"), std::string::npos);
    chart = oneRow({1, 0.5, 0.25, 0.125});
    chart.full = 1;
    EXPECT_NE(written(*withLayout(chart)).find("\n1\t100\t50\t25\t12.5\t\n"), std::string::npos);
}

TEST(cgatsBuilder, values_areKeptToFiveDecimals) {
    Chart chart = oneRow({100.0 / 3.0, 0.000125, 0.00005, -3});
    chart.lab = {{200.0 / 3.0, -1.0 / 3.0, 0.00005001}};
    const auto document = withLayout(chart);
    EXPECT_EQ(valueAt(*document, 1, 0), 33.33333);
    EXPECT_EQ(valueAt(*document, 2, 0), 0.00013); // 0.000125 lies above its decimal
    EXPECT_EQ(valueAt(*document, 3, 0), 0.0);
    EXPECT_EQ(valueAt(*document, 4, 0), 0.0);
    EXPECT_EQ(labOf(*document, 0), (std::vector<double>{66.66667, -0.33333, 0.00005}));
}

TEST(cgatsBuilder, sampleNames_areTheFirstColumn) {
    Chart chart = cmykChart();
    chart.names = {"paper", "a b"};
    const auto document = withLayout(chart);
    EXPECT_NE(written(*document).find("\npaper\t0\t25\t50\t100\t\n\"a b\"\t1\t2\t3\t4\t\n"),
              std::string::npos);
}

TEST(cgatsBuilder, arrays_areCopied) {
    Chart chart = cmykChart();
    chart.names = {"first", "second"};
    chart.lab = {{1, 2, 3}, {4, 5, 6}};
    const auto document = withLayout(chart);
    const std::string before = written(*document);
    chart.device[0][1] = 99;
    chart.lab[0][0] = 99;
    chart.names[0][0] = 'X';
    EXPECT_EQ(written(*document), before);
}

TEST(cgatsBuilder, spectraInPercent_areNotMarkedSo) {
    Chart chart = cmykChart();
    chart.wavelengths = {400, 500};
    chart.spectra = {{50, 60}, {70, 80}};
    const auto document = withLayout(chart);
    EXPECT_FALSE(document->GetTable(0)->IsSpectralPercent());
    double spectrum[2] = {};
    EXPECT_EQ(document->GetSpectrum(0, 0, spectrum), 0);
    EXPECT_EQ(spectrum[0], 50.0);
}

TEST(cgatsBuilder, spectraWithoutWavelengths_areNotLookedAt) {
    Chart chart = cmykChart();
    chart.spectra = {{0.5}, {0.5}};
    const auto document = withLayout(chart);
    EXPECT_EQ(document->GetErrorCode(), 0);
    EXPECT_EQ(document->GetNrFields(0), 5);
}

// ---- What cannot be built.

TEST(cgatsBuilder, twoColorantsWithoutNames_areRefusedWith18) {
    const auto document = withLayout(oneRow({1, 2}));
    EXPECT_EQ(document->GetErrorCode(), 18);
    EXPECT_STREQ(document->GetErrorMessage(), "Number of color coordinates not supported.");
    EXPECT_EQ(document->GetNrTables(), 0);
    EXPECT_EQ(document->GetNrTags(), 8);
}

TEST(cgatsBuilder, noColorants_areRefusedWith18AlsoForSpots) {
    const double* const rows[] = {nullptr};
    for (const bool spot : {false, true}) {
        TCgats document;
        document.BuildTable(100, 0, 1, nullptr, 0, spot, rows, nullptr, nullptr, nullptr, 0, nullptr, false);
        EXPECT_EQ(document.GetErrorCode(), 18);
        EXPECT_EQ(document.GetNrTables(), 0);
    }
}

TEST(cgatsBuilder, noSamples_areCode15AndTheTableStaysCounted) {
    for (const int sets : {0, -1}) {
        const TCgats document(100, 0, sets, 4, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
        EXPECT_EQ(document.GetErrorCode(), 15);
        EXPECT_STREQ(document.GetErrorMessage(), "The table contains no samples.");
        EXPECT_EQ(document.GetNrTables(), 1);
        ASSERT_NE(document.GetTable(0), nullptr);
        EXPECT_EQ(document.GetTable(0)->GetTableError(), 4);
    }
}

TEST(cgatsBuilder, wavelengthsWithoutSpectra_areCode12) {
    Chart chart = cmykChart();
    chart.wavelengths = {400, 500};
    const auto document = withLayout(chart);
    EXPECT_EQ(document->GetErrorCode(), 12);
    EXPECT_STREQ(document->GetErrorMessage(),
                 "Number of header fields found doesn't match number of header fields declared.");
    EXPECT_EQ(document->GetNrTables(), 1);
    EXPECT_STREQ(document->GetTag(kNumberOfFields)->GetValue(), "7");
}

TEST(cgatsBuilder, negativeWavelength_isCode17) {
    Chart chart = cmykChart();
    chart.wavelengths = {-20};
    chart.spectra = {{0.5}, {0.5}};
    const auto document = withLayout(chart);
    EXPECT_EQ(document->GetErrorCode(), 17);
    EXPECT_STREQ(document->GetErrorMessage(),
                 "The custom color numbering in the table header is not consistent.");
    ASSERT_EQ(document->GetNrTables(), 1);
    EXPECT_EQ(document->GetTable(0)->GetTableError(), 7);
}

TEST(cgatsBuilder, missingRow_isCode1) {
    const double row[] = {1, 2, 3, 4};
    const double* const device[] = {row, nullptr};
    const TCgats document(100, 0, 2, 4, device, nullptr, nullptr, nullptr, 0, nullptr, 0, 0, 0);
    EXPECT_EQ(document.GetErrorCode(), 1);
    EXPECT_STREQ(document.GetErrorMessage(), "Unknown error.");
}

TEST(cgatsBuilder, fewerRowsThanDeclared_areCode13WhenWritten) {
    TCgats document;
    readWithAMissingRow(document);
    std::ostringstream stream;
    EXPECT_EQ(document.WriteTable(0, stream), 13);
    EXPECT_EQ(document.GetErrorCode(), 0);
}

TEST(cgatsBuilder, documentInError_isNotWritten) {
    const auto document = withLayout(oneRow({1, 2}));
    char untouched[] = "as it was";
    char* text = untouched;
    EXPECT_EQ(document->WriteToBuffer(&text), 18);
    EXPECT_EQ(text, untouched);
}

// ---- Single header lines.

TEST(cgatsBuilder, addedTag_standsAtTheEnd) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddTag(0, "ORIGINATOR", 0, "the maker", "by hand"), 0);
    ASSERT_EQ(document->GetNrTags(), 9);
    EXPECT_EQ(tagLine(*document, 8), "ORIGINATOR\t\"the maker\"\t# by hand\n");
    EXPECT_EQ(document->GetTagAt(8)->GetCode(), 0);
}

TEST(cgatsBuilder, addedTag_isRefusedByAFullList) {
    TCgats document;
    for (int i = 0; i < TCgats::kMaxTags; ++i)
        EXPECT_EQ(document.AddTag(-1, "LINE", 1, std::to_string(i).c_str(), ""), 0);
    EXPECT_EQ(document.AddTag(0, "ORIGINATOR", 0, "x", ""), 1);
    EXPECT_EQ(document.GetNrTags(), TCgats::kMaxTags);
    EXPECT_STREQ(document.GetTagAt(127)->GetValue(), "127");
    EXPECT_EQ(document.GetErrorCode(), 0);
}

TEST(cgatsBuilder, tableInAFullDocument_isBuiltWithoutItsLines) {
    TCgats document;
    fillTagList(document);
    const Chart chart = cmykChart();
    const RowPointers device(chart.device);
    document.BuildTable(100, 0, 2, nullptr, 4, false, device.get(), nullptr, nullptr, nullptr, 0, nullptr,
                        false);
    EXPECT_EQ(document.GetErrorCode(), 0);
    EXPECT_EQ(document.GetNrTags(), TCgats::kMaxTags);
    EXPECT_EQ(document.FindTag(kNumberOfFields), -1);
    EXPECT_EQ(document.GetNrSamples(0), 2);
}

TEST(cgatsBuilder, changedTag_isTheFirstOfItsCode) {
    TCgats document;
    document.AddTag(kNumberOfSets, "NUMBER_OF_SETS", 1, "1", "how many");
    document.AddTag(kNumberOfSets, "NUMBER_OF_SETS", 1, "2", "");
    EXPECT_EQ(document.ChangeTagValue(kNumberOfSets, "17"), 0);
    EXPECT_EQ(tagLine(document, 0), "NUMBER_OF_SETS\t17\t# how many\n");
    EXPECT_EQ(tagLine(document, 1), "NUMBER_OF_SETS\t2\n");
    EXPECT_EQ(document.ChangeTagValue(kNumberOfFields, "17"), 1);
    EXPECT_EQ(document.GetNrTags(), 2);
}

// ---- Written and read again.

void expectSameColumns(const TCgats& built, const TCgats& read) {
    ASSERT_EQ(read.GetNrTables(), 1);
    ASSERT_EQ(fieldsOf(read), fieldsOf(built));
    for (int column = 0; column < built.GetNrFields(0); ++column) {
        EXPECT_EQ(classOf(read, column), classOf(built, column)) << column;
        for (int row = 0; row < built.GetNrSamples(0); ++row) {
            const TCgatsValueList* was = built.GetTable(0)->GetValues(column);
            const TCgatsValueList* is = read.GetTable(0)->GetValues(column);
            EXPECT_EQ(is->GetDouble(row), was->GetDouble(row)) << column << ", " << row;
            EXPECT_EQ(orAbsent(is->GetString(row)), orAbsent(was->GetString(row))) << column << ", " << row;
        }
    }
}

void expectSameDocument(const TCgats& built) {
    ASSERT_EQ(built.GetErrorCode(), 0);
    const Reading reading(written(built));
    ASSERT_EQ(reading.code, 0);
    const TCgats& read = reading.document;
    expectSameColumns(built, read);
    EXPECT_EQ(keywordsOf(read), keywordsOf(built));
    ASSERT_EQ(read.GetNrCustomFields(), built.GetNrCustomFields());
    for (int i = 0; i < built.GetNrCustomFields(); ++i)
        EXPECT_STREQ(read.GetCustomField(i), built.GetCustomField(i));
    EXPECT_EQ(read.GetNrProcessColorIdTags(), built.GetNrProcessColorIdTags());
    EXPECT_EQ(read.GetNrSpotIdTags(), built.GetNrSpotIdTags());
    EXPECT_EQ(read.GetNrSamples(0), built.GetNrSamples(0));
    const TCgatsTableHeader& was = *built.GetTable(0)->GetHeader();
    const TCgatsTableHeader& is = *read.GetTable(0)->GetHeader();
    EXPECT_EQ(is.GetColorKind(), was.GetColorKind());
    EXPECT_EQ(is.GetSampleNameColumn(), was.GetSampleNameColumn());
    EXPECT_EQ(columnList(is.GetSpectralColumns(), is.GetNrWaveLengths()),
              columnList(was.GetSpectralColumns(), was.GetNrWaveLengths()));
    EXPECT_EQ(written(read), written(built));
}

TEST(cgatsBuilder, standardAndNColourDocuments_areReadAsBuilt) {
    for (const int colorants : {3, 4, 5, 6, 12}) {
        SCOPED_TRACE(colorants);
        expectSameDocument(*withLayout(fullChart(colorants), 12, 2, 3));
    }
}

TEST(cgatsBuilder, documentsOfNamedColorants_areReadAsBuilt) {
    for (const int colorants : {1, 2, 4, 7}) {
        Names names;
        for (int i = 0; i < colorants; ++i)
            names.push_back("ink " + std::to_string(i));
        for (const bool process : {false, true}) {
            SCOPED_TRACE(std::to_string(colorants) + (process ? " process" : " spot"));
            expectSameDocument(*withColorants(fullChart(colorants), names, process));
        }
    }
}

TEST(cgatsBuilder, spectrum_isAnsweredByAscendingWavelength) {
    const auto document = withLayout(fullChart(4)); // 400, 420, 410 nm
    double spectrum[3] = {};
    int wavelengths[3] = {};
    EXPECT_EQ(document->GetSpectrum(0, 0, spectrum), 0);
    EXPECT_EQ(document->GetWaveLengths(0, wavelengths), 0);
    EXPECT_EQ(std::vector<double>(spectrum, spectrum + 3), (std::vector<double>{0.0625, 0.75, 0.5}));
    EXPECT_EQ(std::vector<int>(wavelengths, wavelengths + 3), (std::vector<int>{400, 410, 420}));
}

// ---- The texts of the values.

std::string textOfDevice(double value, double full, double zero) {
    char text[detail::kFixedTextSize] = "";
    detail::deviceText(value, full, zero, text);
    return text;
}

TEST(chartRows, zeroValue_isATabAndZero) {
    EXPECT_EQ(textOfDevice(0, 255, 0), "\t0.0");
    EXPECT_EQ(textOfDevice(255, 0, 255), "\t0.0");
    EXPECT_EQ(textOfDevice(7, 10, 7), "\t0.0");
    EXPECT_EQ(textOfDevice(-0.0, 100, 0), "\t0.0");
}

TEST(chartRows, negativePercentage_isATabAndZero) {
    EXPECT_EQ(textOfDevice(-5, 100, 0), "\t0.0");
    EXPECT_EQ(textOfDevice(300, 0, 255), "\t0.0");
    EXPECT_EQ(textOfDevice(-std::numeric_limits<double>::infinity(), 100, 0), "\t0.0");
}

TEST(chartRows, smallestPercentageThatIsKept_isOneTenThousandth) {
    EXPECT_EQ(textOfDevice(0.000099, 100, 0), "\t0.0");
    EXPECT_EQ(textOfDevice(0.000101, 100, 0), "0.00010");
    EXPECT_EQ(textOfDevice(1.0 / 8192.0, 100, 0), "0.00012"); // 0.0001220703125
}

TEST(chartRows, fullScale_isOneHundredWithFiveDecimals) {
    EXPECT_EQ(textOfDevice(255, 255, 0), "100.00000");
    EXPECT_EQ(textOfDevice(1, 1, 0), "100.00000");
    EXPECT_EQ(textOfDevice(100, 100, 0), "100.00000");
    EXPECT_EQ(textOfDevice(0, 0, 255), "100.00000");
}

TEST(chartRows, valuesBetween_haveFiveDecimals) {
    EXPECT_EQ(textOfDevice(1, 3, 0), "33.33333");
    EXPECT_EQ(textOfDevice(128, 255, 0), "50.19608"); // 12800 / 255 = 50.196078...
    EXPECT_EQ(textOfDevice(15, 20, 10), "50.00000");
    EXPECT_EQ(textOfDevice(5, 2, 0), "250.00000");
}

TEST(chartRows, noScaleAtAll_isWrittenAsItComes) {
    EXPECT_EQ(textOfDevice(5, 0, 0), "inf");
    EXPECT_NE(textOfDevice(0, 0, 0).find("nan"), std::string::npos);
}

TCgatsField* newField(int type, const char* name, int id) {
    return new TCgatsField(type, name, 0, TCgatsField::kStandard, id);
}

// An empty table of a name and two numbers.
std::unique_ptr<TCgatsTable> smallTable(int samples, int firstType = TCgatsField::kString,
                                        int secondType = TCgatsField::kFloat,
                                        int thirdType = TCgatsField::kFloat) {
    auto* header = new TCgatsTableHeader;
    header->Append(newField(firstType, "STRING", 1));
    header->Append(newField(secondType, "D_RED", 6));
    header->Append(newField(thirdType, "D_GREEN", 7));
    header->SetNrSamples(samples);
    return std::make_unique<TCgatsTable>(header);
}

constexpr double kFirstDevice[] = {0, 100};
constexpr double kSecondDevice[] = {25, 50};
constexpr const double* kDevice[] = {kFirstDevice, kSecondDevice};

detail::ChartArrays smallChart() {
    detail::ChartArrays chart;
    chart.sets = 2;
    chart.colorants = 2;
    chart.device = kDevice;
    return chart;
}

TEST(chartRows, rows_fillTheTable) {
    const auto table = smallTable(2);
    EXPECT_EQ(detail::fillTable(*table, smallChart()), 0);
    EXPECT_EQ(table->GetNrRowsStored(), 2);
    EXPECT_STREQ(table->GetValues(0)->GetString(0), "1");
    EXPECT_STREQ(table->GetValues(0)->GetString(1), "2");
    EXPECT_EQ(table->GetValues(1)->GetDouble(0), 0.0);
    EXPECT_EQ(table->GetValues(2)->GetDouble(0), 100.0);
    EXPECT_EQ(table->GetValues(1)->GetDouble(1), 25.0);
    EXPECT_EQ(table->GetValues(2)->GetDouble(1), 50.0);
}

TEST(chartRows, names_areCutBehind127Characters) {
    const std::string exact(127, 'a');
    const std::string longer = std::string(127, 'b') + "cd";
    const char* const names[] = {exact.c_str(), longer.c_str()};
    detail::ChartArrays chart = smallChart();
    chart.names = names;
    const auto table = smallTable(2);
    EXPECT_EQ(detail::fillTable(*table, chart), 0);
    EXPECT_EQ(table->GetValues(0)->GetString(0), exact);
    EXPECT_EQ(table->GetValues(0)->GetString(1), std::string(127, 'b'));
}

TEST(chartRows, tableInError_givesItsError) {
    for (const int error : {2, 4, 6, 12, 13}) {
        const auto table = TCgatsTable::NotBuilt(error);
        ASSERT_NE(table, nullptr);
        EXPECT_EQ(detail::fillTable(*table, smallChart()), error);
    }
}

TEST(chartRows, tableWithoutAHeader_isError1) {
    TCgatsTable neverHadOne(nullptr);
    EXPECT_EQ(detail::fillTable(neverHadOne, smallChart()), 1);
    const auto table = smallTable(2);
    const std::unique_ptr<TCgatsTableHeader> released(table->ReleaseHeader());
    EXPECT_EQ(table->GetTableError(), 0);
    EXPECT_EQ(detail::fillTable(*table, smallChart()), 1);
}

TEST(chartRows, otherNumberOfSets_isError5) {
    for (const int samples : {1, 3}) {
        const auto table = smallTable(samples, TCgatsField::kFloat); // its first field is wrong, too
        detail::ChartArrays chart = smallChart();
        chart.lab = kDevice; // and so is the number of fields
        EXPECT_EQ(detail::fillTable(*table, chart), 5);
        EXPECT_EQ(table->GetNrRowsStored(), 0);
    }
}

TEST(chartRows, otherNumberOfFields_isError3) {
    const auto table = smallTable(2, TCgatsField::kFloat); // its first field is wrong, too
    detail::ChartArrays chart = smallChart();
    chart.colorants = 1;
    EXPECT_EQ(detail::fillTable(*table, chart), 3);
    chart.colorants = 3;
    EXPECT_EQ(detail::fillTable(*table, chart), 3);
    chart = smallChart();
    chart.lab = kDevice;
    EXPECT_EQ(detail::fillTable(*table, chart), 3);
    chart = smallChart();
    chart.xyz = kDevice;
    EXPECT_EQ(detail::fillTable(*table, chart), 3);
    EXPECT_EQ(table->GetNrRowsStored(), 0);
}

TEST(chartRows, firstFieldThatIsNoText_isError8) {
    for (const int type : {int{TCgatsField::kInteger}, int{TCgatsField::kFloat}}) {
        const auto table = smallTable(2, type, TCgatsField::kString); // a device field is wrong, too
        EXPECT_EQ(detail::fillTable(*table, smallChart()), 8);
    }
}

TEST(chartRows, deviceFieldThatIsNoRealNumber_isError9) {
    for (const int type : {int{TCgatsField::kString}, int{TCgatsField::kInteger}}) {
        EXPECT_EQ(detail::fillTable(*smallTable(2, TCgatsField::kString, type), smallChart()), 9);
        EXPECT_EQ(
            detail::fillTable(*smallTable(2, TCgatsField::kString, TCgatsField::kFloat, type), smallChart()),
            9);
    }
}

TEST(chartRows, missingRow_isError10) {
    const double* const device[] = {kFirstDevice, nullptr};
    detail::ChartArrays chart = smallChart();
    chart.device = device;
    EXPECT_EQ(detail::fillTable(*smallTable(2), chart), 10);
}

// ---- CIELAB columns added later.

const Rows kLab = {{50.0 / 3.0, -20.5, 1e-7}, {90, 1.25, -100.0 / 7.0}};

TEST(addLab, newColumns_holdTheValuesAsGiven) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddLab(0, RowPointers(kLab).get()), 0);
    EXPECT_EQ(fieldsOf(*document),
              (Names{"SampleID", "CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K", "LAB_L", "LAB_A", "LAB_B"}));
    EXPECT_TRUE(document->ContainsLab(0));
    EXPECT_EQ(labOf(*document, 0), kLab[0]);
    EXPECT_EQ(labOf(*document, 1), kLab[1]);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(classOf(*document, 5 + i),
                  (std::vector<int>{TCgatsField::kStandard, 0, 23 + i, TCgatsField::kFloat}));
}

TEST(addLab, newColumns_leaveTheOthersAsTheyWere) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddLab(0, RowPointers(kLab).get()), 0);
    double device[4] = {};
    EXPECT_EQ(document->GetCoordinates(0, 1, device), 0);
    EXPECT_EQ(std::vector<double>(device, device + 4), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(document->GetNrSamples(0), 2);
    EXPECT_TRUE(document->ContainsSampleNames(0));
}

TEST(addLab, twice_overwritesAndGrowsOnce) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddLab(0, RowPointers(kLab).get()), 0);
    const Rows other = {{1, 2, 3}, {4, 5, 6}};
    EXPECT_EQ(document->AddLab(0, RowPointers(other).get()), 0);
    EXPECT_EQ(document->GetNrFields(0), 8);
    EXPECT_EQ(labOf(*document, 0), other[0]);
    EXPECT_EQ(labOf(*document, 1), other[1]);
}

TEST(addLab, columnsInAnyOrder_areOverwrittenInPlace) {
    Reading reading(tableText("LAB_B SAMPLE_ID LAB_L LAB_A", 2, "1 a 2 3 4 b 5 6"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.AddLab(0, RowPointers(kLab).get()), 0);
    EXPECT_EQ(fieldsOf(reading.document), (Names{"LAB_B", "SAMPLE_ID", "LAB_L", "LAB_A"}));
    EXPECT_EQ(valueAt(reading.document, 0, 1), kLab[1][2]);
    EXPECT_EQ(valueAt(reading.document, 2, 1), kLab[1][0]);
    EXPECT_EQ(valueAt(reading.document, 3, 1), kLab[1][1]);
}

TEST(addLab, incompleteColumns_areNotTakenForCielab) {
    Reading reading(tableText("SAMPLE_ID LAB_L LAB_A", 2, "a 1 2 b 3 4"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.AddLab(0, RowPointers(kLab).get()), 0);
    EXPECT_EQ(fieldsOf(reading.document), (Names{"SAMPLE_ID", "LAB_L", "LAB_A", "LAB_L", "LAB_A", "LAB_B"}));
    EXPECT_EQ(labOf(reading.document, 1), kLab[1]);
    EXPECT_EQ(valueAt(reading.document, 1, 1), 3.0);
}

TEST(addLab, headerLines_stayAndNumberOfFieldsWantsAChange) {
    const auto document = withLayout(cmykChart());
    const Names keywords = keywordsOf(*document);
    EXPECT_EQ(document->AddLab(0, RowPointers(kLab).get()), 0);
    EXPECT_EQ(keywordsOf(*document), keywords);
    EXPECT_STREQ(document->GetTag(kNumberOfFields)->GetValue(), "5");
    EXPECT_EQ(Reading(written(*document)).code, 10); // more fields than declared
    const std::string count = std::to_string(document->GetNrFields(0));
    EXPECT_EQ(document->ChangeTagValue(kNumberOfFields, count.c_str()), 0);
    const Reading again(written(*document));
    EXPECT_EQ(again.code, 0);
    EXPECT_EQ(fieldsOf(again.document), fieldsOf(*document));
}

TEST(addLab, secondTable_isChangedAlone) {
    Reading reading(tableText("SAMPLE_ID", 2, "a b") + tableText("SAMPLE_ID", 2, "c d"));
    ASSERT_EQ(reading.code, 0);
    EXPECT_EQ(reading.document.AddLab(1, RowPointers(kLab).get()), 0);
    EXPECT_EQ(reading.document.GetNrFields(0), 1);
    EXPECT_EQ(reading.document.GetNrFields(1), 4);
}

TEST(addLab, badTable_isCode1) {
    const auto document = withLayout(cmykChart());
    const RowPointers lab(kLab);
    for (const int table : {-1, 1, 1000})
        EXPECT_EQ(document->AddLab(table, lab.get()), 1);
    EXPECT_EQ(TCgats().AddLab(0, lab.get()), 1);
    EXPECT_EQ(document->GetNrFields(0), 5);
}

TEST(addLab, documentInError_givesItsCode) {
    const auto document = withLayout(cmykChart());
    document->SetErrorCode(9);
    EXPECT_EQ(document->AddLab(0, RowPointers(kLab).get()), 9);
    EXPECT_EQ(document->AddLab(7, RowPointers(kLab).get()), 9);
    EXPECT_FALSE(document->GetTable(0)->GetHeader()->GetLabColumns());
}

TEST(addLab, tableInError_givesTheErrorOfTheTable) {
    const auto source = withLayout(cmykChart());
    int channels[] = {0, 1};
    TCgats document(source.get(), channels, 2, 0.0);
    ASSERT_EQ(document.GetErrorCode(), 0);
    EXPECT_EQ(document.AddLab(0, RowPointers(kLab).get()), 13);
}

TEST(addLab, fewerRowsThanSets_areCode1) {
    TCgats document;
    readWithAMissingRow(document);
    const Rows lab = {{7, 7, 7}, {7, 7, 7}, {7, 7, 7}};
    EXPECT_EQ(document.AddLab(0, RowPointers(lab).get()), 1);
    EXPECT_EQ(valueAt(document, 1, 0), 1.0);
}

TEST(addLab, missingRow_isCode1AndChangesNothing) {
    const double row[] = {1, 2, 3};
    const double* const lab[] = {row, nullptr};
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddLab(0, lab), 1);
    EXPECT_EQ(document->GetNrFields(0), 5);
}

// ---- A column of ink-book names.

std::string inkBookName(const TCgats& document, int sample) {
    char name[256] = "(untouched)";
    EXPECT_EQ(document.GetInkBookName(0, sample, name), 0);
    return name;
}

TEST(inkBookNames, newColumn_isATextOfTheClassOfTheSampleNames) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddInkBookNames(0, {"Warm Red", ""}), 0);
    EXPECT_EQ(fieldsOf(*document), (Names{"SampleID", "CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K", "InkBook"}));
    EXPECT_TRUE(document->ContainsInkBookNames(0));
    EXPECT_EQ(inkBookName(*document, 0), "Warm Red");
    EXPECT_EQ(inkBookName(*document, 1), "");
    EXPECT_EQ(classOf(*document, 5), (std::vector<int>{TCgatsField::kCustom, 0, 1, TCgatsField::kString}));
    EXPECT_EQ(document->GetTable(0)->GetHeader()->GetSampleNameColumn(), 0);
}

TEST(inkBookNames, newColumn_isDeclaredByTheLastHeaderLine) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddInkBookNames(0, {"a", "b"}), 0);
    ASSERT_EQ(document->GetNrTags(), 9);
    EXPECT_EQ(tagLine(*document, 8), "KEYWORD\t\"InkBook\"\n");
    EXPECT_EQ(document->GetTagAt(8)->GetCode(), kKeyword);
    EXPECT_STREQ(document->GetTag(kNumberOfFields)->GetValue(), "5");
    ASSERT_EQ(document->GetNrCustomFields(), 2);
    EXPECT_STREQ(document->GetCustomField(1), "InkBook");
}

TEST(inkBookNames, declarationBehindTheTable_comesTooLateForReaders) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddInkBookNames(0, {"a", "b"}), 0);
    EXPECT_EQ(document->ChangeTagValue(kNumberOfFields, "6"), 0);
    const std::string text = written(*document);
    EXPECT_NE(text.find("\n2\t1\t2\t3\t4\tb\t\nEND_DATA\nKEYWORD\t\"InkBook\"\n"), std::string::npos);
    EXPECT_EQ(Reading(text).code, 11);
    EXPECT_EQ(Reading("KEYWORD \"InkBook\"\n" + text).code, 0);
}

TEST(inkBookNames, twice_overwritesWithoutASecondDeclaration) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddInkBookNames(0, {"a", "b"}), 0);
    EXPECT_EQ(document->AddInkBookNames(0, {"c", "d"}), 0);
    EXPECT_EQ(document->GetNrFields(0), 6);
    EXPECT_EQ(document->GetNrTags(), 9);
    EXPECT_EQ(document->GetNrCustomFields(), 2);
    EXPECT_EQ(inkBookName(*document, 0), "c");
    EXPECT_EQ(inkBookName(*document, 1), "d");
}

TEST(inkBookNames, columnOfAReadDocument_isTakenOver) {
    Reading reading("KEYWORD InkBook\n" + tableText("InkBook SAMPLE_ID", 2, "a 1 b 2"));
    ASSERT_EQ(reading.code, 0);
    const int tags = reading.document.GetNrTags();
    EXPECT_EQ(reading.document.AddInkBookNames(0, {"c", "d"}), 0);
    EXPECT_EQ(inkBookName(reading.document, 1), "d");
    EXPECT_EQ(reading.document.GetNrFields(0), 2);
    EXPECT_EQ(reading.document.GetNrTags(), tags);
}

TEST(inkBookNames, tooManyNames_areLeftOut) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddInkBookNames(0, {"a", "b", "c"}), 0);
    EXPECT_EQ(inkBookName(*document, 1), "b");
}

TEST(inkBookNames, tooFewNames_areCode1) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddInkBookNames(0, {"a"}), 1);
    EXPECT_EQ(document->AddInkBookNames(0, {}), 1);
    EXPECT_FALSE(document->ContainsInkBookNames(0));
    EXPECT_EQ(document->GetNrTags(), 8);
}

TEST(inkBookNames, fullTagList_isCode1AndTheColumnStays) {
    const auto document = withLayout(cmykChart());
    fillTagList(*document);
    EXPECT_EQ(document->AddInkBookNames(0, {"a", "b"}), 1);
    EXPECT_TRUE(document->ContainsInkBookNames(0));
    EXPECT_EQ(inkBookName(*document, 1), "b");
    EXPECT_EQ(document->GetNrTags(), TCgats::kMaxTags);
    EXPECT_EQ(document->GetErrorCode(), 0);
    EXPECT_EQ(document->AddInkBookNames(0, {"c", "d"}), 0); // the column is there now
}

TEST(inkBookNames, badTable_isCode1) {
    const auto document = withLayout(cmykChart());
    for (const int table : {-1, 1, 1000})
        EXPECT_EQ(document->AddInkBookNames(table, {"a", "b"}), 1);
}

TEST(inkBookNames, documentInError_givesItsCode) {
    const auto document = withLayout(cmykChart());
    document->SetErrorCode(11);
    EXPECT_EQ(document->AddInkBookNames(0, {"a", "b"}), 11);
    EXPECT_EQ(document->GetNrTags(), 8);
}

TEST(inkBookNames, tableInError_givesTheErrorOfTheTable) {
    const auto source = withLayout(cmykChart());
    int samples[] = {2};
    TCgats document(source.get(), samples, 1);
    EXPECT_EQ(document.AddInkBookNames(0, {"a", "b"}), 10);
}

TEST(inkBookNames, fewerRowsThanSets_areCode1) {
    TCgats document;
    readWithAMissingRow(document);
    EXPECT_EQ(document.AddInkBookNames(0, {"a", "b", "c"}), 1);
    EXPECT_EQ(document.GetNrTags(), 0);
}

TEST(inkBookNames, cielabAndInkBook_canBothBeAdded) {
    const auto document = withLayout(cmykChart());
    EXPECT_EQ(document->AddInkBookNames(0, {"a", "b"}), 0);
    EXPECT_EQ(document->AddLab(0, RowPointers(kLab).get()), 0);
    EXPECT_EQ(document->GetNrFields(0), 9);
    EXPECT_EQ(inkBookName(*document, 0), "a");
    EXPECT_EQ(labOf(*document, 1), kLab[1]);
}

TEST(addLab, columnsThatHoldNoRealNumbers_areRefused) {
    for (const int type : {int{TCgatsField::kString}, int{TCgatsField::kInteger}}) {
        TCgats document;
        document.InitTmpHeader(3);
        const char* const names[] = {"LAB_L", "LAB_A", "LAB_B"};
        for (int i = 0; i < 3; ++i)
            ASSERT_EQ(document.GetTmpHeader()->FillNextSlot(new TCgatsField(
                          i == 1 ? type : TCgatsField::kFloat, names[i], 0, TCgatsField::kStandard, 23 + i)),
                      0);
        document.SetNrSamples(2);
        const std::string samples = "1 2 3\n4 5 6\n";
        const char* position = samples.c_str();
        ASSERT_EQ(document.ReadTable(&position), 0);
        EXPECT_EQ(document.AddLab(0, RowPointers(kLab).get()), 1);
        EXPECT_EQ(valueAt(document, 0, 0), 1.0); // nothing changed
    }
}

} // namespace
} // namespace qxcms::tests
