// Neighbouring rows whose colours belong elsewhere.
#include "qc/shifted_rows.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace qxcms::tests {
namespace {

using qc::ComparedRow;
using qc::Lab;
using qc::ShiftedRows;
using testing::HasSubstr;

// 40 colours far apart from their neighbours.
std::vector<Lab> colors() {
    std::vector<Lab> all;
    for (int i = 0; i < 40; ++i)
        all.push_back({20.0 + i * 29 % 71, i * 47 % 121 - 60.0, i * 71 % 113 - 56.0});
    return all;
}

std::optional<ShiftedRows> found(const std::vector<Lab>& measured, const std::vector<Lab>& expected) {
    std::vector<ComparedRow> rows;
    for (std::size_t i = 0; i < measured.size(); ++i)
        rows.push_back({static_cast<int>(i), measured[i], expected[i]});
    return findShiftedRows(rows);
}

TEST(shiftedRows, chartAgainstItself_hasNone) {
    EXPECT_FALSE(found(colors(), colors()));
}

TEST(shiftedRows, lostReading_movesTheRestUp) {
    std::vector<Lab> measured = colors();
    measured.erase(measured.begin() + 10);
    measured.push_back({0, 0, 0});
    const std::optional<ShiftedRows> shifted = found(measured, colors());
    ASSERT_TRUE(shifted);
    EXPECT_EQ(shifted->first, 10);
    EXPECT_EQ(shifted->last, 38);
    EXPECT_EQ(shifted->places, 1);
    EXPECT_EQ(shifted->rows, 29);
    EXPECT_EQ(shifted->whenPlaced, 0.0);
}

TEST(shiftedRows, readingTakenTwice_movesTheRestDown) {
    std::vector<Lab> measured = colors();
    measured.insert(measured.begin() + 10, measured[10]);
    measured.pop_back();
    const std::optional<ShiftedRows> shifted = found(measured, colors());
    ASSERT_TRUE(shifted);
    EXPECT_EQ(shifted->first, 11);
    EXPECT_EQ(shifted->last, 39);
    EXPECT_EQ(shifted->places, -1);
}

TEST(shiftedRows, stripReadBackwards_isMirrored) {
    for (const int length : {8, 9}) {
        std::vector<Lab> measured = colors();
        std::reverse(measured.begin() + 10, measured.begin() + 10 + length);
        const std::optional<ShiftedRows> shifted = found(measured, colors());
        ASSERT_TRUE(shifted) << length;
        EXPECT_TRUE(shifted->isMirrored());
        EXPECT_EQ(shifted->first, 10);
        EXPECT_EQ(shifted->last, 9 + length);
    }
}

TEST(shiftedRows, stripTakenForTheNextOne_isTold) {
    std::vector<Lab> measured = colors();
    std::copy_n(measured.begin() + 10, 10, measured.begin() + 20);
    const std::optional<ShiftedRows> shifted = found(measured, colors());
    ASSERT_TRUE(shifted);
    EXPECT_EQ(shifted->first, 20);
    EXPECT_EQ(shifted->last, 29);
    EXPECT_EQ(shifted->places, -10);
}

TEST(shiftedRows, oneRowThatContradicts_doesNotEndTheRun) {
    std::vector<Lab> measured = colors();
    std::rotate(measured.begin(), measured.begin() + 1, measured.end());
    measured[20] = {50, 90, 90};
    const std::optional<ShiftedRows> shifted = found(measured, colors());
    ASSERT_TRUE(shifted);
    EXPECT_EQ(shifted->first, 0);
    EXPECT_EQ(shifted->last, 38);
}

TEST(shiftedRows, fiveRows_areTooFew) {
    std::vector<Lab> measured = colors();
    std::reverse(measured.begin() + 10, measured.begin() + 14);
    EXPECT_FALSE(found(measured, colors()));
}

// A ramp that came out darker by just a step: each tint looks like the next one.
TEST(shiftedRows, rampWithDotGainOfOneStep_isNoShift) {
    std::vector<Lab> measured;
    std::vector<Lab> expected;
    for (int ramp = 0; ramp < 4; ++ramp)
        for (int step = 0; step <= 10; ++step) {
            expected.push_back({95.0 - 7 * step, 0, 0});
            measured.push_back({std::max(95.0 - 7 * (step + 1), 25.0), 0, 0});
        }
    EXPECT_FALSE(found(measured, expected));
}

// Prints that differ in all colours, such as on newsprint.
TEST(shiftedRows, paleColours_areNoShift) {
    std::vector<Lab> measured;
    for (const Lab& lab : colors())
        measured.push_back({20 + 0.7 * lab[0], 0.5 * lab[1], 0.5 * lab[2]});
    EXPECT_FALSE(found(measured, colors()));
}

TEST(shiftedRows, stripAmongRowsThatAllDiffer_agreesByChance) {
    std::vector<Lab> measured = colors();
    for (std::size_t i = 0; i < measured.size(); ++i)
        measured[i] = {measured[i][0], -measured[i][2], measured[i][1]};
    const std::vector<Lab> expected = colors();
    std::reverse_copy(expected.begin() + 10, expected.begin() + 18, measured.begin() + 10);
    EXPECT_FALSE(found(measured, colors()));
}

TEST(shiftedRows, sentence_namesFileRowsAndPlaces) {
    EXPECT_THAT(qc::toldOf({899, 1615, 1, 717, 48.9, 0.8}, "m.txt"),
                HasSubstr("rows 900 to 1,616 of m.txt agree with what is expected in the row 1 further down "
                          "(median CIELAB Delta E 0.8 instead of 48.9): a reading seems to have been lost or "
                          "taken twice"));
    EXPECT_THAT(qc::toldOf({5, 12, -33, 8, 20, 1}, "m.txt"), HasSubstr("in the rows 33 further up"));
    EXPECT_THAT(
        qc::toldOf({5, 12, 0, 8, 20, 1}, "m.txt"),
        HasSubstr("in the rows in the opposite order (median CIELAB Delta E 1 instead of 20): a strip "
                  "seems to have been read backwards"));
}

} // namespace
} // namespace qxcms::tests
