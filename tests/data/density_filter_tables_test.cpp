// The filter weights of spectral density against data/density/.
#include <algorithm>

#include <gmock/gmock.h>

#include "spectral/tspectrum.h"
#include "tests/data/table_checks.h"

namespace qxcms::tests {
namespace {

const std::string kFile = "density/filter_weights.csv";

struct Filter {
    const double (&table)[TSpectrum::kStandardCount];
    const char* column;
    int nonZero;        // how many weights are not 0
    double bend;        // largest second difference
    int bendWavelength; // where that stands, in nm
};

const Filter kFilters[] = {
    {TSpectrum::sRedFilter[TSpectrum::kAnsiA], "ANSI A red", 14, 0.281880, 620},
    {TSpectrum::sGreenFilter[TSpectrum::kAnsiA], "ANSI A green", 10, 0.188458, 530},
    {TSpectrum::sBlueFilter[TSpectrum::kAnsiA], "ANSI A blue", 8, 0.189643, 420},
    {TSpectrum::sRedFilter[TSpectrum::kAnsiT], "ANSI T red", 15, 0.271547, 600},
    {TSpectrum::sGreenFilter[TSpectrum::kAnsiT], "ANSI T green", 15, 0.039902, 490},
    {TSpectrum::sBlueFilter[TSpectrum::kAnsiT], "ANSI T blue", 16, 0.016876, 410},
    {TSpectrum::sRedFilter[TSpectrum::kDin], "DIN red", 7, 0.108224, 620},
    {TSpectrum::sGreenFilter[TSpectrum::kDin], "DIN green", 7, 0.107342, 530},
    {TSpectrum::sBlueFilter[TSpectrum::kDin], "DIN blue", 7, 0.103439, 430},
    {TSpectrum::sRedFilter[TSpectrum::kDinNb], "DIN NB red", 1, 2.0, 620},
    {TSpectrum::sGreenFilter[TSpectrum::kDinNb], "DIN NB green", 1, 2.0, 530},
    {TSpectrum::sBlueFilter[TSpectrum::kDinNb], "DIN NB blue", 1, 2.0, 430},
    {TSpectrum::sBlackFilter[TSpectrum::kAnsiA], "visual", 35, 0.005350, 500},
};

TEST(densityFilterTables, everyRow_equalsItsColumnOfTheDataFile) {
    for (const Filter& filter : kFilters)
        EXPECT_EQ(asVector(filter.table), csvColumn(kFile, filter.column)) << filter.column;
}

TEST(densityFilterTables, dataFile_runsFrom380To730NanometresBy10) {
    const std::vector<double> wavelengths = csvColumn(kFile, "wavelength_nm");
    ASSERT_EQ(wavelengths.size(), 36u);
    for (std::size_t i = 0; i < wavelengths.size(); ++i)
        EXPECT_EQ(wavelengths[i], 380.0 + 10.0 * static_cast<double>(i));
}

TEST(densityFilterTables, everyRow_addsUpToOneAndTheBlueOneOfAnsiTTo099994) {
    for (const Filter& filter : kFilters) {
        const double expected = std::string(filter.column) == "ANSI T blue" ? 0.999944 : 1.0;
        EXPECT_NEAR(sum(asVector(filter.table)), expected, 1e-12) << filter.column;
    }
}

TEST(densityFilterTables, everyRow_hasItsNumberOfWeights) {
    for (const Filter& filter : kFilters) {
        const std::vector<double> weights = asVector(filter.table);
        EXPECT_EQ(36 - std::count(weights.begin(), weights.end(), 0.0), filter.nonZero) << filter.column;
    }
}

TEST(densityFilterTables, everyRow_bendsNowhereMoreThanItsCurve) {
    for (const Filter& filter : kFilters) {
        const Bend bend = sharpestBend(asVector(filter.table));
        EXPECT_NEAR(bend.size, filter.bend, 1e-9) << filter.column;
        EXPECT_EQ(380 + 10 * static_cast<int>(bend.index), filter.bendWavelength) << filter.column;
    }
}

TEST(densityFilterTables, visualRow_isTheSameForEveryStandard) {
    for (const int standard : {TSpectrum::kAnsiT, TSpectrum::kDin, TSpectrum::kDinNb})
        EXPECT_EQ(asVector(TSpectrum::sBlackFilter[standard]), asVector(TSpectrum::sBlackFilter[0]));
}

// Typed by hand: the largest weight of each channel and the first weight of its range.
TEST(densityFilterTables, weights_areThosePrescribed) {
    const auto at = [](const double(&table)[TSpectrum::kStandardCount], int wavelength) {
        return table[(wavelength - 380) / 10];
    };
    EXPECT_EQ(at(TSpectrum::sRedFilter[TSpectrum::kAnsiA], 600), 0.001269);
    EXPECT_EQ(at(TSpectrum::sRedFilter[TSpectrum::kAnsiA], 620), 0.342921);
    EXPECT_EQ(at(TSpectrum::sGreenFilter[TSpectrum::kAnsiA], 500), 0.000144);
    EXPECT_EQ(at(TSpectrum::sGreenFilter[TSpectrum::kAnsiA], 530), 0.319421);
    EXPECT_EQ(at(TSpectrum::sBlueFilter[TSpectrum::kAnsiA], 440), 0.327534);
    EXPECT_EQ(at(TSpectrum::sRedFilter[TSpectrum::kAnsiT], 600), 0.319468);
    EXPECT_EQ(at(TSpectrum::sGreenFilter[TSpectrum::kAnsiT], 530), 0.190006);
    EXPECT_EQ(at(TSpectrum::sBlueFilter[TSpectrum::kAnsiT], 460), 0.140639);
    EXPECT_EQ(at(TSpectrum::sRedFilter[TSpectrum::kDin], 620), 0.270372);
    EXPECT_EQ(at(TSpectrum::sGreenFilter[TSpectrum::kDin], 530), 0.269648);
    EXPECT_EQ(at(TSpectrum::sBlueFilter[TSpectrum::kDin], 430), 0.266369);
    EXPECT_EQ(at(TSpectrum::sBlackFilter[TSpectrum::kDin], 390), 0.000001);
    EXPECT_EQ(at(TSpectrum::sBlackFilter[TSpectrum::kDin], 570), 0.094578);
    EXPECT_EQ(at(TSpectrum::sBlackFilter[TSpectrum::kDin], 730), 0.0001);
}

// The published figures are 0.79 % and 27.99 % of the peak; these two are kept as the suite has them.
TEST(densityFilterTables, weightsThatDepartFromStatusAAndT_areKept) {
    EXPECT_EQ(TSpectrum::sBlueFilter[TSpectrum::kAnsiA][10], 0.003193);
    EXPECT_EQ(TSpectrum::sGreenFilter[TSpectrum::kAnsiT][12], 0.057002);
}

} // namespace
} // namespace qxcms::tests
