// What the reader must make of files that other people made. They are looked for in the folder that the
// environment variable QXCMS_CORPUS names; without it these tests are skipped.
#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/support/scratch.h"

namespace {

// What must come out of one file.
struct RealFile {
    const char* name;
    int code;           // what the reader answers
    int tags;           // header lines kept, comment-only lines among them
    int customFields;   // names declared by "KEYWORD", and aliases of the sample name
    int commentBlocks;  // "BEGIN_..." to "END_..."
    const char* tables; // samples x fields of each table, of those before a refusal, too
    int line;           // for refused files: where
    const char* token;  // for refused files: on what
};

constexpr RealFile kRealFiles[] = {
    // Header values without quotes lose their blanks; SampleID is declared.
    {"bare-values-display.txt", 0, 17, 1, 0, "602x7", 0, ""},
    // Three rows of a matrix as XYZ columns.
    {"ccmx-matrix.ccmx", 0, 18, 4, 0, "3x3", 0, ""},
    // TAB behind the identifier, blanks elsewhere.
    {"cie-own-target.cie", 0, 11, 0, 0, "468x4", 0, ""},
    // Every SPEC_nnn column is declared and thereby a string.
    {"cie-spec-keyworded.cie", 0, 91, 76, 0, "24x81", 0, ""},
    // A lone CR ends each line; lines with a lone "#" are skipped; two aliases of the sample name.
    {"cr-line-ends.txt", 0, 16, 2, 0, "21x6", 0, ""},
    // Two tables of different width, each with comments and declarations before it.
    {"gam-two-tables.gam", 0, 46, 16, 0, "926x4 1848x3", 0, ""},
    // A "#" inside a quoted value; one alias of the sample name.
    {"hash-in-quotes.txt", 0, 11, 1, 0, "432x9", 0, ""},
    // A column that is neither standard nor declared.
    {"it8-reflective-R000926.it8", 11, 10, 1, 0, "", 12, "STDEV_DE"},
    // Runs of blanks between the columns.
    {"it8-reflective-R060101.it8", 0, 15, 0, 0, "288x13", 0, ""},
    // Names with unquoted blanks shift the columns; what is left over is read as three header lines.
    {"nm-tab-unquoted-names.txt", 0, 25, 8, 0, "24x44", 0, ""},
    // Samples of an undeclared number.
    {"no-number-of-sets.tsv", 6, 3, 1, 0, "", 5, "BEGIN_DATA"},
    // The second table has no data format of its own.
    {"odd-reader-test.txt", 6, 21, 3, 0, "22x3", 51, "BEGIN_DATA"},
    // Spectral columns in a spelling that is not known.
    {"sp-CIE-TCS.sp", 11, 8, 0, 0, "", 11, "SPEC_360"},
    // 141 header lines, of which 128 are kept.
    {"sp-more-than-128-lines.sp", 0, 128, 125, 0, "1x121", 0, ""},
    // A quote that is never closed; spectral columns in a spelling that is not known.
    {"sp-unclosed-quote.txt", 11, 14, 4, 0, "", 19, "SPEC_380"},
    // Three tables with headers between them.
    {"ti1-cmyk-three-tables.ti1", 0, 45, 9, 0, "46x8 8x8 9x8", 0, ""},
    // Three tables of different length.
    {"ti1-three-tables.ti1", 0, 44, 8, 0, "196x7 8x7 9x7", 0, ""},
    // Quoted strings among the samples.
    {"ti2-eci2002r.ti2", 0, 28, 9, 0, "1485x9", 0, ""},
    // Eight fields where nine are declared.
    {"ti2-fieldcount.ti2", 12, 21, 8, 0, "", 26, "END_DATA_FORMAT"},
    // A comment block before each table; RGB_I is declared.
    {"ti3-argyll-blocks.ti3", 0, 59, 18, 2, "57x7 256x4", 0, ""},
    // Few header lines.
    {"ti3-tiny.ti3", 0, 15, 0, 0, "15x7", 0, ""},
    // The second table has a column that is not declared.
    {"ti3-with-cal-table.ti3", 11, 31, 0, 2, "175x7", 218, "RGB_I"},
    // Device values, XYZ, Lab and 41 bands.
    {"wide-cmyk-xyz-lab-nm.txt", 0, 26, 0, 0, "10x52", 0, ""},
};

// The messages of the codes above.
std::string messageOf(int code) {
    switch (code) {
    case 6:
        return "Internal error: temporary header not initialized.";
    case 11:
        return "Unknown and undeclared header field type.";
    case 12:
        return "Number of header fields found doesn't match number of header fields declared.";
    default:
        return "";
    }
}

class Place : public TCgatsDiagnosticSink {
public:
    void Refused(const TCgatsDiagnostic& diagnostic) override {
        ++reports;
        code = diagnostic.code;
        line = diagnostic.line;
        token.assign(diagnostic.token, diagnostic.tokenLength);
    }

    int reports = 0;
    int code = 0;
    int line = 0;
    std::string token;
};

// Samples and fields of each table: "196x7 8x7".
std::string sizesOf(const TCgats& document) {
    std::string sizes;
    for (int i = 0; i < document.GetNrTables(); ++i) {
        const TCgatsTableHeader* header = document.GetTable(i)->GetHeader();
        sizes += (i == 0 ? "" : " ") + std::to_string(header->GetNrSamples()) + "x" +
                 std::to_string(header->GetNrFields());
    }
    return sizes;
}

// Skips where there is no folder of real files.
class realFile : public testing::Test {
protected:
    void SetUp() override {
        const char* name = std::getenv("QXCMS_CORPUS");
        if (name == nullptr || *name == '\0')
            GTEST_SKIP() << "QXCMS_CORPUS does not name the folder of real files";
        folder = name;
    }

    std::string path(const char* name) const { return (folder / name).string(); }

    // A file that must be accepted.
    std::unique_ptr<TCgats> read(const char* name) const {
        auto document = std::make_unique<TCgats>(path(name).c_str());
        EXPECT_EQ(document->GetErrorCode(), 0) << name;
        return document;
    }

    std::filesystem::path folder;
};

std::string text(const TCgats& document, int table, int sample, int field) {
    std::array<char, 400> buffer{};
    EXPECT_EQ(document.GetField(table, sample, field, buffer.data()), 0);
    return buffer.data();
}

std::array<double, 3> lab(const TCgats& document, int table, int sample) {
    std::array<double, 3> values{};
    EXPECT_EQ(document.GetLab(table, sample, values.data()), 0);
    return values;
}

std::array<double, 3> xyz(const TCgats& document, int table, int sample) {
    std::array<double, 3> values{};
    EXPECT_EQ(document.GetXyz(table, sample, values.data()), 0);
    return values;
}

std::array<double, 4> cmyk(const TCgats& document, int table, int sample) {
    std::array<double, 4> values{};
    EXPECT_EQ(document.GetCoordinates(table, sample, values.data()), 0);
    return values;
}

std::string valueOf(const TCgats& document, const char* keyword) {
    const TCgatsTag* tag = document.GetTag(keyword);
    return tag == nullptr ? "(no such tag)" : tag->GetValue();
}

std::string commentOf(const TCgats& document, const char* keyword) {
    const TCgatsTag* tag = document.GetTag(keyword);
    return tag == nullptr ? "(no such tag)" : tag->GetComment();
}

using Triple = std::array<double, 3>;
using Inks = std::array<double, 4>;

// ---- all files ----

TEST_F(realFile, folder_holdsAllListedFiles) {
    std::set<std::string> found;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        found.insert(entry.path().filename().string());
    for (const RealFile& file : kRealFiles)
        EXPECT_EQ(found.count(file.name), 1u) << file.name;
}

TEST_F(realFile, constructor_recordsTheCodeAndItsMessage) {
    for (const RealFile& file : kRealFiles) {
        SCOPED_TRACE(file.name);
        const TCgats document(path(file.name).c_str());
        EXPECT_EQ(document.GetErrorCode(), file.code);
        EXPECT_EQ(document.GetErrorMessage(), messageOf(file.code));
    }
}

TEST_F(realFile, tables_haveTheirSamplesAndFieldsAlsoBeforeARefusal) {
    for (const RealFile& file : kRealFiles) {
        SCOPED_TRACE(file.name);
        EXPECT_EQ(sizesOf(TCgats(path(file.name).c_str())), file.tables);
    }
}

TEST_F(realFile, nrSamples_isAnsweredOfRefusedFilesToo) {
    for (const RealFile& file : kRealFiles) {
        SCOPED_TRACE(file.name);
        const TCgats document(path(file.name).c_str());
        for (int i = 0; i < document.GetNrTables(); ++i)
            EXPECT_EQ(document.GetNrSamples(i), document.GetTable(i)->GetHeader()->GetNrSamples());
        EXPECT_EQ(document.GetNrSamples(document.GetNrTables()), -1);
    }
}

TEST_F(realFile, headerLines_areKept) {
    for (const RealFile& file : kRealFiles) {
        SCOPED_TRACE(file.name);
        const TCgats document(path(file.name).c_str());
        EXPECT_EQ(document.GetNrTags(), file.tags);
        EXPECT_EQ(document.GetNrCustomFields(), file.customFields);
        EXPECT_EQ(document.GetNrCommentBlocks(), file.commentBlocks);
    }
}

TEST_F(realFile, refusal_tellsLineAndToken) {
    for (const RealFile& file : kRealFiles) {
        SCOPED_TRACE(file.name);
        const std::string bytes = qxcms::tests::ScratchFolder::read(path(file.name));
        TCgats document;
        Place place;
        EXPECT_EQ(document.ReadFromBuffer(bytes.c_str(), &place), file.code);
        EXPECT_EQ(place.reports, file.code == 0 ? 0 : 1);
        EXPECT_EQ(place.code, file.code);
        EXPECT_EQ(place.line, file.line);
        EXPECT_EQ(place.token, file.token);
    }
}

TEST_F(realFile, everyValue_isHandedOut) {
    for (const RealFile& file : kRealFiles) {
        if (file.code != 0)
            continue;
        SCOPED_TRACE(file.name);
        const auto document = read(file.name);
        std::array<char, 400> buffer{};
        for (int table = 0; table < document->GetNrTables(); ++table) {
            const int samples = document->GetNrSamples(table);
            const int fields = document->GetNrFields(table);
            int refused = 0;
            for (int sample = 0; sample < samples; ++sample)
                for (int field = 0; field < fields; ++field)
                    refused += document->GetField(table, sample, field, buffer.data()) == 0 ? 0 : 1;
            EXPECT_EQ(refused, 0);
            EXPECT_EQ(document->GetField(table, samples, 0, buffer.data()), -1);
            EXPECT_EQ(document->GetField(table, 0, fields, buffer.data()), -1);
        }
    }
}

// ---- values of single files ----

TEST_F(realFile, bareHeaderValues_loseTheirBlanks) {
    const auto document = read("bare-values-display.txt");
    EXPECT_STREQ(document->GetCreated(), "2017-10-1715:05:08UTC+9");
    EXPECT_EQ(document->GetTag(2)->GetNumeric(), 1);
    EXPECT_EQ(valueOf(*document, "PRODUCT"), "MOBILEPHONE");
    EXPECT_EQ(valueOf(*document, "SYNC_MODE"), "INT60Hz");
    EXPECT_EQ(valueOf(*document, "AMBIENT_TEMPERATURE"), "24");
}

TEST_F(realFile, declaredSampleID_givesTheSampleNames) {
    const auto document = read("bare-values-display.txt");
    ASSERT_TRUE(document->ContainsSampleNames(0));
    std::array<char, 400> name{};
    ASSERT_EQ(document->GetSampleName(0, 601, name.data()), 0);
    EXPECT_STREQ(name.data(), "602");
    EXPECT_EQ(xyz(*document, 0, 0), (Triple{0.747, 0.724, 1.639}));
    EXPECT_EQ(xyz(*document, 0, 601), (Triple{573.773, 601.429, 768.691}));
    EXPECT_EQ(text(*document, 0, 601, 3), "255.00000");
}

TEST_F(realFile, matrixRows_areXyzTriplesAndGiveNoMeasurement) {
    const auto document = read("ccmx-matrix.ccmx");
    EXPECT_EQ(xyz(*document, 0, 0), (Triple{0.936109, 0.022419, 0.014533}));
    EXPECT_EQ(xyz(*document, 0, 2), (Triple{-0.012576, 0.010240, 1.005667}));
    EXPECT_EQ(text(*document, 0, 1, 0), "-0.03831");
    EXPECT_FALSE(document->ContainsProcessColors(0));
    EXPECT_EQ(document->GetMeasurement(0, 0, nullptr, nullptr, nullptr), nullptr);
    EXPECT_STREQ(document->GetCreated(), "Tue May 17 19:18:08 2011");
}

TEST_F(realFile, ownTarget_hasIdentifiersAndXyz) {
    const auto document = read("cie-own-target.cie");
    EXPECT_EQ(text(*document, 0, 0, 0), "E06");
    EXPECT_EQ(xyz(*document, 0, 0), (Triple{95.10649, 100.0, 108.844}));
    EXPECT_EQ(text(*document, 0, 467, 0), "L04");
    EXPECT_EQ(xyz(*document, 0, 467), (Triple{46.91, 58.12965, 103.3002}));
    EXPECT_FALSE(document->ContainsSampleNames(0));
    EXPECT_FALSE(document->ContainsLab(0));
}

TEST_F(realFile, declaredSpectralColumns_areStrings) {
    const auto document = read("cie-spec-keyworded.cie");
    EXPECT_FALSE(document->ContainsWaveLengths(0));
    EXPECT_EQ(document->GetFieldNameIndex(0, "SPEC_380"), 7);
    EXPECT_EQ(text(*document, 0, 0, 7), "5.47500");
    EXPECT_EQ(text(*document, 0, 23, 77), "3.25000");
    EXPECT_EQ(xyz(*document, 0, 0), (Triple{11.5939, 10.1178, 5.06519}));
    EXPECT_EQ(lab(*document, 0, 23), (Triple{20.8235, 0.158865, -0.101047}));
}

TEST_F(realFile, linesThatEndInCr_areLines) {
    const auto document = read("cr-line-ends.txt");
    // The first line is a text in quotes: its first word is the keyword, quote and all.
    EXPECT_STREQ(document->GetTagAt(0)->GetKeyword(), "\"File");
    EXPECT_STREQ(document->GetTagAt(0)->GetValue(), "createdbyCurve3");
    EXPECT_EQ(document->GetTagAt(0)->GetNumeric(), 0);
    ASSERT_TRUE(document->ContainsSampleNames(0));
    std::array<char, 400> name{};
    ASSERT_EQ(document->GetSampleName(0, 20, name.data()), 0);
    EXPECT_STREQ(name.data(), "A20");
    EXPECT_EQ(text(*document, 0, 1, 1), "5.00");
    EXPECT_TRUE(document->IsCMYKDefined(0));
    EXPECT_EQ(cmyk(*document, 0, 1), (Inks{4.85, 7.58, 8.73, 4.15}));
    EXPECT_EQ(cmyk(*document, 0, 20), (Inks{100, 100, 100, 100}));
}

TEST_F(realFile, gamutSurface_hasLabVerticesAndTrianglesAsStrings) {
    const auto document = read("gam-two-tables.gam");
    EXPECT_EQ(text(*document, 0, 0, 0), "0");
    EXPECT_EQ(lab(*document, 0, 0), (Triple{87.821, -79.285, 80.992}));
    EXPECT_EQ(text(*document, 0, 925, 0), "925");
    EXPECT_EQ(lab(*document, 0, 925), (Triple{64.674, 56.295, 39.209}));
    EXPECT_FALSE(document->ContainsLab(1));
    EXPECT_EQ(text(*document, 1, 1847, 0), "33");
    EXPECT_EQ(text(*document, 1, 1847, 2), "925");
    EXPECT_EQ(valueOf(*document, "CUSP_BLUE"), "29.569144 68.284819 -112.028372");
}

TEST_F(realFile, hashInAQuotedValue_startsTheComment) {
    const auto document = read("hash-in-quotes.txt");
    EXPECT_STREQ(document->GetCreated(), "06/20/2022\t");
    EXPECT_EQ(commentOf(*document, "CREATED"), "Time:\t11:30:29");
    EXPECT_EQ(text(*document, 0, 431, 1), "2C12");
    EXPECT_EQ(lab(*document, 0, 431), (Triple{10.8569, 0.34029, 1.349428}));
}

TEST_F(realFile, solidsOfAChart_areGathered) {
    const auto document = read("hash-in-quotes.txt");
    std::array<std::array<double, 3>, 4> solids{};
    double* const slots[] = {solids[0].data(), solids[1].data(), solids[2].data(), solids[3].data()};
    ASSERT_EQ(document->GetProcessColorLab(0, slots), 0);
    EXPECT_EQ(solids[0], (Triple{41.05393, -20.02339, -61.32465}));
    EXPECT_EQ(solids[1], (Triple{41.25571, 74.57563, 28.61624}));
    EXPECT_EQ(solids[2], (Triple{80.56763, -3.381222, 83.55684}));
    EXPECT_EQ(solids[3], (Triple{15.83436, 0.416443, 1.13557}));
    EXPECT_EQ(document->GetProcessColorSpectra(0, slots), 1);
}

TEST_F(realFile, reflectiveTarget_hasXyzLabAndDensities) {
    const auto document = read("it8-reflective-R060101.it8");
    EXPECT_EQ(text(*document, 0, 0, 0), "A1");
    EXPECT_EQ(xyz(*document, 0, 0), (Triple{3.07, 2.57, 1.76}));
    EXPECT_EQ(lab(*document, 0, 287), (Triple{4.36, -1.31, -2.72}));
    EXPECT_EQ(text(*document, 0, 287, 8), "244.23000");
    EXPECT_EQ(document->GetFieldNameIndex(0, "D_VIS"), 12);
    EXPECT_EQ(text(*document, 0, 287, 12), "2.33000");
    EXPECT_EQ(valueOf(*document, "SERIAL"), "DIN A4  R060101");
}

TEST_F(realFile, declaredFieldOfARefusedFile_isKeptWithItsComment) {
    const TCgats document(path("it8-reflective-R000926.it8").c_str());
    EXPECT_STREQ(document.GetCustomField(0), "MEAN_DE");
    EXPECT_EQ(valueOf(document, "KEYWORD"), "MEAN_DE");
    EXPECT_EQ(commentOf(document, "KEYWORD"), " Mean Delta E of samples compared to batch average");
    EXPECT_EQ(document.GetNrFields(0), -1);
}

TEST_F(realFile, unquotedNames_shiftTheColumnsAndLookLikePercent) {
    const auto document = read("nm-tab-unquoted-names.txt");
    EXPECT_STREQ(document->GetCreated(), "2012-04-13");
    EXPECT_EQ(commentOf(*document, "CREATED"), " Time: 11:24:37");
    EXPECT_EQ(text(*document, 0, 0, 1), "dark");
    EXPECT_EQ(text(*document, 0, 0, 2), "skin");
    EXPECT_EQ(text(*document, 0, 0, 7), "7");
    // The position and size of the patch stand where the first bands are expected.
    std::array<int, 36> wavelengths{};
    ASSERT_EQ(document->GetWaveLengths(0, wavelengths.data()), 0);
    EXPECT_EQ(wavelengths[0], 380);
    EXPECT_EQ(wavelengths[35], 730);
    std::array<double, 36> values{};
    ASSERT_EQ(document->GetSpectrum(0, 0, values.data()), 0);
    EXPECT_EQ(values[0], 9 * 0.01);
    EXPECT_EQ(values[1], 29 * 0.01);
    EXPECT_EQ(values[3], 0.05475 * 0.01);
    EXPECT_EQ(text(*document, 0, 0, 8), "9.00000");
    EXPECT_STREQ(document->GetTagAt(22)->GetKeyword(), "0.23128");
    EXPECT_STREQ(document->GetTagAt(23)->GetKeyword(), "24");
    EXPECT_STREQ(document->GetTagAt(24)->GetKeyword(), "END_DATA");
    // SAMPLE_ID is declared, and thereby not the standard field.
    EXPECT_EQ(document->GetTable(0)->GetHeader()->GetField(0)->GetKind(), TCgatsField::kCustom);
    EXPECT_FALSE(document->ContainsSampleNames(0));
}

TEST_F(realFile, firstTable_ofARefusedFileStaysInTheDocument) {
    const TCgats document(path("odd-reader-test.txt").c_str());
    ASSERT_EQ(document.GetErrorCode(), 6);
    EXPECT_EQ(document.GetNrSamples(0), 22);
    EXPECT_EQ(document.GetNrFields(0), -1);
    const TCgatsTable* table = document.GetTable(0);
    ASSERT_NE(table, nullptr);
    EXPECT_STREQ(table->GetValues(0)->GetString(6), "7 ");
    EXPECT_STREQ(table->GetValues(1)->GetString(6), "A#5");
    EXPECT_EQ(table->GetValues(2)->GetDouble(6), 1.2346e-03);
    EXPECT_EQ(table->GetValues(2)->GetDouble(0), 1.2346e-09);
    EXPECT_EQ(table->GetValues(2)->GetDouble(21), 1.2346e+11);
    EXPECT_EQ(valueOf(document, "TEST_KEY_WORD"), "try this out");
    EXPECT_EQ(commentOf(document, "TEST_KEY_WORD"), " Keyword comment");
    EXPECT_EQ(valueOf(document, "TEST_KEY_WORD2"), "try this");
    EXPECT_EQ(document.GetTagAt(1)->GetKeyword(), nullptr);
}

TEST_F(realFile, headerLinesBeyond128_areActedOnAndNotKept) {
    const auto document = read("sp-more-than-128-lines.sp");
    EXPECT_STREQ(document->GetTagAt(127)->GetKeyword(), "KEYWORD");
    EXPECT_STREQ(document->GetTagAt(127)->GetValue(), "SPEC_727");
    EXPECT_EQ(document->FindTag(3), -1);
    EXPECT_STREQ(document->GetCustomField(124), "SPEC_750");
    EXPECT_EQ(text(*document, 0, 0, 0), "-0.041690");
    EXPECT_EQ(text(*document, 0, 0, 120), "23.866");
    EXPECT_EQ(document->GetNrWaveLengths(0), 0);
}

TEST_F(realFile, quoteThatIsNeverClosed_endsWithTheLine) {
    const TCgats document(path("sp-unclosed-quote.txt").c_str());
    EXPECT_EQ(valueOf(document, "DESCRIPTOR"), "the 1st table'");
    EXPECT_STREQ(document.GetFileDescriptor(), "Test file with 2 spectra.  The 2nd one has empty header.");
    EXPECT_EQ(valueOf(document, "NUMBER_OF_FIELDS"), "106");
}

TEST_F(realFile, inkTestChart_hasItsDeviceValuesInThreeTables) {
    const auto document = read("ti1-cmyk-three-tables.ti1");
    EXPECT_EQ(valueOf(*document, "APPROX_WHITE_POINT"), "83.77\t87.26\t66.79");
    EXPECT_EQ(cmyk(*document, 0, 1), (Inks{70, 0, 0, 0}));
    EXPECT_EQ(xyz(*document, 0, 22), (Triple{7.34, 7.42, 5.6}));
    EXPECT_EQ(cmyk(*document, 1, 3), (Inks{100, 0, 0, 45.486}));
    EXPECT_EQ(xyz(*document, 1, 7), (Triple{0.65916, 0.54433, 0.57384}));
    EXPECT_EQ(xyz(*document, 2, 8), (Triple{19.978, 17.645, 12.009}));
    EXPECT_EQ(text(*document, 2, 8, 0), "8");
}

TEST_F(realFile, displayTestChart_hasThreeTablesOfItsOwnLengths) {
    const auto document = read("ti1-three-tables.ti1");
    EXPECT_FALSE(document->ContainsProcessColors(0));
    EXPECT_EQ(xyz(*document, 0, 195), (Triple{22.417, 10.959, 71.668}));
    EXPECT_EQ(text(*document, 0, 195, 2), "9.11580");
    EXPECT_EQ(xyz(*document, 1, 7), (Triple{1, 1, 1}));
    EXPECT_EQ(xyz(*document, 2, 8), (Triple{21.143, 22.19, 24.083}));
}

TEST_F(realFile, randomizedChart_hasItsLocationsAsStrings) {
    const auto document = read("ti2-eci2002r.ti2");
    EXPECT_EQ(text(*document, 0, 0, 0), "810");
    EXPECT_EQ(text(*document, 0, 0, 1), "A1");
    EXPECT_EQ(cmyk(*document, 0, 0), (Inks{10, 20, 20, 20}));
    EXPECT_EQ(xyz(*document, 0, 0), (Triple{42.793, 42.608, 32.296}));
    EXPECT_EQ(text(*document, 0, 1484, 1), "2U33");
    EXPECT_EQ(cmyk(*document, 0, 1484), (Inks{85, 70, 30, 0}));
    EXPECT_EQ(xyz(*document, 0, 1484), (Triple{9.539, 9.4096, 15.441}));
}

TEST_F(realFile, commentBlocks_areKeptWithTheirLineEnds) {
    const auto document = read("ti3-argyll-blocks.ti3");
    // Behind the CR that ends the line before it, a block begins with that line's LF.
    EXPECT_STREQ(
        document->GetCommentBlock(1),
        "\n-v2 -ql -m -t6500 -b70.0 -gs -f1.0 -k0 -A4.0 -d1 -c1 -yr -P0.5,0.5,1.5 -X \"CRT.ccss\" -Ib\r\n");
    const TCgats refused(path("ti3-with-cal-table.ti3").c_str());
    EXPECT_STREQ(refused.GetCommentBlock(0), "\n-qh -aX\r\n");
    EXPECT_STREQ(refused.GetCommentBlock(1), "\n-ql -w0.3127,0.3290 -gs -f1 -k0\r\n");
}

TEST_F(realFile, calibrationCurves_areASecondTable) {
    const auto document = read("ti3-argyll-blocks.ti3");
    EXPECT_EQ(xyz(*document, 0, 56), (Triple{45.4865, 26.2659, 3.33056}));
    EXPECT_EQ(text(*document, 1, 0, 0), "0.00000000");
    EXPECT_EQ(text(*document, 1, 255, 0), "1.00000000");
    EXPECT_EQ(text(*document, 1, 255, 3), "0.95151");
}

TEST_F(realFile, tinyMeasurement_hasItsValues) {
    const auto document = read("ti3-tiny.ti3");
    EXPECT_EQ(xyz(*document, 0, 1), (Triple{35.70556641, 40.23742676, 53.87878418}));
    EXPECT_EQ(text(*document, 0, 14, 0), "15");
    EXPECT_EQ(xyz(*document, 0, 14), (Triple{1.14440918, 9.750366211, 37.58239746}));
    EXPECT_STREQ(document->GetCreated(), "Tue Apr 09 21:14:06 2013");
    EXPECT_EQ(document->GetFileDescriptor(), nullptr);
}

TEST_F(realFile, spectraOf41Bands_areFractions) {
    const auto document = read("wide-cmyk-xyz-lab-nm.txt");
    EXPECT_STREQ(document->GetCreated(), "Fri Mar 17 13:07:06 2017");
    EXPECT_EQ(valueOf(*document, "LGOROWLENGTH"), "24");
    ASSERT_EQ(document->GetNrWaveLengths(0), 41);
    std::array<int, 41> wavelengths{};
    ASSERT_EQ(document->GetWaveLengths(0, wavelengths.data()), 0);
    for (std::size_t i = 0; i < wavelengths.size(); ++i)
        EXPECT_EQ(wavelengths[i], 380 + 10 * static_cast<int>(i));
    std::array<double, 41> values{};
    ASSERT_EQ(document->GetSpectrum(0, 9, values.data()), 0);
    EXPECT_EQ(values[0], 0.349415);
    EXPECT_EQ(values[1], 0.18234);
    EXPECT_EQ(values[40], 0.843208);
    EXPECT_EQ(cmyk(*document, 0, 9), (Inks{0, 100, 10, 0}));
    EXPECT_EQ(xyz(*document, 0, 9), (Triple{37.003, 26.118, 24.382}));
    EXPECT_EQ(lab(*document, 0, 9), (Triple{58.149, 43.369, -5.953}));
}

TEST_F(realFile, spectralSample_givesAMeasurementWithItsDeviceValues) {
    const auto document = read("wide-cmyk-xyz-lab-nm.txt");
    const std::unique_ptr<TOneMeasurement> measurement(
        document->GetMeasurement(0, 9, nullptr, nullptr, nullptr));
    ASSERT_NE(measurement, nullptr);
    int count = 0;
    const double* coordinates = measurement->GetCoord(&count);
    ASSERT_EQ(count, 4);
    EXPECT_EQ(coordinates[1], 100.0);
    EXPECT_EQ(coordinates[2], 10.0);
    EXPECT_EQ(measurement->GetUniformSpectrum(nullptr, nullptr, nullptr)[0], 0.349415);
}

} // namespace
