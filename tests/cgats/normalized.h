// Texts as the normaliser gives them, for its tests.
#pragma once

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cgats/tcgats.h"
#include "cgats/tcgatsnormalizer.h"

namespace qxcms::tests {

using Liberty = TCgatsLiberty;

/// What a liberty is about, and where.
struct Finding {
    int kind;
    int line;
    int column;
    std::string token;

    bool operator==(const Finding& other) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const Finding& finding) {
    return stream << "kind " << finding.kind << " at " << finding.line << ":" << finding.column << " \""
                  << finding.token << "\"";
}

/// The text of a file in the folder of dialects.
inline std::string dialect(const std::string& name) {
    std::ifstream file(QXCMS_SOURCE_DIR "/tests/cgats/dialects/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// A text with other lines in place of those of some numbers (from 1); without a text the line is left out.
inline std::string withLines(const std::string& text,
                             const std::map<int, std::optional<std::string>>& replacements) {
    std::string result;
    std::size_t first = 0;
    for (int line = 1; first < text.size(); ++line) {
        const std::size_t last = std::min(text.find('\n', first), text.size() - 1);
        const auto found = replacements.find(line);
        if (found == replacements.end())
            result += text.substr(first, last + 1 - first);
        else if (found->second.has_value())
            result += *found->second + "\n";
        first = last + 1;
    }
    return result;
}

/// A normalised text.
class Normalized {
public:
    explicit Normalized(std::string bytes) { code = normalizer->Normalize(std::move(bytes)); }

    const std::string& text() const { return normalizer->GetText(); }
    const TCgatsRefusal* refusal() const { return normalizer->GetRefusal(); }

    std::vector<Finding> liberties() const {
        std::vector<Finding> all;
        for (int i = 0; i < normalizer->GetNrLiberties(); ++i)
            all.push_back(asFinding(*normalizer->GetLiberty(i)));
        return all;
    }

    std::vector<Finding> remarks() const {
        std::vector<Finding> all;
        for (int i = 0; i < normalizer->GetNrRemarks(); ++i)
            all.push_back(asFinding(*normalizer->GetRemark(i)));
        return all;
    }

    std::vector<int> kinds() const {
        std::vector<int> all;
        for (const Finding& finding : liberties())
            all.push_back(finding.kind);
        return all;
    }

    /// How many liberties are of a kind.
    int countOf(int kind) const {
        const auto all = kinds();
        return static_cast<int>(std::count(all.begin(), all.end(), kind));
    }

    std::string remarked(int index) const { return normalizer->GetRemark(index)->done; }
    std::string done(int index) const { return normalizer->GetLiberty(index)->done; }

    int code = 0;

private:
    static Finding asFinding(const TCgatsLiberty& liberty) {
        return {int{liberty.kind}, liberty.line, liberty.column, liberty.token};
    }

    std::unique_ptr<TCgatsNormalizer> normalizer = std::make_unique<TCgatsNormalizer>();
};

/// The normalised form of a text that must come to be accepted; a second pass finds nothing more to do.
inline Normalized accepted(const std::string& bytes) {
    Normalized first{bytes};
    EXPECT_EQ(first.code, 0) << bytes;
    EXPECT_EQ(first.refusal(), nullptr);
    const Normalized second{first.text()};
    EXPECT_EQ(second.code, 0);
    EXPECT_EQ(second.text(), first.text());
    EXPECT_THAT(second.liberties(), testing::IsEmpty());
    return first;
}

/// A text that must pass as it is.
inline void expectUnchanged(const std::string& bytes) {
    const Normalized normalized{bytes};
    EXPECT_EQ(normalized.code, 0);
    EXPECT_EQ(normalized.text(), bytes);
    EXPECT_THAT(normalized.liberties(), testing::IsEmpty()) << bytes;
}

/// The numbers of a column, row by row.
inline std::vector<double> numbersOf(const TCgats& document, int table, int column) {
    std::vector<double> all;
    for (int row = 0; row < document.GetNrSamples(table); ++row)
        all.push_back(document.GetTable(table)->GetValues(column)->GetDouble(row));
    return all;
}

/// The texts of a column, row by row.
inline std::vector<std::string> textsOf(const TCgats& document, int table, int column) {
    std::vector<std::string> all;
    for (int row = 0; row < document.GetNrSamples(table); ++row)
        all.push_back(document.GetTable(table)->GetValues(column)->GetString(row));
    return all;
}

/// The wavelengths of a table, ascending.
inline std::vector<int> wavelengthsOf(const TCgats& document, int table) {
    const TCgatsTableHeader& header = *document.GetTable(table)->GetHeader();
    std::vector<int> all;
    for (int i = 0; i < header.GetNrWaveLengths(); ++i)
        all.push_back(header.GetField(header.GetSpectralColumns()[i])->GetNumber());
    return all;
}

} // namespace qxcms::tests
