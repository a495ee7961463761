#include "qc/chart.h"

#include "qc/printable_text.h"

namespace qxcms::qc {

std::vector<Finding> scaleFindings(const std::string& name, const std::vector<TCgatsLiberty>& liberties) {
    std::vector<Finding> findings;
    for (const TCgatsLiberty& liberty : liberties) {
        const bool isXyz = liberty.kind == TCgatsLiberty::kXyzScale;
        if (isXyz || liberty.kind == TCgatsLiberty::kSpectralScale)
            findings.push_back({Finding::Severity::note,
                                isXyz ? Finding::Kind::xyzScale : Finding::Kind::spectralScale,
                                printable(name) + ": " + printable(liberty.done)});
    }
    return findings;
}

std::string placeOf(const Chart& chart, int row) {
    const std::string table = chart.table > 0 ? ": table " + std::to_string(chart.table + 1) : "";
    return printable(chart.name) + table + ": row " + std::to_string(row + 1);
}

std::string placeOf(const Chart& chart, int row, int column) {
    return placeOf(chart, row) + ", column " + quoted(chart.columnName(column)) + " (number " +
           std::to_string(column + 1) + ")";
}

} // namespace qxcms::qc
