#include "qc/device_pairing.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <utility>

#include "base/number_text.h"
#include "qc/count_text.h"
#include "qc/device_reading.h"
#include "qc/ink_order.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"
#include "qc/unused_samples.h"

namespace qxcms::qc {

namespace {

/// Puts what there is to know about a pairing into words.
class Words {
public:
    Words(const Chart& measuredChart, const Chart& referenceChart, const DeviceChannels& shared,
          const DeviceValues& measuredDevice)
        : measured(measuredChart), reference(referenceChart), channels(shared),
          measuredValues(measuredDevice), measuredName(printable(measuredChart.name)),
          referenceName(printable(referenceChart.name)) {}

    // "CMYK 40 0 0 0"
    std::string valueOf(int row) const { return valueOf(row, measuredValues); }

    std::string valueOf(int row, const DeviceValues& values) const {
        std::string text = channels.name;
        const std::size_t first = static_cast<std::size_t>(row) * values.channels;
        for (std::size_t i = first; i < first + values.channels; ++i)
            text += ' ' + detail::generalText(values.values[i], 6);
        return text;
    }

    // "3 samples of FILE, the first in row 5 (CMYK 40 0 0 0), are", the last word being `one` or `many`.
    std::string subject(const DeviceMatching::Rows& rows, const char* one, const char* many) const {
        const std::string place =
            "row " + std::to_string(rows.first + 1) + " (" + valueOf(rows.first) + "), ";
        if (rows.count == 1)
            return "1 sample of " + measuredName + ", " + place + one;
        return countText(static_cast<std::size_t>(rows.count)) + " samples of " + measuredName +
               ", the first in " + place + many;
    }

    std::string onScale(const std::string& file, double range) const {
        return file + ": the " + channels.name + " values are taken to be on a scale of 0 to " +
               detail::generalText(range, 6);
    }

    void addScales(const DeviceReading& reading, const DeviceValues& referenceValues,
                   std::vector<Finding>& findings) const {
        if (reading.asTheyStand) {
            addEquality(reading.matching, findings);
            return;
        }
        const DeviceRanges& ranges = reading.matching.ranges;
        const DeviceRanges others = reading.other.value_or(ranges);
        const bool rgb = channels.name == "RGB";
        const bool differ = ranges.measured != ranges.reference;
        const auto tell = [&](const std::string& file, const DeviceValues& values, double range,
                              double other) {
            const bool isUnusual = rgb ? differ || range == 1 || range > 255 : range != 100;
            if (range != other)
                addChoice(onScale(file, range), other, reading.byColors, findings);
            else if (values.range != 0 && isUnusual)
                add(findings, Finding::Severity::note, Finding::Kind::deviceScale, onScale(file, range));
        };
        tell(measuredName, measuredValues, ranges.measured, others.measured);
        tell(referenceName, referenceValues, ranges.reference, others.reference);
    }

    // That the tolerance is as wide as the steps of the values.
    void addSteps(const DeviceReading& reading, const DeviceValues& referenceValues,
                  std::vector<Finding>& findings) const {
        if (!reading.within)
            return;
        const DeviceRanges& ranges = reading.matching.ranges;
        const double ours = measuredValues.step(ranges.measured);
        const double theirs = referenceValues.step(ranges.reference);
        const std::string files = ours == theirs  ? "both files"
                                  : ours > theirs ? measuredName
                                                  : referenceName;
        add(findings, Finding::Severity::note, Finding::Kind::ambiguousSamples,
            "the " + channels.name + " values of " + files + " stand in steps of " +
                detail::generalText(std::max(ours, theirs), 2) +
                " percent, as after rounding, so that they pair within " +
                detail::generalText(reading.matching.tolerance, 2) + " percent; within " +
                detail::generalText(kDeviceTolerance, 2) + " percent " + countText(*reading.within) +
                " instead of " + countText(reading.matching.pairs.size()) + " samples would pair");
    }

    void addOffScale(const DeviceMatching& matching, const DeviceValues& referenceValues,
                     std::vector<Finding>& findings) const {
        const auto tell = [&](const std::string& file, const DeviceMatching::Rows& rows, double range,
                              const DeviceValues& values) {
            if (rows.count > 0)
                add(findings, Finding::Severity::warning, Finding::Kind::deviceScale,
                    file + ": the " + channels.name + " values of " +
                        countText(static_cast<std::size_t>(rows.count)) + " of " + countText(values.rows()) +
                        " samples do not lie within 0 to " + detail::generalText(range, 6) +
                        ", the first in row " + std::to_string(rows.first + 1) + " (" +
                        valueOf(rows.first, values) + "); left out, correct them to have them compared");
        };
        tell(measuredName, matching.offScale, matching.ranges.measured, measuredValues);
        tell(referenceName, matching.referenceOffScale, matching.ranges.reference, referenceValues);
    }

    void addDoubts(const DeviceReading& reading, const DeviceValues& referenceValues,
                   std::vector<Finding>& findings) const {
        const DeviceMatching& matching = reading.matching;
        const auto tell = [&](Finding::Severity severity, const std::string& text) {
            add(findings, severity, Finding::Kind::ambiguousSamples, text);
        };
        if (!reading.within && matching.tolerance > kDeviceTolerance)
            tell(Finding::Severity::note,
                 "the " + channels.name +
                     " values are whole numbers of two scales, so that they pair within " +
                     detail::generalText(matching.tolerance, 2) + " percent");
        const std::string colorants = differentColorants(measured, reference);
        if (!colorants.empty())
            tell(Finding::Severity::warning, colorants + "; they are taken for the same");
        if (isBlank(measured, measuredValues))
            tell(Finding::Severity::warning, blank(measuredName));
        if (isBlank(reference, referenceValues))
            tell(Finding::Severity::warning, blank(referenceName));
        if (matching.againstMean.count > 0)
            tell(Finding::Severity::note, subject(matching.againstMean, "is", "are") +
                                              " compared with the mean of the samples of " + referenceName +
                                              " that hold the same device values, as their numbers differ");
        if (matching.againstOne.count > 0)
            tell(Finding::Severity::note, subject(matching.againstOne, "repeats", "repeat") +
                                              " device values that " + referenceName +
                                              " holds once; each is compared with that one sample");
        if (matching.inTheirOrder.count > 0)
            tell(Finding::Severity::note, subject(matching.inTheirOrder, "repeats", "repeat") +
                                              " device values, as often as " + referenceName +
                                              " does; they are paired in their order");
        if (matching.atATie.count > 0)
            tell(Finding::Severity::warning,
                 subject(matching.atATie, "lies", "lie") +
                     " about as near to one device value as to another; left out");
        if (matching.outdone.count > 0)
            tell(Finding::Severity::warning, subject(matching.outdone, "lies", "lie") +
                                                 " near to a sample of " + referenceName +
                                                 " to which another measured one lies nearer; left out");
    }

    // Inks under numbers that colours contradict; CMYK and RGB say what they are.
    void addInkOrder(const DeviceMatching& matching, const DeviceValues& referenceValues,
                     const MedianOf& medianOf, std::vector<Finding>& findings) const {
        if (!medianOf || channels.name == "CMYK" || channels.name == "RGB")
            return;
        const InkOrder order(measuredValues, referenceValues, matching.ranges);
        std::string text;
        for (std::size_t channel = 0; channel < measuredValues.channels; ++channel) {
            const std::optional<std::size_t> other = order.counterpart(channel, medianOf);
            if (other)
                text += (text.empty() ? "" : ", ") +
                        printable(measured.columnName(channels.measured[channel])) + " of " + measuredName +
                        " as " + printable(reference.columnName(channels.reference[*other])) + " of " +
                        referenceName;
        }
        if (!text.empty())
            add(findings, Finding::Severity::warning, Finding::Kind::otherHues,
                "the pure inks look as if the files held them in another order: " + text +
                    "; name the columns of both files in one order");
    }

    // Repeated values may hide the samples of what is left out.
    void addLeftOut(const DeviceMatching& matching, std::vector<Finding>& findings) const {
        if (channels.leftOut.empty())
            return;
        const bool isDoubtful = channels.isPart() && matching.isOfUnequalRepeats();
        add(findings, isDoubtful ? Finding::Severity::warning : Finding::Severity::note,
            Finding::Kind::deviceScale,
            channels.leftOut +
                (isDoubtful ? "; check that the samples that repeat device values hold none either" : ""));
    }

private:
    static void add(std::vector<Finding>& findings, Finding::Severity severity, Finding::Kind kind,
                    const std::string& text) {
        findings.push_back({severity, kind, text});
    }

    static bool isBlank(const Chart& chart, const DeviceValues& values) {
        return chart.rows() > 1 && values.areEqualOnEveryRow();
    }

    void addEquality(const DeviceMatching& matching, std::vector<Finding>& findings) const {
        add(findings, Finding::Severity::note, Finding::Kind::deviceScale,
            "the " + channels.name + " values of " + measuredName + " and " + referenceName +
                " are on no known scale (the largest is " + detail::generalText(matching.ranges.measured, 6) +
                "), but equal, so that the samples are paired by equal values");
    }

    // That another scale would do, or that colours speak against it.
    static void addChoice(const std::string& text, double other, bool byColors,
                          std::vector<Finding>& findings) {
        const std::string range = detail::generalText(other, 6);
        if (byColors)
            add(findings, Finding::Severity::note, Finding::Kind::deviceScale,
                text + ", on which the colours agree far better than on one of 0 to " + range);
        else
            add(findings, Finding::Severity::warning, Finding::Kind::deviceScale,
                text + ", but as many samples would pair, with others, on one of 0 to " + range +
                    "; check the pairs, or pair by identifiers (--pair id)");
    }

    std::string blank(const std::string& file) const {
        return file + ": the " + channels.name +
               " values are the same on every row; if they were never filled in, pair by identifiers "
               "(--pair id)";
    }

    const Chart& measured;
    const Chart& reference;
    const DeviceChannels& channels;
    const DeviceValues& measuredValues;
    std::string measuredName;
    std::string referenceName;
};

} // namespace

Pairing pairByDeviceValues(const Chart& measured, const Chart& reference, const DeviceChannels& channels,
                           const MedianOf& medianOf) {
    const auto [ours, theirs] = sharedDeviceValues(measured, reference, channels);
    std::optional<DeviceReading> read = bestReading(ours, theirs, medianOf);
    if (!read)
        throw Refusal(
            Refusal::Kind::notComparable,
            strangeValue(measured, reference, channels) +
                "; correct it, or let --pair id or --pair order pair the rows without device values");
    DeviceReading& reading = *read;
    DeviceMatching& matching = reading.matching;
    if (matching.pairs.empty())
        throw Refusal(Refusal::Kind::notComparable,
                      "no " + channels.name + " value of " + printable(measured.name) +
                          " has a counterpart within " + detail::generalText(matching.tolerance, 2) +
                          " percent in " + printable(reference.name) +
                          ", so these seem to be two charts; --pair id or --pair order pairs them all the "
                          "same");
    Pairing pairing;
    pairing.rule = PairRule::deviceValues;
    pairing.by = channels.name;
    pairing.unusedMeasured = matching.unusedMeasured();
    pairing.unusedReference = reference.rows() - matching.usedReference;
    const Words words(measured, reference, channels, ours);
    words.addLeftOut(matching, pairing.findings);
    words.addScales(reading, theirs, pairing.findings);
    words.addOffScale(matching, theirs, pairing.findings);
    words.addSteps(reading, theirs, pairing.findings);
    words.addDoubts(reading, theirs, pairing.findings);
    words.addInkOrder(matching, theirs, medianOf, pairing.findings);
    pairing.pairs = std::move(matching.pairs);
    addUnusedSamples(
        measured, reference, [&](int row) { return words.valueOf(row); }, pairing);
    return pairing;
}

namespace {

// The pairs whose device values differ by more than the tolerance.
struct Contradiction {
    std::size_t count = 0;
    RowPair first = {};
    std::size_t channel = 0; // the first that differs in the first pair
};

Contradiction contradiction(const DeviceValues& measuredValues, const DeviceValues& referenceValues,
                            const DeviceRanges& ranges, const std::vector<RowPair>& pairs) {
    const PointSet measured = onGrid(measuredValues, ranges.measured);
    const PointSet reference = onGrid(referenceValues, ranges.reference);
    const Coordinate tolerance = onGrid(toleranceOf(measuredValues, referenceValues, ranges));
    Contradiction result;
    for (const RowPair& pair : pairs) {
        const auto row = static_cast<std::size_t>(pair.measured);
        const auto other = static_cast<std::size_t>(pair.reference.front());
        if (!measuredValues.fits(row, ranges.measured) || !referenceValues.fits(other, ranges.reference))
            continue;
        const Coordinate* ours = measured.point(row);
        const Coordinate* theirs = reference.point(other);
        for (std::size_t channel = 0; channel < measured.dimensions; ++channel) {
            if (std::abs(ours[channel] - theirs[channel]) <= tolerance)
                continue;
            if (result.count++ == 0) {
                result.first = pair;
                result.channel = channel;
            }
            break;
        }
    }
    return result;
}

} // namespace

std::optional<Finding> differentDeviceValues(const Chart& measured, const Chart& reference,
                                             const DeviceChannels& channels,
                                             const std::vector<RowPair>& pairs) {
    SharedDeviceValues both;
    try {
        both = sharedDeviceValues(measured, reference, channels);
    } catch (const Refusal&) {
        return std::nullopt;
    }
    const auto& [ours, theirs] = both;
    std::optional<Contradiction> least;
    for (const DeviceRanges& ranges : possibleRanges(ours, theirs)) {
        const Contradiction found = contradiction(ours, theirs, ranges, pairs);
        if (!least || found.count < least->count)
            least = found;
    }
    if (!least || least->count == 0)
        return std::nullopt;
    const auto rowOf = [&](int row) { return static_cast<std::size_t>(row); };
    const double left = ours.values[rowOf(least->first.measured) * ours.channels + least->channel];
    const double right =
        theirs.values[rowOf(least->first.reference.front()) * theirs.channels + least->channel];
    return Finding{
        Finding::Severity::warning, Finding::Kind::otherPairing,
        "the " + channels.name + " values of " + countText(least->count) + " of " + countText(pairs.size()) +
            " pairs differ, first " + printable(measured.columnName(channels.measured[least->channel])) +
            ", " + detail::generalText(left, 6) + " in row " + std::to_string(least->first.measured + 1) +
            " of " + printable(measured.name) + " and " + detail::generalText(right, 6) + " in row " +
            std::to_string(least->first.reference.front() + 1) + " of " + printable(reference.name)};
}

} // namespace qxcms::qc
