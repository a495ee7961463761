// Measuring conditions as the header lines of real files spell them.
#include "qc/document_conditions.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"

namespace qxcms::tests {
namespace {

using qc::Condition;
using qc::DocumentConditions;
using Standing = Condition::Standing;

std::string tableWith(const std::string& headerLines) {
    return headerLines + "\nNUMBER_OF_FIELDS 4\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\n"
                         "END_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1 50 0 0\nEND_DATA\n";
}

DocumentConditions conditionsIn(const std::string& text, int table) {
    TCgats document;
    EXPECT_EQ(document.ReadFromBuffer(text.c_str()), 0) << text;
    EXPECT_GT(document.GetNrTables(), table) << text;
    return qc::conditionsOf(document, table);
}

// Of a document of one table with these header lines.
DocumentConditions conditionsOf(const std::string& headerLines) {
    return conditionsIn("CGATS.17\n" + tableWith(headerLines), 0);
}

// One condition in short: "D50", "D50 (text)", "" for one that is not known.
std::string told(const Condition& condition) {
    switch (condition.standing) {
    case Standing::unknown:
        EXPECT_EQ(condition.value, "");
        return "";
    case Standing::freeText:
        EXPECT_NE(condition.source, "");
        return condition.value + " (text)";
    case Standing::declared:
        EXPECT_NE(condition.source, "");
        return condition.value;
    }
    return "?";
}

struct Spelling {
    const char* line;
    const char* value;
};

void expectEach(Condition DocumentConditions::*condition, const std::vector<Spelling>& spellings) {
    for (const Spelling& spelling : spellings)
        EXPECT_EQ(told(conditionsOf(spelling.line).*condition), spelling.value) << spelling.line;
}

// Illuminants.

TEST(documentConditions, weightingFunction_namesItsIlluminantWithAnySeparator) {
    expectEach(&DocumentConditions::illuminant, {{"WEIGHTING_FUNCTION \"ILLUMINANT, D50\"", "D50"},
                                                 {"WEIGHTING_FUNCTION \"ILLUMINANT. D50\"", "D50"},
                                                 {"WEIGHTING_FUNCTION \"ILLUMINANT\tD50\"", "D50"},
                                                 {"WEIGHTING_FUNCTION \"ILLUMINANT D50\"", "D50"},
                                                 {"WEIGHTING_FUNCTION \"ILLUMINANT=D50\"", "D50"},
                                                 {"WEIGHTING_FUNCTION \"ILLUMINANT: D50\"", "D50"},
                                                 {"WEIGHTING_FUNCTION \"illuminant, d65\"", "D65"},
                                                 {"WEIGHTING_FUNCTION\t\"ILLUMINANT, A\"", "A"},
                                                 {"WEIGHTING_FUNCTION ILLUMINANT, D50", "D50"},
                                                 {"WEIGHTING_FUNCTION ILLUMINANT D50", "D50"},
                                                 {"WEIGHTING_FUNCTION \"D50, 2 degree\"", "D50"},
                                                 {"WEIGHTING_FUNCTION \"ILLUMINANT, A, M1\"", "A"},
                                                 {"weighting_function \"ILLUMINANT, C\"", "C"}});
}

TEST(documentConditions, illuminant_hasTheShortNameOfTheCie) {
    expectEach(&DocumentConditions::illuminant, {{"ILLUMINATION_NAME \"D50\"", "D50"},
                                                 {"ILLUMINANT \"D65\"", "D65"},
                                                 {"ILLUMINANT D65", "D65"},
                                                 {"ILLUMINANT \"CIE Illuminant D50\"", "D50"},
                                                 {"ILLUMINANT \"CIE standard illuminant A\"", "A"},
                                                 {"ILLUMINANT \"D50 (5000K)\"", "D50"},
                                                 {"ILLUMINANT \"D50 (5000 K)\"", "D50"},
                                                 {"ILLUMINANT \"D6500\"", "D65"},
                                                 {"ILLUMINANT \"D 55\"", "D55"},
                                                 {"ILLUMINANT \"D50 graphic arts (ISO 3664)\"", "D50"},
                                                 {"ILLUMINANT \"B\"", "B"},
                                                 {"ILLUMINANT \"E\"", "E"},
                                                 {"ILLUMINANT \"D75 daylight\"", "D75"},
                                                 {"ILLUMINANT \"D50/2\xC2\xB0\"", "D50"},
                                                 {"ILLUMINANT \"LED-B1\"", "LED-B1"},
                                                 {"ILLUMINANT \"led rgb1\"", "LED-RGB1"},
                                                 {"ILLUMINANT \"A (tungsten, 2856 K)\"", "A"}});
}

TEST(documentConditions, fluorescentIlluminants_areNamedWithF) {
    expectEach(&DocumentConditions::illuminant, {{"ILLUMINANT \"F11\"", "F11"},
                                                 {"ILLUMINANT \"FL11\"", "F11"},
                                                 {"ILLUMINANT \"fl2\"", "F2"},
                                                 {"ILLUMINANT \"F 11\"", "F11"},
                                                 {"ILLUMINANT \"F-7 daylight\"", "F7"},
                                                 {"ILLUMINANT \"Fluorescent F12\"", "F12"},
                                                 {"ILLUMINANT \"F11 (TL84)\"", "F11"},
                                                 {"ILLUMINANT \"TL84\"", "F11"},
                                                 {"ILLUMINANT \"F3.4\"", "F3.4"}});
}

TEST(documentConditions, illuminantOfUnknownSpelling_standsAsItIs) {
    expectEach(&DocumentConditions::illuminant,
               {{"ILLUMINANT \" Xenon arc \"", "Xenon arc"},
                {"ILLUMINANT \"F13\"", "F13"},
                {"ILLUMINANT \"A or so\"", "A or so"},
                {"ILLUMINANT \"D50 or D65\"", "D50 or D65"},
                {"WEIGHTING_FUNCTION \"ILLUMINANT, Xenon\"", "Xenon"},
                {"WEIGHTING_FUNCTION \"ILLUMINANT, Xenon, OBSERVER, 2\"", "Xenon"},
                {"MEASUREMENT_SOURCE \"Illumination=Xenon ObserverAngle=2\"", "Xenon"}});
}

TEST(documentConditions, lightOfTheMeasurement_isTheIlluminantWhenItIsDaylight) {
    EXPECT_EQ(told(conditionsOf("MEASUREMENT_SOURCE \"D65\"").illuminant), "D65");
    EXPECT_EQ(told(conditionsOf("MEASUREMENT_SOURCE \"A\"").illuminant), "A (text)");
}

TEST(documentConditions, lampOfTheInstrument_doesNotReplaceTheIlluminant) {
    for (const std::string lamp : {"D65", "Illuminant A", "A", "CIE illuminant D65"}) {
        const std::string source = "MEASUREMENT_SOURCE \"" + lamp + '"';
        for (const std::string line : {"ILLUMINATION_NAME \"D50\"", "WEIGHTING_FUNCTION \"ILLUMINANT, D50\""})
            for (const std::string& lines : {line + '\n' + source, source + '\n' + line}) {
                const Condition illuminant = conditionsOf(lines).illuminant;
                EXPECT_EQ(told(illuminant), "D50") << lines;
                EXPECT_EQ(illuminant.contradicted, "") << lines;
            }
    }
}

TEST(documentConditions, illuminantOfTheSource_isToldBesideAnotherOne_andNotTaken) {
    const std::string source = "MEASUREMENT_SOURCE \"Illumination=A ObserverAngle=2\"";
    for (const std::string& lines :
         {"ILLUMINATION_NAME \"D50\"\n" + source, source + "\nILLUMINATION_NAME \"D50\""}) {
        const Condition illuminant = conditionsOf(lines).illuminant;
        EXPECT_EQ(told(illuminant), "D50") << lines;
        EXPECT_EQ(illuminant.contradicted, source) << lines;
    }
    EXPECT_EQ(told(conditionsOf(source).illuminant), "A");
    EXPECT_EQ(conditionsOf("ILLUMINATION_NAME \"A\"\n" + source).illuminant.contradicted, "");
}

TEST(documentConditions, lampThatIsNoDaylight_isTheIlluminantAsATextOnly) {
    EXPECT_EQ(told(conditionsOf("MEASUREMENT_SOURCE \"Illuminant A\"").illuminant), "A (text)");
    EXPECT_EQ(told(conditionsOf("MEASUREMENT_SOURCE \"Illuminant D50\"").illuminant), "D50");
}

// Observers.

TEST(documentConditions, observer_isNamedByItsAngle) {
    expectEach(&DocumentConditions::observer,
               {{"WEIGHTING_FUNCTION \"OBSERVER, 2 degree\"", "2 degree"},
                {"WEIGHTING_FUNCTION \"OBSERVER, 10\"", "10 degree"},
                {"WEIGHTING_FUNCTION \"OBSERVER. 2\"", "2 degree"},
                {"WEIGHTING_FUNCTION \"OBSERVER\t10 degree\"", "10 degree"},
                {"WEIGHTING_FUNCTION OBSERVER, 2 degree", "2 degree"},
                {"WEIGHTING_FUNCTION \"ILLUMINANT, D65, OBSERVER, 10\"", "10 degree"},
                {"OBSERVER_ANGLE \"2\"", "2 degree"},
                {"OBSERVER_ANGLE 10", "10 degree"},
                {"OBSERVER_ANGLE \"2\xC2\xB0\"", "2 degree"},
                {"OBSERVER_ANGLE \"2\xB0\"", "2 degree"},
                {"OBSERVER_ANGLE \"10\xC2\xBA\"", "10 degree"},
                {"OBSERVER_ANGLE \"10 deg\"", "10 degree"},
                {"OBSERVER_ANGLE \"2.0\"", "2 degree"},
                {"OBSERVER \"2deg\"", "2 degree"},
                {"OBSERVER \"CIE 1931\"", "2 degree"},
                {"OBSERVER \"CIE1964\"", "10 degree"},
                {"OBSERVER \"CIE 1964 10 degree standard observer\"", "10 degree"},
                {"ILLUMINANT \"D50/2\"", "2 degree"},
                {"ILLUMINANT \"D65, 10\xC2\xB0\"", "10 degree"}});
}

TEST(documentConditions, otherObservers_standAsTheyAre) {
    expectEach(&DocumentConditions::observer,
               {{"OBSERVER \"CIE 2015 2 degree\"", "CIE 2015 2 degree"},
                {"OBSERVER \"4 degree\"", "4 degree"},
                {"OBSERVER \"10 degree, modified\"", "10 degree, modified"},
                {"WEIGHTING_FUNCTION \"ILLUMINANT, D50, OBSERVER, 4 degree\"", "4 degree"},
                {"OBSERVER \"CIE 1964 2 degree\"", "CIE 1964 2 degree"}});
}

TEST(documentConditions, observerAmongOtherWords_isNamedByItsAngle) {
    expectEach(&DocumentConditions::observer,
               {{"MEASUREMENT_SOURCE \"D50, 10 degree, M1, geometry 45/0\"", "10 degree"},
                {"MEASUREMENT_SOURCE \"D50 10 degree white backing\"", "10 degree"},
                {"MEASUREMENT_SOURCE \"M1 D50 10deg 45/0\"", "10 degree"},
                {"MEASUREMENT_SOURCE \"10 degree, 45/0\"", "10 degree"},
                {"MEASUREMENT_SOURCE \"D50, 2\xC2\xB0, 45:0, wb\"", "2 degree"},
                {"MEASUREMENT_SOURCE \"Illuminant D50, Observer 10, Filter M1, Geometry 45/0\"", "10 degree"},
                {"WEIGHTING_FUNCTION \"D50/10, with UV\"", "10 degree"},
                {"WEIGHTING_FUNCTION \"OBSERVER, 10 degree, with UV\"", "10 degree"},
                {"ILLUMINATION_NAME \"D50, 10 degree, abs\"", "10 degree"}});
}

TEST(documentConditions, numbersAmongOtherWords_areNoObserver) {
    expectEach(&DocumentConditions::observer, {{"WEIGHTING_FUNCTION \"D50, 10 bands\"", ""},
                                               {"WEIGHTING_FUNCTION \"D50/10 nm\"", ""},
                                               {"WEIGHTING_FUNCTION \"D50/2 deg, 10 nm\"", "2 degree"},
                                               {"WEIGHTING_FUNCTION \"D50, CIE 2015 10 degree\"", ""},
                                               {"WEIGHTING_FUNCTION \"D50, Stiles-Burch 10 degree\"", ""}});
}

TEST(documentConditions, standardBesideAnObserver_changesNothing) {
    expectEach(&DocumentConditions::observer,
               {{"WEIGHTING_FUNCTION \"D50, 10, ISO 13655\"", "10 degree"},
                {"WEIGHTING_FUNCTION \"D50, 10, according to ISO 13655:2009\"", "10 degree"},
                {"WEIGHTING_FUNCTION \"D50, 10, ISO13655-2017\"", "10 degree"},
                {"WEIGHTING_FUNCTION \"D50, 10, DIN EN ISO 13655\"", "10 degree"},
                {"WEIGHTING_FUNCTION \"D50, 10, ASTM E308-15\"", "10 degree"},
                {"OBSERVER \"10, ISO 13655:2009\"", "10 degree"},
                {"OBSERVER \"CIE: 1964\"", "10 degree"},
                {"MEASUREMENT_SOURCE \"Illumination: D50, Observer: 1964\"", "10 degree"}});
}

TEST(documentConditions, keywordsThatEndInIlluminantOrObserver_areOfThem) {
    expectEach(&DocumentConditions::illuminant, {{"SPECTRAL_ILLUMINANT \"D65\"", "D65"},
                                                 {"LAB_ILLUMINANT \"A\"", "A"},
                                                 {"SECOND_ILLUMINANT \"A\"", ""},
                                                 {"INSTRUMENT_ILLUMINANT \"A\"", ""}});
    expectEach(&DocumentConditions::observer,
               {{"SPECTRAL_OBSERVER \"10\"", "10 degree"}, {"SECOND_OBSERVER \"10\"", ""}});
}

// Unknown.

TEST(documentConditions, unknownIsNoValue) {
    for (const char* value : {"Unknown", "unknown", "N/A", "n/a", "Not specified", "-", "--", "", "?", " "}) {
        const std::string quoted = std::string(" \"") + value + "\"\n";
        const DocumentConditions conditions =
            conditionsOf("ILLUMINANT" + quoted + "OBSERVER" + quoted + "FILTER" + quoted +
                         "MEASUREMENT_CONDITION" + quoted + "SAMPLE_BACKING" + quoted +
                         "MEASUREMENT_GEOMETRY" + quoted + "INSTRUMENTATION" + quoted);
        for (const Condition* condition : {&conditions.illuminant, &conditions.observer, &conditions.filter,
                                           &conditions.measurementCondition, &conditions.backing,
                                           &conditions.geometry, &conditions.instrument})
            EXPECT_EQ(told(*condition), "") << '"' << value << '"';
    }
}

TEST(documentConditions, unknownParts_areNoValues) {
    const DocumentConditions conditions =
        conditionsOf("WEIGHTING_FUNCTION \"ILLUMINANT, Unknown\"\nWEIGHTING_FUNCTION \"OBSERVER, Unknown "
                     "degree\"\nMEASUREMENT_SOURCE \"Illumination=Unknown Filter=Unknown\"");
    EXPECT_EQ(told(conditions.illuminant), "");
    EXPECT_EQ(told(conditions.observer), "");
    EXPECT_EQ(told(conditions.filter), "");
}

TEST(documentConditions, unknown_doesNotReplaceWhatIsDeclared) {
    const std::string lines = "ILLUMINATION_NAME \"D50\"\nWEIGHTING_FUNCTION \"ILLUMINANT, Unknown\"";
    EXPECT_EQ(told(conditionsOf(lines).illuminant), "D50");
}

TEST(documentConditions, unknown_namesTheLineThatSaysSo) {
    EXPECT_EQ(conditionsOf("FILTER \"Unknown\"").filter.source, "FILTER \"Unknown\"");
    EXPECT_EQ(conditionsOf("ORIGINATOR \"us\"").filter.source, "");
}

// Lines of several parts.

TEST(documentConditions, measurementSource_isReadPartByPart) {
    for (const char* value :
         {"\"Illumination=D50 ObserverAngle=2 WhiteBase=Abs Filter=UVcut MeasurementCondition=M1\"",
          "\"Illumination=D50, ObserverAngle=2, WhiteBase=Abs, Filter=UVcut, MeasurementCondition=M1\"",
          "\"Illumination=D50;ObserverAngle=2;WhiteBase=Abs;Filter=UVcut;MeasurementCondition=M1\"",
          "\"Illumination=D50\tObserverAngle=2degree\tWhiteBase=Abs\tFilter=UVcut\tMeasurementCondition=M1\"",
          "\"Observer Angle = 2 Illumination = D50 Filter = UV cut Measurement Condition = M1\"",
          "\"Illumination: D50; Observer: CIE 1931; Filter: UVcut; Measurement_Condition: M1\"",
          "Illumination=D50 ObserverAngle=2 WhiteBase=Abs Filter=UVcut MeasurementCondition=M1"}) {
        const DocumentConditions conditions = conditionsOf(std::string("MEASUREMENT_SOURCE ") + value);
        EXPECT_EQ(told(conditions.illuminant), "D50") << value;
        EXPECT_EQ(told(conditions.observer), "2 degree") << value;
        EXPECT_EQ(told(conditions.filter), "UV cut") << value;
        EXPECT_EQ(told(conditions.measurementCondition), "M1") << value;
        EXPECT_EQ(told(conditions.backing), "") << value;
    }
}

TEST(documentConditions, quotesInsideAValue_doNotMatter) {
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer(("CGATS.17\n" + tableWith("ORIGINATOR \"us\"")).c_str()), 0);
    ASSERT_EQ(document.InsertTag(-1, "MEASUREMENT_SOURCE", 0,
                                 "\"Illumination=\"D50\" ObserverAngle=\"10\" Filter=\"No\"\"", "", 1, false),
              0);
    const DocumentConditions conditions = qc::conditionsOf(document, 0);
    EXPECT_EQ(told(conditions.illuminant), "D50");
    EXPECT_EQ(told(conditions.observer), "10 degree");
    EXPECT_EQ(told(conditions.filter), "none");
}

TEST(documentConditions, partsBehindAHashInTheQuotes_count) {
    const DocumentConditions conditions =
        conditionsOf("MEASUREMENT_SOURCE \"Illumination=D50 ObserverAngle=2 # MeasurementCondition=M1\"");
    EXPECT_EQ(told(conditions.observer), "2 degree");
    EXPECT_EQ(told(conditions.measurementCondition), "M1");
}

TEST(documentConditions, commentBehindAValue_isNoCondition) {
    const DocumentConditions conditions = conditionsOf("FILTER \"No\" # M2 was not at hand");
    EXPECT_EQ(told(conditions.measurementCondition), "");
    EXPECT_EQ(told(conditions.filter), "none");
}

TEST(documentConditions, partsInLinesOfOtherKeywords_areDeclared) {
    const std::string line = "MAKER_INFO_0 \"Mode=Reflection,Measurement Condition=M1,Aperture=6\"";
    EXPECT_EQ(told(conditionsOf(line).measurementCondition), "M1");
}

TEST(documentConditions, partsOfOtherKeywords_areReadOnlyWhenUnderstood) {
    EXPECT_EQ(told(conditionsOf("RIP_SETTINGS \"Filter=Lanczos, Geometry=200x300\"").filter), "");
    EXPECT_EQ(told(conditionsOf("RIP_SETTINGS \"Filter=Lanczos, Geometry=200x300\"").geometry), "");
}

// Measurement conditions.

TEST(documentConditions, measurementCondition_isDeclaredInItsOwnLine) {
    expectEach(&DocumentConditions::measurementCondition, {{"MEASUREMENT_CONDITION \"M2\"", "M2"},
                                                           {"MEASUREMENT_CONDITIONS \"M0\"", "M0"},
                                                           {"MEAS_CONDITION m3", "M3"},
                                                           {"MEASUREMENT_CONDITION \"ISO 13655 M1\"", "M1"},
                                                           {"MEASUREMENT_CONDITION \"M 1\"", "M1"},
                                                           {"MEASUREMENT_MODE \"M1\"", "M1"},
                                                           {"MEASUREMENT_SOURCE \"M1\"", "M1"}});
}

TEST(documentConditions, measurementConditionsLine_declaresAllThatItNames) {
    const DocumentConditions conditions =
        conditionsOf("MEASUREMENT_CONDITIONS \"D50/2\xC2\xB0, M1, 45/0, black backing, no filter\"");
    EXPECT_EQ(told(conditions.illuminant), "D50");
    EXPECT_EQ(told(conditions.observer), "2 degree");
    EXPECT_EQ(told(conditions.measurementCondition), "M1");
    EXPECT_EQ(told(conditions.geometry), "45/0");
    EXPECT_EQ(told(conditions.backing), "black");
    EXPECT_EQ(told(conditions.filter), "none");
}

TEST(documentConditions, illuminantOfAMeasurementCondition_isItsLamp) {
    const std::string lamp = "MEASUREMENT_CONDITION \"M0 (tungsten, illuminant A)\"";
    for (const std::string& lines :
         {"ILLUMINATION_NAME \"D50\"\n" + lamp, lamp + "\nILLUMINATION_NAME \"D50\""}) {
        const DocumentConditions conditions = conditionsOf(lines);
        EXPECT_EQ(told(conditions.illuminant), "D50") << lines;
        EXPECT_EQ(conditions.illuminant.contradicted, "") << lines;
        EXPECT_EQ(told(conditions.measurementCondition), "M0") << lines;
    }
    EXPECT_EQ(told(conditionsOf(lamp).illuminant), "A (text)");
    EXPECT_EQ(told(conditionsOf("MEASUREMENT_CONDITION \"M1 (D50)\"").illuminant), "D50");
}

TEST(documentConditions, weightingBesideAMeasurementCondition_isToldBesideAnotherOne_andNotTaken) {
    const std::string weighting = "MEASUREMENT_CONDITION \"M0, A/2\"";
    for (const std::string& lines :
         {"ILLUMINATION_NAME \"D50\"\n" + weighting, weighting + "\nILLUMINATION_NAME \"D50\""}) {
        const Condition illuminant = conditionsOf(lines).illuminant;
        EXPECT_EQ(told(illuminant), "D50") << lines;
        EXPECT_EQ(illuminant.contradicted, weighting) << lines;
    }
    EXPECT_EQ(told(conditionsOf(weighting).illuminant), "A");
}

TEST(documentConditions, yearOfTheStandard_isNoMeasurementCondition) {
    expectEach(&DocumentConditions::measurementCondition,
               {{"MEASUREMENT_CONDITION \"M0 according to ISO 13655:2009\"", "M0"},
                {"MEASUREMENT_CONDITION \"M0 (ISO 13655: 2009)\"", "M0"},
                {"MEASUREMENT_CONDITION \"ISO 13655:2017, M0\"", "M0"},
                {"MEASUREMENT_CONDITION \"ISO 13655: M0\"", "M0"},
                {"FILTER \"M0 (ISO 13655:2009)\"", "M0"},
                {"MEASUREMENT_SOURCE \"D50, M0, ISO 13655:2009\"", "M0"},
                {"MEASUREMENT_SOURCE \"ISO 13655:2009, D50, M0\"", "M0"},
                {"SAMPLE_BACKING \"black, ISO 13655:2009\"", ""}});
    expectEach(&DocumentConditions::backing, {{"SAMPLE_BACKING \"black, ISO 13655:2009\"", "black"}});
}

TEST(documentConditions, partThatIsNotUnderstood_doesNotReplaceOneOfItsLineThatIs) {
    const Condition condition =
        conditionsOf("MEASUREMENT_SOURCE \"Filter=M1 MeasurementCondition=M7\"").measurementCondition;
    EXPECT_EQ(told(condition), "M1");
    EXPECT_TRUE(condition.understood);
}

TEST(documentConditions, squareAndCubicMetres_areNoMeasurementCondition) {
    expectEach(&DocumentConditions::measurementCondition,
               {{"PRINT_CONDITIONS \"paper 115 g/m2\"", ""},
                {"DESCRIPTOR \"80g/m2 uncoated\"", ""},
                {"DESCRIPTOR \"115 g per m2\"", ""},
                {"DESCRIPTOR \"115 g m2\"", ""},
                {"DESCRIPTOR \"display of 120 cd/m2\"", ""},
                {"DESCRIPTOR \"ink 12 g/m3\"", ""},
                {"DESCRIPTOR \"paper 90 g/m2, measured in M1\"", "M1 (text)"},
                {"DESCRIPTOR \"D50/2/M2\"", "M2 (text)"},
                {"DESCRIPTOR \"ISO 13655/M3\"", "M3 (text)"}});
}

TEST(documentConditions, namesOfMachinesAndStocks_areNoMeasurementCondition) {
    expectEach(&DocumentConditions::measurementCondition, {{"FILE_DESCRIPTOR \"Machine M2, line 3\"", ""},
                                                           {"DESCRIPTOR \"TAC 300, paper M3 stock\"", ""},
                                                           {"DESCRIPTOR \"Printed on press M1\"", ""},
                                                           {"DESCRIPTOR \"offset press, M1\"", "M1 (text)"},
                                                           {"DESCRIPTOR \"coated paper M1\"", "M1 (text)"}});
}

TEST(documentConditions, climateOfTheLaboratory_isNoMeasurementCondition) {
    EXPECT_EQ(told(conditionsOf("MEASUREMENT_CONDITIONS \"23 degrees C, 50 % RH\"").measurementCondition),
              "");
}

TEST(documentConditions, measurementConditionInTheFilterLine_isDeclared) {
    expectEach(&DocumentConditions::measurementCondition, {{"FILTER \"M1\"", "M1"},
                                                           {"FILTER \"M0\"", "M0"},
                                                           {"FILTER \"M2 (UV cut)\"", "M2"},
                                                           {"FILTER \"M3\"", "M3"}});
}

TEST(documentConditions, measurementConditionInTheFilterLine_saysTheFilter) {
    expectEach(&DocumentConditions::filter, {{"FILTER \"M0\"", ""},
                                             {"FILTER \"M1\"", ""},
                                             {"FILTER \"M2\"", "UV cut"},
                                             {"FILTER \"M3\"", "polarizing"}});
}

TEST(documentConditions, filterOfAMeasurementCondition_isImplied) {
    EXPECT_TRUE(conditionsOf("FILTER \"M2\"").filter.implied);
    EXPECT_FALSE(conditionsOf("FILTER \"M2 (UV cut)\"").filter.implied);
    EXPECT_FALSE(conditionsOf("FILTER \"UV cut\"\nFILTER \"M1\"").filter.implied);
}

TEST(documentConditions, filter_impliesItsMeasurementCondition) {
    expectEach(&DocumentConditions::measurementCondition, {{"FILTER \"UVcut\"", "M2"},
                                                           {"FILTER \"UV Filter\"", "M2"},
                                                           {"UV_FILTER \"Yes\"", "M2"},
                                                           {"FILTER \"Pol\"", "M3"},
                                                           {"POLARIZATION \"Yes\"", "M3"},
                                                           {"DESCRIPTOR \"D50, UV-cut\"", "M2 (text)"},
                                                           {"FILTER \"No\"", ""},
                                                           {"FILTER \"D65\"", ""}});
}

TEST(documentConditions, measurementConditionOfItsOwnLine_isNotThatOfTheFilter) {
    for (const char* lines : {"MEASUREMENT_CONDITION \"M1\"\nFILTER \"Pol Filter\"",
                              "FILTER \"Pol Filter\"\nMEASUREMENT_CONDITION \"M1\""}) {
        const DocumentConditions conditions = conditionsOf(lines);
        EXPECT_EQ(told(conditions.measurementCondition), "M1") << lines;
        EXPECT_FALSE(conditions.measurementCondition.implied) << lines;
        EXPECT_EQ(told(conditions.filter), "polarizing") << lines;
    }
    const Condition implied = conditionsOf("FILTER \"Pol Filter\"").measurementCondition;
    EXPECT_TRUE(implied.implied);
    EXPECT_EQ(implied.source, "FILTER \"Pol Filter\"");
}

TEST(documentConditions, declaredFilter_saysMoreThanATextOnTheMeasurementCondition) {
    expectEach(&DocumentConditions::measurementCondition,
               {{"DESCRIPTOR \"chart (M1)\"\nFILTER \"UVcut\"", "M2"},
                {"DESCRIPTOR \"chart (M1)\"\nREMARK \"UV-cut\"", "M1 (text)"}});
}

TEST(documentConditions, measurementCondition_isAWordOfItsOwn) {
    expectEach(&DocumentConditions::measurementCondition, {{"DESCRIPTOR \"PM10 fine dust\"", ""},
                                                           {"DESCRIPTOR \"M12 screw\"", ""},
                                                           {"DESCRIPTOR \"FM100\"", ""},
                                                           {"DESCRIPTOR \"coated_v3_M1.txt\"", "M1 (text)"},
                                                           {"DESCRIPTOR \"coated (M1)\"", "M1 (text)"},
                                                           {"DESCRIPTOR \"M0 and M1\"", ""}});
}

// Filters.

TEST(documentConditions, filter_isNamedInAllItsSpellings) {
    expectEach(&DocumentConditions::filter, {{"FILTER \"No\"", "none"},
                                             {"FILTER \"None\"", "none"},
                                             {"FILTER \"no filter\"", "none"},
                                             {"FILTER No", "none"},
                                             {"FILTER \"UVcut\"", "UV cut"},
                                             {"FILTER \"UV Filter\"", "UV cut"},
                                             {"FILTER \"UV-cut filter\"", "UV cut"},
                                             {"FILTER \"No UV\"", "UV cut"},
                                             {"FILTER \"no UV filter\"", "none"},
                                             {"FILTER \"UV included\"", "none"},
                                             {"FILTER \"Pol\"", "polarizing"},
                                             {"FILTER \"None, D50\"", "none"},
                                             {"FILTER \"PolFilter\"", "polarizing"},
                                             {"FILTER \"Polarizing\"", "polarizing"},
                                             {"FILTER \"unpolarized\"", "none"},
                                             {"FILTER \"D65\"", "D65"},
                                             {"FILTER \"Wratten 106\"", "Wratten 106"},
                                             {"FILTER \"Unknown\"", ""},
                                             {"FILTER \"Status T\"", ""},
                                             {"UV_FILTER \"Yes\"", "UV cut"}});
}

TEST(documentConditions, lightOfM1InTheFilterLine_isNoFilter) {
    for (const char* lines :
         {"MEASUREMENT_CONDITION \"M1\"\nFILTER \"D50\"", "FILTER \"D50\"\nMEASUREMENT_CONDITION \"M1\"",
          "MEASUREMENT_SOURCE \"MeasurementCondition=M1 Filter=D50\""}) {
        const Condition filter = conditionsOf(lines).filter;
        EXPECT_EQ(told(filter), "") << lines;
        EXPECT_TRUE(filter.understood) << lines;
    }
    expectEach(&DocumentConditions::filter, {{"FILTER \"D50\"", "D50"},
                                             {"MEASUREMENT_CONDITION \"M0\"\nFILTER \"D50\"", "D50"},
                                             {"MEASUREMENT_CONDITION \"M1\"\nFILTER \"A\"", "A"},
                                             {"MEASUREMENT_CONDITION \"M1\"\nFILTER \"D65\"", "D65"}});
}

TEST(documentConditions, polarization_isAFilter) {
    expectEach(&DocumentConditions::filter, {{"POLARIZATION \"Yes\"", "polarizing"},
                                             {"POLARIZATION \"No\"", "none"},
                                             {"POLARIZATION \"none\"", "none"},
                                             {"POLARIZATION Linear", "polarizing"},
                                             {"POLARIZATION \"Unknown\"", ""}});
}

TEST(documentConditions, polarizationAndFilter_addUpInEitherOrder) {
    expectEach(&DocumentConditions::filter, {{"FILTER \"UVcut\"\nPOLARIZATION \"No\"", "UV cut"},
                                             {"POLARIZATION \"No\"\nFILTER \"UVcut\"", "UV cut"},
                                             {"FILTER \"No\"\nPOLARIZATION \"Yes\"", "polarizing"},
                                             {"POLARIZATION \"Yes\"\nFILTER \"No\"", "polarizing"}});
}

// Geometries, backings, instruments.

TEST(documentConditions, geometry_isAPairOfAngles) {
    expectEach(&DocumentConditions::geometry,
               {{"MEASUREMENT_GEOMETRY \"45/0\"", "45/0"},
                {"MEASUREMENT_GEOMETRY 45/0", "45/0"},
                {"MEASUREMENT_GEOMETRY \"45\xC2\xB0/0\xC2\xB0\"", "45/0"},
                {"MEASUREMENT_GEOMETRY \"45\xB0/0\xB0\"", "45/0"},
                {"MEASUREMENT_GEOMETRY \"45-0\"", "45/0"},
                {"MEASUREMENT_GEOMETRY \"45a:0\"", "45/0"},
                {"MEASUREMENT_GEOMETRY \"45\xC2\xB0"
                 "a:0\xC2\xB0\"",
                 "45/0"},
                {"MEASUREMENT_GEOMETRY \"Ill 45, Obs 0\"", "45/0"},
                {"MEASUREMENT_GEOMETRY \"0/45\"", "0/45"},
                {"MEASUREMENT_GEOMETRY \"0:45c\"", "0/45"},
                {"MEASUREMENT_GEOMETRY \"d/8\"", "d/8"},
                {"MEASUREMENT_GEOMETRY \"di:8\"", "d/8"},
                {"MEASUREMENT_GEOMETRY \"de:8\xC2\xB0\"", "d/8"},
                {"MEASUREMENT_GEOMETRY \"Diffuse/8, specular excluded\"", "d/8"},
                {"MEASUREMENT_GEOMETRY \"sphere\"", "d/8"},
                {"MEASUREMENT_GEOMETRY \"d:8 (di)\"", "d/8"},
                {"MEASUREMENT_GEOMETRY \"di8\"", "d/8"},
                {"MEASUREMENT_GEOMETRY \"45/0, aperture 8 mm\"", "45/0"},
                {"MEASUREMENT_GEOMETRY \"45/0 annular\"", "45/0"},
                {"MEASUREMENT_GEOMETRY \"45\xC2\xB0"
                 "c:0\xC2\xB0 circumferential\"",
                 "45/0"},
                {"MEASUREMENT_GEOMETRY \"8:di\"", "8/d"},
                {"MEASUREMENT_GEOMETRY \"d/0\"", "d/0"},
                {"MEASUREMENT_GEOMETRY \"0/45 or 45/0\"", "0/45 or 45/0"},
                {"MEASUREMENT_GEOMETRY \"transmission\"", "transmission"},
                {"MEASUREMENT_GEOMETRY \"reflective\"", ""}});
}

TEST(documentConditions, backing_isWhiteBlackOrSelf) {
    expectEach(&DocumentConditions::backing, {{"SAMPLE_BACKING \"white\"", "white"},
                                              {"SAMPLE_BACKING \"White Backing\"", "white"},
                                              {"SAMPLE_BACKING White Backing", "white"},
                                              {"SAMPLE_BACKING \"WB\"", "white"},
                                              {"SAMPLE_BACKING BLACK", "black"},
                                              {"SAMPLE_BACKING \"bb\"", "black"},
                                              {"SAMPLE_BACKING \"self-backing\"", "self"},
                                              {"SAMPLE_BACKING \"own substrate\"", "self"},
                                              {"SAMPLE_BACKING \"white substrate\"", "white"},
                                              {"DESCRIPTOR \"on substrate backing\"", "self (text)"},
                                              {"SAMPLE_BACKING \"substrate\"", "substrate"},
                                              {"SAMPLE_BACKING \"black & white\"", "black & white"},
                                              {"SAMPLE_BACKING \"none\"", "none"},
                                              {"SAMPLE_BACKING \"glass\"", "glass"}});
}

TEST(documentConditions, whiteBase_isAbsoluteOrPaper) {
    expectEach(
        &DocumentConditions::whiteBase,
        {{"MEASUREMENT_SOURCE \"Illumination=D50 ObserverAngle=2 WhiteBase=Abs Filter=No\"", "absolute"},
         {"MEASUREMENT_SOURCE \"Illumination=D50\tWhiteBase=Absolute\tFilter=M1\"", "absolute"},
         {"MEASUREMENT_SOURCE \"Illumination=D50 WhiteBase=Paper Filter=M1\"", "paper"},
         {"MEASUREMENT_SOURCE \"WhiteBase=Pap\"", "paper"},
         {"WHITE_BASE \"paper white\"", "paper"},
         {"DEVICE_SETTINGS \"WhiteBase=Paper\"", "paper"},
         {"MEASUREMENT_SOURCE \"WhiteBase=Unknown Filter=M1\"", ""},
         {"MEASUREMENT_SOURCE \"WhiteBase=Auto\"", ""},
         {"MEASUREMENT_SOURCE \"WhiteBase=Paper or absolute\"", ""}});
}

TEST(documentConditions, whiteBaseOfALaterTable_mayBeAnother) {
    const std::string text =
        "CGATS.17\n" + tableWith("WHITE_BASE \"paper\"") + tableWith("WHITE_BASE \"abs\"");
    EXPECT_EQ(told(conditionsIn(text, 1).whiteBase), "absolute");
    EXPECT_EQ(conditionsIn(text, 1).whiteBase.contradicted, "");
}

TEST(documentConditions, conditionsBesideTheInstrument_areThoseOfAText) {
    const DocumentConditions conditions = conditionsOf(
        "INSTRUMENTATION \"D65, 10 degree, geometry 45/0, no polarisation filter, black backing, "
        "according to ISO 13655\"");
    EXPECT_EQ(told(conditions.illuminant), "D65 (text)");
    EXPECT_EQ(told(conditions.observer), "10 degree (text)");
    EXPECT_EQ(told(conditions.geometry), "45/0 (text)");
    EXPECT_EQ(told(conditions.filter), "none (text)");
    EXPECT_EQ(told(conditions.backing), "black (text)");
    EXPECT_EQ(told(conditionsOf("INSTRUMENTATION \"Spectro 530\"").illuminant), "");
}

TEST(documentConditions, instrument_isNamedWithoutItsSerialNumber) {
    expectEach(&DocumentConditions::instrument,
               {{"INSTRUMENTATION \"i1Pro 2 ; Serial number 0\"", "i1Pro 2"},
                {"INSTRUMENTATION \"Spectropad  ver:6.26-6.10 R DOC,SN=B510,MN=B11J,1\"", "Spectropad"},
                {"INSTRUMENTATION \"Maker 530 (S/N 1234)\"", "Maker 530"},
                {"INSTRUMENTATION \"Konica-Minolta\tCA-410\"", "Konica-Minolta CA-410"},
                {"INSTRUMENT \"; Serial number 7\"", ""},
                {"INSTRUMENT \"Server 5\"", "Server 5"}});
}

TEST(documentConditions, intendedInstrument_isNotTheOneOfTheMeasurement) {
    EXPECT_EQ(told(conditionsOf("TARGET_INSTRUMENT \"Scanner 9\"").instrument), "Scanner 9 (text)");
    EXPECT_EQ(told(conditionsOf("INSTRUMENT \"i1Pro\"\nTARGET_INSTRUMENT \"Scanner 9\"").instrument),
              "i1Pro");
}

// Texts.

TEST(documentConditions, descriptiveText_givesFreeText) {
    const DocumentConditions conditions =
        conditionsOf("DESCRIPTOR \"L* a* b* Batch average data (light D50, viewing angle 2)\"");
    EXPECT_EQ(told(conditions.illuminant), "D50 (text)");
    EXPECT_EQ(told(conditions.observer), "2 degree (text)");
    EXPECT_EQ(conditions.illuminant.source,
              "DESCRIPTOR \"L* a* b* Batch average data (light D50, viewing angle 2)\"");
}

TEST(documentConditions, descriptiveText_isReadForAllConditions) {
    const DocumentConditions conditions =
        conditionsOf("PRINT_CONDITIONS \"D65/10\xC2\xB0, M2 (UV-cut), 45\xC2\xB0:0\xC2\xB0, white backing\"");
    EXPECT_EQ(told(conditions.illuminant), "D65 (text)");
    EXPECT_EQ(told(conditions.observer), "10 degree (text)");
    EXPECT_EQ(told(conditions.measurementCondition), "M2 (text)");
    EXPECT_EQ(told(conditions.filter), "UV cut (text)");
    EXPECT_EQ(told(conditions.geometry), "45/0 (text)");
    EXPECT_EQ(told(conditions.backing), "white (text)");
}

TEST(documentConditions, letterOfAnIlluminant_needsACompanionInAText) {
    expectEach(&DocumentConditions::illuminant, {{"DESCRIPTOR \"A chart, part C\"", ""},
                                                 {"DESCRIPTOR \"computed for illuminant C\"", "C (text)"},
                                                 {"DESCRIPTOR \"A/10 and more\"", "A (text)"},
                                                 {"DESCRIPTOR \"lens F2 stop\"", ""},
                                                 {"DESCRIPTOR \"with D65 filter\"", ""}});
}

TEST(documentConditions, otherNumbersInAText_areNoConditions) {
    expectEach(&DocumentConditions::observer, {{"DESCRIPTOR \"Version 2, 10 patches\"", ""},
                                               {"DESCRIPTOR \"printed at 10 degrees C\"", ""},
                                               {"DESCRIPTOR \"angles 10\xC2\xB0 and 2\xC2\xB0\"", ""}});
    expectEach(&DocumentConditions::geometry,
               {{"DESCRIPTOR \"page 8/45\"", ""}, {"DESCRIPTOR \"1/8/45\"", ""}});
    expectEach(&DocumentConditions::backing, {{"DESCRIPTOR \"white paper, black ink\"", ""}});
}

TEST(documentConditions, textCutByAHash_isReadBehindIt) {
    EXPECT_EQ(told(conditionsOf("DESCRIPTOR \"Batch #12, D50/2\"").illuminant), "D50 (text)");
}

TEST(documentConditions, declaration_winsOverAText) {
    expectEach(&DocumentConditions::illuminant,
               {{"ILLUMINANT \"D65\"\nDESCRIPTOR \"D50, 2 degree\"", "D65"},
                {"DESCRIPTOR \"D50, 2 degree\"\nILLUMINANT \"D65\"", "D65"}});
}

TEST(documentConditions, laterLine_winsOverAnEarlierOne) {
    expectEach(&DocumentConditions::illuminant, {{"ILLUMINANT \"D65\"\nILLUMINATION_NAME \"D50\"", "D50"},
                                                 {"DESCRIPTOR \"D50\"\nREMARK \"D65\"", "D65 (text)"}});
}

TEST(documentConditions, source_isTheLine) {
    const DocumentConditions conditions =
        conditionsOf("WEIGHTING_FUNCTION \"ILLUMINANT. D50\"\nOBSERVER_ANGLE 2");
    EXPECT_EQ(conditions.illuminant.source, "WEIGHTING_FUNCTION \"ILLUMINANT. D50\"");
    EXPECT_EQ(conditions.observer.source, "OBSERVER_ANGLE 2");
}

TEST(documentConditions, declaredFieldNames_areNoConditions) {
    const DocumentConditions conditions = conditionsOf("KEYWORD \"D50\"\nKEYWORD \"M1\"\nKEYWORD \"FILTER\"");
    EXPECT_EQ(told(conditions.illuminant), "");
    EXPECT_EQ(told(conditions.measurementCondition), "");
    EXPECT_EQ(told(conditions.filter), "");
}

TEST(documentConditions, withoutHeaderLines_nothingIsKnown) {
    const DocumentConditions conditions = conditionsOf("ORIGINATOR \"us\"");
    for (const Condition* condition :
         {&conditions.illuminant, &conditions.observer, &conditions.filter, &conditions.measurementCondition,
          &conditions.backing, &conditions.geometry, &conditions.instrument}) {
        EXPECT_EQ(condition->standing, Standing::unknown);
        EXPECT_EQ(condition->source, "");
    }
    EXPECT_FALSE(conditions.isEmission);
}

// Tables.

TEST(documentConditions, tables_haveTheLinesBeforeTheirSamples) {
    const std::string text = "CGATS.17\n" + tableWith("ILLUMINANT \"D50\"\nFILTER \"No\"") +
                             tableWith("ILLUMINANT \"D65\"") + tableWith("FILTER \"UVcut\"");
    EXPECT_EQ(told(conditionsIn(text, 0).illuminant), "D50");
    EXPECT_EQ(told(conditionsIn(text, 0).filter), "none");
    EXPECT_EQ(told(conditionsIn(text, 1).illuminant), "D65");
    EXPECT_EQ(told(conditionsIn(text, 1).filter), "none");
    EXPECT_EQ(told(conditionsIn(text, 2).illuminant), "D65");
    EXPECT_EQ(told(conditionsIn(text, 2).filter), "UV cut");
    EXPECT_EQ(conditionsIn(text, 2).illuminant.contradicted, "");
}

TEST(documentConditions, linesOfOneTableThatDiffer_areTold) {
    const DocumentConditions conditions =
        conditionsOf("WEIGHTING_FUNCTION \"ILLUMINANT, D50\"\nILLUMINATION_NAME \"D65\"");
    EXPECT_EQ(told(conditions.illuminant), "D65");
    EXPECT_EQ(conditions.illuminant.contradicted, "WEIGHTING_FUNCTION \"ILLUMINANT, D50\"");
    EXPECT_EQ(conditionsOf("ILLUMINATION_NAME \"D65\"").illuminant.contradicted, "");
}

// The names of the geometries of the kernel's list. M1 is not the "D65 Filter".
TEST(documentConditions, geometryOfTheKernel_impliesAMeasurementCondition) {
    expectEach(&DocumentConditions::measurementCondition,
               {{"MEASUREMENT_GEOMETRY \"Ill 45, Obs 0\"", "M0"},
                {"MEASUREMENT_GEOMETRY \"Ill 45, Obs 0, UV Filter\"", "M2"},
                {"MEASUREMENT_GEOMETRY \"Ill 45, Obs 0, Pol Filter\"", "M3"},
                {"MEASUREMENT_GEOMETRY \"Ill 0, Obs 45, Pol Filter\"", "M3"},
                {"MEASUREMENT_GEOMETRY \"Ill 45, Obs 0, D65 Filter\"", ""},
                {"MEASUREMENT_GEOMETRY \"45/0\"", ""}});
}

TEST(documentConditions, geometryOfTheKernel_namesItsFilter) {
    expectEach(&DocumentConditions::filter,
               {{"MEASUREMENT_GEOMETRY \"Ill 45, Obs 0\"", ""},
                {"MEASUREMENT_GEOMETRY \"Ill 45, Obs 0, UV Filter\"", "UV cut"},
                {"MEASUREMENT_GEOMETRY \"Ill 0, Obs 45, Pol Filter\"", "polarizing"},
                {"MEASUREMENT_GEOMETRY \"Ill 45, Obs 0, D65 Filter\"", "D65"}});
}

TEST(documentConditions, geometry_isTheWeakestWitnessOfTheMeasurementCondition) {
    const std::string geometry = "MEASUREMENT_GEOMETRY \"Ill 45, Obs 0\"";
    for (const auto& [line, condition] :
         {std::pair("FILTER \"UV Filter\"", "M2"), std::pair("FILTER \"Pol\"", "M3"),
          std::pair("FILTER \"none\"", "M0"), std::pair("FILTER \"D65\"", ""),
          std::pair("MEASUREMENT_CONDITION \"M1\"", "M1"),
          std::pair("DESCRIPTOR \"chart (M1)\"", "M1 (text)")})
        for (const std::string& lines : {geometry + '\n' + line, line + ('\n' + geometry)}) {
            const DocumentConditions conditions = conditionsOf(lines);
            EXPECT_EQ(told(conditions.measurementCondition), condition) << lines;
            EXPECT_EQ(conditions.measurementCondition.contradicted, "") << lines;
        }
}

TEST(documentConditions, filterOfTheGeometry_isContradictedByAFilterLine) {
    const std::string geometry = "MEASUREMENT_GEOMETRY \"Ill 45, Obs 0, UV Filter\"";
    const DocumentConditions conditions = conditionsOf(geometry + "\nFILTER \"none\"");
    EXPECT_EQ(told(conditions.filter), "none");
    EXPECT_EQ(conditions.filter.contradicted, geometry);
    EXPECT_EQ(conditionsOf(geometry + "\nFILTER \"UVcut\"").filter.contradicted, "");
}

TEST(documentConditions, laterGeometry_replacesWhatAnEarlierOneImplies) {
    const std::string text = "CGATS.17\n" + tableWith("MEASUREMENT_GEOMETRY \"Ill 45, Obs 0, UV Filter\"") +
                             tableWith("MEASUREMENT_GEOMETRY \"d/8\"");
    EXPECT_EQ(told(conditionsIn(text, 0).measurementCondition), "M2");
    EXPECT_EQ(told(conditionsIn(text, 1).measurementCondition), "");
}

// What is not understood.

TEST(documentConditions, unknownSpellings_areDeclaredButNotUnderstood) {
    for (const char* line : {"ILLUMINANT \"5000K\"", "ILLUMINATION_NAME \"6500 K\"", "OBSERVER \"4 degree\"",
                             "MEASUREMENT_CONDITION \"M7\"", "SAMPLE_BACKING \"white backing over black\"",
                             // That of the sample, or another one.
                             "SAMPLE_BACKING \"substrate\"", "MEASUREMENT_GEOMETRY \"transmission\"",
                             "FILTER \"U\"", "FILTER \"D50\""}) {
        const DocumentConditions conditions = conditionsOf(line);
        int declared = 0;
        for (const Condition* condition :
             {&conditions.illuminant, &conditions.observer, &conditions.measurementCondition,
              &conditions.backing, &conditions.geometry, &conditions.filter}) {
            EXPECT_EQ(condition->understood, !condition->isDeclared()) << line;
            declared += condition->isDeclared() ? 1 : 0;
        }
        EXPECT_EQ(declared, 1) << line;
    }
    EXPECT_TRUE(conditionsOf("ILLUMINANT \"D50\"").illuminant.understood);
    EXPECT_TRUE(conditionsOf("SAMPLE_BACKING \"self\"").backing.understood);
}

TEST(documentConditions, valueThatIsUnderstood_winsOverOneThatIsNot) {
    for (const char* lines : {"ILLUMINANT \"D65\"\nILLUMINATION_NAME \"6500 K\"",
                              "ILLUMINATION_NAME \"6500 K\"\nILLUMINANT \"D65\""}) {
        const Condition illuminant = conditionsOf(lines).illuminant;
        EXPECT_EQ(told(illuminant), "D65") << lines;
        EXPECT_TRUE(illuminant.understood) << lines;
        EXPECT_EQ(illuminant.contradicted, "ILLUMINATION_NAME \"6500 K\"") << lines;
    }
}

TEST(documentConditions, geometriesThereAndBack_meanTheSame) {
    EXPECT_TRUE(qc::meanTheSame("45/0", "0/45"));
    EXPECT_TRUE(qc::meanTheSame("d/8", "8/d"));
    EXPECT_TRUE(qc::meanTheSame("Xenon", "xenon"));
    EXPECT_FALSE(qc::meanTheSame("45/0", "d/8"));
    EXPECT_FALSE(qc::meanTheSame("d/8", "d/0"));
    EXPECT_FALSE(qc::meanTheSame("white", "black"));
    EXPECT_EQ(conditionsOf("GEOMETRY \"45/0\"\nMEASUREMENT_GEOMETRY \"0:45\"").geometry.contradicted, "");
}

// Names.

TEST(documentConditions, namesOfPeopleAndFirms_datesAndNumbers_areNoTexts) {
    for (const char* line :
         {"MANUFACTURER \"D65 Inc\"", "ORIGINATOR \"M1 and D65 press\"", "CREATED \"D65\"",
          "CREATOR \"D65 tools\"", "SERIAL \"D65\"", "SERIAL_NUMBER \"M1\"", "PROD_DATE \"D65\"",
          "TARGET_ID \"D65\"", "OPERATOR \"M2\"", "COPYRIGHT \"D65 Ltd\""}) {
        const DocumentConditions conditions = conditionsOf(line);
        EXPECT_EQ(told(conditions.illuminant), "") << line;
        EXPECT_EQ(told(conditions.measurementCondition), "") << line;
    }
    EXPECT_EQ(told(conditionsOf("JOB \"proof for D65\"").illuminant), "D65 (text)");
}

// Emission.

TEST(documentConditions, lightSourcesAndDisplays_areEmission) {
    for (const char* line :
         {"DEVICE_CLASS \"DISPLAY\"", "DEVICE_CLASS \"EMISSION\"", "DISPLAY_TYPE\tRGBW LCD",
          "DISPLAY_TYPE_REFRESH \"NO\"", "QUANTITY \"radiance\"", "QUANTITY \"emission\"",
          "QUANTITY \"irradiance\"", "SPECTRUM_TYPE \"EMISSION\"", "SPECTRAL_UNITS \"mW/(m2 nm)\"",
          "MEASUREMENT_MODE \"Ambient\"", "MEASUREMENT_GEOMETRY \"emission\"",
          "MEASUREMENT_GEOMETRY \"Ill None, Obs 0\"", "LUMINANCE_XYZ_CDM2 \"67.09 70.38 76.97\"",
          "DESCRIPTOR \"Spectral power of a lamp\"", "MEASUREMENT_SOURCE \"Mode=Emission\""})
        EXPECT_TRUE(conditionsOf(line).isEmission) << line;
}

TEST(documentConditions, samples_areNoEmission) {
    for (const char* line :
         {"DEVICE_CLASS \"OUTPUT\"", "DEVICE_CLASS \"INPUT\"", "QUANTITY \"reflectance\"",
          "QUANTITY \"radiance factor\"", "SPECTRUM_TYPE \"REFLECTIVE\"", "DISPLAY \"Test Color Samples\"",
          "DESCRIPTOR \"Spectral power/reflectance information (Fluorescent lamp)\"",
          "DESCRIPTOR \"Profile for a display\"", "MEASUREMENT_MODE \"Reflection\"",
          "DISPLAY_TYPE \"Unknown\""})
        EXPECT_FALSE(conditionsOf(line).isEmission) << line;
}

TEST(documentConditions, laterTable_mayBeNoEmission) {
    const std::string text = "CGATS.17\n" + tableWith("DEVICE_CLASS \"DISPLAY\"") +
                             tableWith("ORIGINATOR \"us\"") + tableWith("DEVICE_CLASS \"OUTPUT\"");
    EXPECT_TRUE(conditionsIn(text, 0).isEmission);
    EXPECT_TRUE(conditionsIn(text, 1).isEmission);
    EXPECT_FALSE(conditionsIn(text, 2).isEmission);
}

} // namespace
} // namespace qxcms::tests
