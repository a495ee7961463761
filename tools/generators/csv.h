// Reads the tables of data/: comma separated, "#" comment lines, one header row, nothing quoted. The cells
// stay text, so that published figures pass through without a change.
#pragma once

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace qxcms::generators {

struct CsvTable {
    std::string name; ///< where it came from, for messages
    std::vector<std::string> header;
    std::vector<std::vector<std::string>> rows;

    /// The cells of the column of that name, top to bottom.
    std::vector<std::string> column(std::string_view title) const {
        const auto found = std::find(header.begin(), header.end(), title);
        if (found == header.end())
            throw std::runtime_error(name + ": no column " + std::string(title));
        const auto index = static_cast<std::size_t>(found - header.begin());
        std::vector<std::string> cells;
        for (const std::vector<std::string>& row : rows)
            cells.push_back(row[index]);
        return cells;
    }
};

inline std::vector<std::string> splitCsvLine(const std::string& line) {
    std::vector<std::string> cells(1);
    for (const char character : line) {
        if (character == ',')
            cells.emplace_back();
        else
            cells.back() += character;
    }
    return cells;
}

/// Reads a table; a row that does not match the header is an error.
inline CsvTable readCsv(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error(file + ": cannot be read");
    CsvTable table;
    table.name = file;
    std::string line;
    while (std::getline(stream, line)) {
        if (line.empty() || line.front() == '#')
            continue;
        std::vector<std::string> cells = splitCsvLine(line);
        if (table.header.empty()) {
            table.header = std::move(cells);
            continue;
        }
        if (cells.size() != table.header.size())
            throw std::runtime_error(file + ": a row of another length: " + line);
        table.rows.push_back(std::move(cells));
    }
    if (table.rows.empty())
        throw std::runtime_error(file + ": no rows");
    return table;
}

} // namespace qxcms::generators
