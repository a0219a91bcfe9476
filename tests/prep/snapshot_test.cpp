#include "prep/snapshot.h"

#include "prep/run_company.h"

namespace {

using namespace preptest;
using personnel::PositionDates;
using prep::RunTable;
using prep::Side;

const QString kSyain = prep::runTableName(RunTable::TaiouSyain);
const QString kKojin = prep::runTableName(RunTable::KojinBetsu);
const QString kSougaku = prep::runTableName(RunTable::SougakuHaibun);

class Snapshot : public RunCompany {
  protected:
    Snapshot() : RunCompany(Content::Empty) {}

    using Pairs = std::vector<std::pair<QString, QString>>;
    void transfers(const QString& code, const Pairs& datesAndGrades) {
        const QString columns = u"社員Code,異動日,社員区分,所属大,所属小,役職,職種,コース,等級,号俸,評語"_s;
        for (const auto& [date, grade] : datesAndGrades)
            sql(u"INSERT INTO 異動テーブル(%1) VALUES(?,?,'01','02','0003','04','05','06',?,'7','Ａ')"_s.arg(
                    columns),
                {code, d(date), grade});
    }
    void runRows(const QString& table, const QString& code, const Pairs& criteriaAndDates) {
        for (const auto& [criterion, date] : criteriaAndDates)
            sql(u"INSERT INTO %1(社員Code,配分区分,配分基準,基準日) VALUES(?,?,?,?)"_s.arg(table),
                {code, criterion.left(2), criterion.right(2), d(date)});
    }
    QStringList rowsAt(const QString& date, const QString& table) {
        return read(u"SELECT 社員Code,配分区分||配分基準 FROM %1 WHERE 基準日 = ? ORDER BY ID"_s.arg(table),
                    {d(date)});
    }
};

TEST_F(Snapshot, TakesWhoCountsWithAgesAndThePositionInForce) {
    sql(u"INSERT INTO 履歴書テーブル(社員Code,生年月日,入社日,退職フラグ,退職日) VALUES"
        "('000002','1980-02-28','2003-03-31',0,NULL),('000001','1980-02-29','2000-04-01',0,NULL),"
        "('000003','1980-03-01','2003-04-01',0,NULL),('000004','1950-01-01','1970-04-01',-1,'2003-03-31'),"
        "('000005','1950-01-01','1970-04-01',-1,'2003-04-01'),"
        "('000006','2003-03-01','2004-04-01',-1,'2005-12-31'),"
        "('000007','1950-01-01','1970-04-01',-1,NULL)"_s);
    transfers(u"000005"_s, {{u"2000/4/1"_s, u"4"_s}, {u"2000/4/1"_s, u"5"_s}, {u"1999/4/1"_s, u"3"_s}});
    transfers(u"000001"_s, {{u"2003/4/2"_s, u"9"_s}, {u"2003/4/1"_s, u"2"_s}, {u"2001/4/1"_s, u"1"_s}});
    transfers(u"000002"_s, {{u"2003/5/1"_s, u"1"_s}});
    transfers(u"000004"_s, {{u"2001/4/1"_s, u"1"_s}});
    transfers(u"000006"_s, {{u"2002/10/1"_s, u"20"_s}});
    const QDate kijunbi = d(u"2003/4/1"_s), tenure = d(u"2003/3/31"_s);
    for (int round = 0; round < 2; ++round) {  // the work tables are refilled, not added to
        prep::SelectIntoX(cn_, {kijunbi, d(u"2003/2/28"_s), tenure});
        EXPECT_EQ(read(u"SELECT * FROM IdoChuusyutsuNen"_s),
                  (QStringList{u"000002|1980/2/28|2003/3/31|2003/2/28|2003/3/31|23|0"_s,
                               u"000001|1980/2/29|2000/4/1|2003/2/28|2003/3/31|22|2"_s,
                               u"000003|1980/3/1|2003/4/1|2003/2/28|2003/3/31|22|-1"_s,
                               u"000005|1950/1/1|1970/4/1|2003/2/28|2003/3/31|53|32"_s,
                               u"000006|2003/3/1|2004/4/1|2003/2/28|2003/3/31|-1|-2"_s}));
        EXPECT_EQ(read(u"SELECT * FROM IdoChuusyutsuMax ORDER BY 社員Code"_s),
                  (QStringList{u"000001|2003/4/1"_s, u"000004|2001/4/1"_s, u"000005|2000/4/1"_s,
                               u"000006|2002/10/1"_s}));
        const QString position = u"|01|02|0003|04|05|06|"_s, names = u"|7|Ａ|-|-|-|-|-|-"_s;
        EXPECT_EQ(read(u"SELECT * FROM IdoChuusyutsuMax2"_s),
                  (QStringList{u"000001|2003/4/1"_s + position + u"22|2|2"_s + names,
                               u"000005|2000/4/1"_s + position + u"53|32|4"_s + names,
                               u"000005|2000/4/1"_s + position + u"53|32|5"_s + names,
                               u"000006|2002/10/1"_s + position + u"-1|-2|20"_s + names}));
    }
    // One day on, the 23rd year of who was born on 29 February is completed; staff of today leaves all
    // leavers out.
    const QDate nextDay = d(u"2003/3/1"_s);
    personnel::SelectIntoX(cn_, {kijunbi, nextDay, tenure}, personnel::WhoCounts::CurrentStaff);
    EXPECT_EQ(read(u"SELECT 社員Code,年齢 FROM IdoChuusyutsuNen"_s),
              (QStringList{u"000002|23"_s, u"000001|23"_s, u"000003|23"_s}));
    EXPECT_EQ(read(u"SELECT 社員Code FROM IdoChuusyutsuMax2"_s), QStringList{u"000001"_s});
    EXPECT_FALSE(prep::snapshotIsEmpty(cn_));
    prep::SelectIntoX(cn_, {d(u"1990/4/1"_s), nextDay, tenure});
    EXPECT_TRUE(prep::snapshotIsEmpty(cn_));

    // A missing date of birth stops it and leaves the work tables as they were.
    sql(u"UPDATE 履歴書テーブル SET 生年月日 = NULL WHERE 社員Code = '000003'"_s);
    const QByteArray before = support::dump(cn_);
    try {
        prep::SelectIntoX(cn_, {kijunbi, nextDay, tenure});
        ADD_FAILURE() << "no error";
    } catch (const store::Error& error) {
        EXPECT_EQ(error.text(), u"Null の使い方が不正です。"_s);
    }
    expectUnchanged(before);
}

TEST_F(Snapshot, ANewDateCarriesTheCriterionOfTheLatestEarlierDateForwardTableByTable) {
    const QString before = u"2002/12/10"_s, summer = u"2003/7/10"_s, winter = u"2003/12/10"_s,
                  after = u"2004/7/10"_s;
    // The later date stands first in the store for 000001, the earlier one for 000005.
    runRows(kSyain, u"000001"_s, {{u"0102"_s, summer}, {u"0101"_s, before}});
    runRows(kKojin, u"000001"_s, {{u"0201"_s, before}});
    runRows(kKojin, u"000005"_s, {{u"0103"_s, before}, {u"0102"_s, summer}});
    // Several rows at the latest date: the one made first.
    runRows(kSyain, u"000002"_s, {{u"0202"_s, summer}, {u"0101"_s, summer}});
    runRows(kSougaku, u"000002"_s, {{u"0203"_s, u"2003/12/9"_s}});
    // Only a later run; a row at the date already; left since. 000007 was never assigned.
    runRows(kSyain, u"000003"_s, {{u"0101"_s, after}});
    runRows(kKojin, u"000004"_s, {{u"0301"_s, winter}, {u"0101"_s, summer}});
    runRows(kSougaku, u"000004"_s, {{u"0101"_s, summer}});
    runRows(kKojin, u"000006"_s, {{u"0102"_s, summer}});
    sql(u"UPDATE %1 SET 基礎額Ａ = 1230000, 年齢係数 = 2.5, 評価 = 'S', 合計 = 50000"_s.arg(kKojin));
    sql(u"INSERT INTO IdoChuusyutsuMax2(社員Code) VALUES"
        "('000001'),('000002'),('000003'),('000004'),('000005'),('000005'),('000007')"_s);
    const PositionDates dates{d(winter), d(u"2004/3/31"_s), d(u"2003/11/30"_s)};
    prep::addDate(cn_, Side::Jikkou, dates);
    EXPECT_EQ(prep::readDates(cn_, Side::Jikkou, d(winter)), dates);
    EXPECT_EQ(rowsAt(winter, kSyain), (QStringList{u"000001|0102"_s, u"000002|0202"_s}));
    EXPECT_EQ(rowsAt(winter, kKojin), (QStringList{u"000004|0301"_s, u"000001|0201"_s, u"000005|0102"_s}));
    EXPECT_EQ(rowsAt(winter, kSougaku), (QStringList{u"000002|0203"_s, u"000004|0101"_s}));
    EXPECT_EQ(read(u"SELECT ID FROM %1"_s.arg(kKojin)).size(), 6 + 2);

    // Nothing but the criterion comes over; results wait for the calculation.
    const QString ones = QStringList(18, u"1"_s).join(u'|');
    const auto newest = [&](const QString& table, const QString& code) {
        return read(u"SELECT * FROM %1 WHERE 社員Code = ? AND 基準日 = ?"_s.arg(table), {code, d(winter)})
            .join(u';')
            .section(u'|', 1);
    };
    EXPECT_EQ(newest(kSyain, u"000001"_s), u"000001|01|02|2003/12/10|0|0|0|0|0"_s);
    EXPECT_EQ(newest(kKojin, u"000005"_s), u"000005|01|02|2003/12/10|10000|10000|"_s + ones + u"||1|-|-|-"_s);

    // A date that has rows already gets no others.
    prep::addDate(cn_, Side::Jikkou, {d(after), d(after), d(after)});
    EXPECT_EQ(rowsAt(after, kSyain), QStringList{u"000003|0101"_s});
    EXPECT_EQ(rowsAt(after, kSougaku), QStringList());
}

TEST_F(Snapshot, RemovesADateWithItsRunTablesOnTheRunSideOnly) {
    const QStringList emptied{u"S実行個人別計算"_s,   u"S実行個人別計算決定"_s, u"S実行総額配分"_s,
                              u"S実行総額配分決定"_s, u"S実行予算"_s,           u"S配分基準グループＹＮ"_s,
                              u"S配分基準対応社員"_s, u"Sshikyuukeisuu"_s,      u"SshikyuukeisuuHA"_s};
    const QString jikkou = prep::dateTable(Side::Jikkou), sekkei = prep::dateTable(Side::Sekkei);
    const QStringList summer{u"2003/7/10"_s}, winter{u"2003/12/10"_s};
    for (const QString& table : emptied + QStringList{u"Tanka_hasuu"_s, jikkou, sekkei})
        sql(u"INSERT INTO %1(基準日) VALUES('2003-07-10'),('2003-12-10')"_s.arg(table));
    const auto dates = [&](const QString& table) {
        return read(u"SELECT 基準日 FROM %1 ORDER BY 基準日"_s.arg(table));
    };
    prep::removeDate(cn_, Side::Sekkei, d(u"2003/7/10"_s));
    EXPECT_EQ(dates(sekkei), winter);
    for (const QString& table : emptied) EXPECT_EQ(dates(table), summer + winter);

    prep::removeDate(cn_, Side::Jikkou, d(u"2003/12/10"_s));
    for (const QString& table : emptied) EXPECT_EQ(dates(table), summer) << table.toStdString();
    EXPECT_EQ(dates(u"Tanka_hasuu"_s), summer + winter);
    EXPECT_EQ(dates(jikkou), summer);
    EXPECT_EQ(dates(sekkei), winter);
}

}  // namespace
