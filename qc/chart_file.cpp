#include "qc/chart_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <new>
#include <sstream>
#include <utility>

#include "qc/doubt_keeper.h"
#include "qc/printable_text.h"
#include "qc/refusal.h"
#include "qc/table_choice.h"

namespace qxcms::qc {

namespace {

Refusal refusalOf(const std::string& name, const TCgatsRefusal& refusal) {
    return Refusal(
        Refusal::Kind::unreadable,
        printable(name) + ':' + std::to_string(refusal.line) + ':' + std::to_string(refusal.column) +
            ": found " + (refusal.token.empty() ? "the end of the text" : quoted(refusal.token)) +
            ", expected " + printable(refusal.expected) + " (code " + std::to_string(refusal.code) + ")");
}

Chart chartOf(const ChartFile& file, int table) {
    Chart chart{file.name, file.document.get(), table};
    std::copy_if(file.doubts.begin(), file.doubts.end(), std::back_inserter(chart.doubts),
                 [&](const DoubtfulValue& doubt) { return doubt.table == table; });
    chart.findings = scaleFindings(file.name, file.liberties);
    return chart;
}

} // namespace

Chart ChartFile::chart() const& {
    return chartOf(*this, 0);
}

Result<Chart> ChartFile::chart(int table) const& {
    Chart chart = chartOf(*this, table);
    try {
        requireTable(chart);
    } catch (const Refusal& refusal) {
        return refusal;
    }
    return chart;
}

Result<ChartFile> readChart(std::string name, std::string bytes) {
    TCgatsNormalizer normalizer;
    if (normalizer.Normalize(std::move(bytes)) != 0) {
        if (normalizer.GetRefusal() == nullptr)
            throw std::bad_alloc();
        return refusalOf(name, *normalizer.GetRefusal());
    }
    ChartFile file{std::move(name), std::make_unique<TCgats>(), {}, {}, {}};
    for (int i = 0; i < normalizer.GetNrLiberties(); ++i)
        file.liberties.push_back(*normalizer.GetLiberty(i));
    for (int i = 0; i < normalizer.GetNrRemarks(); ++i)
        file.remarks.push_back(*normalizer.GetRemark(i));
    DoubtKeeper keeper;
    // What is in form is accepted.
    if (file.document->ReadFromBuffer(normalizer.GetText().c_str(), &keeper) != 0 || keeper.ranOutOfMemory)
        throw std::bad_alloc();
    if (file.document->GetNrTables() == 0)
        return Refusal(Refusal::Kind::unreadable,
                       printable(file.name) +
                           ": holds no data table (BEGIN_DATA_FORMAT, NUMBER_OF_SETS, BEGIN_DATA)");
    file.doubts = std::move(keeper.doubts);
    return file;
}

Result<ChartFile> openChart(const std::string& name) {
    std::ifstream stream(name, std::ios::binary);
    std::ostringstream bytes;
    if (stream && stream.peek() != std::ifstream::traits_type::eof())
        bytes << stream.rdbuf();
    if (!stream || stream.bad())
        return Refusal(Refusal::Kind::unreadable, printable(name) + ": cannot be read");
    return readChart(name, bytes.str());
}

} // namespace qxcms::qc
