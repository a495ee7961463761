#include "tools/qxcms/diff_command.h"

#include <algorithm>
#include <iterator>

#include "qc/comparison.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"
#include "tools/qxcms/console.h"
#include "tools/qxcms/document_file.h"
#include "tools/qxcms/exit_code.h"
#include "tools/qxcms/report/diff_json.h"
#include "tools/qxcms/report/diff_report.h"
#include "tools/qxcms/report/diff_text.h"

namespace qxcms::command {

namespace {

// Tells why the file cannot be compared. @return whether it can.
bool isUsable(const DocumentFile& file) {
    if (file.failure)
        complain(describeFailure(file));
    else if (file.document->GetNrTables() == 0)
        complain(qc::printable(file.name) +
                 ": holds no data table (BEGIN_DATA_FORMAT, NUMBER_OF_SETS, BEGIN_DATA)");
    return !file.failure && file.document->GetNrTables() > 0;
}

// @param table counted from 1; the comparison refuses one that there is not.
qc::Chart chartOf(const DocumentFile& file, int table) {
    qc::Chart chart{file.name, file.document.get(), table - 1};
    std::copy_if(file.doubts.begin(), file.doubts.end(), std::back_inserter(chart.doubts),
                 [&](const qc::DoubtfulValue& doubt) { return doubt.table == chart.table; });
    chart.findings = qc::scaleFindings(file.name, file.liberties);
    return chart;
}

int report(const DocumentFile& measured, const DocumentFile& reference, const qc::Comparison& comparison,
           const DiffOptions& options, const std::vector<std::string>& warnings) {
    const DiffReport report(measured, reference, comparison, options.worst, options.tolerance, warnings);
    if (!print(options.json ? diffJson(report) : diffText(report)))
        return kFailed;
    return report.aboveTolerance > 0 ? kAboveTolerance : kDone;
}

} // namespace

int runDiff(const DiffOptions& options) {
    const Reading reading = options.strict ? Reading::asItStands : Reading::intoForm;
    const DocumentFile measured = readDocument(options.measured, reading);
    const DocumentFile reference = readDocument(options.reference, reading);
    const bool oneFile = options.measured == options.reference;
    const auto noteFiles = [&] {
        noteLiberties(measured);
        if (!oneFile)
            noteLiberties(reference);
    };
    if (!options.json && !options.quiet)
        noteFiles();
    std::vector<std::string> warnings = measured.warnings;
    if (!oneFile)
        warnings.insert(warnings.end(), reference.warnings.begin(), reference.warnings.end());
    // Where there is no report, the liberties and the warnings may tell why.
    const auto warnOfFiles = [&] {
        if (options.json && !options.quiet)
            noteFiles();
        std::for_each(warnings.begin(), warnings.end(), warn);
    };

    const bool measuredIsUsable = isUsable(measured);
    const bool referenceIsUsable = oneFile ? measuredIsUsable : isUsable(reference);
    if (!measuredIsUsable || !referenceIsUsable) {
        warnOfFiles();
        return kUnreadable;
    }
    const qc::Result<qc::Comparison> compared =
        qc::compare(chartOf(measured, options.table),
                    chartOf(reference, options.referenceTable.value_or(options.table)), options.comparison);
    if (compared)
        return report(measured, reference, *compared, options, warnings);
    warnOfFiles();
    throw compared.refusal();
}

} // namespace qxcms::command
