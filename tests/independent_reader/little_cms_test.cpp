// Little CMS reads the same field names, counts and values: from what is written here, and from real files
// that both accept.
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/number_text.h"
#include "cgats/tcgats.h"
#include "tests/support/scratch.h"

#ifdef QXCMS_HAVE_LCMS2
#include <lcms2.h>
#endif

namespace qxcms::tests {
namespace {

#ifdef QXCMS_HAVE_LCMS2

// Little CMS tells nobody of a file that it refuses.
class LittleCms {
public:
    explicit LittleCms(const std::string& text) {
        cmsSetLogErrorHandler([](cmsContext, cmsUInt32Number, const char*) {});
        handle = cmsIT8LoadFromMem(nullptr, text.data(), static_cast<cmsUInt32Number>(text.size()));
    }
    ~LittleCms() {
        if (handle != nullptr)
            cmsIT8Free(handle);
    }
    LittleCms(const LittleCms&) = delete;
    LittleCms& operator=(const LittleCms&) = delete;

    bool accepts() const { return handle != nullptr; }
    int tables() const { return static_cast<int>(cmsIT8TableCount(handle)); }
    void choose(int table) const { cmsIT8SetTable(handle, static_cast<cmsUInt32Number>(table)); }
    std::vector<std::string> fields() const {
        char** names = nullptr;
        const int count = cmsIT8EnumDataFormat(handle, &names);
        return count < 1 ? std::vector<std::string>() : std::vector<std::string>(names, names + count);
    }
    int sets() const { return static_cast<int>(cmsIT8GetPropertyDbl(handle, "NUMBER_OF_SETS")); }
    double number(int row, int column) const { return cmsIT8GetDataRowColDbl(handle, row, column); }
    std::string text(int row, int column) const {
        const char* const found = cmsIT8GetDataRowCol(handle, row, column);
        return found == nullptr ? "" : found;
    }

private:
    cmsHANDLE handle = nullptr;
};

std::vector<std::string> fieldsOf(const TCgatsTableHeader& header) {
    std::vector<std::string> names;
    for (int i = 0; i < header.GetNrFields(); ++i)
        names.emplace_back(header.GetField(i)->GetName());
    return names;
}

// It writes bare numbers anew ("7.0710" becomes "7.071"), and before a bare word that begins with a digit
// ("2A1") it leaves what stood in its buffer.
bool sameText(const std::string& ours, const std::string& theirs) {
    const char* const end = ours.data() + ours.size();
    const char* stop = nullptr;
    const double number = detail::parseDouble(ours.data(), end, &stop);
    if (stop == end && !ours.empty())
        return number == detail::textToDouble(theirs.c_str());
    return stop == ours.data() ? ours == theirs : theirs.ends_with(ours);
}

void expectSameValues(const TCgatsTable& ours, const LittleCms& theirs) {
    const TCgatsTableHeader& header = *ours.GetHeader();
    for (int row = 0; row < ours.GetNrRowsStored(); ++row)
        for (int column = 0; column < header.GetNrFields(); ++column) {
            const TCgatsValueList& values = *ours.GetValues(column);
            if (header.GetField(column)->GetDataType() == TCgatsField::kString) {
                const std::string text = values.GetString(row);
                ASSERT_TRUE(sameText(text, theirs.text(row, column)))
                    << row << ' ' << column << ": " << text << ", " << theirs.text(row, column);
                continue;
            }
            // Its conversion multiplies by powers of ten that are no exact numbers.
            const double number = values.GetDouble(row);
            ASSERT_NEAR(number, theirs.number(row, column), 1e-9 * std::fabs(number)) << row << ' ' << column;
        }
}

void expectSameTables(const TCgats& ours, const LittleCms& theirs) {
    ASSERT_EQ(ours.GetNrTables(), theirs.tables());
    for (int table = 0; table < ours.GetNrTables(); ++table) {
        SCOPED_TRACE(table);
        theirs.choose(table);
        const TCgatsTable& read = *ours.GetTable(table);
        ASSERT_EQ(fieldsOf(*read.GetHeader()), theirs.fields());
        ASSERT_EQ(read.GetNrRowsStored(), theirs.sets());
        ASSERT_NO_FATAL_FAILURE(expectSameValues(read, theirs));
    }
}

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
