// The batch forms of the colour spaces: the bits of their single forms, for whatever they are given.
#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "colorspace/tcolorspace_ciecam02.h"
#include "colorspace/tcolorspace_ciecam97s.h"
#include "colorspace/tlabspace.h"
#include "tests/support/batches.h"
#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kTiny = std::numeric_limits<double>::denorm_min();

// Ordinary whites, whites with zeros and whites that are hardly any.
const std::vector<Triple>& whites() {
    static const std::vector<Triple> kWhites = {
        {95.047, 100.0, 108.883},  {0.9642, 1.0, 0.8249}, {0.0, 100.0, 108.883}, {95.047, 0.0, 108.883},
        {95.047, 100.0, 0.0},      {0.0, 0.0, 0.0},       {-0.0, 100.0, -0.0},   {-3.0, 100.0, -5.0},
        {kInfinity, 100.0, 1e300}, {kNan, kTiny, 1e-310}, {1e-320, 1.0, 1e-200}};
    return kWhites;
}

// XYZ near and beyond the white of 100.
std::vector<double> someXyz(std::size_t count, std::uint64_t seed) {
    return mixedValues(3 * count, -5.0, 130.0, seed);
}
// Lab, LHC or JCh.
std::vector<double> someCoordinates(std::size_t count, std::uint64_t seed) {
    return mixedValues(3 * count, -130.0, 130.0, seed);
}

// A batch over one array of triples, checked over special and random values, for small counts, and for null.
template <class Single, class Batch>
void expectTriplesAsSingle(const std::vector<double>& values, const Single& single, const Batch& batch) {
    expectBatchAsSingle(specialTriples(), 3, 3, single, batch);
    expectBatchAsSingle(values, 3, 3, single, batch);
    expectSmallBatchesAsSingle(values, 3, 3, single, batch);
    expectNothingOfNothing(3, 3, batch);
    expectNothingOfNull(0, 3, 3, batch);
}

TEST(batch, labToXyz_hasTheBitsOfTheSingleForm) {
    const ReportCollector expectedReports; // of the negative white
    for (const Triple& white : whites()) {
        SCOPED_TRACE(testing::PrintToString(white));
        const TLabSpace space(white.data());
        expectTriplesAsSingle(
            someCoordinates(3001, 1), [&](const double* in, double* out) { space.LabToXYZ(in, out); },
            [&](const double* in, double* out, std::size_t n) { return space.LabToXYZBatch(in, out, n); });
    }
}

TEST(batch, labToLhc_hasTheBitsOfTheSingleForm) {
    expectTriplesAsSingle(
        someCoordinates(20011, 2), [](const double* in, double* out) { TLabSpace::LabToLHC(in, out); },
        [](const double* in, double* out, std::size_t n) { return TLabSpace::LabToLHCBatch(in, out, n); });
}

// Scenes of a model: the surrounds with the scene they begin with, a dim scene, and one that is none.
template <class Model>
void expectForwardAsSingle(std::uint64_t seed) {
    for (const Triple& white : whites()) {
        for (const int surround : {0, 1, 2, 3}) {
            for (const bool dimScene : {false, true}) {
                SCOPED_TRACE(testing::Message()
                             << testing::PrintToString(white) << ' ' << surround << ' ' << dimScene);
                Model model(white.data(), surround);
                if (dimScene)
                    model.InitializeScene(white.data(), 20.0, surround == 1 ? 0.0 : 18.0);
                const auto single = [&](const double* in, double* out) { model.FromXYZ(in, out); };
                const auto batch = [&](const double* in, double* out, std::size_t n) {
                    return model.FromXYZBatch(in, out, n);
                };
                expectBatchAsSingle(someXyz(2003, seed), 3, 3, single, batch);
                if (surround == 0 && !dimScene)
                    expectTriplesAsSingle(someXyz(1009, seed + 1), single, batch);
            }
        }
    }
}

TEST(batch, ciecam02_hasTheBitsOfTheSingleForm) {
    expectForwardAsSingle<TColorSpace_CIECAM02>(3);
}

TEST(batch, ciecam97s_hasTheBitsOfTheSingleForm) {
    expectForwardAsSingle<TColorSpace_CIECAM97s>(4);
}

// Differences over pairs.

// Compares a batch of differences, double(const double*, const double*) against int(const double*, const
// double*, double*, std::size_t), over two arrays of triples of the same length.
template <class Single, class Batch>
void expectPairsAsSingle(const std::vector<double>& first, const std::vector<double>& second,
                         const Single& single, const Batch& batch) {
    const std::size_t all = first.size() / 3;
    std::vector<double> expected(all);
    for (std::size_t i = 0; i < all; ++i)
        expected[i] = single(first.data() + 3 * i, second.data() + 3 * i);
    GuardedDoubles squares(all, 3);
    EXPECT_EQ(batch(first.data(), second.data(), squares.data(), all), 0);
    EXPECT_EQ(difference(squares.data(), expected.data(), all), "");
    EXPECT_TRUE(squares.intactAround());

    std::vector<double> inPlace = first;
    EXPECT_EQ(batch(inPlace.data(), second.data(), inPlace.data(), all), 0);
    EXPECT_EQ(difference(inPlace.data(), expected.data(), all), "") << "in the place of the first";
    inPlace = second;
    EXPECT_EQ(batch(first.data(), inPlace.data(), inPlace.data(), all), 0);
    EXPECT_EQ(difference(inPlace.data(), expected.data(), all), "") << "in the place of the second";
}

// 0 to 33 pairs, everywhere in a line, with the squares apart and in the place of either colour.
template <class Single, class Batch>
void expectSmallPairsAsSingle(const std::vector<double>& first, const std::vector<double>& second,
                              const Single& single, const Batch& batch) {
    for (std::size_t count = 0; count <= 33; ++count) {
        const double* const one = first.data() + 3 * (count * 5);
        const double* const other = second.data() + 3 * (count * 5);
        std::vector<double> expected(count);
        for (std::size_t i = 0; i < count; ++i)
            expected[i] = single(one + 3 * i, other + 3 * i);
        for (const std::size_t shift : kShifts) {
            for (const int place : {0, 1, 2}) {
                SCOPED_TRACE(testing::Message() << count << " at " << shift << " into " << place);
                GuardedDoubles a(3 * count, shift), b(3 * count, (shift + 2) % 8), apart(count, 8 - shift);
                std::copy(one, one + 3 * count, a.data());
                std::copy(other, other + 3 * count, b.data());
                double* const squares = place == 0 ? apart.data() : place == 1 ? a.data() : b.data();
                ASSERT_EQ(batch(a.data(), b.data(), squares, count), 0);
                ASSERT_EQ(difference(squares, expected.data(), count), "");
                const std::size_t keptA = place == 1 ? count : 0, keptB = place == 2 ? count : 0;
                ASSERT_EQ(difference(a.data() + keptA, one + keptA, 3 * count - keptA), "");
                ASSERT_EQ(difference(b.data() + keptB, other + keptB, 3 * count - keptB), "");
                ASSERT_TRUE(a.intactAround() && b.intactAround() && apart.intactAround());
            }
        }
    }
}

template <class Batch>
void expectNoPairsOfNull(const Batch& batch) {
    const std::vector<double> colors(15, 20.0);
    GuardedDoubles squares(5, 0);
    EXPECT_EQ(batch(nullptr, colors.data(), squares.data(), 5), 0);
    EXPECT_EQ(batch(colors.data(), nullptr, squares.data(), 5), 0);
    EXPECT_EQ(batch(nullptr, nullptr, squares.data(), 5), 0);
    EXPECT_EQ(batch(colors.data(), colors.data(), nullptr, 5), 0);
    EXPECT_EQ(batch(colors.data(), colors.data(), squares.data(), 0), 0);
    EXPECT_EQ(batch(nullptr, nullptr, nullptr, 0), 0);
    EXPECT_TRUE(squares.untouched());
}

constexpr int kFunctions[] = {-1, 0, 1, 2, 3, 4, 5, std::numeric_limits<int>::max()};

TEST(batch, convertedDifferences_haveTheBitsOfTheSingleForm) {
    const std::vector<double> special = specialTriples();
    std::vector<double> reversed(special.rbegin(), special.rend());
    const std::vector<double> first = someCoordinates(20021, 5), second = someCoordinates(20021, 6);
    for (const int function : kFunctions) {
        SCOPED_TRACE(function);
        const auto single = [&](const double* one, const double* other) {
            return TLabSpace::CalcSquareDeltaEConvertedStatic(one, other, function);
        };
        const auto batch = [&](const double* one, const double* other, double* squares, std::size_t n) {
            return TLabSpace::CalcSquareDeltaEConvertedBatch(one, other, function, squares, n);
        };
        expectPairsAsSingle(first, second, single, batch);
        expectPairsAsSingle(first, first, single, batch);
        expectPairsAsSingle(special, reversed, single, batch);
        expectSmallPairsAsSingle(first, second, single, batch);
        expectNoPairsOfNull(batch);
    }
}

// Any double at all, so that nothing rests on the range of Lab.
TEST(batch, convertedDifferencesOfAnyDoubles_haveTheBitsOfTheSingleForm) {
    Random random(7);
    std::vector<double> first(60000), second(60000);
    for (std::size_t i = 0; i < first.size(); ++i) {
        first[i] = random.anyDouble();
        second[i] = random.anyDouble();
    }
    for (const int function : kFunctions)
        expectPairsAsSingle(
            first, second,
            [&](const double* one, const double* other) {
                return TLabSpace::CalcSquareDeltaEConvertedStatic(one, other, function);
            },
            [&](const double* one, const double* other, double* squares, std::size_t n) {
                return TLabSpace::CalcSquareDeltaEConvertedBatch(one, other, function, squares, n);
            });
}

TEST(batch, differences_haveTheBitsOfTheSingleForm) {
    const ReportCollector expectedReports; // of the negative white
    const std::vector<double> first = someXyz(3001, 8), second = someXyz(3001, 9);
    for (const Triple& white : whites()) {
        const TLabSpace space(white.data());
        for (const int function : kFunctions) {
            SCOPED_TRACE(testing::Message() << testing::PrintToString(white) << ' ' << function);
            const auto single = [&](const double* one, const double* other) {
                return space.CalcSquareDeltaE(one, other, function);
            };
            const auto batch = [&](const double* one, const double* other, double* squares, std::size_t n) {
                return space.CalcSquareDeltaEBatch(one, other, function, squares, n);
            };
            expectPairsAsSingle(first, second, single, batch);
            expectSmallPairsAsSingle(first, second, single, batch);
            expectNoPairsOfNull(batch);
        }
    }
}

TEST(batch, unknownFunction_fillsWithMinusOne) {
    const TLabSpace space(whites()[0].data());
    const std::vector<double> colors(9, 20.0);
    for (const int function : {-1, 5, 6}) {
        double squares[4] = {7.0, 7.0, 7.0, 7.0};
        EXPECT_EQ(
            TLabSpace::CalcSquareDeltaEConvertedBatch(colors.data(), colors.data(), function, squares, 3), 0);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(squares[i], -1.0);
        EXPECT_EQ(squares[3], 7.0);
        EXPECT_EQ(space.CalcSquareDeltaEBatch(colors.data(), colors.data(), function, squares, 3), 0);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(squares[i], -1.0);
        EXPECT_EQ(squares[3], 7.0);
    }
}

// The second array holds the standards: 10 / (1 + 0.045 * 40) and 10 / (1 + 0.045 * 30) by CIE 1994.
TEST(batch, secondArray_holdsTheStandards) {
    const double dull[3] = {50.0, 30.0, 0.0}, vivid[3] = {50.0, 40.0, 0.0};
    double square = kNan;
    EXPECT_EQ(TLabSpace::CalcSquareDeltaEConvertedBatch(dull, vivid, 1, &square, 1), 0);
    EXPECT_NEAR(square, 100.0 / (2.8 * 2.8), 1e-12);
    EXPECT_EQ(TLabSpace::CalcSquareDeltaEConvertedBatch(vivid, dull, 1, &square, 1), 0);
    EXPECT_NEAR(square, 100.0 / (2.35 * 2.35), 1e-12);
}

// Numbers by hand, so that a batch is held even where it is no loop over its single form: half the lightness
// is (66 / 116)^3 of the white, 3 and 4 are the sides of a 5, and hues are in radians.
TEST(batch, labOfMany_isWhatItIsByHand) {
    const double white[3] = {95.0, 100.0, 108.0};
    const TLabSpace space(white);
    const double y = 66.0 / 116.0 * (66.0 / 116.0) * (66.0 / 116.0);
    const std::vector<double> lab = {100.0, 0.0, 0.0, 50.0, 0.0, 0.0, 50.0, 3.0, 4.0, 50.0, 0.0, -2.0};
    std::vector<double> xyz(6);
    EXPECT_EQ(space.LabToXYZBatch(lab.data(), xyz.data(), 2), 0);
    for (std::size_t i = 0; i < 3; ++i) {
        EXPECT_NEAR(xyz[i], white[i], 1e-12);
        EXPECT_NEAR(xyz[3 + i], white[i] * y, 1e-12);
    }

    std::vector<double> lhc(6);
    EXPECT_EQ(TLabSpace::LabToLHCBatch(lab.data() + 6, lhc.data(), 2), 0);
    const double expected[6] = {50.0, 0.9272952180016122, 5.0, 50.0, -1.5707963267948966, 2.0};
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_NEAR(lhc[i], expected[i], 1e-10) << i;

    std::vector<double> squares(2);
    EXPECT_EQ(TLabSpace::CalcSquareDeltaEConvertedBatch(lab.data(), lab.data() + 6, 0, squares.data(), 2), 0);
    EXPECT_NEAR(squares[0], 2525.0, 1e-9);
    EXPECT_NEAR(squares[1], 4.0, 1e-12);
    const double grey[6] = {95.0 * y, 100.0 * y, 108.0 * y, 95.0, 100.0, 108.0};
    const double whiteTwice[6] = {95.0, 100.0, 108.0, 95.0, 100.0, 108.0};
    EXPECT_EQ(space.CalcSquareDeltaEBatch(grey, whiteTwice, 0, squares.data(), 2), 0);
    EXPECT_NEAR(squares[0], 2500.0, 1e-9);
    EXPECT_NEAR(squares[1], 0.0, 1e-12);
}

} // namespace
} // namespace qxcms::tests
