// The whole way from a measured file to colour differences: documents, illuminants, XYZ, CIELAB, formulas.
//
// The expected figures were calculated apart from the library, in plain double arithmetic from the published
// tables: sums over 380, 390, ..., 730 nm, k = 100 / sum(S * y), CIELAB on the white of the same sums.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "colorspace/tlabspace.h"
#include "measurement/spectral_measurements.h"
#include "spectral/tilluminantandobserver.h"
#include "spectral/tilluminantfactoryholder.h"

namespace {

using Triple = std::array<double, 3>;

// The ColorChecker twice, as spectra (the sample) and as published aims (the standard), and the illuminants.
class Chain : public testing::Test {
protected:
    Chain()
        : spectra(QXCMS_SOURCE_DIR "/data/charts/colorchecker_spectral.txt"),
          aims(QXCMS_SOURCE_DIR "/data/charts/colorchecker_aims.txt"), registry(TIlluminantFactory::New()) {
        registry->AddDirectory(QXCMS_SOURCE_DIR "/data/r/ill");
    }
    ~Chain() override { TIlluminantFactory::Delete(); }

    void SetUp() override {
        ASSERT_EQ(spectra.GetErrorCode(), 0) << spectra.GetErrorMessage();
        ASSERT_EQ(aims.GetErrorCode(), 0) << aims.GetErrorMessage();
        ASSERT_EQ(spectra.GetNrSamples(0), 24);
        ASSERT_EQ(aims.GetNrSamples(0), 24);
        ASSERT_TRUE(spectra.ContainsWaveLengths(0));
        ASSERT_TRUE(aims.ContainsLab(0));
    }

    static Triple whiteOf(TIlluminant* illuminant, const TObserver& observer) {
        const TIlluminantAndObserver weighting(illuminant, &observer, 36);
        EXPECT_EQ(weighting.GetStatus(), 0);
        Triple white = {-1.0, -1.0, -1.0};
        EXPECT_EQ(weighting.GetXYZWhite(white.data()), 0);
        return white;
    }

    static std::string nameOf(const TCgats& document, int sample) {
        char name[TCgats::kMaxSampleValue + 1] = "";
        const int column = document.GetFieldNameIndex(0, "SAMPLE_ID");
        EXPECT_EQ(document.GetField(0, sample, column, name), 0);
        return name;
    }

    std::unique_ptr<TOneMeasurement> measurementOf(const TCgats& document, int sample,
                                                   TIlluminant* illuminant, const TObserver& observer) const {
        return std::unique_ptr<TOneMeasurement>(
            document.GetMeasurement(0, sample, illuminant, &observer, &geometry));
    }

    // XYZ of every spectral patch by name.
    std::map<std::string, Triple> xyzOfSpectra(const char* illuminantName, int observerNumber) const {
        TIlluminant* illuminant = registry->GetIlluminant(illuminantName);
        EXPECT_NE(illuminant, nullptr) << illuminantName;
        TObserver observer(observerNumber);
        std::map<std::string, Triple> all;
        for (int sample = 0; sample < spectra.GetNrSamples(0); ++sample) {
            const std::unique_ptr<TOneMeasurement> measurement =
                measurementOf(spectra, sample, illuminant, observer);
            Triple xyz = {-1.0, -1.0, -1.0};
            if (dynamic_cast<TReflectionSpectrum*>(measurement.get()) == nullptr) {
                ADD_FAILURE() << "no reflection spectrum: " << sample;
                continue;
            }
            EXPECT_EQ(measurement->GetXYZ(illuminant, &observer, xyz.data()), 0);
            all[nameOf(spectra, sample)] = xyz;
        }
        return all;
    }

    // Lab of every patch of a document by name, on the white of illuminant and observer.
    std::map<std::string, Triple> labOf(const TCgats& document, const char* illuminantName,
                                        int observerNumber) const {
        TIlluminant* illuminant = registry->GetIlluminant(illuminantName);
        EXPECT_NE(illuminant, nullptr) << illuminantName;
        TObserver observer(observerNumber);
        const Triple white = whiteOf(illuminant, observer);
        std::map<std::string, Triple> all;
        for (int sample = 0; sample < document.GetNrSamples(0); ++sample) {
            const std::unique_ptr<TOneMeasurement> measurement =
                measurementOf(document, sample, illuminant, observer);
            Triple lab = {-1.0, -1.0, -1.0};
            if (measurement == nullptr) {
                ADD_FAILURE() << "no measurement: " << sample;
                continue;
            }
            EXPECT_EQ(measurement->GetLAB(illuminant, &observer, white.data(), lab.data()), 0);
            all[nameOf(document, sample)] = lab;
        }
        return all;
    }

    TCgats spectra;
    TCgats aims;
    TIlluminantFactoryHolder* registry;
    TMeasGeom geometry{0};
};

using chain = Chain;

void expectNear(const Triple& actual, const Triple& expected, const std::string& what) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-8) << what << ' ' << i;
}

TEST_F(chain, charts_nameTheSamePatchesInTheSameOrder) {
    for (int sample = 0; sample < 24; ++sample)
        EXPECT_EQ(nameOf(spectra, sample), nameOf(aims, sample)) << sample;
    EXPECT_EQ(nameOf(spectra, 0), "dark_skin");
    EXPECT_EQ(nameOf(spectra, 23), "black_2");
}

TEST_F(chain, spectra_giveXyzUnderIlluminantC) {
    const std::map<std::string, Triple> xyz = xyzOfSpectra("CIE Illuminant C", 0);
    ASSERT_EQ(xyz.size(), 24U);
    expectNear(xyz.at("dark_skin"), {11.2666102425, 9.7662216836, 6.5504923863}, "dark_skin");
    expectNear(xyz.at("foliage"), {10.3340861291, 12.8792556256, 7.1980010633}, "foliage");
    expectNear(xyz.at("blue"), {8.9427748606, 6.2859994077, 32.6155337236}, "blue");
    expectNear(xyz.at("red"), {20.7434213401, 12.0002846071, 5.6515783266}, "red");
    expectNear(xyz.at("white_95"), {86.8133051045, 88.7273041460, 103.6733223994}, "white_95");
    expectNear(xyz.at("black_2"), {3.2866966135, 3.3508960534, 4.1349139920}, "black_2");
}

TEST_F(chain, whiteOfIlluminantC_isThatOfThePointsAt10Nm) {
    TIlluminant* illuminant = registry->GetIlluminant("CIE Illuminant C");
    ASSERT_NE(illuminant, nullptr);
    expectNear(whiteOf(illuminant, TObserver(0)), {98.0400599055, 100.0, 118.1056053328}, "white");
}

TEST_F(chain, spectra_giveLabUnderIlluminantC) {
    const std::map<std::string, Triple> lab = labOf(spectra, "CIE Illuminant C", 0);
    ASSERT_EQ(lab.size(), 24U);
    expectNear(lab.at("dark_skin"), {37.4195446712, 12.8330498948, 15.8307791626}, "dark_skin");
    expectNear(lab.at("blue_sky"), {50.7406132825, -0.3720708505, -21.4660631088}, "blue_sky");
    expectNear(lab.at("foliage"), {42.5807476632, -16.3143097599, 22.2948142620}, "foliage");
    expectNear(lab.at("orange"), {61.4163063350, 28.4728001382, 57.8539005530}, "orange");
    expectNear(lab.at("purple"), {30.8133760168, 24.5971677709, -22.2801565240}, "purple");
    expectNear(lab.at("blue"), {30.1228463880, 26.2691034919, -50.7189310827}, "blue");
    expectNear(lab.at("red"), {41.2165724575, 51.3169328613, 26.0392674375}, "red");
    expectNear(lab.at("yellow"), {81.6851520007, -3.4080480867, 80.2770448086}, "yellow");
    expectNear(lab.at("cyan"), {51.4393800080, -22.5419848485, -26.2065699213}, "cyan");
    expectNear(lab.at("white_95"), {95.4663425749, -0.3224005681, 0.6862655495}, "white_95");
    expectNear(lab.at("neutral_5"), {52.1869557855, 0.0353908437, -0.0668240319}, "neutral_5");
    expectNear(lab.at("black_2"), {21.3977069859, 0.0241394007, -0.9489448962}, "black_2");
}

TEST_F(chain, spectra_giveLabUnderDaylight) {
    const std::map<std::string, Triple> d50 = labOf(spectra, "D50", 0);
    expectNear(d50.at("dark_skin"), {37.8312851660, 15.4322939919, 16.5591850646}, "dark_skin D50");
    expectNear(d50.at("cyan"), {50.6025557864, -28.5748042554, -28.4674321621}, "cyan D50");
    expectNear(d50.at("white_95"), {95.4688581583, -0.1763369760, 0.6612294939}, "white_95 D50");
    const std::map<std::string, Triple> d65 = labOf(spectra, "D65", 0);
    expectNear(d65.at("dark_skin"), {37.3202167028, 13.6416275135, 15.6502221012}, "dark_skin D65");
    expectNear(d65.at("cyan"), {51.6881081980, -24.7139608587, -25.9805510224}, "cyan D65");
}

TEST_F(chain, spectra_giveLabForTheTenDegreeObserver) {
    const std::map<std::string, Triple> d50 = labOf(spectra, "D50", 1);
    expectNear(d50.at("dark_skin"), {37.3881554784, 15.3195099992, 15.7655833611}, "dark_skin D50");
    expectNear(d50.at("cyan"), {52.1880955494, -33.0759036995, -24.9134255940}, "cyan D50");
    const std::map<std::string, Triple> d65 = labOf(spectra, "D65", 1);
    expectNear(d65.at("dark_skin"), {36.8029085117, 13.8899716279, 14.6803317108}, "dark_skin D65");
    expectNear(d65.at("white_95"), {95.4544911995, -0.4930703402, 1.0319470431}, "white_95 D65");
}

TEST_F(chain, spectra_giveLabUnderF2ThroughTheAstmTable) {
    const std::map<std::string, Triple> lab = labOf(spectra, "CIE Illuminant F2", 0);
    expectNear(lab.at("dark_skin"), {38.179599929, 9.893655563, 17.002640481}, "dark_skin");
    expectNear(lab.at("cyan"), {47.051888417, -17.560210343, -31.849971943}, "cyan");
    expectNear(lab.at("white_95"), {95.462481947, -0.133691627, 0.594780891}, "white_95");
}

TEST_F(chain, aims_areHandedOutAsTheyStand) {
    const std::map<std::string, Triple> lab = labOf(aims, "CIE Illuminant C", 0);
    ASSERT_EQ(lab.size(), 24U);
    EXPECT_EQ(lab.at("dark_skin"), (Triple{37.9320, 12.1092, 14.4715}));
    EXPECT_EQ(lab.at("cyan"), (Triple{51.5762, -21.7205, -26.6322}));
}

// The difference of every patch to its aim.
std::map<std::string, double> differences(const std::map<std::string, Triple>& sample,
                                          const std::map<std::string, Triple>& standard, int function) {
    std::map<std::string, double> all;
    for (const auto& [name, lab] : sample)
        all[name] = std::sqrt(
            TLabSpace::CalcSquareDeltaEConvertedStatic(lab.data(), standard.at(name).data(), function));
    return all;
}

// What the differences of the chart come to with one formula.
struct Summary {
    const char* formula;
    double mean;
    double largest;
    const char* worst;
    double darkSkin;
    double cyan;
};

TEST_F(chain, differencesToTheAims_haveTheCalculatedMeanAndMaximum) {
    const Summary expected[5] = {
        {"CIELAB Delta E (Classic)", 1.002159417, 1.715778182, "purple", 1.623024638, 0.935263616},
        {"Delta E 94", 0.618319626, 1.283074201, "black_2", 0.992748248, 0.616471328},
        {"Delta E 2000", 0.600055897, 1.118884674, "black_2", 0.962151852, 0.528087722},
        {"CMC(1:1)", 0.719095509, 2.037358393, "black_2", 1.190474248, 0.606759496},
        {"CMC(2:1)", 0.632932969, 1.662488456, "black_2", 1.090863299, 0.597231252}};
    const std::map<std::string, Triple> sample = labOf(spectra, "CIE Illuminant C", 0);
    const std::map<std::string, Triple> standard = labOf(aims, "CIE Illuminant C", 0);
    for (const Summary& summary : expected) {
        const int function = TLabSpace::DifferenceFunctionNameToIndex(summary.formula);
        const std::map<std::string, double> all = differences(sample, standard, function);
        ASSERT_EQ(all.size(), 24U);
        double sum = 0.0;
        for (const auto& [name, difference] : all)
            sum += difference;
        const auto worst = std::max_element(all.begin(), all.end(),
                                            [](const auto& a, const auto& b) { return a.second < b.second; });
        EXPECT_NEAR(sum / 24.0, summary.mean, 2e-9) << summary.formula;
        EXPECT_NEAR(worst->second, summary.largest, 2e-9) << summary.formula;
        EXPECT_EQ(worst->first, summary.worst) << summary.formula;
        EXPECT_NEAR(all.at("dark_skin"), summary.darkSkin, 2e-9) << summary.formula;
        EXPECT_NEAR(all.at("cyan"), summary.cyan, 2e-9) << summary.formula;
    }
}

TEST_F(chain, differencesOfXyz_areThoseOfLab) {
    TIlluminant* illuminant = registry->GetIlluminant("CIE Illuminant C");
    ASSERT_NE(illuminant, nullptr);
    const Triple white = whiteOf(illuminant, TObserver(0));
    const TLabSpace space(white.data());
    const std::map<std::string, Triple> xyz = xyzOfSpectra("CIE Illuminant C", 0);
    const std::map<std::string, Triple> lab = labOf(spectra, "CIE Illuminant C", 0);
    for (int function = 0; function < 5; ++function) {
        for (const auto& [name, components] : xyz) {
            const double square = TLabSpace::CalcSquareDeltaEConvertedStatic(
                lab.at(name).data(), lab.at("neutral_5").data(), function);
            EXPECT_EQ(space.CalcDeltaE(components.data(), xyz.at("neutral_5").data(), function),
                      std::sqrt(square))
                << name;
        }
    }
}

} // namespace
