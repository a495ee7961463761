// Texts and documents for the tests of the CGATS folder.
#pragma once

#include <cstdint>
#include <ctime>
#include <fstream>
#include <random>
#include <string>
#include <vector>

#include "cgats/tcgats.h"

namespace qxcms::tests {

/// Reads a text into an empty document, as the reader answers it.
struct Reading {
    explicit Reading(const std::string& text) : code(document.ReadFromBuffer(text.c_str())) {}

    TCgats document;
    int code;
};

/// A text of the document, or "(absent)".
inline std::string orAbsent(const char* text) {
    return text == nullptr ? "(absent)" : text;
}

inline std::string repeated(const std::string& text, int times) {
    std::string all;
    all.reserve(text.size() * static_cast<std::size_t>(times));
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

/// A data format section.
inline std::string formatText(const std::string& fields) {
    return "BEGIN_DATA_FORMAT\n" + fields + "\nEND_DATA_FORMAT\n";
}

/// A whole table in undeclared mode.
inline std::string tableText(const std::string& fields, int sets, const std::string& samples) {
    return formatText(fields) + "NUMBER_OF_SETS " + std::to_string(sets) + "\nBEGIN_DATA\n" + samples +
           "\nEND_DATA\n";
}

/// A column index list as a vector; empty for null.
inline std::vector<int> columnList(const std::int32_t* columns, int count) {
    return columns == nullptr ? std::vector<int>() : std::vector<int>(columns, columns + count);
}

/// The keywords of all tags in order.
inline std::vector<std::string> keywordsOf(const TCgats& document) {
    std::vector<std::string> keywords;
    for (int i = 0; i < document.GetNrTags(); ++i)
        keywords.push_back(orAbsent(document.GetTagAt(i)->GetKeyword()));
    return keywords;
}

/// The canonical names of a header's columns.
inline std::vector<std::string> namesOf(const TCgatsTableHeader& header) {
    std::vector<std::string> names;
    for (int i = 0; i < header.GetNrFields(); ++i) {
        const TCgatsField* field = header.GetField(i);
        names.push_back(field == nullptr ? "(empty)" : orAbsent(field->GetName()));
    }
    return names;
}

/// A document with every kind of section, in declared mode, two tables.
inline std::string everythingText() {
    return "CGATS.17\n"
           "ORIGINATOR\t\"the maker\"\t# by hand\n"
           "# a line of its own\n"
           "CREATED 2024-01-02\r\n"
           "BEGIN_NOTES\nfree \"text\" # here\nEND_NOTES\n"
           "PROCESSCOLOR_ID \"Orange\"\n"
           "PROCESSCOLOR_ID \"Green\"\n"
           "SPOT_ID \"Gold\"\n"
           "KEYWORD \"LOT\"\n"
           "NUMBER_OF_FIELDS 12\n"
           "BEGIN_DATA_FORMAT\n"
           "SAMPLE_ID LOT SampleID PC2_1 PC2_2 SPOT_1 LAB_L LAB_A LAB_B nm400 nm390\n"
           "\"XYZ_Y\" # the last one\n"
           "END_DATA_FORMAT\n"
           "NUMBER_OF_SETS 3\n"
           "BEGIN_DATA\n"
           "1 \"lot 1\" red 0 100 50 41,5 60.25 30 0.5 0.4 12\n"
           "2 \"\" \"dark red\" 1 99 0 31.5 50.25 20 0.25 0.2 9\n"
           "3 x y 2 98 5 1 2 3 0.1 0.2 0.3\n"
           "END_DATA\n"
           "TABLE_NAME second\n"
           "NUMBER_OF_SETS 2\n"
           "BEGIN_DATA_FORMAT\n"
           "6CLR_1 6CLR_2 6CLR_3 6CLR_4 6CLR_5 6CLR_6\n"
           "END_DATA_FORMAT\n"
           "BEGIN_DATA\n"
           "1 2 3 4 5 6 7 8 9 10 11 12\n"
           "END_DATA\n";
}

/// Damages a text: a few bytes replaced, inserted or removed, pieces doubled, moved or cut off.
class Mutator {
public:
    explicit Mutator(std::uint32_t seed) : random(seed) {}

    std::string mutate(std::string text) {
        const std::size_t steps = 1 + below(4);
        for (std::size_t i = 0; i < steps; ++i)
            mutateOnce(text);
        return text;
    }

    /// A number from 0 to limit - 1.
    std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random()) % limit; }

private:
    void mutateOnce(std::string& text) {
        static constexpr char kBytes[] = "\n\r\t \"#,_-0123456789ABDEFGINTSZ\x01\x7f\xff";
        static const char* const kWords[] = {
            "2147483647",           "-1",        "\"\"",        "BEGIN_DATA\n",
            "END_DATA_FORMAT\n",    "BEGIN_X\n", "9CLR_1 ",     "SPOT_2 ",
            "NUMBER_OF_FIELDS 2\n", "nm-1 ",     "KEYWORD a\n", "99999999999"};
        const std::size_t at = below(text.size() + 1);
        const std::size_t length = below(12);
        switch (below(7)) {
        case 0:
            if (at < text.size())
                text[at] = kBytes[below(sizeof kBytes - 1)];
            break;
        case 1:
            text.insert(at, 1, kBytes[below(sizeof kBytes - 1)]);
            break;
        case 2:
            text.erase(at, length);
            break;
        case 3:
            text.insert(below(text.size() + 1), text.substr(at, length * 4));
            break;
        case 4:
            text.insert(at, kWords[below(sizeof kWords / sizeof kWords[0])]);
            break;
        case 5:
            if (at < text.size())
                text[at] = static_cast<char>(1 + below(255));
            break;
        default:
            if (below(4) == 0)
                text.erase(at);
            else
                text.insert(at, std::string(below(400), kBytes[below(sizeof kBytes - 1)]));
        }
    }

    std::mt19937 random;
};

#if defined(__SANITIZE_ADDRESS__)
#define QXCMS_TESTS_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define QXCMS_TESTS_SANITIZED 1
#endif
#endif

/// How much slower than a release build this one may be.
#if defined(QXCMS_TESTS_SANITIZED)
inline constexpr double kSlowness = 30.0;
#elif defined(NDEBUG)
inline constexpr double kSlowness = 1.0;
#else
inline constexpr double kSlowness = 15.0;
#endif

/// The processor time since construction, as seconds of a release build.
class Stopwatch {
public:
    double seconds() const { return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC / kSlowness; }

private:
    std::clock_t start = std::clock();
};

/// The address space of the process in pages; 0 where the system does not tell.
inline std::int64_t addressSpacePages() {
    std::int64_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    return pages;
}

/// 64 MB in pages of 4 kB.
inline constexpr std::int64_t kManyPages = 64 * 256;

} // namespace qxcms::tests
