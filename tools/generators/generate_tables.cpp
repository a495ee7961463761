// Makes the source files that hold the tables of the kernel, from data/.
#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/generators/csv.h"
#include "tools/generators/program.h"

namespace qxcms::generators {
namespace {

/// Ten values per line, each line under the wavelength of its first value.
constexpr std::size_t kValuesPerLine = 10;

/// One row of a table: its values as text and what a comment says about it.
struct Row {
    std::string comment;
    std::vector<std::string> values;
};

std::string padded(const std::string& text, std::size_t width) {
    return text.size() < width ? std::string(width - text.size(), ' ') + text : text;
}

std::size_t widest(const std::vector<std::string>& values) {
    std::size_t width = 0;
    for (const std::string& value : values)
        width = std::max(width, value.size());
    return width;
}

/// The values of a row in lines of ten, indented, without braces.
std::string lines(const std::vector<std::string>& values, const std::string& indent) {
    const std::size_t width = widest(values);
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        text += i % kValuesPerLine == 0 ? indent : " ";
        text += padded(values[i], width) + ",";
        if (i % kValuesPerLine == kValuesPerLine - 1 || i == values.size() - 1)
            text += "\n";
    }
    return text;
}

std::string definition(const std::string& declarator, const std::vector<Row>& rows) {
    std::string text = "const double " + declarator + " = {\n";
    for (const Row& row : rows)
        text += "    { // " + row.comment + "\n" + lines(row.values, "        ") + "    },\n";
    return text + "};\n";
}

/// A table source: head comment, include, and the definitions, which the formatter leaves alone.
std::string sourceFile(const std::string& head, const std::string& include, const std::string& definitions) {
    return head + "#include \"" + include + "\"\n\n// clang-format off\n\n" + definitions +
           "\n// clang-format on\n";
}

void requireWavelengths(const CsvTable& table, int first, int last, int step) {
    const std::vector<std::string> wavelengths = table.column("wavelength_nm");
    std::size_t index = 0;
    for (int wavelength = first; wavelength <= last; wavelength += step, ++index) {
        if (index >= wavelengths.size() || wavelengths[index] != std::to_string(wavelength))
            throw std::runtime_error(table.name + ": other wavelengths than expected");
    }
    if (index != wavelengths.size())
        throw std::runtime_error(table.name + ": more wavelengths than expected");
}

std::string observerTables(const std::string& data) {
    const CsvTable cie1931 = readCsv(data + "/observers/cie1931_2deg_5nm.csv");
    const CsvTable cie1964 = readCsv(data + "/observers/cie1964_10deg_5nm.csv");
    requireWavelengths(cie1931, 380, 780, 5);
    requireWavelengths(cie1964, 380, 780, 5);
    const auto functions = [&](const std::string& name, const std::string& column) {
        return definition("TObserver::" + name + "[2][kTableCount]",
                          {{"2 degree, " + column, cie1931.column(column)},
                           {"10 degree, " + column + "10", cie1964.column(column + "10")}});
    };
    return sourceFile(
        "// The colour-matching functions of the CIE 1931 (2 degree) and CIE 1964 (10 degree) standard "
        "observers:\n"
        "// 380 to 780 nm every 5 nm, ten values per line, four decimals as published (xbar of the 2 degree\n"
        "// observer at 395 nm is 0.0076). Source: CIE 15:2004; Wyszecki and Stiles, Color Science, 2nd "
        "edition.\n"
        "// Made by tools/generators/generate_tables.cpp from data/observers/.\n",
        "spectral/tobserver.h",
        functions("sXSpectrum", "xbar") + "\n" + functions("sYSpectrum", "ybar") + "\n" +
            functions("sZSpectrum", "zbar"));
}

std::string astmTables(const std::string& data) {
    const CsvTable weights = readCsv(data + "/weights/astm_e308_table6_1931_10nm.csv");
    requireWavelengths(weights, 380, 730, 10);
    std::string text = "const double TIlluminantAndObserver::sASTMtable6[3][3][kMaxPoints] = {\n";
    for (const std::string lamp : {"F2", "F7", "F11"}) {
        text += "    {\n";
        for (const std::string weight : {"Wx", "Wy", "Wz"}) {
            text += "        { // " + lamp + ", " + weight + "\n" +
                    lines(weights.column(lamp + "_" + weight), "            ") + "        },\n";
        }
        text += "    },\n";
    }
    return sourceFile("// Tristimulus weights of the lamps F2, F7 and F11 for the CIE 1931 observer and "
                      "spectra not corrected for\n"
                      "// bandpass: x, y and z weights at 380 to 730 nm every 10 nm, ten values per line, on "
                      "a scale where the y\n"
                      "// weights add up to about 100. Source: ASTM E308, Table 6.\n"
                      "// Made by tools/generators/generate_tables.cpp from data/weights/.\n",
                      "spectral/tilluminantandobserver.h", text + "};\n");
}

std::string filterTables(const std::string& data) {
    const CsvTable weights = readCsv(data + "/density/filter_weights.csv");
    requireWavelengths(weights, 380, 730, 10);
    const std::array<std::string, 4> standards = {"ANSI A", "ANSI T", "DIN", "DIN NB"};
    const auto filter = [&](const std::string& name, const std::string& channel) {
        std::vector<Row> rows;
        for (const std::string& standard : standards) {
            const std::string column = channel == "visual" ? channel : standard + " " + channel;
            rows.push_back({standard + ", " + channel, weights.column(column)});
        }
        return definition("TSpectrum::" + name + "[4][kStandardCount]", rows);
    };
    return sourceFile("// Spectral weights of the red, green, blue and visual filters of the density "
                      "standards ANSI A, ANSI T, DIN\n"
                      "// and DIN NB: 380 to 730 nm every 10 nm, ten values per line. Each row adds up to 1, "
                      "the blue one of ANSI T\n"
                      "// to 0.99994. Source: ANSI PH2.18 and ISO 5-3 (status A, status T, visual), in the "
                      "form that the programs\n"
                      "// of the suite share. The visual row is the same for every standard.\n"
                      "// Made by tools/generators/generate_tables.cpp from data/density/.\n",
                      "spectral/tspectrum.h",
                      filter("sRedFilter", "red") + "\n" + filter("sGreenFilter", "green") + "\n" +
                          filter("sBlueFilter", "blue") + "\n" + filter("sBlackFilter", "visual"));
}

/// Reciprocal kelvin from mired, as text; the line at 0 gets the smallest normal double.
std::string reciprocalKelvin(const std::string& mired) {
    return mired == "0" ? "2.2250738585072014e-308" : mired + "e-6";
}

std::string isotemperatureLines(const std::string& data) {
    const CsvTable table = readCsv(data + "/isotemperature_lines.csv");
    std::vector<std::string> reciprocals;
    for (const std::string& mired : table.column("mired"))
        reciprocals.push_back(reciprocalKelvin(mired));
    const std::vector<std::string> u = table.column("u");
    const std::vector<std::string> v = table.column("v");
    const std::vector<std::string> t = table.column("t");
    std::string text = "const IsotemperatureLine kIsotemperatureLines[kIsotemperatureLineCount] = {\n";
    for (std::size_t i = 0; i < reciprocals.size(); ++i) {
        text += "    {" + padded(reciprocals[i], widest(reciprocals)) + ", " + padded(u[i], widest(u)) +
                ", " + padded(v[i], widest(v)) + ", " + padded(t[i], widest(t)) + "},\n";
    }
    return sourceFile("// Isotemperature lines in the CIE 1960 UCS diagram: reciprocal temperature in 1/K (0 "
                      "to 100 mired every\n"
                      "// 10, then to 600 mired every 25), u and v on the Planckian locus, slope. Source: A. "
                      "R. Robertson, J. Opt.\n"
                      "// Soc. Am. 58 (1968) 1528; Wyszecki and Stiles, Color Science, 2nd edition, with u = "
                      "0.24792 at 325 mired.\n"
                      "// Kept on purpose: the first reciprocal is the smallest normal double instead of 0, "
                      "so that nothing divides\n"
                      "// by zero (isotemperatureLines.firstReciprocal_isTheSmallestNormalDouble).\n"
                      "// Made by tools/generators/generate_tables.cpp from data/isotemperature_lines.csv.\n",
                      "spectral/isotemperature_lines.h",
                      "namespace qxcms::detail {\n\n" + text + "};\n\n} // namespace qxcms::detail\n");
}

void generate(const std::string& sourceRoot, const std::string& outputRoot) {
    const std::string data = sourceRoot + "/data";
    const std::string target = outputRoot + "/spectral/";
    writeText(target + "observer_tables.cpp", observerTables(data));
    writeText(target + "astm_tables.cpp", astmTables(data));
    writeText(target + "density_filter_tables.cpp", filterTables(data));
    writeText(target + "isotemperature_lines.cpp", isotemperatureLines(data));
}

} // namespace
} // namespace qxcms::generators

int main(int argc, char** argv) {
    return qxcms::generators::runGenerator(argc, argv, qxcms::generators::generate);
}
