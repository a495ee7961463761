#include "qc/statistics.h"

#include <gmock/gmock.h>

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
    const Statistics s = statistics({1.0, 2.0, 6.0});
    EXPECT_EQ(s.count, 3u);
    EXPECT_EQ(s.mean, 3.0);
}

TEST(statistics, median_ofAnOddCountIsTheMiddleValue) {
    EXPECT_EQ(statistics({9.0, 1.0, 4.0}).median, 4.0);
}

TEST(statistics, median_ofAnEvenCountIsTheMeanOfTheMiddleTwo) {
    EXPECT_EQ(statistics({9.0, 1.0, 4.0, 5.0}).median, 4.5);
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

TEST(statistics, oneValue_isEveryStatistic) {
    const Statistics s = statistics({0.25});
    EXPECT_EQ(s.count, 1u);
    EXPECT_EQ(s.mean, 0.25);
    EXPECT_EQ(s.median, 0.25);
    EXPECT_EQ(s.percentile95, 0.25);
    EXPECT_EQ(s.maximum, 0.25);
    EXPECT_EQ(s.greatest, 0u);
}

TEST(statistics, maximum_isFoundAtItsFirstPlace) {
    const Statistics s = statistics({1.0, 7.0, 3.0, 7.0});
    EXPECT_EQ(s.maximum, 7.0);
    EXPECT_EQ(s.greatest, 1u);
}

TEST(worst, isInDescendingOrder) {
    EXPECT_THAT(worst({2.0, 5.0, 1.0, 4.0}, 3), ElementsAre(1, 3, 0));
}

TEST(worst, equalValuesKeepTheirOrder) {
    EXPECT_THAT(worst({1.0, 2.0, 1.0, 2.0}, 4), ElementsAre(1, 3, 0, 2));
}

TEST(worst, none_isEmpty) {
    EXPECT_THAT(worst({1.0, 2.0}, 0), IsEmpty());
}

TEST(worst, moreThanThereAre_isAll) {
    EXPECT_THAT(worst({1.0, 2.0}, 10), ElementsAre(1, 0));
}

} // namespace
