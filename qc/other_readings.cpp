#include "qc/other_readings.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "qc/printable_text.h"
#include "qc/published_whites.h"
#include "qc/relative_xyz.h"
#include "qc/statistics.h"

namespace qxcms::qc {

namespace {

// Two prints of one kind stay below this, and what is misread lies above it.
constexpr double kLeastMedian = 2.0;
constexpr double kMuchSmaller = 0.5;
constexpr double kMuchSmallerByWhite = 1.0 / 3.0;
// As a part of the median.
constexpr double kBetter = 0.1;
// So few may agree by chance.
constexpr std::size_t kFewestPairs = 8;
// So many, evenly chosen, tell the median well enough.
constexpr std::size_t kMostPairs = 256;

// Of the luminances of two whites, as a natural logarithm; repeated measurements of one differ by less.
constexpr double kOtherLuminance = 0.1;

// Greys stay below, in the mean.
constexpr double kGreyChroma = 10.0;
// Of the length of the mean of a* and b* to the mean chroma: that of colours of one hue is nearly 1.
constexpr double kOneHue = 0.9;

constexpr double kLargestLightness = 105.0;
// No chart is as dark throughout.
constexpr double kSmallestLightestLightness = 20.0;
// But libraries of blacks are; in percent that are read as fractions they hold nothing darker than this.
constexpr double kNothingDark = 50.0;

// How Lab stands in a file: a value v of the file is the Lab value v * factor + offset.
struct Encoding {
    const char* words; // of what the values look like
    double lightnessFactor;
    double factor; // of a* and b*
    double offset;
    double lowest; // a* and b* in the file
    double highest;
};

constexpr Encoding kEncodings[] = {
    {"had 128 added to a* and b*", 1.0, 1.0, -128.0, 0.0, 256.0},
    {"were Lab of 8 bits (0 to 255, 128 added to a* and b*)", 1.0 / 2.55, 1.0, -128.0, 0.0, 255.0},
    {"were Lab of 16 bits (0 to 65535)", 1.0 / 655.35, 1.0 / 257.0, -128.0, 0.0, 65535.0},
    {"were Lab of 16 bits (0 to 65280 for L* of 100)", 1.0 / 652.8, 1.0 / 256.0, -128.0, 0.0, 65535.0},
    {"were Lab divided by 100", 100.0, 100.0, 0.0, -2.0, 2.0},
    {"were Lab multiplied by 100", 0.01, 0.01, 0.0, -20000.0, 20000.0},
    {"were Lab of 0 to 1 (a* and b* with 128 added)", 100.0, 255.0, -128.0, 0.0, 1.0},
    {"had L* divided by 100 and a* and b* by 128", 100.0, 128.0, 0.0, -1.0, 1.0},
    {"had L* divided by 100", 100.0, 1.0, 0.0, -200.0, 200.0},
    {"had L* of 0 to 255", 1.0 / 2.55, 1.0, 0.0, -200.0, 200.0},
};

bool canBe(const Encoding& encoding, const std::vector<Lab>& lab) {
    double lightest = 0.0;
    double largest = 0.0;
    for (const Lab& color : lab) {
        lightest = std::max(lightest, color[0] * encoding.lightnessFactor);
        largest = std::max(largest, color[0]);
        for (const double axis : {color[1], color[2]}) {
            if (axis < encoding.lowest || axis > encoding.highest)
                return false;
        }
    }
    const bool isReduced = encoding.lightnessFactor < 1.0;
    return lightest >= kSmallestLightestLightness && lightest <= kLargestLightness &&
           (!isReduced || largest > kLargestLightness);
}

// A way to read the rows of a side.
struct Reading {
    std::string words;
    std::function<Lab(int)> labOf; // of a row
    double muchSmaller = kMuchSmaller;
    // For spectra of the other side that hold nothing dark; null where these are right.
    const char* otherWords = nullptr;
};

Lab onWhite(const Lab& lab, const std::array<double, 3>& from, const std::array<double, 3>& to) {
    std::array<double, 3> percent = relativeXyzOf(lab);
    for (std::size_t i = 0; i < percent.size(); ++i)
        percent[i] *= from[i] / to[i];
    return labOfRelativeXyz(percent);
}

Lab withXAndZExchanged(const Lab& lab, const std::array<double, 3>& white) {
    std::array<double, 3> percent = relativeXyzOf(lab);
    std::swap(percent[0], percent[2]);
    percent[0] *= white[2] / white[0];
    percent[2] *= white[0] / white[2];
    return labOfRelativeXyz(percent);
}

const Lab& at(const std::vector<Lab>& lab, int row) {
    return lab[static_cast<std::size_t>(row)];
}

void addReadingsOfLab(const ReadSide& side, std::vector<Reading>& readings) {
    for (const Encoding& encoding : kEncodings) {
        if (!canBe(encoding, side.lab))
            continue;
        readings.push_back({encoding.words, [&](int row) {
                                const Lab& lab = at(side.lab, row);
                                return Lab{lab[0] * encoding.lightnessFactor,
                                           lab[1] * encoding.factor + encoding.offset,
                                           lab[2] * encoding.factor + encoding.offset};
                            }});
    }
}

// Neighbouring whites, such as D55 beside D50, are no further apart than papers are.
constexpr const char* kFarWhites[] = {"A", "C", "D50", "D65", "D75", "E"};
constexpr double kFarWhite = 0.1; // of Z

// Whether colours show the white that they are on, as greys do and colours of several hues. Those of one hue,
// such as skin, are all off alike for many reasons.
bool showWhite(const std::vector<Lab>& colors) {
    double a = 0.0;
    double b = 0.0;
    double chroma = 0.0;
    for (const Lab& color : colors) {
        a += color[1];
        b += color[2];
        chroma += std::hypot(color[1], color[2]);
    }
    return chroma < kGreyChroma * static_cast<double>(colors.size()) || std::hypot(a, b) < kOneHue * chroma;
}

void addReadingsOnWhites(const ReadSide& side, std::vector<Reading>& readings) {
    const std::array<double, 3> own = side.conditions->publishedWhite();
    const bool isTenDegree = side.conditions->observer() == "10 degree";
    for (const char* name : kFarWhites) {
        const std::optional<std::array<double, 3>> white = publishedWhite(name, isTenDegree);
        if (!white || std::abs((*white)[2] / own[2] - 1.0) < kFarWhite)
            continue;
        readings.push_back({std::string("were on the white of ") + name,
                            [&side, own, white](int row) { return onWhite(at(side.lab, row), own, *white); },
                            kMuchSmallerByWhite});
    }
}

Lab withFactor(const Lab& lab, double factor) {
    std::array<double, 3> percent = relativeXyzOf(lab);
    for (double& value : percent)
        value *= factor;
    return labOfRelativeXyz(percent);
}

// Of which each row is so many times as light; nothing where the lightest would not look like paper or a
// good part of it.
void addReadingWithFactor(const ReadSide& side, double factor, const std::string& words,
                          const char* otherWords, std::vector<Reading>& readings) {
    double lightest = 0.0;
    for (const Lab& color : side.lab)
        lightest = std::max(lightest, withFactor(color, factor)[0]);
    if (lightest >= kSmallestLightestLightness && lightest <= kLargestLightness)
        readings.push_back({words, [&side, factor](int row) { return withFactor(at(side.lab, row), factor); },
                            kMuchSmaller, otherWords});
}

void addReadingsOfSpectra(const ReadSide& side, std::vector<Reading>& readings) {
    const auto labAt = [&side](SpectralReading reading) {
        return
            [&side, reading](int row) { return labOfSpectrum(side.chart, row, *side.conditions, reading); };
    };
    readings.push_back({"were in the opposite order of the bands", labAt({true, 0})});
    readings.push_back({"belonged to the next longer wavelengths", labAt({false, 1})});
    readings.push_back({"belonged to the next shorter wavelengths", labAt({false, -1})});
    addReadingWithFactor(side, 100.0, "were multiplied by 100", "divided by 100", readings);
    addReadingWithFactor(side, 0.01, "were divided by 100", nullptr, readings);
}

// @param whiteShows in the other side.
std::vector<Reading> readingsOf(const ReadSide& side, bool whiteShows) {
    std::vector<Reading> readings;
    if (side.source == ColorSource::lab)
        addReadingsOfLab(side, readings);
    if (side.conditions == nullptr)
        return readings;
    if (side.source == ColorSource::spectra) {
        addReadingsOfSpectra(side, readings);
        return readings;
    }
    if (whiteShows)
        addReadingsOnWhites(side, readings);
    if (side.source == ColorSource::xyz)
        readings.push_back({"had X and Z exchanged", [&side](int row) {
                                return withXAndZExchanged(at(side.lab, row),
                                                          side.conditions->publishedWhite());
                            }});
    return readings;
}

std::vector<RowPair> evenlyChosen(const std::vector<RowPair>& pairs) {
    const std::size_t step = (pairs.size() + kMostPairs - 1) / kMostPairs;
    std::vector<RowPair> chosen;
    for (std::size_t i = 0; i < pairs.size(); i += step)
        chosen.push_back(pairs[i]);
    return chosen;
}

class OtherReadings {
public:
    OtherReadings(const ReadSide& one, const ReadSide& other, const std::vector<RowPair>& all, bool light,
                  const std::function<double(const Lab&, const Lab&)>& difference)
        : measured(one), reference(other), pairs(evenlyChosen(all)),
          luminanceRatio(light ? ratioOfWhites(all) : 1.0), deltaE(difference) {}

    std::vector<Finding> find() {
        const auto labOfMeasured = [this](int row) { return at(measured.lab, row); };
        const auto labOfReference = [this](int row) { return at(reference.lab, row); };
        median = medianOf(labOfMeasured, labOfReference);
        if (!(median > kLeastMedian))
            return {};
        for (const Reading& reading : readingsOf(measured, showWhite(pairedOf(reference))))
            take(measured, reading, medianOf(reading.labOf, labOfReference), 0.0);
        for (const Reading& reading : readingsOf(reference, showWhite(pairedOf(measured))))
            take(reference, reading, medianOf(labOfMeasured, reading.labOf), kBetter * median);
        takeLuminance(labOfReference);
        if (words.empty())
            return {};
        return {{Finding::Severity::warning, Finding::Kind::otherReading,
                 words + ", the median difference would be " + detail::generalText(best, 3) + " instead of " +
                     detail::generalText(median, 3) + "; check how both files were written"}};
    }

private:
    using Reader = std::function<Lab(int)>;

    // The colours of a side that are compared.
    std::vector<Lab> pairedOf(const ReadSide& side) const {
        std::vector<Lab> colors;
        for (const RowPair& pair : pairs)
            colors.push_back(at(side.lab, &side == &measured ? pair.measured : pair.reference.front()));
        return colors;
    }

    double medianOf(const Reader& labOfMeasured, const Reader& labOfReference) const {
        std::vector<double> totals;
        for (const RowPair& pair : pairs) {
            Lab mean{};
            for (const int row : pair.reference) {
                const Lab lab = labOfReference(row);
                for (std::size_t i = 0; i < mean.size(); ++i)
                    mean[i] += lab[i] / static_cast<double>(pair.reference.size());
            }
            totals.push_back(deltaE(labOfMeasured(pair.measured), mean));
        }
        return statistics(totals).median;
    }

    // The luminance of the lightest sample of the reference as a multiple of that of its counterpart.
    double ratioOfWhites(const std::vector<RowPair>& all) const {
        const auto luminance = [](const Lab& color) { return luminanceOf(color[0]); };
        const RowPair& white =
            *std::max_element(all.begin(), all.end(), [&](const RowPair& left, const RowPair& right) {
                return at(reference.lab, left.reference.front())[0] <
                       at(reference.lab, right.reference.front())[0];
            });
        return luminance(at(reference.lab, white.reference.front())) /
               luminance(at(measured.lab, white.measured));
    }

    // Displays and lamps of other luminance agree but for a factor.
    void takeLuminance(const Reader& labOfReference) {
        if (!std::isfinite(luminanceRatio) || !(std::abs(std::log(luminanceRatio)) > kOtherLuminance))
            return;
        const Reading brought = {
            "had " + detail::generalText(luminanceRatio, 4) +
                " times the luminance, as that of the two whites differs",
            [this](int row) { return withFactor(at(measured.lab, row), luminanceRatio); },
            kMuchSmallerByWhite, nullptr};
        take(measured, brought, medianOf(brought.labOf, labOfReference), 0.0);
    }

    // @param margin by which it must be better than the best so far: one side read in one way agrees about as
    // well as the other one read in the opposite way.
    void take(const ReadSide& side, const Reading& reading, double found, double margin) {
        if (!(found < reading.muchSmaller * median) || (!words.empty() && found >= best - margin))
            return;
        best = found;
        words = "if the " + std::string(wordsFor(side.source)) + " of " + printable(side.chart.name) + " " +
                reading.words;
        const ReadSide& other = &side == &measured ? reference : measured;
        if (reading.otherWords != nullptr && other.source == ColorSource::spectra && holdsNothingDark(other))
            words += ", or those of " + printable(other.chart.name) + " " + reading.otherWords;
    }

    static bool holdsNothingDark(const ReadSide& side) {
        return std::all_of(side.lab.begin(), side.lab.end(),
                           [](const Lab& color) { return color[0] > kNothingDark; });
    }

    static const char* wordsFor(ColorSource source) {
        switch (source) {
        case ColorSource::spectra:
            return "spectral values";
        case ColorSource::lab:
            return "Lab values";
        case ColorSource::xyz:
            break;
        }
        return "XYZ values";
    }

    const ReadSide& measured;
    const ReadSide& reference;
    std::vector<RowPair> pairs;
    double luminanceRatio;
    const std::function<double(const Lab&, const Lab&)>& deltaE;
    double median = 0.0;
    double best = 0.0;
    std::string words; // of the best reading; empty where there is none
};

} // namespace

std::vector<Finding> otherReadings(const ReadSide& measured, const ReadSide& reference,
                                   const std::vector<RowPair>& pairs, bool areLight,
                                   const std::function<double(const Lab&, const Lab&)>& deltaE) {
    if (pairs.size() < kFewestPairs)
        return {};
    return OtherReadings(measured, reference, pairs, areLight, deltaE).find();
}

} // namespace qxcms::qc
