// The ASTM E308 Table 6 weights against data/weights/ and the publication.
#include <gmock/gmock.h>

#include "spectral/tilluminantandobserver.h"
#include "tests/data/table_checks.h"

namespace qxcms::tests {
namespace {

const std::string kFile = "weights/astm_e308_table6_1931_10nm.csv";

struct Weights {
    int lamp;   // F2, F7, F11
    int weight; // x, y, z
    const char* column;
    double sum;         // over 380 to 730 nm of the published table
    double bend;        // its largest second difference
    int bendWavelength; // where that stands, in nm
};

const Weights kWeights[] = {
    {0, 0, "F2_Wx", 99.188, 4.407, 580},    {0, 1, "F2_Wy", 100.004, 6.320, 550},
    {0, 2, "F2_Wz", 67.395, 21.463, 440},   {1, 0, "F7_Wx", 95.041, 5.254, 440},
    {1, 1, "F7_Wy", 100.002, 8.183, 550},   {1, 2, "F7_Wz", 108.748, 25.705, 440},
    {2, 0, "F11_Wx", 100.964, 41.992, 610}, {2, 1, "F11_Wy", 100.005, 33.617, 530},
    {2, 2, "F11_Wz", 64.354, 21.855, 440},
};

std::vector<double> tableOf(const Weights& weights) {
    return asVector(TIlluminantAndObserver::sASTMtable6[weights.lamp][weights.weight]);
}

TEST(astmTables, everyRow_equalsItsColumnOfTheDataFile) {
    for (const Weights& weights : kWeights)
        EXPECT_EQ(tableOf(weights), csvColumn(kFile, weights.column)) << weights.column;
}

TEST(astmTables, dataFile_runsFrom380To730NanometresBy10) {
    const std::vector<double> wavelengths = csvColumn(kFile, "wavelength_nm");
    ASSERT_EQ(wavelengths.size(), 36u);
    for (std::size_t i = 0; i < wavelengths.size(); ++i)
        EXPECT_EQ(wavelengths[i], 380.0 + 10.0 * static_cast<double>(i));
}

TEST(astmTables, everyRow_hasThePublishedSum) {
    for (const Weights& weights : kWeights)
        EXPECT_NEAR(sum(tableOf(weights)), weights.sum, 1e-9) << weights.column;
}

// Table 5 of the same standard, for spectra corrected for bandpass, gives 100.002, 99.998 and 100.002.
TEST(astmTables, yWeights_addUpToTheSumsOfTable6NotOfTable5) {
    EXPECT_NEAR(sum(asVector(TIlluminantAndObserver::sASTMtable6[0][1])), 100.004, 1e-9);
    EXPECT_NEAR(sum(asVector(TIlluminantAndObserver::sASTMtable6[1][1])), 100.002, 1e-9);
    EXPECT_NEAR(sum(asVector(TIlluminantAndObserver::sASTMtable6[2][1])), 100.005, 1e-9);
}

TEST(astmTables, everyRow_bendsNowhereMoreThanThePublishedOne) {
    for (const Weights& weights : kWeights) {
        const Bend bend = sharpestBend(tableOf(weights));
        EXPECT_NEAR(bend.size, weights.bend, 1e-9) << weights.column;
        EXPECT_EQ(380 + 10 * static_cast<int>(bend.index), weights.bendWavelength) << weights.column;
    }
}

// Typed from ASTM E308, Table 6: x, y, z weight of F2, of F7, of F11.
TEST(astmTables, rows_areThePublishedOnes) {
    struct Row {
        int wavelength;
        double weights[9];
    };
    const Row rows[] = {{380, {0.001, 0.000, 0.004, 0.001, 0.000, 0.005, 0.001, 0.000, 0.005}},
                        {440, {4.235, 0.248, 21.081, 5.834, 0.346, 29.065, 4.264, 0.251, 21.231}},
                        {540, {2.917, 9.247, 0.176, 3.686, 11.541, 0.214, 9.613, 29.254, 0.535}},
                        {550, {5.409, 12.968, 0.124, 5.727, 13.711, 0.131, 11.438, 28.030, 0.300}},
                        {730, {0.001, 0.000, 0.000, 0.002, 0.001, 0.000, 0.000, 0.000, 0.000}}};
    for (const Row& row : rows) {
        for (int i = 0; i < 9; ++i)
            EXPECT_EQ(TIlluminantAndObserver::sASTMtable6[i / 3][i % 3][(row.wavelength - 380) / 10],
                      row.weights[i])
                << row.wavelength << " nm, column " << i;
    }
}

} // namespace
} // namespace qxcms::tests
