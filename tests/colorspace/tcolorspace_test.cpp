// The handle of the colour spaces: its lists, its errors, and that it passes everything on.
#include "colorspace/tcolorspace.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>

#include "colorspace/tcolorspace_ciecam02.h"
#include "colorspace/tcolorspace_ciecam97s.h"
#include "colorspace/tlabspace.h"
#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Triple = std::array<double, 3>;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr int kLab = 0, kCiecam97s = 1, kCiecam02 = 2;
constexpr int kSpaces[] = {kLab, kCiecam97s, kCiecam02};
constexpr int kUnknownSpaces[] = {
    -1, 3, 4, 5, 256, -256, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
constexpr Triple kWhite = {95.05, 100.0, 108.88};

// A handle has one owner, and nothing of it is virtual.
static_assert(!std::is_copy_constructible_v<TColorSpace>);
static_assert(!std::is_copy_assignable_v<TColorSpace>);
static_assert(!std::is_polymorphic_v<TColorSpace>);
static_assert(!std::is_base_of_v<TColorSpaceRepresentation, TColorSpace>);

// The representation that a handle is to build, built beside it.
std::unique_ptr<TColorSpaceRepresentation> representationOf(const Triple& white, int space) {
    if (space == kLab)
        return std::make_unique<TLabSpace>(white.data());
    if (space == kCiecam97s)
        return std::make_unique<TColorSpace_CIECAM97s>(white.data(), 0);
    return std::make_unique<TColorSpace_CIECAM02>(white.data(), 0);
}

const std::vector<Triple>& colors() {
    static const std::vector<Triple> kColors = {{19.01, 20.0, 21.78}, {57.06, 43.06, 31.96},
                                                {3.53, 6.56, 2.14},   {95.05, 100.0, 108.88},
                                                {20.0, 12.0, 40.0},   {0.2, 0.3, 0.1}};
    return kColors;
}

// Triples in the coordinates of any of the spaces.
const std::vector<Triple>& coordinates() {
    static const std::vector<Triple> kCoordinates = {
        {50.0, 20.0, 30.0}, {41.7, 0.1, 219.0}, {65.9, 48.5, 19.6}, {21.8, 46.9, 177.1}, {90.0, 5.0, 359.0}};
    return kCoordinates;
}

std::vector<std::string> namesOf(const char* const* list, int count) {
    std::vector<std::string> names;
    for (int i = 0; list != nullptr && i < count; ++i)
        names.emplace_back(list[i]);
    return names;
}

// The lists.

TEST(colorSpace, spaces_areThree) {
    ASSERT_EQ(TColorSpace::GetColorSpaceListSize(), 3);
    EXPECT_THAT(namesOf(TColorSpace::GetColorSpaceList(), 3),
                ElementsAre("CIELAB (Classic)", "CIECAM97s", "CIECAM02"));
}

TEST(colorSpace, differenceFunctions_areFiveOneAndOne) {
    EXPECT_EQ(TColorSpace::GetDifferenceFunctionListSize(kLab), 5);
    EXPECT_EQ(TColorSpace::GetDifferenceFunctionListSize(kCiecam97s), 1);
    EXPECT_EQ(TColorSpace::GetDifferenceFunctionListSize(kCiecam02), 1);
}

TEST(colorSpace, differenceFunctions_haveTheirNames) {
    EXPECT_THAT(
        namesOf(TColorSpace::GetDifferenceFunctionList(kLab), 5),
        ElementsAre("CIELAB Delta E (Classic)", "Delta E 94", "Delta E 2000", "CMC(1:1)", "CMC(2:1)"));
    EXPECT_THAT(namesOf(TColorSpace::GetDifferenceFunctionList(kCiecam97s), 1),
                ElementsAre("CIECAM97s Delta E"));
    EXPECT_THAT(namesOf(TColorSpace::GetDifferenceFunctionList(kCiecam02), 1),
                ElementsAre("CIECAM02 Delta E"));
}

TEST(colorSpace, differenceFunctions_areThoseOfTheSpacesThemselves) {
    EXPECT_EQ(TColorSpace::GetDifferenceFunctionList(kLab), TLabSpace::GetDifferenceFunctionList());
    EXPECT_EQ(TColorSpace::GetDifferenceFunctionList(kCiecam97s),
              TColorSpace_CIECAM97s::GetDifferenceFunctionList());
    EXPECT_EQ(TColorSpace::GetDifferenceFunctionList(kCiecam02),
              TColorSpace_CIECAM02::GetDifferenceFunctionList());
    EXPECT_EQ(TColorSpace_CIECAM97s::GetDifferenceFunctionListSize(), 1);
    EXPECT_EQ(TColorSpace_CIECAM02::GetDifferenceFunctionListSize(), 1);
}

TEST(colorSpace, handle_answersTheListOfItsOwnSpace) {
    for (const int space : kSpaces) {
        const TColorSpace handle(kWhite.data(), space);
        EXPECT_EQ(handle.GetDifferenceFunctionListSize(), TColorSpace::GetDifferenceFunctionListSize(space));
        EXPECT_EQ(handle.GetDifferenceFunctionList(), TColorSpace::GetDifferenceFunctionList(space));
    }
}

TEST(colorSpace, unknownSpace_hasNoDifferenceFunctions) {
    for (const int space : kUnknownSpaces) {
        EXPECT_EQ(TColorSpace::GetDifferenceFunctionListSize(space), -1) << space;
        EXPECT_EQ(TColorSpace::GetDifferenceFunctionList(space), nullptr) << space;
        const TColorSpace handle(kWhite.data(), space);
        EXPECT_EQ(handle.GetDifferenceFunctionListSize(), -1) << space;
        EXPECT_EQ(handle.GetDifferenceFunctionList(), nullptr) << space;
    }
}

// Errors.

TEST(colorSpace, knownSpace_isUsable) {
    for (const int space : kSpaces)
        EXPECT_EQ(TColorSpace(kWhite.data(), space).ErrNo(), 0) << space;
}

// ErrNo answers from the handle's own number and never looks for the representation that is not there.
TEST(colorSpace, unknownSpace_givesError1WithoutAReport) {
    const ReportCollector reports;
    for (const int space : kUnknownSpaces)
        EXPECT_EQ(TColorSpace(kWhite.data(), space).ErrNo(), 1) << space;
    EXPECT_THAT(reports.errors, IsEmpty());
    EXPECT_THAT(reports.warnings, IsEmpty());
}

TEST(colorSpace, unknownSpaceOnABadWhite_isError1) {
    const ReportCollector reports;
    const Triple white = {-1.0, -1.0, -1.0};
    EXPECT_EQ(TColorSpace(white.data(), 3).ErrNo(), 1);
    EXPECT_EQ(TColorSpace(nullptr, 3).ErrNo(), 1);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST(colorSpace, whiteThatCielabRefuses_isItsError2) {
    const ReportCollector reports;
    const Triple white = {95.0, -1.0, 108.0};
    EXPECT_EQ(TColorSpace(white.data(), kLab).ErrNo(), 2);
    EXPECT_THAT(reports.errors, ElementsAre(Report{"Invalid XYZref values", "tlabspace", 162}));
}

TEST(colorSpace, whiteThatCielabRefuses_stillConverts) {
    const ReportCollector reports;
    const Triple white = {95.0, -1.0, 108.0}, repaired = {95.0, 0.0, 108.0};
    const TColorSpace handle(white.data(), kLab);
    const TLabSpace lab(repaired.data());
    Triple found = {7.0, 7.0, 7.0}, expected = {};
    const Triple light = {100.0, 20.0, -30.0};
    EXPECT_EQ(handle.ToXYZ(light.data(), found.data()), 0);
    lab.ToXYZ(light.data(), expected.data());
    EXPECT_EQ(found, expected);
    EXPECT_EQ(found[1], 0.0);
}

// The appearance models do not look at their white.
TEST(colorSpace, negativeWhite_isNoErrorOfTheAppearanceModels) {
    const ReportCollector reports;
    const Triple white = {95.0, -1.0, 108.0};
    EXPECT_EQ(TColorSpace(white.data(), kCiecam97s).ErrNo(), 0);
    EXPECT_EQ(TColorSpace(white.data(), kCiecam02).ErrNo(), 0);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST(colorSpace, unknownSpace_convertsNothing) {
    for (const int space : kUnknownSpaces) {
        const TColorSpace handle(kWhite.data(), space);
        const Triple in = {20.0, 30.0, 40.0};
        Triple out = {7.0, 7.0, 7.0};
        EXPECT_EQ(handle.ToXYZ(in.data(), out.data()), 1);
        EXPECT_EQ(handle.FromXYZ(in.data(), out.data()), 1);
        EXPECT_THAT(out, ElementsAre(7.0, 7.0, 7.0));
        EXPECT_EQ(handle.CalcSquareDeltaE(in.data(), in.data(), 0), -1.0);
        EXPECT_EQ(handle.CalcSquareDeltaEConverted(in.data(), in.data(), 0), -1.0);
        EXPECT_TRUE(std::isnan(handle.CalcDeltaE(in.data(), in.data(), 0)));
    }
}

// Passing on.

TEST(colorSpace, fromXyz_isThatOfTheRepresentation) {
    for (const int space : kSpaces) {
        const TColorSpace handle(kWhite.data(), space);
        const auto representation = representationOf(kWhite, space);
        for (const Triple& xyz : colors()) {
            Triple found = {kNan, kNan, kNan}, expected = {kNan, kNan, kNan};
            EXPECT_EQ(handle.FromXYZ(xyz.data(), found.data()), 0);
            ASSERT_EQ(representation->FromXYZ(xyz.data(), expected.data()), 0);
            EXPECT_EQ(found, expected) << space;
        }
    }
}

TEST(colorSpace, toXyz_isThatOfTheRepresentation) {
    for (const int space : kSpaces) {
        const TColorSpace handle(kWhite.data(), space);
        const auto representation = representationOf(kWhite, space);
        for (const Triple& in : coordinates()) {
            Triple found = {kNan, kNan, kNan}, expected = {kNan, kNan, kNan};
            EXPECT_EQ(handle.ToXYZ(in.data(), found.data()), 0);
            ASSERT_EQ(representation->ToXYZ(in.data(), expected.data()), 0);
            EXPECT_EQ(found, expected) << space;
        }
    }
}

TEST(colorSpace, squaredDifferences_areThoseOfTheRepresentation) {
    for (const int space : kSpaces) {
        const TColorSpace handle(kWhite.data(), space);
        const auto representation = representationOf(kWhite, space);
        for (int function = -1; function <= 6; ++function) {
            for (const Triple& one : colors())
                for (const Triple& other : colors())
                    EXPECT_EQ(handle.CalcSquareDeltaE(one.data(), other.data(), function),
                              representation->CalcSquareDeltaE(one.data(), other.data(), function))
                        << space << ' ' << function;
            for (const Triple& one : coordinates())
                for (const Triple& other : coordinates())
                    EXPECT_EQ(handle.CalcSquareDeltaEConverted(one.data(), other.data(), function),
                              representation->CalcSquareDeltaEConverted(one.data(), other.data(), function))
                        << space << ' ' << function;
        }
    }
}

// The CIE 1994 difference is divided by the chroma of its second triple: 10 / (1 + 0.045 * 40) and
// 10 / (1 + 0.045 * 30).
TEST(colorSpace, secondTriple_isTheStandard) {
    const TColorSpace handle(kWhite.data(), kLab);
    const Triple dull = {50.0, 30.0, 0.0}, vivid = {50.0, 40.0, 0.0};
    EXPECT_NEAR(handle.CalcSquareDeltaEConverted(dull.data(), vivid.data(), 1), 100.0 / (2.8 * 2.8), 1e-12);
    EXPECT_NEAR(handle.CalcSquareDeltaEConverted(vivid.data(), dull.data(), 1), 100.0 / (2.35 * 2.35), 1e-12);
}

// The difference is the square root of the squared one.

TEST(colorSpace, deltaE_isTheRootOfTheSquareInEverySpace) {
    for (const int space : kSpaces) {
        const TColorSpace handle(kWhite.data(), space);
        for (int function = 0; function < TColorSpace::GetDifferenceFunctionListSize(space); ++function) {
            for (const Triple& one : colors()) {
                for (const Triple& other : colors()) {
                    const double square = handle.CalcSquareDeltaE(one.data(), other.data(), function);
                    ASSERT_GE(square, 0.0);
                    EXPECT_EQ(handle.CalcDeltaE(one.data(), other.data(), function), std::sqrt(square))
                        << space << ' ' << function;
                }
            }
        }
    }
}

// The representations of the appearance models answer the square where the handle answers its root.
TEST(colorSpace, differenceOfAnAppearanceModel_isTheRootOfWhatTheModelAnswers) {
    for (const int space : {kCiecam97s, kCiecam02}) {
        const TColorSpace handle(kWhite.data(), space);
        const auto representation = representationOf(kWhite, space);
        const double square = representation->CalcDeltaE(colors()[1].data(), colors()[2].data(), 0);
        ASSERT_GT(square, 100.0);
        EXPECT_EQ(handle.CalcDeltaE(colors()[1].data(), colors()[2].data(), 0), std::sqrt(square));
    }
}

// The handle looks at no sign: the -1.0 of an unknown function becomes not a number, where the representation
// answers -1.0.
TEST(colorSpace, differenceByAnUnknownFunction_isNotANumber) {
    const TColorSpace handle(kWhite.data(), kLab);
    const TLabSpace lab(kWhite.data());
    for (const int function : {-1, 5, 6, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        const double *const one = colors()[0].data(), *const other = colors()[1].data();
        EXPECT_EQ(handle.CalcSquareDeltaE(one, other, function), -1.0);
        EXPECT_EQ(handle.CalcSquareDeltaEConverted(one, other, function), -1.0);
        EXPECT_TRUE(std::isnan(handle.CalcDeltaE(one, other, function))) << function;
        EXPECT_EQ(lab.CalcDeltaE(one, other, function), -1.0);
    }
}

// The appearance models have one difference and take any number for it.
TEST(colorSpace, appearanceModels_ignoreTheFunction) {
    for (const int space : {kCiecam97s, kCiecam02}) {
        const TColorSpace handle(kWhite.data(), space);
        const double *const one = colors()[1].data(), *const other = colors()[2].data();
        const double expected = handle.CalcDeltaE(one, other, 0);
        ASSERT_GT(expected, 10.0);
        for (const int function : {-1, 1, 5, 99})
            EXPECT_EQ(handle.CalcDeltaE(one, other, function), expected) << space;
    }
}

TEST(colorSpace, differenceOfEqualColors_is0) {
    for (const int space : kSpaces) {
        const TColorSpace handle(kWhite.data(), space);
        for (int function = 0; function < TColorSpace::GetDifferenceFunctionListSize(space); ++function)
            for (const Triple& xyz : colors())
                EXPECT_EQ(handle.CalcDeltaE(xyz.data(), xyz.data(), function), 0.0) << space << function;
    }
}

// The spaces by their figures, so that no two change places.

TEST(colorSpace, cielab_givesTheLightnessOfAFifth) {
    const TColorSpace handle(kWhite.data(), kLab);
    const Triple xyz = {0.2 * 95.05, 20.0, 0.2 * 108.88};
    Triple lab = {kNan, kNan, kNan};
    EXPECT_EQ(handle.FromXYZ(xyz.data(), lab.data()), 0);
    EXPECT_NEAR(lab[0], 51.837211527, 1e-8); // 116 * 0.2^(1/3) - 16
    EXPECT_NEAR(lab[1], 0.0, 1e-9);
    EXPECT_NEAR(lab[2], 0.0, 1e-9);
}

// M. D. Fairchild, Color Appearance Models, example 1 of CIECAM02: average surround, 1000 / pi cd/m2, Yb
// = 20.
TEST(colorSpace, ciecam02_givesThePublishedExample) {
    const TColorSpace handle(kWhite.data(), kCiecam02);
    const Triple xyz = {19.01, 20.0, 21.78};
    Triple jch = {kNan, kNan, kNan};
    EXPECT_EQ(handle.FromXYZ(xyz.data(), jch.data()), 0);
    EXPECT_NEAR(jch[0], 41.73109, 5.1e-6);
    EXPECT_NEAR(jch[1], 0.10471, 5.1e-6);
    EXPECT_NEAR(jch[2], 219.04841, 5.1e-6);
}

// Worked out from the equations of CIECAM97s for the same example.
TEST(colorSpace, ciecam97s_givesTheExampleWorkedOut) {
    const TColorSpace handle(kWhite.data(), kCiecam97s);
    const Triple xyz = {19.01, 20.0, 21.78};
    Triple jch = {kNan, kNan, kNan};
    EXPECT_EQ(handle.FromXYZ(xyz.data(), jch.data()), 0);
    EXPECT_NEAR(jch[0], 42.441461721, 1e-8);
    EXPECT_NEAR(jch[1], 0.498215960, 1e-8);
    EXPECT_NEAR(jch[2], 212.284100757, 1e-8);
}

TEST(colorSpace, white_isCopied) {
    for (const int space : kSpaces) {
        Triple white = kWhite;
        const TColorSpace handle(white.data(), space);
        white = {1.0, 2.0, 3.0};
        Triple found = {kNan, kNan, kNan};
        EXPECT_EQ(handle.FromXYZ(kWhite.data(), found.data()), 0);
        EXPECT_NEAR(found[0], 100.0, 1e-9) << space;
    }
}

} // namespace
} // namespace qxcms::tests
