// Measurements when the memory fails, and what they ask of the platform.
#include <memory>
#include <new>

#include <gmock/gmock.h>

#include "measurement/colorimetric_measurements.h"
#include "measurement/spectral_measurements.h"
#include "tests/failing_platform/allocation_faults.h"
#include "tests/failing_platform/substitute_platform.h"
#include "tests/spectral/known_spectra.h"

namespace qxcms::tests {
namespace {

using testing::ElementsAreArray;

class MeasurementFaults : public OnSubstitutePlatform {
protected:
    // Every object that a constructor could not complete can still be asked and destroyed.
    template <class Make>
    void expectNoExceptionFrom(Make make) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            const std::unique_ptr<TOneMeasurement> measurement = make();
            faults.disarm();
            if (measurement == nullptr)
                return; // the test's own allocation failed
            double xyz[3], lab[3];
            const int answer = measurement->GetXYZ(&lamp, &observer, xyz);
            measurement->GetLAB(&lamp, &observer, kWhite, lab);
            EXPECT_TRUE(answer == 0 || faults.happened());
        });
    }

    // A copy is whole or not made.
    static void expectCopyIsWholeOrNull(const TOneMeasurement& measurement) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            const std::unique_ptr<TOneMeasurement> copy(measurement.Copy());
            faults.disarm();
            EXPECT_EQ(copy == nullptr, faults.happened());
            if (copy == nullptr)
                return;
            int count = -7;
            EXPECT_EQ(copy->GetStatus(), measurement.GetStatus());
            EXPECT_NE(copy->GetCoord(&count), nullptr);
            EXPECT_EQ(count, 4);
            ASSERT_NE(copy->GetGeometry(), nullptr);
            EXPECT_EQ(copy->GetGeometry()->GetNumber(), 3u);
        });
    }

    static constexpr double kWhite[3] = {95.0, 100.0, 108.0};
    static constexpr double kCoordinates[4] = {1, 2, 3, 4};

    TSpectrum light = spectrumOf(kD65);
    TSpectrum sample = spectrumOf(ramp());
    TIlluminant lamp{&light, "lamp"};
    TObserver observer{0};
    TMeasGeom geometry{3};
};

using measurementFaults = MeasurementFaults;

template <class Measurement, class... Arguments>
std::unique_ptr<TOneMeasurement> make(Arguments... arguments) {
    return std::unique_ptr<TOneMeasurement>(new (std::nothrow) Measurement(arguments...));
}

TEST_F(measurementFaults, reflectionSpectrum_interpolatesNothingPerCall) {
    const TReflectionSpectrum measurement(&sample, &geometry);
    double xyz[3];
    ASSERT_EQ(measurement.GetXYZ(&lamp, &observer, xyz), 0);
    const std::size_t before = platform().announcedCounts.size();
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(measurement.GetXYZ(&lamp, &observer, xyz), 0);
    EXPECT_EQ(platform().announcedCounts.size(), before);
}

TEST_F(measurementFaults, reflectionSpectrumWithoutMemory_neverThrows) {
    expectNoExceptionFrom([&] { return make<TReflectionSpectrum>(&sample, &geometry, 4, kCoordinates); });
}

TEST_F(measurementFaults, emissionSpectrumWithoutMemory_neverThrows) {
    expectNoExceptionFrom([&] { return make<TEmissionSpectrum>(&sample, &geometry, 4, kCoordinates); });
}

TEST_F(measurementFaults, xyzMeasurementWithoutMemory_neverThrows) {
    expectNoExceptionFrom(
        [&] { return make<TXYZMeasurement>(1.0, 2.0, 3.0, &geometry, &lamp, &observer, 4, kCoordinates); });
    expectNoExceptionFrom(
        [&] { return make<TEmissiveXYZMeasurement>(1.0, 2.0, 3.0, &geometry, &observer, 4, kCoordinates); });
}

TEST_F(measurementFaults, labMeasurementWithoutMemory_neverThrows) {
    expectNoExceptionFrom([&] {
        return make<TLABMeasurement>(50.0, 2.0, 3.0, kWhite, &geometry, &lamp, &observer, 4, kCoordinates);
    });
    expectNoExceptionFrom([&] {
        return make<TEmissiveLABMeasurement>(50.0, 2.0, 3.0, kWhite, &geometry, &observer, 4, kCoordinates);
    });
}

TEST_F(measurementFaults, copiesWithoutMemory_areWholeOrNull) {
    expectCopyIsWholeOrNull(TReflectionSpectrum(&sample, &geometry, 4, kCoordinates));
    expectCopyIsWholeOrNull(TEmissionSpectrum(&sample, &geometry, 4, kCoordinates));
    expectCopyIsWholeOrNull(TXYZMeasurement(1, 2, 3, &geometry, &lamp, &observer, 4, kCoordinates));
    expectCopyIsWholeOrNull(TEmissiveXYZMeasurement(1, 2, 3, &geometry, &observer, 4, kCoordinates));
    expectCopyIsWholeOrNull(TLABMeasurement(50, 2, 3, kWhite, &geometry, &lamp, &observer, 4, kCoordinates));
    expectCopyIsWholeOrNull(TEmissiveLABMeasurement(50, 2, 3, kWhite, &geometry, &observer, 4, kCoordinates));
}

TEST_F(measurementFaults, xyzOfAReflectionSpectrumWithoutMemory_isRightOrRefused) {
    const TReflectionSpectrum measurement(&sample, &geometry);
    double expected[3];
    ASSERT_EQ(measurement.GetXYZ(&lamp, &observer, expected), 0);
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        double xyz[3] = {7, 7, 7};
        faults.arm();
        const int answer = measurement.GetXYZ(&lamp, &observer, xyz);
        faults.disarm();
        if (answer == 0) {
            EXPECT_THAT(xyz, ElementsAreArray(expected));
        } else {
            EXPECT_TRUE(faults.happened());
        }
    });
}

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

// Whatever part there is no memory for, the measurement says so.
TEST_F(measurementFaults, spectralMeasurementsWithoutMemory_haveStatus3) {
    const double wavelengths[] = {400.0, 700.0}, values[] = {0.5, 0.25};
    const TSpectrum samples(wavelengths, 2, values);
    for (const TSpectrum* spectrum : {static_cast<const TSpectrum*>(&sample), &samples}) {
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            TReflectionSpectrum measurement(spectrum, &geometry, 4, kCoordinates);
            faults.disarm();
            EXPECT_EQ(measurement.GetStatus(), faults.happened() ? 3 : 0);
        });
        forEveryFailingAllocation([&](AllocationFaults& faults) {
            faults.arm();
            TEmissionSpectrum measurement(spectrum, &geometry, 4, kCoordinates);
            faults.disarm();
            EXPECT_EQ(measurement.GetStatus(), faults.happened() ? 3 : 0);
        });
    }
}

TEST_F(measurementFaults, spectrumWithoutMemory_givesStatus3AndNoSpectrum) {
    AllocationFaults faults(0, false);
    faults.arm();
    TReflectionSpectrum reflection(&sample, nullptr);
    TEmissionSpectrum emission(&sample, nullptr);
    faults.disarm();
    for (TOneMeasurement* measurement :
         {static_cast<TOneMeasurement*>(&reflection), static_cast<TOneMeasurement*>(&emission)}) {
        EXPECT_EQ(measurement->GetStatus(), 3);
        EXPECT_EQ(measurement->GetSpectrum(), nullptr);
    }
}

TEST_F(measurementFaults, colorimetricMeasurementsWithoutMemory_haveStatus3) {
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TXYZMeasurement measurement(1, 2, 3, &geometry, &lamp, &observer, 4, kCoordinates);
        faults.disarm();
        EXPECT_EQ(measurement.GetStatus(), faults.happened() ? 3 : 0);
    });
    forEveryFailingAllocation([&](AllocationFaults& faults) {
        faults.arm();
        const TLABMeasurement measurement(50, 2, 3, kWhite, &geometry, &lamp, &observer, 4, kCoordinates);
        faults.disarm();
        EXPECT_EQ(measurement.GetStatus(), faults.happened() ? 3 : 0);
    });
}

} // namespace
} // namespace qxcms::tests
