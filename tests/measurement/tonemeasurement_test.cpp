// The base of all measurements: geometry, coordinates, default CIELAB and densities.
#include "measurement/tonemeasurement.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "colorspace/tlabspace.h"
#include "measurement/colorimetric_measurements.h"
#include "measurement/spectral_measurements.h"
#include "tests/spectral/known_spectra.h"
#include "tests/support/reports.h"

namespace {

using qxcms::tests::flat;
using qxcms::tests::kD65;
using qxcms::tests::ReportCollector;
using qxcms::tests::slotOf;
using qxcms::tests::spectrumOf;
using qxcms::tests::Standard;
using Triple = std::array<double, 3>;

const Triple kWhite = {96.422, 100.0, 82.521};

// A measurement whose tristimulus values, result and spectrum are given.
template <class Base>
class Scripted : public Base {
public:
    using Base::Base;

    TOneMeasurement* Copy() const override { return nullptr; }
    int GetXYZ(TIlluminant* illuminant, TObserver* observer, double* out) const override {
        seenIlluminant = illuminant;
        seenObserver = observer;
        for (std::size_t i = 0; i < 3; ++i)
            out[i] = xyz[i];
        return result;
    }
    double* GetUniformSpectrum(double*, double*, int*) const override { return nullptr; }
    int GetSpecData(double*, double*, int*, bool*) override { return 0; }
    TSpectrum* GetSpectrum() override { return spectrum; }

    Triple xyz = {20.0, 30.0, 10.0};
    int result = 0;
    TSpectrum* spectrum = nullptr;
    mutable TIlluminant* seenIlluminant = nullptr;
    mutable TObserver* seenObserver = nullptr;
};

// A measurement that overrides nothing that the base supplies.
class Barest : public TOneMeasurement {
public:
    using TOneMeasurement::TOneMeasurement;
    TOneMeasurement* Copy() const override { return nullptr; }
    int GetXYZ(TIlluminant*, TObserver*, double*) const override { return 0; }
    double* GetUniformSpectrum(double*, double*, int*) const override { return nullptr; }
    int GetSpecData(double*, double*, int*, bool*) override { return 0; }
};

using ScriptedOne = Scripted<TOneMeasurement>;
using ScriptedReflection = Scripted<TReflectionMeasurement>;
using ScriptedEmission = Scripted<TEmissionMeasurement>;

std::vector<double> coordinatesOf(const TOneMeasurement& measurement) {
    int count = -77;
    const double* coordinates = measurement.GetCoord(&count);
    EXPECT_EQ(coordinates == nullptr, count == 0);
    EXPECT_GE(count, 0);
    return coordinates == nullptr ? std::vector<double>()
                                  : std::vector<double>(coordinates, coordinates + count);
}

// Expects four zero densities and a count of 0.
void expectNoDensity(TOneMeasurement& measurement, int standard) {
    double densities[4] = {9.0, 9.0, 9.0, 9.0};
    int count = 9;
    EXPECT_EQ(measurement.GetDensity(standard, densities, &count), 0);
    for (const double density : densities)
        EXPECT_EQ(density, 0.0);
    EXPECT_EQ(count, 0);
}

// The tree.

TEST(oneMeasurement, threeBases_areAbstract) {
    EXPECT_TRUE(std::is_abstract_v<TOneMeasurement>);
    EXPECT_TRUE(std::is_abstract_v<TReflectionMeasurement>);
    EXPECT_TRUE(std::is_abstract_v<TEmissionMeasurement>);
    EXPECT_TRUE(std::has_virtual_destructor_v<TOneMeasurement>);
}

TEST(oneMeasurement, reflectiveClasses_standOnTheReflectiveBranch) {
    EXPECT_TRUE((std::is_base_of_v<TOneMeasurement, TReflectionMeasurement>));
    EXPECT_TRUE((std::is_base_of_v<TReflectionMeasurement, TReflectionSpectrum>));
    EXPECT_TRUE((std::is_base_of_v<TReflectionMeasurement, TReflectedSpectrum>));
    EXPECT_TRUE((std::is_base_of_v<TReflectionMeasurement, TXYZMeasurement>));
    EXPECT_TRUE((std::is_base_of_v<TReflectionMeasurement, TLABMeasurement>));
}

TEST(oneMeasurement, emissiveClasses_standOnTheEmissiveBranch) {
    EXPECT_TRUE((std::is_base_of_v<TOneMeasurement, TEmissionMeasurement>));
    EXPECT_TRUE((std::is_base_of_v<TEmissionMeasurement, TEmissionSpectrum>));
    EXPECT_TRUE((std::is_base_of_v<TEmissionMeasurement, TEmissiveXYZMeasurement>));
    EXPECT_TRUE((std::is_base_of_v<TEmissionMeasurement, TEmissiveLABMeasurement>));
}

TEST(oneMeasurement, measurements_areCopiedThroughCopyAlone) {
    EXPECT_FALSE(std::is_copy_constructible_v<TReflectionSpectrum>);
    EXPECT_FALSE(std::is_copy_assignable_v<TReflectionSpectrum>);
    EXPECT_FALSE(std::is_copy_constructible_v<TEmissionSpectrum>);
    EXPECT_FALSE(std::is_copy_assignable_v<TEmissionSpectrum>);
    EXPECT_FALSE(std::is_copy_constructible_v<TXYZMeasurement>);
    EXPECT_FALSE(std::is_copy_assignable_v<TXYZMeasurement>);
    EXPECT_FALSE(std::is_copy_constructible_v<TEmissiveXYZMeasurement>);
    EXPECT_FALSE(std::is_copy_assignable_v<TEmissiveXYZMeasurement>);
    EXPECT_FALSE(std::is_copy_constructible_v<TLABMeasurement>);
    EXPECT_FALSE(std::is_copy_assignable_v<TLABMeasurement>);
    EXPECT_FALSE(std::is_copy_constructible_v<TEmissiveLABMeasurement>);
    EXPECT_FALSE(std::is_copy_assignable_v<TEmissiveLABMeasurement>);
}

#if defined(__x86_64__) && defined(__GNUC__)
// The slot of a virtual operation: pointers to virtual members hold its byte offset in the table, plus 1.
template <class Member>
std::ptrdiff_t tableSlot(Member member) {
    std::ptrdiff_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    return (offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

TEST(oneMeasurement, operations_standBehindTheTwoDestructorsInOrder) {
    EXPECT_EQ(tableSlot(&TOneMeasurement::Copy), 2);
    EXPECT_EQ(tableSlot(&TOneMeasurement::GetDensity), 3);
    EXPECT_EQ(tableSlot(&TOneMeasurement::GetXYZ), 4);
    EXPECT_EQ(tableSlot(&TOneMeasurement::GetUniformSpectrum), 5);
    EXPECT_EQ(tableSlot(&TOneMeasurement::GetLAB), 6);
    EXPECT_EQ(tableSlot(&TOneMeasurement::GetSpecData), 7);
    EXPECT_EQ(tableSlot(&TOneMeasurement::GetSpectrum), 8);
}

TEST(oneMeasurement, classes_addTheirPartsAlone) {
    // Table pointer, status, geometry, number of coordinates, coordinates.
    EXPECT_EQ(sizeof(TOneMeasurement), 40U);
    EXPECT_EQ(sizeof(TReflectionMeasurement), 40U);
    EXPECT_EQ(sizeof(TEmissionMeasurement), 40U);
    EXPECT_EQ(sizeof(TReflectionSpectrum), 40U + 8U);
    EXPECT_EQ(sizeof(TReflectedSpectrum), 40U + 8U + 8U);
    EXPECT_EQ(sizeof(TEmissionSpectrum), 40U + 8U);
    EXPECT_EQ(sizeof(TXYZMeasurement), 40U + 24U + 8U + 8U);
    EXPECT_EQ(sizeof(TEmissiveXYZMeasurement), 40U + 24U + 8U);
    EXPECT_EQ(sizeof(TLABMeasurement), 40U + 24U + 8U + 8U + 24U);
    EXPECT_EQ(sizeof(TEmissiveLABMeasurement), 40U + 24U + 8U + 24U);
}
#endif

// Geometry and status.

TEST(oneMeasurement, geometry_isCopied) {
    auto geometry = std::make_unique<TMeasGeom>(7);
    const Barest measurement(geometry.get());
    EXPECT_EQ(measurement.GetStatus(), 0);
    ASSERT_NE(measurement.GetGeometry(), nullptr);
    EXPECT_NE(measurement.GetGeometry(), geometry.get());
    geometry.reset();
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 7U);
    EXPECT_EQ(measurement.GetGeometry()->GetStatus(), 0);
}

TEST(oneMeasurement, geometry_isCopiedWithCoordinatesToo) {
    const TMeasGeom geometry(12);
    const double coordinates[1] = {5.0};
    const Barest measurement(&geometry, 1, coordinates);
    EXPECT_EQ(measurement.GetStatus(), 0);
    ASSERT_NE(measurement.GetGeometry(), nullptr);
    EXPECT_NE(measurement.GetGeometry(), &geometry);
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 12U);
}

TEST(oneMeasurement, geometry_ofNullIsNone) {
    const Barest measurement(nullptr);
    EXPECT_EQ(measurement.GetGeometry(), nullptr);
    EXPECT_EQ(measurement.GetStatus(), 0);
    const double coordinates[2] = {1.0, 2.0};
    const Barest withCoordinates(nullptr, 2, coordinates);
    EXPECT_EQ(withCoordinates.GetGeometry(), nullptr);
    EXPECT_EQ(withCoordinates.GetStatus(), 0);
    EXPECT_EQ(coordinatesOf(withCoordinates), (std::vector<double>{1.0, 2.0}));
}

TEST(oneMeasurement, geometry_thatIsUnknownIsCopiedAsTheFirstOne) {
    const TMeasGeom unknown(99);
    ASSERT_EQ(unknown.GetStatus(), 2);
    const Barest measurement(&unknown);
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 0U);
    EXPECT_EQ(measurement.GetGeometry()->GetStatus(), 0);
}

// Coordinates.

TEST(oneMeasurement, coordinates_areNoneByDefault) {
    const TMeasGeom geometry(0);
    const Barest measurement(&geometry);
    int count = 9;
    EXPECT_EQ(measurement.GetCoord(&count), nullptr);
    EXPECT_EQ(count, 0);
}

TEST(oneMeasurement, coordinates_areCopied) {
    const TMeasGeom geometry(0);
    double coordinates[4] = {0.0, 100.0, 50.5, -1.0};
    const Barest measurement(&geometry, 4, coordinates);
    coordinates[0] = 77.0;
    EXPECT_NE(measurement.GetCoord(nullptr), coordinates);
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{0.0, 100.0, 50.5, -1.0}));
}

TEST(oneMeasurement, coordinates_areTakenByTheGivenCount) {
    const double coordinates[4] = {1.0, 2.0, 3.0, 4.0};
    const Barest measurement(nullptr, 2, coordinates);
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{1.0, 2.0}));
}

TEST(oneMeasurement, coordinates_ofACountOfZeroAreNone) {
    const double coordinates[2] = {1.0, 2.0};
    const Barest measurement(nullptr, 0, coordinates);
    EXPECT_TRUE(coordinatesOf(measurement).empty());
    EXPECT_EQ(measurement.GetStatus(), 0);
}

TEST(oneMeasurement, coordinates_ofANegativeCountAreNone) {
    const double coordinates[2] = {1.0, 2.0};
    for (const int count : {-1, -2000000000}) {
        const Barest measurement(nullptr, count, coordinates);
        EXPECT_TRUE(coordinatesOf(measurement).empty()) << count;
        EXPECT_EQ(measurement.GetStatus(), 0) << count;
    }
}

TEST(oneMeasurement, coordinates_ofNullAreNone) {
    const Barest measurement(nullptr, 3, nullptr);
    EXPECT_TRUE(coordinatesOf(measurement).empty());
}

TEST(oneMeasurement, getCoord_survivesANullCount) {
    const double coordinates[2] = {1.0, 2.0};
    const Barest measurement(nullptr, 2, coordinates);
    ASSERT_NE(measurement.GetCoord(nullptr), nullptr);
    EXPECT_EQ(measurement.GetCoord(nullptr)[1], 2.0);
}

TEST(oneMeasurement, setCoord_replacesTheCoordinates) {
    const double first[2] = {1.0, 2.0};
    Barest measurement(nullptr, 2, first);
    double second[3] = {7.0, 8.0, 9.0};
    EXPECT_EQ(measurement.SetCoord(3, second), 0);
    second[0] = 0.0;
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{7.0, 8.0, 9.0}));
}

TEST(oneMeasurement, setCoord_fromItsOwnArrayKeepsTheValues) {
    const double first[4] = {1.0, 2.0, 3.0, 4.0};
    Barest measurement(nullptr, 4, first);
    EXPECT_EQ(measurement.SetCoord(4, measurement.GetCoord(nullptr)), 0);
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{1.0, 2.0, 3.0, 4.0}));
    EXPECT_EQ(measurement.SetCoord(2, measurement.GetCoord(nullptr) + 1), 0);
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{2.0, 3.0}));
}

TEST(oneMeasurement, setCoord_leavesTheStatusAlone) {
    const double coordinates[2] = {1.0, 2.0};
    TReflectionSpectrum incomplete(nullptr, nullptr);
    ASSERT_EQ(incomplete.GetStatus(), 3);
    EXPECT_EQ(incomplete.SetCoord(2, coordinates), 0);
    EXPECT_EQ(incomplete.GetStatus(), 3);
    EXPECT_EQ(coordinatesOf(incomplete), (std::vector<double>{1.0, 2.0}));
    Barest whole(nullptr);
    EXPECT_EQ(whole.SetCoord(2, nullptr), 0);
    EXPECT_EQ(whole.GetStatus(), 0);
}

TEST(oneMeasurement, setCoord_ofZeroLeavesANullArrayAndCountZero) {
    const double first[2] = {1.0, 2.0};
    Barest measurement(nullptr, 2, first);
    EXPECT_EQ(measurement.SetCoord(0, first), 0);
    int count = 9;
    EXPECT_EQ(measurement.GetCoord(&count), nullptr);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(measurement.SetCoord(2, first), 0);
    EXPECT_EQ(measurement.SetCoord(0, nullptr), 0);
    EXPECT_TRUE(coordinatesOf(measurement).empty());
}

TEST(oneMeasurement, setCoord_ofANegativeCountLeavesNone) {
    const double first[2] = {1.0, 2.0};
    Barest measurement(nullptr, 2, first);
    EXPECT_EQ(measurement.SetCoord(-1, first), 0);
    EXPECT_TRUE(coordinatesOf(measurement).empty());
}

TEST(oneMeasurement, setCoord_ofNullLeavesNone) {
    const double first[2] = {1.0, 2.0};
    Barest measurement(nullptr, 2, first);
    EXPECT_EQ(measurement.SetCoord(2, nullptr), 0);
    EXPECT_TRUE(coordinatesOf(measurement).empty());
}

// Densities.

TEST(oneMeasurement, density_isZerosByDefault) {
    Barest measurement(nullptr);
    for (int standard = 0; standard < 4; ++standard)
        expectNoDensity(measurement, standard);
}

TEST(oneMeasurement, density_writesFourNumbersAlone) {
    TSpectrum grey = spectrumOf(flat(0.1));
    Barest one(nullptr);
    ScriptedReflection reflection(nullptr);
    ScriptedReflection withSpectrum(nullptr);
    withSpectrum.spectrum = &grey;
    ScriptedEmission emission(nullptr);
    TOneMeasurement* const all[4] = {&one, &reflection, &withSpectrum, &emission};
    for (TOneMeasurement* measurement : all) {
        double densities[5] = {9.0, 9.0, 9.0, 9.0, 9.0};
        int count = 9;
        EXPECT_EQ(measurement->GetDensity(TSpectrum::kAnsiT, densities, &count), 0);
        EXPECT_NE(densities[3], 9.0);
        EXPECT_EQ(densities[4], 9.0);
    }
}

TEST(oneMeasurement, density_byDefaultDoesNotLookAtTheSpectrum) {
    TSpectrum grey = spectrumOf(flat(0.1));
    ScriptedOne measurement(nullptr);
    measurement.spectrum = &grey;
    expectNoDensity(measurement, TSpectrum::kAnsiA);
}

TEST(oneMeasurement, density_ofEmissionIsZerosAlsoWithASpectrum) {
    TSpectrum grey = spectrumOf(flat(0.1));
    ScriptedEmission measurement(nullptr);
    measurement.spectrum = &grey;
    for (int standard = 0; standard < 4; ++standard)
        expectNoDensity(measurement, standard);
}

TEST(oneMeasurement, density_ofReflectionWithoutSpectrumIsZeros) {
    ScriptedReflection measurement(nullptr);
    for (int standard = 0; standard < 4; ++standard)
        expectNoDensity(measurement, standard);
}

TEST(oneMeasurement, density_withoutSpectrumDoesNotLookAtTheStandard) {
    Barest one(nullptr);
    ScriptedReflection reflection(nullptr);
    ScriptedEmission emission(nullptr);
    for (const int standard : {-1, 4, 1000}) {
        expectNoDensity(one, standard);
        expectNoDensity(reflection, standard);
        expectNoDensity(emission, standard);
    }
}

TEST(oneMeasurement, density_ofReflectionIsThatOfTheSpectrum) {
    TSpectrum spectrum = spectrumOf(qxcms::tests::irregular(5));
    ScriptedReflection measurement(nullptr);
    measurement.spectrum = &spectrum;
    for (const TSpectrum::FilterStandards standard :
         {TSpectrum::kAnsiA, TSpectrum::kAnsiT, TSpectrum::kDin, TSpectrum::kDinNb}) {
        double expected[4];
        int expectedFilter = -9;
        ASSERT_EQ(spectrum.GetDensity(standard, expected, &expectedFilter), 0);
        double densities[4] = {9.0, 9.0, 9.0, 9.0};
        int filter = 9;
        EXPECT_EQ(measurement.GetDensity(standard, densities, &filter), 0);
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_EQ(densities[i], expected[i]) << standard << ' ' << i;
        EXPECT_EQ(filter, expectedFilter) << standard;
    }
}

TEST(oneMeasurement, density_countReceivesTheMajorFilter) {
    // The narrow-band filters look at 620, 530 and 430 nm: 2.0, 1.0 and log10(2).
    Standard values = flat(0.5);
    values[slotOf(620)] = 0.01;
    values[slotOf(530)] = 0.1;
    TSpectrum cyan = spectrumOf(values);
    values[slotOf(620)] = 0.5;
    values[slotOf(530)] = 0.01;
    TSpectrum magenta = spectrumOf(values);
    values[slotOf(530)] = 0.5;
    values[slotOf(430)] = 0.01;
    TSpectrum yellow = spectrumOf(values);
    TSpectrum grey = spectrumOf(flat(0.1));
    ScriptedReflection measurement(nullptr);
    double densities[4];
    int filter = 9;
    measurement.spectrum = &cyan;
    EXPECT_EQ(measurement.GetDensity(TSpectrum::kDinNb, densities, &filter), 0);
    EXPECT_EQ(filter, 0);
    EXPECT_NEAR(densities[0], 2.0, 1e-12);
    EXPECT_NEAR(densities[1], 1.0, 1e-12);
    EXPECT_NEAR(densities[2], 0.30102999566398120, 1e-12);
    measurement.spectrum = &magenta;
    EXPECT_EQ(measurement.GetDensity(TSpectrum::kDinNb, densities, &filter), 0);
    EXPECT_EQ(filter, 1);
    measurement.spectrum = &yellow;
    EXPECT_EQ(measurement.GetDensity(TSpectrum::kDinNb, densities, &filter), 0);
    EXPECT_EQ(filter, 2);
    measurement.spectrum = &grey;
    EXPECT_EQ(measurement.GetDensity(TSpectrum::kDinNb, densities, &filter), 0);
    EXPECT_EQ(filter, 3);
}

TEST(oneMeasurement, density_ofAnUnknownStandardIsRefusedByTheSpectrum) {
    TSpectrum grey = spectrumOf(flat(0.1));
    ScriptedReflection measurement(nullptr);
    measurement.spectrum = &grey;
    for (const int standard : {-1, 4, 1000}) {
        double densities[4] = {9.0, 9.0, 9.0, 9.0};
        int filter = 9;
        EXPECT_EQ(measurement.GetDensity(standard, densities, &filter), 2) << standard;
        for (const double density : densities)
            EXPECT_EQ(density, 9.0);
        EXPECT_EQ(filter, 9);
    }
}

TEST(oneMeasurement, density_withNullAnswers2) {
    TSpectrum grey = spectrumOf(flat(0.1));
    Barest one(nullptr);
    ScriptedReflection reflection(nullptr);
    ScriptedReflection withSpectrum(nullptr);
    withSpectrum.spectrum = &grey;
    ScriptedEmission emission(nullptr);
    TOneMeasurement* const all[4] = {&one, &reflection, &withSpectrum, &emission};
    for (TOneMeasurement* measurement : all) {
        double densities[4];
        int count = 0;
        EXPECT_EQ(measurement->GetDensity(TSpectrum::kDin, nullptr, &count), 2);
        EXPECT_EQ(measurement->GetDensity(TSpectrum::kDin, densities, nullptr), 2);
        EXPECT_EQ(measurement->GetDensity(TSpectrum::kDin, nullptr, nullptr), 2);
    }
}

// Default CIELAB.

TEST(oneMeasurement, lab_isThatOfTheXyzOnTheGivenWhite) {
    const ScriptedOne measurement(nullptr);
    Triple expected;
    TLabSpace(kWhite.data()).XYZToLab(measurement.xyz.data(), expected.data());
    Triple lab = {9.0, 9.0, 9.0};
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, kWhite.data(), lab.data()), 0);
    EXPECT_EQ(lab, expected);
}

TEST(oneMeasurement, lab_mayBeWrittenOverTheWhite) {
    const ScriptedOne measurement(nullptr);
    Triple expected;
    TLabSpace(kWhite.data()).XYZToLab(measurement.xyz.data(), expected.data());
    Triple triple = kWhite;
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, triple.data(), triple.data()), 0);
    EXPECT_EQ(triple, expected);
}

TEST(oneMeasurement, lab_clampsNegativeXyz) {
    ScriptedOne measurement(nullptr);
    measurement.xyz = {-5.0, 30.0, 10.0};
    Triple lab = {9.0, 9.0, 9.0};
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, kWhite.data(), lab.data()), 0);
    EXPECT_DOUBLE_EQ(lab[1], 500.0 * (0.137931 - std::pow(0.3, 0.33333333333333)));
}

TEST(oneMeasurement, lab_asksForTheXyzOfTheGivenIlluminantAndObserver) {
    const TSpectrum spectrum = spectrumOf(kD65);
    TIlluminant illuminant(&spectrum, "D65");
    TObserver observer(1);
    const ScriptedOne measurement(nullptr);
    Triple lab;
    EXPECT_EQ(measurement.GetLAB(&illuminant, &observer, kWhite.data(), lab.data()), 0);
    EXPECT_EQ(measurement.seenIlluminant, &illuminant);
    EXPECT_EQ(measurement.seenObserver, &observer);
}

TEST(oneMeasurement, lab_returnsTheCodeOfXyzUnchanged) {
    for (const int code : {-1, 2, 3, 7}) {
        ScriptedOne measurement(nullptr);
        measurement.result = code;
        Triple lab = {9.0, 9.0, 9.0};
        EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, kWhite.data(), lab.data()), code);
        EXPECT_EQ(lab, (Triple{9.0, 9.0, 9.0}));
    }
}

TEST(oneMeasurement, lab_onAWhiteThatCielabRefusesAnswers3) {
    const ReportCollector reports;
    const ScriptedOne measurement(nullptr);
    for (const Triple& white :
         {Triple{-1.0, 100.0, 80.0}, Triple{96.0, -1.0, 80.0}, Triple{96.0, 100.0, -1.0}}) {
        Triple lab = {9.0, 9.0, 9.0};
        EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, white.data(), lab.data()), 3);
        EXPECT_EQ(lab, (Triple{9.0, 9.0, 9.0}));
    }
}

TEST(oneMeasurement, lab_onANullWhiteAnswers3WithoutAReport) {
    const ReportCollector reports;
    const ScriptedOne measurement(nullptr);
    Triple lab = {9.0, 9.0, 9.0};
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, nullptr, lab.data()), 3);
    EXPECT_EQ(lab, (Triple{9.0, 9.0, 9.0}));
    EXPECT_TRUE(reports.errors.empty());
}

TEST(oneMeasurement, lab_failingXyzWinsOverABadWhite) {
    const ReportCollector reports;
    ScriptedOne measurement(nullptr);
    measurement.result = -1;
    const Triple badWhite = {-1.0, 100.0, 80.0};
    Triple lab;
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, badWhite.data(), lab.data()), -1);
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, nullptr, lab.data()), -1);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(oneMeasurement, lab_intoNullAnswers3) {
    const ScriptedOne measurement(nullptr);
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, kWhite.data(), nullptr), 3);
}

TEST(oneMeasurement, spectrum_isNullByDefault) {
    Barest measurement(nullptr);
    EXPECT_EQ(measurement.GetSpectrum(), nullptr);
}

} // namespace
