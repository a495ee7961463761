// The colour-matching functions against data/observers/ and the publication.
#include <gmock/gmock.h>

#include "spectral/tobserver.h"
#include "tests/data/table_checks.h"

namespace qxcms::tests {
namespace {

const std::string kFile1931 = "observers/cie1931_2deg_5nm.csv";
const std::string kFile1964 = "observers/cie1964_10deg_5nm.csv";

struct Function {
    const double (&table)[TObserver::kTableCount];
    const std::string& file;
    const char* column;
    double sum;         // of the published four-decimal table
    double bend;        // its largest second difference
    int bendWavelength; // where that stands, in nm
};

const Function kFunctions[] = {
    {TObserver::sXSpectrum[0], kFile1931, "xbar", 21.3714, 0.0264, 605},
    {TObserver::sYSpectrum[0], kFile1931, "ybar", 21.3711, 0.0199, 500},
    {TObserver::sZSpectrum[0], kFile1931, "zbar", 21.3715, 0.1192, 420},
    {TObserver::sXSpectrum[1], kFile1964, "xbar10", 23.3294, 0.0284, 590},
    {TObserver::sYSpectrum[1], kFile1964, "ybar10", 23.3324, 0.0180, 540},
    {TObserver::sZSpectrum[1], kFile1964, "zbar10", 23.3343, 0.1088, 440},
};

TEST(observerTables, everyFunction_equalsItsColumnOfTheDataFile) {
    for (const Function& function : kFunctions)
        EXPECT_EQ(asVector(function.table), csvColumn(function.file, function.column)) << function.column;
}

TEST(observerTables, dataFiles_runFrom380To780NanometresBy5) {
    for (const std::string& file : {kFile1931, kFile1964}) {
        const std::vector<double> wavelengths = csvColumn(file, "wavelength_nm");
        ASSERT_EQ(wavelengths.size(), 81u);
        for (std::size_t i = 0; i < wavelengths.size(); ++i)
            EXPECT_EQ(wavelengths[i], 380.0 + 5.0 * static_cast<double>(i));
    }
}

TEST(observerTables, everyFunction_hasThePublishedSum) {
    for (const Function& function : kFunctions)
        EXPECT_NEAR(sum(asVector(function.table)), function.sum, 1e-9) << function.column;
}

TEST(observerTables, everyFunction_bendsNowhereMoreThanThePublishedOne) {
    for (const Function& function : kFunctions) {
        const Bend bend = sharpestBend(asVector(function.table));
        EXPECT_NEAR(bend.size, function.bend, 1e-9) << function.column;
        EXPECT_EQ(380 + 5 * static_cast<int>(bend.index), function.bendWavelength) << function.column;
    }
}

struct PublishedRow {
    int wavelength;
    double x, y, z;
};

void expectRows(int observer, const std::vector<PublishedRow>& rows) {
    for (const PublishedRow& row : rows) {
        const int i = (row.wavelength - 380) / 5;
        EXPECT_EQ(TObserver::sXSpectrum[observer][i], row.x) << row.wavelength;
        EXPECT_EQ(TObserver::sYSpectrum[observer][i], row.y) << row.wavelength;
        EXPECT_EQ(TObserver::sZSpectrum[observer][i], row.z) << row.wavelength;
    }
}

// Typed from Wyszecki and Stiles, Color Science, Table I(3.3.1).
TEST(observerTables, rowsOf2Degree_areThePublishedOnes) {
    expectRows(0, {{380, 0.0014, 0.0000, 0.0065},
                   {445, 0.3481, 0.0298, 1.7826},
                   {555, 0.5121, 1.0000, 0.0057},
                   {600, 1.0622, 0.6310, 0.0008},
                   {780, 0.0000, 0.0000, 0.0000}});
}

// Typed from CIE 15:2004.
TEST(observerTables, rowsOf10Degree_areThePublishedOnes) {
    expectRows(1, {{380, 0.0002, 0.0000, 0.0007},
                   {445, 0.3867, 0.0747, 2.0273},
                   {555, 0.6161, 0.9991, 0.0011},
                   {600, 1.1240, 0.6583, 0.0000},
                   {780, 0.0000, 0.0000, 0.0000}});
}

// The six-decimal table has 0.007650, which would round to 0.0077; the table of four decimals prints 0.0076.
TEST(observerTables, xOf2DegreeAt395Nanometres_is00076AsPublished) {
    expectRows(0, {{395, 0.0076, 0.0002, 0.0362}});
}

} // namespace
} // namespace qxcms::tests
