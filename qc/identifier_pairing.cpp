#include "qc/identifier_pairing.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "platform/utility.h"
#include "qc/characters.h"
#include "qc/count_text.h"
#include "qc/device_values.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"
#include "qc/unused_samples.h"

namespace qxcms::qc {

namespace {

using Texts = std::vector<std::string>;
using TextSet = std::unordered_set<std::string>;
using RowOfText = std::unordered_map<std::string, int>;

constexpr const char* kKnownIdentifiers = "SampleID, SAMPLE_ID, SAMPLE_NAME or SAMPLE_LOC";
// One name may stand in two columns by chance.
constexpr std::size_t kFewestAcross = 2;
// Names of a file are those of samples where no more than one row of so many shares its name with another
// one.
constexpr std::size_t kFewDoubled = 10;

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

bool isSeparator(char c) {
    return c == ' ' || c == '\t' || c == '_' || c == '-';
}

// That form without blanks, "_" and "-": "A1" for "A 01", "A_1" and "a-1 ". Between numbers ("1-12", "11 2")
// and in front of one ("-5") something stands for them.
std::string joinedText(const std::string& text) {
    const std::string plain = plainText(text);
    std::string joined;
    for (std::size_t i = 0; i < plain.size(); ++i) {
        if (!isSeparator(plain[i])) {
            joined += plain[i];
            continue;
        }
        const bool isSign = joined.empty() && plain[i] == '-';
        while (i + 1 < plain.size() && isSeparator(plain[i + 1]))
            ++i;
        const bool isBehindNumber = !joined.empty() && isDigit(joined.back());
        if ((isSign || isBehindNumber) && i + 1 < plain.size() && isDigit(plain[i + 1]))
            joined += '-';
    }
    return joined.empty() ? plain : joined;
}

using Form = std::string (*)(const std::string&);

// The texts in a form; none where two of them are the same in it.
Texts inForm(const Texts& texts, Form form) {
    Texts result;
    result.reserve(texts.size());
    std::transform(texts.begin(), texts.end(), std::back_inserter(result), form);
    return rowsByText(result).size() == texts.size() ? result : Texts();
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

// Pairs, and how their texts are compared.
struct Agreement {
    std::vector<RowPair> pairs;
    const char* manner;
};

// In the strictest form that pairs the most, of those that keep the texts apart.
Agreement agreementAsText(const Texts& measured, const Texts& reference) {
    struct Manner {
        Form form;
        const char* words;
    };
    constexpr Manner kManners[] = {
        {plainText, "without regard to letter case and leading zeros"},
        {joinedText, "without regard to letter case, leading zeros, blanks, \"_\" and \"-\""}};
    Agreement agreement{pairsOf(measured, reference), ""};
    for (const Manner& manner : kManners) {
        const Texts ours = inForm(measured, manner.form);
        const Texts theirs = inForm(reference, manner.form);
        if (ours.empty() || theirs.empty())
            continue;
        std::vector<RowPair> pairs = pairsOf(ours, theirs);
        if (pairs.size() > agreement.pairs.size())
            agreement = {std::move(pairs), manner.words};
    }
    return agreement;
}

// As numbers where all of them are whole numbers.
Agreement agreementOf(const Texts& measured, const Texts& reference) {
    const Texts ours = wholeNumbers(measured);
    const Texts theirs = wholeNumbers(reference);
    if (!ours.empty() && !theirs.empty())
        return {pairsOf(ours, theirs), "as a number"};
    return agreementAsText(measured, reference);
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

// Counts the rows without a counterpart, and tells them.
void addUnused(const char* name, const Chart& measured, const Chart& reference, const Texts& texts,
               Pairing& pairing) {
    pairing.unusedMeasured = measured.rows() - static_cast<int>(pairing.pairs.size());
    pairing.unusedReference = reference.rows() - static_cast<int>(pairing.pairs.size());
    const auto nameOf = [&](int row) { return name + (' ' + quoted(texts[static_cast<std::size_t>(row)])); };
    addUnusedSamples(measured, reference, nameOf, pairing);
}

// Pairs by one identifier that both charts have.
IdentifierPairing pairBy(const char* name, const Chart& measured, int measuredColumn, const Chart& reference,
                         int referenceColumn) {
    const Texts ours = textsOf(measured, measuredColumn);
    const Texts theirs = textsOf(reference, referenceColumn);
    IdentifierPairing result{
        {PairRule::identifiers, name, {}, 0, 0, {}}, uselessness(measured, name, ours), ""};
    if (result.problem.empty())
        result.problem = uselessness(reference, name, theirs);
    if (!result.problem.empty())
        return result;
    Pairing& pairing = result.pairing;
    pairing.isUnconfirmed = true;
    Agreement agreement = agreementOf(ours, theirs);
    pairing.pairs = std::move(agreement.pairs);
    if (pairing.pairs.empty()) {
        result.problem = std::string("no ") + name + " of " + printable(measured.name) + " stands in " +
                         printable(reference.name) + " too";
        return result;
    }
    addSpelling(name, agreement.manner, ours, theirs, pairing);
    addUnused(name, measured, reference, ours, pairing);
    addCounting(name, ours, theirs,
                nameOfDeviceValues(measured).empty() == nameOfDeviceValues(reference).empty(), pairing);
    return result;
}

int columnNamed(const Chart& chart, const char* name) {
    return chart.document->GetFieldNameIndex(chart.table, name);
}

// Nothing where not both charts have the column.
std::optional<IdentifierPairing> pairByColumn(const char* name, const Chart& measured,
                                              const Chart& reference) {
    const int ours = columnNamed(measured, name);
    const int theirs = columnNamed(reference, name);
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

// An identifier whose texts are more than numbers of rows.
struct NameColumn {
    std::string name;
    Texts texts;
    std::string problem; // why it does not tell the rows apart; empty where it does
};

std::vector<NameColumn> nameColumns(const Chart& chart) {
    std::vector<NameColumn> columns;
    for (const char* name : kIdentifiers) {
        const int column = columnNamed(chart, name);
        if (column < 0)
            continue;
        Texts texts = textsOf(chart, column);
        std::string problem = uselessness(chart, name, texts);
        if (!problem.empty() || wholeNumbers(texts).empty())
            columns.push_back({name, std::move(texts), std::move(problem)});
    }
    return columns;
}

// At least half of the rows of the smaller chart.
bool areMost(std::size_t rows, const Chart& measured, const Chart& reference) {
    const auto smaller = static_cast<std::size_t>(std::min(measured.rows(), reference.rows()));
    return rows >= kFewestAcross && 2 * rows >= smaller;
}

std::string acrossWords(const NameColumn& left, const Chart& measured, const NameColumn& right,
                        const Chart& reference) {
    return left.name + " of " + printable(measured.name) + " holds what " + right.name + " of " +
           printable(reference.name) + " does";
}

// Where an identifier of one chart would pair with another one of the other chart if it told the rows apart.
std::string problemAcross(const Chart& measured, const Chart& reference) {
    const std::vector<NameColumn> theirs = nameColumns(reference);
    for (const NameColumn& left : nameColumns(measured)) {
        for (const NameColumn& right : theirs) {
            if (left.name == right.name || (left.problem.empty() && right.problem.empty()))
                continue;
            RowOfText known;
            for (const std::string& text : right.texts)
                known.emplace(joinedText(text), 0);
            const auto shared =
                std::count_if(left.texts.begin(), left.texts.end(),
                              [&](const std::string& text) { return known.count(joinedText(text)) != 0; });
            if (areMost(static_cast<std::size_t>(shared), measured, reference))
                return acrossWords(left, measured, right, reference) + ", but " +
                       (left.problem.empty() ? right.problem : left.problem);
        }
    }
    return "";
}

// Where an identifier of one chart holds what another one of the other chart holds, in most rows; without
// pairs where none does.
Pairing pairAcross(const Chart& measured, const Chart& reference) {
    const std::vector<NameColumn> ours = nameColumns(measured);
    const std::vector<NameColumn> theirs = nameColumns(reference);
    Agreement best{{}, ""};
    const NameColumn* one = nullptr;
    const NameColumn* other = nullptr;
    for (const NameColumn& left : ours) {
        for (const NameColumn& right : theirs) {
            if (left.name == right.name || !left.problem.empty() || !right.problem.empty())
                continue;
            Agreement found = agreementAsText(left.texts, right.texts);
            if (found.pairs.size() <= best.pairs.size())
                continue;
            best = std::move(found);
            one = &left;
            other = &right;
        }
    }
    Pairing pairing{PairRule::identifiers, "", {}, 0, 0, {}};
    if (!areMost(best.pairs.size(), measured, reference))
        return pairing;
    pairing.by = one->name + " against " + other->name;
    pairing.pairs = std::move(best.pairs);
    pairing.isUnconfirmed = true;
    const RowPair& first = pairing.pairs.front();
    pairing.findings.push_back(
        {Finding::Severity::warning, Finding::Kind::ambiguousSamples,
         acrossWords(*one, measured, *other, reference) + " (" +
             quoted(one->texts[static_cast<std::size_t>(first.measured)]) + " and " +
             quoted(other->texts[static_cast<std::size_t>(first.reference.front())]) +
             "), so that rows are paired by these; check that both name the samples, and give both files one "
             "column of these names"});
    addUnused(one->name.c_str(), measured, reference, one->texts, pairing);
    return pairing;
}

// The texts that stand in several rows, in their plainest form.
void addDoubled(const Texts& texts, TextSet& doubled) {
    TextSet known;
    for (const std::string& text : texts)
        if (!known.insert(text).second)
            doubled.insert(joinedText(text));
}

// The rows whose texts, compared in the plainest form, are none of these.
std::vector<int> rowsWithout(const TextSet& doubled, const Texts& texts) {
    std::vector<int> rows;
    for (std::size_t row = 0; row < texts.size(); ++row)
        if (doubled.count(joinedText(texts[row])) == 0)
            rows.push_back(static_cast<int>(row));
    return rows;
}

Texts textsIn(const std::vector<int>& rows, const Texts& texts) {
    Texts result;
    result.reserve(rows.size());
    for (const int row : rows)
        result.push_back(texts[static_cast<std::size_t>(row)]);
    return result;
}

bool hasEmpty(const Texts& texts) {
    return std::any_of(texts.begin(), texts.end(), [](const std::string& text) { return text.empty(); });
}

bool areFew(std::size_t left, std::size_t rows) {
    return kFewDoubled * left <= rows;
}

// The first text that stands in several rows, and in which.
std::string firstDoubled(const Chart& measured, const Texts& ours, const Chart& reference,
                         const Texts& theirs, const char* name) {
    const std::string problem = uselessness(measured, name, ours);
    return problem.empty() ? uselessness(reference, name, theirs) : problem;
}

// By the texts that are unique on both sides where few are not; without pairs where many are, or where too
// few samples pair.
Pairing pairByUnique(const char* name, const Chart& measured, const Chart& reference) {
    Pairing pairing{PairRule::identifiers, name, {}, 0, 0, {}};
    const Texts ours = textsOf(measured, columnNamed(measured, name));
    const Texts theirs = textsOf(reference, columnNamed(reference, name));
    TextSet doubled;
    addDoubled(ours, doubled);
    addDoubled(theirs, doubled);
    const std::vector<int> ourRows = rowsWithout(doubled, ours);
    const std::vector<int> theirRows = rowsWithout(doubled, theirs);
    const std::size_t left = ours.size() - ourRows.size();
    if (doubled.empty() || hasEmpty(ours) || hasEmpty(theirs) || !areFew(left, ours.size()) ||
        !areFew(theirs.size() - theirRows.size(), theirs.size()))
        return pairing;
    Agreement agreement = agreementOf(textsIn(ourRows, ours), textsIn(theirRows, theirs));
    if (!areMost(agreement.pairs.size(), measured, reference))
        return pairing;
    for (const RowPair& pair : agreement.pairs)
        pairing.pairs.push_back({ourRows[static_cast<std::size_t>(pair.measured)],
                                 {theirRows[static_cast<std::size_t>(pair.reference.front())]}});
    pairing.isUnconfirmed = true;
    pairing.findings.push_back(
        {left > 0 ? Finding::Severity::warning : Finding::Severity::note, Finding::Kind::ambiguousSamples,
         firstDoubled(measured, ours, reference, theirs, name) + "; rows whose " + name +
             " is not unique in both files (" + countText(left) + " of " + countText(ours.size()) + " in " +
             printable(measured.name) + ", " + countText(theirs.size() - theirRows.size()) + " of " +
             countText(theirs.size()) + " in " + printable(reference.name) +
             ") are left out, give each a name of its own to have them compared"});
    addSpelling(name, agreement.manner, ours, theirs, pairing);
    addUnused(name, measured, reference, ours, pairing);
    return pairing;
}

bool isIdentifier(const std::string& name) {
    return std::any_of(std::begin(kIdentifiers), std::end(kIdentifiers),
                       [&](const char* known) { return strcmp_ci(known, name.c_str()) == 0; });
}

// What was found, which pairs nothing; else by the unique ones of the first identifier that is nearly unique.
IdentifierPairing orByUnique(IdentifierPairing found, const std::string& only, const Chart& measured,
                             const Chart& reference) {
    for (const char* name : kIdentifiers) {
        if ((!only.empty() && strcmp_ci(only.c_str(), name) != 0) || columnNamed(measured, name) < 0 ||
            columnNamed(reference, name) < 0)
            continue;
        Pairing pairing = pairByUnique(name, measured, reference);
        if (!pairing.pairs.empty())
            return {std::move(pairing), "",
                    found.problem + "; the colours of rows whose " + name + " is unique differ"};
    }
    return found;
}

} // namespace

IdentifierPairing pairByIdentifier(const Chart& measured, const Chart& reference, const std::string& only) {
    if (!only.empty() && !isIdentifier(only))
        throw Refusal(Refusal::Kind::usage,
                      quoted(only) + " is no identifier; known are " + kKnownIdentifiers);
    IdentifierPairing result{{}, "", ""};
    for (const char* name : kIdentifiers) {
        if (!only.empty() && strcmp_ci(only.c_str(), name) != 0)
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
        result.problem = only.empty()
                             ? "the files share no identifier (" + std::string(kKnownIdentifiers) + ")"
                             : "the files do not both have " + only;
    if (!result.pairing.pairs.empty())
        return result;
    if (!only.empty())
        return orByUnique(std::move(result), only, measured, reference);
    Pairing across = pairAcross(measured, reference);
    if (!across.pairs.empty()) {
        const std::string doubt =
            result.problem + "; the colours of rows that share a text in " + across.by + " differ";
        return {std::move(across), "", doubt};
    }
    const std::string problem = problemAcross(measured, reference);
    if (!problem.empty())
        result.problem += "; " + problem;
    return orByUnique(std::move(result), only, measured, reference);
}

bool onlyCountsRows(const Chart& measured, const Chart& reference, const std::string& identifier) {
    const int ours = columnNamed(measured, identifier.c_str());
    const int theirs = columnNamed(reference, identifier.c_str());
    return ours >= 0 && theirs >= 0 && countRows(textsOf(measured, ours)) &&
           countRows(textsOf(reference, theirs));
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
