// Prints one digest per numeric operation over 200,000 of its results. Builds by other compilers and at other
// levels of optimisation print the same on the same machine.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "qxcms.h"
#include "spectral/color_temperature.h"

namespace {

constexpr int kResults = 200000;
constexpr int kBands = 36;

// The same numbers everywhere: xorshift, and a double made of its upper 53 bits.
class Numbers {
public:
    double between(double low, double high) {
        return low + (high - low) * static_cast<double>(next() >> 11) * 0x1p-53;
    }
    int below(int limit) { return static_cast<int>(next() % static_cast<std::uint64_t>(limit)); }

    std::vector<double> values(int count, double low, double high) {
        std::vector<double> list;
        for (int i = 0; i < count; ++i)
            list.push_back(between(low, high));
        return list;
    }

private:
    std::uint64_t next() {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        return state;
    }

    std::uint64_t state = 88172645463325252u;
};

// FNV-1a over the bits of the results.
class Digest {
public:
    void add(double result) {
        // Which of the undefined numbers comes out is the compiler's choice.
        if (std::isnan(result))
            result = std::numeric_limits<double>::quiet_NaN();
        std::uint64_t bits = 0;
        std::memcpy(&bits, &result, sizeof bits);
        addBits(bits);
        ++results;
    }
    void add(const double* list, int count) {
        for (int i = 0; i < count; ++i)
            add(list[i]);
    }
    void add(const std::string& text) {
        for (const char c : text)
            value = (value ^ static_cast<unsigned char>(c)) * 1099511628211u;
        ++results;
    }
    void add(const std::uint16_t* words, int bytes) {
        for (int i = 0; i < bytes / 2; ++i)
            addBits(words[i]);
        ++results;
    }

    int count() const { return results; }
    std::uint64_t get() const { return value; }

private:
    void addBits(std::uint64_t bits) {
        for (int i = 0; i < 8; ++i, bits >>= 8)
            value = (value ^ (bits & 0xFFu)) * 1099511628211u;
    }

    std::uint64_t value = 14695981039346656037u;
    int results = 0;
};

// Runs an operation until it has given its results, and prints the digest.
void digest(const char* name, const std::function<void(Numbers&, Digest&)>& operation) {
    Numbers numbers;
    Digest all;
    while (all.count() < kResults)
        operation(numbers, all);
    std::printf("%-28s %016llx\n", name, static_cast<unsigned long long>(all.get()));
}

TSpectrum standardSpectrum(Numbers& numbers) {
    return TSpectrum(numbers.values(kBands, 0.0, 1.2).data());
}

TSpectrum sampledSpectrum(Numbers& numbers) {
    const int count = 2 + numbers.below(80);
    std::vector<double> wavelengths;
    for (int i = 0; i < count; ++i)
        wavelengths.push_back(340.0 + 5.5 * i + numbers.below(4));
    return TSpectrum(wavelengths.data(), count, numbers.values(count, 0.0, 1.2).data());
}

void spectra() {
    digest("standard sampling", [](Numbers& numbers, Digest& all) {
        all.add(sampledSpectrum(numbers).GetUniformSpectrum(nullptr, nullptr, nullptr), kBands);
    });
    digest("product of spectra", [](Numbers& numbers, Digest& all) {
        const TSpectrum a = sampledSpectrum(numbers), b = standardSpectrum(numbers);
        all.add(TSpectrum(&a, &b).GetUniformSpectrum(nullptr, nullptr, nullptr), kBands);
    });
    digest("distance and inner product", [](Numbers& numbers, Digest& all) {
        const TSpectrum a = standardSpectrum(numbers), b = standardSpectrum(numbers);
        double product = 0.0;
        a.InProduct(&b, &product);
        all.add(a.CalcDistance(&b));
        all.add(product);
    });
    digest("densities", [](Numbers& numbers, Digest& all) {
        TSpectrum spectrum = standardSpectrum(numbers);
        double densities[4];
        int major = 0;
        spectrum.GetDensity(static_cast<TSpectrum::FilterStandards>(numbers.below(4)), densities, &major);
        all.add(densities, 4);
        all.add(major);
    });
    digest("spectrum file data", [](Numbers& numbers, Digest& all) {
        TSpectrum spectrum = sampledSpectrum(numbers);
        const TSpectrum reference = spectrum;
        int size = 0;
        const std::uint16_t* words = spectrum.ToFileData(&size);
        all.add(words, size);
        const TSpectrum decoded(static_cast<const void*>(words), nullptr);
        all.add(decoded.GetValues(), decoded.GetNrSamples());
        words = spectrum.ToShrtFileData(&reference, &size);
        all.add(words, size);
    });
}

void tristimulusValues() {
    digest("observer", [](Numbers& numbers, Digest& all) {
        TObserver observer(numbers.below(2));
        const TSpectrum sample = standardSpectrum(numbers), light = standardSpectrum(numbers);
        const TSpectrum stimulus(&sample, &light);
        double xyz[3];
        observer.GetXYZ(&stimulus, &light, xyz);
        all.add(xyz, 3);
        observer.GetXYZ(&stimulus, xyz);
        all.add(xyz, 3);
    });
    for (const char* const name : {"light", "CIE Illuminant F2", "CIE Illuminant F7", "CIE Illuminant F11"})
        digest((std::string("weighting, ") + name).c_str(), [name](Numbers& numbers, Digest& all) {
            const TSpectrum light = standardSpectrum(numbers);
            const TIlluminant illuminant(&light, name);
            const TObserver observer(numbers.below(2));
            const int points = 1 + numbers.below(kBands);
            TIlluminantAndObserver weighting(&illuminant, &observer, points);
            double xyz[3];
            weighting.GetXYZWhite(xyz);
            all.add(xyz, 3);
            all.add(weighting.GetFactor());
            all.add(weighting.GetCombinedWeights(), kBands);
            weighting.GetXYZ(numbers.values(points, 0.0, 1.0).data(), xyz, points);
            all.add(xyz, 3);
            weighting.GetXYZIncrement(numbers.between(-0.1, 0.1), 0, points, xyz);
            all.add(xyz, 3);
        });
    digest("colour temperature", [](Numbers& numbers, Digest& all) {
        const double xyz[3] = {numbers.between(70.0, 130.0), 100.0, numbers.between(10.0, 180.0)};
        const double temperature = qxcms::detail::correlatedColorTemperature(xyz);
        all.add(temperature);
        all.add(qxcms::detail::onTemperatureRaster(temperature));
    });
}

void labSpace() {
    digest("f of CIELAB and inverse", [](Numbers& numbers, Digest& all) {
        all.add(TLabSpace::FLab(numbers.between(-0.1, 1.2)));
        all.add(TLabSpace::Fm1Lab(numbers.between(-0.1, 1.2)));
    });
    digest("XYZ to Lab and LHC", [](Numbers& numbers, Digest& all) {
        const TLabSpace space(numbers.values(3, 50.0, 120.0).data());
        const std::vector<double> xyz = numbers.values(3, -5.0, 125.0);
        double result[3];
        space.XYZToLab(xyz.data(), result);
        all.add(result, 3);
        space.XYZToLHC(xyz.data(), result);
        all.add(result, 3);
        space.GetSqSat(xyz.data(), result);
        all.add(result[0]);
    });
    digest("Lab and LHC to XYZ", [](Numbers& numbers, Digest& all) {
        const TLabSpace space(numbers.values(3, 50.0, 120.0).data());
        const double lab[3] = {numbers.between(-5.0, 110.0), numbers.between(-128.0, 128.0),
                               numbers.between(-128.0, 128.0)};
        const double lhc[3] = {lab[0], numbers.between(-1.0, 7.0), numbers.between(0.0, 150.0)};
        double result[3];
        space.LabToXYZ(lab, result);
        all.add(result, 3);
        space.LHCToXYZ(lhc, result);
        all.add(result, 3);
    });
    digest("Lab to LHC and back, hue", [](Numbers& numbers, Digest& all) {
        const std::vector<double> lab = numbers.values(3, -128.0, 128.0);
        double lhc[3], back[3];
        TLabSpace::LabToLHC(lab.data(), lhc);
        TLabSpace::LHCToLab(lhc, back);
        all.add(lhc, 3);
        all.add(back, 3);
        all.add(TLabSpace::CalculateHue(lab.data()));
    });
    digest("another white", [](Numbers& numbers, Digest& all) {
        const std::vector<double> white = numbers.values(3, 50.0, 120.0),
                                  other = numbers.values(3, 50.0, 120.0);
        const std::vector<double> lab = numbers.values(3, -20.0, 100.0);
        double result[3];
        TLabSpace(white.data()).LabToLab(lab.data(), result, other.data());
        all.add(result, 3);
        std::vector<double> xyz = numbers.values(3, 0.0, 120.0);
        TLabSpace::XYZToLabToXYZ(white.data(), other.data(), xyz.data());
        all.add(xyz.data(), 3);
    });
    for (int function = 0; function < TLabSpace::GetDifferenceFunctionListSize(); ++function)
        digest(TLabSpace::GetDifferenceFunctionList()[function], [function](Numbers& numbers, Digest& all) {
            const TLabSpace space(numbers.values(3, 50.0, 120.0).data());
            const std::vector<double> a = numbers.values(3, -100.0, 100.0),
                                      b = numbers.values(3, -100.0, 100.0);
            all.add(TLabSpace::CalcSquareDeltaEConvertedStatic(a.data(), b.data(), function));
            all.add(space.CalcDeltaE(a.data(), b.data(), function));
        });
    digest("hue difference", [](Numbers& numbers, Digest& all) {
        const std::vector<double> a = numbers.values(3, -100.0, 100.0), b = numbers.values(3, -100.0, 100.0);
        all.add(TLabSpace::CalcSquareDeltaHConvertedStatic(a.data(), b.data()));
    });
}

void appearance() {
    const auto modelDigest = [](const char* name, auto newSpace) {
        digest(name, [newSpace](Numbers& numbers, Digest& all) {
            const std::vector<double> white = numbers.values(3, 50.0, 120.0);
            auto space = newSpace(white.data(), numbers.below(3));
            const double luminance = numbers.between(1.0, 1000.0), background = numbers.between(5.0, 60.0);
            space->InitializeScene(white.data(), luminance, background);
            const std::vector<double> xyz = numbers.values(3, 0.0, 125.0);
            const double jch[3] = {numbers.between(0.0, 110.0), numbers.between(0.0, 120.0),
                                   numbers.between(0.0, 360.0)};
            double result[3];
            space->FromXYZ(xyz.data(), result);
            all.add(result, 3);
            all.add(space->CalcSquareDeltaEConverted(result, jch, 0));
            space->ToXYZ(jch, result);
            all.add(result, 3);
        });
    };
    modelDigest("CIECAM97s", [](const double* white, int surround) {
        return std::make_unique<TColorSpace_CIECAM97s>(white, surround);
    });
    modelDigest("CIECAM02", [](const double* white, int surround) {
        return std::make_unique<TColorSpace_CIECAM02>(white, surround);
    });
}

void batches() {
    digest("batches of colours", [](Numbers& numbers, Digest& all) {
        const std::vector<double> white = numbers.values(3, 50.0, 120.0);
        const TLabSpace space(white.data());
        constexpr int kCount = 37;
        const std::vector<double> xyz = numbers.values(3 * kCount, -5.0, 125.0);
        std::vector<double> result(xyz.size());
        space.XYZToLabBatch(xyz.data(), result.data(), kCount);
        all.add(result.data(), 3 * kCount);
        space.LabToXYZBatch(xyz.data(), result.data(), kCount);
        all.add(result.data(), 3 * kCount);
        TLabSpace::LabToLHCBatch(xyz.data(), result.data(), kCount);
        all.add(result.data(), 3 * kCount);
    });
    digest("batches of spectra", [](Numbers& numbers, Digest& all) {
        const TSpectrum light = standardSpectrum(numbers);
        const TIlluminant illuminant(&light, "light");
        const TObserver observer(numbers.below(2));
        const TIlluminantAndObserver weighting(&illuminant, &observer, kBands);
        double xyz[3 * 11];
        weighting.SpectraToXYZBatch(numbers.values(kBands * 11, 0.0, 1.2).data(), xyz, 11);
        all.add(xyz, 3 * 11);
    });
}

void addMeasurement(TOneMeasurement& measurement, TIlluminant& illuminant, TObserver& observer,
                    const double* white, Digest& all) {
    double result[4];
    int major = 0;
    measurement.GetXYZ(&illuminant, &observer, result);
    all.add(result, 3);
    measurement.GetLAB(&illuminant, &observer, white, result);
    all.add(result, 3);
    measurement.GetDensity(1, result, &major);
    all.add(result, 4);
}

void measurements() {
    digest("measurements", [](Numbers& numbers, Digest& all) {
        const TSpectrum light = standardSpectrum(numbers), sample = sampledSpectrum(numbers);
        TIlluminant illuminant(&light, "light");
        TObserver observer(numbers.below(2));
        const TMeasGeom geometry(0);
        const std::vector<double> white = numbers.values(3, 50.0, 120.0),
                                  color = numbers.values(3, 0.0, 90.0);
        TReflectionSpectrum reflection(&sample, &geometry);
        TXYZMeasurement xyz(color[0], color[1], color[2], &geometry, &illuminant, &observer);
        TLABMeasurement lab(color[0], color[1], color[2], white.data(), &geometry, &illuminant, &observer);
        const std::vector<double> other = numbers.values(3, 50.0, 120.0);
        for (TOneMeasurement* const one :
             {static_cast<TOneMeasurement*>(&reflection), static_cast<TOneMeasurement*>(&xyz),
              static_cast<TOneMeasurement*>(&lab)})
            addMeasurement(*one, illuminant, observer, other.data(), all);
    });
}

void texts() {
    digest("numbers to text and back", [](Numbers& numbers, Digest& all) {
        const int exponent = numbers.below(2200) - 1100;
        const double number = std::ldexp(numbers.between(-1.0, 1.0), exponent);
        const std::string text = qxcms::detail::generalText(number, 1 + numbers.below(17));
        all.add(text);
        all.add(qxcms::detail::fixedText(number, numbers.below(18)));
        all.add(qxcms::detail::textToDouble(text.c_str()));
    });
    digest("values of a document", [](Numbers& numbers, Digest& all) {
        std::string text = "BEGIN_DATA_FORMAT\nCMYK_C CMYK_M CMYK_Y CMYK_K nm400 nm500\nEND_DATA_FORMAT\n"
                           "NUMBER_OF_SETS 1\nBEGIN_DATA\n";
        for (const double value : numbers.values(6, 0.0, 100.0))
            text += qxcms::detail::generalText(value, 12) + " ";
        const TCgats document(text.c_str(), 0);
        double values[4];
        char field[320];
        document.GetCoordinates(0, 0, values);
        all.add(values, 4);
        document.GetSpectrum(0, 0, values);
        all.add(values, 2);
        document.GetField(0, 0, 0, field);
        all.add(std::string(field));
    });
}

void platform() {
    digest("interpolation and distance", [](Numbers& numbers, Digest& all) {
        lin_interp_double* const table = lin_interp_double_new(5);
        for (int i = 0; i < 5; ++i) {
            const std::vector<double> point = numbers.values(2, 0.0, 10.0);
            lin_interp_double_insert(table, point[0], point[1]);
        }
        all.add(lin_interp_double_inter(table, numbers.between(-1.0, 11.0)));
        lin_interp_double_kill(table);
        const std::vector<double> a = numbers.values(36, 0.0, 1.0), b = numbers.values(36, 0.0, 1.0);
        all.add(vect_distance(a.data(), b.data(), 36));
    });
}

} // namespace

int main() {
    spectra();
    tristimulusValues();
    labSpace();
    appearance();
    batches();
    measurements();
    texts();
    platform();
    return 0;
}
