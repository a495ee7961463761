// CIEDE2000 against its published test pairs and an independent calculation.
#include "qc/ciede2000.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/data/table_checks.h"

namespace qxcms::tests {
namespace {

using qc::ciede2000;
using qc::Lab;

struct PublishedPair {
    std::string number;
    Lab first;
    Lab second;
    double difference;
};

/// The pairs of Sharma, Wu and Dalal, Color Research and Application 30 (2005) 21-30, Table 1.
std::vector<PublishedPair> publishedPairs() {
    const std::string file = QXCMS_SOURCE_DIR "/tests/golden/ciede2000_pairs.csv";
    const generators::CsvTable table = generators::readCsv(file);
    const auto column = [&](const char* title) {
        std::vector<double> values;
        for (const std::string& cell : table.column(title))
            values.push_back(number(cell));
        return values;
    };
    const std::vector<double> l1 = column("L1"), a1 = column("a1"), b1 = column("b1");
    const std::vector<double> l2 = column("L2"), a2 = column("a2"), b2 = column("b2");
    const std::vector<double> published = column("published");
    const std::vector<std::string> numbers = table.column("pair");
    std::vector<PublishedPair> pairs;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        pairs.push_back({numbers[i], {l1[i], a1[i], b1[i]}, {l2[i], a2[i], b2[i]}, published[i]});
    return pairs;
}

/// Colours all over the space, neutrals among them.
std::vector<Lab> grid() {
    std::vector<Lab> colors;
    for (const double lightness : {0.0, 20.0, 50.0, 93.5})
        for (const double a : {-60.0, -9.5, 0.0, 2.5, 44.0})
            for (const double b : {-71.0, -0.5, 0.0, 9.5, 80.0})
                colors.push_back({lightness, a, b});
    return colors;
}

void expectDifference(const Lab& first, const Lab& second, double difference, double precision) {
    EXPECT_NEAR(ciede2000(first, second), difference, precision);
    EXPECT_NEAR(ciede2000(second, first), difference, precision);
}

// Half a unit of the fourth decimal, the last one printed.
TEST(ciede2000, publishedPairs_haveTheirPublishedDifferenceInBothDirections) {
    const std::vector<PublishedPair> pairs = publishedPairs();
    ASSERT_EQ(pairs.size(), 34U);
    for (const PublishedPair& pair : pairs) {
        SCOPED_TRACE(pair.number);
        expectDifference(pair.first, pair.second, pair.difference, 0.00005);
    }
}

// Pairs 9 to 12 and 13 to 15, typed from the publication: the difference jumps where the two hues pass half
// a turn, and exactly half a turn belongs to the side below.
TEST(ciede2000, oppositeHues_jumpWhereTheyPassHalfATurn) {
    expectDifference({50.0, 2.4900, -0.0010}, {50.0, -2.4900, 0.0009}, 7.1792, 0.00005);
    expectDifference({50.0, 2.4900, -0.0010}, {50.0, -2.4900, 0.0010}, 7.1792, 0.00005);
    expectDifference({50.0, 2.4900, -0.0010}, {50.0, -2.4900, 0.0011}, 7.2195, 0.00005);
    expectDifference({50.0, 2.4900, -0.0010}, {50.0, -2.4900, 0.0012}, 7.2195, 0.00005);
    expectDifference({50.0, -0.0010, 2.4900}, {50.0, 0.0009, -2.4900}, 4.8045, 0.00005);
    expectDifference({50.0, -0.0010, 2.4900}, {50.0, 0.0010, -2.4900}, 4.8045, 0.00005);
    expectDifference({50.0, -0.0010, 2.4900}, {50.0, 0.0011, -2.4900}, 4.7461, 0.00005);
}

// Opposite in decimals; in binary their hues are a little more than half a turn apart. The other mean hue
// would give 5.987410469, 9.634577105, 10.739505661 and 3.828589263.
TEST(ciede2000, oppositeHues_areNoFurtherApartThanHalfATurnForRounding) {
    expectDifference({50.0, -0.9, -0.8}, {50.0, 2.7, 2.4}, 5.853588581, 1e-8);
    expectDifference({50.0, -0.9, 0.3}, {50.0, 6.3, -2.1}, 9.405996953, 1e-8);
    expectDifference({50.0, -0.9, 0.8}, {50.0, 6.3, -5.6}, 10.302611651, 1e-8);
    expectDifference({50.0, -0.6, -0.4}, {50.0, 1.8, 1.2}, 3.778409356, 1e-8);
}

TEST(ciede2000, equalColors_differByNothing) {
    for (const Lab& color : grid())
        EXPECT_EQ(ciede2000(color, color), 0.0);
}

TEST(ciede2000, sampleAndStandard_mayBeExchanged) {
    for (const Lab& first : grid())
        for (const Lab& second : grid())
            ASSERT_NEAR(ciede2000(first, second), ciede2000(second, first), 1e-12)
                << testing::PrintToString(first) << testing::PrintToString(second);
}

TEST(ciede2000, differentColors_differByMoreThanNothing) {
    for (const Lab& first : grid())
        for (const Lab& second : grid())
            if (first != second) {
                ASSERT_GT(ciede2000(first, second), 0.1)
                    << testing::PrintToString(first) << testing::PrintToString(second);
            }
}

// dL' / S_L alone. Mean lightness 55: S_L = 1 + 0.015 * 25 / sqrt(20 + 25).
TEST(ciede2000, neutrals_differByTheWeightedLightness) {
    expectDifference({50.0, 0.0, 0.0}, {60.0, 0.0, 0.0}, 10.0 / (1.0 + 0.375 / std::sqrt(45.0)), 1e-12);
}

TEST(ciede2000, lightness_countsFullyAroundMeanLightness50) {
    expectDifference({45.0, 0.0, 0.0}, {55.0, 0.0, 0.0}, 10.0, 1e-12);
}

// dC' / S_C alone, a* being 0: S_C = 1 + 0.045 * 5.
TEST(ciede2000, neutralAndColor_haveNoHueDifference) {
    expectDifference({50.0, 0.0, 0.0}, {50.0, 0.0, 10.0}, 10.0 / 1.225, 1e-12);
    expectDifference({50.0, 0.0, 0.0}, {50.0, 0.0, -10.0}, 10.0 / 1.225, 1e-12);
}

TEST(ciede2000, neutral_mayBeWrittenWithNegativeZeros) {
    expectDifference({50.0, -0.0, -0.0}, {50.0, 0.0, 10.0}, 10.0 / 1.225, 1e-12);
    EXPECT_EQ(ciede2000({50.0, -0.0, -0.0}, {50.0, 0.0, 0.0}), 0.0);
    EXPECT_EQ(ciede2000({50.0, 20.0, -0.0}, {50.0, 20.0, 0.0}), 0.0);
}

// From an independent calculation.
TEST(ciede2000, huesAcross0Degrees_haveTheirMeanAcross0Degrees) {
    expectDifference({50.0, 20.0, -4.0}, {50.0, 12.0, 9.0}, 11.252642712734, 1e-9);
}

// From an independent calculation; blues at the centre of the rotation, on its flanks and far from it.
TEST(ciede2000, blues_areRotated) {
    expectDifference({60.0, 40.0, -70.0}, {62.0, 30.0, -80.0}, 9.703147959089, 1e-9);
    expectDifference({30.0, 20.0, -60.0}, {32.0, -5.0, -50.0}, 13.237102403635, 1e-9);
    expectDifference({50.0, 16.0, -18.0}, {55.0, 3.0, -15.0}, 12.347073006025, 1e-9);
}

// The seventh power of the chroma is beyond the range of a double.
TEST(ciede2000, immenseValues_giveANumber) {
    const double difference = ciede2000({50.0, 1e60, -1e60}, {50.0, 2e60, 1e60});
    EXPECT_TRUE(std::isfinite(difference)) << difference;
    EXPECT_GT(difference, 1.0);
}

} // namespace
} // namespace qxcms::tests
