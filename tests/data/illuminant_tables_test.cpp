// The illuminant tables in data/illuminants/ against the publications.
#include <gmock/gmock.h>

#include "tests/data/table_checks.h"

namespace qxcms::tests {
namespace {

const std::string kFiles[] = {"illuminants/a_c_e.csv", "illuminants/daylight.csv",
                              "illuminants/fluorescent.csv", "illuminants/led.csv"};

struct Illuminant {
    const std::string& file;
    const char* column;
    double sum;         // of the published 81 values
    double bend;        // their largest second difference
    int bendWavelength; // where that stands, in nm; the lines of mercury and of the phosphors for the lamps
};

const Illuminant kIlluminants[] = {
    {kFiles[0], "A", 9561.7213, 0.0893, 425},    {kFiles[0], "C", 7221.54, 1.80, 440},
    {kFiles[1], "D50", 6959.526, 22.884, 760},   {kFiles[1], "D55", 6958.673, 21.111, 760},
    {kFiles[1], "D65", 7092.7234, 18.7808, 760}, {kFiles[1], "D75", 7298.011, 17.374, 760},
    {kFiles[2], "F1", 684.33, 61.84, 435},       {kFiles[2], "F2", 594.50, 53.09, 435},
    {kFiles[2], "F3", 556.19, 50.95, 435},       {kFiles[2], "F4", 540.17, 50.43, 435},
    {kFiles[2], "F5", 664.37, 57.15, 435},       {kFiles[2], "F6", 565.79, 50.03, 435},
    {kFiles[2], "F7", 788.90, 61.61, 435},       {kFiles[2], "F8", 789.42, 50.69, 435},
    {kFiles[2], "F9", 743.46, 50.65, 435},       {kFiles[2], "F10", 615.56, 72.79, 545},
    {kFiles[2], "F11", 594.08, 73.48, 545},      {kFiles[2], "F12", 566.76, 71.73, 610},
    {kFiles[3], "LED-B1", 641.70, 1.82, 450},    {kFiles[3], "LED-B2", 637.35, 3.01, 450},
    {kFiles[3], "LED-B3", 631.14, 5.46, 450},    {kFiles[3], "LED-B4", 626.54, 7.09, 450},
    {kFiles[3], "LED-B5", 655.25, 8.35, 450},    {kFiles[3], "LED-BH1", 579.31, 12.04, 625},
    {kFiles[3], "LED-RGB1", 686.37, 22.21, 635}, {kFiles[3], "LED-V1", 849.68, 8.03, 415},
    {kFiles[3], "LED-V2", 812.08, 7.56, 410},
};

TEST(illuminantTables, everyFile_runsFrom380To780NanometresBy5) {
    for (const std::string& file : kFiles) {
        const std::vector<double> wavelengths = csvColumn(file, "wavelength_nm");
        ASSERT_EQ(wavelengths.size(), 81u) << file;
        for (std::size_t i = 0; i < wavelengths.size(); ++i)
            EXPECT_EQ(wavelengths[i], 380.0 + 5.0 * static_cast<double>(i)) << file;
    }
}

TEST(illuminantTables, everyIlluminant_hasThePublishedSum) {
    for (const Illuminant& illuminant : kIlluminants)
        EXPECT_NEAR(sum(csvColumn(illuminant.file, illuminant.column)), illuminant.sum, 1e-8)
            << illuminant.column;
}

TEST(illuminantTables, everyIlluminant_bendsNowhereMoreThanThePublishedOne) {
    for (const Illuminant& illuminant : kIlluminants) {
        const Bend bend = sharpestBend(csvColumn(illuminant.file, illuminant.column));
        EXPECT_NEAR(bend.size, illuminant.bend, 1e-9) << illuminant.column;
        EXPECT_EQ(380 + 5 * static_cast<int>(bend.index), illuminant.bendWavelength) << illuminant.column;
    }
}

TEST(illuminantTables, illuminantE_is100Everywhere) {
    EXPECT_THAT(csvColumn(kFiles[0], "E"), testing::Each(100.0));
}

void expectRow(const std::string& file, int wavelength, const std::vector<std::string>& values) {
    const std::vector<std::string> row =
        generators::readCsv(dataFile(file)).rows.at(static_cast<std::size_t>((wavelength - 380) / 5));
    EXPECT_EQ(row.front(), std::to_string(wavelength));
    EXPECT_EQ(std::vector<std::string>(row.begin() + 1, row.end()), values) << file << " " << wavelength;
}

// Typed from CIE 15:2004: A, C, E.
TEST(illuminantTables, rowsOfACAndE_areThePublishedOnes) {
    expectRow(kFiles[0], 380, {"9.7951", "33", "100"});
    expectRow(kFiles[0], 520, {"72.4959", "96.9", "100"});
    expectRow(kFiles[0], 780, {"241.675", "59.1", "100"});
}

// Typed from CIE 15:2004: D50, D55, D65, D75. The value of D75 at 520 nm is not the 108.56 of some copies.
TEST(illuminantTables, rowsOfTheDaylights_areThePublishedOnes) {
    expectRow(kFiles[1], 380, {"24.488", "32.584", "49.9755", "66.703"});
    expectRow(kFiles[1], 520, {"97.129", "99.987", "104.79", "108.659"});
    expectRow(kFiles[1], 560, {"100", "100", "100", "100"});
    expectRow(kFiles[1], 780, {"78.274", "71.818", "63.3828", "58.324"});
}

// Typed from CIE 15:2004: F1 to F12, among them the mercury line at 435 nm.
TEST(illuminantTables, rowsOfTheFluorescentLamps_areThePublishedOnes) {
    expectRow(
        kFiles[2], 380,
        {"1.87", "1.18", "0.82", "0.57", "1.87", "1.05", "2.56", "1.21", "0.90", "1.11", "0.91", "0.96"});
    expectRow(kFiles[2], 435,
              {"43.67", "34.98", "31.85", "30.28", "40.76", "32.61", "44.14", "34.10", "32.62", "34.39",
               "33.94", "29.05"});
    expectRow(kFiles[2], 545,
              {"27.74", "24.88", "23.82", "22.59", "27.78", "25.22", "29.52", "28.96", "27.71", "73.69",
               "72.84", "65.40"});
    expectRow(
        kFiles[2], 780,
        {"0.43", "0.27", "0.21", "0.19", "0.40", "0.21", "0.81", "1.32", "1.12", "0.09", "0.09", "0.05"});
}

// Typed from CIE 015:2018: B1 to B5, BH1, RGB1, V1, V2.
TEST(illuminantTables, rowsOfTheLeds_areThePublishedOnes) {
    expectRow(kFiles[3], 450, {"7.89", "10.56", "18.87", "25.91", "32.34", "7.74", "5.84", "2.68", "6.97"});
    expectRow(kFiles[3], 600,
              {"20.80", "19.51", "16.50", "14.44", "13.22", "14.31", "11.10", "18.50", "15.26"});
    expectRow(kFiles[3], 780, {"0.61", "0.52", "0.28", "0.42", "0.27", "0.25", "0.17", "1.22", "0.84"});
}

} // namespace
} // namespace qxcms::tests
