/// @file
/// What the spectra of a chart show. Internal.
#pragma once

#include <cstddef>
#include <vector>

#include "qc/chart.h"
#include "qc/rows_found.h"

namespace qxcms::qc {

/// What the spectra of a chart show, as fractions.
class ChartSpectra {
public:
    /// @param chart has spectra and a row.
    explicit ChartSpectra(const Chart& chart);

    /// In nanometres.
    const std::vector<int>& bands() const { return wavelengths; }
    /// All of them, where there are two and more.
    bool areEqual() const { return allEqual && rows > 1; }
    /// All of them throughout.
    bool areZero() const { return allZero; }
    bool isZero(int row) const { return zeroRows[static_cast<std::size_t>(row)]; }
    /// With values below 0 and beyond the noise.
    const RowsFound& negative() const { return below; }
    /// With values above 2.
    const RowsFound& large() const { return above; }
    double largest() const;

    /// The rows that hold lines as those of lamps, when they are at least half of those that are not dark and
    /// a quarter of all; else none.
    RowsFound lines() const;

private:
    struct Neighbours {
        std::size_t band;
        std::size_t below;
        std::size_t above;
        std::size_t nextBelow; // nearer ones; the band itself where there is none
        std::size_t nextAbove;
    };

    bool isBeside(std::size_t lower, std::size_t upper) const;
    std::size_t nextOf(std::size_t band, std::size_t towards) const;
    void findNeighbours();
    void inspect(int row, const std::vector<double>& values);

    std::vector<int> wavelengths;
    int rows;
    std::vector<Neighbours> neighbours;
    std::vector<double> largestOfRow;
    std::vector<bool> hasLine;
    std::vector<bool> zeroRows;
    RowsFound below;
    RowsFound above;
    bool allEqual = true;
    bool allZero = false;
};

} // namespace qxcms::qc
