/// @file
/// Lab of charts, spectra and tristimulus values for one illuminant and one observer.
#pragma once

#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "qc/chart.h"
#include "qc/color_source.h"
#include "qc/difference.h"
#include "qc/result.h"
#include "qc/span.h"

namespace qxcms::qc {

/// Turns spectra and tristimulus values into Lab, each on the white of the conditions that belongs to it:
/// spectra on the one that the same weights give, tristimulus values, which others computed, on the published
/// one. A value: copies share what was loaded. The illuminants are one registry for the process, so that
/// comparing and this are for one thread at a time.
class Colorimetry {
public:
    /// @param illuminant "D50", "CIE Illuminant D50", "FL11" ... @param observer "2 degree", "10" ...
    /// Refused are names that nobody knows, with the nearest known ones, and F2, F7 and F11 with the 10
    /// degree observer (usage); illuminants that are not installed, or give no white (unreadable).
    static Result<Colorimetry> of(const std::string& illuminant, const std::string& observer);

    // A moved-from one would be of no use.
    Colorimetry(const Colorimetry&);
    Colorimetry& operator=(const Colorimetry&);
    ~Colorimetry();

    const std::string& illuminant() const; ///< "D50", "F11": the short name
    const std::string& observer() const;   ///< "2 degree" or "10 degree"
    /// X, Y, Z with Y = 100 that spectra are converted on.
    const std::array<double, 3>& spectralWhite() const;
    /// X, Y, Z with Y = 100 that tristimulus values are converted on: as published, the other one where none
    /// is.
    const std::array<double, 3>& xyzWhite() const;

    /// Lab of the reflectance factors (0 to 1) at these wavelengths. They are interpolated, and held constant
    /// beyond their ends, over 380 to 730 nm. What is no number gives none. Refused (usage) are other numbers
    /// of factors than wavelengths, none or more than 1024 of them, and wavelengths that repeat or are not
    /// finite.
    Result<Lab> labOfSpectrum(Span<const double> nanometres, Span<const double> reflectance) const;

    /// Lab of X, Y, Z on the scale where white has Y = 100.
    Lab labOfXyz(const std::array<double, 3>& xyz) const;

    /// Lab of every row of a chart. Lab columns are taken as they stand: whether they are for these
    /// conditions is conditionsOf() the chart's document. @param source none: spectra, else Lab, else XYZ.
    /// Refused (notComparable) where the chart does not hold it; (unreadable) for values that are no finite
    /// numbers, with their row and column, and spectra that cannot be used.
    Result<std::vector<Lab>> labRows(const Chart& chart,
                                     std::optional<ColorSource> source = std::nullopt) const;

private:
    struct Loaded;

    explicit Colorimetry(std::shared_ptr<const Loaded> what);

    std::shared_ptr<const Loaded> loaded;
};

/// The Lab columns of every row of a chart as they stand, for which no illuminant is needed. Refused as by
/// Colorimetry::labRows.
Result<std::vector<Lab>> labColumns(const Chart& chart);

/// The names of the illuminants that are installed; refused (unreadable) where there are none.
Result<std::vector<std::string>> illuminantNames();

} // namespace qxcms::qc
