// XYZ to Lab for many colours: the rule in single precision, and equal bits however colours are taken.
#include "colorspace/fast_lab.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "base/instruction_set.h"
#include "colorspace/tlabspace.h"
#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

using namespace qxcms::detail;
using Triple = std::array<double, 3>;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kUntouched = -12345.0;

const Triple kUnit = {1.0, 1.0, 1.0};
const Triple kD50 = {96.422, 100.0, 82.521};

Triple fastLab(const Triple& white, const Triple& xyz) {
    Triple lab = {kUntouched, kUntouched, kUntouched};
    EXPECT_EQ(TLabSpace(white.data()).FastXYZToLab(xyz.data(), lab.data(), 1), 0);
    return lab;
}

// L* of a gray whose ratios are `ratio`.
double lightness(double ratio) {
    return fastLab(kUnit, {ratio, ratio, ratio})[0];
}

// Expected numbers were worked out with sixty decimal digits and rounded where the rule rounds.

TEST(fastLab, white_isExactlyWhite) {
    EXPECT_EQ(fastLab(kD50, kD50), (Triple{100.0, 0.0, 0.0}));
}

TEST(fastLab, black_hasTheLightnessOfTheOffsetInSinglePrecision) {
    EXPECT_EQ(fastLab(kD50, {0.0, 0.0, 0.0}), (Triple{-3.516674041748047e-06, 0.0, 0.0}));
}

TEST(fastLab, aColor_isConvertedByTheRule) {
    EXPECT_EQ(fastLab(kD50, {20.0, 30.0, 10.0}),
              (Triple{61.65422081947327, -38.741737604141235, 34.915465116500854}));
}

// 0.008856 rounds to a float above it. XYZToLab takes the linear branch there.
TEST(fastLab, aRatioThatRoundsAboveTheThreshold_takesTheCubeRoot) {
    EXPECT_EQ(lightness(0.008856), 7.999591112136841);
}

TEST(fastLab, theLastFloatBelowTheThreshold_takesTheLine) {
    EXPECT_EQ(lightness(0.008855999447405338), 7.999630868434906);
}

// Fused or in double precision the line gives 5.3370789885520935 here.
TEST(fastLab, theLine_roundsItsProductAndItsSumToSinglePrecision) {
    EXPECT_EQ(lightness(0.005908420775085688), 5.337080717086792);
}

// Cube roots give 1144 and 1159999999984.
TEST(fastLab, theExponent_isAThirdInSinglePrecision) {
    EXPECT_EQ(lightness(1000.0), 1144.0001106262207);
    EXPECT_EQ(lightness(1.0000000150474662e+30), 1160000831472.0);
}

// The quotient would give 78.62408256530762.
TEST(fastLab, ratios_areProductsWithTheReciprocalOfTheWhite) {
    EXPECT_EQ(fastLab({1.0, 96.422, 1.0}, {1.0, 52.336802133739, 1.0})[0], 78.62407565116882);
}

// In double precision a* would be 413.3898392319679 and b* -140.94459116458893.
TEST(fastLab, differencesOfRoots_areTakenInSinglePrecision) {
    EXPECT_EQ(fastLab(kUnit, {0.9, 0.0001, 0.6}),
              (Triple{0.09032624959945679, 413.38983178138733, -140.9445881843567}));
}

TEST(fastLab, negativeComponents_countAsZero) {
    EXPECT_EQ(fastLab(kD50, {-20.0, 30.0, -1e-300}), fastLab(kD50, {0.0, 30.0, 0.0}));
}

TEST(fastLab, aZeroWhite_givesInfinityOrNoNumber) {
    const Triple white = {1.0, 0.0, 1.0};
    EXPECT_EQ(fastLab(white, {1.0, 1.0, 1.0}), (Triple{kInfinity, -kInfinity, kInfinity}));
    EXPECT_TRUE(std::isnan(fastLab(white, {1.0, 0.0, 1.0})[0]));
}

// The sign is that of the component, before any product: what is negative never meets the white.
TEST(fastLab, negativeComponentsOnAZeroWhite_areBlackAndNegativeZeroIsNoNumber) {
    const Triple white = {1.0, 0.0, 1.0};
    EXPECT_EQ(fastLab(white, {1.0, -1.0, 1.0})[0], -3.516674041748047e-06);
    EXPECT_TRUE(std::isnan(fastLab(white, {1.0, -0.0, 1.0})[0]));
}

TEST(fastLab, ratiosAboveSinglePrecision_areInfinite) {
    EXPECT_EQ(lightness(3.5e38), kInfinity);
    EXPECT_LT(lightness(3.4e38), 8.2e14);
}

TEST(fastLab, noNumber_givesNoNumber) {
    for (const double value : fastLab(kUnit, {kNan, kNan, kNan}))
        EXPECT_TRUE(std::isnan(value));
}

TEST(fastLab, withoutTriples_nothingIsWritten) {
    const TLabSpace space(kD50.data());
    Triple lab = {kUntouched, kUntouched, kUntouched};
    for (const int count : {0, -1, std::numeric_limits<int>::min()})
        EXPECT_EQ(space.FastXYZToLab(kD50.data(), lab.data(), count), 0);
    EXPECT_EQ(space.FastXYZToLab(nullptr, lab.data(), 1), 0);
    EXPECT_EQ(space.FastXYZToLab(kD50.data(), nullptr, 1), 0);
    EXPECT_EQ(lab, (Triple{kUntouched, kUntouched, kUntouched}));
}

TEST(labBatch, withoutTriples_nothingIsWritten) {
    const TLabSpace space(kD50.data());
    Triple lab = {kUntouched, kUntouched, kUntouched};
    EXPECT_EQ(space.XYZToLabBatch(kD50.data(), lab.data(), 0), 0);
    EXPECT_EQ(space.XYZToLabBatch(nullptr, lab.data(), 1), 0);
    EXPECT_EQ(space.XYZToLabBatch(kD50.data(), nullptr, 1), 0);
    EXPECT_EQ(lab, (Triple{kUntouched, kUntouched, kUntouched}));
}

// Equal bits, or both of them no number.
::testing::AssertionResult areTheSame(const std::vector<double>& left, const std::vector<double>& right) {
    for (std::size_t i = 0; i < left.size(); ++i) {
        const bool same = std::memcmp(&left[i], &right[i], sizeof(double)) == 0;
        if (!same && !(std::isnan(left[i]) && std::isnan(right[i])))
            return ::testing::AssertionFailure() << "number " << i << ": " << left[i] << " and " << right[i];
    }
    return ::testing::AssertionSuccess();
}

// The usual ones first. An object keeps all but the first negative component.
const std::vector<Triple> kWhites = {
    kD50,
    kUnit,
    {0.0, 100.0, 0.0},
    {0.0, -1.0, 108.0},
    {-0.0, 1.0, 1.0},
    {kNan, 1.0, kInfinity},
    {std::numeric_limits<double>::denorm_min(), std::numeric_limits<double>::min(), 1e-310},
    {std::numeric_limits<double>::max(), -kInfinity, 1e300}};

std::vector<double> specialComponents() {
    std::vector<double> found = {0.0,
                                 1.0,
                                 kNan,
                                 kInfinity,
                                 std::numeric_limits<double>::denorm_min(),
                                 1e-310,
                                 std::numeric_limits<double>::min(),
                                 std::numeric_limits<double>::max(),
                                 static_cast<double>(std::numeric_limits<float>::denorm_min()),
                                 static_cast<double>(std::numeric_limits<float>::min()),
                                 static_cast<double>(std::numeric_limits<float>::max()),
                                 3.4028235677973366e38,
                                 0.008856,
                                 std::nextafter(0.008856, 0.0),
                                 std::nextafter(0.008856, 1.0),
                                 static_cast<double>(0.008856F),
                                 0.008856 * 96.422,
                                 8.0,
                                 1e30};
    const std::size_t positive = found.size();
    for (std::size_t i = 0; i < positive; ++i)
        found.push_back(-found[i]);
    return found;
}

using Random = std::mt19937_64;

double fraction(Random& random) {
    return static_cast<double>(random() >> 11) * 0x1p-53;
}

// Colours of print and light, any magnitude, any bits, and special values among them.
double randomComponent(Random& random) {
    static const std::vector<double> kSpecial = specialComponents();
    switch (random() % 16) {
    case 0:
        return kSpecial[random() % kSpecial.size()];
    case 1: {
        const std::uint64_t bits = random();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    case 2:
        return std::ldexp(1.0 + fraction(random), static_cast<int>(random() % 200) - 80);
    case 3:
        return -fraction(random);
    case 4:
        return fraction(random);
    default:
        return 100.0 * fraction(random) * fraction(random);
    }
}

std::vector<double> randomColors(Random& random, std::size_t count) {
    std::vector<double> xyz(3 * count);
    std::generate(xyz.begin(), xyz.end(), [&] { return randomComponent(random); });
    return xyz;
}

// A ratio whose root is near to the middle of two doubles: where the last rounding is in doubt.
double nearTheMiddle(Random& random) {
    const double root = 0.21 + 1.2 * fraction(random);
    const long double middle =
        static_cast<long double>(root) + static_cast<long double>(std::nextafter(root, 2.0) - root) / 2;
    const double cube = static_cast<double>(powl(middle, 1.0L / 0.33333333333333L));
    const double below = std::nextafter(cube, 0.0);
    const std::array<double, 3> around = {below, cube, std::nextafter(cube, 8.0)};
    return around[random() % around.size()];
}

using Conversion = void (*)(const LabKernel*, const double*, const double*, double*, std::size_t);

void expectThePlainLoop(Conversion convert, const LabKernel& kernel, const Triple& white,
                        const std::vector<double>& xyz) {
    std::vector<double> expected(xyz.size());
    std::vector<double> given(xyz.size());
    convert(nullptr, white.data(), xyz.data(), expected.data(), xyz.size() / 3);
    convert(&kernel, white.data(), xyz.data(), given.data(), xyz.size() / 3);
    EXPECT_TRUE(areTheSame(given, expected));
}

// What an instruction set gives is what the plain loop gives.
void expectOneConversion(Conversion convert, const LabKernel& kernel) {
    Random random(20);
    for (const Triple& white : kWhites)
        for (int i = 0; i < 40; ++i)
            expectThePlainLoop(convert, kernel, white, randomColors(random, 1000));
    for (int i = 0; i < 100; ++i) {
        std::vector<double> xyz(3000);
        std::generate(xyz.begin(), xyz.end(), [&] { return nearTheMiddle(random); });
        expectThePlainLoop(convert, kernel, kUnit, xyz);
    }
}

void expectNothingElseWritten(Conversion convert, const LabKernel& kernel) {
    Random random(21);
    for (std::size_t count = 0; count <= 140; ++count)
        for (std::size_t shift = 0; shift < 3; ++shift) {
            const std::vector<double> colors = randomColors(random, count);
            std::vector<double> expected(3 * count + 6, kUntouched);
            convert(nullptr, kD50.data(), colors.data(), expected.data() + shift, count);
            std::vector<double> xyz(3 * count + 6, kUntouched);
            std::copy(colors.begin(), colors.end(), xyz.begin() + 2);
            std::vector<double> lab(3 * count + 6, kUntouched);
            convert(&kernel, kD50.data(), xyz.data() + 2, lab.data() + shift, count);
            EXPECT_TRUE(areTheSame(lab, expected)) << count;

            std::vector<double> inPlace(3 * count + 6, kUntouched);
            std::copy(colors.begin(), colors.end(), inPlace.data() + shift);
            convert(&kernel, kD50.data(), inPlace.data() + shift, inPlace.data() + shift, count);
            EXPECT_TRUE(areTheSame(inPlace, expected)) << count;
        }
}

// Floats whose power, worked out with 60 digits, lies within 2^-15 of a unit in the last place of the middle
// of two floats, and on the other side of it than the correction puts it: only `pow` can tell.
void expectPowerDecidesNearTheMiddle(const LabKernel& kernel) {
    for (const double ratio :
         {0x1.d0f8cap+62, 0x1.d1669cp+89, 0x1.cfe6d4p+98, 0x1.d156aep+101, 0x1.c9fcb2p+125, 0x1.d05aeap+125})
        expectThePlainLoop(fastXyzToLab, kernel, kUnit, std::vector<double>(48, ratio));
}

void expectOneRule(const LabKernel& kernel) {
    expectPowerDecidesNearTheMiddle(kernel);
    expectOneConversion(fastXyzToLab, kernel);
    expectOneConversion(xyzToLabOfAll, kernel);
    expectNothingElseWritten(fastXyzToLab, kernel);
    expectNothingElseWritten(xyzToLabOfAll, kernel);
}

bool isCompiled(const LabKernel& kernel) {
    return kernel.single.roots != nullptr;
}

TEST(fastLab, avx2_givesTheBitsOfThePlainLoop) {
    if (!isCompiled(kAvx2LabKernel))
        GTEST_SKIP() << "not compiled for AVX2";
    if (offeredInstructionSet() < InstructionSet::kAvx2)
        GTEST_SKIP() << "the processor has no AVX2";
    expectOneRule(kAvx2LabKernel);
}

TEST(fastLab, avx512_givesTheBitsOfThePlainLoop) {
    if (!isCompiled(kAvx512LabKernel))
        GTEST_SKIP() << "not compiled for AVX-512";
    if (offeredInstructionSet() < InstructionSet::kAvx512)
        GTEST_SKIP() << "the processor has no AVX-512";
    expectOneRule(kAvx512LabKernel);
}

TEST(fastLab, commonProcessors_haveNoKernel) {
    EXPECT_EQ(labKernel(InstructionSet::kCommon), nullptr);
}

TEST(fastLab, eachSet_hasItsKernelWhereItWasCompiled) {
    if (!isCompiled(kAvx512LabKernel))
        GTEST_SKIP() << "not compiled for AVX-512";
    EXPECT_EQ(labKernel(InstructionSet::kAvx2), &kAvx2LabKernel);
    EXPECT_EQ(labKernel(InstructionSet::kAvx512), &kAvx512LabKernel);
}

#if defined(__x86_64__)
TEST(fastLab, bothKernels_areCompiledForProcessorsOfTheirKind) {
    EXPECT_TRUE(isCompiled(kAvx2LabKernel));
    EXPECT_TRUE(isCompiled(kAvx512LabKernel));
}
#endif

// Run by ctest once more for each value of QXCMS_INSTRUCTION_SET;
// instructionSet.whatTheEnvironmentAsksFor_isUsed tells that the set is the one asked for.
TEST(fastLab, theKernelInUse_isThatOfTheInstructionSet) {
    const LabKernel* expected = nullptr;
    if (instructionSet() >= InstructionSet::kAvx2 && isCompiled(kAvx2LabKernel))
        expected = &kAvx2LabKernel;
    if (instructionSet() >= InstructionSet::kAvx512 && isCompiled(kAvx512LabKernel))
        expected = &kAvx512LabKernel;
    EXPECT_EQ(usedLabKernel(), expected);
}

// The operations themselves, with whatever this process uses.
TEST(fastLab, aColorAmongOthers_isConvertedAsAlone) {
    const ReportCollector refusedWhites;
    Random random(22);
    for (const Triple& white : kWhites) {
        const TLabSpace space(white.data());
        for (std::size_t count = 0; count <= 140; ++count) {
            const std::vector<double> xyz = randomColors(random, count);
            std::vector<double> lab(xyz.size());
            EXPECT_EQ(space.FastXYZToLab(xyz.data(), lab.data(), static_cast<int>(count)), 0);
            std::vector<double> alone(xyz.size());
            for (std::size_t i = 0; i < count; ++i)
                space.FastXYZToLab(xyz.data() + 3 * i, alone.data() + 3 * i, 1);
            EXPECT_TRUE(areTheSame(lab, alone));
        }
    }
}

TEST(labBatch, aColorAmongOthers_isConvertedAsAlone) {
    const ReportCollector refusedWhites;
    Random random(23);
    for (const Triple& white : kWhites) {
        const TLabSpace space(white.data());
        for (std::size_t count = 0; count <= 140; ++count) {
            const std::vector<double> xyz = randomColors(random, count);
            std::vector<double> lab(xyz.size());
            EXPECT_EQ(space.XYZToLabBatch(xyz.data(), lab.data(), count), 0);
            std::vector<double> alone(xyz.size());
            for (std::size_t i = 0; i < count; ++i)
                space.XYZToLab(xyz.data() + 3 * i, alone.data() + 3 * i);
            EXPECT_TRUE(areTheSame(lab, alone));
        }
    }
}

} // namespace
} // namespace qxcms::tests
