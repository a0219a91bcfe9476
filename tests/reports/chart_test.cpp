#include "reports/chart.h"

#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using namespace reports;

TEST(Charts, ClassesAreRoundAndHoldEveryValueOnce) {
    const struct {
        std::vector<double> values;
        double first, step;
        std::vector<int> counts;
    } cases[] = {{{}, 0, 1, {}},
                 {{300000}, 300000, 100000, {1}},                   // a quarter of it is 75,000
                 {{100, 149, 150, 300}, 100, 50, {2, 1, 0, 0, 1}},  // edges belong to the class above
                 {{-5, 5}, -5, 5, {1, 0, 1}},
                 {{0, 0}, 0, 1, {2}},
                 {{1, 1.5, 2.4}, 1, 1, {2, 1}}};  // never narrower than a yen
    for (const auto& c : cases) {
        const Distribution distribution = distribute(c.values);
        EXPECT_EQ(distribution.counts, c.counts);
        EXPECT_EQ(distribution.classes.first, c.first);
        EXPECT_EQ(distribution.classes.step, c.step);
    }
    std::vector<double> many;
    for (int i = 0; i < 5000; ++i) many.push_back(200000 + 83.7 * i);
    const Distribution distribution = distribute(many);  // 418,416 in 20 parts is 20,920: classes of 50,000
    EXPECT_EQ(distribution.classes.step, 50000);
    EXPECT_EQ(distribution.counts[0], 598);  // 0 to 597: 597 × 83.7 = 49,968.9
}

TEST(Charts, GroupsStandInTheOrderOfTheirKeysAndSmallOnesAreSummedUp) {
    const std::vector<StackItem> items{{u"03"_s, u"営業"_s, 0, 5}, {u"01"_s, u"総務"_s, 0, 1},
                                       {u"02"_s, u"製造"_s, 1, 9}, {u"03"_s, u"営業"_s, 1, 2},
                                       {u"04"_s, u"研究"_s, 0, 3}, {u"01"_s, u"総務"_s, 1, 1}};
    Chart chart;
    chart.unit = u"円"_s;
    const std::pair<std::size_t, QStringList> cases[] = {{4, {u"総務"_s, u"製造"_s, u"営業"_s, u"研究"_s}},
                                                         {3, {u"製造"_s, u"営業"_s, u"その他（2）"_s}}};
    for (const auto& [most, groups] : cases) {
        const Stack stack = stackGroups({u"夏"_s, u"冬"_s}, items, most);
        EXPECT_EQ(stack.groups, groups);
        chart.content = stack;
    }
    EXPECT_EQ(describeItem(chart, 2), u"その他（2）　夏 4円　冬 1円　合計 5円"_s);
}

}  // namespace
