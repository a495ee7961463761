#include "qc/pairing.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

#include "base/number_text.h"
#include "qc/count_text.h"
#include "qc/device_pairing.h"
#include "qc/device_reading.h"
#include "qc/identifier_pairing.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

// Room for any value as text: 127 characters of a string, 320 of a number.
constexpr std::size_t kFieldTextSize = 512;

using Channels = std::optional<DeviceChannels>;

// Device values that pair no more than one row of so many name no samples where identifiers do, and the
// median difference by these is no larger than this.
constexpr std::size_t kNearlyNothing = 10;
constexpr double kOneChart = 10.0;
// Names go before numbers that only count the rows where the median difference by these is above this and
// that by the names below this part of it.
constexpr double kClearDifference = 3.0;
constexpr double kVeryMuchSmaller = 0.25;

constexpr const char* kNoSharedChannels = "the files do not hold the same device values (CMYK, PC, n-colour, "
                                          "SPOT or RGB columns, every channel once)";

Refusal notComparable(const std::string& message) {
    return Refusal(Refusal::Kind::notComparable, message);
}

// What is left to do where a rule cannot be used.
std::string remedy(const Chart& measured, const Chart& reference) {
    return measured.rows() == reference.rows()
               ? "; --pair order pairs the rows in their order all the same"
               : "; the numbers of samples differ too, so give both files such columns, or the rows of one "
                 "the order of the other and leave the rest out, and use --pair order";
}

// Several samples of no light at all are columns that were never filled in; several without ink are paper.
bool areFilledIn(const DeviceValues& values, const DeviceChannels& channels) {
    return channels.name != "RGB" || values.range != 0 || values.rows() == 1;
}

// Device values that are one and the same throughout both charts tell no more than those never filled in.
bool tellRowsApart(const DeviceValues& ours, const DeviceValues& theirs, const DeviceChannels& channels) {
    const bool single = ours.rows() == 1 && theirs.rows() == 1;
    return (single || !ours.areEqualOnEveryRow() || !theirs.areEqualOnEveryRow()) &&
           areFilledIn(ours, channels) && areFilledIn(theirs, channels);
}

Pairing byDeviceValues(const Chart& measured, const Chart& reference, const Channels& channels,
                       const MedianOf& medianOf) {
    if (!channels)
        throw notComparable(kNoSharedChannels + remedy(measured, reference));
    return pairByDeviceValues(measured, reference, *channels, medianOf);
}

// Columns of different names pair charts of one chart's colours only.
IdentifierPairing confirmed(IdentifierPairing found, const MedianOf& medianOf) {
    if (!found.doubt.empty() && medianOf && medianOf(found.pairing.pairs) > kOneChart)
        found.problem = found.doubt;
    return found;
}

Pairing byIdentifiers(const Chart& measured, const Chart& reference, const std::string& identifier,
                      const MedianOf& medianOf) {
    IdentifierPairing found = confirmed(pairByIdentifier(measured, reference, identifier), medianOf);
    if (!found.problem.empty())
        throw notComparable(found.problem + remedy(measured, reference));
    return std::move(found.pairing);
}

// Identifiers that stand in another row of the reference.
std::optional<Finding> displacedIdentifiers(const Chart& measured, const Chart& reference) {
    const IdentifierPairing found = pairByIdentifier(measured, reference);
    if (!found.problem.empty() || !found.doubt.empty())
        return std::nullopt;
    const std::vector<RowPair>& pairs = found.pairing.pairs;
    const auto isDisplaced = [](const RowPair& pair) { return pair.reference.front() != pair.measured; };
    const auto count = static_cast<std::size_t>(std::count_if(pairs.begin(), pairs.end(), isDisplaced));
    if (count == 0)
        return std::nullopt;
    const RowPair& first = *std::find_if(pairs.begin(), pairs.end(), isDisplaced);
    return Finding{Finding::Severity::warning, Finding::Kind::otherPairing,
                   found.pairing.by + " contradicts the order of the rows in " + countText(count) + " of " +
                       countText(static_cast<std::size_t>(measured.rows())) + " pairs: the sample in row " +
                       std::to_string(first.measured + 1) + " of " + printable(measured.name) +
                       " stands in row " + std::to_string(first.reference.front() + 1) + " of " +
                       printable(reference.name)};
}

Pairing inOrder(const Chart& measured) {
    Pairing pairing{PairRule::order, "order", {}, 0, 0, {}};
    pairing.pairs.reserve(static_cast<std::size_t>(measured.rows()));
    for (int row = 0; row < measured.rows(); ++row)
        pairing.pairs.push_back({row, {row}});
    return pairing;
}

Pairing byOrder(const Chart& measured, const Chart& reference) {
    if (measured.rows() != reference.rows())
        throw notComparable("the numbers of samples differ: " + printable(measured.name) + " has " +
                            countText(static_cast<std::size_t>(measured.rows())) + ", " +
                            printable(reference.name) + " has " +
                            countText(static_cast<std::size_t>(reference.rows())) +
                            "; the order of the rows pairs equal numbers only");
    Pairing pairing = inOrder(measured);
    const std::optional<Finding> displaced = displacedIdentifiers(measured, reference);
    if (displaced)
        pairing.findings.push_back(*displaced);
    return pairing;
}

// What the device values say about a pairing by something else.
std::optional<Finding> contradiction(const Chart& measured, const Chart& reference, const Channels& channels,
                                     const Pairing& pairing) {
    if (channels)
        return differentDeviceValues(measured, reference, *channels, pairing.pairs);
    const std::string ours = nameOfDeviceValues(measured);
    const std::string theirs = nameOfDeviceValues(reference);
    if (ours.empty() || theirs.empty())
        return std::nullopt;
    return Finding{
        Finding::Severity::warning, Finding::Kind::otherPairing,
        printable(measured.name) + " holds " + ours + " values and " + printable(reference.name) + " " +
            (ours == theirs ? "other " : "") + theirs + " values; they cannot show whether rows that " +
            (pairing.rule == PairRule::order ? "stand in the same place" : "share a " + pairing.by) +
            " are the same samples"};
}

void addContradiction(const Chart& measured, const Chart& reference, const Channels& channels,
                      Pairing& pairing) {
    const std::optional<Finding> finding = contradiction(measured, reference, channels, pairing);
    if (finding)
        pairing.findings.push_back(*finding);
}

// Why shared device values cannot be used, and how serious that is; nothing where they can.
std::optional<Finding> uselessness(const Chart& measured, const Chart& reference,
                                   const DeviceChannels& channels, const MedianOf& medianOf) {
    const auto [ours, theirs] = sharedDeviceValues(measured, reference, channels);
    if (!canBeRead(ours, theirs, medianOf))
        return Finding{Finding::Severity::warning, Finding::Kind::deviceScale,
                       strangeValue(measured, reference, channels) + "; the " + channels.name +
                           " values are not used, correct them to have the rows paired by them"};
    if (!tellRowsApart(ours, theirs, channels))
        return Finding{Finding::Severity::note, Finding::Kind::otherPairing,
                       "the " + channels.name + " values are not used, as they do not tell the rows apart"};
    return std::nullopt;
}

bool canConfirm(const Chart& measured, const Chart& reference, const Channels& channels) {
    try {
        return channels && !uselessness(measured, reference, *channels, {});
    } catch (const Refusal&) {
        return false;
    }
}

// The first identifier that names samples, pairs all of the smaller chart, and whose colours are those of one
// chart; nothing where colours are not looked at.
std::optional<Pairing> byIdentifierOfOneChart(const Chart& measured, const Chart& reference,
                                              const MedianOf& medianOf) {
    if (!medianOf)
        return std::nullopt;
    const auto smaller = static_cast<std::size_t>(std::min(measured.rows(), reference.rows()));
    for (Pairing& pairing : pairByEachIdentifier(measured, reference))
        if (pairing.pairs.size() == smaller && !onlyCountsRows(measured, reference, pairing.by) &&
            medianOf(pairing.pairs) <= kOneChart)
            return std::move(pairing);
    return std::nullopt;
}

// The identifier that names the samples where the one that was found only counts the rows and colours clearly
// contradict it.
std::optional<Pairing> byNames(const Chart& measured, const Chart& reference, const Pairing& counted,
                               const MedianOf& medianOf) {
    if (!medianOf || !onlyCountsRows(measured, reference, counted.by))
        return std::nullopt;
    std::optional<Pairing> named = byIdentifierOfOneChart(measured, reference, medianOf);
    if (!named)
        return std::nullopt;
    const double median = medianOf(counted.pairs);
    const double medianOfNames = medianOf(named->pairs);
    if (!(median > kClearDifference && medianOfNames < median * kVeryMuchSmaller))
        return std::nullopt;
    named->findings.push_back(
        {Finding::Severity::note, Finding::Kind::otherPairing,
         counted.by + " only counts the rows of both files, so that they are paired by " + named->by +
             ", with a median difference of " + detail::generalText(medianOfNames, 3) + " instead of " +
             detail::generalText(median, 3)});
    return named;
}

// Device values that pair nearly nothing, such as the readings of a scanner, are no names of samples.
Pairing byTellingDeviceValues(const Chart& measured, const Chart& reference, const DeviceChannels& channels,
                              const MedianOf& medianOf) {
    std::optional<Pairing> found;
    std::optional<Refusal> refusal;
    try {
        found = pairByDeviceValues(measured, reference, channels, medianOf);
    } catch (const Refusal& reason) {
        if (reason.kind() != Refusal::Kind::notComparable)
            throw;
        refusal = reason;
    }
    const std::size_t pairs = found ? found->pairs.size() : 0;
    const auto smaller = static_cast<std::size_t>(std::min(measured.rows(), reference.rows()));
    if (kNearlyNothing * pairs <= smaller) {
        std::optional<Pairing> other = byIdentifierOfOneChart(measured, reference, medianOf);
        if (other) {
            other->findings.push_back(
                {Finding::Severity::warning, Finding::Kind::otherPairing,
                 "by " + channels.name + " " + (pairs == 0 ? "none" : "only " + countText(pairs)) + " of " +
                     countText(smaller) + " samples would have a counterpart, so that they are paired by " +
                     other->by + "; check that both files hold one chart"});
            return std::move(*other);
        }
    }
    if (refusal)
        throw Refusal(*refusal);
    return std::move(*found);
}

// Channels of which one chart has more than the other, and that pair less than half of the latter, are
// others.
Channels usefulChannels(const Chart& measured, const Chart& reference, const Channels& channels) {
    if (!channels || !channels->isPart())
        return channels;
    const int rows = (channels->measuredAlone.empty() ? measured : reference).rows();
    try {
        const Pairing pairing = pairByDeviceValues(measured, reference, *channels, {});
        return 2 * pairing.pairs.size() < static_cast<std::size_t>(rows) ? std::nullopt : channels;
    } catch (const Refusal&) {
        return std::nullopt;
    }
}

Pairing byWhatThereIs(const Chart& measured, const Chart& reference, const Channels& shared,
                      const MedianOf& medianOf) {
    const Channels channels = usefulChannels(measured, reference, shared);
    const std::optional<Finding> useless =
        channels ? uselessness(measured, reference, *channels, medianOf) : std::nullopt;
    if (channels && !useless)
        return byTellingDeviceValues(measured, reference, *channels, medianOf);
    IdentifierPairing found = confirmed(pairByIdentifier(measured, reference), medianOf);
    if ((!found.problem.empty() || !found.doubt.empty()) && channels)
        return pairByDeviceValues(measured, reference, *channels, medianOf);
    if (!found.problem.empty())
        throw notComparable("nothing tells which rows belong together: " + std::string(kNoSharedChannels) +
                            ", and " + found.problem + remedy(measured, reference));
    std::optional<Pairing> named = byNames(measured, reference, found.pairing, medianOf);
    Pairing pairing = std::move(named ? *named : found.pairing);
    if (useless)
        pairing.findings.push_back(*useless);
    else
        addContradiction(measured, reference, channels, pairing);
    return pairing;
}

Pairing asForced(const PairOptions& options, const Chart& measured, const Chart& reference,
                 const Channels& channels) {
    Pairing pairing = options.choice == PairChoice::order
                          ? byOrder(measured, reference)
                          : byIdentifiers(measured, reference, options.identifier, options.medianOf);
    addContradiction(measured, reference, channels, pairing);
    pairing.isUnconfirmed = pairing.isUnconfirmed && !canConfirm(measured, reference, channels);
    return pairing;
}

} // namespace

Pairing pairRows(const Chart& measured, const Chart& reference, const PairOptions& options) {
    const Channels channels = sharedChannels(measured, reference);
    const bool isNamed = !options.identifier.empty();
    if (isNamed && (options.choice == PairChoice::deviceValues || options.choice == PairChoice::order))
        throw Refusal(Refusal::Kind::usage, "rows cannot be paired by " + printable(options.identifier) +
                                                " and by another rule at once; ask for one of them");
    switch (options.choice) {
    case PairChoice::automatic:
        if (isNamed)
            return asForced(options, measured, reference, channels);
        break;
    case PairChoice::deviceValues:
        return byDeviceValues(measured, reference, channels, options.medianOf);
    case PairChoice::identifiers:
    case PairChoice::order:
        return asForced(options, measured, reference, channels);
    }
    return byWhatThereIs(measured, reference, channels, options.medianOf);
}

Pairing pairRows(const Chart& measured, const Chart& reference, PairChoice choice) {
    return pairRows(measured, reference, PairOptions{choice, "", {}});
}

std::vector<Pairing> possiblePairings(const Chart& measured, const Chart& reference,
                                      const MedianOf& medianOf) {
    std::vector<Pairing> pairings;
    try {
        pairings.push_back(
            byDeviceValues(measured, reference, sharedChannels(measured, reference), medianOf));
    } catch (const Refusal&) {
        pairings.clear();
    }
    for (Pairing& pairing : pairByEachIdentifier(measured, reference))
        pairings.push_back(std::move(pairing));
    if (measured.rows() == reference.rows())
        pairings.push_back(inOrder(measured));
    return pairings;
}

int identifierColumn(const Chart& chart) {
    for (const char* name : kIdentifiers) {
        const int column = chart.document->GetFieldNameIndex(chart.table, name);
        if (column >= 0)
            return column;
    }
    return -1;
}

std::string fieldText(const Chart& chart, int row, int column) {
    char text[kFieldTextSize] = "";
    chart.document->GetField(chart.table, row, column, text);
    return text;
}

} // namespace qxcms::qc
