// Charts of a few rows, and what is told about their values.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "qc/plausibility.h"

namespace qxcms::tests {

using Values = std::vector<double>;
using Kinds = std::vector<qc::Finding::Kind>;

/// A document with a row of numbers for each row of values, named 1, 2, ....
std::string documentText(const std::vector<std::string>& fields, const std::vector<Values>& rows);

/// A chart of "chart.txt" and what is told of it.
class Inspected {
public:
    Inspected(const std::vector<std::string>& fields, const std::vector<Values>& rows);

    qc::Chart chart() const { return {"chart.txt", &document, 0}; }

    std::vector<qc::Finding> find(qc::ColorSource source, const std::vector<qc::Lab>& lab,
                                  const std::vector<qc::Lab>& labFromXyz = {}, bool isEmission = false) const;

    /// With the Lab of the chart's Lab columns.
    std::vector<qc::Finding> findInLab(const std::vector<qc::Lab>& labFromXyz = {}) const;

    /// With a grey that differs from row to row, which no rule for spectra looks at.
    std::vector<qc::Finding> findInSpectra(bool isEmission = false) const;

private:
    TCgats document;
};

Kinds kindsOf(const std::vector<qc::Finding>& findings);

inline const std::vector<std::string> kLabFields = {"LAB_L", "LAB_A", "LAB_B"};
inline const std::vector<std::string> kXyzFields = {"XYZ_X", "XYZ_Y", "XYZ_Z"};
inline const std::vector<std::string> kCmykLabFields = {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K",
                                                        "LAB_L",  "LAB_A",  "LAB_B"};
inline const std::vector<std::string> kRgbLabFields = {"RGB_R", "RGB_G", "RGB_B", "LAB_L", "LAB_A", "LAB_B"};

/// Offset print on coated paper, in round numbers (ISO 12647-2), of kCmykLabFields.
inline const std::vector<Values> kPrint = {{100, 0, 0, 0, 55, -37, -50},  {0, 100, 0, 0, 48, 74, -3},
                                           {0, 0, 100, 0, 89, -5, 93},    {0, 100, 100, 0, 47, 68, 48},
                                           {100, 0, 100, 0, 50, -68, 33}, {100, 100, 0, 0, 24, 22, -46},
                                           {0, 0, 0, 100, 16, 0, 0},      {0, 0, 0, 0, 95, 0, -2}};

std::vector<std::string> spectralFields(int first, int last, int step);

/// Spectra from 400 to 700 nm every 10 nm.
constexpr int kFirstNm = 400;
constexpr std::size_t kBands = 31;

std::size_t bandAt(int wavelength);

Values flat(double value);

/// Flat but for one band.
Values flatBut(double value, int wavelength, double other);

Inspected spectralChart(const std::vector<Values>& rows);

} // namespace qxcms::tests
