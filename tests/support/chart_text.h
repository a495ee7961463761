// CGATS texts for tests.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "qc/chart.h"

namespace qxcms::tests {

/// A document of one table. @param fields the column names. @param rows one line per sample. @param header
/// lines, each with its end.
inline std::string chartText(const std::string& fields, const std::vector<std::string>& rows,
                             const std::string& header = "") {
    std::string text = "CGATS.17\n" + header + "BEGIN_DATA_FORMAT\n" + fields +
                       "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " + std::to_string(rows.size()) + "\nBEGIN_DATA\n";
    for (const std::string& row : rows)
        text += row + '\n';
    return text + "END_DATA\n";
}

/// A chart that owns its document.
class OwnedChart {
public:
    OwnedChart(const std::string& name, const std::string& text)
        : document(std::make_unique<TCgats>(text.c_str(), 0)), chart{name, document.get(), 0} {
        if (document->GetErrorCode() != 0)
            throw std::invalid_argument("the test's own chart is refused: " +
                                        std::string(document->GetErrorMessage()));
    }

    operator const qc::Chart&() const { return chart; }

private:
    std::unique_ptr<TCgats> document;
    qc::Chart chart;
};

} // namespace qxcms::tests
