#include "qc/identifier_pairing.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <utility>

#include "qc/device_values.h"
#include "qc/printable_text.h"
#include "qc/unused_samples.h"

namespace qxcms::qc {

namespace {

using Texts = std::vector<std::string>;
using RowOfText = std::unordered_map<std::string, int>;

Texts textsOf(const Chart& chart, int column) {
    Texts texts;
    texts.reserve(static_cast<std::size_t>(chart.rows()));
    for (int row = 0; row < chart.rows(); ++row)
        texts.push_back(fieldText(chart, row, column));
    return texts;
}

RowOfText rowsByText(const Texts& texts) {
    RowOfText rows;
    rows.reserve(texts.size());
    for (std::size_t row = 0; row < texts.size(); ++row)
        rows.emplace(texts[row], static_cast<int>(row));
    return rows;
}

// Why a column does not tell rows apart; empty where it does.
std::string uselessness(const Chart& chart, const char* name, const Texts& texts) {
    RowOfText rows;
    rows.reserve(texts.size());
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const int row = static_cast<int>(i);
        if (texts[i].empty())
            return std::string(name) + " is empty in row " + std::to_string(row + 1) + " of " +
                   printable(chart.name);
        const auto [earlier, isNew] = rows.emplace(texts[i], row);
        if (!isNew)
            return std::string(name) + " " + quoted(texts[i]) + " stands in rows " +
                   std::to_string(earlier->second + 1) + " and " + std::to_string(row + 1) + " of " +
                   printable(chart.name);
    }
    return "";
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// "1" for "1", "001" and "1.0"; empty for a text that is no whole number.
std::string wholeNumber(const std::string& text) {
    const auto first = std::find_if_not(text.begin(), text.end(), [](char c) { return c == '0'; });
    const auto end = std::find_if_not(first, text.end(), isDigit);
    if (end == text.begin())
        return "";
    if (end != text.end() &&
        (*end != '.' || !std::all_of(end + 1, text.end(), [](char c) { return c == '0'; })))
        return "";
    return first == end ? "0" : std::string(first, end);
}

// The texts as whole numbers; none unless every one is, and another one.
Texts wholeNumbers(const Texts& texts) {
    Texts numbers;
    numbers.reserve(texts.size());
    std::transform(texts.begin(), texts.end(), std::back_inserter(numbers), wholeNumber);
    const RowOfText rows = rowsByText(numbers);
    return rows.size() == texts.size() && rows.count("") == 0 ? numbers : Texts();
}

char upperCase(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

// In capitals, and numbers in it without leading zeros: "A1" for "a01". A number behind a point keeps them.
std::string plainText(const std::string& text) {
    std::string plain;
    std::size_t i = 0;
    while (i < text.size()) {
        if (!isDigit(text[i])) {
            plain += upperCase(text[i++]);
            continue;
        }
        const std::size_t end = std::min(text.find_first_not_of("0123456789", i), text.size());
        const bool isFraction = i > 0 && (text[i - 1] == '.' || text[i - 1] == ',');
        const std::size_t first = isFraction ? i : std::min(text.find_first_not_of('0', i), end - 1);
        plain.append(text, first, end - first);
        i = end;
    }
    return plain;
}

// The texts in that form; none where two of them are the same in it.
Texts plainTexts(const Texts& texts) {
    Texts plain;
    plain.reserve(texts.size());
    std::transform(texts.begin(), texts.end(), std::back_inserter(plain), plainText);
    return rowsByText(plain).size() == texts.size() ? plain : Texts();
}

std::vector<RowPair> pairsOf(const Texts& measured, const Texts& reference) {
    const RowOfText rows = rowsByText(reference);
    std::vector<RowPair> pairs;
    pairs.reserve(measured.size());
    for (std::size_t row = 0; row < measured.size(); ++row) {
        const auto found = rows.find(measured[row]);
        if (found != rows.end())
            pairs.push_back({static_cast<int>(row), {found->second}});
    }
    return pairs;
}

std::vector<RowPair> pairsAsText(const Texts& measured, const Texts& reference) {
    const Texts ours = plainTexts(measured);
    const Texts theirs = plainTexts(reference);
    return ours.empty() || theirs.empty() ? pairsOf(measured, reference) : pairsOf(ours, theirs);
}

// A note where texts that are written differently were paired.
void addSpelling(const char* name, const char* manner, const Texts& measured, const Texts& reference,
                 Pairing& pairing) {
    const auto textOf = [](const Texts& texts, int row) { return texts[static_cast<std::size_t>(row)]; };
    const auto differ = std::find_if(pairing.pairs.begin(), pairing.pairs.end(), [&](const RowPair& pair) {
        return textOf(measured, pair.measured) != textOf(reference, pair.reference.front());
    });
    if (differ != pairing.pairs.end())
        pairing.findings.push_back({Finding::Severity::note, Finding::Kind::ambiguousSamples,
                                    std::string(name) + " is compared " + manner + ": " +
                                        quoted(textOf(measured, differ->measured)) + " and " +
                                        quoted(textOf(reference, differ->reference.front())) +
                                        " are taken for the same"});
}

bool countRows(const Texts& texts) {
    for (std::size_t row = 0; row < texts.size(); ++row)
        if (wholeNumber(texts[row]) != std::to_string(row + 1))
            return false;
    return true;
}

// Numbers that merely count the rows name no samples, above all where one side alone holds device values.
void addCounting(const char* name, const Texts& measured, const Texts& reference, bool areAlike,
                 Pairing& pairing) {
    if (measured.size() < 2 || !countRows(measured) || !countRows(reference))
        return;
    const bool isWhole = areAlike && measured.size() == reference.size();
    pairing.findings.push_back(
        {isWhole ? Finding::Severity::note : Finding::Severity::warning, Finding::Kind::ambiguousSamples,
         std::string(name) + " only counts the rows of both files, so that they are paired in their order"});
}

// Pairs by one identifier that both charts have.
IdentifierPairing pairBy(const char* name, const Chart& measured, int measuredColumn, const Chart& reference,
                         int referenceColumn) {
    const Texts ours = textsOf(measured, measuredColumn);
    const Texts theirs = textsOf(reference, referenceColumn);
    IdentifierPairing result{{PairRule::identifiers, name, {}, 0, 0, {}}, uselessness(measured, name, ours)};
    if (result.problem.empty())
        result.problem = uselessness(reference, name, theirs);
    if (!result.problem.empty())
        return result;
    Pairing& pairing = result.pairing;
    pairing.isUnconfirmed = true;
    const Texts ourNumbers = wholeNumbers(ours);
    const Texts theirNumbers = wholeNumbers(theirs);
    const bool asNumbers = !ourNumbers.empty() && !theirNumbers.empty();
    if (asNumbers)
        pairing.pairs = pairsOf(ourNumbers, theirNumbers);
    else
        pairing.pairs = pairsAsText(ours, theirs);
    if (pairing.pairs.empty()) {
        result.problem = std::string("no ") + name + " of " + printable(measured.name) + " stands in " +
                         printable(reference.name) + " too";
        return result;
    }
    pairing.unusedMeasured = measured.rows() - static_cast<int>(pairing.pairs.size());
    pairing.unusedReference = reference.rows() - static_cast<int>(pairing.pairs.size());
    addSpelling(name, asNumbers ? "as a number" : "without regard to letter case and leading zeros", ours,
                theirs, pairing);
    const auto nameOf = [&](int row) { return name + (' ' + quoted(ours[static_cast<std::size_t>(row)])); };
    addUnusedSamples(measured, reference, nameOf, pairing);
    addCounting(name, ours, theirs,
                nameOfDeviceValues(measured).empty() == nameOfDeviceValues(reference).empty(), pairing);
    return result;
}

// Nothing where not both charts have the column.
std::optional<IdentifierPairing> pairByColumn(const char* name, const Chart& measured,
                                              const Chart& reference) {
    const int ours = measured.document->GetFieldNameIndex(measured.table, name);
    const int theirs = reference.document->GetFieldNameIndex(reference.table, name);
    if (ours < 0 || theirs < 0)
        return std::nullopt;
    return pairBy(name, measured, ours, reference, theirs);
}

// The reference row of each measured one, -1 for none.
std::vector<int> referenceRows(const Pairing& pairing, int measuredRows) {
    std::vector<int> rows(static_cast<std::size_t>(measuredRows), -1);
    for (const RowPair& pair : pairing.pairs)
        rows[static_cast<std::size_t>(pair.measured)] = pair.reference.front();
    return rows;
}

// A warning where another identifier pairs a row with another one.
void addContradiction(const Chart& measured, const Pairing& other, Pairing& pairing) {
    const std::vector<int> ours = referenceRows(pairing, measured.rows());
    const std::vector<int> theirs = referenceRows(other, measured.rows());
    for (std::size_t row = 0; row < ours.size(); ++row) {
        if (ours[row] < 0 || theirs[row] < 0 || ours[row] == theirs[row])
            continue;
        pairing.findings.push_back({Finding::Severity::warning, Finding::Kind::otherPairing,
                                    pairing.by + " pairs row " + std::to_string(row + 1) + " with row " +
                                        std::to_string(ours[row] + 1) + " of the reference, but " + other.by +
                                        " with row " + std::to_string(theirs[row] + 1) +
                                        "; check which of them names the samples"});
        return;
    }
}

} // namespace

IdentifierPairing pairByIdentifier(const Chart& measured, const Chart& reference, const std::string& only) {
    IdentifierPairing result{{}, ""};
    for (const char* name : kIdentifiers) {
        if (!only.empty() && only != name)
            continue;
        const std::optional<IdentifierPairing> found = pairByColumn(name, measured, reference);
        if (!found)
            continue;
        if (found->problem.empty() && result.pairing.pairs.empty())
            result = *found;
        else if (found->problem.empty())
            addContradiction(measured, found->pairing, result.pairing);
        else if (result.pairing.pairs.empty() && result.problem.empty())
            result.problem = found->problem;
    }
    if (result.pairing.pairs.empty() && result.problem.empty())
        result.problem =
            only.empty() ? "the files share no identifier (SampleID, SAMPLE_ID, SAMPLE_NAME or SAMPLE_LOC)"
                         : "the files do not both have " + only;
    return result;
}

std::vector<Pairing> pairByEachIdentifier(const Chart& measured, const Chart& reference) {
    std::vector<Pairing> pairings;
    for (const char* name : kIdentifiers) {
        std::optional<IdentifierPairing> found = pairByColumn(name, measured, reference);
        if (found && found->problem.empty())
            pairings.push_back(std::move(found->pairing));
    }
    return pairings;
}

} // namespace qxcms::qc
