#include "qc/comparison.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "base/number_text.h"
#include "qc/chart_kind.h"
#include "qc/chart_numbers.h"
#include "qc/condition_choice.h"
#include "qc/conditions.h"
#include "qc/count_text.h"
#include "qc/illuminants.h"
#include "qc/inks.h"
#include "qc/lab_rows.h"
#include "qc/large_differences.h"
#include "qc/observers.h"
#include "qc/other_readings.h"
#include "qc/pairing.h"
#include "qc/perfect_white.h"
#include "qc/plausibility.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"
#include "qc/relative_xyz.h"
#include "qc/shifted_rows.h"
#include "qc/table_choice.h"

namespace qxcms::qc {

namespace {

// Another way of pairing is told where it brings the median difference below this part of what it is.
constexpr double kMuchSmaller = 0.5;
// Smaller differences than this do not show what belongs together.
constexpr double kTellingDifference = 1.0;
// So many times as many pairs are told where the median difference is no larger, but for a tenth, or is as
// small as this.
constexpr std::size_t kFarMore = 2;
constexpr std::size_t kVeryFarMore = 10; // as the pairs of one chart at all
constexpr double kHardlyLarger = 1.1;
constexpr double kSmallDifference = 0.5;
// One chart printed twice does not differ so much, two charts do.
constexpr double kDoubtfulDifference = 10.0;
// Exchanging a* and b* shows in colours whose two differ by so much, in so many of them, and in so many on
// either side of the axis that it mirrors at.
constexpr double kTellingAxes = 15.0;
constexpr std::size_t kFewestColors = 8;
constexpr std::size_t kFewestOfAHue = 2;
// Light that was brought to a white of 100 stays below.
constexpr double kLargestLightness = 105.0;
// Of the luminances of the whites of two displays, as a natural logarithm.
constexpr double kOtherLuminance = 0.1;

Side describe(const Chart& chart, ColorSource source) {
    Side side{chart.name,
              chart.document->GetNrTables(),
              chart.table + 1,
              chart.rows(),
              source,
              false,
              0,
              0,
              0,
              conditionsOf(*chart.document, chart.table)};
    if (source != ColorSource::spectra)
        return side;
    std::vector<int> wavelengths(static_cast<std::size_t>(chart.header().GetNrWaveLengths()));
    chart.document->GetWaveLengths(chart.table, wavelengths.data());
    side.percent = chart.data().IsSpectralPercent();
    side.bands = static_cast<int>(wavelengths.size());
    side.firstNm = wavelengths.front();
    side.lastNm = wavelengths.back();
    return side;
}

// The identifier of the measured row, else that of its reference, else the row number.
std::string patchName(const Chart& measured, const Chart& reference, const RowPair& pair) {
    const auto nameIn = [](const Chart& chart, int row) {
        const int column = identifierColumn(chart);
        return column >= 0 ? fieldText(chart, row, column) : std::string();
    };
    std::string name = nameIn(measured, pair.measured);
    if (name.empty())
        name = nameIn(reference, pair.reference.front());
    return name.empty() ? std::to_string(pair.measured + 1) : name;
}

// The doubtful values of a chart whose compared columns hold none.
std::vector<Finding> doubtsOf(const Chart& chart) {
    if (chart.doubts.empty())
        return {};
    const DoubtfulValue& first = chart.doubts.front();
    const std::size_t others = chart.doubts.size() - 1;
    std::string text = placeOf(chart, first.row, first.column) + ": " + quoted(first.text) +
                       " is no number; the column is not compared";
    if (others > 0)
        text += ", nor " + (others == 1 ? "is another one" : "are " + std::to_string(others) + " others") +
                " with such values";
    return {{Finding::Severity::note, Finding::Kind::doubtfulValues, text}};
}

Lab meanOf(const std::vector<Lab>& labs, const std::vector<int>& rows) {
    if (rows.size() == 1)
        return labs[static_cast<std::size_t>(rows.front())];
    Lab mean{};
    for (const int row : rows)
        for (std::size_t i = 0; i < mean.size(); ++i)
            mean[i] += labs[static_cast<std::size_t>(row)][i] / static_cast<double>(rows.size());
    return mean;
}

/// Makes one comparison.
class Comparing {
public:
    Comparing(const Chart& one, const Chart& other, const ComparisonOptions& asked)
        : measured(one), reference(other), options(asked) {}

    Comparison run() {
        result.formula = findFormula(options.formula).value();
        requireTable(measured);
        requireTable(reference);
        requireChart(measured);
        requireChart(reference);
        const ColorSource measuredSource = colorSource(measured, options.measuredAs);
        const ColorSource referenceSource = colorSource(reference, options.referenceAs);
        result.measured = describe(measured, measuredSource);
        result.reference = describe(reference, referenceSource);
        requireNumbers(measured, columnsOf(measured, measuredSource));
        requireNumbers(reference, columnsOf(reference, referenceSource));
        chooseConditionsOfBoth();
        samples = labOf(measured, result.measured);
        standards = labOf(reference, result.reference);
        result.pairing =
            pairRows(measured, reference, PairOptions{options.pair, options.identifier, medianOf()});
        makePatches();
        const std::vector<double> totals = result.differences();
        result.statistics = statistics(totals);
        tellRest();
        return std::move(result);
    }

private:
    void chooseConditionsOfBoth() {
        const std::optional<std::string> illuminant = askedIlluminant();
        const std::optional<std::string> observer = askedObserver();
        result.conditions =
            chooseConditions({measured.name, result.measured.source, result.measured.conditions},
                             {reference.name, result.reference.source, result.reference.conditions},
                             illuminant, observer, options.force);
        tell(result.conditions.findings);
        makeWeighting();
    }

    const Illuminants& illuminants() {
        if (registry == nullptr)
            registry = std::make_unique<Illuminants>();
        return *registry;
    }

    // Names that nobody knows are refused also where nothing has to be computed for them.
    std::optional<std::string> askedIlluminant() {
        if (!options.illuminant)
            return std::nullopt;
        return shortIlluminant(illuminants().find(*options.illuminant)->GetName());
    }

    std::optional<std::string> askedObserver() const {
        if (!options.observer)
            return std::nullopt;
        return findObserver(*options.observer).GetName();
    }

    // Lab needs none, so that it may hold for conditions that are not known here; neither is XYZ beside it
    // looked at then.
    void makeWeighting() {
        const bool isNeeded =
            result.measured.source != ColorSource::lab || result.reference.source != ColorSource::lab;
        try {
            weighting = std::make_unique<Conditions>(*illuminants().find(result.conditions.illuminant.value),
                                                     findObserver(result.conditions.observer.value));
        } catch (const Refusal& refusal) {
            if (isNeeded)
                throw;
        }
    }

    std::vector<Lab> labOf(const Chart& chart, const Side& side) {
        std::vector<Lab> lab = labRows(chart, side.source, weighting.get());
        if (side.source == ColorSource::spectra)
            result.spectralWhite = weighting->white();
        if (side.source == ColorSource::xyz)
            result.xyzWhite = weighting->publishedWhite();
        const bool hasXyzBesideLab = side.source == ColorSource::lab && holds(chart, ColorSource::xyz);
        const std::vector<Lab> fromXyz = hasXyzBesideLab && weighting && isOfChosenConditions(side)
                                             ? labOfXyzBeside(chart)
                                             : std::vector<Lab>();
        tell(findingsOnKind(chart));
        tell(chart.findings);
        const std::vector<Finding> found =
            implausibilities(chart, side.source, side.conditions, lab, fromXyz, whiteOf(side));
        sidesOfLight += std::any_of(found.begin(), found.end(), tellsOfLight) ? 1 : 0;
        tell(found);
        return lab;
    }

    static bool tellsOfLight(const Finding& finding) { return finding.kind == Finding::Kind::emission; }

    bool isAllLight() const { return sidesOfLight == 2; }

    // Display against display, as when one is verified, is as good as print against print, but for light that
    // was never brought to a white of 100.
    void takeDisplaysForGranted() {
        const auto isScaled = [](const std::vector<Lab>& colors) {
            return std::none_of(colors.begin(), colors.end(),
                                [](const Lab& color) { return color[0] > kLargestLightness; });
        };
        if (!isAllLight() || result.pairing.by != "RGB" || !isScaled(samples) || !isScaled(standards))
            return;
        std::vector<Finding>& told = result.findings;
        told.erase(std::remove_if(told.begin(), told.end(), tellsOfLight), told.end());
        const bool isOne = measured.name == reference.name;
        tell({{Finding::Severity::note, Finding::Kind::emission,
               printable(measured.name) + (isOne ? " holds" : " and " + printable(reference.name) + " hold") +
                   " measurements of displays; the values of both sides are compared as "
                   "they stand, so they must be scaled alike"}});
    }

    // Of displays whose white stands on both sides; otherReadings tells it where nothing else differs.
    void tellOtherLuminances() {
        const auto isReading = [](const Finding& finding) {
            return finding.kind == Finding::Kind::otherReading;
        };
        const Patch* white = isAllLight() && result.pairing.by == "RGB" ? findWhite() : nullptr;
        if (white == nullptr || std::any_of(result.findings.begin(), result.findings.end(), isReading))
            return;
        const double ours = luminanceOf(white->measured[0]);
        const double theirs = luminanceOf(white->reference[0]);
        if (!(std::abs(std::log(ours / theirs)) > kOtherLuminance))
            return;
        const auto told = [](double luminance, const Chart& chart, int row) {
            return detail::generalText(luminance, 4) + " in " + printable(chart.name) + " (row " +
                   std::to_string(row) + ")";
        };
        tell({{Finding::Severity::warning, Finding::Kind::emission,
               "the whites of the two displays differ in luminance: Y is " +
                   told(ours, measured, white->row) + " and " + told(theirs, reference, white->referenceRow) +
                   "; scale the XYZ of both to the same Y of white, such as 100, where luminance is not what "
                   "is compared"}});
    }

    // Of full red, green and blue; null where there is none.
    const Patch* findWhite() const {
        const Inks lights(measured);
        if (!lights.areKnown() || !lights.areLight())
            return nullptr;
        const auto found = std::find_if(result.patches.begin(), result.patches.end(),
                                        [&](const Patch& patch) { return lights.isPaper(patch.row - 1); });
        return found == result.patches.end() ? nullptr : &*found;
    }

    // Null where the Lab of a side holds for other conditions or for none that are known.
    const Conditions* conditionsOfLab(const Side& side) const {
        return isOfChosenConditions(side) ? weighting.get() : nullptr;
    }

    // X, Y and Z with Y = 100; zeros where it is not known.
    std::array<double, 3> whiteOf(const Side& side) const {
        const Conditions* own = conditionsOfLab(side);
        return own == nullptr ? std::array<double, 3>{} : own->publishedWhite();
    }

    // Compared by force, a side may declare others; the chosen white is not that of its XYZ then.
    bool isOfChosenConditions(const Side& side) const {
        const auto isChosen = [](const Condition& own, const ChosenCondition& chosen) {
            return !own.isDeclared() || own.value == chosen.value;
        };
        return isChosen(side.conditions.illuminant, result.conditions.illuminant) &&
               isChosen(side.conditions.observer, result.conditions.observer);
    }

    // Empty where the XYZ cannot be used, which is no matter for the Lab beside it.
    std::vector<Lab> labOfXyzBeside(const Chart& chart) const {
        try {
            requireNumbers(chart, columnsOf(chart, ColorSource::xyz));
            return labRows(chart, ColorSource::xyz, weighting.get());
        } catch (const Refusal&) {
            return {};
        }
    }

    void makePatches() {
        for (const RowPair& pair : result.pairing.pairs) {
            const Lab& sample = samples[static_cast<std::size_t>(pair.measured)];
            const Lab standard = meanOf(standards, pair.reference);
            const Difference parts = difference(sample, standard, result.formula.id);
            if (!std::isfinite(parts.total))
                throw Refusal(
                    Refusal::Kind::unreadable,
                    placeOf(measured, pair.measured) + " and " + placeOf(reference, pair.reference.front()) +
                        ": the two Lab values are too large, or too far apart, to give a difference");
            result.patches.push_back({pair.measured + 1, pair.reference.front() + 1,
                                      static_cast<int>(pair.reference.size()),
                                      patchName(measured, reference, pair), sample, standard, parts});
        }
    }

    void tellRest() {
        takeDisplaysForGranted();
        tell(findingsOnTables(measured, reference));
        tell(findingsOnTables(reference, measured));
        tell(result.pairing.findings);
        tellOtherPairings();
        tellUnconfirmed();
        tellExchangedAxes();
        tellOtherReadings();
        tellOtherLuminances();
        tellPerfectWhites();
        tellShiftedRows();
        tellLargeDifferences();
        tell(doubtsOf(measured));
        tell(doubtsOf(reference));
        if (result.formula.remark != nullptr)
            result.findings.push_back(
                {Finding::Severity::note, Finding::Kind::formula, result.formula.remark});
        std::stable_partition(result.findings.begin(), result.findings.end(), [](const Finding& finding) {
            return finding.severity == Finding::Severity::warning;
        });
    }

    void tellOtherPairings() {
        bool isFirstIdentifier = true;
        std::vector<std::vector<RowPair>> told = {result.pairing.pairs};
        for (const Pairing& other : possiblePairings(measured, reference, medianOf())) {
            const std::string words = wordsFor(other, isFirstIdentifier);
            isFirstIdentifier = isFirstIdentifier && other.rule != PairRule::identifiers;
            const auto isSame = [&](const std::vector<RowPair>& pairs) {
                return areEqual(pairs, other.pairs);
            };
            if (other.by == result.pairing.by || std::any_of(told.begin(), told.end(), isSame))
                continue;
            if (tellOtherPairing(other, words))
                told.push_back(other.pairs);
        }
    }

    // @return whether it is worth telling.
    bool tellOtherPairing(const Pairing& other, const std::string& words) {
        const std::size_t pairs = result.pairing.pairs.size();
        const double median = medianOf(other.pairs);
        // Few pairs agree by chance.
        const bool areNearlyAll = other.pairs.size() >= kVeryFarMore * pairs;
        const bool isNoLarger = median <= std::max(result.statistics.median * kHardlyLarger,
                                                   areNearlyAll ? kDoubtfulDifference : kSmallDifference);
        const std::string shown = detail::generalText(median, 3);
        std::string text;
        if (other.pairs.size() * 2 >= pairs && isMuchSmaller(median))
            text = "the median difference would be " + shown + " instead of " +
                   detail::generalText(result.statistics.median, 3);
        else if (other.pairs.size() >= kFarMore * pairs && isNoLarger && median <= kDoubtfulDifference)
            text = countText(other.pairs.size()) + " samples would have a counterpart instead of " +
                   countText(pairs) + ", with a median difference of " + shown;
        else
            return false;
        result.findings.push_back(
            {Finding::Severity::warning, Finding::Kind::otherPairing,
             "paired " + words + ' ' + text + ", so that the rows may belong together in that way"});
        return true;
    }

    static bool areEqual(const std::vector<RowPair>& left, const std::vector<RowPair>& right) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                          [](const RowPair& one, const RowPair& other) {
                              return one.measured == other.measured && one.reference == other.reference;
                          });
    }

    // Where identifiers alone say that samples belong together that hardly do.
    void tellUnconfirmed() {
        if (!result.pairing.isUnconfirmed || result.statistics.median <= kDoubtfulDifference)
            return;
        result.findings.push_back({Finding::Severity::warning, Finding::Kind::ambiguousSamples,
                                   "the median difference is " +
                                       detail::generalText(result.statistics.median, 3) +
                                       ", and nothing but " + result.pairing.by +
                                       " says that these samples belong together; check that both files hold "
                                       "one chart, its samples named alike"});
    }

    bool isMuchSmaller(double median) const {
        return result.statistics.median > kTellingDifference &&
               median < result.statistics.median * kMuchSmaller;
    }

    double medianOf(const std::vector<RowPair>& pairs) const {
        std::vector<double> totals;
        totals.reserve(pairs.size());
        for (const RowPair& pair : pairs)
            totals.push_back(difference(samples[static_cast<std::size_t>(pair.measured)],
                                        meanOf(standards, pair.reference), result.formula.id)
                                 .total);
        return statistics(totals).median;
    }

    MedianOf medianOf() const {
        return [this](const std::vector<RowPair>& pairs) { return medianOf(pairs); };
    }

    // As in otherwise equal charts of which one was written with a* and b* exchanged. It takes colours on
    // both sides of the axis that exchanging mirrors at: greys, or the colours of one hue, may come nearer
    // by it in a right comparison as well.
    void tellExchangedAxes() {
        std::size_t redder = 0;
        std::size_t yellower = 0;
        for (const Patch& patch : result.patches) {
            const double ahead = patch.reference[1] - patch.reference[2];
            redder += ahead >= kTellingAxes ? 1 : 0;
            yellower += -ahead >= kTellingAxes ? 1 : 0;
        }
        const double median = medianWhenExchanged();
        if (redder + yellower < kFewestColors || redder < kFewestOfAHue || yellower < kFewestOfAHue ||
            !isMuchSmaller(median) || median > kDoubtfulDifference)
            return;
        tell({{Finding::Severity::warning, Finding::Kind::exchangedAxes,
               "with a* and b* of one side exchanged the median difference would be " +
                   detail::generalText(median, 3) + " instead of " +
                   detail::generalText(result.statistics.median, 3) +
                   "; check which side has its columns exchanged"}});
    }

    double medianWhenExchanged() const {
        std::vector<double> totals;
        for (const Patch& patch : result.patches) {
            const Lab exchanged = {patch.measured[0], patch.measured[2], patch.measured[1]};
            totals.push_back(difference(exchanged, patch.reference, result.formula.id).total);
        }
        return statistics(totals).median;
    }

    void tellOtherReadings() {
        tell(otherReadings({measured, result.measured.source, samples, conditionsOfLab(result.measured)},
                           {reference, result.reference.source, standards, conditionsOfLab(result.reference)},
                           result.pairing.pairs, isAllLight(),
                           [this](const Lab& sample, const Lab& standard) {
                               return difference(sample, standard, result.formula.id).total;
                           }));
    }

    std::vector<ComparedRow> comparedRows() const {
        std::vector<ComparedRow> rows;
        rows.reserve(result.patches.size());
        for (const Patch& patch : result.patches)
            rows.push_back({patch.row - 1, patch.measured, patch.reference});
        return rows;
    }

    void tellPerfectWhites() {
        if (sidesOfLight == 0)
            tell(perfectWhites(comparedRows(), measured.name, reference.name, result.pairing.by == "RGB"));
    }

    void tellShiftedRows() {
        const std::vector<RowPair>& pairs = result.pairing.pairs;
        std::vector<ComparedRow> rows = comparedRows();
        if (tellShiftedRows(rows, measured))
            return;
        const auto isBefore = [](const RowPair& left, const RowPair& right) {
            return left.reference.front() < right.reference.front();
        };
        if (std::is_sorted(pairs.begin(), pairs.end(), isBefore))
            return;
        rows.clear();
        for (const RowPair& pair : pairs)
            if (pair.reference.size() == 1)
                rows.push_back({pair.reference.front(),
                                standards[static_cast<std::size_t>(pair.reference.front())],
                                samples[static_cast<std::size_t>(pair.measured)]});
        std::sort(rows.begin(), rows.end(),
                  [](const ComparedRow& left, const ComparedRow& right) { return left.row < right.row; });
        tellShiftedRows(rows, reference);
    }

    bool tellShiftedRows(const std::vector<ComparedRow>& rows, const Chart& chart) {
        const std::optional<ShiftedRows> found = findShiftedRows(rows);
        if (found)
            tell({{Finding::Severity::warning, Finding::Kind::shiftedRows, toldOf(*found, chart.name)}});
        return found.has_value();
    }

    void tellLargeDifferences() {
        // Hues as of exchanged axes explain nothing where exchanging them does not bring the colours
        // together.
        const auto explains = [&](const Finding& finding) {
            return explainsLargeDifferences(finding) &&
                   (finding.kind != Finding::Kind::exchangedAxes || isMuchSmaller(medianWhenExchanged()));
        };
        if (result.pairing.rule != PairRule::deviceValues ||
            std::any_of(result.findings.begin(), result.findings.end(), explains))
            return;
        if (const std::optional<Finding> found = findLargeDifferences(comparedRows(), result.pairing.by))
            tell({*found});
    }

    // How to ask for it.
    static std::string wordsFor(const Pairing& pairing, bool isFirstIdentifier) {
        switch (pairing.rule) {
        case PairRule::deviceValues:
            return "by device values (--pair device)";
        case PairRule::identifiers:
            return isFirstIdentifier ? "by identifiers (--pair id)"
                                     : "by " + pairing.by + " (--pair " + pairing.by + ')';
        case PairRule::order:
            break;
        }
        return "in their order (--pair order)";
    }

    // Says nothing twice: both sides may be one file.
    void tell(const std::vector<Finding>& findings) {
        for (const Finding& finding : findings) {
            const auto isSame = [&](const Finding& told) { return told.text == finding.text; };
            if (std::none_of(result.findings.begin(), result.findings.end(), isSame))
                result.findings.push_back(finding);
        }
    }

    const Chart& measured;
    const Chart& reference;
    const ComparisonOptions& options;
    std::unique_ptr<Illuminants> registry; // null until it is needed
    std::unique_ptr<Conditions> weighting; // null where nothing is computed
    std::vector<Lab> samples;
    std::vector<Lab> standards;
    int sidesOfLight = 0; // of the two, those that hold measurements of light
    Comparison result;
};

} // namespace

std::vector<double> Comparison::differences() const {
    std::vector<double> totals;
    for (const Patch& patch : patches)
        totals.push_back(patch.difference.total);
    return totals;
}

Result<Comparison> compare(const Chart& measured, const Chart& reference, const ComparisonOptions& options) {
    try {
        return Comparing(measured, reference, options).run();
    } catch (const Refusal& refusal) {
        return refusal;
    }
}

} // namespace qxcms::qc
