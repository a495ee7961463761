// CIECAM02: its constants, stages, the two directions, and where it departs from CIE 159:2004 on purpose.
// Expected numbers without another source were worked out from the formulas by a program of their own.
#include "colorspace/tcolorspace_ciecam02.h"

#include <array>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstddef>
#include <fstream>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "colorspace/tcolorspace.h"

namespace {

using Triple = std::array<double, 3>;
using Model = TColorSpace_CIECAM02;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
// What pow, exp and atan2 of different processors may differ by, with room for the steps after them.
constexpr double kRelative = 1e-12;

const Triple kD65 = {95.05, 100.0, 108.88};
const Triple kA = {109.85, 100.0, 35.58};
const Triple kDimmerWhite = {98.88, 90.0, 32.03};
const Triple kPink = {57.06, 43.06, 31.96};
const Triple kTeal = {3.53, 6.56, 2.14};
const Triple kGreen = {19.31, 23.93, 10.14};

// A stage or a direction of the model on one triple.
using Operation = int (Model::*)(const double*, double*) const;

Triple apply(Operation operation, const Model& model, const Triple& in) {
    Triple out = {kNan, kNan, kNan};
    EXPECT_EQ((model.*operation)(in.data(), out.data()), 0);
    return out;
}

Triple jchOf(const Model& model, const Triple& xyz) {
    return apply(&Model::FromXYZ, model, xyz);
}
Triple xyzOf(const Model& model, const Triple& jch) {
    return apply(&Model::ToXYZ, model, jch);
}

// The three columns of a matrix stage, its results for the unit vectors.
std::array<Triple, 3> columnsOf(Operation operation) {
    const Model model(kD65.data(), 0);
    return {apply(operation, model, {1.0, 0.0, 0.0}), apply(operation, model, {0.0, 1.0, 0.0}),
            apply(operation, model, {0.0, 0.0, 1.0})};
}

Model& inScene(Model& model, const Triple& white, double adaptingLuminance, double background) {
    EXPECT_EQ(model.InitializeScene(white.data(), adaptingLuminance, background), 0);
    return model;
}

void expectNear(const Triple& actual, const Triple& expected, double relative = kRelative) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(actual[i], expected[i], relative * std::fabs(expected[i])) << "component " << i;
}

void expectAllNan(const Triple& triple) {
    for (const double value : triple)
        EXPECT_TRUE(std::isnan(value)) << value;
}

// Surrounds.

TEST(ciecam02, surrounds_scaleTheExponentOfLightness) {
    Model model(kD65.data(), 0);
    const double average = std::log(jchOf(model, kPink)[0] / 100.0);
    ASSERT_EQ(model.InitializeViewingCondition(1), 0);
    EXPECT_NEAR(std::log(jchOf(model, kPink)[0] / 100.0) / average, 0.59 / 0.69, kRelative);
    ASSERT_EQ(model.InitializeViewingCondition(2), 0);
    EXPECT_NEAR(std::log(jchOf(model, kPink)[0] / 100.0) / average, 0.525 / 0.69, kRelative);
    ASSERT_EQ(model.InitializeViewingCondition(0), 0);
    EXPECT_EQ(std::log(jchOf(model, kPink)[0] / 100.0), average);
}

// C / sqrt(J) goes with Nc^0.9 while all else stays.
double chromaPerRootOfLightness(const Model& model) {
    const Triple jch = jchOf(model, kPink);
    return jch[1] / std::sqrt(jch[0]);
}

TEST(ciecam02, dimSurround_hasAnNcOf095) {
    Model model(kD65.data(), 0);
    const double average = chromaPerRootOfLightness(model);
    ASSERT_EQ(model.InitializeViewingCondition(1), 0);
    EXPECT_NEAR(chromaPerRootOfLightness(model) / average, std::pow(0.95, 0.9), kRelative);
}

TEST(ciecam02, surroundDark_inducesChromaWith080) {
    Model model(kD65.data(), 0);
    const double average = chromaPerRootOfLightness(model);
    ASSERT_EQ(model.InitializeViewingCondition(2), 0);
    EXPECT_NEAR(chromaPerRootOfLightness(model) / average, std::pow(0.8, 0.9), kRelative);
}

TEST(ciecam02, surroundDim_departsFromThePublishedChroma) {
    const double published = 45.540435318264315;
    const Model model(kD65.data(), 1);
    EXPECT_NEAR(jchOf(model, kPink)[1], published * std::pow(0.95 / 0.9, 0.9), 1e-10);
    EXPECT_GT(jchOf(model, kPink)[1] - published, 2.0);
}

TEST(ciecam02, surrounds_adaptToTheirOwnDegree) {
    const Triple ones = {1.0, 1.0, 1.0};
    expectNear(apply(&Model::ChromaticAdaptation, Model(kA.data(), 0), ones),
               {0.8505938709724193, 1.0785841973178991, 2.716812581330708});
    expectNear(apply(&Model::ChromaticAdaptation, Model(kA.data(), 1), ones),
               {0.8655344838751774, 1.0707257775861092, 2.5451313231976367});
    expectNear(apply(&Model::ChromaticAdaptation, Model(kA.data(), 2), ones),
               {0.8804750967779353, 1.0628673578543195, 2.3734500650645662});
}

TEST(ciecam02, surrounds_giveTheirOwnCorrelates) {
    expectNear(jchOf(Model(kD65.data(), 0), kPink),
               {66.24989688541099, 49.26357630179988, 19.79976336943645});
    expectNear(jchOf(Model(kD65.data(), 1), kPink),
               {70.28545980407871, 47.8112572343132, 19.615552538167528});
    expectNear(jchOf(Model(kD65.data(), 2), kPink),
               {73.03425310711363, 41.19214479704472, 19.428330238624763});
}

TEST(ciecam02, surrounds_knownLeaveNoError) {
    for (const int surround : {0, 1, 2})
        EXPECT_EQ(Model(kD65.data(), surround).ErrNo(), 0) << surround;
}

TEST(ciecam02, surroundUnknown_isErrorMinusOne) {
    for (const int surround : {3, -1, 4, INT_MAX, INT_MIN})
        EXPECT_EQ(Model(kD65.data(), surround).ErrNo(), -1) << surround;
}

TEST(ciecam02, surroundUnknown_doesNotAdapt) {
    const Triple rgb = {3.0, 50.0, 0.25};
    EXPECT_EQ(apply(&Model::ChromaticAdaptation, Model(kA.data(), 3), rgb), rgb);
}

TEST(ciecam02, surroundUnknown_givesEveryColourFullLightnessAndNoChroma) {
    const Triple jch = jchOf(Model(kD65.data(), 3), kPink);
    EXPECT_EQ(jch[0], 100.0);
    EXPECT_EQ(jch[1], 0.0);
    EXPECT_NEAR(jch[2], 17.7973917118473, 1e-10);
}

TEST(ciecam02, viewingCondition_unknownReturnsOneAndChangesNothing) {
    Model model(kD65.data(), 1);
    const Triple before = jchOf(model, kPink);
    for (const int surround : {3, -1, INT_MAX, INT_MIN}) {
        EXPECT_EQ(model.InitializeViewingCondition(surround), 1) << surround;
        EXPECT_EQ(model.ErrNo(), 0) << surround;
    }
    EXPECT_EQ(jchOf(model, kPink), before);
    inScene(model, kD65, 318.30988618379, 20.0);
    EXPECT_EQ(jchOf(model, kPink), before);
}

TEST(ciecam02, viewingCondition_leavesTheErrorOfTheConstructor) {
    Model model(kD65.data(), 3);
    EXPECT_EQ(model.InitializeViewingCondition(0), 0);
    EXPECT_EQ(model.ErrNo(), -1);
}

TEST(ciecam02, viewingCondition_doesNotAdaptAnewBeforeTheSceneIsInitialised) {
    Model model(kA.data(), 0);
    const Triple rgb = {3.0, 50.0, 0.25};
    const Triple average = apply(&Model::ChromaticAdaptation, model, rgb);
    ASSERT_EQ(model.InitializeViewingCondition(2), 0);
    EXPECT_EQ(apply(&Model::ChromaticAdaptation, model, rgb), average);
    inScene(model, kA, 318.30988618379, 20.0);
    EXPECT_EQ(apply(&Model::ChromaticAdaptation, model, rgb),
              apply(&Model::ChromaticAdaptation, Model(kA.data(), 2), rgb));
}

TEST(ciecam02, viewingCondition_andSceneMakeWhatTheConstructorMakes) {
    for (const int surround : {0, 1, 2}) {
        Model model(kA.data(), 2 - surround);
        ASSERT_EQ(model.InitializeViewingCondition(surround), 0);
        inScene(model, kD65, 318.30988618379, 20.0);
        EXPECT_EQ(jchOf(model, kPink), jchOf(Model(kD65.data(), surround), kPink)) << surround;
    }
}

TEST(ciecam02, setToZero_forgetsTheError) {
    Model model(kD65.data(), 3);
    EXPECT_EQ(model.SetToZero(), 0);
    EXPECT_EQ(model.ErrNo(), 0);
}

TEST(ciecam02, setToZero_forgetsWhiteSurroundAndScene) {
    Model model(kD65.data(), 0);
    ASSERT_EQ(model.SetToZero(), 0);
    expectAllNan(apply(&Model::ChromaticAdaptation, model, {1.0, 1.0, 1.0}));
    EXPECT_EQ(apply(&Model::NonlinearAdaptation, model, {1.0, 1.0, 1.0}), (Triple{0.1, 0.1, 0.1}));
    // The exponent c z is 0, and any number, even none, to the power of 0 is 1.
    const Triple jch = jchOf(model, kPink);
    EXPECT_EQ(jch[0], 100.0);
    EXPECT_TRUE(std::isnan(jch[1]));
    EXPECT_TRUE(std::isnan(jch[2]));
}

TEST(ciecam02, setToZero_leavesAModelThatCanBeSetUpAnew) {
    Model model(kA.data(), 3);
    ASSERT_EQ(model.SetToZero(), 0);
    ASSERT_EQ(model.InitializeViewingCondition(1), 0);
    inScene(model, kD65, 318.30988618379, 20.0);
    EXPECT_EQ(jchOf(model, kPink), jchOf(Model(kD65.data(), 1), kPink));
}

// The scene.

TEST(ciecam02, scene_ofTheConstructorIsAThousandOverPiBeforeTwenty) {
    Model model(kD65.data(), 0);
    const Triple constructed = jchOf(model, kPink);
    EXPECT_EQ(jchOf(inScene(model, kD65, 318.30988618379, 20.0), kPink), constructed);
    // The digits of 1000 / pi count.
    EXPECT_NE(jchOf(inScene(model, kD65, 318.31, 20.0), kPink), constructed);
}

TEST(ciecam02, scene_keepsACopyOfTheWhite) {
    Triple white = kD65;
    const Model model(white.data(), 0);
    white = {1.0, 2.0, 3.0};
    EXPECT_EQ(jchOf(model, kPink), jchOf(Model(kD65.data(), 0), kPink));
}

TEST(ciecam02, scene_adaptsWithTheLuminanceOfTheWhite) {
    Model model(kD65.data(), 0);
    inScene(model, kDimmerWhite, 200.0, 18.0);
    expectNear(apply(&Model::ChromaticAdaptation, model, {1.0, 1.0, 1.0}),
               {0.852693379861385, 1.0775730195012727, 2.691171414688733});
}

TEST(ciecam02, scene_adaptsByTheLuminance) {
    Model model(kD65.data(), 0);
    const Triple ones = {1.0, 1.0, 1.0};
    expectNear(apply(&Model::ChromaticAdaptation, inScene(model, kA, 0.0, 20.0), ones),
               {0.8761997365245129, 1.065116099294492, 2.4225778506552236});
    expectNear(apply(&Model::ChromaticAdaptation, inScene(model, kA, 31.83, 20.0), ones),
               {0.8684676913784863, 1.0691829777109325, 2.511426095854487});
}

TEST(ciecam02, scene_doesNotClampTheDegreeOfAdaptation) {
    Model model(kD65.data(), 0);
    inScene(model, kA, -200.0, 20.0);
    const double factorOfD = -0.5472164207820125;
    ASSERT_LT(factorOfD, -0.5);
    const Triple white = apply(&Model::ToCAT02, model, kA);
    const Triple factors = apply(&Model::ChromaticAdaptation, model, {1.0, 1.0, 1.0});
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(factors[i], 100.0 * factorOfD / white[i] + 1.0 - factorOfD, 1e-11) << i;
}

TEST(ciecam02, scene_adaptsTheResponsesToTheLuminanceLevel) {
    Model model(kD65.data(), 0);
    const Triple cones = {20.0, 5.0, 100.0};
    expectNear(apply(&Model::NonlinearAdaptation, inScene(model, kD65, 318.30988618379, 20.0), cones),
               {7.94681421829263, 4.521857203524968, 15.239393747568407});
    // At low levels the other term of FL rules.
    expectNear(apply(&Model::NonlinearAdaptation, inScene(model, kD65, 0.02, 20.0), cones),
               {1.4931493224895611, 0.8794721052970323, 2.8296468772667223});
}

TEST(ciecam02, scene_ofABackgroundAsLightAsTheWhiteInducesTheBareFactor) {
    // n = 1: Nbb = 0.725, and A = 0.725 leaves 1 / Nbb * A = 1 before 0.305 is added.
    Model model(kD65.data(), 0);
    inScene(model, kD65, 318.30988618379, 100.0);
    expectNear(apply(&Model::AabToRGB, model, {0.725, 0.0, 0.0}),
               {1.305 * 0.3278768852, 1.305 * 0.3278768852, 1.305 * 0.3278768852});
}

TEST(ciecam02, scene_inducesByBackgroundOverWhite) {
    Model model(kD65.data(), 0);
    inScene(model, kDimmerWhite, 200.0, 18.0);
    expectNear(apply(&Model::AabToRGB, model, {20.0, 0.0, 0.0}),
               {6.6555472384810725, 6.6555472384810725, 6.6555472384810725});
}

TEST(ciecam02, scene_ofAnotherLuminanceBackgroundAndWhiteGivesOtherCorrelates) {
    Model model(kD65.data(), 0);
    expectNear(jchOf(inScene(model, kDimmerWhite, 20.0, 18.0), kGreen),
               {47.685604717768584, 36.0526938552586, 185.34454897531995});
    expectNear(jchOf(inScene(model, kD65, 4.0, 60.0), kGreen),
               {39.5310559323164, 32.165153497117416, 116.23245706622258});
}

// Matrices, exactly.

TEST(ciecam02, toCat02_isTheMatrixOfCat02) {
    const std::array<Triple, 3> columns = {
        {{0.7328, -0.7036, 0.003}, {0.4296, 1.6975, 0.0136}, {-0.1624, 0.0061, 0.9834}}};
    EXPECT_EQ(columnsOf(&Model::ToCAT02), columns);
}

TEST(ciecam02, fromCat02_isTheInverseToSixDecimals) {
    const std::array<Triple, 3> columns = {
        {{1.096124, 0.454369, -0.009628}, {-0.278869, 0.473533, -0.005698}, {0.182745, 0.072098, 1.015326}}};
    EXPECT_EQ(columnsOf(&Model::FromCAT02), columns);
}

TEST(ciecam02, toHuntPointerEstevez_isTheProductWithTheInverseOfCat02) {
    const std::array<Triple, 3> columns = {{{0.7409792, 0.2853532, -0.009628},
                                            {0.218025, 0.6242014, -0.005698},
                                            {0.0410058, 0.0904454, 1.015326}}};
    EXPECT_EQ(columnsOf(&Model::ToHuntPointerEstevez), columns);
}

TEST(ciecam02, fromHuntPointerEstevez_isItsInverse) {
    const std::array<Triple, 3> columns = {
        {{1.910197, 0.37095, 0.0}, {-1.112124, 0.629054, 0.0}, {0.201908, -8e-6, 1.0}}};
    EXPECT_EQ(columnsOf(&Model::FromHuntPointerEstevez), columns);
}

TEST(ciecam02, matrices_sumTheirProductsInTheOrderOfTheColumns) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(apply(&Model::ToCAT02, model, kPink),
              (Triple{55.121840000000006, 33.141890000000004, 32.186260000000004}));
    EXPECT_EQ(apply(&Model::FromCAT02, model, kPink), (Triple{56.377266500000005, 48.6208782, 31.6550894}));
    EXPECT_EQ(apply(&Model::ToHuntPointerEstevez, model, kPink),
              (Triple{52.97897502, 46.05100086, 31.6550894}));
    EXPECT_EQ(apply(&Model::FromHuntPointerEstevez, model, kPink), (Triple{67.56076106, 48.25321656, 31.96}));
}

// Adaptation.

TEST(ciecam02, chromaticAdaptation_scalesEachChannelByItself) {
    const Model model(kA.data(), 1);
    const Triple factors = apply(&Model::ChromaticAdaptation, model, {1.0, 1.0, 1.0});
    EXPECT_EQ(apply(&Model::ChromaticAdaptation, model, {2.0, 4.0, -8.0}),
              (Triple{2.0 * factors[0], 4.0 * factors[1], -8.0 * factors[2]}));
}

TEST(ciecam02, inverseChromaticAdaptation_dividesByTheSameFactors) {
    const Model model(kA.data(), 1);
    const Triple factors = apply(&Model::ChromaticAdaptation, model, {1.0, 1.0, 1.0});
    EXPECT_EQ(apply(&Model::InverseChromaticAdaptation, model, {3.0, 5.0, -7.0}),
              (Triple{3.0 / factors[0], 5.0 / factors[1], -7.0 / factors[2]}));
}

// Compression.

TEST(ciecam02, nonlinearAdaptation_ofNoResponseIsATenth) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(apply(&Model::NonlinearAdaptation, model, {0.0, -0.0, 0.0}), (Triple{0.1, 0.1, 0.1}));
}

TEST(ciecam02, negativeConeResponse_isNotANumber) {
    const Model model(kD65.data(), 0);
    const Triple out = apply(&Model::NonlinearAdaptation, model, {-1.0, 20.0, -1e-300});
    EXPECT_TRUE(std::isnan(out[0]));
    EXPECT_NEAR(out[1], 7.94681421829263, 1e-11);
    EXPECT_TRUE(std::isnan(out[2]));
}

TEST(ciecam02, inverseNonlinearAdaptation_takesTheCompressionBack) {
    const Model model(kD65.data(), 0);
    const Triple cones = {0.001, 20.0, 150.0};
    const Triple compressed = apply(&Model::NonlinearAdaptation, model, cones);
    expectNear(apply(&Model::InverseNonlinearAdaptation, model, compressed), cones, 1e-10);
}

TEST(ciecam02, inverseNonlinearAdaptation_followsItsFormula) {
    const Model model(kD65.data(), 0);
    expectNear(apply(&Model::InverseNonlinearAdaptation, model, {2.0, 8.0, 15.0}),
               {0.659088609909299, 20.330838756239572, 96.13367303821823});
}

TEST(ciecam02, inverseNonlinearAdaptation_ofATenthIsNoResponse) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(apply(&Model::InverseNonlinearAdaptation, model, {0.1, 0.1, 0.1}), (Triple{0.0, 0.0, 0.0}));
}

TEST(ciecam02, inverseCompression_isNeverNegative) {
    const Model model(kD65.data(), 0);
    // 0.2 - 0.1 and 0.1 - 0 are the same double.
    const Triple out = apply(&Model::InverseNonlinearAdaptation, model, {0.0, 0.2, -3.0});
    EXPECT_GT(out[0], 0.0);
    EXPECT_EQ(out[0], out[1]);
    EXPECT_NEAR(out[2], 2.1294878537130186, 1e-11);
}

TEST(ciecam02, inverseNonlinearAdaptation_endsWhereTheCompressionDoes) {
    const Model model(kD65.data(), 0);
    const Triple out = apply(&Model::InverseNonlinearAdaptation, model, {400.1, 401.0, -400.5});
    EXPECT_EQ(out[0], kInfinity);
    EXPECT_TRUE(std::isnan(out[1]));
    EXPECT_TRUE(std::isnan(out[2]));
}

TEST(ciecam02, aabToRgb_takesTenDigitsOf460By1403) {
    const Model model(kD65.data(), 0);
    // 0.305 times the quotient would give the 0.1 of no response.
    const Triple out = apply(&Model::AabToRGB, model, {0.0, 0.0, 0.0});
    EXPECT_EQ(out, (Triple{0.305 * 0.3278768852, 0.305 * 0.3278768852, 0.305 * 0.3278768852}));
    EXPECT_GT(out[0] - 0.1, 2e-6);
}

TEST(ciecam02, aabToRgb_addsTheOpponentSignalsToFiveDecimals) {
    const Model model(kD65.data(), 0);
    const double q = 0.305 * 0.3278768852;
    EXPECT_EQ(apply(&Model::AabToRGB, model, {0.0, 1.0, 0.0}),
              (Triple{q + 0.32145, q - 0.63507, q - 0.15681}));
    EXPECT_EQ(apply(&Model::AabToRGB, model, {0.0, 0.0, 1.0}),
              (Triple{q + 0.20527, q - 0.18603, q - 4.49038}));
}

// XYZ to JCh.

TEST(ciecam02, fromXyz_givesTheWhiteLightness100InEverySurroundAndScene) {
    for (const Triple& white : {kD65, kA, kDimmerWhite}) {
        for (const int surround : {0, 1, 2}) {
            Model model(white.data(), surround);
            EXPECT_EQ(jchOf(model, white)[0], 100.0) << surround;
            EXPECT_EQ(jchOf(inScene(model, white, 4.0, 60.0), white)[0], 100.0) << surround;
        }
    }
}

TEST(ciecam02, fromXyz_givesTheIncompletelyAdaptedWhiteSomeChroma) {
    EXPECT_NEAR(jchOf(Model(kA.data(), 2), kA)[1], 7.342674069565201, 1e-9);
}

TEST(ciecam02, fromXyz_turnsNegativeAnglesByAFullCircle) {
    const Triple violet = {20.0, 12.0, 60.0};
    expectNear(jchOf(Model(kD65.data(), 0), violet),
               {31.634152213971596, 65.81344319253361, 287.7335945763499});
    EXPECT_GT(jchOf(Model(kD65.data(), 0), violet)[2], 270.0);
}

TEST(ciecam02, fromXyz_keepsHuesOfAllColoursWithinOneCircle) {
    const Model model(kD65.data(), 0);
    int quadrants[4] = {};
    for (int x = 1; x < 100; x += 7) {
        for (int z = 1; z < 110; z += 9) {
            const double hue = jchOf(model, {1.0 * x, 50.0, 1.0 * z})[2];
            if (std::isnan(hue))
                continue;
            ASSERT_GE(hue, 0.0);
            ASSERT_LT(hue, 360.0);
            ++quadrants[static_cast<int>(hue / 90.0)];
        }
    }
    for (const int colors : quadrants)
        EXPECT_GT(colors, 3);
}

TEST(ciecam02, fromXyz_countsDegreesWithItsTenDigitPi) {
    // a < 0 and b = 0: the angle is pi itself, and shows with how many digits 180 / pi was written.
    EXPECT_DOUBLE_EQ(jchOf(Model(kD65.data(), 0), {0.0, 0.0, 0.0})[2], 180.00000000514476);
}

TEST(ciecam02, fromXyz_ofBlackIsATinyPositiveLightness) {
    // 2 * 0.1 + 0.1 + 0.05 * 0.1 - 0.305 in this order leaves 2^-54.
    const Triple jch = jchOf(Model(kD65.data(), 0), {0.0, 0.0, 0.0});
    EXPECT_NEAR(jch[0], 1.4803494873465402e-22, 1e-33);
    EXPECT_GT(jch[0], 0.0);
    EXPECT_LT(jch[1], 1e-20);
    EXPECT_GE(jch[1], 0.0);
}

TEST(ciecam02, fromXyz_ofANegativeConeResponseIsNotANumber) {
    const Model model(kD65.data(), 0);
    const Triple blue = {0.0, 0.0, 50.0};
    const Triple adapted = apply(&Model::ChromaticAdaptation, model, apply(&Model::ToCAT02, model, blue));
    ASSERT_LT(apply(&Model::ToHuntPointerEstevez, model, adapted)[0], 0.0);
    expectAllNan(jchOf(model, blue));
}

TEST(ciecam02, fromXyz_isTheStagesOneAfterTheOther) {
    const Model model(kA.data(), 1);
    Triple response = apply(&Model::ToCAT02, model, kTeal);
    response = apply(&Model::ChromaticAdaptation, model, response);
    response = apply(&Model::ToHuntPointerEstevez, model, response);
    response = apply(&Model::NonlinearAdaptation, model, response);
    expectNear(response, {4.699122320815964, 5.3458312546602516, 4.735318757070993});
    const double a = response[0] - 12.0 * response[1] / 11.0 + response[2] / 11.0;
    const double b = (response[0] + response[1] - 2.0 * response[2]) * 0.1111111111111111;
    const Triple jch = jchOf(model, kTeal);
    EXPECT_NEAR(std::tan(jch[2] / 57.29577951471995), b / a, 1e-11 * std::fabs(b / a));
}

TEST(ciecam02, fromXyz_mayTakeThePlaceOfItsArgument) {
    const Model model(kD65.data(), 0);
    Triple inPlace = kPink;
    ASSERT_EQ(model.FromXYZ(inPlace.data(), inPlace.data()), 0);
    EXPECT_EQ(inPlace, jchOf(model, kPink));
    const Triple back = xyzOf(model, inPlace);
    ASSERT_EQ(model.ToXYZ(inPlace.data(), inPlace.data()), 0);
    EXPECT_EQ(inPlace, back);
}

// Nothing is checked.

TEST(ciecam02, sceneWithoutLight_givesEveryColourTheLightnessOfTheWhite) {
    // FL = 0: every response is compressed to 0.1.
    Model model(kD65.data(), 0);
    inScene(model, kD65, 0.0, 20.0);
    EXPECT_EQ(apply(&Model::NonlinearAdaptation, model, kPink), (Triple{0.1, 0.1, 0.1}));
    EXPECT_EQ(jchOf(model, kPink)[0], 100.0);
}

TEST(ciecam02, sceneBeforeABlackBackground_hasHuesOnly) {
    Model model(kD65.data(), 0);
    inScene(model, kD65, 318.30988618379, 0.0);
    const Triple jch = jchOf(model, kPink);
    EXPECT_TRUE(std::isnan(jch[0]));
    EXPECT_TRUE(std::isnan(jch[1]));
    EXPECT_NEAR(jch[2], 19.79976336943645, 1e-10);
    expectAllNan(xyzOf(model, {50.0, 20.0, 30.0}));
}

TEST(ciecam02, whiteWithoutLuminance_hasHuesOnly) {
    const Triple white = {95.05, 0.0, 108.88};
    const Triple jch = jchOf(Model(white.data(), 0), {20.0, 20.0, 20.0});
    EXPECT_TRUE(std::isnan(jch[0]));
    EXPECT_TRUE(std::isnan(jch[1]));
    EXPECT_NEAR(jch[2], 6.340191745558985, 1e-10);
}

TEST(ciecam02, whiteOfNothing_givesNoNumbersAndNoError) {
    const Triple white = {0.0, 0.0, 0.0};
    Model model(white.data(), 0);
    EXPECT_EQ(model.ErrNo(), 0);
    expectAllNan(jchOf(model, kPink));
    expectAllNan(xyzOf(model, {50.0, 20.0, 30.0}));
}

TEST(ciecam02, whiteWithNegativeComponents_isTakenAsItIs) {
    const Triple white = {-1.0, 100.0, 108.88};
    EXPECT_EQ(Model(white.data(), 0).ErrNo(), 0);
    expectNear(apply(&Model::ChromaticAdaptation, Model(white.data(), 0), {1.0, 1.0, 1.0}),
               {4.057131177203079, 0.5866916666484115, 0.9226874706380824});
}

// JCh to XYZ.

TEST(ciecam02, toXyz_servesEveryQuadrantOfHue) {
    const Model model(kD65.data(), 0);
    expectNear(xyzOf(model, {50.0, 40.0, 20.0}), {33.472490721665835, 25.823204147316115, 19.66601806703212});
    expectNear(xyzOf(model, {50.0, 40.0, 70.0}), {28.54116317335865, 26.71380094457384, 8.18492946654774});
    expectNear(xyzOf(model, {50.0, 40.0, 110.0}), {22.931737359548297, 28.0988622233675, 9.57809449525647});
    expectNear(xyzOf(model, {50.0, 40.0, 160.0}), {19.365580158668322, 29.41706463687659, 22.73402982036956});
    expectNear(xyzOf(model, {50.0, 40.0, 200.0}), {21.30382321946602, 29.61361599426195, 40.44940164425484});
    expectNear(xyzOf(model, {50.0, 40.0, 250.0}), {27.380824604590735, 28.82044413536204, 59.40574684619626});
    expectNear(xyzOf(model, {50.0, 40.0, 290.0}), {32.03967033472943, 27.658867547007162, 60.64223539979768});
    expectNear(xyzOf(model, {50.0, 40.0, 340.0}),
               {34.51348324098318, 26.241484325734717, 40.265640332475506});
}

TEST(ciecam02, toXyz_servesTheAxesAndDiagonalsOfHue) {
    const Model model(kD65.data(), 0);
    expectNear(xyzOf(model, {50.0, 40.0, 0.0}), {34.30494311162913, 25.914216541002535, 29.22941072284172});
    expectNear(xyzOf(model, {50.0, 40.0, 45.0}), {31.51675740251605, 26.082963125238244, 11.69426794284279});
    expectNear(xyzOf(model, {50.0, 40.0, 90.0}), {25.69804549087619, 27.387978178447597, 7.907411723463331});
    expectNear(xyzOf(model, {50.0, 40.0, 135.0}),
               {20.351053159136157, 28.882675004986737, 14.529449416097842});
    expectNear(xyzOf(model, {50.0, 40.0, 180.0}), {19.843207032719054, 29.618370927355006, 31.1886203158175});
    expectNear(xyzOf(model, {50.0, 40.0, 270.0}), {29.910544121620354, 28.272951073332678, 62.1012691980997});
    expectNear(xyzOf(model, {50.0, 40.0, 315.0}), {33.8295418103777, 26.88740750411596, 52.870547149218886});
}

TEST(ciecam02, toXyz_servesEverySurroundAndScene) {
    expectNear(xyzOf(Model(kA.data(), 1), {30.0, 25.0, 100.0}),
               {8.339540322790159, 7.803337950214601, 0.9733828455804369});
    expectNear(xyzOf(Model(kA.data(), 2), {30.0, 25.0, 100.0}),
               {6.003231710910231, 5.696425642486726, 0.6055271514500667});
    Model model(kD65.data(), 0);
    expectNear(xyzOf(inScene(model, kDimmerWhite, 20.0, 18.0), {60.0, 35.0, 300.0}),
               {40.949026832582305, 33.89313423552842, 23.55099236530407});
}

TEST(ciecam02, toXyz_ofHuesACircleApartIsNearlyTheSame) {
    // The circle is 360 * 3.1415926535 / 180, 1.8e-10 short of one.
    const Model model(kD65.data(), 0);
    expectNear(xyzOf(model, {50.0, 40.0, -20.0}), xyzOf(model, {50.0, 40.0, 340.0}), 1e-9);
    expectNear(xyzOf(model, {50.0, 40.0, 380.0}), xyzOf(model, {50.0, 40.0, 20.0}), 1e-9);
}

TEST(ciecam02, toXyz_ofNoChromaIsTheSameGreyForEveryHue) {
    const Model model(kD65.data(), 0);
    const Triple grey = xyzOf(model, {50.0, 0.0, 0.0});
    expectNear(grey, {26.465428447260845, 27.836376426915518, 30.29389024295149});
    for (const double hue : {30.0, 45.0, 90.0, 135.0, 200.0, 225.0, 300.0, 359.0})
        EXPECT_EQ(xyzOf(model, {50.0, 0.0, hue}), grey) << hue;
}

TEST(ciecam02, toXyz_ofNoLightnessButChromaIsNearlyBlack) {
    // t is infinite, p1 is 0, A is 0: what is left of p2 is 0.305.
    expectNear(xyzOf(Model(kD65.data(), 0), {0.0, 20.0, 30.0}),
               {0.0011429459279768356, 0.0002239693760714293, 0.006393128399422681}, 1e-9);
}

TEST(ciecam02, toXyz_ofNeitherLightnessNorChromaIsNotANumber) {
    expectAllNan(xyzOf(Model(kD65.data(), 0), {0.0, 0.0, 30.0}));
}

TEST(ciecam02, toXyz_ofNegativeLightnessOrChromaIsNotANumber) {
    expectAllNan(xyzOf(Model(kD65.data(), 0), {-1.0, 20.0, 30.0}));
    expectAllNan(xyzOf(Model(kD65.data(), 0), {50.0, -1.0, 30.0}));
}

TEST(ciecam02, toXyz_doesNotReturnTheColourBecauseOfTheFactor03278768852) {
    const Model model(kD65.data(), 0);
    const Triple back = xyzOf(model, jchOf(model, kPink));
    expectNear(back, {57.063054493893695, 43.06263339519622, 31.962269777040518}, 1e-11);
    // With the quotient of 460 and 1403 it would come back to 0.0001.
    const Triple repaired = {57.05991243239816, 43.05994705026614, 31.959942581929983};
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_LT(std::fabs(repaired[i] - kPink[i]), 1e-4);
        EXPECT_GT(back[i] - kPink[i], 2e-3);
        EXPECT_LT(back[i] - kPink[i], 4e-3);
    }
}

TEST(ciecam02, toXyz_makesResponsesBelowNoResponsePositive) {
    // The compressed blue response of this colour is -0.40; with its sign restored Z would be below 0.
    const Triple xyz = xyzOf(Model(kD65.data(), 0), {10.0, 90.0, 40.0});
    expectNear(xyz, {2.9892246201014183, 1.2024149649895781, 0.03394754480457978}, 1e-11);
    EXPECT_GT(xyz[2], 0.03);
}

TEST(ciecam02, toXyz_isTheStagesOneAfterTheOther) {
    const Model model(kA.data(), 1);
    const double achromatic = 16.04147959704195;
    const Triple opponent = {16.04147959704195, -0.07274613260200996, 0.412563819393627};
    ASSERT_EQ(opponent[0], achromatic);
    Triple response = apply(&Model::AabToRGB, model, opponent);
    response = apply(&Model::InverseNonlinearAdaptation, model, response);
    response = apply(&Model::FromHuntPointerEstevez, model, response);
    response = apply(&Model::ToCAT02, model, response);
    response = apply(&Model::InverseChromaticAdaptation, model, response);
    response = apply(&Model::FromCAT02, model, response);
    expectNear(response, xyzOf(model, {30.0, 25.0, 100.0}), 1e-11);
}

// Null.

TEST(ciecam02, nullTriples_areNotConvertedAndNotWritten) {
    const Model model(kD65.data(), 0);
    for (const Operation operation :
         {&Model::FromXYZ, &Model::ToXYZ, &Model::ToCAT02, &Model::ChromaticAdaptation,
          &Model::ToHuntPointerEstevez, &Model::NonlinearAdaptation, &Model::AabToRGB,
          &Model::InverseNonlinearAdaptation, &Model::FromHuntPointerEstevez,
          &Model::InverseChromaticAdaptation, &Model::FromCAT02}) {
        Triple out = {1.0, 2.0, 3.0};
        EXPECT_EQ((model.*operation)(nullptr, out.data()), 0);
        EXPECT_EQ(out, (Triple{1.0, 2.0, 3.0}));
        EXPECT_EQ((model.*operation)(kPink.data(), nullptr), 0);
    }
}

TEST(ciecam02, nullTriples_haveTheDifferenceMinusOne) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(model.CalcSquareDeltaEConverted(nullptr, kPink.data(), 0), -1.0);
    EXPECT_EQ(model.CalcSquareDeltaEConverted(kPink.data(), nullptr, 0), -1.0);
    EXPECT_EQ(model.CalcSquareDeltaE(nullptr, kPink.data(), 0), -1.0);
    EXPECT_EQ(model.CalcSquareDeltaE(kPink.data(), nullptr, 0), -1.0);
    EXPECT_EQ(model.CalcDeltaE(nullptr, kPink.data(), 0), -1.0);
    EXPECT_EQ(model.CalcDeltaE(kPink.data(), nullptr, 0), -1.0);
}

TEST(ciecam02, nullWhite_isAnErrorOfTheConstructorAndNoScene) {
    EXPECT_EQ(Model(nullptr, 0).ErrNo(), -1);
    Model model(kD65.data(), 0);
    const Triple before = jchOf(model, kPink);
    EXPECT_EQ(model.InitializeScene(nullptr, 4.0, 60.0), 1);
    EXPECT_EQ(model.ErrNo(), 0);
    EXPECT_EQ(jchOf(model, kPink), before);
}

// Differences.

TEST(ciecam02, differenceConverted_isEuclideanInLightnessAndTheTwoChromaAxes) {
    const Model model(kD65.data(), 0);
    const Triple jch1 = {50.0, 40.0, 20.0}, jch2 = {53.0, 35.0, 110.0};
    EXPECT_NEAR(model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), 0), 2833.9999998742896, 1e-9);
    // Hues a right angle apart: 3^2 + 40^2 + 35^2.
    EXPECT_NEAR(model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), 0), 9.0 + 1600.0 + 1225.0, 1e-6);
}

TEST(ciecam02, differenceConverted_countsRadiansWithATenDigitPi) {
    // A million half circles of 3.1415926535 end 9e-5 before the whole circles do.
    const Model model(kD65.data(), 0);
    const Triple jch1 = {50.0, 1.0, 0.0}, jch2 = {50.0, 1.0, 1.8e8};
    const double square = model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), 0);
    EXPECT_NEAR(square, 8.0625e-9, 1e-11);
}

TEST(ciecam02, differenceConverted_ignoresTheFunction) {
    const Model model(kD65.data(), 0);
    const Triple jch1 = {50.0, 40.0, 20.0}, jch2 = {53.0, 35.0, 110.0};
    const double square = model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), 0);
    for (const int function : {-1, 1, 4, 5, INT_MAX, INT_MIN})
        EXPECT_EQ(model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), function), square) << function;
}

TEST(ciecam02, differenceConverted_ofEqualColoursIsZero) {
    const Model model(kD65.data(), 0);
    const Triple jch = {50.0, 40.0, 20.0};
    EXPECT_EQ(model.CalcSquareDeltaEConverted(jch.data(), jch.data(), 0), 0.0);
}

TEST(ciecam02, squareDifference_isThatOfTheConvertedColours) {
    const Model model(kD65.data(), 1);
    const Triple jch1 = jchOf(model, kPink), jch2 = jchOf(model, kTeal);
    EXPECT_EQ(model.CalcSquareDeltaE(kPink.data(), kTeal.data(), 0),
              model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), 0));
    EXPECT_NEAR(model.CalcSquareDeltaE(kPink.data(), kTeal.data(), 0), 8742.90225895223, 1e-8);
}

TEST(ciecam02, deltaE_isTheSquare) {
    const Model model(kD65.data(), 0);
    const double square = model.CalcSquareDeltaE(kPink.data(), kTeal.data(), 0);
    ASSERT_GT(square, 2.0);
    EXPECT_EQ(model.CalcDeltaE(kPink.data(), kTeal.data(), 0), square);
    EXPECT_EQ(model.CalcDeltaE(kPink.data(), kTeal.data(), 7), square);
}

TEST(ciecam02, difference_ofTheHandleIsTheRoot) {
    const TColorSpace handle(kD65.data(), 2);
    const Model model(kD65.data(), 0);
    EXPECT_DOUBLE_EQ(handle.CalcDeltaE(kPink.data(), kTeal.data(), 0),
                     std::sqrt(model.CalcDeltaE(kPink.data(), kTeal.data(), 0)));
}

// Tells what its operations were asked for.
class Recorder : public Model {
public:
    Recorder() : Model(kD65.data(), 0) {}

    double CalcSquareDeltaEConverted(const double* jch1, const double* jch2, int function) const override {
        first = {jch1[0], jch1[1], jch1[2]};
        second = {jch2[0], jch2[1], jch2[2]};
        convertedFunction = function;
        return -7.0;
    }

    mutable Triple first = {}, second = {};
    mutable int convertedFunction = INT_MIN;
};

class SquareRecorder : public Model {
public:
    SquareRecorder() : Model(kD65.data(), 0) {}

    double CalcSquareDeltaE(const double* xyz1, const double* xyz2, int function) const override {
        first = xyz1;
        second = xyz2;
        squareFunction = function;
        return -9.0;
    }

    mutable const double *first = nullptr, *second = nullptr;
    mutable int squareFunction = INT_MIN;
};

TEST(ciecam02, squareDifference_asksTheVirtualConvertedOne) {
    const Recorder model;
    EXPECT_EQ(model.CalcSquareDeltaE(kPink.data(), kTeal.data(), 3), -7.0);
    EXPECT_EQ(model.first, jchOf(model, kPink));
    EXPECT_EQ(model.second, jchOf(model, kTeal));
}

TEST(ciecam02, difference_asksTheVirtualSquareForFunctionZero) {
    const SquareRecorder model;
    EXPECT_EQ(model.CalcDeltaE(kPink.data(), kTeal.data(), 3), -9.0);
    EXPECT_EQ(model.squareFunction, 0);
    EXPECT_EQ(model.first, kPink.data());
    EXPECT_EQ(model.second, kTeal.data());
}

TEST(ciecam02, differenceFunctions_areOne) {
    ASSERT_EQ(Model::GetDifferenceFunctionListSize(), 1);
    EXPECT_STREQ(Model::GetDifferenceFunctionList()[0], "CIECAM02 Delta E");
}

// Published examples.

struct Example {
    std::string name;
    Triple xyz, white;
    double adaptingLuminance, background;
    std::array<std::string, 3> jch;
};

double number(const std::string& text) {
    double value = kNan;
    const std::from_chars_result result = std::from_chars(text.data(), text.data() + text.size(), value);
    EXPECT_EQ(result.ptr, text.data() + text.size()) << text;
    return value;
}

std::vector<Example> publishedExamples() {
    std::ifstream stream(QXCMS_SOURCE_DIR "/tests/golden/ciecam02_examples.csv");
    std::vector<Example> examples;
    bool named = false;
    for (std::string line; std::getline(stream, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        if (!named) {
            EXPECT_EQ(line, "case,X,Y,Z,Xw,Yw,Zw,La,Yb,J,C,h");
            named = true;
            continue;
        }
        std::vector<std::string> cells;
        std::istringstream cellStream(line);
        for (std::string cell; std::getline(cellStream, cell, ',');)
            cells.push_back(cell);
        examples.push_back({cells.at(0),
                            {number(cells.at(1)), number(cells.at(2)), number(cells.at(3))},
                            {number(cells.at(4)), number(cells.at(5)), number(cells.at(6))},
                            number(cells.at(7)),
                            number(cells.at(8)),
                            {cells.at(9), cells.at(10), cells.at(11)}});
    }
    return examples;
}

// Half a unit of the last digit printed.
double halfUnit(const std::string& printed) {
    const std::size_t point = printed.find('.');
    return point == std::string::npos
               ? 0.5
               : 0.5 * std::pow(10.0, -static_cast<double>(printed.size() - point - 1));
}

TEST(ciecam02, publishedExamples_agreeToTheirPrintedDigits) {
    const std::vector<Example> examples = publishedExamples();
    ASSERT_EQ(examples.size(), 8U);
    for (const Example& example : examples) {
        Model model(example.white.data(), 0);
        inScene(model, example.white, example.adaptingLuminance, example.background);
        const Triple jch = jchOf(model, example.xyz);
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(jch[i], number(example.jch[i]), halfUnit(example.jch[i]))
                << example.name << ", " << i;
    }
}

} // namespace
