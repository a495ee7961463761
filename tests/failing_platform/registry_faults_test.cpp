// The illuminant registry when the platform or the memory fails.
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "spectral/tilluminantfactoryholder.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::Pair;

const std::string kTextImage = "QXILTEXT\nLamp\n2 400 700 1 1\n";

using registryFaults = OnSubstitutePlatform;

TEST_F(registryFaults, newWithoutMemory_isNullAndCountsNothing) {
    ASSERT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    AllocationFaults faults(0, false);
    faults.arm();
    const TIlluminantFactoryHolder* const shared = TIlluminantFactory::New();
    faults.disarm();
    EXPECT_EQ(shared, nullptr);
    EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 0u);
    EXPECT_NE(TIlluminantFactory::New(), nullptr);
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 1u);
    TIlluminantFactory::Delete();
}

TEST_F(registryFaults, elementWithoutMemory_isNullWithoutAReport) {
    TIlluminantFactoryHolder registry;
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant lamp(&spectrum, "D65");
    AllocationFaults faults(0, false);
    faults.arm();
    const TObjEl* const element = registry.TObjFacCreateEl(&lamp);
    faults.disarm();
    EXPECT_EQ(element, nullptr);
    EXPECT_TRUE(platform().errors.empty());
}

TEST_F(registryFaults, existingIlluminantWithoutMemory_staysWithTheCaller) {
    TIlluminantFactoryHolder registry;
    const TSpectrum spectrum = spectrumOf(kD65);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        auto lamp = std::make_unique<TIlluminant>(&spectrum, "D65");
        const int before = registry.GetNrElements();
        faults.arm();
        const TIlluminant* const registered = registry.MakeIlluminant(lamp.get());
        faults.disarm();
        EXPECT_EQ(registered == nullptr, faults.happened());
        EXPECT_EQ(registry.GetNrElements(), before + (registered == nullptr ? 0 : 1));
        EXPECT_STREQ(lamp->GetName(), "D65");
        if (registered != nullptr)
            static_cast<void>(lamp.release());
    });
}

TEST_F(registryFaults, newIlluminantsWithoutMemory_areNotRegistered) {
    platform().files["lamp.ill"] = kTextImage;
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminantFactoryHolder registry;
    const auto expectAllOrNothing = [&](auto make) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            const int before = registry.GetNrElements();
            faults.arm();
            const TIlluminant* const lamp = make();
            faults.disarm();
            EXPECT_EQ(lamp == nullptr, faults.happened());
            EXPECT_EQ(registry.GetNrElements(), before + (lamp == nullptr ? 0 : 1));
        });
    };
    expectAllOrNothing([&] { return registry.MakeIlluminant(&spectrum, "D65"); });
    expectAllOrNothing([&] { return registry.MakeIlluminant("lamp.ill"); });
    expectAllOrNothing([&] { return registry.MakeIlluminant(static_cast<const void*>(kTextImage.c_str())); });
    EXPECT_TRUE(platform().errors.empty());
}

TEST_F(registryFaults, addDirectory_searchesWithAnOptionOfOneByte2) {
    platform().directories["root:[ill]"] = {"b.ill", "none.txt", "missing.ill", "a.ILL"};
    platform().files["b.ill"] = "QXILTEXT\nB\n2 400 700 1 1\n";
    platform().files["none.txt"] = kTextImage;
    platform().files["a.ILL"] = "QXILTEXT\nA\n2 400 700 1 1\n";
    TIlluminantFactoryHolder registry;
    EXPECT_EQ(registry.AddDirectory("root:[ill]"), 0);
    EXPECT_THAT(platform().searches, ElementsAre(Pair("root:[ill]", 2)));
    EXPECT_EQ(platform().searchesInUse, 0);
    ASSERT_EQ(registry.GetNrElements(), 2);
    EXPECT_STREQ(registry.ScanIlluminants(1)->GetName(), "B");
    EXPECT_STREQ(registry.ScanIlluminants(0)->GetName(), "A");
    EXPECT_THAT(platform().opened,
                ElementsAre(Pair("b.ill", "r"), Pair("missing.ill", "r"), Pair("a.ILL", "r")));
    EXPECT_TRUE(platform().errors.empty());
}

TEST_F(registryFaults, directoryThatCannotBeSearched_answers0) {
    platform().refusesSearches = true;
    TIlluminantFactoryHolder registry;
    EXPECT_EQ(registry.AddDirectory("root:[ill]"), 0);
    EXPECT_EQ(registry.GetNrElements(), 0);
    EXPECT_TRUE(platform().errors.empty());
}

TEST_F(registryFaults, nullDirectory_isNotSearched) {
    TIlluminantFactoryHolder registry;
    EXPECT_EQ(registry.AddDirectory(nullptr), 3);
    EXPECT_TRUE(platform().searches.empty());
}

TEST_F(registryFaults, addDirectoryWithoutMemory_endsItsSearch) {
    platform().directories["root:[ill]"] = {"lamp.ill"};
    platform().files["lamp.ill"] = kTextImage;
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminantFactoryHolder registry;
        faults.arm();
        registry.AddDirectory("root:[ill]");
        faults.disarm();
        EXPECT_EQ(registry.GetNrElements(), faults.happened() ? 0 : 1);
        EXPECT_EQ(platform().searchesInUse, 0);
        EXPECT_EQ(platform().filesInUse, 0);
    });
}

TEST_F(registryFaults, lookups_needNoMemory) {
    TIlluminantFactoryHolder registry;
    const TSpectrum spectrum = spectrumOf(kD50);
    const TIlluminant* const lamp = registry.MakeIlluminant(&spectrum, "D50");
    AllocationFaults faults(0, false);
    faults.arm();
    const TIlluminant* const byName = registry.GetIlluminant("CIE Illuminant D50");
    const TIlluminant* const byTemperature = registry.GetIlluminant(5000.0);
    const TIlluminant* const none = registry.GetIlluminant("D65");
    faults.disarm();
    EXPECT_EQ(byName, lamp);
    EXPECT_EQ(byTemperature, lamp);
    EXPECT_EQ(none, nullptr);
    EXPECT_THAT(platform().warnings,
                ElementsAre("6: Illuminant \"CIE Illuminant D50\" was replaced by illuminant \"D50\""));
    EXPECT_THAT(platform().errors,
                ElementsAre("tilluminantfactoryholder:223: No Illuminant with this name available"));
}

} // namespace
} // namespace qxcms::tests
