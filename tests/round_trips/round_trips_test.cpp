// What is written can be read again, and comes back the same; copies say what their source says.
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "cgats/tcgats.h"

namespace qxcms::tests {
namespace {

using Rows = std::vector<std::vector<double>>;

/// The arrays of a chart.
struct Chart {
    int sets = 1;
    int colorants = 4;
    bool named = false; // the colorants
    bool process = false;
    std::vector<std::string> names, colorantNames;
    Rows device, lab, xyz, spectra;
    std::vector<double> wavelengths;
    int layout1 = 0, layout2 = 0, layout3 = 0;
};

// A number of any sign with up to so many digits before the point.
rc::Gen<double> number(int digits) {
    const int limit = static_cast<int>(std::pow(10.0, digits)) * 1000;
    return rc::gen::map(rc::gen::inRange(-limit, limit),
                        [](int thousandths) { return thousandths / 1000.0 / 7.0; });
}

Rows rows(int sets, int columns, const rc::Gen<double>& value) {
    return *rc::gen::container<Rows>(
        static_cast<std::size_t>(sets),
        rc::gen::container<std::vector<double>>(static_cast<std::size_t>(columns), value));
}

// A text that a file can hold: no quotes, no control characters, no blank in front.
rc::Gen<std::string> word() {
    const auto letter =
        rc::gen::oneOf(rc::gen::inRange<char>('!', '~'), rc::gen::just(' '), rc::gen::just('\xC3'));
    return rc::gen::map(rc::gen::resize(20, rc::gen::container<std::string>(letter)), [](std::string text) {
        for (char& c : text)
            c = c == '"' || c == '#' ? '_' : c;
        return "w" + text;
    });
}

Chart anyChart() {
    Chart chart;
    chart.sets = *rc::gen::inRange(1, 12);
    chart.named = *rc::gen::arbitrary<bool>();
    chart.process = *rc::gen::arbitrary<bool>();
    chart.colorants = *rc::gen::inRange(chart.named ? 1 : 3, 9);
    const auto count = static_cast<std::size_t>(chart.sets);
    if (*rc::gen::arbitrary<bool>())
        chart.names = *rc::gen::container<std::vector<std::string>>(count, word());
    if (chart.named)
        chart.colorantNames =
            *rc::gen::container<std::vector<std::string>>(static_cast<std::size_t>(chart.colorants), word());
    chart.device = rows(chart.sets, chart.colorants, number(3));
    if (*rc::gen::arbitrary<bool>())
        chart.lab = rows(chart.sets, 3, number(2));
    if (*rc::gen::arbitrary<bool>())
        chart.xyz = rows(chart.sets, 3, number(2));
    if (*rc::gen::arbitrary<bool>()) {
        for (int nm = *rc::gen::inRange(300, 400); nm < 800; nm += *rc::gen::inRange(5, 60))
            chart.wavelengths.push_back(nm);
        chart.spectra = rows(chart.sets, static_cast<int>(chart.wavelengths.size()), number(1));
    }
    chart.layout1 = *rc::gen::inRange(-2, 30);
    chart.layout2 = *rc::gen::inRange(-2, 30);
    chart.layout3 = *rc::gen::inRange(-2, 30);
    return chart;
}

std::vector<const double*> pointers(const Rows& rows) {
    std::vector<const double*> result;
    for (const auto& row : rows)
        result.push_back(row.data());
    return result;
}

std::vector<const char*> pointers(const std::vector<std::string>& texts) {
    std::vector<const char*> result;
    for (const auto& text : texts)
        result.push_back(text.c_str());
    return result;
}

template <class Pointer>
const Pointer* orNull(const std::vector<Pointer>& all) {
    return all.empty() ? nullptr : all.data();
}

std::unique_ptr<TCgats> built(const Chart& chart) {
    const auto names = pointers(chart.names), colorantNames = pointers(chart.colorantNames);
    const auto device = pointers(chart.device), lab = pointers(chart.lab), xyz = pointers(chart.xyz),
               spectra = pointers(chart.spectra);
    const int bands = static_cast<int>(chart.wavelengths.size());
    return chart.named
               ? std::make_unique<TCgats>(255.0, 0.0, chart.sets, orNull(names), chart.colorants,
                                          colorantNames.data(), orNull(device), orNull(lab), orNull(xyz),
                                          orNull(spectra), bands, chart.wavelengths.data(), chart.process)
               : std::make_unique<TCgats>(255.0, 0.0, chart.sets, orNull(names), chart.colorants,
                                          orNull(device), orNull(lab), orNull(xyz), orNull(spectra), bands,
                                          chart.wavelengths.data(), chart.layout1, chart.layout2,
                                          chart.layout3);
}

std::string written(const TCgats& document) {
    char* text = nullptr;
    RC_ASSERT(document.WriteToBuffer(&text) == 0);
    const std::unique_ptr<char[]> owned(text);
    return text;
}

std::string orEmpty(const char* text) {
    return text == nullptr ? "" : text;
}

void expectSameFields(const TCgatsTableHeader& a, const TCgatsTableHeader& b) {
    RC_ASSERT(a.GetNrFields() == b.GetNrFields());
    RC_ASSERT(a.GetNrSamples() == b.GetNrSamples());
    for (int i = 0; i < a.GetNrFields(); ++i) {
        const TCgatsField &left = *a.GetField(i), &right = *b.GetField(i);
        RC_ASSERT(orEmpty(left.GetName()) == orEmpty(right.GetName()));
        RC_ASSERT(left.GetKind() == right.GetKind());
        RC_ASSERT(left.GetNumber() == right.GetNumber());
        RC_ASSERT(left.GetFieldId() == right.GetFieldId());
        RC_ASSERT(left.GetDataType() == right.GetDataType());
    }
}

// Equal as far as six significant digits go.
void expectSameValues(const TCgatsTable& a, const TCgatsTable& b) {
    for (int column = 0; column < a.GetHeader()->GetNrFields(); ++column)
        for (int row = 0; row < a.GetNrRowsStored(); ++row) {
            const TCgatsValueList &left = *a.GetValues(column), &right = *b.GetValues(column);
            const double x = left.GetDouble(row), y = right.GetDouble(row);
            RC_ASSERT(orEmpty(left.GetString(row)) == orEmpty(right.GetString(row)));
            RC_ASSERT(std::fabs(x - y) <= 5.0001e-6 * std::fabs(x));
        }
}

void expectSameDeclarations(const TCgats& a, const TCgats& b) {
    RC_ASSERT(a.GetNrProcessColorIdTags() == b.GetNrProcessColorIdTags());
    RC_ASSERT(a.GetNrSpotIdTags() == b.GetNrSpotIdTags());
    RC_ASSERT(a.GetNrCustomFields() == b.GetNrCustomFields());
    for (int i = 0; i < a.GetNrCustomFields(); ++i)
        RC_ASSERT(orEmpty(a.GetCustomField(i)) == orEmpty(b.GetCustomField(i)));
}

TEST(roundTrip, builtDocument_comesBackFieldByFieldAndWritesTheSameBytes) {
    EXPECT_TRUE(rc::check([] {
        const auto document = built(anyChart());
        RC_ASSERT(document->GetErrorCode() == 0);
        const std::string text = written(*document);
        const TCgats again(text.c_str(), 0);
        RC_ASSERT(again.GetErrorCode() == 0);
        RC_ASSERT(again.GetNrTags() == document->GetNrTags());
        RC_ASSERT(again.GetNrTables() == 1);
        expectSameDeclarations(*document, again);
        expectSameFields(*document->GetTable(0)->GetHeader(), *again.GetTable(0)->GetHeader());
        expectSameValues(*document->GetTable(0), *again.GetTable(0));
        RC_ASSERT(written(again) == text);
    }));
}

TEST(roundTrip, copy_writesWhatItsSourceWrites) {
    EXPECT_TRUE(rc::check([] {
        const auto document = built(anyChart());
        const TCgats copy(document.get());
        RC_ASSERT(copy.GetErrorCode() == 0);
        expectSameDeclarations(*document, copy);
        expectSameFields(*document->GetTable(0)->GetHeader(), *copy.GetTable(0)->GetHeader());
        RC_ASSERT(written(copy) == written(*document));
    }));
}

TEST(roundTrip, allSamplesInOrder_areTheSource) {
    EXPECT_TRUE(rc::check([] {
        const Chart chart = anyChart();
        const auto document = built(chart);
        std::vector<int> samples;
        for (int i = 0; i < chart.sets; ++i)
            samples.push_back(i);
        const TCgats copy(document.get(), samples.data(), chart.sets);
        RC_ASSERT(written(copy) == written(*document));
    }));
}

TEST(roundTrip, chosenSamples_areThoseLinesInThatOrder) {
    EXPECT_TRUE(rc::check([] {
        const Chart chart = anyChart();
        const auto document = built(chart);
        auto samples =
            *rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(rc::gen::inRange(0, chart.sets)));
        const TCgats copy(document.get(), samples.data(), static_cast<int>(samples.size()));
        RC_ASSERT(copy.GetErrorCode() == 0);
        RC_ASSERT(copy.GetNrSamples(0) == static_cast<int>(samples.size()));
        for (int column = 0; column < document->GetNrFields(0); ++column)
            for (std::size_t i = 0; i < samples.size(); ++i) {
                const TCgatsValueList &from = *document->GetTable(0)->GetValues(column),
                                      &to = *copy.GetTable(0)->GetValues(column);
                const int row = static_cast<int>(i);
                RC_ASSERT(to.GetDouble(row) == from.GetDouble(samples[i]));
                RC_ASSERT(orEmpty(to.GetString(row)) == orEmpty(from.GetString(samples[i])));
            }
    }));
}

// Documents as others write them: header lines, comment blocks, declared columns of text, several tables.
std::string anyText() {
    std::string text = "CGATS.17\n";
    for (int i = *rc::gen::inRange(0, 4); i > 0; --i)
        text += "X_" + std::to_string(i) + "\t\"" + *word() + "\"\n";
    if (*rc::gen::arbitrary<bool>())
        text += "BEGIN_NOTES\nfirst " + *word() + "\n\tsecond\nEND_NOTES\n";
    text += "KEYWORD\t\"LOT\"\n";
    for (int table = *rc::gen::inRange(1, 4); table > 0; --table) {
        const int sets = *rc::gen::inRange(1, 6);
        text += "NUMBER_OF_FIELDS\t4\nBEGIN_DATA_FORMAT\nSAMPLE_ID LOT LAB_L nm400\nEND_DATA_FORMAT\n";
        text += "NUMBER_OF_SETS\t" + std::to_string(sets) + "\nBEGIN_DATA\n";
        for (int row = 0; row < sets; ++row)
            text += std::to_string(row) + " \"" + *word() + "\" " + std::to_string(*number(3)) + " " +
                    std::to_string(*number(1)) + "\n";
        text += "END_DATA\n";
    }
    return text;
}

TEST(roundTrip, readDocument_isStableOnceWritten) {
    EXPECT_TRUE(rc::check([] {
        const TCgats document(anyText().c_str(), 0);
        RC_ASSERT(document.GetErrorCode() == 0);
        const std::string text = written(document);
        const TCgats again(text.c_str(), 0);
        RC_ASSERT(again.GetErrorCode() == 0);
        RC_ASSERT(again.GetNrTables() == document.GetNrTables());
        RC_ASSERT(again.GetNrCommentBlocks() == document.GetNrCommentBlocks());
        for (int i = 0; i < document.GetNrTables(); ++i) {
            expectSameFields(*document.GetTable(i)->GetHeader(), *again.GetTable(i)->GetHeader());
            expectSameValues(*document.GetTable(i), *again.GetTable(i));
        }
        RC_ASSERT(written(again) == text);
        RC_ASSERT(written(TCgats(&document)) == text);
    }));
}

} // namespace
} // namespace qxcms::tests
