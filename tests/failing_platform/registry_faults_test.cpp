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
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TIlluminantFactoryHolder* const shared = TIlluminantFactory::New();
        faults.disarm();
        EXPECT_EQ(shared == nullptr, faults.happened());
        EXPECT_EQ(TIlluminantFactory::sTheFactory, shared);
        EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, faults.happened() ? 0u : 1u);
        TIlluminantFactory::Delete();
        EXPECT_NE(TIlluminantFactory::New(), nullptr);
        EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 1u);
        TIlluminantFactory::Delete();
    });
    EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
}

TEST_F(registryFaults, furtherNew_needsNoMemory) {
    const TIlluminantFactoryHolder* const shared = TIlluminantFactory::New();
    expectNoAllocation([&] {
        EXPECT_EQ(TIlluminantFactory::New(), shared);
        TIlluminantFactory::Delete();
    });
    TIlluminantFactory::Delete();
}

TEST_F(registryFaults, elementWithoutMemory_isNullWithoutAReport) {
    TIlluminantFactoryHolder registry;
    const TSpectrum spectrum = spectrumOf(kD65);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        auto lamp = std::make_unique<TIlluminant>(&spectrum, "D65");
        faults.arm();
        const std::unique_ptr<TObjEl> element(registry.TObjFacCreateEl(lamp.get()));
        faults.disarm();
        EXPECT_EQ(element == nullptr, faults.happened());
        EXPECT_STREQ(lamp->GetName(), "D65");
        if (element != nullptr)
            static_cast<void>(lamp.release()); // the element owns it
    });
    EXPECT_TRUE(platform().errors.empty());
}

TEST_F(registryFaults, existingIlluminantWithoutMemory_staysWithTheCallerAndIsTakenLater) {
    const TSpectrum spectrum = spectrumOf(kD65);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminantFactoryHolder registry;
        auto lamp = std::make_unique<TIlluminant>(&spectrum, "D65");
        faults.arm();
        const TIlluminant* const registered = registry.MakeIlluminant(lamp.get());
        faults.disarm();
        EXPECT_EQ(registered == nullptr, faults.happened());
        EXPECT_EQ(registry.GetNrElements(), registered == nullptr ? 0 : 1);
        EXPECT_STREQ(lamp->GetName(), "D65");
        if (registered == nullptr) {
            EXPECT_EQ(registry.MakeIlluminant(lamp.get()), lamp.get());
        }
        EXPECT_EQ(registry.ScanIlluminants(1), lamp.get());
        static_cast<void>(lamp.release());
    });
}

// A new illuminant is registered whole or not at all; what was registered before stays, and a later try
// succeeds.
template <class Make>
void expectRegisteredWholeOrNotAtAll(Make make) {
    const TSpectrum spectrum = spectrumOf(kD50);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminantFactoryHolder registry;
        const TIlluminant* const first = registry.MakeIlluminant(&spectrum, "first");
        ASSERT_NE(first, nullptr);
        faults.arm();
        const TIlluminant* const lamp = make(registry);
        faults.disarm();
        EXPECT_EQ(lamp == nullptr, faults.happened());
        EXPECT_EQ(registry.GetNrElements(), lamp == nullptr ? 1 : 2);
        EXPECT_EQ(registry.GetIlluminant("FIRST"), first);
        EXPECT_NE(make(registry), nullptr);
        EXPECT_EQ(platform().filesInUse, 0);
    });
    EXPECT_TRUE(platform().errors.empty());
}

TEST_F(registryFaults, newIlluminantsWithoutMemory_areNotRegistered) {
    using Holder = TIlluminantFactoryHolder;
    platform().files["lamp.ill"] = kTextImage;
    const TSpectrum spectrum = spectrumOf(kD65);
    const void* const image = kTextImage.c_str();
    expectRegisteredWholeOrNotAtAll(
        [&](Holder& registry) { return registry.MakeIlluminant(&spectrum, "D65"); });
    expectRegisteredWholeOrNotAtAll([&](Holder& registry) { return registry.MakeIlluminant("lamp.ill"); });
    expectRegisteredWholeOrNotAtAll([&](Holder& registry) { return registry.MakeIlluminant(image); });
}

TEST_F(registryFaults, saveIlluminantWithoutMemory_answers3AndWritesNothing) {
    const TSpectrum spectrum = spectrumOf(kD65);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminantFactoryHolder registry;
        TIlluminant lamp(&spectrum, "D65");
        platform().files.erase("d65.ill");
        faults.arm();
        const int answer = registry.SaveIlluminant(&lamp, "d65.ill");
        faults.disarm();
        EXPECT_EQ(answer, faults.happened() ? 3 : 0);
        EXPECT_EQ(platform().files.count("d65.ill") == 0, faults.happened());
    });
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

TEST_F(registryFaults, addDirectoryWithoutMemory_endsItsSearchAndGoesOnWithTheNextFile) {
    platform().directories["root:[ill]"] = {"a.ill", "b.ill"};
    platform().files["a.ill"] = kTextImage;
    platform().files["b.ill"] = kTextImage;
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TIlluminantFactoryHolder registry;
        faults.arm();
        const int answer = registry.AddDirectory("root:[ill]");
        faults.disarm();
        EXPECT_EQ(answer, 0);
        EXPECT_EQ(registry.GetNrElements() == 2, !faults.happened());
        EXPECT_EQ(platform().searchesInUse, 0);
        EXPECT_EQ(platform().filesInUse, 0);
        const int before = registry.GetNrElements();
        EXPECT_EQ(registry.AddDirectory("root:[ill]"), 0);
        EXPECT_EQ(registry.GetNrElements(), before + 2);
    });
}

TEST_F(registryFaults, lookups_needNoMemory) {
    TIlluminantFactoryHolder registry;
    const TSpectrum spectrum = spectrumOf(kD50);
    const TIlluminant* const lamp = registry.MakeIlluminant(&spectrum, "D50");
    expectNoAllocation([&] {
        EXPECT_EQ(registry.GetIlluminant("CIE Illuminant D50"), lamp);
        EXPECT_EQ(registry.GetIlluminant(5000.0), lamp);
        EXPECT_EQ(registry.GetIlluminant(-1e300), nullptr);
        EXPECT_EQ(registry.GetIlluminant("D65"), nullptr);
        EXPECT_EQ(registry.GetIlluminant(""), nullptr);
        EXPECT_EQ(registry.ScanIlluminants(1), lamp);
        EXPECT_EQ(registry.ScanIlluminants(0), nullptr);
        EXPECT_EQ(registry.GetNrElements(), 1);
        EXPECT_EQ(registry.TObjFacCreateEl(nullptr), nullptr);
    });
    EXPECT_THAT(platform().warnings,
                ElementsAre("6: Illuminant \"CIE Illuminant D50\" was replaced by illuminant \"D50\""));
    EXPECT_THAT(platform().errors,
                ElementsAre("tilluminantfactoryholder:223: No Illuminant with this name available",
                            "tilluminantfactoryholder:223: No Illuminant with this name available",
                            "tilluminantfactoryholder:193: Specify illuminant name",
                            "tilluminantfactoryholder:42: No Object specified"));
}

} // namespace
} // namespace qxcms::tests
