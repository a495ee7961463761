#include "spectral/tilluminantfactoryholder.h"

#include <filesystem>
#include <limits>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <gmock/gmock.h>

#include "platform/logical_names.h"
#include "tests/spectral/known_spectra.h"
#include "tests/spectral/registry_scope.h"
#include "tests/support/reports.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

template <class Argument>
concept CanMakeFrom = requires(TIlluminantFactoryHolder& registry, Argument argument) {
    registry.MakeIlluminant(argument);
};
static_assert(CanMakeFrom<const char*> && CanMakeFrom<const void*> && CanMakeFrom<TIlluminant*>);
static_assert(!CanMakeFrom<TSpectrum*>, "would be taken for a file image");
static_assert(!CanMakeFrom<const TSpectrum*>, "would be taken for a file image");
static_assert(!CanMakeFrom<const TIlluminant*>, "cannot be owned");

static_assert(std::is_base_of_v<TObjFac, TIlluminantFactoryHolder>);
static_assert(std::is_base_of_v<TIlluminantFactoryHolder, TIlluminantFactory>);
static_assert(std::is_base_of_v<TObjEl, TIllEl>);
static_assert(!std::is_default_constructible_v<TIlluminantFactory>, "made by New alone");
static_assert(!std::is_copy_constructible_v<TIlluminantFactoryHolder>);
static_assert(!std::is_copy_assignable_v<TIlluminantFactoryHolder>);

const Report kNoObject = {"No Object specified", "tilluminantfactoryholder", 42};
const Report kSpecifyName = {"Specify illuminant name", "tilluminantfactoryholder", 193};
const Report kNotAvailable = {"No Illuminant with this name available", "tilluminantfactoryholder", 223};

// Tells when it goes.
class MortalIlluminant : public TIlluminant {
public:
    MortalIlluminant(const TSpectrum* light, const char* label, int* deaths)
        : TIlluminant(light, label), counter(deaths) {}
    ~MortalIlluminant() override { ++*counter; }

private:
    int* counter;
};

// A registry that can make no elements.
class BarrenRegistry : public TIlluminantFactoryHolder {
public:
    TObjEl* TObjFacCreateEl(void*) override { return nullptr; }
};

TIlluminant* add(TIlluminantFactoryHolder& registry, const char* name, double level = 1.0) {
    const TSpectrum spectrum = spectrumOf(flat(level));
    return registry.MakeIlluminant(&spectrum, name);
}

std::vector<std::string> namesIn(TIlluminantFactoryHolder& registry) {
    std::vector<std::string> names;
    for (const TIlluminant* lamp = registry.ScanIlluminants(1); lamp != nullptr;
         lamp = registry.ScanIlluminants(0))
        names.emplace_back(lamp->GetName());
    return names;
}

std::string textFile(const std::string& name) {
    return "QXILTEXT\n" + name + "\n2 400 700 1 1\n";
}

// The shared registry.

TEST(registry, new_makesOneEmptyRegistryForAll) {
    ASSERT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    ASSERT_EQ(TIlluminantFactory::sNrFactoryReferences, 0u);
    TIlluminantFactoryHolder* const first = TIlluminantFactory::New();
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first, TIlluminantFactory::sTheFactory);
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 1u);
    EXPECT_EQ(first->GetNrElements(), 0);
    EXPECT_EQ(first->ScanIlluminants(1), nullptr);
    EXPECT_EQ(TIlluminantFactory::New(), first);
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 2u);
    TIlluminantFactory::Delete();
    TIlluminantFactory::Delete();
    EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 0u);
}

TEST(registry, secondOfTwoDeletes_destroysTheRegistryWithItsIlluminants) {
    TIlluminantFactoryHolder* const shared = TIlluminantFactory::New();
    TIlluminantFactory::New();
    const TSpectrum spectrum = spectrumOf(kD65);
    int deaths = 0;
    ASSERT_NE(shared->MakeIlluminant(new MortalIlluminant(&spectrum, "D65", &deaths)), nullptr);
    ASSERT_NE(shared->MakeIlluminant(new MortalIlluminant(&spectrum, "D65 again", &deaths)), nullptr);
    TIlluminantFactory::Delete();
    EXPECT_EQ(TIlluminantFactory::sTheFactory, shared);
    EXPECT_EQ(deaths, 0);
    EXPECT_STREQ(shared->GetIlluminant("D65")->GetName(), "D65");
    TIlluminantFactory::Delete();
    EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    EXPECT_EQ(deaths, 2);
}

TEST(registry, deleteWithoutNew_doesNothing) {
    ASSERT_EQ(TIlluminantFactory::sNrFactoryReferences, 0u);
    TIlluminantFactory::Delete();
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 0u);
    EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
    EXPECT_NE(TIlluminantFactory::New(), nullptr);
    EXPECT_EQ(TIlluminantFactory::sNrFactoryReferences, 1u);
    TIlluminantFactory::Delete();
    EXPECT_EQ(TIlluminantFactory::sTheFactory, nullptr);
}

TEST(registry, newAfterTheLastDelete_isEmpty) {
    TIlluminantFactoryHolder* shared = TIlluminantFactory::New();
    add(*shared, "D65");
    TIlluminantFactory::Delete();
    shared = TIlluminantFactory::New();
    EXPECT_EQ(shared->GetNrElements(), 0);
    TIlluminantFactory::Delete();
}

// Elements.

TEST(registry, elementForAnIlluminant_ownsIt) {
    TIlluminantFactoryHolder registry;
    const TSpectrum spectrum = spectrumOf(kD65);
    int deaths = 0;
    TIlluminant* const lamp = new MortalIlluminant(&spectrum, "D65", &deaths);
    const std::unique_ptr<TObjEl> element(registry.TObjFacCreateEl(lamp));
    ASSERT_NE(element, nullptr);
    EXPECT_NE(dynamic_cast<TIllEl*>(element.get()), nullptr);
    EXPECT_EQ(element->GetObject(), lamp);
    EXPECT_EQ(registry.GetNrElements(), 0);
    EXPECT_EQ(deaths, 0);
}

TEST(registry, elementThatGoes_takesItsIlluminantAlong) {
    TIlluminantFactoryHolder registry;
    const TSpectrum spectrum = spectrumOf(kD65);
    int deaths = 0;
    TIlluminant* const lamp = new MortalIlluminant(&spectrum, "D65", &deaths);
    delete registry.TObjFacCreateEl(lamp);
    EXPECT_EQ(deaths, 1);
}

TEST(registry, elementForNothing_isNullWithAReport) {
    TIlluminantFactoryHolder registry;
    const ReportCollector reports;
    EXPECT_EQ(registry.TObjFacCreateEl(nullptr), nullptr);
    EXPECT_THAT(reports.errors, ElementsAre(kNoObject));
}

// Registration.

TEST(registry, spectrumAndName_areRegistered) {
    TIlluminantFactoryHolder registry;
    const ReportCollector reports;
    const TSpectrum spectrum = spectrumOf(kD65);
    const TIlluminant* const lamp = registry.MakeIlluminant(&spectrum, "D65");
    ASSERT_NE(lamp, nullptr);
    EXPECT_STREQ(lamp->GetName(), "D65");
    EXPECT_EQ(standardOf(*lamp->GetSpectrum()), kD65);
    EXPECT_EQ(registry.GetNrElements(), 1);
    EXPECT_EQ(registry.GetIlluminant("D65"), lamp);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST(registry, spectrumOrNameThatIsNull_givesNullWithoutAMessage) {
    TIlluminantFactoryHolder registry;
    const ReportCollector reports;
    const TSpectrum spectrum = spectrumOf(kD65);
    EXPECT_EQ(registry.MakeIlluminant(static_cast<const TSpectrum*>(nullptr), "D65"), nullptr);
    EXPECT_EQ(registry.MakeIlluminant(&spectrum, nullptr), nullptr);
    EXPECT_EQ(registry.MakeIlluminant(&spectrum, std::string(1025, 'n').c_str()), nullptr);
    EXPECT_EQ(registry.GetNrElements(), 0);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST(registry, file_isRegistered) {
    const ScratchFolder scratch;
    TIlluminantFactoryHolder registry;
    const TIlluminant* const lamp = registry.MakeIlluminant(scratch.write("a.ill", textFile("Lamp")).c_str());
    ASSERT_NE(lamp, nullptr);
    EXPECT_STREQ(lamp->GetName(), "Lamp");
    EXPECT_EQ(registry.GetIlluminant("Lamp"), lamp);
}

TEST(registry, fileThatIsNoIlluminant_givesNullWithoutAMessage) {
    const ScratchFolder scratch;
    TIlluminantFactoryHolder registry;
    const ReportCollector reports;
    EXPECT_EQ(registry.MakeIlluminant(static_cast<const char*>(nullptr)), nullptr);
    EXPECT_EQ(registry.MakeIlluminant(scratch.path("missing.ill").c_str()), nullptr);
    EXPECT_EQ(registry.MakeIlluminant(scratch.write("a.txt", textFile("Lamp")).c_str()), nullptr);
    EXPECT_EQ(registry.MakeIlluminant(scratch.write("b.ill", "no illuminant").c_str()), nullptr);
    EXPECT_EQ(registry.MakeIlluminant(scratch.write("c.ill", "QXILTEXT\nLamp\n2 400").c_str()), nullptr);
    EXPECT_EQ(registry.GetNrElements(), 0);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST(registry, imageInMemory_isRegistered) {
    TIlluminantFactoryHolder registry;
    const std::string image = textFile("Lamp");
    const TIlluminant* const lamp = registry.MakeIlluminant(static_cast<const void*>(image.c_str()));
    ASSERT_NE(lamp, nullptr);
    EXPECT_STREQ(lamp->GetName(), "Lamp");
    EXPECT_EQ(registry.GetNrElements(), 1);
}

TEST(registry, imageThatIsNoIlluminant_givesNullWithoutAMessage) {
    TIlluminantFactoryHolder registry;
    const ReportCollector reports;
    EXPECT_EQ(registry.MakeIlluminant(static_cast<const void*>(nullptr)), nullptr);
    EXPECT_EQ(registry.MakeIlluminant(static_cast<const void*>("XXXXXXXX")), nullptr);
    EXPECT_EQ(registry.GetNrElements(), 0);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST(registry, existingIlluminant_isRegisteredAndOwned) {
    const TSpectrum spectrum = spectrumOf(kD65);
    int deaths = 0;
    {
        TIlluminantFactoryHolder registry;
        TIlluminant* const lamp = new MortalIlluminant(&spectrum, "D65", &deaths);
        EXPECT_EQ(registry.MakeIlluminant(lamp), lamp);
        EXPECT_EQ(registry.GetNrElements(), 1);
        EXPECT_EQ(registry.GetIlluminant("D65"), lamp);
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(registry, nullIlluminant_givesNullWithAReport) {
    TIlluminantFactoryHolder registry;
    const ReportCollector reports;
    EXPECT_EQ(registry.MakeIlluminant(static_cast<TIlluminant*>(nullptr)), nullptr);
    EXPECT_EQ(registry.GetNrElements(), 0);
    EXPECT_THAT(reports.errors, ElementsAre(kNoObject));
}

TEST(registry, illuminantWithoutAnElement_staysWithTheCaller) {
    BarrenRegistry registry;
    const TSpectrum spectrum = spectrumOf(kD65);
    int deaths = 0;
    const std::unique_ptr<TIlluminant> lamp = std::make_unique<MortalIlluminant>(&spectrum, "D65", &deaths);
    EXPECT_EQ(registry.MakeIlluminant(lamp.get()), nullptr);
    EXPECT_EQ(registry.GetNrElements(), 0);
    EXPECT_EQ(registry.ScanIlluminants(1), nullptr);
    EXPECT_EQ(deaths, 0);
}

TEST(registry, secondIlluminantOfAName_isRegisteredAndTheEarlierOneIsFound) {
    TIlluminantFactoryHolder registry;
    const TIlluminant* const first = add(registry, "Lamp", 1.0);
    const TIlluminant* const second = add(registry, "lamp", 2.0);
    EXPECT_NE(first, second);
    EXPECT_EQ(registry.GetNrElements(), 2);
    EXPECT_EQ(registry.GetIlluminant("lamp"), first);
}

TEST(registry, scan_goesInRegistrationOrderToNull) {
    TIlluminantFactoryHolder registry;
    const TIlluminant* const b = add(registry, "b");
    const TIlluminant* const a = add(registry, "a");
    const TIlluminant* const c = add(registry, "c");
    EXPECT_EQ(registry.ScanIlluminants(1), b);
    EXPECT_EQ(registry.ScanIlluminants(0), a);
    EXPECT_EQ(registry.ScanIlluminants(0), c);
    EXPECT_EQ(registry.ScanIlluminants(0), nullptr);
    EXPECT_EQ(registry.ScanIlluminants(-1), b);
    EXPECT_EQ(registry.ScanIlluminants(7), b);
    EXPECT_EQ(registry.ScanIlluminants(0), a);
}

TEST(registry, lookup_leavesAScanWhereItIs) {
    TIlluminantFactoryHolder registry;
    const TIlluminant* const b = add(registry, "b");
    const TIlluminant* const a = add(registry, "a");
    const TIlluminant* const d65 = add(registry, "D65");
    const ReportCollector reports; // of the name that is not there
    ASSERT_EQ(registry.ScanIlluminants(1), b);
    EXPECT_EQ(registry.GetIlluminant("D65"), d65);
    EXPECT_EQ(registry.ScanIlluminants(0), a);
    EXPECT_EQ(registry.GetIlluminant("b"), b);
    EXPECT_EQ(registry.ScanIlluminants(0), d65);
    ASSERT_EQ(registry.ScanIlluminants(1), b);
    EXPECT_EQ(registry.GetIlluminant("unknown"), nullptr);
    EXPECT_EQ(registry.ScanIlluminants(0), a);
    EXPECT_EQ(registry.GetIlluminant(6500.0), d65);
    EXPECT_EQ(registry.ScanIlluminants(0), d65);
}

// Folders.

TEST(registry, addDirectory_registersTheIlluminantFilesAlone) {
    const ScratchFolder scratch;
    scratch.write("b.ill", textFile("B"));
    scratch.write("a.ILL", textFile("A"));
    scratch.write("c.txt", textFile("C"));
    scratch.write("d.ill", "something else");
    scratch.write("e.ill", std::string(2049, ' '));
    scratch.write("f", textFile("F"));
    std::filesystem::create_directory(scratch.path("g.ill"));
    TIlluminantFactoryHolder registry;
    const ReportCollector reports;
    EXPECT_EQ(registry.AddDirectory(scratch.path().c_str()), 0);
    EXPECT_THAT(namesIn(registry), ElementsAre("A", "B"));
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST(registry, addDirectory_takesALogicalSpecification) {
    const ScratchFolder scratch;
    std::filesystem::create_directory(scratch.path("ill"));
    scratch.write("ill/a.ill", textFile("A"));
    ASSERT_EQ(deflognam("QXCMS_TEST_FOLDER", scratch.path().c_str()), 0);
    TIlluminantFactoryHolder registry;
    EXPECT_EQ(registry.AddDirectory("QXCMS_TEST_FOLDER:[ill]"), 0);
    deflognam("QXCMS_TEST_FOLDER", nullptr);
    EXPECT_THAT(namesIn(registry), ElementsAre("A"));
}

TEST(registry, addDirectoryTwice_registersTwice) {
    const ScratchFolder scratch;
    scratch.write("a.ill", textFile("A"));
    TIlluminantFactoryHolder registry;
    EXPECT_EQ(registry.AddDirectory(scratch.path().c_str()), 0);
    EXPECT_EQ(registry.AddDirectory(scratch.path().c_str()), 0);
    EXPECT_EQ(registry.GetNrElements(), 2);
}

TEST(registry, directoryThatIsNotThere_answers0AndYieldsNothing) {
    const ScratchFolder scratch;
    TIlluminantFactoryHolder registry;
    const ReportCollector reports;
    EXPECT_EQ(registry.AddDirectory(scratch.path("missing").c_str()), 0);
    EXPECT_EQ(registry.AddDirectory("QXCMS_NO_SUCH_NAME:[ill]"), 0);
    EXPECT_EQ(registry.GetNrElements(), 0);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST(registry, emptyDirectory_answers0) {
    const ScratchFolder scratch;
    TIlluminantFactoryHolder registry;
    EXPECT_EQ(registry.AddDirectory(scratch.path().c_str()), 0);
    EXPECT_EQ(registry.GetNrElements(), 0);
}

TEST(registry, nullDirectory_answers3) {
    TIlluminantFactoryHolder registry;
    EXPECT_EQ(registry.AddDirectory(nullptr), 3);
}

// Saving.

TEST(registry, saveIlluminant_writesItsFile) {
    const ScratchFolder scratch;
    TIlluminantFactoryHolder registry;
    const std::string file = scratch.path("lamp.ill");
    EXPECT_EQ(registry.SaveIlluminant(add(registry, "Lamp"), file.c_str()), 0);
    const TIlluminant read(file.c_str());
    EXPECT_EQ(read.GetStatus(), 0);
    EXPECT_STREQ(read.GetName(), "Lamp");
}

TEST(registry, saveIlluminantWithNull_answers3) {
    const ScratchFolder scratch;
    TIlluminantFactoryHolder registry;
    EXPECT_EQ(registry.SaveIlluminant(nullptr, scratch.path("lamp.ill").c_str()), 3);
    EXPECT_EQ(registry.SaveIlluminant(add(registry, "Lamp"), nullptr), 3);
    EXPECT_EQ(registry.SaveIlluminant(nullptr, nullptr), 3);
}

TEST(registry, saveIlluminant_answersWhatSaveAnswers) {
    const ScratchFolder scratch;
    TIlluminantFactoryHolder registry;
    EXPECT_EQ(registry.SaveIlluminant(add(registry, "Lamp"), scratch.path("missing/lamp.ill").c_str()), 4);
    EXPECT_EQ(
        registry.SaveIlluminant(add(registry, std::string(256, 'n').c_str()), scratch.path("a.ill").c_str()),
        3);
}

// Lookup by name.

TEST(registry, nameInLowerCase_findsD65) {
    TIlluminantFactoryHolder registry;
    const TIlluminant* const lamp = add(registry, "D65");
    const ReportCollector reports;
    EXPECT_EQ(registry.GetIlluminant("d65"), lamp);
    EXPECT_EQ(registry.GetIlluminant("D65"), lamp);
    EXPECT_THAT(reports.errors, IsEmpty());
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(registry, emptyName_reportsSpecifyIlluminantName) {
    TIlluminantFactoryHolder registry;
    add(registry, "");
    const ReportCollector reports;
    EXPECT_EQ(registry.GetIlluminant(""), nullptr);
    EXPECT_THAT(reports.errors, ElementsAre(kSpecifyName));
}

TEST(registry, nullName_reportsSpecifyIlluminantName) {
    TIlluminantFactoryHolder registry;
    const ReportCollector reports;
    EXPECT_EQ(registry.GetIlluminant(static_cast<const char*>(nullptr)), nullptr);
    EXPECT_THAT(reports.errors, ElementsAre(kSpecifyName));
}

TEST(registry, unknownName_isReported) {
    TIlluminantFactoryHolder registry;
    add(registry, "D65");
    for (const char* name : {"D50", "D6", "D655", " D65"}) {
        const ReportCollector reports;
        EXPECT_EQ(registry.GetIlluminant(name), nullptr) << name;
        EXPECT_THAT(reports.errors, ElementsAre(kNotAvailable)) << name;
        EXPECT_TRUE(reports.warnings.empty()) << name;
    }
}

TEST(registry, cieIlluminantD50_findsD50WithAWarning) {
    for (const char* registered : {"D50", "d50"}) {
        for (const char* asked : {"CIE Illuminant D50", "cie illuminant d50"}) {
            TIlluminantFactoryHolder registry;
            add(registry, "D65");
            const TIlluminant* const lamp = add(registry, registered);
            const ReportCollector reports;
            EXPECT_EQ(registry.GetIlluminant(asked), lamp);
            ASSERT_EQ(reports.warnings.size(), 1u);
            EXPECT_EQ(reports.warnings[0].level, 6);
            EXPECT_EQ(reports.warnings[0].message,
                      "Illuminant \"CIE Illuminant D50\" was replaced by illuminant \"D50\"");
            EXPECT_THAT(reports.errors, IsEmpty());
        }
    }
}

TEST(registry, registeredCieIlluminantD50_isFoundWithoutAWarning) {
    TIlluminantFactoryHolder registry;
    add(registry, "D50");
    const TIlluminant* const lamp = add(registry, "CIE illuminant D50");
    const ReportCollector reports;
    EXPECT_EQ(registry.GetIlluminant("CIE Illuminant D50"), lamp);
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(registry, cieIlluminantD50WithoutD50_isReported) {
    TIlluminantFactoryHolder registry;
    add(registry, "D65");
    const ReportCollector reports;
    EXPECT_EQ(registry.GetIlluminant("CIE Illuminant D50"), nullptr);
    EXPECT_THAT(reports.errors, ElementsAre(kNotAvailable));
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(registry, noOtherCieName_isAnAlias) {
    TIlluminantFactoryHolder registry;
    for (const char* name : {"D50", "D55", "D65", "D75", "A", "F2"})
        add(registry, name);
    for (const char* name : {"CIE Illuminant D55", "CIE Illuminant D65", "CIE Illuminant D75",
                             "CIE Illuminant A", "CIE Illuminant F2", "Illuminant D50"}) {
        const ReportCollector reports;
        EXPECT_EQ(registry.GetIlluminant(name), nullptr) << name;
        EXPECT_THAT(reports.errors, ElementsAre(kNotAvailable)) << name;
        EXPECT_TRUE(reports.warnings.empty()) << name;
    }
}

TEST(registry, lookups_surviveIlluminantsWithoutAName) {
    TIlluminantFactoryHolder registry;
    TIlluminant* const nameless = new TIlluminant(static_cast<const void*>(nullptr));
    ASSERT_EQ(nameless->GetName(), nullptr);
    EXPECT_EQ(registry.MakeIlluminant(nameless), nameless);
    const TIlluminant* const lamp = add(registry, "D50");
    const ReportCollector reports;
    EXPECT_EQ(registry.GetIlluminant("D50"), lamp);
    EXPECT_EQ(registry.GetIlluminant("CIE Illuminant D50"), lamp);
    EXPECT_EQ(registry.GetIlluminant("D65"), nullptr);
    EXPECT_EQ(registry.GetIlluminant(static_cast<const char*>(nullptr)), nullptr);
    EXPECT_THAT(reports.errors, ElementsAre(kNotAvailable, kSpecifyName));
}

// Lookup by temperature.

TEST(registry, temperature_looksUpItsRoundedHundreds) {
    TIlluminantFactoryHolder registry;
    const TIlluminant* const d50 = add(registry, "D50");
    const TIlluminant* const d51 = add(registry, "D51");
    const TIlluminant* const d65 = add(registry, "D65");
    const ReportCollector reports;
    EXPECT_EQ(registry.GetIlluminant(6500.0), d65);
    EXPECT_EQ(registry.GetIlluminant(6540.0), d65);
    EXPECT_EQ(registry.GetIlluminant(6450.0), d65);
    EXPECT_EQ(registry.GetIlluminant(5003.0), d50);
    EXPECT_EQ(registry.GetIlluminant(5049.0), d50);
    EXPECT_EQ(registry.GetIlluminant(5050.0), d51);
    EXPECT_THAT(reports.errors, IsEmpty());
}

TEST(registry, temperatureBelow950_looksUpANameWithABlank) {
    TIlluminantFactoryHolder registry;
    const TIlluminant* const d9 = add(registry, "D 9");
    const TIlluminant* const d0 = add(registry, "D 0");
    const TIlluminant* const d10 = add(registry, "D10");
    EXPECT_EQ(registry.GetIlluminant(900.0), d9);
    EXPECT_EQ(registry.GetIlluminant(949.0), d9);
    EXPECT_EQ(registry.GetIlluminant(950.0), d10);
    EXPECT_EQ(registry.GetIlluminant(0.0), d0);
    EXPECT_EQ(registry.GetIlluminant(-100.0), d0); // the integer part of -0.5
}

TEST(registry, undefinedTemperature_looksUpD0) {
    TIlluminantFactoryHolder registry;
    add(registry, "D 1");
    const TIlluminant* const d0 = add(registry, "D 0");
    EXPECT_EQ(registry.GetIlluminant(std::numeric_limits<double>::quiet_NaN()), d0);
}

TEST(registry, temperatureOf4Digits_hasAsManyAsItNeeds) {
    TIlluminantFactoryHolder registry;
    const TIlluminant* const d250 = add(registry, "D250");
    const TIlluminant* const negative = add(registry, "D-1");
    EXPECT_EQ(registry.GetIlluminant(25000.0), d250);
    EXPECT_EQ(registry.GetIlluminant(-150.0), negative);
}

TEST(registry, temperatureWithoutAnIlluminant_isReported) {
    TIlluminantFactoryHolder registry;
    add(registry, "D65");
    const ReportCollector reports;
    EXPECT_EQ(registry.GetIlluminant(5000.0), nullptr);
    EXPECT_THAT(reports.errors, ElementsAre(kNotAvailable));
}

TEST(registry, temperatureBeyondAllNumbers_isReported) {
    TIlluminantFactoryHolder registry;
    add(registry, "D65");
    for (const double temperature :
         {1e12, 1e300, -1e300, std::numeric_limits<double>::infinity(),
          -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        const ReportCollector reports;
        EXPECT_EQ(registry.GetIlluminant(temperature), nullptr) << temperature;
        EXPECT_THAT(reports.errors, ElementsAre(kNotAvailable)) << temperature;
    }
}

} // namespace
} // namespace qxcms::tests
