// XYZ to Lab for many colours: the bits of XYZToLab, for whatever it is given.
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "colorspace/tlabspace.h"
#include "tests/support/batches.h"
#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kTiny = std::numeric_limits<double>::denorm_min();
constexpr Triple kUnitWhite = {1.0, 1.0, 1.0};

// Ordinary whites, whites with zeros and whites that are hardly any.
const std::vector<Triple>& whites() {
    static const std::vector<Triple> kWhites = {
        {95.047, 100.0, 108.883},  {0.9642, 1.0, 0.8249}, {0.0, 100.0, 108.883}, {95.047, 0.0, 108.883},
        {95.047, 100.0, 0.0},      {0.0, 0.0, 0.0},       {-0.0, 100.0, -0.0},   {-3.0, 100.0, -5.0},
        {kInfinity, 100.0, 1e300}, {kNan, kTiny, 1e-310}, {1e-320, 1.0, 1e-200}};
    return kWhites;
}

void expectAsSingle(const Triple& white, const std::vector<double>& xyz) {
    const TLabSpace space(white.data());
    expectBatchAsSingle(
        xyz, 3, 3, [&](const double* in, double* out) { space.XYZToLab(in, out); },
        [&](const double* in, double* out, std::size_t n) { return space.XYZToLabBatch(in, out, n); });
}

TEST(labBatch, specialValues_haveTheBitsOfTheSingleForm) {
    const ReportCollector expectedReports; // of the negative white
    for (const Triple& white : whites()) {
        SCOPED_TRACE(testing::PrintToString(white));
        expectAsSingle(white, specialTriples());
    }
}

TEST(labBatch, randomColours_haveTheBitsOfTheSingleForm) {
    const ReportCollector expectedReports; // of the negative white
    for (const Triple& white : whites()) {
        SCOPED_TRACE(testing::PrintToString(white));
        expectAsSingle(white, mixedValues(30011, -5.0, 130.0, 21));
    }
}

TEST(labBatch, anyDoubles_haveTheBitsOfTheSingleForm) {
    Random random(22);
    std::vector<double> xyz(300000);
    for (double& value : xyz)
        value = random.anyDouble();
    expectAsSingle(kUnitWhite, xyz);
    expectAsSingle(whites()[0], xyz);
}

// Every exponent with the mantissas at and around its powers of two, and the neighbours of cubes, whose roots
// lie next to numbers that a double holds.
TEST(labBatch, numbersAtTheEdges_haveTheBitsOfTheSingleForm) {
    std::vector<double> xyz;
    for (std::uint64_t exponent = 0; exponent < 2047; ++exponent)
        for (const std::uint64_t mantissa :
             {0x0ull, 0x1ull, 0x2ull, 0x8000000000000ull, 0xFFFFFFFFFFFFEull, 0xFFFFFFFFFFFFFull})
            xyz.push_back(std::bit_cast<double>(exponent << 52 | mantissa));
    Random random(23);
    for (int i = 0; i < 20000; ++i) {
        const double root = random.between(0.2, 5.0);
        const double cube = root * root * root;
        xyz.insert(xyz.end(), {cube, std::nextafter(cube, 0.0), std::nextafter(cube, 10.0)});
    }
    for (int i = 1; i < 2000; ++i)
        xyz.push_back(static_cast<double>(i) * i * i);
    while (xyz.size() % 3 != 0)
        xyz.push_back(1.0);
    expectAsSingle(kUnitWhite, xyz);
}

// Around the threshold of 0.008856, number by number.
TEST(labBatch, threshold_isThatOfTheSingleForm) {
    const std::uint64_t threshold = std::bit_cast<std::uint64_t>(0.008856);
    std::vector<double> xyz;
    for (std::uint64_t bits = threshold - 3000; bits < threshold + 3000; ++bits)
        xyz.push_back(std::bit_cast<double>(bits));
    expectAsSingle(kUnitWhite, xyz);
}

TEST(labBatch, smallCounts_haveTheBitsOfTheSingleForm) {
    for (const std::size_t which : {0u, 2u, 5u}) {
        const TLabSpace space(whites()[which].data());
        expectSmallBatchesAsSingle(
            mixedValues(3 * 301, -5.0, 130.0, 24), 3, 3,
            [&](const double* in, double* out) { space.XYZToLab(in, out); },
            [&](const double* in, double* out, std::size_t n) { return space.XYZToLabBatch(in, out, n); });
    }
}

TEST(labBatch, nothingAndNull_writeNothing) {
    const TLabSpace space(whites()[0].data());
    const auto batch = [&](const double* in, double* out, std::size_t n) {
        return space.XYZToLabBatch(in, out, n);
    };
    expectNothingOfNothing(3, 3, batch);
    expectNothingOfNull(0, 3, 3, batch);
}

} // namespace
} // namespace qxcms::tests
