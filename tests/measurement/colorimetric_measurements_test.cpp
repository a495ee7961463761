// Measurements that hold tristimulus or CIELAB values.
#include "measurement/colorimetric_measurements.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <ostream>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "colorspace/tlabspace.h"
#include "tests/spectral/known_spectra.h"
#include "tests/support/reports.h"

namespace {

using qxcms::tests::kD65;
using qxcms::tests::kIlluminantA;
using qxcms::tests::ReportCollector;
using qxcms::tests::spectrumOf;
using qxcms::tests::Standard;
using Triple = std::array<double, 3>;

const Triple kWhite = {96.422, 100.0, 82.521};
const Triple kOtherWhite = {94.811, 100.0, 107.304};
const Triple kXyz = {19.41, 28.41, 11.5766};
const Triple kLab = {50.0, 20.0, -30.0};
const Triple kUntouched = {-9.0, -9.0, -9.0};

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

// An illuminant together with the spectrum it is made of.
struct Lamp {
    Lamp(const Standard& values, const char* name)
        : spectrum(spectrumOf(values)), illuminant(&spectrum, name) {}
    TSpectrum spectrum;
    TIlluminant illuminant;
};

// What requests are made with: the stored illuminant, its twin, another one, and both observers.
struct Conditions {
    Lamp lamp{kD65, "D65"};
    Lamp twin{kD65, "D65"};
    Lamp other{kIlluminantA, "CIE Illuminant A"};
    TObserver twoDegree{0};
    TObserver tenDegree{1};
    TMeasGeom geometry{4};

    TIlluminant* stored() { return &lamp.illuminant; }

    TXYZMeasurement xyz() {
        return TXYZMeasurement(kXyz[0], kXyz[1], kXyz[2], &geometry, stored(), &twoDegree);
    }
    TEmissiveXYZMeasurement emissiveXyz() const {
        return TEmissiveXYZMeasurement(kXyz[0], kXyz[1], kXyz[2], &geometry, &twoDegree);
    }
    TLABMeasurement lab(const Triple& white = kWhite) {
        return TLABMeasurement(kLab[0], kLab[1], kLab[2], white.data(), &geometry, stored(), &twoDegree);
    }
    TEmissiveLABMeasurement emissiveLab(const Triple& white = kWhite) const {
        return TEmissiveLABMeasurement(kLab[0], kLab[1], kLab[2], white.data(), &geometry, &twoDegree);
    }
};

// A result code and the triple that came with it.
struct Answer {
    int code;
    Triple triple;
    bool operator==(const Answer& expected) const {
        return code == expected.code && triple == expected.triple;
    }
};

void PrintTo(const Answer& answer, std::ostream* stream) {
    *stream << answer.code << " with " << answer.triple[0] << ' ' << answer.triple[1] << ' '
            << answer.triple[2];
}

Answer askXyz(const TOneMeasurement& measurement, TIlluminant* illuminant, TObserver* observer) {
    Triple xyz = kUntouched;
    const int code = measurement.GetXYZ(illuminant, observer, xyz.data());
    return {code, xyz};
}

Answer askLab(const TOneMeasurement& measurement, TIlluminant* illuminant, TObserver* observer,
              const Triple& white) {
    Triple lab = kUntouched;
    const int code = measurement.GetLAB(illuminant, observer, white.data(), lab.data());
    return {code, lab};
}

Answer askLabWithoutWhite(const TOneMeasurement& measurement, TIlluminant* illuminant, TObserver* observer) {
    Triple lab = kUntouched;
    const int code = measurement.GetLAB(illuminant, observer, nullptr, lab.data());
    return {code, lab};
}

Triple xyzOfLab(const Triple& white, const Triple& lab) {
    Triple xyz;
    TLabSpace(white.data()).LabToXYZ(lab.data(), xyz.data());
    return xyz;
}

Triple labOfXyz(const Triple& white, const Triple& xyz) {
    Triple lab;
    TLabSpace(white.data()).XYZToLab(xyz.data(), lab.data());
    return lab;
}

Triple withComponent(Triple triple, std::size_t index, double value) {
    triple[index] = value;
    return triple;
}

std::vector<double> coordinatesOf(const TOneMeasurement& measurement) {
    int count = 0;
    const double* coordinates = measurement.GetCoord(&count);
    return std::vector<double>(coordinates, coordinates + count);
}

// What all four classes answer about spectra and densities.
void expectNoSpectrum(TOneMeasurement& measurement) {
    double start = 9.0;
    double end = 9.0;
    int count = 9;
    EXPECT_EQ(measurement.GetUniformSpectrum(&start, &end, &count), nullptr);
    EXPECT_EQ(measurement.GetUniformSpectrum(nullptr, nullptr, nullptr), nullptr);
    double wavelengths[1] = {9.0};
    double values[1] = {9.0};
    bool flag = true;
    EXPECT_EQ(measurement.GetSpecData(wavelengths, values, &count, &flag), 0);
    EXPECT_EQ(wavelengths[0], 9.0);
    EXPECT_EQ(values[0], 9.0);
    EXPECT_TRUE(flag);
    EXPECT_EQ(measurement.GetSpectrum(), nullptr);
    for (const int standard : {0, 1, 2, 3}) {
        double densities[4] = {9.0, 9.0, 9.0, 9.0};
        int filter = 9;
        EXPECT_EQ(measurement.GetDensity(standard, densities, &filter), 0);
        for (const double density : densities)
            EXPECT_EQ(density, 0.0);
        EXPECT_EQ(filter, 0);
    }
}

template <class Measurement>
std::unique_ptr<Measurement> copyOf(const Measurement& measurement) {
    std::unique_ptr<TOneMeasurement> copy(measurement.Copy());
    EXPECT_NE(copy, nullptr);
    const TOneMeasurement& made = *copy;
    EXPECT_EQ(typeid(made), typeid(Measurement));
    return std::unique_ptr<Measurement>(dynamic_cast<Measurement*>(copy.release()));
}

// What holds for all four.

TEST(colorimetricMeasurements, triples_areWrittenAlone) {
    Conditions conditions;
    const TXYZMeasurement xyzMeasurement = conditions.xyz();
    const TEmissiveXYZMeasurement emissiveXyz = conditions.emissiveXyz();
    const TLABMeasurement labMeasurement = conditions.lab();
    const TEmissiveLABMeasurement emissiveLab = conditions.emissiveLab();
    const TOneMeasurement* const all[4] = {&xyzMeasurement, &emissiveXyz, &labMeasurement, &emissiveLab};
    for (const TOneMeasurement* measurement : all) {
        double triple[5] = {7.0, 7.0, 7.0, 7.0, 7.0};
        EXPECT_EQ(measurement->GetXYZ(nullptr, nullptr, triple + 1), 0);
        EXPECT_EQ(measurement->GetLAB(nullptr, nullptr, kWhite.data(), triple + 1), 0);
        EXPECT_EQ(triple[0], 7.0);
        EXPECT_NE(triple[3], 7.0);
        EXPECT_EQ(triple[4], 7.0);
    }
}

// Reflective tristimulus values.

TEST(xyzMeasurement, constructor_copiesGeometryAndObserverAndKeepsTheIlluminant) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(measurement.GetIlluminant(), conditions.stored());
    ASSERT_NE(measurement.GetObserver(), nullptr);
    EXPECT_NE(measurement.GetObserver(), &conditions.twoDegree);
    EXPECT_EQ(measurement.GetObserver()->GetNumber(), 0U);
    EXPECT_NE(measurement.GetGeometry(), &conditions.geometry);
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 4U);
    EXPECT_TRUE(coordinatesOf(measurement).empty());
}

TEST(xyzMeasurement, constructor_takesCoordinates) {
    Conditions conditions;
    const double coordinates[4] = {100.0, 0.0, 50.0, 25.0};
    const TXYZMeasurement measurement(1.0, 2.0, 3.0, &conditions.geometry, conditions.stored(),
                                      &conditions.tenDegree, 4, coordinates);
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{100.0, 0.0, 50.0, 25.0}));
    EXPECT_EQ(measurement.GetObserver()->GetNumber(), 1U);
    EXPECT_EQ(askXyz(measurement, nullptr, nullptr), (Answer{0, {1.0, 2.0, 3.0}}));
}

TEST(xyzMeasurement, constructor_withoutIlluminantOrObserverHasStatus3) {
    Conditions conditions;
    const double coordinates[1] = {1.0};
    const TMeasGeom* geometry = &conditions.geometry;
    const TObserver* observer = &conditions.twoDegree;
    EXPECT_EQ(TXYZMeasurement(1.0, 2.0, 3.0, geometry, nullptr, observer).GetStatus(), 3);
    EXPECT_EQ(TXYZMeasurement(1.0, 2.0, 3.0, geometry, conditions.stored(), nullptr).GetStatus(), 3);
    EXPECT_EQ(TXYZMeasurement(1.0, 2.0, 3.0, geometry, nullptr, nullptr).GetStatus(), 3);
    EXPECT_EQ(TXYZMeasurement(1.0, 2.0, 3.0, geometry, nullptr, observer, 1, coordinates).GetStatus(), 3);
    EXPECT_EQ(
        TXYZMeasurement(1.0, 2.0, 3.0, geometry, conditions.stored(), nullptr, 1, coordinates).GetStatus(),
        3);
}

TEST(xyzMeasurement, constructor_withoutIlluminantOrObserverStoresNeither) {
    Conditions conditions;
    const TXYZMeasurement noObserver(1.0, 2.0, 3.0, nullptr, conditions.stored(), nullptr);
    const TXYZMeasurement noIlluminant(1.0, 2.0, 3.0, nullptr, nullptr, &conditions.twoDegree);
    for (const TXYZMeasurement* measurement : {&noObserver, &noIlluminant}) {
        EXPECT_EQ(measurement->GetStatus(), 3);
        EXPECT_EQ(measurement->GetIlluminant(), nullptr);
        EXPECT_EQ(measurement->GetObserver(), nullptr);
        EXPECT_EQ(askXyz(*measurement, nullptr, nullptr), (Answer{-1, {0.0, 0.0, 0.0}}));
    }
}

TEST(xyzMeasurement, constructor_takesANullGeometry) {
    Conditions conditions;
    const TXYZMeasurement measurement(1.0, 2.0, 3.0, nullptr, conditions.stored(), &conditions.twoDegree);
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(measurement.GetGeometry(), nullptr);
}

TEST(xyzMeasurement, constructor_doesNotReport) {
    const ReportCollector reports;
    const TXYZMeasurement measurement(1.0, 2.0, 3.0, nullptr, nullptr, nullptr);
    EXPECT_EQ(measurement.GetStatus(), 3);
    EXPECT_TRUE(reports.errors.empty());
    EXPECT_TRUE(reports.warnings.empty());
}

TEST(xyzMeasurement, xyz_isTheStoredOneUnderTheStoredConditions) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    EXPECT_EQ(askXyz(measurement, conditions.stored(), &conditions.twoDegree), (Answer{0, kXyz}));
}

TEST(xyzMeasurement, xyz_withNullMeansTheStoredConditions) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    EXPECT_EQ(askXyz(measurement, nullptr, &conditions.twoDegree), (Answer{0, kXyz}));
    EXPECT_EQ(askXyz(measurement, conditions.stored(), nullptr), (Answer{0, kXyz}));
    EXPECT_EQ(askXyz(measurement, nullptr, nullptr), (Answer{0, kXyz}));
}

TEST(xyzMeasurement, xyz_underATwinOfTheIlluminantAnswersMinusOneWithTheStoredValues) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    ASSERT_TRUE(conditions.twin.illuminant == conditions.lamp.illuminant);
    EXPECT_EQ(askXyz(measurement, &conditions.twin.illuminant, &conditions.twoDegree), (Answer{-1, kXyz}));
    EXPECT_EQ(askXyz(measurement, &conditions.twin.illuminant, nullptr), (Answer{-1, kXyz}));
}

TEST(xyzMeasurement, xyz_underAnotherIlluminantAnswersMinusOneWithTheStoredValues) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    EXPECT_EQ(askXyz(measurement, &conditions.other.illuminant, nullptr), (Answer{-1, kXyz}));
}

TEST(xyzMeasurement, xyz_forTheOtherObserverAnswersMinusOneWithTheStoredValues) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    EXPECT_EQ(askXyz(measurement, conditions.stored(), &conditions.tenDegree), (Answer{-1, kXyz}));
    EXPECT_EQ(askXyz(measurement, nullptr, &conditions.tenDegree), (Answer{-1, kXyz}));
    EXPECT_EQ(askXyz(measurement, &conditions.other.illuminant, &conditions.tenDegree), (Answer{-1, kXyz}));
}

TEST(xyzMeasurement, xyz_takesObserversByNumber) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    TObserver namesake("2 degree");
    EXPECT_EQ(askXyz(measurement, nullptr, &namesake), (Answer{0, kXyz}));
    // An unknown observer has the number 0.
    TObserver unknown(17);
    EXPECT_EQ(askXyz(measurement, nullptr, &unknown), (Answer{0, kXyz}));
}

TEST(xyzMeasurement, xyz_isHandedOutWithoutClamping) {
    Conditions conditions;
    const TXYZMeasurement measurement(-1.5, 0.0, 1e300, nullptr, conditions.stored(), &conditions.twoDegree);
    EXPECT_EQ(askXyz(measurement, nullptr, nullptr), (Answer{0, {-1.5, 0.0, 1e300}}));
}

TEST(xyzMeasurement, xyz_intoNullAnswers3) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    EXPECT_EQ(measurement.GetXYZ(conditions.stored(), &conditions.twoDegree, nullptr), 3);
    EXPECT_EQ(measurement.GetXYZ(nullptr, nullptr, nullptr), 3);
}

TEST(xyzMeasurement, xyz_ofAnIncompleteOneAnswersMinusOne) {
    Conditions conditions;
    const TXYZMeasurement withoutIlluminant(1.0, 2.0, 3.0, nullptr, nullptr, &conditions.twoDegree);
    const TXYZMeasurement withoutObserver(1.0, 2.0, 3.0, nullptr, conditions.stored(), nullptr);
    for (const TXYZMeasurement* measurement : {&withoutIlluminant, &withoutObserver}) {
        EXPECT_EQ(askXyz(*measurement, nullptr, nullptr).code, -1);
        EXPECT_EQ(askXyz(*measurement, conditions.stored(), &conditions.twoDegree).code, -1);
    }
}

TEST(xyzMeasurement, lab_isThatOfTheStoredXyzOnTheGivenWhite) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    for (const Triple& white : {kWhite, kOtherWhite}) {
        EXPECT_EQ(askLab(measurement, conditions.stored(), &conditions.twoDegree, white),
                  (Answer{0, labOfXyz(white, kXyz)}));
        EXPECT_EQ(askLab(measurement, nullptr, nullptr, white), (Answer{0, labOfXyz(white, kXyz)}));
    }
}

TEST(xyzMeasurement, lab_underOtherConditionsAnswersMinusOne) {
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    EXPECT_EQ(askLab(measurement, &conditions.twin.illuminant, nullptr, kWhite), (Answer{-1, kUntouched}));
    EXPECT_EQ(askLab(measurement, nullptr, &conditions.tenDegree, kWhite), (Answer{-1, kUntouched}));
}

TEST(xyzMeasurement, lab_onANullOrBadWhiteAnswers3) {
    const ReportCollector reports;
    Conditions conditions;
    const TXYZMeasurement measurement = conditions.xyz();
    EXPECT_EQ(askLabWithoutWhite(measurement, nullptr, nullptr), (Answer{3, kUntouched}));
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, {-1.0, 100.0, 100.0}), (Answer{3, kUntouched}));
}

TEST(xyzMeasurement, spectrum_isNoneAndDensitiesAreZeros) {
    Conditions conditions;
    TXYZMeasurement measurement = conditions.xyz();
    expectNoSpectrum(measurement);
}

TEST(xyzMeasurement, copy_isOfTheSameClassAndIndependent) {
    Conditions conditions;
    const double coordinates[2] = {1.0, 2.0};
    auto original =
        std::make_unique<TXYZMeasurement>(kXyz[0], kXyz[1], kXyz[2], &conditions.geometry,
                                          conditions.stored(), &conditions.tenDegree, 2, coordinates);
    const std::unique_ptr<TXYZMeasurement> copy = copyOf(*original);
    EXPECT_NE(copy->GetObserver(), original->GetObserver());
    EXPECT_NE(copy->GetGeometry(), original->GetGeometry());
    EXPECT_NE(copy->GetCoord(nullptr), original->GetCoord(nullptr));
    original.reset();
    EXPECT_EQ(copy->GetStatus(), 0);
    EXPECT_EQ(copy->GetIlluminant(), conditions.stored());
    EXPECT_EQ(copy->GetObserver()->GetNumber(), 1U);
    EXPECT_EQ(copy->GetGeometry()->GetNumber(), 4U);
    EXPECT_EQ(coordinatesOf(*copy), (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(askXyz(*copy, conditions.stored(), &conditions.tenDegree), (Answer{0, kXyz}));
    EXPECT_EQ(askXyz(*copy, conditions.stored(), &conditions.twoDegree), (Answer{-1, kXyz}));
    EXPECT_EQ(askXyz(*copy, &conditions.twin.illuminant, nullptr), (Answer{-1, kXyz}));
}

TEST(xyzMeasurement, copy_ofAnIncompleteOneIsIncomplete) {
    const TXYZMeasurement measurement(1.0, 2.0, 3.0, nullptr, nullptr, nullptr);
    const std::unique_ptr<TXYZMeasurement> copy = copyOf(measurement);
    EXPECT_EQ(copy->GetStatus(), 3);
    EXPECT_EQ(copy->GetGeometry(), nullptr);
    EXPECT_EQ(askXyz(*copy, nullptr, nullptr).code, -1);
}

// Emissive tristimulus values.

TEST(emissiveXyzMeasurement, constructor_copiesGeometryAndObserver) {
    Conditions conditions;
    const TEmissiveXYZMeasurement measurement = conditions.emissiveXyz();
    EXPECT_EQ(measurement.GetStatus(), 0);
    ASSERT_NE(measurement.GetObserver(), nullptr);
    EXPECT_NE(measurement.GetObserver(), &conditions.twoDegree);
    EXPECT_EQ(measurement.GetObserver()->GetNumber(), 0U);
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 4U);
    const double coordinates[3] = {255.0, 128.0, 0.0};
    const TEmissiveXYZMeasurement withCoordinates(1.0, 2.0, 3.0, nullptr, &conditions.tenDegree, 3,
                                                  coordinates);
    EXPECT_EQ(withCoordinates.GetStatus(), 0);
    EXPECT_EQ(withCoordinates.GetGeometry(), nullptr);
    EXPECT_EQ(coordinatesOf(withCoordinates), (std::vector<double>{255.0, 128.0, 0.0}));
}

TEST(emissiveXyzMeasurement, constructor_withoutObserverHasStatus3) {
    Conditions conditions;
    const double coordinates[1] = {1.0};
    EXPECT_EQ(TEmissiveXYZMeasurement(1.0, 2.0, 3.0, &conditions.geometry, nullptr).GetStatus(), 3);
    EXPECT_EQ(TEmissiveXYZMeasurement(1.0, 2.0, 3.0, nullptr, nullptr, 1, coordinates).GetStatus(), 3);
}

TEST(emissiveXyzMeasurement, xyz_isTheStoredOneWhateverTheIlluminant) {
    Conditions conditions;
    const TEmissiveXYZMeasurement measurement = conditions.emissiveXyz();
    EXPECT_EQ(askXyz(measurement, nullptr, nullptr), (Answer{0, kXyz}));
    EXPECT_EQ(askXyz(measurement, conditions.stored(), &conditions.twoDegree), (Answer{0, kXyz}));
    EXPECT_EQ(askXyz(measurement, &conditions.other.illuminant, nullptr), (Answer{0, kXyz}));
}

TEST(emissiveXyzMeasurement, xyz_forTheOtherObserverAnswersMinusOneWithTheStoredValues) {
    Conditions conditions;
    const TEmissiveXYZMeasurement measurement = conditions.emissiveXyz();
    EXPECT_EQ(askXyz(measurement, nullptr, &conditions.tenDegree), (Answer{-1, kXyz}));
}

TEST(emissiveXyzMeasurement, xyz_takesObserversByNumber) {
    Conditions conditions;
    const TEmissiveXYZMeasurement measurement(1.0, 2.0, 3.0, nullptr, &conditions.tenDegree);
    TObserver namesake("10 degree");
    EXPECT_EQ(askXyz(measurement, nullptr, &namesake), (Answer{0, {1.0, 2.0, 3.0}}));
}

TEST(emissiveXyzMeasurement, xyz_intoNullAnswers3) {
    Conditions conditions;
    const TEmissiveXYZMeasurement measurement = conditions.emissiveXyz();
    EXPECT_EQ(measurement.GetXYZ(nullptr, nullptr, nullptr), 3);
}

TEST(emissiveXyzMeasurement, xyz_ofAnIncompleteOneAnswersMinusOne) {
    Conditions conditions;
    const TEmissiveXYZMeasurement measurement(1.0, 2.0, 3.0, nullptr, nullptr);
    EXPECT_EQ(measurement.GetObserver(), nullptr);
    EXPECT_EQ(askXyz(measurement, nullptr, nullptr), (Answer{-1, {0.0, 0.0, 0.0}}));
    EXPECT_EQ(askXyz(measurement, conditions.stored(), &conditions.twoDegree).code, -1);
}

TEST(emissiveXyzMeasurement, lab_isThatOfTheStoredXyzOnTheGivenWhite) {
    const ReportCollector reports;
    Conditions conditions;
    const TEmissiveXYZMeasurement measurement = conditions.emissiveXyz();
    EXPECT_EQ(askLab(measurement, &conditions.other.illuminant, nullptr, kOtherWhite),
              (Answer{0, labOfXyz(kOtherWhite, kXyz)}));
    EXPECT_EQ(askLab(measurement, nullptr, &conditions.tenDegree, kOtherWhite), (Answer{-1, kUntouched}));
    EXPECT_EQ(askLabWithoutWhite(measurement, nullptr, nullptr), (Answer{3, kUntouched}));
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, {90.0, 100.0, -1.0}), (Answer{3, kUntouched}));
}

TEST(emissiveXyzMeasurement, spectrum_isNoneAndDensitiesAreZeros) {
    Conditions conditions;
    TEmissiveXYZMeasurement measurement = conditions.emissiveXyz();
    expectNoSpectrum(measurement);
}

TEST(emissiveXyzMeasurement, copy_isOfTheSameClassAndIndependent) {
    Conditions conditions;
    const double coordinates[1] = {6.0};
    auto original = std::make_unique<TEmissiveXYZMeasurement>(kXyz[0], kXyz[1], kXyz[2], &conditions.geometry,
                                                              &conditions.tenDegree, 1, coordinates);
    const std::unique_ptr<TEmissiveXYZMeasurement> copy = copyOf(*original);
    EXPECT_NE(copy->GetObserver(), original->GetObserver());
    original.reset();
    EXPECT_EQ(copy->GetStatus(), 0);
    EXPECT_EQ(copy->GetGeometry()->GetNumber(), 4U);
    EXPECT_EQ(coordinatesOf(*copy), (std::vector<double>{6.0}));
    EXPECT_EQ(askXyz(*copy, nullptr, &conditions.tenDegree), (Answer{0, kXyz}));
    EXPECT_EQ(askXyz(*copy, nullptr, &conditions.twoDegree), (Answer{-1, kXyz}));
}

TEST(emissiveXyzMeasurement, copy_ofAnIncompleteOneIsIncomplete) {
    const TEmissiveXYZMeasurement measurement(1.0, 2.0, 3.0, nullptr, nullptr);
    EXPECT_EQ(copyOf(measurement)->GetStatus(), 3);
}

// Reflective CIELAB values.

TEST(labMeasurement, constructor_copiesGeometryObserverAndWhiteAndKeepsTheIlluminant) {
    Conditions conditions;
    Triple white = kWhite;
    const TLABMeasurement measurement = conditions.lab(white);
    white = {1.0, 2.0, 3.0};
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(measurement.GetIlluminant(), conditions.stored());
    ASSERT_NE(measurement.GetObserver(), nullptr);
    EXPECT_NE(measurement.GetObserver(), &conditions.twoDegree);
    EXPECT_EQ(measurement.GetObserver()->GetNumber(), 0U);
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 4U);
    ASSERT_NE(measurement.GetWhite(), nullptr);
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(measurement.GetWhite()[i], kWhite[i]);
}

TEST(labMeasurement, constructor_takesCoordinates) {
    Conditions conditions;
    const double coordinates[2] = {1.0, 2.0};
    const TLABMeasurement measurement(50.0, 1.0, 2.0, kWhite.data(), nullptr, conditions.stored(),
                                      &conditions.tenDegree, 2, coordinates);
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(measurement.GetGeometry(), nullptr);
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(measurement.GetWhite()[2], kWhite[2]);
}

TEST(labMeasurement, constructor_withoutAWhiteHasStatus3) {
    Conditions conditions;
    const TLABMeasurement measurement(50.0, 1.0, 2.0, nullptr, &conditions.geometry, conditions.stored(),
                                      &conditions.twoDegree);
    EXPECT_EQ(measurement.GetStatus(), 3);
}

TEST(labMeasurement, constructor_withoutIlluminantOrObserverHasStatus3) {
    Conditions conditions;
    const double coordinates[1] = {1.0};
    const double* white = kWhite.data();
    const TObserver* observer = &conditions.twoDegree;
    EXPECT_EQ(TLABMeasurement(50.0, 1.0, 2.0, white, nullptr, nullptr, observer).GetStatus(), 3);
    EXPECT_EQ(TLABMeasurement(50.0, 1.0, 2.0, white, nullptr, conditions.stored(), nullptr).GetStatus(), 3);
    EXPECT_EQ(TLABMeasurement(50.0, 1.0, 2.0, white, nullptr, nullptr, observer, 1, coordinates).GetStatus(),
              3);
    EXPECT_EQ(TLABMeasurement(50.0, 1.0, 2.0, nullptr, nullptr, conditions.stored(), observer, 1, coordinates)
                  .GetStatus(),
              3);
}

TEST(labMeasurement, constructor_withoutAPartStoresNothing) {
    Conditions conditions;
    const double* white = kWhite.data();
    const TObserver* observer = &conditions.twoDegree;
    const TLABMeasurement noObserver(50.0, 1.0, 2.0, white, nullptr, conditions.stored(), nullptr);
    const TLABMeasurement noWhite(50.0, 1.0, 2.0, nullptr, nullptr, conditions.stored(), observer);
    const TLABMeasurement noIlluminant(50.0, 1.0, 2.0, white, nullptr, nullptr, observer);
    for (const TLABMeasurement* measurement : {&noObserver, &noWhite, &noIlluminant}) {
        EXPECT_EQ(measurement->GetStatus(), 3);
        EXPECT_EQ(measurement->GetIlluminant(), nullptr);
        EXPECT_EQ(measurement->GetObserver(), nullptr);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(measurement->GetWhite()[i], 0.0);
        EXPECT_EQ(askLabWithoutWhite(*measurement, nullptr, nullptr), (Answer{-1, {0.0, 0.0, 0.0}}));
    }
}

TEST(labMeasurement, constructor_doesNotLookIntoTheWhite) {
    const ReportCollector reports;
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab({-1.0, 100.0, 82.0});
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_EQ(measurement.GetWhite()[0], -1.0);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(labMeasurement, xyz_isThatOfTheStoredLabOnTheStoredWhite) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    const Triple expected = xyzOfLab(kWhite, kLab);
    // Independently calculated: 21.7748032458 18.4186518512 30.6682268055.
    EXPECT_NEAR(expected[0], 21.7748032458, 1e-9);
    EXPECT_EQ(askXyz(measurement, conditions.stored(), &conditions.twoDegree), (Answer{0, expected}));
    EXPECT_EQ(askXyz(measurement, nullptr, nullptr), (Answer{0, expected}));
    const Triple xyz = askXyz(measurement, nullptr, nullptr).triple;
    EXPECT_NEAR(xyz[1], 18.4186518512, 1e-9);
    EXPECT_NEAR(xyz[2], 30.6682268055, 1e-9);
}

TEST(labMeasurement, xyz_underOtherConditionsAnswersMinusOneAndStaysUntouched) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    EXPECT_EQ(askXyz(measurement, &conditions.twin.illuminant, &conditions.twoDegree),
              (Answer{-1, kUntouched}));
    EXPECT_EQ(askXyz(measurement, &conditions.other.illuminant, nullptr), (Answer{-1, kUntouched}));
    EXPECT_EQ(askXyz(measurement, conditions.stored(), &conditions.tenDegree), (Answer{-1, kUntouched}));
}

TEST(labMeasurement, xyz_onAStoredWhiteThatCielabRefusesAnswers3) {
    const ReportCollector reports;
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab({96.0, -1.0, 82.0});
    EXPECT_EQ(askXyz(measurement, nullptr, nullptr), (Answer{3, kUntouched}));
    EXPECT_EQ(askXyz(measurement, &conditions.twin.illuminant, nullptr), (Answer{-1, kUntouched}));
}

TEST(labMeasurement, xyz_intoNullAnswers3) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    EXPECT_EQ(measurement.GetXYZ(nullptr, nullptr, nullptr), 3);
}

TEST(labMeasurement, incompleteOne_answersMinusOne) {
    Conditions conditions;
    const TLABMeasurement withoutWhite(50.0, 1.0, 2.0, nullptr, nullptr, conditions.stored(),
                                       &conditions.twoDegree);
    const TLABMeasurement withoutIlluminant(50.0, 1.0, 2.0, kWhite.data(), nullptr, nullptr,
                                            &conditions.twoDegree);
    const TLABMeasurement withoutObserver(50.0, 1.0, 2.0, kWhite.data(), nullptr, conditions.stored(),
                                          nullptr);
    for (const TLABMeasurement* measurement : {&withoutWhite, &withoutIlluminant, &withoutObserver}) {
        EXPECT_EQ(askXyz(*measurement, nullptr, nullptr).code, -1);
        EXPECT_EQ(askXyz(*measurement, conditions.stored(), &conditions.twoDegree).code, -1);
        EXPECT_EQ(askLab(*measurement, nullptr, nullptr, kWhite).code, -1);
        EXPECT_EQ(askLabWithoutWhite(*measurement, nullptr, nullptr).code, -1);
    }
}

TEST(labMeasurement, lab_withoutAWhiteIsTheStoredOne) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    EXPECT_EQ(askLabWithoutWhite(measurement, nullptr, nullptr), (Answer{0, kLab}));
    EXPECT_EQ(askLabWithoutWhite(measurement, conditions.stored(), &conditions.twoDegree), (Answer{0, kLab}));
}

TEST(labMeasurement, lab_onTheStoredWhiteIsTheStoredOne) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    EXPECT_EQ(askLab(measurement, conditions.stored(), &conditions.twoDegree, kWhite), (Answer{0, kLab}));
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, kWhite), (Answer{0, kLab}));
}

TEST(labMeasurement, lab_underOtherConditionsAnswersMinusOneWithTheStoredValues) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    for (const Triple& white : {kWhite, kOtherWhite}) {
        EXPECT_EQ(askLab(measurement, &conditions.twin.illuminant, nullptr, white), (Answer{-1, kLab}));
        EXPECT_EQ(askLab(measurement, &conditions.other.illuminant, nullptr, white), (Answer{-1, kLab}));
        EXPECT_EQ(askLab(measurement, nullptr, &conditions.tenDegree, white), (Answer{-1, kLab}));
    }
    EXPECT_EQ(askLabWithoutWhite(measurement, nullptr, &conditions.tenDegree), (Answer{-1, kLab}));
}

TEST(labMeasurement, lab_onAWhiteATenthAwayIsTheStoredOne) {
    Conditions conditions;
    const Triple stored = {95.0, 100.0, 108.0};
    const TLABMeasurement measurement = conditions.lab(stored);
    for (std::size_t i = 0; i < 3; ++i) {
        for (const double step : {0.1, -0.1}) {
            const Triple white = withComponent(stored, i, stored[i] + step);
            // These sums and differences come out a little below a tenth.
            ASSERT_LT(std::fabs(white[i] - stored[i]), 0.1);
            EXPECT_EQ(askLab(measurement, nullptr, nullptr, white), (Answer{0, kLab})) << i << ' ' << step;
        }
    }
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, {95.1, 99.9, 108.1}), (Answer{0, kLab}));
}

TEST(labMeasurement, lab_onAWhiteOfExactlyTheToleranceIsTheStoredOne) {
    Conditions conditions;
    const Triple stored = {0.0, 100.0, 82.0};
    const TLABMeasurement measurement = conditions.lab(stored);
    const Triple at = {0.1, 100.0, 82.0};
    ASSERT_EQ(std::fabs(at[0] - stored[0]), 0.1);
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, at), (Answer{0, kLab}));
    const Triple beyond = {std::nextafter(0.1, 1.0), 100.0, 82.0};
    const Answer recomputed = askLab(measurement, nullptr, nullptr, beyond);
    EXPECT_EQ(recomputed, (Answer{0, labOfXyz(beyond, xyzOfLab(stored, kLab))}));
    EXPECT_NE(recomputed.triple, kLab);
}

TEST(labMeasurement, lab_toleranceIsComparedWithoutAnyRounding) {
    Conditions conditions;
    // 1.1 - 1 is a little more than a tenth in binary.
    const Triple stored = {1.0, 1.0, 1.0};
    const Triple white = {1.1, 1.0, 1.0};
    ASSERT_GT(std::fabs(white[0] - stored[0]), 0.1);
    const TLABMeasurement measurement = conditions.lab(stored);
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, white),
              (Answer{0, labOfXyz(white, xyzOfLab(stored, kLab))}));
}

TEST(labMeasurement, lab_onAWhiteElevenHundredthsAwayIsRecomputed) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    for (std::size_t i = 0; i < 3; ++i) {
        for (const double step : {0.11, -0.11}) {
            const Triple white = withComponent(kWhite, i, kWhite[i] + step);
            const Answer answer = askLab(measurement, nullptr, nullptr, white);
            EXPECT_EQ(answer, (Answer{0, labOfXyz(white, xyzOfLab(kWhite, kLab))})) << i << ' ' << step;
            EXPECT_NE(answer.triple, kLab) << i << ' ' << step;
        }
    }
    // Independently calculated for X of the white.
    const Answer answer = askLab(measurement, nullptr, nullptr, {96.532, 100.0, 82.521});
    EXPECT_NEAR(answer.triple[0], 50.0, 1e-9);
    EXPECT_NEAR(answer.triple[1], 19.8843014630, 1e-9);
    EXPECT_NEAR(answer.triple[2], -30.0, 1e-9);
}

TEST(labMeasurement, lab_onAnotherWhiteIsReReferencedWithoutAdaptation) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    const Answer answer = askLab(measurement, conditions.stored(), &conditions.twoDegree, kOtherWhite);
    EXPECT_EQ(answer, (Answer{0, labOfXyz(kOtherWhite, xyzOfLab(kWhite, kLab))}));
    // Independently calculated.
    EXPECT_NEAR(answer.triple[0], 50.0, 1e-9);
    EXPECT_NEAR(answer.triple[1], 21.7148832632, 1e-9);
    EXPECT_NEAR(answer.triple[2], -17.9478838846, 1e-9);
}

// A Lab measurement whose tristimulus values and their result code are given.
class ScriptedLab : public TLABMeasurement {
public:
    using TLABMeasurement::TLABMeasurement;
    int GetXYZ(TIlluminant* askedIlluminant, TObserver* askedObserver, double* xyz) const override {
        seenIlluminant = askedIlluminant;
        seenObserver = askedObserver;
        for (std::size_t i = 0; i < 3; ++i)
            xyz[i] = kXyz[i];
        return result;
    }
    int result = 0;
    mutable TIlluminant* seenIlluminant = nullptr;
    mutable TObserver* seenObserver = nullptr;
};

TEST(labMeasurement, lab_onAnotherWhiteIsThatOfTheMeasurementsOwnXyz) {
    Conditions conditions;
    const ScriptedLab measurement(kLab[0], kLab[1], kLab[2], kWhite.data(), nullptr, conditions.stored(),
                                  &conditions.twoDegree);
    const Answer answer = askLab(measurement, conditions.stored(), &conditions.twoDegree, kOtherWhite);
    EXPECT_EQ(answer, (Answer{0, labOfXyz(kOtherWhite, kXyz)}));
    EXPECT_EQ(measurement.seenIlluminant, conditions.stored());
    EXPECT_EQ(measurement.seenObserver, &conditions.twoDegree);
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, kWhite), (Answer{0, kLab}));
}

TEST(labMeasurement, lab_onAnotherWhiteReturnsTheCodeOfItsXyz) {
    Conditions conditions;
    ScriptedLab measurement(kLab[0], kLab[1], kLab[2], kWhite.data(), nullptr, conditions.stored(),
                            &conditions.twoDegree);
    measurement.result = 7;
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, kOtherWhite), (Answer{7, kLab}));
}

TEST(labMeasurement, lab_ofADarkColorGoesThroughXyz) {
    // The direct change of white in Lab would be exact on the cube-root branch only.
    Conditions conditions;
    const TLABMeasurement measurement(5.0, -3.0, 2.0, kWhite.data(), nullptr, conditions.stored(),
                                      &conditions.twoDegree);
    const Answer answer = askLab(measurement, nullptr, nullptr, kOtherWhite);
    EXPECT_EQ(answer.code, 0);
    EXPECT_NEAR(answer.triple[0], 5.0, 1e-9);
    EXPECT_NEAR(answer.triple[1], -2.6847743894, 1e-9);
    EXPECT_NEAR(answer.triple[2], 3.5291202811, 1e-9);
}

TEST(labMeasurement, lab_onABadWhiteAnswers3WithTheStoredValues) {
    const ReportCollector reports;
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, {-1.0, 100.0, 82.0}), (Answer{3, kLab}));
}

TEST(labMeasurement, lab_fromABadStoredWhiteAnswers3UnlessTheWhitesAgree) {
    const ReportCollector reports;
    Conditions conditions;
    const Triple bad = {96.0, -1.0, 82.0};
    const TLABMeasurement measurement = conditions.lab(bad);
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, kWhite), (Answer{3, kLab}));
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, bad), (Answer{0, kLab}));
    EXPECT_EQ(askLabWithoutWhite(measurement, nullptr, nullptr), (Answer{0, kLab}));
}

TEST(labMeasurement, lab_onItsOwnWhiteIsTheStoredOne) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    Triple lab = kUntouched;
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, measurement.GetWhite(), lab.data()), 0);
    EXPECT_EQ(lab, kLab);
}

TEST(labMeasurement, lab_onAWhiteThatIsNotANumberIsReReferenced) {
    const ReportCollector reports;
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    const Answer answer = askLab(measurement, nullptr, nullptr, withComponent(kWhite, 0, kNan));
    EXPECT_EQ(answer.code, 0);
    EXPECT_TRUE(std::isnan(answer.triple[1]));
    EXPECT_NEAR(answer.triple[2], kLab[2], 1e-9);
    EXPECT_TRUE(reports.errors.empty());
}

TEST(labMeasurement, lab_onAnInfiniteWhiteIsReReferencedAlsoWhenTheStoredOneIsInfinite) {
    Conditions conditions;
    const Triple infinite = withComponent(kWhite, 0, kInfinity);
    // X/Xn is 0 on an infinite white, where f is 0.137931; f of Y is 66/116.
    const Answer finite = askLab(conditions.lab(), nullptr, nullptr, infinite);
    EXPECT_EQ(finite.code, 0);
    EXPECT_NEAR(finite.triple[1], 500.0 * (0.137931 - 66.0 / 116.0), 1e-9);
    // The difference of two infinities is no number, and so not within the tolerance.
    const Answer both = askLab(conditions.lab(infinite), nullptr, nullptr, infinite);
    EXPECT_EQ(both.code, 0);
    EXPECT_TRUE(std::isnan(both.triple[1]));
}

TEST(labMeasurement, lab_intoNullAnswers3) {
    Conditions conditions;
    const TLABMeasurement measurement = conditions.lab();
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, kWhite.data(), nullptr), 3);
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, nullptr, nullptr), 3);
}

TEST(labMeasurement, spectrum_isNoneAndDensitiesAreZeros) {
    Conditions conditions;
    TLABMeasurement measurement = conditions.lab();
    expectNoSpectrum(measurement);
}

TEST(labMeasurement, copy_isOfTheSameClassAndIndependent) {
    Conditions conditions;
    const double coordinates[2] = {1.0, 2.0};
    auto original =
        std::make_unique<TLABMeasurement>(kLab[0], kLab[1], kLab[2], kWhite.data(), &conditions.geometry,
                                          conditions.stored(), &conditions.tenDegree, 2, coordinates);
    const std::unique_ptr<TLABMeasurement> copy = copyOf(*original);
    EXPECT_NE(copy->GetObserver(), original->GetObserver());
    EXPECT_NE(copy->GetWhite(), original->GetWhite());
    EXPECT_NE(copy->GetGeometry(), original->GetGeometry());
    original.reset();
    EXPECT_EQ(copy->GetStatus(), 0);
    EXPECT_EQ(copy->GetIlluminant(), conditions.stored());
    EXPECT_EQ(copy->GetGeometry()->GetNumber(), 4U);
    EXPECT_EQ(coordinatesOf(*copy), (std::vector<double>{1.0, 2.0}));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(copy->GetWhite()[i], kWhite[i]);
    EXPECT_EQ(askLabWithoutWhite(*copy, conditions.stored(), &conditions.tenDegree), (Answer{0, kLab}));
    EXPECT_EQ(askLabWithoutWhite(*copy, nullptr, &conditions.twoDegree), (Answer{-1, kLab}));
}

TEST(labMeasurement, copy_takesTheCoordinatesOfItsDayAndKeepsThem) {
    Conditions conditions;
    const double first[2] = {1.0, 2.0};
    const double second[3] = {3.0, 4.0, 5.0};
    TLABMeasurement original(kLab[0], kLab[1], kLab[2], kWhite.data(), nullptr, conditions.stored(),
                             &conditions.twoDegree, 2, first);
    ASSERT_EQ(original.SetCoord(3, second), 0);
    const std::unique_ptr<TLABMeasurement> copy = copyOf(original);
    EXPECT_EQ(original.SetCoord(0, nullptr), 0);
    EXPECT_EQ(coordinatesOf(*copy), (std::vector<double>{3.0, 4.0, 5.0}));
    EXPECT_EQ(copy->SetCoord(1, first), 0);
    EXPECT_TRUE(coordinatesOf(original).empty());
}

TEST(labMeasurement, copy_ofAnIncompleteOneIsIncomplete) {
    Conditions conditions;
    const TLABMeasurement withoutIlluminant(1.0, 2.0, 3.0, kWhite.data(), nullptr, nullptr,
                                            &conditions.twoDegree);
    const TLABMeasurement withoutWhite(1.0, 2.0, 3.0, nullptr, nullptr, conditions.stored(),
                                       &conditions.twoDegree);
    for (const TLABMeasurement* measurement : {&withoutIlluminant, &withoutWhite}) {
        const std::unique_ptr<TLABMeasurement> copy = copyOf(*measurement);
        EXPECT_EQ(copy->GetStatus(), 3);
        EXPECT_EQ(askXyz(*copy, nullptr, nullptr).code, -1);
        EXPECT_EQ(askLabWithoutWhite(*copy, nullptr, nullptr).code, -1);
    }
}

// Emissive CIELAB values.

TEST(emissiveLabMeasurement, constructor_copiesItsParts) {
    Conditions conditions;
    Triple white = kWhite;
    const double coordinates[1] = {8.0};
    const TEmissiveLABMeasurement measurement(kLab[0], kLab[1], kLab[2], white.data(), &conditions.geometry,
                                              &conditions.tenDegree, 1, coordinates);
    white = {1.0, 2.0, 3.0};
    EXPECT_EQ(measurement.GetStatus(), 0);
    EXPECT_NE(measurement.GetObserver(), &conditions.tenDegree);
    EXPECT_EQ(measurement.GetObserver()->GetNumber(), 1U);
    EXPECT_EQ(measurement.GetGeometry()->GetNumber(), 4U);
    EXPECT_EQ(coordinatesOf(measurement), (std::vector<double>{8.0}));
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_EQ(measurement.GetWhite()[i], kWhite[i]);
    EXPECT_EQ(conditions.emissiveLab().GetStatus(), 0);
}

TEST(emissiveLabMeasurement, constructor_withoutObserverOrWhiteHasStatus3) {
    Conditions conditions;
    const double coordinates[1] = {8.0};
    const double* white = kWhite.data();
    const TObserver* observer = &conditions.twoDegree;
    EXPECT_EQ(TEmissiveLABMeasurement(50.0, 1.0, 2.0, white, nullptr, nullptr).GetStatus(), 3);
    EXPECT_EQ(TEmissiveLABMeasurement(50.0, 1.0, 2.0, nullptr, nullptr, observer).GetStatus(), 3);
    EXPECT_EQ(TEmissiveLABMeasurement(50.0, 1.0, 2.0, white, nullptr, nullptr, 1, coordinates).GetStatus(),
              3);
    EXPECT_EQ(TEmissiveLABMeasurement(50.0, 1.0, 2.0, nullptr, nullptr, observer, 1, coordinates).GetStatus(),
              3);
}

TEST(emissiveLabMeasurement, constructor_withoutObserverOrWhiteStoresNeither) {
    Conditions conditions;
    const TEmissiveLABMeasurement noObserver(50.0, 1.0, 2.0, kWhite.data(), nullptr, nullptr);
    const TEmissiveLABMeasurement noWhite(50.0, 1.0, 2.0, nullptr, nullptr, &conditions.twoDegree);
    for (const TEmissiveLABMeasurement* measurement : {&noObserver, &noWhite}) {
        EXPECT_EQ(measurement->GetStatus(), 3);
        EXPECT_EQ(measurement->GetObserver(), nullptr);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(measurement->GetWhite()[i], 0.0);
        EXPECT_EQ(askLabWithoutWhite(*measurement, nullptr, nullptr), (Answer{-1, {0.0, 0.0, 0.0}}));
    }
}

TEST(emissiveLabMeasurement, xyz_isThatOfTheStoredLabWhateverTheIlluminant) {
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab();
    const Triple expected = xyzOfLab(kWhite, kLab);
    EXPECT_EQ(askXyz(measurement, nullptr, nullptr), (Answer{0, expected}));
    EXPECT_EQ(askXyz(measurement, &conditions.other.illuminant, &conditions.twoDegree),
              (Answer{0, expected}));
}

TEST(emissiveLabMeasurement, xyz_forTheOtherObserverAnswersMinusOneAndStaysUntouched) {
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab();
    EXPECT_EQ(askXyz(measurement, nullptr, &conditions.tenDegree), (Answer{-1, kUntouched}));
}

TEST(emissiveLabMeasurement, xyz_onAStoredWhiteThatCielabRefusesAnswers3) {
    const ReportCollector reports;
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab({96.0, 100.0, -1.0});
    EXPECT_EQ(askXyz(measurement, nullptr, nullptr), (Answer{3, kUntouched}));
}

TEST(emissiveLabMeasurement, xyz_intoNullAnswers3) {
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab();
    EXPECT_EQ(measurement.GetXYZ(nullptr, nullptr, nullptr), 3);
}

TEST(emissiveLabMeasurement, incompleteOne_answersMinusOne) {
    Conditions conditions;
    const TEmissiveLABMeasurement withoutObserver(50.0, 1.0, 2.0, kWhite.data(), nullptr, nullptr);
    const TEmissiveLABMeasurement withoutWhite(50.0, 1.0, 2.0, nullptr, nullptr, &conditions.twoDegree);
    for (const TEmissiveLABMeasurement* measurement : {&withoutObserver, &withoutWhite}) {
        EXPECT_EQ(askXyz(*measurement, nullptr, nullptr).code, -1);
        EXPECT_EQ(askXyz(*measurement, nullptr, &conditions.twoDegree).code, -1);
        EXPECT_EQ(askLab(*measurement, nullptr, nullptr, kWhite).code, -1);
        EXPECT_EQ(askLabWithoutWhite(*measurement, nullptr, nullptr).code, -1);
    }
}

TEST(emissiveLabMeasurement, lab_isTheStoredOneWhateverTheIlluminant) {
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab();
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, kWhite), (Answer{0, kLab}));
    EXPECT_EQ(askLab(measurement, &conditions.other.illuminant, &conditions.twoDegree, kWhite),
              (Answer{0, kLab}));
    EXPECT_EQ(askLabWithoutWhite(measurement, &conditions.other.illuminant, nullptr), (Answer{0, kLab}));
}

TEST(emissiveLabMeasurement, lab_forTheOtherObserverAnswersMinusOneWithTheStoredValues) {
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab();
    EXPECT_EQ(askLab(measurement, nullptr, &conditions.tenDegree, kWhite), (Answer{-1, kLab}));
    EXPECT_EQ(askLabWithoutWhite(measurement, nullptr, &conditions.tenDegree), (Answer{-1, kLab}));
}

TEST(emissiveLabMeasurement, lab_onAWhiteATenthAwayIsTheStoredOne) {
    Conditions conditions;
    const Triple stored = {95.0, 100.0, 108.0};
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab(stored);
    for (std::size_t i = 0; i < 3; ++i) {
        for (const double step : {0.1, -0.1}) {
            const Triple white = withComponent(stored, i, stored[i] + step);
            ASSERT_LT(std::fabs(white[i] - stored[i]), 0.1);
            EXPECT_EQ(askLab(measurement, nullptr, nullptr, white), (Answer{0, kLab})) << i << ' ' << step;
        }
    }
}

TEST(emissiveLabMeasurement, lab_onAWhiteOfExactlyTheToleranceIsTheStoredOne) {
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab({0.0, 100.0, 82.0});
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, {0.1, 100.0, 82.0}), (Answer{0, kLab}));
    EXPECT_EQ(askLab(measurement, nullptr, nullptr, {std::nextafter(0.1, 1.0), 100.0, 82.0}),
              (Answer{-1, kLab}));
}

TEST(emissiveLabMeasurement, lab_onAnyWhiteFurtherAwayAnswersMinusOneWithTheStoredValues) {
    const ReportCollector reports;
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab();
    for (std::size_t i = 0; i < 3; ++i) {
        for (const double step : {0.11, -0.11, 0.2, -0.2, 20.0, -200.0})
            EXPECT_EQ(askLab(measurement, nullptr, nullptr, withComponent(kWhite, i, kWhite[i] + step)),
                      (Answer{-1, kLab}))
                << i << ' ' << step;
    }
    // No white is ever looked at by CIELAB here.
    EXPECT_TRUE(reports.errors.empty());
}

TEST(emissiveLabMeasurement, lab_onAWhiteThatIsNoFiniteNumberAnswersMinusOneWithTheStoredValues) {
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab();
    for (std::size_t i = 0; i < 3; ++i) {
        for (const double component : {kNan, kInfinity, -kInfinity})
            EXPECT_EQ(askLab(measurement, nullptr, nullptr, withComponent(kWhite, i, component)),
                      (Answer{-1, kLab}))
                << i << ' ' << component;
    }
    // The difference of two infinities is no number, and so not within the tolerance.
    const Triple infinite = withComponent(kWhite, 2, kInfinity);
    EXPECT_EQ(askLab(conditions.emissiveLab(infinite), nullptr, nullptr, infinite), (Answer{-1, kLab}));
}

TEST(emissiveLabMeasurement, lab_intoNullAnswers3) {
    Conditions conditions;
    const TEmissiveLABMeasurement measurement = conditions.emissiveLab();
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, kWhite.data(), nullptr), 3);
    EXPECT_EQ(measurement.GetLAB(nullptr, nullptr, nullptr, nullptr), 3);
}

TEST(emissiveLabMeasurement, spectrum_isNoneAndDensitiesAreZeros) {
    Conditions conditions;
    TEmissiveLABMeasurement measurement = conditions.emissiveLab();
    expectNoSpectrum(measurement);
}

TEST(emissiveLabMeasurement, copy_isOfTheSameClassAndIndependent) {
    Conditions conditions;
    const double coordinates[1] = {8.0};
    auto original = std::make_unique<TEmissiveLABMeasurement>(kLab[0], kLab[1], kLab[2], kWhite.data(),
                                                              &conditions.geometry, &conditions.tenDegree, 1,
                                                              coordinates);
    const std::unique_ptr<TEmissiveLABMeasurement> copy = copyOf(*original);
    EXPECT_NE(copy->GetObserver(), original->GetObserver());
    EXPECT_NE(copy->GetWhite(), original->GetWhite());
    original.reset();
    EXPECT_EQ(copy->GetStatus(), 0);
    EXPECT_EQ(copy->GetGeometry()->GetNumber(), 4U);
    EXPECT_EQ(coordinatesOf(*copy), (std::vector<double>{8.0}));
    EXPECT_EQ(copy->GetWhite()[0], kWhite[0]);
    EXPECT_EQ(askLab(*copy, nullptr, &conditions.tenDegree, kWhite), (Answer{0, kLab}));
    EXPECT_EQ(askLab(*copy, nullptr, &conditions.twoDegree, kWhite), (Answer{-1, kLab}));
}

TEST(emissiveLabMeasurement, copy_ofAnIncompleteOneIsIncomplete) {
    Conditions conditions;
    const TEmissiveLABMeasurement withoutObserver(1.0, 2.0, 3.0, kWhite.data(), nullptr, nullptr);
    const TEmissiveLABMeasurement withoutWhite(1.0, 2.0, 3.0, nullptr, nullptr, &conditions.twoDegree);
    for (const TEmissiveLABMeasurement* measurement : {&withoutObserver, &withoutWhite}) {
        const std::unique_ptr<TEmissiveLABMeasurement> copy = copyOf(*measurement);
        EXPECT_EQ(copy->GetStatus(), 3);
        EXPECT_EQ(askXyz(*copy, nullptr, nullptr).code, -1);
    }
}

} // namespace
