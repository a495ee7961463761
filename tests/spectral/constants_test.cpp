// Figures of the weighting and the observer that show at the edges of what they take.
#include <array>

#include <gtest/gtest.h>

#include "spectral/tilluminantandobserver.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

TEST(weighting, whiteOfATable_isThreeNumbers) {
    const TSpectrum spectrum = spectrumOf(flat(1.0));
    const TIlluminant lamp(&spectrum, "CIE Illuminant F2");
    const TObserver observer(TObserver::sObsNameList[0]);
    const TIlluminantAndObserver weighting(&lamp, &observer, TIlluminantAndObserver::kMaxPoints);
    std::array<double, 4> xyz = {-1.0, -1.0, -1.0, -7.0};
    EXPECT_EQ(weighting.GetXYZWhite(xyz.data()), 0);
    EXPECT_GT(xyz[2], 0.0);
    EXPECT_EQ(xyz[3], -7.0);
}

// The scale makes the Y of the illuminant itself 100, however little light there is.
TEST(observer, faintIlluminant_isNormalisedAsWell) {
    const TSpectrum faint = spectrumOf(flat(1e-4));
    TObserver observer(TObserver::sObsNameList[0]);
    std::array<double, 3> xyz = {};
    EXPECT_EQ(observer.GetXYZ(&faint, &faint, xyz.data()), 0);
    EXPECT_NEAR(xyz[1], 100.0, 1e-9);
}

} // namespace
} // namespace qxcms::tests
