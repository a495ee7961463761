// Tristimulus values relative to a white.
#include "colorspace/txyzrspace.h"

#include <array>
#include <cmath>
#include <limits>
#include <type_traits>

#include <gmock/gmock.h>

#include "colorspace/tcolorspacerepresentation.h"
#include "colorspace/tlabspace.h"
#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Triple = std::array<double, 3>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr Triple kWhite = {95.0, 100.0, 108.0};

static_assert(!std::is_base_of_v<TColorSpaceRepresentation, TXYZRSpace>);
static_assert(std::has_virtual_destructor_v<TXYZRSpace>);

int errorOf(const Triple& white) {
    return TXYZRSpace(white.data()).ErrNo();
}

// XYZR of (1, 1, 1) times the white is the white itself, without rounding.
Triple storedWhite(const TXYZRSpace& space) {
    const Triple ones = {1.0, 1.0, 1.0};
    Triple white = {kNan, kNan, kNan};
    EXPECT_EQ(space.XYZRToXYZ(ones.data(), white.data()), 0);
    return white;
}

// The white.

TEST(xyzrSpace, whiteOfPositiveComponents_isUsable) {
    EXPECT_EQ(errorOf(kWhite), 0);
}

TEST(xyzrSpace, anyComponentBelowAMillionth_givesError2) {
    for (std::size_t i = 0; i < 3; ++i) {
        for (const double value :
             {0.0, -0.0, 5e-7, std::nextafter(1e-6, 0.0), 1e-300, -1e-6, -1.0, -95.0, -kInfinity}) {
            Triple white = kWhite;
            white[i] = value;
            EXPECT_EQ(errorOf(white), 2) << i << ' ' << value;
        }
    }
}

TEST(xyzrSpace, componentOfExactlyAMillionth_isUsable) {
    EXPECT_EQ(errorOf({1e-6, 1e-6, 1e-6}), 0);
    EXPECT_EQ(errorOf({std::nextafter(1e-6, 1.0), 1e-6, 1e-6}), 0);
}

TEST(xyzrSpace, smallY_andZeroZ_areRefused) {
    EXPECT_EQ(errorOf({95.0, 0.0000005, 108.0}), 2);
    EXPECT_EQ(errorOf({95.0, 100.0, 0.0}), 2);
}

// Only "below the limit" refuses, and that is never true of what is not a number.
TEST(xyzrSpace, componentThatIsNotANumber_isNotRefused) {
    EXPECT_EQ(errorOf({kNan, 100.0, 108.0}), 0);
    EXPECT_EQ(errorOf({kInfinity, 100.0, 108.0}), 0);
}

// Unlike CIELAB, which sets the first bad component to 0 and reports it.
TEST(xyzrSpace, refusedWhite_isKeptAsItIs) {
    const Triple white = {-1.0, 0.0, -3.5};
    const TXYZRSpace space(white.data());
    EXPECT_EQ(storedWhite(space), white);
}

TEST(xyzrSpace, refusedWhite_isNotReported) {
    const ReportCollector reports;
    EXPECT_EQ(errorOf({-1.0, 0.0, -3.5}), 2);
    EXPECT_THAT(reports.errors, IsEmpty());
    EXPECT_THAT(reports.warnings, IsEmpty());
}

// CIELAB accepts 0; what divides by the white alone does not.
TEST(xyzrSpace, whiteOfZero_isRefusedHereAndAcceptedByCielab) {
    const Triple white = {95.0, 100.0, 0.0};
    EXPECT_EQ(errorOf(white), 2);
    EXPECT_EQ(TLabSpace(white.data()).ErrNo(), 0);
}

TEST(xyzrSpace, white_isCopied) {
    Triple white = kWhite;
    const TXYZRSpace space(white.data());
    white = {1.0, 2.0, 3.0};
    EXPECT_EQ(storedWhite(space), kWhite);
}

TEST(xyzrSpace, whiteOfNull_givesError2WithoutAReport) {
    const ReportCollector reports;
    const TXYZRSpace space(nullptr);
    EXPECT_EQ(space.ErrNo(), 2);
    EXPECT_EQ(storedWhite(space), (Triple{0.0, 0.0, 0.0}));
    EXPECT_THAT(reports.errors, IsEmpty());
}

// XYZ and XYZR.

TEST(xyzrSpace, white_isOneOneOne) {
    Triple xyzr = {kNan, kNan, kNan};
    EXPECT_EQ(TXYZRSpace(kWhite.data()).XYZToXYZR(kWhite.data(), xyzr.data()), 0);
    EXPECT_THAT(xyzr, ElementsAre(1.0, 1.0, 1.0));
}

TEST(xyzrSpace, relativeValues_areQuotients) {
    const Triple xyz = {19.0, 25.0, 81.0};
    Triple xyzr = {kNan, kNan, kNan};
    EXPECT_EQ(TXYZRSpace(kWhite.data()).XYZToXYZR(xyz.data(), xyzr.data()), 0);
    EXPECT_THAT(xyzr, ElementsAre(0.2, 0.25, 0.75));
}

// A quotient, not a product with the reciprocal: 5 * (1 / 49) is not 5 / 49.
TEST(xyzrSpace, relativeValues_areRoundedOnce) {
    const volatile double numerator = 5.0, denominator = 49.0;
    ASSERT_NE(numerator / denominator, numerator * (1.0 / denominator));
    const Triple white = {49.0, 49.0, 49.0}, xyz = {5.0, 5.0, 5.0};
    Triple xyzr = {kNan, kNan, kNan};
    EXPECT_EQ(TXYZRSpace(white.data()).XYZToXYZR(xyz.data(), xyzr.data()), 0);
    EXPECT_EQ(xyzr, (Triple{numerator / denominator, numerator / denominator, numerator / denominator}));
}

TEST(xyzrSpace, negativeValues_areNotClamped) {
    const Triple xyz = {-19.0, -25.0, -81.0};
    Triple xyzr = {kNan, kNan, kNan}, back = {kNan, kNan, kNan};
    const TXYZRSpace space(kWhite.data());
    EXPECT_EQ(space.XYZToXYZR(xyz.data(), xyzr.data()), 0);
    EXPECT_THAT(xyzr, ElementsAre(-0.2, -0.25, -0.75));
    EXPECT_EQ(space.XYZRToXYZ(xyzr.data(), back.data()), 0);
    EXPECT_THAT(back, ElementsAre(-19.0, -25.0, -81.0));
}

TEST(xyzrSpace, absoluteValues_areProducts) {
    const Triple xyzr = {0.5, 2.0, 0.25};
    Triple xyz = {kNan, kNan, kNan};
    EXPECT_EQ(TXYZRSpace(kWhite.data()).XYZRToXYZ(xyzr.data(), xyz.data()), 0);
    EXPECT_THAT(xyz, ElementsAre(47.5, 200.0, 27.0));
}

// The neutral of a luminance.

TEST(xyzrSpace, halfTheLuminance_isHalfTheWhite) {
    const double half = 0.5;
    Triple xyz = {kNan, kNan, kNan};
    EXPECT_EQ(TXYZRSpace(kWhite.data()).YRToXYZ(&half, xyz.data()), 0);
    EXPECT_THAT(xyz, ElementsAre(47.5, 50.0, 54.0));
}

TEST(xyzrSpace, relativeLuminance_isThatOfY) {
    const Triple xyz = {1.0, 25.0, 3.0};
    double yr[2] = {kNan, -7.0};
    EXPECT_EQ(TXYZRSpace(kWhite.data()).XYZToYR(xyz.data(), yr), 0);
    EXPECT_EQ(yr[0], 0.25);
    EXPECT_EQ(yr[1], -7.0) << "one value is written";
}

TEST(xyzrSpace, relativeLuminance_dividesByTheWhitesY) {
    const Triple white = {50.0, 80.0, 10.0}, xyz = {1.0, 20.0, 3.0};
    double yr = kNan;
    EXPECT_EQ(TXYZRSpace(white.data()).XYZToYR(xyz.data(), &yr), 0);
    EXPECT_EQ(yr, 0.25);
}

// A white that was refused still converts.
TEST(xyzrSpace, refusedWhite_convertsIntoInfinities) {
    const Triple white = {0.0, 0.0, -2.0}, xyz = {19.0, 0.0, 1.0};
    const TXYZRSpace space(white.data());
    Triple xyzr = {7.0, 7.0, 7.0};
    EXPECT_EQ(space.XYZToXYZR(xyz.data(), xyzr.data()), 0);
    EXPECT_EQ(xyzr[0], kInfinity);
    EXPECT_TRUE(std::isnan(xyzr[1]));
    EXPECT_EQ(xyzr[2], -0.5);
    double yr = 7.0;
    EXPECT_EQ(space.XYZToYR(xyz.data(), &yr), 0);
    EXPECT_TRUE(std::isnan(yr));
    const double luminance = 0.5;
    Triple neutral = {7.0, 7.0, 7.0};
    EXPECT_EQ(space.YRToXYZ(&luminance, neutral.data()), 0);
    EXPECT_THAT(neutral, ElementsAre(0.0, 0.0, -1.0));
}

TEST(xyzrSpace, results_mayReplaceTheirSource) {
    const TXYZRSpace space(kWhite.data());
    Triple values = {19.0, 25.0, 81.0};
    EXPECT_EQ(space.XYZToXYZR(values.data(), values.data()), 0);
    EXPECT_THAT(values, ElementsAre(0.2, 0.25, 0.75));
    EXPECT_EQ(space.XYZRToXYZ(values.data(), values.data()), 0);
    EXPECT_THAT(values, ElementsAre(19.0, 25.0, 81.0));
    for (std::size_t i = 0; i < 3; ++i) {
        values = {0.5, 0.5, 0.5};
        EXPECT_EQ(space.YRToXYZ(&values[i], values.data()), 0);
        EXPECT_THAT(values, ElementsAre(47.5, 50.0, 54.0)) << i;
        values = {19.0, 25.0, 81.0};
        EXPECT_EQ(space.XYZToYR(values.data(), &values[i]), 0);
        EXPECT_EQ(values[i], 0.25) << i;
    }
}

TEST(xyzrSpace, nullArguments_writeNothing) {
    const TXYZRSpace space(kWhite.data());
    const Triple in = {1.0, 2.0, 3.0};
    Triple out = {7.0, 7.0, 7.0};
    EXPECT_EQ(space.XYZToXYZR(nullptr, out.data()), 0);
    EXPECT_EQ(space.XYZToXYZR(in.data(), nullptr), 0);
    EXPECT_EQ(space.XYZRToXYZ(nullptr, out.data()), 0);
    EXPECT_EQ(space.XYZRToXYZ(in.data(), nullptr), 0);
    EXPECT_EQ(space.YRToXYZ(nullptr, out.data()), 0);
    EXPECT_EQ(space.YRToXYZ(in.data(), nullptr), 0);
    EXPECT_EQ(space.XYZToYR(nullptr, out.data()), 0);
    EXPECT_EQ(space.XYZToYR(in.data(), nullptr), 0);
    EXPECT_THAT(out, ElementsAre(7.0, 7.0, 7.0));
}

} // namespace
} // namespace qxcms::tests
