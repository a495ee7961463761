// Weightings and colour temperatures when the platform or the memory fails.
#include <gmock/gmock.h>

#include "spectral/tilluminantandobserver.h"
#include "spectral/tilluminantfactoryholder.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/spectral/known_spectra.h"
#include "tests/spectral/registry_scope.h"

namespace qxcms::tests {
namespace {

using testing::Each;
using testing::ElementsAre;

using weightingFaults = OnSubstitutePlatform;

void expectZeros(const TIlluminantAndObserver& weighting) {
    double white[3] = {7, 7, 7}, colour[3] = {7, 7, 7};
    EXPECT_EQ(weighting.GetXYZWhite(white), 0);
    EXPECT_THAT(white, Each(0.0));
    const TSpectrum ones = spectrumOf(flat(1.0));
    EXPECT_EQ(weighting.GetXYZ(&ones, colour, weighting.GetNumber()), 0);
    EXPECT_THAT(colour, Each(0.0));
}

// Status 3.

TEST_F(weightingFaults, noRegistry_givesStatus3AndZerosWithoutAReport) {
    ASSERT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    AllocationFaults faults(0, false);
    faults.arm();
    const TIlluminantAndObserver weighting("D65", "2 degree", 36);
    faults.disarm();
    EXPECT_EQ(weighting.GetStatus(), 3);
    EXPECT_EQ(weighting.GetIlluminant(), nullptr);
    expectZeros(weighting);
    EXPECT_TRUE(platform().errors.empty());
    EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 0u);
}

TEST_F(weightingFaults, unknownObserverWithoutARegistry_givesStatus3) {
    AllocationFaults faults(0, true);
    faults.arm();
    const TIlluminantAndObserver weighting("D65", "unknown", 36);
    faults.disarm();
    EXPECT_EQ(weighting.GetStatus(), 3);
}

TEST_F(weightingFaults, temperatureWithoutARegistry_is0) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const TIlluminant lamp(&spectrum, "D65");
    AllocationFaults faults(0, false);
    double x = 7, y = 7, temperature = 7;
    faults.arm();
    const int answer = lamp.GetChromaticityAndTemperature(&x, &y, &temperature);
    faults.disarm();
    EXPECT_EQ(answer, 0);
    EXPECT_EQ(temperature, 0.0);
}

// No interpolation.

TEST_F(weightingFaults, construction_interpolatesNothing) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const TIlluminant lamp(&spectrum, "lamp");
    const TObserver two(0), ten(1);
    for (const TObserver* observer : {&two, &ten}) {
        for (const int n : {0, 1, 8, 36}) {
            const TIlluminantAndObserver weighting(&lamp, observer, n);
            EXPECT_EQ(weighting.GetStatus(), 0) << n;
        }
    }
    EXPECT_TRUE(platform().announcedCounts.empty());
}

TEST_F(weightingFaults, integration_interpolatesNothing) {
    const TSpectrum spectrum = spectrumOf(kD65), sample = spectrumOf(ramp());
    const TIlluminant lamp(&spectrum, "lamp");
    const TObserver observer(0);
    const TIlluminantAndObserver weighting(&lamp, &observer, 36);
    double xyz[3];
    EXPECT_EQ(weighting.GetXYZ(&sample, xyz, 36), 0);
    EXPECT_EQ(weighting.GetXYZ(ramp().data(), xyz, 36), 0);
    EXPECT_TRUE(platform().announcedCounts.empty());
}

// No memory.

TEST_F(weightingFaults, weightingWithoutMemory_isBadAndGivesZeros) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const TIlluminant lamp(&spectrum, "lamp");
    const TObserver observer(0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TIlluminantAndObserver weighting(&lamp, &observer, 36);
        faults.disarm();
        EXPECT_EQ(weighting.GetStatus() != 0, faults.happened());
        if (weighting.GetStatus() != 0)
            expectZeros(weighting);
    });
}

TEST_F(weightingFaults, weightingByNameWithoutMemory_isBadAndGivesZeros) {
    const RegistryScope registry;
    registry.add("D65", kD65);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TIlluminantAndObserver weighting("D65", "10 degree", 36);
        faults.disarm();
        EXPECT_EQ(weighting.GetStatus() != 0, faults.happened());
        if (weighting.GetStatus() != 0)
            expectZeros(weighting);
        EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 1u);
    });
}

TEST_F(weightingFaults, whiteWithoutMemory_isWholeOrZeros) {
    const TSpectrum spectrum = spectrumOf(kD65);
    const TIlluminant lamp(&spectrum, "lamp");
    const TObserver observer(0);
    double expected[3];
    ASSERT_EQ(TIlluminantAndObserver(&lamp, &observer, 36).GetXYZWhite(expected), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        const TIlluminantAndObserver weighting(&lamp, &observer, 36);
        double white[3] = {7, 7, 7};
        faults.arm();
        weighting.GetXYZWhite(white);
        faults.disarm();
        if (faults.happened()) {
            EXPECT_THAT(white,
                        testing::AnyOf(ElementsAre(0.0, 0.0, 0.0), testing::ElementsAreArray(expected)));
        } else {
            EXPECT_THAT(white, testing::ElementsAreArray(expected));
        }
    });
}

TEST_F(weightingFaults, temperatureWithoutMemory_is0OrRight) {
    const RegistryScope registry;
    const TIlluminant* const lamp = registry.add("A", kIlluminantA);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const double temperature = lamp->GetColorTemperature();
        faults.disarm();
        EXPECT_TRUE(temperature == 2860.0 || (faults.happened() && temperature == 0.0)) << temperature;
    });
}

} // namespace
} // namespace qxcms::tests
