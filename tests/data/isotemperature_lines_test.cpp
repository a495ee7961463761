// Robertson's isotemperature lines against data/isotemperature_lines.csv and the publication.
#include <limits>

#include <gmock/gmock.h>

#include "spectral/isotemperature_lines.h"
#include "tests/data/table_checks.h"

namespace qxcms::tests {
namespace {

using detail::IsotemperatureLine;
using detail::kIsotemperatureLineCount;
using detail::kIsotemperatureLines;

const std::string kFile = "isotemperature_lines.csv";

std::vector<double> member(double IsotemperatureLine::*value) {
    std::vector<double> values;
    for (const IsotemperatureLine& line : kIsotemperatureLines)
        values.push_back(line.*value);
    return values;
}

TEST(isotemperatureLines, everyColumn_equalsThatOfTheDataFile) {
    EXPECT_EQ(member(&IsotemperatureLine::u), csvColumn(kFile, "u"));
    EXPECT_EQ(member(&IsotemperatureLine::v), csvColumn(kFile, "v"));
    EXPECT_EQ(member(&IsotemperatureLine::t), csvColumn(kFile, "t"));
}

TEST(isotemperatureLines, reciprocals_areTheMiredOfTheDataFileInReciprocalKelvin) {
    const std::vector<double> mired = csvColumn(kFile, "mired");
    ASSERT_EQ(mired.size(), static_cast<std::size_t>(kIsotemperatureLineCount));
    for (std::size_t i = 1; i < mired.size(); ++i)
        EXPECT_DOUBLE_EQ(kIsotemperatureLines[i].reciprocal, mired[i] / 1e6) << mired[i];
}

TEST(isotemperatureLines, reciprocals_goTo100MiredBy10AndTo600By25) {
    const std::vector<double> mired = csvColumn(kFile, "mired");
    ASSERT_EQ(mired.size(), 31u);
    for (std::size_t i = 0; i < mired.size(); ++i) {
        const double step = static_cast<double>(i);
        EXPECT_EQ(mired[i], i <= 10 ? 10.0 * step : 100.0 + 25.0 * (step - 10.0));
    }
}

TEST(isotemperatureLines, firstReciprocal_isTheSmallestNormalDouble) {
    EXPECT_EQ(kIsotemperatureLines[0].reciprocal, std::numeric_limits<double>::min());
}

TEST(isotemperatureLines, everyColumn_hasThePublishedSum) {
    EXPECT_NEAR(sum(member(&IsotemperatureLine::u)), 7.26714, 1e-9);
    EXPECT_NEAR(sum(member(&IsotemperatureLine::v)), 9.92259, 1e-9);
    EXPECT_NEAR(sum(member(&IsotemperatureLine::t)), -254.93298, 1e-9);
}

struct ExpectedBend {
    double size;
    int mired;
};

/// The two stretches of equal step: lines 0 to 10 and lines 10 to 30.
void expectBends(const std::vector<double>& values, const ExpectedBend& fine, const ExpectedBend& coarse,
                 double precision) {
    const Bend ofFine = sharpestBend({values.begin(), values.begin() + 11});
    const Bend ofCoarse = sharpestBend({values.begin() + 10, values.end()});
    EXPECT_NEAR(ofFine.size, fine.size, precision);
    EXPECT_EQ(10 * static_cast<int>(ofFine.index), fine.mired);
    EXPECT_NEAR(ofCoarse.size, coarse.size, precision);
    EXPECT_EQ(100 + 25 * static_cast<int>(ofCoarse.index), coarse.mired);
}

TEST(isotemperatureLines, u_bendsNowhereMoreThanThePublishedOne) {
    expectBends(member(&IsotemperatureLine::u), {0.00012, 70}, {0.00070, 125}, 1e-9);
}

TEST(isotemperatureLines, v_bendsNowhereMoreThanThePublishedOne) {
    expectBends(member(&IsotemperatureLine::v), {0.00020, 10}, {0.00068, 200}, 1e-9);
}

// The slopes run away towards the vertical; the angles of the lines stay smooth.
TEST(isotemperatureLines, angleOfTheLines_bendsNowhereMoreThanThePublishedOne) {
    std::vector<double> angles;
    for (const double slope : member(&IsotemperatureLine::t))
        angles.push_back(std::atan(slope));
    expectBends(angles, {0.0023701585, 20}, {0.0066938492, 325}, 1e-9);
}

// Typed from Wyszecki and Stiles, Color Science, Table 1(3.11).
TEST(isotemperatureLines, rows_areThePublishedOnes) {
    struct Row {
        int line;
        double reciprocal, u, v, t;
    };
    const Row rows[] = {{1, 10e-6, 0.18066, 0.26589, -0.25479},
                        {10, 100e-6, 0.19032, 0.29326, -0.47888},
                        {14, 200e-6, 0.21142, 0.32312, -1.0182},
                        {30, 600e-6, 0.33724, 0.36051, -116.45}};
    for (const Row& row : rows) {
        EXPECT_EQ(kIsotemperatureLines[row.line].reciprocal, row.reciprocal);
        EXPECT_EQ(kIsotemperatureLines[row.line].u, row.u);
        EXPECT_EQ(kIsotemperatureLines[row.line].v, row.v);
        EXPECT_EQ(kIsotemperatureLines[row.line].t, row.t);
    }
    EXPECT_EQ(kIsotemperatureLines[0].u, 0.18006);
    EXPECT_EQ(kIsotemperatureLines[0].v, 0.26352);
    EXPECT_EQ(kIsotemperatureLines[0].t, -0.24341);
}

// The book prints 0.24702.
TEST(isotemperatureLines, uAt325Mired_isTheCorrectedOne) {
    EXPECT_EQ(kIsotemperatureLines[19].reciprocal, 325e-6);
    EXPECT_EQ(kIsotemperatureLines[19].u, 0.24792);
    EXPECT_EQ(kIsotemperatureLines[19].v, 0.34655);
    EXPECT_EQ(kIsotemperatureLines[19].t, -2.4681);
}

} // namespace
} // namespace qxcms::tests
