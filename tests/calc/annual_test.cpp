#include "calc/annual.h"

#include "prep/run_company.h"
#include "support/sheet_text.h"

namespace {

using namespace preptest;

const QDate kSummer(2026, 7, 10), kWinter(2026, 12, 10);

class Annual : public RunCompany {
  protected:
    Annual() : RunCompany(Content::Empty) {
        for (int code : {10, 2, 3, 4, 5})
            sql(u"insert into 履歴書テーブル(社員Code,氏名) values(printf('%06d',?1),?1||'番')"_s, {code});
    }
    /// Amounts in ten-thousandths of a yen.
    void pay(int code, QDate date, const store::Binds& amounts) {
        store::Binds binds{code, date};
        binds.insert(binds.end(), amounts.begin(), amounts.end());
        sql(u"insert into S配分基準対応社員(社員Code,基準日,個人別計算,総額配分,金一封,特別加算金) values(printf('%06d',?),?,?,?,?,?)"_s,
            binds);
    }
    QStringList list(const calc::NenkanDates& dates) {
        return support::sheetLines(
            calc::nenkanSheet({u"夏"_s, u"冬"_s, {}, {}}, calc::nenkanRows(cn_, dates)));
    }
};

TEST_F(Annual, TheCellHoldsTheLastAmountAndTheTotalAll) {
    // Three criteria on one date, the last of them unpaid.
    pay(10, kSummer, {1000000, 0, 0, 0});
    pay(10, kSummer, {0, 200000, 30000, 40000});
    pay(10, kSummer, {0, 0, 0, 0});
    pay(10, kWinter, {50000000, 0, 0, 0});
    pay(2, kSummer, {0, 0, 0, 0});
    pay(3, kWinter, {90000, {}, 0, 0});  // a Null makes the whole a Null
    pay(3, kWinter, {15000, 0, 0, 0});
    pay(4, QDate(2025, 12, 10), {10000, 0, 0, 0});  // of no chosen date
    pay(99, kSummer, {10000, 0, 0, 0});             // no personnel record
    sql(u"create table SNenkan(x)"_s);              // an older version may have left it
    const QStringList heads{u"年間賞与支給額"_s, QString(), u"社員Code|氏名|夏|冬|||合計"_s};
    EXPECT_EQ(list({kSummer, kWinter, {}, {}}),
              heads + (QStringList{u"000002|2番|||||0円"_s, u"000003|3番||1.5円|||1.5円"_s,
                                   u"000010|10番|27円|5000円|||5127円"_s}));
    const QByteArray before = support::dump(cn_);
    EXPECT_EQ(list({QDate(), QDate(), QDate(), kSummer}),
              heads + (QStringList{u"000002|2番|||||0円"_s, u"000010|10番||||27円|127円"_s}));
    EXPECT_EQ(list({QDate(2020, 1, 1), {}, {}, {}}), heads);
    expectUnchanged(before);
    // One row beyond the money range, then two rows together.
    const qint64 most = std::numeric_limits<qint64>::max();
    for (const store::Binds& amounts : {store::Binds{most, 10, 0, 0}, store::Binds{most, 0, 0, 0}}) {
        pay(10, kSummer, amounts);
        EXPECT_THROW(list({kSummer, QDate(), QDate(), QDate()}), store::Error);
        EXPECT_FALSE(cn_.hasTable(u"SNenkan"_s) || cn_.hasTable(u"SNenkanhojo"_s) || cn_.inTransaction());
        sql(u"delete from S配分基準対応社員 where 個人別計算 = ?"_s, {most});
    }
}

}  // namespace
