// What the normaliser makes of scales: spectra, XYZ, device values.
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/cgats/documents.h"
#include "tests/cgats/normalized.h"
#include "tests/cgats/read_document.h"

namespace qxcms::tests {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(normalizerScales, percentSpectraBehindDarkOnes_becomeFractions) {
    const std::string text = dialect("spectral-dark-first.txt");
    EXPECT_FALSE(ReadDocument(text).GetTable(0)->IsSpectralPercent()); // 85.4 would be a fraction
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{8, "1\t0.0210\t0.0250\t0.01\t0.0325"},
                                                  {9, "2\t0.0310\t0.0350\t0.02\t0.0425"},
                                                  {10, "3\t0.0410\t0.0450\t0.03\t0.0525"},
                                                  {11, "4\t0.0510\t0.0550\t0.04\t0.0625"},
                                                  {12, "5\t0.0610\t0.0650\t0.05\t0.0725"},
                                                  {13, "6\t0.8540\t0.8675\t0.88\t0.8810"}}));
    ASSERT_FALSE(normalized.kinds().empty());
    EXPECT_EQ(normalized.countOf(Liberty::kSpectralScale), static_cast<int>(normalized.kinds().size()));
    EXPECT_EQ(ReadDocument(normalized.text()).GetTable(0)->IsSpectralPercent(), false);
}

TEST(normalizerScales, percentSpectraThatBeginBright_pass) {
    const std::string text = withLines(dialect("spectral-dark-first.txt"), {{12, "5\t12.1\t6.50\t5\t7.25"}});
    expectUnchanged(text);
    EXPECT_TRUE(ReadDocument(text).GetTable(0)->IsSpectralPercent());
}

TEST(normalizerScales, valueOfTenAlone_isNoPercentage) {
    expectUnchanged(withLines(dialect("spectral-dark-first.txt"), {{13, "6\t10\t9.5\t9\t8"}}));
}

TEST(normalizerScales, normOf255_isBroughtTo100) {
    const std::string text = dialect("spectral-norm-255.txt");
    const Normalized normalized = accepted(text);
    EXPECT_THAT(normalized.kinds(), testing::Each(int{Liberty::kSpectralScale}));
    EXPECT_THAT(normalized.liberties(), Contains(testing::Field(&Finding::line, 2)));
    EXPECT_THAT(normalized.text(), HasSubstr("SPECTRAL_NORM\t100\n"));
    const ReadDocument document(normalized.text());
    const double expected[2][4] = {{20, 40, 50, 100}, {10, 80, 60, 70}};
    for (int row = 0; row < 2; ++row)
        for (int column = 0; column < 4; ++column)
            EXPECT_NEAR(numbersOf(document, 0, column + 1)[static_cast<std::size_t>(row)],
                        expected[row][column], 1e-9);
    EXPECT_TRUE(document.GetTable(0)->IsSpectralPercent());
}

TEST(normalizerScales, normOf100WithBrightSpectra_passes) {
    expectUnchanged(dialect("spectral-norm-100.txt"));
}

TEST(normalizerScales, normOf100WithDarkSpectra_becomesNormOf1) {
    const std::string text = dialect("spectral-norm-100-dark.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{2, "SPECTRAL_NORM\t1"},
                                                  {9, "1\t0.0412\t0.0533\t0.0871\t0.0904"},
                                                  {10, "2\t0.035\t0.02\t0.0125\t0.005"}}));
    EXPECT_THAT(normalized.kinds(), testing::Each(int{Liberty::kSpectralScale}));
    EXPECT_FALSE(ReadDocument(normalized.text()).GetTable(0)->IsSpectralPercent());
}

TEST(normalizerScales, normOf1WithFractions_passes) {
    expectUnchanged("CGATS.17\nSPECTRAL_NORM 1\n" + tableText("SAMPLE_ID nm400 nm410", 1, "1 0.4 0.5"));
}

TEST(normalizerScales, xyzOfZeroToOne_isBroughtTo100) {
    const std::string text = dialect("xyz-fractions.txt");
    const Normalized normalized = accepted(text);
    EXPECT_EQ(normalized.text(), withLines(text, {{8, "1\t80.12\t83.10\t68.75"},
                                                  {9, "2\t0.83\t0.86\t0.71"},
                                                  {10, "3\t31.05\t16.12\t2.40"},
                                                  {11, "4\t14.48\t22.07\t9.11"},
                                                  {12, "5\t11.27\t8.94\t33.16"},
                                                  {13, "6\t59.01\t65.12\t8.32"},
                                                  {14, "7\t22.10\t13.44\t30.19"},
                                                  {15, "8\t25.04\t33.21\t44.10"},
                                                  {16, "9\t41.00\t42.50\t36.00"},
                                                  {17, "10\t5.15\t5.35\t4.41"}}));
    ASSERT_FALSE(normalized.kinds().empty());
    EXPECT_THAT(normalized.kinds(), testing::Each(int{Liberty::kXyzScale}));
}

TEST(normalizerScales, xyzOfFewerThanTenSamples_passes) {
    expectUnchanged(withLines(dialect("xyz-fractions.txt"), {{6, "NUMBER_OF_SETS\t9"}, {17, {}}}));
}

TEST(normalizerScales, xyzOfDarkSamplesAlone_passes) {
    expectUnchanged(
        withLines(dialect("xyz-fractions.txt"), {{8, "1\t0.40\t0.42\t0.31"}, {13, "6\t0.35\t0.41\t0.08"}}));
}

TEST(normalizerScales, xyzOfPercent_passes) {
    expectUnchanged(withLines(dialect("xyz-fractions.txt"), {{8, "1\t80.12\t83.10\t68.75"}}));
}

TEST(normalizerScales, xyzOfBrightSamplesAlone_passes) {
    expectUnchanged(
        withLines(dialect("xyz-fractions.txt"),
                  {{9, "2\t0.1\t0.11\t0.1"}, {12, "5\t0.1\t0.1\t0.3"}, {17, "10\t0.1\t0.1\t0.1"}}));
}

void expectDeviceRemark(const std::string& name, const std::string& scale) {
    const std::string text = dialect(name);
    expectUnchanged(text);
    const Normalized normalized{text};
    ASSERT_EQ(normalized.remarks().size(), 1U);
    EXPECT_EQ(normalized.remarks()[0].kind, int{Liberty::kDeviceScale});
    EXPECT_THAT(normalized.remarked(0), HasSubstr(scale));
}

TEST(normalizerScales, cmykOfZeroToOne_isRemarked) {
    expectDeviceRemark("device-cmyk-fractions.txt", "1");
}

TEST(normalizerScales, cmykOfBytes_isRemarked) {
    expectDeviceRemark("device-cmyk-bytes.txt", "255");
}

TEST(normalizerScales, rgbOfZeroToOne_isRemarked) {
    expectDeviceRemark("device-rgb-fractions.txt", "1");
}

TEST(normalizerScales, rgbOfBytes_isRemarked) {
    expectDeviceRemark("device-rgb-bytes.txt", "255");
}

TEST(normalizerScales, cmykInPercent_bringsNoRemark) {
    const Normalized normalized{withLines(dialect("device-cmyk-bytes.txt"),
                                          {{9, "2\t100\t50.5\t25\t0"}, {10, "3\t75\t10.2\t100\t30"}})};
    EXPECT_EQ(normalized.code, 0);
    EXPECT_THAT(normalized.liberties(), IsEmpty());
    EXPECT_THAT(normalized.remarks(), IsEmpty());
}

} // namespace
} // namespace qxcms::tests
