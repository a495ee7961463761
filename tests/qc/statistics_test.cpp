#include "qc/statistics.h"

#include <cmath>
#include <limits>

#include <gmock/gmock.h>

using qxcms::qc::percentile;
using qxcms::qc::Statistics;
using qxcms::qc::statistics;
using qxcms::qc::worst;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

Statistics statisticsOf(const std::vector<double>& values) {
    return statistics(values);
}

double percentileOf(const std::vector<double>& values, int percent) {
    return percentile(values, percent);
}

std::vector<std::size_t> worstOf(const std::vector<double>& values, std::size_t count) {
    return worst(values, count);
}

std::vector<double> downFrom(int count) {
    std::vector<double> values;
    for (int i = count; i >= 1; --i)
        values.push_back(i);
    return values;
}

TEST(statistics, mean_isTheSumByTheCount) {
    const Statistics s = statisticsOf({1.0, 2.0, 6.0});
    EXPECT_EQ(s.count, 3u);
    EXPECT_EQ(s.mean, 3.0);
}

TEST(statistics, median_ofAnOddCountIsTheMiddleValue) {
    EXPECT_EQ(statisticsOf({9.0, 1.0, 4.0}).median, 4.0);
}

TEST(statistics, median_ofAnEvenCountIsTheMeanOfTheMiddleTwo) {
    EXPECT_EQ(statisticsOf({9.0, 1.0, 4.0, 5.0}).median, 4.5);
}

// Nearest rank: ceil(0.95 n).
TEST(statistics, percentile95_of20ValuesIsThe19th) {
    EXPECT_EQ(statisticsOf(downFrom(20)).percentile95, 19.0);
}

TEST(statistics, percentile95_of21ValuesIsThe20th) {
    EXPECT_EQ(statisticsOf(downFrom(21)).percentile95, 20.0);
}

TEST(statistics, percentile95_of19ValuesIsTheGreatest) {
    EXPECT_EQ(statisticsOf(downFrom(19)).percentile95, 19.0);
}

TEST(statistics, percentile95_of1617ValuesIsThe1537th) {
    EXPECT_EQ(statisticsOf(downFrom(1617)).percentile95, 1537.0);
}

// ceil(0.90 * 21) = 19, ceil(0.99 * 21) = 21.
TEST(statistics, percentiles90And99_areOfTheNearestRankToo) {
    EXPECT_EQ(statisticsOf(downFrom(21)).percentile90, 19.0);
    EXPECT_EQ(statisticsOf(downFrom(21)).percentile99, 21.0);
    EXPECT_EQ(statisticsOf(downFrom(200)).percentile90, 180.0);
    EXPECT_EQ(statisticsOf(downFrom(200)).percentile99, 198.0);
}

TEST(statistics, oneValue_isEveryStatistic) {
    const Statistics s = statisticsOf({0.25});
    EXPECT_EQ(s.count, 1u);
    EXPECT_EQ(s.mean, 0.25);
    EXPECT_EQ(s.median, 0.25);
    EXPECT_EQ(s.percentile90, 0.25);
    EXPECT_EQ(s.percentile95, 0.25);
    EXPECT_EQ(s.percentile99, 0.25);
    EXPECT_EQ(s.maximum, 0.25);
    EXPECT_EQ(s.greatest, 0u);
}

TEST(statistics, maximum_isFoundAtItsFirstPlace) {
    const Statistics s = statisticsOf({1.0, 7.0, 3.0, 7.0});
    EXPECT_EQ(s.maximum, 7.0);
    EXPECT_EQ(s.greatest, 1u);
}

void expectNoFigures(const Statistics& s) {
    for (const double figure : {s.mean, s.median, s.percentile90, s.percentile95, s.percentile99, s.maximum})
        EXPECT_TRUE(std::isnan(figure));
}

TEST(statistics, noValues_areCountedAndHaveNoFigures) {
    const Statistics s = statistics({});
    EXPECT_EQ(s.count, 0u);
    EXPECT_EQ(s.greatest, 0u);
    expectNoFigures(s);
}

TEST(statistics, valueThatIsNoNumber_leavesNoFiguresAndIsFound) {
    const Statistics s = statisticsOf({1.0, 3.0, kNaN, 2.0, kNaN, 9.0});
    EXPECT_EQ(s.count, 6u);
    EXPECT_EQ(s.greatest, 2u);
    expectNoFigures(s);
}

// The worked example of nearest ranks: 15, 20, 35, 40, 50.
TEST(percentile, isTheValueOfTheRankRoundedUp) {
    const std::vector<double> values = {35.0, 20.0, 15.0, 50.0, 40.0};
    EXPECT_EQ(percentile(values, 5), 15.0);
    EXPECT_EQ(percentile(values, 30), 20.0);
    EXPECT_EQ(percentile(values, 40), 20.0);
    EXPECT_EQ(percentile(values, 41), 35.0);
    EXPECT_EQ(percentile(values, 50), 35.0);
    EXPECT_EQ(percentile(values, 100), 50.0);
}

// Every percentage of a hundred values hits a value; products of fractions would miss some by rounding.
TEST(percentile, of100Values_isTheirRankInPercent) {
    for (int percent = 1; percent <= 100; ++percent)
        EXPECT_EQ(percentileOf(downFrom(100), percent), percent);
}

TEST(percentile, isTheSmallestValueThatSoManyDoNotExceed) {
    for (const int count : {1, 2, 7, 19, 60})
        for (int percent = 1; percent <= 100; ++percent) {
            const double value = percentileOf(downFrom(count), percent); // as many values do not exceed it
            EXPECT_GE(100.0 * value, 1.0 * percent * count) << count << " " << percent;
            EXPECT_LT(100.0 * (value - 1.0), 1.0 * percent * count) << count << " " << percent;
        }
}

TEST(percentile, ofOneValue_isThatValue) {
    EXPECT_EQ(percentileOf({0.25}, 1), 0.25);
    EXPECT_EQ(percentileOf({0.25}, 100), 0.25);
}

TEST(percentile, withoutARank_isNoNumber) {
    EXPECT_TRUE(std::isnan(percentile({}, 50)));
    EXPECT_TRUE(std::isnan(percentileOf({1.0, kNaN}, 50)));
    for (const int percent : {-1, 0, 101, 1000})
        EXPECT_TRUE(std::isnan(percentileOf({1.0, 2.0}, percent))) << percent;
}

TEST(worst, isInDescendingOrder) {
    EXPECT_THAT(worstOf({2.0, 5.0, 1.0, 4.0}, 3), ElementsAre(1, 3, 0));
}

TEST(worst, equalValuesKeepTheirOrder) {
    EXPECT_THAT(worstOf({1.0, 2.0, 1.0, 2.0}, 4), ElementsAre(1, 3, 0, 2));
}

TEST(worst, valueThatIsNoNumber_isWorseThanAny) {
    EXPECT_THAT(worstOf({2.0, kNaN, 5.0, kNaN, 1.0}, 4), ElementsAre(1, 3, 2, 0));
}

TEST(worst, ofNoValues_isEmpty) {
    EXPECT_THAT(worst({}, 3), IsEmpty());
}

TEST(worst, none_isEmpty) {
    EXPECT_THAT(worstOf({1.0, 2.0}, 0), IsEmpty());
}

TEST(worst, moreThanThereAre_isAll) {
    EXPECT_THAT(worstOf({1.0, 2.0}, 10), ElementsAre(1, 0));
}

} // namespace
