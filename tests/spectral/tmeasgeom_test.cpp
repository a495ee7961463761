#include "spectral/tmeasgeom.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <type_traits>

#include <gmock/gmock.h>

#include "tests/support/reports.h"

namespace qxcms::tests {
namespace {

static_assert(std::has_virtual_destructor_v<TMeasGeom>);
static_assert(!std::is_constructible_v<TMeasGeom, double>, "a number with a fraction is no geometry");
static_assert(!std::is_constructible_v<TMeasGeom, float>);
static_assert(!std::is_constructible_v<TMeasGeom, long double>);
static_assert(std::is_constructible_v<TMeasGeom, unsigned>);
static_assert(std::is_constructible_v<TMeasGeom, long>);
static_assert(std::is_constructible_v<TMeasGeom, unsigned long>);
static_assert(std::is_constructible_v<TMeasGeom, short>);
static_assert(std::is_constructible_v<TMeasGeom, std::uint32_t&>);
static_assert(!std::is_convertible_v<int, TMeasGeom>);
static_assert(!std::is_convertible_v<const char*, TMeasGeom>);
static_assert(std::is_copy_constructible_v<TMeasGeom> && std::is_copy_assignable_v<TMeasGeom>);

constexpr const char* kNames[] = {"Ill 45, Obs 0",
                                  "Ill 0, Obs 45",
                                  "Ill Diffuse, Obs 8",
                                  "Ill Diffuse, Obs 8, Specular included",
                                  "Ill 8, Obs Diffuse",
                                  "Ill 8, Obs Diffuse, Specular included",
                                  "Ill None, Obs 0",
                                  "Ill 45, Obs 0, Pol Filter",
                                  "Ill 45, Obs 0, D65 Filter",
                                  "Ill 45, Obs 0, UV Filter",
                                  "Ill None, Obs 0, Pol Filter",
                                  "Ill None, Obs 0, D65 Filter",
                                  "Ill None, Obs 0, UV Filter"};
constexpr int kCount = 13;

TEST(geometry, list_holds13NamesAndANullEntry) {
    EXPECT_EQ(TMeasGeom::sNrGeom, kCount);
    for (int i = 0; i < kCount; ++i)
        EXPECT_STREQ(TMeasGeom::sGeomList[i], kNames[i]);
    EXPECT_EQ(TMeasGeom::sGeomList[kCount], nullptr);
}

TEST(geometry, numberFrom0To12_isTaken) {
    for (int i = 0; i < kCount; ++i) {
        const TMeasGeom geometry(i);
        EXPECT_EQ(geometry.GetStatus(), 0) << i;
        EXPECT_EQ(geometry.GetNumber(), static_cast<unsigned>(i));
        EXPECT_STREQ(geometry.GetName(), kNames[i]);
    }
}

TEST(geometry, numberOfAnyIntegerType_isTaken) {
    const TMeasGeom other(12);
    const auto again = std::make_unique<TMeasGeom>(other.GetNumber());
    EXPECT_EQ(again->GetStatus(), 0);
    EXPECT_EQ(again->GetNumber(), 12u);
    EXPECT_EQ(std::make_unique<TMeasGeom>(12L)->GetNumber(), 12u);
    EXPECT_EQ(std::make_unique<TMeasGeom>(short{12})->GetNumber(), 12u);
    EXPECT_EQ(std::make_unique<TMeasGeom>(std::numeric_limits<unsigned>::max())->GetStatus(), 2);
}

TEST(geometry, minus1_givesStatus2AndNumber0) {
    const TMeasGeom geometry(-1);
    EXPECT_EQ(geometry.GetStatus(), 2);
    EXPECT_EQ(geometry.GetNumber(), 0u);
}

TEST(geometry, numberOutsideTheList_givesStatus2AndNumber0) {
    for (const int number : {13, 14, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        const TMeasGeom geometry(number);
        EXPECT_EQ(geometry.GetStatus(), 2) << number;
        EXPECT_EQ(geometry.GetNumber(), 0u) << number;
        EXPECT_STREQ(geometry.GetName(), kNames[0]);
    }
}

TEST(geometry, name_givesItsNumber) {
    for (int i = 0; i < kCount; ++i) {
        const TMeasGeom geometry(kNames[i]);
        EXPECT_EQ(geometry.GetStatus(), 0) << kNames[i];
        EXPECT_EQ(geometry.GetNumber(), static_cast<unsigned>(i));
    }
}

// The asymmetry is deliberate: the constructor compares exactly, the lookup ignores case.
TEST(geometry, nameInLowerCase_isUnknownToTheConstructorAndKnownToTheLookup) {
    const TMeasGeom geometry("ill 45, obs 0");
    EXPECT_EQ(geometry.GetStatus(), 2);
    EXPECT_EQ(geometry.GetNumber(), 0u);
    const ReportCollector reports;
    EXPECT_EQ(TMeasGeom::GetGeometryNumber("ill 45, obs 0"), 0);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(geometry, unknownOrNullName_givesStatus2AndNumber0) {
    for (const char* name :
         {"", "Ill 45", "Ill 45, Obs 0 ", "ILL NONE, OBS 0, UV FILTER", static_cast<const char*>(nullptr)}) {
        const TMeasGeom geometry(name);
        EXPECT_EQ(geometry.GetStatus(), 2);
        EXPECT_EQ(geometry.GetNumber(), 0u);
    }
}

TEST(geometry, constructors_neverReport) {
    const ReportCollector reports;
    const TMeasGeom negative(-1), large(14), unknown("unknown"), none(static_cast<const char*>(nullptr));
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(geometry, copy_hasTheNumberAndStatus0) {
    const TMeasGeom original(5);
    const TMeasGeom copy(original);
    EXPECT_EQ(copy.GetNumber(), 5u);
    EXPECT_EQ(copy.GetStatus(), 0);
}

TEST(geometry, copyOfAnUnknownOne_hasStatus0) {
    const TMeasGeom unknown("unknown");
    const TMeasGeom copy(unknown);
    EXPECT_EQ(copy.GetStatus(), 0);
    EXPECT_EQ(copy.GetNumber(), 0u);
}

TEST(geometry, assignment_takesTheNumberAndStatus0) {
    TMeasGeom target("unknown");
    const TMeasGeom source(7);
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(target.GetNumber(), 7u);
    EXPECT_EQ(target.GetStatus(), 0);
    target = TMeasGeom(-1);
    EXPECT_EQ(target.GetNumber(), 0u);
    EXPECT_EQ(target.GetStatus(), 0);
}

TEST(geometry, knownGeometries_areTheListAndItsCount) {
    const char** names = nullptr;
    int count = 0;
    EXPECT_EQ(TMeasGeom::GetKnownGeometries(&names, &count), 0);
    EXPECT_EQ(names, TMeasGeom::sGeomList);
    EXPECT_EQ(count, kCount);
}

TEST(geometry, knownGeometriesWithNull_answers2AndWritesNothing) {
    const char** names = nullptr;
    int count = 7;
    EXPECT_EQ(TMeasGeom::GetKnownGeometries(nullptr, &count), 2);
    EXPECT_EQ(TMeasGeom::GetKnownGeometries(&names, nullptr), 2);
    EXPECT_EQ(TMeasGeom::GetKnownGeometries(nullptr, nullptr), 2);
    EXPECT_EQ(count, 7);
    EXPECT_EQ(names, nullptr);
}

TEST(geometry, getGeometryName_givesTheNameOfANumber) {
    const ReportCollector reports;
    for (int i = 0; i < kCount; ++i)
        EXPECT_STREQ(TMeasGeom::GetGeometryName(i), kNames[i]);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(geometry, getGeometryNameOf13_isNullWithoutAMessage) {
    const ReportCollector reports;
    EXPECT_EQ(TMeasGeom::GetGeometryName(13), nullptr);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(geometry, getGeometryNameOf14_reportsUnkownGeometry) {
    const ReportCollector reports;
    EXPECT_EQ(TMeasGeom::GetGeometryName(14), nullptr);
    EXPECT_THAT(reports.errors, testing::ElementsAre(Report{"Unkown Geometry", "tmeasgeom", 95}));
}

TEST(geometry, getGeometryNameOfANegativeNumber_reportsUnkownGeometry) {
    for (const int number : {-1, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        const ReportCollector reports;
        EXPECT_EQ(TMeasGeom::GetGeometryName(number), nullptr);
        EXPECT_THAT(reports.errors, testing::ElementsAre(Report{"Unkown Geometry", "tmeasgeom", 95}))
            << number;
    }
}

TEST(geometry, getGeometryNumber_ignoresCase) {
    const ReportCollector reports;
    for (int i = 0; i < kCount; ++i)
        EXPECT_EQ(TMeasGeom::GetGeometryNumber(kNames[i]), i);
    EXPECT_EQ(TMeasGeom::GetGeometryNumber("ILL NONE, OBS 0, UV FILTER"), 12);
    EXPECT_EQ(TMeasGeom::GetGeometryNumber("iLL dIFFUSE, oBS 8"), 2);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(geometry, getGeometryNumberOfAnUnknownName_reportsUnkownGeometry) {
    for (const char* name : {"Ill 45", "", "Ill 45, Obs 0 "}) {
        const ReportCollector reports;
        EXPECT_EQ(TMeasGeom::GetGeometryNumber(name), -1);
        EXPECT_THAT(reports.errors, testing::ElementsAre(Report{"Unkown Geometry", "tmeasgeom", 108}))
            << name;
    }
}

// The null entry behind the list is not searched.
TEST(geometry, getGeometryNumberOfNull_reportsUnkownGeometry) {
    const ReportCollector reports;
    EXPECT_EQ(TMeasGeom::GetGeometryNumber(nullptr), -1);
    EXPECT_THAT(reports.errors, testing::ElementsAre(Report{"Unkown Geometry", "tmeasgeom", 108}));
}

} // namespace
} // namespace qxcms::tests
