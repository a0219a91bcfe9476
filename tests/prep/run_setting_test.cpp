#include "prep/run_setting.h"

#include "prep/run_company.h"

namespace {

using namespace preptest;

struct RunSettingTest : RunCompany {
    RunSettingTest() : RunCompany(Content::Empty) {}
    std::pair<int, int> stored(QDate kijunbi) {
        const prep::RunSetting setting(cn_, kijunbi);
        return {setting.unit(), setting.rounding()};
    }
};

TEST_F(RunSettingTest, KeepsOneRowADateAndKnowsItsDigitsOnly) {
    const QDate summer(2003, 7, 10), winter(2003, 12, 10);
    prep::RunSetting(cn_, summer).save(1, 1);
    prep::RunSetting setting(cn_, winter);
    setting.save(4, 2);
    setting.save(-1, 0);  // no unit chosen: what is stored stands
    EXPECT_EQ(stored(summer), std::pair(1, 1));
    EXPECT_EQ(stored(winter), std::pair(4, 0));
    EXPECT_EQ(read(u"SELECT ID FROM Tanka_hasuu"_s).size(), 2);
    const std::tuple<store::Value, store::Value, std::pair<int, int>> cases[] = {
        {u"3", u"2", {3, 2}}, {u"5", u"3", {-1, -1}}, {u"", u"0", {-1, 0}}, {{}, u"あ", {-1, -1}}};
    for (const auto& [unit, rounding, read] : cases) {
        sql(u"UPDATE Tanka_hasuu SET 単価 = ?, 端数処理 = ? WHERE 基準日 = ?"_s, {unit, rounding, winter});
        EXPECT_EQ(stored(winter), read);
    }
}

}  // namespace
