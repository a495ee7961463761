// Mebibytes that cost as much memory or time as a mebibyte can: one kind of thing again and again.
#pragma once

#include <ostream>
#include <string>

#include "tests/hostile/measured.h"

namespace qxcms::tests {

inline constexpr std::size_t kSize = kMebibyte;

inline constexpr char kEndOfFormat[] = "\nEND_DATA_FORMAT\n";
inline constexpr char kFormat[] = "BEGIN_DATA_FORMAT\n";

/// A format of `name` again and again, and one value for each, with so many samples declared.
inline std::string oneValueEach(const std::string& head, const std::string& name, const std::string& value,
                                const std::string& sets) {
    const std::string start = head + kFormat;
    const std::string middle = kEndOfFormat + ("NUMBER_OF_SETS " + sets + "\nBEGIN_DATA\n");
    const std::size_t count = (kSize - start.size() - middle.size()) / (name.size() + value.size());
    return start + repeated(name, static_cast<int>(count)) + middle +
           repeated(value, static_cast<int>(count));
}

/// One column and a value again and again, as many as are declared.
inline std::string manyRows(const std::string& head, const std::string& name, const std::string& value) {
    const std::string start = head + formatText(name) + "NUMBER_OF_SETS ";
    const std::string begin = "\nBEGIN_DATA\n";
    const std::size_t count = (kSize - start.size() - begin.size() - 10) / value.size();
    return start + std::to_string(count) + begin + repeated(value, static_cast<int>(count));
}

/// Names that differ, with one value each.
template <class NameOf>
std::string differentFields(const std::string& head, NameOf nameOf, int count) {
    std::string names;
    for (int i = 0; i < count; ++i)
        names += nameOf(i) + " ";
    return head + tableText(names, 1, repeated("1 ", count));
}

inline std::string differentKeywords() {
    std::string text;
    for (int i = 0; text.size() < kSize - 20; ++i)
        text += "KEYWORD " + std::to_string(i) + "\n";
    return text;
}

/// Names of the same hash are what an index of names suffers from; these differ in one bit each.
inline std::string similarKeywords() {
    std::string text;
    for (unsigned i = 0; text.size() < kSize - 40; ++i) {
        text += "KEYWORD ";
        for (int bit = 0; bit < 16; ++bit)
            text += (i >> bit & 1U) != 0 ? 'a' : 'q';
        text += '\n';
    }
    return text;
}

inline std::string nestedEndsOfBlocks() {
    const std::string name(TCgats::kMaxKeyword - 6, 'x');
    return filled(kSize, "END_" + name.substr(1) + "y\n", "BEGIN_" + name + "\n");
}

struct WorstCase {
    const char* name;
    int code; ///< of the reader
    std::string (*text)();
};

inline std::ostream& operator<<(std::ostream& stream, const WorstCase& worst) {
    return stream << worst.name;
}

/// The codes follow from the rules of the reader.
inline const WorstCase kWorstCases[] = {
    // One character.
    {"quotes", -1, [] { return filled(kSize, "\""); }},
    {"hashes", -1, [] { return filled(kSize, "#"); }},
    {"blanks", 0, [] { return filled(kSize, " "); }},
    {"tabs", 0, [] { return filled(kSize, "\t"); }},
    {"lineFeeds", 0, [] { return filled(kSize, "\n"); }},
    {"carriageReturns", 0, [] { return filled(kSize, "\r"); }},
    {"letters", -1, [] { return filled(kSize, "a"); }},
    {"bytesOf255", -1, [] { return filled(kSize, "\xff"); }},

    // Header lines.
    {"words", -1, [] { return filled(kSize, "a "); }},
    {"wordsFarApart", 0, [] { return filled(kSize, " ", "a", "b"); }},
    {"oneLetterKeywords", 0, [] { return filled(kSize, "a\n"); }},
    {"loneHashes", 0, [] { return filled(kSize, "#\n"); }},
    {"remarks", 0, [] { return filled(kSize, "#a\n"); }},
    {"emptyQuotes", 0, [] { return filled(kSize, "a \"\"\n"); }},
    {"quotesWithoutEnd", 0, [] { return filled(kSize, "CREATED \"\n"); }},
    {"quoteWithoutEnd", -1, [] { return filled(kSize, "x", "CREATED \""); }},
    {"rubbishBehindAQuote", 0, [] { return filled(kSize, "x", "CREATED \"a\" "); }},
    {"longestLines", 0,
     [] {
         return filled(kSize, std::string(TCgats::kMaxKeyword, 'k') + " \"" +
                                  std::string(TCgats::kMaxValue, 'v') + "\"#" +
                                  std::string(TCgats::kMaxComment, 'c') + "\n");
     }},
    {"tooLongLastLine", -1,
     [] { return filled(kSize, "a\n", "", std::string(TCgats::kMaxKeyword + 1, 'k')); }},
    {"fieldCounts", 0, [] { return filled(kSize, "NUMBER_OF_FIELDS 2147483647\n"); }},
    {"setCounts", 0, [] { return filled(kSize, "NUMBER_OF_SETS 2147483647\n"); }},
    {"spotTags", 0, [] { return filled(kSize, "SPOT_ID\n"); }},
    {"processColorTags", 0, [] { return filled(kSize, "PROCESSCOLOR_ID\n"); }},

    // Custom names.
    {"oneLetterNames", 0, [] { return filled(kSize, "KEYWORD a\n"); }},
    {"differentNames", 0, differentKeywords},
    {"similarNames", 0, similarKeywords},
    {"longestNames", 0,
     [] { return filled(kSize, "KEYWORD " + std::string(TCgats::kMaxValue, 'a') + "\n"); }},

    // Comment blocks.
    {"blocksWithoutEnd", 5, [] { return filled(kSize, "BEGIN_X\n"); }},
    {"blocksWithoutName", 5, [] { return filled(kSize, "BEGIN_\n"); }},
    {"moreThan128Blocks", 5, [] { return filled(kSize, "BEGIN_X\r\nEND_X\r\n"); }},
    {"blockOfLineEnds", 5, [] { return filled(kSize, "\n", "BEGIN_X\n"); }},
    {"blockOfAlmostEnds", 5, nestedEndsOfBlocks},
    {"hugeBlock", 0, [] { return filled(kSize, "x", "BEGIN_X\n", "\nEND_X\n"); }},
    {"128HugeBlocks", 0, [] { return repeated(filled(kSize / 128, "x", "BEGIN_X\n", "\nEND_X\n"), 128); }},

    // Data formats.
    {"formatOfQuotes", 9, [] { return filled(kSize, "\"", kFormat); }},
    {"formatOfLoneQuotes", 9, [] { return filled(kSize, "\" ", kFormat); }},
    {"formatOfHashes", 9, [] { return filled(kSize, "#", kFormat); }},
    {"formatOfRemarks", 9, [] { return filled(kSize, "#\n", kFormat); }},
    {"formatOfBlanks", 9, [] { return filled(kSize, " ", kFormat); }},
    {"formatWithoutEnd", 9, [] { return filled(kSize, "nm0 ", kFormat); }},
    {"unknownName", 11, [] { return filled(kSize, "x", kFormat, kEndOfFormat); }},
    {"hugeSpectralName", 0, [] { return filled(kSize, "x", kFormat + std::string("nm0"), kEndOfFormat); }},
    {"hugeWavelength", 0, [] { return filled(kSize, "9", kFormat + std::string("nm"), kEndOfFormat); }},
    {"hugeChannelNumber", 0, [] { return filled(kSize, "9", kFormat, "CLR_1\nEND_DATA_FORMAT\n"); }},
    {"oneLetterFields", 0,
     [] { return filled(kSize, "a ", "KEYWORD a\n" + std::string(kFormat), kEndOfFormat); }},
    {"tooManyDeclaredFields", 10,
     [] {
         return filled(kSize, "a ", "KEYWORD a\nNUMBER_OF_FIELDS 100000\n" + std::string(kFormat),
                       kEndOfFormat);
     }},
    {"aliases", 0, [] { return filled(kSize, "SampleID SAMPLE_NAME SampleName ", kFormat, kEndOfFormat); }},

    // Tables of many columns.
    {"customFields", 0, [] { return oneValueEach("KEYWORD a\n", "a ", "1 ", "1"); }},
    {"customFieldsOfManySets", 1, [] { return oneValueEach("KEYWORD a\n", "a ", "1 ", "2147483647"); }},
    {"customFieldsWithEmptyValues", 0, [] { return oneValueEach("KEYWORD a\n", "a ", "\"\"", "1"); }},
    {"spectralFields", 0, [] { return oneValueEach("", "nm0 ", "1 ", "1"); }},
    {"spectralFieldsOfManySets", 1, [] { return oneValueEach("", "nm0 ", "1 ", "2147483647"); }},
    {"spectralFieldsOfZeros", 0, [] { return oneValueEach("", "nm0 ", "0 ", "1"); }},
    {"descendingWavelengths", 0,
     [] {
         return differentFields(
             "", [](int i) { return "nm" + std::to_string(200000 - i); }, 90000);
     }},
    {"standardFields", 0, [] { return oneValueEach("", "LAB_L ", "1 ", "1"); }},
    {"aliasFields", 0, [] { return oneValueEach("", "SampleName ", "1 ", "1"); }},
    {"inkBooks", 0, [] { return oneValueEach("KEYWORD InkBook\n", "inkbook ", "1 ", "1"); }},
    {"repeatedChannel", 0, [] { return oneValueEach("", "5CLR_1 ", "1 ", "1"); }},
    {"manyChannels", 0,
     [] {
         return differentFields(
             "", [](int i) { return "60000CLR_" + std::to_string(i + 1); }, 60000);
     }},
    {"tooFewChannels", 17, [] { return oneValueEach("", "4CLR_1 ", "1 ", "1"); }},
    {"repeatedProcessColor", 0, [] { return oneValueEach("", "PC0_1 ", "1 ", "1"); }},
    {"manyProcessColors", 0,
     [] {
         return differentFields(
             "", [](int i) { return "PC0_" + std::to_string(i + 1); }, 80000);
     }},
    {"hugeProcessColor", 17, [] { return oneValueEach("", "PC0_2147483647 ", "1 ", "1"); }},
    {"repeatedSpot", 0, [] { return oneValueEach("", "SPOT_1 ", "1 ", "1"); }},
    {"manySpots", 0,
     [] {
         return differentFields(
             "", [](int i) { return "SPOT_" + std::to_string(i + 1); }, 80000);
     }},
    {"hugeSpot", 17, [] { return oneValueEach("", "SPOT_2147483647 ", "1 ", "1"); }},
    {"fieldsWithoutValues", 1,
     [] {
         return filled(kSize, "a ", "KEYWORD a\n" + std::string(kFormat),
                       kEndOfFormat + std::string("NUMBER_OF_SETS 1\nBEGIN_DATA\n"));
     }},

    // Tables of many rows.
    {"numbers", 0, [] { return manyRows("", "LAB_L", "0 "); }},
    {"emptyNumbers", 0, [] { return manyRows("", "LAB_L", "\"\""); }},
    {"manyWords", 0, [] { return manyRows("", "SAMPLE_ID", "a "); }},
    {"emptyWords", 0, [] { return manyRows("", "SAMPLE_ID", "\"\""); }},
    {"wordsOf127Characters", 0,
     [] { return manyRows("", "SAMPLE_ID", std::string(TCgats::kMaxSampleValue, 'a') + " "); }},
    {"numbersOf127Characters", 0,
     [] { return manyRows("", "LAB_L", std::string(TCgats::kMaxSampleValue, '9') + " "); }},
    {"numbersWithCommas", 0,
     [] { return manyRows("", "LAB_L", std::string(TCgats::kMaxSampleValue, ',') + " "); }},
    {"hardNumbers", 0, [] { return manyRows("", "LAB_L", "2.2250738585072011e-308 "); }},
    {"wordOf128Characters", 1, [] { return manyRows("", "SAMPLE_ID", std::string(128, 'a') + " "); }},
    {"missingNumbers", 1,
     [] { return filled(kSize, "0 ", formatText("LAB_L") + "NUMBER_OF_SETS 2147483647\nBEGIN_DATA\n"); }},
    {"missingWords", 1,
     [] { return filled(kSize, "a ", formatText("SAMPLE_ID") + "NUMBER_OF_SETS 2147483647\nBEGIN_DATA\n"); }},
    {"endsOfData", 1,
     [] {
         return filled(kSize, "END_DATA ",
                       formatText("SAMPLE_ID") + "NUMBER_OF_SETS 2147483647\nBEGIN_DATA\n");
     }},
    {"blanksForValues", 1,
     [] { return filled(kSize, " ", formatText("LAB_L") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n"); }},
    {"hugeValue", 1,
     [] { return filled(kSize, "x", formatText("LAB_L") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n"); }},
    {"hugeQuotedValue", 1,
     [] { return filled(kSize, "x", formatText("LAB_L") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n\"", "\""); }},
    {"quotedValueWithoutEnd", 1,
     [] { return filled(kSize, "x", formatText("LAB_L") + "NUMBER_OF_SETS 1\nBEGIN_DATA\n\""); }},

    // Many tables.
    {"tinyTables", 0,
     [] {
         return filled(kSize, "NUMBER_OF_SETS 1\nBEGIN_DATA_FORMAT\nnm0 END_DATA_FORMAT\nBEGIN_DATA\n0\n");
     }},
    {"tinyTablesOfSpots", 0,
     [] {
         return filled(
             kSize, "NUMBER_OF_SETS 1\nBEGIN_DATA_FORMAT\nSPOT_1 PC0_1 LAB_L LAB_A LAB_B XYZ_X XYZ_Y XYZ_Z "
                    "nm0 END_DATA_FORMAT\nBEGIN_DATA\n0 0 0 0 0 0 0 0 0\n");
     }},
    {"formatsWithoutSamples", 10, [] { return filled(kSize, "BEGIN_DATA_FORMAT\nnm0 END_DATA_FORMAT\n"); }},
    {"samplesWithoutFormat", 6, [] { return filled(kSize, "BEGIN_DATA\n"); }},
};

} // namespace qxcms::tests
