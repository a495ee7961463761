#include "qc/conditions.h"

#include <algorithm>

#include <gmock/gmock.h>

#include "platform/logical_names.h"
#include "qc/formulas.h"
#include "qc/illuminants.h"
#include "qc/observers.h"
#include "qc/refusal.h"
#include "tests/support/reports.h"
#include "tests/support/scratch.h"

using namespace qxcms::qc;
using testing::AllOf;
using testing::HasSubstr;

namespace {

template <class Function>
std::string usageRefusal(Function&& f) {
    try {
        f();
    } catch (const Refusal& refusal) {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::usage);
        return refusal.what();
    }
    ADD_FAILURE() << "it was accepted";
    return "";
}

Formula foundFormula(const std::string& name) {
    return findFormula(name).value();
}

std::string refusalOfFormula(const std::string& name) {
    return usageRefusal([&] { foundFormula(name); });
}

TEST(formulas, kernelName_isFoundIgnoringCase) {
    EXPECT_EQ(foundFormula("CIELAB Delta E (Classic)").id, DeltaE::cie1976);
    EXPECT_EQ(foundFormula("delta e 94").id, DeltaE::cie1994);
    EXPECT_EQ(foundFormula("DELTA E 2000").id, DeltaE::kernel2000);
    EXPECT_EQ(foundFormula("cmc(1:1)").id, DeltaE::cmc11);
    EXPECT_EQ(foundFormula("CMC(2:1)").id, DeltaE::cmc21);
}

TEST(formulas, shortForm_isFoundIgnoringCase) {
    EXPECT_EQ(foundFormula("76").id, DeltaE::cie1976);
    EXPECT_EQ(foundFormula("94").id, DeltaE::cie1994);
    EXPECT_EQ(foundFormula("Kernel2000").id, DeltaE::kernel2000);
    EXPECT_EQ(foundFormula("cmc11").id, DeltaE::cmc11);
    EXPECT_EQ(foundFormula("CMC21").id, DeltaE::cmc21);
}

TEST(formulas, publishedName_isFoundIgnoringCase) {
    EXPECT_EQ(foundFormula("cie 1976").id, DeltaE::cie1976);
    EXPECT_EQ(foundFormula("CIE76").id, DeltaE::cie1976);
    EXPECT_EQ(foundFormula("CIE 1994").id, DeltaE::cie1994);
    EXPECT_EQ(foundFormula("cie94").id, DeltaE::cie1994);
}

TEST(formulas, plainForm_isFoundIgnoringCase) {
    EXPECT_EQ(foundFormula("de76").id, DeltaE::cie1976);
    EXPECT_EQ(foundFormula("DE94").id, DeltaE::cie1994);
}

// Kept on purpose: whoever asks for 2000 means the publication, and the kernel's formula is asked for by its
// own name.
TEST(formulas, everyShortWordFor2000_isThePublishedFormula) {
    for (const char* word : {"CIEDE2000", "ciede2000", "2000", "de2000", "00", "dE00", "DE00"}) {
        EXPECT_EQ(foundFormula(word).id, DeltaE::ciede2000) << word;
        EXPECT_STREQ(foundFormula(word).name, "CIEDE2000");
    }
}

TEST(formulas, names_areThoseOfTheKernelsListButForThePublishedOne) {
    EXPECT_STREQ(formula(DeltaE::ciede2000).name, "CIEDE2000");
    EXPECT_STREQ(formula(DeltaE::cie1976).name, "CIELAB Delta E (Classic)");
    EXPECT_STREQ(formula(DeltaE::cie1994).name, "Delta E 94");
    EXPECT_STREQ(formula(DeltaE::kernel2000).name, "Delta E 2000");
    EXPECT_STREQ(formula(DeltaE::cmc11).name, "CMC(1:1)");
    EXPECT_STREQ(formula(DeltaE::cmc21).name, "CMC(2:1)");
}

TEST(formulas, kernelsFormulaOf2000_tellsHowItDiffersFromThePublication) {
    for (const DeltaE id : kFormulas)
        EXPECT_EQ(formula(id).remark != nullptr, id == DeltaE::kernel2000) << formula(id).name;
    EXPECT_THAT(formula(DeltaE::kernel2000).remark,
                AllOf(HasSubstr("not CIEDE2000 as published"),
                      HasSubstr("6 to 10 percent of real patches by more than 0.1"), HasSubstr("up to 1.9"),
                      HasSubstr("--formula CIEDE2000")));
}

TEST(formulas, unknownName_isRefusedWithTheKnownOnes) {
    EXPECT_THAT(
        refusalOfFormula("classic"),
        AllOf(HasSubstr("unknown formula \"classic\""), HasSubstr("\"CIEDE2000\" or 2000, de2000, 00, dE00"),
              HasSubstr("\"CIELAB Delta E (Classic)\" or 76, de76, CIE 1976"),
              HasSubstr("\"Delta E 94\" or 94, de94, CIE 1994"), HasSubstr("\"Delta E 2000\" or kernel2000"),
              HasSubstr("\"CMC(1:1)\" or cmc11"), HasSubstr("\"CMC(2:1)\" or cmc21")));
    refusalOfFormula("");
}

TEST(formulas, unknownName_isRefusedWithTheNearestOnes) {
    EXPECT_THAT(refusalOfFormula("CIEDE200"), HasSubstr("(did you mean CIEDE2000"));
    EXPECT_THAT(refusalOfFormula("Delta E 76"), HasSubstr("did you mean Delta E 94"));
}

TEST(observers, name_isFoundIgnoringCase) {
    EXPECT_EQ(findObserver("2 degree").GetNumber(), 0u);
    EXPECT_EQ(findObserver("10 Degree").GetNumber(), 1u);
}

TEST(observers, number_isEnough) {
    EXPECT_EQ(findObserver("2").GetNumber(), 0u);
    EXPECT_EQ(findObserver("10").GetNumber(), 1u);
}

TEST(observers, spellingsOfFiles_areUnderstood) {
    for (const char* name : {"2deg", "2 deg", "2-Degree", "2 degrees", "1931", "CIE 1931", "cie1931", "02",
                             "2.0", "2\xC2\xB0", " 2 ", "CIE 1931 2 degree standard observer"})
        EXPECT_STREQ(findObserver(name).GetName(), "2 degree") << name;
    for (const char* name : {"10DEG", "10 deg", "10-degree", "1964", "CIE 1964", "CIE1964", "10\xC2\xB0",
                             "CIE 1964 10", "CIE 1964 10 degree"})
        EXPECT_STREQ(findObserver(name).GetName(), "10 degree") << name;
}

TEST(observers, unknownName_isRefusedWithTheNearestOnes) {
    EXPECT_THAT(usageRefusal([] { findObserver("3 degree"); }),
                HasSubstr("unknown observer \"3 degree\" (did you mean 2 degree or 10 degree?)"));
}

TEST(observers, unknownName_isRefusedWithTheKnownOnes) {
    for (const char* name : {"5 degree", "", "20", "2 or 10", "CIE 1964 2 degree", "D50/2", "unknown 2"})
        EXPECT_THAT(usageRefusal([&] { findObserver(name); }),
                    AllOf(HasSubstr("\"2 degree\""), HasSubstr("\"10 degree\"")));
}

TEST(illuminants, areFoundWithoutAnySetting) {
    const Illuminants illuminants;
    EXPECT_THAT(illuminants.names(),
                testing::IsSupersetOf({"D50", "D65", "CIE Illuminant A", "CIE Illuminant F11"}));
}

TEST(illuminants, name_isFoundIgnoringCase) {
    const Illuminants illuminants;
    EXPECT_STREQ(illuminants.find("d65")->GetName(), "D65");
    EXPECT_STREQ(illuminants.find("cie illuminant f2")->GetName(), "CIE Illuminant F2");
}

TEST(illuminants, familyName_mayBeLeftOut) {
    const qxcms::tests::ReportCollector quiet;
    const Illuminants illuminants;
    EXPECT_STREQ(illuminants.find("a")->GetName(), "CIE Illuminant A");
    EXPECT_STREQ(illuminants.find("F2")->GetName(), "CIE Illuminant F2");
}

TEST(illuminants, aliasOfD50_isFound) {
    const qxcms::tests::ReportCollector quiet;
    EXPECT_STREQ(Illuminants().find("CIE Illuminant D50")->GetName(), "D50");
}

TEST(illuminants, familyName_mayBePutBeforeANameWithoutIt) {
    const qxcms::tests::ReportCollector quiet;
    EXPECT_STREQ(Illuminants().find("CIE Illuminant D65")->GetName(), "D65");
    EXPECT_STREQ(Illuminants().find("cie illuminant d75")->GetName(), "D75");
}

TEST(illuminants, names_areInNaturalOrder) {
    const std::vector<std::string> names = Illuminants().names();
    const auto place = [&](const char* name) { return std::find(names.begin(), names.end(), name); };
    ASSERT_NE(place("CIE Illuminant F12"), names.end());
    EXPECT_LT(place("CIE Illuminant F1"), place("CIE Illuminant F2"));
    EXPECT_LT(place("CIE Illuminant F2"), place("CIE Illuminant F10"));
    EXPECT_LT(place("CIE Illuminant F9"), place("CIE Illuminant F12"));
    EXPECT_LT(place("D50"), place("D65"));
}

TEST(illuminants, lampOfTheLongName_isTheOneOfTheShort) {
    const qxcms::tests::ReportCollector quiet;
    const Illuminants illuminants;
    EXPECT_STREQ(illuminants.find("FL11")->GetName(), "CIE Illuminant F11");
    EXPECT_STREQ(illuminants.find("fl2")->GetName(), "CIE Illuminant F2");
    EXPECT_STREQ(illuminants.find("CIE Illuminant FL12")->GetName(), "CIE Illuminant F12");
}

TEST(illuminants, spellingsOfFiles_areUnderstood) {
    const qxcms::tests::ReportCollector quiet;
    const Illuminants illuminants;
    for (const char* name : {"Illuminant D50", "D50 ", " d50", "D 50", "ILLUMINANT, D50", "CIE D50", "D5000"})
        EXPECT_STREQ(illuminants.find(name)->GetName(), "D50") << name;
    EXPECT_STREQ(illuminants.find("CIE standard illuminant A")->GetName(), "CIE Illuminant A");
    EXPECT_STREQ(illuminants.find("F 11")->GetName(), "CIE Illuminant F11");
}

TEST(illuminants, textsOfMoreThanAnIlluminant_areRefused) {
    const qxcms::tests::ReportCollector quiet;
    const Illuminants illuminants;
    for (const char* name : {"D50/2", "D50 M1", "D50 or D65", "unknown D50"})
        EXPECT_THAT(usageRefusal([&] { illuminants.find(name); }), HasSubstr("unknown illuminant")) << name;
}

TEST(illuminants, shortName_isTheCies) {
    for (const char* name : {"CIE Illuminant D50", "cie illuminant d50", "d50", "D50"})
        EXPECT_EQ(shortIlluminant(name), "D50") << name;
    EXPECT_EQ(shortIlluminant("FL11"), "F11");
    EXPECT_EQ(shortIlluminant("cie illuminant fl7"), "F7");
    EXPECT_EQ(shortIlluminant("A"), "A");
    EXPECT_EQ(shortIlluminant("FL"), "FL");
    EXPECT_EQ(shortIlluminant("FLUO"), "FLUO");
}

TEST(illuminants, unknownName_isRefusedWithTheKnownOnes) {
    const qxcms::tests::ReportCollector quiet;
    const Illuminants illuminants;
    for (const char* name : {"D99", "", "CIE Illuminant D99", "CIE Illuminant "})
        EXPECT_THAT(usageRefusal([&] { illuminants.find(name); }),
                    AllOf(HasSubstr("unknown illuminant"), HasSubstr("D50, "), HasSubstr("known are A, ")));
}

// One letter away from D51 are, in the order of the list, D50, D55 and others that end in 1.
TEST(illuminants, unknownName_isRefusedWithTheNearestOnes) {
    const qxcms::tests::ReportCollector quiet;
    const Illuminants illuminants;
    EXPECT_THAT(usageRefusal([&] { illuminants.find("D51"); }),
                HasSubstr("unknown illuminant \"D51\" (did you mean D50 or D55"));
    EXPECT_THAT(usageRefusal([&] { illuminants.find("F13"); }), HasSubstr("did you mean F1"));
}

TEST(illuminants, emptyDirectory_isRefusedWithItsNameAndTheRemedy) {
    const qxcms::tests::ScratchFolder folder;
    ASSERT_EQ(deflognam("QX_CMS", folder.path().c_str()), 0);
    std::string message;
    try {
        const Illuminants illuminants;
    } catch (const Refusal& refusal) {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::unreadable);
        message = refusal.what();
    }
    ASSERT_EQ(deflognam("QX_CMS", nullptr), 0);
    EXPECT_THAT(message,
                AllOf(HasSubstr(folder.path("r/ill")), HasSubstr("set the environment variable QX_CMS")));
}

class conditions : public testing::Test {
protected:
    qxcms::tests::ReportCollector quiet;
    Illuminants illuminants;

    std::array<double, 3> whiteOf(const char* illuminant, const char* observer) const {
        return Conditions(*illuminants.find(illuminant), findObserver(observer)).white();
    }
};

// Sums over the 36 wavelengths 380, 390, ..., 730 nm of the published tables.
TEST_F(conditions, white_isThatOfIlluminantAndObserver) {
    EXPECT_THAT(whiteOf("D50", "2"), testing::ElementsAre(testing::DoubleNear(96.384116, 1e-5), 100.0,
                                                          testing::DoubleNear(82.453534, 1e-5)));
    EXPECT_THAT(whiteOf("A", "10"),
                testing::ElementsAre(testing::DoubleNear(111.148709, 1e-5), testing::DoubleEq(100.0),
                                     testing::DoubleNear(35.198034, 1e-5)));
}

// ASTM E308 table 6, scaled to Y = 100.
TEST_F(conditions, whiteOfF11_isThatOfThePublishedWeights) {
    EXPECT_THAT(whiteOf("F11", "2"),
                testing::ElementsAre(testing::DoubleNear(100.9590, 1e-4), testing::DoubleEq(100.0),
                                     testing::DoubleNear(64.3508, 1e-4)));
}

// Printed by ASTM E308.
TEST_F(conditions, publishedWhite_isTheOnePrinted) {
    EXPECT_THAT(Conditions(*illuminants.find("D50"), findObserver("2")).publishedWhite(),
                testing::ElementsAre(96.422, 100.0, 82.521));
    EXPECT_THAT(Conditions(*illuminants.find("D65"), findObserver("10")).publishedWhite(),
                testing::ElementsAre(94.811, 100.0, 107.304));
}

TEST_F(conditions, publishedWhiteOfAnIlluminantThatNobodyPublished_isThatOfTheWeights) {
    std::array<double, 36> equal;
    equal.fill(1.0);
    const TSpectrum spectrum(equal.data());
    const TIlluminant own(&spectrum, "Own");
    const Conditions result(own, findObserver("2"));
    EXPECT_EQ(result.publishedWhite(), result.white());
}

// Each white is that of its own kind: there both kinds are neutral.
TEST_F(conditions, spectraAndTristimulusValues_areNeutralOnTheirOwnWhites) {
    const Conditions d50(*illuminants.find("D50"), findObserver("2"));
    std::array<double, 36> full;
    full.fill(1.0);
    for (const Lab& lab : {d50.labOf(TSpectrum(full.data())), d50.labOf({96.422, 100.0, 82.521})}) {
        EXPECT_NEAR(lab[0], 100.0, 1e-9);
        EXPECT_NEAR(lab[1], 0.0, 1e-9);
        EXPECT_NEAR(lab[2], 0.0, 1e-9);
    }
}

// a* = 500 ((96.384116 / 96.422)^(1/3) - 1), b* = 200 (1 - (82.453534 / 82.521)^(1/3)).
TEST_F(conditions, whiteOfTheWeights_isNoNeutralAmongTristimulusValues) {
    const Conditions d50(*illuminants.find("D50"), findObserver("2"));
    const Lab lab = d50.labOf({96.384116, 100.0, 82.453534});
    EXPECT_NEAR(lab[1], -0.065492, 1e-5);
    EXPECT_NEAR(lab[2], 0.054519, 1e-5);
}

TEST_F(conditions, f2f7f11WithTheTenDegreeObserver_areRefused) {
    for (const char* name : {"F2", "F7", "F11"})
        EXPECT_THAT(usageRefusal([&] { whiteOf(name, "10"); }), HasSubstr("2 degree"));
}

TEST_F(conditions, otherLampsWithTheTenDegreeObserver_areAccepted) {
    EXPECT_GT(whiteOf("F1", "10")[0], 90.0);
}

TEST_F(conditions, illuminantWithoutPower_isRefused) {
    const std::array<double, 36> dark{};
    const TSpectrum spectrum(dark.data());
    const TIlluminant night(&spectrum, "Night");
    try {
        const Conditions refused(night, findObserver("2"));
        FAIL();
    } catch (const Refusal& refusal) {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::unreadable);
        EXPECT_THAT(refusal.what(), HasSubstr("\"Night\" gives no white"));
    }
}

} // namespace
