// The two charts that ship: readable, complete, and what they are compared to.
#include <algorithm>
#include <cmath>
#include <memory>

#include <gmock/gmock.h>

#include "cgats/tcgats.h"
#include "colorspace/tlabspace.h"
#include "spectral/tilluminantandobserver.h"
#include "tests/data/table_checks.h"

namespace qxcms::tests {
namespace {

const std::string kReflectance = "charts/colorchecker_reflectance.csv";
const std::string kAims = "charts/colorchecker_aims.csv";

class charts : public testing::Test {
protected:
    charts()
        : spectral(dataFile("charts/colorchecker_spectral.txt").c_str()),
          aims(dataFile("charts/colorchecker_aims.txt").c_str()) {}

    static std::string field(const TCgats& document, int sample, int column) {
        char text[512];
        EXPECT_EQ(document.GetField(0, sample, column, text), 0);
        return text;
    }

    /// The Lab of a patch of the spectral chart under illuminant C, 2 degree observer.
    void measuredLab(int sample, double* lab) const {
        const TIlluminant illuminant(dataFile("r/ill/c.ill").c_str());
        const TObserver observer("2 degree");
        const TIlluminantAndObserver weighting(&illuminant, &observer, 36);
        double white[3];
        ASSERT_EQ(weighting.GetXYZWhite(white), 0);
        double values[81];
        ASSERT_EQ(spectral.GetSpectrum(0, sample, values), 0);
        double wavelengths[81];
        for (int i = 0; i < 81; ++i)
            wavelengths[i] = 380.0 + 5.0 * i;
        const TSpectrum spectrum(wavelengths, 81, values);
        double xyz[3];
        ASSERT_EQ(weighting.GetXYZ(&spectrum, xyz, 36), 0);
        TLabSpace(white).XYZToLab(xyz, lab);
    }

    TCgats spectral;
    TCgats aims;
};

TEST_F(charts, both_areReadWithoutAnError) {
    EXPECT_EQ(spectral.GetErrorCode(), 0) << spectral.GetErrorMessage();
    EXPECT_EQ(aims.GetErrorCode(), 0) << aims.GetErrorMessage();
    EXPECT_EQ(spectral.GetNrTables(), 1);
    EXPECT_EQ(aims.GetNrTables(), 1);
}

TEST_F(charts, both_holdTheTwentyFourPatchesInTheSameOrder) {
    ASSERT_EQ(spectral.GetNrSamples(0), 24);
    ASSERT_EQ(aims.GetNrSamples(0), 24);
    const std::vector<std::string> patches = generators::readCsv(dataFile(kAims)).column("patch");
    ASSERT_EQ(patches.size(), 24u);
    for (int sample = 0; sample < 24; ++sample) {
        EXPECT_EQ(field(spectral, sample, spectral.GetFieldNameIndex(0, "SAMPLE_ID")),
                  patches[static_cast<std::size_t>(sample)]);
        EXPECT_EQ(field(aims, sample, aims.GetFieldNameIndex(0, "SAMPLE_ID")),
                  patches[static_cast<std::size_t>(sample)]);
    }
    EXPECT_EQ(patches.front(), "dark_skin");
    EXPECT_EQ(patches.back(), "black_2");
}

TEST_F(charts, spectralChart_holdsThePublishedReflectancesFrom380To780NanometresBy5) {
    ASSERT_EQ(spectral.GetNrWaveLengths(0), 81);
    int wavelengths[81];
    ASSERT_EQ(spectral.GetWaveLengths(0, wavelengths), 0);
    for (int i = 0; i < 81; ++i)
        EXPECT_EQ(wavelengths[i], 380 + 5 * i);
    const std::vector<std::string> patches = generators::readCsv(dataFile(kAims)).column("patch");
    for (int sample = 0; sample < 24; ++sample) {
        double values[81];
        ASSERT_EQ(spectral.GetSpectrum(0, sample, values), 0);
        EXPECT_EQ(asVector(values), csvColumn(kReflectance, patches[static_cast<std::size_t>(sample)]));
    }
}

TEST_F(charts, spectralChart_holdsFractionsNotPercent) {
    ASSERT_NE(spectral.GetTable(0), nullptr);
    EXPECT_FALSE(spectral.GetTable(0)->IsSpectralPercent());
}

TEST_F(charts, headerTexts_keepTheirBlanks) {
    EXPECT_STREQ(spectral.GetOriginator(), "N. Ohta, The Basis of Color Reproduction Engineering, 1997");
    EXPECT_STREQ(aims.GetFileDescriptor(), "ColorChecker, published aims of the 24 patches");
}

// A writer of these documents refuses lines that hold a comment alone.
TEST_F(charts, both_haveNoLineOfCommentAlone) {
    for (const TCgats* document : {&spectral, &aims}) {
        for (int i = 0; i < document->GetNrTags(); ++i)
            EXPECT_STRNE(document->GetTagAt(i)->GetKeyword(), nullptr) << i;
    }
}

// Worked out independently from x, y, Y on the white 98.074 100 118.232.
TEST_F(charts, aimChart_holdsTheLabOfThePublishedAims) {
    struct Aim {
        int sample;
        double lab[3];
    };
    const Aim expected[] = {{0, {37.9320, 12.1092, 14.4715}},   // dark skin
                            {12, {29.6883, 27.5257, -51.3559}}, // blue
                            {15, {81.3465, -4.0545, 79.2736}},  // yellow
                            {18, {96.0009, -0.0561, 0.0633}},   // white
                            {23, {20.5572, -0.0183, 0.0207}}};  // black
    ASSERT_TRUE(aims.ContainsLab(0));
    for (const Aim& aim : expected) {
        double lab[3];
        ASSERT_EQ(aims.GetLab(0, aim.sample, lab), 0);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(lab[i], aim.lab[i]) << aim.sample;
    }
}

/// The nearest-rank percentile.
double percentile(std::vector<double> values, double percent) {
    std::sort(values.begin(), values.end());
    const double rank = std::ceil(percent / 100.0 * static_cast<double>(values.size()));
    return values[static_cast<std::size_t>(rank) - 1];
}

// Worked out independently: mean 1.002159, median 0.979725, 95th percentile 1.623025, maximum 1.715778
// (purple).
TEST_F(charts, measuredAndAimedChart_differAsWorkedOutIndependently) {
    std::vector<double> differences;
    for (int sample = 0; sample < 24; ++sample) {
        double measured[3];
        double aim[3];
        measuredLab(sample, measured);
        ASSERT_EQ(aims.GetLab(0, sample, aim), 0);
        differences.push_back(std::sqrt(TLabSpace::CalcSquareDeltaEConvertedStatic(measured, aim, 0)));
    }
    EXPECT_NEAR(sum(differences) / 24.0, 1.0021594168, 1e-8);
    EXPECT_NEAR(percentile(differences, 95.0), 1.6230246382, 1e-8);
    EXPECT_NEAR(*std::max_element(differences.begin(), differences.end()), 1.7157781820, 1e-8);
    EXPECT_EQ(std::max_element(differences.begin(), differences.end()) - differences.begin(), 9);
}

} // namespace
} // namespace qxcms::tests
