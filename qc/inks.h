/// @file
/// The device values of one chart as parts of the full ink. Internal.
#pragma once

#include <cstdint>
#include <vector>

#include "qc/chart.h"

namespace qxcms::qc {

/// As a part of the full device value.
constexpr double kInkTolerance = 0.003;
constexpr double kNearlyFullInk = 0.9;
constexpr double kNearlyNoInk = 0.1;

/// The device values of a chart as parts of the full ink; light that is missing from full red, green and blue
/// counts as cyan, magenta and yellow ink. Nothing is known of values on no known scale (deviceRange), with
/// words among them or with a channel missing.
class Inks {
public:
    /// @param chart must outlive it.
    explicit Inks(const Chart& chart);

    /// False where nothing is known of the rows.
    bool areKnown() const { return full > 0.0; }
    /// RGB.
    bool areLight() const { return rgb; }
    /// Whether the first three are cyan, magenta and yellow.
    bool haveKnownColors() const;
    /// Whether the columns themselves say so.
    bool haveNamedColors() const;

    /// Spot inks may be lighter than the paper (white ink) or of any hue.
    bool useSpots(int row) const;

    /// No ink, or full red, green and blue.
    bool isPaper(int row) const;

    /// Only where they are known.
    std::vector<double> of(int row) const;

private:
    using Columns = std::vector<std::int32_t>;

    double value(int row, int column) const;
    void takeRgb();
    bool isUsable(const Columns& wanted) const;
    double fullScale() const;

    const Chart& inspected;
    Columns columns;
    Columns spots;
    bool rgb = false;
    double full = 0.0;
};

} // namespace qxcms::qc
