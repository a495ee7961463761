#include "qc/pairing.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "base/number_text.h"
#include "platform/utility.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

// In the order in which they are looked for.
constexpr const char* kIdentifiers[] = {"SampleID", "SAMPLE_ID", "SAMPLE_NAME"};

// Room for any value as text: 127 characters of a string, 320 of a number.
constexpr std::size_t kFieldTextSize = 512;

constexpr const char* kRemedy = "--pair order pairs the rows in their order all the same";

// What the charts say about their rows belonging together.
struct Evidence {
    enum class Verdict { missing, differs, agrees };
    Verdict verdict;
    std::string words; // why it does not agree; empty where it does
};

Evidence missing(const std::string& words) {
    return {Evidence::Verdict::missing, words};
}

Evidence differs(const std::string& words) {
    return {Evidence::Verdict::differs, words};
}

Evidence agrees() {
    return {Evidence::Verdict::agrees, ""};
}

std::string inRow(int row) {
    return " in row " + std::to_string(row + 1);
}

using Columns = std::vector<std::int32_t>;

// The columns RGB_R, RGB_G and RGB_B; none unless there are all three, as numbers.
Columns rgbColumns(const Chart& chart) {
    Columns columns;
    for (const char* name : {"RGB_R", "RGB_G", "RGB_B"}) {
        const int column = chart.document->GetFieldNameIndex(chart.table, name);
        if (column < 0 || chart.header().GetField(column)->GetDataType() != TCgatsField::kFloat)
            return {};
        columns.push_back(column);
    }
    return columns;
}

// The columns of the device values: process colours and spot colours by channel, then RGB. None where the
// numbering of the channels has a gap.
Columns deviceColumns(const Chart& chart) {
    const TCgatsTableHeader& header = chart.header();
    Columns columns;
    if (chart.document->ContainsProcessColors(chart.table))
        columns.assign(header.GetColorColumns(), header.GetColorColumns() + header.GetNrColors());
    columns.insert(columns.end(), header.GetSpotColumns(), header.GetSpotColumns() + header.GetNrSpots());
    const Columns rgb = rgbColumns(chart);
    columns.insert(columns.end(), rgb.begin(), rgb.end());
    const bool hasGap = std::find(columns.begin(), columns.end(), -1) != columns.end();
    return hasGap ? Columns() : columns;
}

bool haveEqualNames(const Chart& measured, const Columns& ours, const Chart& reference,
                    const Columns& theirs) {
    return std::equal(ours.begin(), ours.end(), theirs.begin(), theirs.end(), [&](int left, int right) {
        return strcmp_ci(measured.columnName(left), reference.columnName(right)) == 0;
    });
}

bool holdsDoubt(const Chart& chart, const Columns& columns) {
    return std::any_of(chart.doubts.begin(), chart.doubts.end(), [&](const DoubtfulValue& doubt) {
        return std::find(columns.begin(), columns.end(), doubt.column) != columns.end();
    });
}

std::vector<double> valuesOf(const Chart& chart, int row, const Columns& columns) {
    std::vector<double> values;
    for (const std::int32_t column : columns)
        values.push_back(chart.data().GetValues(column)->GetDouble(row));
    return values;
}

void requireFiniteValues(const Chart& chart, const Columns& columns) {
    for (int row = 0; row < chart.rows(); ++row) {
        const std::vector<double> values = valuesOf(chart, row, columns);
        requireFinite(chart, row, values.data(), columns.data(), static_cast<int>(columns.size()));
    }
}

// @param mustBeNumbers whether a value that is no finite number is refused.
Evidence deviceEvidence(const Chart& measured, const Chart& reference, bool mustBeNumbers) {
    const Columns ours = deviceColumns(measured);
    const Columns theirs = deviceColumns(reference);
    if (ours.empty() || !haveEqualNames(measured, ours, reference, theirs))
        return missing("the files do not hold the same device values (CMYK, PC, n-colour, SPOT or RGB "
                       "columns, every channel once)");
    if (mustBeNumbers) {
        requireNumbers(measured, ours);
        requireNumbers(reference, theirs);
        requireFiniteValues(measured, ours);
        requireFiniteValues(reference, theirs);
    } else if (holdsDoubt(measured, ours) || holdsDoubt(reference, theirs)) {
        return missing("device values are no numbers");
    }
    for (int row = 0; row < measured.rows(); ++row) {
        const std::vector<double> left = valuesOf(measured, row, ours);
        const std::vector<double> right = valuesOf(reference, row, theirs);
        const auto [first, other] = std::mismatch(left.begin(), left.end(), right.begin());
        if (first == left.end())
            continue;
        const auto channel = static_cast<std::size_t>(first - left.begin());
        return differs("the device values differ first" + inRow(row) + " (" +
                       printable(measured.columnName(ours[channel])) + " " + detail::generalText(*first, 6) +
                       " measured, " + detail::generalText(*other, 6) + " reference)");
    }
    return agrees();
}

// Why a column cannot tell rows apart; empty where it can.
std::string uselessness(const Chart& chart, int column) {
    const std::string first = fieldText(chart, 0, column);
    bool allEqual = chart.rows() > 1;
    for (int row = 0; row < chart.rows(); ++row) {
        const std::string text = fieldText(chart, row, column);
        if (text.empty())
            return std::string(chart.columnName(column)) + " is empty" + inRow(row) + " of " +
                   printable(chart.name);
        allEqual = allEqual && text == first;
    }
    return allEqual ? std::string(chart.columnName(column)) + " is the same on every row of " +
                          printable(chart.name)
                    : "";
}

struct SharedIdentifier {
    const char* name; // null when the charts share none that tells rows apart
    int measured;
    int reference;
    std::string problem; // of the first one that does not
};

SharedIdentifier sharedIdentifier(const Chart& measured, const Chart& reference) {
    std::string problem;
    for (const char* name : kIdentifiers) {
        const int ours = measured.document->GetFieldNameIndex(measured.table, name);
        const int theirs = reference.document->GetFieldNameIndex(reference.table, name);
        if (ours < 0 || theirs < 0)
            continue;
        std::string found = uselessness(measured, ours);
        if (found.empty())
            found = uselessness(reference, theirs);
        if (found.empty())
            return {name, ours, theirs, ""};
        if (problem.empty())
            problem = found;
    }
    return {nullptr, -1, -1, problem};
}

Evidence identifierEvidence(const Chart& measured, const Chart& reference,
                            const SharedIdentifier& identifier) {
    if (identifier.name == nullptr && identifier.problem.empty())
        return missing("they share no identifier (SampleID, SAMPLE_ID, SAMPLE_NAME)");
    if (identifier.name == nullptr)
        return missing(identifier.problem);
    for (int row = 0; row < measured.rows(); ++row) {
        const std::string ours = fieldText(measured, row, identifier.measured);
        const std::string theirs = fieldText(reference, row, identifier.reference);
        if (ours != theirs)
            return differs(std::string(identifier.name) + " differs first" + inRow(row) + " (" +
                           quoted(ours) + " measured, " + quoted(theirs) + " reference)");
    }
    return agrees();
}

void requireEqualCounts(const Chart& measured, const Chart& reference) {
    if (measured.rows() == reference.rows())
        return;
    throw Refusal(Refusal::Kind::notComparable,
                  "the numbers of samples differ: " + printable(measured.name) + " has " +
                      std::to_string(measured.rows()) + ", " + printable(reference.name) + " has " +
                      std::to_string(reference.rows()) +
                      "; rows are paired one by one, so both files need the same");
}

} // namespace

Pairing pairRows(const Chart& measured, const Chart& reference, PairChoice choice) {
    using Verdict = Evidence::Verdict;
    requireEqualCounts(measured, reference);
    const bool automatic = choice == PairChoice::automatic;
    const Evidence device = deviceEvidence(measured, reference, automatic);
    const SharedIdentifier identifier = sharedIdentifier(measured, reference);
    const Evidence names = identifierEvidence(measured, reference, identifier);
    Pairing pairing;
    if (!automatic)
        pairing.rule = PairRule::order;
    else if (device.verdict == Verdict::agrees)
        pairing.rule = PairRule::deviceValues;
    else if (names.verdict == Verdict::agrees)
        pairing.rule = PairRule::identifiers;
    else
        throw Refusal(Refusal::Kind::notComparable,
                      "nothing tells which rows belong together: " + device.words + ", and " + names.words +
                          "; " + kRemedy);
    if (pairing.rule == PairRule::identifiers)
        pairing.field = identifier.name;
    for (const Evidence& evidence : {device, names}) {
        if (evidence.verdict == Verdict::differs)
            pairing.remarks.push_back(evidence.words);
    }
    return pairing;
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
