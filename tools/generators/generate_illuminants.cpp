// Makes the illuminant files data/r/ill/*.ill, in their text form, from data/illuminants/.
#include <cctype>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/generators/csv.h"
#include "tools/generators/program.h"

namespace qxcms::generators {
namespace {

/// The largest illuminant file that is read; ours stay below.
constexpr std::size_t kFileLimit = 2048;

struct Samples {
    std::vector<std::string> wavelengths;
    std::vector<std::string> values;
};

std::string lowerCase(std::string text) {
    for (char& character : text)
        character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    return text;
}

/// Ten numbers per line.
std::string numberLines(const std::vector<std::string>& numbers) {
    std::string text;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        text += numbers[i] + (i % 10 == 9 || i == numbers.size() - 1 ? "\n" : " ");
    return text;
}

/// The text form: magic, name line, count, wavelengths, values.
std::string illuminantText(const std::string& name, const Samples& samples) {
    return "QXILTEXT\n" + name + "\n" + std::to_string(samples.values.size()) + "\n" +
           numberLines(samples.wavelengths) + numberLines(samples.values);
}

/// A value of two decimals in hundredths.
int hundredths(const std::string& text) {
    const std::size_t point = text.size() < 4 ? std::string::npos : text.size() - 3;
    if (point == std::string::npos || text[point] != '.')
        throw std::runtime_error("two decimals expected: " + text);
    return std::stoi(text.substr(0, point) + text.substr(point + 1));
}

/// The 10 nm sample between two neighbours at 5 nm: a quarter, a half, a quarter, exactly, as four decimals.
std::string filtered(const std::string& below, const std::string& at, const std::string& above) {
    const int tenThousandths = 25 * (hundredths(below) + 2 * hundredths(at) + hundredths(above));
    const std::string fraction = std::to_string(10000 + tenThousandths % 10000).substr(1);
    return std::to_string(tenThousandths / 10000) + "." + fraction;
}

/// Every second sample, filtered; the first and the last stay as published. A lamp's mercury lines are
/// narrower than 10 nm, and samples at single points would miss those that stand between them.
Samples filteredEverySecond(const Samples& published) {
    Samples samples;
    for (std::size_t i = 0; i < published.values.size(); i += 2) {
        const bool isEnd = i == 0 || i + 1 == published.values.size();
        samples.wavelengths.push_back(published.wavelengths[i]);
        samples.values.push_back(
            isEnd ? published.values[i]
                  : filtered(published.values[i - 1], published.values[i], published.values[i + 1]));
    }
    return samples;
}

/// One kind of source table: its file, what stands before the column title in the name of the illuminant, and
/// whether the samples are filtered.
struct Source {
    std::string file;
    std::string prefix;
    bool isLineSpectrum;
};

void generateFrom(const Source& source, const std::string& dataFolder, const std::string& target) {
    const CsvTable table = readCsv(dataFolder + "/" + source.file);
    const std::vector<std::string> wavelengths = table.column("wavelength_nm");
    if (wavelengths.size() != 81 || wavelengths.front() != "380" || wavelengths.back() != "780")
        throw std::runtime_error(table.name + ": 380 to 780 nm every 5 nm expected");
    for (std::size_t i = 1; i < table.header.size(); ++i) {
        const std::string& title = table.header[i];
        const Samples published = {wavelengths, table.column(title)};
        const std::string text = illuminantText(
            source.prefix + title, source.isLineSpectrum ? filteredEverySecond(published) : published);
        if (text.size() >= kFileLimit)
            throw std::runtime_error(title + ": the file would be too large");
        writeText(target + lowerCase(title) + ".ill", text);
    }
}

void generate(const std::string& sourceRoot, const std::string& outputRoot) {
    for (const Source& source :
         {Source{"a_c_e.csv", "CIE Illuminant ", false}, Source{"daylight.csv", "", false},
          Source{"fluorescent.csv", "CIE Illuminant ", true}, Source{"led.csv", "CIE Illuminant ", false}})
        generateFrom(source, sourceRoot + "/data/illuminants", outputRoot + "/data/r/ill/");
}

} // namespace
} // namespace qxcms::generators

int main(int argc, char** argv) {
    return qxcms::generators::runGenerator(argc, argv, qxcms::generators::generate);
}
