// Which illuminant and observer a comparison is made for, and what keeps two sides from being compared.
#include "qc/condition_choice.h"

#include <utility>

#include <gmock/gmock.h>

#include "qc/refusal.h"

namespace qxcms::tests {
namespace {

using namespace qc;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using Kind = Finding::Kind;
using Origin = ChosenCondition::Origin;
using Place = Condition DocumentConditions::*;

Condition declared(const std::string& value) {
    return {Condition::Standing::declared, value, "LINE \"" + value + "\""};
}

Condition notUnderstood(const std::string& value) {
    Condition condition = declared(value);
    condition.understood = false;
    return condition;
}

Condition inText(const std::string& value) {
    return {Condition::Standing::freeText, value, "DESCRIPTOR \"under " + value + "\""};
}

DescribedSide sideOf(const std::string& name, ColorSource source, const DocumentConditions& conditions) {
    return {name, source, conditions};
}

DescribedSide measured(const DocumentConditions& conditions, ColorSource source = ColorSource::lab) {
    return sideOf("measured.txt", source, conditions);
}

DescribedSide reference(const DocumentConditions& conditions, ColorSource source = ColorSource::lab) {
    return sideOf("reference.txt", source, conditions);
}

// Illuminant and observer.
DocumentConditions viewed(const Condition& illuminant, const Condition& observer = {}) {
    DocumentConditions conditions;
    conditions.illuminant = illuminant;
    conditions.observer = observer;
    return conditions;
}

DocumentConditions with(Place place, const Condition& condition) {
    DocumentConditions conditions;
    conditions.*place = condition;
    return conditions;
}

constexpr Place kOfMeasurement[] = {&DocumentConditions::measurementCondition, &DocumentConditions::backing,
                                    &DocumentConditions::geometry, &DocumentConditions::filter,
                                    &DocumentConditions::whiteBase};

using Asked = std::optional<std::string>;

ChosenConditions chosen(const DescribedSide& left, const DescribedSide& right,
                        const Asked& illuminant = std::nullopt, const Asked& observer = std::nullopt) {
    return chooseConditions(left, right, illuminant, observer, false);
}

ChosenConditions forced(const DescribedSide& left, const DescribedSide& right,
                        const Asked& illuminant = std::nullopt, const Asked& observer = std::nullopt) {
    return chooseConditions(left, right, illuminant, observer, true);
}

std::string refusalOf(const DescribedSide& left, const DescribedSide& right,
                      const Asked& illuminant = std::nullopt, const Asked& observer = std::nullopt) {
    try {
        chooseConditions(left, right, illuminant, observer, false);
    } catch (const Refusal& refusal) {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::notComparable);
        return refusal.what();
    }
    ADD_FAILURE() << "the conditions were accepted";
    return "";
}

// The findings of one kind, warnings with a "!" in front.
std::vector<std::string> findingsOf(const ChosenConditions& choice, Kind kind) {
    std::vector<std::string> texts;
    for (const Finding& finding : choice.findings)
        if (finding.kind == kind)
            texts.push_back((finding.severity == Finding::Severity::warning ? "!" : "") + finding.text);
    return texts;
}

TEST(conditionChoice, labAndXyz_areBoundToTheirConditions_andSpectraAreNot) {
    EXPECT_TRUE(measured({}, ColorSource::lab).isBound());
    EXPECT_TRUE(measured({}, ColorSource::xyz).isBound());
    EXPECT_FALSE(measured({}, ColorSource::spectra).isBound());
}

TEST(conditionChoice, origins_haveNames) {
    EXPECT_STREQ(nameOf(Origin::asked), "asked");
    EXPECT_STREQ(nameOf(Origin::declared), "declared");
    EXPECT_STREQ(nameOf(Origin::freeText), "text");
    EXPECT_STREQ(nameOf(Origin::assumed), "assumed");
}

TEST(conditionChoice, withoutAnything_isD50And2Degree_notedAsAssumptions) {
    const ChosenConditions choice = chosen(measured({}), reference({}));
    EXPECT_EQ(choice.illuminant.value, "D50");
    EXPECT_EQ(choice.illuminant.origin, Origin::assumed);
    EXPECT_EQ(choice.observer.value, "2 degree");
    EXPECT_EQ(choice.observer.origin, Origin::assumed);
    EXPECT_FALSE(choice.forced);
    EXPECT_THAT(findingsOf(choice, Kind::assumedCondition),
                ElementsAre(AllOf(StartsWith("no illuminant is asked for"), HasSubstr("D50 is assumed")),
                            AllOf(StartsWith("no observer is asked for"), HasSubstr("2 degree is assumed"))));
    EXPECT_EQ(choice.findings.size(), 2u);
}

TEST(conditionChoice, spectraWithoutARequest_areIntegratedForTheAssumedConditions) {
    const DescribedSide left = measured({}, ColorSource::spectra);
    const ChosenConditions choice = chosen(left, reference({}, ColorSource::spectra));
    EXPECT_EQ(choice.illuminant.origin, Origin::assumed);
    EXPECT_EQ(findingsOf(choice, Kind::assumedCondition).size(), 2u);
}

TEST(conditionChoice, whatIsAskedFor_isTaken) {
    const ChosenConditions choice =
        chosen(measured({}, ColorSource::spectra), reference({}, ColorSource::spectra), "A", "10 degree");
    EXPECT_EQ(choice.illuminant.value, "A");
    EXPECT_EQ(choice.illuminant.origin, Origin::asked);
    EXPECT_EQ(choice.observer.value, "10 degree");
    EXPECT_EQ(choice.observer.origin, Origin::asked);
    EXPECT_THAT(choice.findings, IsEmpty());
}

TEST(conditionChoice, oneThatIsAskedFor_leavesTheOtherToTheFiles) {
    const DocumentConditions conditions = viewed(declared("D65"), declared("10 degree"));
    const ChosenConditions choice = chosen(measured(conditions), reference(conditions), "D65");
    EXPECT_EQ(choice.illuminant.origin, Origin::asked);
    EXPECT_EQ(choice.observer.value, "10 degree");
    EXPECT_EQ(choice.observer.origin, Origin::declared);
    EXPECT_THAT(choice.findings, IsEmpty());
}

TEST(conditionChoice, whatBothDeclare_isTakenWithoutAWord) {
    const DocumentConditions conditions = viewed(declared("D65"), declared("10 degree"));
    for (const ColorSource source : {ColorSource::lab, ColorSource::xyz}) {
        const ChosenConditions choice = chosen(measured(conditions, source), reference(conditions, source));
        EXPECT_EQ(choice.illuminant.value, "D65");
        EXPECT_EQ(choice.illuminant.origin, Origin::declared);
        EXPECT_EQ(choice.observer.value, "10 degree");
        EXPECT_THAT(choice.findings, IsEmpty());
    }
}

TEST(conditionChoice, spectraBesideABoundSide_areIntegratedForWhatItDeclares) {
    const DocumentConditions conditions = viewed(declared("C"), declared("2 degree"));
    const ChosenConditions behind = chosen(measured({}, ColorSource::spectra), reference(conditions));
    EXPECT_EQ(behind.illuminant.value, "C");
    EXPECT_THAT(behind.findings, IsEmpty());
    const ChosenConditions before = chosen(measured(conditions), reference({}, ColorSource::spectra));
    EXPECT_EQ(before.illuminant.value, "C");
    EXPECT_THAT(before.findings, IsEmpty());
}

TEST(conditionChoice, whatASpectralSideDeclares_neitherBindsNorContradicts) {
    const DescribedSide spectra =
        measured(viewed(declared("D65"), declared("10 degree")), ColorSource::spectra);
    EXPECT_EQ(chosen(spectra, reference(viewed(declared("D50"), declared("2 degree")))).illuminant.value,
              "D50");
    EXPECT_EQ(chosen(spectra, spectra).illuminant.origin, Origin::assumed);
    EXPECT_EQ(chosen(spectra, spectra, "A", "2 degree").illuminant.value, "A");
}

TEST(conditionChoice, declaration_goesBeforeATextOfTheOtherSide) {
    const ChosenConditions choice =
        chosen(measured(viewed(inText("D65"))), reference(viewed(declared("D50"))));
    EXPECT_EQ(choice.illuminant.value, "D50");
    EXPECT_EQ(choice.illuminant.origin, Origin::declared);
    EXPECT_THAT(findingsOf(choice, Kind::freeTextCondition),
                ElementsAre(AllOf(StartsWith("!measured.txt: the illuminant of its Lab values is named in a "
                                             "text only, D65 (DESCRIPTOR \"under D65\")"),
                                  HasSubstr("taken as those of D50"))));
}

TEST(conditionChoice, text_goesBeforeTheAssumption_andIsNoted) {
    const ChosenConditions choice = chosen(measured(viewed(inText("D65"))), reference({}));
    EXPECT_EQ(choice.illuminant.value, "D65");
    EXPECT_EQ(choice.illuminant.origin, Origin::freeText);
    EXPECT_THAT(findingsOf(choice, Kind::freeTextCondition),
                ElementsAre(AllOf(StartsWith("measured.txt: the illuminant"), HasSubstr("D65"))));
}

TEST(conditionChoice, textsThatDiffer_takeTheMeasuredOne_andWarnOfTheOther) {
    const ChosenConditions choice = chosen(measured(viewed(inText("D65"))), reference(viewed(inText("D50"))));
    EXPECT_EQ(choice.illuminant.value, "D65");
    EXPECT_THAT(findingsOf(choice, Kind::freeTextCondition),
                ElementsAre(StartsWith("measured.txt: "), StartsWith("!reference.txt: ")));
}

TEST(conditionChoice, textThatIsNotWhatIsAskedFor_isWarnedOf_andNotRefused) {
    const ChosenConditions choice = chosen(measured(viewed(inText("D65"), declared("2 degree"))),
                                           reference(viewed(declared("D50"), declared("2 degree"))), "D50");
    EXPECT_THAT(findingsOf(choice, Kind::freeTextCondition), ElementsAre(StartsWith("!measured.txt: ")));
}

TEST(conditionChoice, unknownAgainstDeclared_isWarnedOf) {
    const ChosenConditions choice =
        chosen(measured({}, ColorSource::xyz), reference(viewed(declared("D65"), declared("10 degree"))));
    EXPECT_EQ(choice.illuminant.value, "D65");
    EXPECT_THAT(findingsOf(choice, Kind::unknownCondition),
                ElementsAre("!measured.txt does not tell the illuminant of its XYZ values; they are taken as "
                            "those of D65",
                            "!measured.txt does not tell the observer of its XYZ values; they are taken as "
                            "those of 10 degree"));
}

TEST(conditionChoice, unknownAgainstWhatIsAskedFor_isWarnedOfForEachBoundSide) {
    const ChosenConditions choice =
        chosen(measured({}), reference({}, ColorSource::spectra), "D65", "10 degree");
    EXPECT_THAT(findingsOf(choice, Kind::unknownCondition),
                ElementsAre(StartsWith("!measured.txt does not tell the illuminant of its Lab values"),
                            StartsWith("!measured.txt does not tell the observer")));
}

TEST(conditionChoice, declaredIlluminantsThatDiffer_areRefusedWithBothLines) {
    EXPECT_EQ(refusalOf(measured(viewed(declared("D50"))), reference(viewed(declared("D65")))),
              "the conditions differ: illuminant D50 in measured.txt (LINE \"D50\"), D65 in reference.txt "
              "(LINE \"D65\"); --force compares all the same");
}

TEST(conditionChoice, declaredObserversThatDiffer_areRefused) {
    EXPECT_THAT(
        refusalOf(measured(viewed({}, declared("2 degree"))),
                  reference(viewed({}, declared("10 degree")), ColorSource::xyz)),
        AllOf(HasSubstr("observer 2 degree in measured.txt"), HasSubstr("10 degree in reference.txt")));
}

TEST(conditionChoice, declaredOnesThatAreNotWhatIsAskedFor_areRefused) {
    const DocumentConditions d50 = viewed(declared("D50"), declared("2 degree"));
    const DescribedSide spectra = measured({}, ColorSource::spectra);
    EXPECT_THAT(refusalOf(spectra, reference(d50), "D65"),
                HasSubstr("illuminant D50 in reference.txt (LINE \"D50\"), D65 as asked for"));
    EXPECT_THAT(refusalOf(measured(d50), reference({}, ColorSource::spectra), std::nullopt, "10 degree"),
                HasSubstr("observer 2 degree in measured.txt (LINE \"2 degree\"), 10 degree as asked for"));
}

TEST(conditionChoice, measurementsThatDiffer_areRefusedForEverySource) {
    for (const Place place : kOfMeasurement)
        for (const ColorSource source : {ColorSource::spectra, ColorSource::lab, ColorSource::xyz})
            EXPECT_THAT(refusalOf(measured(with(place, declared("one")), source),
                                  reference(with(place, declared("other")), ColorSource::spectra)),
                        AllOf(HasSubstr("one in measured.txt (LINE \"one\")"),
                              HasSubstr("other in reference.txt (LINE \"other\")")));
}

TEST(conditionChoice, measurementsThatDiffer_areRefusedByTheirNames) {
    const char* const names[] = {"measurement condition", "backing", "geometry", "filter", "white base"};
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_THAT(refusalOf(measured(with(kOfMeasurement[i], declared("one"))),
                              reference(with(kOfMeasurement[i], declared("other")))),
                    HasSubstr(std::string("the conditions differ: ") + names[i] + " one in "));
}

TEST(conditionChoice, instrumentsThatDiffer_areNoMatter) {
    const DescribedSide left = measured(with(&DocumentConditions::instrument, declared("one")));
    const DescribedSide right = reference(with(&DocumentConditions::instrument, declared("other")));
    EXPECT_THAT(findingsOf(chosen(left, right), Kind::unknownCondition), IsEmpty());
}

TEST(conditionChoice, measurementsNamedInATextOnly_areNotRefused) {
    for (const Place place : kOfMeasurement)
        EXPECT_NO_THROW(
            chosen(measured(with(place, inText("one"))), reference(with(place, inText("other")))));
}

TEST(conditionChoice, measurementThatOneSideDeclares_isWarnedOf) {
    const DocumentConditions m1 = with(&DocumentConditions::measurementCondition, declared("M1"));
    EXPECT_THAT(
        findingsOf(chosen(measured(m1), reference({})), Kind::unknownCondition),
        ElementsAre("!declared by one file only: measurement condition M1 in measured.txt (LINE \"M1\")"));
    EXPECT_THAT(findingsOf(chosen(measured({}), reference(m1)), Kind::unknownCondition),
                ElementsAre(HasSubstr("measurement condition M1 in reference.txt")));
}

TEST(conditionChoice, measurementsThatOneSideDeclares_areToldInOneWarning) {
    DocumentConditions conditions = with(&DocumentConditions::backing, declared("black"));
    conditions.filter = declared("UV cut");
    EXPECT_THAT(findingsOf(chosen(measured(conditions), reference({})), Kind::unknownCondition),
                ElementsAre(AllOf(HasSubstr("backing black in"), HasSubstr(", filter UV cut in"))));
}

TEST(conditionChoice, filterThatItsMeasurementConditionImplies_isNotToldBesideIt) {
    DocumentConditions m2 = with(&DocumentConditions::measurementCondition, declared("M2"));
    m2.filter = declared("UV cut");
    m2.filter.implied = true;
    EXPECT_THAT(
        findingsOf(chosen(measured(m2), reference({})), Kind::unknownCondition),
        ElementsAre("!declared by one file only: measurement condition M2 in measured.txt (LINE \"M2\")"));
}

TEST(conditionChoice, textOfNoFilter_doesNotContradictTheOneThatM2Implies) {
    DocumentConditions m2 = with(&DocumentConditions::measurementCondition, declared("M2"));
    m2.filter = declared("UV cut");
    m2.filter.implied = true;
    const DocumentConditions none = with(&DocumentConditions::filter, inText("none"));
    EXPECT_THAT(findingsOf(chosen(measured(m2), reference(none)), Kind::freeTextCondition),
                ElementsAre(StartsWith("reference.txt: named in a text only: filter none")));
    EXPECT_THAT(findingsOf(chosen(measured(none), reference(m2)), Kind::freeTextCondition),
                ElementsAre(StartsWith("measured.txt: named in a text only: filter none")));
    m2.filter.implied = false;
    EXPECT_THAT(findingsOf(chosen(measured(m2), reference(none)), Kind::freeTextCondition),
                ElementsAre(StartsWith("!the filter seems to differ")));
}

TEST(conditionChoice, paperAsWhiteBaseOfOneSide_isWarnedOf_andAbsoluteGoesWithoutSaying) {
    const DocumentConditions paper = with(&DocumentConditions::whiteBase, declared("paper"));
    const DocumentConditions absolute = with(&DocumentConditions::whiteBase, declared("absolute"));
    EXPECT_THAT(
        findingsOf(chosen(measured({}), reference(paper)), Kind::unknownCondition),
        ElementsAre("!declared by one file only: white base paper in reference.txt (LINE \"paper\")"));
    EXPECT_THAT(findingsOf(chosen(measured(absolute), reference({})), Kind::unknownCondition), IsEmpty());
}

TEST(conditionChoice, measurementsThatNobodyDeclares_areNoMatter) {
    EXPECT_THAT(findingsOf(chosen(measured({}), reference({})), Kind::unknownCondition), IsEmpty());
}

TEST(conditionChoice, equalMeasurements_needNoFinding) {
    for (const Place place : kOfMeasurement) {
        const DocumentConditions conditions = with(place, declared("same"));
        const ChosenConditions choice = chosen(measured(conditions), reference(conditions));
        EXPECT_THAT(findingsOf(choice, Kind::unknownCondition), IsEmpty());
    }
}

// Filters and measurement conditions.

DocumentConditions under(const Condition& measurementCondition, const Condition& filter = {}) {
    DocumentConditions conditions;
    conditions.measurementCondition = measurementCondition;
    conditions.filter = filter;
    return conditions;
}

TEST(conditionChoice, filterThatTheMeasurementConditionAsksFor_needNotBeNamed) {
    for (const auto& [condition, filter] : {std::pair("M0", "none"), std::pair("M1", "none"),
                                            std::pair("M2", "UV cut"), std::pair("M3", "polarizing")}) {
        const DescribedSide left = measured(under(declared(condition), declared(filter)));
        EXPECT_THAT(findingsOf(chosen(left, reference(under(declared(condition)))), Kind::unknownCondition),
                    IsEmpty())
            << condition;
        EXPECT_THAT(findingsOf(chosen(left, left), Kind::contradictoryCondition), IsEmpty()) << condition;
    }
}

TEST(conditionChoice, filterAgainstTheMeasurementConditionOfItsFile_isToldAndCompared) {
    const DescribedSide odd = measured(under(declared("M1"), declared("polarizing")));
    EXPECT_THAT(refusalOf(odd, reference(under(declared("M1"), declared("none")))),
                HasSubstr("filter polarizing in measured.txt"));
    const ChosenConditions choice = chosen(odd, reference(under(declared("M1"))));
    EXPECT_THAT(
        findingsOf(choice, Kind::contradictoryCondition),
        ElementsAre("!measured.txt: the filter is polarizing (LINE \"polarizing\"), but M1 (LINE \"M1\") "
                    "is measured without a filter; correct the line that is wrong"));
    EXPECT_THAT(findingsOf(choice, Kind::unknownCondition), ElementsAre(HasSubstr("filter polarizing")));
}

TEST(conditionChoice, everyFilterThatContradicts_isTold) {
    for (const auto& [condition, filter] :
         {std::pair("M0", "UV cut"), std::pair("M1", "D65"), std::pair("M1", "UV cut"),
          std::pair("M2", "polarizing"), std::pair("M3", "none"), std::pair("M3", "UV cut")})
        EXPECT_THAT(findingsOf(chosen(measured({}), reference(under(declared(condition), declared(filter)))),
                               Kind::contradictoryCondition),
                    ElementsAre(StartsWith("!reference.txt: the filter is ")))
            << condition << ' ' << filter;
}

// Instruments compute it from what they measure without and with ultraviolet light.
TEST(conditionChoice, m2WithoutAFilter_isNoted) {
    const DescribedSide left = measured(under(declared("M2"), declared("none")));
    const ChosenConditions choice = chosen(left, reference(under(declared("M2"), declared("UV cut"))));
    EXPECT_THAT(findingsOf(choice, Kind::contradictoryCondition),
                ElementsAre(AllOf(StartsWith("measured.txt: the filter is none"), HasSubstr("computed"))));
}

TEST(conditionChoice, conditionImpliedByAFilter_isComparedLikeANamedOne) {
    Condition implied = declared("M2");
    implied.implied = true;
    const DescribedSide left = measured(under(implied, declared("UV cut")));
    EXPECT_THAT(refusalOf(left, reference(under(declared("M1")))),
                HasSubstr("measurement condition M2 in measured.txt"));
    EXPECT_THAT(chosen(left, reference(under(declared("M2")))).findings.size(), 2u); // the assumptions
    EXPECT_THAT(findingsOf(chosen(left, reference({})), Kind::unknownCondition),
                ElementsAre("!declared by one file only: filter UV cut in measured.txt (LINE \"UV cut\")"));
}

TEST(conditionChoice, geometriesThereAndBack_areEqual) {
    const DescribedSide left = measured(with(&DocumentConditions::geometry, declared("45/0")));
    const DescribedSide right = reference(with(&DocumentConditions::geometry, declared("0/45")));
    EXPECT_EQ(chosen(left, right).findings.size(), 2u); // the assumptions
    EXPECT_THAT(refusalOf(left, reference(with(&DocumentConditions::geometry, declared("d/8")))),
                HasSubstr("geometry 45/0"));
}

// Texts.

TEST(conditionChoice, measurementInATextAgainstADeclaredOne_isWarnedOfWithBothLines) {
    for (const Place place : kOfMeasurement) {
        const DescribedSide left = measured(with(place, inText("one")));
        const DescribedSide right = reference(with(place, declared("other")));
        for (const ChosenConditions& choice : {chosen(left, right), chosen(right, left)})
            EXPECT_THAT(
                findingsOf(choice, Kind::freeTextCondition),
                ElementsAre(AllOf(StartsWith("!the "), HasSubstr("seems to differ"),
                                  HasSubstr("one in measured.txt (DESCRIPTOR \"under one\") as a text says"),
                                  HasSubstr("other in reference.txt (LINE \"other\")"))));
    }
}

TEST(conditionChoice, measurementsInTexts_areNotedOncePerFile_andWarnedOfWhereTheyDiffer) {
    DocumentConditions conditions = with(&DocumentConditions::backing, inText("black"));
    conditions.measurementCondition = inText("M2");
    EXPECT_THAT(
        findingsOf(chosen(measured(conditions), reference({})), Kind::freeTextCondition),
        ElementsAre("measured.txt: named in a text only: measurement condition M2 (DESCRIPTOR \"under "
                    "M2\"), backing black (DESCRIPTOR \"under black\")"));
    const DescribedSide other = reference(with(&DocumentConditions::backing, inText("white")));
    EXPECT_THAT(
        findingsOf(chosen(measured(conditions), other), Kind::freeTextCondition),
        ElementsAre(StartsWith("!the backing seems to differ"), HasSubstr("measurement condition M2")));
}

TEST(conditionChoice, measurementsInOneText_areToldWithItsLineOnce) {
    DocumentConditions conditions;
    conditions.backing = {Condition::Standing::freeText, "white", "REMARKS \"all\""};
    conditions.geometry = {Condition::Standing::freeText, "45/0", "REMARKS \"all\""};
    conditions.filter = inText("none");
    EXPECT_THAT(
        findingsOf(chosen(measured(conditions), reference({})), Kind::freeTextCondition),
        ElementsAre("measured.txt: named in a text only: backing white, geometry 45/0 (REMARKS \"all\"), "
                    "filter none (DESCRIPTOR \"under none\")"));
}

TEST(conditionChoice, measurementInATextThatIsTheDeclaredOne_isNoted) {
    const DescribedSide left = measured(under(inText("M1")));
    const ChosenConditions choice = chosen(left, reference(under(declared("M1"))));
    EXPECT_THAT(findingsOf(choice, Kind::freeTextCondition),
                ElementsAre(StartsWith("measured.txt: named in a text only: measurement condition M1")));
    EXPECT_THAT(findingsOf(choice, Kind::unknownCondition), IsEmpty());
}

// Values that are not understood.

TEST(conditionChoice, measurementThatIsNotUnderstood_isWarnedOf_andNotRefused) {
    for (const Place place : kOfMeasurement)
        for (const Condition& other : {declared("other"), inText("other"), Condition{}}) {
            const ChosenConditions choice =
                chosen(measured(with(place, notUnderstood("odd"))), reference(with(place, other)));
            EXPECT_THAT(findingsOf(choice, Kind::unknownCondition),
                        ElementsAre(AllOf(StartsWith("!measured.txt: the "),
                                          HasSubstr(" odd (LINE \"odd\") is not understood"),
                                          HasSubstr("; known are "))));
        }
}

TEST(conditionChoice, equalMeasurementsThatAreNotUnderstood_areEqual) {
    for (const Place place : kOfMeasurement) {
        const DescribedSide left = measured(with(place, notUnderstood("Odd")));
        const DescribedSide right = reference(with(place, notUnderstood("odd")));
        EXPECT_EQ(chosen(left, right).findings.size(), 2u); // the assumptions
    }
}

TEST(conditionChoice, illuminantThatIsNotUnderstood_isWarnedOf_andNotRefused) {
    const DescribedSide left = measured(viewed(notUnderstood("5000K"), declared("2 degree")));
    const DescribedSide right = reference(viewed(declared("D65"), declared("2 degree")));
    const ChosenConditions choice = chosen(left, right);
    EXPECT_EQ(choice.illuminant.value, "D65");
    EXPECT_THAT(choice.findings.size(), 1u);
    EXPECT_THAT(findingsOf(choice, Kind::unknownCondition),
                ElementsAre(AllOf(
                    StartsWith("!measured.txt: the illuminant 5000K (LINE \"5000K\") is not understood"),
                    HasSubstr("its Lab values are taken as those of D65"), HasSubstr("D50"))));
    EXPECT_EQ(findingsOf(chosen(left, left, "D50"), Kind::unknownCondition).size(), 2u);
}

TEST(conditionChoice, illuminantThatIsNotUnderstood_givesWayToTheAssumptionWhereColoursAreComputed) {
    const DescribedSide xyz = measured(viewed(notUnderstood("5000K")), ColorSource::xyz);
    const ChosenConditions choice = chosen(xyz, reference({}, ColorSource::spectra));
    EXPECT_EQ(choice.illuminant.value, "D50");
    EXPECT_EQ(choice.illuminant.origin, Origin::assumed);
    EXPECT_THAT(findingsOf(choice, Kind::assumedCondition),
                testing::Contains(HasSubstr("that is understood")));
    EXPECT_EQ(findingsOf(choice, Kind::unknownCondition).size(), 1u);
}

TEST(conditionChoice, labOfOneUnknownIlluminant_isComparedForIt) {
    const DescribedSide side = measured(viewed(notUnderstood("Xenon"), declared("2 degree")));
    const ChosenConditions choice = chosen(side, side);
    EXPECT_EQ(choice.illuminant.value, "Xenon");
    EXPECT_THAT(choice.findings, IsEmpty());
}

TEST(conditionChoice, refusal_namesEveryConditionThatDiffers) {
    DocumentConditions left = viewed(declared("D50"), declared("2 degree"));
    DocumentConditions right = viewed(declared("D65"), declared("10 degree"));
    left.backing = declared("white");
    right.backing = declared("black");
    EXPECT_THAT(
        refusalOf(measured(left), reference(right)),
        AllOf(HasSubstr("illuminant D50"), HasSubstr("; observer 2 degree"), HasSubstr("; backing white")));
}

TEST(conditionChoice, force_comparesWhatDiffers_withAWarningForEach) {
    DocumentConditions left = viewed(declared("D50"));
    DocumentConditions right = viewed(declared("D65"));
    left.backing = declared("white");
    right.backing = declared("black");
    const ChosenConditions choice = forced(measured(left), reference(right));
    EXPECT_TRUE(choice.forced);
    EXPECT_EQ(choice.illuminant.value, "D50");
    EXPECT_THAT(
        findingsOf(choice, Kind::forcedCondition),
        ElementsAre("!compared by force although the conditions differ: illuminant D50 in measured.txt "
                    "(LINE \"D50\"), D65 in reference.txt (LINE \"D65\")",
                    "!compared by force although the conditions differ: backing white in measured.txt "
                    "(LINE \"white\"), black in reference.txt (LINE \"black\")"));
}

TEST(conditionChoice, forceAgainstADeclaration_takesWhatIsAskedFor) {
    const DocumentConditions d50 = viewed(declared("D50"));
    const ChosenConditions choice = forced(measured({}, ColorSource::spectra), reference(d50), "D65");
    EXPECT_TRUE(choice.forced);
    EXPECT_EQ(choice.illuminant.value, "D65");
}

TEST(conditionChoice, forceWithoutNeed_isNotSaid) {
    const ChosenConditions choice = forced(measured({}), reference({}));
    EXPECT_FALSE(choice.forced);
    EXPECT_THAT(findingsOf(choice, Kind::forcedCondition), IsEmpty());
}

TEST(conditionChoice, oneFileOnBothSides_isToldOnce) {
    const DescribedSide side = measured(viewed(declared("D50")));
    EXPECT_EQ(findingsOf(forced(side, side, "D65"), Kind::forcedCondition).size(), 1u);
}

TEST(conditionChoice, tabsInLines_areToldAsBlanks) {
    Condition d50 = declared("D50");
    d50.source = "LINE \"Illumination=D50\tFilter=No\"";
    d50.contradicted = "LINE\t\"D65\"";
    EXPECT_THAT(refusalOf(measured(viewed(d50)), reference(viewed(declared("A")))),
                HasSubstr("(LINE \"Illumination=D50 Filter=No\","));
    EXPECT_THAT(
        findingsOf(chosen(measured(viewed(d50)), reference(viewed(d50))), Kind::contradictoryCondition),
        testing::Each(HasSubstr("also LINE \"D65\"")));
}

TEST(conditionChoice, textsOfFiles_arePrintable) {
    const DescribedSide left = sideOf("a\x1B.txt", ColorSource::lab, viewed(declared("D50\x1B")));
    EXPECT_THAT(refusalOf(left, reference(viewed(declared("D65")))),
                AllOf(HasSubstr("a\\x1b.txt"), HasSubstr("D50\\x1b in "), Not(HasSubstr("\x1B"))));
}

} // namespace
} // namespace qxcms::tests
