// Weightings, colour temperatures and handles of colour spaces when the platform or the memory fails.
#include <cmath>

#include <gmock/gmock.h>

#include "colorspace/tcolorspace.h"
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
using colorSpaceFaults = OnSubstitutePlatform;

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

class WeightingWithoutMemory : public OnSubstitutePlatform {
protected:
    TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant lamp{&spectrum, "lamp"};
    TObserver observer{0};
};

using weightingWithoutMemory = WeightingWithoutMemory;

// Bad and dark without memory; whole once there is some.
void expectStatus2AndZerosOrWhole(TIlluminantAndObserver& weighting, const AllocationFaults& faults,
                                  const TIlluminant& lamp) {
    EXPECT_EQ(weighting.GetStatus(), faults.happened() ? 2 : 0);
    EXPECT_EQ(weighting.GetObserver() == nullptr, faults.happened());
    if (weighting.GetStatus() == 0)
        return;
    expectZeros(weighting);
    for (int i = 0; i < TIlluminantAndObserver::kMaxPoints; ++i)
        EXPECT_EQ(weighting.GetCombinedWeights()[i], 0.0);
    const TObserver ten(1);
    EXPECT_EQ(weighting.Init(&lamp, &ten, 36), 0);
    EXPECT_EQ(weighting.GetObserver()->GetNumber(), 1u);
    EXPECT_NE(weighting.GetFactor(), 0.0);
}

TEST_F(weightingWithoutMemory, construction_givesStatus2AndZeros) {
    for (const int points : {0, 1, 8, 36}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            TIlluminantAndObserver weighting(&lamp, &observer, points);
            faults.disarm();
            expectStatus2AndZerosOrWhole(weighting, faults, lamp);
        });
    }
}

TEST_F(weightingWithoutMemory, constructionForATableIlluminant_givesStatus2AndZeros) {
    const TIlluminant f11(&spectrum, "CIE Illuminant F11");
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TIlluminantAndObserver weighting(&f11, &observer, 36);
        faults.disarm();
        expectStatus2AndZerosOrWhole(weighting, faults, lamp);
    });
}

TEST_F(weightingWithoutMemory, constructionByName_givesStatus2AndZeros) {
    const RegistryScope registry;
    registry.add("D65", kD65);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TIlluminantAndObserver weighting("D65", "10 degree", 36);
        faults.disarm();
        expectStatus2AndZerosOrWhole(weighting, faults, lamp);
        EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 1u);
    });
}

// Without a registry of the process one is made for the lookup: no memory for it is status 3, and what is
// looked up in it is unknown.
TEST_F(weightingWithoutMemory, constructionByNameWithoutARegistry_givesStatus3) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        TIlluminantAndObserver weighting("D65", "10 degree", 36);
        faults.disarm();
        EXPECT_EQ(weighting.GetStatus(), faults.happened() ? 3 : 2);
        expectZeros(weighting);
        EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
        EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 0u);
        EXPECT_EQ(weighting.Init(&lamp, &observer, 36), 0);
    });
}

TEST_F(weightingWithoutMemory, initOfAGoodWeighting_leavesNothingOfTheOldOne) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminantAndObserver weighting(&lamp, &observer, 36);
        faults.arm();
        const int answer = weighting.Init(&lamp, &observer, 8);
        faults.disarm();
        EXPECT_EQ(answer, weighting.GetStatus());
        expectStatus2AndZerosOrWhole(weighting, faults, lamp);
    });
}

TEST_F(weightingWithoutMemory, white_answers2AndZerosAndIsThereLater) {
    double expected[3];
    ASSERT_EQ(TIlluminantAndObserver(&lamp, &observer, 36).GetXYZWhite(expected), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        const TIlluminantAndObserver weighting(&lamp, &observer, 36);
        double white[3] = {7, 7, 7};
        faults.arm();
        const int answer = weighting.GetXYZWhite(white);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 2 : 0);
        if (faults.happened()) {
            EXPECT_THAT(white, Each(0.0));
            EXPECT_EQ(weighting.GetXYZWhite(white), 0);
        }
        EXPECT_THAT(white, testing::ElementsAreArray(expected));
    });
}

// A search that has to make its white itself refuses when it cannot, and one that is given a white needs no
// memory.
TEST_F(weightingWithoutMemory, matchingSearch_refusesOrIsRightAndIsThereLater) {
    const double target[3] = {30, 20, 8};
    const Standard start = flat(0.5);
    const auto search = [&](const TIlluminantAndObserver& weighting, Standard& result) {
        return weighting.CalculateMatchingSpectrum(target, nullptr, nullptr, nullptr, start.data(),
                                                   kMatchingMethodLab, result.data());
    };
    Standard expected;
    const double distance = search(TIlluminantAndObserver(&lamp, &observer, 36), expected);
    ASSERT_GE(distance, 0.0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        const TIlluminantAndObserver weighting(&lamp, &observer, 36);
        Standard result = flat(7.0);
        faults.arm();
        const double answer = search(weighting, result);
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? -1.0 : distance);
        if (faults.happened()) {
            EXPECT_THAT(result, Each(7.0));
            EXPECT_EQ(search(weighting, result), distance);
        }
        EXPECT_EQ(result, expected);
    });
}

TEST_F(weightingWithoutMemory, temperature_is0OrRightAndIsThereLater) {
    const RegistryScope registry;
    const TIlluminant* const lampA = registry.add("A", kIlluminantA);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const double temperature = lampA->GetColorTemperature();
        faults.disarm();
        EXPECT_EQ(temperature, faults.happened() ? 0.0 : 2860.0);
        EXPECT_EQ(lampA->GetColorTemperature(), 2860.0);
    });
}

TEST_F(weightingWithoutMemory, chromaticityAndTemperature_answer0) {
    const RegistryScope registry;
    const TIlluminant* const lampA = registry.add("A", kIlluminantA);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        double x = 7, y = 7, temperature = 7;
        faults.arm();
        const int answer = lampA->GetChromaticityAndTemperature(&x, &y, &temperature);
        faults.disarm();
        EXPECT_EQ(answer, 0);
        EXPECT_EQ(temperature, faults.happened() ? 0.0 : 2860.0);
        EXPECT_EQ(std::isnan(x) && std::isnan(y), faults.happened());
    });
}

TEST_F(colorSpaceFaults, handleWithoutMemory_givesError1OrIsWhole) {
    const double white[3] = {95, 100, 108};
    for (const int space : {0, 1, 2}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            TColorSpace handle(white, space);
            faults.disarm();
            EXPECT_EQ(handle.ErrNo(), faults.happened() ? 1 : 0) << space;
        });
    }
}

} // namespace
} // namespace qxcms::tests
