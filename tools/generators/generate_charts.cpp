// Makes the two charts that ship for trying out, data/charts/*.txt in CGATS form, from data/charts/*.csv.
#include <cstddef>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "colorspace/tlabspace.h"
#include "tools/generators/csv.h"
#include "tools/generators/program.h"

namespace qxcms::generators {
namespace {

struct Chart {
    std::vector<std::string> header; ///< the lines before the number of fields, complete
    std::vector<std::string> fields;
    std::vector<std::vector<std::string>> rows;
};

std::string joined(const std::vector<std::string>& cells) {
    std::string text;
    for (const std::string& cell : cells)
        text += (text.empty() ? "" : "\t") + cell;
    return text + "\n";
}

std::string cgatsText(const Chart& chart) {
    std::string text = "CGATS.17\n";
    for (const std::string& line : chart.header)
        text += line + "\n";
    text += "NUMBER_OF_FIELDS\t" + std::to_string(chart.fields.size()) + "\n";
    text += "BEGIN_DATA_FORMAT\n" + joined(chart.fields) + "END_DATA_FORMAT\n";
    text += "NUMBER_OF_SETS\t" + std::to_string(chart.rows.size()) + "\n";
    text += "BEGIN_DATA\n";
    for (const std::vector<std::string>& row : chart.rows)
        text += joined(row);
    return text + "END_DATA\n";
}

/// The measured chart: reflectance factors from 0 to 1, a patch per row.
Chart spectralChart(const CsvTable& reflectance) {
    Chart chart;
    chart.header = {"ORIGINATOR\t\"N. Ohta, The Basis of Color Reproduction Engineering, 1997\"",
                    "FILE_DESCRIPTOR\t\"ColorChecker, spectral reflectance factors of the 24 patches\"",
                    "CREATED\t\"1997\""};
    chart.fields = {"SAMPLE_ID"};
    for (const std::string& wavelength : reflectance.column("wavelength_nm"))
        chart.fields.push_back("SPECTRAL_NM_" + wavelength);
    for (std::size_t i = 1; i < reflectance.header.size(); ++i) {
        std::vector<std::string> row = reflectance.column(reflectance.header[i]);
        row.insert(row.begin(), reflectance.header[i]);
        chart.rows.push_back(std::move(row));
    }
    return chart;
}

double number(const std::string& text) {
    const char* last = text.data() + text.size();
    const char* end = nullptr;
    const double value = detail::parseDouble(text.data(), last, &end);
    if (end != last)
        throw std::runtime_error("no number: " + text);
    return value;
}

/// Four decimals of L*, a*, b* from x, y and the luminance factor Y, on the published white of illuminant C.
std::vector<std::string> labTexts(double x, double y, double luminance) {
    const double whiteC[3] = {98.074, 100.0, 118.232};
    const double xyz[3] = {luminance * 100.0 * (x / y), luminance * 100.0,
                           luminance * 100.0 * ((1.0 - x - y) / y)};
    double lab[3];
    TLabSpace(whiteC).XYZToLab(xyz, lab);
    return {detail::fixedText(lab[0], 4), detail::fixedText(lab[1], 4), detail::fixedText(lab[2], 4)};
}

/// The aims of the same chart.
Chart aimChart(const CsvTable& aims) {
    Chart chart;
    chart.header = {
        "ORIGINATOR\t\"C. S. McCamy, H. Marcus, J. G. Davidson, J. Appl. Photogr. Eng. 2 (1976) 95-99\"",
        "FILE_DESCRIPTOR\t\"ColorChecker, published aims of the 24 patches\"", "CREATED\t\"1976\"",
        "WEIGHTING_FUNCTION\t\"ILLUMINANT, C\"", "WEIGHTING_FUNCTION\t\"OBSERVER, 2 degree\""};
    chart.fields = {"SAMPLE_ID", "LAB_L", "LAB_A", "LAB_B"};
    const std::vector<std::string> patches = aims.column("patch");
    const std::vector<std::string> x = aims.column("x");
    const std::vector<std::string> y = aims.column("y");
    const std::vector<std::string> luminance = aims.column("Y");
    for (std::size_t i = 0; i < patches.size(); ++i) {
        std::vector<std::string> row = labTexts(number(x[i]), number(y[i]), number(luminance[i]));
        row.insert(row.begin(), patches[i]);
        chart.rows.push_back(std::move(row));
    }
    return chart;
}

void generate(const std::string& sourceRoot, const std::string& outputRoot) {
    const std::string data = sourceRoot + "/data/charts/";
    const std::string target = outputRoot + "/data/charts/";
    writeText(target + "colorchecker_spectral.txt",
              cgatsText(spectralChart(readCsv(data + "colorchecker_reflectance.csv"))));
    writeText(target + "colorchecker_aims.txt", cgatsText(aimChart(readCsv(data + "colorchecker_aims.csv"))));
}

} // namespace
} // namespace qxcms::generators

int main(int argc, char** argv) {
    return qxcms::generators::runGenerator(argc, argv, qxcms::generators::generate);
}
