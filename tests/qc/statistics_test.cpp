#include "qc/statistics.h"

#include <gmock/gmock.h>

using qxcms::qc::percentile;
using qxcms::qc::Statistics;
using qxcms::qc::statistics;
using qxcms::qc::worst;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<double> downFrom(int count) {
    std::vector<double> values;
    for (int i = count; i >= 1; --i)
        values.push_back(i);
    return values;
}

TEST(statistics, mean_isTheSumByTheCount) {
    const Statistics s = statistics(std::vector<double>{1.0, 2.0, 6.0});
    EXPECT_EQ(s.count, 3u);
    EXPECT_EQ(s.mean, 3.0);
}

TEST(statistics, median_ofAnOddCountIsTheMiddleValue) {
    EXPECT_EQ(statistics(std::vector<double>{9.0, 1.0, 4.0}).median, 4.0);
}

TEST(statistics, median_ofAnEvenCountIsTheMeanOfTheMiddleTwo) {
    EXPECT_EQ(statistics(std::vector<double>{9.0, 1.0, 4.0, 5.0}).median, 4.5);
}

// Nearest rank: ceil(0.95 n).
TEST(statistics, percentile95_of20ValuesIsThe19th) {
    EXPECT_EQ(statistics(downFrom(20)).percentile95, 19.0);
}

TEST(statistics, percentile95_of21ValuesIsThe20th) {
    EXPECT_EQ(statistics(downFrom(21)).percentile95, 20.0);
}

TEST(statistics, percentile95_of19ValuesIsTheGreatest) {
    EXPECT_EQ(statistics(downFrom(19)).percentile95, 19.0);
}

TEST(statistics, percentile95_of1617ValuesIsThe1537th) {
    EXPECT_EQ(statistics(downFrom(1617)).percentile95, 1537.0);
}

// ceil(0.90 * 21) = 19, ceil(0.99 * 21) = 21.
TEST(statistics, percentiles90And99_areOfTheNearestRankToo) {
    EXPECT_EQ(statistics(downFrom(21)).percentile90, 19.0);
    EXPECT_EQ(statistics(downFrom(21)).percentile99, 21.0);
    EXPECT_EQ(statistics(downFrom(200)).percentile90, 180.0);
    EXPECT_EQ(statistics(downFrom(200)).percentile99, 198.0);
}

TEST(statistics, oneValue_isEveryStatistic) {
    const Statistics s = statistics(std::vector<double>{0.25});
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
    const Statistics s = statistics(std::vector<double>{1.0, 7.0, 3.0, 7.0});
    EXPECT_EQ(s.maximum, 7.0);
    EXPECT_EQ(s.greatest, 1u);
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
        EXPECT_EQ(percentile(downFrom(100), percent), percent);
}

TEST(percentile, isTheSmallestValueThatSoManyDoNotExceed) {
    for (const int count : {1, 2, 7, 19, 60})
        for (int percent = 1; percent <= 100; ++percent) {
            const double value = percentile(downFrom(count), percent); // as many values do not exceed it
            EXPECT_GE(100.0 * value, 1.0 * percent * count) << count << " " << percent;
            EXPECT_LT(100.0 * (value - 1.0), 1.0 * percent * count) << count << " " << percent;
        }
}

TEST(percentile, ofOneValue_isThatValue) {
    EXPECT_EQ(percentile(std::vector<double>{0.25}, 1), 0.25);
    EXPECT_EQ(percentile(std::vector<double>{0.25}, 100), 0.25);
}

TEST(worst, isInDescendingOrder) {
    EXPECT_THAT(worst(std::vector<double>{2.0, 5.0, 1.0, 4.0}, 3), ElementsAre(1, 3, 0));
}

TEST(worst, equalValuesKeepTheirOrder) {
    EXPECT_THAT(worst(std::vector<double>{1.0, 2.0, 1.0, 2.0}, 4), ElementsAre(1, 3, 0, 2));
}

TEST(worst, none_isEmpty) {
    EXPECT_THAT(worst(std::vector<double>{1.0, 2.0}, 0), IsEmpty());
}

TEST(worst, moreThanThereAre_isAll) {
    EXPECT_THAT(worst(std::vector<double>{1.0, 2.0}, 10), ElementsAre(1, 0));
}

} // namespace
