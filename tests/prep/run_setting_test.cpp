#include "prep/run_setting.h"

#include <gtest/gtest.h>

#include "store/date_text.h"
#include "support/company_fixture.h"

namespace {

using namespace Qt::StringLiterals;

struct Case {
    store::Value unit;
    store::Value rounding;
    int expectedUnit;
    int expectedRounding;
};

TEST(RunSetting, KeepsOneRowADateAndStoresDigitsOnly) {
    support::CompanyFolder folder;
    folder.makeEmpty();
    const auto cn = folder.open();
    const QDate summer(2003, 7, 10), winter(2003, 12, 10);
    const auto stored = [&] {
        QStringList rows;
        for (auto set = cn->query(u"SELECT 単価,端数処理,基準日 FROM Tanka_hasuu ORDER BY ID"_s); !set.eof();
             set.moveNext())
            rows << set.value(0).toText() + set.value(1).toText() + u' ' + set.value(2).toText();
        return rows.join(u';').toStdString();
    };

    EXPECT_EQ(prep::RunSetting(*cn, summer).unit(), 0);
    EXPECT_EQ(stored(), "00 2003/7/10");
    prep::RunSetting setting(*cn, winter);
    setting.save(4, 2);
    setting.save(-1, 1);  // no unit chosen: what is stored stands
    EXPECT_EQ(setting.unit(), 4);
    EXPECT_EQ(setting.rounding(), 1);
    EXPECT_EQ(prep::RunSetting(*cn, summer).rounding(), 0);
    EXPECT_EQ(stored(), "00 2003/7/10;41 2003/12/10");

    const Case cases[] = {
        {u"3"_s, u"2"_s, 3, 2}, {u"5"_s, u"3"_s, -1, -1}, {u""_s, u"0"_s, -1, 0},
        {u"0"_s, {}, 0, -1},    {{}, u"あ"_s, -1, -1},
    };
    for (const Case& c : cases) {
        cn->execute(u"UPDATE Tanka_hasuu SET 単価 = ?, 端数処理 = ? WHERE 基準日 = ?"_s,
                    {c.unit, c.rounding, winter});
        prep::RunSetting read(*cn, winter);
        EXPECT_EQ(read.unit(), c.expectedUnit);
        EXPECT_EQ(read.rounding(), c.expectedRounding);
    }
}

}  // namespace
