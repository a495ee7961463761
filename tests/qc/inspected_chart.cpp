#include "tests/qc/inspected_chart.h"

#include <cstdio>

#include <gtest/gtest.h>

namespace qxcms::tests {

namespace {

std::string textOf(double value) {
    char text[40];
    std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

} // namespace

std::string documentText(const std::vector<std::string>& fields, const std::vector<Values>& rows) {
    std::string text =
        "CGATS.17\nNUMBER_OF_FIELDS " + std::to_string(fields.size() + 1) + "\nBEGIN_DATA_FORMAT\nSAMPLE_ID";
    for (const std::string& field : fields)
        text += "\t" + field;
    text += "\nEND_DATA_FORMAT\nNUMBER_OF_SETS " + std::to_string(rows.size()) + "\nBEGIN_DATA\n";
    for (std::size_t row = 0; row < rows.size(); ++row) {
        text += std::to_string(row + 1);
        for (const double value : rows[row])
            text += "\t" + textOf(value);
        text += "\n";
    }
    return text + "END_DATA\n";
}

Inspected::Inspected(const std::vector<std::string>& fields, const std::vector<Values>& rows) {
    EXPECT_EQ(document.ReadFromBuffer(documentText(fields, rows).c_str()), 0);
}

std::vector<qc::Finding> Inspected::find(qc::ColorSource source, const std::vector<qc::Lab>& lab,
                                         const std::vector<qc::Lab>& labFromXyz, bool isEmission) const {
    qc::DocumentConditions conditions;
    conditions.isEmission = isEmission;
    return qc::implausibilities(chart(), source, conditions, lab, labFromXyz);
}

std::vector<qc::Finding> Inspected::findInLab(const std::vector<qc::Lab>& labFromXyz) const {
    std::vector<qc::Lab> lab(static_cast<std::size_t>(document.GetNrSamples(0)));
    for (std::size_t row = 0; row < lab.size(); ++row)
        document.GetLab(0, static_cast<int>(row), lab[row].data());
    return find(qc::ColorSource::lab, lab, labFromXyz);
}

std::vector<qc::Finding> Inspected::findInSpectra(bool isEmission) const {
    std::vector<qc::Lab> lab(static_cast<std::size_t>(document.GetNrSamples(0)));
    for (std::size_t row = 0; row < lab.size(); ++row)
        lab[row] = {50.0 + 0.1 * static_cast<double>(row), 0.0, 0.0};
    return find(qc::ColorSource::spectra, lab, {}, isEmission);
}

Kinds kindsOf(const std::vector<qc::Finding>& findings) {
    Kinds kinds;
    for (const qc::Finding& finding : findings)
        kinds.push_back(finding.kind);
    return kinds;
}

std::vector<std::string> spectralFields(int first, int last, int step) {
    std::vector<std::string> fields;
    for (int wavelength = first; wavelength <= last; wavelength += step)
        fields.push_back("SPECTRAL_NM_" + std::to_string(wavelength));
    return fields;
}

std::size_t bandAt(int wavelength) {
    return static_cast<std::size_t>((wavelength - kFirstNm) / 10);
}

Values flat(double value) {
    return Values(kBands, value);
}

Values flatBut(double value, int wavelength, double other) {
    Values values = flat(value);
    values[bandAt(wavelength)] = other;
    return values;
}

Inspected spectralChart(const std::vector<Values>& rows) {
    return {spectralFields(kFirstNm, 700, 10), rows};
}

} // namespace qxcms::tests
