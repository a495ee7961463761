/// @file
/// What speaks against the values of a chart before anything is computed from them. Internal.
#pragma once

#include <array>
#include <vector>

#include "qc/chart.h"
#include "qc/document_conditions.h"
#include "qc/finding.h"
#include "qc/lab_rows.h"

namespace qxcms::qc {

/// Looks at the values that are going to be compared. Each finding is told once for a chart, with its first
/// row and the number of rows that it holds for. All are warnings unless it says otherwise.
///
/// - emission: measurements of light. Declared (`conditions.isEmission`), or shown: spectra beyond 200
///   percent, or with narrow lines (not what narrow gaps leave), in a good part of the rows; with RGB device
///   values a Y above 120, or a white that is the sum of red, green and blue. Nothing is told of values too
///   large then.
/// - tooLight: L* above 105, of XYZ Y above 120 on a white of 100.
/// - negativeReflectance, spectralScale: fractions below -0.005 and above 2; L* below -2; paper that reflects
///   nowhere as much as 2 percent.
/// - equalSpectra: all spectra equal where there are two rows and more, all Lab or XYZ where there are four.
/// - narrowSpectra: bands that do not cover 400 to 700 nm.
/// - coarseSpectra: bands 20 nm apart and more, with what that costs in colour difference.
/// - xyzScale: XYZ of 0 to 1; a note when `lab` was made of them times 100.
/// - labAgainstXyz: Lab and XYZ of one row that disagree by more than 0.5 and than their rounding explains,
///   where the chart has both and one of them is compared.
/// - exchangedAxes: a* and b*, where two and more of yellow, magenta, green and blue by the device values
///   (CMYK, n-colour or RGB) say so and none contradicts, or where Lab agrees with XYZ then.
/// - paperNotLightest: the lightest patch without ink (process colours all 0, RGB at the top of their scale)
///   is darker than another one by more than 1. Patches that use spot colours do not count.
/// - unmeasured: rows whose values are all the same and below 0 (markers such as -999); rows whose Lab is
///   0 0 0 among others, unless their device values are those of full black or add up to what full cyan,
///   magenta and yellow do; a note for one row of a chart without known device values.
/// - labScale: Lab that cannot be meant: below 0 in X or Z in a tenth of the rows and more, of paper or other
///   light rows a* and b* above 60, no L* above 2.
/// - otherWhite: light paper whose colour is that of the white of another illuminant, or that has X and Z
///   exchanged.
/// - bandOrder: paper that reflects 380 nm much better than 700 nm, as in the opposite order.
/// - otherHues: two and more of the six pure colours by the device values (CMYK or RGB) have quite another
///   hue, and at most half as many their own; not told beside what explains it.
///
/// Fluorescent paper whose reflectance rises above 1 is none of these. Device values on no known scale
/// (deviceRange), with words among them or with a channel missing are left aside.
/// @param source what is compared of the chart. @param lab the Lab of each row by `source`, from XYZ on the
/// scale of their white. @param labFromXyz the Lab of each row by XYZ, on the white of its Lab; empty where
/// the chart has none or `source` is xyz. @param white of `lab`, X, Y and Z with Y = 100; zeros where it is
/// not known.
std::vector<Finding> implausibilities(const Chart& chart, ColorSource source,
                                      const DocumentConditions& conditions, const std::vector<Lab>& lab,
                                      const std::vector<Lab>& labFromXyz,
                                      const std::array<double, 3>& white = {});

} // namespace qxcms::qc
