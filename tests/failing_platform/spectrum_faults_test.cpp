// Spectra and observers when the platform or the memory fails.
#include <cstdint>
#include <vector>

#include <gmock/gmock.h>

#include "spectral/tobserver.h"
#include "spectral/tspectrum.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Pair;

constexpr double kWavelengths[] = {600.0, 400.0, 700.0};
constexpr double kValues[] = {0.3, 0.1, 0.2};
const std::vector<std::uint16_t> kFileData = {1, 2, 400, 700, 0, 65535, 65535};

using spectrumFaults = OnSubstitutePlatform;

// Which calls the interpolation makes.

TEST_F(spectrumFaults, samples_areInsertedInStoredOrderAndThenTheAnchors) {
    const TSpectrum spectrum(kWavelengths, 3, kValues);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_THAT(platform().announcedCounts, ElementsAre(3));
    EXPECT_THAT(platform().insertedPoints, ElementsAre(Pair(600.0, 0.3), Pair(400.0, 0.1), Pair(700.0, 0.2),
                                                       Pair(0.0, 0.1), Pair(1000.0, 0.2)));
}

TEST_F(spectrumFaults, table_isEvaluatedAtThe36GridWavelengthsAndReleased) {
    const TSpectrum spectrum(kWavelengths, 3, kValues);
    ASSERT_EQ(platform().evaluatedAt.size(), 36u);
    for (int k = 0; k < 36; ++k)
        EXPECT_EQ(platform().evaluatedAt[static_cast<std::size_t>(k)], slotWavelength(k));
    EXPECT_EQ(platform().tablesInUse, 0);
}

TEST_F(spectrumFaults, anchor_isLeftOutWhereASampleStands) {
    const double wavelengths[] = {1000.0, 0.0};
    const TSpectrum spectrum(wavelengths, 2, kValues);
    EXPECT_EQ(spectrum.GetStatus(), 0);
    EXPECT_THAT(platform().insertedPoints, ElementsAre(Pair(1000.0, 0.3), Pair(0.0, 0.1)));
}

TEST_F(spectrumFaults, spectraWithoutSamples_needNoTable) {
    const TSpectrum first = spectrumOf(ramp());
    const TSpectrum product(&first, &first);
    TSpectrum unset;
    EXPECT_EQ(unset.CalcStandardSpec(), 0);
    const TSpectrum copy(product);
    EXPECT_TRUE(platform().announcedCounts.empty());
}

TEST_F(spectrumFaults, copies_interpolateNothing) {
    const TSpectrum spectrum(kWavelengths, 3, kValues);
    const TSpectrum copy(spectrum);
    TSpectrum target;
    target = spectrum;
    EXPECT_EQ(platform().announcedCounts.size(), 1u);
    EXPECT_EQ(standardOf(copy), standardOf(spectrum));
    EXPECT_EQ(standardOf(target), standardOf(spectrum));
}

// Status 1.

TEST_F(spectrumFaults, noTable_givesSamplesStatus1) {
    platform().refusesTables = true;
    const TSpectrum spectrum(kWavelengths, 3, kValues);
    EXPECT_EQ(spectrum.GetStatus(), 1);
    EXPECT_EQ(spectrum.GetNrSamples(), 3);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST_F(spectrumFaults, noTable_givesATextStatus1) {
    platform().refusesTables = true;
    const TSpectrum spectrum("2 400 700 1 1");
    EXPECT_EQ(spectrum.GetStatus(), 1);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST_F(spectrumFaults, noTable_givesFileDataStatus1) {
    platform().refusesTables = true;
    const TSpectrum spectrum(kFileData.data(), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 1);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST_F(spectrumFaults, noTable_givesShortFileDataStatus1) {
    const TSpectrum reference(kWavelengths, 3, kValues);
    const std::vector<std::uint16_t> words = {0, 1, 2, 3};
    platform().refusesTables = true;
    const TSpectrum spectrum(&reference, words.data(), nullptr);
    EXPECT_EQ(spectrum.GetStatus(), 1);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
}

TEST_F(spectrumFaults, calcStandardSpecWithoutATable_answers1AndKeepsTheStandardValues) {
    TSpectrum spectrum(kWavelengths, 3, kValues);
    const Standard before = standardOf(spectrum);
    platform().refusesTables = true;
    EXPECT_EQ(spectrum.CalcStandardSpec(), 1);
    EXPECT_EQ(spectrum.GetStatus(), 1);
    EXPECT_THAT(standardOf(spectrum), ElementsAreArray(before));
}

TEST_F(spectrumFaults, calcStandardSpecWithATableAtLast_answers0AndLeavesTheStatus) {
    platform().refusesTables = true;
    TSpectrum spectrum(kWavelengths, 3, kValues);
    ASSERT_EQ(spectrum.GetStatus(), 1);
    platform().refusesTables = false;
    EXPECT_EQ(spectrum.CalcStandardSpec(), 0);
    EXPECT_EQ(spectrum.GetStatus(), 1);
    EXPECT_EQ(standardOf(spectrum)[slotOf(400)], 0.1);
    EXPECT_EQ(standardOf(spectrum)[slotOf(700)], 0.2);
}

// Status 4.

TEST_F(spectrumFaults, insertionThatFails_givesStatus4AndReleasesTheTable) {
    for (const int index : {0, 1, 2}) {
        platform() = SubstitutePlatform();
        platform().failingInsertion = index;
        const TSpectrum spectrum(kWavelengths, 3, kValues);
        EXPECT_EQ(spectrum.GetStatus(), 4) << index;
        EXPECT_THAT(standardOf(spectrum), Each(-1.0)) << index;
        EXPECT_EQ(platform().tablesInUse, 0) << index;
        EXPECT_EQ(platform().insertedPoints.size(), static_cast<std::size_t>(index) + 1);
        EXPECT_TRUE(platform().evaluatedAt.empty()) << index;
    }
}

TEST_F(spectrumFaults, anchorThatFails_givesStatus4AndReleasesTheTable) {
    for (const int index : {3, 4}) {
        platform() = SubstitutePlatform();
        platform().failingInsertion = index;
        const TSpectrum spectrum(kWavelengths, 3, kValues);
        EXPECT_EQ(spectrum.GetStatus(), 4) << index;
        EXPECT_THAT(standardOf(spectrum), Each(-1.0)) << index;
        EXPECT_EQ(platform().tablesInUse, 0) << index;
    }
}

TEST_F(spectrumFaults, calcStandardSpecWithAFailingInsertion_answers4AndKeepsTheStandardValues) {
    TSpectrum spectrum(kWavelengths, 3, kValues);
    const Standard before = standardOf(spectrum);
    platform().failingInsertion = static_cast<int>(platform().insertedPoints.size()) + 1;
    EXPECT_EQ(spectrum.CalcStandardSpec(), 4);
    EXPECT_EQ(spectrum.GetStatus(), 4);
    EXPECT_THAT(standardOf(spectrum), ElementsAreArray(before));
}

TEST_F(spectrumFaults, calcStandardSpecWithGoodInsertionsAtLast_answers0AndLeavesTheStatus) {
    platform().failingInsertion = 1;
    TSpectrum spectrum(kWavelengths, 3, kValues);
    ASSERT_EQ(spectrum.GetStatus(), 4);
    platform().failingInsertion = -1;
    EXPECT_EQ(spectrum.CalcStandardSpec(), 0);
    EXPECT_EQ(spectrum.GetStatus(), 4);
    EXPECT_EQ(standardOf(spectrum)[slotOf(600)], 0.3);
}

// No memory.

// Either all is well or status 1 says that memory was short, and nothing half done is shown.
void expectWholeOrStatus1(const TSpectrum& spectrum, const TSpectrum& whole) {
    if (spectrum.GetStatus() == 0) {
        EXPECT_EQ(spectrum.GetNonUniformFlag(), whole.GetNonUniformFlag());
        EXPECT_EQ(spectrum.GetNrSamples(), whole.GetNrSamples());
        EXPECT_EQ(standardOf(spectrum), standardOf(whole));
        return;
    }
    EXPECT_EQ(spectrum.GetStatus(), 1);
    EXPECT_THAT(standardOf(spectrum), Each(-1.0));
    EXPECT_EQ(spectrum.GetNrSamples(), 0);
    EXPECT_EQ(spectrum.GetWavelengths(), nullptr);
    EXPECT_EQ(spectrum.GetValues(), nullptr);
}

// What a failure left behind can be cleared, copied and used.
void expectUsable(TSpectrum& spectrum) {
    const TSpectrum copy(spectrum);
    EXPECT_EQ(copy.GetStatus(), 0);
    spectrum.Clear();
    EXPECT_EQ(spectrum.GetStatus(), 0);
}

TEST_F(spectrumFaults, samplesWithoutMemory_giveStatus1) {
    const TSpectrum whole(kWavelengths, 3, kValues);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TSpectrum spectrum(kWavelengths, 3, kValues);
        faults.disarm();
        expectWholeOrStatus1(spectrum, whole);
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        expectUsable(spectrum);
    });
}

TEST_F(spectrumFaults, textWithoutMemory_givesStatus1) {
    const char* const text = "3 600 400 700 0.3 0.1 0.2";
    const TSpectrum whole(text);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TSpectrum spectrum(text);
        faults.disarm();
        expectWholeOrStatus1(spectrum, whole);
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        expectUsable(spectrum);
    });
}

TEST_F(spectrumFaults, fileDataWithoutMemory_giveStatus1) {
    const TSpectrum whole(kFileData.data(), nullptr);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TSpectrum spectrum(kFileData.data(), nullptr);
        faults.disarm();
        expectWholeOrStatus1(spectrum, whole);
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        expectUsable(spectrum);
    });
}

TEST_F(spectrumFaults, shortFileDataWithoutMemory_giveStatus1) {
    const TSpectrum reference(kWavelengths, 3, kValues);
    const std::vector<std::uint16_t> words = {0, 1, 2, 3};
    const TSpectrum whole(&reference, words.data(), nullptr);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TSpectrum spectrum(&reference, words.data(), nullptr);
        faults.disarm();
        expectWholeOrStatus1(spectrum, whole);
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        expectUsable(spectrum);
    });
}

// Whether the standard values survive is open; the arrays and their count go together.
TEST_F(spectrumFaults, copyWithoutMemory_givesStatus1) {
    const TSpectrum original(kWavelengths, 3, kValues);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TSpectrum spectrum(original);
        faults.disarm();
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        EXPECT_EQ(spectrum.GetNrSamples(), faults.happened() ? 0 : 3);
        EXPECT_EQ(spectrum.GetWavelengths() != nullptr, spectrum.GetNrSamples() == 3);
        EXPECT_EQ(spectrum.GetValues() != nullptr, spectrum.GetNrSamples() == 3);
        expectUsable(spectrum);
    });
}

TEST_F(spectrumFaults, assignmentWithoutMemory_givesStatus1) {
    const TSpectrum original(kWavelengths, 3, kValues);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TSpectrum spectrum("2 400 700 1 1");
        faults.arm();
        spectrum = original;
        faults.disarm();
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        EXPECT_EQ(spectrum.GetWavelengths() != nullptr, spectrum.GetNrSamples() > 0);
        EXPECT_EQ(spectrum.GetValues() != nullptr, spectrum.GetNrSamples() > 0);
        expectUsable(spectrum);
    });
}

TEST_F(spectrumFaults, toFileDataWithoutMemory_givesNullAndStatus1) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TSpectrum spectrum = spectrumOf(ramp());
        int size = -7;
        faults.arm();
        const std::uint16_t* const data = spectrum.ToFileData(&size);
        faults.disarm();
        EXPECT_EQ(data == nullptr, faults.happened());
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        EXPECT_EQ(standardOf(spectrum), ramp());
    });
}

TEST_F(spectrumFaults, toShrtFileDataWithoutMemory_givesNullAndStatus1) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TSpectrum spectrum = spectrumOf(ramp());
        int size = -7;
        faults.arm();
        const std::uint16_t* const data = spectrum.ToShrtFileData(&spectrum, &size);
        faults.disarm();
        EXPECT_EQ(data == nullptr, faults.happened());
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
    });
}

TEST_F(spectrumFaults, densities_needNoMemory) {
    const TSpectrum grey = spectrumOf(flat(0.1));
    AllocationFaults faults(0, false);
    double densities[4] = {};
    int major = -7;
    faults.arm();
    const int answer = grey.GetDensity(TSpectrum::kAnsiA, densities, &major);
    faults.disarm();
    EXPECT_EQ(answer, 0);
    EXPECT_NEAR(densities[0], 1.0, 1e-5);
}

// Observers.

using observerFaults = OnSubstitutePlatform;

TEST_F(observerFaults, constructionAndCopies_interpolateNothing) {
    const TObserver observer(0);
    const TObserver copy(observer);
    EXPECT_TRUE(platform().announcedCounts.empty());
}

TEST_F(observerFaults, firstUse_interpolatesThreeSpectraAndLaterOnesNone) {
    TObserver observer(0);
    ASSERT_NE(observer.GetZSensitivity(), nullptr);
    EXPECT_EQ(platform().announcedCounts.size(), 3u);
    const TSpectrum light = spectrumOf(kD65);
    double xyz[3];
    EXPECT_EQ(observer.GetXYZ(&light, xyz), 0);
    ASSERT_NE(observer.GetXSensitivity(), nullptr);
    EXPECT_EQ(platform().announcedCounts.size(), 3u);
}

// A later request makes all three spectra anew, so each one is looked at before the next is asked for.
TEST_F(observerFaults, sensitivitiesWithoutMemory_areNullOrWhole) {
    using Getter = TSpectrum* (TObserver::*)();
    for (const Getter getter :
         {&TObserver::GetXSensitivity, &TObserver::GetYSensitivity, &TObserver::GetZSensitivity}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            TObserver observer(1);
            faults.arm();
            const TSpectrum* const spectrum = (observer.*getter)();
            faults.disarm();
            if (spectrum == nullptr) {
                EXPECT_TRUE(faults.happened());
                return;
            }
            EXPECT_EQ(spectrum->GetStatus(), 0);
            EXPECT_EQ(spectrum->GetNrSamples(), 81);
        });
    }
}

// A first use that found no memory does not spoil the observer for good.
TEST_F(observerFaults, xyzWithoutMemory_failsAndWorksLater) {
    const TSpectrum light = spectrumOf(kD65);
    TObserver whole(1);
    double expected[3];
    ASSERT_EQ(whole.GetXYZ(&light, &light, expected), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TObserver observer(1);
        double xyz[3] = {7, 7, 7};
        faults.arm();
        const int answer = observer.GetXYZ(&light, &light, xyz);
        faults.disarm();
        if (answer == 0) {
            EXPECT_THAT(xyz, ElementsAreArray(expected));
        } else {
            EXPECT_TRUE(faults.happened());
            EXPECT_EQ(observer.GetXYZ(&light, &light, xyz), 0);
            EXPECT_THAT(xyz, ElementsAreArray(expected));
        }
    });
}

TEST_F(observerFaults, xyzWithoutTables_failsInsteadOfIntegratingUnsetSpectra) {
    const TSpectrum light = spectrumOf(kD65);
    TObserver observer(0);
    platform().refusesTables = true;
    double xyz[3] = {7, 7, 7};
    EXPECT_NE(observer.GetXYZ(&light, &light, xyz), 0);
    EXPECT_NE(observer.GetXYZ(&light, xyz), 0);
}

} // namespace
} // namespace qxcms::tests
