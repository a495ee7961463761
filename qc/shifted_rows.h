/// @file
/// Measurements that belong to other rows than their device values. Internal.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "qc/compared_row.h"

namespace qxcms::qc {

/// Neighbouring rows whose colours belong elsewhere: as when a reading was lost or taken twice, or a strip
/// was read backwards.
struct ShiftedRows {
    int first; ///< rows of the file, counted from 0
    int last;
    int places;        ///< the colours belong so many rows further down; up where negative; 0 where mirrored
    int rows;          ///< how many were looked at from first to last
    double distance;   ///< median CIELAB Delta E as they stand
    double whenPlaced; ///< where they seem to belong

    bool isMirrored() const { return places == 0; }
};

/// The longest such run of rows, if there is any. At least six of them must lie further from what they are
/// compared with than repeated prints do, and agree at least three times as well where they seem to belong;
/// hardly one row within may contradict. Where most rows lie as far off, it must hold half of them. Tones
/// that came out darker or lighter throughout agree better with a neighbouring step of their ramp as well,
/// but differ all to one side: there it is not told.
/// @param rows in the order of the file.
std::optional<ShiftedRows> findShiftedRows(const std::vector<ComparedRow>& rows);

/// "rows 5 to 12 of m.txt agree ...".
std::string toldOf(const ShiftedRows& found, const std::string& file);

} // namespace qxcms::qc
