#include "calc/input_check.h"

#include "prep/run_company.h"
#include "support/sheet_text.h"

namespace {

using namespace preptest;
using design::Houshiki;

/// An empty company with one run in it.
class InputCheck : public RunCompany {
  protected:
    InputCheck() : RunCompany(Content::Empty) {}
    void coefficients(const QString& rows) {
        sql(u"insert into S係数設定(設定名称,算定方式,基礎額Ａ,基礎額Ｂ) values "_s + rows);
        sql(u"update S係数設定 set 配分区分Code='01', 配分基準Code='02'"_s);
    }
    void ownNames(const QString& rows) {
        sql(u"delete from S係数名称設定"_s);
        sql(u"insert into S係数名称設定(Code,係数名称) values "_s + rows);
    }
    /// "column source heading", an amount marked by 円.
    QStringList columns(Houshiki method) {
        QStringList all;
        for (const auto& column : calc::checkColumns(cn_, run_, method))
            all << QStringList{column.name, column.source,
                               column.heading + (column.amount ? u"円"_s : QString())}
                       .join(u' ');
        return all;
    }
    QStringList sheet(Houshiki method) {
        return support::sheetLines(calc::inputCheckSheet(cn_, run_, method, u"正社員"_s, u"一般"_s));
    }

    const domain::RunKey run_{QDate(2026, 12, 10), u"01"_s, u"02"_s};
};

TEST_F(InputCheck, WhatIsInUseStandsInTheFixedOrderUnderItsOwnName) {
    ownNames(u"('01','年令'),('12','語学'),('18','')"_s);
    coefficients(u"('18','1',0,-1),('12','1',0,0),('01','1',-1,0),('05','2',-1,-1)"_s);
    EXPECT_EQ(columns(Houshiki::Kojinbetsu),
              (QStringList{u"基礎額Ａ 基礎額Ａ 基礎額Ａ円"_s, u"基礎額Ｂ 基礎額Ｂ 基礎額Ｂ円"_s,
                           u"年齢係数 年齢係数 年令"_s, u"語学係数 自由2係数 語学"_s,
                           u"入力3係数 入力3係数 入力3係数"_s}));
    EXPECT_EQ(columns(Houshiki::Sougaku).last(), u"出勤係数 出勤係数 出勤係数"_s);
    // A name that would make two columns of one name stands in the sheet only.
    for (const QString& taken : {u"年齢"_s, u"支給"_s}) {
        sql(u"update S係数名称設定 set 係数名称 = ? where Code = '12'"_s, {taken});
        EXPECT_EQ(columns(Houshiki::Kojinbetsu)[3], u"自由2係数 自由2係数 "_s + taken);
    }
    ownNames(u"('12','\"); DROP TABLE S係数設定; --')"_s);
    EXPECT_TRUE(sheet(Houshiki::Kojinbetsu)[2].contains(u"|\"); DROP TABLE S係数設定; --|"_s));
    EXPECT_EQ(columns(Houshiki::Kojinbetsu).size(), 5);
}

TEST_F(InputCheck, TheSheetShowsWhatStandsInTheTablesAndLeavesNoTrace) {
    coefficients(u"('01','1',-1,0),('04','2',-1,0)"_s);
    ownNames(u"('01','年令'),('04','考課')"_s);
    sql(u"insert into 履歴書テーブル(社員Code,氏名) values('000010','山'),('000009','川'),('000008','谷')"_s);
    // One of another criterion, and one without personnel record.
    for (const QString& table : {u"S実行個人別計算(支給係数,"_s, u"S実行総額配分(賞与係数,"_s})
        sql(u"insert into %1社員Code,配分区分,配分基準,基準日,基礎額Ａ,年齢係数,評価係数,評価,合計) values"
            "(2.0,'000010','01','02','2026-12-10',12345674999,1.0625,1234.5,'Ａ',65425000),"
            "(null,'000009','01','02','2026-12-10',null,null,0,null,null),"
            "(3.0,'000008','01','03','2026-12-10',1,1,1,'',1),"
            "(4.0,'000007','01','02','2026-12-10',1,1,1,'',1)"_s.arg(table));
    sql(u"insert into S実行個人別計算決定(社員Code,配分区分,配分基準,基準日,支給係数) values"
        "('000010','01','02','2026-12-10',2.75),('000010','01','02','2026-12-10',8),('000009','01','03','2026-12-10',9)"_s);
    sql(u"create table SJCheck2(x)"_s);  // an older version may have left it
    const QString head = u"◆正社員／一般◆基礎額・係数の入力状況チェック"_s;
    EXPECT_EQ(sheet(Houshiki::Kojinbetsu),
              (QStringList{head + u"【個人別計算】"_s, QString(),
                           u"社員Code|氏名|基礎額Ａ|年令|評価|支給係数|合計"_s, u"000009|川|||"_s,
                           u"000010|山|1234567.4999円|1.0625×|Ａ|2.75×|6542.5円"_s}));
    EXPECT_FALSE(cn_.hasTable(u"SJCheck"_s) || cn_.hasTable(u"SJCheck2"_s));
    const QByteArray before = support::dump(cn_);
    EXPECT_EQ(
        sheet(Houshiki::Sougaku),
        (QStringList{head + u"【総額配分】"_s, QString(), u"社員Code|氏名|基礎額Ａ|考課|評価|賞与係数|合計"_s,
                     u"000009|川||0×|"_s, u"000010|山|1234567.4999円|1234.5×|Ａ|2×|6542.5円"_s}));
    expectUnchanged(before);

    sql(u"delete from S係数設定"_s);
    EXPECT_EQ(sheet(Houshiki::Kojinbetsu)[4], u"000010|山|Ａ|2.75×|6542.5円"_s);
    sql(u"update 履歴書テーブル set 社員Code = '00001A' where 氏名 = '山'"_s);
    sql(u"update S実行総額配分 set 社員Code = '00001A' where 社員Code = '000010'"_s);
    EXPECT_THROW(sheet(Houshiki::Sougaku), store::Error);
    EXPECT_FALSE(cn_.hasTable(u"SJCheck"_s) || cn_.inTransaction());
}

}  // namespace
