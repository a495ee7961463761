// The public interface, with nothing but its one header: whatever can be refused answers with a Result.
#include "qc/qc.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <regex>
#include <set>
#include <sstream>
#include <type_traits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "platform/logical_names.h"
#include "tests/support/chart_text.h"
#include "tests/support/reports.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using namespace qxcms::qc;
using testing::AllOf;
using testing::Contains;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* kLab = "SAMPLE_ID LAB_L LAB_A LAB_B";
constexpr const char* kXyz = "SAMPLE_ID XYZ_X XYZ_Y XYZ_Z";
constexpr const char* kSpectra = "SAMPLE_ID SPECTRAL_400 SPECTRAL_550 SPECTRAL_700";

class face : public testing::Test {
protected:
    ReportCollector quiet;

    static ChartFile file(const std::string& text) { return readChart("chart.txt", text).value(); }
    static ChartFile twoTables() {
        return file(chartText(kLab, {"A 50 0 0"}) + chartText(kLab, {"A 60 0 0", "B 70 0 0"}));
    }
    static Colorimetry d50() { return Colorimetry::of("D50", "2").value(); }
    static std::vector<Lab> labOf(const std::string& fields, const std::vector<std::string>& rows) {
        const ChartFile chart = file(chartText(fields, rows));
        return d50().labRows(chart.chart()).value();
    }
};

template <class T>
std::string refusalOf(const Result<T>& result, Refusal::Kind kind) {
    if (result) {
        ADD_FAILURE() << "it was not refused";
        return "";
    }
    EXPECT_EQ(result.refusal().kind(), kind);
    return result.refusal().what();
}

void expectNeutral(const Lab& lab) {
    EXPECT_THAT(lab, ElementsAre(DoubleNear(100.0, 1e-9), DoubleNear(0.0, 1e-9), DoubleNear(0.0, 1e-9)));
}

std::string textOf(const std::string& header) {
    return ScratchFolder::read(std::string(QXCMS_SOURCE_DIR "/") + header);
}

std::set<std::string> includesOf(const std::string& header) {
    const std::regex include("#include \"(qc/[^\"]+)\"");
    const std::string text = textOf(header);
    std::set<std::string> names;
    for (std::sregex_iterator found(text.begin(), text.end(), include), last; found != last; ++found)
        names.insert((*found)[1]);
    return names;
}

// What a result gives away.

struct Listed {
    std::vector<int> numbers;
};

Result<Listed> listed() {
    return Listed{std::vector<int>(1000, 7)};
}

TEST(faceResults, givenAwayByATemporary_areValues) {
    static_assert(std::is_same_v<decltype(*std::declval<Result<Listed>>()), Listed>);
    static_assert(std::is_same_v<decltype(std::declval<Result<Listed>>().value()), Listed>);
    int sum = 0;
    for (const int number : (*listed()).numbers)
        sum += number;
    for (const int number : listed().value().numbers)
        sum += number;
    EXPECT_EQ(sum, 14000);
}

// What programs see.

TEST(faceHeaders, includeNoneThatIsNotPublic) {
    const std::set<std::string> all = includesOf("qc/qc.h");
    EXPECT_GT(all.size(), 10u);
    for (const std::string& header : all)
        for (const std::string& included : includesOf(header))
            EXPECT_THAT(all, Contains(included)) << header;
}

TEST(faceHeaders, throwNothingButWhereAValueIsInsistedOn) {
    for (const std::string& header : includesOf("qc/qc.h"))
        EXPECT_EQ(textOf(header).find("@throws") != std::string::npos, header == "qc/result.h") << header;
}

// A comparison of one's own.

TEST_F(face, programMayPairByARuleOfItsOwn) {
    const std::vector<Lab> samples = labOf(kLab, {"A 50 3 4", "B 60 0 0"});
    std::vector<Lab> standards = labOf(kLab, {"1 61 0 0", "2 50 0 0"});
    std::reverse(standards.begin(), standards.end());
    const auto made = differences(samples, standards, DeltaE::cie1976);
    ASSERT_TRUE(made);
    const std::vector<double> totals = totalsOf(*made);
    EXPECT_THAT(totals, ElementsAre(5.0, 1.0));
    EXPECT_EQ(statistics(totals).mean, 3.0);
}

TEST_F(face, chartsArePairedWithoutBeingCompared) {
    const ChartFile one = file(chartText(kLab, {"A 50 3 4", "B 60 0 0"}));
    const ChartFile other = file(chartText(kLab, {"B 50 3 4", "C 1 1 1", "A 60 0 0"}));
    const auto pairing = pairCharts(one.chart(), other.chart());
    ASSERT_TRUE(pairing);
    EXPECT_EQ(pairing->by, "SAMPLE_ID");
    EXPECT_EQ(pairing->pairs[0].reference.front(), 2);
    EXPECT_EQ(pairing->unusedReference, 1);
    EXPECT_THAT(
        refusalOf(pairCharts(one.chart(), other.chart(), PairChoice::order), Refusal::Kind::notComparable),
        HasSubstr("the numbers of samples differ"));
}

// Lab of charts, spectra and tristimulus values.

// Each on its own white: full reflectance, and the white that ASTM E308 prints.
TEST_F(face, whites_areNeutral) {
    const Colorimetry colorimetry = d50();
    EXPECT_EQ(colorimetry.illuminant(), "D50");
    EXPECT_EQ(colorimetry.observer(), "2 degree");
    EXPECT_THAT(colorimetry.xyzWhite(), ElementsAre(96.422, 100.0, 82.521));
    EXPECT_NEAR(colorimetry.spectralWhite()[0], 96.384116, 1e-5);
    const double nanometres[] = {400.0, 700.0}, full[] = {1.0, 1.0};
    expectNeutral(*colorimetry.labOfSpectrum(nanometres, full));
    expectNeutral(colorimetry.labOfXyz({96.422, 100.0, 82.521}));
    expectNeutral(labOf(kSpectra, {"A 1 1 1"})[0]);
    expectNeutral(labOf(kXyz, {"A 96.422 100 82.521"})[0]);
}

TEST_F(face, labColumns_standAsTheyAreWithoutIlluminants) {
    const ScratchFolder folder;
    ASSERT_EQ(deflognam("QX_CMS", folder.path().c_str()), 0);
    const ChartFile lab = file(chartText(kLab, {"A 50 3 4"}));
    const auto rows = labColumns(lab.chart());
    const auto names = illuminantNames();
    const auto colorimetry = Colorimetry::of("D50", "2");
    ASSERT_EQ(deflognam("QX_CMS", nullptr), 0);
    ASSERT_TRUE(rows);
    EXPECT_THAT(*rows, ElementsAre(Lab{50.0, 3.0, 4.0}));
    EXPECT_THAT(refusalOf(names, Refusal::Kind::unreadable), HasSubstr("no illuminants"));
    EXPECT_THAT(refusalOf(colorimetry, Refusal::Kind::unreadable), HasSubstr("no illuminants"));
    EXPECT_THAT(illuminantNames().value(), Contains("D50"));
}

TEST_F(face, copiesOfAColorimetry_outliveIt) {
    std::optional<Colorimetry> first = d50();
    const Colorimetry copy = *first;
    const Colorimetry moved = std::move(*first);
    EXPECT_EQ(first->illuminant(), "D50");
    first.reset();
    expectNeutral(copy.labOfXyz(copy.xyzWhite()));
    expectNeutral(moved.labOfXyz(moved.xyzWhite()));
}

TEST_F(face, conditionsThatThereAreNot_areRefused) {
    EXPECT_THAT(refusalOf(Colorimetry::of("D51", "2"), Refusal::Kind::usage), HasSubstr("did you mean D50"));
    EXPECT_THAT(refusalOf(Colorimetry::of("D50", "5"), Refusal::Kind::usage), HasSubstr("unknown observer"));
    EXPECT_THAT(refusalOf(Colorimetry::of("FL11", "10"), Refusal::Kind::usage), HasSubstr("2 degree"));
    EXPECT_THAT(refusalOf(findFormula("classic"), Refusal::Kind::usage), HasSubstr("unknown formula"));
}

TEST_F(face, spectraThatCannotBeUsed_areRefused) {
    const Colorimetry colorimetry = d50();
    const std::vector<double> many(1025, 0.5);
    const double two[] = {400.0, 700.0}, three[] = {0.1, 0.2, 0.3}, same[] = {400.0, 400.0};
    const double none[] = {400.0, std::numeric_limits<double>::quiet_NaN()};
    EXPECT_THAT(refusalOf(colorimetry.labOfSpectrum(two, three), Refusal::Kind::usage),
                HasSubstr("2 wavelengths and 3 values"));
    EXPECT_THAT(refusalOf(colorimetry.labOfSpectrum({}, {}), Refusal::Kind::usage), HasSubstr("0 values"));
    EXPECT_THAT(refusalOf(colorimetry.labOfSpectrum(many, many), Refusal::Kind::usage),
                HasSubstr("1,025 values"));
    for (const auto& wavelengths : {same, none})
        EXPECT_THAT(refusalOf(colorimetry.labOfSpectrum(Span<const double>(wavelengths, 2), two),
                              Refusal::Kind::usage),
                    HasSubstr("wavelength"));
}

TEST_F(face, valuesThatAreNoNumbers_giveNone) {
    const double nanometres[] = {400.0, 700.0};
    const double values[] = {0.5, std::numeric_limits<double>::quiet_NaN()};
    EXPECT_TRUE(std::isnan((*d50().labOfSpectrum(nanometres, values))[0]));
    EXPECT_TRUE(std::isnan(d50().labOfXyz({1.0, values[1], 1.0})[0]));
}

TEST_F(face, chartsWithoutTheColoursAskedFor_areRefused) {
    const ChartFile lab = file(chartText(kLab, {"A 50 3 4", "B N/A 0 0"}));
    const ChartFile xyz = file(chartText(kXyz, {"A 50 50 50"}));
    EXPECT_THAT(refusalOf(d50().labRows(lab.chart(), ColorSource::spectra), Refusal::Kind::notComparable),
                HasSubstr("holds no spectra, only Lab values"));
    EXPECT_THAT(refusalOf(labColumns(xyz.chart()), Refusal::Kind::notComparable),
                HasSubstr("holds no Lab values"));
    EXPECT_THAT(refusalOf(labColumns(lab.chart()), Refusal::Kind::unreadable),
                HasSubstr("row 2, column \"LAB_L\" (number 2): \"N/A\" is no number"));
}

// Tables.

TEST_F(face, tablesAreCounted) {
    const ChartFile two = twoTables();
    EXPECT_EQ(two.tables(), 2);
    EXPECT_EQ(two.chart().rows(), 1);
    EXPECT_EQ((*two.chart(1)).rows(), 2);
}

TEST_F(face, tableThatThereIsNot_isRefused) {
    const ChartFile two = twoTables();
    for (const int table : {2, -1, std::numeric_limits<int>::max()})
        EXPECT_THAT(refusalOf(two.chart(table), Refusal::Kind::usage),
                    AllOf(HasSubstr("chart.txt: there is no table " + std::to_string(table + 1LL)),
                          HasSubstr("the file has 2 tables")));
}

TEST_F(face, chartsOfNothing_areRefusedByWhateverTakesThem) {
    const ChartFile two = twoTables();
    const Chart right = two.chart();
    const TCgats broken("CGATS.17\nBEGIN_DATA_FORMAT\n", 0);
    const TCgats empty;
    for (const Chart& wrong : {Chart{"x", nullptr, 0}, Chart{"x", two.document.get(), 2},
                               Chart{"x", &broken, 0}, Chart{"x", &empty, 0}}) {
        EXPECT_FALSE(compare(wrong, right));
        EXPECT_FALSE(compare(right, wrong));
        EXPECT_FALSE(pairCharts(wrong, right));
        EXPECT_FALSE(pairCharts(right, wrong));
        EXPECT_FALSE(d50().labRows(wrong));
        EXPECT_FALSE(labColumns(wrong));
        for (const ColorSource source : {ColorSource::spectra, ColorSource::lab, ColorSource::xyz})
            EXPECT_FALSE(holds(wrong, source));
    }
}

TEST_F(face, fileThatWasMovedAway_hasNoTables) {
    ChartFile from = twoTables();
    const ChartFile to = std::move(from);
    EXPECT_EQ(to.tables(), 2);
    EXPECT_EQ(from.tables(), 0);
    EXPECT_FALSE(from.chart(0));
    EXPECT_EQ(from.chart().rows(), 0);
    EXPECT_THAT(placeOf(from.chart(), 0, 0), HasSubstr(": row 1, column \"\" (number 1)"));
    EXPECT_FALSE(compare(from.chart(), to.chart()));
}

// Which table was compared is said where there are others.
TEST_F(face, furtherTablesWithColours_areTold) {
    const ChartFile two = twoTables();
    const Chart first = two.chart();
    const auto same = compare(first, first);
    ASSERT_TRUE(same);
    std::vector<std::string> told;
    for (const Finding& finding : same->findings)
        if (finding.kind == Finding::Kind::otherTables)
            told.push_back(finding.text);
    EXPECT_THAT(told, ElementsAre("chart.txt: table 1 of 2 is compared; table 2 holds colours too "
                                  "(--table 2, or --reference-table 2 for the reference alone)"));
}

TEST_F(face, tablesOfOneFileHeldAgainstEachOther_leaveNoneToTellOf) {
    const ChartFile two = twoTables();
    const Chart second = *two.chart(1);
    const auto compared = compare(two.chart(), second);
    ASSERT_TRUE(compared);
    EXPECT_EQ(compared->measured.table, 1);
    EXPECT_EQ(compared->reference.table, 2);
    for (const Finding& finding : compared->findings)
        EXPECT_NE(finding.kind, Finding::Kind::otherTables) << finding.text;
}

TEST_F(face, furtherTablesWithoutColours_areNotTold) {
    const ChartFile two = file(chartText(kLab, {"A 50 0 0"}) + chartText("SAMPLE_ID CMYK_C", {"A 1"}));
    const auto compared = compare(two.chart(), two.chart());
    ASSERT_TRUE(compared);
    for (const Finding& finding : compared->findings)
        EXPECT_NE(finding.kind, Finding::Kind::otherTables) << finding.text;
}

TEST_F(face, rowsOfALaterTable_areToldWithTheirTable) {
    const ChartFile two = twoTables();
    EXPECT_EQ(placeOf(two.chart(), 2, 1), "chart.txt: row 3, column \"LAB_L\" (number 2)");
    EXPECT_EQ(placeOf(*two.chart(1), 2, 1), "chart.txt: table 2: row 3, column \"LAB_L\" (number 2)");
    EXPECT_EQ(placeOf(two.chart(), 0, 9), "chart.txt: row 1, column \"\" (number 10)");
}

} // namespace
} // namespace qxcms::tests
