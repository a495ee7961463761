// Little CMS reads the same field names, counts and values: from what is written here, and from real files
// that both accept.
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "tests/support/scratch.h"

#ifdef QXCMS_HAVE_LCMS2
#include "tests/independent_reader/little_cms.h"
#endif

namespace qxcms::tests {
namespace {

#ifdef QXCMS_HAVE_LCMS2

std::string written(const TCgats& document) {
    char* text = nullptr;
    EXPECT_EQ(document.WriteToBuffer(&text), 0);
    const std::unique_ptr<char[]> owned(text);
    return text == nullptr ? "" : text;
}

void expectTheyReadWhatIsWritten(const TCgats& document) {
    ASSERT_EQ(document.GetErrorCode(), 0);
    const std::string text = written(document);
    const LittleCms theirs(text);
    ASSERT_TRUE(theirs.accepts()) << text;
    const TCgats ours(text.c_str(), 0);
    expectSameTables(ours, theirs);
}

// A row per sample, all values different and of different lengths.
struct Values {
    Values(int sets, int columns, double scale) {
        for (int row = 0; row < sets; ++row) {
            rows.emplace_back();
            for (int column = 0; column < columns; ++column)
                rows.back().push_back(scale * std::pow(0.83, row + 0.37 * column));
        }
        for (const auto& row : rows)
            pointers.push_back(row.data());
    }

    std::vector<std::vector<double>> rows;
    std::vector<const double*> pointers;
};

TEST(littleCms, readsAChartBuiltFromArrays) {
    constexpr int kSets = 25;
    const Values device(kSets, 4, 100.0), lab(kSets, 3, -60.0), xyz(kSets, 3, 90.0), spectra(kSets, 36, 1.0);
    std::vector<double> wavelengths;
    for (int nm = 380; nm <= 730; nm += 10)
        wavelengths.push_back(nm);
    expectTheyReadWhatIsWritten(TCgats(100.0, 0.0, kSets, 4, device.pointers.data(), lab.pointers.data(),
                                       xyz.pointers.data(), spectra.pointers.data(), 36, wavelengths.data(),
                                       5, 5, 0));
}

TEST(littleCms, readsNamedSamplesAndColorants) {
    const Values device(3, 6, 255.0);
    const char* const names[] = {"first", "second patch", "third"};
    const char* const inks[] = {"Cyan", "Magenta", "Yellow", "Black", "Orange", "Green ink"};
    for (const bool process : {true, false})
        expectTheyReadWhatIsWritten(TCgats(255.0, 0.0, 3, names, 6, inks, device.pointers.data(), nullptr,
                                           nullptr, nullptr, 0, nullptr, process));
}

TEST(littleCms, readsRealFilesAlike) {
    const char* const corpus = std::getenv("QXCMS_CORPUS");
    if (corpus == nullptr)
        GTEST_SKIP() << "QXCMS_CORPUS does not name the folder of real files";
    int compared = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(corpus)) {
        if (!entry.is_regular_file())
            continue;
        SCOPED_TRACE(entry.path().filename());
        const std::string text = ScratchFolder::read(entry.path());
        const TCgats ours(text.c_str(), 0);
        const LittleCms theirs(text);
        if (ours.GetErrorCode() != 0 || !theirs.accepts() || ours.GetNrTables() == 0)
            continue;
        ++compared;
        expectSameTables(ours, theirs);
    }
    EXPECT_GT(compared, 0);
}

#else

TEST(littleCms, readsTheSame) {
    GTEST_SKIP() << "liblcms2-dev is not installed";
}

#endif

} // namespace
} // namespace qxcms::tests
