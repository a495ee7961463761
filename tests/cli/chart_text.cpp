#include "tests/cli/chart_text.h"

#include <stdexcept>

namespace qxcms::tests {

std::string chartText(const std::string& fields, const std::vector<std::string>& rows,
                      const std::string& header) {
    std::string text = "CGATS.17\n" + header + "BEGIN_DATA_FORMAT\n" + fields +
                       "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " + std::to_string(rows.size()) + "\nBEGIN_DATA\n";
    for (const std::string& row : rows)
        text += row + '\n';
    return text + "END_DATA\n";
}

OwnedChart::OwnedChart(const std::string& name, const std::string& text)
    : document(std::make_unique<TCgats>(text.c_str(), 0)), chart{name, document.get(), 0} {
    if (document->GetErrorCode() != 0)
        throw std::invalid_argument("the test's own chart is refused: " +
                                    std::string(document->GetErrorMessage()));
}

} // namespace qxcms::tests
