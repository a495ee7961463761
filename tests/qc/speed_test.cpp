// What a comparison may cost.
#include <algorithm>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "qc/qc.h"
#include "tests/cgats/documents.h"
#include "tests/support/chart_text.h"

namespace qxcms::tests {
namespace {

using namespace qc;

constexpr int kFirstNm = 380;
constexpr int kLastNm = 780;
constexpr double kMostSeconds = 0.06;

// 11 x 7 x 7 x 3 = 1,617 device values, each with 41 reflectances.
std::vector<std::string> rows(double offset) {
    std::vector<std::string> all;
    for (int cyan = 0; cyan <= 100; cyan += 10)
        for (const int magenta : {0, 10, 20, 40, 60, 80, 100})
            for (const int yellow : {0, 10, 20, 40, 60, 80, 100})
                for (const int black : {0, 40, 80}) {
                    std::string row = std::to_string(cyan) + ' ' + std::to_string(magenta) + ' ' +
                                      std::to_string(yellow) + ' ' + std::to_string(black);
                    for (int nm = kFirstNm; nm <= kLastNm; nm += 10) {
                        const int ink = nm >= 600 ? cyan : nm >= 500 ? magenta : yellow;
                        const double value = 0.85 * (1 - 0.0093 * ink) * (1 - 0.0097 * black) + offset;
                        row += ' ' + std::to_string(value).substr(0, 6);
                    }
                    all.push_back(row);
                }
    return all;
}

std::string text(const std::vector<std::string>& lines) {
    std::string fields = "CMYK_C CMYK_M CMYK_Y CMYK_K";
    for (int nm = kFirstNm; nm <= kLastNm; nm += 10)
        fields += " SPECTRAL_NM_" + std::to_string(nm);
    return chartText(fields, lines);
}

TEST(speed, twoChartsOf1617SpectraOf41Bands_areReadPairedAndComparedIn60Milliseconds) {
    std::vector<std::string> shuffled = rows(0.003);
    std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(7));
    const std::string measured = text(shuffled);
    const std::string reference = text(rows(0));
    double best = std::numeric_limits<double>::max();
    for (int attempt = 0; attempt < 5; ++attempt) {
        const Stopwatch stopwatch;
        const Result<ChartFile> left = readChart("measured.txt", measured);
        const Result<ChartFile> right = readChart("reference.txt", reference);
        ASSERT_TRUE(left && right);
        const Result<Comparison> result = compare(left->chart(), right->chart());
        best = std::min(best, stopwatch.seconds());
        ASSERT_TRUE(result);
        ASSERT_EQ(result->patches.size(), 1617U);
        ASSERT_EQ(result->pairing.by, "CMYK");
    }
    EXPECT_LT(best, kMostSeconds);
}

} // namespace
} // namespace qxcms::tests
