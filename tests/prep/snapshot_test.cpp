#include "prep/snapshot.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <ostream>

#include "store/catalog.h"
#include "store/date_text.h"
#include "support/company_fixture.h"

void PrintTo(const QString& text, std::ostream* out) {
    *out << text.toStdString();
}

namespace {

using namespace Qt::StringLiterals;
using personnel::PositionDates;
using prep::RunTable;
using prep::Side;

QDate d(const char* text) {
    return store::requireDate(QString::fromLatin1(text));
}

class Snapshot : public ::testing::Test {
  protected:
    Snapshot() {
        folder_.makeEmpty();
        cn_ = folder_.open();
    }

    void person(const QString& code, const char* born, const char* joined, bool retired = false,
                const char* left = nullptr) {
        cn_->execute(
            u"INSERT INTO 履歴書テーブル(社員Code,生年月日,入社日,退職フラグ,退職日) VALUES(?,?,?,?,?)"_s,
            {code, born ? store::Value(d(born)) : store::Value(), d(joined), retired,
             left ? store::Value(d(left)) : store::Value()});
    }
    void transfer(const QString& code, const char* date, const QString& grade) {
        cn_->execute(
            u"INSERT INTO "
            u"異動テーブル(社員Code,異動日,社員区分,所属大,所属小,役職,職種,コース,等級,号俸,評語)"
            " VALUES(?,?,'01','02','0003','04','05','06',?,'7','Ａ')"_s,
            {code, d(date), grade});
    }
    void inSnapshot(const QStringList& codes) {
        for (const QString& code : codes)
            cn_->execute(u"INSERT INTO IdoChuusyutsuMax2(社員Code) VALUES(?)"_s, {code});
    }
    void runRow(const QString& table, const QString& code, const QString& criterion, const char* date) {
        cn_->execute(u"INSERT INTO %1(社員Code,配分区分,配分基準,基準日) VALUES(?,?,?,?)"_s.arg(table),
                     {code, criterion.left(2), criterion.right(2), d(date)});
    }
    /// The rows of a query, one text each, cells between bars, Null as a dash.
    QStringList rows(const QString& sql, const store::Binds& binds = {}) {
        QStringList texts;
        for (store::Recordset set = cn_->query(sql, binds); !set.eof(); set.moveNext()) {
            QStringList cells;
            for (int i = 0; i < set.fieldCount(); ++i)
                cells << (set.value(i).isNull() ? u"-"_s : set.value(i).toText());
            texts << cells.join(u'|');
        }
        return texts;
    }
    QStringList carried(RunTable table) {
        return rows(u"SELECT 社員Code,配分区分||配分基準 FROM %1 WHERE 基準日 = ? ORDER BY ID"_s.arg(
                        prep::runTableName(table)),
                    {d("2003/12/10")});
    }

    support::CompanyFolder folder_;
    std::unique_ptr<store::Connection> cn_;
};

TEST_F(Snapshot, TakesWhoCountsWithAgesAndThePositionInForce) {
    person(u"000002"_s, "1980/2/28", "2003/3/31");
    person(u"000001"_s, "1980/2/29", "2000/4/1");
    person(u"000003"_s, "1980/3/1", "2003/4/1");
    person(u"000004"_s, "1950/1/1", "1970/4/1", true, "2003/3/31");
    person(u"000005"_s, "1950/1/1", "1970/4/1", true, "2003/4/1");
    person(u"000006"_s, "2003/3/1", "2004/4/1", true, "2005/12/31");
    person(u"000007"_s, "1950/1/1", "1970/4/1", true);
    transfer(u"000005"_s, "2000/4/1", u"4"_s);
    transfer(u"000005"_s, "2000/4/1", u"5"_s);
    transfer(u"000005"_s, "1999/4/1", u"3"_s);
    transfer(u"000001"_s, "2003/4/2", u"9"_s);
    transfer(u"000001"_s, "2003/4/1", u"2"_s);
    transfer(u"000001"_s, "2001/4/1", u"1"_s);
    transfer(u"000002"_s, "2003/5/1", u"1"_s);
    transfer(u"000004"_s, "2001/4/1", u"1"_s);
    transfer(u"000006"_s, "2002/10/1", u"20"_s);

    const PositionDates dates{d("2003/4/1"), d("2003/2/28"), d("2003/3/31")};
    for (int round = 0; round < 2; ++round) {  // the work tables are refilled, not added to
        prep::SelectIntoX(*cn_, dates);
        EXPECT_EQ(rows(u"SELECT * FROM IdoChuusyutsuNen"_s),
                  (QStringList{u"000002|1980/2/28|2003/3/31|2003/2/28|2003/3/31|23|0"_s,
                               u"000001|1980/2/29|2000/4/1|2003/2/28|2003/3/31|22|2"_s,
                               u"000003|1980/3/1|2003/4/1|2003/2/28|2003/3/31|22|-1"_s,
                               u"000005|1950/1/1|1970/4/1|2003/2/28|2003/3/31|53|32"_s,
                               u"000006|2003/3/1|2004/4/1|2003/2/28|2003/3/31|-1|-2"_s}));
        EXPECT_EQ(rows(u"SELECT * FROM IdoChuusyutsuMax ORDER BY 社員Code"_s),
                  (QStringList{u"000001|2003/4/1"_s, u"000004|2001/4/1"_s, u"000005|2000/4/1"_s,
                               u"000006|2002/10/1"_s}));
        const QString position = u"|01|02|0003|04|05|06|"_s, names = u"|7|Ａ|-|-|-|-|-|-"_s;
        EXPECT_EQ(rows(u"SELECT * FROM IdoChuusyutsuMax2"_s),
                  (QStringList{u"000001|2003/4/1"_s + position + u"22|2|2"_s + names,
                               u"000005|2000/4/1"_s + position + u"53|32|4"_s + names,
                               u"000005|2000/4/1"_s + position + u"53|32|5"_s + names,
                               u"000006|2002/10/1"_s + position + u"-1|-2|20"_s + names}));
    }
    // One day on, the 23rd year of who was born on 29 February is completed; staff of today leaves all
    // leavers out.
    personnel::SelectIntoX(*cn_, {d("2003/4/1"), d("2003/3/1"), d("2003/3/31")},
                           personnel::WhoCounts::CurrentStaff);
    EXPECT_EQ(rows(u"SELECT 社員Code,年齢 FROM IdoChuusyutsuNen"_s),
              (QStringList{u"000002|23"_s, u"000001|23"_s, u"000003|23"_s}));
    EXPECT_EQ(rows(u"SELECT 社員Code FROM IdoChuusyutsuMax2"_s), QStringList{u"000001"_s});
    EXPECT_FALSE(prep::snapshotIsEmpty(*cn_));
    prep::SelectIntoX(*cn_, {d("1990/4/1"), d("2003/3/1"), d("2003/3/31")});
    EXPECT_TRUE(prep::snapshotIsEmpty(*cn_));
}

TEST_F(Snapshot, MissingDateOfBirthStopsItAndLeavesTheWorkTables) {
    person(u"000001"_s, "1980/4/1", "2000/4/1");
    transfer(u"000001"_s, "2000/4/1", u"1"_s);
    prep::SelectIntoX(*cn_, {d("2003/4/1"), d("2003/4/1"), d("2003/4/1")});
    person(u"000002"_s, nullptr, "2000/4/1");
    transfer(u"000002"_s, "2000/4/1", u"1"_s);
    const QByteArray before = support::dump(*cn_);
    try {
        prep::SelectIntoX(*cn_, {d("2004/4/1"), d("2004/4/1"), d("2004/4/1")});
        FAIL() << "no error";
    } catch (const store::Error& error) {
        EXPECT_EQ(error.text(), u"Null の使い方が不正です。"_s);
    }
    EXPECT_FALSE(cn_->inTransaction());
    EXPECT_EQ(support::firstDifference(before, support::dump(*cn_)), QByteArray());
}

TEST_F(Snapshot, CarriesTheCriterionOfTheLatestEarlierDateForwardTableByTable) {
    const QString syain = prep::runTableName(RunTable::TaiouSyain);
    const QString kojin = prep::runTableName(RunTable::KojinBetsu);
    const QString sougaku = prep::runTableName(RunTable::SougakuHaibun);
    // The later date stands first in the store for 000001; its three tables differ.
    runRow(syain, u"000001"_s, u"0102"_s, "2003/7/10");
    runRow(syain, u"000001"_s, u"0101"_s, "2002/12/10");
    runRow(kojin, u"000001"_s, u"0201"_s, "2002/12/10");
    // Several rows at the latest date: the one made first.
    runRow(syain, u"000002"_s, u"0202"_s, "2003/7/10");
    runRow(syain, u"000002"_s, u"0101"_s, "2003/7/10");
    runRow(sougaku, u"000002"_s, u"0203"_s, "2003/12/9");
    // Only a later run; a row at the date already; twice in the snapshot; left since; never assigned
    // (000007).
    runRow(syain, u"000003"_s, u"0101"_s, "2004/7/10");
    runRow(kojin, u"000004"_s, u"0301"_s, "2003/12/10");
    runRow(kojin, u"000004"_s, u"0101"_s, "2003/7/10");
    runRow(sougaku, u"000004"_s, u"0101"_s, "2003/7/10");
    runRow(kojin, u"000005"_s, u"0103"_s, "2002/12/10");  // here the earlier date stands first
    runRow(kojin, u"000005"_s, u"0102"_s, "2003/7/10");
    runRow(kojin, u"000006"_s, u"0102"_s, "2003/7/10");
    cn_->execute(u"UPDATE %1 SET 基礎額Ａ = 1230000, 年齢係数 = 2.5, 評価 = 'S', 合計 = 50000"_s.arg(kojin));
    inSnapshot({u"000001"_s, u"000002"_s, u"000003"_s, u"000004"_s, u"000005"_s, u"000005"_s, u"000007"_s});

    prep::datasakusei(*cn_, d("2003/12/10"));
    EXPECT_EQ(carried(RunTable::TaiouSyain), (QStringList{u"000001|0102"_s, u"000002|0202"_s}));
    EXPECT_EQ(carried(RunTable::KojinBetsu),
              (QStringList{u"000004|0301"_s, u"000001|0201"_s, u"000005|0102"_s}));
    EXPECT_EQ(carried(RunTable::SougakuHaibun), (QStringList{u"000002|0203"_s, u"000004|0101"_s}));
    EXPECT_EQ(rows(u"SELECT COUNT(*) FROM %1 WHERE 基準日 <> ?"_s.arg(kojin), {d("2003/12/10")}),
              QStringList{u"5"_s});

    // Nothing but the criterion comes over; results wait for the calculation.
    const QString ones = QStringList(18, u"1"_s).join(u'|');
    const auto newest = [&](const QString& table, const QString& code) {
        return rows(u"SELECT * FROM %1 WHERE 社員Code = ? AND 基準日 = ?"_s.arg(table),
                    {code, d("2003/12/10")})
            .join(u';')
            .section(u'|', 1);
    };
    EXPECT_EQ(newest(syain, u"000001"_s), u"000001|01|02|2003/12/10|0|0|0|0|0"_s);
    EXPECT_EQ(newest(kojin, u"000005"_s), u"000005|01|02|2003/12/10|10000|10000|"_s + ones + u"||1|-|-|-"_s);
    EXPECT_EQ(newest(sougaku, u"000002"_s),
              u"000002|02|03|2003/12/10|10000|10000|"_s + ones + u"||1|-|-|-|-"_s);
}

TEST_F(Snapshot, AddsADateAndCarriesForwardUnlessItHasRowsAlready) {
    const QString syain = prep::runTableName(RunTable::TaiouSyain);
    runRow(syain, u"000001"_s, u"0101"_s, "2003/7/10");
    runRow(syain, u"000002"_s, u"0101"_s, "2003/7/10");
    runRow(syain, u"000002"_s, u"0102"_s, "2004/7/10");
    inSnapshot({u"000001"_s, u"000002"_s});
    const PositionDates winter{d("2003/12/10"), d("2004/3/31"), d("2003/11/30")};
    prep::addDate(*cn_, Side::Jikkou, {d("2004/7/10"), d("2004/7/10"), d("2004/7/10")});
    prep::addDate(*cn_, Side::Jikkou, winter);
    EXPECT_EQ(rows(u"SELECT 社員Code FROM %1 WHERE 基準日 = ?"_s.arg(syain), {d("2004/7/10")}),
              QStringList{u"000002"_s});
    EXPECT_EQ(carried(RunTable::TaiouSyain), (QStringList{u"000001|0101"_s, u"000002|0101"_s}));
    EXPECT_EQ(prep::readDates(*cn_, Side::Jikkou, d("2003/12/10")), winter);
}

TEST_F(Snapshot, RemovesADateWithItsRunTablesOnTheRunSideOnly) {
    const QStringList emptied{u"S実行個人別計算"_s,   u"S実行個人別計算決定"_s, u"S実行総額配分"_s,
                              u"S実行総額配分決定"_s, u"S実行予算"_s,           u"S配分基準グループＹＮ"_s,
                              u"S配分基準対応社員"_s, u"Sshikyuukeisuu"_s,      u"SshikyuukeisuuHA"_s};
    for (const char* date : {"2003/7/10", "2003/12/10"}) {
        for (const QString& table : emptied + QStringList{u"Tanka_hasuu"_s})
            cn_->execute(u"INSERT INTO %1(基準日) VALUES(?)"_s.arg(table), {d(date)});
        for (Side side : {Side::Jikkou, Side::Sekkei})
            cn_->execute(u"INSERT INTO %1(基準日) VALUES(?)"_s.arg(prep::dateTable(side)), {d(date)});
    }
    const auto dates = [&](const QString& table) {
        return rows(u"SELECT 基準日 FROM %1 ORDER BY 基準日"_s.arg(table)).join(u' ');
    };
    prep::removeDate(*cn_, Side::Sekkei, d("2003/7/10"));
    EXPECT_EQ(dates(prep::dateTable(Side::Sekkei)), u"2003/12/10"_s);
    for (const QString& table : emptied) EXPECT_EQ(dates(table), u"2003/7/10 2003/12/10"_s);

    prep::removeDate(*cn_, Side::Jikkou, d("2003/12/10"));
    for (const QString& table : emptied) EXPECT_EQ(dates(table), u"2003/7/10"_s) << table.toStdString();
    EXPECT_EQ(dates(u"Tanka_hasuu"_s), u"2003/7/10 2003/12/10"_s);
    EXPECT_EQ(dates(prep::dateTable(Side::Jikkou)), u"2003/7/10"_s);
    EXPECT_EQ(dates(prep::dateTable(Side::Sekkei)), u"2003/12/10"_s);
}

}  // namespace
