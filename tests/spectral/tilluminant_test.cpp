#include "spectral/tilluminant.h"

#include <memory>
#include <string>
#include <type_traits>

#include <gmock/gmock.h>

#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAreArray;

static_assert(std::has_virtual_destructor_v<TIlluminant>);
static_assert(!std::is_copy_constructible_v<TIlluminant> && !std::is_copy_assignable_v<TIlluminant>);
static_assert(!std::is_move_constructible_v<TIlluminant> && !std::is_move_assignable_v<TIlluminant>);
static_assert(!std::is_constructible_v<TIlluminant, TSpectrum*>, "would be taken for a file image");
static_assert(!std::is_constructible_v<TIlluminant, const TSpectrum*>, "would be taken for a file image");
static_assert(std::is_constructible_v<TIlluminant, const void*> &&
              std::is_constructible_v<TIlluminant, void*>);
static_assert(!std::is_convertible_v<const char*, TIlluminant>, "a file name is no illuminant by itself");
static_assert(!std::is_convertible_v<const void*, TIlluminant>);
static_assert(!std::is_default_constructible_v<TIlluminant>);

TEST(illuminant, spectrumAndName_areCopied) {
    TSpectrum spectrum = spectrumOf(kD65);
    std::string name = "D65";
    const TIlluminant illuminant(&spectrum, name.c_str());
    spectrum.Clear();
    name = "xxx";
    EXPECT_EQ(illuminant.GetStatus(), 0);
    EXPECT_STREQ(illuminant.GetName(), "D65");
    ASSERT_NE(illuminant.GetSpectrum(), nullptr);
    EXPECT_NE(illuminant.GetSpectrum(), &spectrum);
    EXPECT_THAT(standardOf(*illuminant.GetSpectrum()), ElementsAreArray(kD65));
}

TEST(illuminant, nonUniformSamples_areKept) {
    const double wavelengths[] = {400.0, 700.0};
    const double values[] = {1.0, 2.0};
    const TSpectrum spectrum(wavelengths, 2, values);
    const TIlluminant illuminant(&spectrum, "lamp");
    ASSERT_NE(illuminant.GetSpectrum(), nullptr);
    EXPECT_EQ(illuminant.GetSpectrum()->GetNrSamples(), 2);
    EXPECT_EQ(illuminant.GetSpectrum()->GetWavelengths()[1], 700.0);
}

TEST(illuminant, nullSpectrumOrName_givesStatus2) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const TSpectrum* const none = nullptr;
    EXPECT_EQ(TIlluminant(none, "D65").GetStatus(), 2);
    EXPECT_EQ(TIlluminant(&spectrum, nullptr).GetStatus(), 2);
    EXPECT_EQ(TIlluminant(none, nullptr).GetStatus(), 2);
}

TEST(illuminant, nameOf1024Characters_isAccepted) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const std::string name(1024, 'n');
    const TIlluminant illuminant(&spectrum, name.c_str());
    EXPECT_EQ(illuminant.GetStatus(), 0);
    EXPECT_EQ(illuminant.GetName(), name);
}

TEST(illuminant, nameOf1025Characters_givesStatus2) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const std::string name(1025, 'n');
    EXPECT_EQ(TIlluminant(&spectrum, name.c_str()).GetStatus(), 2);
}

TEST(illuminant, emptyName_isAccepted) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const TIlluminant illuminant(&spectrum, "");
    EXPECT_EQ(illuminant.GetStatus(), 0);
    EXPECT_STREQ(illuminant.GetName(), "");
}

// A copy of a spectrum starts with status 0, whatever the original's.
TEST(illuminant, badSpectrum_isKeptAsItsCopyIs) {
    const double wavelengths[] = {500.0, 500.0};
    const TSpectrum bad(wavelengths, 2, wavelengths);
    ASSERT_EQ(bad.GetStatus(), 4);
    const TIlluminant illuminant(&bad, "bad");
    EXPECT_EQ(illuminant.GetStatus(), 0);
    EXPECT_STREQ(illuminant.GetName(), "bad");
    ASSERT_NE(illuminant.GetSpectrum(), nullptr);
    EXPECT_EQ(illuminant.GetSpectrum()->GetStatus(), 0);
    EXPECT_THAT(standardOf(*illuminant.GetSpectrum()), Each(-1.0));
}

TEST(illuminant, sameNamesAndDifferentSpectra_areEqual) {
    const TSpectrum first = spectrumOf(kD65), second = spectrumOf(kIlluminantA);
    EXPECT_TRUE(TIlluminant(&first, "lamp") == TIlluminant(&second, "lamp"));
}

TEST(illuminant, differentNamesAndTheSameSpectrum_areNotEqual) {
    const TSpectrum spectrum = spectrumOf(kD65);
    EXPECT_FALSE(TIlluminant(&spectrum, "lamp") == TIlluminant(&spectrum, "lamp 2"));
}

TEST(illuminant, comparison_mindsCase) {
    const TSpectrum spectrum = spectrumOf(kD65);
    EXPECT_FALSE(TIlluminant(&spectrum, "d65") == TIlluminant(&spectrum, "D65"));
}

TEST(illuminant, oneWithoutAName_differsFromANamedOne) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const TIlluminant named(&spectrum, "D65"), nameless(&spectrum, nullptr);
    ASSERT_EQ(nameless.GetName(), nullptr);
    EXPECT_FALSE(named == nameless);
    EXPECT_FALSE(nameless == named);
}

TEST(illuminant, nullImage_givesStatus2) {
    const TIlluminant illuminant(static_cast<const void*>(nullptr));
    EXPECT_EQ(illuminant.GetStatus(), 2);
    EXPECT_EQ(illuminant.GetName(), nullptr);
    EXPECT_EQ(illuminant.GetSpectrum(), nullptr);
}

TEST(illuminant, nullFileName_givesStatus2) {
    const TIlluminant illuminant(static_cast<const char*>(nullptr));
    EXPECT_EQ(illuminant.GetStatus(), 2);
    EXPECT_EQ(illuminant.GetName(), nullptr);
    EXPECT_EQ(illuminant.GetSpectrum(), nullptr);
}

} // namespace
} // namespace qxcms::tests
