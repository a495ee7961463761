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

TEST(formulas, kernelName_isFoundIgnoringCase) {
    EXPECT_EQ(findFormula("CIELAB Delta E (Classic)").number, 0);
    EXPECT_EQ(findFormula("delta e 94").number, 1);
    EXPECT_EQ(findFormula("DELTA E 2000").number, 2);
    EXPECT_EQ(findFormula("cmc(1:1)").number, 3);
    EXPECT_EQ(findFormula("CMC(2:1)").number, 4);
}

TEST(formulas, shortForm_isFoundIgnoringCase) {
    EXPECT_EQ(findFormula("76").number, 0);
    EXPECT_EQ(findFormula("94").number, 1);
    EXPECT_EQ(findFormula("2000").number, 2);
    EXPECT_EQ(findFormula("cmc11").number, 3);
    EXPECT_EQ(findFormula("CMC21").number, 4);
}

TEST(formulas, publishedName_isFoundIgnoringCase) {
    EXPECT_EQ(findFormula("cie 1976").number, 0);
    EXPECT_EQ(findFormula("CIE76").number, 0);
    EXPECT_EQ(findFormula("CIE 1994").number, 1);
    EXPECT_EQ(findFormula("cie94").number, 1);
    EXPECT_EQ(findFormula("CieDE2000").number, 2);
}

TEST(formulas, plainForm_isFoundIgnoringCase) {
    EXPECT_EQ(findFormula("de76").number, 0);
    EXPECT_EQ(findFormula("DE94").number, 1);
    EXPECT_EQ(findFormula("de2000").number, 2);
}

TEST(formulas, unknownName_isRefusedWithTheKnownOnes) {
    EXPECT_THAT(usageRefusal([] { findFormula("Delta E 76"); }),
                AllOf(HasSubstr("\"Delta E 76\""), HasSubstr("\"CIELAB Delta E (Classic)\" or 76"),
                      HasSubstr("\"Delta E 94\" or 94"), HasSubstr("\"Delta E 2000\" or 2000"),
                      HasSubstr("\"CMC(1:1)\" or cmc11"), HasSubstr("\"CMC(2:1)\" or cmc21"),
                      HasSubstr("de76, CIE 1976"), HasSubstr("de94, CIE 1994"),
                      HasSubstr("de2000, CIEDE2000")));
    usageRefusal([] { findFormula(""); });
}

TEST(observers, name_isFoundIgnoringCase) {
    EXPECT_EQ(findObserver("2 degree").GetNumber(), 0u);
    EXPECT_EQ(findObserver("10 Degree").GetNumber(), 1u);
}

TEST(observers, number_isEnough) {
    EXPECT_EQ(findObserver("2").GetNumber(), 0u);
    EXPECT_EQ(findObserver("10").GetNumber(), 1u);
}

TEST(observers, unknownName_isRefusedWithTheKnownOnes) {
    for (const char* name : {"5 degree", "", "2 degrees"})
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

TEST(illuminants, unknownName_isRefusedWithTheKnownOnes) {
    const qxcms::tests::ReportCollector quiet;
    const Illuminants illuminants;
    for (const char* name : {"D99", "", "CIE Illuminant D99", "CIE Illuminant "})
        EXPECT_THAT(usageRefusal([&] { illuminants.find(name); }),
                    AllOf(HasSubstr("D50, "), HasSubstr("CIE Illuminant A, ")));
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
        return Conditions(*illuminants.find(illuminant), findObserver(observer), findFormula("76")).white();
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
        const Conditions refused(night, findObserver("2"), findFormula("76"));
        FAIL();
    } catch (const Refusal& refusal) {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::unreadable);
        EXPECT_THAT(refusal.what(), HasSubstr("\"Night\" gives no white"));
    }
}

} // namespace
