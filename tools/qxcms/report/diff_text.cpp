#include "tools/qxcms/report/diff_text.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "qc/count_text.h"
#include "qc/printable_text.h"
#include "spectral/tspectrum.h"
#include "tools/qxcms/report/text_layout.h"

namespace qxcms::command {

namespace {

constexpr std::size_t kIndent = 14;

std::string line(std::string_view label, std::string_view text) {
    return paragraph("  " + std::string(label), kIndent, text);
}

// The standard sampling that spectra are brought to.
constexpr int kFirstNm = 380;
constexpr int kLastNm = 730;

std::string spectraText(const qc::Side& side) {
    std::string text = "spectra, " + std::to_string(side.bands) + (side.bands == 1 ? " band" : " bands") +
                       " from " + std::to_string(side.firstNm) + " to " + std::to_string(side.lastNm) +
                       " nm, read as " + (side.percent ? "percent" : "fractions (not percent)");
    if (side.firstNm > kFirstNm || side.lastNm < kLastNm)
        text += ", held constant beyond them over 380 to 730 nm";
    return text;
}

std::string sourceText(const qc::Side& side) {
    switch (side.source) {
    case qc::ColorSource::spectra:
        return spectraText(side);
    case qc::ColorSource::lab:
        return "Lab as it stands";
    case qc::ColorSource::xyz:
        return "XYZ, converted to Lab";
    }
    return "";
}

std::string sideLines(std::string_view label, const qc::Side& side) {
    const std::string tables =
        side.tables > 1 ? "table " + std::to_string(side.table) + " of " + std::to_string(side.tables) + ", "
                        : "";
    return line(label, qc::printable(side.file)) +
           line("", tables + qc::countText(static_cast<std::size_t>(side.samples)) +
                        (side.samples == 1 ? " sample; " : " samples; ") + sourceText(side));
}

std::string whiteText(const std::array<double, 3>& white) {
    return "X " + numberText(white[0], 4) + "  Y " + numberText(white[1], 4) + "  Z " +
           numberText(white[2], 4);
}

std::string whiteLines(const qc::Comparison& comparison) {
    std::string text;
    if (comparison.spectralWhite)
        text += line("white", whiteText(*comparison.spectralWhite) + "  (of spectra, by the same weights)");
    if (comparison.xyzWhite)
        text += line("white", whiteText(*comparison.xyzWhite) + "  (of XYZ, as published)");
    return text;
}

std::string originText(qc::ChosenCondition::Origin origin) {
    switch (origin) {
    case qc::ChosenCondition::Origin::asked:
        return "as asked for";
    case qc::ChosenCondition::Origin::declared:
        return "as declared";
    case qc::ChosenCondition::Origin::freeText:
        return "as a text names it";
    case qc::ChosenCondition::Origin::assumed:
        return "assumed";
    }
    return "";
}

std::string conditionText(const qc::ChosenCondition& condition) {
    return qc::printable(condition.value) + " (" + originText(condition.origin) + ")";
}

std::string unusedText(int count, const char* side) {
    return count == 0 ? ""
                      : "; " + qc::countText(static_cast<std::size_t>(count)) + " " + side +
                            (count == 1 ? " sample" : " samples") + " unused";
}

std::string pairingText(const qc::Comparison& comparison) {
    const qc::Pairing& pairing = comparison.pairing;
    const std::string by =
        pairing.rule == qc::PairRule::order ? "in their order" : "by " + qc::printable(pairing.by);
    return qc::countText(pairing.pairs.size()) + " of " +
           qc::countText(static_cast<std::size_t>(comparison.measured.samples)) + " paired " + by +
           unusedText(pairing.unusedReference, "reference");
}

std::string conditionLines(const DiffReport& report) {
    const qc::Comparison& comparison = report.comparison;
    std::string text =
        sideLines("measured", comparison.measured) + sideLines("reference", comparison.reference) +
        line("illuminant", conditionText(comparison.conditions.illuminant)) +
        line("observer", conditionText(comparison.conditions.observer)) + whiteLines(comparison) +
        line("formula", std::string(comparison.formula.name) + " (" + comparison.formula.published + ")") +
        line("pairing", pairingText(comparison));
    for (const qc::Finding& finding : comparison.findings)
        text += line(finding.severity == qc::Finding::Severity::warning ? "warning" : "note", finding.text);
    for (const std::string& warning : report.warnings)
        text += line("warning", warning);
    return text;
}

constexpr std::size_t kNumbers = 13;
constexpr std::array<const char*, kNumbers> kHeadings = {"L*",  "a*",  "b*",  "L*",  "a*",  "b*", "dL*",
                                                         "da*", "db*", "dC*", "dH*", "dCh", "dE"};
// Columns that begin a group stand a little apart.
constexpr bool beginsGroup(std::size_t column) {
    return column == 0 || column == 3 || column == 6 || column == 12;
}

std::array<std::string, kNumbers> numbersOf(const qc::Patch& patch) {
    const qc::Difference& d = patch.difference;
    std::array<std::string, kNumbers> cells;
    for (std::size_t i = 0; i < 3; ++i) {
        cells[i] = numberText(patch.measured[i], 2);
        cells[3 + i] = numberText(patch.reference[i], 2);
    }
    const double parts[] = {d.lightness, d.a, d.b, d.chroma, d.hue};
    for (std::size_t i = 0; i < 5; ++i)
        cells[6 + i] = signedText(parts[i], 2);
    cells[11] = numberText(d.chromaticness, 2);
    cells[12] = numberText(d.total, 3);
    return cells;
}

// Whether the name tells more than the row.
bool hasName(const qc::Patch& patch) {
    return patch.name != std::to_string(patch.row);
}

/// The columns of the patch tables, wide enough for every patch.
class PatchTable {
public:
    explicit PatchTable(const std::vector<qc::Patch>& patches) {
        std::size_t longestName = 0;
        for (const qc::Patch& patch : patches) {
            rowWidth = std::max(rowWidth, std::to_string(patch.row).size());
            longestName = std::max(longestName, qc::columnsOf(qc::printable(patch.name)));
            const std::array<std::string, kNumbers> cells = numbersOf(patch);
            for (std::size_t i = 0; i < kNumbers; ++i)
                widths[i] = std::max(widths[i], cells[i].size());
        }
        named = std::any_of(patches.begin(), patches.end(), hasName);
        std::size_t taken = 2 + rowWidth + 2;
        for (std::size_t i = 0; i < kNumbers; ++i)
            taken += gap(i) + widths[i];
        const std::size_t room = taken + kShortestName < kPageWidth ? kPageWidth - taken : kShortestName;
        nameWidth = std::clamp(longestName, kShortestName, room);
    }

    std::string heading() const {
        std::string groups(start("", "").size(), ' ');
        groups += group("measured", 0, 3) + group("reference", 3, 6) + group("measured - reference", 6, 12);
        std::string names = start("row", "patch");
        for (std::size_t i = 0; i < kNumbers; ++i)
            names += rightAligned(kHeadings[i], gap(i) + widths[i]);
        return groups + '\n' + names + '\n';
    }

    std::string row(const qc::Patch& patch) const {
        std::string text = start(std::to_string(patch.row), qc::printable(patch.name));
        const std::array<std::string, kNumbers> cells = numbersOf(patch);
        for (std::size_t i = 0; i < kNumbers; ++i)
            text += rightAligned(cells[i], gap(i) + widths[i]);
        return text + '\n';
    }

private:
    static constexpr std::size_t kShortestName = 8;

    static std::size_t gap(std::size_t column) { return beginsGroup(column) ? 3 : 1; }

    // The columns in front of the numbers; names that are row numbers throughout are left out.
    std::string start(std::string_view row, std::string_view name) const {
        return "  " + rightAligned(row, rowWidth) + (named ? "  " + qc::fitted(name, nameWidth) : "");
    }

    // A heading over the columns first .. last - 1, flush right.
    std::string group(std::string_view title, std::size_t first, std::size_t last) const {
        std::size_t width = 0;
        for (std::size_t i = first; i < last; ++i)
            width += gap(i) + widths[i];
        return rightAligned(title, width);
    }

    bool named = true;
    std::size_t rowWidth = 3;
    std::size_t nameWidth = kShortestName;
    std::array<std::size_t, kNumbers> widths = {4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4, 4};
};

std::string statisticLine(std::string_view label, const std::string& value) {
    return "  " + qc::fitted(label, 16) + rightAligned(value, 12) + '\n';
}

constexpr std::size_t kLongestNameInText = 50;

std::string statisticLines(const DiffReport& report) {
    const qc::Statistics& statistics = report.comparison.statistics;
    const qc::Patch& greatest = report.comparison.patches[statistics.greatest];
    std::string text = statisticLine("count", std::to_string(statistics.count)) +
                       statisticLine("mean", numberText(statistics.mean, 3)) +
                       statisticLine("median", numberText(statistics.median, 3)) +
                       statisticLine("90th percentile", numberText(statistics.percentile90, 3)) +
                       statisticLine("95th percentile", numberText(statistics.percentile95, 3)) +
                       statisticLine("99th percentile", numberText(statistics.percentile99, 3)) +
                       statisticLine("maximum", numberText(statistics.maximum, 3));
    text.pop_back();
    text += "  row " + std::to_string(greatest.row);
    if (hasName(greatest)) {
        const std::string name = qc::printable(greatest.name);
        text += ", " + qc::fitted(name, std::min(qc::columnsOf(name), kLongestNameInText));
    }
    return text + '\n';
}

std::string toleranceLine(const DiffReport& report) {
    if (!report.tolerance)
        return "";
    const std::size_t count = report.comparison.patches.size();
    const std::string all = std::to_string(count);
    const std::string above = report.aboveTolerance == 0 ? "all" : std::to_string(report.aboveTolerance);
    return "\n  tolerance " + detail::generalText(*report.tolerance, 6) + ": " +
           (report.aboveTolerance == 0 ? "kept by " : "exceeded by ") +
           (count == 1 ? "the only patch" : above + " of " + all + " patches") + '\n';
}

} // namespace

std::string diffText(const DiffReport& report) {
    const std::vector<qc::Patch>& patches = report.comparison.patches;
    const PatchTable table(patches);
    std::string text = "Colour differences: measured minus reference; the reference is the standard" +
                       std::string(report.comparison.conditions.forced ? " (compared by force)" : "") +
                       "\n\n" + conditionLines(report) + '\n' + table.heading();
    for (const qc::Patch& patch : patches)
        text += table.row(patch);
    text += "\nStatistics of dE\n\n" + statisticLines(report) + toleranceLine(report);
    if (report.worst.empty())
        return text;
    const std::size_t count = report.worst.size();
    text += (count == 1 ? "\nThe worst patch\n\n" : "\nThe " + std::to_string(count) + " worst patches\n\n") +
            table.heading();
    for (const std::size_t index : report.worst)
        text += table.row(patches[index]);
    return text;
}

} // namespace qxcms::command
