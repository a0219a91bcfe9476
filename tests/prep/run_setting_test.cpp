#include "prep/run_setting.h"

#include <gtest/gtest.h>

#include <array>

#include "support/company_fixture.h"

namespace {

using namespace Qt::StringLiterals;

TEST(RunSetting, KeepsOneRowADateAndKnowsItsDigitsOnly) {
    support::CompanyFolder folder;
    folder.makeEmpty();
    const auto cn = folder.open();
    const QDate summer(2003, 7, 10), winter(2003, 12, 10);
    prep::RunSetting(*cn, summer).save(1, 1);
    prep::RunSetting setting(*cn, winter);
    setting.save(4, 2);
    setting.save(-1, 0);  // no unit chosen: what is stored stands
    const prep::RunSetting again(*cn, summer), winterAgain(*cn, winter);
    EXPECT_EQ((std::array{again.unit(), again.rounding(), winterAgain.unit(), winterAgain.rounding()}),
              (std::array{1, 1, 4, 0}));
    EXPECT_EQ(cn->query(u"SELECT ID FROM Tanka_hasuu"_s).recordCount(), 2);

    struct Case {
        store::Value unit, rounding;
        int expectedUnit, expectedRounding;
    };
    for (const Case& c : {Case{u"3"_s, u"2"_s, 3, 2}, Case{u"5"_s, u"3"_s, -1, -1},
                          Case{u""_s, u"0"_s, -1, 0}, Case{{}, u"あ"_s, -1, -1}}) {
        cn->execute(u"UPDATE Tanka_hasuu SET 単価 = ?, 端数処理 = ? WHERE 基準日 = ?"_s,
                    {c.unit, c.rounding, winter});
        const prep::RunSetting read(*cn, winter);
        EXPECT_EQ(read.unit(), c.expectedUnit);
        EXPECT_EQ(read.rounding(), c.expectedRounding);
    }
}

}  // namespace
