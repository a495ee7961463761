// Measurements when the memory fails, and what they ask of the platform.
#include <memory>

#include <gmock/gmock.h>

#include "measurement/colorimetric_measurements.h"
#include "measurement/spectral_measurements.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using testing::AnyOf;
using testing::ElementsAreArray;

constexpr double kWhite[3] = {95.0, 100.0, 108.0};
constexpr double kCoordinates[4] = {1, 2, 3, 4};

// What a class of a caller supplies for light that was reflected under one illuminant.
class ReflectedLight : public TReflectedSpectrum {
public:
    using TReflectedSpectrum::TReflectedSpectrum;
    TOneMeasurement* Copy() const override { return nullptr; }
    double* GetUniformSpectrum(double*, double*, int*) const override { return nullptr; }
    int GetSpecData(double*, double*, int*, bool*) override { return 0; }
};

// A measurement that holds no colour.
template <class Base>
class Colourless : public Base {
public:
    using Base::Base;
    TOneMeasurement* Copy() const override { return nullptr; }
    int GetXYZ(TIlluminant*, TObserver*, double*) const override { return -1; }
    double* GetUniformSpectrum(double*, double*, int*) const override { return nullptr; }
    int GetSpecData(double*, double*, int*, bool*) override { return 0; }
};

class MeasurementFaults : public OnSubstitutePlatform {
protected:
    // Whatever part there is no memory for, the measurement says so, and can be asked, copied and destroyed.
    template <class Measurement, class... Arguments>
    void expectStatus3WithoutMemory(Arguments... arguments) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            Measurement measurement(arguments...);
            faults.disarm();
            EXPECT_EQ(measurement.GetStatus(), faults.happened() ? 3 : 0);
            expectItCanBeAsked(measurement);
            EXPECT_EQ(measurement.SetCoord(4, kCoordinates), 0);
            int count = -7;
            EXPECT_NE(measurement.GetCoord(&count), nullptr);
            EXPECT_EQ(count, 4);
            EXPECT_EQ(measurement.GetStatus(), faults.happened() ? 3 : 0);
        });
    }

    void expectItCanBeAsked(TOneMeasurement& measurement) {
        TObserver asked(0);
        double xyz[3], lab[3], densities[4];
        int count = -7;
        EXPECT_THAT(measurement.GetXYZ(&lamp, &asked, xyz), AnyOf(0, -1, 2));
        EXPECT_THAT(measurement.GetLAB(&lamp, &asked, kWhite, lab), AnyOf(0, -1, 2));
        EXPECT_EQ(measurement.GetDensity(0, densities, &count), 0);
        const double* const coordinates = measurement.GetCoord(&count);
        EXPECT_EQ(coordinates != nullptr, count > 0);
        const double* const standard = measurement.GetUniformSpectrum(nullptr, nullptr, nullptr);
        EXPECT_TRUE(standard == nullptr || measurement.GetSpectrum() != nullptr);
        const TMeasGeom* const itsGeometry = measurement.GetGeometry();
        EXPECT_TRUE(itsGeometry == nullptr || itsGeometry->GetNumber() == 3u);
        // What it lacks, its copy lacks too.
        const std::unique_ptr<TOneMeasurement> copy(measurement.Copy());
        EXPECT_TRUE(copy == nullptr || copy->GetStatus() == measurement.GetStatus());
    }

    // A copy is whole or not made, and made later.
    static void expectCopyIsWholeOrNull(const TOneMeasurement& measurement) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            std::unique_ptr<TOneMeasurement> copy(measurement.Copy());
            faults.disarm();
            EXPECT_EQ(copy == nullptr, faults.happened());
            if (copy == nullptr)
                copy.reset(measurement.Copy());
            ASSERT_NE(copy, nullptr);
            int count = -7;
            EXPECT_EQ(copy->GetStatus(), measurement.GetStatus());
            EXPECT_NE(copy->GetCoord(&count), nullptr);
            EXPECT_EQ(count, 4);
            ASSERT_NE(copy->GetGeometry(), nullptr);
            EXPECT_EQ(copy->GetGeometry()->GetNumber(), 3u);
        });
    }

    // Without memory no colour, and the right one later.
    void expectColourIsRefusedWithoutMemory(const TOneMeasurement& measurement) {
        double expectedXyz[3], expectedLab[3];
        TObserver observerOfTheTest(0);
        ASSERT_EQ(measurement.GetXYZ(&lamp, &observerOfTheTest, expectedXyz), 0);
        ASSERT_EQ(measurement.GetLAB(&lamp, &observerOfTheTest, kWhite, expectedLab), 0);
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            TObserver asked(0);
            double xyz[3] = {7, 7, 7};
            faults.arm();
            const int answer = measurement.GetXYZ(&lamp, &asked, xyz);
            faults.disarm();
            EXPECT_EQ(answer, faults.happened() ? 2 : 0);
            EXPECT_EQ(measurement.GetStatus(), 0);
            EXPECT_EQ(measurement.GetXYZ(&lamp, &asked, xyz), 0);
            EXPECT_THAT(xyz, ElementsAreArray(expectedXyz));
        });
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            TObserver asked(0);
            double lab[3] = {7, 7, 7};
            faults.arm();
            const int answer = measurement.GetLAB(&lamp, &asked, kWhite, lab);
            faults.disarm();
            EXPECT_EQ(answer, faults.happened() ? 2 : 0);
            EXPECT_EQ(measurement.GetLAB(&lamp, &asked, kWhite, lab), 0);
            EXPECT_THAT(lab, ElementsAreArray(expectedLab));
        });
    }

    TSpectrum light = spectrumOf(kD65);
    TSpectrum sample = spectrumOf(ramp());
    TSpectrum samples{"2 400 700 0.5 0.25"};
    TIlluminant lamp{&light, "lamp"};
    TObserver observer{0};
    TMeasGeom geometry{3};
};

using measurementFaults = MeasurementFaults;

TEST_F(measurementFaults, reflectionSpectrum_interpolatesNothingPerCall) {
    const TReflectionSpectrum measurement(&sample, &geometry);
    double xyz[3];
    ASSERT_EQ(measurement.GetXYZ(&lamp, &observer, xyz), 0);
    const std::size_t before = platform().announcedCounts.size();
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(measurement.GetXYZ(&lamp, &observer, xyz), 0);
    EXPECT_EQ(platform().announcedCounts.size(), before);
}

// Construction.

TEST_F(measurementFaults, reflectionSpectrumWithoutMemory_hasStatus3) {
    for (const TSpectrum* spectrum : {&sample, &samples}) {
        expectStatus3WithoutMemory<TReflectionSpectrum>(spectrum, &geometry);
        expectStatus3WithoutMemory<TReflectionSpectrum>(spectrum, &geometry, 4, kCoordinates);
    }
}

TEST_F(measurementFaults, reflectedSpectrumWithoutMemory_hasStatus3) {
    for (const TSpectrum* spectrum : {&sample, &samples}) {
        expectStatus3WithoutMemory<ReflectedLight>(spectrum, &geometry, &lamp);
        expectStatus3WithoutMemory<ReflectedLight>(spectrum, &geometry, &lamp, 4, kCoordinates);
    }
}

TEST_F(measurementFaults, emissionSpectrumWithoutMemory_hasStatus3) {
    for (const TSpectrum* spectrum : {&sample, &samples}) {
        expectStatus3WithoutMemory<TEmissionSpectrum>(spectrum, &geometry);
        expectStatus3WithoutMemory<TEmissionSpectrum>(spectrum, &geometry, 4, kCoordinates);
    }
}

TEST_F(measurementFaults, xyzMeasurementWithoutMemory_hasStatus3) {
    expectStatus3WithoutMemory<TXYZMeasurement>(1.0, 2.0, 3.0, &geometry, &lamp, &observer);
    expectStatus3WithoutMemory<TXYZMeasurement>(1.0, 2.0, 3.0, &geometry, &lamp, &observer, 4, kCoordinates);
}

TEST_F(measurementFaults, emissiveXyzMeasurementWithoutMemory_hasStatus3) {
    expectStatus3WithoutMemory<TEmissiveXYZMeasurement>(1.0, 2.0, 3.0, &geometry, &observer);
    expectStatus3WithoutMemory<TEmissiveXYZMeasurement>(1.0, 2.0, 3.0, &geometry, &observer, 1, kCoordinates);
}

TEST_F(measurementFaults, labMeasurementWithoutMemory_hasStatus3) {
    expectStatus3WithoutMemory<TLABMeasurement>(50.0, 2.0, 3.0, kWhite, &geometry, &lamp, &observer);
    expectStatus3WithoutMemory<TLABMeasurement>(50.0, 2.0, 3.0, kWhite, &geometry, &lamp, &observer, 4,
                                                kCoordinates);
}

TEST_F(measurementFaults, emissiveLabMeasurementWithoutMemory_hasStatus3) {
    expectStatus3WithoutMemory<TEmissiveLABMeasurement>(50.0, 2.0, 3.0, kWhite, &geometry, &observer);
    expectStatus3WithoutMemory<TEmissiveLABMeasurement>(50.0, 2.0, 3.0, kWhite, &geometry, &observer, 4,
                                                        kCoordinates);
}

TEST_F(measurementFaults, basesWithoutMemory_haveStatus3) {
    expectStatus3WithoutMemory<Colourless<TOneMeasurement>>(&geometry);
    expectStatus3WithoutMemory<Colourless<TOneMeasurement>>(&geometry, 4, kCoordinates);
    expectStatus3WithoutMemory<Colourless<TReflectionMeasurement>>(&geometry, 4, kCoordinates);
    expectStatus3WithoutMemory<Colourless<TEmissionMeasurement>>(&geometry, 4, kCoordinates);
}

// A colorimetric measurement that lacks a part refuses every request.
TEST_F(measurementFaults, colorimetricMeasurementsWithoutMemory_answerMinus1) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TXYZMeasurement xyzMeasurement(1, 2, 3, &geometry, &lamp, &observer, 4, kCoordinates);
        const TLABMeasurement labMeasurement(50, 2, 3, kWhite, &geometry, &lamp, &observer, 4, kCoordinates);
        faults.disarm();
        for (const TOneMeasurement* measurement : {static_cast<const TOneMeasurement*>(&xyzMeasurement),
                                                   static_cast<const TOneMeasurement*>(&labMeasurement)}) {
            double xyz[3], lab[3];
            const int expected = measurement->GetStatus() == 0 ? 0 : -1;
            EXPECT_EQ(measurement->GetXYZ(&lamp, &observer, xyz), expected);
            EXPECT_EQ(measurement->GetLAB(&lamp, &observer, kWhite, lab), expected);
        }
    });
}

TEST_F(measurementFaults, spectrumWithoutMemory_givesStatus3AndNoSpectrum) {
    AllocationFaults faults(0, false);
    faults.arm();
    TReflectionSpectrum reflection(&sample, nullptr);
    ReflectedLight reflected(&sample, nullptr, &lamp);
    TEmissionSpectrum emission(&sample, nullptr);
    faults.disarm();
    for (TOneMeasurement* measurement :
         {static_cast<TOneMeasurement*>(&reflection), static_cast<TOneMeasurement*>(&reflected),
          static_cast<TOneMeasurement*>(&emission)}) {
        double xyz[3];
        EXPECT_EQ(measurement->GetStatus(), 3);
        EXPECT_EQ(measurement->GetSpectrum(), nullptr);
        EXPECT_EQ(measurement->GetXYZ(&lamp, &observer, xyz), 2);
    }
}

// Copies.

TEST_F(measurementFaults, copiesWithoutMemory_areWholeOrNull) {
    expectCopyIsWholeOrNull(TReflectionSpectrum(&samples, &geometry, 4, kCoordinates));
    expectCopyIsWholeOrNull(TEmissionSpectrum(&samples, &geometry, 4, kCoordinates));
    expectCopyIsWholeOrNull(TXYZMeasurement(1, 2, 3, &geometry, &lamp, &observer, 4, kCoordinates));
    expectCopyIsWholeOrNull(TEmissiveXYZMeasurement(1, 2, 3, &geometry, &observer, 4, kCoordinates));
    expectCopyIsWholeOrNull(TLABMeasurement(50, 2, 3, kWhite, &geometry, &lamp, &observer, 4, kCoordinates));
    expectCopyIsWholeOrNull(TEmissiveLABMeasurement(50, 2, 3, kWhite, &geometry, &observer, 4, kCoordinates));
}

// Colours.

TEST_F(measurementFaults, colourOfAReflectionSpectrumWithoutMemory_isRefused) {
    expectColourIsRefusedWithoutMemory(TReflectionSpectrum(&sample, &geometry));
}

TEST_F(measurementFaults, colourOfAReflectedSpectrumWithoutMemory_isRefused) {
    expectColourIsRefusedWithoutMemory(ReflectedLight(&sample, &geometry, &lamp));
}

TEST_F(measurementFaults, colourOfAnEmissionSpectrumWithoutMemory_isRefused) {
    expectColourIsRefusedWithoutMemory(TEmissionSpectrum(&sample, &geometry));
}

// Coordinates.

TEST_F(measurementFaults, setCoordWithoutMemory_leavesNoCountWithoutAnArray) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TReflectionSpectrum measurement(&sample, &geometry);
        faults.arm();
        measurement.SetCoord(4, kCoordinates);
        faults.disarm();
        int count = -7;
        const double* const coordinates = measurement.GetCoord(&count);
        EXPECT_EQ(coordinates != nullptr, count == 4);
        EXPECT_EQ(count, faults.happened() ? 0 : 4);
    });
}

TEST_F(measurementFaults, setCoordWithoutMemory_leavesTheStatusAndTheRestOfTheMeasurement) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        TReflectionSpectrum whole(&sample, &geometry, 4, kCoordinates);
        TReflectionSpectrum incomplete(nullptr, &geometry);
        faults.arm();
        const int answers = whole.SetCoord(2, kCoordinates) | incomplete.SetCoord(2, kCoordinates);
        faults.disarm();
        EXPECT_EQ(answers, 0);
        EXPECT_EQ(whole.GetStatus(), 0);
        EXPECT_EQ(incomplete.GetStatus(), 3);
        double xyz[3];
        EXPECT_EQ(whole.GetXYZ(&lamp, &observer, xyz), 0);
    });
}

TEST_F(measurementFaults, setCoordAfterOneWithoutMemory_worksAndSoDoesCopy) {
    TReflectionSpectrum measurement(&sample, &geometry, 2, kCoordinates);
    AllocationFaults faults(0, false);
    faults.arm();
    measurement.SetCoord(4, kCoordinates);
    faults.disarm();
    ASSERT_TRUE(faults.happened());
    int count = -7;
    EXPECT_EQ(measurement.GetCoord(&count), nullptr);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(measurement.SetCoord(4, kCoordinates), 0);
    EXPECT_EQ(measurement.GetStatus(), 0);
    expectCopyIsWholeOrNull(measurement);
}

} // namespace
} // namespace qxcms::tests
