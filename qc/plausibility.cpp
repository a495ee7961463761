#include "qc/plausibility.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "qc/device_values.h"
#include "qc/printable_text.h"
#include "qc/published_whites.h"
#include "qc/relative_xyz.h"

namespace qxcms::qc {

namespace {

using Severity = Finding::Severity;
using Kind = Finding::Kind;

// Reflecting and transmitting samples stay below these; bright fluorescent colours come near.
constexpr double kLargestLightness = 105.0;
constexpr double kLargestY = 120.0;

// Tristimulus values whose white has Y = 1 stay below this.
constexpr double kLargestUnitY = 2.0;

// Noise and the black level of an instrument reach this far below zero, fluorescence this far above 1.
constexpr double kSmallestFraction = -0.005;
constexpr double kLargestFraction = 2.0;

// What a spectrum must cover to say much about its colour.
constexpr int kFirstNeededNm = 400;
constexpr int kLastNeededNm = 700;

constexpr int kCoarseStepNm = 20;
// CIEDE2000 of the 24 patches of a ColorChecker (N. Ohta, 1997), D50 and 2 degree: every 20 nm from 380 nm
// against every 5 nm (plausibility.costOfTwentyNanometres_isThatOfTheColorChecker).
constexpr const char* kMeanCoarseCost = "0.21";
constexpr const char* kLargestCoarseCost = "0.53";

// A line of a lamp or the narrow band of a display stands out this much from what is measured so far beside
// it. Reflectances, also of the purest inks and of fluorescent colours, change more slowly.
constexpr double kLineRatio = 1.6;
constexpr int kLineNearestNm = 15;
constexpr int kLineFarthestNm = 25;
// Nothing is a line that is small within its spectrum, or as small as the noise of dark samples.
constexpr double kSmallestLine = 0.02;
constexpr double kSmallestLineShare = 0.25;
// Rows that reach this part of the largest value of the chart tell what kind of measurement it is.
constexpr double kLightRowShare = 0.1;

// As a part of the full device value.
constexpr double kDeviceTolerance = 0.003;
constexpr double kNearlyFull = 0.9;
constexpr double kNearlyNone = 0.1;

// White against the sum of red, green and blue, as a part of white. Displays stay within, also with some
// cross-talk; of prints the sum is about two thirds.
constexpr double kSumTolerance = 0.05;

constexpr double kLightnessTolerance = 0.5;
constexpr double kLabTolerance = 0.5;
// What rounding to whole numbers makes of Lab at most.
constexpr double kWholeLabError = 0.87;
// What rounding makes of XYZ in percent of the white, in units of their last decimal: a half, more for the Z
// of whites of low colour temperature.
constexpr double kXyzRounding = 0.7;

// Rounding and noise of dark samples bring a* and b* so far beyond what is possible.
constexpr double kImpossibleTolerance = 5.0;
constexpr double kLabOffset = 128.0; // of a* and b* in bytes
constexpr double kPaperOffset = 16.0;
// No light colour is as red and as yellow at once: the optimal colours of Y = 66 (L* 85) end far below.
constexpr double kLightRow = 85.0;
constexpr double kLargestLightAxis = 60.0;
// No chart is as dark throughout.
constexpr double kDarkChart = 2.0;

// Papers, also those with much brightener or slightly toned ones, lie within these on their own white.
constexpr double kLightPaper = 80.0;
constexpr double kLargestPaperChroma = 15.0;
constexpr double kLargestPaperA = 4.0;
constexpr double kSmallestPaperB = -10.0;
constexpr double kLargestPaperB = 6.0;

// Much brightener comes near the difference of D50, D55 and E.
constexpr const char* kFarWhites[] = {"A", "C", "D50", "D65", "D75"};

// Papers absorb the violet, and none of them the far red; light material that is dyed blue stays below.
constexpr int kVioletNm = 390;
constexpr double kVioletShare = 1.25;
constexpr double kReversiblePaper = 70.0;

// Further than the pure colours of one kind of prints or displays lie from those of another, in degrees.
constexpr double kOtherHue = 60.0;

// What conversions leave of a Lab of 0 0 0, with the slope of CIE 15 in four digits.
constexpr double kNothing = 1e-5;

// Fewer equal Lab or XYZ rows may be one colour measured again, rounded.
constexpr int kFewestEqualRows = 4;

Finding warning(Kind kind, const std::string& text) {
    return {Severity::warning, kind, text};
}

std::string number(double value) {
    return detail::generalText(value, 6);
}

// "1,545".
std::string counted(int count) {
    std::string text = std::to_string(count);
    for (std::size_t end = text.size(); end > 3; end -= 3)
        text.insert(end - 3, 1, ',');
    return text;
}

// The rows that something holds for, and the one where it is most so.
class RowsFound {
public:
    // @param excess how much the row shows it. @param shown the value to tell of the row.
    void add(int row, double excess, double shown) {
        if (count == 0)
            first = row;
        if (count == 0 || excess > worstExcess) {
            worstExcess = excess;
            worst = row;
            worstShown = shown;
        }
        ++count;
    }

    int rows() const { return count; }
    int worstRow() const { return worst; }
    double most() const { return worstShown; }
    bool empty() const { return count == 0; }

    // "row 3 and 11 more of 24, most in row 7".
    std::string words(const Chart& chart) const {
        const std::string text = "row " + std::to_string(first + 1);
        const std::string all = " of " + counted(chart.rows());
        if (count == 1)
            return chart.rows() == 1 ? text : text + " alone" + all;
        return text + " and " + counted(count - 1) + " more" + all + ", most in row " +
               std::to_string(worst + 1);
    }

    // The same behind the file, and the value of the row with the most.
    std::string told(const Chart& chart, const std::string& symbol) const {
        return printable(chart.name) + ": " + words(chart) + ": " + symbol + number(worstShown);
    }

private:
    int count = 0;
    int first = -1;
    int worst = -1;
    double worstExcess = 0.0;
    double worstShown = 0.0;
};

double distance(const Lab& left, const Lab& right) {
    return std::hypot(left[0] - right[0], left[1] - right[1], left[2] - right[2]);
}

std::size_t indexOf(int row) {
    return static_cast<std::size_t>(row);
}

// --- Device values -----------------------------------------------------------------------------------------

using Columns = std::vector<std::int32_t>;

// The device values of a chart as parts of the full ink; light that is missing from full red, green and blue
// counts as cyan, magenta and yellow ink.
class Inks {
public:
    explicit Inks(const Chart& chart) : inspected(chart) {
        const TCgatsTableHeader& header = chart.header();
        if (chart.document->ContainsProcessColors(chart.table))
            columns.assign(header.GetColorColumns(), header.GetColorColumns() + header.GetNrColors());
        if (columns.empty())
            takeRgb();
        spots.assign(header.GetSpotColumns(), header.GetSpotColumns() + header.GetNrSpots());
        if (!isUsable(columns) || !isUsable(spots))
            columns.clear();
        full = columns.empty() ? 0.0 : fullScale();
    }

    // False where nothing is known of the rows.
    bool areKnown() const { return full > 0.0; }
    bool areLight() const { return rgb; }
    // Whether the first three are cyan, magenta and yellow.
    bool haveKnownColors() const {
        return rgb || inspected.header().GetColorKind() == TCgatsTableHeader::kCmyk ||
               inspected.header().GetColorKind() == TCgatsTableHeader::kNColors;
    }

    // Whether the columns themselves say so.
    bool haveNamedColors() const {
        return rgb || inspected.header().GetColorKind() == TCgatsTableHeader::kCmyk;
    }

    // Spot inks may be lighter than the paper (white ink) or of any hue.
    bool useSpots(int row) const {
        return std::any_of(spots.begin(), spots.end(),
                           [&](int column) { return !(value(row, column) <= kDeviceTolerance * full); });
    }

    bool isPaper(int row) const {
        const std::vector<double> parts = of(row);
        return !useSpots(row) &&
               std::all_of(parts.begin(), parts.end(), [](double part) { return part <= kDeviceTolerance; });
    }

    std::vector<double> of(int row) const {
        std::vector<double> parts;
        for (const std::int32_t column : columns) {
            const double part = value(row, column) / full;
            parts.push_back(rgb ? 1.0 - part : part);
        }
        return parts;
    }

private:
    double value(int row, int column) const { return inspected.data().GetValues(column)->GetDouble(row); }

    void takeRgb() {
        for (const char* name : {"RGB_R", "RGB_G", "RGB_B"})
            columns.push_back(inspected.document->GetFieldNameIndex(inspected.table, name));
        rgb = isUsable(columns);
    }

    // Every column is there and holds numbers.
    bool isUsable(const Columns& wanted) const {
        return std::all_of(wanted.begin(), wanted.end(), [&](int column) {
            return column >= 0 &&
                   inspected.header().GetField(column)->GetDataType() != TCgatsField::kString &&
                   std::none_of(inspected.doubts.begin(), inspected.doubts.end(),
                                [&](const DoubtfulValue& doubt) { return doubt.column == column; });
        });
    }

    // The full value of the scale; 0 where it cannot be told.
    double fullScale() const {
        double largest = 0.0;
        for (int row = 0; row < inspected.rows(); ++row)
            for (const std::int32_t column : columns)
                largest = std::max(largest, value(row, column));
        return std::max(deviceRange(largest), 0.0);
    }

    const Chart& inspected;
    Columns columns;
    Columns spots;
    bool rgb = false;
    double full = 0.0;
};

// --- Spectra -----------------------------------------------------------------------------------------------

// What the spectra of a chart show.
class Spectra {
public:
    explicit Spectra(const Chart& chart)
        : wavelengths(indexOf(chart.header().GetNrWaveLengths())), rows(chart.rows()) {
        chart.document->GetWaveLengths(chart.table, wavelengths.data());
        std::vector<double> first(wavelengths.size());
        chart.document->GetSpectrum(chart.table, 0, first.data());
        findNeighbours();
        std::vector<double> values(wavelengths.size());
        for (int row = 0; row < rows; ++row) {
            chart.document->GetSpectrum(chart.table, row, values.data());
            allEqual = allEqual && values == first;
            inspect(row, values);
        }
        allZero = allEqual && std::all_of(first.begin(), first.end(), [](double v) { return v == 0.0; });
    }

    const std::vector<int>& bands() const { return wavelengths; }
    bool areEqual() const { return allEqual && rows > 1; }
    bool areZero() const { return allZero; }
    bool isZero(int row) const { return zeroRows[indexOf(row)]; }
    const RowsFound& negative() const { return below; }
    const RowsFound& large() const { return above; }
    double largest() const {
        return largestOfRow.empty() ? 0.0 : *std::max_element(largestOfRow.begin(), largestOfRow.end());
    }

    // The rows that hold lines, when they are at least half of those that are not dark and a quarter of all;
    // else none.
    RowsFound lines() const {
        const double light = kLightRowShare * largest();
        int lightRows = 0;
        RowsFound withLine;
        for (int row = 0; row < rows; ++row) {
            const double most = largestOfRow[indexOf(row)];
            if (most < light)
                continue;
            ++lightRows;
            if (hasLine[indexOf(row)])
                withLine.add(row, most, most);
        }
        const bool isMost = 2 * withLine.rows() >= lightRows && 4 * withLine.rows() >= rows;
        return isMost ? withLine : RowsFound();
    }

private:
    struct Neighbours {
        std::size_t band;
        std::size_t below;
        std::size_t above;
    };

    bool isBeside(std::size_t lower, std::size_t upper) const {
        const int distanceNm = wavelengths[upper] - wavelengths[lower];
        return distanceNm >= kLineNearestNm && distanceNm <= kLineFarthestNm;
    }

    void findNeighbours() {
        const std::size_t count = wavelengths.size();
        for (std::size_t band = 0; band < count; ++band) {
            std::size_t lower = band;
            while (lower > 0 && wavelengths[band] - wavelengths[lower] < kLineNearestNm)
                --lower;
            std::size_t upper = band;
            while (upper + 1 < count && wavelengths[upper] - wavelengths[band] < kLineNearestNm)
                ++upper;
            if (isBeside(lower, band) && isBeside(band, upper))
                neighbours.push_back({band, lower, upper});
        }
    }

    void inspect(int row, const std::vector<double>& values) {
        const auto [smallest, most] = std::minmax_element(values.begin(), values.end());
        zeroRows.push_back(*smallest == 0.0 && *most == 0.0);
        if (*smallest < kSmallestFraction)
            below.add(row, -*smallest, *smallest);
        if (*most > kLargestFraction)
            above.add(row, *most, *most);
        const double enough = std::max(kSmallestLine, kSmallestLineShare * *most);
        largestOfRow.push_back(*most);
        hasLine.push_back(std::any_of(neighbours.begin(), neighbours.end(), [&](const Neighbours& n) {
            return values[n.band] >= enough &&
                   values[n.band] >= kLineRatio * std::max(values[n.below], values[n.above]);
        }));
    }

    std::vector<int> wavelengths;
    int rows;
    std::vector<Neighbours> neighbours;
    std::vector<double> largestOfRow;
    std::vector<bool> hasLine;
    std::vector<bool> zeroRows;
    RowsFound below;
    RowsFound above;
    bool allEqual = true;
    bool allZero = false;
};

// --- The findings ------------------------------------------------------------------------------------------

// Looks at one chart and collects what it finds.
class Inspection {
public:
    Inspection(const Chart& inspected, ColorSource comparedSource, const std::vector<Lab>& labOfRows,
               const std::vector<Lab>& labOfXyz, const std::array<double, 3>& ownWhite)
        : chart(inspected), source(comparedSource), lab(labOfRows), labFromXyz(labOfXyz),
          whiteOfLab(ownWhite), inks(inspected) {
        if (source == ColorSource::spectra)
            spectra.emplace(chart);
    }

    std::vector<Finding> run(bool isEmission) {
        const bool isLight = inspectEmission(isEmission);
        if (source == ColorSource::xyz)
            inspectXyzScale();
        if (!isLight)
            inspectLightness();
        if (spectra)
            inspectSpectra(isLight);
        else
            inspectEqualRows();
        inspectUnmeasured();
        if (source == ColorSource::lab)
            inspectLabScale();
        inspectPaper();
        if (!isLight)
            inspectPaperColor();
        if (!inspectLabAgainstXyz() && source == ColorSource::lab)
            inspectHues();
        if (!explainsHues())
            inspectOtherHues();
        return findings;
    }

private:
    void tell(Kind kind, const std::string& text) { findings.push_back(warning(kind, text)); }

    // "its 24 rows are".
    std::string itsRows() const {
        return chart.rows() == 1 ? "its row is" : "its " + counted(chart.rows()) + " rows are";
    }

    // "the bands of all 24 rows".
    std::string bandsOfAll() const {
        return chart.rows() == 1 ? "the bands of its row"
                                 : "the bands of all " + counted(chart.rows()) + " rows";
    }

    std::string fileAnd(const std::string& text) const { return printable(chart.name) + ": " + text; }

    // --- Light

    bool inspectEmission(bool isDeclared) {
        const std::string found = isDeclared ? "the file says that it holds measurements of light sources or "
                                               "displays"
                                             : signOfEmission();
        if (found.empty())
            return false;
        tell(Kind::emission, fileAnd(found + "; " + itsRows() +
                                     " read as samples that reflect, so compare them only with measurements "
                                     "of light that are scaled alike"));
        return true;
    }

    // Empty where nothing shows it.
    std::string signOfEmission() const {
        const std::string found = spectra ? signInSpectra() : "";
        return found.empty() ? signInDeviceValues() : found;
    }

    std::string signInSpectra() const {
        // Beyond 200 percent nothing reflects; fractions above 2 may be percent that was not recognised.
        if (chart.data().IsSpectralPercent() && 4 * spectra->large().rows() >= chart.rows())
            return "spectra that reach beyond 200 percent, as only those of light do: " +
                   spectra->large().words(chart) + " (" + number(100.0 * spectra->largest()) + " at most)";
        const RowsFound lines = spectra->lines();
        if (!lines.empty())
            return "narrow lines as in the spectra of light sources and displays: " + lines.words(chart) +
                   " (values up to " + number(spectra->largest()) + ")";
        return "";
    }

    // The white of a display, or a good part of all colours, is lighter than any paper; or its primaries add
    // up to its white.
    std::string signInDeviceValues() const {
        if (!inks.areKnown() || !inks.areLight())
            return "";
        RowsFound bright;
        bool whiteIsBright = false;
        for (int row = 0; row < chart.rows(); ++row) {
            const double luminance = luminanceOf(lab[indexOf(row)][0]);
            if (!(luminance > kLargestY))
                continue;
            bright.add(row, luminance, luminance);
            whiteIsBright = whiteIsBright || inks.isPaper(row);
        }
        if (whiteIsBright || (bright.rows() > 1 && 10 * bright.rows() >= chart.rows()))
            return "Y above 120 on a white of 100 with RGB device values, as in measurements of a display: " +
                   bright.words(chart) + " (" + number(bright.most()) + ")";
        return signInSums();
    }

    // Inks take light away: those of red, green and blue prints sum up to far less than the paper.
    std::string signInSums() const {
        std::array<int, 4> found = {-1, -1, -1, -1};
        int black = -1;
        for (int row = chart.rows() - 1; row >= 0; --row) {
            const std::vector<double> parts = inks.of(row);
            const std::array<bool, 3> on = {parts[0] <= kDeviceTolerance, parts[1] <= kDeviceTolerance,
                                            parts[2] <= kDeviceTolerance};
            const std::array<bool, 3> off = {parts[0] >= 1.0 - kDeviceTolerance,
                                             parts[1] >= 1.0 - kDeviceTolerance,
                                             parts[2] >= 1.0 - kDeviceTolerance};
            for (std::size_t i = 0; i < 3; ++i) {
                if (on[i] && off[(i + 1) % 3] && off[(i + 2) % 3])
                    found[i] = row;
            }
            if (on[0] && on[1] && on[2])
                found[3] = row;
            if (off[0] && off[1] && off[2])
                black = row;
        }
        if (std::find(found.begin(), found.end(), -1) != found.end() || !addUp(found, black))
            return "";
        return "row " + std::to_string(found[3] + 1) + ", white, has the sum of rows " +
               std::to_string(found[0] + 1) + ", " + std::to_string(found[1] + 1) + " and " +
               std::to_string(found[2] + 1) + ", red, green and blue (Y " +
               number(luminanceOf(lab[indexOf(found[3])][0])) +
               "), as on a display or in a computed RGB space";
    }

    // @param rows those of red, green, blue and white. @param black that of black, -1 where there is none.
    bool addUp(const std::array<int, 4>& rows, int black) const {
        const auto xyz = [&](int row) {
            return row < 0 ? std::array<double, 3>() : relativeXyzOf(lab[indexOf(row)]);
        };
        const std::array<double, 3> white = xyz(rows[3]);
        // Rows that are all equal add up as well.
        if (!(white[1] > 2.0 * xyz(black)[1]))
            return false;
        for (std::size_t i = 0; i < 3; ++i) {
            const double sum = xyz(rows[0])[i] + xyz(rows[1])[i] + xyz(rows[2])[i] - 2.0 * xyz(black)[i];
            if (!(std::abs(sum - white[i]) <= kSumTolerance * white[i]))
                return false;
        }
        return true;
    }

    void inspectLightness() {
        const bool byY = source == ColorSource::xyz;
        RowsFound light;
        for (int row = 0; row < chart.rows(); ++row) {
            const double lightness = lab[indexOf(row)][0];
            const double value = byY ? luminanceOf(lightness) : lightness;
            if (value > (byY ? kLargestY : kLargestLightness))
                light.add(row, value, value);
        }
        if (light.empty())
            return;
        tell(Kind::tooLight,
             light.told(chart, byY ? "Y " : "L* ") + ", but nothing that reflects exceeds " +
                 number(byY ? kLargestY : kLargestLightness) +
                 "; check the scale of the values and whether light was measured instead of a print");
    }

    // --- XYZ

    double rawY(int row) const {
        return chart.data().GetValues(chart.header().GetXyzColumns()[1])->GetDouble(row);
    }

    int rowOfLargestY() const {
        int largest = 0;
        for (int row = 1; row < chart.rows(); ++row)
            largest = rawY(row) > rawY(largest) ? row : largest;
        return largest;
    }

    // 100 for XYZ of 0 to 1, else 1.
    double scaleOfXyz() const {
        const double largest = rawY(rowOfLargestY());
        return largest > 0.0 && largest < kLargestUnitY ? 100.0 : 1.0;
    }

    // To how many decimals the values of three columns are written.
    int decimalsOf(const std::int32_t* columns) const {
        constexpr int kMostDecimals = 6;
        constexpr double kBinaryError = 1e-7;
        int decimals = 0;
        double unit = 1.0;
        for (int i = 0; i < 3; ++i) {
            for (int row = 0; row < chart.rows() && decimals < kMostDecimals; ++row) {
                const double value = chart.data().GetValues(columns[i])->GetDouble(row);
                while (decimals < kMostDecimals &&
                       std::abs(value * unit - std::round(value * unit)) > kBinaryError * unit) {
                    unit *= 10.0;
                    ++decimals;
                }
            }
        }
        return decimals;
    }

    void inspectXyzScale() {
        if (scaleOfXyz() == 1.0)
            return;
        const int largestRow = rowOfLargestY();
        const double largest = rawY(largestRow);
        const std::string text = placeOf(chart, largestRow) + " holds the largest Y of " +
                                 counted(chart.rows()) + ", " + number(largest) + "; ";
        // Whether the Lab at hand were made of the values times 100.
        const bool isBrought = luminanceOf(lab[indexOf(largestRow)][0]) > 10.0 * largest;
        if (isBrought)
            findings.push_back(
                {Severity::note, Kind::xyzScale,
                 text + "XYZ are taken to be on a scale of 0 to 1 and are read times 100; if the samples are "
                        "that dark on a scale of 100, add a light patch"});
        else
            tell(Kind::xyzScale, text + "XYZ are expected on the scale where white has Y = 100");
    }

    // --- Spectra

    void inspectSpectra(bool isLight) {
        if (spectra->areEqual())
            tellEqual("spectrum", spectra->areZero());
        inspectBands();
        if (!spectra->negative().empty())
            tell(Kind::negativeReflectance,
                 spectra->negative().told(chart, "reflectance ") +
                     ", but none lies below 0; check the black calibration of the instrument and the signs");
        if (!isLight && !spectra->large().empty())
            tell(Kind::spectralScale, spectra->large().told(chart, "reflectance ") + ", " + remedyOfScale());
    }

    std::string remedyOfScale() const {
        const std::string limit = "but reflectances above 2 do not occur, not even on fluorescent paper; ";
        if (chart.data().IsSpectralPercent())
            return limit + "correct these values (they are told after the division of percent by 100)";
        return limit + "none of the first five rows, which alone decide on percent, holds a value above 10: "
                       "if the table is in percent, move a light patch to the top, else check its scale";
    }

    void inspectBands() {
        const std::vector<int>& bands = spectra->bands();
        if (bands.front() > kFirstNeededNm || bands.back() < kLastNeededNm)
            tell(Kind::narrowSpectra,
                 fileAnd(bandsOfAll() + " reach from " + std::to_string(bands.front()) + " to " +
                         std::to_string(bands.back()) +
                         " nm and do not cover 400 to 700 nm; the values outside are held constant, which "
                         "can change the colours, so measure the whole range where you can"));
        const int gap = widestGap();
        if (gap >= kCoarseStepNm)
            tell(Kind::coarseSpectra,
                 fileAnd(bandsOfAll() + " are " + (isUniform(gap) ? "" : "up to ") + std::to_string(gap) +
                         " nm apart; interpolating from 20 nm costs about " + kMeanCoarseCost +
                         " on average and up to " + kLargestCoarseCost +
                         " Delta E 00 on the 24 patches of a ColorChecker" +
                         (gap > kCoarseStepNm ? ", and wider gaps cost more" : "") +
                         "; measure every 10 nm where smaller differences matter"));
    }

    // Between neighbours that overlap what must be covered; 0 where there are none.
    int widestGap() const {
        const std::vector<int>& bands = spectra->bands();
        int widest = 0;
        for (std::size_t i = 1; i < bands.size(); ++i) {
            if (bands[i] > kFirstNeededNm && bands[i - 1] < kLastNeededNm)
                widest = std::max(widest, bands[i] - bands[i - 1]);
        }
        return widest;
    }

    bool isUniform(int gap) const {
        const std::vector<int>& bands = spectra->bands();
        for (std::size_t i = 1; i < bands.size(); ++i) {
            if (bands[i] - bands[i - 1] != gap)
                return false;
        }
        return true;
    }

    // --- Equal rows

    void tellEqual(const char* what, bool isNothing) {
        tell(Kind::equalSpectra,
             fileAnd("row 1 and all others of " + counted(chart.rows()) + " hold the same " + what +
                     (isNothing ? ", 0 throughout" : "") +
                     "; it looks like a target without measured values, so check that it is the right file"));
    }

    void inspectEqualRows() {
        if (chart.rows() < kFewestEqualRows ||
            std::any_of(lab.begin(), lab.end(), [&](const Lab& row) { return row != lab.front(); }))
            return;
        const Lab& first = lab.front();
        tellEqual(source == ColorSource::xyz ? "XYZ" : "Lab",
                  std::all_of(first.begin(), first.end(), [](double v) { return v == 0.0; }));
    }

    // --- Device values

    struct Paper {
        int row = -1; // of the lightest, -1 where there is none
        int count = 0;
    };

    Paper findPaper() const {
        Paper paper;
        if (!inks.areKnown())
            return paper;
        for (int row = 0; row < chart.rows(); ++row) {
            if (!inks.isPaper(row))
                continue;
            ++paper.count;
            if (paper.row < 0 || lab[indexOf(row)][0] > lab[indexOf(paper.row)][0])
                paper.row = row;
        }
        return paper;
    }

    void inspectPaper() {
        const Paper paper = findPaper();
        if (paper.row >= 0)
            inspectLighterThan(paper.row, paper.count);
    }

    std::string paperWords() const {
        return inks.areLight() ? ", the patch of full red, green and blue" : ", the patch without ink";
    }

    void inspectPaperColor() {
        const Paper paper = findPaper();
        if (paper.row < 0)
            return;
        if (source == ColorSource::spectra)
            inspectPaperSpectrum(paper.row);
        else
            inspectPaperWhite(paper.row);
    }

    void inspectPaperSpectrum(int row) {
        const std::vector<int>& bands = spectra->bands();
        if (bands.front() > kVioletNm || bands.back() < kLastNeededNm ||
            lab[indexOf(row)][0] < kReversiblePaper)
            return;
        std::vector<double> values(bands.size());
        chart.document->GetSpectrum(chart.table, row, values.data());
        if (!(values.front() > kVioletShare * values.back()))
            return;
        tell(Kind::bandOrder, placeOf(chart, row) + paperWords() + ", reflects " + number(values.front()) +
                                  " at " + std::to_string(bands.front()) + " nm, but only " +
                                  number(values.back()) + " at " + std::to_string(bands.back()) +
                                  " nm; check that the bands do not stand in the opposite order");
    }

    static bool isPaperColor(const Lab& color) {
        return std::abs(color[1]) <= kLargestPaperA && color[2] >= kSmallestPaperB &&
               color[2] <= kLargestPaperB;
    }

    void inspectPaperWhite(int row) {
        const Lab& color = lab[indexOf(row)];
        if (!(whiteOfLab[1] > 0.0) || color[0] < kLightPaper ||
            !(std::hypot(color[1], color[2]) > kLargestPaperChroma))
            return;
        const std::string remedy = remedyForPaper(color);
        if (!remedy.empty())
            tell(Kind::otherWhite, placeOf(chart, row) + paperWords() + ", has a* " + number(color[1]) +
                                       " and b* " + number(color[2]) + ", as " + remedy);
    }

    // Empty where nothing explains it.
    std::string remedyForPaper(const Lab& color) const {
        const std::array<double, 3> percent = relativeXyzOf(color);
        const std::array<double, 3> xyz = {percent[0] * whiteOfLab[0] / 100.0, percent[1],
                                           percent[2] * whiteOfLab[2] / 100.0};
        const auto colorOn = [](double x, double y, double z, const std::array<double, 3>& other) {
            return labOfRelativeXyz({100.0 * x / other[0], y, 100.0 * z / other[2]});
        };
        if (source == ColorSource::xyz && isPaperColor(colorOn(xyz[2], xyz[1], xyz[0], whiteOfLab)))
            return "when X and Z are exchanged; check the columns XYZ_X and XYZ_Z";
        const char* nearest = nullptr;
        double least = 0.0;
        for (const char* name : kFarWhites) {
            const Lab other = colorOn(xyz[0], xyz[1], xyz[2], *publishedWhite(name, false));
            const double chroma = std::hypot(other[1], other[2]);
            if (isPaperColor(other) && (nearest == nullptr || chroma < least)) {
                nearest = name;
                least = chroma;
            }
        }
        return nearest == nullptr ? ""
                                  : std::string("on the white of ") + nearest +
                                        " instead of the one that it is read for; check the illuminant and "
                                        "the white of the values";
    }

    // --- Rows without values

    // Black, or as much of the other inks.
    bool isFullInk(int row) const {
        const std::vector<double> parts = inks.of(row);
        const auto isFull = [&](std::size_t i) { return i < parts.size() && parts[i] >= kNearlyFull; };
        return isFull(3) || (isFull(0) && isFull(1) && isFull(2)) || inks.useSpots(row);
    }

    bool isNothing(int row) const {
        if (spectra)
            return spectra->isZero(row);
        const Lab& color = lab[indexOf(row)];
        return std::all_of(color.begin(), color.end(), [](double v) { return std::abs(v) < kNothing; });
    }

    void inspectUnmeasured() {
        int count = 0;
        int first = -1;
        for (int row = 0; row < chart.rows(); ++row) {
            if (!isNothing(row))
                continue;
            ++count;
            if (first < 0 && !(inks.areKnown() && isFullInk(row)))
                first = row;
        }
        if (first < 0 || count == chart.rows())
            return;
        findings.push_back(
            {count == 1 && !inks.areKnown() ? Severity::note : Severity::warning, Kind::unmeasured,
             placeOf(chart, first) + (count == 1 ? "" : " and " + counted(count - 1) + " more") + ": " +
                 nothingOf() + ", as of samples that were not measured"});
    }

    const char* nothingOf() const {
        switch (source) {
        case ColorSource::spectra:
            return "the spectrum is 0 throughout";
        case ColorSource::lab:
            return "Lab is 0 0 0";
        case ColorSource::xyz:
            break;
        }
        return "XYZ is 0 0 0";
    }

    // --- Scale of Lab

    void inspectLabScale() {
        const RowsFound impossible = impossibleRows();
        const RowsFound light = lightRowsFarOff();
        if (impossible.rows() > 1 && 10 * impossible.rows() >= chart.rows())
            tellLabScale(impossible, "no light gives (X or Z would be below 0)");
        else if (!light.empty())
            tellLabScale(light, "no light sample has");
        else if (isDarkThroughout())
            tell(Kind::labScale,
                 fileAnd("L* is " + number(lightest()[0]) + " at most in " + counted(chart.rows()) +
                         " rows, as of Lab on a scale of 0 to 1; check the scale, L* of white "
                         "is 100"));
    }

    void tellLabScale(const RowsFound& rows, const std::string& why) {
        const Lab& color = lab[indexOf(rows.worstRow())];
        tell(Kind::labScale,
             fileAnd(rows.words(chart) + ": Lab " + number(color[0]) + ' ' + number(color[1]) + ' ' +
                     number(color[2]) + ", which " + why +
                     (isShifted()
                          ? "; all a* and b* look as if 128 had been added to them, so take it off again"
                          : "; check the scale of L*, a* and b*")));
    }

    // Z is 0 at a b* of 200 / 116 times L*, X at an a* of -500 / 116 times L* (CIE 15).
    RowsFound impossibleRows() const {
        RowsFound found;
        for (int row = 0; row < chart.rows(); ++row) {
            const Lab& color = lab[indexOf(row)];
            const double excess =
                std::max(color[2] - 200.0 / 116.0 * color[0], -color[1] - 500.0 / 116.0 * color[0]);
            if (excess > kImpossibleTolerance)
                found.add(row, excess, excess);
        }
        return found;
    }

    RowsFound lightRowsFarOff() const {
        RowsFound found;
        for (int row = 0; row < chart.rows(); ++row) {
            const Lab& color = lab[indexOf(row)];
            const double least = std::min(color[1], color[2]);
            if (least > kLargestLightAxis && (color[0] > kLightRow || (inks.areKnown() && inks.isPaper(row))))
                found.add(row, least, least);
        }
        return found;
    }

    Lab lightest() const {
        return *std::max_element(lab.begin(), lab.end(),
                                 [](const Lab& left, const Lab& right) { return left[0] < right[0]; });
    }

    bool isShifted() const {
        const Lab light = lightest();
        return std::none_of(lab.begin(), lab.end(),
                            [](const Lab& color) { return color[1] < 0.0 || color[2] < 0.0; }) &&
               std::abs(light[1] - kLabOffset) <= kPaperOffset &&
               std::abs(light[2] - kLabOffset) <= kPaperOffset;
    }

    bool isDarkThroughout() const {
        const double most = lightest()[0];
        return chart.rows() >= kFewestEqualRows && most > 0.0 && most <= kDarkChart &&
               std::any_of(lab.begin(), lab.end(), [&](const Lab& color) { return color != lab.front(); });
    }

    // @param paper the row of the lightest of so many papers.
    void inspectLighterThan(int paper, int papers) {
        const double lightness = lab[indexOf(paper)][0];
        RowsFound lighter;
        for (int row = 0; row < chart.rows(); ++row) {
            const double other = lab[indexOf(row)][0];
            if (!inks.useSpots(row) && other > lightness + kLightnessTolerance)
                lighter.add(row, other, other);
        }
        if (lighter.empty())
            return;
        tell(Kind::paperNotLightest,
             placeOf(chart, paper) +
                 (papers > 1 ? ", the lightest of " + counted(papers) + " patches" : ", the patch") +
                 (inks.areLight() ? " of full red, green and blue" : " without ink") + ", has L* " +
                 number(lightness) + ", but row " + std::to_string(lighter.worstRow() + 1) + " has L* " +
                 number(lighter.most()) + " (" + counted(lighter.rows()) +
                 (lighter.rows() == 1 ? " row is" : " rows are") +
                 " lighter); check that device values and measurements belong to the same rows");
    }

    // --- a* and b*

    // Exchanging a* and b* mirrors hue angles at 45 degrees. That shows where the two angles of a colour are
    // far apart; of cyan and red they are not.
    struct Primary {
        const char* name;
        bool cyan;
        bool magenta;
        bool yellow;
        double hue; // of prints and displays alike, in degrees
    };
    static constexpr Primary kPrimaries[] = {
        {"yellow", false, false, true, 92.0}, {"magenta", false, true, false, 345.0},
        {"green", true, false, true, 150.0},  {"blue", true, true, false, 298.0},
        {"cyan", true, false, false, 225.0},  {"red", false, true, true, 35.0}};
    static constexpr double kHueTolerance = 40.0;
    static constexpr double kSmallestChroma = 20.0;

    static bool isPure(const std::vector<double>& parts, const Primary& primary) {
        const bool used[] = {primary.cyan, primary.magenta, primary.yellow};
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const bool isUsed = i < 3 && used[i];
            if (isUsed ? parts[i] < kNearlyFull : parts[i] > kNearlyNone)
                return false;
        }
        return true;
    }

    static bool isNear(double hue, double expected, double tolerance = kHueTolerance) {
        return std::abs(std::remainder(hue - expected, 360.0)) <= tolerance;
    }

    // Of cyan and red the exchanged hue is near their own.
    static bool showsExchange(const Primary& primary) {
        return !isNear(90.0 - primary.hue, primary.hue, 2.0 * kHueTolerance);
    }

    static double hueOf(const Lab& color) { return std::atan2(color[2], color[1]) * 180.0 / std::acos(-1.0); }

    void inspectHues() {
        if (!inks.areKnown() || !inks.haveKnownColors())
            return;
        RowsFound mirrored;
        std::vector<std::string> names;
        std::string example;
        for (int row = 0; row < chart.rows(); ++row) {
            const Lab& color = lab[indexOf(row)];
            const Primary* primary = primaryOf(row);
            if (primary == nullptr || !showsExchange(*primary) ||
                std::hypot(color[1], color[2]) < kSmallestChroma)
                continue;
            const double hue = hueOf(color);
            if (isNear(hue, primary->hue))
                return;
            if (!isNear(hue, 90.0 - primary->hue))
                continue;
            mirrored.add(row, 0.0, 0.0);
            if (mirrored.rows() == 1)
                example = placeOf(chart, row) + ", a " + primary->name +
                          " patch by its device values, has a* " + number(color[1]) + " and b* " +
                          number(color[2]);
            if (std::find(names.begin(), names.end(), primary->name) == names.end())
                names.emplace_back(primary->name);
        }
        if (names.size() < 2)
            return;
        tell(Kind::exchangedAxes,
             example + "; this and " + counted(mirrored.rows() - 1) + " more pure patches (" +
                 joined(names, ", ") +
                 ") have the hues of exchanged a* and b*, none its own; check the columns LAB_A and LAB_B "
                 "and those of the device values");
    }

    bool explainsHues() const {
        return std::any_of(findings.begin(), findings.end(), [](const Finding& finding) {
            return finding.kind == Kind::exchangedAxes || finding.kind == Kind::labScale ||
                   finding.kind == Kind::otherWhite || finding.kind == Kind::bandOrder ||
                   finding.kind == Kind::equalSpectra;
        });
    }

    // One patch of its own hue is enough for a colour to have it.
    void inspectOtherHues() {
        if (!inks.areKnown() || !inks.haveNamedColors())
            return;
        std::vector<std::string> own;
        std::vector<std::string> other;
        std::string example;
        const auto add = [](std::vector<std::string>& names, const char* name) {
            if (std::find(names.begin(), names.end(), name) == names.end())
                names.emplace_back(name);
        };
        for (int row = 0; row < chart.rows(); ++row) {
            const Lab& color = lab[indexOf(row)];
            const Primary* primary = primaryOf(row);
            if (primary == nullptr || std::hypot(color[1], color[2]) < kSmallestChroma)
                continue;
            if (isNear(hueOf(color), primary->hue, kOtherHue)) {
                add(own, primary->name);
                continue;
            }
            add(other, primary->name);
            if (example.empty())
                example = placeOf(chart, row) + ", a " + primary->name +
                          " patch by its device values, has a* " + number(color[1]) + " and b* " +
                          number(color[2]);
        }
        const auto hasOwn = [&](const std::string& name) {
            return std::find(own.begin(), own.end(), name) != own.end();
        };
        other.erase(std::remove_if(other.begin(), other.end(), hasOwn), other.end());
        if (other.size() < 2 || 2 * own.size() > other.size())
            return;
        tell(Kind::otherHues, example + "; pure patches (" + joined(other, ", ") +
                                  ") have quite other hues than their device values say; check that both "
                                  "belong to the same rows, and the order of the columns and bands");
    }

    const Primary* primaryOf(int row) const {
        if (inks.useSpots(row))
            return nullptr;
        const std::vector<double> parts = inks.of(row);
        const auto* found = std::find_if(std::begin(kPrimaries), std::end(kPrimaries),
                                         [&](const Primary& primary) { return isPure(parts, primary); });
        return found == std::end(kPrimaries) ? nullptr : found;
    }

    // --- Lab against XYZ

    // @return whether a* and b* are exchanged.
    bool inspectLabAgainstXyz() {
        std::vector<Lab> stated = lab;
        std::vector<Lab> computed = labFromXyz;
        if (source == ColorSource::xyz && chart.document->ContainsLab(chart.table)) {
            for (int row = 0; row < chart.rows(); ++row)
                chart.document->GetLab(chart.table, row, stated[indexOf(row)].data());
            computed = lab;
        }
        if (source == ColorSource::spectra || computed.empty())
            return false;
        return compareLab(stated, computed);
    }

    bool compareLab(const std::vector<Lab>& stated, const std::vector<Lab>& computed) {
        const double limit =
            kLabTolerance + (decimalsOf(chart.header().GetLabColumns()) == 0 ? kWholeLabError : 0.0);
        const double xyzUnit = std::pow(10.0, -decimalsOf(chart.header().GetXyzColumns())) * scaleOfXyz();
        const auto differ = [&](const Lab& left, const Lab& right) {
            if (distance(left, right) <= limit)
                return false;
            const std::array<double, 3> first = relativeXyzOf(left);
            const std::array<double, 3> second = relativeXyzOf(right);
            return !std::equal(first.begin(), first.end(), second.begin(),
                               [&](double a, double b) { return std::abs(a - b) <= kXyzRounding * xyzUnit; });
        };
        RowsFound apart;
        RowsFound apartWhenExchanged;
        for (int row = 0; row < chart.rows(); ++row) {
            const Lab& given = stated[indexOf(row)];
            const Lab& wanted = computed[indexOf(row)];
            const double plain = distance(given, wanted);
            const Lab exchanged = {given[0], given[2], given[1]};
            if (differ(given, wanted))
                apart.add(row, plain, plain);
            if (differ(exchanged, wanted))
                apartWhenExchanged.add(row, 0.0, 0.0);
        }
        if (apart.empty())
            return false;
        const bool isExchange =
            2 * apart.rows() >= chart.rows() && 10 * apartWhenExchanged.rows() <= chart.rows();
        if (isExchange)
            tell(Kind::exchangedAxes, apart.told(chart, "Delta E ") +
                                          " between Lab and XYZ, which agree when a* and b* are exchanged; "
                                          "check the columns LAB_A and LAB_B");
        else
            tell(Kind::labAgainstXyz,
                 apart.told(chart, "Delta E ") +
                     " between the Lab and the XYZ of one row, where 0.5 is the limit; find out which of the "
                     "two is right (another white, other conditions or an edited value)");
        return isExchange;
    }

    const Chart& chart;
    ColorSource source;
    const std::vector<Lab>& lab;
    const std::vector<Lab>& labFromXyz;
    std::array<double, 3> whiteOfLab;
    Inks inks;
    std::optional<Spectra> spectra;
    std::vector<Finding> findings;
};

} // namespace

std::vector<Finding> implausibilities(const Chart& chart, ColorSource source,
                                      const DocumentConditions& conditions, const std::vector<Lab>& lab,
                                      const std::vector<Lab>& labFromXyz,
                                      const std::array<double, 3>& white) {
    if (chart.rows() == 0)
        return {};
    return Inspection(chart, source, lab, labFromXyz, white).run(conditions.isEmission);
}

} // namespace qxcms::qc
