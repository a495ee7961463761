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

// What a failure left behind can be copied, written, cleared, and take up a whole spectrum.
void expectUsable(TSpectrum& spectrum, const TSpectrum& whole) {
    const TSpectrum copy(spectrum);
    EXPECT_EQ(copy.GetStatus(), 0);
    int size = -7;
    EXPECT_NE(spectrum.ToFileData(&size), nullptr);
    spectrum.Clear();
    EXPECT_EQ(spectrum.GetStatus(), 0);
    spectrum = whole;
    expectWholeOrStatus1(spectrum, whole);
    EXPECT_EQ(spectrum.GetStatus(), 0);
}

// Makes a spectrum whichever way, and again once there is memory.
template <class Make>
void expectStatus1WithoutMemory(Make make) {
    const TSpectrum whole = make();
    ASSERT_EQ(whole.GetStatus(), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TSpectrum spectrum = make();
        faults.disarm();
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        expectWholeOrStatus1(spectrum, whole);
        expectUsable(spectrum, whole);
    });
}

TEST_F(spectrumFaults, samplesWithoutMemory_giveStatus1) {
    expectStatus1WithoutMemory([] { return TSpectrum(kWavelengths, 3, kValues); });
}

TEST_F(spectrumFaults, textWithoutMemory_givesStatus1) {
    expectStatus1WithoutMemory([] { return TSpectrum("3 600 400 700 0.3 0.1 0.2"); });
}

TEST_F(spectrumFaults, fileDataWithoutMemory_giveStatus1) {
    expectStatus1WithoutMemory([] { return TSpectrum(kFileData.data(), nullptr); });
}

TEST_F(spectrumFaults, shortFileDataWithoutMemory_giveStatus1) {
    const TSpectrum reference(kWavelengths, 3, kValues);
    const std::vector<std::uint16_t> words = {0, 1, 2, 3};
    expectStatus1WithoutMemory([&] { return TSpectrum(&reference, words.data(), nullptr); });
}

TEST_F(spectrumFaults, fileDataWithoutMemory_areReadToTheirEndAllTheSame) {
    AllocationFaults faults(0, false);
    void* end = nullptr;
    faults.arm();
    const TSpectrum spectrum(kFileData.data(), &end);
    faults.disarm();
    EXPECT_EQ(spectrum.GetStatus(), 1);
    EXPECT_EQ(end, kFileData.data() + kFileData.size());
}

// Whether the standard values survive is open; the arrays and their count go together.
void expectCopyOrStatus1(TSpectrum& spectrum, const TSpectrum& original, const AllocationFaults& faults) {
    EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
    EXPECT_EQ(spectrum.GetNrSamples(), faults.happened() ? 0 : 3);
    EXPECT_EQ(spectrum.GetWavelengths() != nullptr, spectrum.GetNrSamples() == 3);
    EXPECT_EQ(spectrum.GetValues() != nullptr, spectrum.GetNrSamples() == 3);
    if (spectrum.GetStatus() == 0)
        expectWholeOrStatus1(spectrum, original);
    expectUsable(spectrum, original);
}

TEST_F(spectrumFaults, copyWithoutMemory_givesStatus1) {
    const TSpectrum original(kWavelengths, 3, kValues);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TSpectrum spectrum(original);
        faults.disarm();
        expectCopyOrStatus1(spectrum, original, faults);
    });
}

TEST_F(spectrumFaults, assignmentWithoutMemory_givesStatus1AndLeaksNothingOfTheOldSpectrum) {
    const TSpectrum original(kWavelengths, 3, kValues);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TSpectrum spectrum("2 400 700 1 1");
        int size = -7;
        ASSERT_NE(spectrum.ToFileData(&size), nullptr);
        faults.arm();
        spectrum = original;
        faults.disarm();
        expectCopyOrStatus1(spectrum, original, faults);
    });
}

TEST_F(spectrumFaults, assignmentToItselfWithoutMemory_changesNothing) {
    TSpectrum spectrum(kWavelengths, 3, kValues);
    const TSpectrum& same = spectrum;
    expectNoAllocation([&] { spectrum = same; });
    EXPECT_EQ(spectrum.GetNrSamples(), 3);
    EXPECT_EQ(spectrum.GetStatus(), 0);
}

// A serialised form that there is no memory for is null; asked for again, it is there, and the status stays.
template <class Serialise>
void expectNullAndStatus1WithoutMemory(const TSpectrum& original, Serialise serialise) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TSpectrum spectrum(original);
        int size = -7;
        faults.arm();
        const std::uint16_t* const words = serialise(spectrum, &size);
        faults.disarm();
        EXPECT_EQ(words == nullptr, faults.happened());
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
        EXPECT_EQ(standardOf(spectrum), standardOf(original));
        EXPECT_EQ(spectrum.GetNrSamples(), original.GetNrSamples());
        EXPECT_NE(serialise(spectrum, &size), nullptr);
        EXPECT_EQ(spectrum.GetFileDataSize(), size);
        EXPECT_EQ(spectrum.GetStatus(), faults.happened() ? 1 : 0);
    });
}

TEST_F(spectrumFaults, toFileDataWithoutMemory_givesNullAndStatus1) {
    for (const TSpectrum& original : {spectrumOf(ramp()), TSpectrum(kWavelengths, 3, kValues)})
        expectNullAndStatus1WithoutMemory(
            original, [](TSpectrum& spectrum, int* size) { return spectrum.ToFileData(size); });
}

TEST_F(spectrumFaults, toShrtFileDataWithoutMemory_givesNullAndStatus1) {
    for (const TSpectrum& original : {spectrumOf(ramp()), TSpectrum(kWavelengths, 3, kValues)})
        expectNullAndStatus1WithoutMemory(original, [&](TSpectrum& spectrum, int* size) {
            return spectrum.ToShrtFileData(&original, size);
        });
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
            } else {
                EXPECT_EQ(spectrum->GetStatus(), 0);
                EXPECT_EQ(spectrum->GetNrSamples(), 81);
            }
            EXPECT_EQ(observer.GetStatus(), 0);
            EXPECT_NE((observer.*getter)(), nullptr);
        });
    }
}

// A caller may hold the one while the other is made.
TEST_F(observerFaults, sensitivityThatIsThere_staysWhileThoseWithoutMemoryAreMadeLater) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TObserver observer(0);
        faults.arm();
        observer.InitSpectra();
        const TSpectrum* const x = observer.GetXSensitivity();
        faults.disarm();
        const TSpectrum* const y = observer.GetYSensitivity();
        const TSpectrum* const z = observer.GetZSensitivity();
        ASSERT_NE(y, nullptr);
        ASSERT_NE(z, nullptr);
        if (x != nullptr) {
            EXPECT_EQ(observer.GetXSensitivity(), x);
        }
        EXPECT_EQ(observer.GetYSensitivity(), y);
        EXPECT_EQ(y->GetStatus(), 0);
    });
}

// A first use that found no memory does not spoil the observer for good.
template <class Ask>
void expectXyzFailsWithoutMemoryAndWorksLater(Ask ask) {
    TObserver whole(1);
    double expected[3];
    ASSERT_EQ(ask(whole, expected), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TObserver observer(1);
        double xyz[3] = {7, 7, 7};
        faults.arm();
        const int answer = ask(observer, xyz);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 2 : 0);
        EXPECT_EQ(observer.GetStatus(), 0);
        EXPECT_EQ(ask(observer, xyz), 0);
        EXPECT_THAT(xyz, ElementsAreArray(expected));
    });
}

TEST_F(observerFaults, relativeXyzWithoutMemory_answers2AndWorksLater) {
    const TSpectrum light = spectrumOf(kD65);
    expectXyzFailsWithoutMemoryAndWorksLater(
        [&](TObserver& observer, double* xyz) { return observer.GetXYZ(&light, &light, xyz); });
}

TEST_F(observerFaults, absoluteXyzWithoutMemory_answers2AndWorksLater) {
    const TSpectrum light = spectrumOf(kD65);
    expectXyzFailsWithoutMemoryAndWorksLater(
        [&](TObserver& observer, double* xyz) { return observer.GetXYZ(&light, xyz); });
}

TEST_F(observerFaults, assignmentOfAnotherObserver_releasesTheSpectra) {
    const TObserver ten(1);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TObserver observer(0);
        faults.arm();
        observer.InitSpectra();
        observer = ten;
        faults.disarm();
        EXPECT_EQ(observer.GetNumber(), 1u);
        EXPECT_EQ(observer.GetStatus(), 0);
        ASSERT_NE(observer.GetYSensitivity(), nullptr);
        EXPECT_EQ(observer.GetYSensitivity()->GetValues()[0], TObserver::sYSpectrum[1][0]);
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
