#include "qc/table_choice.h"

#include "qc/count_text.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"

namespace qxcms::qc {

namespace {

std::string tableCount(const TCgats& document) {
    const int tables = document.GetNrTables();
    return countText(static_cast<std::size_t>(tables)) + (tables == 1 ? " table" : " tables");
}

std::string tableNumber(int table) {
    return "table " + std::to_string(table + 1LL);
}

} // namespace

void requireTable(const Chart& chart) {
    const std::string file = printable(chart.name) + ": ";
    if (chart.document == nullptr || chart.document->GetErrorCode() != 0)
        throw Refusal(Refusal::Kind::unreadable, file + "the document was not read");
    if (chart.document->GetTable(chart.table) == nullptr)
        throw Refusal(Refusal::Kind::usage, file + "there is no " + tableNumber(chart.table) +
                                                "; the file has " + tableCount(*chart.document) +
                                                " (see --table and --reference-table)");
    if (chart.document->GetNrFields(chart.table) < 0)
        throw Refusal(Refusal::Kind::unreadable, file + tableNumber(chart.table) + " is not complete");
}

bool holdsColor(const TCgats& document, int table) {
    return document.ContainsWaveLengths(table) || document.ContainsLab(table) || document.ContainsXyz(table);
}

std::string optionsForTable(int table) {
    const std::string number = std::to_string(table + 1);
    return "--table " + number + ", or --reference-table " + number + " for the reference alone";
}

std::vector<Finding> findingsOnTables(const Chart& chart, const Chart& other) {
    std::vector<int> left;
    for (int table = 0; table < chart.document->GetNrTables(); ++table) {
        const bool isCompared = table == chart.table || (other.name == chart.name && table == other.table);
        if (!isCompared && holdsColor(*chart.document, table))
            left.push_back(table);
    }
    if (left.empty())
        return {};
    std::string text = printable(chart.name) + ": " + tableNumber(chart.table) + " of " +
                       std::to_string(chart.document->GetNrTables()) + " is compared; ";
    text += left.size() == 1 ? tableNumber(left.front()) + " holds colours too"
                             : countText(left.size()) + " others hold colours too, the first of them " +
                                   tableNumber(left.front());
    return {{Finding::Severity::note, Finding::Kind::otherTables,
             text + " (" + optionsForTable(left.front()) + ")"}};
}

} // namespace qxcms::qc
