// Texts that were brought into form, as Little CMS reads them: the same tables, columns, counts and values.
#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "cgats/tcgatsnormalizer.h"
#include "tests/support/scratch.h"

#ifdef QXCMS_HAVE_LCMS2
#include "tests/independent_reader/little_cms.h"
#endif

namespace qxcms::tests {
namespace {

#ifdef QXCMS_HAVE_LCMS2

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines(1);
    for (const char c : text) {
        if (c == '\n' || c == '\r')
            lines.emplace_back();
        else
            lines.back() += c;
    }
    return lines;
}

std::string firstWordOf(const std::string& line) {
    std::string word;
    std::istringstream(line) >> word;
    return word;
}

int wordsOf(const std::string& line) {
    std::istringstream stream(line);
    int count = 0;
    for (std::string word; stream >> word && word[0] != '#';)
        ++count;
    return count;
}

bool isDigit(const std::string& line, std::size_t at) {
    return at < line.size() && std::isdigit(static_cast<unsigned char>(line[at])) != 0;
}

std::string withPoints(std::string line) {
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        quoted = quoted != (line[i] == '"');
        if (!quoted && line[i] == ',' && isDigit(line, i + 1))
            line[i] = '.';
    }
    return line;
}

/// What Little CMS does not understand although it is in form: blocks of free text (left out), a format
/// without NUMBER_OF_FIELDS (put in, the words counted), and decimal commas (made points).
class ForLittleCms {
public:
    explicit ForLittleCms(const std::string& mended) : lines(linesOf(mended)) {
        for (std::size_t i = 0; i < lines.size(); ++i)
            i = take(i);
    }

    std::string text;
    std::set<std::string> changes;

private:
    /// @return the last line that was taken.
    std::size_t take(std::size_t i) {
        const std::string word = firstWordOf(lines[i]);
        if (word == "BEGIN_DATA_FORMAT")
            return takeFormat(i);
        if (word == "BEGIN_DATA")
            isAmongSamples = true;
        else if (word == "END_DATA") {
            isAmongSamples = false;
            isCounted = false;
        } else if (word == "NUMBER_OF_FIELDS")
            isCounted = true;
        else if (!isAmongSamples && word.starts_with("BEGIN_")) {
            changes.insert("a block of free text left out");
            return findLine(i, "END_" + word.substr(6));
        }
        const std::string line = isAmongSamples ? withPoints(lines[i]) : lines[i];
        if (line != lines[i])
            changes.insert("decimal commas made points");
        text += line + '\n';
        return i;
    }

    std::size_t takeFormat(std::size_t begin) {
        const std::size_t end = findLine(begin, "END_DATA_FORMAT");
        int count = 0;
        std::string format;
        for (std::size_t i = begin; i <= end && i < lines.size(); ++i) {
            format += lines[i] + '\n';
            count += i == begin || i == end ? 0 : wordsOf(lines[i]);
        }
        if (!isCounted) {
            changes.insert("NUMBER_OF_FIELDS put in");
            text += "NUMBER_OF_FIELDS " + std::to_string(count) + '\n';
        }
        text += format;
        return end;
    }

    std::size_t findLine(std::size_t from, const std::string& word) const {
        while (from < lines.size() && firstWordOf(lines[from]) != word)
            ++from;
        return from;
    }

    std::vector<std::string> lines;
    bool isAmongSamples = false;
    bool isCounted = false;
};

void expectTheyReadWhatIsMended(const std::string& mended) {
    TCgats ours;
    ASSERT_EQ(ours.ReadFromBuffer(mended.c_str()), 0);
    ASSERT_GT(ours.GetNrTables(), 0);
    const ForLittleCms copy(mended);
    for (const std::string& change : copy.changes)
        std::cout << "for Little CMS: " << change << '\n';
    const LittleCms theirs(copy.text);
    ASSERT_TRUE(theirs.accepts()) << theirs.objection() << '\n' << copy.text;
    expectSameTables(ours, theirs);
}

bool changesValues(const TCgatsNormalizer& normalizer) {
    for (int i = 0; i < normalizer.GetNrLiberties(); ++i)
        switch (normalizer.GetLiberty(i)->kind) {
        case TCgatsLiberty::kSpectralPairs:
        case TCgatsLiberty::kSpectralScale:
        case TCgatsLiberty::kXyzScale:
        case TCgatsLiberty::kNumberSpelling:
        case TCgatsLiberty::kDoubledQuotes:
            return true;
        default:
            break;
        }
    return false;
}

// Columns, those with the wavelength of the next one aside.
int columnsIn(const std::vector<std::string>& names) {
    return static_cast<int>(names.size()) -
           static_cast<int>(std::count(names.begin(), names.end(), "SPECTRAL_NM"));
}

// Where Little CMS takes the bytes as they came, it finds as many rows and columns in them, and the same
// values unless a liberty tells otherwise.
void expectTheTablesOfTheSource(const std::string& bytes, const TCgatsNormalizer& normalizer) {
    const LittleCms before(ForLittleCms(bytes).text);
    if (!before.accepts()) {
        std::cout << "Little CMS refuses the source" << before.objection() << '\n';
        return;
    }
    const TCgats after(normalizer.GetText().c_str(), 0);
    ASSERT_EQ(after.GetNrTables(), before.tables());
    for (int i = 0; i < after.GetNrTables(); ++i) {
        SCOPED_TRACE(i);
        before.choose(i);
        const TCgatsTable& table = *after.GetTable(i);
        ASSERT_EQ(table.GetNrRowsStored(), before.sets());
        ASSERT_EQ(columnsIn(fieldsOf(*table.GetHeader())), columnsIn(before.fields()));
        if (!changesValues(normalizer))
            expectSameValues(table, before);
    }
}

std::vector<std::filesystem::path> filesIn(const std::filesystem::path& folder) {
    std::set<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files.insert(entry.path());
    return {files.begin(), files.end()};
}

/// A file by its name within a folder, which is what a failure and the name of the test tell.
class mendedDialect : public testing::TestWithParam<std::filesystem::path> {};

TEST_P(mendedDialect, isReadAlikeByLittleCms) {
    TCgatsNormalizer normalizer;
    const std::string bytes = ScratchFolder::read(GetParam());
    ASSERT_EQ(normalizer.Normalize(bytes), 0);
    expectTheyReadWhatIsMended(normalizer.GetText());
    expectTheTablesOfTheSource(bytes, normalizer);
}

std::string nameOf(const testing::TestParamInfo<std::filesystem::path>& file) {
    std::string name = file.param.stem().string();
    for (char& c : name)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0)
            c = '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(of, mendedDialect,
                         testing::ValuesIn(filesIn(QXCMS_SOURCE_DIR "/tests/cgats/dialects")), nameOf);

// What is refused gives nothing to compare; it is told.
TEST(mendedRealFiles, areReadAlikeByLittleCms) {
    const char* const corpus = std::getenv("QXCMS_CORPUS");
    if (corpus == nullptr)
        GTEST_SKIP() << "QXCMS_CORPUS does not name the folder of real files";
    int compared = 0;
    for (const std::filesystem::path& file : filesIn(corpus)) {
        const std::string bytes = ScratchFolder::read(file);
        if (file.extension() == ".md")
            continue;
        SCOPED_TRACE(file.filename());
        std::cout << file.filename() << '\n';
        TCgatsNormalizer normalizer;
        if (normalizer.Normalize(bytes) != 0) {
            std::cout << "refused with code " << normalizer.GetRefusal()->code << ", line "
                      << normalizer.GetRefusal()->line << '\n';
            continue;
        }
        ++compared;
        expectTheyReadWhatIsMended(normalizer.GetText());
        expectTheTablesOfTheSource(bytes, normalizer);
    }
    EXPECT_GT(compared, 0);
}

#else

TEST(mendedTexts, areReadAlikeByLittleCms) {
    GTEST_SKIP() << "liblcms2-dev is not installed";
}

#endif

} // namespace
} // namespace qxcms::tests
