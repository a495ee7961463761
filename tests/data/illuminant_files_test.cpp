// The illuminant files that ship, data/r/ill/, against data/illuminants/.
#include <cstdint>
#include <filesystem>
#include <map>
#include <set>

#include <gmock/gmock.h>

#include "spectral/tilluminant.h"
#include "tests/data/table_checks.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

struct Shipped {
    std::string name;   // of the illuminant
    std::string csv;    // its table in data/illuminants/
    std::string column; // there
};

/// File name without extension -> what it holds.
const std::map<std::string, Shipped>& shippedFiles() {
    static const std::map<std::string, Shipped> files = [] {
        std::map<std::string, Shipped> all;
        for (const std::string letter : {"A", "C", "E"})
            all[std::string(1, static_cast<char>(letter[0] - 'A' + 'a'))] = {"CIE Illuminant " + letter,
                                                                             "a_c_e.csv", letter};
        for (const std::string temperature : {"50", "55", "65", "75"})
            all["d" + temperature] = {"D" + temperature, "daylight.csv", "D" + temperature};
        for (const std::string lamp : {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"})
            all["f" + lamp] = {"CIE Illuminant F" + lamp, "fluorescent.csv", "F" + lamp};
        const std::pair<const char*, const char*> leds[] = {{"b1", "B1"},     {"b2", "B2"}, {"b3", "B3"},
                                                            {"b4", "B4"},     {"b5", "B5"}, {"bh1", "BH1"},
                                                            {"rgb1", "RGB1"}, {"v1", "V1"}, {"v2", "V2"}};
        for (const auto& [lower, upper] : leds)
            all[std::string("led-") + lower] = {std::string("CIE Illuminant LED-") + upper, "led.csv",
                                                std::string("LED-") + upper};
        return all;
    }();
    return files;
}

std::string pathOf(const std::string& stem) {
    return dataFile("r/ill/" + stem + ".ill");
}

TEST(illuminantFiles, folder_holdsTheTwentyEightIlluminantsAndNothingElse) {
    std::set<std::string> expected;
    for (const auto& [stem, shipped] : shippedFiles())
        expected.insert(stem + ".ill");
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(dataFile("r/ill")))
        found.insert(entry.path().filename().string());
    EXPECT_EQ(found, expected);
    EXPECT_EQ(found.size(), 28u);
}

TEST(illuminantFiles, everyFile_staysBelow2048Bytes) {
    for (const auto& [stem, shipped] : shippedFiles())
        EXPECT_LT(std::filesystem::file_size(pathOf(stem)), 2048u) << stem;
}

TEST(illuminantFiles, everyFile_isReadableUnderItsName) {
    for (const auto& [stem, shipped] : shippedFiles()) {
        const TIlluminant illuminant(pathOf(stem).c_str());
        ASSERT_EQ(illuminant.GetStatus(), 0) << stem;
        EXPECT_STREQ(illuminant.GetName(), shipped.name.c_str());
    }
}

TEST(illuminantFiles, everyFile_isInTheTextForm) {
    for (const auto& [stem, shipped] : shippedFiles()) {
        const std::string text = ScratchFolder::read(pathOf(stem));
        EXPECT_EQ(text.substr(0, 9), "QXILTEXT\n") << stem;
        EXPECT_THAT(text, testing::Not(testing::HasSubstr("\r"))) << stem;
    }
}

TEST(illuminantFiles, filesWithoutLines_holdThePublishedSamplesEvery5Nanometres) {
    for (const auto& [stem, shipped] : shippedFiles()) {
        if (shipped.csv == "fluorescent.csv")
            continue;
        const TIlluminant illuminant(pathOf(stem).c_str());
        const std::vector<double> published = csvColumn("illuminants/" + shipped.csv, shipped.column);
        const TSpectrum* spectrum = illuminant.GetSpectrum();
        ASSERT_NE(spectrum, nullptr) << stem;
        ASSERT_EQ(spectrum->GetNrSamples(), 81) << stem;
        for (std::size_t i = 0; i < published.size(); ++i) {
            EXPECT_EQ(spectrum->GetWavelengths()[i], 380.0 + 5.0 * static_cast<double>(i)) << stem;
            EXPECT_EQ(spectrum->GetValues()[i], published[i]) << stem;
        }
    }
}

/// A value of few decimals in units of a ten-thousandth.
std::int64_t tenThousandths(double value) {
    return std::llround(value * 10000.0);
}

TEST(illuminantFiles, filesOfFluorescentLamps_holdTheFilteredSamplesEvery10Nanometres) {
    for (const auto& [stem, shipped] : shippedFiles()) {
        if (shipped.csv != "fluorescent.csv")
            continue;
        const std::string& name = shipped.column;
        const TIlluminant illuminant(pathOf(stem).c_str());
        const std::vector<double> published = csvColumn("illuminants/fluorescent.csv", name);
        const TSpectrum* spectrum = illuminant.GetSpectrum();
        ASSERT_NE(spectrum, nullptr) << name;
        ASSERT_EQ(spectrum->GetNrSamples(), 41) << name;
        EXPECT_EQ(spectrum->GetValues()[0], published[0]) << name;
        EXPECT_EQ(spectrum->GetValues()[40], published[80]) << name;
        for (std::size_t i = 0; i < 41; ++i)
            EXPECT_EQ(spectrum->GetWavelengths()[i], 380.0 + 10.0 * static_cast<double>(i)) << name;
        for (std::size_t i = 1; i < 40; ++i) {
            const std::int64_t fourfold = tenThousandths(published[2 * i - 1]) +
                                          2 * tenThousandths(published[2 * i]) +
                                          tenThousandths(published[2 * i + 1]);
            EXPECT_EQ(4 * tenThousandths(spectrum->GetValues()[i]), fourfold) << name << " sample " << i;
        }
    }
}

// F1 at 425, 430, 435, 440, 445 nm: 7.79, 8.56, 43.67, 16.94, 10.72. By hand: (7.79 + 2*8.56 + 43.67)/4
// = 17.145, (43.67 + 2*16.94 + 10.72)/4 = 22.0675.
TEST(illuminantFiles, mercuryLineOfF1_isSpreadOverItsTwoNeighbours) {
    const TIlluminant illuminant(pathOf("f1").c_str());
    ASSERT_EQ(illuminant.GetStatus(), 0);
    EXPECT_EQ(illuminant.GetSpectrum()->GetValues()[5], 17.145);
    EXPECT_EQ(illuminant.GetSpectrum()->GetValues()[6], 22.0675);
}

} // namespace
} // namespace qxcms::tests
