// The kernel on the bundled platform layer when the memory fails anywhere, in the kernel or below it.
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "cgats/tcgats.h"
#include "spectral/tilluminantandobserver.h"
#include "spectral/tilluminantfactoryholder.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/spectral/known_spectra.h"
#include "tests/support/reports.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::ElementsAreArray;

constexpr double kWavelengths[] = {600.0, 400.0, 700.0};
constexpr double kValues[] = {0.3, 0.1, 0.2};
const std::string kTextImage = "QXILTEXT\nLamp\n2 400 700 1 1\n";

// Status 1, no standard value set, and once there is memory the samples that were taken are interpolated.
template <class Make>
void expectStatus1WithoutMemory(Make make) {
    const TSpectrum whole = make();
    ASSERT_EQ(whole.GetStatus(), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TSpectrum spectrum = make();
        faults.disarm();
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        if (faults.happened()) {
            EXPECT_THAT(standardOf(spectrum), Each(-1.0));
            EXPECT_EQ(spectrum.CalcStandardSpec(), 0);
        }
        if (spectrum.GetNrSamples() > 0) {
            EXPECT_EQ(standardOf(spectrum), standardOf(whole));
        }
        spectrum = whole;
        EXPECT_EQ(spectrum.GetStatus(), 0);
        EXPECT_EQ(standardOf(spectrum), standardOf(whole));
    });
}

TEST(kernelMemory, spectrumOfSamples_hasStatus1) {
    expectStatus1WithoutMemory([] { return TSpectrum(kWavelengths, 3, kValues); });
}

TEST(kernelMemory, spectrumOfAText_hasStatus1) {
    expectStatus1WithoutMemory([] { return TSpectrum("3 600 400 700 0.3 0.1 0.2"); });
}

TEST(kernelMemory, spectrumOfFileData_hasStatus1) {
    const std::vector<std::uint16_t> words = {1, 2, 400, 700, 0, 65535, 65535};
    expectStatus1WithoutMemory([&] { return TSpectrum(words.data(), nullptr); });
}

TEST(kernelMemory, spectrumOfShortFileData_hasStatus1) {
    const TSpectrum reference(kWavelengths, 3, kValues);
    const std::vector<std::uint16_t> words = {0, 1, 2, 3};
    expectStatus1WithoutMemory([&] { return TSpectrum(&reference, words.data(), nullptr); });
}

TEST(kernelMemory, calcStandardSpec_answers1AndKeepsTheStandardValues) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TSpectrum spectrum(kWavelengths, 3, kValues);
        const Standard before = standardOf(spectrum);
        faults.arm();
        const int answer = spectrum.CalcStandardSpec();
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 1 : 0);
        EXPECT_EQ(spectrum.GetStatus(), answer);
        EXPECT_EQ(standardOf(spectrum), before);
        EXPECT_EQ(spectrum.CalcStandardSpec(), 0);
    });
}

TEST(kernelMemory, observer_answers2AndWorksLater) {
    const TSpectrum light = spectrumOf(kD65);
    double expected[3];
    ASSERT_EQ(TObserver(1).GetXYZ(&light, &light, expected), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TObserver observer(1);
        double xyz[3];
        faults.arm();
        const int answer = observer.GetXYZ(&light, &light, xyz);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 2 : 0);
        EXPECT_EQ(observer.GetXYZ(&light, &light, xyz), 0);
        EXPECT_THAT(xyz, ElementsAreArray(expected));
    });
}

TEST(kernelMemory, white_answers2AndZeros) {
    const TSpectrum light = spectrumOf(kD65);
    const TIlluminant lamp(&light, "lamp");
    const TObserver observer(0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        const TIlluminantAndObserver weighting(&lamp, &observer, 36);
        double white[3] = {7, 7, 7};
        faults.arm();
        const int answer = weighting.GetXYZWhite(white);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 2 : 0);
        if (faults.happened()) {
            EXPECT_THAT(white, Each(0.0));
        }
        EXPECT_EQ(weighting.GetXYZWhite(white), 0);
        EXPECT_NEAR(white[1], 100.0, 1e-9);
    });
}

// 3 where the illuminant finds no memory, 4 where the file cannot be opened for want of it, 1 where the
// samples find no table; a buffer that is missing below the file slows reading down and no more.
TEST(kernelMemory, illuminantOfAFile_isBadOrWhole) {
    const ScratchFolder folder;
    const std::string name = folder.write("lamp.ill", kTextImage);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TIlluminant lamp(name.c_str());
        faults.disarm();
        EXPECT_THAT(lamp.GetStatus(), AnyOf(0, 1, 3, 4));
        EXPECT_TRUE(lamp.GetStatus() == 0 || faults.happened());
        EXPECT_EQ(lamp.GetName() == nullptr, lamp.GetStatus() > 1);
        EXPECT_EQ(lamp.GetSpectrum() == nullptr, lamp.GetStatus() > 1);
        EXPECT_EQ(lamp.ReadFrom(kTextImage.c_str()), 0);
        EXPECT_THAT(standardOf(*lamp.GetSpectrum()), Each(1.0));
    });
}

TEST(kernelMemory, save_writesTheFileOrLeavesItAsItWas) {
    const ScratchFolder folder;
    const std::string name = folder.path("lamp.ill");
    const TSpectrum light = spectrumOf(kD65);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        folder.write("lamp.ill", kTextImage);
        TIlluminant lamp(&light, "D65");
        faults.arm();
        const int answer = lamp.Save(name.c_str());
        faults.disarm();
        EXPECT_THAT(answer, AnyOf(0, 3, 4));
        EXPECT_TRUE(answer == 0 || faults.happened());
        EXPECT_STREQ(TIlluminant(name.c_str()).GetName(), answer == 0 ? "D65" : "Lamp");
        EXPECT_EQ(lamp.Save(name.c_str()), 0);
    });
}

TEST(kernelMemory, directory_isReadAsFarAsThereIsMemory) {
    const ScratchFolder folder;
    folder.write("the first lamp of this folder.ill", kTextImage);
    folder.write("the second lamp of this folder.ill", kTextImage);
    const std::string path = folder.path();
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminantFactoryHolder registry;
        faults.arm();
        const int answer = registry.AddDirectory(path.c_str());
        faults.disarm();
        EXPECT_EQ(answer, 0);
        EXPECT_TRUE(registry.GetNrElements() == 2 || faults.happened());
        const int before = registry.GetNrElements();
        EXPECT_EQ(registry.AddDirectory(path.c_str()), 0);
        EXPECT_EQ(registry.GetNrElements(), before + 2);
        for (const TIlluminant* lamp = registry.ScanIlluminants(1); lamp != nullptr;
             lamp = registry.ScanIlluminants(0))
            EXPECT_EQ(lamp->GetStatus(), 0);
    });
}

TEST(kernelMemory, measurementOfADocument_isNullOrWhole) {
    const TCgats document("BEGIN_DATA_FORMAT\nCMYK_C CMYK_M CMYK_Y CMYK_K nm400 nm700\nEND_DATA_FORMAT\n"
                          "NUMBER_OF_SETS 1\nBEGIN_DATA\n1 2 3 4 0.25 0.5\nEND_DATA\n",
                          0);
    ASSERT_EQ(document.GetErrorCode(), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        std::unique_ptr<TOneMeasurement> measurement(
            document.GetMeasurement(0, 0, nullptr, nullptr, nullptr));
        faults.disarm();
        EXPECT_EQ(measurement == nullptr, faults.happened());
        if (measurement == nullptr)
            measurement.reset(document.GetMeasurement(0, 0, nullptr, nullptr, nullptr));
        ASSERT_NE(measurement, nullptr);
        EXPECT_EQ(measurement->GetStatus(), 0);
        EXPECT_EQ(standardOf(*measurement->GetSpectrum())[slotOf(700)], 0.5);
    });
}

} // namespace
} // namespace qxcms::tests
