// CIELAB: the reference white, the conversions and the polar form.
#include "colorspace/tlabspace.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/reports.h"

namespace {

using qxcms::tests::Report;
using qxcms::tests::ReportCollector;
using Triple = std::array<double, 3>;

constexpr double kPi = 3.1415926535;
constexpr double kTwoPi = 6.283185307;
constexpr double kHalfPi = 1.57079632675;
constexpr double kThreeHalvesPi = 4.71238898025;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

const Triple kD50 = {96.422, 100.0, 82.521};
const Triple kD65TenDegree = {94.811, 100.0, 107.304};

const Report kWhiteRefused = {"Invalid XYZref values", "tlabspace", 162};

// Keeps the compiler from working out transcendental functions itself, which would round them differently.
double opaque(double value) {
    volatile double copy = value;
    return copy;
}

double power(double base, double exponent) {
    return std::pow(opaque(base), opaque(exponent));
}

double above(double value) {
    return std::nextafter(value, kInfinity);
}
double below(double value) {
    return std::nextafter(value, -kInfinity);
}

double linearF(double t) {
    return t * 7.787079 + 0.137931;
}
double statedF(double t) {
    return t <= 0.008856 ? linearF(t) : power(t, 0.33333333333333);
}

double linearInverse(double u) {
    return (u + (-0.137931)) / 7.787079;
}
double statedInverse(double u) {
    return u <= 0.206893 ? linearInverse(u) : power(u, 3.0);
}

Triple statedLab(const Triple& white, const Triple& xyz) {
    Triple f;
    for (std::size_t i = 0; i < 3; ++i)
        f[i] = statedF(xyz[i] < 0.0 ? 0.0 : xyz[i] / white[i]);
    return {116.0 * f[1] - 16.0, 500.0 * (f[0] - f[1]), 200.0 * (f[1] - f[2])};
}

Triple statedXyz(const Triple& white, const Triple& lab) {
    const double fy = (lab[0] + 16.0) / 116.0;
    const double fx = lab[1] / 500.0 + fy;
    const double fz = fy + lab[2] / (-200.0);
    Triple xyz = {white[0] * statedInverse(fx), white[1] * statedInverse(fy), white[2] * statedInverse(fz)};
    for (double& component : xyz) {
        if (component < 0.0)
            component = 0.0;
    }
    return xyz;
}

Triple labOf(const Triple& white, const Triple& xyz) {
    Triple lab = {kNan, kNan, kNan};
    EXPECT_EQ(TLabSpace(white.data()).XYZToLab(xyz.data(), lab.data()), 0);
    return lab;
}

Triple xyzOf(const Triple& white, const Triple& lab) {
    Triple xyz = {kNan, kNan, kNan};
    EXPECT_EQ(TLabSpace(white.data()).LabToXYZ(lab.data(), xyz.data()), 0);
    return xyz;
}

double hueOf(double a, double b) {
    const Triple lab = {50.0, a, b};
    return TLabSpace::CalculateHue(lab.data());
}

Triple lhcToLab(double l, double h, double c) {
    const Triple lhc = {l, h, c};
    Triple lab = {kNan, kNan, kNan};
    EXPECT_EQ(TLabSpace::LHCToLab(lhc.data(), lab.data()), 0);
    return lab;
}

Triple labToLhc(const Triple& lab) {
    Triple lhc = {kNan, kNan, kNan};
    EXPECT_EQ(TLabSpace::LabToLHC(lab.data(), lhc.data()), 0);
    return lhc;
}

// L* = 100 and no chroma give back the white itself, without rounding.
Triple storedWhite(const TLabSpace& space) {
    const Triple lightest = {100.0, 0.0, 0.0};
    Triple white = {kNan, kNan, kNan};
    EXPECT_EQ(space.LabToXYZ(lightest.data(), white.data()), 0);
    return white;
}

// Tristimulus values of ordinary, dark, saturated and overrange colours on a white near 100.
std::vector<Triple> manyColors() {
    std::vector<Triple> colors;
    for (const double x : {0.0, 0.01, 0.3, 0.85, 0.9, 5.0, 19.41, 47.3, 88.0, 120.0}) {
        for (const double y : {0.0, 0.02, 0.5, 0.88, 0.8857, 3.0, 28.41, 51.7, 99.9, 130.0}) {
            for (const double z : {0.0, 0.015, 0.4, 0.7, 0.95, 8.0, 11.5766, 63.2, 82.0, 140.0})
                colors.push_back({x, y, z});
        }
    }
    return colors;
}

// The reference white.

TEST(labSpace, white_ofPositiveComponentsIsUsable) {
    const ReportCollector reports;
    TLabSpace space(kD50.data());
    EXPECT_EQ(space.ErrNo(), 0);
    EXPECT_EQ(storedWhite(space), kD50);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(labSpace, white_isCopied) {
    Triple white = kD50;
    const TLabSpace space(white.data());
    white = {1.0, 2.0, 3.0};
    EXPECT_EQ(storedWhite(space), kD50);
}

TEST(labSpace, white_withNegativeYGivesError2OneReportAndAZeroY) {
    const ReportCollector reports;
    const Triple white = {95.0, -1.0, 108.0};
    TLabSpace space(white.data());
    EXPECT_EQ(space.ErrNo(), 2);
    EXPECT_EQ(storedWhite(space), (Triple{95.0, 0.0, 108.0}));
    EXPECT_EQ(reports.errors, std::vector<Report>{kWhiteRefused});
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(labSpace, white_withNegativeXGivesError2OneReportAndAZeroX) {
    const ReportCollector reports;
    const Triple white = {-0.5, 100.0, 108.0};
    TLabSpace space(white.data());
    EXPECT_EQ(space.ErrNo(), 2);
    EXPECT_EQ(storedWhite(space), (Triple{0.0, 100.0, 108.0}));
    EXPECT_EQ(reports.errors, std::vector<Report>{kWhiteRefused});
}

TEST(labSpace, white_withNegativeZGivesError2OneReportAndAZeroZ) {
    const ReportCollector reports;
    const Triple white = {95.0, 100.0, -108.0};
    TLabSpace space(white.data());
    EXPECT_EQ(space.ErrNo(), 2);
    EXPECT_EQ(storedWhite(space), (Triple{95.0, 100.0, 0.0}));
    EXPECT_EQ(reports.errors, std::vector<Report>{kWhiteRefused});
}

TEST(labSpace, white_withNegativeXAndYHasOnlyXZeroedAndReported) {
    const ReportCollector reports;
    const Triple white = {-1.0, -1.0, 108.0};
    TLabSpace space(white.data());
    EXPECT_EQ(space.ErrNo(), 2);
    EXPECT_EQ(reports.errors, std::vector<Report>{kWhiteRefused});
    // Y of the white still is -1: L* of Y = 50 comes from the ratio -50, on the linear branch.
    const Triple xyz = {0.0, 50.0, 54.0};
    Triple lab;
    EXPECT_EQ(space.XYZToLab(xyz.data(), lab.data()), 0);
    EXPECT_EQ(lab[0], 116.0 * linearF(-50.0) - 16.0);
}

TEST(labSpace, white_withNegativeYAndZHasOnlyYZeroedAndReported) {
    const ReportCollector reports;
    const Triple white = {95.0, -1.0, -1.0};
    TLabSpace space(white.data());
    EXPECT_EQ(space.ErrNo(), 2);
    EXPECT_EQ(reports.errors, std::vector<Report>{kWhiteRefused});
    // L* = -16 and b* = 200 lead to f = -1 for Z; a white of -1 makes that positive.
    const Triple lab = {-16.0, 0.0, 200.0};
    Triple xyz;
    EXPECT_EQ(space.LabToXYZ(lab.data(), xyz.data()), 0);
    EXPECT_EQ(xyz[2], -linearInverse(-1.0));
}

TEST(labSpace, white_ofTheSmallestNegativeNumberIsRefused) {
    const ReportCollector reports;
    const Triple white = {95.0, 100.0, -std::numeric_limits<double>::denorm_min()};
    TLabSpace space(white.data());
    EXPECT_EQ(space.ErrNo(), 2);
    EXPECT_EQ(reports.errors.size(), 1U);
}

TEST(labSpace, white_ofZerosIsAccepted) {
    const ReportCollector reports;
    const Triple zeros = {0.0, 0.0, 0.0};
    TLabSpace space(zeros.data());
    EXPECT_EQ(space.ErrNo(), 0);
    const Triple negativeZeros = {-0.0, -0.0, -0.0};
    TLabSpace negative(negativeZeros.data());
    EXPECT_EQ(negative.ErrNo(), 0);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(labSpace, white_thatIsNotANumberIsNotNegative) {
    const ReportCollector reports;
    const Triple white = {95.0, kNan, 108.0};
    TLabSpace space(white.data());
    EXPECT_EQ(space.ErrNo(), 0);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(labSpace, white_thatIsNotANumberDoesNotEndTheCheck) {
    const ReportCollector reports;
    const Triple white = {kNan, -1.0, 108.0};
    TLabSpace space(white.data());
    EXPECT_EQ(space.ErrNo(), 2);
    EXPECT_EQ(storedWhite(space)[1], 0.0);
    EXPECT_EQ(storedWhite(space)[2], 108.0);
    EXPECT_EQ(reports.errors, std::vector<Report>{kWhiteRefused});
}

TEST(labSpace, white_ofMinusInfinityIsRefusedAndOfInfinityTaken) {
    const ReportCollector reports;
    const Triple negative = {95.0, 100.0, -kInfinity};
    TLabSpace refused(negative.data());
    EXPECT_EQ(refused.ErrNo(), 2);
    EXPECT_EQ(storedWhite(refused)[2], 0.0);
    EXPECT_EQ(reports.errors, std::vector<Report>{kWhiteRefused});
    const Triple positive = {95.0, kInfinity, 108.0};
    TLabSpace taken(positive.data());
    EXPECT_EQ(taken.ErrNo(), 0);
    EXPECT_EQ(reports.errors.size(), 1U);
}

TEST(labSpace, white_ofNullGivesError2WithoutAReport) {
    const ReportCollector reports;
    TLabSpace space(nullptr);
    EXPECT_EQ(space.ErrNo(), 2);
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(labSpace, white_thatWasRefusedStillConvertsWithTheZeroedComponent) {
    const ReportCollector reports;
    const Triple white = {95.0, -1.0, 108.0};
    const TLabSpace space(white.data());
    const Triple xyz = {19.0, 20.0, 21.6};
    Triple lab;
    EXPECT_EQ(space.XYZToLab(xyz.data(), lab.data()), 0);
    EXPECT_EQ(lab[0], kInfinity);
    Triple back;
    const Triple grey = {50.0, 0.0, 0.0};
    EXPECT_EQ(space.LabToXYZ(grey.data(), back.data()), 0);
    const Triple zeroed = {95.0, 0.0, 108.0};
    EXPECT_EQ(back, statedXyz(zeroed, grey));
}

// f and its inverse.

TEST(labSpace, f_isLinearUpToItsThreshold) {
    for (const double t : {-50.0, -0.5, 0.0, 1e-300, 0.001, 0.004428, below(0.008856), 0.008856})
        EXPECT_EQ(TLabSpace::FLab(t), t * 7.787079 + 0.137931) << t;
}

TEST(labSpace, f_atExactlyItsThresholdIsLinear) {
    // The branches differ there by about a millionth, so that the side shows.
    ASSERT_NE(linearF(0.008856), power(0.008856, 0.33333333333333));
    EXPECT_EQ(TLabSpace::FLab(0.008856), 0.008856 * 7.787079 + 0.137931);
}

TEST(labSpace, f_aboveItsThresholdIsAPower) {
    for (const double t : {above(0.008856), 0.0089, 0.05, 0.18, 0.5, 1.0, 1.2, 8.0, 1000.0})
        EXPECT_EQ(TLabSpace::FLab(t), power(t, 0.33333333333333)) << t;
}

TEST(labSpace, f_usesTheFourteenDigitExponentRatherThanTheCubeRoot) {
    // 1000^0.33333333333333 = 10 * exp(-ln(1000) / 3e14): 2.3e-13 below 10.
    EXPECT_NEAR(10.0 - TLabSpace::FLab(1000.0), 2.3e-13, 2e-14);
}

TEST(labSpace, f_ofOneIsOne) {
    EXPECT_EQ(TLabSpace::FLab(1.0), 1.0);
}

TEST(labSpace, f_passesInfinityAndNotANumberOn) {
    EXPECT_EQ(TLabSpace::FLab(kInfinity), kInfinity);
    EXPECT_EQ(TLabSpace::FLab(-kInfinity), -kInfinity);
    EXPECT_TRUE(std::isnan(TLabSpace::FLab(kNan)));
}

TEST(labSpace, inverseF_isLinearUpToItsThreshold) {
    for (const double u : {-3.0, -0.2, 0.0, 0.1, 0.137931, 0.2, below(0.206893), 0.206893})
        EXPECT_EQ(TLabSpace::Fm1Lab(u), (u + (-0.137931)) / 7.787079) << u;
}

TEST(labSpace, inverseF_atExactlyItsThresholdIsLinear) {
    ASSERT_NE(linearInverse(0.206893), power(0.206893, 3.0));
    EXPECT_EQ(TLabSpace::Fm1Lab(0.206893), (0.206893 + (-0.137931)) / 7.787079);
}

TEST(labSpace, inverseF_aboveItsThresholdIsTheThirdPower) {
    for (const double u : {above(0.206893), 0.21, 0.3, 0.57, 0.9, 1.1, 2.7})
        EXPECT_EQ(TLabSpace::Fm1Lab(u), power(u, 3.0)) << u;
    EXPECT_EQ(TLabSpace::Fm1Lab(0.5), 0.125);
    EXPECT_EQ(TLabSpace::Fm1Lab(2.0), 8.0);
}

TEST(labSpace, inverseF_ofTheOffsetIsZero) {
    EXPECT_EQ(TLabSpace::Fm1Lab(0.137931), 0.0);
}

// XYZ to Lab.

TEST(labSpace, lab_ofTheWhiteIs100AndNeutral) {
    const Triple lab = labOf(kD50, kD50);
    EXPECT_DOUBLE_EQ(lab[0], 116.0 * power(1.0, 0.33333333333333) - 16.0);
    EXPECT_DOUBLE_EQ(lab[0], 100.0);
    EXPECT_EQ(lab[1], 0.0);
    EXPECT_EQ(lab[2], 0.0);
}

TEST(labSpace, lab_ofBlackIsAHairBelowZeroAndNeutral) {
    const Triple lab = labOf(kD50, {0.0, 0.0, 0.0});
    EXPECT_EQ(lab[0], 116.0 * 0.137931 - 16.0);
    EXPECT_NEAR(lab[0], -0.000004, 1e-12);
    EXPECT_EQ(lab[1], 0.0);
    EXPECT_EQ(lab[2], 0.0);
}

TEST(labSpace, lab_followsTheFormulaInItsOrder) {
    for (const Triple& white : {kD50, kD65TenDegree}) {
        for (const Triple& xyz : manyColors())
            ASSERT_EQ(labOf(white, xyz), statedLab(white, xyz)) << xyz[0] << ' ' << xyz[1] << ' ' << xyz[2];
    }
}

TEST(labSpace, lab_ofYAtTheThresholdIsLinear) {
    const Triple unit = {1.0, 1.0, 1.0};
    EXPECT_EQ(labOf(unit, {0.5, 0.008856, 0.5})[0], 116.0 * linearF(0.008856) - 16.0);
    EXPECT_EQ(labOf(unit, {0.5, above(0.008856), 0.5})[0],
              116.0 * power(above(0.008856), 0.33333333333333) - 16.0);
}

TEST(labSpace, lab_ofEighthsIsHandCalculated) {
    // Ratios 1/8, 1 and 1/64 have the cube roots 1/2, 1 and 1/4.
    const Triple lab = labOf({80.0, 100.0, 64.0}, {10.0, 100.0, 1.0});
    EXPECT_NEAR(lab[0], 100.0, 1e-11);
    EXPECT_NEAR(lab[1], -250.0, 1e-11);
    EXPECT_NEAR(lab[2], 150.0, 1e-11);
}

TEST(labSpace, lab_ofANegativeComponentIsThatOfZero) {
    const Triple xyz = {19.41, 28.41, 11.5766};
    for (std::size_t i = 0; i < 3; ++i) {
        Triple zero = xyz;
        zero[i] = 0.0;
        for (const double negative : {-1e-300, -0.5, -40.0, -kInfinity}) {
            Triple changed = xyz;
            changed[i] = negative;
            EXPECT_EQ(labOf(kD50, changed), labOf(kD50, zero)) << i << ' ' << negative;
        }
    }
}

TEST(labSpace, lab_ofANegativeComponentHasTheRatioZeroAlsoOnAZeroWhite) {
    const Triple lab = labOf({0.0, 100.0, 100.0}, {-1.0, 100.0, 100.0});
    EXPECT_EQ(lab[1], 500.0 * (0.137931 - 1.0));
}

TEST(labSpace, lab_onAZeroWhiteDividesByZero) {
    const Triple infinite = labOf({0.0, 100.0, 100.0}, {50.0, 100.0, 100.0});
    EXPECT_EQ(infinite[0], 100.0);
    EXPECT_EQ(infinite[1], kInfinity);
    EXPECT_EQ(infinite[2], 0.0);
    const Triple undefined = labOf({0.0, 100.0, 100.0}, {0.0, 100.0, 100.0});
    EXPECT_EQ(undefined[0], 100.0);
    EXPECT_TRUE(std::isnan(undefined[1]));
    EXPECT_EQ(undefined[2], 0.0);
}

TEST(labSpace, lab_ofAComponentThatIsNotANumberIsNone) {
    const Triple x = labOf(kD50, {kNan, 28.41, 11.5766});
    EXPECT_EQ(x[0], labOf(kD50, {19.41, 28.41, 11.5766})[0]);
    EXPECT_TRUE(std::isnan(x[1]));
    EXPECT_EQ(x[2], labOf(kD50, {19.41, 28.41, 11.5766})[2]);
    const Triple y = labOf(kD50, {19.41, kNan, 11.5766});
    for (const double coordinate : y)
        EXPECT_TRUE(std::isnan(coordinate));
    const Triple z = labOf(kD50, {19.41, 28.41, kNan});
    EXPECT_FALSE(std::isnan(z[0]));
    EXPECT_FALSE(std::isnan(z[1]));
    EXPECT_TRUE(std::isnan(z[2]));
}

TEST(labSpace, lab_ofAnInfiniteComponentIsInfinite) {
    EXPECT_EQ(labOf(kD50, {kInfinity, 28.41, 11.5766})[1], kInfinity);
    EXPECT_EQ(labOf(kD50, {19.41, kInfinity, 11.5766})[0], kInfinity);
    EXPECT_EQ(labOf(kD50, {19.41, 28.41, kInfinity})[2], -kInfinity);
}

// Lab to XYZ.

TEST(labSpace, xyz_ofLabThatIsNotANumberIsNoneRatherThanZero) {
    const Triple ordinary = xyzOf(kD50, {50.0, 10.0, 20.0});
    const Triple a = xyzOf(kD50, {50.0, kNan, 20.0});
    EXPECT_TRUE(std::isnan(a[0]));
    EXPECT_EQ(a[1], ordinary[1]);
    EXPECT_EQ(a[2], ordinary[2]);
    const Triple b = xyzOf(kD50, {50.0, 10.0, kNan});
    EXPECT_EQ(b[0], ordinary[0]);
    EXPECT_EQ(b[1], ordinary[1]);
    EXPECT_TRUE(std::isnan(b[2]));
    const Triple l = xyzOf(kD50, {kNan, 10.0, 20.0});
    for (const double component : l)
        EXPECT_TRUE(std::isnan(component));
}

TEST(labSpace, xyz_ofTheLightestNeutralIsTheWhite) {
    EXPECT_EQ(xyzOf(kD50, {100.0, 0.0, 0.0}), kD50);
}

TEST(labSpace, xyz_followsTheFormulaInItsOrder) {
    for (const Triple& white : {kD50, kD65TenDegree}) {
        for (const double l : {-5.0, 0.0, 3.0, 7.9996, 8.0, 33.3, 50.0, 77.7, 100.0, 110.0}) {
            for (const double a : {-128.0, -40.1, -1.7, 0.0, 0.3, 25.0, 128.0}) {
                for (const double b : {-128.0, -33.3, -0.9, 0.0, 1.1, 60.6, 128.0}) {
                    const Triple lab = {l, a, b};
                    ASSERT_EQ(xyzOf(white, lab), statedXyz(white, lab)) << l << ' ' << a << ' ' << b;
                }
            }
        }
    }
}

TEST(labSpace, xyz_atExactlyTheInverseThresholdIsLinear) {
    // L* = 116 u - 16 leads back to exactly u for this u, which the first line makes sure of.
    const double l = 116.0 * 0.206893 - 16.0;
    ASSERT_EQ((l + 16.0) / 116.0, 0.206893);
    EXPECT_EQ(xyzOf({100.0, 100.0, 100.0}, {l, 0.0, 0.0})[1], 100.0 * linearInverse(0.206893));
}

TEST(labSpace, xyz_thatComesOutNegativeBecomesZero) {
    const Triple negativeX = xyzOf(kD50, {50.0, -400.0, 0.0});
    EXPECT_EQ(negativeX[0], 0.0);
    EXPECT_FALSE(std::signbit(negativeX[0]));
    EXPECT_GT(negativeX[1], 0.0);
    EXPECT_GT(negativeX[2], 0.0);

    const Triple negativeY = xyzOf(kD50, {-10.0, 100.0, -100.0});
    EXPECT_GT(negativeY[0], 0.0);
    EXPECT_EQ(negativeY[1], 0.0);
    EXPECT_FALSE(std::signbit(negativeY[1]));
    EXPECT_GT(negativeY[2], 0.0);

    const Triple negativeZ = xyzOf(kD50, {50.0, 0.0, 150.0});
    EXPECT_GT(negativeZ[0], 0.0);
    EXPECT_GT(negativeZ[1], 0.0);
    EXPECT_EQ(negativeZ[2], 0.0);
    EXPECT_FALSE(std::signbit(negativeZ[2]));
}

TEST(labSpace, xyz_comesBackFromLab) {
    double worst = 0.0;
    for (const Triple& xyz : manyColors()) {
        const Triple back = xyzOf(kD50, labOf(kD50, xyz));
        for (std::size_t i = 0; i < 3; ++i)
            worst = std::max(worst, std::fabs(back[i] - xyz[i]));
    }
    EXPECT_LT(worst, 1e-9);
}

// From white to white in Lab.

TEST(labSpace, labToLab_onTheSameWhiteChangesNothing) {
    const TLabSpace space(kD50.data());
    const Triple lab = {47.3, -21.9, 63.1};
    Triple out;
    EXPECT_EQ(space.LabToLab(lab.data(), out.data(), kD50.data()), 0);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(out[i], lab[i], 1e-12) << i;
}

TEST(labSpace, labToLab_ofTheWhiteIsHandCalculated) {
    // 100/800, 100/100 and 100/12.5 have the cube roots 1/2, 1 and 2.
    const Triple white = {100.0, 100.0, 100.0};
    const Triple newWhite = {800.0, 100.0, 12.5};
    const Triple lab = {100.0, 0.0, 0.0};
    Triple out;
    EXPECT_EQ(TLabSpace(white.data()).LabToLab(lab.data(), out.data(), newWhite.data()), 0);
    EXPECT_NEAR(out[0], 100.0, 1e-11);
    EXPECT_NEAR(out[1], -250.0, 1e-11);
    EXPECT_NEAR(out[2], -200.0, 1e-11);
}

TEST(labSpace, labToLab_ofAColorIsHandCalculated) {
    // f of the colour: 0.6, 0.5 and 0.4; of the whites: 0.5, 2 and 2.
    const Triple white = {100.0, 100.0, 100.0};
    const Triple newWhite = {800.0, 12.5, 12.5};
    const Triple lab = {42.0, 50.0, 20.0};
    Triple out;
    EXPECT_EQ(TLabSpace(white.data()).LabToLab(lab.data(), out.data(), newWhite.data()), 0);
    EXPECT_NEAR(out[0], 100.0, 1e-11);
    EXPECT_NEAR(out[1], -350.0, 1e-11);
    EXPECT_NEAR(out[2], 40.0, 1e-11);
}

TEST(labSpace, labToLab_followsTheFormulaInItsOrder) {
    const TLabSpace space(kD50.data());
    for (const Triple& newWhite : {kD65TenDegree, Triple{109.85, 100.0, 35.585}, Triple{1e5, 2e5, 3e5}}) {
        const double rX = statedF(kD50[0] / newWhite[0]);
        const double rY = statedF(kD50[1] / newWhite[1]);
        const double rZ = statedF(kD50[2] / newWhite[2]);
        for (const double l : {-3.0, 0.0, 4.4, 31.7, 66.6, 99.1}) {
            for (const double a : {-71.3, -0.4, 0.0, 12.9, 88.8}) {
                for (const double b : {-65.1, -0.7, 0.0, 17.3, 91.9}) {
                    const Triple lab = {l, a, b};
                    const double fy = (l + 16.0) / 116.0;
                    const double fx = a / 500.0 + fy;
                    const double fz = fy - b / 200.0;
                    const Triple expected = {116.0 * fy * rY - 16.0, 500.0 * (rX * fx - rY * fy),
                                             200.0 * (rY * fy - rZ * fz)};
                    Triple out;
                    ASSERT_EQ(space.LabToLab(lab.data(), out.data(), newWhite.data()), 0);
                    ASSERT_EQ(out, expected) << l << ' ' << a << ' ' << b;
                }
            }
        }
    }
}

TEST(labSpace, labToLab_takesSmallRatiosOfWhitesFromTheLinearBranch) {
    const Triple white = {1.0, 1.0, 1.0};
    const Triple newWhite = {1000.0, 1000.0, 1000.0};
    const Triple lab = {100.0, 0.0, 0.0};
    Triple out;
    EXPECT_EQ(TLabSpace(white.data()).LabToLab(lab.data(), out.data(), newWhite.data()), 0);
    EXPECT_DOUBLE_EQ(out[0], 116.0 * linearF(0.001) - 16.0);
}

TEST(labSpace, labToLab_doesNotClampNegativeRatios) {
    const Triple white = {100.0, 100.0, 100.0};
    const Triple newWhite = {-100.0, 100.0, 100.0};
    const Triple lab = {100.0, 0.0, 0.0};
    Triple out;
    EXPECT_EQ(TLabSpace(white.data()).LabToLab(lab.data(), out.data(), newWhite.data()), 0);
    EXPECT_EQ(out[1], 500.0 * (linearF(-1.0) - 1.0));
}

TEST(labSpace, labToLab_equalsTheWayThroughXyzForLightColors) {
    const Triple lab = {62.0, 31.0, -24.0};
    const Triple expected = labOf(kD65TenDegree, xyzOf(kD50, lab));
    Triple out;
    EXPECT_EQ(TLabSpace(kD50.data()).LabToLab(lab.data(), out.data(), kD65TenDegree.data()), 0);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(out[i], expected[i], 1e-9) << i;
}

TEST(labSpace, labToLab_departsFromTheWayThroughXyzForDarkColors) {
    // On purpose: the linear branch is not treated separately.
    const Triple lab = {3.0, 1.0, -2.0};
    const Triple throughXyz = labOf(kD65TenDegree, xyzOf(kD50, lab));
    Triple out;
    EXPECT_EQ(TLabSpace(kD50.data()).LabToLab(lab.data(), out.data(), kD65TenDegree.data()), 0);
    EXPECT_GT(std::fabs(out[2] - throughXyz[2]), 0.5);
}

// The hue angle.

TEST(labSpace, hue_onTheAxes) {
    EXPECT_EQ(hueOf(5.0, 0.0), 0.0);
    EXPECT_EQ(hueOf(0.0, 5.0), 1.57079632675);
    EXPECT_EQ(hueOf(-1.0, 0.0), 3.1415926535);
    EXPECT_EQ(hueOf(0.0, -5.0), -1.57079632675);
}

TEST(labSpace, hue_ofNeutralIsARightAngle) {
    EXPECT_EQ(hueOf(0.0, 0.0), kHalfPi);
    EXPECT_EQ(hueOf(0.0, -0.0), kHalfPi);
    EXPECT_EQ(hueOf(-0.0, 0.0), kHalfPi);
}

TEST(labSpace, hue_inTheFourQuadrants) {
    EXPECT_EQ(hueOf(3.0, 4.0), std::atan(opaque(4.0 / 3.0)));
    EXPECT_EQ(hueOf(-3.0, 4.0), std::atan(opaque(4.0 / -3.0)) + kPi);
    EXPECT_EQ(hueOf(-3.0, -4.0), std::atan(opaque(-4.0 / -3.0)) + kPi);
    EXPECT_EQ(hueOf(3.0, -4.0), std::atan(opaque(-4.0 / 3.0)) + kTwoPi);
}

TEST(labSpace, hue_ofATinyNegativeAIsTurnedByTheTenDigitPi) {
    EXPECT_EQ(hueOf(-1e-21, 5.0), kHalfPi + kPi);
    EXPECT_EQ(hueOf(-1e-21, 0.0), kHalfPi + kPi);
    EXPECT_EQ(hueOf(-1e-21, -5.0), -kHalfPi + kPi);
}

TEST(labSpace, hue_ofATinyPositiveAFollowsTheSignOfB) {
    EXPECT_EQ(hueOf(1e-21, 5.0), kHalfPi);
    EXPECT_EQ(hueOf(1e-21, 0.0), kHalfPi);
    EXPECT_EQ(hueOf(1e-21, -5.0), -kHalfPi + kTwoPi);
}

TEST(labSpace, hue_guardEndsBelow1eMinus20) {
    EXPECT_EQ(hueOf(below(1e-20), 1e-20), kHalfPi);
    EXPECT_EQ(hueOf(1e-20, 1e-20), std::atan(opaque(1.0)));
    EXPECT_EQ(hueOf(-1e-20, 1e-20), std::atan(opaque(-1.0)) + kPi);
    EXPECT_EQ(hueOf(above(-1e-20), 1e-20), kHalfPi + kPi);
}

TEST(labSpace, hue_withoutAnAStarPointsDownUnlessBIsPositiveOrZero) {
    EXPECT_EQ(hueOf(0.0, kNan), -kHalfPi);
    EXPECT_EQ(hueOf(-1e-21, kNan), -kHalfPi + kPi);
    // Nothing is added for a b* that is not negative.
    EXPECT_EQ(hueOf(1e-21, kNan), -kHalfPi);
}

TEST(labSpace, hue_ofWhatIsNotANumberIsNone) {
    EXPECT_TRUE(std::isnan(hueOf(kNan, 5.0)));
    EXPECT_TRUE(std::isnan(hueOf(5.0, kNan)));
    EXPECT_TRUE(std::isnan(hueOf(-5.0, kNan)));
}

TEST(labSpace, hue_doesNotDependOnLightness) {
    for (const double l : {-10.0, 0.0, 50.0, kInfinity}) {
        const Triple lab = {l, -12.0, 7.0};
        EXPECT_EQ(TLabSpace::CalculateHue(lab.data()), hueOf(-12.0, 7.0)) << l;
    }
}

TEST(labSpace, hue_followsTheCircle) {
    for (int degree = 1; degree < 360; ++degree) {
        if (degree == 90 || degree == 270)
            continue;
        const double h = degree * std::acos(-1.0) / 180.0;
        EXPECT_NEAR(hueOf(20.0 * std::cos(h), 20.0 * std::sin(h)), h, 1e-9) << degree;
    }
}

// The polar form.

TEST(labSpace, labToLhc_isHandCalculated) {
    const Triple lhc = labToLhc({61.5, 3.0, 4.0});
    EXPECT_EQ(lhc[0], 61.5);
    EXPECT_NEAR(lhc[1], 0.9272952180016122, 1e-15);
    EXPECT_EQ(lhc[2], 5.0);
}

TEST(labSpace, labToLhc_takesHueAndChromaByTheirFormulas) {
    for (const double a : {-64.3, -1e-21, 0.0, 1e-21, 0.7, 33.3}) {
        for (const double b : {-71.9, -0.2, 0.0, 5.5, 80.1}) {
            const Triple lhc = labToLhc({12.25, a, b});
            EXPECT_EQ(lhc[0], 12.25);
            EXPECT_EQ(lhc[1], hueOf(a, b)) << a << ' ' << b;
            EXPECT_EQ(lhc[2], std::sqrt(a * a + b * b)) << a << ' ' << b;
        }
    }
}

TEST(labSpace, lhcToLab_reachesEveryHueInHundredthsOfADegree) {
    double worst = 0.0;
    for (int i = 0; i <= 36000; ++i) {
        const double h = i * kPi / 18000.0;
        const Triple lab = lhcToLab(50.0, h, 1.0);
        ASSERT_EQ(lab[0], 50.0);
        worst = std::max({worst, std::fabs(lab[1] - std::cos(h)), std::fabs(lab[2] - std::sin(h))});
    }
    // The angle constants have ten digits.
    EXPECT_LT(worst, 1e-9);
}

TEST(labSpace, lhc_comesBackFromEveryHueInHundredthsOfADegree) {
    double worstHue = 0.0;
    double worstChroma = 0.0;
    for (int i = 0; i <= 36000; ++i) {
        const double h = i * kPi / 18000.0;
        const Triple lhc = labToLhc(lhcToLab(50.0, h, 40.0));
        ASSERT_EQ(lhc[0], 50.0);
        worstHue = std::max(worstHue, std::fabs(lhc[1] - h));
        worstChroma = std::max(worstChroma, std::fabs(lhc[2] - 40.0));
    }
    EXPECT_LT(worstHue, 1e-9);
    EXPECT_LT(worstChroma, 1e-12);
}

TEST(labSpace, lhcToLab_formsTheProductOfTangentAndChromaFirst) {
    int telling = 0;
    for (int i = 1; i < 9000; i += 7) {
        const double h = i * kPi / 18000.0;
        const double c = 37.7;
        const double t = std::fabs(std::tan(opaque(h)));
        const double d = std::sqrt(t * t + 1.0);
        const Triple lab = lhcToLab(20.0, h, c);
        ASSERT_EQ(lab[1], c / d) << i;
        ASSERT_EQ(lab[2], t * c / d) << i;
        telling += t * c / d != t * (c / d) ? 1 : 0;
    }
    EXPECT_GT(telling, 100);
}

TEST(labSpace, lhcToLab_negatesAStrictlyBetweenTheRightAngles) {
    EXPECT_GT(lhcToLab(50.0, kHalfPi, 10.0)[1], 0.0);
    EXPECT_LT(lhcToLab(50.0, above(kHalfPi), 10.0)[1], 0.0);
    EXPECT_LT(lhcToLab(50.0, below(kThreeHalvesPi), 10.0)[1], 0.0);
    EXPECT_GT(lhcToLab(50.0, kThreeHalvesPi, 10.0)[1], 0.0);
}

TEST(labSpace, lhcToLab_negatesBStrictlyAbovePi) {
    EXPECT_GT(lhcToLab(50.0, kPi, 10.0)[2], 0.0);
    EXPECT_LT(lhcToLab(50.0, above(kPi), 10.0)[2], 0.0);
}

TEST(labSpace, lhcToLab_doesNotReduceHuesOutsideTheCircle) {
    const Triple negative = lhcToLab(50.0, -0.5, 10.0);
    EXPECT_NEAR(negative[1], 10.0 * std::cos(0.5), 1e-12);
    EXPECT_NEAR(negative[2], 10.0 * std::sin(0.5), 1e-12);
    const Triple beyond = lhcToLab(50.0, kTwoPi + 0.5, 10.0);
    EXPECT_NEAR(beyond[1], 10.0 * std::cos(0.5), 1e-8);
    EXPECT_NEAR(beyond[2], -10.0 * std::sin(0.5), 1e-8);
}

TEST(labSpace, lhcToLab_ofNoChromaIsNeutral) {
    const Triple lab = lhcToLab(33.0, 4.0, 0.0);
    EXPECT_EQ(lab, (Triple{33.0, 0.0, 0.0}));
}

TEST(labSpace, xyzToLhc_isTheWayThroughLab) {
    const TLabSpace space(kD50.data());
    for (Triple xyz : {Triple{19.41, 28.41, 11.5766}, Triple{-1.0, 5.0, 6.0}, Triple{4.96, 3.72, 19.59},
                       Triple{0.1, 0.2, 0.05}, kD50, Triple{0.0, 0.0, 0.0}}) {
        const Triple expected = labToLhc(labOf(kD50, xyz));
        Triple lhc;
        EXPECT_EQ(space.XYZToLHC(xyz.data(), lhc.data()), 0);
        EXPECT_EQ(lhc, expected) << xyz[0];
    }
}

TEST(labSpace, xyzToLhc_ofTheWhiteHasARightAngleAndNoChroma) {
    Triple lhc;
    EXPECT_EQ(TLabSpace(kD50.data()).XYZToLHC(kD50.data(), lhc.data()), 0);
    EXPECT_DOUBLE_EQ(lhc[0], 100.0);
    EXPECT_EQ(lhc[1], kHalfPi);
    EXPECT_EQ(lhc[2], 0.0);
}

TEST(labSpace, lhcToXyz_isTheWayThroughLab) {
    const TLabSpace space(kD50.data());
    for (const double l : {5.0, 40.0, 90.0}) {
        for (const double h : {0.0, 0.9, 2.2, 3.9, 5.8}) {
            for (const double c : {0.0, 21.0, 130.0}) {
                const Triple lhc = {l, h, c};
                Triple xyz;
                EXPECT_EQ(space.LHCToXYZ(lhc.data(), xyz.data()), 0);
                EXPECT_EQ(xyz, xyzOf(kD50, lhcToLab(l, h, c))) << l << ' ' << h << ' ' << c;
            }
        }
    }
}

TEST(labSpace, lhcToXyz_setsNegativeResultsToZero) {
    const Triple lhc = {50.0, kPi, 400.0};
    Triple xyz;
    EXPECT_EQ(TLabSpace(kD50.data()).LHCToXYZ(lhc.data(), xyz.data()), 0);
    EXPECT_EQ(xyz[0], 0.0);
    EXPECT_GT(xyz[1], 0.0);
}

TEST(labSpace, squareSaturation_isTheSquaredChroma) {
    const TLabSpace space(kD50.data());
    for (const Triple& xyz : manyColors()) {
        const Triple lab = labOf(kD50, xyz);
        double square = kNan;
        ASSERT_EQ(space.GetSqSat(xyz.data(), &square), 0);
        ASSERT_EQ(square, lab[1] * lab[1] + lab[2] * lab[2]);
    }
}

TEST(labSpace, squareSaturation_isHandCalculated) {
    // a* = -250 and b* = 150, see lab_ofEighthsIsHandCalculated.
    const Triple white = {80.0, 100.0, 64.0};
    const Triple xyz = {10.0, 100.0, 1.0};
    double square = kNan;
    EXPECT_EQ(TLabSpace(white.data()).GetSqSat(xyz.data(), &square), 0);
    EXPECT_NEAR(square, 85000.0, 1e-8);
}

// White-point mapping through Lab.

TEST(labSpace, whiteMapping_takesTheOneWhiteToTheOther) {
    const ReportCollector reports;
    Triple xyz = kD50;
    EXPECT_EQ(TLabSpace::XYZToLabToXYZ(kD50.data(), kD65TenDegree.data(), xyz.data()), 0);
    EXPECT_EQ(xyz, kD65TenDegree);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(labSpace, whiteMapping_isBothConversionsInPlace) {
    for (const Triple& xyz : manyColors()) {
        const Triple expected = statedXyz(kD65TenDegree, statedLab(kD50, xyz));
        Triple mapped = xyz;
        ASSERT_EQ(TLabSpace::XYZToLabToXYZ(kD50.data(), kD65TenDegree.data(), mapped.data()), 0);
        ASSERT_EQ(mapped, expected) << xyz[0] << ' ' << xyz[1] << ' ' << xyz[2];
    }
}

TEST(labSpace, whiteMapping_scalesEachComponentByItsWhites) {
    Triple xyz = {10.0, 50.0, 32.0};
    const Triple from = {80.0, 100.0, 64.0};
    const Triple to = {160.0, 50.0, 64.0};
    EXPECT_EQ(TLabSpace::XYZToLabToXYZ(from.data(), to.data(), xyz.data()), 0);
    EXPECT_NEAR(xyz[0], 20.0, 1e-11);
    EXPECT_NEAR(xyz[1], 25.0, 1e-11);
    EXPECT_NEAR(xyz[2], 32.0, 1e-11);
}

TEST(labSpace, whiteMapping_setsNegativeComponentsToZero) {
    Triple xyz = {-5.0, 50.0, 32.0};
    EXPECT_EQ(TLabSpace::XYZToLabToXYZ(kD50.data(), kD65TenDegree.data(), xyz.data()), 0);
    EXPECT_FALSE(std::signbit(xyz[0]));
    EXPECT_NEAR(xyz[0], 0.0, 1e-12);
}

TEST(labSpace, whiteMapping_reportsEachBadWhite) {
    const Triple badWhite = {95.0, 100.0, -1.0};
    {
        const ReportCollector reports;
        Triple xyz = {10.0, 50.0, 32.0};
        EXPECT_EQ(TLabSpace::XYZToLabToXYZ(badWhite.data(), kD50.data(), xyz.data()), 0);
        EXPECT_EQ(reports.errors, std::vector<Report>{kWhiteRefused});
    }
    {
        const ReportCollector reports;
        Triple xyz = {10.0, 50.0, 32.0};
        EXPECT_EQ(TLabSpace::XYZToLabToXYZ(kD50.data(), badWhite.data(), xyz.data()), 0);
        EXPECT_EQ(reports.errors, std::vector<Report>{kWhiteRefused});
        EXPECT_EQ(xyz[2], 0.0);
    }
    {
        const ReportCollector reports;
        Triple xyz = {10.0, 50.0, 32.0};
        EXPECT_EQ(TLabSpace::XYZToLabToXYZ(badWhite.data(), badWhite.data(), xyz.data()), 0);
        EXPECT_EQ(reports.errors, (std::vector<Report>{kWhiteRefused, kWhiteRefused}));
    }
}

TEST(labSpace, whiteMapping_mayRunOnTheWhiteItself) {
    Triple white = kD50;
    EXPECT_EQ(TLabSpace::XYZToLabToXYZ(white.data(), kD65TenDegree.data(), white.data()), 0);
    EXPECT_EQ(white, kD65TenDegree);
    Triple target = kD65TenDegree;
    EXPECT_EQ(TLabSpace::XYZToLabToXYZ(kD50.data(), target.data(), target.data()), 0);
    EXPECT_EQ(target, statedXyz(kD65TenDegree, statedLab(kD50, kD65TenDegree)));
}

// One array for input and output.

TEST(labSpace, conversionsInPlace_giveTheSameValues) {
    const TLabSpace space(kD50.data());
    const Triple xyz = {19.41, 28.41, 11.5766};
    const Triple lab = labOf(kD50, xyz);

    Triple triple = xyz;
    EXPECT_EQ(space.XYZToLab(triple.data(), triple.data()), 0);
    EXPECT_EQ(triple, lab);
    triple = xyz;
    EXPECT_EQ(space.FromXYZ(triple.data(), triple.data()), 0);
    EXPECT_EQ(triple, lab);

    const Triple back = xyzOf(kD50, lab);
    triple = lab;
    EXPECT_EQ(space.LabToXYZ(triple.data(), triple.data()), 0);
    EXPECT_EQ(triple, back);
    triple = lab;
    EXPECT_EQ(space.ToXYZ(triple.data(), triple.data()), 0);
    EXPECT_EQ(triple, back);
}

TEST(labSpace, labToLabInPlace_givesTheSameValues) {
    const TLabSpace space(kD50.data());
    const Triple lab = {62.0, 31.0, -24.0};
    Triple expected;
    ASSERT_EQ(space.LabToLab(lab.data(), expected.data(), kD65TenDegree.data()), 0);
    Triple triple = lab;
    EXPECT_EQ(space.LabToLab(triple.data(), triple.data(), kD65TenDegree.data()), 0);
    EXPECT_EQ(triple, expected);
    Triple white = kD65TenDegree;
    EXPECT_EQ(space.LabToLab(lab.data(), white.data(), white.data()), 0);
    EXPECT_EQ(white, expected);
}

TEST(labSpace, polarConversionsInPlace_giveTheSameValues) {
    const TLabSpace space(kD50.data());
    // A hue in the third quadrant, where both coordinates are turned round.
    const Triple lab = {40.0, -12.0, -31.0};
    const Triple lhc = labToLhc(lab);

    Triple triple = lab;
    EXPECT_EQ(TLabSpace::LabToLHC(triple.data(), triple.data()), 0);
    EXPECT_EQ(triple, lhc);
    EXPECT_EQ(TLabSpace::LHCToLab(triple.data(), triple.data()), 0);
    EXPECT_EQ(triple, lhcToLab(lhc[0], lhc[1], lhc[2]));

    const Triple xyz = {4.96, 3.72, 19.59};
    Triple expected;
    ASSERT_EQ(space.XYZToLHC(xyz.data(), expected.data()), 0);
    triple = xyz;
    EXPECT_EQ(space.XYZToLHC(triple.data(), triple.data()), 0);
    EXPECT_EQ(triple, expected);
    ASSERT_EQ(space.LHCToXYZ(lhc.data(), expected.data()), 0);
    triple = lhc;
    EXPECT_EQ(space.LHCToXYZ(triple.data(), triple.data()), 0);
    EXPECT_EQ(triple, expected);
}

// Null arguments.

TEST(labSpace, nullTriples_writeNothingAndAnswer0) {
    const TLabSpace space(kD50.data());
    const Triple untouched = {1.25, 2.5, 3.75};
    Triple out = untouched;
    double number = 4.5;
    EXPECT_EQ(space.XYZToLab(nullptr, out.data()), 0);
    EXPECT_EQ(space.FromXYZ(nullptr, out.data()), 0);
    EXPECT_EQ(space.LabToXYZ(nullptr, out.data()), 0);
    EXPECT_EQ(space.ToXYZ(nullptr, out.data()), 0);
    EXPECT_EQ(space.XYZToLHC(nullptr, out.data()), 0);
    EXPECT_EQ(space.LHCToXYZ(nullptr, out.data()), 0);
    EXPECT_EQ(space.LabToLab(nullptr, out.data(), kD50.data()), 0);
    EXPECT_EQ(space.LabToLab(kD50.data(), out.data(), nullptr), 0);
    EXPECT_EQ(TLabSpace::LabToLHC(nullptr, out.data()), 0);
    EXPECT_EQ(TLabSpace::LHCToLab(nullptr, out.data()), 0);
    EXPECT_EQ(space.GetSqSat(nullptr, &number), 0);
    EXPECT_EQ(out, untouched);
    EXPECT_EQ(number, 4.5);
}

TEST(labSpace, nullResults_areSurvivedWith0) {
    const TLabSpace space(kD50.data());
    const Triple in = kD50;
    EXPECT_EQ(space.XYZToLab(in.data(), nullptr), 0);
    EXPECT_EQ(space.FromXYZ(in.data(), nullptr), 0);
    EXPECT_EQ(space.LabToXYZ(in.data(), nullptr), 0);
    EXPECT_EQ(space.ToXYZ(in.data(), nullptr), 0);
    EXPECT_EQ(space.XYZToLHC(in.data(), nullptr), 0);
    EXPECT_EQ(space.LHCToXYZ(in.data(), nullptr), 0);
    EXPECT_EQ(space.LabToLab(in.data(), nullptr, in.data()), 0);
    EXPECT_EQ(TLabSpace::LabToLHC(in.data(), nullptr), 0);
    EXPECT_EQ(TLabSpace::LHCToLab(in.data(), nullptr), 0);
    EXPECT_EQ(space.GetSqSat(in.data(), nullptr), 0);
    TLabSpace::CalculateHue(nullptr);
    EXPECT_EQ(in, kD50);
}

TEST(labSpace, nullWhites_areSurvivedWithoutAReport) {
    const ReportCollector reports;
    const Triple in = {20.0, 30.0, 40.0};
    Triple out = in;
    const TLabSpace space(nullptr);
    EXPECT_EQ(space.XYZToLab(in.data(), out.data()), 0);
    EXPECT_EQ(space.LabToXYZ(in.data(), out.data()), 0);
    EXPECT_EQ(TLabSpace::XYZToLabToXYZ(nullptr, kD50.data(), out.data()), 0);
    EXPECT_EQ(TLabSpace::XYZToLabToXYZ(kD50.data(), nullptr, out.data()), 0);
    EXPECT_EQ(TLabSpace::XYZToLabToXYZ(nullptr, nullptr, nullptr), 0);
    EXPECT_EQ(TLabSpace::XYZToLabToXYZ(kD50.data(), kD50.data(), nullptr), 0);
    EXPECT_TRUE(reports.errors.empty());
}

} // namespace
