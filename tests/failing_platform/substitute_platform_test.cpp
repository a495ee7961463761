// The substitute itself: it runs the kernel when nothing is to fail.
#include "tests/failing_platform/substitute_platform.h"

#include <gtest/gtest.h>

#include "spectral/tspectrum.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using substitutePlatform = OnSubstitutePlatform;

TEST_F(substitutePlatform, faultlessOne_servesTheKernel) {
    const double wavelengths[] = {400.0, 420.0};
    const double values[] = {1.0, 2.0};
    const TSpectrum spectrum(wavelengths, 2, values);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_EQ(standardOf(spectrum)[slotOf(410)], 1.5);
}

} // namespace
} // namespace qxcms::tests
