/// @file
/// The data format of one CGATS table and what its columns mean.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "base/export.h"
#include "cgats/tcgatsfield.h"

/// The columns of a table, in order, and their summary: which columns hold device colours, spots, spectra,
/// CIELAB, XYZ and sample names.
class QXCMS_API TCgatsTableHeader {
public:
    /// The kinds of device colours.
    enum ColorKind : int { kNoColors = -1, kCmyk = 0, kCustomColors = 1, kNColors = 2 };

    /// An empty header that grows.
    TCgatsTableHeader();
    /// A header of `slots` empty slots, to be filled in order; below 0 counts as 0.
    explicit TCgatsTableHeader(int slots);
    TCgatsTableHeader(const TCgatsTableHeader&) = delete;
    TCgatsTableHeader& operator=(const TCgatsTableHeader&) = delete;
    virtual ~TCgatsTableHeader();

    /// Adds a column behind the last one; takes ownership.
    /// @return 0, or 1 (the field is deleted) for null, a bad field, no memory, or while slots are empty.
    int Append(TCgatsField* field);
    /// Puts a column into the first empty slot; takes ownership.
    /// @return 0, or 1 (the field is deleted) when there is no empty slot, or as Append.
    int FillNextSlot(TCgatsField* field);

    /// Summarises the columns. @return 0; 7 when a slot is empty or colour numbers are not consistent; 10
    /// when there is no memory.
    int Classify();

    /// The same columns and number of samples, not classified; null when there is no memory.
    std::unique_ptr<TCgatsTableHeader> Copy() const;

    void SetNrSamples(int samples) { nrSamples = samples; }

    std::int32_t GetNrSamples() const { return nrSamples; }
    /// The number of slots, filled or empty.
    int GetNrFields() const;
    /// The number of filled slots.
    int GetNrFilledFields() const { return static_cast<int>(fields.size()); }
    /// The column, owned by the header; null for an empty slot or a bad index.
    const TCgatsField* GetField(int index) const;
    /// True when Classify has run on the present columns.
    bool IsClassified() const { return classified != 0; }
    /// A ColorKind.
    std::int32_t GetColorKind() const { return colorKind; }
    std::int32_t GetNrColors() const { return nrColors; }
    std::int32_t GetNrSpots() const { return nrSpots; }
    std::int32_t GetNrWaveLengths() const { return nrWaveLengths; }
    /// The column of the sample names, -1 when there is none.
    std::int32_t GetSampleNameColumn() const { return sampleNameColumn; }
    /// Columns by channel, GetNrColors of them (-1 for a number that no column has); null when there are
    /// none.
    const std::int32_t* GetColorColumns() const { return colorColumns.get(); }
    /// Columns by spot number, GetNrSpots of them; null when there are none.
    const std::int32_t* GetSpotColumns() const { return spotColumns.get(); }
    /// Columns by ascending wavelength, GetNrWaveLengths of them; null when there are none.
    const std::int32_t* GetSpectralColumns() const { return spectralColumns.get(); }
    /// The columns of L*, a*, b*; null when one is missing.
    const std::int32_t* GetLabColumns() const { return labColumns.get(); }
    /// The columns of X, Y, Z; null when one is missing.
    const std::int32_t* GetXyzColumns() const { return xyzColumns.get(); }

private:
    friend struct qxcms::detail::LayoutProbe;

    struct Census;

    int adopt(std::unique_ptr<TCgatsField> field);
    void forgetClassification();
    bool summarise();
    bool takeCensus(Census& census) const;
    bool columnsByNumber(int kind, int count, std::int32_t* columns) const;
    bool classifyColors(const Census& census);
    void setColors(int kind, int count, std::unique_ptr<std::int32_t[]> columns);
    bool classifySpots(const Census& census);
    bool classifySpectra(const Census& census);

    std::int32_t nrSamples;
    // Slots that "NUMBER_OF_FIELDS" announced. The vector holds the filled ones alone, so that memory grows
    // with what arrives and not with what a text claims.
    std::int32_t nrDeclaredSlots;
    std::vector<std::unique_ptr<TCgatsField>> fields;
    std::uint8_t classified;
    std::int32_t colorKind;
    std::int32_t nrColors;
    std::int32_t nrSpots;
    std::int32_t nrWaveLengths;
    std::int32_t sampleNameColumn;
    std::unique_ptr<std::int32_t[]> colorColumns;
    std::unique_ptr<std::int32_t[]> spotColumns;
    std::unique_ptr<std::int32_t[]> spectralColumns;
    std::unique_ptr<std::int32_t[]> labColumns;
    std::unique_ptr<std::int32_t[]> xyzColumns;
};
