// CIECAM97s: its constants, stages, the two directions, and where it departs from the published model on
// purpose. Expected numbers were worked out from the formulas by a program of their own; no published worked
// example is known.
#include "colorspace/tcolorspace_ciecam97s.h"

#include <array>
#include <climits>
#include <cmath>
#include <cstddef>
#include <limits>

#include <gtest/gtest.h>

#include "colorspace/tcolorspace.h"

namespace {

using Triple = std::array<double, 3>;
using Model = TColorSpace_CIECAM97s;

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
const Triple kGrey = {19.01, 20.0, 21.78};

// A stage or a direction of the model on one triple.
using Operation = int (Model::*)(const double*, double*) const;
using OperationWithFactor = int (Model::*)(const double*, double*, double) const;

Triple apply(Operation operation, const Model& model, const Triple& in) {
    Triple out = {kNan, kNan, kNan};
    EXPECT_EQ((model.*operation)(in.data(), out.data()), 0);
    return out;
}

Triple apply(OperationWithFactor operation, const Model& model, const Triple& in, double factor) {
    Triple out = {kNan, kNan, kNan};
    EXPECT_EQ((model.*operation)(in.data(), out.data(), factor), 0);
    return out;
}

Triple jchOf(const Model& model, const Triple& xyz) {
    return apply(&Model::FromXYZ, model, xyz);
}
Triple xyzOf(const Model& model, const Triple& jch) {
    return apply(&Model::ToXYZ, model, jch);
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

TEST(ciecam97s, surrounds_scaleTheExponentOfLightness) {
    Model model(kD65.data(), 0);
    const double average = std::log(jchOf(model, kPink)[0] / 100.0);
    ASSERT_EQ(model.InitializeViewingCondition(1), 0);
    EXPECT_NEAR(std::log(jchOf(model, kPink)[0] / 100.0) / average, 0.59 / 0.69, kRelative);
    ASSERT_EQ(model.InitializeViewingCondition(2), 0);
    EXPECT_NEAR(std::log(jchOf(model, kPink)[0] / 100.0) / average, 0.525 / 0.69, kRelative);
    ASSERT_EQ(model.InitializeViewingCondition(0), 0);
    EXPECT_EQ(std::log(jchOf(model, kPink)[0] / 100.0), average);
}

// C / (J / 100)^(0.67 n) goes with Nc^0.69 while all else stays; n = 0.2.
double chromaPerPowerOfLightness(const Model& model) {
    const Triple jch = jchOf(model, kPink);
    return jch[1] / std::pow(jch[0] / 100.0, 0.67 * 0.2);
}

TEST(ciecam97s, surrounds_induceChromaWith11AndWith08) {
    Model model(kD65.data(), 0);
    const double average = chromaPerPowerOfLightness(model);
    ASSERT_EQ(model.InitializeViewingCondition(1), 0);
    EXPECT_NEAR(chromaPerPowerOfLightness(model) / average, std::pow(1.1, 0.69), kRelative);
    ASSERT_EQ(model.InitializeViewingCondition(2), 0);
    EXPECT_NEAR(chromaPerPowerOfLightness(model) / average, std::pow(0.8, 0.69), kRelative);
}

TEST(ciecam97s, surrounds_adaptToTheirOwnDegree) {
    const Triple ones = {1.0, 1.0, 1.0};
    expectNear(apply(&Model::MultiplyByDp, Model(kA.data(), 0), ones),
               {0.8392208630537499, 1.1077671733779768, 2.6719316714767336});
    expectNear(apply(&Model::MultiplyByDp, Model(kA.data(), 1), ones),
               {0.855298776748375, 1.0969904560401789, 2.5047385043290604});
    expectNear(apply(&Model::MultiplyByDp, Model(kA.data(), 2), ones),
               {0.855298776748375, 1.0969904560401789, 2.5047385043290604});
}

TEST(ciecam97s, surroundDark_adaptsAsTheDimOne) {
    EXPECT_EQ(apply(&Model::MultiplyByDp, Model(kA.data(), 1), kPink),
              apply(&Model::MultiplyByDp, Model(kA.data(), 2), kPink));
}

TEST(ciecam97s, surrounds_giveTheirOwnCorrelates) {
    expectNear(jchOf(Model(kD65.data(), 0), kPink),
               {68.58028735911957, 60.57244929018972, 19.997397148137324});
    expectNear(jchOf(Model(kD65.data(), 1), kPink),
               {72.37890907154916, 64.48348026946407, 19.803804935335783});
    expectNear(jchOf(Model(kD65.data(), 2), kPink),
               {75.00297738626564, 52.01062999351642, 19.803804935335783});
}

TEST(ciecam97s, surrounds_knownLeaveNoError) {
    for (const int surround : {0, 1, 2})
        EXPECT_EQ(Model(kD65.data(), surround).ErrNo(), 0) << surround;
}

TEST(ciecam97s, surroundUnknown_isErrorMinusOne) {
    for (const int surround : {3, -1, 4, INT_MAX, INT_MIN})
        EXPECT_EQ(Model(kD65.data(), surround).ErrNo(), -1) << surround;
}

TEST(ciecam97s, surroundUnknown_doesNotAdaptRedAndGreen) {
    const Triple rgb = {3.0, 50.0, 1.0};
    EXPECT_EQ(apply(&Model::MultiplyByDp, Model(kA.data(), 3), rgb), rgb);
}

TEST(ciecam97s, surroundUnknown_givesEveryColourFullLightnessAndNoChroma) {
    const Triple jch = jchOf(Model(kD65.data(), 3), kPink);
    EXPECT_EQ(jch[0], 100.0);
    EXPECT_EQ(jch[1], 0.0);
    EXPECT_NEAR(jch[2], 17.879225331913283, 1e-10);
}

TEST(ciecam97s, viewingCondition_unknownReturnsOneAndChangesNothing) {
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

TEST(ciecam97s, viewingCondition_leavesTheErrorOfTheConstructor) {
    Model model(kD65.data(), 3);
    EXPECT_EQ(model.InitializeViewingCondition(0), 0);
    EXPECT_EQ(model.ErrNo(), -1);
}

TEST(ciecam97s, viewingCondition_doesNotAdaptAnewBeforeTheSceneIsInitialised) {
    Model model(kA.data(), 0);
    const Triple average = apply(&Model::MultiplyByDp, model, kPink);
    ASSERT_EQ(model.InitializeViewingCondition(2), 0);
    EXPECT_EQ(apply(&Model::MultiplyByDp, model, kPink), average);
    inScene(model, kA, 318.30988618379, 20.0);
    EXPECT_EQ(apply(&Model::MultiplyByDp, model, kPink),
              apply(&Model::MultiplyByDp, Model(kA.data(), 2), kPink));
}

TEST(ciecam97s, viewingCondition_andSceneMakeWhatTheConstructorMakes) {
    for (const int surround : {0, 1, 2}) {
        Model model(kA.data(), 2 - surround);
        ASSERT_EQ(model.InitializeViewingCondition(surround), 0);
        inScene(model, kD65, 318.30988618379, 20.0);
        EXPECT_EQ(jchOf(model, kPink), jchOf(Model(kD65.data(), surround), kPink)) << surround;
    }
}

TEST(ciecam97s, setToZero_forgetsTheError) {
    Model model(kD65.data(), 3);
    EXPECT_EQ(model.SetToZero(), 0);
    EXPECT_EQ(model.ErrNo(), 0);
}

TEST(ciecam97s, setToZero_forgetsWhiteSurroundAndScene) {
    Model model(kD65.data(), 0);
    ASSERT_EQ(model.SetToZero(), 0);
    // D, p and the white are 0: 0 / 0 for red and green, 0 / 0^0 + 1 for blue.
    const Triple adapted = apply(&Model::MultiplyByDp, model, {1.0, 1.0, 1.0});
    EXPECT_TRUE(std::isnan(adapted[0]));
    EXPECT_TRUE(std::isnan(adapted[1]));
    EXPECT_EQ(adapted[2], 1.0);
    EXPECT_EQ(apply(&Model::MultiplyPostAdaption, model, {1.0, 1.0, 1.0}), (Triple{1.0, 1.0, 1.0}));
}

TEST(ciecam97s, setToZero_leavesAModelThatCanBeSetUpAnew) {
    Model model(kA.data(), 3);
    ASSERT_EQ(model.SetToZero(), 0);
    ASSERT_EQ(model.InitializeViewingCondition(1), 0);
    inScene(model, kD65, 318.30988618379, 20.0);
    EXPECT_EQ(jchOf(model, kPink), jchOf(Model(kD65.data(), 1), kPink));
}

// The scene.

TEST(ciecam97s, scene_ofTheConstructorIsAThousandOverPiBeforeTwenty) {
    Model model(kD65.data(), 0);
    const Triple constructed = jchOf(model, kPink);
    EXPECT_EQ(jchOf(inScene(model, kD65, 318.30988618379, 20.0), kPink), constructed);
    EXPECT_NE(jchOf(inScene(model, kD65, 318.31, 20.0), kPink), constructed);
}

TEST(ciecam97s, scene_keepsACopyOfTheWhite) {
    Triple white = kD65;
    const Model model(white.data(), 0);
    white = {1.0, 2.0, 3.0};
    EXPECT_EQ(jchOf(model, kPink), jchOf(Model(kD65.data(), 0), kPink));
}

TEST(ciecam97s, scene_adaptsByTheLuminance) {
    Model model(kD65.data(), 0);
    const Triple ones = {1.0, 1.0, 1.0};
    // Without light nothing is adapted.
    EXPECT_EQ(apply(&Model::MultiplyByDp, inScene(model, kA, 0.0, 20.0), ones), ones);
    expectNear(apply(&Model::MultiplyByDp, inScene(model, kA, 31.83, 20.0), ones),
               {0.8564218080346829, 1.0962377096973444, 2.493060175838808});
}

TEST(ciecam97s, scene_isIndependentOfTheScaleOfItsWhiteButForTheBackground) {
    // The white enters as chromaticity; a power of two scales it exactly.
    Model model(kD65.data(), 0), doubled(kD65.data(), 0);
    inScene(model, kA, 200.0, 18.0);
    inScene(doubled, {2.0 * kA[0], 2.0 * kA[1], 2.0 * kA[2]}, 200.0, 18.0);
    EXPECT_EQ(apply(&Model::MultiplyByDp, doubled, kPink), apply(&Model::MultiplyByDp, model, kPink));
}

TEST(ciecam97s, scene_adaptsTheResponsesToTheLuminanceLevel) {
    Model model(kD65.data(), 0);
    const Triple cones = {20.0, 5.0, 100.0};
    expectNear(apply(&Model::MultiplyPostAdaption, inScene(model, kD65, 318.30988618379, 20.0), cones),
               {6.896918082554917, 3.3654532174733123, 15.356675787756389});
    // At low levels the other term of FL rules.
    expectNear(apply(&Model::MultiplyPostAdaption, inScene(model, kD65, 0.02, 20.0), cones),
               {1.3305111154742069, 1.120773706596217, 2.0506964493758666});
}

TEST(ciecam97s, scene_ofAnotherLuminanceBackgroundAndWhiteGivesOtherCorrelates) {
    Model model(kD65.data(), 0);
    expectNear(jchOf(inScene(model, kDimmerWhite, 20.0, 18.0), kGreen),
               {45.24495676893118, 49.530065856145484, 183.5048027133557});
    expectNear(jchOf(inScene(model, kD65, 4.0, 60.0), kGreen),
               {34.47186066627358, 38.03076125838998, 117.96723321934616});
    expectNear(jchOf(inScene(model, kD65, 4.0, 100.0), kGreen),
               {30.110297248251793, 28.21695809675439, 117.96723321934616});
}

// The stages.

TEST(ciecam97s, multiplyByMb_isTheBradfordMatrixOnValuesDividedByY) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(apply(&Model::MultiplyByMb, model, {0.0, 8.0, 0.0}), (Triple{0.2664, 1.7135, -0.0685}));
    EXPECT_EQ(apply(&Model::MultiplyByMb, model, {8.0, 8.0, 0.0}),
              (Triple{0.8951 + 0.2664, -0.7502 + 1.7135, 0.0389 - 0.0685}));
    EXPECT_EQ(apply(&Model::MultiplyByMb, model, {0.0, 8.0, 8.0}),
              (Triple{0.2664 - 0.1614, 1.7135 + 0.0367, -0.0685 + 1.0296}));
    EXPECT_EQ(apply(&Model::MultiplyByMb, model, kPink),
              (Triple{1.3327274965164886, 0.7466286576869485, 0.7472373432419879}));
}

TEST(ciecam97s, multiplyByDp_scalesRedAndGreen) {
    const Model model(kA.data(), 1);
    const Triple factors = apply(&Model::MultiplyByDp, model, {1.0, 1.0, 1.0});
    const Triple adapted = apply(&Model::MultiplyByDp, model, {2.0, -8.0, 1.0});
    EXPECT_EQ(adapted, (Triple{2.0 * factors[0], -8.0 * factors[1], factors[2]}));
}

TEST(ciecam97s, multiplyByDp_raisesBlueToThePowerOfItsWhite) {
    const Model model(kA.data(), 0);
    // p of this white.
    const double p = 0.9140823084533668;
    const double factor = apply(&Model::MultiplyByDp, model, {1.0, 1.0, 1.0})[2];
    EXPECT_NEAR(apply(&Model::MultiplyByDp, model, {1.0, 1.0, 2.0})[2], factor * std::pow(2.0, p), 1e-11);
    EXPECT_NEAR(apply(&Model::MultiplyByDp, model, {1.0, 1.0, 0.3})[2], factor * std::pow(0.3, p), 1e-11);
}

TEST(ciecam97s, multiplyByDp_ofNoBlueIsNoBlue) {
    EXPECT_EQ(apply(&Model::MultiplyByDp, Model(kA.data(), 0), {1.0, 1.0, 0.0})[2], 0.0);
}

TEST(ciecam97s, negativeBlueResponse_isNotANumber) {
    // The sign would be put before the magnitude, but the power sees it first.
    const Model model(kA.data(), 0);
    const Triple adapted = apply(&Model::MultiplyByDp, model, {1.0, 1.0, -0.5});
    EXPECT_FALSE(std::isnan(adapted[0]));
    EXPECT_FALSE(std::isnan(adapted[1]));
    EXPECT_TRUE(std::isnan(adapted[2]));
}

// The blue response of a white of equal energy is 1, its exponent p as well, and a power of 1 has a number
// for everything.
TEST(ciecam97s, negativeBlueUnderAWhiteOfEqualEnergy_keepsItsSign) {
    const Triple white = {100.0, 100.0, 100.0};
    const Model model(white.data(), 0);
    ASSERT_EQ(apply(&Model::MultiplyByMb, model, white)[2], 1.0);
    const Triple adapted = apply(&Model::MultiplyByDp, model, {1.0, 1.0, -0.5});
    EXPECT_NEAR(adapted[2], -0.5, 1e-15);
}

TEST(ciecam97s, fromXyz_ofNegativeBlueUnderAWhiteOfEqualEnergyIsANumber) {
    const Triple white = {100.0, 100.0, 100.0}, yellow = {60.0, 60.0, 1.0};
    const Model model(white.data(), 0);
    ASSERT_LT(apply(&Model::MultiplyByMb, model, yellow)[2], 0.0);
    expectNear(jchOf(model, yellow), {78.27365899420734, 90.55889671695205, 95.02555798347045}, 1e-10);
    expectAllNan(jchOf(Model(kD65.data(), 0), yellow));
}

TEST(ciecam97s, multiplyByMhMbInv_goesThroughTheFourDigitInverse) {
    const Model model(kD65.data(), 0);
    expectNear(apply(&Model::MultiplyByMhMbInv, model, {1.0, 0.0, 0.0}, 1.0),
               {0.6831586040000001, 0.284366865, -0.0085});
    expectNear(apply(&Model::MultiplyByMhMbInv, model, {0.0, 1.0, 0.0}, 1.0),
               {0.296693691, 0.649136011, 0.04});
    expectNear(apply(&Model::MultiplyByMhMbInv, model, {0.0, 0.0, 1.0}, 1.0),
               {0.020118734, 0.066520105, 0.9685});
}

TEST(ciecam97s, multiplyByMhMbInv_leavesTheLastRowOfTheInverseToBlue) {
    // The last row of the cone matrix is (0, 0, 1).
    const Model model(kD65.data(), 0);
    EXPECT_EQ(apply(&Model::MultiplyByMhMbInv, model, {1.0, 0.0, 0.0}, 1.0)[2], -0.0085);
    EXPECT_EQ(apply(&Model::MultiplyByMhMbInv, model, {0.0, 1.0, 0.0}, 1.0)[2], 0.04);
    EXPECT_EQ(apply(&Model::MultiplyByMhMbInv, model, {0.0, 0.0, 1.0}, 1.0)[2], 0.9685);
}

TEST(ciecam97s, multiplyByMhMbInv_multipliesWithTheLuminance) {
    const Model model(kD65.data(), 0);
    const Triple one = apply(&Model::MultiplyByMhMbInv, model, {1.0, 0.9, 1.1}, 1.0);
    EXPECT_EQ(apply(&Model::MultiplyByMhMbInv, model, {1.0, 0.9, 1.1}, 32.0),
              (Triple{32.0 * one[0], 32.0 * one[1], 32.0 * one[2]}));
}

TEST(ciecam97s, multiplyPostAdaption_ofNoResponseIsOne) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(apply(&Model::MultiplyPostAdaption, model, {0.0, -0.0, 0.0}), (Triple{1.0, 1.0, 1.0}));
}

TEST(ciecam97s, multiplyPostAdaption_ofANegativeResponseIsNotANumber) {
    const Model model(kD65.data(), 0);
    const Triple compressed = apply(&Model::MultiplyPostAdaption, model, {-1.0, 20.0, -1e-300});
    EXPECT_TRUE(std::isnan(compressed[0]));
    EXPECT_NEAR(compressed[1], 6.896918082554917, 1e-11);
    EXPECT_TRUE(std::isnan(compressed[2]));
}

TEST(ciecam97s, multiplyByMbMhInv_isTheInverseConeMatrixThenTheBradfordMatrix) {
    const Model model(kD65.data(), 0);
    expectNear(apply(&Model::MultiplyByMbMhInv, model, {1.0, 0.0, 0.0}, 1.0),
               {1.80865442, -0.7973235399999998, 0.04889327999999998});
    expectNear(apply(&Model::MultiplyByMbMhInv, model, {0.0, 1.0, 0.0}, 1.0),
               {-0.8277589600000002, 1.91218525, -0.08635015});
    expectNear(apply(&Model::MultiplyByMbMhInv, model, {0.0, 0.0, 1.0}, 1.0),
               {0.01932069, -0.11476537999999997, 1.03745391});
}

TEST(ciecam97s, multiplyByMbMhInv_dividesByFlBetweenTheTwoMatrices) {
    // A division before the first or after the second matrix would round all three otherwise.
    const Model model(kD65.data(), 0);
    EXPECT_EQ(apply(&Model::MultiplyByMbMhInv, model, {173.3125, 56.0625, 194.8125}, 3.0),
              (Triple{90.27336479729166, -17.78066034645832, 68.5806003825}));
}

TEST(ciecam97s, multiplyByMbInv_takesTheAdaptationBack) {
    expectNear(apply(&Model::MultiplyByMbInv, Model(kA.data(), 0), {20.0, 25.0, 30.0}),
               {21.885256563967076, 22.519243971319195, 10.885942075761603});
    expectNear(apply(&Model::MultiplyByMbInv, Model(kA.data(), 2), {20.0, 25.0, 30.0}),
               {21.542343622843518, 22.481128228011695, 11.69691947146369});
}

TEST(ciecam97s, multiplyByMbInv_keepsTheSignOfNegativeBlue) {
    const Triple xyz = apply(&Model::MultiplyByMbInv, Model(kA.data(), 0), {20.0, 25.0, -1.0});
    expectNear(xyz, {20.1621155796313, 21.98827168111005, 0.4532623162159448}, 1e-11);
    EXPECT_FALSE(std::isnan(xyz[2]));
}

TEST(ciecam97s, inverseAdaptation_multipliesTheBlueDivisorByD) {
    const Model model(kA.data(), 1);
    const Triple xyz = apply(&Model::MultiplyByMbInv, model, {20.0, 25.0, 30.0});
    expectNear(xyz, {21.542343622843518, 22.481128228011695, 11.69691947146369});
    // With the factor of the way there, D / Bw^p + 1 - D.
    const Triple repaired = {21.53402476379252, 22.478564837272113, 11.646553312668326};
    EXPECT_GT(std::fabs(xyz[2] - repaired[2]), 0.05);
}

TEST(ciecam97s, bradfordInverses_differInTheirDigits) {
    const Model model(kA.data(), 0);
    const Triple xyz = apply(&Model::MultiplyByMbInv, model, {20.0, 25.0, 30.0});
    EXPECT_EQ(apply(&Model::MultiplyByMhMbInv, model, {1.0, 0.0, 0.0}, 1.0)[2], -0.0085);
    const Triple withFourDigits = {21.88478609085378, 22.52010722628217, 10.885798723174162};
    EXPECT_GT(std::fabs(xyz[0] / withFourDigits[0] - 1.0), 1e-6);
    EXPECT_GT(std::fabs(xyz[1] / withFourDigits[1] - 1.0), 1e-6);
}

TEST(ciecam97s, sgn_ofZeroIsPositive) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(model.sgn(0.0), 1.0);
    EXPECT_EQ(model.sgn(-0.0), 1.0);
}

TEST(ciecam97s, sgn_isOneWithTheSign) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(model.sgn(1e-300), 1.0);
    EXPECT_EQ(model.sgn(kInfinity), 1.0);
    EXPECT_EQ(model.sgn(-1e-300), -1.0);
    EXPECT_EQ(model.sgn(-kInfinity), -1.0);
}

// Eccentricity.

TEST(ciecam97s, eccentricity_ofTheUniqueHuesIsThatOfTheTable) {
    const Model model(kD65.data(), 0);
    EXPECT_NEAR(model.CalculateE(0.0), 0.8565, 1e-15);
    EXPECT_NEAR(model.CalculateE(20.14), 0.8, 1e-15);
    EXPECT_NEAR(model.CalculateE(90.0), 0.7, 1e-15);
    EXPECT_NEAR(model.CalculateE(164.25), 1.0, 1e-15);
    EXPECT_NEAR(model.CalculateE(237.53), 1.2, 1e-15);
    EXPECT_NEAR(model.CalculateE(360.0), 0.8565, 1e-15);
}

TEST(ciecam97s, eccentricity_isLinearBetweenTheUniqueHues) {
    const Model model(kD65.data(), 0);
    EXPECT_NEAR(model.CalculateE(10.07), (0.8565 + 0.8) / 2.0, 1e-14);
    EXPECT_NEAR(model.CalculateE(55.07), (0.8 + 0.7) / 2.0, 1e-14);
    EXPECT_NEAR(model.CalculateE(127.125), (0.7 + 1.0) / 2.0, 1e-14);
    EXPECT_NEAR(model.CalculateE(200.89), (1.0 + 1.2) / 2.0, 1e-14);
    EXPECT_NEAR(model.CalculateE(298.765), (1.2 + 0.8565) / 2.0, 1e-14);
    EXPECT_NEAR(model.CalculateE(180.0), 1.0 + 0.2 * 15.75 / 73.28, 1e-14);
}

TEST(ciecam97s, eccentricity_goesOnWithTheFirstAndTheLastLine) {
    const Model model(kD65.data(), 0);
    EXPECT_NEAR(model.CalculateE(-10.0), 0.8565 + 0.0565 * 10.0 / 20.14, 1e-14);
    EXPECT_NEAR(model.CalculateE(370.0), 0.8565 - 0.3435 * 10.0 / 122.47, 1e-14);
    EXPECT_NEAR(model.CalculateE(1000.0), 0.8565 - 0.3435 * 640.0 / 122.47, 1e-13);
}

TEST(ciecam97s, eccentricity_ofNoHueIsNotANumber) {
    EXPECT_TRUE(std::isnan(Model(kD65.data(), 0).CalculateE(kNan)));
}

// Inverse compression.

TEST(ciecam97s, calculatePrime_ofOneIsNoResponse) {
    const double noResponse = Model(kD65.data(), 0).CalculatePrime(1.0);
    EXPECT_EQ(noResponse, 0.0);
    EXPECT_FALSE(std::signbit(noResponse)) << "1 counts to the responses from 1 on";
}

TEST(ciecam97s, calculatePrime_isPositiveAboveOneAndNegativeBelow) {
    const Model model(kD65.data(), 0);
    // (2 * 2 - 2) / (41 - 2), (2 - 2 * 0.5) / (0.5 + 39), (2 + 6) / 36.
    EXPECT_NEAR(model.CalculatePrime(2.0), 100.0 * std::pow(2.0 / 39.0, 1.36986301369863), 1e-11);
    EXPECT_NEAR(model.CalculatePrime(0.5), -100.0 * std::pow(1.0 / 39.5, 1.36986301369863), 1e-12);
    EXPECT_NEAR(model.CalculatePrime(-3.0), -100.0 * std::pow(8.0 / 36.0, 1.36986301369863), 1e-11);
}

TEST(ciecam97s, calculatePrime_takesTheCompressionBackUpToFl) {
    // FL of 1000 / pi cd/m^2.
    const double FL = 1.1675443249898576;
    const Model model(kD65.data(), 0);
    const Triple compressed = apply(&Model::MultiplyPostAdaption, model, {0.01, 20.0, 150.0});
    EXPECT_NEAR(model.CalculatePrime(compressed[0]) / FL, 0.01, 1e-10);
    EXPECT_NEAR(model.CalculatePrime(compressed[1]) / FL, 20.0, 1e-10);
    EXPECT_NEAR(model.CalculatePrime(compressed[2]) / FL, 150.0, 1e-9);
}

TEST(ciecam97s, calculatePrime_endsWhereTheCompressionDoes) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(model.CalculatePrime(41.0), kInfinity);
    EXPECT_TRUE(std::isnan(model.CalculatePrime(42.0)));
    EXPECT_EQ(model.CalculatePrime(-39.0), -kInfinity);
    EXPECT_TRUE(std::isnan(model.CalculatePrime(-40.0)));
}

// XYZ to JCh.

TEST(ciecam97s, fromXyz_givesTheWhiteLightness100InEverySurroundAndScene) {
    for (const Triple& white : {kD65, kA, kDimmerWhite}) {
        for (const int surround : {0, 1, 2}) {
            Model model(white.data(), surround);
            EXPECT_EQ(jchOf(model, white)[0], 100.0) << surround;
            EXPECT_EQ(jchOf(inScene(model, white, 4.0, 60.0), white)[0], 100.0) << surround;
        }
    }
}

TEST(ciecam97s, fromXyz_givesTheHueOfAlmostNeutralColoursAsTheFourDigitInverseDecidesIt) {
    Model model(kD65.data(), 0);
    inScene(model, kD65, 318.31, 20.0);
    const Triple jch = jchOf(model, kGrey);
    expectNear(jch, {42.441462388111105, 0.49821581477100907, 212.2841012997779}, 1e-10);
    // With the exact inverse the hue is 219.43.
    EXPECT_NEAR(jch[2], 212.284101, 5e-7);
}

TEST(ciecam97s, fromXyz_turnsNegativeAnglesByAFullCircle) {
    const Triple violet = {20.0, 12.0, 60.0};
    expectNear(jchOf(Model(kD65.data(), 0), violet),
               {31.678712344772, 85.81803793442518, 288.38691597910724});
    EXPECT_GT(jchOf(Model(kD65.data(), 0), violet)[2], 270.0);
}

TEST(ciecam97s, fromXyz_servesEverySegmentOfEccentricity) {
    const Model model(kD65.data(), 0);
    expectNear(jchOf(model, {60.0, 45.0, 36.0}), {70.21736210386518, 60.38025830704949, 16.728457205585244});
    expectNear(jchOf(model, {50.0, 45.0, 20.0}), {68.90551512500952, 51.77757685191745, 56.36372277875781});
    expectNear(jchOf(model, {30.0, 45.0, 20.0}), {65.43526862926471, 63.79002216127496, 136.61078870129185});
    expectNear(jchOf(model, {30.0, 40.0, 60.0}), {60.89249541349802, 53.99205691781567, 208.54514463671504});
    expectNear(jchOf(model, {30.0, 25.0, 70.0}), {48.270739509767694, 62.99021526652838, 280.3549576504139});
    EXPECT_LT(jchOf(model, {60.0, 45.0, 36.0})[2], 20.14);
    EXPECT_NEAR(jchOf(model, {50.0, 45.0, 20.0})[2], 55.0, 34.0);
    EXPECT_NEAR(jchOf(model, {30.0, 45.0, 20.0})[2], 127.0, 37.0);
    EXPECT_NEAR(jchOf(model, {30.0, 40.0, 60.0})[2], 200.0, 36.0);
    EXPECT_GT(jchOf(model, {30.0, 25.0, 70.0})[2], 237.53);
}

TEST(ciecam97s, fromXyz_keepsHuesOfAllColoursWithinOneCircle) {
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

TEST(ciecam97s, fromXyz_ofNegativeBlueIsNotANumber) {
    const Triple yellow = {50.0, 100.0, 0.0};
    ASSERT_LT(apply(&Model::MultiplyByMb, Model(kD65.data(), 0), yellow)[2], 0.0);
    expectAllNan(jchOf(Model(kD65.data(), 0), yellow));
}

TEST(ciecam97s, fromXyz_ofANegativeConeResponseIsNotANumber) {
    const Model model(kD65.data(), 0);
    const Triple blue = {0.0, 1.0, 50.0};
    const Triple rgb = apply(&Model::MultiplyByDp, model, apply(&Model::MultiplyByMb, model, blue));
    ASSERT_LT(apply(&Model::MultiplyByMhMbInv, model, rgb, 1.0)[0], 0.0);
    expectAllNan(jchOf(model, blue));
}

TEST(ciecam97s, fromXyz_ofNoLuminanceIsNotANumber) {
    const Model model(kD65.data(), 0);
    expectAllNan(jchOf(model, {0.0, 0.0, 0.0}));
    expectAllNan(jchOf(model, {10.0, 0.0, 0.0}));
    expectAllNan(jchOf(model, {20.0, 0.0, 20.0}));
}

TEST(ciecam97s, fromXyz_isTheStagesOneAfterTheOther) {
    const Model model(kA.data(), 1);
    Triple response = apply(&Model::MultiplyByMb, model, kTeal);
    response = apply(&Model::MultiplyByDp, model, response);
    response = apply(&Model::MultiplyByMhMbInv, model, response, kTeal[1]);
    response = apply(&Model::MultiplyPostAdaption, model, response);
    const double a = response[0] - 12.0 * response[1] / 11.0 + response[2] / 11.0;
    const double b = (response[0] + response[1] - 2.0 * response[2]) * 0.1111111111111111;
    const Triple jch = jchOf(model, kTeal);
    expectNear(jch, {26.306452261372193, 79.64537455225174, 173.3748105637213});
    EXPECT_NEAR(std::tan(jch[2] / 57.29577951471995), b / a, 1e-11 * std::fabs(b / a));
}

TEST(ciecam97s, fromXyz_mayTakeThePlaceOfItsArgument) {
    const Model model(kD65.data(), 0);
    Triple inPlace = kPink;
    ASSERT_EQ(model.FromXYZ(inPlace.data(), inPlace.data()), 0);
    EXPECT_EQ(inPlace, jchOf(model, kPink));
    const Triple back = xyzOf(model, inPlace);
    ASSERT_EQ(model.ToXYZ(inPlace.data(), inPlace.data()), 0);
    EXPECT_EQ(inPlace, back);
}

// Nothing is checked.

TEST(ciecam97s, sceneWithoutLight_givesEveryColourTheLightnessOfTheWhite) {
    // FL = 0: every response is compressed to 1.
    Model model(kD65.data(), 0);
    inScene(model, kD65, 0.0, 20.0);
    EXPECT_EQ(apply(&Model::MultiplyPostAdaption, model, kPink), (Triple{1.0, 1.0, 1.0}));
    EXPECT_EQ(jchOf(model, kPink)[0], 100.0);
}

TEST(ciecam97s, sceneBeforeABlackBackground_hasNoLightnessAndInfiniteChroma) {
    // n = 0: the lightness that is no number is raised to the power of 0.
    Model model(kD65.data(), 0);
    inScene(model, kD65, 318.30988618379, 0.0);
    const Triple jch = jchOf(model, kPink);
    EXPECT_TRUE(std::isnan(jch[0]));
    EXPECT_EQ(jch[1], kInfinity);
    EXPECT_NEAR(jch[2], 19.997397148137324, 1e-10);
    expectAllNan(xyzOf(model, {50.0, 20.0, 30.0}));
}

TEST(ciecam97s, whiteWithoutLuminance_givesNoNumbers) {
    const Triple white = {95.05, 0.0, 108.88};
    expectAllNan(jchOf(Model(white.data(), 0), kPink));
    expectAllNan(xyzOf(Model(white.data(), 0), {50.0, 20.0, 30.0}));
}

TEST(ciecam97s, whiteOfNegativeBlue_givesNoNumbers) {
    // Without Z the blue of the white is negative, and its exponent not a number.
    const Triple white = {95.05, 100.0, 0.0};
    ASSERT_LT(apply(&Model::MultiplyByMb, Model(white.data(), 0), white)[2], 0.0);
    expectAllNan(jchOf(Model(white.data(), 0), kPink));
    expectAllNan(xyzOf(Model(white.data(), 0), {50.0, 20.0, 30.0}));
}

TEST(ciecam97s, whiteOfNothing_givesNoNumbersAndNoError) {
    const Triple white = {0.0, 0.0, 0.0};
    Model model(white.data(), 0);
    EXPECT_EQ(model.ErrNo(), 0);
    expectAllNan(jchOf(model, kPink));
    expectAllNan(xyzOf(model, {50.0, 20.0, 30.0}));
}

TEST(ciecam97s, whiteWithoutX_isTakenAsItIs) {
    const Triple white = {0.0, 100.0, 108.88};
    expectNear(jchOf(Model(white.data(), 0), {20.0, 20.0, 20.0}),
               {107.57764492684649, 132.8863347230161, 24.61570181532444});
}

// JCh to XYZ.

TEST(ciecam97s, toXyz_servesEveryQuadrantOfHue) {
    const Model model(kD65.data(), 0);
    expectNear(xyzOf(model, {50.0, 40.0, 0.0}), {29.82120338900381, 25.27202097404217, 28.219445820424948});
    expectNear(xyzOf(model, {50.0, 40.0, 15.0}), {29.430975321370084, 25.21534992595258, 23.65315385351241});
    expectNear(xyzOf(model, {50.0, 40.0, 70.0}),
               {26.048890549165208, 25.760985423602094, 13.392280575095187});
    expectNear(xyzOf(model, {50.0, 40.0, 110.0}),
               {22.791188054426836, 26.649477733373004, 14.365763399349005});
    expectNear(xyzOf(model, {50.0, 40.0, 160.0}),
               {21.046693284543746, 27.472264897856224, 24.179050044358224});
    expectNear(xyzOf(model, {50.0, 40.0, 180.0}), {21.27229833644163, 27.6142054769523, 29.388242665856787});
    expectNear(xyzOf(model, {50.0, 40.0, 200.0}),
               {22.038102318598455, 27.62135933676461, 34.801299180758626});
    expectNear(xyzOf(model, {50.0, 40.0, 250.0}), {25.36693399919965, 27.120689713311748, 44.95749422654034});
    expectNear(xyzOf(model, {50.0, 40.0, 290.0}),
               {28.280058871392004, 26.383931024841107, 46.451160631830675});
    expectNear(xyzOf(model, {50.0, 40.0, 340.0}),
               {29.968827013942374, 25.468136629401055, 34.67312717964922});
}

TEST(ciecam97s, toXyz_servesEverySurroundAndScene) {
    expectNear(xyzOf(Model(kA.data(), 1), {30.0, 25.0, 100.0}),
               {8.669671557974796, 8.085309215497567, 2.015830829542007});
    expectNear(xyzOf(Model(kA.data(), 2), {30.0, 25.0, 100.0}),
               {6.518128935520645, 6.092849852834703, 1.2402257518138848});
    Model model(kD65.data(), 0);
    expectNear(xyzOf(inScene(model, kDimmerWhite, 20.0, 18.0), {60.0, 35.0, 300.0}),
               {42.350978249796405, 36.64166505324119, 21.69073651938166});
}

TEST(ciecam97s, toXyz_countsHue90ToTheRightHalfOfTheCircle) {
    // 90 * 3.1415926535 / 180 is a little below the right angle, its tangent positive.
    const Model model(kD65.data(), 0);
    const Triple xyz = xyzOf(model, {50.0, 40.0, 90.0});
    expectNear(xyz, {24.34677410714501, 26.174139896565524, 12.320448333555214}, 1e-9);
    expectNear(xyz, xyzOf(model, {50.0, 40.0, 89.99999}), 1e-6);
}

TEST(ciecam97s, toXyz_countsHue270ToTheLeftHalfOfTheCircle) {
    const Model model(kD65.data(), 0);
    const Triple xyz = xyzOf(model, {50.0, 40.0, 270.0});
    expectNear(xyz, {26.893467209369863, 26.786665753922673, 47.01750178541134}, 1e-9);
    expectNear(xyz, xyzOf(model, {50.0, 40.0, 270.00001}), 1e-6);
}

TEST(ciecam97s, toXyz_reachesWithEccentricityBeyondTheCircle) {
    const Model model(kD65.data(), 0);
    // Below 0 the first segment goes on, and the half of the circle is that of h <= 90.
    expectNear(xyzOf(model, {50.0, 40.0, -20.0}),
               {29.968762820447154, 25.468150180885612, 34.67304544352837});
    expectNear(xyzOf(model, {50.0, 40.0, 380.0}),
               {29.25097811886645, 25.214464723866058, 22.239411968137354});
}

TEST(ciecam97s, toXyz_ofNoChromaIsTheSameGreyForEveryHue) {
    const Model model(kD65.data(), 0);
    const Triple grey = xyzOf(model, {50.0, 0.0, 0.0});
    expectNear(grey, {25.201610922288214, 26.508726990721033, 28.85176363048737});
    for (const double hue : {30.0, 45.0, 90.0, 135.0, 200.0, 225.0, 300.0, 359.0})
        EXPECT_EQ(xyzOf(model, {50.0, 0.0, hue}), grey) << hue;
}

TEST(ciecam97s, toXyz_ofNoLightnessIsNotANumber) {
    expectAllNan(xyzOf(Model(kD65.data(), 0), {0.0, 20.0, 30.0}));
    expectAllNan(xyzOf(Model(kD65.data(), 0), {0.0, 0.0, 30.0}));
}

TEST(ciecam97s, toXyz_ofNegativeLightnessOrChromaIsNotANumber) {
    expectAllNan(xyzOf(Model(kD65.data(), 0), {-1.0, 20.0, 30.0}));
    expectAllNan(xyzOf(Model(kD65.data(), 0), {50.0, -1.0, 30.0}));
}

TEST(ciecam97s, toXyz_ofADarkSaturatedColourHasNegativeZ) {
    // The compressed blue response is 0.74, below the 1 of no response.
    const Triple xyz = xyzOf(Model(kD65.data(), 0), {10.0, 60.0, 60.0});
    expectNear(xyz, {2.1121483565001054, 1.577107039943365, -0.2534803784919319}, 1e-11);
    EXPECT_LT(xyz[2], 0.0);
}

TEST(ciecam97s, inverse_givesGreenTheCoefficientOfRed) {
    const Model model(kD65.data(), 0);
    const Triple xyz = xyzOf(model, {50.0, 40.0, 70.0});
    // With 261 / 1403 = 0.18603, the coefficient that belongs there.
    const Triple repaired = {25.974175178816918, 25.80885458773502, 13.392125350613208};
    EXPECT_NEAR(xyz[1] - repaired[1], -0.0478691641329263, 1e-9);
    EXPECT_GT(std::fabs(xyz[1] - repaired[1]), 0.04);
}

TEST(ciecam97s, toXyz_doesNotReturnTheColour) {
    const Model model(kD65.data(), 0);
    const Triple back = xyzOf(model, jchOf(model, kPink));
    expectNear(back, {57.140539705412166, 43.01710669969621, 31.96125056918857}, 1e-11);
    // 57.1405, 43.0171, 31.9613: by the coefficient of green, the divisor of blue, and the digits of the
    // inverse.
    EXPECT_GT(back[0] - kPink[0], 0.08);
    EXPECT_LT(back[1] - kPink[1], -0.04);
    EXPECT_GT(back[2] - kPink[2], 0.001);
}

TEST(ciecam97s, toXyz_endsWithTheLastStages) {
    const Model model(kA.data(), 1);
    // Cone responses times FL of the colour, after the inverse compression.
    const Triple cones = {9.484945467030647, 9.302629424374826, 6.247651552916925};
    const Triple adapted = apply(&Model::MultiplyByMbMhInv, model, cones, 1.1675443249898576);
    expectNear(apply(&Model::MultiplyByMbInv, model, adapted), xyzOf(model, {30.0, 25.0, 100.0}), 1e-11);
}

// Null.

TEST(ciecam97s, nullTriples_areNotConvertedAndNotWritten) {
    const Model model(kD65.data(), 0);
    for (const Operation operation :
         {&Model::FromXYZ, &Model::ToXYZ, &Model::MultiplyByMb, &Model::MultiplyByDp,
          &Model::MultiplyPostAdaption, &Model::MultiplyByMbInv}) {
        Triple out = {1.0, 2.0, 3.0};
        EXPECT_EQ((model.*operation)(nullptr, out.data()), 0);
        EXPECT_EQ(out, (Triple{1.0, 2.0, 3.0}));
        EXPECT_EQ((model.*operation)(kPink.data(), nullptr), 0);
    }
    for (const OperationWithFactor operation : {&Model::MultiplyByMhMbInv, &Model::MultiplyByMbMhInv}) {
        Triple out = {1.0, 2.0, 3.0};
        EXPECT_EQ((model.*operation)(nullptr, out.data(), 1.0), 0);
        EXPECT_EQ(out, (Triple{1.0, 2.0, 3.0}));
        EXPECT_EQ((model.*operation)(kPink.data(), nullptr, 1.0), 0);
    }
}

TEST(ciecam97s, nullTriples_haveTheDifferenceMinusOne) {
    const Model model(kD65.data(), 0);
    EXPECT_EQ(model.CalcSquareDeltaEConverted(nullptr, kPink.data(), 0), -1.0);
    EXPECT_EQ(model.CalcSquareDeltaEConverted(kPink.data(), nullptr, 0), -1.0);
    EXPECT_EQ(model.CalcSquareDeltaE(nullptr, kPink.data(), 0), -1.0);
    EXPECT_EQ(model.CalcSquareDeltaE(kPink.data(), nullptr, 0), -1.0);
    EXPECT_EQ(model.CalcDeltaE(nullptr, kPink.data(), 0), -1.0);
    EXPECT_EQ(model.CalcDeltaE(kPink.data(), nullptr, 0), -1.0);
}

TEST(ciecam97s, nullWhite_isAnErrorOfTheConstructorAndNoScene) {
    EXPECT_EQ(Model(nullptr, 0).ErrNo(), -1);
    Model model(kD65.data(), 0);
    const Triple before = jchOf(model, kPink);
    EXPECT_EQ(model.InitializeScene(nullptr, 4.0, 60.0), 1);
    EXPECT_EQ(model.ErrNo(), 0);
    EXPECT_EQ(jchOf(model, kPink), before);
}

// Differences.

TEST(ciecam97s, differenceConverted_isEuclideanInLightnessAndTheTwoChromaAxes) {
    const Model model(kD65.data(), 0);
    const Triple jch1 = {50.0, 40.0, 20.0}, jch2 = {53.0, 35.0, 110.0};
    EXPECT_NEAR(model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), 0), 2833.9999998742896, 1e-9);
}

TEST(ciecam97s, differenceConverted_countsRadiansWithATenDigitPi) {
    // A million half circles of 3.1415926535 end 9e-5 before the whole circles do.
    const Model model(kD65.data(), 0);
    const Triple jch1 = {50.0, 1.0, 0.0}, jch2 = {50.0, 1.0, 1.8e8};
    EXPECT_NEAR(model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), 0), 8.0625e-9, 1e-11);
}

TEST(ciecam97s, differenceConverted_ignoresTheFunction) {
    const Model model(kD65.data(), 0);
    const Triple jch1 = {50.0, 40.0, 20.0}, jch2 = {53.0, 35.0, 110.0};
    const double square = model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), 0);
    for (const int function : {-1, 1, 4, 5, INT_MAX, INT_MIN})
        EXPECT_EQ(model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), function), square) << function;
}

TEST(ciecam97s, squareDifference_isThatOfTheConvertedColours) {
    const Model model(kD65.data(), 1);
    const Triple jch1 = jchOf(model, kPink), jch2 = jchOf(model, kTeal);
    EXPECT_EQ(model.CalcSquareDeltaE(kPink.data(), kTeal.data(), 0),
              model.CalcSquareDeltaEConverted(jch1.data(), jch2.data(), 0));
    EXPECT_NEAR(model.CalcSquareDeltaE(kPink.data(), kTeal.data(), 0), 17582.02213324162, 1e-8);
}

TEST(ciecam97s, deltaE_isTheSquare) {
    const Model model(kD65.data(), 0);
    const double square = model.CalcSquareDeltaE(kPink.data(), kTeal.data(), 0);
    ASSERT_GT(square, 2.0);
    EXPECT_EQ(model.CalcDeltaE(kPink.data(), kTeal.data(), 0), square);
    EXPECT_EQ(model.CalcDeltaE(kPink.data(), kTeal.data(), 7), square);
}

TEST(ciecam97s, difference_ofTheHandleIsTheRoot) {
    const TColorSpace handle(kD65.data(), 1);
    const Model model(kD65.data(), 0);
    EXPECT_DOUBLE_EQ(handle.CalcDeltaE(kPink.data(), kTeal.data(), 0),
                     std::sqrt(model.CalcDeltaE(kPink.data(), kTeal.data(), 0)));
}

// Tells what its operations were asked for.
class Recorder : public Model {
public:
    Recorder() : Model(kD65.data(), 0) {}

    double CalcSquareDeltaEConverted(const double* jch1, const double* jch2, int) const override {
        first = {jch1[0], jch1[1], jch1[2]};
        second = {jch2[0], jch2[1], jch2[2]};
        return -7.0;
    }

    mutable Triple first = {}, second = {};
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

TEST(ciecam97s, squareDifference_asksTheVirtualConvertedOne) {
    const Recorder model;
    EXPECT_EQ(model.CalcSquareDeltaE(kPink.data(), kTeal.data(), 3), -7.0);
    EXPECT_EQ(model.first, jchOf(model, kPink));
    EXPECT_EQ(model.second, jchOf(model, kTeal));
}

TEST(ciecam97s, difference_asksTheVirtualSquareForFunctionZero) {
    const SquareRecorder model;
    EXPECT_EQ(model.CalcDeltaE(kPink.data(), kTeal.data(), 3), -9.0);
    EXPECT_EQ(model.squareFunction, 0);
    EXPECT_EQ(model.first, kPink.data());
    EXPECT_EQ(model.second, kTeal.data());
}

TEST(ciecam97s, differenceFunctions_areOne) {
    ASSERT_EQ(Model::GetDifferenceFunctionListSize(), 1);
    EXPECT_STREQ(Model::GetDifferenceFunctionList()[0], "CIECAM97s Delta E");
}

} // namespace
