// CGATS texts for tests.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "qc/chart.h"

namespace qxcms::tests {

/// A document of one table. @param fields the column names. @param rows one line per sample.
std::string chartText(const std::string& fields, const std::vector<std::string>& rows,
                      const std::string& header = "");

/// A chart that owns its document.
class OwnedChart {
public:
    OwnedChart(const std::string& name, const std::string& text);

    operator const qc::Chart&() const { return chart; }

private:
    std::unique_ptr<TCgats> document;
    qc::Chart chart;
};

} // namespace qxcms::tests
