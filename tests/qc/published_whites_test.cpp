// The published white points against data/whites/ and against each other.
#include "qc/published_whites.h"

#include <cmath>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "qc/published_white_table.h"
#include "tests/data/table_checks.h"

namespace qxcms::tests {
namespace {

using qc::kPublishedWhites;
using qc::publishedWhite;
using qc::PublishedWhite;
using testing::DoubleNear;
using testing::ElementsAre;

const std::string kFile = "whites/published_whites.csv";

std::vector<std::string> textColumn(const std::string& title) {
    return generators::readCsv(dataFile(kFile)).column(title);
}

/// A column of the file, 0 for what is not printed.
std::vector<double> fileColumn(const std::string& title) {
    std::vector<double> values;
    for (const std::string& cell : textColumn(title))
        values.push_back(cell.empty() ? 0.0 : number(cell));
    return values;
}

template <class T>
std::vector<T> tableColumn(T PublishedWhite::*member) {
    std::vector<T> values;
    for (const PublishedWhite& white : kPublishedWhites)
        values.push_back(white.*member);
    return values;
}

bool isTristimulus(const PublishedWhite& white) {
    return white.tristimulusX > 0.0;
}

TEST(publishedWhites, everyFigure_isThatOfTheDataFile) {
    EXPECT_EQ(tableColumn(&PublishedWhite::tristimulusX), fileColumn("X"));
    EXPECT_EQ(tableColumn(&PublishedWhite::tristimulusZ), fileColumn("Z"));
    EXPECT_EQ(tableColumn(&PublishedWhite::chromaticityX), fileColumn("x"));
    EXPECT_EQ(tableColumn(&PublishedWhite::chromaticityY), fileColumn("y"));
}

TEST(publishedWhites, everyIlluminantAndObserver_isThatOfTheDataFile) {
    std::vector<std::string> observers;
    for (const bool tenDegree : tableColumn(&PublishedWhite::tenDegree))
        observers.emplace_back(tenDegree ? "10" : "2");
    const std::vector<const char*> illuminants = tableColumn(&PublishedWhite::illuminant);
    EXPECT_EQ(std::vector<std::string>(illuminants.begin(), illuminants.end()), textColumn("illuminant"));
    EXPECT_EQ(observers, textColumn("observer"));
}

TEST(publishedWhites, everyIlluminantAndObserver_standsOnce) {
    std::set<std::pair<std::string, bool>> seen;
    for (const PublishedWhite& white : kPublishedWhites)
        EXPECT_TRUE(seen.emplace(white.illuminant, white.tenDegree).second) << white.illuminant;
}

TEST(publishedWhites, xAndZ_arePrintedTogether) {
    for (const PublishedWhite& white : kPublishedWhites)
        EXPECT_EQ(white.tristimulusX > 0.0, white.tristimulusZ > 0.0) << white.illuminant;
}

// Two publications: digits that changed places would stand out. For the lamps the chromaticities printed for
// the 10 degree observer are not quite those of the tables.
TEST(publishedWhites, tristimulusValuesAndChromaticities_agreeWithinWhatIsPrinted) {
    int compared = 0;
    for (const PublishedWhite& white : kPublishedWhites) {
        if (!isTristimulus(white))
            continue;
        ++compared;
        const bool isLamp = white.illuminant[0] == 'F';
        const double precision = isLamp && white.tenDegree ? 0.00014 : 0.00005;
        const double sum = white.tristimulusX + 100.0 + white.tristimulusZ;
        EXPECT_NEAR(white.tristimulusX / sum, white.chromaticityX, precision) << white.illuminant;
        EXPECT_NEAR(100.0 / sum, white.chromaticityY, precision) << white.illuminant;
    }
    EXPECT_EQ(compared, 18);
}

// The other list of figures that there is: that of the tests of the weighting.
TEST(publishedWhites, everyFigure_isThatOfTheGoldenFile) {
    const generators::CsvTable golden = generators::readCsv(QXCMS_SOURCE_DIR "/tests/golden/whites.csv");
    const generators::CsvTable data = generators::readCsv(dataFile(kFile));
    const std::string family = "CIE Illuminant ";
    int compared = 0;
    for (const std::vector<std::string>& white : golden.rows) {
        const std::string name = white[0].rfind(family, 0) == 0 ? white[0].substr(family.size()) : white[0];
        for (const std::vector<std::string>& row : data.rows) {
            if (row[0] != name || row[1] + " degree" != white[1])
                continue;
            ++compared;
            EXPECT_EQ(std::vector<std::string>(row.begin() + 2, row.begin() + 6),
                      std::vector<std::string>(white.begin() + 2, white.begin() + 6))
                << white[0] << " " << white[1];
        }
    }
    EXPECT_EQ(compared, 44);
}

// Typed from ASTM E308.
TEST(publishedWhites, daylight_isThatOfAstmE308) {
    EXPECT_THAT(publishedWhite("D50", false).value(), ElementsAre(96.422, 100.0, 82.521));
    EXPECT_THAT(publishedWhite("D65", false).value(), ElementsAre(95.047, 100.0, 108.883));
    EXPECT_THAT(publishedWhite("D65", true).value(), ElementsAre(94.811, 100.0, 107.304));
    EXPECT_THAT(publishedWhite("A", false).value(), ElementsAre(109.850, 100.0, 35.585));
    EXPECT_THAT(publishedWhite("F11", true).value(), ElementsAre(103.863, 100.0, 65.607));
}

// By hand from x = 0.3458, y = 0.3586: X = 34.58 / 0.3586, Z = 29.56 / 0.3586.
TEST(publishedWhites, illuminantThatAstmE308DoesNotPrint_isThatOfTheChromaticity) {
    EXPECT_THAT(publishedWhite("F8", false).value(),
                ElementsAre(DoubleNear(96.43056, 0.00001), 100.0, DoubleNear(82.43168, 0.00001)));
}

TEST(publishedWhites, name_mayBeInAnyLetterCase) {
    EXPECT_EQ(publishedWhite("d50", true), publishedWhite("D50", true));
    EXPECT_EQ(publishedWhite("led-rgb1", false), publishedWhite("LED-RGB1", false));
    EXPECT_TRUE(publishedWhite("led-rgb1", false).has_value());
}

TEST(publishedWhites, ledsForTheTenDegreeObserver_haveNone) {
    EXPECT_TRUE(publishedWhite("LED-B1", false).has_value());
    EXPECT_FALSE(publishedWhite("LED-B1", true).has_value());
}

TEST(publishedWhites, unknownName_hasNone) {
    for (const char* name : {"", "D", "D60", "D500", "F13", "CIE Illuminant A"})
        EXPECT_FALSE(publishedWhite(name, false).has_value()) << name;
}

} // namespace
} // namespace qxcms::tests
