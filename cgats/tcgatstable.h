/// @file
/// One data table of a CGATS document.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/export.h"
#include "cgats/tcgatstableheader.h"
#include "cgats/tcgatsvaluelist.h"

/// A header and one typed value list per column.
///
/// Table errors: 0 none, 1 no header, 2 a header without fields, 3 filled and declared fields differ, 4 no
/// samples, 5 sample count mismatch, 6 unsupported data type, 7 custom colour numbering inconsistent, 8 no
/// sample identifier, 9 not enough coordinate fields, 10 other, 11 a row too many, 12 header empty, 13
/// illegal ink map. A table whose error is not 0 could not be built and is to be discarded.
class QXCMS_API TCgatsTable {
public:
    /// A table that could not be built, for the reason given; null when there is no memory.
    static std::unique_ptr<TCgatsTable> NotBuilt(int tableError);
    /// Builds a table on `newHeader` and takes ownership of it.
    explicit TCgatsTable(TCgatsTableHeader* newHeader);
    TCgatsTable(const TCgatsTable&) = delete;
    TCgatsTable& operator=(const TCgatsTable&) = delete;
    ~TCgatsTable();

    /// Stores one row: a text per column. @return 0, 11 when the table is full, 10 for null or no memory.
    int AddRow(const char* const* texts);

    /// Stores a value of the row that comes next; EndRow completes it. @return as AddRow.
    int SetNextValue(int column, const char* text);
    /// Completes a row whose values were stored one by one. @return 0, or 11 when the table is full.
    int EndRow();

    /// Owned by the table; null when there is none.
    const TCgatsTableHeader* GetHeader() const { return header.get(); }
    /// Puts `wider`, a classified header of the same columns and further ones behind them, in place of the
    /// header, and `added`, the values of these. Takes ownership.
    /// @return 0, or 10 (nothing changed) when the counts do not fit or there is no memory.
    int Widen(std::unique_ptr<TCgatsTableHeader> wider, std::vector<std::unique_ptr<TCgatsValueList>> added);
    /// Hands the header over to the caller; the table is then fit for nothing but deletion.
    TCgatsTableHeader* ReleaseHeader() { return header.release(); }
    /// The values of a column, owned by the table; null for a bad index.
    TCgatsValueList* GetValues(int column) const;
    /// False without a header, and when columns were added to the header behind the table's back.
    bool HasValuesOfAllColumns() const;
    std::int32_t GetNrRowsStored() const { return nrRowsStored; }
    std::int32_t GetTableError() const { return tableError; }
    /// True when the spectra are in percent rather than fractions.
    bool IsSpectralPercent() const { return spectralPercent != 0; }
    void SetSpectralPercent(bool percent) { spectralPercent = percent ? 1 : 0; }

private:
    friend struct qxcms::detail::LayoutProbe;

    int build();
    bool isFull() const;

    std::unique_ptr<TCgatsTableHeader> header;
    std::vector<std::unique_ptr<TCgatsValueList>> values;
    std::int32_t nrRowsStored;
    std::int32_t tableError;
    std::uint8_t spectralPercent;
};
