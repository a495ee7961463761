// Files that other people made, brought into form: every one is read then, with the samples and columns that
// a count of its lines and words gives. They are looked for in the folder that the environment variable
// QXCMS_CORPUS names; without it these tests are skipped.
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "cgats/tcgatsnormalizer.h"
#include "tests/support/scratch.h"

namespace qxcms::tests {
namespace {

struct RealFile {
    const char* name;
    const char* tables; // samples x columns, counted in the file
    bool conforming;    // passes as it is
    int spectra;        // spectral columns of the first table
};

constexpr RealFile kRealFiles[] = {
    {"bare-values-display.txt", "602x7", false, 0},
    {"ccmx-matrix.ccmx", "3x3", true, 0},
    {"cie-own-target.cie", "468x4", true, 0},
    {"cie-spec-keyworded.cie", "24x81", false, 71},
    {"cr-line-ends.txt", "21x6", false, 0},
    {"gam-two-tables.gam", "926x4 1848x3", false, 0},
    {"hash-in-quotes.txt", "432x9", true, 0},
    {"it8-reflective-R000926.it8", "288x17", false, 0},
    {"it8-reflective-R060101.it8", "288x13", true, 0},
    {"nm-tab-unquoted-names.txt", "24x44", false, 36},
    {"no-number-of-sets.tsv", "11x6", false, 0},
    {"odd-reader-test.txt", "22x3 21x3", false, 0},
    {"sp-CIE-TCS.sp", "15x96", false, 95},
    {"sp-more-than-128-lines.sp", "1x121", false, 121},
    {"sp-unclosed-quote.txt", "1x106 1x106", false, 106},
    {"ti1-cmyk-three-tables.ti1", "46x8 8x8 9x8", true, 0},
    {"ti1-three-tables.ti1", "196x7 8x7 9x7", true, 0},
    {"ti2-eci2002r.ti2", "1485x9", false, 0},
    {"ti2-fieldcount.ti2", "24x8", false, 0},
    {"ti3-argyll-blocks.ti3", "57x7 256x4", true, 0},
    {"ti3-tiny.ti3", "15x7", true, 0},
    {"ti3-with-cal-table.ti3", "175x7 256x4", false, 0},
    {"wide-cmyk-xyz-lab-nm.txt", "10x52", true, 41},
};

std::string tablesOf(const TCgats& document) {
    std::string tables;
    for (int i = 0; i < document.GetNrTables(); ++i)
        tables += (i == 0 ? "" : " ") + std::to_string(document.GetNrSamples(i)) + 'x' +
                  std::to_string(document.GetNrFields(i));
    return tables;
}

class normalizedRealFile : public testing::TestWithParam<RealFile> {
protected:
    void SetUp() override {
        const char* const folder = std::getenv("QXCMS_CORPUS");
        if (folder == nullptr)
            GTEST_SKIP() << "QXCMS_CORPUS names no folder of real files";
        const std::filesystem::path file = std::filesystem::path(folder) / GetParam().name;
        if (!std::filesystem::exists(file))
            GTEST_SKIP() << "the folder of QXCMS_CORPUS does not hold it";
        bytes = ScratchFolder::read(file.string());
    }

    std::string bytes;
};

TEST_P(normalizedRealFile, isReadWhole) {
    TCgatsNormalizer normalizer;
    ASSERT_EQ(normalizer.Normalize(bytes), 0);
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer(normalizer.GetText().c_str()), 0);
    EXPECT_EQ(tablesOf(document), GetParam().tables);
    EXPECT_EQ(document.GetNrWaveLengths(0), GetParam().spectra);
    EXPECT_EQ(normalizer.GetNrLiberties() == 0, GetParam().conforming);
    EXPECT_EQ(normalizer.GetText() == bytes, GetParam().conforming);
}

TEST_P(normalizedRealFile, canBeWrittenBack) {
    TCgatsNormalizer normalizer;
    ASSERT_EQ(normalizer.Normalize(bytes), 0);
    TCgats document;
    ASSERT_EQ(document.ReadFromBuffer(normalizer.GetText().c_str()), 0);
    char* written = nullptr;
    EXPECT_EQ(document.WriteToBuffer(&written), 0);
    const std::unique_ptr<char[]> owned(written);
    TCgats again;
    EXPECT_EQ(again.ReadFromBuffer(written), 0);
    EXPECT_EQ(tablesOf(again), GetParam().tables);
}

TEST_P(normalizedRealFile, staysAsItIsOnceInForm) {
    TCgatsNormalizer first;
    ASSERT_EQ(first.Normalize(bytes), 0);
    TCgatsNormalizer second;
    EXPECT_EQ(second.Normalize(first.GetText()), 0);
    EXPECT_TRUE(second.GetText() == first.GetText());
    EXPECT_EQ(second.GetNrLiberties(), 0);
}

INSTANTIATE_TEST_SUITE_P(files, normalizedRealFile, testing::ValuesIn(kRealFiles), [](const auto& file) {
    std::string name = file.param.name;
    for (char& c : name)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0)
            c = '_';
    return name;
});

} // namespace
} // namespace qxcms::tests
